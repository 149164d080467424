// The option bar of the fill can: its form, its values and their signals, its pattern popup and its keys.

#include <QAbstractItemView>
#include <QCheckBox>
#include <QCursor>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QtTest>

#include <limits>
#include <memory>

#include "BarForm.h"
#include "KXCommonComboBox.h"
#include "KXShortcut.h"
#include "KexaAppKeyHook.h"
#include "NVApplication.h"
#include "NVBrushToolbar.h"
#include "NVFillCanToolbar.h"
#include "NVIconHelper.h"
#include "NVSpinBox.h"
#include "PatternSelectWidget.h"
#include "PopupDriver.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

const int PreviousKey = 0x0200002D;
const int NextKey = 0x0200002B;
const int MultiplyKey = 0x0A00004D;

// The list's height limits contradict each other, as the form has it.
BarControl List(const char* name, const QStringList& items, int minimumWidth, const char* accessibleName)
{
    BarControl list = BarControl::List(name, items, 0, minimumWidth);
    list.With("minimumSize", QSize(minimumWidth, 24)).With("maximumSize", QSize(QWIDGETSIZE_MAX, 22));
    return list.With("accessibleName", QString(accessibleName));
}

BarForm Form()
{
    BarControl blendModes = List("m_pBlendMode", BlendModes(), 130, "Blend mode");
    BarForm form(
        [] { return new NVFillCanToolbar(nullptr); }, "FillCanToolbar", "Fillcan tool",
        "theme:tool-bar-bucket.png",
        {BarControl::Separator("frame_4"),
         BarControl::Caption("m_pPictureFuzzinessLbl", "Tolerance:", "m_pTolerance"),
         BarControl::NumberBox("m_pTolerance", 0, 255, 32, ""),
         BarControl::Caption("m_pPictureOpacityLbl", "Opacity:", "m_pOpacity"),
         BarControl::NumberBox("m_pOpacity", 0, 100, 100, " %"), BarControl::Separator("frame_3"),
         BarControl::PopupButton("QPushButton", "m_pSelectPattern", "Click to select a fill pattern"),
         List("m_pFillMode", {"Color", "Pattern"}, 100, "Fill mode"), blendModes.With("maxVisibleItems", 30),
         BarControl::Separator("frame_2"), BarControl::CheckBox("m_pIgnore", "Ignore transparency", false),
         BarControl::CheckBox("m_pAntialiasing", "Antialiasing", false),
         BarControl::CheckBox("m_pContiguous", "Contiguous", false),
         BarControl::CheckBox("m_pAllLayers", "All layers", false)},
        {"m_pTolerance", "m_pOpacity", "m_pSelectPattern", "m_pFillMode", "m_pBlendMode", "m_pIgnore",
         "m_pAntialiasing", "m_pContiguous", "m_pAllLayers"});
    form.PictureLabel("m_pPicture");
    return form;
}

// A bar in a window with room around it, and a second control to click on.
struct Window
{
    Window()
    {
        window.resize(780, 300);
        bar = new NVFillCanToolbar(&window);
        bar->setGeometry(0, 0, 780, 42);
        canvas = new QWidget(&window);
        canvas->setFocusPolicy(Qt::StrongFocus);
        canvas->setGeometry(0, 250, 780, 50);
        driver = std::make_unique<PopupDriver>(Button(), Popup());
    }
    bool Show()
    {
        window.show();
        canvas->setFocus();
        return QTest::qWaitForWindowActive(&window);
    }
    void Press(int key)
    {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key(key & ~Qt::KeyboardModifierMask),
                        Qt::KeyboardModifiers(key & int(Qt::KeyboardModifierMask)));
    }
    void PointAwayFromTheButton() const { QCursor::setPos(canvas->mapToGlobal(QPoint(5, 5))); }
    template <class T>
    T* Find(const char* name) const
    {
        T* control = bar->findChild<T*>(name);
        if (!control)
            qFatal("no control %s", name);
        return control;
    }
    NVSpinBox* Tolerance() const { return Find<NVSpinBox>("m_pTolerance"); }
    NVSpinBox* Opacity() const { return Find<NVSpinBox>("m_pOpacity"); }
    KXCommonComboBox* Fill() const { return Find<KXCommonComboBox>("m_pFillMode"); }
    KXCommonComboBox* Blend() const { return Find<KXCommonComboBox>("m_pBlendMode"); }
    QPushButton* Button() const { return Find<QPushButton>("m_pSelectPattern"); }
    PatternSelectWidget* Popup() const { return bar->GetPatterns(); }

    QWidget window;
    NVFillCanToolbar* bar = nullptr;
    QWidget* canvas = nullptr;
    std::unique_ptr<PopupDriver> driver;
};

void Type(QSpinBox* box, const QString& text)
{
    QTest::mouseClick(box->findChild<QLineEdit*>(), Qt::LeftButton);
    box->selectAll();
    QTest::keyClicks(box, text);
}

void ChooseBelow(QComboBox* list)
{
    list->showPopup();
    QTest::keyClick(list->view(), Qt::Key_Down);
    QTest::keyClick(list->view(), Qt::Key_Return);
}

