#pragma once

#include <functional>

#include <QImage>
#include <QPoint>
#include <QRect>

// The layer as it was before the stroke that is changing it.
class StrokeBackdrop
{
public:
    virtual ~StrokeBackdrop() = default;

    // Of the layer, whose upper left corner is at 0, 0.
    virtual QRect Rect() const = 0;
    // ARGB32_Premultiplied, transparent outside the layer. May be called from several threads at once.
    virtual QImage Copy(const QRect& area) const = 0;
};

// What a stroke paints with instead of a colour: gives the pixels for an area of the layer, as large as it,
// ARGB32_Premultiplied. Called once for each area that the stroke touches, from several threads at once, and
// with nothing to go by but its arguments and what it holds itself.
using StrokeSource = std::function<QImage(const StrokeBackdrop& backdrop, const QRect& area)>;

// A source whose pixels do not lie over those of the layer in blend mode Normal but take their place, opacity
// included. For pictures that are made from the layer itself, which would grow more opaque otherwise.
struct ReplacingSource
{
    StrokeSource pixels;

    QImage operator()(const StrokeBackdrop& backdrop, const QRect& area) const
    {
        return pixels(backdrop, area);
    }
};

enum class ToneRange
{
    Shadows,
    Midtones,
    Highlights
};

// The sampled image is what is read instead of the layer: as large as the layer, ARGB32_Premultiplied; null
// for the layer itself. Blur and dodge are replacing sources.

// The picture from elsewhere: the pixel at p comes from p + offset, and is transparent outside, where nothing
// is painted then.
StrokeSource MakeCloneSource(const QPoint& offset, const QImage& sampled = QImage());
// The picture blurred by a Gaussian, whose sigma is in pixels, 0.3 to 50. What lies beyond the edge counts as
// the pixel at the edge. Transparent pixels do not darken their neighbours.
StrokeSource MakeBlurSource(double sigma, const QImage& sampled = QImage());
// The picture brightened, most in the range; the exposure in percent, 0 to 100, 0 changes nothing. The
// opacity of the pixels stays.
StrokeSource MakeDodgeSource(ToneRange range, double exposure);
