// The panel of the colour range: its form, the strip of colours, what the buttons do, and what it tells.

#include <QColorDialog>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QMainWindow>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QSpinBox>
#include <QtTest>

#include <random>

#include "BarForm.h"
#include "KXColorDlg.h"
#include "ModalDriver.h"
#include "NVSelectColorRange.h"
#include "ProbeImage.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

const int Capacity = 256;

QColor ColorOf(int index)
{
    return QColor(index % 256, 255 - index % 256, 7);
}

QString Chosen(int index)
{
    return QString("ColorSelected(%1)").arg(index);
}

struct Host
{
    explicit Host(int colors = 0) : panel(new NVSelectColorRange(nullptr))
    {
        for (int i = 0; i < colors; ++i)
            panel->AddColor(ColorOf(i), ColorOf(i));
    }
    ~Host() { delete panel; }
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    bool Show() const
    {
        panel->show();
        const bool active = QTest::qWaitForWindowActive(panel);
        QCoreApplication::processEvents();
        return active;
    }
    template <class Widget>
    Widget* Find(const char* name) const
    {
        auto* found = panel->findChild<Widget*>(name);
        if (!found)
            qFatal("no %s", name);
        return found;
    }
    QScrollArea* Area() const { return Find<QScrollArea>("m_pColorArea"); }
    QScrollBar* Bar() const { return Area()->horizontalScrollBar(); }
    QGridLayout* Grid() const { return qobject_cast<QGridLayout*>(Area()->widget()->layout()); }
    int Swatches() const { return Grid()->count(); }
    QLabel* Swatch(int index) const
    {
        QLayoutItem* item = Grid()->itemAtPosition(0, index);
        return item ? qobject_cast<QLabel*>(item->widget()) : nullptr;
    }
    QColor ColorAt(int index) const
    {
        return Swatch(index)->pixmap(Qt::ReturnByValue).toImage().pixelColor(8, 8);
    }
    // Index of the only swatch with the mark; -1 without one, -2 with several.
    int Marked() const
    {
        int marked = -1;
        for (int i = 0; i < Swatches(); ++i)
        {
            if (Swatch(i)->frameStyle() == QFrame::Box)
                marked = marked == -1 ? i : -2;
        }
        return marked;
    }
    QPushButton* Remove() const { return Find<QPushButton>("m_pRemove"); }
    QPushButton* RemoveAll() const { return Find<QPushButton>("m_pRemoveAll"); }
    QString Figures() const
    {
        return QStringList({Find<QLabel>("m_pRed")->text(), Find<QLabel>("m_pGreen")->text(),
                            Find<QLabel>("m_pBlue")->text()})
            .join(' ');
    }
    void Click(const char* button) const { QTest::mouseClick(Find<QPushButton>(button), Qt::LeftButton); }
    void ClickSwatch(int index) const { QTest::mouseClick(Swatch(index), Qt::LeftButton); }

    QPointer<NVSelectColorRange> panel;
};

void RunDeferredDeletes()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

class tst_NVSelectColorRange : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void formHasItsTitleAndSize();
    void labelsAreAsStated();
    void captionsShowTheirWholeText_data();
    void captionsShowTheirWholeText();
    void buttonsAreAsStated();
    void toleranceIsAsStated();
    void modeIsAsStated();
    void stripIsAsStated();
    void tabGoesFromTopToBottom();
    void startsEmptyWithBothButtonsEnabled();

    void toleranceIsToldOnceAChange();
    void toleranceIsClamped();
    void typedAndDraggedToleranceIsTold();
    void modeIsTheIndexOfTheList();
    void previewIsShownInTheRoomThatItHas();
    void previewNeverKeepsThePanelLarge();

    void colorIsAddedSelectedAndTold();
    void sameColorAgainChangesNothing();
    void sameShownColorWithAnotherSourceIsKept();
    void transparentColorIsWhiteInTheStrip();
    void transparentColorMayComeTwice();
    void whiteMayStandBesideATransparentColor();
    void translucentColorIsShownAsItIs();
    void stripTakes256Colors();
    void swatchesArePackedToTheLeft();
    void sourcesAreInOrder();

    void selectingMarksAndTells();
    void selectingTheSameTellsNothing();
    void selectingNoneEmptiesTheFigures();
    void selectingWhatIsNotThereIsIgnored_data();
    void selectingWhatIsNotThereIsIgnored();
    void pressOnASwatchSelectsIt();
    void otherButtonsSelectNothing();
    void pressGoesOnToTheStrip();
    void pressOnARemovedSwatchSelectsNone();

    void farSwatchScrollsIntoView();
    void clickedSwatchAtTheEdgeScrollsIntoView();
    void addedSwatchScrollsIntoViewAtOnce();
    void visibleSwatchScrollsNothing();

    void removingTheLastOfThree();
    void removingTheFirstOfThree();
    void removingInTheMiddle();
    void removingTheOnlyOne();
    void removingTellsOfTheListAlone();
    void removingWithoutASelection();
    void removingFromAnEmptyStripDisablesRemoveAllOnly();
    void removedSwatchDiesLater();
    void removeAllEmptiesTheStrip();
    void fullStripLosesBothEndsAndTheMiddle();
    void randomSequencesMatchAPlainList_data();
    void randomSequencesMatchAPlainList();

    void chosenColorIsAdded();
    void cancelledChoiceAddsNothing_data();
    void cancelledChoiceAddsNothing();

    void okAcceptsAndCancelRejects();
    void addingLaysTheStripOutOnce();
    void swatchesStandOnADenseScreen();

    void diesInItsOwnSignals_data();
    void diesInItsOwnSignals();
    void diesUnderItsColorDialog();
    void diesWithSwatchesOnTheirWay();
    void diesWhileASwatchIsPressed();
};

