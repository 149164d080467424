// A whole document in another size: known results, a straightforward computation beside it, and what holds
// for every picture.

#include "ResampleLayers.h"

#include <QRandomGenerator>
#include <QTest>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <vector>

#include "BusyThreads.h"
#include "TestMain.h"

Q_DECLARE_METATYPE(Resampling)

namespace
{

const Resampling Ways[] = {Resampling::Nearest, Resampling::Bilinear, Resampling::Bicubic};

QRgb& At(QImage& image, int x, int y)
{
    return reinterpret_cast<QRgb*>(image.scanLine(y))[x];
}

QRgb At(const QImage& image, int x, int y)
{
    return reinterpret_cast<const QRgb*>(image.constScanLine(y))[x];
}

QImage Plain(const QSize& size, QRgb pixel)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < size.height(); ++y)
        std::fill_n(&At(image, 0, y), size.width(), pixel);
    return image;
}

// Premultiplied pixels of every opacity.
QImage Noise(const QSize& size, quint32 seed)
{
    QRandomGenerator random(seed);
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < size.height(); ++y)
    {
        for (int x = 0; x < size.width(); ++x)
        {
            const int alpha = random.bounded(3) == 0 ? 255 : random.bounded(256);
            At(image, x, y) =
                qRgba(random.bounded(alpha + 1), random.bounded(alpha + 1), random.bounded(alpha + 1), alpha);
        }
    }
    return image;
}

QImage Row(const std::vector<int>& greys)
{
    QImage image(int(greys.size()), 1, QImage::Format_ARGB32_Premultiplied);
    for (int x = 0; x < image.width(); ++x)
        At(image, x, 0) = qRgb(greys[size_t(x)], greys[size_t(x)], greys[size_t(x)]);
    return image;
}

std::vector<int> Greys(const QImage& row)
{
    std::vector<int> greys;
    for (int x = 0; x < row.width(); ++x)
        greys.push_back(qRed(At(row, x, 0)));
    return greys;
}

PictureContents Of(const QImage& image)
{
    PictureContents contents;
    contents.layers = {image};
    return contents;
}

QImage Resampled(const QImage& image, const QSize& size, Resampling way)
{
    const PictureContents contents = ResampleContents(Of(image), size, way);
    return contents.layers.isEmpty() ? QImage() : contents.layers.constFirst();
}

// The same with floating-point numbers, one value after the other.
using Line = std::vector<double>;

double Limited(const Line& line, int i)
{
    return line[size_t(qBound(0, i, int(line.size()) - 1))];
}

double CubicWeight(double distance)
{
    const double a = -0.75;
    const double x = std::abs(distance);
    if (x <= 1)
        return (a + 2) * x * x * x - (a + 3) * x * x + 1;
    return x < 2 ? a * x * x * x - 5 * a * x * x + 8 * a * x - 4 * a : 0;
}

Line MeansOf(const Line& line, int length)
{
    Line result;
    const double scale = double(line.size()) / length;
    for (int i = 0; i < length; ++i)
    {
        double sum = 0;
        for (int s = 0; s < int(line.size()); ++s)
            sum += line[size_t(s)] * qMax(0.0, qMin(s + 1.0, (i + 1) * scale) - qMax<double>(s, i * scale));
        result.push_back(sum / scale);
    }
    return result;
}

Line InLength(const Line& line, int length, Resampling way)
{
    const double scale = double(line.size()) / length;
    Line result;
    for (int i = 0; i < length; ++i)
    {
        const double place = (i + 0.5) * scale - 0.5;
        const int left = int(std::floor(place));
        double value = 0;
        if (way == Resampling::Bilinear)
            value = Limited(line, left) * (1 - (place - left)) + Limited(line, left + 1) * (place - left);
        else
        {
            for (int s = left - 1; s <= left + 2; ++s)
                value += Limited(line, s) * CubicWeight(place - s);
        }
        result.push_back(qBound(0.0, value, 255.0));
    }
    return result;
}

Line Stretched(Line line, int length, Resampling way)
{
    const int whole = int(line.size()) / length;
    if (whole >= 2)
        line = MeansOf(line, (int(line.size()) + whole - 1) / whole);
    return int(line.size()) == length ? line : InLength(line, length, way);
}

// One channel as rows.
using Channel = std::vector<Line>;

Channel Turned(const Channel& channel)
{
    Channel turned(channel.front().size(), Line(channel.size()));
    for (size_t y = 0; y < channel.size(); ++y)
    {
        for (size_t x = 0; x < channel[y].size(); ++x)
            turned[x][y] = channel[y][x];
    }
    return turned;
}

