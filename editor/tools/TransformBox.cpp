#include "TransformBox.h"

#include <QLineF>
#include <QPainter>

#include <algorithm>
#include <cmath>

#include "NVDocumentView.h"

using Part = FreeTransform::Part;

namespace
{

// In device-independent pixels.
const double HandleSide = 8;
const double HoverSide = 11;
const double Reach = 8;
const double ReferenceRadius = 5;
const double SnapReach = 7;
// A box whose handles would lie closer has those of its edges left out.
const double CrowdedSide = 28;

const Part Corners[] = {FreeTransform::TopLeft, FreeTransform::TopRight, FreeTransform::BottomRight,
                        FreeTransform::BottomLeft};
const Part Edges[] = {FreeTransform::Top, FreeTransform::Right, FreeTransform::Bottom, FreeTransform::Left};

double DistanceTo(const FreeTransform& box, const NVDocumentView* view, Part part, const QPointF& place)
{
    return QLineF(place, view->MapFromDocument(box.PlaceOf(part))).length();
}

// The handle of the edge would lie too close to those of its ends.
bool IsCrowded(const FreeTransform& box, const NVDocumentView* view, Part edge)
{
    const bool isUpright = edge == FreeTransform::Left || edge == FreeTransform::Right;
    const QPointF one = box.PlaceOf(FreeTransform::TopLeft);
    const QPointF other = box.PlaceOf(isUpright ? FreeTransform::BottomLeft : FreeTransform::TopRight);
    return QLineF(one, other).length() * view->GetScale() < CrowdedSide;
}

Qt::CursorShape ShapeAcross(const QPointF& way)
{
    const double eighths = std::atan2(way.y(), way.x()) / (M_PI / 4);
    const Qt::CursorShape shapes[] = {Qt::SizeHorCursor, Qt::SizeFDiagCursor, Qt::SizeVerCursor,
                                      Qt::SizeBDiagCursor};
    return shapes[(int(std::round(eighths)) + 8) % 4];
}

void DrawTwoToned(QPainter& painter, const QPolygonF& outline)
{
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(0, 0, 0, 160), 3));
    painter.drawPolygon(outline);
    painter.setPen(QPen(Qt::white, 1));
    painter.drawPolygon(outline);
}

void DrawHandle(QPainter& painter, const QPointF& place, bool isHovered, const QColor& highlight)
{
    const double side = isHovered ? HoverSide : HandleSide;
    const QRectF square(place - QPointF(side / 2, side / 2), QSizeF(side, side));
    painter.setPen(QPen(QColor(0, 0, 0, 200), 3));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(square);
    painter.setPen(QPen(Qt::white, 1.5));
    painter.setBrush(isHovered ? highlight : QColor(60, 60, 60));
    painter.drawRect(square);
}

void DrawReference(QPainter& painter, const QPointF& place, bool isHovered, const QColor& highlight)
{
    const double arm = 2 * ReferenceRadius;
    const QLineF cross[] = {QLineF(place - QPointF(arm, 0), place + QPointF(arm, 0)),
                            QLineF(place - QPointF(0, arm), place + QPointF(0, arm))};
    painter.setBrush(isHovered ? highlight : QColor(255, 255, 255, 40));
    for (const QPen& pen : {QPen(QColor(0, 0, 0, 200), 3), QPen(Qt::white, 1.25)})
    {
        painter.setPen(pen);
        painter.drawLines(cross, 2);
        painter.drawEllipse(place, ReferenceRadius, ReferenceRadius);
    }
}

} // namespace

Part TransformBox::PartAt(const FreeTransform& box, const NVDocumentView* view, const QPointF& position)
{
    if (box.GetBox().isEmpty())
        return FreeTransform::Nothing;
    const QPointF place = view->MapFromDocument(position);
    // In the corner of a box, the handle is what is meant.
    const bool isOnCell = box.GetCell() != 0 && box.GetCell() != FreeTransform::Reference;
    if (!isOnCell && DistanceTo(box, view, FreeTransform::Reference, place) <= ReferenceRadius + 2)
        return FreeTransform::Reference;
    for (const Part corner : Corners)
    {
        if (DistanceTo(box, view, corner, place) <= Reach)
            return corner;
    }
    for (const Part edge : Edges)
    {
        if (!IsCrowded(box, view, edge) && DistanceTo(box, view, edge, place) <= Reach)
            return edge;
    }
    return box.GetOutline().containsPoint(position, Qt::OddEvenFill) ? FreeTransform::Inside
                                                                     : FreeTransform::Outside;
}

QCursor TransformBox::CursorOf(const FreeTransform& box, Part part,
                               const FreeTransform::Constraint& constraint)
{
    switch (part)
    {
    case FreeTransform::Nothing:
        return Qt::ArrowCursor;
    case FreeTransform::Inside:
        return Qt::SizeAllCursor;
    case FreeTransform::Reference:
    case FreeTransform::Outside:
        return Qt::CrossCursor;
    default:
        break;
    }
    const QPointF across = box.PlaceOf(part) - box.PlaceOf(Part(10 - part));
    const bool isCorner = std::find(std::begin(Corners), std::end(Corners), part) != std::end(Corners);
    return ShapeAcross(constraint.skews && !isCorner ? QPointF(-across.y(), across.x()) : across);
}

int TransformBox::CellNear(const FreeTransform& box, const NVDocumentView* view, const QPointF& position)
{
    const QPointF place = view->MapFromDocument(position);
    for (int cell = FreeTransform::TopLeft; cell <= FreeTransform::BottomRight; ++cell)
    {
        const Part part = cell == FreeTransform::Reference ? FreeTransform::Inside : Part(cell);
        if (DistanceTo(box, view, part, place) <= SnapReach)
            return cell;
    }
    return 0;
}

void TransformBox::Draw(QPainter& painter, const FreeTransform& box, const NVDocumentView* view, Part hover)
{
    if (box.GetBox().isEmpty())
        return;
    const QColor highlight = view->palette().color(QPalette::Highlight);
    QPolygonF outline;
    const QPolygonF corners = box.GetOutline();
    for (const QPointF& corner : corners)
        outline.append(view->MapFromDocument(corner));
    painter.setRenderHint(QPainter::Antialiasing);
    DrawTwoToned(painter, outline);
    for (const Part edge : Edges)
    {
        if (!IsCrowded(box, view, edge))
            DrawHandle(painter, view->MapFromDocument(box.PlaceOf(edge)), hover == edge, highlight);
    }
    for (const Part corner : Corners)
        DrawHandle(painter, view->MapFromDocument(box.PlaceOf(corner)), hover == corner, highlight);
    DrawReference(painter, view->MapFromDocument(box.GetPosition()), hover == FreeTransform::Reference,
                  highlight);
}
