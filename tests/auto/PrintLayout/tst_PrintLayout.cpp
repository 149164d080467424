// The geometry of printing: each rule by itself, and all of them together against a second calculation that
// works in inches and knows nothing of page layouts and transforms.

#include <QPageSize>
#include <QtTest>

#include <array>
#include <cmath>
#include <limits>

#include "PrintLayout.h"
#include "TestMain.h"

namespace
{

// Units in one inch, by the number of the unit.
const std::array<double, 4> PerInch = {25.4, 72.0, 1.0, 6.0};

// What the second calculation starts from. Lengths but those of the sheet are in the unit.
struct Case
{
    QSizeF sheet; // upright, in millimetres
    bool landscape = false;
    int unit = 0;
    int resolution = 300;
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
    double offsetX = 0;
    double offsetY = 0;
    int place = 5;
    int rotation = 0;
    int scaling = 0;
    bool keepRatio = true;
    double scaleX = 1;
    double scaleY = 1;
    QSizeF image = QSizeF(600, 400);
};

double limitOf(int unit)
{
    return std::round(1000 / 25.4 * PerInch.at(unit) * 100) / 100;
}

PrintLayout layoutOf(const Case& c)
{
    const QPageSize page(c.sheet, QPageSize::Millimeter, QString(), QPageSize::FuzzyMatch);
    const double limit = -limitOf(c.unit);
    PrintLayout layout;
    layout.page =
        QPageLayout(page, c.landscape ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF());
    layout.page.setUnits(QPageLayout::Millimeter);
    layout.paper = c.landscape ? c.sheet.transposed() : c.sheet;
    layout.resolution = c.resolution;
    layout.unit = QPageLayout::Unit(c.unit);
    layout.minimumMargins = QMarginsF(limit, limit, limit, limit);
    layout.margins = QMarginsF(c.left, c.top, c.right, c.bottom);
    layout.minimumOffset = QPointF(limit, limit);
    layout.offset = QPointF(c.offsetX, c.offsetY);
    layout.place = c.place;
    layout.rotation = PrintLayout::Rotation(c.rotation);
    layout.scaling = PrintLayout::Scaling(c.scaling);
    layout.keepRatio = c.keepRatio;
    layout.scaleX = c.scaleX;
    layout.scaleY = c.scaleY;
    return layout;
}

// The second calculation, in inches.
struct Expected
{
    explicit Expected(const Case& c)
    {
        // A sheet has whole points.
        upright = QSizeF(std::round(c.sheet.width() / 25.4 * 72) / 72,
                         std::round(c.sheet.height() / 25.4 * 72) / 72);
        sheet = c.landscape ? upright.transposed() : upright;
        const double left = inches(c.left, c.unit);
        const double top = inches(c.top, c.unit);
        const double right = inches(c.right, c.unit);
        const double bottom = inches(c.bottom, c.unit);
        if (upright.width() - left - right >= -0.001 && upright.height() - top - bottom >= -0.001)
            clip = QRectF(left, top, sheet.width() - left - right, sheet.height() - top - bottom);
        const QPointF moved(inches(c.offsetX, c.unit), inches(c.offsetY, c.unit));
        offset =
            QPointF(moved.x() <= sheet.width() ? moved.x() : 0, moved.y() <= sheet.height() ? moved.y() : 0);
        place(c);
    }

    // So has a length; a half is rounded up, below 0 as well.
    static double inches(double value, int unit)
    {
        return std::floor(value / PerInch.at(unit) * 72 + 0.5) / 72;
    }

    void place(const Case& c)
    {
        rotation = c.rotation;
        if (rotation == 1)
            rotation = (sheet.height() < sheet.width()) != (c.image.height() < c.image.width()) ? 2 : 0;
        const bool across = rotation == 2 || rotation == 3;
        const QSizeF turned = across ? c.image.transposed() : c.image;
        QSizeF size = turned / c.resolution;
        if (c.scaling == 1)
        {
            const double wide = clip.width() / size.width();
            const double high = clip.height() / size.height();
            if (c.keepRatio)
                slack = 1.1 * (wide < high ? size.height() / size.width() : size.width() / size.height());
            size = c.keepRatio ? size * qMin(wide, high) : clip.size();
        }
        else if (c.scaling == 2)
            size = QSizeF(size.width() * c.scaleX, size.height() * c.scaleY);
        const double partX = ((c.place - 1) % 3) / 2.0;
        const double partY = ((c.place - 1) / 3) / 2.0;
        target = QRectF(QPointF(clip.x() + (clip.width() - size.width()) * partX + offset.x(),
                                clip.y() + (clip.height() - size.height()) * partY + offset.y()),
                        size);
    }

