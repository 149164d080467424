// Healing: what is known of the result without looking, and that it ends when it is told to.

#include <QTest>

#include <algorithm>
#include <atomic>
#include <climits>
#include <cmath>
#include <functional>
#include <thread>

#include "SpotHealing.h"
#include "TestMain.h"

namespace
{
using Drawing = std::function<QRgb(int x, int y)>;

QRgb PixelOf(const QImage& image, int x, int y)
{
    return reinterpret_cast<const QRgb*>(image.constScanLine(y))[x];
}

QImage Picture(const QSize& size, const Drawing& drawing)
{
    QImage picture(size, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < size.height(); ++y)
    {
        QRgb* row = reinterpret_cast<QRgb*>(picture.scanLine(y));
        for (int x = 0; x < size.width(); ++x)
            row[x] = drawing(x, y);
    }
    return picture;
}

QImage Mask(const QSize& size, const std::function<int(int x, int y)>& value)
{
    QImage mask(size, QImage::Format_Grayscale8);
    for (int y = 0; y < size.height(); ++y)
    {
        for (int x = 0; x < size.width(); ++x)
            mask.scanLine(y)[x] = uchar(value(x, y));
    }
    return mask;
}

QImage RectMask(const QSize& size, const QRect& rect)
{
    return Mask(size, [&](int x, int y) { return rect.contains(x, y) ? 255 : 0; });
}

QImage DiscMask(const QSize& size, const QPoint& center, int radius)
{
    return Mask(size,
                [&](int x, int y) { return std::hypot(x - center.x(), y - center.y()) <= radius ? 255 : 0; });
}

// The picture with the marked pixels spoiled, so that nothing of them can come back by chance.
QImage Spoiled(QImage picture, const QImage& mask)
{
    for (int y = 0; y < picture.height(); ++y)
    {
        for (int x = 0; x < picture.width(); ++x)
        {
            if (mask.constScanLine(y)[x] > 0)
                reinterpret_cast<QRgb*>(picture.scanLine(y))[x] = qRgb(255, 0, 255);
        }
    }
    return picture;
}

QImage Healed(const QImage& picture, const QImage& mask)
{
    const std::atomic<bool> cancelled{false};
    return HealSpot(picture, mask, cancelled);
}

int LargestDifference(QRgb a, QRgb b)
{
    return std::max({qAbs(qRed(a) - qRed(b)), qAbs(qGreen(a) - qGreen(b)), qAbs(qBlue(a) - qBlue(b)),
                     qAbs(qAlpha(a) - qAlpha(b))});
}

int LargestDifference(const QImage& a, const QImage& b)
{
    int largest = 0;
    for (int y = 0; y < a.height(); ++y)
    {
        for (int x = 0; x < a.width(); ++x)
            largest = std::max(largest, LargestDifference(PixelOf(a, x, y), PixelOf(b, x, y)));
    }
    return largest;
}

QRgb Sky(int x, int y)
{
    return qRgb(60 + x / 2, 90 + y / 2, 200 - x / 4);
}

// The same for the same place, and like chance otherwise.
quint32 Scatter(int x, int y)
{
    quint32 value = quint32(x) * 0x9e3779b1u + quint32(y) * 0x85ebca77u;
    value = (value ^ (value >> 15)) * 0x2c1b3c6du;
    value = (value ^ (value >> 12)) * 0x297a2d39u;
    return value ^ (value >> 15);
}

Drawing Grainy(const Drawing& drawing, int strength)
{
    return [drawing, strength](int x, int y)
    {
        const int grain = int(Scatter(x, y) % quint32(2 * strength + 1)) - strength;
        const QRgb pixel = drawing(x, y);
        const auto channel = [grain](int value) { return std::clamp(value + grain, 0, 255); };
        return qRgb(channel(qRed(pixel)), channel(qGreen(pixel)), channel(qBlue(pixel)));
    };
}

struct Statistics
{
    double mean = 0.0;
    double deviation = 0.0;
};

// Of green, less what is expected there.
Statistics Measure(const QImage& picture, const QImage& mask, const Drawing& expected)
{
    double sum = 0.0;
    double squares = 0.0;
    int count = 0;
    for (int y = 0; y < picture.height(); ++y)
    {
        for (int x = 0; x < picture.width(); ++x)
        {
            if (mask.constScanLine(y)[x] == 0)
                continue;
            const double value = qGreen(PixelOf(picture, x, y)) - qGreen(expected(x, y));
            sum += value;
            squares += value * value;
            ++count;
        }
    }
    const double mean = sum / count;
    return {mean, std::sqrt(squares / count - mean * mean)};
}
} // namespace

