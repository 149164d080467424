// What a stroke paints with instead of a colour: the pictures themselves, and what strokes make of them.

#include <QMutex>
#include <QRandomGenerator>
#include <QTest>
#include <QThreadPool>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>

#include "BrushStroke.h"
#include "PixelBlend.h"
#include "StrokeSource.h"
#include "TestMain.h"

namespace
{
const double INF = std::numeric_limits<double>::infinity();
const double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

class ImageBackdrop : public StrokeBackdrop
{
public:
    explicit ImageBackdrop(const QImage& image) : m_image(image) { }

    QRect Rect() const override { return m_image.rect(); }
    QImage Copy(const QRect& area) const override { return m_image.copy(area); }

private:
    QImage m_image;
};

QImage Whole(const StrokeSource& source, const QImage& layer)
{
    return source(ImageBackdrop(layer), layer.rect());
}

QImage Made(const QSize& size, const std::function<QRgb(int, int)>& premultipliedAt)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < size.height(); ++y)
    {
        QRgb* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < size.width(); ++x)
            row[x] = premultipliedAt(x, y);
    }
    return image;
}

QImage Filled(const QSize& size, QRgb premultiplied)
{
    return Made(size, [=](int, int) { return premultiplied; });
}

// Noise, flat parts and hard edges; each pixel opaque.
QImage Opaque(const QSize& size)
{
    QRandomGenerator random(7);
    return Made(size,
                [&random](int x, int y)
                {
                    const QRgb noise = random.generate();
                    if (y % 90 < 30)
                        return noise | 0xff000000u;
                    return x % 70 < 35 ? qRgb(250, 20, x & 255) : qRgb(0, y & 255, 255);
                });
}

// As above, with every opacity.
QImage Motley(const QSize& size)
{
    const QImage opaque = Opaque(size);
    return Made(size,
                [&opaque](int x, int y)
                {
                    const QRgb pixel = reinterpret_cast<const QRgb*>(opaque.constScanLine(y))[x];
                    return qPremultiply((pixel & 0x00ffffffu) | QRgb((x * 3 + y) & 255) << 24);
                });
}

QRgb At(const QImage& image, int x, int y)
{
    return reinterpret_cast<const QRgb*>(image.constScanLine(y))[x];
}

int LargestDifference(QRgb a, QRgb b)
{
    return std::max({qAbs(qRed(a) - qRed(b)), qAbs(qGreen(a) - qGreen(b)), qAbs(qBlue(a) - qBlue(b)),
                     qAbs(qAlpha(a) - qAlpha(b))});
}

int LargestDifference(const QImage& a, const QImage& b)
{
    int largest = a.size() == b.size() ? 0 : 256;
    for (int y = 0; y < a.height() && largest < 256; ++y)
    {
        for (int x = 0; x < a.width(); ++x)
            largest = std::max(largest, LargestDifference(At(a, x, y), At(b, x, y)));
    }
    return largest;
}

using Values = std::vector<double>;

// One pass of a Gaussian over rows of the image, transposed, so that two passes do both directions.
Values GaussianPass(const Values& values, int width, int height, double sigma)
{
    const int radius = int(std::ceil(5.0 * sigma));
    Values kernel;
    double sum = 0.0;
    for (int i = -radius; i <= radius; ++i)
    {
        kernel.push_back(std::exp(-i * i / (2.0 * sigma * sigma)));
        sum += kernel.back();
    }
    Values result(values.size());
    for (int y = 0; y < height; ++y)
    {
        for (int x = 0; x < width; ++x)
        {
            double value = 0.0;
            for (int i = -radius; i <= radius; ++i)
                value += kernel[size_t(i + radius)] * values[size_t(y * width + qBound(0, x + i, width - 1))];
            result[size_t(x * height + y)] = value / sum;
        }
    }
    return result;
}

// The plain definition, channel by channel, with the picture's edge carried on.
QImage GaussianReference(const QImage& image, double sigma)
{
    QImage result(image.size(), QImage::Format_ARGB32_Premultiplied);
    result.fill(0);
    for (int shift = 0; shift < 32; shift += 8)
    {
        Values values;
        for (int y = 0; y < image.height(); ++y)
        {
            for (int x = 0; x < image.width(); ++x)
                values.push_back((At(image, x, y) >> shift) & 255);
        }
        values = GaussianPass(values, image.width(), image.height(), sigma);
        values = GaussianPass(values, image.height(), image.width(), sigma);
        for (int y = 0; y < image.height(); ++y)
        {
            QRgb* row = reinterpret_cast<QRgb*>(result.scanLine(y));
            for (int x = 0; x < image.width(); ++x)
                row[x] |= QRgb(std::lround(values[size_t(y * image.width() + x)])) << shift;
        }
    }
    return result;
}

StrokeSettings Settings(double size, const StrokeSource& source)
{
    StrokeSettings settings;
    settings.size = size;
    settings.spacing = 10;
    settings.source = source;
    return settings;
}

using Points = QVector<StrokePoint>;

