#pragma once

#include <QAccessibleWidget>

class TransformationCenterPointControl;

// The nine cells as one value from 1 to 9, which is read out as the name of the place.
class ControlStateAccessible : public QAccessibleWidget, public QAccessibleValueInterface
{
public:
    explicit ControlStateAccessible(TransformationCenterPointControl* control);

    // For QAccessible::installFactory().
    static QAccessibleInterface* Create(const QString& className, QObject* object);

    QString text(QAccessible::Text type) const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    QVariant currentValue() const override;
    // A number that is none of the places changes nothing.
    void setCurrentValue(const QVariant& value) override;
    QVariant maximumValue() const override;
    QVariant minimumValue() const override;
    QVariant minimumStepSize() const override;

private:
    TransformationCenterPointControl* Control() const;
};