class tst_SpotHealing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theMarginGrowsWithTheSpotWithinLimits();
    void whatIsNotMarkedStaysAsItIs_data();
    void whatIsNotMarkedStaysAsItIs();
    void constantSurroundingsGiveTheConstant_data();
    void constantSurroundingsGiveTheConstant();
    void aScratchOverAGradientComesBack();
    void aSpotOnAGradientComesBack();
    void theGrainOfTheSurroundingsIsKept_data();
    void theGrainOfTheSurroundingsIsKept();
    void aHorizonGoesOnThroughTheSpot();
    void aPatternGoesOnThroughTheSpot();
    void spotsAtTheEdgeAreHealed();
    void severalSpotsAreHealedAtOnce();
    void aSpotWithAlmostNothingAroundFillsSmoothly();
    void theOpacityIsFilledInToo();
    void noColourExceedsItsOpacity();
    void aPartialMaskMixes();
    void theSameInputGivesTheSameResult();
    void anEmptyMaskGivesThePictureBack();
    void aCopyOfThePictureKeepsItsPixels();
    void cancelledBeforeGivesNothing();
    void cancelledOnTheWayGivesNothing();
    void whatDoesNotFitGivesNothing_data();
    void whatDoesNotFitGivesNothing();
};

void tst_SpotHealing::theMarginGrowsWithTheSpotWithinLimits()
{
    QVERIFY(HealingMargin(QSize(1, 1)) >= 16);
    QVERIFY(HealingMargin(QSize(100, 20)) > HealingMargin(QSize(20, 20)));
    QCOMPARE(HealingMargin(QSize(100, 20)), HealingMargin(QSize(20, 100)));
    QVERIFY(HealingMargin(QSize(5000, 5000)) <= 400);
    QVERIFY(HealingMargin(QSize()) > 0);
    QVERIFY(HealingMargin(QSize(INT_MAX, INT_MAX)) <= 400);
}

void tst_SpotHealing::whatIsNotMarkedStaysAsItIs_data()
{
    QTest::addColumn<QImage>("mask");
    const QSize size(240, 200);
    QTest::newRow("a spot") << DiscMask(size, QPoint(100, 90), 20);
    QTest::newRow("a pixel") << RectMask(size, QRect(7, 7, 1, 1));
    QTest::newRow("large, in pieces") << DiscMask(size, QPoint(120, 100), 95);
    QTest::newRow("a line across") << RectMask(size, QRect(0, 50, 240, 3));
    QTest::newRow("every third pixel") << Mask(size, [](int x, int y) { return (x + y) % 3 == 0 ? 255 : 0; });
    QTest::newRow("soft") << Mask(size, [](int x, int y) { return std::max(0, 255 - (x * x + y * y) / 20); });
}

void tst_SpotHealing::whatIsNotMarkedStaysAsItIs()
{
    QFETCH(QImage, mask);
    const QImage picture = Picture(mask.size(), Grainy(Sky, 20));

    const QImage healed = Healed(Spoiled(picture, mask), mask);

    QCOMPARE(healed.size(), picture.size());
    QCOMPARE(healed.format(), picture.format());
    int changed = 0;
    for (int y = 0; y < picture.height(); ++y)
    {
        for (int x = 0; x < picture.width(); ++x)
        {
            if (mask.constScanLine(y)[x] == 0)
                QCOMPARE(PixelOf(healed, x, y), PixelOf(picture, x, y));
            else
                changed += PixelOf(healed, x, y) != qRgb(255, 0, 255) ? 1 : 0;
        }
    }
    QVERIFY(changed > 0);
}

