// The sample picture: the same each time, of any size, and a picture at all.

#include "SamplePicture.h"

#include "ProbeImage.h"
#include "TestMain.h"

class tst_SamplePicture : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theSameSizeGivesTheSamePixels()
    {
        QCOMPARE(DrawSamplePicture(QSize(320, 240)), DrawSamplePicture(QSize(320, 240)));
    }

    void itIsAsLargeAsAsked()
    {
        QCOMPARE(DrawSamplePicture().size(), QSize(4000, 3000));
        QCOMPARE(DrawSamplePicture(QSize(1, 1)).size(), QSize(1, 1));
        QVERIFY(DrawSamplePicture(QSize(0, 10)).isNull());
    }

    void itHasASkyAndAForeground()
    {
        const QImage image = DrawSamplePicture(QSize(400, 300));

        QCOMPARE(image.format(), QImage::Format_RGB32);
        QVERIFY(ProbeImage(image).ColorCount(5000) >= 5000);
        const QColor sky = image.pixelColor(5, 5);
        QVERIFY(sky.blue() > sky.red() && sky.blue() > sky.green());
        const QColor ground = image.pixelColor(200, 295);
        QVERIFY(ground.green() > ground.blue() && ground.lightness() < 100);
    }
};

NV_TEST_MAIN(tst_SamplePicture)
#include "tst_SamplePicture.moc"