void ClickTile(const PatternSelectWidget* patterns, int index, bool twice)
{
    auto* tiles = patterns->findChild<QAbstractItemView*>();
    const QPoint place = tiles->visualRect(tiles->model()->index(index, 0)).center();
    QTest::mouseClick(tiles->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    if (twice)
        QTest::mouseDClick(tiles->viewport(), Qt::LeftButton, Qt::NoModifier, place);
}

void Send(QObject* object, QEvent::Type type)
{
    QEvent event(type);
    QApplication::sendEvent(object, &event);
}

void Activate(int key)
{
    Q_EMIT KexaAppKeyHook::instance()->ShortcutActivated(QKeySequence(key), 1);
}

QImage IconImage(const QAbstractButton* button, const QSize& size, QIcon::Mode mode = QIcon::Normal)
{
    return button->icon().pixmap(size, mode).toImage().convertToFormat(QImage::Format_ARGB32);
}

int ShortcutCount(const QObject* bar)
{
    return bar->findChildren<KXShortcut*>(QString(), Qt::FindDirectChildrenOnly).size();
}

KXShortcut* ShortcutOf(const QObject* bar, int key)
{
    const auto shortcuts = bar->findChildren<KXShortcut*>();
    for (KXShortcut* shortcut : shortcuts)
    {
        if (shortcut->Key() == QKeySequence(key))
            return shortcut;
    }
    return nullptr;
}

// Counts events of one kind that reach an object.
class EventCount : public QObject
{
public:
    EventCount(QObject* object, QEvent::Type type) : m_type(type) { object->installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override
    {
        Count += event->type() == m_type;
        return false;
    }
    int Count = 0;

private:
    QEvent::Type m_type;
};

} // namespace

using IntSlot = void (NVFillCanToolbar::*)(int);
using BoolSlot = void (NVFillCanToolbar::*)(bool);
using BoolGetter = bool (NVFillCanToolbar::*)() const;
Q_DECLARE_METATYPE(IntSlot)
Q_DECLARE_METATYPE(BoolSlot)
Q_DECLARE_METATYPE(BoolGetter)

class tst_NVFillCanToolbar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();

    void formHasItsTitleNameAndLayout() { Form().CheckFrame(); }
    void controlsAndGapsStandInTheirOrder() { Form().CheckRow(); }
    void pictureIsShownInFortyPixels() { Form().CheckPicture(); }
    void pictureIsThatOfTheScreensDensity() { Form().CheckPictureOfDenseScreen(); }
    void controlHasItsFacts_data() { Form().AddControlRows(); }
    void controlHasItsFacts() { Form().CheckControl(); }
    void controlsFollowOneAnotherInTheTabOrder() { Form().CheckTabOrder(); }
    void textsAreTranslatedUnderTheFormsName() { Form().CheckTranslation(); }
    void languageChangeLeavesTheBar() { Form().CheckLanguageChange(); }
    void listsAreTwentyFourPixelsHigh();
    void noTextIsClipped();

    void startsWithDefaults();
    void numberSlotClampsAndEmitsOnceAChange_data();
    void numberSlotClampsAndEmitsOnceAChange();
    void typingEmitsEachValueAsItIsReached();
    void typedToleranceIsClampedToItsEnds();
    void switchEmitsOnceAChange_data();
    void switchEmitsOnceAChange();
    void fillModeEmitsOnceAChange();
    void blendModeEmitsOnceAChange();
    void choiceByHandEmitsOnce();
    void badIndexLeavesNoSelection_data();
    void badIndexLeavesNoSelection();
    void steppingWrapsRoundAndEmitsOnceAStep();
    void steppingFromNoSelection();
    void patternButtonStaysEnabledInBothFillModes();

    void keysAreOffAtFirst();
    void modeKeySelectsItsMode_data();
    void modeKeySelectsItsMode();
    void steppingKeysWrapRound();
    void digitSetsTheOpacity_data();
    void digitSetsTheOpacity();
    void keyOfTheValueInPlaceEmitsNothing();
    void disabledListTakesTheDirectKeysButNotTheStepping();
    void digitInAFocusedNumberBoxStaysThere();
    void keysActWhileTheBarIsHidden();
    void ambiguousActivationActsLikeAPlainOne();
    void idOfTheActivationIsNotRead();
    void unknownSequenceIsIgnored();
    void modeKeyWithKeysOffIsIgnored();
    void unknownSenderSetsNoOpacity();
    void plusComesBeforeMinus();
    void shortcutsAreMadeInTheirOrder();
    void releaseTurnsKeysOff();
    void releaseWithKeysOffIsSafeToRepeat();
    void keysGoOnAndOffAnyNumberOfTimes();
    void createTwiceMakesEachModeKeyActTwice();
    void createTwiceLeavesTheFirstModeShortcutsAlive();
    void keysMayBeReleasedByTheKeyItself();
    void keysMayBeReleasedByADigit();
    void barMayDieOfItsOwnKey();
    void dyingBarReleasesItsKeys();
    void dyingBarDeletesPatternsThenKeys();
    void keysOfAFillCanAndABrushBarBothAct();
    void releaseOfOneBarLeavesTheKeysOfTheOther();
    void disabledListsOfBothBarsDifferInTheDirectKeys();

    void patternButtonShowsTheCurrentPatternFromTheStart();
    void patternButtonFollowsTheSelection();
    void patternIconFadesOnADisabledButton();
    void patternWithoutImageLeavesTheIcon();
    void popupIsAChildOfTheBar();
    void popupOpensBelowItsButton();
    void popupTakesTheFocusAnewEachTime();
    void popupIsRaisedActivatedAndFocused();
    void barLooksAtThePopupOnlyOnceItIsShown();
    void clickOnTheCheckedButtonClosesOnce();
    void clickElsewhereClosesAndUnchecks();
    void escapeClosesAndUnchecks();
    void hidingByOthersUnchecks();
    void deactivationUnderThePointerOnTheCheckedButtonLeavesThePopup();
    void deactivationUnderAnUncheckedButtonHides();
    void uncheckingByCodeCloses();
    void barLooksNoMoreAtAHiddenPopup();
    void modalWindowClosesThePopup();
    void blockedPopupClosesAtDeactivationAllTheSame();
    void singleClickOnAPatternSelectsItAndLeavesThePopupOpen();
    void doubleClickOnAPatternLeavesThePopupOpen();
    void noEventIsHeldBackByTheFilter();
    void eventsOfOtherPopupsLeaveTheButton();

    void barDiesWithItsPopupOpen();
    void barDiesWithItsParentAndItsPopupOpen();
    void barDiesWithAnUnfinishedSumInItsFocusedBox();
};

void tst_NVFillCanToolbar::cleanup()
{
    NVApplication::GetInstance()->SetTexturePatternIndex(0);
}

void tst_NVFillCanToolbar::listsAreTwentyFourPixelsHigh()
{
    Window host;
    QVERIFY(host.Show());

    // The minimum wins.
    QCOMPARE(host.Fill()->height(), 24);
    QCOMPARE(host.Blend()->height(), 24);
}

void tst_NVFillCanToolbar::noTextIsClipped()
{
    NVFillCanToolbar bar(nullptr);
    bar.SetTolerance(255);
    bar.show();
    bar.resize(bar.sizeHint());
    QVERIFY(QTest::qWaitForWindowExposed(&bar));

    const auto widgets = bar.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (const QWidget* widget : widgets)
    {
        const int wanted = qMin(widget->sizeHint().width(), widget->maximumWidth());
        if (!widget->isWindow())
            QVERIFY2(widget->width() >= wanted, qPrintable(widget->objectName()));
    }
    QCOMPARE(bar.findChild<NVSpinBox*>("m_pOpacity")->text(), QString("100 %"));
    QCOMPARE(bar.findChild<NVSpinBox*>("m_pTolerance")->text(), QString("255"));
}

void tst_NVFillCanToolbar::startsWithDefaults()
{
    const NVFillCanToolbar bar(nullptr);

    QCOMPARE(bar.GetTolerance(), 32);
    QCOMPARE(bar.GetOpacity(), 100);
    QCOMPARE(bar.GetFillMode(), 0);
    QCOMPARE(bar.GetBlendMode(), 0);
    QVERIFY(!bar.IsAntialiasing());
    QVERIFY(!bar.IsAllLayers());
    QVERIFY(!bar.IsContiguous());
    QVERIFY(!bar.IsIgnoreTransparency());
    QVERIFY(bar.GetPatterns());
}

