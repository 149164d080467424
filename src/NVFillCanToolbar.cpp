#include "NVFillCanToolbar.h"

#include "BarKeys_p.h"
#include "BarPicture_p.h"
#include "BarPopup_p.h"
#include "ItemStep_p.h"
#include "PatternSelectWidget.h"
#include "ui_FillCanToolbar.h"

NVFillCanToolbar::NVFillCanToolbar(QWidget* parent) : QWidget(parent), m_pUi(new Ui_FillCanToolbar)
{
    m_pUi->setupUi(this);
    SetBarPicture(m_pUi->m_pPicture, QStringLiteral("theme:tool-bar-bucket.png"));
    m_pPatterns = new PatternSelectWidget(this);
    ConnectSignals();
    OnPatternChanged(m_pPatterns->CurrentIndex());
}

NVFillCanToolbar::~NVFillCanToolbar()
{
    delete m_pUi;
    delete m_pPatterns;
    ReleaseShortcuts();
}

int NVFillCanToolbar::GetBlendMode() const
{
    return m_pUi->m_pBlendMode->currentIndex();
}

int NVFillCanToolbar::GetFillMode() const
{
    return m_pUi->m_pFillMode->currentIndex();
}

int NVFillCanToolbar::GetTolerance() const
{
    return m_pUi->m_pTolerance->value();
}

int NVFillCanToolbar::GetOpacity() const
{
    return m_pUi->m_pOpacity->value();
}

bool NVFillCanToolbar::IsAntialiasing() const
{
    return m_pUi->m_pAntialiasing->isChecked();
}

bool NVFillCanToolbar::IsAllLayers() const
{
    return m_pUi->m_pAllLayers->isChecked();
}

bool NVFillCanToolbar::IsContiguous() const
{
    return m_pUi->m_pContiguous->isChecked();
}

bool NVFillCanToolbar::IsIgnoreTransparency() const
{
    return m_pUi->m_pIgnore->isChecked();
}

PatternSelectWidget* NVFillCanToolbar::GetPatterns() const
{
    return m_pPatterns;
}

void NVFillCanToolbar::CreateShortcuts()
{
    CreateBarKeys(this, m_ModeShortcuts, m_OpacityShortcuts, &NVFillCanToolbar::OnShortcutActivated,
                  &NVFillCanToolbar::OnOpacityShortcut);
}

void NVFillCanToolbar::ReleaseShortcuts()
{
    ReleaseBarKeys(this, m_ModeShortcuts, m_OpacityShortcuts, &NVFillCanToolbar::OnShortcutActivated);
}

void NVFillCanToolbar::NextBlendMode()
{
    SelectNextItem(m_pUi->m_pBlendMode);
}

void NVFillCanToolbar::PreviousBlendMode()
{
    SelectPreviousItem(m_pUi->m_pBlendMode);
}

void NVFillCanToolbar::SetBlendMode(int index)
{
    m_pUi->m_pBlendMode->setCurrentIndex(index);
}

void NVFillCanToolbar::SetFillMode(int index)
{
    m_pUi->m_pFillMode->setCurrentIndex(index);
}

void NVFillCanToolbar::SetTolerance(int tolerance)
{
    m_pUi->m_pTolerance->setValue(tolerance);
}

void NVFillCanToolbar::SetOpacity(int percent)
{
    m_pUi->m_pOpacity->setValue(percent);
}

void NVFillCanToolbar::SetAntialiasing(bool on)
{
    m_pUi->m_pAntialiasing->setChecked(on);
}

void NVFillCanToolbar::SetAllLayers(bool on)
{
    m_pUi->m_pAllLayers->setChecked(on);
}

void NVFillCanToolbar::SetContiguous(bool on)
{
    m_pUi->m_pContiguous->setChecked(on);
}

void NVFillCanToolbar::SetIgnoreTransparency(bool on)
{
    m_pUi->m_pIgnore->setChecked(on);
}

bool NVFillCanToolbar::eventFilter(QObject* object, QEvent* event)
{
    const auto* patterns = qobject_cast<PatternSelectWidget*>(object);
    if (!patterns || patterns != m_pPatterns)
        return QObject::eventFilter(object, event);
    FollowBarPopup(m_pPatterns, m_pUi->m_pSelectPattern, event);
    return false;
}

void NVFillCanToolbar::OnShortcutActivated(const QKeySequence& key, int)
{
    const int place = FindModeKey(m_ModeShortcuts, key);
    if (place == NextModeKey)
        NextBlendMode();
    else if (place == PreviousModeKey)
        PreviousBlendMode();
    else if (place >= FirstModeKey)
        // Even while the list is disabled, on purpose; the two keys above leave it alone then.
        m_pUi->m_pBlendMode->setCurrentIndex(place - FirstModeKey);
}

void NVFillCanToolbar::OnOpacityShortcut()
{
    const int percent = FindDigitOpacity(m_OpacityShortcuts, sender());
    if (percent >= 0)
        m_pUi->m_pOpacity->setValue(percent);
}

void NVFillCanToolbar::OnShowPatterns(bool checked)
{
    ShowBarPopup(checked, m_pPatterns, m_pUi->m_pSelectPattern, this);
}

void NVFillCanToolbar::OnPatternChanged(int index)
{
    ShowPattern(m_pUi->m_pSelectPattern, m_pPatterns, index);
}

void NVFillCanToolbar::ConnectSignals()
{
    connect(m_pUi->m_pTolerance, qOverload<int>(&QSpinBox::valueChanged), this,
            &NVFillCanToolbar::ToleranceChanged);
    connect(m_pUi->m_pOpacity, qOverload<int>(&QSpinBox::valueChanged), this,
            &NVFillCanToolbar::OpacityChanged);
    connect(m_pUi->m_pBlendMode, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &NVFillCanToolbar::BlendModeChanged);
    connect(m_pUi->m_pFillMode, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &NVFillCanToolbar::FillModeChanged);
    connect(m_pUi->m_pIgnore, &QCheckBox::toggled, this, &NVFillCanToolbar::IgnoreTransparencyChanged);
    connect(m_pUi->m_pAntialiasing, &QCheckBox::toggled, this, &NVFillCanToolbar::AntialiasingChanged);
    connect(m_pUi->m_pAllLayers, &QCheckBox::toggled, this, &NVFillCanToolbar::AllLayersChanged);
    connect(m_pUi->m_pContiguous, &QCheckBox::toggled, this, &NVFillCanToolbar::ContiguousChanged);
    connect(m_pUi->m_pSelectPattern, &QPushButton::toggled, this, &NVFillCanToolbar::OnShowPatterns);
    // A double click on a pattern leaves the popup open, on purpose: it is not listened to.
    connect(m_pPatterns, &PatternSelectWidget::ItemSelected, this, &NVFillCanToolbar::OnPatternChanged);
}
