#include "HideAreaCommand.h"

#include <QCoreApplication>

#include "CropContents.h"
#include "KXDocumentInterface.h"

namespace
{

QString NameBelow(const QString& name)
{
    return QCoreApplication::translate("HideAreaCommand", "%1 before the crop").arg(name);
}

bool AreThere(const QVector<QImage>& layers, const KXDocumentInterface* document)
{
    bool fits = layers.size() == document->GetLayerCount();
    for (const QImage& layer : layers)
        fits = fits && layer.size() == document->GetSize();
    return fits;
}

QVector<QImage> LayersWithin(const KXDocumentInterface* document, const CropFrame& frame)
{
    QVector<QImage> layers;
    for (int i = 0; i < document->GetLayerCount(); ++i)
        layers += WithoutOutside(document->GetLayer(i).image, frame);
    return layers;
}

} // namespace

HideAreaCommand::HideAreaCommand(const QString& text, KXDocumentInterface* document, const CropFrame& frame,
                                 const QVector<QImage>& layers)
    : UndoStep(text), m_pDocument(document), m_frame(frame), m_layers(layers)
{
}

void HideAreaCommand::TakeBack()
{
    const int current = m_pDocument->GetCurrentLayer() / 2;
    // The hidden ones are the layers as they were; each is below its own.
    const int count = m_pDocument->GetLayerCount() / 2;
    for (int i = 0; i < count; ++i)
    {
        QImage before = m_pDocument->GetLayer(i).image;
        m_pDocument->RemoveLayer(i);
        m_pDocument->EditLayer(i).swap(before);
    }
    m_pDocument->NotifyChanged(m_pDocument->GetRect());
    m_pDocument->SetCurrentLayer(current);
}

void HideAreaCommand::CarryOut()
{
    if (m_layers.isEmpty())
        m_layers = LayersWithin(m_pDocument, m_frame);
    setObsolete(!HideArea(m_pDocument, m_layers));
    m_layers.clear();
}

bool HideArea(KXDocumentInterface* document, const QVector<QImage>& layers)
{
    if (!AreThere(layers, document))
        return false;
    const int current = document->GetCurrentLayer();
    for (int i = 0; i < layers.size(); ++i)
    {
        KXDocumentInterface::Layer below = document->GetLayer(2 * i);
        below.name = NameBelow(below.name);
        below.visible = false;
        QImage within = layers.at(i);
        document->InsertLayer(2 * i, below);
        document->EditLayer(2 * i + 1).swap(within);
    }
    document->NotifyChanged(document->GetRect());
    document->SetCurrentLayer(2 * current + 1);
    return true;
}
