// The option bar of the crop tool with a rectangle on the canvas: its form, its values, the color dialog.

#include <QCheckBox>
#include <QColorDialog>
#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest>

#include <limits>

#include "BarForm.h"
#include "KXColorDlg.h"
#include "KXCommonComboBox.h"
#include "ModalDriver.h"
#include "NVCropToolbarMain.h"
#include "NVSpinBox.h"
#include "SignalLog.h"
#include "TestMain.h"
#include "TransformationCenterPointControl.h"

namespace
{

const double Infinity = std::numeric_limits<double>::infinity();

BarControl Anchor()
{
    BarControl anchor;
    anchor.ClassName = "TransformationCenterPointControl";
    anchor.Name = "m_pAnchorManager";
    anchor.With("accessibleName", "Reference point");
    return anchor.ToolTip("Set reference point location").FixedSize(40, 40);
}

BarControl Angle()
{
    BarControl angle;
    angle.ClassName = "QDoubleSpinBox";
    angle.Name = "m_pAngle";
    angle.With("minimum", -180.0).With("maximum", 180.0).With("value", 0.0);
    angle.With("suffix", QString(QChar(0xba))).With("decimals", 2).With("singleStep", 1.0);
    return angle.ToolTip("").Focus(Qt::ClickFocus);
}

BarControl SmallButton(const char* name, const char* toolTip, const char* accessibleName)
{
    BarControl button;
    button.ClassName = "QPushButton";
    button.Name = name;
    button.With("text", QString()).With("enabled", true).With("checkable", false);
    button.With("accessibleName", accessibleName);
    return button.ToolTip(toolTip).FixedSize(24, 24).Focus(Qt::NoFocus);
}

BarControl RadioButton(const char* name, const char* text, bool checked)
{
    BarControl button = BarControl::CheckBox(name, text, checked);
    button.ClassName = "QRadioButton";
    return button;
}

BarControl Caption(const char* name, const char* text, const char* buddy, const char* toolTip)
{
    return BarControl::Caption(name, text, buddy).ToolTip(toolTip);
}

BarForm Form()
{
    return BarForm(
               [] { return new NVCropToolbarMain(nullptr); }, "CropToolBarMain", "Form",
               "theme:crop_tool.png",
               {BarControl::Separator("frame_4"),
                Anchor(),
                BarControl::Caption("label_3", "Angle:", "m_pAngle"),
                Angle(),
                BarControl::Caption("label_7", "Width:", "m_pWidth"),
                BarControl::NumberBox("m_pWidth", 1, 9999, 1, " px"),
                BarControl::Caption("label_6", "Height:", "m_pHeight"),
                BarControl::NumberBox("m_pHeight", 1, 9999, 1, " px"),
                BarControl::Separator("frame"),
                BarControl::CheckBox("m_pShield", "Shield", true).ToolTip("Shade the cropped area"),
                Caption("label_5", "Color:", "m_pShieldColor", "Set the color of cropped area shade"),
                SmallButton("m_pShieldColor", "", "Shield color"),
                Caption("label_4", "Opacity:", "m_pOpacity", "Set opacity of cropped area color shade"),
                BarControl::NumberBox("m_pOpacity", 0, 100, 50, "%"),
                BarControl::Separator("frame_2"),
                BarControl::Caption("label", "Area:", "m_pDeleteArea"),
                RadioButton("m_pDeleteArea", "Delete", true),
                RadioButton("m_pHideArea", "Hide", false),
                BarControl::Separator("frame_3"),
                Caption("label_2", "Group Guide Overlay:", "m_pGuideOverlay", "Sets the type of crop overlay")
                    .With("minimumSize", QSize(110, 24)),
                BarControl::List("m_pGuideOverlay", {"None", "Rule of Thirds", "Grid"}, 0, 120),
                BarControl::Separator("frame_5"),
                SmallButton("m_pCommit", "Apply the crop", "Apply the crop"),
                SmallButton("m_pCancel", "Cancel the crop", "Cancel the crop"),
                SmallButton("m_pToNewDocument", "Crop to a new document", "Crop to a new document"),
                BarControl::Separator("frame_6")},
               {"m_pAnchorManager", "m_pAngle", "m_pWidth", "m_pHeight", "m_pShield", "m_pShieldColor",
                "m_pOpacity", "m_pDeleteArea", "m_pHideArea", "m_pGuideOverlay", "m_pCommit", "m_pCancel",
                "m_pToNewDocument"})
        .PictureLabel("m_pPicture");
}

// A bar on the screen, used by hand.
struct Host
{
    Host()
    {
        bar.show();
        (void)QTest::qWaitForWindowActive(&bar);
    }
    template <class T>
    T* Find(const char* name)
    {
        return bar.findChild<T*>(name);
    }
    void Press(const char* name) { QTest::mouseClick(Find<QPushButton>(name), Qt::LeftButton); }
    // On the mark of a check box or a radio button.
    void Click(const char* name)
    {
        auto* button = Find<QWidget>(name);
        QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(8, button->height() / 2));
    }
    void Type(const char* name, const QString& keys)
    {
        auto* line = Find<QWidget>(name)->findChild<QLineEdit*>();
        QTest::mouseClick(line, Qt::LeftButton);
        line->selectAll();
        QTest::keyClicks(line, keys);
    }
    QIcon ButtonIcon() { return Find<QPushButton>("m_pShieldColor")->icon(); }

