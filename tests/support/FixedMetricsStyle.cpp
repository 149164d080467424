#include "FixedMetricsStyle.h"

#include <QApplication>
#include <QFontInfo>
#include <QHash>
#include <QStyleFactory>

namespace
{
// Chosen once, for every machine.
const QHash<int, int>& metrics()
{
    static const QHash<int, int> table = {
        {QStyle::PM_ButtonMargin, 6},
        {QStyle::PM_ButtonDefaultIndicator, 0},
        {QStyle::PM_ButtonIconSize, 16},
        {QStyle::PM_ButtonShiftHorizontal, 0},
        {QStyle::PM_ButtonShiftVertical, 0},
        {QStyle::PM_CheckBoxLabelSpacing, 6},
        {QStyle::PM_ComboBoxFrameWidth, 2},
        {QStyle::PM_DefaultFrameWidth, 1},
        {QStyle::PM_ExclusiveIndicatorHeight, 14},
        {QStyle::PM_ExclusiveIndicatorWidth, 14},
        {QStyle::PM_IndicatorHeight, 14},
        {QStyle::PM_IndicatorWidth, 14},
        {QStyle::PM_LayoutBottomMargin, 9},
        {QStyle::PM_LayoutHorizontalSpacing, 6},
        {QStyle::PM_LayoutLeftMargin, 9},
        {QStyle::PM_LayoutRightMargin, 9},
        {QStyle::PM_LayoutTopMargin, 9},
        {QStyle::PM_LayoutVerticalSpacing, 6},
        {QStyle::PM_ListViewIconSize, 16},
        {QStyle::PM_ScrollBarExtent, 14},
        {QStyle::PM_SliderLength, 15},
        {QStyle::PM_SliderThickness, 15},
        {QStyle::PM_SmallIconSize, 16},
        {QStyle::PM_SpinBoxFrameWidth, 3},
        {QStyle::PM_TitleBarHeight, 24},
        {QStyle::PM_ToolBarIconSize, 24},
    };
    return table;
}
} // namespace

FixedMetricsStyle::FixedMetricsStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) { }

QFont FixedMetricsStyle::Font()
{
    static const QStringList families = {QStringLiteral("DejaVu Sans"), QStringLiteral("Liberation Sans"),
                                         QStringLiteral("Noto Sans")};
    QFont font;
    for (const QString& family : families)
    {
        font.setFamily(family);
        if (QFontInfo(font).family() == family)
        {
            break;
        }
    }
    font.setPixelSize(12);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

int FixedMetricsStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                                   const QWidget* widget) const
{
    const auto found = metrics().constFind(metric);
    return found != metrics().constEnd() ? *found : QProxyStyle::pixelMetric(metric, option, widget);
}

int FixedMetricsStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                                 QStyleHintReturn* returnData) const
{
    switch (hint)
    {
    case SH_DialogButtonLayout: // else it follows the desktop
        return 0;
    case SH_Widget_Animate:
    case SH_Widget_Animation_Duration:
        return 0;
    default:
        return QProxyStyle::styleHint(hint, option, widget, returnData);
    }
}

int FixedMetricsStyle::layoutSpacing(QSizePolicy::ControlType, QSizePolicy::ControlType, Qt::Orientation,
                                     const QStyleOption*, const QWidget*) const
{
    return 6;
}

FixedMetricsStyle::Scope::Scope()
    : m_styleBefore(QApplication::style()->objectName()), m_fontBefore(QApplication::font())
{
    QApplication::setStyle(new FixedMetricsStyle);
    QApplication::setFont(Font());
}

FixedMetricsStyle::Scope::~Scope()
{
    QApplication::setStyle(m_styleBefore);
    QApplication::setFont(m_fontBefore);
}
