// The tree of a batch job's input, held to the toolkit's own checks of a model throughout.

#include "KXBatchInputModel.h"
#include "SignalLog.h"
#include "TestMain.h"

#include <QAbstractItemModelTester>
#include <QDateTime>
#include <QFileInfo>
#include <QFont>
#include <QPersistentModelIndex>
#include <QTextDocument>
#include <QTreeView>

#include <memory>
#include <random>

Q_DECLARE_METATYPE(std::shared_ptr<int>)

namespace
{

using Model = KXBatchInputModel;
using Node = KXBatchInputModel::Node;

Node* bare(const QString& path, bool isFile)
{
    auto* node = new Node;
    const QString name = path.mid(path.lastIndexOf('/') + 1);
    node->data.roles.insert(Qt::DisplayRole, name);
    node->data.roles.insert(Qt::ToolTipRole, path);
    node->data.roles.insert(Model::NodeTypeRole, isFile ? QFileInfo(name).suffix() : QString("Folder"));
    node->data.roles.insert(Model::NodeIsFileRole, int(isFile));
    node->data.roles.insert(Model::NodePathRole, path);
    node->data.roles.insert(Model::NodeExistsRole, true);
    node->data.roles.insert(Model::NodeFileCountRole, int(isFile));
    return node;
}

Node* file(const QString& path)
{
    return bare(path, true);
}

// Grown as a scan does it: counts first, then the link.
Node* folder(const QString& path, const QList<Node*>& children = {})
{
    Node* node = bare(path, false);
    for (Node* child : children)
    {
        node->data.roles[Model::NodeFileCountRole] = node->data.roles[Model::NodeFileCountRole].toInt() +
            child->data.roles[Model::NodeFileCountRole].toInt();
        Node::AddChild(node, child);
    }
    return node;
}

// A branch of all paths that start with `top`; those with a dot in their last part are images.
Node* branchOf(const QString& top, const QStringList& paths)
{
    const auto isFile = [](const QString& path) { return path.lastIndexOf('.') > path.lastIndexOf('/'); };
    if (isFile(top))
        return file(top);
    QList<Node*> children;
    for (const QString& path : paths)
    {
        if (path.startsWith(top + '/') && path.indexOf('/', top.size() + 1) < 0)
            children.append(branchOf(path, paths));
    }
    return folder(top, children);
}

// All rows by name, those below a row in brackets behind it, with the counts of folders: "a(1)[x.png]".
QString shape(const Model& model, const QModelIndex& parent = QModelIndex())
{
    QStringList rows;
    for (int row = 0; row < model.rowCount(parent); ++row)
    {
        const QModelIndex index = model.index(row, 0, parent);
        QString text = index.data().toString();
        if (index.data(Model::NodeIsFileRole).toInt() == 0)
            text += QString("(%1)").arg(index.data(Model::NodeFileCountRole).toInt());
        if (model.rowCount(index) > 0)
            text += '[' + shape(model, index) + ']';
        rows.append(text);
    }
    return rows.join(' ');
}

// Whether the rows below a node are as the model promises: sorted, linked, counted.
bool isWhole(const Node* node)
{
    int count = 0;
    for (int i = 0; i < node->children.size(); ++i)
    {
        const Node* child = node->children.at(i);
        if (child->parent != node || !isWhole(child))
            return false;
        if (i > 0 && !(node->children.at(i - 1)->data < child->data))
            return false;
        count += child->data.roles.value(Model::NodeFileCountRole).toInt();
    }
    const bool isFile = node->data.roles.value(Model::NodeIsFileRole).toInt() != 0;
    return node->data.roles.value(Model::NodeFileCountRole).toInt() == (isFile ? 1 : count);
}

bool isWhole(const Model& model)
{
    int count = 0;
    for (int row = 0; row < model.rowCount(); ++row)
    {
        const Node* node = model.NodeAt(model.index(row, 0));
        if (node->parent || !isWhole(node))
            return false;
        if (row > 0 && !(model.NodeAt(model.index(row - 1, 0))->data < node->data))
            return false;
        count += node->data.roles.value(Model::NodeFileCountRole).toInt();
    }
    return model.GetFileCount() == count;
}

QStringList paths(const Model& model, const QModelIndex& parent = QModelIndex())
{
    QStringList list;
    for (int row = 0; row < model.rowCount(parent); ++row)
    {
        const QModelIndex index = model.index(row, 0, parent);
        list.append(index.data(Model::NodePathRole).toString());
        list.append(paths(model, index));
    }
    return list;
}

// What a view has been told of the counts, by path.
class ToldCounts : public QObject
{
public:
    explicit ToldCounts(Model* model) : m_pModel(model)
    {
        connect(model, &Model::rowsInserted, this, &ToldCounts::OnInserted);
        connect(model, &Model::rowsAboutToBeRemoved, this, &ToldCounts::OnRemoved);
        connect(model, &Model::dataChanged, this, &ToldCounts::OnChanged);
        connect(model, &Model::modelReset, this, [this] { m_counts.clear(); });
    }

    QHash<QString, int> Counts() const { return m_counts; }
    static QHash<QString, int> Present(const Model& model)
    {
        QHash<QString, int> counts;
        for (const QString& path : paths(model))
            counts.insert(path, model.FindPath(path).data(Model::NodeFileCountRole).toInt());
        return counts;
    }

private:
    void OnInserted(const QModelIndex& parent, int first, int last)
    {
        for (int row = first; row <= last; ++row)
        {
            const QModelIndex index = m_pModel->index(row, 0, parent);
            OnChanged(index);
            OnInserted(index, 0, m_pModel->rowCount(index) - 1);
        }
    }
    void OnRemoved(const QModelIndex& parent, int first, int last)
    {
        for (int row = first; row <= last; ++row)
        {
            const QModelIndex index = m_pModel->index(row, 0, parent);
            m_counts.remove(index.data(Model::NodePathRole).toString());
            OnRemoved(index, 0, m_pModel->rowCount(index) - 1);
        }
    }
    void OnChanged(const QModelIndex& index)
    {
        m_counts.insert(index.data(Model::NodePathRole).toString(),
                        index.data(Model::NodeFileCountRole).toInt());
    }

