// What is read beside the current layer, and when nothing needs to be held for it.

#include "LayerSample.h"

#include <limits>

#include "TestMain.h"
#include "ToolHost.h"

class tst_LayerSample : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aSinglePlainLayerDoesItself()
    {
        const KXDocumentInterface document(PlainPicture());

        QVERIFY(SampledLayers(&document, true).isNull());
    }

    void thisLayerAloneDoesItself()
    {
        KXDocumentInterface document(PlainPicture());
        addLayer(document);

        QVERIFY(SampledLayers(&document, false).isNull());
    }

    void severalLayersAreReadTogether()
    {
        KXDocumentInterface document(PlainPicture(Qt::red));
        addLayer(document);

        QCOMPARE(SampledLayers(&document, true), PlainPicture(Qt::red));
    }

    void layersThatAreNotSeenDoNotCount()
    {
        KXDocumentInterface document(PlainPicture(Qt::red));
        addLayer(document);
        document.SetLayerVisible(0, false);
        QVERIFY(SampledLayers(&document, true).isNull());

        document.SetLayerVisible(0, true);
        document.SetLayerOpacity(0, 0);
        QVERIFY(SampledLayers(&document, true).isNull());
    }

    void aLayerThatIsShownDifferentlyIsNotItself()
    {
        KXDocumentInterface document(PlainPicture(Qt::red));
        document.SetLayerOpacity(0, 50);
        QVERIFY(qAbs(SampledLayers(&document, true).pixelColor(5, 5).alpha() - 128) <= 1);

        document.SetLayerOpacity(0, 100);
        document.SetLayerBlendMode(0, 1);
        QVERIFY(!SampledLayers(&document, true).isNull());
    }

    void pixelsAreCountedFromTheirCorner()
    {
        QCOMPARE(PixelAt(QPointF(3.99, 4.0)), QPoint(3, 4));
        QCOMPARE(PixelAt(QPointF(-0.01, -1.0)), QPoint(-1, -1));
    }

    void whatIsNoPlaceLiesFarOutside()
    {
        const double nan = std::numeric_limits<double>::quiet_NaN();
        const double inf = std::numeric_limits<double>::infinity();

        QVERIFY(PixelAt(QPointF(nan, -inf)).x() < -1000000);
        QVERIFY(PixelAt(QPointF(1e300, 0)).x() > 1000000);
    }

private:
    static void addLayer(KXDocumentInterface& document)
    {
        KXDocumentInterface::Layer layer;
        layer.image = PlainPicture(Qt::transparent);
        QVERIFY(document.InsertLayer(1, layer));
    }
};

NV_TEST_MAIN(tst_LayerSample)
#include "tst_LayerSample.moc"
