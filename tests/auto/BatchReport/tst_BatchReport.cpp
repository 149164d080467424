// The texts of a report.

#include "BatchReport.h"

#include "TestMain.h"

class tst_BatchReport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theSummaryCounts()
    {
        QCOMPARE(SummaryText(report()), QString("2 done, 1 skipped, 1 failed"));
        QCOMPARE(SummaryText(BatchReport()), QString("0 done, 0 skipped, 0 failed"));
    }

    void theSummaryTellsOfACancel()
    {
        BatchReport it = report();
        it.isCancelled = true;

        QCOMPARE(SummaryText(it), QString("Cancelled: 2 done, 1 skipped, 1 failed"));
    }

    void theSummaryTellsWhyThereWasNoJob()
    {
        BatchReport it;
        it.error = "No room.";

        QCOMPARE(SummaryText(it), QString("The job did not begin: No room."));
    }

    void whatWentWrongComesFirst()
    {
        QCOMPARE(ReportText(report()),
                 QString("2 done, 1 skipped, 1 failed\n"
                         "Failed\t/in/c.png\tIt is empty.\n"
                         "Skipped\t/in/b.png\tIt is gone.\n"
                         "Done\t/in/a.png\t/out/a.png\n"
                         "Done\t/in/d.png\t/out/d.png\n"));
    }

    void aNameBreaksNoLine()
    {
        BatchReport it;
        it.outcomes = {{BatchOutcome::Done, "/in/a\nb\tc.png", "/out/a\rb.png", QString()}};

        QCOMPARE(ReportText(it),
                 QString("1 done, 0 skipped, 0 failed\n"
                         "Done\t/in/a\\nb\\tc.png\t/out/a\\x0db.png\n"));
    }

    void oneLineShowsControlCharacters()
    {
        QCOMPARE(OneLine("plain <b>%1"), QString("plain <b>%1"));
        QCOMPARE(OneLine(QString("a") + QChar(0x2028) + "b" + QChar(0x1b)), QString("a\\x2028b\\x1b"));
    }

    void placesNameTheFileFirst()
    {
        QCOMPARE(PlaceText("/a/b %1/c.png"), QString("c.png in /a/b %1"));
        QCOMPARE(PlaceText("/a/%2/%1.png"), QString("%1.png in /a/%2"));
        QCOMPARE(PlaceText("/"), QString("/"));
    }

private:
    static BatchReport report()
    {
        BatchReport it;
        it.outcomes = {{BatchOutcome::Done, "/in/a.png", "/out/a.png", QString()},
                       {BatchOutcome::Skipped, "/in/b.png", QString(), "It is gone."},
                       {BatchOutcome::Failed, "/in/c.png", QString(), "It is empty."},
                       {BatchOutcome::Done, "/in/d.png", "/out/d.png", QString()}};
        return it;
    }
};

NV_TEST_MAIN(tst_BatchReport)
#include "tst_BatchReport.moc"
