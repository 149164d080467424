// The preview of a brush: what of the brush is seen, and how the picture follows the widget.

#include <QTranslator>
#include <QtTest>

#include <limits>

#include "BrushPreview.h"
#include "FixedMetricsStyle.h"
#include "IBrush.h"
#include "ProbeImage.h"
#include "TestMain.h"

namespace
{

const QColor Ink(10, 20, 200);
const QColor Paper(250, 240, 230);

class NamedBrush : public IBrush
{
public:
    NamedBrush() = default;
    explicit NamedBrush(const BrushTip& tip_) : tip(tip_) { }
    QIcon& GetColoredIcon(const QColor&) override { return m_icon; }
    QString GetName() const override { return name; }
    BrushTip GetTip() const override { return tip; }

    QString name;
    BrushTip tip;

private:
    QIcon m_icon;
};

// A preview of a fixed size and colours, without a name unless the brush has one.
class Preview : public BrushPreview
{
public:
    explicit Preview(const QSize& size = QSize(300, 90))
    {
        QPalette colors = palette();
        colors.setColor(QPalette::Text, Ink);
        colors.setColor(QPalette::Base, Paper);
        setPalette(colors);
        setFont(FixedMetricsStyle::Font());
        resize(size);
    }
    explicit Preview(const BrushTip& tip) : Preview() { Show(tip); }

    void Show(const BrushTip& tip)
    {
        const NamedBrush brush(tip);
        SetBrush(&brush);
    }
    ProbeImage Picture(qreal pixelRatio = 1.0) { return ProbeImage(this, pixelRatio); }

    int Paints = 0;

protected:
    void paintEvent(QPaintEvent* event) override
    {
        ++Paints;
        BrushPreview::paintEvent(event);
    }
};

// The part of a picture in device pixels.
ProbeImage Part(const ProbeImage& picture, const QRect& area)
{
    return ProbeImage(picture.Image().copy(area));
}

// The stamp stands in a square at the leading edge, a little away from the stroke.
ProbeImage StampOf(const ProbeImage& picture)
{
    return Part(picture, QRect(4, 4, 66, 82));
}

// Ink in one column, and where its middle lies.
struct Column
{
    int count = 0;
    double middle = 0.0;
};

Column ColumnAt(const ProbeImage& picture, int x, const QColor& ink = Ink)
{
    Column column;
    for (int y = 4; y < picture.Size().height() - 4; ++y)
    {
        if (ProbeImage::Similar(picture.At(x, y), ink, 100))
        {
            ++column.count;
            column.middle += y;
        }
    }
    column.middle /= qMax(1, column.count);
    return column;
}

} // namespace

class tst_BrushPreview : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsWithAnEmptyFace();
    void nullEmptiesTheFaceAgain();
    void nullOnAnEmptyFaceChangesNothing();
    void strokeIsACurveWithThinEnds();
    void stampShowsTheShape_data();
    void stampShowsTheShape();
    void stampShowsTheHardness();
    void stampShowsTheAngle();
    void strokeShowsTheTip();
    void turnedSquareIsNotCutOff();
    void brushIsNotKept();
    void equalBrushIsNotDrawnAnew();
    void nameIsShownBelow();
    void longNameStaysInside();
    void nameIsNoMarkup();
    void colorsFollowThePalette_data();
    void colorsFollowThePalette();
    void disabledPreviewIsPale();
    void sizeFollowsTheFont();
    void pictureIsSharpAtTwiceTheDensity();
    void pictureFollowsTheSize();
    void narrowPreviewHasNoStamp();
    void stampStandsOnTheRightInALanguageWrittenThatWay();
    void anySizeIsDrawn_data();
    void anySizeIsDrawn();
    void anyTipIsDrawn_data();
    void anyTipIsDrawn();
    void takesNoFocus();
    void tellsAScreenReaderWhatItShows();
    void descriptionFollowsTheLanguage();
};

