// What fits into memory, and what is said of what does not.

#include "MemoryRoom.h"

#include <QFile>
#include <QLocale>
#include <QTest>

#include "ProcessLimit.h"
#include "TestMain.h"

class tst_MemoryRoom : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale::c()); }

    void theSystemTellsHowMuchIsFree()
    {
        if (!QFile::exists("/proc/meminfo"))
            QSKIP("A system without /proc/meminfo does not tell what is free.");
        QVERIFY(FreeMemory() > 16 * 1024 * 1024);
    }

    void aSmallPictureFits()
    {
        QCOMPARE(WhyNotInMemory(QSize(1, 1), 1), QString());
        QCOMPARE(WhyNotInMemory(QSize(1000, 1000), 3), QString());
    }

    void whatDoesNotFitIsNamedWithItsSize()
    {
        // 10000 * 10000 * (5002 * 4 + 1) bytes
        QCOMPARE(WhyNotInMemory(QSize(10000, 10000), 5000),
                 QString("A picture of 10000 by 10000 pixels in 5000 layers needs 1.82 TiB of memory, "
                         "which is more than there is."));
    }

    void theSizeCountsAndTheLayersCount()
    {
        // 2 * 10^15 * 13 bytes
        QCOMPARE(WhyNotInMemory(QSize(2000000000, 1000000), 1),
                 QString("A picture of 2000000000 by 1000000 pixels needs 23.09 PiB of memory, which is more "
                         "than there is."));
        QVERIFY(!WhyNotInMemory(QSize(1000, 1000), 100000000).isEmpty());
    }

    void oneMoreLayerCountsAlone()
    {
        QCOMPARE(WhyNoMoreLayer(QSize(1000, 1000)), QString());
        // 2 * 10^15 * 4 bytes
        QCOMPARE(WhyNoMoreLayer(QSize(2000000000, 1000000)),
                 QString("One more layer of 2000000000 by 1000000 pixels needs 7.11 PiB of memory, which is "
                         "more than there is."));
    }

    void theSentenceIsThereWithoutNeed()
    {
        QCOMPARE(NoMemoryForPicture(QSize(1000, 1000), 1),
                 QString("A picture of 1000 by 1000 pixels needs 12.40 MiB of memory, which is more than "
                         "there is."));
    }

    void aSelectionThatDoesNotFitStaysAsItIs()
    {
        QCOMPARE(WhyNotSelected(QSize(1000, 1000)), QString());
        QCOMPARE(WhyNotSelected(QSize(2000000000, 1000000)), NoMemoryForSelection());
        QCOMPARE(NoMemoryForSelection(),
                 QString("There is not enough memory for the selection. It stays as it is."));
    }

    void whatIsMoreThanIsFreeIsRefused()
    {
        const qint64 room = FreeMemory();
        if (room < 0)
            QSKIP("A system without /proc/meminfo does not tell what is free.");
        // Of 1000 * 1000 pixels, 4 bytes a layer: other programs may take and give a tenth meanwhile.
        const int layers = int(room / 4000000);

        QVERIFY(!WhyNotInMemory(QSize(1000, 1000), layers + layers / 10 + 2).isEmpty());
        QVERIFY(WhyNotInMemory(QSize(1000, 1000), layers / 2).isEmpty());
    }

    void aLimitOfTheProcessCounts()
    {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
        QSKIP("The sanitizer ends the program when it is given no memory; the plain build has this test.");
#endif
        // 7000 * 7000 * 13 bytes
        const QSize large(7000, 7000);
        if (!WhyNotInMemory(large, 1).isEmpty())
            QSKIP("Less than 700 MB are free: give the machine more, or end other programs.");
        QString reason;
        QString none;
        {
            const ProcessLimit memory(RLIMIT_AS, AddressesTaken() + 400 * 1000 * 1000);
            reason = WhyNotInMemory(large, 1);
            none = WhyNotInMemory(QSize(1000, 1000), 1);
        }
        QVERIFY2(reason.contains("607.49 MiB"), qPrintable(reason));
        QCOMPARE(none, QString());
    }
};

NV_TEST_MAIN(tst_MemoryRoom)

#include "tst_MemoryRoom.moc"
