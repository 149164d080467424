#include "NVRedEyeToolbar.h"

#include <QtNumeric>

#include "BarPicture_p.h"
#include "ui_RedEye.h"

NVRedEyeToolbar::NVRedEyeToolbar(QWidget* parent, Qt::WindowFlags flags)
    : QWidget(parent, flags), m_pUi(new Ui_RedEye)
{
    m_pUi->setupUi(this);
    SetBarPicture(m_pUi->m_pPictureLabelMain, QStringLiteral("theme:red-eyes-icon.png"));
}

NVRedEyeToolbar::~NVRedEyeToolbar()
{
    delete m_pUi;
}

double NVRedEyeToolbar::GetIntensity() const
{
    return m_pUi->m_pIntensity->value();
}

void NVRedEyeToolbar::SetIntensity(double intensity)
{
    // The number box would take it as the largest level.
    if (!qIsNaN(intensity))
        m_pUi->m_pIntensity->setValue(intensity);
}
