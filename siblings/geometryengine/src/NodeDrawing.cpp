#include "NodeDrawing_p.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPixmap>
#include <QPixmapCache>

#include <cmath>

namespace
{

const QSizeF Body(13.0, 22.0);
const qreal HaloWidth = 1.0;
const qreal FocusWidth = 2.0;
const qreal LineWidth = 1.0;
const qreal BarWidth = 2.0;
const qreal CornerRadius = 4.0;
const int PictureMargin = 4;
const qreal LargestRatio = 4.0; // beyond, pictures are larger than they are worth

QPainterPath roundedPath(qreal inset)
{
    QPainterPath path;
    const QRectF rect = QRectF(QPointF(), Body).adjusted(inset, inset, -inset, -inset);
    const qreal radius = qMax(CornerRadius - inset, 1.0);
    path.addRoundedRect(rect, radius, radius);
    return path;
}

// What lies between two insets from the outline of the body.
QPainterPath ring(qreal outer, qreal inner)
{
    QPainterPath path = roundedPath(outer);
    path.addPath(roundedPath(inner));
    path.setFillRule(Qt::OddEvenFill);
    return path;
}

QColor mixed(const QColor& one, const QColor& other, qreal part)
{
    return QColor::fromRgbF(one.redF() + (other.redF() - one.redF()) * part,
                            one.greenF() + (other.greenF() - one.greenF()) * part,
                            one.blueF() + (other.blueF() - one.blueF()) * part);
}

// Light falls from above: a raised bar is light at its upper end, a sunken one dark.
QBrush barBrush(const QPalette& palette, const NodeLook& look)
{
    QColor bar = palette.color(look.selected ? QPalette::Highlight : QPalette::Button);
    if (look.hovered)
    {
        bar =
            mixed(bar, palette.color(look.selected ? QPalette::HighlightedText : QPalette::Highlight), 0.35);
    }
    QLinearGradient light(0.0, 0.0, 0.0, Body.height());
    light.setColorAt(0.0, mixed(bar, look.sunken ? Qt::black : Qt::white, look.sunken ? 0.45 : 0.3));
    light.setColorAt(0.5, bar);
    light.setColorAt(1.0, mixed(bar, look.sunken ? Qt::white : Qt::black, 0.15));
    return light;
}

// Everything, with the corner of the body at the origin.
void drawFrame(QPainter* painter, const QPalette& palette, const NodeLook& look)
{
    painter->setRenderHint(QPainter::Antialiasing);
    const QColor& line = palette.color(QPalette::WindowText);
    const qreal focusRing = look.focused ? FocusWidth : 0.0;
    painter->fillPath(ring(-focusRing - HaloWidth, -focusRing), palette.color(QPalette::Base));
    if (look.focused)
    {
        painter->fillPath(ring(-focusRing, 0.0), palette.color(QPalette::Highlight));
    }
    painter->fillPath(ring(0.0, LineWidth), line);
    painter->fillPath(ring(LineWidth, LineWidth + BarWidth), barBrush(palette, look));
    painter->fillPath(ring(LineWidth + BarWidth, BarWidth + 2.0 * LineWidth), line);
}

// A strip may hold hundreds of nodes, which all are drawn anew at each step of a drag.
QPixmap framePicture(const QPalette& palette, const NodeLook& look, qreal ratio)
{
    const int state =
        (look.hovered ? 1 : 0) + (look.selected ? 2 : 0) + (look.focused ? 4 : 0) + (look.sunken ? 8 : 0);
    const QString key = QStringLiteral("control-node-%1-%2-%3-%4")
                            .arg(palette.cacheKey())
                            .arg(palette.currentColorGroup())
                            .arg(state)
                            .arg(ratio);
    QPixmap picture;
    if (!QPixmapCache::find(key, &picture))
    {
        picture = QPixmap(((Body + QSizeF(2.0 * PictureMargin, 2.0 * PictureMargin)) * ratio).toSize());
        picture.setDevicePixelRatio(ratio);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        painter.translate(PictureMargin, PictureMargin);
        drawFrame(&painter, palette, look);
        painter.end();
        QPixmapCache::insert(key, picture);
    }
    return picture;
}

} // namespace

QSizeF NodeSize()
{
    return Body;
}

void DrawNode(QPainter* painter, const QPalette& palette, const NodeLook& look)
{
    painter->save();
    painter->translate(-Body.width() / 2.0, -Body.height() / 2.0);
    const QTransform device = painter->deviceTransform();
    const qreal ratio = device.m11();
    if (device.type() <= QTransform::TxScale && ratio >= 1.0 && ratio <= LargestRatio &&
        ratio == device.m22())
    {
        // Less than a device pixel aside, so that the body begins on a whole one.
        const QPointF corner = device.map(QPointF());
        const QPointF whole(std::floor(corner.x() + 0.5), std::floor(corner.y() + 0.5));
        painter->translate((whole - corner) / ratio);
        painter->drawPixmap(QPointF(-PictureMargin, -PictureMargin), framePicture(palette, look, ratio));
    }
    else
    {
        drawFrame(painter, palette, look);
    }
    painter->restore();
}
