#include "Theme.h"

#include <QApplication>
#include <QPalette>
#include <QPixmap>
#include <QPixmapCache>

#include "KXResource.h"
#include "NVApplication.h"
#include "NVStringHelper.h"
#include "ThemeStyle.h"

namespace
{

// The few colours that a theme is made of; everything else is one of them.
struct ThemeColors
{
    QColor window;
    QColor base;
    QColor button;
    QColor text;
    QColor disabledText;
    QColor highlight;
    QColor highlightedText;
    QColor link;
    QColor border;
};

ThemeColors ColorsOf(int theme)
{
    if (theme == KXResource::DarkTheme)
        return {QColor(45, 47, 51),    QColor(32, 33, 36),    QColor(58, 61, 66),
                QColor(232, 234, 237), QColor(134, 138, 144), QColor(50, 104, 174),
                QColor(255, 255, 255), QColor(122, 176, 240), QColor(78, 82, 88)};
    if (theme == KXResource::HighContrastTheme)
        return {Qt::white, Qt::white, Qt::white,         Qt::black, QColor(90, 90, 90),
                Qt::black, Qt::white, QColor(0, 0, 160), Qt::black};
    return {QColor(240, 241, 243), QColor(255, 255, 255), QColor(247, 248, 250),
            QColor(28, 30, 33),    QColor(140, 144, 150), QColor(42, 110, 187),
            QColor(255, 255, 255), QColor(28, 90, 165),   QColor(188, 192, 198)};
}

void SetShades(QPalette& palette, const ThemeColors& colors, bool flat)
{
    palette.setColor(QPalette::Light, flat ? colors.border : colors.button.lighter(112));
    palette.setColor(QPalette::Midlight, flat ? colors.window : colors.button.lighter(106));
    palette.setColor(QPalette::Mid, colors.border);
    palette.setColor(QPalette::Dark, flat ? QColor(112, 112, 112) : colors.border.darker(120));
    palette.setColor(QPalette::Shadow, flat ? colors.border : QColor(Qt::black));
}

// The style draws all outlines in strong dark lines once the ground of windows is a texture.
QBrush StrongOutlineGround(const QColor& color)
{
    QPixmap texture(8, 8);
    texture.fill(color);
    return QBrush(color, texture);
}

} // namespace

Theme::Theme(QObject* parent) : QObject(parent)
{
    QApplication::setStyle(new ThemeStyle);
    connect(NVApplication::GetInstance(), &NVApplication::ThemeChanged, this, &Theme::OnThemeChanged);
    const int theme = NVApplication::GetInstance()->GetTheme();
    KXResource::UseTheme(theme);
    OnThemeChanged(theme);
}

QPalette Theme::Palette(int theme)
{
    const ThemeColors colors = ColorsOf(theme);
    QPalette palette;
    palette.setColor(QPalette::Window, colors.window);
    palette.setColor(QPalette::WindowText, colors.text);
    palette.setColor(QPalette::Base, colors.base);
    palette.setColor(QPalette::AlternateBase, colors.window);
    palette.setColor(QPalette::ToolTipBase, colors.base);
    palette.setColor(QPalette::ToolTipText, colors.text);
    palette.setColor(QPalette::Text, colors.text);
    palette.setColor(QPalette::PlaceholderText, colors.disabledText);
    palette.setColor(QPalette::Button, colors.button);
    palette.setColor(QPalette::ButtonText, colors.text);
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::Link, colors.link);
    palette.setColor(QPalette::LinkVisited, colors.link);
    palette.setColor(QPalette::Highlight, colors.highlight);
    palette.setColor(QPalette::HighlightedText, colors.highlightedText);
    SetShades(palette, colors, theme == KXResource::HighContrastTheme);
    if (theme == KXResource::HighContrastTheme)
        palette.setBrush(QPalette::Window, StrongOutlineGround(colors.window));
    for (QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, colors.disabledText);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, colors.border);
    return palette;
}

QString Theme::StyleSheet(int theme)
{
    const ThemeColors colors = ColorsOf(theme);
    return QStringLiteral("QToolTip { color: %1; background-color: %2; border: 1px solid %3; padding: 2px; }"
                          "QTabBar::close-button { image: url(theme:document-close.png); }")
        .arg(colors.text.name(), colors.base.name(), colors.border.name());
}

QIcon Theme::Icon(const QString& name)
{
    return QIcon(NVStringHelper::DPIAdjustImageName(QStringLiteral("theme:%1.png").arg(name)));
}

void Theme::OnThemeChanged(int theme)
{
    QPixmapCache::clear();
    QApplication::setPalette(Palette(theme));
    qApp->setStyleSheet(StyleSheet(theme));
    Q_EMIT Changed(theme);
}