Channel Wide(Channel channel, int width, Resampling way)
{
    for (Line& line : channel)
        line = Stretched(line, width, way);
    return channel;
}

Channel Reference(const Channel& channel, const QSize& size, Resampling way)
{
    const double byWidth = double(size.width()) / double(channel.front().size());
    const double byHeight = double(size.height()) / double(channel.size());
    if (byWidth < byHeight || (byWidth == byHeight && byWidth < 1))
        return Turned(Wide(Turned(Wide(channel, size.width(), way)), size.height(), way));
    return Wide(Turned(Wide(Turned(channel), size.height(), way)), size.width(), way);
}

Channel ChannelOf(const QImage& image, int shift)
{
    Channel channel(size_t(image.height()), Line(size_t(image.width())));
    for (int y = 0; y < image.height(); ++y)
    {
        for (int x = 0; x < image.width(); ++x)
            channel[size_t(y)][size_t(x)] = (At(image, x, y) >> shift) & 0xff;
    }
    return channel;
}

// The largest difference from the reference; bicubic colours are cut at the opacity.
double DifferenceFromReference(const QImage& image, const QImage& result, Resampling way)
{
    const Channel alpha = Reference(ChannelOf(image, 24), result.size(), way);
    double worst = 0;
    for (const int shift : {0, 8, 16, 24})
    {
        const Channel channel = Reference(ChannelOf(image, shift), result.size(), way);
        for (int y = 0; y < result.height(); ++y)
        {
            for (int x = 0; x < result.width(); ++x)
            {
                const double expected = qMin(channel[size_t(y)][size_t(x)], alpha[size_t(y)][size_t(x)]);
                worst = qMax(worst, std::abs(expected - ((At(result, x, y) >> shift) & 0xff)));
            }
        }
    }
    return worst;
}

bool IsPremultiplied(const QImage& image)
{
    for (int y = 0; y < image.height(); ++y)
    {
        for (int x = 0; x < image.width(); ++x)
        {
            const QRgb pixel = At(image, x, y);
            if (qMax(qRed(pixel), qMax(qGreen(pixel), qBlue(pixel))) > qAlpha(pixel))
                return false;
        }
    }
    return true;
}

void AddWays()
{
    QTest::addColumn<Resampling>("way");
    QTest::newRow("nearest") << Resampling::Nearest;
    QTest::newRow("bilinear") << Resampling::Bilinear;
    QTest::newRow("bicubic") << Resampling::Bicubic;
}

} // namespace

