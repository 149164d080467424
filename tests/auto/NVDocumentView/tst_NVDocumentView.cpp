// The canvas: what it shows at every scale, how it zooms and pans, and what it hands to a tool.

#include <QApplication>
#include <QGraphicsScene>
#include <QPainter>
#include <QScrollBar>
#include <QTabletEvent>
#include <QWheelEvent>
#include <limits>
#include <memory>

#include "KXColorTransformBase.h"
#include "KXDocumentInterface.h"
#include "KXDocumentModel.h"
#include "NVDocumentView.h"
#include "ProbeImage.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

// Each pixel of another colour, so that it is known when seen.
QImage numbered(int width, int height)
{
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < height; ++y)
    {
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, qRgb((x * 40) % 256, (y * 40) % 256, 128));
    }
    return image;
}

QImage filled(int width, int height, const QColor& color)
{
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    return image;
}

struct Canvas
{
    KXDocumentInterface document;
    KXDocumentModel model;
    NVDocumentView view;

    explicit Canvas(const QImage& image) : document(image), model(&document), view(&model)
    {
        view.resize(300, 200);
    }

    void Show()
    {
        view.show();
        view.activateWindow();
        view.setFocus();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        QTRY_VERIFY(view.hasFocus());
    }

    // What the viewport shows.
    ProbeImage Probe(qreal ratio = 1.0) { return ProbeImage(view.viewport(), ratio); }

    QPoint PlaceOf(const QPointF& documentPoint) { return view.MapFromDocument(documentPoint).toPoint(); }

    void Wheel(const QPointF& position, const QPoint& angle, const QPoint& pixels = QPoint(),
               Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QWheelEvent event(position, view.viewport()->mapToGlobal(position.toPoint()), pixels, angle,
                          Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(view.viewport(), &event);
        QVERIFY(event.isAccepted());
    }

    bool Pen(QEvent::Type type, const QPointF& position, double pressure, Qt::MouseButton button,
             Qt::MouseButtons buttons, QTabletEvent::PointerType pointer = QTabletEvent::Pen)
    {
        QTabletEvent event(type, position, view.viewport()->mapToGlobal(position.toPoint()),
                           QTabletEvent::Stylus, pointer, pressure, 0, 0, 0, 0, 0, Qt::NoModifier, 1, button,
                           buttons);
        event.ignore();
        QCoreApplication::sendEvent(view.viewport(), &event);
        return event.isAccepted();
    }
};

bool near(const QPointF& a, const QPointF& b, double tolerance)
{
    return qAbs(a.x() - b.x()) <= tolerance && qAbs(a.y() - b.y()) <= tolerance;
}

// Swaps red and blue.
class SwapFilter : public KXColorTransformBase
{
public:
    void Apply(QImage& image) const override { image = image.rgbSwapped(); }
};

class SwapModel : public KXDocumentModel
{
public:
    using KXDocumentModel::KXDocumentModel;
    KXColorTransformBase* CreateComplexFilter() const override { return new SwapFilter; }
};

} // namespace

class tst_NVDocumentView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aViewWithoutModelIsEmpty();
    void theDocumentStandsInTheMiddleAtFullSize();
    void sceneCoordinatesAreDocumentPixels();
    void mappingGoesBothWays();

    void scaleKeepsThePixelUnderThePoint();
    void scaleIsCutToItsLimits();
    void aBadFactorIsIgnored();
    void scaleChangedComesOnceAndOnlyOnChange();
    void sceneAreaChangedFollowsZoomScrollAndResize();
    void aListenerMayScaleAgain();
    void fitInViewShowsAll_data();
    void fitInViewShowsAll();
    void fittingFollowsTheSizeUntilTheNextZoom();
    void anyPixelCanBeBroughtToTheMiddle();
    void partOfTheDocumentStaysInSight();

    void eachPixelIsSharpWhenMagnified_data();
    void eachPixelIsSharpWhenMagnified();
    void aGridStandsBetweenThePixels();
    void transparencyShowsACheckerboard();
    void aReducedDocumentShowsItsMean();
    void theLastPixelsOfAnOddDocumentAreShown_data();
    void theLastPixelsOfAnOddDocumentAreShown();
    void theScreenFilterIsApplied_data();
    void theScreenFilterIsApplied();
    void aChangeShowsAtEveryScale_data();
    void aChangeShowsAtEveryScale();
    void aSmallChangeRepaintsASmallArea();
    void aPartPaintsAsTheWhole_data();
    void aPartPaintsAsTheWhole();
    void aDocumentOf24MegapixelsIsShown();

    void theWheelZoomsAboutThePointer();
    void theWheelWithControlZoomsToo();
    void aTrackpadZoomsInSmallSteps();
    void theWheelWithShiftPansSideways();
    void aSidewaysWheelPans();
    void theMiddleButtonPans();
    void spaceAndTheLeftButtonPan();
    void aRepeatedSpaceStaysSpace();
    void losingTheFocusEndsPanning();
    void arrowsPan();
    void theCursorTellsTheMode();

    void aToolGetsPressMoveAndRelease();
    void everyMoveIsReported();
    void theRightButtonIsReported();
    void aSecondButtonIsNotReported();
    void noMoveIsReportedWhilePanning();
    void aDoubleClickIsASecondPress();
    void leavingIsReported();
    void aPenBringsItsPressure();
    void aPenIsNotAMouseToo();
    void thePressIsCancelledWhenTheDocumentGoes();
    void thePressIsCancelledWhenTheViewIsHidden();
    void theOverlayIsDrawnOverTheDocument();
    void theOverlayIsRepaintedWhereAsked();

    void anotherModelIsShown();
    void aFittedDocumentOfAnotherSizeIsFittedAgain();
    void anotherSizeKeepsScaleAndMiddle();
    void anotherSizeIsShownToItsEdges();
    void thePressIsCancelledWhenTheSizeChanges();
    void theDocumentMayGoFirst();
    void theViewMayGoWhilePressed();
    void itTakesTheFocusAndHasAName();
};

void tst_NVDocumentView::aViewWithoutModelIsEmpty()
{
    NVDocumentView view(nullptr);
    view.resize(100, 80);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));

    QCOMPARE(view.GetModel(), nullptr);
    QCOMPARE(view.GetScale(), 1.0);
    view.Scale(2.0, QPointF(10, 10));
    view.FitInView();
    const ProbeImage probe(view.viewport());
    QCOMPARE(probe.ColorCount(), 1);
    QCOMPARE(probe.AtFraction(0.5, 0.5).rgb(), view.palette().color(QPalette::Dark).rgb());
}

