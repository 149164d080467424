// The frame that makes a line level: it lies within the picture, is as large as can be, and what it crops is
// level and opaque.

#include "StraightenFrame.h"

#include <QPainter>
#include <QtMath>

#include <cmath>

#include "CropContents.h"
#include "TestMain.h"

namespace
{

QRectF BoundsOf(const CropFrame& frame)
{
    return frame.GetOutline().boundingRect();
}

// White, with a black line through the middle.
QImage Lined(const QSize& size, double angle)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(size.width() / 2.0, size.height() / 2.0);
    painter.rotate(angle);
    painter.fillRect(QRectF(-1000, -3, 2000, 6), Qt::black);
    return image;
}

// The middle of what is black in a column.
double LineAt(const QImage& image, int x)
{
    double weight = 0;
    double sum = 0;
    for (int y = 0; y < image.height(); ++y)
    {
        const double dark = 255 - qGray(image.pixel(x, y));
        weight += dark;
        sum += dark * y;
    }
    return sum / weight;
}

} // namespace

class tst_StraightenFrame : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void slopeIsTowardsTheNearerOfLevelAndPlumb_data()
    {
        QTest::addColumn<QPointF>("way");
        QTest::addColumn<double>("slope");
        QTest::newRow("level") << QPointF(10, 0) << 0.0;
        QTest::newRow("level, backwards") << QPointF(-10, 0) << 0.0;
        QTest::newRow("downwards") << QPointF(10, 10) << 45.0;
        QTest::newRow("downwards, from its end") << QPointF(-10, -10) << 45.0;
        QTest::newRow("upwards") << QPointF(10, -10) << 45.0;
        QTest::newRow("upwards, from its end") << QPointF(-10, 10) << 45.0;
        QTest::newRow("a little upwards") << QPointF(10, -1) << -qRadiansToDegrees(std::atan(0.1));
        QTest::newRow("backwards, a little downwards")
            << QPointF(-10, 1) << -qRadiansToDegrees(std::atan(0.1));
        QTest::newRow("plumb") << QPointF(0, 10) << 0.0;
        QTest::newRow("plumb, from its end") << QPointF(0, -10) << 0.0;
        QTest::newRow("steep, leaning left") << QPointF(1, 10) << -qRadiansToDegrees(std::atan(0.1));
        QTest::newRow("steep, leaning right") << QPointF(-1, 10) << qRadiansToDegrees(std::atan(0.1));
        QTest::newRow("steep, from its end") << QPointF(1, -10) << qRadiansToDegrees(std::atan(0.1));
        QTest::newRow("no length") << QPointF(0, 0) << 0.0;
    }
    void slopeIsTowardsTheNearerOfLevelAndPlumb()
    {
        QFETCH(const QPointF, way);
        QFETCH(const double, slope);

        QVERIFY(qAbs(SlopeOf(QPointF(3, 4), QPointF(3, 4) + way) - slope) < 1e-9);
    }

    void frameLiesWithinThePicture_data()
    {
        QTest::addColumn<QSize>("size");
        for (const QSize& size : {QSize(300, 200), QSize(200, 300), QSize(100, 100), QSize(1000, 20),
                                  QSize(7, 900), QSize(1, 1), QSize(6000, 4000)})
            QTest::addRow("%d by %d", size.width(), size.height()) << size;
    }
    void frameLiesWithinThePicture()
    {
        QFETCH(const QSize, size);
        const QRectF picture = QRectF(QPointF(), size).adjusted(-1e-6, -1e-6, 1e-6, 1e-6);

        for (double angle = -90; angle <= 90; angle += 0.5)
        {
            const CropFrame frame = StraightenFrame(size, angle);
            QCOMPARE(frame.angle, angle);
            QVERIFY(frame.size.width() >= 1 && frame.size.height() >= 1);
            QVERIFY2(picture.contains(BoundsOf(frame)) || frame.size.width() == 1 || frame.size.height() == 1,
                     qPrintable(QString::number(angle)));
        }
    }

    void rightAnglesLoseNothing()
    {
        QCOMPARE(StraightenFrame(QSize(300, 200), 0), CropFrameOf(QRect(0, 0, 300, 200)));
        QCOMPARE(StraightenFrame(QSize(300, 200), 90).size, QSize(200, 300));
        QCOMPARE(StraightenFrame(QSize(301, 200), -90).size, QSize(200, 301));
        QCOMPARE(BoundsOf(StraightenFrame(QSize(301, 200), 90)).toRect(), QRect(0, 0, 301, 200));
    }

    // No frame of that angle whose sides are a little different has more pixels and lies within.
    void frameIsTheLargest()
    {
        const QSize size(300, 200);
        const QRectF picture(QPointF(), size);
        for (const double angle : {-80.0, -45.0, -12.0, -1.0, 3.0, 30.0, 45.0, 60.0, 89.0})
        {
            const CropFrame frame = StraightenFrame(size, angle);
            const int area = frame.size.width() * frame.size.height();
            for (int width = 1; width <= 360; ++width)
            {
                CropFrame other = frame;
                other.size = QSize(width, area / width + qMax(3, width / 20));
                if (other.size.height() <= 360)
                    QVERIFY2(!picture.contains(BoundsOf(other)) ||
                                 other.size.width() * other.size.height() < area * 1.05,
                             qPrintable(QString("%1: %2").arg(angle).arg(width)));
            }
        }
    }

    void croppedPictureIsLevelAndOpaque_data()
    {
        QTest::addColumn<double>("angle");
        for (const double angle : {-40.0, -5.0, -0.7, 2.0, 10.0, 33.0})
            QTest::addRow("%g", angle) << angle;
    }
    void croppedPictureIsLevelAndOpaque()
    {
        QFETCH(const double, angle);
        const QSize size(300, 200);
        const CropFrame frame = StraightenFrame(size, angle);

        const QImage image =
            CropContents({{Lined(size, angle)}, QImage()}, frame, frame.size).layers.value(0);

        QCOMPARE(image.size(), frame.size);
        QVERIFY(qAbs(LineAt(image, 5) - LineAt(image, image.width() - 6)) < 0.3);
        for (int y = 0; y < image.height(); ++y)
        {
            for (int x = 0; x < image.width(); ++x)
                QVERIFY2(qAlpha(image.pixel(x, y)) == 255, qPrintable(QString("%1,%2").arg(x).arg(y)));
        }
    }
};

NV_TEST_MAIN(tst_StraightenFrame)
#include "tst_StraightenFrame.moc"
