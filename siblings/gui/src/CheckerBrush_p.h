#pragma once

#include <QBrush>
#include <QPainter>
#include <QPixmap>

// The light squares, with sides of that many pixels, that are seen through what is not opaque.
inline QBrush CheckerBrush(int cell)
{
    const QColor grey(204, 204, 204);
    QPixmap tile(2 * cell, 2 * cell);
    tile.fill(Qt::white);
    QPainter painter(&tile);
    painter.fillRect(0, 0, cell, cell, grey);
    painter.fillRect(cell, cell, cell, cell, grey);
    return QBrush(tile);
}
