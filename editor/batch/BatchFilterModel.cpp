#include "BatchFilterModel.h"

#include <algorithm>

#include "BatchTree.h"
#include "CountText.h"

using Model = KXBatchInputModel;
using Node = KXBatchInputModel::Node;

BatchFilterModel::BatchFilterModel(Model* model, QObject* parent)
    : QSortFilterProxyModel(parent), m_pModel(model)
{
    // Before the base hears of the change and asks for the new rows.
    connect(model, &Model::rowsInserted, this, &BatchFilterModel::OnRowsChanged);
    connect(model, &Model::rowsMoved, this, &BatchFilterModel::OnRowsChanged);
    connect(model, &Model::rowsRemoved, this, &BatchFilterModel::OnRowsChanged);
    connect(model, &Model::modelReset, this, &BatchFilterModel::OnRowsChanged);
    setSourceModel(model);
}

Model* BatchFilterModel::GetModel() const
{
    return m_pModel;
}

QString BatchFilterModel::GetText() const
{
    return m_text;
}

int BatchFilterModel::GetFileCount() const
{
    return m_text.isEmpty() ? m_pModel->GetFileCount() : m_fileCount;
}

const Node* BatchFilterModel::NodeAt(const QModelIndex& index) const
{
    return m_pModel->NodeAt(mapToSource(index));
}

QModelIndexList BatchFilterModel::SourceRows(const QModelIndexList& indexes) const
{
    QModelIndexList rows;
    const QModelIndexList top = TopMost(indexes);
    for (const QModelIndex& index : top)
        appendSourceRows(index, rows);
    return rows;
}

QVariant BatchFilterModel::data(const QModelIndex& index, int role) const
{
    const QVariant value = QSortFilterProxyModel::data(index, role);
    if (role != Qt::AccessibleTextRole || index.data(Model::NodeIsFileRole).toInt() != 0)
        return value;
    const QString name = value.isValid() ? value.toString() : index.data().toString();
    return name + QLatin1String(", ") +
        CountText(index.data(Model::NodeFileCountRole).toInt(), tr("1 image"), tr("%1 images"));
}

void BatchFilterModel::SetText(const QString& text)
{
    if (text == m_text)
        return;
    m_text = text;
    accept();
    // All at once: invalidateFilter() takes out and puts in each run of rows by itself.
    invalidate();
    Q_EMIT Filtered();
}

bool BatchFilterModel::filterAcceptsRow(int row, const QModelIndex& parent) const
{
    return m_text.isEmpty() || m_isStale ||
        m_accepted.contains(m_pModel->NodeAt(m_pModel->index(row, 0, parent)));
}

void BatchFilterModel::OnRowsChanged()
{
    if (m_isStale)
        return;
    m_isStale = true;
    QMetaObject::invokeMethod(this, &BatchFilterModel::OnSettled, Qt::QueuedConnection);
}

void BatchFilterModel::OnSettled()
{
    accept();
    if (!m_text.isEmpty())
        invalidate();
    Q_EMIT Filtered();
}

void BatchFilterModel::accept()
{
    m_isStale = false;
    m_accepted.clear();
    m_fileCount = 0;
    for (int row = 0; !m_text.isEmpty() && row < m_pModel->rowCount(); ++row)
        acceptNode(*m_pModel->NodeAt(m_pModel->index(row, 0)), false);
}

// Whether no image at or below the node is left out.
bool BatchFilterModel::isWhole(const Node& node) const
{
    if (IsImage(node))
        return m_accepted.contains(&node);
    return std::all_of(node.children.cbegin(), node.children.cend(),
                       [this](const Node* child) { return isWhole(*child); });
}

void BatchFilterModel::appendSourceRows(const QModelIndex& index, QModelIndexList& rows) const
{
    if (m_text.isEmpty() || m_isStale || isWhole(*NodeAt(index)))
    {
        rows.append(mapToSource(index));
        return;
    }
    for (int row = 0; row < rowCount(index); ++row)
        appendSourceRows(this->index(row, 0, index), rows);
}

bool BatchFilterModel::acceptNode(const Node& node, bool isBelow)
{
    const auto name = node.data.roles.constFind(Qt::DisplayRole);
    const bool isNamed =
        name != node.data.roles.constEnd() && name->toString().contains(m_text, Qt::CaseInsensitive);
    bool isAccepted = isBelow || isNamed;
    for (const Node* child : node.children)
        isAccepted |= acceptNode(*child, isBelow || isNamed);
    if (isAccepted)
        m_accepted.insert(&node);
    if (isAccepted && IsImage(node))
        ++m_fileCount;
    return isAccepted;
}
