#include "CameraView.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPointer>
#include <QStyleOptionFocusRect>
#include <QWheelEvent>

#include "CheckerBrush_p.h"
#include "KXDocumentInterface.h"

const int CameraView::MinScaleFactor = 1;
const int CameraView::MaxScaleFactor = 32;

namespace
{

const QSize PreferredSize(220, 160);
const QSize SmallestSize(48, 48);
// Below it, the lines would hide the pixels.
const int FirstGridFactor = 4;
const int WheelStep = 120;
const int CheckerCell = 8;

QColor gridColor(int type)
{
    switch (type)
    {
    case CameraView::GridLighten:
        return QColor(255, 255, 255, 112);
    case CameraView::GridDarken:
        return QColor(0, 0, 0, 112);
    default:
        return QColor(128, 128, 128);
    }
}

// Lines of that width at the first edges of the pixels. One shape, so that the crossings are not drawn twice.
QPainterPath gridOver(const QRect& area, int factor, double width)
{
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    for (int x = area.left(); x <= area.right() + 1; x += factor)
        path.addRect(x, area.top(), width, area.height());
    for (int y = area.top(); y <= area.bottom() + 1; y += factor)
        path.addRect(area.left(), y, area.width(), width);
    return path;
}

// The pixel in the middle: a dark frame with a light one around it is seen on any picture.
void drawMark(QPainter& painter, const QRect& pixel)
{
    const QRect inner = pixel.adjusted(-1, -1, 0, 0);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(Qt::black);
    painter.drawRect(inner);
    painter.setPen(Qt::white);
    painter.drawRect(inner.adjusted(-1, -1, 1, 1));
}

} // namespace

struct CameraView::Data
{
    QPointer<KXDocumentInterface> document;
    unsigned int layer = 0;
    QPoint lookPoint;
    int factor = MinScaleFactor;
    int grid = GridNone;
    // What the wheel was turned, in eighths of a degree, and made no step yet.
    int turned = 0;

    // Null if there is nothing to look at. A value, so that nothing of it outlives a change of the document
    // by more than one painting.
    QImage Picture() const
    {
        if (!document)
            return QImage();
        if (layer == 0)
            return document->GetComposition();
        if (layer > unsigned(document->GetLayerCount()))
            return QImage();
        return document->GetLayer(int(layer) - 1).image;
    }
    // Where the pixel of the document stands in a view of that size.
    QRect PixelAt(const QSize& view, const QPoint& pixel) const
    {
        const qint64 x = (view.width() - factor) / 2 + (qint64(pixel.x()) - lookPoint.x()) * factor;
        const qint64 y = (view.height() - factor) / 2 + (qint64(pixel.y()) - lookPoint.y()) * factor;
        return QRect(int(x), int(y), factor, factor);
    }
    // The pixels of the document that a view of that size shows, whether or not the document has them.
    QRect PixelsIn(const QSize& view) const
    {
        const int columns = view.width() / factor + 3;
        const int rows = view.height() / factor + 3;
        return QRect(lookPoint.x() - columns / 2, lookPoint.y() - rows / 2, columns, rows);
    }
};

CameraView::CameraView(QWidget* parent) : QWidget(parent), d(std::make_unique<Data>())
{
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

CameraView::~CameraView() = default;

int CameraView::GetScaleFactor() const
{
    return d->factor;
}

int CameraView::GetGridType() const
{
    return d->grid;
}

QPoint CameraView::GetLookPoint() const
{
    return d->lookPoint;
}

void CameraView::SetDocument(KXDocumentInterface* document, unsigned int layer)
{
    if (d->document)
        d->document->disconnect(this);
    d->document = document;
    d->layer = layer;
    if (document)
    {
        connect(document, &KXDocumentInterface::CompositionChanged, this, &CameraView::RebuildView);
        connect(document, &QObject::destroyed, this, &CameraView::RebuildView);
    }
    update();
}

void CameraView::SetLookPoint(const QPoint& point)
{
    // A point so far away that arithmetic fails looks like any other place where there is nothing.
    const int bound = 1 << 24;
    const QPoint bounded(qBound(-bound, point.x(), bound), qBound(-bound, point.y(), bound));
    if (d->lookPoint == bounded)
        return;
    d->lookPoint = bounded;
    update();
}

void CameraView::SetScaleFactor(int factor)
{
    const int bounded = qBound(MinScaleFactor, factor, MaxScaleFactor);
    if (d->factor == bounded)
        return;
    d->factor = bounded;
    update();
    Q_EMIT ScaleChanged(bounded);
}

void CameraView::SetGridType(int type)
{
    const int known = type >= GridNone && type <= GridDarken ? type : GridNone;
    if (d->grid == known)
        return;
    d->grid = known;
    update();
}

void CameraView::RebuildView()
{
    update();
}

QSize CameraView::sizeHint() const
{
    return PreferredSize;
}

QSize CameraView::minimumSizeHint() const
{
    return SmallestSize;
}

void CameraView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().brush(QPalette::Dark));
    const QImage picture = d->Picture();
    const QRect pixels = d->PixelsIn(size()) & picture.rect();
    if (!pixels.isEmpty())
    {
        const QRect area = d->PixelAt(size(), pixels.topLeft()) | d->PixelAt(size(), pixels.bottomRight());
        painter.fillRect(area, CheckerBrush(CheckerCell));
        painter.drawImage(area, picture, pixels);
        if (d->grid != GridNone && d->factor >= FirstGridFactor)
            painter.fillPath(gridOver(area, d->factor, 1.0 / devicePixelRatioF()), gridColor(d->grid));
    }
    if (d->document)
        drawMark(painter, d->PixelAt(size(), d->lookPoint));
    if (hasFocus())
    {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        option.backgroundColor = palette().color(QPalette::Dark);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
}

void CameraView::wheelEvent(QWheelEvent* event)
{
    d->turned += event->angleDelta().y();
    const int steps = d->turned / WheelStep;
    d->turned -= steps * WheelStep;
    SetScaleFactor(d->factor + steps);
    event->accept();
}

void CameraView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Plus || event->key() == Qt::Key_Equal)
        SetScaleFactor(d->factor + 1);
    else if (event->key() == Qt::Key_Minus)
        SetScaleFactor(d->factor - 1);
    else
        QWidget::keyPressEvent(event);
}
