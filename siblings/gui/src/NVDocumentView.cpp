#include "NVDocumentView.h"

#include <QGraphicsScene>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QScrollBar>
#include <QTabletEvent>
#include <QWheelEvent>
#include <cmath>
#include <typeinfo>

#include "CompositionPyramid_p.h"
#include "KXColorTransformBase.h"
#include "KXDocumentInterface.h"
#include "KXDocumentModel.h"

const double NVDocumentView::MinScale = 1.0 / 64.0;
const double NVDocumentView::MaxScale = 64.0;

namespace
{

// Device-independent pixels of the document that stay in sight however far it is panned.
const int KeptInSight = 32;
const int FitMargin = 8;
// One notch of a wheel, in the toolkit's eighths of a degree.
const int Notch = 120;
const double NotchesToDouble = 3.0;
const double PanPerNotch = 60.0;

// The transform to the screen, or null when it changes nothing.
std::unique_ptr<KXColorTransformBase> screenFilter(const KXDocumentModel* model)
{
    std::unique_ptr<KXColorTransformBase> filter(model ? model->CreateComplexFilter() : nullptr);
    if (filter)
    {
        const KXColorTransformBase& made = *filter;
        if (typeid(made) == typeid(KXColorTransformBase))
            filter.reset();
    }
    return filter;
}

CanvasPoint fromMouse(const QMouseEvent& event, const QPointF& position)
{
    CanvasPoint point;
    point.position = position;
    point.button = event.button();
    point.buttons = event.buttons();
    point.modifiers = event.modifiers();
    point.timestamp = event.timestamp();
    return point;
}

CanvasPoint fromPen(const QTabletEvent& event, const QPointF& position)
{
    CanvasPoint point;
    point.position = position;
    point.pressure = qBound(0.0, event.pressure(), 1.0);
    point.button = event.button();
    point.buttons = event.buttons();
    point.modifiers = event.modifiers();
    point.eraser = event.pointerType() == QTabletEvent::Eraser;
    point.timestamp = event.timestamp();
    return point;
}

} // namespace

struct NVDocumentView::Data
{
    // What a resize keeps: the document in the middle, all of it in sight, or the place where a person moved
    // it.
    enum Placement
    {
        Centered,
        Fitted,
        Free
    };

    QGraphicsScene scene;
    KXDocumentModel* pModel = nullptr;
    QPointer<KXDocumentInterface> pDocument;
    QSize documentSize;
    CompositionPyramid pyramid;
    std::unique_ptr<KXColorTransformBase> pFilter;

    double scale = 1.0;
    Placement placement = Centered;
    bool shown = false;
    // True while the view itself moves the scroll bars.
    bool moving = false;
    QRectF sceneArea;

    Overlay overlay;
    QCursor toolCursor = Qt::ArrowCursor;
    bool spaceHeld = false;
    Qt::MouseButton panButton = Qt::NoButton;
    QPointF panFrom;
    QPoint panOrigin;
    Qt::MouseButton pressButton = Qt::NoButton;
    bool penDown = false;
};

NVDocumentView::NVDocumentView(KXDocumentModel* model, QWidget* parent)
    : QGraphicsView(parent), d(std::make_unique<Data>())
{
    qRegisterMetaType<CanvasPoint>();
    setScene(&d->scene);
    setAccessibleName(tr("Canvas"));
    setFocusPolicy(Qt::StrongFocus);
    setFrameShape(QFrame::NoFrame);
    // The picture is the same in every language.
    setLayoutDirection(Qt::LeftToRight);
    // There is always room to scroll to. Bars that come and go would change the room that they are shown for.
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setTransformationAnchor(NoAnchor);
    setResizeAnchor(NoAnchor);
    setViewportUpdateMode(MinimalViewportUpdate);
    viewport()->setMouseTracking(true);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    updateCursor();
    SetModel(model);
}

NVDocumentView::~NVDocumentView()
{
    setScene(nullptr);
}

KXDocumentModel* NVDocumentView::GetModel() const
{
    return d->pModel;
}

double NVDocumentView::GetScale() const
{
    return d->scale;
}

QPointF NVDocumentView::MapToDocument(const QPointF& viewportPoint) const
{
    return viewportTransform().inverted().map(viewportPoint);
}

QPointF NVDocumentView::MapFromDocument(const QPointF& documentPoint) const
{
    return viewportTransform().map(documentPoint);
}

