// Red eyes, drawn: what becomes gray, what stays, and what is no eye at all.

#include <QTest>

#include <QPainter>

#include <algorithm>
#include <climits>
#include <cmath>
#include <functional>
#include <limits>

#include "RedEye.h"
#include "TestMain.h"

namespace
{
const QColor SKIN(222, 172, 142);
const QColor DARK_SKIN(141, 85, 36);
const QColor EYE_WHITE(240, 236, 232);
const QColor BLUE_IRIS(70, 110, 160);
const QColor BROWN_IRIS(110, 70, 35);
const QColor FLASH_RED(200, 40, 50);
const QPoint CENTER(150, 100);
const int PUPIL = 20;
// In the middle of each part.
const QPoint HIGHLIGHT(144, 93);
const QPoint IRIS(150, 126);
const QPoint WHITE(192, 100);
const QPoint CHEEK(150, 190);

QRgb PixelOf(const QImage& image, const QPoint& at)
{
    return reinterpret_cast<const QRgb*>(image.constScanLine(at.y()))[at.x()];
}

QImage Face(const QColor& pupil = FLASH_RED, const QColor& iris = BLUE_IRIS, const QColor& skin = SKIN)
{
    QImage face(300, 200, QImage::Format_ARGB32_Premultiplied);
    face.fill(skin);
    QPainter painter(&face);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(EYE_WHITE);
    painter.drawEllipse(CENTER, 52, 38);
    painter.setBrush(iris);
    painter.drawEllipse(CENTER, 32, 32);
    painter.setBrush(pupil);
    painter.drawEllipse(CENTER, PUPIL, PUPIL);
    painter.setBrush(Qt::white);
    painter.drawEllipse(HIGHLIGHT, 4, 4);
    return face;
}

double DistanceToCenter(int x, int y)
{
    return std::hypot(x + 0.5 - CENTER.x(), y + 0.5 - CENTER.y());
}

bool IsGray(QRgb pixel)
{
    return qRed(pixel) == qGreen(pixel) && qGreen(pixel) == qBlue(pixel);
}

QImage Selection(const QSize& size, const std::function<int(int x, int y)>& value)
{
    QImage selection(size, QImage::Format_Grayscale8);
    for (int y = 0; y < size.height(); ++y)
    {
        for (int x = 0; x < size.width(); ++x)
            selection.scanLine(y)[x] = uchar(value(x, y));
    }
    return selection;
}
} // namespace

class tst_RedEye : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thePupilBecomesNeutral_data();
    void thePupilBecomesNeutral();
    void allElseStays_data();
    void allElseStays();
    void theRimOfTheHighlightLosesItsRed();
    void aPaleReflectionWithinThePupilLosesItsRed();
    void noRedRingIsLeftAroundThePupil();
    void grainDoesNotTakeThePupilApart();
    void aClickBesideThePupilWorks_data();
    void aClickBesideThePupilWorks();
    void onlyTheEyeThatWasClickedChanges();
    void theLevelDecidesWhatIsRed_data();
    void theLevelDecidesWhatIsRed();
    void theTilesBringTheLayerBack();
    void onlyTouchedTilesAreKept();
    void aSecondClickChangesNothing();
    void nothingRedGivesNothing();
    void aRedWallStaysRed_data();
    void aRedWallStaysRed();
    void theSelectionLimitsWhatChanges();
    void whatIsPartlySelectedChangesInPart();
    void aTranslucentPupilKeepsItsOpacity();
    void aPictureOfOnePixelIsNoEye();
    void whatDoesNotFitDoesNothing_data();
    void whatDoesNotFitDoesNothing();
};

void tst_RedEye::thePupilBecomesNeutral_data()
{
    QTest::addColumn<QColor>("pupil");
    QTest::addColumn<QColor>("iris");
    QTest::newRow("deep red in blue") << QColor(200, 40, 50) << BLUE_IRIS;
    QTest::newRow("deep red in brown") << QColor(200, 40, 50) << BROWN_IRIS;
    QTest::newRow("pale red in blue") << QColor(230, 90, 100) << BLUE_IRIS;
    QTest::newRow("dim red in brown") << QColor(120, 30, 40) << BROWN_IRIS;
    QTest::newRow("pink") << QColor(220, 70, 110) << BROWN_IRIS;
}

