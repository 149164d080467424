#include "PictureParts.h"

#include <QImage>
#include <QPainter>
#include <QRadialGradient>
#include <QRandomGenerator>

#include <cmath>

void DrawCloudBanks(QPainter& painter, const QSizeF& size, double horizon, int banks,
                    QRandomGenerator& random)
{
    painter.setPen(Qt::NoPen);
    for (int bank = 0; bank < banks; ++bank)
    {
        const double x = random.generateDouble() * size.width();
        const double y = horizon * (0.15 + 0.65 * random.generateDouble()) * size.height();
        const double reach = (0.05 + 0.09 * random.generateDouble()) * size.width();
        for (int puff = 0; puff < 26; ++puff)
        {
            const double side = 2 * random.generateDouble() - 1;
            const double radius = reach * (0.32 - 0.2 * std::abs(side)) * (0.5 + random.generateDouble());
            const QPointF center(x + side * reach, y - radius * 0.18 * random.generateDouble());
            QRadialGradient soft(center, radius);
            soft.setColorAt(0.0, QColor(255, 250, 242, 46));
            soft.setColorAt(1.0, QColor(255, 244, 232, 0));
            painter.setBrush(soft);
            painter.drawEllipse(center, radius, radius * 0.42);
        }
    }
}

void AddGrain(QImage& image, int strength, quint32 seed)
{
    quint32 state = seed | 1;
    for (int y = 0; y < image.height(); ++y)
    {
        QRgb* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x)
        {
            state ^= state << 13;
            state ^= state >> 17;
            state ^= state << 5;
            const int grain = (int(state >> 28) + int((state >> 24) & 15) - 15) * strength / 15;
            const auto moved = [grain](int channel) { return qBound(0, channel + grain, 255); };
            line[x] =
                qRgba(moved(qRed(line[x])), moved(qGreen(line[x])), moved(qBlue(line[x])), qAlpha(line[x]));
        }
    }
}
