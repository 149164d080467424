// Tiles that are kept in memory or in a file.

#include "TileStore.h"

#include "TestMain.h"
#include "ToolHost.h"

class tst_TileStore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tilesComeBackFromTheFile()
    {
        TileStore store({{QRect(0, 0, 7, 3), BusyPicture(QSize(7, 3))},
                         {QRect(9, 9, 1, 1), PlainPicture(Qt::red, QSize(1, 1))}});
        QCOMPARE(store.GetMemoryBytes(), qint64(7 * 3 * 4 + 4));

        store.MoveToDisk();
        store.MoveToDisk();
        QCOMPARE(store.GetMemoryBytes(), qint64(0));
        QCOMPARE(store.GetBytes(), qint64(7 * 3 * 4 + 4));

        QVector<SavedTile>* tiles = store.Load();
        QVERIFY(tiles);
        QCOMPARE(tiles->size(), 2);
        QCOMPARE(tiles->at(0).before, BusyPicture(QSize(7, 3)));
        QCOMPARE(tiles->at(1).before, PlainPicture(Qt::red, QSize(1, 1)));
        QCOMPARE(store.GetMemoryBytes(), qint64(7 * 3 * 4 + 4));
        QCOMPARE(store.GetBytes(), qint64(7 * 3 * 4 + 4));
    }

    void eachFormatComesBackAsItWas()
    {
        QImage mask(5, 4, QImage::Format_Grayscale8);
        mask.fill(77);
        TileStore store({{QRect(0, 0, 3, 3), PlainPicture(Qt::red, QSize(3, 3))}, {QRect(0, 0, 5, 4), mask}});

        store.MoveToDisk();

        const QVector<SavedTile>* tiles = store.Load();
        QVERIFY(tiles);
        QCOMPARE(tiles->at(0).before, PlainPicture(Qt::red, QSize(3, 3)));
        QCOMPARE(tiles->at(1).before, mask);
    }

    void whatIsChangedAfterLoadingIsWhatIsKept()
    {
        TileStore store({{QRect(0, 0, 2, 2), PlainPicture(Qt::red, QSize(2, 2))}});
        store.MoveToDisk();
        store.Load()->first().before.fill(Qt::blue);

        store.MoveToDisk();

        QCOMPARE(store.Load()->first().before, PlainPicture(Qt::blue, QSize(2, 2)));
    }

    void otherTilesTakeTheirPlace()
    {
        TileStore store({{QRect(0, 0, 2, 2), PlainPicture(Qt::red, QSize(2, 2))}});
        store.MoveToDisk();

        store.Set({{QRect(0, 0, 1, 1), PlainPicture(Qt::green, QSize(1, 1))}});

        QCOMPARE(store.GetMemoryBytes(), qint64(4));
        QCOMPARE(store.Load()->first().before, PlainPicture(Qt::green, QSize(1, 1)));
    }

    void nothingIsKeptAsNothing()
    {
        TileStore store;

        store.MoveToDisk();

        QCOMPARE(store.GetMemoryBytes(), qint64(0));
        QVERIFY(store.Load()->isEmpty());
    }
};

NV_TEST_MAIN(tst_TileStore)
#include "tst_TileStore.moc"
