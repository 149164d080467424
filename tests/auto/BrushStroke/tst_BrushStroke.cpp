// One stroke on one layer: what it leaves there, whatever way it was worked off.

#include <QTest>
#include <QThreadPool>

#include <algorithm>
#include <cmath>
#include <limits>

#include "BrushStroke.h"
#include "PixelBlend.h"
#include "TestMain.h"

namespace
{
const double INF = std::numeric_limits<double>::infinity();
const double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
const QColor RED(220, 40, 20);

QImage Filled(const QSize& size, QRgb premultiplied)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < size.height(); ++y)
    {
        QRgb* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        std::fill_n(row, size.width(), premultiplied);
    }
    return image;
}

// Every alpha and many colours.
QImage Motley(const QSize& size)
{
    QImage image = Filled(size, 0);
    for (int y = 0; y < size.height(); ++y)
    {
        QRgb* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < size.width(); ++x)
            row[x] = qPremultiply(qRgba((x * 5) & 255, (y * 3) & 255, (x + y) & 255, (x * 3 + y) & 255));
    }
    return image;
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

QImage SmallPattern()
{
    QImage pattern(3, 2, QImage::Format_ARGB32_Premultiplied);
    const QRgb colors[] = {qRgb(255, 255, 255), qRgb(0, 0, 0),     qRgb(0, 128, 0),
                           qRgb(10, 20, 30),    qRgba(0, 0, 0, 0), qRgba(100, 100, 100, 100)};
    for (int i = 0; i < 6; ++i)
        reinterpret_cast<QRgb*>(pattern.scanLine(i / 3))[i % 3] = colors[i];
    return pattern;
}

StrokeSettings Settings(double size, double spacing = 10.0)
{
    StrokeSettings settings;
    settings.size = size;
    settings.spacing = spacing;
    settings.foreground = RED;
    settings.background = QColor(0, 0, 200);
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

void AddFillModes()
{
    QTest::addColumn<StrokeSettings>("settings");
    const char* names[] = {"Color",    "Pattern",          "Pattern+Color",
                           "Gradient", "Pattern+Gradient", "Random Color"};
    for (int fill = 0; fill < 6; ++fill)
    {
        StrokeSettings settings = Settings(60, 12);
        settings.tip.hardness = 0.4;
        settings.fillMode = fill;
        settings.pattern = SmallPattern();
        settings.opacity = 80;
        settings.blendMode = fill * 2;
        QTest::newRow(names[fill]) << settings;
        settings.dynamics = {true, true, true, true, true, true};
        settings.tip.roundness = 0.4;
        settings.smooth = fill % 2 == 1;
        QTest::addRow("%s, all dynamics", names[fill]) << settings;
    }
    StrokeSettings hard = Settings(200, 3);
    QTest::newRow("large and hard") << hard;
    StrokeSettings tiny = Settings(1, 1);
    QTest::newRow("tiny") << tiny;
    StrokeSettings eraser = Settings(60, 12);
    eraser.erase = true;
    eraser.opacity = 70;
    eraser.tip.hardness = 0.4;
    eraser.dynamics = {true, true, true, true, true, true};
    QTest::newRow("eraser, all dynamics") << eraser;
}
} // namespace

Q_DECLARE_METATYPE(StrokeSettings)

class tst_BrushStroke : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aHardStampIsTheExactColorInside();
    void everyModeIsTheBlendOfThatMode_data();
    void everyModeIsTheBlendOfThatMode();
    void aStrokeAtHalfOpacityDoesNotDarkenWhereItCrossesItself();
    void softStampsBuildUpWithoutRings();
    void opacityZeroChangesNothing();
    void nothingOutsideTheSelectionChanges_data() { AddFillModes(); }
    void nothingOutsideTheSelectionChanges();
    void theSelectionWorksInProportion();
    void aSelectionSmallerThanTheLayerEndsThere();
    void theSplitOfTheWorkDoesNotMatter_data() { AddFillModes(); }
    void theSplitOfTheWorkDoesNotMatter();
    void theNumberOfThreadsDoesNotMatter_data() { AddFillModes(); }
    void theNumberOfThreadsDoesNotMatter();
    void noChannelExceedsItsAlpha_data() { AddFillModes(); }
    void noChannelExceedsItsAlpha();
    void theSavedTilesBringTheLayerBackAndForth_data() { AddFillModes(); }
    void theSavedTilesBringTheLayerBackAndForth();
    void theReturnedAreasCoverAllChanges_data() { AddFillModes(); }
    void theReturnedAreasCoverAllChanges();
    void theReturnedAreaIsWhatChangedInTheCall();
    void aPatternIsLaidOutFromTheOrigin();
    void aPatternTakesTheColorByItsBrightness();
    void theGradientRunsForwardAndBackAlongTheStroke();
    void anEmptyGradientGoesFromForegroundToBackground();
    void unusableGradientStopsAreLeftOut();
    void randomColorsComeFromTheSeed();
    void withoutAPatternTheColorIsUsed_data();
    void withoutAPatternTheColorIsUsed();
    void pressureLeadsFromBackgroundToForeground();
    void pressureScalesTheCoverage();
    void pressureScalesTheSize();
    void aShortStrokeOnALargeLayerTakesLittleMemory();
    void coveredTilesGiveTheirMemoryBack();
    void aSmallBudgetStillComesToAnEnd();
    void unusablePointsAndPlacesDoNoHarm();
    void unusableSettingsAreMadeUsable();
    void aLayerOfOnePixelIsPainted();
    void anUnfitLayerIsLeftAlone();
    void afterFinishTheStrokeIsOver();
    void aCopyOfTheLayerKeepsItsPixels();
    void erasingLeavesNothingUnderAHardStamp();
    void erasingTakesAwayByOpacityAndSelection();
    void erasingTwiceAtFullOpacityIsErasingOnce();
    void whatIsPaintedWithHasNoSayInErasing();
    void theCoverageIsWhatBlackOnWhiteShows_data();
    void theCoverageIsWhatBlackOnWhiteShows();
    void opacityHasNoSayInTheCoverage();
    void whatIsNotSelectedIsNotCovered();
    void theCoverageIsKnownWhileTheStrokeIs();
};

