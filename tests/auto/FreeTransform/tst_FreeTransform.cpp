// The arithmetic of free transform against a calculation of its own, drags of every part, and whatever may be
// asked for that makes no sense.

#include "FreeTransform.h"

#include <QRandomGenerator>
#include <QtTest>

#include <cmath>
#include <limits>

#include "TestMain.h"

using Constraint = FreeTransform::Constraint;

namespace
{

const QRectF Box(40, 20, 200, 100);

struct Point
{
    long double x;
    long double y;
};

long double Radians(double degrees)
{
    return static_cast<long double>(degrees) * 3.14159265358979323846264338327950288L / 180;
}

// Where a point goes, step by step. The reference point is that of the box as it was.
Point Expected(const FreeTransform& it, const QPointF& reference, const QPointF& point)
{
    const long double x = (point.x() - reference.x()) * it.GetScaleX();
    const long double y = (point.y() - reference.y()) * it.GetScaleY();
    const long double skewedX = x + std::tan(Radians(it.GetSkewX())) * y;
    const long double skewedY = y + std::tan(Radians(it.GetSkewY())) * x;
    const long double angle = Radians(it.GetAngle());
    return {it.GetPosition().x() + skewedX * std::cos(angle) - skewedY * std::sin(angle),
            it.GetPosition().y() + skewedX * std::sin(angle) + skewedY * std::cos(angle)};
}

QPointF CellPoint(int cell)
{
    const int column = (cell + 2) % 3;
    const int row = (cell - 1 - column) / 3;
    return QPointF(40 + 100 * column, 20 + 50 * row);
}

bool IsNear(const QPointF& one, const QPointF& other, double reach = 1e-6)
{
    return std::hypot(one.x() - other.x(), one.y() - other.y()) <= reach;
}

// Something of everything, about the lower left corner.
FreeTransform Mixed()
{
    FreeTransform it(Box);
    it.SetReferenceCell(7);
    it.SetScale(1.5, -0.75);
    it.SetSkew(20, -10);
    it.SetAngle(35);
    it.SetPosition(QPointF(300, 150));
    return it;
}

Constraint Regular()
{
    Constraint constraint;
    constraint.regular = true;
    return constraint;
}

Constraint AboutReference()
{
    Constraint constraint;
    constraint.aboutReference = true;
    return constraint;
}

Constraint Skews()
{
    Constraint constraint;
    constraint.skews = true;
    return constraint;
}

void AddHandles()
{
    QTest::addColumn<int>("part");
    const char* const names[] = {"top left", "top",         "top right", "left",        "",
                                 "right",    "bottom left", "bottom",    "bottom right"};
    for (int part = 1; part <= 9; ++part)
    {
        if (part != FreeTransform::Reference)
            QTest::newRow(names[part - 1]) << part;
    }
}

void AddEdges()
{
    QTest::addColumn<int>("part");
    QTest::newRow("top") << 2;
    QTest::newRow("left") << 4;
    QTest::newRow("right") << 6;
    QTest::newRow("bottom") << 8;
}

} // namespace

class tst_FreeTransform : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsAsItIs();
    void anEmptyBoxIsNeverChanged();
    void matrixIsThatOfTheSteps_data();
    void matrixIsThatOfTheSteps();
    void cellsLieInReadingOrder();
    void outlineGoesAround();
    void aChosenReferenceKeepsThePicture_data();
    void aChosenReferenceKeepsThePicture();
    void aDraggedReferenceKeepsThePicture();
    void insideMovesByWholePixels_data();
    void insideMovesByWholePixels();
    void outsideTurnsAboutTheReference();
    void turningSnapsToWholeSteps();
    void aCornerFollowsThePointer_data();
    void aCornerFollowsThePointer();
    void anEdgeFollowsThePointerAcross_data();
    void anEdgeFollowsThePointerAcross();
    void scalingKeepsTheOpposite_data() { AddHandles(); }
    void scalingKeepsTheOpposite();
    void scalingAboutTheReferenceKeepsIt_data() { AddHandles(); }
    void scalingAboutTheReferenceKeepsIt();
    void scalingKeepsTheProportion_data() { AddHandles(); }
    void scalingKeepsTheProportion();
    void aCornerAlongItsDiagonalScalesAsFar();
    void aHandleAtTheReferenceHasNoSay();
    void draggingBeyondTheOppositeMirrors();
    void anEdgeSlidesAlong_data();
    void anEdgeSlidesAlong();
    void skewingAboutTheReferenceKeepsIt_data() { AddEdges(); }
    void skewingAboutTheReferenceKeepsIt();
    void anEdgeAtTheReferenceDoesNotSkew_data() { AddEdges(); }
    void anEdgeAtTheReferenceDoesNotSkew();
    void cornersDoNotSkew();
    void numbersKeepTheReference_data() { aChosenReferenceKeepsThePicture_data(); }
    void numbersKeepTheReference();
    void numbersStayInTheirRanges();
    void whatIsNotFiniteIsIgnored();
    void nothingIsDraggedWithNoPart();
    void anyDragsKeepItSound();
};

