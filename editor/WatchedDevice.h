#pragma once

#include <QIODevice>

#include <atomic>

// How far a file operation has come, and the wish to end it: the link between the thread that works and the
// window.
struct FileProgress
{
    // 0 to 100, or -1 when nobody can tell.
    std::atomic<int> percent{-1};
    // Set from any thread; the operation ends with an error soon after.
    std::atomic<bool> cancelled{false};
};

// Stands between an image plugin and a file: tells the progress, ends the work on cancel, and notes reads
// that found less than was asked for, since some plugins fill up a file that was cut short without a word.
// Opened unbuffered.
class WatchedDevice : public QIODevice
{
    Q_OBJECT

public:
    // The target is open, not owned, and outlives the device. The progress may be null.
    WatchedDevice(QIODevice* target, FileProgress* progress);

    // Reads at the end that gave something, but less than asked for.
    int ShortReads() const;
    // Reads at the end that gave nothing.
    int EmptyReads() const;
    // The message of the first write that failed, empty if all went well. After it writes do nothing and seem
    // to succeed.
    QString WriteError() const;
    void ResetCounts();

    bool isSequential() const override;
    qint64 size() const override;
    bool seek(qint64 position) override;
    bool atEnd() const override;

protected:
    qint64 readData(char* data, qint64 maxSize) override;
    qint64 writeData(const char* data, qint64 size) override;

private:
    QIODevice* m_pTarget;
    FileProgress* m_pProgress;
    QString m_writeError;
    int m_shortReads = 0;
    int m_emptyReads = 0;
};
