// The moving line around the selection of a canvas: what it follows, when it moves, what it costs.

#include "SelectionOutline.h"

#include <QPainter>
#include <QSignalSpy>
#include <QTest>
#include <QThreadPool>

#include <cmath>
#include <functional>
#include <utility>

#include "Document.h"
#include "KXDocumentInterface.h"
#include "NVDocumentView.h"
#include "SelectionMask.h"
#include "TestMain.h"
#include "ToolHost.h"

namespace
{

struct Host
{
    explicit Host(const QSize& size = QSize(300, 200), const QColor& color = Qt::gray)
        : document(std::make_unique<Document>(PlainPicture(color, size), QString(), "Picture")),
          view(new NVDocumentView(document->GetModel())),
          outline(new SelectionOutline(document->GetPixels(), view))
    {
        window.setCentralWidget(view);
        window.resize(500, 400);
        window.show();
        view->Scale(1 / view->GetScale(), QPointF());
        (void)QTest::qWaitForWindowActive(&window);
    }

    ~Host()
    {
        if (view)
            delete window.takeCentralWidget();
    }

    KXDocumentInterface* pixels() const { return document->GetPixels(); }
    void select(const QRectF& rect) const
    {
        QVERIFY(pixels()->SetSelectionMask(RectangleMask(pixels()->GetSize(), rect)));
    }
    QImage shown() const { return view->viewport()->grab().toImage(); }
    // The pixel of the viewport that the point lies in.
    QPoint placeOf(double x, double y) const
    {
        const QPointF place = view->MapFromDocument(QPointF(x, y));
        return QPoint(int(std::floor(place.x())), int(std::floor(place.y())));
    }
    bool isLineAt(double x, double y) const
    {
        const QColor color = shown().pixelColor(placeOf(x, y));
        return color == Qt::black || color == Qt::white;
    }

    std::unique_ptr<Document> document;
    QPointer<NVDocumentView> view;
    SelectionOutline* outline;
    QMainWindow window;
};

// Counts what the canvas draws itself.
class DrawCounter : public QObject
{
public:
    explicit DrawCounter(NVDocumentView* view) : m_pView(view)
    {
        view->SetOverlay([this](QPainter&) { ++m_draws; });
    }
    ~DrawCounter() override { m_pView->SetOverlay(NVDocumentView::Overlay()); }
    int GetDraws() const { return m_draws; }

private:
    NVDocumentView* m_pView;
    int m_draws = 0;
};

// Acts once, right before a timer as slow as that of the line goes off.
class StepWatcher : public QObject
{
public:
    explicit StepWatcher(const std::function<void()>& act) : m_act(act) { qApp->installEventFilter(this); }
    bool HasActed() const { return !m_act; }

    bool eventFilter(QObject* object, QEvent* event) override
    {
        const auto* timer = qobject_cast<QTimer*>(object);
        if (event->type() == QEvent::Timer && timer && timer->interval() == 150 && m_act)
            std::exchange(m_act, nullptr)();
        return false;
    }

private:
    std::function<void()> m_act;
};

} // namespace

