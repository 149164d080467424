// What a canvas shows of layers while one of them is being changed: the same as the canvas itself, once the
// change is made.

#include "LayerPreview.h"

#include <QtTest>

#include "KXDocumentInterface.h"
#include "KXDocumentModel.h"
#include "NVDocumentView.h"
#include "TestMain.h"

namespace
{

QImage Layer(const QSize& size, int seed, bool translucent)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < size.height(); ++y)
    {
        for (int x = 0; x < size.width(); ++x)
        {
            const int alpha = translucent ? (x + 2 * y) % 256 : 255;
            image.setPixel(x, y,
                           qPremultiply(qRgba((x * seed) % 256, (y * 3) % 256, (x + y + seed) % 256, alpha)));
        }
    }
    return image;
}

void Redden(QImage& picture, const QTransform& toLayer)
{
    for (int y = 0; y < picture.height(); ++y)
    {
        for (int x = 0; x < picture.width(); ++x)
        {
            if (toLayer.map(QPointF(x + 0.5, y + 0.5)).x() < 100)
                picture.setPixel(x, y, qRgb(200, 20, 30));
        }
    }
}

} // namespace

class tst_LayerPreview : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itShowsWhatTheCanvasShows_data()
    {
        QTest::addColumn<double>("scale");
        QTest::addColumn<bool>("isAlone");
        for (double scale : {0.1, 0.25, 0.4, 0.5, 0.77, 1.0, 1.6, 2.0, 3.3, 9.0})
        {
            QTest::addRow("%g, a layer alone", scale) << scale << true;
            QTest::addRow("%g, three layers", scale) << scale << false;
        }
    }
    void itShowsWhatTheCanvasShows()
    {
        QFETCH(double, scale);
        QFETCH(bool, isAlone);
        const QSize size(401, 299);
        KXDocumentInterface document(Layer(size, 2, isAlone));
        if (!isAlone)
        {
            document.InsertLayer(1, {"Middle", Layer(size, 3, true), true, 70, 3});
            document.InsertLayer(2, {"Top", Layer(size, 5, true), true, 40, 0});
        }
        const int changing = isAlone ? 0 : 1;
        LayerPreview preview;
        preview.SetLayers(LayersOf(document), changing);
        KXDocumentModel model(&document);
        NVDocumentView view(&model);
        view.resize(330, 260);
        view.show();
        view.Scale(scale / view.GetScale(), QPointF(70, 60));

        QPoint corner;
        const QImage shown = preview.Render(PlaceOf(view), Redden, &corner);
        Redden(document.EditLayer(changing), QTransform());
        document.NotifyChanged(document.GetRect());
        const QImage canvas = view.viewport()->grab().toImage();

        QCOMPARE(shown.format(), QImage::Format_RGB32);
        int far = 0;
        for (int y = 0; y < shown.height(); ++y)
        {
            for (int x = 0; x < shown.width(); ++x)
            {
                const QRgb one = shown.pixel(x, y);
                const QRgb other = canvas.pixel(x + corner.x(), y + corner.y());
                const int off =
                    qMax(qAbs(qRed(one) - qRed(other)),
                         qMax(qAbs(qGreen(one) - qGreen(other)), qAbs(qBlue(one) - qBlue(other))));
                far += off > 2;
            }
        }
        // Scaled down, what is sampled before it is composed differs along edges: of the change, and of the
        // pattern of the layers.
        const double allowed = scale >= 1 ? 0 : isAlone ? 0.06 : 0.3;
        QVERIFY2(far <= allowed * shown.width() * shown.height(),
                 qPrintable(QString("%1 of %2").arg(far).arg(shown.width() * shown.height())));
    }

    // Its blend mode and opacity count as ever.
    void aLayerThatIsMadeAnewBeginsClear_data()
    {
        QTest::addColumn<double>("scale");
        for (double scale : {0.3, 1.0, 2.5})
            QTest::addRow("%g", scale) << scale;
    }
    void aLayerThatIsMadeAnewBeginsClear()
    {
        QFETCH(const double, scale);
        const QSize size(120, 90);
        QImage clear(size, QImage::Format_ARGB32_Premultiplied);
        clear.fill(Qt::transparent);
        const PreviewLayer below{Layer(size, 3, true), 0, 1.0};
        const PreviewPlace place = Place(scale, QPointF(10, 20));
        LayerPreview expected;
        expected.SetLayers({below, {clear, 3, 0.7}}, 1);
        LayerPreview preview;
        preview.SetLayers({below, {Layer(size, 2, false), 3, 0.7}}, 1, true);
        QPoint corner;

        for (int i = 0; i < 2; ++i)
            QCOMPARE(preview.Render(place, Redden, &corner), expected.Render(place, Redden, &corner));

        preview.SetLayers({below, {Layer(size, 2, false), 3, 0.7}}, 1);
        QVERIFY(preview.Render(place, Redden, &corner) != expected.Render(place, Redden, &corner));
    }

    void itCoversTheDocumentAndNotMore()
    {
        LayerPreview preview;
        preview.SetLayers({{Layer(QSize(40, 30), 2, false), 0, 1.0}}, 0);
        QPoint corner;

        const QImage shown = preview.Render(Place(2.0, QPointF(10, 20)), Redden, &corner);

        QCOMPARE(corner, QPoint(10, 20));
        QCOMPARE(shown.size(), QSize(80, 60));
        QCOMPARE(shown.pixel(0, 0), qRgb(200, 20, 30));
    }

    void outOfSightThereIsNoPicture()
    {
        LayerPreview preview;
        QPoint corner;
        QVERIFY(preview.Render(Place(1.0, QPointF()), Redden, &corner).isNull());
        preview.SetLayers({{Layer(QSize(40, 30), 2, false), 0, 1.0}}, 0);
        QVERIFY(preview.Render(Place(1.0, QPointF(5000, 0)), Redden, &corner).isNull());
        QVERIFY(preview.Render(Place(1.0, QPointF(-1e12, 0)), Redden, &corner).isNull());
        QVERIFY(!preview.Render(Place(1.0, QPointF()), Redden, &corner).isNull());
        preview.Clear();
        QVERIFY(preview.Render(Place(1.0, QPointF()), Redden, &corner).isNull());
    }

    void theLayersThemselvesStayAsTheyAre()
    {
        const QImage layer = Layer(QSize(40, 30), 2, false);
        const QImage copy = layer.copy();
        LayerPreview preview;
        preview.SetLayers({{layer, 0, 1.0}, {layer, 1, 0.5}}, 0);
        QPoint corner;

        preview.Render(Place(1.0, QPointF()), Redden, &corner);
        preview.Render(Place(0.3, QPointF()), Redden, &corner);

        QCOMPARE(layer, copy);
    }

    void eachPictureBeginsWithTheLayer()
    {
        LayerPreview preview;
        preview.SetLayers({{Layer(QSize(40, 30), 2, false), 0, 1.0}}, 0);
        QPoint corner;
        const auto nothing = [](QImage&, const QTransform&) {};
        const QImage before = preview.Render(Place(1.0, QPointF()), nothing, &corner);

        preview.Render(Place(1.0, QPointF()), Redden, &corner);

        QCOMPARE(preview.Render(Place(1.0, QPointF()), nothing, &corner), before);
    }

    void smallLayersBearAnyScale()
    {
        LayerPreview preview;
        preview.SetLayers({{Layer(QSize(1, 3000), 2, false), 0, 1.0}}, 0);
        QPoint corner;
        for (double scale : {1.0 / 64, 0.1, 1.0, 64.0})
            QVERIFY(scale < 0.5 || !preview.Render(Place(scale, QPointF(5, 5)), Redden, &corner).isNull());
    }

private:
    static PreviewPlace Place(double scale, const QPointF& origin)
    {
        PreviewPlace place;
        place.scale = scale;
        place.origin = origin;
        place.area = QRect(0, 0, 300, 200);
        return place;
    }
    static PreviewPlace PlaceOf(const NVDocumentView& view)
    {
        PreviewPlace place;
        place.scale = view.GetScale();
        place.origin = view.MapFromDocument(QPointF());
        place.area = view.viewport()->rect();
        return place;
    }
    static QVector<PreviewLayer> LayersOf(const KXDocumentInterface& document)
    {
        QVector<PreviewLayer> layers;
        for (int i = 0; i < document.GetLayerCount(); ++i)
        {
            const KXDocumentInterface::Layer& layer = document.GetLayer(i);
            layers.append({layer.image.copy(), layer.blendMode, layer.opacity / 100.0});
        }
        return layers;
    }
};

NV_TEST_MAIN(tst_LayerPreview)
#include "tst_LayerPreview.moc"
