#pragma once

#include <QAbstractItemModel>
#include <QList>
#include <QMap>
#include <QVariant>

#include "NVFileBookmark.h"
#include "batchcore_export.h"

// The input of a batch job: a tree of folders and images, sorted, each path in it once.
//
// The rows are the nodes themselves. A branch is grown outside the model, without it, and handed over as a
// whole with InsertBranch(). Folders stand before files; names are in natural order ("img9" before "img10"),
// without regard to case.
//
// A row's NodeFileCountRole is at all times the number of images below it at any depth, 1 for an image. The
// model keeps it. GUI thread only.
class BATCHCORE_EXPORT KXBatchInputModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    // What a row holds beside Qt::DisplayRole, the name, and Qt::ToolTipRole. Nodes carry these numbers.
    enum NodeRole
    {
        NodeTypeRole = 257, // QString: the suffix of an image, the word for a folder
        NodeIsFileRole = 258, // int: 1 an image, 0 a folder
        NodePathRole = 259, // QString: absolute
        NodeModifiedRole = 260, // QString: date of a folder as Qt::TextDate when it was last scanned
        NodeExistsRole = 261, // bool: false for what was gone when last looked at
        NodeFileCountRole = 262, // int
    };
    Q_ENUM(NodeRole)

    // One row's payload.
    //
    // The operators order siblings: folders first, then by name in natural order, then by name as it is, then
    // by path in the same way. They agree with one another, compare in place and allocate nothing. Any
    // thread.
    struct BATCHCORE_EXPORT NodeData
    {
        // Says that the operators are a total order that agrees with itself.
        static constexpr bool IsTotallyOrdered = true;

        bool operator<(const NodeData& other) const;
        bool operator<=(const NodeData& other) const;
        bool operator>(const NodeData& other) const;
        bool operator!=(const NodeData& other) const;

        // Value of each item role, by its number.
        QMap<int, QVariant> roles;
        NVFileBookmark bookmark;
    };

    // A row, which owns its children. May be made on any thread; belongs to who holds the pointer.
    //
    // The bodies of the three operations come with the library that grows the trees, so a program that makes
    // or deletes a node links that library. This one calls none of them.
    template <class Data>
    struct BATCHCORE_EXPORT TreeNode
    {
        TreeNode();
        // Deletes the children and takes the node out of its parent's children.
        ~TreeNode();
        // Moves `child` under `parent` to its sorted place, which is returned: behind its equals. -1 if
        // either is null.
        static int AddChild(TreeNode* parent, TreeNode* child);

        // Stands first: a pointer to the node is a pointer to its payload.
        Data data;
        // Null for a root.
        TreeNode* parent;
        // Kept sorted by AddChild(). Owned.
        QList<TreeNode*> children;

    private:
        Q_DISABLE_COPY(TreeNode)
    };
    using Node = TreeNode<NodeData>;

    explicit KXBatchInputModel(QObject* parent = nullptr);
    ~KXBatchInputModel() override;

    // The node of a row, owned by the model; null for an invalid index.
    const Node* NodeAt(const QModelIndex& index) const;
    // The row of an absolute path, invalid if there is none.
    QModelIndex FindPath(const QString& path) const;
    // Number of images in the whole tree.
    int GetFileCount() const;

    // Takes over `branch` with all its descendants, inserts it under `parent`, at the root for an invalid
    // index, and returns its row.
    //
    // A path that is there already keeps its row: under `parent` or, at the root, anywhere in the tree. The
    // row takes the branch's values and children, and keeps what the branch does not have. A root row whose
    // path comes in with the branch goes up in the row that the branch has for it. A file row as `parent`
    // becomes a folder row.
    //
    // The insert lands whole or not at all, then with an invalid index. A branch that has a parent, is in the
    // model already or holds a child of another parent is left as it is. For a parent of another model, and
    // from a slot that is being told of a change of rows, the branch is deleted.
    QModelIndex InsertBranch(Node* branch, const QModelIndex& parent)
    {
        return insertBranch(branch, parent, [](Node* node) { delete node; });
    }

public Q_SLOTS:
    // Removes all rows, except from a slot that is being told of a change of rows.
    void Clear();

Q_SIGNALS:
    // GetFileCount() is another; once a change.
    void FileCountChanged(int count);

public:
    QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    using QObject::parent;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    // What the node holds under `role`, but: a row without a name shows its path; a tooltip that a view would
    // take for rich text is rich text that shows it letter by letter; and a row that does not exist is
    // italic, in the colour of disabled text, and read out as "(not exists)".
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    // Name, kind and path say what a row is, and the model counts: those four are not written.
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    bool removeRows(int row, int count, const QModelIndex& parent = QModelIndex()) override;

private:
    // Deletes a branch; comes with it, from where nodes are made.
    using Disposer = void (*)(Node*);
    class Change;

    QModelIndex insertBranch(Node* branch, const QModelIndex& parent, Disposer dispose);
    bool isFree(const Node* branch) const;
    Node* place(Node* branch, Node* parent);
    Node* heldNode(const Node* branch, const Node* parent) const;
    Node* nodeOfPath(const QString& key) const;
    QList<Node*> takeRootsWithin(Node* branch, const Node* below);
    void mergeOlder(Node* top, Node* root);
    void mergeNode(Node* node, Node* from, bool overwrite);
    void mergeChildren(Node* node, const QList<Node*>& incoming, bool overwrite);
    void removeOtherKind(Node* node, const QList<Node*>& incoming);
    void becomeFolder(Node* node);

    Node* nodeAt(const QModelIndex& index) const;
    QModelIndex indexOf(const Node* node) const;
    int rowOf(const Node* node) const;
    const QList<Node*>& childrenOf(const Node* parent) const;
    QList<Node*>& childrenOf(Node* parent);
    QVariant lookOfMissing(const QModelIndex& index, int role) const;

    void insertNodes(Node* parent, int row, const QList<Node*>& nodes);
    QList<Node*> takeNodes(Node* parent, int row, int count);
    void deleteNodes(const QList<Node*>& nodes);
    void addToCounts(Node* node, int count);
    void tellCounts(const Node* node);

    // Without a parent; sorted like all siblings.
    QList<Node*> m_roots;
    // Those that have a path, which does not end with a slash here.
    QMap<QString, Node*> m_rootsByPath;
    // Null until the first branch has come.
    Disposer m_dispose = nullptr;
    int m_fileCount = 0;
    bool m_isChanging = false;
};
