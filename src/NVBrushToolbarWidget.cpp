#include "NVBrushToolbarWidget.h"

#include "BrushBarLinks_p.h"
#include "KXBrushSettings.h"
#include "KXShortcut.h"
#include "KexaAppKeyHook.h"
#include "PatternSelectWidget.h"

namespace
{

// Places in the list of mode keys.
constexpr int PreviousModeKey = 0;
constexpr int NextModeKey = 1;
// From here on, each key stands for the blend mode at the same distance in the list of modes. "Addition", the
// last mode, has no key.
constexpr int FirstModeKey = 2;

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

constexpr int DigitCount = 10;

} // namespace

NVBrushToolbarWidget::NVBrushToolbarWidget(QWidget* parent, bool withPatterns)
    : QWidget(parent), m_pBrushes(new KXBrushSettings(nullptr))
{
    if (withPatterns)
        m_pPatterns = new PatternSelectWidget(this);

    LinkOpacity(this);
    LinkSize(this);
    LinkSpacing(this);
}

NVBrushToolbarWidget::~NVBrushToolbarWidget()
{
    delete m_pBrushes;
    delete m_pPatterns;
    ReleaseShortcuts();
}

KXBrushSettings* NVBrushToolbarWidget::GetBrushes() const
{
    return m_pBrushes;
}

PatternSelectWidget* NVBrushToolbarWidget::GetPatterns() const
{
    return m_pPatterns;
}

void NVBrushToolbarWidget::CreateShortcuts()
{
    for (size_t i = 0; i < ModeKeys.size(); ++i)
    {
        m_ModeShortcuts[i] = new KXShortcut(this, QKeySequence());
        m_ModeShortcuts[i]->SetKey(QKeySequence(ModeKeys[i]));
    }

    // The mode keys arrive through the hook alone. A key that others claim too acts like any other.
    KexaAppKeyHook* hook = KexaAppKeyHook::instance();
    connect(hook, &KexaAppKeyHook::ShortcutActivatedAmbiguously, this,
            &NVBrushToolbarWidget::OnShortcutActivated);
    connect(hook, &KexaAppKeyHook::ShortcutActivated, this, &NVBrushToolbarWidget::OnShortcutActivated);

    for (int digit = 0; digit < DigitCount; ++digit)
    {
        KXShortcut* shortcut = new KXShortcut(this, QKeySequence(Qt::Key_0 + digit));
        connect(shortcut, &KXShortcut::Activated, this, &NVBrushToolbarWidget::OnOpacityShortcut);
        m_OpacityShortcuts.append(shortcut);
    }
}

void NVBrushToolbarWidget::ReleaseShortcuts()
{
    for (KXShortcut*& shortcut : m_ModeShortcuts)
    {
        delete shortcut;
        shortcut = nullptr;
    }

    KexaAppKeyHook* hook = KexaAppKeyHook::instance();
    disconnect(hook, &KexaAppKeyHook::ShortcutActivatedAmbiguously, this,
               &NVBrushToolbarWidget::OnShortcutActivated);
    disconnect(hook, &KexaAppKeyHook::ShortcutActivated, this, &NVBrushToolbarWidget::OnShortcutActivated);

    qDeleteAll(m_OpacityShortcuts);
    m_OpacityShortcuts.clear();
}

void NVBrushToolbarWidget::NextBlendMode()
{
    SetNextBlendMode();
}

void NVBrushToolbarWidget::PreviousBlendMode()
{
    SetPreviousBlendMode();
}

void NVBrushToolbarWidget::SetOpacity(int percent)
{
    SetOpacityValue(percent);
}

void NVBrushToolbarWidget::SetSpacing(int percent)
{
    SetSpacingValue(percent);
}

void NVBrushToolbarWidget::SetSize(int pixels)
{
    SetSizeValue(pixels);
}

void NVBrushToolbarWidget::SetBlendMode(int index)
{
    SetBlendModeValue(index);
}

void NVBrushToolbarWidget::SetOpacityValue(int) { }

void NVBrushToolbarWidget::SetSizeValue(int) { }

void NVBrushToolbarWidget::SetSpacingValue(int) { }

void NVBrushToolbarWidget::SetNextBlendMode() { }

void NVBrushToolbarWidget::SetPreviousBlendMode() { }

void NVBrushToolbarWidget::SetBlendModeValue(int) { }

void NVBrushToolbarWidget::OnShortcutActivated(const QKeySequence& key, int)
{
    // Plus before Minus, on purpose; it shows when both shortcuts have been given one key.
    if (IsModeKey(NextModeKey, key))
    {
        SetNextBlendMode();
        return;
    }
    if (IsModeKey(PreviousModeKey, key))
    {
        SetPreviousBlendMode();
        return;
    }
    for (int i = FirstModeKey; i < int(m_ModeShortcuts.size()); ++i)
    {
        if (IsModeKey(i, key))
        {
            SetBlendModeValue(i - FirstModeKey);
            return;
        }
    }
}

void NVBrushToolbarWidget::OnOpacityShortcut()
{
    const int digit = m_OpacityShortcuts.indexOf(qobject_cast<KXShortcut*>(sender()));
    // A second set of keys lies behind the tenth place and stays without effect, so that a digit acts once.
    if (digit < 0 || digit >= DigitCount)
        return;
    SetOpacityValue(digit == 0 ? 100 : digit * 10);
}

bool NVBrushToolbarWidget::IsModeKey(int shortcut, const QKeySequence& key) const
{
    const KXShortcut* candidate = m_ModeShortcuts[size_t(shortcut)];
    return candidate && candidate->Key() == key;
}
