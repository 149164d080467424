#pragma once

#include <QVector>

#include <memory>

#include "ImageTiles.h"

class QTemporaryFile;

// Pieces of layers, or of a selection, that are kept for later: in memory, or in a temporary file while they
// are not needed. Their images are as large as their rects and have lines without gaps beyond those of the
// format.
class TileStore
{
public:
    explicit TileStore(QVector<SavedTile> tiles = {});
    ~TileStore();

    // In bytes; 0 while they lie in the file.
    qint64 GetMemoryBytes() const;
    // Of the file, while they lie there.
    qint64 GetBytes() const;

    // They stay in memory when that fails.
    void MoveToDisk();
    // The tiles, in memory again, for reading and changing. Null when the file could not be read.
    QVector<SavedTile>* Load();
    // Other tiles in place of those that were there.
    void Set(QVector<SavedTile> tiles);

private:
    QVector<SavedTile> m_tiles;
    // Of the tiles that lie in the file.
    QVector<QImage::Format> m_formats;
    std::unique_ptr<QTemporaryFile> m_pFile;
};
