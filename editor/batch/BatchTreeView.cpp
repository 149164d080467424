#include "BatchTreeView.h"

#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QTimer>

#include "BatchFilterModel.h"
#include "BatchItemDelegate.h"
#include "Thumbnails.h"

namespace
{

const int ThumbnailSize = 40;
// Rows that a filter leaves and that are opened for it.
const int MaxOpened = 2000;

} // namespace

BatchTreeView::BatchTreeView(BatchFilterModel* model, QWidget* parent)
    : QTreeView(parent),
      m_pModel(model),
      // Sharp on any screen that the window may be moved to.
      m_pThumbnails(new Thumbnails(qRound(ThumbnailSize * qApp->devicePixelRatio()), 16 * 1024 * 1024, this)),
      m_pLook(new QTimer(this))
{
    setModel(model);
    setItemDelegate(new BatchItemDelegate(m_pThumbnails, this));
    setAccessibleName(tr("Folders and images"));
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setIconSize(QSize(ThumbnailSize, ThumbnailSize));
    setSelectionMode(ExtendedSelection);
    setVerticalScrollMode(ScrollPerPixel);
    setTextElideMode(Qt::ElideMiddle);
    m_pLook->setSingleShot(true);
    connect(m_pLook, &QTimer::timeout, this, &BatchTreeView::OnLook);
    connect(m_pThumbnails, &Thumbnails::Ready, this, &BatchTreeView::OnReady);
    connect(model, &BatchFilterModel::Filtered, this, &BatchTreeView::OnFiltered);
}

BatchTreeView::~BatchTreeView() = default;

Thumbnails* BatchTreeView::GetThumbnails() const
{
    return m_pThumbnails;
}

QStringList BatchTreeView::GetVisibleFiles() const
{
    QStringList paths;
    const int bottom = viewport()->height();
    for (QModelIndex at = indexAt(QPoint(0, 0)); at.isValid() && visualRect(at).top() < bottom;
         at = indexBelow(at))
    {
        if (at.data(KXBatchInputModel::NodeIsFileRole).toInt() != 0)
            paths += at.data(KXBatchInputModel::NodePathRole).toString();
    }
    return paths;
}

void BatchTreeView::hideEvent(QHideEvent* event)
{
    m_pThumbnails->SetWanted({});
    QTreeView::hideEvent(event);
}

void BatchTreeView::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Delete))
        Q_EMIT RemoveAsked();
    else
        QTreeView::keyPressEvent(event);
}

// Whatever brings other rows into sight paints.
void BatchTreeView::paintEvent(QPaintEvent* event)
{
    QTreeView::paintEvent(event);
    if (!m_pLook->isActive())
        m_pLook->start();
}

// The style draws all arrows in the colour that they have beside rows that are not selected.
void BatchTreeView::drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const
{
    m_isSelected = selectionModel()->isSelected(index);
    QTreeView::drawBranches(painter, rect, index);
    m_isSelected = false;
}

QStyleOptionViewItem BatchTreeView::viewOptions() const
{
    QStyleOptionViewItem option = QTreeView::viewOptions();
    const QColor color = option.palette.color(QPalette::HighlightedText);
    for (QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
    {
        if (m_isSelected)
            option.palette.setColor(role, color);
    }
    return option;
}

void BatchTreeView::OnReady()
{
    viewport()->update();
}

void BatchTreeView::OnLook()
{
    m_pThumbnails->SetWanted(isVisible() ? GetVisibleFiles() : QStringList());
}

void BatchTreeView::OnFiltered()
{
    if (!m_pModel->GetText().isEmpty() && m_pModel->GetFileCount() <= MaxOpened)
        expandAll();
    m_pLook->start();
}
