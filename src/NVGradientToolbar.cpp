#include "NVGradientToolbar.h"

#include <QEvent>
#include <QPainter>

#include "BarPicture_p.h"
#include "BarPopup_p.h"
#include "Checker_p.h"
#include "GradientStops.h"
#include "NVGradientPopup.h"
#include "SharpPixmap_p.h"
#include "ui_GradientToolBar.h"

struct NVGradientToolbar::Data : Ui_GradientToolBar
{
    NVGradientPopup* m_pPopup = nullptr;
    QBrush m_checker;
};

NVGradientToolbar::NVGradientToolbar(QWidget* parent) : QWidget(parent), m_pData(new Data())
{
    m_pData->setupUi(this);
    m_pData->m_checker = CheckerBrush(4);
    // Stays on this picture; the type has one of its own.
    SetBarPicture(m_pData->m_pPicture, QStringLiteral("theme:linear_gradient.png"));
    FillTypeList();
    OnTypeChanged(0);
    ConnectValues();
    CreatePopup();
    ShowOperationButtons(false);
}

NVGradientToolbar::~NVGradientToolbar()
{
    // Before the record: what the popup tells while it goes is for nobody.
    m_pData->m_pPopup->removeEventFilter(this);
    m_pData->m_pPopup->disconnect(this);
    delete m_pData->m_pPopup;
    delete m_pData;
}

int NVGradientToolbar::GetCurrentGradientIndex() const
{
    return m_pData->m_pPopup->GetCurrentIndex();
}

int NVGradientToolbar::GetType() const
{
    return m_pData->m_pType->currentIndex();
}

bool NVGradientToolbar::GetStyle() const
{
    return m_pData->m_pPingPong->isChecked();
}

int NVGradientToolbar::GetRepeatCount() const
{
    return m_pData->m_pRepeatCount->value();
}

int NVGradientToolbar::GetBlendMode() const
{
    return m_pData->m_pBlendMode->currentIndex();
}

int NVGradientToolbar::GetOpacity() const
{
    return m_pData->m_pOpacitySpn->value();
}

bool NVGradientToolbar::IsOutside() const
{
    return m_pData->m_pDrawOutside->isChecked();
}

bool NVGradientToolbar::IsReverse() const
{
    return m_pData->m_pReverse->isChecked();
}

bool NVGradientToolbar::IsPopupVisible() const
{
    return m_pData->m_pPopup->isVisible();
}

int NVGradientToolbar::GetGradientCount() const
{
    return m_pData->m_pPopup->GetGradientCount();
}

QList<NVGradientStop> NVGradientToolbar::GetGradient(int index) const
{
    return m_pData->m_pPopup->GetGradient(index);
}

QList<NVGradientStop> NVGradientToolbar::GetCurrentGradient() const
{
    return GetGradient(GetCurrentGradientIndex());
}

void NVGradientToolbar::Load(const QList<QList<NVGradientStop>>& gradients)
{
    m_pData->m_pPopup->Load(gradients);
}

void NVGradientToolbar::FillTypeList()
{
    m_pData->m_pType->clear();
    m_pData->m_pType->addItem(tr("Linear gradient"));
    m_pData->m_pType->addItem(tr("Circular gradient"));
    m_pData->m_pType->addItem(tr("Diamond gradient"));
    m_pData->m_pType->addItem(tr("Angle gradient"));
}

void NVGradientToolbar::GradientChanged(int row)
{
    const bool current = row != -1 && row == m_pData->m_pPopup->GetCurrentIndex();
    QPixmap picture = SharpPixmap(m_pData->m_pGradients->iconSize(), m_pData->m_pGradients);
    if (current)
        DrawPreview(&picture, row);
    m_pData->m_pGradients->setIcon(picture);
}

void NVGradientToolbar::SetCurrentGradientIndex(int row)
{
    m_pData->m_pPopup->SetCurrentIndex(row);
}

void NVGradientToolbar::SetCurrentGradient(int row)
{
    m_pData->m_pPopup->SetCurrentIndex(row);
}

void NVGradientToolbar::SetType(int index)
{
    m_pData->m_pType->setCurrentIndex(index);
}

void NVGradientToolbar::SetStyle(bool pingPong)
{
    m_pData->m_pPingPong->setChecked(pingPong);
}

void NVGradientToolbar::SetRepeatCount(int count)
{
    m_pData->m_pRepeatCount->setValue(count);
}

void NVGradientToolbar::SetBlendMode(int index)
{
    m_pData->m_pBlendMode->setCurrentIndex(index);
}

void NVGradientToolbar::SetOutside(bool outside)
{
    m_pData->m_pDrawOutside->setChecked(outside);
}

void NVGradientToolbar::SetOpacity(int percent)
{
    m_pData->m_pOpacitySpn->setValue(percent);
}

