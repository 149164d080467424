#pragma once

#include <QStyledItemDelegate>

class Thumbnails;

// Draws a row of a batch: its small picture, or that of a folder, its name, and at the right end the number
// of images in a folder.
class BatchItemDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    // The thumbnails are not owned and must outlive the delegate.
    explicit BatchItemDelegate(const Thumbnails* thumbnails, QObject* parent = nullptr);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    const Thumbnails* m_pThumbnails;
};