    Model* m_pModel;
    QHash<QString, int> m_counts;
};

} // namespace

class tst_KXBatchInputModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void startsEmpty();
    void roleNumbersAreFixed();

    void branchIsInsertedWithAllItsRows();
    void rootsAreSorted();
    void branchGoesUnderItsParent();
    void countsAreRightUpToTheRoot();
    void countsAreRightWhenTheRowsAreTold();
    void insertTellsWhatChanged();
    void nullBranchChangesNothing();
    void branchOfTheModelStaysWhereItIs();
    void branchWithAParentStaysTheCallers();
    void branchForAnotherModelsRowIsDeleted();
    void branchWithAChildOfAnotherParentStaysTheCallers();
    void branchGrownByHandIsPutInOrder();
    void insertFromASlotIsRefusedWhole();
    void rowsAreNotRemovedFromASlotThatIsToldOfRows();

    void knownBranchIsMerged();
    void mergeTakesNewValuesAndKeepsOthers();
    void mergeKeepsRowsAndTheirIndexes();
    void mergeOfTheSameTellsNothing();
    void mergeInsertsRunsAtOnce();
    void mergeUnderAParent();
    void folderOfAKnownFolderIsMergedWhereItIs();
    void rootThatComesInWithABranchGoesUpInIt();
    void rootThatTheBranchDoesNotHaveStays();
    void rootGoesUpInABranchUnderAParent();
    void neighbourWithALongerNameIsNotBelow();
    void rootFolderOfTheDiskHoldsAll();
    void slashAtTheEndIsNoOtherPath();
    void folderThatBecameAFileIsReplaced();
    void fileThatBecameAFolderIsReplaced();
    void fileRowAsParentBecomesAFolder();
    void rowsWithoutAPathAreNeverTheSame();
    void randomBranchesMergeIntoTheirUnion();

    void chainOfAThousandFoldersIsBorne();

    void removeTakesRowsAndCounts();
    void removeOutOfRangeChangesNothing();
    void clearRemovesAll();
    void refreshReplacesTheRowsBelow();

    void pathIsFound();
    void roleIsWrittenOnceAndTold();
    void rolesOfTheModelAreNotWritten();
    void rowWithoutANameShowsItsPath();
    void missingRowIsShownAsSuch();
    void tooltipShowsTheLettersOfAName_data();
    void tooltipShowsTheLettersOfAName();
    void flagsTellFilesFromFolders();
    void headerNamesTheColumn();
    void viewSurvivesAllChanges();
    void modelDeletesItsNodes();

private:
    QModelIndex insert(Node* branch, const QModelIndex& parent = QModelIndex())
    {
        return m_pModel->InsertBranch(branch, parent);
    }

    std::unique_ptr<Model> m_pModel;
    std::unique_ptr<QAbstractItemModelTester> m_pTester;
};

void tst_KXBatchInputModel::init()
{
    m_pModel = std::make_unique<Model>();
    m_pTester = std::make_unique<QAbstractItemModelTester>(
        m_pModel.get(), QAbstractItemModelTester::FailureReportingMode::QtTest);
}

void tst_KXBatchInputModel::cleanup()
{
    if (m_pModel)
        QVERIFY(isWhole(*m_pModel));
    m_pTester.reset();
    m_pModel.reset();
}

void tst_KXBatchInputModel::startsEmpty()
{
    QCOMPARE(m_pModel->rowCount(), 0);
    QCOMPARE(m_pModel->columnCount(), 1);
    QCOMPARE(m_pModel->GetFileCount(), 0);
    QVERIFY(!m_pModel->NodeAt(QModelIndex()));
    QVERIFY(!m_pModel->hasChildren());
}

void tst_KXBatchInputModel::roleNumbersAreFixed()
{
    QCOMPARE(int(Model::NodeTypeRole), 257);
    QCOMPARE(int(Model::NodeIsFileRole), 258);
    QCOMPARE(int(Model::NodePathRole), 259);
    QCOMPARE(int(Model::NodeModifiedRole), 260);
    QCOMPARE(int(Model::NodeExistsRole), 261);
    QCOMPARE(int(Model::NodeFileCountRole), 262);
}

void tst_KXBatchInputModel::branchIsInsertedWithAllItsRows()
{
    Node* branch = folder("/p", {file("/p/b.png"), folder("/p/z", {file("/p/z/1.png")}), file("/p/A.png")});
    const QModelIndex index = insert(branch);
    QCOMPARE(shape(*m_pModel), QString("p(3)[z(1)[1.png] A.png b.png]"));
    // The rows are the nodes themselves.
    QCOMPARE(m_pModel->NodeAt(index), branch);
    QCOMPARE(index, m_pModel->index(0, 0));
}

void tst_KXBatchInputModel::rootsAreSorted()
{
    for (const char* path : {"/x/img10.png", "/x/img9.png", "/y/img9.png"})
        insert(file(path));
    insert(folder("/x/z"));
    insert(folder("/x/B"));
    QCOMPARE(paths(*m_pModel), QStringList({"/x/B", "/x/z", "/x/img9.png", "/y/img9.png", "/x/img10.png"}));
}

