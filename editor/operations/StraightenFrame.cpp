#include "StraightenFrame.h"

#include <QtMath>

#include <cmath>

namespace
{

// A side that is whole but for rounding stays so.
const double Rounding = 1e-6;

// Of the largest rectangle within the picture that is turned by an angle of that sine and cosine.
QSizeF LargestWithin(const QSizeF& picture, double sine, double cosine)
{
    const double width = picture.width();
    const double height = picture.height();
    const double shorter = qMin(width, height);
    if (shorter <= 2 * sine * cosine * qMax(width, height) || qAbs(sine - cosine) < Rounding)
    {
        // Two opposite corners touch the longer sides, which leave the others free.
        const double half = shorter / 2;
        return width >= height ? QSizeF(half / sine, half / cosine) : QSizeF(half / cosine, half / sine);
    }
    const double spread = cosine * cosine - sine * sine;
    return QSizeF((width * cosine - height * sine) / spread, (height * cosine - width * sine) / spread);
}

int WholeSide(double side)
{
    return qBound(1, int(std::floor(side + Rounding)), CropFrame::MAX_SIDE);
}

} // namespace

double SlopeOf(const QPointF& from, const QPointF& to)
{
    const QPointF way = to - from;
    if (way.isNull())
        return 0;
    const double angle = qRadiansToDegrees(std::atan2(way.y(), way.x()));
    return angle - 90 * std::ceil((angle - 45) / 90);
}

CropFrame StraightenFrame(const QSize& picture, double angle)
{
    const double radians = qDegreesToRadians(angle);
    const QSizeF largest = LargestWithin(picture, qAbs(std::sin(radians)), qAbs(std::cos(radians)));
    CropFrame frame;
    frame.middle = QPointF(picture.width() / 2.0, picture.height() / 2.0);
    frame.size = QSize(WholeSide(largest.width()), WholeSide(largest.height()));
    frame.angle = angle;
    return frame;
}
