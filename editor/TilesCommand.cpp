#include "TilesCommand.h"

#include <QTemporaryFile>

#include "KXDocumentInterface.h"

TilesCommand::TilesCommand(const QString& text, KXDocumentInterface* document, int layer,
                           QVector<SavedTile> tiles)
    : QUndoCommand(text), m_pDocument(document), m_layer(layer), m_tiles(std::move(tiles))
{
    for (const SavedTile& tile : qAsConst(m_tiles))
        m_area |= tile.rect;
}

TilesCommand::~TilesCommand() = default;

void TilesCommand::undo()
{
    Exchange();
}

void TilesCommand::redo()
{
    if (m_isFirst)
        m_isFirst = false;
    else
        Exchange();
}

qint64 TilesCommand::GetMemoryBytes() const
{
    qint64 bytes = 0;
    for (const SavedTile& tile : m_tiles)
        bytes += tile.before.sizeInBytes();
    return bytes;
}

void TilesCommand::MoveToDisk()
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
    for (SavedTile& tile : m_tiles)
        tile.before = QImage();
    m_pFile = std::move(file);
}

void TilesCommand::Exchange()
{
    if (!LoadFromDisk())
    {
        setObsolete(true);
        return;
    }
    ExchangeTiles(m_pDocument->EditLayer(m_layer), m_tiles);
    m_pDocument->NotifyChanged(m_area);
}

bool TilesCommand::LoadFromDisk()
{
    if (!m_pFile)
        return true;
    QVector<SavedTile> tiles = m_tiles;
    m_pFile->seek(0);
    for (SavedTile& tile : tiles)
    {
        tile.before = QImage(tile.rect.size(), QImage::Format_ARGB32_Premultiplied);
        const qint64 bytes = tile.before.sizeInBytes();
        if (tile.before.isNull() ||
            m_pFile->read(reinterpret_cast<char*>(tile.before.bits()), bytes) != bytes)
            return false;
    }
    m_tiles = tiles;
    m_pFile.reset();
    return true;
}
