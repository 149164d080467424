#include "BatchRowModel.h"

#include <QTextDocument>

#include "BatchReport.h"

BatchRowModel::BatchRowModel(const QStringList& headings, QObject* parent)
    : QAbstractTableModel(parent), m_headings(headings)
{
}

void BatchRowModel::SetRows(int count, const RowMaker& maker)
{
    beginResetModel();
    m_count = count;
    m_maker = maker;
    endResetModel();
}

int BatchRowModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_count;
}

int BatchRowModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_headings.size();
}

QVariant BatchRowModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::ToolTipRole))
        return {};
    const QString text = m_maker(index.row()).value(index.column());
    if (role == Qt::DisplayRole)
        return OneLine(text);
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

QVariant BatchRowModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole)
        return m_headings.value(section);
    return QAbstractTableModel::headerData(section, orientation, role);
}