void tst_FreeTransform::startsAsItIs()
{
    const FreeTransform it(Box);

    QVERIFY(it.IsIdentity());
    QVERIFY(it.GetMatrix().isIdentity());
    QCOMPARE(it.GetBox(), Box);
    QCOMPARE(it.GetPosition(), QPointF(140, 70));
    QCOMPARE(it.GetCell(), 5);
    QCOMPARE(it.GetScaleX(), 1.0);
    QCOMPARE(it.GetScaleY(), 1.0);
    QCOMPARE(it.GetAngle(), 0.0);
    QCOMPARE(it.GetSkewX(), 0.0);
    QCOMPARE(it.GetSkewY(), 0.0);
}

void tst_FreeTransform::anEmptyBoxIsNeverChanged()
{
    for (const QRectF& box : {QRectF(), QRectF(5, 5, 0, 10), QRectF(5, 5, -3, -4)})
    {
        FreeTransform it(box);
        it.SetPosition(QPointF(7, 8));
        it.SetScale(2, 2);
        it.SetAngle(30);
        it.SetSkew(10, 10);
        it.SetReferenceCell(1);
        it.SetReferencePlace(QPointF(50, 50));
        for (int part = FreeTransform::Nothing; part <= FreeTransform::Outside; ++part)
            it = it.Dragged(FreeTransform::Part(part), QPointF(0, 0), QPointF(9, 7), Constraint());

        QVERIFY(it.IsIdentity());
        QVERIFY(it.GetMatrix().isIdentity());
    }
}

void tst_FreeTransform::matrixIsThatOfTheSteps_data()
{
    QTest::addColumn<int>("cell");
    QTest::addColumn<QPointF>("scale");
    QTest::addColumn<QPointF>("skew");
    QTest::addColumn<double>("angle");
    QTest::addColumn<QPointF>("position");

    QTest::newRow("moved") << 5 << QPointF(1, 1) << QPointF() << 0.0 << QPointF(-30.5, 11);
    QTest::newRow("scaled") << 1 << QPointF(2, 0.5) << QPointF() << 0.0 << QPointF(40, 20);
    QTest::newRow("mirrored") << 6 << QPointF(-1, 1) << QPointF() << 0.0 << QPointF(240, 70);
    QTest::newRow("turned") << 9 << QPointF(1, 1) << QPointF() << 90.0 << QPointF(240, 120);
    QTest::newRow("turned back") << 3 << QPointF(1, 1) << QPointF() << -123.4 << QPointF(0, 0);
    QTest::newRow("skewed") << 8 << QPointF(1, 1) << QPointF(30, 0) << 0.0 << QPointF(140, 120);
    QTest::newRow("skewed down") << 4 << QPointF(1, 1) << QPointF(0, -45) << 0.0 << QPointF(40, 70);
    QTest::newRow("all") << 7 << QPointF(1.5, -0.75) << QPointF(20, -10) << 35.0 << QPointF(300, 150);
}

void tst_FreeTransform::matrixIsThatOfTheSteps()
{
    QFETCH(const int, cell);
    QFETCH(const QPointF, scale);
    QFETCH(const QPointF, skew);
    QFETCH(const double, angle);
    QFETCH(const QPointF, position);
    FreeTransform it(Box);
    it.SetReferenceCell(cell);
    it.SetScale(scale.x(), scale.y());
    it.SetSkew(skew.x(), skew.y());
    it.SetAngle(angle);
    it.SetPosition(position);

    QCOMPARE(QPointF(it.GetScaleX(), it.GetScaleY()), scale);
    QCOMPARE(QPointF(it.GetSkewX(), it.GetSkewY()), skew);
    QCOMPARE(it.GetAngle(), angle);
    for (const QPointF& point : {QPointF(0, 0), QPointF(40, 20), QPointF(240, 120), QPointF(77, -310)})
    {
        const Point expected = Expected(it, CellPoint(cell), point);
        QVERIFY(IsNear(it.GetMatrix().map(point), QPointF(double(expected.x), double(expected.y)), 1e-9));
    }
}

