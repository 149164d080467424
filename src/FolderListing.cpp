#include "FolderListing_p.h"

#include <QDir>
#include <QDirIterator>

#include <algorithm>
#include <vector>

namespace
{

struct Entry
{
    // The file name in lower case.
    QString key;
    QString path;
};

bool operator<(const Entry& a, const Entry& b)
{
    return a.key < b.key;
}

bool isPlainCharacter(QChar c)
{
    const ushort code = c.unicode();
    return (code >= '0' && code <= '9') || (code >= 'a' && code <= 'z') || (code >= 'A' && code <= 'Z');
}

// "*." and letters and digits of ASCII: matching is a comparison of the name's end.
bool isPlain(const QString& filter)
{
    return filter.size() > 2 && filter.startsWith(QLatin1String("*.")) &&
        std::all_of(filter.cbegin() + 2, filter.cend(), isPlainCharacter);
}

// The plain filters ".ext" without their star.
class Endings
{
public:
    explicit Endings(const QStringList& filters)
    {
        m_endings.reserve(std::size_t(filters.size()));
        for (const QString& filter : filters)
            m_endings.push_back(QStringView(filter).mid(1));
    }

    // Case is folded as the toolkit's filters do: the Kelvin sign is a "k".
    bool Match(QStringView name) const
    {
        return m_endings.empty() ||
            std::any_of(m_endings.cbegin(), m_endings.cend(),
                        [name](QStringView ending) { return name.endsWith(ending, Qt::CaseInsensitive); });
    }

private:
    std::vector<QStringView> m_endings;
};

// False if two names differ in case only: their order is then whatever QDir makes of it.
bool sortByName(std::vector<Entry>& entries)
{
    std::sort(entries.begin(), entries.end());
    const auto twin = std::adjacent_find(entries.cbegin(), entries.cend(),
                                         [](const Entry& a, const Entry& b) { return a.key == b.key; });
    return twin == entries.cend();
}

QStringList pathsOf(const std::vector<Entry>& entries)
{
    QStringList paths;
    paths.reserve(int(entries.size()));
    for (const Entry& entry : entries)
        paths.append(entry.path);
    return paths;
}

// Reads the names of a folder, each once.
class OnePass
{
public:
    // The filters are plain.
    OnePass(const QString& path, const QStringList& filters)
        : m_entries(path, QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot),
          m_endings(filters),
          m_isClean(QDir::isAbsolutePath(path) && QDir::cleanPath(path) == path)
    {
        while (m_entries.hasNext())
            take(m_entries.next());
    }

    // False if one pass does not tell the order.
    bool Sort(FolderListing& listing)
    {
        if (!sortByName(m_files) || !sortByName(m_folders))
            return false;
        listing.files = pathsOf(m_files);
        listing.folders = pathsOf(m_folders);
        return true;
    }

private:
    void take(const QString& path)
    {
        const QStringView name = QStringView(path).mid(path.lastIndexOf(QLatin1Char('/')) + 1);
        const QFileInfo info = m_entries.fileInfo();
        const bool isFolder = info.isDir();
        // A link to a pipe or a device is no file and no folder, and QDir gives it out as either.
        if (isFolder || !info.isFile())
            m_folders.push_back(entryOf(path, name, info));
        if (!isFolder && m_endings.Match(name))
            m_files.push_back(entryOf(path, name, info));
    }

    Entry entryOf(const QString& path, QStringView name, const QFileInfo& info) const
    {
        return {name.toString().toLower(), m_isClean ? path : info.absoluteFilePath()};
    }

    QDirIterator m_entries;
    const Endings m_endings;
    // What stands in a folder with a clean absolute path has one too.
    const bool m_isClean;
    std::vector<Entry> m_files;
    std::vector<Entry> m_folders;
};

QStringList pathsOf(const QFileInfoList& entries)
{
    QStringList paths;
    paths.reserve(entries.size());
    for (const QFileInfo& entry : entries)
        paths.append(entry.absoluteFilePath());
    return paths;
}

// What the lists are: all else only gets them sooner.
FolderListing listInTwoPasses(const QString& path, const QStringList& filters)
{
    const QDir dir(path);
    return {pathsOf(dir.entryInfoList(filters, QDir::Files, QDir::NoSort)),
            pathsOf(dir.entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::NoSort))};
}

} // namespace

FolderListing ListFolder(const QString& path, const QStringList& filters)
{
    FolderListing listing;
    // The toolkit makes a regular expression of each filter for each folder, which takes longer than to read
    // it.
    if (std::all_of(filters.cbegin(), filters.cend(), isPlain) &&
        OnePass(QDir(path).path(), filters).Sort(listing))
        return listing;
    return listInTwoPasses(path, filters);
}
