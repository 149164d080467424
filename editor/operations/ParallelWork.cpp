#include "ParallelWork.h"

#include <algorithm>
#include <atomic>

#include <QRunnable>
#include <QSemaphore>
#include <QThread>
#include <QThreadPool>

void RunParallel(int count, const std::function<void(int)>& work)
{
    std::atomic<int> next{0};
    QSemaphore ended;
    const auto run = [&]
    {
        for (int i = next++; i < count; i = next++)
            work(i);
    };
    const auto help = [&]
    {
        run();
        ended.release();
    };
    int helpers = 0;
    const int wanted = std::min(count, QThread::idealThreadCount()) - 1;
    while (helpers < wanted)
    {
        QRunnable* helper = QRunnable::create(help);
        if (!QThreadPool::globalInstance()->tryStart(helper))
        {
            delete helper;
            break;
        }
        ++helpers;
    }
    run();
    ended.acquire(helpers);
}
