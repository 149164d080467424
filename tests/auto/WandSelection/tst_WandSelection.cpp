// What the magic wand selects: small pictures whose result a person can tell, and random ones against a plain
// search that goes from pixel to pixel.

#include "WandSelection.h"

#include <QQueue>
#include <QRandomGenerator>
#include <QTest>

#include <algorithm>
#include <cstdlib>
#include <vector>

#include "FloodFill.h"
#include "TestMain.h"

namespace
{
const QRgb WHITE = qRgb(255, 255, 255);
const QRgb GRAY = qRgb(100, 100, 100);
const QRgb BLACK = qRgb(0, 0, 0);

// One character a pixel: '.' white, '#' black, '+' gray.
QImage Drawn(const QStringList& rows)
{
    QImage image(rows.first().size(), rows.size(), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < rows.size(); ++y)
    {
        for (int x = 0; x < rows[y].size(); ++x)
            image.setPixel(x, y, rows[y][x] == '#' ? BLACK : rows[y][x] == '+' ? GRAY : WHITE);
    }
    return image;
}

// 'x' where it is selected, 'o' where it is partly.
QStringList Shown(const QImage& mask)
{
    QStringList rows;
    for (int y = 0; y < mask.height(); ++y)
    {
        QString row;
        for (int x = 0; x < mask.width(); ++x)
        {
            const int value = mask.constScanLine(y)[x];
            row += value == 255 ? 'x' : value == 0 ? '.' : 'o';
        }
        rows << row;
    }
    return rows;
}

bool IsLike(QRgb one, QRgb other, int tolerance)
{
    const auto isNear = [tolerance](int a, int b) { return std::abs(a - b) <= tolerance; };
    return isNear(qRed(one), qRed(other)) && isNear(qGreen(one), qGreen(other)) &&
        isNear(qBlue(one), qBlue(other)) && isNear(qAlpha(one), qAlpha(other));
}

QImage PlainSearch(const QImage& picture, const QPoint& seed, int tolerance)
{
    QImage mask(picture.size(), QImage::Format_Grayscale8);
    mask.fill(0);
    QQueue<QPoint> waiting;
    waiting.enqueue(seed);
    while (!waiting.isEmpty())
    {
        const QPoint point = waiting.dequeue();
        if (!mask.rect().contains(point) || mask.constScanLine(point.y())[point.x()] != 0 ||
            !IsLike(picture.pixel(point), picture.pixel(seed), tolerance))
            continue;
        mask.scanLine(point.y())[point.x()] = 255;
        for (const QPoint& way : {QPoint(1, 0), QPoint(-1, 0), QPoint(0, 1), QPoint(0, -1)})
            waiting.enqueue(point + way);
    }
    return mask;
}

// Random gray, with a few shades.
QImage Speckled(const QSize& size, int shades, QRandomGenerator& random)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < size.height(); ++y)
    {
        for (int x = 0; x < size.width(); ++x)
        {
            const int shade = random.bounded(shades) * 20;
            image.setPixel(x, y, qRgb(shade, shade, shade));
        }
    }
    return image;
}

// Three quarters are within 100 of the first pixel, and hang together.
QImage Sieve()
{
    QRandomGenerator random(3);
    QImage image = Speckled(QSize(900, 900), 8, random);
    image.setPixel(0, 0, BLACK);
    image.setPixel(1, 0, BLACK);
    image.setPixel(2, 0, BLACK);
    return image;
}

bool IsSame(const QImage& one, const QImage& other)
{
    return one.format() == QImage::Format_Grayscale8 && Shown(one) == Shown(other);
}
} // namespace

