#include "TransformationCenterPointControl.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QStyle>
#include <QStyleOptionFocusRect>

#include "ControlStateAccessible_p.h"

namespace
{

const int Side = 40;
const int SmallestSide = 20;

// The cells in whole device pixels, so that their edges are sharp at any scale.
struct Raster
{
    explicit Raster(const QRect& area)
    {
        const int side = qMin(area.width(), area.height());
        line = qMax(1, qRound(side / 40.0));
        cell = qMax(3 * line, qRound(side * 0.225));
        step = qMax(cell + line, qRound(side * 0.325));
        const int whole = 2 * step + cell;
        corner = area.topLeft() + QPoint((area.width() - whole) / 2, (area.height() - whole) / 2);
    }
    QRect Cell(int column, int row) const
    {
        return QRect(corner + QPoint(column * step, row * step), QSize(cell, cell));
    }

    int line;
    int cell;
    int step;
    QPoint corner;
};

// The state `columns` to the right of that one and `rows` below it, or the last one on the way there.
int neighbour(int state, int columns, int rows)
{
    const int column = qBound(0, (state - 1) % 3 + columns, 2);
    const int row = qBound(0, (state - 1) / 3 + rows, 2);
    return row * 3 + column + 1;
}

// Lines from cell to cell, in both directions, behind the cells.
void drawNet(QPainter& painter, const Raster& raster, const QColor& color)
{
    const int inset = (raster.cell - raster.line) / 2;
    const int length = 2 * raster.step;
    for (int i = 0; i < 3; ++i)
    {
        painter.fillRect(
            QRect(raster.Cell(0, i).topLeft() + QPoint(inset, inset), QSize(length, raster.line)), color);
        painter.fillRect(
            QRect(raster.Cell(i, 0).topLeft() + QPoint(inset, inset), QSize(raster.line, length)), color);
    }
}

} // namespace

TransformationCenterPointControl::TransformationCenterPointControl(QWidget* parent) : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    QAccessible::installFactory(&ControlStateAccessible::Create);
}

TransformationCenterPointControl::~TransformationCenterPointControl() = default;

TransformationCenterPointControl::ControlState TransformationCenterPointControl::GetState() const
{
    return m_state;
}

QSize TransformationCenterPointControl::sizeHint() const
{
    return QSize(Side, Side);
}

QSize TransformationCenterPointControl::minimumSizeHint() const
{
    return QSize(SmallestSide, SmallestSide);
}

void TransformationCenterPointControl::SetState(ControlState state)
{
    const ControlState next = state >= TopLeft && state <= BottomRight ? state : TopLeft;
    if (next == m_state)
        return;
    const QPointer<TransformationCenterPointControl> self(this);
    Q_EMIT StateChange(next);
    if (!self)
        return;
    m_state = next;
    update();
    QAccessibleValueChangeEvent event(this, int(next));
    QAccessible::updateAccessibility(&event);
    Q_EMIT StateChanged(next);
    if (self)
        Q_EMIT StateChanged(int(next));
}

void TransformationCenterPointControl::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::EnabledChange)
        SetHovered(0);
    QWidget::changeEvent(event);
}

void TransformationCenterPointControl::keyPressEvent(QKeyEvent* event)
{
    if (event->modifiers() & ~Qt::KeypadModifier)
    {
        QWidget::keyPressEvent(event);
        return;
    }
    int next = 0;
    switch (event->key())
    {
    case Qt::Key_Left:
        next = neighbour(m_state, -1, 0);
        break;
    case Qt::Key_Right:
        next = neighbour(m_state, 1, 0);
        break;
    case Qt::Key_Up:
        next = neighbour(m_state, 0, -1);
        break;
    case Qt::Key_Down:
        next = neighbour(m_state, 0, 1);
        break;
    case Qt::Key_Home:
        next = TopLeft;
        break;
    case Qt::Key_End:
        next = BottomRight;
        break;
    default:
        QWidget::keyPressEvent(event);
        return;
    }
    SetState(ControlState(next));
}

void TransformationCenterPointControl::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        SetState(CellAt(event->pos()));
    else
        QWidget::mousePressEvent(event);
}

void TransformationCenterPointControl::mouseMoveEvent(QMouseEvent* event)
{
    SetHovered(rect().contains(event->pos()) ? CellAt(event->pos()) : 0);
}

void TransformationCenterPointControl::leaveEvent(QEvent* event)
{
    SetHovered(0);
    QWidget::leaveEvent(event);
}

void TransformationCenterPointControl::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (hasFocus())
    {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        option.backgroundColor = palette().color(QPalette::Window);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
    const QTransform toDevice = painter.deviceTransform();
    painter.setTransform(toDevice.inverted(), true);
    const Raster raster(toDevice.mapRect(QRectF(rect())).toRect());
    drawNet(painter, raster, palette().color(QPalette::Mid));
    for (int state = TopLeft; state <= BottomRight; ++state)
        DrawCell(painter, raster.Cell((state - 1) % 3, (state - 1) / 3), raster.line, state);
}

TransformationCenterPointControl::ControlState
TransformationCenterPointControl::CellAt(const QPoint& point) const
{
    const int side = qMax(1, qMin(width(), height()));
    const QPoint inner = point - QPoint((width() - side) / 2, (height() - side) / 2);
    const int column = qBound(0, inner.x() * 3 / side, 2);
    const int row = qBound(0, inner.y() * 3 / side, 2);
    return ControlState(row * 3 + column + 1);
}

void TransformationCenterPointControl::SetHovered(int state)
{
    if (state == m_hovered)
        return;
    m_hovered = state;
    update();
}

void TransformationCenterPointControl::DrawCell(QPainter& painter, const QRect& place, int line,
                                                int state) const
{
    const QColor highlight = palette().color(QPalette::Highlight);
    if (state == m_state)
    {
        // A little larger than the others.
        painter.fillRect(place.adjusted(-line, -line, line, line), highlight);
        return;
    }
    painter.fillRect(place, state == m_hovered ? highlight : palette().color(QPalette::WindowText));
    painter.fillRect(place.adjusted(line, line, -line, -line), palette().color(QPalette::Base));
}