void tst_NVDocumentView::theDocumentStandsInTheMiddleAtFullSize()
{
    Canvas canvas(filled(100, 50, Qt::red));
    canvas.Show();

    const QSize sight = canvas.view.viewport()->size();
    const ProbeImage probe = canvas.Probe();
    const QRect bounds = probe.BoundsOf(Qt::red, 0);

    QCOMPARE(canvas.view.GetScale(), 1.0);
    QCOMPARE(bounds.size(), QSize(100, 50));
    QVERIFY(qAbs(bounds.left() - (sight.width() - 100) / 2) <= 1);
    QVERIFY(qAbs(bounds.top() - (sight.height() - 50) / 2) <= 1);
    QCOMPARE(probe.At(1, 1).rgb(), canvas.view.palette().color(QPalette::Dark).rgb());
}

void tst_NVDocumentView::sceneCoordinatesAreDocumentPixels()
{
    Canvas canvas(numbered(60, 40));
    canvas.Show();
    canvas.view.Scale(3.0, QPointF(10, 20));

    const QPoint point(70, 80);
    QVERIFY(near(canvas.view.mapToScene(point), canvas.view.MapToDocument(point), 0.0001));
    canvas.view.centerOn(QPointF(30, 20));
    const QPointF middle = canvas.view.mapToScene(canvas.view.viewport()->rect().center());
    QVERIFY(near(middle, QPointF(30, 20), 1.0));
}

void tst_NVDocumentView::mappingGoesBothWays()
{
    Canvas canvas(numbered(60, 40));
    canvas.Show();
    canvas.view.Scale(0.37, QPointF(10, 20));

    const QPointF point(12.25, -3.5);
    QVERIFY(near(canvas.view.MapToDocument(canvas.view.MapFromDocument(point)), point, 1e-6));
}

void tst_NVDocumentView::scaleKeepsThePixelUnderThePoint()
{
    Canvas canvas(numbered(600, 400));
    canvas.Show();
    const QPointF point(37, 151);

    for (const double factor : {1.5, 0.2, 7.0, 1.01, 0.9, 16.0, 0.001})
    {
        const QPointF before = canvas.view.MapToDocument(point);
        canvas.view.Scale(factor, point);
        // The picture moves by whole pixels of the screen.
        QVERIFY(near(canvas.view.MapFromDocument(before), point, 0.51));
    }
}

void tst_NVDocumentView::scaleIsCutToItsLimits()
{
    Canvas canvas(numbered(60, 40));
    canvas.Show();

    canvas.view.Scale(1e9, QPointF(10, 10));
    QCOMPARE(canvas.view.GetScale(), NVDocumentView::MaxScale);
    canvas.view.Scale(1e-9, QPointF(10, 10));
    QCOMPARE(canvas.view.GetScale(), NVDocumentView::MinScale);
    canvas.view.Scale(std::numeric_limits<double>::max(), QPointF(10, 10));
    QCOMPARE(canvas.view.GetScale(), 64.0);
    canvas.view.Scale(std::numeric_limits<double>::denorm_min(), QPointF(10, 10));
    QCOMPARE(canvas.view.GetScale(), 1.0 / 64);
}

void tst_NVDocumentView::aBadFactorIsIgnored()
{
    Canvas canvas(numbered(60, 40));
    canvas.Show();
    SignalLog log(&canvas.view);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();

    for (const double factor : {0.0, -1.0, nan, infinity, -infinity})
        canvas.view.Scale(factor, QPointF(10, 10));
    canvas.view.Scale(2.0, QPointF(nan, 10));

    QCOMPARE(canvas.view.GetScale(), 1.0);
    QCOMPARE(log.Count(QStringLiteral("ScaleChanged")), 0);
}

void tst_NVDocumentView::scaleChangedComesOnceAndOnlyOnChange()
{
    Canvas canvas(numbered(60, 40));
    canvas.Show();
    SignalLog log(&canvas.view);

    canvas.view.Scale(2.0, QPointF(10, 10));
    QCOMPARE(log.Entries(), QStringList({"ScaleChanged(2)", "SceneAreaChanged()"}));
    canvas.view.Scale(1.0, QPointF(10, 10));
    canvas.view.Scale(1000.0, QPointF(10, 10));
    canvas.view.Scale(1000.0, QPointF(10, 10));

    QCOMPARE(log.Count(QStringLiteral("ScaleChanged")), 2);
    QCOMPARE(log.Count(QStringLiteral("SceneAreaChanged")), 2);
}

void tst_NVDocumentView::sceneAreaChangedFollowsZoomScrollAndResize()
{
    Canvas canvas(numbered(900, 700));
    canvas.Show();
    SignalLog log(&canvas.view);

    canvas.view.horizontalScrollBar()->setValue(canvas.view.horizontalScrollBar()->value() + 10);
    QCOMPARE(log.Entries(), QStringList({"SceneAreaChanged()"}));
    canvas.view.horizontalScrollBar()->setValue(canvas.view.horizontalScrollBar()->value());
    QCOMPARE(log.Count(), 1);
    canvas.view.resize(320, 220);
    QTRY_COMPARE(log.Count(), 2);
    canvas.view.Scale(0.5, QPointF(1, 1));
    QCOMPARE(log.Count(QStringLiteral("SceneAreaChanged")), 3);
}

void tst_NVDocumentView::aListenerMayScaleAgain()
{
    Canvas canvas(numbered(60, 40));
    canvas.Show();
    connect(&canvas.view, &NVDocumentView::ScaleChanged, this,
            [&](double scale) { canvas.view.Scale(4.0 / scale, QPointF(20, 20)); });

    canvas.view.Scale(3.0, QPointF(10, 10));

    QCOMPARE(canvas.view.GetScale(), 4.0);
    QCOMPARE(canvas.view.transform().m11(), 4.0);
}

void tst_NVDocumentView::fitInViewShowsAll_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("landscape") << QSize(3000, 400);
    QTest::newRow("portrait") << QSize(200, 1900);
    QTest::newRow("small") << QSize(16, 16);
    QTest::newRow("one pixel") << QSize(1, 1);
}

void tst_NVDocumentView::fitInViewShowsAll()
{
    QFETCH(QSize, size);
    Canvas canvas(filled(size.width(), size.height(), Qt::red));
    canvas.view.FitInView();
    canvas.Show();

    const QRectF shown(canvas.view.MapFromDocument(QPointF(0, 0)),
                       canvas.view.MapFromDocument(QPointF(size.width(), size.height())));
    const QRectF sight(canvas.view.viewport()->rect());

    QVERIFY(sight.contains(shown));
    QVERIFY(near(shown.center(), sight.center(), 1.1));
    QVERIFY(canvas.view.GetScale() == NVDocumentView::MaxScale || shown.width() > sight.width() - 20 ||
            shown.height() > sight.height() - 20);
}

