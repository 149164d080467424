// The wait for work on a file: short work shows nothing, long work shows progress and can be cancelled.

#include "FileTask.h"

#include <QLabel>
#include <QMainWindow>
#include <QProgressBar>
#include <QPushButton>
#include <QSemaphore>
#include <QStatusBar>
#include <QThread>
#include <QTimer>

#include "SignalLog.h"
#include "TestMain.h"
#include "WatchedDevice.h"

class tst_FileTask : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shortWorkRunsElsewhereAndShowsNothing()
    {
        QMainWindow window;
        FileTask task(window.statusBar());
        SignalLog log(&task);
        QThread* thread = nullptr;

        const bool ran = task.Run("Work", [&thread](FileProgress*) { thread = QThread::currentThread(); });

        QVERIFY(ran);
        QVERIFY(thread && thread != QThread::currentThread());
        QCOMPARE(log.Entries(), QStringList());
        QVERIFY(!task.IsRunning());
    }

    void longWorkShowsItsProgressUntilItEnds()
    {
        QMainWindow window;
        window.show();
        FileTask task(window.statusBar());
        QSemaphore go;
        bool seen = false;
        connect(&task, &FileTask::BusyChanged, &window,
                [&](bool busy)
                {
                    if (!busy)
                        return;
                    const auto* bar = window.findChild<QProgressBar*>();
                    seen = bar->isVisible() && bar->value() == 40 && task.IsRunning() &&
                        !task.Run("Another", [](FileProgress*) {});
                    go.release();
                });
        SignalLog log(&task);

        task.Run("Opening <b>x</b>",
                 [&go](FileProgress* progress)
                 {
                     progress->percent = 40;
                     go.acquire();
                 });

        QVERIFY(seen);
        QCOMPARE(log.Entries(), QStringList({"BusyChanged(true)", "BusyChanged(false)"}));
        QVERIFY(!window.findChild<QProgressBar*>()->isVisible());
    }

    void cancelReachesTheWork()
    {
        QMainWindow window;
        window.show();
        FileTask task(window.statusBar());
        connect(&task, &FileTask::BusyChanged, &window,
                [&window](bool busy)
                {
                    if (busy)
                        QTest::mouseClick(window.findChild<QPushButton*>(), Qt::LeftButton);
                });
        bool cancelled = false;

        task.Run("Work",
                 [&cancelled](FileProgress* progress)
                 {
                     while (!progress->cancelled)
                         QThread::yieldCurrentThread();
                     cancelled = true;
                 });

        QVERIFY(cancelled);
    }

    void cancelWithoutWorkDoesNothing()
    {
        QMainWindow window;
        FileTask task(window.statusBar());

        task.Cancel();

        bool ran = false;
        QVERIFY(task.Run("Work", [&ran](FileProgress* progress) { ran = !progress->cancelled; }));
        QVERIFY(ran);
    }

    void theProgressIsIndefiniteWhenNobodyCanTell()
    {
        QMainWindow window;
        window.show();
        FileTask task(window.statusBar());
        QSemaphore go;
        int maximum = -1;
        connect(&task, &FileTask::BusyChanged, &window,
                [&](bool busy)
                {
                    if (!busy)
                        return;
                    maximum = window.findChild<QProgressBar*>()->maximum();
                    go.release();
                });

        task.Run("Work", [&go](FileProgress*) { go.acquire(); });

        QCOMPARE(maximum, 0);
    }
};

NV_TEST_MAIN(tst_FileTask)
#include "tst_FileTask.moc"
