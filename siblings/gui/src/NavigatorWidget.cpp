#include "NavigatorWidget.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPointer>
#include <QStyleOptionFocusRect>

#include <cmath>

#include "CheckerBrush_p.h"
#include "KXColorTransformBase.h"
#include "KXDocumentInterface.h"

namespace
{

const QSize PreferredSize(240, 160);
const QSize SmallestSize(48, 48);
const int Margin = 4;
const int CheckerCell = 4;
// A frame around less than a few pixels could not be seen or taken hold of.
const double SmallestFrame = 6.0;
// So many pixels of the document are looked at, whatever its size: in each direction 2 to 4 make one of the
// overview.
const int SampledPixels = 350000;
// Of the frame's size, for an arrow key.
const double Step = 0.1;
const double SmallStep = 0.01;

QSize sampledSize(const QSize& overview)
{
    const int samples = int(std::sqrt(SampledPixels / (double(overview.width()) * overview.height())));
    return overview * qBound(2, samples, 4);
}

QImage overviewOf(const QImage& composition, const QSize& size)
{
    // Too large for the memory.
    if (composition.isNull())
        return QImage();
    const QSize sampled = sampledSize(size);
    QImage small = composition;
    if (sampled.width() < composition.width() && sampled.height() < composition.height())
        small = composition.scaled(sampled, Qt::IgnoreAspectRatio, Qt::FastTransformation);
    return small.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
        .convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

// The rest of the place becomes darker.
void drawFrame(QPainter& painter, const QRect& place, const QRectF& frame, const QColor& line)
{
    QPainterPath beside;
    beside.addRect(place);
    QPainterPath inside;
    inside.addRect(frame);
    painter.fillPath(beside - inside, QColor(0, 0, 0, 90));
    // A light line between dark ones is seen on any picture.
    painter.setPen(QPen(Qt::black, 3));
    painter.drawRect(frame);
    painter.setPen(QPen(line, 1));
    painter.drawRect(frame);
}

// As near to the corner as keeps a frame of that length within a document of that length.
double boundedCorner(double corner, double length, double document, double before)
{
    return length >= document ? before : qBound(0.0, corner, document - length);
}

} // namespace

struct NavigatorWidget::Data
{
    QPointer<KXDocumentInterface> document;
    std::unique_ptr<KXColorTransformBase> transform;
    QRectF frame;
    QImage overview;
    bool isStale = true;
    // Where within the frame it is held, in document pixels.
    QPointF hold;
    bool isHeld = false;

