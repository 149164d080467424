#include "BarKeys_p.h"

namespace
{

constexpr std::array<int, 14> ModeKeys{{
    Qt::SHIFT + Qt::Key_Minus, Qt::SHIFT + Qt::Key_Plus,
    Qt::ALT + Qt::SHIFT + Qt::Key_N, // "Normal"
    Qt::ALT + Qt::SHIFT + Qt::Key_M, // "Multiply"
    Qt::ALT + Qt::SHIFT + Qt::Key_S, // "Screen"
    Qt::ALT + Qt::SHIFT + Qt::Key_O, // "Overlay"
    Qt::ALT + Qt::SHIFT + Qt::Key_E, // "Difference"
    Qt::ALT + Qt::SHIFT + Qt::Key_X, // "Exclusion"
    Qt::ALT + Qt::SHIFT + Qt::Key_G, // "Lighten colors"
    Qt::ALT + Qt::SHIFT + Qt::Key_K, // "Darken colors"
    Qt::ALT + Qt::SHIFT + Qt::Key_F, // "Soft light"
    Qt::ALT + Qt::SHIFT + Qt::Key_H, // "Hard light"
    Qt::ALT + Qt::SHIFT + Qt::Key_D, // "Color dodge"
    Qt::ALT + Qt::SHIFT + Qt::Key_B, // "Color burn"
}};

bool holdsKey(const KXShortcut* shortcut, const QKeySequence& key)
{
    return shortcut && shortcut->Key() == key;
}

} // namespace

void CreateModeShortcuts(QWidget* bar, ModeShortcuts& shortcuts)
{
    for (size_t i = 0; i < ModeKeys.size(); ++i)
    {
        shortcuts[i] = new KXShortcut(bar, QKeySequence());
        shortcuts[i]->SetKey(QKeySequence(ModeKeys[i]));
    }
}

void DeleteModeShortcuts(ModeShortcuts& shortcuts)
{
    for (KXShortcut*& shortcut : shortcuts)
    {
        delete shortcut;
        shortcut = nullptr;
    }
}

int FindModeKey(const ModeShortcuts& shortcuts, const QKeySequence& key)
{
    // Plus before Minus, on purpose; it shows when both shortcuts have been given one key.
    for (const int place : {NextModeKey, PreviousModeKey})
    {
        if (holdsKey(shortcuts[size_t(place)], key))
            return place;
    }
    for (int place = FirstModeKey; place < int(shortcuts.size()); ++place)
    {
        if (holdsKey(shortcuts[size_t(place)], key))
            return place;
    }
    return -1;
}

int FindDigitOpacity(const DigitShortcuts& shortcuts, QObject* object)
{
    const int digit = shortcuts.indexOf(qobject_cast<KXShortcut*>(object));
    // A second set of keys lies behind the tenth place and stays without effect, so that a digit acts once.
    if (digit < 0 || digit >= DigitCount)
        return -1;
    return digit == 0 ? 100 : digit * 10;
}
