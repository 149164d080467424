// One key of a tool: where it is live, when it fires, and how it lives and dies.

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QPointer>
#include <QShortcut>
#include <QSpinBox>
#include <QVBoxLayout>
#include <functional>
#include <memory>

#include "KXShortcut.h"
#include "TestMain.h"

namespace
{

// A window with a tool's bar, which holds the shortcuts, and a number box.
struct ToolWindow
{
    QWidget window;
    QWidget* pBar;
    QSpinBox* pBox;

    ToolWindow() : pBar(new QWidget(&window)), pBox(new QSpinBox(&window))
    {
        QVBoxLayout* const layout = new QVBoxLayout(&window);
        layout->addWidget(pBar);
        layout->addWidget(pBox);
        pBox->setFocusPolicy(Qt::ClickFocus);
        pBox->setRange(0, 1000);
    }

    void Show()
    {
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        window.setFocus();
    }
};

int shortcutCount(const QWidget& window)
{
    return window.findChildren<QShortcut*>().size();
}

} // namespace

class tst_KXShortcut : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aKeyFiresOnce_data();
    void aKeyFiresOnce();
    void keyIsTheVerySequenceThatWasGiven();
    void anEmptyKeyNeverFires();
    void aShortcutWithoutParentNeverFires();
    void setKeyTakesTheOldKeyAway();
    void settingTheSameKeyAgainChangesNothing();
    void itFiresWhileItsParentIsHidden();
    void itIsSilentInAnotherWindow();
    void aDigitTypedIntoANumberBoxStaysThere();
    void anAltShiftLetterPassesANumberBox();
    void aModalDialogInFrontStopsIt();
    void severalHoldersAllFireInOrderOfCreation();
    void itFollowsItsParentIntoAnotherWindow();
    void itFollowsWhenAnAncestorMoves();
    void itFollowsWhenItsParentBecomesAWindow();
    void itFollowsWhenItsParentBecomesAWindowByFlagsAlone();
    void noToolkitShortcutStaysBehind();
    void deletingTheParentTakesItAway();
    void itMayOutliveItsWindow();
    void itMayBeDeletedByItsOwnSignal();
    void aSlotMayDeleteAllShortcutsOfTheKey();
    void aSlotMayReplaceAllShortcutsOfTheKey();
    void aSlotMayDestroyTheWindow();
    void aSlotMayChangeTheKey();
};

void tst_KXShortcut::aKeyFiresOnce_data()
{
    QTest::addColumn<int>("sequence");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");

    QTest::newRow("digit 0") << int(Qt::Key_0) << int(Qt::Key_0) << 0;
    QTest::newRow("digit 9") << int(Qt::Key_9) << int(Qt::Key_9) << 0;
    QTest::newRow("Shift+Plus") << int(Qt::SHIFT + Qt::Key_Plus) << int(Qt::Key_Plus)
                                << int(Qt::ShiftModifier);
    QTest::newRow("Shift+Minus") << int(Qt::SHIFT + Qt::Key_Minus) << int(Qt::Key_Minus)
                                 << int(Qt::ShiftModifier);
    QTest::newRow("Alt+Shift+M") << int(Qt::ALT + Qt::SHIFT + Qt::Key_M) << int(Qt::Key_M)
                                 << int(Qt::AltModifier | Qt::ShiftModifier);
}

void tst_KXShortcut::aKeyFiresOnce()
{
    QFETCH(int, sequence);
    QFETCH(int, key);
    QFETCH(int, modifiers);
    ToolWindow tool;
    KXShortcut shortcut(tool.pBar, QKeySequence(sequence));
    QSignalSpy activated(&shortcut, &KXShortcut::Activated);
    tool.Show();

    QTest::keyClick(&tool.window, Qt::Key(key), Qt::KeyboardModifiers(modifiers));

    QCOMPARE(activated.count(), 1);
}

void tst_KXShortcut::keyIsTheVerySequenceThatWasGiven()
{
    QWidget window;
    KXShortcut shortcut(&window, QKeySequence());
    QVERIFY(shortcut.Key().isEmpty());

    shortcut.SetKey(QKeySequence(0x0200002B));

    QCOMPARE(shortcut.Key(), QKeySequence(Qt::SHIFT + Qt::Key_Plus));
    QCOMPARE(shortcut.Key()[0], 0x0200002B);
}

void tst_KXShortcut::anEmptyKeyNeverFires()
{
    ToolWindow tool;
    KXShortcut shortcut(tool.pBar, QKeySequence());
    QSignalSpy activated(&shortcut, &KXShortcut::Activated);
    tool.Show();

    QTest::keyClick(&tool.window, Qt::Key_1);

    QCOMPARE(activated.count(), 0);
    QCOMPARE(shortcutCount(tool.window), 0);
}

