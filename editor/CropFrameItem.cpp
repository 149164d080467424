#include "CropFrameItem.h"

#include <QPainter>
#include <QPainterPath>

namespace
{

const QColor Shade(0, 0, 0, 150);
// For the line, which is as wide on the screen at every scale.
const double LineMargin = 64;

} // namespace

CropFrameItem::CropFrameItem(const QSize& picture) : m_picture(picture) { }

QRect CropFrameItem::GetFrame() const
{
    return m_frame;
}

void CropFrameItem::SetFrame(const QRect& frame)
{
    if (frame == m_frame)
        return;
    m_frame = frame;
    update();
}

QRectF CropFrameItem::boundingRect() const
{
    return QRectF(QPointF(0, 0), m_picture).adjusted(-LineMargin, -LineMargin, LineMargin, LineMargin);
}

void CropFrameItem::paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget)
{
    Q_UNUSED(option)
    Q_UNUSED(widget)
    if (m_frame.isNull())
        return;
    QPainterPath shade;
    shade.addRect(QRectF(QPointF(0, 0), m_picture));
    shade.addRect(m_frame);
    painter->setRenderHint(QPainter::Antialiasing, false);
    painter->fillPath(shade, Shade);
    // Black and white dashes in turn are seen on any colour.
    QPen pen(Qt::black, 1);
    pen.setCosmetic(true);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(pen);
    painter->drawRect(m_frame);
    pen.setColor(Qt::white);
    pen.setDashPattern({4, 4});
    painter->setPen(pen);
    painter->drawRect(m_frame);
}
