#include "NVSpotHealingToolbar.h"

#include "BarPicture_p.h"
#include "BarPopup_p.h"
#include "BrushBarLinks_p.h"
#include "KXBrushSettings.h"
#include "ui_SpotHealingToolBar.h"

NVSpotHealingToolbar::NVSpotHealingToolbar(QWidget* parent)
    : NVBrushToolbarWidget(parent, false), m_pUi(new Ui_SpotHealingToolBar)
{
    m_pUi->setupUi(this);
    SetBarPicture(m_pUi->m_pPictureLabelMain, QStringLiteral("theme:healing-brush_white.png"));
    GetBrushes()->EnableDynamicProperty(KXBrushSettings::DynamicColor, false);
    GetBrushes()->EnableDynamicProperty(KXBrushSettings::DynamicOpacity, false);
    GetBrushes()->EnableDynamicProperty(KXBrushSettings::DynamicScatter, false);
    connect(m_pUi->m_pSelectBrushBtn, &QToolButton::toggled, this, &NVSpotHealingToolbar::OnShowSettingsMenu);
    connect(m_pUi->m_pSizeSpn, qOverload<int>(&QSpinBox::valueChanged), this,
            &NVSpotHealingToolbar::SizeChanged);
    connect(m_pUi->m_pSpacingSpn, qOverload<int>(&QSpinBox::valueChanged), this,
            &NVSpotHealingToolbar::SpacingChanged);
    // Each tie but that of the opacity a second time, on purpose: the base has made it already.
    LinkSize(this);
    LinkSpacing(this);
    LinkBrush(this, &NVSpotHealingToolbar::OnCurrentBrushChanged);
}

NVSpotHealingToolbar::~NVSpotHealingToolbar()
{
    delete m_pUi;
}

int NVSpotHealingToolbar::GetSize() const
{
    return m_pUi->m_pSizeSpn->value();
}

int NVSpotHealingToolbar::GetSpacing() const
{
    return m_pUi->m_pSpacingSpn->value();
}

bool NVSpotHealingToolbar::eventFilter(QObject* object, QEvent* event)
{
    if (!IsSettingsPopup(object, this))
        return QObject::eventFilter(object, event);
    FollowSettingsPopup(GetBrushes(), m_pUi->m_pSelectBrushBtn, event, m_bPopupBlocked, AfterBlock::Raise);
    return false;
}

void NVSpotHealingToolbar::SetSizeValue(int pixels)
{
    m_pUi->m_pSizeSpn->setValue(pixels);
}

void NVSpotHealingToolbar::SetSpacingValue(int percent)
{
    m_pUi->m_pSpacingSpn->setValue(percent);
}

void NVSpotHealingToolbar::OnShowSettingsMenu(bool checked)
{
    ShowBarPopup(checked, GetBrushes(), m_pUi->m_pSelectBrushBtn, this);
}

void NVSpotHealingToolbar::OnCurrentBrushChanged(IBrush* brush)
{
    ShowBrush(m_pUi->m_pSelectBrushBtn, brush);
}