    // Where the corners of the picture land: its top left, top right, bottom right, bottom left.
    std::array<QPointF, 4> corners() const
    {
        const std::array<QPointF, 4> places = {target.topLeft(), target.topRight(), target.bottomRight(),
                                               target.bottomLeft()};
        // How many quarters clockwise.
        const int quarters = rotation == 2 ? 1 : rotation == 4 ? 2 : rotation == 3 ? 3 : 0;
        std::array<QPointF, 4> result;
        for (int i = 0; i < 4; ++i)
            result.at(i) = places.at((i + quarters) % 4);
        return result;
    }

    QSizeF upright;
    QSizeF sheet;
    QRectF clip;
    QPointF offset;
    int rotation = 0;
    QRectF target;
    // What a pixel more or less of the clip makes of the other side of a picture that is fitted into it.
    double slack = 0;
};

QString text(const QRectF& rect)
{
    return QString("%1,%2 %3x%4").arg(rect.x()).arg(rect.y()).arg(rect.width()).arg(rect.height());
}

bool near(double one, double other, double tolerance)
{
    return std::abs(one - other) <= tolerance;
}

bool near(const QRectF& one, const QRectF& other, double tolerance)
{
    return near(one.left(), other.left(), tolerance) && near(one.top(), other.top(), tolerance) &&
        near(one.right(), other.right(), tolerance) && near(one.bottom(), other.bottom(), tolerance);
}

QRectF scaled(const QRectF& rect, double factor)
{
    return QRectF(rect.topLeft() * factor, rect.size() * factor);
}

// Empty if the library's result is the expected one, within a pixel.
QString Judge(const Case& c)
{
    const PrintLayout layout = layoutOf(c);
    const Expected expected(c);
    const double dpi = c.resolution;
    const QRectF sheet = SheetRect(layout);
    if (!near(sheet, scaled(QRectF(QPointF(), expected.sheet), dpi), 1.0))
        return "sheet " + text(sheet);
    const QRectF clip = ClipRect(layout);
    if (!near(clip, scaled(expected.clip, dpi), 1.01))
        return "clip " + text(clip) + ", expected " + text(scaled(expected.clip, dpi));
    const QTransform transform = ImageTransform(layout, c.image);
    const std::array<QPointF, 4> corners = {QPointF(0, 0), QPointF(c.image.width(), 0),
                                            QPointF(c.image.width(), c.image.height()),
                                            QPointF(0, c.image.height())};
    const std::array<QPointF, 4> places = expected.corners();
    for (int i = 0; i < 4; ++i)
    {
        const QPointF got = transform.map(corners.at(i));
        const QPointF wanted = places.at(i) * dpi;
        // The picture as large as the clip may be off by a pixel, and the corner by another one.
        if (!near(got.x(), wanted.x(), 2.1 + expected.slack) ||
            !near(got.y(), wanted.y(), 2.1 + expected.slack))
            return QString("corner %1 at %2,%3, expected %4,%5")
                .arg(i)
                .arg(got.x())
                .arg(got.y())
                .arg(wanted.x())
                .arg(wanted.y());
    }
    return QString();
}

QString describe(const Case& c)
{
    return QString("sheet %1x%2%3 unit %4 dpi %5 margins %6,%7,%8,%9 offset %10,%11 place %12 rotation %13 "
                   "scaling %14 keep %15 image %16x%17: ")
        .arg(c.sheet.width())
        .arg(c.sheet.height())
        .arg(c.landscape ? " turned" : "")
        .arg(c.unit)
        .arg(c.resolution)
        .arg(c.left)
        .arg(c.top)
        .arg(c.right)
        .arg(c.bottom)
        .arg(c.offsetX)
        .arg(c.offsetY)
        .arg(c.place)
        .arg(c.rotation)
        .arg(c.scaling)
        .arg(c.keepRatio)
        .arg(c.image.width())
        .arg(c.image.height());
}

// A length of so many millimetres as a box with two decimals would hold it in the unit.
double inUnit(double millimetres, int unit)
{
    return std::round(millimetres / 25.4 * PerInch.at(unit) * 100) / 100;
}

struct Margins
{
    double left;
    double top;
    double right;
    double bottom;
};

void setLengths(Case& c, const Margins& margins, const QPointF& offset)
{
    c.left = inUnit(margins.left, c.unit);
    c.top = inUnit(margins.top, c.unit);
    c.right = inUnit(margins.right, c.unit);
    c.bottom = inUnit(margins.bottom, c.unit);
    c.offsetX = inUnit(offset.x(), c.unit);
    c.offsetY = inUnit(offset.y(), c.unit);
}

Case a4()
{
    Case c;
    c.sheet = QSizeF(210, 297);
    return c;
}

const double NaN = std::numeric_limits<double>::quiet_NaN();
const double Infinity = std::numeric_limits<double>::infinity();

} // namespace

