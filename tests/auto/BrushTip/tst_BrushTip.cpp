// What a brush leaves with one stamp: size, centre, fall-off and bad input.

#include <QImage>
#include <QtMath>
#include <cmath>
#include <limits>

#include "BrushTip.h"
#include "TestMain.h"

namespace
{

const double Nan = std::numeric_limits<double>::quiet_NaN();
const double Infinity = std::numeric_limits<double>::infinity();

int coverAt(const QImage& image, int x, int y)
{
    return image.constScanLine(y)[x];
}

// The covered area in whole pixels.
double area(const QImage& image)
{
    double sum = 0;
    for (int y = 0; y < image.height(); ++y)
    {
        for (int x = 0; x < image.width(); ++x)
            sum += coverAt(image, x, y);
    }
    return sum / 255;
}

BrushTip make(BrushTip::Shape shape, double hardness = 1.0, double roundness = 1.0, double angle = 0.0)
{
    BrushTip tip;
    tip.shape = shape;
    tip.hardness = hardness;
    tip.roundness = roundness;
    tip.angle = angle;
    return tip;
}

} // namespace

class tst_BrushTip : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aStampIsASquareMask_data();
    void aStampIsASquareMask();
    void onePixelIsPaintedInFull();
    void aBadDiameterIsTakenAsOne_data();
    void aBadDiameterIsTakenAsOne();
    void badParametersAreClamped();
    void aHardRoundHasTheAreaOfItsCircle();
    void fractionsOfTheDiameterShow();
    void aSoftTipFallsOffSmoothly();
    void hardnessSaysHowFarItIsFull();
    void shapesAreSymmetric_data();
    void shapesAreSymmetric();
    void edgesAreSmooth_data();
    void edgesAreSmooth();
    void roundnessFlattens();
    void theAngleTurnsCounterClockwise();
    void aTurnedSquareIsNotCutOff();
    void aFullTurnChangesNothing();
    void theStarHasFiveTips();
    void theSprayIsTheSameEachTime();
    void aTurnedCircleIsTheSameCircle();
    void equalTipsAreEqual();
    void aLargeRoundStampIsFast();
};

void tst_BrushTip::aStampIsASquareMask_data()
{
    QTest::addColumn<int>("shape");
    QTest::addColumn<double>("diameter");
    QTest::addColumn<int>("side");
    for (int shape = BrushTip::Round; shape <= BrushTip::Spray; ++shape)
    {
        QTest::addRow("shape %d, 1 px", shape) << shape << 1.0 << 1;
        QTest::addRow("shape %d, 2 px", shape) << shape << 2.0 << 2;
        QTest::addRow("shape %d, 15.2 px", shape) << shape << 15.2 << 16;
        QTest::addRow("shape %d, 64 px", shape) << shape << 64.0 << 64;
    }
}

void tst_BrushTip::aStampIsASquareMask()
{
    QFETCH(int, shape);
    QFETCH(double, diameter);
    QFETCH(int, side);

    const QImage image = RenderBrushTip(make(BrushTip::Shape(shape)), diameter);

    QCOMPARE(image.format(), QImage::Format_Alpha8);
    QCOMPARE(image.size(), QSize(side, side));
    QVERIFY(area(image) > 0);
}

void tst_BrushTip::onePixelIsPaintedInFull()
{
    for (int shape = BrushTip::Round; shape <= BrushTip::Spray; ++shape)
    {
        const QImage image = RenderBrushTip(make(BrushTip::Shape(shape), 0.0, 0.05, 30.0), 1.0);
        QCOMPARE(image.size(), QSize(1, 1));
        QCOMPARE(coverAt(image, 0, 0), 255);
    }
}

void tst_BrushTip::aBadDiameterIsTakenAsOne_data()
{
    QTest::addColumn<double>("diameter");
    QTest::newRow("zero") << 0.0;
    QTest::newRow("negative") << -12.0;
    QTest::newRow("below one") << 0.3;
    QTest::newRow("not a number") << Nan;
    QTest::newRow("infinite") << Infinity;
    QTest::newRow("minus infinite") << -Infinity;
}

void tst_BrushTip::aBadDiameterIsTakenAsOne()
{
    QFETCH(double, diameter);
    QCOMPARE(RenderBrushTip(BrushTip(), diameter), RenderBrushTip(BrushTip(), 1.0));
}

