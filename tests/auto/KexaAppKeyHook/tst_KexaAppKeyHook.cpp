// The key hook: which of its two signals comes, with what, and when.

#include <QAction>
#include <QLineEdit>
#include <QMainWindow>
#include <QPointer>
#include <QShortcut>
#include <memory>

#include "KXShortcut.h"
#include "KexaAppKeyHook.h"
#include "SignalLog.h"
#include "TestMain.h"

class tst_KexaAppKeyHook : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thereIsOne();
    void oneHolderIsReportedPlainly();
    void severalHoldersAreReportedOnceAsAmbiguous();
    void anActionWithTheSameKeyMakesItAmbiguous();
    void theHookSpeaksBeforeTheShortcut();
    void holdersInOtherWindowsDoNotCount();
    void theIdIsThatOfTheKeyInItsWindow();
    void nothingIsReportedWithoutAShortcut();
    void aHeldKeyIsReportedAgainAndAgain();
    void keyThatTheToolkitDoesNotMatchIsTakenBeforeTheCanvas();
    void keyThatTheToolkitMatchesIsReportedOnce();
    void keyThatABoxClaimsIsLeftToIt();
    void aListenerMayDeleteTheShortcuts();
    void aListenerMayDeleteAndMakeThemAnew();
    void shortcutsMayBeMadeAndDeletedInAnyOrder();
};

namespace
{

void show(QWidget& window)
{
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
}

const QKeySequence Multiply(Qt::ALT + Qt::SHIFT + Qt::Key_M);

void pressMultiply(QWidget& window)
{
    QTest::keyClick(&window, Qt::Key_M, Qt::AltModifier | Qt::ShiftModifier);
}

} // namespace

void tst_KexaAppKeyHook::thereIsOne()
{
    QVERIFY(KexaAppKeyHook::instance());
    QCOMPARE(KexaAppKeyHook::instance(), KexaAppKeyHook::instance());
}

void tst_KexaAppKeyHook::oneHolderIsReportedPlainly()
{
    QWidget window;
    KXShortcut shortcut(&window, QKeySequence());
    shortcut.SetKey(QKeySequence(0x0A00004D));
    QSignalSpy plain(KexaAppKeyHook::instance(), &KexaAppKeyHook::ShortcutActivated);
    QSignalSpy ambiguous(KexaAppKeyHook::instance(), &KexaAppKeyHook::ShortcutActivatedAmbiguously);
    show(window);

    pressMultiply(window);

    QCOMPARE(plain.count(), 1);
    QCOMPARE(plain.first().first().value<QKeySequence>(), shortcut.Key());
    QCOMPARE(ambiguous.count(), 0);
}

void tst_KexaAppKeyHook::severalHoldersAreReportedOnceAsAmbiguous()
{
    QWidget window;
    KXShortcut one(&window, Multiply);
    KXShortcut two(new QWidget(&window), Multiply);
    QSignalSpy plain(KexaAppKeyHook::instance(), &KexaAppKeyHook::ShortcutActivated);
    QSignalSpy ambiguous(KexaAppKeyHook::instance(), &KexaAppKeyHook::ShortcutActivatedAmbiguously);
    QSignalSpy activated(&one, &KXShortcut::Activated);
    show(window);

    pressMultiply(window);
    QCOMPARE(ambiguous.count(), 1);
    QCOMPARE(ambiguous.first().first().value<QKeySequence>(), Multiply);
    QCOMPARE(plain.count(), 0);
    QCOMPARE(activated.count(), 1);

    two.SetKey(QKeySequence());
    pressMultiply(window);
    QCOMPARE(ambiguous.count(), 1);
    QCOMPARE(plain.count(), 1);
}

void tst_KexaAppKeyHook::anActionWithTheSameKeyMakesItAmbiguous()
{
    QWidget window;
    KXShortcut shortcut(&window, Multiply);
    QAction action;
    action.setText(QStringLiteral("Rival"));
    action.setShortcut(Multiply);
    window.addAction(&action);
    QSignalSpy plain(KexaAppKeyHook::instance(), &KexaAppKeyHook::ShortcutActivated);
    QSignalSpy ambiguous(KexaAppKeyHook::instance(), &KexaAppKeyHook::ShortcutActivatedAmbiguously);
    QSignalSpy activated(&shortcut, &KXShortcut::Activated);
    show(window);

    // The toolkit gives a contested key to each claimant in turn, and lets an action only warn.
    AnnounceWarning(QRegularExpression(QStringLiteral("Ambiguous shortcut overload")));
    pressMultiply(window);
    pressMultiply(window);

    QCOMPARE(plain.count(), 0);
    QCOMPARE(ambiguous.count(), 1);
    QCOMPARE(activated.count(), 1);
}

