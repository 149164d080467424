// Pictures under affine transforms: exact where no pixel needs to change, close to a plain calculation
// elsewhere, and given up when asked to.

#include "AffineResample.h"

#include <QtTest>

#include <atomic>
#include <cmath>

#include "TestMain.h"

namespace
{

const QRect Wide(-10000, -10000, 20000, 20000);

// No two neighbours are alike; everything is opaque.
QImage Busy(const QSize& size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < size.height(); ++y)
    {
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y, qRgb((x * 37 + y * 11) % 256, (x * 5 + y * 91) % 256, (x * y) % 256));
    }
    return image;
}

// Soft enough for any way of reading between pixels.
QImage Smooth(const QSize& size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < size.height(); ++y)
    {
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y,
                           qRgb(128 + int(90 * std::sin(x * 0.07)), 128 + int(90 * std::cos(y * 0.05)),
                                (x + y) / 4 % 256));
    }
    return image;
}

QRgb At(const PlacedImage& it, int x, int y)
{
    return it.image.pixel(x - it.corner.x(), y - it.corner.y());
}

// The colour between four pixels, whose middles are at halves.
QColor Between(const QImage& image, const QPointF& point)
{
    const double x = point.x() - 0.5;
    const double y = point.y() - 0.5;
    const int left = int(std::floor(x));
    const int top = int(std::floor(y));
    const double right = x - left;
    const double down = y - top;
    double sums[3] = {0, 0, 0};
    for (int i = 0; i < 4; ++i)
    {
        const QRgb color = image.pixel(left + i % 2, top + i / 2);
        const double weight = (i % 2 ? right : 1 - right) * (i / 2 ? down : 1 - down);
        sums[0] += weight * qRed(color);
        sums[1] += weight * qGreen(color);
        sums[2] += weight * qBlue(color);
    }
    return QColor(int(sums[0]), int(sums[1]), int(sums[2]));
}

PlacedImage Run(const PlacedImage& picture, const QTransform& transform, const QRect& bounds = Wide)
{
    return ResampleAffine(picture, transform, bounds, WorkProgress());
}

} // namespace

class tst_AffineResample : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aWholeMoveChangesNoPixel();
    void aWholeMoveIsCutToTheBounds();
    void tellsWholeMoves_data();
    void tellsWholeMoves();
    void quarterTurnsAndMirrorsAreExact_data();
    void quarterTurnsAndMirrorsAreExact();
    void isCloseToThePlainCalculation_data();
    void isCloseToThePlainCalculation();
    void theBoundsCutWhatIsSeen();
    void edgesFadeOutOverAPixel();
    void noColorIsAboveItsOpacity();
    void shrinkingTakesMeans();
    void aThinLineIsNotLostWhenItShrinks();
    void aSelectionIsResampledTheSameWay();
    void whatFlattensGivesNothing_data();
    void whatFlattensGivesNothing();
    void anAlmostFlatBoxIsBearable();
    void isGivenUpWhenAsked();
    void tellsHowFarItHasCome();
    void aPictureWiderThanTheLibraryTakes();
};

void tst_AffineResample::aWholeMoveChangesNoPixel()
{
    const QImage image = Busy(QSize(70, 50));

    const PlacedImage moved = Run({image, QPoint(5, 6)}, QTransform::fromTranslate(-30, 17));

    QCOMPARE(moved.corner, QPoint(-25, 23));
    QCOMPARE(moved.image, image);
    QCOMPARE(moved.image.cacheKey(), image.cacheKey());
}

void tst_AffineResample::aWholeMoveIsCutToTheBounds()
{
    const QImage image = Busy(QSize(70, 50));
    const QRect bounds(0, 0, 100, 60);

    const PlacedImage cut = Run({image, QPoint(0, 0)}, QTransform::fromTranslate(-20, 40), bounds);

    QCOMPARE(cut.GetRect(), QRect(0, 40, 50, 20));
    QCOMPARE(cut.image, image.copy(20, 0, 50, 20));
    QVERIFY(Run({image, QPoint(0, 0)}, QTransform::fromTranslate(-70, 0), bounds).image.isNull());
}

