#include "BrushStroke.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstring>
#include <iterator>

#include "ParallelWork.h"
#include "StrokeInk.h"
#include "StrokePath.h"
#include "StrokeTile.h"

namespace
{
// Stamps are taken in lots of about this many pixels: few enough to look at the clock often, and enough for a
// tile to stay in the cache for some stamps.
const qint64 LOT_PIXELS = 16 << 20;
const size_t LOT_STAMPS = 2048;
// Less work than this is not worth waking other threads for.
const qint64 WORTH_SHARING = 64 << 10;

double Clean(double value, double low, double high)
{
    return std::isfinite(value) ? std::clamp(value, low, high) : low;
}

StrokeSettings Cleaned(StrokeSettings settings)
{
    settings.size = Clean(settings.size, 1.0, 2500.0);
    settings.spacing = Clean(settings.spacing, 1.0, 1000.0);
    settings.opacity = Clean(settings.opacity, 0.0, 100.0);
    settings.tip.hardness = Clean(settings.tip.hardness, 0.0, 1.0);
    settings.tip.roundness = Clean(settings.tip.roundness, 0.05, 1.0);
    settings.tip.angle = std::isfinite(settings.tip.angle) ? std::fmod(settings.tip.angle, 360.0) : 0.0;
    if (settings.erase)
        settings.source = StrokeSource();
    if (settings.blendMode < 0 || settings.blendMode > 12)
        settings.blendMode = 0;
    if (!settings.pattern.isNull())
        settings.pattern = settings.pattern.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (!settings.selection.isNull())
        settings.selection = settings.selection.convertToFormat(QImage::Format_Grayscale8);
    return settings;
}

using TileList = std::vector<std::unique_ptr<StrokeTile>>;

// Reads each tile from what it keeps of the time before, and from the layer where it has not changed that
// yet.
class LayerBefore : public StrokeBackdrop
{
public:
    LayerBefore(const QImage& layer, const TileList& tiles, int columns)
        : m_layer(layer), m_tiles(tiles), m_columns(columns)
    {
    }

    QRect Rect() const override { return m_layer.rect(); }
    QImage Copy(const QRect& area) const override;

private:
    void copyPiece(int column, int row, QImage& copy, const QPoint& corner) const;

    const QImage& m_layer;
    const TileList& m_tiles;
    int m_columns;
};

QImage LayerBefore::Copy(const QRect& area) const
{
    QImage copy(area.size(), QImage::Format_ARGB32_Premultiplied);
    if (copy.isNull())
        return copy;
    const QRect inside = area & Rect();
    if (inside != area)
        copy.fill(0);
    if (inside.isEmpty())
        return copy;
    const int side = StrokeTile::SIDE;
    for (int row = inside.top() / side; row <= inside.bottom() / side; ++row)
    {
        for (int column = inside.left() / side; column <= inside.right() / side; ++column)
            copyPiece(column, row, copy, area.topLeft());
    }
    return copy;
}

void LayerBefore::copyPiece(int column, int row, QImage& copy, const QPoint& corner) const
{
    const int side = StrokeTile::SIDE;
    const StrokeTile* pTile = m_tiles[size_t(row) * size_t(m_columns) + size_t(column)].get();
    const bool saved = pTile && !pTile->Before().isNull();
    const QImage& picture = saved ? pTile->Before() : m_layer;
    const QPoint origin = saved ? pTile->Rect().topLeft() : QPoint();
    const QRect piece = QRect(column * side, row * side, side, side) & Rect() & QRect(corner, copy.size());
    for (int y = piece.top(); y <= piece.bottom(); ++y)
    {
        const QRgb* from = reinterpret_cast<const QRgb*>(picture.constScanLine(y - origin.y()));
        QRgb* to = reinterpret_cast<QRgb*>(copy.scanLine(y - corner.y()));
        std::memcpy(to + piece.left() - corner.x(), from + piece.left() - origin.x(),
                    size_t(piece.width()) * sizeof(QRgb));
    }
}

class Clock
{
public:
    double Nanoseconds() const
    {
        return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - m_start).count();
    }

private:
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
};
} // namespace

class BrushStroke::Private
{
public:
    explicit Private(const StrokeSettings& given)
        : settings(Cleaned(given)), colors(settings), ink(MakeStrokeInk(settings)), path(settings)
    {
    }

    // A tile with the stamps of the lot that reach it.
    struct TileWork
    {
        StrokeTile* pTile = nullptr;
        std::vector<size_t> marks;
    };

    bool Prepare(const QImage& layer);
    QRect Work(QImage& layer, double budget);
    qint64 TakeLot();
    void AssignMark(size_t index, const QRect& area);
    void AddLot(qint64 pixels);
    double BlendingTime() const;
    void ReadSources(const QImage& layer);
    QRect BlendDirty(QImage& layer);
    StrokeTile& TileAt(int column, int row);