void tst_RedEye::thePupilBecomesNeutral()
{
    QFETCH(QColor, pupil);
    QFETCH(QColor, iris);
    QImage layer = Face(pupil, iris);

    QVERIFY(!RemoveRedEye(layer, CENTER, 1.0).isEmpty());

    const int gray = (pupil.green() + pupil.blue()) / 2;
    QCOMPARE(PixelOf(layer, CENTER), qRgb(gray, gray, gray));
    for (int y = 0; y < layer.height(); ++y)
    {
        for (int x = 0; x < layer.width(); ++x)
        {
            const QPoint toHighlight = QPoint(x, y) - HIGHLIGHT;
            if (DistanceToCenter(x, y) < PUPIL - 2.0 && toHighlight.manhattanLength() > 8)
                QVERIFY2(IsGray(PixelOf(layer, QPoint(x, y))),
                         qPrintable(QStringLiteral("%1, %2").arg(x).arg(y)));
        }
    }
}

void tst_RedEye::allElseStays_data()
{
    QTest::addColumn<QColor>("iris");
    QTest::addColumn<QColor>("skin");
    QTest::newRow("blue eye, light skin") << BLUE_IRIS << SKIN;
    QTest::newRow("brown eye, light skin") << BROWN_IRIS << SKIN;
    QTest::newRow("brown eye, dark skin") << BROWN_IRIS << DARK_SKIN;
    QTest::newRow("green eye, ruddy skin") << QColor(80, 120, 70) << QColor(205, 120, 105);
}

void tst_RedEye::allElseStays()
{
    QFETCH(QColor, iris);
    QFETCH(QColor, skin);
    const QImage before = Face(FLASH_RED, iris, skin);
    QImage layer = before.copy();

    RemoveRedEye(layer, CENTER, 1.0);

    QCOMPARE(PixelOf(layer, HIGHLIGHT), qRgb(255, 255, 255));
    QCOMPARE(PixelOf(layer, IRIS), iris.rgb());
    QCOMPARE(PixelOf(layer, WHITE), EYE_WHITE.rgb());
    QCOMPARE(PixelOf(layer, CHEEK), skin.rgb());
    for (int y = 0; y < layer.height(); ++y)
    {
        for (int x = 0; x < layer.width(); ++x)
        {
            if (DistanceToCenter(x, y) > PUPIL + 4.0)
                QCOMPARE(PixelOf(layer, QPoint(x, y)), PixelOf(before, QPoint(x, y)));
        }
    }
}

void tst_RedEye::theRimOfTheHighlightLosesItsRed()
{
    QImage layer = Face();
    const QImage before = layer.copy();

    RemoveRedEye(layer, CENTER, 1.0);

    int rim = 0;
    for (int y = HIGHLIGHT.y() - 7; y <= HIGHLIGHT.y() + 7; ++y)
    {
        for (int x = HIGHLIGHT.x() - 7; x <= HIGHLIGHT.x() + 7; ++x)
        {
            const QRgb old = PixelOf(before, QPoint(x, y));
            const QRgb now = PixelOf(layer, QPoint(x, y));
            QVERIFY(qRed(now) - qGreen(now) <= 24);
            rim += qGreen(old) > FLASH_RED.green() && qGreen(old) < 255 ? 1 : 0;
        }
    }
    QVERIFY(rim > 8);
}

void tst_RedEye::aPaleReflectionWithinThePupilLosesItsRed()
{
    QImage layer = Face();
    {
        QPainter painter(&layer);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(235, 150, 156));
        painter.drawEllipse(CENTER + QPoint(4, 6), 7, 7);
    }

    RemoveRedEye(layer, CENTER - QPoint(12, 0), 1.0);

    QCOMPARE(PixelOf(layer, CENTER + QPoint(4, 6)), qRgb(153, 153, 153));
}

