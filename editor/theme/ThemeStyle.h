#pragma once

#include <QProxyStyle>

// The style of the editor: the toolkit's Fusion, except that the boxes of check and radio buttons, frames,
// and the buttons in the titles of panels can be seen in each theme, and that a tool button that is pressed
// in stands out from its neighbours.
class ThemeStyle : public QProxyStyle
{
    Q_OBJECT

public:
    ThemeStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    QIcon standardIcon(StandardPixmap standardIcon, const QStyleOption* option = nullptr,
                       const QWidget* widget = nullptr) const override;

private:
    void DrawGroupFrame(const QStyleOption* option, QPainter* painter, const QWidget* widget) const;
    static void DrawFrame(const QStyleOption* option, QPainter* painter);
    static void DrawBoxOutline(PrimitiveElement element, const QStyleOption* option, QPainter* painter);
    static void DrawChosenOutline(const QStyleOption* option, QPainter* painter);
};
