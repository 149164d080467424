#include "NVColorSamplerToolbar.h"

#include "BarPicture_p.h"
#include "ui_ColorSamplerToolBar.h"

NVColorSamplerToolbar::NVColorSamplerToolbar(QWidget* parent)
    : QWidget(parent), m_pUi(new Ui_ColorSamplerToolBar)
{
    m_pUi->setupUi(this);
    SetBarPicture(m_pUi->m_pPicture, QStringLiteral("theme:sampler.png"));
    connect(m_pUi->m_pSize, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &NVColorSamplerToolbar::SizeChanged);
    connect(m_pUi->m_pClear, &QPushButton::clicked, this, &NVColorSamplerToolbar::Clear);
}

NVColorSamplerToolbar::~NVColorSamplerToolbar()
{
    delete m_pUi;
}

int NVColorSamplerToolbar::GetSize() const
{
    return m_pUi->m_pSize->currentIndex();
}

void NVColorSamplerToolbar::SetSize(int index)
{
    m_pUi->m_pSize->setCurrentIndex(index);
}

void NVColorSamplerToolbar::SetClearEnabled(bool enabled)
{
    m_pUi->m_pClear->setEnabled(enabled);
}
