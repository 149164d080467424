// Clearing a layer, or what is selected of it.

#include "ClearPixels.h"

#include <QTest>

#include "SelectionMask.h"
#include "TestMain.h"

namespace
{

QImage Picture(const QSize& size = QSize(400, 300))
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(QColor(200, 100, 50));
    return image;
}

} // namespace

class tst_ClearPixels : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void withoutASelectionAllGoes()
    {
        QImage layer = Picture();
        QVector<SavedTile> tiles = ClearPixels(layer, QImage());
        QImage empty = Picture();
        empty.fill(Qt::transparent);
        QCOMPARE(layer, empty);
        ExchangeTiles(layer, tiles);
        QCOMPARE(layer, Picture());
    }

    void onlyWhatIsSelectedGoes()
    {
        QImage layer = Picture();
        const QVector<SavedTile> tiles =
            ClearPixels(layer, RectangleMask(layer.size(), QRectF(10, 20, 30, 40)));
        for (int y = 0; y < layer.height(); ++y)
        {
            for (int x = 0; x < layer.width(); ++x)
                QCOMPARE(layer.pixel(x, y) == 0, QRect(10, 20, 30, 40).contains(x, y));
        }
        // The rest of a large picture is not kept.
        QVERIFY(tiles.size() <= 2);
    }

    void whatIsSelectedInPartFades()
    {
        QImage layer = Picture();
        QImage half(layer.size(), QImage::Format_Grayscale8);
        half.fill(102);
        QVector<SavedTile> tiles = ClearPixels(layer, half);
        QCOMPARE(reinterpret_cast<const QRgb*>(layer.constScanLine(9))[9], qRgba(120, 60, 30, 153));
        ExchangeTiles(layer, tiles);
        QCOMPARE(layer, Picture());
    }

    void whatIsTransparentAlreadyIsNoChange()
    {
        QImage layer = Picture();
        layer.fill(Qt::transparent);
        QVERIFY(ClearPixels(layer, QImage()).isEmpty());
        QVERIFY(ClearPixels(layer, FullMask(layer.size())).isEmpty());
    }

    void whatDoesNotFitIsLeftAlone()
    {
        QImage layer = Picture();
        QVERIFY(ClearPixels(layer, FullMask(QSize(3, 3))).isEmpty());
        QVERIFY(ClearPixels(layer, Picture()).isEmpty());
        QCOMPARE(layer, Picture());
        QImage other(4, 4, QImage::Format_RGB32);
        other.fill(Qt::red);
        QVERIFY(ClearPixels(other, QImage()).isEmpty());
        QCOMPARE(other.pixelColor(1, 1), QColor(Qt::red));
    }
};

NV_TEST_MAIN(tst_ClearPixels)

#include "tst_ClearPixels.moc"