void Paint(QImage& layer, const StrokeSettings& settings, const Points& points)
{
    BrushStroke stroke(settings);
    for (const StrokePoint& point : points)
        stroke.AddPoint(point);
    stroke.Finish(layer);
}

// Covers every pixel of a layer of up to 800 pixels each way.
void PaintAll(QImage& layer, StrokeSettings settings)
{
    settings.size = 2500;
    Paint(layer, settings, {{QPointF(300, 300), 1.0}});
}

Points Curly()
{
    Points points;
    for (int i = 0; i <= 60; ++i)
    {
        const double t = i / 60.0;
        points.append({QPointF(320 + 300 * std::cos(9 * t), 200 + 190 * std::sin(7 * t)),
                       0.1 + 0.9 * std::abs(std::sin(4 * t))});
    }
    return points;
}

void AddSources()
{
    QTest::addColumn<StrokeSource>("source");
    QTest::newRow("clone") << MakeCloneSource(QPoint(-23, 17));
    QTest::newRow("clone from far") << MakeCloneSource(QPoint(310, -200));
    QTest::newRow("small blur") << MakeBlurSource(2.5);
    QTest::newRow("large blur") << MakeBlurSource(30);
    QTest::newRow("dodge") << MakeDodgeSource(ToneRange::Midtones, 60);
}

void AddRanges()
{
    QTest::addColumn<ToneRange>("range");
    QTest::newRow("shadows") << ToneRange::Shadows;
    QTest::newRow("midtones") << ToneRange::Midtones;
    QTest::newRow("highlights") << ToneRange::Highlights;
}

// What becomes of the greys from black to white.
QVector<int> DodgedGreys(ToneRange range, double exposure)
{
    const QImage greys = Made(QSize(256, 1), [](int x, int) { return qRgb(x, x, x); });
    const QImage dodged = Whole(MakeDodgeSource(range, exposure), greys);
    QVector<int> values;
    for (int x = 0; x < 256; ++x)
        values.append(qGreen(At(dodged, x, 0)));
    return values;
}
} // namespace

Q_DECLARE_METATYPE(StrokeSource)
Q_DECLARE_METATYPE(ToneRange)

class tst_StrokeSource : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cloneTakesPixelsFromTheOffset();
    void cloneIsTransparentOutsideThePicture_data();
    void cloneIsTransparentOutsideThePicture();
    void cloneStrokeCopiesExactPixels();
    void cloneOfTheSamePlaceChangesNothing();
    void nothingIsPaintedWhereTheCloneLiesOutside();
    void theSampledImageIsReadInPlaceOfTheLayer();
    void aSampledImageOfAnotherSizeEndsWhereItEnds();

    void blurIsTheGaussian_data();
    void blurIsTheGaussian();
    void blurOfAnAreaIsThatPartOfTheWhole_data();
    void blurOfAnAreaIsThatPartOfTheWhole();
    void blurOfOneColorIsThatColor();
    void blurKeepsTheMean();
    void transparentPixelsDoNotDarkenTheBlur();
    void unusableSigmasAreCut();

    void withoutExposureDodgeChangesNothing_data() { AddRanges(); }
    void withoutExposureDodgeChangesNothing();
    void dodgeNeverDarkens_data() { AddRanges(); }
    void dodgeNeverDarkens();
    void dodgeKeepsTheOrderOfTones_data() { AddRanges(); }
    void dodgeKeepsTheOrderOfTones();
    void dodgeIsSmooth_data() { AddRanges(); }
    void dodgeIsSmooth();
    void dodgeLeavesWhiteAndBlack();
    void dodgeActsMostOnItsRange();
    void dodgeTreatsPaleAndOpaqueColorsAlike();
    void unusableExposuresAreCut();

    void theStrokeReadsTheLayerBeforeIt_data() { AddSources(); }
    void theStrokeReadsTheLayerBeforeIt();
    void theSplitOfTheWorkDoesNotMatter_data() { AddSources(); }
    void theSplitOfTheWorkDoesNotMatter();
    void theNumberOfThreadsDoesNotMatter_data() { AddSources(); }
    void theNumberOfThreadsDoesNotMatter();
    void theSavedTilesBringTheLayerBackAndForth_data() { AddSources(); }
    void theSavedTilesBringTheLayerBackAndForth();
    void noChannelExceedsItsAlpha_data() { AddSources(); }
    void noChannelExceedsItsAlpha();
    void opacityZeroChangesNothing_data() { AddSources(); }
    void opacityZeroChangesNothing();
    void nothingOutsideTheSelectionChanges_data() { AddSources(); }
    void nothingOutsideTheSelectionChanges();
    void theBackdropIsTransparentOutsideTheLayer();
    void eachAreaIsAskedForOnce();
    void tilesOutsideTheSelectionAreNotAskedFor();
    void colorsAndFillModesHaveNoSay();
    void sourcesLieOverTheLayerInTheModeOfTheStroke();
    void replacingSourcesTakeThePlaceOfTheLayerInPart();
    void anUnusableImagePaintsNothing_data();
    void anUnusableImagePaintsNothing();
    void coveredTilesGiveTheirMemoryBack();
};