void tst_KXBatchInputModel::branchGoesUnderItsParent()
{
    const QModelIndex parent = insert(folder("/p", {file("/p/a.png"), file("/p/c.png")}));
    const QModelIndex index = insert(file("/p/b.png"), parent);
    QCOMPARE(index.parent(), parent);
    QCOMPARE(index.row(), 1);
    QCOMPARE(shape(*m_pModel), QString("p(3)[a.png b.png c.png]"));
}

void tst_KXBatchInputModel::countsAreRightUpToTheRoot()
{
    insert(folder("/p", {folder("/p/q", {folder("/p/q/r")})}));
    insert(folder("/o", {file("/o/a.png")}));
    insert(folder("/p/q/r/s", {file("/p/q/r/s/1.png"), file("/p/q/r/s/2.png")}),
           m_pModel->FindPath("/p/q/r"));
    QCOMPARE(shape(*m_pModel), QString("o(1)[a.png] p(2)[q(2)[r(2)[s(2)[1.png 2.png]]]]"));
    QCOMPARE(m_pModel->GetFileCount(), 3);
}

void tst_KXBatchInputModel::countsAreRightWhenTheRowsAreTold()
{
    insert(folder("/p", {folder("/p/q"), file("/p/a.png")}));
    int told = 0;
    const auto check = [&]
    {
        ++told;
        QVERIFY(isWhole(*m_pModel));
    };
    connect(m_pModel.get(), &Model::rowsInserted, this, check);
    connect(m_pModel.get(), &Model::rowsRemoved, this, check);
    connect(m_pModel.get(), &Model::modelReset, this, check);
    insert(file("/p/q/1.png"), m_pModel->FindPath("/p/q"));
    insert(branchOf(
        "/p", {"/p", "/p/0.png", "/p/b.png", "/p/q", "/p/q/2.png", "/p/q/0.png", "/p/r", "/p/r/1.png"}));
    m_pModel->removeRows(0, 1, m_pModel->FindPath("/p/q"));
    m_pModel->Clear();
    QVERIFY(told >= 7);
}

void tst_KXBatchInputModel::insertTellsWhatChanged()
{
    insert(folder("/p", {folder("/p/q")}));
    SignalLog log(m_pModel.get());
    insert(file("/p/q/1.png"), m_pModel->FindPath("/p/q"));
    // Both ancestors have another count.
    QCOMPARE(log.Count("rowsInserted"), 1);
    QCOMPARE(log.Count("dataChanged"), 2);
    QCOMPARE(log.Entries().last(), QString("FileCountChanged(1)"));
    log.Clear();
    insert(folder("/p/q/empty"), m_pModel->FindPath("/p/q"));
    QCOMPARE(log.Count("rowsInserted"), 1);
    QCOMPARE(log.Count("dataChanged"), 0);
    QCOMPARE(log.Count("FileCountChanged"), 0);
}

void tst_KXBatchInputModel::nullBranchChangesNothing()
{
    SignalLog log(m_pModel.get());
    QVERIFY(!insert(nullptr).isValid());
    QCOMPARE(log.Count(), 0);
}

void tst_KXBatchInputModel::branchOfTheModelStaysWhereItIs()
{
    Node* root = folder("/p", {file("/p/a.png")});
    Node* child = root->children.first();
    Node* pathless = new Node;
    insert(root);
    insert(pathless);
    SignalLog log(m_pModel.get());
    QVERIFY(!insert(root).isValid());
    QVERIFY(!insert(child).isValid());
    QVERIFY(!insert(pathless).isValid());
    QVERIFY(!insert(root, m_pModel->FindPath("/p")).isValid());
    QCOMPARE(log.Count(), 0);
    QCOMPARE(m_pModel->rowCount(), 2);
}

void tst_KXBatchInputModel::branchWithAParentStaysTheCallers()
{
    const std::unique_ptr<Node> root(folder("/p", {file("/p/a.png")}));
    QVERIFY(!insert(root->children.first()).isValid());
    QCOMPARE(root->children.size(), 1);
    QCOMPARE(m_pModel->rowCount(), 0);
}

void tst_KXBatchInputModel::branchForAnotherModelsRowIsDeleted()
{
    Model other;
    const QModelIndex foreign = other.InsertBranch(folder("/p"), QModelIndex());
    QVERIFY(!insert(file("/p/a.png"), foreign).isValid());
    QCOMPARE(m_pModel->rowCount(), 0);
    QCOMPARE(other.rowCount(foreign), 0);
}

void tst_KXBatchInputModel::branchWithAChildOfAnotherParentStaysTheCallers()
{
    const std::unique_ptr<Node> owner(folder("/o", {file("/o/a.png")}));
    const std::unique_ptr<Node> thief(folder("/p"));
    thief->children.append(owner->children.first());
    QVERIFY(!insert(thief.get()).isValid());
    QCOMPARE(m_pModel->rowCount(), 0);
    thief->children.clear();
}

void tst_KXBatchInputModel::branchGrownByHandIsPutInOrder()
{
    Node* branch = bare("/p", false);
    branch->children = {file("/p/b.png"), nullptr, file("/p/a.png"), bare("/p/q", true)};
    branch->children.last()->children.append(file("/p/q/1.png"));
    branch->data.roles.remove(Model::NodeFileCountRole);
    branch->children.first()->data.roles.remove(Model::NodeFileCountRole);
    insert(branch);
    QCOMPARE(shape(*m_pModel), QString("p(3)[q(1)[1.png] a.png b.png]"));
}

