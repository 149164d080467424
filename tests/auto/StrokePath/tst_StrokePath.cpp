// Where the stamps of a stroke lie.

#include <QTest>

#include <cmath>
#include <limits>

#include "StrokePath.h"
#include "TestMain.h"

namespace
{
const double INF = std::numeric_limits<double>::infinity();
const double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

StrokeSettings Settings(double size, double spacing)
{
    StrokeSettings settings;
    settings.size = size;
    settings.spacing = spacing;
    return settings;
}

StrokePath Path(const StrokeSettings& settings, const QRect& bounds = QRect(0, 0, 1000, 1000))
{
    StrokePath path(settings);
    path.SetBounds(bounds);
    return path;
}

QVector<StampPlan> TakeAll(StrokePath& path)
{
    QVector<StampPlan> plans;
    StampPlan plan;
    while (path.Next(plan))
        plans.append(plan);
    return plans;
}

bool Near(const QPointF& a, const QPointF& b)
{
    return std::hypot(a.x() - b.x(), a.y() - b.y()) < 1e-6;
}
} // namespace

class tst_StrokePath : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aClickIsOneStampAtOnce();
    void stampsLieExactlyAtTheSpacing();
    void theDistanceIsCarriedOverCorners();
    void manySmallSegmentsAreLikeOneLarge();
    void pressureRunsEvenlyAlongASegment();
    void stampsAreNeverCloserThanHalfAPixel();
    void stampsBeforeTheLayerAreSkippedButCounted();
    void farAwayCostsNothing_data();
    void farAwayCostsNothing();
    void badPointsAreIgnored();
    void badPressureIsCut();
    void aRepeatedPointGivesNoSecondStamp();
    void theSizeFollowsThePressureAndTheSpacingTheSize();
    void hardnessFollowsThePressure();
    void theFirstStampWaitsForItsDirection();
    void aClickWithATurningTipComesAtTheEnd();
    void scatterStaysWithinTheSizeAndIsRepeatable();
    void aSmoothPathRunsThroughTheMiddlesAndEndsAtTheLastPoint();
    void nothingIsAddedAfterTheEnd();
};

void tst_StrokePath::aClickIsOneStampAtOnce()
{
    StrokePath path = Path(Settings(10, 25));
    QVERIFY(!path.HasNext());
    path.AddPoint({QPointF(5.5, 6.5), 0.5});
    QVERIFY(path.HasNext());

    const QVector<StampPlan> plans = TakeAll(path);

    QCOMPARE(plans.size(), 1);
    QCOMPARE(plans[0].center, QPointF(5.5, 6.5));
    QCOMPARE(plans[0].pressure, 0.5);
    QCOMPARE(plans[0].distance, 0.0);
    path.End();
    QVERIFY(!path.HasNext());
}

void tst_StrokePath::stampsLieExactlyAtTheSpacing()
{
    StrokePath path = Path(Settings(20, 25));
    path.AddPoint({QPointF(100, 100), 1});
    path.AddPoint({QPointF(130, 140), 1});

    const QVector<StampPlan> plans = TakeAll(path);

    QCOMPARE(plans.size(), 11);
    for (int i = 0; i < plans.size(); ++i)
    {
        QVERIFY(Near(plans[i].center, QPointF(100 + 3 * i, 100 + 4 * i)));
        QCOMPARE(plans[i].index, quint64(i));
        QCOMPARE(plans[i].distance, 5.0 * i);
    }
}

void tst_StrokePath::theDistanceIsCarriedOverCorners()
{
    StrokePath path = Path(Settings(10, 100));
    path.AddPoint({QPointF(0, 0), 1});
    path.AddPoint({QPointF(14, 0), 1});
    QCOMPARE(TakeAll(path).size(), 2);
    path.AddPoint({QPointF(14, 17), 1});

    const QVector<StampPlan> plans = TakeAll(path);

    QCOMPARE(plans.size(), 2);
    QVERIFY(Near(plans[0].center, QPointF(14, 6)));
    QVERIFY(Near(plans[1].center, QPointF(14, 16)));
    QCOMPARE(plans[1].distance, 30.0);
}

void tst_StrokePath::manySmallSegmentsAreLikeOneLarge()
{
    StrokePath small = Path(Settings(10, 70));
    StrokePath large = Path(Settings(10, 70));
    for (int i = 0; i <= 400; ++i)
        small.AddPoint({QPointF(i * 1.25, 50), 1});
    large.AddPoint({QPointF(0, 50), 1});
    large.AddPoint({QPointF(500, 50), 1});

    const QVector<StampPlan> a = TakeAll(small);
    const QVector<StampPlan> b = TakeAll(large);

    QCOMPARE(a.size(), 72);
    QCOMPARE(a.size(), b.size());
    for (int i = 0; i < a.size(); ++i)
        QVERIFY(Near(a[i].center, b[i].center));
}