void tst_SpotHealing::constantSurroundingsGiveTheConstant_data()
{
    QTest::addColumn<QRgb>("pixel");
    QTest::addColumn<QImage>("mask");
    const QSize size(260, 220);
    for (QRgb pixel :
         {qRgb(120, 130, 140), qRgb(0, 0, 0), qRgb(255, 255, 255), qRgba(60, 30, 20, 100), QRgb(0)})
    {
        const QByteArray name = QByteArray::number(pixel, 16);
        QTest::addRow("%s, spot", name.constData()) << pixel << DiscMask(size, QPoint(100, 90), 24);
        QTest::addRow("%s, pieces", name.constData()) << pixel << RectMask(size, QRect(20, 20, 180, 90));
        QTest::addRow("%s, nearly all", name.constData()) << pixel << RectMask(size, QRect(1, 0, 259, 220));
    }
}

void tst_SpotHealing::constantSurroundingsGiveTheConstant()
{
    QFETCH(QRgb, pixel);
    QFETCH(QImage, mask);
    const QImage picture = Picture(mask.size(), [pixel](int, int) { return pixel; });

    QCOMPARE(LargestDifference(Healed(Spoiled(picture, mask), mask), picture), 0);
}

void tst_SpotHealing::aScratchOverAGradientComesBack()
{
    const QImage picture = Picture(QSize(300, 200), Sky);
    const QImage mask =
        Mask(picture.size(),
             [](int x, int y) { return qAbs(2 * y - x - 40) <= 5 && x > 20 && x < 270 ? 255 : 0; });

    const int difference = LargestDifference(Healed(Spoiled(picture, mask), mask), picture);

    QVERIFY2(difference <= 3, qPrintable(QString::number(difference)));
}

void tst_SpotHealing::aSpotOnAGradientComesBack()
{
    const QImage picture = Picture(QSize(300, 200), Sky);
    const QImage mask = DiscMask(picture.size(), QPoint(140, 90), 30);

    const int difference = LargestDifference(Healed(Spoiled(picture, mask), mask), picture);

    QVERIFY2(difference <= 3, qPrintable(QString::number(difference)));
}

void tst_SpotHealing::theGrainOfTheSurroundingsIsKept_data()
{
    QTest::addColumn<int>("strength");
    QTest::addColumn<QImage>("mask");
    const QSize size(400, 300);
    for (int strength : {4, 16})
    {
        QTest::addRow("strength %d, spot", strength) << strength << DiscMask(size, QPoint(180, 150), 30);
        QTest::addRow("strength %d, scratch", strength) << strength << RectMask(size, QRect(20, 140, 350, 4));
        QTest::addRow("strength %d, pieces", strength) << strength << DiscMask(size, QPoint(200, 150), 100);
    }
}

void tst_SpotHealing::theGrainOfTheSurroundingsIsKept()
{
    QFETCH(int, strength);
    QFETCH(QImage, mask);
    const Drawing even = [](int x, int y) { return qRgb(120 + x / 20, 110 + y / 20, 100); };
    const QImage picture = Picture(mask.size(), Grainy(even, strength));

    const Statistics there = Measure(picture, mask, even);
    const Statistics healed = Measure(Healed(Spoiled(picture, mask), mask), mask, even);

    QVERIFY2(qAbs(healed.mean - there.mean) < 0.25 * strength, qPrintable(QString::number(healed.mean)));
    QVERIFY2(healed.deviation > 0.75 * there.deviation && healed.deviation < 1.35 * there.deviation,
             qPrintable(QStringLiteral("%1 in place of %2").arg(healed.deviation).arg(there.deviation)));
}

void tst_SpotHealing::aHorizonGoesOnThroughTheSpot()
{
    const Drawing view = [](int, int y) { return y < 100 ? qRgb(150, 180, 230) : qRgb(50, 80, 40); };
    const QImage picture = Picture(QSize(300, 200), view);
    const QImage mask = DiscMask(picture.size(), QPoint(150, 104), 25);

    const QImage healed = Healed(Spoiled(picture, mask), mask);

    QVERIFY(LargestDifference(PixelOf(healed, 150, 97), qRgb(150, 180, 230)) < 8);
    QVERIFY(LargestDifference(PixelOf(healed, 150, 102), qRgb(50, 80, 40)) < 8);
}

