// The step that hides what lies outside of a frame: back and forth, exact, and nothing is lost by it.

#include "HideAreaCommand.h"

#include "CropContents.h"
#include "ResizeCommand.h"
#include "TestMain.h"
#include "ToolHost.h"

namespace
{

const QPointF Middle(0.5, 0.5);

// The layers with all their properties, and what else a step can change.
QStringList StateOf(const KXDocumentInterface* pixels)
{
    QStringList state;
    for (int i = 0; i < pixels->GetLayerCount(); ++i)
    {
        const KXDocumentInterface::Layer& layer = pixels->GetLayer(i);
        state << QString("%1 %2 %3 %4")
                     .arg(layer.name)
                     .arg(layer.visible)
                     .arg(layer.opacity)
                     .arg(layer.blendMode);
    }
    return state << QString("current %1").arg(pixels->GetCurrentLayer());
}

} // namespace

class tst_HideAreaCommand : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_document = std::make_unique<Document>(BusyPicture(), QString(), "Picture");
        KXDocumentInterface::Layer above;
        above.name = "Above";
        above.image = PlainPicture(QColor(200, 30, 60, 100));
        above.opacity = 40;
        above.blendMode = 3;
        pixels()->InsertLayer(1, above);
        pixels()->SetLayerVisible(0, true);
        m_frame = Turned(CropFrameOf(QRect(60, 40, 120, 90)), 15, Middle);
    }

    void eachLayerGetsAHiddenCopyBelowIt()
    {
        const PictureContents before = ContentsOf(pixels());
        const QString name = pixels()->GetLayer(0).name;

        push();

        QCOMPARE(StateOf(pixels()),
                 QStringList({name + " before the crop 0 100 0", name + " 1 100 0",
                              "Above before the crop 0 40 3", "Above 1 40 3", "current 3"}));
        QCOMPARE(pixels()->GetLayer(0).image, before.layers[0]);
        QCOMPARE(pixels()->GetLayer(1).image, WithoutOutside(before.layers[0], m_frame));
        QCOMPARE(pixels()->GetLayer(2).image, before.layers[1]);
        QCOMPARE(pixels()->GetLayer(3).image, WithoutOutside(before.layers[1], m_frame));
        QCOMPARE(pixels()->GetSize(), QSize(300, 200));
        QCOMPARE(qAlpha(pixels()->GetComposition().pixel(5, 5)), 0);
    }

    void stepsBackAndForthAreExact()
    {
        pixels()->SetCurrentLayer(0);
        const QStringList state = StateOf(pixels());
        const PictureContents before = ContentsOf(pixels());
        const QImage look = pixels()->GetComposition().copy();
        push();
        const QStringList hidden = StateOf(pixels());
        const PictureContents after = ContentsOf(pixels());
        const QImage hiddenLook = pixels()->GetComposition().copy();

        for (int i = 0; i < 2; ++i)
        {
            m_document->GetUndoStack()->undo();
            QCOMPARE(StateOf(pixels()), state);
            QCOMPARE(ContentsOf(pixels()).layers, before.layers);
            QCOMPARE(pixels()->GetComposition(), look);
            m_document->GetUndoStack()->redo();
            QCOMPARE(StateOf(pixels()), hidden);
            QCOMPARE(ContentsOf(pixels()).layers, after.layers);
            QCOMPARE(pixels()->GetComposition(), hiddenLook);
        }
    }

    void theCopiesCostTheStepNothing()
    {
        auto* step = new HideAreaCommand("Crop", pixels(), m_frame, within());
        m_document->GetUndoStack()->push(step);

        QCOMPARE(step->GetMemoryBytes(), qint64(0));
        QCOMPARE(step->GetBytes(), qint64(0));
        step->MoveToDisk();
        m_document->GetUndoStack()->undo();
        QCOMPARE(pixels()->GetLayerCount(), 2);
    }

    void layersThatDoNotFitAreRefused()
    {
        const QStringList state = StateOf(pixels());
        const QVector<QImage> small(2, PlainPicture(Qt::red, QSize(10, 10)));

        QVERIFY(!HideArea(pixels(), {}));
        QVERIFY(!HideArea(pixels(), small));
        m_document->GetUndoStack()->push(new HideAreaCommand("Crop", pixels(), m_frame, small));

        QCOMPARE(m_document->GetUndoStack()->count(), 0);
        QCOMPARE(StateOf(pixels()), state);
    }

private:
    KXDocumentInterface* pixels() const { return m_document->GetPixels(); }
    QVector<QImage> within() const { return ContentsWithin(ContentsOf(pixels()), m_frame).layers; }
    void push()
    {
        m_document->GetUndoStack()->push(new HideAreaCommand("Crop", pixels(), m_frame, within()));
    }

    std::unique_ptr<Document> m_document;
    CropFrame m_frame;
};

NV_TEST_MAIN(tst_HideAreaCommand)
#include "tst_HideAreaCommand.moc"
