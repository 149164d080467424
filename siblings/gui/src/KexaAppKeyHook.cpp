// The keys of all KXShortcuts: one toolkit shortcut for each key of each window, which belongs to the window
// itself, so that it lives whether or not the widget behind the key is on screen.

#include "KexaAppKeyHook.h"

#include <QApplication>
#include <QKeyEvent>
#include <QShortcut>
#include <QWidget>
#include <algorithm>

#include "KXShortcut.h"

namespace
{

// As a key sequence counts it: a key of the number pad is no other key.
int keyOf(const QKeyEvent* event)
{
    return event->key() | int(event->modifiers() & ~Qt::KeypadModifier);
}

} // namespace

KexaAppKeyHook* KexaAppKeyHook::instance()
{
    // Never deleted: a shortcut may be destroyed as late as the program's statics.
    static KexaAppKeyHook* const hook = new KexaAppKeyHook;
    return hook;
}

KexaAppKeyHook::KexaAppKeyHook() = default;

void KexaAppKeyHook::add(KXShortcut* shortcut)
{
    m_shortcuts.append(shortcut);
    watchAncestors(shortcut);
    hold(shortcut);
}

void KexaAppKeyHook::remove(KXShortcut* shortcut)
{
    letGo(shortcut);
    m_shortcuts.removeOne(shortcut);
    if (!m_shortcuts.isEmpty())
        return;
    for (const QPointer<QObject>& watched : qAsConst(m_watched))
    {
        if (watched)
            watched->removeEventFilter(this);
    }
    m_watched.clear();
}

void KexaAppKeyHook::hold(KXShortcut* shortcut)
{
    if (!shortcut->m_pWidget || shortcut->m_key.isEmpty())
        return;
    QWidget* const window = shortcut->m_pWidget->window();
    auto entry = std::find_if(m_entries.begin(), m_entries.end(),
                              [&](const Entry& e)
                              { return e.pShortcut && e.pWindow == window && e.key == shortcut->m_key; });
    if (entry == m_entries.end())
    {
        Entry made;
        made.pShortcut = new QShortcut(shortcut->m_key, window);
        made.pWindow = window;
        made.key = shortcut->m_key;
        made.id = ++m_lastId;
        connect(made.pShortcut.data(), &QShortcut::activated, this, &KexaAppKeyHook::OnKey);
        connect(made.pShortcut.data(), &QShortcut::activatedAmbiguously, this,
                &KexaAppKeyHook::OnKeyAmbiguous);
        entry = m_entries.insert(m_entries.end(), made);
    }
    const auto age = [this](KXShortcut* s) { return m_shortcuts.indexOf(s); };
    const auto place = std::find_if(entry->holders.begin(), entry->holders.end(),
                                    [&](KXShortcut* other) { return age(other) > age(shortcut); });
    entry->holders.insert(place, shortcut);
}

void KexaAppKeyHook::letGo(KXShortcut* shortcut)
{
    for (int i = m_entries.size() - 1; i >= 0; --i)
    {
        if (m_entries[i].holders.removeOne(shortcut) && m_entries[i].holders.isEmpty())
            drop(i);
    }
}

void KexaAppKeyHook::drop(int index)
{
    const QPointer<QShortcut> gone = m_entries.takeAt(index).pShortcut;
    if (!gone)
        return;
    if (!m_firing.contains(gone.data()))
    {
        delete gone;
        return;
    }
    gone->disconnect(this);
    gone->setKey(QKeySequence());
    gone->deleteLater();
}

void KexaAppKeyHook::watchAncestors(KXShortcut* shortcut)
{
    m_watched.removeAll(QPointer<QObject>());
    for (QWidget* widget = shortcut->m_pWidget; widget;
         widget = widget->isWindow() ? nullptr : widget->parentWidget())
    {
        if (m_watched.contains(widget))
            continue;
        widget->installEventFilter(this);
        m_watched.append(widget);
    }
}

