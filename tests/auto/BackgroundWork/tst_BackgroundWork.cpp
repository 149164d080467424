// Work on another thread: done, given up, waited for, begun anew, and outlived.

#include "BackgroundWork.h"

#include <QException>
#include <QThread>

#include "BusyThreads.h"
#include "SignalLog.h"
#include "TestMain.h"

class tst_BackgroundWork : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theWorkIsDoneOnAnotherThreadAndToldOnThisOne()
    {
        BackgroundWork work;
        SignalLog log(&work);
        QThread* worker = nullptr;

        work.Start([&worker](const std::atomic<bool>&) { worker = QThread::currentThread(); });

        QVERIFY(work.IsRunning());
        QCOMPARE(log.Count("Done"), 0);
        QTRY_COMPARE(log.Count("Done"), 1);
        QVERIFY(!work.IsRunning());
        QVERIFY(worker && worker != QThread::currentThread());
    }

    void waitingTellsAtOnceAndOnlyOnce()
    {
        BackgroundWork work;
        SignalLog log(&work);
        bool isDone = false;
        work.Start([&isDone](const std::atomic<bool>&) { isDone = true; });

        QVERIFY(work.Wait());

        QVERIFY(isDone);
        QCOMPARE(log.Entries(), QStringList("Done()"));
        QThreadPool::globalInstance()->waitForDone();
        QCoreApplication::processEvents();
        QCOMPARE(log.Count("Done"), 1);
        QVERIFY(!work.Wait());
    }

    void waitingEndsWhenPatienceDoes()
    {
        BusyThreads threads;
        BackgroundWork work;
        work.Start([](const std::atomic<bool>&) {});

        QVERIFY(!work.Wait(1));

        QVERIFY(work.IsRunning());
        threads.Open();
        QVERIFY(work.Wait());
    }

    void whatIsGivenUpSeesTheFlagAndIsNotTold()
    {
        BackgroundWork work;
        SignalLog log(&work);
        auto end = std::make_shared<QSemaphore>();
        work.Start(
            [end](const std::atomic<bool>& cancelled)
            {
                while (!cancelled)
                    QThread::yieldCurrentThread();
                end->release();
            });

        work.Cancel();

        QVERIFY(!work.IsRunning());
        QVERIFY(end->tryAcquire(1, 10000));
        QThreadPool::globalInstance()->waitForDone();
        QCoreApplication::processEvents();
        QCOMPARE(log.Entries(), QStringList());
    }

    void theEndOfEarlierWorkIsNotTakenForThatOfLater()
    {
        BackgroundWork work;
        work.Start([](const std::atomic<bool>&) {});
        QThreadPool::globalInstance()->waitForDone();
        SignalLog log(&work);
        BusyThreads threads;
        work.Start([](const std::atomic<bool>&) {});

        QCoreApplication::processEvents();

        QCOMPARE(log.Count("Done"), 0);
        QVERIFY(work.IsRunning());
        threads.Open();
        QTRY_COMPARE(log.Count("Done"), 1);
    }

    void aThrowEndsTheWorkToo()
    {
        BackgroundWork work;
        work.Start([](const std::atomic<bool>&) { throw QException(); });

        QVERIFY(work.Wait(10000));
    }

    void longWorkIsToldOnce()
    {
        BusyThreads threads;
        BackgroundWork work;
        SignalLog log(&work);
        work.Start([](const std::atomic<bool>&) {});

        QTRY_COMPARE(log.Count("Lasts"), 1);

        threads.Open();
        QTRY_COMPARE(log.Entries(), QStringList({"Lasts()", "Done()"}));
    }

    void itMayGoBeforeItsWork()
    {
        BusyThreads threads;
        auto seen = std::make_shared<std::atomic<int>>(-1);
        {
            BackgroundWork work;
            work.Start([seen](const std::atomic<bool>& cancelled) { *seen = cancelled ? 1 : 0; });
        }

        threads.Open();

        QCOMPARE(seen->load(), 1);
    }
};

NV_TEST_MAIN(tst_BackgroundWork)
#include "tst_BackgroundWork.moc"
