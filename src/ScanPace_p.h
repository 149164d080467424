#pragma once

#include <QElapsedTimer>
#include <QFuture>
#include <QThread>

struct BatchScanResult;

// How the threads of a scan wait for one another. A run of the pool looks at one folder, which mostly takes
// less time than to fall asleep and to be woken up: the event loop and one thread of the pool then pass the
// work to and fro awake. Longer runs are left to the pool as they are. GUI thread.
class ScanPace
{
    Q_DISABLE_COPY_MOVE(ScanPace)

public:
    ScanPace() = default;
    ~ScanPace();

    // A run is about to begin. After a short one the event loop counts as one of the pool's threads: a further
    // one would only take the processor from it.
    void Begin();
    // The event loop is about to sleep.
    void Wait(const QFuture<BatchScanResult>& run);
    // There is no further run for now.
    void End();

    // Part of a run's functor. Keeps the thread of the pool that ends a short run awake for an eighth of the
    // run's time: the event loop mostly begins the next one by then. What the starting thread copies and
    // drops does nothing.
    class WorkerEnd
    {
    public:
        WorkerEnd() { m_sinceStart.start(); }
        WorkerEnd(const WorkerEnd&) = default;
        WorkerEnd& operator=(const WorkerEnd&) = delete;
        ~WorkerEnd();

    private:
        const QThread* m_starter = QThread::currentThread();
        QElapsedTimer m_sinceStart;
    };

private:
    // Not valid before the first run.
    QElapsedTimer m_sinceBegin;
    bool m_countsAsThread = false;
    int m_waitsToLeaveOut = 0;
};
