// The drawn test pictures: the same each time, and with what they say they have where they say it is.

#include "TourPictures.h"

#include <cmath>

#include "TestMain.h"

namespace
{

const QSize PictureSize(1200, 800);

int Redness(QRgb color)
{
    return qRed(color) - qMax(qGreen(color), qBlue(color));
}

QRgb At(const QImage& image, const QPointF& point)
{
    return image.pixel(point.toPoint());
}

} // namespace

class tst_TourPictures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachIsOpaqueAndAlwaysTheSame_data()
    {
        QTest::addColumn<QImage>("one");
        QTest::addColumn<QImage>("other");
        QTest::newRow("portrait") << DrawPortrait().image << DrawPortrait().image;
        QTest::newRow("print") << DrawScratchedPrint().image << DrawScratchedPrint().image;
        QTest::newRow("lighthouse") << DrawLighthouse().image << DrawLighthouse().image;
        QTest::newRow("balloon") << DrawBalloon().image << DrawBalloon().image;
    }
    void eachIsOpaqueAndAlwaysTheSame()
    {
        QFETCH(QImage, one);
        QFETCH(QImage, other);

        QCOMPARE(one.size(), PictureSize);
        QCOMPARE(one.format(), QImage::Format_RGB32);
        QCOMPARE(one, other);
    }

    void pupilsAreRedUpToTheirRadiusAndSkinIsNot()
    {
        const PortraitPicture picture = DrawPortrait();

        QCOMPARE(picture.pupils.size(), 2);
        for (const QPointF& pupil : picture.pupils)
        {
            const double edge = picture.pupilRadius - 2;
            for (const QPointF& way : {QPointF(0, 0), QPointF(edge, 0), QPointF(0, edge), QPointF(-edge, 0)})
                QVERIFY(Redness(At(picture.image, pupil + way)) > 100);
            QVERIFY(Redness(At(picture.image, pupil + QPointF(picture.pupilRadius + 4, 0))) < 60);
            QVERIFY(qGray(At(picture.image, pupil + picture.highlight)) > 230);
        }
        QVERIFY(Redness(At(picture.image, picture.cheek)) > 30);
        QVERIFY(Redness(At(picture.image, picture.cheek)) < 100);
    }

    void onlyScratchesAndDustTellThePrintFromTheWholeOne()
    {
        const ScratchedPicture picture = DrawScratchedPrint();

        QVector<QPointF> damaged = picture.scratch + picture.dust;
        for (const QPointF& point : qAsConst(damaged))
            QVERIFY(std::abs(qGray(At(picture.image, point)) - qGray(At(picture.whole, point))) > 30);
        int different = 0;
        for (int y = 0; y < PictureSize.height(); ++y)
        {
            for (int x = 0; x < PictureSize.width(); ++x)
                different += picture.image.pixel(x, y) != picture.whole.pixel(x, y);
        }
        QVERIFY(different < PictureSize.width() * PictureSize.height() / 50);
    }

    void stripesHaveSharpEdges()
    {
        const LighthousePicture picture = DrawLighthouse();

        QCOMPARE(picture.stripes.size(), 6);
        for (int i = 0; i < picture.stripes.size(); ++i)
        {
            const QRgb above = At(picture.image, picture.stripes.at(i) - QPointF(0, 5));
            const QRgb below = At(picture.image, picture.stripes.at(i) + QPointF(0, 5));
            QCOMPARE(Redness(above) > 80, i % 2 == 1);
            QCOMPARE(Redness(below) > 80, i % 2 == 0);
        }
        QVERIFY(qGray(At(picture.image, picture.sky)) > 150);
        QVERIFY(qGray(At(picture.image, picture.rock)) < 80);
        QVERIFY(qGray(At(picture.image, picture.lamp)) > 200);
    }

    void everyOtherPanelHasTheSameColour()
    {
        const BalloonPicture picture = DrawBalloon();

        QCOMPARE(picture.panels.size(), 7);
        for (int i = 0; i < picture.panels.size(); ++i)
        {
            const QRgb color = At(picture.image, picture.panels.at(i));
            const QRgb same = At(picture.image, picture.panels.at(i % 2));
            const QRgb other = At(picture.image, picture.panels.at((i + 1) % 2));
            QVERIFY(std::abs(qGreen(color) - qGreen(same)) <= 10);
            QVERIFY(std::abs(qGreen(color) - qGreen(other)) > 80);
        }
    }

    void panelsAreNotQuiteEven()
    {
        const BalloonPicture picture = DrawBalloon();

        QVector<QRgb> colors;
        for (int x = -20; x <= 20; ++x)
        {
            const QRgb color = At(picture.image, picture.panels.at(3) + QPointF(x, 0));
            if (!colors.contains(color))
                colors += color;
        }
        QVERIFY(colors.size() >= 5);
    }
};

NV_TEST_MAIN(tst_TourPictures)
#include "tst_TourPictures.moc"
