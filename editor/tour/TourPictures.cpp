#include "TourPictures.h"

#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>
#include <QRandomGenerator>

#include <cmath>

#include "PictureParts.h"
#include "SamplePicture.h"

namespace
{

const QSize PictureSize(1200, 800);

QImage EmptyPicture()
{
    return QImage(PictureSize, QImage::Format_RGB32);
}

// The old print: brown where it was black, yellowed where it was white.
void Yellow(QImage& image)
{
    for (int y = 0; y < image.height(); ++y)
    {
        QRgb* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x)
        {
            const double dx = 2.0 * x / image.width() - 1;
            const double dy = 2.0 * y / image.height() - 1;
            const double light = qGray(line[x]) / 255.0 * (1.05 - 0.22 * (dx * dx + dy * dy));
            const auto mixed = [light](int dark, int bright)
            { return qBound(0, int(dark + (bright - dark) * light), 255); };
            line[x] = qRgb(mixed(46, 250), mixed(32, 228), mixed(20, 186));
        }
    }
}

void DrawScratch(QPainter& painter, const QVector<QPointF>& path, double width)
{
    QPainterPath line(path.constFirst());
    for (const QPointF& point : path)
        line.lineTo(point);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(255, 250, 236, 235), width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(line);
}

void DrawScratches(QPainter& painter, const ScratchedPicture& print)
{
    QRandomGenerator random(7);
    DrawScratch(painter, print.scratch, print.scratchWidth);
    for (int i = 0; i < 9; ++i)
    {
        const QPointF from(random.bounded(1200), random.bounded(800));
        const QPointF way((random.generateDouble() - 0.5) * 60, 40 + random.bounded(160));
        DrawScratch(painter, {from, from + way * 0.5 + QPointF(4, 0), from + way}, 1.2);
    }
}

void DrawSpeck(QPainter& painter, const QPointF& middle, double radius, bool bright)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(bright ? QColor(255, 250, 238, 220) : QColor(38, 26, 18, 200));
    painter.drawEllipse(middle, radius, radius * 0.8);
}

void DrawDust(QPainter& painter, const ScratchedPicture& print)
{
    QRandomGenerator random(8);
    for (int i = 0; i < 170; ++i)
    {
        const QPointF middle(random.bounded(1200), random.bounded(800));
        const double radius = 0.8 + 1.8 * random.generateDouble() * random.generateDouble();
        DrawSpeck(painter, middle, radius, i % 3);
    }
    for (const QPointF& middle : print.dust)
        DrawSpeck(painter, middle, print.dustRadius, true);
}

// How far out a panel's edge is on its way down, 0 to 1 of the balloon's radius.
double BalloonProfile(double t)
{
    return t < 0.5 ? std::sin(M_PI * t) : 0.14 + 0.86 * std::pow(std::cos(M_PI * (t - 0.5)), 0.85);
}

const QPointF BalloonMiddle(600, 330);
const QSizeF BalloonRadius(270, 285);
const int PanelCount = 7;

QPointF BalloonPoint(double meridian, double t)
{
    return BalloonMiddle +
        QPointF(std::sin(meridian) * BalloonRadius.width() * BalloonProfile(t),
                -BalloonRadius.height() * std::cos(M_PI * t));
}

double Meridian(double panel)
{
    return (panel / PanelCount - 0.5) * M_PI;
}

QPainterPath PanelPath(int panel)
{
    QPolygonF outline;
    const int steps = 60;
    for (int i = 0; i <= steps; ++i)
        outline += BalloonPoint(Meridian(panel), double(i) / steps);
    for (int i = steps; i >= 0; --i)
        outline += BalloonPoint(Meridian(panel + 1), double(i) / steps);
    QPainterPath path;
    path.addPolygon(outline);
    path.closeSubpath();
    return path;
}

void DrawBasket(QPainter& painter)
{
    painter.setPen(QPen(QColor(70, 46, 30), 2.5));
    const double foot = BalloonMiddle.y() + BalloonRadius.height();
    for (double side : {-0.9, -0.3, 0.3, 0.9})
        painter.drawLine(QPointF(600 + side * 37, foot), QPointF(600 + side * 30, foot + 58));
    painter.setBrush(QColor(150, 98, 54));
    painter.drawRoundedRect(QRectF(566, foot + 56, 68, 52), 8, 8);
    painter.drawLine(QPointF(566, foot + 72), QPointF(634, foot + 72));
}

void DrawFlatLand(QPainter& painter)
{
    painter.fillRect(QRect(QPoint(), PictureSize), QColor(142, 196, 230));
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(244, 248, 250));
    for (const QRectF& cloud : {QRectF(90, 130, 190, 62), QRectF(150, 96, 110, 90), QRectF(930, 220, 210, 60),
                                QRectF(985, 186, 100, 86)})
        painter.drawRoundedRect(cloud, 44, 44);
    painter.setBrush(QColor(98, 160, 92));
    painter.drawEllipse(QPointF(240, 980), 620, 330);
    painter.setBrush(QColor(72, 132, 84));
    painter.drawEllipse(QPointF(980, 1000), 640, 320);
}

} // namespace

ScratchedPicture DrawScratchedPrint()
{
    ScratchedPicture print;
    print.whole = DrawSamplePicture(PictureSize);
    Yellow(print.whole);
    AddGrain(print.whole, 10, 5);
    print.scratch = {{176, 66}, {206, 128}, {228, 196}, {262, 262}, {284, 330}};
    print.scratchWidth = 4;
    print.dust = {{420, 300}, {690, 250}, {1010, 330}};
    print.dustRadius = 5;
    print.image = print.whole;
    QPainter painter(&print.image);
    painter.setRenderHint(QPainter::Antialiasing);
    DrawScratches(painter, print);
    DrawDust(painter, print);
    return print;
}

BalloonPicture DrawBalloon()
{
    BalloonPicture balloon;
    balloon.image = EmptyPicture();
    balloon.sky = QPointF(240, 400);
    balloon.hill = QPointF(240, 740);
    QPainter painter(&balloon.image);
    painter.setRenderHint(QPainter::Antialiasing);
    DrawFlatLand(painter);
    painter.setPen(QPen(QColor(92, 34, 30), 3));
    for (int panel = 0; panel < PanelCount; ++panel)
    {
        balloon.panels += BalloonPoint(Meridian(panel + 0.5), 0.5);
        painter.setBrush(panel % 2 ? QColor(246, 196, 76) : QColor(214, 64, 58));
        painter.drawPath(PanelPath(panel));
    }
    DrawBasket(painter);
    painter.end();

    // Noisier along the edges than within.
    QImage edges = balloon.image;
    AddGrain(balloon.image, 5, 3);
    AddGrain(edges, 14, 11);
    painter.begin(&balloon.image);
    painter.setPen(QPen(QBrush(edges), 9));
    painter.setBrush(Qt::NoBrush);
    for (int panel = 0; panel < PanelCount; ++panel)
        painter.drawPath(PanelPath(panel));
    return balloon;
}
