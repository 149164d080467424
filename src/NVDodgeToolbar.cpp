#include "NVDodgeToolbar.h"

#include "BarPicture_p.h"
#include "BarPopup_p.h"
#include "BrushBarLinks_p.h"
#include "KXBrushSettings.h"
#include "ui_DodgeToolBar.h"

NVDodgeToolbar::NVDodgeToolbar(QWidget* parent)
    : NVBrushToolbarWidget(parent, true), m_pUi(new Ui_DodgeToolBar)
{
    m_pUi->setupUi(this);
    SetBarPicture(m_pUi->m_pPictureLabelMain, QStringLiteral("theme:tool-bar-dodge.png"));
    GetBrushes()->EnableDynamicProperty(KXBrushSettings::DynamicColor, false);
    GetBrushes()->EnableDynamicProperty(KXBrushSettings::DynamicOpacity, false);
    connect(m_pUi->m_pSelectBrushBtn, &QPushButton::toggled, this, &NVDodgeToolbar::OnShowSettingsMenu);
    connect(m_pUi->m_pSizeSpin, qOverload<int>(&QSpinBox::valueChanged), this, &NVDodgeToolbar::SizeChanged);
    connect(m_pUi->m_pSpacingSpn, qOverload<int>(&QSpinBox::valueChanged), this,
            &NVDodgeToolbar::SpacingChanged);
    // Each tie but that of the opacity a second time, on purpose: the base has made it already.
    LinkSize(this);
    LinkSpacing(this);
    LinkBrush(this, &NVDodgeToolbar::OnCurrentBrushChanged);
}

NVDodgeToolbar::~NVDodgeToolbar()
{
    delete m_pUi;
}

int NVDodgeToolbar::GetSize() const
{
    return m_pUi->m_pSizeSpin->value();
}

int NVDodgeToolbar::GetSpacing() const
{
    return m_pUi->m_pSpacingSpn->value();
}

int NVDodgeToolbar::GetRange() const
{
    // Without a floor at 0, on purpose: no selection is -1.
    return m_pUi->m_pRange->currentIndex();
}

void NVDodgeToolbar::SetRange(int index)
{
    m_pUi->m_pRange->setCurrentIndex(index);
}

int NVDodgeToolbar::GetExposure() const
{
    return m_pUi->m_pExposure->value();
}

void NVDodgeToolbar::SetExposure(int percent)
{
    m_pUi->m_pExposure->setValue(percent);
}

void NVDodgeToolbar::SetIcon(const QString& name)
{
    // The name is not fitted to the density of the screen, on purpose: the caller has done that.
    m_pUi->m_pPictureLabelMain->setPixmap(QPixmap(name));
}

bool NVDodgeToolbar::eventFilter(QObject* object, QEvent* event)
{
    if (!IsSettingsPopup(object, this))
        return QObject::eventFilter(object, event);
    FollowSettingsPopup(GetBrushes(), m_pUi->m_pSelectBrushBtn, event, m_bPopupBlocked, AfterBlock::Raise);
    return false;
}

void NVDodgeToolbar::SetSizeValue(int pixels)
{
    m_pUi->m_pSizeSpin->setValue(pixels);
}

void NVDodgeToolbar::SetSpacingValue(int percent)
{
    m_pUi->m_pSpacingSpn->setValue(percent);
}

void NVDodgeToolbar::OnShowSettingsMenu(bool checked)
{
    ShowBarPopup(checked, GetBrushes(), m_pUi->m_pSelectBrushBtn, this);
}

void NVDodgeToolbar::OnCurrentBrushChanged(IBrush* brush)
{
    ShowBrush(m_pUi->m_pSelectBrushBtn, brush);
}