void tst_BrushPreview::startsWithAnEmptyFace()
{
    Preview preview;

    const ProbeImage picture = preview.Picture();

    QCOMPARE(picture.CountOf(Ink, 60), 0);
    QCOMPARE(Part(picture, QRect(4, 4, 292, 82)).ColorCount(), 1);
    NV_VERIFY_NEAR(picture, 150, 45, Paper, 0);
}

void tst_BrushPreview::nullEmptiesTheFaceAgain()
{
    Preview preview;
    const ProbeImage empty = preview.Picture();
    preview.Show(BrushTip());
    QVERIFY(preview.Picture().CountOf(Ink) > 500);

    preview.SetBrush(nullptr);

    const ProbeImage again = preview.Picture();
    QVERIFY2(!again.Differs(empty), qPrintable(again.FailureText()));
}

void tst_BrushPreview::nullOnAnEmptyFaceChangesNothing()
{
    Preview preview;
    preview.show();
    QVERIFY(QTest::qWaitForWindowExposed(&preview));
    QCoreApplication::processEvents();
    const int before = preview.Paints;

    preview.SetBrush(nullptr);
    QCoreApplication::processEvents();

    QCOMPARE(preview.Paints, before);
}

void tst_BrushPreview::strokeIsACurveWithThinEnds()
{
    Preview preview{BrushTip()};

    const ProbeImage picture = preview.Picture();

    const QRect ink = picture.BoundsOf(Ink, 100);
    const Column first = ColumnAt(picture, 108);
    const Column valley = ColumnAt(picture, 145);
    const Column middle = ColumnAt(picture, 187);
    const Column crest = ColumnAt(picture, 230);
    const Column last = ColumnAt(picture, ink.right() - 8);
    QVERIFY(ink.right() > 270);
    QVERIFY(first.count > 0 && first.count < middle.count / 2);
    QVERIFY(last.count > 0 && last.count < middle.count / 2);
    QVERIFY(valley.middle > middle.middle + 5);
    QVERIFY(crest.middle < middle.middle - 5);
    QVERIFY(ink.top() > 4 && ink.bottom() < 85);
}

void tst_BrushPreview::stampShowsTheShape_data()
{
    QTest::addColumn<int>("shape");
    QTest::addColumn<bool>("corner"); // at the upper left end of the shape's bounds
    QTest::addColumn<bool>("shoulder"); // halfway from that corner to the centre
    QTest::addColumn<bool>("top"); // in the middle of the upper edge

    QTest::newRow("round") << int(BrushTip::Round) << false << true << true;
    QTest::newRow("square") << int(BrushTip::Square) << true << true << true;
    QTest::newRow("diamond") << int(BrushTip::Diamond) << false << false << true;
    QTest::newRow("star") << int(BrushTip::Star) << false << false << true;
}

void tst_BrushPreview::stampShowsTheShape()
{
    QFETCH(const int, shape);
    BrushTip tip;
    tip.shape = static_cast<BrushTip::Shape>(shape);
    Preview preview(tip);

    const ProbeImage stamp = StampOf(preview.Picture());

    const QRect bounds = stamp.BoundsOf(Ink, 40);
    QVERIFY(bounds.width() > 30 && bounds.height() > 30);
    const auto inked = [&](double fx, double fy)
    {
        return ProbeImage::Similar(
            stamp.At(bounds.left() + int(fx * bounds.width()), bounds.top() + int(fy * bounds.height())), Ink,
            40);
    };
    QTEST(inked(0.03, 0.03), "corner");
    QTEST(inked(0.2, 0.24), "shoulder");
    QTEST(inked(0.5, 0.06), "top");
}

