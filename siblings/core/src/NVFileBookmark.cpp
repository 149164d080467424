#include "NVFileBookmark.h"

#include <QDateTime>
#include <QFileInfo>

struct NVFileBookmark::Mark : QSharedData
{
    QString path;
    // Invalid, and -1, where nothing stood.
    QDateTime modified;
    qint64 size = -1;

    bool operator==(const Mark& other) const
    {
        return path == other.path && modified == other.modified && size == other.size;
    }
};

NVFileBookmark::NVFileBookmark() = default;
NVFileBookmark::NVFileBookmark(const NVFileBookmark& other) = default;
NVFileBookmark& NVFileBookmark::operator=(const NVFileBookmark& other) = default;
NVFileBookmark::~NVFileBookmark() = default;

NVFileBookmark::NVFileBookmark(const QString& path)
{
    if (path.isEmpty())
        return;
    const QFileInfo info(path);
    m_pMark = new Mark;
    m_pMark->path = info.absoluteFilePath();
    if (!info.exists())
        return;
    m_pMark->modified = info.lastModified();
    m_pMark->size = info.size();
}

bool NVFileBookmark::IsNull() const
{
    return !m_pMark;
}

QString NVFileBookmark::GetPath() const
{
    return m_pMark ? m_pMark->path : QString();
}

bool NVFileBookmark::IsUnchanged() const
{
    return m_pMark && *this == NVFileBookmark(m_pMark->path);
}

bool NVFileBookmark::operator==(const NVFileBookmark& other) const
{
    if (m_pMark == other.m_pMark)
        return true;
    return m_pMark && other.m_pMark && *m_pMark == *other.m_pMark;
}

bool NVFileBookmark::operator!=(const NVFileBookmark& other) const
{
    return !(*this == other);
}
