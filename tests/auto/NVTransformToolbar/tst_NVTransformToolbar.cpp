// The option bar of free transform: its form, its read-outs, its reference point and its two buttons.

#include <QCheckBox>
#include <QDoubleValidator>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QtTest>

#include "BarForm.h"
#include "NVTransformToolbar.h"
#include "SignalLog.h"
#include "TestMain.h"

using Control = TransformationCenterPointControl;
using Setter = void (NVTransformToolbar::*)(const QString&);
Q_DECLARE_METATYPE(Setter)

namespace
{

const char* const ReadOuts[] = {"m_pX", "m_pY", "m_pWidth", "m_pHeight", "m_pAngle", "m_pHSkew", "m_pVSkew"};

BarControl Made(const char* className, const char* name, const char* toolTip)
{
    BarControl control;
    control.ClassName = className;
    control.Name = name;
    return control.ToolTip(toolTip);
}

BarControl Caption(const char* name, const char* text, const char* toolTip, const char* buddy,
                   Qt::TextFormat format = Qt::AutoText)
{
    return BarControl::Caption(name, text, buddy).ToolTip(toolTip).With("textFormat", int(format));
}

BarControl ReadOut(const char* name, const char* toolTip)
{
    BarControl control = Made("QLineEdit", name, toolTip);
    control.With("readOnly", true).With("text", QString()).With("enabled", true);
    control.With("minimumSize", QSize(0, 24)).With("maximumSize", QSize(80, 24));
    return control.Focus(Qt::NoFocus);
}

BarControl Button(const char* name, const char* toolTip)
{
    BarControl control = Made("QPushButton", name, toolTip);
    control.With("text", QString()).With("iconSize", QSize(16, 16)).With("accessibleName", QString(toolTip));
    return control.With("checkable", false).FixedSize(24, 24).Focus(Qt::NoFocus);
}

QList<BarControl> Controls()
{
    BarControl point =
        Made("TransformationCenterPointControl", "m_pCenterTransform", "Set reference point location");
    point.FixedSize(40, 40).With("accessibleName", QString("Set reference point location"));
    BarControl ratio = Made("QCheckBox", "m_pAspectRatio", "Maintain aspect ratio");
    ratio.With("text", QString()).With("checked", false).With("enabled", false).Focus(Qt::NoFocus);
    ratio.With("accessibleName", QString("Maintain aspect ratio"));
    return {point,
            BarControl::Separator("frame_4"),
            Caption("m_pXReferenceLbl", "X:", "Horizontal position of reference point", "m_pX"),
            ReadOut("m_pX", "Set horizontal position"),
            Caption("m_pYReferenceLbl", "Y:", "Vertical position of reference point", "m_pY"),
            ReadOut("m_pY", "Set vertical position"),
            BarControl::Separator("frame_6"),
            Caption("m_pHScaleLbl", "W:", "Horizontal scale", "m_pWidth"),
            ReadOut("m_pWidth", "Set horizontal scale"),
            Caption("m_pVScaleLbl", "H:", "Vertical scale", "m_pHeight"),
            ReadOut("m_pHeight", "Set vertical scale"),
            ratio,
            BarControl::Separator("frame_7"),
            Caption("m_pAngleLbl", "A:", "Rotation angle", "m_pAngle"),
            ReadOut("m_pAngle", "Set rotation"),
            Caption("m_pHSkewLbl", "H:", "Horizontal skew", "m_pHSkew", Qt::RichText),
            ReadOut("m_pHSkew", "Set horizontal skew"),
            Caption("m_pVSkewLbl", "V:", "Vertical skew", "m_pVSkew"),
            ReadOut("m_pVSkew", "Set vertical skew"),
            BarControl::Separator("frame_8"),
            Button("m_pCommit", "Apply the transformation"),
            Button("m_pCancel", "Cancel the transformation"),
            BarControl::Separator("frame_5")};
}

BarForm Form()
{
    return BarForm(
        [] { return new NVTransformToolbar(nullptr); }, "TransformToolBar", "Form", "", Controls(),
        {"m_pX", "m_pY", "m_pWidth", "m_pHeight", "m_pAspectRatio", "m_pAngle", "m_pHSkew", "m_pVSkew"});
}

template <class T>
T* Find(const QWidget& bar, const char* name)
{
    T* control = bar.findChild<T*>(name);
    if (!control)
        qFatal("no control %s", name);
    return control;
}

// A bar above a canvas that has the focus.
struct Shown
{
    Shown()
    {
        canvas->setFocusPolicy(Qt::StrongFocus);
        window.setCentralWidget(canvas);
        window.setMenuWidget(bar);
        window.resize(1000, 200);
        window.show();
        canvas->setFocus();
    }
    bool IsActive() { return QTest::qWaitForWindowActive(&window) && canvas->hasFocus(); }