    NVCropToolbarMain bar{nullptr};
};

// What the color dialog does, and how it ends.
ModalDriver::Function Pick(const QList<QColor>& colors, const QString& end)
{
    return [colors, end](QWidget* window)
    {
        auto* dialog = qobject_cast<KXColorDlg*>(window);
        QVERIFY(dialog);
        for (const QColor& color : colors)
            dialog->GetColorDlg()->setCurrentColor(color);
        if (end.isEmpty())
            ModalDriver::CloseWindow(window);
        else
            ModalDriver::Press(window, end);
    };
}

} // namespace

class tst_NVCropToolbarMain : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void formHasItsTitleNameAndLayout();
    void controlsAndGapsStandInTheirOrder() { Form().CheckRow(); }
    void pictureIsShownInFortyPixels() { Form().CheckPicture(); }
    void pictureIsThatOfTheScreensDensity() { Form().CheckPictureOfDenseScreen(); }
    void controlHasItsFacts_data() { Form().AddControlRows(); }
    void controlHasItsFacts() { Form().CheckControl(); }
    void tabGoesFromLeftToRight() { Form().CheckTabOrder(); }
    void textsAreTranslatedUnderTheFormsName() { Form().CheckTranslation(); }
    void textsStayWhenTheLanguageChanges() { Form().CheckLanguageChange(); }
    void operationButtonsShowTheirPictures();

    void startsWithDefaults();
    void signalsAreInTheirOrder();
    void setterClampsAndTellsOnce_data();
    void setterClampsAndTellsOnce();
    void typingTellsEachValue();
    void shieldRulesItsColorAndOpacity();
    void shieldIsToldBeforeItsControlsChange();
    void areaTellsBothChanges();
    void guideOverlayTellsItsIndex();
    void guideOverlayOutOfRangeLeavesNoSelection();
    void anchorTellsItsState();
    void anchorOutOfRangeChoosesTheFirst();
    void buttonTellsItsOperation_data();
    void buttonTellsItsOperation();
    void buttonsLeaveTheKeysWhereTheyAre();

    void colorButtonHasNoIconAtFirst();
    void storedColorTellsNothing();
    void colorIsShownOnTheButton();
    void dialogStartsAtTheStoredColor();
    void pickIsToldAtOnceAndTakenBackByCancel_data();
    void pickIsToldAtOnceAndTakenBackByCancel();
    void acceptedPreviewTellsNothingMore();
    void acceptedColorThatWasNotPreviewedIsTold();
    void cancelWithoutAPickTellsNothing();
    void colorSetUnderTheDialogIsTakenBackByCancel();
    void disabledColorButtonOpensNothing();
    void diesUnderTheColorDialog();
    void diesWhenTheColorIsPutBack();
    void diesWithAnUnfinishedNumber();
};

