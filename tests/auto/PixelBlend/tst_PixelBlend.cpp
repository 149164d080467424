// The thirteen blend modes: by hand where a person can work them out, and against the toolkit's painter,
// which has formulas of its own.

#include <QPainter>
#include <QTest>

#include <algorithm>
#include <cmath>

#include "BlendMode.h"
#include "PixelBlend.h"
#include "TestMain.h"

namespace
{
const int TOLERANCE = 2;

QList<QRgb> SamplePixels()
{
    const int channels[] = {0, 1, 31, 63, 64, 65, 127, 128, 190, 254, 255};
    QList<QRgb> pixels;
    for (int alpha : {0, 1, 50, 128, 129, 200, 254, 255})
    {
        for (int i = 0; i < 11; ++i)
            pixels.append(qPremultiply(
                qRgba(channels[i], channels[(i * 3 + 5) % 11], channels[(i * 7 + 2) % 11], alpha)));
    }
    return pixels;
}

int LargestDifference(QRgb a, QRgb b)
{
    return std::max({qAbs(qRed(a) - qRed(b)), qAbs(qGreen(a) - qGreen(b)), qAbs(qBlue(a) - qBlue(b)),
                     qAbs(qAlpha(a) - qAlpha(b))});
}

// The mix of two straight colours, 0 to 1, as the modes are defined.
double MixColors(int mode, double s, double d)
{
    const double softTop = d <= 0.25 ? ((16 * d - 12) * d + 4) * d : std::sqrt(d);
    switch (mode)
    {
    case 1:
        return s * d;
    case 2:
        return 1 - (1 - s) * (1 - d);
    case 3:
        return d <= 0.5 ? s * 2 * d : 1 - 2 * (1 - s) * (1 - d);
    case 4:
        return std::abs(s - d);
    case 5:
        return s + d - 2 * s * d;
    case 6:
        return std::max(s, d);
    case 7:
        return std::min(s, d);
    case 8:
        return s <= 0.5 ? d - (1 - 2 * s) * d * (1 - d) : d + (2 * s - 1) * (softTop - d);
    case 9:
        return s <= 0.5 ? d * 2 * s : 1 - 2 * (1 - d) * (1 - s);
    case 10:
        return d == 0 ? 0 : s >= 1 ? 1 : std::min(1.0, d / (1 - s));
    case 11:
        return d >= 1 ? 1 : s == 0 ? 0 : 1 - std::min(1.0, (1 - d) / s);
    default:
        return s;
    }
}

int DefinedChannel(int mode, int s, int sa, int d, int da)
{
    if (mode == 12)
        return std::min(255, s + d);
    const double as = sa / 255.0;
    const double ab = da / 255.0;
    const double mixed = sa > 0 && da > 0 ? MixColors(mode, double(s) / sa, double(d) / da) : 0.0;
    return int(std::lround(s * (1 - ab) + d * (1 - as) + 255 * as * ab * mixed));
}

QRgb Defined(int mode, QRgb s, QRgb d)
{
    const int sa = qAlpha(s);
    const int da = qAlpha(d);
    const int alpha = mode == 12 ? std::min(255, sa + da) : int(std::lround(sa + da - sa * da / 255.0));
    return qRgba(DefinedChannel(mode, qRed(s), sa, qRed(d), da),
                 DefinedChannel(mode, qGreen(s), sa, qGreen(d), da),
                 DefinedChannel(mode, qBlue(s), sa, qBlue(d), da), alpha);
}

// The painter divides whole numbers by the alpha before it goes on in these modes: with translucent pixels it
// is far off at times.
bool IsPainterExact(int mode, QRgb source, QRgb backdrop)
{
    return (mode != 8 && mode != 10) || (qAlpha(source) == 255 && qAlpha(backdrop) == 255);
}

QString Name(QRgb pixel)
{
    return QStringLiteral("%1").arg(pixel, 8, 16, QLatin1Char('0'));
}

void AddModes()
{
    QTest::addColumn<int>("mode");
    const char* names[] = {"Normal",      "Multiply",       "Screen",        "Overlay",    "Difference",
                           "Exclusion",   "Lighten colors", "Darken colors", "Soft light", "Hard light",
                           "Color dodge", "Color burn",     "Addition"};
    for (int mode = 0; mode < 13; ++mode)
        QTest::newRow(names[mode]) << mode;
}
} // namespace

