#include "ControlNode.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QGraphicsScene>
#include <QGraphicsSceneMouseEvent>
#include <QGraphicsView>
#include <QKeyEvent>
#include <QLocale>
#include <QPainterPath>
#include <QStyleOptionGraphicsItem>
#include <QToolTip>

#include <algorithm>

#include "ControlNodeAccessible_p.h"
#include "NodeDrawing_p.h"

namespace
{

const QRectF TouchArea(-12.0, -16.0, 24.0, 32.0);
const double Step = 1.0;
const double LargeStep = 10.0;
// A hand that only clicks is not quite still.
const int DragSlack = 2;

int nextSerial()
{
    static int count = 0;
    return ++count;
}

QGraphicsView* viewWithFocus(const QGraphicsScene* scene)
{
    const QList<QGraphicsView*> views = scene ? scene->views() : QList<QGraphicsView*>();
    const auto found =
        std::find_if(views.begin(), views.end(), [](QGraphicsView* view) { return view->hasFocus(); });
    return found == views.end() ? nullptr : *found;
}

// Pixels a scene unit. The hit areas of all views are those of the first.
qreal viewScale(const QGraphicsScene* scene)
{
    const QGraphicsView* view = scene->views().value(0);
    const qreal scale = view ? qAbs(view->transform().m11()) : 1.0;
    return scale > 0.0 ? scale : 1.0;
}

// 1 for a key that leads towards 100 %, -1 for one that leads back, 0 for others.
int directionOf(const QKeyEvent* event)
{
    if (event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier))
    {
        return 0;
    }
    switch (event->key())
    {
    case Qt::Key_Right:
    case Qt::Key_Up:
        return 1;
    case Qt::Key_Left:
    case Qt::Key_Down:
        return -1;
    default:
        return 0;
    }
}

} // namespace

ControlNode::ControlNode(QGraphicsItem* parent) : QGraphicsObject(parent), m_serial(nextSerial())
{
    QAccessible::installFactory(ControlNodeAccessible::Create);
    setFlags(ItemIsMovable | ItemIsFocusable | ItemIgnoresTransformations | ItemSendsGeometryChanges |
             ItemSendsScenePositionChanges);
    setAcceptHoverEvents(true);
    setCursor(Qt::OpenHandCursor);
}

ControlNode::~ControlNode()
{
    if (m_drag == Drag::Moving)
    {
        QToolTip::hideText();
    }
}

bool ControlNode::isSunken() const
{
    return m_sunken;
}

double ControlNode::percent() const
{
    const QRectF area = scene() ? scene()->sceneRect() : QRectF();
    return area.width() > 0.0 ? (scenePos().x() - area.left()) / area.width() * 100.0 : 0.0;
}

void ControlNode::setPercent(double percent)
{
    const QRectF area = scene() ? scene()->sceneRect() : QRectF();
    if (area.width() > 0.0)
    {
        setScenePosition(QPointF(area.left() + percent / 100.0 * area.width(), scenePos().y()));
    }
}

void ControlNode::setSunken(bool sunken)
{
    if (sunken == m_sunken)
    {
        return;
    }
    m_sunken = sunken;
    update();
}

QRectF ControlNode::boundingRect() const
{
    return TouchArea;
}

QPainterPath ControlNode::shape() const
{
    QRectF area = TouchArea;
    if (scene())
    {
        const qreal scale = viewScale(scene());
        const QSizeF reach = 2.0 * TouchArea.size() / scale;
        QRectF around(QPointF(), reach);
        around.moveCenter(scenePos());
        const QList<QGraphicsItem*> neighbours = scene()->items(around, Qt::IntersectsItemBoundingRect);
        for (const QGraphicsItem* item : neighbours)
        {
            const qreal distance = (item->scenePos().x() - scenePos().x()) * scale;
            const qreal half = qMax(qAbs(distance), NodeSize().width()) / 2.0;
            if (item->type() == Type && distance < 0.0)
            {
                area.setLeft(qMax(area.left(), -half));
            }
            else if (item->type() == Type && distance > 0.0)
            {
                area.setRight(qMin(area.right(), half));
            }
        }
    }
    QPainterPath path;
    path.addRect(area);
    return path;
}

