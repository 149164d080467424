#pragma once

#include <QTreeView>

class BatchFilterModel;
class QTimer;
class Thumbnails;

// The tree of a batch, with small pictures of the images that are to be seen.
class BatchTreeView : public QTreeView
{
    Q_OBJECT

public:
    // The model is not owned and must outlive the view.
    explicit BatchTreeView(BatchFilterModel* model, QWidget* parent = nullptr);
    ~BatchTreeView() override;

    Thumbnails* GetThumbnails() const;
    // Files whose rows are to be seen, from the top.
    QStringList GetVisibleFiles() const;

Q_SIGNALS:
    // The selected rows are to go.
    void RemoveAsked();

protected:
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const override;
    QStyleOptionViewItem viewOptions() const override;

private:
    void OnReady();
    void OnLook();
    void OnFiltered();

    BatchFilterModel* m_pModel;
    Thumbnails* m_pThumbnails;
    QTimer* m_pLook;
    // While the arrow of a selected row is drawn.
    mutable bool m_isSelected = false;
};