void tst_SpotHealing::aPatternGoesOnThroughTheSpot()
{
    const Drawing tiles = [](int x, int y)
    { return (x / 10 + y / 10) % 2 == 0 ? qRgb(200, 190, 180) : qRgb(70, 80, 90); };
    const QImage picture = Picture(QSize(300, 240), tiles);
    const QImage mask = DiscMask(picture.size(), QPoint(150, 120), 22);

    const int difference = LargestDifference(Healed(Spoiled(picture, mask), mask), picture);

    QVERIFY2(difference <= 4, qPrintable(QString::number(difference)));
}

void tst_SpotHealing::spotsAtTheEdgeAreHealed()
{
    const QImage picture = Picture(QSize(200, 150), Sky);
    for (const QPoint& center :
         {QPoint(0, 0), QPoint(199, 149), QPoint(100, 0), QPoint(0, 149), QPoint(199, 70)})
    {
        const QImage mask = DiscMask(picture.size(), center, 15);
        const int difference = LargestDifference(Healed(Spoiled(picture, mask), mask), picture);
        QVERIFY2(difference <= 12, qPrintable(QString::number(difference)));
    }
}

void tst_SpotHealing::severalSpotsAreHealedAtOnce()
{
    const QImage picture = Picture(QSize(300, 200), Sky);
    const QImage mask = Mask(
        picture.size(), [](int x, int y) { return x % 60 < 9 && y % 50 < 9 && x > 9 && y > 9 ? 255 : 0; });

    const int difference = LargestDifference(Healed(Spoiled(picture, mask), mask), picture);

    QVERIFY2(difference <= 6, qPrintable(QString::number(difference)));
}

void tst_SpotHealing::aSpotWithAlmostNothingAroundFillsSmoothly()
{
    const QImage picture =
        Picture(QSize(60, 40), [](int x, int) { return x < 30 ? qRgb(100, 0, 0) : qRgb(0, 0, 100); });
    const QImage mask = RectMask(picture.size(), QRect(1, 0, 58, 40));

    const QImage healed = Healed(Spoiled(picture, mask), mask);

    for (int y = 0; y < 40; ++y)
    {
        for (int x = 0; x < 60; ++x)
            QVERIFY(qRed(PixelOf(healed, x, y)) <= 110 && qBlue(PixelOf(healed, x, y)) <= 110 &&
                    qGreen(PixelOf(healed, x, y)) <= 10 && qAlpha(PixelOf(healed, x, y)) == 255);
    }
    QVERIFY(qRed(PixelOf(healed, 5, 20)) > qRed(PixelOf(healed, 54, 20)));
}

void tst_SpotHealing::theOpacityIsFilledInToo()
{
    const QRgb pixel = qPremultiply(qRgba(200, 100, 40, 90));
    const QImage picture = Picture(QSize(120, 100), [pixel](int x, int) { return x < 60 ? pixel : QRgb(0); });
    const QImage mask = DiscMask(picture.size(), QPoint(30, 50), 12);
    const QImage clear = DiscMask(picture.size(), QPoint(95, 50), 12);

    QVERIFY(LargestDifference(Healed(Spoiled(picture, mask), mask), picture) <= 1);
    QVERIFY(LargestDifference(Healed(Spoiled(picture, clear), clear), picture) <= 1);
}

void tst_SpotHealing::noColourExceedsItsOpacity()
{
    const QImage picture = Picture(QSize(160, 120), [](int x, int y) { return qPremultiply(Scatter(x, y)); });
    const QImage mask = DiscMask(picture.size(), QPoint(80, 60), 20);

    const QImage healed = Healed(picture, mask);

    for (int y = 0; y < healed.height(); ++y)
    {
        for (int x = 0; x < healed.width(); ++x)
        {
            const QRgb pixel = PixelOf(healed, x, y);
            QVERIFY(std::max({qRed(pixel), qGreen(pixel), qBlue(pixel)}) <= qAlpha(pixel));
        }
    }
}

