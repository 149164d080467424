#include "KXPopupWindow.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCursor>
#include <QKeyEvent>
#include <QPainter>
#include <QVBoxLayout>

#include "FormSize_p.h"
#include "ScreenPlacement.h"

namespace
{

// Milliseconds after a modal window's end in which a window manager may still hand the activation to the
// wrong window.
const int SettlingTime = 500;

} // namespace

KXPopupWindow::KXPopupWindow(QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::FramelessWindowHint), m_pContent(new QWidget(this))
{
    QVBoxLayout* layout = new QVBoxLayout(this);
    const int margin = 1;
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->addWidget(m_pContent);
    connect(m_pContent, &QWidget::windowTitleChanged, this, &KXPopupWindow::setWindowTitle);
}

KXPopupWindow::~KXPopupWindow() = default;

QWidget* KXPopupWindow::GetContent() const
{
    return m_pContent;
}

void KXPopupWindow::Popup(const QPoint& position)
{
    move(position);
    if (isVisible())
    {
        MoveOntoScreen(this);
    }
    show();
    raise();
    activateWindow();
    setFocus(Qt::PopupFocusReason);
}

void KXPopupWindow::setVisible(bool visible)
{
    if (visible)
    {
        TakeFormSize(this, m_pContent);
    }
    QWidget::setVisible(visible);
}

bool KXPopupWindow::event(QEvent* event)
{
    switch (event->type())
    {
    case QEvent::WindowBlocked:
        m_blocked = true;
        break;
    case QEvent::WindowUnblocked:
        m_blocked = false;
        if (isVisible())
        {
            raise();
        }
        if (isVisible() && m_activateAgain)
        {
            m_sinceUnblocked.start();
            activateWindow();
        }
        m_activateAgain = false;
        break;
    case QEvent::WindowDeactivate:
        CloseOnDeactivation();
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

void KXPopupWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Cancel))
    {
        hide();
        return;
    }
    QWidget::keyPressEvent(event);
}

void KXPopupWindow::showEvent(QShowEvent* event)
{
    if (!event->spontaneous())
    {
        MoveOntoScreen(this);
    }
    QWidget::showEvent(event);
}

void KXPopupWindow::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
}

void KXPopupWindow::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void KXPopupWindow::CloseOnDeactivation()
{
    if (m_blocked)
    {
        m_activateAgain = true;
        return;
    }
    if (m_sinceUnblocked.isValid() && !m_sinceUnblocked.hasExpired(SettlingTime) &&
        QGuiApplication::mouseButtons() == Qt::NoButton)
    {
        m_sinceUnblocked.invalidate();
        activateWindow();
        return;
    }
    const QAbstractButton* button = qobject_cast<QAbstractButton*>(QApplication::widgetAt(QCursor::pos()));
    if (!button || !button->isChecked())
    {
        hide();
    }
}
