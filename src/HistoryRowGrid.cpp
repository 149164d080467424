#include "HistoryRowGrid_p.h"

#include <QWidget>

HistoryRowGrid::HistoryRowGrid(QWidget* container) : QGridLayout(container)
{
    setContentsMargins(0, 0, 0, 0);
    setSpacing(0);
}

int HistoryRowGrid::RowOf(int item) const
{
    int row = -1;
    int column = 0;
    int rows = 0;
    int columns = 0;
    getItemPosition(item, &row, &column, &rows, &columns);
    return row;
}

void HistoryRowGrid::SetRowSize(const QSize& size)
{
    m_rowSize = size;
}

void HistoryRowGrid::invalidate() { }

QLayoutItem* HistoryRowGrid::takeAt(int item)
{
    if (item >= 0 && item < m_placed)
        --m_placed;
    return QGridLayout::takeAt(item);
}

void HistoryRowGrid::setGeometry(const QRect& rect)
{
    // Past the toolkit's grid, which would place all rows.
    QLayout::setGeometry(rect); // NOLINT(bugprone-parent-virtual-call)
    const QRect top(rect.left(), rect.top(), rect.width(), m_rowSize.height());
    if (top != m_top)
        m_placed = 0;
    m_top = top;
    // The widget itself, since an item leaves a row alone that is still to be shown.
    for (; m_placed < count(); ++m_placed)
        itemAt(m_placed)->widget()->setGeometry(top.translated(0, RowOf(m_placed) * top.height()));
}

QSize HistoryRowGrid::minimumSize() const
{
    return QSize(0, 0);
}

QSize HistoryRowGrid::maximumSize() const
{
    return QSize(QLAYOUTSIZE_MAX, QLAYOUTSIZE_MAX);
}

QSize HistoryRowGrid::sizeHint() const
{
    const int rows = count() == 0 ? 0 : RowOf(count() - 1) + 1;
    return QSize(m_rowSize.width(), rows * m_rowSize.height());
}

bool HistoryRowGrid::hasHeightForWidth() const
{
    return false;
}

Qt::Orientations HistoryRowGrid::expandingDirections() const
{
    return Qt::Horizontal;
}
