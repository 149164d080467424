#pragma once

#include <QFutureWatcher>
#include <QList>
#include <QObject>
#include <QStringList>

#include <memory>

#include "KXBatchInputModel.h"
#include "generaltoolsgui_export.h"

// What became of one path of a scan. A plain value that passes between threads; it does not own the node.
struct BatchScanResult
{
    // Under which the node will hang; null for what the caller asked for itself.
    KXBatchInputModel::Node* parent = nullptr;
    // Not linked yet. Null if there is nothing at the path, or a file of a type that is not wanted.
    KXBatchInputModel::Node* node = nullptr;
    // As it was passed in.
    QString path;
    // What stands directly in a folder: absolute paths, by name without regard to case.
    QStringList files;
    QStringList folders;
};

// Looks at one path, on any thread, and never descends. Reads the disk and its own fields only.
struct GENERALTOOLSGUI_EXPORT ScanFunctor
{
    using result_type = BatchScanResult;

    // The caller gets a new node with the result. Links are followed, also those that lead in a circle; a
    // folder that cannot be read is an empty one; what is hidden is not listed, but taken if it is passed in
    // itself.
    BatchScanResult operator()(const QString& path) const;

    // Handed on to the result, never looked into.
    KXBatchInputModel::Node* parent = nullptr;
    // Each of the form "*.ext", in lower case: a file is taken if one equals its suffix in lower case. In a
    // listing an empty list means all files.
    QStringList filters;
};

// Scans files and folders into trees of nodes, one folder after the other, breadth first; the paths of one
// folder are looked at on the threads of the global pool.
//
// Needs a running event loop, which stays awake for up to 150 us at a time while a folder is in work: to be
// woken up would take longer than most folders do. For the same reason a thread of the pool stays awake for
// up to 150 us after each folder, and while folders are that small, the event loop's thread counts as one of
// the pool's, as by QThreadPool::reserveThread(), until the loop waits in vain or the scan ends. Don't delete
// it from within one of its signals; deleteLater() is safe. Roots that nobody took are deleted with it. It
// does not wait then for the folder in work, and the few nodes of that are lost.
class GENERALTOOLSGUI_EXPORT KXAddToBatchManager : public QObject
{
    Q_OBJECT

public:
    // Filters by what NVImageFileManager says it reads, but for the native document format. Without one
    // there, or with none of its formats, only folders are found.
    explicit KXAddToBatchManager(QObject* parent);
    ~KXAddToBatchManager() override;

    // The roots found so far, in order of arrival, which the caller owns from now on. Meant for
    // ScanFinished(); empty the second time.
    QList<KXBatchInputModel::Node*> TakeResult();

public Q_SLOTS:
    // Both do the same: each path is a file or a folder as the disk has it. Filters are those at the time
    // when work on the paths begins.
    //
    // While a scan runs, waits for the folder in work; what of it has not been taken over by then is lost,
    // and the next in the queue comes first.
    void ScanFolders(QStringList folders);
    void ScanFiles(QStringList files);
    // Ends the manager's work for good: ScanFinished() never comes afterwards. Waits for the folder in work,
    // whose nodes are lost as far as they have not been taken over, and deletes the roots.
    void Cancel();

Q_SIGNALS:
    // A line of text on what was scanned last, empty when the next folder begins.
    void ReadyAt(QString fileName);
    // A line of text on the folder in work.
    void NewFolder(QString folder);
    // Of the folder in work; from 0 to the number of its paths, anew with each folder.
    void Progress(int value);
    void ProgressChanged(int min, int max);
    // Nothing is left to be scanned. Not after Cancel().
    void ScanFinished();

private Q_SLOTS:
    void OnScanReadyAt(int index);
    void OnScanFinished();
    void OnSupportedGroupChanged();

private:
    // Paths that wait to be looked at.
    struct Job
    {
        KXBatchInputModel::Node* parent;
        QStringList paths;
    };
    struct ScanState;

    void startRun(const Job& job);
    void addToFileCounts(KXBatchInputModel::Node* node, int count);
    void findFileCounts(KXBatchInputModel::Node* node);

    QList<KXBatchInputModel::Node*> m_results;
    QList<Job> m_jobs;
    QFutureWatcher<BatchScanResult> m_watcher;
    QStringList m_filters;
    // What a scan keeps from run to run.
    const std::unique_ptr<ScanState> m_pState;
};
