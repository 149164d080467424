#pragma once

#include <functional>

// Calls the function for each number from 0 up to the count, on the calling thread and on those threads of
// the global pool that are free now; returns when all is done. Unlike the maps of the toolkit it never waits
// for a thread of the pool, and so may be called on one of them. The function must not throw.
void RunParallel(int count, const std::function<void(int)>& work);

// The same for each item of a container with indices.
template <typename Container, typename Work>
void ForEachParallel(Container& items, const Work& work)
{
    const auto begin = items.begin();
    RunParallel(int(items.size()), [&](int i) { work(begin[i]); });
}
