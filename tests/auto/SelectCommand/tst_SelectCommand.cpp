// The undo step of a selection, and the packed mask it keeps.

#include "SelectCommand.h"

#include <csignal>

#include <QUndoStack>

#include "Document.h"
#include "KXDocumentInterface.h"
#include "ProcessLimit.h"
#include "SelectionMask.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

const QSize Size(300, 260);

QImage Picture()
{
    QImage image(Size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    return image;
}

QImage Round()
{
    return EllipseMask(Size, QRectF(20, 7, 200, 240), 20);
}

QImage Square()
{
    return RectangleMask(Size, QRectF(100, 100, 50, 50));
}

QImage Loaded(const MaskStore& store)
{
    QImage mask(1, 1, QImage::Format_RGB32);
    return store.Load(mask) ? mask : QImage(1, 1, QImage::Format_Mono);
}

} // namespace

class tst_SelectCommand : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aStoreGivesBackWhatItWasGiven_data()
    {
        QTest::addColumn<QImage>("mask");
        QTest::newRow("soft") << Round();
        QTest::newRow("hard") << Square();
        QTest::newRow("all") << FullMask(Size);
        QTest::newRow("last pixel") << RectangleMask(Size, QRectF(299, 259, 1, 1));
        QTest::newRow("one pixel wide") << RectangleMask(QSize(1, 500), QRectF(0, 10, 1, 400));
        QTest::newRow("none") << QImage();
    }
    void aStoreGivesBackWhatItWasGiven()
    {
        QFETCH(QImage, mask);
        MaskStore store(mask);
        QCOMPARE(Loaded(store), mask);
        const qint64 bytes = store.GetBytes();
        QCOMPARE(store.GetMemoryBytes(), bytes);

        store.MoveToDisk();
        store.MoveToDisk();

        QCOMPARE(store.GetMemoryBytes(), qint64(0));
        QCOMPARE(store.GetBytes(), bytes);
        QCOMPARE(Loaded(store), mask);
        // Reading does not use it up.
        QCOMPARE(Loaded(store), mask);
    }

    void aStoreIsSmall()
    {
        const MaskStore store(RectangleMask(QSize(4000, 3000), QRectF(100, 100, 3500, 2500), 50));
        QVERIFY2(store.GetBytes() < 4000 * 3000 / 100, qPrintable(QString::number(store.GetBytes())));
        QCOMPARE(MaskStore().GetBytes(), qint64(0));
    }

    void withoutRoomForAFileItStaysInMemory()
    {
        MaskStore store(Round());
        const auto handler = std::signal(SIGXFSZ, SIG_IGN);
        {
            const ProcessLimit size(RLIMIT_FSIZE, 0);
            store.MoveToDisk();
        }
        std::signal(SIGXFSZ, handler);

        QVERIFY(store.GetMemoryBytes() > 0);
        QCOMPARE(Loaded(store), Round());
    }

    void theFirstRedoSelectsAndTheOthersSwap()
    {
        KXDocumentInterface pixels(Picture());
        QVERIFY(pixels.SetSelectionMask(Square()));
        SignalLog log(&pixels);
        SelectCommand step("Select", &pixels, Round());
        QCOMPARE(pixels.GetSelectionMask(), Square());

        step.redo();
        QCOMPARE(pixels.GetSelectionMask(), Round());
        step.undo();
        QCOMPARE(pixels.GetSelectionMask(), Square());
        step.MoveToDisk();
        step.redo();
        QCOMPARE(pixels.GetSelectionMask(), Round());
        step.undo();
        QCOMPARE(pixels.GetSelectionMask(), Square());
        QCOMPARE(log.Count("SelectionChanged"), 4);
        QCOMPARE(log.Count("CompositionChanged"), 0);
        QVERIFY(!step.isObsolete());
        QCOMPARE(step.text(), QString("Select"));
    }

    void noSelectionIsASelectionToo()
    {
        KXDocumentInterface pixels(Picture());
        SelectCommand step("Select", &pixels, Round());
        step.redo();
        QCOMPARE(step.GetBytes(), qint64(0));
        step.undo();
        QVERIFY(pixels.GetSelectionMask().isNull());
        QVERIFY(step.GetBytes() > 0);
        QVERIFY(step.GetBytes() == step.GetMemoryBytes());
        step.redo();
        QCOMPARE(pixels.GetSelectionMask(), Round());
    }

    void aMaskThatDoesNotFitDropsTheStep()
    {
        KXDocumentInterface pixels(Picture());
        QVERIFY(pixels.SetSelectionMask(Square()));
        SelectCommand step("Select", &pixels, FullMask(QSize(4, 4)));
        step.redo();
        QVERIFY(step.isObsolete());
        QCOMPARE(pixels.GetSelectionMask(), Square());
    }

    void aPushIsOneStepUnlessNothingChanges()
    {
        Document document(Picture(), QString(), "Picture");
        QUndoStack* stack = document.GetUndoStack();

        QVERIFY(PushSelection(&document, "One", Round()));
        QCOMPARE(stack->count(), 1);
        QVERIFY(!PushSelection(&document, "Same", Round()));
        QVERIFY(!PushSelection(&document, "Other size", FullMask(QSize(4, 4))));
        QCOMPARE(stack->count(), 1);
        QCOMPARE(document.GetPixels()->GetSelectionMask(), Round());
        QVERIFY(PushSelection(&document, "None", QImage()));
        QVERIFY(document.GetPixels()->GetSelectionMask().isNull());
        QVERIFY(!PushSelection(&document, "None", QImage()));

        stack->undo();
        QCOMPARE(document.GetPixels()->GetSelectionMask(), Round());
        stack->undo();
        QVERIFY(document.GetPixels()->GetSelectionMask().isNull());
        stack->redo();
        stack->redo();
        QVERIFY(document.GetPixels()->GetSelectionMask().isNull());
    }

    void stepsOfOneNumberAreOneStep()
    {
        Document document(Picture(), QString(), "Picture");
        QUndoStack* stack = document.GetUndoStack();
        const auto push = [&](double left, int number)
        { return PushSelection(&document, "Move", RectangleMask(Size, QRectF(left, 0, 9, 9)), number); };
        QVERIFY(push(1, -1));
        QVERIFY(push(2, -1));
        QCOMPARE(stack->count(), 2);
        QVERIFY(push(3, 5));
        QVERIFY(push(4, 5));
        QVERIFY(push(5, 5));
        QCOMPARE(stack->count(), 3);
        QVERIFY(push(6, 7));
        QCOMPARE(stack->count(), 4);

        stack->undo();
        QCOMPARE(MaskBounds(document.GetPixels()->GetSelectionMask()).left(), 5);
        stack->undo();
        QCOMPARE(MaskBounds(document.GetPixels()->GetSelectionMask()).left(), 2);
        stack->redo();
        QCOMPARE(MaskBounds(document.GetPixels()->GetSelectionMask()).left(), 5);
        // What is saved stays what a step leads to.
        stack->setClean();
        QVERIFY(push(8, 5));
        QCOMPARE(stack->count(), 4);
        stack->undo();
        QVERIFY(stack->isClean());
    }

    void aStepOfAnotherKindIsNotTakenIn()
    {
        struct Other : QUndoCommand
        {
            int id() const override { return 5; }
        };
        KXDocumentInterface pixels(Picture());
        SelectCommand step("Select", &pixels, Round());
        step.SetMergeNumber(5);
        const Other other;
        QVERIFY(!step.mergeWith(&other));
        SelectCommand same("Select", &pixels, Round());
        same.SetMergeNumber(5);
        QVERIFY(step.mergeWith(&same));
        same.setObsolete(true);
        QVERIFY(!step.mergeWith(&same));
    }

    void aMaskWithoutAnythingSelectedIsNone()
    {
        Document document(Picture(), QString(), "Picture");
        QImage empty(Size, QImage::Format_Grayscale8);
        empty.fill(0);
        QVERIFY(!PushSelection(&document, "Empty", empty));
        QVERIFY(PushSelection(&document, "Round", Round()));
        QVERIFY(PushSelection(&document, "Empty", empty));
        QVERIFY(document.GetPixels()->GetSelectionMask().isNull());
    }
};

NV_TEST_MAIN(tst_SelectCommand)

#include "tst_SelectCommand.moc"
