#include "ResizeCommand.h"

#include "Document.h"
#include "KXDocumentInterface.h"

namespace
{

QVector<SavedTile> ToTiles(const PictureContents& contents)
{
    QVector<SavedTile> tiles;
    for (const QImage& layer : contents.layers)
        tiles += {layer.rect(), layer};
    if (!contents.selection.isNull())
        tiles += {contents.selection.rect(), contents.selection};
    return tiles;
}

PictureContents ToContents(const QVector<SavedTile>& tiles, int layers)
{
    PictureContents contents;
    for (int i = 0; i < layers; ++i)
        contents.layers += tiles.at(i).before;
    if (tiles.size() > layers)
        contents.selection = tiles.constLast().before;
    return contents;
}

} // namespace

ResizeCommand::ResizeCommand(const QString& text, Document* document, const PictureContents& contents,
                             double resolution)
    : UndoStep(text),
      m_pDocument(document),
      m_images(ToTiles(contents)),
      m_layers(contents.layers.size()),
      m_resolution(resolution)
{
}

void ResizeCommand::TakeBack()
{
    Exchange();
}

void ResizeCommand::CarryOut()
{
    Exchange();
}

qint64 ResizeCommand::GetMemoryBytes() const
{
    return m_images.GetMemoryBytes();
}

qint64 ResizeCommand::GetBytes() const
{
    return m_images.GetBytes();
}

void ResizeCommand::MoveToDisk()
{
    m_images.MoveToDisk();
}

void ResizeCommand::Exchange()
{
    if (m_layers > 0 && !ExchangeContents())
    {
        setObsolete(true);
        // Not from within a step of the stack.
        QMetaObject::invokeMethod(m_pDocument, &Document::ForgetSteps, Qt::QueuedConnection);
        return;
    }
    KXDocumentInterface* pixels = m_pDocument->GetPixels();
    const double before = pixels->GetResolution();
    pixels->SetResolution(m_resolution);
    m_resolution = before;
}

bool ResizeCommand::ExchangeContents()
{
    const QVector<SavedTile>* tiles = m_images.Load();
    if (!tiles)
        return false;
    KXDocumentInterface* pixels = m_pDocument->GetPixels();
    const PictureContents before = ContentsOf(pixels);
    const PictureContents after = ToContents(*tiles, m_layers);
    if (!pixels->ReplaceImages(after.layers, after.selection))
        return false;
    m_images.Set(ToTiles(before));
    return true;
}

PictureContents ContentsOf(const KXDocumentInterface* pixels)
{
    PictureContents contents;
    for (int i = 0; i < pixels->GetLayerCount(); ++i)
        contents.layers += pixels->GetLayer(i).image;
    contents.selection = pixels->GetSelectionMask();
    return contents;
}
