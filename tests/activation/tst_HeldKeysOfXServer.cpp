// Shift and Alt as a real X server tells of them. Run it through with-window-manager.sh.

#include "HeldKeys.h"
#include "TestMain.h"

#include <QLineEdit>
#include <QProcess>

namespace
{
const Qt::KeyboardModifiers None = Qt::NoModifier;
const Qt::KeyboardModifiers Shift = Qt::ShiftModifier;
const Qt::KeyboardModifiers Alt = Qt::AltModifier;

void xdotool(const QStringList& arguments)
{
    QProcess process;
    process.start("xdotool", arguments);
    QVERIFY(process.waitForStarted());
    QVERIFY(QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; }));
    QCOMPARE(process.exitCode(), 0);
}
} // namespace

class tst_HeldKeysOfXServer : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void cleanup();

    void keysAreToldInAnyOrder_data();
    void keysAreToldInAnyOrder();
};

void tst_HeldKeysOfXServer::initTestCase()
{
    if (QGuiApplication::platformName() != "xcb")
    {
        QSKIP("needs an X server with a window manager: run it by tests/activation/with-window-manager.sh");
    }
}

void tst_HeldKeysOfXServer::cleanup()
{
    if (QGuiApplication::platformName() == "xcb")
    {
        xdotool({"keyup", "shift", "keyup", "alt"});
    }
}

void tst_HeldKeysOfXServer::keysAreToldInAnyOrder_data()
{
    QTest::addColumn<QStringList>("keys");
    QTest::addColumn<QList<Qt::KeyboardModifiers>>("held");

    const QStringList shiftFirst = {"keydown shift", "keydown alt"};
    const QStringList altFirst = {"keydown alt", "keydown shift"};
    const QStringList shiftUp = {"keyup shift", "keyup alt"};
    const QStringList altUp = {"keyup alt", "keyup shift"};
    using Held = QList<Qt::KeyboardModifiers>;
    QTest::newRow("Shift encloses") << shiftFirst + altUp << Held({Shift, Shift | Alt, Shift, None});
    QTest::newRow("Shift before") << shiftFirst + shiftUp << Held({Shift, Shift | Alt, Alt, None});
    QTest::newRow("Alt encloses") << altFirst + shiftUp << Held({Alt, Shift | Alt, Alt, None});
    QTest::newRow("Alt before") << altFirst + altUp << Held({Alt, Shift | Alt, Shift, None});
}

void tst_HeldKeysOfXServer::keysAreToldInAnyOrder()
{
    QFETCH(const QStringList, keys);
    QFETCH(const QList<Qt::KeyboardModifiers>, held);
    QLineEdit line;
    line.show();
    line.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&line));
    HeldKeys watched;
    watched.SetOn(true);

    for (int i = 0; i < keys.size(); ++i)
    {
        xdotool(keys[i].split(' '));
        QTRY_COMPARE(watched.Get(), held[i]);
    }
}

NV_TEST_MAIN(tst_HeldKeysOfXServer)
#include "tst_HeldKeysOfXServer.moc"
