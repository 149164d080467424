#pragma once

#include <QImage>
#include <QString>
#include <QStringList>

struct FileProgress;

// Reading and writing picture files of all formats that the image plugins offer. Free of widgets; every
// function is thread-safe. Reasons are translated sentences of plain text.

struct LoadResult
{
    // ARGB32_Premultiplied, turned upright; null if the file was not read.
    QImage image;
    // Why there is no image. Empty after a cancel.
    QString error;
};

struct SaveResult
{
    bool ok = false;
    // Why the file was not written. Empty after a cancel.
    QString error;
};

// Only plain files are opened. A file that was cut short is refused, even where its plugin would fill up the
// rest, and so is a picture that is larger than a document may be or than memory allows, before it is decoded
// where the format tells its size. The progress may be null.
LoadResult LoadDocumentFile(const QString& path, FileProgress* progress = nullptr);

// Writes the picture in the format of the name's suffix. The old file stays as it was until the new one is
// complete, and for good if that fails. Formats without transparency get the picture on white. The progress
// may be null.
SaveResult SaveDocumentFile(const QImage& image, const QString& path, FileProgress* progress = nullptr);

// Lower case, sorted, without doubles.
QStringList ReadableSuffixes();
QStringList WritableSuffixes();
// Whether the suffix of the name is one of WritableSuffixes().
bool HasWritableSuffix(const QString& path);
// Filters for a file dialog.
QString OpenNameFilters();
QString SaveNameFilters();
