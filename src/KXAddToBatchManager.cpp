#include "KXAddToBatchManager.h"

#include <QAbstractEventDispatcher>
#include <QDateTime>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QSet>
#include <QThread>
#include <QtConcurrentMap>

#include "FolderListing_p.h"
#include "NVImageFileManager.h"
#include "ReadFilters_p.h"

using Model = KXBatchInputModel;
using Node = KXBatchInputModel::Node;
using Roles = QMap<int, QVariant>;

namespace
{

// In nanoseconds: a few times what a small folder takes.
constexpr qint64 longestWake = 150000;
// After one in vain: folders that take longer come in numbers, and their workers need the processor.
constexpr int waitsLeftOut = 3;

// The same text, held once for all nodes that a thread makes.
QString shared(const QString& suffix)
{
    // There are few ways to spell the suffixes that are wanted, but nothing says how few.
    constexpr int limit = 256;
    thread_local QSet<QString> known;
    const auto at = known.constFind(suffix);
    if (at != known.constEnd())
        return *at;
    if (known.size() < limit)
        known.insert(suffix);
    return suffix;
}

// Keys come in ascending order, so that each goes to the end without a search.
void append(Roles& roles, int role, const QVariant& value)
{
    roles.insert(roles.constEnd(), role, value);
}

// What a listing gives is one already.
QString absolutePath(const QFileInfo& info, const QString& path)
{
    return IsCleanPath(path) ? path : info.absoluteFilePath();
}

// The path is absolute.
Node* makeFile(const QFileInfo& info, const QString& path, const QString& suffix)
{
    auto* node = new Node;
    Roles& roles = node->data.roles;
    append(roles, Qt::DisplayRole, info.fileName());
    append(roles, Qt::ToolTipRole, path);
    append(roles, Model::NodeTypeRole, shared(suffix));
    append(roles, Model::NodeIsFileRole, 1);
    append(roles, Model::NodePathRole, path);
    append(roles, Model::NodeExistsRole, true);
    append(roles, Model::NodeFileCountRole, 1);
    return node;
}

Node* makeFolder(const QFileInfo& info, const QString& path)
{
    auto* node = new Node;
    Roles& roles = node->data.roles;
    append(roles, Qt::DisplayRole, info.fileName());
    append(roles, Qt::ToolTipRole, path);
    append(roles, Model::NodeTypeRole, QObject::tr("Folder"));
    append(roles, Model::NodeIsFileRole, 0);
    append(roles, Model::NodePathRole, path);
    append(roles, Model::NodeModifiedRole, info.lastModified().toString(Qt::TextDate));
    append(roles, Model::NodeExistsRole, true);
    append(roles, Model::NodeFileCountRole, 0);
    return node;
}

// Where the role stands in the map, without a copy of its value.
const QVariant& valueOf(const Node* node, int role)
{
    static const QVariant none;
    const Roles& roles = node->data.roles;
    const auto at = roles.constFind(role);
    return at == roles.constEnd() ? none : *at;
}

int intOf(const Node* node, int role)
{
    return valueOf(node, role).toInt();
}

// Where the number stands.
int* fileCountOf(Node* node)
{
    Roles& roles = node->data.roles;
    // The role with the greatest number stands last, unless somebody has added some.
    auto at = roles.end();
    if (roles.isEmpty() || (--at).key() != Model::NodeFileCountRole)
        at = roles.find(Model::NodeFileCountRole);
    if (at == roles.end())
        at = roles.insert(Model::NodeFileCountRole, 0);
    *at = at->toInt();
    return static_cast<int*>(at->data());
}

// Keeps the thread of the pool that ends a short run awake for an eighth of the run's time: the event loop
// mostly begins the next run by then. After a long one it would only take the processor from the other
// threads. What the starting thread copies and drops does nothing.
class WakefulEnd
{
public:
    WakefulEnd() { m_sinceStart.start(); }
    WakefulEnd(const WakefulEnd&) = default;
    WakefulEnd& operator=(const WakefulEnd&) = delete;
    ~WakefulEnd()
    {
        if (QThread::currentThread() == m_starter)
            return;
        const qint64 now = m_sinceStart.nsecsElapsed();
        if (now > longestWake)
            return;
        while (m_sinceStart.nsecsElapsed() < now + now / 8)
            QThread::yieldCurrentThread();
    }

private:
    const QThread* m_starter = QThread::currentThread();
    QElapsedTimer m_sinceStart;
};

struct WakefulFunctor : ScanFunctor
{
    WakefulEnd end;
};

} // namespace

BatchScanResult ScanFunctor::operator()(const QString& path) const
{
    const QFileInfo info(path);
    BatchScanResult result;
    result.parent = parent;
    result.path = path;
    // Asked first since its answer holds the other one too: one look at the disk a path.
    const bool isFolder = info.isDir();
    if (!isFolder && !info.exists())
        return result;
    if (!isFolder)
    {
        const QString suffix = info.suffix();
        // Suffixes in upper case match no file at all, on purpose.
        if (filters.contains(QLatin1String("*.") + suffix.toLower(), Qt::CaseSensitive))
            result.node = makeFile(info, absolutePath(info, path), suffix);
        return result;
    }
    result.node = makeFolder(info, absolutePath(info, path));
    FolderListing listing = ListFolder(path, filters);
    result.files.swap(listing.files);
    result.folders.swap(listing.folders);
    return result;
}

