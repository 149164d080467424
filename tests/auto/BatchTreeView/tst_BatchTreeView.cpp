// Which files are to be seen, their small pictures, and the keys of the tree.

#include "BatchTreeView.h"

#include <QDir>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <memory>

#include "BatchFilterModel.h"
#include "TestMain.h"
#include "Thumbnails.h"

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

} // namespace

class tst_BatchTreeView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_model = std::make_unique<Model>();
        Node* top = MakeNode(m_folder->path(), false);
        QImage image(60, 60, QImage::Format_RGB32);
        image.fill(Qt::red);
        for (int i = 0; i < 100; ++i)
        {
            image.save(path(i));
            Node::AddChild(top, MakeNode(path(i), true));
        }
        m_model->InsertBranch(top, QModelIndex());
        m_filter = std::make_unique<BatchFilterModel>(m_model.get());
        m_view = std::make_unique<BatchTreeView>(m_filter.get());
        m_view->resize(300, 300);
        m_view->show();
        m_view->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_view.get()));
    }
    void cleanup()
    {
        m_view.reset();
        m_filter.reset();
    }

    void aClosedFolderShowsNoFiles() { QVERIFY(m_view->GetVisibleFiles().isEmpty()); }

    void onlyVisibleFilesGetPictures()
    {
        m_view->expandAll();

        QTRY_VERIFY(!m_view->GetThumbnails()->Get(path(0)).isNull());
        const QStringList visible = m_view->GetVisibleFiles();
        QVERIFY(visible.size() >= 5 && visible.size() <= 10);
        QCOMPARE(visible.first(), path(0));
        for (const QString& file : visible)
            QTRY_VERIFY(!m_view->GetThumbnails()->Get(file).isNull());
        QVERIFY(m_view->GetThumbnails()->Get(path(50)).isNull());
    }

    void scrollingBringsOtherPictures()
    {
        m_view->expandAll();
        QTRY_VERIFY(!m_view->GetThumbnails()->Get(path(0)).isNull());

        m_view->verticalScrollBar()->setValue(m_view->verticalScrollBar()->maximum());

        QTRY_VERIFY(!m_view->GetThumbnails()->Get(path(99)).isNull());
        QVERIFY(m_view->GetThumbnails()->Get(path(50)).isNull());
    }

    void aHiddenTreeWantsNoPictures()
    {
        m_view->expandAll();
        QTRY_VERIFY(m_view->GetThumbnails()->GetPending() > 0);

        m_view->hide();

        QVERIFY(m_view->GetThumbnails()->GetPending() <= 2);
    }

    void aPictureIsDrawnInItsRow()
    {
        m_view->expandAll();
        QTRY_VERIFY(!m_view->GetThumbnails()->Get(path(0)).isNull());

        const QRect row = m_view->visualRect(m_filter->index(0, 0, m_filter->index(0, 0)));
        const QImage image = m_view->viewport()->grab(row).toImage();

        bool isRed = false;
        for (int x = 0; x < image.width(); ++x)
            isRed |= image.pixelColor(x, image.height() / 2) == QColor(Qt::red);
        QVERIFY(isRed);
    }

    void aFilterOpensWhatItFinds()
    {
        QVERIFY(!m_view->isExpanded(m_filter->index(0, 0)));

        m_filter->SetText("77");

        QVERIFY(m_view->isExpanded(m_filter->index(0, 0)));
        QCOMPARE(m_view->GetVisibleFiles(), QStringList(path(77)));
    }

    void deleteAsksForTheRowsToGo()
    {
        QSignalSpy asked(m_view.get(), &BatchTreeView::RemoveAsked);
        m_view->setFocus();

        QTest::keyClick(m_view.get(), Qt::Key_Delete);

        QCOMPARE(asked.size(), 1);
    }

    void theArrowsOpenAndClose()
    {
        m_view->setFocus();
        m_view->setCurrentIndex(m_filter->index(0, 0));

        QTest::keyClick(m_view.get(), Qt::Key_Right);
        QVERIFY(m_view->isExpanded(m_filter->index(0, 0)));
        QTest::keyClick(m_view.get(), Qt::Key_Left);
        QVERIFY(!m_view->isExpanded(m_filter->index(0, 0)));
    }

    void theArrowOfASelectedRowStandsOut()
    {
        QPalette palette = m_view->palette();
        palette.setColor(QPalette::Highlight, Qt::black);
        palette.setColor(QPalette::HighlightedText, Qt::white);
        m_view->setPalette(palette);
        m_view->selectAll();
        const QRect row = m_view->visualRect(m_filter->index(0, 0));

        const QImage image =
            m_view->viewport()->grab(QRect(0, row.top(), row.left(), row.height())).toImage();

        int lightest = 0;
        for (int y = 0; y < image.height(); ++y)
        {
            for (int x = 0; x < image.width(); ++x)
                lightest = qMax(lightest, qGray(image.pixel(x, y)));
        }
        QVERIFY2(lightest > 128, qPrintable(QString::number(lightest)));
    }

private:
    QString path(int number) const { return m_folder->filePath(QString("%1.png").arg(number)); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Model> m_model;
    std::unique_ptr<BatchFilterModel> m_filter;
    std::unique_ptr<BatchTreeView> m_view;
};

NV_TEST_MAIN(tst_BatchTreeView)
#include "tst_BatchTreeView.moc"
