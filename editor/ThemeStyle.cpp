#include "ThemeStyle.h"

#include <QPainter>
#include <QStyleFactory>
#include <QStyleOption>

namespace
{

const int DarkLightness = 100;

// Between the text and the ground, at home on both.
QColor OutlineColor(const QPalette& palette, bool enabled)
{
    const QPalette::ColorGroup group = enabled ? QPalette::Active : QPalette::Disabled;
    QColor color = palette.color(group, QPalette::WindowText);
    color.setAlphaF(enabled ? 0.6 : 0.4);
    return color;
}

} // namespace

ThemeStyle::ThemeStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) { }

void ThemeStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const
{
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool isBox = element == PE_IndicatorCheckBox || element == PE_IndicatorRadioButton;
    if (isBox && option->palette.color(QPalette::Window).lightness() <= DarkLightness)
        DrawBoxOutline(element, option, painter);
    else if (element == PE_PanelButtonTool && option->state.testFlag(State_On))
        DrawChosenOutline(option, painter);
}

void ThemeStyle::DrawBoxOutline(PrimitiveElement element, const QStyleOption* option, QPainter* painter)
{
    if (option->state.testFlag(State_HasFocus) && option->state.testFlag(State_KeyboardFocusChange))
        return;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(OutlineColor(option->palette, option->state.testFlag(State_Enabled)));
    const QRectF outline = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
    if (element == PE_IndicatorCheckBox)
        painter->drawRect(outline);
    else
        painter->drawEllipse(outline);
    painter->restore();
}

void ThemeStyle::DrawChosenOutline(const QStyleOption* option, QPainter* painter)
{
    const bool enabled = option->state.testFlag(State_Enabled);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(QPen(option->palette.color(enabled ? QPalette::Active : QPalette::Disabled,
                                               enabled ? QPalette::Link : QPalette::WindowText),
                         2));
    painter->drawRoundedRect(QRectF(option->rect).adjusted(1, 1, -1, -1), 2, 2);
    painter->restore();
}
