#include "ThemeStyle.h"

#include <QApplication>
#include <QGroupBox>
#include <QIcon>
#include <QPainter>
#include <QPixmap>
#include <QStyleFactory>
#include <QStyleOption>

namespace
{

const int DarkLightness = 100;
// What the style below leaves between the title of a group and its frame.
const int GroupTitleGap = 3;
const int GroupRadius = 2;
const int TitlePictureSize = 10;

bool IsDark(const QPalette& palette)
{
    return palette.color(QPalette::Window).lightness() <= DarkLightness;
}

// A group without title has its frame further up.
int GroupFrameTop(const QStyle* style, const QStyleOption* option, const QWidget* widget)
{
    const auto* group = qobject_cast<const QGroupBox*>(widget);
    if (group && group->title().isEmpty() && !group->isCheckable())
        return GroupTitleGap;
    return qMax(style->pixelMetric(QStyle::PM_IndicatorHeight, option, widget),
                option->fontMetrics.height()) +
        GroupTitleGap;
}

// See Theme: a texture asks for strong lines.
bool HasStrongLines(const QPalette& palette)
{
    return palette.brush(QPalette::Window).style() == Qt::TexturePattern;
}

// Between the text and the ground, at home on both; where lines are strong, that of the text.
QColor OutlineColor(const QPalette& palette, bool enabled)
{
    const QPalette::ColorGroup group = enabled ? QPalette::Active : QPalette::Disabled;
    QColor color = palette.color(group, QPalette::WindowText);
    if (!HasStrongLines(palette))
        color.setAlphaF(enabled ? 0.6 : 0.4);
    return color;
}

// A panel's button to float, two windows, or to close, a cross. The style below has them in fixed greys.
QPixmap TitlePicture(bool isFloat, int ratio, const QColor& color)
{
    QPixmap picture(TitlePictureSize * ratio, TitlePictureSize * ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.scale(ratio, ratio);
    painter.setPen(QPen(color, 1, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    if (isFloat)
    {
        painter.drawRect(QRectF(1.5, 3.5, 5, 5));
        painter.drawPolyline(QPolygonF({{3.5, 1.5}, {8.5, 1.5}, {8.5, 6.5}}));
        return picture;
    }
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, 1.5, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(QLineF(1, 1, 9, 9));
    painter.drawLine(QLineF(9, 1, 1, 9));
    return picture;
}

} // namespace

ThemeStyle::ThemeStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) { }

void ThemeStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const
{
    if (element == PE_FrameGroupBox)
    {
        DrawGroupFrame(option, painter, widget);
        return;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    if (element == PE_Frame && IsDark(option->palette))
        DrawFrame(option, painter);
    const bool isBox = element == PE_IndicatorCheckBox || element == PE_IndicatorRadioButton;
    if (isBox && (IsDark(option->palette) || HasStrongLines(option->palette)))
        DrawBoxOutline(element, option, painter);
    else if (element == PE_PanelButtonTool && option->state.testFlag(State_On))
        DrawChosenOutline(option, painter);
}

QIcon ThemeStyle::standardIcon(StandardPixmap standardIcon, const QStyleOption* option,
                               const QWidget* widget) const
{
    const bool isFloat = standardIcon == SP_TitleBarNormalButton;
    if (!isFloat && standardIcon != SP_TitleBarCloseButton)
        return QProxyStyle::standardIcon(standardIcon, option, widget);
    const QPalette palette = option ? option->palette : QApplication::palette();
    QIcon icon;
    for (int ratio = 1; ratio <= 3; ++ratio)
        icon.addPixmap(TitlePicture(isFloat, ratio, palette.color(QPalette::WindowText)));
    return icon;
}

// What is a little darker than the window cannot be seen when that is dark. Also the lines between the parts
// of a bar are such frames.
void ThemeStyle::DrawFrame(const QStyleOption* option, QPainter* painter)
{
    painter->save();
    painter->setBrush(Qt::NoBrush);
    painter->setPen(option->palette.color(QPalette::Mid));
    painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
    painter->restore();
}

// The style below has one picture of a frame for all colours, next to nothing on dark ground and on white.
void ThemeStyle::DrawGroupFrame(const QStyleOption* option, QPainter* painter, const QWidget* widget) const
{
    const QRect frame = option->rect.adjusted(0, GroupFrameTop(proxy(), option, widget), 0, 0);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(option->palette.color(QPalette::Mid));
    painter->drawRoundedRect(QRectF(frame).adjusted(0.5, 0.5, -0.5, -0.5), GroupRadius, GroupRadius);
    painter->restore();
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
