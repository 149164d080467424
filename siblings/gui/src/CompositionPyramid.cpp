#include "CompositionPyramid_p.h"

#include <cmath>

#include "KXColorTransformBase.h"

namespace
{

const double GridScale = 8.0;
const int CheckerCell = 8;
const QRgb CheckerColors[2] = {0xffffffff, 0xffcccccc};

// The mean of four premultiplied pixels, channel by channel.
inline QRgb mean(QRgb a, QRgb b, QRgb c, QRgb d)
{
    const quint32 even = (a & 0xff00ff) + (b & 0xff00ff) + (c & 0xff00ff) + (d & 0xff00ff) + 0x20002;
    const quint32 odd = ((a >> 8) & 0xff00ff) + ((b >> 8) & 0xff00ff) + ((c >> 8) & 0xff00ff) +
        ((d >> 8) & 0xff00ff) + 0x20002;
    return ((even >> 2) & 0xff00ff) | (((odd >> 2) & 0xff00ff) << 8);
}

// From a to b by weight / 256.
inline QRgb mix(QRgb a, QRgb b, quint32 weight)
{
    const quint32 rest = 256 - weight;
    const quint32 even = ((a & 0xff00ff) * rest + (b & 0xff00ff) * weight + 0x800080) >> 8;
    const quint32 odd = ((a >> 8) & 0xff00ff) * rest + ((b >> 8) & 0xff00ff) * weight + 0x800080;
    return (even & 0xff00ff) | (odd & 0xff00ff00);
}

inline QRgb over(QRgb premultiplied, QRgb opaque)
{
    const quint32 rest = 255 - qAlpha(premultiplied);
    if (rest == 0)
        return premultiplied;
    return premultiplied + mix(0, opaque, rest + (rest >> 7));
}

inline QRgb gridded(QRgb color)
{
    return 0xff000000 | mix(color, qGray(color) > 127 ? 0x000000 : 0xffffff, 64);
}

// How one axis of the device reads the source: for each device pixel the source pixel, that beside it, its
// weight in 256ths, whether the source pixel begins there, and the checker cell.
struct Sample
{
    int first = 0;
    int second = 0;
    quint32 weight = 0;
    bool begins = false;
    int cell = 0;
};

struct Axis
{
    // Device pixels whose centres lie in the document.
    int from = 0;
    int to = 0;
    QVector<Sample> samples;
};

Axis sampleAxis(int areaFrom, int areaTo, double origin, double scale, int documentSide, double levelScale,
                int levelSide, double cell)
{
    Axis axis;
    axis.from = qMax(areaFrom, int(std::ceil(qBound(-1e9, origin - 0.5, 1e9))));
    axis.to = qMin(areaTo, int(std::ceil(qBound(-1e9, origin + documentSide * scale - 0.5, 1e9))));
    const bool nearest = levelScale >= 2.0 || levelScale == 1.0;
    int previous = int(std::floor((axis.from - 0.5 - origin) / levelScale));
    for (int device = axis.from; device < axis.to; ++device)
    {
        Sample sample;
        const double place = (device + 0.5 - origin) / levelScale;
        const int whole = int(std::floor(place));
        sample.begins = whole != previous;
        previous = whole;
        const double left = nearest ? whole : place - 0.5;
        sample.first = qBound(0, int(std::floor(left)), levelSide - 1);
        sample.second = qMin(sample.first + 1, levelSide - 1);
        sample.weight = nearest || left < 0 ? 0 : quint32((left - std::floor(left)) * 256);
        sample.cell = int(std::floor((device + 0.5 - origin) / cell)) & 1;
        axis.samples.append(sample);
    }
    return axis;
}

const QRgb* line(const QImage& image, int y)
{
    return reinterpret_cast<const QRgb*>(image.constScanLine(y));
}

void drawRow(QRgb* out, const Axis& columns, const Sample& row, const QImage& piece,
             const QPoint& pieceOrigin, bool grid)
{
    const QRgb* const upper = line(piece, row.first - pieceOrigin.y()) - pieceOrigin.x();
    const QRgb* const lower = line(piece, row.second - pieceOrigin.y()) - pieceOrigin.x();
    const bool flat = row.weight == 0;
    for (const Sample& column : columns.samples)
    {
        QRgb color = upper[column.first];
        if (column.weight != 0)
            color = mix(color, upper[column.second], column.weight);
        if (!flat)
        {
            QRgb below = lower[column.first];
            if (column.weight != 0)
                below = mix(below, lower[column.second], column.weight);
            color = mix(color, below, row.weight);
        }
        color = over(color, CheckerColors[column.cell ^ row.cell]);
        *out++ = grid && (column.begins || row.begins) ? gridded(color) : color;
    }
}

// The part of an image as an image of its own that shares the pixels as long as nobody writes.
QImage part(const QImage& image, const QRect& area)
{
    return QImage(image.constScanLine(area.y()) + 4 * area.x(), area.width(), area.height(),
                  image.bytesPerLine(), image.format());
}

} // namespace

