#include "NVColorPickerToolbar.h"

#include <QPixmap>

#include "BarPicture_p.h"
#include "ui_ColorPickerToolBar.h"

NVColorPickerToolbar::NVColorPickerToolbar(QWidget* parent)
    : QWidget(parent), m_pUi(new Ui_ColorPickerToolBar)
{
    m_pUi->setupUi(this);
    SetBarPicture(m_pUi->m_pPicture, QStringLiteral("theme:picker.png"));
    connect(m_pUi->m_pSampleSize, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &NVColorPickerToolbar::SizeChanged);
    connect(m_pUi->m_pSampleMode, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &NVColorPickerToolbar::ModeChanged);
}

NVColorPickerToolbar::~NVColorPickerToolbar()
{
    delete m_pUi;
}

int NVColorPickerToolbar::GetSize() const
{
    return m_pUi->m_pSampleSize->currentIndex();
}

int NVColorPickerToolbar::GetMode() const
{
    return m_pUi->m_pSampleMode->currentIndex();
}

void NVColorPickerToolbar::SetSize(int index)
{
    m_pUi->m_pSampleSize->setCurrentIndex(index);
}

void NVColorPickerToolbar::SetMode(int index)
{
    m_pUi->m_pSampleMode->setCurrentIndex(index);
}

void NVColorPickerToolbar::SetX(const QString& text)
{
    m_pUi->m_pXPos->setText(text);
}

void NVColorPickerToolbar::SetY(const QString& text)
{
    m_pUi->m_pYPos->setText(text);
}

void NVColorPickerToolbar::SetRed(const QString& text)
{
    m_pUi->m_pR->setText(text);
}

void NVColorPickerToolbar::SetGreen(const QString& text)
{
    m_pUi->m_pG->setText(text);
}

void NVColorPickerToolbar::SetBlue(const QString& text)
{
    m_pUi->m_pB->setText(text);
}

void NVColorPickerToolbar::SetOpacity(const QString& text)
{
    m_pUi->m_pOpacity->setText(text);
}

void NVColorPickerToolbar::SetColor(const QColor& color)
{
    QPixmap swatch(m_pUi->m_pColor->size());
    swatch.fill(color);
    m_pUi->m_pColor->setPixmap(swatch);
}

void NVColorPickerToolbar::SetDelimsVisible(bool visible)
{
    m_pUi->m_pDelimXYLbl0->setVisible(visible);
    m_pUi->m_pDelimXYLbl1->setVisible(visible);
    m_pUi->m_pDelimRGBLbl0->setVisible(visible);
    m_pUi->m_pDelimRGBLbl1->setVisible(visible);
    m_pUi->m_pDelimRGBLbl2->setVisible(visible);
    m_pUi->m_pDelimRGBLbl3->setVisible(visible);
}
