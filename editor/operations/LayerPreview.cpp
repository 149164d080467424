#include "LayerPreview.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include <QPainter>

#include "BlendMode.h"
#include "ParallelWork.h"

namespace
{
const int BAND_ROWS = 32;
const double GRID_SCALE = 8.0;
const int CHECKER_CELL = 8;
const QRgb CHECKER[2] = {0xffffffff, 0xffcccccc};

struct Band
{
    int first;
    int count;
};

template <typename Work>
void ForBands(int rows, const Work& work)
{
    QVector<Band> bands;
    for (int y = 0; y < rows; y += BAND_ROWS)
        bands.append({y, std::min(BAND_ROWS, rows - y)});
    ForEachParallel(bands, work);
}

const QRgb* LineOf(const QImage& image, int y)
{
    return reinterpret_cast<const QRgb*>(image.constScanLine(y));
}

// From one colour to the other by weight / 256.
inline QRgb Mix(QRgb one, QRgb other, quint32 weight)
{
    const quint32 rest = 256 - weight;
    const quint32 even = ((one & 0xff00ff) * rest + (other & 0xff00ff) * weight + 0x800080) >> 8;
    const quint32 odd = ((one >> 8) & 0xff00ff) * rest + ((other >> 8) & 0xff00ff) * weight + 0x800080;
    return (even & 0xff00ff) | (odd & 0xff00ff00);
}

inline QRgb Over(QRgb premultiplied, QRgb opaque)
{
    const quint32 rest = 255u - quint32(qAlpha(premultiplied));
    return rest == 0 ? premultiplied : premultiplied + Mix(0, opaque, rest + (rest >> 7));
}

inline QRgb Gridded(QRgb color)
{
    return 0xff000000 | Mix(color, qGray(color) > 127 ? 0x000000 : 0xffffff, 64);
}

inline QRgb MeanOf(QRgb a, QRgb b, QRgb c, QRgb d)
{
    const quint32 even = (a & 0xff00ff) + (b & 0xff00ff) + (c & 0xff00ff) + (d & 0xff00ff) + 0x20002;
    const quint32 odd = ((a >> 8) & 0xff00ff) + ((b >> 8) & 0xff00ff) + ((c >> 8) & 0xff00ff) +
        ((d >> 8) & 0xff00ff) + 0x20002;
    return ((even >> 2) & 0xff00ff) | (((odd >> 2) & 0xff00ff) << 8);
}

QImage Halved(const QImage& image)
{
    QImage half((image.width() + 1) / 2, (image.height() + 1) / 2, QImage::Format_ARGB32_Premultiplied);
    uchar* const corner = half.bits();
    const int pairs = image.width() / 2;
    const auto work = [&](const Band& band)
    {
        for (int y = band.first; y < band.first + band.count; ++y)
        {
            const QRgb* upper = LineOf(image, 2 * y);
            const QRgb* lower = LineOf(image, std::min(2 * y + 1, image.height() - 1));
            QRgb* out = reinterpret_cast<QRgb*>(corner + qsizetype(y) * half.bytesPerLine());
            for (int x = 0; x < pairs; ++x)
                out[x] = MeanOf(upper[2 * x], upper[2 * x + 1], lower[2 * x], lower[2 * x + 1]);
            if (pairs < half.width())
                out[pairs] = MeanOf(upper[2 * pairs], upper[2 * pairs], lower[2 * pairs], lower[2 * pairs]);
        }
    };
    ForBands(half.height(), work);
    return half;
}

// How a device pixel reads a row or a column of the source: one pixel, the one beside it, and its weight in
// 256ths.
struct Reading
{
    int first;
    int second;
    quint32 weight;
    // The device pixel is the first that shows the source pixel.
    bool begins;
    // Of the checkerboard, even or odd.
    int cell;
};

// Of device pixels from one up to another; source pixels are those from first to last.
std::vector<Reading> ReadAxis(int from, int to, double origin, double scale, int first, int last, double cell)
{
    const bool isNearest = scale >= 2.0 || scale == 1.0;
    std::vector<Reading> readings;
    int previous = int(std::floor((from - 0.5 - origin) / scale));
    for (int device = from; device <= to; ++device)
    {
        const double place = (device + 0.5 - origin) / scale;
        const int whole = int(std::floor(place));
        const double left = isNearest ? whole : place - 0.5;
        Reading reading;
        reading.first = std::clamp(int(std::floor(left)), first, last) - first;
        reading.second = std::min(reading.first + 1, last - first);
        reading.weight = isNearest || left < 0 ? 0 : quint32((left - std::floor(left)) * 256);
        reading.begins = whole != previous;
        reading.cell = int(std::floor((device + 0.5 - origin) / cell)) & 1;
        previous = whole;
        readings.push_back(reading);
    }
    return readings;
}

inline QRgb ReadPixel(const QRgb* upper, const QRgb* lower, const Reading& column, const Reading& row)
{
    if (column.weight == 0 && row.weight == 0)
        return upper[column.first];
    const QRgb above = Mix(upper[column.first], upper[column.second], column.weight);
    const QRgb below = Mix(lower[column.first], lower[column.second], column.weight);
    return Mix(above, below, row.weight);
}

struct Axes
{
    std::vector<Reading> columns;
    std::vector<Reading> rows;

