#include "KXMdiArea.h"

#include <QEvent>
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
    UpdateGround();
}

KXMdiArea::~KXMdiArea()
{
    areas().removeOne(this);
}

QWidget* KXMdiArea::MainWindow()
{
    return areas().isEmpty() ? nullptr : areas().last()->window();
}

void KXMdiArea::changeEvent(QEvent* event)
{
    QMdiArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        UpdateGround();
}

// That around the picture of a view. The toolkit's own is a grey of its own in every theme.
void KXMdiArea::UpdateGround()
{
    setBackground(palette().color(QPalette::Dark));
}
