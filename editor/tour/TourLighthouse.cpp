// The tower of TourPictures.h.

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>
#include <QRadialGradient>
#include <QRandomGenerator>

#include "PictureParts.h"
#include "TourPictures.h"

namespace
{

const QSize PictureSize(1200, 800);
const double Horizon = 560;
// The tower's axis, its ends, and how far its sides are from the axis there.
const double Axis = 330;
const double Top = 210;
const double Base = 610;
const double HalfTop = 36;
const double HalfBase = 62;

double HalfWidth(double y)
{
    return HalfTop + (HalfBase - HalfTop) * (y - Top) / (Base - Top);
}

void DrawSkyAndSea(QPainter& painter, QRandomGenerator& random)
{
    QLinearGradient sky(0, 0, 0, Horizon);
    sky.setColorAt(0.0, QColor(64, 122, 188));
    sky.setColorAt(0.6, QColor(136, 184, 222));
    sky.setColorAt(1.0, QColor(214, 228, 232));
    painter.fillRect(QRectF(0, 0, PictureSize.width(), Horizon), sky);
    DrawCloudBanks(painter, PictureSize, 0.5, 10, random);
    QLinearGradient sea(0, Horizon, 0, PictureSize.height());
    sea.setColorAt(0.0, QColor(112, 164, 186));
    sea.setColorAt(0.3, QColor(52, 112, 148));
    sea.setColorAt(1.0, QColor(18, 58, 92));
    painter.fillRect(QRectF(0, Horizon, PictureSize.width(), PictureSize.height() - Horizon), sea);
    for (int i = 0; i < 240; ++i)
    {
        const double depth = random.generateDouble();
        const QPointF from(random.bounded(1200), Horizon + 4 + depth * depth * 230);
        const double length = (10 + 50 * random.generateDouble()) * (0.3 + depth);
        painter.setPen(QPen(QColor(236, 246, 250, 30 + int(60 * depth)), 0.8 + 1.6 * depth, Qt::SolidLine,
                            Qt::RoundCap));
        painter.drawLine(from, from + QPointF(length, 0));
    }
}

void DrawRock(QPainter& painter, QRandomGenerator& random)
{
    QPolygonF rock(QVector<QPointF>{{0, 800}, {0, 566}});
    for (int x = 30; x <= 560; x += 30)
        rock += QPointF(x, 604 + qMax(0, x - 400) * 0.9 - 26 * random.generateDouble());
    rock += QPointF(640, 800);
    QLinearGradient stone(0, 580, 0, 800);
    stone.setColorAt(0.0, QColor(110, 104, 92));
    stone.setColorAt(0.35, QColor(58, 54, 52));
    stone.setColorAt(1.0, QColor(20, 20, 24));
    QPainterPath path;
    path.addPolygon(rock);
    painter.setPen(Qt::NoPen);
    painter.fillPath(path, stone);
    painter.setClipPath(path);
    for (int i = 0; i < 150; ++i)
    {
        const QPointF at(random.bounded(640), 600 + random.bounded(200));
        const QPointF corners[] = {at, at + QPointF(20 + random.bounded(40), 4 + random.bounded(10)),
                                   at + QPointF(8 + random.bounded(16), 18 + random.bounded(22))};
        painter.setBrush(i % 2 ? QColor(150, 144, 130, 26) : QColor(0, 0, 0, 46));
        painter.drawConvexPolygon(corners, 3);
    }
    // Grass on the edge.
    painter.setPen(QPen(QColor(104, 132, 70), 12, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(rock.constData() + 1, rock.size() - 2);
    painter.setClipping(false);
    painter.setPen(Qt::NoPen);
}

QPainterPath TowerBand(double from, double to)
{
    QPainterPath path;
    path.addPolygon(QPolygonF(QVector<QPointF>{{Axis - HalfWidth(from), from},
                                               {Axis + HalfWidth(from), from},
                                               {Axis + HalfWidth(to), to},
                                               {Axis - HalfWidth(to), to}}));
    path.closeSubpath();
    return path;
}

QLinearGradient Round(double half, const QColor& light, const QColor& shade)
{
    QLinearGradient across(Axis - half, 0, Axis + half, 0);
    across.setColorAt(0.0, light.darker(112));
    across.setColorAt(0.28, light);
    across.setColorAt(1.0, shade);
    return across;
}

void DrawTower(QPainter& painter)
{
    painter.fillPath(TowerBand(Top, Base), Round(HalfBase, QColor(250, 248, 242), QColor(128, 136, 148)));
    for (int stripe = 0; stripe < 3; ++stripe)
    {
        const double from = Top + 50 + stripe * 130;
        painter.fillPath(TowerBand(from, from + 66),
                         Round(HalfBase, QColor(222, 66, 56), QColor(116, 26, 28)));
    }
    painter.setBrush(QColor(44, 52, 64));
    for (double y : {Top + 24, Top + 148, Top + 278})
        painter.drawRoundedRect(QRectF(Axis - 8, y, 16, 24), 8, 8);
    painter.setBrush(QColor(74, 50, 36));
    painter.drawRoundedRect(QRectF(Axis - 15, Base - 48, 30, 54), 14, 14);
}

void DrawLantern(QPainter& painter)
{
    painter.setBrush(QColor(48, 56, 66));
    painter.drawRoundedRect(QRectF(Axis - 52, Top - 12, 104, 14), 4, 4);
    const QPointF lamp(Axis, Top - 42);
    QRadialGradient glow(lamp, 40);
    glow.setColorAt(0.0, QColor(255, 252, 220));
    glow.setColorAt(0.5, QColor(255, 228, 140));
    glow.setColorAt(1.0, QColor(150, 170, 180));
    painter.setBrush(glow);
    painter.drawRect(QRectF(Axis - 27, Top - 66, 54, 54));
    painter.setPen(QPen(QColor(48, 56, 66), 3));
    for (double x : {-27.0, -9.0, 9.0, 27.0})
        painter.drawLine(QPointF(Axis + x, Top - 66), QPointF(Axis + x, Top - 12));
    for (int post = -4; post <= 4; ++post)
        painter.drawLine(QPointF(Axis + post * 12.5, Top - 30), QPointF(Axis + post * 12.5, Top - 12));
    painter.drawLine(QPointF(Axis - 50, Top - 30), QPointF(Axis + 50, Top - 30));
    painter.setPen(Qt::NoPen);
    QPainterPath roof(QPointF(Axis - 36, Top - 64));
    roof.cubicTo(Axis - 30, Top - 104, Axis + 30, Top - 104, Axis + 36, Top - 64);
    roof.closeSubpath();
    painter.fillPath(roof, Round(36, QColor(206, 60, 52), QColor(104, 24, 26)));
    painter.setBrush(QColor(48, 56, 66));
    painter.drawEllipse(QPointF(Axis, Top - 98), 5, 5);
}

} // namespace

LighthousePicture DrawLighthouse()
{
    LighthousePicture lighthouse;
    lighthouse.image = QImage(PictureSize, QImage::Format_RGB32);
    lighthouse.lamp = QPointF(Axis, Top - 42);
    lighthouse.foot = QPointF(Axis, Base);
    for (int stripe = 0; stripe < 3; ++stripe)
    {
        const double from = Top + 50 + stripe * 130;
        lighthouse.stripes += {QPointF(Axis - 25, from), QPointF(Axis - 25, from + 66)};
    }
    lighthouse.sky = QPointF(1010, 440);
    lighthouse.rock = QPointF(200, 720);
    QRandomGenerator random(44);
    QPainter painter(&lighthouse.image);
    painter.setRenderHint(QPainter::Antialiasing);
    DrawSkyAndSea(painter, random);
    DrawRock(painter, random);
    DrawTower(painter);
    DrawLantern(painter);
    painter.end();
    return lighthouse;
}
