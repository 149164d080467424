// Work spread over threads: all of it is done once, whatever threads there are.

#include "ParallelWork.h"

#include <atomic>
#include <numeric>
#include <set>
#include <vector>

#include <QMutex>
#include <QThread>
#include <QThreadPool>
#include <QtConcurrent>

#include "BusyThreads.h"
#include "TestMain.h"

class tst_ParallelWork : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachItemIsWorkedOnOnce_data()
    {
        QTest::addColumn<int>("count");
        for (int count : {0, 1, 2, 7, 10000})
            QTest::addRow("%d", count) << count;
    }
    void eachItemIsWorkedOnOnce()
    {
        QFETCH(int, count);
        std::vector<int> items(size_t(count), 0);

        ForEachParallel(items, [](int& item) { ++item; });

        QCOMPARE(items, std::vector<int>(size_t(count), 1));
    }

    void aNegativeCountIsNothing()
    {
        RunParallel(-3, [](int) { QFAIL("called"); });
    }

    void freeThreadsHelp()
    {
        if (QThread::idealThreadCount() < 2)
            QSKIP("one core alone never has a thread free to help");
        // A thread that has just done its work counts as busy for a moment.
        QThreadPool::globalInstance()->waitForDone();
        std::atomic<int> present{0};

        // Each waits for the other: one thread alone would wait for ever.
        RunParallel(2,
                    [&present](int)
                    {
                        ++present;
                        while (present < 2)
                            QThread::yieldCurrentThread();
                    });

        QCOMPARE(present.load(), 2);
    }

    void withoutAFreeThreadTheCallerDoesItAll()
    {
        BusyThreads threads;
        QMutex mutex;
        std::set<QThread*> used;

        RunParallel(100,
                    [&](int)
                    {
                        const QMutexLocker lock(&mutex);
                        used.insert(QThread::currentThread());
                    });

        QCOMPARE(used, std::set<QThread*>({QThread::currentThread()}));
    }

    void itMayBeCalledOnEveryThreadOfThePoolAtOnce()
    {
        std::atomic<int> done{0};
        QFutureSynchronizer<void> all;
        for (int i = 0; i < 4 * QThreadPool::globalInstance()->maxThreadCount(); ++i)
            all.addFuture(QtConcurrent::run(
                [&done] { RunParallel(50, [&done](int) { RunParallel(3, [&done](int) { ++done; }); }); }));

        all.waitForFinished();

        QCOMPARE(done.load(), 4 * QThreadPool::globalInstance()->maxThreadCount() * 150);
    }
};

NV_TEST_MAIN(tst_ParallelWork)
#include "tst_ParallelWork.moc"
