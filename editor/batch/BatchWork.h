#pragma once

#include <QString>

#include "BatchChange.h"
#include "BatchReport.h"

struct FileProgress;

// The work of a batch job on one image: read, change, write. Free of widgets and thread-safe.

struct BatchTask
{
    QString source;
    // Where the result goes, with the suffix of its format. If something stands there by then, a number is
    // added to the name.
    QString target;
};

// What is not there any more is skipped. Makes the folder of the target if need be. An image that needs no
// change and keeps its format is copied as it is. Nothing is left of a result that was not finished, and
// nothing that existed is overwritten. The progress may be null.
BatchOutcome RunTask(const BatchTask& task, const BatchChange& change, FileProgress* progress = nullptr);

// Million pixels of the image or of its result, whichever is larger, from 1 to `limit`.
int WeightOf(const QString& path, const BatchChange& change, int limit);
