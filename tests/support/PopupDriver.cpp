#include "PopupDriver.h"

#include <QApplication>
#include <QCursor>
#include <QEvent>
#include <QWindow>
#include <QtTest>

namespace
{
// While a popup grabs the mouse, or a modal window blocks the place, a click activates nothing.
void clickAt(QWidget* window, const QPoint& position)
{
    QCursor::setPos(window->mapToGlobal(position));
    if (!QApplication::activePopupWidget() && !QApplication::activeModalWidget() &&
        QApplication::activeWindow() != window)
    {
        window->activateWindow();
        if (!QTest::qWaitFor([window] { return QApplication::activeWindow() == window; }))
        {
            QTest::qFail("popup driver: the clicked window does not become active", __FILE__, __LINE__);
        }
    }
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, Qt::NoModifier, position);
}

// A tool window counts as active by itself only: QWidget::isActiveWindow() is also true while its parent is
// active.
bool active(const QWidget* popup)
{
    return QApplication::activeWindow() == popup || QApplication::activePopupWidget() == popup;
}

// A place of the window that the popup does not cover, on no control if there is such a place.
QPoint freePlace(const QWidget* window, const QWidget* popup)
{
    constexpr int STEP = 4;
    QPoint covered(-1, -1);
    for (int y = window->height() - 1; y >= 0; y -= STEP)
    {
        for (int x = window->width() - 1; x >= 0; x -= STEP)
        {
            const QPoint place(x, y);
            if (popup->frameGeometry().contains(window->mapToGlobal(place)))
            {
                continue;
            }
            if (!window->childAt(place))
            {
                return place;
            }
            covered = place;
        }
    }
    return covered;
}
} // namespace

PopupDriver::PopupDriver(QAbstractButton* button, QWidget* popup) : m_pButton(button), m_pPopup(popup)
{
    qApp->installEventFilter(this);
}

PopupDriver::~PopupDriver() = default;

QWidget* PopupDriver::Popup() const
{
    return m_pPopup;
}

bool PopupDriver::IsOpen() const
{
    return m_pPopup && m_pPopup->isVisible();
}

int PopupDriver::ShowCount() const
{
    return m_shows;
}

int PopupDriver::HideCount() const
{
    return m_hides;
}

void PopupDriver::ClearCounts()
{
    m_shows = 0;
    m_hides = 0;
}

void PopupDriver::SetPatience(int milliseconds)
{
    m_patience = milliseconds;
}

bool PopupDriver::Open()
{
    m_searching = true;
    ClickLikeAPerson(m_pButton);
    const bool open = QTest::qWaitFor([this] { return IsOpen() && active(m_pPopup); }, m_patience);
    m_searching = false;
    return open;
}

bool PopupDriver::CloseByButton()
{
    ClickLikeAPerson(m_pButton);
    return waitHidden();
}

bool PopupDriver::CloseByEscape()
{
    QWidget* focused = m_pPopup->focusWidget();
    QTest::keyClick(focused ? focused : m_pPopup.data(), Qt::Key_Escape);
    return waitHidden();
}

bool PopupDriver::CloseByClickElsewhere(QWidget* elsewhere)
{
    if (elsewhere)
    {
        ClickLikeAPerson(elsewhere);
        return waitHidden();
    }
    const QPoint place = freePlace(m_pButton->window(), m_pPopup);
    if (place.x() < 0)
    {
        return false;
    }
    clickAt(m_pButton->window(), place);
    return waitHidden();
}

void PopupDriver::ClickLikeAPerson(QWidget* widget)
{
    clickAt(widget->window(), widget->mapTo(widget->window(), widget->rect().center()));
}

bool PopupDriver::eventFilter(QObject* object, QEvent* event)
{
    const bool shown = event->type() == QEvent::Show && !event->spontaneous();
    const bool hidden = event->type() == QEvent::Hide && !event->spontaneous();
    if (shown && m_searching && !m_pPopup)
    {
        QWidget* widget = qobject_cast<QWidget*>(object);
        if (widget && widget->isWindow() && !widget->inherits("QTipLabel"))
        {
            m_pPopup = widget;
        }
    }
    if (object == m_pPopup)
    {
        m_shows += shown ? 1 : 0;
        m_hides += hidden ? 1 : 0;
    }
    return QObject::eventFilter(object, event);
}

bool PopupDriver::waitHidden() const
{
    return QTest::qWaitFor([this] { return !IsOpen(); }, m_patience);
}
