// Two threads of the global pool count in one variable without a lock. The thread sanitizer must say so: a
// run that is silent about the tests is worth nothing while it is silent about this.

#include <QtConcurrent>

#include <atomic>

namespace
{

int g_count = 0;
std::atomic<int> g_arrived{0};

void count()
{
    // Both are here before either counts, and a relaxed meeting orders nothing.
    g_arrived.fetch_add(1, std::memory_order_relaxed);
    while (g_arrived.load(std::memory_order_relaxed) < 2)
    {
        QThread::yieldCurrentThread();
    }
    ++g_count;
}

} // namespace

int main()
{
    QThreadPool::globalInstance()->setMaxThreadCount(2);
    QFuture<void> first = QtConcurrent::run(count);
    QFuture<void> second = QtConcurrent::run(count);
    first.waitForFinished();
    second.waitForFinished();
    return g_count > 0 ? 0 : 1;
}
