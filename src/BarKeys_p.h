#pragma once

#include <array>

#include <QList>

#include "KXShortcut.h"
#include "KexaAppKeyHook.h"

// The keys that the brush bars and the fill can bar have in common: fourteen that choose a blend mode, and
// the ten digits, which set the opacity. A bar holds the shortcuts itself and says what a key does to it.

using ModeShortcuts = std::array<KXShortcut*, 14>;
using DigitShortcuts = QList<KXShortcut*>;

// Places of the mode shortcuts.
constexpr int PreviousModeKey = 0;
constexpr int NextModeKey = 1;
// From here on, each key stands for the blend mode at the same distance in the list of modes. "Addition", the
// last mode, has no key.
constexpr int FirstModeKey = 2;

constexpr int DigitCount = 10;

void CreateModeShortcuts(QWidget* bar, ModeShortcuts& shortcuts);
void DeleteModeShortcuts(ModeShortcuts& shortcuts);

// The place of the first shortcut that holds the key now, -1 if none does. Plus is looked at before Minus.
int FindModeKey(const ModeShortcuts& shortcuts, const QKeySequence& key);
// Percent for the digit whose shortcut the object is; -1 for any other object, or none.
int FindDigitOpacity(const DigitShortcuts& shortcuts, QObject* object);

// Turns the keys on. The slots may be private: the bar names them itself.
template <class Bar>
void CreateBarKeys(Bar* bar, ModeShortcuts& modes, DigitShortcuts& digits,
                   void (Bar::*onMode)(const QKeySequence&, int), void (Bar::*onDigit)())
{
    CreateModeShortcuts(bar, modes);

    // The mode keys arrive through the hook alone. A key that others claim too acts like any other.
    KexaAppKeyHook* hook = KexaAppKeyHook::instance();
    QObject::connect(hook, &KexaAppKeyHook::ShortcutActivatedAmbiguously, bar, onMode);
    QObject::connect(hook, &KexaAppKeyHook::ShortcutActivated, bar, onMode);

    for (int digit = 0; digit < DigitCount; ++digit)
    {
        KXShortcut* shortcut = new KXShortcut(bar, QKeySequence(Qt::Key_0 + digit));
        QObject::connect(shortcut, &KXShortcut::Activated, bar, onDigit);
        digits.append(shortcut);
    }
}

// Turns the keys off. Does nothing when they are.
template <class Bar>
void ReleaseBarKeys(Bar* bar, ModeShortcuts& modes, DigitShortcuts& digits,
                    void (Bar::*onMode)(const QKeySequence&, int))
{
    DeleteModeShortcuts(modes);

    KexaAppKeyHook* hook = KexaAppKeyHook::instance();
    QObject::disconnect(hook, &KexaAppKeyHook::ShortcutActivatedAmbiguously, bar, onMode);
    QObject::disconnect(hook, &KexaAppKeyHook::ShortcutActivated, bar, onMode);

    qDeleteAll(digits);
    digits.clear();
}