void tst_BrushPreview::stampShowsTheHardness()
{
    BrushTip tip;
    Preview preview(tip);
    const ProbeImage hard = StampOf(preview.Picture());
    const QRect bounds = hard.BoundsOf(Ink, 40);
    tip.hardness = 0.0;

    preview.Show(tip);
    const ProbeImage soft = StampOf(preview.Picture());

    // Halfway out the hard one is full, the soft one fades.
    const QPoint halfway(bounds.left() + bounds.width() / 4, bounds.center().y());
    NV_VERIFY_NEAR(hard, halfway.x(), halfway.y(), Ink, 4);
    QVERIFY(!soft.Near(halfway.x(), halfway.y(), Ink, 40));
    QVERIFY(!soft.Near(halfway.x(), halfway.y(), Paper, 20));
    QVERIFY(soft.ColorCount() > 2 * hard.ColorCount());
}

void tst_BrushPreview::stampShowsTheAngle()
{
    BrushTip tip;
    tip.roundness = 0.2;
    tip.angle = 45.0;
    Preview preview(tip);
    const ProbeImage rising = StampOf(preview.Picture());
    const QRect bounds = rising.BoundsOf(Ink, 60);
    tip.angle = 135.0;
    preview.Show(tip);
    const ProbeImage falling = StampOf(preview.Picture());

    const QPoint upperRight(bounds.right() - bounds.width() / 6, bounds.top() + bounds.height() / 6);
    const QPoint upperLeft(bounds.left() + bounds.width() / 6, bounds.top() + bounds.height() / 6);
    QVERIFY(rising.Near(upperRight.x(), upperRight.y(), Ink, 60));
    QVERIFY(rising.Near(upperLeft.x(), upperLeft.y(), Paper, 20));
    QVERIFY(falling.Near(upperLeft.x(), upperLeft.y(), Ink, 60));
    QVERIFY(falling.Near(upperRight.x(), upperRight.y(), Paper, 20));
}

void tst_BrushPreview::strokeShowsTheTip()
{
    BrushTip tip;
    Preview preview(tip);
    const int thick = ColumnAt(preview.Picture(), 187).count;
    tip.roundness = 0.2;

    preview.Show(tip);
    const int thin = ColumnAt(preview.Picture(), 187).count;

    QVERIFY(thin > 0);
    QVERIFY(thin < thick * 2 / 3);
}

void tst_BrushPreview::turnedSquareIsNotCutOff()
{
    BrushTip tip;
    tip.shape = BrushTip::Square;
    tip.angle = 45.0;
    Preview preview(tip);

    const QRect ink = preview.Picture().BoundsOf(Ink, 60);

    QVERIFY(ink.top() > 4 && ink.bottom() < 85);
    QVERIFY(ink.left() > 4 && ink.right() < 295);
    // It stands on its tip.
    const ProbeImage stamp = StampOf(preview.Picture());
    const QRect bounds = stamp.BoundsOf(Ink, 60);
    NV_VERIFY_NEAR(stamp, bounds.left() + 2, bounds.top() + 2, Paper, 20);
    NV_VERIFY_NEAR(stamp, bounds.center().x(), bounds.top() + 4, Ink, 60);
}

void tst_BrushPreview::brushIsNotKept()
{
    Preview preview;
    auto brush = std::make_unique<NamedBrush>();
    preview.SetBrush(brush.get());
    const ProbeImage shown = preview.Picture();

    brush->tip.roundness = 0.1;
    QVERIFY2(!preview.Picture().Differs(shown), "a changed brush is to be given again");
    preview.SetBrush(brush.get());
    const ProbeImage changed = preview.Picture();
    QVERIFY(changed.Differs(shown));

    brush.reset();
    QVERIFY(!preview.Picture().Differs(changed));
}

void tst_BrushPreview::equalBrushIsNotDrawnAnew()
{
    Preview preview;
    NamedBrush brush;
    preview.SetBrush(&brush);
    preview.show();
    QVERIFY(QTest::qWaitForWindowExposed(&preview));
    QCoreApplication::processEvents();
    const int before = preview.Paints;

    preview.SetBrush(&brush);
    const NamedBrush twin;
    preview.SetBrush(&twin);
    QCoreApplication::processEvents();
    QCOMPARE(preview.Paints, before);

    brush.tip.hardness = 0.5;
    preview.SetBrush(&brush);
    QTRY_COMPARE(preview.Paints, before + 1);
}

