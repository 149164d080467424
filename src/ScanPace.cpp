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
        release();
    }
    else if (!m_countsAsThread)
    {
        m_countsAsThread = true;
        QThreadPool::globalInstance()->reserveThread();
    }
}

void ScanPace::Wait(const QFuture<BatchScanResult>& run)
{
    // Results of a short run are taken over when it has ended: the threads would only wait for each other's
    // locks meanwhile.
    if (run.isFinished() || (!m_countsAsThread && QAbstractEventDispatcher::instance()->hasPendingEvents()))
        return;
    if (m_waitsToLeaveOut > 0)
    {
        --m_waitsToLeaveOut;
        release();
        return;
    }
    QElapsedTimer clock;
    clock.start();
    while (!run.isFinished() && clock.nsecsElapsed() < longestWake)
        QThread::yieldCurrentThread();
    if (run.isFinished())
        return;
    m_waitsToLeaveOut = waitsLeftOut;
    release();
}

void ScanPace::End()
{
    ++*m_begun;
    release();
}

void ScanPace::release()
{
    if (!m_countsAsThread)
        return;
    m_countsAsThread = false;
    QThreadPool::globalInstance()->releaseThread();
}

ScanPace::WorkerEnd::WorkerEnd(const ScanPace& pace) : m_begun(pace.m_begun), m_before(*pace.m_begun)
{
    m_sinceStart.start();
}

ScanPace::WorkerEnd::~WorkerEnd()
{
    if (QThread::currentThread() == m_starter)
        return;
    const qint64 now = m_sinceStart.nsecsElapsed();
    if (now > longestWake)
        return;
    // The first one is this run.
    while (*m_begun - m_before < 2 && m_sinceStart.nsecsElapsed() < 2 * now)
        QThread::yieldCurrentThread();
}
