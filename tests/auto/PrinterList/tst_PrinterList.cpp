// The list of the printers, where there is no server, and where one falls silent when it is asked.

#include "PrinterList.h"

#include <QElapsedTimer>
#include <QLocalServer>
#include <QTemporaryDir>

#include "TestMain.h"
#include "WatchedDevice.h"

namespace
{

const int Patience = 300;
const int Enough = 20000;

} // namespace

class tst_PrinterList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void withoutAServerItIsEmpty()
    {
        qputenv("CUPS_SERVER", "/nonexistent/cups.sock");
        PrinterList list = old();
        FileProgress progress;

        QVERIFY(list.Find(&progress, Enough));

        QVERIFY(list.names.isEmpty());
        QVERIFY(list.stopped.isEmpty());
    }

    void aServerThatFallsSilentIsLeftBehind_data()
    {
        QTest::addColumn<bool>("isCancelled");
        QTest::addColumn<int>("limit");
        QTest::newRow("when the time is over") << false << Patience;
        QTest::newRow("by a cancel") << true << 10 * Enough;
    }

    // Whoever connects there is never answered.
    void aServerThatFallsSilentIsLeftBehind()
    {
        QFETCH(bool, isCancelled);
        QFETCH(int, limit);
        const QTemporaryDir folder;
        QLocalServer server;
        QVERIFY(server.listen(folder.filePath("sock")));
        qputenv("CUPS_SERVER", server.fullServerName().toLocal8Bit());
        PrinterList list = old();
        FileProgress progress;
        progress.cancelled = isCancelled;
        QElapsedTimer timer;
        timer.start();

        QVERIFY(!list.Find(&progress, limit));

        QVERIFY(isCancelled || timer.elapsed() >= limit);
        QVERIFY(timer.elapsed() < Enough);
        QCOMPARE(list.names, old().names);
        QCOMPARE(list.stopped, old().stopped);
    }

private:
    static PrinterList old()
    {
        PrinterList list;
        list.names = QStringList("old");
        list.stopped = QStringList("stopped");
        return list;
    }
};

NV_TEST_MAIN(tst_PrinterList)
#include "tst_PrinterList.moc"
