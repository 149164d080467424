// The log: numbered lines, exact counts, and what its three controls do.

#include "GalleryLog.h"

#include <QCheckBox>
#include <QClipboard>
#include <QGuiApplication>
#include <QPushButton>
#include <QScrollBar>
#include <QTreeWidget>

#include "SignalWatch.h"
#include "TestMain.h"

namespace
{

HeardSignal Signal(const QString& name, int value)
{
    return {name, name + "(int)", QString("%1(%2)").arg(name).arg(value), {value}};
}

void Click(const GalleryLog& log, const char* name)
{
    QTest::mouseClick(log.findChild<QPushButton*>(name), Qt::LeftButton);
}

// On the box itself: the rest of the line belongs to it too, but not to its text.
void ClickPause(const GalleryLog& log)
{
    auto* pause = log.findChild<QCheckBox*>("Pause");
    QTest::mouseClick(pause, Qt::LeftButton, Qt::NoModifier, QPoint(8, pause->height() / 2));
}

} // namespace

class tst_GalleryLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void linesAreNumberedInTheirOrder()
    {
        GalleryLog log;
        log.Start({"SizeChanged(int)", "SpacingChanged(int)"});

        log.Add(Signal("SpacingChanged", 3));
        log.Add(Signal("SizeChanged", 5));
        log.Note("Exec() returned 1");

        QCOMPARE(log.GetLines(),
                 QStringList({"1\tSpacingChanged(3)", "2\tSizeChanged(5)", "3\tExec() returned 1"}));
    }

    void eachSignalIsCountedByItself()
    {
        GalleryLog log;
        log.Start({"SizeChanged(int)", "SpacingChanged(int)"});

        for (int i = 0; i < 3; ++i)
            log.Add(Signal("SizeChanged", i));
        log.Note("SpacingChanged(int)");

        QCOMPARE(log.GetCount("SizeChanged(int)"), 3);
        QCOMPARE(log.GetCount("SpacingChanged(int)"), 0);
        QCOMPARE(log.GetCount("SizeChanged"), 0);
    }

    void allSignalsOfTheWidgetAreListedFromTheBeginning()
    {
        GalleryLog log;

        log.Start({"SizeChanged(int)", "Clear()"});

        const auto* counts = log.findChild<QTreeWidget*>("Counts");
        QCOMPARE(counts->topLevelItemCount(), 2);
        QCOMPARE(counts->topLevelItem(0)->text(0), QString("SizeChanged(int)"));
        QCOMPARE(counts->topLevelItem(0)->text(1), QString("0"));
        QCOMPARE(counts->topLevelItem(1)->text(0), QString("Clear()"));
    }

    void aWidgetWithoutSignalsIsSaidToHaveNone()
    {
        GalleryLog log;

        log.Start({});

        const auto* counts = log.findChild<QTreeWidget*>("Counts");
        QCOMPARE(counts->topLevelItemCount(), 1);
        QCOMPARE(counts->topLevelItem(0)->text(0), QString("It has none of its own"));
        QVERIFY(counts->topLevelItem(0)->isDisabled());
    }

    void anotherStartForgetsAll()
    {
        GalleryLog log;
        log.Start({"SizeChanged(int)"});
        log.Add(Signal("SizeChanged", 5));

        log.Start({"Clear()"});

        QCOMPARE(log.GetLines(), QStringList());
        QCOMPARE(log.GetCount("SizeChanged(int)"), 0);
        QCOMPARE(log.findChild<QTreeWidget*>("Counts")->topLevelItemCount(), 1);
    }

    void clearBeginsAgainWithOne()
    {
        GalleryLog log;
        log.Start({"SizeChanged(int)"});
        log.show();
        log.Add(Signal("SizeChanged", 5));
        log.Add(Signal("SizeChanged", 6));

        Click(log, "Clear");

        QCOMPARE(log.GetLines(), QStringList());
        QCOMPARE(log.GetCount("SizeChanged(int)"), 0);
        log.Add(Signal("SizeChanged", 7));
        QCOMPARE(log.GetLines(), QStringList("1\tSizeChanged(7)"));
        QCOMPARE(log.GetCount("SizeChanged(int)"), 1);
    }

    void copyPutsAllLinesOnTheClipboard()
    {
        GalleryLog log;
        log.Start({"SizeChanged(int)"});
        log.show();
        log.Add(Signal("SizeChanged", 5));
        log.Add(Signal("SizeChanged", 6));

        Click(log, "Copy");

        QCOMPARE(QGuiApplication::clipboard()->text(), QString("1\tSizeChanged(5)\n2\tSizeChanged(6)"));
    }

    void whileItIsPausedNothingIsWrittenOrCounted()
    {
        GalleryLog log;
        log.Start({"SizeChanged(int)"});
        log.show();
        log.Add(Signal("SizeChanged", 5));

        ClickPause(log);
        QVERIFY(log.IsPaused());
        log.Add(Signal("SizeChanged", 6));
        log.Note("Exec() returned 1");
        QCOMPARE(log.GetLines(), QStringList("1\tSizeChanged(5)"));
        QCOMPARE(log.GetCount("SizeChanged(int)"), 1);

        ClickPause(log);
        QVERIFY(!log.IsPaused());
        log.Add(Signal("SizeChanged", 7));
        QCOMPARE(log.GetLines(), QStringList({"1\tSizeChanged(5)", "2\tSizeChanged(7)"}));
        QCOMPARE(log.GetCount("SizeChanged(int)"), 2);
    }

    void theLastLineStaysInSightUnlessAPersonReadsAbove()
    {
        GalleryLog log;
        log.Start({"SizeChanged(int)"});
        log.resize(500, 200);
        log.show();
        for (int i = 0; i < 100; ++i)
            log.Add(Signal("SizeChanged", i));
        QScrollBar* bar = log.findChild<QTreeWidget*>("Lines")->verticalScrollBar();
        QTRY_VERIFY(bar->maximum() > 0);
        QCOMPARE(bar->value(), bar->maximum());

        bar->setValue(10);
        log.Add(Signal("SizeChanged", 100));
        QCoreApplication::processEvents();

        QCOMPARE(bar->value(), 10);
    }
};

NV_TEST_MAIN(tst_GalleryLog)
#include "tst_GalleryLog.moc"
