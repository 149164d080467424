#include "NVImageFileManager.h"

#include <QImageReader>
#include <QImageWriter>

#include <algorithm>

namespace
{

NVImageFileManager* s_pInstance = nullptr;

void sortOnce(QStringList& list)
{
    list.removeDuplicates();
    std::sort(list.begin(), list.end());
}

// A plugin's name for a format is the suffix of its files.
QStringList suffixes(const QList<QByteArray>& formats)
{
    QStringList list;
    for (const QByteArray& format : formats)
        list.append(QString::fromLatin1(format).toLower());
    sortOnce(list);
    return list;
}

} // namespace

NVImageFileManager::NVImageFileManager(QObject* parent) : QObject(parent)
{
    if (!s_pInstance)
        s_pInstance = this;
    update();
}

NVImageFileManager::~NVImageFileManager()
{
    if (s_pInstance == this)
        s_pInstance = nullptr;
}

NVImageFileManager* NVImageFileManager::GetInstance()
{
    return s_pInstance;
}

QStringList NVImageFileManager::GetSupportedReadFormats() const
{
    return m_readFormats;
}

QStringList NVImageFileManager::GetSupportedWriteFormats() const
{
    return m_writeFormats;
}

QStringList NVImageFileManager::GetGroups() const
{
    return m_groups.keys();
}

void NVImageFileManager::SetGroup(const QString& name, const QStringList& suffixes)
{
    if (suffixes.isEmpty())
        m_groups.remove(name);
    else
        m_groups.insert(name, suffixes);
    update();
}

void NVImageFileManager::Refresh()
{
    update();
}

void NVImageFileManager::update()
{
    QStringList formats = suffixes(QImageReader::supportedImageFormats());
    for (const QStringList& group : qAsConst(m_groups))
        formats += group;
    sortOnce(formats);
    m_writeFormats = suffixes(QImageWriter::supportedImageFormats());
    if (formats == m_readFormats)
        return;
    m_readFormats = formats;
    Q_EMIT SupportedGroupsChanged();
}
