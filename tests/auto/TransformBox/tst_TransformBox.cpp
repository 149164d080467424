// The box of free transform on a canvas: what a pointer takes of it, and what it looks like.

#include "TransformBox.h"

#include <QPainter>
#include <QtTest>

#include "KXDocumentInterface.h"
#include "KXDocumentModel.h"
#include "NVDocumentView.h"
#include "TestMain.h"

namespace
{

const QRectF Box(100, 60, 80, 60);

struct Host
{
    explicit Host(double scale = 1)
    {
        view.resize(800, 600);
        view.show();
        view.Scale(scale / view.GetScale(), QPointF(400, 300));
    }
    // In pixels of the screen beside a point of the document.
    QPointF beside(const QPointF& point, const QPointF& way) const
    {
        return view.MapToDocument(view.MapFromDocument(point) + way);
    }
    FreeTransform::Part partAt(const QPointF& point, const QPointF& way = QPointF()) const
    {
        return TransformBox::PartAt(box, &view, beside(point, way));
    }

    KXDocumentInterface document{QImage(300, 200, QImage::Format_ARGB32_Premultiplied)};
    KXDocumentModel model{&document};
    NVDocumentView view{&model};
    FreeTransform box{Box};
};

} // namespace

class tst_TransformBox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachPartIsTaken_data();
    void eachPartIsTaken();
    void theReachIsThatOfTheScreen_data();
    void theReachIsThatOfTheScreen();
    void aReferenceInACornerLeavesTheHandle();
    void aSmallBoxHasNoHandlesAtItsEdges();
    void anEmptyBoxHasNothing();
    void theCursorLooksAcross_data();
    void theCursorLooksAcross();
    void aReferenceNearAPointIsMeantToLieThere();
    void isDrawnOnTheCanvasAlone();
};

void tst_TransformBox::eachPartIsTaken_data()
{
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<int>("part");

    QTest::newRow("top left") << QPointF(100, 60) << 1;
    QTest::newRow("top") << QPointF(140, 60) << 2;
    QTest::newRow("top right") << QPointF(180, 60) << 3;
    QTest::newRow("left") << QPointF(100, 90) << 4;
    QTest::newRow("reference") << QPointF(140, 90) << 5;
    QTest::newRow("right") << QPointF(180, 90) << 6;
    QTest::newRow("bottom left") << QPointF(100, 120) << 7;
    QTest::newRow("bottom") << QPointF(140, 120) << 8;
    QTest::newRow("bottom right") << QPointF(180, 120) << 9;
    QTest::newRow("inside") << QPointF(120, 75) << int(FreeTransform::Inside);
    QTest::newRow("outside") << QPointF(220, 75) << int(FreeTransform::Outside);
    QTest::newRow("far outside") << QPointF(-500, -500) << int(FreeTransform::Outside);
}

void tst_TransformBox::eachPartIsTaken()
{
    QFETCH(const QPointF, point);
    QFETCH(const int, part);
    Host host;

    QCOMPARE(int(host.partAt(point)), part);
    // Wherever it has been put.
    host.box.SetAngle(50);
    host.box.SetSkew(10, 5);
    host.box.SetPosition(QPointF(170, 60));
    QCOMPARE(int(host.partAt(host.box.GetMatrix().map(point))), part);
}

void tst_TransformBox::theReachIsThatOfTheScreen_data()
{
    QTest::addColumn<double>("scale");
    for (double scale : {0.5, 1.0, 8.0})
        QTest::addRow("%g", scale) << scale;
}

void tst_TransformBox::theReachIsThatOfTheScreen()
{
    QFETCH(const double, scale);
    const Host host(scale);

    QCOMPARE(host.partAt(QPointF(180, 120), QPointF(5, 5)), FreeTransform::BottomRight);
    QCOMPARE(host.partAt(QPointF(180, 120), QPointF(9, 0)), FreeTransform::Outside);
    QCOMPARE(host.partAt(QPointF(140, 90), QPointF(0, -6)), FreeTransform::Reference);
    QCOMPARE(host.partAt(QPointF(140, 90), QPointF(9, 0)), FreeTransform::Inside);
}

void tst_TransformBox::aReferenceInACornerLeavesTheHandle()
{
    Host host;
    host.box.SetReferenceCell(9);

    QCOMPARE(host.partAt(QPointF(180, 120)), FreeTransform::BottomRight);
    QCOMPARE(host.partAt(QPointF(140, 90)), FreeTransform::Inside);
    host.box.SetReferencePlace(QPointF(60, 30));
    QCOMPARE(host.partAt(QPointF(60, 30)), FreeTransform::Reference);
}

