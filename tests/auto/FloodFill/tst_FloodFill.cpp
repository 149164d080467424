// Flood fills: small pictures whose result a person can tell, and random ones against a plain search that
// goes from pixel to pixel.

#include <QTest>

#include <QQueue>
#include <QRandomGenerator>

#include <algorithm>
#include <climits>
#include <cmath>
#include <functional>
#include <limits>

#include "FloodFill.h"
#include "PixelBlend.h"
#include "ShortMemory.h"
#include "TestMain.h"

namespace
{
const QRgb WHITE = qRgb(255, 255, 255);
const QRgb BLACK = qRgb(0, 0, 0);
const QRgb RED = qRgb(200, 10, 30);

QRgb PixelOf(const QImage& image, int x, int y)
{
    return reinterpret_cast<const QRgb*>(image.constScanLine(y))[x];
}

void SetPixel(QImage& image, int x, int y, QRgb pixel)
{
    reinterpret_cast<QRgb*>(image.scanLine(y))[x] = pixel;
}

QImage Plain(int width, int height, QRgb pixel = WHITE)
{
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    for (int y = 0; y < height; ++y)
        std::fill_n(reinterpret_cast<QRgb*>(image.scanLine(y)), width, pixel);
    return image;
}

// '#' is black, '.' white, 'o' a light gray, ' ' transparent.
QImage Drawn(const QStringList& rows)
{
    QImage image = Plain(rows[0].size(), rows.size());
    for (int y = 0; y < image.height(); ++y)
    {
        for (int x = 0; x < image.width(); ++x)
        {
            const QChar mark = rows[y][x];
            SetPixel(image, x, y,
                     mark == '#'       ? BLACK
                         : mark == 'o' ? qRgb(230, 230, 230)
                         : mark == ' ' ? 0
                                       : WHITE);
        }
    }
    return image;
}

QImage Selection(const QSize& size, const std::function<int(int x, int y)>& value)
{
    QImage selection(size, QImage::Format_Grayscale8);
    for (int y = 0; y < size.height(); ++y)
    {
        for (int x = 0; x < size.width(); ++x)
            selection.scanLine(y)[x] = uchar(value(x, y));
    }
    return selection;
}

// What was filled is '*', what was filled in part '+', the rest '.'.
QStringList MaskText(const QImage& mask)
{
    QStringList rows;
    for (int y = 0; y < mask.height(); ++y)
    {
        QString row;
        for (int x = 0; x < mask.width(); ++x)
        {
            const int value = mask.constScanLine(y)[x];
            row += QLatin1Char(value == 255 ? '*' : value == 0 ? '.' : '+');
        }
        rows << row;
    }
    return rows;
}

FillSettings Settings(int tolerance = 0, bool contiguous = true)
{
    FillSettings settings;
    settings.tolerance = tolerance;
    settings.contiguous = contiguous;
    settings.color = QColor::fromRgb(RED);
    return settings;
}

// True if a colour within the tolerance of the straight one looks like the channel at that opacity.
bool SomeColorLooksLike(int channel, int alpha, int straight, int tolerance)
{
    for (int value = std::max(0, straight - tolerance); value <= std::min(255, straight + tolerance); ++value)
    {
        if (std::lround(value * alpha / 255.0) == channel)
            return true;
    }
    return false;
}

bool IsAlike(QRgb pixel, QRgb seed, const FillSettings& settings)
{
    const int pa = qAlpha(pixel);
    const int sa = qAlpha(seed);
    if (!settings.ignoreTransparency)
    {
        if (pa == 0)
            pixel = 0;
        if (sa == 0)
            seed = 0;
        return qAbs(qRed(pixel) - qRed(seed)) <= settings.tolerance &&
            qAbs(qGreen(pixel) - qGreen(seed)) <= settings.tolerance &&
            qAbs(qBlue(pixel) - qBlue(seed)) <= settings.tolerance && qAbs(pa - sa) <= settings.tolerance;
    }
    if (pa == 0 || sa == 0)
        return true;
    const auto like = [&](int channel, int seedChannel)
    {
        const int straight = int(std::lround(seedChannel * 255.0 / sa));
        return SomeColorLooksLike(channel, pa, straight, settings.tolerance);
    };
    return like(qRed(pixel), qRed(seed)) && like(qGreen(pixel), qGreen(seed)) &&
        like(qBlue(pixel), qBlue(seed));
}

int SelectedAt(const FillSettings& settings, int x, int y)
{
    return settings.selection.isNull() ? 255 : settings.selection.constScanLine(y)[x];
}

// From neighbour to neighbour, or pixel by pixel.
QImage SearchedRegion(const QImage& picture, const QPoint& seed, const FillSettings& settings)
{
    QImage region(picture.size(), QImage::Format_Grayscale8);
    region.fill(0);
    const QRgb clicked = PixelOf(picture, seed.x(), seed.y());
    const auto open = [&](int x, int y)
    {
        return picture.rect().contains(x, y) && SelectedAt(settings, x, y) > 0 &&
            IsAlike(PixelOf(picture, x, y), clicked, settings);
    };
    QQueue<QPoint> queue;
    const auto reach = [&](int x, int y)
    {
        if (!open(x, y) || region.constScanLine(y)[x] != 0)
            return;
        region.scanLine(y)[x] = 255;
        queue.enqueue(QPoint(x, y));
    };
    reach(seed.x(), seed.y());
    for (int i = 0; !settings.contiguous && i < picture.width() * picture.height(); ++i)
        reach(i % picture.width(), i / picture.width());
    while (!queue.isEmpty())
    {
        const QPoint at = queue.dequeue();
        reach(at.x() - 1, at.y());
        reach(at.x() + 1, at.y());
        reach(at.x(), at.y() - 1);
        reach(at.x(), at.y() + 1);
    }
    return region;
}

int SoftValue(const QImage& region, int x, int y)
{
    if (region.constScanLine(y)[x] == 255)
        return 255;
    int sum = 0;
    for (int dy = -1; dy <= 1; ++dy)
    {
        for (int dx = -1; dx <= 1; ++dx)
        {
            if (region.rect().contains(x + dx, y + dy) && region.constScanLine(y + dy)[x + dx] == 255)
                sum += (2 - qAbs(dx)) * (2 - qAbs(dy));
        }
    }
    return int(std::lround(255.0 * sum / 16.0));
}

QImage SearchedMask(const QImage& picture, const QPoint& seed, const FillSettings& settings)
{
    const QImage region = SearchedRegion(picture, seed, settings);
    return Selection(picture.size(),
                     [&](int x, int y)
                     {
                         const int value =
                             settings.antialiasing ? SoftValue(region, x, y) : region.constScanLine(y)[x];
                         return int(std::lround(value * SelectedAt(settings, x, y) / 255.0));
                     });
}

// Few colours that lie close together, some of them translucent or transparent.
QImage RandomPicture(QRandomGenerator& random, const QSize& size)
{
    QImage image = Plain(size.width(), size.height());
    const int alphas[] = {255, 255, 255, 0, 128, 7, 250};
    for (int y = 0; y < size.height(); ++y)
    {
        for (int x = 0; x < size.width(); ++x)
        {
            const auto channel = [&] { return int(random.bounded(3)) * 40; };
            const QRgb color = qRgba(channel(), channel() / 2, 60, alphas[random.bounded(7)]);
            SetPixel(image, x, y, qPremultiply(color));
        }
    }
    return image;
}

FillSettings RandomSettings(QRandomGenerator& random, int options, const QSize& size)
{
    const int tolerances[] = {0, 1, 20, 40, 41, 128, 254, 255};
    FillSettings settings = Settings(tolerances[random.bounded(8)], (options & 1) != 0);
    settings.antialiasing = (options & 2) != 0;
    settings.ignoreTransparency = (options & 4) != 0;
    const int levels[] = {0, 255, 255, 255, 1, 128};
    if ((options & 8) != 0)
        settings.selection = Selection(size, [&](int, int) { return levels[random.bounded(6)]; });
    return settings;
}

QImage Stripes(int width, int height)
{
    QImage pattern = Plain(width, height);
    for (int y = 0; y < height; ++y)
    {
        for (int x = 0; x < width; ++x)
            SetPixel(pattern, x, y, qRgb(x * 20, y * 20, 99));
    }
    return pattern;
}
} // namespace

