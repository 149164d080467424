#include "ScreenPlacement.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

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
    const QPoint position = KeepOnScreen(frame);
    if (position != frame.topLeft())
    {
        window->move(position);
    }
}
