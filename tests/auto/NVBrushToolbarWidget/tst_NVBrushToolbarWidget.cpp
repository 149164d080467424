// The base of the brush bars: its popups, its keys, and which setter each of them reaches.

#include <QPointer>
#include <QShortcut>
#include <QSpinBox>
#include <QVBoxLayout>
#include <QtTest>

#include "KXBrushSettings.h"
#include "KXShortcut.h"
#include "KexaAppKeyHook.h"
#include "NVBrushToolbarWidget.h"
#include "PatternSelectWidget.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

// A bar that writes down what reaches its setters.
class RecordingBar : public NVBrushToolbarWidget
{
public:
    explicit RecordingBar(QWidget* parent, bool withPatterns = false)
        : NVBrushToolbarWidget(parent, withPatterns)
    {
    }

    void SetOpacityValue(int percent) override { calls << QStringLiteral("opacity %1").arg(percent); }
    void SetSizeValue(int pixels) override { calls << QStringLiteral("size %1").arg(pixels); }
    void SetSpacingValue(int percent) override { calls << QStringLiteral("spacing %1").arg(percent); }
    void SetNextBlendMode() override { calls << QStringLiteral("next"); }
    void SetPreviousBlendMode() override { calls << QStringLiteral("previous"); }
    void SetBlendModeValue(int index) override
    {
        calls << QStringLiteral("mode %1").arg(index);
        if (releaseOnMode)
            ReleaseShortcuts();
    }

    QStringList calls;
    bool releaseOnMode = false;
};

// A window with a focused canvas and a bar, as a host has it.
struct Window
{
    Window()
    {
        auto* layout = new QVBoxLayout(&window);
        bar = new RecordingBar(&window);
        canvas = new QWidget(&window);
        canvas->setFocusPolicy(Qt::StrongFocus);
        box = new QSpinBox(&window);
        layout->addWidget(bar);
        layout->addWidget(canvas);
        layout->addWidget(box);
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

    QWidget window;
    RecordingBar* bar = nullptr;
    QWidget* canvas = nullptr;
    QSpinBox* box = nullptr;
};

int ShortcutCount(const QObject* bar)
{
    return bar->findChildren<KXShortcut*>(QString(), Qt::FindDirectChildrenOnly).size();
}

KXShortcut* ModeShortcut(const QObject* bar, int key)
{
    const auto shortcuts = bar->findChildren<KXShortcut*>();
    for (KXShortcut* shortcut : shortcuts)
    {
        if (shortcut->Key() == QKeySequence(key))
            return shortcut;
    }
    return nullptr;
}

} // namespace

class tst_NVBrushToolbarWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void settingsPopupIsMadeWithoutParent();
    void patternPopupIsMadeOnRequestAsChild();
    void popupsDieWithTheBar();
    void settersOfTheBaseDoNothing();
    void slotsReachTheSetters();
    void steppingOperationsReachTheSetters();
    void settingsPopupReachesTheSettersOnceAChange();
    void barSignalsReachTheSettingsPopup();

    void keysAreOffAtFirst();
    void modeKeyReachesItsSetter_data();
    void modeKeyReachesItsSetter();
    void digitSetsTheOpacity_data();
    void digitSetsTheOpacity();
    void digitsActOneByOne();
    void digitInAFocusedNumberBoxStaysThere();
    void modeKeyActsFromAFocusedNumberBox();
    void keysActWhileTheBarIsHidden();
    void ambiguousActivationActsLikeAPlainOne();
    void keyThatAnActionClaimsTooActsOnce();
    void idOfTheActivationIsNotRead();
    void unknownSequenceIsIgnored();
    void unknownSenderSetsNoOpacity();
    void plusComesBeforeMinus();
    void keyThatAShortcutHoldsNowCounts();
    void modeKeyWithKeysOffIsIgnored();

    void releaseTurnsKeysOff();
    void releaseWithKeysOffIsSafeToRepeat();
    void keysGoOnAndOffAnyNumberOfTimes();
    void createTwiceMakesEachModeKeyActTwice();
    void createTwiceMakesBothSignalsOfTheHookActTwice();
    void createAfterReleaseMakesBothSignalsOfTheHookActOnce();
    void createTwiceLeavesTheFirstModeShortcutsAlive();
    void keysMayBeReleasedByTheKeyItself();
    void keysMayBeReleasedByADigit();
    void dyingBarReleasesItsKeys();
    void dyingBarDeletesSettingsThenPatternsThenKeys();
    void twoBarsWithLiveKeysBothAct();
};