void tst_NVCropToolbarMain::formHasItsTitleNameAndLayout()
{
    const NVCropToolbarMain bar(nullptr);

    QCOMPARE(bar.objectName(), QString("CropToolBarMain"));
    QCOMPARE(bar.windowTitle(), QString("Form"));
    const auto* outer = qobject_cast<QHBoxLayout*>(bar.layout());
    QVERIFY(outer);
    QCOMPARE(outer->objectName(), QString("horizontalLayout_2"));
    QCOMPARE(outer->spacing(), 10);
    QCOMPARE(outer->contentsMargins(), QMargins());
    QCOMPARE(outer->count(), 1);
    const auto* row = qobject_cast<QHBoxLayout*>(outer->itemAt(0)->layout());
    QVERIFY(row);
    QCOMPARE(row->objectName(), QString("horizontalLayout"));
    QCOMPARE(row->spacing(), 2);
    QCOMPARE(row->contentsMargins(), QMargins());
}

void tst_NVCropToolbarMain::operationButtonsShowTheirPictures()
{
    Host host;
    const QList<QPair<const char*, QString>> pictures = {{"m_pCommit", "theme:commit_btn1.png"},
                                                         {"m_pCancel", "theme:cancel_btn1.png"},
                                                         {"m_pToNewDocument", "theme:top-menu-file.png"}};

    for (const auto& picture : pictures)
    {
        const QImage shown = host.Find<QPushButton>(picture.first)->icon().pixmap(24, 24).toImage();
        QVERIFY(!shown.isNull());
        QCOMPARE(shown, QIcon(picture.second).pixmap(24, 24).toImage());
    }
}

void tst_NVCropToolbarMain::startsWithDefaults()
{
    const NVCropToolbarMain bar(nullptr);

    QCOMPARE(bar.GetAngle(), 0.0);
    QCOMPARE(bar.GetWidth(), 1);
    QCOMPARE(bar.GetHight(), 1);
    QVERIFY(bar.IsShieldEnabled());
    QCOMPARE(bar.GetShieldColor(), QColor(Qt::black));
    QCOMPARE(bar.GetShieldOpacity(), 50);
    QVERIFY(bar.IsDeleteArea());
    QCOMPARE(bar.GetGuideOverlayType(), 0);
    QCOMPARE(bar.GetAnchor(), int(TransformationCenterPointControl().GetState()));
    QVERIFY(bar.findChild<QWidget*>("m_pShieldColor")->isEnabled());
    QVERIFY(bar.findChild<QWidget*>("m_pOpacity")->isEnabled());
}

void tst_NVCropToolbarMain::signalsAreInTheirOrder()
{
    const QMetaObject& meta = NVCropToolbarMain::staticMetaObject;
    QStringList names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
    {
        if (meta.method(i).methodType() == QMetaMethod::Signal)
            names << QString::fromLatin1(meta.method(i).methodSignature());
    }

    QCOMPARE(names,
             QStringList({"AngleChanged(double)", "WidthChanged(int)", "HeightChanged(int)",
                          "ShieldEnabled(bool)", "ShieldColorChanged(QColor)", "ShieldOpacityChanged(int)",
                          "DeleteAreaChanged(bool)", "GuideOverlayChanged(int)", "Commit()", "Cancel()",
                          "NewDocument()", "AnchorChanged(int)"}));
}