void tst_BrushPreview::nameIsShownBelow()
{
    Preview preview;
    NamedBrush brush;
    preview.SetBrush(&brush);
    const ProbeImage nameless = preview.Picture();
    brush.name = "Chalk";

    preview.SetBrush(&brush);
    const ProbeImage named = preview.Picture();

    const int line = preview.fontMetrics().height();
    const QRect strip(4, 90 - 8 - line, 292, line);
    QCOMPARE(Part(nameless, strip).CountOf(Ink, 60), 0);
    const ProbeImage text = Part(named, strip);
    QVERIFY(text.CountOf(Ink, 60) > 20);
    QVERIFY(qAbs(text.BoundsOf(Ink, 60).center().x() - 146) < 6);
    const QRect above(4, 4, 292, strip.top() - 4);
    QVERIFY(!Part(named, above).Differs(Part(nameless, above)));
}

void tst_BrushPreview::longNameStaysInside()
{
    Preview preview;
    NamedBrush brush;
    brush.name = QString("A brush with a name that goes on and on ").repeated(10);

    preview.SetBrush(&brush);

    const QRect ink = preview.Picture().BoundsOf(Ink, 60);
    QVERIFY(ink.left() >= 7 && ink.right() <= 292);
}

void tst_BrushPreview::nameIsNoMarkup()
{
    Preview preview;
    NamedBrush brush;
    brush.name = "<b>M&M %1 %5</b>";

    preview.SetBrush(&brush);

    QVERIFY(preview.accessibleDescription().startsWith("<b>M&M %1 %5</b>: Round,"));
    const int line = preview.fontMetrics().height();
    const QRect text = Part(preview.Picture(), QRect(4, 82 - line, 292, line)).BoundsOf(Ink, 60);
    QVERIFY(qAbs(text.width() - preview.fontMetrics().horizontalAdvance(brush.name)) < 6);
}

void tst_BrushPreview::colorsFollowThePalette_data()
{
    QTest::addColumn<QColor>("ink");
    QTest::addColumn<QColor>("paper");

    QTest::newRow("light") << QColor(20, 20, 20) << QColor(255, 255, 255);
    QTest::newRow("dark") << QColor(230, 230, 230) << QColor(30, 30, 30);
    QTest::newRow("high contrast") << QColor(0, 0, 0) << QColor(255, 255, 255);
}

void tst_BrushPreview::colorsFollowThePalette()
{
    QFETCH(const QColor, ink);
    QFETCH(const QColor, paper);
    Preview preview{BrushTip()};
    preview.Picture();
    QPalette colors = preview.palette();
    colors.setColor(QPalette::Text, ink);
    colors.setColor(QPalette::Base, paper);

    preview.setPalette(colors);

    const ProbeImage picture = preview.Picture();
    NV_VERIFY_NEAR(picture, 187, int(ColumnAt(picture, 187, ink).middle), ink, 4);
    NV_VERIFY_NEAR(picture, 270, 80, paper, 0);
    QCOMPARE(picture.CountOf(Ink, 4), 0);
}

void tst_BrushPreview::disabledPreviewIsPale()
{
    Preview preview{BrushTip()};
    QPalette colors = preview.palette();
    colors.setColor(QPalette::Disabled, QPalette::Text, Qt::green);
    preview.setPalette(colors);
    QCOMPARE(preview.Picture().CountOf(Qt::green), 0);

    preview.setEnabled(false);

    QVERIFY(preview.Picture().CountOf(Qt::green) > 500);
    QCOMPARE(preview.Picture().CountOf(Ink, 20), 0);
}

