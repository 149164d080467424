// What a crop makes of the pixels: cut out, turned upright, brought to a size, or made transparent outside.

#include "CropContents.h"

#include <QPainter>
#include <QtTest>

#include <atomic>

#include "ProbeImage.h"
#include "TestMain.h"
#include "ToolHost.h"

namespace
{

const QPointF Middle(0.5, 0.5);

QImage SelectionOf(const QSize& size, const QRect& rect)
{
    QImage mask(size, QImage::Format_Grayscale8);
    mask.fill(0);
    QPainter(&mask).fillRect(rect, Qt::white);
    return mask;
}

PictureContents Layers(const QVector<QImage>& layers, const QImage& selection = QImage())
{
    return {layers, selection};
}

// A slow and simple reckoning of the same, for comparison: bilinear.
QRgb SampleAt(const QImage& image, const QPointF& place)
{
    const double x = place.x() - 0.5;
    const double y = place.y() - 0.5;
    double sum[4] = {0, 0, 0, 0};
    for (int i = 0; i < 4; ++i)
    {
        const int column = int(std::floor(x)) + i % 2;
        const int row = int(std::floor(y)) + i / 2;
        const double weight = (1 - std::abs(x - column)) * (1 - std::abs(y - row));
        const QRgb pixel = image.rect().contains(column, row) ? image.pixel(column, row) : 0;
        sum[0] += weight * qRed(pixel);
        sum[1] += weight * qGreen(pixel);
        sum[2] += weight * qBlue(pixel);
        sum[3] += weight * qAlpha(pixel);
    }
    return qRgba(qRound(sum[0]), qRound(sum[1]), qRound(sum[2]), qRound(sum[3]));
}

// Smooth enough that ways of sampling hardly differ.
QImage SmoothPicture(const QSize& size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < size.height(); ++y)
    {
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y, qRgb(40 + x / 2, 40 + y / 2, 40 + (x + y) / 3));
    }
    return image;
}

} // namespace

