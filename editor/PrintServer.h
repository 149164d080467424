#pragma once

#include <QByteArray>
#include <QString>

// Whether a print server can be asked without waiting for it: the toolkit's list of printers blocks for
// minutes if the server takes a connection and then is silent.
enum class PrintServerState
{
    Answers,
    // Nothing listens there, or it hung up.
    Absent,
    // It did not say a word within the time.
    Hangs
};

// Where the server is: CUPS_SERVER, else the socket of the system, else this computer's port 631.
QString PrintServerAddress();

// Sends a request and waits for the first byte of an answer, whatever it is. The address is the path of a
// local socket, or a host with or without a port. Safe in any thread; blocks for at most about the time, so
// it does not belong in the GUI thread.
PrintServerState ProbePrintServer(const QString& address, int milliseconds = 3000);

// Sends a question of the printing protocol and returns the answer, without the head of either; empty if
// there is none within the time, or the server refuses. The rest as for ProbePrintServer().
QByteArray PostToPrintServer(const QString& address, const QByteArray& question, int milliseconds = 3000);
