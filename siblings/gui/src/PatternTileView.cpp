#include "PatternTileView_p.h"

#include <QKeyEvent>
#include <QPainter>

#include "PatternTiles_p.h"

namespace
{

const int Columns = 6;
const int CellSide = 56;
// Between a cell's edge and the tile in it: room for the frames.
const int CellMargin = 4;

} // namespace

PatternTileModel::PatternTileModel(QObject* parent) : QAbstractListModel(parent) { }

int PatternTileModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : PatternTileCount();
}

QVariant PatternTileModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return QVariant();
    switch (role)
    {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
    case Qt::AccessibleTextRole:
        return PatternTileName(index.row());
    default:
        return QVariant();
    }
}

PatternTileDelegate::PatternTileDelegate(QObject* parent) : QStyledItemDelegate(parent) { }

void PatternTileDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                const QModelIndex& index) const
{
    const QRect tile = option.rect.adjusted(CellMargin, CellMargin, -CellMargin, -CellMargin);
    painter->save();
    // The tile at its own size, from its corner, so that it is seen as it will be painted.
    painter->drawTiledPixmap(tile, QPixmap::fromImage(PatternTile(index.row())));
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    const bool hovered = option.state.testFlag(QStyle::State_MouseOver);
    painter->setPen(option.palette.color(QPalette::Mid));
    painter->drawRect(QRectF(tile).adjusted(0.5, 0.5, -0.5, -0.5));
    if (selected || hovered)
    {
        const QColor color = option.palette.color(selected ? QPalette::Highlight : QPalette::Text);
        const int width = selected ? 3 : 1;
        painter->setPen(QPen(color, width, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        const double inset = CellMargin - 1 - width / 2.0;
        painter->drawRect(QRectF(option.rect).adjusted(inset, inset, -inset, -inset));
    }
    painter->restore();
}

QSize PatternTileDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const
{
    return QSize(CellSide, CellSide);
}

PatternTileView::PatternTileView(QWidget* parent) : QListView(parent)
{
    setViewMode(IconMode);
    setMovement(Static);
    setResizeMode(Adjust);
    setUniformItemSizes(true);
    setSpacing(0);
    setFrameShape(NoFrame);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setDragEnabled(false);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setMouseTracking(true);
    setAccessibleName(tr("Textures"));
    setItemDelegate(new PatternTileDelegate(this));
    setModel(new PatternTileModel(this));
    connect(this, &QListView::clicked, this, &PatternTileView::OnClicked);
    connect(this, &QListView::doubleClicked, this, &PatternTileView::OnDoubleClicked);
    connect(this, &QListView::entered, this, &PatternTileView::OnEntered);
}

void PatternTileView::SetCurrentRow(int row)
{
    m_row = row;
    setCurrentIndex(model()->index(row, 0));
}

QSize PatternTileView::sizeHint() const
{
    const int rows = (PatternTileCount() + Columns - 1) / Columns;
    // The layout of the list breaks a row that fills it to the last pixel.
    return QSize(Columns * CellSide + 1, rows * CellSide + 1);
}

void PatternTileView::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QListView::currentChanged(current, previous);
    Q_EMIT Pointed(current.row());
}

bool PatternTileView::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::Leave)
        Q_EMIT Pointed(currentIndex().row());
    return QListView::viewportEvent(event);
}

void PatternTileView::keyPressEvent(QKeyEvent* event)
{
    const QModelIndex before = currentIndex();
    switch (event->key())
    {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        OnClicked(before);
        OnDoubleClicked(before);
        return;
    case Qt::Key_Escape:
        event->ignore();
        return;
    default:
        break;
    }
    QListView::keyPressEvent(event);
    if (currentIndex() != before)
        OnClicked(currentIndex());
}

void PatternTileView::mouseReleaseEvent(QMouseEvent* event)
{
    QListView::mouseReleaseEvent(event);
    // A press that is dragged off its tile is no click, but has moved the frame.
    if (currentIndex().row() != m_row)
        OnClicked(currentIndex());
}

void PatternTileView::OnClicked(const QModelIndex& index)
{
    if (!index.isValid())
        return;
    m_row = index.row();
    Q_EMIT Selected(index.row());
}

void PatternTileView::OnDoubleClicked(const QModelIndex& index)
{
    if (index.isValid())
        Q_EMIT Chosen(index.row());
}

void PatternTileView::OnEntered(const QModelIndex& index)
{
    Q_EMIT Pointed(index.row());
}