class tst_PixelBlend : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void agreesWithThePainter_data() { AddModes(); }
    void agreesWithThePainter();
    void agreesWithTheDefinition_data() { AddModes(); }
    void agreesWithTheDefinition();
    void givesTheValuesWorkedOutByHand_data();
    void givesTheValuesWorkedOutByHand();
    void aSourceWithoutAlphaLeavesTheBackdrop_data() { AddModes(); }
    void aSourceWithoutAlphaLeavesTheBackdrop();
    void noChannelExceedsItsAlpha_data() { AddModes(); }
    void noChannelExceedsItsAlpha();
    void anEmptyBackdropTakesTheSource_data() { AddModes(); }
    void anEmptyBackdropTakesTheSource();
    void aRunOfAnyLengthIsTheSameAsSinglePixels_data();
    void aRunOfAnyLengthIsTheSameAsSinglePixels();
    void theResultMayReplaceAnInput();
    void anUnknownModeIsNormal();
};

void tst_PixelBlend::agreesWithThePainter()
{
    QFETCH(int, mode);
    const QList<QRgb> pixels = SamplePixels();
    QImage source(pixels.size(), pixels.size(), QImage::Format_ARGB32_Premultiplied);
    QImage backdrop(source.size(), source.format());
    for (int y = 0; y < pixels.size(); ++y)
    {
        for (int x = 0; x < pixels.size(); ++x)
        {
            reinterpret_cast<QRgb*>(source.scanLine(y))[x] = pixels[x];
            reinterpret_cast<QRgb*>(backdrop.scanLine(y))[x] = pixels[y];
        }
    }

    QImage painted = backdrop;
    {
        QPainter painter(&painted);
        painter.setCompositionMode(ToCompositionMode(mode));
        painter.drawImage(0, 0, source);
    }

    for (int y = 0; y < pixels.size(); ++y)
    {
        for (int x = 0; x < pixels.size(); ++x)
        {
            if (!IsPainterExact(mode, pixels[x], pixels[y]))
                continue;
            const QRgb expected = reinterpret_cast<const QRgb*>(painted.constScanLine(y))[x];
            const QRgb actual = BlendPixel(mode, pixels[x], pixels[y]);
            QVERIFY2(LargestDifference(actual, expected) <= TOLERANCE,
                     qPrintable(QStringLiteral("%1 onto %2: %3 instead of %4")
                                    .arg(Name(pixels[x]), Name(pixels[y]), Name(actual), Name(expected))));
        }
    }
}

void tst_PixelBlend::agreesWithTheDefinition()
{
    QFETCH(int, mode);
    for (QRgb source : SamplePixels())
    {
        for (QRgb backdrop : SamplePixels())
        {
            const QRgb expected = Defined(mode, source, backdrop);
            const QRgb actual = BlendPixel(mode, source, backdrop);
            QVERIFY2(LargestDifference(actual, expected) <= 1,
                     qPrintable(QStringLiteral("%1 onto %2: %3 instead of %4")
                                    .arg(Name(source), Name(backdrop), Name(actual), Name(expected))));
        }
    }
}

void tst_PixelBlend::givesTheValuesWorkedOutByHand_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QRgb>("source");
    QTest::addColumn<QRgb>("backdrop");
    QTest::addColumn<QRgb>("expected");
    const QRgb s = qRgb(51, 102, 204);
    const QRgb d = qRgb(204, 51, 102);
    // 51 is one fifth, 102 two fifths, 204 four fifths of 255.
    QTest::newRow("Normal") << 0 << s << d << s;
    QTest::newRow("Normal, half over opaque") << 0 << qRgba(0, 0, 0, 51) << d << qRgb(163, 41, 82);
    QTest::newRow("Multiply: 4/25, 2/25, 8/25") << 1 << s << d << qRgb(41, 20, 82);
    QTest::newRow("Screen: 21/25, 13/25, 22/25") << 2 << s << d << qRgb(214, 133, 224);
    QTest::newRow("Overlay: 17/25, 4/25, 16/25") << 3 << s << d << qRgb(173, 41, 163);
    QTest::newRow("Difference") << 4 << s << d << qRgb(153, 51, 102);
    QTest::newRow("Exclusion: 17/25, 11/25, 14/25") << 5 << s << d << qRgb(173, 112, 143);
    QTest::newRow("Lighten") << 6 << s << d << qRgb(204, 102, 204);
    QTest::newRow("Darken") << 7 << s << d << qRgb(51, 51, 102);
    // 4/5 - 3/5 * 4/25; 1/5 - 1/5 * 4/25; 2/5 + 3/5 * (sqrt(2/5) - 2/5).
    QTest::newRow("Soft light") << 8 << s << d << qRgb(180, 43, 138);
    QTest::newRow("Hard light: 8/25, 4/25, 16/25 + 1/25 * 2") << 9 << s << d << qRgb(82, 41, 194);
    // 4/5 / (4/5) is 1; 1/5 / (3/5); 2/5 / (1/5) is more than 1.
    QTest::newRow("Color dodge") << 10 << s << d << qRgb(255, 85, 255);
    // 1 - (1/5) / (1/5) is 0; 1 - (4/5) / (2/5) is less; 1 - (3/5) / (4/5).
    QTest::newRow("Color burn") << 11 << s << d << qRgb(0, 0, 64);
    QTest::newRow("Addition") << 12 << s << d << qRgb(255, 153, 255);
    QTest::newRow("Color dodge of black stays black")
        << 10 << qRgb(255, 255, 255) << qRgb(0, 0, 0) << qRgb(0, 0, 0);
    QTest::newRow("Color burn of white stays white")
        << 11 << qRgb(0, 0, 0) << qRgb(255, 255, 255) << qRgb(255, 255, 255);
    QTest::newRow("Addition of alphas")
        << 12 << qRgba(10, 20, 30, 100) << qRgba(1, 2, 3, 50) << qRgba(11, 22, 33, 150);
    QTest::newRow("Multiply, both 1/5 opaque")
        << 1 << qRgba(51, 0, 0, 51) << qRgba(51, 51, 0, 51) << qRgba(92, 41, 0, 92);
}