    QSize Size() const { return QSize(int(columns.size()), int(rows.size())); }
};

Axes ReadAxes(const QRect& visible, const QPointF& origin, double scale, const QRect& source, double cell)
{
    return {
        ReadAxis(visible.left(), visible.right(), origin.x(), scale, source.left(), source.right(), cell),
        ReadAxis(visible.top(), visible.bottom(), origin.y(), scale, source.top(), source.bottom(), cell)};
}

// Calls for each device pixel, with what it reads from the source, and keeps what that gives.
template <typename Finish>
QImage ReadImage(const QImage& source, const Axes& axes, QImage::Format format, const Finish& finish)
{
    QImage image(axes.Size(), format);
    uchar* const corner = image.bits();
    const auto work = [&](const Band& band)
    {
        for (int y = band.first; y < band.first + band.count; ++y)
        {
            const Reading& row = axes.rows[size_t(y)];
            const QRgb* upper = LineOf(source, row.first);
            const QRgb* lower = LineOf(source, row.second);
            QRgb* out = reinterpret_cast<QRgb*>(corner + qsizetype(y) * image.bytesPerLine());
            for (const Reading& column : axes.columns)
                *out++ = finish(ReadPixel(upper, lower, column, row), column, row);
        }
    };
    ForBands(image.height(), work);
    return image;
}

// The pixels whose middles lie in the layers.
QRect VisiblePixels(const PreviewPlace& place, const QSize& size)
{
    const auto edge = [](double value) { return int(std::ceil(std::clamp(value - 0.5, -1e9, 1e9))); };
    const QPoint first(edge(place.origin.x()), edge(place.origin.y()));
    const QPoint end(edge(place.origin.x() + size.width() * place.scale),
                     edge(place.origin.y() + size.height() * place.scale));
    return QRect(first, end - QPoint(1, 1)) & place.area;
}

bool IsPlain(int blendMode, double opacity)
{
    return opacity >= 1.0 && ToCompositionMode(blendMode) == QPainter::CompositionMode_SourceOver;
}

// Onto what lies below, of the same size.
void Lay(QImage& below, const QImage& image, int blendMode, double opacity)
{
    uchar* const corner = below.bits();
    const auto work = [&](const Band& band)
    {
        QImage part(corner + qsizetype(band.first) * below.bytesPerLine(), below.width(), band.count,
                    below.bytesPerLine(), below.format());
        QPainter painter(&part);
        painter.setCompositionMode(ToCompositionMode(blendMode));
        painter.setOpacity(opacity);
        painter.drawImage(QPoint(), image, QRect(0, band.first, image.width(), band.count));
    };
    ForBands(below.height(), work);
}
} // namespace

bool PreviewPlace::operator==(const PreviewPlace& other) const
{
    return scale == other.scale && origin == other.origin && pixelRatio == other.pixelRatio &&
        area == other.area;
}

void LayerPreview::SetLayers(const QVector<PreviewLayer>& layers, int changing, bool isMadeAnew)
{
    Clear();
    m_layers = layers;
    m_changing = changing;
    m_isMadeAnew = isMadeAnew;
    m_halves.resize(layers.size());
}

void LayerPreview::Clear()
{
    *this = LayerPreview();
}

