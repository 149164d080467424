#include "FolderListing_p.h"

#include <QDir>
#include <QDirIterator>
#include <QVarLengthArray>

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

// "*." and letters and digits of ASCII: matching is a comparison of what stands behind the last dot.
bool isPlain(const QString& filter)
{
    return filter.size() > 2 && filter.startsWith(QLatin1String("*.")) &&
        std::all_of(filter.cbegin() + 2, filter.cend(), isPlainCharacter);
}

// As QString::toLower(), at once for letters of ASCII, which most names consist of.
QString lower(QStringView name)
{
    QString letters(int(name.size()), Qt::Uninitialized);
    QChar* to = letters.data();
    for (const QChar letter : name)
    {
        if (letter.unicode() >= 0x80)
            return name.toString().toLower();
        const bool isUpper = letter >= QLatin1Char('A') && letter <= QLatin1Char('Z');
        *to++ = QChar(ushort(letter.unicode() + (isUpper ? 0x20 : 0)));
    }
    return letters;
}

// What plain filters want behind the last dot of a name.
class Suffixes
{
public:
    explicit Suffixes(const QStringList& filters)
    {
        m_suffixes.reserve(std::size_t(filters.size()));
        for (const QString& filter : filters)
            m_suffixes.push_back(folded(QStringView(filter).mid(2)));
    }

    // Case is folded as the toolkit's filters do, letter by letter: the Kelvin sign is a "k".
    bool Match(QStringView name) const
    {
        if (m_suffixes.empty())
            return true;
        qsizetype start = name.size();
        while (start > 0 && name.at(start - 1) != QLatin1Char('.'))
            --start;
        if (start == 0)
            return false;
        const Letters suffix = folded(name.mid(start));
        return std::find(m_suffixes.cbegin(), m_suffixes.cend(), suffix) != m_suffixes.cend();
    }

private:
    using Letters = QVarLengthArray<QChar, 16>;

    static Letters folded(QStringView text)
    {
        Letters letters;
        letters.reserve(int(text.size()));
        for (const QChar letter : text)
            letters.append(letter.toCaseFolded());
        return letters;
    }

    std::vector<Letters> m_suffixes;
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
    // The filters are plain. What is hidden is left out here, since the toolkit would ask each entry,
    // whatever its name is.
    OnePass(const QString& path, const QStringList& filters)
        : m_entries(path, QDir::Files | QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot),
          m_suffixes(filters),
          m_isClean(IsCleanPath(path))
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
        // All names begin where the first one does.
        if (m_nameAt == 0)
            m_nameAt = path.lastIndexOf(QLatin1Char('/')) + 1;
        const QStringView name = QStringView(path).mid(m_nameAt);
        const QFileInfo info = m_entries.fileInfo();
        // Such names are hidden on the disk, but not among resources.
        if (name.startsWith(QLatin1Char('.')) && info.isHidden())
            return;
        const bool isFolder = info.isDir();
        // A link to a pipe or a device is no file and no folder, and QDir gives it out as either.
        if (isFolder || !info.isFile())
            m_folders.push_back(entryOf(path, name, info));
        if (!isFolder && m_suffixes.Match(name))
            m_files.push_back(entryOf(path, name, info));
    }

    Entry entryOf(const QString& path, QStringView name, const QFileInfo& info) const
    {
        return {lower(name), m_isClean ? path : info.absoluteFilePath()};
    }

    QDirIterator m_entries;
    const Suffixes m_suffixes;
    // What stands in a folder with a clean absolute path has one too.
    const bool m_isClean;
    int m_nameAt = 0;
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

bool IsCleanPath(const QString& path)
{
    if (!path.startsWith(QLatin1Char('/')))
        return false;
    // To the end in any case, which many letters at once take less time for.
    const QChar* letters = path.constData();
    unsigned found = 0;
    for (int i = 1; i < path.size(); ++i)
        found |= unsigned(letters[i - 1] == QLatin1Char('/')) &
            unsigned(letters[i] == QLatin1Char('/') || letters[i] == QLatin1Char('.'));
    return !found;
}

FolderListing ListFolder(const QString& path, const QStringList& filters)
{
    FolderListing listing;
    // The toolkit makes a regular expression of each filter for each folder, which takes longer than to read
    // it.
    if (std::all_of(filters.cbegin(), filters.cend(), isPlain) && OnePass(path, filters).Sort(listing))
        return listing;
    return listInTwoPasses(path, filters);
}
