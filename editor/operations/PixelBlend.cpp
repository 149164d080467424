#include "PixelBlend.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace
{
// Pixels are worked on in blocks that stay in the nearest cache, channel by channel with the alpha of its
// pixel beside each channel, so that the compiler can take many channels at a time.
const int BLOCK = 256;
const int CHANNELS = 4;

using ChannelBlock = std::array<unsigned char, BLOCK * CHANNELS>;

// x / 255, rounded, for 0 to 255 * 255. All of it fits 16 bits, which lets the compiler take more channels at
// a time.
inline int DivBy255(int x)
{
    const unsigned short y = static_cast<unsigned short>(x + 128);
    return static_cast<unsigned short>(y + (y >> 8)) >> 8;
}

// The part of either colour that lies where the other one is transparent, times 255.
inline int Uncovered(int s, int d, int sa, int da)
{
    return s * (255 - da) + d * (255 - sa);
}

struct Block
{
    ChannelBlock source;
    ChannelBlock backdrop;
    ChannelBlock sourceAlpha;
    ChannelBlock backdropAlpha;
    ChannelBlock result;
    int count = 0;

    void Load(const QRgb* sourcePixels, const QRgb* backdropPixels, int pixels)
    {
        count = pixels;
        std::memcpy(source.data(), sourcePixels, size_t(pixels) * sizeof(QRgb));
        std::memcpy(backdrop.data(), backdropPixels, size_t(pixels) * sizeof(QRgb));
        SpreadAlpha(sourcePixels, sourceAlpha, pixels);
        SpreadAlpha(backdropPixels, backdropAlpha, pixels);
    }

    static void SpreadAlpha(const QRgb* pixels, ChannelBlock& alpha, int count)
    {
        std::array<QRgb, BLOCK> spread;
        for (int i = 0; i < count; ++i)
        {
            QRgb value = pixels[i] >> 24;
            value |= value << 8;
            spread[size_t(i)] = value | value << 16;
        }
        std::memcpy(alpha.data(), spread.data(), size_t(count) * sizeof(QRgb));
    }

    template <typename Formula>
    void Mix(Formula formula)
    {
        const size_t end = size_t(count) * CHANNELS;
        for (size_t i = 0; i < end; ++i)
        {
            const int value =
                formula(int(source[i]), int(backdrop[i]), int(sourceAlpha[i]), int(backdropAlpha[i]));
            result[i] = static_cast<unsigned char>(value);
        }
    }

    // For formulas that divide; the shared part, the rounding and the limit are the same for all of them.
    template <typename Formula>
    void MixFloat(Formula formula)
    {
        const size_t end = size_t(count) * CHANNELS;
        for (size_t i = 0; i < end; ++i)
        {
            const float s = float(source[i]);
            const float d = float(backdrop[i]);
            const float sa = float(sourceAlpha[i]);
            const float da = float(backdropAlpha[i]);
            const float sum = formula(s, d, sa, da) + s * (255.0f - da) + d * (255.0f - sa);
            const float alpha = sa + da - sa * da * (1.0f / 255.0f);
            const float value = std::min(sum * (1.0f / 255.0f), alpha) + 0.5f;
            result[i] = static_cast<unsigned char>(int(value));
        }
    }

    // For formulas that would not give the union of the alphas in the alpha channel.
    void UniteAlpha(QRgb* pixels) const
    {
        for (int i = 0; i < count; ++i)
        {
            const int sa = sourceAlpha[size_t(i) * CHANNELS];
            const int da = backdropAlpha[size_t(i) * CHANNELS];
            const QRgb alpha = QRgb(sa + da - DivBy255(sa * da));
            pixels[i] = (pixels[i] & 0x00ffffffu) | alpha << 24;
        }
    }
};

// Keeps divisions by a vanishing channel finite; small enough that the limits below take over.
const float NEARLY_ZERO = 1.0f / 1024.0f;

inline float SoftLight(float s, float d, float sa, float da)
{
    const float m = d / std::max(da, NEARLY_ZERO);
    const float low = ((16.0f * m - 12.0f) * m + 4.0f) * m;
    const float lighter = (m <= 0.25f ? low : std::sqrt(m)) - m;
    const float darker = m * (1.0f - m);
    const float twice = 2.0f * s - sa;
    return d * sa + da * twice * (twice <= 0.0f ? darker : lighter);
}

inline float ColorDodge(float s, float d, float sa, float da)
{
    return std::min(sa * da, d * sa * sa / std::max(sa - s, NEARLY_ZERO));
}

inline float ColorBurn(float s, float d, float sa, float da)
{
    return sa * da - std::min(sa * da, (da - d) * sa * sa / std::max(s, NEARLY_ZERO));
}

inline int HardLight(int s, int d, int sa, int da)
{
    return 2 * s < sa ? 2 * s * d : sa * da - 2 * (da - d) * (sa - s);
}

void MixSimple(int blendMode, Block& block)
{
    switch (blendMode)
    {
    case 1:
        return block.Mix([](int s, int d, int sa, int da)
                         { return DivBy255(s * d + Uncovered(s, d, sa, da)); });
    case 2:
        return block.Mix([](int s, int d, int, int) { return DivBy255((s + d) * 255 - s * d); });
    case 4:
        return block.Mix([](int s, int d, int sa, int da)
                         { return DivBy255((s + d) * 255 - 2 * std::min(s * da, d * sa)); });
    case 5:
        return block.Mix([](int s, int d, int, int) { return DivBy255((s + d) * 255 - 2 * s * d); });
    case 12:
        return block.Mix([](int s, int d, int, int) { return std::min(s + d, 255); });
    default:
        return block.Mix([](int s, int d, int sa, int) { return s + DivBy255(d * (255 - sa)); });
    }
}

void MixComparing(int blendMode, Block& block)
{
    switch (blendMode)
    {
    case 3:
        return block.Mix([](int s, int d, int sa, int da)
                         { return DivBy255(HardLight(d, s, da, sa) + Uncovered(s, d, sa, da)); });
    case 6:
        return block.Mix([](int s, int d, int sa, int da)
                         { return DivBy255(std::max(s * da, d * sa) + Uncovered(s, d, sa, da)); });
    case 7:
        return block.Mix([](int s, int d, int sa, int da)
                         { return DivBy255(std::min(s * da, d * sa) + Uncovered(s, d, sa, da)); });
    default:
        return block.Mix([](int s, int d, int sa, int da)
                         { return DivBy255(HardLight(s, d, sa, da) + Uncovered(s, d, sa, da)); });
    }
}

void MixDividing(int blendMode, Block& block)
{
    switch (blendMode)
    {
    case 8:
        return block.MixFloat(SoftLight);
    case 10:
        return block.MixFloat(ColorDodge);
    default:
        return block.MixFloat(ColorBurn);
    }
}

void Mix(int blendMode, Block& block)
{
    switch (blendMode)
    {
    case 3:
    case 6:
    case 7:
    case 9:
        return MixComparing(blendMode, block);
    case 8:
    case 10:
    case 11:
        return MixDividing(blendMode, block);
    default:
        return MixSimple(blendMode, block);
    }
}

bool NeedsUnitedAlpha(int blendMode)
{
    return blendMode == 4 || blendMode == 5 || blendMode == 8 || blendMode == 10 || blendMode == 11;
}
} // namespace

void BlendPixels(int blendMode, const QRgb* source, const QRgb* backdrop, QRgb* result, int count)
{
    Block block;
    for (int done = 0; done < count; done += BLOCK)
    {
        block.Load(source + done, backdrop + done, std::min(BLOCK, count - done));
        Mix(blendMode, block);
        std::memcpy(result + done, block.result.data(), size_t(block.count) * sizeof(QRgb));
        if (NeedsUnitedAlpha(blendMode))
            block.UniteAlpha(result + done);
    }
}

QRgb BlendPixel(int blendMode, QRgb source, QRgb backdrop)
{
    QRgb result = 0;
    BlendPixels(blendMode, &source, &backdrop, &result, 1);
    return result;
}
