#include "NVGradientEditor.h"

#include <QAction>
#include <QColorDialog>
#include <QEvent>
#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPointer>
#include <QPushButton>
#include <QResizeEvent>
#include <QStandardItemModel>

#include "Checker_p.h"
#include "ConnectionCut_p.h"
#include "ControlNode.h"
#include "GradientRows_p.h"
#include "KXColorDlg.h"
#include "NVApplication.h"
#include "OutliveParent_p.h"
#include "SharpPixmap_p.h"
#include "ui_GradientEditor.h"

struct NVGradientEditor::Data : Ui_GradientEditor
{
    // Row of the last Apply or SetCurrentIndex().
    int m_savedIndex = -1;
    QList<QList<NVGradientStop>> m_savedGradients;
    QList<QList<NVGradientStop>> m_gradients;
    // Shows the current gradient; belongs to the scene.
    QGraphicsRectItem* m_pGradientRect = nullptr;
    // One a stop, in the same order; they belong to the scene.
    QList<ControlNode*> m_nodes;
    int m_selectedIndex = -1;
    ControlNode* m_pSelectedNode = nullptr;
    QGradientStops m_stops;
    QBrush m_checker;
    QColor m_customColor;
};

namespace
{

// Both ways lose a fraction, on purpose: 50 % becomes 127, which is shown as 49 %.
int AlphaOfPercent(int percent)
{
    return percent * 255 / 100;
}

int PercentOfAlpha(int alpha)
{
    return alpha * 100 / 255;
}

// Alpha, red, green and blue, two lower case digits each.
QString ColorNumber(const QColor& color)
{
    QString text = QStringLiteral("#%1%2%3%4");
    for (const int part : {color.alpha(), color.red(), color.green(), color.blue()})
        text = text.arg(part, 2, 16, QLatin1Char('0'));
    return text;
}

// The strip is under every point and doesn't count.
bool IsNodeAt(const QGraphicsView* view, const QMouseEvent* event)
{
    const QGraphicsItem* item = view->itemAt(event->localPos().toPoint());
    return item && item->type() == ControlNode::Type;
}

} // namespace

NVGradientEditor::NVGradientEditor(QWidget* parent) : KXDialog(parent), m_pData(new Data())
{
    m_pData->setupUi(Content());
    m_pData->m_checker = CheckerBrush(5);
    m_pData->m_pColorIndicator->setObjectName(QStringLiteral("COLORINDICATOR"));
    UpdateCustomColor(Qt::black);
    SetUpGradientRows(m_pData->m_pGradientList);
    ConnectButtons();
    ConnectColors();
    InitScene();
    ConnectButtonBox();
}

NVGradientEditor::~NVGradientEditor()
{
    // What dies later in the base has something to tell, and nobody is here then to hear it.
    for (const ControlNode* node : qAsConst(m_pData->m_nodes))
        node->disconnect(this);
    const QList<QObject*> children = findChildren<QObject*>();
    for (const QObject* child : children)
        child->disconnect(this);
    delete m_pData;
}

const QList<QList<NVGradientStop>>& NVGradientEditor::GetGradients() const
{
    return m_pData->m_gradients;
}

QList<NVGradientStop> NVGradientEditor::GetGradient(int index) const
{
    return m_pData->m_gradients.value(index);
}

int NVGradientEditor::GetGradientCount() const
{
    return m_pData->m_gradients.size();
}

int NVGradientEditor::GetCurrentIndex() const
{
    return m_pData->m_pGradientList->currentIndex().row();
}

void NVGradientEditor::Load(const QList<QList<NVGradientStop>>& gradients)
{
    m_pData->m_pCopy->setEnabled(false);
    m_pData->m_pDelete->setEnabled(false);
    m_pData->m_savedGradients = gradients;
    m_pData->m_gradients = gradients;
    LoadGradientRows(GradientRows(m_pData->m_pGradientList), m_pData->m_gradients);
    if (!m_pData->m_gradients.isEmpty())
        SetCurrentIndex(0);
    SetUnsaved(false);
}

void NVGradientEditor::SetGradient(int index, const QList<NVGradientStop>& gradient)
{
    CheckGradientIndex(index, m_pData->m_gradients.size(), "src/NVGradientEditor", 258);
    // The row isn't repainted, on purpose.
    m_pData->m_gradients[index] = gradient;
}

