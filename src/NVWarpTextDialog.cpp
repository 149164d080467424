#include "NVWarpTextDialog.h"

#include "ConnectionCut_p.h"
#include "ui_WarpText.h"

namespace
{

const double HundredthsPerPercent = 100.0;

double ToPercent(int hundredths)
{
    return hundredths / HundredthsPerPercent;
}

// Cut off, on purpose: where the product falls just below a whole number, the slider stands one hundredth
// nearer to zero than the box says.
int ToHundredths(double percent)
{
    return static_cast<int>(percent * HundredthsPerPercent);
}

} // namespace

NVWarpTextDialog::NVWarpTextDialog(QWidget* parent) : KXDialog(parent), m_pUi(new Ui_WarpText)
{
    m_pUi->setupUi(Content());
    m_pUi->m_pStyle->addItem(tr("None"));
    m_pUi->m_pStyle->addItem(tr("Flag"));
    ConnectSignals();
}

NVWarpTextDialog::~NVWarpTextDialog()
{
    delete m_pUi;
}

NVTextDeformation NVWarpTextDialog::GetDeformation() const
{
    NVTextDeformation deformation;
    deformation.SetBend(m_pUi->m_pBend->value());
    deformation.SetHorizontalDistortion(m_pUi->m_pHDistortion->value());
    deformation.SetVerticalDistortion(m_pUi->m_pVDistortion->value());
    deformation.SetOrientation(m_pUi->m_pVertical->isChecked() ? NVTextDeformation::OrientationVertical
                                                               : NVTextDeformation::OrientationHorizontal);
    deformation.SetStyle(static_cast<NVTextDeformation::Style>(m_pUi->m_pStyle->currentIndex()));
    return deformation;
}

void NVWarpTextDialog::SetDeformation(const NVTextDeformation& deformation)
{
    m_pUi->m_pBend->setValue(deformation.GetBend());
    m_pUi->m_pVDistortion->setValue(deformation.GetVerticalDistortion());
    m_pUi->m_pHDistortion->setValue(deformation.GetHorizontalDistortion());
    m_pUi->m_pVertical->setChecked(deformation.GetOrientation() == NVTextDeformation::OrientationVertical);
    m_pUi->m_pHorizontal->setChecked(deformation.GetOrientation() ==
                                     NVTextDeformation::OrientationHorizontal);
    m_pUi->m_pStyle->setCurrentIndex(deformation.GetStyle());
}

void NVWarpTextDialog::OnStyle(int)
{
    Q_EMIT DeformationChanged();
}

void NVWarpTextDialog::OnVertical(bool)
{
    Q_EMIT DeformationChanged();
}

void NVWarpTextDialog::OnBend(double percent)
{
    {
        const ConnectionCut cut(m_pUi->m_pBendSldr, &QSlider::valueChanged, this,
                                qOverload<int>(&NVWarpTextDialog::OnBend));
        m_pUi->m_pBendSldr->setValue(ToHundredths(percent));
    }
    Q_EMIT DeformationChanged();
}

void NVWarpTextDialog::OnBend(int hundredths)
{
    m_pUi->m_pBend->setValue(ToPercent(hundredths));
}

void NVWarpTextDialog::OnHorizontalDistortion(double percent)
{
    {
        const ConnectionCut cut(m_pUi->m_pHDistortionSldr, &QSlider::valueChanged, this,
                                qOverload<int>(&NVWarpTextDialog::OnHorizontalDistortion));
        m_pUi->m_pHDistortionSldr->setValue(ToHundredths(percent));
    }
    Q_EMIT DeformationChanged();
}

void NVWarpTextDialog::OnHorizontalDistortion(int hundredths)
{
    m_pUi->m_pHDistortion->setValue(ToPercent(hundredths));
}

void NVWarpTextDialog::OnVerticalDistortion(double percent)
{
    {
        const ConnectionCut cut(m_pUi->m_pVDistortionSldr, &QSlider::valueChanged, this,
                                qOverload<int>(&NVWarpTextDialog::OnVerticalDistortion));
        m_pUi->m_pVDistortionSldr->setValue(ToHundredths(percent));
    }
    Q_EMIT DeformationChanged();
}

void NVWarpTextDialog::OnVerticalDistortion(int hundredths)
{
    m_pUi->m_pVDistortion->setValue(ToPercent(hundredths));
}

void NVWarpTextDialog::ConnectSignals()
{
    connect(m_pUi->m_pButtonBox, &QDialogButtonBox::accepted, this, &NVWarpTextDialog::Accept);
    connect(m_pUi->m_pButtonBox, &QDialogButtonBox::rejected, this, &NVWarpTextDialog::Reject);
    connect(m_pUi->m_pStyle, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &NVWarpTextDialog::OnStyle);
    // Of the two buttons only this one: it toggles whichever is chosen.
    connect(m_pUi->m_pVertical, &QRadioButton::toggled, this, &NVWarpTextDialog::OnVertical);
    connect(m_pUi->m_pBend, qOverload<double>(&QDoubleSpinBox::valueChanged), this,
            qOverload<double>(&NVWarpTextDialog::OnBend));
    connect(m_pUi->m_pBendSldr, &QSlider::valueChanged, this, qOverload<int>(&NVWarpTextDialog::OnBend));
    connect(m_pUi->m_pHDistortion, qOverload<double>(&QDoubleSpinBox::valueChanged), this,
            qOverload<double>(&NVWarpTextDialog::OnHorizontalDistortion));
    connect(m_pUi->m_pHDistortionSldr, &QSlider::valueChanged, this,
            qOverload<int>(&NVWarpTextDialog::OnHorizontalDistortion));
    connect(m_pUi->m_pVDistortion, qOverload<double>(&QDoubleSpinBox::valueChanged), this,
            qOverload<double>(&NVWarpTextDialog::OnVerticalDistortion));
    connect(m_pUi->m_pVDistortionSldr, &QSlider::valueChanged, this,
            qOverload<int>(&NVWarpTextDialog::OnVerticalDistortion));
}
