// The step that gives a document another size: back and forth, exact, in memory and in a file.

#include "ResizeCommand.h"

#include <QDir>
#include <QTemporaryFile>

#include <unistd.h>

#include "CanvasResize.h"
#include "SignalLog.h"
#include "TestMain.h"
#include "TilesCommand.h"
#include "ToolHost.h"

namespace
{

// All that the step can change.
struct State
{
    QVector<QImage> layers;
    QImage selection;
    double resolution;
    QSize size;

    bool operator==(const State& other) const
    {
        return layers == other.layers && selection == other.selection &&
            selection.isNull() == other.selection.isNull() && resolution == other.resolution &&
            size == other.size;
    }
};

// Cuts the open file in the folder short, which need not have a name.
bool CutShort(const QString& folder)
{
    const QFileInfoList open = QDir("/proc/self/fd").entryInfoList(QDir::Files | QDir::System);
    for (const QFileInfo& file : open)
    {
        if (file.symLinkTarget().startsWith(folder))
            return ftruncate(file.fileName().toInt(), 100) == 0;
    }
    return false;
}

} // namespace

class tst_ResizeCommand : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_document = std::make_unique<Document>(BusyPicture(), QString(), "Picture");
        KXDocumentInterface::Layer above;
        above.image = PlainPicture(Qt::red);
        above.opacity = 40;
        above.blendMode = 3;
        above.visible = false;
        above.name = "Above";
        QVERIFY(pixels()->InsertLayer(1, above));
        QImage mask(300, 200, QImage::Format_Grayscale8);
        mask.fill(100);
        QVERIFY(pixels()->SetSelectionMask(mask));
        pixels()->SetResolution(300);
    }
    void cleanup() { m_document.reset(); }

    void itGoesBackAndForthExactly()
    {
        const State before = state();
        push(QRect(-10, 20, 400, 90), 72.5);
        const State after = state();

        QCOMPARE(pixels()->GetSize(), QSize(400, 90));
        QCOMPARE(pixels()->GetResolution(), 72.5);
        QCOMPARE(pixels()->GetSelectionMask().size(), QSize(400, 90));
        QCOMPARE(steps()->undoText(), QString("Size"));
        for (int i = 0; i < 3; ++i)
        {
            steps()->undo();
            QVERIFY(state() == before);
            steps()->redo();
            QVERIFY(state() == after);
        }
    }

    void layersKeepWhatTheyAre()
    {
        pixels()->SetCurrentLayer(0);

        push(QRect(0, 0, 20, 30), 300);

        QCOMPARE(pixels()->GetLayerCount(), 2);
        QCOMPARE(pixels()->GetCurrentLayer(), 0);
        QCOMPARE(pixels()->GetLayer(1).name, QString("Above"));
        QCOMPARE(pixels()->GetLayer(1).opacity, 40);
        QCOMPARE(pixels()->GetLayer(1).blendMode, 3);
        QVERIFY(!pixels()->GetLayer(1).visible);
    }

    void aSelectionThatIsCutAwayComesBack()
    {
        PictureContents contents = CutContents(ContentsOf(pixels()), QRect(0, 0, 50, 50));
        contents.selection = QImage();
        const State before = state();

        steps()->push(new ResizeCommand("Size", m_document.get(), contents, 300));
        QVERIFY(pixels()->GetSelectionMask().isNull());

        steps()->undo();
        QVERIFY(state() == before);
    }

    void withoutContentsOnlyTheResolutionChanges()
    {
        const State before = state();
        SignalLog log(pixels());

        steps()->push(new ResizeCommand("Size", m_document.get(), PictureContents(), 96));

        QCOMPARE(pixels()->GetResolution(), 96.0);
        QCOMPARE(log.Entries(), QStringList("ResolutionChanged(96)"));
        QCOMPARE(m_document->GetUndoBytes(), qint64(0));
        steps()->undo();
        QVERIFY(state() == before);
    }

    void theSizeIsToldBeforeTheLook()
    {
        SignalLog log(pixels());

        push(QRect(0, 0, 30, 20), 300);

        QCOMPARE(log.Entries(),
                 QStringList({"SizeChanged(30x20)", "SelectionChanged()", "CompositionChanged(0,0 30x20)"}));
    }

    void stepsBeforeAndAfterItFitTheirSizes()
    {
        const QImage picture = pixels()->GetLayer(0).image.copy();
        paint(QRect(250, 150, 20, 20));
        const QImage painted = pixels()->GetLayer(0).image.copy();
        push(QRect(240, 140, 60, 60), 300);
        paint(QRect(0, 0, 5, 60));
        const QImage end = pixels()->GetLayer(0).image.copy();

        steps()->undo();
        steps()->undo();
        QCOMPARE(pixels()->GetLayer(0).image, painted);
        steps()->undo();
        QCOMPARE(pixels()->GetLayer(0).image, picture);
        for (int i = 0; i < 3; ++i)
            steps()->redo();
        QCOMPARE(pixels()->GetLayer(0).image, end);
    }

    void itHoldsTheOtherPixelsInMemoryOrInAFile()
    {
        const State before = state();
        ResizeCommand step("Size", m_document.get(), CutContents(ContentsOf(pixels()), QRect(0, 0, 101, 50)),
                           300);
        // The mask's lines are filled up to a multiple of four bytes.
        QCOMPARE(step.GetMemoryBytes(), qint64(101 * 50 * 4 * 2 + 104 * 50));
        step.redo();
        const State after = state();
        QCOMPARE(step.GetMemoryBytes(), qint64(300 * 200 * (4 * 2 + 1)));

        step.MoveToDisk();
        QCOMPARE(step.GetMemoryBytes(), qint64(0));
        step.undo();
        QVERIFY(state() == before);
        step.MoveToDisk();
        step.redo();

        QVERIFY(!step.isObsolete());
        QVERIFY(state() == after);
    }

    void whenItsFileIsLostAllStepsGo()
    {
        paint(QRect(0, 0, 9, 9));
        QTemporaryDir folder;
        const QByteArray before = qgetenv("TMPDIR");
        qputenv("TMPDIR", folder.path().toLocal8Bit());
        push(QRect(0, 0, 30, 20), 300);
        const_cast<UndoStep*>(dynamic_cast<const UndoStep*>(steps()->command(1)))->MoveToDisk();
        qputenv("TMPDIR", before);
        if (!CutShort(folder.path()))
            QSKIP("This system does not show which files are open.");
        m_document->MarkSaved("/nowhere/picture.png");

        steps()->undo();
        QTRY_COMPARE(steps()->count(), 0);

        QCOMPARE(pixels()->GetSize(), QSize(30, 20));
        QVERIFY(m_document->IsModified());
    }

    void contentsThatDoNotFitChangeNothing()
    {
        const State before = state();
        PictureContents contents = CutContents(ContentsOf(pixels()), QRect(0, 0, 30, 20));
        contents.layers.removeLast();

        steps()->push(new ResizeCommand("Size", m_document.get(), contents, 72));

        QCOMPARE(steps()->count(), 0);
        QVERIFY(state() == before);
    }

