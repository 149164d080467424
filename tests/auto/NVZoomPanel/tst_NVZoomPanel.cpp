// The panel of the zoom tool: its form, and how slider, number box, list and loupe follow each other, with
// exact counts of what each is told.

#include <QAbstractItemView>
#include <QLineEdit>
#include <QSlider>
#include <QSpinBox>
#include <QWheelEvent>
#include <QtTest>

#include "CameraView.h"
#include "FormFacts.h"
#include "KXCommonComboBox.h"
#include "KXDocumentInterface.h"
#include "NVZoomPanel.h"
#include "ProbeImage.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

QList<FormFact> Facts()
{
    QList<FormFact> facts = FactsOf(
        QString(),
        {{"objectName", "ZoomPanel"}, {"windowTitle", "Zoom tool"}, {"minimumSize", QSize(300, 230)}});
    facts += FactsOf("m_pZoomLbl",
                     {{"class", "QLabel"},
                      {"text", "Zoom value:"},
                      {"styleSheet", "padding:0px;"},
                      {"buddy", "m_pZoomSpn"}});
    facts += FactsOf("m_pZoom",
                     {{"class", "QSlider"},
                      {"orientation", int(Qt::Horizontal)},
                      {"minimum", 1},
                      {"maximum", 32},
                      {"value", 1},
                      {"accessibleName", "Zoom value"},
                      {"focusPolicy", int(Qt::NoFocus)}});
    facts += FactsOf("m_pZoomSpn",
                     {{"class", "QSpinBox"},
                      {"minimum", 1},
                      {"maximum", 32},
                      {"value", 1},
                      {"suffix", " : 1"},
                      {"text", "1 : 1"},
                      {"buttonSymbols", int(QAbstractSpinBox::UpDownArrows)},
                      {"focusPolicy", int(Qt::ClickFocus)}});
    facts += FactsOf("m_pGridTypeLbl",
                     {{"class", "QLabel"},
                      {"text", "Grid type:"},
                      {"styleSheet", "padding:0px;"},
                      {"buddy", "m_pGridType"}});
    // The height limits contradict each other, as the form has it.
    facts += ListFacts("m_pGridType", {"None", "Standard", "Lighten", "Darken"}, 0, QSize(0, 24), 22);
    facts += FactsOf("m_pCameraPreviewLine", {{"class", "QFrame"}, {"frameShape", int(QFrame::HLine)}});
    facts += FactsOf("m_pCamera", {{"class", "CameraView"}, {"accessibleName", "Loupe"}});
    const QList<QPair<QString, QString>> cells = {
        {"m_pZoomLbl", "0 0 1 1"},     {"m_pZoom", "0 1 1 1"},     {"m_pZoomSpn", "0 2 1 1"},
        {"m_pGridTypeLbl", "1 0 1 1"}, {"m_pGridType", "1 1 1 2"}, {"m_pCameraPreviewLine", "1 0 1 1"},
        {"m_pCamera", "2 0 1 1"}};
    for (const auto& cell : cells)
        facts.append({cell.first, "cell", cell.second});
    return facts;
}

QImage Halves()
{
    QImage image(40, 40, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::red);
    for (int y = 0; y < 40; ++y)
    {
        for (int x = 20; x < 40; ++x)
            image.setPixelColor(x, y, Qt::blue);
    }
    return image;
}

struct Host
{
    Host()
    {
        panel->resize(320, 300);
        log.Watch(panel.get(), "panel");
        log.Watch(Box(), "box");
        log.Watch(Slider(), "slider");
        log.Watch(List(), "list");
        log.Watch(Loupe(), "loupe");
    }
    void Show()
    {
        panel->show();
        QVERIFY(QTest::qWaitForWindowActive(panel.get()));
    }
    QSlider* Slider() const { return panel->findChild<QSlider*>("m_pZoom"); }
    QSpinBox* Box() const { return panel->findChild<QSpinBox*>("m_pZoomSpn"); }
    QComboBox* List() const { return panel->findChild<QComboBox*>("m_pGridType"); }
    CameraView* Loupe() const { return panel->findChild<CameraView*>("m_pCamera"); }
    // What box, slider, loupe and getter say.
    QList<int> Scales() const
    {
        return {Box()->value(), Slider()->value(), Loupe()->GetScaleFactor(), panel->GetZoomValue()};
    }
    // How often each told a new scale: the loupe is set by the slider alone, once each time that it tells.
    QList<int> Told() const
    {
        return {log.Count("box.valueChanged(int)"), log.Count("slider.valueChanged"),
                log.Count("loupe.ScaleChanged")};
    }

