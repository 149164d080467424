// Many images on threads: all of them, once each, with progress, and cancelled at every moment.

#include "BatchJob.h"

#include <QDir>
#include <QFile>
#include <QSet>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <memory>

#include "SignalLog.h"
#include "TestMain.h"

class tst_BatchJob : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void allImagesAreDoneInOrder()
    {
        const QVector<BatchInput> inputs = makeImages(30);
        BatchJob job;
        SignalLog log(&job);

        run(job, inputs);

        QVERIFY(!job.IsRunning());
        QCOMPARE(job.GetReport().Count(BatchOutcome::Done), 30);
        QSet<QString> targets;
        for (int i = 0; i < 30; ++i)
        {
            const BatchOutcome& outcome = job.GetReport().outcomes.at(i);
            QCOMPARE(outcome.source, inputs.at(i).path);
            QCOMPARE(QImage(outcome.target).size(), QSize(20, 10));
            targets.insert(outcome.target);
        }
        QCOMPARE(targets.size(), 30);
        QCOMPARE(log.Count("Finished"), 1);
        QCOMPARE(log.Entries().last(), QString("Finished()"));
        QCOMPARE(log.Entries().at(log.Entries().size() - 2), QString("Advanced(30, 30)"));
    }

    void noImagesAreSoonDone()
    {
        BatchJob job;

        run(job, {});

        QVERIFY(job.GetReport().error.isEmpty());
        QVERIFY(job.GetReport().outcomes.isEmpty());
    }

    void badImagesDoNotHoldUpTheOthers()
    {
        QVector<BatchInput> inputs = makeImages(5);
        QFile text(path("in/text.png"));
        QVERIFY(text.open(QIODevice::WriteOnly));
        text.write("text");
        text.close();
        inputs.insert(2, {text.fileName(), path("in")});
        inputs.append({path("in/gone.png"), path("in")});
        BatchJob job;

        run(job, inputs);

        QCOMPARE(job.GetReport().Count(BatchOutcome::Done), 5);
        QCOMPARE(job.GetReport().outcomes.at(2).status, BatchOutcome::Failed);
        QCOMPARE(job.GetReport().outcomes.at(6).status, BatchOutcome::Skipped);
    }

    void aSecondRunOverwritesNothing()
    {
        const QVector<BatchInput> inputs = makeImages(3);
        BatchJob job;
        run(job, inputs);
        const QString first = job.GetReport().outcomes.at(0).target;

        run(job, inputs);

        QCOMPARE(job.GetReport().Count(BatchOutcome::Done), 3);
        QVERIFY(job.GetReport().outcomes.at(0).target != first);
        QCOMPARE(QDir(path("out/in")).entryList(QDir::Files).size(), 6);
    }

    void anOutputFolderThatCannotBeMadeEndsTheJob()
    {
        QFile file(path("file"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        BatchJob job;
        QSignalSpy finished(&job, &BatchJob::Finished);

        job.Start(makeImages(2), change(), {path("file/out"), true, QString()});

        QVERIFY(finished.wait());
        QVERIFY(job.GetReport().error.contains("could not be made"));
        QVERIFY(job.GetReport().outcomes.isEmpty());
    }

    void aCancelAtOnceSkipsAll()
    {
        BatchJob job;
        QSignalSpy finished(&job, &BatchJob::Finished);
        job.Start(makeImages(50), change(), rule());

        job.Cancel();

        QVERIFY(job.IsRunning());
        QVERIFY(finished.wait());
        QVERIFY(job.GetReport().isCancelled);
        QCOMPARE(job.GetReport().outcomes.size(), 50);
        QVERIFY(job.GetReport().Count(BatchOutcome::Skipped) > 40);
        checkFolder(job.GetReport());
    }

    void aCancelOnTheWayKeepsWhatIsDone()
    {
        const QVector<BatchInput> inputs = makeImages(60, QSize(600, 600));
        BatchJob job;
        QSignalSpy finished(&job, &BatchJob::Finished);
        connect(&job, &BatchJob::Advanced, &job, &BatchJob::Cancel);

        job.Start(inputs, change(), rule());

        QVERIFY(finished.wait(30000));
        const BatchReport& report = job.GetReport();
        QVERIFY(report.isCancelled);
        QVERIFY(report.Count(BatchOutcome::Done) > 0);
        QVERIFY(report.Count(BatchOutcome::Skipped) > 0);
        QCOMPARE(report.Count(BatchOutcome::Failed), 0);
        checkFolder(report);
    }

    void cancelWithoutAJobDoesNothing()
    {
        BatchJob job;
        SignalLog log(&job);

        job.Cancel();
        QCoreApplication::processEvents();

        QCOMPARE(log.Count(), 0);
    }

    void aSecondStartInMidJobDoesNothing()
    {
        const QVector<BatchInput> inputs = makeImages(5);
        BatchJob job;
        QSignalSpy finished(&job, &BatchJob::Finished);
        job.Start(inputs, change(), rule());

        job.Start(inputs, change(), rule());

        QVERIFY(finished.wait());
        QCOMPARE(finished.size(), 1);
        QCOMPARE(QDir(path("out/in")).entryList(QDir::Files).size(), 5);
    }

    void aJobThatIsDestroyedInMidRunLeavesNoHalfFiles()
    {
        const QVector<BatchInput> inputs = makeImages(40, QSize(400, 400));
        auto job = std::make_unique<BatchJob>();
        QSignalSpy advanced(job.get(), &BatchJob::Advanced);
        job->Start(inputs, change(), rule());
        QVERIFY(advanced.wait());

        job.reset();

        const QStringList files = QDir(path("out/in")).entryList(QDir::Files | QDir::Hidden);
        for (const QString& file : files)
            QCOMPARE(QImage(path("out/in/") + file).size(), QSize(200, 200));
    }

private:
    static BatchChange change()
    {
        BatchChange it;
        it.resize = BatchChange::ByPercent;
        it.percent = 50;
        return it;
    }
    OutputRule rule() const { return {path("out"), true, QString()}; }
    QString path(const QString& name) const { return m_folder->filePath(name); }

    QVector<BatchInput> makeImages(int count, const QSize& size = QSize(40, 20)) const
    {
        QDir().mkpath(path("in"));
        QVector<BatchInput> inputs;
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::red);
        for (int i = 0; i < count; ++i)
        {
            const QString file = path(QString("in/%1.png").arg(i));
            image.save(file);
            inputs.append({file, path("in")});
        }
        return inputs;
    }

    void run(BatchJob& job, const QVector<BatchInput>& inputs) const
    {
        QSignalSpy finished(&job, &BatchJob::Finished);
        job.Start(inputs, change(), rule());
        QVERIFY(job.IsRunning());
        QVERIFY(finished.wait(30000));
    }

    // Just what the report says is done, and whole.
    void checkFolder(const BatchReport& report) const
    {
        const QStringList files = QDir(path("out/in")).entryList(QDir::Files | QDir::Hidden);
        QCOMPARE(files.size(), report.Count(BatchOutcome::Done));
        for (const QString& file : files)
            QVERIFY(!QImage(path("out/in/") + file).isNull());
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

NV_TEST_MAIN(tst_BatchJob)
#include "tst_BatchJob.moc"
