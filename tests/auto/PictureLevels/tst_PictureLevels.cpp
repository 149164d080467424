// A picture shown large and small, moved and bent, from levels of itself.

#include "PictureLevels.h"

#include <QtTest>

#include "TestMain.h"

namespace
{

QImage Clear(const QSize& size = QSize(300, 200))
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

// Red at the left, blue at the right.
QImage Halves(const QSize& size)
{
    QImage image = Clear(size);
    for (int y = 0; y < size.height(); ++y)
    {
        for (int x = 0; x < size.width(); ++x)
            image.setPixelColor(x, y, x < size.width() / 2 ? Qt::red : Qt::blue);
    }
    return image;
}

} // namespace

class tst_PictureLevels : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aWholeMoveShowsItPixelByPixel();
    void itLiesOverWhatIsThere();
    void sizesAreKeptAtAnyScale_data();
    void sizesAreKeptAtAnyScale();
    void aTinyPictureIsShownTinier();
    void aTurnIsShown();
    void nothingIsDrawnWithoutAPicture();
};

void tst_PictureLevels::aWholeMoveShowsItPixelByPixel()
{
    const QImage picture = Halves(QSize(50, 40));
    PictureLevels levels;
    levels.SetPicture({picture, QPoint(7, 8)});
    QImage image = Clear();

    levels.Draw(image, QTransform::fromTranslate(-3, 100));

    QCOMPARE(image.copy(4, 108, 50, 40), picture);
    QCOMPARE(qAlpha(image.pixel(3, 110)), 0);
    QCOMPARE(qAlpha(image.pixel(54, 110)), 0);
}

void tst_PictureLevels::itLiesOverWhatIsThere()
{
    QImage veil = Clear(QSize(50, 40));
    veil.fill(QColor(0, 0, 0, 128));
    PictureLevels levels;
    levels.SetPicture({veil, QPoint(0, 0)});
    QImage image = Clear();
    image.fill(Qt::white);

    levels.Draw(image, QTransform());

    QVERIFY(qAbs(image.pixelColor(20, 20).red() - 127) <= 1);
    QCOMPARE(image.pixelColor(20, 20).alpha(), 255);
    QCOMPARE(image.pixelColor(60, 20), QColor(Qt::white));
}

void tst_PictureLevels::sizesAreKeptAtAnyScale_data()
{
    QTest::addColumn<double>("scale");
    for (double scale : {3.0, 1.0, 0.7, 0.5, 0.26, 0.1, 0.03})
        QTest::addRow("%g", scale) << scale;
}

void tst_PictureLevels::sizesAreKeptAtAnyScale()
{
    QFETCH(const double, scale);
    // Odd sides at several levels.
    const QSize size(1003, 811);
    PictureLevels levels;
    levels.SetPicture({Halves(size), QPoint(0, 0)});
    QImage image = Clear(QSize(qRound(size.width() * scale) + 10, qRound(size.height() * scale) + 10));

    levels.Draw(image, QTransform::fromScale(scale, scale));

    const int width = qRound(size.width() * scale);
    const int height = qRound(size.height() * scale);
    QCOMPARE(image.pixelColor(2, 2), QColor(Qt::red));
    QCOMPARE(image.pixelColor(width - 3, height - 3), QColor(Qt::blue));
    QCOMPARE(image.pixelColor(width / 2 - 3, height / 2), QColor(Qt::red));
    QCOMPARE(image.pixelColor(width / 2 + 3, height / 2), QColor(Qt::blue));
    QCOMPARE(qAlpha(image.pixel(width + 2, 2)), 0);
    QCOMPARE(qAlpha(image.pixel(2, height + 2)), 0);
}

void tst_PictureLevels::aTinyPictureIsShownTinier()
{
    for (const QSize& size : {QSize(1, 1), QSize(1, 300), QSize(3, 2)})
    {
        PictureLevels levels;
        levels.SetPicture({Halves(size), QPoint(0, 0)});
        QImage image = Clear();
        levels.Draw(image, QTransform::fromScale(0.01, 0.01));
        levels.Draw(image, QTransform::fromScale(40, 40));
        QCOMPARE(qAlpha(image.pixel(20, 20)), 255);
    }
}

void tst_PictureLevels::aTurnIsShown()
{
    PictureLevels levels;
    levels.SetPicture({Halves(QSize(100, 60)), QPoint(100, 50)});
    QImage image = Clear();

    levels.Draw(image, QTransform().translate(150, 80).rotate(90).translate(-150, -80));

    QCOMPARE(image.pixelColor(150, 40), QColor(Qt::red));
    QCOMPARE(image.pixelColor(150, 120), QColor(Qt::blue));
    QCOMPARE(qAlpha(image.pixel(110, 80)), 0);
}

void tst_PictureLevels::nothingIsDrawnWithoutAPicture()
{
    PictureLevels levels;
    QImage image = Clear();

    levels.Draw(image, QTransform());
    levels.SetPicture({Halves(QSize(20, 20)), QPoint(0, 0)});
    levels.Clear();
    levels.Draw(image, QTransform());

    QCOMPARE(image, Clear());
}

NV_TEST_MAIN(tst_PictureLevels)
#include "tst_PictureLevels.moc"
