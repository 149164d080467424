#pragma once

#include <QStringList>

struct FileProgress;

// The printers that the toolkit finds.
struct PrinterList
{
    QStringList names;
    // Those that print nothing at present.
    QStringList stopped;

    // Asks the toolkit, which waits without end for a print server that falls silent, so it is left behind
    // then, in a thread of its own. False, and nothing is changed, after a cancel and when the time is over.
    // Safe in any thread; blocks, so it does not belong in the GUI thread. Long lists take their time: each
    // driver is looked into.
    bool Find(const FileProgress* progress, int milliseconds = 30000);
};