void tst_FreeTransform::cellsLieInReadingOrder()
{
    for (int cell = 1; cell <= 9; ++cell)
    {
        FreeTransform it(Box);
        it.SetReferenceCell(cell);
        QCOMPARE(it.GetCell(), cell);
        QCOMPARE(it.GetPosition(), CellPoint(cell));
        QCOMPARE(it.PlaceOf(FreeTransform::Part(cell)), CellPoint(cell));
        QVERIFY(it.IsIdentity());
    }
    FreeTransform it(Box);
    it.SetReferenceCell(0);
    it.SetReferenceCell(10);
    it.SetReferenceCell(-1);
    QCOMPARE(it.GetCell(), 5);
}

void tst_FreeTransform::outlineGoesAround()
{
    QCOMPARE(FreeTransform(Box).GetOutline(),
             QPolygonF({QPointF(40, 20), QPointF(240, 20), QPointF(240, 120), QPointF(40, 120)}));
    const FreeTransform it = Mixed();
    const int corners[] = {1, 3, 9, 7};
    for (int i = 0; i < 4; ++i)
        QCOMPARE(it.GetOutline().at(i), it.GetMatrix().map(CellPoint(corners[i])));
    QCOMPARE(it.PlaceOf(FreeTransform::Inside), it.GetMatrix().map(CellPoint(5)));
}

void tst_FreeTransform::aChosenReferenceKeepsThePicture_data()
{
    QTest::addColumn<int>("cell");
    for (int cell = 1; cell <= 9; ++cell)
        QTest::addRow("%d", cell) << cell;
}

void tst_FreeTransform::aChosenReferenceKeepsThePicture()
{
    QFETCH(const int, cell);
    FreeTransform it = Mixed();
    const QPolygonF before = it.GetOutline();

    it.SetReferenceCell(cell);

    for (int i = 0; i < 4; ++i)
        QVERIFY(IsNear(it.GetOutline().at(i), before.at(i)));
    QVERIFY(IsNear(it.GetPosition(), Mixed().GetMatrix().map(CellPoint(cell))));
    QCOMPARE(it.GetScaleX(), 1.5);
    QCOMPARE(it.GetAngle(), 35.0);
}

void tst_FreeTransform::aDraggedReferenceKeepsThePicture()
{
    const FreeTransform before = Mixed();

    const FreeTransform after =
        before.Dragged(FreeTransform::Reference, QPointF(10, 10), QPointF(41, -3), Constraint());

    QCOMPARE(after.GetPosition(), before.GetPosition() + QPointF(31, -13));
    QCOMPARE(after.GetCell(), 0);
    for (int i = 0; i < 4; ++i)
        QVERIFY(IsNear(after.GetOutline().at(i), before.GetOutline().at(i)));
}

void tst_FreeTransform::insideMovesByWholePixels_data()
{
    QTest::addColumn<QPointF>("way");
    QTest::addColumn<bool>("regular");
    QTest::addColumn<QPointF>("moved");

    QTest::newRow("whole") << QPointF(12, -7) << false << QPointF(12, -7);
    QTest::newRow("rounded") << QPointF(12.4, -7.6) << false << QPointF(12, -8);
    QTest::newRow("not at all") << QPointF(0.2, 0.3) << false << QPointF(0, 0);
    QTest::newRow("to the right") << QPointF(40, 9) << true << QPointF(40, 0);
    QTest::newRow("up") << QPointF(3, -40) << true << QPointF(0, -40);
    QTest::newRow("slanting") << QPointF(-30, 20) << true << QPointF(-25, 25);
    QTest::newRow("nowhere") << QPointF(0, 0) << true << QPointF(0, 0);
}

void tst_FreeTransform::insideMovesByWholePixels()
{
    QFETCH(const QPointF, way);
    QFETCH(const bool, regular);
    QFETCH(const QPointF, moved);
    const FreeTransform before = Mixed();

    const FreeTransform after = before.Dragged(FreeTransform::Inside, QPointF(1.5, 2.5),
                                               QPointF(1.5, 2.5) + way, regular ? Regular() : Constraint());

    QVERIFY(IsNear(after.GetPosition() - before.GetPosition(), moved));
    QCOMPARE(after.GetScaleX(), before.GetScaleX());
    QCOMPARE(after.GetAngle(), before.GetAngle());
}

