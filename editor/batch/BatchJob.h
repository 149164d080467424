#pragma once

#include <QObject>
#include <QSemaphore>
#include <QThreadPool>
#include <QVector>

#include <atomic>
#include <memory>

#include "BatchTree.h"
#include "BatchWork.h"
#include "OutputNames.h"
#include "WatchedDevice.h"

// Works on many images on threads of its own. As many at a time as there are cores, but fewer of those that
// are large.
class BatchJob : public QObject
{
    Q_OBJECT

public:
    explicit BatchJob(QObject* parent = nullptr);
    // Cancels and waits.
    ~BatchJob() override;

    bool IsRunning() const;
    // Of the last run, complete with Finished().
    const BatchReport& GetReport() const;
    // Does nothing while it is running. The output folder is made if need be.
    void Start(const QVector<BatchInput>& inputs, const BatchChange& change, const OutputRule& rule);

public Q_SLOTS:
    // Finished() comes soon; what is done stays, and the rest is skipped.
    void Cancel();

Q_SIGNALS:
    // Not for each image if they are quick, but always for the last one.
    void Advanced(int done, int total);
    void Finished();

private:
    struct Run;

    void OnAdvanced();
    void OnEnded();

    QThreadPool m_pool;
    std::shared_ptr<Run> m_pRun;
    BatchReport m_report;
};