class tst_FloodFill : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fillsUpToTheWall();
    void aDiagonalDoesNotLeak();
    void withoutContiguousAllThatIsAlikeIsFilled();
    void theToleranceIsForTheChannelThatDiffersMost_data();
    void theToleranceIsForTheChannelThatDiffersMost();
    void theToleranceIsCountedFromTheClickNotFromTheNeighbour();
    void aToleranceOf255ReachesAllThatIsConnected();
    void transparentPixelsAreAlikeWhateverTheyHide();
    void opacityCountsUnlessItIsIgnored();
    void aTransparentPixelIsLikeAnyOtherWhenOpacityIsIgnored();
    void edgesAreSoftOnlyWithAntialiasing();
    void theSelectionIsAWall();
    void theSelectionIsAWallForSoftEdgesToo();
    void aPartialSelectionFillsInPart();
    void aSeedThatIsNotSelectedGivesNothing();
    void agreesWithASearchFromPixelToPixel_data();
    void agreesWithASearchFromPixelToPixel();
    void whatIsConnectedIsPartOfWhatIsAlike();

    void thePixelsTakeTheColour();
    void aSecondFillChangesNothing();
    void theColourKeepsItsOpacity();
    void theBlendModeAndTheOpacityCount();
    void thePatternIsLaidOutFromTheCornerOfTheLayer();
    void aPatternOfAnotherFormatIsTheSame();
    void theSampledPictureDecidesInPlaceOfTheLayer();
    void onlyTouchedTilesAreKept();
    void theTilesBringTheLayerBack_data();
    void theTilesBringTheLayerBack();
    void aCopyOfTheLayerKeepsItsPixels();
    void aPictureOfOnePixelIsFilled();
    void whatCannotBeSeenKeepsNoTiles_data();
    void whatCannotBeSeenKeepsNoTiles();
    void whatDoesNotFitDoesNothing_data();
    void whatDoesNotFitDoesNothing();
    void withoutMemoryNothingIsDone();
};

