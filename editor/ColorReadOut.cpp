#include "ColorReadOut.h"

#include <QColor>
#include <QCoreApplication>

QString ColorReadOut(const QColor& color)
{
    return QCoreApplication::translate("ColorReadOut", "R: %1  G: %2  B: %3  %4")
        .arg(color.red())
        .arg(color.green())
        .arg(color.blue())
        .arg(OpacityReadOut(color));
}

QString OpacityReadOut(const QColor& color)
{
    return QCoreApplication::translate("ColorReadOut", "%1%").arg(qRound(color.alphaF() * 100));
}