class tst_PrintLayout : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void allTogether_data();
    void allTogether();
    void sheetIsTheWholePage();
    void clipCountsBothEdges();
    void negativeMarginsReachBeyondTheSheet();
    void noRoomIsAllZero_data();
    void noRoomIsAllZero();
    void roomIsThatOfTheUprightSheet();
    void refusedMarginsCountAsNone();
    void cornerOfAPlace_data();
    void cornerOfAPlace();
    void cornerCountsWhereTheRectangleStands();
    void offsetMovesTheCorner();
    void offsetBeyondThePageCountsAsNone();
    void largePictureHasANegativeCorner();
    void autoTurnsWhatDiffersInShape_data();
    void autoTurnsWhatDiffersInShape();
    void rotationOutOfRangeIsNone();
    void printedSizeFollowsTheResolution();
    void stretchingUsesBothSides();
    void customScaleIsAlignedToo();
    void pictureWithoutSizeDividesByNothing_data();
    void pictureWithoutSizeDividesByNothing();
    void resolutionOfZeroGivesNothing();
    void hostileNumbersGiveNumbers();
    void lengthsAreConverted_data();
    void lengthsAreConverted();
    void lengthsThatAreNoMarginAreZero();
    void lengthsReturnWithinTwoDecimals();
    void zoomHasItsThreeFixedPoints();
    void zoomIsItsFormula();
    void sliderIsItsFormula_data();
    void sliderIsItsFormula();
    void sliderTakesAnyPercentage();
};

void tst_PrintLayout::allTogether_data()
{
    QTest::addColumn<QSizeF>("sheet");
    QTest::addColumn<bool>("landscape");
    const QList<QPair<const char*, QSizeF>> sheets = {{"A4", QSizeF(210, 297)},
                                                      {"Letter", QSizeF(215.9, 279.4)},
                                                      {"A5", QSizeF(148, 210)},
                                                      {"square", QSizeF(100, 100)},
                                                      {"strip", QSizeF(500, 40)}};
    for (const auto& sheet : sheets)
    {
        QTest::newRow(qPrintable(QString(sheet.first))) << sheet.second << false;
        QTest::newRow(qPrintable(QString("%1 landscape").arg(sheet.first))) << sheet.second << true;
    }
}

void tst_PrintLayout::allTogether()
{
    QFETCH(QSizeF, sheet);
    QFETCH(bool, landscape);
    const QList<Margins> allMargins = {
        {0, 0, 0, 0}, {10, 5, 2.5, 7}, {-12, -7, -3, -30}, {-20, 3, 15, -4}, {150, 60, 90, 250}};
    const QList<QPointF> offsets = {QPointF(0, 0), QPointF(12.3, -7.7), QPointF(-400, 9), QPointF(900, 5),
                                    QPointF(3, 900)};
    const QList<QSizeF> images = {QSizeF(600, 400), QSizeF(321, 1234), QSizeF(500, 500), QSizeF(1, 9000)};
    Case c;
    c.sheet = sheet;
    c.landscape = landscape;
    int count = 0;
    for (c.unit = 0; c.unit < 4; ++c.unit)
        for (const int resolution : {72, 300, 600})
            for (const Margins& margins : allMargins)
                for (const QPointF& offset : offsets)
                    for (c.rotation = 0; c.rotation < 5; ++c.rotation)
                        for (c.scaling = 0; c.scaling < 3; ++c.scaling)
                            for (c.place = 1; c.place <= 9; ++c.place)
                            {
                                c.resolution = resolution;
                                c.image = images.at(count % 4);
                                c.keepRatio = count % 2;
                                c.scaleX = 0.5 + count % 3;
                                c.scaleY = 0.25 + count % 5;
                                setLengths(c, margins, offset);
                                const QString wrong = Judge(c);
                                QVERIFY2(wrong.isEmpty(), qPrintable(describe(c) + wrong));
                                ++count;
                            }
    QCOMPARE(count, 4 * 3 * 5 * 5 * 5 * 3 * 9);
}