    QMainWindow window;
    QWidget* canvas = new QWidget;
    NVTransformToolbar* bar = new NVTransformToolbar(&window);
};

} // namespace

class tst_NVTransformToolbar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void formHasItsTitleNameAndLayouts();
    void controlsAndGapsStandInTheirOrder();
    void controlHasItsFacts_data() { Form().AddControlRows(); }
    void controlHasItsFacts() { Form().CheckControl(); }
    void tabOrderIsThatOfTheReadOuts() { Form().CheckTabOrder(); }
    void textsAreTranslatedUnderTheFormsName() { Form().CheckTranslation(); }
    void anotherLanguageLeavesItAsItIs() { Form().CheckLanguageChange(); }
    void buttonShowsItsPicture_data();
    void buttonShowsItsPicture();
    void hasNoPictureLabel();

    void signalsStandInTheirOrder();
    void slotsAreThere_data();
    void slotsAreThere();
    void startsEmptyAboutTheMiddle();
    void readOutHasItsRange_data();
    void readOutHasItsRange();
    void rangesAreChildrenInTheirOrder();
    void readOutTakesAnyText_data();
    void readOutTakesAnyText();
    void readOutsAreApart();
    void clickOnAReadOutGivesNoFocus();
    void nothingCanBeTyped();
    void aspectRatioStaysDisabled();
    void buttonTells_data();
    void buttonTells();
    void referencePointTellsTwiceAChange();
    void clickedReferencePointTellsTheSame();
    void valueIsStillTheOldOneInTheFirstSignal();
    void referencePointThatIsNoneIsTheUpperLeft();
    void signalArrivesWithItsType();
    void diesInItsOwnSignals_data();
    void diesInItsOwnSignals();
};

void tst_NVTransformToolbar::formHasItsTitleNameAndLayouts()
{
    const NVTransformToolbar bar(nullptr);

    QCOMPARE(bar.objectName(), QString("TransformToolBar"));
    QCOMPARE(bar.windowTitle(), QString("Form"));
    const auto* grid = qobject_cast<QGridLayout*>(bar.layout());
    QVERIFY(grid);
    QCOMPARE(grid->objectName(), QString("gridLayout_2"));
    QCOMPARE(grid->contentsMargins(), QMargins());
    QCOMPARE(grid->count(), 1);
    const auto* row = qobject_cast<QHBoxLayout*>(grid->itemAtPosition(0, 0)->layout());
    QVERIFY(row);
    QCOMPARE(row->objectName(), QString("horizontalLayout"));
    QCOMPARE(row->spacing(), 2);
    QCOMPARE(row->sizeConstraint(), QLayout::SetNoConstraint);
}

void tst_NVTransformToolbar::controlsAndGapsStandInTheirOrder()
{
    const NVTransformToolbar bar(nullptr);
    const auto* row = bar.findChild<QHBoxLayout*>("horizontalLayout");

    QStringList is;
    for (int i = 0; i < row->count() - 1; ++i)
    {
        const QSpacerItem* gap = row->itemAt(i)->spacerItem();
        is << (gap ? QString("-") : row->itemAt(i)->widget()->objectName());
        if (gap)
        {
            QCOMPARE(gap->sizeHint(), QSize(6, 20));
            QCOMPARE(gap->sizePolicy().horizontalPolicy(), QSizePolicy::Fixed);
            QCOMPARE(gap->sizePolicy().verticalPolicy(), QSizePolicy::Minimum);
        }
    }
    QStringList wanted;
    const QList<BarControl> controls = Controls();
    for (int i = 0; i < controls.size(); ++i)
    {
        if (i > 0 && controls[i - 1].Buddy != controls[i].Name)
            wanted << "-";
        wanted << controls[i].Name;
    }

    QCOMPARE(is, wanted);
    const QSpacerItem* end = row->itemAt(row->count() - 1)->spacerItem();
    QVERIFY(end);
    QCOMPARE(end->sizeHint(), QSize(0, 0));
    QCOMPARE(end->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    QCOMPARE(end->sizePolicy().verticalPolicy(), QSizePolicy::Minimum);
}

void tst_NVTransformToolbar::buttonShowsItsPicture_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QString>("picture");

    QTest::newRow("apply") << QByteArray("m_pCommit") << "theme:commit_btn1.png";
    QTest::newRow("cancel") << QByteArray("m_pCancel") << "theme:cancel_btn1.png";
}

