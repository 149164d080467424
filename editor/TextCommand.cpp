#include "TextCommand.h"

#include <QCoreApplication>

NewTextCommand::NewTextCommand(KXDocumentInterface* document, int layer, const QRect& area, int before)
    : UndoStep(QCoreApplication::translate("TextCommand", "Text")),
      m_pDocument(document),
      m_layer(layer),
      m_before(before),
      m_area(area),
      m_properties(document->GetLayer(layer))
{
    m_properties.image = QImage();
}

qint64 NewTextCommand::GetMemoryBytes() const
{
    return m_pixels.GetMemoryBytes();
}

qint64 NewTextCommand::GetBytes() const
{
    return m_pixels.GetBytes();
}

void NewTextCommand::MoveToDisk()
{
    m_pixels.MoveToDisk();
}

void NewTextCommand::TakeBack()
{
    m_pixels.Set({{m_area, m_pDocument->GetLayer(m_layer).image.copy(m_area)}});
    setObsolete(!m_pDocument->RemoveLayer(m_layer));
    m_pDocument->SetCurrentLayer(m_before);
}

void NewTextCommand::CarryOut()
{
    if (m_isFirst)
    {
        m_isFirst = false;
        return;
    }
    QVector<SavedTile>* pixels = m_pixels.Load();
    KXDocumentInterface::Layer layer = m_properties;
    layer.image = QImage(m_pDocument->GetSize(), QImage::Format_ARGB32_Premultiplied);
    if (!pixels || layer.image.isNull())
    {
        setObsolete(true);
        return;
    }
    layer.image.fill(Qt::transparent);
    ExchangeTiles(layer.image, *pixels);
    m_pixels.Set({});
    setObsolete(!m_pDocument->InsertLayer(m_layer, layer));
}

EditTextCommand::EditTextCommand(KXDocumentInterface* document, int layer, const SavedTile& before,
                                 const QVariant& sourceBefore)
    : UndoStep(QCoreApplication::translate("TextCommand", "Edit Text")),
      m_pDocument(document),
      m_layer(layer),
      m_area(before.rect),
      m_otherSource(sourceBefore)
{
    m_tiles.Set({before});
}

qint64 EditTextCommand::GetMemoryBytes() const
{
    return m_tiles.GetMemoryBytes();
}

qint64 EditTextCommand::GetBytes() const
{
    return m_tiles.GetBytes();
}

void EditTextCommand::MoveToDisk()
{
    m_tiles.MoveToDisk();
}

void EditTextCommand::TakeBack()
{
    Exchange();
}

void EditTextCommand::CarryOut()
{
    if (m_isFirst)
        m_isFirst = false;
    else
        Exchange();
}

void EditTextCommand::Exchange()
{
    QVector<SavedTile>* tiles = m_tiles.Load();
    if (!tiles)
    {
        setObsolete(true);
        return;
    }
    ExchangeTiles(m_pDocument->EditLayer(m_layer), *tiles);
    const QVariant source = m_pDocument->GetLayer(m_layer).source;
    m_pDocument->SetLayerSource(m_layer, m_otherSource);
    m_otherSource = source;
    m_pDocument->NotifyChanged(m_area);
}
