// The popups and keys of a brush bar as a window manager and a real pointer and keyboard treat them. Run it
// through with-window-manager.sh.

#include "KXBrushSettings.h"
#include "KXDialog.h"
#include "ModalDriver.h"
#include "NVBrushToolbar.h"
#include "NVSpinBox.h"
#include "PatternSelectWidget.h"
#include "PopupDriver.h"
#include "SignalLog.h"
#include "TestMain.h"

#include <QComboBox>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QVBoxLayout>

namespace
{
// Takes the focus on a click as a canvas does, and counts what the pointer does on it.
class Canvas : public QWidget
{
    Q_OBJECT
public:
    Canvas()
    {
        setFocusPolicy(Qt::StrongFocus);
        setMouseTracking(true);
    }

    int Moves = 0;
    int Keys = 0;

protected:
    void mouseMoveEvent(QMouseEvent*) override { ++Moves; }
    void keyPressEvent(QKeyEvent*) override { ++Keys; }
};

// A window with the bar above a canvas.
class Host : public QWidget
{
    Q_OBJECT
public:
    Host()
    {
        auto* layout = new QVBoxLayout(this);
        layout->addWidget(m_pBar);
        layout->addWidget(m_pCanvas, 1);
        setGeometry(60, 60, 1100, 850);
    }

    bool Show()
    {
        show();
        activateWindow();
        return QTest::qWaitForWindowActive(this);
    }

    NVBrushToolbar* m_pBar = new NVBrushToolbar(this);
    Canvas* m_pCanvas = new Canvas;
};

void xdotool(const QStringList& arguments)
{
    QProcess process;
    process.start("xdotool", arguments);
    QVERIFY(process.waitForStarted());
    QVERIFY(QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; }));
    QCOMPARE(process.exitCode(), 0);
}

QStringList moveTo(const QWidget* widget, const QPoint& point)
{
    const QPoint global = widget->mapToGlobal(point);
    return {"mousemove", QString::number(global.x()), QString::number(global.y())};
}

void click(const QWidget* widget)
{
    xdotool(moveTo(widget, widget->rect().center()) + QStringList({"click", "1"}));
}

QPoint farCorner(const QWidget* widget)
{
    return widget->rect().bottomRight() - QPoint(5, 5);
}

// Returns when the window system has dealt with all that was done before: a move of the pointer comes last.
void waitForAllInput(Canvas* canvas)
{
    canvas->Moves = 0;
    xdotool(moveTo(canvas, farCorner(canvas) - QPoint(40, 40)));
    xdotool(moveTo(canvas, farCorner(canvas) - QPoint(30, 30)));
    QTRY_VERIFY(canvas->Moves > 0);
}

// One of the bar's two popups with its button.
struct Dropdown
{
    QPushButton* Button = nullptr;
    QWidget* Popup = nullptr;

    bool IsOpen() const { return Popup->isVisible() && Button->isChecked(); }
    bool IsClosed() const { return !Popup->isVisible() && !Button->isChecked(); }
};

Dropdown dropdown(const Host& host, bool patterns)
{
    Dropdown result;
    result.Button =
        host.m_pBar->findChild<QPushButton*>(patterns ? "m_pSelectPatternBtn" : "m_pSelectBrushBtn");
    result.Popup = patterns ? static_cast<QWidget*>(host.m_pBar->GetPatterns()) : host.m_pBar->GetBrushes();
    return result;
}

void open(const Dropdown& target)
{
    click(target.Button);
    QTRY_VERIFY(target.IsOpen());
    QTRY_COMPARE(QApplication::activeWindow(), target.Popup);
}
} // namespace

class tst_BrushPopupActivation : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();

    void clickOnTheButtonOpensBelowIt_data();
    void clickOnTheButtonOpensBelowIt();
    void clickOnTheCheckedButtonClosesOnce_data();
    void clickOnTheCheckedButtonClosesOnce();
    void clickElsewhereClosesAndUnchecks_data();
    void clickElsewhereClosesAndUnchecks();
    void escapeClosesAndUnchecks_data();
    void escapeClosesAndUnchecks();
    void otherButtonSwitchesPopups();
    void modalDialogLeavesTheSettingsOpen();
    void modalDialogClosesThePatterns();

    void digitsTypedIntoASpinBoxStayThere();
    void digitOnTheCanvasSetsTheOpacity();
    void modeKeysArrive_data();
    void modeKeysArrive();
    void releasedKeysGoToTheCanvas();

private:
    static void addDropdownRows();
};