void tst_NVFillCanToolbar::numberSlotClampsAndEmitsOnceAChange_data()
{
    QTest::addColumn<IntSlot>("slot");
    QTest::addColumn<QString>("box");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("kept");
    QTest::addColumn<QStringList>("signalled");

    const IntSlot tolerance = &NVFillCanToolbar::SetTolerance;
    const IntSlot opacity = &NVFillCanToolbar::SetOpacity;
    const int huge = std::numeric_limits<int>::max();
    const int least = std::numeric_limits<int>::min();
    const QString toleranceBox = "m_pTolerance";
    const QString opacityBox = "m_pOpacity";
    const auto row =
        [](const char* name, IntSlot slot, const QString& box, int value, int kept, const QString& signalled)
    {
        QTest::newRow(name) << slot << box << value << kept
                            << (signalled.isEmpty() ? QStringList() : QStringList(signalled));
    };
    row("tolerance", tolerance, toleranceBox, 77, 77, "ToleranceChanged(77)");
    row("tolerance, as it is", tolerance, toleranceBox, 32, 32, "");
    row("tolerance, none", tolerance, toleranceBox, 0, 0, "ToleranceChanged(0)");
    row("tolerance, largest", tolerance, toleranceBox, 255, 255, "ToleranceChanged(255)");
    row("tolerance, too large", tolerance, toleranceBox, 256, 255, "ToleranceChanged(255)");
    row("tolerance, huge", tolerance, toleranceBox, huge, 255, "ToleranceChanged(255)");
    row("tolerance, least", tolerance, toleranceBox, least, 0, "ToleranceChanged(0)");
    row("opacity", opacity, opacityBox, 40, 40, "OpacityChanged(40)");
    row("opacity, as it is", opacity, opacityBox, 100, 100, "");
    row("opacity, none", opacity, opacityBox, 0, 0, "OpacityChanged(0)");
    row("opacity, below", opacity, opacityBox, -1, 0, "OpacityChanged(0)");
    row("opacity, above", opacity, opacityBox, 101, 100, "");
    row("opacity, least", opacity, opacityBox, least, 0, "OpacityChanged(0)");
}

void tst_NVFillCanToolbar::numberSlotClampsAndEmitsOnceAChange()
{
    QFETCH(const IntSlot, slot);
    QFETCH(const QString, box);
    QFETCH(const int, value);
    QFETCH(const int, kept);
    QFETCH(const QStringList, signalled);
    NVFillCanToolbar bar(nullptr);
    SignalLog log(&bar);

    (bar.*slot)(value);
    (bar.*slot)(value);

    QCOMPARE(log.Entries(), signalled);
    QCOMPARE(bar.findChild<NVSpinBox*>(box)->value(), kept);
    QCOMPARE(box == "m_pOpacity" ? bar.GetOpacity() : bar.GetTolerance(), kept);
}

void tst_NVFillCanToolbar::typingEmitsEachValueAsItIsReached()
{
    Window host;
    QVERIFY(host.Show());
    SignalLog log(host.bar);

    Type(host.Tolerance(), "120");
    QCOMPARE(log.Entries(),
             QStringList({"ToleranceChanged(1)", "ToleranceChanged(12)", "ToleranceChanged(120)"}));
    log.Clear();

    host.bar->SetTolerance(120);
    QCOMPARE(log.Entries(), QStringList());

    // The toolkit's number box tells its value once more on Enter.
    QTest::keyClick(host.Tolerance(), Qt::Key_Return);
    QCOMPARE(log.Entries(), QStringList({"ToleranceChanged(120)"}));
    log.Clear();

    Type(host.Opacity(), "55");
    QCOMPARE(log.Entries(), QStringList({"OpacityChanged(5)", "OpacityChanged(55)"}));
    QCOMPARE(host.Opacity()->text(), QString("55 %"));
}

void tst_NVFillCanToolbar::typedToleranceIsClampedToItsEnds()
{
    Window host;
    QVERIFY(host.Show());

    for (const auto& [typed, kept] :
         QList<QPair<QString, int>>{{"0", 0}, {"255", 255}, {"7", 7}, {"256", 255}})
    {
        Type(host.Tolerance(), typed);
        QTest::keyClick(host.Tolerance(), Qt::Key_Return);
        QCOMPARE(host.bar->GetTolerance(), kept);
    }
}

void tst_NVFillCanToolbar::switchEmitsOnceAChange_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("signal");
    QTest::addColumn<BoolSlot>("slot");
    QTest::addColumn<BoolGetter>("getter");

    QTest::newRow("antialiasing") << "m_pAntialiasing"
                                  << "AntialiasingChanged" << BoolSlot(&NVFillCanToolbar::SetAntialiasing)
                                  << BoolGetter(&NVFillCanToolbar::IsAntialiasing);
    QTest::newRow("all layers") << "m_pAllLayers"
                                << "AllLayersChanged" << BoolSlot(&NVFillCanToolbar::SetAllLayers)
                                << BoolGetter(&NVFillCanToolbar::IsAllLayers);
    QTest::newRow("contiguous") << "m_pContiguous"
                                << "ContiguousChanged" << BoolSlot(&NVFillCanToolbar::SetContiguous)
                                << BoolGetter(&NVFillCanToolbar::IsContiguous);
    QTest::newRow("ignore transparency")
        << "m_pIgnore"
        << "IgnoreTransparencyChanged" << BoolSlot(&NVFillCanToolbar::SetIgnoreTransparency)
        << BoolGetter(&NVFillCanToolbar::IsIgnoreTransparency);
}

void tst_NVFillCanToolbar::switchEmitsOnceAChange()
{
    QFETCH(const QString, name);
    QFETCH(const QString, signal);
    QFETCH(const BoolSlot, slot);
    QFETCH(const BoolGetter, getter);
    Window host;
    QVERIFY(host.Show());
    SignalLog log(host.bar);

    (host.bar->*slot)(true);
    (host.bar->*slot)(true);
    QVERIFY((host.bar->*getter)());
    QCOMPARE(log.Entries(), QStringList(signal + "(true)"));
    log.Clear();

    auto* box = host.Find<QCheckBox>(qPrintable(name));
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(8, box->height() / 2));
    QVERIFY(!(host.bar->*getter)());
    QVERIFY(!box->hasFocus());
    (host.bar->*slot)(false);
    QCOMPARE(log.Entries(), QStringList(signal + "(false)"));
}

void tst_NVFillCanToolbar::fillModeEmitsOnceAChange()
{
    Window host;
    SignalLog log(host.bar);

    host.bar->SetFillMode(1);
    host.bar->SetFillMode(1);

    QCOMPARE(log.Entries(), QStringList("FillModeChanged(1)"));
    QCOMPARE(host.bar->GetFillMode(), 1);
    QCOMPARE(host.Fill()->currentText(), QString("Pattern"));
}

