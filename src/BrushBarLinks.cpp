#include "BrushBarLinks_p.h"

#include <QAbstractButton>

#include "KXResource.h"
#include "NVApplication.h"
#include "NVBrushToolbarWidget.h"

void LinkOpacity(NVBrushToolbarWidget* bar)
{
    KXBrushSettings* settings = bar->GetBrushes();
    QObject::connect(bar, &NVBrushToolbarWidget::OpacityChanged, settings, &KXBrushSettings::SetOpacity);
    QObject::connect(settings, &KXBrushSettings::OpacityChanged, bar, &NVBrushToolbarWidget::SetOpacity);
}

void LinkSize(NVBrushToolbarWidget* bar)
{
    KXBrushSettings* settings = bar->GetBrushes();
    QObject::connect(bar, &NVBrushToolbarWidget::SizeChanged, settings, &KXBrushSettings::SetSize);
    QObject::connect(settings, &KXBrushSettings::SizeChanged, bar, &NVBrushToolbarWidget::SetSize);
}

void LinkSpacing(NVBrushToolbarWidget* bar)
{
    KXBrushSettings* settings = bar->GetBrushes();
    QObject::connect(bar, &NVBrushToolbarWidget::SpacingChanged, settings, &KXBrushSettings::SetSpacing);
    QObject::connect(settings, &KXBrushSettings::SpacingChanged, bar, &NVBrushToolbarWidget::SetSpacing);
}

void ShowBrush(QAbstractButton* button, IBrush* brush)
{
    if (!brush)
        return;
    const bool dark = NVApplication::GetInstance()->GetTheme() == KXResource::DarkTheme;
    button->setIcon(brush->GetColoredIcon(dark ? Qt::white : Qt::black));
}
