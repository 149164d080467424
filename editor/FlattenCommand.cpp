#include "FlattenCommand.h"

#include <QCoreApplication>

namespace
{

QString Translated(const char* text)
{
    return QCoreApplication::translate("FlattenCommand", text);
}

} // namespace

FlattenCommand::FlattenCommand(KXDocumentInterface* document)
    : UndoStep(Translated(QT_TRANSLATE_NOOP("FlattenCommand", "Flatten Image"))),
      m_pDocument(document),
      m_before(document->GetCurrentLayer())
{
    for (int i = 0; i < document->GetLayerCount(); ++i)
    {
        m_layers += document->GetLayer(i);
        m_layers.last().image = QImage();
    }
}

qint64 FlattenCommand::GetMemoryBytes() const
{
    return m_pixels.GetMemoryBytes();
}

qint64 FlattenCommand::GetBytes() const
{
    return m_pixels.GetBytes();
}

void FlattenCommand::MoveToDisk()
{
    m_pixels.MoveToDisk();
}

void FlattenCommand::TakeBack()
{
    const QVector<SavedTile>* pixels = m_pixels.Load();
    setObsolete(!pixels);
    if (!pixels)
        return;
    m_pDocument->BeginEdit();
    for (int i = 0; i < m_layers.size(); ++i)
    {
        KXDocumentInterface::Layer layer = m_layers.at(i);
        layer.image = pixels->at(i).before;
        m_pDocument->InsertLayer(i, layer);
    }
    m_pDocument->RemoveLayer(m_layers.size());
    m_pDocument->SetCurrentLayer(m_before);
    m_pDocument->EndEdit();
    m_pixels.Set({});
}

// The picture is made each time: at this place in the history it is the same.
void FlattenCommand::CarryOut()
{
    KXDocumentInterface::Layer layer;
    layer.name = Translated(QT_TRANSLATE_NOOP("FlattenCommand", "Background"));
    layer.image = m_pDocument->GetComposition().copy();
    m_pDocument->BeginEdit();
    const bool isThere = m_pDocument->InsertLayer(m_layers.size(), layer);
    QVector<SavedTile> pixels;
    for (int i = 0; isThere && i < m_layers.size(); ++i)
    {
        pixels += {m_pDocument->GetRect(), m_pDocument->GetLayer(0).image};
        m_pDocument->RemoveLayer(0);
    }
    m_pDocument->EndEdit();
    m_pixels.Set(pixels);
    setObsolete(!isThere);
}

bool CanFlatten(const KXDocumentInterface* document)
{
    bool isShown = false;
    for (int i = 0; i < document->GetLayerCount(); ++i)
        isShown |= document->GetLayer(i).visible;
    const KXDocumentInterface::Layer& first = document->GetLayer(0);
    const bool isPlain = first.opacity == 100 && first.blendMode == 0 && !first.source.isValid();
    return isShown && (document->GetLayerCount() > 1 || !isPlain);
}
