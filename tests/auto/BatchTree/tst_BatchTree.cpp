// What a batch does with its tree: listing, copying, hanging parts under skeletons, and removing rows.

#include "BatchTree.h"

#include <QAbstractItemModelTester>

#include <memory>

#include "FolderTree.h"
#include "NVImageFileManager.h"
#include "TestMain.h"

namespace
{

using Model = KXBatchInputModel;
using Node = KXBatchInputModel::Node;

Node* MakeNode(const QString& path, bool isFile)
{
    auto* node = new Node;
    node->data.roles.insert(Qt::DisplayRole, path.mid(path.lastIndexOf('/') + 1));
    node->data.roles.insert(Model::NodePathRole, path);
    node->data.roles.insert(Model::NodeIsFileRole, isFile ? 1 : 0);
    node->data.roles.insert(Model::NodeExistsRole, true);
    node->data.roles.insert(Model::NodeFileCountRole, isFile ? 1 : 0);
    return node;
}

// With the images that stand directly in it.
Node* Folder(const QString& path, const QStringList& images, const QList<Node*>& below = {})
{
    Node* folder = MakeNode(path, false);
    for (const QString& image : images)
        Node::AddChild(folder, MakeNode(path + "/" + image, true));
    for (Node* node : below)
        Node::AddChild(folder, node);
    return folder;
}

QStringList Paths(const QVector<BatchInput>& inputs)
{
    QStringList paths;
    for (const BatchInput& input : inputs)
        paths += input.path;
    return paths;
}

} // namespace

