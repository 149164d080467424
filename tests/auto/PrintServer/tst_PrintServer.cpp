// The probe of a print server, and questions to it: against servers that answer, hang up, are silent, and are
// not there, on local sockets and over the network.

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

QByteArray Post(const QString& address, const QByteArray& question, int milliseconds = Enough)
{
    QFutureWatcher<QByteArray> watcher;
    QEventLoop loop;
    QObject::connect(&watcher, &QFutureWatcher<QByteArray>::finished, &loop, &QEventLoop::quit);
    watcher.setFuture(QtConcurrent::run(PostToPrintServer, address, question, milliseconds));
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

    void aQuestionIsPostedAndAnswered()
    {
        QByteArray request;
        QLocalServer server;
        serve(server, request, "HTTP/1.1 200 OK\r\nServer: x\r\n\r\nthe\r\n\r\nanswer", 1);

        QCOMPARE(Post(m_path, QByteArray("a\0b", 3)), QByteArray("the\r\n\r\nanswer"));

        // The older version, whose answers have no pieces and end when the server hangs up.
        QVERIFY2(request.startsWith("POST / HTTP/1.0\r\n"), request);
        QVERIFY(request.contains("\r\nContent-Type: application/ipp\r\n"));
        QVERIFY(request.contains("\r\nContent-Length: 3\r\n"));
        QVERIFY(request.endsWith(QByteArray("\r\n\r\na\0b", 7)));
    }

    void anAnswerInManyPiecesIsPutTogether()
    {
        QByteArray request;
        QLocalServer server;
        const QByteArray body(300000, 'x');
        serve(server, request, "HTTP/1.0 200 OK\r\n\r\n" + body, 7001);

        QCOMPARE(Post(m_path, "q"), body);
    }

    void anAnswerOverTheNetworkIsReadToo()
    {
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        connect(&server, &QTcpServer::newConnection, this,
                [&]
                {
                    QTcpSocket* socket = server.nextPendingConnection();
                    socket->write("HTTP/1.1 200 OK\r\n\r\nyes");
                    socket->disconnectFromHost();
                });

        QCOMPARE(Post(QString("127.0.0.1:%1").arg(server.serverPort()), "q"), QByteArray("yes"));
    }

    void whatIsNoAnswerGivesNothing_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::newRow("refused") << QByteArray("HTTP/1.1 401 Unauthorized\r\n\r\nbody");
        QTest::newRow("another protocol") << QByteArray("HELO 200 OK\r\n\r\nbody");
        QTest::newRow("the number elsewhere") << QByteArray("HTTP/1.1 500  200 \r\n\r\nbody");
        QTest::newRow("a head alone") << QByteArray("HTTP/1.1 200 OK\r\nServer: x\r\n");
        QTest::newRow("nothing") << QByteArray();
    }

    void whatIsNoAnswerGivesNothing()
    {
        QFETCH(QByteArray, answer);
        QByteArray request;
        QLocalServer server;
        serve(server, request, answer, 1);

        QCOMPARE(Post(m_path, "q"), QByteArray());
    }

    void aServerThatStopsInItsAnswerIsNotWaitedForLong()
    {
        QLocalServer server;
        QVERIFY(server.listen(m_path));
        connect(&server, &QLocalServer::newConnection, this,
                [&] { server.nextPendingConnection()->write("HTTP/1.1 200 OK\r\n\r\nhalf of it"); });
        QElapsedTimer timer;
        timer.start();

        QCOMPARE(Post(m_path, "q", Patience), QByteArray());

        QVERIFY(timer.elapsed() >= Patience);
        QVERIFY(timer.elapsed() < Enough);
    }

    void whereNothingListensThereIsNoAnswer()
    {
        for (const char* address : {"/nonexistent/cups.sock", "", ":631"})
            QCOMPARE(Post(address, "q"), QByteArray());
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
    // Takes in what comes until it holds the head and something more, then sends the answer in pieces and
    // hangs up.
    void serve(QLocalServer& server, QByteArray& request, const QByteArray& answer, int piece)
    {
        QVERIFY(server.listen(m_path));
        connect(&server, &QLocalServer::newConnection, this,
                [&server, &request, answer, piece]
                {
                    QLocalSocket* socket = server.nextPendingConnection();
                    connect(socket, &QLocalSocket::readyRead, &server,
                            [&request, socket, answer, piece]
                            {
                                request += socket->readAll();
                                const int end = request.indexOf("\r\n\r\n");
                                if (end < 0 || request.size() == end + 4)
                                    return;
                                for (int i = 0; i < answer.size(); i += piece)
                                {
                                    socket->write(answer.mid(i, piece));
                                    socket->flush();
                                }
                                socket->disconnectFromServer();
                            });
                });
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
};

NV_TEST_MAIN(tst_PrintServer)
#include "tst_PrintServer.moc"