void tst_PrintLayout::sheetIsTheWholePage()
{
    Case c = a4();
    c.left = c.top = c.right = c.bottom = 20;
    QCOMPARE(SheetRect(layoutOf(c)), QRectF(0, 0, 2479, 3508));
    c.landscape = true;
    QCOMPARE(SheetRect(layoutOf(c)), QRectF(0, 0, 3508, 2479));
}

void tst_PrintLayout::clipCountsBothEdges()
{
    Case c = a4();
    c.unit = 2;
    c.left = 1;
    c.top = 2;
    c.right = 0.5;
    c.bottom = 0.25;
    QCOMPARE(ClipRect(layoutOf(c)), QRectF(300, 600, 2479 - 450, 3508 - 675));
}

void tst_PrintLayout::negativeMarginsReachBeyondTheSheet()
{
    Case c = a4();
    c.unit = 2;
    c.left = -1;
    c.bottom = -2;
    const PrintLayout layout = layoutOf(c);
    QCOMPARE(ClipRect(layout), QRectF(-300, 0, 2479 + 300, 3508 + 600));
    QCOMPARE(ClipRect(layout) & SheetRect(layout), SheetRect(layout));
}

void tst_PrintLayout::noRoomIsAllZero_data()
{
    QTest::addColumn<double>("left");
    QTest::addColumn<double>("top");
    QTest::addColumn<double>("right");
    QTest::addColumn<double>("bottom");
    QTest::addColumn<bool>("room");
    QTest::newRow("just none across") << 100.0 << 0.0 << 110.02 << 0.0 << false;
    QTest::newRow("just some across") << 100.0 << 0.0 << 109.0 << 0.0 << true;
    QTest::newRow("just some down") << 0.0 << 200.0 << 0.0 << 96.5 << true;
    QTest::newRow("none down") << 0.0 << 200.0 << 0.0 << 98.0 << false;
    QTest::newRow("none by the left alone") << 400.0 << 0.0 << 0.0 << 0.0 << false;
    QTest::newRow("right makes up for left") << 400.0 << 0.0 << -300.0 << 0.0 << true;
}

void tst_PrintLayout::noRoomIsAllZero()
{
    QFETCH(double, left);
    QFETCH(double, top);
    QFETCH(double, right);
    QFETCH(double, bottom);
    QFETCH(bool, room);
    Case c = a4();
    c.left = left;
    c.top = top;
    c.right = right;
    c.bottom = bottom;
    const QRectF clip = ClipRect(layoutOf(c));
    QCOMPARE(clip != QRectF(0, 0, 0, 0), room);
    QCOMPARE(clip.isNull(), !room);
}

// 230 mm of margins fit across a turned sheet of 297, but not across the upright one; the other way round
// they leave less than nothing, and still a rectangle.
void tst_PrintLayout::roomIsThatOfTheUprightSheet()
{
    Case c = a4();
    c.landscape = true;
    c.left = 120;
    c.right = 110;
    QCOMPARE(ClipRect(layoutOf(c)), QRectF());
    c.left = c.right = 0;
    c.top = 120;
    c.bottom = 110;
    const QRectF clip = ClipRect(layoutOf(c));
    QVERIFY(!clip.isNull());
    QVERIFY(clip.height() < 0);
}

void tst_PrintLayout::refusedMarginsCountAsNone()
{
    Case c = a4();
    c.left = 10;
    PrintLayout layout = layoutOf(c);
    layout.margins.setRight(-1001);
    QCOMPARE(ClipRect(layout), SheetRect(layout));
    layout.margins.setRight(NaN);
    QCOMPARE(ClipRect(layout), SheetRect(layout));
}