void tst_BrushStroke::aHardStampIsTheExactColorInside()
{
    const QImage before = Motley(QSize(300, 300));
    QImage layer = before.copy();
    Paint(layer, Settings(50), {{QPointF(150, 150), 1.0}});
    for (int y = 0; y < 300; ++y)
    {
        for (int x = 0; x < 300; ++x)
        {
            const double distance = std::hypot(x + 0.5 - 150, y + 0.5 - 150);
            if (distance < 24.0)
                QCOMPARE(At(layer, x, y), RED.rgba());
            else if (distance > 26.5)
                QCOMPARE(At(layer, x, y), At(before, x, y));
        }
    }
}

void tst_BrushStroke::everyModeIsTheBlendOfThatMode_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("opacity");
    for (int mode = 0; mode < 13; ++mode)
    {
        for (int opacity : {100, 40})
            QTest::addRow("mode %d at %d %%", mode, opacity) << mode << opacity;
    }
}

void tst_BrushStroke::everyModeIsTheBlendOfThatMode()
{
    QFETCH(int, mode);
    QFETCH(int, opacity);
    const QImage before = Motley(QSize(120, 100));
    QImage layer = before.copy();
    StrokeSettings settings = Settings(300);
    settings.blendMode = mode;
    settings.opacity = opacity;
    settings.foreground = QColor(200, 90, 30, 180);

    Paint(layer, settings, {{QPointF(60, 50), 1.0}, {QPointF(65, 50), 1.0}});

    QColor faded = settings.foreground;
    faded.setAlphaF(faded.alphaF() * opacity / 100.0);
    const QRgb source = qPremultiply(faded.rgba());
    for (int y = 0; y < before.height(); ++y)
    {
        for (int x = 0; x < before.width(); ++x)
            QVERIFY(LargestDifference(At(layer, x, y), BlendPixel(mode, source, At(before, x, y))) <= 2);
    }
}

void tst_BrushStroke::aStrokeAtHalfOpacityDoesNotDarkenWhereItCrossesItself()
{
    StrokeSettings settings = Settings(30);
    settings.opacity = 50;
    settings.foreground = Qt::black;
    QImage layer = Filled(QSize(200, 200), qRgb(255, 255, 255));

    Paint(layer, settings,
          {{QPointF(20, 100), 1}, {QPointF(180, 100), 1}, {QPointF(100, 20), 1}, {QPointF(100, 180), 1}});

    QVERIFY(qAbs(qRed(At(layer, 30, 100)) - 128) <= 1);
    QCOMPARE(At(layer, 100, 100), At(layer, 30, 100));
}

void tst_BrushStroke::softStampsBuildUpWithoutRings()
{
    StrokeSettings settings = Settings(1600, 1);
    settings.tip.hardness = 0.0;
    settings.foreground = Qt::black;
    QImage layer = Filled(QSize(400, 1000), qRgb(255, 255, 255));

    Paint(layer, settings, {{QPointF(-700, 0), 1}, {QPointF(1100, 0), 1}});

    int last = 0;
    for (int y = 0; y < 1000; ++y)
    {
        const int value = qRed(At(layer, 200, y));
        QVERIFY2(value >= last, qPrintable(QStringLiteral("row %1 is darker than the one before").arg(y)));
        QVERIFY2(value - last <= 3,
                 qPrintable(QStringLiteral("a step of %1 at row %2").arg(value - last).arg(y)));
        last = value;
    }
    QCOMPARE(qRed(At(layer, 200, 0)), 0);
    QCOMPARE(last, 255);
}

void tst_BrushStroke::opacityZeroChangesNothing()
{
    QImage layer = Motley(QSize(100, 100));
    StrokeSettings settings = Settings(50);
    settings.opacity = 0;
    BrushStroke stroke(settings);
    stroke.AddPoint({QPointF(50, 50), 1});
    stroke.AddPoint({QPointF(90, 50), 1});
    QVERIFY(!stroke.HasPending());
    QCOMPARE(stroke.Advance(layer, 10), QRect());
    QCOMPARE(stroke.Finish(layer), QRect());
    QCOMPARE(layer, Motley(QSize(100, 100)));
    QVERIFY(stroke.TakeSavedTiles().isEmpty());
}