void tst_NVCropToolbarMain::setterClampsAndTellsOnce_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<double>("given");
    QTest::addColumn<double>("kept");
    QTest::addColumn<QString>("told");

    QTest::newRow("angle") << "angle" << 33.333 << 33.33 << "AngleChanged(33.33)";
    QTest::newRow("angle as it is") << "angle" << 0.0 << 0.0 << "";
    QTest::newRow("least angle") << "angle" << -180.0 << -180.0 << "AngleChanged(-180)";
    QTest::newRow("angle too small") << "angle" << -180.01 << -180.0 << "AngleChanged(-180)";
    QTest::newRow("largest angle") << "angle" << 180.0 << 180.0 << "AngleChanged(180)";
    QTest::newRow("angle too large") << "angle" << 720.0 << 180.0 << "AngleChanged(180)";
    QTest::newRow("infinite angle") << "angle" << Infinity << 180.0 << "AngleChanged(180)";
    QTest::newRow("angle that is no number")
        << "angle" << std::numeric_limits<double>::quiet_NaN() << 0.0 << "";
    QTest::newRow("width") << "width" << 64.0 << 64.0 << "WidthChanged(64)";
    QTest::newRow("no width") << "width" << 0.0 << 1.0 << "";
    QTest::newRow("negative width") << "width" << -5.0 << 1.0 << "";
    QTest::newRow("largest width") << "width" << 9999.0 << 9999.0 << "WidthChanged(9999)";
    QTest::newRow("width too large") << "width" << 10000.0 << 9999.0 << "WidthChanged(9999)";
    QTest::newRow("height") << "height" << 64.0 << 64.0 << "HeightChanged(64)";
    QTest::newRow("no height") << "height" << 0.0 << 1.0 << "";
    QTest::newRow("height too large") << "height" << 10000.0 << 9999.0 << "HeightChanged(9999)";
    QTest::newRow("opacity") << "opacity" << 75.0 << 75.0 << "ShieldOpacityChanged(75)";
    QTest::newRow("opacity as it is") << "opacity" << 50.0 << 50.0 << "";
    QTest::newRow("negative opacity") << "opacity" << -1.0 << 0.0 << "ShieldOpacityChanged(0)";
    QTest::newRow("opacity too large") << "opacity" << 101.0 << 100.0 << "ShieldOpacityChanged(100)";
}

void tst_NVCropToolbarMain::setterClampsAndTellsOnce()
{
    QFETCH(const QString, value);
    QFETCH(const double, given);
    QFETCH(const QString, told);
    NVCropToolbarMain bar(nullptr);
    SignalLog log(&bar);
    double kept = 0;

    for (int i = 0; i < 2; ++i)
    {
        if (value == "angle")
            bar.SetAngle(given), kept = bar.GetAngle();
        else if (value == "width")
            bar.SetWidth(int(given)), kept = bar.GetWidth();
        else if (value == "height")
            bar.SetHeight(int(given)), kept = bar.GetHight();
        else
            bar.SetShieldOpacity(int(given)), kept = bar.GetShieldOpacity();
    }

    QTEST(kept, "kept");
    QCOMPARE(log.Entries(), told.isEmpty() ? QStringList() : QStringList(told));
}

void tst_NVCropToolbarMain::typingTellsEachValue()
{
    Host host;
    SignalLog log(&host.bar);

    host.Type("m_pAngle", "12.5");
    host.Type("m_pWidth", "30");
    host.Type("m_pHeight", "4");
    host.Type("m_pOpacity", "7");

    QCOMPARE(log.Entries(),
             QStringList({"AngleChanged(1)", "AngleChanged(12)", "AngleChanged(12.5)", "WidthChanged(3)",
                          "WidthChanged(30)", "HeightChanged(4)", "ShieldOpacityChanged(7)"}));
}

void tst_NVCropToolbarMain::shieldRulesItsColorAndOpacity()
{
    Host host;
    SignalLog log(&host.bar);
    const auto* color = host.Find<QPushButton>("m_pShieldColor");
    const auto* opacity = host.Find<NVSpinBox>("m_pOpacity");

    host.bar.SetShieldEnabled(false);
    host.bar.SetShieldEnabled(false);
    QVERIFY(!host.bar.IsShieldEnabled());
    QVERIFY(!color->isEnabled());
    QVERIFY(!opacity->isEnabled());
    host.Click("m_pShield");

    QVERIFY(host.bar.IsShieldEnabled());
    QVERIFY(color->isEnabled());
    QVERIFY(opacity->isEnabled());
    QCOMPARE(log.Entries(), QStringList({"ShieldEnabled(false)", "ShieldEnabled(true)"}));
}

void tst_NVCropToolbarMain::shieldIsToldBeforeItsControlsChange()
{
    NVCropToolbarMain bar(nullptr);
    QList<bool> enabled;
    connect(&bar, &NVCropToolbarMain::ShieldEnabled, &bar,
            [&] { enabled << bar.findChild<QWidget*>("m_pOpacity")->isEnabled(); });

    bar.SetShieldEnabled(false);
    bar.SetShieldEnabled(true);

    QCOMPARE(enabled, QList<bool>({true, false}));
}

