#pragma once

#include <QFuture>
#include <QImage>
#include <array>

// How often each level comes up in an image.
struct LevelCounts
{
    using Table = std::array<qint32, 256>;

    Table red = {};
    Table green = {};
    Table blue = {};
    Table luminance = {};

    LevelCounts& operator+=(const LevelCounts& other);
};

// What is counted: the three colours, or what they look like without colour.
enum class LevelSource
{
    Colors,
    Luminance
};

// Counts rows of an ARGB32_Premultiplied image. A pixel counts by its colour without its opacity, and not at
// all if it is transparent.
LevelCounts CountLevels(const QImage& image, int firstRow, int rows, LevelSource source);

// Counts the whole image on all threads of the global pool; the results are to be added up. Cancelling it
// stops the work within a few milliseconds.
QFuture<LevelCounts> CountLevelsAside(const QImage& image, LevelSource source);
