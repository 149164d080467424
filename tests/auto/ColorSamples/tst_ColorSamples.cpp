// The samples of a document: how many there can be, which one is the current one, and what they tell.

#include "ColorSamples.h"

#include "Document.h"
#include "KXDocumentInterface.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

QImage Plain(const QSize& size = QSize(40, 30))
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::gray);
    return image;
}

struct Host
{
    Host() : document(Plain(), QString(), "Picture"), samples(ColorSamples::Of(&document)), log(samples) { }
    Document document;
    ColorSamples* samples;
    SignalLog log;
};

} // namespace

class tst_ColorSamples : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void documentHasItsOwn()
    {
        Host host;
        Host other;

        QCOMPARE(ColorSamples::Of(&host.document), host.samples);
        QVERIFY(other.samples != host.samples);
        QCOMPARE(host.samples->Count(), 0);
        QCOMPARE(host.samples->GetCurrent(), -1);
    }

    void theyGoWithTheirDocument()
    {
        auto document = std::make_unique<Document>(Plain(), QString(), "Picture");
        const QPointer<ColorSamples> samples = ColorSamples::Of(document.get());

        document.reset();

        QVERIFY(!samples);
    }

    void newOneIsTheCurrentOne()
    {
        Host host;

        QCOMPARE(host.samples->Add(QPoint(3, 4)), 0);
        QCOMPARE(host.samples->Add(QPoint(5, 6)), 1);

        QCOMPARE(host.samples->GetPixel(0), QPoint(3, 4));
        QCOMPARE(host.samples->GetCurrent(), 1);
        QCOMPARE(host.log.Entries(),
                 QStringList({"Changed()", "CurrentChanged(0)", "Changed()", "CurrentChanged(1)"}));
    }

    void thereAreTenAtMost()
    {
        Host host;
        for (int i = 0; i < ColorSamples::MAX_SAMPLES; ++i)
            QCOMPARE(host.samples->Add(QPoint(i, i)), i);
        QCOMPARE(host.samples->Count(), 10);
        QVERIFY(host.samples->IsFull());
        host.log.Clear();

        QCOMPARE(host.samples->Add(QPoint(1, 1)), -1);

        QCOMPARE(host.samples->Count(), 10);
        QCOMPARE(host.log.Entries(), QStringList());
        host.samples->Remove(0);
        QCOMPARE(host.samples->Add(QPoint(1, 1)), 9);
    }

    void moveTellsOnlyOfAChange()
    {
        Host host;
        host.samples->Add(QPoint(3, 4));
        host.log.Clear();

        host.samples->Move(0, QPoint(3, 4));
        host.samples->Move(1, QPoint(9, 9));
        host.samples->Move(-1, QPoint(9, 9));
        QCOMPARE(host.log.Entries(), QStringList());
        host.samples->Move(0, QPoint(9, 9));

        QCOMPARE(host.samples->GetPixel(0), QPoint(9, 9));
        QCOMPARE(host.log.Entries(), QStringList("Changed()"));
    }

    void removedOneLeavesTheOthersInOrder_data()
    {
        QTest::addColumn<int>("removed");
        QTest::addColumn<int>("current");
        QTest::addColumn<QStringList>("told");
        QTest::newRow("before the current one") << 0 << 0 << QStringList({"Changed()", "CurrentChanged(0)"});
        QTest::newRow("the current one") << 1 << -1 << QStringList({"Changed()", "CurrentChanged(-1)"});
        QTest::newRow("behind it") << 2 << 1 << QStringList("Changed()");
        QTest::newRow("none") << 3 << 1 << QStringList();
        QTest::newRow("negative") << -1 << 1 << QStringList();
    }
    void removedOneLeavesTheOthersInOrder()
    {
        QFETCH(const int, removed);
        Host host;
        for (int i = 0; i < 3; ++i)
            host.samples->Add(QPoint(i, i));
        host.samples->SetCurrent(1);
        host.log.Clear();

        host.samples->Remove(removed);

        QTEST(host.samples->GetCurrent(), "current");
        QTEST(host.log.Entries(), "told");
    }

    void clearTellsOnce()
    {
        Host host;
        host.samples->Clear();
        QCOMPARE(host.log.Entries(), QStringList());
        host.samples->Add(QPoint(1, 1));
        host.samples->Add(QPoint(2, 2));
        host.log.Clear();

        host.samples->Clear();
        host.samples->Clear();

        QCOMPARE(host.samples->Count(), 0);
        QCOMPARE(host.log.Entries(), QStringList({"Changed()", "CurrentChanged(-1)"}));
    }

    void setKeepsTheCurrentOne_data()
    {
        QTest::addColumn<QVector<QPoint>>("pixels");
        QTest::addColumn<int>("current");
        const QPoint a(0, 0);
        const QPoint b(1, 1);
        const QPoint c(2, 2);
        QTest::newRow("moved") << QVector<QPoint>({a, QPoint(9, 9), c}) << 1;
        QTest::newRow("one before it is gone") << QVector<QPoint>({b, c}) << 0;
        QTest::newRow("one before it is new") << QVector<QPoint>({c, a, b, c}) << 2;
        QTest::newRow("it is gone") << QVector<QPoint>({a, c}) << -1;
        QTest::newRow("all are gone") << QVector<QPoint>() << -1;
    }
    void setKeepsTheCurrentOne()
    {
        QFETCH(const QVector<QPoint>, pixels);
        Host host;
        for (int i = 0; i < 3; ++i)
            host.samples->Add(QPoint(i, i));
        host.samples->SetCurrent(1);
        host.log.Clear();

        host.samples->Set(pixels);
        host.samples->Set(pixels);
        host.samples->Set(QVector<QPoint>(11));

        QCOMPARE(host.samples->GetPixels(), pixels);
        QTEST(host.samples->GetCurrent(), "current");
        QCOMPARE(host.log.Count("Changed"), 1);
    }

    void badCurrentIsNone()
    {
        Host host;
        host.samples->Add(QPoint(1, 1));
        host.log.Clear();

        host.samples->SetCurrent(0);
        QCOMPARE(host.log.Entries(), QStringList());
        host.samples->SetCurrent(7);
        host.samples->SetCurrent(-2);

        QCOMPARE(host.samples->GetCurrent(), -1);
        QCOMPARE(host.log.Entries(), QStringList("CurrentChanged(-1)"));
    }

    void theyStayOnTheirPixelsWhenTheSizeChanges()
    {
        Host host;
        host.samples->Add(QPoint(35, 25));
        host.log.Clear();

        QVERIFY(host.document.GetPixels()->ReplaceImages({Plain(QSize(10, 10))}, QImage()));

        QCOMPARE(host.samples->GetPixel(0), QPoint(35, 25));
        QCOMPARE(host.log.Entries(), QStringList());
    }
};

NV_TEST_MAIN(tst_ColorSamples)
#include "tst_ColorSamples.moc"
