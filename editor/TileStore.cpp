#include "TileStore.h"

#include <QTemporaryFile>

TileStore::TileStore(QVector<SavedTile> tiles) : m_tiles(std::move(tiles)) { }

TileStore::~TileStore() = default;

qint64 TileStore::GetMemoryBytes() const
{
    qint64 bytes = 0;
    for (const SavedTile& tile : m_tiles)
        bytes += tile.before.sizeInBytes();
    return bytes;
}

qint64 TileStore::GetBytes() const
{
    return m_pFile ? m_pFile->size() : GetMemoryBytes();
}

void TileStore::MoveToDisk()
{
    if (m_pFile)
        return;
    auto file = std::make_unique<QTemporaryFile>();
    if (!file->open())
        return;
    for (const SavedTile& tile : qAsConst(m_tiles))
    {
        const auto* bits = reinterpret_cast<const char*>(tile.before.constBits());
        if (file->write(bits, tile.before.sizeInBytes()) != tile.before.sizeInBytes())
            return;
    }
    if (!file->flush())
        return;
    m_formats.clear();
    for (SavedTile& tile : m_tiles)
    {
        m_formats += tile.before.format();
        tile.before = QImage();
    }
    m_pFile = std::move(file);
}

QVector<SavedTile>* TileStore::Load()
{
    if (!m_pFile)
        return &m_tiles;
    QVector<SavedTile> tiles = m_tiles;
    m_pFile->seek(0);
    for (SavedTile& tile : tiles)
    {
        tile.before = QImage(tile.rect.size(), m_formats.at(int(&tile - tiles.begin())));
        const qint64 bytes = tile.before.sizeInBytes();
        if (tile.before.isNull() ||
            m_pFile->read(reinterpret_cast<char*>(tile.before.bits()), bytes) != bytes)
            return nullptr;
    }
    Set(std::move(tiles));
    return &m_tiles;
}

void TileStore::Set(QVector<SavedTile> tiles)
{
    m_tiles = std::move(tiles);
    m_pFile.reset();
}
