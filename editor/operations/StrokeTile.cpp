#include "StrokeTile.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "PixelBlend.h"

namespace
{
const quint16 FULL = 65535;
const int CHANNELS = 4;

// a * b for fractions of 65536, rounded down.
inline quint16 Times(quint16 a, quint16 b)
{
    return quint16((quint32(a) * quint32(b)) >> 16);
}

// a * b for fractions of 255, rounded. All of it fits 16 bits, which lets the compiler take twice as many at
// a time.
inline uchar TimesByte(uchar a, uchar b)
{
    const quint16 product = quint16(a * b + 128);
    return uchar(quint16(product + (product >> 8)) >> 8);
}

// 0 to 65535 into 0 to 255, rounded; also right for values that are one too small by earlier rounding.
inline uchar ToByte(quint16 value)
{
    return uchar(quint16(value - (value >> 8) + 128) >> 8);
}

void Accumulate(quint16* coverage, const quint16* values, int count)
{
    for (int i = 0; i < count; ++i)
        coverage[i] = quint16(coverage[i] + Times(quint16(FULL - coverage[i]), values[i]));
}

// The value of each pixel four times in a row, beside the channels.
void Spread(const quint16* values, quint16 strength, int count, quint16* spread)
{
    std::array<quint64, StrokeTile::SIDE> wide;
    for (int i = 0; i < count; ++i)
    {
        quint64 value = Times(values[i], strength);
        value |= value << 16;
        wide[size_t(i)] = value | value << 32;
    }
    std::memcpy(spread, wide.data(), size_t(count) * sizeof(quint64));
}

// Lays a colour over the channels: what was there fades by the same part that is added.
void Overlay(quint16* channels, const quint16* values, const quint16* color, int count)
{
    for (int i = 0; i < count * CHANNELS; ++i)
        channels[i] = quint16(channels[i] - Times(channels[i], values[i]) + Times(color[i], values[i]));
}

std::array<quint16, CHANNELS> WideColor(QRgb color)
{
    std::array<uchar, CHANNELS> bytes;
    std::memcpy(bytes.data(), &color, sizeof(color));
    std::array<quint16, CHANNELS> wide;
    std::transform(bytes.begin(), bytes.end(), wide.begin(), [](uchar byte) { return quint16(byte * 257); });
    return wide;
}

void RepeatColor(QRgb color, int count, quint16* channels)
{
    const std::array<quint16, CHANNELS> wide = WideColor(color);
    for (int i = 0; i < count; ++i)
        std::copy(wide.begin(), wide.end(), channels + i * CHANNELS);
}

void MultiplyBytes(uchar* bytes, const uchar* factors, int count)
{
    for (int i = 0; i < count; ++i)
        bytes[i] = TimesByte(bytes[i], factors[i]);
}

using PixelRow = std::array<QRgb, StrokeTile::SIDE>;

// The byte of each pixel four times in a row, beside the channels.
void SpreadBytes(const uchar* bytes, int count, PixelRow& spread)
{
    for (int i = 0; i < count; ++i)
    {
        QRgb value = bytes[i];
        value |= value << 8;
        spread[size_t(i)] = value | value << 16;
    }
}

// Multiplies premultiplied pixels with one byte each.
void FadePixels(QRgb* pixels, const uchar* alpha, int count)
{
    PixelRow spread;
    SpreadBytes(alpha, count, spread);
    MultiplyBytes(reinterpret_cast<uchar*>(pixels), reinterpret_cast<const uchar*>(spread.data()),
                  count * CHANNELS);
}

// From one pixel to the other, by one byte each.
void MixPixels(const QRgb* from, const QRgb* to, const uchar* alpha, int count, QRgb* result)
{
    PixelRow spread;
    SpreadBytes(alpha, count, spread);
    const uchar* parts = reinterpret_cast<const uchar*>(spread.data());
    const uchar* fromBytes = reinterpret_cast<const uchar*>(from);
    const uchar* toBytes = reinterpret_cast<const uchar*>(to);
    uchar* bytes = reinterpret_cast<uchar*>(result);
    for (int i = 0; i < count * CHANNELS; ++i)
    {
        const quint16 sum = quint16(fromBytes[i] * (255 - parts[i]) + toBytes[i] * parts[i] + 128);
        bytes[i] = uchar(quint16(sum + (sum >> 8)) >> 8);
    }
}

bool SelectsNothing(const QImage& selection, const QRect& rect)
{
    const QRect inside = rect & selection.rect();
    for (int y = inside.top(); y <= inside.bottom(); ++y)
    {
        const uchar* row = selection.constScanLine(y) + inside.left();
        if (std::any_of(row, row + inside.width(), [](uchar value) { return value != 0; }))
            return false;
    }
    return true;
}
} // namespace

