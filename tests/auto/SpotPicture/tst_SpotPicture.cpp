// The pictures around the healing of a spot: mask, picture of before, copies.

#include "SpotPicture.h"

#include "TestMain.h"
#include "ToolHost.h"

namespace
{

QImage Gray(const QSize& size, int value)
{
    QImage image(size, QImage::Format_Grayscale8);
    image.fill(value);
    return image;
}

} // namespace

class tst_SpotPicture : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theMaskIsTheCoverageInItsPlace()
    {
        QImage coverage = Gray(QSize(3, 2), 200);
        coverage.setPixel(2, 1, qRgb(10, 10, 10));

        const QImage mask = SpotMask(coverage, QRect(10, 20, 3, 2), QRect(8, 15, 10, 12), QImage(), 100);

        QCOMPARE(mask.size(), QSize(10, 12));
        QCOMPARE(mask.format(), QImage::Format_Grayscale8);
        QCOMPARE(qGray(mask.pixel(2, 5)), 200);
        QCOMPARE(qGray(mask.pixel(4, 6)), 10);
        QCOMPARE(qGray(mask.pixel(1, 5)), 0);
        QCOMPARE(qGray(mask.pixel(5, 6)), 0);
        QCOMPARE(qGray(mask.pixel(2, 7)), 0);
    }

    void opacityAndSelectionMultiply()
    {
        const QImage mask = SpotMask(Gray(QSize(2, 2), 200), QRect(4, 4, 2, 2), QRect(0, 0, 10, 10),
                                     Gray(QSize(10, 10), 51), 50);

        QCOMPARE(qGray(mask.pixel(4, 4)), 20);
    }

    void whatLeavesNothingIsNoMask_data()
    {
        QTest::addColumn<int>("coverage");
        QTest::addColumn<int>("selection");
        QTest::addColumn<double>("opacity");
        QTest::newRow("no coverage") << 0 << 255 << 100.0;
        QTest::newRow("no selection") << 255 << 0 << 100.0;
        QTest::newRow("no opacity") << 255 << 255 << 0.0;
    }
    void whatLeavesNothingIsNoMask()
    {
        QFETCH(int, coverage);
        QFETCH(int, selection);
        QFETCH(double, opacity);

        QVERIFY(SpotMask(Gray(QSize(2, 2), coverage), QRect(4, 4, 2, 2), QRect(0, 0, 10, 10),
                         Gray(QSize(10, 10), selection), opacity)
                    .isNull());
    }

    void aCoverageThatDoesNotFitIsNoMask()
    {
        QVERIFY(SpotMask(QImage(), QRect(4, 4, 2, 2), QRect(0, 0, 10, 10), QImage(), 100).isNull());
        QVERIFY(
            SpotMask(Gray(QSize(2, 2), 255), QRect(40, 4, 2, 2), QRect(0, 0, 9, 9), QImage(), 100).isNull());
    }

    void thePictureIsThatOfBefore()
    {
        const QImage before = BusyPicture(QSize(40, 30));
        QImage layer = before;
        const QVector<SavedTile> tiles = {{QRect(5, 5, 10, 10), layer.copy(5, 5, 10, 10)},
                                          {QRect(20, 5, 5, 5), layer.copy(20, 5, 5, 5)}};
        for (const SavedTile& tile : tiles)
        {
            const QImage other = PlainPicture(Qt::red, tile.rect.size());
            CopyArea(other, other.rect(), layer, tile.rect.topLeft());
        }

        QCOMPARE(PictureBefore(layer, tiles, QRect(8, 2, 20, 20)), before.copy(8, 2, 20, 20));
        QVERIFY(layer != before);
    }

    void copiesOfTilesHoldWhatIsThereNow()
    {
        const QImage layer = BusyPicture(QSize(40, 30));
        const QVector<SavedTile> tiles = {{QRect(5, 5, 10, 10), PlainPicture(Qt::red, QSize(10, 10))}};

        const QVector<SavedTile> copies = CopyTiles(layer, tiles);

        QCOMPARE(copies.size(), 1);
        QCOMPARE(copies.first().rect, QRect(5, 5, 10, 10));
        QCOMPARE(copies.first().before, layer.copy(5, 5, 10, 10));
    }

    void whatLiesBeyondEitherPictureIsNotCopied()
    {
        const QImage from = BusyPicture(QSize(20, 20));
        QImage to = PlainPicture(Qt::white, QSize(20, 20));

        CopyArea(from, QRect(10, 10, 50, 50), to, QPoint(-3, 15));

        QCOMPARE(DifferenceOf(to, PlainPicture(Qt::white, QSize(20, 20))), QRect(0, 15, 7, 5));
        QCOMPARE(to.pixel(0, 15), from.pixel(13, 10));
    }
};

NV_TEST_MAIN(tst_SpotPicture)
#include "tst_SpotPicture.moc"
