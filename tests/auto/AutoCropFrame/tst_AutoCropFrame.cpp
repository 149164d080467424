// The frame about what is no background: known pictures, and a straightforward count beside it.

#include "AutoCropFrame.h"

#include <QPainter>
#include <QRandomGenerator>
#include <QTest>

#include <atomic>

#include "BusyThreads.h"
#include "TestMain.h"

namespace
{

const int AllSides = 15;

QRgb At(const QImage& image, int x, int y)
{
    return reinterpret_cast<const QRgb*>(image.constScanLine(y))[x];
}

void Set(QImage& image, int x, int y, QRgb premultiplied)
{
    reinterpret_cast<QRgb*>(image.scanLine(y))[x] = premultiplied;
}

// A rectangle on a ground.
QImage Framed(const QSize& size, const QColor& ground, const QRect& rect, const QColor& color)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(ground);
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(rect, color);
    return image;
}

AutoCropSettings With(int background, int tolerance = 15, int sides = AllSides)
{
    AutoCropSettings settings;
    settings.background = AutoCropSettings::Background(background);
    settings.sides = sides;
    settings.tolerance = tolerance;
    return settings;
}

bool IsLike(QRgb one, QRgb other, int tolerance)
{
    for (const int shift : {0, 8, 16, 24})
    {
        if (qAbs(int((one >> shift) & 0xff) - int((other >> shift) & 0xff)) > tolerance)
            return false;
    }
    return true;
}

QRgb CountedCorner(const QImage& image, int tolerance)
{
    const int r = image.width() - 1;
    const int b = image.height() - 1;
    const QVector<QRgb> corners = {At(image, 0, 0), At(image, r, 0), At(image, r, b), At(image, 0, b)};
    int best = 0;
    QRgb chosen = 0;
    for (const QRgb corner : corners)
    {
        int alike = 0;
        for (const QRgb other : corners)
            alike += IsLike(corner, other, tolerance) ? 1 : 0;
        if (alike > best)
        {
            best = alike;
            chosen = corner;
        }
    }
    return chosen;
}

// Takes a row or a column off as long as all of it is background.
QRect Counted(const QImage& image, const AutoCropSettings& settings)
{
    QRgb ground = At(image, 0, 0);
    if (settings.background == AutoCropSettings::BottomRight)
        ground = At(image, image.width() - 1, image.height() - 1);
    if (settings.background == AutoCropSettings::Auto)
        ground = CountedCorner(image, settings.tolerance);
    const auto isGround = [&](int x, int y)
    {
        return settings.background == AutoCropSettings::Transparent
            ? qAlpha(At(image, x, y)) <= settings.tolerance
            : IsLike(At(image, x, y), ground, settings.tolerance);
    };
    const auto isGroundIn = [&](const QRect& rect)
    {
        for (int y = rect.top(); y <= rect.bottom(); ++y)
        {
            for (int x = rect.left(); x <= rect.right(); ++x)
            {
                if (!isGround(x, y))
                    return false;
            }
        }
        return true;
    };
    QRect frame = image.rect();
    if (isGroundIn(frame))
        return QRect();
    while (settings.sides & AutoCropSettings::Left && isGroundIn(QRect(frame.left(), 0, 1, image.height())))
        frame.setLeft(frame.left() + 1);
    while (settings.sides & AutoCropSettings::Right && isGroundIn(QRect(frame.right(), 0, 1, image.height())))
        frame.setRight(frame.right() - 1);
    while (settings.sides & AutoCropSettings::Top && isGroundIn(QRect(0, frame.top(), image.width(), 1)))
        frame.setTop(frame.top() + 1);
    while (settings.sides & AutoCropSettings::Bottom &&
           isGroundIn(QRect(0, frame.bottom(), image.width(), 1)))
        frame.setBottom(frame.bottom() - 1);
    return frame;
}

} // namespace

