#include "NVColorSamplePanel.h"

#include <QMouseEvent>
#include <QResizeEvent>

#include "KXColorSampleDelegate.h"
#include "ui_ColorSamplerPanel.h"

namespace
{

// What the list leaves free of its viewport.
const int RowMargin = 2;

QPoint GlobalPosition(const QEvent* event)
{
    return static_cast<const QMouseEvent*>(event)->screenPos().toPoint();
}

int ButtonOf(const QEvent* event)
{
    return static_cast<const QMouseEvent*>(event)->button();
}

} // namespace

NVColorSamplePanel::NVColorSamplePanel(QWidget* parent) : QWidget(parent), m_pUi(new Ui_ColorSamplerPanel)
{
    m_pUi->setupUi(this);
    // Without a parent on purpose, and not deleted: neither the view nor the panel owns it.
    m_pUi->m_pSamples->setItemDelegate(new KXColorSampleDelegate(nullptr));
    m_pUi->m_pSamples->setAttribute(Qt::WA_MacShowFocusRect, false);
    m_pUi->m_pSamples->viewport()->installEventFilter(this);
}

NVColorSamplePanel::~NVColorSamplePanel()
{
    delete m_pUi;
}

int NVColorSamplePanel::GetItemAt(const QPoint& globalPos) const
{
    const QListView* samples = m_pUi->m_pSamples;
    return samples->indexAt(samples->viewport()->mapFromGlobal(globalPos)).row();
}

void NVColorSamplePanel::SetModel(QAbstractItemModel* model)
{
    m_pUi->m_pSamples->setModel(model);
}

void NVColorSamplePanel::SelectRow(int row)
{
    if (const QAbstractItemModel* model = m_pUi->m_pSamples->model())
        m_pUi->m_pSamples->selectionModel()->select(model->index(row, 0),
                                                    QItemSelectionModel::ClearAndSelect);
}

void NVColorSamplePanel::ScrollTo(int row)
{
    if (const QAbstractItemModel* model = m_pUi->m_pSamples->model())
        m_pUi->m_pSamples->scrollTo(model->index(row, 0), QAbstractItemView::EnsureVisible);
}

bool NVColorSamplePanel::eventFilter(QObject* object, QEvent* event)
{
    if (object && object == m_pUi->m_pSamples->viewport())
    {
        switch (event->type())
        {
        case QEvent::MouseButtonPress:
            Q_EMIT MousePressed(GlobalPosition(event), ButtonOf(event));
            break;
        case QEvent::MouseButtonRelease:
            Q_EMIT MouseReleased(GlobalPosition(event), ButtonOf(event));
            break;
        case QEvent::Resize:
            if (auto* delegate = qobject_cast<KXColorSampleDelegate*>(m_pUi->m_pSamples->itemDelegate()))
                delegate->SetWidth(static_cast<QResizeEvent*>(event)->size().width() - RowMargin);
            break;
        default:
            break;
        }
    }
    return QObject::eventFilter(object, event);
}