void tst_RedEye::noRedRingIsLeftAroundThePupil()
{
    QImage layer = Face(FLASH_RED, BLUE_IRIS);

    RemoveRedEye(layer, CENTER, 1.0);

    for (int y = 0; y < layer.height(); ++y)
    {
        for (int x = 0; x < layer.width(); ++x)
        {
            const QRgb pixel = PixelOf(layer, QPoint(x, y));
            if (DistanceToCenter(x, y) < 30.0)
                QVERIFY2(qRed(pixel) - std::min(qGreen(pixel), qBlue(pixel)) < 36,
                         qPrintable(QStringLiteral("%1, %2: %3").arg(x).arg(y).arg(pixel, 8, 16)));
        }
    }
}

void tst_RedEye::grainDoesNotTakeThePupilApart()
{
    QImage layer = Face();
    for (int y = CENTER.y() - 12; y < CENTER.y() + 13; y += 2)
    {
        for (int x = CENTER.x() - 12; x < CENTER.x() + 13; x += 2)
            reinterpret_cast<QRgb*>(layer.scanLine(y))[x] = qRgb(60, 40, 42);
    }
    for (int y = CENTER.y() - PUPIL; y < CENTER.y() + PUPIL; ++y)
        reinterpret_cast<QRgb*>(layer.scanLine(y))[CENTER.x() + 4] = qRgb(60, 45, 42);

    RemoveRedEye(layer, CENTER, 1.0);

    QVERIFY(IsGray(PixelOf(layer, CENTER + QPoint(-15, 1))));
    QVERIFY(IsGray(PixelOf(layer, CENTER + QPoint(15, 1))));
}

void tst_RedEye::aClickBesideThePupilWorks_data()
{
    QTest::addColumn<QPoint>("point");
    QTest::addColumn<bool>("found");
    QTest::newRow("on the highlight") << HIGHLIGHT << true;
    QTest::newRow("five pixels to the right") << CENTER + QPoint(PUPIL + 5, 0) << true;
    QTest::newRow("eleven pixels above") << CENTER - QPoint(0, PUPIL + 11) << true;
    QTest::newRow("aslant") << CENTER + QPoint(20, 18) << true;
    QTest::newRow("fifteen pixels to the left") << CENTER - QPoint(PUPIL + 15, 0) << false;
}

void tst_RedEye::aClickBesideThePupilWorks()
{
    QFETCH(QPoint, point);
    QFETCH(bool, found);
    QImage layer = Face();
    QImage clicked = Face();
    RemoveRedEye(clicked, CENTER, 1.0);

    QCOMPARE(!RemoveRedEye(layer, point, 1.0).isEmpty(), found);

    QCOMPARE(layer, found ? clicked : Face());
}

void tst_RedEye::onlyTheEyeThatWasClickedChanges()
{
    QImage layer(600, 200, QImage::Format_ARGB32_Premultiplied);
    {
        QPainter painter(&layer);
        painter.drawImage(0, 0, Face());
        painter.drawImage(300, 0, Face());
    }

    RemoveRedEye(layer, CENTER + QPoint(300, 0), 1.0);

    QCOMPARE(layer.copy(0, 0, 300, 200), Face());
    QVERIFY(IsGray(PixelOf(layer, CENTER + QPoint(300, 0))));
}

void tst_RedEye::theLevelDecidesWhatIsRed_data()
{
    QTest::addColumn<QColor>("pupil");
    QTest::addColumn<double>("level");
    QTest::addColumn<bool>("red");
    QTest::newRow("flash red at 1") << FLASH_RED << 1.0 << true;
    QTest::newRow("flash red at 0.2") << FLASH_RED << 0.2 << false;
    QTest::newRow("flash red at 0.3") << FLASH_RED << 0.3 << true;
    QTest::newRow("flash red at 0.01") << FLASH_RED << 0.01 << false;
    QTest::newRow("pure red at 0.01") << QColor(255, 0, 0) << 0.01 << true;
    QTest::newRow("skin colour at 1") << SKIN << 1.0 << false;
    QTest::newRow("pale red at 1") << QColor(200, 130, 130) << 1.0 << false;
    QTest::newRow("pale red at 2") << QColor(200, 130, 130) << 2.0 << true;
    QTest::newRow("very pale red at 10") << QColor(220, 195, 195) << 10.0 << true;
    QTest::newRow("very pale red at 5") << QColor(220, 195, 195) << 5.0 << false;
    QTest::newRow("green at 10") << QColor(60, 120, 60) << 10.0 << false;
    QTest::newRow("blue at 10") << QColor(60, 70, 120) << 10.0 << false;
    QTest::newRow("nearly black at 1") << QColor(14, 4, 4) << 1.0 << false;
}