void tst_PixelBlend::givesTheValuesWorkedOutByHand()
{
    QFETCH(int, mode);
    QFETCH(QRgb, source);
    QFETCH(QRgb, backdrop);
    QFETCH(QRgb, expected);

    const QRgb actual = BlendPixel(mode, source, backdrop);

    QVERIFY2(LargestDifference(actual, expected) <= 1,
             qPrintable(Name(actual) + QStringLiteral(" not ") + Name(expected)));
}

void tst_PixelBlend::aSourceWithoutAlphaLeavesTheBackdrop()
{
    QFETCH(int, mode);
    for (QRgb backdrop : SamplePixels())
        QCOMPARE(BlendPixel(mode, 0, backdrop), backdrop);
}

void tst_PixelBlend::noChannelExceedsItsAlpha()
{
    QFETCH(int, mode);
    const QList<QRgb> pixels = SamplePixels();
    for (QRgb source : pixels)
    {
        for (QRgb backdrop : pixels)
        {
            const QRgb result = BlendPixel(mode, source, backdrop);
            QVERIFY2(std::max({qRed(result), qGreen(result), qBlue(result)}) <= qAlpha(result),
                     qPrintable(Name(result)));
        }
    }
}

void tst_PixelBlend::anEmptyBackdropTakesTheSource()
{
    QFETCH(int, mode);
    for (QRgb source : SamplePixels())
        QCOMPARE(BlendPixel(mode, source, 0), source);
}

void tst_PixelBlend::aRunOfAnyLengthIsTheSameAsSinglePixels_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("count");
    for (int mode = 0; mode < 13; ++mode)
    {
        for (int count : {0, 1, 3, 17, 255, 256, 257, 1000})
            QTest::addRow("mode %d, %d pixels", mode, count) << mode << count;
    }
}

void tst_PixelBlend::aRunOfAnyLengthIsTheSameAsSinglePixels()
{
    QFETCH(int, mode);
    QFETCH(int, count);
    const QList<QRgb> pixels = SamplePixels();
    const QRgb untouched = 0x12345678;
    QVector<QRgb> source;
    QVector<QRgb> backdrop;
    for (int i = 0; i < count; ++i)
    {
        source.append(pixels[i % pixels.size()]);
        backdrop.append(pixels[(i * 13 + 7) % pixels.size()]);
    }
    QVector<QRgb> result(count + 1, untouched);

    BlendPixels(mode, source.constData(), backdrop.constData(), result.data(), count);

    for (int i = 0; i < count; ++i)
        QCOMPARE(result[i], BlendPixel(mode, source[i], backdrop[i]));
    QCOMPARE(result[count], untouched);
}

void tst_PixelBlend::theResultMayReplaceAnInput()
{
    const QRgb source = qRgba(20, 40, 60, 128);
    QVector<QRgb> pixels(300, qRgb(200, 100, 50));
    const QVector<QRgb> sources(300, source);

    BlendPixels(4, sources.constData(), pixels.constData(), pixels.data(), pixels.size());

    for (QRgb pixel : pixels)
        QCOMPARE(pixel, BlendPixel(4, source, qRgb(200, 100, 50)));
}

void tst_PixelBlend::anUnknownModeIsNormal()
{
    const QRgb source = qRgba(20, 40, 60, 128);
    const QRgb backdrop = qRgb(200, 100, 50);
    for (int mode : {-1, 13, 1 << 30})
        QCOMPARE(BlendPixel(mode, source, backdrop), BlendPixel(0, source, backdrop));
}

NV_TEST_MAIN(tst_PixelBlend)
#include "tst_PixelBlend.moc"
