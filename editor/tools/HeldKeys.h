#pragma once

#include <QObject>

class QKeyEvent;

// Watches Shift and Alt while it is on, wherever in the program keys and pointer go.
class HeldKeys : public QObject
{
    Q_OBJECT

public:
    // Off at first.
    explicit HeldKeys(QObject* parent = nullptr);

    // Shift, Alt, both or none; none while it is off.
    Qt::KeyboardModifiers Get() const;

    // Tells that nothing is held any more when it goes off; not so when this is destroyed.
    void SetOn(bool on);
    // What a pen says is held. As a mouse does by itself, that makes up for a release that went to another
    // program.
    void Take(Qt::KeyboardModifiers modifiers);

Q_SIGNALS:
    void Changed(Qt::KeyboardModifiers modifiers);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void TakeKey(const QKeyEvent* event);
    void Set(Qt::KeyboardModifiers modifiers);

    Qt::KeyboardModifiers m_held;
    bool m_isOn = false;
};