QImage LayerPreview::Render(const PreviewPlace& place, const Change& change, QPoint* corner)
{
    if (m_layers.isEmpty() || VisiblePixels(place, m_layers.first().image.size()).isEmpty())
        return QImage();
    if (m_current.image.isNull() || !(place == m_place))
        Look(place);
    QImage changed = m_current.image.copy();
    change(changed, m_toLayer);
    QImage picture;
    Compose(picture, changed);
    *corner = m_visible.topLeft();
    // A picture of device pixels is read one by one.
    const double scale = m_isWhole ? place.scale : 1.0;
    const QPointF origin = m_isWhole ? place.origin : QPointF();
    Axes axes = ReadAxes(m_visible, origin, scale, m_piece, CHECKER_CELL * place.pixelRatio);
    const Axes cells =
        ReadAxes(m_visible, place.origin, place.scale, m_piece, CHECKER_CELL * place.pixelRatio);
    for (size_t i = 0; i < axes.columns.size(); ++i)
        axes.columns[i].cell = cells.columns[i].cell;
    for (size_t i = 0; i < axes.rows.size(); ++i)
        axes.rows[i].cell = cells.rows[i].cell;
    const bool hasGrid = m_isWhole && place.scale >= GRID_SCALE * place.pixelRatio;
    const auto finish = [hasGrid](QRgb color, const Reading& column, const Reading& row)
    {
        const QRgb shown = Over(color, CHECKER[column.cell ^ row.cell]);
        return hasGrid && (column.begins || row.begins) ? Gridded(shown) : shown;
    };
    return ReadImage(picture, axes, QImage::Format_RGB32, finish);
}

void LayerPreview::Look(const PreviewPlace& place)
{
    const QRect bounds = m_layers.first().image.rect();
    m_place = place;
    m_visible = VisiblePixels(place, bounds.size());
    m_isWhole = place.scale >= 1.0;
    m_level = 0;
    for (double scale = place.scale; scale <= 0.5 && bounds.width() >> m_level > 1; scale *= 2.0)
        ++m_level;
    if (m_isWhole)
    {
        const QRectF shown(QPointF(m_visible.topLeft() - place.origin) / place.scale,
                           QSizeF(m_visible.size()) / place.scale);
        m_piece = shown.toAlignedRect().adjusted(-1, -1, 1, 1) & bounds;
        m_toLayer = QTransform::fromTranslate(m_piece.left(), m_piece.top());
    }
    else
    {
        m_piece = m_visible;
        const QPointF corner = (m_visible.topLeft() - place.origin) / place.scale;
        m_toLayer = QTransform(1 / place.scale, 0, 0, 1 / place.scale, corner.x(), corner.y());
    }
    QImage clear(m_piece.size(), QImage::Format_ARGB32_Premultiplied);
    clear.fill(Qt::transparent);
    m_below = clear;
    m_above.clear();
    for (int i = 0; i < m_layers.size(); ++i)
    {
        const PreviewLayer& layer = m_layers.at(i);
        const Sampled sampled =
            m_isMadeAnew && i == m_changing ? Sampled{clear, layer.blendMode, layer.opacity} : Sample(i);
        if (i < m_changing)
            Lay(m_below, sampled.image, sampled.blendMode, sampled.opacity);
        else if (i == m_changing)
            m_current = sampled;
        else
            m_above.append(sampled);
    }
}

LayerPreview::Sampled LayerPreview::Sample(int layer)
{
    const PreviewLayer& from = m_layers.at(layer);
    if (m_isWhole)
        return {from.image.copy(m_piece), from.blendMode, from.opacity};
    const QImage& source = Half(layer, m_level);
    const Axes axes = ReadAxes(m_visible, m_place.origin, m_place.scale * (1 << m_level), source.rect(), 1.0);
    const auto asIs = [](QRgb color, const Reading&, const Reading&) { return color; };
    return {ReadImage(source, axes, QImage::Format_ARGB32_Premultiplied, asIs), from.blendMode, from.opacity};
}

const QImage& LayerPreview::Half(int layer, int level)
{
    if (level == 0)
        return m_layers.at(layer).image;
    while (m_halves.at(layer).size() < level)
    {
        const QVector<QImage>& halves = m_halves.at(layer);
        m_halves[layer].append(Halved(halves.isEmpty() ? m_layers.at(layer).image : halves.last()));
    }
    return m_halves.at(layer).at(level - 1);
}

void LayerPreview::Compose(QImage& picture, const QImage& changed) const
{
    if (m_changing == 0 && IsPlain(m_current.blendMode, m_current.opacity))
        picture = changed;
    else
    {
        picture = m_below.copy();
        Lay(picture, changed, m_current.blendMode, m_current.opacity);
    }
    for (const Sampled& above : m_above)
        Lay(picture, above.image, above.blendMode, above.opacity);
}
