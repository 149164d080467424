#include "KXShortcut.h"

#include "KexaAppKeyHook.h"

KXShortcut::KXShortcut(QWidget* parent, const QKeySequence& key)
    : QObject(parent), m_pWidget(parent), m_key(key)
{
    KexaAppKeyHook::instance()->add(this);
}

KXShortcut::~KXShortcut()
{
    KexaAppKeyHook::instance()->remove(this);
}

QKeySequence KXShortcut::Key() const
{
    return m_key;
}

void KXShortcut::SetKey(const QKeySequence& key)
{
    if (m_key == key)
        return;
    KexaAppKeyHook::instance()->letGo(this);
    m_key = key;
    KexaAppKeyHook::instance()->hold(this);
}
