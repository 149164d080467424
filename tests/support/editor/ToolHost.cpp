#include "ToolHost.h"

QImage PlainPicture(const QColor& color, const QSize& size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    return image;
}

QImage BusyPicture(const QSize& size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < size.height(); ++y)
    {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < size.width(); ++x)
            line[x] = qRgb(40 + (x * 37 + y * 11) % 160, 40 + (x * 5 + y * 53) % 160, 40 + (x * y) % 160);
    }
    return image;
}

QRect DifferenceOf(const QImage& one, const QImage& other)
{
    QRect area;
    for (int y = 0; y < one.height(); ++y)
    {
        for (int x = 0; x < one.width(); ++x)
        {
            if (one.pixel(x, y) != other.pixel(x, y))
                area |= QRect(x, y, 1, 1);
        }
    }
    return area;
}