void tst_BrushStroke::nothingOutsideTheSelectionChanges()
{
    QFETCH(StrokeSettings, settings);
    const QSize size(640, 400);
    QImage mask(size, QImage::Format_Grayscale8);
    mask.fill(0);
    for (int y = 30; y < 250; ++y)
        std::fill_n(mask.scanLine(y) + 77, 300, uchar(255));
    settings.selection = mask;
    const QImage before = Motley(size);
    QImage layer = before.copy();

    Paint(layer, settings, Curly());

    bool inside = false;
    for (int y = 0; y < size.height(); ++y)
    {
        for (int x = 0; x < size.width(); ++x)
        {
            if (mask.constScanLine(y)[x] == 0)
                QCOMPARE(At(layer, x, y), At(before, x, y));
            else
                inside |= At(layer, x, y) != At(before, x, y);
        }
    }
    QVERIFY(inside);
}

void tst_BrushStroke::theSelectionWorksInProportion()
{
    QImage layer = Filled(QSize(256, 40), qRgb(255, 255, 255));
    StrokeSettings settings = Settings(600);
    settings.foreground = Qt::black;
    settings.selection = QImage(layer.size(), QImage::Format_Grayscale8);
    for (int y = 0; y < 40; ++y)
    {
        for (int x = 0; x < 256; ++x)
            settings.selection.scanLine(y)[x] = uchar(x);
    }

    Paint(layer, settings, {{QPointF(128, 20), 1}});

    for (int x = 0; x < 256; ++x)
        QVERIFY(qAbs(qGreen(At(layer, x, 20)) - (255 - x)) <= 1);
}

void tst_BrushStroke::aSelectionSmallerThanTheLayerEndsThere()
{
    QImage layer = Filled(QSize(600, 100), 0);
    StrokeSettings settings = Settings(1500);
    settings.selection = QImage(300, 50, QImage::Format_Grayscale8);
    settings.selection.fill(255);

    Paint(layer, settings, {{QPointF(300, 50), 1}});

    QCOMPARE(At(layer, 299, 49), RED.rgba());
    QCOMPARE(At(layer, 300, 49), 0u);
    QCOMPARE(At(layer, 299, 50), 0u);
    QCOMPARE(At(layer, 599, 99), 0u);
}

void tst_BrushStroke::theSplitOfTheWorkDoesNotMatter()
{
    QFETCH(StrokeSettings, settings);
    const QImage before = Motley(QSize(640, 400));
    QImage atOnce = before.copy();
    Paint(atOnce, settings, Curly());
    QVERIFY(atOnce != before);

    QImage pointByPoint = before.copy();
    BrushStroke eager(settings);
    for (const StrokePoint& point : Curly())
    {
        eager.AddPoint(point);
        eager.Advance(pointByPoint, 0);
    }
    eager.Finish(pointByPoint);

    QImage mixed = before.copy();
    BrushStroke lazy(settings);
    int count = 0;
    for (const StrokePoint& point : Curly())
    {
        lazy.AddPoint(point);
        if (++count % 7 == 0)
            lazy.Advance(mixed, count % 3);
        if (count % 20 == 0)
        {
            while (lazy.HasPending())
                lazy.Advance(mixed, 1);
        }
    }
    lazy.Finish(mixed);

    QCOMPARE(pointByPoint, atOnce);
    QCOMPARE(mixed, atOnce);
}

void tst_BrushStroke::theNumberOfThreadsDoesNotMatter()
{
    QFETCH(StrokeSettings, settings);
    QThreadPool* pool = QThreadPool::globalInstance();
    const int threads = pool->maxThreadCount();
    QVector<QImage> results;
    for (int count : {1, 5})
    {
        pool->setMaxThreadCount(count);
        QImage layer = Motley(QSize(640, 400));
        Paint(layer, settings, Curly());
        results.append(layer);
    }
    pool->setMaxThreadCount(threads);
    QCOMPARE(results[0], results[1]);
}

void tst_BrushStroke::noChannelExceedsItsAlpha()
{
    QFETCH(StrokeSettings, settings);
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
                if (std::max({qRed(pixel), qGreen(pixel), qBlue(pixel)}) > qAlpha(pixel))
                    QFAIL(qPrintable(
                        QStringLiteral("%1 at %2, %3 in mode %4").arg(pixel, 8, 16).arg(x).arg(y).arg(mode)));
            }
        }
    }
}

void tst_BrushStroke::theSavedTilesBringTheLayerBackAndForth()
{
    QFETCH(StrokeSettings, settings);
    const QImage before = Motley(QSize(640, 400));
    QImage layer = before.copy();
    BrushStroke stroke(settings);
    for (const StrokePoint& point : Curly())
        stroke.AddPoint(point);
    stroke.Finish(layer);
    const QImage after = layer.copy();
    QVector<SavedTile> tiles = stroke.TakeSavedTiles();

    ExchangeTiles(layer, tiles);
    QCOMPARE(layer, before);
    ExchangeTiles(layer, tiles);
    QCOMPARE(layer, after);
    QVERIFY(after != before);
}

