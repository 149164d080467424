// Gradients on a layer: each type by known pixels, each option, the saved tiles, and the preview.

#include "GradientFill.h"

#include <cmath>
#include <limits>
#include <thread>

#include <QtTest>

#include "PixelBlend.h"
#include "TestMain.h"

Q_DECLARE_METATYPE(GradientSettings)

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

int LargestDifference(const QImage& one, const QImage& other)
{
    int largest = one.size() == other.size() ? 0 : 256;
    for (int y = 0; largest < 256 && y < one.height(); ++y)
    {
        const uchar* first = one.constScanLine(y);
        const uchar* second = other.constScanLine(y);
        for (int i = 0; i < 4 * one.width(); ++i)
            largest = qMax(largest, qAbs(int(first[i]) - int(second[i])));
    }
    return largest;
}

// Something of everything, on a place that is not whole.
GradientSettings Rich(int type)
{
    GradientSettings settings = Settings(QPointF(71.3, 30.9), QPointF(222.8, 77.1), type);
    settings.stops = {{0.1, QColor(250, 200, 30)},
                      {0.4, QColor(200, 20, 80, 90)},
                      {0.4, QColor(20, 20, 80)},
                      {0.9, QColor(20, 220, 180, 0)}};
    settings.repeatCount = 3;
    settings.pingPong = true;
    settings.opacity = 80;
    return settings;
}

QImage Busy(const QSize& size)
{
    QImage image = Layer(size);
    for (int y = 0; y < size.height(); ++y)
    {
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y,
                           qPremultiply(qRgba((x * 7) & 255, (y * 5) & 255, (x * y) & 255, (x + y) & 255)));
    }
    return image;
}

} // namespace