void tst_BrushPopupActivation::initTestCase()
{
    if (QGuiApplication::platformName() != "xcb")
    {
        QSKIP("needs an X server with a window manager: run it by tests/activation/with-window-manager.sh");
    }
}

void tst_BrushPopupActivation::addDropdownRows()
{
    QTest::addColumn<bool>("patterns");
    QTest::newRow("settings") << false;
    QTest::newRow("patterns") << true;
}

void tst_BrushPopupActivation::clickOnTheButtonOpensBelowIt_data()
{
    addDropdownRows();
}

void tst_BrushPopupActivation::clickOnTheButtonOpensBelowIt()
{
    QFETCH(bool, patterns);
    Host host;
    QVERIFY(host.Show());
    const Dropdown target = dropdown(host, patterns);
    QVERIFY(target.IsClosed());
    open(target);
    QCOMPARE(target.Popup->pos(), target.Button->mapToGlobal(QPoint(0, target.Button->height() + 1)));
}

void tst_BrushPopupActivation::clickOnTheCheckedButtonClosesOnce_data()
{
    addDropdownRows();
}

void tst_BrushPopupActivation::clickOnTheCheckedButtonClosesOnce()
{
    QFETCH(bool, patterns);
    Host host;
    QVERIFY(host.Show());
    const Dropdown target = dropdown(host, patterns);
    const PopupDriver counts(target.Button, target.Popup);
    SignalLog log(target.Button);
    for (int round = 1; round <= 3; ++round)
    {
        open(target);
        click(target.Button);
        QTRY_VERIFY(target.IsClosed());
        waitForAllInput(host.m_pCanvas);
        QVERIFY(target.IsClosed());
        QCOMPARE(counts.ShowCount(), round);
        QCOMPARE(counts.HideCount(), round);
        QCOMPARE(log.Count("toggled"), 2 * round);
    }
}

void tst_BrushPopupActivation::clickElsewhereClosesAndUnchecks_data()
{
    addDropdownRows();
}

void tst_BrushPopupActivation::clickElsewhereClosesAndUnchecks()
{
    QFETCH(bool, patterns);
    Host host;
    QVERIFY(host.Show());
    const Dropdown target = dropdown(host, patterns);
    const PopupDriver counts(target.Button, target.Popup);
    open(target);
    const QPoint place = farCorner(host.m_pCanvas);
    QVERIFY(!target.Popup->frameGeometry().contains(host.m_pCanvas->mapToGlobal(place)));
    xdotool(moveTo(host.m_pCanvas, place) + QStringList({"click", "1"}));
    QTRY_VERIFY(target.IsClosed());
    waitForAllInput(host.m_pCanvas);
    QCOMPARE(counts.ShowCount(), 1);
    QCOMPARE(counts.HideCount(), 1);
}

void tst_BrushPopupActivation::escapeClosesAndUnchecks_data()
{
    addDropdownRows();
}

void tst_BrushPopupActivation::escapeClosesAndUnchecks()
{
    QFETCH(bool, patterns);
    Host host;
    QVERIFY(host.Show());
    const Dropdown target = dropdown(host, patterns);
    open(target);
    xdotool({"key", "Escape"});
    QTRY_VERIFY(target.IsClosed());
    QTRY_COMPARE(QApplication::activeWindow(), &host);
}

void tst_BrushPopupActivation::otherButtonSwitchesPopups()
{
    Host host;
    QVERIFY(host.Show());
    const Dropdown settings = dropdown(host, false);
    const Dropdown patterns = dropdown(host, true);
    open(patterns);
    click(settings.Button);
    QTRY_VERIFY(settings.IsOpen());
    QTRY_VERIFY(patterns.IsClosed());
    waitForAllInput(host.m_pCanvas);
    QVERIFY(settings.IsOpen());
}

void tst_BrushPopupActivation::modalDialogLeavesTheSettingsOpen()
{
    Host host;
    QVERIFY(host.Show());
    const Dropdown target = dropdown(host, false);
    const PopupDriver counts(target.Button, target.Popup);
    open(target);
    waitForAllInput(host.m_pCanvas); // the pointer is off the button now
    KXDialog dialog(target.Popup);
    dialog.resize(200, 100);
    ModalDriver driver(
        [&](QWidget* window)
        {
            QTRY_COMPARE(QApplication::activeWindow(), window);
            QVERIFY(target.IsOpen());
            xdotool({"key", "Escape"});
            QTRY_VERIFY(!window->isVisible());
        });
    QCOMPARE(dialog.Exec(), static_cast<int>(KXDialog::ResultClosed));
    QVERIFY(driver.Finished());
    // Whether it stays when the dialog has gone is up to the window manager, which may make the host active
    // for a moment. It is never left open without the activation, whose loss is what closes it.
    QTRY_VERIFY((target.IsOpen() && QApplication::activeWindow() == target.Popup) || target.IsClosed());

    xdotool(moveTo(host.m_pCanvas, farCorner(host.m_pCanvas)) + QStringList({"click", "1"}));
    QTRY_VERIFY(target.IsClosed());
    QCOMPARE(counts.HideCount(), 1);
}