class tst_SelectionOutline : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void withoutASelectionThereIsNoLine()
    {
        Host host;
        QVERIFY(!host.outline->IsShown());
        QVERIFY(!host.outline->IsMoving());
        QVERIFY(!host.isLineAt(50, 50));
    }

    void theLineFollowsTheSelection()
    {
        Host host;
        QSignalSpy computed(host.outline, &SelectionOutline::Computed);
        host.select(QRectF(50, 40, 100, 60));
        QCOMPARE(computed.count(), 1);
        QVERIFY(host.outline->IsShown());
        QVERIFY(host.isLineAt(50.5, 60.5));
        QVERIFY(host.isLineAt(149.5, 60.5));
        QVERIFY(!host.isLineAt(100.5, 60.5));
        QVERIFY(!host.isLineAt(49.5, 60.5));

        host.select(QRectF(80, 40, 100, 60));
        QVERIFY(!host.isLineAt(50.5, 60.5));
        QVERIFY(host.isLineAt(80.5, 60.5));

        host.pixels()->SetSelectionMask(QImage());
        QVERIFY(!host.outline->IsShown());
        QVERIFY(!host.isLineAt(80.5, 60.5));
    }

    void aSelectionThatWasThereBeforeIsShown()
    {
        Document document(PlainPicture(), QString(), "Picture");
        document.GetPixels()->SetSelectionMask(FullMask(document.GetPixels()->GetSize()));
        NVDocumentView view(document.GetModel());
        auto* outline = new SelectionOutline(document.GetPixels(), &view);
        QVERIFY(outline->IsShown());
        QCOMPARE(SelectionOutline::Of(&view), outline);
        QCOMPARE(SelectionOutline::Of(nullptr), nullptr);
    }

    void theLineStaysAtItsPlaceAtEveryZoom_data()
    {
        QTest::addColumn<double>("scale");
        for (double scale : {0.3, 0.5, 1.0, 2.5, 8.0, 31.0})
            QTest::addRow("%f", scale) << scale;
    }
    void theLineStaysAtItsPlaceAtEveryZoom()
    {
        QFETCH(double, scale);
        Host host;
        host.select(QRectF(50, 40, 100, 60));
        host.view->Scale(scale, host.view->MapFromDocument(QPointF(50, 60)));
        const QPoint edge = host.view->MapFromDocument(QPointF(50, 60)).toPoint();
        const QImage shown = host.shown();
        int found = 0;
        for (int x = edge.x() - 2; x <= edge.x() + 2; ++x)
            found += shown.pixelColor(x, edge.y()) == Qt::black || shown.pixelColor(x, edge.y()) == Qt::white;
        QCOMPARE(found, 1);
    }

    void theLineIsSeenOnAnyColour_data()
    {
        QTest::addColumn<QColor>("color");
        QTest::newRow("black") << QColor(Qt::black);
        QTest::newRow("white") << QColor(Qt::white);
    }
    void theLineIsSeenOnAnyColour()
    {
        QFETCH(QColor, color);
        Host host(QSize(300, 200), color);
        const QImage before = host.shown();
        host.select(QRectF(50, 40, 100, 60));
        const QImage after = host.shown();
        int changed = 0;
        for (int x = 51; x < 149; ++x)
        {
            const QPoint place = host.placeOf(x + 0.5, 40.5);
            changed += before.pixel(place) != after.pixel(place);
        }
        QVERIFY(qAbs(changed - 49) <= 4);
    }

    void theDashesGoOnWithoutTheCanvasDrawingAnything()
    {
        Host host;
        host.select(QRectF(50, 40, 100, 60));
        QVERIFY(host.outline->IsMoving());
        QTRY_VERIFY(host.outline->GetPhase() > 0);
        const DrawCounter counter(host.view);
        QTRY_VERIFY(counter.GetDraws() > 0);
        const int phase = host.outline->GetPhase();
        const int draws = counter.GetDraws();
        QTRY_VERIFY(host.outline->GetPhase() != phase);
        QTRY_VERIFY(host.outline->GetPhase() != (phase + 1) % 8);
        QCOMPARE(counter.GetDraws(), draws);
    }

    void whatChangesBelowTheLineIsDrawn()
    {
        Host host;
        host.select(QRectF(50, 40, 100, 60));
        QTRY_VERIFY(host.outline->GetPhase() > 0);
        // Within one of the squares that the line touches.
        host.pixels()->EditLayer(0).fill(Qt::red);
        host.pixels()->NotifyChanged(QRect(52, 44, 6, 6));
        const int phase = host.outline->GetPhase();
        QTRY_VERIFY(host.outline->GetPhase() != phase);
        const QPoint place = host.placeOf(55.5, 47.5);
        // As the screen has it, without drawing anew.
        const QImage screen = host.window.windowHandle()->screen()->grabWindow(host.window.winId()).toImage();
        if (screen.isNull())
            QSKIP("The platform has no screen to look at.");
        const QPoint inWindow = host.view->viewport()->mapTo(&host.window, place);
        QCOMPARE(screen.pixelColor(inWindow), QColor(Qt::red));
    }

    void whatChangesInTheMomentOfAStepIsDrawn()
    {
        Host host;
        host.select(QRectF(50, 40, 100, 60));
        QTRY_VERIFY(host.outline->GetPhase() > 0);
        host.pixels()->EditLayer(0).fill(Qt::red);
        StepWatcher watcher([&] { host.pixels()->NotifyChanged(QRect(52, 44, 6, 6)); });
        QTRY_VERIFY(watcher.HasActed());
        const int phase = host.outline->GetPhase();
        QTRY_VERIFY(host.outline->GetPhase() != phase);
        const QImage screen = host.window.windowHandle()->screen()->grabWindow(host.window.winId()).toImage();
        if (screen.isNull())
            QSKIP("The platform has no screen to look at.");
        const QPoint inWindow = host.view->viewport()->mapTo(&host.window, host.placeOf(55.5, 47.5));
        QCOMPARE(screen.pixelColor(inWindow), QColor(Qt::red));
    }

    void hiddenItStandsStill()
    {
        Host host;
        host.select(QRectF(50, 40, 100, 60));
        QTRY_VERIFY(host.outline->IsMoving());
        host.window.hide();
        QTRY_VERIFY(!host.outline->IsMoving());
        host.window.show();
        QTRY_VERIFY(host.outline->IsMoving());
    }

    void behindAnotherWidgetItStandsStill()
    {
        Host host;
        host.select(QRectF(50, 40, 100, 60));
        QTRY_VERIFY(host.outline->GetPhase() > 0);
        QWidget cover(&host.window);
        cover.setAutoFillBackground(true);
        cover.setGeometry(host.window.rect());
        cover.show();
        const int phase = host.outline->GetPhase();
        QTimer ticks;
        QSignalSpy ticked(&ticks, &QTimer::timeout);
        ticks.start(400);
        QTRY_VERIFY(ticked.count() > 0);
        QCOMPARE(host.outline->GetPhase(), phase);
    }

    void aLargeSelectionIsWorkedOutElsewhere()
    {
        Host host(QSize(2000, 1500));
        QSignalSpy computed(host.outline, &SelectionOutline::Computed);
        host.select(QRectF(50, 40, 1000, 600));
        QVERIFY(host.outline->IsComputing());
        QVERIFY(!host.outline->IsShown());
        // Another one takes its place.
        host.select(QRectF(50, 40, 1000, 700));
        QTRY_VERIFY(host.outline->IsShown());
        QVERIFY(!host.outline->IsComputing());
        QCOMPARE(computed.count(), 1);
        // The line of before stays until the next one is there.
        host.select(QRectF(50, 40, 500, 700));
        QVERIFY(host.outline->IsShown());
        QTRY_COMPARE(computed.count(), 2);
        // What is worked out still does not come back.
        host.select(QRectF(50, 40, 600, 700));
        host.pixels()->SetSelectionMask(QImage());
        QVERIFY(!host.outline->IsShown());
        QVERIFY(!host.outline->IsComputing());
        QThreadPool::globalInstance()->waitForDone();
        QCoreApplication::processEvents();
        QVERIFY(!host.outline->IsShown());
    }

    void anotherMaskIsShownUntilTheSelectionIsAgain()
    {
        Host host;
        host.select(QRectF(50, 40, 100, 60));
        host.outline->ShowMask(RectangleMask(QSize(300, 200), QRectF(70, 40, 100, 60)));
        QVERIFY(host.isLineAt(70.5, 60.5));
        QVERIFY(!host.isLineAt(50.5, 60.5));
        host.outline->ShowMask(QImage());
        QVERIFY(!host.outline->IsShown());
        host.outline->ShowSelection();
        QVERIFY(host.isLineAt(50.5, 60.5));
        host.outline->ShowMask(QImage());
        host.select(QRectF(60, 40, 100, 60));
        QVERIFY(host.isLineAt(60.5, 60.5));
    }

    void theLineMayStandElsewhere()
    {
        Host host;
        host.select(QRectF(50, 40, 100, 60));
        host.outline->SetOffset(QPoint(30, 10));
        QVERIFY(host.isLineAt(80.5, 70.5));
        QVERIFY(!host.isLineAt(50.5, 60.5));
        // Also beyond the picture.
        host.outline->SetOffset(QPoint(-80, 0));
        QVERIFY(host.isLineAt(69.5, 60.5));
        host.select(QRectF(55, 40, 100, 60));
        QVERIFY(host.isLineAt(55.5, 60.5));
    }

    void anotherSizeTakesTheLineAway()
    {
        Host host;
        host.select(QRectF(50, 40, 100, 60));
        QVERIFY(host.pixels()->ReplaceImages({PlainPicture(Qt::gray, QSize(100, 100))}, QImage()));
        QVERIFY(!host.outline->IsShown());
        QVERIFY(
            host.pixels()->ReplaceImages({PlainPicture(Qt::gray, QSize(90, 90))}, FullMask(QSize(90, 90))));
        QVERIFY(host.outline->IsShown());
        QVERIFY(host.isLineAt(0.5, 40.5));
    }

    void theDocumentMayGoFirst()
    {
        Host host;
        host.select(QRectF(50, 40, 100, 60));
        host.view->SetModel(nullptr);
        host.document.reset();
        host.outline->ShowSelection();
        QVERIFY(!host.outline->IsShown());
    }

    void theViewMayGoWhileALineIsWorkedOut()
    {
        Host host(QSize(2000, 1500));
        host.select(QRectF(50, 40, 1000, 600));
        QVERIFY(host.outline->IsComputing());
        delete host.window.takeCentralWidget();
        QCoreApplication::processEvents();
        QVERIFY(!host.view);
    }
};

NV_TEST_MAIN(tst_SelectionOutline)

#include "tst_SelectionOutline.moc"
