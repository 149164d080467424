// The mean colour of a square of pixels, against a plain count of its own.

#include "ColorSampling.h"

#include "TestMain.h"

namespace
{

// Opaque, each pixel another colour.
QImage Numbered()
{
    QImage image(20, 10, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < 10; ++y)
    {
        for (int x = 0; x < 20; ++x)
            image.setPixelColor(x, y, QColor(x * 12, y * 25, (x * y) % 256));
    }
    return image;
}

QColor Mean(const QImage& image, const QRect& square)
{
    double red = 0;
    double green = 0;
    double blue = 0;
    for (int y = square.top(); y <= square.bottom(); ++y)
    {
        for (int x = square.left(); x <= square.right(); ++x)
        {
            const QColor color = image.pixelColor(x, y);
            red += color.red();
            green += color.green();
            blue += color.blue();
        }
    }
    const int count = square.width() * square.height();
    return QColor(qRound(red / count), qRound(green / count), qRound(blue / count));
}

} // namespace

class tst_ColorSampling : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void meanIsThatOfTheSquare_data()
    {
        QTest::addColumn<QPoint>("pixel");
        QTest::addColumn<int>("side");
        QTest::addColumn<QRect>("square");
        QTest::newRow("point") << QPoint(7, 4) << 1 << QRect(7, 4, 1, 1);
        QTest::newRow("3x3") << QPoint(7, 4) << 3 << QRect(6, 3, 3, 3);
        QTest::newRow("5x5") << QPoint(7, 4) << 5 << QRect(5, 2, 5, 5);
        QTest::newRow("7x7") << QPoint(7, 4) << 7 << QRect(4, 1, 7, 7);
        QTest::newRow("7x7, upper left corner") << QPoint(0, 0) << 7 << QRect(0, 0, 4, 4);
        QTest::newRow("5x5, lower right corner") << QPoint(19, 9) << 5 << QRect(17, 7, 3, 3);
        QTest::newRow("larger than the picture") << QPoint(3, 3) << 99 << QRect(0, 0, 20, 10);
        QTest::newRow("no side") << QPoint(7, 4) << 0 << QRect(7, 4, 1, 1);
        QTest::newRow("negative side") << QPoint(7, 4) << -3 << QRect(7, 4, 1, 1);
    }
    void meanIsThatOfTheSquare()
    {
        QFETCH(const QPoint, pixel);
        QFETCH(const int, side);
        QFETCH(const QRect, square);

        QCOMPARE(SampleColor(Numbered(), pixel, side), Mean(Numbered(), square));
    }

    void outsideThereIsNoColor_data()
    {
        QTest::addColumn<QPoint>("pixel");
        QTest::newRow("left") << QPoint(-1, 4);
        QTest::newRow("below") << QPoint(4, 10);
        QTest::newRow("far") << QPoint(100000000, -100000000);
    }
    void outsideThereIsNoColor()
    {
        QFETCH(const QPoint, pixel);

        QVERIFY(!SampleColor(Numbered(), pixel, 7).isValid());
        QVERIFY(!SampleColor(QImage(), QPoint(0, 0), 1).isValid());
    }

    void whatIsTransparentDoesNotCount()
    {
        QImage image(3, 3, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        image.setPixelColor(0, 0, QColor(200, 100, 50));
        image.setPixelColor(2, 2, QColor(200, 100, 50));

        const QColor color = SampleColor(image, QPoint(1, 1), 3);

        QCOMPARE(color.rgb(), qRgb(200, 100, 50));
        QCOMPARE(color.alpha(), qRound(2 * 255 / 9.0));
        QCOMPARE(SampleColor(image, QPoint(1, 1), 1), QColor(0, 0, 0, 0));
    }

    void halfTransparentColorIsItsOwn()
    {
        QImage image(5, 5, QImage::Format_ARGB32_Premultiplied);
        image.fill(QColor(255, 128, 0, 128));

        const QColor color = SampleColor(image, QPoint(2, 2), 5);

        QVERIFY(qAbs(color.red() - 255) <= 1 && qAbs(color.green() - 128) <= 1 && color.blue() == 0);
        QCOMPARE(color.alpha(), 128);
    }
};

NV_TEST_MAIN(tst_ColorSampling)
#include "tst_ColorSampling.moc"