void tst_KXBatchInputModel::insertFromASlotIsRefusedWhole()
{
    int told = 0;
    connect(m_pModel.get(), &Model::rowsInserted, this,
            [&]
            {
                ++told;
                QVERIFY(!insert(file("/late.png")).isValid());
            });
    connect(m_pModel.get(), &Model::FileCountChanged, this,
            [&]
            {
                ++told;
                QVERIFY(!insert(file("/later.png")).isValid());
            });
    insert(file("/a.png"));
    QCOMPARE(told, 2);
    QCOMPARE(paths(*m_pModel), QStringList({"/a.png"}));
}

void tst_KXBatchInputModel::rowsAreNotRemovedFromASlotThatIsToldOfRows()
{
    insert(folder("/p", {file("/p/b.png")}));
    int told = 0;
    const auto disturb = [&]
    {
        ++told;
        QVERIFY(!m_pModel->removeRows(0, 1));
        m_pModel->Clear();
    };
    connect(m_pModel.get(), &Model::rowsInserted, this, disturb);
    connect(m_pModel.get(), &Model::dataChanged, this, disturb);
    insert(branchOf("/p", {"/p", "/p/a.png", "/p/c.png"}));
    QCOMPARE(told, 3);
    QCOMPARE(shape(*m_pModel), QString("p(3)[a.png b.png c.png]"));
    m_pModel->disconnect(this);
    m_pModel->Clear();
    QCOMPARE(m_pModel->rowCount(), 0);
}

void tst_KXBatchInputModel::knownBranchIsMerged()
{
    const QModelIndex first = insert(branchOf("/p", {"/p", "/p/b.png", "/p/q", "/p/q/1.png"}));
    const QModelIndex second =
        insert(branchOf("/p", {"/p", "/p/a.png", "/p/b.png", "/p/q", "/p/q/2.png", "/p/r", "/p/r/3.png"}));
    QCOMPARE(second, first);
    QCOMPARE(shape(*m_pModel), QString("p(5)[q(2)[1.png 2.png] r(1)[3.png] a.png b.png]"));
    QCOMPARE(m_pModel->GetFileCount(), 5);
}

void tst_KXBatchInputModel::mergeTakesNewValuesAndKeepsOthers()
{
    const QModelIndex index = insert(folder("/p", {file("/p/a.png")}));
    m_pModel->setData(index, false, Model::NodeExistsRole);
    m_pModel->setData(index, "/p (not exists)", Qt::ToolTipRole);
    m_pModel->setData(index, "kept", Qt::UserRole + 500);
    Node* again = folder("/p");
    again->data.roles.insert(Model::NodeModifiedRole, "today");
    insert(again);
    QCOMPARE(index.data(Model::NodeExistsRole).toBool(), true);
    QCOMPARE(index.data(Qt::ToolTipRole).toString(), QString("/p"));
    QCOMPARE(index.data(Model::NodeModifiedRole).toString(), QString("today"));
    QCOMPARE(index.data(Qt::UserRole + 500).toString(), QString("kept"));
    QCOMPARE(shape(*m_pModel), QString("p(1)[a.png]"));
}

void tst_KXBatchInputModel::mergeKeepsRowsAndTheirIndexes()
{
    insert(branchOf("/p", {"/p", "/p/b.png", "/p/q", "/p/q/1.png"}));
    const QPersistentModelIndex b = m_pModel->FindPath("/p/b.png");
    const QPersistentModelIndex one = m_pModel->FindPath("/p/q/1.png");
    insert(branchOf("/p", {"/p", "/p/a.png", "/p/b.png", "/p/c", "/p/q", "/p/q/0.png", "/p/q/1.png"}));
    QCOMPARE(b.data().toString(), QString("b.png"));
    QCOMPARE(b.row(), 3);
    QCOMPARE(one.data().toString(), QString("1.png"));
    QCOMPARE(one.row(), 1);
}

void tst_KXBatchInputModel::mergeOfTheSameTellsNothing()
{
    const QStringList tree = {"/p", "/p/b.png", "/p/q", "/p/q/1.png"};
    insert(branchOf("/p", tree));
    m_pModel->setData(m_pModel->FindPath("/p/q"), "kept", Qt::UserRole + 500);
    SignalLog log(m_pModel.get());
    insert(branchOf("/p", tree));
    QCOMPARE(log.Entries(), QStringList());
}

void tst_KXBatchInputModel::mergeInsertsRunsAtOnce()
{
    insert(branchOf("/p", {"/p", "/p/5.png"}));
    SignalLog log(m_pModel.get());
    insert(branchOf("/p", {"/p", "/p/1.png", "/p/2.png", "/p/5.png", "/p/7.png", "/p/8.png", "/p/9.png"}));
    QCOMPARE(log.Count("rowsInserted"), 2);
    QCOMPARE(log.Count("dataChanged"), 1);
    QCOMPARE(log.Count("FileCountChanged"), 1);
}

void tst_KXBatchInputModel::mergeUnderAParent()
{
    const QModelIndex parent = insert(branchOf("/p", {"/p", "/p/q", "/p/q/1.png"}));
    insert(branchOf("/p/q", {"/p/q", "/p/q/2.png"}), parent);
    insert(file("/p/q/1.png"), m_pModel->FindPath("/p/q"));
    QCOMPARE(shape(*m_pModel), QString("p(2)[q(2)[1.png 2.png]]"));
}

