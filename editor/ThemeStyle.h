#pragma once

#include <QProxyStyle>

// The style of the editor: the toolkit's Fusion, except that the boxes of check and radio buttons keep an
// outline that can be seen on a dark window, and that a tool button that is pressed in stands out from its
// neighbours.
class ThemeStyle : public QProxyStyle
{
    Q_OBJECT

public:
    ThemeStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;

private:
    static void DrawBoxOutline(PrimitiveElement element, const QStyleOption* option, QPainter* painter);
    static void DrawChosenOutline(const QStyleOption* option, QPainter* painter);
};
