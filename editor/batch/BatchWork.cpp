#include "BatchWork.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QSaveFile>

#include <new>

#include "DocumentFile.h"
#include "MemoryRoom.h"
#include "OutputNames.h"
#include "WatchedDevice.h"

namespace
{

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(BatchWork)
};

const int UnknownWeight = 20;

// Not valid where the format does not tell.
QSize SizeOf(const QString& path)
{
    try
    {
        return QImageReader(path).size();
    }
    catch (const std::bad_alloc&)
    {
        // Some plugins read all of it for that.
        return {};
    }
}

qint64 PixelsOf(const QSize& size)
{
    return qint64(size.width()) * size.height();
}

bool IsCancelled(const FileProgress* progress)
{
    return progress && progress->cancelled;
}

BatchOutcome Skipped(const BatchTask& task, const QString& reason)
{
    return {BatchOutcome::Skipped, task.source, QString(), reason};
}

BatchOutcome Cancelled(const BatchTask& task)
{
    return Skipped(task, Text::tr("The job was cancelled."));
}

BatchOutcome Failed(const BatchTask& task, const QString& reason)
{
    return {BatchOutcome::Failed, task.source, QString(), reason};
}

// Holds a name by an empty file, so that nobody's file of that name is overwritten. Removes the file unless
// it was kept.
class ReservedName
{
public:
    explicit ReservedName(const QString& wanted)
    {
        const QFileInfo info(wanted);
        for (int number = 1;; ++number)
        {
            m_path = number == 1 ? wanted
                                 : info.path() + QLatin1Char('/') +
                    NumberedName(info.completeBaseName(), number, info.suffix());
            QFile file(m_path);
            if (file.open(QIODevice::WriteOnly | QIODevice::NewOnly))
                return;
            const QFileInfo there(m_path);
            if (there.exists() || there.isSymLink())
                continue;
            m_error = file.errorString();
            m_isKept = true;
            return;
        }
    }
    ~ReservedName()
    {
        if (!m_isKept)
            QFile::remove(m_path);
    }
    ReservedName(const ReservedName&) = delete;
    ReservedName& operator=(const ReservedName&) = delete;

    QString Path() const { return m_path; }
    QString Error() const { return m_error; }
    void Keep() { m_isKept = true; }

private:
    QString m_path;
    QString m_error;
    bool m_isKept = false;
};

SaveResult CopyFile(const QString& source, const QString& target, const FileProgress* progress)
{
    QFile from(source);
    QSaveFile to(target);
    if (!from.open(QIODevice::ReadOnly))
        return {false, from.errorString()};
    if (!to.open(QIODevice::WriteOnly))
        return {false, to.errorString()};
    while (!from.atEnd())
    {
        const QByteArray bytes = from.read(1 << 20);
        if (IsCancelled(progress))
            return {};
        if (from.error() != QFileDevice::NoError)
            return {false, from.errorString()};
        if (to.write(bytes) != bytes.size())
            return {false, to.errorString()};
    }
    return to.commit() ? SaveResult{true, QString()} : SaveResult{false, to.errorString()};
}

SaveResult Write(const BatchTask& task, const QImage& image, const BatchChange& change, const QString& target,
                 const FileProgress* progress)
{
    const bool sameFormat = QFileInfo(task.source).suffix().toLower() == QFileInfo(target).suffix().toLower();
    const QSize size = ChangedSize(image.size(), change);
    if (sameFormat && change.rotation == 0 && size == image.size())
        return CopyFile(task.source, target, progress);
    if (IsTooLarge(size))
        return {false, Text::tr("The result would be too large.")};
    const QString reason = WhyNotInMemory(size, 1);
    if (!reason.isEmpty())
        return {false, reason};
    const QImage changed = Changed(image, change);
    if (changed.isNull())
        return {false, NoMemoryForPicture(size, 1)};
    // What is being written is written to its end: cut off, the plugins lose their memory.
    return IsCancelled(progress) ? SaveResult() : SaveDocumentFile(changed, target);
}

BatchOutcome Process(const BatchTask& task, const BatchChange& change, FileProgress* progress)
{
    LoadResult loaded = LoadDocumentFile(task.source, progress);
    if (!loaded.error.isEmpty())
        return Failed(task, loaded.error);
    if (loaded.image.isNull() || IsCancelled(progress))
        return Cancelled(task);
    const QString folder = QFileInfo(task.target).path();
    if (!QDir().mkpath(folder))
        return Failed(task,
                      Text::tr("The folder %1 could not be made.").arg(QDir::toNativeSeparators(folder)));
    ReservedName name(task.target);
    if (!name.Error().isEmpty())
        return Failed(task, name.Error());
    const SaveResult saved = Write(task, loaded.image, change, name.Path(), progress);
    if (!saved.ok)
        return saved.error.isEmpty() ? Cancelled(task) : Failed(task, saved.error);
    name.Keep();
    return {BatchOutcome::Done, task.source, name.Path(), QString()};
}

} // namespace

BatchOutcome RunTask(const BatchTask& task, const BatchChange& change, FileProgress* progress)
{
    if (IsCancelled(progress))
        return Cancelled(task);
    if (!QFileInfo::exists(task.source))
        return Skipped(task, Text::tr("It does not exist any more."));
    try
    {
        return Process(task, change, progress);
    }
    catch (const std::bad_alloc&)
    {
        return Failed(task, Text::tr("There is not enough memory for it."));
    }
}

int WeightOf(const QString& path, const BatchChange& change, int limit)
{
    if (!QFileInfo(path).isFile())
        return 1;
    const QSize size = SizeOf(path);
    if (!size.isValid())
        return qMin(UnknownWeight, limit);
    const qint64 pixels = qMax(PixelsOf(size), PixelsOf(ChangedSize(size, change)));
    return int(qBound<qint64>(1, pixels / 1000000, limit));
}