void tst_NVDocumentView::fittingFollowsTheSizeUntilTheNextZoom()
{
    Canvas canvas(numbered(900, 700));
    canvas.Show();
    canvas.view.FitInView();
    const double small = canvas.view.GetScale();

    canvas.view.resize(600, 500);
    QTRY_VERIFY(canvas.view.GetScale() > small);
    canvas.view.Scale(1.1, QPointF(10, 10));
    const double own = canvas.view.GetScale();
    canvas.view.resize(400, 300);
    QTRY_COMPARE(canvas.view.size(), QSize(400, 300));
    QCOMPARE(canvas.view.GetScale(), own);
}

void tst_NVDocumentView::anyPixelCanBeBroughtToTheMiddle()
{
    Canvas canvas(numbered(90, 70));
    canvas.Show();
    for (const double scale : {0.1, 1.0, 20.0})
    {
        canvas.view.Scale(scale / canvas.view.GetScale(), QPointF(10, 10));
        for (const QPointF& corner : {QPointF(0, 0), QPointF(90, 70)})
        {
            canvas.view.centerOn(corner);
            QVERIFY(near(canvas.view.MapFromDocument(corner), QRectF(canvas.view.viewport()->rect()).center(),
                         1.6));
        }
    }
}

void tst_NVDocumentView::partOfTheDocumentStaysInSight()
{
    Canvas canvas(filled(90, 70, Qt::red));
    canvas.Show();

    for (QScrollBar* bar : {canvas.view.horizontalScrollBar(), canvas.view.verticalScrollBar()})
    {
        bar->setValue(bar->maximum());
        QVERIFY(canvas.Probe().CountOf(Qt::red, 0) > 300);
        bar->setValue(bar->minimum());
        QVERIFY(canvas.Probe().CountOf(Qt::red, 0) > 300);
    }
}

void tst_NVDocumentView::eachPixelIsSharpWhenMagnified_data()
{
    QTest::addColumn<double>("scale");
    QTest::addColumn<double>("ratio");
    QTest::newRow("twofold") << 2.0 << 1.0;
    QTest::newRow("threefold") << 3.0 << 1.0;
    QTest::newRow("five and a half fold") << 5.5 << 1.0;
    QTest::newRow("full size, fine screen") << 1.0 << 2.0;
    QTest::newRow("threefold, fine screen") << 3.0 << 2.0;
}

void tst_NVDocumentView::eachPixelIsSharpWhenMagnified()
{
    QFETCH(double, scale);
    QFETCH(double, ratio);
    const QImage image = numbered(30, 20);
    Canvas canvas(image);
    canvas.Show();
    canvas.view.Scale(scale, QPointF(100, 100));
    canvas.view.centerOn(QPointF(15, 10));

    const QImage shown = canvas.Probe(ratio).Image();
    int checked = 0;
    for (int y = 0; y < shown.height(); y += 3)
    {
        for (int x = 0; x < shown.width(); x += 3)
        {
            const QPointF at = canvas.view.MapToDocument(QPointF(x + 0.5, y + 0.5) / ratio);
            // Right on the border between two pixels, either is right.
            const bool onBorder =
                qAbs(at.x() - qRound(at.x())) < 1e-6 || qAbs(at.y() - qRound(at.y())) < 1e-6;
            if (onBorder || !QRectF(image.rect()).contains(at))
                continue;
            QCOMPARE(QColor(shown.pixel(x, y)), QColor(image.pixel(int(at.x()), int(at.y()))));
            ++checked;
        }
    }
    QVERIFY(checked > 100);
}

void tst_NVDocumentView::aGridStandsBetweenThePixels()
{
    Canvas canvas(filled(30, 20, QColor(200, 200, 200)));
    canvas.Show();
    canvas.view.Scale(7.9, QPointF(100, 100));
    canvas.view.centerOn(QPointF(15, 10));
    const QPoint middle = canvas.view.viewport()->rect().center();
    const auto colors = [&]
    { return ProbeImage(canvas.Probe().Image().copy(QRect(middle, QSize(40, 40)))).ColorCount(); };
    QCOMPARE(colors(), 1);

    canvas.view.Scale(16 / 7.9, QPointF(100, 100));
    canvas.view.centerOn(QPointF(15, 10));
    QCOMPARE(colors(), 2);
    const QPoint corner = canvas.PlaceOf(QPointF(14, 9));
    const ProbeImage probe = canvas.Probe();
    QVERIFY(probe.At(corner.x(), corner.y() + 5) != QColor(200, 200, 200));
    NV_VERIFY_NEAR(probe, corner.x() + 1, corner.y() + 5, QColor(200, 200, 200), 0);
    NV_VERIFY_NEAR(probe, corner.x() + 15, corner.y() + 5, QColor(200, 200, 200), 0);
    QVERIFY(probe.At(corner.x() + 16, corner.y() + 5) != QColor(200, 200, 200));
}

void tst_NVDocumentView::transparencyShowsACheckerboard()
{
    QImage image = filled(80, 60, Qt::transparent);
    for (int y = 0; y < 60; ++y)
    {
        for (int x = 40; x < 80; ++x)
            image.setPixel(x, y, qPremultiply(qRgba(255, 0, 0, 128)));
    }
    Canvas canvas(image);
    canvas.Show();

    const ProbeImage probe = canvas.Probe();
    const QPoint corner = canvas.PlaceOf(QPointF(0, 0));
    NV_VERIFY_NEAR(probe, corner.x() + 2, corner.y() + 2, Qt::white, 0);
    NV_VERIFY_NEAR(probe, corner.x() + 10, corner.y() + 2, QColor(204, 204, 204), 0);
    NV_VERIFY_NEAR(probe, corner.x() + 10, corner.y() + 10, Qt::white, 0);
    NV_VERIFY_NEAR(probe, corner.x() + 50, corner.y() + 2, QColor(255, 127, 127), 2);
    NV_VERIFY_NEAR(probe, corner.x() + 58, corner.y() + 2, QColor(230, 102, 102), 2);
}

void tst_NVDocumentView::aReducedDocumentShowsItsMean()
{
    // One black and three white pixels in every block: reading single pixels would show black or white.
    QImage image = filled(1024, 768, Qt::white);
    for (int y = 0; y < 768; y += 2)
    {
        for (int x = 0; x < 1024; x += 2)
            image.setPixel(x, y, qRgb(0, 0, 0));
    }
    Canvas canvas(image);
    canvas.Show();
    for (const double scale : {0.5, 0.3, 0.25, 0.1, 0.04})
    {
        canvas.view.Scale(scale / canvas.view.GetScale(), QPointF(100, 100));
        canvas.view.centerOn(QPointF(512, 384));
        const QPoint middle = canvas.view.viewport()->rect().center();
        NV_VERIFY_NEAR(canvas.Probe(), middle.x(), middle.y(), QColor(191, 191, 191), 3);
        NV_VERIFY_NEAR(canvas.Probe(), middle.x() + 3, middle.y() + 2, QColor(191, 191, 191), 3);
    }
}

