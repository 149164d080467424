#pragma once

#include <QObject>
#include <QPoint>
#include <QPointF>
#include <QPointer>
#include <QVector>
#include <QWidget>

#include <functional>

class NVDocumentView;

// The hands of the tour: puts mouse and key events into the queue of the window system, where those of a
// person come from, so that focus, shortcuts, popups and modal windows do with them what they always do.
class TourRobot : public QObject
{
    Q_OBJECT

public:
    explicit TourRobot(QObject* parent = nullptr);

    // The window that gets the keyboard when no window has it, as a window manager would see to.
    void SetHome(QWidget* window);
    // Lets the program work until the condition holds; false after ten seconds.
    bool WaitFor(const std::function<bool()>& condition);
    // Lets the program do all that it has to do now.
    void Settle();

    void Move(QWidget* widget, const QPoint& point);
    void Click(QWidget* widget, const QPoint& point, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void Click(QWidget* widget);
    void DoubleClick(QWidget* widget, const QPoint& point);
    // Turns of the wheel, towards the person above 0.
    void Wheel(QWidget* widget, const QPoint& point, int turns);
    // A drag with the left button along points of the document.
    void Drag(NVDocumentView* view, const QVector<QPointF>& points,
              Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    // The same along points of a widget.
    void DragOn(QWidget* widget, const QVector<QPoint>& points,
                Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    // To whatever has the keyboard now.
    void Key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, const QString& text = QString());
    void Type(const QString& text);

    // Calls the function in the loop of the modal window that comes up next.
    void WhenModal(const std::function<void(QWidget*)>& act);
    // Nothing is called after all, if it has not been yet.
    void ForgetModal();
    // Whether a function still waits for its window.
    bool IsWaitingForModal() const;

private Q_SLOTS:
    void OnLook();

private:
    void Mouse(QWidget* widget, const QPoint& point, int type, Qt::MouseButton button,
               Qt::KeyboardModifiers modifiers);

    QPointer<QWidget> m_pHome;
    std::function<void(QWidget*)> m_whenModal;
    Qt::MouseButtons m_buttons;
    int m_time = 1000;
};
