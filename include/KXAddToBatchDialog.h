#pragma once

#include <QModelIndex>
#include <QStringList>

#include "KXDialog.h"
#include "generaltoolsgui_export.h"

class KXAddToBatchManager;
class KXBatchInputModel;
class QFileInfo;
class Ui_AddToBatchDialog;

// Shows the progress of a scan that adds files and folders to the input of a batch job, or looks once more at
// a row of it. Closes itself when the scan has ended.
//
// Runs one scan: each add or refresh needs a dialog of its own. The model changes when the scan has ended,
// and not at all if it was cancelled.
class GENERALTOOLSGUI_EXPORT KXAddToBatchDialog : public KXDialog
{
    Q_OBJECT

public:
    // The model, not owned, must outlive the dialog.
    KXAddToBatchDialog(KXBatchInputModel* model, QWidget* parent);
    ~KXAddToBatchDialog() override;

    // Add what is found at the paths to the root of the model. Return what Exec() does.
    int AddFolders(const QStringList& folders);
    int AddFiles(const QStringList& files);

    // Marks the row as existing or not. What a folder row holds is scanned once more and replaced if the
    // folder has changed since, or if `force` is true; it is removed if the folder is gone. Without a scan no
    // dialog opens. The row must not move or go meanwhile; an invalid index stands for a folder that is gone.
    // Does nothing without a model.
    void Update(const QModelIndex& index, bool force);

private Q_SLOTS:
    void OnRejected();
    void OnFinish();
    void OnUpdateFinish();

private:
    void ConnectManager();
    void GatePainting();
    void UpdateNoFolder(const QModelIndex& index, const QFileInfo& info);
    bool HasChanged(const QModelIndex& index, const QFileInfo& info) const;
    void Rescan(const QModelIndex& index, const QString& path);
    void RemoveContent(const QModelIndex& index);
    void InsertResult(const QModelIndex& parent);

    Ui_AddToBatchDialog* m_pUi;
    KXBatchInputModel* m_pModel;
    KXAddToBatchManager* m_pManager;
    // The folder row that is scanned once more.
    QModelIndex m_updateIndex;
    // That the scan has ended may be on its way by then; it counts no more.
    bool m_isRejected = false;
};