void tst_StrokePath::pressureRunsEvenlyAlongASegment()
{
    StrokePath path = Path(Settings(10, 100));
    path.AddPoint({QPointF(0, 0), 0.0});
    path.AddPoint({QPointF(40, 0), 1.0});

    const QVector<StampPlan> plans = TakeAll(path);

    QCOMPARE(plans.size(), 5);
    for (int i = 0; i < 5; ++i)
        QCOMPARE(plans[i].pressure, i * 0.25);
}

void tst_StrokePath::stampsAreNeverCloserThanHalfAPixel()
{
    StrokePath path = Path(Settings(1, 1));
    path.AddPoint({QPointF(0, 0), 1});
    path.AddPoint({QPointF(100, 0), 1});
    QCOMPARE(TakeAll(path).size(), 201);
}

void tst_StrokePath::stampsBeforeTheLayerAreSkippedButCounted()
{
    StrokePath path = Path(Settings(10, 100), QRect(0, 0, 50, 50));
    path.AddPoint({QPointF(-1003, 25), 1});
    path.AddPoint({QPointF(2000, 25), 1});

    const QVector<StampPlan> plans = TakeAll(path);

    QVERIFY(plans.size() >= 6);
    QVERIFY(plans.size() <= 10);
    for (const StampPlan& plan : plans)
        QVERIFY(Near(plan.center, QPointF(-1003 + 10.0 * double(plan.index), 25)));
    path.AddPoint({QPointF(2000, 1000), 1});
    path.AddPoint({QPointF(25, 1000), 1});
    path.AddPoint({QPointF(25, 25), 1});
    const QVector<StampPlan> back = TakeAll(path);
    QVERIFY(!back.isEmpty());
    // 3003 + 975 + 1975 pixels to the last corner.
    for (const StampPlan& plan : back)
        QVERIFY(Near(plan.center, QPointF(25, 1000 - (10.0 * double(plan.index) - 5953))));
}

void tst_StrokePath::farAwayCostsNothing_data()
{
    QTest::addColumn<bool>("sizeDynamic");
    QTest::addColumn<bool>("smooth");
    QTest::newRow("straight") << false << false;
    QTest::newRow("with size dynamic") << true << false;
    QTest::newRow("smooth") << false << true;
}

void tst_StrokePath::farAwayCostsNothing()
{
    QFETCH(bool, sizeDynamic);
    QFETCH(bool, smooth);
    StrokeSettings settings = Settings(1, 1);
    settings.dynamics.size = sizeDynamic;
    settings.smooth = smooth;
    StrokePath path = Path(settings, QRect(0, 0, 100, 100));
    for (int i = 0; i < 50; ++i)
    {
        path.AddPoint({QPointF(-1e300, 50), 1});
        path.AddPoint({QPointF(1e300, 50), 1});
        path.AddPoint({QPointF(5e8, 1e9 + i), 0.2});
        path.AddPoint({QPointF(-7e8, 1e9), 0.8});
    }
    path.End();

    const int count = TakeAll(path).size();

    // Through the layer some hundred times at most, with stamps each half a pixel.
    QVERIFY2(count < 200 * 250, qPrintable(QString::number(count)));
    QVERIFY(!path.HasNext());
}

void tst_StrokePath::badPointsAreIgnored()
{
    StrokePath path = Path(Settings(10, 100));
    for (double bad : {NOT_A_NUMBER, INF, -INF})
    {
        path.AddPoint({QPointF(bad, 1), 1});
        path.AddPoint({QPointF(1, bad), 1});
    }
    QVERIFY(!path.HasNext());
    path.AddPoint({QPointF(10, 10), 1});
    path.AddPoint({QPointF(NOT_A_NUMBER, INF), 1});
    path.AddPoint({QPointF(30, 10), 1});
    QCOMPARE(TakeAll(path).size(), 3);
}

void tst_StrokePath::badPressureIsCut()
{
    const QVector<QPair<double, double>> cases = {
        {NOT_A_NUMBER, 1.0}, {INF, 1.0}, {-INF, 0.0}, {-3.0, 0.0}, {1.5, 1.0}};
    for (const auto& pressure : cases)
    {
        StrokePath path = Path(Settings(10, 100));
        path.AddPoint({QPointF(1, 1), pressure.first});
        QCOMPARE(TakeAll(path).value(0).pressure, pressure.second);
    }
}

void tst_StrokePath::aRepeatedPointGivesNoSecondStamp()
{
    StrokePath path = Path(Settings(10, 100));
    path.AddPoint({QPointF(10, 10), 0.25});
    path.AddPoint({QPointF(10, 10), 0.5});

    const QVector<StampPlan> plans = TakeAll(path);

    QCOMPARE(plans.size(), 1);
    QCOMPARE(plans[0].pressure, 0.25);
}

