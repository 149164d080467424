#include "BarPopup_p.h"

#include <QAbstractButton>
#include <QCursor>
#include <QEvent>

#include "KXBrushSettings.h"
#include "NVBrushToolbarWidget.h"

namespace
{

void open(QWidget* popup, const QAbstractButton* button, QObject* bar)
{
    const QPoint corner = button->mapToGlobal(QPoint(0, 0));
    popup->move(corner.x(), corner.y() + button->height() + 1);
    popup->show();
    popup->raise();
    popup->activateWindow();
    popup->setFocus(Qt::OtherFocusReason);
    popup->installEventFilter(bar);
}

void close(QWidget* popup, QObject* bar)
{
    popup->removeEventFilter(bar);
    popup->hide();
}

} // namespace

void ShowBarPopup(bool checked, QWidget* popup, const QAbstractButton* button, QObject* bar)
{
    if (checked)
        open(popup, button, bar);
    else
        close(popup, bar);
}

void FollowBarPopup(QWidget* popup, QAbstractButton* button, const QEvent* event)
{
    if (event->type() == QEvent::Hide && button->isChecked())
        button->setChecked(false);
    if (event->type() != QEvent::WindowDeactivate)
        return;
    const bool pointerOnButton = button->rect().contains(button->mapFromGlobal(QCursor::pos()));
    if (!pointerOnButton || !button->isChecked())
        popup->hide();
}

void FollowSettingsPopup(QWidget* popup, QAbstractButton* button, const QEvent* event, bool& blocked,
                         AfterBlock after)
{
    switch (event->type())
    {
    case QEvent::WindowBlocked:
        blocked = true;
        break;
    case QEvent::WindowUnblocked:
        if (after == AfterBlock::Raise)
            popup->raise();
        blocked = false;
        break;
    case QEvent::WindowDeactivate:
        if (blocked)
            break;
        Q_FALLTHROUGH();
    default:
        FollowBarPopup(popup, button, event);
        break;
    }
}

bool IsSettingsPopup(QObject* object, const NVBrushToolbarWidget* bar)
{
    const auto* settings = qobject_cast<KXBrushSettings*>(object);
    return settings && settings == bar->GetBrushes();
}
