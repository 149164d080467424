// The geometry of a selection that is drawn by a drag.

#include "SelectionShape.h"

#include <QTest>

#include <limits>

#include "SelectionMask.h"
#include "TestMain.h"

class tst_SelectionShape : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theRectLiesBetweenThePoints_data()
    {
        QTest::addColumn<QPointF>("to");
        QTest::addColumn<bool>("isSquare");
        QTest::addColumn<bool>("isFromCentre");
        QTest::addColumn<QRect>("rect");
        const QPointF to(30, 5);
        QTest::newRow("plain") << to << false << false << QRect(10, 5, 20, 15);
        QTest::newRow("square") << to << true << false << QRect(10, 0, 20, 20);
        QTest::newRow("from the centre") << to << false << true << QRect(-10, 5, 40, 30);
        QTest::newRow("square from the centre") << to << true << true << QRect(-10, 0, 40, 40);
        QTest::newRow("backwards") << QPointF(4, 12) << false << false << QRect(4, 12, 6, 8);
        QTest::newRow("square backwards") << QPointF(4, 12) << true << false << QRect(2, 12, 8, 8);
        QTest::newRow("to the nearest corner")
            << QPointF(14.6, 22.4) << false << false << QRect(10, 20, 5, 2);
        QTest::newRow("nowhere") << QPointF(10.3, 20.2) << false << false << QRect(10, 20, 0, 0);
        QTest::newRow("along an axis") << QPointF(40, 20) << true << false << QRect(10, 20, 30, 30);
    }
    void theRectLiesBetweenThePoints()
    {
        QFETCH(QPointF, to);
        QFETCH(bool, isSquare);
        QFETCH(bool, isFromCentre);
        QFETCH(QRect, rect);
        QCOMPARE(DraggedRect(QPointF(10, 20), to, isSquare, isFromCentre), rect);
    }

    void farPointsOverflowNothing()
    {
        const QRect rect = DraggedRect(QPointF(0, 0), QPointF(1e300, -1e300), true, true);
        QVERIFY(rect.width() > 0 && rect.height() > 0);
        QVERIFY(rect.contains(QPoint(0, 0)));
    }

    void theWayIsInWholePixels()
    {
        QCOMPARE(DraggedWay(QPointF(1.5, 1.5), QPointF(4.4, -3.2), false), QPoint(3, -5));
        QCOMPARE(DraggedWay(QPointF(1.5, 1.5), QPointF(4.4, -3.2), true), QPoint(0, -5));
        QCOMPARE(DraggedWay(QPointF(0, 0), QPointF(-9, 3), true), QPoint(-9, 0));
    }

    void theMaskIsThatOfTheShape()
    {
        const QSize size(80, 60);
        SelectionShape shape;
        shape.rect = QRect(10, 5, 50, 40);
        QCOMPARE(MaskOf(shape, size), RectangleMask(size, shape.rect));
        shape.radius = 9;
        shape.feather = 4;
        QCOMPARE(MaskOf(shape, size), RectangleMask(size, shape.rect, 9, 4));
        shape.kind = SelectionShape::Ellipse;
        QCOMPARE(MaskOf(shape, size), EllipseMask(size, shape.rect, 4));
    }

    void thePathIsTheEdgeOfTheMask()
    {
        SelectionShape shape;
        shape.rect = QRect(10, 5, 50, 40);
        QVERIFY(PathOf(shape).contains(QPointF(11, 6)));
        shape.radius = 99;
        QVERIFY(!PathOf(shape).contains(QPointF(11, 6)));
        QVERIFY(PathOf(shape).contains(QPointF(35, 6)));
        QCOMPARE(PathOf(shape).boundingRect(), QRectF(shape.rect));
        shape.kind = SelectionShape::Ellipse;
        QVERIFY(!PathOf(shape).contains(QPointF(17, 8)));
        QCOMPARE(PathOf(shape).boundingRect(), QRectF(shape.rect));
    }
};

NV_TEST_MAIN(tst_SelectionShape)

#include "tst_SelectionShape.moc"
