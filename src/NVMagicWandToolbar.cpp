#include "NVMagicWandToolbar.h"

#include <QAction>

#include "BarPicture_p.h"
#include "NVApplication.h"
#include "SelectionStates_p.h"
#include "ui_MagicWandToolbar.h"

using States = SelectionStates<NVMagicWandToolbar>;

NVMagicWandToolbar::NVMagicWandToolbar(QWidget* parent) : QWidget(parent), m_pUi(new Ui_MagicWandToolbar)
{
    m_pUi->setupUi(this);
    m_pUi->m_pRefineSelection->setObjectName(QStringLiteral("REFINESELECTIONBUTTON"));
    SetBarPicture(m_pUi->m_pPicture, QStringLiteral("theme:tool-bar-wand.png"));
    m_State = States::Checked(*this);
    ConnectSignals();
    OnRefineRegistered(NVApplication::GetInstance()->GetRefineSelection());
}

NVMagicWandToolbar::~NVMagicWandToolbar()
{
    delete m_pUi;
}

int NVMagicWandToolbar::GetState() const
{
    return States::Effective(*this);
}

int NVMagicWandToolbar::GetClearState() const
{
    return m_State;
}

int NVMagicWandToolbar::GetTolerance() const
{
    return m_pUi->m_pTolerance->value();
}

bool NVMagicWandToolbar::IsSampleAllLayers() const
{
    return m_pUi->m_pAllLayers->isChecked();
}

bool NVMagicWandToolbar::IsContiguous() const
{
    return m_pUi->m_pContiguous->isChecked();
}

void NVMagicWandToolbar::SetModifiers(QFlags<KeyModifier> flags)
{
    States::SetModifiers(*this, flags);
}

void NVMagicWandToolbar::SetState(int state)
{
    States::SetState(*this, state);
}

void NVMagicWandToolbar::SetTolerance(int tolerance)
{
    m_pUi->m_pTolerance->setValue(tolerance);
}

void NVMagicWandToolbar::SetSampleAllLayers(bool on)
{
    m_pUi->m_pAllLayers->setChecked(on);
}

void NVMagicWandToolbar::SetContiguous(bool on)
{
    m_pUi->m_pContiguous->setChecked(on);
}

void NVMagicWandToolbar::OnReplace(bool checked)
{
    States::Choose(*this, checked, States::Replace);
}

void NVMagicWandToolbar::OnUnite(bool checked)
{
    States::Choose(*this, checked, States::Unite);
}

void NVMagicWandToolbar::OnSubract(bool checked)
{
    States::Choose(*this, checked, States::Subtract);
}

void NVMagicWandToolbar::OnIntersect(bool checked)
{
    States::Choose(*this, checked, States::Intersect);
}

void NVMagicWandToolbar::OnRefineRegistered(QAction* pAction)
{
    m_pUi->m_pRefineSelection->setDefaultAction(pAction);
    if (pAction)
        return;
    m_pUi->m_pRefineSelection->setText(tr("Refine selection"));
    m_pUi->m_pRefineSelection->setEnabled(false);
}

void NVMagicWandToolbar::ConnectSignals()
{
    States::ConnectButtons(*this);
    connect(m_pUi->m_pTolerance, qOverload<int>(&QSpinBox::valueChanged), this,
            &NVMagicWandToolbar::ToleranceChanged);
    connect(m_pUi->m_pAllLayers, &QCheckBox::toggled, this, &NVMagicWandToolbar::AllLayersChanged);
    connect(m_pUi->m_pContiguous, &QCheckBox::toggled, this, &NVMagicWandToolbar::ContiguousChanged);
    connect(NVApplication::GetInstance(), &NVApplication::RefineSelectionRegistered, this,
            &NVMagicWandToolbar::OnRefineRegistered);
}