void tst_KXBatchInputModel::folderOfAKnownFolderIsMergedWhereItIs()
{
    insert(branchOf("/p", {"/p", "/p/q", "/p/q/r", "/p/q/r/1.png"}));
    const QModelIndex index = insert(branchOf("/p/q/r", {"/p/q/r", "/p/q/r/1.png", "/p/q/r/2.png"}));
    QCOMPARE(index, m_pModel->FindPath("/p/q/r"));
    QCOMPARE(insert(file("/p/q/r/2.png")), m_pModel->FindPath("/p/q/r/2.png"));
    QCOMPARE(shape(*m_pModel), QString("p(2)[q(2)[r(2)[1.png 2.png]]]"));
    // What no row has goes to the root, as it is told to.
    insert(file("/p/q/3.png"));
    QCOMPARE(shape(*m_pModel), QString("p(2)[q(2)[r(2)[1.png 2.png]]] 3.png"));
}

void tst_KXBatchInputModel::rootThatComesInWithABranchGoesUpInIt()
{
    insert(branchOf("/p/q", {"/p/q", "/p/q/old.png"}));
    m_pModel->setData(m_pModel->FindPath("/p/q"), "mine", Qt::UserRole + 500);
    m_pModel->setData(m_pModel->FindPath("/p/q"), false, Model::NodeExistsRole);
    insert(file("/p/a.png"));
    insert(file("/o/a.png"));
    insert(branchOf("/p", {"/p", "/p/a.png", "/p/q", "/p/q/new.png"}));
    QCOMPARE(shape(*m_pModel), QString("p(3)[q(2)[new.png old.png] a.png] a.png"));
    QCOMPARE(m_pModel->FindPath("/p/q").data(Qt::UserRole + 500).toString(), QString("mine"));
    // The newcomer knows better.
    QCOMPARE(m_pModel->FindPath("/p/q").data(Model::NodeExistsRole).toBool(), true);
    QCOMPARE(m_pModel->GetFileCount(), 4);
    // A second time, into a branch that is there.
    insert(file("/p/q/last.png"));
    insert(branchOf("/p", {"/p", "/p/q", "/p/q/last.png"}));
    QCOMPARE(shape(*m_pModel), QString("p(4)[q(3)[last.png new.png old.png] a.png] a.png"));
}

void tst_KXBatchInputModel::rootThatTheBranchDoesNotHaveStays()
{
    insert(file("/p/.hidden/a.png"));
    insert(folder("/p/b.png"));
    insert(branchOf("/p", {"/p", "/p/b.png"}));
    // The folder that bore the image's name is gone.
    QCOMPARE(shape(*m_pModel), QString("p(1)[b.png] a.png"));
}

void tst_KXBatchInputModel::rootGoesUpInABranchUnderAParent()
{
    const QModelIndex parent = insert(folder("/p"));
    insert(file("/p/q/1.png"));
    insert(file("/p/new.png"));
    QCOMPARE(m_pModel->rowCount(), 3);
    insert(branchOf("/p/q", {"/p/q", "/p/q/1.png"}), parent);
    insert(file("/p/new.png"), parent);
    QCOMPARE(shape(*m_pModel), QString("p(2)[q(1)[1.png] new.png]"));
}

void tst_KXBatchInputModel::neighbourWithALongerNameIsNotBelow()
{
    insert(branchOf("/p/ab", {"/p/ab", "/p/ab/1.png"}));
    insert(branchOf("/p/a-b", {"/p/a-b", "/p/a-b/1.png"}));
    insert(branchOf("/p/a", {"/p/a", "/p/a/1.png"}));
    QCOMPARE(shape(*m_pModel), QString("a(1)[1.png] a-b(1)[1.png] ab(1)[1.png]"));
}

void tst_KXBatchInputModel::rootFolderOfTheDiskHoldsAll()
{
    insert(file("/p/1.png"));
    insert(folder("/", {branchOf("/p", {"/p", "/p/1.png", "/p/2.png"}), file("/3.png")}));
    QCOMPARE(shape(*m_pModel), QString("/(3)[p(2)[1.png 2.png] 3.png]"));
    QCOMPARE(insert(folder("/p")), m_pModel->FindPath("/p"));
    QCOMPARE(insert(file("/3.png")), m_pModel->FindPath("/3.png"));
    QCOMPARE(m_pModel->rowCount(), 1);
}

void tst_KXBatchInputModel::slashAtTheEndIsNoOtherPath()
{
    insert(folder("/p/", {file("/p/1.png")}));
    insert(folder("/p", {file("/p/2.png")}));
    QCOMPARE(m_pModel->rowCount(), 1);
    QCOMPARE(m_pModel->GetFileCount(), 2);
    QVERIFY(m_pModel->FindPath("/p/").isValid());
    QCOMPARE(m_pModel->FindPath("/p"), m_pModel->FindPath("/p/"));
}

void tst_KXBatchInputModel::folderThatBecameAFileIsReplaced()
{
    insert(branchOf("/p", {"/p", "/p/b.png", "/p/z"}));
    insert(folder("/p/x.png", {file("/p/x.png/1.png"), file("/p/x.png/2.png")}), m_pModel->FindPath("/p"));
    QCOMPARE(shape(*m_pModel), QString("p(3)[x.png(2)[1.png 2.png] z(0) b.png]"));
    insert(branchOf("/p", {"/p", "/p/x.png"}));
    QCOMPARE(shape(*m_pModel), QString("p(2)[z(0) b.png x.png]"));
    // The same at the root, and under a row.
    insert(folder("/p"));
    insert(file("/p"));
    QCOMPARE(shape(*m_pModel), QString("p"));
    QCOMPARE(m_pModel->GetFileCount(), 1);
}