void tst_NVFillCanToolbar::blendModeEmitsOnceAChange()
{
    Window host;
    SignalLog log(host.bar);

    host.bar->SetBlendMode(0);
    QCOMPARE(log.Entries(), QStringList());
    host.bar->SetBlendMode(12);
    host.bar->SetBlendMode(12);

    QCOMPARE(log.Entries(), QStringList("BlendModeChanged(12)"));
    QCOMPARE(host.bar->GetBlendMode(), 12);
    QCOMPARE(host.Blend()->currentText(), QString("Addition"));
}

void tst_NVFillCanToolbar::choiceByHandEmitsOnce()
{
    Window host;
    QVERIFY(host.Show());
    SignalLog log(host.bar);

    ChooseBelow(host.Blend());
    ChooseBelow(host.Fill());
    ChooseBelow(host.Fill()); // the last one stays

    QCOMPARE(log.Entries(), QStringList({"BlendModeChanged(1)", "FillModeChanged(1)"}));
}

void tst_NVFillCanToolbar::badIndexLeavesNoSelection_data()
{
    QTest::addColumn<int>("index");

    QTest::newRow("below") << -1;
    QTest::newRow("first behind the end of the longer list") << 13;
    QTest::newRow("least") << std::numeric_limits<int>::min();
    QTest::newRow("largest") << std::numeric_limits<int>::max();
}

void tst_NVFillCanToolbar::badIndexLeavesNoSelection()
{
    QFETCH(const int, index);
    NVFillCanToolbar bar(nullptr);
    SignalLog log(&bar);

    for (int i = 0; i < 2; ++i)
    {
        bar.SetBlendMode(index);
        bar.SetFillMode(index);
    }

    // Told and reported as it is, without a floor.
    QCOMPARE(log.Entries(), QStringList({"BlendModeChanged(-1)", "FillModeChanged(-1)"}));
    QCOMPARE(bar.GetBlendMode(), -1);
    QCOMPARE(bar.GetFillMode(), -1);
}

void tst_NVFillCanToolbar::steppingWrapsRoundAndEmitsOnceAStep()
{
    NVFillCanToolbar bar(nullptr);
    SignalLog log(&bar);

    QStringList expected;
    for (int mode = 1; mode <= 13; ++mode)
    {
        bar.NextBlendMode();
        expected << QString("BlendModeChanged(%1)").arg(mode % 13);
    }
    bar.PreviousBlendMode();
    bar.PreviousBlendMode();
    expected << "BlendModeChanged(12)"
             << "BlendModeChanged(11)";

    QCOMPARE(log.Entries(), expected);
}

void tst_NVFillCanToolbar::steppingFromNoSelection()
{
    NVFillCanToolbar bar(nullptr);

    bar.SetBlendMode(-1);
    bar.NextBlendMode();
    QCOMPARE(bar.GetBlendMode(), 0);

    bar.SetBlendMode(-1);
    bar.PreviousBlendMode();
    QCOMPARE(bar.GetBlendMode(), 12);
}

void tst_NVFillCanToolbar::patternButtonStaysEnabledInBothFillModes()
{
    const Window host;

    for (const int mode : {1, 0, -1})
    {
        host.bar->SetFillMode(mode);
        QVERIFY(host.Button()->isEnabled());
    }
}

void tst_NVFillCanToolbar::keysAreOffAtFirst()
{
    Window host;
    QVERIFY(host.Show());
    SignalLog log(host.bar);

    host.Press(MultiplyKey);
    host.Press(NextKey);
    host.Press(Qt::Key_5);

    QCOMPARE(ShortcutCount(host.bar), 0);
    QCOMPARE(log.Entries(), QStringList());
}

void tst_NVFillCanToolbar::modeKeySelectsItsMode_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("mode");

    const QList<int> keys{0x0A00004E, 0x0A00004D, 0x0A000053, 0x0A00004F, 0x0A000045, 0x0A000058,
                          0x0A000047, 0x0A00004B, 0x0A000046, 0x0A000048, 0x0A000044, 0x0A000042};
    for (int mode = 0; mode < keys.size(); ++mode)
        QTest::newRow(qPrintable(BlendModes()[mode])) << keys[mode] << mode;
}

void tst_NVFillCanToolbar::modeKeySelectsItsMode()
{
    QFETCH(const int, key);
    QFETCH(const int, mode);
    Window host;
    QVERIFY(host.Show());
    host.bar->SetBlendMode(12);
    host.bar->CreateShortcuts();
    SignalLog log(host.bar);

    host.Press(key);

    QCOMPARE(log.Entries(), QStringList(QString("BlendModeChanged(%1)").arg(mode)));
    QCOMPARE(host.bar->GetBlendMode(), mode);
}

void tst_NVFillCanToolbar::steppingKeysWrapRound()
{
    Window host;
    QVERIFY(host.Show());
    host.bar->CreateShortcuts();
    SignalLog log(host.bar);

    host.Press(PreviousKey);
    host.Press(NextKey);
    host.Press(NextKey);

    QCOMPARE(log.Entries(),
             QStringList({"BlendModeChanged(12)", "BlendModeChanged(0)", "BlendModeChanged(1)"}));
}

void tst_NVFillCanToolbar::digitSetsTheOpacity_data()
{
    QTest::addColumn<int>("digit");
    QTest::addColumn<int>("percent");

    QTest::newRow("0 is full") << 0 << 100;
    for (int digit = 1; digit < 10; ++digit)
        QTest::addRow("%d", digit) << digit << digit * 10;
}

void tst_NVFillCanToolbar::digitSetsTheOpacity()
{
    QFETCH(const int, digit);
    QFETCH(const int, percent);
    Window host;
    QVERIFY(host.Show());
    host.bar->SetOpacity(3);
    host.bar->CreateShortcuts();
    SignalLog log(host.bar);

    host.Press(Qt::Key_0 + digit);

    QCOMPARE(log.Entries(), QStringList(QString("OpacityChanged(%1)").arg(percent)));
    QCOMPARE(host.bar->GetOpacity(), percent);
}

void tst_NVFillCanToolbar::keyOfTheValueInPlaceEmitsNothing()
{
    Window host;
    QVERIFY(host.Show());
    host.bar->CreateShortcuts();
    SignalLog log(host.bar);

    host.Press(0x0A00004E);
    host.Press(Qt::Key_0);

    QCOMPARE(log.Entries(), QStringList());
}

void tst_NVFillCanToolbar::disabledListTakesTheDirectKeysButNotTheStepping()
{
    Window host;
    QVERIFY(host.Show());
    host.bar->SetBlendMode(5);
    host.bar->CreateShortcuts();
    host.Blend()->setEnabled(false);

    host.Press(NextKey);
    host.Press(PreviousKey);
    host.bar->NextBlendMode();
    host.bar->PreviousBlendMode();
    QCOMPARE(host.bar->GetBlendMode(), 5);

    host.Press(0x0A00004E);
    QCOMPARE(host.bar->GetBlendMode(), 0);
    host.Press(0x0A000042);
    QCOMPARE(host.bar->GetBlendMode(), 11);
    host.bar->SetBlendMode(3);
    QCOMPARE(host.bar->GetBlendMode(), 3);
}

