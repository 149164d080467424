#include "BatchJob.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QThread>
#include <QtConcurrent>

#include <new>

namespace
{

// Million pixels in work at a time; the largest document has as many.
const int MaxWeight = 100;

// Takes a share of what may be in work at a time.
class Share
{
public:
    Share(QSemaphore& semaphore, int weight) : m_semaphore(semaphore), m_weight(weight)
    {
        m_semaphore.acquire(m_weight);
    }
    ~Share() { m_semaphore.release(m_weight); }
    Share(const Share&) = delete;
    Share& operator=(const Share&) = delete;

private:
    QSemaphore& m_semaphore;
    const int m_weight;
};

} // namespace

// What the threads of a run share. Each outcome is written by one thread and read after the last has ended.
struct BatchJob::Run
{
    void Prepare();
    void Work(BatchJob* job);

    QVector<BatchInput> inputs;
    BatchChange change;
    OutputRule rule;
    QStringList targets;
    QVector<BatchOutcome> outcomes;
    BatchOutcome* first = nullptr;
    QString error;
    FileProgress progress;
    QSemaphore room{MaxWeight};
    std::atomic<int> next{0};
    std::atomic<int> done{0};
    std::atomic<int> workers{0};
    std::atomic<bool> isTold{false};
};

void BatchJob::Run::Prepare()
{
    if (!QDir().mkpath(rule.folder))
        error = BatchJob::tr("The folder %1 could not be made.").arg(QDir::toNativeSeparators(rule.folder));
    else if (!QFileInfo(rule.folder).isWritable())
        error = BatchJob::tr("Nothing can be written to the folder %1.")
                    .arg(QDir::toNativeSeparators(rule.folder));
    if (!error.isEmpty())
        return;
    targets = PlanOutputs(
        inputs, rule,
        [](const QString& path) { return QFileInfo::exists(path) || QFileInfo(path).isSymLink(); },
        &progress);
}

void BatchJob::Run::Work(BatchJob* job)
{
    for (int i = next++; i < inputs.size(); i = next++)
    {
        // After a cancel there may be no target.
        const BatchTask task{inputs.at(i).path, targets.value(i)};
        const Share share(room, progress.cancelled ? 0 : WeightOf(task.source, change, MaxWeight));
        first[i] = RunTask(task, change, &progress);
        ++done;
        if (!isTold.exchange(true))
            QMetaObject::invokeMethod(job, &BatchJob::OnAdvanced, Qt::QueuedConnection);
    }
    if (--workers == 0)
        QMetaObject::invokeMethod(job, &BatchJob::OnEnded, Qt::QueuedConnection);
}

BatchJob::BatchJob(QObject* parent) : QObject(parent)
{
    m_pool.setMaxThreadCount(QThread::idealThreadCount());
}

BatchJob::~BatchJob()
{
    Cancel();
    m_pool.waitForDone();
}

bool BatchJob::IsRunning() const
{
    return bool(m_pRun);
}

const BatchReport& BatchJob::GetReport() const
{
    return m_report;
}

void BatchJob::Start(const QVector<BatchInput>& inputs, const BatchChange& change, const OutputRule& rule)
{
    if (m_pRun)
        return;
    m_report = BatchReport();
    m_pRun = std::make_shared<Run>();
    m_pRun->inputs = inputs;
    m_pRun->change = change;
    m_pRun->rule = rule;
    m_pRun->outcomes.resize(inputs.size());
    m_pRun->first = m_pRun->outcomes.data();
    const auto prepare = [this, run = m_pRun]
    {
        try
        {
            run->Prepare();
        }
        catch (const std::bad_alloc&)
        {
            run->error = tr("There is not enough memory for so many images.");
        }
        const int count = run->error.isEmpty() ? qBound(1, run->inputs.size(), m_pool.maxThreadCount()) : 0;
        run->workers = count;
        for (int i = 0; i < count; ++i)
            QtConcurrent::run(&m_pool, [this, run] { run->Work(this); });
        if (count == 0)
            QMetaObject::invokeMethod(this, &BatchJob::OnEnded, Qt::QueuedConnection);
    };
    QtConcurrent::run(&m_pool, prepare);
}

void BatchJob::Cancel()
{
    if (m_pRun)
        m_pRun->progress.cancelled = true;
}

void BatchJob::OnAdvanced()
{
    if (!m_pRun)
        return;
    m_pRun->isTold = false;
    Q_EMIT Advanced(m_pRun->done, m_pRun->inputs.size());
}

void BatchJob::OnEnded()
{
    m_pool.waitForDone();
    const std::shared_ptr<Run> run = std::move(m_pRun);
    m_pRun.reset();
    m_report.error = run->error;
    m_report.isCancelled = run->progress.cancelled;
    if (run->error.isEmpty())
        m_report.outcomes = run->outcomes;
    if (!m_report.outcomes.isEmpty())
        Q_EMIT Advanced(run->done, run->inputs.size());
    Q_EMIT Finished();
}
