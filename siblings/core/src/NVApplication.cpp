#include "NVApplication.h"

#include <QAction>

#include "KXResource.h"

NVApplication::NVApplication() = default;

NVApplication* NVApplication::GetInstance()
{
    static NVApplication instance;
    return &instance;
}

QColor NVApplication::GetForeground()
{
    return GetInstance()->m_foreground;
}

QColor NVApplication::GetBackground()
{
    return GetInstance()->m_background;
}

int NVApplication::GetTexturePatternIndex()
{
    return GetInstance()->m_texturePatternIndex;
}

int NVApplication::GetTheme() const
{
    return m_theme;
}

QAction* NVApplication::GetRefineSelection() const
{
    return m_pRefineSelection;
}

void NVApplication::RegisterRefineSelection(QAction* action)
{
    if (action == m_pRefineSelection)
        return;
    if (m_pRefineSelection)
        disconnect(m_pRefineSelection, &QObject::destroyed, this, &NVApplication::OnRefineSelectionDestroyed);
    if (action)
        connect(action, &QObject::destroyed, this, &NVApplication::OnRefineSelectionDestroyed);
    m_pRefineSelection = action;
    Q_EMIT RefineSelectionRegistered(action);
}

void NVApplication::SetTheme(int theme)
{
    if (theme < KXResource::LightTheme || theme > KXResource::HighContrastTheme)
        theme = KXResource::LightTheme;
    if (theme == m_theme)
        return;
    m_theme = theme;
    KXResource::UseTheme(theme);
    Q_EMIT ThemeChanged(theme);
}

void NVApplication::SetForeground(const QColor& color)
{
    const QColor rgb = color.toRgb();
    if (!color.isValid() || rgb == m_foreground)
        return;
    m_foreground = rgb;
    Q_EMIT ForegroundChanged(rgb);
}

void NVApplication::SetBackground(const QColor& color)
{
    const QColor rgb = color.toRgb();
    if (!color.isValid() || rgb == m_background)
        return;
    m_background = rgb;
    Q_EMIT BackgroundChanged(rgb);
}

void NVApplication::SetTexturePatternIndex(int index)
{
    if (index < 0 || index == m_texturePatternIndex)
        return;
    m_texturePatternIndex = index;
    Q_EMIT TexturePatternIndexChanged(index);
}

void NVApplication::OnRefineSelectionDestroyed()
{
    m_pRefineSelection = nullptr;
    Q_EMIT RefineSelectionRegistered(nullptr);
}
