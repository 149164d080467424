// Pixels that are like one of several colours: against a plain comparison with each, and what the preview
// shows of it.

#include "ColorRange.h"

#include <QRandomGenerator>

#include "TestMain.h"
#include "ToolHost.h"

namespace
{

int Channel(QRgb pixel, int channel)
{
    return int((pixel >> (8 * channel)) & 255);
}

QImage PlainMask(const QImage& picture, const ColorRangeSettings& settings)
{
    QImage mask(picture.size(), QImage::Format_Grayscale8);
    mask.fill(0);
    for (int y = 0; y < picture.height(); ++y)
    {
        for (int x = 0; x < picture.width(); ++x)
        {
            const QRgb pixel = reinterpret_cast<const QRgb*>(picture.constScanLine(y))[x];
            for (const QRgb color : settings.colors)
            {
                int difference = 0;
                for (int channel = 0; channel < 4; ++channel)
                    difference = qMax(difference, qAbs(Channel(pixel, channel) - Channel(color, channel)));
                const int coverage = ColorRangeCoverage(difference, settings.tolerance);
                mask.scanLine(y)[x] = uchar(qMax(int(mask.constScanLine(y)[x]), coverage));
            }
        }
    }
    return mask;
}

QRgb AnyPixel(QRandomGenerator& random, bool opaque)
{
    const int alpha = opaque ? 255 : random.bounded(256);
    return qPremultiply(qRgba(random.bounded(256), random.bounded(256), random.bounded(256), alpha));
}

// Half of it opaque.
QImage AnyPicture(QRandomGenerator& random, const QSize& size)
{
    QImage picture(size, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < size.height(); ++y)
    {
        for (int x = 0; x < size.width(); ++x)
            reinterpret_cast<QRgb*>(picture.scanLine(y))[x] = AnyPixel(random, x % 2 == 0);
    }
    return picture;
}

QImage MaskOf(const QSize& size, const QRect& selected)
{
    QImage mask(size, QImage::Format_Grayscale8);
    mask.fill(0);
    for (int y = selected.top(); y <= selected.bottom(); ++y)
        memset(mask.scanLine(y) + selected.left(), 255, size_t(selected.width()));
    return mask;
}

// Left half red, right half blue.
QImage TwoHalves(const QSize& size)
{
    QImage picture = PlainPicture(Qt::red, size);
    for (int y = 0; y < size.height(); ++y)
    {
        for (int x = size.width() / 2; x < size.width(); ++x)
            picture.setPixel(x, y, qRgb(0, 0, 255));
    }
    return picture;
}

} // namespace

