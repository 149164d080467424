#include "SmallPicture.h"

namespace
{

// Along each side of a pixel that is made.
const int Samples = 4;

int Source(int sample, int length, int samples)
{
    return int((2 * qint64(sample) + 1) * length / (2 * qint64(samples)));
}

// The mean of the samples that fall on the pixel.
QRgb Mean(const QImage& picture, const QSize& size, int x, int y)
{
    int sums[4] = {};
    for (int row = 0; row < Samples; ++row)
    {
        const int line = Source(y * Samples + row, picture.height(), size.height() * Samples);
        const auto* pixels = reinterpret_cast<const QRgb*>(picture.constScanLine(line));
        for (int column = 0; column < Samples; ++column)
        {
            const QRgb pixel = pixels[Source(x * Samples + column, picture.width(), size.width() * Samples)];
            sums[0] += qRed(pixel);
            sums[1] += qGreen(pixel);
            sums[2] += qBlue(pixel);
            sums[3] += qAlpha(pixel);
        }
    }
    const auto mean = [](int sum) { return (sum + Samples * Samples / 2) / (Samples * Samples); };
    return qRgba(mean(sums[0]), mean(sums[1]), mean(sums[2]), mean(sums[3]));
}

} // namespace

QImage SmallPicture(const QImage& picture, int side)
{
    if (picture.isNull() || side < 1)
        return QImage();
    const QSize size = picture.size().scaled(side, side, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
    QImage small(size, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < size.height(); ++y)
    {
        auto* row = reinterpret_cast<QRgb*>(small.scanLine(y));
        for (int x = 0; x < size.width(); ++x)
            row[x] = Mean(picture, size, x, y);
    }
    return small;
}