void StrokeTile::Row::Dirty(int left, int right)
{
    const bool clean = dirtyLeft >= dirtyRight;
    dirtyLeft = clean ? left : std::min(dirtyLeft, left);
    dirtyRight = clean ? right : std::max(dirtyRight, right);
}

// Keeps one run: the runs together where they touch, else the longer one.
void StrokeTile::Row::Full(int left, int right)
{
    if (left <= fullRight && right >= fullLeft && fullLeft < fullRight)
    {
        fullLeft = std::min(fullLeft, left);
        fullRight = std::max(fullRight, right);
    }
    else if (right - left > fullRight - fullLeft)
    {
        fullLeft = left;
        fullRight = right;
    }
}

StrokeTile::StrokeTile(const QRect& rect, const StrokeInk& ink) : m_rect(rect), m_ink(ink)
{
    m_closed = !ink.selection.isNull() && SelectsNothing(ink.selection, rect);
}

QRect StrokeTile::DirtyRect() const
{
    QRect dirty;
    for (int y = 0; y < int(m_rows.size()); ++y)
    {
        const Row& row = m_rows[size_t(y)];
        if (row.dirtyLeft < row.dirtyRight)
            dirty |=
                QRect(m_rect.left() + row.dirtyLeft, m_rect.top() + y, row.dirtyRight - row.dirtyLeft, 1);
    }
    return dirty;
}

qint64 StrokeTile::DirtyPixels() const
{
    qint64 pixels = 0;
    for (const Row& row : m_rows)
        pixels += row.dirtyRight - row.dirtyLeft;
    return pixels;
}

qint64 StrokeTile::BufferBytes() const
{
    const size_t bytes =
        sizeof(StrokeTile) + m_values.capacity() * sizeof(quint16) + m_rows.capacity() * sizeof(Row);
    return qint64(bytes) + m_source.sizeInBytes();
}

void StrokeTile::Add(const StampMark& mark)
{
    if (m_closed || mark.strength == 0)
        return;
    const StrokeStamp& stamp = *mark.placed.stamp;
    const QPoint shift = mark.placed.origin - m_rect.topLeft();
    const int first = std::max(0, shift.y());
    const int last = std::min(m_rect.height(), shift.y() + int(stamp.rows.size()));
    for (int y = first; y < last; ++y)
        addRow(stamp, stamp.rows[size_t(y - shift.y())], shift.x(), y, mark);
}

void StrokeTile::addRow(const StrokeStamp& stamp, const StrokeStamp::Row& row, int shift, int y,
                        const StampMark& mark)
{
    const auto inside = [this](int x) { return std::clamp(x, 0, m_rect.width()); };
    const int left = inside(row.left + shift);
    const int right = inside(row.right + shift);
    if (left >= right)
        return;
    if (m_values.empty())
    {
        m_values.assign(size_t(m_rect.width()) * size_t(m_rect.height()) * (m_ink.stampColors ? CHANNELS : 1),
                        0);
        m_rows.assign(size_t(m_rect.height()), Row());
    }
    const int solidLeft = inside(row.solidLeft + shift);
    const int solidRight = inside(row.solidRight + shift);
    const quint16* before = stamp.values.data() + row.values;
    const quint16* after = before + (row.solidLeft - row.left);
    if (left < solidLeft)
        addValues(y, left, solidLeft, before + (left - shift - row.left), mark);
    if (solidRight < right)
        addValues(y, solidRight, right, after + (solidRight - shift - row.solidRight), mark);
    if (solidLeft < solidRight)
        addSolid(y, solidLeft, solidRight, mark);
}

void StrokeTile::addValues(int y, int left, int right, const quint16* values, const StampMark& mark)
{
    if (m_ink.stampColors)
        return paint(y, left, right, values, mark);
    const Row& row = m_rows[size_t(y)];
    const int beforeEnd = std::min(right, std::max(left, row.fullLeft));
    const int afterStart = std::max(left, std::min(right, row.fullRight));
    if (row.fullLeft >= row.fullRight || row.fullRight <= left || row.fullLeft >= right)
        return cover(y, left, right, values, mark.strength);
    if (left < beforeEnd)
        cover(y, left, beforeEnd, values, mark.strength);
    if (afterStart < right)
        cover(y, afterStart, right, values + (afterStart - left), mark.strength);
}

