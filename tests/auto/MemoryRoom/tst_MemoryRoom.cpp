// What fits into memory, and what is said of what does not.

#include "MemoryRoom.h"

#include <QLocale>
#include <QTest>

#include "TestMain.h"

class tst_MemoryRoom : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale::c()); }

    void theSystemTellsHowMuchIsFree()
    {
        if (!QFile::exists("/proc/meminfo"))
            QSKIP("This system does not tell.");
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
};

NV_TEST_MAIN(tst_MemoryRoom)

#include "tst_MemoryRoom.moc"
