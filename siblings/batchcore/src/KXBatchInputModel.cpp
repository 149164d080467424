#include "KXBatchInputModel.h"

#include <QFont>
#include <QGuiApplication>
#include <QPalette>
#include <QTextDocument>

#include "NodeOrder_p.h"
#include "NodeTree_p.h"

using namespace NodeTree;

// While one lives, the rows change: who is told of it may look, but not change them too.
class KXBatchInputModel::Change
{
public:
    explicit Change(KXBatchInputModel* model) : m_pModel(model), m_fileCountBefore(model->m_fileCount)
    {
        m_pModel->m_isChanging = true;
    }
    ~Change()
    {
        if (m_pModel->m_fileCount != m_fileCountBefore)
            Q_EMIT m_pModel->FileCountChanged(m_pModel->m_fileCount);
        m_pModel->m_isChanging = false;
    }

private:
    Q_DISABLE_COPY(Change)

    KXBatchInputModel* m_pModel;
    int m_fileCountBefore;
};

KXBatchInputModel::KXBatchInputModel(QObject* parent) : QAbstractItemModel(parent) { }

KXBatchInputModel::~KXBatchInputModel()
{
    deleteNodes(m_roots);
}

const KXBatchInputModel::Node* KXBatchInputModel::NodeAt(const QModelIndex& index) const
{
    return nodeAt(index);
}

QModelIndex KXBatchInputModel::FindPath(const QString& path) const
{
    const Node* node = nodeOfPath(PathKey(path));
    return node ? indexOf(node) : QModelIndex();
}

int KXBatchInputModel::GetFileCount() const
{
    return m_fileCount;
}

void KXBatchInputModel::Clear()
{
    if (m_isChanging || m_roots.isEmpty())
        return;
    Change change(this);
    QList<Node*> nodes;
    beginResetModel();
    nodes.swap(m_roots);
    m_rootsByPath.clear();
    m_fileCount = 0;
    endResetModel();
    deleteNodes(nodes);
}

QModelIndex KXBatchInputModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column, childrenOf(nodeAt(parent)).at(row));
}

QModelIndex KXBatchInputModel::parent(const QModelIndex& child) const
{
    const Node* node = nodeAt(child);
    return node && node->parent ? indexOf(node->parent) : QModelIndex();
}

int KXBatchInputModel::rowCount(const QModelIndex& parent) const
{
    return childrenOf(nodeAt(parent)).size();
}

int KXBatchInputModel::columnCount(const QModelIndex&) const
{
    return 1;
}

Qt::ItemFlags KXBatchInputModel::flags(const QModelIndex& index) const
{
    const Node* node = nodeAt(index);
    if (!node)
        return Qt::NoItemFlags;
    const Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    return IsFile(node->data) ? flags | Qt::ItemNeverHasChildren : flags;
}

QVariant KXBatchInputModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (section == 0 && orientation == Qt::Horizontal && role == Qt::DisplayRole)
        return tr("Name");
    return QAbstractItemModel::headerData(section, orientation, role);
}

QVariant KXBatchInputModel::data(const QModelIndex& index, int role) const
{
    const Node* node = nodeAt(index);
    if (!node)
        return {};
    if (role == Qt::EditRole)
        role = Qt::DisplayRole;
    const QVariant value = node->data.roles.value(role);
    if (role == Qt::DisplayRole && value.toString().isEmpty())
        return node->data.roles.value(NodePathRole);
    if (role == Qt::ToolTipRole && Qt::mightBeRichText(value.toString()))
        return Qt::convertFromPlainText(value.toString());
    return value.isValid() || Exists(node) ? value : lookOfMissing(index, role);
}

