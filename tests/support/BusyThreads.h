// Holds up all work on other threads for as long as a test looks at what happens meanwhile.

#pragma once

#include <QRunnable>
#include <QSemaphore>
#include <QThreadPool>

// Takes all threads of the global pool, so that work given to it is not begun before Open().
class BusyThreads
{
public:
    BusyThreads()
    {
        for (int i = 0; i < m_count; ++i)
            QThreadPool::globalInstance()->start(QRunnable::create([this] { m_gate.acquire(); }));
    }
    ~BusyThreads() { Open(); }

    // Returns when the pool has worked off all that was given to it.
    void Open()
    {
        m_gate.release(m_count);
        QThreadPool::globalInstance()->waitForDone();
    }

private:
    Q_DISABLE_COPY(BusyThreads)

    const int m_count = QThreadPool::globalInstance()->maxThreadCount();
    QSemaphore m_gate;
};
