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

    void stepsBeyondTheMegabytesAreDropped()
    {
        // Each step holds a third of a megabyte.
        Document document(Filled(QSize(300, 300), Qt::white), QString(), "Unnamed");
        document.SetUndoMegabytes(1);
        SignalLog log(&document);

        for (const QColor color : {Qt::red, Qt::green, Qt::blue, Qt::black, Qt::yellow})
            Change(document, color);

        QCOMPARE(document.GetUndoStack()->count(), 2);
        QCOMPARE(document.GetUndoStack()->index(), 2);
        QCOMPARE(document.GetHistoryBytes(), qint64(2 * 300 * 300 * 4));
        QCOMPARE(log.Count("StepsDropped"), 3);
        document.GetUndoStack()->setIndex(0);
        QCOMPARE(document.GetPixels()->GetComposition().pixelColor(5, 5), QColor(Qt::blue));
        document.GetUndoStack()->setIndex(2);
        QCOMPARE(document.GetPixels()->GetComposition().pixelColor(5, 5), QColor(Qt::yellow));
    }

    void stepsInFilesCountToo()
    {
        Document document(Filled(QSize(300, 300), Qt::white), QString(), "Unnamed");
        for (const QColor color : {Qt::red, Qt::green, Qt::blue})
            Change(document, color);
        const_cast<UndoStep*>(static_cast<const UndoStep*>(document.GetUndoStack()->command(0)))
            ->MoveToDisk();
        QCOMPARE(document.GetUndoBytes(), qint64(2 * 300 * 300 * 4));
        QCOMPARE(document.GetHistoryBytes(), qint64(3 * 300 * 300 * 4));

        document.SetUndoMegabytes(1);

        QCOMPARE(document.GetUndoStack()->count(), 2);
    }

    void aLowerLimitDropsAtOnce()
    {
        Document document(Filled(QSize(300, 300), Qt::white), QString(), "Unnamed");
        QCOMPARE(document.GetUndoMegabytes(), Document::UndoMegabytes);
        for (const QColor color : {Qt::red, Qt::green, Qt::blue, Qt::black, Qt::yellow})
            Change(document, color);
        SignalLog log(&document);
        SignalLog stack(document.GetUndoStack());

        document.SetUndoMegabytes(1);
        document.SetUndoMegabytes(1);

        QCOMPARE(log.Entries(), QStringList("StepsDropped(3)"));
        QCOMPARE(stack.Entries(), QStringList("indexChanged(2)"));
        QCOMPARE(document.GetUndoStack()->undoText(), QColor(Qt::yellow).name());
    }

    void theNewestStepThatCanBeUndoneStays()
    {
        Document document(Filled(QSize(300, 300), Qt::white), QString(), "Unnamed");
        for (const QColor color : {Qt::red, Qt::green, Qt::blue, Qt::black, Qt::yellow})
            Change(document, color);
        document.GetUndoStack()->setIndex(3);

        document.SetUndoMegabytes(0);

        QCOMPARE(document.GetUndoStack()->index(), 1);
        QCOMPARE(document.GetUndoStack()->count(), 3);
        QCOMPARE(document.GetUndoStack()->undoText(), QColor(Qt::blue).name());
        document.GetUndoStack()->setIndex(0);
        QCOMPARE(document.GetPixels()->GetComposition().pixelColor(5, 5), QColor(Qt::green));
        // On the way up the older ones can be dropped.
        document.GetUndoStack()->setIndex(3);
        QCOMPARE(document.GetUndoStack()->count(), 1);
        QCOMPARE(document.GetPixels()->GetComposition().pixelColor(5, 5), QColor(Qt::yellow));
        document.GetUndoStack()->undo();
        QCOMPARE(document.GetPixels()->GetComposition().pixelColor(5, 5), QColor(Qt::black));
    }

    void stepsThatAreUndoneAreNotDropped()
    {
        Document document(Filled(QSize(300, 300), Qt::white), QString(), "Unnamed");
        for (const QColor color : {Qt::red, Qt::green, Qt::blue})
            Change(document, color);
        document.GetUndoStack()->setIndex(0);

        document.SetUndoMegabytes(0);

        QCOMPARE(document.GetUndoStack()->count(), 3);
    }

    void droppingTouchesNoPixel()
    {
        Document document(Filled(QSize(300, 300), Qt::white), QString(), "Unnamed");
        for (const QColor color : {Qt::red, Qt::green, Qt::blue})
            Change(document, color);
        SignalLog log(document.GetPixels());

        document.SetUndoMegabytes(0);

        QCOMPARE(log.Entries(), QStringList());
    }

    void theSavedStateIsFoundAgainAfterDropping_data()
    {
        QTest::addColumn<int>("saved");
        QTest::addColumn<int>("clean");
        // Three of five steps go.
        QTest::newRow("the first state") << 0 << -1;
        QTest::newRow("among those that go") << 2 << -1;
        QTest::newRow("the new first state") << 3 << 0;
        QTest::newRow("among those that stay") << 4 << 1;
        QTest::newRow("the present state") << 5 << 2;
    }
    void theSavedStateIsFoundAgainAfterDropping()
    {
        QFETCH(int, saved);
        QFETCH(int, clean);
        Document document(Filled(QSize(300, 300), Qt::white), QString(), "Unnamed");
        for (const QColor color : {Qt::red, Qt::green, Qt::blue, Qt::black, Qt::yellow})
            Change(document, color);
        document.GetUndoStack()->setIndex(saved);
        document.MarkSaved("/a/b.png");
        document.GetUndoStack()->setIndex(5);

        document.SetUndoMegabytes(1);

        QCOMPARE(document.GetUndoStack()->count(), 2);
        QCOMPARE(document.GetUndoStack()->cleanIndex(), clean);
        QCOMPARE(document.IsModified(), clean != 2);
    }

    void anUndoneSavedStateIsFoundAgainAfterDropping()
    {
        Document document(Filled(QSize(300, 300), Qt::white), QString(), "Unnamed");
        for (const QColor color : {Qt::red, Qt::green, Qt::blue, Qt::black, Qt::yellow})
            Change(document, color);
        document.MarkSaved("/a/b.png");
        document.GetUndoStack()->setIndex(4);

        document.SetUndoMegabytes(1);

        QVERIFY(document.IsModified());
        document.GetUndoStack()->redo();
        QVERIFY(!document.IsModified());
        QCOMPARE(document.GetPixels()->GetComposition().pixelColor(5, 5), QColor(Qt::yellow));
    }
};

NV_TEST_MAIN(tst_Document)
#include "tst_Document.moc"