class tst_GradientFill : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void linearRunsFromStartToEnd()
    {
        const QImage image = Drawn(Settings({50, 10}, {250, 10}));

        for (int x = 50; x < 250; ++x)
            QVERIFY2(IsNear(image, x, x % 100, 255 * (x + 0.5 - 50) / 200), qPrintable(QString::number(x)));
        QCOMPARE(image.pixel(20, 50), qRgb(0, 0, 0));
        QCOMPARE(image.pixel(280, 50), qRgb(255, 255, 255));
    }

    void linearMayBeTurned()
    {
        const QImage image = Drawn(Settings({0, 0}, {100, 100}));

        QVERIFY(IsNear(image, 0, 99, 127.5));
        QVERIFY(IsNear(image, 99, 0, 127.5));
        QVERIFY(IsNear(image, 49, 49, 126.2));
        QVERIFY(IsNear(image, 24, 24, 62.5));
    }

    void circularHasCirclesAboutTheStart()
    {
        const QImage image = Drawn(Settings({150.5, 50.5}, {150.5, 90.5}, GradientSettings::Circular));

        QCOMPARE(image.pixel(150, 50), qRgb(0, 0, 0));
        for (const QPoint& way : {QPoint(20, 0), QPoint(-20, 0), QPoint(0, 20), QPoint(12, -16)})
            QVERIFY(IsNear(image, 150 + way.x(), 50 + way.y(), 127.5));
        QCOMPARE(image.pixel(191, 50), qRgb(255, 255, 255));
    }

    void diamondHasItsCornerAtTheEnd()
    {
        const QImage image = Drawn(Settings({150.5, 50.5}, {190.5, 50.5}, GradientSettings::Diamond));

        for (const QPoint& way : {QPoint(20, 0), QPoint(0, -20), QPoint(-10, 10), QPoint(5, -15)})
            QVERIFY(IsNear(image, 150 + way.x(), 50 + way.y(), 127.5));
        QVERIFY(IsNear(image, 170, 70, 255));
        QCOMPARE(image.pixel(191, 50), qRgb(255, 255, 255));
    }

    void angleTurnsClockwiseFromTheEnd()
    {
        const QImage image = Drawn(Settings({150.5, 50.5}, {190.5, 50.5}, GradientSettings::Angle));

        QCOMPARE(image.pixel(190, 50), qRgb(0, 0, 0));
        QVERIFY(IsNear(image, 170, 70, 255 / 8.0));
        QVERIFY(IsNear(image, 150, 90, 255 / 4.0));
        QVERIFY(IsNear(image, 120, 50, 255 / 2.0));
        QVERIFY(IsNear(image, 150, 10, 255 * 0.75));
        QVERIFY(IsNear(image, 299, 49, 254.3));
    }

    void angleFollowsTheArcTangent()
    {
        const QImage image = Drawn(Settings({150, 50}, {170, 35}, GradientSettings::Angle));
        const double first = std::atan2(-15.0, 20.0);

        for (int y = 0; y < 100; y += 3)
        {
            for (int x = 0; x < 300; x += 3)
            {
                double turn = (std::atan2(y + 0.5 - 50, x + 0.5 - 150) - first) / (2 * M_PI);
                turn -= std::floor(turn);
                QVERIFY(IsNear(image, x, y, 255 * turn));
            }
        }
    }

    void anUnknownTypeIsLinear()
    {
        QCOMPARE(Drawn(Settings({50, 10}, {250, 10}, 17)), Drawn(Settings({50, 10}, {250, 10})));
    }

    void repetitionsBeginAnew()
    {
        GradientSettings settings = Settings({0, 0}, {200, 0});
        settings.repeatCount = 4;
        const QImage image = Drawn(settings);

        for (int x : {10, 60, 110, 160})
            QVERIFY(IsNear(image, x, 5, 255 * 10.5 / 50));
        QVERIFY(qRed(image.pixel(49, 5)) > 250);
        QVERIFY(qRed(image.pixel(50, 5)) < 5);
        QCOMPARE(image.pixel(220, 5), qRgb(255, 255, 255));
    }

    void pingPongSwingsBack()
    {
        GradientSettings settings = Settings({0, 0}, {200, 0});
        settings.repeatCount = 4;
        settings.pingPong = true;
        const QImage image = Drawn(settings);

        QVERIFY(IsNear(image, 10, 5, 255 * 10.5 / 50));
        QVERIFY(IsNear(image, 60, 5, 255 * (1 - 10.5 / 50)));
        QVERIFY(IsNear(image, 110, 5, 255 * 10.5 / 50));
        QVERIFY(qRed(image.pixel(49, 5)) > 250 && qRed(image.pixel(50, 5)) > 250);
        QCOMPARE(image.pixel(220, 5), qRgb(0, 0, 0));
    }

    void reverseRunsBackwards()
    {
        GradientSettings settings = Settings({50, 10}, {250, 10});
        settings.stops = {{0.0, Qt::black}, {0.25, Qt::red}, {1.0, Qt::white}};
        settings.reverse = true;
        const QImage image = Drawn(settings);
        settings.reverse = false;
        settings.stops = {{0.0, Qt::white}, {0.75, Qt::red}, {1.0, Qt::black}};

        QCOMPARE(image, Drawn(settings));
    }

    void withoutOutsideNothingIsDrawnBeyondTheEnds_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QPoint>("beyond");
        QTest::newRow("linear, before") << int(GradientSettings::Linear) << QPoint(149, 50);
        QTest::newRow("linear, behind") << int(GradientSettings::Linear) << QPoint(200, 50);
        QTest::newRow("circular") << int(GradientSettings::Circular) << QPoint(190, 85);
        QTest::newRow("diamond") << int(GradientSettings::Diamond) << QPoint(180, 75);
    }
    void withoutOutsideNothingIsDrawnBeyondTheEnds()
    {
        QFETCH(int, type);
        QFETCH(QPoint, beyond);
        GradientSettings settings = Settings({150, 50}, {200, 50}, type);

        QCOMPARE(qAlpha(Drawn(settings).pixel(beyond)), 255);
        settings.outside = false;
        QCOMPARE(Drawn(settings).pixel(beyond), 0u);
        QCOMPARE(qAlpha(Drawn(settings).pixel(170, 50)), 255);
    }

    void anAngleHasNoOutside()
    {
        GradientSettings settings = Settings({150, 50}, {200, 50}, GradientSettings::Angle);
        const QImage with = Drawn(settings);
        settings.outside = false;

        QCOMPARE(Drawn(settings), with);
    }

    void thePlaceAloneDecides()
    {
        const GradientSettings settings = Rich(GradientSettings::Circular);
        const QImage large = Drawn(settings, Layer(QSize(600, 300)));

        QCOMPARE(Drawn(settings, Layer(QSize(300, 100))), large.copy(0, 0, 300, 100));
    }

    void theOpacityFades()
    {
        GradientSettings settings = Settings({0, 0}, {200, 0});
        settings.stops = {{0.0, Qt::white}, {1.0, Qt::white}};
        settings.opacity = 40;
        const QImage image = Drawn(settings, Layer(QSize(300, 100), qRgb(0, 0, 0)));

        QCOMPARE(image.pixel(30, 30), qRgb(102, 102, 102));
        settings.opacity = 0;
        QVERIFY(DrawGradient(*std::make_unique<QImage>(Layer()), settings, nullptr).isEmpty());
        settings.opacity = 4711;
        QCOMPARE(Drawn(settings).pixel(30, 30), qRgb(255, 255, 255));
    }

    void theBlendModeIsThatOfPixels_data()
    {
        QTest::addColumn<int>("mode");
        for (int mode = 0; mode < 13; ++mode)
            QTest::addRow("%d", mode) << mode;
    }
    void theBlendModeIsThatOfPixels()
    {
        QFETCH(int, mode);
        GradientSettings settings = Settings({0, 0}, {200, 0});
        settings.stops = {{0.0, QColor(180, 90, 30)}, {1.0, QColor(180, 90, 30)}};
        settings.blendMode = mode;
        const QRgb below = qPremultiply(qRgba(60, 100, 120, 200));

        const QImage image = Drawn(settings, Layer(QSize(300, 100), below));

        QCOMPARE(image.pixel(5, 5), BlendPixel(mode, qRgb(180, 90, 30), below));
    }

    void onlyTheSelectionIsDrawnOn()
    {
        GradientSettings settings = Settings({0, 0}, {300, 0});
        settings.stops = {{0.0, Qt::white}};
        settings.selection = QImage(300, 100, QImage::Format_Grayscale8);
        settings.selection.fill(0);
        for (int y = 20; y < 40; ++y)
        {
            memset(settings.selection.scanLine(y) + 100, 255, 50);
            memset(settings.selection.scanLine(y) + 150, 128, 50);
        }
        const QImage image = Drawn(settings);

        QCOMPARE(image.pixel(120, 30), qRgb(255, 255, 255));
        QCOMPARE(qAlpha(image.pixel(170, 30)), 128);
        QCOMPARE(image.pixel(99, 30), 0u);
        QCOMPARE(image.pixel(200, 30), 0u);
        QCOMPARE(image.pixel(120, 40), 0u);
    }

    void whatCannotBeDrawnChangesNothing_data()
    {
        const double nan = std::numeric_limits<double>::quiet_NaN();
        const double infinity = std::numeric_limits<double>::infinity();
        QTest::addColumn<GradientSettings>("settings");
        GradientSettings good = Settings({0, 0}, {200, 0});
        const auto row = [&good](const char* name, const std::function<void(GradientSettings&)>& change)
        {
            GradientSettings bad = good;
            change(bad);
            QTest::newRow(name) << bad;
        };
        row("start is end", [](GradientSettings& it) { it.end = it.start; });
        row("no stops", [](GradientSettings& it) { it.stops.clear(); });
        row("start not finite", [nan](GradientSettings& it) { it.start = {nan, 0}; });
        row("end not finite", [infinity](GradientSettings& it) { it.end = {0, infinity}; });
        row("too far for numbers", [](GradientSettings& it) { it.end = {1e300, 1e300}; });
        row("too near for numbers", [](GradientSettings& it) { it.end = {1e-300, 0}; });
        row("stop not finite", [nan](GradientSettings& it) { it.stops[0].first = nan; });
        row("opacity not finite", [nan](GradientSettings& it) { it.opacity = nan; });
        row("selection of another size",
            [](GradientSettings& it) { it.selection = QImage(3, 3, QImage::Format_Grayscale8); });
        row("selection of another format",
            [](GradientSettings& it) { it.selection = QImage(300, 100, QImage::Format_RGB32); });
    }
    void whatCannotBeDrawnChangesNothing()
    {
        QFETCH(GradientSettings, settings);
        QImage layer = Layer(QSize(300, 100), qRgb(1, 2, 3));

        QVERIFY(DrawGradient(layer, settings, nullptr).isEmpty());
        QCOMPARE(layer, Layer(QSize(300, 100), qRgb(1, 2, 3)));
    }

    void hostileNumbersDoNoHarm()
    {
        GradientSettings settings = Settings({-1e9, 1e12}, {1e9, -1e12});
        settings.repeatCount = 2000000000;
        settings.stops = {{-5.0, Qt::red}, {0.7, Qt::green}, {0.2, Qt::blue}, {1e300, Qt::white}};
        for (int type = -1; type < 5; ++type)
        {
            settings.type = type;
            for (const QRgb pixel : {Drawn(settings).pixel(0, 0), Drawn(settings).pixel(299, 99)})
                QCOMPARE(qAlpha(pixel), 255);
        }
        settings.repeatCount = -3;
        settings.blendMode = 99;
        QCOMPARE(qAlpha(Drawn(settings).pixel(4, 4)), 255);
        QImage other(20, 20, QImage::Format_RGB32);
        QVERIFY(DrawGradient(other, settings, nullptr).isEmpty());
        QImage none;
        QVERIFY(DrawGradient(none, settings, nullptr).isEmpty());
    }

    void undoAndRedoAreExact()
    {
        const QImage before = Busy(QSize(700, 530));
        QImage layer = before;

        QVector<SavedTile> tiles = DrawGradient(layer, Rich(GradientSettings::Diamond), nullptr);
        const QImage after = layer.copy();

        QVERIFY(after != before);
        ExchangeTiles(layer, tiles);
        QCOMPARE(layer, before);
        ExchangeTiles(layer, tiles);
        QCOMPARE(layer, after);
    }

    void onlyTilesThatChangeAreKept()
    {
        GradientSettings settings = Settings({300, 300}, {400, 300}, GradientSettings::Circular);
        settings.outside = false;
        QImage layer = Layer(QSize(1024, 1024));

        const QVector<SavedTile> tiles = DrawGradient(layer, settings, nullptr);

        QCOMPARE(tiles.size(), 4);
        for (const SavedTile& tile : tiles)
        {
            QVERIFY(tile.rect.left() < 512 && tile.rect.top() < 512);
            QCOMPARE(tile.before, Layer(QSize(256, 256)));
        }
    }

    void theProgressEndsAtAHundred()
    {
        GradientProgress progress;
        QImage layer = Layer(QSize(700, 530));

        DrawGradient(layer, Settings({0, 0}, {200, 0}), &progress);

        QCOMPARE(progress.percent.load(), 100);
    }

    void aCancelBeforeTheStartChangesNothing()
    {
        GradientProgress progress;
        progress.cancelled = true;
        QImage layer = Busy(QSize(700, 530));

        QVERIFY(DrawGradient(layer, Settings({0, 0}, {200, 0}), &progress).isEmpty());
        QCOMPARE(layer, Busy(QSize(700, 530)));
    }

    void aCancelOnTheWayBringsTheLayerBack()
    {
        const QImage before = Busy(QSize(3000, 2000));
        QImage layer = before;
        GradientProgress progress;
        std::thread canceller(
            [&progress]
            {
                while (progress.percent == 0)
                    std::this_thread::yield();
                progress.cancelled = true;
            });

        const QVector<SavedTile> tiles = DrawGradient(layer, Rich(GradientSettings::Angle), &progress);
        canceller.join();

        QVERIFY(tiles.isEmpty());
        QVERIFY(progress.percent > 0 && progress.percent < 100);
        QCOMPARE(layer, before);
    }

    void thePreviewAtScaleOneIsTheDrawing_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QPoint>("corner");
        for (int type = 0; type < 4; ++type)
        {
            QTest::addRow("type %d", type) << type << QPoint(0, 0);
            QTest::addRow("type %d, a piece", type) << type << QPoint(37, 21);
        }
    }
    void thePreviewAtScaleOneIsTheDrawing()
    {
        QFETCH(int, type);
        QFETCH(QPoint, corner);
        const QSize size(300, 140);
        GradientSettings settings = Rich(type);
        settings.selection = QImage(size, QImage::Format_Grayscale8);
        for (int y = 0; y < size.height(); ++y)
        {
            for (int x = 0; x < size.width(); ++x)
                settings.selection.scanLine(y)[x] = uchar(qMin(255, x + y));
        }
        settings.blendMode = 3;
        const QRect rect(corner, QSize(200, 90));
        QImage picture = Busy(size).copy(rect);

        DrawGradientPreview(picture, QTransform::fromTranslate(corner.x(), corner.y()), settings);

        const int difference = LargestDifference(picture, Drawn(settings, Busy(size)).copy(rect));
        QVERIFY2(difference <= 1, qPrintable(QString::number(difference)));
    }

    void aPreviewIsScaledAsTheViewIs()
    {
        const QGradientStops edge = {{0.0, Qt::red}, {0.5, Qt::red}, {0.5, Qt::blue}, {1.0, Qt::blue}};
        GradientSettings settings = Settings({100, 0}, {500, 0});
        settings.stops = edge;
        QImage picture = Layer(QSize(100, 10));

        DrawGradientPreview(picture, QTransform(4, 0, 0, 4, 200, 0), settings);

        QCOMPARE(picture.pixel(24, 5), QColor(Qt::red).rgb());
        QCOMPARE(picture.pixel(25, 5), QColor(Qt::blue).rgb());
    }

    void aPreviewLooksTheSelectionUpInTheLayer()
    {
        GradientSettings settings = Settings({0, 0}, {10, 0});
        settings.stops = {{0.0, Qt::white}};
        settings.selection = QImage(400, 400, QImage::Format_Grayscale8);
        settings.selection.fill(0);
        memset(settings.selection.scanLine(202) + 240, 255, 8);
        QImage picture = Layer(QSize(100, 100));

        DrawGradientPreview(picture, QTransform(4, 0, 0, 4, 200, 200), settings);

        QCOMPARE(picture.pixel(10, 0), qRgb(255, 255, 255));
        QCOMPARE(picture.pixel(11, 0), qRgb(255, 255, 255));
        QCOMPARE(picture.pixel(9, 0), 0u);
        QCOMPARE(picture.pixel(10, 1), 0u);
        QCOMPARE(picture.pixel(90, 90), 0u);
    }

    void aPreviewThatCannotBeDrawnChangesNothing()
    {
        QImage picture = Layer(QSize(100, 100));
        DrawGradientPreview(picture, QTransform(), Settings({5, 5}, {5, 5}));
        QCOMPARE(picture, Layer(QSize(100, 100)));

        QTransform perspective;
        perspective.setMatrix(1, 0, 0.1, 0, 1, 0, 0, 0, 1);
        DrawGradientPreview(picture, perspective, Settings({5, 5}, {50, 5}));
        DrawGradientPreview(picture, QTransform(std::nan(""), 0, 0, 1, 0, 0), Settings({5, 5}, {50, 5}));
        QCOMPARE(picture, Layer(QSize(100, 100)));

        QImage none;
        DrawGradientPreview(none, QTransform(), Settings({5, 5}, {50, 5}));
        QVERIFY(none.isNull());
    }
};

NV_TEST_MAIN(tst_GradientFill)
#include "tst_GradientFill.moc"
