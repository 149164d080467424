#include "BatchTree.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>

#include <algorithm>

#include "NVImageFileManager.h"

using Model = KXBatchInputModel;
using Node = KXBatchInputModel::Node;

namespace
{

QString PathOf(const Node& node)
{
    return node.data.roles.value(Model::NodePathRole).toString();
}

void ListBelow(const Node& node, const QString& root, QVector<BatchInput>& inputs)
{
    if (IsImage(node))
        inputs.append({PathOf(node), root});
    for (const Node* child : node.children)
        ListBelow(*child, root, inputs);
}

int CountFoldersBelow(const Node& node)
{
    int count = IsImage(node) ? 0 : 1;
    for (const Node* child : node.children)
        count += CountFoldersBelow(*child);
    return count;
}

void MapFolders(Node* node, QHash<QString, Node*>& folders)
{
    folders.insert(PathOf(*node), node);
    for (Node* child : qAsConst(node->children))
        MapFolders(child, folders);
}

void ListFolders(const Node& node, QSet<QString>& paths)
{
    if (IsImage(node))
        return;
    paths.insert(PathOf(node));
    for (const Node* child : node.children)
        ListFolders(*child, paths);
}

// Folders stand first.
int ImagesIn(const Node& folder)
{
    const auto firstFile = std::find_if(folder.children.cbegin(), folder.children.cend(),
                                        [](const Node* child) { return IsImage(*child); });
    return int(folder.children.cend() - firstFile);
}

using Counts = QHash<QString, int>;

Counts CountsWithin(const QSet<QString>& folders, const Counts& all)
{
    Counts counts;
    for (auto folder = all.cbegin(); folder != all.cend(); ++folder)
    {
        if (IsWithin(folder.key(), folders))
            counts.insert(folder.key(), folder.value());
    }
    return counts;
}

int RootCount(const Counts& counts, const Model& model)
{
    int count = 0;
    for (auto folder = counts.cbegin(); folder != counts.cend(); ++folder)
    {
        if (!counts.contains(QFileInfo(folder.key()).path()))
            count += model.FindPath(folder.key()).data(Model::NodeFileCountRole).toInt();
    }
    return count;
}

} // namespace

bool IsImage(const Node& node)
{
    return node.data.roles.value(Model::NodeIsFileRole).toInt() != 0;
}

QVector<BatchInput> ListInputs(const Model& model)
{
    QVector<BatchInput> inputs;
    inputs.reserve(model.GetFileCount());
    for (int row = 0; row < model.rowCount(); ++row)
    {
        const Node& node = *model.NodeAt(model.index(row, 0));
        ListBelow(node, IsImage(node) ? QString() : PathOf(node), inputs);
    }
    return inputs;
}

int CountFolders(const Model& model)
{
    int count = 0;
    for (int row = 0; row < model.rowCount(); ++row)
        count += CountFoldersBelow(*model.NodeAt(model.index(row, 0)));
    return count;
}

QStringList InputSuffixes()
{
    const NVImageFileManager* manager = NVImageFileManager::GetInstance();
    QStringList suffixes = manager ? manager->GetSupportedReadFormats() : QStringList();
    suffixes.removeAll(QStringLiteral("nvdoc"));
    return suffixes;
}

Node* CopyBranch(const Node& node)
{
    auto* copy = new Node;
    copy->data = node.data;
    copy->children.reserve(node.children.size());
    for (const Node* child : node.children)
    {
        Node* below = CopyBranch(*child);
        below->parent = copy;
        copy->children.append(below);
    }
    return copy;
}

void InsertParts(const FolderSurvey& survey, const Model& parts, Model* model)
{
    QVector<Node*> branches;
    QHash<QString, Node*> folders;
    for (const auto& skeleton : survey.skeletons)
    {
        branches.append(CopyBranch(*skeleton));
        MapFolders(branches.last(), folders);
    }
    for (int row = 0; row < parts.rowCount(); ++row)
    {
        Node* part = CopyBranch(*parts.NodeAt(parts.index(row, 0)));
        Node* folder = folders.value(QFileInfo(PathOf(*part)).path());
        if (folder)
            Node::AddChild(folder, part);
        else
            branches.append(part);
    }
    for (Node* branch : qAsConst(branches))
        model->InsertBranch(branch, QModelIndex());
}

QVector<PassedOver> FindVanished(const FolderSurvey& survey, const QStringList& scanned, const Model& model)
{
    QVector<PassedOver> vanished;
    const Counts counts = CountsWithin({scanned.cbegin(), scanned.cend()}, survey.imageCounts);
    int expected = 0;
    for (int count : counts)
        expected += count;
    // Seldom anything is missing, and the tree may be large.
    if (RootCount(counts, model) >= expected)
        return vanished;
    for (auto folder = counts.cbegin(); folder != counts.cend(); ++folder)
    {
        const Node* node = model.NodeAt(model.FindPath(folder.key()));
        const QString above = QFileInfo(folder.key()).path();
        if (!node && (!counts.contains(above) || model.FindPath(above).isValid()))
            vanished.append({folder.key(), PassedOver::Vanished, 1, QString()});
        else if (node && ImagesIn(*node) < folder.value())
            vanished.append(
                {folder.key(), PassedOver::ImagesVanished, folder.value() - ImagesIn(*node), QString()});
    }
    std::sort(vanished.begin(), vanished.end(),
              [](const PassedOver& a, const PassedOver& b) { return a.path < b.path; });
    return vanished;
}

QSet<QString> FolderPaths(const Model& model)
{
    QSet<QString> paths;
    for (int row = 0; row < model.rowCount(); ++row)
        ListFolders(*model.NodeAt(model.index(row, 0)), paths);
    return paths;
}

bool IsWithin(const QString& path, const QSet<QString>& folders)
{
    QString above = path;
    while (!folders.contains(above))
    {
        const int slash = above.lastIndexOf(QLatin1Char('/'));
        if (slash < 0 || above.size() == 1)
            return false;
        above.truncate(qMax(slash, 1));
    }
    return true;
}

QModelIndexList TopMost(const QModelIndexList& indexes)
{
    const QSet<QModelIndex> all(indexes.cbegin(), indexes.cend());
    QModelIndexList top;
    for (const QModelIndex& index : indexes)
    {
        QModelIndex above = index.parent();
        while (above.isValid() && !all.contains(above))
            above = above.parent();
        if (!above.isValid())
            top.append(index);
    }
    return top;
}

void RemoveIndexes(Model* model, const QModelIndexList& indexes)
{
    QHash<QModelIndex, QVector<int>> rows;
    const QModelIndexList top = TopMost(indexes);
    for (const QModelIndex& index : top)
        rows[index.parent()].append(index.row());
    QVector<QPair<QPersistentModelIndex, QVector<int>>> groups;
    for (auto group = rows.begin(); group != rows.end(); ++group)
        groups.append({QPersistentModelIndex(group.key()), group.value()});
    for (auto& group : groups)
    {
        // From the end, so that the numbers before stay; neighbours together.
        std::sort(group.second.begin(), group.second.end(), std::greater<int>());
        for (int i = 0; i < group.second.size();)
        {
            int count = 1;
            while (i + count < group.second.size() && group.second[i + count] == group.second[i] - count)
                ++count;
            model->removeRows(group.second[i] - count + 1, count, group.first);
            i += count;
        }
    }
}
