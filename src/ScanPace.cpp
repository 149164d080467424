#include "ScanPace_p.h"

#include <QAbstractEventDispatcher>
#include <QThread>

namespace
{

// In nanoseconds: a few times what a small folder takes.
constexpr qint64 longestWake = 150000;
// After one in vain: folders that take longer come in numbers, and their workers need the processor.
constexpr int waitsLeftOut = 3;

bool hasPendingEvents()
{
    return QAbstractEventDispatcher::instance()->hasPendingEvents();
}

} // namespace

const ScanPace* ScanPace::s_pCounting = nullptr;

ScanPace::~ScanPace()
{
    End();
}

void ScanPace::Begin()
{
    noteEnd();
    const bool isShort = m_sinceBegin.isValid() && m_took < longestWake;
    m_sinceBegin.start();
    m_took = -1;
    m_hasDelivered = false;
    // A pool of one thread can spare none.
    if (isShort && QThreadPool::globalInstance()->maxThreadCount() > 1)
        countAsThread();
    else
        release();
}

void ScanPace::Wait(const QFuture<void>& run)
{
    if (run.isFinished())
    {
        noteEnd();
        // Nobody waits for its end.
        if (countsAsThread() && !hasPendingEvents())
            release();
        return;
    }
    // While a short run is in work, what was posted before it is delivered, texts above all. Its results, and
    // what else comes meanwhile, have to wait until it has ended: to take over each at once, the threads
    // would wait for each other's locks.
    if (!(countsAsThread() && m_hasDelivered) && hasPendingEvents())
    {
        m_hasDelivered = true;
        return;
    }
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
    {
        noteEnd();
        return;
    }
    m_waitsToLeaveOut = waitsLeftOut;
    release();
}

void ScanPace::End()
{
    ++*m_turns;
    m_sinceBegin.invalidate();
    release();
}

void ScanPace::noteEnd()
{
    if (m_took < 0 && m_sinceBegin.isValid())
        m_took = m_sinceBegin.nsecsElapsed();
}

void ScanPace::countAsThread()
{
    if (s_pCounting)
        return;
    s_pCounting = this;
    m_pPool = QThreadPool::globalInstance();
    m_pPool->reserveThread();
}

void ScanPace::release()
{
    if (!countsAsThread())
        return;
    s_pCounting = nullptr;
    if (m_pPool)
        m_pPool->releaseThread();
}

ScanPace::WorkerEnd::WorkerEnd(const ScanPace& pace) : m_turns(pace.m_turns), m_turnsBefore(*pace.m_turns)
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
    while (*m_turns - m_turnsBefore < 2 && m_sinceStart.nsecsElapsed() < 2 * now)
        QThread::yieldCurrentThread();
}