void tst_BrushStroke::theReturnedAreasCoverAllChanges()
{
    QFETCH(StrokeSettings, settings);
    QImage layer = Motley(QSize(640, 400));
    QImage shown = layer.copy();
    BrushStroke stroke(settings);
    QRect all;
    const auto show = [&](const QRect& area)
    {
        all |= area;
        for (int y = area.top(); y <= area.bottom(); ++y)
            std::copy_n(layer.constScanLine(y) + area.left() * 4, area.width() * 4,
                        shown.scanLine(y) + area.left() * 4);
    };
    for (const StrokePoint& point : Curly())
    {
        stroke.AddPoint(point);
        show(stroke.Advance(layer, 0));
        QCOMPARE(shown, layer);
    }
    show(stroke.Finish(layer));
    QCOMPARE(shown, layer);
    QCOMPARE(stroke.TouchedRect(), all);
    QVERIFY(layer.rect().contains(all));
}

void tst_BrushStroke::theReturnedAreaIsWhatChangedInTheCall()
{
    QImage layer = Filled(QSize(2000, 1000), 0);
    BrushStroke stroke(Settings(10, 100));
    stroke.AddPoint({QPointF(100, 100), 1});
    const QRect first = stroke.Advance(layer, 100);
    QVERIFY(first.contains(QRect(96, 96, 8, 8)));
    QVERIFY(QRect(93, 93, 14, 14).contains(first));
    stroke.AddPoint({QPointF(1800, 900), 1});
    stroke.Advance(layer, 1000);
    QVERIFY(!stroke.HasPending());
    QCOMPARE(stroke.Advance(layer, 100), QRect());
    stroke.AddPoint({QPointF(1850, 900), 1});
    QVERIFY(QRect(1780, 880, 100, 40).contains(stroke.Advance(layer, 100)));
}

void tst_BrushStroke::aPatternIsLaidOutFromTheOrigin()
{
    // Neither side divides that of any power of two.
    QImage pattern(3, 5, QImage::Format_ARGB32_Premultiplied);
    for (int i = 0; i < 15; ++i)
        reinterpret_cast<QRgb*>(pattern.scanLine(i / 3))[i % 3] =
            qPremultiply(qRgba(i * 17, 90, 250 - i, 255 - i * 16));
    QImage layer = Filled(QSize(700, 700), 0);
    StrokeSettings settings = Settings(100);
    settings.fillMode = StrokeSettings::Pattern;
    settings.pattern = pattern;

    Paint(layer, settings, {{QPointF(100, 150), 1}, {QPointF(601.3, 150), 1}, {QPointF(601.3, 650), 1}});

    for (int y = 120; y < 180; ++y)
    {
        for (int x = 100; x < 600; ++x)
            QCOMPARE(At(layer, x, y), At(pattern, x % 3, y % 5));
    }
    for (int y = 180; y < 650; ++y)
    {
        for (int x = 570; x < 630; ++x)
            QCOMPARE(At(layer, x, y), At(pattern, x % 3, y % 5));
    }
}

void tst_BrushStroke::aPatternTakesTheColorByItsBrightness()
{
    QImage layer = Filled(QSize(60, 60), 0);
    StrokeSettings settings = Settings(200);
    settings.fillMode = StrokeSettings::PatternColor;
    settings.pattern = SmallPattern();

    Paint(layer, settings, {{QPointF(30, 30), 1}});

    QCOMPARE(At(layer, 30, 30), RED.rgba());
    QCOMPARE(At(layer, 31, 30), qRgb(0, 0, 0));
    QCOMPARE(At(layer, 31, 31), 0u);
    // White at 100 of 255 opaque.
    QVERIFY(LargestDifference(At(layer, 32, 31), qPremultiply(qRgba(220, 40, 20, 100))) <= 1);
}

void tst_BrushStroke::theGradientRunsForwardAndBackAlongTheStroke()
{
    QImage layer = Filled(QSize(500, 40), 0);
    StrokeSettings settings = Settings(20, 1);
    settings.fillMode = StrokeSettings::Gradient;
    settings.gradient = {{0.0, QColor(0, 0, 0)}, {1.0, QColor(250, 0, 0)}};

    Paint(layer, settings, {{QPointF(20, 20), 1}, {QPointF(480, 20), 1}});

    // The stamp on top of a pixel is the last one that reaches it, half a size further on.
    for (int x : {50, 100, 150, 200})
        QVERIFY2(qAbs(qRed(At(layer, x, 20)) - (x - 20 + 9.5) * 250.0 / 200.0) <= 3,
                 qPrintable(QString::number(qRed(At(layer, x, 20)))));
    for (int x : {250, 300, 350, 400})
        QVERIFY(qAbs(qRed(At(layer, x, 20)) - (400 - (x - 20 + 9.5)) * 250.0 / 200.0) <= 3);
}