QVariant KXBatchInputModel::lookOfMissing(const QModelIndex& index, int role) const
{
    switch (role)
    {
    case Qt::FontRole:
    {
        // Says nothing but italic, so that the view's own font shows through.
        QFont font;
        font.setItalic(true);
        return font;
    }
    case Qt::ForegroundRole:
        return QGuiApplication::palette().brush(QPalette::Disabled, QPalette::Text);
    case Qt::AccessibleTextRole:
        return tr("%1 (not exists)").arg(data(index).toString());
    default:
        return {};
    }
}

bool KXBatchInputModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    Node* node = nodeAt(index);
    if (!node || role == Qt::EditRole || IsOwnRole(role))
        return false;
    if (node->data.roles.value(role) == value && node->data.roles.contains(role))
        return true;
    node->data.roles.insert(role, value);
    QVector<int> changed = {role};
    if (role == NodeExistsRole)
        changed << Qt::FontRole << Qt::ForegroundRole << Qt::AccessibleTextRole;
    Q_EMIT dataChanged(index, index, changed);
    return true;
}

bool KXBatchInputModel::removeRows(int row, int count, const QModelIndex& parent)
{
    Node* node = nodeAt(parent);
    if (m_isChanging || row < 0 || count < 1 || count > childrenOf(node).size() - row)
        return false;
    Change change(this);
    const int countBefore = node ? CountOf(node) : 0;
    const QList<Node*> nodes = takeNodes(node, row, count);
    if (node && CountOf(node) != countBefore)
        tellCounts(node);
    deleteNodes(nodes);
    return true;
}

QModelIndex KXBatchInputModel::insertBranch(Node* branch, const QModelIndex& parent, Disposer dispose)
{
    if (!branch || !isFree(branch))
        return {};
    if (m_isChanging || (parent.isValid() && parent.model() != this))
    {
        dispose(branch);
        return {};
    }
    if (!PutInOrder(branch))
        return {};
    m_dispose = dispose;
    Change change(this);
    Node* folder = nodeAt(parent);
    if (folder && IsFile(folder->data))
        becomeFolder(folder);
    return indexOf(place(branch, folder));
}

bool KXBatchInputModel::isFree(const Node* branch) const
{
    if (branch->parent)
        return false;
    const QString key = PathOf(branch);
    return key.isEmpty() ? !m_roots.contains(const_cast<Node*>(branch)) : m_rootsByPath.value(key) != branch;
}

// Puts a branch to where its path is, or under `parent`, and returns the node that stands for it then.
KXBatchInputModel::Node* KXBatchInputModel::place(Node* branch, Node* parent)
{
    Node* held = heldNode(branch, parent);
    if (held)
        parent = held->parent;
    const int countBefore = parent ? CountOf(parent) : 0;
    const QList<Node*> older = takeRootsWithin(branch, held ? held : parent);
    if (held && IsFile(held->data) == IsFile(branch->data))
    {
        mergeNode(held, branch, true);
    }
    else
    {
        if (held)
            deleteNodes(takeNodes(parent, rowOf(held), 1));
        insertNodes(parent, PlaceOf(childrenOf(parent), branch->data, IsFile(branch->data)), {branch});
        held = branch;
    }
    for (Node* root : older)
        mergeOlder(held, root);
    if (parent && CountOf(parent) != countBefore)
        tellCounts(parent);
    return held;
}

// The node that has the branch's path already: among the children of `parent`, or anywhere for null.
KXBatchInputModel::Node* KXBatchInputModel::heldNode(const Node* branch, const Node* parent) const
{
    if (!parent)
        return nodeOfPath(PathOf(branch));
    const bool isFile = IsFile(branch->data);
    Node* same = FindSame(parent->children, branch->data, isFile);
    return same ? same : FindSame(parent->children, branch->data, !isFile);
}

KXBatchInputModel::Node* KXBatchInputModel::nodeOfPath(const QString& key) const
{
    QString above = key;
    while (!above.isEmpty())
    {
        if (Node* root = m_rootsByPath.value(above))
        {
            if (Node* node = NodeBelow(root, key))
                return node;
        }
        if (above.size() == 1)
            break;
        above.truncate(qMax(above.lastIndexOf(QLatin1Char('/')), above.startsWith(QLatin1Char('/')) ? 1 : 0));
    }
    return nullptr;
}