void tst_NVCropToolbarMain::areaTellsBothChanges()
{
    Host host;
    SignalLog log(&host.bar);

    host.bar.SetDeleteArea(true);
    QCOMPARE(log.Count(), 0);
    host.bar.SetDeleteArea(false);
    host.bar.SetDeleteArea(false);
    QVERIFY(!host.bar.IsDeleteArea());
    QVERIFY(host.Find<QRadioButton>("m_pHideArea")->isChecked());
    host.Click("m_pDeleteArea");
    host.Click("m_pDeleteArea");
    QVERIFY(host.bar.IsDeleteArea());
    host.Click("m_pHideArea");
    host.bar.SetDeleteArea(true);

    QVERIFY(!host.Find<QRadioButton>("m_pHideArea")->isChecked());
    QCOMPARE(log.Entries(),
             QStringList({"DeleteAreaChanged(false)", "DeleteAreaChanged(true)", "DeleteAreaChanged(false)",
                          "DeleteAreaChanged(true)"}));
}

void tst_NVCropToolbarMain::guideOverlayTellsItsIndex()
{
    Host host;
    SignalLog log(&host.bar);

    host.bar.SetGuideOverlayType(2);
    host.bar.SetGuideOverlayType(2);
    QTest::keyClick(host.Find<KXCommonComboBox>("m_pGuideOverlay"), Qt::Key_Up);

    QCOMPARE(host.bar.GetGuideOverlayType(), 1);
    QCOMPARE(log.Entries(), QStringList({"GuideOverlayChanged(2)", "GuideOverlayChanged(1)"}));
}

void tst_NVCropToolbarMain::guideOverlayOutOfRangeLeavesNoSelection()
{
    NVCropToolbarMain bar(nullptr);
    SignalLog log(&bar);

    bar.SetGuideOverlayType(3);
    bar.SetGuideOverlayType(-7);

    QCOMPARE(bar.GetGuideOverlayType(), -1);
    QCOMPARE(log.Entries(), QStringList({"GuideOverlayChanged(-1)"}));
}

void tst_NVCropToolbarMain::anchorTellsItsState()
{
    Host host;
    SignalLog log(&host.bar);

    host.bar.SetAnchor(TransformationCenterPointControl::BottomRight);
    host.bar.SetAnchor(TransformationCenterPointControl::BottomRight);
    QTest::mouseClick(host.Find<TransformationCenterPointControl>("m_pAnchorManager"), Qt::LeftButton,
                      Qt::NoModifier, QPoint(5, 5));

    QCOMPARE(host.bar.GetAnchor(), int(TransformationCenterPointControl::TopLeft));
    QCOMPARE(log.Entries(), QStringList({"AnchorChanged(9)", "AnchorChanged(1)"}));
}

void tst_NVCropToolbarMain::anchorOutOfRangeChoosesTheFirst()
{
    NVCropToolbarMain bar(nullptr);
    SignalLog log(&bar);

    bar.SetAnchor(0);
    bar.SetAnchor(10);
    bar.SetAnchor(-1);

    QCOMPARE(bar.GetAnchor(), int(TransformationCenterPointControl::TopLeft));
    QCOMPARE(log.Entries(), QStringList({"AnchorChanged(1)"}));
}

void tst_NVCropToolbarMain::buttonTellsItsOperation_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("told");

    QTest::newRow("commit") << "m_pCommit"
                            << "Commit()";
    QTest::newRow("cancel") << "m_pCancel"
                            << "Cancel()";
    QTest::newRow("new document") << "m_pToNewDocument"
                                  << "NewDocument()";
}

void tst_NVCropToolbarMain::buttonTellsItsOperation()
{
    QFETCH(const QString, button);
    QFETCH(const QString, told);
    Host host;
    SignalLog log(&host.bar);

    host.Press(button.toLatin1());
    host.Press(button.toLatin1());

    QCOMPARE(log.Entries(), QStringList({told, told}));
}