void tst_NVSelectColorRange::formHasItsTitleAndSize()
{
    const Host host;

    QCOMPARE(host.panel->Content()->objectName(), QString("SelectColorRange"));
    QCOMPARE(host.panel->windowTitle(), QString("Select color range"));
    QCOMPARE(host.panel->Content()->minimumSize(), QSize(480, 485));
}

void tst_NVSelectColorRange::labelsAreAsStated()
{
    const Host host;
    const QList<QPair<const char*, const char*>> captions = {
        {"label_3", "R:"}, {"label_4", "G:"}, {"label_5", "B:"}};
    for (const auto& caption : captions)
    {
        const auto* label = host.Find<QLabel>(caption.first);
        QCOMPARE(label->text(), QString(caption.second));
        QCOMPARE(label->minimumWidth(), 16);
        QCOMPARE(label->maximumWidth(), 16);
        QVERIFY(label->alignment() & Qt::AlignRight);
    }
    for (const char* value : {"m_pRed", "m_pGreen", "m_pBlue"})
    {
        QCOMPARE(host.Find<QLabel>(value)->minimumWidth(), 20);
        QCOMPARE(host.Find<QLabel>(value)->text(), QString());
    }
    QCOMPARE(host.Find<QLabel>("label")->text(), QString("Tolerance:"));
    QCOMPARE(host.Find<QLabel>("m_pModeLabel")->text(), QString("Mode: "));
    QVERIFY(host.Find<QLabel>("m_pModeLabel")->alignment() & Qt::AlignRight);
    for (const char* line : {"line", "line_5"})
    {
        QCOMPARE(host.Find<QFrame>(line)->frameShape(), QFrame::HLine);
        QCOMPARE(host.Find<QFrame>(line)->frameShadow(), QFrame::Sunken);
    }
}

void tst_NVSelectColorRange::captionsShowTheirWholeText_data()
{
    QTest::addColumn<int>("points");
    QTest::newRow("small font") << 7;
    QTest::newRow("usual font") << 0;
    QTest::newRow("large font") << 16;
}

void tst_NVSelectColorRange::captionsShowTheirWholeText()
{
    QFETCH(int, points);
    const QFont before = QApplication::font();
    QFont font = before;
    if (points > 0)
        font.setPointSize(points);
    QApplication::setFont(font);
    const auto restore = qScopeGuard([before] { QApplication::setFont(before); });
    const Host host;
    QVERIFY(host.Show());

    for (const char* name : {"label_3", "label_4", "label_5"})
    {
        const auto* label = host.Find<QLabel>(name);
        const int needed = label->fontMetrics().horizontalAdvance(label->text());
        QVERIFY2(needed <= label->contentsRect().width(), name);
        // No narrower than it takes, and alike.
        QVERIFY(points != 7 || label->font().stretch() == QFont::AnyStretch);
        QCOMPARE(label->font(), host.Find<QLabel>("label_3")->font());
    }
}