void tst_KXBatchInputModel::fileThatBecameAFolderIsReplaced()
{
    const QModelIndex parent = insert(branchOf("/p", {"/p", "/p/a.png", "/p/x.png"}));
    insert(folder("/p", {folder("/p/x.png", {file("/p/x.png/1.png")})}));
    QCOMPARE(shape(*m_pModel), QString("p(2)[x.png(1)[1.png] a.png]"));
    insert(folder("/p/a.png"), parent);
    QCOMPARE(shape(*m_pModel), QString("p(1)[a.png(0) x.png(1)[1.png]]"));
}

void tst_KXBatchInputModel::fileRowAsParentBecomesAFolder()
{
    insert(branchOf("/p", {"/p", "/p/a.png", "/p/x.png", "/p/x.png.d"}));
    const QModelIndex row = m_pModel->FindPath("/p/x.png");
    const QPersistentModelIndex kept = row;
    const QModelIndex child = insert(file("/p/x.png/1.png"), row);
    QCOMPARE(shape(*m_pModel), QString("p(3)[x.png(1)[1.png] a.png x.png.d]"));
    QCOMPARE(kept.row(), 0);
    QCOMPARE(child.parent(), QModelIndex(kept));
    QCOMPARE(kept.data(Model::NodeTypeRole).toString(), QObject::tr("Folder"));
    // The row's old index, whose number is out of date, will do for the next one.
    insert(file("/p/x.png/2.png"), row);
    QCOMPARE(shape(*m_pModel), QString("p(4)[x.png(2)[1.png 2.png] a.png x.png.d]"));
    // One that needs not move.
    insert(file("/only.png"));
    insert(file("/only.png/1.png"), m_pModel->FindPath("/only.png"));
    QCOMPARE(m_pModel->FindPath("/only.png").data(Model::NodeFileCountRole).toInt(), 1);
}

void tst_KXBatchInputModel::rowsWithoutAPathAreNeverTheSame()
{
    const auto nameless = []
    {
        auto* node = new Node;
        node->data.roles.insert(Qt::DisplayRole, "x");
        return node;
    };
    Node* first = nameless();
    Node* second = nameless();
    Node* third = nameless();
    for (Node* node : {first, second, third})
        insert(node);
    QCOMPARE(m_pModel->rowCount(), 3);
    QSet<const Node*> nodes;
    for (int row = 0; row < 3; ++row)
        nodes.insert(m_pModel->NodeAt(m_pModel->index(row, 0)));
    QCOMPARE(nodes, QSet<const Node*>({first, second, third}));
    const QModelIndex child = insert(file("/a.png"), m_pModel->index(1, 0));
    QCOMPARE(child.parent().row(), 1);
    QVERIFY(!m_pModel->FindPath("").isValid());
    QVERIFY(m_pModel->removeRows(0, 3));
    // isWhole() asks for a strict order.
}

void tst_KXBatchInputModel::randomBranchesMergeIntoTheirUnion()
{
    QStringList all = {"/t"};
    for (const char* a : {"/a", "/b", "/b1", "/c.d"})
    {
        all << QString("/t") + a;
        for (const char* b : {"/1.png", "/2.png", "/x", "/y"})
            all << QString("/t") + a + b;
        for (const char* c : {"/x/1.png", "/x/10.png", "/y/2.png", "/x/z", "/x/z/q.png"})
            all << QString("/t") + a + c;
    }
    // "/t/c.d" is an image by the rule of branchOf(): it has no rows below.
    const ToldCounts told(m_pModel.get());
    all = all.filter(QRegularExpression("^/t(?!/c\\.d/)"));
    for (uint seed = 1; seed <= 60; ++seed)
    {
        std::mt19937 random(seed);
        m_pModel->Clear();
        QSet<QString> expected;
        for (int round = 0; round < 6; ++round)
        {
            // A part of the tree; what stands above a path is there too.
            QSet<QString> part = {"/t"};
            for (const QString& path : qAsConst(all))
            {
                if (part.contains(path.left(path.lastIndexOf('/'))) && random() % 3 != 0)
                    part.insert(path);
            }
            const QStringList chosen = part.values();
            const QString top = chosen.at(int(random() % uint(chosen.size())));
            insert(branchOf(top, chosen));
            for (const QString& path : chosen)
            {
                if (path == top || path.startsWith(top + '/'))
                    expected.insert(path);
            }
            QStringList found = paths(*m_pModel);
            QStringList wanted = expected.values();
            found.sort();
            wanted.sort();
            QCOMPARE(found, wanted);
            QVERIFY2(isWhole(*m_pModel), qPrintable(QString("seed %1").arg(seed)));
            QCOMPARE(told.Counts(), ToldCounts::Present(*m_pModel));
            // A row less, now and then.
            if (random() % 3 == 0)
            {
                const QString path = found.at(int(random() % uint(found.size())));
                const QModelIndex gone = m_pModel->FindPath(path);
                expected.remove(path);
                for (const QString& below : paths(*m_pModel, gone))
                    expected.remove(below);
                m_pModel->removeRows(gone.row(), 1, gone.parent());
                QCOMPARE(told.Counts(), ToldCounts::Present(*m_pModel));
            }
        }
    }
}

void tst_KXBatchInputModel::chainOfAThousandFoldersIsBorne()
{
    // The toolkit's checks walk all rows for each change.
    m_pTester.reset();
    const auto chain = [](const QString& image)
    {
        QString path = QString("/d").repeated(1000);
        Node* branch = folder(path, {file(path + image)});
        for (path.chop(2); !path.isEmpty(); path.chop(2))
            branch = folder(path, {branch});
        return branch;
    };
    const QModelIndex top = insert(chain("/1.png"));
    QCOMPARE(insert(chain("/2.png")), top);
    QCOMPARE(top.data(Model::NodeFileCountRole).toInt(), 2);
    const QModelIndex last = m_pModel->FindPath(QString("/d").repeated(1000));
    QCOMPARE(m_pModel->rowCount(last), 2);
    QVERIFY(m_pModel->removeRows(0, 1, last));
    QCOMPARE(top.data(Model::NodeFileCountRole).toInt(), 1);
}