    const StrokeSettings settings;
    const StrokeColors colors;
    const StrokeInk ink;
    StrokePath path;
    StampCache cache;

    QSize size;
    int columns = 0;
    TileList tiles;
    std::vector<StampMark> lot;
    std::vector<TileWork> work;
    // Per tile, one more than its place in work; 0 for none.
    std::vector<size_t> workOfTile;
    std::vector<StrokeTile*> dirty;

    // In nanoseconds, as measured so far: of a pixel, and of the source's answer for a tile.
    double blendCost = 3.0;
    double sourceCost = 0.0;
    QRect touched;
    qint64 stamps = 0;
    bool ended = false;
    bool over = false;
};

// Whether the layer is one that the stroke can go on with.
bool BrushStroke::Private::Prepare(const QImage& layer)
{
    if (over || layer.isNull() || layer.format() != QImage::Format_ARGB32_Premultiplied)
        return false;
    if (size.isEmpty())
    {
        size = layer.size();
        columns = (size.width() + StrokeTile::SIDE - 1) / StrokeTile::SIDE;
        const int rows = (size.height() + StrokeTile::SIDE - 1) / StrokeTile::SIDE;
        tiles.resize(size_t(columns) * size_t(rows));
        workOfTile.resize(tiles.size(), 0);
        path.SetBounds(layer.rect());
    }
    return layer.size() == size;
}

// Stamps until the budget, less what the blending will take, is used up; in nanoseconds, below 0 for no
// limit. Where the blending alone takes about as long as that, there are stamps for half its time still: one
// stamp at a time, each blended on its own, would fall far behind the pointer.
QRect BrushStroke::Private::Work(QImage& layer, double budget)
{
    const Clock clock;
    while (path.HasNext())
    {
        AddLot(TakeLot());
        if (budget < 0.0)
            continue;
        const double blending = BlendingTime();
        if (clock.Nanoseconds() > std::max(budget - blending, blending / 2.0))
            break;
    }
    return BlendDirty(layer);
}

// Gathers stamps, and the tiles that they reach; the number of pixels that lie under them.
qint64 BrushStroke::Private::TakeLot()
{
    lot.clear();
    work.clear();
    qint64 pixels = 0;
    StampPlan plan;
    while (pixels < LOT_PIXELS && lot.size() < LOT_STAMPS && path.Next(plan))
    {
        ++stamps;
        BrushTip tip = settings.tip;
        tip.hardness = plan.hardness;
        tip.angle = plan.angle;
        StampMark mark;
        mark.placed = cache.Get(tip, plan.diameter, plan.center);
        mark.strength =
            settings.dynamics.opacity ? quint16(std::lround(plan.pressure * 65535.0)) : quint16(65535);
        if (ink.stampColors)
            mark.color = colors.At(plan);
        const QSize stampSize(mark.placed.stamp->width, int(mark.placed.stamp->rows.size()));
        const QRect area = QRect(mark.placed.origin, stampSize) & QRect(QPoint(0, 0), size);
        if (area.isEmpty())
            continue;
        lot.push_back(std::move(mark));
        AssignMark(lot.size() - 1, area);
        pixels += qint64(area.width()) * area.height();
    }
    for (const TileWork& item : work)
        workOfTile[size_t(item.pTile->Rect().top() / StrokeTile::SIDE) * size_t(columns) +
                   size_t(item.pTile->Rect().left() / StrokeTile::SIDE)] = 0;
    return pixels;
}

void BrushStroke::Private::AssignMark(size_t index, const QRect& area)
{
    for (int row = area.top() / StrokeTile::SIDE; row <= area.bottom() / StrokeTile::SIDE; ++row)
    {
        for (int column = area.left() / StrokeTile::SIDE; column <= area.right() / StrokeTile::SIDE; ++column)
        {
            StrokeTile& tile = TileAt(column, row);
            if (tile.IsClosed())
                continue;
            size_t& place = workOfTile[size_t(row) * size_t(columns) + size_t(column)];
            if (place == 0)
            {
                work.push_back({&tile, {}});
                place = work.size();
            }
            work[place - 1].marks.push_back(index);
        }
    }
}

void BrushStroke::Private::AddLot(qint64 pixels)
{
    const auto add = [this](TileWork& item)
    {
        for (size_t index : item.marks)
            item.pTile->Add(lot[index]);
    };
    if (pixels > WORTH_SHARING && work.size() > 1)
        ForEachParallel(work, add);
    else
        std::for_each(work.begin(), work.end(), add);
    for (const TileWork& item : work)
        dirty.push_back(item.pTile);
    std::sort(dirty.begin(), dirty.end());
    dirty.erase(std::unique(dirty.begin(), dirty.end()), dirty.end());
}