void tst_FreeTransform::outsideTurnsAboutTheReference()
{
    const FreeTransform before = Mixed();
    const QPointF about = before.GetPosition();

    // A quarter turn clockwise, at whatever distance.
    const FreeTransform after =
        before.Dragged(FreeTransform::Outside, about + QPointF(100, 0), about + QPointF(0, 3), Constraint());

    QCOMPARE(after.GetAngle(), 125.0);
    QCOMPARE(after.GetPosition(), about);
    for (int i = 0; i < 4; ++i)
    {
        const QPointF arm = before.GetOutline().at(i) - about;
        QVERIFY(IsNear(after.GetOutline().at(i) - about, QPointF(-arm.y(), arm.x())));
    }
    // Beyond half a turn the other way round.
    QCOMPARE(after.Dragged(FreeTransform::Outside, about + QPointF(9, 0), about + QPointF(0, 9), Constraint())
                 .GetAngle(),
             -145.0);
    QCOMPARE(before.Dragged(FreeTransform::Outside, about, about + QPointF(5, 5), Constraint()).GetAngle(),
             35.0);
}

void tst_FreeTransform::turningSnapsToWholeSteps()
{
    const FreeTransform before = Mixed();
    const QPointF about = before.GetPosition();

    for (double by : {0.0, 2.0, 4.0, 11.0, 30.0, 100.0, 145.0, -36.0})
    {
        const double angle = std::atan(1.0) / 45 * by;
        const QPointF to = about + 50 * QPointF(std::cos(angle), std::sin(angle));
        const double after =
            before.Dragged(FreeTransform::Outside, about + QPointF(50, 0), to, Regular()).GetAngle();
        QVERIFY(std::abs(std::remainder(after, 15)) < 1e-9);
        QVERIFY(std::abs(std::remainder(after - 35 - by, 360)) <= 7.5 + 1e-9);
    }
}

void tst_FreeTransform::aCornerFollowsThePointer_data()
{
    QTest::addColumn<int>("part");
    for (int part : {1, 3, 7, 9})
        QTest::addRow("%d", part) << part;
}

void tst_FreeTransform::aCornerFollowsThePointer()
{
    QFETCH(const int, part);
    const auto corner = FreeTransform::Part(part);

    for (const Constraint& constraint : {Constraint(), AboutReference()})
    {
        FreeTransform before = Mixed();
        before.SetReferenceCell(5);
        // Taken a little beside the corner.
        const QPointF from = before.PlaceOf(corner) + QPointF(2, -1);
        const FreeTransform after = before.Dragged(corner, from, from + QPointF(23, 17), constraint);

        QVERIFY(IsNear(after.PlaceOf(corner), before.PlaceOf(corner) + QPointF(23, 17)));
        QCOMPARE(after.GetAngle(), before.GetAngle());
        QCOMPARE(after.GetSkewX(), before.GetSkewX());
        QCOMPARE(after.GetSkewY(), before.GetSkewY());
    }
}

void tst_FreeTransform::anEdgeFollowsThePointerAcross_data()
{
    QTest::addColumn<int>("part");
    QTest::addColumn<QPointF>("way");
    QTest::addColumn<QPointF>("scale");

    QTest::newRow("left") << 4 << QPointF(-50, 33) << QPointF(1.25, 1);
    QTest::newRow("right") << 6 << QPointF(-50, 33) << QPointF(0.75, 1);
    QTest::newRow("top") << 2 << QPointF(33, -20) << QPointF(1, 1.2);
    QTest::newRow("bottom") << 8 << QPointF(33, -20) << QPointF(1, 0.8);
}

void tst_FreeTransform::anEdgeFollowsThePointerAcross()
{
    QFETCH(const int, part);
    QFETCH(const QPointF, way);
    QFETCH(const QPointF, scale);
    const auto edge = FreeTransform::Part(part);
    const FreeTransform before(Box);

    const FreeTransform after =
        before.Dragged(edge, before.PlaceOf(edge), before.PlaceOf(edge) + way, Constraint());

    QCOMPARE(QPointF(after.GetScaleX(), after.GetScaleY()), scale);
}