class tst_CropContents : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anUprightFrameChangesNoPixel()
    {
        const QImage picture = BusyPicture();
        const QImage above = PlainPicture(QColor(10, 200, 30, 90));
        const QRect rect(31, 17, 101, 66);
        const QImage selection = SelectionOf(picture.size(), QRect(40, 40, 500, 20));

        const PictureContents cropped =
            CropContents(Layers({picture, above}, selection), CropFrameOf(rect), rect.size());

        QCOMPARE(cropped.layers, QVector<QImage>({picture.copy(rect), above.copy(rect)}));
        QCOMPARE(cropped.selection, selection.copy(rect));
    }

    void whatLiesBeyondThePictureIsTransparent()
    {
        const QImage picture = BusyPicture(QSize(50, 40));
        const CropFrame frame = CropFrameOf(QRect(-10, -5, 80, 60));

        const QImage cropped = CropContents(Layers({picture}), frame, frame.size).layers.value(0);

        QCOMPARE(cropped.size(), QSize(80, 60));
        QCOMPARE(cropped.copy(10, 5, 50, 40), picture);
        QCOMPARE(qAlpha(cropped.pixel(9, 5)), 0);
        QCOMPARE(qAlpha(cropped.pixel(60, 20)), 0);
    }

    void aQuarterTurnMovesPixelsOnly_data()
    {
        QTest::addColumn<double>("angle");
        for (int angle : {-90, 90, 180, -180})
            QTest::addRow("%d", angle) << double(angle);
    }
    void aQuarterTurnMovesPixelsOnly()
    {
        QFETCH(const double, angle);
        const QImage picture = BusyPicture(QSize(60, 41));
        const CropFrame frame = Turned(CropFrameOf(QRect(20, 10, 21, 20)), angle, Middle);
        const QRect bounds = frame.GetOutline().boundingRect().toRect();
        QVERIFY(picture.rect().contains(bounds));

        const QImage cropped = CropContents(Layers({picture}), frame, frame.size).layers.value(0);

        QCOMPARE(cropped, picture.copy(bounds).transformed(QTransform().rotate(-angle)));
    }

    void aTurnedFrameComesOutUpright()
    {
        const QSize size(300, 200);
        QImage picture(size, QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::white);
        const CropFrame frame = Turned(CropFrameOf(QRect(100, 60, 90, 70)), 25, Middle);
        {
            QPainter painter(&picture);
            painter.setTransform(frame.ToDocument());
            painter.fillRect(QRect(10, 20, 30, 40), Qt::red);
        }

        const QImage cropped = CropContents(Layers({picture}), frame, frame.size).layers.value(0);

        QCOMPARE(cropped.size(), QSize(90, 70));
        const QRect red = ProbeImage(cropped).BoundsOf(Qt::red, 60);
        QVERIFY2(
            qAbs(red.left() - 10) <= 1 && qAbs(red.top() - 20) <= 1 && qAbs(red.width() - 30) <= 2 &&
                qAbs(red.height() - 40) <= 2,
            qPrintable(QString("%1,%2 %3x%4").arg(red.x()).arg(red.y()).arg(red.width()).arg(red.height())));
    }

    void turningIsAsASimpleReckoningHasIt()
    {
        const QImage picture = SmoothPicture(QSize(300, 200));
        for (double angle : {3.0, -41.5, 120.0})
        {
            const CropFrame frame = Turned(CropFrameOf(QRect(110, 70, 80, 60)), angle, Middle);
            const QImage cropped = CropContents(Layers({picture}), frame, frame.size).layers.value(0);
            for (int y = 0; y < 60; y += 7)
            {
                for (int x = 0; x < 80; x += 7)
                {
                    const QPointF place = frame.ToDocument().map(QPointF(x + 0.5, y + 0.5));
                    const QColor wanted(SampleAt(picture, place));
                    const QColor is(cropped.pixel(x, y));
                    QVERIFY2(ProbeImage::Similar(is, wanted, 3),
                             qPrintable(QString("%1 at %2,%3 is %4, not %5")
                                            .arg(angle)
                                            .arg(x)
                                            .arg(y)
                                            .arg(is.name(), wanted.name())));
                }
            }
        }
    }

    void aTurnedFrameBesideThePictureIsEmpty()
    {
        const QImage selection = SelectionOf(QSize(300, 200), QRect(0, 0, 300, 200));
        const CropFrame frame = Turned(CropFrameOf(QRect(2000, 60, 90, 70)), 25, Middle);

        const PictureContents cropped =
            CropContents(Layers({PlainPicture(Qt::red)}, selection), frame, frame.size);

        QImage blank(QSize(90, 70), QImage::Format_ARGB32_Premultiplied);
        blank.fill(Qt::transparent);
        QCOMPARE(cropped.layers, QVector<QImage>({blank}));
        QVERIFY(cropped.selection.isNull());
    }

    void aTurnedFrameOverTheEdgeFadesOut()
    {
        const CropFrame frame = Turned(CropFrameOf(QRect(-40, 60, 90, 70)), 25, Middle);

        const QImage cropped =
            CropContents(Layers({PlainPicture(Qt::red)}), frame, frame.size).layers.value(0);

        QCOMPARE(cropped.size(), QSize(90, 70));
        for (int y = 0; y < 70; y += 3)
        {
            for (int x = 0; x < 90; x += 3)
            {
                const double distance = frame.ToDocument().map(QPointF(x + 0.5, y + 0.5)).x();
                const QRgb pixel = cropped.pixel(x, y);
                if (distance > 3)
                    QCOMPARE(pixel, qRgb(255, 0, 0));
                if (distance < -3)
                    QCOMPARE(qAlpha(pixel), 0);
            }
        }
    }

    void theSizeIsKeptTo_data()
    {
        QTest::addColumn<double>("angle");
        QTest::addColumn<QSize>("size");

        QTest::newRow("smaller") << 0.0 << QSize(40, 30);
        QTest::newRow("larger") << 0.0 << QSize(250, 200);
        QTest::newRow("turned") << 12.0 << QSize(40, 30);
        QTest::newRow("other proportion") << 0.0 << QSize(10, 200);
    }
    void theSizeIsKeptTo()
    {
        QFETCH(const double, angle);
        QFETCH(const QSize, size);
        const CropFrame frame = Turned(CropFrameOf(QRect(100, 60, 100, 80)), angle, Middle);
        const QImage selection = SelectionOf(QSize(300, 200), QRect(120, 80, 40, 40));

        const PictureContents cropped =
            CropContents(Layers({PlainPicture(Qt::red), BusyPicture()}, selection), frame, size);

        QCOMPARE(cropped.layers.size(), 2);
        QCOMPARE(cropped.layers.at(1).size(), size);
        QCOMPARE(cropped.selection.size(), size);
        // Opaque up to the edges: the picture goes on beyond them.
        QImage red(size, QImage::Format_ARGB32_Premultiplied);
        red.fill(Qt::red);
        QCOMPARE(cropped.layers.at(0), red);
    }

    void aWholePictureInAnotherSizeStaysOpaqueAtItsEdges()
    {
        const CropFrame frame = CropFrameOf(QRect(0, 0, 300, 200));

        const QImage cropped =
            CropContents(Layers({PlainPicture(Qt::red)}), frame, QSize(100, 67)).layers.value(0);

        QCOMPARE(cropped.pixel(0, 0), qRgb(255, 0, 0));
        QCOMPARE(cropped.pixel(99, 66), qRgb(255, 0, 0));
    }

    void aSelectionThatIsCutOffIsNone()
    {
        const QImage selection = SelectionOf(QSize(300, 200), QRect(0, 0, 10, 10));
        const CropFrame upright = CropFrameOf(QRect(100, 60, 90, 70));

        for (const CropFrame& frame : {upright, Turned(upright, 30, Middle)})
        {
            const PictureContents cropped =
                CropContents(Layers({PlainPicture()}, selection), frame, frame.size);
            QCOMPARE(cropped.layers.size(), 1);
            QVERIFY(cropped.selection.isNull());
        }
    }

    void nothingComesOfNothing()
    {
        const CropFrame frame = CropFrameOf(QRect(0, 0, 10, 10));

        QVERIFY(CropContents(Layers({PlainPicture()}), CropFrame(), QSize(5, 5)).layers.isEmpty());
        QVERIFY(CropContents(Layers({PlainPicture()}), frame, QSize()).layers.isEmpty());
        QVERIFY(CropContents(Layers({}), frame, frame.size).layers.isEmpty());
    }

    void progressGoesUpAndCancelEndsIt_data()
    {
        QTest::addColumn<double>("angle");
        QTest::addColumn<QSize>("size");

        QTest::newRow("upright") << 0.0 << QSize(1800, 1500);
        QTest::newRow("turned") << 20.0 << QSize(1800, 1500);
        QTest::newRow("turned and resized") << 20.0 << QSize(700, 900);
    }
    void progressGoesUpAndCancelEndsIt()
    {
        QFETCH(const double, angle);
        QFETCH(const QSize, size);
        const QImage picture = PlainPicture(Qt::red, QSize(2000, 2000));
        const CropFrame frame = Turned(CropFrameOf(QRect(100, 60, 1800, 1500)), angle, Middle);
        std::atomic<int> most{0};
        std::atomic<int> calls{0};

        const auto watch = [&](int percent)
        {
            ++calls;
            most = std::max(most.load(), percent);
            return percent <= 100;
        };
        const QImage selection = SelectionOf(picture.size(), picture.rect());
        QVERIFY(!CropContents(Layers({picture, picture}, selection), frame, size, watch).layers.isEmpty());
        QCOMPARE(most.load(), 100);
        QVERIFY(calls > 3);

        for (int limit : {0, 40, 70})
        {
            const auto stop = [limit](int percent) { return percent < limit; };
            QVERIFY(CropContents(Layers({picture, picture}, selection), frame, size, stop).layers.isEmpty());
        }
    }

    void outsideIsFound_data()
    {
        QTest::addColumn<QRect>("rect");
        QTest::addColumn<double>("angle");
        QTest::addColumn<bool>("outside");

        QTest::newRow("all") << QRect(0, 0, 300, 200) << 0.0 << false;
        QTest::newRow("more than all") << QRect(-10, -10, 400, 300) << 0.0 << false;
        QTest::newRow("a column less") << QRect(0, 0, 299, 200) << 0.0 << true;
        QTest::newRow("a row less") << QRect(0, 1, 300, 200) << 0.0 << true;
        QTest::newRow("turned") << QRect(0, 0, 300, 200) << 1.0 << true;
        QTest::newRow("upside down") << QRect(0, 0, 300, 200) << 180.0 << false;
        QTest::newRow("turned around all") << QRect(-200, -200, 700, 600) << 45.0 << false;
        QTest::newRow("beside") << QRect(400, 0, 300, 200) << 0.0 << true;
    }
    void outsideIsFound()
    {
        QFETCH(const QRect, rect);
        QFETCH(const double, angle);

        QTEST(HasOutside(QSize(300, 200), Turned(CropFrameOf(rect), angle, Middle)), "outside");
    }

    void outsideBecomesTransparent()
    {
        const QImage picture = BusyPicture();
        const QRect rect(31, 17, 101, 66);

        const QImage within = WithoutOutside(picture, CropFrameOf(rect));

        QImage wanted(picture.size(), picture.format());
        wanted.fill(Qt::transparent);
        for (int y = rect.top(); y <= rect.bottom(); ++y)
        {
            for (int x = rect.left(); x <= rect.right(); ++x)
                wanted.setPixel(x, y, picture.pixel(x, y));
        }
        QCOMPARE(within, wanted);
    }

    void outsideOfATurnedFrameBecomesTransparentSmoothly()
    {
        const CropFrame frame = Turned(CropFrameOf(QRect(100, 60, 90, 70)), 25, Middle);
        QImage wanted(QSize(300, 200), QImage::Format_ARGB32_Premultiplied);
        wanted.fill(Qt::transparent);
        {
            QPainter painter(&wanted);
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setPen(Qt::NoPen);
            painter.setBrush(Qt::red);
            painter.drawPolygon(frame.GetOutline());
        }

        const QImage within = WithoutOutside(PlainPicture(Qt::red), frame);

        int partly = 0;
        for (int y = 0; y < 200; ++y)
        {
            for (int x = 0; x < 300; ++x)
            {
                const QRgb pixel = within.pixel(x, y);
                QVERIFY(qAbs(qAlpha(pixel) - qAlpha(wanted.pixel(x, y))) < 50);
                partly += qAlpha(pixel) > 0 && qAlpha(pixel) < 255;
            }
        }
        QVERIFY(partly > 200);
        QVERIFY(partly < 800);
    }

    void hidingIsForAllLayersAndKeepsTheSelection()
    {
        const QImage selection = SelectionOf(QSize(300, 200), QRect(0, 0, 10, 10));
        const CropFrame frame = CropFrameOf(QRect(31, 17, 101, 66));
        const QVector<QImage> layers = {BusyPicture(), PlainPicture(Qt::green)};

        const PictureContents within = ContentsWithin(Layers(layers, selection), frame);

        QCOMPARE(within.layers,
                 QVector<QImage>({WithoutOutside(layers[0], frame), WithoutOutside(layers[1], frame)}));
        QCOMPARE(within.selection, selection);
        const auto stop = [](int percent) { return percent < 60; };
        QVERIFY(ContentsWithin(Layers(layers), frame, stop).layers.isEmpty());
        QVERIFY(WithoutOutside(layers[0], CropFrame()).isNull());
    }
};

NV_TEST_MAIN(tst_CropContents)
#include "tst_CropContents.moc"
