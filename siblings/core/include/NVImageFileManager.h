#pragma once

#include <QMap>
#include <QObject>
#include <QStringList>

#include "core_export.h"

// Knows which image files the application can read and write: by the image plugins that are really there, and
// by what the host reads itself.
//
// The host makes one and keeps it as long as it likes. Before, after and without it there is none, which
// callers are to bear. GUI thread only.
class CORE_EXPORT NVImageFileManager : public QObject
{
    Q_OBJECT

public:
    // Asks the plugins, so a QCoreApplication with its library paths should be there. While one manager
    // lives, a further one is never the instance.
    explicit NVImageFileManager(QObject* parent = nullptr);
    ~NVImageFileManager() override;

    // Null while there is none.
    static NVImageFileManager* GetInstance();

    // Bare suffixes, without a dot, sorted, each once: those of the plugins in lower case, those of the
    // groups as they were given.
    QStringList GetSupportedReadFormats() const;
    // The same of what the plugins write.
    QStringList GetSupportedWriteFormats() const;
    // In alphabetical order.
    QStringList GetGroups() const;

public Q_SLOTS:
    // Adds or replaces the suffixes of files that the host reads without a plugin. No suffixes remove the
    // group.
    void SetGroup(const QString& name, const QStringList& suffixes);
    // Asks the plugins once more.
    void Refresh();

Q_SIGNALS:
    // GetSupportedReadFormats() gives another list; never when it stays the same.
    void SupportedGroupsChanged();

private:
    void update();

    QMap<QString, QStringList> m_groups;
    QStringList m_readFormats;
    QStringList m_writeFormats;
};