void tst_BrushTip::badParametersAreClamped()
{
    QCOMPARE(RenderBrushTip(make(BrushTip::Round, 7.0, 3.0), 20), RenderBrushTip(make(BrushTip::Round), 20));
    QCOMPARE(RenderBrushTip(make(BrushTip::Round, -7.0, -3.0), 20),
             RenderBrushTip(make(BrushTip::Round, 0.0, 0.05), 20));
    QCOMPARE(RenderBrushTip(make(BrushTip::Round, Nan, Nan, Nan), 20),
             RenderBrushTip(make(BrushTip::Round), 20));
    QCOMPARE(RenderBrushTip(make(BrushTip::Square, 1, 0.5, Infinity), 20),
             RenderBrushTip(make(BrushTip::Square, 1, 0.5), 20));
    QCOMPARE(RenderBrushTip(make(BrushTip::Shape(99)), 20), RenderBrushTip(make(BrushTip::Round), 20));
}

void tst_BrushTip::aHardRoundHasTheAreaOfItsCircle()
{
    for (const double diameter : {5.0, 12.0, 31.5, 200.0})
    {
        const double circle = M_PI * diameter * diameter / 4;
        const double covered = area(RenderBrushTip(BrushTip(), diameter));
        QVERIFY2(qAbs(covered - circle) < 0.03 * circle, qPrintable(QString::number(covered / circle)));
    }
}

void tst_BrushTip::fractionsOfTheDiameterShow()
{
    double previous = 0;
    for (double diameter = 6.0; diameter < 9.0; diameter += 0.25)
    {
        const double covered = area(RenderBrushTip(BrushTip(), diameter));
        QVERIFY(covered > previous);
        previous = covered;
    }
}

void tst_BrushTip::aSoftTipFallsOffSmoothly()
{
    const QImage image = RenderBrushTip(make(BrushTip::Round, 0.0), 201);
    QCOMPARE(coverAt(image, 100, 100), 255);
    int steepest = 0;
    for (int x = 101; x < 201; ++x)
    {
        const int step = coverAt(image, x - 1, 100) - coverAt(image, x, 100);
        QVERIFY(step >= 0);
        steepest = qMax(steepest, step);
    }
    QVERIFY(steepest <= 5);
    QVERIFY(qAbs(coverAt(image, 150, 100) - 128) < 8);
    // Level at both ends.
    QVERIFY(coverAt(image, 105, 100) >= 253);
    QVERIFY(coverAt(image, 196, 100) <= 2);
}

void tst_BrushTip::hardnessSaysHowFarItIsFull()
{
    const QImage image = RenderBrushTip(make(BrushTip::Round, 0.5), 201);
    QCOMPARE(coverAt(image, 149, 100), 255);
    QVERIFY(coverAt(image, 155, 100) < 255);
    QVERIFY(coverAt(image, 195, 100) > 0);
}

void tst_BrushTip::shapesAreSymmetric_data()
{
    QTest::addColumn<int>("shape");
    QTest::addColumn<double>("diameter");
    for (const int shape : {BrushTip::Round, BrushTip::Square, BrushTip::Diamond})
    {
        for (const double diameter : {4.0, 7.0, 20.5})
            QTest::addRow("shape %d, %g px", shape, diameter) << shape << diameter;
    }
}

void tst_BrushTip::shapesAreSymmetric()
{
    QFETCH(int, shape);
    QFETCH(double, diameter);

    const QImage straight = RenderBrushTip(make(BrushTip::Shape(shape), 0.4), diameter);
    QCOMPARE(straight.mirrored(true, false), straight);
    QCOMPARE(straight.mirrored(false, true), straight);
    const QImage turned = RenderBrushTip(make(BrushTip::Shape(shape), 0.4, 0.4, 33), diameter);
    QCOMPARE(turned.mirrored(true, true), turned);
}

void tst_BrushTip::edgesAreSmooth_data()
{
    QTest::addColumn<int>("shape");
    for (int shape = BrushTip::Round; shape <= BrushTip::Spray; ++shape)
        QTest::addRow("shape %d", shape) << shape;
}

void tst_BrushTip::edgesAreSmooth()
{
    QFETCH(int, shape);
    const QImage image = RenderBrushTip(make(BrushTip::Shape(shape), 1.0, 0.8, 20), 60);
    int between = 0;
    for (int y = 0; y < image.height(); ++y)
    {
        for (int x = 0; x < image.width(); ++x)
            between += coverAt(image, x, y) > 20 && coverAt(image, x, y) < 235;
    }
    QVERIFY(between > 60);
    QVERIFY(shape == BrushTip::Spray || between < 600);
}