void NVGradientEditor::AddGradient(const QList<NVGradientStop>& gradient)
{
    if (gradient.size() < 2)
        return;
    m_pData->m_gradients.append(gradient);
    QStandardItemModel* rows = GradientRows(m_pData->m_pGradientList);
    const int row = rows->rowCount();
    rows->insertRow(row);
    SetGradientRow(rows, row, ToGradientStops(m_pData->m_gradients.last()));
    SetUnsaved(true);
    m_pData->m_pGradientList->setCurrentIndex(rows->index(row, 0));
}

void NVGradientEditor::DeleteGradient()
{
    const int row = GetCurrentIndex();
    // The next current row is found in this call, while rows and list still have the old numbers.
    GradientRows(m_pData->m_pGradientList)->removeRows(row, 1);
    if (row >= 0 && row < m_pData->m_gradients.size())
        m_pData->m_gradients.removeAt(row);
    SetUnsaved(true);
    const QModelIndex current = m_pData->m_pGradientList->currentIndex();
    OnCurrentChanged(current, current);
}

void NVGradientEditor::UpdateCustomColor(const QColor& color)
{
    m_pData->m_customColor = color;
    QPixmap picture = SharpPixmap(m_pData->m_pCustomColor->iconSize(), m_pData->m_pCustomColor);
    QPainter painter(&picture);
    painter.fillRect(QRect(QPoint(), m_pData->m_pCustomColor->iconSize()), color);
    painter.end();
    m_pData->m_pCustomColor->setIcon(picture);
}

void NVGradientEditor::UpdateSceneSize(const QSize& size)
{
    // The selected handle's move comes back as an edit here, on purpose.
    const QRectF strip(QPointF(), size);
    m_pData->m_pGraphicsView->scene()->setSceneRect(strip);
    m_pData->m_pGradientRect->setRect(strip);
    UpdateEditorItem();
}

void NVGradientEditor::AddStop(const QPointF& point)
{
    const QRectF strip = Strip();
    if (GetCurrentIndex() < 0 || strip.width() <= 0)
        return;
    const double x = qBound(strip.left(), point.x(), strip.right());
    int index = 0;
    while (index < m_pData->m_nodes.size() && m_pData->m_nodes[index]->x() <= x)
        ++index;
    m_pData->m_stops.insert(index, {x / strip.width(), Qt::white});
    InsertStop({x, strip.height() * 0.5}, index);
    if (m_pData->m_pSelectedNode)
        m_pData->m_pSelectedNode->setSelected(false);
    SelectNode(index);
    UpdateEditorBackground();
    m_pData->m_pRemoveAll->setEnabled(true);
    m_pData->m_pRemove->setEnabled(true);
    UpdateModel();
}

ControlNode* NVGradientEditor::InsertStop(const QPointF& position, int index)
{
    auto* node = new ControlNode(nullptr);
    m_pData->m_pGraphicsView->scene()->addItem(node);
    node->setPos(position);
    node->setFlag(QGraphicsItem::ItemIsSelectable);
    m_pData->m_nodes.insert(index == -1 ? m_pData->m_nodes.size() : index, node);
    connect(node, &ControlNode::itemSelectionChange, this, &NVGradientEditor::OnStopSelected);
    connect(node, &ControlNode::positionChanged, this, &NVGradientEditor::OnStopPosition);
    return node;
}

void NVGradientEditor::InitializeEditor()
{
    const int row = GetCurrentIndex();
    if (row < 0 || row >= m_pData->m_gradients.size())
        return;
    RemoveNodes();
    m_pData->m_stops = ToGradientStops(m_pData->m_gradients.at(row));
    for (const QGradientStop& stop : qAsConst(m_pData->m_stops))
        InsertStop(NodePlace(stop.first), -1);
    SelectNode(0);
    UpdateEditorBackground();
    EnableRemoval();
    m_pData->m_pGraphicsView->viewport()->installEventFilter(this);
}

void NVGradientEditor::ReleaseEditor()
{
    RemoveNodes();
    m_pData->m_stops.clear();
    m_pData->m_pSelectedNode = nullptr;
    m_pData->m_selectedIndex = -1;
    m_pData->m_pGraphicsView->viewport()->removeEventFilter(this);
}

