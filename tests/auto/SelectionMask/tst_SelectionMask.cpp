// Selection masks: small ones that a person can tell, and random ones against plain loops.

#include <QTest>

#include <QRandomGenerator>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>

#include "SelectionMask.h"
#include "TestMain.h"

namespace
{

QImage Mask(const QSize& size, const std::function<int(int x, int y)>& value)
{
    QImage mask(size, QImage::Format_Grayscale8);
    for (int y = 0; y < size.height(); ++y)
    {
        for (int x = 0; x < size.width(); ++x)
            mask.scanLine(y)[x] = uchar(value(x, y));
    }
    return mask;
}

int At(const QImage& mask, int x, int y)
{
    return mask.constScanLine(y)[x];
}

QImage Random(const QSize& size, quint32 seed, int selectedOfHundred = 50)
{
    QRandomGenerator random(seed);
    return Mask(size,
                [&](int, int)
                { return int(random.bounded(100)) < selectedOfHundred ? int(random.bounded(256)) : 0; });
}

// One selected rect, hard.
QImage Rect(const QSize& size, const QRect& rect, int value = 255)
{
    return Mask(size, [&](int x, int y) { return rect.contains(x, y) ? value : 0; });
}

int Combined(int before, int with, int state)
{
    switch (state)
    {
    case UniteSelections:
        return std::max(before, with);
    case SubtractSelection:
        return std::min(before, 255 - with);
    case IntersectSelections:
        return std::min(before, with);
    default:
        return with;
    }
}

// The highest value within the disc; beyond the mask all is 0.
QImage GrownPlainly(const QImage& mask, int radius)
{
    const auto highest = [&](int x, int y)
    {
        int value = 0;
        for (int dy = -radius; dy <= radius; ++dy)
        {
            for (int dx = -radius; dx <= radius; ++dx)
            {
                if (dx * dx + dy * dy <= radius * radius && mask.rect().contains(x + dx, y + dy))
                    value = std::max(value, At(mask, x + dx, y + dy));
            }
        }
        return value;
    };
    return Mask(mask.size(), highest);
}

QImage Inverse(const QImage& mask)
{
    return Mask(mask.size(), [&](int x, int y) { return 255 - At(mask, x, y); });
}

double Area(const QImage& mask)
{
    double sum = 0;
    for (int y = 0; y < mask.height(); ++y)
    {
        for (int x = 0; x < mask.width(); ++x)
            sum += At(mask, x, y) / 255.0;
    }
    return sum;
}

} // namespace