void NVGradientToolbar::SetReverse(bool reverse)
{
    m_pData->m_pReverse->setChecked(reverse);
}

void NVGradientToolbar::ShowOperationButtons(bool visible)
{
    m_pData->m_pCancel->setVisible(visible);
    m_pData->m_pCommit->setVisible(visible);
}

void NVGradientToolbar::EnablePickerControl(bool) { }

bool NVGradientToolbar::eventFilter(QObject* object, QEvent* event)
{
    if (qobject_cast<NVGradientPopup*>(object))
        FollowBarPopup(m_pData->m_pPopup, m_pData->m_pGradients, event);
    return QObject::eventFilter(object, event);
}

void NVGradientToolbar::OnReverse(bool)
{
    GradientChanged(m_pData->m_pPopup->GetCurrentIndex());
}

void NVGradientToolbar::OnGradientToggled(bool checked)
{
    if (!checked)
    {
        m_pData->m_pPopup->hide();
        return;
    }
    const QToolButton* button = m_pData->m_pGradients;
    m_pData->m_pPopup->Popup(button->mapToGlobal(QPoint(0, 0)) + QPoint(0, button->height() + 1));
}

void NVGradientToolbar::OnTypeChanged(int index)
{
    static const QStringList pictures{
        QStringLiteral("theme:linear_gradient.png"), QStringLiteral("theme:circ_gradient.png"),
        QStringLiteral("theme:rect_gradient.png"), QStringLiteral("theme:angle_gradient.png")};
    if (index >= 0 && index < pictures.size())
        SetBarPicture(m_pData->m_pTypeIcon, pictures[index]);
}

void NVGradientToolbar::OnGradientIndex(int row)
{
    GradientChanged(row);
}

void NVGradientToolbar::ConnectValues()
{
    connect(m_pData->m_pType, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &NVGradientToolbar::OnTypeChanged);
    connect(m_pData->m_pType, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &NVGradientToolbar::TypeChanged);
    connect(m_pData->m_pPingPong, &QCheckBox::toggled, this, &NVGradientToolbar::StyleChanged);
    connect(m_pData->m_pRepeatCount, qOverload<int>(&QSpinBox::valueChanged), this,
            &NVGradientToolbar::RepeatCountChanged);
    connect(m_pData->m_pBlendMode, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &NVGradientToolbar::BlendModeChanged);
    connect(m_pData->m_pDrawOutside, &QCheckBox::toggled, this, &NVGradientToolbar::OutsideChanged);
    connect(m_pData->m_pOpacitySpn, qOverload<int>(&QSpinBox::valueChanged), this,
            &NVGradientToolbar::OpacityChanged);
    connect(m_pData->m_pCommit, &QToolButton::clicked, this, &NVGradientToolbar::Commit);
    connect(m_pData->m_pCancel, &QToolButton::clicked, this, &NVGradientToolbar::Cancel);
    connect(m_pData->m_pGradients, &QToolButton::toggled, this, &NVGradientToolbar::OnGradientToggled);
    // The host hears of it when the button shows it.
    connect(m_pData->m_pReverse, &QCheckBox::toggled, this, &NVGradientToolbar::OnReverse);
    connect(m_pData->m_pReverse, &QCheckBox::toggled, this, &NVGradientToolbar::ReverseChanged);
}

void NVGradientToolbar::CreatePopup()
{
    m_pData->m_pPopup = new NVGradientPopup(this);
    connect(m_pData->m_pPopup, &NVGradientPopup::CurrentIndexChanged, this,
            &NVGradientToolbar::OnGradientIndex);
    connect(m_pData->m_pPopup, &NVGradientPopup::CurrentIndexChanged, this,
            &NVGradientToolbar::GradientIndexChanged);
    connect(m_pData->m_pPopup, &NVGradientPopup::Save, this, &NVGradientToolbar::SaveGradients);
    connect(m_pData->m_pPopup, &NVGradientPopup::ShowPopup, m_pData->m_pGradients, &QToolButton::toggle);
    m_pData->m_pPopup->installEventFilter(this);
}

void NVGradientToolbar::DrawPreview(QPixmap* picture, int row) const
{
    const QList<NVGradientStop> stops = m_pData->m_pPopup->GetGradient(row);
    const QRect whole(QPoint(), m_pData->m_pGradients->iconSize());
    QLinearGradient gradient(whole.topLeft(), whole.topRight());
    gradient.setStops(IsReverse() ? ToReversedStops(stops) : ToGradientStops(stops));

    // The gradient keeps the coordinates of the whole picture, on purpose: it isn't fitted to what is filled,
    // so that it is cut off a little before its last stop.
    const QRect inset = whole.adjusted(0, 0, -4, -4);
    QPainter painter(picture);
    painter.translate(2, 2);
    painter.fillRect(inset, m_pData->m_checker);
    painter.fillRect(inset, gradient);
}