void tst_NVBrushToolbarWidget::settingsPopupIsMadeWithoutParent()
{
    NVBrushToolbarWidget bar(nullptr, false);

    QVERIFY(bar.GetBrushes());
    QCOMPARE(bar.GetBrushes()->parent(), nullptr);
    QVERIFY(!bar.GetBrushes()->isVisible());
}

void tst_NVBrushToolbarWidget::patternPopupIsMadeOnRequestAsChild()
{
    NVBrushToolbarWidget without(nullptr, false);
    NVBrushToolbarWidget with(nullptr, true);

    QCOMPARE(without.GetPatterns(), nullptr);
    QVERIFY(with.GetPatterns());
    QCOMPARE(with.GetPatterns()->parent(), &with);
    QVERIFY(!with.GetPatterns()->isVisible());
}

void tst_NVBrushToolbarWidget::popupsDieWithTheBar()
{
    auto* bar = new NVBrushToolbarWidget(nullptr, true);
    const QPointer<KXBrushSettings> brushes = bar->GetBrushes();
    const QPointer<PatternSelectWidget> patterns = bar->GetPatterns();
    brushes->show();
    patterns->show();

    delete bar;

    QVERIFY(!brushes);
    QVERIFY(!patterns);
}

void tst_NVBrushToolbarWidget::settersOfTheBaseDoNothing()
{
    NVBrushToolbarWidget bar(nullptr, true);
    SignalLog log(&bar);
    log.Watch(bar.GetBrushes());

    bar.SetOpacity(7);
    bar.SetSize(7);
    bar.SetSpacing(7);
    bar.SetBlendMode(7);
    bar.NextBlendMode();
    bar.PreviousBlendMode();

    QCOMPARE(log.Entries(), QStringList());
}

void tst_NVBrushToolbarWidget::slotsReachTheSetters()
{
    RecordingBar bar(nullptr);

    bar.SetOpacity(1);
    bar.SetSpacing(2);
    bar.SetSize(3);
    bar.SetBlendMode(-4);

    QCOMPARE(bar.calls, QStringList({"opacity 1", "spacing 2", "size 3", "mode -4"}));
}

void tst_NVBrushToolbarWidget::steppingOperationsReachTheSetters()
{
    RecordingBar bar(nullptr);

    bar.NextBlendMode();
    bar.PreviousBlendMode();

    QCOMPARE(bar.calls, QStringList({"next", "previous"}));
}

void tst_NVBrushToolbarWidget::settingsPopupReachesTheSettersOnceAChange()
{
    RecordingBar bar(nullptr);

    bar.GetBrushes()->SetSize(33);
    bar.GetBrushes()->SetSize(33);
    bar.GetBrushes()->SetSpacing(44);
    bar.GetBrushes()->SetOpacity(55);

    QCOMPARE(bar.calls, QStringList({"size 33", "spacing 44", "opacity 55"}));
}

void tst_NVBrushToolbarWidget::barSignalsReachTheSettingsPopup()
{
    RecordingBar bar(nullptr);

    Q_EMIT bar.SizeChanged(33);
    Q_EMIT bar.SpacingChanged(44);
    Q_EMIT bar.OpacityChanged(55);

    QCOMPARE(bar.GetBrushes()->GetSize(), 33);
    QCOMPARE(bar.GetBrushes()->GetSpacing(), 44);
    QCOMPARE(bar.GetBrushes()->GetOpacity(), 55);
}

void tst_NVBrushToolbarWidget::keysAreOffAtFirst()
{
    Window host;
    QVERIFY(host.Show());

    host.Press(Qt::ALT + Qt::SHIFT + Qt::Key_M);
    host.Press(Qt::Key_5);

    QCOMPARE(ShortcutCount(host.bar), 0);
    QCOMPARE(host.bar->calls, QStringList());
}