// What bringing the layer up to date will take.
double BrushStroke::Private::BlendingTime() const
{
    double time = 0.0;
    for (const StrokeTile* pTile : dirty)
        time += double(pTile->DirtyPixels()) * blendCost + (pTile->NeedsSource() ? sourceCost : 0.0);
    return time;
}

// Nobody writes to the layer meanwhile, and what was written before stands in the tiles: the sources see the
// layer as it was before the stroke.
void BrushStroke::Private::ReadSources(const QImage& layer)
{
    std::vector<StrokeTile*> asking;
    std::copy_if(dirty.begin(), dirty.end(), std::back_inserter(asking),
                 [](const StrokeTile* pTile) { return pTile->NeedsSource(); });
    if (asking.empty())
        return;
    const Clock clock;
    const LayerBefore before(layer, tiles, columns);
    const auto read = [&before](StrokeTile* pTile) { pTile->ReadSource(before); };
    if (asking.size() > 1)
        ForEachParallel(asking, read);
    else
        read(asking.front());
    sourceCost = clock.Nanoseconds() / double(asking.size());
}

QRect BrushStroke::Private::BlendDirty(QImage& layer)
{
    QRect changed;
    qint64 pixels = 0;
    for (const StrokeTile* pTile : dirty)
    {
        changed |= pTile->DirtyRect();
        pixels += pTile->DirtyPixels();
    }
    if (pixels == 0)
    {
        dirty.clear();
        return QRect();
    }
    ReadSources(layer);
    const Clock clock;
    QRgb* corner = reinterpret_cast<QRgb*>(layer.bits());
    const qsizetype stride = layer.bytesPerLine() / qsizetype(sizeof(QRgb));
    const auto blend = [=](StrokeTile* pTile) { pTile->Blend(corner, stride); };
    if (pixels > WORTH_SHARING && dirty.size() > 1)
        ForEachParallel(dirty, blend);
    else
        std::for_each(dirty.begin(), dirty.end(), blend);
    dirty.clear();
    blendCost = (blendCost + clock.Nanoseconds() / double(pixels)) / 2.0;
    touched |= changed;
    return changed;
}

StrokeTile& BrushStroke::Private::TileAt(int column, int row)
{
    std::unique_ptr<StrokeTile>& tile = tiles[size_t(row) * size_t(columns) + size_t(column)];
    if (!tile)
    {
        const int side = StrokeTile::SIDE;
        const QRect rect(column * side, row * side, side, side);
        tile = std::make_unique<StrokeTile>(rect & QRect(QPoint(0, 0), size), ink);
    }
    return *tile;
}

BrushStroke::BrushStroke(const StrokeSettings& settings) : d(std::make_unique<Private>(settings)) { }

BrushStroke::~BrushStroke() = default;

bool BrushStroke::HasPending() const
{
    return d->path.HasNext();
}

QRect BrushStroke::TouchedRect() const
{
    return d->touched;
}

qint64 BrushStroke::StampCount() const
{
    return d->stamps;
}

qint64 BrushStroke::BufferBytes() const
{
    qint64 bytes = 0;
    for (const auto& tile : d->tiles)
        bytes += tile ? tile->BufferBytes() : 0;
    return bytes;
}

void BrushStroke::AddPoint(const StrokePoint& point)
{
    // An invisible stroke has nothing to do.
    if (!d->ended && d->ink.opacity > 0)
        d->path.AddPoint(point);
}

QRect BrushStroke::Advance(QImage& layer, int budgetMs)
{
    if (!d->Prepare(layer))
        return QRect();
    return d->Work(layer, std::max(0, budgetMs) * 1e6);
}

QRect BrushStroke::Finish(QImage& layer)
{
    if (!d->Prepare(layer))
        return QRect();
    d->ended = true;
    d->path.End();
    return d->Work(layer, -1.0);
}

QImage BrushStroke::Coverage() const
{
    if (d->ink.stampColors || d->over)
        return QImage();
    QImage coverage(d->touched.size(), QImage::Format_Grayscale8);
    coverage.fill(0);
    for (const auto& tile : d->tiles)
    {
        if (tile)
            tile->WriteCoverage(coverage, d->touched.topLeft());
    }
    return coverage;
}

QVector<SavedTile> BrushStroke::TakeSavedTiles()
{
    QVector<SavedTile> saved;
    for (auto& tile : d->tiles)
    {
        if (tile && !tile->Before().isNull())
            saved.append({tile->Rect(), tile->Before()});
    }
    d->ended = true;
    d->over = true;
    d->tiles.clear();
    return saved;
}