void HalveInto(QImage& target, const QImage& source, const QRect& targetArea)
{
    const int lastColumn = source.width() - 1;
    for (int y = targetArea.top(); y <= targetArea.bottom(); ++y)
    {
        const QRgb* const upper = line(source, 2 * y);
        const QRgb* const lower = line(source, qMin(2 * y + 1, source.height() - 1));
        QRgb* const out = reinterpret_cast<QRgb*>(target.scanLine(y));
        for (int x = targetArea.left(); x <= targetArea.right(); ++x)
        {
            const int right = qMin(2 * x + 1, lastColumn);
            out[x] = mean(upper[2 * x], upper[right], lower[2 * x], lower[right]);
        }
    }
}

void CompositionPyramid::SetDocumentSize(const QSize& size)
{
    m_documentSize = size;
    m_halves.clear();
}

void CompositionPyramid::NoteChange(const QRect& documentArea)
{
    for (int i = 0; i < m_halves.size(); ++i)
    {
        const int shift = i + 1;
        const QRect area(QPoint(documentArea.left() >> shift, documentArea.top() >> shift),
                         QPoint(documentArea.right() >> shift, documentArea.bottom() >> shift));
        m_halves[i].stale += area & m_halves[i].image.rect();
    }
}

const QImage& CompositionPyramid::Level(const QImage& composition, int level, const QRect& area)
{
    if (level == 0)
        return composition;
    while (m_halves.size() < level)
    {
        const QSize above = m_halves.isEmpty() ? m_documentSize : m_halves.last().image.size();
        const QImage image((above.width() + 1) / 2, (above.height() + 1) / 2,
                           QImage::Format_ARGB32_Premultiplied);
        m_halves.append({image, image.rect()});
    }
    // The list may move while the level above is asked for, so the entry is taken by its place.
    const QRegion wanted = m_halves[level - 1].stale & area;
    for (const QRect& rect : wanted)
    {
        const QImage& source =
            Level(composition, level - 1,
                  QRect(rect.topLeft() * 2, rect.size() * 2) &
                      (level == 1 ? composition.rect() : m_halves[level - 2].image.rect()));
        HalveInto(m_halves[level - 1].image, source, rect);
    }
    m_halves[level - 1].stale -= wanted;
    return m_halves[level - 1].image;
}

QImage RenderCanvas(CompositionPyramid& pyramid, const QImage& composition,
                    const KXColorTransformBase* filter, const CanvasPlace& place, const QRect& deviceArea,
                    const QColor& surround)
{
    QImage canvas(deviceArea.size(), QImage::Format_RGB32);
    canvas.fill(surround);
    if (composition.isNull())
        return canvas;

    int level = 0;
    QSize levelSize = composition.size();
    double levelScale = place.scale;
    for (; levelScale <= 0.5 && levelSize != QSize(1, 1); ++level, levelScale *= 2.0)
        levelSize = QSize((levelSize.width() + 1) / 2, (levelSize.height() + 1) / 2);

    const double cell = CheckerCell * place.pixelRatio;
    const Axis columns = sampleAxis(deviceArea.left(), deviceArea.right() + 1, place.origin.x(), place.scale,
                                    composition.width(), levelScale, levelSize.width(), cell);
    const Axis rows = sampleAxis(deviceArea.top(), deviceArea.bottom() + 1, place.origin.y(), place.scale,
                                 composition.height(), levelScale, levelSize.height(), cell);
    if (columns.samples.isEmpty() || rows.samples.isEmpty())
        return canvas;

    const QRect needed(QPoint(columns.samples.first().first, rows.samples.first().first),
                       QPoint(columns.samples.last().second, rows.samples.last().second));
    QImage piece = part(pyramid.Level(composition, level, needed), needed);
    if (filter)
        filter->Apply(piece);
    const bool grid = place.scale >= GridScale * place.pixelRatio;
    for (int i = 0; i < rows.samples.size(); ++i)
    {
        QRgb* const out = reinterpret_cast<QRgb*>(canvas.scanLine(rows.from + i - deviceArea.top()));
        drawRow(out + columns.from - deviceArea.left(), columns, rows.samples[i], piece, needed.topLeft(),
                grid);
    }
    return canvas;
}
