#pragma once

#include <QString>
#include <QVector>

// What came of a batch job. Free of widgets; texts are translated plain text.

struct BatchOutcome
{
    enum Status
    {
        Failed,
        Skipped,
        Done
    };

    Status status = Skipped;
    QString source;
    // Done only.
    QString target;
    // Why not; empty if done.
    QString reason;
};

struct BatchReport
{
    // One an image, in the order of the input.
    QVector<BatchOutcome> outcomes;
    // Why the job did not begin at all; empty if it did.
    QString error;
    bool isCancelled = false;

    int Count(BatchOutcome::Status status) const;
};

QString StatusText(BatchOutcome::Status status);
// One line.
QString SummaryText(const BatchReport& report);
// The summary and one line an image, of columns that are parted by tabs: what went wrong comes first. A name
// never breaks a line.
QString ReportText(const BatchReport& report);
// The outcomes in that order.
QVector<BatchOutcome> WorstFirst(QVector<BatchOutcome> outcomes);
// "name in folder".
QString PlaceText(const QString& path);
// Control characters are shown as a person would write them.
QString OneLine(const QString& text);
