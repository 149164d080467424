#pragma once

#include <QSharedDataPointer>
#include <QString>

#include "core_export.h"

// Remembers a file or folder as it was when it was marked: where it is, how large and how old. A plain value,
// any thread. A default bookmark marks nothing and takes no memory beside itself.
class CORE_EXPORT NVFileBookmark
{
public:
    NVFileBookmark();
    // Looks at the disk. An empty path gives a default bookmark; a path with nothing there may be marked.
    explicit NVFileBookmark(const QString& path);
    NVFileBookmark(const NVFileBookmark& other);
    NVFileBookmark& operator=(const NVFileBookmark& other);
    ~NVFileBookmark();

    // Marks nothing.
    bool IsNull() const;
    // Absolute; empty for a null bookmark.
    QString GetPath() const;
    // Looks at the disk: what stands at the path has the size and the date that it had, or is missing still.
    // A null bookmark is never unchanged.
    bool IsUnchanged() const;

    // Of path, size and date.
    bool operator==(const NVFileBookmark& other) const;
    bool operator!=(const NVFileBookmark& other) const;

private:
    struct Mark;
    QSharedDataPointer<Mark> m_pMark;
};
