#pragma once

#include <QBrush>
#include <QGradient>
#include <QList>

#include "GradientStops.h"

class QListView;
class QStandardItemModel;

// The rows of a list of gradients. A row has no text; all it holds is the brush from which the delegate
// paints it. The rows only show the gradients, they are never read back.

// Gives the view its delegate and a model of one column, which belong to it.
void SetUpGradientRows(QListView* view);

// The model that SetUpGradientRows() gave to the view.
QStandardItemModel* GradientRows(const QListView* view);

// Runs from (0, 0) to (1, 0).
QBrush GradientRowBrush(const QGradientStops& stops);

// Nothing happens for a row that isn't there.
void SetGradientRow(QStandardItemModel* rows, int row, const QGradientStops& stops);

// Replaces all rows; there is no current row then.
void LoadGradientRows(QStandardItemModel* rows, const QList<QList<NVGradientStop>>& gradients);

// Throws std::out_of_range unless the index is at least 0 and below the count. File and line stand in the
// message.
void CheckGradientIndex(int index, int count, const char* file, int line);
