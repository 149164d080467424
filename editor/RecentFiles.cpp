#include "RecentFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>

namespace
{

const QLatin1String RecentKey("files/recent");

} // namespace

RecentFiles::RecentFiles(QSettings* settings, QObject* parent)
    : QObject(parent),
      m_pSettings(settings),
      m_paths(settings->value(RecentKey).toStringList().mid(0, MaxCount))
{
    m_paths.removeAll(QString());
    m_paths.removeDuplicates();
}

const QStringList& RecentFiles::Paths() const
{
    return m_paths;
}

void RecentFiles::Add(const QString& path)
{
    if (path.isEmpty())
        return;
    const QString absolute = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    QStringList paths = m_paths;
    paths.removeAll(absolute);
    paths.prepend(absolute);
    Store(paths.mid(0, MaxCount));
}

void RecentFiles::Remove(const QString& path)
{
    QStringList paths = m_paths;
    paths.removeAll(path);
    Store(paths);
}

void RecentFiles::Clear()
{
    Store(QStringList());
}

void RecentFiles::Store(const QStringList& paths)
{
    if (paths == m_paths)
        return;
    m_paths = paths;
    m_pSettings->setValue(RecentKey, m_paths);
    Q_EMIT Changed();
}