void tst_NVBrushToolbarWidget::modeKeyReachesItsSetter_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("call");

    QTest::newRow("Shift+Minus, previous") << 0x0200002D << "previous";
    QTest::newRow("Shift+Plus, next") << 0x0200002B << "next";
    QTest::newRow("Alt+Shift+N, Normal") << 0x0A00004E << "mode 0";
    QTest::newRow("Alt+Shift+M, Multiply") << 0x0A00004D << "mode 1";
    QTest::newRow("Alt+Shift+S, Screen") << 0x0A000053 << "mode 2";
    QTest::newRow("Alt+Shift+O, Overlay") << 0x0A00004F << "mode 3";
    QTest::newRow("Alt+Shift+E, Difference") << 0x0A000045 << "mode 4";
    QTest::newRow("Alt+Shift+X, Exclusion") << 0x0A000058 << "mode 5";
    QTest::newRow("Alt+Shift+G, Lighten colors") << 0x0A000047 << "mode 6";
    QTest::newRow("Alt+Shift+K, Darken colors") << 0x0A00004B << "mode 7";
    QTest::newRow("Alt+Shift+F, Soft light") << 0x0A000046 << "mode 8";
    QTest::newRow("Alt+Shift+H, Hard light") << 0x0A000048 << "mode 9";
    QTest::newRow("Alt+Shift+D, Color dodge") << 0x0A000044 << "mode 10";
    QTest::newRow("Alt+Shift+B, Color burn") << 0x0A000042 << "mode 11";
}

void tst_NVBrushToolbarWidget::modeKeyReachesItsSetter()
{
    QFETCH(const int, key);
    QFETCH(const QString, call);
    Window host;
    QVERIFY(host.Show());
    host.bar->CreateShortcuts();

    host.Press(key);

    QCOMPARE(host.bar->calls, QStringList(call));
}

void tst_NVBrushToolbarWidget::digitSetsTheOpacity_data()
{
    QTest::addColumn<int>("digit");
    QTest::addColumn<QString>("call");

    QTest::newRow("0 is full") << 0 << "opacity 100";
    for (int digit = 1; digit < 10; ++digit)
        QTest::addRow("%d", digit) << digit << QStringLiteral("opacity %1").arg(digit * 10);
}

void tst_NVBrushToolbarWidget::digitSetsTheOpacity()
{
    QFETCH(const int, digit);
    QFETCH(const QString, call);
    Window host;
    QVERIFY(host.Show());
    host.bar->CreateShortcuts();

    host.Press(Qt::Key_0 + digit);

    QCOMPARE(host.bar->calls, QStringList(call));
}

void tst_NVBrushToolbarWidget::digitsActOneByOne()
{
    Window host;
    QVERIFY(host.Show());
    host.bar->CreateShortcuts();

    host.Press(Qt::Key_2);
    host.Press(Qt::Key_5);

    QCOMPARE(host.bar->calls, QStringList({"opacity 20", "opacity 50"}));
}

void tst_NVBrushToolbarWidget::digitInAFocusedNumberBoxStaysThere()
{
    Window host;
    QVERIFY(host.Show());
    host.bar->CreateShortcuts();
    host.box->setFocus();
    host.box->selectAll();

    host.Press(Qt::Key_7);

    QCOMPARE(host.box->value(), 7);
    QCOMPARE(host.bar->calls, QStringList());
}

void tst_NVBrushToolbarWidget::modeKeyActsFromAFocusedNumberBox()
{
    Window host;
    QVERIFY(host.Show());
    host.bar->CreateShortcuts();
    host.box->setFocus();

    host.Press(Qt::ALT + Qt::SHIFT + Qt::Key_M);

    QCOMPARE(host.bar->calls, QStringList("mode 1"));
}

void tst_NVBrushToolbarWidget::keysActWhileTheBarIsHidden()
{
    Window host;
    QVERIFY(host.Show());
    host.bar->CreateShortcuts();
    host.bar->hide();

    host.Press(Qt::Key_3);
    host.Press(Qt::SHIFT + Qt::Key_Plus);

    QCOMPARE(host.bar->calls, QStringList({"opacity 30", "next"}));
}

