#include "NVBlurToolbar.h"

#include "BarPicture_p.h"
#include "BarPopup_p.h"
#include "BrushBarLinks_p.h"
#include "ItemStep_p.h"
#include "KXBrushSettings.h"
#include "ui_BlurToolBar.h"

NVBlurToolbar::NVBlurToolbar(QWidget* parent) : NVBrushToolbarWidget(parent, true), m_pUi(new Ui_BlurToolBar)
{
    m_pUi->setupUi(this);
    SetBarPicture(m_pUi->m_pPictureLabelMain, QStringLiteral("theme:tool-bar-blurbrush.png"));
    GetBrushes()->EnableDynamicProperty(KXBrushSettings::DynamicColor, false);
    connect(m_pUi->m_pSelectBrushBtn, &QPushButton::toggled, this, &NVBlurToolbar::OnShowSettingsMenu);
    connect(m_pUi->m_pSizeSpin, qOverload<int>(&QSpinBox::valueChanged), this, &NVBlurToolbar::SizeChanged);
    connect(m_pUi->m_pOpacitySpin, qOverload<int>(&QSpinBox::valueChanged), this,
            &NVBlurToolbar::OpacityChanged);
    connect(m_pUi->m_pSpacingSpn, qOverload<int>(&QSpinBox::valueChanged), this,
            &NVBlurToolbar::SpacingChanged);
    // Each tie a second time, on purpose: the base has made it already.
    LinkOpacity(this);
    LinkSize(this);
    LinkSpacing(this);
    LinkBrush(this, &NVBlurToolbar::OnCurrentBrushChanged);
}

NVBlurToolbar::~NVBlurToolbar()
{
    delete m_pUi;
}

int NVBlurToolbar::GetOpacity() const
{
    return m_pUi->m_pOpacitySpin->value();
}

int NVBlurToolbar::GetSize() const
{
    return m_pUi->m_pSizeSpin->value();
}

int NVBlurToolbar::GetSpacing() const
{
    return m_pUi->m_pSpacingSpn->value();
}

int NVBlurToolbar::GetBlendMode() const
{
    return qMax(0, m_pUi->m_pBlendCombo->currentIndex());
}

bool NVBlurToolbar::SampleAll() const
{
    return m_pUi->m_pSampleAllLayers->isChecked();
}

void NVBlurToolbar::SetSampleAll(bool sampleAll)
{
    m_pUi->m_pSampleAllLayers->setChecked(sampleAll);
}

bool NVBlurToolbar::eventFilter(QObject* object, QEvent* event)
{
    if (!IsSettingsPopup(object, this))
        return QObject::eventFilter(object, event);
    FollowSettingsPopup(GetBrushes(), m_pUi->m_pSelectBrushBtn, event, m_bPopupBlocked, AfterBlock::Raise);
    return false;
}

void NVBlurToolbar::SetOpacityValue(int percent)
{
    m_pUi->m_pOpacitySpin->setValue(percent);
}

void NVBlurToolbar::SetSizeValue(int pixels)
{
    m_pUi->m_pSizeSpin->setValue(pixels);
}

void NVBlurToolbar::SetSpacingValue(int percent)
{
    m_pUi->m_pSpacingSpn->setValue(percent);
}

void NVBlurToolbar::SetNextBlendMode()
{
    SelectNextItem(m_pUi->m_pBlendCombo);
}

void NVBlurToolbar::SetPreviousBlendMode()
{
    SelectPreviousItem(m_pUi->m_pBlendCombo);
}

void NVBlurToolbar::SetBlendModeValue(int index)
{
    SelectItem(m_pUi->m_pBlendCombo, index);
}

void NVBlurToolbar::OnShowSettingsMenu(bool checked)
{
    ShowBarPopup(checked, GetBrushes(), m_pUi->m_pSelectBrushBtn, this);
}

void NVBlurToolbar::OnCurrentBrushChanged(IBrush* brush)
{
    ShowBrush(m_pUi->m_pSelectBrushBtn, brush);
}
