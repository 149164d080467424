#include "AnchorCell_p.h"

#include <QPainter>
#include <QPainterPath>
#include <QtMath>

#include <cmath>

namespace
{

const int Side = 28;
// All in logical pixels from the middle of the cell.
const double DotRadius = 5.0;
const double ShaftStart = -7.0;
const double HeadStart = 1.0;
const double HeadEnd = 8.0;
const double HeadHalfWidth = 4.5;
const double ShaftWidth = 2.0;
const int FocusInset = 2;

// A shaft that covers whole pixels of the device, if it is not slanted: how wide it is and where its middle
// goes.
struct SharpShaft
{
    double width;
    QPointF middle;
};

SharpShaft FitShaft(const QPainter& painter, const QRect& rect)
{
    const QTransform& toDevice = painter.deviceTransform();
    const double pixels = qMax(1.0, std::round(ShaftWidth * toDevice.m22()));
    // A shaft of an odd width has its middle within a pixel, one of an even width between two.
    const double shift = std::fmod(pixels, 2.0) / 2.0;
    const QPointF middle = toDevice.map(QRectF(rect).center());
    const QPointF fitted(std::floor(middle.x()) + shift, std::floor(middle.y()) + shift);
    return {pixels / toDevice.m22(), toDevice.inverted().map(fitted)};
}

// Points to the right.
QPainterPath ArrowShape(double shaftWidth)
{
    QPainterPath path;
    path.addRect(QRectF(ShaftStart, -shaftWidth / 2.0, HeadStart - ShaftStart, shaftWidth));
    path.moveTo(HeadStart, -HeadHalfWidth);
    path.lineTo(HeadEnd, 0.0);
    path.lineTo(HeadStart, HeadHalfWidth);
    path.closeSubpath();
    return path;
}

// Equally thick on all sides, about a logical pixel, at any scale.
void DrawFrame(QPainter& painter, const QRect& rect, const QColor& color)
{
    const QTransform toLogical = painter.deviceTransform().inverted();
    const QRectF onDevice = painter.deviceTransform().mapRect(QRectF(rect));
    const QRect outer(onDevice.topLeft().toPoint(), onDevice.bottomRight().toPoint() - QPoint(1, 1));
    const int thickness = qMax(1, qRound(painter.deviceTransform().m22()));
    painter.save();
    painter.setWorldTransform(toLogical, true);
    const QRegion inner(outer.adjusted(thickness, thickness, -thickness, -thickness));
    const QRegion frame = QRegion(outer) - inner;
    for (const QRect& part : frame)
        painter.fillRect(part, color);
    painter.restore();
}

} // namespace

AnchorCell::AnchorCell(QWidget* parent) : QRadioButton(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

AnchorCell::~AnchorCell() = default;

void AnchorCell::SetArrow(QPoint arrow)
{
    if (arrow == m_arrow)
        return;
    m_arrow = arrow;
    update();
}

QSize AnchorCell::sizeHint() const
{
    return QSize(Side, Side);
}

QSize AnchorCell::minimumSizeHint() const
{
    return sizeHint();
}

bool AnchorCell::hitButton(const QPoint& position) const
{
    return rect().contains(position);
}

void AnchorCell::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QColor ink = palette().color(isChecked() ? QPalette::HighlightedText : QPalette::Text);
    painter.fillRect(rect(), palette().brush(isChecked() ? QPalette::Highlight : QPalette::Base));
    const bool isPointedAt = isEnabled() && (underMouse() || isDown());
    DrawFrame(painter, rect(),
              isPointedAt ? palette().color(QPalette::Text) : palette().color(QPalette::Mid));
    if (hasFocus())
        DrawFrame(painter, rect().adjusted(FocusInset, FocusInset, -FocusInset, -FocusInset), ink);

    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    const SharpShaft shaft = FitShaft(painter, rect());
    painter.translate(shaft.middle);
    if (isChecked())
    {
        painter.drawEllipse(QPointF(), DotRadius, DotRadius);
    }
    else if (!m_arrow.isNull())
    {
        painter.rotate(qRadiansToDegrees(std::atan2(m_arrow.y(), m_arrow.x())));
        painter.drawPath(ArrowShape(shaft.width));
    }
}