void tst_AffineResample::tellsWholeMoves_data()
{
    QTest::addColumn<QTransform>("transform");
    QTest::addColumn<bool>("whole");

    QTest::newRow("none") << QTransform() << true;
    QTest::newRow("moves") << QTransform::fromTranslate(3, -8) << true;
    QTest::newRow("half a pixel") << QTransform::fromTranslate(3.5, 0) << false;
    QTest::newRow("scales") << QTransform::fromScale(2, 1) << false;
    QTest::newRow("turns") << QTransform().rotate(90) << false;
    QTest::newRow("far off") << QTransform::fromTranslate(1e12, 0) << false;
}

void tst_AffineResample::tellsWholeMoves()
{
    QFETCH(const QTransform, transform);
    QTEST(IsWholeMove(transform), "whole");
}

void tst_AffineResample::quarterTurnsAndMirrorsAreExact_data()
{
    QTest::addColumn<QTransform>("transform");

    QTest::newRow("quarter turn") << QTransform().rotate(90);
    QTest::newRow("half a turn") << QTransform().rotate(180);
    QTest::newRow("quarter turn back") << QTransform().rotate(-90);
    QTest::newRow("mirror") << QTransform::fromScale(-1, 1);
    QTest::newRow("upside down") << QTransform::fromScale(1, -1);
}

void tst_AffineResample::quarterTurnsAndMirrorsAreExact()
{
    QFETCH(const QTransform, transform);
    const QImage image = Busy(QSize(300, 270));

    const PlacedImage result = Run({image, QPoint(10, 20)}, transform);

    int compared = 0;
    for (int y = 0; y < image.height(); ++y)
    {
        for (int x = 0; x < image.width(); ++x)
        {
            const QPointF middle = transform.map(QPointF(x + 10.5, y + 20.5));
            const QPoint pixel(int(std::floor(middle.x())), int(std::floor(middle.y())));
            QVERIFY(result.GetRect().contains(pixel));
            QCOMPARE(At(result, pixel.x(), pixel.y()), image.pixel(x, y));
            ++compared;
        }
    }
    QCOMPARE(compared, 300 * 270);
}

void tst_AffineResample::isCloseToThePlainCalculation_data()
{
    QTest::addColumn<QTransform>("transform");

    QTest::newRow("half a pixel") << QTransform::fromTranslate(0.5, -0.25);
    QTest::newRow("turned") << QTransform().translate(150, 100).rotate(33).translate(-150, -100);
    QTest::newRow("larger") << QTransform::fromScale(1.7, 2.3);
    QTest::newRow("smaller") << QTransform::fromScale(0.7, 0.6);
    QTest::newRow("skewed") << QTransform(1, 0.3, -0.6, 1, 40, 5);
    QTest::newRow("mirrored and all") << QTransform(-1.2, 0.4, 0.3, 0.9, 200, 33);
}

void tst_AffineResample::isCloseToThePlainCalculation()
{
    QFETCH(const QTransform, transform);
    const QImage image = Smooth(QSize(600, 400));
    const QTransform back = transform.inverted();

    const PlacedImage result = Run({image, QPoint(0, 0)}, transform);

    int compared = 0;
    const QRect area = result.GetRect();
    for (int y = area.top(); y <= area.bottom(); y += 3)
    {
        for (int x = area.left(); x <= area.right(); x += 3)
        {
            const QPointF from = back.map(QPointF(x + 0.5, y + 0.5));
            if (!QRectF(3, 3, 594, 394).contains(from))
                continue;
            const QColor expected = Between(image, from);
            const QColor is = QColor::fromRgba(At(result, x, y));
            QVERIFY(qAbs(is.red() - expected.red()) <= 4);
            QVERIFY(qAbs(is.green() - expected.green()) <= 4);
            QCOMPARE(is.alpha(), 255);
            ++compared;
        }
    }
    QVERIFY(compared > 5000);
}