void ControlNode::paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget)
{
    NodeLook look;
    look.hovered = option->state.testFlag(QStyle::State_MouseOver);
    look.selected = isSelected();
    look.sunken = m_sunken;
    look.focused = hasFocus() && widget && widget->parentWidget() && widget->parentWidget()->hasFocus();
    DrawNode(painter, widget ? widget->palette() : option->palette, look);
}

int ControlNode::type() const
{
    return Type;
}

bool ControlNode::eventFilter(QObject* object, QEvent* event)
{
    if (event->type() == QEvent::KeyPress && hasFocus())
    {
        const QKeyEvent* key = static_cast<QKeyEvent*>(event);
        const bool back = key->key() == Qt::Key_Backtab || (key->modifiers() & Qt::ShiftModifier);
        const bool isTab = key->key() == Qt::Key_Tab || key->key() == Qt::Key_Backtab;
        if (isTab && !(key->modifiers() & ~Qt::ShiftModifier) && goToNode(!back))
        {
            return true;
        }
    }
    return QGraphicsObject::eventFilter(object, event);
}

QVariant ControlNode::itemChange(GraphicsItemChange change, const QVariant& value)
{
    switch (change)
    {
    case ItemPositionChange:
        if (!qIsFinite(value.toPointF().x()) || !qIsFinite(value.toPointF().y()))
        {
            return pos();
        }
        break;
    case ItemPositionHasChanged:
        if (!scene()) // else the next one follows
        {
            Q_EMIT positionChanged(this, scenePos());
        }
        break;
    case ItemScenePositionHasChanged:
        if (QAccessible::isActive())
        {
            QAccessibleValueChangeEvent moved(this, percent());
            QAccessible::updateAccessibility(&moved);
        }
        Q_EMIT positionChanged(this, scenePos());
        break;
    case ItemSelectedHasChanged:
        setZValue(value.toBool() ? 1.0 : 0.0);
        if (value.toBool())
        {
            takeFocusInScene();
        }
        Q_EMIT itemSelectionChange(this, value.toBool());
        break;
    default:
        break;
    }
    return QGraphicsObject::itemChange(change, value);
}

void ControlNode::focusInEvent(QFocusEvent* event)
{
    // The toolkit gives a scene's Tab key to widgets only, so it is caught on its way to the view.
    const QList<QGraphicsView*> views = scene()->views();
    for (QGraphicsView* view : views)
    {
        view->installEventFilter(this);
    }
    if (viewWithFocus(scene()))
    {
        QAccessibleEvent focus(this, QAccessible::Focus);
        QAccessible::updateAccessibility(&focus);
    }
    update();
    QGraphicsObject::focusInEvent(event);
}

void ControlNode::focusOutEvent(QFocusEvent* event)
{
    const QList<QGraphicsView*> views = scene() ? scene()->views() : QList<QGraphicsView*>();
    for (QGraphicsView* view : views)
    {
        view->removeEventFilter(this);
    }
    update();
    QGraphicsObject::focusOutEvent(event);
}

void ControlNode::keyPressEvent(QKeyEvent* event)
{
    if (m_drag == Drag::Moving && event->key() == Qt::Key_Escape)
    {
        endDrag();
        setScenePosition(m_dragStart);
    }
    else if (!moveByKey(event))
    {
        QGraphicsObject::keyPressEvent(event);
    }
}

void ControlNode::mouseMoveEvent(QGraphicsSceneMouseEvent* event)
{
    if (m_drag == Drag::None || !isMovable())
    {
        return;
    }
    const QPoint way = event->screenPos() - event->buttonDownScreenPos(Qt::LeftButton);
    if (m_drag == Drag::Held && way.manhattanLength() < DragSlack)
    {
        return;
    }
    m_drag = Drag::Moving;
    setCursor(Qt::ClosedHandCursor);
    setScenePosition(event->scenePos() + m_grip);
    showPlace(event->widget() ? qobject_cast<QGraphicsView*>(event->widget()->parentWidget()) : nullptr);
}

