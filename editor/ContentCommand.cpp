#include "ContentCommand.h"

#include "KXDocumentInterface.h"

ContentCommand::ContentCommand(const QString& text, KXDocumentInterface* document, int layer,
                               QVector<SavedTile> tiles, const QImage& selection)
    : UndoStep(text), m_pDocument(document), m_layer(layer), m_selection(selection)
{
    for (const SavedTile& tile : qAsConst(tiles))
        m_area |= tile.rect;
    m_tiles.Set(std::move(tiles));
}

qint64 ContentCommand::GetMemoryBytes() const
{
    return m_tiles.GetMemoryBytes() + m_selection.GetMemoryBytes();
}

qint64 ContentCommand::GetBytes() const
{
    return m_tiles.GetBytes() + m_selection.GetBytes();
}

void ContentCommand::MoveToDisk()
{
    m_tiles.MoveToDisk();
    m_selection.MoveToDisk();
}

void ContentCommand::TakeBack()
{
    Exchange();
}

void ContentCommand::CarryOut()
{
    if (m_isFirst)
        m_isFirst = false;
    else
        Exchange();
}

void ContentCommand::Exchange()
{
    QImage selection;
    QVector<SavedTile>* tiles = m_selection.Load(selection) ? m_tiles.Load() : nullptr;
    if (!tiles)
    {
        setObsolete(true);
        return;
    }
    ExchangeTiles(m_pDocument->EditLayer(m_layer), *tiles);
    m_pDocument->NotifyChanged(m_area);
    const QImage other = m_pDocument->GetSelectionMask();
    if (selection.isNull() && other.isNull())
        return;
    m_pDocument->SetSelectionMask(selection);
    m_selection.Set(other);
}
