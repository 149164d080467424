#include "NVBrushToolbarWidget.h"

#include "BarKeys_p.h"
#include "BrushBarLinks_p.h"
#include "KXBrushSettings.h"
#include "PatternSelectWidget.h"

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
    CreateBarKeys(this, m_ModeShortcuts, m_OpacityShortcuts, &NVBrushToolbarWidget::OnShortcutActivated,
                  &NVBrushToolbarWidget::OnOpacityShortcut);
}

void NVBrushToolbarWidget::ReleaseShortcuts()
{
    ReleaseBarKeys(this, m_ModeShortcuts, m_OpacityShortcuts, &NVBrushToolbarWidget::OnShortcutActivated);
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
    const int place = FindModeKey(m_ModeShortcuts, key);
    if (place == NextModeKey)
        SetNextBlendMode();
    else if (place == PreviousModeKey)
        SetPreviousBlendMode();
    else if (place >= FirstModeKey)
        SetBlendModeValue(place - FirstModeKey);
}

void NVBrushToolbarWidget::OnOpacityShortcut()
{
    const int percent = FindDigitOpacity(m_OpacityShortcuts, sender());
    if (percent >= 0)
        SetOpacityValue(percent);
}
