// The pixels of the line around a selection: small ones that a person can tell, and random ones against plain
// loops.

#include "OutlinePixels.h"

#include <QTest>

#include <QRandomGenerator>

#include <algorithm>
#include <cmath>

#include "TestMain.h"

namespace
{

QImage Random(const QSize& size, quint32 seed)
{
    QRandomGenerator random(seed);
    QImage mask(size, QImage::Format_Grayscale8);
    for (int y = 0; y < size.height(); ++y)
    {
        for (int x = 0; x < size.width(); ++x)
            mask.scanLine(y)[x] = uchar(random.bounded(256));
    }
    return mask;
}

// '#' is of the line.
QStringList LineText(const QVector<QPoint>& pixels, const QRect& area)
{
    QStringList rows;
    for (int y = 0; y < area.height(); ++y)
        rows += QString(area.width(), '.');
    for (const QPoint& pixel : pixels)
    {
        const QPoint place = pixel - area.topLeft();
        rows[place.y()][place.x()] = '#';
    }
    return rows;
}

// The line at scales from 1 on, by what each pixel of the device shows.
QStringList LinePlainly(const QImage& mask, const MaskPlace& place, const QRect& area)
{
    const auto isIn = [&](int x, int y)
    {
        const int column = int(std::floor((x + 0.5 - place.origin.x()) / place.scale));
        const int row = int(std::floor((y + 0.5 - place.origin.y()) / place.scale));
        return mask.rect().contains(column, row) && mask.constScanLine(row)[column] >= 128;
    };
    QVector<QPoint> pixels;
    for (int y = area.top(); y <= area.bottom(); ++y)
    {
        for (int x = area.left(); x <= area.right(); ++x)
        {
            bool isEdge = false;
            for (int i = 1; i <= place.lineWidth; ++i)
                isEdge = isEdge || !isIn(x - i, y) || !isIn(x + i, y) || !isIn(x, y - i) || !isIn(x, y + i);
            if (isIn(x, y) && isEdge)
                pixels += QPoint(x, y);
        }
    }
    return LineText(pixels, area);
}

MaskPlace Place(double scale, const QPointF& origin = QPointF(), int lineWidth = 1)
{
    MaskPlace place;
    place.scale = scale;
    place.origin = origin;
    place.lineWidth = lineWidth;
    return place;
}

} // namespace

