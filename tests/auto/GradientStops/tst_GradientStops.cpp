// Gradients turned into their drawing form and back.

#include "GradientStops.h"

#include <QLinearGradient>
#include <QtConcurrent>

#include <functional>

#include "TestMain.h"

namespace
{

using Stops = QVector<QPair<double, QColor>>;

const QList<NVGradientStop> Three = {
    NVGradientStop(0.125, QColor(1, 2, 3, 4), true, false, false),
    NVGradientStop(0.25, Qt::red, false, true, false),
    NVGradientStop(1.0, Qt::transparent, false, false, true),
};

} // namespace

class tst_GradientStops : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void drawingFormHasOneElementAStopInOrder();
    void equalPositionsStayInOrder();
    void reversedFormRunsBackwardsAndAscends();
    void reversingTwiceGivesTheSame();
    void gradientFromStopsHasNoFlags();
    void roundTripKeepsPlacesAndColors();
    void emptyStaysEmpty();
    void toolkitTakesTheDrawingForm();
    void anyThreadMayConvert();
};

void tst_GradientStops::drawingFormHasOneElementAStopInOrder()
{
    const Stops expected = {{0.125, QColor(1, 2, 3, 4)}, {0.25, Qt::red}, {1.0, Qt::transparent}};

    QCOMPARE(ToGradientStops(Three), expected);
}

void tst_GradientStops::equalPositionsStayInOrder()
{
    const QList<NVGradientStop> gradient = {NVGradientStop(0.5, Qt::red, false, false, false),
                                            NVGradientStop(0.5, Qt::green, false, false, false)};

    QCOMPARE(ToGradientStops(gradient), Stops({{0.5, Qt::red}, {0.5, Qt::green}}));
    QCOMPARE(ToReversedStops(gradient), Stops({{0.5, Qt::green}, {0.5, Qt::red}}));
}

void tst_GradientStops::reversedFormRunsBackwardsAndAscends()
{
    const Stops expected = {{0.0, Qt::transparent}, {0.75, Qt::red}, {0.875, QColor(1, 2, 3, 4)}};

    QCOMPARE(ToReversedStops(Three), expected);
}

void tst_GradientStops::reversingTwiceGivesTheSame()
{
    QCOMPARE(ToReversedStops(FromGradientStops(ToReversedStops(Three))), ToGradientStops(Three));
}

void tst_GradientStops::gradientFromStopsHasNoFlags()
{
    const QList<NVGradientStop> gradient = FromGradientStops(ToGradientStops(Three));

    QCOMPARE(gradient.size(), 3);
    for (const NVGradientStop& stop : gradient)
    {
        QVERIFY(!stop.IsFromForeground() && !stop.IsFromBackground() && !stop.IsTransparent());
    }
}

void tst_GradientStops::roundTripKeepsPlacesAndColors()
{
    const Stops stops = {{0.1, QColor(9, 8, 7, 6)}, {0.1, QColor::fromHsv(10, 20, 30)}, {0.99, Qt::white}};

    QCOMPARE(ToGradientStops(FromGradientStops(stops)), stops);
}

void tst_GradientStops::emptyStaysEmpty()
{
    QVERIFY(ToGradientStops({}).isEmpty());
    QVERIFY(ToReversedStops({}).isEmpty());
    QVERIFY(FromGradientStops({}).isEmpty());
}

void tst_GradientStops::toolkitTakesTheDrawingForm()
{
    QLinearGradient gradient;

    gradient.setStops(ToReversedStops(Three));

    QCOMPARE(gradient.stops().size(), 3);
    QCOMPARE(gradient.stops().last().first, 0.875);
}

void tst_GradientStops::anyThreadMayConvert()
{
    const QVector<int> turns(200);
    const std::function<Stops(const int&)> convert = [](const int&)
    {
        const QList<NVGradientStop> copy = Three;
        return ToReversedStops(FromGradientStops(ToGradientStops(copy)));
    };

    const auto results = QtConcurrent::blockingMapped<QList<Stops>>(turns, convert);

    QCOMPARE(results.size(), turns.size());
    for (const Stops& stops : results)
    {
        QCOMPARE(stops, ToReversedStops(Three));
    }
}

NV_TEST_MAIN(tst_GradientStops)
#include "tst_GradientStops.moc"
