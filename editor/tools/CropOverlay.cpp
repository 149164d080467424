#include "CropOverlay.h"

#include <QLineF>
#include <QPainter>
#include <QPainterPath>
#include <QVector>

#include <cmath>

#include "NVDocumentView.h"

namespace
{

// In device-independent pixels.
const double HandleSide = 9;
const double Reach = 9;
const double ReferenceRadius = 4;
const double AreaMargin = 10;
// Edges shorter than this have no handle in their middle.
const double ShortEdge = 4 * HandleSide;
// Squares of a grid along its longer side.
const int GridSquares = 12;

const QColor DarkLine(0, 0, 0, 150);

QVector<QPointF> HandleShares(const NVDocumentView* view, const CropFrame& frame)
{
    const double scale = view->GetScale();
    QVector<QPointF> shares = {{0, 0}, {1, 0}, {1, 1}, {0, 1}};
    if (frame.size.width() * scale >= ShortEdge)
        shares += {{0.5, 0}, {0.5, 1}};
    if (frame.size.height() * scale >= ShortEdge)
        shares += {{0, 0.5}, {1, 0.5}};
    return shares;
}

QPointF PlaceOf(const NVDocumentView* view, const CropFrame& frame, const QPointF& share)
{
    return view->MapFromDocument(frame.PointAt(share));
}

QPolygonF OutlineOf(const NVDocumentView* view, const CropFrame& frame)
{
    QPolygonF outline;
    const QPolygonF corners = frame.GetOutline();
    for (const QPointF& corner : corners)
        outline += view->MapFromDocument(corner);
    return outline;
}

// Light on dark is seen on any picture.
template <typename Shape>
void DrawTwice(QPainter& painter, double width, int strength, const Shape& draw)
{
    painter.setPen(QPen(QColor(0, 0, 0, strength * 2 / 3), width + 2));
    draw();
    painter.setPen(QPen(QColor(255, 255, 255, strength), width));
    draw();
}

void DrawShade(QPainter& painter, const NVDocumentView* view, const QSize& picture, const QPolygonF& outline,
               const QColor& shade)
{
    if (shade.alpha() == 0)
        return;
    const QRectF whole(view->MapFromDocument(QPointF()),
                       view->MapFromDocument(QPointF(picture.width(), picture.height())));
    QPainterPath path;
    path.addRect(whole);
    QPainterPath hole;
    hole.addPolygon(outline);
    hole.closeSubpath();
    // Only what is in sight: a picture can be larger on the screen than a painter takes.
    QPainterPath sight;
    sight.addRect(QRectF(view->viewport()->rect()).adjusted(-2, -2, 2, 2));
    painter.fillPath(path.intersected(sight).subtracted(hole), shade);
}

// At so many equal steps across, and down.
void DrawGuides(QPainter& painter, const NVDocumentView* view, const CropFrame& frame, int across, int down)
{
    QVector<QLineF> lines;
    for (int i = 1; i < across; ++i)
    {
        const double share = double(i) / across;
        lines += QLineF(PlaceOf(view, frame, {share, 0}), PlaceOf(view, frame, {share, 1}));
    }
    for (int i = 1; i < down; ++i)
    {
        const double share = double(i) / down;
        lines += QLineF(PlaceOf(view, frame, {0, share}), PlaceOf(view, frame, {1, share}));
    }
    DrawTwice(painter, 1, 130, [&] { painter.drawLines(lines); });
}

void DrawGuides(QPainter& painter, const NVDocumentView* view, const CropFrame& frame, int guides)
{
    if (guides == CropLook::Thirds)
        DrawGuides(painter, view, frame, 3, 3);
    if (guides != CropLook::Grid)
        return;
    const double square = double(qMax(frame.size.width(), frame.size.height())) / GridSquares;
    DrawGuides(painter, view, frame, qMax(1, qRound(frame.size.width() / square)),
               qMax(1, qRound(frame.size.height() / square)));
}

void DrawReference(QPainter& painter, const QPointF& place)
{
    const double arm = 2 * ReferenceRadius;
    DrawTwice(painter, 1, 255,
              [&]
              {
                  painter.drawEllipse(place, ReferenceRadius, ReferenceRadius);
                  painter.drawLine(place - QPointF(arm, 0), place + QPointF(arm, 0));
                  painter.drawLine(place - QPointF(0, arm), place + QPointF(0, arm));
              });
}

void DrawHandle(QPainter& painter, const QPointF& place, double angle, const QBrush& fill)
{
    painter.save();
    painter.translate(place);
    painter.rotate(angle);
    painter.setPen(QPen(DarkLine, 1));
    painter.setBrush(fill);
    painter.drawRect(QRectF(-HandleSide / 2, -HandleSide / 2, HandleSide, HandleSide));
    painter.restore();
}

// A quarter of a circle with an arrow at each end.
QCursor MakeTurnCursor(double ratio)
{
    const int side = 24;
    QPixmap picture(QSize(side, side) * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainterPath path;
    path.arcMoveTo(QRectF(-4, 6, 22, 22), 0);
    path.arcTo(QRectF(-4, 6, 22, 22), 0, 90);
    path.moveTo(11, 2.5);
    path.lineTo(7, 6);
    path.lineTo(11, 9.5);
    path.moveTo(14.5, 13);
    path.lineTo(18, 17);
    path.lineTo(21.5, 13);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.strokePath(path, QPen(Qt::white, 4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.strokePath(path, QPen(Qt::black, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.end();
    return QCursor(picture, side / 2, side / 2);
}

// The one that was made last is kept: a pointer that is moved asks for it all the time.
QCursor TurnCursor(double ratio)
{
    static QCursor cursor;
    static double ratioOfCursor = 0;
    if (ratio != ratioOfCursor)
        cursor = MakeTurnCursor(ratio);
    ratioOfCursor = ratio;
    return cursor;
}

} // namespace

bool operator==(const CropHit& one, const CropHit& other)
{
    return one.part == other.part && one.share == other.share;
}

CropHit CropHitAt(const NVDocumentView* view, const CropFrame& frame, const QPointF& position)
{
    const QPointF pointer = view->MapFromDocument(position);
    CropHit hit;
    double nearest = Reach;
    const QVector<QPointF> shares = HandleShares(view, frame);
    for (const QPointF& share : shares)
    {
        const double distance = QLineF(pointer, PlaceOf(view, frame, share)).length();
        if (distance > nearest)
            continue;
        nearest = distance;
        hit = {CropHit::Handle, share};
    }
    if (hit.part == CropHit::Outside && OutlineOf(view, frame).containsPoint(pointer, Qt::OddEvenFill))
        hit.part = CropHit::Inside;
    return hit;
}

QCursor CropCursor(const CropHit& hit, const CropFrame& frame, double ratio)
{
    if (hit.part == CropHit::Outside)
        return TurnCursor(ratio);
    if (hit.part == CropHit::Inside)
        return Qt::SizeAllCursor;
    const QPointF way = hit.share - QPointF(0.5, 0.5);
    const double direction = std::atan2(way.y(), way.x()) * 180 / M_PI + frame.angle;
    // To the right first, then clockwise.
    const Qt::CursorShape shapes[] = {Qt::SizeHorCursor, Qt::SizeFDiagCursor, Qt::SizeVerCursor,
                                      Qt::SizeBDiagCursor};
    return shapes[(qRound(direction / 45) % 4 + 4) % 4];
}

QRect CropArea(const NVDocumentView* view, const CropFrame& frame)
{
    return OutlineOf(view, frame)
        .boundingRect()
        .adjusted(-AreaMargin, -AreaMargin, AreaMargin, AreaMargin)
        .toAlignedRect();
}

void DrawCrop(QPainter& painter, const NVDocumentView* view, const QSize& picture, const CropFrame& frame,
              const CropLook& look)
{
    const QPolygonF outline = OutlineOf(view, frame);
    painter.setRenderHint(QPainter::Antialiasing);
    DrawShade(painter, view, picture, outline, look.shade);
    painter.setBrush(Qt::NoBrush);
    DrawGuides(painter, view, frame, look.guides);
    DrawTwice(painter, 1, 255, [&] { painter.drawPolygon(outline); });
    DrawReference(painter, PlaceOf(view, frame, look.reference));
    const QVector<QPointF> shares = HandleShares(view, frame);
    for (const QPointF& share : shares)
    {
        const bool isHovered = look.hover == CropHit{CropHit::Handle, share};
        DrawHandle(painter, PlaceOf(view, frame, share), frame.angle,
                   isHovered ? view->palette().highlight() : QBrush(Qt::white));
    }
}
