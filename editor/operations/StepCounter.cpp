#include "StepCounter.h"

#include <algorithm>

StepCounter::StepCounter(qint64 steps, const WorkProgress& progress)
    : m_steps(std::max<qint64>(1, steps)), m_progress(progress)
{
}

bool StepCounter::IsCancelled() const
{
    return m_isCancelled;
}

void StepCounter::Cancel()
{
    m_isCancelled = true;
}

void StepCounter::Advance(qint64 steps)
{
    const qint64 done = m_done += steps;
    if (m_progress && !m_progress(int(std::min<qint64>(100, done * 100 / m_steps))))
        Cancel();
}