void tst_KXBatchInputModel::removeTakesRowsAndCounts()
{
    insert(branchOf("/p", {"/p", "/p/1.png", "/p/2.png", "/p/3.png", "/p/q", "/p/q/4.png", "/p/q/5.png"}));
    SignalLog log(m_pModel.get());
    QVERIFY(m_pModel->removeRows(0, 2, m_pModel->FindPath("/p")));
    QCOMPARE(shape(*m_pModel), QString("p(2)[2.png 3.png]"));
    QCOMPARE(log.Count("rowsRemoved"), 1);
    QCOMPARE(log.Count("dataChanged"), 1);
    QCOMPARE(log.Entries().last(), QString("FileCountChanged(2)"));
    QVERIFY(m_pModel->removeRows(0, 1));
    QCOMPARE(m_pModel->rowCount(), 0);
    QVERIFY(!m_pModel->FindPath("/p").isValid());
    // The path is free again.
    insert(file("/p/2.png"));
    QCOMPARE(m_pModel->rowCount(), 1);
}

void tst_KXBatchInputModel::removeOutOfRangeChangesNothing()
{
    const QModelIndex index = insert(folder("/p", {file("/p/1.png")}));
    SignalLog log(m_pModel.get());
    for (const auto& range : QList<QPair<int, int>>{{0, 0},
                                                    {0, 2},
                                                    {1, 1},
                                                    {-1, 1},
                                                    {0, -1},
                                                    {std::numeric_limits<int>::max(), 1},
                                                    {1, std::numeric_limits<int>::max()}})
    {
        QVERIFY(!m_pModel->removeRows(range.first, range.second, index));
        QVERIFY(!m_pModel->removeRows(range.first, range.second));
    }
    QCOMPARE(log.Count(), 0);
    QVERIFY(!m_pModel->removeRows(0, 1, m_pModel->FindPath("/p/1.png")));
}

void tst_KXBatchInputModel::clearRemovesAll()
{
    SignalLog log(m_pModel.get());
    m_pModel->Clear();
    QCOMPARE(log.Count(), 0);
    insert(folder("/p", {file("/p/1.png")}));
    insert(file("/a.png"));
    log.Clear();
    m_pModel->Clear();
    QCOMPARE(log.Entries(), QStringList({"modelAboutToBeReset()", "modelReset()", "FileCountChanged(0)"}));
    QCOMPARE(m_pModel->rowCount(), 0);
    QVERIFY(!m_pModel->FindPath("/a.png").isValid());
    insert(file("/a.png"));
    QCOMPARE(shape(*m_pModel), QString("a.png"));
}

void tst_KXBatchInputModel::refreshReplacesTheRowsBelow()
{
    insert(branchOf("/o", {"/o", "/o/p", "/o/p/1.png", "/o/p/2.png", "/o/p/q"}));
    const QModelIndex row = m_pModel->FindPath("/o/p");
    QVERIFY(m_pModel->removeRows(0, m_pModel->rowCount(row), row));
    QCOMPARE(shape(*m_pModel), QString("o(0)[p(0)]"));
    QVERIFY(m_pModel->setData(row, "later", Model::NodeModifiedRole));
    for (const char* path : {"/o/p/3.png", "/o/p/2.png", "/o/p/4.png"})
        insert(file(path), row);
    QCOMPARE(shape(*m_pModel), QString("o(3)[p(3)[2.png 3.png 4.png]]"));
}

void tst_KXBatchInputModel::pathIsFound()
{
    insert(branchOf("/p", {"/p", "/p/1.png", "/p/q", "/p/q/2.png", "/p/q/IMG 3.PNG"}));
    insert(file("/other/1.png"));
    for (const QString& path :
         {QString("/p"), QString("/p/1.png"), QString("/p/q/IMG 3.PNG"), QString("/other/1.png")})
        QCOMPARE(m_pModel->FindPath(path).data(Model::NodePathRole).toString(), path);
    for (const char* path :
         {"", "/", "/p/2.png", "/p/q/img 3.png", "/p/1.png/x", "/other", "p", "1.png", "//"})
        QVERIFY2(!m_pModel->FindPath(path).isValid(), path);
}

void tst_KXBatchInputModel::roleIsWrittenOnceAndTold()
{
    const QModelIndex index = insert(file("/a.png"));
    SignalLog log(m_pModel.get());
    QVERIFY(m_pModel->setData(index, "x", Model::NodeModifiedRole));
    QVERIFY(m_pModel->setData(index, "x", Model::NodeModifiedRole));
    QCOMPARE(log.Count("dataChanged"), 1);
    QCOMPARE(index.data(Model::NodeModifiedRole).toString(), QString("x"));
    QCOMPARE(m_pModel->NodeAt(index)->data.roles.value(Model::NodeModifiedRole).toString(), QString("x"));
    QVERIFY(!m_pModel->setData(QModelIndex(), "x", Model::NodeModifiedRole));
    QCOMPARE(log.Count(), 1);
}

void tst_KXBatchInputModel::rolesOfTheModelAreNotWritten()
{
    const QModelIndex index = insert(file("/a.png"));
    SignalLog log(m_pModel.get());
    for (int role : {int(Qt::DisplayRole), int(Qt::EditRole), int(Model::NodeIsFileRole),
                     int(Model::NodePathRole), int(Model::NodeFileCountRole)})
        QVERIFY(!m_pModel->setData(index, 17, role));
    QCOMPARE(log.Count(), 0);
    QCOMPARE(shape(*m_pModel), QString("a.png"));
}

