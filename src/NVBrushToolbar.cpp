#include "NVBrushToolbar.h"

#include <QEvent>

#include "BarPopup_p.h"
#include "BrushBarLinks_p.h"
#include "IBrush.h"
#include "ItemStep_p.h"
#include "KXBrushSettings.h"
#include "KXResource.h"
#include "NVApplication.h"
#include "NVIconHelper.h"
#include "NVStringHelper.h"
#include "PatternSelectWidget.h"
#include "ui_BrushToolBar.h"

NVBrushToolbar::NVBrushToolbar(QWidget* parent)
    : NVBrushToolbarWidget(parent, true), m_pUi(new Ui_BrushToolBar)
{
    m_pUi->setupUi(this);
    SetPicture();
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
    const auto* settings = qobject_cast<KXBrushSettings*>(object);
    if (settings && settings == GetBrushes())
    {
        FollowSettings(event);
        return false;
    }
    const auto* patterns = qobject_cast<PatternSelectWidget*>(object);
    if (patterns && patterns == GetPatterns())
    {
        FollowPatterns(event);
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
    if (m_pUi->m_pBlendCombo->isEnabled())
        m_pUi->m_pBlendCombo->setCurrentIndex(index);
}

void NVBrushToolbar::OnShowSettingsMenu(bool checked)
{
    if (checked)
        OpenBarPopup(GetBrushes(), m_pUi->m_pSelectBrushBtn, this);
    else
        CloseBarPopup(GetBrushes(), this);
}

void NVBrushToolbar::OnShowPatternsMenu(bool checked)
{
    if (checked)
        OpenBarPopup(GetPatterns(), m_pUi->m_pSelectPatternBtn, this);
    else
        CloseBarPopup(GetPatterns(), this);
}

void NVBrushToolbar::OnPatternChanged(int index)
{
    QImage image;
    if (GetPatterns()->GetItemImage(index, image))
        m_pUi->m_pSelectPatternBtn->setIcon(NVIconHelper::DisabledIcon(QPixmap::fromImage(image)));
}

void NVBrushToolbar::OnHidePatterns(int)
{
    m_pUi->m_pSelectPatternBtn->setChecked(false);
}

void NVBrushToolbar::OnCurrentBrushChanged(IBrush* brush)
{
    if (!brush)
        return;
    const bool dark = NVApplication::GetInstance()->GetTheme() == KXResource::DarkTheme;
    m_pUi->m_pSelectBrushBtn->setIcon(brush->GetColoredIcon(dark ? Qt::white : Qt::black));
}

void NVBrushToolbar::SetPicture()
{
    // Set again, though the form names it: only here the density of the screen is known.
    const QString name = NVStringHelper::DPIAdjustImageName(QStringLiteral("theme:tool-bar-brush.png"));
    m_pUi->m_pPictureLabelMain->setPixmap(QPixmap(name));
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
    connect(GetBrushes(), &KXBrushSettings::CurrentBrushChanged, this,
            &NVBrushToolbar::OnCurrentBrushChanged);
    connect(GetBrushes(), &KXBrushSettings::BrushParameterChanged, this,
            &NVBrushToolbar::OnCurrentBrushChanged);
}

void NVBrushToolbar::FollowSettings(const QEvent* event)
{
    switch (event->type())
    {
    case QEvent::Hide:
        RaiseBarPopupButton(m_pUi->m_pSelectBrushBtn);
        break;
    case QEvent::WindowDeactivate:
        if (!m_bPopupBlocked)
            LeaveBarPopup(GetBrushes(), m_pUi->m_pSelectBrushBtn);
        break;
    case QEvent::WindowBlocked:
        m_bPopupBlocked = true;
        break;
    case QEvent::WindowUnblocked:
        // This bar does not raise the popup, on purpose.
        m_bPopupBlocked = false;
        break;
    default:
        break;
    }
}

// Blocked or not makes no difference here, on purpose: a modal window closes this popup.
void NVBrushToolbar::FollowPatterns(const QEvent* event)
{
    if (event->type() == QEvent::Hide)
        RaiseBarPopupButton(m_pUi->m_pSelectPatternBtn);
    else if (event->type() == QEvent::WindowDeactivate)
        LeaveBarPopup(GetPatterns(), m_pUi->m_pSelectPatternBtn);
}