void tst_AffineResample::theBoundsCutWhatIsSeen()
{
    const QImage image = Smooth(QSize(600, 400));
    const QTransform transform = QTransform().rotate(20);
    const QRect bounds(100, 150, 333, 222);

    const PlacedImage whole = Run({image, QPoint(0, 0)}, transform);
    const PlacedImage cut = Run({image, QPoint(0, 0)}, transform, bounds);

    QVERIFY(bounds.contains(cut.GetRect()));
    // Tiles lie elsewhere, and round elsewhere.
    int farthest = 0;
    for (int y = cut.GetRect().top(); y <= cut.GetRect().bottom(); ++y)
    {
        for (int x = cut.GetRect().left(); x <= cut.GetRect().right(); ++x)
            farthest = qMax(farthest, qAbs(qGreen(At(cut, x, y)) - qGreen(At(whole, x, y))));
    }
    QVERIFY(farthest <= 3);
    QVERIFY(Run({image, QPoint(0, 0)}, transform, QRect(5000, 5000, 10, 10)).image.isNull());
}

void tst_AffineResample::edgesFadeOutOverAPixel()
{
    QImage image(40, 40, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::red);

    const PlacedImage moved = Run({image, QPoint(0, 0)}, QTransform::fromTranslate(0.5, 0));

    QCOMPARE(qAlpha(At(moved, 20, 20)), 255);
    QVERIFY(qAbs(qAlpha(At(moved, 0, 20)) - 128) <= 18);
    QVERIFY(qAbs(qAlpha(At(moved, 40, 20)) - 128) <= 18);
    QCOMPARE(qAlpha(At(moved, -1, 20)), 0);
}

void tst_AffineResample::noColorIsAboveItsOpacity()
{
    QImage image(60, 60, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < 60; ++y)
    {
        for (int x = 0; x < 60; ++x)
            image.setPixel(x, y, (x / 3 + y / 3) % 2 ? qRgba(200, 0, 200, 200) : qRgba(0, 40, 0, 40));
    }

    const PlacedImage result = Run({image, QPoint(0, 0)}, QTransform().rotate(31).scale(1.4, 1.2));

    for (int y = 0; y < result.image.height(); ++y)
    {
        for (int x = 0; x < result.image.width(); ++x)
        {
            const QRgb color = reinterpret_cast<const QRgb*>(result.image.constScanLine(y))[x];
            QVERIFY(qRed(color) <= qAlpha(color) && qGreen(color) <= qAlpha(color) &&
                    qBlue(color) <= qAlpha(color));
        }
    }
}

void tst_AffineResample::shrinkingTakesMeans()
{
    QImage image(800, 600, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < 600; ++y)
    {
        for (int x = 0; x < 800; ++x)
            image.setPixel(x, y, (x + y) % 2 ? qRgb(255, 255, 255) : qRgb(0, 0, 0));
    }

    for (const QTransform& transform : {QTransform::fromScale(0.1, 0.1), QTransform::fromScale(0.07, 1),
                                        QTransform().rotate(30).scale(0.2, 0.2)})
    {
        const PlacedImage result = Run({image, QPoint(0, 0)}, transform);
        const QPoint middle = transform.map(QPoint(400, 300));
        QVERIFY(qAbs(qRed(At(result, middle.x(), middle.y())) - 128) <= 2);
    }
}