void tst_NVCropToolbarMain::buttonsLeaveTheKeysWhereTheyAre()
{
    Host host;
    host.Type("m_pWidth", "12");
    const QWidget* box = host.Find<NVSpinBox>("m_pWidth");
    QVERIFY(box->hasFocus());

    for (const char* button : {"m_pCommit", "m_pCancel", "m_pToNewDocument"})
    {
        host.Press(button);
        QVERIFY(box->hasFocus());
    }
    host.Click("m_pShield");
    QVERIFY(box->hasFocus());
    host.Click("m_pHideArea");
    QVERIFY(box->hasFocus());
}

void tst_NVCropToolbarMain::colorButtonHasNoIconAtFirst()
{
    Host host;
    SignalLog log(&host.bar);

    QVERIFY(host.ButtonIcon().isNull());
    host.bar.SetShieldColor(Qt::black);

    QVERIFY(host.ButtonIcon().isNull());
    QCOMPARE(log.Count(), 0);
}

void tst_NVCropToolbarMain::storedColorTellsNothing()
{
    NVCropToolbarMain bar(nullptr);
    SignalLog log(&bar);

    bar.SetShieldColor(Qt::red);
    bar.SetShieldColor(Qt::red);
    bar.SetShieldColor(Qt::black);

    QCOMPARE(log.Entries(), QStringList({"ShieldColorChanged(#ffff0000)", "ShieldColorChanged(#ff000000)"}));
    QCOMPARE(bar.GetShieldColor(), QColor(Qt::black));
}

void tst_NVCropToolbarMain::colorIsShownOnTheButton()
{
    Host host;
    const QColor color(20, 200, 90);

    host.bar.SetShieldColor(color);

    const QSize size = host.Find<QPushButton>("m_pShieldColor")->iconSize();
    QCOMPARE(host.ButtonIcon().availableSizes(), QList<QSize>({size}));
    QImage wanted(size, QImage::Format_RGB32);
    wanted.fill(color);
    QCOMPARE(host.ButtonIcon().pixmap(size).toImage().convertToFormat(QImage::Format_RGB32), wanted);
    const QImage button = host.Find<QPushButton>("m_pShieldColor")->grab().toImage();
    QCOMPARE(button.pixelColor(button.rect().center()), color);
}

void tst_NVCropToolbarMain::dialogStartsAtTheStoredColor()
{
    Host host;
    host.bar.SetShieldColor(QColor(10, 20, 30));
    QStringList seen;
    ModalDriver driver(
        [&](QWidget* window)
        {
            const auto* dialog = qobject_cast<KXColorDlg*>(window);
            seen << window->windowTitle() << dialog->CurrentColor().name()
                 << (dialog->parentWidget() == &host.bar ? "child" : "stranger");
            ModalDriver::Press(window, "Cancel");
        });

    host.Press("m_pShieldColor");

    QVERIFY(driver.Finished());
    QCOMPARE(seen, QStringList({"Select a color", "#0a141e", "child"}));
}

void tst_NVCropToolbarMain::pickIsToldAtOnceAndTakenBackByCancel_data()
{
    QTest::addColumn<QString>("end");

    QTest::newRow("cancel") << "Cancel";
    QTest::newRow("close") << "";
}

void tst_NVCropToolbarMain::pickIsToldAtOnceAndTakenBackByCancel()
{
    QFETCH(const QString, end);
    Host host;
    host.bar.SetShieldColor(Qt::blue);
    SignalLog log(&host.bar);
    ModalDriver driver(Pick({Qt::red}, end));

    host.Press("m_pShieldColor");

    QVERIFY(driver.Finished());
    QCOMPARE(log.Entries(), QStringList({"ShieldColorChanged(#ffff0000)", "ShieldColorChanged(#ff0000ff)"}));
    QCOMPARE(host.bar.GetShieldColor(), QColor(Qt::blue));
    QCOMPARE(host.ButtonIcon().pixmap(16, 16).toImage().pixelColor(8, 8), QColor(Qt::blue));
}

void tst_NVCropToolbarMain::acceptedPreviewTellsNothingMore()
{
    Host host;
    SignalLog log(&host.bar);
    ModalDriver driver(Pick({Qt::green, Qt::red}, "OK"));

    host.Press("m_pShieldColor");

    QVERIFY(driver.Finished());
    QCOMPARE(log.Entries(), QStringList({"ShieldColorChanged(#ff00ff00)", "ShieldColorChanged(#ffff0000)"}));
    QCOMPARE(host.bar.GetShieldColor(), QColor(Qt::red));
}

