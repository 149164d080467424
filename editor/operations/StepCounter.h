#pragma once

#include <atomic>

#include "PictureContents.h"

// Counts the steps of work that several threads do, and tells the percentage.
class StepCounter
{
public:
    // The progress may be empty; it outlives this. Steps are of any unit.
    StepCounter(qint64 steps, const WorkProgress& progress);

    // Once the progress wants no more.
    bool IsCancelled() const;
    void Cancel();
    // So many steps are done.
    void Advance(qint64 steps);

private:
    const qint64 m_steps;
    const WorkProgress& m_progress;
    std::atomic<qint64> m_done{0};
    std::atomic<bool> m_isCancelled{false};
};