void NVDocumentView::Scale(double factor, const QPointF& point)
{
    if (!std::isfinite(factor) || factor <= 0.0 || !std::isfinite(point.x()) || !std::isfinite(point.y()))
        return;
    const double scale = qBound(MinScale, d->scale * factor, MaxScale);
    if (scale == d->scale)
        return;
    const QPointF kept = MapToDocument(point);
    if (d->shown)
        d->placement = Data::Free;
    setView(scale, point - kept * scale);
}

void NVDocumentView::FitInView()
{
    d->placement = Data::Fitted;
    place();
}

void NVDocumentView::SetModel(KXDocumentModel* model)
{
    cancelPress();
    endPan();
    d->pModel = model;
    d->pFilter = screenFilter(model);
    if (d->pDocument)
        disconnect(d->pDocument, nullptr, this, nullptr);
    d->pDocument = model ? model->GetDocument() : nullptr;
    d->documentSize = d->pDocument ? d->pDocument->GetSize() : QSize();
    d->pyramid.SetDocumentSize(d->documentSize);
    if (d->pDocument)
    {
        connect(d->pDocument, &KXDocumentInterface::CompositionChanged, this,
                &NVDocumentView::OnCompositionChanged);
        connect(d->pDocument, &KXDocumentInterface::SizeChanged, this, &NVDocumentView::OnSizeChanged);
        connect(d->pDocument, &QObject::destroyed, this, &NVDocumentView::OnDocumentDestroyed);
    }
    if (d->placement == Data::Free)
        d->placement = Data::Centered;
    place();
    viewport()->update();
}

void NVDocumentView::SetOverlay(const Overlay& overlay)
{
    d->overlay = overlay;
    viewport()->update();
}

void NVDocumentView::UpdateOverlay(const QRect& area)
{
    viewport()->update(area);
}

void NVDocumentView::SetToolCursor(const QCursor& cursor)
{
    d->toolCursor = cursor;
    updateCursor();
}

void NVDocumentView::drawBackground(QPainter* painter, const QRectF& rect)
{
    const QTransform transform = painter->worldTransform();
    const double ratio = painter->device()->devicePixelRatioF();
    const QRectF exposed = transform.mapRect(rect);
    const QRect area =
        QRectF(exposed.topLeft() * ratio, exposed.size() * ratio).adjusted(-1, -1, 1, 1).toAlignedRect();
    CanvasPlace canvas;
    canvas.scale = transform.m11() * ratio;
    canvas.origin = QPointF(transform.dx(), transform.dy()) * ratio;
    canvas.pixelRatio = ratio;

    static const QImage nothing;
    const QImage& composition = d->pDocument ? d->pDocument->GetComposition() : nothing;
    QImage picture = RenderCanvas(d->pyramid, composition, d->pFilter.get(), canvas, area,
                                  palette().color(QPalette::Dark));
    picture.setDevicePixelRatio(ratio);
    painter->save();
    painter->resetTransform();
    painter->drawImage(QPointF(area.topLeft()) / ratio, picture);
    painter->restore();
}

void NVDocumentView::drawForeground(QPainter* painter, const QRectF& rect)
{
    Q_UNUSED(rect)
    if (!d->overlay)
        return;
    painter->save();
    painter->resetTransform();
    d->overlay(*painter);
    painter->restore();
}

bool NVDocumentView::viewportEvent(QEvent* event)
{
    switch (event->type())
    {
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
        takePen(static_cast<QTabletEvent*>(event));
        return true;
    case QEvent::Leave:
        Q_EMIT PointerLeft();
        break;
    default:
        break;
    }
    return QGraphicsView::viewportEvent(event);
}

// Taken in any case, so that the toolkit makes no mouse event of it.
void NVDocumentView::takePen(QTabletEvent* event)
{
    event->accept();
    const CanvasPoint point = fromPen(*event, MapToDocument(event->posF()));
    if (event->type() == QEvent::TabletPress)
    {
        d->penDown = true;
        press(point, event->posF());
    }
    else if (event->type() == QEvent::TabletMove)
    {
        move(point, event->posF());
    }
    else
    {
        release(point);
        d->penDown = event->buttons() != Qt::NoButton;
    }
}