void tst_AffineResample::aThinLineIsNotLostWhenItShrinks()
{
    QImage image(1000, 100, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    for (int y = 0; y < 100; ++y)
        image.setPixel(503, y, qRgb(255, 0, 0));

    const PlacedImage result = Run({image, QPoint(0, 0)}, QTransform::fromScale(1 / 33.0, 1));

    int sum = 0;
    for (int x = result.GetRect().left(); x <= result.GetRect().right(); ++x)
        sum += qAlpha(At(result, x, 50));
    QVERIFY(qAbs(sum - 255 / 33.0) <= 4);
    QVERIFY(sum > 0);
}

void tst_AffineResample::aSelectionIsResampledTheSameWay()
{
    QImage mask(50, 50, QImage::Format_Grayscale8);
    mask.fill(255);

    const PlacedImage result = Run({mask, QPoint(10, 10)}, QTransform::fromScale(2, 3));

    QCOMPARE(result.image.format(), QImage::Format_Grayscale8);
    QCOMPARE(qGray(At(result, 70, 100)), 255);
    QCOMPARE(qGray(At(result, 21, 31)), 255);
    QCOMPARE(qGray(At(result, 118, 178)), 255);
    QVERIFY(QRect(18, 28, 104, 154).contains(result.GetRect()));
}

void tst_AffineResample::whatFlattensGivesNothing_data()
{
    QTest::addColumn<QTransform>("transform");

    QTest::newRow("no width") << QTransform::fromScale(0, 1);
    QTest::newRow("a line") << QTransform(1, 1, 1, 1, 0, 0);
    QTest::newRow("no number") << QTransform::fromScale(qQNaN(), 1);
    QTest::newRow("endless") << QTransform::fromScale(qInf(), 1);
    QTest::newRow("perspective") << QTransform(1, 0, 0.1, 0, 1, 0, 0, 0, 1);
}

void tst_AffineResample::whatFlattensGivesNothing()
{
    QFETCH(const QTransform, transform);

    QVERIFY(Run({Busy(QSize(20, 20)), QPoint(0, 0)}, transform).image.isNull());
    QVERIFY(Run({}, QTransform::fromScale(2, 2)).image.isNull());
}

void tst_AffineResample::anAlmostFlatBoxIsBearable()
{
    // As steep as skews go, and as small as scales go.
    const double steep = 5729;
    for (const QTransform& transform :
         {QTransform(1, steep, -steep, 1, 0, 0), QTransform(1e-4, 0, steep * 1e-4, 1e-4, 5, 5),
          QTransform(1, (1 - 1e-3) / steep, steep, 1, 0, 0), QTransform(500, 0, 0, 1e-4, 0, 0)})
    {
        const PlacedImage result =
            Run({Busy(QSize(300, 200)), QPoint(0, 0)}, transform, QRect(0, 0, 500, 400));
        QVERIFY(result.image.isNull() || QRect(0, 0, 500, 400).contains(result.GetRect()));
    }
}

void tst_AffineResample::isGivenUpWhenAsked()
{
    std::atomic<int> calls{0};
    const auto stop = [&calls](int)
    {
        ++calls;
        return false;
    };

    const PlacedImage result =
        ResampleAffine({Smooth(QSize(1500, 1500)), QPoint(0, 0)}, QTransform().rotate(10), Wide, stop);

    QVERIFY(result.image.isNull());
    QVERIFY(calls >= 1 && calls <= 16);
}

void tst_AffineResample::tellsHowFarItHasCome()
{
    std::atomic<int> highest{0};
    std::atomic<int> calls{0};
    const auto note = [&](int percent)
    {
        ++calls;
        int before = highest;
        while (percent > before && !highest.compare_exchange_weak(before, percent))
        {
        }
        return true;
    };

    const PlacedImage result = ResampleAffine({Smooth(QSize(1000, 1000)), QPoint(0, 0)},
                                              QTransform::fromScale(1.1, 1.1), Wide, note);

    QVERIFY(!result.image.isNull());
    QCOMPARE(int(highest), 100);
    QVERIFY(calls >= 16);
}

void tst_AffineResample::aPictureWiderThanTheLibraryTakes()
{
    QImage image(40000, 8, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::green);

    const PlacedImage result = Run({image, QPoint(0, 0)}, QTransform(1, 0.0001, 0, 1.5, 0, 0),
                                   QRect(-50000, -50000, 100000, 100000));

    QVERIFY(result.image.width() >= 40000);
    QCOMPARE(At(result, 39000, 10), qRgb(0, 255, 0));
    QCOMPARE(At(result, 100, 6), qRgb(0, 255, 0));
}

NV_TEST_MAIN(tst_AffineResample)
#include "tst_AffineResample.moc"