void tst_RedEye::theLevelDecidesWhatIsRed()
{
    QFETCH(QColor, pupil);
    QFETCH(double, level);
    QFETCH(bool, red);
    QImage layer = Face(pupil, BLUE_IRIS, QColor(150, 150, 150));

    QCOMPARE(!RemoveRedEye(layer, CENTER, level).isEmpty(), red);

    QCOMPARE(IsGray(PixelOf(layer, CENTER)), red);
    QCOMPARE(PixelOf(layer, CENTER) == pupil.rgb(), !red);
}

void tst_RedEye::theTilesBringTheLayerBack()
{
    QImage layer = Face();

    QVector<SavedTile> tiles = RemoveRedEye(layer, CENTER, 1.0);
    const QImage after = layer.copy();

    ExchangeTiles(layer, tiles);
    QCOMPARE(layer, Face());
    ExchangeTiles(layer, tiles);
    QCOMPARE(layer, after);
}

void tst_RedEye::onlyTouchedTilesAreKept()
{
    QImage layer(1000, 800, QImage::Format_ARGB32_Premultiplied);
    layer.fill(SKIN);
    {
        QPainter painter(&layer);
        painter.drawImage(QPoint(512, 400) - CENTER, Face());
    }
    const QImage copy = layer;

    const QVector<SavedTile> tiles = RemoveRedEye(layer, QPoint(512, 400), 1.0);

    QCOMPARE(tiles.size(), 2);
    QCOMPARE(tiles[0].rect, QRect(256, 256, 256, 256));
    QCOMPARE(tiles[1].rect, QRect(512, 256, 256, 256));
    QCOMPARE(tiles[1].before, copy.copy(tiles[1].rect));
}

void tst_RedEye::aSecondClickChangesNothing()
{
    QImage layer = Face();
    RemoveRedEye(layer, CENTER, 1.0);
    const QImage once = layer.copy();

    QVERIFY(RemoveRedEye(layer, CENTER, 1.0).isEmpty());

    QCOMPARE(layer, once);
}

void tst_RedEye::nothingRedGivesNothing()
{
    QImage layer = Face(QColor(20, 22, 20));
    const QImage before = layer.copy();

    QVERIFY(RemoveRedEye(layer, CENTER, 1.0).isEmpty());
    QVERIFY(RemoveRedEye(layer, CHEEK, 1.0).isEmpty());

    QCOMPARE(layer, before);
}

void tst_RedEye::aRedWallStaysRed_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QRect>("wall");
    QTest::newRow("a small picture, all red") << QSize(40, 30) << QRect(0, 0, 40, 30);
    QTest::newRow("a large picture, all red") << QSize(2000, 1500) << QRect(0, 0, 2000, 1500);
    QTest::newRow("a band across") << QSize(400, 300) << QRect(0, 100, 400, 40);
    QTest::newRow("a corner that goes far") << QSize(2000, 1500) << QRect(0, 0, 1600, 1200);
    QTest::newRow("a long stripe") << QSize(2000, 100) << QRect(100, 40, 1700, 20);
}

void tst_RedEye::aRedWallStaysRed()
{
    QFETCH(QSize, size);
    QFETCH(QRect, wall);
    QImage layer(size, QImage::Format_ARGB32_Premultiplied);
    layer.fill(Qt::white);
    {
        QPainter painter(&layer);
        painter.fillRect(wall, FLASH_RED);
    }
    const QImage before = layer.copy();

    QVERIFY(RemoveRedEye(layer, wall.center(), 1.0).isEmpty());

    QVERIFY(layer == before);
}

