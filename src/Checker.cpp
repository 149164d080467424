#include "Checker_p.h"

#include <QPainter>
#include <QPixmap>

QBrush CheckerBrush(int cell)
{
    QPixmap tile(2 * cell, 2 * cell);
    tile.fill(Qt::white);
    QPainter painter(&tile);
    painter.fillRect(cell, 0, cell, cell, Qt::black);
    painter.fillRect(0, cell, cell, cell, Qt::black);
    painter.end();
    return QBrush(tile);
}