void tst_NVBrushToolbarWidget::ambiguousActivationActsLikeAPlainOne()
{
    RecordingBar bar(nullptr);
    bar.CreateShortcuts();

    Q_EMIT KexaAppKeyHook::instance()->ShortcutActivatedAmbiguously(QKeySequence(0x0A000053), 1);
    Q_EMIT KexaAppKeyHook::instance()->ShortcutActivated(QKeySequence(0x0A000053), 1);

    QCOMPARE(bar.calls, QStringList({"mode 2", "mode 2"}));
}

void tst_NVBrushToolbarWidget::keyThatAnActionClaimsTooActsOnce()
{
    Window host;
    QShortcut other(QKeySequence(Qt::ALT + Qt::SHIFT + Qt::Key_M), &host.window);
    QVERIFY(host.Show());
    host.bar->CreateShortcuts();
    SignalLog log(KexaAppKeyHook::instance());

    // The toolkit hands a contested key to its claimants in turn.
    host.Press(Qt::ALT + Qt::SHIFT + Qt::Key_M);
    host.Press(Qt::ALT + Qt::SHIFT + Qt::Key_M);

    QCOMPARE(log.Count("ShortcutActivatedAmbiguously"), 1);
    QCOMPARE(log.Count("ShortcutActivated"), 0);
    QCOMPARE(host.bar->calls, QStringList("mode 1"));
}

void tst_NVBrushToolbarWidget::idOfTheActivationIsNotRead()
{
    RecordingBar bar(nullptr);
    bar.CreateShortcuts();

    for (const int id : {0, -1, std::numeric_limits<int>::max()})
        Q_EMIT KexaAppKeyHook::instance()->ShortcutActivated(QKeySequence(0x0200002B), id);

    QCOMPARE(bar.calls, QStringList({"next", "next", "next"}));
}

void tst_NVBrushToolbarWidget::unknownSequenceIsIgnored()
{
    RecordingBar bar(nullptr);
    bar.CreateShortcuts();

    Q_EMIT KexaAppKeyHook::instance()->ShortcutActivated(QKeySequence(), 1);
    Q_EMIT KexaAppKeyHook::instance()->ShortcutActivated(QKeySequence(Qt::ALT + Qt::SHIFT + Qt::Key_A), 1);
    // A digit is no mode key.
    Q_EMIT KexaAppKeyHook::instance()->ShortcutActivated(QKeySequence(Qt::Key_5), 1);

    QCOMPARE(bar.calls, QStringList());
}

void tst_NVBrushToolbarWidget::unknownSenderSetsNoOpacity()
{
    RecordingBar bar(nullptr);
    bar.CreateShortcuts();
    KXShortcut foreign(&bar, QKeySequence(Qt::Key_5)); // the key of a digit does not make it one
    connect(&foreign, SIGNAL(Activated()), &bar,
            SLOT(OnOpacityShortcut())); // a private slot has no other address

    Q_EMIT foreign.Activated();
    QVERIFY(QMetaObject::invokeMethod(&bar, "OnOpacityShortcut")); // no sender at all

    QCOMPARE(bar.calls, QStringList());
}

void tst_NVBrushToolbarWidget::plusComesBeforeMinus()
{
    RecordingBar bar(nullptr);
    bar.CreateShortcuts();
    const QKeySequence shared(Qt::Key_F11);
    ModeShortcut(&bar, 0x0200002D)->SetKey(shared);
    ModeShortcut(&bar, 0x0200002B)->SetKey(shared);

    Q_EMIT KexaAppKeyHook::instance()->ShortcutActivated(shared, 1);

    QCOMPARE(bar.calls, QStringList("next"));
}