void tst_NVFillCanToolbar::digitInAFocusedNumberBoxStaysThere()
{
    Window host;
    QVERIFY(host.Show());
    host.bar->CreateShortcuts();

    Type(host.Tolerance(), "7");

    QCOMPARE(host.bar->GetTolerance(), 7);
    QCOMPARE(host.bar->GetOpacity(), 100);
}

void tst_NVFillCanToolbar::keysActWhileTheBarIsHidden()
{
    Window host;
    QVERIFY(host.Show());
    host.bar->CreateShortcuts();
    host.bar->hide();

    host.Press(Qt::Key_3);
    host.Press(MultiplyKey);

    QCOMPARE(host.bar->GetOpacity(), 30);
    QCOMPARE(host.bar->GetBlendMode(), 1);
}

void tst_NVFillCanToolbar::ambiguousActivationActsLikeAPlainOne()
{
    NVFillCanToolbar bar(nullptr);
    bar.CreateShortcuts();

    Q_EMIT KexaAppKeyHook::instance()->ShortcutActivatedAmbiguously(QKeySequence(NextKey), 1);
    QCOMPARE(bar.GetBlendMode(), 1);
    Activate(NextKey);
    QCOMPARE(bar.GetBlendMode(), 2);
}

void tst_NVFillCanToolbar::idOfTheActivationIsNotRead()
{
    NVFillCanToolbar bar(nullptr);
    bar.CreateShortcuts();

    for (const int id : {0, -1, std::numeric_limits<int>::max()})
        Q_EMIT KexaAppKeyHook::instance()->ShortcutActivated(QKeySequence(NextKey), id);

    QCOMPARE(bar.GetBlendMode(), 3);
}

void tst_NVFillCanToolbar::unknownSequenceIsIgnored()
{
    NVFillCanToolbar bar(nullptr);
    bar.CreateShortcuts();
    SignalLog log(&bar);

    Q_EMIT KexaAppKeyHook::instance()->ShortcutActivated(QKeySequence(), 1);
    Activate(Qt::ALT + Qt::SHIFT + Qt::Key_A);
    // A digit is no mode key.
    Activate(Qt::Key_5);

    QCOMPARE(log.Entries(), QStringList());
}

void tst_NVFillCanToolbar::modeKeyWithKeysOffIsIgnored()
{
    NVFillCanToolbar bar(nullptr);

    QVERIFY(QMetaObject::invokeMethod(&bar, "OnShortcutActivated",
                                      Q_ARG(QKeySequence, QKeySequence(MultiplyKey)), Q_ARG(int, 1)));
    QVERIFY(QMetaObject::invokeMethod(&bar, "OnShortcutActivated", Q_ARG(QKeySequence, QKeySequence()),
                                      Q_ARG(int, 1)));

    QCOMPARE(bar.GetBlendMode(), 0);
}

void tst_NVFillCanToolbar::unknownSenderSetsNoOpacity()
{
    NVFillCanToolbar bar(nullptr);
    bar.CreateShortcuts();
    KXShortcut foreign(&bar, QKeySequence(Qt::Key_5)); // the key of a digit does not make it one
    QTimer other; // no shortcut at all
    const QMetaObject* meta = bar.metaObject();
    const QMetaMethod slot = meta->method(meta->indexOfSlot("OnOpacityShortcut()"));
    QVERIFY(connect(&foreign, QMetaMethod::fromSignal(&KXShortcut::Activated), &bar, slot));
    QVERIFY(connect(&other, other.metaObject()->method(other.metaObject()->indexOfSignal("timeout()")), &bar,
                    slot));

    Q_EMIT foreign.Activated();
    other.setSingleShot(true);
    other.start(0);
    QTRY_VERIFY(!other.isActive());
    QVERIFY(QMetaObject::invokeMethod(&bar, "OnOpacityShortcut")); // no sender

    QCOMPARE(bar.GetOpacity(), 100);
    Q_EMIT ShortcutOf(&bar, Qt::Key_5)->Activated();
    QCOMPARE(bar.GetOpacity(), 50);
}

void tst_NVFillCanToolbar::plusComesBeforeMinus()
{
    NVFillCanToolbar bar(nullptr);
    bar.CreateShortcuts();
    const QKeySequence shared(Qt::Key_F11);
    ShortcutOf(&bar, PreviousKey)->SetKey(shared);
    ShortcutOf(&bar, NextKey)->SetKey(shared);

    Activate(Qt::Key_F11);

    QCOMPARE(bar.GetBlendMode(), 1);
}

void tst_NVFillCanToolbar::shortcutsAreMadeInTheirOrder()
{
    NVFillCanToolbar fillCan(nullptr);
    NVBrushToolbar brush(nullptr);
    fillCan.CreateShortcuts();
    brush.CreateShortcuts();

    const auto keys = [](const QObject& bar)
    {
        QList<int> result;
        for (const KXShortcut* shortcut : bar.findChildren<KXShortcut*>())
            result << shortcut->Key()[0];
        return result;
    };
    QList<int> expected{PreviousKey, NextKey,    0x0A00004E, 0x0A00004D, 0x0A000053, 0x0A00004F, 0x0A000045,
                        0x0A000058,  0x0A000047, 0x0A00004B, 0x0A000046, 0x0A000048, 0x0A000044, 0x0A000042};
    for (int digit = 0; digit < 10; ++digit)
        expected << 0x30 + digit;
    QCOMPARE(keys(fillCan), expected);
    QCOMPARE(keys(brush), expected);
}

void tst_NVFillCanToolbar::releaseTurnsKeysOff()
{
    Window host;
    QVERIFY(host.Show());
    host.bar->CreateShortcuts();
    QCOMPARE(ShortcutCount(host.bar), 24);
    SignalLog log(host.bar);

    host.bar->ReleaseShortcuts();
    host.Press(MultiplyKey);
    host.Press(Qt::Key_5);
    Activate(MultiplyKey);

    QCOMPARE(ShortcutCount(host.bar), 0);
    QCOMPARE(log.Entries(), QStringList());
}

void tst_NVFillCanToolbar::releaseWithKeysOffIsSafeToRepeat()
{
    NVFillCanToolbar bar(nullptr);

    bar.ReleaseShortcuts();
    bar.ReleaseShortcuts();
    bar.CreateShortcuts();
    bar.ReleaseShortcuts();
    bar.ReleaseShortcuts();

    QCOMPARE(ShortcutCount(&bar), 0);
}

