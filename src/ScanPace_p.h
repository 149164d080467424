#pragma once

#include <QElapsedTimer>
#include <QFuture>
#include <QPointer>
#include <QThreadPool>

#include <atomic>
#include <memory>

// How the threads of a scan wait for one another. A run of the pool looks at one folder, which mostly takes
// less time than to fall asleep and to be woken up: the event loop and one thread of the pool then pass the
// work to and fro awake. Longer runs are left to the pool as they are. GUI thread, but for the end of
// WorkerEnd.
class ScanPace
{
    Q_DISABLE_COPY_MOVE(ScanPace)

public:
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
        std::shared_ptr<const std::atomic<unsigned>> m_turns;
        unsigned m_turnsBefore;
    };

    ScanPace() = default;
    ~ScanPace();

    // A run is about to begin. After a short one the event loop counts as one of the pool's threads: a
    // further one would only take the processor from it.
    void Begin();
    // The run stands in the pool's queue.
    void HasBegun() { ++*m_turns; }
    // The event loop is about to wait, or to look for events.
    void Wait(const QFuture<void>& run);
    // There is no further run for now, or one that the run before says nothing of.
    void End();

private:
    bool countsAsThread() const { return s_pCounting == this; }
    void noteEnd();
    void countAsThread();
    void release();

    // There is one event loop, however many scans it runs.
    static const ScanPace* s_pCounting;
    // May end before a scan does.
    QPointer<QThreadPool> m_pPool;
    // Not valid if the run before says nothing of the next one.
    QElapsedTimer m_sinceBegin;
    // In nanoseconds, as far as the event loop saw it: without what it took to deal with the results.
    // Negative while it has not seen the end.
    qint64 m_took = -1;
    // Since the run began.
    bool m_hasDelivered = false;
    int m_waitsToLeaveOut = 0;
    // Goes up when a run has begun and when there is none for now. Threads that end a run may outlive this.
    std::shared_ptr<std::atomic<unsigned>> m_turns = std::make_shared<std::atomic<unsigned>>(0);
};
