#include "WatchedDevice.h"

WatchedDevice::WatchedDevice(QIODevice* target, FileProgress* progress)
    : m_pTarget(target), m_pProgress(progress)
{
    open(target->openMode() | QIODevice::Unbuffered);
}

int WatchedDevice::ShortReads() const
{
    return m_shortReads;
}

int WatchedDevice::EmptyReads() const
{
    return m_emptyReads;
}

QString WatchedDevice::WriteError() const
{
    return m_writeError;
}

void WatchedDevice::ResetCounts()
{
    m_shortReads = 0;
    m_emptyReads = 0;
}

bool WatchedDevice::isSequential() const
{
    return false;
}

qint64 WatchedDevice::size() const
{
    return m_pTarget->size();
}

bool WatchedDevice::seek(qint64 position)
{
    return QIODevice::seek(position) && m_pTarget->seek(position);
}

bool WatchedDevice::atEnd() const
{
    return pos() >= size();
}

qint64 WatchedDevice::readData(char* data, qint64 maxSize)
{
    if (m_pProgress && m_pProgress->cancelled)
        return -1;
    if (m_pTarget->pos() != pos())
        m_pTarget->seek(pos());
    const qint64 count = m_pTarget->read(data, maxSize);
    if (maxSize > 0 && count == 0)
        ++m_emptyReads;
    else if (count < maxSize)
        ++m_shortReads;
    const qint64 whole = size();
    if (m_pProgress && whole > 0)
        m_pProgress->percent = int(100 * m_pTarget->pos() / whole);
    return count;
}

qint64 WatchedDevice::writeData(const char* data, qint64 size)
{
    if (m_pProgress && m_pProgress->cancelled)
        return -1;
    if (m_pTarget->pos() != pos())
        m_pTarget->seek(pos());
    // The plugins' own ways out of a failed write leak memory, so they are left to come to their end.
    if (m_writeError.isEmpty() && m_pTarget->write(data, size) != size)
        m_writeError = m_pTarget->errorString();
    return size;
}
