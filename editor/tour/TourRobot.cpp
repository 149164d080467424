#include "TourRobot.h"

#include <QApplication>
#include <QCursor>
#include <QElapsedTimer>
#include <QEvent>
#include <QStyleHints>
#include <QTimer>
#include <QWheelEvent>
#include <QWindow>

#include <cstdlib>

#include "NVDocumentView.h"

QT_BEGIN_NAMESPACE
// The toolkit's own entries for events that are not from a device; its test library declares them in the same
// way.
Q_GUI_EXPORT void qt_handleKeyEvent(QWindow* window, QEvent::Type type, int key,
                                    Qt::KeyboardModifiers modifiers, const QString& text, bool autoRepeat,
                                    ushort count);
Q_GUI_EXPORT void qt_handleMouseEvent(QWindow* window, const QPointF& local, const QPointF& global,
                                      Qt::MouseButtons state, Qt::MouseButton button, QEvent::Type type,
                                      Qt::KeyboardModifiers modifiers, int timestamp);
QT_END_NAMESPACE

namespace
{

const int PatienceMs = 10000;
const int LookMs = 5;

QWindow* KeyboardWindow()
{
    const QWidget* widget =
        QApplication::activeModalWidget() ? QApplication::activeModalWidget() : QApplication::activeWindow();
    return widget ? widget->window()->windowHandle() : nullptr;
}

// The platform without a screen looks for the window there without regard to its scale, and would take a
// pointer that only hovers to have left it.
bool CanPlacePointer(const QWidget* window)
{
    return QGuiApplication::platformName() != QLatin1String("offscreen") ||
        qFuzzyCompare(window->devicePixelRatioF(), 1.0);
}

} // namespace

TourRobot::TourRobot(QObject* parent) : QObject(parent) { }

void TourRobot::SetHome(QWidget* window)
{
    m_pHome = window;
}

bool TourRobot::WaitFor(const std::function<bool()>& condition)
{
    QElapsedTimer time;
    time.start();
    QTimer wake;
    wake.start(LookMs);
    while (!condition())
    {
        if (time.hasExpired(PatienceMs))
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    Settle();
    return true;
}

void TourRobot::Settle()
{
    for (int i = 0; i < 3; ++i)
    {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

void TourRobot::Move(QWidget* widget, const QPoint& point)
{
    Mouse(widget, point, QEvent::MouseMove, Qt::NoButton, Qt::NoModifier);
}

void TourRobot::Click(QWidget* widget, const QPoint& point, Qt::KeyboardModifiers modifiers)
{
    // Not to be taken for the second half of a double click.
    m_time += 2 * QGuiApplication::styleHints()->mouseDoubleClickInterval();
    Mouse(widget, point, QEvent::MouseMove, Qt::NoButton, modifiers);
    Mouse(widget, point, QEvent::MouseButtonPress, Qt::LeftButton, modifiers);
    Mouse(widget, point, QEvent::MouseButtonRelease, Qt::LeftButton, modifiers);
    Settle();
}

void TourRobot::Click(QWidget* widget)
{
    Click(widget, widget->rect().center());
}

void TourRobot::DoubleClick(QWidget* widget, const QPoint& point)
{
    Click(widget, point);
    Mouse(widget, point, QEvent::MouseButtonPress, Qt::LeftButton, Qt::NoModifier);
    Mouse(widget, point, QEvent::MouseButtonRelease, Qt::LeftButton, Qt::NoModifier);
    Settle();
}

void TourRobot::Wheel(QWidget* widget, const QPoint& point, int turns)
{
    Move(widget, point);
    for (int i = 0; i < std::abs(turns); ++i)
    {
        QWheelEvent event(point, widget->mapToGlobal(point), QPoint(), QPoint(0, turns > 0 ? -120 : 120),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(widget, &event);
    }
    Settle();
}

void TourRobot::Drag(NVDocumentView* view, const QVector<QPointF>& points, Qt::KeyboardModifiers modifiers)
{
    // What a tool does on the way may move the document under the pointer.
    QVector<QPoint> places;
    for (const QPointF& point : points)
        places += view->MapFromDocument(point).toPoint();
    DragOn(view->viewport(), places, modifiers);
}

void TourRobot::DragOn(QWidget* widget, const QVector<QPoint>& points, Qt::KeyboardModifiers modifiers)
{
    m_time += 2 * QGuiApplication::styleHints()->mouseDoubleClickInterval();
    Mouse(widget, points.constFirst(), QEvent::MouseMove, Qt::NoButton, modifiers);
    Mouse(widget, points.constFirst(), QEvent::MouseButtonPress, Qt::LeftButton, modifiers);
    for (const QPoint& point : points)
        Mouse(widget, point, QEvent::MouseMove, Qt::NoButton, modifiers);
    Mouse(widget, points.constLast(), QEvent::MouseButtonRelease, Qt::LeftButton, modifiers);
}

void TourRobot::Key(int key, Qt::KeyboardModifiers modifiers, const QString& text)
{
    if (!KeyboardWindow() && m_pHome)
    {
        m_pHome->activateWindow();
        WaitFor([] { return KeyboardWindow() != nullptr; });
    }
    QWindow* window = KeyboardWindow();
    if (!window)
        return;
    qt_handleKeyEvent(window, QEvent::KeyPress, key, modifiers, text, false, 1);
    // The key may have closed the window.
    if (KeyboardWindow() == window)
        qt_handleKeyEvent(window, QEvent::KeyRelease, key, modifiers, text, false, 1);
    Settle();
}

void TourRobot::Type(const QString& text)
{
    for (const QChar letter : text)
        Key(letter.toUpper().unicode(), Qt::NoModifier, QString(letter));
}

void TourRobot::WhenModal(const std::function<void(QWidget*)>& act)
{
    m_whenModal = act;
    QTimer::singleShot(LookMs, this, &TourRobot::OnLook);
}

void TourRobot::ForgetModal()
{
    m_whenModal = nullptr;
}

bool TourRobot::IsWaitingForModal() const
{
    return bool(m_whenModal);
}

void TourRobot::OnLook()
{
    QWidget* modal = QApplication::activeModalWidget();
    if (!m_whenModal)
        return;
    if (!modal || !modal->isVisible())
    {
        QTimer::singleShot(LookMs, this, &TourRobot::OnLook);
        return;
    }
    Settle();
    // A look of an earlier call may have come in between.
    if (!m_whenModal)
        return;
    const std::function<void(QWidget*)> act = std::move(m_whenModal);
    m_whenModal = nullptr;
    act(modal);
}

void TourRobot::Mouse(QWidget* widget, const QPoint& point, int type, Qt::MouseButton button,
                      Qt::KeyboardModifiers modifiers)
{
    QWidget* top = widget->window();
    const QPoint global = widget->mapToGlobal(point);
    // Who asks for the pointer instead of waiting for events gets the same answer.
    if (type != QEvent::MouseMove || CanPlacePointer(top))
        QCursor::setPos(global);
    if (type == QEvent::MouseButtonPress)
    {
        m_buttons |= button;
        if (!top->isActiveWindow() && !QApplication::activePopupWidget())
        {
            top->activateWindow();
            Settle();
        }
    }
    else if (type == QEvent::MouseButtonRelease)
        m_buttons &= ~Qt::MouseButtons(button);
    m_time += 10;
    if (QWindow* window = top->windowHandle())
        qt_handleMouseEvent(window, top->mapFromGlobal(global), global, m_buttons, button, QEvent::Type(type),
                            modifiers, m_time);
    QCoreApplication::processEvents();
}
