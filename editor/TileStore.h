#pragma once

#include <QVector>

#include <memory>

#include "ImageTiles.h"

class QTemporaryFile;

// Pieces of layers that are kept for later: in memory, or in a temporary file while they are not needed.
class TileStore
{
public:
    explicit TileStore(QVector<SavedTile> tiles = {});
    ~TileStore();

    // In bytes; 0 while they lie in the file.
    qint64 GetMemoryBytes() const;

    // They stay in memory when that fails.
    void MoveToDisk();
    // The tiles, in memory again, for reading and changing. Null when the file could not be read.
    QVector<SavedTile>* Load();
    // Other tiles in place of those that were there.
    void Set(QVector<SavedTile> tiles);

private:
    QVector<SavedTile> m_tiles;
    std::unique_ptr<QTemporaryFile> m_pFile;
};
