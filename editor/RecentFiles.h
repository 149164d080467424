#pragma once

#include <QObject>
#include <QStringList>

class QSettings;

// The files opened or saved last, newest first, kept in the settings. Paths are absolute; a file stands in
// the list once.
class RecentFiles : public QObject
{
    Q_OBJECT

public:
    static const int MaxCount = 10;

    // The settings are not owned and must outlive the list.
    explicit RecentFiles(QSettings* settings, QObject* parent = nullptr);

    const QStringList& Paths() const;

public Q_SLOTS:
    // Puts the file first. Anything but an absolute path is made one.
    void Add(const QString& path);
    // A path that is not in the list is ignored.
    void Remove(const QString& path);
    void Clear();

Q_SIGNALS:
    void Changed();

private:
    void Store(const QStringList& paths);

    QSettings* m_pSettings;
    QStringList m_paths;
};
