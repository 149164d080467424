#include "Brush_p.h"

#include <QCoreApplication>
#include <QPainter>
#include <QPixmap>
#include <cmath>

namespace
{

double bounded(double value, double low, double high, double fallback)
{
    return std::isfinite(value) ? qBound(low, value, high) : fallback;
}

} // namespace

QIcon& Brush::GetColoredIcon(const QColor& color)
{
    if (m_icon.isNull() || m_iconColor != color)
    {
        m_icon = BrushTipIcon(m_tip, color);
        m_iconColor = color;
    }
    return m_icon;
}

QString Brush::GetName() const
{
    return m_name;
}

BrushTip Brush::GetTip() const
{
    return m_tip;
}

void Brush::SetName(const QString& name)
{
    m_name = name;
}

void Brush::SetTip(const BrushTip& tip)
{
    m_tip = tip;
    m_icon = QIcon();
}

BrushTip BoundedBrushTip(const BrushTip& tip, const BrushTip& present)
{
    BrushTip result;
    result.shape = tip.shape >= BrushTip::Round && tip.shape <= BrushTip::Spray ? tip.shape : present.shape;
    result.hardness = bounded(tip.hardness, 0.0, 1.0, present.hardness);
    result.roundness = bounded(tip.roundness, 0.05, 1.0, present.roundness);
    result.angle = std::isfinite(tip.angle) ? std::remainder(tip.angle, 360.0) : present.angle;
    return result;
}

QStringList BrushShapeNames()
{
    return {
        QCoreApplication::translate("BrushTip", "Round"), QCoreApplication::translate("BrushTip", "Square"),
        QCoreApplication::translate("BrushTip", "Diamond"), QCoreApplication::translate("BrushTip", "Star"),
        QCoreApplication::translate("BrushTip", "Spray")};
}

QIcon BrushTipIcon(const BrushTip& tip, const QColor& color)
{
    QIcon icon;
    for (const int side : {16, 24, 32, 48, 72})
    {
        // A turned square is larger than its diameter.
        const QImage full = RenderBrushTip(tip, side - 2);
        const QImage mask =
            full.width() <= side ? full : RenderBrushTip(tip, double(side - 2) * side / full.width() - 1);
        QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.drawImage((side - mask.width()) / 2, (side - mask.height()) / 2, mask);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(image.rect(), color);
        painter.end();
        icon.addPixmap(QPixmap::fromImage(image));
    }
    return icon;
}