void NVGradientEditor::UpdateColorControls()
{
    if (!HasSelectedStop())
        return;
    const QColor color = m_pData->m_stops[m_pData->m_selectedIndex].second;
    SetQuietly(m_pData->m_pRed, &NVGradientEditor::OnRed, color.red());
    SetQuietly(m_pData->m_pGreen, &NVGradientEditor::OnGreen, color.green());
    SetQuietly(m_pData->m_pBlue, &NVGradientEditor::OnBlue, color.blue());
    SetQuietly(m_pData->m_pOpacity, &NVGradientEditor::OnOpacity, PercentOfAlpha(color.alpha()));
    UpdateIndicator();
}

void NVGradientEditor::UpdateIndicator()
{
    const QColor color = ControlsColor();
    m_pData->m_pColorIndex->setText(ColorNumber(color));

    const QSize size = m_pData->m_pColorIndicator->size();
    QPixmap picture = SharpPixmap(size, m_pData->m_pColorIndicator);
    QPainterPath path;
    path.addRoundedRect(QRect(QPoint(), size), 5.0, 5.0, Qt::AbsoluteSize);
    QPainter painter(&picture);
    painter.fillPath(path, m_pData->m_checker);
    painter.fillPath(path, color);
    painter.end();
    m_pData->m_pColorIndicator->setPixmap(picture);
}

void NVGradientEditor::UpdateStopColor()
{
    if (HasSelectedStop())
    {
        m_pData->m_stops[m_pData->m_selectedIndex].second = ControlsColor();
        UpdateEditorBackground();
        UpdateModel();
    }
}

void NVGradientEditor::UpdateEditorBackground()
{
    const QRectF strip = Strip();
    QLinearGradient gradient(strip.topLeft(), strip.topLeft() + QPointF(strip.width(), 0));
    gradient.setStops(m_pData->m_stops);
    m_pData->m_pGradientRect->setBrush(gradient);
}

void NVGradientEditor::UpdateEditorItem()
{
    if (GetCurrentIndex() < 0)
        return;
    const int count = qMin(m_pData->m_stops.size(), m_pData->m_nodes.size());
    for (int i = 0; i < count; ++i)
        m_pData->m_nodes[i]->setPos(NodePlace(m_pData->m_stops[i].first));
    UpdateEditorBackground();
}

void NVGradientEditor::UpdateModel()
{
    const int row = GetCurrentIndex();
    if (row < 0 || row >= m_pData->m_gradients.size())
        return;
    m_pData->m_gradients[row] = FromGradientStops(m_pData->m_stops);
    SetGradientRow(GradientRows(m_pData->m_pGradientList), row, m_pData->m_stops);
    SetUnsaved(true);
}

void NVGradientEditor::SetCurrentIndex(int row)
{
    m_pData->m_savedIndex = row;
    m_pData->m_pGradientList->setCurrentIndex(GradientRows(m_pData->m_pGradientList)->index(row, 0));
}

void NVGradientEditor::Popup(QPoint position)
{
    move(position);
    show();
}

void NVGradientEditor::NewGradient()
{
    AddGradient({NVGradientStop(0.0, Qt::darkBlue, false, false, false),
                 NVGradientStop(1.0, Qt::cyan, false, false, false)});
}

bool NVGradientEditor::eventFilter(QObject* object, QEvent* event)
{
    const QGraphicsView* view = m_pData->m_pGraphicsView;
    if (!view || object != view->viewport())
        return KXWidget::eventFilter(object, event);

    bool swallowed = false;
    if (event->type() == QEvent::Resize)
        ResizeStrip(static_cast<QResizeEvent*>(event)->size());
    else if (event->type() == QEvent::MouseButtonPress)
        swallowed = FilterPress(static_cast<QMouseEvent*>(event));
    else if (event->type() == QEvent::MouseButtonDblClick)
        swallowed = FilterDoubleClick(static_cast<QMouseEvent*>(event));
    return swallowed || KXWidget::eventFilter(object, event);
}

