#include "KXAddToBatchDialog.h"

#include <QDateTime>
#include <QFileInfo>

#include "ElidedLine_p.h"
#include "FolderListing_p.h"
#include "KXAddToBatchManager.h"
#include "KXBatchInputModel.h"
#include "NVImageFileManager.h"
#include "PaintGate_p.h"
#include "ReadFilters_p.h"
#include "ui_AddToBatchDialog.h"

using Model = KXBatchInputModel;
using Manager = KXAddToBatchManager;

KXAddToBatchDialog::KXAddToBatchDialog(KXBatchInputModel* model, QWidget* parent)
    : KXDialog(parent), m_pUi(new Ui_AddToBatchDialog), m_pModel(model), m_pManager(new Manager(this))
{
    m_pUi->setupUi(Content());
    // The window has no title that a screen reader could read out.
    setAccessibleName(Content()->accessibleName());
    connect(m_pUi->m_pCancelBtn, &QPushButton::clicked, this, &KXAddToBatchDialog::Reject);
    connect(this, &KXAddToBatchDialog::Rejected, this, &KXAddToBatchDialog::OnRejected);
    ConnectManager();
    GatePainting();
    setMinimumSize(sizeHint());
    setMaximumSize(sizeHint());
}

KXAddToBatchDialog::~KXAddToBatchDialog()
{
    delete m_pUi;
}

int KXAddToBatchDialog::AddFolders(const QStringList& folders)
{
    m_pManager->ScanFolders(folders);
    return Exec();
}

int KXAddToBatchDialog::AddFiles(const QStringList& files)
{
    m_pManager->ScanFiles(files);
    return Exec();
}

void KXAddToBatchDialog::Update(const QModelIndex& index, bool force)
{
    if (!m_pModel)
        return;
    const QString path = m_pModel->data(index, Model::NodePathRole).toString();
    QFileInfo info(path);
    // What stands there may go between two looks.
    info.setCaching(false);
    if (!info.isDir())
    {
        UpdateNoFolder(index, info);
        return;
    }
    const bool exists = info.exists();
    m_pModel->setData(index, exists, Model::NodeExistsRole);
    if (!exists)
    {
        RemoveContent(index);
        m_pModel->setData(index, tr("%1 (not exists)").arg(path), Qt::ToolTipRole);
        return;
    }
    m_pModel->setData(index, path, Qt::ToolTipRole);
    if (force || HasChanged(index, info))
        Rescan(index, path);
}

void KXAddToBatchDialog::OnRejected()
{
    m_isRejected = true;
    m_pManager->Cancel();
}

void KXAddToBatchDialog::OnFinish()
{
    if (m_isRejected)
        return;
    InsertResult(QModelIndex());
    Accept();
}

void KXAddToBatchDialog::OnUpdateFinish()
{
    if (m_isRejected)
        return;
    // The old content goes only now, so that it stays when a refresh is cancelled.
    RemoveContent(m_updateIndex);
    const QFileInfo info(m_pModel->data(m_updateIndex, Model::NodePathRole).toString());
    m_pModel->setData(m_updateIndex, info.lastModified().toString(Qt::TextDate), Model::NodeModifiedRole);
    InsertResult(m_updateIndex);
    Accept();
}

// All is queued, so that a scan that has nothing to do ends in the dialog's loop and not before it.
void KXAddToBatchDialog::ConnectManager()
{
    connect(m_pManager, &Manager::ReadyAt, m_pUi->m_pFile, &QLabel::setText, Qt::QueuedConnection);
    connect(m_pManager, &Manager::ScanFinished, this, &KXAddToBatchDialog::OnFinish, Qt::QueuedConnection);
    connect(m_pManager, &Manager::NewFolder, m_pUi->m_pFolder, &QLabel::setText, Qt::QueuedConnection);
    connect(m_pManager, &Manager::ProgressChanged, m_pUi->m_pProgress, &QProgressBar::setRange,
            Qt::QueuedConnection);
    connect(m_pManager, &Manager::Progress, m_pUi->m_pProgress, &QProgressBar::setValue,
            Qt::QueuedConnection);
}

// To lay out and paint each text and value takes several times as long as the scan itself.
void KXAddToBatchDialog::GatePainting()
{
    const QMargins margins = m_pUi->gridLayout->contentsMargins();
    const int width = Content()->maximumWidth() - margins.left() - margins.right();
    for (QLabel* label : {m_pUi->m_pFolder, m_pUi->m_pFile})
    {
        ElideWhenPainted(label);
        // A label that cannot grow asks for no new layout with each text.
        label->setFixedSize(width, label->sizeHint().height());
    }
    auto* gate = new PaintGate(this, {m_pUi->m_pFolder, m_pUi->m_pProgress, m_pUi->m_pFile}, m_pUi->m_pFile);
    // Just before the bar would paint its new value. It does not tell of a value that it shows already.
    connect(m_pUi->m_pProgress, &QProgressBar::valueChanged, gate, &PaintGate::Pass);
    connect(this, &KXAddToBatchDialog::Rejected, gate, &PaintGate::Open);
}

void KXAddToBatchDialog::UpdateNoFolder(const QModelIndex& index, const QFileInfo& info)
{
    const QString path = info.filePath();
    const bool exists = info.exists();
    m_pModel->setData(index, exists, Model::NodeExistsRole);
    m_pModel->setData(index, exists ? path : tr("%1 (not exists)").arg(path), Qt::ToolTipRole);
    if (m_pModel->data(index, Model::NodeIsFileRole).toInt() == 0)
        RemoveContent(index);
}

bool KXAddToBatchDialog::HasChanged(const QModelIndex& index, const QFileInfo& info) const
{
    // Both went through the text, which knows whole seconds only.
    const QString stored = m_pModel->data(index, Model::NodeModifiedRole).toString();
    const QString current = info.lastModified().toString(Qt::TextDate);
    return QDateTime::fromString(stored, Qt::TextDate) < QDateTime::fromString(current, Qt::TextDate);
}

void KXAddToBatchDialog::Rescan(const QModelIndex& index, const QString& path)
{
    QStringList filters;
    if (const NVImageFileManager* manager = NVImageFileManager::GetInstance())
        filters = ReadFilters(*manager);
    const FolderListing listing = ListFolder(path, filters);
    m_updateIndex = index;
    disconnect(m_pManager, &Manager::ScanFinished, this, &KXAddToBatchDialog::OnFinish);
    connect(m_pManager, &Manager::ScanFinished, this, &KXAddToBatchDialog::OnUpdateFinish,
            Qt::QueuedConnection);
    m_pManager->ScanFiles(listing.files + listing.folders);
    Exec();
}

void KXAddToBatchDialog::RemoveContent(const QModelIndex& index)
{
    m_pModel->removeRows(0, m_pModel->rowCount(index), index);
}

void KXAddToBatchDialog::InsertResult(const QModelIndex& parent)
{
    const QList<Model::Node*> nodes = m_pManager->TakeResult();
    for (Model::Node* node : nodes)
        m_pModel->InsertBranch(node, parent);
}
