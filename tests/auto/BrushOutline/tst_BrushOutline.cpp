// The outline of a brush and the steps of its size.

#include "BrushOutline.h"

#include <QPainter>

#include "ProbeImage.h"
#include "TestMain.h"

class tst_BrushOutline : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sizeStepsReachEachEndAndComeBack()
    {
        QCOMPARE(PreviousBrushSize(1), 1);
        QCOMPARE(NextBrushSize(2500), 2500);
        for (int size = 1; size < 2500;)
        {
            const int next = NextBrushSize(size);
            QVERIFY(next > size);
            QVERIFY(PreviousBrushSize(next) < next);
            size = next;
        }
    }

    void outlinesFollowTheTip()
    {
        BrushTip tip;
        QCOMPARE(BrushOutline(tip, 10).boundingRect(), QRectF(-5, -5, 10, 10));
        tip.roundness = 0.5;
        QCOMPARE(BrushOutline(tip, 10).boundingRect(), QRectF(-5, -2.5, 10, 5));
        tip.roundness = 1;
        tip.shape = BrushTip::Square;
        tip.angle = 45;
        QVERIFY(qAbs(BrushOutline(tip, 10).boundingRect().width() - 14.14) < 0.01);
    }

    void whatIsDrawnIsSeenOnAnyPicture_data()
    {
        QTest::addColumn<QColor>("ground");
        QTest::newRow("black") << QColor(Qt::black);
        QTest::newRow("gray") << QColor(Qt::gray);
        QTest::newRow("white") << QColor(Qt::white);
    }
    void whatIsDrawnIsSeenOnAnyPicture()
    {
        QFETCH(QColor, ground);
        QImage image(40, 40, QImage::Format_ARGB32_Premultiplied);
        image.fill(ground);
        QPainter painter(&image);
        QPainterPath line;
        line.moveTo(-10, 0);
        line.lineTo(10, 0);

        DrawOnPicture(painter, line, QPointF(20, 20.5));
        painter.end();

        int farthest = 0;
        for (int y = 15; y < 26; ++y)
            farthest = qMax(farthest, qAbs(image.pixelColor(20, y).lightness() - ground.lightness()));
        QVERIFY(farthest > 90);
        QCOMPARE(image.pixelColor(35, 20), ground);
    }
};

NV_TEST_MAIN(tst_BrushOutline)
#include "tst_BrushOutline.moc"
