#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

// A job of a print server, finished or not.
struct QueuedJob
{
    // As the print server counts.
    enum State
    {
        Pending = 3,
        Held = 4,
        Processing = 5,
        Stopped = 6,
        Cancelled = 7,
        Aborted = 8,
        Completed = 9
    };

    int id = 0;
    // Of the queue.
    QString printer;
    int state = 0;

    // Whether it is still to be printed, or is being printed.
    bool IsOpen() const { return state < Cancelled; }
    bool IsFailed() const { return state == Cancelled || state == Aborted; }
};

// The jobs that a print server knows.
struct QueuedJobs
{
    // False if the server did not tell them.
    bool isKnown = false;
    QVector<QueuedJob> jobs;

    // Of all queues; 0 if there is none.
    int LastId() const;
    // The first one of that queue whose number is above that one; without number if there is none.
    QueuedJob FirstAfter(int id, const QString& printer) const;
};

// The question for all jobs, and what an answer to it says. Bytes that are no such answer, or that end early,
// tell no jobs.
QByteArray JobsQuestion();
QueuedJobs ReadJobsAnswer(const QByteArray& bytes);

// Asks the server at that address, as for ProbePrintServer(). Safe in any thread; blocks for at most about
// the time, so it does not belong in the GUI thread.
QueuedJobs AskForJobs(const QString& address, int milliseconds = 3000);
