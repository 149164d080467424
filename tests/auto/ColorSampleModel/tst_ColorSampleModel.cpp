// The rows of the colour samples: their texts, and how they follow samples and picture.

#include "ColorSampleModel.h"

#include <QAbstractItemModelTester>

#include "ColorSamples.h"
#include "Document.h"
#include "KXColorSampleDelegate.h"
#include "KXDocumentInterface.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

QImage Halves()
{
    QImage image(40, 30, QImage::Format_ARGB32_Premultiplied);
    image.fill(QColor(200, 0, 0));
    for (int y = 0; y < 30; ++y)
    {
        for (int x = 20; x < 40; ++x)
            image.setPixelColor(x, y, QColor(0, 0, 100));
    }
    return image;
}

struct Host
{
    Host() : tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest)
    {
        model.SetDocument(document.get());
        log.Watch(&model);
    }
    ColorSamples* Samples() const { return ColorSamples::Of(document.get()); }
    void Paint(const QRect& rect, const QColor& color)
    {
        QImage& layer = document->GetPixels()->EditLayer(0);
        for (int y = rect.top(); y <= rect.bottom(); ++y)
        {
            for (int x = rect.left(); x <= rect.right(); ++x)
                layer.setPixelColor(x, y, color);
        }
        document->GetPixels()->NotifyChanged(rect);
    }
    QString Text(int row, int role = Qt::DisplayRole) const { return model.index(row).data(role).toString(); }

    std::unique_ptr<Document> document = std::make_unique<Document>(Halves(), QString(), "Picture");
    ColorSampleModel model;
    QAbstractItemModelTester tester;
    SignalLog log;
};

} // namespace

class tst_ColorSampleModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rowsAreTheSamples()
    {
        Host host;
        QCOMPARE(host.model.rowCount(), 0);

        host.Samples()->Add(QPoint(3, 4));
        host.Samples()->Add(QPoint(30, 4));

        QCOMPARE(host.model.rowCount(), 2);
        QCOMPARE(host.model.rowCount(host.model.index(0)), 0);
        QCOMPARE(host.Text(0), QString("X: 3  Y: 4"));
        QCOMPARE(host.Text(0, KXColorSampleDelegate::DetailRole), QString("R: 200  G: 0  B: 0  100%"));
        QCOMPARE(host.model.index(0).data(Qt::DecorationRole).value<QColor>(), QColor(200, 0, 0));
        QCOMPARE(host.Text(1, KXColorSampleDelegate::DetailRole), QString("R: 0  G: 0  B: 100  100%"));
        QCOMPARE(host.Text(1, Qt::AccessibleTextRole),
                 QString("Sample 2, X: 30  Y: 4, R: 0  G: 0  B: 100  100%"));
        QVERIFY(!host.model.index(0).data(Qt::ToolTipRole).isValid());
    }

    void movedSampleIsReadAgain()
    {
        Host host;
        host.Samples()->Add(QPoint(3, 4));
        host.log.Clear();

        host.Samples()->Move(0, QPoint(25, 4));

        QCOMPARE(host.model.GetColor(0), QColor(0, 0, 100));
        QCOMPARE(host.log.Count("dataChanged"), 1);
        QCOMPARE(host.log.Count("modelReset"), 0);
    }

    void sideIsThatOfTheSquare()
    {
        Host host;
        host.Samples()->Add(QPoint(20, 4));
        QCOMPARE(host.model.GetColor(0), QColor(0, 0, 100));
        host.log.Clear();

        host.model.SetSide(3);
        host.model.SetSide(3);

        QCOMPARE(host.model.GetColor(0), QColor(67, 0, 67));
        QCOMPARE(host.log.Count("dataChanged"), 1);
    }

    void changesOfThePictureAreFollowedOnce()
    {
        Host host;
        host.Samples()->Add(QPoint(3, 4));
        host.log.Clear();

        for (int i = 0; i < 5; ++i)
            host.Paint(QRect(0, 0, 10, 10), QColor(0, 10 * i, 0));
        QCOMPARE(host.log.Count(), 0);
        QTRY_COMPARE(host.model.GetColor(0), QColor(0, 40, 0));

        QCOMPARE(host.log.Count("dataChanged"), 1);
    }

    void hiddenLayerIsFollowedToo()
    {
        Host host;
        host.Samples()->Add(QPoint(3, 4));

        host.document->GetPixels()->SetLayerVisible(0, false);

        QTRY_COMPARE(host.model.GetColor(0).alpha(), 0);
    }

    void sampleOutsideHasNoColorUntilTheSizeIsBack()
    {
        Host host;
        host.Samples()->Add(QPoint(35, 25));
        const QImage before = host.document->GetPixels()->GetLayer(0).image;

        QVERIFY(host.document->GetPixels()->ReplaceImages({before.copy(0, 0, 10, 10)}, QImage()));
        QTRY_VERIFY(!host.model.GetColor(0).isValid());
        QCOMPARE(host.Text(0, KXColorSampleDelegate::DetailRole), QString("outside of the picture"));
        QVERIFY(!host.model.index(0).data(Qt::DecorationRole).isValid());
        QVERIFY(host.document->GetPixels()->ReplaceImages({before}, QImage()));

        QTRY_COMPARE(host.model.GetColor(0), QColor(0, 0, 100));
    }

    void otherDocumentHasOtherRows()
    {
        Host host;
        host.Samples()->Add(QPoint(3, 4));
        Document other(Halves(), QString(), "Other");

        host.model.SetDocument(&other);
        QCOMPARE(host.model.rowCount(), 0);
        QCOMPARE(host.model.GetSamples(), ColorSamples::Of(&other));
        host.log.Clear();
        host.Samples()->Add(QPoint(5, 4));
        QCOMPARE(host.log.Entries(), QStringList());
        host.model.SetDocument(host.document.get());
        QCOMPARE(host.model.rowCount(), 2);
        host.model.SetDocument(nullptr);

        QCOMPARE(host.model.rowCount(), 0);
        QVERIFY(!host.model.GetSamples());
    }

    void documentMayGoFirst_data()
    {
        QTest::addColumn<bool>("isStale");
        QTest::newRow("at rest") << false;
        QTest::newRow("with a change that was not read yet") << true;
    }
    void documentMayGoFirst()
    {
        QFETCH(const bool, isStale);
        Host host;
        host.Samples()->Add(QPoint(3, 4));
        if (isStale)
            host.Paint(QRect(0, 0, 10, 10), Qt::green);
        host.log.Clear();

        host.document.reset();
        QCOMPARE(host.model.rowCount(), 0);
        QCOMPARE(host.log.Count("modelReset"), 1);
        QCoreApplication::processEvents();

        QCOMPARE(host.log.Count("dataChanged"), 0);
        QVERIFY(!host.model.GetSamples());
        host.model.SetSide(5);
    }
};

NV_TEST_MAIN(tst_ColorSampleModel)
#include "tst_ColorSampleModel.moc"
