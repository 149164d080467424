// The stop of a gradient as a value.

#include "NVGradientStop.h"

#include <QList>

#include "TestMain.h"

class tst_NVGradientStop : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsWhatItIsMadeOf_data();
    void keepsWhatItIsMadeOf();
    void copiesKeepTheFlags();
    void assignmentTakesAllMembers();
    void anyMemberMakesADifference_data();
    void anyMemberMakesADifference();
    void sharedListsDetachOnWrite();
};

void tst_NVGradientStop::keepsWhatItIsMadeOf_data()
{
    QTest::addColumn<double>("position");
    QTest::addColumn<QColor>("color");
    QTest::newRow("start") << 0.0 << QColor(Qt::red);
    QTest::newRow("end, half transparent") << 1.0 << QColor(1, 2, 3, 128);
    QTest::newRow("outside") << -0.25 << QColor(Qt::black);
    QTest::newRow("no colour") << 0.5 << QColor();
    QTest::newRow("another colour model") << 0.5 << QColor::fromHsv(120, 10, 20, 30);
}

void tst_NVGradientStop::keepsWhatItIsMadeOf()
{
    QFETCH(double, position);
    QFETCH(QColor, color);

    const NVGradientStop stop(position, color, true, false, true);

    QCOMPARE(stop.GetPosition(), position);
    QCOMPARE(stop.GetColor(), color);
    QCOMPARE(stop.IsFromForeground(), true);
    QCOMPARE(stop.IsFromBackground(), false);
    QCOMPARE(stop.IsTransparent(), true);
}

void tst_NVGradientStop::copiesKeepTheFlags()
{
    for (int flags = 0; flags < 8; ++flags)
    {
        const NVGradientStop stop(0.5, Qt::green, flags & 1, flags & 2, flags & 4);

        const NVGradientStop copy(stop);
        const NVGradientStop fromList = QList<NVGradientStop>({stop}).first();

        for (const NVGradientStop& each : {copy, fromList})
        {
            QCOMPARE(each.IsFromForeground(), bool(flags & 1));
            QCOMPARE(each.IsFromBackground(), bool(flags & 2));
            QCOMPARE(each.IsTransparent(), bool(flags & 4));
            QVERIFY(each == stop);
        }
    }
}

void tst_NVGradientStop::assignmentTakesAllMembers()
{
    NVGradientStop stop(0.1, Qt::red, false, false, false);
    const NVGradientStop other(0.9, Qt::blue, true, true, true);

    stop = other;

    QVERIFY(stop == other);
    QVERIFY(!(stop != other));
}

void tst_NVGradientStop::anyMemberMakesADifference_data()
{
    QTest::addColumn<double>("position");
    QTest::addColumn<QColor>("color");
    QTest::addColumn<int>("flags");
    QTest::newRow("position") << 0.25000001 << QColor(10, 20, 30, 40) << 0;
    QTest::newRow("colour") << 0.25 << QColor(10, 20, 31, 40) << 0;
    QTest::newRow("alpha") << 0.25 << QColor(10, 20, 30, 41) << 0;
    QTest::newRow("from the foreground") << 0.25 << QColor(10, 20, 30, 40) << 1;
    QTest::newRow("from the background") << 0.25 << QColor(10, 20, 30, 40) << 2;
    QTest::newRow("transparent") << 0.25 << QColor(10, 20, 30, 40) << 4;
}

void tst_NVGradientStop::anyMemberMakesADifference()
{
    QFETCH(double, position);
    QFETCH(QColor, color);
    QFETCH(int, flags);
    const NVGradientStop stop(0.25, QColor(10, 20, 30, 40), false, false, false);

    const NVGradientStop other(position, color, flags & 1, flags & 2, flags & 4);

    QVERIFY(stop != other);
    QVERIFY(!(stop == other));
}

void tst_NVGradientStop::sharedListsDetachOnWrite()
{
    const QList<NVGradientStop> gradient = {NVGradientStop(0.0, Qt::black, true, false, false),
                                            NVGradientStop(1.0, Qt::white, false, true, false)};
    QList<NVGradientStop> copy = gradient;
    QVERIFY(copy.isSharedWith(gradient));

    copy.removeLast();
    copy[0] = NVGradientStop(0.5, Qt::red, false, false, false);

    QCOMPARE(gradient.size(), 2);
    QCOMPARE(gradient.first().GetPosition(), 0.0);
    QVERIFY(gradient.last().IsFromBackground());
}

NV_TEST_MAIN(tst_NVGradientStop)
#include "tst_NVGradientStop.moc"