// The pattern popup opens no windows, so it takes a modal window for any other.
void tst_BrushPopupActivation::modalDialogClosesThePatterns()
{
    Host host;
    QVERIFY(host.Show());
    const Dropdown target = dropdown(host, true);
    open(target);
    waitForAllInput(host.m_pCanvas);
    KXDialog dialog(&host);
    dialog.resize(200, 100);
    ModalDriver driver(
        [&](QWidget* window)
        {
            QTRY_COMPARE(QApplication::activeWindow(), window);
            QTRY_VERIFY(target.IsClosed());
            xdotool({"key", "Escape"});
            QTRY_VERIFY(!window->isVisible());
        });
    dialog.Exec();
    QVERIFY(driver.Finished());
}

void tst_BrushPopupActivation::digitsTypedIntoASpinBoxStayThere()
{
    Host host;
    QVERIFY(host.Show());
    host.m_pBar->CreateShortcuts();
    auto* size = host.m_pBar->findChild<NVSpinBox*>("m_pSizeSpn");
    click(size);
    QTRY_VERIFY(size->hasFocus());
    xdotool({"key", "ctrl+a", "7", "5"});
    QTRY_COMPARE(host.m_pBar->GetSize(), 75);
    QCOMPARE(host.m_pBar->GetOpacity(), 100);
    host.m_pBar->ReleaseShortcuts();
}

void tst_BrushPopupActivation::digitOnTheCanvasSetsTheOpacity()
{
    Host host;
    QVERIFY(host.Show());
    host.m_pBar->CreateShortcuts();
    SignalLog log(host.m_pBar);
    click(host.m_pCanvas);
    QTRY_VERIFY(host.m_pCanvas->hasFocus());
    xdotool({"key", "5"});
    QTRY_COMPARE(host.m_pBar->GetOpacity(), 50);
    xdotool({"key", "0"});
    QTRY_COMPARE(host.m_pBar->GetOpacity(), 100);
    QCOMPARE(log.Entries(), QStringList({"OpacityChanged(50)", "OpacityChanged(100)"}));
    QCOMPARE(host.m_pBar->GetSize(), 1);
    host.m_pBar->ReleaseShortcuts();
}

void tst_BrushPopupActivation::modeKeysArrive_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("mode");
    QTest::newRow("next") << "shift+plus" << 3 << 4;
    QTest::newRow("next behind the last") << "shift+plus" << 12 << 0;
    QTest::newRow("previous") << "shift+minus" << 3 << 2;
    QTest::newRow("previous before the first") << "shift+minus" << 0 << 12;
    QTest::newRow("multiply") << "alt+shift+m" << 3 << 1;
}

void tst_BrushPopupActivation::modeKeysArrive()
{
    QFETCH(QString, key);
    QFETCH(int, before);
    QFETCH(int, mode);
    Host host;
    QVERIFY(host.Show());
    host.m_pBar->CreateShortcuts();
    click(host.m_pCanvas);
    QTRY_VERIFY(host.m_pCanvas->hasFocus());
    host.m_pBar->SetBlendMode(before);
    xdotool({"key", key});
    QTRY_COMPARE(host.m_pBar->GetBlendMode(), mode);
    waitForAllInput(host.m_pCanvas);
    QCOMPARE(host.m_pBar->GetBlendMode(), mode);
    host.m_pBar->ReleaseShortcuts();
}

void tst_BrushPopupActivation::releasedKeysGoToTheCanvas()
{
    Host host;
    QVERIFY(host.Show());
    host.m_pBar->CreateShortcuts();
    host.m_pBar->ReleaseShortcuts();
    click(host.m_pCanvas);
    QTRY_VERIFY(host.m_pCanvas->hasFocus());
    xdotool({"key", "5"});
    QTRY_COMPARE(host.m_pCanvas->Keys, 1);
    QCOMPARE(host.m_pBar->GetOpacity(), 100);
}

NV_TEST_MAIN(tst_BrushPopupActivation)

#include "tst_BrushPopupActivation.moc"
