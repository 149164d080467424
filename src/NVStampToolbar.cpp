#include "NVStampToolbar.h"

#include "BarPicture_p.h"
#include "BarPopup_p.h"
#include "BrushBarLinks_p.h"
#include "ItemStep_p.h"
#include "KXBrushSettings.h"
#include "ui_StampToolBar.h"

NVStampToolbar::NVStampToolbar(QWidget* parent)
    : NVBrushToolbarWidget(parent, false), m_pUi(new Ui_StampToolBar)
{
    m_pUi->setupUi(this);
    SetBarPicture(m_pUi->m_pPictureLabelMain, QStringLiteral("theme:tool-bar-stamp.png"));
    GetBrushes()->EnableDynamicProperty(KXBrushSettings::DynamicColor, false);
    connect(m_pUi->m_pSelectBrushBtn, &QPushButton::toggled, this, &NVStampToolbar::OnShowSettingsMenu);
    connect(m_pUi->m_pSizeSpn, qOverload<int>(&QSpinBox::valueChanged), this, &NVStampToolbar::SizeChanged);
    connect(m_pUi->m_pOpacitySpn, qOverload<int>(&QSpinBox::valueChanged), this,
            &NVStampToolbar::OpacityChanged);
    connect(m_pUi->m_pSpacingSpn, qOverload<int>(&QSpinBox::valueChanged), this,
            &NVStampToolbar::SpacingChanged);
    // Each tie a second time, on purpose: the base has made it already.
    LinkOpacity(this);
    LinkSize(this);
    LinkSpacing(this);
    LinkBrush(this, &NVStampToolbar::OnCurrentBrushChanged);
    connect(m_pUi->m_pAlignedSample, &QCheckBox::toggled, this, &NVStampToolbar::Aligned);
    connect(m_pUi->m_pCloneAllLayers, &QCheckBox::toggled, this, &NVStampToolbar::AllLayers);
}

NVStampToolbar::~NVStampToolbar()
{
    delete m_pUi;
}

int NVStampToolbar::GetOpacity() const
{
    return m_pUi->m_pOpacitySpn->value();
}

int NVStampToolbar::GetSize() const
{
    return m_pUi->m_pSizeSpn->value();
}

int NVStampToolbar::GetSpacing() const
{
    return m_pUi->m_pSpacingSpn->value();
}

int NVStampToolbar::GetBlendMode() const
{
    return qMax(0, m_pUi->m_pBlendCombo->currentIndex());
}

bool NVStampToolbar::IsAligned() const
{
    return m_pUi->m_pAlignedSample->isChecked();
}

void NVStampToolbar::SetAligned(bool aligned)
{
    m_pUi->m_pAlignedSample->setChecked(aligned);
}

bool NVStampToolbar::IsAllLayers() const
{
    return m_pUi->m_pCloneAllLayers->isChecked();
}

void NVStampToolbar::SetAllLayers(bool allLayers)
{
    m_pUi->m_pCloneAllLayers->setChecked(allLayers);
}

bool NVStampToolbar::eventFilter(QObject* object, QEvent* event)
{
    if (!IsSettingsPopup(object, this))
        return QObject::eventFilter(object, event);
    FollowSettingsPopup(GetBrushes(), m_pUi->m_pSelectBrushBtn, event, m_bPopupBlocked, AfterBlock::Raise);
    return false;
}

void NVStampToolbar::SetOpacityValue(int percent)
{
    m_pUi->m_pOpacitySpn->setValue(percent);
}

void NVStampToolbar::SetSizeValue(int pixels)
{
    m_pUi->m_pSizeSpn->setValue(pixels);
}

void NVStampToolbar::SetSpacingValue(int percent)
{
    m_pUi->m_pSpacingSpn->setValue(percent);
}

void NVStampToolbar::SetNextBlendMode()
{
    SelectNextItem(m_pUi->m_pBlendCombo);
}

void NVStampToolbar::SetPreviousBlendMode()
{
    SelectPreviousItem(m_pUi->m_pBlendCombo);
}

void NVStampToolbar::SetBlendModeValue(int index)
{
    SelectItem(m_pUi->m_pBlendCombo, index);
}

void NVStampToolbar::OnShowSettingsMenu(bool checked)
{
    ShowBarPopup(checked, GetBrushes(), m_pUi->m_pSelectBrushBtn, this);
}

void NVStampToolbar::OnCurrentBrushChanged(IBrush* brush)
{
    ShowBrush(m_pUi->m_pSelectBrushBtn, brush);
}