void tst_FloodFill::fillsUpToTheWall()
{
    const QImage picture = Drawn({
        "..#..",
        "..#..",
        ".##..",
        "#....",
    });

    QCOMPARE(MaskText(FloodMask(picture, QPoint(0, 0), Settings())),
             QStringList({"**...", "**...", "*....", "....."}));
    QCOMPARE(MaskText(FloodMask(picture, QPoint(4, 0), Settings())),
             QStringList({"...**", "...**", "...**", ".****"}));
    QCOMPARE(MaskText(FloodMask(picture, QPoint(2, 1), Settings())),
             QStringList({"..*..", "..*..", ".**..", "....."}));
}

void tst_FloodFill::aDiagonalDoesNotLeak()
{
    const QImage picture = Drawn({"..#", ".#.", "#.."});
    QCOMPARE(MaskText(FloodMask(picture, QPoint(0, 0), Settings())), QStringList({"**.", "*..", "..."}));
    QCOMPARE(MaskText(FloodMask(picture, QPoint(1, 1), Settings())), QStringList({"...", ".*.", "..."}));
}

void tst_FloodFill::withoutContiguousAllThatIsAlikeIsFilled()
{
    const QImage picture = Drawn({"..#", ".#.", "#.."});
    QCOMPARE(MaskText(FloodMask(picture, QPoint(0, 0), Settings(0, false))),
             QStringList({"**.", "*.*", ".**"}));
}

void tst_FloodFill::theToleranceIsForTheChannelThatDiffersMost_data()
{
    QTest::addColumn<QRgb>("other");
    QTest::addColumn<int>("tolerance");
    QTest::addColumn<bool>("filled");
    const QRgb near = qRgb(100, 110, 120);
    QTest::newRow("the same, 0") << near << 0 << true;
    QTest::newRow("one off, 0") << qRgb(100, 111, 120) << 0 << false;
    QTest::newRow("one off, 1") << qRgb(100, 109, 120) << 1 << true;
    QTest::newRow("red 33 off, 32") << qRgb(133, 110, 120) << 32 << false;
    QTest::newRow("all 32 off, 32") << qRgb(132, 78, 152) << 32 << true;
    QTest::newRow("blue 33 off, 32") << qRgb(100, 110, 87) << 32 << false;
    QTest::newRow("opacity, 32") << qRgba(68, 78, 88, 223) << 32 << true;
    QTest::newRow("opacity, 31") << qRgba(100, 110, 120, 223) << 31 << false;
}

