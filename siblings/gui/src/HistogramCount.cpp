#include "HistogramCount_p.h"

#include <QVector>
#include <QtConcurrent>

#include <functional>
#include <numeric>

namespace
{

// A piece of work that is worth handing to a thread, and that a cancel may wait for.
const int BandPixels = 1 << 18;

void addTable(LevelCounts::Table& sum, const LevelCounts::Table& more)
{
    for (size_t level = 0; level < sum.size(); ++level)
        sum[level] += more[level];
}

// Neighbours are mostly alike. Counted into one table, each would wait until the one before is written: so
// they take turns.
const int Lanes = 4;
// What is looked at in one go.
const int BlockPixels = 512;

struct ChannelCount
{
    LevelCounts::Table Sum() const
    {
        LevelCounts::Table sum = {};
        for (const LevelCounts::Table& lane : lanes)
            addTable(sum, lane);
        return sum;
    }

    std::array<LevelCounts::Table, Lanes> lanes = {};
    // Were the next channel whole memory pages away, a grey pixel's counts would wait for each other.
    std::array<qint32, 16> apart = {};
};

struct ImageCount
{
    ChannelCount red;
    ChannelCount green;
    ChannelCount blue;
    ChannelCount luminance;
};

template <class Count>
void inTurns(int count, Count one)
{
    int i = 0;
    for (; i + Lanes <= count; i += Lanes)
    {
        for (int lane = 0; lane < Lanes; ++lane)
            one(size_t(lane), i + lane);
    }
    for (; i < count; ++i)
        one(0, i);
}

void countColors(ImageCount& sum, const QRgb* colors, int count)
{
    inTurns(count,
            [&sum, colors](size_t lane, int i)
            {
                ++sum.red.lanes[lane][size_t(qRed(colors[i]))];
                ++sum.green.lanes[lane][size_t(qGreen(colors[i]))];
                ++sum.blue.lanes[lane][size_t(qBlue(colors[i]))];
            });
}

void countLuminance(ImageCount& sum, const QRgb* colors, int count)
{
    // Apart from the counting, the processor does many at once.
    std::array<quint8, BlockPixels> levels;
    for (int i = 0; i < count; ++i)
        levels[size_t(i)] = quint8(qGray(colors[i]));
    inTurns(count, [&sum, &levels](size_t lane, int i) { ++sum.luminance.lanes[lane][levels[size_t(i)]]; });
}

bool areOpaque(const QRgb* pixels, int count)
{
    const QRgb all = std::accumulate(pixels, pixels + count, ~QRgb(0), std::bit_and<QRgb>());
    return qAlpha(all) == 255;
}

// The colours of the pixels that are not wholly transparent, and how many they are.
int straightColors(QRgb* colors, const QRgb* pixels, int count)
{
    int seen = 0;
    for (int i = 0; i < count; ++i)
    {
        if (qAlpha(pixels[i]) != 0)
            colors[seen++] = qUnpremultiply(pixels[i]);
    }
    return seen;
}

template <class Count>
void countRow(ImageCount& sum, const QRgb* row, int width, Count count)
{
    std::array<QRgb, BlockPixels> colors;
    for (int x = 0; x < width; x += BlockPixels)
    {
        const int pixels = qMin(BlockPixels, width - x);
        if (areOpaque(row + x, pixels))
            count(sum, row + x, pixels);
        else
            count(sum, colors.data(), straightColors(colors.data(), row + x, pixels));
    }
}

struct Band
{
    int firstRow;
    int rows;
};

struct BandCount
{
    using result_type = LevelCounts;

    LevelCounts operator()(const Band& band) const { return image->Count(band.firstRow, band.rows, source); }

    std::shared_ptr<CountedImage> image;
    LevelSource source;
};

} // namespace

LevelCounts& LevelCounts::operator+=(const LevelCounts& other)
{
    addTable(red, other.red);
    addTable(green, other.green);
    addTable(blue, other.blue);
    addTable(luminance, other.luminance);
    return *this;
}

LevelCounts CountLevels(const QImage& image, int firstRow, int rows, LevelSource source)
{
    ImageCount sum;
    for (int y = firstRow; y < firstRow + rows; ++y)
    {
        const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        if (source == LevelSource::Colors)
            countRow(sum, row, image.width(), countColors);
        else
            countRow(sum, row, image.width(), countLuminance);
    }
    return {sum.red.Sum(), sum.green.Sum(), sum.blue.Sum(), sum.luminance.Sum()};
}

CountedImage::CountedImage(const QImage& image) : m_size(image.size()), m_image(image) { }

LevelCounts CountedImage::Count(int firstRow, int rows, LevelSource source)
{
    const QReadLocker lock(&m_lock);
    return m_image.isNull() ? LevelCounts() : CountLevels(m_image, firstRow, rows, source);
}

void CountedImage::Drop()
{
    const QWriteLocker lock(&m_lock);
    m_image = QImage();
}

QSize CountedImage::GetSize() const
{
    return m_size;
}

QFuture<LevelCounts> CountLevelsAside(const std::shared_ptr<CountedImage>& image, LevelSource source)
{
    const QSize size = image->GetSize();
    const int bandRows = qMax(1, BandPixels / qMax(1, size.width()));
    QVector<Band> bands;
    for (int y = 0; y < size.height(); y += bandRows)
        bands.append({y, qMin(bandRows, size.height() - y)});
    return QtConcurrent::mapped(bands, BandCount{image, source});
}
