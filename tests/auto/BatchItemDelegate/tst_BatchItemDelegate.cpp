// How a row is drawn: a long name makes room for the number at the right, and stays one line.

#include "BatchItemDelegate.h"

#include <QPainter>
#include <QStandardItemModel>
#include <QTreeView>

#include "KXBatchInputModel.h"
#include "TestMain.h"
#include "Thumbnails.h"

namespace
{

const QSize Size(200, 46);

bool IsDrawn(const QImage& image, const QRect& place)
{
    for (int y = place.top(); y <= place.bottom(); ++y)
    {
        for (int x = place.left(); x <= place.right(); ++x)
        {
            if (qGray(image.pixel(x, y)) < 128)
                return true;
        }
    }
    return false;
}

} // namespace

class tst_BatchItemDelegate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFolderShowsItsNumber()
    {
        QVERIFY(IsDrawn(draw("a", 0, 7), QRect(180, 0, 20, 46)));
        QVERIFY(!IsDrawn(draw("a", 1, 1), QRect(120, 0, 80, 46)));
    }

    void aLongNameLeavesRoomForTheNumber()
    {
        const QImage with = draw(QString(200, 'I'), 0, 7);
        const QImage without = draw(QString(200, 'I'), 1, 7);

        const int start = Size.width() - 4 - fontWidth("7");
        QVERIFY(!IsDrawn(with, QRect(start - 7, 0, 6, Size.height())));
        QVERIFY(IsDrawn(without, QRect(start - 7, 0, 20, Size.height())));
    }

    void aNameWithANewLineIsOneLine()
    {
        QCOMPARE(hint("a\nb").height(), hint("ab").height());
        QVERIFY(IsDrawn(draw("a\nb", 1, 1), QRect(46, 10, 80, 26)));
    }

    void aRowIsHigherThanItsPicture() { QVERIFY(hint("a").height() >= 46); }

private:
    int fontWidth(const QString& text) const { return m_view.fontMetrics().horizontalAdvance(text); }

    QModelIndex index(const QString& name, int isFile, int count)
    {
        auto* item = new QStandardItem(name);
        item->setData(isFile, KXBatchInputModel::NodeIsFileRole);
        item->setData(count, KXBatchInputModel::NodeFileCountRole);
        item->setData("/" + name, KXBatchInputModel::NodePathRole);
        m_model.clear();
        m_model.appendRow(item);
        return m_model.index(0, 0);
    }
    QStyleOptionViewItem option() const
    {
        QStyleOptionViewItem it;
        it.rect = QRect(QPoint(), Size);
        it.decorationSize = QSize(40, 40);
        it.state = QStyle::State_Enabled | QStyle::State_Active;
        it.font = m_view.font();
        it.fontMetrics = m_view.fontMetrics();
        it.palette.setColor(QPalette::Text, Qt::black);
        it.displayAlignment = Qt::AlignLeft | Qt::AlignVCenter;
        it.textElideMode = Qt::ElideMiddle;
        it.showDecorationSelected = true;
        it.widget = &m_view;
        return it;
    }
    QImage draw(const QString& name, int isFile, int count)
    {
        QImage image(Size, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        m_delegate.paint(&painter, option(), index(name, isFile, count));
        return image;
    }
    QSize hint(const QString& name) { return m_delegate.sizeHint(option(), index(name, 1, 1)); }

    QTreeView m_view;
    QStandardItemModel m_model;
    Thumbnails m_thumbnails{40};
    BatchItemDelegate m_delegate{&m_thumbnails};
};

NV_TEST_MAIN(tst_BatchItemDelegate)
#include "tst_BatchItemDelegate.moc"