void NVDocumentView::mousePressEvent(QMouseEvent* event)
{
    if (!d->penDown)
        press(fromMouse(*event, MapToDocument(event->localPos())), event->localPos());
}

void NVDocumentView::mouseDoubleClickEvent(QMouseEvent* event)
{
    mousePressEvent(event);
}

void NVDocumentView::mouseMoveEvent(QMouseEvent* event)
{
    if (!d->penDown)
        move(fromMouse(*event, MapToDocument(event->localPos())), event->localPos());
}

void NVDocumentView::mouseReleaseEvent(QMouseEvent* event)
{
    if (!d->penDown)
        release(fromMouse(*event, MapToDocument(event->localPos())));
}

void NVDocumentView::press(const CanvasPoint& point, const QPointF& viewportPoint)
{
    if (d->pressButton != Qt::NoButton || d->panButton != Qt::NoButton)
        return;
    if (point.button == Qt::MiddleButton || (point.button == Qt::LeftButton && d->spaceHeld))
    {
        d->panButton = point.button;
        d->panFrom = viewportPoint;
        d->panOrigin = QPoint(horizontalScrollBar()->value(), verticalScrollBar()->value());
        updateCursor();
    }
    else if (point.button == Qt::LeftButton || point.button == Qt::RightButton)
    {
        d->pressButton = point.button;
        Q_EMIT Pressed(point);
    }
}

void NVDocumentView::move(const CanvasPoint& point, const QPointF& viewportPoint)
{
    if (d->panButton == Qt::NoButton)
    {
        Q_EMIT Moved(point);
        return;
    }
    const QPoint way = (viewportPoint - d->panFrom).toPoint();
    pan(d->panOrigin - way);
}

void NVDocumentView::release(const CanvasPoint& point)
{
    if (point.button == d->panButton)
    {
        endPan();
    }
    else if (point.button == d->pressButton)
    {
        d->pressButton = Qt::NoButton;
        Q_EMIT Released(point);
    }
}

void NVDocumentView::cancelPress()
{
    if (d->pressButton == Qt::NoButton)
        return;
    d->pressButton = Qt::NoButton;
    Q_EMIT Cancelled();
}

void NVDocumentView::endPan()
{
    d->panButton = Qt::NoButton;
    updateCursor();
}

void NVDocumentView::updateCursor()
{
    if (d->panButton != Qt::NoButton)
        viewport()->setCursor(Qt::ClosedHandCursor);
    else if (d->spaceHeld)
        viewport()->setCursor(Qt::OpenHandCursor);
    else
        viewport()->setCursor(d->toolCursor);
}

void NVDocumentView::wheelEvent(QWheelEvent* event)
{
    event->accept();
    const QPoint turn = event->angleDelta().isNull() ? event->pixelDelta() : event->angleDelta();
    const bool sideways = qAbs(turn.x()) > qAbs(turn.y());
    if (sideways || event->modifiers().testFlag(Qt::ShiftModifier))
    {
        const double way = (sideways ? turn.x() : turn.y()) * PanPerNotch / Notch;
        pan(QPoint(horizontalScrollBar()->value() - qRound(way), verticalScrollBar()->value()));
        return;
    }
    Scale(std::exp2(turn.y() / (Notch * NotchesToDouble)), event->position());
}

void NVDocumentView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Space || event->modifiers() != Qt::NoModifier)
    {
        QGraphicsView::keyPressEvent(event);
        return;
    }
    d->spaceHeld = true;
    updateCursor();
}

void NVDocumentView::keyReleaseEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Space)
    {
        QGraphicsView::keyReleaseEvent(event);
        return;
    }
    // A held key is released and pressed again by its repetition.
    if (event->isAutoRepeat())
        return;
    d->spaceHeld = false;
    updateCursor();
}

void NVDocumentView::focusOutEvent(QFocusEvent* event)
{
    QGraphicsView::focusOutEvent(event);
    d->spaceHeld = false;
    if (d->panButton == Qt::LeftButton)
        d->panButton = Qt::NoButton;
    updateCursor();
}

void NVDocumentView::resizeEvent(QResizeEvent* event)
{
    d->moving = true;
    QGraphicsView::resizeEvent(event);
    d->moving = false;
    place();
}

void NVDocumentView::showEvent(QShowEvent* event)
{
    QGraphicsView::showEvent(event);
    d->shown = true;
}