void tst_StrokeSource::cloneTakesPixelsFromTheOffset()
{
    const QImage layer = Motley(QSize(90, 70));
    const QRect area(20, 10, 50, 40);
    const QImage pixels = MakeCloneSource(QPoint(30, -20))(ImageBackdrop(layer), area);
    QCOMPARE(pixels.size(), area.size());
    for (int y = 0; y < 40; ++y)
    {
        for (int x = 0; x < 50; ++x)
        {
            const QPoint from(x + 50, y - 10);
            QCOMPARE(At(pixels, x, y), layer.rect().contains(from) ? At(layer, from.x(), from.y()) : 0u);
        }
    }
}

void tst_StrokeSource::cloneIsTransparentOutsideThePicture_data()
{
    QTest::addColumn<QPoint>("offset");
    const int most = std::numeric_limits<int>::max();
    const int least = std::numeric_limits<int>::min();
    QTest::newRow("just past the right edge") << QPoint(40, 0);
    QTest::newRow("just past the upper edge") << QPoint(0, -30);
    QTest::newRow("largest") << QPoint(most, most);
    QTest::newRow("smallest") << QPoint(least, least);
}

void tst_StrokeSource::cloneIsTransparentOutsideThePicture()
{
    QFETCH(QPoint, offset);
    const QImage layer = Opaque(QSize(40, 30));
    QCOMPARE(Whole(MakeCloneSource(offset), layer), Filled(layer.size(), 0));
    QCOMPARE(Whole(MakeCloneSource(offset, layer), layer), Filled(layer.size(), 0));
    QImage painted = layer.copy();
    PaintAll(painted, Settings(1, MakeCloneSource(offset)));
    QCOMPARE(painted, layer);
}

void tst_StrokeSource::cloneStrokeCopiesExactPixels()
{
    const QImage before = Opaque(QSize(640, 400));
    QImage layer = before.copy();
    Paint(layer, Settings(40, MakeCloneSource(QPoint(200, -31))),
          {{QPointF(100, 260), 1}, {QPointF(400, 260), 1}});
    for (int x = 100; x < 400; ++x)
    {
        for (int y = 245; y < 275; ++y)
            QCOMPARE(At(layer, x, y), At(before, x + 200, y - 31));
        QCOMPARE(At(layer, x, 230), At(before, x, 230));
        QCOMPARE(At(layer, x, 290), At(before, x, 290));
    }
}

void tst_StrokeSource::cloneOfTheSamePlaceChangesNothing()
{
    const QImage opaque = Opaque(QSize(640, 400));
    const QImage before =
        Made(opaque.size(), [&](int x, int y) { return x % 50 < 10 ? 0u : At(opaque, x, y); });
    for (double hardness : {0.0, 1.0})
    {
        for (double opacity : {30.0, 100.0})
        {
            StrokeSettings settings = Settings(80, MakeCloneSource(QPoint(0, 0)));
            settings.tip.hardness = hardness;
            settings.opacity = opacity;
            QImage layer = before.copy();
            Paint(layer, settings, Curly());
            QVERIFY2(LargestDifference(layer, before) <= (hardness == 1.0 && opacity == 100.0 ? 0 : 1),
                     "only rounding of parts may show");
        }
    }
}

void tst_StrokeSource::nothingIsPaintedWhereTheCloneLiesOutside()
{
    const QImage before = Opaque(QSize(300, 100));
    QImage layer = before.copy();
    PaintAll(layer, Settings(1, MakeCloneSource(QPoint(200, 0))));
    for (int x = 0; x < 300; ++x)
        QCOMPARE(At(layer, x, 50), At(before, x < 100 ? x + 200 : x, 50));
}

void tst_StrokeSource::theSampledImageIsReadInPlaceOfTheLayer()
{
    const QSize size(400, 300);
    const QImage sampled = Opaque(size);
    QImage cloned = Filled(size, 0);
    PaintAll(cloned, Settings(1, MakeCloneSource(QPoint(0, 0), sampled)));
    QCOMPARE(cloned, sampled);

    QImage blurred = Filled(size, 0);
    PaintAll(blurred, Settings(1, MakeBlurSource(6, sampled)));
    QCOMPARE(blurred, Whole(MakeBlurSource(6), sampled));

    const QImage otherFormat = sampled.convertToFormat(QImage::Format_RGB888);
    QCOMPARE(Whole(MakeCloneSource(QPoint(0, 0), otherFormat), cloned), sampled);
}

void tst_StrokeSource::aSampledImageOfAnotherSizeEndsWhereItEnds()
{
    const QSize size(600, 300);
    const QImage small = Filled(QSize(100, 50), qRgb(10, 200, 30));
    const QImage cloned = Whole(MakeCloneSource(QPoint(0, 0), small), Filled(size, 0));
    QCOMPARE(At(cloned, 99, 49), qRgb(10, 200, 30));
    QCOMPARE(At(cloned, 100, 49), 0u);
    QCOMPARE(Whole(MakeBlurSource(3, small), Filled(size, 0)), Filled(size, qRgb(10, 200, 30)));
    const QRect beyond(400, 200, 50, 50);
    QCOMPARE(MakeBlurSource(40, small)(ImageBackdrop(Filled(size, 0)), beyond),
             Filled(beyond.size(), qRgb(10, 200, 30)));
}

