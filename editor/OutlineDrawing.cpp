#include "OutlineDrawing.h"

#include <QPainter>

#include <cmath>

namespace
{

// Device-independent pixels of one colour.
const int DashLength = 4;
// The line's surroundings are drawn anew in squares of so many device-independent pixels.
const int Square = 32;

QRect ToDevice(const QRectF& rect, double ratio)
{
    return QRectF(rect.topLeft() * ratio, rect.size() * ratio).toAlignedRect();
}

QRegion SquaresOf(const QVector<QPoint>& line, const QRect& sight, double ratio)
{
    const QRect area = QRectF(QPointF(sight.topLeft()) / ratio, QSizeF(sight.size()) / ratio).toAlignedRect();
    const int columns = area.width() / Square + 1;
    QVector<bool> hit(columns * (area.height() / Square + 1), false);
    for (const QPoint& point : line)
    {
        const QPoint way(int(point.x() / ratio) - area.left(), int(point.y() / ratio) - area.top());
        hit[way.y() / Square * columns + way.x() / Square] = true;
    }
    QRegion region;
    for (int i = 0; i < hit.size(); ++i)
    {
        if (hit.at(i))
            region +=
                QRect(area.topLeft() + QPoint(i % columns, i / columns) * Square, QSize(Square, Square));
    }
    return region;
}

} // namespace

void OutlineDrawing::SetMasks(const QVector<QImage>& masks)
{
    m_masks = masks;
    m_isStale = true;
    m_region = QRegion();
}

bool OutlineDrawing::HasMasks() const
{
    return !m_masks.isEmpty();
}

void OutlineDrawing::SetPhase(int phase)
{
    m_phase = phase % (2 * DashLength);
}

int OutlineDrawing::GetPhase() const
{
    return m_phase;
}

QRegion OutlineDrawing::GetRegion() const
{
    return m_region;
}

void OutlineDrawing::Draw(QPainter& painter, const QSize& viewport, const QPointF& origin, double scale)
{
    if (m_masks.isEmpty())
        return;
    const double ratio = painter.device()->devicePixelRatioF();
    MaskPlace place;
    place.scale = scale * ratio;
    place.origin = origin * ratio;
    place.lineWidth = std::max(1, int(std::lround(ratio)));
    const QRectF document(origin, QSizeF(m_masks.constFirst().size()) * scale);
    const QRectF shown = document & QRectF(QPointF(0, 0), viewport);
    UpdateLine(place, ToDevice(shown, ratio), ratio);
    DrawAgain(painter);
}

void OutlineDrawing::DrawAgain(QPainter& painter)
{
    if (m_isStale || m_line.isEmpty())
        return;
    ColorLine();
    painter.drawImage(QPointF(m_sight.topLeft()) / m_ratio, m_picture);
}

void OutlineDrawing::UpdateLine(const MaskPlace& place, const QRect& sight, double ratio)
{
    if (!m_isStale && place == m_place && sight == m_sight && ratio == m_ratio)
        return;
    m_isStale = false;
    m_place = place;
    m_sight = sight;
    m_ratio = ratio;
    m_coloredPhase = -1;
    m_line = OutlinePixels(m_masks, place, sight);
    m_region = SquaresOf(m_line, sight, ratio);
    m_picture = QImage(sight.size(), QImage::Format_ARGB32_Premultiplied);
    m_picture.fill(Qt::transparent);
    m_picture.setDevicePixelRatio(ratio);
}

// The dashes stand on slanting stripes of the screen, so that they go along any line.
void OutlineDrawing::ColorLine()
{
    if (m_coloredPhase == m_phase)
        return;
    m_coloredPhase = m_phase;
    const int dash = std::max(1, int(std::lround(DashLength * m_ratio)));
    const int shift = int(std::lround(m_phase * m_ratio));
    uchar* bits = m_picture.bits();
    const qsizetype stride = m_picture.bytesPerLine();
    for (const QPoint& point : qAsConst(m_line))
    {
        const QPoint pixel = point - m_sight.topLeft();
        const bool isBlack = (point.x() + point.y() + 2 * dash - shift) / dash % 2 == 0;
        reinterpret_cast<QRgb*>(bits + pixel.y() * stride)[pixel.x()] = isBlack ? 0xff000000 : 0xffffffff;
    }
}