void tst_FreeTransform::scalingKeepsTheOpposite()
{
    QFETCH(const int, part);
    const auto handle = FreeTransform::Part(part);
    const auto opposite = FreeTransform::Part(10 - part);
    const FreeTransform before = Mixed();

    for (const Constraint& constraint : {Constraint(), Regular()})
    {
        const QPointF from = before.PlaceOf(handle);
        const FreeTransform after = before.Dragged(handle, from, from + QPointF(-19, 31), constraint);

        QVERIFY(IsNear(after.PlaceOf(opposite), before.PlaceOf(opposite)));
        QVERIFY(!IsNear(after.PlaceOf(handle), before.PlaceOf(handle), 1));
    }
}

void tst_FreeTransform::scalingAboutTheReferenceKeepsIt()
{
    QFETCH(const int, part);
    const auto handle = FreeTransform::Part(part);
    FreeTransform before = Mixed();
    before.SetReferencePlace(before.PlaceOf(FreeTransform::Inside) + QPointF(13, 5));
    Constraint both = AboutReference();
    both.regular = true;

    for (const Constraint& constraint : {AboutReference(), both})
    {
        const QPointF from = before.PlaceOf(handle);
        const FreeTransform after = before.Dragged(handle, from, from + QPointF(45, 37), constraint);

        QVERIFY(IsNear(after.GetPosition(), before.GetPosition()));
        QVERIFY(!IsNear(after.PlaceOf(handle), before.PlaceOf(handle), 1));
    }
}

void tst_FreeTransform::scalingKeepsTheProportion()
{
    QFETCH(const int, part);
    const auto handle = FreeTransform::Part(part);
    const FreeTransform before = Mixed();

    const QPointF from = before.PlaceOf(handle);
    const FreeTransform after = before.Dragged(handle, from, from + QPointF(-19, 31), Regular());

    QVERIFY(std::abs(after.GetScaleX() / after.GetScaleY() - 1.5 / -0.75) < 1e-9);
    QVERIFY(std::abs(after.GetScaleX() - 1.5) > 1e-3);
}

void tst_FreeTransform::aCornerAlongItsDiagonalScalesAsFar()
{
    const FreeTransform before(Box);

    const FreeTransform after =
        before.Dragged(FreeTransform::BottomRight, QPointF(240, 120), QPointF(340, 170), Regular());
    QCOMPARE(after.GetScaleX(), 1.5);
    QCOMPARE(after.GetScaleY(), 1.5);

    // Across the diagonal it stays.
    const FreeTransform same =
        before.Dragged(FreeTransform::BottomRight, QPointF(240, 120), QPointF(260, 80), Regular());
    QCOMPARE(same.GetScaleX(), 1.0);
}

void tst_FreeTransform::aHandleAtTheReferenceHasNoSay()
{
    FreeTransform before(Box);
    before.SetReferenceCell(9);

    const FreeTransform after =
        before.Dragged(FreeTransform::BottomRight, QPointF(240, 120), QPointF(300, 180), AboutReference());

    QVERIFY(after.IsIdentity());
    before.SetReferenceCell(6);
    const FreeTransform down =
        before.Dragged(FreeTransform::BottomRight, QPointF(240, 120), QPointF(300, 145), AboutReference());
    QCOMPARE(down.GetScaleX(), 1.0);
    QCOMPARE(down.GetScaleY(), 1.5);
}

void tst_FreeTransform::draggingBeyondTheOppositeMirrors()
{
    const FreeTransform before(Box);

    const FreeTransform after =
        before.Dragged(FreeTransform::Right, QPointF(240, 70), QPointF(-60, 70), Constraint());

    QCOMPARE(after.GetScaleX(), -0.5);
    QVERIFY(IsNear(after.PlaceOf(FreeTransform::Left), QPointF(40, 70)));
    QVERIFY(IsNear(after.PlaceOf(FreeTransform::Right), QPointF(-60, 70)));
    // Right onto it, a sliver is left.
    const FreeTransform sliver =
        before.Dragged(FreeTransform::Right, QPointF(240, 70), QPointF(40, 70), Constraint());
    QVERIFY(sliver.GetScaleX() > 0);
    QVERIFY(sliver.GetScaleX() * 200 < 1);
}