void tst_NVFillCanToolbar::keysGoOnAndOffAnyNumberOfTimes()
{
    Window host;
    QVERIFY(host.Show());
    SignalLog log(host.bar);

    for (int i = 0; i < 5; ++i)
    {
        host.bar->CreateShortcuts();
        host.Press(NextKey);
        host.bar->ReleaseShortcuts();
        host.Press(NextKey);
    }

    QCOMPARE(log.Count(), 5);
    QCOMPARE(host.bar->GetBlendMode(), 5);
}

void tst_NVFillCanToolbar::createTwiceMakesEachModeKeyActTwice()
{
    Window host;
    QVERIFY(host.Show());
    host.bar->CreateShortcuts();
    host.bar->CreateShortcuts();
    SignalLog log(host.bar);

    host.Press(NextKey);
    host.Press(Qt::Key_4);

    QCOMPARE(log.Entries(),
             QStringList({"BlendModeChanged(1)", "BlendModeChanged(2)", "OpacityChanged(40)"}));
}

void tst_NVFillCanToolbar::createTwiceLeavesTheFirstModeShortcutsAlive()
{
    Window host;
    QVERIFY(host.Show());
    host.bar->CreateShortcuts();
    host.bar->CreateShortcuts();
    QCOMPARE(ShortcutCount(host.bar), 48);

    host.bar->ReleaseShortcuts();
    QCOMPARE(ShortcutCount(host.bar), 14);

    SignalLog log(host.bar);
    host.Press(MultiplyKey);
    host.Press(Qt::Key_4);
    QCOMPARE(log.Entries(), QStringList());
}

void tst_NVFillCanToolbar::keysMayBeReleasedByTheKeyItself()
{
    Window host;
    QVERIFY(host.Show());
    connect(host.bar, &NVFillCanToolbar::BlendModeChanged, host.bar, &NVFillCanToolbar::ReleaseShortcuts);
    host.bar->CreateShortcuts();

    host.Press(NextKey);
    host.Press(NextKey);

    QCOMPARE(host.bar->GetBlendMode(), 1);
    QCOMPARE(ShortcutCount(host.bar), 0);
}

void tst_NVFillCanToolbar::keysMayBeReleasedByADigit()
{
    Window host;
    QVERIFY(host.Show());
    connect(host.bar, &NVFillCanToolbar::OpacityChanged, host.bar, &NVFillCanToolbar::ReleaseShortcuts);
    host.bar->CreateShortcuts();

    host.Press(Qt::Key_4);
    host.Press(Qt::Key_6);

    QCOMPARE(host.bar->GetOpacity(), 40);
}

void tst_NVFillCanToolbar::barMayDieOfItsOwnKey()
{
    Window host;
    QVERIFY(host.Show());
    const QPointer<NVFillCanToolbar> bar = host.bar;
    connect(host.bar, &NVFillCanToolbar::BlendModeChanged, host.bar, &QObject::deleteLater);
    host.bar->CreateShortcuts();

    host.Press(NextKey);
    QTRY_VERIFY(!bar);
    host.Press(NextKey);

    QVERIFY(host.canvas->hasFocus());
}

void tst_NVFillCanToolbar::dyingBarReleasesItsKeys()
{
    Window host;
    QVERIFY(host.Show());
    host.bar->CreateShortcuts();
    SignalLog log(KexaAppKeyHook::instance());

    delete host.bar;
    host.Press(MultiplyKey);
    host.Press(Qt::Key_5);
    Activate(MultiplyKey);

    QCOMPARE(log.Count(), 1); // the one of this test
}

void tst_NVFillCanToolbar::dyingBarDeletesPatternsThenKeys()
{
    auto* bar = new NVFillCanToolbar(nullptr);
    bar->CreateShortcuts();
    QStringList deaths;
    connect(bar->GetPatterns(), &QObject::destroyed, [&] { deaths << "patterns"; });
    connect(ShortcutOf(bar, PreviousKey), &QObject::destroyed, [&] { deaths << "first mode key"; });
    connect(ShortcutOf(bar, Qt::Key_0), &QObject::destroyed, [&] { deaths << "first digit"; });
    connect(bar->findChild<QCheckBox*>("m_pIgnore"), &QObject::destroyed, [&] { deaths << "controls"; });

    delete bar;

    QCOMPARE(deaths, QStringList({"patterns", "first mode key", "first digit", "controls"}));
}

void tst_NVFillCanToolbar::keysOfAFillCanAndABrushBarBothAct()
{
    Window host;
    NVBrushToolbar brush(&host.window);
    QVERIFY(host.Show());
    host.bar->CreateShortcuts();
    brush.CreateShortcuts();

    host.Press(MultiplyKey);
    QCOMPARE(host.bar->GetBlendMode(), 1);
    QCOMPARE(brush.GetBlendMode(), 1);
    host.Press(NextKey);
    QCOMPARE(host.bar->GetBlendMode(), 2);
    QCOMPARE(brush.GetBlendMode(), 2);
    host.Press(Qt::Key_9);
    QCOMPARE(host.bar->GetOpacity(), 90);
    QCOMPARE(brush.GetOpacity(), 90);
}

void tst_NVFillCanToolbar::releaseOfOneBarLeavesTheKeysOfTheOther()
{
    Window host;
    auto* brush = new NVBrushToolbar(&host.window);
    QVERIFY(host.Show());
    host.bar->CreateShortcuts();
    brush->CreateShortcuts();

    host.bar->ReleaseShortcuts();
    host.Press(NextKey);
    host.Press(Qt::Key_2);
    QCOMPARE(host.bar->GetBlendMode(), 0);
    QCOMPARE(host.bar->GetOpacity(), 100);
    QCOMPARE(brush->GetBlendMode(), 1);
    QCOMPARE(brush->GetOpacity(), 20);

    host.bar->CreateShortcuts();
    delete brush;
    host.Press(NextKey);
    host.Press(Qt::Key_3);
    QCOMPARE(host.bar->GetBlendMode(), 1);
    QCOMPARE(host.bar->GetOpacity(), 30);
}

void tst_NVFillCanToolbar::disabledListsOfBothBarsDifferInTheDirectKeys()
{
    Window host;
    NVBrushToolbar brush(&host.window);
    QVERIFY(host.Show());
    host.bar->CreateShortcuts();
    brush.CreateShortcuts();
    host.Blend()->setEnabled(false);
    brush.findChild<QComboBox*>("m_pBlendCombo")->setEnabled(false);

    host.Press(MultiplyKey);
    host.Press(NextKey);
    host.Press(PreviousKey);

    QCOMPARE(host.bar->GetBlendMode(), 1);
    QCOMPARE(brush.GetBlendMode(), 0);
}

void tst_NVFillCanToolbar::patternButtonShowsTheCurrentPatternFromTheStart()
{
    NVApplication::GetInstance()->SetTexturePatternIndex(3);
    const Window host;
    QImage tile;
    QVERIFY(host.Popup()->GetItemImage(3, tile));

    QCOMPARE(host.Popup()->CurrentIndex(), 3);
    QCOMPARE(IconImage(host.Button(), tile.size()), tile.convertToFormat(QImage::Format_ARGB32));
}