void tst_FloodFill::theToleranceIsForTheChannelThatDiffersMost()
{
    QFETCH(QRgb, other);
    QFETCH(int, tolerance);
    QFETCH(bool, filled);
    QImage picture = Plain(2, 1, qRgb(100, 110, 120));
    SetPixel(picture, 1, 0, other);

    const QImage mask = FloodMask(picture, QPoint(0, 0), Settings(tolerance));

    QCOMPARE(MaskText(mask), QStringList(filled ? "**" : "*."));
}

void tst_FloodFill::theToleranceIsCountedFromTheClickNotFromTheNeighbour()
{
    QImage picture = Plain(6, 1);
    for (int x = 0; x < 6; ++x)
        SetPixel(picture, x, 0, qRgb(x * 10, x * 10, x * 10));

    QCOMPARE(MaskText(FloodMask(picture, QPoint(0, 0), Settings(20))), QStringList("***..."));
    QCOMPARE(MaskText(FloodMask(picture, QPoint(3, 0), Settings(20))), QStringList(".*****"));
}

void tst_FloodFill::aToleranceOf255ReachesAllThatIsConnected()
{
    QRandomGenerator random(11);
    const QImage picture = RandomPicture(random, QSize(40, 30));
    FillSettings settings = Settings(255);

    QCOMPARE(FloodMask(picture, QPoint(7, 9), settings),
             Selection(picture.size(), [](int, int) { return 255; }));
    settings.ignoreTransparency = true;
    QCOMPARE(FloodMask(picture, QPoint(7, 9), settings),
             Selection(picture.size(), [](int, int) { return 255; }));

    settings.selection = Selection(picture.size(), [](int x, int) { return x == 20 ? 0 : 255; });
    QCOMPARE(FloodMask(picture, QPoint(7, 9), settings),
             Selection(picture.size(), [](int x, int) { return x < 20 ? 255 : 0; }));
}

void tst_FloodFill::transparentPixelsAreAlikeWhateverTheyHide()
{
    QImage picture = Plain(4, 1, 0);
    SetPixel(picture, 1, 0, 0x00ff8040);
    SetPixel(picture, 2, 0, 0x00ffffff);
    SetPixel(picture, 3, 0, WHITE);

    QCOMPARE(MaskText(FloodMask(picture, QPoint(0, 0), Settings())), QStringList("***."));
    QCOMPARE(MaskText(FloodMask(picture, QPoint(1, 0), Settings())), QStringList("***."));
}

void tst_FloodFill::opacityCountsUnlessItIsIgnored()
{
    QImage picture = Plain(4, 1, qRgb(200, 100, 40));
    SetPixel(picture, 1, 0, qPremultiply(qRgba(200, 100, 40, 120)));
    SetPixel(picture, 2, 0, qPremultiply(qRgba(200, 100, 40, 3)));
    SetPixel(picture, 3, 0, qPremultiply(qRgba(200, 100, 140, 120)));
    FillSettings settings = Settings(2);

    QCOMPARE(MaskText(FloodMask(picture, QPoint(0, 0), settings)), QStringList("*..."));
    settings.ignoreTransparency = true;
    QCOMPARE(MaskText(FloodMask(picture, QPoint(0, 0), settings)), QStringList("***."));
    settings.tolerance = 100;
    QCOMPARE(MaskText(FloodMask(picture, QPoint(0, 0), settings)), QStringList("****"));
}

void tst_FloodFill::aTransparentPixelIsLikeAnyOtherWhenOpacityIsIgnored()
{
    const QImage picture = Drawn({"# .#", "   .", "####"});
    FillSettings settings = Settings();
    settings.ignoreTransparency = true;

    QCOMPARE(MaskText(FloodMask(picture, QPoint(2, 0), settings)), QStringList({".**.", "****", "...."}));
    QCOMPARE(MaskText(FloodMask(picture, QPoint(1, 0), settings)), QStringList({"****", "****", "****"}));
}

