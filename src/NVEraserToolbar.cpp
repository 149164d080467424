#include "NVEraserToolbar.h"

#include "BarPicture_p.h"
#include "BarPopup_p.h"
#include "BrushBarLinks_p.h"
#include "KXBrushSettings.h"
#include "ui_EraserToolBar.h"

NVEraserToolbar::NVEraserToolbar(QWidget* parent)
    : NVBrushToolbarWidget(parent, false), m_pUi(new Ui_EraserToolBar)
{
    m_pUi->setupUi(this);
    SetBarPicture(m_pUi->m_pPictureLabelMain, QStringLiteral("theme:eraser.png"));
    GetBrushes()->EnableDynamicProperty(KXBrushSettings::DynamicColor, false);
    connect(m_pUi->m_pSelectBrushBtn, &QPushButton::toggled, this, &NVEraserToolbar::OnShowSettingsMenu);
    connect(m_pUi->m_pSizeSpn, qOverload<int>(&QSpinBox::valueChanged), this, &NVEraserToolbar::SizeChanged);
    connect(m_pUi->m_pOpacitySpn, qOverload<int>(&QSpinBox::valueChanged), this,
            &NVEraserToolbar::OpacityChanged);
    connect(m_pUi->m_pSpacingSpn, qOverload<int>(&QSpinBox::valueChanged), this,
            &NVEraserToolbar::SpacingChanged);
    // Each tie a second time, on purpose: the base has made it already.
    LinkOpacity(this);
    LinkSize(this);
    LinkSpacing(this);
    LinkBrush(this, &NVEraserToolbar::OnCurrentBrushChanged);
}

NVEraserToolbar::~NVEraserToolbar()
{
    delete m_pUi;
}

int NVEraserToolbar::GetOpacity() const
{
    return m_pUi->m_pOpacitySpn->value();
}

int NVEraserToolbar::GetSize() const
{
    return m_pUi->m_pSizeSpn->value();
}

int NVEraserToolbar::GetSpacing() const
{
    return m_pUi->m_pSpacingSpn->value();
}

bool NVEraserToolbar::eventFilter(QObject* object, QEvent* event)
{
    if (!IsSettingsPopup(object, this))
        return QObject::eventFilter(object, event);
    FollowSettingsPopup(GetBrushes(), m_pUi->m_pSelectBrushBtn, event, m_bPopupBlocked, AfterBlock::Raise);
    return false;
}

void NVEraserToolbar::SetOpacityValue(int percent)
{
    m_pUi->m_pOpacitySpn->setValue(percent);
}

void NVEraserToolbar::SetSizeValue(int pixels)
{
    m_pUi->m_pSizeSpn->setValue(pixels);
}

void NVEraserToolbar::SetSpacingValue(int percent)
{
    m_pUi->m_pSpacingSpn->setValue(percent);
}

void NVEraserToolbar::OnShowSettingsMenu(bool checked)
{
    ShowBarPopup(checked, GetBrushes(), m_pUi->m_pSelectBrushBtn, this);
}

void NVEraserToolbar::OnCurrentBrushChanged(IBrush* brush)
{
    ShowBrush(m_pUi->m_pSelectBrushBtn, brush);
}
