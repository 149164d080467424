// Probing of pictures: places, tolerances, device pixels and the words of a failure.

#include "ProbeImage.h"
#include "TestMain.h"

#include <QPainter>

namespace
{
// Red, with a blue rectangle.
QImage picture(const QSize& size, const QRect& blue)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::red);
    QPainter(&image).fillRect(blue, Qt::blue);
    return image;
}

class Painted : public QWidget
{
    Q_OBJECT
protected:
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(2, 3, 4, 5, Qt::green); }
};
} // namespace

class tst_ProbeImage : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void readsSinglePixels();
    void readsByFraction();
    void nearKeepsToTheTolerance_data();
    void nearKeepsToTheTolerance();
    void failureTellsPlaceAndColours();
    void countsAndBoundsAColour();
    void tellsDifferences();
    void coordinatesAreLogical();
    void rendersAWidgetAtAnyRatio();
    void countsColours();
};

void tst_ProbeImage::readsSinglePixels()
{
    const ProbeImage probe(picture({10, 8}, {2, 1, 3, 2}));
    QCOMPARE(probe.Size(), QSize(10, 8));
    QCOMPARE(probe.At(0, 0), QColor(Qt::red));
    QCOMPARE(probe.At(2, 1), QColor(Qt::blue));
    QCOMPARE(probe.At(4, 2), QColor(Qt::blue));
    QCOMPARE(probe.At(5, 2), QColor(Qt::red));
    QVERIFY(!probe.At(10, 0).isValid());
    QVERIFY(!probe.At(-1, 0).isValid());
}

void tst_ProbeImage::readsByFraction()
{
    const ProbeImage probe(picture({11, 11}, {5, 5, 6, 6}));
    QCOMPARE(probe.AtFraction(0, 0), QColor(Qt::red));
    QCOMPARE(probe.AtFraction(0.5, 0.5), QColor(Qt::blue));
    QCOMPARE(probe.AtFraction(1, 1), QColor(Qt::blue));
    QCOMPARE(probe.AtFraction(1, 0), QColor(Qt::red));
    QVERIFY(!probe.AtFraction(1.5, 0).isValid());
}

void tst_ProbeImage::nearKeepsToTheTolerance_data()
{
    QTest::addColumn<QColor>("one");
    QTest::addColumn<QColor>("other");
    QTest::addColumn<bool>("close");
    QTest::newRow("same") << QColor(10, 20, 30) << QColor(10, 20, 30) << true;
    QTest::newRow("at the limit") << QColor(10, 20, 30) << QColor(18, 12, 38) << true;
    QTest::newRow("red beyond") << QColor(10, 20, 30) << QColor(19, 20, 30) << false;
    QTest::newRow("green beyond") << QColor(10, 20, 30) << QColor(10, 11, 30) << false;
    QTest::newRow("blue beyond") << QColor(10, 20, 30) << QColor(10, 20, 39) << false;
    QTest::newRow("alpha beyond") << QColor(10, 20, 30) << QColor(10, 20, 30, 246) << false;
    QTest::newRow("invalid") << QColor() << QColor(0, 0, 0) << false;
}

void tst_ProbeImage::nearKeepsToTheTolerance()
{
    QFETCH(QColor, one);
    QFETCH(QColor, other);
    QFETCH(bool, close);
    QCOMPARE(ProbeImage::Similar(one, other), close);
    QCOMPARE(ProbeImage::Similar(other, one), close);
}

void tst_ProbeImage::failureTellsPlaceAndColours()
{
    const ProbeImage probe(picture({10, 8}, {2, 1, 3, 2}));
    QVERIFY(!probe.Near(2, 1, Qt::red, 5));
    QCOMPARE(probe.FailureText(),
             QString("at (2, 1) of 10 by 8: expected #ffff0000 within 5, found #ff0000ff"));
    QVERIFY(probe.Near(2, 1, Qt::blue));
    QCOMPARE(probe.FailureText(), QString());
    QVERIFY(!probe.Near(20, 1, Qt::red));
    QVERIFY(probe.FailureText().endsWith("found no pixel"));
    NV_VERIFY_NEAR(probe, 0, 0, Qt::red, 0);
}

void tst_ProbeImage::countsAndBoundsAColour()
{
    const ProbeImage probe(picture({10, 8}, {2, 1, 3, 2}));
    QCOMPARE(probe.CountOf(Qt::blue), 6);
    QCOMPARE(probe.CountOf(Qt::red), 74);
    QCOMPARE(probe.BoundsOf(Qt::blue), QRect(2, 1, 3, 2));
    QVERIFY(probe.BoundsOf(Qt::green).isNull());
}

void tst_ProbeImage::tellsDifferences()
{
    const ProbeImage one(picture({10, 8}, {2, 1, 3, 2}));
    const ProbeImage moved(picture({10, 8}, {3, 1, 3, 2}));
    const ProbeImage larger(picture({11, 8}, {2, 1, 3, 2}));
    QVERIFY(!one.Differs(one));
    QVERIFY(one.Differs(moved));
    QCOMPARE(one.FailureText(), QString("first at device pixel (2, 1): #ff0000ff and #ffff0000"));
    QVERIFY(!one.Differs(moved, 255));
    QVERIFY(one.Differs(larger));
}

void tst_ProbeImage::coordinatesAreLogical()
{
    QImage image = picture({20, 16}, {4, 2, 6, 4});
    image.setDevicePixelRatio(2);
    const ProbeImage probe(image);
    QCOMPARE(probe.Size(), QSize(10, 8));
    QCOMPARE(probe.At(2, 1), QColor(Qt::blue));
    QCOMPARE(probe.At(1, 1), QColor(Qt::red));
    QCOMPARE(probe.BoundsOf(Qt::blue), QRect(2, 1, 3, 2));
    QCOMPARE(probe.CountOf(Qt::blue), 24);
}

void tst_ProbeImage::rendersAWidgetAtAnyRatio()
{
    Painted widget;
    widget.resize(20, 20);
    for (const qreal ratio : {1.0, 2.0, 3.0})
    {
        const ProbeImage probe(&widget, ratio);
        QCOMPARE(probe.Image().size(), QSize(20, 20) * ratio);
        QCOMPARE(probe.BoundsOf(Qt::green), QRect(2, 3, 4, 5));
    }
}

void tst_ProbeImage::countsColours()
{
    const ProbeImage probe(picture({10, 8}, {2, 1, 3, 2}));
    QCOMPARE(probe.ColorCount(), 2);
    QCOMPARE(probe.ColorCount(1), 1);
}

NV_TEST_MAIN(tst_ProbeImage)

#include "tst_ProbeImage.moc"
