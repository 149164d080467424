#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QPoint>
#include <QPointF>
#include <QPointer>
#include <QVector>
#include <QWidget>

#include <functional>
#include <stdexcept>

class NVDocumentView;

// Thrown where there is no sense in going on, since what is needed next is not there: ends the step of the
// tour, or the function that works in a modal window, and nothing else.
class StepEnded : public std::runtime_error
{
public:
    explicit StepEnded(const QString& reason) : std::runtime_error(reason.toStdString()) { }
    QString GetReason() const { return QString::fromUtf8(what()); }
};

// Gives the pointer back; ends the step if it is null.
template <class Object>
Object* Needed(Object* object, const QString& reason)
{
    if (!object)
        throw StepEnded(reason);
    return object;
}

template <class Object>
Object* Needed(Object* object, const char* reason)
{
    return Needed(object, QString::fromLatin1(reason));
}

// The hands of the tour: puts mouse and key events into the queue of the window system, where those of a
// person come from, so that focus, shortcuts, popups and modal windows do with them what they always do. A
// modal window that nobody works in any more is closed after a while: its loop would never end.
class TourRobot : public QObject
{
    Q_OBJECT

public:
    explicit TourRobot(QObject* parent = nullptr);

    // The window that gets the keyboard when no window has it, as a window manager would see to.
    void SetHome(QWidget* window);
    // Told of what goes wrong in the loop of a modal window, where no caller would see it.
    void SetReport(const std::function<void(const QString&)>& report);
    // How long what is waited for may take; ten seconds unless set.
    void SetPatience(int ms);
    // Lets the program work until the condition holds; false after the patience.
    bool WaitFor(const std::function<bool()>& condition);
    // Lets the program do all that it has to do now.
    void Settle();
    // Closes what is over the windows, a menu or a dialog that stayed open.
    void ClearScreen();

    // A widget that is null ends the step.
    void Move(QWidget* widget, const QPoint& point);
    void Click(QWidget* widget, const QPoint& point, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    // In the middle. A button of the modal window that is not clicked by it gets further ones.
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

    // Calls the function in the loop of the modal window that comes up next. What it refers to has to live as
    // long as it may be called: until the step ends, which forgets it.
    void WhenModal(const std::function<void(QWidget*)>& act);
    // Nothing is called after all, if it has not been yet.
    void ForgetModal();
    // Whether a function still waits for its window.
    bool IsWaitingForModal() const;

private Q_SLOTS:
    void OnLook();

private:
    bool IsAnswered(const QWidget* modal) const;
    void Answer(QWidget* modal);
    void Dismiss(QWidget* modal);
    void AwaitActive(QWidget* window);
    void Mouse(QWidget* widget, const QPoint& point, int type, Qt::MouseButton button,
               Qt::KeyboardModifiers modifiers);

    QPointer<QWidget> m_pHome;
    std::function<void(QWidget*)> m_whenModal;
    std::function<void(const QString&)> m_report;
    // The open windows that have had their function, and the one in which one works now.
    QVector<QPointer<QWidget>> m_answered;
    QPointer<QWidget> m_pBusy;
    // The modal window in front, and since when nobody works in it.
    QPointer<QWidget> m_pLeft;
    QElapsedTimer m_leftSince;
    Qt::MouseButtons m_buttons;
    int m_patience;
    int m_time = 1000;
};
