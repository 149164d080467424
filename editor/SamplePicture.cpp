#include "SamplePicture.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <QRandomGenerator>

#include <cmath>

#include "PictureParts.h"

namespace
{

// One chain of hills: all lengths are parts of the picture's height, wave lengths of its width.
struct Ridge
{
    double base;
    double height;
    double waves;
    double phase;
    QColor top;
    QColor foot;
};

double RidgeLine(const Ridge& ridge, double x)
{
    const double t = x * ridge.waves * 2 * M_PI + ridge.phase;
    const double wave = 0.55 * std::sin(t) + 0.25 * std::sin(2.3 * t + 1.1) + 0.13 * std::sin(5.7 * t + 0.4) +
        0.05 * std::sin(17.0 * t) + 0.02 * std::sin(53.0 * t + 2.0);
    return ridge.base - ridge.height * wave;
}

void DrawSky(QPainter& painter, const QSize& size)
{
    QLinearGradient sky(0, 0, 0, size.height() * 0.72);
    sky.setColorAt(0.0, QColor(38, 72, 132));
    sky.setColorAt(0.45, QColor(120, 158, 205));
    sky.setColorAt(0.8, QColor(246, 205, 160));
    sky.setColorAt(1.0, QColor(252, 228, 190));
    painter.fillRect(QRect(QPoint(), size), sky);

    const QPointF sun(size.width() * 0.68, size.height() * 0.40);
    QRadialGradient glow(sun, size.height() * 0.5);
    glow.setColorAt(0.0, QColor(255, 246, 214, 255));
    glow.setColorAt(0.085, QColor(255, 240, 196, 255));
    glow.setColorAt(0.1, QColor(255, 226, 160, 150));
    glow.setColorAt(1.0, QColor(255, 214, 150, 0));
    painter.fillRect(QRect(QPoint(), size), glow);
}

void DrawRidge(QPainter& painter, const QSize& size, const Ridge& ridge)
{
    QPainterPath path(QPointF(0, size.height()));
    const int steps = qMin(size.width(), 1600);
    for (int i = 0; i <= steps; ++i)
    {
        const double x = double(i) / steps;
        path.lineTo(x * size.width(), RidgeLine(ridge, x) * size.height());
    }
    path.lineTo(size.width(), size.height());
    path.closeSubpath();
    QLinearGradient slope(0, (ridge.base - ridge.height) * size.height(), 0,
                          (ridge.base + 2.2 * ridge.height) * size.height());
    slope.setColorAt(0.0, ridge.top);
    slope.setColorAt(1.0, ridge.foot);
    painter.fillPath(path, slope);
}

void DrawTrees(QPainter& painter, const QSize& size, const Ridge& ridge, QRandomGenerator& random)
{
    painter.setPen(Qt::NoPen);
    for (int i = 0; i < 420; ++i)
    {
        const double x = random.generateDouble();
        const double depth = random.generateDouble();
        const double height = (0.018 + 0.04 * depth) * size.height();
        const double foot = (RidgeLine(ridge, x) + 0.01 + 0.2 * depth * depth) * size.height();
        const double middle = x * size.width();
        painter.setBrush(QColor(18 + int(14 * depth), 44 + int(26 * random.generateDouble()), 34));
        for (int tier = 0; tier < 3; ++tier)
        {
            const double low = foot - height * 0.27 * tier;
            const double half = height * (0.26 - 0.06 * tier);
            const QPointF corners[] = {
                {middle - half, low}, {middle + half, low}, {middle, low - height * 0.45}};
            painter.drawConvexPolygon(corners, 3);
        }
    }
}

} // namespace

QImage DrawSamplePicture(const QSize& size)
{
    if (size.isEmpty())
        return QImage();
    QImage image(size, QImage::Format_RGB32);
    if (image.isNull())
        return image;
    const Ridge ridges[] = {
        {0.56, 0.060, 1.3, 0.6, QColor(128, 148, 184), QColor(196, 190, 196)},
        {0.63, 0.055, 1.9, 2.4, QColor(92, 116, 148), QColor(152, 160, 160)},
        {0.72, 0.050, 1.1, 4.4, QColor(64, 96, 96), QColor(104, 132, 104)},
        {0.83, 0.045, 0.8, 1.2, QColor(58, 92, 56), QColor(26, 50, 34)},
    };
    QRandomGenerator random(20);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    DrawSky(painter, size);
    DrawCloudBanks(painter, size, 0.4, 9, random);
    for (const Ridge& ridge : ridges)
        DrawRidge(painter, size, ridge);
    DrawTrees(painter, size, ridges[3], random);
    painter.end();
    AddGrain(image, 7, random.generate());
    return image;
}
