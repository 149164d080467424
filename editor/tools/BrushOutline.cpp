#include "BrushOutline.h"

#include <QPainter>

namespace
{

const int MinSize = 1;
const int MaxSize = 2500;

// From which size on which step is taken.
int StepFor(int size)
{
    static const int steps[][2] = {{1000, 100}, {300, 50}, {100, 20}, {50, 10}, {20, 5}, {10, 2}};
    for (const auto& step : steps)
    {
        if (size >= step[0])
            return step[1];
    }
    return 1;
}

} // namespace

int NextBrushSize(int size)
{
    const int step = StepFor(size);
    return qBound(MinSize, (size / step + 1) * step, MaxSize);
}

int PreviousBrushSize(int size)
{
    const int step = StepFor(size - 1);
    return qBound(MinSize, (size - 1) / step * step, MaxSize);
}

QPainterPath BrushOutline(const BrushTip& tip, double diameter)
{
    const double radius = diameter / 2;
    QPainterPath path;
    if (tip.shape == BrushTip::Square)
        path.addRect(-radius, -radius, diameter, diameter);
    else if (tip.shape == BrushTip::Diamond)
        path.addPolygon(QPolygonF({{0, -radius}, {radius, 0}, {0, radius}, {-radius, 0}, {0, -radius}}));
    else
        path.addEllipse(QPointF(), radius, radius);
    return QTransform().rotate(-tip.angle).scale(1, tip.roundness).map(path);
}

void DrawOnPicture(QPainter& painter, const QPainterPath& path, const QPointF& place)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.translate(place);
    // Dark on light and light on dark: one of the two stands out from whatever lies below.
    painter.setPen(QPen(QColor(255, 255, 255, 200), 3));
    painter.drawPath(path);
    painter.setPen(QPen(Qt::black, 1));
    painter.drawPath(path);
    painter.restore();
}
