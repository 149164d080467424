#pragma once

#include <QElapsedTimer>
#include <QFuture>
#include <QThread>

#include <atomic>
#include <memory>

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

    // A run is about to begin. After a short one the event loop counts as one of the pool's threads: a
    // further one would only take the processor from it.
    void Begin();
    // The run stands in the pool's queue.
    void HasBegun() { ++*m_begun; }
    // The event loop is about to sleep.
    void Wait(const QFuture<BatchScanResult>& run);
    // There is no further run for now.
    void End();

    // Part of a run's functor. Keeps the thread of the pool that ends a short run awake until the next one
    // stands in the queue, but no longer than the run took. What the starting thread copies and drops does
    // nothing.
    class WorkerEnd
    {
    public:
        explicit WorkerEnd(const ScanPace& pace);
        WorkerEnd(const WorkerEnd&) = default;
        WorkerEnd& operator=(const WorkerEnd&) = delete;
        ~WorkerEnd();

    private:
        const QThread* m_starter = QThread::currentThread();
        QElapsedTimer m_sinceStart;
        std::shared_ptr<const std::atomic<unsigned>> m_begun;
        unsigned m_before;
    };

private:
    void release();

    // Not valid before the first run.
    QElapsedTimer m_sinceBegin;
    bool m_countsAsThread = false;
    int m_waitsToLeaveOut = 0;
    // How many runs have begun, and how many times there was none for now. Threads that end one may outlive
    // this.
    std::shared_ptr<std::atomic<unsigned>> m_begun = std::make_shared<std::atomic<unsigned>>(0);
};
