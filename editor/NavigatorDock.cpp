#include "NavigatorDock.h"

#include <QEvent>

#include <cmath>

#include "NVNavigatorPanel.h"
#include "NavigatorWidget.h"

namespace
{

const int MinHeight = 280;

} // namespace

NavigatorDock::NavigatorDock(QWidget* parent)
    : QDockWidget(tr("Navigator"), parent), m_pPanel(new NVNavigatorPanel(this))
{
    setObjectName(QStringLiteral("NavigatorDock"));
    // Enough for the shape of a histogram, where another panel takes what it can get.
    m_pPanel->setMinimumHeight(MinHeight);
    setWidget(m_pPanel);
    m_pPanel->findChild<NavigatorWidget*>()->installEventFilter(this);
    connect(this, &QDockWidget::visibilityChanged, this, &NavigatorDock::OnVisibilityChanged);
    hide();
}

NavigatorDock::~NavigatorDock()
{
    // It tells of its end otherwise.
    disconnect(this, nullptr, this, nullptr);
}

void NavigatorDock::SetView(NVDocumentView* view)
{
    if (m_pView)
        disconnect(m_pView, nullptr, this, nullptr);
    m_pView = view;
    if (view)
        connect(view, &NVDocumentView::Moved, this, &NavigatorDock::OnMoved);
    Attach();
}

// A click into the overview moves the canvas and leaves the keyboard there: what is typed next belongs to a
// text, and would choose tools otherwise.
bool NavigatorDock::eventFilter(QObject* object, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonRelease && m_pView)
        m_pView->setFocus();
    return QDockWidget::eventFilter(object, event);
}

void NavigatorDock::OnVisibilityChanged(bool visible)
{
    m_isSeen = visible;
    Attach();
}

void NavigatorDock::OnMoved(const CanvasPoint& point)
{
    m_pPanel->SetLookAt(QPoint(int(std::floor(point.position.x())), int(std::floor(point.position.y()))));
}

void NavigatorDock::Attach()
{
    // Attaching may change the view, and following it costs a count of all pixels: not for a hidden panel.
    m_pPanel->SetSourceView(m_isSeen ? m_pView.data() : nullptr);
}