void tst_NVTransformToolbar::buttonShowsItsPicture()
{
    QFETCH(const QByteArray, button);
    QFETCH(const QString, picture);
    const NVTransformToolbar bar(nullptr);

    const QImage shown = Find<QPushButton>(bar, button)->icon().pixmap(16, 16).toImage();

    QVERIFY(!shown.isNull());
    QCOMPARE(shown, QIcon(picture).pixmap(16, 16).toImage());
}

void tst_NVTransformToolbar::hasNoPictureLabel()
{
    const NVTransformToolbar bar(nullptr);

    const auto labels = bar.findChildren<QLabel*>();
    QCOMPARE(labels.size(), 7);
    for (const QLabel* label : labels)
        QVERIFY(label->pixmap(Qt::ReturnByValue).isNull());
}

void tst_NVTransformToolbar::signalsStandInTheirOrder()
{
    const QMetaObject& meta = NVTransformToolbar::staticMetaObject;
    QStringList is;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
    {
        if (meta.method(i).methodType() == QMetaMethod::Signal)
            is << meta.method(i).methodSignature();
    }

    const QString state = "(TransformationCenterPointControl::ControlState)";
    QCOMPARE(is,
             QStringList({"Commit()", "Cancel()", "TransformationCenterChange" + state,
                          "TransformationCenterChanged" + state}));
}

void tst_NVTransformToolbar::slotsAreThere_data()
{
    QTest::addColumn<QByteArray>("signature");
    for (const char* signature :
         {"SetX(QString)", "SetY(QString)", "SetWidth(QString)", "SetHeight(QString)", "SetAngle(QString)",
          "SetHorizontalSkew(QString)", "SetVerticalSkew(QString)",
          "SetTransformationCenter(TransformationCenterPointControl::ControlState)"})
        QTest::newRow(signature) << QByteArray(signature);
}

void tst_NVTransformToolbar::slotsAreThere()
{
    QFETCH(const QByteArray, signature);

    QVERIFY(NVTransformToolbar::staticMetaObject.indexOfSlot(signature) >= 0);
}

void tst_NVTransformToolbar::startsEmptyAboutTheMiddle()
{
    const NVTransformToolbar bar(nullptr);

    QCOMPARE(bar.GetTransformationCenter(), Control::Center);
    for (const char* name : ReadOuts)
        QCOMPARE(Find<QLineEdit>(bar, name)->text(), QString());
}

void tst_NVTransformToolbar::readOutHasItsRange_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<double>("bottom");
    QTest::addColumn<double>("top");

    QTest::newRow("angle") << QByteArray("m_pAngle") << -180.0 << 180.0;
    QTest::newRow("x") << QByteArray("m_pX") << -100000.0 << 100000.0;
    QTest::newRow("y") << QByteArray("m_pY") << -100000.0 << 100000.0;
    QTest::newRow("horizontal skew") << QByteArray("m_pHSkew") << -89.99 << 89.99;
    QTest::newRow("vertical skew") << QByteArray("m_pVSkew") << -89.99 << 89.99;
    QTest::newRow("width") << QByteArray("m_pWidth") << 0.0 << 0.0;
    QTest::newRow("height") << QByteArray("m_pHeight") << 0.0 << 0.0;
}

void tst_NVTransformToolbar::readOutHasItsRange()
{
    QFETCH(const QByteArray, name);
    QFETCH(const double, bottom);
    QFETCH(const double, top);
    const NVTransformToolbar bar(nullptr);

    const QValidator* validator = Find<QLineEdit>(bar, name)->validator();

    if (bottom == top)
    {
        QVERIFY(!validator);
        return;
    }
    const auto* range = qobject_cast<const QDoubleValidator*>(validator);
    QVERIFY(range);
    QCOMPARE(range->bottom(), bottom);
    QCOMPARE(range->top(), top);
    QCOMPARE(range->decimals(), 2);
    QCOMPARE(range->parent(), &bar);
}

