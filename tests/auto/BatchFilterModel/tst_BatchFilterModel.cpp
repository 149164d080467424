// Which rows a filter leaves, while the tree changes under it.

#include "BatchFilterModel.h"

#include <QAbstractItemModelTester>

#include <memory>

#include "SignalLog.h"
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
    node->data.roles.insert(Model::NodeFileCountRole, isFile ? 1 : 0);
    return node;
}

Node* Folder(const QString& path, const QStringList& images, const QList<Node*>& below = {})
{
    Node* folder = MakeNode(path, false);
    for (const QString& image : images)
        Node::AddChild(folder, MakeNode(path + "/" + image, true));
    for (Node* node : below)
        Node::AddChild(folder, node);
    return folder;
}

void List(const QAbstractItemModel& model, const QModelIndex& parent, QStringList& names)
{
    for (int row = 0; row < model.rowCount(parent); ++row)
    {
        const QModelIndex index = model.index(row, 0, parent);
        names += index.data().toString();
        List(model, index, names);
    }
}

QStringList Names(const QAbstractItemModel& model)
{
    QStringList names;
    List(model, QModelIndex(), names);
    return names;
}

} // namespace

class tst_BatchFilterModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_model = std::make_unique<Model>();
        m_model->InsertBranch(
            Folder("/top", {"sea.png", "Beach.jpg"},
                   {Folder("/top/Seaside", {"1.png", "2.png"}),
                    Folder("/top/city", {"house.png", "SEAL.png"}), Folder("/top/empty", {})}),
            QModelIndex());
        m_filter = std::make_unique<BatchFilterModel>(m_model.get());
    }
    void cleanup() { m_filter.reset(); }

    void withoutATextAllRowsAreLeft()
    {
        QCOMPARE(Names(*m_filter), Names(*m_model));
        QCOMPARE(m_filter->GetFileCount(), 6);
    }

    void aTextLeavesWhatHoldsItAndWhatStandsAboveAndBelow()
    {
        m_filter->SetText("sea");

        QCOMPARE(Names(*m_filter),
                 QStringList({"top", "city", "SEAL.png", "Seaside", "1.png", "2.png", "sea.png"}));
        QCOMPARE(m_filter->GetFileCount(), 4);
    }

    void aFolderStandsForWhatIsLeftOfIt()
    {
        m_filter->SetText("sea");
        const QModelIndex top = m_filter->index(0, 0);
        const auto sourceNames = [this](const QModelIndexList& indexes)
        {
            QStringList names;
            const QModelIndexList rows = m_filter->SourceRows(indexes);
            for (const QModelIndex& row : rows)
            {
                names += row.data().toString();
                if (row.model() != m_model.get())
                    names += "of another model";
            }
            return names;
        };

        // "city" lacks its house; nothing of "Seaside" is left out.
        QCOMPARE(sourceNames({top}), QStringList({"SEAL.png", "Seaside", "sea.png"}));
        QCOMPARE(sourceNames({m_filter->index(1, 0, top)}), QStringList("Seaside"));
        QCOMPARE(sourceNames({}), QStringList());
        // What lies below another one is named once.
        QCOMPARE(sourceNames({m_filter->index(1, 0, top), top}), sourceNames({top}));
        m_filter->SetText(QString());
        QCOMPARE(sourceNames({m_filter->index(0, 0)}), QStringList("top"));
    }

    void aTextThatNothingHoldsLeavesNothing()
    {
        m_filter->SetText("%1 <b>");

        QCOMPARE(m_filter->rowCount(), 0);
        QCOMPARE(m_filter->GetFileCount(), 0);
    }

    void takingTheTextAwayBringsAllBack()
    {
        m_filter->SetText("sea");

        m_filter->SetText(QString());

        QCOMPARE(Names(*m_filter), Names(*m_model));
    }

    void aTextIsToldOnce()
    {
        int told = 0;
        connect(m_filter.get(), &BatchFilterModel::Filtered, this, [&told] { ++told; });

        m_filter->SetText("sea");
        m_filter->SetText("sea");

        QCOMPARE(told, 1);
        QCOMPARE(m_filter->GetText(), QString("sea"));
    }

    void newRowsAreFilteredToo()
    {
        m_filter->SetText("sea");

        m_model->InsertBranch(Folder("/other", {"seagull.png", "dove.png"}), QModelIndex());
        QCoreApplication::processEvents();

        QVERIFY(Names(*m_filter).contains("seagull.png"));
        QVERIFY(!Names(*m_filter).contains("dove.png"));
        QCOMPARE(m_filter->GetFileCount(), 5);
    }

    void aFolderComesInWithWhatIsNewInIt()
    {
        m_filter->SetText("sea");
        QVERIFY(!Names(*m_filter).contains("empty"));

        m_model->InsertBranch(MakeNode("/top/empty/sea2.png", true), m_model->FindPath("/top/empty"));
        QCoreApplication::processEvents();

        QVERIFY(Names(*m_filter).contains("sea2.png"));
    }

    void removedRowsGo()
    {
        m_filter->SetText("sea");

        m_model->removeRows(0, 1, m_model->FindPath("/top/Seaside"));
        QCoreApplication::processEvents();

        QVERIFY(!Names(*m_filter).contains("1.png"));
        QCOMPARE(m_filter->GetFileCount(), 3);
        m_model->Clear();
        QCoreApplication::processEvents();
        QCOMPARE(m_filter->rowCount(), 0);
        QCOMPARE(m_filter->GetFileCount(), 0);
    }

    void itIsAModelLikeAnyOther()
    {
        const QAbstractItemModelTester tester(m_filter.get());

        for (const char* text : {"sea", "png", "house", "", "nothing", "top"})
        {
            m_filter->SetText(text);
            m_model->InsertBranch(Folder(QString("/new-%1").arg(text), {"sea.png", "x.png"}), QModelIndex());
            QCoreApplication::processEvents();
        }
        m_model->removeRows(1, 2);
        QCoreApplication::processEvents();
    }

    void aFolderIsReadOutWithItsImages()
    {
        m_model->InsertBranch(Folder("/one", {"x.png"}), QModelIndex());
        const auto text = [this](const QString& path)
        { return m_filter->mapFromSource(m_model->FindPath(path)).data(Qt::AccessibleTextRole).toString(); };

        QCOMPARE(text("/top"), QString("top, 6 images"));
        QCOMPARE(text("/one"), QString("one, 1 image"));
        QCOMPARE(text("/one/x.png"), QString());
        m_model->setData(m_model->FindPath("/one"), false, Model::NodeExistsRole);
        QCOMPARE(text("/one"), QString("one (not exists), 1 image"));
    }

    void nodesAreThoseOfTheModel()
    {
        const QModelIndex index = m_filter->mapFromSource(m_model->FindPath("/top"));

        QCOMPARE(m_filter->NodeAt(index), m_model->NodeAt(m_model->FindPath("/top")));
        QVERIFY(!m_filter->NodeAt(QModelIndex()));
        QCOMPARE(m_filter->GetModel(), m_model.get());
    }

private:
    std::unique_ptr<Model> m_model;
    std::unique_ptr<BatchFilterModel> m_filter;
};

NV_TEST_MAIN(tst_BatchFilterModel)
#include "tst_BatchFilterModel.moc"
