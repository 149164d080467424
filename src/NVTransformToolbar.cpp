#include "NVTransformToolbar.h"

#include <QDoubleValidator>

#include "ui_TransformToolBar.h"

using CenterControl = TransformationCenterPointControl;

namespace
{

const int Decimals = 2;

} // namespace

NVTransformToolbar::NVTransformToolbar(QWidget* parent) : QWidget(parent), m_pUi(new Ui_TransformToolBar)
{
    // For hosts that connect queued, or look at signals by name.
    qRegisterMetaType<CenterControl::ControlState>();
    m_pUi->setupUi(this);
    ConnectSignals();
    StateRanges();
}

NVTransformToolbar::~NVTransformToolbar()
{
    delete m_pUi;
}

CenterControl::ControlState NVTransformToolbar::GetTransformationCenter() const
{
    return m_pUi->m_pCenterTransform->GetState();
}

void NVTransformToolbar::SetX(const QString& text)
{
    m_pUi->m_pX->setText(text);
}

void NVTransformToolbar::SetY(const QString& text)
{
    m_pUi->m_pY->setText(text);
}

void NVTransformToolbar::SetWidth(const QString& text)
{
    m_pUi->m_pWidth->setText(text);
}

void NVTransformToolbar::SetHeight(const QString& text)
{
    m_pUi->m_pHeight->setText(text);
}

void NVTransformToolbar::SetAngle(const QString& text)
{
    m_pUi->m_pAngle->setText(text);
}

void NVTransformToolbar::SetHorizontalSkew(const QString& text)
{
    m_pUi->m_pHSkew->setText(text);
}

void NVTransformToolbar::SetVerticalSkew(const QString& text)
{
    m_pUi->m_pVSkew->setText(text);
}

void NVTransformToolbar::SetTransformationCenter(CenterControl::ControlState state)
{
    m_pUi->m_pCenterTransform->SetState(state);
}

void NVTransformToolbar::ConnectSignals()
{
    connect(m_pUi->m_pCommit, &QPushButton::clicked, this, &NVTransformToolbar::Commit);
    connect(m_pUi->m_pCancel, &QPushButton::clicked, this, &NVTransformToolbar::Cancel);
    connect(m_pUi->m_pCenterTransform, &CenterControl::StateChange, this,
            &NVTransformToolbar::TransformationCenterChange);
    connect(m_pUi->m_pCenterTransform, qOverload<CenterControl::ControlState>(&CenterControl::StateChanged),
            this, &NVTransformToolbar::TransformationCenterChanged);
}

// Nothing is typed, and a text that is set is not validated: the ranges are there for who reads them off the
// boxes. The scales have none.
void NVTransformToolbar::StateRanges()
{
    m_pUi->m_pAngle->setValidator(new QDoubleValidator(-180, 180, Decimals, this));
    m_pUi->m_pX->setValidator(new QDoubleValidator(-100000, 100000, Decimals, this));
    m_pUi->m_pY->setValidator(new QDoubleValidator(-100000, 100000, Decimals, this));
    m_pUi->m_pHSkew->setValidator(new QDoubleValidator(-89.99, 89.99, Decimals, this));
    m_pUi->m_pVSkew->setValidator(new QDoubleValidator(-89.99, 89.99, Decimals, this));
}
