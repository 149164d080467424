#include "NVHistoryPanel.h"

#include <QMouseEvent>
#include <QPointer>
#include <QResizeEvent>
#include <QScrollBar>

#include "HistoryRowGrid_p.h"
#include "NVHistoryItem.h"
#include "ui_HistoryViewer.h"

namespace
{

NVHistoryItem* ItemAt(const HistoryRowGrid* grid, int item)
{
    return static_cast<NVHistoryItem*>(grid->itemAt(item)->widget());
}

NVHistoryItem* ItemAround(QWidget* widget)
{
    while (widget && !qobject_cast<NVHistoryItem*>(widget))
        widget = widget->parentWidget();
    return static_cast<NVHistoryItem*>(widget);
}

} // namespace

NVHistoryPanel::NVHistoryPanel(QWidget* parent)
    : KXPanel(parent, TitleTop, Qt::WindowFlags()), m_pUi(new Ui_HistoryViewer)
{
    m_pUi->setupUi(Content());
    m_pContainer = new QWidget;
    new HistoryRowGrid(m_pContainer);
    m_pUi->m_pScrollArea->setWidget(m_pContainer);
    m_pUi->m_pScrollArea->setWidgetResizable(false);
    m_pUi->m_pScrollArea->viewport()->installEventFilter(this);
}

NVHistoryPanel::~NVHistoryPanel()
{
    delete m_pUi;
    m_pUi = nullptr;
}

int NVHistoryPanel::Count() const
{
    return m_count;
}

int NVHistoryPanel::GetSelectedIndex() const
{
    const HistoryRowGrid* grid = Grid();
    for (int i = 0; i < grid->count(); ++i)
    {
        if (ItemAt(grid, i)->IsSelected())
            return grid->RowOf(i);
    }
    return -1;
}

void NVHistoryPanel::AddItem(const QString& text, const QImage& image)
{
    auto* item = new NVHistoryItem(m_pContainer);
    item->SetText(text);
    item->SetIcon(image);
    if (m_itemSize == QSize(0, 0))
    {
        m_itemSize = item->sizeHint();
        Grid()->SetRowSize(m_itemSize);
    }
    Grid()->addWidget(item, m_count, 0);
    ++m_count;
    FitContainer();
    item->EnableHoverInteraction(true);
}

void NVHistoryPanel::Remove(int index)
{
    HistoryRowGrid* grid = Grid();
    for (int last = grid->count() - 1; last >= 0 && grid->RowOf(last) >= index; --last)
    {
        NVHistoryItem* item = ItemAt(grid, last);
        item->hide();
        item->deleteLater();
        delete grid->takeAt(last);
        --m_count;
    }
    FitContainer();
}

void NVHistoryPanel::Clear()
{
    Remove(0);
}

void NVHistoryPanel::EnsureVisible(int index)
{
    if (index >= m_count || m_count == 0)
        return;
    QScrollBar* bar = m_pUi->m_pScrollArea->verticalScrollBar();
    // Wide enough for any index.
    const qint64 rowHeight = m_pContainer->height() / m_count;
    const qint64 top = index * rowHeight;
    const qint64 bottom = top + rowHeight;
    const int viewportHeight = m_pUi->m_pScrollArea->viewport()->height();
    if (top < bar->value())
        bar->setValue(static_cast<int>(qMax<qint64>(top, bar->minimum())));
    else if (bottom > bar->value() + viewportHeight)
        bar->setValue(static_cast<int>(bottom - viewportHeight));
}

void NVHistoryPanel::EnableActions(bool enabled)
{
    m_actionsEnabled = enabled;
}

void NVHistoryPanel::SetSelected(int index)
{
    const HistoryRowGrid* grid = Grid();
    for (int i = 0; i < grid->count(); ++i)
    {
        const int row = grid->RowOf(i);
        ItemAt(grid, i)->SetState(row == index, row <= index);
    }
    EnsureVisible(index);
}

bool NVHistoryPanel::eventFilter(QObject* object, QEvent* event)
{
    if (m_pUi && m_pUi->m_pScrollArea && object == m_pUi->m_pScrollArea->viewport() &&
        event->type() == QEvent::Resize)
    {
        m_containerSize.setWidth(static_cast<QResizeEvent*>(event)->size().width());
        m_pContainer->resize(m_containerSize);
    }
    return KXWidget::eventFilter(object, event);
}

void NVHistoryPanel::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && m_actionsEnabled)
        m_pressedIndex = RowAt(event->globalPos());
    KXWidget::mousePressEvent(event);
}

void NVHistoryPanel::mouseReleaseEvent(QMouseEvent* event)
{
    // A release beside the rows leaves the pressed one as it is, on purpose.
    if (event->button() == Qt::LeftButton && m_actionsEnabled && IsInViewport(event->globalPos()))
    {
        const QPointer<NVHistoryPanel> self(this);
        const int index = RowAt(event->globalPos());
        if (index != -1 && index == m_pressedIndex)
            Q_EMIT IndexActivated(index);
        if (!self)
            return;
        m_pressedIndex = -1;
    }
    KXWidget::mouseReleaseEvent(event);
}

HistoryRowGrid* NVHistoryPanel::Grid() const
{
    return static_cast<HistoryRowGrid*>(m_pContainer->layout());
}

bool NVHistoryPanel::IsInViewport(const QPoint& global) const
{
    const QWidget* viewport = m_pUi->m_pScrollArea->viewport();
    return viewport->rect().contains(viewport->mapFromGlobal(global));
}

int NVHistoryPanel::RowAt(const QPoint& global) const
{
    if (!IsInViewport(global))
        return -1;
    const QPoint place = m_pContainer->mapFromGlobal(global);
    const int item = Grid()->indexOf(ItemAround(m_pContainer->childAt(place)));
    return item == -1 ? -1 : Grid()->RowOf(item);
}

void NVHistoryPanel::FitContainer()
{
    m_containerSize.setHeight(m_count * m_itemSize.height());
    m_pContainer->resize(m_containerSize);
}
