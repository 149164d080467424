#include "ControlNodeAccessible_p.h"

#include <QGraphicsScene>
#include <QGraphicsView>
#include <QWidget>

#include "ControlNode.h"

namespace
{

QGraphicsView* viewOf(const QGraphicsItem* item)
{
    return item && item->scene() ? item->scene()->views().value(0) : nullptr;
}

} // namespace

ControlNodeAccessible::ControlNodeAccessible(ControlNode* node) : QAccessibleObject(node) { }

ControlNodeAccessible::~ControlNodeAccessible() = default;

QAccessibleInterface* ControlNodeAccessible::Create(const QString& className, QObject* object)
{
    ControlNode* node =
        className == QLatin1String("ControlNode") ? qobject_cast<ControlNode*>(object) : nullptr;
    return node ? new ControlNodeAccessible(node) : nullptr;
}

QAccessibleInterface* ControlNodeAccessible::parent() const
{
    return QAccessible::queryAccessibleInterface(viewOf(node()));
}

QAccessibleInterface* ControlNodeAccessible::child(int) const
{
    return nullptr;
}

int ControlNodeAccessible::childCount() const
{
    return 0;
}

int ControlNodeAccessible::indexOfChild(const QAccessibleInterface*) const
{
    return -1;
}

QAccessible::Role ControlNodeAccessible::role() const
{
    return QAccessible::Slider;
}

QAccessible::State ControlNodeAccessible::state() const
{
    QAccessible::State state;
    const ControlNode* item = node();
    const QGraphicsView* view = viewOf(item);
    if (!item)
    {
        state.invalid = true;
        return state;
    }
    state.focusable = true;
    state.focused = item->hasFocus() && view && view->hasFocus();
    state.selectable = item->flags().testFlag(QGraphicsItem::ItemIsSelectable);
    state.selected = item->isSelected();
    state.movable = item->flags().testFlag(QGraphicsItem::ItemIsMovable);
    state.invisible = !view || !item->isVisible();
    state.disabled = !item->isEnabled() || (view && !view->isEnabled());
    return state;
}

QString ControlNodeAccessible::text(QAccessible::Text kind) const
{
    if (!node())
    {
        return QString();
    }
    if (kind == QAccessible::Name)
    {
        const QList<ControlNode*> nodes = node()->nodesByPlace();
        return ControlNode::tr("Handle %1 of %2").arg(nodes.indexOf(node()) + 1).arg(nodes.size());
    }
    return kind == QAccessible::Value ? node()->placeText() : QString();
}

void ControlNodeAccessible::setText(QAccessible::Text, const QString&) { }

QRect ControlNodeAccessible::rect() const
{
    const QGraphicsView* view = viewOf(node());
    if (!view)
    {
        return QRect();
    }
    const QRect inView =
        node()->deviceTransform(view->viewportTransform()).mapRect(node()->boundingRect()).toAlignedRect();
    return QRect(view->viewport()->mapToGlobal(inView.topLeft()), inView.size());
}

void* ControlNodeAccessible::interface_cast(QAccessible::InterfaceType type)
{
    return type == QAccessible::ValueInterface ? static_cast<QAccessibleValueInterface*>(this) : nullptr;
}

QVariant ControlNodeAccessible::currentValue() const
{
    return node() ? QVariant(node()->percent()) : QVariant();
}

void ControlNodeAccessible::setCurrentValue(const QVariant& value)
{
    if (node() && state().movable)
    {
        node()->setPercent(qBound(0.0, value.toDouble(), 100.0));
    }
}

QVariant ControlNodeAccessible::minimumValue() const
{
    return 0.0;
}

QVariant ControlNodeAccessible::maximumValue() const
{
    return 100.0;
}

QVariant ControlNodeAccessible::minimumStepSize() const
{
    return 1.0;
}

ControlNode* ControlNodeAccessible::node() const
{
    return static_cast<ControlNode*>(object());
}