    // From here on each call of the loupe's setter counts, one with the scale that it has too: behind each
    // the loupe gets another scale, of which nobody is told.
    void CountCalls()
    {
        QObject::connect(Loupe(), &CameraView::ScaleChanged,
                         [this](int scale)
                         {
                             calls.append(scale);
                             const QSignalBlocker blocker(Loupe());
                             Loupe()->SetScaleFactor(scale == 32 ? 31 : 32);
                         });
    }

    std::unique_ptr<NVZoomPanel> panel = std::make_unique<NVZoomPanel>(nullptr);
    SignalLog log;
    QList<int> calls;
};

QList<int> Four(int value)
{
    return {value, value, value, value};
}

} // namespace

class tst_NVZoomPanel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void formHasItsFacts_data() { AddFormFactRows(Facts()); }
    void formHasItsFacts();
    void layoutsStandInEachOther();
    void textsAreTranslatedUnderTheFormsName() { CheckFormTranslation<NVZoomPanel>("ZoomPanel"); }
    void hasNoSignalsOfItsOwn();
    void listIsTwentyFourPixelsHigh();

    void startsAtOneWithoutAGrid();
    void valueIsClampedEverywhere_data();
    void valueIsClampedEverywhere();
    void typedValueReachesTheLoupeOnce();
    void draggedSliderReachesTheLoupeOnce();
    void setterOfTheLoupeIsCalledOnce_data();
    void setterOfTheLoupeIsCalledOnce();
    void loupesOwnChangeComesBackToTheControls();
    void loupeThatTellsASameValueChangesNothing();
    void boxAndSliderAreTiedByTheForm();
    void gridTypeReachesTheLoupe_data();
    void gridTypeReachesTheLoupe();
    void chosenGridTypeReachesTheLoupeOnce();
    void lookPositionIsPassedOn();
    void documentIsPassedOn();
    void layerOfADocumentIsPassedOn();
    void documentMayGoFirst();
    void diesWhileItsBoxIsEdited();
};

void tst_NVZoomPanel::formHasItsFacts()
{
    NVZoomPanel panel(nullptr);
    CheckFormFact(&panel);
}

void tst_NVZoomPanel::layoutsStandInEachOther()
{
    const NVZoomPanel panel(nullptr);
    const auto* outer = qobject_cast<QGridLayout*>(panel.layout());
    QVERIFY(outer);
    QCOMPARE(outer->objectName(), QString("gridLayout_2"));
    QCOMPARE(outer->rowCount(), 3);
    const auto* inner = qobject_cast<QGridLayout*>(outer->itemAtPosition(0, 0)->layout());
    QVERIFY(inner);
    QCOMPARE(inner->objectName(), QString("gridLayout"));
    QCOMPARE(inner->horizontalSpacing(), 6);
    QCOMPARE(inner->verticalSpacing(), 9);
    const auto* work = qobject_cast<QGridLayout*>(panel.findChild<CameraView*>()->layout());
    QVERIFY(work);
    QCOMPARE(work->objectName(), QString("m_pWorkAreaLayout"));
    QCOMPARE(work->count(), 0);
    QCOMPARE(work->spacing(), 0);
    QCOMPARE(work->contentsMargins(), QMargins());
}

void tst_NVZoomPanel::hasNoSignalsOfItsOwn()
{
    const QMetaObject& meta = NVZoomPanel::staticMetaObject;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        QVERIFY(meta.method(i).methodType() != QMetaMethod::Signal);
}

void tst_NVZoomPanel::listIsTwentyFourPixelsHigh()
{
    Host host;
    host.Show();

    QCOMPARE(host.List()->height(), 24);
}

void tst_NVZoomPanel::startsAtOneWithoutAGrid()
{
    const Host host;

    QCOMPARE(host.Scales(), Four(1));
    QCOMPARE(host.panel->GetGridType(), 0);
    QCOMPARE(host.Loupe()->GetGridType(), 0);
}