class tst_SelectionMask : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void combiningIsByPixel_data()
    {
        QTest::addColumn<int>("state");
        QTest::newRow("replace") << int(ReplaceSelection);
        QTest::newRow("unite") << int(UniteSelections);
        QTest::newRow("subtract") << int(SubtractSelection);
        QTest::newRow("intersect") << int(IntersectSelections);
        QTest::newRow("none of them") << 0;
        QTest::newRow("far off") << 77;
    }
    void combiningIsByPixel()
    {
        QFETCH(int, state);
        const QSize size(203, 131);
        const QImage before = Random(size, 1);
        const QImage with = Random(size, 2);

        QCOMPARE(CombineMasks(before, with, state),
                 Mask(size, [&](int x, int y) { return Combined(At(before, x, y), At(with, x, y), state); }));
        QCOMPARE(before, Random(size, 1));
        QCOMPARE(with, Random(size, 2));
    }

    void whatIsNotSelectedCombinesToo_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<bool>("hasOld");
        QTest::addColumn<bool>("hasNew");
        // 0 nothing, 1 the old one, 2 the new one.
        QTest::addColumn<int>("left");
        QTest::newRow("replace nothing") << 1 << false << true << 2;
        QTest::newRow("replace by nothing") << 1 << true << false << 0;
        QTest::newRow("unite with nothing") << 2 << true << false << 1;
        QTest::newRow("unite nothing with") << 2 << false << true << 2;
        QTest::newRow("subtract nothing") << 3 << true << false << 1;
        QTest::newRow("subtract from nothing") << 3 << false << true << 0;
        QTest::newRow("intersect with nothing") << 4 << true << false << 0;
        QTest::newRow("intersect nothing with") << 4 << false << true << 0;
        QTest::newRow("nothing at all") << 2 << false << false << 0;
    }
    void whatIsNotSelectedCombinesToo()
    {
        QFETCH(int, state);
        QFETCH(bool, hasOld);
        QFETCH(bool, hasNew);
        QFETCH(int, left);
        const QImage old = Rect(QSize(9, 7), QRect(1, 1, 3, 3));
        const QImage with = Rect(QSize(9, 7), QRect(5, 2, 3, 3));

        const QImage result = CombineMasks(hasOld ? old : QImage(), hasNew ? with : QImage(), state);

        QCOMPARE(result, left == 0 ? QImage() : left == 1 ? old : with);
    }

    void aResultInWhichNothingIsSelectedIsNull()
    {
        const QSize size(100, 90);
        const QImage one = Rect(size, QRect(10, 10, 20, 20));
        const QImage other = Rect(size, QRect(40, 10, 20, 20));

        QVERIFY(CombineMasks(one, other, IntersectSelections).isNull());
        QVERIFY(CombineMasks(one, one, SubtractSelection).isNull());
        QVERIFY(CombineMasks(one, Rect(size, QRect()), ReplaceSelection).isNull());
        QVERIFY(InvertMask(FullMask(size), size).isNull());
        QVERIFY(MoveMask(one, QPoint(90, 0)).isNull());
        QVERIFY(ShrinkMask(one, 11).isNull());
    }

    void masksOfTwoSizesGiveTheNewOne()
    {
        const QImage with = Rect(QSize(8, 8), QRect(1, 1, 2, 2));
        QCOMPARE(CombineMasks(Rect(QSize(9, 9), QRect(1, 1, 2, 2)), with, UniteSelections), with);
    }

    void anotherFormatSelectsNothing()
    {
        QImage picture(8, 8, QImage::Format_RGB32);
        picture.fill(Qt::white);
        QVERIFY(!HasSelected(picture));
        QVERIFY(MaskBounds(picture).isEmpty());
        QVERIFY(GrowMask(picture, 2).isNull());
        QCOMPARE(InvertMask(picture, QSize(8, 8)), FullMask(QSize(8, 8)));
    }

    void theBoundsHoldWhatIsSelectedAndNoMore_data()
    {
        QTest::addColumn<QRect>("rect");
        QTest::newRow("inside") << QRect(17, 70, 40, 90);
        QTest::newRow("a pixel") << QRect(31, 64, 1, 1);
        QTest::newRow("first pixel") << QRect(0, 0, 1, 1);
        QTest::newRow("last pixel") << QRect(100, 200, 1, 1);
        QTest::newRow("a row") << QRect(0, 128, 101, 1);
        QTest::newRow("a column") << QRect(100, 0, 1, 201);
        QTest::newRow("all") << QRect(0, 0, 101, 201);
    }
    void theBoundsHoldWhatIsSelectedAndNoMore()
    {
        QFETCH(QRect, rect);
        const QImage mask = Rect(QSize(101, 201), rect, 1);
        QCOMPARE(MaskBounds(mask), rect);
        QVERIFY(HasSelected(mask));
    }

    void nothingHasNoBounds()
    {
        QVERIFY(MaskBounds(QImage()).isEmpty());
        QVERIFY(MaskBounds(Rect(QSize(70, 70), QRect())).isEmpty());
        QVERIFY(!HasSelected(QImage()));
        QVERIFY(!HasSelected(Rect(QSize(70, 70), QRect())));
    }

    void anOutlineNeedsAPixelThatIsSelectedByHalf()
    {
        QVERIFY(!HasOutline(QImage()));
        QVERIFY(!HasOutline(Rect(QSize(70, 70), QRect(3, 3, 9, 9), 127)));
        QVERIFY(HasOutline(Rect(QSize(70, 70), QRect(69, 69, 1, 1), 128)));
    }

    void aRectangleOnWholePixelsIsHard()
    {
        const QSize size(150, 200);
        QCOMPARE(RectangleMask(size, QRectF(20, 30, 60, 100)), Rect(size, QRect(20, 30, 60, 100)));
        // Also beyond the picture, and drawn backwards.
        QCOMPARE(RectangleMask(size, QRectF(-20, -30, 60, 100)), Rect(size, QRect(0, 0, 40, 70)));
        QCOMPARE(RectangleMask(size, QRectF(80, 130, -60, -100)), Rect(size, QRect(20, 30, 60, 100)));
        QCOMPARE(RectangleMask(size, QRectF(-1e9, -1e9, 2e9, 2e9)), FullMask(size));
        QVERIFY(RectangleMask(size, QRectF(300, 300, 10, 10)).isNull());
        QVERIFY(RectangleMask(size, QRectF(10, 10, 0, 0)).isNull());
    }

    void halfCoveredPixelsAreHalfSelected()
    {
        const QImage mask = RectangleMask(QSize(20, 20), QRectF(2.5, 3, 10, 10));
        QVERIFY(std::abs(At(mask, 2, 5) - 128) <= 2);
        QVERIFY(std::abs(At(mask, 12, 5) - 128) <= 2);
        QCOMPARE(At(mask, 3, 5), 255);
    }

    void aCornerRadiusTakesTheCorners()
    {
        const QSize size(100, 100);
        const QImage mask = RectangleMask(size, QRectF(10, 10, 80, 60), 20);

        QCOMPARE(MaskBounds(mask), QRect(10, 10, 80, 60));
        QCOMPARE(At(mask, 11, 11), 0);
        QCOMPARE(At(mask, 88, 68), 0);
        QCOMPARE(At(mask, 50, 10), 255);
        // Of each corner's square a quarter disc is left.
        QVERIFY(std::abs(Area(mask) - (80 * 60 - (4 - M_PI) * 400)) < 8);
        // At most half the shorter side: two half discs at the ends.
        const QImage round = RectangleMask(size, QRectF(10, 10, 80, 60), 99);
        QVERIFY(std::abs(Area(round) - (20 * 60 + M_PI * 900)) < 10);
    }

    void anEllipseHasTheAreaOfOneAndSoftEdges()
    {
        const QImage mask = EllipseMask(QSize(300, 200), QRectF(20, 10, 240, 160));

        QCOMPARE(MaskBounds(mask), QRect(20, 10, 240, 160));
        QVERIFY(std::abs(Area(mask) - M_PI * 120 * 80) < 30);
        QCOMPARE(At(mask, 140, 90), 255);
        QCOMPARE(At(mask, 25, 15), 0);
        int soft = 0;
        for (int x = 0; x < 300; ++x)
            soft += At(mask, x, 30) > 0 && At(mask, x, 30) < 255;
        QVERIFY(soft >= 2 && soft <= 8);
        QVERIFY(EllipseMask(QSize(300, 200), QRectF(20, 10, 0, 160)).isNull());
    }

    void threadsDrawingOneShapeDoNotDisturbOneAnother()
    {
        const QSize size(64, 640);
        const QRect rect(2, 3, 60, 634);
        const QImage expected = Rect(size, rect);
        for (int i = 0; i < 300; ++i)
            QCOMPARE(RectangleMask(size, rect), expected);
    }

    void stripsOfWorkLeaveNoSeams()
    {
        // The lower half mirrors the upper one.
        const QImage mask = EllipseMask(QSize(400, 400), QRectF(0, 0, 400, 400));
        for (int y = 0; y < 200; ++y)
        {
            for (int x = 0; x < 400; ++x)
                QVERIFY(std::abs(At(mask, x, y) - At(mask, x, 399 - y)) <= 3);
        }
    }

    void invertingTwiceGivesTheSame()
    {
        const QImage mask = Random(QSize(130, 70), 5);
        QCOMPARE(InvertMask(mask, mask.size()), Inverse(mask));
        QCOMPARE(InvertMask(InvertMask(mask, mask.size()), mask.size()), mask);
        QCOMPARE(InvertMask(QImage(), QSize(5, 6)), FullMask(QSize(5, 6)));
    }

    void movingTakesAlongAndCutsOff_data()
    {
        QTest::addColumn<QPoint>("offset");
        for (const QPoint& offset :
             {QPoint(0, 0), QPoint(7, -11), QPoint(-80, 3), QPoint(1, 129), QPoint(-129, -69)})
            QTest::addRow("%d, %d", offset.x(), offset.y()) << offset;
    }
    void movingTakesAlongAndCutsOff()
    {
        QFETCH(QPoint, offset);
        const QImage mask = Random(QSize(130, 130), 6, 70);
        const auto moved = [&](int x, int y)
        {
            const QPoint from = QPoint(x, y) - offset;
            return mask.rect().contains(from) ? At(mask, from.x(), from.y()) : 0;
        };
        QCOMPARE(MoveMask(mask, offset), Mask(mask.size(), moved));
    }

    void growingTakesTheHighestOfADisc_data()
    {
        QTest::addColumn<int>("radius");
        for (int radius : {1, 2, 3, 4, 5, 7, 8, 11, 16, 23, 40})
            QTest::addRow("%d", radius) << radius;
    }
    void growingTakesTheHighestOfADisc()
    {
        QFETCH(int, radius);
        // Sparse, so that single pixels become discs, and with some at the edges.
        QImage mask = Random(QSize(97, 83), quint32(radius), 2);
        mask.scanLine(0)[0] = 200;
        mask.scanLine(82)[96] = 100;

        QCOMPARE(GrowMask(mask, radius), GrownPlainly(mask, radius));
    }

    void tilesOfWorkLeaveNoSeams()
    {
        const QImage mask = Random(QSize(1100, 40), 8, 1);
        QCOMPARE(GrowMask(mask, 6), GrownPlainly(mask, 6));
        const QImage tall = Random(QSize(40, 1100), 8, 1);
        QCOMPARE(GrowMask(tall, 6), GrownPlainly(tall, 6));
    }

    void shrinkingTakesTheLowestOfADisc_data()
    {
        QTest::addColumn<int>("radius");
        for (int radius : {1, 3, 6})
            QTest::addRow("%d", radius) << radius;
    }
    void shrinkingTakesTheLowestOfADisc()
    {
        QFETCH(int, radius);
        const QImage holes = Inverse(Random(QSize(97, 83), quint32(radius), 1));
        QCOMPARE(ShrinkMask(holes, radius), Inverse(GrownPlainly(Inverse(holes), radius)));
        const QImage rect = Rect(QSize(97, 83), QRect(20, 20, 40, 40));
        QCOMPARE(ShrinkMask(rect, radius),
                 Rect(QSize(97, 83), QRect(20, 20, 40, 40).adjusted(radius, radius, -radius, -radius)));
    }

    void atTheEdgeOfThePictureASelectionGoesOn()
    {
        const QSize size(60, 60);
        QCOMPARE(ShrinkMask(FullMask(size), 10), FullMask(size));
        QCOMPARE(FeatherMask(FullMask(size), 10), FullMask(size));
        const QImage left = Rect(size, QRect(0, 0, 30, 60));
        QCOMPARE(ShrinkMask(left, 10), Rect(size, QRect(0, 0, 20, 60)));
        const QImage soft = FeatherMask(left, 10);
        QCOMPARE(At(soft, 0, 0), 255);
        QCOMPARE(At(soft, 0, 59), 255);
    }

    void theFeatherGoesOverAsManyPixelsOnEitherSide_data()
    {
        QTest::addColumn<int>("radius");
        for (int radius : {2, 5, 10, 40})
            QTest::addRow("%d", radius) << radius;
    }
    void theFeatherGoesOverAsManyPixelsOnEitherSide()
    {
        QFETCH(int, radius);
        const QImage soft = FeatherMask(Rect(QSize(400, 40), QRect(0, 0, 200, 40)), radius);
        const int middle = At(soft, 199, 20);
        QVERIFY2(std::abs(middle + At(soft, 200, 20) - 255) <= 3, qPrintable(QString::number(middle)));
        // A Gaussian of half the radius has a fortieth of it beyond twice its deviation.
        QVERIFY(At(soft, 199 - radius, 20) >= 245);
        QVERIFY(At(soft, 200 + radius, 20) <= 10);
        QVERIFY(At(soft, 199 - radius / 2, 20) < 250);
        QCOMPARE(At(soft, 199 - 3 * radius, 20), 255);
        QCOMPARE(At(soft, 200 + 3 * radius, 20), 0);
        for (int x = 1; x < 400; ++x)
            QVERIFY(At(soft, x, 20) <= At(soft, x - 1, 20));
    }

    void aPieceIsFeatheredAsAWholeMaskIs()
    {
        // The second mask is the first with much room around.
        const QImage small = Rect(QSize(120, 120), QRect(50, 50, 20, 20));
        const QImage large = Rect(QSize(700, 650), QRect(350, 350, 20, 20));
        QCOMPARE(FeatherMask(large, 8).copy(300, 300, 120, 120), FeatherMask(small, 8));
    }

    void smoothingTakesSpotsAndGapsAndRoundsCorners()
    {
        QImage mask = Rect(QSize(200, 200), QRect(50, 50, 100, 100));
        mask.scanLine(20)[20] = 255;
        mask.scanLine(100)[100] = 0;

        const QImage smooth = SmoothMask(mask, 10);

        QCOMPARE(At(smooth, 20, 20), 0);
        QCOMPARE(At(smooth, 100, 100), 255);
        QCOMPARE(At(smooth, 50, 50), 0);
        QCOMPARE(At(smooth, 100, 51), 255);
        QCOMPARE(At(smooth, 100, 47), 0);
        // The straight edge is where it was.
        QVERIFY(At(smooth, 100, 50) > 128);
        QVERIFY(At(smooth, 100, 49) < 128);
    }

    void refiningIsOneAfterTheOther()
    {
        const QImage mask = Random(QSize(150, 150), 9, 60);
        MaskRefinement refinement;
        QCOMPARE(RefineMask(mask, refinement), mask);
        refinement.smooth = 4;
        refinement.grow = 5;
        refinement.shrink = 3;
        refinement.feather = 6;
        QCOMPARE(RefineMask(mask, refinement),
                 FeatherMask(ShrinkMask(GrowMask(SmoothMask(mask, 4), 5), 3), 6));
        QVERIFY(RefineMask(QImage(), refinement).isNull());
    }

    void workThatIsCancelledGivesNothing()
    {
        const QImage mask = Random(QSize(150, 150), 9);
        const auto cancelled = [] { return true; };
        QVERIFY(GrowMask(mask, 3, cancelled).isNull());
        QVERIFY(ShrinkMask(mask, 3, cancelled).isNull());
        QVERIFY(FeatherMask(mask, 3, cancelled).isNull());
        QVERIFY(SmoothMask(mask, 3, cancelled).isNull());
        MaskRefinement refinement;
        refinement.grow = 2;
        QVERIFY(RefineMask(mask, refinement, cancelled).isNull());
    }

    void badNumbersChangeNothing()
    {
        const QImage mask = Random(QSize(50, 50), 9);
        QCOMPARE(GrowMask(mask, -4), mask);
        QCOMPARE(ShrinkMask(mask, 0), mask);
        QCOMPARE(SmoothMask(mask, -1), mask);
        QCOMPARE(FeatherMask(mask, -1), mask);
        QCOMPARE(FeatherMask(mask, std::numeric_limits<double>::quiet_NaN()), mask);
        QVERIFY(FullMask(QSize(0, 5)).isNull());
    }
};

NV_TEST_MAIN(tst_SelectionMask)

#include "tst_SelectionMask.moc"
