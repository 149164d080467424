// The probe of a print server: against servers that answer, hang up, are silent, and are not there, on local
// sockets and over the network.

#include "PrintServer.h"

#include <QElapsedTimer>
#include <QLocalServer>
#include <QLocalSocket>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QtConcurrent>

#include "TestMain.h"

namespace
{

const int Patience = 300;
const int Enough = 20000;

// The probe blocks, and the server is of this thread.
PrintServerState Probe(const QString& address, int milliseconds = Enough)
{
    QFutureWatcher<PrintServerState> watcher;
    QEventLoop loop;
    QObject::connect(&watcher, &QFutureWatcher<PrintServerState>::finished, &loop, &QEventLoop::quit);
    watcher.setFuture(QtConcurrent::run(ProbePrintServer, address, milliseconds));
    loop.exec();
    return watcher.result();
}

} // namespace

class tst_PrintServer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath("sock");
    }

    void cleanup() { qunsetenv("CUPS_SERVER"); }

    void aServerThatSaysAnythingAnswers()
    {
        QByteArray request;
        QLocalServer server;
        QVERIFY(server.listen(m_path));
        connect(&server, &QLocalServer::newConnection, this,
                [&]
                {
                    QLocalSocket* socket = server.nextPendingConnection();
                    connect(socket, &QLocalSocket::readyRead, this,
                            [&request, socket]
                            {
                                request += socket->readAll();
                                socket->write("H");
                            });
                });

        QCOMPARE(Probe(m_path), PrintServerState::Answers);

        QVERIFY(request.startsWith("OPTIONS * HTTP/1.1\r\n"));
        QVERIFY(request.endsWith("\r\n\r\n"));
    }

    void aServerOfTheNetworkAnswersToo_data()
    {
        QTest::addColumn<QString>("address");
        QTest::newRow("number") << "127.0.0.1:%1";
        QTest::newRow("with a version") << "127.0.0.1:%1/version=1.1";
    }

    void aServerOfTheNetworkAnswersToo()
    {
        QFETCH(QString, address);
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        connect(&server, &QTcpServer::newConnection, this,
                [&] { server.nextPendingConnection()->write("HTTP/1.1 400 Bad Request\r\n\r\n"); });

        QCOMPARE(Probe(address.arg(server.serverPort())), PrintServerState::Answers);
    }

    void aSilentServerHangsAndTheProbeEndsInTime()
    {
        QLocalServer server;
        QVERIFY(server.listen(m_path));
        QElapsedTimer timer;
        timer.start();

        QCOMPARE(Probe(m_path, Patience), PrintServerState::Hangs);

        QVERIFY(timer.elapsed() >= Patience);
        QVERIFY(timer.elapsed() < Enough);
    }

    void aSilentServerOfTheNetworkHangs()
    {
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));

        QCOMPARE(Probe(QString("127.0.0.1:%1").arg(server.serverPort()), Patience), PrintServerState::Hangs);
    }

    void aServerThatHangsUpIsAbsent()
    {
        QLocalServer server;
        QVERIFY(server.listen(m_path));
        connect(&server, &QLocalServer::newConnection, this, [&] { delete server.nextPendingConnection(); });

        QCOMPARE(Probe(m_path), PrintServerState::Absent);
    }

    void whereNothingListensTheServerIsAbsent_data()
    {
        QTest::addColumn<QString>("address");
        QTest::newRow("no file") << "/nonexistent/cups.sock";
        QTest::newRow("a folder") << "/tmp";
        QTest::newRow("a name too long for a socket") << '/' + QString(300, 'a');
        QTest::newRow("empty") << QString();
        QTest::newRow("no host") << ":631";
        QTest::newRow("no port") << "127.0.0.1:99999";
    }

    void whereNothingListensTheServerIsAbsent()
    {
        QFETCH(QString, address);

        QCOMPARE(Probe(address), PrintServerState::Absent);
    }

    void aPortThatWasClosedIsAbsent()
    {
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        const QString address = QString("127.0.0.1:%1").arg(server.serverPort());
        server.close();

        QCOMPARE(Probe(address), PrintServerState::Absent);
    }

    void theAddressIsThatOfTheEnvironment()
    {
        qputenv("CUPS_SERVER", "printers.example:1631");
        QCOMPARE(PrintServerAddress(), QString("printers.example:1631"));

        qputenv("CUPS_SERVER", "");
        const QString usual = PrintServerAddress();
        QVERIFY(usual == "/run/cups/cups.sock" || usual == "localhost");
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
};

NV_TEST_MAIN(tst_PrintServer)
#include "tst_PrintServer.moc"
