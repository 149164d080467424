// Stamps as they are kept for a stroke: their form, their place between the pixels, their memory.

#include <QTest>

#include <cmath>

#include "StrokeStamp.h"
#include "TestMain.h"

namespace
{
const int FULL = 65535;

int ValueAt(const StrokeStamp& stamp, int x, int y)
{
    const StrokeStamp::Row& row = stamp.rows[size_t(y)];
    if (x < row.left || x >= row.right)
        return 0;
    if (x < row.solidLeft)
        return stamp.values[row.values + size_t(x - row.left)];
    if (x < row.solidRight)
        return FULL;
    return stamp.values[row.values + size_t(row.solidLeft - row.left) + size_t(x - row.solidRight)];
}

struct Weighed
{
    double mass = 0.0;
    QPointF center;
};

Weighed Weigh(const StampCache::Placed& placed)
{
    Weighed weighed;
    for (int y = 0; y < int(placed.stamp->rows.size()); ++y)
    {
        for (int x = 0; x < placed.stamp->width; ++x)
        {
            const double value = ValueAt(*placed.stamp, x, y) / double(FULL);
            weighed.mass += value;
            weighed.center += QPointF(x + 0.5, y + 0.5) * value;
        }
    }
    weighed.center = weighed.center / weighed.mass + placed.origin;
    return weighed;
}

BrushTip Tip(double hardness)
{
    BrushTip tip;
    tip.hardness = hardness;
    return tip;
}
} // namespace

class tst_StrokeStamp : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aStampLiesWhereItIsPut_data();
    void aStampLiesWhereItIsPut();
    void movedStampsAreTheMixOfTheirNeighbours();
    void theInsideOfAHardStampIsFull();
    void aHardStampIsSmallAtAnySize();
    void aWideFalloffHasMoreThanAByteOfLevels();
    void theSameStampIsNotMadeTwice();
    void theCacheStaysWithinItsRoom();
    void shapesWithHolesKeepTheirHoles();
};

void tst_StrokeStamp::aStampLiesWhereItIsPut_data()
{
    QTest::addColumn<double>("diameter");
    QTest::addColumn<double>("hardness");
    QTest::addColumn<QPointF>("center");
    for (double diameter : {1.0, 2.0, 7.0, 20.5, 64.0})
    {
        for (double hardness : {0.0, 1.0})
        {
            for (const QPointF& center :
                 {QPointF(40, 50), QPointF(40.25, 50.5), QPointF(-3.75, 10.75), QPointF(0.5, -0.25)})
                QTest::addRow("%g pixels, hardness %g, at %g, %g", diameter, hardness, center.x(), center.y())
                    << diameter << hardness << center;
        }
    }
}

void tst_StrokeStamp::aStampLiesWhereItIsPut()
{
    QFETCH(double, diameter);
    QFETCH(double, hardness);
    QFETCH(QPointF, center);
    StampCache cache;
    const double mass = Weigh(cache.Get(Tip(hardness), diameter, QPointF(0, 0))).mass;

    const Weighed weighed = Weigh(cache.Get(Tip(hardness), diameter, center));

    QVERIFY2(std::hypot(weighed.center.x() - center.x(), weighed.center.y() - center.y()) < 0.03,
             qPrintable(QStringLiteral("%1, %2").arg(weighed.center.x()).arg(weighed.center.y())));
    QVERIFY2(std::abs(weighed.mass - mass) < 0.005 * mass, qPrintable(QString::number(weighed.mass)));
}

void tst_StrokeStamp::movedStampsAreTheMixOfTheirNeighbours()
{
    StampCache cache;
    const auto straight = cache.Get(Tip(0.6), 30.0, QPointF(15, 15)).stamp;
    for (int quarters = 1; quarters < 16; ++quarters)
    {
        const int qx = quarters % 4;
        const int qy = quarters / 4;
        const auto moved = cache.Get(Tip(0.6), 30.0, QPointF(15 + qx * 0.25, 15 + qy * 0.25)).stamp;
        QCOMPARE(moved->rows.size(), straight->rows.size());
        for (int y = 0; y < int(moved->rows.size()); ++y)
        {
            for (int x = 0; x < moved->width; ++x)
            {
                const auto at = [&](int dx, int dy)
                { return x < dx || y < dy ? 0 : ValueAt(*straight, x - dx, y - dy); };
                const int expected = (at(0, 0) * (4 - qx) * (4 - qy) + at(1, 0) * qx * (4 - qy) +
                                      at(0, 1) * (4 - qx) * qy + at(1, 1) * qx * qy + 8) /
                    16;
                QCOMPARE(ValueAt(*moved, x, y), expected);
            }
        }
    }
}

