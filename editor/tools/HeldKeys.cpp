#include "HeldKeys.h"

#include <QGuiApplication>
#include <QKeyEvent>

namespace
{

const Qt::KeyboardModifiers Watched = Qt::ShiftModifier | Qt::AltModifier;

Qt::KeyboardModifiers ModifierOf(int key)
{
    if (key == Qt::Key_Shift)
        return Qt::ShiftModifier;
    return key == Qt::Key_Alt ? Qt::AltModifier : Qt::NoModifier;
}

} // namespace

HeldKeys::HeldKeys(QObject* parent) : QObject(parent) { }

Qt::KeyboardModifiers HeldKeys::Get() const
{
    return m_held;
}

void HeldKeys::SetOn(bool on)
{
    if (on == m_isOn)
        return;
    m_isOn = on;
    if (on)
    {
        qApp->installEventFilter(this);
        return;
    }
    qApp->removeEventFilter(this);
    Set(Qt::NoModifier);
}

void HeldKeys::Take(Qt::KeyboardModifiers modifiers)
{
    if (m_isOn)
        Set(modifiers);
}

bool HeldKeys::eventFilter(QObject* object, QEvent* event)
{
    switch (event->type())
    {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        TakeKey(static_cast<QKeyEvent*>(event));
        break;
    case QEvent::MouseButtonPress:
    case QEvent::MouseMove:
        Set(static_cast<QMouseEvent*>(event)->modifiers());
        break;
    case QEvent::WindowDeactivate:
        // The release may go to another program.
        Set(Qt::NoModifier);
        break;
    default:
        break;
    }
    return QObject::eventFilter(object, event);
}

void HeldKeys::TakeKey(const QKeyEvent* event)
{
    const Qt::KeyboardModifiers modifier = ModifierOf(event->key());
    if (event->key() == Qt::Key_Meta)
        // What X11 calls the Alt key while Shift is held, too. The window system knows which one it is.
        Set(QGuiApplication::queryKeyboardModifiers());
    else
        Set(event->type() == QEvent::KeyPress ? m_held | modifier : m_held & ~modifier);
}

void HeldKeys::Set(Qt::KeyboardModifiers modifiers)
{
    modifiers &= Watched;
    if (modifiers == m_held)
        return;
    m_held = modifiers;
    Q_EMIT Changed(modifiers);
}
