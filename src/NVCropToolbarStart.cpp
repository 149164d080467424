#include "NVCropToolbarStart.h"

#include "BarPicture_p.h"
#include "ui_CropToolBarStart.h"

NVCropToolbarStart::NVCropToolbarStart(QWidget* parent) : QWidget(parent), m_pUi(new Ui_CropToolBarStart)
{
    m_pUi->setupUi(this);
    SetBarPicture(m_pUi->m_pPictureLabelMain, QStringLiteral("theme:crop_tool.png"));
    // Shown as an empty text. A form can't hold a text of blanks.
    m_pUi->m_pWidth->setSpecialValueText(QStringLiteral(" "));
    m_pUi->m_pHeight->setSpecialValueText(QStringLiteral(" "));
    connect(m_pUi->m_pWidth, qOverload<int>(&QSpinBox::valueChanged), this,
            &NVCropToolbarStart::WidthChanged);
    connect(m_pUi->m_pHeight, qOverload<int>(&QSpinBox::valueChanged), this,
            &NVCropToolbarStart::HeightChanged);
    connect(m_pUi->m_pSwap, &QPushButton::clicked, this, &NVCropToolbarStart::Swap);
    connect(m_pUi->m_pClear, &QPushButton::clicked, this, &NVCropToolbarStart::Clear);
    connect(m_pUi->m_pFromImage, &QPushButton::clicked, this, &NVCropToolbarStart::FromImage);
}

NVCropToolbarStart::~NVCropToolbarStart()
{
    delete m_pUi;
}

int NVCropToolbarStart::GetWidth() const
{
    return m_pUi->m_pWidth->value();
}

int NVCropToolbarStart::GetHeight() const
{
    return m_pUi->m_pHeight->value();
}

bool NVCropToolbarStart::IsClear() const
{
    return m_pUi->m_pWidth->text().isEmpty() && m_pUi->m_pHeight->text().isEmpty();
}

void NVCropToolbarStart::SetWidth(int width)
{
    m_pUi->m_pWidth->setValue(qMax(0, width));
}

void NVCropToolbarStart::SetHeight(int height)
{
    m_pUi->m_pHeight->setValue(qMax(0, height));
}

void NVCropToolbarStart::EnableFromImage(bool enabled)
{
    m_pUi->m_pFromImage->setEnabled(enabled);
}

void NVCropToolbarStart::Clear()
{
    m_pUi->m_pWidth->setValue(0);
    m_pUi->m_pHeight->setValue(0);
}

void NVCropToolbarStart::Swap()
{
    const int width = GetWidth();
    const int height = GetHeight();
    m_pUi->m_pWidth->setValue(qMax(0, height));
    m_pUi->m_pHeight->setValue(qMax(0, width));
}
