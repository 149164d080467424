#include "BarPopup_p.h"

#include <QAbstractButton>
#include <QCursor>

void OpenBarPopup(QWidget* popup, const QAbstractButton* button, QObject* bar)
{
    const QPoint corner = button->mapToGlobal(QPoint(0, 0));
    popup->move(corner.x(), corner.y() + button->height() + 1);
    popup->show();
    popup->raise();
    popup->activateWindow();
    popup->setFocus(Qt::OtherFocusReason);
    popup->installEventFilter(bar);
}

void CloseBarPopup(QWidget* popup, QObject* bar)
{
    popup->removeEventFilter(bar);
    popup->hide();
}

void RaiseBarPopupButton(QAbstractButton* button)
{
    if (button->isChecked())
        button->setChecked(false);
}

void LeaveBarPopup(QWidget* popup, const QAbstractButton* button)
{
    const bool pointerOnButton = button->rect().contains(button->mapFromGlobal(QCursor::pos()));
    if (!pointerOnButton || !button->isChecked())
        popup->hide();
}