void tst_BrushPreview::sizeFollowsTheFont()
{
    Preview preview;
    QFont font = preview.font();
    font.setPixelSize(12);
    preview.setFont(font);
    const int before = preview.sizeHint().height();
    const int line = preview.fontMetrics().height();

    font.setPixelSize(36);
    preview.setFont(font);

    QCOMPARE(preview.sizeHint().height() - before, preview.fontMetrics().height() - line);
    QCOMPARE(preview.sizeHint().width(), 300);
    QVERIFY(preview.minimumSizeHint().width() < preview.sizeHint().width());
}

void tst_BrushPreview::pictureIsSharpAtTwiceTheDensity()
{
    BrushTip tip;
    tip.shape = BrushTip::Square;
    Preview preview(tip);

    const ProbeImage coarse = preview.Picture(1.0);
    const ProbeImage fine = preview.Picture(2.0);

    // The same picture, with edges that are not wider than at half the density.
    QCOMPARE(fine.Image().size(), QSize(600, 180));
    const QRect one = coarse.BoundsOf(Ink, 100);
    const QRect two = fine.BoundsOf(Ink, 100);
    QVERIFY(qAbs(one.left() - two.left()) <= 1);
    QVERIFY(qAbs(one.top() - two.top()) <= 1 && qAbs(one.bottom() - two.bottom()) <= 1);
    const auto between = [](const ProbeImage& picture)
    {
        const QImage image = picture.Image();
        return image.width() * image.height() - picture.CountOf(Ink, 8) - picture.CountOf(Paper, 8);
    };
    QVERIFY(between(fine) < 3 * between(coarse));
    const ProbeImage scaled(coarse.Image().scaled(600, 180));
    QVERIFY(fine.Differs(scaled, 60));
}

void tst_BrushPreview::pictureFollowsTheSize()
{
    Preview preview{BrushTip()};
    const QRect before = preview.Picture().BoundsOf(Ink, 60);

    preview.resize(600, 140);

    const QRect after = preview.Picture().BoundsOf(Ink, 60);
    QVERIFY(after.right() > 560);
    QVERIFY(after.height() > before.height() * 5 / 4);
}

void tst_BrushPreview::narrowPreviewHasNoStamp()
{
    Preview wide{BrushTip()};
    Preview narrow(QSize(120, 90));
    narrow.Show(BrushTip());

    // The stroke is a single piece: no empty column between its ends.
    const ProbeImage picture = narrow.Picture();
    const QRect ink = picture.BoundsOf(Ink, 120);
    for (int x = ink.left() + 2; x < ink.right() - 2; ++x)
        QVERIFY2(ColumnAt(picture, x).count > 0, qPrintable(QString::number(x)));
    QVERIFY(ink.width() > 60);
    const ProbeImage other = wide.Picture();
    const QRect stamp = StampOf(other).BoundsOf(Ink, 60);
    QCOMPARE(ColumnAt(other, 4 + stamp.right() + 4).count, 0);
}

void tst_BrushPreview::stampStandsOnTheRightInALanguageWrittenThatWay()
{
    Preview preview{BrushTip()};
    const QRect leftStamp = StampOf(preview.Picture()).BoundsOf(Ink, 60);

    preview.setLayoutDirection(Qt::RightToLeft);

    const ProbeImage picture = preview.Picture();
    const QRect rightStamp = Part(picture, QRect(230, 4, 66, 82)).BoundsOf(Ink, 60);
    QCOMPARE(rightStamp.size(), leftStamp.size());
    QVERIFY(picture.BoundsOf(Ink, 100).left() < 40);
}

void tst_BrushPreview::anySizeIsDrawn_data()
{
    QTest::addColumn<QSize>("size");

    for (const QSize& size : {QSize(0, 0), QSize(1, 1), QSize(2, 90), QSize(300, 3), QSize(16, 16),
                              QSize(17, 200), QSize(300, 30), QSize(4000, 90), QSize(3000, 2000)})
        QTest::addRow("%d x %d", size.width(), size.height()) << size;
}