void tst_SpotHealing::aPartialMaskMixes()
{
    QImage picture = Picture(QSize(80, 60), [](int, int) { return qRgb(100, 100, 100); });
    reinterpret_cast<QRgb*>(picture.scanLine(30))[40] = qRgb(200, 0, 100);
    const QImage mask = Mask(picture.size(), [](int x, int y) { return x == 40 && y == 30 ? 51 : 0; });

    QCOMPARE(PixelOf(Healed(picture, mask), 40, 30), qRgb(180, 20, 100));
}

void tst_SpotHealing::theSameInputGivesTheSameResult()
{
    const QImage picture = Picture(QSize(300, 240), Grainy(Sky, 12));
    const QImage mask = DiscMask(picture.size(), QPoint(150, 120), 90);
    QVERIFY(Healed(picture, mask) == Healed(picture, mask));
}

void tst_SpotHealing::anEmptyMaskGivesThePictureBack()
{
    const QImage picture = Picture(QSize(50, 40), Grainy(Sky, 12));
    QCOMPARE(Healed(picture, RectMask(picture.size(), QRect())), picture);
}

void tst_SpotHealing::aCopyOfThePictureKeepsItsPixels()
{
    const QImage picture = Picture(QSize(90, 80), Grainy(Sky, 12));
    const QImage mask = DiscMask(picture.size(), QPoint(45, 40), 10);
    const QImage maskBefore = mask.copy();

    Healed(picture, mask);

    QVERIFY(picture == Picture(QSize(90, 80), Grainy(Sky, 12)));
    QVERIFY(mask == maskBefore);
}

void tst_SpotHealing::cancelledBeforeGivesNothing()
{
    const QImage picture = Picture(QSize(90, 80), Sky);
    const std::atomic<bool> cancelled{true};
    QVERIFY(HealSpot(picture, DiscMask(picture.size(), QPoint(45, 40), 10), cancelled).isNull());
}

void tst_SpotHealing::cancelledOnTheWayGivesNothing()
{
    const QImage picture = Picture(QSize(2600, 2400), Grainy(Sky, 12));
    const QImage mask = DiscMask(picture.size(), QPoint(1300, 1200), 1000);
    std::atomic<bool> cancelled{false};
    std::atomic<bool> begun{false};
    QImage healed = picture;

    std::thread worker(
        [&]
        {
            begun = true;
            healed = HealSpot(picture, mask, cancelled);
        });
    while (!begun)
        std::this_thread::yield();
    cancelled = true;
    worker.join();

    QVERIFY(healed.isNull());
}

void tst_SpotHealing::whatDoesNotFitGivesNothing_data()
{
    QTest::addColumn<QImage>("picture");
    QTest::addColumn<QImage>("mask");
    const QImage picture = Picture(QSize(40, 30), Sky);
    const QImage mask = RectMask(picture.size(), QRect(5, 5, 4, 4));
    QTest::newRow("no picture") << QImage() << mask;
    QTest::newRow("no mask") << picture << QImage();
    QTest::newRow("neither") << QImage() << QImage();
    QTest::newRow("picture of another format") << picture.convertToFormat(QImage::Format_ARGB32) << mask;
    QTest::newRow("mask of another format") << picture << mask.convertToFormat(QImage::Format_RGB32);
    QTest::newRow("mask too small") << picture << mask.copy(0, 0, 39, 30);
    QTest::newRow("mask too large") << picture << mask.copy(0, 0, 40, 31);
    QTest::newRow("everything marked") << picture << RectMask(picture.size(), picture.rect());
    QTest::newRow("everything marked in part") << picture << Mask(picture.size(), [](int, int) { return 1; });
    QTest::newRow("a single pixel, marked")
        << picture.copy(0, 0, 1, 1) << RectMask(QSize(1, 1), QRect(0, 0, 1, 1));
}

void tst_SpotHealing::whatDoesNotFitGivesNothing()
{
    QFETCH(QImage, picture);
    QFETCH(QImage, mask);
    QVERIFY(Healed(picture, mask).isNull());
}

NV_TEST_MAIN(tst_SpotHealing)
#include "tst_SpotHealing.moc"