void NVGradientEditor::OnCurrentChanged(const QModelIndex& current, const QModelIndex&)
{
    m_pData->m_pCopy->setEnabled(current.isValid());
    m_pData->m_pDelete->setEnabled(current.isValid());
    Q_EMIT CurrentIndexChanged(GetCurrentIndex());
    m_pData->m_pEditor->setEnabled(current.isValid());
    if (current.isValid())
        InitializeEditor();
    else
        ReleaseEditor();
}

void NVGradientEditor::OnStopSelected(ControlNode* pNode, bool value)
{
    pNode->setSunken(value);
    if (value)
    {
        m_pData->m_selectedIndex = m_pData->m_nodes.indexOf(pNode);
        m_pData->m_pSelectedNode = pNode;
        UpdateColorControls();
    }
    else if (pNode == m_pData->m_pSelectedNode)
    {
        m_pData->m_pSelectedNode = nullptr;
        m_pData->m_selectedIndex = -1;
    }
}

void NVGradientEditor::OnStopPosition(ControlNode* pNode, QPointF pos)
{
    const QRectF strip = Strip();
    if (pNode != m_pData->m_pSelectedNode || !HasSelectedStop() || strip.width() <= 0)
        return;
    const int index = m_pData->m_selectedIndex;
    double left = strip.left();
    double right = strip.left() + strip.width();
    if (index > 0)
        left = m_pData->m_nodes[index - 1]->x();
    if (index < m_pData->m_nodes.size() - 1)
        right = m_pData->m_nodes[index + 1]->x();
    const double x = qMin(qMax(pos.x(), left), right);
    m_pData->m_stops[index].first = x / strip.width();
    {
        const ConnectionCut cut(pNode, &ControlNode::positionChanged, this,
                                &NVGradientEditor::OnStopPosition);
        pNode->setPos(x, strip.height() * 0.5);
    }
    UpdateEditorBackground();
    UpdateModel();
}

void NVGradientEditor::OnDeleteStop()
{
    if (m_pData->m_nodes.size() < 3 || !HasSelectedStop())
        return;
    const int index = m_pData->m_selectedIndex;
    m_pData->m_pSelectedNode->deleteLater();
    m_pData->m_stops.removeAt(index);
    m_pData->m_nodes.removeAt(index);
    SelectNode(qMax(index - 1, 0));
    UpdateEditorBackground();
    EnableRemoval();
    UpdateModel();
}

void NVGradientEditor::OnDeleteAllStops()
{
    if (m_pData->m_nodes.size() < 3)
        return;
    while (m_pData->m_nodes.size() > 2)
    {
        m_pData->m_nodes.takeAt(1)->deleteLater();
        m_pData->m_stops.removeAt(1);
    }
    if (m_pData->m_pSelectedNode == m_pData->m_nodes.last())
        m_pData->m_selectedIndex = 1;
    else
        SelectNode(0);
    UpdateEditorBackground();
    m_pData->m_pRemoveAll->setEnabled(false);
    m_pData->m_pRemove->setEnabled(false);
    UpdateModel();
}

void NVGradientEditor::OnRed(int)
{
    UpdateStopColor();
    UpdateIndicator();
}

void NVGradientEditor::OnGreen(int)
{
    UpdateStopColor();
    UpdateIndicator();
}

void NVGradientEditor::OnBlue(int)
{
    UpdateStopColor();
    UpdateIndicator();
}

void NVGradientEditor::OnOpacity(int)
{
    UpdateStopColor();
    UpdateIndicator();
}

void NVGradientEditor::OnBackground()
{
    SetStopColor(NVApplication::GetBackground());
}

void NVGradientEditor::OnForeground()
{
    SetStopColor(NVApplication::GetForeground());
}

void NVGradientEditor::OnCustomColor()
{
    if (!HasSelectedStop())
        return;
    const QPointer<ControlNode> node = m_pData->m_pSelectedNode;
    const QColor before = m_pData->m_stops[m_pData->m_selectedIndex].second;

    KXColorDlg dialog(this, Qt::WindowFlags());
    const QPointer<NVGradientEditor> self(this);
    OutliveParent(&dialog);
    dialog.setWindowTitle(tr("Select a custom color"));
    dialog.SetCurrentColor(m_pData->m_customColor);
    connect(dialog.GetColorDlg(), &QColorDialog::currentColorChanged, this,
            &NVGradientEditor::OnCustomColorChanged);
    const bool accepted = dialog.Exec() == KXDialog::ResultAccepted;
    if (!self || !node || node != m_pData->m_pSelectedNode)
        return;
    OnCustomColorChanged(accepted ? dialog.CurrentColor() : before);
    if (accepted)
    {
        UpdateCustomColor(dialog.CurrentColor());
        UpdateColorControls();
        UpdateEditorBackground();
        UpdateModel();
    }
}

