#include "BatchReport.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace
{

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(BatchReport)
};

} // namespace

int BatchReport::Count(BatchOutcome::Status status) const
{
    return int(std::count_if(outcomes.cbegin(), outcomes.cend(),
                             [status](const BatchOutcome& outcome) { return outcome.status == status; }));
}

QString StatusText(BatchOutcome::Status status)
{
    switch (status)
    {
    case BatchOutcome::Failed:
        return Text::tr("Failed");
    case BatchOutcome::Skipped:
        return Text::tr("Skipped");
    case BatchOutcome::Done:
        return Text::tr("Done");
    }
    return {};
}

QString SummaryText(const BatchReport& report)
{
    if (!report.error.isEmpty())
        return Text::tr("The job did not begin: %1").arg(report.error);
    const QString counts = Text::tr("%1 done, %2 skipped, %3 failed")
                               .arg(report.Count(BatchOutcome::Done))
                               .arg(report.Count(BatchOutcome::Skipped))
                               .arg(report.Count(BatchOutcome::Failed));
    return report.isCancelled ? Text::tr("Cancelled: %1").arg(counts) : counts;
}

QString ReportText(const BatchReport& report)
{
    QString text = SummaryText(report) + QLatin1Char('\n');
    const QVector<BatchOutcome> outcomes = WorstFirst(report.outcomes);
    for (const BatchOutcome& outcome : outcomes)
    {
        const QString end =
            outcome.status == BatchOutcome::Done ? QDir::toNativeSeparators(outcome.target) : outcome.reason;
        text += StatusText(outcome.status) + QLatin1Char('\t') +
            OneLine(QDir::toNativeSeparators(outcome.source)) + QLatin1Char('\t') + OneLine(end) +
            QLatin1Char('\n');
    }
    return text;
}

QVector<BatchOutcome> WorstFirst(QVector<BatchOutcome> outcomes)
{
    std::stable_sort(outcomes.begin(), outcomes.end(),
                     [](const BatchOutcome& a, const BatchOutcome& b) { return a.status < b.status; });
    return outcomes;
}

QString PlaceText(const QString& path)
{
    const QFileInfo info(path);
    const QString folder = QDir::toNativeSeparators(info.path());
    return info.fileName().isEmpty() ? folder : Text::tr("%1 in %2").arg(info.fileName(), folder);
}

QString OneLine(const QString& text)
{
    QString line;
    line.reserve(text.size());
    for (const QChar c : text)
    {
        if (c == QLatin1Char('\n'))
            line += QLatin1String("\\n");
        else if (c == QLatin1Char('\t'))
            line += QLatin1String("\\t");
        else if (c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
                 c == QChar::ParagraphSeparator)
            line += QStringLiteral("\\x%1").arg(c.unicode(), 2, 16, QLatin1Char('0'));
        else
            line += c;
    }
    return line;
}