void tst_NVFillCanToolbar::patternButtonFollowsTheSelection()
{
    const Window host;
    QImage tile;
    QVERIFY(host.Popup()->GetItemImage(5, tile));

    Q_EMIT host.Popup()->ItemSelected(5);

    QCOMPARE(IconImage(host.Button(), tile.size()), tile.convertToFormat(QImage::Format_ARGB32));
}

void tst_NVFillCanToolbar::patternIconFadesOnADisabledButton()
{
    const Window host;
    for (const int pattern : {0, 5})
    {
        Q_EMIT host.Popup()->ItemSelected(pattern);
        QImage tile;
        QVERIFY(host.Popup()->GetItemImage(pattern, tile));
        const QIcon faded = NVIconHelper::DisabledIcon(QPixmap::fromImage(tile));
        QCOMPARE(IconImage(host.Button(), tile.size(), QIcon::Disabled),
                 faded.pixmap(tile.size(), QIcon::Disabled).toImage().convertToFormat(QImage::Format_ARGB32));
    }
}

void tst_NVFillCanToolbar::patternWithoutImageLeavesTheIcon()
{
    const Window host;
    const qint64 before = host.Button()->icon().cacheKey();

    Q_EMIT host.Popup()->ItemSelected(-1);
    Q_EMIT host.Popup()->ItemSelected(100000);

    QVERIFY(!host.Button()->icon().isNull());
    QCOMPARE(host.Button()->icon().cacheKey(), before);
}

void tst_NVFillCanToolbar::popupIsAChildOfTheBar()
{
    const Window host;

    QCOMPARE(host.Popup()->parent(), host.bar);
    QVERIFY(!host.Popup()->isVisible());
}

void tst_NVFillCanToolbar::popupOpensBelowItsButton()
{
    // The place where the bar puts it is the first that it is moved to; afterwards it may have to move back
    // onto the screen.
    class FirstMove : public QObject
    {
    public:
        bool eventFilter(QObject*, QEvent* event) override
        {
            if (event->type() == QEvent::Move && ++moves == 1)
                place = static_cast<QMoveEvent*>(event)->pos();
            return false;
        }
        int moves = 0;
        QPoint place;
    } first;
    Window host;
    QVERIFY(host.Show());
    host.Popup()->installEventFilter(&first);

    QVERIFY(host.driver->Open());

    const QRect button(host.Button()->mapToGlobal(QPoint(0, 0)), host.Button()->size());
    QVERIFY(first.moves > 0);
    QCOMPARE(first.place, button.topLeft() + QPoint(0, button.height() + 1));
    QVERIFY(!host.Popup()->frameGeometry().intersects(button));
    QVERIFY(host.Popup()->screen()->availableGeometry().contains(host.Popup()->frameGeometry()));
    QVERIFY(host.driver->CloseByButton());
}

void tst_NVFillCanToolbar::popupTakesTheFocusAnewEachTime()
{
    class FocusReasons : public QObject
    {
    public:
        bool eventFilter(QObject*, QEvent* event) override
        {
            if (event->type() == QEvent::FocusIn)
                reasons << static_cast<QFocusEvent*>(event)->reason();
            return false;
        }
        QList<Qt::FocusReason> reasons;
    } log;
    Window host;
    QVERIFY(host.Show());
    QVERIFY(host.driver->Open());
    QVERIFY(host.Button()->isChecked());
    QCOMPARE(QApplication::activeWindow(), host.Popup());
    QWidget* first = QApplication::focusWidget();
    QVERIFY(first && host.Popup()->isAncestorOf(first));
    first->clearFocus();
    QVERIFY(!first->hasFocus());
    first->installEventFilter(&log);

    // As if the button went down while the popup is active already.
    Q_EMIT host.Button()->toggled(true);

    QVERIFY(first->hasFocus());
    QCOMPARE(log.reasons, QList<Qt::FocusReason>({Qt::OtherFocusReason}));
    QVERIFY(host.driver->CloseByButton());
}

void tst_NVFillCanToolbar::popupIsRaisedActivatedAndFocused()
{
    Window host;
    QVERIFY(host.Show());
    // It comes to the front by no more than what the bar does.
    host.Popup()->setAttribute(Qt::WA_ShowWithoutActivating);
    EventCount raises(host.Popup(), QEvent::ZOrderChange);
    host.Popup()->show();
    const int raisesOfShowing = raises.Count;
    host.Popup()->hide();
    host.window.activateWindow();
    QTRY_COMPARE(QApplication::activeWindow(), &host.window);

    host.Button()->setChecked(true);

    QTRY_COMPARE(QApplication::activeWindow(), host.Popup());
    QCOMPARE(raises.Count, 2 * raisesOfShowing + 1);
    QVERIFY(host.Popup()->hasFocus() || host.Popup()->isAncestorOf(QApplication::focusWidget()));
    host.Button()->setChecked(false);
}

void tst_NVFillCanToolbar::barLooksAtThePopupOnlyOnceItIsShown()
{
    class Deactivator : public QObject
    {
    public:
        bool eventFilter(QObject* object, QEvent* event) override
        {
            if (event->type() == QEvent::Show)
            {
                Send(object, QEvent::WindowDeactivate);
                ++sent;
            }
            return false;
        }
        int sent = 0;
    } deactivator;
    Window host;
    QVERIFY(host.Show());
    host.PointAwayFromTheButton();
    host.Popup()->installEventFilter(&deactivator);

    host.Button()->setChecked(true);

    QCOMPARE(deactivator.sent, 1);
    QVERIFY(host.Popup()->isVisible());
    QVERIFY(host.Button()->isChecked());
    host.Button()->setChecked(false);
}

void tst_NVFillCanToolbar::clickOnTheCheckedButtonClosesOnce()
{
    Window host;
    QVERIFY(host.Show());
    QVERIFY(host.driver->Open());
    SignalLog log(host.Button());

    QVERIFY(host.driver->CloseByButton());

    QCOMPARE(host.driver->ShowCount(), 1);
    QCOMPARE(host.driver->HideCount(), 1);
    QCOMPARE(log.Count("toggled"), 1);
    QVERIFY(!host.Button()->isChecked());
}

void tst_NVFillCanToolbar::clickElsewhereClosesAndUnchecks()
{
    Window host;
    QVERIFY(host.Show());
    QVERIFY(host.driver->Open());

    QVERIFY(host.driver->CloseByClickElsewhere(host.canvas));

    QVERIFY(!host.Button()->isChecked());
    QCOMPARE(host.driver->HideCount(), 1);
}

void tst_NVFillCanToolbar::escapeClosesAndUnchecks()
{
    Window host;
    QVERIFY(host.Show());
    QVERIFY(host.driver->Open());

    QVERIFY(host.driver->CloseByEscape());

    QVERIFY(!host.Button()->isChecked());
}