void tst_KexaAppKeyHook::theHookSpeaksBeforeTheShortcut()
{
    QWidget window;
    KXShortcut shortcut(&window, QKeySequence(Qt::Key_4));
    QStringList order;
    connect(&shortcut, &KXShortcut::Activated, &window, [&] { order << QStringLiteral("shortcut"); });
    connect(KexaAppKeyHook::instance(), &KexaAppKeyHook::ShortcutActivated, &window,
            [&] { order << QStringLiteral("hook"); });
    show(window);

    QTest::keyClick(&window, Qt::Key_4);

    QCOMPARE(order, QStringList({"hook", "shortcut"}));
}

void tst_KexaAppKeyHook::holdersInOtherWindowsDoNotCount()
{
    QWidget window;
    QWidget other;
    KXShortcut here(&window, Multiply);
    KXShortcut there(&other, Multiply);
    QSignalSpy plain(KexaAppKeyHook::instance(), &KexaAppKeyHook::ShortcutActivated);
    QSignalSpy elsewhere(&there, &KXShortcut::Activated);
    show(other);
    show(window);

    pressMultiply(window);

    QCOMPARE(plain.count(), 1);
    QCOMPARE(elsewhere.count(), 0);
}

void tst_KexaAppKeyHook::theIdIsThatOfTheKeyInItsWindow()
{
    QWidget window;
    KXShortcut one(&window, QKeySequence(Qt::Key_1));
    KXShortcut two(&window, QKeySequence(Qt::Key_2));
    QSignalSpy plain(KexaAppKeyHook::instance(), &KexaAppKeyHook::ShortcutActivated);
    show(window);

    QTest::keyClick(&window, Qt::Key_1);
    QTest::keyClick(&window, Qt::Key_2);
    QTest::keyClick(&window, Qt::Key_1);

    QCOMPARE(plain.count(), 3);
    QCOMPARE(plain.at(0).at(1), plain.at(2).at(1));
    QVERIFY(plain.at(0).at(1) != plain.at(1).at(1));
}

void tst_KexaAppKeyHook::nothingIsReportedWithoutAShortcut()
{
    QWidget window;
    auto shortcut = std::make_unique<KXShortcut>(&window, Multiply);
    SignalLog log(KexaAppKeyHook::instance());
    show(window);

    shortcut.reset();
    pressMultiply(window);

    QCOMPARE(log.Entries(), QStringList());
}

void tst_KexaAppKeyHook::aHeldKeyIsReportedAgainAndAgain()
{
    QWidget window;
    KXShortcut shortcut(&window, QKeySequence(Qt::Key_4));
    QSignalSpy plain(KexaAppKeyHook::instance(), &KexaAppKeyHook::ShortcutActivated);
    show(window);

    for (int i = 0; i < 3; ++i)
        QTest::simulateEvent(&window, true, Qt::Key_4, Qt::NoModifier, QStringLiteral("4"), i > 0);

    QCOMPARE(plain.count(), 3);
}

// As with a keyboard on which Plus is Shift and another key: the toolkit finds no shortcut for Shift+Plus.
static void pressUnmatchedShiftPlus(QWidget* target)
{
    const auto shortcuts = target->window()->findChildren<QShortcut*>();
    for (QShortcut* shortcut : shortcuts)
        shortcut->setEnabled(false);
    QTest::keyClick(target, Qt::Key_Plus, Qt::ShiftModifier);
}