void tst_FloodFill::edgesAreSoftOnlyWithAntialiasing()
{
    const QImage picture = Drawn({"#####", "#..##", "#.###", "#####", "#####"});
    FillSettings settings = Settings();

    QCOMPARE(MaskText(FloodMask(picture, QPoint(1, 1), settings)),
             QStringList({".....", ".**..", ".*...", ".....", "....."}));
    settings.antialiasing = true;
    const QImage mask = FloodMask(picture, QPoint(1, 1), settings);

    QCOMPARE(MaskText(mask), QStringList({"++++.", "+**+.", "+*++.", "+++..", "....."}));
    QCOMPARE(int(mask.constScanLine(0)[0]), 16); // One corner of 16.
    QCOMPARE(int(mask.constScanLine(0)[1]), 48); // A side and a corner.
    QCOMPARE(int(mask.constScanLine(2)[2]), 80); // Two sides and the corner between them.
}

void tst_FloodFill::theSelectionIsAWall()
{
    const QImage picture = Plain(5, 3);
    FillSettings settings = Settings();
    settings.selection = Selection(picture.size(), [](int x, int y) { return x == 2 && y != 1 ? 0 : 255; });
    QCOMPARE(MaskText(FloodMask(picture, QPoint(0, 0), settings)), QStringList({"**.**", "*****", "**.**"}));

    settings.selection = Selection(picture.size(), [](int x, int) { return x == 2 ? 0 : 255; });
    QCOMPARE(MaskText(FloodMask(picture, QPoint(0, 0), settings)), QStringList({"**...", "**...", "**..."}));
    settings.contiguous = false;
    QCOMPARE(MaskText(FloodMask(picture, QPoint(0, 0), settings)), QStringList({"**.**", "**.**", "**.**"}));
}

void tst_FloodFill::theSelectionIsAWallForSoftEdgesToo()
{
    const QImage picture = Plain(5, 1);
    FillSettings settings = Settings();
    settings.antialiasing = true;
    settings.selection = Selection(picture.size(), [](int x, int) { return x == 2 ? 0 : 255; });
    QCOMPARE(MaskText(FloodMask(picture, QPoint(0, 0), settings)), QStringList("**..."));
}

void tst_FloodFill::aPartialSelectionFillsInPart()
{
    QImage layer = Plain(4, 1);
    FillSettings settings = Settings();
    settings.color = Qt::black;
    settings.selection = Selection(layer.size(), [](int x, int) { return QList<int>({255, 128, 1, 0})[x]; });

    const QImage mask = FloodMask(layer, QPoint(0, 0), settings);
    FloodFill(layer, QPoint(0, 0), settings);

    QCOMPARE(int(mask.constScanLine(0)[1]), 128);
    QCOMPARE(int(mask.constScanLine(0)[2]), 1);
    QCOMPARE(PixelOf(layer, 0, 0), BLACK);
    QCOMPARE(PixelOf(layer, 1, 0), qRgb(127, 127, 127));
    QCOMPARE(PixelOf(layer, 2, 0), qRgb(254, 254, 254));
    QCOMPARE(PixelOf(layer, 3, 0), WHITE);
}

void tst_FloodFill::aSeedThatIsNotSelectedGivesNothing()
{
    QImage layer = Plain(3, 1);
    FillSettings settings = Settings();
    settings.selection = Selection(layer.size(), [](int x, int) { return x == 1 ? 0 : 255; });

    QVERIFY(FloodMask(layer, QPoint(1, 0), settings).isNull());
    QVERIFY(FloodFill(layer, QPoint(1, 0), settings).isEmpty());
    QCOMPARE(layer, Plain(3, 1));
}

void tst_FloodFill::agreesWithASearchFromPixelToPixel_data()
{
    QTest::addColumn<int>("options");
    for (int options = 0; options < 16; ++options)
        QTest::addRow("contiguous %d, antialiasing %d, transparency ignored %d, selection %d", options & 1,
                      (options >> 1) & 1, (options >> 2) & 1, (options >> 3) & 1)
            << options;
}

void tst_FloodFill::agreesWithASearchFromPixelToPixel()
{
    QFETCH(int, options);
    QRandomGenerator random(quint32(options) + 100);
    int filled = 0;
    for (int round = 0; round < 60; ++round)
    {
        const QSize size(1 + random.bounded(24), 1 + random.bounded(24));
        const QImage picture = RandomPicture(random, size);
        const FillSettings settings = RandomSettings(random, options, size);
        const QPoint seed(random.bounded(size.width()), random.bounded(size.height()));
        const QImage mask = FloodMask(picture, seed, settings);
        if (SelectedAt(settings, seed.x(), seed.y()) == 0)
        {
            QVERIFY(mask.isNull());
            continue;
        }
        ++filled;
        QVERIFY2(mask == SearchedMask(picture, seed, settings),
                 qPrintable(QStringLiteral("round %1, tolerance %2").arg(round).arg(settings.tolerance)));
    }
    QVERIFY(filled > 30);
}