void tst_BrushStroke::anEmptyGradientGoesFromForegroundToBackground()
{
    QImage layer = Filled(QSize(500, 40), 0);
    StrokeSettings settings = Settings(20, 1);
    settings.fillMode = StrokeSettings::Gradient;

    Paint(layer, settings, {{QPointF(20, 20), 1}, {QPointF(220, 20), 1}});

    QVERIFY(LargestDifference(At(layer, 220, 20), settings.background.rgba()) <= 3);
    QVERIFY(LargestDifference(At(layer, 11, 20), settings.foreground.rgba()) <= 12);
}

void tst_BrushStroke::unusableGradientStopsAreLeftOut()
{
    QImage layer = Filled(QSize(100, 40), 0);
    StrokeSettings settings = Settings(20, 1);
    settings.fillMode = StrokeSettings::Gradient;
    settings.gradient = {{NOT_A_NUMBER, Qt::white}, {INF, Qt::white}, {7.0, Qt::blue},
                         {0.5, Qt::blue},           {0.5, Qt::blue},  {-3.0, Qt::blue}};

    Paint(layer, settings, {{QPointF(20, 20), 1}, {QPointF(80, 20), 1}});

    QCOMPARE(At(layer, 50, 20), qRgb(0, 0, 255));
}

void tst_BrushStroke::randomColorsComeFromTheSeed()
{
    StrokeSettings settings = Settings(20, 150);
    settings.fillMode = StrokeSettings::RandomColor;
    QVector<QImage> layers;
    for (quint64 seed : {1, 1, 2})
    {
        settings.seed = seed;
        QImage layer = Filled(QSize(640, 40), 0);
        Paint(layer, settings, {{QPointF(20, 20), 1}, {QPointF(620, 20), 1}});
        layers.append(layer);
    }
    QCOMPARE(layers[0], layers[1]);
    QVERIFY(layers[0] != layers[2]);
    QVector<QRgb> colors;
    for (int x = 20; x <= 620; x += 30)
    {
        const QRgb color = At(layers[0], x, 20);
        QCOMPARE(qAlpha(color), 255);
        QCOMPARE(At(layers[0], x + 4, 16), color);
        if (!colors.contains(color))
            colors.append(color);
    }
    QVERIFY(colors.size() >= 20);
}

void tst_BrushStroke::withoutAPatternTheColorIsUsed_data()
{
    QTest::addColumn<int>("fillMode");
    QTest::addColumn<int>("instead");
    QTest::newRow("Pattern") << int(StrokeSettings::Pattern) << int(StrokeSettings::Color);
    QTest::newRow("Pattern+Color") << int(StrokeSettings::PatternColor) << int(StrokeSettings::Color);
    QTest::newRow("Pattern+Gradient")
        << int(StrokeSettings::PatternGradient) << int(StrokeSettings::Gradient);
    QTest::newRow("no such fill mode") << 6 << int(StrokeSettings::Color);
    QTest::newRow("negative fill mode") << -1 << int(StrokeSettings::Color);
}

void tst_BrushStroke::withoutAPatternTheColorIsUsed()
{
    QFETCH(int, fillMode);
    QFETCH(int, instead);
    StrokeSettings settings = Settings(40);
    settings.fillMode = fillMode;
    QImage layer = Filled(QSize(640, 400), 0);
    Paint(layer, settings, Curly());

    settings.fillMode = instead;
    QImage expected = Filled(QSize(640, 400), 0);
    Paint(expected, settings, Curly());

    QCOMPARE(layer, expected);
}

void tst_BrushStroke::pressureLeadsFromBackgroundToForeground()
{
    StrokeSettings settings = Settings(30);
    settings.dynamics.color = true;
    QImage layer = Filled(QSize(300, 100), 0);
    Paint(layer, settings, {{QPointF(50, 50), 0.0}});
    Paint(layer, settings, {{QPointF(150, 50), 0.5}});
    Paint(layer, settings, {{QPointF(250, 50), 1.0}});
    QCOMPARE(At(layer, 50, 50), settings.background.rgba());
    QVERIFY(LargestDifference(At(layer, 150, 50), qRgb(110, 20, 110)) <= 1);
    QCOMPARE(At(layer, 250, 50), settings.foreground.rgba());
}

void tst_BrushStroke::pressureScalesTheCoverage()
{
    StrokeSettings settings = Settings(30, 1000);
    settings.dynamics.opacity = true;
    QImage layer = Filled(QSize(300, 100), 0);
    Paint(layer, settings, {{QPointF(50, 50), 0.0}});
    Paint(layer, settings, {{QPointF(150, 50), 0.5}});
    Paint(layer, settings, {{QPointF(250, 50), 1.0}});
    QCOMPARE(qAlpha(At(layer, 50, 50)), 0);
    QVERIFY(qAbs(qAlpha(At(layer, 150, 50)) - 128) <= 1);
    QCOMPARE(qAlpha(At(layer, 250, 50)), 255);
}

void tst_BrushStroke::pressureScalesTheSize()
{
    StrokeSettings settings = Settings(80);
    settings.dynamics.size = true;
    QImage layer = Filled(QSize(300, 100), 0);
    Paint(layer, settings, {{QPointF(50, 50), 0.5}});
    QCOMPARE(qAlpha(At(layer, 50 + 18, 50)), 255);
    QCOMPARE(qAlpha(At(layer, 50 + 22, 50)), 0);
}