// Takes out the root rows whose paths come in with the branch, but for the one that `below` lies in.
QList<KXBatchInputModel::Node*> KXBatchInputModel::takeRootsWithin(Node* branch, const Node* below)
{
    const QString key = PathOf(branch);
    if (key.isEmpty())
        return {};
    while (below && below->parent)
        below = below->parent;
    QList<Node*> within;
    if (Node* same = m_rootsByPath.value(key))
        within.append(same);
    const QString prefix = key.endsWith(QLatin1Char('/')) ? key : key + QLatin1Char('/');
    for (auto root = m_rootsByPath.lowerBound(prefix); root != m_rootsByPath.end(); ++root)
    {
        if (!root.key().startsWith(prefix))
            break;
        if (root.key() != key && NodeBelow(branch, root.key()))
            within.append(root.value());
    }
    within.removeAll(const_cast<Node*>(below));
    for (const Node* root : qAsConst(within))
        takeNodes(nullptr, rowOf(root), 1);
    return within;
}

// A former root row gives what it has to the row of its path in the branch at `top`.
void KXBatchInputModel::mergeOlder(Node* top, Node* root)
{
    Node* node = NodeBelow(top, PathOf(root));
    if (!node || IsFile(node->data) != IsFile(root->data))
    {
        m_dispose(root);
        return;
    }
    const int countBefore = CountOf(node);
    mergeNode(node, root, false);
    if (CountOf(node) != countBefore)
        tellCounts(node->parent);
}

// Gives the children of `from` to `node`, which stands for the same path, and its values; then deletes it.
void KXBatchInputModel::mergeNode(Node* node, Node* from, bool overwrite)
{
    const int countBefore = CountOf(node);
    const bool changed = TakeValues(node, from, overwrite);
    QList<Node*> incoming;
    incoming.swap(from->children);
    for (Node* child : qAsConst(incoming))
        child->parent = nullptr;
    m_dispose(from);
    mergeChildren(node, incoming, overwrite);
    if (changed || CountOf(node) != countBefore)
    {
        const QModelIndex index = indexOf(node);
        Q_EMIT dataChanged(index, index);
    }
}

// Both lists are sorted. What lies between two rows of `node` goes in as one run.
void KXBatchInputModel::mergeChildren(Node* node, const QList<Node*>& incoming, bool overwrite)
{
    removeOtherKind(node, incoming);
    int row = 0;
    for (int i = 0; i < incoming.size();)
    {
        const NodeData& first = incoming.at(i)->data;
        if (row < node->children.size() && CompareNodes(first, node->children.at(row)->data) > 0)
            row = PlaceOf(node->children, first, IsFile(first), row);
        if (row < node->children.size() && CompareNodes(first, node->children.at(row)->data) == 0)
        {
            mergeNode(node->children.at(row++), incoming.at(i++), overwrite);
            continue;
        }
        int end = i + 1;
        while (end < incoming.size() &&
               (row == node->children.size() || incoming.at(end)->data < node->children.at(row)->data))
            ++end;
        insertNodes(node, row, incoming.mid(i, end - i));
        row += end - i;
        i = end;
    }
}

// A folder where an image was, and the other way round, is no longer the same row.
void KXBatchInputModel::removeOtherKind(Node* node, const QList<Node*>& incoming)
{
    QList<const Node*> gone;
    for (const Node* child : incoming)
    {
        if (IsFile(child->data))
            break;
        if (const Node* file = FindSame(node->children, child->data, true))
            gone.append(file);
    }
    for (const Node* child : qAsConst(node->children))
    {
        if (IsFile(child->data))
            break;
        if (FindSame(incoming, child->data, true))
            gone.append(child);
    }
    for (const Node* child : qAsConst(gone))
        deleteNodes(takeNodes(node, rowOf(child), 1));
}

