// The frame of a crop: where it lies, and what becomes of it when it is moved, turned, resized and pulled.

#include "CropFrame.h"

#include <QtTest>

#include "TestMain.h"

namespace
{

const QPointF Middle(0.5, 0.5);

bool IsAt(const QPointF& one, const QPointF& other)
{
    return QLineF(one, other).length() < 1e-6;
}

QRectF BoundsOf(const CropFrame& frame)
{
    return frame.GetOutline().boundingRect();
}

// The nine places of a frame, for a table.
void AddPlaces()
{
    QTest::addColumn<QPointF>("place");
    for (int i = 0; i < 9; ++i)
        QTest::addRow("place %d", i) << QPointF((i % 3) / 2.0, (i / 3) / 2.0);
}

} // namespace

class tst_CropFrame : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNewFrameIsNone()
    {
        QVERIFY(CropFrame().IsNull());
        QVERIFY(!CropFrameOf(QRect(0, 0, 1, 1)).IsNull());
    }

    void aRectIsItsOwnFrame()
    {
        const QRect rect(10, 20, 31, 40);
        const CropFrame frame = CropFrameOf(rect);

        QCOMPARE(frame.size, rect.size());
        QCOMPARE(BoundsOf(frame), QRectF(rect));
        QVERIFY(frame.IsUpright());
        QCOMPARE(frame.ToDocument().map(QPointF(0, 0)), QPointF(10, 20));
        QCOMPARE(frame.PointAt({1, 1}), QPointF(41, 60));
    }

    void aDragIsAFrameOnWholePixels_data()
    {
        QTest::addColumn<QPointF>("from");
        QTest::addColumn<QPointF>("to");
        QTest::addColumn<double>("proportion");
        QTest::addColumn<QRectF>("frame");

        QTest::newRow("down") << QPointF(10, 20) << QPointF(40, 60) << 0.0 << QRectF(10, 20, 30, 40);
        QTest::newRow("up") << QPointF(40, 60) << QPointF(10, 20) << 0.0 << QRectF(10, 20, 30, 40);
        QTest::newRow("to the left") << QPointF(40, 20) << QPointF(10, 60) << 0.0 << QRectF(10, 20, 30, 40);
        QTest::newRow("between pixels")
            << QPointF(10.4, 20.6) << QPointF(20.6, 30.4) << 0.0 << QRectF(10, 21, 11, 9);
        QTest::newRow("on the spot") << QPointF(10, 20) << QPointF(10, 20) << 0.0 << QRectF(10, 20, 1, 1);
        QTest::newRow("square") << QPointF(10, 20) << QPointF(40, 60) << 1.0 << QRectF(10, 20, 30, 30);
        QTest::newRow("square up") << QPointF(40, 60) << QPointF(10, 20) << 1.0 << QRectF(10, 30, 30, 30);
        QTest::newRow("wide") << QPointF(0, 0) << QPointF(100, 100) << 2.0 << QRectF(0, 0, 100, 50);
        QTest::newRow("high") << QPointF(0, 0) << QPointF(100, 100) << 0.5 << QRectF(0, 0, 50, 100);
        QTest::newRow("too large") << QPointF(0, 0) << QPointF(20000, 30) << 0.0
                                   << QRectF(0, 0, CropFrame::MAX_SIDE, 30);
    }
    void aDragIsAFrameOnWholePixels()
    {
        QFETCH(const QPointF, from);
        QFETCH(const QPointF, to);
        QFETCH(const double, proportion);

        QTEST(BoundsOf(CropFrameBetween(from, to, proportion)), "frame");
    }

    void theLargestInProportionKeepsTheMiddle()
    {
        const CropFrame frame = InProportion(CropFrameOf(QRect(10, 20, 100, 60)), 1);

        QCOMPARE(BoundsOf(frame), QRectF(30, 20, 60, 60));
        QCOMPARE(BoundsOf(InProportion(frame, 3)), QRectF(30, 40, 60, 20));
    }

    void anUprightFrameMovesByWholePixels()
    {
        const CropFrame frame = CropFrameOf(QRect(10, 20, 31, 40));

        QCOMPARE(BoundsOf(Moved(frame, QPointF(3.4, -2.6))), QRectF(13, 17, 31, 40));
    }

    void aTurnedFrameMovesAsFarAsItIsTold()
    {
        const CropFrame frame = Turned(CropFrameOf(QRect(10, 20, 30, 40)), 20, Middle);

        QVERIFY(IsAt(Moved(frame, QPointF(3.4, -2.6)).middle, QPointF(28.4, 37.4)));
    }

    void turningKeepsThePlace_data() { AddPlaces(); }
    void turningKeepsThePlace()
    {
        QFETCH(const QPointF, place);
        const CropFrame frame = CropFrameOf(QRect(10, 20, 30, 40));

        for (double angle : {10.0, 33.33, -120.5, 179.99})
        {
            const CropFrame turned = Turned(frame, angle, place);
            QVERIFY(IsAt(turned.PointAt(place), frame.PointAt(place)));
            QCOMPARE(turned.size, frame.size);
            QCOMPARE(turned.angle, angle);
        }
    }

    void anAngleIsBroughtIntoTheCircle_data()
    {
        QTest::addColumn<double>("given");
        QTest::addColumn<double>("angle");

        QTest::newRow("none") << 0.0 << 0.0;
        QTest::newRow("half") << 180.0 << 180.0;
        QTest::newRow("half back") << -180.0 << -180.0;
        QTest::newRow("more than half") << 190.0 << -170.0;
        QTest::newRow("once around") << 360.0 << 0.0;
        QTest::newRow("twice back") << -730.0 << -10.0;
    }
    void anAngleIsBroughtIntoTheCircle()
    {
        QFETCH(const double, given);

        QTEST(Turned(CropFrameOf(QRect(0, 0, 10, 10)), given, Middle).angle, "angle");
    }

    void aQuarterTurnLiesOnWholePixels()
    {
        const CropFrame frame = Turned(CropFrameOf(QRect(10, 20, 31, 40)), 90, Middle);

        QVERIFY(frame.IsUpright());
        const QRectF bounds = BoundsOf(frame);
        QVERIFY(IsAt(bounds.topLeft(), bounds.topLeft().toPoint()));
        QVERIFY(qAbs(bounds.width() - 40) < 1e-6 && qAbs(bounds.height() - 31) < 1e-6);
        QVERIFY(!Turned(frame, 89.99, Middle).IsUpright());
    }

    void clockwiseIsPositive()
    {
        const CropFrame frame = Turned(CropFrameOf(QRect(0, 0, 100, 100)), 45, Middle);

        QVERIFY(IsAt(frame.PointAt({0, 0}), QPointF(50, 50 - std::sqrt(2) * 50)));
    }

    void resizingKeepsThePlace_data() { AddPlaces(); }
    void resizingKeepsThePlace()
    {
        QFETCH(const QPointF, place);
        const CropFrame frame = Turned(CropFrameOf(QRect(10, 20, 30, 40)), 12, Middle);

        const CropFrame resized = Resized(frame, QSizeF(55.4, 20000), place);

        QCOMPARE(resized.size, QSize(55, CropFrame::MAX_SIDE));
        QVERIFY(IsAt(resized.PointAt(place), frame.PointAt(place)));
        QCOMPARE(Resized(frame, QSizeF(0, -5), place).size, QSize(1, 1));
    }

    void aPulledHandleGoesToThePoint_data() { AddPlaces(); }
    void aPulledHandleGoesToThePoint()
    {
        QFETCH(const QPointF, place);
        if (place == Middle)
            return;
        const CropFrame frame = CropFrameOf(QRect(100, 100, 80, 60));
        const QPointF way(place.x() == 0.5 ? 0 : 10, place.y() == 0.5 ? 0 : -7);

        const CropFrame pulled = Pulled(frame, place, frame.PointAt(place) + way, 0, false);

        QVERIFY(IsAt(pulled.PointAt(place), frame.PointAt(place) + way));
        QVERIFY(IsAt(pulled.PointAt(QPointF(1, 1) - place), frame.PointAt(QPointF(1, 1) - place)));
    }

    void anEdgeTakesNoNoticeOfThePullAlongIt()
    {
        const CropFrame frame = CropFrameOf(QRect(100, 100, 80, 60));

        QCOMPARE(BoundsOf(Pulled(frame, {1, 0.5}, QPointF(200, 500), 0, false)), QRectF(100, 100, 100, 60));
    }

    void aPullAboutTheMiddleMovesBothSides()
    {
        const CropFrame frame = CropFrameOf(QRect(100, 100, 80, 60));

        QCOMPARE(BoundsOf(Pulled(frame, {1, 1}, QPointF(200, 170), 0, true)), QRectF(80, 90, 120, 80));
        QCOMPARE(BoundsOf(Pulled(frame, {0.5, 0}, QPointF(0, 90), 0, true)), QRectF(100, 90, 80, 80));
    }

    void aPullAcrossTurnsTheFrameOver()
    {
        const CropFrame frame = CropFrameOf(QRect(100, 100, 80, 60));

        QCOMPARE(BoundsOf(Pulled(frame, {1, 1}, QPointF(60, 40), 0, false)), QRectF(60, 40, 40, 60));
        QCOMPARE(BoundsOf(Pulled(frame, {0, 0.5}, QPointF(250, 0), 0, false)), QRectF(180, 100, 70, 60));
    }

    void aPullKeepsTheProportion_data()
    {
        QTest::addColumn<QPointF>("place");
        QTest::addColumn<QPointF>("to");
        QTest::addColumn<QRectF>("frame");

        QTest::newRow("corner, wide") << QPointF(1, 1) << QPointF(200, 110) << QRectF(100, 100, 100, 50);
        QTest::newRow("corner, high") << QPointF(1, 1) << QPointF(110, 200) << QRectF(100, 100, 200, 100);
        QTest::newRow("corner across") << QPointF(1, 1) << QPointF(60, 90) << QRectF(60, 80, 40, 20);
        QTest::newRow("side") << QPointF(1, 0.5) << QPointF(220, 0) << QRectF(100, 90, 120, 60);
        QTest::newRow("lower edge") << QPointF(0.5, 1) << QPointF(0, 150) << QRectF(90, 100, 100, 50);
    }
    void aPullKeepsTheProportion()
    {
        QFETCH(const QPointF, place);
        QFETCH(const QPointF, to);

        QTEST(BoundsOf(Pulled(CropFrameOf(QRect(100, 100, 80, 40)), place, to, 2, false)), "frame");
    }

    void theLargestFrameKeepsItsProportionToo()
    {
        const CropFrame frame = CropFrameOf(QRect(0, 0, 80, 40));

        QCOMPARE(Pulled(frame, {1, 1}, QPointF(1e6, 10), 2, false).size, QSize(9999, 5000));
        QCOMPARE(Pulled(frame, {1, 1}, QPointF(1e6, 1e6), 0, false).size, QSize(9999, 9999));
    }

    void aTurnedFrameIsPulledAlongItsSides()
    {
        const CropFrame frame = Turned(CropFrameOf(QRect(100, 100, 80, 60)), 30, Middle);
        const QPointF right = frame.PointAt({1, 0.5});
        const QPointF out = (right - frame.middle) / 40;

        const CropFrame pulled = Pulled(frame, {1, 0.5}, right + 20 * out, 0, false);

        QCOMPARE(pulled.size, QSize(100, 60));
        QCOMPARE(pulled.angle, 30.0);
        QVERIFY(IsAt(pulled.PointAt({0, 0}), frame.PointAt({0, 0})));
        QVERIFY(IsAt(pulled.PointAt({0, 1}), frame.PointAt({0, 1})));
    }
};

NV_TEST_MAIN(tst_CropFrame)
#include "tst_CropFrame.moc"
