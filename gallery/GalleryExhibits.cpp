#include "GalleryExhibits.h"

#include <QCoreApplication>

#include <algorithm>

Exhibit::Exhibit(QWidget* shown) : widget(shown) { }

Exhibit::~Exhibit()
{
    delete widget;
    delete companion;
}

const std::vector<GalleryRow>& GalleryRows()
{
    static const std::vector<GalleryRow> rows = []
    {
        std::vector<GalleryRow> all = GalleryBars();
        all.insert(all.end(), GalleryPanels().cbegin(), GalleryPanels().cend());
        all.insert(all.end(), GalleryDialogs().cbegin(), GalleryDialogs().cend());
        return all;
    }();
    return rows;
}

const GalleryRow* FindGalleryRow(const QString& name)
{
    const std::vector<GalleryRow>& rows = GalleryRows();
    const auto found = std::find_if(rows.cbegin(), rows.cend(),
                                    [&](const GalleryRow& row) { return name == QLatin1String(row.name); });
    return found == rows.cend() ? nullptr : &*found;
}

QString GalleryGroupTitle(GalleryGroup group)
{
    switch (group)
    {
    case GalleryGroup::Bars:
        return QCoreApplication::translate("Gallery", "Bars");
    case GalleryGroup::Panels:
        return QCoreApplication::translate("Gallery", "Panels");
    case GalleryGroup::Dialogs:
        break;
    }
    return QCoreApplication::translate("Gallery", "Dialogs");
}
