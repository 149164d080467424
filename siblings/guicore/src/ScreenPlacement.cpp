#include "ScreenPlacement.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

namespace
{
// The buttons of a bar, and what stays clear beside them.
const int ButtonWidth = 32;
} // namespace

QPoint KeepOnScreen(const QRect& window, const QRect& area)
{
    if (area.isEmpty())
    {
        return window.topLeft();
    }
    // The left and upper edges come last, so that they win if the window is larger than the area.
    const int x = qMax(area.left(), qMin(window.left(), area.left() + area.width() - window.width()));
    const int y = qMax(area.top(), qMin(window.top(), area.top() + area.height() - window.height()));
    return {x, y};
}

QPoint KeepOnScreen(const QRect& window)
{
    return KeepOnScreen(window, AvailableArea(window));
}

QPoint KeepOnScreenBesideButton(const QRect& window, const QRect& area)
{
    const QPoint kept = KeepOnScreen(window, area);
    if (kept.y() >= window.top())
    {
        return kept;
    }
    for (const int x : {window.left() + ButtonWidth, window.left() - window.width()})
    {
        if (x >= area.left() && x + window.width() <= area.left() + area.width())
        {
            return {x, kept.y()};
        }
    }
    return kept;
}

QRect AvailableArea(const QRect& window)
{
    const QScreen* best = QGuiApplication::screenAt(window.topLeft());
    qint64 bestArea = 0;
    const QList<QScreen*> screens = best ? QList<QScreen*>() : QGuiApplication::screens();
    for (const QScreen* screen : screens)
    {
        const QRect shown = screen->geometry().intersected(window);
        const qint64 area = qint64(shown.width()) * shown.height();
        if (area > bestArea)
        {
            best = screen;
            bestArea = area;
        }
    }
    if (!best)
    {
        best = QGuiApplication::primaryScreen();
    }
    return best ? best->availableGeometry() : QRect();
}

void MoveOntoScreen(QWidget* window)
{
    if (!window || !window->isWindow())
    {
        return;
    }
    const QRect frame = window->frameGeometry();
    const QPoint position = KeepOnScreenBesideButton(frame, AvailableArea(frame));
    if (position != frame.topLeft())
    {
        window->move(position);
    }
}