void tst_StrokeSource::blurIsTheGaussian_data()
{
    QTest::addColumn<double>("sigma");
    QTest::addColumn<QSize>("size");
    for (double sigma : {0.3, 0.8, 2.0, 4.0, 4.01, 7.0, 8.5, 17.0, 31.9, 32.1, 50.0})
        QTest::addRow("sigma %.2f", sigma) << sigma << QSize(310, 270);
    QTest::newRow("smaller than the sigma") << 20.0 << QSize(9, 7);
    QTest::newRow("one pixel") << 50.0 << QSize(1, 1);
    QTest::newRow("one row") << 5.0 << QSize(300, 1);
}

void tst_StrokeSource::blurIsTheGaussian()
{
    QFETCH(double, sigma);
    QFETCH(QSize, size);
    const QImage before = Motley(size);
    const QImage reference = GaussianReference(before, sigma);
    QVERIFY2(LargestDifference(Whole(MakeBlurSource(sigma), before), reference) <= 1, "as a whole");
    QImage painted = before.copy();
    PaintAll(painted, Settings(1, MakeBlurSource(sigma)));
    QVERIFY2(LargestDifference(painted, reference) <= 1, "in tiles");
}

void tst_StrokeSource::blurOfAnAreaIsThatPartOfTheWhole_data()
{
    QTest::addColumn<double>("sigma");
    for (double sigma : {0.3, 3.0, 6.0, 12.0, 50.0})
        QTest::addRow("sigma %.1f", sigma) << sigma;
}

void tst_StrokeSource::blurOfAnAreaIsThatPartOfTheWhole()
{
    QFETCH(double, sigma);
    const QImage layer = Motley(QSize(310, 270));
    const StrokeSource source = MakeBlurSource(sigma);
    const QImage whole = Whole(source, layer);
    QRandomGenerator random(3);
    for (int i = 0; i < 30; ++i)
    {
        const QPoint corner(random.bounded(300), random.bounded(260));
        const QSize size(1 + random.bounded(310 - corner.x()), 1 + random.bounded(270 - corner.y()));
        const QRect area(corner, size);
        QCOMPARE(source(ImageBackdrop(layer), area), whole.copy(area));
    }
}

void tst_StrokeSource::blurOfOneColorIsThatColor()
{
    for (double sigma : {0.3, 1.0, 5.0, 20.0, 50.0})
    {
        for (QRgb color : {qRgb(255, 255, 255), qRgb(1, 128, 254), qRgba(3, 90, 100, 101), 0u})
        {
            const QImage layer = Filled(QSize(270, 20), color);
            QCOMPARE(Whole(MakeBlurSource(sigma), layer), layer);
            QImage painted = layer.copy();
            PaintAll(painted, Settings(1, MakeBlurSource(sigma)));
            QCOMPARE(painted, layer);
        }
    }
}

void tst_StrokeSource::blurKeepsTheMean()
{
    // A spot so far from the edges that all of its light stays within.
    const QImage layer =
        Made(QSize(401, 401),
             [](int x, int y)
             { return qAbs(x - 200) < 30 && qAbs(y - 200) < 30 ? qRgb(255, 200, 0) : qRgb(0, 0, 0); });
    const auto sumOf = [](const QImage& image)
    {
        double sum = 0.0;
        for (int y = 0; y < image.height(); ++y)
        {
            for (int x = 0; x < image.width(); ++x)
                sum += qRed(At(image, x, y));
        }
        return sum;
    };
    for (double sigma : {0.5, 3.0, 9.0, 30.0})
    {
        const double sum = sumOf(Whole(MakeBlurSource(sigma), layer));
        QVERIFY2(std::abs(sum / sumOf(layer) - 1.0) < 0.01, qPrintable(QString::number(sum / sumOf(layer))));
    }
}

void tst_StrokeSource::transparentPixelsDoNotDarkenTheBlur()
{
    const QImage layer = Made(QSize(200, 40), [](int x, int) { return x < 100 ? qRgb(255, 0, 0) : 0u; });
    const QImage blurred = Whole(MakeBlurSource(8), layer);
    for (int x = 0; x < 200; ++x)
    {
        const QRgb pixel = At(blurred, x, 20);
        QCOMPARE(qRed(pixel), qAlpha(pixel));
        QCOMPARE(qGreen(pixel) + qBlue(pixel), 0);
    }
    QVERIFY(qAbs(qAlpha(At(blurred, 100, 20)) - 124) <= 5);
}

