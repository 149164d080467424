#include "ScanPace_p.h"

#include <QAbstractEventDispatcher>
#include <QThreadPool>

#include "KXAddToBatchManager.h"

namespace
{

// In nanoseconds: a few times what a small folder takes.
constexpr qint64 longestWake = 150000;
// After one in vain: folders that take longer come in numbers, and their workers need the processor.
constexpr int waitsLeftOut = 3;

} // namespace

ScanPace::~ScanPace()
{
    End();
}

void ScanPace::Begin()
{
    const bool isShort = m_sinceBegin.isValid() && m_sinceBegin.nsecsElapsed() < longestWake;
    m_sinceBegin.start();
    if (!isShort)
    {
        End();
    }
    else if (!m_countsAsThread)
    {
        m_countsAsThread = true;
        QThreadPool::globalInstance()->reserveThread();
    }
}

void ScanPace::Wait(const QFuture<BatchScanResult>& run)
{
    // The texts on the folder before are dealt with while this one is in work.
    if (run.isFinished() || QAbstractEventDispatcher::instance()->hasPendingEvents())
        return;
    if (m_waitsToLeaveOut > 0)
    {
        --m_waitsToLeaveOut;
        End();
        return;
    }
    QElapsedTimer clock;
    clock.start();
    while (!run.isFinished() && clock.nsecsElapsed() < longestWake)
        QThread::yieldCurrentThread();
    if (run.isFinished())
        return;
    m_waitsToLeaveOut = waitsLeftOut;
    End();
}

void ScanPace::End()
{
    if (!m_countsAsThread)
        return;
    m_countsAsThread = false;
    QThreadPool::globalInstance()->releaseThread();
}

ScanPace::WorkerEnd::~WorkerEnd()
{
    if (QThread::currentThread() == m_starter)
        return;
    const qint64 now = m_sinceStart.nsecsElapsed();
    if (now > longestWake)
        return;
    while (m_sinceStart.nsecsElapsed() < now + now / 8)
        QThread::yieldCurrentThread();
}