void tst_NVTransformToolbar::rangesAreChildrenInTheirOrder()
{
    const NVTransformToolbar bar(nullptr);
    const auto validators = bar.findChildren<QValidator*>(QString(), Qt::FindDirectChildrenOnly);

    QCOMPARE(validators.size(), 5);
    const char* const names[] = {"m_pAngle", "m_pX", "m_pY", "m_pHSkew", "m_pVSkew"};
    for (int i = 0; i < 5; ++i)
        QCOMPARE(Find<QLineEdit>(bar, names[i])->validator(), validators[i]);
}

void tst_NVTransformToolbar::readOutTakesAnyText_data()
{
    QTest::addColumn<Setter>("setter");
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("text");

    const QPair<Setter, QByteArray> all[] = {{&NVTransformToolbar::SetX, "m_pX"},
                                             {&NVTransformToolbar::SetY, "m_pY"},
                                             {&NVTransformToolbar::SetWidth, "m_pWidth"},
                                             {&NVTransformToolbar::SetHeight, "m_pHeight"},
                                             {&NVTransformToolbar::SetAngle, "m_pAngle"},
                                             {&NVTransformToolbar::SetHorizontalSkew, "m_pHSkew"},
                                             {&NVTransformToolbar::SetVerticalSkew, "m_pVSkew"}};
    for (const auto& readOut : all)
    {
        for (const char* text : {"12.5", "-9999999", "1 234,5 \u00b0", "one half", "<b>%1</b>", ""})
            QTest::addRow("%s \"%s\"", readOut.second.constData(), text)
                << readOut.first << readOut.second << QString::fromUtf8(text);
    }
}

void tst_NVTransformToolbar::readOutTakesAnyText()
{
    QFETCH(const Setter, setter);
    QFETCH(const QByteArray, name);
    QFETCH(const QString, text);
    NVTransformToolbar bar(nullptr);
    (bar.*setter)("before");
    auto* edit = Find<QLineEdit>(bar, name);
    SignalLog log(&bar);
    SignalLog ofEdit(edit);

    (bar.*setter)(text);
    (bar.*setter)(text);

    QCOMPARE(edit->text(), text);
    QCOMPARE(edit->displayText(), text);
    QCOMPARE(ofEdit.Count("textChanged"), 1);
    QCOMPARE(log.Count(), 0);
}

void tst_NVTransformToolbar::readOutsAreApart()
{
    NVTransformToolbar bar(nullptr);

    bar.SetX("1");
    bar.SetY("2");
    bar.SetWidth("3");
    bar.SetHeight("4");
    bar.SetAngle("5");
    bar.SetHorizontalSkew("6");
    bar.SetVerticalSkew("7");

    QString all;
    for (const char* name : ReadOuts)
        all += Find<QLineEdit>(bar, name)->text();
    QCOMPARE(all, QString("1234567"));
}

void tst_NVTransformToolbar::clickOnAReadOutGivesNoFocus()
{
    Shown it;
    QVERIFY(it.IsActive());

    for (const char* name : ReadOuts)
    {
        QTest::mouseClick(Find<QLineEdit>(*it.bar, name), Qt::LeftButton);
        QVERIFY(it.canvas->hasFocus());
    }
    QTest::mouseClick(Find<QPushButton>(*it.bar, "m_pCommit"), Qt::LeftButton);
    QVERIFY(it.canvas->hasFocus());
}

void tst_NVTransformToolbar::nothingCanBeTyped()
{
    Shown it;
    QVERIFY(it.IsActive());
    it.bar->SetX("12");

    for (const char* name : ReadOuts)
    {
        auto* edit = Find<QLineEdit>(*it.bar, name);
        const QString before = edit->text();
        QTest::mouseDClick(edit, Qt::LeftButton);
        QTest::keyClicks(edit, "77");
        QTest::keyClick(edit, Qt::Key_Backspace);
        QTest::keyClick(edit, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(edit->text(), before);
    }
}

void tst_NVTransformToolbar::aspectRatioStaysDisabled()
{
    Shown it;
    QVERIFY(it.IsActive());
    auto* ratio = Find<QCheckBox>(*it.bar, "m_pAspectRatio");
    SignalLog log(it.bar);

    QTest::mouseClick(ratio, Qt::LeftButton);
    QVERIFY(!ratio->isChecked() && !ratio->isEnabled());

    // Nobody listens to it.
    ratio->setChecked(true);
    QCOMPARE(log.Count(), 0);
}

void tst_NVTransformToolbar::buttonTells_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QString>("signal");

    QTest::newRow("apply") << QByteArray("m_pCommit") << "Commit()";
    QTest::newRow("cancel") << QByteArray("m_pCancel") << "Cancel()";
}

