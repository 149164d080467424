#include "NVBrushToolbar.h"

#include "BarPicture_p.h"
#include "BarPopup_p.h"
#include "BrushBarLinks_p.h"
#include "ItemStep_p.h"
#include "NVApplication.h"
#include "PatternSelectWidget.h"
#include "ui_BrushToolBar.h"

NVBrushToolbar::NVBrushToolbar(QWidget* parent)
    : NVBrushToolbarWidget(parent, true), m_pUi(new Ui_BrushToolBar)
{
    m_pUi->setupUi(this);
    SetBarPicture(m_pUi->m_pPictureLabelMain, QStringLiteral("theme:tool-bar-brush.png"));
    connect(m_pUi->m_pSelectBrushBtn, &QPushButton::toggled, this, &NVBrushToolbar::OnShowSettingsMenu);
    ConnectPatterns();
    ConnectValues();
    ConnectSettings();
}

NVBrushToolbar::~NVBrushToolbar()
{
    delete m_pUi;
}

int NVBrushToolbar::GetOpacity() const
{
    return m_pUi->m_pOpacitySpn->value();
}

int NVBrushToolbar::GetSize() const
{
    return m_pUi->m_pSizeSpn->value();
}

int NVBrushToolbar::GetSpacing() const
{
    return m_pUi->m_pSpacingSpn->value();
}

int NVBrushToolbar::GetBlendMode() const
{
    return qMax(0, m_pUi->m_pBlendCombo->currentIndex());
}

int NVBrushToolbar::GetStyle() const
{
    return qMax(0, m_pUi->m_pFillModeCombo->currentIndex());
}

void NVBrushToolbar::SetStyle(unsigned int index)
{
    const int count = m_pUi->m_pFillModeCombo->count();
    m_pUi->m_pFillModeCombo->setCurrentIndex(index < unsigned(count) ? int(index) : count - 1);
}

bool NVBrushToolbar::eventFilter(QObject* object, QEvent* event)
{
    if (IsSettingsPopup(object, this))
    {
        // This bar does not raise the popup, on purpose.
        FollowSettingsPopup(GetBrushes(), m_pUi->m_pSelectBrushBtn, event, m_bPopupBlocked,
                            AfterBlock::Leave);
        return false;
    }
    const auto* patterns = qobject_cast<PatternSelectWidget*>(object);
    if (patterns && patterns == GetPatterns())
    {
        // Blocked or not makes no difference here, on purpose: a modal window closes this popup.
        FollowBarPopup(GetPatterns(), m_pUi->m_pSelectPatternBtn, event);
        return false;
    }
    return QObject::eventFilter(object, event);
}

void NVBrushToolbar::SetOpacityValue(int percent)
{
    m_pUi->m_pOpacitySpn->setValue(percent);
}

void NVBrushToolbar::SetSizeValue(int pixels)
{
    m_pUi->m_pSizeSpn->setValue(pixels);
}

void NVBrushToolbar::SetSpacingValue(int percent)
{
    m_pUi->m_pSpacingSpn->setValue(percent);
}

void NVBrushToolbar::SetNextBlendMode()
{
    SelectNextItem(m_pUi->m_pBlendCombo);
}

void NVBrushToolbar::SetPreviousBlendMode()
{
    SelectPreviousItem(m_pUi->m_pBlendCombo);
}

void NVBrushToolbar::SetBlendModeValue(int index)
{
    SelectItem(m_pUi->m_pBlendCombo, index);
}

void NVBrushToolbar::OnShowSettingsMenu(bool checked)
{
    ShowBarPopup(checked, GetBrushes(), m_pUi->m_pSelectBrushBtn, this);
}

void NVBrushToolbar::OnShowPatternsMenu(bool checked)
{
    ShowBarPopup(checked, GetPatterns(), m_pUi->m_pSelectPatternBtn, this);
}

void NVBrushToolbar::OnPatternChanged(int index)
{
    ShowPattern(m_pUi->m_pSelectPatternBtn, GetPatterns(), index);
}

void NVBrushToolbar::OnHidePatterns(int)
{
    m_pUi->m_pSelectPatternBtn->setChecked(false);
}

void NVBrushToolbar::OnCurrentBrushChanged(IBrush* brush)
{
    ShowBrush(m_pUi->m_pSelectBrushBtn, brush);
}

void NVBrushToolbar::ConnectPatterns()
{
    if (!GetPatterns())
        return;
    connect(m_pUi->m_pSelectPatternBtn, &QPushButton::toggled, this, &NVBrushToolbar::OnShowPatternsMenu);
    connect(GetPatterns(), &PatternSelectWidget::ItemDoubleClicked, this, &NVBrushToolbar::OnHidePatterns);
    connect(GetPatterns(), &PatternSelectWidget::ItemSelected, this, &NVBrushToolbar::OnPatternChanged);
    OnPatternChanged(NVApplication::GetTexturePatternIndex());
}

void NVBrushToolbar::ConnectValues()
{
    connect(m_pUi->m_pSizeSpn, qOverload<int>(&QSpinBox::valueChanged), this, &NVBrushToolbar::SizeChanged);
    connect(m_pUi->m_pOpacitySpn, qOverload<int>(&QSpinBox::valueChanged), this,
            &NVBrushToolbar::OpacityChanged);
    connect(m_pUi->m_pSpacingSpn, qOverload<int>(&QSpinBox::valueChanged), this,
            &NVBrushToolbar::SpacingChanged);
}

void NVBrushToolbar::ConnectSettings()
{
    // Each tie a second time, on purpose: the base has made it already.
    LinkOpacity(this);
    LinkSize(this);
    LinkSpacing(this);
    LinkBrush(this, &NVBrushToolbar::OnCurrentBrushChanged);
}