void tst_KXShortcut::aShortcutWithoutParentNeverFires()
{
    ToolWindow tool;
    KXShortcut shortcut(nullptr, QKeySequence(Qt::Key_1));
    QSignalSpy activated(&shortcut, &KXShortcut::Activated);
    tool.Show();

    QTest::keyClick(&tool.window, Qt::Key_1);
    shortcut.SetKey(QKeySequence(Qt::Key_2));
    QTest::keyClick(&tool.window, Qt::Key_2);

    QCOMPARE(activated.count(), 0);
    QCOMPARE(shortcut.Key(), QKeySequence(Qt::Key_2));
}

void tst_KXShortcut::setKeyTakesTheOldKeyAway()
{
    ToolWindow tool;
    KXShortcut shortcut(tool.pBar, QKeySequence(Qt::Key_1));
    QSignalSpy activated(&shortcut, &KXShortcut::Activated);
    tool.Show();

    shortcut.SetKey(QKeySequence(Qt::Key_2));
    QTest::keyClick(&tool.window, Qt::Key_1);
    QCOMPARE(activated.count(), 0);
    QTest::keyClick(&tool.window, Qt::Key_2);
    QCOMPARE(activated.count(), 1);
    shortcut.SetKey(QKeySequence());
    QTest::keyClick(&tool.window, Qt::Key_2);

    QCOMPARE(activated.count(), 1);
    QCOMPARE(shortcutCount(tool.window), 0);
}

void tst_KXShortcut::settingTheSameKeyAgainChangesNothing()
{
    ToolWindow tool;
    KXShortcut shortcut(tool.pBar, QKeySequence(Qt::Key_1));
    const QPointer<QShortcut> before = tool.window.findChild<QShortcut*>();
    QVERIFY(before);

    shortcut.SetKey(QKeySequence(Qt::Key_1));

    QVERIFY(before);
    QCOMPARE(shortcutCount(tool.window), 1);
}

void tst_KXShortcut::itFiresWhileItsParentIsHidden()
{
    ToolWindow tool;
    KXShortcut shortcut(tool.pBar, QKeySequence(Qt::Key_5));
    QSignalSpy activated(&shortcut, &KXShortcut::Activated);
    tool.Show();

    tool.pBar->hide();
    QTest::keyClick(&tool.window, Qt::Key_5);

    QCOMPARE(activated.count(), 1);
}

void tst_KXShortcut::itIsSilentInAnotherWindow()
{
    ToolWindow tool;
    ToolWindow other;
    KXShortcut shortcut(tool.pBar, QKeySequence(Qt::Key_5));
    QSignalSpy activated(&shortcut, &KXShortcut::Activated);
    tool.Show();
    other.Show();

    QTest::keyClick(&other.window, Qt::Key_5);

    QCOMPARE(activated.count(), 0);
}

void tst_KXShortcut::aDigitTypedIntoANumberBoxStaysThere()
{
    ToolWindow tool;
    KXShortcut shortcut(tool.pBar, QKeySequence(Qt::Key_5));
    QSignalSpy activated(&shortcut, &KXShortcut::Activated);
    tool.Show();

    QTest::mouseClick(tool.pBox, Qt::LeftButton);
    QVERIFY(tool.pBox->hasFocus());
    tool.pBox->selectAll();
    QTest::keyClicks(tool.pBox, QStringLiteral("55"));

    QCOMPARE(activated.count(), 0);
    QCOMPARE(tool.pBox->value(), 55);

    tool.window.setFocus();
    QTest::keyClick(&tool.window, Qt::Key_5);
    QCOMPARE(activated.count(), 1);
    QCOMPARE(tool.pBox->value(), 55);
}

void tst_KXShortcut::anAltShiftLetterPassesANumberBox()
{
    ToolWindow tool;
    KXShortcut shortcut(tool.pBar, QKeySequence(Qt::ALT + Qt::SHIFT + Qt::Key_M));
    QSignalSpy activated(&shortcut, &KXShortcut::Activated);
    tool.Show();

    QTest::mouseClick(tool.pBox, Qt::LeftButton);
    QTest::keyClick(tool.pBox, Qt::Key_M, Qt::AltModifier | Qt::ShiftModifier);

    QCOMPARE(activated.count(), 1);
}

void tst_KXShortcut::aModalDialogInFrontStopsIt()
{
    ToolWindow tool;
    KXShortcut shortcut(tool.pBar, QKeySequence(Qt::Key_5));
    QSignalSpy activated(&shortcut, &KXShortcut::Activated);
    tool.Show();

    QDialog dialog(&tool.window);
    dialog.setModal(true);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    QTest::keyClick(&dialog, Qt::Key_5);
    QCOMPARE(activated.count(), 0);

    dialog.reject();
    tool.window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&tool.window));
    QTest::keyClick(&tool.window, Qt::Key_5);
    QCOMPARE(activated.count(), 1);
}

