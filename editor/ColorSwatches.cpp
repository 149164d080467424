#include "ColorSwatches.h"

#include <QColorDialog>
#include <QPainter>
#include <QToolButton>

#include "NVApplication.h"
#include "Theme.h"

namespace
{

const int SwatchSize = 28;

QIcon ColorIcon(const QColor& color, const QPalette& palette, double ratio)
{
    const int side = SwatchSize - 8;
    QPixmap picture(QSize(side, side) * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(color);
    QPainter painter(&picture);
    painter.setPen(palette.color(QPalette::WindowText));
    painter.drawRect(QRectF(0.5, 0.5, side - 1, side - 1));
    return QIcon(picture);
}

} // namespace

ColorSwatches::ColorSwatches(QWidget* parent)
    : QWidget(parent),
      m_pBackground(AddButton(tr("Background colour"), QRect(18, 18, SwatchSize, SwatchSize))),
      m_pForeground(AddButton(tr("Foreground colour"), QRect(2, 2, SwatchSize, SwatchSize))),
      m_pSwap(AddButton(tr("Swap colours (X)"), QRect(2, 50, 22, 22))),
      m_pDefaults(AddButton(tr("Default colours (D)"), QRect(26, 50, 22, 22)))
{
    setFixedSize(50, 74);
    m_pSwap->setAutoRaise(true);
    m_pDefaults->setAutoRaise(true);
    connect(m_pForeground, &QToolButton::clicked, this, &ColorSwatches::OnForegroundClicked);
    connect(m_pBackground, &QToolButton::clicked, this, &ColorSwatches::OnBackgroundClicked);
    connect(m_pSwap, &QToolButton::clicked, this, &ColorSwatches::Swap);
    connect(m_pDefaults, &QToolButton::clicked, this, &ColorSwatches::ResetToDefaults);
    connect(NVApplication::GetInstance(), &NVApplication::ForegroundChanged, this,
            &ColorSwatches::OnColorsChanged);
    connect(NVApplication::GetInstance(), &NVApplication::BackgroundChanged, this,
            &ColorSwatches::OnColorsChanged);
    UpdateTheme();
}

void ColorSwatches::Swap()
{
    const QColor foreground = NVApplication::GetForeground();
    NVApplication::GetInstance()->SetForeground(NVApplication::GetBackground());
    NVApplication::GetInstance()->SetBackground(foreground);
}

void ColorSwatches::ResetToDefaults()
{
    NVApplication::GetInstance()->SetForeground(Qt::black);
    NVApplication::GetInstance()->SetBackground(Qt::white);
}

void ColorSwatches::UpdateTheme()
{
    m_pSwap->setIcon(Theme::Icon(QStringLiteral("swap-colors")));
    m_pDefaults->setIcon(Theme::Icon(QStringLiteral("default-colors")));
    OnColorsChanged();
}

void ColorSwatches::OnForegroundClicked()
{
    NVApplication::GetInstance()->SetForeground(
        QColorDialog::getColor(NVApplication::GetForeground(), this, tr("Foreground Colour")));
}

void ColorSwatches::OnBackgroundClicked()
{
    NVApplication::GetInstance()->SetBackground(
        QColorDialog::getColor(NVApplication::GetBackground(), this, tr("Background Colour")));
}

void ColorSwatches::OnColorsChanged()
{
    const double ratio = devicePixelRatioF();
    m_pForeground->setIcon(ColorIcon(NVApplication::GetForeground(), palette(), ratio));
    m_pBackground->setIcon(ColorIcon(NVApplication::GetBackground(), palette(), ratio));
    m_pForeground->setAccessibleDescription(NVApplication::GetForeground().name());
    m_pBackground->setAccessibleDescription(NVApplication::GetBackground().name());
}

QToolButton* ColorSwatches::AddButton(const QString& name, const QRect& place)
{
    auto* button = new QToolButton(this);
    button->setGeometry(place);
    button->setIconSize(QSize(place.width() - 8, place.height() - 8));
    button->setToolTip(name);
    button->setAccessibleName(name);
    button->setFocusPolicy(Qt::NoFocus);
    return button;
}