void tst_NVSelectColorRange::buttonsAreAsStated()
{
    const Host host;

    const auto* choose = host.Find<QPushButton>("m_pChooseColor");
    QCOMPARE(choose->text(), QString("Choose a color"));
    QCOMPARE(choose->toolTip(), QString());
    QCOMPARE(choose->minimumWidth(), 90);
    QCOMPARE(host.Remove()->text(), QString("Remove"));
    QCOMPARE(host.Remove()->toolTip(), QString("Remove the selected color"));
    QCOMPARE(host.Remove()->minimumSize(), QSize(90, 24));
    QCOMPARE(host.RemoveAll()->text(), QString("Remove all"));
    QCOMPARE(host.RemoveAll()->toolTip(), QString("Remove all colors"));
    QCOMPARE(host.RemoveAll()->minimumSize(), QSize(90, 24));
    const auto* box = host.Find<QDialogButtonBox>("m_pButtonBox");
    QCOMPARE(box->standardButtons(), QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    QCOMPARE(box->orientation(), Qt::Horizontal);
}

void tst_NVSelectColorRange::toleranceIsAsStated()
{
    const Host host;

    const auto* slider = host.Find<QSlider>("m_pToleranceSlider");
    QCOMPARE(slider->minimum(), 0);
    QCOMPARE(slider->maximum(), 255);
    QCOMPARE(slider->orientation(), Qt::Horizontal);
    QCOMPARE(slider->minimumWidth(), 50);
    const auto* box = host.Find<QSpinBox>("m_pTolerance");
    QCOMPARE(box->minimum(), 0);
    QCOMPARE(box->maximum(), 255);
    QCOMPARE(host.panel->GetTolerance(), 0);
}

void tst_NVSelectColorRange::modeIsAsStated()
{
    const Host host;

    const auto* mode = host.Find<QComboBox>("m_pMode");
    QVERIFY(mode->inherits("KXCommonComboBox"));
    QStringList entries;
    for (int i = 0; i < mode->count(); ++i)
        entries.append(mode->itemText(i));
    QCOMPARE(entries, QStringList({"create new", "add", "subtract", "intersect"}));
    QCOMPARE(mode->minimumWidth(), 130);
    QCOMPARE(mode->maximumWidth(), 130);
    QCOMPARE(mode->minimumHeight(), 24);
    QCOMPARE(host.panel->GetMode(), 0);
}

void tst_NVSelectColorRange::stripIsAsStated()
{
    const Host host;

    QCOMPARE(host.Area()->maximumHeight(), 50);
    QCOMPARE(host.Area()->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    QCOMPARE(host.Area()->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
    QVERIFY(qobject_cast<QFrame*>(host.Area()->widget()));
    QVERIFY(host.Grid());
    QCOMPARE(host.Grid()->columnStretch(256), 10);
    QCOMPARE(host.Grid()->columnStretch(255), 0);
}

void tst_NVSelectColorRange::tabGoesFromTopToBottom()
{
    const Host host;
    QVERIFY(host.Show());
    host.Area()->setFocus();
    QStringList order;

    for (int i = 0; i < 9; ++i)
    {
        order.append(QApplication::focusWidget()->objectName());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }

    QCOMPARE(order.mid(0, 7),
             QStringList({"m_pColorArea", "m_pChooseColor", "m_pRemove", "m_pRemoveAll", "m_pToleranceSlider",
                          "m_pTolerance", "m_pMode"}));
    QCOMPARE(QApplication::focusWidget(), host.Area());
}

void tst_NVSelectColorRange::startsEmptyWithBothButtonsEnabled()
{
    const Host host;

    QCOMPARE(host.panel->GetCurrentIndex(), -1);
    QCOMPARE(host.panel->GetSourceColors(), QList<QColor>());
    QCOMPARE(host.Swatches(), 0);
    QVERIFY(host.Remove()->isEnabled());
    QVERIFY(host.RemoveAll()->isEnabled());
}

void tst_NVSelectColorRange::toleranceIsToldOnceAChange()
{
    const Host host;
    SignalLog log(host.panel);

    host.panel->SetTolerance(40);
    QCOMPARE(log.Entries(), QStringList({"ToleranceChanged(40)"}));
    QCOMPARE(host.panel->GetTolerance(), 40);
    QCOMPARE(host.Find<QSlider>("m_pToleranceSlider")->value(), 40);

    host.panel->SetTolerance(40);
    QCOMPARE(log.Count(), 1);
}

void tst_NVSelectColorRange::toleranceIsClamped()
{
    const Host host;

    host.panel->SetTolerance(std::numeric_limits<int>::max());
    QCOMPARE(host.panel->GetTolerance(), 255);
    host.panel->SetTolerance(-1);
    QCOMPARE(host.panel->GetTolerance(), 0);
}

void tst_NVSelectColorRange::typedAndDraggedToleranceIsTold()
{
    const Host host;
    QVERIFY(host.Show());
    SignalLog log(host.panel);
    auto* box = host.Find<QSpinBox>("m_pTolerance");
    auto* slider = host.Find<QSlider>("m_pToleranceSlider");

    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, "12");
    QCOMPARE(log.Entries(), QStringList({"ToleranceChanged(1)", "ToleranceChanged(12)"}));
    QCOMPARE(slider->value(), 12);
    log.Clear();

    slider->setFocus();
    QTest::keyClick(slider, Qt::Key_Right);
    QCOMPARE(log.Entries(), QStringList({"ToleranceChanged(13)"}));
    QCOMPARE(host.panel->GetTolerance(), 13);
}

void tst_NVSelectColorRange::modeIsTheIndexOfTheList()
{
    const Host host;
    for (int mode = 3; mode >= 0; --mode)
    {
        host.panel->SetMode(mode);
        QCOMPARE(host.panel->GetMode(), mode);
    }
    host.panel->SetMode(4);
    QCOMPARE(host.panel->GetMode(), -1);
}

void tst_NVSelectColorRange::previewIsShownInTheRoomThatItHas()
{
    const Host host;
    QVERIFY(host.Show());
    const QSize room = host.panel->GetPreviewSize();
    QCOMPARE(room, host.Find<QLabel>("m_pPreview")->size());
    QVERIFY(room.width() > 400 && room.height() > 200);

    QPixmap picture(room);
    picture.fill(Qt::magenta);
    host.panel->SetPreview(picture);

    const QRect place(host.Find<QLabel>("m_pPreview")->mapTo(host.panel, QPoint()), room);
    QCOMPARE(ProbeImage(host.panel).BoundsOf(Qt::magenta, 0), place);
}

void tst_NVSelectColorRange::previewNeverKeepsThePanelLarge()
{
    const Host host;
    QVERIFY(host.Show());
    const QSize small = host.panel->size();
    const QSize room = host.panel->GetPreviewSize();
    host.panel->resize(small + QSize(200, 150));
    QTRY_COMPARE(host.panel->GetPreviewSize(), room + QSize(200, 150));
    host.panel->SetPreview(QPixmap(host.panel->GetPreviewSize()));
    QCoreApplication::processEvents();

    host.panel->resize(small);

    QTRY_COMPARE(host.panel->size(), small);
    QTRY_COMPARE(host.panel->GetPreviewSize(), room);
}

void tst_NVSelectColorRange::colorIsAddedSelectedAndTold()
{
    const Host host;
    QVERIFY(host.Show());
    SignalLog log(host.panel);

    host.panel->AddColor(QColor(10, 200, 30), QColor(1, 2, 3));

    QCOMPARE(log.Entries(), QStringList({"ColorSelected(0)", "ColorListChanged()"}));
    QCOMPARE(host.panel->GetCurrentIndex(), 0);
    QCOMPARE(host.panel->GetSourceColors(), QList<QColor>({QColor(1, 2, 3)}));
    QCOMPARE(host.ColorAt(0), QColor(10, 200, 30));
    QCOMPARE(host.Swatch(0)->parentWidget(), host.Area()->widget());
    QCOMPARE(host.Swatch(0)->size(), QSize(16, 16));
    QCOMPARE(host.Swatch(0)->maximumSize(), QSize(16, 16));
    QCOMPARE(host.Swatch(0)->pixmap(Qt::ReturnByValue).size(), QSize(16, 16));
    QVERIFY(host.Swatch(0)->isVisible());
    QCOMPARE(host.Marked(), 0);
    QCOMPARE(host.Figures(), QString("10 200 30"));
    QVERIFY(host.RemoveAll()->isEnabled());
}

void tst_NVSelectColorRange::sameColorAgainChangesNothing()
{
    const Host host(3);
    SignalLog log(host.panel);

    host.panel->AddColor(ColorOf(0), ColorOf(0));

    QCOMPARE(log.Entries(), QStringList());
    QCOMPARE(host.panel->GetCurrentIndex(), 2);
    QCOMPARE(host.Swatches(), 3);
}

void tst_NVSelectColorRange::sameShownColorWithAnotherSourceIsKept()
{
    const Host host;
    host.panel->AddColor(Qt::red, Qt::red);
    host.panel->AddColor(Qt::red, Qt::blue);
    host.panel->AddColor(Qt::blue, Qt::red);
    host.panel->AddColor(Qt::red, Qt::blue);

    QCOMPARE(host.panel->GetSourceColors(), QList<QColor>({Qt::red, Qt::blue, Qt::red}));
}

void tst_NVSelectColorRange::transparentColorIsWhiteInTheStrip()
{
    const Host host;

    host.panel->AddColor(QColor(11, 22, 33, 0), Qt::red);

    QCOMPARE(host.ColorAt(0), QColor(Qt::white));
    QCOMPARE(host.Figures(), QString("11 22 33"));
}

void tst_NVSelectColorRange::transparentColorMayComeTwice()
{
    const Host host;
    SignalLog log(host.panel);

    host.panel->AddColor(QColor(11, 22, 33, 0), Qt::red);
    host.panel->AddColor(QColor(11, 22, 33, 0), Qt::red);

    QCOMPARE(host.Swatches(), 2);
    QCOMPARE(log.Entries(), QStringList({Chosen(0), "ColorListChanged()", Chosen(1), "ColorListChanged()"}));
}

void tst_NVSelectColorRange::whiteMayStandBesideATransparentColor()
{
    const Host host;
    host.panel->AddColor(QColor(11, 22, 33, 0), Qt::red);
    host.panel->AddColor(QColor(Qt::white), Qt::red);
    QCOMPARE(host.Swatches(), 2);

    // White is there now, and that is what a transparent colour is compared as.
    host.panel->AddColor(QColor(11, 22, 33, 0), Qt::red);
    QCOMPARE(host.Swatches(), 2);
}

void tst_NVSelectColorRange::translucentColorIsShownAsItIs()
{
    const Host host;
    host.panel->AddColor(QColor(200, 0, 0, 1), Qt::red);
    host.panel->AddColor(QColor(200, 0, 0, 255), Qt::red);
    QCOMPARE(host.Swatches(), 2);
    QCOMPARE(host.ColorAt(0).alpha(), 1);
}

void tst_NVSelectColorRange::stripTakes256Colors()
{
    const Host host(Capacity - 1);
    SignalLog log(host.panel);

    host.panel->AddColor(ColorOf(255), ColorOf(255));
    QCOMPARE(host.Swatches(), 256);
    QCOMPARE(log.Entries(), QStringList({Chosen(255), "ColorListChanged()"}));
    log.Clear();

    host.panel->AddColor(Qt::magenta, Qt::magenta);
    QCOMPARE(host.Swatches(), 256);
    QCOMPARE(host.panel->GetSourceColors().size(), 256);
    QCOMPARE(host.panel->GetCurrentIndex(), 255);
    QCOMPARE(log.Entries(), QStringList());
}

void tst_NVSelectColorRange::swatchesArePackedToTheLeft()
{
    const Host host(5);
    QVERIFY(host.Show());
    const int step = host.Swatch(1)->x() - host.Swatch(0)->x();

    QVERIFY2(host.Swatch(0)->x() < 12, qPrintable(QString::number(host.Swatch(0)->x())));
    QVERIFY2(step > 16 && step < 26, qPrintable(QString::number(step)));
    for (int i = 0; i < 5; ++i)
    {
        QCOMPARE(host.Swatch(i)->x(), host.Swatch(0)->x() + i * step);
        QCOMPARE(host.Swatch(i)->size(), QSize(16, 16));
        QVERIFY(host.Area()->viewport()->rect().contains(
            QRect(host.Swatch(i)->mapTo(host.Area()->viewport(), QPoint()), QSize(16, 16))));
    }
}

void tst_NVSelectColorRange::sourcesAreInOrder()
{
    const Host host;
    QCOMPARE(host.panel->GetSourceColors(), QList<QColor>());
    for (int i = 0; i < 4; ++i)
        host.panel->AddColor(Qt::red, ColorOf(9 - i));

    QCOMPARE(host.panel->GetSourceColors(), QList<QColor>({ColorOf(9), ColorOf(8), ColorOf(7), ColorOf(6)}));
}

void tst_NVSelectColorRange::selectingMarksAndTells()
{
    const Host host(3);
    SignalLog log(host.panel);

    host.panel->SelectColor(1);

    QCOMPARE(log.Entries(), QStringList({Chosen(1)}));
    QCOMPARE(host.panel->GetCurrentIndex(), 1);
    QCOMPARE(host.Marked(), 1);
    QCOMPARE(host.Swatch(2)->frameStyle(), 0);
    QCOMPARE(host.Figures(), QString("1 254 7"));
    QVERIFY(host.Remove()->isEnabled());
}

void tst_NVSelectColorRange::selectingTheSameTellsNothing()
{
    const Host host(3);
    SignalLog log(host.panel);
    host.Remove()->setEnabled(false);

    host.panel->SelectColor(2);
    QVERIFY(host.Remove()->isEnabled());
    host.panel->SelectColor(-1);
    QCOMPARE(log.Entries(), QStringList({Chosen(-1)}));

    host.Remove()->setEnabled(true);
    host.panel->SelectColor(-1);
    QVERIFY(!host.Remove()->isEnabled());
    QCOMPARE(log.Count(), 1);
}

void tst_NVSelectColorRange::selectingNoneEmptiesTheFigures()
{
    const Host host(3);
    SignalLog log(host.panel);

    host.panel->SelectColor(-1);

    QCOMPARE(log.Entries(), QStringList({Chosen(-1)}));
    QCOMPARE(host.Marked(), -1);
    QCOMPARE(host.Figures(), QString("  "));
    QVERIFY(!host.Remove()->isEnabled());
    QVERIFY(host.RemoveAll()->isEnabled());
}

void tst_NVSelectColorRange::selectingWhatIsNotThereIsIgnored_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("behind the last") << 3;
    QTest::newRow("largest") << std::numeric_limits<int>::max();
    QTest::newRow("before none") << -2;
    QTest::newRow("lowest") << std::numeric_limits<int>::min();
}

void tst_NVSelectColorRange::selectingWhatIsNotThereIsIgnored()
{
    QFETCH(int, index);
    const Host host(3);
    SignalLog log(host.panel);

    host.panel->SelectColor(index);

    QCOMPARE(host.panel->GetCurrentIndex(), 2);
    QCOMPARE(host.Marked(), 2);
    QCOMPARE(log.Entries(), QStringList());
}

void tst_NVSelectColorRange::pressOnASwatchSelectsIt()
{
    const Host host(3);
    QVERIFY(host.Show());
    SignalLog log(host.panel);

    QTest::mousePress(host.Swatch(0), Qt::LeftButton);
    QCOMPARE(log.Entries(), QStringList({Chosen(0)}));
    QCOMPARE(host.Marked(), 0);
    QTest::mouseRelease(host.Swatch(0), Qt::LeftButton);
    host.ClickSwatch(0);
    host.ClickSwatch(1);

    QCOMPARE(log.Entries(), QStringList({Chosen(0), Chosen(1)}));
}

void tst_NVSelectColorRange::otherButtonsSelectNothing()
{
    const Host host(3);
    QVERIFY(host.Show());
    SignalLog log(host.panel);

    QTest::mouseClick(host.Swatch(0), Qt::RightButton);
    QTest::mouseClick(host.Swatch(0), Qt::MiddleButton);
    QTest::mouseRelease(host.Swatch(0), Qt::LeftButton);
    QTest::mouseMove(host.Swatch(1));

    QCOMPARE(log.Entries(), QStringList());
}

void tst_NVSelectColorRange::pressGoesOnToTheStrip()
{
    const Host host(3);
    QVERIFY(host.Show());
    class Counter : public QObject
    {
    public:
        bool eventFilter(QObject*, QEvent* event) override
        {
            presses += event->type() == QEvent::MouseButtonPress ? 1 : 0;
            return false;
        }
        int presses = 0;
    } counter;
    host.Area()->widget()->installEventFilter(&counter);

    QTest::mousePress(host.Swatch(0), Qt::LeftButton);

    QCOMPARE(counter.presses, 1);
}

void tst_NVSelectColorRange::pressOnARemovedSwatchSelectsNone()
{
    const Host host(3);
    QVERIFY(host.Show());
    const QPointer<QLabel> removed = host.Swatch(2);
    host.Click("m_pRemove");
    QVERIFY(removed);
    SignalLog log(host.panel);

    QMouseEvent press(QEvent::MouseButtonPress, QPointF(5, 5), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(removed, &press);

    QCOMPARE(log.Entries(), QStringList({Chosen(-1)}));
}

void tst_NVSelectColorRange::farSwatchScrollsIntoView()
{
    const Host host(100);
    QVERIFY(host.Show());
    const int width = host.Area()->viewport()->width();
    const auto right = [&host](int index) { return host.Grid()->cellRect(0, index).right(); };
    QCOMPARE(right(60), host.Swatch(60)->geometry().right());
    host.panel->SelectColor(0);
    // The left edge is no nearer than the room that is left at the right.
    QCOMPARE(host.Bar()->value(), 0);

    host.panel->SelectColor(60);
    QCOMPARE(host.Bar()->value(), right(60) + 32 - width);
    host.panel->SelectColor(61);
    QCOMPARE(host.Bar()->value(), right(61) + 32 - width);
    host.panel->SelectColor(20);
    QCOMPARE(host.Bar()->value(), qMax(0, right(20) + 32 - width));
    host.panel->SelectColor(99);
    QCOMPARE(host.Bar()->value(), host.Bar()->maximum());
}

void tst_NVSelectColorRange::clickedSwatchAtTheEdgeScrollsIntoView()
{
    const Host host(100);
    QVERIFY(host.Show());
    const int width = host.Area()->viewport()->width();
    QTest::keyClick(host.Bar(), Qt::Key_Home);
    QCOMPARE(host.Bar()->value(), 0);
    int last = 0;
    while (host.Swatch(last + 1)->geometry().right() < width)
        ++last;

    QTest::mouseClick(host.panel->windowHandle(), Qt::LeftButton, {},
                      host.Swatch(last)->mapTo(host.panel, QPoint(8, 8)));

    QCOMPARE(host.panel->GetCurrentIndex(), last);
    QCOMPARE(host.Bar()->value(), host.Grid()->cellRect(0, last).right() + 32 - width);
    QVERIFY(host.Bar()->value() > 0);
}

void tst_NVSelectColorRange::addedSwatchScrollsIntoViewAtOnce()
{
    const Host host;
    QVERIFY(host.Show());
    const int width = host.Area()->viewport()->width();
    int before = -1;
    for (int i = 0; i < Capacity; ++i)
    {
        host.panel->AddColor(ColorOf(i), ColorOf(i));
        QVERIFY(host.Swatch(i)->x() > before);
        before = host.Swatch(i)->x();
        const int left = host.Swatch(i)->mapTo(host.Area()->viewport(), QPoint()).x();
        QVERIFY2(left >= 0 && left + 16 <= width, qPrintable(QString("%1 at %2").arg(i).arg(left)));
    }
    QCOMPARE(host.Swatch(255)->x() - host.Swatch(0)->x(), 255 * (host.Swatch(1)->x() - host.Swatch(0)->x()));
}

void tst_NVSelectColorRange::visibleSwatchScrollsNothing()
{
    const Host host(100);
    QVERIFY(host.Show());
    host.Bar()->setValue(500);
    const int width = host.Area()->viewport()->width();
    const auto end = [&host](int index) { return host.Grid()->cellRect(0, index).right() + 32; };
    int first = 0;
    while (end(first) < 500)
        ++first;
    int last = first;
    while (end(last + 1) <= 500 + width)
        ++last;

    host.panel->SelectColor(first);
    QCOMPARE(host.Bar()->value(), 500);
    host.panel->SelectColor(last);
    QCOMPARE(host.Bar()->value(), 500);
    host.panel->SelectColor(last + 1);
    QCOMPARE(host.Bar()->value(), end(last + 1) - width);
    host.Bar()->setValue(500);
    host.panel->SelectColor(first - 1);
    QCOMPARE(host.Bar()->value(), qMax(0, end(first - 1) - width));
}

void tst_NVSelectColorRange::removingTheLastOfThree()
{
    const Host host(3);
    QVERIFY(host.Show());

    host.Click("m_pRemove");

    QCOMPARE(host.panel->GetCurrentIndex(), 1);
    QCOMPARE(host.Marked(), 1);
    QCOMPARE(host.panel->GetSourceColors(), QList<QColor>({ColorOf(0), ColorOf(1)}));
    QCOMPARE(host.Swatches(), 2);
}

void tst_NVSelectColorRange::removingTheFirstOfThree()
{
    const Host host(3);
    QVERIFY(host.Show());
    host.panel->SelectColor(0);

    host.Click("m_pRemove");

    QCOMPARE(host.panel->GetCurrentIndex(), 0);
    QCOMPARE(host.Marked(), 0);
    QCOMPARE(host.ColorAt(0), ColorOf(1));
    QCOMPARE(host.ColorAt(1), ColorOf(2));
    QVERIFY(!host.Swatch(2));
    QCOMPARE(host.panel->GetSourceColors(), QList<QColor>({ColorOf(1), ColorOf(2)}));
}

void tst_NVSelectColorRange::removingInTheMiddle()
{
    const Host host(5);
    QVERIFY(host.Show());
    const QRect place = host.Swatch(2)->geometry();
    host.panel->SelectColor(2);

    host.Click("m_pRemove");
    QCoreApplication::processEvents();

    QCOMPARE(host.Marked(), 2);
    QCOMPARE(host.ColorAt(2), ColorOf(3));
    QCOMPARE(host.ColorAt(3), ColorOf(4));
    QTRY_COMPARE(host.Swatch(2)->geometry(), place);
    // Its click finds the new place.
    host.ClickSwatch(3);
    QCOMPARE(host.panel->GetCurrentIndex(), 3);
    QCOMPARE(host.Figures(), QString("4 251 7"));
}

void tst_NVSelectColorRange::removingTheOnlyOne()
{
    const Host host(1);
    QVERIFY(host.Show());
    SignalLog log(host.panel);

    host.Click("m_pRemove");

    QCOMPARE(log.Entries(), QStringList({"ColorListChanged()"}));
    QCOMPARE(host.panel->GetCurrentIndex(), -1);
    QCOMPARE(host.panel->GetSourceColors(), QList<QColor>());
    QVERIFY(!host.RemoveAll()->isEnabled());
    // On purpose.
    QVERIFY(host.Remove()->isEnabled());
    QCOMPARE(host.Figures(), QString("0 255 7"));
}

void tst_NVSelectColorRange::removingTellsOfTheListAlone()
{
    const Host host(3);
    QVERIFY(host.Show());
    host.panel->SelectColor(1);
    SignalLog log(host.panel);
    bool enabledWhenTold = false;
    host.RemoveAll()->setEnabled(false);
    connect(host.panel, &NVSelectColorRange::ColorListChanged, this,
            [&] { enabledWhenTold = host.RemoveAll()->isEnabled(); });

    host.Click("m_pRemove");
    QCOMPARE(log.Entries(), QStringList({"ColorListChanged()"}));
    QVERIFY(!enabledWhenTold);
    QVERIFY(host.RemoveAll()->isEnabled());
    QCOMPARE(host.Figures(), QString("1 254 7"));

    // The figures stay even when the marked colour is clicked, which is selected already.
    host.ClickSwatch(1);
    QCOMPARE(host.Figures(), QString("1 254 7"));
    host.ClickSwatch(0);
    QCOMPARE(host.Figures(), QString("0 255 7"));
}

void tst_NVSelectColorRange::removingWithoutASelection()
{
    const Host host(2);
    QVERIFY(host.Show());
    host.panel->SelectColor(-1);
    host.Remove()->setEnabled(true);
    host.RemoveAll()->setEnabled(false);
    SignalLog log(host.panel);

    host.Click("m_pRemove");

    QCOMPARE(log.Entries(), QStringList());
    QCOMPARE(host.Swatches(), 2);
    QVERIFY(host.RemoveAll()->isEnabled());
}

void tst_NVSelectColorRange::removingFromAnEmptyStripDisablesRemoveAllOnly()
{
    const Host host;
    QVERIFY(host.Show());
    SignalLog log(host.panel);

    host.Click("m_pRemove");

    QCOMPARE(log.Entries(), QStringList());
    QVERIFY(host.Remove()->isEnabled());
    QVERIFY(!host.RemoveAll()->isEnabled());
}

void tst_NVSelectColorRange::removedSwatchDiesLater()
{
    const Host host(2);
    QVERIFY(host.Show());
    const QPointer<QLabel> removed = host.Swatch(1);

    host.Click("m_pRemove");
    QVERIFY(removed);
    RunDeferredDeletes();

    QVERIFY(!removed);
    QCOMPARE(host.Area()->widget()->findChildren<QLabel*>().size(), 1);
}

void tst_NVSelectColorRange::removeAllEmptiesTheStrip()
{
    const Host host(4);
    QVERIFY(host.Show());
    SignalLog log(host.panel);

    host.Click("m_pRemoveAll");

    QCOMPARE(log.Entries(), QStringList({"ColorListChanged()"}));
    QCOMPARE(host.Swatches(), 0);
    QCOMPARE(host.panel->GetCurrentIndex(), -1);
    QCOMPARE(host.panel->GetSourceColors(), QList<QColor>());
    QVERIFY(!host.Remove()->isEnabled());
    QVERIFY(!host.RemoveAll()->isEnabled());
    QCOMPARE(host.Figures(), QString("3 252 7"));
    RunDeferredDeletes();
    QCOMPARE(host.Area()->widget()->findChildren<QLabel*>().size(), 0);

    host.panel->AddColor(Qt::red, Qt::red);
    QCOMPARE(host.Marked(), 0);
    QVERIFY(host.Remove()->isEnabled());
    QVERIFY(host.RemoveAll()->isEnabled());
}

void tst_NVSelectColorRange::fullStripLosesBothEndsAndTheMiddle()
{
    const Host host(Capacity);
    QVERIFY(host.Show());
    QList<QColor> expected = host.panel->GetSourceColors();
    for (const int index : {255, 0, 127, 252})
    {
        host.panel->SelectColor(index);
        host.Click("m_pRemove");
        expected.removeAt(index);

        QCOMPARE(host.panel->GetSourceColors(), expected);
        QCOMPARE(host.Swatches(), expected.size());
        QCOMPARE(host.Marked(), qMin(index, expected.size() - 1));
        for (int i = 0; i < expected.size(); ++i)
            QCOMPARE(host.ColorAt(i), expected.at(i));
    }
    QCOMPARE(expected.size(), 252);
    for (int i = 0; i < 5; ++i)
        host.panel->AddColor(QColor(i, i, 200), Qt::black);
    QCOMPARE(host.Swatches(), 256);
    QCOMPARE(host.ColorAt(255), QColor(3, 3, 200));
}

void tst_NVSelectColorRange::randomSequencesMatchAPlainList_data()
{
    QTest::addColumn<int>("seed");
    for (int seed = 1; seed <= 10; ++seed)
        QTest::addRow("seed %d", seed) << seed;
}

void tst_NVSelectColorRange::randomSequencesMatchAPlainList()
{
    QFETCH(int, seed);
    std::mt19937 random(static_cast<unsigned>(seed));
    const auto pick = [&random](int below)
    { return static_cast<int>(random() % static_cast<unsigned>(below)); };
    const Host host;
    QVERIFY(host.Show());
    SignalLog log(host.panel);
    QList<QColor> colors;
    int current = -1;
    for (int step = 0; step < 400; ++step)
    {
        QStringList expected;
        log.Clear();
        const int action = pick(20);
        if (action < 10)
        {
            const QColor color = ColorOf(pick(60));
            host.panel->AddColor(color, color);
            if (!colors.contains(color))
            {
                colors.append(color);
                current = colors.size() - 1;
                expected = QStringList({Chosen(current), "ColorListChanged()"});
            }
        }
        else if (action < 14)
        {
            const int index = pick(colors.size() + 1) - 1;
            if (index != current)
                expected = QStringList({Chosen(index)});
            current = index;
            if (index == -1 || pick(2) == 0)
                host.panel->SelectColor(index);
            else
                host.ClickSwatch(index);
        }
        else if (action < 19 && host.Remove()->isEnabled())
        {
            host.Click("m_pRemove");
            if (current != -1)
            {
                colors.removeAt(current);
                current = qMin(current, colors.size() - 1);
                expected = QStringList({"ColorListChanged()"});
            }
        }
        else if (action == 19 && pick(4) == 0 && host.RemoveAll()->isEnabled())
        {
            host.Click("m_pRemoveAll");
            colors.clear();
            current = -1;
            expected = QStringList({"ColorListChanged()"});
        }

        QCOMPARE(log.Entries(), expected);
        QCOMPARE(host.panel->GetSourceColors(), colors);
        QCOMPARE(host.panel->GetCurrentIndex(), current);
        QCOMPARE(host.Marked(), current);
        QCOMPARE(host.Swatches(), colors.size());
        for (int i = 0; i < colors.size(); ++i)
            QCOMPARE(host.ColorAt(i), colors.at(i));
    }
}

void tst_NVSelectColorRange::chosenColorIsAdded()
{
    const Host host(1);
    QVERIFY(host.Show());
    SignalLog log(host.panel);
    ModalDriver driver(
        [&host](QWidget* dialog)
        {
            QCOMPARE(dialog->windowTitle(), QString("Choose a color"));
            QCOMPARE(dialog->parentWidget(), host.panel);
            qobject_cast<KXColorDlg*>(dialog)->SetCurrentColor(QColor(9, 8, 7, 120));
            ModalDriver::Press(dialog, "OK");
        });

    host.Click("m_pChooseColor");

    QVERIFY(driver.Finished());
    QCOMPARE(log.Entries(), QStringList({Chosen(1), "ColorListChanged()"}));
    QCOMPARE(host.panel->GetSourceColors().last(), QColor(9, 8, 7, 120));
    QCOMPARE(host.ColorAt(1).alpha(), 120);
    QCOMPARE(host.Figures(), QString("9 8 7"));
}

void tst_NVSelectColorRange::cancelledChoiceAddsNothing_data()
{
    QTest::addColumn<int>("way");
    QTest::newRow("cancel") << 0;
    QTest::newRow("escape") << 1;
    QTest::newRow("window closed") << 2;
}

void tst_NVSelectColorRange::cancelledChoiceAddsNothing()
{
    QFETCH(int, way);
    const Host host(1);
    QVERIFY(host.Show());
    SignalLog log(host.panel);
    ModalDriver driver(
        [way](QWidget* dialog)
        {
            qobject_cast<KXColorDlg*>(dialog)->SetCurrentColor(QColor(9, 8, 7));
            if (way == 0)
                ModalDriver::Press(dialog, "Cancel");
            else if (way == 1)
                ModalDriver::PressKey(dialog, Qt::Key_Escape);
            else
                ModalDriver::CloseWindow(dialog);
        });

    host.Click("m_pChooseColor");

    QVERIFY(driver.Finished());
    QCOMPARE(log.Entries(), QStringList());
    QCOMPARE(host.Swatches(), 1);
    QVERIFY(host.panel->isVisible());
}

void tst_NVSelectColorRange::okAcceptsAndCancelRejects()
{
    const Host host(1);
    SignalLog log(host.panel);
    for (const auto button : {QDialogButtonBox::Ok, QDialogButtonBox::Cancel})
    {
        QVERIFY(host.Show());
        QTest::mouseClick(host.Find<QDialogButtonBox>("m_pButtonBox")->button(button), Qt::LeftButton);
        QVERIFY(!host.panel->isVisible());
    }
    QCOMPARE(log.Entries(), QStringList({"Accepted()", "Rejected()"}));
}

// No swatch that stands is moved by one that comes.
void tst_NVSelectColorRange::addingLaysTheStripOutOnce()
{
    const Host host(40);
    QVERIFY(host.Show());
    class Counter : public QObject
    {
    public:
        bool eventFilter(QObject*, QEvent* event) override
        {
            moves += event->type() == QEvent::Move ? 1 : 0;
            return false;
        }
        int moves = 0;
    } counter;
    for (int i = 0; i < 40; ++i)
        host.Swatch(i)->installEventFilter(&counter);

    for (int i = 40; i < 60; ++i)
        host.panel->AddColor(ColorOf(i), ColorOf(i));
    QCoreApplication::processEvents();

    QCOMPARE(counter.moves, 0);
    QVERIFY(host.Swatch(59)->isVisible());
}

void tst_NVSelectColorRange::swatchesStandOnADenseScreen()
{
    if (!IsOnDenseScreen())
        return;
    const Host host(100);
    QVERIFY(host.Show());
    host.panel->SelectColor(60);

    QCOMPARE(host.Bar()->value(),
             host.Grid()->cellRect(0, 60).right() + 32 - host.Area()->viewport()->width());
    const QImage drawn = host.Swatch(59)->grab().toImage();
    QCOMPARE(drawn.size(), QSize(32, 32));
    QCOMPARE(drawn.pixelColor(0, 0), ColorOf(59));
    QCOMPARE(drawn.pixelColor(31, 31), ColorOf(59));
    host.ClickSwatch(58);
    QCOMPARE(host.panel->GetCurrentIndex(), 58);
}

void tst_NVSelectColorRange::diesInItsOwnSignals_data()
{
    QTest::addColumn<QString>("signal");
    QTest::addColumn<QString>("action");
    QTest::newRow("selected by a press") << "selected"
                                         << "press";
    QTest::newRow("selected by adding") << "selected"
                                        << "add";
    QTest::newRow("list changed by adding") << "list"
                                            << "add";
    QTest::newRow("list changed by removing") << "list"
                                              << "remove";
    QTest::newRow("list changed by removing all") << "list"
                                                  << "remove all";
}

void tst_NVSelectColorRange::diesInItsOwnSignals()
{
    QFETCH(QString, signal);
    QFETCH(QString, action);
    const Host host(3);
    QVERIFY(host.Show());
    NVSelectColorRange* panel = host.panel;
    if (signal == "selected")
        connect(panel, &NVSelectColorRange::ColorSelected, this, [panel] { delete panel; });
    else
        connect(panel, &NVSelectColorRange::ColorListChanged, this, [panel] { delete panel; });

    if (action == "press")
        QTest::mousePress(panel->windowHandle(), Qt::LeftButton, {},
                          host.Swatch(0)->mapTo(panel, QPoint(8, 8)));
    else if (action == "add")
        panel->AddColor(Qt::magenta, Qt::magenta);
    else
        host.Find<QPushButton>(action == "remove" ? "m_pRemove" : "m_pRemoveAll")->click();
    QCoreApplication::processEvents();

    QVERIFY(!host.panel);
}

void tst_NVSelectColorRange::diesUnderItsColorDialog()
{
    const Host host(1);
    QVERIFY(host.Show());
    ModalDriver driver([&host](QWidget*) { delete host.panel; });

    QMetaObject::invokeMethod(host.panel, "OnChooseColor");

    QVERIFY(driver.Finished());
    QVERIFY(!host.panel);
}

void tst_NVSelectColorRange::diesWithSwatchesOnTheirWay()
{
    const Host host(3);
    QVERIFY(host.Show());
    const QPointer<QLabel> removed = host.Swatch(2);
    host.Click("m_pRemove");

    delete host.panel;
    RunDeferredDeletes();

    QVERIFY(!removed);
}

void tst_NVSelectColorRange::diesWhileASwatchIsPressed()
{
    const Host host(3);
    QVERIFY(host.Show());
    QTest::mousePress(host.Swatch(1), Qt::LeftButton);

    delete host.panel;
    QCoreApplication::processEvents();

    QVERIFY(!host.panel);
}

NV_TEST_MAIN(tst_NVSelectColorRange)

#include "tst_NVSelectColorRange.moc"
