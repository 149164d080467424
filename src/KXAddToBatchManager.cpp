#include "KXAddToBatchManager.h"

#include <QAbstractEventDispatcher>
#include <QDateTime>
#include <QFileInfo>
#include <QSet>
#include <QStringBuilder>
#include <QtConcurrentMap>

#include <algorithm>
#include <cstddef>
#include <vector>

#include "FolderListing_p.h"
#include "NVImageFileManager.h"
#include "ReadFilters_p.h"
#include "ScanPace_p.h"

using Model = KXBatchInputModel;
using Node = KXBatchInputModel::Node;
using Roles = QMap<int, QVariant>;

namespace
{

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

// A node, and where its number of files stands.
struct FileCount
{
    Node* node;
    int* value;
};

FileCount fileCountOf(Node* node)
{
    Roles& roles = node->data.roles;
    // The role with the greatest number stands last, unless somebody has added some.
    auto at = roles.end();
    if (roles.isEmpty() || (--at).key() != Model::NodeFileCountRole)
        at = roles.find(Model::NodeFileCountRole);
    if (at == roles.end())
        at = roles.insert(Model::NodeFileCountRole, 0);
    *at = at->toInt();
    return {node, static_cast<int*>(at->data())};
}

struct PacedFunctor : ScanFunctor
{
    ScanPace::WorkerEnd end;
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

struct KXAddToBatchManager::ScanState
{
    // What a line of text on a node begins with. Translated once a run, since there are many nodes.
    QString folderKind;
    QString fileKind;
    // Those of the run's parent, which is the last one, and of all above it, once one of its files is known.
    // To look for them anew with each file, or for all of them with each run, takes longest in deep folders.
    std::vector<FileCount> counts;
    // Whether others may change the nodes that the scan adds to.
    bool isTaken = false;
    ScanPace pace;
};

KXAddToBatchManager::KXAddToBatchManager(QObject* parent) : QObject(parent), m_pState(new ScanState)
{
    using Watcher = QFutureWatcherBase;
    connect(&m_watcher, &Watcher::resultReadyAt, this, &KXAddToBatchManager::OnScanReadyAt);
    connect(&m_watcher, &Watcher::finished, this, &KXAddToBatchManager::OnScanFinished);
    connect(&m_watcher, &Watcher::progressRangeChanged, this, &KXAddToBatchManager::ProgressChanged);
    connect(&m_watcher, &Watcher::progressValueChanged, this, &KXAddToBatchManager::Progress);
    if (const auto* dispatcher = QAbstractEventDispatcher::instance())
        connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, this,
                [this] { m_pState->pace.Wait(m_watcher.future()); });
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
    m_pState->isTaken = true;
    return results;
}

void KXAddToBatchManager::ScanFolders(QStringList folders)
{
    // To wait for what is in work needs no thread.
    m_pState->pace.End();
    m_jobs.append({nullptr, std::move(folders)});
    OnScanFinished();
}

void KXAddToBatchManager::ScanFiles(QStringList files)
{
    ScanFolders(std::move(files));
}

void KXAddToBatchManager::Cancel()
{
    // Never connected again: what arrives late is not wanted any more.
    disconnect(&m_watcher, &QFutureWatcherBase::resultReadyAt, this, &KXAddToBatchManager::OnScanReadyAt);
    disconnect(&m_watcher, &QFutureWatcherBase::finished, this, &KXAddToBatchManager::OnScanFinished);
    Q_EMIT ReadyAt(tr("Cancelled"));
    Q_EMIT NewFolder(tr("Cancelled"));
    m_jobs.clear();
    m_pState->pace.End();
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
    const bool isFile = intOf(result.node, Model::NodeIsFileRole) != 0;
    const QString& kind = isFile ? m_pState->fileKind : m_pState->folderKind;
    Q_EMIT ReadyAt(kind % valueOf(result.node, Model::NodePathRole).toString());
}

void KXAddToBatchManager::OnScanFinished()
{
    if (m_jobs.isEmpty())
    {
        m_pState->pace.End();
        Q_EMIT ScanFinished();
        return;
    }
    const Job job = m_jobs.takeFirst();
    m_watcher.waitForFinished();
    Q_EMIT NewFolder(job.parent ? tr("Folder: %1").arg(valueOf(job.parent, Model::NodePathRole).toString())
                                : tr("Folder:"));
    Q_EMIT ReadyAt(QString());
    startRun(job);
    // With no job left of before, all that comes hangs under nodes that nobody else has.
    if (!job.parent && m_jobs.isEmpty())
    {
        m_pState->counts.clear();
        m_pState->isTaken = false;
    }
}

void KXAddToBatchManager::startRun(const Job& job)
{
    m_pState->pace.Begin();
    const PacedFunctor functor{{job.parent, m_filters}, ScanPace::WorkerEnd(m_pState->pace)};
    // Results of a run that has ended are lost here if they have not been taken over.
    m_watcher.setFuture(QtConcurrent::mapped(job.paths, functor));
    m_pState->pace.HasBegun();
    m_pState->folderKind = tr("Folder:");
    m_pState->fileKind = tr("File:");
}

// To the node, which is that of the run, and to all above it.
void KXAddToBatchManager::addToFileCounts(Node* node, int count)
{
    if (count == 0)
        return;
    std::vector<FileCount>& counts = m_pState->counts;
    if (m_pState->isTaken)
        counts.clear();
    if (counts.empty() || counts.back().node != node)
        findFileCounts(node);
    for (const FileCount& above : counts)
        *above.value += count;
}

// Most are there since the run before, which mostly was next to this one or directly above it.
void KXAddToBatchManager::findFileCounts(Node* node)
{
    std::vector<FileCount>& counts = m_pState->counts;
    while (!counts.empty() && counts.back().node != node->parent)
        counts.pop_back();
    const auto known = std::ptrdiff_t(counts.size());
    const Node* end = counts.empty() ? nullptr : counts.back().node;
    for (; node != end; node = node->parent)
        counts.push_back(fileCountOf(node));
    std::reverse(counts.begin() + known, counts.end());
}

void KXAddToBatchManager::OnSupportedGroupChanged()
{
    if (const NVImageFileManager* manager = NVImageFileManager::GetInstance())
        m_filters = ReadFilters(*manager);
}