class tst_OutlinePixels : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void masksAreHalvedDownToOnePixel()
    {
        const QVector<QImage> masks = HalvedMasks(RectangleMask(QSize(9, 5), QRectF(2, 2, 1, 1)));
        QVector<QSize> sizes;
        for (const QImage& mask : masks)
            sizes += mask.size();
        QCOMPARE(sizes, QVector<QSize>({{9, 5}, {5, 3}, {3, 2}, {2, 1}, {1, 1}}));
        // The one pixel is in all of them.
        for (int i = 1; i < masks.size(); ++i)
            QCOMPARE(MaskBounds(masks.at(i)), QRect(2 >> i, 2 >> i, 1, 1));
    }

    void aPixelOfASmallerMaskStandsForAnyThatIsSelectedByHalf()
    {
        const QImage mask = Random(QSize(133, 71), 3);
        const QVector<QImage> masks = HalvedMasks(mask);
        const QImage& half = masks.at(1);
        QCOMPARE(half.size(), QSize(67, 36));
        for (int y = 0; y < half.height(); ++y)
        {
            for (int x = 0; x < half.width(); ++x)
            {
                int highest = 0;
                for (const QPoint& way : {QPoint(0, 0), QPoint(1, 0), QPoint(0, 1), QPoint(1, 1)})
                {
                    const QPoint from = QPoint(2 * x, 2 * y) + way;
                    if (mask.rect().contains(from))
                        highest = std::max(highest, int(mask.constScanLine(from.y())[from.x()]));
                }
                QCOMPARE(half.constScanLine(y)[x] == 255, highest >= 128);
            }
        }
    }

    void nothingHasNoMasks()
    {
        QVERIFY(HalvedMasks(QImage()).isEmpty());
        QVERIFY(HalvedMasks(QImage(3, 3, QImage::Format_RGB32)).isEmpty());
        QVERIFY(HalvedMasks(FullMask(QSize(9, 9)), [] { return true; }).isEmpty());
    }

    void theLineLiesWithinTheSelection()
    {
        const QVector<QImage> masks = HalvedMasks(RectangleMask(QSize(8, 6), QRectF(1, 1, 5, 4)));
        QCOMPARE(LineText(OutlinePixels(masks, Place(1), QRect(0, 0, 8, 6)), QRect(0, 0, 8, 6)),
                 QStringList({"........", ".#####..", ".#...#..", ".#...#..", ".#####..", "........"}));
    }

    void theEdgeOfThePictureIsAnEdge()
    {
        const QVector<QImage> masks = HalvedMasks(FullMask(QSize(4, 3)));
        QCOMPARE(
            LineText(OutlinePixels(masks, Place(1, QPointF(1, 1)), QRect(0, 0, 6, 5)), QRect(0, 0, 6, 5)),
            QStringList({"......", ".####.", ".#..#.", ".####.", "......"}));
    }

    void theEdgeOfTheAreaIsNone()
    {
        const QVector<QImage> masks = HalvedMasks(FullMask(QSize(40, 30)));
        QVERIFY(OutlinePixels(masks, Place(1), QRect(5, 5, 20, 20)).isEmpty());
    }

    void atEveryScaleTheLineIsAsSharpAsTheScreen_data()
    {
        QTest::addColumn<double>("scale");
        QTest::addColumn<QPointF>("origin");
        QTest::addColumn<int>("lineWidth");
        QTest::newRow("original") << 1.0 << QPointF(0, 0) << 1;
        QTest::newRow("moved") << 1.0 << QPointF(-13, 7) << 1;
        QTest::newRow("eight-fold") << 8.0 << QPointF(-100, -60) << 1;
        QTest::newRow("between") << 3.3 << QPointF(0.4, -7.7) << 1;
        QTest::newRow("double resolution") << 2.0 << QPointF(3, 3) << 2;
        QTest::newRow("wide") << 5.0 << QPointF(-40, 0) << 3;
    }
    void atEveryScaleTheLineIsAsSharpAsTheScreen()
    {
        QFETCH(double, scale);
        QFETCH(QPointF, origin);
        QFETCH(int, lineWidth);
        const QImage mask = Random(QSize(61, 47), 4);
        const MaskPlace place = Place(scale, origin, lineWidth);
        const QRect area(-5, -3, 140, 120);

        const QVector<QPoint> pixels = OutlinePixels(HalvedMasks(mask), place, area);

        QCOMPARE(LineText(pixels, area), LinePlainly(mask, place, area));
        for (const QPoint& pixel : pixels)
            QVERIFY(area.contains(pixel));
    }

    void aSpeckIsSeenAtEveryScale_data()
    {
        QTest::addColumn<double>("scale");
        for (double scale : {1.0, 0.7, 0.5, 0.31, 0.125, 0.06, 1.0 / 64})
            QTest::addRow("%f", scale) << scale;
    }
    void aSpeckIsSeenAtEveryScale()
    {
        QFETCH(double, scale);
        for (int at = 100; at < 140; ++at)
        {
            const QVector<QImage> masks = HalvedMasks(RectangleMask(QSize(300, 300), QRectF(at, at, 1, 1)));
            const QVector<QPoint> pixels = OutlinePixels(masks, Place(scale), QRect(0, 0, 300, 300));
            QVERIFY(!pixels.isEmpty());
            // Within a pixel or two of its place.
            for (const QPoint& pixel : pixels)
                QVERIFY(std::abs(pixel.x() - at * scale) <= 2 && std::abs(pixel.y() - at * scale) <= 2);
        }
    }

    void badPlacesHaveNoLine()
    {
        const QVector<QImage> masks = HalvedMasks(FullMask(QSize(9, 9)));
        QVERIFY(OutlinePixels({}, Place(1), QRect(0, 0, 9, 9)).isEmpty());
        QVERIFY(OutlinePixels(masks, Place(1), QRect()).isEmpty());
        QVERIFY(OutlinePixels(masks, Place(0), QRect(0, 0, 9, 9)).isEmpty());
        QVERIFY(OutlinePixels(masks, Place(1, QPointF(), 0), QRect(0, 0, 9, 9)).isEmpty());
        QVERIFY(OutlinePixels(masks, Place(1, QPointF(1e18, 0)), QRect(0, 0, 9, 9)).isEmpty());
    }
};

NV_TEST_MAIN(tst_OutlinePixels)

#include "tst_OutlinePixels.moc"
