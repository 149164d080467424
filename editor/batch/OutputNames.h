#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>

#include "BatchTree.h"

struct FileProgress;

// Under which names the results of a batch job are written. Free of widgets; every function is thread-safe.

struct OutputRule
{
    // Absolute.
    QString folder;
    // Whether a result lies in the same folders as its source, from the top row down.
    bool keepsFolders = true;
    // Of the format to write, in lower case; empty for that of the source.
    QString suffix;
};

// The suffix of the result: PNG where the format of the source cannot be written.
QString OutputSuffix(const QString& source, const QString& suffix);

// An absolute path for each input, in the same order: never that of an input, nor of another result, whatever
// the case of letters, nor one for which `exists` is true. Where a name is taken, a number is added to it. No
// name is longer than disks allow, and two top rows of the same name have different folders. After a cancel
// the list is shorter. The progress may be null.
QStringList PlanOutputs(const QVector<BatchInput>& inputs, const OutputRule& rule,
                        const std::function<bool(const QString&)>& exists,
                        const FileProgress* progress = nullptr);

// "a.png", "a (2).png", "a (3).png", each cut to what fits a disk and the name of a temporary file beside it.
QString NumberedName(const QString& base, int number, const QString& suffix);
