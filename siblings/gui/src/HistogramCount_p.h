#pragma once

#include <QFuture>
#include <QImage>
#include <QReadWriteLock>
#include <array>
#include <memory>

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

// An image that other threads count, until it is taken away from them: who changes it then pays for no copy.
class CountedImage
{
public:
    explicit CountedImage(const QImage& image);

    // Nothing when the image is gone.
    LevelCounts Count(int firstRow, int rows, LevelSource source);
    // Waits for the rows in work, a few milliseconds.
    void Drop();

    QSize GetSize() const;

private:
    const QSize m_size;
    QReadWriteLock m_lock;
    QImage m_image;
};

// Counts the whole image on all threads of the global pool; the results are to be added up. Cancelling it
// stops the work within a few milliseconds.
QFuture<LevelCounts> CountLevelsAside(const std::shared_ptr<CountedImage>& image, LevelSource source);
