#pragma once

#include <QAccessibleObject>

class ControlNode;

// A control node for screen readers: a slider whose value is the percentage.
class ControlNodeAccessible : public QAccessibleObject, public QAccessibleValueInterface
{
public:
    explicit ControlNodeAccessible(ControlNode* node);
    ~ControlNodeAccessible() override;

    // The factory that knows control nodes.
    static QAccessibleInterface* Create(const QString& className, QObject* object);

    // The view that shows the node.
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* child(int index) const override;
    int childCount() const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessible::Role role() const override;
    QAccessible::State state() const override;
    QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text kind, const QString& text) override;
    QRect rect() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    QVariant currentValue() const override;
    void setCurrentValue(const QVariant& value) override;
    QVariant minimumValue() const override;
    QVariant maximumValue() const override;
    QVariant minimumStepSize() const override;

private:
    ControlNode* node() const;
};
