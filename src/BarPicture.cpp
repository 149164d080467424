#include "BarPicture_p.h"

#include <QAbstractButton>
#include <QImage>
#include <QLabel>
#include <QPixmap>

#include "NVIconHelper.h"
#include "NVStringHelper.h"
#include "PatternSelectWidget.h"

void SetBarPicture(QLabel* label, const QString& name)
{
    label->setPixmap(QPixmap(NVStringHelper::DPIAdjustImageName(name)));
}

void ShowPattern(QAbstractButton* button, const PatternSelectWidget* patterns, int index)
{
    QImage image;
    if (patterns->GetItemImage(index, image))
        button->setIcon(NVIconHelper::DisabledIcon(QPixmap::fromImage(image)));
}
