// The document: what it is called, when it counts as changed, and that its undo steps stay within their
// memory.

#include "Document.h"

#include <QDir>
#include <QUndoStack>

#include "KXDocumentInterface.h"
#include "SignalLog.h"
#include "TestMain.h"
#include "TilesCommand.h"

namespace
{

QImage Filled(const QSize& size, const QColor& color)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    return image;
}

// Fills the layer as one step.
void Change(Document& document, const QColor& color)
{
    KXDocumentInterface* pixels = document.GetPixels();
    QVector<SavedTile> tiles = {{pixels->GetRect(), pixels->GetLayer(0).image.copy()}};
    pixels->EditLayer(0).fill(color);
    pixels->NotifyChanged(pixels->GetRect());
    document.GetUndoStack()->push(new TilesCommand(color.name(), pixels, 0, std::move(tiles)));
}

} // namespace

class tst_Document : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNewOneIsCalledByItsName()
    {
        const Document document(Filled(QSize(4, 4), Qt::red), QString(), "Unnamed");

        QCOMPARE(document.GetTitle(), QString("Unnamed"));
        QCOMPARE(document.GetPath(), QString());
        QVERIFY(!document.IsModified());
    }

    void oneWithAFileIsCalledByIt()
    {
        const Document document(Filled(QSize(4, 4), Qt::red), "a/b/../c.png", "Unnamed");

        QCOMPARE(document.GetTitle(), QString("c.png"));
        QCOMPARE(document.GetPath(), QDir::current().absoluteFilePath("a/c.png"));
    }

    void aStepMakesItModifiedUntilItIsSaved()
    {
        Document document(Filled(QSize(4, 4), Qt::red), QString(), "Unnamed");
        SignalLog log(&document);

        Change(document, Qt::blue);
        QVERIFY(document.IsModified());
        QCOMPARE(log.Count("StateChanged"), 1);
        document.MarkSaved("/a/b.png");

        QVERIFY(!document.IsModified());
        QCOMPARE(document.GetTitle(), QString("b.png"));
        QCOMPARE(log.Count("StateChanged"), 2);
    }

    void savingAnUnchangedOneElsewhereTells()
    {
        Document document(Filled(QSize(4, 4), Qt::red), "/a/b.png", QString());
        SignalLog log(&document);

        document.MarkSaved("/a/b.png");
        document.MarkSaved("/a/c.png");

        QCOMPARE(log.Count("StateChanged"), 1);
        QCOMPARE(document.GetPath(), QString("/a/c.png"));
    }

    void undoingTheSavedStateIsAChange()
    {
        Document document(Filled(QSize(4, 4), Qt::red), QString(), "Unnamed");
        Change(document, Qt::blue);
        document.MarkSaved("/a/b.png");

        document.GetUndoStack()->undo();

        QVERIFY(document.IsModified());
        document.GetUndoStack()->redo();
        QVERIFY(!document.IsModified());
    }

    void stepsBeyondTheMemoryLieInFilesAndStillUndo()
    {
        const QSize size(4000, 3000);
        Document document(Filled(size, Qt::white), QString(), "Unnamed");
        const QList<QColor> colors = {Qt::red,      Qt::green,    Qt::blue, Qt::black,   Qt::cyan,
                                      Qt::magenta,  Qt::yellow,   Qt::gray, Qt::darkRed, Qt::darkGreen,
                                      Qt::darkBlue, Qt::darkCyan, Qt::white};

        for (const QColor& color : colors)
            Change(document, color);

        QVERIFY(qint64(colors.size()) * size.width() * size.height() * 4 > Document::UndoMemory);
        QVERIFY(document.GetUndoBytes() <= Document::UndoMemory);
        for (int i = colors.size() - 2; i >= 0; --i)
        {
            document.GetUndoStack()->undo();
            QCOMPARE(document.GetPixels()->GetComposition().pixelColor(5, 5), colors.at(i));
            QVERIFY(document.GetUndoBytes() <= Document::UndoMemory);
        }
        document.GetUndoStack()->undo();
        QCOMPARE(document.GetPixels()->GetComposition().pixelColor(3999, 2999), QColor(Qt::white));
        document.GetUndoStack()->setIndex(2);
        QCOMPARE(document.GetPixels()->GetComposition().pixelColor(5, 5), colors.at(1));
    }

    void onlySoManyStepsAreKept()
    {
        Document document(Filled(QSize(2, 2), Qt::red), QString(), "Unnamed");

        for (int i = 0; i < Document::UndoSteps + 20; ++i)
            Change(document, QColor(i % 256, 0, 0));

        QCOMPARE(document.GetUndoStack()->count(), Document::UndoSteps);
    }
};

NV_TEST_MAIN(tst_Document)
#include "tst_Document.moc"
