#pragma once

// Choosing an item of a list by key. Nothing happens while the list is disabled.

class QComboBox;

// Both wrap round. Without a selection the next item is the first and the previous one the last.
void SelectNextItem(QComboBox* list);
void SelectPreviousItem(QComboBox* list);
// An index that is not in the list leaves it without a selection.
void SelectItem(QComboBox* list, int index);
