#include "HistogramCount_p.h"

#include <QVector>
#include <QtConcurrent>

namespace
{

// A piece of work that is worth handing to a thread, and that a cancel may wait for.
const int BandPixels = 1 << 18;

void addTable(LevelCounts::Table& sum, const LevelCounts::Table& more)
{
    for (size_t level = 0; level < sum.size(); ++level)
        sum[level] += more[level];
}

void countColors(LevelCounts& counts, QRgb color)
{
    ++counts.red[size_t(qRed(color))];
    ++counts.green[size_t(qGreen(color))];
    ++counts.blue[size_t(qBlue(color))];
}

void countLuminance(LevelCounts& counts, QRgb color)
{
    ++counts.luminance[size_t(qGray(color))];
}

// Neighbours are mostly alike. Counted into one table, each would wait until the one before is written.
template <class Count>
void countRow(LevelCounts& even, LevelCounts& odd, const QRgb* row, int width, Count count)
{
    LevelCounts* tables[2] = {&even, &odd};
    for (int x = 0; x < width; ++x)
    {
        const QRgb pixel = row[x];
        const int alpha = qAlpha(pixel);
        if (alpha == 255)
            count(*tables[x & 1], pixel);
        else if (alpha != 0)
            count(*tables[x & 1], qUnpremultiply(pixel));
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

    LevelCounts operator()(const Band& band) const
    {
        return CountLevels(image, band.firstRow, band.rows, source);
    }

    QImage image;
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
    LevelCounts even;
    LevelCounts odd;
    for (int y = firstRow; y < firstRow + rows; ++y)
    {
        const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        if (source == LevelSource::Colors)
            countRow(even, odd, row, image.width(), countColors);
        else
            countRow(even, odd, row, image.width(), countLuminance);
    }
    return even += odd;
}

QFuture<LevelCounts> CountLevelsAside(const QImage& image, LevelSource source)
{
    const int bandRows = qMax(1, BandPixels / qMax(1, image.width()));
    QVector<Band> bands;
    for (int y = 0; y < image.height(); y += bandRows)
        bands.append({y, qMin(bandRows, image.height() - y)});
    return QtConcurrent::mapped(bands, BandCount{image, source});
}
