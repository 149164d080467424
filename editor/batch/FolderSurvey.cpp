#include "FolderSurvey.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QMap>
#include <QSet>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "BatchReport.h"
#include "CountText.h"
#include "KXAddToBatchManager.h"

namespace fs = std::filesystem;

namespace
{

using Node = KXBatchInputModel::Node;

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(FolderSurvey)
};

const int MaxSuffixesShown = 5;

QString ToText(const std::string& bytes)
{
    return QFile::decodeName(QByteArray::fromStdString(bytes));
}

// Others are not listed.
bool IsText(const std::string& name)
{
    const QByteArray bytes = QByteArray::fromStdString(name);
    return QString::fromUtf8(bytes).toUtf8() == bytes;
}

std::string SuffixOf(const std::string& name)
{
    const size_t dot = name.rfind('.');
    return dot == std::string::npos ? std::string() : name.substr(dot + 1);
}

// What stands directly in one folder.
struct Listing
{
    // Bytes, in order.
    std::vector<std::string> folders;
    int images = 0;
    int others = 0;
    std::string oneOther;
    // Of the others, in lower case.
    QSet<QString> suffixes;
    std::error_code error;
};

class Surveyor
{
public:
    Surveyor(const QStringList& suffixes, SurveyProgress* progress)
        : m_suffixes(suffixes.cbegin(), suffixes.cend()), m_pProgress(progress)
    {
    }

    FolderSurvey Run(const QStringList& paths);

private:
    bool isOver() const;
    bool isImage(const std::string& name) const;
    void note(const QString& path, PassedOver::Reason reason, const QString& detail = QString());
    void noteGap(const QString& path, const std::error_code& error);
    bool isReached(const QString& path) const;
    void look(const QString& path);
    void visit(const std::string& path, const std::string& place);
    void visitBelow(const std::string& path, const std::string& place, const std::string& name);
    void list(const std::string& path, Listing& listing);
    void take(const fs::directory_entry& entry, Listing& listing);
    void takeUnknown(const fs::directory_entry& entry, const std::error_code& error, Listing& listing);
    void takeHidden(const std::string& path, const std::string& name, fs::file_type type);
    void noteOthers(const std::string& path, const Listing& listing);
    void noteLoop(const std::string& path, const std::string& place);
    void split(const QString& path);
    Node* grow(const QString& path);

    const QSet<QString> m_suffixes;
    SurveyProgress* const m_pProgress;
    FolderSurvey m_survey;
    QSet<QString> m_asked;
    // The folders from what was asked for down to where the survey is: as they are reached, and where they
    // really are.
    std::vector<std::string> m_paths;
    std::vector<std::string> m_places;
    // Folders on the way to a loop, and the loops themselves.
    QSet<QString> m_ways;
    QSet<QString> m_loops;
};

FolderSurvey Surveyor::Run(const QStringList& paths)
{
    QStringList clean;
    for (const QString& path : paths)
        clean += QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    clean.removeDuplicates();
    m_asked = QSet<QString>(clean.cbegin(), clean.cend());
    // Those that may hold others come first.
    QStringList ordered = clean;
    std::stable_sort(ordered.begin(), ordered.end(),
                     [](const QString& a, const QString& b) { return a.size() < b.size(); });
    QSet<QString> held;
    for (const QString& path : qAsConst(ordered))
    {
        if (isReached(path))
            held.insert(path);
        else
            look(path);
    }
    for (const QString& path : qAsConst(clean))
    {
        if (!held.contains(path))
            split(path);
    }
    return m_survey;
}

bool Surveyor::isOver() const
{
    return !m_survey.hasAllLoops || (m_pProgress && m_pProgress->cancelled);
}

bool Surveyor::isImage(const std::string& name) const
{
    return m_suffixes.contains(ToText(SuffixOf(name)).toLower());
}

void Surveyor::note(const QString& path, PassedOver::Reason reason, const QString& detail)
{
    m_survey.passedOver.append({path, reason, 1, detail});
}

