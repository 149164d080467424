#include "ColorSampling.h"

#include <QRect>
#include <QRgb>

QColor SampleColor(const QImage& picture, const QPoint& pixel, int side)
{
    if (!picture.rect().contains(pixel))
        return QColor();
    const int reach = qMax(0, side / 2);
    const QRect square = QRect(pixel, pixel).adjusted(-reach, -reach, reach, reach) & picture.rect();
    int red = 0;
    int green = 0;
    int blue = 0;
    int alpha = 0;
    for (int y = square.top(); y <= square.bottom(); ++y)
    {
        const auto* row = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        for (int x = square.left(); x <= square.right(); ++x)
        {
            red += qRed(row[x]);
            green += qGreen(row[x]);
            blue += qBlue(row[x]);
            alpha += qAlpha(row[x]);
        }
    }
    if (alpha == 0)
        return QColor(0, 0, 0, 0);
    const auto channel = [alpha](int sum) { return qMin(255, (sum * 255 + alpha / 2) / alpha); };
    const int pixels = square.width() * square.height();
    return QColor(channel(red), channel(green), channel(blue), (alpha + pixels / 2) / pixels);
}