void tst_FloodFill::whatIsConnectedIsPartOfWhatIsAlike()
{
    QRandomGenerator random(5);
    for (int round = 0; round < 20; ++round)
    {
        const QImage picture = RandomPicture(random, QSize(300, 70));
        FillSettings settings = Settings(40);
        const QPoint seed(random.bounded(300), random.bounded(70));
        const QImage connected = FloodMask(picture, seed, settings);
        settings.contiguous = false;
        const QImage alike = FloodMask(picture, seed, settings);
        for (int i = 0; i < 300 * 70; ++i)
            QVERIFY(connected.constScanLine(i / 300)[i % 300] <= alike.constScanLine(i / 300)[i % 300]);
    }
}

void tst_FloodFill::thePixelsTakeTheColour()
{
    QImage layer = Drawn({"..#.", "o.#."});

    const QVector<SavedTile> tiles = FloodFill(layer, QPoint(0, 0), Settings(32));

    QImage expected = Drawn({"..#.", "o.#."});
    for (const QPoint& at : {QPoint(0, 0), QPoint(1, 0), QPoint(0, 1), QPoint(1, 1)})
        SetPixel(expected, at.x(), at.y(), RED);
    QCOMPARE(layer, expected);
    QCOMPARE(tiles.size(), 1);
    QCOMPARE(tiles[0].rect, QRect(0, 0, 4, 2));
    QCOMPARE(tiles[0].before, Drawn({"..#.", "o.#."}));
}

void tst_FloodFill::aSecondFillChangesNothing()
{
    QRandomGenerator random(3);
    QImage layer = RandomPicture(random, QSize(100, 80));
    FillSettings settings = Settings(0);
    FloodFill(layer, QPoint(50, 40), settings);
    const QImage once = layer.copy();

    QVERIFY(FloodFill(layer, QPoint(50, 40), settings).isEmpty());
    QCOMPARE(layer, once);
}

void tst_FloodFill::theColourKeepsItsOpacity()
{
    QImage layer = Plain(2, 1, 0);
    FillSettings settings = Settings();
    settings.color = QColor(200, 100, 50, 128);
    settings.opacity = 50.0;

    FloodFill(layer, QPoint(0, 0), settings);

    QCOMPARE(PixelOf(layer, 0, 0), qRgba(50, 25, 13, 64));
}

void tst_FloodFill::theBlendModeAndTheOpacityCount()
{
    const QRgb ground = qRgb(90, 160, 210);
    for (int mode = 0; mode < 13; ++mode)
    {
        QImage layer = Plain(300, 2, ground);
        FillSettings settings = Settings();
        settings.blendMode = mode;
        settings.opacity = 100.0 * 102.0 / 255.0;

        FloodFill(layer, QPoint(0, 0), settings);

        const QRgb source = qRgba(80, 4, 12, 102);
        QCOMPARE(PixelOf(layer, 299, 1), BlendPixel(mode, source, ground));
    }
}

void tst_FloodFill::thePatternIsLaidOutFromTheCornerOfTheLayer()
{
    QImage layer = Plain(600, 300, BLACK);
    for (int y = 100; y < 300; ++y)
    {
        for (int x = 33; x < 600; ++x)
            SetPixel(layer, x, y, WHITE);
    }
    FillSettings settings = Settings();
    settings.pattern = Stripes(7, 5);

    FloodFill(layer, QPoint(400, 200), settings);

    for (const QPoint& at : {QPoint(33, 100), QPoint(255, 255), QPoint(256, 256), QPoint(599, 299)})
        QCOMPARE(PixelOf(layer, at.x(), at.y()), PixelOf(settings.pattern, at.x() % 7, at.y() % 5));
    QCOMPARE(PixelOf(layer, 32, 200), BLACK);
}

