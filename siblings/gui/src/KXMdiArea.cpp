#include "KXMdiArea.h"

#include <QVector>

namespace
{

// The living areas, the newest last.
QVector<KXMdiArea*>& areas()
{
    static QVector<KXMdiArea*> living;
    return living;
}

} // namespace

KXMdiArea::KXMdiArea(QWidget* parent) : QMdiArea(parent)
{
    areas().append(this);
    setAccessibleName(tr("Documents"));
    setViewMode(TabbedView);
    setDocumentMode(true);
    setTabsClosable(true);
    setTabsMovable(true);
}

KXMdiArea::~KXMdiArea()
{
    areas().removeOne(this);
}

QWidget* KXMdiArea::MainWindow()
{
    return areas().isEmpty() ? nullptr : areas().last()->window();
}
