// Pictures in small, made from a few samples.

#include "SmallPicture.h"

#include "TestMain.h"
#include "ToolHost.h"

class tst_SmallPicture : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itHasTheShapeOfThePicture_data()
    {
        QTest::addColumn<QSize>("picture");
        QTest::addColumn<QSize>("small");
        QTest::newRow("wide") << QSize(400, 200) << QSize(48, 24);
        QTest::newRow("high") << QSize(200, 400) << QSize(24, 48);
        QTest::newRow("one pixel") << QSize(1, 1) << QSize(48, 48);
        QTest::newRow("a line") << QSize(9000, 1) << QSize(48, 1);
        QTest::newRow("as it is") << QSize(48, 48) << QSize(48, 48);
    }
    void itHasTheShapeOfThePicture()
    {
        QFETCH(QSize, picture);
        QFETCH(QSize, small);

        const QImage image = SmallPicture(PlainPicture(Qt::red, picture), 48);

        QCOMPARE(image.size(), small);
        QCOMPARE(image.format(), QImage::Format_ARGB32_Premultiplied);
        QCOMPARE(image.pixelColor(0, 0), QColor(Qt::red));
        QCOMPARE(image.pixelColor(small.width() - 1, small.height() - 1), QColor(Qt::red));
    }

    void aPictureOfThatSizeIsItself()
    {
        QCOMPARE(SmallPicture(BusyPicture(QSize(48, 40)), 48), BusyPicture(QSize(48, 40)));
    }

    void eachPixelIsTheMeanOfItsPlace()
    {
        // Quarters of 4 by 4 pixels: what is sampled is each pixel once.
        QImage picture = PlainPicture(Qt::black, QSize(8, 8));
        for (int i = 0; i < 4; ++i)
            picture.setPixelColor(i, 0, Qt::white);
        picture.setPixelColor(7, 7, Qt::transparent);

        const QImage small = SmallPicture(picture, 2);

        QCOMPARE(small.pixelColor(0, 0), QColor(64, 64, 64));
        QCOMPARE(small.pixelColor(1, 0), QColor(Qt::black));
        QCOMPARE(small.pixelColor(0, 1), QColor(Qt::black));
        QCOMPARE(qAlpha(small.pixel(1, 1)), 239);
    }

    void withoutPictureOrRoomThereIsNone()
    {
        QVERIFY(SmallPicture(QImage(), 48).isNull());
        QVERIFY(SmallPicture(PlainPicture(), 0).isNull());
    }
};

NV_TEST_MAIN(tst_SmallPicture)
#include "tst_SmallPicture.moc"
