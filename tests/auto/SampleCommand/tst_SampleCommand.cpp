// The step of the colour samples: back and forth, and without the samples.

#include "SampleCommand.h"

#include <QUndoStack>

#include "ColorSamples.h"
#include "TestMain.h"
#include "ToolHost.h"

class tst_SampleCommand : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void goesBackAndForth()
    {
        Document document(PlainPicture(Qt::gray), QString(), "Picture");
        ColorSamples* samples = ColorSamples::Of(&document);
        const QVector<QPoint> before = samples->GetPixels();
        samples->Add(QPoint(3, 4));

        PushSamples(samples, "Sample", before);
        PushSamples(samples, "Nothing", samples->GetPixels());

        QCOMPARE(document.GetUndoStack()->count(), 1);
        QCOMPARE(samples->GetPixels(), QVector<QPoint>({QPoint(3, 4)}));
        document.GetUndoStack()->undo();
        QCOMPARE(samples->GetPixels(), before);
        document.GetUndoStack()->redo();
        QCOMPARE(samples->GetPixels(), QVector<QPoint>({QPoint(3, 4)}));
    }

    void holdsNoPixels()
    {
        Document document(PlainPicture(Qt::gray), QString(), "Picture");
        SampleCommand step("Sample", ColorSamples::Of(&document), {});

        step.MoveToDisk();

        QCOMPARE(step.GetMemoryBytes(), qint64(0));
        QCOMPARE(step.GetBytes(), qint64(0));
    }

    void survivesItsSamples()
    {
        auto document = std::make_unique<Document>(PlainPicture(Qt::gray), QString(), "Picture");
        SampleCommand step("Sample", ColorSamples::Of(document.get()), {QPoint(1, 2)});

        document.reset();

        step.redo();
        step.undo();
    }
};

NV_TEST_MAIN(tst_SampleCommand)
#include "tst_SampleCommand.moc"
