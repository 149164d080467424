#pragma once

#include <QStyledItemDelegate>

#include "gui_export.h"

// Paints the rows of a list of colour samples: the number of the row, counted from 1, a swatch, and two lines
// of text. A row of the model has
//
//   Qt::DecorationRole   the colour, a QColor; without one the swatch is empty and crossed out
//   Qt::DisplayRole      the first line, such as where the sample lies
//   DetailRole           the second line, such as the colour in numbers
//
// Behind a colour with alpha there is a checker. A text that is too long ends in dots.
class GUI_EXPORT KXColorSampleDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    enum Role
    {
        DetailRole = Qt::UserRole + 1
    };

    explicit KXColorSampleDelegate(QObject* parent);
    ~KXColorSampleDelegate() override;

    // As the texts need it until a width is set.
    int GetWidth() const;
    // The width of each row; a negative one is taken as 0. A view lays its rows out anew.
    void SetWidth(int width);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    int m_width = -1;
};