class tst_AutoCropFrame : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theGroundIsCutOnEachSide_data()
    {
        QTest::addColumn<int>("background");
        QTest::addColumn<QColor>("ground");
        QTest::newRow("transparent") << int(AutoCropSettings::Transparent) << QColor(Qt::transparent);
        QTest::newRow("left top") << int(AutoCropSettings::LeftTop) << QColor(Qt::white);
        QTest::newRow("bottom right") << int(AutoCropSettings::BottomRight) << QColor(30, 90, 20);
        QTest::newRow("automatic, a colour") << int(AutoCropSettings::Auto) << QColor(Qt::black);
        QTest::newRow("automatic, transparent") << int(AutoCropSettings::Auto) << QColor(Qt::transparent);
        QTest::newRow("automatic, half transparent") << int(AutoCropSettings::Auto) << QColor(200, 9, 9, 128);
    }

    void theGroundIsCutOnEachSide()
    {
        QFETCH(int, background);
        QFETCH(QColor, ground);
        const QImage image = Framed(QSize(300, 200), ground, QRect(11, 23, 140, 60), QColor(120, 130, 250));

        QCOMPARE(AutoCropFrame(image, With(background)), QRect(11, 23, 140, 60));
    }

    void onlyTheSidesThatAreAskedForAreCut()
    {
        const QImage image = Framed(QSize(50, 40), Qt::white, QRect(10, 12, 20, 15), Qt::red);
        for (int sides = 0; sides <= AllSides; ++sides)
        {
            const QRect expected(QPoint(sides & 1 ? 10 : 0, sides & 2 ? 12 : 0),
                                 QPoint(sides & 4 ? 29 : 49, sides & 8 ? 26 : 39));
            QCOMPARE(AutoCropFrame(image, With(AutoCropSettings::Auto, 15, sides)), expected);
        }
    }

    void theCornersMayBeOfDifferentColours()
    {
        QImage image = Framed(QSize(60, 60), Qt::white, QRect(20, 20, 10, 10), Qt::blue);
        Set(image, 0, 0, qRgb(255, 0, 0));

        QCOMPARE(AutoCropFrame(image, With(AutoCropSettings::Auto)), QRect(0, 0, 30, 30));
        QCOMPARE(AutoCropFrame(image, With(AutoCropSettings::BottomRight)), QRect(0, 0, 30, 30));
        QCOMPARE(AutoCropFrame(image, With(AutoCropSettings::LeftTop)), image.rect());
    }

    void ofCornersThatAllDifferTheFirstCounts()
    {
        QImage image = Framed(QSize(20, 20), Qt::gray, QRect(5, 5, 2, 2), Qt::blue);
        Set(image, 0, 0, qRgb(255, 0, 0));
        Set(image, 19, 0, qRgb(0, 255, 0));
        Set(image, 19, 19, qRgb(0, 0, 255));
        Set(image, 0, 19, qRgb(255, 255, 0));

        QCOMPARE(AutoCropFrame(image, With(AutoCropSettings::Auto)),
                 AutoCropFrame(image, With(AutoCropSettings::LeftTop)));
    }

    void theToleranceIsAsLargeAsItSays_data()
    {
        QTest::addColumn<int>("tolerance");
        QTest::addColumn<bool>("isLeft");
        QTest::newRow("less than the difference") << 9 << true;
        QTest::newRow("the difference") << 10 << false;
        QTest::newRow("all") << 255 << false;
    }

    void theToleranceIsAsLargeAsItSays()
    {
        QFETCH(int, tolerance);
        QFETCH(bool, isLeft);
        QImage image = Framed(QSize(30, 30), QColor(100, 100, 100), QRect(), Qt::black);
        Set(image, 14, 15, qRgb(100, 110, 100));

        const QRect frame = AutoCropFrame(image, With(AutoCropSettings::LeftTop, tolerance));

        QCOMPARE(frame, isLeft ? QRect(14, 15, 1, 1) : QRect());
    }

    void faintPixelsAreTransparentWithinTheTolerance()
    {
        QImage image = Framed(QSize(30, 30), Qt::transparent, QRect(10, 10, 5, 5), Qt::red);
        Set(image, 3, 4, qRgba(8, 8, 8, 15));

        QCOMPARE(AutoCropFrame(image, With(AutoCropSettings::Transparent, 15)), QRect(10, 10, 5, 5));
        QCOMPARE(AutoCropFrame(image, With(AutoCropSettings::Transparent, 14)),
                 QRect(QPoint(3, 4), QPoint(14, 14)));
    }

    void whatIsAllBackgroundHasNoFrame()
    {
        const QImage image = Framed(QSize(40, 30), QColor(20, 30, 40), QRect(), Qt::black);
        for (int background = AutoCropSettings::LeftTop; background <= AutoCropSettings::Auto; ++background)
        {
            QVERIFY(AutoCropFrame(image, With(background)).isNull());
            QVERIFY(AutoCropFrame(image, With(background, 15, 0)).isNull());
        }
        QCOMPARE(AutoCropFrame(image, With(AutoCropSettings::Transparent)), image.rect());
    }

    void onePixelIsItsOwnBackground()
    {
        const QImage image = Framed(QSize(1, 1), Qt::red, QRect(), Qt::black);
        QVERIFY(AutoCropFrame(image, With(AutoCropSettings::Auto)).isNull());
        QCOMPARE(AutoCropFrame(image, With(AutoCropSettings::Transparent)), QRect(0, 0, 1, 1));
    }

    void whatIsNoPictureHasNoFrame()
    {
        QVERIFY(AutoCropFrame(QImage(), With(AutoCropSettings::Auto)).isNull());
        QVERIFY(AutoCropFrame(QImage(9, 9, QImage::Format_RGB888), With(AutoCropSettings::Auto)).isNull());
    }

    void itIsWhatAStraightforwardCountGives()
    {
        QRandomGenerator random(5);
        for (int i = 0; i < 1500; ++i)
        {
            const QSize size(1 + random.bounded(30), 1 + random.bounded(150));
            const QColor grounds[] = {Qt::white, Qt::transparent, QColor(90, 80, 70), QColor(0, 0, 200, 100)};
            QImage image = Framed(size, grounds[random.bounded(4)], QRect(), Qt::black);
            // Mostly few pixels, some of them close to the ground, and a corner now and then.
            for (int n = random.bounded(6); n > 0; --n)
                Set(image, random.bounded(size.width()), random.bounded(size.height()),
                    random.bounded(2) ? qPremultiply(random.generate())
                                      : At(image, 0, 0) ^ (random.bounded(32) << 8 * random.bounded(3)));
            if (random.bounded(4) == 0)
                Set(image, size.width() - 1, 0, qPremultiply(random.generate()));
            const AutoCropSettings settings =
                With(random.bounded(4), random.bounded(3) ? random.bounded(40) : random.bounded(256),
                     random.bounded(16));

            QCOMPARE(AutoCropFrame(image, settings), Counted(image, settings));
        }
    }

    void cancelledItGivesNothing()
    {
        const QImage image = Framed(QSize(10, 2000), Qt::white, QRect(2, 2, 3, 3), Qt::black);
        std::atomic<int> calls{0};

        const QRect frame =
            AutoCropFrame(image, With(AutoCropSettings::Auto), [&calls](int) { return ++calls < 4; });

        QVERIFY(frame.isNull());
        QVERIFY(calls >= 4);
    }

    void theNumberOfThreadsChangesNothing()
    {
        const QImage image = Framed(QSize(90, 900), Qt::white, QRect(20, 300, 30, 400), Qt::black);
        const BusyThreads busy;

        QCOMPARE(AutoCropFrame(image, With(AutoCropSettings::Auto)), QRect(20, 300, 30, 400));
    }
};

NV_TEST_MAIN(tst_AutoCropFrame)

#include "tst_AutoCropFrame.moc"
