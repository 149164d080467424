// One undo step made of tiles: swapped back and forth, from memory and from its file.

#include "TilesCommand.h"

#include <csignal>

#include "KXDocumentInterface.h"
#include "ProcessLimit.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

QImage Filled(const QSize& size, const QColor& color)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    return image;
}

} // namespace

class tst_TilesCommand : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFirstRedoDoesNothing()
    {
        KXDocumentInterface document(Filled(QSize(10, 10), Qt::red));
        TilesCommand step("Step", &document, 0, {{QRect(2, 2, 3, 3), Filled(QSize(3, 3), Qt::blue)}});
        SignalLog log(&document);

        step.redo();

        QCOMPARE(step.text(), QString("Step"));
        QCOMPARE(log.Entries(), QStringList());
        QCOMPARE(document.GetComposition().pixelColor(3, 3), QColor(Qt::red));
    }

    void undoAndRedoSwapAndTellTheArea()
    {
        KXDocumentInterface document(Filled(QSize(10, 10), Qt::red));
        TilesCommand step("Step", &document, 0,
                          {{QRect(2, 2, 3, 3), Filled(QSize(3, 3), Qt::blue)},
                           {QRect(7, 7, 1, 1), Filled(QSize(1, 1), Qt::green)}});
        step.redo();
        SignalLog log(&document);

        step.undo();
        QCOMPARE(document.GetComposition().pixelColor(3, 3), QColor(Qt::blue));
        QCOMPARE(document.GetComposition().pixelColor(7, 7), QColor(Qt::green));
        QCOMPARE(document.GetComposition().pixelColor(6, 6), QColor(Qt::red));
        QCOMPARE(log.Entries(), QStringList("CompositionChanged(2,2 6x6)"));

        step.redo();
        QCOMPARE(document.GetComposition().pixelColor(3, 3), QColor(Qt::red));
    }

    void aStepOnDiskHoldsNoMemoryAndComesBack()
    {
        KXDocumentInterface document(Filled(QSize(10, 10), Qt::red));
        TilesCommand step("Step", &document, 0, {{QRect(2, 2, 3, 3), Filled(QSize(3, 3), QColor(1, 2, 3))}});
        QCOMPARE(step.GetMemoryBytes(), qint64(36));

        step.MoveToDisk();
        step.MoveToDisk();
        QCOMPARE(step.GetMemoryBytes(), qint64(0));
        step.undo();

        QCOMPARE(document.GetComposition().pixelColor(4, 4), QColor(1, 2, 3));
        QCOMPARE(step.GetMemoryBytes(), qint64(36));
        QVERIFY(!step.isObsolete());
    }

    void withoutRoomForAFileItStaysInMemory()
    {
        KXDocumentInterface document(Filled(QSize(10, 10), Qt::red));
        TilesCommand step("Step", &document, 0, {{QRect(2, 2, 3, 3), Filled(QSize(3, 3), QColor(1, 2, 3))}});
        const auto handler = signal(SIGXFSZ, SIG_IGN);
        {
            const ProcessLimit size(RLIMIT_FSIZE, 10);
            step.MoveToDisk();
        }
        signal(SIGXFSZ, handler);
        QCOMPARE(step.GetMemoryBytes(), qint64(36));
        step.undo();
        QCOMPARE(document.GetComposition().pixelColor(4, 4), QColor(1, 2, 3));
    }
};

NV_TEST_MAIN(tst_TilesCommand)
#include "tst_TilesCommand.moc"