void tst_StrokeSource::unusableSigmasAreCut()
{
    const QImage layer = Motley(QSize(60, 50));
    for (double sigma : {NOT_A_NUMBER, INF, -INF, -1.0, 0.0})
        QCOMPARE(Whole(MakeBlurSource(sigma), layer), Whole(MakeBlurSource(0.3), layer));
    QCOMPARE(Whole(MakeBlurSource(1e9), layer), Whole(MakeBlurSource(50), layer));
}

void tst_StrokeSource::withoutExposureDodgeChangesNothing()
{
    QFETCH(ToneRange, range);
    const QImage before = Motley(QSize(400, 300));
    QCOMPARE(Whole(MakeDodgeSource(range, 0), before), before);
    QImage layer = before.copy();
    Paint(layer, Settings(50, MakeDodgeSource(range, 0)), Curly());
    QCOMPARE(layer, before);
}

void tst_StrokeSource::dodgeNeverDarkens()
{
    QFETCH(ToneRange, range);
    const QImage before = Motley(QSize(400, 300));
    for (double exposure : {5.0, 35.0, 100.0})
    {
        const QImage dodged = Whole(MakeDodgeSource(range, exposure), before);
        QVERIFY(dodged != before);
        for (int y = 0; y < 300; ++y)
        {
            for (int x = 0; x < 400; ++x)
            {
                const QRgb was = At(before, x, y);
                const QRgb is = At(dodged, x, y);
                QCOMPARE(qAlpha(is), qAlpha(was));
                QVERIFY(qRed(is) >= qRed(was) && qGreen(is) >= qGreen(was) && qBlue(is) >= qBlue(was));
                QVERIFY(std::max({qRed(is), qGreen(is), qBlue(is)}) <= qAlpha(is));
            }
        }
    }
}

void tst_StrokeSource::dodgeKeepsTheOrderOfTones()
{
    QFETCH(ToneRange, range);
    // Every channel value of every opacity.
    const QImage all = Made(QSize(256, 256), [](int x, int y) { return qRgba(std::min(x, y), 0, 0, y); });
    QImage last = all;
    for (double exposure : {10.0, 50.0, 100.0})
    {
        const QImage dodged = Whole(MakeDodgeSource(range, exposure), all);
        for (int y = 0; y < 256; ++y)
        {
            for (int x = 0; x < 256; ++x)
            {
                QVERIFY(x == 0 || qRed(At(dodged, x, y)) >= qRed(At(dodged, x - 1, y)));
                QVERIFY2(qRed(At(dodged, x, y)) >= qRed(At(last, x, y)), "more exposure is never darker");
            }
        }
        last = dodged;
    }
}

void tst_StrokeSource::dodgeIsSmooth()
{
    QFETCH(ToneRange, range);
    for (double exposure : {20.0, 100.0})
    {
        const QVector<int> values = DodgedGreys(range, exposure);
        for (int i = 1; i < 255; ++i)
            QVERIFY(qAbs(values[i - 1] - 2 * values[i] + values[i + 1]) <= 2);
    }
}

void tst_StrokeSource::dodgeLeavesWhiteAndBlack()
{
    for (ToneRange range : {ToneRange::Shadows, ToneRange::Midtones, ToneRange::Highlights})
        QCOMPARE(DodgedGreys(range, 100)[255], 255);
    QCOMPARE(DodgedGreys(ToneRange::Midtones, 100)[0], 0);
    QCOMPARE(DodgedGreys(ToneRange::Highlights, 100)[0], 0);
    QVERIFY(DodgedGreys(ToneRange::Shadows, 100)[0] > 60);
}

void tst_StrokeSource::dodgeActsMostOnItsRange()
{
    const auto brightest = [](ToneRange range)
    {
        const QVector<int> values = DodgedGreys(range, 50);
        int at = 0;
        for (int i = 0; i < 256; ++i)
        {
            if (values[i] - i > values[at] - at)
                at = i;
        }
        return at;
    };
    QVERIFY(brightest(ToneRange::Shadows) < 85);
    QVERIFY(brightest(ToneRange::Midtones) >= 85 && brightest(ToneRange::Midtones) < 170);
    QVERIFY(brightest(ToneRange::Highlights) >= 170);
    const QVector<int> shadows = DodgedGreys(ToneRange::Shadows, 50);
    const QVector<int> highlights = DodgedGreys(ToneRange::Highlights, 50);
    QVERIFY(shadows[200] - 200 <= 2);
    QVERIFY(highlights[40] - 40 <= 2);
    QVERIFY(highlights[190] - 190 >= 15);
}

void tst_StrokeSource::dodgeTreatsPaleAndOpaqueColorsAlike()
{
    const QVector<int> greys = DodgedGreys(ToneRange::Midtones, 70);
    const QImage pale = Filled(QSize(1, 1), qRgba(60, 60, 60, 120));
    const QRgb dodged = At(Whole(MakeDodgeSource(ToneRange::Midtones, 70), pale), 0, 0);
    QVERIFY(qAbs(qRed(dodged) - (greys[127] + greys[128]) / 2 * 120 / 255) <= 1);
}

