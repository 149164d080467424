// Swapping saved tiles with a layer, which is what undo and redo of a stroke are.

#include <QTest>

#include "ImageTiles.h"
#include "TestMain.h"

namespace
{
QImage Layer()
{
    QImage layer(20, 10, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < layer.height(); ++y)
    {
        for (int x = 0; x < layer.width(); ++x)
            layer.setPixel(x, y, qRgb(x, y, 7));
    }
    return layer;
}

SavedTile Tile(const QRect& rect, QRgb color)
{
    QImage image(rect.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    return {rect, image};
}
} // namespace

class tst_ImageTiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anExchangeSwapsPixels();
    void twoExchangesGiveBothBack();
    void aCopyOfTheLayerKeepsItsPixels();
    void aTileThatDoesNotFitIsLeftAlone_data();
    void aTileThatDoesNotFitIsLeftAlone();
    void aLayerOfAnotherFormatIsLeftAlone();
    void noTilesChangeNothing();
};

void tst_ImageTiles::anExchangeSwapsPixels()
{
    QImage layer = Layer();
    QVector<SavedTile> tiles = {Tile(QRect(18, 8, 2, 2), qRgba(1, 2, 3, 4)),
                                Tile(QRect(0, 0, 1, 1), qRgb(9, 9, 9))};

    ExchangeTiles(layer, tiles);

    QCOMPARE(layer.pixel(17, 9), Layer().pixel(17, 9));
    QCOMPARE(layer.scanLine(8)[18 * 4 + 3], uchar(4));
    QCOMPARE(layer.pixel(0, 0), qRgb(9, 9, 9));
    QCOMPARE(layer.pixel(1, 0), Layer().pixel(1, 0));
    QCOMPARE(tiles[0].before, Layer().copy(18, 8, 2, 2));
    QCOMPARE(tiles[1].before, Layer().copy(0, 0, 1, 1));
}

void tst_ImageTiles::twoExchangesGiveBothBack()
{
    QImage layer = Layer();
    QVector<SavedTile> tiles = {Tile(QRect(3, 2, 9, 5), qRgba(50, 40, 30, 60)), Tile(QRect(0, 9, 20, 1), 0)};
    const QVector<SavedTile> before = tiles;
    for (SavedTile& tile : tiles)
        tile.before.detach();

    ExchangeTiles(layer, tiles);
    QVERIFY(layer != Layer());
    ExchangeTiles(layer, tiles);

    QCOMPARE(layer, Layer());
    for (int i = 0; i < tiles.size(); ++i)
        QCOMPARE(tiles[i].before, before[i].before);
}

void tst_ImageTiles::aCopyOfTheLayerKeepsItsPixels()
{
    QImage layer = Layer();
    const QImage copy = layer;
    QVector<SavedTile> tiles = {Tile(QRect(0, 0, 20, 10), 0)};
    const QImage tileCopy = tiles[0].before;

    ExchangeTiles(layer, tiles);

    QCOMPARE(copy, Layer());
    QCOMPARE(qAlpha(tileCopy.pixel(0, 0)), 0);
}

void tst_ImageTiles::aTileThatDoesNotFitIsLeftAlone_data()
{
    QTest::addColumn<QRect>("rect");
    QTest::addColumn<QImage>("image");
    const auto image = [](int width, int height)
    { return Tile(QRect(0, 0, width, height), qRgb(1, 1, 1)).before; };
    QTest::newRow("over the right edge") << QRect(15, 0, 6, 2) << image(6, 2);
    QTest::newRow("over the lower edge") << QRect(0, 9, 2, 2) << image(2, 2);
    QTest::newRow("before the origin") << QRect(-1, 0, 2, 2) << image(2, 2);
    QTest::newRow("image smaller than its rect") << QRect(0, 0, 4, 4) << image(3, 4);
    QTest::newRow("image of another format")
        << QRect(0, 0, 4, 4) << image(4, 4).convertToFormat(QImage::Format_RGB32);
    QTest::newRow("no image") << QRect(0, 0, 4, 4) << QImage();
    QTest::newRow("no rect") << QRect() << image(4, 4);
}

void tst_ImageTiles::aTileThatDoesNotFitIsLeftAlone()
{
    QFETCH(QRect, rect);
    QFETCH(QImage, image);
    QImage layer = Layer();
    QVector<SavedTile> tiles = {{rect, image}};

    ExchangeTiles(layer, tiles);

    QCOMPARE(layer, Layer());
    QCOMPARE(tiles[0].before, image);
}

void tst_ImageTiles::aLayerOfAnotherFormatIsLeftAlone()
{
    QImage layer = Layer().convertToFormat(QImage::Format_RGB888);
    const QImage before = layer.copy();
    QVector<SavedTile> tiles = {Tile(QRect(0, 0, 2, 2), 0)};

    ExchangeTiles(layer, tiles);

    QCOMPARE(layer, before);
}

void tst_ImageTiles::noTilesChangeNothing()
{
    QImage layer = Layer();
    QVector<SavedTile> tiles;
    ExchangeTiles(layer, tiles);
    QCOMPARE(layer, Layer());
}

NV_TEST_MAIN(tst_ImageTiles)
#include "tst_ImageTiles.moc"