void tst_FreeTransform::anEdgeSlidesAlong_data()
{
    QTest::addColumn<int>("part");
    QTest::addColumn<double>("angle");
    QTest::addColumn<QPointF>("way");
    QTest::addColumn<QPointF>("slid");
    QTest::addColumn<QPointF>("skew");

    QTest::newRow("top") << 2 << 0.0 << QPointF(100, 70) << QPointF(100, 0) << QPointF(-45, 0);
    QTest::newRow("bottom") << 8 << 0.0 << QPointF(100, 70) << QPointF(100, 0) << QPointF(45, 0);
    QTest::newRow("left") << 4 << 0.0 << QPointF(9, 200) << QPointF(0, 200) << QPointF(0, -45);
    QTest::newRow("right") << 6 << 0.0 << QPointF(9, 200) << QPointF(0, 200) << QPointF(0, 45);
    QTest::newRow("turned") << 8 << 90.0 << QPointF(70, 100) << QPointF(0, 100) << QPointF(45, 0);
}

void tst_FreeTransform::anEdgeSlidesAlong()
{
    QFETCH(const int, part);
    QFETCH(const double, angle);
    QFETCH(const QPointF, way);
    QFETCH(const QPointF, slid);
    QFETCH(const QPointF, skew);
    const auto edge = FreeTransform::Part(part);
    FreeTransform before(Box);
    before.SetAngle(angle);

    const FreeTransform after =
        before.Dragged(edge, before.PlaceOf(edge), before.PlaceOf(edge) + way, Skews());

    QVERIFY(IsNear(after.PlaceOf(edge), before.PlaceOf(edge) + slid));
    const auto opposite = FreeTransform::Part(10 - part);
    QVERIFY(IsNear(after.PlaceOf(opposite), before.PlaceOf(opposite)));
    QVERIFY(IsNear(QPointF(after.GetSkewX(), after.GetSkewY()), skew, 1e-9));
    QCOMPARE(after.GetScaleX(), 1.0);
    QCOMPARE(after.GetAngle(), angle);
}

void tst_FreeTransform::skewingAboutTheReferenceKeepsIt()
{
    QFETCH(const int, part);
    const auto edge = FreeTransform::Part(part);
    const auto opposite = FreeTransform::Part(10 - part);
    FreeTransform before = Mixed();
    before.SetReferencePlace(before.PlaceOf(FreeTransform::Inside) + QPointF(13, 5));
    Constraint constraint = Skews();
    constraint.aboutReference = true;
    // Along the axis that the edge lies on before the box is turned.
    QTransform turn;
    turn.rotate(before.GetAngle());
    const bool isSide = edge == FreeTransform::Left || edge == FreeTransform::Right;
    const QPointF way = turn.map(isSide ? QPointF(0, 24) : QPointF(24, 0));

    const QPointF from = before.PlaceOf(edge);
    const FreeTransform after = before.Dragged(edge, from, from + way, constraint);

    QVERIFY(IsNear(after.GetPosition(), before.GetPosition()));
    QVERIFY(IsNear(after.PlaceOf(edge), before.PlaceOf(edge) + way));
    QVERIFY(!IsNear(after.PlaceOf(opposite), before.PlaceOf(opposite), 1));
    QCOMPARE(after.GetScaleX(), before.GetScaleX());
    QCOMPARE(after.GetAngle(), before.GetAngle());
}

void tst_FreeTransform::anEdgeAtTheReferenceDoesNotSkew()
{
    QFETCH(const int, part);
    const auto edge = FreeTransform::Part(part);
    FreeTransform before(Box);
    before.SetReferenceCell(part);
    Constraint constraint = Skews();
    constraint.aboutReference = true;

    const FreeTransform after =
        before.Dragged(edge, before.PlaceOf(edge), before.PlaceOf(edge) + QPointF(30, 30), constraint);

    QVERIFY(after.IsIdentity());
}

void tst_FreeTransform::cornersDoNotSkew()
{
    const FreeTransform before(Box);

    const FreeTransform after =
        before.Dragged(FreeTransform::BottomRight, QPointF(240, 120), QPointF(340, 120), Skews());

    QCOMPARE(after.GetSkewX(), 0.0);
    QCOMPARE(after.GetScaleX(), 1.5);
}

void tst_FreeTransform::numbersKeepTheReference()
{
    QFETCH(const int, cell);
    FreeTransform it = Mixed();
    it.SetReferenceCell(cell);
    const QPointF place = it.GetPosition();

    it.SetScale(0.4, 2.5);
    it.SetSkew(-33, 12);
    it.SetAngle(-101);

    QCOMPARE(it.GetPosition(), place);
    QVERIFY(IsNear(it.GetMatrix().map(CellPoint(cell)), place));
    QVERIFY(IsNear(it.PlaceOf(FreeTransform::Part(cell)), place));
}