void tst_StrokeStamp::theInsideOfAHardStampIsFull()
{
    StampCache cache;
    const auto placed = cache.Get(Tip(1.0), 101.0, QPointF(200.5, 200.5));
    for (int y = 150; y <= 250; ++y)
    {
        for (int x = 150; x <= 250; ++x)
        {
            const double distance = std::hypot(x - 200, y - 200);
            const int value = ValueAt(*placed.stamp, x - placed.origin.x(), y - placed.origin.y());
            if (distance < 49.0)
                QCOMPARE(value, FULL);
            else if (distance > 52.0)
                QCOMPARE(value, 0);
        }
    }
}

void tst_StrokeStamp::aHardStampIsSmallAtAnySize()
{
    StampCache cache;
    const auto placed = cache.Get(Tip(1.0), 2500.0, QPointF(0, 0));
    QVERIFY(placed.stamp->rows.size() > 2490);
    QVERIFY2(placed.stamp->Bytes() < 300000, qPrintable(QString::number(placed.stamp->Bytes())));
}

void tst_StrokeStamp::aWideFalloffHasMoreThanAByteOfLevels()
{
    StampCache cache;
    const auto stamp = cache.Get(Tip(0.0), 2000.0, QPointF(0, 0)).stamp;
    int between = 0;
    for (int x = 0; x < 1000; ++x)
        between += ValueAt(*stamp, x, 1000) % 257 != 0;
    QVERIFY2(between > 400, qPrintable(QString::number(between)));
}

void tst_StrokeStamp::theSameStampIsNotMadeTwice()
{
    StampCache cache;
    const auto first = cache.Get(Tip(1.0), 30.0, QPointF(10.25, 10));
    const qint64 bytes = cache.Bytes();
    const auto second = cache.Get(Tip(1.0), 30.0, QPointF(-900.75, 17));
    QCOMPARE(first.stamp.get(), second.stamp.get());
    QCOMPARE(second.origin - first.origin, QPoint(-911, 7));
    QCOMPARE(cache.Bytes(), bytes);
}

void tst_StrokeStamp::theCacheStaysWithinItsRoom()
{
    StampCache cache;
    const auto kept = cache.Get(Tip(0.0), 900.0, QPointF(0, 0));
    for (int i = 0; i < 40; ++i)
        cache.Get(Tip(0.0), 901.0 + i, QPointF(i * 0.3, 0));
    QVERIFY2(cache.Bytes() <= 33 << 20, qPrintable(QString::number(cache.Bytes())));
    QVERIFY(Weigh(kept).mass > 0.0);
    const auto again = cache.Get(Tip(0.0), 900.0, QPointF(0, 0));
    QVERIFY(again.stamp != kept.stamp);
    QCOMPARE(again.stamp->values, kept.stamp->values);
}

void tst_StrokeStamp::shapesWithHolesKeepTheirHoles()
{
    BrushTip tip;
    tip.shape = BrushTip::Spray;
    StampCache cache;
    const QImage image = RenderBrushTip(tip, 80.0);
    const auto stamp = cache.Get(tip, 80.0, QPointF(image.width() / 2.0, image.height() / 2.0)).stamp;
    for (int y = 0; y < image.height(); ++y)
    {
        for (int x = 0; x < image.width(); ++x)
            QCOMPARE(ValueAt(*stamp, x, y), int(image.constScanLine(y)[x]) * 257);
    }
}

NV_TEST_MAIN(tst_StrokeStamp)
#include "tst_StrokeStamp.moc"