void tst_BrushPreview::anySizeIsDrawn()
{
    QFETCH(const QSize, size);
    Preview preview{BrushTip()};
    preview.setMinimumSize(0, 0);

    preview.resize(size);

    QImage image(size.expandedTo(QSize(1, 1)), QImage::Format_ARGB32_Premultiplied);
    image.fill(Paper);
    preview.render(&image);
    if (size.width() >= 300 && size.height() >= 30)
        QVERIFY(ProbeImage(image).CountOf(Ink, 60) > 100);
}

void tst_BrushPreview::anyTipIsDrawn_data()
{
    QTest::addColumn<int>("shape");
    QTest::addColumn<double>("value");

    const double infinity = std::numeric_limits<double>::infinity();
    QTest::newRow("spray") << int(BrushTip::Spray) << 0.5;
    QTest::newRow("no number") << int(BrushTip::Round) << std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("infinite") << int(BrushTip::Square) << infinity;
    QTest::newRow("negative infinite") << int(BrushTip::Spray) << -infinity;
    QTest::newRow("huge") << int(BrushTip::Star) << 1e300;
    QTest::newRow("negative") << int(BrushTip::Diamond) << -5.0;
    QTest::newRow("unknown shape") << 77 << 1.0;
    QTest::newRow("negative shape") << -1 << 1.0;
}

void tst_BrushPreview::anyTipIsDrawn()
{
    QFETCH(const int, shape);
    QFETCH(const double, value);
    BrushTip tip;
    tip.shape = static_cast<BrushTip::Shape>(shape);
    tip.hardness = value;
    tip.roundness = value;
    tip.angle = value;

    Preview preview(tip);

    QVERIFY(preview.Picture().CountOf(Paper) < 300 * 90 - 300);
    QVERIFY(!preview.accessibleDescription().isEmpty());
}

void tst_BrushPreview::takesNoFocus()
{
    QWidget window;
    auto* preview = new Preview;
    preview->setParent(&window);
    QWidget canvas(&window);
    canvas.setFocusPolicy(Qt::StrongFocus);
    window.resize(400, 200);
    window.show();
    canvas.setFocus();
    QVERIFY(QTest::qWaitForWindowActive(&window));

    QTest::mouseClick(preview, Qt::LeftButton);
    QTest::keyClick(&canvas, Qt::Key_Tab);

    QCOMPARE(preview->focusPolicy(), Qt::NoFocus);
    QVERIFY(canvas.hasFocus());
}

void tst_BrushPreview::tellsAScreenReaderWhatItShows()
{
    BrushPreview preview;
    QCOMPARE(preview.accessibleName(), QString("Brush preview"));
    QCOMPARE(preview.accessibleDescription(), QString("No brush"));

    NamedBrush brush;
    brush.name = "Calligraphy";
    brush.tip = {BrushTip::Diamond, 0.95, 0.18, 45.0};
    preview.SetBrush(&brush);
    QCOMPARE(preview.accessibleDescription(),
             QString::fromUtf8("Calligraphy: Diamond, hardness 95%, roundness 18%, angle 45°"));

    preview.SetBrush(nullptr);
    QCOMPARE(preview.accessibleDescription(), QString("No brush"));
}

void tst_BrushPreview::descriptionFollowsTheLanguage()
{
    class Shouting : public QTranslator
    {
    public:
        QString translate(const char* context, const char* text, const char*, int) const override
        {
            return qstrcmp(context, "BrushPreview") == 0 ? QString::fromUtf8(text).toUpper() : QString();
        }
        bool isEmpty() const override { return false; }
    } translator;
    BrushPreview preview;

    QCoreApplication::installTranslator(&translator);
    QCoreApplication::processEvents();

    QCOMPARE(preview.accessibleName(), QString("BRUSH PREVIEW"));
    QCOMPARE(preview.accessibleDescription(), QString("NO BRUSH"));
    QCoreApplication::removeTranslator(&translator);
}

NV_TEST_MAIN(tst_BrushPreview)
#include "tst_BrushPreview.moc"