void tst_StrokeSource::unusableExposuresAreCut()
{
    for (double exposure : {NOT_A_NUMBER, INF, -INF, -20.0})
        QCOMPARE(DodgedGreys(ToneRange::Midtones, exposure), DodgedGreys(ToneRange::Midtones, 0));
    QCOMPARE(DodgedGreys(ToneRange::Midtones, 1e9), DodgedGreys(ToneRange::Midtones, 100));
}

void tst_StrokeSource::theStrokeReadsTheLayerBeforeIt()
{
    QFETCH(StrokeSource, source);
    const QImage before = Opaque(QSize(640, 400));
    const QImage picture = Whole(source, before);
    QImage layer = before.copy();
    BrushStroke stroke(Settings(60, source));
    // Slowly to and fro over the seams of the tiles, so that a tile is first reached when what it reads of
    // its neighbour has been painted on.
    for (int i = 0; i < 200; ++i)
    {
        const int along = i % 20 < 10 ? i % 10 : 9 - i % 10;
        stroke.AddPoint({QPointF(200 + 14 * along, 100 + i), 1.0});
        stroke.Advance(layer, 0);
    }
    stroke.Finish(layer);

    const QRect touched = stroke.TouchedRect();
    const QImage coverage = stroke.Coverage();
    int covered = 0;
    for (int y = 0; y < before.height(); ++y)
    {
        for (int x = 0; x < before.width(); ++x)
        {
            const int part =
                touched.contains(x, y) ? coverage.constScanLine(y - touched.top())[x - touched.left()] : 0;
            if (part == 0)
                QCOMPARE(At(layer, x, y), At(before, x, y));
            else if (part == 255 && qAlpha(At(picture, x, y)) == 255)
                QCOMPARE(At(layer, x, y), At(picture, x, y));
            covered += part == 255 ? 1 : 0;
        }
    }
    QVERIFY(covered > 20000);
}

void tst_StrokeSource::theSplitOfTheWorkDoesNotMatter()
{
    QFETCH(StrokeSource, source);
    const QImage before = Motley(QSize(640, 400));
    StrokeSettings settings = Settings(70, source);
    settings.tip.hardness = 0.3;
    settings.dynamics = {true, true, true, true, true, true};
    settings.opacity = 80;
    QImage atOnce = before.copy();
    Paint(atOnce, settings, Curly());
    QVERIFY(atOnce != before);
    for (quint32 seed : {1u, 2u, 3u, 4u})
    {
        QRandomGenerator random(seed);
        QImage layer = before.copy();
        BrushStroke stroke(settings);
        for (const StrokePoint& point : Curly())
        {
            stroke.AddPoint(point);
            for (int i = random.bounded(4); i > 0; --i)
                stroke.Advance(layer, random.bounded(2));
        }
        stroke.Finish(layer);
        QCOMPARE(layer, atOnce);
    }
}

void tst_StrokeSource::theNumberOfThreadsDoesNotMatter()
{
    QFETCH(StrokeSource, source);
    QThreadPool* pool = QThreadPool::globalInstance();
    const int threads = pool->maxThreadCount();
    QVector<QImage> results;
    for (int count : {1, 5})
    {
        pool->setMaxThreadCount(count);
        QImage layer = Motley(QSize(640, 400));
        Paint(layer, Settings(300, source), Curly());
        results.append(layer);
    }
    pool->setMaxThreadCount(threads);
    QCOMPARE(results[0], results[1]);
}

void tst_StrokeSource::theSavedTilesBringTheLayerBackAndForth()
{
    QFETCH(StrokeSource, source);
    const QImage before = Motley(QSize(640, 400));
    QImage layer = before.copy();
    BrushStroke stroke(Settings(60, source));
    for (const StrokePoint& point : Curly())
    {
        stroke.AddPoint(point);
        stroke.Advance(layer, 0);
    }
    stroke.Finish(layer);
    const QImage after = layer.copy();
    QVector<SavedTile> tiles = stroke.TakeSavedTiles();

    ExchangeTiles(layer, tiles);
    QCOMPARE(layer, before);
    ExchangeTiles(layer, tiles);
    QCOMPARE(layer, after);
    QVERIFY(after != before);
}

void tst_StrokeSource::noChannelExceedsItsAlpha()
{
    QFETCH(StrokeSource, source);
    StrokeSettings settings = Settings(90, source);
    settings.tip.hardness = 0.2;
    settings.opacity = 90;
    for (int mode = 0; mode < 13; ++mode)
    {
        settings.blendMode = mode;
        QImage layer = Motley(QSize(640, 400));
        Paint(layer, settings, Curly());
        for (int y = 0; y < 400; ++y)
        {
            for (int x = 0; x < 640; ++x)
            {
                const QRgb pixel = At(layer, x, y);
                QVERIFY(std::max({qRed(pixel), qGreen(pixel), qBlue(pixel)}) <= qAlpha(pixel));
            }
        }
    }
}

void tst_StrokeSource::opacityZeroChangesNothing()
{
    QFETCH(StrokeSource, source);
    QImage layer = Motley(QSize(300, 300));
    StrokeSettings settings = Settings(50, source);
    settings.opacity = 0;
    Paint(layer, settings, Curly());
    QCOMPARE(layer, Motley(QSize(300, 300)));
}

