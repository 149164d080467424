#include "LayerCommand.h"

#include <QCoreApplication>

namespace
{

QString Translated(const char* text)
{
    return QCoreApplication::translate("LayerCommand", text);
}

QString TextOf(LayerCommand::Kind kind)
{
    static const char* const texts[] = {
        QT_TRANSLATE_NOOP("LayerCommand", "New Layer"), QT_TRANSLATE_NOOP("LayerCommand", "Duplicate Layer"),
        QT_TRANSLATE_NOOP("LayerCommand", "Delete Layer"), QT_TRANSLATE_NOOP("LayerCommand", "Show Layer"),
        QT_TRANSLATE_NOOP("LayerCommand", "Hide Layer")};
    return Translated(texts[kind]);
}

bool HasLayer(const KXDocumentInterface* document, const QString& name)
{
    for (int i = 0; i < document->GetLayerCount(); ++i)
    {
        if (document->GetLayer(i).name == name)
            return true;
    }
    return false;
}

} // namespace

QString NewLayerName(const KXDocumentInterface* document)
{
    for (int number = 1;; ++number)
    {
        const QString name = Translated(QT_TRANSLATE_NOOP("LayerCommand", "Layer %1")).arg(number);
        if (!HasLayer(document, name))
            return name;
    }
}

LayerCommand::LayerCommand(Kind kind, KXDocumentInterface* document, int layer)
    : UndoStep(TextOf(kind)),
      m_kind(kind),
      m_pDocument(document),
      m_layer(layer),
      m_before(document->GetCurrentLayer())
{
    if (kind == New)
        m_properties.name = NewLayerName(document);
    else
        m_properties = document->GetLayer(layer);
    if (kind == Duplicate)
        m_properties.name = Translated(QT_TRANSLATE_NOOP("LayerCommand", "%1 copy")).arg(m_properties.name);
    m_properties.image = QImage();
}

void LayerCommand::TakeBack()
{
    bool done = true;
    if (m_kind == New || m_kind == Duplicate)
        done = m_pDocument->RemoveLayer(m_layer + 1);
    else if (m_kind == Delete)
        done = PutBack();
    else
        m_pDocument->SetLayerVisible(m_layer, m_kind == Hide);
    m_pDocument->SetCurrentLayer(m_before);
    setObsolete(!done);
}

void LayerCommand::CarryOut()
{
    bool done = true;
    if (m_kind == New || m_kind == Duplicate)
        done = Insert();
    else if (m_kind == Delete)
        done = Remove();
    else
        m_pDocument->SetLayerVisible(m_layer, m_kind == Show);
    setObsolete(!done);
}

qint64 LayerCommand::GetMemoryBytes() const
{
    return m_pixels.GetMemoryBytes();
}

qint64 LayerCommand::GetBytes() const
{
    return m_pixels.GetBytes();
}

void LayerCommand::MoveToDisk()
{
    m_pixels.MoveToDisk();
}

// The pixels are made, or taken from the layer below, each time: at this place in the history they are the
// same.
bool LayerCommand::Insert()
{
    KXDocumentInterface::Layer layer = m_properties;
    if (m_kind == Duplicate)
        layer.image = m_pDocument->GetLayer(m_layer).image;
    else
    {
        layer.image = QImage(m_pDocument->GetSize(), QImage::Format_ARGB32_Premultiplied);
        layer.image.fill(Qt::transparent);
    }
    return m_pDocument->InsertLayer(m_layer + 1, layer);
}

bool LayerCommand::Remove()
{
    m_pixels.Set({{m_pDocument->GetRect(), m_pDocument->GetLayer(m_layer).image}});
    return m_pDocument->RemoveLayer(m_layer);
}

bool LayerCommand::PutBack()
{
    const QVector<SavedTile>* pixels = m_pixels.Load();
    if (!pixels)
        return false;
    KXDocumentInterface::Layer layer = m_properties;
    layer.image = pixels->constFirst().before;
    m_pixels.Set({});
    return m_pDocument->InsertLayer(m_layer, layer);
}