void tst_NVZoomPanel::valueIsClampedEverywhere_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("kept");

    QTest::newRow("least") << 1 << 1;
    QTest::newRow("between") << 17 << 17;
    QTest::newRow("largest") << 32 << 32;
    QTest::newRow("too large") << 40 << 32;
    QTest::newRow("zero") << 0 << 1;
    QTest::newRow("negative") << -5 << 1;
}

void tst_NVZoomPanel::valueIsClampedEverywhere()
{
    QFETCH(const int, value);
    QFETCH(const int, kept);
    const Host host;

    host.panel->SetZoomValue(value);
    host.panel->SetZoomValue(value);

    QCOMPARE(host.Scales(), Four(kept));
    const int told = kept == 1 ? 0 : 1;
    QCOMPARE(host.Told(), QList<int>({told, told, told}));
}

void tst_NVZoomPanel::typedValueReachesTheLoupeOnce()
{
    Host host;
    host.Show();

    QTest::mouseClick(host.Box()->findChild<QLineEdit*>(), Qt::LeftButton);
    host.Box()->selectAll();
    QTest::keyClicks(host.Box(), "5");

    QCOMPARE(host.Scales(), Four(5));
    QCOMPARE(host.Told(), QList<int>({1, 1, 1}));
    QCOMPARE(host.Box()->text(), QString("5 : 1"));
}

void tst_NVZoomPanel::draggedSliderReachesTheLoupeOnce()
{
    Host host;
    host.Show();

    host.Slider()->triggerAction(QAbstractSlider::SliderSingleStepAdd);

    QCOMPARE(host.Scales(), Four(2));
    QCOMPARE(host.Told(), QList<int>({1, 1, 1}));
}

void tst_NVZoomPanel::setterOfTheLoupeIsCalledOnce_data()
{
    QTest::addColumn<QString>("way");
    for (const char* way : {"typed", "arrow", "slider", "set"})
        QTest::newRow(way) << way;
}

void tst_NVZoomPanel::setterOfTheLoupeIsCalledOnce()
{
    QFETCH(const QString, way);
    Host host;
    host.Show();
    host.panel->SetZoomValue(4);
    host.CountCalls();

    if (way == "typed")
    {
        QTest::mouseClick(host.Box()->findChild<QLineEdit*>(), Qt::LeftButton);
        host.Box()->selectAll();
        QTest::keyClicks(host.Box(), "5");
    }
    else if (way == "arrow")
        QTest::keyClick(host.Box(), Qt::Key_Up);
    else if (way == "slider")
        host.Slider()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    else
        host.panel->SetZoomValue(5);

    QCOMPARE(host.calls, QList<int>({5}));
    QCOMPARE(host.panel->GetZoomValue(), 5);
}

void tst_NVZoomPanel::loupesOwnChangeComesBackToTheControls()
{
    Host host;
    host.Show();
    CameraView* loupe = host.Loupe();

    loupe->SetScaleFactor(8);
    QCOMPARE(host.Scales(), Four(8));
    QCOMPARE(host.Told(), QList<int>({1, 1, 1}));
    QWheelEvent turn(QPointF(20, 20), loupe->mapToGlobal(QPoint(20, 20)), QPoint(), QPoint(0, 120),
                     Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(loupe, &turn);

    QCOMPARE(host.Scales(), Four(9));
    QCOMPARE(host.Told(), QList<int>({2, 2, 2}));
}

// The signal alone, as from a loupe of another host.
void tst_NVZoomPanel::loupeThatTellsASameValueChangesNothing()
{
    const Host host;

    Q_EMIT host.Loupe()->ScaleChanged(8);
    QCOMPARE(host.panel->GetZoomValue(), 8);
    const QList<int> told = host.Told();
    Q_EMIT host.Loupe()->ScaleChanged(8);

    QCOMPARE(host.Scales(), Four(8));
    QCOMPARE(host.Told().mid(0, 2), told.mid(0, 2));
}

void tst_NVZoomPanel::boxAndSliderAreTiedByTheForm()
{
    const Host host;
    host.Loupe()->disconnect(host.Slider());

    host.Box()->setValue(3);
    QCOMPARE(host.Slider()->value(), 3);
    host.Slider()->setValue(4);
    QCOMPARE(host.Box()->value(), 4);
}

void tst_NVZoomPanel::gridTypeReachesTheLoupe_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("kept");
    QTest::addColumn<int>("told");

    QTest::newRow("none, as it is") << 0 << 0 << 0;
    QTest::newRow("standard") << 1 << 1 << 1;
    QTest::newRow("darken") << 3 << 3 << 1;
    QTest::newRow("behind the last") << 4 << -1 << 1;
    QTest::newRow("negative") << -3 << -1 << 1;
}