void tst_TransformBox::aSmallBoxHasNoHandlesAtItsEdges()
{
    Host host;
    host.box = FreeTransform(QRectF(100, 60, 24, 100));
    host.box.SetReferencePlace(QPointF(20, 20));

    QCOMPARE(host.partAt(QPointF(112, 57)), FreeTransform::Outside);
    QCOMPARE(host.partAt(QPointF(112, 63)), FreeTransform::Inside);
    QCOMPARE(host.partAt(QPointF(124, 110)), FreeTransform::Right);
}

void tst_TransformBox::anEmptyBoxHasNothing()
{
    Host host;
    host.box = FreeTransform();

    QCOMPARE(host.partAt(QPointF(0, 0)), FreeTransform::Nothing);
    QImage image(100, 100, QImage::Format_RGB32);
    image.fill(Qt::gray);
    const QImage before = image.copy();
    QPainter painter(&image);
    TransformBox::Draw(painter, host.box, &host.view, FreeTransform::Nothing);
    painter.end();
    QCOMPARE(image, before);
}

void tst_TransformBox::theCursorLooksAcross_data()
{
    QTest::addColumn<int>("part");
    QTest::addColumn<double>("angle");
    QTest::addColumn<bool>("skews");
    QTest::addColumn<int>("shape");

    const auto row =
        [](const char* name, FreeTransform::Part part, double angle, bool skews, Qt::CursorShape shape)
    { QTest::newRow(name) << int(part) << angle << skews << int(shape); };
    row("nothing", FreeTransform::Nothing, 0, false, Qt::ArrowCursor);
    row("inside", FreeTransform::Inside, 0, false, Qt::SizeAllCursor);
    row("outside", FreeTransform::Outside, 0, false, Qt::CrossCursor);
    row("reference", FreeTransform::Reference, 0, false, Qt::CrossCursor);
    row("right", FreeTransform::Right, 0, false, Qt::SizeHorCursor);
    row("left", FreeTransform::Left, 0, false, Qt::SizeHorCursor);
    row("top", FreeTransform::Top, 0, false, Qt::SizeVerCursor);
    row("bottom right", FreeTransform::BottomRight, 0, false, Qt::SizeFDiagCursor);
    row("top right", FreeTransform::TopRight, 0, false, Qt::SizeBDiagCursor);
    row("right, turned", FreeTransform::Right, 90, false, Qt::SizeVerCursor);
    row("top, half turned", FreeTransform::Top, 45, false, Qt::SizeBDiagCursor);
    row("right, skewing", FreeTransform::Right, 0, true, Qt::SizeVerCursor);
    row("bottom right, not skewing", FreeTransform::BottomRight, 0, true, Qt::SizeFDiagCursor);
}

void tst_TransformBox::theCursorLooksAcross()
{
    QFETCH(const int, part);
    QFETCH(const double, angle);
    QFETCH(const bool, skews);
    FreeTransform box(Box);
    box.SetAngle(angle);
    FreeTransform::Constraint constraint;
    constraint.skews = skews;

    QTEST(int(TransformBox::CursorOf(box, FreeTransform::Part(part), constraint).shape()), "shape");
}

void tst_TransformBox::aReferenceNearAPointIsMeantToLieThere()
{
    const Host host(2);

    for (int cell = 1; cell <= 9; ++cell)
    {
        const QPointF point(100 + (cell - 1) % 3 * 40, 60 + (cell - 1) / 3 * 30);
        QCOMPARE(TransformBox::CellNear(host.box, &host.view, host.beside(point, QPointF(4, -4))), cell);
        QCOMPARE(TransformBox::CellNear(host.box, &host.view, host.beside(point, QPointF(6, -6))), 0);
    }
}

void tst_TransformBox::isDrawnOnTheCanvasAlone()
{
    const Host host;
    QImage image(800, 600, QImage::Format_RGB32);
    image.fill(Qt::gray);
    const QImage before = image.copy();
    QPainter painter(&image);
    TransformBox::Draw(painter, host.box, &host.view, FreeTransform::TopLeft);
    painter.end();

    const auto at = [&host](double x, double y)
    { return host.view.MapFromDocument(QPointF(x, y)).toPoint(); };
    QVERIFY(image.pixel(at(160, 60)) != before.pixel(at(160, 60)));
    QVERIFY(image.pixel(at(100, 75)) != before.pixel(at(100, 75)));
    QVERIFY(image.pixel(at(140, 85)) != before.pixel(at(140, 85)));
    QCOMPARE(image.pixel(at(120, 75)), before.pixel(at(120, 75)));
    QCOMPARE(image.pixel(at(200, 75)), before.pixel(at(200, 75)));
    // The handle under the pointer stands out.
    QVERIFY(image.pixelColor(at(100, 60)) == host.view.palette().color(QPalette::Highlight));
    QVERIFY(image.pixelColor(at(180, 60)) != host.view.palette().color(QPalette::Highlight));
}

NV_TEST_MAIN(tst_TransformBox)
#include "tst_TransformBox.moc"
