// One has a text of its own.

#include "CountText.h"

#include "TestMain.h"

class tst_CountText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void oneHasItsOwnText_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<QString>("text");
        QTest::newRow("none") << 0 << "0 images";
        QTest::newRow("one") << 1 << "1 image";
        QTest::newRow("two") << 2 << "2 images";
        QTest::newRow("many") << 12345 << QLocale().toString(12345) + " images";
    }
    void oneHasItsOwnText()
    {
        QFETCH(int, count);
        QFETCH(QString, text);

        QCOMPARE(CountText(count, "1 image", "%1 images"), text);
    }
};

NV_TEST_MAIN(tst_CountText)
#include "tst_CountText.moc"