// The strip alone: the choice isn't made yet.
void NVGradientEditor::OnCustomColorChanged(const QColor& color)
{
    if (!HasSelectedStop())
        return;
    m_pData->m_stops[m_pData->m_selectedIndex].second = color;
    UpdateEditorBackground();
}

void NVGradientEditor::OnAccept()
{
    const QPushButton* apply = m_pData->m_pButtoBox->button(QDialogButtonBox::Apply);
    if (apply && apply->isEnabled())
        OnApply();
    KXDialog::Accept();
}

void NVGradientEditor::OnApply()
{
    SetUnsaved(false);
    m_pData->m_savedGradients = m_pData->m_gradients;
    m_pData->m_savedIndex = GetCurrentIndex();
    Q_EMIT Save();
}

void NVGradientEditor::OnRestore()
{
    const int row = m_pData->m_savedIndex;
    Load(m_pData->m_savedGradients);
    SetCurrentIndex(row);
}

void NVGradientEditor::OnCopy()
{
    AddGradient(GetGradient(GetCurrentIndex()));
}

void NVGradientEditor::OnDelete()
{
    DeleteGradient();
}

void NVGradientEditor::ConnectButtons()
{
    connect(m_pData->m_pGradientList->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &NVGradientEditor::OnCurrentChanged);
    connect(m_pData->m_pNew, &QPushButton::clicked, this, &NVGradientEditor::NewGradient);
    connect(m_pData->m_pCopy, &QPushButton::clicked, this, &NVGradientEditor::OnCopy);
    connect(m_pData->m_pDelete, &QPushButton::clicked, this, &NVGradientEditor::OnDelete);
    connect(m_pData->m_pRemove, &QPushButton::clicked, this, &NVGradientEditor::OnDeleteStop);
    connect(m_pData->m_pRemoveAll, &QPushButton::clicked, this, &NVGradientEditor::OnDeleteAllStops);
}

void NVGradientEditor::ConnectColors()
{
    connect(m_pData->m_pForeground, &QPushButton::clicked, this, &NVGradientEditor::OnForeground);
    connect(m_pData->m_pBackground, &QPushButton::clicked, this, &NVGradientEditor::OnBackground);
    connect(m_pData->m_pCustomColor, &QPushButton::clicked, this, &NVGradientEditor::OnCustomColor);
    connect(m_pData->m_pRed, qOverload<int>(&QSpinBox::valueChanged), this, &NVGradientEditor::OnRed);
    connect(m_pData->m_pGreen, qOverload<int>(&QSpinBox::valueChanged), this, &NVGradientEditor::OnGreen);
    connect(m_pData->m_pBlue, qOverload<int>(&QSpinBox::valueChanged), this, &NVGradientEditor::OnBlue);
    connect(m_pData->m_pOpacity, qOverload<int>(&QSpinBox::valueChanged), this, &NVGradientEditor::OnOpacity);
}

void NVGradientEditor::InitScene()
{
    QGraphicsView* view = m_pData->m_pGraphicsView;
    auto* scene = new QGraphicsScene(view);
    view->setScene(scene);
    view->setBackgroundBrush(m_pData->m_checker);
    m_pData->m_pGradientRect = new QGraphicsRectItem;
    m_pData->m_pGradientRect->setPen(Qt::NoPen);
    scene->addItem(m_pData->m_pGradientRect);
    UpdateSceneSize(view->viewport()->size());

    auto* remove = new QAction(view);
    remove->setShortcut(Qt::Key_Delete);
    remove->setShortcutContext(Qt::WindowShortcut);
    connect(remove, &QAction::triggered, this, &NVGradientEditor::OnDeleteStop);
    view->addAction(remove);
}

