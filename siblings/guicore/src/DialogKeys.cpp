#include "DialogKeys_p.h"

#include <QKeyEvent>
#include <QPushButton>
#include <QWidget>

bool IsEnter(const QKeyEvent* event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    return isEnter && !event->isAutoRepeat() && (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
}

void PressDefaultButton(QWidget* dialog)
{
    const QList<QPushButton*> buttons = dialog->findChildren<QPushButton*>();
    QPushButton* chosen = nullptr;
    for (QPushButton* button : buttons)
    {
        if (!button->isVisible() || button->window() != dialog->window())
        {
            continue;
        }
        if (button->hasFocus())
        {
            chosen = button;
            break;
        }
        if (!chosen && button->isDefault())
        {
            chosen = button;
        }
    }
    if (chosen)
    {
        chosen->click();
    }
}
