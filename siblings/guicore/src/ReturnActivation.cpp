#include "ReturnActivation_p.h"

#include <QApplication>
#include <QTimer>
#include <QWidget>
#include <QWindow>

#include <algorithm>

namespace
{
// Milliseconds that a window manager may take.
const int SettlingTime = 500;

QWindowList visibleWindows()
{
    QWindowList windows = QGuiApplication::allWindows();
    windows.erase(std::remove_if(windows.begin(), windows.end(),
                                 [](const QWindow* window) { return !window->isVisible(); }),
                  windows.end());
    return windows;
}
} // namespace

void ReturnActivation(QWidget* window)
{
    window->activateWindow();
    // Lives no longer than the window, and stops listening when it has acted or the time is over.
    QTimer* watch = new QTimer(window);
    QObject::connect(watch, &QTimer::timeout, watch, &QObject::deleteLater);
    QObject::connect(qApp, &QGuiApplication::focusWindowChanged, watch,
                     [window, watch, others = visibleWindows()](QWindow* now)
                     {
                         if (!now || now == window->windowHandle())
                             return;
                         qApp->disconnect(watch);
                         if (others.contains(now) && window->isVisible() &&
                             QGuiApplication::mouseButtons() == Qt::NoButton &&
                             !QApplication::activeModalWidget())
                             window->activateWindow();
                     });
    watch->start(SettlingTime);
}