void tst_KXShortcut::severalHoldersAllFireInOrderOfCreation()
{
    ToolWindow tool;
    KXShortcut first(tool.pBar, QKeySequence());
    KXShortcut second(tool.pBar, QKeySequence(Qt::Key_7));
    KXShortcut third(&tool.window, QKeySequence(Qt::Key_7));
    first.SetKey(QKeySequence(Qt::Key_7));
    QStringList order;
    connect(&third, &KXShortcut::Activated, this, [&] { order << QStringLiteral("third"); });
    connect(&second, &KXShortcut::Activated, this, [&] { order << QStringLiteral("second"); });
    connect(&first, &KXShortcut::Activated, this, [&] { order << QStringLiteral("first"); });
    tool.Show();

    QTest::keyClick(&tool.window, Qt::Key_7);

    QCOMPARE(order, QStringList({"first", "second", "third"}));
    QCOMPARE(shortcutCount(tool.window), 1);
}

void tst_KXShortcut::itFollowsItsParentIntoAnotherWindow()
{
    ToolWindow tool;
    ToolWindow other;
    KXShortcut shortcut(tool.pBar, QKeySequence(Qt::Key_5));
    QSignalSpy activated(&shortcut, &KXShortcut::Activated);

    tool.pBar->setParent(&other.window);
    tool.Show();
    QTest::keyClick(&tool.window, Qt::Key_5);
    QCOMPARE(activated.count(), 0);
    QCOMPARE(shortcutCount(tool.window), 0);

    other.Show();
    QTest::keyClick(&other.window, Qt::Key_5);
    QCOMPARE(activated.count(), 1);
}

void tst_KXShortcut::itFollowsWhenAnAncestorMoves()
{
    ToolWindow tool;
    ToolWindow other;
    QWidget* const inner = new QWidget(new QWidget(tool.pBar));
    KXShortcut shortcut(inner, QKeySequence(Qt::Key_5));
    QSignalSpy activated(&shortcut, &KXShortcut::Activated);

    tool.pBar->setParent(&other.window);
    other.Show();
    QTest::keyClick(&other.window, Qt::Key_5);
    QCOMPARE(activated.count(), 1);

    other.pBox->setParent(nullptr);
    delete other.pBox;
    QTest::keyClick(&other.window, Qt::Key_5);
    QCOMPARE(activated.count(), 2);
}

void tst_KXShortcut::itFollowsWhenItsParentBecomesAWindow()
{
    ToolWindow tool;
    const std::unique_ptr<QWidget> bar(tool.pBar);
    KXShortcut shortcut(bar.get(), QKeySequence(Qt::Key_5));
    QSignalSpy activated(&shortcut, &KXShortcut::Activated);

    bar->setParent(nullptr);
    bar->show();
    QVERIFY(QTest::qWaitForWindowActive(bar.get()));
    QTest::keyClick(bar.get(), Qt::Key_5);

    QCOMPARE(activated.count(), 1);
    QCOMPARE(shortcutCount(tool.window), 0);
}

void tst_KXShortcut::itFollowsWhenItsParentBecomesAWindowByFlagsAlone()
{
    ToolWindow tool;
    KXShortcut shortcut(tool.pBar, QKeySequence(Qt::Key_5));
    QSignalSpy activated(&shortcut, &KXShortcut::Activated);
    tool.Show();

    tool.pBar->setWindowFlags(Qt::Window);
    tool.pBar->show();
    QApplication::setActiveWindow(tool.pBar);
    QTest::keyClick(tool.pBar, Qt::Key_5);
    QCOMPARE(activated.count(), 1);

    QApplication::setActiveWindow(&tool.window);
    QTest::keyClick(&tool.window, Qt::Key_5);
    QCOMPARE(activated.count(), 1);
}

void tst_KXShortcut::noToolkitShortcutStaysBehind()
{
    ToolWindow tool;
    {
        KXShortcut one(tool.pBar, QKeySequence(Qt::Key_1));
        auto two = std::make_unique<KXShortcut>(tool.pBar, QKeySequence(Qt::Key_1));
        KXShortcut three(tool.pBar, QKeySequence(Qt::Key_3));
        QCOMPARE(shortcutCount(tool.window), 2);
        two.reset();
        QCOMPARE(shortcutCount(tool.window), 2);
    }
    QCOMPARE(shortcutCount(tool.window), 0);
}