void NVGradientEditor::ConnectButtonBox()
{
    const QDialogButtonBox* box = m_pData->m_pButtoBox;
    connect(box->button(QDialogButtonBox::Apply), &QPushButton::clicked, this, &NVGradientEditor::OnApply);
    connect(box->button(QDialogButtonBox::RestoreDefaults), &QPushButton::clicked, this,
            &NVGradientEditor::OnRestore);
    SetUnsaved(false);
    connect(box, &QDialogButtonBox::accepted, this, &NVGradientEditor::OnAccept);
    connect(box, &QDialogButtonBox::rejected, this, &KXDialog::Reject);
    // Else Enter would be for "Restore Defaults" in a dialog that opens with something unsaved.
    box->button(QDialogButtonBox::Ok)->setFocus();
}

QRectF NVGradientEditor::Strip() const
{
    return m_pData->m_pGradientRect->rect();
}

QPointF NVGradientEditor::NodePlace(double position) const
{
    const QRectF strip = Strip();
    return {position * strip.width(), strip.height() * 0.5};
}

bool NVGradientEditor::HasSelectedStop() const
{
    return m_pData->m_pSelectedNode && m_pData->m_selectedIndex >= 0 &&
        m_pData->m_selectedIndex < m_pData->m_stops.size();
}

void NVGradientEditor::SelectNode(int index)
{
    ControlNode* node = m_pData->m_nodes.value(index);
    if (!node)
        return;
    node->setSelected(true);
    // One that the scene had selected before keeps silent.
    if (node != m_pData->m_pSelectedNode)
        OnStopSelected(node, true);
}

void NVGradientEditor::RemoveNodes()
{
    for (ControlNode* node : qAsConst(m_pData->m_nodes))
    {
        node->hide();
        m_pData->m_pGraphicsView->scene()->removeItem(node);
        node->deleteLater();
    }
    m_pData->m_nodes.clear();
}

void NVGradientEditor::EnableRemoval()
{
    const bool enabled = m_pData->m_nodes.size() >= 3;
    m_pData->m_pRemoveAll->setEnabled(enabled);
    m_pData->m_pRemove->setEnabled(enabled);
}

void NVGradientEditor::SetUnsaved(bool unsaved)
{
    m_pData->m_pButtoBox->button(QDialogButtonBox::Apply)->setEnabled(unsaved);
    m_pData->m_pButtoBox->button(QDialogButtonBox::RestoreDefaults)->setEnabled(unsaved);
}

// Without a selected stop there is nothing to colour.
void NVGradientEditor::SetStopColor(const QColor& color)
{
    if (!HasSelectedStop())
        return;
    m_pData->m_stops[m_pData->m_selectedIndex].second = color;
    UpdateColorControls();
    UpdateEditorBackground();
    UpdateModel();
}

// Moves the slider along, but writes no stop.
void NVGradientEditor::SetQuietly(QSpinBox* box, void (NVGradientEditor::*slot)(int), int value)
{
    const ConnectionCut cut(box, qOverload<int>(&QSpinBox::valueChanged), this, slot);
    box->setValue(value);
}

QColor NVGradientEditor::ControlsColor() const
{
    return QColor(m_pData->m_pRed->value(), m_pData->m_pGreen->value(), m_pData->m_pBlue->value(),
                  AlphaOfPercent(m_pData->m_pOpacity->value()));
}

// The stops stay where they are, so no move of a handle may be taken for a drag.
void NVGradientEditor::ResizeStrip(const QSize& size)
{
    ControlNode* const selected = m_pData->m_pSelectedNode;
    m_pData->m_pSelectedNode = nullptr;
    UpdateSceneSize(size);
    m_pData->m_pSelectedNode = selected;
}

// A press beside the handles must not reach the scene: it would deselect the stop.
bool NVGradientEditor::FilterPress(const QMouseEvent* event) const
{
    return event->button() == Qt::LeftButton && !IsNodeAt(m_pData->m_pGraphicsView, event);
}

bool NVGradientEditor::FilterDoubleClick(const QMouseEvent* event)
{
    if (IsNodeAt(m_pData->m_pGraphicsView, event))
        return false;
    AddStop(m_pData->m_pGraphicsView->mapToScene(event->localPos().toPoint()));
    return true;
}
