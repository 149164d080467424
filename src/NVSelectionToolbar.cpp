#include "NVSelectionToolbar.h"

#include <QAction>

#include "BarPicture_p.h"
#include "NVApplication.h"
#include "SelectionStates_p.h"
#include "ui_SelectionToolbar.h"

using States = SelectionStates<NVSelectionToolbar>;

NVSelectionToolbar::NVSelectionToolbar(QWidget* parent) : QWidget(parent), m_pUi(new Ui_SelectionToolbar)
{
    m_pUi->setupUi(this);
    m_pUi->m_pRefineSelection->setObjectName(QStringLiteral("REFINESELECTIONBUTTON"));
    SetBarPicture(m_pUi->m_pPicture, QStringLiteral("theme:rect_sel.png"));
    m_State = States::Checked(*this);
    ConnectSignals();
    OnRefineRegistered(NVApplication::GetInstance()->GetRefineSelection());
}

NVSelectionToolbar::~NVSelectionToolbar()
{
    delete m_pUi;
}

int NVSelectionToolbar::GetState() const
{
    return States::Effective(*this);
}

int NVSelectionToolbar::GetClearState() const
{
    return m_State;
}

int NVSelectionToolbar::GetFeather() const
{
    return m_pUi->m_pFeather->value();
}

int NVSelectionToolbar::GetRadius() const
{
    return m_pUi->m_pRadius->value();
}

bool NVSelectionToolbar::IsAutoscroll() const
{
    return m_pUi->m_pAutoscroll->isChecked();
}

void NVSelectionToolbar::SetModifiers(QFlags<KeyModifier> flags)
{
    States::SetModifiers(*this, flags);
}

void NVSelectionToolbar::SetState(int state)
{
    States::SetState(*this, state);
}

void NVSelectionToolbar::HideFeather(bool hide)
{
    m_pUi->m_pFeather->setVisible(!hide);
    m_pUi->m_pFeatherLabel->setVisible(!hide);
    m_pUi->m_pFeatherSplitter->setVisible(!hide);
}

void NVSelectionToolbar::SetFeather(int feather)
{
    m_pUi->m_pFeather->setValue(feather);
}

void NVSelectionToolbar::SetRadius(int radius)
{
    m_pUi->m_pRadius->setValue(radius);
}

void NVSelectionToolbar::SetAutoscroll(bool on)
{
    m_pUi->m_pAutoscroll->setChecked(on);
}

void NVSelectionToolbar::OnReplace(bool checked)
{
    States::Choose(*this, checked, States::Replace);
}

void NVSelectionToolbar::OnUnite(bool checked)
{
    States::Choose(*this, checked, States::Unite);
}

void NVSelectionToolbar::OnSubract(bool checked)
{
    States::Choose(*this, checked, States::Subtract);
}

void NVSelectionToolbar::OnIntersect(bool checked)
{
    States::Choose(*this, checked, States::Intersect);
}

void NVSelectionToolbar::OnRefineRegistered(QAction* pAction)
{
    m_pUi->m_pRefineSelection->setDefaultAction(pAction);
    if (pAction)
        return;
    m_pUi->m_pRefineSelection->setText(tr("Refine selection"));
    m_pUi->m_pRefineSelection->setEnabled(false);
}

void NVSelectionToolbar::ConnectSignals()
{
    States::ConnectButtons(*this);
    connect(m_pUi->m_pFeather, qOverload<int>(&QSpinBox::valueChanged), this,
            &NVSelectionToolbar::FeatherChanged);
    connect(m_pUi->m_pRadius, qOverload<int>(&QSpinBox::valueChanged), this,
            &NVSelectionToolbar::RadiusChanged);
    connect(m_pUi->m_pAutoscroll, &QCheckBox::toggled, this, &NVSelectionToolbar::AutoscrollChanged);
    connect(NVApplication::GetInstance(), &NVApplication::RefineSelectionRegistered, this,
            &NVSelectionToolbar::OnRefineRegistered);
}