void tst_StrokeSource::nothingOutsideTheSelectionChanges()
{
    QFETCH(StrokeSource, source);
    const QImage before = Opaque(QSize(640, 400));
    const QRect selected(200, 120, 130, 200);
    StrokeSettings settings = Settings(60, source);
    settings.selection = QImage(before.size(), QImage::Format_Grayscale8);
    settings.selection.fill(0);
    for (int y = selected.top(); y <= selected.bottom(); ++y)
        std::fill_n(settings.selection.scanLine(y) + selected.left(), selected.width(), uchar(255));
    QImage layer = before.copy();
    PaintAll(layer, settings);
    const QImage picture = Whole(source, before);
    for (int y = 0; y < 400; ++y)
    {
        for (int x = 0; x < 640; ++x)
        {
            if (!selected.contains(x, y) || qAlpha(At(picture, x, y)) == 0)
                QCOMPARE(At(layer, x, y), At(before, x, y));
            else
                QCOMPARE(At(layer, x, y), At(picture, x, y));
        }
    }
}

void tst_StrokeSource::theBackdropIsTransparentOutsideTheLayer()
{
    const QImage before = Motley(QSize(300, 280));
    const QVector<QRect> areas = {QRect(-20, -30, 400, 350), QRect(250, 250, 20, 20), QRect(290, -5, 30, 20),
                                  QRect(-90, -90, 20, 20), QRect(500, 500, 3, 3)};
    QMutex mutex;
    QVector<QVector<QImage>> copies;
    QVector<QRect> rects;
    const StrokeSource source = [&](const StrokeBackdrop& backdrop, const QRect& area)
    {
        QVector<QImage> copied;
        for (const QRect& wanted : areas)
            copied.append(backdrop.Copy(wanted));
        const QMutexLocker lock(&mutex);
        copies.append(copied);
        rects.append(backdrop.Rect());
        return Filled(area.size(), qRgb(1, 2, 3));
    };
    QImage layer = before.copy();
    PaintAll(layer, Settings(1, source));
    QCOMPARE(layer, Filled(before.size(), qRgb(1, 2, 3)));
    QCOMPARE(copies.size(), 4);
    for (int i = 0; i < copies.size(); ++i)
    {
        QCOMPARE(rects[i], before.rect());
        for (int k = 0; k < areas.size(); ++k)
            QCOMPARE(copies[i][k], before.copy(areas[k]));
    }
}

void tst_StrokeSource::eachAreaIsAskedForOnce()
{
    QMutex mutex;
    QVector<QRect> asked;
    const StrokeSource source = [&](const StrokeBackdrop&, const QRect& area)
    {
        const QMutexLocker lock(&mutex);
        asked.append(area);
        return Filled(area.size(), qRgb(9, 9, 9));
    };
    QImage layer = Motley(QSize(640, 400));
    BrushStroke stroke(Settings(30, source));
    for (const StrokePoint& point : Curly() + Curly())
    {
        stroke.AddPoint(point);
        stroke.Advance(layer, 0);
    }
    stroke.Finish(layer);
    QVERIFY(!asked.isEmpty());
    for (int i = 0; i < asked.size(); ++i)
    {
        QVERIFY(layer.rect().contains(asked[i]));
        for (int k = 0; k < i; ++k)
            QVERIFY(!asked[i].intersects(asked[k]));
    }
    const int first = asked.size();
    QCOMPARE(first, stroke.TakeSavedTiles().size());
}

void tst_StrokeSource::tilesOutsideTheSelectionAreNotAskedFor()
{
    QMutex mutex;
    QVector<QRect> asked;
    StrokeSettings settings = Settings(1,
                                       [&](const StrokeBackdrop&, const QRect& area)
                                       {
                                           const QMutexLocker lock(&mutex);
                                           asked.append(area);
                                           return QImage();
                                       });
    settings.selection = QImage(600, 300, QImage::Format_Grayscale8);
    settings.selection.fill(0);
    settings.selection.scanLine(10)[10] = 255;
    QImage layer = Motley(QSize(600, 300));
    PaintAll(layer, settings);
    QCOMPARE(asked, QVector<QRect>({QRect(0, 0, 256, 256)}));
}

void tst_StrokeSource::colorsAndFillModesHaveNoSay()
{
    StrokeSettings settings = Settings(60, MakeCloneSource(QPoint(40, 40)));
    settings.opacity = 70;
    QImage plain = Opaque(QSize(640, 400));
    Paint(plain, settings, Curly());
    for (int fill = 0; fill < 6; ++fill)
    {
        settings.fillMode = fill;
        settings.foreground = QColor(10, 20, 30, 40);
        settings.background = Qt::green;
        settings.pattern = Filled(QSize(3, 3), qRgb(200, 0, 0));
        settings.gradient = {{0.0, Qt::red}, {1.0, Qt::blue}};
        settings.dynamics.color = true;
        QImage layer = Opaque(QSize(640, 400));
        Paint(layer, settings, Curly());
        QCOMPARE(layer, plain);
    }
}