void tst_FreeTransform::numbersStayInTheirRanges()
{
    FreeTransform it(Box);
    it.SetSkew(95, 0);
    QCOMPARE(it.GetSkewX(), 89.99);
    it.SetSkew(0, -95);
    QCOMPARE(it.GetSkewY(), -89.99);
    // Both ways by as much, the box would be a line.
    it.SetSkew(45, 45);
    QCOMPARE(it.GetSkewX(), 0.0);
    QCOMPARE(it.GetSkewY(), -89.99);
    it.SetSkew(0, 0);

    it.SetAngle(270);
    QCOMPARE(it.GetAngle(), -90.0);
    it.SetAngle(-180);
    QCOMPARE(it.GetAngle(), 180.0);
    it.SetAngle(720);
    QCOMPARE(it.GetAngle(), 0.0);

    it.SetScale(0, -0.0);
    QCOMPARE(it.GetScaleX(), 0.5 / 200);
    QCOMPARE(it.GetScaleY(), -0.5 / 100);
    it.SetScale(1e9, -1e9);
    QCOMPARE(it.GetScaleX(), 100000.0 / 200);
    QCOMPARE(it.GetScaleY(), -100000.0 / 100);

    it.SetPosition(QPointF(1e7, -1e7));
    QCOMPARE(it.GetPosition(), QPointF(100000, -100000));
}

void tst_FreeTransform::whatIsNotFiniteIsIgnored()
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    FreeTransform it = Mixed();
    const QTransform before = it.GetMatrix();

    for (double bad : {nan, infinity, -infinity})
    {
        it.SetScale(bad, 1);
        it.SetScale(1, bad);
        it.SetAngle(bad);
        it.SetSkew(bad, 0);
        it.SetSkew(0, bad);
        it.SetPosition(QPointF(bad, 0));
        it.SetPosition(QPointF(0, bad));
        it.SetReferencePlace(QPointF(bad, 0));
        for (int part = FreeTransform::Nothing; part <= FreeTransform::Outside; ++part)
        {
            it = it.Dragged(FreeTransform::Part(part), QPointF(0, bad), QPointF(3, 3), Constraint());
            it = it.Dragged(FreeTransform::Part(part), QPointF(3, 3), QPointF(bad, 0), Constraint());
        }
    }

    QCOMPARE(it.GetMatrix(), before);
}

void tst_FreeTransform::nothingIsDraggedWithNoPart()
{
    const FreeTransform before = Mixed();

    const FreeTransform after =
        before.Dragged(FreeTransform::Nothing, QPointF(0, 0), QPointF(50, 60), Constraint());

    QCOMPARE(after.GetMatrix(), before.GetMatrix());
}

void tst_FreeTransform::anyDragsKeepItSound()
{
    QRandomGenerator random(7);
    FreeTransform it(Box);
    const auto place = [&random]
    { return QPointF(random.bounded(3000) - 1500, random.bounded(3000) - 1500); };
    for (int i = 0; i < 20000; ++i)
    {
        Constraint constraint;
        constraint.regular = random.bounded(2) == 1;
        constraint.aboutReference = random.bounded(2) == 1;
        constraint.skews = random.bounded(3) == 1;
        const auto part = FreeTransform::Part(random.bounded(12));
        const QPointF from = random.bounded(2) == 1 ? it.PlaceOf(part) : place();
        it = it.Dragged(part, from, place(), constraint);

        for (const QPointF& corner : it.GetOutline())
            QVERIFY(std::isfinite(corner.x()) && std::isfinite(corner.y()));
        QVERIFY(std::abs(it.GetAngle()) <= 180);
        QVERIFY(std::abs(it.GetSkewX()) <= 89.99 && std::abs(it.GetSkewY()) <= 89.99);
        QVERIFY(std::abs(it.GetScaleX()) * 200 <= 100000.1 && std::abs(it.GetScaleX()) * 200 >= 0.49);
        QVERIFY(std::abs(it.GetPosition().x()) <= 100000 && std::abs(it.GetPosition().y()) <= 100000);
        QVERIFY(std::abs(it.GetMatrix().determinant()) > 1e-12);
    }
}

NV_TEST_MAIN(tst_FreeTransform)
#include "tst_FreeTransform.moc"