void tst_PrintLayout::cornerOfAPlace_data()
{
    QTest::addColumn<int>("place");
    QTest::addColumn<QPointF>("corner");
    // Of a rectangle of 100 x 50 in a clip of 2179 x 2908 at 200, 400.
    const QList<QPointF> corners = {QPointF(200, 400),  QPointF(1239.5, 400),  QPointF(2279, 400),
                                    QPointF(200, 1829), QPointF(1239.5, 1829), QPointF(2279, 1829),
                                    QPointF(200, 3258), QPointF(1239.5, 3258), QPointF(2279, 3258)};
    for (int place = 1; place <= 9; ++place)
        QTest::newRow(qPrintable(QString::number(place))) << place << corners.at(place - 1);
    for (const int place : {0, -1, 10, INT_MAX, INT_MIN})
        QTest::newRow(qPrintable(QString::number(place))) << place << corners.first();
}

void tst_PrintLayout::cornerOfAPlace()
{
    QFETCH(int, place);
    QFETCH(QPointF, corner);
    Case c = a4();
    c.unit = 1;
    c.left = 48;
    c.top = 96;
    c.right = 24;
    c.bottom = 48;
    c.place = place;
    const PrintLayout layout = layoutOf(c);
    QCOMPARE(ClipRect(layout), QRectF(200, 400, 2179, 2908));
    QCOMPARE(AlignedCorner(layout, QRectF(0, 0, 100, 50)), corner);
}

void tst_PrintLayout::cornerCountsWhereTheRectangleStands()
{
    Case c = a4();
    const QRectF rect(10, 30, 100, 50);
    const QRectF same(0, 0, 100, 50);
    c.place = 1;
    QCOMPARE(AlignedCorner(layoutOf(c), rect), AlignedCorner(layoutOf(c), same));
    for (const int place : {5, 9})
    {
        c.place = place;
        QCOMPARE(AlignedCorner(layoutOf(c), rect), AlignedCorner(layoutOf(c), same) - QPointF(10, 30));
    }
}

void tst_PrintLayout::offsetMovesTheCorner()
{
    Case c = a4();
    c.place = 1;
    c.unit = 2;
    c.offsetX = 1.5;
    c.offsetY = -2;
    QCOMPARE(AlignedCorner(layoutOf(c), QRectF(0, 0, 10, 10)), QPointF(450, -600));
}

// Each side is refused by itself.
void tst_PrintLayout::offsetBeyondThePageCountsAsNone()
{
    Case c = a4();
    c.place = 1;
    c.unit = 2;
    c.offsetX = 9;
    c.offsetY = 9;
    QCOMPARE(AlignedCorner(layoutOf(c), QRectF(0, 0, 10, 10)), QPointF(0, 2700));
    c.offsetX = 8;
    c.offsetY = 12;
    QCOMPARE(AlignedCorner(layoutOf(c), QRectF(0, 0, 10, 10)), QPointF(2400, 0));
}

void tst_PrintLayout::largePictureHasANegativeCorner()
{
    Case c = a4();
    const QPointF corner = ImageTransform(layoutOf(c), QSizeF(9000, 9000)).map(QPointF(0, 0));
    QCOMPARE(corner, QPointF((2479 - 9000) / 2.0, (3508 - 9000) / 2.0));
}

void tst_PrintLayout::autoTurnsWhatDiffersInShape_data()
{
    QTest::addColumn<QSizeF>("sheet");
    QTest::addColumn<bool>("landscape");
    QTest::addColumn<QSizeF>("image");
    QTest::addColumn<bool>("turns");
    const QSizeF page(210, 297);
    QTest::newRow("wide on upright") << page << false << QSizeF(600, 400) << true;
    QTest::newRow("upright on upright") << page << false << QSizeF(400, 600) << false;
    QTest::newRow("wide on landscape") << page << true << QSizeF(600, 400) << false;
    QTest::newRow("upright on landscape") << page << true << QSizeF(400, 600) << true;
    QTest::newRow("square on upright") << page << false << QSizeF(500, 500) << false;
    QTest::newRow("square on landscape") << page << true << QSizeF(500, 500) << true;
    QTest::newRow("wide on square") << QSizeF(100, 100) << false << QSizeF(600, 400) << true;
    QTest::newRow("square on square") << QSizeF(100, 100) << false << QSizeF(9, 9) << false;
}

