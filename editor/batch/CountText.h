#pragma once

#include <QLocale>
#include <QString>

// "1 image" or "2,000 images": `many` holds %1 for the number.
inline QString CountText(int count, const QString& one, const QString& many)
{
    return count == 1 ? one : many.arg(QLocale().toString(count));
}
