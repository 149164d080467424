#include "BrushStroke_p.h"

#include <QHash>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QtMath>
#include <cmath>

namespace
{

const double SmallestStep = 0.75;
// The part of the stroke over which an end becomes thin.
const double Lead = 0.18;
// The side of a picture is drawn with so many more pixels for a device-independent one than it will have.
const double Surplus = 1.0;

struct Place
{
    QPointF point;
    double direction = 0.0; // degrees, counter-clockwise
    double pressure = 1.0;
    double lead = 1.0;
};

Place placeAt(double t, const QSize& size, double diameter)
{
    const double margin = qMin(diameter / 2 + 2, size.width() / 4.0);
    const double run = size.width() - 2 * margin;
    const double swing = qMax(0.0, qMin(size.height() * 0.26, size.height() / 2.0 - diameter / 2 - 1));
    Place place;
    place.point = QPointF(margin + run * t, size.height() / 2.0 + swing * std::sin(2 * M_PI * t));
    place.direction = -qRadiansToDegrees(std::atan2(swing * 2 * M_PI * std::cos(2 * M_PI * t), run));
    place.pressure = std::sin(M_PI * t);
    place.lead = qMin(1.0, std::sqrt(qMin(t, 1.0 - t) / Lead) + 0.08);
    return place;
}

// Stamps of a tip that is drawn many times, in steps that a person does not see.
class Stamps
{
public:
    const QImage& Get(BrushTip tip, double diameter)
    {
        const int size = qMax(2, qRound(diameter * 2));
        const int hardness = qRound(tip.hardness * 20);
        const int angle = qRound(tip.angle / 3);
        QImage& image = m_images[(qint64(size) << 32) ^ (qint64(hardness) << 16) ^ (angle + 1024)];
        if (image.isNull())
        {
            tip.hardness = hardness / 20.0;
            tip.angle = angle * 3.0;
            image = RenderBrushTip(tip, size / 2.0);
        }
        return image;
    }

private:
    QHash<qint64, QImage> m_images;
};

void putStamp(QImage& mask, const QImage& stamp, const QPointF& centre, double strength)
{
    const QPoint corner(qRound(centre.x() - stamp.width() / 2.0), qRound(centre.y() - stamp.height() / 2.0));
    const QRect area = QRect(corner, stamp.size()) & mask.rect();
    const int weight = qRound(strength * 256);
    for (int y = area.top(); y <= area.bottom(); ++y)
    {
        uchar* const row = mask.scanLine(y);
        const uchar* const from = stamp.constScanLine(y - corner.y()) - corner.x();
        for (int x = area.left(); x <= area.right(); ++x)
        {
            const int cover = (from[x] * weight) >> 8;
            row[x] = uchar(row[x] + (255 - row[x]) * cover / 255);
        }
    }
}

double strewn(int index, int axis)
{
    const quint32 hash = quint32(index * 2 + axis + 1) * 2654435761u;
    return ((hash >> 9) & 0xffff) / 32768.0 - 1.0;
}

} // namespace

bool BrushStroke::operator==(const BrushStroke& other) const
{
    return tip == other.tip && diameter == other.diameter && spacing == other.spacing &&
        opacity == other.opacity && dynamicSize == other.dynamicSize &&
        dynamicHardness == other.dynamicHardness && dynamicAngle == other.dynamicAngle &&
        dynamicOpacity == other.dynamicOpacity && dynamicScatter == other.dynamicScatter;
}

QImage RenderBrushStroke(const BrushStroke& stroke, const QSize& size)
{
    QImage mask(size, QImage::Format_Alpha8);
    mask.fill(0);
    Stamps stamps;
    const double length = size.width() * 1.15;
    double t = 0.0;
    for (int i = 0; t <= 1.0; ++i)
    {
        const Place place = placeAt(t, size, stroke.diameter);
        const double diameter = stroke.diameter * place.lead * (stroke.dynamicSize ? place.pressure : 1.0);
        BrushTip tip = stroke.tip;
        if (stroke.dynamicHardness)
            tip.hardness *= place.pressure;
        if (stroke.dynamicAngle)
            tip.angle += place.direction;
        QPointF centre = place.point;
        if (stroke.dynamicScatter)
            centre += QPointF(strewn(i, 0), strewn(i, 1)) * diameter;
        putStamp(mask, stamps.Get(tip, diameter), centre, stroke.dynamicOpacity ? place.pressure : 1.0);
        t += qMax(SmallestStep, diameter * stroke.spacing / 100) / length;
    }
    const int opacity = qRound(qBound(0.0, stroke.opacity, 1.0) * 256);
    for (int y = 0; y < size.height(); ++y)
    {
        uchar* const row = mask.scanLine(y);
        for (int x = 0; x < size.width(); ++x)
            row[x] = uchar((row[x] * opacity) >> 8);
    }
    return mask;
}

const QImage& StrokePicture::Get(const BrushStroke& stroke, const QSize& size, double pixelRatio)
{
    if (m_size == size && m_pixelRatio == pixelRatio && m_stroke == stroke)
        return m_mask;
    m_size = size;
    m_pixelRatio = pixelRatio;
    m_stroke = stroke;

    const double fineRatio = pixelRatio + Surplus;
    BrushStroke fine = stroke;
    fine.diameter *= fineRatio;
    m_mask = RenderBrushStroke(fine, size * fineRatio);
    m_mask = m_mask.scaled(size * pixelRatio, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    return m_mask;
}

double TargetPixelRatio(const QPainter& painter)
{
    return painter.paintEngine()->paintDevice()->devicePixelRatioF();
}

void DrawMask(QPainter& painter, const QPoint& corner, const QImage& mask, double pixelRatio,
              const QBrush& color)
{
    QImage picture(mask.size(), QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter tint(&picture);
    tint.drawImage(0, 0, mask);
    tint.setCompositionMode(QPainter::CompositionMode_SourceIn);
    tint.fillRect(picture.rect(), color);
    tint.end();
    picture.setDevicePixelRatio(pixelRatio);
    painter.drawImage(corner, picture);
}