void tst_BrushStroke::aShortStrokeOnALargeLayerTakesLittleMemory()
{
    QImage layer(10000, 10000, QImage::Format_ARGB32_Premultiplied);
    BrushStroke stroke(Settings(20));
    stroke.AddPoint({QPointF(5000, 5000), 1});
    stroke.AddPoint({QPointF(5100, 5000), 1});
    stroke.Finish(layer);
    QVERIFY2(stroke.BufferBytes() < 1 << 20, qPrintable(QString::number(stroke.BufferBytes())));
    QVERIFY(stroke.TakeSavedTiles().size() <= 4);
}

void tst_BrushStroke::coveredTilesGiveTheirMemoryBack()
{
    QImage layer = Filled(QSize(1024, 1024), 0);
    BrushStroke stroke(Settings(2000));
    stroke.AddPoint({QPointF(512, 512), 1});
    stroke.Advance(layer, 1000);
    QVERIFY2(stroke.BufferBytes() < 10000, qPrintable(QString::number(stroke.BufferBytes())));
    QCOMPARE(At(layer, 1023, 1023), RED.rgba());
    stroke.AddPoint({QPointF(600, 600), 1});
    QCOMPARE(stroke.Advance(layer, 1000), QRect());
    QCOMPARE(stroke.TakeSavedTiles().size(), 16);
}

void tst_BrushStroke::aSmallBudgetStillComesToAnEnd()
{
    QImage layer = Filled(QSize(1500, 1500), 0);
    StrokeSettings settings = Settings(1000, 1);
    settings.tip.hardness = 0.2;
    BrushStroke stroke(settings);
    for (int i = 0; i < 6; ++i)
        stroke.AddPoint({QPointF(i % 2 == 0 ? 200 : 1300, 750), 1});
    int calls = 0;
    while (stroke.HasPending())
    {
        const qint64 stamps = stroke.StampCount();
        stroke.Advance(layer, 0);
        ++calls;
        QVERIFY(stroke.StampCount() > stamps || !stroke.HasPending());
    }
    QVERIFY2(calls > 2, "a budget of nothing must not work off everything in one call");
    QCOMPARE(stroke.StampCount(), qint64(551));
}

void tst_BrushStroke::unusablePointsAndPlacesDoNoHarm()
{
    for (bool soft : {false, true})
    {
        StrokeSettings settings = Settings(1, 1);
        settings.tip.hardness = soft ? 0.0 : 1.0;
        settings.dynamics = {soft, soft, soft, soft, soft, soft};
        QImage layer = Filled(QSize(64, 64), 0);
        BrushStroke stroke(settings);
        for (double bad : {NOT_A_NUMBER, INF, -INF, 1e300, -1e300, 1e9, -4e9, 2147483648.0})
        {
            stroke.AddPoint({QPointF(bad, 5), bad});
            stroke.AddPoint({QPointF(5, bad), 0.5});
            stroke.AddPoint({QPointF(bad, bad), NOT_A_NUMBER});
            stroke.Advance(layer, 1);
        }
        stroke.Finish(layer);
        QVERIFY2(stroke.StampCount() < 20000, qPrintable(QString::number(stroke.StampCount())));
    }
}

void tst_BrushStroke::unusableSettingsAreMadeUsable()
{
    for (double bad : {NOT_A_NUMBER, INF, -INF, 1e300, -5.0, 0.0})
    {
        StrokeSettings settings;
        settings.size = bad;
        settings.spacing = bad;
        settings.tip.hardness = bad;
        settings.tip.roundness = bad;
        settings.tip.angle = bad;
        settings.blendMode = 99;
        settings.foreground = QColor();
        QImage layer = Filled(QSize(32, 32), 0);
        Paint(layer, settings, {{QPointF(16, 16), 1}, {QPointF(20, 16), 1}});
        QVERIFY(layer != Filled(QSize(32, 32), 0));
        settings.opacity = NOT_A_NUMBER;
        QImage untouched = Filled(QSize(32, 32), 0);
        Paint(untouched, settings, {{QPointF(16, 16), 1}});
        QCOMPARE(untouched, Filled(QSize(32, 32), 0));
    }
}

void tst_BrushStroke::aLayerOfOnePixelIsPainted()
{
    QImage layer = Filled(QSize(1, 1), 0);
    BrushStroke stroke(Settings(5));
    stroke.AddPoint({QPointF(0.5, 0.5), 1});
    QCOMPARE(stroke.Advance(layer, 5), QRect(0, 0, 1, 1));
    QCOMPARE(At(layer, 0, 0), RED.rgba());
    QVector<SavedTile> tiles = stroke.TakeSavedTiles();
    ExchangeTiles(layer, tiles);
    QCOMPARE(At(layer, 0, 0), 0u);
}

