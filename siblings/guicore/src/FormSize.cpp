#include "FormSize_p.h"

#include <QLayout>
#include <QWidget>

void TakeFormSize(QWidget* window, QWidget* content)
{
    if (!window->isWindow() || window->testAttribute(Qt::WA_Resized) ||
        !content->testAttribute(Qt::WA_Resized))
    {
        return;
    }
    window->ensurePolished();
    const QLayout* layout = window->layout();
    const QLayoutItem* item = layout->itemAt(layout->indexOf(content));
    const QSize around = layout->sizeHint() - item->sizeHint();
    window->resize((content->size() + around).expandedTo(layout->sizeHint()));
}