// Moves the keys of all shortcuts in the widget over to the window that it is in now.
void KexaAppKeyHook::follow(const QWidget* widget)
{
    for (KXShortcut* shortcut : qAsConst(m_shortcuts))
    {
        QWidget* const own = shortcut->m_pWidget;
        if (!own || (own != widget && !widget->isAncestorOf(own)))
            continue;
        const auto held = std::find_if(m_entries.cbegin(), m_entries.cend(),
                                       [&](const Entry& e) { return e.holders.contains(shortcut); });
        if (held == m_entries.cend() || (held->pShortcut && held->pWindow == own->window()))
            continue;
        letGo(shortcut);
        hold(shortcut);
        watchAncestors(shortcut);
    }
}

bool KexaAppKeyHook::eventFilter(QObject* object, QEvent* event)
{
    // A widget that becomes a window by its flags alone keeps its parent, but has to be shown again.
    if ((event->type() == QEvent::ParentChange || event->type() == QEvent::Show) && object->isWidgetType())
        follow(static_cast<QWidget*>(object));
    if (event->type() == QEvent::ShortcutOverride)
        noteOffered(object, static_cast<QKeyEvent*>(event));
    else if (event->type() == QEvent::KeyPress && object->isWidgetType())
        return fireOffered(static_cast<QWidget*>(object), static_cast<QKeyEvent*>(event));
    return QObject::eventFilter(object, event);
}

void KexaAppKeyHook::OnKey()
{
    forgetOffered();
    fire(sender(), false);
}

void KexaAppKeyHook::OnKeyAmbiguous()
{
    forgetOffered();
    fire(sender(), true);
}

// Where Plus is Shift and another key, the toolkit takes Shift for used up, finds no shortcut for Shift+Plus
// and sends a plain key press. So a key that the focused control and all around it have let pass is
// remembered when the window is asked last, and taken when it comes as a key press after all.
void KexaAppKeyHook::noteOffered(const QObject* object, const QKeyEvent* event)
{
    forgetOffered();
    if (entryOf(object, keyOf(event)) == m_entries.cend())
        return;
    m_offered = keyOf(event);
    qApp->installEventFilter(this);
}

bool KexaAppKeyHook::fireOffered(const QWidget* receiver, const QKeyEvent* event)
{
    const bool offered = m_offered != 0 && keyOf(event) == m_offered;
    forgetOffered();
    const auto entry = entryOf(receiver->window(), keyOf(event));
    if (!offered || entry == m_entries.cend())
        return false;
    fire(entry->pShortcut, false);
    return true;
}

void KexaAppKeyHook::forgetOffered()
{
    if (m_offered == 0)
        return;
    m_offered = 0;
    qApp->removeEventFilter(this);
}

QVector<KexaAppKeyHook::Entry>::const_iterator KexaAppKeyHook::entryOf(const QObject* window, int key) const
{
    return std::find_if(m_entries.cbegin(), m_entries.cend(),
                        [&](const Entry& e)
                        { return e.pShortcut && e.pWindow == window && e.key == QKeySequence(key); });
}

void KexaAppKeyHook::fire(QObject* source, bool ambiguous)
{
    const auto entry = std::find_if(m_entries.cbegin(), m_entries.cend(),
                                    [source](const Entry& e) { return e.pShortcut == source; });
    if (entry == m_entries.cend())
        return;
    // Who listens may delete shortcuts or change their keys, and these entries with them.
    const QKeySequence key = entry->key;
    const int id = entry->id;
    const QVector<QPointer<KXShortcut>> holders(entry->holders.cbegin(), entry->holders.cend());

    m_firing.append(source);
    if (ambiguous || holders.size() > 1)
        Q_EMIT ShortcutActivatedAmbiguously(key, id);
    else
        Q_EMIT ShortcutActivated(key, id);
    for (const QPointer<KXShortcut>& holder : holders)
    {
        if (holder && holder->m_key == key)
            Q_EMIT holder->Activated();
    }
    m_firing.removeLast();
}