void StrokeTile::addSolid(int y, int left, int right, const StampMark& mark)
{
    std::array<quint16, SIDE> solid;
    if (mark.strength != FULL || m_ink.stampColors)
    {
        std::fill_n(solid.begin(), right - left, FULL);
        return addValues(y, left, right, solid.data(), mark);
    }
    Row& row = m_rows[size_t(y)];
    if (row.fullLeft <= left && right <= row.fullRight)
        return;
    quint16* coverage = m_values.data() + size_t(y) * size_t(m_rect.width());
    std::fill(coverage + left, coverage + right, FULL);
    const bool joinsLeft = row.fullLeft <= left && left < row.fullRight;
    const bool joinsRight = row.fullLeft < right && right <= row.fullRight;
    row.Dirty(joinsLeft ? row.fullRight : left, joinsRight ? row.fullLeft : right);
    row.Full(left, right);
}

void StrokeTile::cover(int y, int left, int right, const quint16* values, quint16 strength)
{
    std::array<quint16, SIDE> weak;
    if (strength != FULL)
    {
        std::transform(values, values + (right - left), weak.begin(),
                       [strength](quint16 value) { return Times(value, strength); });
        values = weak.data();
    }
    Accumulate(m_values.data() + size_t(y) * size_t(m_rect.width()) + left, values, right - left);
    m_rows[size_t(y)].Dirty(left, right);
}

void StrokeTile::paint(int y, int left, int right, const quint16* values, const StampMark& mark)
{
    const int count = right - left;
    std::array<quint16, size_t(SIDE) * CHANNELS> spread;
    std::array<quint16, size_t(SIDE) * CHANNELS> color;
    quint16* channels = m_values.data() + (size_t(y) * size_t(m_rect.width()) + size_t(left)) * CHANNELS;
    RepeatColor(mark.color, count, color.data());
    const bool opaque =
        mark.strength == FULL && std::all_of(values, values + count, [](quint16 v) { return v == FULL; });
    if (opaque)
    {
        std::copy_n(color.begin(), count * CHANNELS, channels);
    }
    else
    {
        Spread(values, mark.strength, count, spread.data());
        Overlay(channels, spread.data(), color.data(), count);
    }
    m_rows[size_t(y)].Dirty(left, right);
}

bool StrokeTile::NeedsSource() const
{
    return m_ink.source && !m_sourceRead && DirtyPixels() > 0;
}

void StrokeTile::ReadSource(const StrokeBackdrop& backdrop)
{
    m_sourceRead = true;
    const QImage pixels = m_ink.source(backdrop, m_rect);
    if (pixels.size() == m_rect.size() && pixels.format() == QImage::Format_ARGB32_Premultiplied)
        m_source = pixels;
}

void StrokeTile::Blend(QRgb* layer, qsizetype stride)
{
    QRgb* corner = layer + m_rect.top() * stride + m_rect.left();
    for (int y = 0; y < int(m_rows.size()); ++y)
    {
        Row& row = m_rows[size_t(y)];
        const int count = row.dirtyRight - row.dirtyLeft;
        if (count <= 0)
            continue;
        if (m_before.isNull())
            save(corner, stride);
        blendRow(y, row.dirtyLeft, count, corner + y * stride + row.dirtyLeft);
        row.dirtyLeft = row.dirtyRight = 0;
    }
    close();
}

void StrokeTile::blendRow(int y, int left, int count, QRgb* layer) const
{
    std::array<QRgb, SIDE> source;
    std::array<uchar, SIDE> alpha;
    const QRgb* before = reinterpret_cast<const QRgb*>(m_before.constScanLine(y)) + left;
    const bool fades = fillAlpha(y, left, count, alpha.data());
    if (m_ink.erase)
    {
        std::transform(alpha.begin(), alpha.begin() + count, alpha.begin(),
                       [](uchar value) { return uchar(255 - value); });
        std::copy_n(before, count, source.begin());
        FadePixels(source.data(), alpha.data(), count);
        std::copy_n(source.begin(), count, layer);
        return;
    }
    fillSource(y, left, count, source.data());
    if (m_ink.sourceReplaces && m_ink.blendMode == 0 && !m_source.isNull())
        return MixPixels(before, source.data(), alpha.data(), count, layer);
    if (fades)
        FadePixels(source.data(), alpha.data(), count);
    BlendPixels(m_ink.blendMode, source.data(), before, layer, count);
}

void StrokeTile::save(const QRgb* layer, qsizetype stride)
{
    m_before = QImage(m_rect.size(), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < m_rect.height(); ++y)
        std::memcpy(m_before.scanLine(y), layer + y * stride, size_t(m_rect.width()) * sizeof(QRgb));
}