void tst_PrintLayout::autoTurnsWhatDiffersInShape()
{
    QFETCH(QSizeF, sheet);
    QFETCH(bool, landscape);
    QFETCH(QSizeF, image);
    QFETCH(bool, turns);
    Case c;
    c.sheet = sheet;
    c.landscape = landscape;
    c.rotation = PrintLayout::AutoRotated;
    const QTransform got = ImageTransform(layoutOf(c), image);
    c.rotation = turns ? PrintLayout::Clockwise : PrintLayout::NotRotated;
    QCOMPARE(got, ImageTransform(layoutOf(c), image));
}

void tst_PrintLayout::rotationOutOfRangeIsNone()
{
    Case c = a4();
    const QTransform plain = ImageTransform(layoutOf(c), c.image);
    for (const int rotation : {-1, 5, INT_MAX})
    {
        c.rotation = rotation;
        QCOMPARE(ImageTransform(layoutOf(c), c.image), plain);
    }
}

void tst_PrintLayout::printedSizeFollowsTheResolution()
{
    Case c = a4();
    for (const int resolution : {100, 300, 600})
    {
        c.resolution = resolution;
        const QRectF target = ImageTransform(layoutOf(c), c.image).mapRect(QRectF(QPointF(), c.image));
        QCOMPARE(target.width() / resolution, 600.0 / resolution);
    }
}

void tst_PrintLayout::stretchingUsesBothSides()
{
    Case c = a4();
    c.scaling = PrintLayout::FitToPage;
    c.keepRatio = false;
    const QTransform transform = ImageTransform(layoutOf(c), c.image);
    QCOMPARE(transform.m11(), 2479.0 / 600);
    QCOMPARE(transform.m22(), 3508.0 / 400);
    c.keepRatio = true;
    QCOMPARE(ImageTransform(layoutOf(c), c.image).m22(), 2479.0 / 600);
}

void tst_PrintLayout::customScaleIsAlignedToo()
{
    Case c = a4();
    c.scaling = PrintLayout::CustomScale;
    c.scaleX = 0.5;
    c.scaleY = 2;
    c.place = 9;
    const QRectF target = ImageTransform(layoutOf(c), c.image).mapRect(QRectF(QPointF(), c.image));
    QCOMPARE(target, QRectF(2479 - 300, 3508 - 800, 300, 800));
}

void tst_PrintLayout::pictureWithoutSizeDividesByNothing_data()
{
    QTest::addColumn<QSizeF>("image");
    QTest::newRow("none") << QSizeF(0, 0);
    QTest::newRow("no width") << QSizeF(0, 10);
    QTest::newRow("no height") << QSizeF(10, 0);
}

void tst_PrintLayout::pictureWithoutSizeDividesByNothing()
{
    QFETCH(QSizeF, image);
    Case c = a4();
    for (c.rotation = 0; c.rotation < 5; ++c.rotation)
        for (c.scaling = 0; c.scaling < 3; ++c.scaling)
            for (const bool keep : {false, true})
            {
                c.keepRatio = keep;
                const QTransform transform = ImageTransform(layoutOf(c), image);
                QVERIFY(std::isfinite(transform.m11()) && std::isfinite(transform.m22()));
                QVERIFY(std::isfinite(transform.dx()) && std::isfinite(transform.dy()));
            }
}

void tst_PrintLayout::resolutionOfZeroGivesNothing()
{
    Case c = a4();
    c.resolution = 0;
    c.scaling = PrintLayout::FitToPage;
    QVERIFY(SheetRect(layoutOf(c)).width() <= 0);
    QVERIFY(ClipRect(layoutOf(c)).width() <= 0);
    const QTransform transform = ImageTransform(layoutOf(c), c.image);
    QVERIFY(std::isfinite(transform.dx()));
}

void tst_PrintLayout::hostileNumbersGiveNumbers()
{
    for (const double bad : {NaN, Infinity, -Infinity, 1e300, -1e300})
    {
        Case c = a4();
        c.left = bad;
        c.offsetX = bad;
        const PrintLayout layout = layoutOf(c);
        QCOMPARE(ClipRect(layout), SheetRect(layout));
        QVERIFY(std::isfinite(AlignedCorner(layout, QRectF(0, 0, 10, 10)).x()));
    }
}

void tst_PrintLayout::lengthsAreConverted_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    for (int from = 0; from < 4; ++from)
        for (int to = 0; to < 4; ++to)
            QTest::newRow(qPrintable(QString("%1 to %2").arg(from).arg(to))) << from << to;
}