    // The overview in a widget of that size.
    QRect Place(const QSize& widget) const
    {
        const QRect room = QRect(QPoint(), widget).adjusted(Margin, Margin, -Margin, -Margin);
        if (!document || room.isEmpty())
            return QRect();
        const QSize size =
            document->GetSize().scaled(room.size(), Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
        QRect place(QPoint(), size);
        place.moveCenter(room.center());
        return place;
    }
    QPointF ToDocument(const QSize& widget, const QPointF& point) const
    {
        const QRectF place = Place(widget);
        const QSize size = document->GetSize();
        return {(point.x() - place.x()) * size.width() / place.width(),
                (point.y() - place.y()) * size.height() / place.height()};
    }
    QRectF FrameIn(const QSize& widget) const
    {
        const QRectF place = Place(widget);
        const double x = place.width() / document->GetSize().width();
        const double y = place.height() / document->GetSize().height();
        QRectF shown(place.x() + frame.x() * x, place.y() + frame.y() * y, frame.width() * x,
                     frame.height() * y);
        const double wider = qMax(0.0, SmallestFrame - shown.width()) / 2;
        const double higher = qMax(0.0, SmallestFrame - shown.height()) / 2;
        return shown.adjusted(-wider, -higher, wider, higher);
    }
};

NavigatorWidget::NavigatorWidget(QWidget* parent) : QWidget(parent), d(std::make_unique<Data>())
{
    setFocusPolicy(Qt::StrongFocus);
}

NavigatorWidget::~NavigatorWidget() = default;

void NavigatorWidget::SetDocument(KXDocumentInterface* document, KXColorTransformBase* transform)
{
    if (d->document)
        d->document->disconnect(this);
    d->document = document;
    d->transform.reset(transform);
    d->frame = QRectF();
    d->isHeld = false;
    if (document)
        connect(document, &QObject::destroyed, this, &NavigatorWidget::OnDocumentDestroyed);
    RebuildView();
}

void NavigatorWidget::SetViewRect(const QRectF& rect)
{
    if (d->frame == rect)
        return;
    d->frame = rect;
    update();
}

QRectF NavigatorWidget::GetViewRect() const
{
    return d->frame;
}

QSize NavigatorWidget::sizeHint() const
{
    return PreferredSize;
}

QSize NavigatorWidget::minimumSizeHint() const
{
    return SmallestSize;
}

void NavigatorWidget::RebuildView()
{
    d->isStale = true;
    update();
}

void NavigatorWidget::paintEvent(QPaintEvent*)
{
    const QRect place = d->Place(size());
    if (place.isEmpty())
        return;
    const QSize deviceSize = place.size() * devicePixelRatioF();
    if (d->isStale || d->overview.size() != deviceSize)
    {
        d->overview = overviewOf(d->document->GetComposition(), deviceSize);
        if (d->transform && !d->overview.isNull())
            d->transform->Apply(d->overview);
        d->isStale = false;
    }
    QPainter painter(this);
    painter.fillRect(place, CheckerBrush(CheckerCell));
    painter.drawImage(place, d->overview);
    if (d->frame.isValid())
    {
        const QColor line = hasFocus() ? palette().color(QPalette::Highlight) : QColor(Qt::white);
        drawFrame(painter, place, d->FrameIn(size()), line);
    }
    if (hasFocus())
    {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        option.backgroundColor = palette().color(QPalette::Window);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
}

void NavigatorWidget::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || d->Place(size()).isEmpty())
    {
        QWidget::mousePressEvent(event);
        return;
    }
    const QPointF point = d->ToDocument(size(), event->localPos());
    d->isHeld = true;
    if (d->FrameIn(size()).contains(event->localPos()))
    {
        d->hold = point - d->frame.topLeft();
        return;
    }
    d->hold = QPointF(d->frame.width() / 2, d->frame.height() / 2);
    moveFrame(point - d->hold);
}

void NavigatorWidget::mouseMoveEvent(QMouseEvent* event)
{
    if (d->isHeld && !d->Place(size()).isEmpty())
        moveFrame(d->ToDocument(size(), event->localPos()) - d->hold);
    else
        QWidget::mouseMoveEvent(event);
}

void NavigatorWidget::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        d->isHeld = false;
    QWidget::mouseReleaseEvent(event);
}

void NavigatorWidget::keyPressEvent(QKeyEvent* event)
{
    const double part = event->modifiers() & Qt::ShiftModifier ? SmallStep : Step;
    const QPointF step(qMax(1.0, d->frame.width() * part), qMax(1.0, d->frame.height() * part));
    QPointF corner = d->frame.topLeft();
    switch (event->key())
    {
    case Qt::Key_Left:
        corner.rx() -= step.x();
        break;
    case Qt::Key_Right:
        corner.rx() += step.x();
        break;
    case Qt::Key_Up:
        corner.ry() -= step.y();
        break;
    case Qt::Key_Down:
        corner.ry() += step.y();
        break;
    default:
        QWidget::keyPressEvent(event);
        return;
    }
    moveFrame(corner);
}

void NavigatorWidget::OnDocumentDestroyed()
{
    SetDocument(nullptr, nullptr);
}

void NavigatorWidget::moveFrame(const QPointF& corner)
{
    if (!d->document)
        return;
    const QSizeF document = d->document->GetSize();
    const QRectF frame = d->frame;
    const QPointF bounded(boundedCorner(corner.x(), frame.width(), document.width(), frame.x()),
                          boundedCorner(corner.y(), frame.height(), document.height(), frame.y()));
    if (bounded == frame.topLeft())
        return;
    d->frame.moveTopLeft(bounded);
    update();
    // Who hears this divides by the ratio.
    Q_EMIT ViewRectPosChanged(QRectF(bounded * devicePixelRatio(), frame.size()));
}
