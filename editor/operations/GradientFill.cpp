#include "GradientFill.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include "GradientTable.h"
#include "ParallelWork.h"
#include "PixelBlend.h"
#include "TileEdit.h"

namespace
{
const int CHUNK = 256;
const int BAND_ROWS = 32;
const int MAX_REPEAT = 1000;
// Far beyond any picture, and small enough to be squared.
const double FAR_AWAY = 1e15;

double SquareLength(const QPointF& way)
{
    return way.x() * way.x() + way.y() * way.y();
}

bool IsDrawable(const GradientSettings& settings)
{
    const auto isBad = [](const QGradientStop& stop) { return !std::isfinite(stop.first); };
    const double length = SquareLength(settings.end - settings.start);
    return !settings.stops.isEmpty() && std::none_of(settings.stops.cbegin(), settings.stops.cend(), isBad) &&
        std::isfinite(length) && length > 0.0 && std::isfinite(settings.opacity);
}

// A linear function of the place in a picture.
struct Plane
{
    double x = 0.0;
    double y = 0.0;
    double origin = 0.0;

    double At(double px, double py) const { return x * px + y * py + origin; }
};

// The part of a turn, 0 to 1, clockwise from the first direction. Within a ten millionth.
inline float TurnOf(float u, float v)
{
    const float across = std::abs(u);
    const float down = std::abs(v);
    const float q = std::min(across, down) / std::max(std::max(across, down), 1e-30f);
    const float z = q * q;
    float turn = -0.00578694230f + z * 0.00121727333f;
    turn = -0.0214029404f + z * (0.0132299859f + z * turn);
    turn = q * (0.159154820f + z * (-0.0530394639f + z * (0.0316273344f + z * turn)));
    turn = down > across ? 0.25f - turn : turn;
    turn = u < 0.0f ? 0.5f - turn : turn;
    return v < 0.0f ? 1.0f - turn : turn;
}

// Tells where pixels lie along the stops.
class Course
{
public:
    Course(const GradientSettings& settings, const QTransform& toLayer)
        : m_type(settings.type),
          m_repeat(float(std::clamp(settings.repeatCount, 1, MAX_REPEAT))),
          m_isPingPong(settings.pingPong)
    {
        const QPointF way = settings.end - settings.start;
        m_direction = way / SquareLength(way);
        // Measured from the start, so that what lies on the line is found there, and not beside it.
        m_right = {toLayer.m11(), toLayer.m21(), toLayer.dx() - settings.start.x()};
        m_down = {toLayer.m12(), toLayer.m22(), toLayer.dy() - settings.start.y()};
        m_right.origin += (m_right.x + m_right.y) / 2.0;
        m_down.origin += (m_down.x + m_down.y) / 2.0;
    }

    bool IsValid() const
    {
        return std::isfinite(m_right.x + m_right.y + m_right.origin + m_down.x + m_down.y + m_down.origin +
                             m_direction.x() + m_direction.y());
    }

    // For count pixels, at most a chunk, to the right from one.
    void Places(int x, int y, float* places, int count) const
    {
        std::array<float, CHUNK> u;
        std::array<float, CHUNK> v;
        for (int i = 0; i < count; ++i)
        {
            const double right = m_right.At(x + i, y);
            const double down = m_down.At(x + i, y);
            const double along = right * m_direction.x() + down * m_direction.y();
            const double across = down * m_direction.x() - right * m_direction.y();
            u[size_t(i)] = float(std::clamp(along, -FAR_AWAY, FAR_AWAY));
            v[size_t(i)] = float(std::clamp(across, -FAR_AWAY, FAR_AWAY));
        }
        Measure(u.data(), v.data(), places, count);
        Fold(places, count);
    }

private:
    void Measure(const float* u, const float* v, float* places, int count) const
    {
        switch (m_type)
        {
        case GradientSettings::Circular:
            for (int i = 0; i < count; ++i)
                places[i] = std::sqrt(u[i] * u[i] + v[i] * v[i]);
            break;
        case GradientSettings::Diamond:
            for (int i = 0; i < count; ++i)
                places[i] = std::abs(u[i]) + std::abs(v[i]);
            break;
        case GradientSettings::Angle:
            for (int i = 0; i < count; ++i)
                places[i] = TurnOf(u[i], v[i]);
            break;
        default:
            std::memcpy(places, u, size_t(count) * sizeof(float));
            break;
        }
    }

    // From the whole length to the run that the place lies in.
    void Fold(float* places, int count) const
    {
        const int lastRun = int(m_repeat) - 1;
        const int swinging = m_isPingPong ? 1 : 0;
        const float beyond = (lastRun & swinging) ? BEFORE_START : BEYOND_END;
        for (int i = 0; i < count; ++i)
        {
            const float place = places[i];
            const float runs = std::min(std::max(place, 0.0f), 1.0f) * m_repeat;
            const int run = std::min(int(runs), lastRun);
            float folded = runs - float(run);
            folded = (run & swinging) ? 1.0f - folded : folded;
            folded = place > 1.0f ? beyond : folded;
            places[i] = place < 0.0f ? BEFORE_START : folded;
        }
    }