void tst_PrintLayout::lengthsAreConverted()
{
    QFETCH(int, from);
    QFETCH(int, to);
    for (const double millimetres : {-999.9, -30.0, -0.5, 0.0, 0.25, 10.0, 123.45, 999.9})
    {
        const double value = inUnit(millimetres, from);
        const double exact = value / PerInch.at(from) * PerInch.at(to);
        // Points are whole.
        const double expected = to == 1 && from != 1 ? std::round(exact) : exact;
        const double got = ConvertLength(value, QPageLayout::Unit(from), QPageLayout::Unit(to));
        QVERIFY2(near(got, expected, 0.006 + 0.006 / 72 * PerInch.at(to)),
                 qPrintable(QString("%1: %2, expected %3").arg(value).arg(got).arg(expected)));
    }
}

void tst_PrintLayout::lengthsThatAreNoMarginAreZero()
{
    QCOMPARE(ConvertLength(-1000, QPageLayout::Millimeter, QPageLayout::Millimeter), -1000.0);
    QCOMPARE(ConvertLength(2000, QPageLayout::Millimeter, QPageLayout::Millimeter), 2000.0);
    for (const double bad : {-1000.1, 2001.0, NaN, Infinity, -Infinity, 1e308})
        QCOMPARE(ConvertLength(bad, QPageLayout::Millimeter, QPageLayout::Inch), 0.0);
}

void tst_PrintLayout::lengthsReturnWithinTwoDecimals()
{
    for (double value = -900; value < 900; value += 37.31)
    {
        const double inches = ConvertLength(value, QPageLayout::Millimeter, QPageLayout::Inch);
        const double back = ConvertLength(inches, QPageLayout::Inch, QPageLayout::Millimeter);
        QVERIFY(near(back, value, 0.005 * 25.4 + 0.01));
    }
}

void tst_PrintLayout::zoomHasItsThreeFixedPoints()
{
    QCOMPARE(ZoomPercent(-40), 100 - 99.99);
    QCOMPARE(ZoomPercent(0), 100.0);
    QCOMPARE(ZoomPercent(40), 500.0);
    QCOMPARE(ZoomSlider(0.01), -40);
    QCOMPARE(ZoomSlider(100), 0);
    QCOMPARE(ZoomSlider(500), 40);
}

void tst_PrintLayout::zoomIsItsFormula()
{
    for (int slider = -40; slider <= 40; ++slider)
    {
        const double expected = slider < 1 ? 100 + slider / 40.0 * 99.99 : 100 + slider / 40.0 * 400;
        QCOMPARE(ZoomPercent(slider), expected);
        QCOMPARE(ZoomSlider(ZoomPercent(slider)), slider);
    }
}

void tst_PrintLayout::sliderIsItsFormula_data()
{
    QTest::addColumn<double>("percent");
    QTest::addColumn<int>("slider");
    QTest::newRow("half a step up is one") << 105.0 << 1;
    QTest::newRow("less than half a step up is none") << 104.9 << 0;
    QTest::newRow("half a step down is one") << 98.75 << -1;
    QTest::newRow("less than half a step down is none") << 98.76 << 0;
    QTest::newRow("one step down") << 97.5 << -1;
    QTest::newRow("1.6 steps down") << 96.0 << -2;
    QTest::newRow("middle of the upper half") << 300.0 << 20;
    QTest::newRow("middle of the lower half") << 50.0 << -20;
}

void tst_PrintLayout::sliderIsItsFormula()
{
    QFETCH(double, percent);
    QFETCH(int, slider);
    QCOMPARE(ZoomSlider(percent), slider);
}

void tst_PrintLayout::sliderTakesAnyPercentage()
{
    QCOMPARE(ZoomSlider(NaN), 0);
    QCOMPARE(ZoomSlider(Infinity), 40);
    QCOMPARE(ZoomSlider(-Infinity), -40);
    QCOMPARE(ZoomSlider(1e300), 40);
    QCOMPARE(ZoomSlider(0), -40);
    QCOMPARE(ZoomSlider(-5), -40);
    QCOMPARE(ZoomSlider(501), 40);
}

NV_TEST_MAIN(tst_PrintLayout)

#include "tst_PrintLayout.moc"
