#include "PrintServer.h"

#include <QDeadlineTimer>
#include <QFileInfo>
#include <QLocalSocket>
#include <QNetworkProxy>
#include <QTcpSocket>
#include <QUrl>

namespace
{

const int DefaultPort = 631;

// More than the jobs of any server take.
const qint64 MostAnswer = 64 * 1024 * 1024;

int RestOf(const QDeadlineTimer& deadline)
{
    return int(deadline.remainingTime());
}

template <class Socket>
PrintServerState Ask(Socket& socket, const QDeadlineTimer& deadline)
{
    bool isAnswered = socket.waitForConnected(RestOf(deadline));
    if (isAnswered)
    {
        socket.write("OPTIONS * HTTP/1.1\r\nHost: localhost\r\nConnection: close\r\n\r\n");
        isAnswered = socket.waitForReadyRead(RestOf(deadline)) || socket.bytesAvailable() > 0;
    }
    if (isAnswered)
        return PrintServerState::Answers;
    return deadline.hasExpired() ? PrintServerState::Hangs : PrintServerState::Absent;
}

// All that comes until the server hangs up: an answer of the older version of the protocol ends so.
template <class Socket>
QByteArray Exchange(Socket& socket, const QByteArray& question, const QDeadlineTimer& deadline)
{
    if (!socket.waitForConnected(RestOf(deadline)))
        return QByteArray();
    socket.write(question);
    QByteArray answer = socket.readAll();
    while (answer.size() < MostAnswer && socket.waitForReadyRead(RestOf(deadline)))
        answer += socket.readAll();
    answer += socket.readAll();
    return deadline.hasExpired() ? QByteArray() : answer;
}

// Where the server listens, by the act on a socket that connects there.
template <class Result, class Act>
Result AtServer(const QString& address, const Result& nowhere, const Act& act)
{
    if (address.startsWith(QLatin1Char('/')))
    {
        QLocalSocket socket;
        socket.connectToServer(address);
        return act(socket);
    }
    // What may follow the port, such as a version, belongs to the path of this URL.
    const QUrl url(QStringLiteral("ipp://") + address);
    if (url.host().isEmpty())
        return nowhere;
    QTcpSocket socket;
    socket.setProxy(QNetworkProxy::NoProxy);
    socket.connectToHost(url.host(), quint16(url.port(DefaultPort)));
    return act(socket);
}

} // namespace

QString PrintServerAddress()
{
    const QString chosen = qEnvironmentVariable("CUPS_SERVER");
    if (!chosen.isEmpty())
        return chosen;
    const QString local = QStringLiteral("/run/cups/cups.sock");
    return QFileInfo::exists(local) ? local : QStringLiteral("localhost");
}

PrintServerState ProbePrintServer(const QString& address, int milliseconds)
{
    const QDeadlineTimer deadline(milliseconds);
    return AtServer(address, PrintServerState::Absent,
                    [&deadline](auto& socket) { return Ask(socket, deadline); });
}

QByteArray PostToPrintServer(const QString& address, const QByteArray& question, int milliseconds)
{
    const QDeadlineTimer deadline(milliseconds);
    const QByteArray head = "POST / HTTP/1.0\r\nHost: localhost\r\nContent-Type: application/ipp\r\n"
                            "Content-Length: " +
        QByteArray::number(question.size()) + "\r\nConnection: close\r\n\r\n";
    const QByteArray answer = AtServer(
        address, QByteArray(), [&](auto& socket) { return Exchange(socket, head + question, deadline); });
    const int body = answer.indexOf("\r\n\r\n");
    const bool isTaken = answer.startsWith("HTTP/1.") && answer.mid(8, 5) == " 200 ";
    return isTaken && body >= 0 ? answer.mid(body + 4) : QByteArray();
}
