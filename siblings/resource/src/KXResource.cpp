#include "KXResource.h"

#include <QDir>
#include <QFile>
#include <QHash>
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

// Empty for an unknown role.
QString sheetName(KXResource::ConstRole role)
{
    switch (role)
    {
    case KXResource::HistoryItemSelected:
        return QStringLiteral("theme:history-item-selected.qss");
    case KXResource::HistoryItemSelectedHover:
        return QStringLiteral("theme:history-item-selected-hover.qss");
    case KXResource::HistoryItem:
        return QStringLiteral("theme:history-item.qss");
    case KXResource::HistoryItemHover:
        return QStringLiteral("theme:history-item-hover.qss");
    case KXResource::HistoryItemUndone:
        return QStringLiteral("theme:history-item-undone.qss");
    case KXResource::HistoryItemUndoneHover:
        return QStringLiteral("theme:history-item-undone-hover.qss");
    }
    return {};
}

QVariant textOf(const QString& name)
{
    QFile file(name);
    if (name.isEmpty() || !file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll());
}
} // namespace

void KXResource::UseTheme(int theme)
{
    QDir::setSearchPaths(QStringLiteral("theme"), QStringList(folder(theme)));
}

QVariant KXResource::GetData(ConstRole role)
{
    // A thousand rows ask for the same sheet; it is read once for the folders in use, whoever set them.
    static QStringList folders;
    static QHash<int, QVariant> sheets;

    const QStringList now = QDir::searchPaths(QStringLiteral("theme"));
    if (now != folders)
    {
        folders = now;
        sheets.clear();
    }
    const auto known = sheets.constFind(role);
    if (known != sheets.constEnd())
        return *known;
    return *sheets.insert(role, textOf(sheetName(role)));
}
