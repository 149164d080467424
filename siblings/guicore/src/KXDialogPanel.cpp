#include "KXDialogPanel.h"

#include <QCloseEvent>
#include <QDockWidget>
#include <QKeyEvent>
#include <QPointer>

#include "DialogKeys_p.h"

namespace
{

// Tells the panel of its dock widget's close button. An object of its own, since a subclass may hand its
// filtered events on past the panel.
class DockWatcher : public QObject
{
public:
    explicit DockWatcher(KXDialogPanel* panel) : QObject(panel), m_pPanel(panel) { }

    bool eventFilter(QObject* object, QEvent* event) override
    {
        if (event->type() == QEvent::Close && object == m_pPanel->GetDock())
        {
            m_pPanel->Reject();
        }
        return QObject::eventFilter(object, event);
    }

private:
    KXDialogPanel* m_pPanel;
};

} // namespace

KXDialogPanel::KXDialogPanel(QWidget* parent, TitlePosition position, Qt::WindowFlags flags)
    : KXPanel(parent, position, flags), m_pDockWatcher(new DockWatcher(this))
{
}

KXDialogPanel::~KXDialogPanel() = default;

void KXDialogPanel::Accept()
{
    Leave();
    Q_EMIT Accepted();
}

void KXDialogPanel::Reject()
{
    Leave();
    Q_EMIT Rejected();
}

bool KXDialogPanel::event(QEvent* event)
{
    if (event->type() == QEvent::ParentChange)
    {
        if (QDockWidget* dock = qobject_cast<QDockWidget*>(parentWidget()))
        {
            dock->installEventFilter(m_pDockWatcher);
        }
    }
    return KXPanel::event(event);
}

void KXDialogPanel::closeEvent(QCloseEvent* event)
{
    KXPanel::closeEvent(event);
    if (event->isAccepted() && isVisible())
    {
        Reject();
    }
}

void KXDialogPanel::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Cancel))
    {
        Reject();
    }
    else if (IsEnter(event))
    {
        PressDefaultButton(this);
    }
    else
    {
        KXPanel::keyPressEvent(event);
    }
}

void KXDialogPanel::Leave()
{
    QWidget* shown = GetDock();
    if (!shown)
    {
        shown = this;
    }
    shown->hide();
}