    int m_type;
    float m_repeat;
    bool m_isPingPong;
    // Of the length of the way, along it.
    QPointF m_direction;
    Plane m_right;
    Plane m_down;
};

inline QRgb Scaled(QRgb color, uint weight)
{
    const auto part = [color, weight](int shift)
    {
        const uint value = ((color >> shift) & 255u) * weight + 128u;
        return ((value + (value >> 8)) >> 8) << shift;
    };
    return part(0) | part(8) | part(16) | part(24);
}

class Painter
{
public:
    Painter(const GradientSettings& settings, const QTransform& toLayer)
        : m_settings(settings),
          m_phase(int(std::clamp(toLayer.dx(), -1e9, 1e9)), int(std::clamp(toLayer.dy(), -1e9, 1e9))),
          m_column({toLayer.m11(), toLayer.m21(), toLayer.dx()}),
          m_row({toLayer.m12(), toLayer.m22(), toLayer.dy()}),
          m_course(settings, toLayer),
          m_table(settings.stops, settings.reverse, std::clamp(settings.opacity, 0.0, 100.0) / 100.0,
                  settings.outside)
    {
    }

    bool IsValid() const { return m_course.IsValid(); }

    // Count is at most a chunk.
    void Paint(int x, int y, const QRgb* before, QRgb* after, int count) const
    {
        std::array<float, CHUNK> places;
        std::array<QRgb, CHUNK> colors;
        m_course.Places(x, y, places.data(), count);
        m_table.Fill(places.data(), colors.data(), count, x + m_phase.x(), y + m_phase.y());
        if (!m_settings.selection.isNull())
            CutOut(x, y, colors.data(), count);
        BlendPixels(m_settings.blendMode, colors.data(), before, after, count);
    }

private:
    void CutOut(int x, int y, QRgb* colors, int count) const
    {
        const QImage& selection = m_settings.selection;
        for (int i = 0; i < count; ++i)
        {
            const double column = m_column.At(x + i + 0.5, y + 0.5);
            const double row = m_row.At(x + i + 0.5, y + 0.5);
            const bool isInside =
                column >= 0 && row >= 0 && column < selection.width() && row < selection.height();
            const uint weight = isInside ? selection.constScanLine(int(row))[int(column)] : 0;
            colors[i] = Scaled(colors[i], weight);
        }
    }

    const GradientSettings& m_settings;
    // Where the pattern of the dithering begins; that of the layer itself as long as nothing is scaled.
    QPoint m_phase;
    // The place in the layer.
    Plane m_column;
    Plane m_row;
    Course m_course;
    GradientTable m_table;
};

bool Fits(const QImage& selection, const QSize& size)
{
    return selection.isNull() ||
        (selection.size() == size && selection.format() == QImage::Format_Grayscale8);
}

class ProgressCount
{
public:
    ProgressCount(GradientProgress* progress, const QSize& size)
        : m_progress(progress), m_all(qint64(size.width()) * size.height())
    {
    }

    bool IsCancelled() const { return m_progress && m_progress->cancelled; }
    void Add(int pixels)
    {
        if (m_progress)
            m_progress->percent = int((m_done += pixels) * 100 / m_all);
    }

private:
    GradientProgress* m_progress;
    qint64 m_all;
    std::atomic<qint64> m_done{0};
};

void PaintBand(const Painter& painter, QRgb* corner, qsizetype stride, const QRect& band)
{
    for (int y = band.top(); y <= band.bottom(); ++y)
    {
        for (int x = 0; x < band.width(); x += CHUNK)
        {
            QRgb* pixels = corner + y * stride + x;
            painter.Paint(x, y, pixels, pixels, std::min(CHUNK, band.width() - x));
        }
    }
}
} // namespace

QVector<SavedTile> DrawGradient(QImage& layer, const GradientSettings& settings, GradientProgress* progress)
{
    if (!IsDrawable(settings) || !Fits(settings.selection, layer.size()))
        return {};
    const Painter painter(settings, QTransform());
    if (!painter.IsValid())
        return {};
    ProgressCount count(progress, layer.size());
    const auto edit = [&](const QPoint& start, const QRgb* before, QRgb* after, int pixels)
    {
        if (count.IsCancelled())
            return false;
        painter.Paint(start.x(), start.y(), before, after, pixels);
        count.Add(pixels);
        return true;
    };
    QVector<SavedTile> tiles = EditTiles(layer, layer.rect(), edit);
    if (!count.IsCancelled())
        return tiles;
    ExchangeTiles(layer, tiles);
    return {};
}

void DrawGradientPreview(QImage& picture, const QTransform& toLayer, const GradientSettings& settings)
{
    if (picture.format() != QImage::Format_ARGB32_Premultiplied || !toLayer.isAffine() ||
        !IsDrawable(settings) || !Fits(settings.selection, settings.selection.size()))
        return;
    const Painter painter(settings, toLayer);
    if (!painter.IsValid())
        return;
    QRgb* corner = reinterpret_cast<QRgb*>(picture.bits());
    const qsizetype stride = picture.bytesPerLine() / qsizetype(sizeof(QRgb));
    QVector<QRect> bands;
    for (int y = 0; y < picture.height(); y += BAND_ROWS)
        bands.append(QRect(0, y, picture.width(), BAND_ROWS) & picture.rect());
    ForEachParallel(bands, [&](const QRect& band) { PaintBand(painter, corner, stride, band); });
}
