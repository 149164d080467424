// Drives modal windows as a person would, while the code under test sits in their event loop.

#pragma once

#include <QDialogButtonBox>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QTimer>
#include <QWidget>

#include <functional>

// Made before the modal window is opened:
//
//     ModalDriver driver([](QWidget* dialog) { ModalDriver::Press(dialog, "Cancel"); });
//     button->click();                      // runs the dialog and returns once it is closed
//     QVERIFY(driver.Finished());
//
// As soon as a modal window is shown and active, the next function of the queue is called on it, from the
// window's own event loop. The window must be gone soon after. Whatever modal window still stands when the
// watchdog bites is closed, and that is a failure. Failures fail the test when the driver is destroyed,
// unless they were taken.
//
// Nesting: a window that opens while a function runs is served by the next function of the same queue, or by
// a driver that was made later; the latest driver with functions left goes first.
class ModalDriver : public QObject
{
    Q_OBJECT
public:
    using Function = std::function<void(QWidget*)>;

    // `watchdog` in milliseconds is the longest time between two steps: window appears, window gone.
    explicit ModalDriver(const Function& function, int watchdog = 5000);
    explicit ModalDriver(const QList<Function>& functions, int watchdog = 5000);
    ~ModalDriver() override;

    // True when every function was called, its window is gone, and nothing failed.
    bool Finished() const;
    // What went wrong so far.
    QStringList Failures() const;
    // The same, and forgets it: the driver's end does not fail the test for these, nor for functions never
    // called.
    QStringList TakeFailures();
    // How many modal windows were served so far.
    int Served() const;

    // Clicks the visible button with this text (accelerator marks left out) with the mouse. Fails the test
    // and returns false if there is none or it is disabled.
    static bool Press(QWidget* window, const QString& text);
    static bool Press(QWidget* window, QDialogButtonBox::StandardButton button);
    // Types a key into the window's focused widget, or into the window if nothing has focus.
    static void PressKey(QWidget* window, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    // Closes the window as its title bar would.
    static void CloseWindow(QWidget* window);

    bool eventFilter(QObject* object, QEvent* event) override;

private Q_SLOTS:
    void OnLook();
    void OnWatchdog();

private:
    void serve(QWidget* window);
    void windowGone(QObject* window);
    bool mayServe() const;
    void closeModals();

    QList<Function> m_functions;
    QList<QObject*> m_open;
    QStringList m_failures;
    QTimer m_watchdog;
    int m_served = 0;
    bool m_taken = false;
};
