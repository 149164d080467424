#include "BatchRefresh.h"

#include <QPersistentModelIndex>

#include "KXAddToBatchDialog.h"
#include "KXBatchInputModel.h"

using Model = KXBatchInputModel;

BatchRefresh::BatchRefresh(Model* model, QWidget* parent, bool force)
    : m_pModel(model), m_pParent(parent), m_force(force)
{
}

BatchRefresh::~BatchRefresh() = default;

const QStringList& BatchRefresh::GetScanned() const
{
    return m_scanned;
}

bool BatchRefresh::HasChanged() const
{
    return m_hasChanged;
}

bool BatchRefresh::Look(const QModelIndex& index)
{
    const QPersistentModelIndex row = index;
    const Outcome outcome = update(row);
    // What is below a folder that was scanned is as new as the folder.
    if (outcome != Kept)
        return outcome == Scanned;
    for (int child = 0; row.isValid() && child < m_pModel->rowCount(row); ++child)
    {
        const QModelIndex below = m_pModel->index(child, 0, row);
        // Folders stand first. An image that comes or goes changes the date of its folder.
        if (below.data(Model::NodeIsFileRole).toInt() != 0)
            break;
        if (!Look(below))
            return false;
    }
    return true;
}

BatchRefresh::Outcome BatchRefresh::update(const QPersistentModelIndex& row)
{
    if (!m_pDialog)
        makeDialog();
    const QString path = row.data(Model::NodePathRole).toString();
    const bool existed = row.data(Model::NodeExistsRole).toBool();
    m_outcome = Kept;
    m_pDialog->Update(row, m_force);
    if (m_outcome != Kept)
        m_pDialog.reset();
    if (m_outcome == Scanned)
        m_scanned += path;
    m_hasChanged |= m_outcome == Scanned || row.data(Model::NodeExistsRole).toBool() != existed;
    return m_outcome;
}

void BatchRefresh::makeDialog()
{
    m_pDialog = std::make_unique<KXAddToBatchDialog>(m_pModel, m_pParent);
    QObject::connect(m_pDialog.get(), &KXDialog::Accepted, m_pDialog.get(), [this] { m_outcome = Scanned; });
    QObject::connect(m_pDialog.get(), &KXDialog::Rejected, m_pDialog.get(),
                     [this] { m_outcome = Cancelled; });
}