void tst_KXBatchInputModel::rowWithoutANameShowsItsPath()
{
    const QModelIndex index = insert(folder("/"));
    QCOMPARE(index.data().toString(), QString("/"));
    QCOMPARE(index.data(Qt::EditRole).toString(), QString("/"));
}

void tst_KXBatchInputModel::missingRowIsShownAsSuch()
{
    const QModelIndex index = insert(file("/a.png"));
    QVERIFY(!index.data(Qt::FontRole).isValid());
    QVERIFY(!index.data(Qt::ForegroundRole).isValid());
    QVERIFY(!index.data(Qt::AccessibleTextRole).isValid());
    m_pModel->setData(index, false, Model::NodeExistsRole);
    m_pModel->setData(index, "/a.png (not exists)", Qt::ToolTipRole);
    QVERIFY(index.data(Qt::FontRole).value<QFont>().italic());
    QCOMPARE(index.data(Qt::ForegroundRole).value<QBrush>(),
             QGuiApplication::palette().brush(QPalette::Disabled, QPalette::Text));
    QCOMPARE(index.data(Qt::AccessibleTextRole).toString(), QString("a.png (not exists)"));
    QCOMPARE(index.data(Qt::ToolTipRole).toString(), QString("/a.png (not exists)"));
    QCOMPARE(index.data().toString(), QString("a.png"));
    m_pModel->setData(index, true, Model::NodeExistsRole);
    QVERIFY(!index.data(Qt::FontRole).isValid());
    // The font of the view shows through.
    QFont view("Monospace", 31);
    m_pModel->setData(index, false, Model::NodeExistsRole);
    QCOMPARE(index.data(Qt::FontRole).value<QFont>().resolve(view).pointSize(), 31);
}

void tst_KXBatchInputModel::tooltipShowsTheLettersOfAName_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("plain") << "/p/a b.png";
    QTest::newRow("percent") << "/p/%1 100%.png";
    QTest::newRow("lower and greater") << "/p/1<2>0.png";
    QTest::newRow("bold") << "/p/<b>bold<";
    QTest::newRow("picture") << "/p/<img src='x.png'>.png";
    QTest::newRow("closed paragraph") << "/p/<p>one</p> &amp; two.png";
    QTest::newRow("entity") << "/p/&lt;b&gt;.png";
    QTest::newRow("new line") << "/p/a\n<b>b.png";
    QTest::newRow("blanks") << "/p/<i>a   b.png";
}

void tst_KXBatchInputModel::tooltipShowsTheLettersOfAName()
{
    QFETCH(QString, path);
    const QModelIndex index = insert(file(path));
    const QString toolTip = index.data(Qt::ToolTipRole).toString();
    QTextDocument shown;
    if (Qt::mightBeRichText(toolTip))
        shown.setHtml(toolTip);
    else
        shown.setPlainText(toolTip);
    QCOMPARE(shown.toPlainText().replace(QChar::Nbsp, ' '), path);
    if (!Qt::mightBeRichText(path))
        QCOMPARE(toolTip, path);
    QCOMPARE(index.data(Model::NodePathRole).toString(), path);
}

void tst_KXBatchInputModel::flagsTellFilesFromFolders()
{
    const QModelIndex index = insert(folder("/p", {file("/p/1.png")}));
    QCOMPARE(index.flags(), Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    QCOMPARE(m_pModel->index(0, 0, index).flags(),
             Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren);
    QCOMPARE(m_pModel->flags(QModelIndex()), Qt::NoItemFlags);
}

void tst_KXBatchInputModel::headerNamesTheColumn()
{
    QCOMPARE(m_pModel->headerData(0, Qt::Horizontal).toString(), QString("Name"));
    QVERIFY(!m_pModel->headerData(0, Qt::Horizontal, Qt::DecorationRole).isValid());
}

void tst_KXBatchInputModel::viewSurvivesAllChanges()
{
    QTreeView view;
    view.setModel(m_pModel.get());
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    insert(branchOf("/p", {"/p", "/p/b.png", "/p/q", "/p/q/1.png"}));
    view.expandAll();
    view.setCurrentIndex(m_pModel->FindPath("/p/q/1.png"));
    insert(branchOf("/p", {"/p", "/p/a.png", "/p/c", "/p/q", "/p/q/0.png"}));
    QCOMPARE(view.currentIndex(), m_pModel->FindPath("/p/q/1.png"));
    QVERIFY(view.isExpanded(m_pModel->FindPath("/p/q")));
    insert(file("/p/b.png/1.png"), m_pModel->FindPath("/p/b.png"));
    m_pModel->removeRows(0, 1, m_pModel->FindPath("/p"));
    QCoreApplication::processEvents();
    m_pModel->Clear();
    QVERIFY(!view.currentIndex().isValid());
    insert(file("/x.png"));
    QCoreApplication::processEvents();
    m_pTester.reset();
    m_pModel.reset();
    QCoreApplication::processEvents();
}

void tst_KXBatchInputModel::modelDeletesItsNodes()
{
    const auto shared = std::make_shared<int>(1);
    Node* branch = folder("/p", {file("/p/a.png")});
    branch->children.first()->data.roles.insert(Qt::UserRole + 500, QVariant::fromValue(shared));
    insert(branch);
    QCOMPARE(shared.use_count(), 2L);
    m_pTester.reset();
    m_pModel.reset();
    QCOMPARE(shared.use_count(), 1L);
}

NV_TEST_MAIN(tst_KXBatchInputModel)

#include "tst_KXBatchInputModel.moc"
