#include "OutputNames.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSet>

#include "DocumentFile.h"
#include "WatchedDevice.h"

namespace
{

// Disks take 255, and a file is written under a longer temporary name at first.
const int MaxNameBytes = 240;

QString Folded(const QString& path)
{
    return path.normalized(QString::NormalizationForm_C).toCaseFolded();
}

QString CutTo(QString text, int bytes)
{
    while (!text.isEmpty() && QFile::encodeName(text).size() > bytes)
    {
        text.chop(1);
        if (!text.isEmpty() && text.at(text.size() - 1).isHighSurrogate())
            text.chop(1);
    }
    return text;
}

class Planner
{
public:
    Planner(const OutputRule& rule, const std::function<bool(const QString&)>& exists)
        : m_rule(rule), m_exists(exists)
    {
    }

    void Forbid(const QString& path) { m_taken.insert(Folded(path)); }
    QString Plan(const BatchInput& input);

private:
    QString folderOf(const BatchInput& input);
    QString topOf(const QString& root);

    const OutputRule& m_rule;
    const std::function<bool(const QString&)>& m_exists;
    QSet<QString> m_taken;
    // The next number to try for a name that was wanted before.
    QHash<QString, int> m_next;
    QHash<QString, QString> m_tops;
    QSet<QString> m_topNames;
};

QString Planner::Plan(const BatchInput& input)
{
    const QFileInfo source(input.path);
    const QString folder = folderOf(input);
    const QString suffix = OutputSuffix(input.path, m_rule.suffix);
    const QString base = source.completeBaseName();
    int& number = m_next[Folded(folder + QLatin1Char('/') + base + QLatin1Char('.') + suffix)];
    QString path;
    do
    {
        path = QDir::cleanPath(folder + QLatin1Char('/') + NumberedName(base, ++number, suffix));
    } while (m_taken.contains(Folded(path)) || m_exists(path));
    Forbid(path);
    return path;
}

QString Planner::folderOf(const BatchInput& input)
{
    if (!m_rule.keepsFolders || input.root.isEmpty())
        return m_rule.folder;
    const QString below = QDir(input.root).relativeFilePath(QFileInfo(input.path).path());
    return QDir::cleanPath(m_rule.folder + QLatin1Char('/') + topOf(input.root) + QLatin1Char('/') + below);
}

QString Planner::topOf(const QString& root)
{
    const auto known = m_tops.constFind(root);
    if (known != m_tops.constEnd())
        return *known;
    // The root of the disk has no name.
    const QString name = QDir(root).dirName();
    QString top = name;
    for (int number = 2; !name.isEmpty() && m_topNames.contains(Folded(top)); ++number)
        top = NumberedName(name, number, QString());
    m_topNames.insert(Folded(top));
    m_tops.insert(root, top);
    return top;
}

} // namespace

QString OutputSuffix(const QString& source, const QString& suffix)
{
    if (!suffix.isEmpty())
        return suffix;
    return HasWritableSuffix(source) ? QFileInfo(source).suffix() : QStringLiteral("png");
}

QString NumberedName(const QString& base, int number, const QString& suffix)
{
    QString end = number > 1 ? QStringLiteral(" (%1)").arg(number) : QString();
    if (!suffix.isEmpty())
        end += QLatin1Char('.') + suffix;
    return CutTo(base, MaxNameBytes - QFile::encodeName(end).size()) + end;
}

QStringList PlanOutputs(const QVector<BatchInput>& inputs, const OutputRule& rule,
                        const std::function<bool(const QString&)>& exists, const FileProgress* progress)
{
    const auto isCancelled = [progress] { return progress && progress->cancelled; };
    Planner planner(rule, exists);
    for (auto input = inputs.cbegin(); input != inputs.cend() && !isCancelled(); ++input)
        planner.Forbid(input->path);
    QStringList paths;
    paths.reserve(inputs.size());
    for (auto input = inputs.cbegin(); input != inputs.cend() && !isCancelled(); ++input)
        paths += planner.Plan(*input);
    return paths;
}
