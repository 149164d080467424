// The unit of length as a value, and the list of standard units.

#include "NVMeasureUnit.h"

#include <QTranslator>

#include <limits>

#include "TestMain.h"

class tst_NVMeasureUnit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsAsAnInchWithoutAName();
    void keepsWhatItIsMadeOf();
    void pixelIsMadeByItsFactor();
    void factorThatMeansNothingIsIgnored_data();
    void factorThatMeansNothingIsIgnored();
    void copyIsIndependent();
    void standardUnitsStartWithInchesAndMillimetres_data();
    void standardUnitsStartWithInchesAndMillimetres();
    void standardUnitsAreFive();
    void standardUnitsAreTranslated();
};

void tst_NVMeasureUnit::startsAsAnInchWithoutAName()
{
    const NVMeasureUnit unit;

    QCOMPARE(unit.GetFactor(), 1.0);
    QCOMPARE(unit.GetName(), QString());
    QCOMPARE(unit.GetAbbreviation(), QString());
}

void tst_NVMeasureUnit::keepsWhatItIsMadeOf()
{
    const NVMeasureUnit unit("feet", "ft", 1.0 / 12.0);

    QCOMPARE(unit.GetName(), QString("feet"));
    QCOMPARE(unit.GetAbbreviation(), QString("ft"));
    QCOMPARE(unit.GetFactor(), 1.0 / 12.0);
}

void tst_NVMeasureUnit::pixelIsMadeByItsFactor()
{
    NVMeasureUnit unit;

    unit.SetFactor(-1.0);
    QCOMPARE(unit.GetFactor(), -1.0);
    QCOMPARE(double(NVMeasureUnit::PixelFactor), -1.0);

    unit.SetFactor(25.4);
    QCOMPARE(unit.GetFactor(), 25.4);
    unit.SetFactor(25.4);
    QCOMPARE(unit.GetFactor(), 25.4);
}

void tst_NVMeasureUnit::factorThatMeansNothingIsIgnored_data()
{
    QTest::addColumn<double>("factor");
    QTest::newRow("zero") << 0.0;
    QTest::newRow("negative zero") << -0.0;
    QTest::newRow("negative") << -2.54;
    QTest::newRow("nearly the pixel's") << -1.0000001;
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity();
    QTest::newRow("negative infinite") << -std::numeric_limits<double>::infinity();
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN();
}

void tst_NVMeasureUnit::factorThatMeansNothingIsIgnored()
{
    QFETCH(double, factor);
    NVMeasureUnit unit;
    unit.SetFactor(72.0);

    unit.SetFactor(factor);

    QCOMPARE(unit.GetFactor(), 72.0);
    QCOMPARE(NVMeasureUnit("x", "y", factor).GetFactor(), 1.0);
}

void tst_NVMeasureUnit::copyIsIndependent()
{
    NVMeasureUnit unit("inches", "in", 1.0);
    NVMeasureUnit copy(unit);
    NVMeasureUnit assigned;
    assigned = unit;

    unit.SetFactor(6.0);

    QCOMPARE(copy.GetFactor(), 1.0);
    QCOMPARE(copy.GetName(), QString("inches"));
    QCOMPARE(assigned.GetFactor(), 1.0);
    QCOMPARE(assigned.GetAbbreviation(), QString("in"));
}

void tst_NVMeasureUnit::standardUnitsStartWithInchesAndMillimetres_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("abbreviation");
    QTest::addColumn<double>("factor");
    QTest::newRow("inches") << 0 << "inches"
                            << "in" << 1.0;
    QTest::newRow("millimetres") << 1 << "millimeters"
                                 << "mm" << 25.4;
    QTest::newRow("centimetres") << 2 << "centimeters"
                                 << "cm" << 2.54;
    QTest::newRow("points") << 3 << "points"
                            << "pt" << 72.0;
    QTest::newRow("picas") << 4 << "picas"
                           << "pc" << 6.0;
}

void tst_NVMeasureUnit::standardUnitsStartWithInchesAndMillimetres()
{
    QFETCH(int, row);
    QFETCH(QString, name);
    QFETCH(QString, abbreviation);
    QFETCH(double, factor);

    const NVMeasureUnit unit = NVMeasureUnit::StandardUnits().at(row);

    QCOMPARE(unit.GetName(), name);
    QCOMPARE(unit.GetAbbreviation(), abbreviation);
    QCOMPARE(unit.GetFactor(), factor);
}

void tst_NVMeasureUnit::standardUnitsAreFive()
{
    QCOMPARE(NVMeasureUnit::StandardUnits().size(), 5);
}

void tst_NVMeasureUnit::standardUnitsAreTranslated()
{
    class Shouting : public QTranslator
    {
    public:
        QString translate(const char* context, const char* text, const char*, int) const override
        {
            return qstrcmp(context, "NVMeasureUnit") == 0 ? QString::fromUtf8(text).toUpper() : QString();
        }
        bool isEmpty() const override { return false; }
    } translator;
    QCoreApplication::installTranslator(&translator);

    const QList<NVMeasureUnit> units = NVMeasureUnit::StandardUnits();

    QCoreApplication::removeTranslator(&translator);
    for (const NVMeasureUnit& unit : units)
    {
        QCOMPARE(unit.GetName(), unit.GetName().toUpper());
        QCOMPARE(unit.GetAbbreviation(), unit.GetAbbreviation().toUpper());
    }
    QCOMPARE(units.at(1).GetAbbreviation(), QString("MM"));
    QCOMPARE(NVMeasureUnit::StandardUnits().at(1).GetAbbreviation(), QString("mm"));
}

NV_TEST_MAIN(tst_NVMeasureUnit)
#include "tst_NVMeasureUnit.moc"