void tst_NVDocumentView::theLastPixelsOfAnOddDocumentAreShown_data()
{
    QTest::addColumn<double>("scale");
    for (const double scale : {0.07, 0.13, 0.33, 0.5, 0.77, 1.0, 1.3, 1.9, 2.7, 8.0})
        QTest::addRow("scale %g", scale) << scale;
}

void tst_NVDocumentView::theLastPixelsOfAnOddDocumentAreShown()
{
    QFETCH(double, scale);
    Canvas canvas(filled(201, 133, Qt::red));
    canvas.Show();
    canvas.view.Scale(scale, QPointF(100, 100));
    canvas.view.centerOn(QPointF(201, 133));

    const QRect bounds = canvas.Probe().BoundsOf(Qt::red, 100);
    const QPointF end = canvas.view.MapFromDocument(QPointF(201, 133));
    QVERIFY(near(QPointF(bounds.right() + 1, bounds.bottom() + 1), end, 0.51));
    // Nothing but the document, its grid and the surround: no line of the checkerboard at the edge.
    QCOMPARE(canvas.Probe().CountOf(Qt::white, 40), 0);
}

void tst_NVDocumentView::theScreenFilterIsApplied_data()
{
    QTest::addColumn<double>("scale");
    QTest::newRow("reduced") << 0.3;
    QTest::newRow("full size") << 1.0;
    QTest::newRow("magnified") << 3.0;
}

void tst_NVDocumentView::theScreenFilterIsApplied()
{
    QFETCH(double, scale);
    KXDocumentInterface document(filled(400, 300, Qt::red));
    const SwapModel model(&document);
    NVDocumentView view(const_cast<SwapModel*>(&model));
    view.resize(200, 150);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    view.Scale(scale, QPointF(50, 50));
    view.centerOn(QPointF(200, 150));

    const ProbeImage probe(view.viewport());

    QCOMPARE(probe.AtFraction(0.5, 0.5), QColor(Qt::blue));
    QCOMPARE(QColor(document.GetComposition().pixel(0, 0)), QColor(Qt::red));
}

void tst_NVDocumentView::aChangeShowsAtEveryScale_data()
{
    QTest::addColumn<double>("scale");
    for (const double scale : {0.1, 0.25, 0.4, 0.8, 1.0, 1.5, 4.0})
        QTest::addRow("scale %g", scale) << scale;
}

// The very pixels that a new view shows, after a change that touched only its own area.
void tst_NVDocumentView::aChangeShowsAtEveryScale()
{
    QFETCH(double, scale);
    Canvas canvas(numbered(501, 301));
    canvas.Show();
    canvas.view.Scale(scale, QPointF(100, 100));
    canvas.view.centerOn(QPointF(250, 150));
    const QImage before = canvas.view.grab().toImage();

    const QRect area(233, 141, 37, 19);
    {
        QPainter painter(&canvas.document.EditLayer(0));
        painter.fillRect(area, Qt::yellow);
    }
    canvas.document.NotifyChanged(area);

    NVDocumentView fresh(&canvas.model);
    fresh.resize(canvas.view.size());
    fresh.show();
    QVERIFY(QTest::qWaitForWindowExposed(&fresh));
    fresh.Scale(scale, QPointF(100, 100));
    fresh.centerOn(QPointF(250, 150));
    const ProbeImage after(canvas.view.viewport());
    QVERIFY2(!after.Differs(ProbeImage(fresh.viewport())), qPrintable(after.FailureText()));
    QVERIFY(canvas.view.grab().toImage() != before);
}

namespace
{

// Notes what a widget paints.
class PaintWatch : public QObject
{
public:
    explicit PaintWatch(QWidget* widget) { widget->installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            painted += static_cast<QPaintEvent*>(event)->region();
        return false;
    }

    QRegion painted;
};

} // namespace

void tst_NVDocumentView::aSmallChangeRepaintsASmallArea()
{
    Canvas canvas(numbered(900, 700));
    canvas.Show();
    canvas.view.Scale(0.3, QPointF(100, 100));
    canvas.view.centerOn(QPointF(450, 350));
    QCoreApplication::processEvents();
    PaintWatch watch(canvas.view.viewport());

    canvas.document.NotifyChanged(QRect(440, 340, 20, 10));
    QTRY_VERIFY(!watch.painted.isEmpty());

    const QRectF changed(canvas.view.MapFromDocument(QPointF(440, 340)),
                         canvas.view.MapFromDocument(QPointF(460, 350)));
    QVERIFY(QRectF(watch.painted.boundingRect()).contains(changed));
    QVERIFY(watch.painted.boundingRect().width() < 16);
    QVERIFY(watch.painted.boundingRect().height() < 16);
}

void tst_NVDocumentView::aPartPaintsAsTheWhole_data()
{
    aChangeShowsAtEveryScale_data();
    QTest::newRow("scale 9.7") << 9.7;
}

void tst_NVDocumentView::aPartPaintsAsTheWhole()
{
    QFETCH(double, scale);
    Canvas canvas(numbered(501, 301));
    canvas.Show();
    canvas.view.Scale(scale, QPointF(100, 100));
    canvas.view.centerOn(QPointF(250, 150));

    const QImage whole = canvas.view.viewport()->grab().toImage();
    for (const QRect& rect : {QRect(101, 77, 30, 41), QRect(3, 90, 200, 7)})
    {
        const QImage part = canvas.view.viewport()->grab(rect).toImage();
        QCOMPARE(part, whole.copy(rect));
    }
}

void tst_NVDocumentView::aDocumentOf24MegapixelsIsShown()
{
    Canvas canvas(filled(6000, 4000, QColor(10, 200, 30)));
    canvas.view.FitInView();
    canvas.Show();
    const QPoint middle = canvas.view.viewport()->rect().center();
    NV_VERIFY_NEAR(canvas.Probe(), middle.x(), middle.y(), QColor(10, 200, 30), 1);

    // A stroke's dabs, each shown: what counts is that nothing is done for the whole picture.
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < 200; ++i)
    {
        const QRect area(2900 + i, 1990, 40, 40);
        QPainter painter(&canvas.document.EditLayer(0));
        painter.fillRect(area, Qt::red);
        painter.end();
        canvas.document.NotifyChanged(area);
        canvas.view.viewport()->repaint(QRect(middle - QPoint(20, 20), QSize(40, 40)));
    }
    QVERIFY2(timer.elapsed() < 4000, qPrintable(QString::number(timer.elapsed())));
    // The stroke is two pixels high here, so that its colour is mixed with what it is painted on.
    QVERIFY(canvas.Probe().At(middle.x(), middle.y()).red() > 100);
}

