#include "RulerLine.h"

#include <QtMath>

#include <cmath>

#include "Document.h"
#include "KXDocumentInterface.h"

RulerLine* RulerLine::Of(Document* document)
{
    auto* line = document->findChild<RulerLine*>(QString(), Qt::FindDirectChildrenOnly);
    return line ? line : new RulerLine(document);
}

RulerLine::RulerLine(Document* document) : QObject(document)
{
    connect(document->GetPixels(), &KXDocumentInterface::SizeChanged, this, &RulerLine::Clear);
}

QLineF RulerLine::Get() const
{
    return m_line;
}

bool RulerLine::IsNull() const
{
    return m_line.isNull();
}

void RulerLine::Set(const QLineF& line)
{
    const QLineF known = line.isNull() ? QLineF() : line;
    if (known == m_line)
        return;
    m_line = known;
    Q_EMIT Changed();
}

void RulerLine::Clear()
{
    Set(QLineF());
}

QPointF SnappedEnd(const QPointF& fixed, const QPointF& end)
{
    const QPointF way = end - fixed;
    const double step = qDegreesToRadians(45.0);
    const double angle = std::round(std::atan2(way.y(), way.x()) / step) * step;
    const QPointF direction(std::cos(angle), std::sin(angle));
    // Where a right angle from the pointer meets the direction, so that the end keeps close to the pointer.
    return fixed + QPointF::dotProduct(way, direction) * direction;
}