void tst_NVFillCanToolbar::hidingByOthersUnchecks()
{
    Window host;
    QVERIFY(host.Show());
    QVERIFY(host.driver->Open());

    host.Popup()->hide();

    QVERIFY(!host.Button()->isChecked());
}

void tst_NVFillCanToolbar::deactivationUnderThePointerOnTheCheckedButtonLeavesThePopup()
{
    Window host;
    QVERIFY(host.Show());
    QVERIFY(host.driver->Open());
    QCursor::setPos(host.Button()->mapToGlobal(host.Button()->rect().center()));

    Send(host.Popup(), QEvent::WindowDeactivate);

    QVERIFY(host.Popup()->isVisible());
    QVERIFY(host.Button()->isChecked());
    QVERIFY(host.driver->CloseByButton());
}

void tst_NVFillCanToolbar::deactivationUnderAnUncheckedButtonHides()
{
    Window host;
    QVERIFY(host.Show());
    QVERIFY(host.driver->Open());
    QCursor::setPos(host.Button()->mapToGlobal(host.Button()->rect().center()));
    {
        // The popup stays while its button goes up unseen.
        const QSignalBlocker blocker(host.Button());
        host.Button()->setChecked(false);
    }

    Send(host.Popup(), QEvent::WindowDeactivate);

    QVERIFY(!host.Popup()->isVisible());
}

void tst_NVFillCanToolbar::uncheckingByCodeCloses()
{
    Window host;
    QVERIFY(host.Show());

    host.Button()->setChecked(true);
    QVERIFY(host.Popup()->isVisible());
    host.Button()->setChecked(false);

    QVERIFY(!host.Popup()->isVisible());
}

void tst_NVFillCanToolbar::barLooksNoMoreAtAHiddenPopup()
{
    Window host;
    QVERIFY(host.Show());
    host.Button()->setChecked(true);
    host.Button()->setChecked(false);
    const QSignalBlocker blocker(host.Button());
    host.Button()->setChecked(true);

    Send(host.Popup(), QEvent::Hide);

    QVERIFY(host.Button()->isChecked());
}

void tst_NVFillCanToolbar::modalWindowClosesThePopup()
{
    Window host;
    QVERIFY(host.Show());
    QVERIFY(host.driver->Open());
    host.PointAwayFromTheButton();

    QWidget modal(host.Popup(), Qt::Dialog);
    modal.setWindowModality(Qt::ApplicationModal);
    modal.show();

    QTRY_VERIFY(!host.Popup()->isVisible());
    QVERIFY(!host.Button()->isChecked());
}

void tst_NVFillCanToolbar::blockedPopupClosesAtDeactivationAllTheSame()
{
    Window host;
    QVERIFY(host.Show());
    QVERIFY(host.driver->Open());
    host.PointAwayFromTheButton();

    Send(host.Popup(), QEvent::WindowBlocked);
    QVERIFY(host.Popup()->isVisible());
    Send(host.Popup(), QEvent::WindowDeactivate);

    QVERIFY(!host.Popup()->isVisible());
}

void tst_NVFillCanToolbar::singleClickOnAPatternSelectsItAndLeavesThePopupOpen()
{
    Window host;
    QVERIFY(host.Show());
    QVERIFY(host.driver->Open());
    SignalLog log(host.bar);
    const qint64 before = host.Button()->icon().cacheKey();

    ClickTile(host.Popup(), 2, false);

    QCOMPARE(host.Popup()->CurrentIndex(), 2);
    QVERIFY(host.Button()->icon().cacheKey() != before);
    QVERIFY(host.Popup()->isVisible());
    // The pattern has no signal of the bar, nor does it change the fill mode.
    QCOMPARE(log.Entries(), QStringList());
    QVERIFY(host.driver->CloseByButton());
}

void tst_NVFillCanToolbar::doubleClickOnAPatternLeavesThePopupOpen()
{
    Window host;
    QVERIFY(host.Show());
    QVERIFY(host.driver->Open());
    SignalLog log(host.Popup());

    ClickTile(host.Popup(), 2, true);

    QCOMPARE(log.Count("ItemDoubleClicked"), 1);
    QCOMPARE(host.Popup()->CurrentIndex(), 2);
    QVERIFY(host.Popup()->isVisible());
    QVERIFY(host.Button()->isChecked());
    QVERIFY(host.driver->CloseByClickElsewhere(host.canvas));
}

void tst_NVFillCanToolbar::noEventIsHeldBackByTheFilter()
{
    NVFillCanToolbar bar(nullptr);
    QObject stranger;
    PatternSelectWidget otherPopup(nullptr);

    for (QObject* object :
         {&stranger, static_cast<QObject*>(&otherPopup), static_cast<QObject*>(bar.GetPatterns())})
    {
        for (const QEvent::Type type : {QEvent::Hide, QEvent::WindowDeactivate, QEvent::WindowBlocked,
                                        QEvent::WindowUnblocked, QEvent::MouseButtonPress})
        {
            QEvent event(type);
            QVERIFY(!bar.eventFilter(object, &event));
        }
    }
    QEvent event(QEvent::Hide);
    QVERIFY(!bar.eventFilter(nullptr, &event));
}

void tst_NVFillCanToolbar::eventsOfOtherPopupsLeaveTheButton()
{
    const Window host;
    PatternSelectWidget other(nullptr);
    const QSignalBlocker blocker(host.Button());
    host.Button()->setChecked(true);

    QEvent hide(QEvent::Hide);
    host.bar->eventFilter(&other, &hide);

    QVERIFY(host.Button()->isChecked());
}

void tst_NVFillCanToolbar::barDiesWithItsPopupOpen()
{
    Window host;
    QVERIFY(host.Show());
    host.bar->CreateShortcuts();
    const QPointer<QWidget> popup = host.Popup();
    QVERIFY(host.driver->Open());

    delete host.bar;

    QVERIFY(!popup);
    QCOMPARE(ShortcutCount(&host.window), 0);
}

void tst_NVFillCanToolbar::barDiesWithItsParentAndItsPopupOpen()
{
    auto host = std::make_unique<Window>();
    QVERIFY(host->Show());
    const QPointer<QWidget> popup = host->Popup();
    QVERIFY(host->driver->Open());

    host.reset();

    QVERIFY(!popup);
}

void tst_NVFillCanToolbar::barDiesWithAnUnfinishedSumInItsFocusedBox()
{
    Window host;
    QVERIFY(host.Show());
    Type(host.Tolerance(), "12*");
    QVERIFY(host.Tolerance()->hasFocus());
    SignalLog log(host.bar);

    delete host.bar;

    QCOMPARE(log.Entries(), QStringList());
}

NV_TEST_MAIN(tst_NVFillCanToolbar)
#include "tst_NVFillCanToolbar.moc"