void tst_BrushStroke::anUnfitLayerIsLeftAlone()
{
    BrushStroke stroke(Settings(50));
    stroke.AddPoint({QPointF(5, 5), 1});
    QImage none;
    QCOMPARE(stroke.Advance(none, 5), QRect());
    QImage other(20, 20, QImage::Format_RGB888);
    other.fill(Qt::green);
    QCOMPARE(stroke.Advance(other, 5), QRect());
    QCOMPARE(other.pixelColor(5, 5), QColor(Qt::green));
    QVERIFY(stroke.HasPending());
    QImage layer = Filled(QSize(20, 20), 0);
    QVERIFY(!stroke.Advance(layer, 5).isEmpty());
    stroke.AddPoint({QPointF(15, 5), 1});
    QImage larger = Filled(QSize(30, 30), 0);
    QCOMPARE(stroke.Finish(larger), QRect());
    QCOMPARE(larger, Filled(QSize(30, 30), 0));
}

void tst_BrushStroke::afterFinishTheStrokeIsOver()
{
    QImage layer = Filled(QSize(100, 100), 0);
    BrushStroke stroke(Settings(10));
    stroke.AddPoint({QPointF(20, 20), 1});
    stroke.Finish(layer);
    const QImage after = layer.copy();
    stroke.AddPoint({QPointF(80, 80), 1});
    QVERIFY(!stroke.HasPending());
    QCOMPARE(stroke.Finish(layer), QRect());
    QCOMPARE(layer, after);
    QCOMPARE(stroke.TakeSavedTiles().size(), 1);
    QVERIFY(stroke.TakeSavedTiles().isEmpty());
    QCOMPARE(stroke.Advance(layer, 5), QRect());
}

void tst_BrushStroke::aCopyOfTheLayerKeepsItsPixels()
{
    QImage layer = Motley(QSize(100, 100));
    const QImage copy = layer;
    Paint(layer, Settings(50), {{QPointF(50, 50), 1}});
    QVERIFY(copy != layer);
    QCOMPARE(copy, Motley(QSize(100, 100)));
}

void tst_BrushStroke::erasingLeavesNothingUnderAHardStamp()
{
    const QImage before = Motley(QSize(300, 300));
    QImage layer = before.copy();
    StrokeSettings settings = Settings(50);
    settings.erase = true;
    Paint(layer, settings, {{QPointF(150, 150), 1.0}});
    for (int y = 0; y < 300; ++y)
    {
        for (int x = 0; x < 300; ++x)
        {
            const double distance = std::hypot(x + 0.5 - 150, y + 0.5 - 150);
            if (distance < 24.0)
                QCOMPARE(At(layer, x, y), 0u);
            else if (distance > 26.5)
                QCOMPARE(At(layer, x, y), At(before, x, y));
        }
    }
}

void tst_BrushStroke::erasingTakesAwayByOpacityAndSelection()
{
    // 102 of 255 selected and 50 % leave four fifths, 50 % alone a half.
    QImage layer = Filled(QSize(300, 2), qRgba(200, 100, 20, 240));
    StrokeSettings settings = Settings(1000);
    settings.erase = true;
    settings.opacity = 50;
    settings.selection = QImage(290, 2, QImage::Format_Grayscale8);
    settings.selection.fill(255);
    std::fill_n(settings.selection.scanLine(1), 290, uchar(102));

    Paint(layer, settings, {{QPointF(150, 1), 1}});

    for (int x = 0; x < 290; ++x)
    {
        QVERIFY(LargestDifference(At(layer, x, 0), qRgba(100, 50, 10, 120)) <= 1);
        QVERIFY(LargestDifference(At(layer, x, 1), qRgba(160, 80, 16, 192)) <= 1);
    }
    QCOMPARE(At(layer, 290, 0), qRgba(200, 100, 20, 240));
}

void tst_BrushStroke::erasingTwiceAtFullOpacityIsErasingOnce()
{
    QImage layer = Motley(QSize(640, 400));
    StrokeSettings settings = Settings(60);
    settings.erase = true;
    settings.selection = QImage(layer.size(), QImage::Format_Grayscale8);
    settings.selection.fill(0);
    // Within the stroke, away from its edge.
    for (int y = 185; y < 216; ++y)
        std::fill_n(settings.selection.scanLine(y) + 60, 500, uchar(255));
    const Points points = {{QPointF(40, 200), 1}, {QPointF(600, 200), 1}};
    Paint(layer, settings, points);
    const QImage once = layer.copy();
    QVERIFY(once != Motley(QSize(640, 400)));
    Paint(layer, settings, points);
    QCOMPARE(layer, once);
    QCOMPARE(At(layer, 60, 185), 0u);
}

void tst_BrushStroke::whatIsPaintedWithHasNoSayInErasing()
{
    StrokeSettings settings = Settings(60);
    settings.erase = true;
    settings.opacity = 60;
    QImage expected = Motley(QSize(640, 400));
    Paint(expected, settings, Curly());
    int calls = 0;
    settings.source = [&calls](const StrokeBackdrop&, const QRect& area)
    {
        ++calls;
        return Filled(area.size(), qRgb(1, 2, 3));
    };
    settings.dynamics.color = true;
    settings.pattern = SmallPattern();
    settings.foreground = QColor(1, 2, 3, 40);
    for (int fill = 0; fill < 6; ++fill)
    {
        settings.fillMode = fill;
        settings.blendMode = fill * 2 + 1;
        QImage layer = Motley(QSize(640, 400));
        Paint(layer, settings, Curly());
        QCOMPARE(layer, expected);
    }
    QCOMPARE(calls, 0);
}