// What was an image is a folder by now.
void KXBatchInputModel::becomeFolder(Node* node)
{
    const int from = rowOf(node);
    const int to = PlaceOf(childrenOf(node->parent), node->data, false);
    const QModelIndex above = indexOf(node->parent);
    const bool moves = from != to && beginMoveRows(above, from, from, above, to);
    if (moves)
        childrenOf(node->parent).move(from, to);
    node->data.roles.insert(NodeIsFileRole, 0);
    node->data.roles.insert(NodeTypeRole, QObject::tr("Folder"));
    addToCounts(node, -CountOf(node));
    if (moves)
        endMoveRows();
    tellCounts(node);
}

KXBatchInputModel::Node* KXBatchInputModel::nodeAt(const QModelIndex& index) const
{
    return index.isValid() && index.model() == this ? static_cast<Node*>(index.internalPointer()) : nullptr;
}

QModelIndex KXBatchInputModel::indexOf(const Node* node) const
{
    return node ? createIndex(rowOf(node), 0, const_cast<Node*>(node)) : QModelIndex();
}

int KXBatchInputModel::rowOf(const Node* node) const
{
    const QList<Node*>& siblings = childrenOf(node->parent);
    const int place = PlaceOf(siblings, node->data, IsFile(node->data));
    if (place < siblings.size() && siblings.at(place) == node)
        return place;
    // Rows without a path may be equal.
    return siblings.indexOf(const_cast<Node*>(node), place);
}

const QList<KXBatchInputModel::Node*>& KXBatchInputModel::childrenOf(const Node* parent) const
{
    return parent ? parent->children : m_roots;
}

QList<KXBatchInputModel::Node*>& KXBatchInputModel::childrenOf(Node* parent)
{
    return parent ? parent->children : m_roots;
}

void KXBatchInputModel::insertNodes(Node* parent, int row, const QList<Node*>& nodes)
{
    beginInsertRows(indexOf(parent), row, row + nodes.size() - 1);
    QList<Node*>& siblings = childrenOf(parent);
    if (nodes.size() == 1)
        siblings.insert(row, nodes.first());
    else
        siblings = siblings.mid(0, row) + nodes + siblings.mid(row);
    int count = 0;
    for (Node* node : nodes)
    {
        node->parent = parent;
        count += CountOf(node);
        if (!parent && !PathOf(node).isEmpty())
            m_rootsByPath.insert(PathOf(node), node);
    }
    addToCounts(parent, count);
    endInsertRows();
}

QList<KXBatchInputModel::Node*> KXBatchInputModel::takeNodes(Node* parent, int row, int count)
{
    beginRemoveRows(indexOf(parent), row, row + count - 1);
    QList<Node*>& siblings = childrenOf(parent);
    const QList<Node*> nodes = siblings.mid(row, count);
    siblings.erase(siblings.begin() + row, siblings.begin() + row + count);
    int files = 0;
    for (Node* node : nodes)
    {
        node->parent = nullptr;
        files += CountOf(node);
        if (!parent && !PathOf(node).isEmpty())
            m_rootsByPath.remove(PathOf(node));
    }
    addToCounts(parent, -files);
    endRemoveRows();
    return nodes;
}

void KXBatchInputModel::deleteNodes(const QList<Node*>& nodes)
{
    for (Node* node : nodes)
        m_dispose(node);
}

void KXBatchInputModel::addToCounts(Node* node, int count)
{
    if (count == 0)
        return;
    m_fileCount += count;
    for (; node; node = node->parent)
        SetCount(node, CountOf(node) + count);
}

// To be called for `node` and all that stand above it.
void KXBatchInputModel::tellCounts(const Node* node)
{
    for (; node; node = node->parent)
    {
        const QModelIndex index = indexOf(node);
        Q_EMIT dataChanged(index, index);
    }
}