void tst_FloodFill::aPatternOfAnotherFormatIsTheSame()
{
    QImage one = Plain(20, 20);
    QImage other = Plain(20, 20);
    FillSettings settings = Settings();
    settings.pattern = Stripes(7, 5);
    FloodFill(one, QPoint(0, 0), settings);
    settings.pattern = settings.pattern.convertToFormat(QImage::Format_RGB888);
    FloodFill(other, QPoint(0, 0), settings);

    QCOMPARE(PixelOf(one, 6, 4), qRgb(120, 80, 99));
    QCOMPARE(one, other);
}

void tst_FloodFill::theSampledPictureDecidesInPlaceOfTheLayer()
{
    QImage layer = Drawn({"#.#.", "##.."});
    FillSettings settings = Settings();
    settings.sampled = Drawn({"..#.", ".#.."});

    const QVector<SavedTile> tiles = FloodFill(layer, QPoint(0, 0), settings);

    QCOMPARE(PixelOf(layer, 0, 0), RED);
    QCOMPARE(PixelOf(layer, 1, 0), RED);
    QCOMPARE(PixelOf(layer, 0, 1), RED);
    QCOMPARE(PixelOf(layer, 1, 1), BLACK);
    QCOMPARE(PixelOf(layer, 3, 1), WHITE);
    QCOMPARE(tiles.size(), 1);
    QCOMPARE(tiles[0].before, Drawn({"#.#.", "##.."}));
}

void tst_FloodFill::onlyTouchedTilesAreKept()
{
    QImage layer = Plain(700, 600, BLACK);
    for (int x = 250; x < 530; ++x)
        SetPixel(layer, x, 300, WHITE);

    const QVector<SavedTile> tiles = FloodFill(layer, QPoint(260, 300), Settings());

    QCOMPARE(tiles.size(), 3);
    QCOMPARE(tiles[0].rect, QRect(0, 256, 256, 256));
    QCOMPARE(tiles[1].rect, QRect(256, 256, 256, 256));
    QCOMPARE(tiles[2].rect, QRect(512, 256, 188, 256));
}

void tst_FloodFill::theTilesBringTheLayerBack_data()
{
    QTest::addColumn<int>("options");
    for (int options = 0; options < 16; ++options)
        QTest::addRow("options %d", options) << options;
}

void tst_FloodFill::theTilesBringTheLayerBack()
{
    QFETCH(int, options);
    QRandomGenerator random(77);
    const QImage before = RandomPicture(random, QSize(530, 300));
    FillSettings settings = Settings(128, (options & 1) != 0);
    settings.antialiasing = (options & 2) != 0;
    settings.blendMode = (options & 4) != 0 ? 8 : 0;
    if ((options & 8) != 0)
        settings.pattern = Stripes(9, 4);
    QImage layer = before.copy();

    QVector<SavedTile> tiles = FloodFill(layer, QPoint(100, 100), settings);
    const QImage after = layer.copy();

    QVERIFY(after != before);
    ExchangeTiles(layer, tiles);
    QVERIFY(layer == before);
    ExchangeTiles(layer, tiles);
    QVERIFY(layer == after);
}

void tst_FloodFill::aCopyOfTheLayerKeepsItsPixels()
{
    QImage layer = Plain(300, 20);
    const QImage copy = layer;

    FloodFill(layer, QPoint(0, 0), Settings());

    QCOMPARE(PixelOf(layer, 299, 19), RED);
    QCOMPARE(copy, Plain(300, 20));
}

void tst_FloodFill::aPictureOfOnePixelIsFilled()
{
    for (int options = 0; options < 4; ++options)
    {
        QImage layer = Plain(1, 1);
        FillSettings settings = Settings(0, (options & 1) != 0);
        settings.antialiasing = (options & 2) != 0;
        QCOMPARE(FloodFill(layer, QPoint(0, 0), settings).size(), 1);
        QCOMPARE(PixelOf(layer, 0, 0), RED);
    }
}

void tst_FloodFill::whatCannotBeSeenKeepsNoTiles_data()
{
    QTest::addColumn<QColor>("color");
    QTest::addColumn<double>("opacity");
    QTest::newRow("opacity 0") << QColor(Qt::red) << 0.0;
    QTest::newRow("a transparent colour") << QColor(255, 0, 0, 0) << 100.0;
    QTest::newRow("less than one level") << QColor(255, 0, 0, 2) << 10.0;
    QTest::newRow("the colour that is there") << QColor(Qt::white) << 100.0;
    QTest::newRow("no colour") << QColor() << 100.0;
}

