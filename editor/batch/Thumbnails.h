#pragma once

#include <QCache>
#include <QHash>
#include <QImage>
#include <QObject>
#include <QPixmap>
#include <QStringList>
#include <QThreadPool>

#include <memory>

struct FileProgress;

// A small picture of the image file, upright, no larger than the box in either direction and never enlarged;
// null if it cannot be had with little memory, or after a cancel. Opens plain files only. Thread-safe. The
// progress may be null.
QImage ReadThumbnail(const QString& path, const QSize& box, FileProgress* progress = nullptr);

// Makes small pictures of those files that are to be seen, on two threads of its own, and keeps some of those
// that were.
class Thumbnails : public QObject
{
    Q_OBJECT

public:
    // Device pixels a side; bytes to be kept.
    explicit Thumbnails(int size, int maxBytes = 16 * 1024 * 1024, QObject* parent = nullptr);
    // Cancels and waits.
    ~Thumbnails() override;

    // Null until Ready(), and for what has none.
    QPixmap Get(const QString& path) const;
    // Bytes kept now.
    int GetBytes() const;
    // Files that are being read or wait for it.
    int GetPending() const;

    // These are wanted now, the first one first, and no others: what is waiting is dropped, and what is
    // being read is cancelled.
    void SetWanted(const QStringList& paths);
    // Forgets all, and reads again what is wanted.
    void Clear();

Q_SIGNALS:
    void Ready(const QString& path);

private:
    struct Reading
    {
        std::shared_ptr<FileProgress> progress;
        int run;
    };

    void startNext();
    void start(const QString& path);
    void take(const QString& path, int run, const QImage& image);

    const QSize m_box;
    QThreadPool m_pool;
    // Null pictures, for files that have none, are kept too.
    QCache<QString, QPixmap> m_cache;
    QStringList m_wanted;
    QStringList m_waiting;
    QHash<QString, Reading> m_reading;
    int m_run = 0;
};
