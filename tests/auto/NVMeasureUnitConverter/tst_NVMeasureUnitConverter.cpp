// What turns a length of one unit into another.

#include "NVMeasureUnitConverter.h"

#include <QRandomGenerator>

#include <cmath>
#include <limits>

#include "NVMeasureUnit.h"
#include "TestMain.h"

namespace
{

const double Infinity = std::numeric_limits<double>::infinity();

NVMeasureUnit Unit(double factor)
{
    NVMeasureUnit unit;
    unit.SetFactor(factor);
    return unit;
}

} // namespace

class tst_NVMeasureUnitConverter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void converts_data();
    void converts();
    void pixelsStayWhatTheyAreAtAnyResolution();
    void resolutionThatMeansNothingGivesZero_data();
    void resolutionThatMeansNothingGivesZero();
    void outlivesTheUnits();
    void extremeNumbersAreHandedOn();
};

void tst_NVMeasureUnitConverter::converts_data()
{
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    QTest::addColumn<double>("dpi");
    QTest::addColumn<double>("value");
    QTest::addColumn<double>("result");
    QTest::newRow("pixels to inches") << -1.0 << 1.0 << 72.0 << 36.0 << 0.5;
    QTest::newRow("inches to pixels") << 1.0 << -1.0 << 72.0 << 0.5 << 36.0;
    QTest::newRow("pixels to millimetres") << -1.0 << 25.4 << 100.0 << 50.0 << 12.7;
    QTest::newRow("millimetres to pixels") << 25.4 << -1.0 << 300.0 << 25.4 << 300.0;
    QTest::newRow("pixels to points at 72") << -1.0 << 72.0 << 72.0 << 17.0 << 17.0;
    QTest::newRow("picas to pixels") << 6.0 << -1.0 << 150.0 << 12.0 << 300.0;
    QTest::newRow("pixels to pixels") << -1.0 << -1.0 << 72.0 << 3.25 << 3.25;
    QTest::newRow("inches to millimetres") << 1.0 << 25.4 << 72.0 << 2.0 << 50.8;
    QTest::newRow("points to picas") << 72.0 << 6.0 << 300.0 << 24.0 << 2.0;
    QTest::newRow("nothing") << -1.0 << 25.4 << 72.0 << 0.0 << 0.0;
    QTest::newRow("negative") << 1.0 << -1.0 << 100.0 << -1.5 << -150.0;
    // 7 * 25.4 is rounded before the division.
    QTest::newRow("first multiplied, then divided") << -1.0 << 25.4 << 96.0 << 7.0 << 7.0 * 25.4 / 96.0;
    QTest::newRow("back too") << 25.4 << -1.0 << 96.0 << 7.1 << 7.1 * 96.0 / 25.4;
}

void tst_NVMeasureUnitConverter::converts()
{
    QFETCH(double, from);
    QFETCH(double, to);
    QFETCH(double, dpi);
    QFETCH(double, value);
    QFETCH(double, result);

    const double converted = NVMeasureUnitConverter(Unit(from), Unit(to), dpi)(value);

    // To the last bit: truncation follows.
    QVERIFY2(converted == result, qPrintable(QString::number(converted, 'g', 17)));
}

void tst_NVMeasureUnitConverter::pixelsStayWhatTheyAreAtAnyResolution()
{
    for (const double dpi : {0.0, -1.0, Infinity, std::nan(""), 300.0})
        QCOMPARE(NVMeasureUnitConverter(Unit(-1.0), Unit(-1.0), dpi)(41.5), 41.5);
    // Nor do lengths need one.
    QCOMPARE(NVMeasureUnitConverter(Unit(1.0), Unit(6.0), 0.0)(2.0), 12.0);
}

void tst_NVMeasureUnitConverter::resolutionThatMeansNothingGivesZero_data()
{
    QTest::addColumn<double>("dpi");
    QTest::newRow("zero") << 0.0;
    QTest::newRow("negative") << -72.0;
    QTest::newRow("infinite") << Infinity;
    QTest::newRow("no number") << std::nan("");
}

void tst_NVMeasureUnitConverter::resolutionThatMeansNothingGivesZero()
{
    QFETCH(double, dpi);

    QCOMPARE(NVMeasureUnitConverter(Unit(-1.0), Unit(25.4), dpi)(100.0), 0.0);
    QCOMPARE(NVMeasureUnitConverter(Unit(25.4), Unit(-1.0), dpi)(100.0), 0.0);
}

void tst_NVMeasureUnitConverter::outlivesTheUnits()
{
    NVMeasureUnit unit = Unit(25.4);
    const NVMeasureUnitConverter converter(Unit(-1.0), unit, 254.0);

    unit.SetFactor(1.0);

    QCOMPARE(converter(10.0), 1.0);
}

void tst_NVMeasureUnitConverter::extremeNumbersAreHandedOn()
{
    const double most = std::numeric_limits<double>::max();
    const double least = std::numeric_limits<double>::denorm_min();

    QCOMPARE(NVMeasureUnitConverter(Unit(-1.0), Unit(25.4), 1.0)(most), Infinity);
    QCOMPARE(NVMeasureUnitConverter(Unit(least), Unit(-1.0), most)(1.0), Infinity);
    QVERIFY(std::isnan(NVMeasureUnitConverter(Unit(1.0), Unit(-1.0), 72.0)(std::nan(""))));

    QRandomGenerator random(1);
    const auto any = [&random]
    { return std::ldexp(random.generateDouble() - 0.5, random.bounded(-1100, 1100)); };
    for (int i = 0; i < 20000; ++i)
    {
        const double factor = std::abs(any());
        const double dpi = any();
        const double value = any();
        const double expected = dpi > 0.0 && factor > 0.0 && std::isfinite(factor) && std::isfinite(dpi)
            ? value * factor / dpi
            : dpi > 0.0 && std::isfinite(dpi) ? value / dpi
                                              : 0.0;
        const double converted = NVMeasureUnitConverter(Unit(-1.0), Unit(factor), dpi)(value);
        QVERIFY(converted == expected || (std::isnan(converted) && std::isnan(expected)));
    }
}

NV_TEST_MAIN(tst_NVMeasureUnitConverter)
#include "tst_NVMeasureUnitConverter.moc"
