#include "OutliveParent_p.h"

#include <QWidget>

void OutliveParent(QWidget* dialog)
{
    if (const QWidget* parent = dialog->parentWidget())
        QObject::connect(parent, &QObject::destroyed, dialog, [dialog] { dialog->setParent(nullptr); });
}