void tst_NVDocumentView::theWheelZoomsAboutThePointer()
{
    Canvas canvas(numbered(600, 400));
    canvas.Show();
    const QPointF pointer(60, 140);
    const QPointF under = canvas.view.MapToDocument(pointer);

    canvas.Wheel(pointer, QPoint(0, 120));
    QVERIFY(canvas.view.GetScale() > 1.1);
    QVERIFY(near(canvas.view.MapFromDocument(under), pointer, 0.51));
    canvas.Wheel(pointer, QPoint(0, -120));

    QVERIFY(qFuzzyCompare(canvas.view.GetScale(), 1.0));
    QVERIFY(near(canvas.view.MapFromDocument(under), pointer, 1.01));
}

void tst_NVDocumentView::theWheelWithControlZoomsToo()
{
    Canvas canvas(numbered(600, 400));
    canvas.Show();

    canvas.Wheel(QPointF(60, 140), QPoint(0, 120), QPoint(), Qt::ControlModifier);

    QVERIFY(canvas.view.GetScale() > 1.1);
}

void tst_NVDocumentView::aTrackpadZoomsInSmallSteps()
{
    Canvas canvas(numbered(600, 400));
    canvas.Show();

    canvas.Wheel(QPointF(60, 140), QPoint(0, 12), QPoint(0, 5));
    const double small = canvas.view.GetScale();
    QVERIFY(small > 1.0 && small < 1.05);
    // A device that tells pixels only.
    canvas.Wheel(QPointF(60, 140), QPoint(), QPoint(0, 5));
    QVERIFY(canvas.view.GetScale() > small && canvas.view.GetScale() < 1.1);
}

void tst_NVDocumentView::theWheelWithShiftPansSideways()
{
    Canvas canvas(numbered(900, 700));
    canvas.Show();
    const QPointF before = canvas.view.MapFromDocument(QPointF(0, 0));

    canvas.Wheel(QPointF(60, 140), QPoint(0, 120), QPoint(), Qt::ShiftModifier);

    const QPointF way = canvas.view.MapFromDocument(QPointF(0, 0)) - before;
    QVERIFY(way.x() > 10);
    QCOMPARE(way.y(), 0.0);
    QCOMPARE(canvas.view.GetScale(), 1.0);
}

void tst_NVDocumentView::aSidewaysWheelPans()
{
    Canvas canvas(numbered(900, 700));
    canvas.Show();
    const QPointF before = canvas.view.MapFromDocument(QPointF(0, 0));

    canvas.Wheel(QPointF(60, 140), QPoint(-120, 0));

    QVERIFY(canvas.view.MapFromDocument(QPointF(0, 0)).x() < before.x() - 10);
    QCOMPARE(canvas.view.GetScale(), 1.0);
}

void tst_NVDocumentView::theMiddleButtonPans()
{
    Canvas canvas(numbered(900, 700));
    canvas.Show();
    SignalLog log(&canvas.view);
    QWidget* const viewport = canvas.view.viewport();
    const QPointF before = canvas.view.MapFromDocument(QPointF(0, 0));

    QTest::mousePress(viewport, Qt::MiddleButton, Qt::NoModifier, QPoint(100, 100));
    QMouseEvent move(QEvent::MouseMove, QPointF(130, 80), Qt::NoButton, Qt::MiddleButton, Qt::NoModifier);
    QCoreApplication::sendEvent(viewport, &move);
    QTest::mouseRelease(viewport, Qt::MiddleButton, Qt::NoModifier, QPoint(130, 80));

    QCOMPARE(canvas.view.MapFromDocument(QPointF(0, 0)) - before, QPointF(30, -20));
    QCOMPARE(log.Count(QStringLiteral("Pressed")), 0);
    QCOMPARE(log.Count(QStringLiteral("Released")), 0);
}

