#pragma once

#include <QStringList>

#include <memory>

class KXAddToBatchDialog;
class KXBatchInputModel;
class QModelIndex;
class QPersistentModelIndex;
class QWidget;

// Looks at rows of the batch's tree again. A dialog is up while a folder is scanned.
class BatchRefresh
{
public:
    // With `force` folders are scanned whether they have changed or not. The model and the parent of the
    // dialogs are not owned.
    BatchRefresh(KXBatchInputModel* model, QWidget* parent, bool force);
    ~BatchRefresh();

    // The folders that were scanned, with all below them.
    const QStringList& GetScanned() const;
    // True if a folder was scanned, or something is gone or back.
    bool HasChanged() const;

    // At a row, and if it is a folder that needs no scan at the folders below it. False if a scan was
    // cancelled.
    bool Look(const QModelIndex& index);

private:
    Q_DISABLE_COPY(BatchRefresh)

    enum Outcome
    {
        Kept,
        Scanned,
        Cancelled
    };

    Outcome update(const QPersistentModelIndex& row);
    void makeDialog();

    KXBatchInputModel* m_pModel;
    QWidget* m_pParent;
    const bool m_force;
    // It scans once, so that there is another one after each scan.
    std::unique_ptr<KXAddToBatchDialog> m_pDialog;
    Outcome m_outcome = Kept;
    QStringList m_scanned;
    bool m_hasChanged = false;
};
