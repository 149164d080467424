#pragma once

#include <QAbstractTableModel>
#include <QStringList>

#include <functional>

// Rows of plain text, however many: they are made when they are to be seen. Tooltips show a cell in full,
// letter by letter.
class BatchRowModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit BatchRowModel(const QStringList& headings, QObject* parent = nullptr);

    // Gives the cells of a row; may give fewer than there are headings.
    using RowMaker = std::function<QStringList(int row)>;
    void SetRows(int count, const RowMaker& maker);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    const QStringList m_headings;
    int m_count = 0;
    RowMaker m_maker;
};
