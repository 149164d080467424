#include "ItemStep_p.h"

#include <QComboBox>

void SelectNextItem(QComboBox* list)
{
    if (!list->isEnabled())
        return;
    const int next = list->currentIndex() + 1;
    list->setCurrentIndex(next < list->count() ? next : 0);
}

void SelectPreviousItem(QComboBox* list)
{
    if (!list->isEnabled())
        return;
    const int previous = list->currentIndex() - 1;
    list->setCurrentIndex(previous >= 0 ? previous : list->count() - 1);
}

void SelectItem(QComboBox* list, int index)
{
    if (list->isEnabled())
        list->setCurrentIndex(index);
}
