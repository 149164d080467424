#include "ZoomTool.h"

#include <QApplication>
#include <QLineF>
#include <QPainter>
#include <QScrollBar>
#include <QToolButton>

#include "NVZoomToolbar.h"
#include "Theme.h"

namespace
{

const double ClickFactor = 2.0;

QPointF MiddleOf(const NVDocumentView* view)
{
    return QRectF(view->viewport()->rect()).center();
}

} // namespace

ZoomTool::ZoomTool(QObject* parent) : Tool(parent) { }

NVZoomToolbar* ZoomTool::GetZoomBar()
{
    return static_cast<NVZoomToolbar*>(GetBar());
}

QString ZoomTool::GetName() const
{
    return tr("Zoom");
}

QString ZoomTool::GetPictureName() const
{
    return QStringLiteral("tool-zoom");
}

QKeySequence ZoomTool::GetKey() const
{
    return Qt::Key_Z;
}

bool ZoomTool::Cancel()
{
    if (!m_isPressed)
        return false;
    Finish();
    return true;
}

void ZoomTool::Finish()
{
    const QRectF box = GetBox();
    m_isPressed = false;
    SetEscapeLive(false);
    UpdateBox(box);
}

QWidget* ZoomTool::CreateBar()
{
    auto* bar = new NVZoomToolbar(nullptr);
    connect(bar, &NVZoomToolbar::ActualPixels, this, &ZoomTool::OnActualPixels);
    connect(bar, &NVZoomToolbar::FitScreen, this, &ZoomTool::OnFitScreen);
    return bar;
}

void ZoomTool::UpdateBarTheme(QWidget* bar)
{
    SetBarPicture(bar, QStringLiteral("m_pPicture"), QStringLiteral("tool-bar-search"));
    for (const char* button : {"m_pZoomIn", "m_pZoomOut"})
    {
        const bool isIn = qstrcmp(button, "m_pZoomIn") == 0;
        bar->findChild<QToolButton*>(QLatin1String(button))
            ->setIcon(Theme::Icon(isIn ? QStringLiteral("zoom_in") : QStringLiteral("zoom_out")));
    }
}

void ZoomTool::CanvasChanged()
{
    GetZoomBar()->SetActualPixelsEnabled(GetDocument());
    GetZoomBar()->SetFitScreenEnabled(GetDocument());
}

void ZoomTool::Equip(NVDocumentView* view)
{
    view->SetToolCursor(Qt::CrossCursor);
    view->SetOverlay([this](QPainter& painter) { DrawBox(painter); });
}

void ZoomTool::Pressed(const CanvasPoint& point)
{
    const bool isOther = point.button == Qt::RightButton || point.modifiers.testFlag(Qt::AltModifier);
    m_isPressed = true;
    m_isDrag = false;
    m_isOut = GetZoomBar()->IsZoomOut() != isOther;
    m_start = point.position;
    m_end = point.position;
    SetEscapeLive(true);
}

void ZoomTool::Moved(const CanvasPoint& point)
{
    if (!m_isPressed)
        return;
    const QRectF before = GetBox();
    m_end = point.position;
    const QLineF way(GetView()->MapFromDocument(m_start), GetView()->MapFromDocument(m_end));
    m_isDrag = m_isDrag || way.length() >= QApplication::startDragDistance();
    UpdateBox(before);
}

void ZoomTool::Released(const CanvasPoint& point)
{
    Q_UNUSED(point)
    if (!m_isPressed)
        return;
    const QRectF box = GetBox();
    Finish();
    if (m_isDrag)
        ZoomToBox(box);
    else
        GetView()->Scale(m_isOut ? 1 / ClickFactor : ClickFactor, GetView()->MapFromDocument(m_start));
}

void ZoomTool::OnActualPixels()
{
    if (GetView())
        GetView()->Scale(1 / GetView()->GetScale(), MiddleOf(GetView()));
}

void ZoomTool::OnFitScreen()
{
    if (GetView())
        GetView()->FitInView();
}

QRectF ZoomTool::GetBox() const
{
    if (!m_isPressed || !m_isDrag || !GetView())
        return QRectF();
    return QRectF(GetView()->MapFromDocument(m_start), GetView()->MapFromDocument(m_end)).normalized();
}

// In, so that what lies in the box fills the view; out, so that what is in sight fits into the box. Its
// middle comes to the middle of the view.
void ZoomTool::ZoomToBox(const QRectF& box)
{
    NVDocumentView* view = GetView();
    const QSizeF sight = view->viewport()->size();
    const double share =
        qMax(qMax(box.width(), 1.0) / sight.width(), qMax(box.height(), 1.0) / sight.height());
    const QPointF middle = view->MapToDocument(box.center());
    view->Scale(m_isOut ? share : 1 / share, box.center());
    const QPointF way = view->MapFromDocument(middle) - MiddleOf(view);
    view->horizontalScrollBar()->setValue(view->horizontalScrollBar()->value() + qRound(way.x()));
    view->verticalScrollBar()->setValue(view->verticalScrollBar()->value() + qRound(way.y()));
}

void ZoomTool::UpdateBox(const QRectF& before)
{
    if (!GetView())
        return;
    for (const QRectF& box : {before, GetBox()})
    {
        if (!box.isNull())
            GetView()->UpdateOverlay(box.toAlignedRect().adjusted(-2, -2, 2, 2));
    }
}

void ZoomTool::DrawBox(QPainter& painter) const
{
    const QRectF box = GetBox();
    if (box.isNull())
        return;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::black, 1));
    painter.drawRect(box);
    painter.setPen(QPen(Qt::white, 1, Qt::DashLine));
    painter.drawRect(box);
}
