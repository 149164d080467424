#include "TourRobot.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCursor>
#include <QEvent>
#include <QStyleHints>
#include <QTimer>
#include <QWheelEvent>
#include <QWindow>

#include <algorithm>
#include <cstdlib>

#include "KXPopupWindow.h"
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
// A window manager that just then moves a new dialog loses a click on it.
const int ClicksAtMost = 3;
const int LookMs = 5;
// Times the patience: a dialog may be at work that takes long, on a slow machine.
const int LeftAlone = 12;
const int EscapeKeys = 3;
// Over one another, more than there ever are.
const int WindowsAtMost = 8;

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

TourRobot::TourRobot(QObject* parent) : QObject(parent), m_patience(PatienceMs)
{
    QTimer::singleShot(LookMs, this, &TourRobot::OnLook);
}

void TourRobot::SetHome(QWidget* window)
{
    m_pHome = window;
}

void TourRobot::SetReport(const std::function<void(const QString&)>& report)
{
    m_report = report;
}

void TourRobot::SetPatience(int ms)
{
    m_patience = ms;
}

bool TourRobot::WaitFor(const std::function<bool()>& condition)
{
    QElapsedTimer time;
    time.start();
    QTimer wake;
    wake.start(LookMs);
    while (!condition())
    {
        if (time.hasExpired(m_patience))
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

void TourRobot::ClearScreen()
{
    for (int i = 0; i < WindowsAtMost && QApplication::activePopupWidget(); ++i)
    {
        QApplication::activePopupWidget()->close();
        Settle();
    }
    for (int i = 0; i < WindowsAtMost && QApplication::activeModalWidget(); ++i)
        Dismiss(QApplication::activeModalWidget());
    const QWidgetList all = QApplication::topLevelWidgets();
    for (QWidget* top : all)
    {
        if (qobject_cast<KXPopupWindow*>(top))
            top->hide();
    }
    Settle();
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
    const QPointer<QAbstractButton> button = qobject_cast<QAbstractButton*>(widget);
    bool isClicked = false;
    QObject context;
    if (button)
        connect(button, &QAbstractButton::clicked, &context, [&isClicked] { isClicked = true; });
    Click(widget, Needed(widget, "there is nothing to click at")->rect().center());
    const auto isLost = [&]
    {
        return button && !isClicked && button->isEnabled() && !QApplication::activePopupWidget() &&
            button->window() == QApplication::activeModalWidget();
    };
    for (int i = 1; i < ClicksAtMost && isLost(); ++i)
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
    AwaitActive(QApplication::activeModalWidget());
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
}

void TourRobot::ForgetModal()
{
    m_whenModal = nullptr;
}

bool TourRobot::IsWaitingForModal() const
{
    return bool(m_whenModal);
}

bool TourRobot::IsAnswered(const QWidget* modal) const
{
    return std::any_of(m_answered.cbegin(), m_answered.cend(),
                       [modal](const QPointer<QWidget>& one) { return one == modal; });
}

void TourRobot::OnLook()
{
    // The loops of modal windows are within each other: each look sees to the next one.
    QTimer::singleShot(LookMs, this, &TourRobot::OnLook);
    m_answered.erase(std::remove_if(m_answered.begin(), m_answered.end(),
                                    [](const QPointer<QWidget>& one) { return !one || !one->isVisible(); }),
                     m_answered.end());
    QWidget* modal = QApplication::activeModalWidget();
    if (!modal || !modal->isVisible())
    {
        m_pLeft = nullptr;
        return;
    }
    if (modal != m_pLeft || modal == m_pBusy)
        m_leftSince.start();
    m_pLeft = modal;
    if (m_whenModal && !IsAnswered(modal))
    {
        // Before that a window manager may still move it.
        if (modal->isActiveWindow() || m_leftSince.hasExpired(m_patience))
            Answer(modal);
    }
    else if (m_leftSince.hasExpired(qint64(LeftAlone) * m_patience))
    {
        if (m_report)
            m_report(QStringLiteral("the window \"%1\" stayed open").arg(modal->windowTitle()));
        Dismiss(modal);
    }
}

void TourRobot::Answer(QWidget* modal)
{
    const QPointer<QWidget> window = modal;
    Settle();
    // A look of the meantime may have been first, and the window may have gone.
    if (!m_whenModal || !window || !window->isVisible())
        return;
    const std::function<void(QWidget*)> act = std::move(m_whenModal);
    m_whenModal = nullptr;
    m_answered += window;
    const QPointer<QWidget> before = m_pBusy;
    m_pBusy = window;
    // The toolkit, which has called this, must not be left by an exception.
    try
    {
        act(window);
    }
    catch (const StepEnded& end)
    {
        if (m_report)
            m_report(end.GetReason());
        if (window)
            Dismiss(window);
    }
    m_pBusy = before;
    m_leftSince.start();
}

void TourRobot::Dismiss(QWidget* modal)
{
    const QPointer<QWidget> window = modal;
    const QPointer<QWidget> before = m_pBusy;
    m_pBusy = window;
    for (int i = 0; i < EscapeKeys && window && window->isVisible(); ++i)
        Key(Qt::Key_Escape);
    // Ends its loop whatever it makes of the key.
    if (window)
        window->hide();
    Settle();
    m_pBusy = before;
}

// A window manager gives a window its place and the keyboard when it finds the time. Popups get neither.
void TourRobot::AwaitActive(QWidget* window)
{
    const QPointer<QWidget> awaited = window;
    const auto isReady = [&awaited]
    {
        return !awaited || !awaited->isVisible() || awaited->isActiveWindow() ||
            QApplication::activePopupWidget();
    };
    if (isReady())
        return;
    window->activateWindow();
    WaitFor(isReady);
}

void TourRobot::Mouse(QWidget* widget, const QPoint& point, int type, Qt::MouseButton button,
                      Qt::KeyboardModifiers modifiers)
{
    const QPointer<QWidget> target = Needed(widget, "there is nothing to point at");
    if (type == QEvent::MouseButtonPress)
        AwaitActive(target->window());
    if (!target)
        return;
    QWidget* top = target->window();
    const QPoint global = widget->mapToGlobal(point);
    // Who asks for the pointer instead of waiting for events gets the same answer.
    if (type != QEvent::MouseMove || CanPlacePointer(top))
        QCursor::setPos(global);
    if (type == QEvent::MouseButtonPress)
        m_buttons |= button;
    else if (type == QEvent::MouseButtonRelease)
        m_buttons &= ~Qt::MouseButtons(button);
    m_time += 10;
    if (QWindow* window = top->windowHandle())
        qt_handleMouseEvent(window, top->mapFromGlobal(global), global, m_buttons, button, QEvent::Type(type),
                            modifiers, m_time);
    QCoreApplication::processEvents();
}
