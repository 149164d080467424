#include "PatternTiles_p.h"

#include <QCoreApplication>
#include <QVector>
#include <QtMath>
#include <cmath>

namespace
{

const int Side = 64;

struct Shade
{
    double red = 0;
    double green = 0;
    double blue = 0;
};

Shade gray(double value)
{
    return {value, value, value};
}

Shade blend(const Shade& a, const Shade& b, double t)
{
    return {a.red + (b.red - a.red) * t, a.green + (b.green - a.green) * t, a.blue + (b.blue - a.blue) * t};
}

double fraction(double value)
{
    return value - std::floor(value);
}

int wrapped(int value, int period)
{
    const int rest = value % period;
    return rest < 0 ? rest + period : rest;
}

double smooth(double low, double high, double value)
{
    const double t = qBound(0.0, (value - low) / (high - low), 1.0);
    return t * t * (3 - 2 * t);
}

// 0 to 1, of a grid point.
double hashed(int x, int y, int seed)
{
    quint32 h = quint32(x) * 374761393u + quint32(y) * 668265263u + quint32(seed) * 2246822519u;
    h = (h ^ (h >> 13)) * 1274126177u;
    return ((h ^ (h >> 16)) & 0xffffff) / 16777215.0;
}

// Smooth noise from 0 to 1 with cells across and cells down the tile; u and v run from 0 to 1 over it.
double noise(double u, double v, int across, int down, int seed)
{
    const double x = u * across;
    const double y = v * down;
    const int x0 = qFloor(x);
    const int y0 = qFloor(y);
    const double fx = smooth(0, 1, x - x0);
    const double fy = smooth(0, 1, y - y0);
    const auto at = [&](int i, int j)
    { return hashed(wrapped(x0 + i, across), wrapped(y0 + j, down), seed); };
    const double top = at(0, 0) + (at(1, 0) - at(0, 0)) * fx;
    const double bottom = at(0, 1) + (at(1, 1) - at(0, 1)) * fx;
    return top + (bottom - top) * fy;
}

double layeredNoise(double u, double v, int cells, int seed)
{
    return (noise(u, v, cells, cells, seed) * 4 + noise(u, v, cells * 2, cells * 2, seed + 1) * 2 +
            noise(u, v, cells * 4, cells * 4, seed + 2)) /
        7;
}

// Distance to the nearest and the second nearest of one point a cell, in cells.
struct CellDistance
{
    double first = 9;
    double second = 9;
    double tone = 0;
};

CellDistance cellular(double u, double v, int cells, int seed)
{
    CellDistance found;
    const double x = u * cells;
    const double y = v * cells;
    for (int j = qFloor(y) - 1; j <= qFloor(y) + 1; ++j)
    {
        for (int i = qFloor(x) - 1; i <= qFloor(x) + 1; ++i)
        {
            const int ci = wrapped(i, cells);
            const int cj = wrapped(j, cells);
            const double dx = i + 0.15 + 0.7 * hashed(ci, cj, seed) - x;
            const double dy = j + 0.15 + 0.7 * hashed(ci, cj, seed + 1) - y;
            const double distance = std::hypot(dx, dy);
            if (distance < found.first)
                found = {distance, found.first, hashed(ci, cj, seed + 2)};
            else
                found.second = qMin(found.second, distance);
        }
    }
    return found;
}

Shade checker(double u, double v)
{
    return gray((qFloor(u * 4) + qFloor(v * 4)) % 2 ? 0.25 : 0.92);
}

Shade stripes(double u, double)
{
    return fraction(u * 4) < 0.5 ? gray(0.2) : gray(0.9);
}

Shade diagonal(double u, double v)
{
    return fraction((u + v) * 4) < 0.4 ? gray(0.25) : gray(0.93);
}

Shade crosshatch(double u, double v)
{
    const double line = qMin(qAbs(fraction((u + v) * 4) - 0.5), qAbs(fraction((u - v) * 4) - 0.5));
    return gray(line < 0.07 ? 0.2 : 0.95);
}

Shade dots(double u, double v)
{
    const int row = qFloor(v * 4);
    const double x = fraction(u * 4 + (row % 2) * 0.5) - 0.5;
    const double y = fraction(v * 4) - 0.5;
    return gray(std::hypot(x, y) < 0.28 ? 0.15 : 0.95);
}

Shade rings(double u, double v)
{
    const double distance = std::hypot(fraction(u * 2) - 0.5, fraction(v * 2) - 0.5);
    return gray(0.55 + 0.4 * std::cos(distance * 2 * M_PI * 5));
}

Shade plaid(double u, double v)
{
    const double across =
        smooth(0.35, 0.4, qAbs(fraction(u * 2) - 0.5)) * 0.5 + (fraction(u * 16) < 0.12 ? 0.3 : 0);
    const double down =
        smooth(0.35, 0.4, qAbs(fraction(v * 2) - 0.5)) * 0.5 + (fraction(v * 16) < 0.12 ? 0.3 : 0);
    return blend({0.85, 0.8, 0.7}, {0.35, 0.1, 0.15}, qMin(1.0, (across + down) * 0.8));
}

Shade bricks(double u, double v)
{
    const int row = qFloor(v * 8);
    const double along = u * 4 + (row % 2) * 0.5;
    const double x = fraction(along);
    const double y = fraction(v * 8);
    if (x < 0.06 || y < 0.12)
        return {0.82, 0.79, 0.74};
    const double tone = hashed(wrapped(qFloor(along), 4), row, 5);
    const Shade clay = blend({0.55, 0.24, 0.18}, {0.74, 0.38, 0.27}, tone);
    return blend(clay, {0.4, 0.18, 0.14}, 0.25 * noise(u, v, 32, 32, 6));
}

Shade canvasWeave(double u, double v)
{
    const double warp = std::sin(fraction(u * 16) * M_PI);
    const double weft = std::sin(fraction(v * 16) * M_PI);
    const bool over = (qFloor(u * 16) + qFloor(v * 16)) % 2;
    const double height = over ? warp * (0.6 + 0.4 * weft) : weft * (0.6 + 0.4 * warp);
    return blend({0.58, 0.54, 0.46}, {0.95, 0.92, 0.85}, height * 0.85 + 0.15 * noise(u, v, 32, 32, 9));
}

Shade basket(double u, double v)
{
    const bool across = (qFloor(u * 4) + qFloor(v * 4)) % 2;
    const double strand = fraction((across ? v : u) * 12);
    const double bend = std::sin(fraction((across ? u : v) * 4) * M_PI);
    const double light = std::sin(strand * M_PI) * (0.55 + 0.45 * bend);
    return blend({0.32, 0.2, 0.1}, {0.88, 0.7, 0.45}, light);
}

Shade hexagons(double u, double v)
{
    // Two grids of points make a grid of hexagons; a point belongs to the nearer one.
    const double x = u * 4;
    const double y = v * 4;
    const double ax = fraction(x) - 0.5;
    const double ay = fraction(y / 2) * 2 - 1;
    const double bx = fraction(x + 0.5) - 0.5;
    const double by = fraction(y / 2 + 0.5) * 2 - 1;
    const bool first = ax * ax + ay * ay * 0.75 < bx * bx + by * by * 0.75;
    const double px = qAbs(first ? ax : bx);
    const double py = qAbs(first ? ay : by) * 0.866;
    const double edge = 0.5 - qMax(px, px * 0.5 + py * 0.866);
    return blend({0.2, 0.22, 0.25}, {0.93, 0.78, 0.35}, smooth(0.02, 0.07, edge));
}

Shade triangles(double u, double v)
{
    const int row = qFloor(v * 4);
    const double y = fraction(v * 4);
    const double along = u * 4 + (row % 2) * 0.5;
    const double x = qAbs(fraction(along) - 0.5) * 2;
    const bool up = x < y;
    const int column = qFloor(up ? along : along + 0.5);
    const double tone = hashed(wrapped(column, 4), row * 2 + (up ? 1 : 0), 21);
    return blend({0.18, 0.36, 0.5}, {0.72, 0.88, 0.92}, tone);
}

Shade waves(double u, double v)
{
    const double height = fraction(v * 6 + 0.25 * std::sin(u * 4 * M_PI));
    return blend({0.1, 0.3, 0.55}, {0.85, 0.93, 0.98}, smooth(0.0, 0.9, height) * (height < 0.94 ? 1 : 0));
}

Shade zigzag(double u, double v)
{
    const double tooth = qAbs(fraction(u * 4) - 0.5);
    return fraction(v * 4 + tooth) < 0.5 ? gray(0.22) : gray(0.92);
}

Shade scales(double u, double v)
{
    // The lower rows lie over the upper ones, so the lowest scale that covers the point shows.
    const double x = u * 4;
    const double y = v * 8;
    for (int row = qFloor(y) + 1; row >= qFloor(y) - 1; --row)
    {
        const double dx = fraction(x + (wrapped(row, 2) ? 0.5 : 0.0)) - 0.5;
        const double dy = (y - row) * 0.5;
        const double distance = std::hypot(dx, dy);
        if (dy <= 0.5 && distance < 0.5 && row <= y)
            return blend({0.75, 0.92, 0.82}, {0.08, 0.36, 0.34}, smooth(0.1, 0.5, distance));
    }
    return {0.05, 0.28, 0.28};
}

Shade wood(double u, double v)
{
    const double bend = 0.22 * noise(u, v, 2, 4, 31) + 0.05 * noise(u, v, 4, 16, 32);
    const double ring = 0.5 + 0.5 * std::sin((v + bend) * 2 * M_PI * 6);
    const double grain = noise(u, v, 8, 64, 33);
    return blend({0.42, 0.26, 0.13}, {0.8, 0.6, 0.38}, 0.65 * ring + 0.35 * grain);
}

Shade marble(double u, double v)
{
    const double warp = layeredNoise(u, v, 4, 41);
    const double vein = qAbs(std::sin((u + v + warp * 0.9) * 2 * M_PI));
    return blend({0.45, 0.47, 0.52}, {0.96, 0.95, 0.93}, smooth(0.0, 0.45, vein) * 0.8 + 0.2 * warp);
}

Shade paper(double u, double v)
{
    return gray(0.72 + 0.28 * (0.6 * noise(u, v, 32, 32, 51) + 0.4 * noise(u, v, 64, 64, 52)));
}

Shade clouds(double u, double v)
{
    return blend({0.3, 0.5, 0.8}, {1, 1, 1}, smooth(0.3, 0.75, layeredNoise(u, v, 4, 61)));
}

Shade cobbles(double u, double v)
{
    const CellDistance cell = cellular(u, v, 5, 71);
    const double edge = cell.second - cell.first;
    const Shade stone = blend(gray(0.5), gray(0.82), 0.6 * cell.tone + 0.4 * (1 - cell.first));
    return blend(gray(0.16), stone, smooth(0.03, 0.2, edge));
}

Shade crackle(double u, double v)
{
    const CellDistance cell = cellular(u, v, 7, 81);
    return blend({0.3, 0.2, 0.14}, {0.86, 0.74, 0.58}, smooth(0.0, 0.09, cell.second - cell.first));
}

Shade diamonds(double u, double v)
{
    const double reach = qAbs(fraction(u * 4) - 0.5) + qAbs(fraction(v * 2) - 0.5);
    const double seam = qMin(qAbs(fraction(u * 4 + v * 2) - 0.25), qAbs(fraction(u * 4 - v * 2) - 0.25));
    const Shade cloth = reach < 0.5 ? Shade{0.42, 0.2, 0.36} : Shade{0.86, 0.76, 0.66};
    return seam < 0.02 ? Shade{0.98, 0.95, 0.9} : cloth;
}

Shade linen(double u, double v)
{
    const double warp = noise(u, v, 64, 4, 101);
    const double weft = noise(u, v, 4, 64, 102);
    return blend({0.6, 0.57, 0.5}, {0.97, 0.95, 0.9}, 0.5 * (warp + weft));
}

Shade grain(double u, double v)
{
    return gray(0.15 + 0.8 * noise(u, v, 64, 64, 91));
}

struct Tile
{
    const char* name;
    Shade (*shade)(double u, double v);
    // Samples along a pixel's side: more for sharp edges, fewer for what is blurred anyway.
    int samples;
};

const Tile Tiles[] = {
    {QT_TRANSLATE_NOOP("PatternTiles", "Checkerboard"), checker, 3},
    {QT_TRANSLATE_NOOP("PatternTiles", "Stripes"), stripes, 3},
    {QT_TRANSLATE_NOOP("PatternTiles", "Diagonal stripes"), diagonal, 3},
    {QT_TRANSLATE_NOOP("PatternTiles", "Crosshatch"), crosshatch, 3},
    {QT_TRANSLATE_NOOP("PatternTiles", "Dots"), dots, 3},
    {QT_TRANSLATE_NOOP("PatternTiles", "Rings"), rings, 2},
    {QT_TRANSLATE_NOOP("PatternTiles", "Zigzag"), zigzag, 3},
    {QT_TRANSLATE_NOOP("PatternTiles", "Waves"), waves, 2},
    {QT_TRANSLATE_NOOP("PatternTiles", "Hexagons"), hexagons, 3},
    {QT_TRANSLATE_NOOP("PatternTiles", "Triangles"), triangles, 3},
    {QT_TRANSLATE_NOOP("PatternTiles", "Scales"), scales, 3},
    {QT_TRANSLATE_NOOP("PatternTiles", "Plaid"), plaid, 2},
    {QT_TRANSLATE_NOOP("PatternTiles", "Diamonds"), diamonds, 3},
    {QT_TRANSLATE_NOOP("PatternTiles", "Bricks"), bricks, 2},
    {QT_TRANSLATE_NOOP("PatternTiles", "Cobbles"), cobbles, 2},
    {QT_TRANSLATE_NOOP("PatternTiles", "Crackle"), crackle, 2},
    {QT_TRANSLATE_NOOP("PatternTiles", "Canvas"), canvasWeave, 1},
    {QT_TRANSLATE_NOOP("PatternTiles", "Linen"), linen, 1},
    {QT_TRANSLATE_NOOP("PatternTiles", "Basket"), basket, 2},
    {QT_TRANSLATE_NOOP("PatternTiles", "Wood"), wood, 1},
    {QT_TRANSLATE_NOOP("PatternTiles", "Marble"), marble, 1},
    {QT_TRANSLATE_NOOP("PatternTiles", "Clouds"), clouds, 1},
    {QT_TRANSLATE_NOOP("PatternTiles", "Paper"), paper, 1},
    {QT_TRANSLATE_NOOP("PatternTiles", "Film grain"), grain, 1},
};

QRgb pixelOf(const Tile& tile, int x, int y)
{
    Shade sum;
    const int samples = tile.samples;
    for (int j = 0; j < samples; ++j)
    {
        for (int i = 0; i < samples; ++i)
        {
            const Shade shade =
                tile.shade((x + (i + 0.5) / samples) / Side, (y + (j + 0.5) / samples) / Side);
            sum = {sum.red + shade.red, sum.green + shade.green, sum.blue + shade.blue};
        }
    }
    const auto channel = [samples](double total)
    { return int(qBound(0.0, total / (samples * samples), 1.0) * 255 + 0.5); };
    return qRgb(channel(sum.red), channel(sum.green), channel(sum.blue));
}

QImage drawTile(const Tile& tile)
{
    QImage image(Side, Side, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < Side; ++y)
    {
        QRgb* const row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < Side; ++x)
            row[x] = pixelOf(tile, x, y);
    }
    return image;
}

} // namespace

int PatternTileCount()
{
    return int(sizeof Tiles / sizeof Tiles[0]);
}

QImage PatternTile(int index)
{
    static QVector<QImage> drawn(PatternTileCount());
    if (drawn[index].isNull())
        drawn[index] = drawTile(Tiles[index]);
    return drawn[index];
}

QString PatternTileName(int index)
{
    return QCoreApplication::translate("PatternTiles", Tiles[index].name);
}
