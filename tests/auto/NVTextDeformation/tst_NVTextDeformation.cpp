// The value that says how a text is bent: what it starts with, copies, and exact equality.

#include <QtTest>

#include <cmath>
#include <limits>
#include <type_traits>

#include "NVTextDeformation.h"
#include "TestMain.h"

static_assert(!std::is_polymorphic<NVTextDeformation>::value, "a plain value");

using Change = void (*)(NVTextDeformation&);
Q_DECLARE_METATYPE(Change)

namespace
{

const double NotANumber = std::numeric_limits<double>::quiet_NaN();

// No part of it is as it starts.
NVTextDeformation Busy()
{
    NVTextDeformation value;
    value.SetStyle(NVTextDeformation::StyleNone);
    value.SetOrientation(NVTextDeformation::OrientationVertical);
    value.SetBend(12.5);
    value.SetHorizontalDistortion(-0.1);
    value.SetVerticalDistortion(1e300);
    QMatrix4x4 matrix;
    matrix.rotate(30, 1, 2, 3);
    value.SetMatrix(matrix);
    return value;
}

} // namespace

class tst_NVTextDeformation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsAsAFlagWithoutAmounts();
    void numbersAreThoseOfTheList();
    void keepsWhatItIsGiven();
    void settersCheckNothing();
    void copiesShareNothing();
    void assignmentCopiesAll();
    void assignmentToItselfKeepsAll();
    void equalToOneWithTheSameParts();
    void oneChangeMakesItDiffer_data();
    void oneChangeMakesItDiffer();
    void anyMatrixElementMakesItDiffer();
    void notANumberDiffersFromEverythingButItself_data();
    void notANumberDiffersFromEverythingButItself();
    void zerosOfBothSignsAreEqual();
    void kindOfTheMatrixDoesNotCount();
};

void tst_NVTextDeformation::startsAsAFlagWithoutAmounts()
{
    const NVTextDeformation value;
    QCOMPARE(int(value.GetStyle()), 1);
    QCOMPARE(int(value.GetOrientation()), 0);
    QCOMPARE(value.GetBend(), 0.0);
    QCOMPARE(value.GetHorizontalDistortion(), 0.0);
    QCOMPARE(value.GetVerticalDistortion(), 0.0);
    QVERIFY(value.GetMatrix().isIdentity());
    QVERIFY(value == NVTextDeformation());
    QVERIFY(!(value != NVTextDeformation()));
}

void tst_NVTextDeformation::numbersAreThoseOfTheList()
{
    QCOMPARE(int(NVTextDeformation::StyleNone), 0);
    QCOMPARE(int(NVTextDeformation::StyleFlag), 1);
    QCOMPARE(int(NVTextDeformation::OrientationHorizontal), 0);
    QCOMPARE(int(NVTextDeformation::OrientationVertical), 1);
}

void tst_NVTextDeformation::keepsWhatItIsGiven()
{
    const NVTextDeformation value = Busy();
    QCOMPARE(value.GetStyle(), NVTextDeformation::StyleNone);
    QCOMPARE(value.GetOrientation(), NVTextDeformation::OrientationVertical);
    QCOMPARE(value.GetBend(), 12.5);
    QCOMPARE(value.GetHorizontalDistortion(), -0.1);
    QCOMPARE(value.GetVerticalDistortion(), 1e300);
    QMatrix4x4 matrix;
    matrix.rotate(30, 1, 2, 3);
    QVERIFY(std::equal(matrix.constData(), matrix.constData() + 16, value.GetMatrix().constData()));
}

void tst_NVTextDeformation::settersCheckNothing()
{
    NVTextDeformation value;
    value.SetStyle(static_cast<NVTextDeformation::Style>(-7));
    value.SetOrientation(static_cast<NVTextDeformation::Orientation>(99));
    value.SetBend(-5000.125);
    value.SetHorizontalDistortion(std::numeric_limits<double>::infinity());
    value.SetVerticalDistortion(NotANumber);
    QCOMPARE(int(value.GetStyle()), -7);
    QCOMPARE(int(value.GetOrientation()), 99);
    QCOMPARE(value.GetBend(), -5000.125);
    QVERIFY(std::isinf(value.GetHorizontalDistortion()));
    QVERIFY(std::isnan(value.GetVerticalDistortion()));
}

void tst_NVTextDeformation::copiesShareNothing()
{
    NVTextDeformation one = Busy();
    const NVTextDeformation two(one);
    QVERIFY(two == one);
    one.SetBend(1);
    one.SetMatrix(QMatrix4x4());
    QCOMPARE(two.GetBend(), 12.5);
    QVERIFY(!two.GetMatrix().isIdentity());
    QVERIFY(two == Busy());
}

