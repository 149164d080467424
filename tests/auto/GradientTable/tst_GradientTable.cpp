// The colours of a gradient: hard edges, mixing and dithering, as they come out on a layer.

#include "GradientTable.h"

#include <cmath>

#include <QtTest>

#include "GradientFill.h"
#include "TestMain.h"

namespace
{

const QGradientStops BlackToWhite = {{0.0, Qt::black}, {1.0, Qt::white}};

QImage Layer(const QSize& size = QSize(300, 100), QRgb color = 0)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    return image;
}

GradientSettings Settings(const QPointF& start, const QPointF& end, int type = GradientSettings::Linear)
{
    GradientSettings settings;
    settings.type = type;
    settings.start = start;
    settings.end = end;
    settings.stops = BlackToWhite;
    return settings;
}

QImage Drawn(const GradientSettings& settings, QImage layer = Layer())
{
    DrawGradient(layer, settings, nullptr);
    return layer;
}

// Dithering leaves a pixel at one of the two levels next to its value.
bool IsNear(const QImage& image, int x, int y, double value)
{
    return std::abs(qRed(image.pixel(x, y)) - value) <= 1.0;
}

} // namespace

class tst_GradientTable : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hardEdgesStayHard()
    {
        GradientSettings settings = Settings({0, 0}, {200, 0});
        settings.stops = {{0.0, Qt::red},   {0.25, Qt::red},    {0.25, Qt::yellow}, {0.25, Qt::green},
                          {0.5, Qt::green}, {0.505, Qt::white}, {0.505, Qt::blue},  {1.0, Qt::blue}};
        const QImage image = Drawn(settings);

        for (int x = 0; x < 50; ++x)
            QCOMPARE(image.pixel(x, 7), QColor(Qt::red).rgb());
        for (int x = 50; x < 100; ++x)
            QCOMPARE(image.pixel(x, 7), QColor(Qt::green).rgb());
        for (int x = 101; x < 300; ++x)
            QCOMPARE(image.pixel(x, 7), QColor(Qt::blue).rgb());
        const QRgb steep = image.pixel(100, 7);
        QVERIFY(qRed(steep) > 120 && qRed(steep) < 134);
    }

    void ofStopsAtTheEndsTheOuterOnesGoOn()
    {
        GradientSettings settings = Settings({100, 0}, {200, 0});
        settings.stops = {{0.0, Qt::red}, {0.0, Qt::black}, {1.0, Qt::black}, {1.0, Qt::green}};
        const QImage image = Drawn(settings);

        QCOMPARE(image.pixel(99, 3), QColor(Qt::red).rgb());
        QCOMPARE(image.pixel(100, 3), QColor(Qt::black).rgb());
        QCOMPARE(image.pixel(199, 3), QColor(Qt::black).rgb());
        QCOMPARE(image.pixel(200, 3), QColor(Qt::green).rgb());
    }

    void stopsNeedNotReachTheEnds()
    {
        GradientSettings settings = Settings({0, 0}, {200, 0});
        settings.stops = {{0.5, Qt::black}, {0.75, Qt::white}};
        const QImage image = Drawn(settings);

        QCOMPARE(image.pixel(99, 3), QColor(Qt::black).rgb());
        QVERIFY(IsNear(image, 124, 3, 255 * 24.5 / 50));
        QCOMPARE(image.pixel(151, 3), QColor(Qt::white).rgb());
    }

    void aSingleStopIsOneColour()
    {
        GradientSettings settings = Settings({0, 0}, {200, 0});
        settings.stops = {{0.5, Qt::green}};

        QCOMPARE(Drawn(settings), Layer(QSize(300, 100), QColor(Qt::green).rgb()));
    }

    void coloursAreMixedPremultiplied()
    {
        GradientSettings settings = Settings({0, 0}, {200, 0});
        settings.stops = {{0.0, QColor(255, 0, 0, 255)}, {1.0, QColor(0, 255, 0, 0)}};
        const QImage image = Drawn(settings);

        const QRgb middle = image.pixel(100, 3);
        QCOMPARE(qGreen(middle), 0);
        QVERIFY(qAbs(qRed(middle) - 127) <= 1);
        QCOMPARE(qAlpha(middle), qRed(middle));
    }

    void longGradientsAreDitheredByLessThanALevel()
    {
        GradientSettings settings = Settings({0, 0}, {2000, 0});
        settings.stops = {{0.0, QColor(100, 100, 100)}, {1.0, QColor(104, 104, 104)}};
        const QImage image = Drawn(settings, Layer(QSize(2000, 8)));

        // A quarter of the way to the next level a quarter of the pixels are there.
        for (int x : {120, 620, 1120, 1624})
        {
            double sum = 0;
            for (int y = 0; y < 8; ++y)
            {
                for (int i = 0; i < 8; ++i)
                {
                    QVERIFY(IsNear(image, x + i, y, 100 + 4 * (x + i + 0.5) / 2000));
                    sum += qRed(image.pixel(x + i, y));
                }
            }
            QVERIFY(std::abs(sum / 64 - (100 + 4 * (x + 4.0) / 2000)) < 0.05);
        }
    }

    void stopsCloserThanNumbersTellAreAHardEdge()
    {
        GradientSettings settings = Settings({0, 0}, {200, 0});
        settings.stops = {{0.0, Qt::red}, {0.5, Qt::red}, {0.5 + 1e-12, Qt::blue}, {1.0, Qt::blue}};
        const QImage image = Drawn(settings);

        QCOMPARE(image.pixel(99, 3), QColor(Qt::red).rgb());
        QCOMPARE(image.pixel(100, 3), QColor(Qt::blue).rgb());
    }

    void manyStopsAreAllFound()
    {
        QGradientStops stops;
        for (int i = 0; i < 5000; ++i)
        {
            const QColor color((i * 7) % 256, (i * 13) % 256, i % 256);
            stops.append({i / 5000.0, color});
            stops.append({(i + 1) / 5000.0, color});
        }
        const GradientTable table(stops, false, 1.0, true);

        for (int i = 0; i < 5000; ++i)
        {
            const float place = (float(i) + 0.5f) / 5000;
            QRgb pixel = 0;
            table.Fill(&place, &pixel, 1, i, 0);
            QCOMPARE(pixel, stops.at(2 * i).second.rgb());
        }
    }

    void withoutOutsideTheSentinelsAreClear()
    {
        const GradientTable table(BlackToWhite, false, 1.0, false);
        const float places[] = {BEFORE_START, 0.0f, 1.0f, BEYOND_END};
        QRgb pixels[4];

        table.Fill(places, pixels, 4, 0, 0);

        QCOMPARE(pixels[0], 0u);
        QCOMPARE(pixels[1], qRgb(0, 0, 0));
        QCOMPARE(pixels[2], qRgb(255, 255, 255));
        QCOMPARE(pixels[3], 0u);
    }

    void noChannelExceedsTheAlpha()
    {
        const QGradientStops stops = {{0.0, QColor(255, 255, 255, 0)}, {1.0, QColor(255, 254, 253, 255)}};
        const GradientTable table(stops, false, 0.37, true);
        for (int i = 0; i < 20000; ++i)
        {
            const float place = float(i) / 20000;
            QRgb pixel = 0;
            table.Fill(&place, &pixel, 1, i % 8, i / 8);
            QVERIFY(qRed(pixel) <= qAlpha(pixel) && qGreen(pixel) <= qAlpha(pixel) &&
                    qBlue(pixel) <= qAlpha(pixel));
        }
    }
};

NV_TEST_MAIN(tst_GradientTable)
#include "tst_GradientTable.moc"