// A folder that could not be listed to its end.
void Surveyor::noteGap(const QString& path, const std::error_code& error)
{
    const bool isGone = error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory;
    note(path, isGone ? PassedOver::Vanished : PassedOver::Unreadable);
    if (isGone)
        m_survey.imageCounts.remove(path);
}

// In a folder that was asked for as well.
bool Surveyor::isReached(const QString& path) const
{
    const QFileInfo info(path);
    return m_survey.imageCounts.contains(path) ||
        (m_survey.imageCounts.contains(info.path()) && !info.isHidden() && info.isFile());
}

// At something that was asked for itself.
void Surveyor::look(const QString& path)
{
    const QFileInfo info(path);
    if (info.isDir())
    {
        const std::string bytes = QFile::encodeName(path).toStdString();
        std::error_code error;
        const fs::path place = fs::canonical(bytes, error);
        visit(bytes, error ? bytes : place.string());
    }
    else if (!info.exists())
        note(path, PassedOver::Vanished);
    else if (isImage(QFile::encodeName(info.fileName()).toStdString()))
        ++m_survey.imageCount;
    else
        note(path, PassedOver::Unsupported, info.suffix());
}

void Surveyor::visit(const std::string& path, const std::string& place)
{
    if (isOver())
        return;
    if (m_pProgress)
        ++m_pProgress->folders;
    Listing listing;
    list(path, listing);
    m_survey.imageCounts.insert(ToText(path), listing.images);
    m_survey.imageCount += listing.images;
    if (listing.error)
        noteGap(ToText(path), listing.error);
    noteOthers(path, listing);
    m_paths.push_back(path);
    m_places.push_back(place);
    for (const std::string& name : listing.folders)
        visitBelow(path, place, name);
    m_paths.pop_back();
    m_places.pop_back();
}

void Surveyor::visitBelow(const std::string& path, const std::string& place, const std::string& name)
{
    const std::string below = (fs::path(path) / name).string();
    std::error_code error;
    std::string there = (fs::path(place) / name).string();
    if (fs::is_symlink(below, error))
        there = fs::canonical(below, error).string();
    if (!error && std::find(m_places.begin(), m_places.end(), there) != m_places.end())
        noteLoop(below, there);
    else
        visit(below, there);
}

// All of it at once, so that no folder stays open on the way down.
void Surveyor::list(const std::string& path, Listing& listing)
{
    fs::directory_iterator at(path, listing.error);
    while (!listing.error && at != fs::directory_iterator() && !isOver())
    {
        take(*at, listing);
        if (!listing.error)
            at.increment(listing.error);
    }
    std::sort(listing.folders.begin(), listing.folders.end());
}

void Surveyor::take(const fs::directory_entry& entry, Listing& listing)
{
    const std::string name = entry.path().filename().string();
    const std::string path = entry.path().string();
    std::error_code error;
    const fs::file_type type = entry.status(error).type();
    if (!IsText(name))
    {
        if (type == fs::file_type::directory || isImage(name))
            note(ToText(path), PassedOver::NameNotText);
    }
    else if (name.front() == '.')
        takeHidden(path, name, type);
    else if (type == fs::file_type::directory)
        listing.folders.push_back(name);
    else if (error)
        takeUnknown(entry, error, listing);
    else if (type == fs::file_type::regular && isImage(name))
        ++listing.images;
    else if (type == fs::file_type::regular)
    {
        ++listing.others;
        listing.oneOther = name;
        listing.suffixes.insert(ToText(SuffixOf(name)).toLower());
    }
    else if (isImage(name))
        note(ToText(path), PassedOver::NotPlain);
}

// What the disk does not tell of.
void Surveyor::takeUnknown(const fs::directory_entry& entry, const std::error_code& error, Listing& listing)
{
    const QString path = ToText(entry.path().string());
    std::error_code own;
    const fs::file_type type = fs::symlink_status(entry.path(), own).type();
    // A folder that gives out names and nothing else does so for all of them.
    if (own == std::errc::permission_denied)
        listing.error = own;
    else if (type == fs::file_type::not_found)
        note(path, PassedOver::Vanished);
    else if (type == fs::file_type::symlink && error != std::errc::permission_denied)
        note(path, PassedOver::LeadsNowhere, QFile::symLinkTarget(path));
    else
        note(path, PassedOver::Unreadable);
}

