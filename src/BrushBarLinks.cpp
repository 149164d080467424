#include "BrushBarLinks_p.h"

#include "KXBrushSettings.h"
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