void tst_NVDocumentView::spaceAndTheLeftButtonPan()
{
    Canvas canvas(numbered(900, 700));
    canvas.Show();
    SignalLog log(&canvas.view);
    QWidget* const viewport = canvas.view.viewport();
    const QPointF before = canvas.view.MapFromDocument(QPointF(0, 0));

    QTest::keyPress(&canvas.view, Qt::Key_Space);
    QTest::mousePress(viewport, Qt::LeftButton, Qt::NoModifier, QPoint(100, 100));
    QMouseEvent move(QEvent::MouseMove, QPointF(90, 115), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(viewport, &move);
    QTest::keyRelease(&canvas.view, Qt::Key_Space);
    QMouseEvent further(QEvent::MouseMove, QPointF(80, 115), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(viewport, &further);
    QTest::mouseRelease(viewport, Qt::LeftButton, Qt::NoModifier, QPoint(80, 115));
    QCOMPARE(canvas.view.MapFromDocument(QPointF(0, 0)) - before, QPointF(-20, 15));
    QCOMPARE(log.Count(QStringLiteral("Pressed")), 0);

    QTest::mouseClick(viewport, Qt::LeftButton, Qt::NoModifier, QPoint(80, 115));
    QCOMPARE(log.Count(QStringLiteral("Pressed")), 1);
    QCOMPARE(log.Count(QStringLiteral("Released")), 1);
}

void tst_NVDocumentView::aRepeatedSpaceStaysSpace()
{
    Canvas canvas(numbered(900, 700));
    canvas.Show();

    QTest::keyPress(&canvas.view, Qt::Key_Space);
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "), true);
    QCoreApplication::sendEvent(&canvas.view, &release);
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "), true);
    QCoreApplication::sendEvent(&canvas.view, &press);

    QCOMPARE(canvas.view.viewport()->cursor().shape(), Qt::OpenHandCursor);
    QTest::keyRelease(&canvas.view, Qt::Key_Space);
    QCOMPARE(canvas.view.viewport()->cursor().shape(), Qt::ArrowCursor);
}

void tst_NVDocumentView::losingTheFocusEndsPanning()
{
    Canvas canvas(numbered(900, 700));
    canvas.Show();
    SignalLog log(&canvas.view);
    QWidget* const viewport = canvas.view.viewport();
    QTest::keyPress(&canvas.view, Qt::Key_Space);
    QTest::mousePress(viewport, Qt::LeftButton, Qt::NoModifier, QPoint(100, 100));
    QCOMPARE(viewport->cursor().shape(), Qt::ClosedHandCursor);

    canvas.view.clearFocus();

    QCOMPARE(viewport->cursor().shape(), Qt::ArrowCursor);
    const QPointF before = canvas.view.MapFromDocument(QPointF(0, 0));
    QMouseEvent move(QEvent::MouseMove, QPointF(90, 115), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(viewport, &move);
    QTest::mouseRelease(viewport, Qt::LeftButton, Qt::NoModifier, QPoint(90, 115));
    QCOMPARE(canvas.view.MapFromDocument(QPointF(0, 0)), before);
    QCOMPARE(log.Count(QStringLiteral("Released")), 0);
}

void tst_NVDocumentView::arrowsPan()
{
    Canvas canvas(numbered(900, 700));
    canvas.Show();
    const QPointF before = canvas.view.MapFromDocument(QPointF(0, 0));

    QTest::keyClick(&canvas.view, Qt::Key_Right);
    QTest::keyClick(&canvas.view, Qt::Key_Down);
    const QPointF after = canvas.view.MapFromDocument(QPointF(0, 0));
    QVERIFY(after.x() < before.x());
    QVERIFY(after.y() < before.y());
    QTest::keyClick(&canvas.view, Qt::Key_Left);
    QTest::keyClick(&canvas.view, Qt::Key_Up);

    QCOMPARE(canvas.view.MapFromDocument(QPointF(0, 0)), before);
}

void tst_NVDocumentView::theCursorTellsTheMode()
{
    Canvas canvas(numbered(900, 700));
    canvas.Show();
    QWidget* const viewport = canvas.view.viewport();
    const auto shape = [&] { return viewport->cursor().shape(); };
    QCOMPARE(shape(), Qt::ArrowCursor);

    canvas.view.SetToolCursor(Qt::CrossCursor);
    QCOMPARE(shape(), Qt::CrossCursor);
    QTest::keyPress(&canvas.view, Qt::Key_Space);
    QCOMPARE(shape(), Qt::OpenHandCursor);
    QTest::mousePress(viewport, Qt::LeftButton);
    QCOMPARE(shape(), Qt::ClosedHandCursor);
    canvas.view.SetToolCursor(Qt::IBeamCursor);
    QCOMPARE(shape(), Qt::ClosedHandCursor);
    QTest::mouseRelease(viewport, Qt::LeftButton);
    QCOMPARE(shape(), Qt::OpenHandCursor);
    QTest::keyRelease(&canvas.view, Qt::Key_Space);
    QCOMPARE(shape(), Qt::IBeamCursor);
}

namespace
{

QVector<CanvasPoint> pointsOf(const QSignalSpy& spy)
{
    QVector<CanvasPoint> points;
    for (const QList<QVariant>& call : spy)
        points.append(call.first().value<CanvasPoint>());
    return points;
}

} // namespace

void tst_NVDocumentView::aToolGetsPressMoveAndRelease()
{
    Canvas canvas(numbered(90, 70));
    canvas.Show();
    canvas.view.Scale(2.0, QPointF(100, 100));
    QSignalSpy pressed(&canvas.view, &NVDocumentView::Pressed);
    QSignalSpy moved(&canvas.view, &NVDocumentView::Moved);
    QSignalSpy released(&canvas.view, &NVDocumentView::Released);
    QWidget* const viewport = canvas.view.viewport();

    QTest::mousePress(viewport, Qt::LeftButton, Qt::ControlModifier, QPoint(110, 90));
    QMouseEvent move(QEvent::MouseMove, QPointF(111.5, 92), Qt::NoButton, Qt::LeftButton, Qt::ShiftModifier);
    QCoreApplication::sendEvent(viewport, &move);
    QTest::mouseRelease(viewport, Qt::LeftButton, Qt::NoModifier, QPoint(114, 96));

    QCOMPARE(pressed.count(), 1);
    const CanvasPoint down = pointsOf(pressed).first();
    QVERIFY(near(down.position, canvas.view.MapToDocument(QPointF(110, 90)), 1e-6));
    QCOMPARE(down.button, Qt::LeftButton);
    QCOMPARE(down.buttons, Qt::MouseButtons(Qt::LeftButton));
    QCOMPARE(down.modifiers, Qt::KeyboardModifiers(Qt::ControlModifier));
    QCOMPARE(down.pressure, 1.0);
    QVERIFY(!down.eraser);
    const CanvasPoint on = pointsOf(moved).last();
    QVERIFY(near(on.position, canvas.view.MapToDocument(QPointF(111.5, 92)), 1e-6));
    QCOMPARE(on.button, Qt::NoButton);
    QCOMPARE(on.modifiers, Qt::KeyboardModifiers(Qt::ShiftModifier));
    QCOMPARE(released.count(), 1);
    QVERIFY(near(pointsOf(released).first().position, canvas.view.MapToDocument(QPointF(114, 96)), 1e-6));
}

void tst_NVDocumentView::everyMoveIsReported()
{
    Canvas canvas(numbered(90, 70));
    canvas.Show();
    QSignalSpy moved(&canvas.view, &NVDocumentView::Moved);

    for (int i = 0; i < 500; ++i)
    {
        QMouseEvent move(QEvent::MouseMove, QPointF(50 + i * 0.1, 60), Qt::NoButton, Qt::NoButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(canvas.view.viewport(), &move);
    }

    QCOMPARE(moved.count(), 500);
    QVERIFY(canvas.view.viewport()->hasMouseTracking());
}

void tst_NVDocumentView::theRightButtonIsReported()
{
    Canvas canvas(numbered(90, 70));
    canvas.Show();
    QSignalSpy pressed(&canvas.view, &NVDocumentView::Pressed);

    QTest::mouseClick(canvas.view.viewport(), Qt::RightButton);

    QCOMPARE(pressed.count(), 1);
    QCOMPARE(pointsOf(pressed).first().button, Qt::RightButton);
}

void tst_NVDocumentView::aSecondButtonIsNotReported()
{
    Canvas canvas(numbered(90, 70));
    canvas.Show();
    QSignalSpy pressed(&canvas.view, &NVDocumentView::Pressed);
    QSignalSpy released(&canvas.view, &NVDocumentView::Released);
    QWidget* const viewport = canvas.view.viewport();
    const QPointF before = canvas.view.MapFromDocument(QPointF(0, 0));

    QTest::mousePress(viewport, Qt::LeftButton);
    QTest::mouseClick(viewport, Qt::RightButton);
    QTest::mouseClick(viewport, Qt::MiddleButton, Qt::NoModifier, QPoint(10, 10));
    QCOMPARE(pressed.count(), 1);
    QCOMPARE(released.count(), 0);
    QTest::mouseRelease(viewport, Qt::LeftButton);

    QCOMPARE(released.count(), 1);
    QCOMPARE(canvas.view.MapFromDocument(QPointF(0, 0)), before);
}

void tst_NVDocumentView::noMoveIsReportedWhilePanning()
{
    Canvas canvas(numbered(900, 700));
    canvas.Show();
    QSignalSpy moved(&canvas.view, &NVDocumentView::Moved);
    QWidget* const viewport = canvas.view.viewport();

    QTest::mousePress(viewport, Qt::MiddleButton);
    QMouseEvent move(QEvent::MouseMove, QPointF(90, 115), Qt::NoButton, Qt::MiddleButton, Qt::NoModifier);
    QCoreApplication::sendEvent(viewport, &move);
    QTest::mouseRelease(viewport, Qt::MiddleButton);

    QCOMPARE(moved.count(), 0);
}

void tst_NVDocumentView::aDoubleClickIsASecondPress()
{
    Canvas canvas(numbered(90, 70));
    canvas.Show();
    SignalLog log(&canvas.view);
    QWidget* const viewport = canvas.view.viewport();

    QTest::mouseClick(viewport, Qt::LeftButton);
    QMouseEvent second(QEvent::MouseButtonDblClick, QPointF(5, 5), Qt::LeftButton, Qt::LeftButton,
                       Qt::NoModifier);
    QCoreApplication::sendEvent(viewport, &second);
    QTest::mouseRelease(viewport, Qt::LeftButton);

    QCOMPARE(log.Count(QStringLiteral("Pressed")), 2);
    QCOMPARE(log.Count(QStringLiteral("Released")), 2);
}

void tst_NVDocumentView::leavingIsReported()
{
    Canvas canvas(numbered(90, 70));
    canvas.Show();
    SignalLog log(&canvas.view);

    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(canvas.view.viewport(), &leave);

    QCOMPARE(log.Count(QStringLiteral("PointerLeft")), 1);
}

void tst_NVDocumentView::aPenBringsItsPressure()
{
    Canvas canvas(numbered(90, 70));
    canvas.Show();
    QSignalSpy pressed(&canvas.view, &NVDocumentView::Pressed);
    QSignalSpy moved(&canvas.view, &NVDocumentView::Moved);
    QSignalSpy released(&canvas.view, &NVDocumentView::Released);

    QVERIFY(canvas.Pen(QEvent::TabletMove, QPointF(50, 60), 0.0, Qt::NoButton, Qt::NoButton));
    QVERIFY(canvas.Pen(QEvent::TabletPress, QPointF(50.25, 60), 0.25, Qt::LeftButton, Qt::LeftButton));
    QVERIFY(canvas.Pen(QEvent::TabletMove, QPointF(52.75, 61), 0.75, Qt::NoButton, Qt::LeftButton));
    QVERIFY(canvas.Pen(QEvent::TabletRelease, QPointF(53, 61), 0.0, Qt::LeftButton, Qt::NoButton,
                       QTabletEvent::Eraser));

    QCOMPARE(pressed.count(), 1);
    QCOMPARE(pointsOf(pressed).first().pressure, 0.25);
    QVERIFY(near(pointsOf(pressed).first().position, canvas.view.MapToDocument(QPointF(50.25, 60)), 1e-6));
    QCOMPARE(moved.count(), 2);
    QCOMPARE(pointsOf(moved).last().pressure, 0.75);
    QCOMPARE(released.count(), 1);
    QVERIFY(pointsOf(released).first().eraser);
    QVERIFY(!pointsOf(pressed).first().eraser);
}

void tst_NVDocumentView::aPenIsNotAMouseToo()
{
    Canvas canvas(numbered(90, 70));
    canvas.Show();
    SignalLog log(&canvas.view);
    QWidget* const viewport = canvas.view.viewport();

    canvas.Pen(QEvent::TabletPress, QPointF(50, 60), 0.25, Qt::LeftButton, Qt::LeftButton);
    QTest::mousePress(viewport, Qt::LeftButton, Qt::NoModifier, QPoint(50, 60));
    QMouseEvent move(QEvent::MouseMove, QPointF(51, 60), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(viewport, &move);
    canvas.Pen(QEvent::TabletRelease, QPointF(51, 60), 0.0, Qt::LeftButton, Qt::NoButton);
    QTest::mouseRelease(viewport, Qt::LeftButton, Qt::NoModifier, QPoint(51, 60));
    QCOMPARE(log.Count(QStringLiteral("Pressed")), 1);
    QCOMPARE(log.Count(QStringLiteral("Moved")), 0);
    QCOMPARE(log.Count(QStringLiteral("Released")), 1);

    QTest::mouseClick(viewport, Qt::LeftButton);
    QCOMPARE(log.Count(QStringLiteral("Pressed")), 2);
}

void tst_NVDocumentView::thePressIsCancelledWhenTheDocumentGoes()
{
    auto document = std::make_unique<KXDocumentInterface>(numbered(90, 70));
    KXDocumentModel model(document.get());
    NVDocumentView view(&model);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    SignalLog log(&view);

    QTest::mousePress(view.viewport(), Qt::LeftButton);
    view.SetModel(nullptr);
    QTest::mouseRelease(view.viewport(), Qt::LeftButton);
    QCOMPARE(log.Count(QStringLiteral("Cancelled")), 1);
    QCOMPARE(log.Count(QStringLiteral("Released")), 0);

    view.SetModel(&model);
    QTest::mousePress(view.viewport(), Qt::LeftButton);
    document.reset();
    QCOMPARE(log.Count(QStringLiteral("Cancelled")), 2);
    QTest::mouseRelease(view.viewport(), Qt::LeftButton);
    view.SetModel(nullptr);
}

void tst_NVDocumentView::thePressIsCancelledWhenTheViewIsHidden()
{
    Canvas canvas(numbered(90, 70));
    canvas.Show();
    SignalLog log(&canvas.view);

    QTest::mousePress(canvas.view.viewport(), Qt::LeftButton);
    canvas.view.hide();
    QTest::mouseRelease(canvas.view.viewport(), Qt::LeftButton);

    QCOMPARE(log.Count(QStringLiteral("Cancelled")), 1);
    QCOMPARE(log.Count(QStringLiteral("Released")), 0);
}

void tst_NVDocumentView::theOverlayIsDrawnOverTheDocument()
{
    Canvas canvas(filled(90, 70, Qt::red));
    canvas.Show();
    canvas.view.Scale(3.0, QPointF(100, 100));

    canvas.view.SetOverlay([](QPainter& painter) { painter.fillRect(QRect(100, 80, 10, 5), Qt::green); });
    QCOMPARE(canvas.Probe().BoundsOf(Qt::green, 0), QRect(100, 80, 10, 5));
    canvas.view.horizontalScrollBar()->setValue(canvas.view.horizontalScrollBar()->value() + 7);
    QCOMPARE(canvas.Probe().BoundsOf(Qt::green, 0), QRect(100, 80, 10, 5));
    canvas.view.SetOverlay(NVDocumentView::Overlay());

    QCOMPARE(canvas.Probe().CountOf(Qt::green, 0), 0);
}

void tst_NVDocumentView::theOverlayIsRepaintedWhereAsked()
{
    Canvas canvas(filled(90, 70, Qt::red));
    canvas.Show();
    QCoreApplication::processEvents();
    PaintWatch watch(canvas.view.viewport());

    canvas.view.UpdateOverlay(QRect(20, 30, 15, 10));

    QTRY_COMPARE(watch.painted, QRegion(20, 30, 15, 10));
}

void tst_NVDocumentView::anotherModelIsShown()
{
    Canvas canvas(filled(90, 70, Qt::red));
    KXDocumentInterface document(filled(50, 120, Qt::blue));
    KXDocumentModel model(&document);
    canvas.Show();

    canvas.view.SetModel(&model);
    QCOMPARE(canvas.view.GetModel(), &model);
    QCOMPARE(canvas.Probe().BoundsOf(Qt::blue, 0).size(), QSize(50, 120));
    QCOMPARE(canvas.Probe().CountOf(Qt::red, 0), 0);

    PaintWatch watch(canvas.view.viewport());
    QCoreApplication::processEvents();
    watch.painted = QRegion();
    canvas.document.NotifyChanged(QRect(0, 0, 90, 70));
    QCoreApplication::processEvents();
    QVERIFY(watch.painted.isEmpty());
    canvas.view.SetModel(nullptr);
    QCOMPARE(canvas.Probe().ColorCount(), 1);
}

void tst_NVDocumentView::aFittedDocumentOfAnotherSizeIsFittedAgain()
{
    Canvas canvas(filled(1000, 500, Qt::white));
    canvas.Show();
    canvas.view.FitInView();

    QVERIFY(canvas.document.ReplaceImages({filled(20, 40, Qt::white)}, QImage()));

    const QRectF shown(canvas.view.MapFromDocument(QPointF(0, 0)),
                       canvas.view.MapFromDocument(QPointF(20, 40)));
    const QSize sight = canvas.view.viewport()->size();
    QVERIFY(QRectF(QPointF(), sight).contains(shown));
    QCOMPARE(qRound(shown.center().x()), sight.width() / 2);
    QVERIFY(shown.height() > sight.height() - 20);
}

void tst_NVDocumentView::anotherSizeKeepsScaleAndMiddle()
{
    Canvas canvas(filled(1000, 500, Qt::white));
    canvas.Show();
    canvas.view.Scale(3.0, QPointF(100, 40));
    const QPointF middle(canvas.view.viewport()->width() / 2.0, canvas.view.viewport()->height() / 2.0);
    const QPointF before = canvas.view.MapToDocument(middle);

    QVERIFY(canvas.document.ReplaceImages({filled(2000, 750, Qt::white)}, QImage()));

    QCOMPARE(canvas.view.GetScale(), 3.0);
    const QPointF after = canvas.view.MapToDocument(middle);
    QVERIFY(qAbs(after.x() - before.x() * 2) < 1);
    QVERIFY(qAbs(after.y() - before.y() * 1.5) < 1);
}

void tst_NVDocumentView::anotherSizeIsShownToItsEdges()
{
    Canvas canvas(filled(10, 10, Qt::white));
    canvas.Show();
    canvas.view.FitInView();
    (void)canvas.Probe();

    QVERIFY(canvas.document.ReplaceImages({filled(400, 300, Qt::red)}, QImage()));

    const ProbeImage probe = canvas.Probe();
    for (const QPointF& corner : {QPointF(3, 3), QPointF(396, 3), QPointF(3, 296), QPointF(396, 296)})
        QCOMPARE(probe.At(canvas.PlaceOf(corner).x(), canvas.PlaceOf(corner).y()), QColor(Qt::red));
    for (const QPointF& outside : {QPointF(-8, 150), QPointF(408, 150)})
        QVERIFY(probe.At(canvas.PlaceOf(outside).x(), canvas.PlaceOf(outside).y()) != QColor(Qt::red));
}

void tst_NVDocumentView::thePressIsCancelledWhenTheSizeChanges()
{
    Canvas canvas(filled(100, 100, Qt::white));
    canvas.Show();
    SignalLog log(&canvas.view);
    QTest::mousePress(canvas.view.viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(150, 100));

    QVERIFY(canvas.document.ReplaceImages({filled(50, 50, Qt::white)}, QImage()));

    QCOMPARE(log.Count("Cancelled"), 1);
    QTest::mouseRelease(canvas.view.viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(150, 100));
    QCOMPARE(log.Count("Released"), 0);
}

void tst_NVDocumentView::theDocumentMayGoFirst()
{
    auto document = std::make_unique<KXDocumentInterface>(filled(90, 70, Qt::red));
    KXDocumentModel model(document.get());
    NVDocumentView view(&model);
    view.resize(200, 150);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    QVERIFY(ProbeImage(view.viewport()).CountOf(Qt::red, 0) > 0);

    document.reset();
    QCoreApplication::processEvents();

    QCOMPARE(ProbeImage(view.viewport()).ColorCount(), 1);
    view.Scale(3.0, QPointF(10, 10));
    view.FitInView();
    QTest::mouseClick(view.viewport(), Qt::LeftButton);
}

void tst_NVDocumentView::theViewMayGoWhilePressed()
{
    KXDocumentInterface document(filled(90, 70, Qt::red));
    KXDocumentModel model(&document);
    auto view = std::make_unique<NVDocumentView>(&model);
    view->show();
    QVERIFY(QTest::qWaitForWindowExposed(view.get()));
    SignalLog log(view.get());

    QTest::mousePress(view->viewport(), Qt::LeftButton);
    view.reset();
    document.NotifyChanged(document.GetRect());

    QCOMPARE(log.Count(QStringLiteral("Pressed")), 1);
}

void tst_NVDocumentView::itTakesTheFocusAndHasAName()
{
    NVDocumentView view(nullptr);
    QCOMPARE(view.focusPolicy(), Qt::StrongFocus);
    QVERIFY(!view.accessibleName().isEmpty());
}

NV_TEST_MAIN(tst_NVDocumentView)
#include "tst_NVDocumentView.moc"
