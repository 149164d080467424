// The line of dashes as it is drawn over a picture.

#include "OutlineDrawing.h"

#include <QPainter>
#include <QTest>

#include "TestMain.h"

namespace
{

// The line alone on grey, on a viewport of 120 by 100 device-independent pixels.
QImage Drawn(OutlineDrawing& drawing, double scale = 1, double ratio = 1,
             const QPointF& origin = QPointF(10, 10))
{
    QImage image(QSize(120, 100) * ratio, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::gray);
    QPainter painter(&image);
    drawing.Draw(painter, QSize(120, 100), origin, scale);
    return image;
}

bool IsLine(const QImage& image, int x, int y)
{
    const QRgb pixel = image.pixel(x, y);
    return pixel == qRgb(0, 0, 0) || pixel == qRgb(255, 255, 255);
}

int Count(const QImage& image, QRgb color)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
    {
        for (int x = 0; x < image.width(); ++x)
            count += image.pixel(x, y) == color;
    }
    return count;
}

QVector<QImage> Masks()
{
    return HalvedMasks(RectangleMask(QSize(80, 60), QRectF(10, 10, 40, 30)));
}

} // namespace

class tst_OutlineDrawing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void withoutMasksNothingIsDrawn()
    {
        OutlineDrawing drawing;
        QVERIFY(!drawing.HasMasks());
        const QImage image = Drawn(drawing);
        QCOMPARE(Count(image, QColor(Qt::gray).rgb()), 120 * 100);
        QVERIFY(drawing.GetRegion().isEmpty());
    }

    void blackAndWhiteTakeTurnsAlongTheEdge()
    {
        OutlineDrawing drawing;
        drawing.SetMasks(Masks());
        const QImage image = Drawn(drawing);

        const int pixels = 2 * 40 + 2 * 28;
        QCOMPARE(Count(image, qRgb(0, 0, 0)) + Count(image, qRgb(255, 255, 255)), pixels);
        QVERIFY(qAbs(Count(image, qRgb(0, 0, 0)) - pixels / 2) <= 4);
        for (int x = 20; x < 60; ++x)
        {
            QVERIFY(IsLine(image, x, 20));
            QVERIFY(IsLine(image, x, 49));
            QVERIFY(x + 4 >= 60 || image.pixel(x, 20) != image.pixel(x + 4, 20));
        }
        QVERIFY(!IsLine(image, 19, 20) && !IsLine(image, 21, 21) && !IsLine(image, 60, 20));
    }

    void theDashesGoOnAndComeRound()
    {
        OutlineDrawing drawing;
        drawing.SetMasks(Masks());
        const QImage first = Drawn(drawing);
        drawing.SetPhase(1);
        const QImage second = Drawn(drawing);
        QVERIFY(first != second);
        // Each has gone to its neighbour.
        for (int x = 20; x < 59; ++x)
            QCOMPARE(second.pixel(x + 1, 20), first.pixel(x, 20));
        drawing.SetPhase(8);
        QCOMPARE(drawing.GetPhase(), 0);
        QCOMPARE(Drawn(drawing), first);
    }

    void whatIsDrawnAgainCoversWhatWasCovered()
    {
        OutlineDrawing drawing;
        drawing.SetMasks(Masks());
        QImage image = Drawn(drawing, 1.3);
        drawing.SetPhase(3);
        QPainter painter(&image);
        drawing.DrawAgain(painter);
        painter.end();
        QCOMPARE(image, Drawn(drawing, 1.3));
    }

    void atAnotherScaleTheLineIsThereAtOnce()
    {
        OutlineDrawing drawing;
        drawing.SetMasks(Masks());
        Drawn(drawing);
        OutlineDrawing other;
        other.SetMasks(Masks());
        QCOMPARE(Drawn(drawing, 1.3), Drawn(other, 1.3));
        QCOMPARE(Drawn(drawing, 1.3, 2), Drawn(other, 1.3, 2));
    }

    void theRegionHoldsTheLineAndNotTheMiddle()
    {
        OutlineDrawing drawing;
        drawing.SetMasks(HalvedMasks(FullMask(QSize(100, 80))));
        Drawn(drawing);
        const QRegion region = drawing.GetRegion();
        for (const QPoint& corner : {QPoint(10, 10), QPoint(109, 10), QPoint(10, 89), QPoint(109, 89)})
            QVERIFY(region.contains(corner));
        drawing.SetMasks(HalvedMasks(FullMask(QSize(100, 80))));
        QVERIFY(drawing.GetRegion().isEmpty());
        Drawn(drawing, 3, 1, QPointF(-100, -100));
        QVERIFY(drawing.GetRegion().isEmpty());
    }

    void onADenserScreenTheLineIsAsWideAndAsSharp()
    {
        OutlineDrawing drawing;
        drawing.SetMasks(Masks());
        const QImage image = Drawn(drawing, 1, 2);
        for (int y : {40, 41, 98, 99})
            QVERIFY2(IsLine(image, 80, y), qPrintable(QString::number(y)));
        QVERIFY(!IsLine(image, 80, 39) && !IsLine(image, 80, 42) && !IsLine(image, 80, 97));
        // A dash is twice as many pixels long.
        QCOMPARE(Count(image, qRgb(0, 0, 0)) + Count(image, qRgb(255, 255, 255)), 2 * (2 * 80 + 2 * 56));
        const QRegion region = drawing.GetRegion();
        QVERIFY(region.contains(QPoint(59, 49)));
        QVERIFY(QRect(0, 0, 120, 100).adjusted(0, 0, 32, 32).contains(region.boundingRect()));
    }

    void eachPixelOfTheDocumentIsASquareWhenItIsLarge()
    {
        OutlineDrawing drawing;
        drawing.SetMasks(HalvedMasks(RectangleMask(QSize(10, 10), QRectF(4, 4, 1, 1))));
        const QImage image = Drawn(drawing, 8, 1, QPointF(0, 0));
        for (int i = 32; i < 40; ++i)
        {
            QVERIFY(IsLine(image, i, 32) && IsLine(image, i, 39) && IsLine(image, 32, i) &&
                    IsLine(image, 39, i));
        }
        QVERIFY(!IsLine(image, 31, 32) && !IsLine(image, 40, 32) && !IsLine(image, 35, 35));
    }
};

NV_TEST_MAIN(tst_OutlineDrawing)

#include "tst_OutlineDrawing.moc"