void tst_NVBrushToolbarWidget::keyThatAShortcutHoldsNowCounts()
{
    RecordingBar bar(nullptr);
    bar.CreateShortcuts();
    ModeShortcut(&bar, 0x0A00004D)->SetKey(QKeySequence(Qt::Key_F11));

    Q_EMIT KexaAppKeyHook::instance()->ShortcutActivated(QKeySequence(0x0A00004D), 1);
    Q_EMIT KexaAppKeyHook::instance()->ShortcutActivated(QKeySequence(Qt::Key_F11), 1);

    QCOMPARE(bar.calls, QStringList("mode 1"));
}

void tst_NVBrushToolbarWidget::modeKeyWithKeysOffIsIgnored()
{
    RecordingBar bar(nullptr);

    QVERIFY(QMetaObject::invokeMethod(&bar, "OnShortcutActivated",
                                      Q_ARG(QKeySequence, QKeySequence(0x0A00004D)), Q_ARG(int, 1)));

    QCOMPARE(bar.calls, QStringList());
}

void tst_NVBrushToolbarWidget::releaseTurnsKeysOff()
{
    Window host;
    QVERIFY(host.Show());
    host.bar->CreateShortcuts();
    QCOMPARE(ShortcutCount(host.bar), 24);

    host.bar->ReleaseShortcuts();
    host.Press(Qt::ALT + Qt::SHIFT + Qt::Key_M);
    host.Press(Qt::Key_5);
    Q_EMIT KexaAppKeyHook::instance()->ShortcutActivated(QKeySequence(0x0A00004D), 1);

    QCOMPARE(ShortcutCount(host.bar), 0);
    QCOMPARE(host.bar->calls, QStringList());
}

void tst_NVBrushToolbarWidget::releaseWithKeysOffIsSafeToRepeat()
{
    RecordingBar bar(nullptr);

    bar.ReleaseShortcuts();
    bar.ReleaseShortcuts();
    bar.CreateShortcuts();
    bar.ReleaseShortcuts();
    bar.ReleaseShortcuts();

    QCOMPARE(ShortcutCount(&bar), 0);
    QCOMPARE(bar.calls, QStringList());
}

void tst_NVBrushToolbarWidget::keysGoOnAndOffAnyNumberOfTimes()
{
    Window host;
    QVERIFY(host.Show());

    for (int i = 0; i < 5; ++i)
    {
        host.bar->CreateShortcuts();
        host.Press(Qt::Key_1);
        host.Press(Qt::SHIFT + Qt::Key_Minus);
        host.bar->ReleaseShortcuts();
        host.Press(Qt::Key_1);
    }

    QCOMPARE(host.bar->calls.count("opacity 10"), 5);
    QCOMPARE(host.bar->calls.count("previous"), 5);
}

void tst_NVBrushToolbarWidget::createTwiceMakesEachModeKeyActTwice()
{
    Window host;
    QVERIFY(host.Show());
    host.bar->CreateShortcuts();
    host.bar->CreateShortcuts();

    host.Press(Qt::ALT + Qt::SHIFT + Qt::Key_M);
    host.Press(Qt::SHIFT + Qt::Key_Plus);
    host.Press(Qt::Key_4);

    QCOMPARE(host.bar->calls, QStringList({"mode 1", "mode 1", "next", "next", "opacity 40"}));
}

void tst_NVBrushToolbarWidget::createTwiceMakesBothSignalsOfTheHookActTwice()
{
    RecordingBar bar(nullptr);
    bar.CreateShortcuts();
    bar.CreateShortcuts();

    Q_EMIT KexaAppKeyHook::instance()->ShortcutActivated(QKeySequence(0x0A00004D), 1);
    QCOMPARE(bar.calls, QStringList({"mode 1", "mode 1"}));
    Q_EMIT KexaAppKeyHook::instance()->ShortcutActivatedAmbiguously(QKeySequence(0x0A00004D), 1);
    QCOMPARE(bar.calls.size(), 4);
}

void tst_NVBrushToolbarWidget::createAfterReleaseMakesBothSignalsOfTheHookActOnce()
{
    RecordingBar bar(nullptr);
    bar.CreateShortcuts();
    bar.ReleaseShortcuts();
    bar.CreateShortcuts();

    Q_EMIT KexaAppKeyHook::instance()->ShortcutActivated(QKeySequence(0x0A00004D), 1);
    QCOMPARE(bar.calls, QStringList("mode 1"));
    Q_EMIT KexaAppKeyHook::instance()->ShortcutActivatedAmbiguously(QKeySequence(0x0A00004D), 1);
    QCOMPARE(bar.calls.size(), 2);
}