void tst_FloodFill::whatCannotBeSeenKeepsNoTiles()
{
    QFETCH(QColor, color);
    QFETCH(double, opacity);
    QImage layer = Plain(300, 300);
    FillSettings settings = Settings();
    settings.color = color;
    settings.opacity = opacity;

    QVERIFY(FloodFill(layer, QPoint(5, 5), settings).isEmpty());
    QCOMPARE(layer, Plain(300, 300));
}

void tst_FloodFill::whatDoesNotFitDoesNothing_data()
{
    QTest::addColumn<QImage>("layer");
    QTest::addColumn<QPoint>("seed");
    QTest::addColumn<int>("tolerance");
    QTest::addColumn<double>("opacity");
    QTest::addColumn<QImage>("sampled");
    QTest::addColumn<QImage>("selection");
    const QImage layer = Plain(8, 6);
    const QImage none;
    const QPoint seed(3, 3);
    const QImage selection = Selection(layer.size(), [](int, int) { return 255; });
    QTest::newRow("no layer") << none << seed << 0 << 100.0 << none << none;
    QTest::newRow("layer of another format")
        << layer.convertToFormat(QImage::Format_RGB32) << seed << 0 << 100.0 << none << none;
    QTest::newRow("seed to the left") << layer << QPoint(-1, 3) << 0 << 100.0 << none << none;
    QTest::newRow("seed below") << layer << QPoint(3, 6) << 0 << 100.0 << none << none;
    QTest::newRow("seed far off") << layer << QPoint(INT_MAX, INT_MIN) << 0 << 100.0 << none << none;
    QTest::newRow("tolerance -1") << layer << seed << -1 << 100.0 << none << none;
    QTest::newRow("tolerance 256") << layer << seed << 256 << 100.0 << none << none;
    QTest::newRow("opacity -1") << layer << seed << 0 << -1.0 << none << none;
    QTest::newRow("opacity 101") << layer << seed << 0 << 101.0 << none << none;
    QTest::newRow("opacity not a number")
        << layer << seed << 0 << std::numeric_limits<double>::quiet_NaN() << none << none;
    QTest::newRow("opacity infinite")
        << layer << seed << 0 << std::numeric_limits<double>::infinity() << none << none;
    QTest::newRow("sampled picture too small") << layer << seed << 0 << 100.0 << Plain(7, 6) << none;
    QTest::newRow("sampled picture of another format")
        << layer << seed << 0 << 100.0 << layer.convertToFormat(QImage::Format_ARGB32) << none;
    QTest::newRow("selection too large")
        << layer << seed << 0 << 100.0 << none << Selection(QSize(8, 7), [](int, int) { return 255; });
    QTest::newRow("selection of another format")
        << layer << seed << 0 << 100.0 << none << selection.convertToFormat(QImage::Format_RGB888);
}

void tst_FloodFill::whatDoesNotFitDoesNothing()
{
    QFETCH(QImage, layer);
    QFETCH(QPoint, seed);
    QFETCH(int, tolerance);
    QFETCH(double, opacity);
    QFETCH(QImage, sampled);
    QFETCH(QImage, selection);
    FillSettings settings = Settings(tolerance);
    settings.opacity = opacity;
    settings.sampled = sampled;
    settings.selection = selection;
    const QImage before = layer.copy();

    QVERIFY(FloodFill(layer, seed, settings).isEmpty());

    QCOMPARE(layer, before);
}

void tst_FloodFill::withoutMemoryNothingIsDone()
{
    NV_SKIP_WITHOUT_SHORT_MEMORY();
    QImage layer = Plain(2000, 1200);
    QImage mask;
    bool isFilled = false;
    {
        const ShortMemory none;
        mask = FloodMask(layer, QPoint(5, 5), Settings(0));
        isFilled = !FloodFill(layer, QPoint(5, 5), Settings(0)).isEmpty();
    }

    QVERIFY(mask.isNull());
    QVERIFY(!isFilled);
    QCOMPARE(layer, Plain(2000, 1200));
    QCOMPARE(FloodMask(layer, QPoint(5, 5), Settings(0)).size(), layer.size());
}

NV_TEST_MAIN(tst_FloodFill)
#include "tst_FloodFill.moc"
