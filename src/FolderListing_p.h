// What stands directly in a folder.

#pragma once

#include <QStringList>

// Absolute paths, in the order of QDir: by name, without regard to case.
struct FolderListing
{
    // Those that match one of the filters, as QDir matches, or all if there are no filters.
    QStringList files;
    QStringList folders;
};

// Leaves out what is hidden; empty for a folder that cannot be read. Any thread.
FolderListing ListFolder(const QString& path, const QStringList& filters);

// Whether a path is absolute as it stands, without anything within it that would have to be taken out. False
// in doubt: for what is hidden.
bool IsCleanPath(const QString& path);