void tst_RedEye::theSelectionLimitsWhatChanges()
{
    QImage layer = Face();
    const QImage left = Selection(layer.size(), [](int x, int) { return x < CENTER.x() ? 255 : 0; });

    QVERIFY(!RemoveRedEye(layer, CENTER - QPoint(10, -8), 1.0, left).isEmpty());

    QVERIFY(IsGray(PixelOf(layer, CENTER + QPoint(-10, 8))));
    QCOMPARE(layer.copy(CENTER.x(), 0, 150, 200), Face().copy(CENTER.x(), 0, 150, 200));
    QImage other = Face();
    const QImage none = Selection(layer.size(), [](int, int) { return 0; });
    QVERIFY(RemoveRedEye(other, CENTER, 1.0, none).isEmpty());
    QCOMPARE(other, Face());
}

void tst_RedEye::whatIsPartlySelectedChangesInPart()
{
    QImage layer = Face(QColor(200, 40, 40));
    const QImage half = Selection(layer.size(), [](int, int) { return 51; });

    RemoveRedEye(layer, CENTER, 1.0, half);

    QCOMPARE(PixelOf(layer, CENTER), qRgb(168, 40, 40));
}

void tst_RedEye::aTranslucentPupilKeepsItsOpacity()
{
    QImage layer(60, 60, QImage::Format_ARGB32_Premultiplied);
    layer.fill(Qt::transparent);
    for (int y = 20; y < 40; ++y)
        std::fill_n(reinterpret_cast<QRgb*>(layer.scanLine(y)) + 20, 20, qRgba(100, 20, 30, 128));

    RemoveRedEye(layer, QPoint(30, 30), 1.0);

    QCOMPARE(PixelOf(layer, QPoint(30, 30)), qRgba(25, 25, 25, 128));
    QCOMPARE(PixelOf(layer, QPoint(10, 10)), QRgb(0));
}

void tst_RedEye::aPictureOfOnePixelIsNoEye()
{
    QImage layer(1, 1, QImage::Format_ARGB32_Premultiplied);
    layer.fill(Qt::red);
    QVERIFY(RemoveRedEye(layer, QPoint(0, 0), 1.0).isEmpty());
}

void tst_RedEye::whatDoesNotFitDoesNothing_data()
{
    QTest::addColumn<QImage>("layer");
    QTest::addColumn<QPoint>("point");
    QTest::addColumn<double>("level");
    QTest::addColumn<QImage>("selection");
    const QImage none;
    const QImage face = Face();
    const QImage all = Selection(face.size(), [](int, int) { return 255; });
    QTest::newRow("no layer") << none << CENTER << 1.0 << none;
    QTest::newRow("layer of another format")
        << face.convertToFormat(QImage::Format_RGB32) << CENTER << 1.0 << none;
    QTest::newRow("point to the left") << face << QPoint(-1, 100) << 1.0 << none;
    QTest::newRow("point below") << face << QPoint(150, 200) << 1.0 << none;
    QTest::newRow("point far off") << face << QPoint(INT_MAX, INT_MIN) << 1.0 << none;
    QTest::newRow("level 0") << face << CENTER << 0.0 << none;
    QTest::newRow("level -1") << face << CENTER << -1.0 << none;
    QTest::newRow("level 10.01") << face << CENTER << 10.01 << none;
    QTest::newRow("level not a number") << face << CENTER << std::numeric_limits<double>::quiet_NaN() << none;
    QTest::newRow("level infinite") << face << CENTER << std::numeric_limits<double>::infinity() << none;
    QTest::newRow("selection too small") << face << CENTER << 1.0 << all.copy(0, 0, 300, 199);
    QTest::newRow("selection of another format")
        << face << CENTER << 1.0 << all.convertToFormat(QImage::Format_Alpha8);
}

void tst_RedEye::whatDoesNotFitDoesNothing()
{
    QFETCH(QImage, layer);
    QFETCH(QPoint, point);
    QFETCH(double, level);
    QFETCH(QImage, selection);
    const QImage before = layer.copy();

    QVERIFY(RemoveRedEye(layer, point, level, selection).isEmpty());

    QCOMPARE(layer, before);
}

NV_TEST_MAIN(tst_RedEye)
#include "tst_RedEye.moc"