void tst_StrokePath::theSizeFollowsThePressureAndTheSpacingTheSize()
{
    StrokeSettings settings = Settings(100, 50);
    settings.dynamics.size = true;
    StrokePath path = Path(settings);
    path.AddPoint({QPointF(0, 100), 0.5});
    path.AddPoint({QPointF(101, 100), 0.5});

    const QVector<StampPlan> plans = TakeAll(path);

    QCOMPARE(plans.size(), 5);
    for (const StampPlan& plan : plans)
        QVERIFY(qAbs(plan.diameter - 50.0) < 0.2);
    StrokePath none = Path(settings);
    none.AddPoint({QPointF(0, 100), 0.0});
    QCOMPARE(TakeAll(none).value(0).diameter, 1.0);
    StrokePath whole = Path(settings);
    whole.AddPoint({QPointF(0, 100), 1.0});
    QCOMPARE(TakeAll(whole).value(0).diameter, 100.0);
}

void tst_StrokePath::hardnessFollowsThePressure()
{
    StrokeSettings settings = Settings(10, 100);
    settings.tip.hardness = 0.5;
    settings.dynamics.hardness = true;
    StrokePath path = Path(settings);
    path.AddPoint({QPointF(10, 10), 0.5});
    QCOMPARE(TakeAll(path).value(0).hardness, 0.25);
}

void tst_StrokePath::theFirstStampWaitsForItsDirection()
{
    StrokeSettings settings = Settings(10, 100);
    settings.tip.angle = 10.0;
    settings.dynamics.angle = true;
    StrokePath path = Path(settings);
    path.AddPoint({QPointF(50, 50), 1});
    QVERIFY(!path.HasNext());
    path.AddPoint({QPointF(50, 30), 1});
    path.AddPoint({QPointF(30, 30), 1});

    const QVector<StampPlan> plans = TakeAll(path);

    QCOMPARE(plans.size(), 5);
    QCOMPARE(plans[0].angle, 100.0);
    QCOMPARE(plans[1].angle, 100.0);
    QCOMPARE(plans[4].angle, 190.0);
}

void tst_StrokePath::aClickWithATurningTipComesAtTheEnd()
{
    StrokeSettings settings = Settings(10, 100);
    settings.dynamics.angle = true;
    StrokePath path = Path(settings);
    path.AddPoint({QPointF(50, 50), 1});
    path.End();
    QVERIFY(path.HasNext());
    QCOMPARE(TakeAll(path).size(), 1);
}

void tst_StrokePath::scatterStaysWithinTheSizeAndIsRepeatable()
{
    StrokeSettings settings = Settings(10, 100);
    settings.dynamics.scatter = true;
    settings.seed = 5;
    QVector<QVector<StampPlan>> runs;
    for (quint64 seed : {5, 5, 6})
    {
        settings.seed = seed;
        StrokePath path = Path(settings);
        path.AddPoint({QPointF(0, 500), 1});
        path.AddPoint({QPointF(990, 500), 1});
        runs.append(TakeAll(path));
    }

    QCOMPARE(runs[0].size(), 100);
    int moved = 0;
    int different = 0;
    for (int i = 0; i < 100; ++i)
    {
        const QPointF offset = runs[0][i].center - QPointF(10.0 * i, 500);
        QVERIFY(std::hypot(offset.x(), offset.y()) <= 10.0 + 1e-9);
        QCOMPARE(runs[0][i].center, runs[1][i].center);
        moved += std::hypot(offset.x(), offset.y()) > 3.0;
        different += runs[0][i].center != runs[2][i].center;
    }
    QVERIFY(moved > 70);
    QCOMPARE(different, 100);
}

void tst_StrokePath::aSmoothPathRunsThroughTheMiddlesAndEndsAtTheLastPoint()
{
    StrokeSettings settings = Settings(1, 100);
    settings.smooth = true;
    StrokePath path = Path(settings);
    path.AddPoint({QPointF(100, 100), 1});
    path.AddPoint({QPointF(200, 100), 1});
    path.AddPoint({QPointF(200, 200), 1});
    path.End();

    const QVector<StampPlan> plans = TakeAll(path);

    QVERIFY(Near(plans.first().center, QPointF(100, 100)));
    QVERIFY(std::hypot(plans.last().center.x() - 200, plans.last().center.y() - 200) <= 1.0);
    double nearestCorner = 1000.0;
    for (const StampPlan& plan : plans)
        nearestCorner = std::min(nearestCorner, std::hypot(plan.center.x() - 200, plan.center.y() - 100));
    // The curve passes the corner at a quarter of the way between the middles' middle and the corner's
    // opposite.
    QVERIFY(nearestCorner > 15.0);
    QVERIFY(nearestCorner < 20.0);
}

void tst_StrokePath::nothingIsAddedAfterTheEnd()
{
    StrokePath path = Path(Settings(10, 100));
    path.AddPoint({QPointF(10, 10), 1});
    path.End();
    path.AddPoint({QPointF(90, 10), 1});
    QCOMPARE(TakeAll(path).size(), 1);
    path.End();
    QVERIFY(!path.HasNext());
}

NV_TEST_MAIN(tst_StrokePath)
#include "tst_StrokePath.moc"