void tst_NVBrushToolbarWidget::createTwiceLeavesTheFirstModeShortcutsAlive()
{
    Window host;
    QVERIFY(host.Show());
    host.bar->CreateShortcuts();
    host.bar->CreateShortcuts();
    QCOMPARE(ShortcutCount(host.bar), 48);

    // The digits are all in the list and go; of the mode keys only the last set is known.
    host.bar->ReleaseShortcuts();
    QCOMPARE(ShortcutCount(host.bar), 14);

    host.Press(Qt::ALT + Qt::SHIFT + Qt::Key_M);
    host.Press(Qt::Key_4);
    QCOMPARE(host.bar->calls, QStringList());
}

void tst_NVBrushToolbarWidget::keysMayBeReleasedByTheKeyItself()
{
    Window host;
    QVERIFY(host.Show());
    host.bar->releaseOnMode = true;
    host.bar->CreateShortcuts();

    host.Press(Qt::ALT + Qt::SHIFT + Qt::Key_M);
    host.Press(Qt::ALT + Qt::SHIFT + Qt::Key_M);

    QCOMPARE(host.bar->calls, QStringList("mode 1"));
    QCOMPARE(ShortcutCount(host.bar), 0);
}

void tst_NVBrushToolbarWidget::keysMayBeReleasedByADigit()
{
    Window host;
    QVERIFY(host.Show());
    host.bar->CreateShortcuts();
    const auto shortcuts = host.bar->findChildren<KXShortcut*>();
    for (KXShortcut* shortcut : shortcuts)
        connect(shortcut, &KXShortcut::Activated, host.bar, [&] { host.bar->ReleaseShortcuts(); });

    host.Press(Qt::Key_4);
    host.Press(Qt::Key_4);

    QCOMPARE(host.bar->calls, QStringList("opacity 40"));
}

void tst_NVBrushToolbarWidget::dyingBarReleasesItsKeys()
{
    Window host;
    QVERIFY(host.Show());
    host.bar->CreateShortcuts();
    SignalLog log(KexaAppKeyHook::instance());

    delete host.bar;
    host.Press(Qt::ALT + Qt::SHIFT + Qt::Key_M);
    host.Press(Qt::Key_5);
    Q_EMIT KexaAppKeyHook::instance()->ShortcutActivated(QKeySequence(0x0A00004D), 1);

    QCOMPARE(log.Count(), 1); // the one of this test
}

void tst_NVBrushToolbarWidget::dyingBarDeletesSettingsThenPatternsThenKeys()
{
    auto* bar = new NVBrushToolbarWidget(nullptr, true);
    bar->CreateShortcuts();
    QStringList deaths;
    connect(bar->GetBrushes(), &QObject::destroyed, [&] { deaths << "settings"; });
    connect(bar->GetPatterns(), &QObject::destroyed, [&] { deaths << "patterns"; });
    connect(ModeShortcut(bar, 0x0200002D), &QObject::destroyed, [&] { deaths << "keys"; });
    connect(bar, &QObject::destroyed, [&] { deaths << "bar"; });

    delete bar;

    QCOMPARE(deaths, QStringList({"settings", "patterns", "keys", "bar"}));
}

void tst_NVBrushToolbarWidget::twoBarsWithLiveKeysBothAct()
{
    Window host;
    RecordingBar second(&host.window);
    QVERIFY(host.Show());
    host.bar->CreateShortcuts();
    second.CreateShortcuts();

    host.Press(Qt::ALT + Qt::SHIFT + Qt::Key_N);
    host.Press(Qt::Key_9);

    QCOMPARE(host.bar->calls, QStringList({"mode 0", "opacity 90"}));
    QCOMPARE(second.calls, QStringList({"mode 0", "opacity 90"}));
}

NV_TEST_MAIN(tst_NVBrushToolbarWidget)
#include "tst_NVBrushToolbarWidget.moc"