private:
    KXDocumentInterface* pixels() const { return m_document->GetPixels(); }
    QUndoStack* steps() const { return m_document->GetUndoStack(); }
    State state() const
    {
        State state = {{}, pixels()->GetSelectionMask(), pixels()->GetResolution(), pixels()->GetSize()};
        for (int i = 0; i < pixels()->GetLayerCount(); ++i)
            state.layers += pixels()->GetLayer(i).image;
        return state;
    }
    void push(const QRect& frame, double resolution)
    {
        steps()->push(new ResizeCommand("Size", m_document.get(), CutContents(ContentsOf(pixels()), frame),
                                        resolution));
    }
    // Fills a part of the lowest layer, as a step.
    void paint(const QRect& area)
    {
        QVector<SavedTile> tiles = {{area, pixels()->GetLayer(0).image.copy(area)}};
        for (int y = area.top(); y <= area.bottom(); ++y)
        {
            for (int x = area.left(); x <= area.right(); ++x)
                pixels()->EditLayer(0).setPixel(x, y, qRgb(1, 2, 3));
        }
        pixels()->NotifyChanged(area);
        steps()->push(new TilesCommand("Paint", pixels(), 0, std::move(tiles)));
    }

    std::unique_ptr<Document> m_document;
};

NV_TEST_MAIN(tst_ResizeCommand)

#include "tst_ResizeCommand.moc"
