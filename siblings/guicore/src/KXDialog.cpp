#include "KXDialog.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QApplication>
#include <QCursor>
#include <QEventLoop>
#include <QKeyEvent>
#include <QShowEvent>

#include "DialogKeys_p.h"
#include "ReturnActivation_p.h"
#include "ScreenPlacement.h"

namespace
{

QAccessibleInterface* CreateInterface(const QString& className, QObject* object)
{
    if (!object || !object->isWidgetType())
    {
        return nullptr;
    }
    if (className == QLatin1String("KXMessageBox"))
    {
        return new QAccessibleWidget(static_cast<QWidget*>(object), QAccessible::AlertMessage);
    }
    if (className == QLatin1String("KXDialog"))
    {
        return new QAccessibleWidget(static_cast<QWidget*>(object), QAccessible::Dialog);
    }
    return nullptr;
}

} // namespace

// One call of Exec(). It stands on the stack, so that the result outlives the dialog.
struct KXDialog::Run
{
    QEventLoop loop;
    int result = ResultClosed;
};

KXDialog::KXDialog(QWidget* parent, Qt::WindowFlags flags) : KXWidget(parent, flags | Qt::Dialog)
{
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    QAccessible::installFactory(CreateInterface);
}

KXDialog::~KXDialog()
{
    if (isVisible())
    {
        KXWidget::setVisible(false);
        GiveFocusBack();
    }
    if (m_pRun)
    {
        m_pRun->loop.exit();
    }
}

int KXDialog::GetResult() const
{
    return m_result;
}

int KXDialog::Exec()
{
    if (m_pRun)
    {
        return ResultClosed;
    }
    const bool deleteOnClose = testAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_DeleteOnClose, false);
    const bool wasModal = testAttribute(Qt::WA_ShowModal);
    setAttribute(Qt::WA_ShowModal, true);

    const QPointer<KXDialog> self(this);
    Run run;
    m_pRun = &run;
    show();
    if (self && m_pRun == &run)
    {
        run.loop.exec(QEventLoop::DialogExec);
    }
    if (self && m_pRun == &run)
    {
        // The application quits, which ends all loops and hides nothing.
        Done(ResultClosed);
    }
    if (self)
    {
        setAttribute(Qt::WA_ShowModal, wasModal);
        if (deleteOnClose)
        {
            deleteLater();
        }
    }
    return run.result;
}

void KXDialog::setVisible(bool visible)
{
    if (!visible && isVisible())
    {
        Done(ResultClosed);
        return;
    }
    if (visible && !isVisible())
    {
        m_pFocusBefore = QApplication::focusWidget();
    }
    KXWidget::setVisible(visible);
}

void KXDialog::Accept()
{
    Done(ResultAccepted);
}

void KXDialog::Reject()
{
    Done(ResultRejected);
}

void KXDialog::Done(int result)
{
    m_result = result;
    if (isVisible())
    {
        KXWidget::setVisible(false);
        GiveFocusBack();
        if (testAttribute(Qt::WA_DeleteOnClose))
        {
            deleteLater();
        }
    }
    if (m_pRun)
    {
        m_pRun->result = result;
        m_pRun->loop.exit();
        m_pRun = nullptr;
    }
    const QPointer<KXDialog> self(this);
    Q_EMIT Finished(result);
    if (self && result == ResultAccepted)
    {
        Q_EMIT Accepted();
    }
    else if (self && result <= ResultRejected)
    {
        Q_EMIT Rejected();
    }
}

void KXDialog::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Cancel))
    {
        Done(ResultClosed);
    }
    else if (IsEnter(event))
    {
        PressDefaultButton(this);
    }
    else
    {
        KXWidget::keyPressEvent(event);
    }
}

void KXDialog::showEvent(QShowEvent* event)
{
    if (!event->spontaneous() && !testAttribute(Qt::WA_Moved))
    {
        CentreOverParent();
        // It was not a person or the host who chose the place: the next time the dialog is centred again.
        setAttribute(Qt::WA_Moved, false);
    }
    KXWidget::showEvent(event);
}

void KXDialog::CentreOverParent()
{
    const QWidget* host = parentWidget() ? parentWidget()->window() : QApplication::activeWindow();
    const bool hasHost = host && host != this && host->isVisible();
    const QRect over = hasHost ? host->frameGeometry() : AvailableArea(QRect(QCursor::pos(), QSize(1, 1)));
    // This window has no frame yet; that of the host is the best guess.
    const QSize frame = hasHost ? host->frameGeometry().size() - host->geometry().size() : QSize();
    QRect place(QPoint(), size() + frame.expandedTo(QSize(0, 0)));
    place.moveCenter(over.center());
    move(KeepOnScreen(place, AvailableArea(QRect(over.center(), QSize(1, 1)))));
}

void KXDialog::GiveFocusBack()
{
    QWidget* next = m_pFocusBefore && m_pFocusBefore->isVisible() ? m_pFocusBefore.data() : parentWidget();
    m_pFocusBefore.clear();
    if (next && next->window()->isVisible())
    {
        ReturnActivation(next->window());
    }
}
