#include "NVBrushPanel.h"

#include "ui_BrushPanel.h"

NVBrushPanel::NVBrushPanel(QWidget* parent, Qt::WindowFlags flags)
    : QWidget(parent, flags), m_pUi(new Ui_BrushPanel)
{
    m_pUi->setupUi(this);
}

NVBrushPanel::~NVBrushPanel()
{
    delete m_pUi;
}

void NVBrushPanel::SetBrush(IBrush* pBrush)
{
    m_pUi->m_pPreview->SetBrush(pBrush);
}