void tst_BrushTip::roundnessFlattens()
{
    const QImage image = RenderBrushTip(make(BrushTip::Round, 1.0, 0.5), 40);
    QCOMPARE(coverAt(image, 2, 20), 255);
    QCOMPARE(coverAt(image, 20, 12), 255);
    QCOMPARE(coverAt(image, 20, 7), 0);
    QVERIFY(qAbs(area(image) - M_PI * 20 * 10) < 20);
}

void tst_BrushTip::theAngleTurnsCounterClockwise()
{
    const QImage image = RenderBrushTip(make(BrushTip::Round, 1.0, 0.2, 45), 60);
    // Up to the right, down to the left.
    QCOMPARE(coverAt(image, 44, 15), 255);
    QCOMPARE(coverAt(image, 15, 44), 255);
    QCOMPARE(coverAt(image, 15, 15), 0);
    QCOMPARE(coverAt(image, 44, 44), 0);
}

void tst_BrushTip::aTurnedSquareIsNotCutOff()
{
    const QImage straight = RenderBrushTip(make(BrushTip::Square), 50);
    const QImage turned = RenderBrushTip(make(BrushTip::Square, 1.0, 1.0, 45), 50);
    QCOMPARE(area(straight), 2500.0);
    QCOMPARE(turned.width(), 71);
    QVERIFY(qAbs(area(turned) - 2500) < 40);
    QCOMPARE(RenderBrushTip(make(BrushTip::Square, 1.0, 1.0, 90), 50), straight);
}

void tst_BrushTip::aFullTurnChangesNothing()
{
    QCOMPARE(RenderBrushTip(make(BrushTip::Star, 0.6, 0.7, 380), 40),
             RenderBrushTip(make(BrushTip::Star, 0.6, 0.7, 20), 40));
}

void tst_BrushTip::theStarHasFiveTips()
{
    const QImage image = RenderBrushTip(make(BrushTip::Star), 800);
    int crossings = 0;
    bool inside = false;
    for (int degree = 0; degree <= 360; ++degree)
    {
        const double angle = qDegreesToRadians(double(degree));
        const int x = qRound(399.5 + 280 * std::cos(angle));
        const int y = qRound(399.5 + 280 * std::sin(angle));
        const bool now = coverAt(image, x, y) > 127;
        crossings += degree > 0 && now != inside;
        inside = now;
    }
    QCOMPARE(crossings, 10);
    QCOMPARE(coverAt(image, 400, 80), 255);
    QCOMPARE(coverAt(image, 400, 720), 0);
}

void tst_BrushTip::theSprayIsTheSameEachTime()
{
    const BrushTip spray = make(BrushTip::Spray, 0.5);
    QCOMPARE(RenderBrushTip(spray, 80), RenderBrushTip(spray, 80));
    const double part = area(RenderBrushTip(make(BrushTip::Spray), 200)) / (M_PI * 100 * 100);
    QVERIFY2(part > 0.1 && part < 0.6, qPrintable(QString::number(part)));
}

void tst_BrushTip::aTurnedCircleIsTheSameCircle()
{
    QCOMPARE(RenderBrushTip(make(BrushTip::Round, 0.3, 1.0, 77), 33),
             RenderBrushTip(make(BrushTip::Round, 0.3), 33));
}

void tst_BrushTip::equalTipsAreEqual()
{
    QVERIFY(make(BrushTip::Star, 0.5) == make(BrushTip::Star, 0.5));
    QVERIFY(make(BrushTip::Star, 0.5) != make(BrushTip::Star, 0.6));
    QVERIFY(make(BrushTip::Star) != make(BrushTip::Round));
    QVERIFY(make(BrushTip::Round, 1, 0.5) != make(BrushTip::Round, 1, 0.6));
    QVERIFY(make(BrushTip::Round, 1, 1, 3) != make(BrushTip::Round, 1, 1, 4));
}

// Far below what a person would feel, with room for a slow machine and for instrumented builds.
void tst_BrushTip::aLargeRoundStampIsFast()
{
    for (const double hardness : {0.0, 1.0})
    {
        QElapsedTimer timer;
        timer.start();
        const QImage image = RenderBrushTip(make(BrushTip::Round, hardness), 2500);
        QVERIFY2(timer.elapsed() < 600, qPrintable(QString::number(timer.elapsed())));
        QCOMPARE(image.width(), 2500);
    }
}

NV_TEST_MAIN(tst_BrushTip)
#include "tst_BrushTip.moc"
