#pragma once

#include <QSizeF>

class QPainter;
class QPalette;

// How a control node looks at a moment.
struct NodeLook
{
    bool hovered = false;
    bool selected = false;
    bool focused = false;
    bool sunken = false;
};

// Of the frame, without the ring around it, which is three units wide at most.
QSizeF NodeSize();

// Draws a node with its middle at (0, 0): an upright frame around its place, so that the colour at this place
// can be seen. Two outlines, one in the palette's text colour and one in its base colour, keep it apart from
// any ground. Placed on whole device pixels.
void DrawNode(QPainter* painter, const QPalette& palette, const NodeLook& look);
