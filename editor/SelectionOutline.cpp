#include "SelectionOutline.h"

#include <QCoreApplication>
#include <QPaintEvent>
#include <QPainter>

#include "KXDocumentInterface.h"
#include "NVDocumentView.h"

namespace
{

const int TickMs = 150;
// The line of a mask of fewer pixels is there at once.
const qint64 QuickPixels = 2'000'000;

} // namespace

SelectionOutline::SelectionOutline(KXDocumentInterface* document, NVDocumentView* view)
    : QObject(view), m_pDocument(document), m_pView(view)
{
    m_tick.setInterval(TickMs);
    connect(&m_tick, &QTimer::timeout, this, &SelectionOutline::OnTick);
    connect(&m_work, &BackgroundWork::Done, this, &SelectionOutline::OnComputed);
    connect(document, &KXDocumentInterface::SelectionChanged, this, &SelectionOutline::OnSelectionChanged);
    connect(document, &KXDocumentInterface::SizeChanged, this, &SelectionOutline::OnSizeChanged);
    view->viewport()->installEventFilter(this);
    ShowSelection();
}

SelectionOutline* SelectionOutline::Of(const NVDocumentView* view)
{
    return view ? view->findChild<SelectionOutline*>(QString(), Qt::FindDirectChildrenOnly) : nullptr;
}

bool SelectionOutline::IsShown() const
{
    return m_drawing.HasMasks();
}

bool SelectionOutline::IsMoving() const
{
    return m_tick.isActive();
}

bool SelectionOutline::IsComputing() const
{
    return m_work.IsRunning();
}

int SelectionOutline::GetPhase() const
{
    return m_drawing.GetPhase();
}

void SelectionOutline::ShowMask(const QImage& mask)
{
    Compute(mask);
}

void SelectionOutline::ShowSelection()
{
    Compute(m_pDocument ? m_pDocument->GetSelectionMask() : QImage());
}

void SelectionOutline::SetOffset(const QPoint& offset)
{
    if (offset == m_offset)
        return;
    m_offset = offset;
    m_pView->viewport()->update();
}

bool SelectionOutline::eventFilter(QObject* object, QEvent* event)
{
    switch (event->type())
    {
    case QEvent::Paint:
        if (m_isPaintingBelow || !IsShown())
            break;
        Paint(static_cast<QPaintEvent*>(event));
        return true;
    case QEvent::Show:
    case QEvent::Hide:
        // Later, when the view knows whether it is shown.
        QMetaObject::invokeMethod(this, &SelectionOutline::UpdateTimer, Qt::QueuedConnection);
        break;
    default:
        break;
    }
    return QObject::eventFilter(object, event);
}

void SelectionOutline::OnSelectionChanged()
{
    ShowSelection();
}

void SelectionOutline::OnSizeChanged()
{
    m_work.Cancel();
    Show({});
}

void SelectionOutline::OnComputed()
{
    Show(*m_pComputed);
    m_pComputed.reset();
    Q_EMIT Computed();
}

// The dashes cover what they covered, so that the picture below need not be drawn. What else is to be drawn
// comes first: then nothing but the dashes is left for the second event.
void SelectionOutline::OnTick()
{
    QWidget* viewport = m_pView->viewport();
    if (viewport->visibleRegion().isEmpty() || viewport->window()->isMinimized())
        return;
    QEvent pending(QEvent::UpdateRequest);
    QCoreApplication::sendEvent(viewport->window(), &pending);
    if (m_drawing.GetRegion().isEmpty())
        return;
    m_drawing.SetPhase(m_drawing.GetPhase() + 1);
    m_isMovingOn = true;
    viewport->repaint(m_drawing.GetRegion());
    m_isMovingOn = false;
}

void SelectionOutline::Compute(const QImage& mask)
{
    m_work.Cancel();
    if (qint64(mask.width()) * mask.height() <= QuickPixels)
    {
        Show(HalvedMasks(mask));
        Q_EMIT Computed();
        return;
    }
    m_pComputed = std::make_shared<QVector<QImage>>();
    m_work.Start([mask, computed = m_pComputed](const std::atomic<bool>& cancelled)
                 { *computed = HalvedMasks(mask, [&cancelled] { return cancelled.load(); }); });
}

void SelectionOutline::Show(const QVector<QImage>& masks)
{
    m_drawing.SetMasks(masks);
    m_offset = QPoint();
    m_pView->viewport()->update();
    UpdateTimer();
}

void SelectionOutline::UpdateTimer()
{
    const bool moves = IsShown() && m_pView->isVisible();
    if (moves == m_tick.isActive())
        return;
    if (moves)
        m_tick.start();
    else
        m_tick.stop();
}

void SelectionOutline::Paint(QPaintEvent* event)
{
    QWidget* viewport = m_pView->viewport();
    if (m_isMovingOn && event->region().subtracted(m_drawing.GetRegion()).isEmpty())
    {
        QPainter painter(viewport);
        m_drawing.DrawAgain(painter);
        return;
    }
    m_isPaintingBelow = true;
    QCoreApplication::sendEvent(viewport, event);
    m_isPaintingBelow = false;
    QPainter painter(viewport);
    m_drawing.Draw(painter, viewport->size(), m_pView->MapFromDocument(m_offset), m_pView->GetScale());
}
