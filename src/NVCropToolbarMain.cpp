#include "NVCropToolbarMain.h"

#include <QColorDialog>
#include <QPixmap>
#include <QPointer>
#include <QtNumeric>

#include "BarPicture_p.h"
#include "KXColorDlg.h"
#include "OutliveParent_p.h"
#include "ui_CropToolBarMain.h"

NVCropToolbarMain::NVCropToolbarMain(QWidget* parent) : QWidget(parent), m_pUi(new Ui_CropToolBarMain)
{
    m_pUi->setupUi(this);
    SetBarPicture(m_pUi->m_pPicture, QStringLiteral("theme:crop_tool.png"));
    ConnectFrame();
    ConnectShield();
    ConnectOperations();
}

NVCropToolbarMain::~NVCropToolbarMain()
{
    delete m_pUi;
}

double NVCropToolbarMain::GetAngle() const
{
    return m_pUi->m_pAngle->value();
}

int NVCropToolbarMain::GetWidth() const
{
    return m_pUi->m_pWidth->value();
}

int NVCropToolbarMain::GetHight() const
{
    return m_pUi->m_pHeight->value();
}

bool NVCropToolbarMain::IsShieldEnabled() const
{
    return m_pUi->m_pShield->isChecked();
}

QColor NVCropToolbarMain::GetShieldColor() const
{
    return m_ShieldColor;
}

int NVCropToolbarMain::GetShieldOpacity() const
{
    return m_pUi->m_pOpacity->value();
}

bool NVCropToolbarMain::IsDeleteArea() const
{
    return m_pUi->m_pDeleteArea->isChecked();
}

int NVCropToolbarMain::GetGuideOverlayType() const
{
    return m_pUi->m_pGuideOverlay->currentIndex();
}

int NVCropToolbarMain::GetAnchor() const
{
    return m_pUi->m_pAnchorManager->GetState();
}

void NVCropToolbarMain::SetAngle(double angle)
{
    // The number box would take it as the largest angle.
    if (!qIsNaN(angle))
        m_pUi->m_pAngle->setValue(angle);
}

void NVCropToolbarMain::SetWidth(int width)
{
    m_pUi->m_pWidth->setValue(width);
}

void NVCropToolbarMain::SetHeight(int height)
{
    m_pUi->m_pHeight->setValue(height);
}

void NVCropToolbarMain::SetShieldEnabled(bool enabled)
{
    m_pUi->m_pShield->setChecked(enabled);
}

void NVCropToolbarMain::SetShieldColor(const QColor& color)
{
    if (color == m_ShieldColor)
        return;
    SetButtonColor(color);
    Q_EMIT ShieldColorChanged(m_ShieldColor);
}

void NVCropToolbarMain::SetShieldOpacity(int percent)
{
    m_pUi->m_pOpacity->setValue(percent);
}

void NVCropToolbarMain::SetDeleteArea(bool deleteArea)
{
    if (deleteArea)
        m_pUi->m_pDeleteArea->setChecked(true);
    else
        m_pUi->m_pHideArea->setChecked(true);
}

void NVCropToolbarMain::SetGuideOverlayType(int index)
{
    m_pUi->m_pGuideOverlay->setCurrentIndex(index);
}

void NVCropToolbarMain::SetAnchor(int state)
{
    m_pUi->m_pAnchorManager->SetState(TransformationCenterPointControl::ControlState(state));
}

void NVCropToolbarMain::OnShieldColor()
{
    QColor chosen = m_ShieldColor;
    KXColorDlg dialog(m_ShieldColor, this, Qt::WindowFlags());
    const QPointer<NVCropToolbarMain> self(this);
    OutliveParent(&dialog);
    dialog.setWindowTitle(tr("Select a color"));
    connect(dialog.GetColorDlg(), &QColorDialog::currentColorChanged, this,
            &NVCropToolbarMain::SetShieldColor);
    const bool isAccepted = dialog.Exec() == KXDialog::ResultAccepted;
    if (!self)
        return;
    if (isAccepted)
        chosen = dialog.CurrentColor();
    if (m_ShieldColor == chosen)
        return;
    SetButtonColor(chosen);
    Q_EMIT ShieldColorChanged(m_ShieldColor);
}

void NVCropToolbarMain::ConnectFrame()
{
    connect(m_pUi->m_pAnchorManager, qOverload<int>(&TransformationCenterPointControl::StateChanged), this,
            &NVCropToolbarMain::AnchorChanged);
    connect(m_pUi->m_pAngle, qOverload<double>(&QDoubleSpinBox::valueChanged), this,
            &NVCropToolbarMain::AngleChanged);
    connect(m_pUi->m_pWidth, qOverload<int>(&QSpinBox::valueChanged), this, &NVCropToolbarMain::WidthChanged);
    connect(m_pUi->m_pHeight, qOverload<int>(&QSpinBox::valueChanged), this,
            &NVCropToolbarMain::HeightChanged);
}

void NVCropToolbarMain::ConnectShield()
{
    connect(m_pUi->m_pShield, &QCheckBox::toggled, this, &NVCropToolbarMain::ShieldEnabled);
    connect(m_pUi->m_pShield, &QCheckBox::toggled, m_pUi->m_pShieldColor, &QWidget::setEnabled);
    connect(m_pUi->m_pShield, &QCheckBox::toggled, m_pUi->m_pOpacity, &QWidget::setEnabled);
    connect(m_pUi->m_pShieldColor, &QPushButton::clicked, this, &NVCropToolbarMain::OnShieldColor);
    connect(m_pUi->m_pOpacity, qOverload<int>(&QSpinBox::valueChanged), this,
            &NVCropToolbarMain::ShieldOpacityChanged);
}

void NVCropToolbarMain::ConnectOperations()
{
    // Tells of both changes: the other button goes off when this one goes on.
    connect(m_pUi->m_pDeleteArea, &QRadioButton::toggled, this, &NVCropToolbarMain::DeleteAreaChanged);
    connect(m_pUi->m_pGuideOverlay, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &NVCropToolbarMain::GuideOverlayChanged);
    connect(m_pUi->m_pCommit, &QPushButton::clicked, this, &NVCropToolbarMain::Commit);
    connect(m_pUi->m_pCancel, &QPushButton::clicked, this, &NVCropToolbarMain::Cancel);
    connect(m_pUi->m_pToNewDocument, &QPushButton::clicked, this, &NVCropToolbarMain::NewDocument);
}

void NVCropToolbarMain::SetButtonColor(const QColor& color)
{
    m_ShieldColor = color;
    QPixmap picture(m_pUi->m_pShieldColor->iconSize());
    picture.fill(color);
    m_pUi->m_pShieldColor->setIcon(picture);
}