void tst_NVZoomPanel::gridTypeReachesTheLoupe()
{
    QFETCH(const int, index);
    QFETCH(const int, kept);
    const Host host;

    host.panel->SetGridType(index);
    host.panel->SetGridType(index);

    QCOMPARE(host.panel->GetGridType(), kept);
    QCOMPARE(host.Loupe()->GetGridType(), qMax(0, kept));
    QTEST(host.log.Count("list.currentIndexChanged(int)"), "told");
}

void tst_NVZoomPanel::chosenGridTypeReachesTheLoupeOnce()
{
    Host host;
    host.Show();

    host.List()->showPopup();
    QTest::keyClick(host.List()->view(), Qt::Key_Down);
    QTest::keyClick(host.List()->view(), Qt::Key_Down);
    QTest::keyClick(host.List()->view(), Qt::Key_Return);

    QCOMPARE(host.panel->GetGridType(), 2);
    QCOMPARE(host.Loupe()->GetGridType(), 2);
    QCOMPARE(host.log.Count("list.currentIndexChanged(int)"), 1);
}

void tst_NVZoomPanel::lookPositionIsPassedOn()
{
    const Host host;

    host.panel->SetLookPosition(QPoint(12, -7));

    QCOMPARE(host.Loupe()->GetLookPoint(), QPoint(12, -7));
}

void tst_NVZoomPanel::documentIsPassedOn()
{
    KXDocumentInterface document(Halves());
    Host host;
    host.Show();
    host.panel->SetZoomValue(32);

    host.panel->SetDocument(&document);
    host.panel->SetLookPosition(QPoint(5, 5));
    const QPoint middle = host.Loupe()->rect().center();
    QCOMPARE(ProbeImage(host.Loupe()).At(middle.x(), middle.y()), QColor(Qt::red));
    host.panel->SetLookPosition(QPoint(30, 5));
    QCOMPARE(ProbeImage(host.Loupe()).At(middle.x(), middle.y()), QColor(Qt::blue));
    host.panel->SetDocument(nullptr);

    QCOMPARE(ProbeImage(host.Loupe()).CountOf(Qt::blue), 0);
}

void tst_NVZoomPanel::layerOfADocumentIsPassedOn()
{
    KXDocumentInterface document(Halves());
    KXDocumentInterface::Layer above;
    above.image = QImage(40, 40, QImage::Format_ARGB32_Premultiplied);
    above.image.fill(Qt::green);
    QVERIFY(document.InsertLayer(1, above));
    Host host;
    host.Show();
    host.panel->SetZoomValue(32);
    host.panel->SetLookPosition(QPoint(5, 5));
    const QPoint middle = host.Loupe()->rect().center();

    host.panel->SetDocument(&document, 1);
    QCOMPARE(ProbeImage(host.Loupe()).At(middle.x(), middle.y()), QColor(Qt::red));
    host.panel->SetDocument(&document, 2);
    QCOMPARE(ProbeImage(host.Loupe()).At(middle.x(), middle.y()), QColor(Qt::green));
    host.panel->SetDocument(&document, 1);
    host.panel->SetDocument(&document);
    QCOMPARE(ProbeImage(host.Loupe()).At(middle.x(), middle.y()), QColor(Qt::green));
}

void tst_NVZoomPanel::documentMayGoFirst()
{
    auto document = std::make_unique<KXDocumentInterface>(Halves());
    Host host;
    host.Show();
    host.panel->SetDocument(document.get());

    document.reset();
    host.panel->SetZoomValue(7);

    QCOMPARE(ProbeImage(host.Loupe()).CountOf(Qt::red), 0);
}

void tst_NVZoomPanel::diesWhileItsBoxIsEdited()
{
    Host host;
    host.Show();
    QTest::mouseClick(host.Box()->findChild<QLineEdit*>(), Qt::LeftButton);
    host.Box()->selectAll();
    QTest::keyClicks(host.Box(), "2");
    host.log.Clear();

    host.panel.reset();

    QCOMPARE(host.log.Count("loupe.ScaleChanged"), 0);
}

NV_TEST_MAIN(tst_NVZoomPanel)
#include "tst_NVZoomPanel.moc"
