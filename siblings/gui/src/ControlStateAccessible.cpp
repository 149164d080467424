#include "ControlStateAccessible_p.h"

#include <QCoreApplication>

#include "TransformationCenterPointControl.h"

using Cells = TransformationCenterPointControl;

namespace
{

QString placeName(Cells::ControlState state)
{
    static const char* const names[] = {
        QT_TRANSLATE_NOOP("TransformationCenterPointControl", "Top left"),
        QT_TRANSLATE_NOOP("TransformationCenterPointControl", "Top center"),
        QT_TRANSLATE_NOOP("TransformationCenterPointControl", "Top right"),
        QT_TRANSLATE_NOOP("TransformationCenterPointControl", "Middle left"),
        QT_TRANSLATE_NOOP("TransformationCenterPointControl", "Center"),
        QT_TRANSLATE_NOOP("TransformationCenterPointControl", "Middle right"),
        QT_TRANSLATE_NOOP("TransformationCenterPointControl", "Bottom left"),
        QT_TRANSLATE_NOOP("TransformationCenterPointControl", "Bottom center"),
        QT_TRANSLATE_NOOP("TransformationCenterPointControl", "Bottom right"),
    };
    return QCoreApplication::translate("TransformationCenterPointControl", names[state - Cells::TopLeft]);
}

} // namespace

ControlStateAccessible::ControlStateAccessible(Cells* control)
    : QAccessibleWidget(control, QAccessible::SpinBox)
{
}

QAccessibleInterface* ControlStateAccessible::Create(const QString& className, QObject* object)
{
    if (className != QLatin1String("TransformationCenterPointControl"))
        return nullptr;
    auto* control = qobject_cast<Cells*>(object);
    return control ? new ControlStateAccessible(control) : nullptr;
}

QString ControlStateAccessible::text(QAccessible::Text type) const
{
    if (type == QAccessible::Value)
        return placeName(Control()->GetState());
    return QAccessibleWidget::text(type);
}

void* ControlStateAccessible::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::ValueInterface)
        return static_cast<QAccessibleValueInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

QVariant ControlStateAccessible::currentValue() const
{
    return int(Control()->GetState());
}

void ControlStateAccessible::setCurrentValue(const QVariant& value)
{
    const int state = value.toInt();
    if (state >= Cells::TopLeft && state <= Cells::BottomRight)
        Control()->SetState(Cells::ControlState(state));
}

QVariant ControlStateAccessible::maximumValue() const
{
    return int(Cells::BottomRight);
}

QVariant ControlStateAccessible::minimumValue() const
{
    return int(Cells::TopLeft);
}

QVariant ControlStateAccessible::minimumStepSize() const
{
    return 1;
}

TransformationCenterPointControl* ControlStateAccessible::Control() const
{
    return static_cast<Cells*>(object());
}
