#include "NVRulerToolbar.h"

#include "BarPicture_p.h"
#include "ui_RulerToolBar.h"

NVRulerToolbar::NVRulerToolbar(QWidget* parent) : QWidget(parent), m_pUi(new Ui_RulerToolBar)
{
    m_pUi->setupUi(this);
    SetBarPicture(m_pUi->m_pPicture, QStringLiteral("theme:ruler.png"));
    connect(m_pUi->m_pStraighten, &QPushButton::clicked, this, &NVRulerToolbar::Straighten);
    connect(m_pUi->m_pClear, &QPushButton::clicked, this, &NVRulerToolbar::Clear);
}

NVRulerToolbar::~NVRulerToolbar()
{
    delete m_pUi;
}

void NVRulerToolbar::SetX1(const QString& text)
{
    m_pUi->m_pX1Pos->setText(text);
}

void NVRulerToolbar::SetY1(const QString& text)
{
    m_pUi->m_pY1Pos->setText(text);
}

void NVRulerToolbar::SetX2(const QString& text)
{
    m_pUi->m_pX2Pos->setText(text);
}

void NVRulerToolbar::SetY2(const QString& text)
{
    m_pUi->m_pY2Pos->setText(text);
}

void NVRulerToolbar::SetLength(const QString& text)
{
    m_pUi->m_pLength->setText(text);
}

void NVRulerToolbar::SetAngle(const QString& text)
{
    m_pUi->m_pAngle->setText(text);
}

void NVRulerToolbar::SetStraightenEnabled(bool enabled)
{
    m_pUi->m_pStraighten->setEnabled(enabled);
}

void NVRulerToolbar::SetClearEnabled(bool enabled)
{
    m_pUi->m_pClear->setEnabled(enabled);
}
