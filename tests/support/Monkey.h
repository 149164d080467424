// Random but repeatable input for one widget: whatever a person, a window system or a host could do to it.

#pragma once

#include <QList>
#include <QMetaMethod>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <QWidget>

#include <random>

class QEventLoop;

// Mouse, wheel, keys, focus, resizing, showing and hiding go to the widget, its children and the windows they
// open; public slots are called with extreme arguments. One queued call an event, so that modal loops that
// the input opens are driven on; modal windows nested deeper than six are closed. The widget may be destroyed
// on the way.
//
// The same seed on the same widget gives the same events. On a crash the seed is written to standard error;
// with NORVANE_MONKEY_VERBOSE in the environment it is written at the start, and so is each event.
class Monkey : public QObject
{
    Q_OBJECT
public:
    Monkey(QWidget* widget, quint32 seed);
    ~Monkey() override;

    // Null may be given to slots for arguments of this pointer type ("IBrush*"). Slots with other pointers
    // are not called.
    void AllowNull(const QByteArray& pointerType);
    // This slot ("Accept", all overloads) is left alone.
    void ExcludeSlot(const QByteArray& name);

    // Delivers this many events, then closes what they opened. Returns how many were delivered: fewer only if
    // the widget was destroyed. Warnings are left to the gates of the test.
    int Run(int events);

private Q_SLOTS:
    void OnStep();

private:
    void act();
    void finish();
    QWidget* pickWidget();
    QPoint pickPoint(const QWidget* widget);
    void mouse();
    void wheel();
    void key();
    void focus();
    void resize();
    void visibility();
    void callSlot();
    bool callable(const QMetaMethod& method) const;
    void press(QWidget* target, Qt::Key key, Qt::KeyboardModifiers modifiers);
    void send(QWidget* target, QEvent* event);
    int pick(int count);
    void say(const char* what, const QWidget* target) const;

    QPointer<QWidget> m_pWidget;
    QPointer<QEventLoop> m_pLoop;
    QPointer<QWidget> m_pPressed;
    std::mt19937 m_random;
    QSet<QByteArray> m_nullAllowed;
    QSet<QByteArray> m_excluded;
    QSet<const QWidget*> m_foreign; // windows that were there before
    Qt::MouseButton m_button = Qt::LeftButton;
    quint32 m_seed = 0;
    int m_level = 0; // of event loops
    int m_left = 0;
    int m_closing = 0;
    int m_done = 0;
    bool m_verbose = false;
};