KXAddToBatchManager::KXAddToBatchManager(QObject* parent) : QObject(parent)
{
    using Watcher = QFutureWatcherBase;
    connect(&m_watcher, &Watcher::resultReadyAt, this, &KXAddToBatchManager::OnScanReadyAt);
    connect(&m_watcher, &Watcher::finished, this, &KXAddToBatchManager::OnScanFinished);
    connect(&m_watcher, &Watcher::progressRangeChanged, this, &KXAddToBatchManager::ProgressChanged);
    connect(&m_watcher, &Watcher::progressValueChanged, this, &KXAddToBatchManager::Progress);
    if (const auto* dispatcher = QAbstractEventDispatcher::instance())
        connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, this, &KXAddToBatchManager::stayAwake);
    if (const NVImageFileManager* manager = NVImageFileManager::GetInstance())
    {
        OnSupportedGroupChanged();
        connect(manager, &NVImageFileManager::SupportedGroupsChanged, this,
                &KXAddToBatchManager::OnSupportedGroupChanged);
    }
}

KXAddToBatchManager::~KXAddToBatchManager()
{
    qDeleteAll(m_results);
}

QList<Node*> KXAddToBatchManager::TakeResult()
{
    QList<Node*> results;
    results.swap(m_results);
    m_isTaken = true;
    return results;
}

void KXAddToBatchManager::ScanFolders(QStringList folders)
{
    m_jobs.append({nullptr, std::move(folders)});
    OnScanFinished();
}

void KXAddToBatchManager::ScanFiles(QStringList files)
{
    m_jobs.append({nullptr, std::move(files)});
    OnScanFinished();
}

void KXAddToBatchManager::Cancel()
{
    // Never connected again: what arrives late is not wanted any more.
    disconnect(&m_watcher, &QFutureWatcherBase::resultReadyAt, this, &KXAddToBatchManager::OnScanReadyAt);
    disconnect(&m_watcher, &QFutureWatcherBase::finished, this, &KXAddToBatchManager::OnScanFinished);
    Q_EMIT ReadyAt(tr("Cancelled"));
    Q_EMIT NewFolder(tr("Cancelled"));
    m_jobs.clear();
    m_watcher.waitForFinished();
    qDeleteAll(m_results);
    m_results.clear();
}

void KXAddToBatchManager::OnScanReadyAt(int index)
{
    const BatchScanResult result = m_watcher.resultAt(index);
    if (!result.node)
        return;
    if (!result.parent)
    {
        m_results.append(result.node);
    }
    else
    {
        addToFileCounts(result.parent, intOf(result.node, Model::NodeFileCountRole));
        Node::AddChild(result.parent, result.node);
    }
    if (!result.folders.isEmpty() || !result.files.isEmpty())
        m_jobs.append({result.node, result.folders + result.files});
    const QString kind = intOf(result.node, Model::NodeIsFileRole) == 0 ? tr("Folder:") : tr("File:");
    Q_EMIT ReadyAt(kind + valueOf(result.node, Model::NodePathRole).toString());
}

void KXAddToBatchManager::OnScanFinished()
{
    if (m_jobs.isEmpty())
    {
        Q_EMIT ScanFinished();
        return;
    }
    const Job job = m_jobs.takeFirst();
    m_watcher.waitForFinished();
    Q_EMIT NewFolder(job.parent ? tr("Folder: %1").arg(valueOf(job.parent, Model::NodePathRole).toString())
                                : tr("Folder:"));
    Q_EMIT ReadyAt(QString());
    const WakefulFunctor functor{{job.parent, m_filters}, {}};
    // Results of a run that has ended are lost here if they have not been taken over.
    m_watcher.setFuture(QtConcurrent::mapped(job.paths, functor));
    m_counts.clear();
    // With no job left of before, all that comes hangs under nodes that nobody else has.
    if (!job.parent && m_jobs.isEmpty())
        m_isTaken = false;
}

// To the node, which is that of the run, and to all above it.
void KXAddToBatchManager::addToFileCounts(Node* node, int count)
{
    if (count == 0)
        return;
    if (m_isTaken)
        m_counts.clear();
    if (m_counts.empty())
    {
        for (; node; node = node->parent)
            m_counts.push_back(fileCountOf(node));
    }
    for (int* value : m_counts)
        *value += count;
}

// To fall asleep and be woken up takes longer than most folders do.
void KXAddToBatchManager::stayAwake()
{
    const QFuture<BatchScanResult> run = m_watcher.future();
    // The texts on the folder before are dealt with while this one is in work.
    if (run.isFinished() || QAbstractEventDispatcher::instance()->hasPendingEvents())
        return;
    if (m_waitsToLeaveOut > 0)
    {
        --m_waitsToLeaveOut;
        return;
    }
    QElapsedTimer clock;
    clock.start();
    while (!run.isFinished() && clock.nsecsElapsed() < longestWake)
        QThread::yieldCurrentThread();
    if (!run.isFinished())
        m_waitsToLeaveOut = waitsLeftOut;
}

void KXAddToBatchManager::OnSupportedGroupChanged()
{
    if (const NVImageFileManager* manager = NVImageFileManager::GetInstance())
        m_filters = ReadFilters(*manager);
}