void tst_NVTransformToolbar::buttonTells()
{
    QFETCH(const QByteArray, button);
    QFETCH(const QString, signal);
    Shown it;
    QVERIFY(it.IsActive());
    SignalLog log(it.bar);

    QTest::mouseClick(Find<QPushButton>(*it.bar, button), Qt::LeftButton);

    QCOMPARE(log.Entries(), QStringList{signal});
}

void tst_NVTransformToolbar::referencePointTellsTwiceAChange()
{
    NVTransformToolbar bar(nullptr);
    SignalLog log(&bar);

    bar.SetTransformationCenter(Control::Center);
    QCOMPARE(log.Count(), 0);
    bar.SetTransformationCenter(Control::BottomLeft);
    bar.SetTransformationCenter(Control::BottomLeft);

    QCOMPARE(bar.GetTransformationCenter(), Control::BottomLeft);
    QCOMPARE(
        log.Entries(),
        QStringList({"TransformationCenterChange(BottomLeft)", "TransformationCenterChanged(BottomLeft)"}));
}

void tst_NVTransformToolbar::clickedReferencePointTellsTheSame()
{
    Shown it;
    QVERIFY(it.IsActive());
    auto* point = Find<Control>(*it.bar, "m_pCenterTransform");
    SignalLog log;
    log.Watch(it.bar, "bar");
    log.Watch(point, "point");

    QTest::mouseClick(point, Qt::LeftButton, Qt::NoModifier, QPoint(34, 6));

    QCOMPARE(it.bar->GetTransformationCenter(), Control::TopRight);
    // The bar hands each on as it comes.
    QCOMPARE(log.Entries(),
             QStringList({"bar.TransformationCenterChange(TopRight)", "point.StateChange(TopRight)",
                          "bar.TransformationCenterChanged(TopRight)", "point.StateChanged(TopRight)",
                          "point.StateChanged(3)"}));
}

void tst_NVTransformToolbar::valueIsStillTheOldOneInTheFirstSignal()
{
    NVTransformToolbar bar(nullptr);
    QList<int> seen;
    const auto look = [&] { seen << bar.GetTransformationCenter(); };
    connect(&bar, &NVTransformToolbar::TransformationCenterChange, this, look);
    connect(&bar, &NVTransformToolbar::TransformationCenterChanged, this, look);

    bar.SetTransformationCenter(Control::TopLeft);

    QCOMPARE(seen, QList<int>({Control::Center, Control::TopLeft}));
}

void tst_NVTransformToolbar::referencePointThatIsNoneIsTheUpperLeft()
{
    NVTransformToolbar bar(nullptr);

    bar.SetTransformationCenter(Control::ControlState(77));
    QCOMPARE(bar.GetTransformationCenter(), Control::TopLeft);
    bar.SetTransformationCenter(Control::BottomRight);
    bar.SetTransformationCenter(Control::ControlState(0));
    QCOMPARE(bar.GetTransformationCenter(), Control::TopLeft);
}

void tst_NVTransformToolbar::signalArrivesWithItsType()
{
    NVTransformToolbar bar(nullptr);
    QSignalSpy spy(&bar, &NVTransformToolbar::TransformationCenterChanged);

    bar.SetTransformationCenter(Control::MiddleRight);

    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.first().first().value<Control::ControlState>(), Control::MiddleRight);
}

void tst_NVTransformToolbar::diesInItsOwnSignals_data()
{
    QTest::addColumn<bool>("first");
    QTest::newRow("before") << true;
    QTest::newRow("after") << false;
}

void tst_NVTransformToolbar::diesInItsOwnSignals()
{
    QFETCH(const bool, first);
    QPointer<NVTransformToolbar> bar = new NVTransformToolbar(nullptr);
    const auto end = [&] { delete bar; };
    const auto signal = first ? &NVTransformToolbar::TransformationCenterChange
                              : &NVTransformToolbar::TransformationCenterChanged;
    connect(bar, signal, this, end);

    bar->SetTransformationCenter(Control::TopLeft);

    QVERIFY(!bar);
}

NV_TEST_MAIN(tst_NVTransformToolbar)
#include "tst_NVTransformToolbar.moc"
