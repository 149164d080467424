#include "KXDocumentInterface.h"

#include "BlendMode.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstring>

const int KXDocumentInterface::MAX_DOC_DIMENSION = 10000;

namespace
{
const double MetersPerInch = 0.0254;
const double DefaultResolution = 72.0;
// A stale area of more rectangles than this costs more to keep than to draw as one.
const int MaxStaleRects = 256;

// A file states whole dots a metre: where a whole number of pixels an inch lies behind them, that is meant.
double resolutionOf(const QImage& image)
{
    const int dotsPerMeter = image.dotsPerMeterX();
    if (dotsPerMeter <= 0)
        return DefaultResolution;
    const double dotsPerInch = dotsPerMeter * MetersPerInch;
    const double whole = std::round(dotsPerInch);
    return whole > 0.0 && std::abs(whole / MetersPerInch - dotsPerMeter) < 1.0 ? whole : dotsPerInch;
}

// In the one format of layers, one image pixel a document pixel.
QImage layerImage(const QImage& image)
{
    QImage converted = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (!converted.isNull() && converted.devicePixelRatio() != 1.0)
        converted.setDevicePixelRatio(1.0);
    return converted;
}

QImage emptyPixel()
{
    QImage image(1, 1, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

bool isShown(const KXDocumentInterface::Layer& layer)
{
    return layer.visible && layer.opacity > 0;
}

// Whether the layer looks over nothing as its pixels are.
bool isPlain(const KXDocumentInterface::Layer& layer)
{
    return layer.opacity == 100 && ToCompositionMode(layer.blendMode) == QPainter::CompositionMode_SourceOver;
}

// Whether it can be the selection of a document of that size.
bool isMask(const QImage& mask, const QSize& size)
{
    return mask.isNull() || (mask.size() == size && mask.format() == QImage::Format_Grayscale8);
}

// Whether they can be the layers of one document.
bool areLayerImages(const QVector<QImage>& images)
{
    const auto fits = [&images](const QImage& image)
    {
        return !image.isNull() && image.format() == QImage::Format_ARGB32_Premultiplied &&
            image.size() == images.first().size();
    };
    return std::all_of(images.cbegin(), images.cend(), fits);
}

void copyLines(QImage& target, const QImage& source, const QRect& area)
{
    const size_t bytes = size_t(area.width()) * sizeof(QRgb);
    const size_t offset = size_t(area.left()) * sizeof(QRgb);
    for (int y = area.top(); y <= area.bottom(); ++y)
        std::memcpy(target.scanLine(y) + offset, source.constScanLine(y) + offset, bytes);
}

void clearLines(QImage& target, const QRect& area)
{
    const size_t bytes = size_t(area.width()) * sizeof(QRgb);
    const size_t offset = size_t(area.left()) * sizeof(QRgb);
    for (int y = area.top(); y <= area.bottom(); ++y)
        std::memset(target.scanLine(y) + offset, 0, bytes);
}

void drawLayer(QImage& target, const KXDocumentInterface::Layer& layer, const QRegion& area)
{
    QPainter painter(&target);
    painter.setCompositionMode(ToCompositionMode(layer.blendMode));
    painter.setOpacity(layer.opacity / 100.0);
    for (const QRect& rect : area)
        painter.drawImage(rect.topLeft(), layer.image, rect);
}
} // namespace

KXDocumentInterface::KXDocumentInterface(const QImage& image, QObject* parent)
    : QObject(parent), m_resolution(resolutionOf(image))
{
    Layer layer;
    layer.name = tr("Background");
    layer.image = layerImage(image);
    if (layer.image.isNull())
        layer.image = emptyPixel();
    m_layers.append(layer);
    m_stale = GetRect();
}

KXDocumentInterface::~KXDocumentInterface() = default;

QSize KXDocumentInterface::GetSize() const
{
    return m_layers.first().image.size();
}

QRect KXDocumentInterface::GetRect() const
{
    return m_layers.first().image.rect();
}

double KXDocumentInterface::GetResolution() const
{
    return m_resolution;
}

int KXDocumentInterface::GetLayerCount() const
{
    return m_layers.size();
}

const KXDocumentInterface::Layer& KXDocumentInterface::GetLayer(int index) const
{
    return m_layers.at(index);
}

int KXDocumentInterface::GetCurrentLayer() const
{
    return m_currentLayer;
}

bool KXDocumentInterface::IsBeingEdited() const
{
    return m_edits > 0;
}

const QImage& KXDocumentInterface::GetComposition() const
{
    if (m_composition.isNull())
    {
        m_composition = QImage(GetSize(), QImage::Format_ARGB32_Premultiplied);
        m_stale = m_composition.rect();
    }
    if (!m_stale.isEmpty() && !m_composition.isNull())
    {
        compose(m_stale);
        m_stale = QRegion();
    }
    return m_composition;
}

QImage KXDocumentInterface::GetSelectionMask() const
{
    return m_selection;
}

QImage& KXDocumentInterface::EditLayer(int index)
{
    return m_layers[index].image;
}

void KXDocumentInterface::NotifyChanged(const QRect& area)
{
    const QRect changed = area & GetRect();
    if (changed.isEmpty())
        return;
    m_stale += changed;
    if (m_stale.rectCount() > MaxStaleRects)
        m_stale = m_stale.boundingRect();
    if (m_edits > 0)
        m_edited |= changed;
    Q_EMIT CompositionChanged(changed);
}

void KXDocumentInterface::BeginEdit()
{
    ++m_edits;
}

void KXDocumentInterface::EndEdit()
{
    if (m_edits == 0 || --m_edits > 0)
        return;
    const QRect edited = m_edited;
    m_edited = QRect();
    if (!edited.isEmpty())
        Q_EMIT CompositionChanged(edited);
}

bool KXDocumentInterface::InsertLayer(int index, const Layer& layer)
{
    if (index < 0 || index > m_layers.size() || layer.image.size() != GetSize())
        return false;
    Layer inserted = layer;
    inserted.image = layerImage(layer.image);
    if (inserted.image.isNull())
        return false;
    inserted.opacity = qBound(0, layer.opacity, 100);
    inserted.blendMode = layer.blendMode >= 0 && layer.blendMode < BLEND_MODE_COUNT ? layer.blendMode : 0;
    m_layers.insert(index, inserted);
    m_currentLayer = index;
    Q_EMIT LayersChanged();
    if (isShown(inserted))
        changeLook();
    return true;
}

bool KXDocumentInterface::RemoveLayer(int index)
{
    if (!isLayer(index) || m_layers.size() == 1)
        return false;
    const bool wasShown = isShown(m_layers.at(index));
    m_layers.removeAt(index);
    if (m_currentLayer >= index)
        m_currentLayer = qMax(0, m_currentLayer - 1);
    Q_EMIT LayersChanged();
    if (wasShown)
        changeLook();
    return true;
}

void KXDocumentInterface::SetCurrentLayer(int index)
{
    if (!isLayer(index) || index == m_currentLayer)
        return;
    m_currentLayer = index;
    Q_EMIT LayersChanged();
}

void KXDocumentInterface::SetLayerVisible(int index, bool visible)
{
    if (!isLayer(index) || m_layers.at(index).visible == visible)
        return;
    Layer& layer = m_layers[index];
    layer.visible = visible;
    const bool lookChanges = layer.opacity > 0;
    Q_EMIT LayersChanged();
    if (lookChanges)
        changeLook();
}

void KXDocumentInterface::SetLayerOpacity(int index, int percent)
{
    percent = qBound(0, percent, 100);
    if (!isLayer(index) || m_layers.at(index).opacity == percent)
        return;
    Layer& layer = m_layers[index];
    layer.opacity = percent;
    const bool lookChanges = layer.visible;
    Q_EMIT LayersChanged();
    if (lookChanges)
        changeLook();
}

void KXDocumentInterface::SetLayerBlendMode(int index, int mode)
{
    const bool known = mode >= 0 && mode < BLEND_MODE_COUNT;
    if (!known || !isLayer(index) || m_layers.at(index).blendMode == mode)
        return;
    Layer& layer = m_layers[index];
    layer.blendMode = mode;
    const bool lookChanges = isShown(layer);
    Q_EMIT LayersChanged();
    if (lookChanges)
        changeLook();
}

void KXDocumentInterface::SetLayerSource(int index, const QVariant& source)
{
    if (isLayer(index))
        m_layers[index].source = source;
}

bool KXDocumentInterface::SetSelectionMask(const QImage& mask)
{
    if (!isMask(mask, GetSize()))
        return false;
    if (mask == m_selection)
        return true;
    m_selection = mask;
    Q_EMIT SelectionChanged();
    return true;
}

bool KXDocumentInterface::ReplaceImages(const QVector<QImage>& images, const QImage& selection)
{
    if (images.size() != m_layers.size() || !areLayerImages(images) ||
        !isMask(selection, images.first().size()))
        return false;
    const QSize before = GetSize();
    const bool isSelected = !m_selection.isNull() || !selection.isNull();
    for (int i = 0; i < images.size(); ++i)
        m_layers[i].image = images.at(i);
    m_selection = selection;
    if (GetSize() != before)
    {
        m_composition = QImage();
        m_stale = QRegion();
        m_edited = m_edited.isEmpty() ? QRect() : GetRect();
        Q_EMIT SizeChanged(GetSize());
    }
    if (isSelected)
        Q_EMIT SelectionChanged();
    changeLook();
    return true;
}

void KXDocumentInterface::SetResolution(double dotsPerInch)
{
    if (!std::isfinite(dotsPerInch) || dotsPerInch <= 0.0 || dotsPerInch == m_resolution)
        return;
    m_resolution = dotsPerInch;
    Q_EMIT ResolutionChanged(dotsPerInch);
}

bool KXDocumentInterface::isLayer(int index) const
{
    return index >= 0 && index < m_layers.size();
}

void KXDocumentInterface::compose(const QRegion& area) const
{
    auto layer = std::find_if(m_layers.cbegin(), m_layers.cend(), isShown);
    const bool copied = layer != m_layers.cend() && isPlain(*layer);
    for (const QRect& rect : area)
    {
        if (copied)
            copyLines(m_composition, layer->image, rect);
        else
            clearLines(m_composition, rect);
    }
    if (copied)
        ++layer;
    for (; layer != m_layers.cend(); ++layer)
    {
        if (isShown(*layer))
            drawLayer(m_composition, *layer, area);
    }
}

void KXDocumentInterface::changeLook()
{
    NotifyChanged(GetRect());
}
