#include "TilesCommand.h"

#include "KXDocumentInterface.h"

TilesCommand::TilesCommand(const QString& text, KXDocumentInterface* document, int layer,
                           QVector<SavedTile> tiles)
    : UndoStep(text), m_pDocument(document), m_layer(layer)
{
    for (const SavedTile& tile : qAsConst(tiles))
        m_area |= tile.rect;
    m_tiles.Set(std::move(tiles));
}

void TilesCommand::TakeBack()
{
    Exchange();
}

void TilesCommand::CarryOut()
{
    if (m_isFirst)
        m_isFirst = false;
    else
        Exchange();
}

qint64 TilesCommand::GetMemoryBytes() const
{
    return m_tiles.GetMemoryBytes();
}

qint64 TilesCommand::GetBytes() const
{
    return m_tiles.GetBytes();
}

void TilesCommand::MoveToDisk()
{
    m_tiles.MoveToDisk();
}

void TilesCommand::Exchange()
{
    QVector<SavedTile>* tiles = m_tiles.Load();
    if (!tiles)
    {
        setObsolete(true);
        return;
    }
    ExchangeTiles(m_pDocument->EditLayer(m_layer), *tiles);
    m_pDocument->NotifyChanged(m_area);
}