void tst_NVTextDeformation::assignmentCopiesAll()
{
    NVTextDeformation one;
    NVTextDeformation two;
    NVTextDeformation& result = one = Busy();
    QCOMPARE(&result, &one);
    QVERIFY(one == Busy());
    two = one;
    one.SetStyle(NVTextDeformation::StyleFlag);
    QVERIFY(two == Busy());
}

void tst_NVTextDeformation::assignmentToItselfKeepsAll()
{
    NVTextDeformation value = Busy();
    NVTextDeformation& same = value;
    value = same;
    QVERIFY(value == Busy());
}

void tst_NVTextDeformation::equalToOneWithTheSameParts()
{
    QVERIFY(Busy() == Busy());
    QVERIFY(!(Busy() != Busy()));
}

void tst_NVTextDeformation::oneChangeMakesItDiffer_data()
{
    QTest::addColumn<Change>("change");
    const auto row = [](const char* name, Change change) { QTest::newRow(name) << change; };
    row("style", [](NVTextDeformation& value) { value.SetStyle(NVTextDeformation::StyleFlag); });
    row("orientation",
        [](NVTextDeformation& value) { value.SetOrientation(NVTextDeformation::OrientationHorizontal); });
    row("last bit of bend up",
        [](NVTextDeformation& value) { value.SetBend(std::nextafter(value.GetBend(), 1e9)); });
    row("last bit of bend down",
        [](NVTextDeformation& value) { value.SetBend(std::nextafter(value.GetBend(), -1e9)); });
    row("last bit of the horizontal distortion",
        [](NVTextDeformation& value)
        { value.SetHorizontalDistortion(std::nextafter(value.GetHorizontalDistortion(), 0.0)); });
    row("last bit of the vertical distortion",
        [](NVTextDeformation& value)
        { value.SetVerticalDistortion(std::nextafter(value.GetVerticalDistortion(), 0.0)); });
}

void tst_NVTextDeformation::oneChangeMakesItDiffer()
{
    QFETCH(Change, change);
    NVTextDeformation value = Busy();
    change(value);
    QVERIFY(value != Busy());
    QVERIFY(!(value == Busy()));
    QVERIFY(Busy() != value);
}

void tst_NVTextDeformation::anyMatrixElementMakesItDiffer()
{
    for (int i = 0; i < 16; ++i)
    {
        QMatrix4x4 matrix = Busy().GetMatrix();
        float& element = matrix.data()[i];
        element = std::nextafter(element, 100.0F);
        NVTextDeformation value = Busy();
        value.SetMatrix(matrix);
        QVERIFY2(value != Busy(), qPrintable(QString::number(i)));
    }
}

void tst_NVTextDeformation::notANumberDiffersFromEverythingButItself_data()
{
    QTest::addColumn<Change>("change");
    const auto row = [](const char* name, Change change) { QTest::newRow(name) << change; };
    row("bend", [](NVTextDeformation& value) { value.SetBend(NotANumber); });
    row("horizontal", [](NVTextDeformation& value) { value.SetHorizontalDistortion(NotANumber); });
    row("vertical", [](NVTextDeformation& value) { value.SetVerticalDistortion(NotANumber); });
    row("matrix",
        [](NVTextDeformation& value)
        {
            QMatrix4x4 matrix;
            matrix(2, 1) = float(NotANumber);
            value.SetMatrix(matrix);
        });
}

void tst_NVTextDeformation::notANumberDiffersFromEverythingButItself()
{
    QFETCH(Change, change);
    NVTextDeformation value;
    change(value);
    const NVTextDeformation copy(value);
    const NVTextDeformation& same = value;
    QVERIFY(value != copy);
    QVERIFY(!(value == copy));
    QVERIFY(value == same);
    QVERIFY(!(value != same));
}

void tst_NVTextDeformation::zerosOfBothSignsAreEqual()
{
    NVTextDeformation value;
    value.SetBend(-0.0);
    QVERIFY(value == NVTextDeformation());
}

// Two matrices of the same elements, one of which still counts as general.
void tst_NVTextDeformation::kindOfTheMatrixDoesNotCount()
{
    QMatrix4x4 general;
    general(0, 1) = 5;
    general(0, 1) = 0;
    NVTextDeformation value;
    value.SetMatrix(general);
    QVERIFY(value == NVTextDeformation());
}

NV_TEST_MAIN(tst_NVTextDeformation)
#include "tst_NVTextDeformation.moc"