class tst_ResampleLayers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theSameSizeKeepsEachPixel_data() { AddWays(); }
    void theSameSizeKeepsEachPixel()
    {
        QFETCH(Resampling, way);
        const QImage image = Noise(QSize(37, 23), 1);

        QCOMPARE(Resampled(image, image.size(), way), image);
    }

    void nearestRepeatsPixels()
    {
        QCOMPARE(Greys(Resampled(Row({10, 20, 30}), QSize(6, 2), Resampling::Nearest)),
                 std::vector<int>({10, 10, 20, 20, 30, 30}));
    }

    void nearestTakesThePixelInTheMiddle()
    {
        QCOMPARE(Greys(Resampled(Row({0, 1, 2, 3, 4, 5, 6, 7, 8}), QSize(3, 1), Resampling::Nearest)),
                 std::vector<int>({1, 4, 7}));
    }

    void bilinearMixesNeighboursByTheirDistance()
    {
        QCOMPARE(Greys(Resampled(Row({0, 200}), QSize(4, 1), Resampling::Bilinear)),
                 std::vector<int>({0, 50, 150, 200}));
    }

    void bicubicSwingsBeyondAnEdge()
    {
        const std::vector<int> greys =
            Greys(Resampled(Row({100, 100, 100, 200, 200, 200}), QSize(12, 1), Resampling::Bicubic));

        // 100 + 100 * (weights of the pixels behind the edge), by hand at the quarters between two pixels.
        QCOMPARE(greys, std::vector<int>({100, 100, 100, 96, 89, 123, 177, 211, 204, 200, 200, 200}));
    }

    void aLargePictureBecomesItsMean_data() { AddWays(); }
    void aLargePictureBecomesItsMean()
    {
        QFETCH(Resampling, way);
        if (way == Resampling::Nearest)
            QSKIP("This way takes single pixels.");
        QImage checker(64, 64, QImage::Format_ARGB32_Premultiplied);
        for (int y = 0; y < 64; ++y)
        {
            for (int x = 0; x < 64; ++x)
                At(checker, x, y) = (x + y) % 2 == 0 ? qRgb(255, 255, 255) : qRgb(0, 0, 0);
        }

        const QImage small = Resampled(checker, QSize(9, 5), way);

        for (int y = 0; y < small.height(); ++y)
        {
            for (int x = 0; x < small.width(); ++x)
                QVERIFY2(qAbs(qRed(At(small, x, y)) - 128) <= 12, qPrintable(QString::number(x)));
        }
    }

    void oneColourStaysThatColour_data() { AddWays(); }
    void oneColourStaysThatColour()
    {
        QFETCH(Resampling, way);
        QRandomGenerator random(2);
        for (int i = 0; i < 60; ++i)
        {
            const QSize from(1 + random.bounded(70), 1 + random.bounded(70));
            const QSize to(1 + random.bounded(150), 1 + random.bounded(150));
            const QRgb pixel = qPremultiply(random.generate());

            QCOMPARE(Resampled(Plain(from, pixel), to, way), Plain(to, pixel));
        }
    }

    void whiteBesideNothingStaysWhite_data() { AddWays(); }
    void whiteBesideNothingStaysWhite()
    {
        QFETCH(Resampling, way);
        QImage image = Plain(QSize(40, 40), 0);
        for (int y = 10; y < 30; ++y)
            std::fill_n(&At(image, 10, y), 20, qRgb(255, 255, 255));

        for (const QSize& size : {QSize(100, 97), QSize(40, 81), QSize(31, 33), QSize(13, 7), QSize(90, 9)})
        {
            const QImage result = Resampled(image, size, way);
            for (int y = 0; y < size.height(); ++y)
            {
                for (int x = 0; x < size.width(); ++x)
                {
                    // A darker one would be a fringe on any ground.
                    const QRgb pixel = At(result, x, y);
                    QCOMPARE(pixel, qRgba(qAlpha(pixel), qAlpha(pixel), qAlpha(pixel), qAlpha(pixel)));
                }
            }
        }
    }

    void noColourIsAboveItsOpacity_data() { AddWays(); }
    void noColourIsAboveItsOpacity()
    {
        QFETCH(Resampling, way);
        for (const QSize& size : {QSize(111, 130), QSize(50, 21), QSize(17, 200), QSize(60, 61)})
            QVERIFY(IsPremultiplied(Resampled(Noise(QSize(60, 60), 3), size, way)));
    }

    void nearestTakesNoPixelThatLiesFurtherOff()
    {
        QRandomGenerator random(4);
        for (int i = 0; i < 100; ++i)
        {
            const int from = 1 + random.bounded(200);
            const int to = 1 + random.bounded(400);
            std::vector<int> numbers;
            for (int n = 0; n < from; ++n)
                numbers.push_back(n);

            const std::vector<int> taken = Greys(Resampled(Row(numbers), QSize(to, 1), Resampling::Nearest));

            for (int n = 0; n < to; ++n)
            {
                // Where two lie at the same distance, either will do.
                const double place = (n + 0.5) * from / to;
                QVERIFY(taken[size_t(n)] <= place + 0.01 && taken[size_t(n)] + 1 >= place - 0.01);
            }
        }
    }

    void itIsWhatAStraightforwardComputationGives_data()
    {
        QTest::addColumn<Resampling>("way");
        QTest::newRow("bilinear") << Resampling::Bilinear;
        QTest::newRow("bicubic") << Resampling::Bicubic;
    }
    void itIsWhatAStraightforwardComputationGives()
    {
        QFETCH(Resampling, way);
        QRandomGenerator random(4);
        for (int i = 0; i < 40; ++i)
        {
            const QImage image =
                Noise(QSize(1 + random.bounded(90), 1 + random.bounded(90)), random.generate());
            const QSize size(1 + random.bounded(140), 1 + random.bounded(140));

            const QImage result = Resampled(image, size, way);

            QCOMPARE(result.size(), size);
            // Each of up to four passes rounds, and bicubic adds to what was rounded.
            const double difference = DifferenceFromReference(image, result, way);
            QVERIFY2(difference <= 2.5,
                     qPrintable(QString("%1 by %2 to %3 by %4: off by %5")
                                    .arg(image.width())
                                    .arg(image.height())
                                    .arg(size.width())
                                    .arg(size.height())
                                    .arg(difference)));
        }
    }

    void extremeShapesGoBothWays_data() { AddWays(); }
    void extremeShapesGoBothWays()
    {
        QFETCH(Resampling, way);
        const QRgb pixel = qRgba(20, 60, 10, 90);
        for (const QSize& size : {QSize(10000, 1), QSize(1, 10000), QSize(1, 1)})
        {
            QCOMPARE(Resampled(Plain(QSize(1, 1), pixel), size, way), Plain(size, pixel));
            QCOMPARE(Resampled(Plain(size, pixel), QSize(3, 2), way), Plain(QSize(3, 2), pixel));
        }
    }

    void allLayersAndTheSelectionGoAlong()
    {
        PictureContents before;
        before.layers = {Noise(QSize(40, 30), 5), Plain(QSize(40, 30), qRgb(1, 2, 3)),
                         Noise(QSize(40, 30), 6)};
        before.selection = QImage(40, 30, QImage::Format_Grayscale8);
        before.selection.fill(0);
        for (int y = 0; y < 30; ++y)
            std::fill_n(before.selection.scanLine(y), 20, uchar(255));

        const PictureContents after = ResampleContents(before, QSize(80, 60), Resampling::Bilinear);

        QCOMPARE(after.layers.size(), 3);
        for (int i = 0; i < 3; ++i)
            QCOMPARE(after.layers.at(i), Resampled(before.layers.at(i), QSize(80, 60), Resampling::Bilinear));
        QCOMPARE(after.selection.size(), QSize(80, 60));
        QCOMPARE(after.selection.format(), QImage::Format_Grayscale8);
        const uchar* line = after.selection.constScanLine(30);
        QCOMPARE(std::vector<int>(line + 38, line + 42), std::vector<int>({255, 191, 64, 0}));
    }

    void aSelectionThatVanishesIsNone()
    {
        PictureContents before = Of(Plain(QSize(100, 100), 0xffffffff));
        before.selection = QImage(100, 100, QImage::Format_Grayscale8);
        before.selection.fill(0);
        before.selection.scanLine(3)[3] = 255;

        const PictureContents after = ResampleContents(before, QSize(2, 2), Resampling::Nearest);

        QCOMPARE(after.layers.size(), 1);
        QVERIFY(after.selection.isNull());
    }

    void theProgressReachesTheEnd()
    {
        std::atomic<int> highest{0};
        std::atomic<bool> isOutside{false};
        const auto progress = [&](int percent)
        {
            isOutside = isOutside || percent < 0 || percent > 100;
            for (int seen = highest; percent > seen && !highest.compare_exchange_weak(seen, percent);)
            {
            }
            return true;
        };

        ResampleContents(Of(Noise(QSize(300, 300), 7)), QSize(100, 700), Resampling::Bicubic, progress);

        QCOMPARE(highest.load(), 100);
        QVERIFY(!isOutside);
    }

    void cancelledItGivesNothing_data()
    {
        QTest::addColumn<int>("after");
        QTest::newRow("at once") << 1;
        QTest::newRow("in the second pass") << 3;
        QTest::newRow("in the second layer") << 10;
        QTest::newRow("in the selection") << 15;
    }

    void cancelledItGivesNothing()
    {
        QFETCH(int, after);
        PictureContents before;
        before.layers = {Noise(QSize(300, 300), 8), Noise(QSize(300, 300), 9)};
        before.selection = QImage(300, 300, QImage::Format_Grayscale8);
        before.selection.fill(255);
        std::atomic<int> calls{0};

        const PictureContents contents = ResampleContents(before, QSize(350, 350), Resampling::Bilinear,
                                                          [&calls, after](int) { return ++calls < after; });

        QVERIFY(calls >= after);
        QVERIFY(contents.layers.isEmpty());
        QVERIFY(contents.selection.isNull());
    }

    void theNumberOfThreadsChangesNothing()
    {
        const QImage image = Noise(QSize(500, 400), 10);
        for (const Resampling way : Ways)
        {
            const QImage one = Resampled(image, QSize(333, 777), way);
            const BusyThreads busy;
            QCOMPARE(Resampled(image, QSize(333, 777), way), one);
        }
    }

    void anEmptySizeGivesNothing()
    {
        for (const QSize& size : {QSize(), QSize(0, 5), QSize(5, 0), QSize(-3, 4)})
            QVERIFY(ResampleContents(Of(Noise(QSize(9, 9), 11)), size, Resampling::Bicubic).layers.isEmpty());
        QVERIFY(ResampleContents(PictureContents(), QSize(4, 4), Resampling::Bicubic).layers.isEmpty());
    }
};

NV_TEST_MAIN(tst_ResampleLayers)

#include "tst_ResampleLayers.moc"
