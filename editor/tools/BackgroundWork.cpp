#include "BackgroundWork.h"

#include <QSemaphore>
#include <QtConcurrent>

namespace
{

const int PatienceMs = 300;

} // namespace

struct BackgroundWork::State
{
    std::atomic<bool> cancelled{false};
    QSemaphore done;
};

BackgroundWork::BackgroundWork(QObject* parent) : QObject(parent)
{
    m_patience.setSingleShot(true);
    m_patience.setInterval(PatienceMs);
    connect(&m_patience, &QTimer::timeout, this, &BackgroundWork::Lasts);
    connect(&m_watcher, &QFutureWatcher<void>::finished, this, &BackgroundWork::OnFinished);
}

BackgroundWork::~BackgroundWork()
{
    Cancel();
}

bool BackgroundWork::IsRunning() const
{
    return m_pState != nullptr;
}

void BackgroundWork::Start(const Work& work)
{
    Cancel();
    m_pState = std::make_shared<State>();
    const auto run = [work, state = m_pState]
    {
        const QSemaphoreReleaser releaser(state->done);
        work(state->cancelled);
    };
    m_watcher.setFuture(QtConcurrent::run(run));
    m_patience.start();
}

void BackgroundWork::Cancel()
{
    if (!m_pState)
        return;
    m_pState->cancelled = true;
    m_pState.reset();
    m_patience.stop();
}

bool BackgroundWork::Wait(int milliseconds)
{
    if (!m_pState || !m_pState->done.tryAcquire(1, milliseconds))
        return false;
    Complete();
    return true;
}

void BackgroundWork::OnFinished()
{
    // The end of earlier work, that was given up or waited for, is told here too.
    if (m_pState && m_pState->done.available() > 0)
        Complete();
}

void BackgroundWork::Complete()
{
    m_pState.reset();
    m_patience.stop();
    Q_EMIT Done();
}
