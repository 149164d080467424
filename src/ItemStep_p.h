#pragma once

// Stepping through a list by key.

class QComboBox;

// Both wrap round, and do nothing while the list is disabled. Without a selection the next item is the first
// and the previous one the last.
void SelectNextItem(QComboBox* list);
void SelectPreviousItem(QComboBox* list);
