#include "ReadFilters_p.h"

#include "NVImageFileManager.h"

QStringList ReadFilters(const NVImageFileManager& manager)
{
    QStringList filters = manager.GetSupportedReadFormats();
    filters.removeAll(QStringLiteral("nvdoc"));
    for (QString& filter : filters)
        filter = QStringLiteral("*.%1").arg(filter);
    return filters;
}
