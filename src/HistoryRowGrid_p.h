#pragma once

#include <QGridLayout>

// One column of rows, all of one height, from the top. The toolkit's own grid goes over all rows whenever one
// is added, is shown or changes its style, which takes the square of their number. Here nobody is asked for a
// size, and only rows are placed that have no place yet, when the container is resized.
class HistoryRowGrid : public QGridLayout
{
public:
    // Without margins and gaps.
    explicit HistoryRowGrid(QWidget* container);

    // The row of the grid in which that item stands; items are in the order of their rows.
    int RowOf(int item) const;

    void SetRowSize(const QSize& size);

    // What a row would like to change changes nothing.
    void invalidate() override;
    QLayoutItem* takeAt(int item) override;
    void setGeometry(const QRect& rect) override;
    QSize minimumSize() const override;
    QSize maximumSize() const override;
    QSize sizeHint() const override;
    bool hasHeightForWidth() const override;
    Qt::Orientations expandingDirections() const override;

private:
    QSize m_rowSize = QSize(0, 0);
    // Where row 0 was when the items below m_placed got their places.
    QRect m_top;
    int m_placed = 0;
};
