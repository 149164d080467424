// The line of the ruler, and directions of whole 45 degrees.

#include "RulerLine.h"

#include "Document.h"
#include "KXDocumentInterface.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

QImage Plain(const QSize& size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::gray);
    return image;
}

} // namespace

class tst_RulerLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void documentHasItsOwn()
    {
        Document document(Plain(QSize(40, 30)), QString(), "Picture");

        QCOMPARE(RulerLine::Of(&document), RulerLine::Of(&document));
        QVERIFY(RulerLine::Of(&document)->IsNull());
    }

    void lineTellsOnlyOfAChange()
    {
        Document document(Plain(QSize(40, 30)), QString(), "Picture");
        RulerLine* line = RulerLine::Of(&document);
        const SignalLog log(line);

        line->Clear();
        line->Set(QLineF(1, 1, 1, 1));
        QCOMPARE(log.Count(), 0);
        line->Set(QLineF(1, 2, 3, 4));
        line->Set(QLineF(1, 2, 3, 4));
        QCOMPARE(log.Count("Changed"), 1);
        QCOMPARE(line->Get(), QLineF(1, 2, 3, 4));
        line->Set(QLineF(7, 7, 7, 7));

        QVERIFY(line->IsNull());
        QCOMPARE(log.Count("Changed"), 2);
    }

    void itGoesWhenTheSizeChanges()
    {
        Document document(Plain(QSize(40, 30)), QString(), "Picture");
        RulerLine* line = RulerLine::Of(&document);
        line->Set(QLineF(1, 2, 3, 4));

        QVERIFY(document.GetPixels()->ReplaceImages({Plain(QSize(10, 10))}, QImage()));

        QVERIFY(line->IsNull());
    }

    void endIsSnappedToTheNearestDirection_data()
    {
        QTest::addColumn<QPointF>("end");
        QTest::addColumn<QPointF>("snapped");
        QTest::newRow("level") << QPointF(30, 4) << QPointF(30, 0);
        QTest::newRow("level, backwards") << QPointF(-30, -4) << QPointF(-30, 0);
        QTest::newRow("plumb") << QPointF(-3, 50) << QPointF(0, 50);
        QTest::newRow("diagonal") << QPointF(20, 10) << QPointF(15, 15);
        QTest::newRow("other diagonal") << QPointF(20, -24) << QPointF(22, -22);
        QTest::newRow("no way") << QPointF(0, 0) << QPointF(0, 0);
    }
    void endIsSnappedToTheNearestDirection()
    {
        QFETCH(const QPointF, end);
        QFETCH(const QPointF, snapped);
        const QPointF fixed(7, 9);

        const QPointF way = SnappedEnd(fixed, fixed + end) - fixed - snapped;

        QVERIFY(qAbs(way.x()) < 1e-9 && qAbs(way.y()) < 1e-9);
    }
};

NV_TEST_MAIN(tst_RulerLine)
#include "tst_RulerLine.moc"
