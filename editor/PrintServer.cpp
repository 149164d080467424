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

template <class Socket>
PrintServerState Ask(Socket& socket, const QDeadlineTimer& deadline)
{
    const auto rest = [&deadline] { return int(deadline.remainingTime()); };
    bool isAnswered = socket.waitForConnected(rest());
    if (isAnswered)
    {
        socket.write("OPTIONS * HTTP/1.1\r\nHost: localhost\r\nConnection: close\r\n\r\n");
        isAnswered = socket.waitForReadyRead(rest()) || socket.bytesAvailable() > 0;
    }
    if (isAnswered)
        return PrintServerState::Answers;
    return deadline.hasExpired() ? PrintServerState::Hangs : PrintServerState::Absent;
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
    if (address.startsWith(QLatin1Char('/')))
    {
        QLocalSocket socket;
        socket.connectToServer(address);
        return Ask(socket, deadline);
    }
    // What may follow the port, such as a version, belongs to the path of this URL.
    const QUrl url(QStringLiteral("ipp://") + address);
    if (url.host().isEmpty())
        return PrintServerState::Absent;
    QTcpSocket socket;
    socket.setProxy(QNetworkProxy::NoProxy);
    socket.connectToHost(url.host(), quint16(url.port(DefaultPort)));
    return Ask(socket, deadline);
}
