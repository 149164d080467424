#include "NVZoomToolbar.h"

#include "BarPicture_p.h"
#include "ui_ZoomToolBar.h"

NVZoomToolbar::NVZoomToolbar(QWidget* parent) : QWidget(parent), m_pUi(new Ui_ZoomToolBar)
{
    m_pUi->setupUi(this);
    SetBarPicture(m_pUi->m_pPicture, QStringLiteral("theme:tool-bar-search.png"));
    connect(m_pUi->m_pZoomIn, &QToolButton::toggled, this, &NVZoomToolbar::ZoomInChecked);
    connect(m_pUi->m_pZoomOut, &QToolButton::toggled, this, &NVZoomToolbar::ZoomOutChecked);
    connect(m_pUi->m_pActualPixels, &QPushButton::clicked, this, &NVZoomToolbar::ActualPixels);
    connect(m_pUi->m_pFitScreen, &QPushButton::clicked, this, &NVZoomToolbar::FitScreen);
}

NVZoomToolbar::~NVZoomToolbar()
{
    delete m_pUi;
}

bool NVZoomToolbar::IsZoomIn() const
{
    return m_pUi->m_pZoomIn->isChecked();
}

bool NVZoomToolbar::IsZoomOut() const
{
    return m_pUi->m_pZoomOut->isChecked();
}

void NVZoomToolbar::SetZoomIn(bool on)
{
    m_pUi->m_pZoomIn->setChecked(on);
}

void NVZoomToolbar::SetZoomOut(bool on)
{
    m_pUi->m_pZoomOut->setChecked(on);
}

void NVZoomToolbar::SetActualPixelsEnabled(bool enabled)
{
    m_pUi->m_pActualPixels->setEnabled(enabled);
}

void NVZoomToolbar::SetFitScreenEnabled(bool enabled)
{
    m_pUi->m_pFitScreen->setEnabled(enabled);
}