void StrokeTile::fillSource(int y, int left, int count, QRgb* source) const
{
    if (m_ink.stampColors)
        fillStampColors(y, left, count, source);
    else if (!m_source.isNull())
        std::copy_n(reinterpret_cast<const QRgb*>(m_source.constScanLine(y)) + left, count, source);
    else if (m_ink.pattern.isNull())
        std::fill_n(source, count, m_ink.source ? 0 : m_ink.color);
    else
        fillPattern(y, left, count, source);
}

void StrokeTile::fillStampColors(int y, int left, int count, QRgb* source) const
{
    const quint16* channels =
        m_values.data() + (size_t(y) * size_t(m_rect.width()) + size_t(left)) * CHANNELS;
    uchar* bytes = reinterpret_cast<uchar*>(source);
    for (int i = 0; i < count * CHANNELS; ++i)
        bytes[i] = ToByte(channels[i]);
    if (m_ink.pattern.isNull())
        return;
    std::array<QRgb, SIDE> factors;
    fillPattern(y, left, count, factors.data());
    MultiplyBytes(bytes, reinterpret_cast<const uchar*>(factors.data()), count * CHANNELS);
}

void StrokeTile::fillPattern(int y, int left, int count, QRgb* pixels) const
{
    const QImage& pattern = m_ink.pattern;
    const QRgb* row =
        reinterpret_cast<const QRgb*>(pattern.constScanLine((m_rect.top() + y) % pattern.height()));
    int x = (m_rect.left() + left) % pattern.width();
    for (int done = 0; done < count;)
    {
        const int run = std::min(count - done, pattern.width() - x);
        std::copy_n(row + x, run, pixels + done);
        done += run;
        x = 0;
    }
}

// What the source is to be multiplied by. False when that is 255 everywhere.
bool StrokeTile::fillAlpha(int y, int left, int count, uchar* alpha) const
{
    const bool selected = !m_ink.selection.isNull();
    if (m_ink.stampColors && m_ink.opacity == FULL && !selected)
        return false;
    if (m_ink.stampColors)
    {
        std::fill_n(alpha, count, ToByte(m_ink.opacity));
    }
    else
    {
        const quint16* coverage = m_values.data() + size_t(y) * size_t(m_rect.width()) + size_t(left);
        for (int i = 0; i < count; ++i)
            alpha[i] = ToByte(Times(coverage[i], m_ink.opacity));
    }
    if (!selected)
        return true;
    const QRect row = QRect(m_rect.left() + left, m_rect.top() + y, count, 1);
    const int inside = (row & m_ink.selection.rect()).width();
    if (inside > 0)
        MultiplyBytes(alpha, m_ink.selection.constScanLine(row.top()) + row.left(), inside);
    std::fill(alpha + std::max(0, inside), alpha + count, uchar(0));
    return true;
}

void StrokeTile::WriteCoverage(QImage& coverage, const QPoint& corner) const
{
    const QRect part = m_rect & QRect(corner, coverage.size());
    if (part.isEmpty() || m_before.isNull())
        return;
    const int left = part.left() - m_rect.left();
    for (int y = part.top() - m_rect.top(); y <= part.bottom() - m_rect.top(); ++y)
    {
        uchar* row = coverage.scanLine(m_rect.top() + y - corner.y()) + part.left() - corner.x();
        if (m_closed)
        {
            std::fill_n(row, part.width(), uchar(255));
        }
        else
        {
            const quint16* values = m_values.data() + size_t(y) * size_t(m_rect.width()) + size_t(left);
            std::transform(values, values + part.width(), row,
                           [](quint16 value) { return ToByte(Times(value, FULL)); });
        }
        clearUnselected(y, left, part.width(), row);
    }
}

void StrokeTile::clearUnselected(int y, int left, int count, uchar* coverage) const
{
    if (m_ink.selection.isNull())
        return;
    const QRect row = QRect(m_rect.left() + left, m_rect.top() + y, count, 1);
    const int inside = std::max(0, (row & m_ink.selection.rect()).width());
    if (inside > 0)
    {
        const uchar* selected = m_ink.selection.constScanLine(row.top()) + row.left();
        std::transform(coverage, coverage + inside, selected, coverage,
                       [](uchar value, uchar part) { return part == 0 ? uchar(0) : value; });
    }
    std::fill(coverage + inside, coverage + count, uchar(0));
}

// A tile that is covered all over stays as it is: it needs its coverage no more.
void StrokeTile::close()
{
    const int width = m_rect.width();
    const bool full = !m_rows.empty() &&
        std::all_of(m_rows.begin(), m_rows.end(),
                    [width](const Row& row) { return row.fullLeft == 0 && row.fullRight == width; });
    if (!full)
        return;
    m_closed = true;
    m_source = QImage();
    m_values = std::vector<quint16>();
    m_rows = std::vector<Row>();
}
