// From a number to whole pixels, and the proportions of a size.

#include "../../../src/WholePixels_p.h"

#include <QRandomGenerator>

#include "TestMain.h"

class tst_WholePixels : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void losesTheFraction_data();
    void losesTheFraction();
    void anyBitsGiveAnInt();
    void ratioIsWidthByHeight();
    void ratioOfNoSizeIsPositive();
};

void tst_WholePixels::losesTheFraction_data()
{
    const int most = std::numeric_limits<int>::max();
    const int least = std::numeric_limits<int>::min();
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("pixels");
    QTest::newRow("below one") << 0.999 << 0;
    QTest::newRow("whole") << 17.0 << 17;
    QTest::newRow("nearly the next") << 17.9999 << 17;
    QTest::newRow("negative goes towards zero") << -1.9 << -1;
    QTest::newRow("largest with a fraction") << 2147483646.75 << most - 1;
    QTest::newRow("largest") << 2147483647.0 << most;
    QTest::newRow("largest and a bit") << 2147483647.5 << most;
    QTest::newRow("beyond the largest") << 2147483648.0 << most;
    QTest::newRow("smallest") << -2147483648.0 << least;
    QTest::newRow("smallest and a bit") << -2147483648.5 << least;
    QTest::newRow("beyond the smallest") << -1e300 << least;
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity() << most;
    QTest::newRow("negative infinite") << -std::numeric_limits<double>::infinity() << least;
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << 0;
}

void tst_WholePixels::losesTheFraction()
{
    QFETCH(double, value);
    QFETCH(int, pixels);

    QCOMPARE(WholePixels(value), pixels);
}

void tst_WholePixels::anyBitsGiveAnInt()
{
    QRandomGenerator random(2);
    for (int i = 0; i < 100000; ++i)
    {
        const double value = std::ldexp(random.generateDouble() - 0.5, random.bounded(-40, 80));
        const double pixels = WholePixels(value);
        if (std::abs(value) < 2147483647.0)
            QVERIFY(std::abs(value - pixels) < 1.0 && std::abs(pixels) <= std::abs(value));
        else
            QVERIFY(std::abs(pixels) >= 2147483647.0 && (pixels > 0) == (value > 0));
    }
}

void tst_WholePixels::ratioIsWidthByHeight()
{
    QCOMPARE(SideRatio(800, 600), 800.0 / 600.0);
    QCOMPARE(SideRatio(1, 10000), 0.0001);
    QCOMPARE(SideRatio(10000, 1), 10000.0);
}

void tst_WholePixels::ratioOfNoSizeIsPositive()
{
    const int least = std::numeric_limits<int>::min();

    QCOMPARE(SideRatio(0, 0), 1.0);
    QCOMPARE(SideRatio(0, 4), 0.25);
    QCOMPARE(SideRatio(4, 0), 4.0);
    QCOMPARE(SideRatio(-3, -7), 1.0);
    QCOMPARE(SideRatio(least, least), 1.0);
}

NV_TEST_MAIN(tst_WholePixels)
#include "tst_WholePixels.moc"
