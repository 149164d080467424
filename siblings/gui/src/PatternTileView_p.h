#pragma once

#include <QAbstractListModel>
#include <QListView>
#include <QStyledItemDelegate>

// The grid of tiles in the pattern chooser, in three classes: what the tiles are, how one is drawn, and the
// view.

class PatternTileModel : public QAbstractListModel
{
    Q_OBJECT

public:
    explicit PatternTileModel(QObject* parent);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    // The name is display text, tooltip and accessible text.
    QVariant data(const QModelIndex& index, int role) const override;
};

class PatternTileDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit PatternTileDelegate(QObject* parent);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

class PatternTileView : public QListView
{
    Q_OBJECT

public:
    explicit PatternTileView(QWidget* parent);

    // Without a signal but Pointed.
    void SetCurrentRow(int row);

    // All tiles without scrolling.
    QSize sizeHint() const override;

Q_SIGNALS:
    // A click of the left button, or a key that moved to another tile.
    void Selected(int index);
    // A double click of the left button, or Enter.
    void Chosen(int index);
    // The tile under the pointer, or else the current one, for a line that names it. -1 is none.
    void Pointed(int index);

protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    bool viewportEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private Q_SLOTS:
    void OnClicked(const QModelIndex& index);
    void OnDoubleClicked(const QModelIndex& index);
    void OnEntered(const QModelIndex& index);

private:
    // What was set or told last.
    int m_row = -1;
};
