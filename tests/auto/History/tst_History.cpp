// The rows of a document's history, against its undo stack.

#include "History.h"

#include <QRandomGenerator>
#include <QUndoStack>

#include "Document.h"
#include "KXDocumentInterface.h"
#include "SignalLog.h"
#include "TestMain.h"
#include "TilesCommand.h"
#include "ToolHost.h"

namespace
{

// Fills the layer as one step.
void Change(Document& document, const QColor& color)
{
    KXDocumentInterface* pixels = document.GetPixels();
    QVector<SavedTile> tiles = {{pixels->GetRect(), pixels->GetLayer(0).image.copy()}};
    pixels->EditLayer(0).fill(color);
    pixels->NotifyChanged(pixels->GetRect());
    document.GetUndoStack()->push(new TilesCommand(color.name(), pixels, 0, std::move(tiles)));
}

QStringList TextsOf(const History* history)
{
    QStringList texts;
    for (int i = 0; i < history->GetCount(); ++i)
        texts += history->GetRow(i).text;
    return texts;
}

QColor ColorOf(const History* history, int row)
{
    return history->GetRow(row).picture.pixelColor(20, 20);
}

} // namespace

class tst_History : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_document = std::make_unique<Document>(PlainPicture(Qt::white, QSize(300, 300)), QString(), "A");
        m_history = m_document->GetHistory();
    }

    void aNewOneHasTheStateThatWasOpened()
    {
        QCOMPARE(TextsOf(m_history), QStringList("Opened"));
        QCOMPARE(m_history->GetCurrentRow(), 0);
        QCOMPARE(m_history->GetDroppedSteps(), 0);
        QCOMPARE(m_history->GetRow(0).picture.size(), QSize(48, 48));
        QCOMPARE(ColorOf(m_history, 0), QColor(Qt::white));
    }

    void eachStepIsARowWithAPictureOfWhatItLeft()
    {
        SignalLog log(m_history);
        Change(*m_document, Qt::red);
        Change(*m_document, Qt::blue);

        QCOMPARE(TextsOf(m_history), QStringList({"Opened", "#ff0000", "#0000ff"}));
        QCOMPARE(ColorOf(m_history, 0), QColor(Qt::white));
        QCOMPARE(ColorOf(m_history, 1), QColor(Qt::red));
        QCOMPARE(ColorOf(m_history, 2), QColor(Qt::blue));
        QCOMPARE(log.Entries(),
                 QStringList(
                     {"RowsChanged(1)", "CurrentRowChanged(1)", "RowsChanged(2)", "CurrentRowChanged(2)"}));
    }

    void undoingMovesAlongTheRows()
    {
        Change(*m_document, Qt::red);
        Change(*m_document, Qt::blue);
        SignalLog log(m_history);

        m_document->GetUndoStack()->undo();
        m_document->GetUndoStack()->redo();
        m_document->GetUndoStack()->setIndex(0);

        QCOMPARE(log.Entries(),
                 QStringList({"CurrentRowChanged(1)", "CurrentRowChanged(2)", "CurrentRowChanged(0)"}));
        QCOMPARE(ColorOf(m_history, 2), QColor(Qt::blue));
        QCOMPARE(m_history->GetCurrentRow(), 0);
    }

    void aNewStepTakesThePlaceOfThoseThatAreUndone()
    {
        for (const QColor color : {Qt::red, Qt::green, Qt::blue})
            Change(*m_document, color);
        m_document->GetUndoStack()->setIndex(2);
        SignalLog log(m_history);

        // The stack has as many steps as before.
        Change(*m_document, Qt::black);

        QCOMPARE(TextsOf(m_history), QStringList({"Opened", "#ff0000", "#00ff00", "#000000"}));
        QCOMPARE(ColorOf(m_history, 3), QColor(Qt::black));
        QCOMPARE(log.Entries(), QStringList({"RowsChanged(3)", "CurrentRowChanged(3)"}));
    }

    void aStepIsFoundByItsNumber()
    {
        Change(*m_document, Qt::red);
        Change(*m_document, Qt::blue);

        const quint64 red = m_history->GetRow(1).number;
        const quint64 blue = m_history->GetRow(2).number;
        QCOMPARE(m_history->FindRow(0), 0);
        QCOMPARE(m_history->FindRow(red), 1);
        QCOMPARE(m_history->FindRow(blue), 2);
        QVERIFY(red < blue);
        m_document->GetUndoStack()->setIndex(1);
        Change(*m_document, Qt::black);
        QCOMPARE(m_history->FindRow(blue), -1);
    }

    void droppedStepsMoveTheFirstRow()
    {
        m_document->SetUndoMegabytes(1);
        Change(*m_document, Qt::red);
        Change(*m_document, Qt::green);
        SignalLog log(m_history);

        Change(*m_document, Qt::blue);
        QCOMPARE(TextsOf(m_history), QStringList({"1 earlier step dropped", "#00ff00", "#0000ff"}));
        QCOMPARE(ColorOf(m_history, 0), QColor(Qt::red));
        QCOMPARE(m_history->FindRow(0), 0);
        QCOMPARE(log.Entries(), QStringList({"RowsDropped(1)", "RowsChanged(2)", "CurrentRowChanged(2)"}));
        Change(*m_document, Qt::black);

        QCOMPARE(TextsOf(m_history), QStringList({"2 earlier steps dropped", "#0000ff", "#000000"}));
        QCOMPARE(m_history->GetDroppedSteps(), 2);
        QCOMPARE(m_history->GetCurrentRow(), 2);
    }

    void thePresentRowMovesWithTheDroppedOnes()
    {
        for (const QColor color : {Qt::red, Qt::green, Qt::blue, Qt::black, Qt::yellow})
            Change(*m_document, color);
        m_document->GetUndoStack()->undo();
        int current = -1;
        connect(m_history, &History::RowsDropped, this, [&] { current = m_history->GetCurrentRow(); });

        m_document->SetUndoMegabytes(0);

        QCOMPARE(current, 1);
        QCOMPARE(m_history->GetCount(), 3);
    }

    void aStepThatCouldNotBeRedoneIsNotFound()
    {
        Change(*m_document, Qt::red);
        Change(*m_document, Qt::blue);
        const quint64 red = m_history->GetRow(1).number;
        const quint64 blue = m_history->GetRow(2).number;
        m_document->GetUndoStack()->setIndex(0);
        const_cast<QUndoCommand*>(m_document->GetUndoStack()->command(0))->setObsolete(true);
        m_document->GetUndoStack()->redo();

        QCOMPARE(m_history->FindRow(red), -1);
        QCOMPARE(m_history->FindRow(blue), 1);
    }

    void forgottenStepsLeaveThePresentState()
    {
        for (const QColor color : {Qt::red, Qt::green, Qt::blue})
            Change(*m_document, color);
        m_document->GetUndoStack()->undo();
        SignalLog log(m_history);

        m_document->ForgetSteps();

        QCOMPARE(TextsOf(m_history), QStringList("2 earlier steps dropped"));
        QCOMPARE(ColorOf(m_history, 0), QColor(Qt::green));
        QCOMPARE(m_history->GetCurrentRow(), 0);
        QCOMPARE(log.Entries(), QStringList({"RowsChanged(0)", "CurrentRowChanged(0)"}));
    }

    void anyCourseOfStepsIsThatOfTheStack_data()
    {
        QTest::addColumn<int>("seed");
        for (int seed = 0; seed < 12; ++seed)
            QTest::addRow("seed %d", seed) << seed;
    }
    void anyCourseOfStepsIsThatOfTheStack()
    {
        QFETCH(int, seed);
        QRandomGenerator random{quint32(seed)};
        m_document->SetUndoMegabytes(2);
        int dropped = 0;
        connect(m_document.get(), &Document::StepsDropped, this, [&dropped](int count) { dropped += count; });

        for (int i = 0; i < 300; ++i)
        {
            const QColor color(i % 256, i / 256, random.bounded(256));
            if (random.bounded(3) > 0)
                Change(*m_document, color);
            else
                m_document->GetUndoStack()->setIndex(random.bounded(m_document->GetUndoStack()->count() + 1));

            const QUndoStack* stack = m_document->GetUndoStack();
            QCOMPARE(m_history->GetCount(), stack->count() + 1);
            QCOMPARE(m_history->GetCurrentRow(), stack->index());
            QCOMPARE(m_history->GetDroppedSteps(), dropped);
            for (int row = 1; row < m_history->GetCount(); ++row)
            {
                QCOMPARE(m_history->GetRow(row).text, stack->text(row - 1));
                QCOMPARE(ColorOf(m_history, row).name(), stack->text(row - 1));
            }
            QCOMPARE(ColorOf(m_history, m_history->GetCurrentRow()),
                     m_document->GetPixels()->GetComposition().pixelColor(0, 0));
        }
        QVERIFY(dropped > 0);
    }

private:
    std::unique_ptr<Document> m_document;
    History* m_history = nullptr;
};

NV_TEST_MAIN(tst_History)
#include "tst_History.moc"
