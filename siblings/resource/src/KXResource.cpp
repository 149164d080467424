#include "KXResource.h"

#include <QDir>
#include <QStringList>

namespace
{
QString folder(int theme)
{
    switch (theme)
    {
    case KXResource::DarkTheme:
        return QStringLiteral(":/theme/dark");
    case KXResource::HighContrastTheme:
        return QStringLiteral(":/theme/contrast");
    default:
        return QStringLiteral(":/theme/light");
    }
}

// The light theme is in force from the moment the library is loaded, so that a host need not call anything.
[[maybe_unused]] const bool firstThemeUsed = (KXResource::UseTheme(KXResource::LightTheme), true);
} // namespace

void KXResource::UseTheme(int theme)
{
    QDir::setSearchPaths(QStringLiteral("theme"), QStringList(folder(theme)));
}