void tst_KexaAppKeyHook::keyThatTheToolkitDoesNotMatchIsTakenBeforeTheCanvas()
{
    class Canvas : public QWidget
    {
    public:
        using QWidget::QWidget;
        void keyPressEvent(QKeyEvent* event) override { keys += event->key() == Qt::Key_Plus; }
        int keys = 0;
    };
    QWidget window;
    Canvas canvas(&window);
    KXShortcut plus(&window, QKeySequence(Qt::SHIFT + Qt::Key_Plus));
    KXShortcut minus(&window, QKeySequence(Qt::SHIFT + Qt::Key_Minus));
    QSignalSpy plain(KexaAppKeyHook::instance(), &KexaAppKeyHook::ShortcutActivated);
    QSignalSpy activated(&plus, &KXShortcut::Activated);
    show(window);

    pressUnmatchedShiftPlus(&canvas);

    QCOMPARE(plain.count(), 1);
    QCOMPARE(plain.first().first().value<QKeySequence>(), plus.Key());
    QCOMPARE(activated.count(), 1);
    QCOMPARE(canvas.keys, 0);

    plus.SetKey(QKeySequence());
    pressUnmatchedShiftPlus(&canvas);
    QCOMPARE(plain.count(), 1);
    QCOMPARE(canvas.keys, 1);
}

void tst_KexaAppKeyHook::keyThatTheToolkitMatchesIsReportedOnce()
{
    QWidget window;
    QWidget canvas(&window);
    KXShortcut plus(&window, QKeySequence(Qt::SHIFT + Qt::Key_Plus));
    QSignalSpy plain(KexaAppKeyHook::instance(), &KexaAppKeyHook::ShortcutActivated);
    show(window);

    QTest::keyClick(&canvas, Qt::Key_Plus, Qt::ShiftModifier);
    QTest::keyClick(&canvas, Qt::Key_Plus, Qt::ShiftModifier);

    QCOMPARE(plain.count(), 2);
}

void tst_KexaAppKeyHook::keyThatABoxClaimsIsLeftToIt()
{
    QWidget window;
    QLineEdit box(&window);
    KXShortcut plus(&window, QKeySequence(Qt::SHIFT + Qt::Key_Plus));
    QSignalSpy plain(KexaAppKeyHook::instance(), &KexaAppKeyHook::ShortcutActivated);
    show(window);
    box.setFocus();

    pressUnmatchedShiftPlus(&box);

    QCOMPARE(box.text(), QString("+"));
    QCOMPARE(plain.count(), 0);
}

void tst_KexaAppKeyHook::aListenerMayDeleteTheShortcuts()
{
    QWidget window;
    QPointer<KXShortcut> one = new KXShortcut(&window, Multiply);
    QPointer<KXShortcut> two = new KXShortcut(&window, Multiply);
    int activated = 0;
    connect(one.data(), &KXShortcut::Activated, this, [&] { ++activated; });
    connect(KexaAppKeyHook::instance(), &KexaAppKeyHook::ShortcutActivatedAmbiguously, &window,
            [&]
            {
                delete one.data();
                delete two.data();
            });
    show(window);

    pressMultiply(window);
    pressMultiply(window);

    QVERIFY(!one);
    QVERIFY(!two);
    QCOMPARE(activated, 0);
}

void tst_KexaAppKeyHook::aListenerMayDeleteAndMakeThemAnew()
{
    QWidget window;
    auto shortcut = std::make_unique<KXShortcut>(&window, Multiply);
    int reports = 0;
    connect(KexaAppKeyHook::instance(), &KexaAppKeyHook::ShortcutActivated, &window,
            [&]
            {
                ++reports;
                shortcut = std::make_unique<KXShortcut>(&window, Multiply);
            });
    show(window);

    pressMultiply(window);
    pressMultiply(window);

    QCOMPARE(reports, 2);
}

void tst_KexaAppKeyHook::shortcutsMayBeMadeAndDeletedInAnyOrder()
{
    QWidget window;
    SignalLog log(KexaAppKeyHook::instance());
    QVector<KXShortcut*> shortcuts;
    for (int i = 0; i < 24; ++i)
        shortcuts.append(new KXShortcut(&window, QKeySequence(Qt::Key_0 + i % 10)));
    show(window);

    while (!shortcuts.isEmpty())
        delete shortcuts.takeAt((shortcuts.size() * 7 / 10));
    for (int i = 0; i < 10; ++i)
        QTest::keyClick(&window, Qt::Key(Qt::Key_0 + i));

    QCOMPARE(log.Count(), 0);
}

NV_TEST_MAIN(tst_KexaAppKeyHook)
#include "tst_KexaAppKeyHook.moc"
