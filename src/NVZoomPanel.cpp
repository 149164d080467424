#include "NVZoomPanel.h"

#include "ui_ZoomPanel.h"

NVZoomPanel::NVZoomPanel(QWidget* parent) : QWidget(parent), m_pUi(new Ui_ZoomPanel)
{
    m_pUi->setupUi(this);
    connect(m_pUi->m_pZoom, &QSlider::valueChanged, m_pUi->m_pCamera, &CameraView::SetScaleFactor);
    connect(m_pUi->m_pCamera, &CameraView::ScaleChanged, m_pUi->m_pZoom, &QSlider::setValue);
    connect(m_pUi->m_pGridType, qOverload<int>(&QComboBox::currentIndexChanged), m_pUi->m_pCamera,
            &CameraView::SetGridType);
    m_pUi->m_pCamera->SetGridType(m_pUi->m_pGridType->currentIndex());
    m_pUi->m_pCamera->SetScaleFactor(m_pUi->m_pZoom->value());
}

NVZoomPanel::~NVZoomPanel()
{
    delete m_pUi;
}

int NVZoomPanel::GetZoomValue() const
{
    return m_pUi->m_pZoom->value();
}

int NVZoomPanel::GetGridType() const
{
    return m_pUi->m_pGridType->currentIndex();
}

void NVZoomPanel::SetZoomValue(int value)
{
    m_pUi->m_pZoom->setValue(value);
}

void NVZoomPanel::SetGridType(int index)
{
    m_pUi->m_pGridType->setCurrentIndex(index);
}

void NVZoomPanel::SetLookPosition(QPoint position)
{
    m_pUi->m_pCamera->SetLookPoint(position);
}

void NVZoomPanel::SetDocument(KXDocumentInterface* document)
{
    m_pUi->m_pCamera->SetDocument(document, 0);
}

void NVZoomPanel::SetDocument(KXDocumentInterface* document, uint value)
{
    m_pUi->m_pCamera->SetDocument(document, value);
}