void tst_StrokeSource::sourcesLieOverTheLayerInTheModeOfTheStroke()
{
    const QImage before = Motley(QSize(300, 100));
    const QImage picture = Whole(MakeCloneSource(QPoint(31, 7)), before);
    for (int mode = 0; mode < 13; ++mode)
    {
        StrokeSettings settings = Settings(1, MakeCloneSource(QPoint(31, 7)));
        settings.blendMode = mode;
        QImage layer = before.copy();
        PaintAll(layer, settings);
        for (int y = 0; y < 100; ++y)
        {
            for (int x = 0; x < 300; ++x)
                QCOMPARE(At(layer, x, y), BlendPixel(mode, At(picture, x, y), At(before, x, y)));
        }
    }
}

void tst_StrokeSource::replacingSourcesTakeThePlaceOfTheLayerInPart()
{
    const QRgb from = qRgba(100, 40, 0, 100);
    const QRgb to = qRgba(0, 60, 200, 220);
    const StrokeSource pixels = [=](const StrokeBackdrop&, const QRect& area)
    { return Filled(area.size(), to); };
    StrokeSettings settings = Settings(1, ReplacingSource{pixels});
    settings.selection = Filled(QSize(300, 2), 0).convertToFormat(QImage::Format_Grayscale8);
    settings.selection.fill(255);
    std::fill_n(settings.selection.scanLine(1), 300, uchar(51));
    for (double opacity : {20.0, 50.0, 100.0})
    {
        settings.opacity = opacity;
        QImage layer = Filled(QSize(300, 2), from);
        PaintAll(layer, settings);
        for (int y = 0; y < 2; ++y)
        {
            const double part = opacity / 100.0 * (y == 0 ? 1.0 : 0.2);
            const auto mixed = [part](int a, int b) { return int(std::lround(a + (b - a) * part)); };
            const QRgb expected = qRgba(mixed(qRed(from), qRed(to)), mixed(qGreen(from), qGreen(to)),
                                        mixed(qBlue(from), qBlue(to)), mixed(qAlpha(from), qAlpha(to)));
            QVERIFY(LargestDifference(At(layer, 280, y), expected) <= 1);
            if (opacity == 100.0 && y == 0)
                QCOMPARE(At(layer, 280, y), to);
        }
    }
    settings.blendMode = 1;
    settings.opacity = 100;
    QImage layer = Filled(QSize(300, 2), from);
    PaintAll(layer, settings);
    QCOMPARE(At(layer, 5, 0), BlendPixel(1, to, from));
}

void tst_StrokeSource::anUnusableImagePaintsNothing_data()
{
    QTest::addColumn<QImage>("image");
    QTest::newRow("none") << QImage();
    QTest::newRow("too small") << Filled(QSize(255, 256), qRgb(1, 2, 3));
    QTest::newRow("too large") << Filled(QSize(256, 257), qRgb(1, 2, 3));
    QImage other(256, 256, QImage::Format_RGB32);
    other.fill(Qt::red);
    QTest::newRow("wrong format") << other;
}

void tst_StrokeSource::anUnusableImagePaintsNothing()
{
    QFETCH(QImage, image);
    const QImage before = Motley(QSize(512, 256));
    const QRgb color = qRgb(3, 2, 1);
    const StrokeSource source = [&](const StrokeBackdrop&, const QRect& area)
    { return area.left() == 0 ? image : Filled(area.size(), color); };
    for (bool replaces : {false, true})
    {
        for (int mode : {0, 1, 10, 12})
        {
            StrokeSettings settings = Settings(1, replaces ? StrokeSource(ReplacingSource{source}) : source);
            settings.blendMode = mode;
            QImage layer = before.copy();
            PaintAll(layer, settings);
            QCOMPARE(layer.copy(0, 0, 256, 256), before.copy(0, 0, 256, 256));
            QVERIFY(layer.copy(256, 0, 256, 256) != before.copy(256, 0, 256, 256));
        }
    }
}

void tst_StrokeSource::coveredTilesGiveTheirMemoryBack()
{
    QImage layer = Opaque(QSize(512, 512));
    StrokeSettings settings = Settings(2000, MakeDodgeSource(ToneRange::Shadows, 50));
    settings.tip.hardness = 0.0;
    BrushStroke soft(settings);
    soft.AddPoint({QPointF(256, 256), 1});
    soft.Advance(layer, 1000);
    QVERIFY(soft.BufferBytes() > 512 * 512 * 4);
    settings.tip.hardness = 1.0;
    BrushStroke hard(settings);
    hard.AddPoint({QPointF(256, 256), 1});
    hard.Advance(layer, 1000);
    QVERIFY2(hard.BufferBytes() < 10000, qPrintable(QString::number(hard.BufferBytes())));
}

NV_TEST_MAIN(tst_StrokeSource)
#include "tst_StrokeSource.moc"
