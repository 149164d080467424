#pragma once

#include <vector>

#include <QImage>
#include <QRect>

#include "StrokeSource.h"
#include "StrokeStamp.h"

// One stamp on its way into the tiles.
struct StampMark
{
    StampCache::Placed placed;
    // 0 to 65535, what the coverage of the stamp is multiplied by.
    quint16 strength = 65535;
    // Premultiplied, for strokes whose stamps have colours of their own.
    QRgb color = 0;
};

// How the pixels of a stroke get from its coverage into the layer; the same for all its tiles.
struct StrokeInk
{
    // Each stamp has its colour: the tiles keep colours, not only coverage.
    bool stampColors = false;
    // Premultiplied colour where there is no pattern.
    QRgb color = 0;
    // ARGB32_Premultiplied, repeated from the origin: the colours themselves, or with stamp colours what
    // those are multiplied by, channel by channel. Null for none.
    QImage pattern;
    int blendMode = 0;
    // 0 to 65535.
    quint16 opacity = 65535;
    // Grayscale8, null for no selection.
    QImage selection;
    // Fades the layer; colour, pattern and blend mode have no say.
    bool erase = false;
    // Gives the colours in place of colour and pattern, if not empty.
    StrokeSource source;
    bool sourceReplaces = false;
};

// The stroke within one square of the layer: what the layer held before, and what the stamps have covered
// since. It takes memory only when it is touched. Tiles know nothing of each other, so they may be worked on
// side by side.
class StrokeTile
{
public:
    static const int SIDE = 256;

    StrokeTile(const QRect& rect, const StrokeInk& ink);

    const QRect& Rect() const { return m_rect; }
    // The pixels before the stroke; null while nothing has been changed.
    const QImage& Before() const { return m_before; }
    // True when no stamp can change anything here any more, or never could.
    bool IsClosed() const { return m_closed; }
    // The part of the tile that Blend will change, and how many pixels that is.
    QRect DirtyRect() const;
    qint64 DirtyPixels() const;
    qint64 BufferBytes() const;

    // Whether the ink's source is to be read before the next Blend.
    bool NeedsSource() const;
    // From 0 to 255 for the pixels of an image whose upper left corner lies there in the layer. Leaves alone
    // what no stamp has reached.
    void WriteCoverage(QImage& coverage, const QPoint& corner) const;

    void Add(const StampMark& mark);
    // Keeps what the ink's source gives for this tile. No tile may be blended meanwhile.
    void ReadSource(const StrokeBackdrop& backdrop);
    // Brings the layer up to date. The pixels are those of the layer's upper left corner, its stride is in
    // pixels.
    void Blend(QRgb* layer, qsizetype stride);

private:
    struct Row
    {
        // Columns that are covered fully, and those that are to be blended anew; both from left up to right.
        int fullLeft = 0;
        int fullRight = 0;
        int dirtyLeft = 0;
        int dirtyRight = 0;

        void Dirty(int left, int right);
        void Full(int left, int right);
    };

    void addRow(const StrokeStamp& stamp, const StrokeStamp::Row& row, int shift, int y,
                const StampMark& mark);
    void addValues(int y, int left, int right, const quint16* values, const StampMark& mark);
    void addSolid(int y, int left, int right, const StampMark& mark);
    void cover(int y, int left, int right, const quint16* values, quint16 strength);
    void paint(int y, int left, int right, const quint16* values, const StampMark& mark);
    void save(const QRgb* layer, qsizetype stride);
    void blendRow(int y, int left, int count, QRgb* layer) const;
    void fillSource(int y, int left, int count, QRgb* source) const;
    void fillStampColors(int y, int left, int count, QRgb* source) const;
    void fillPattern(int y, int left, int count, QRgb* pixels) const;
    bool fillAlpha(int y, int left, int count, uchar* alpha) const;
    void clearUnselected(int y, int left, int count, uchar* coverage) const;
    void close();

    QRect m_rect;
    const StrokeInk& m_ink;
    QImage m_before;
    // What the source gave; null where that cannot be used.
    QImage m_source;
    bool m_sourceRead = false;
    // One value a pixel, or blue, green, red and alpha with stamp colours. Empty until a stamp reaches the
    // tile.
    std::vector<quint16> m_values;
    std::vector<Row> m_rows;
    bool m_closed = false;
};
