#include "PaintGate_p.h"

#include <QEvent>
#include <QLabel>
#include <QScopedValueRollback>
#include <QWidget>

namespace
{

// In ms.
constexpr qint64 Interval = 40;
constexpr qint64 Patience = 200;

} // namespace

PaintGate::PaintGate(QWidget* window, const QList<QWidget*>& widgets, const QLabel* line)
    : QObject(window), m_pWindow(window), m_widgets(widgets), m_pLine(line)
{
    window->installEventFilter(this);
}

void PaintGate::Pass()
{
    if (!m_pWindow->isVisible())
        return;
    if (IsDue())
    {
        const QScopedValueRollback<bool> painting(m_painting, true);
        SetOpen(true);
        // What was held back is due in the same go: one call paints all.
        m_widgets.first()->repaint();
        m_sincePaint.start();
    }
    SetOpen(false);
}

void PaintGate::Open()
{
    SetOpen(true);
}

bool PaintGate::eventFilter(QObject* object, QEvent* event)
{
    // Else a window that comes out from behind another would show empty spots.
    if (event->type() == QEvent::Paint && !m_painting)
        Open();
    return QObject::eventFilter(object, event);
}

bool PaintGate::IsDue() const
{
    const qint64 wait = m_pLine->text().isEmpty() ? Patience : Interval;
    return !m_sincePaint.isValid() || m_sincePaint.elapsed() >= wait;
}

void PaintGate::SetOpen(bool open)
{
    if (open == m_open)
        return;
    m_open = open;
    for (QWidget* widget : qAsConst(m_widgets))
        widget->setUpdatesEnabled(open);
}
