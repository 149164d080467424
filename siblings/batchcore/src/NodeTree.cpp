#include "NodeTree_p.h"

#include <algorithm>

#include "NodeOrder_p.h"

namespace NodeTree
{

namespace
{

// What identifies the row of this path.
NodeData probe(const QString& key)
{
    NodeData data;
    data.roles.insert(Qt::DisplayRole, key.mid(key.lastIndexOf(QLatin1Char('/')) + 1));
    data.roles.insert(KXBatchInputModel::NodePathRole, key);
    return data;
}

bool adoptChildren(Node* node)
{
    node->children.removeAll(nullptr);
    for (Node* child : qAsConst(node->children))
    {
        if (child->parent && child->parent != node)
            return false;
        child->parent = node;
    }
    return true;
}

void sortChildren(Node* node)
{
    const auto before = [](const Node* a, const Node* b) { return a->data < b->data; };
    if (!std::is_sorted(node->children.cbegin(), node->children.cend(), before))
        std::stable_sort(node->children.begin(), node->children.end(), before);
}

} // namespace

QString PathKey(const QString& path)
{
    return path.size() > 1 && path.endsWith(QLatin1Char('/')) ? path.chopped(1) : path;
}

QString PathOf(const Node* node)
{
    return PathKey(node->data.roles.value(KXBatchInputModel::NodePathRole).toString());
}

bool IsBelow(const QString& key, const QString& above)
{
    if (key.size() <= above.size() || !key.startsWith(above))
        return false;
    return above.endsWith(QLatin1Char('/')) || key.at(above.size()) == QLatin1Char('/');
}

int CountOf(const Node* node)
{
    const auto at = node->data.roles.constFind(KXBatchInputModel::NodeFileCountRole);
    return at != node->data.roles.constEnd() ? at->toInt() : 0;
}

void SetCount(Node* node, int count)
{
    node->data.roles.insert(KXBatchInputModel::NodeFileCountRole, count);
}

bool Exists(const Node* node)
{
    const auto at = node->data.roles.constFind(KXBatchInputModel::NodeExistsRole);
    return at == node->data.roles.constEnd() || at->toBool();
}

bool IsOwnRole(int role)
{
    return role == Qt::DisplayRole || role == KXBatchInputModel::NodeIsFileRole ||
        role == KXBatchInputModel::NodePathRole || role == KXBatchInputModel::NodeFileCountRole;
}

bool TakeValues(Node* node, const Node* from, bool overwrite)
{
    if (node->data.roles == from->data.roles)
        return false;
    bool changed = false;
    const QMap<int, QVariant>& given = from->data.roles;
    for (auto value = given.constBegin(); value != given.constEnd(); ++value)
    {
        const auto own = node->data.roles.constFind(value.key());
        const bool isThere = own != node->data.roles.constEnd();
        if (IsOwnRole(value.key()) || (isThere && (!overwrite || *own == *value)))
            continue;
        node->data.roles.insert(value.key(), *value);
        changed = true;
    }
    return changed;
}

int PlaceOf(const QList<Node*>& siblings, const NodeData& data, bool isFile, int from)
{
    const auto isBefore = [isFile](const Node* sibling, const NodeData& sought)
    { return CompareNodes(sought, isFile, sibling->data) > 0; };
    const auto place = std::lower_bound(siblings.cbegin() + from, siblings.cend(), data, isBefore);
    return int(place - siblings.cbegin());
}

Node* FindSame(const QList<Node*>& siblings, const NodeData& data, bool isFile)
{
    const int place = PlaceOf(siblings, data, isFile);
    if (place == siblings.size() || TextOf(data, KXBatchInputModel::NodePathRole).isEmpty())
        return nullptr;
    return CompareNodes(data, isFile, siblings.at(place)->data) == 0 ? siblings.at(place) : nullptr;
}

Node* NodeBelow(Node* top, const QString& key)
{
    for (Node* node = top; node;)
    {
        const QString path = PathOf(node);
        if (path == key)
            return node;
        if (path.isEmpty() || !IsBelow(key, path))
            return nullptr;
        const int end = key.indexOf(QLatin1Char('/'), path.size() + 1);
        const NodeData next = probe(end < 0 ? key : key.left(end));
        Node* child = FindSame(node->children, next, false);
        node = child ? child : FindSame(node->children, next, true);
    }
    return nullptr;
}

bool PutInOrder(Node* branch)
{
    if (!adoptChildren(branch))
        return false;
    int count = 0;
    for (Node* child : qAsConst(branch->children))
    {
        if (!PutInOrder(child))
            return false;
        count += CountOf(child);
    }
    sortChildren(branch);
    if (IsFile(branch->data))
    {
        if (branch->children.isEmpty())
            count = 1;
        else
            branch->data.roles.insert(KXBatchInputModel::NodeIsFileRole, 0);
    }
    const auto known = branch->data.roles.constFind(KXBatchInputModel::NodeFileCountRole);
    if (known == branch->data.roles.constEnd() || known->toInt() != count)
        SetCount(branch, count);
    return true;
}

} // namespace NodeTree