void tst_NVCropToolbarMain::acceptedColorThatWasNotPreviewedIsTold()
{
    Host host;
    SignalLog log(&host.bar);
    ModalDriver driver(
        [&](QWidget* window)
        {
            QColorDialog* chooser = qobject_cast<KXColorDlg*>(window)->GetColorDlg();
            chooser->blockSignals(true);
            chooser->setCurrentColor(Qt::red);
            chooser->blockSignals(false);
            ModalDriver::Press(window, "OK");
        });

    host.Press("m_pShieldColor");

    QVERIFY(driver.Finished());
    QCOMPARE(log.Entries(), QStringList({"ShieldColorChanged(#ffff0000)"}));
    QCOMPARE(host.bar.GetShieldColor(), QColor(Qt::red));
    QVERIFY(!host.ButtonIcon().isNull());
}

void tst_NVCropToolbarMain::cancelWithoutAPickTellsNothing()
{
    Host host;
    SignalLog log(&host.bar);
    ModalDriver driver(Pick({}, "Cancel"));

    host.Press("m_pShieldColor");

    QVERIFY(driver.Finished());
    QCOMPARE(log.Count(), 0);
    QVERIFY(host.ButtonIcon().isNull());
}

void tst_NVCropToolbarMain::colorSetUnderTheDialogIsTakenBackByCancel()
{
    Host host;
    SignalLog log(&host.bar);
    ModalDriver driver(
        [&](QWidget* window)
        {
            host.bar.SetShieldColor(Qt::yellow);
            ModalDriver::Press(window, "Cancel");
        });

    host.Press("m_pShieldColor");

    QVERIFY(driver.Finished());
    QCOMPARE(log.Entries(), QStringList({"ShieldColorChanged(#ffffff00)", "ShieldColorChanged(#ff000000)"}));
    QCOMPARE(host.bar.GetShieldColor(), QColor(Qt::black));
}

void tst_NVCropToolbarMain::disabledColorButtonOpensNothing()
{
    Host host;
    SignalLog log(&host.bar);
    host.bar.SetShieldEnabled(false);
    QVERIFY(!host.Find<QPushButton>("m_pShieldColor")->isEnabled());

    host.Press("m_pShieldColor");

    QVERIFY(!QApplication::activeModalWidget());
    QCOMPARE(log.Entries(), QStringList({"ShieldEnabled(false)"}));
}

void tst_NVCropToolbarMain::diesUnderTheColorDialog()
{
    QWidget window;
    QPointer<NVCropToolbarMain> bar = new NVCropToolbarMain(&window);
    window.resize(1200, 60);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    ModalDriver driver([&](QWidget*) { delete bar; });

    QMetaObject::invokeMethod(bar, "OnShieldColor");

    QVERIFY(driver.Finished());
    QVERIFY(!bar);
}

void tst_NVCropToolbarMain::diesWhenTheColorIsPutBack()
{
    QWidget window;
    QPointer<NVCropToolbarMain> bar = new NVCropToolbarMain(&window);
    window.resize(1200, 60);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    const auto end = [&bar](const QColor& color)
    {
        if (color == Qt::black)
            delete bar;
    };
    connect(bar, &NVCropToolbarMain::ShieldColorChanged, &window, end);
    ModalDriver driver(Pick({Qt::red}, "Cancel"));

    QMetaObject::invokeMethod(bar, "OnShieldColor");

    QVERIFY(driver.Finished());
    QVERIFY(!bar);
}

void tst_NVCropToolbarMain::diesWithAnUnfinishedNumber()
{
    QWidget window;
    auto* bar = new NVCropToolbarMain(&window);
    window.resize(1400, 60);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    auto* line = bar->findChild<QWidget*>("m_pAngle")->findChild<QLineEdit*>();
    QTest::mouseClick(line, Qt::LeftButton);
    QTest::keyClicks(line, "-");

    delete bar;

    QVERIFY(window.findChildren<QWidget*>().isEmpty());
}

NV_TEST_MAIN(tst_NVCropToolbarMain)
#include "tst_NVCropToolbarMain.moc"