void tst_BrushStroke::theCoverageIsWhatBlackOnWhiteShows_data()
{
    QTest::addColumn<double>("size");
    QTest::addColumn<double>("hardness");
    QTest::newRow("soft") << 80.0 << 0.0;
    QTest::newRow("hard") << 80.0 << 1.0;
    QTest::newRow("tiny") << 1.0 << 1.0;
    QTest::newRow("covering whole tiles") << 900.0 << 1.0;
}

void tst_BrushStroke::theCoverageIsWhatBlackOnWhiteShows()
{
    QFETCH(double, size);
    QFETCH(double, hardness);
    StrokeSettings settings = Settings(size);
    settings.tip.hardness = hardness;
    settings.dynamics.opacity = size < 100.0;
    settings.foreground = Qt::black;
    QImage layer = Filled(QSize(640, 400), qRgb(255, 255, 255));
    BrushStroke stroke(settings);
    for (const StrokePoint& point : Curly())
        stroke.AddPoint(point);
    stroke.Finish(layer);

    const QImage coverage = stroke.Coverage();
    const QRect touched = stroke.TouchedRect();
    QCOMPARE(coverage.format(), QImage::Format_Grayscale8);
    QCOMPARE(coverage.size(), touched.size());
    for (int y = 0; y < 400; ++y)
    {
        for (int x = 0; x < 640; ++x)
        {
            const int covered =
                touched.contains(x, y) ? coverage.constScanLine(y - touched.top())[x - touched.left()] : 0;
            QCOMPARE(255 - qRed(At(layer, x, y)), covered);
        }
    }
}

void tst_BrushStroke::opacityHasNoSayInTheCoverage()
{
    QVector<QImage> coverages;
    for (int way = 0; way < 4; ++way)
    {
        StrokeSettings settings = Settings(70);
        settings.tip.hardness = 0.3;
        settings.opacity = way == 0 ? 100 : 35;
        settings.foreground.setAlpha(way == 1 ? 90 : 255);
        settings.erase = way == 2;
        if (way == 3)
            settings.source = MakeCloneSource(QPoint(5, 5));
        QImage layer = Motley(QSize(640, 400));
        BrushStroke stroke(settings);
        for (const StrokePoint& point : Curly())
            stroke.AddPoint(point);
        stroke.Finish(layer);
        coverages.append(stroke.Coverage());
    }
    QVERIFY(!coverages[0].isNull());
    for (const QImage& coverage : qAsConst(coverages))
        QCOMPARE(coverage, coverages[0]);
}

void tst_BrushStroke::whatIsNotSelectedIsNotCovered()
{
    StrokeSettings settings = Settings(2000);
    settings.selection = QImage(700, 10, QImage::Format_Grayscale8);
    settings.selection.fill(0);
    for (int x : {10, 20, 690})
        settings.selection.scanLine(5)[x] = uchar(x == 20 ? 3 : 255);
    QImage layer = Filled(QSize(700, 20), 0);
    BrushStroke stroke(settings);
    stroke.AddPoint({QPointF(350, 10), 1});
    stroke.Finish(layer);
    const QImage coverage = stroke.Coverage();
    QCOMPARE(coverage.size(), stroke.TouchedRect().size());
    const QPoint corner = stroke.TouchedRect().topLeft();
    for (int y = 0; y < coverage.height(); ++y)
    {
        for (int x = 0; x < coverage.width(); ++x)
        {
            const int inLayer = x + corner.x();
            const bool selected = y + corner.y() == 5 && (inLayer == 10 || inLayer == 20 || inLayer == 690);
            QCOMPARE(int(coverage.constScanLine(y)[x]), selected ? 255 : 0);
        }
    }
}

void tst_BrushStroke::theCoverageIsKnownWhileTheStrokeIs()
{
    QImage layer = Filled(QSize(100, 100), 0);
    BrushStroke stroke(Settings(10));
    QVERIFY(stroke.Coverage().isNull());
    stroke.AddPoint({QPointF(50, 50), 1});
    QVERIFY(stroke.Coverage().isNull());
    stroke.Advance(layer, 10);
    QCOMPARE(stroke.Coverage().size(), stroke.TouchedRect().size());
    stroke.TakeSavedTiles();
    QVERIFY(stroke.Coverage().isNull());

    StrokeSettings settings = Settings(10);
    settings.fillMode = StrokeSettings::RandomColor;
    BrushStroke colors(settings);
    colors.AddPoint({QPointF(50, 50), 1});
    colors.Finish(layer);
    QVERIFY(!colors.TouchedRect().isEmpty());
    QVERIFY(colors.Coverage().isNull());
}

NV_TEST_MAIN(tst_BrushStroke)
#include "tst_BrushStroke.moc"