void Surveyor::takeHidden(const std::string& path, const std::string& name, fs::file_type type)
{
    const bool isWanted =
        type == fs::file_type::directory || (type == fs::file_type::regular && isImage(name));
    if (isWanted && !m_asked.contains(ToText(path)))
        note(ToText(path), PassedOver::Hidden);
}

// A folder may hold thousands of them.
void Surveyor::noteOthers(const std::string& path, const Listing& listing)
{
    if (listing.others == 0)
        return;
    QStringList suffixes = listing.suffixes.values();
    suffixes.removeAll(QString());
    suffixes.sort();
    if (suffixes.size() > MaxSuffixesShown)
    {
        suffixes.erase(suffixes.begin() + MaxSuffixesShown, suffixes.end());
        suffixes += QStringLiteral("...");
    }
    const std::string named = listing.others == 1 ? (fs::path(path) / listing.oneOther).string() : path;
    note(ToText(named), PassedOver::Unsupported, suffixes.join(QStringLiteral(", ")));
    m_survey.passedOver.last().count = listing.others;
}

void Surveyor::noteLoop(const std::string& path, const std::string& place)
{
    if (m_survey.loops.size() == MaxLoops)
    {
        m_survey.hasAllLoops = false;
        return;
    }
    m_survey.loops.append({ToText(path), ToText(place)});
    m_loops.insert(ToText(path));
    for (const std::string& way : m_paths)
        m_ways.insert(ToText(way));
}

void Surveyor::split(const QString& path)
{
    if (isOver() || !m_ways.contains(path))
        m_survey.parts += path;
    else if (Node* node = grow(path))
        m_survey.skeletons.append(std::shared_ptr<Node>(node));
}

// A folder on the way to a loop, with those on the way below it; its other content is for the scan.
Node* Surveyor::grow(const QString& path)
{
    QStringList filters;
    for (const QString& suffix : m_suffixes)
        filters += QStringLiteral("*.") + suffix;
    const BatchScanResult result = ScanFunctor{nullptr, filters}(path);
    const QStringList content = result.folders + result.files;
    for (const QString& each : content)
    {
        if (m_loops.contains(each))
            continue;
        if (m_ways.contains(each))
            Node::AddChild(result.node, grow(each));
        else
            m_survey.parts += each;
    }
    return result.node;
}

} // namespace

QString ReasonText(const PassedOver& entry)
{
    switch (entry.reason)
    {
    case PassedOver::Unsupported:
        if (entry.count > 1)
            return Text::tr("%1 files of other types: %2")
                .arg(QLocale().toString(entry.count),
                     entry.detail.isEmpty() ? Text::tr("no suffix") : entry.detail);
        return Text::tr("It is of another type");
    case PassedOver::Unreadable:
        return Text::tr("It cannot be read");
    case PassedOver::Vanished:
        return Text::tr("It does not exist any more");
    case PassedOver::ImagesVanished:
        return CountText(entry.count, Text::tr("1 image vanished while it was scanned"),
                         Text::tr("%1 images vanished while it was scanned"));
    case PassedOver::LeadsBack:
        return Text::tr("Leads back into %1").arg(entry.detail);
    case PassedOver::LeadsNowhere:
        return Text::tr("A link to nothing: %1").arg(entry.detail);
    case PassedOver::Hidden:
        return Text::tr("It is hidden");
    case PassedOver::NotPlain:
        return Text::tr("A device, a pipe or a socket");
    case PassedOver::NameNotText:
        return Text::tr("The name holds bytes that are no text");
    }
    return {};
}

QString PassedOverText(const QVector<PassedOver>& entries)
{
    QString text;
    for (const PassedOver& entry : entries)
        text += OneLine(ReasonText(entry)) + QLatin1Char('\t') +
            OneLine(QDir::toNativeSeparators(entry.path)) + QLatin1Char('\n');
    return text;
}

FolderSurvey SurveyFolders(const QStringList& paths, const QStringList& suffixes, SurveyProgress* progress)
{
    return Surveyor(suffixes, progress).Run(paths);
}
