// The frame of a crop as it is drawn over the picture.

#include "CropFrameItem.h"

#include <QGraphicsScene>
#include <QPainter>

#include "ProbeImage.h"
#include "TestMain.h"

namespace
{

// A white picture of 100 by 80 pixels in a grey surround, with the item over it.
QImage Drawn(CropFrameItem* item)
{
    QGraphicsScene scene;
    scene.setSceneRect(-20, -20, 140, 120);
    scene.addItem(item);
    QImage image(140, 120, QImage::Format_RGB32);
    image.fill(Qt::gray);
    QPainter painter(&image);
    painter.fillRect(20, 20, 100, 80, Qt::white);
    scene.render(&painter);
    painter.end();
    scene.removeItem(item);
    return image;
}

} // namespace

class tst_CropFrameItem : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void withoutAFrameNothingIsDrawn()
    {
        CropFrameItem item(QSize(100, 80));

        QVERIFY(item.GetFrame().isNull());
        QCOMPARE(ProbeImage(Drawn(&item)).ColorCount(), 2);
    }

    void whatGoesIsDarkAndTheRestIsAsItWas()
    {
        CropFrameItem item(QSize(100, 80));
        item.SetFrame(QRect(30, 20, 40, 30));

        const ProbeImage probe(Drawn(&item));

        const QColor dark(105, 105, 105);
        for (const QPoint& place :
             {QPoint(5, 5), QPoint(50, 10), QPoint(95, 75), QPoint(28, 30), QPoint(72, 40)})
            QVERIFY(probe.Near(20 + place.x(), 20 + place.y(), dark, 2));
        for (const QPoint& place : {QPoint(33, 23), QPoint(50, 35), QPoint(67, 47)})
            QVERIFY(probe.Near(20 + place.x(), 20 + place.y(), Qt::white, 0));
        // The surround is not the picture's.
        QVERIFY(probe.Near(5, 60, Qt::gray, 0));
    }

    void aFrameThatGoesLeavesNothing()
    {
        CropFrameItem item(QSize(100, 80));
        item.SetFrame(QRect(30, 20, 40, 30));
        item.SetFrame(QRect());

        QCOMPARE(ProbeImage(Drawn(&item)).ColorCount(), 2);
    }

    void theWholePictureAsFrameDarkensNothing()
    {
        CropFrameItem item(QSize(100, 80));
        item.SetFrame(QRect(0, 0, 100, 80));

        QCOMPARE(ProbeImage(Drawn(&item)).CountOf(QColor(105, 105, 105), 3), 0);
    }
};

NV_TEST_MAIN(tst_CropFrameItem)

#include "tst_CropFrameItem.moc"
