// Sizes and turns.

#include "BatchChange.h"

#include "TestMain.h"

namespace
{

BatchChange Change(BatchChange::Resize resize, const QSize& bounds, bool enlarges, int percent, int rotation)
{
    BatchChange change;
    change.resize = resize;
    change.bounds = bounds;
    change.enlarges = enlarges;
    change.percent = percent;
    change.rotation = rotation;
    return change;
}

// Red, green over blue, white.
QImage Quarters(const QSize& size = QSize(40, 20))
{
    QImage image(2, 2, QImage::Format_ARGB32_Premultiplied);
    image.setPixelColor(0, 0, Qt::red);
    image.setPixelColor(1, 0, Qt::green);
    image.setPixelColor(0, 1, Qt::blue);
    image.setPixelColor(1, 1, Qt::white);
    return image.scaled(size);
}

} // namespace

class tst_BatchChange : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sizes_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("resize");
        QTest::addColumn<QSize>("bounds");
        QTest::addColumn<bool>("enlarges");
        QTest::addColumn<int>("percent");
        QTest::addColumn<int>("rotation");
        QTest::addColumn<QSize>("expected");
        const QSize photo(4000, 3000);
        const QSize hd(1920, 1080);
        const int keep = BatchChange::KeepSize;
        const int fit = BatchChange::FitWithin;
        const int part = BatchChange::ByPercent;
        QTest::newRow("kept") << photo << keep << hd << true << 10 << 0 << photo;
        QTest::newRow("kept and turned") << photo << keep << hd << true << 10 << 90 << QSize(3000, 4000);
        QTest::newRow("fit") << photo << fit << hd << false << 10 << 0 << QSize(1440, 1080);
        QTest::newRow("fit, turned") << photo << fit << hd << false << 10 << 270 << QSize(810, 1080);
        QTest::newRow("small") << QSize(100, 50) << fit << hd << false << 10 << 0 << QSize(100, 50);
        QTest::newRow("small, enlarged")
            << QSize(100, 50) << fit << hd << true << 10 << 0 << QSize(1920, 960);
        QTest::newRow("just fits") << hd << fit << hd << false << 10 << 180 << hd;
        QTest::newRow("too high only") << QSize(10, 2160) << fit << hd << false << 10 << 0 << QSize(5, 1080);
        QTest::newRow("a line") << QSize(10000, 1) << fit << QSize(10, 10) << false << 10 << 0
                                << QSize(10, 1);
        QTest::newRow("percent") << photo << part << hd << false << 25 << 0 << QSize(1000, 750);
        QTest::newRow("percent up") << QSize(10, 20) << part << hd << false << 300 << 90 << QSize(60, 30);
        QTest::newRow("percent of little") << QSize(3, 200) << part << hd << false << 1 << 0 << QSize(1, 2);
    }
    void sizes()
    {
        QFETCH(QSize, size);
        QFETCH(int, resize);
        QFETCH(QSize, bounds);
        QFETCH(bool, enlarges);
        QFETCH(int, percent);
        QFETCH(int, rotation);
        QFETCH(QSize, expected);

        QCOMPARE(ChangedSize(size, Change(BatchChange::Resize(resize), bounds, enlarges, percent, rotation)),
                 expected);
    }

    void cornersGoWhereTheTurnTakesThem_data()
    {
        QTest::addColumn<int>("rotation");
        QTest::addColumn<QColor>("topLeft");
        QTest::addColumn<QColor>("topRight");
        QTest::newRow("not") << 0 << QColor(Qt::red) << QColor(Qt::green);
        QTest::newRow("90") << 90 << QColor(Qt::blue) << QColor(Qt::red);
        QTest::newRow("180") << 180 << QColor(Qt::white) << QColor(Qt::blue);
        QTest::newRow("270") << 270 << QColor(Qt::green) << QColor(Qt::white);
    }
    void cornersGoWhereTheTurnTakesThem()
    {
        QFETCH(int, rotation);
        QFETCH(QColor, topLeft);
        QFETCH(QColor, topRight);

        const QImage image =
            Changed(Quarters(), Change(BatchChange::ByPercent, QSize(), false, 200, rotation));

        QCOMPARE(image.size(), rotation % 180 == 0 ? QSize(80, 40) : QSize(40, 80));
        QCOMPARE(image.pixelColor(0, 0), topLeft);
        QCOMPARE(image.pixelColor(image.width() - 1, 0), topRight);
    }

    void aTurnLosesNoPixel()
    {
        const QImage image = Quarters();
        const BatchChange change = Change(BatchChange::KeepSize, QSize(), false, 100, 90);

        QCOMPARE(Changed(Changed(Changed(Changed(image, change), change), change), change), image);
    }

    void whatWouldBeTooLargeIsNull()
    {
        QVERIFY(Changed(Quarters(QSize(2000, 20)), Change(BatchChange::ByPercent, QSize(), false, 1000, 0))
                    .isNull());
    }
};

NV_TEST_MAIN(tst_BatchChange)
#include "tst_BatchChange.moc"
