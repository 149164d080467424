#include "CropFrame.h"

#include <algorithm>
#include <cmath>

const int CropFrame::MAX_SIDE = 9999;

namespace
{
const QPointF MIDDLE(0.5, 0.5);

int WholeSide(double side)
{
    return int(std::clamp(std::round(side), 1.0, double(CropFrame::MAX_SIDE)));
}

// The place of a turned rectangle of that size, from its middle.
QPointF WayTo(const QPointF& share, const QSize& size, double angle)
{
    const QPointF way((share.x() - 0.5) * size.width(), (share.y() - 0.5) * size.height());
    return QTransform().rotate(angle).map(way);
}

// An upright frame moves to the nearest whole pixels.
CropFrame Settled(CropFrame frame)
{
    if (!frame.IsUpright())
        return frame;
    const QSizeF size = std::fmod(frame.angle, 180.0) == 0.0 ? frame.size : frame.size.transposed();
    const QPointF half(size.width() / 2, size.height() / 2);
    const QPointF corner = frame.middle - half;
    frame.middle = QPointF(std::round(corner.x()), std::round(corner.y())) + half;
    return frame;
}

// Where the place of the frame lies at the point.
CropFrame PlacedAt(const QPointF& point, const QPointF& share, const QSize& size, double angle)
{
    CropFrame frame;
    frame.size = size;
    frame.angle = angle;
    frame.middle = point - WayTo(share, size, angle);
    return Settled(frame);
}

QSizeF Limited(const QSizeF& size)
{
    const double longest = std::max(size.width(), size.height());
    return longest > CropFrame::MAX_SIDE ? size * (CropFrame::MAX_SIDE / longest) : size;
}

QSizeF LargestWithin(const QSizeF& size, double proportion)
{
    const double width = std::min(size.width(), size.height() * proportion);
    return QSizeF(width, width / proportion);
}

// How far a side of the frame goes, and which of its ends stays: the pull goes from there, along the side.
double PulledSide(double pull, bool isPulled, bool aboutMiddle, double side, double& fixedShare)
{
    if (!isPulled)
        return side;
    if (!aboutMiddle)
        fixedShare = pull < 0 ? 1 : 0;
    return std::abs(pull) * (aboutMiddle ? 2 : 1);
}
} // namespace

bool CropFrame::IsUpright() const
{
    return std::fmod(angle, 90.0) == 0.0;
}

QTransform CropFrame::ToDocument() const
{
    QTransform transform = QTransform::fromTranslate(middle.x(), middle.y());
    return transform.rotate(angle).translate(-size.width() / 2.0, -size.height() / 2.0);
}

QPointF CropFrame::PointAt(const QPointF& share) const
{
    return middle + WayTo(share, size, angle);
}

QPolygonF CropFrame::GetOutline() const
{
    return QPolygonF({PointAt({0, 0}), PointAt({1, 0}), PointAt({1, 1}), PointAt({0, 1})});
}

bool operator==(const CropFrame& one, const CropFrame& other)
{
    return one.middle == other.middle && one.size == other.size && one.angle == other.angle;
}

CropFrame CropFrameOf(const QRect& rect)
{
    const QSize size(WholeSide(rect.width()), WholeSide(rect.height()));
    return PlacedAt(rect.topLeft(), {0, 0}, size, 0);
}

CropFrame CropFrameBetween(const QPointF& from, const QPointF& to, double proportion)
{
    // On whole pixels, as its edges are to be.
    const QPointF way = to.toPoint() - from.toPoint();
    QSizeF size(std::abs(way.x()), std::abs(way.y()));
    if (proportion > 0)
        size = LargestWithin(size, proportion);
    const QPointF share(way.x() < 0 ? 1 : 0, way.y() < 0 ? 1 : 0);
    return PlacedAt(from.toPoint(), share, QSize(WholeSide(size.width()), WholeSide(size.height())), 0);
}

CropFrame InProportion(const CropFrame& frame, double proportion)
{
    return Resized(frame, LargestWithin(frame.size, proportion), MIDDLE);
}

CropFrame Moved(const CropFrame& frame, const QPointF& way)
{
    CropFrame moved = frame;
    moved.middle += way;
    return Settled(moved);
}

CropFrame Turned(const CropFrame& frame, double angle, const QPointF& share)
{
    return PlacedAt(frame.PointAt(share), share, frame.size, std::remainder(angle, 360.0));
}

CropFrame Resized(const CropFrame& frame, const QSizeF& size, const QPointF& share)
{
    const QSize whole(WholeSide(size.width()), WholeSide(size.height()));
    return PlacedAt(frame.PointAt(share), share, whole, frame.angle);
}

CropFrame Pulled(const CropFrame& frame, const QPointF& share, const QPointF& to, double proportion,
                 bool aboutMiddle)
{
    const bool isWide = share.x() != 0.5;
    const bool isHigh = share.y() != 0.5;
    QPointF fixedShare = aboutMiddle ? MIDDLE : QPointF(1, 1) - share;
    const QPointF fixed = frame.PointAt(fixedShare);
    const QPointF pull = QTransform().rotate(-frame.angle).map(to - fixed);
    QSizeF size(PulledSide(pull.x(), isWide, aboutMiddle, frame.size.width(), fixedShare.rx()),
                PulledSide(pull.y(), isHigh, aboutMiddle, frame.size.height(), fixedShare.ry()));
    if (proportion > 0)
    {
        const double width = isWide ? size.width() : 0;
        const double height = isHigh ? size.height() : 0;
        size.setWidth(std::max(width, height * proportion));
        size.setHeight(size.width() / proportion);
        size = Limited(size);
    }
    return PlacedAt(fixed, fixedShare, QSize(WholeSide(size.width()), WholeSide(size.height())), frame.angle);
}
