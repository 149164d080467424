#include "NVAutoCrop.h"

#include "ui_AutoCrop.h"

NVAutoCrop::NVAutoCrop(QWidget* parent) : KXDialog(parent), m_pUi(new Ui_AutoCrop)
{
    m_pUi->setupUi(Content());
    connect(m_pUi->m_pButtonBox, &QDialogButtonBox::accepted, this, &NVAutoCrop::Accept);
    connect(m_pUi->m_pButtonBox, &QDialogButtonBox::rejected, this, &NVAutoCrop::Reject);
    if (layout())
        layout()->setSizeConstraint(QLayout::SetFixedSize);
}

NVAutoCrop::~NVAutoCrop()
{
    delete m_pUi;
}

NVAutoCrop::Mode NVAutoCrop::GetMode() const
{
    if (m_pUi->m_pTransparent->isChecked())
        return ModeTransparent;
    if (m_pUi->m_pLeftTop->isChecked())
        return ModeLeftTop;
    return m_pUi->m_pBottomRight->isChecked() ? ModeBottomRight : ModeAuto;
}

QFlags<NVAutoCrop::Area> NVAutoCrop::GetArea() const
{
    Areas area;
    area.setFlag(AreaLeft, m_pUi->m_pLeft->isChecked());
    area.setFlag(AreaTop, m_pUi->m_pTop->isChecked());
    area.setFlag(AreaRight, m_pUi->m_pRight->isChecked());
    area.setFlag(AreaBottom, m_pUi->m_pBottom->isChecked());
    return area;
}

int NVAutoCrop::GetTolerance() const
{
    return m_pUi->m_pTolerance->value();
}

void NVAutoCrop::SetMode(Mode mode)
{
    m_pUi->m_pTransparent->setChecked(mode == ModeTransparent);
    m_pUi->m_pLeftTop->setChecked(mode == ModeLeftTop);
    m_pUi->m_pBottomRight->setChecked(mode == ModeBottomRight);
    m_pUi->m_pAuto->setChecked(mode == ModeAuto);
}

void NVAutoCrop::SetArea(QFlags<Area> area)
{
    m_pUi->m_pLeft->setChecked(area.testFlag(AreaLeft));
    m_pUi->m_pTop->setChecked(area.testFlag(AreaTop));
    m_pUi->m_pRight->setChecked(area.testFlag(AreaRight));
    m_pUi->m_pBottom->setChecked(area.testFlag(AreaBottom));
}

void NVAutoCrop::SetTolerance(int tolerance)
{
    m_pUi->m_pTolerance->setValue(tolerance);
}