class tst_BatchTree : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void inputsKnowTheirTopRow()
    {
        Model model;
        model.InsertBranch(Folder("/a", {"2.png", "10.png"}, {Folder("/a/b", {"x.png"})}), QModelIndex());
        model.InsertBranch(MakeNode("/single.png", true), QModelIndex());

        const QVector<BatchInput> inputs = ListInputs(model);

        QCOMPARE(Paths(inputs), QStringList({"/a/b/x.png", "/a/2.png", "/a/10.png", "/single.png"}));
        QCOMPARE(inputs.at(0).root, QString("/a"));
        QCOMPARE(inputs.at(3).root, QString());
        QCOMPARE(CountFolders(model), 2);
    }

    void anEmptyTreeHasNothing()
    {
        const Model model;

        QVERIFY(ListInputs(model).isEmpty());
        QCOMPARE(CountFolders(model), 0);
    }

    void theNativeFormatIsNoInput()
    {
        QVERIFY(InputSuffixes().isEmpty());
        NVImageFileManager manager;
        manager.SetGroup("Native", {"nvdoc", "other"});

        QVERIFY(InputSuffixes().contains("other"));
        QVERIFY(InputSuffixes().contains("png"));
        QVERIFY(!InputSuffixes().contains("nvdoc"));
    }

    void aCopyIsATreeOfItsOwn()
    {
        const std::unique_ptr<Node> node(Folder("/a", {"1.png"}, {Folder("/a/b", {"2.png", "3.png"})}));

        const std::unique_ptr<Node> copy(CopyBranch(*node));

        QCOMPARE(copy->children.size(), 2);
        QVERIFY(!copy->parent);
        QCOMPARE(copy->children.at(0)->parent, copy.get());
        QVERIFY(copy->children.at(0) != node->children.at(0));
        QCOMPARE(copy->children.at(0)->children.at(1)->data.roles,
                 node->children.at(0)->children.at(1)->data.roles);
    }

    void partsHangUnderTheirSkeletons()
    {
        Model model;
        const QAbstractItemModelTester tester(&model);
        Model parts;
        parts.InsertBranch(MakeNode("/top/a.png", true), QModelIndex());
        parts.InsertBranch(Folder("/top/sub/deep", {"b.png", "c.png"}), QModelIndex());
        parts.InsertBranch(Folder("/elsewhere", {"d.png"}), QModelIndex());
        FolderSurvey survey;
        survey.skeletons.append(std::shared_ptr<Node>(Folder("/top", {}, {Folder("/top/sub", {})})));

        InsertParts(survey, parts, &model);

        QCOMPARE(model.GetFileCount(), 4);
        QCOMPARE(model.rowCount(), 2);
        QCOMPARE(model.FindPath("/top").data(Model::NodeFileCountRole).toInt(), 3);
        QCOMPARE(model.FindPath("/top/sub/deep").data(Model::NodeFileCountRole).toInt(), 2);
        QCOMPARE(model.FindPath("/elsewhere/d.png").parent(), model.FindPath("/elsewhere"));
        QCOMPARE(parts.GetFileCount(), 4);
        QVERIFY(survey.skeletons.first()->children.first()->children.isEmpty());
    }

    void whatVanishedIsFound()
    {
        Model model;
        model.InsertBranch(Folder("/top", {"a.png"}, {Folder("/top/sub", {"b.png", "c.png"})}),
                           QModelIndex());
        FolderSurvey survey;
        survey.imageCounts = {
            {"/top", 1}, {"/top/sub", 4}, {"/top/gone", 2}, {"/top/gone/deep", 1}, {"/other", 1}};

        const QVector<PassedOver> vanished = FindVanished(survey, {"/top", "/other"}, model);

        QCOMPARE(vanished.size(), 3);
        QCOMPARE(vanished.at(0).path, QString("/other"));
        QCOMPARE(vanished.at(1).path, QString("/top/gone"));
        QCOMPARE(vanished.at(2).path, QString("/top/sub"));
        QCOMPARE(vanished.at(2).count, 2);
        QCOMPARE(vanished.at(1).reason, PassedOver::Vanished);
        QCOMPARE(vanished.at(2).reason, PassedOver::ImagesVanished);
    }

    void onlyWhatWasScannedCanHaveVanished()
    {
        Model model;
        model.InsertBranch(Folder("/top", {}, {Folder("/top/sub", {"a.png"})}), QModelIndex());
        FolderSurvey survey;
        survey.imageCounts = {{"/top", 1}, {"/top/sub", 2}, {"/top/sub/new", 1}, {"/top/subway", 1}};

        QVERIFY(FindVanished(survey, {}, model).isEmpty());
        const QVector<PassedOver> vanished = FindVanished(survey, {"/top/sub"}, model);

        QCOMPARE(vanished.size(), 2);
        QCOMPARE(vanished.at(0).path, QString("/top/sub"));
        QCOMPARE(vanished.at(0).count, 1);
        QCOMPARE(vanished.at(1).path, QString("/top/sub/new"));
    }

    void whatIsWithinAFolderIsFoundByItsPath()
    {
        QVERIFY(IsWithin("/a/b", {"/a/b"}));
        QVERIFY(IsWithin("/a/b/c/d.png", {"/x", "/a/b"}));
        QVERIFY(IsWithin("/a", {"/"}));
        QVERIFY(!IsWithin("/a/bc", {"/a/b"}));
        QVERIFY(!IsWithin("/a", {"/a/b"}));
        QVERIFY(!IsWithin("/", {"/a"}));
        QVERIFY(!IsWithin(QString(), {"/a"}));
    }

    void foldersAreListedWithoutTheImages()
    {
        Model model;
        model.InsertBranch(Folder("/a", {"1.png"}, {Folder("/a/b", {"2.png"})}), QModelIndex());
        model.InsertBranch(MakeNode("/c.png", true), QModelIndex());

        QCOMPARE(FolderPaths(model), QSet<QString>({"/a", "/a/b"}));
    }

    void whatCameSinceIsNoLoss()
    {
        Model model;
        model.InsertBranch(Folder("/top", {"a.png", "new.png"}), QModelIndex());
        FolderSurvey survey;
        survey.imageCounts = {{"/top", 1}};

        QVERIFY(FindVanished(survey, {"/top"}, model).isEmpty());
    }

    void topMostLeavesOutWhatLiesBelow()
    {
        Model model;
        model.InsertBranch(Folder("/a", {"1.png"}, {Folder("/a/b", {"2.png"})}), QModelIndex());
        model.InsertBranch(MakeNode("/c.png", true), QModelIndex());
        const QModelIndexList all = {model.FindPath("/a/b/2.png"), model.FindPath("/a"),
                                     model.FindPath("/a/1.png"), model.FindPath("/c.png")};

        QCOMPARE(TopMost(all), QModelIndexList({model.FindPath("/a"), model.FindPath("/c.png")}));
    }

    void rowsAreRemovedWhereverTheyAre()
    {
        Model model;
        const QAbstractItemModelTester tester(&model);
        model.InsertBranch(
            Folder("/a", {"1.png", "2.png", "3.png", "4.png", "5.png"}, {Folder("/a/b", {"x.png", "y.png"})}),
            QModelIndex());
        model.InsertBranch(Folder("/c", {"z.png"}), QModelIndex());

        RemoveIndexes(&model,
                      {model.FindPath("/a/4.png"), model.FindPath("/a/1.png"), model.FindPath("/a/b/x.png"),
                       model.FindPath("/c/z.png"), model.FindPath("/c"), model.FindPath("/a/3.png")});

        QCOMPARE(Paths(ListInputs(model)), QStringList({"/a/b/y.png", "/a/2.png", "/a/5.png"}));
        QVERIFY(!model.FindPath("/c").isValid());
    }

    void neighboursAreRemovedTogether()
    {
        Model model;
        QStringList names;
        for (int i = 0; i < 1000; ++i)
            names += QString("%1.png").arg(i);
        model.InsertBranch(Folder("/a", names), QModelIndex());
        QModelIndexList all;
        for (int row = 0; row < 1000; ++row)
            all.append(model.index(row, 0, model.FindPath("/a")));
        int removals = 0;
        connect(&model, &Model::rowsRemoved, this, [&removals] { ++removals; });

        RemoveIndexes(&model, all);

        QCOMPARE(removals, 1);
        QCOMPARE(model.GetFileCount(), 0);
    }
};

NV_TEST_MAIN(tst_BatchTree)
#include "tst_BatchTree.moc"
