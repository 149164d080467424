#pragma once

#include <QSet>
#include <QSortFilterProxyModel>

#include "KXBatchInputModel.h"

// The rows of a batch whose name holds a text, whatever the case of its letters, with the folders above them
// and all that lies below them. Keeps the order.
class BatchFilterModel : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    // The model is not owned and must outlive this one.
    explicit BatchFilterModel(KXBatchInputModel* model, QObject* parent = nullptr);

    KXBatchInputModel* GetModel() const;
    QString GetText() const;
    // Images among the rows that are left.
    int GetFileCount() const;

    // The node stays the model's; null for an invalid index.
    const KXBatchInputModel::Node* NodeAt(const QModelIndex& index) const;
    // The source's rows that stand for these and all below them: for a folder of which some images are left
    // out, those below it that are left. Each once.
    QModelIndexList SourceRows(const QModelIndexList& indexes) const;
    // Adds the number of images to what a folder is read out as.
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

public Q_SLOTS:
    // Without a text all rows are left.
    void SetText(const QString& text);

Q_SIGNALS:
    // Other rows, or another text.
    void Filtered();

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

private:
    void OnRowsChanged();
    void OnSettled();
    void accept();
    bool acceptNode(const KXBatchInputModel::Node& node, bool isBelow);
    bool isWhole(const KXBatchInputModel::Node& node) const;
    void appendSourceRows(const QModelIndex& index, QModelIndexList& rows) const;

    KXBatchInputModel* m_pModel;
    QString m_text;
    QSet<const KXBatchInputModel::Node*> m_accepted;
    int m_fileCount = 0;
    // Rows have changed since; until the event loop is back all rows are left.
    bool m_isStale = false;
};