class tst_WandSelection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatHangsTogetherIsSelected()
    {
        const QImage picture = Drawn({"..#..", ".##..", "##...", "...#."});

        QCOMPARE(Shown(WandSelection(picture, QPoint(0, 0), {0, true})),
                 QStringList({"xx...", "x....", ".....", "....."}));
        QCOMPARE(Shown(WandSelection(picture, QPoint(4, 3), {0, true})),
                 QStringList({"...xx", "...xx", "..xxx", "xxx.x"}));
    }

    void cornersDoNotHangTogether()
    {
        const QImage picture = Drawn({".#.", "#.#", ".#."});

        QCOMPARE(Shown(WandSelection(picture, QPoint(1, 1), {0, true})), QStringList({"...", ".x.", "..."}));
    }

    void allThatIsAlikeIsSelectedIfNotContiguous()
    {
        const QImage picture = Drawn({".#.", "#.#", ".#+"});

        QCOMPARE(Shown(WandSelection(picture, QPoint(0, 0), {0, false})), QStringList({"x.x", ".x.", "x.."}));
    }

    void theToleranceIsInclusiveAndFromTheClickedPixel_data()
    {
        QTest::addColumn<int>("tolerance");
        QTest::addColumn<QStringList>("rows");
        QTest::newRow("none") << 0 << QStringList({"x.."});
        QTest::newRow("one short") << 99 << QStringList({"x.."});
        QTest::newRow("just enough") << 100 << QStringList({"xx."});
        QTest::newRow("not from the neighbour") << 200 << QStringList({"xx."});
        QTest::newRow("all") << 255 << QStringList({"xxx"});
    }
    void theToleranceIsInclusiveAndFromTheClickedPixel()
    {
        QFETCH(const int, tolerance);
        const QImage picture = Drawn({"#+."});

        QTEST(Shown(WandSelection(picture, QPoint(0, 0), {tolerance, true})), "rows");
    }

    void eachChannelCounts_data()
    {
        QTest::addColumn<QRgb>("other");
        QTest::newRow("red") << qRgba(40, 20, 20, 200);
        QTest::newRow("green") << qRgba(20, 40, 20, 200);
        QTest::newRow("blue") << qRgba(20, 20, 40, 200);
        QTest::newRow("opacity") << qRgba(20, 20, 20, 220);
    }
    void eachChannelCounts()
    {
        QFETCH(const QRgb, other);
        QImage picture(2, 1, QImage::Format_ARGB32_Premultiplied);
        auto* row = reinterpret_cast<QRgb*>(picture.scanLine(0));
        row[0] = qRgba(20, 20, 20, 200);
        row[1] = other;

        QCOMPARE(Shown(WandSelection(picture, QPoint(0, 0), {19, true})), QStringList({"x."}));
        QCOMPARE(Shown(WandSelection(picture, QPoint(0, 0), {20, true})), QStringList({"xx"}));
    }

    void onePixelIsAPicture()
    {
        QCOMPARE(Shown(WandSelection(Drawn({"."}), QPoint(0, 0), {0, true})), QStringList({"x"}));
    }

    void windingsAreFollowed()
    {
        const QImage picture = Drawn({"........", "#######.", "......#.", ".####.#.", ".#..#.#.", ".##.#.#.",
                                      "....#.#.", "#####.#.", "......#.", "#######.", "........"});

        const QImage mask = WandSelection(picture, QPoint(2, 4), {0, true});

        QVERIFY(IsSame(mask, PlainSearch(picture, QPoint(2, 4), 0)));
        QCOMPARE(mask.constScanLine(0)[0], uchar(0));
        QCOMPARE(mask.constScanLine(2)[0], uchar(255));
    }

    void longSpansKeepTheirEnds_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("wall");
        for (const int width : {7, 8, 9, 15, 16, 17, 18, 31, 33, 100})
        {
            for (const int wall : {0, 1, 5, 8, 9, 16, 17})
                QTest::addRow("%d wide, wall at %d", width, wall) << width << wall;
        }
    }
    // A wall of one pixel in the middle row, and the walk comes from every side.
    void longSpansKeepTheirEnds()
    {
        QFETCH(const int, width);
        QFETCH(const int, wall);
        QImage picture(width, 3, QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::white);
        if (wall < width)
            picture.setPixel(wall, 1, BLACK);

        for (int x = 0; x < width; ++x)
        {
            for (int y = 0; y < 3; ++y)
            {
                const QImage mask = WandSelection(picture, QPoint(x, y), {0, true});
                QVERIFY2(IsSame(mask, PlainSearch(picture, QPoint(x, y), 0)),
                         qPrintable(Shown(mask).join('\n')));
            }
        }
    }

    void randomPicturesAreAsThePlainSearchHasThem_data()
    {
        QTest::addColumn<quint32>("seed");
        for (quint32 seed = 1; seed <= 60; ++seed)
            QTest::addRow("%u", seed) << seed;
    }
    void randomPicturesAreAsThePlainSearchHasThem()
    {
        QFETCH(const quint32, seed);
        QRandomGenerator random(seed);
        const QSize size(1 + random.bounded(90), 1 + random.bounded(150));
        const QImage picture = Speckled(size, 2 + random.bounded(6), random);
        for (int i = 0; i < 5; ++i)
        {
            const QPoint start(random.bounded(size.width()), random.bounded(size.height()));
            const int tolerance = random.bounded(70);

            const QImage mask = WandSelection(picture, start, {tolerance, true});

            QVERIFY(IsSame(mask, PlainSearch(picture, start, tolerance)));
        }
    }

    void largePictureIsAsTheFillHasIt()
    {
        QRandomGenerator random(7);
        const QImage picture = Speckled(QSize(1203, 905), 3, random);
        FillSettings fill;
        fill.tolerance = 20;

        const QImage mask = WandSelection(picture, QPoint(600, 450), {20, true});

        QCOMPARE(mask, FloodMask(picture, QPoint(600, 450), fill));
    }

    void thePictureIsNotTouched()
    {
        const QImage picture = Drawn({"..#"});
        const QImage before = picture.copy();

        WandSelection(picture, QPoint(0, 0), {0, true});

        QCOMPARE(picture, before);
    }

    void badInputGivesNoMask_data()
    {
        QTest::addColumn<QImage>("picture");
        QTest::addColumn<QPoint>("seed");
        QTest::addColumn<int>("tolerance");
        const QImage picture = Drawn({"..", ".."});
        QTest::newRow("left of it") << picture << QPoint(-1, 0) << 0;
        QTest::newRow("below it") << picture << QPoint(0, 2) << 0;
        QTest::newRow("tolerance too small") << picture << QPoint(0, 0) << -1;
        QTest::newRow("tolerance too large") << picture << QPoint(0, 0) << 256;
        QTest::newRow("no picture") << QImage() << QPoint(0, 0) << 0;
        QTest::newRow("another format") << picture.convertToFormat(QImage::Format_RGB32) << QPoint(0, 0) << 0;
    }
    void badInputGivesNoMask()
    {
        QFETCH(const QImage, picture);
        QFETCH(const QPoint, seed);
        QFETCH(const int, tolerance);

        QVERIFY(WandSelection(picture, seed, {tolerance, true}).isNull());
        QVERIFY(WandSelection(picture, seed, {tolerance, false}).isNull());
    }

    void progressRises()
    {
        std::vector<int> told;

        WandSelection(Sieve(), QPoint(0, 0), {100, true},
                      [&](int percent)
                      {
                          told.push_back(percent);
                          return true;
                      });

        QVERIFY(told.size() > 10);
        QCOMPARE(told.front(), 0);
        QVERIFY(told.back() > 80 && told.back() <= 100);
        QVERIFY(std::is_sorted(told.begin(), told.end()));
    }

    void cancelledWorkGivesNoMask_data()
    {
        QTest::addColumn<int>("question");
        QTest::newRow("at once") << 1;
        QTest::newRow("on the way") << 3;
    }
    void cancelledWorkGivesNoMask()
    {
        QFETCH(const int, question);
        int asked = 0;

        const QImage mask =
            WandSelection(Sieve(), QPoint(0, 0), {100, true}, [&](int) { return ++asked < question; });

        QVERIFY(mask.isNull());
        QCOMPARE(asked, question);
    }
};

NV_TEST_MAIN(tst_WandSelection)
#include "tst_WandSelection.moc"
