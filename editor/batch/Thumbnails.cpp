#include "Thumbnails.h"

#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QSet>
#include <QtConcurrent>

#include <new>

#include "WatchedDevice.h"

namespace
{

const int MaxThreads = 2;
// The least that an entry counts, in bytes: its name and place.
const int EntryBytes = 512;
// Pixels of images that are decoded in full for their small picture.
const qint64 MaxPixels = 40 * 1000 * 1000;

QImage Decode(QImageReader& reader, const QSize& box)
{
    const QSize size = reader.size();
    // Plugins but this one decode the whole image and scale then.
    const bool isScaledOnTheWay = reader.format() == "jpeg";
    if (size.isValid() && !isScaledOnTheWay && qint64(size.width()) * size.height() > MaxPixels)
        return {};
    const bool isLarger = size.width() > box.width() || size.height() > box.height();
    if (size.isValid() && isLarger)
        reader.setScaledSize(size.scaled(box, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
    QImage image;
    if (!reader.read(&image) || image.isNull())
        return {};
    if (image.width() > box.width() || image.height() > box.height())
        image = image.scaled(image.size().scaled(box, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)),
                             Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    return std::move(image).convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

} // namespace

QImage ReadThumbnail(const QString& path, const QSize& box, FileProgress* progress)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    WatchedDevice device(&file, progress);
    try
    {
        QImageReader reader(&device);
        reader.setDecideFormatFromContent(true);
        if (!reader.canRead())
        {
            reader.setDecideFormatFromContent(false);
            reader.setFormat(QFileInfo(path).suffix().toLower().toLatin1());
        }
        reader.setAutoTransform(true);
        QImage image = Decode(reader, box);
        if (progress && progress->cancelled)
            return {};
        return image;
    }
    catch (const std::bad_alloc&)
    {
        return {};
    }
}

Thumbnails::Thumbnails(int size, int maxBytes, QObject* parent)
    : QObject(parent), m_box(size, size), m_cache(maxBytes)
{
    m_pool.setMaxThreadCount(MaxThreads);
}

Thumbnails::~Thumbnails()
{
    for (const Reading& reading : qAsConst(m_reading))
        reading.progress->cancelled = true;
    m_pool.waitForDone();
}

QPixmap Thumbnails::Get(const QString& path) const
{
    const QPixmap* pixmap = m_cache.object(path);
    return pixmap ? *pixmap : QPixmap();
}

int Thumbnails::GetBytes() const
{
    return m_cache.totalCost();
}

int Thumbnails::GetPending() const
{
    return m_waiting.size() + m_reading.size();
}

void Thumbnails::SetWanted(const QStringList& paths)
{
    m_wanted = paths;
    m_waiting.clear();
    const QSet<QString> wanted(paths.cbegin(), paths.cend());
    for (auto reading = m_reading.cbegin(); reading != m_reading.cend(); ++reading)
    {
        if (!wanted.contains(reading.key()))
            reading->progress->cancelled = true;
    }
    for (const QString& path : paths)
    {
        const auto reading = m_reading.constFind(path);
        const bool isUnderWay = reading != m_reading.constEnd() && !reading->progress->cancelled;
        if (!m_cache.contains(path) && !isUnderWay)
            m_waiting.append(path);
    }
    startNext();
}

void Thumbnails::Clear()
{
    ++m_run;
    m_cache.clear();
    for (const Reading& reading : qAsConst(m_reading))
        reading.progress->cancelled = true;
    SetWanted(QStringList(m_wanted));
}

void Thumbnails::startNext()
{
    while (m_reading.size() < MaxThreads)
    {
        int next = 0;
        while (next < m_waiting.size() && m_reading.contains(m_waiting.at(next)))
            ++next;
        if (next == m_waiting.size())
            return;
        start(m_waiting.takeAt(next));
    }
}

void Thumbnails::start(const QString& path)
{
    const auto progress = std::make_shared<FileProgress>();
    m_reading.insert(path, {progress, m_run});
    const auto read = [this, path, progress, run = m_run, box = m_box]
    {
        const QImage image = ReadThumbnail(path, box, progress.get());
        QMetaObject::invokeMethod(
            this, [this, path, run, image] { take(path, run, image); }, Qt::QueuedConnection);
    };
    QtConcurrent::run(&m_pool, read);
}

void Thumbnails::take(const QString& path, int run, const QImage& image)
{
    const Reading reading = m_reading.take(path);
    const bool isWanted = reading.progress && !reading.progress->cancelled;
    if (isWanted && run == m_run)
    {
        m_cache.insert(path, new QPixmap(QPixmap::fromImage(image)), EntryBytes + int(image.sizeInBytes()));
        if (!image.isNull())
            Q_EMIT Ready(path);
    }
    startNext();
}
