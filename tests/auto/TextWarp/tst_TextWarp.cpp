// How a text is bent: where points go, and that outlines follow them.

#include "TextWarp.h"

#include <QPolygonF>
#include <QtTest>

#include <cmath>
#include <limits>

#include "TestMain.h"

namespace
{

const QRectF Frame(100, 50, 200, 40);
const double Nan = std::numeric_limits<double>::quiet_NaN();

TextWarp Bent(double bend, double horizontal = 0, double vertical = 0, bool isVertical = false)
{
    return {true, isVertical, bend, horizontal, vertical};
}

bool AreNear(const QPointF& one, const QPointF& other, double distance = 1e-6)
{
    return std::hypot(one.x() - other.x(), one.y() - other.y()) <= distance;
}

} // namespace

class tst_TextWarp : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingIsBentWithoutAmountsOrFlag()
    {
        QVERIFY(IsStraight(TextWarp()));
        TextWarp none = Bent(50, 60, 70);
        QVERIFY(!IsStraight(none));
        none.isFlag = false;
        QVERIFY(IsStraight(none));
        QCOMPARE(WarpPoint(QPointF(120, 60), Frame, none), QPointF(120, 60));
        QCOMPARE(WarpPoint(QPointF(120, 60), Frame, TextWarp()), QPointF(120, 60));
        QVERIFY(IsStraight(Bent(Nan, -0.0, Nan)));
        QVERIFY(!IsStraight(Bent(0.01)));
        QVERIFY(!IsStraight(Bent(0, -0.01)));
        QVERIFY(!IsStraight(Bent(0, 0, 0.01)));
    }

    // Half of the height of the frame, which is its shorter side.
    void waveRunsAlongTheLine()
    {
        const TextWarp warp = Bent(100);
        QVERIFY(AreNear(WarpPoint(QPointF(100, 70), Frame, warp), QPointF(100, 70)));
        QVERIFY(AreNear(WarpPoint(QPointF(150, 70), Frame, warp), QPointF(150, 50)));
        QVERIFY(AreNear(WarpPoint(QPointF(200, 70), Frame, warp), QPointF(200, 70)));
        QVERIFY(AreNear(WarpPoint(QPointF(250, 70), Frame, warp), QPointF(250, 90)));
        QVERIFY(AreNear(WarpPoint(QPointF(250, 50), Frame, warp), QPointF(250, 70)));
        QVERIFY(AreNear(WarpPoint(QPointF(150, 70), Frame, Bent(-50)), QPointF(150, 80)));
    }

    void verticalWaveShiftsLinesToTheSides()
    {
        const TextWarp warp = Bent(100, 0, 0, true);
        QVERIFY(AreNear(WarpPoint(QPointF(200, 60), Frame, warp), QPointF(180, 60)));
        QVERIFY(AreNear(WarpPoint(QPointF(120, 80), Frame, warp), QPointF(140, 80)));
        QVERIFY(AreNear(WarpPoint(QPointF(120, 70), Frame, warp), QPointF(120, 70)));
    }

    void horizontalDistortionGrowsToTheRight()
    {
        const TextWarp warp = Bent(0, 50);
        QVERIFY(AreNear(WarpPoint(QPointF(300, 50), Frame, warp), QPointF(300, 40)));
        QVERIFY(AreNear(WarpPoint(QPointF(100, 50), Frame, warp), QPointF(100, 60)));
        QVERIFY(AreNear(WarpPoint(QPointF(200, 50), Frame, warp), QPointF(200, 50)));
        QVERIFY(AreNear(WarpPoint(QPointF(100, 50), Frame, Bent(0, 100)), QPointF(100, 70)));
    }

    void verticalDistortionGrowsDownwards()
    {
        const TextWarp warp = Bent(0, 0, 50);
        QVERIFY(AreNear(WarpPoint(QPointF(300, 90), Frame, warp), QPointF(350, 90)));
        QVERIFY(AreNear(WarpPoint(QPointF(300, 50), Frame, warp), QPointF(250, 50)));
        QVERIFY(AreNear(WarpPoint(QPointF(300, 70), Frame, warp), QPointF(300, 70)));
    }

    void amountsAreCutAndWhatIsNoNumberIsNothing()
    {
        for (const QPointF& point : {QPointF(130, 60), QPointF(280, 85)})
        {
            QCOMPARE(WarpPoint(point, Frame, Bent(500, -700, 1e300)),
                     WarpPoint(point, Frame, Bent(100, -100, 100)));
            QCOMPARE(WarpPoint(point, Frame, Bent(Nan, 30, Nan)), WarpPoint(point, Frame, Bent(0, 30, 0)));
            const double infinity = std::numeric_limits<double>::infinity();
            QCOMPARE(WarpPoint(point, Frame, Bent(infinity, 0, 0)), point);
        }
    }

    void emptyFrameBendsNothing()
    {
        const QPointF point(7, 8);
        QCOMPARE(WarpPoint(point, QRectF(0, 0, 0, 40), Bent(50)), point);
        QCOMPARE(UnwarpPoint(point, QRectF(), Bent(50)), point);
        QPainterPath path;
        path.addRect(1, 2, 3, 4);
        QCOMPARE(WarpPath(path, QRectF(0, 0, 10, 0), Bent(50)), path);
    }

    void straighteningFindsThePointAgain_data()
    {
        QTest::addColumn<double>("bend");
        QTest::addColumn<double>("horizontal");
        QTest::addColumn<double>("vertical");
        QTest::addColumn<bool>("isVertical");
        QTest::newRow("straight") << 0.0 << 0.0 << 0.0 << false;
        QTest::newRow("wave") << 100.0 << 0.0 << 0.0 << false;
        QTest::newRow("vertical wave") << -100.0 << 0.0 << 0.0 << true;
        QTest::newRow("growing") << 0.0 << 80.0 << 0.0 << false;
        QTest::newRow("all") << 30.0 << -30.0 << 20.0 << false;
        QTest::newRow("all, vertical") << -30.0 << 30.0 << -20.0 << true;
    }

    void straighteningFindsThePointAgain()
    {
        QFETCH(double, bend);
        QFETCH(double, horizontal);
        QFETCH(double, vertical);
        QFETCH(bool, isVertical);
        const TextWarp warp = Bent(bend, horizontal, vertical, isVertical);
        for (double x = Frame.left(); x <= Frame.right(); x += 20)
        {
            for (double y = Frame.top(); y <= Frame.bottom(); y += 5)
            {
                const QPointF point(x, y);
                const QPointF found = UnwarpPoint(WarpPoint(point, Frame, warp), Frame, warp);
                QVERIFY2(AreNear(found, point, 0.5),
                         qPrintable(QString("%1,%2 -> %3,%4").arg(x).arg(y).arg(found.x()).arg(found.y())));
            }
        }
    }

    void straighteningStaysFiniteWhereTheTextShrinksToNothing()
    {
        for (const TextWarp& warp : {Bent(100, 100, 100), Bent(-100, -100, -100, true)})
        {
            for (double x = -1000; x <= 1000; x += 250)
            {
                const QPointF found = UnwarpPoint(QPointF(x, x / 3), Frame, warp);
                QVERIFY(std::isfinite(found.x()) && std::isfinite(found.y()));
            }
        }
    }

    // The long side is bent too, not only its ends.
    void outlineFollowsTheWaveBetweenItsCorners()
    {
        QPainterPath path;
        path.addRect(QRectF(100, 65, 200, 10));
        const QPainterPath bent = WarpPath(path, Frame, Bent(100));
        QVERIFY(bent.contains(QPointF(150, 50)));
        QVERIFY(!bent.contains(QPointF(150, 70)));
        QVERIFY(bent.contains(QPointF(250, 90)));
        QVERIFY(!bent.contains(QPointF(250, 70)));
        const QRectF bounds = bent.boundingRect();
        QVERIFY(qAbs(bounds.top() - 45) < 0.2 && qAbs(bounds.bottom() - 95) < 0.2);
    }

    void curvesAndHolesStay()
    {
        QPainterPath ring;
        ring.setFillRule(Qt::WindingFill);
        ring.addEllipse(QPointF(200, 70), 20, 20);
        QPainterPath hole;
        hole.addEllipse(QPointF(200, 70), 10, 10);
        ring.addPath(hole.toReversed());
        const QPainterPath bent = WarpPath(ring, Frame, Bent(10));
        QCOMPARE(bent.fillRule(), Qt::WindingFill);
        QVERIFY(!bent.contains(QPointF(200, 70)));
        QVERIFY(bent.contains(WarpPoint(QPointF(200, 85), Frame, Bent(10))));
        // As round as before: no point of the rim is more than a fifth of a pixel off.
        for (int degrees = 0; degrees < 360; degrees += 7)
        {
            const double angle = qDegreesToRadians(double(degrees));
            const QPointF way(std::cos(angle), std::sin(angle));
            QVERIFY(bent.contains(WarpPoint(QPointF(200, 70) + way * 19.8, Frame, Bent(10))));
            QVERIFY(!bent.contains(WarpPoint(QPointF(200, 70) + way * 20.2, Frame, Bent(10))));
        }
    }

    void straightOutlineStaysAsItIs()
    {
        QPainterPath path;
        path.addEllipse(QPointF(200, 70), 20, 20);
        QCOMPARE(WarpPath(path, Frame, TextWarp()), path);
    }
};

NV_TEST_MAIN(tst_TextWarp)
#include "tst_TextWarp.moc"