void NVDocumentView::hideEvent(QHideEvent* event)
{
    QGraphicsView::hideEvent(event);
    d->spaceHeld = false;
    cancelPress();
    endPan();
}

void NVDocumentView::scrollContentsBy(int dx, int dy)
{
    QGraphicsView::scrollContentsBy(dx, dy);
    // The overlay keeps its place, while the pixels under it were moved.
    if (d->overlay)
        viewport()->update();
    if (d->moving)
        return;
    d->placement = Data::Free;
    tellSceneArea();
}

void NVDocumentView::OnCompositionChanged(const QRect& area)
{
    d->pyramid.NoteChange(area);
    // Smooth drawing spreads a pixel over its neighbours.
    const QRectF changed = viewportTransform().mapRect(QRectF(area));
    const double spread = 2.0 + d->scale;
    viewport()->update(changed.adjusted(-spread, -spread, spread, spread).toAlignedRect() &
                       viewport()->rect());
}

void NVDocumentView::OnSizeChanged(const QSize& size)
{
    cancelPress();
    const QPointF middle(viewport()->width() / 2.0, viewport()->height() / 2.0);
    const QPointF seen = MapToDocument(middle);
    const QPointF kept(seen.x() * size.width() / d->documentSize.width(),
                       seen.y() * size.height() / d->documentSize.height());
    d->documentSize = size;
    d->pyramid.SetDocumentSize(size);
    if (d->placement == Data::Free)
        setView(d->scale, middle - kept * d->scale);
    else
        place();
    viewport()->update();
}

void NVDocumentView::OnDocumentDestroyed()
{
    cancelPress();
    endPan();
    d->documentSize = QSize();
    d->pyramid.SetDocumentSize(QSize());
    place();
    viewport()->update();
}

// The part of the plane that can be scrolled to, in document pixels: so much that any pixel of the document
// can be brought under any point of the viewport, while a strip of the document stays in sight.
QRectF NVDocumentView::roomFor(double scale) const
{
    const QSizeF sight(viewport()->width(), viewport()->height());
    const double x = sight.width() - qMin<double>(KeptInSight, sight.width() / 4);
    const double y = sight.height() - qMin<double>(KeptInSight, sight.height() / 4);
    return QRectF(QPointF(0, 0), d->documentSize.expandedTo(QSize(1, 1)))
        .adjusted(-x / scale, -y / scale, x / scale, y / scale);
}

// Puts the document's corner to a point of the viewport, as near as the room allows, at a scale.
void NVDocumentView::setView(double scale, const QPointF& corner)
{
    const bool otherScale = scale != d->scale;
    d->scale = scale;
    d->moving = true;
    setSceneRect(roomFor(scale));
    setTransform(QTransform::fromScale(scale, scale));
    horizontalScrollBar()->setValue(qRound(-corner.x()));
    verticalScrollBar()->setValue(qRound(-corner.y()));
    d->moving = false;
    if (otherScale)
        Q_EMIT ScaleChanged(scale);
    tellSceneArea();
}

// Lays the document anew after the viewport or the document changed its size.
void NVDocumentView::place()
{
    const QSizeF sight(viewport()->width(), viewport()->height());
    const QSizeF size(d->documentSize.expandedTo(QSize(1, 1)));
    double scale = d->scale;
    if (d->placement == Data::Fitted)
    {
        const double fit = qMin(qMax(1.0, sight.width() - 2 * FitMargin) / size.width(),
                                qMax(1.0, sight.height() - 2 * FitMargin) / size.height());
        scale = qBound(MinScale, fit, MaxScale);
    }
    QPointF corner = MapFromDocument(QPointF(0, 0));
    if (d->placement != Data::Free)
    {
        const QSizeF rest = sight - size * scale;
        corner = QPointF(rest.width() / 2, rest.height() / 2);
    }
    setView(scale, corner);
}

void NVDocumentView::pan(const QPoint& position)
{
    horizontalScrollBar()->setValue(position.x());
    verticalScrollBar()->setValue(position.y());
}

void NVDocumentView::tellSceneArea()
{
    const QRectF area(MapToDocument(QPointF(0, 0)),
                      MapToDocument(QPointF(viewport()->width(), viewport()->height())));
    if (area == d->sceneArea)
        return;
    d->sceneArea = area;
    Q_EMIT SceneAreaChanged();
}
