// The step that makes one layer of all: what is left, back and forth, in memory and in a file.

#include "FlattenCommand.h"

#include "TestMain.h"
#include "ToolHost.h"

namespace
{

// All of the layers but their pixels.
QStringList StateOf(const KXDocumentInterface* pixels)
{
    QStringList state;
    for (int i = 0; i < pixels->GetLayerCount(); ++i)
    {
        const KXDocumentInterface::Layer& layer = pixels->GetLayer(i);
        state += QString("%1 %2 %3 %4 %5")
                     .arg(layer.name)
                     .arg(layer.visible)
                     .arg(layer.opacity)
                     .arg(layer.blendMode)
                     .arg(layer.source.toString());
    }
    return state << QString("current %1").arg(pixels->GetCurrentLayer());
}

QVector<QImage> ImagesOf(const KXDocumentInterface* pixels)
{
    QVector<QImage> images;
    for (int i = 0; i < pixels->GetLayerCount(); ++i)
        images += pixels->GetLayer(i).image.copy();
    return images;
}

} // namespace

class tst_FlattenCommand : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // A lower layer, one over it in part, and a hidden one.
    void init()
    {
        m_document = std::make_unique<Document>(BusyPicture(), QString(), "Picture");
        KXDocumentInterface::Layer layer;
        layer.name = "Above";
        layer.image = PlainPicture(QColor(200, 30, 60, 100));
        layer.opacity = 40;
        layer.blendMode = 3;
        layer.source = "made from it";
        QVERIFY(pixels()->InsertLayer(1, layer));
        layer.name = "Hidden";
        layer.image = PlainPicture(Qt::green);
        layer.visible = false;
        QVERIFY(pixels()->InsertLayer(2, layer));
        pixels()->SetCurrentLayer(1);
    }

    void cleanup() { m_document.reset(); }

    void oneLayerIsLeftThatLooksLikeAll()
    {
        const QImage look = pixels()->GetComposition().copy();

        steps()->push(new FlattenCommand(pixels()));

        QCOMPARE(steps()->undoText(), QString("Flatten Image"));
        QCOMPARE(StateOf(pixels()), QStringList({"Background 1 100 0 ", "current 0"}));
        QCOMPARE(pixels()->GetLayer(0).image, look);
        QCOMPARE(pixels()->GetComposition(), look);
        QVERIFY(!pixels()->IsBeingEdited());
    }

    void stepsBackAndForthAreExact()
    {
        const QStringList state = StateOf(pixels());
        const QVector<QImage> images = ImagesOf(pixels());
        const QImage look = pixels()->GetComposition().copy();
        steps()->push(new FlattenCommand(pixels()));

        for (int i = 0; i < 2; ++i)
        {
            steps()->undo();
            QCOMPARE(StateOf(pixels()), state);
            QCOMPARE(ImagesOf(pixels()), images);
            QCOMPARE(pixels()->GetComposition(), look);
            steps()->redo();
            QCOMPARE(pixels()->GetLayerCount(), 1);
            QCOMPARE(pixels()->GetLayer(0).image, look);
            QCOMPARE(pixels()->GetComposition(), look);
        }
        steps()->undo();
        QCOMPARE(pixels()->GetCurrentLayer(), 1);
    }

    void theFlatLayerIsItsOwn()
    {
        steps()->push(new FlattenCommand(pixels()));
        pixels()->EditLayer(0).fill(Qt::black);
        pixels()->NotifyChanged(pixels()->GetRect());

        QCOMPARE(pixels()->GetComposition().pixelColor(5, 5), QColor(Qt::black));
    }

    void transparencyStays()
    {
        Document clear(PlainPicture(Qt::transparent), QString(), "Clear");
        KXDocumentInterface::Layer layer;
        layer.image = PlainPicture(QColor(0, 0, 255, 128));
        QVERIFY(clear.GetPixels()->InsertLayer(1, layer));
        const QImage look = clear.GetPixels()->GetComposition().copy();

        clear.GetUndoStack()->push(new FlattenCommand(clear.GetPixels()));

        QCOMPARE(clear.GetPixels()->GetLayer(0).image, look);
    }

    void pixelsLieInAFileUntilTheyAreNeeded()
    {
        const QVector<QImage> images = ImagesOf(pixels());
        auto* step = new FlattenCommand(pixels());
        QCOMPARE(step->GetMemoryBytes(), qint64(0));
        steps()->push(step);
        QCOMPARE(step->GetMemoryBytes(), qint64(3 * 300 * 200 * 4));

        step->MoveToDisk();

        QCOMPARE(step->GetMemoryBytes(), qint64(0));
        QVERIFY(step->GetBytes() > 0);
        steps()->undo();
        QCOMPARE(ImagesOf(pixels()), images);
        QCOMPARE(step->GetBytes(), qint64(0));
    }

    void whatHasMoreToShowThanOnePlainLayerCanBeFlattened()
    {
        QVERIFY(CanFlatten(pixels()));
        Document one(BusyPicture(), QString(), "One");
        KXDocumentInterface* single = one.GetPixels();
        QVERIFY(!CanFlatten(single));
        single->SetLayerOpacity(0, 50);
        QVERIFY(CanFlatten(single));
        single->SetLayerVisible(0, false);
        QVERIFY(!CanFlatten(single));
        single->SetLayerVisible(0, true);
        single->SetLayerOpacity(0, 100);
        single->SetLayerBlendMode(0, 1);
        QVERIFY(CanFlatten(single));
        single->SetLayerBlendMode(0, 0);
        QVERIFY(!CanFlatten(single));
        single->SetLayerSource(0, "a text");
        QVERIFY(CanFlatten(single));
    }

    void whereNothingIsShownThereIsNothingToFlatten()
    {
        pixels()->SetLayerVisible(0, false);
        QVERIFY(CanFlatten(pixels()));
        pixels()->SetLayerVisible(1, false);
        QVERIFY(!CanFlatten(pixels()));
    }

private:
    KXDocumentInterface* pixels() const { return m_document->GetPixels(); }
    QUndoStack* steps() const { return m_document->GetUndoStack(); }

    std::unique_ptr<Document> m_document;
};

NV_TEST_MAIN(tst_FlattenCommand)
#include "tst_FlattenCommand.moc"