void ControlNode::mousePressEvent(QGraphicsSceneMouseEvent* event)
{
    // Other buttons are taken too: ignored, they would clear the selection.
    if (event->button() == Qt::LeftButton)
    {
        m_drag = Drag::Held;
        m_grip = scenePos() - event->scenePos();
        m_dragStart = scenePos();
        select(Qt::MouseFocusReason);
    }
}

void ControlNode::mouseReleaseEvent(QGraphicsSceneMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
    {
        endDrag();
    }
}

bool ControlNode::sceneEvent(QEvent* event)
{
    if (event->type() == QEvent::UngrabMouse)
    {
        endDrag();
    }
    return QGraphicsObject::sceneEvent(event);
}

bool ControlNode::isMovable() const
{
    return flags().testFlag(ItemIsMovable);
}

QString ControlNode::placeText() const
{
    return tr("%1 %").arg(QLocale().toString(percent(), 'f', 1));
}

// The nodes of the scene that a person can go to, from left to right.
QList<ControlNode*> ControlNode::nodesByPlace() const
{
    QList<ControlNode*> nodes;
    const QList<QGraphicsItem*> items = scene() ? scene()->items() : QList<QGraphicsItem*>();
    for (QGraphicsItem* item : items)
    {
        ControlNode* node =
            item->type() == Type ? qobject_cast<ControlNode*>(item->toGraphicsObject()) : nullptr;
        if (node && node->isVisible() && node->isEnabled())
        {
            nodes.append(node);
        }
    }
    std::sort(nodes.begin(), nodes.end(),
              [](const ControlNode* one, const ControlNode* other)
              {
                  const qreal way = other->scenePos().x() - one->scenePos().x();
                  return way > 0.0 || (way == 0.0 && one->m_serial < other->m_serial);
              });
    return nodes;
}

// An item that asks for the focus makes the scene believe that it has it, and a view that comes by it later
// gives it to the item that had it last. So a scene without the focus is told at once that it has lost it
// again.
void ControlNode::takeFocusInScene()
{
    setFocus();
    if (scene() && !viewWithFocus(scene()))
    {
        QFocusEvent lost(QEvent::FocusOut);
        QCoreApplication::sendEvent(scene(), &lost);
    }
}

void ControlNode::select(Qt::FocusReason reason)
{
    setFocus(reason);
    if (!flags().testFlag(ItemIsSelectable))
    {
        return;
    }
    const QList<QGraphicsItem*> selected = scene()->selectedItems();
    for (QGraphicsItem* item : selected)
    {
        item->setSelected(item == this);
    }
    setSelected(true);
}

void ControlNode::setScenePosition(const QPointF& position)
{
    setPos(parentItem() ? parentItem()->mapFromScene(position) : position);
}

// Whether the key was one that moves the node.
bool ControlNode::moveByKey(const QKeyEvent* event)
{
    const int direction = directionOf(event);
    if (direction == 0 || !isMovable())
    {
        return false;
    }
    if (m_drag == Drag::None)
    {
        select(Qt::OtherFocusReason);
        const double step = event->modifiers() & Qt::ShiftModifier ? LargeStep : Step;
        setPercent(qBound(0.0, percent() + direction * step, 100.0));
        showPlace(viewWithFocus(scene()));
    }
    return true;
}

bool ControlNode::goToNode(bool forward)
{
    const QList<ControlNode*> nodes = nodesByPlace();
    ControlNode* next = nodes.value(nodes.indexOf(this) + (forward ? 1 : -1));
    if (!next)
    {
        return false;
    }
    next->select(forward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

void ControlNode::showPlace(const QGraphicsView* view) const
{
    if (view)
    {
        const QPoint place = view->mapFromScene(scenePos());
        QToolTip::showText(view->viewport()->mapToGlobal(place), placeText(), view->viewport());
    }
}

void ControlNode::endDrag()
{
    if (m_drag == Drag::Moving)
    {
        QToolTip::hideText();
        setCursor(Qt::OpenHandCursor);
    }
    m_drag = Drag::None;
}
