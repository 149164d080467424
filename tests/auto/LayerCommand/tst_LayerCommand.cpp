// Steps that make, copy, delete, choose, show and hide layers: back and forth, exact, and small.

#include "LayerCommand.h"

#include "TestMain.h"
#include "ToolHost.h"

namespace
{

QStringList Names(const KXDocumentInterface* pixels)
{
    QStringList names;
    for (int i = 0; i < pixels->GetLayerCount(); ++i)
        names += pixels->GetLayer(i).name;
    return names;
}

} // namespace

class tst_LayerCommand : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_document = std::make_unique<Document>(BusyPicture(), QString(), "Picture"); }
    void cleanup() { m_document.reset(); }

    void aNewLayerIsClearAndLiesAboveAsTheCurrentOne()
    {
        push(LayerCommand::New, 0);

        QCOMPARE(Names(pixels()), QStringList({"Background", "Layer 1"}));
        QCOMPARE(pixels()->GetCurrentLayer(), 1);
        QCOMPARE(pixels()->GetLayer(1).image, PlainPicture(Qt::transparent));
        QCOMPARE(pixels()->GetComposition(), BusyPicture());
        QCOMPARE(steps()->undoText(), QString("New Layer"));
        steps()->undo();
        QCOMPARE(Names(pixels()), QStringList("Background"));
        QCOMPARE(pixels()->GetCurrentLayer(), 0);
        steps()->redo();
        QCOMPARE(Names(pixels()), QStringList({"Background", "Layer 1"}));
        QCOMPARE(pixels()->GetCurrentLayer(), 1);
    }

    void namesAreNotGivenTwice()
    {
        push(LayerCommand::New, 0);
        push(LayerCommand::New, 0);

        QCOMPARE(Names(pixels()), QStringList({"Background", "Layer 2", "Layer 1"}));
        QCOMPARE(NewLayerName(pixels()), QString("Layer 3"));
    }

    void aCopyHasAllOfItsModel()
    {
        pixels()->SetLayerOpacity(0, 40);
        pixels()->SetLayerBlendMode(0, 3);

        push(LayerCommand::Duplicate, 0);

        QCOMPARE(Names(pixels()), QStringList({"Background", "Background copy"}));
        QCOMPARE(pixels()->GetLayer(1).image, BusyPicture());
        QCOMPARE(pixels()->GetLayer(1).opacity, 40);
        QCOMPARE(pixels()->GetLayer(1).blendMode, 3);
        QCOMPARE(steps()->undoText(), QString("Duplicate Layer"));
        steps()->undo();
        QCOMPARE(pixels()->GetLayerCount(), 1);
        steps()->redo();
        QCOMPARE(pixels()->GetLayer(1).image, BusyPicture());
    }

    void aDeletedLayerComesBackAsItWas()
    {
        push(LayerCommand::New, 0);
        pixels()->EditLayer(1) = PlainPicture(Qt::red);
        pixels()->SetLayerOpacity(1, 70);
        pixels()->SetLayerVisible(1, false);

        push(LayerCommand::Delete, 1);

        QCOMPARE(Names(pixels()), QStringList("Background"));
        QCOMPARE(steps()->undoText(), QString("Delete Layer"));
        steps()->undo();
        QCOMPARE(Names(pixels()), QStringList({"Background", "Layer 1"}));
        QCOMPARE(pixels()->GetLayer(1).image, PlainPicture(Qt::red));
        QCOMPARE(pixels()->GetLayer(1).opacity, 70);
        QVERIFY(!pixels()->GetLayer(1).visible);
        QCOMPARE(pixels()->GetCurrentLayer(), 1);
    }

    void theLowestLayerCanGoAndComeBack()
    {
        push(LayerCommand::New, 0);
        pixels()->SetCurrentLayer(0);

        push(LayerCommand::Delete, 0);
        QCOMPARE(Names(pixels()), QStringList("Layer 1"));

        steps()->undo();
        QCOMPARE(Names(pixels()), QStringList({"Background", "Layer 1"}));
        QCOMPARE(pixels()->GetLayer(0).image, BusyPicture());
        QCOMPARE(pixels()->GetCurrentLayer(), 0);
    }

    void theLastLayerStaysAndIsNoStep()
    {
        push(LayerCommand::Delete, 0);

        QCOMPARE(pixels()->GetLayerCount(), 1);
        QCOMPARE(steps()->count(), 0);
    }

    void onlyADeletedLayerIsHeldInMemory()
    {
        push(LayerCommand::New, 0);
        push(LayerCommand::Duplicate, 0);
        QCOMPARE(m_document->GetUndoBytes(), qint64(0));

        push(LayerCommand::Delete, 1);
        QCOMPARE(m_document->GetUndoBytes(), qint64(300 * 200 * 4));
        steps()->undo();
        QCOMPARE(m_document->GetUndoBytes(), qint64(0));
    }

    void aDeletedLayerMayLieInAFile()
    {
        push(LayerCommand::New, 0);
        LayerCommand step(LayerCommand::Delete, pixels(), 0);
        step.redo();

        step.MoveToDisk();
        QCOMPARE(step.GetMemoryBytes(), qint64(0));
        step.undo();

        QVERIFY(!step.isObsolete());
        QCOMPARE(pixels()->GetLayer(0).image, BusyPicture());
    }

    void hidingAndShowingGoBackAndForth()
    {
        push(LayerCommand::Hide, 0);
        QCOMPARE(steps()->undoText(), QString("Hide Layer"));
        QVERIFY(!pixels()->GetLayer(0).visible);
        push(LayerCommand::Show, 0);
        QCOMPARE(steps()->undoText(), QString("Show Layer"));
        QVERIFY(pixels()->GetLayer(0).visible);

        steps()->undo();
        QVERIFY(!pixels()->GetLayer(0).visible);
        steps()->undo();
        QVERIFY(pixels()->GetLayer(0).visible);
    }

private:
    void push(LayerCommand::Kind kind, int layer) { steps()->push(new LayerCommand(kind, pixels(), layer)); }
    KXDocumentInterface* pixels() const { return m_document->GetPixels(); }
    QUndoStack* steps() const { return m_document->GetUndoStack(); }

    std::unique_ptr<Document> m_document;
};

NV_TEST_MAIN(tst_LayerCommand)
#include "tst_LayerCommand.moc"