void tst_KXShortcut::deletingTheParentTakesItAway()
{
    ToolWindow tool;
    const QPointer<KXShortcut> shortcut = new KXShortcut(tool.pBar, QKeySequence(Qt::Key_1));
    tool.Show();

    delete tool.pBar;

    QVERIFY(!shortcut);
    QCOMPARE(shortcutCount(tool.window), 0);
    QTest::keyClick(&tool.window, Qt::Key_1);
}

void tst_KXShortcut::itMayOutliveItsWindow()
{
    auto tool = std::make_unique<ToolWindow>();
    KXShortcut shortcut(tool->pBar, QKeySequence(Qt::Key_1));
    shortcut.setParent(nullptr);

    tool.reset();
    shortcut.SetKey(QKeySequence(Qt::Key_2));
    ToolWindow next;
    QSignalSpy activated(&shortcut, &KXShortcut::Activated);
    next.Show();
    QTest::keyClick(&next.window, Qt::Key_2);

    QCOMPARE(activated.count(), 0);
    QCOMPARE(shortcut.Key(), QKeySequence(Qt::Key_2));
}

void tst_KXShortcut::itMayBeDeletedByItsOwnSignal()
{
    ToolWindow tool;
    QPointer<KXShortcut> shortcut = new KXShortcut(tool.pBar, QKeySequence(Qt::Key_1));
    connect(shortcut.data(), &KXShortcut::Activated, this, [&] { delete shortcut.data(); });
    tool.Show();

    QTest::keyClick(&tool.window, Qt::Key_1);
    QVERIFY(!shortcut);
    QTest::keyClick(&tool.window, Qt::Key_1);
    QTRY_COMPARE(shortcutCount(tool.window), 0);
}

void tst_KXShortcut::aSlotMayDeleteAllShortcutsOfTheKey()
{
    ToolWindow tool;
    KXShortcut first(tool.pBar, QKeySequence(Qt::Key_1));
    QPointer<KXShortcut> second = new KXShortcut(tool.pBar, QKeySequence(Qt::Key_1));
    int secondFired = 0;
    connect(second.data(), &KXShortcut::Activated, this, [&] { ++secondFired; });
    connect(&first, &KXShortcut::Activated, this, [&] { delete second.data(); });
    tool.Show();

    QTest::keyClick(&tool.window, Qt::Key_1);

    QCOMPARE(secondFired, 0);
    QCOMPARE(shortcutCount(tool.window), 1);
}

void tst_KXShortcut::aSlotMayReplaceAllShortcutsOfTheKey()
{
    ToolWindow tool;
    auto shortcut = std::make_unique<KXShortcut>(tool.pBar, QKeySequence(Qt::Key_1));
    int fired = 0;
    std::function<void()> replace = [&]
    {
        ++fired;
        shortcut = std::make_unique<KXShortcut>(tool.pBar, QKeySequence(Qt::Key_1));
        connect(shortcut.get(), &KXShortcut::Activated, this, replace);
    };
    connect(shortcut.get(), &KXShortcut::Activated, this, replace);
    tool.Show();

    QTest::keyClick(&tool.window, Qt::Key_1);
    QCOMPARE(fired, 1);
    QTest::keyClick(&tool.window, Qt::Key_1);
    QCOMPARE(fired, 2);
    QTRY_COMPARE(shortcutCount(tool.window), 1);
}

void tst_KXShortcut::aSlotMayDestroyTheWindow()
{
    QPointer<QWidget> window = new QWidget;
    const QPointer<KXShortcut> shortcut = new KXShortcut(new QWidget(window), QKeySequence(Qt::Key_1));
    connect(shortcut.data(), &KXShortcut::Activated, window.data(), &QObject::deleteLater);
    window->show();
    QVERIFY(QTest::qWaitForWindowActive(window));

    QTest::keyClick(window.data(), Qt::Key_1);

    QTRY_VERIFY(!window);
    QVERIFY(!shortcut);
}

void tst_KXShortcut::aSlotMayChangeTheKey()
{
    ToolWindow tool;
    KXShortcut shortcut(tool.pBar, QKeySequence(Qt::Key_1));
    connect(&shortcut, &KXShortcut::Activated, this, [&] { shortcut.SetKey(QKeySequence(Qt::Key_2)); });
    QSignalSpy activated(&shortcut, &KXShortcut::Activated);
    tool.Show();

    QTest::keyClick(&tool.window, Qt::Key_1);
    QTest::keyClick(&tool.window, Qt::Key_1);
    QCOMPARE(activated.count(), 1);
    QTest::keyClick(&tool.window, Qt::Key_2);
    QCOMPARE(activated.count(), 2);
}

NV_TEST_MAIN(tst_KXShortcut)
#include "tst_KXShortcut.moc"