class tst_ColorRange : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void coverageFallsOffBeyondHalfTheTolerance()
    {
        QCOMPARE(ColorRangeCoverage(0, 0), 255);
        QCOMPARE(ColorRangeCoverage(1, 0), 0);
        QCOMPARE(ColorRangeCoverage(20, 40), 255);
        QCOMPARE(ColorRangeCoverage(40, 40), 12);
        QCOMPARE(ColorRangeCoverage(41, 40), 0);
        QCOMPARE(ColorRangeCoverage(1, 1), 128);
        QCOMPARE(ColorRangeCoverage(2, 1), 0);
        QCOMPARE(ColorRangeCoverage(255, 255), 2);
        for (int tolerance = 0; tolerance < 256; ++tolerance)
        {
            for (int difference = 1; difference < 256; ++difference)
                QVERIFY(ColorRangeCoverage(difference, tolerance) <=
                        ColorRangeCoverage(difference - 1, tolerance));
        }
    }

    void itIsWhatAPlainComparisonGives_data()
    {
        QTest::addColumn<int>("colors");
        QTest::addColumn<int>("tolerance");
        for (const int colors : {1, 3, 40, 256})
        {
            for (const int tolerance : {0, 1, 2, 15, 16, 33, 100, 254, 255})
                QTest::addRow("%d colours, tolerance %d", colors, tolerance) << colors << tolerance;
        }
    }
    void itIsWhatAPlainComparisonGives()
    {
        QFETCH(int, colors);
        QFETCH(int, tolerance);
        QRandomGenerator random(quint32(colors * 1000 + tolerance));
        const QImage picture = AnyPicture(random, QSize(101, 150));
        ColorRangeSettings settings;
        settings.tolerance = tolerance;
        for (int i = 0; i < colors; ++i)
            settings.colors += AnyPixel(random, i % 3 != 0);
        // One that is there for sure.
        settings.colors += reinterpret_cast<const QRgb*>(picture.constScanLine(149))[100];

        QCOMPARE(ColorRangeMask(picture, settings), PlainMask(picture, settings));
    }

    void withNothingAlikeThereIsNoMask()
    {
        QVERIFY(ColorRangeMask(PlainPicture(Qt::red), {{qRgb(0, 0, 255)}, 30}).isNull());
        QVERIFY(ColorRangeMask(PlainPicture(Qt::red), {{}, 255}).isNull());
        QVERIFY(ColorRangeMask(QImage(), {{qRgb(0, 0, 255)}, 30}).isNull());
    }

    void theToleranceIsClamped()
    {
        const QImage picture = TwoHalves(QSize(4, 2));

        QCOMPARE(ColorRangeMask(picture, {{qRgb(255, 0, 0)}, -7}), MaskOf(QSize(4, 2), QRect(0, 0, 2, 2)));
        QCOMPARE(ColorRangeMask(picture, {{qRgb(255, 0, 0)}, 999}),
                 ColorRangeMask(picture, {{qRgb(255, 0, 0)}, 255}));
    }

    void whateverIsTransparentIsAlike()
    {
        QImage picture = PlainPicture(Qt::red, QSize(3, 1));
        picture.fill(Qt::transparent);
        picture.setPixelColor(2, 0, Qt::black);

        QCOMPARE(ColorRangeMask(picture, {{0}, 10}), MaskOf(QSize(3, 1), QRect(0, 0, 2, 1)));
    }

    void aCancelledOneGivesNothing()
    {
        const auto atOnce = [] { return true; };
        QVERIFY(ColorRangeMask(PlainPicture(Qt::red), {{qRgb(255, 0, 0)}, 0}, atOnce).isNull());

        std::atomic<int> asked{0};
        const auto later = [&asked] { return ++asked > 2; };
        QVERIFY(
            ColorRangeMask(PlainPicture(Qt::red, QSize(10, 2000)), {{qRgb(255, 0, 0)}, 0}, later).isNull());
        QVERIFY(asked < 10);
        QVERIFY(ColorRangePreview(PlainPicture(Qt::red), QImage(), {{qRgb(255, 0, 0)}, 0}, 1, QSize(20, 20),
                                  atOnce)
                    .isNull());
    }

    void thePreviewFitsTheRoom_data()
    {
        QTest::addColumn<QSize>("picture");
        QTest::addColumn<QSize>("room");
        QTest::addColumn<QSize>("size");
        QTest::newRow("wide") << QSize(300, 100) << QSize(60, 60) << QSize(60, 20);
        QTest::newRow("high") << QSize(100, 300) << QSize(60, 60) << QSize(20, 60);
        QTest::newRow("small picture") << QSize(2, 1) << QSize(60, 60) << QSize(60, 30);
        QTest::newRow("a line") << QSize(5000, 1) << QSize(60, 60) << QSize(60, 1);
    }
    void thePreviewFitsTheRoom()
    {
        QFETCH(QSize, picture);
        QFETCH(QSize, room);
        QFETCH(QSize, size);

        const QImage preview =
            ColorRangePreview(PlainPicture(Qt::red, picture), QImage(), {{qRgb(255, 0, 0)}, 0}, 1, room);

        QCOMPARE(preview.size(), size);
        QCOMPARE(preview.format(), QImage::Format_Grayscale8);
        QCOMPARE(qGray(preview.pixel(0, 0)), 255);
    }

    void withoutRoomOrPictureThereIsNoPreview()
    {
        QVERIFY(ColorRangePreview(PlainPicture(Qt::red), QImage(), {{qRgb(255, 0, 0)}, 0}, 1, QSize(0, 9))
                    .isNull());
        QVERIFY(ColorRangePreview(QImage(), QImage(), {{qRgb(255, 0, 0)}, 0}, 1, QSize(9, 9)).isNull());
    }

    void thePreviewIsOfTheSelectionThatComesOut_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<QVector<int>>("quarters");
        // The selection is the upper half, the red the left one: upper left, upper right, lower left, right.
        QTest::newRow("replace") << int(ReplaceSelection) << QVector<int>{255, 0, 255, 0};
        QTest::newRow("unite") << int(UniteSelections) << QVector<int>{255, 255, 255, 0};
        QTest::newRow("subtract") << int(SubtractSelection) << QVector<int>{0, 255, 0, 0};
        QTest::newRow("intersect") << int(IntersectSelections) << QVector<int>{255, 0, 0, 0};
    }
    void thePreviewIsOfTheSelectionThatComesOut()
    {
        QFETCH(int, state);
        QFETCH(QVector<int>, quarters);
        const QImage picture = TwoHalves(QSize(200, 100));
        const QImage selection = MaskOf(picture.size(), QRect(0, 0, 200, 50));

        const QImage preview =
            ColorRangePreview(picture, selection, {{qRgb(255, 0, 0)}, 0}, state, QSize(40, 40));

        QCOMPARE(preview.size(), QSize(40, 20));
        QCOMPARE(QVector<int>({qGray(preview.pixel(10, 5)), qGray(preview.pixel(30, 5)),
                               qGray(preview.pixel(10, 15)), qGray(preview.pixel(30, 15))}),
                 quarters);
    }

    void withNothingSelectedThePreviewIsBlack()
    {
        const QImage preview =
            ColorRangePreview(PlainPicture(Qt::red), QImage(), {{}, 255}, 1, QSize(30, 30));

        QCOMPARE(preview.size(), QSize(30, 20));
        QCOMPARE(preview.pixelColor(15, 10), QColor(Qt::black));
    }

    void aSelectionOfAnotherSizeDoesNotCount()
    {
        const QImage preview =
            ColorRangePreview(PlainPicture(Qt::red), MaskOf(QSize(2, 2), QRect(0, 0, 1, 1)),
                              {{qRgb(255, 0, 0)}, 0}, IntersectSelections, QSize(30, 30));

        QCOMPARE(preview.size(), QSize(30, 20));
    }

    void thePreviewIsSampledAtAnEvenRaster()
    {
        // The second of each two pixels either way, which is where the middle of the two begins.
        QImage picture = PlainPicture(Qt::white, QSize(160, 80));
        for (int y = 1; y < 80; y += 2)
        {
            for (int x = 1; x < 160; x += 2)
                picture.setPixel(x, y, qRgb(255, 0, 0));
        }

        const QImage preview = ColorRangePreview(picture, QImage(), {{qRgb(255, 0, 0)}, 0}, 1, QSize(40, 40));

        QCOMPARE(preview.size(), QSize(40, 20));
        for (const QPoint& point : {QPoint(0, 0), QPoint(39, 19), QPoint(20, 10)})
            QCOMPARE(qGray(preview.pixel(point)), 255);
    }

    void thePreviewLooksAtTheMiddleOfThePixels()
    {
        // Every second column is red: half of what each pixel of the preview stands for.
        QImage picture = PlainPicture(Qt::white, QSize(80, 40));
        for (int y = 0; y < 40; ++y)
        {
            for (int x = 1; x < 80; x += 2)
                picture.setPixel(x, y, qRgb(255, 0, 0));
        }

        const QImage preview = ColorRangePreview(picture, QImage(), {{qRgb(255, 0, 0)}, 0}, 1, QSize(40, 40));

        QCOMPARE(preview.size(), QSize(40, 20));
        QVERIFY(qAbs(qGray(preview.pixel(20, 10)) - 128) <= 1);
    }
};

NV_TEST_MAIN(tst_ColorRange)
#include "tst_ColorRange.moc"
