// The navigator panel: what it carries between a view and its overview, loupe, histogram and zoom controls,
// and that no change comes back to where it came from.

#include <QAbstractItemView>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QSlider>
#include <QStyleOptionSlider>
#include <QTabWidget>
#include <QThreadPool>
#include <QToolButton>
#include <QtTest>

#include <memory>

#include "BarForm.h"
#include "CameraView.h"
#include "HistogramWidget.h"
#include "KXColorTransformBase.h"
#include "KXDocumentInterface.h"
#include "KXDocumentModel.h"
#include "NVDocumentView.h"
#include "NVNavigatorPanel.h"
#include "NavigatorWidget.h"
#include "ProbeImage.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

QImage Filled(int width, int height, const QColor& color)
{
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    return image;
}

// Counts how often it is asked.
class AskedDocument : public KXDocumentInterface
{
public:
    using KXDocumentInterface::KXDocumentInterface;
    bool IsBeingEdited() const override
    {
        ++asked;
        return KXDocumentInterface::IsBeingEdited();
    }
    mutable int asked = 0;
};

// Makes all green, and tells how many of it live.
class GreenFilter : public KXColorTransformBase
{
public:
    explicit GreenFilter(int& living) : m_living(living) { ++m_living; }
    ~GreenFilter() override { --m_living; }
    void Apply(QImage& image) const override { image.fill(Qt::green); }

private:
    int& m_living;
};

class GreenModel : public KXDocumentModel
{
public:
    using KXDocumentModel::KXDocumentModel;
    KXColorTransformBase* CreateComplexFilter() const override
    {
        ++made;
        return new GreenFilter(living);
    }
    mutable int made = 0;
    mutable int living = 0;
};

// Counts how often what it shows is moved.
class RecordingView : public NVDocumentView
{
public:
    using NVDocumentView::NVDocumentView;
    int moves = 0;

protected:
    void scrollContentsBy(int dx, int dy) override
    {
        ++moves;
        NVDocumentView::scrollContentsBy(dx, dy);
    }
};

// As on a screen of twice as many pixels.
class FinePanel : public NVNavigatorPanel
{
public:
    using NVNavigatorPanel::NVNavigatorPanel;

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        return metric == PdmDevicePixelRatio ? 2 : NVNavigatorPanel::metric(metric);
    }
};

struct Host
{
    explicit Host(NVNavigatorPanel* made = new NVNavigatorPanel(nullptr))
        : document(Filled(1000, 800, Qt::red)), model(&document), view(&model), panel(made)
    {
        view.resize(300, 200);
        panel->resize(420, 360);
    }

    template <class Widget>
    Widget* Find(const char* name) const
    {
        return panel->findChild<Widget*>(name);
    }
    QDoubleSpinBox* Percent() const { return Find<QDoubleSpinBox>("m_pZoomSpn"); }
    QSlider* Slider() const { return Find<QSlider>("m_pZoomSldr"); }
    NavigatorWidget* Overview() const { return Find<NavigatorWidget>("m_pNavigator"); }
    CameraView* Loupe() const { return Find<CameraView>("m_pZoom"); }
    HistogramWidget* Histogram() const { return Find<HistogramWidget>("m_pHistogram"); }
    QString Text(const char* label) const { return Find<QLabel>(label)->text(); }

    void ScaleView(double scale) { view.Scale(scale / view.GetScale(), QPointF(0, 0)); }
    // The document pixels in sight.
    QRectF Sight() const { return view.mapToScene(view.viewport()->rect()).boundingRect(); }
    QPointF Middle() const { return Sight().center(); }

    // The panel with one of its tabs in front, and the view beside it.
    void Show(int tab)
    {
        QCursor::setPos(0, 0);
        view.setGeometry(500, 300, 300, 200);
        view.show();
        panel->move(10, 10);
        Find<QTabWidget>("m_pTabWidget")->setCurrentIndex(tab);
        panel->show();
        panel->activateWindow();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        QVERIFY(QTest::qWaitForWindowActive(panel.get()));
    }
    void Click(const char* button) const { QTest::mouseClick(Find<QToolButton>(button), Qt::LeftButton); }
    void Type(const QString& text) const
    {
        QTest::mouseClick(Percent()->findChild<QLineEdit*>(), Qt::LeftButton);
        Percent()->selectAll();
        QTest::keyClicks(Percent(), text);
    }
    // Takes hold of the slider's handle and moves it that far.
    void DragSlider(int pixels) const
    {
        QStyleOptionSlider option;
        option.initFrom(Slider());
        option.minimum = Slider()->minimum();
        option.maximum = Slider()->maximum();
        option.sliderPosition = option.sliderValue = Slider()->value();
        const QPoint handle =
            Slider()
                ->style()
                ->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, Slider())
                .center();
        const QPoint end = handle + QPoint(pixels, 0);
        QTest::mousePress(Slider(), Qt::LeftButton, Qt::NoModifier, handle);
        QMouseEvent move(QEvent::MouseMove, end, Slider()->mapToGlobal(end), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(Slider(), &move);
        QTest::mouseRelease(Slider(), Qt::LeftButton, Qt::NoModifier, end);
    }
    // Opens a list and goes to one of its rows.
    void Choose(const char* list, int row) const
    {
        auto* combo = Find<QComboBox>(list);
        QTest::mouseClick(combo, Qt::LeftButton);
        QTRY_VERIFY(combo->view()->isVisible());
        QTest::keyClick(combo->view(), Qt::Key_Home);
        for (int i = 0; i < row; ++i)
            QTest::keyClick(combo->view(), Qt::Key_Down);
        QTest::keyClick(combo->view(), Qt::Key_Return);
        QTRY_VERIFY(!combo->view()->isVisible());
    }
    void DragOverview(QEvent::Type type, const QPointF& place) const
    {
        QMouseEvent event(type, place, Overview()->mapToGlobal(place.toPoint()),
                          type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(Overview(), &event);
    }

    AskedDocument document;
    GreenModel model;
    RecordingView view;
    std::unique_ptr<NVNavigatorPanel> panel;
};

class PaintCount : public QObject
{
public:
    explicit PaintCount(QWidget* widget) { widget->installEventFilter(this); }
    bool eventFilter(QObject* object, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            ++count;
        return QObject::eventFilter(object, event);
    }
    int count = 0;
};

void FinishWork()
{
    QCoreApplication::processEvents();
    QThreadPool::globalInstance()->waitForDone();
    QCoreApplication::processEvents();
}

} // namespace

class tst_NVNavigatorPanel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void formIsAsDescribed()
    {
        Host host;
        auto* tabs = host.Find<QTabWidget>("m_pTabWidget");

        QCOMPARE(host.panel->Content()->windowTitle(), QString("Navigator"));
        QCOMPARE(host.panel->GetTitlePosition(), KXPanel::TitleTop);
        QCOMPARE(tabs->currentIndex(), 2);
        QCOMPARE(tabs->count(), 3);
        QCOMPARE(tabs->tabText(0), QString("Navigator"));
        QCOMPARE(tabs->tabText(1), QString("Zoom"));
        QCOMPARE(tabs->tabText(2), QString("Histogram"));
        QCOMPARE(host.Percent()->minimum(), 5.0);
        QCOMPARE(host.Percent()->maximum(), 4000.0);
        QCOMPARE(host.Percent()->decimals(), 2);
        QCOMPARE(host.Percent()->suffix(), QString("%"));
        QCOMPARE(host.Percent()->focusPolicy(), Qt::ClickFocus);
        QCOMPARE(host.Slider()->minimum(), 500);
        QCOMPARE(host.Slider()->maximum(), 400000);
        QCOMPARE(host.Slider()->orientation(), Qt::Horizontal);
        QCOMPARE(host.Find<QToolButton>("m_pZoomIn")->text(), QString("Zoom in"));
        QCOMPARE(host.Find<QToolButton>("m_pZoomOut")->text(), QString("Zoom out"));
        QCOMPARE(host.Find<QComboBox>("m_pChannel")->toolTip(), QString("Select a channel for input signal"));
        QVERIFY(host.Find<QLabel>("m_pRange")->minimumWidth() >= 60);
        for (const char* name : {"m_pTabWidget", "m_pZoomOut", "m_pZoomSldr", "m_pZoomIn", "m_pGridType",
                                 "m_pChannel", "comboBox"})
            QCOMPARE(host.Find<QWidget>(name)->focusPolicy(), Qt::NoFocus);
        for (const char* name : {"m_pZoomOut", "m_pZoomIn", "m_pGridType"})
            QCOMPARE(host.Find<QWidget>(name)->minimumHeight(), 24);
    }

    void listsAndCaptions()
    {
        Host host;
        const auto items = [&host](const char* name)
        {
            auto* combo = host.Find<QComboBox>(name);
            QStringList texts;
            for (int i = 0; i < combo->count(); ++i)
                texts.append(combo->itemText(i));
            return texts;
        };

        QCOMPARE(items("m_pGridType"), QStringList({"None", "Standard", "Lighten", "Darken"}));
        QCOMPARE(items("m_pChannel"),
                 QStringList({"RGB", "Luminance", "Red", "Green", "Blue", "Red + Green", "Red + Blue",
                              "Green + Blue"}));
        QCOMPARE(items("comboBox"), QStringList("8-bit"));
        QCOMPARE(host.Text("m_pGridTypeLbl"), QString("Grid type:"));
        QCOMPARE(host.Text("label"), QString("Channel:"));
        QCOMPARE(host.Text("label_3"), QString("Range:"));
        QCOMPARE(host.Text("label_7"), QString("Level:"));
        QCOMPARE(host.Text("label_2"), QString("View:"));
        QCOMPARE(host.Text("label_4"), QString("Pixels:"));
        QCOMPARE(host.Text("label_8"), QString("Count:"));
    }

    void typedPercentIsTruncated()
    {
        Host host;
        host.Show(0);
        host.Percent()->setValue(100.0);
        QSignalSpy spy(host.Slider(), &QSlider::valueChanged);

        host.Type("5.02");

        QCOMPARE(host.Slider()->value(), 501);
        QCOMPARE(host.Percent()->value(), 5.01);
        QCOMPARE(spy.last().first().toInt(), 501);
    }

    void oneValueInTwentyIsShifted()
    {
        Host host;
        int shifted = 0;
        for (int value = 500; value <= 400000; ++value)
            shifted += int((value / 100.0) * 100.0) != value ? 1 : 0;
        QVERIFY(shifted > 0.02 * 400000 && shifted < 0.08 * 400000);

        host.Percent()->setValue(5.02);
        QCOMPARE(host.Percent()->value(), 5.01);
        host.Percent()->setValue(250.0);
        QCOMPARE(host.Percent()->value(), 250.0);
        QCOMPARE(host.Slider()->value(), 25000);
    }

    void attachedViewIsBroughtToAWholePercent()
    {
        Host host;
        host.ScaleView(1.0 / 3.0);

        host.panel->SetSourceView(&host.view);

        QCOMPARE(host.Percent()->value(), 33.0);
        QCOMPARE(host.Slider()->value(), 3300);
        QCOMPARE(host.view.GetScale(), 0.33);
    }

    void attachedViewThatMatchesTheBoxKeepsItsFraction()
    {
        Host host;
        host.ScaleView(0.336);
        host.Percent()->setValue(33.0);

        host.panel->SetSourceView(&host.view);

        QCOMPARE(host.view.GetScale(), 0.336);
        QCOMPARE(host.Percent()->value(), 33.0);
    }

    void attachedViewOutsideOfTheRangeIsDrivenIntoIt()
    {
        Host host;
        host.ScaleView(64.0);
        host.panel->SetSourceView(&host.view);
        QCOMPARE(host.Percent()->value(), 4000.0);
        QCOMPARE(host.view.GetScale(), 40.0);

        host.panel->SetSourceView(nullptr);
        host.ScaleView(0.02);
        host.panel->SetSourceView(&host.view);
        QCOMPARE(host.Percent()->value(), 5.0);
        QCOMPARE(host.view.GetScale(), 0.05);
    }

    void laterScaleOutsideOfTheRangeClampsTheControlsOnly()
    {
        Host host;
        host.panel->SetSourceView(&host.view);

        host.ScaleView(64.0);
        QCOMPARE(host.Percent()->value(), 4000.0);
        QCOMPARE(host.Slider()->value(), 400000);
        QCOMPARE(host.view.GetScale(), 64.0);
        host.ScaleView(0.02);
        QCOMPARE(host.Percent()->value(), 5.0);
        QCOMPARE(host.Slider()->value(), 500);
        QCOMPARE(host.view.GetScale(), 0.02);
    }

    void frameOfTheAttachedViewIsTakenBeforeItIsRescaled()
    {
        Host host;
        host.ScaleView(1.0 / 3.0);
        const QRectF before = host.Sight();

        host.panel->SetSourceView(&host.view);
        QCOMPARE(host.Overview()->GetViewRect(), before);
        QVERIFY(host.Sight().width() > before.width());
        host.panel->UpdateNavigatorFrame();

        QCOMPARE(host.Overview()->GetViewRect(), host.Sight());
    }

    void sameViewAgainRefreshesNothing()
    {
        Host host;
        host.panel->SetSourceView(&host.view);
        host.Overview()->SetViewRect(QRectF(1, 2, 3, 4));
        SignalLog log(host.Histogram());

        host.panel->SetSourceView(&host.view);

        QCOMPARE(host.Overview()->GetViewRect(), QRectF(1, 2, 3, 4));
        QCOMPARE(log.Count(), 0);
        // One of the view, one of the overview.
        QCOMPARE(host.model.made, 2);
    }

    void overviewIsDrawnThroughTheTransform()
    {
        Host host;
        host.panel->SetSourceView(&host.view);
        host.Show(0);

        const ProbeImage probe(host.Overview());
        QVERIFY(probe.CountOf(Qt::green) > 100);
        QCOMPARE(probe.CountOf(Qt::red), 0);
        QCOMPARE(host.model.living, 2);
        host.panel->SetSourceView(nullptr);

        QCOMPARE(host.model.living, 1);
        QCOMPARE(ProbeImage(host.Overview()).CountOf(Qt::green), 0);
    }

    void zoomInClimbsTheLadder()
    {
        Host host;
        host.Show(0);
        host.panel->SetSourceView(&host.view);
        host.Percent()->setValue(5.0);

        for (const double rung : {25, 50, 100, 200, 400, 600, 800, 1000, 1600, 3200, 4000, 4000})
        {
            host.Click("m_pZoomIn");
            QCOMPARE(host.Percent()->value(), rung);
            QVERIFY(qAbs(host.view.GetScale() * 100.0 - rung) < 1e-6);
        }
    }

    void zoomOutDescendsTheLadder()
    {
        Host host;
        host.Show(0);
        host.panel->SetSourceView(&host.view);
        host.Percent()->setValue(4000.0);

        for (const double rung : {3200, 1600, 1000, 800, 600, 400, 200, 100, 50, 25, 5, 5})
        {
            host.Click("m_pZoomOut");
            QCOMPARE(host.Percent()->value(), rung);
        }
    }

    void betweenTheRungsTheNextOneIsTaken()
    {
        Host host;
        host.Show(0);

        host.Percent()->setValue(130.0);
        host.Click("m_pZoomIn");
        QCOMPARE(host.Percent()->value(), 200.0);
        host.Percent()->setValue(130.0);
        host.Click("m_pZoomOut");
        QCOMPARE(host.Percent()->value(), 100.0);
        host.Percent()->setValue(5.5);
        host.Click("m_pZoomOut");
        QCOMPARE(host.Percent()->value(), 5.0);
    }

    void zoomKeepsTheMiddle()
    {
        Host host;
        host.Show(0);
        host.panel->SetSourceView(&host.view);
        host.view.centerOn(400, 300);

        for (const double percent : {200.0, 1600.0, 50.0, 100.0})
        {
            const QPointF middle = host.Middle();
            const double coarsest = 1.0 / qMin(host.view.GetScale(), percent / 100.0);
            host.Percent()->setValue(percent);
            // Less than two pixels of the screen each way.
            QVERIFY((host.Middle() - middle).manhattanLength() < 4.0 * coarsest);
        }
    }

    void zoomGoesAboutTheMiddlePoint_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::newRow("even sides") << QSize(300, 200);
        QTest::newRow("odd sides") << QSize(301, 201);
    }
    void zoomGoesAboutTheMiddlePoint()
    {
        QFETCH(QSize, size);
        Host host;
        NVDocumentView reference(&host.model);
        for (NVDocumentView* view : {&reference, static_cast<NVDocumentView*>(&host.view)})
        {
            view->resize(size);
            view->show();
            view->Scale(1 / view->GetScale(), QPointF());
        }
        host.panel->SetSourceView(&host.view);
        reference.centerOn(403.5, 301.25);
        host.view.centerOn(403.5, 301.25);

        for (const double percent : {230.0, 55.0, 1600.0, 100.0})
        {
            const QRect area = reference.viewport()->rect();
            const QPoint middle((area.width() - 1) / 2, (area.height() - 1) / 2);
            const QPointF centre = reference.mapToScene(middle);
            reference.Scale(percent / 100.0 / reference.GetScale(), middle);
            reference.centerOn(centre);

            host.Percent()->setValue(percent);

            QCOMPARE(host.view.mapToScene(0, 0), reference.mapToScene(0, 0));
        }
    }

    void scaleOfTheViewIsTruncated()
    {
        Host host;
        host.panel->SetSourceView(&host.view);

        host.ScaleView(2.0 / 3.0);

        QCOMPARE(host.Slider()->value(), 6666);
        QCOMPARE(host.Percent()->value(), 66.66);
    }

    void sliderMovesBoxAndView()
    {
        Host host;
        host.panel->SetSourceView(&host.view);
        QSignalSpy scaled(&host.view, &NVDocumentView::ScaleChanged);

        host.Slider()->setValue(15000);

        QCOMPARE(host.Percent()->value(), 150.0);
        QCOMPARE(host.view.GetScale(), 1.5);
        QCOMPARE(scaled.count(), 1);
        host.Slider()->setValue(15000);
        QCOMPARE(scaled.count(), 1);
    }

    // Were it not cut, the view would be driven to the rounded percentage.
    void scaleOfTheViewDoesNotComeBack()
    {
        Host host;
        host.panel->SetSourceView(&host.view);
        QSignalSpy scaled(&host.view, &NVDocumentView::ScaleChanged);

        host.ScaleView(1.0 / 3.0);

        QCOMPARE(host.view.GetScale(), 1.0 / 3.0);
        QCOMPARE(scaled.count(), 1);
        QCOMPARE(host.Slider()->value(), 3333);
        QCOMPARE(host.Percent()->value(), 33.33);
        QCOMPARE(host.Overview()->GetViewRect(), host.Sight());
        // And it is there again afterwards, once.
        host.Percent()->setValue(50.0);
        QCOMPARE(host.view.GetScale(), 0.5);
        QCOMPARE(scaled.count(), 2);
    }

    void pannedViewMovesTheFrameAndIsNotMovedByIt()
    {
        Host host;
        host.Show(0);
        host.panel->SetSourceView(&host.view);
        host.view.centerOn(400, 300);
        SignalLog log(host.Overview());
        const int before = host.view.moves;

        host.view.centerOn(500.0, 300.0);

        QCOMPARE(host.view.moves, before + 1);
        QCOMPARE(log.Count(), 0);
        QCOMPARE(host.Overview()->GetViewRect(), host.Sight());
    }

    // The overview's own connection is cut and made again: it is then the last one.
    void overviewIsNotHeardWhileItsFrameIsSet()
    {
        Host host;
        host.Show(0);
        host.panel->SetSourceView(&host.view);
        QPointF corner;
        connect(host.Overview(), &NavigatorWidget::ViewRectPosChanged, &host.view,
                [&host, &corner] { corner = host.Sight().topLeft(); });
        host.panel->UpdateNavigatorFrame();
        const QPointF before = host.Sight().topLeft();

        Q_EMIT host.Overview()->ViewRectPosChanged(QRectF(100, 60, 1, 1));

        QCOMPARE(corner, before);
        QVERIFY(host.Sight().topLeft() != before);
    }

    // The frame that was told is not the one that the overview shows: who answered would set it.
    void movedFrameIsNotResetByTheView()
    {
        Host host;
        host.Show(0);
        host.panel->SetSourceView(&host.view);
        const QRectF shown = host.Overview()->GetViewRect();
        QSignalSpy moved(&host.view, &NVDocumentView::SceneAreaChanged);

        Q_EMIT host.Overview()->ViewRectPosChanged(QRectF(100, 60, 1, 1));

        QVERIFY(moved.count() > 0);
        // The view rounds to a pixel beside it.
        QVERIFY((host.Sight().topLeft() - QPointF(100, 60)).manhattanLength() <= 2.0);
        QCOMPARE(host.Overview()->GetViewRect(), shown);
        // The view's moves are followed again.
        host.view.centerOn(500, 300);
        QCOMPARE(host.Overview()->GetViewRect(), host.Sight());
    }

    void frameOnAFineScreenIsDivided()
    {
        Host host(new FinePanel(nullptr));
        host.Show(0);
        host.panel->SetSourceView(&host.view);

        Q_EMIT host.Overview()->ViewRectPosChanged(QRectF(100, 60, 1, 1));

        QVERIFY((host.Sight().topLeft() - QPointF(50, 30)).manhattanLength() <= 2.0);
    }

    void dragOfTheFrameMovesTheView()
    {
        Host host;
        host.Show(0);
        host.panel->SetSourceView(&host.view);
        host.view.centerOn(500, 400);
        const QPointF middle(host.Overview()->width() / 2.0, host.Overview()->height() / 2.0);
        const QRectF before = host.Sight();
        QSignalSpy scaled(&host.view, &NVDocumentView::ScaleChanged);

        host.DragOverview(QEvent::MouseButtonPress, middle);
        for (int step = 1; step <= 20; ++step)
        {
            host.DragOverview(QEvent::MouseMove, middle - QPointF(step, step));
            const QPointF apart = host.Sight().topLeft() - host.Overview()->GetViewRect().topLeft();
            QVERIFY(apart.manhattanLength() < 4.0);
        }
        host.DragOverview(QEvent::MouseButtonRelease, middle - QPointF(20, 20));

        QCOMPARE(scaled.count(), 0);
        QVERIFY(host.Sight().left() < before.left() - 20);
        QVERIFY(host.Sight().top() < before.top() - 20);
    }

    // The overview multiplies by the ratio, the panel divides by it.
    void dragOfTheFrameOnADenseScreen()
    {
        if (!IsOnDenseScreen())
            return;
        QCOMPARE(Host().panel->devicePixelRatio(), 2);
        dragOfTheFrameMovesTheView();
    }

    void withoutAViewTheControlsMoveEachOtherOnly()
    {
        Host host;
        host.Show(0);
        host.panel->SetSourceView(&host.view);
        host.Percent()->setValue(150.0);
        host.panel->SetSourceView(nullptr);
        QCOMPARE(host.Percent()->value(), 150.0);
        const QRectF sight = host.Sight();

        const int before = host.Slider()->value();
        host.DragSlider(40);
        QVERIFY(host.Slider()->value() > before + 1000);
        QCOMPARE(qRound(host.Percent()->value() * 100.0), host.Slider()->value());
        host.Type("300");
        QCOMPARE(host.Slider()->value(), 30000);
        Q_EMIT host.Overview()->ViewRectPosChanged(QRectF(100, 60, 1, 1));
        host.panel->UpdateNavigatorFrame();

        QCOMPARE(host.view.GetScale(), 1.5);
        QCOMPARE(host.Sight(), sight);
    }

    void letGoViewIsNotFollowed()
    {
        Host host;
        host.panel->SetSourceView(&host.view);
        host.panel->SetSourceView(nullptr);
        SignalLog log(host.Histogram());

        host.ScaleView(0.5);
        host.view.centerOn(1, 1);
        host.document.NotifyChanged(host.document.GetRect());
        Q_EMIT host.document.StyleStateChanged(true);
        FinishWork();

        QCOMPARE(host.Percent()->value(), 100.0);
        QCOMPARE(host.Overview()->GetViewRect(), QRectF());
        QCOMPARE(host.document.asked, 0);
        QCOMPARE(log.Count(), 0);
    }

    void letGoViewLeavesTheLoupeEmpty()
    {
        Host host;
        host.Show(1);
        host.panel->SetSourceView(&host.view);
        host.panel->SetLookAt(QPoint(400, 300));
        QVERIFY(ProbeImage(host.Loupe()).CountOf(Qt::red) > 100);

        host.panel->SetSourceView(nullptr);

        QCOMPARE(ProbeImage(host.Loupe()).CountOf(Qt::red), 0);
    }

    void anotherViewTakesOver()
    {
        Host host;
        Host other;
        other.ScaleView(0.25);
        host.panel->SetSourceView(&host.view);
        host.Find<QComboBox>("m_pChannel")->setCurrentIndex(3);
        host.Find<QComboBox>("m_pGridType")->setCurrentIndex(2);

        host.panel->SetSourceView(&other.view);
        QCOMPARE(host.Percent()->value(), 25.0);
        host.ScaleView(2.0);
        QCOMPARE(host.Percent()->value(), 25.0);
        other.ScaleView(4.0);
        QCOMPARE(host.Percent()->value(), 400.0);

        QCOMPARE(host.Find<QComboBox>("m_pChannel")->currentIndex(), 3);
        QCOMPARE(host.Find<QComboBox>("m_pGridType")->currentIndex(), 2);
        host.panel->SetSourceView(nullptr);
    }

    void viewMayDieAfterItIsLetGo()
    {
        Host host;
        {
            Host other;
            host.panel->SetSourceView(&other.view);
            host.panel->SetSourceView(nullptr);
        }
        host.Show(0);

        host.Click("m_pZoomIn");
        QTest::keyClick(host.Overview(), Qt::Key_Right);
        host.panel->SetSourceView(&host.view);

        QCOMPARE(host.Percent()->value(), 100.0);
    }

    void viewWithoutADocumentOrAModel()
    {
        KXDocumentModel empty(nullptr);
        NVDocumentView withoutDocument(&empty);
        NVDocumentView withoutModel(nullptr);
        Host host;
        host.Show(0);

        for (NVDocumentView* view : {&withoutDocument, &withoutModel})
        {
            host.panel->SetSourceView(view);
            host.Percent()->setValue(250.0);
            QCOMPARE(view->GetScale(), 2.5);
            host.panel->SetSourceView(nullptr);
        }
    }

    void channelsAreMapped()
    {
        Host host;
        auto* combo = host.Find<QComboBox>("m_pChannel");
        const QVector<int> values = {7, 0, 1, 2, 4, 3, 5, 6};

        for (int index = 7; index >= 0; --index)
        {
            combo->setCurrentIndex(index);
            QCOMPARE(int(host.Histogram()->GetChannel()), values.at(index));
        }
        combo->clear();
        QCOMPARE(int(host.Histogram()->GetChannel()), 6);
    }

    // The table ends before it.
    void lastChannelIsChosenFromTheList()
    {
        Host host;
        host.Show(2);

        host.Choose("m_pChannel", 7);

        QCOMPARE(host.Find<QComboBox>("m_pChannel")->currentText(), QString("Green + Blue"));
        QCOMPARE(host.Histogram()->GetChannel(), HistogramWidget::GreenBlue);
    }

    void gridTypeGoesToTheLoupe()
    {
        Host host;

        for (const int type : {3, 2, 1, 0})
        {
            host.Find<QComboBox>("m_pGridType")->setCurrentIndex(type);
            QCOMPARE(host.Loupe()->GetGridType(), type);
        }
    }

    void lookPointGoesToTheLoupe()
    {
        Host host;

        host.panel->SetLookAt(QPoint(31, -7));

        QCOMPARE(host.Loupe()->GetLookPoint(), QPoint(31, -7));
    }

    void changedDocumentIsCountedAgainUnlessItIsEdited()
    {
        Host host;
        host.Show(2);
        SignalLog log(host.Histogram());
        host.panel->SetSourceView(&host.view);
        // Once for the new document, once for its count.
        QTRY_COMPARE(log.Count("CountChanged"), 2);
        log.Clear();

        host.document.BeginEdit();
        host.document.NotifyChanged(QRect(1, 1, 5, 5));
        FinishWork();
        QCOMPARE(host.document.asked, 1);
        QCOMPARE(log.Count(), 0);
        host.document.EndEdit();
        FinishWork();

        QCOMPARE(host.document.asked, 2);
        QCOMPARE(log.Count("CountChanged"), 1);
        QCOMPARE(host.Text("m_pPixels"), QString("800000"));
    }

    void changedDocumentIsDrawnAgainUnlessItIsEdited()
    {
        Host host;
        host.Show(0);
        host.panel->SetSourceView(&host.view);
        FinishWork();
        PaintCount paints(host.Overview());

        host.document.BeginEdit();
        host.document.NotifyChanged(QRect(1, 1, 5, 5));
        FinishWork();
        QCOMPARE(paints.count, 0);
        host.document.EndEdit();

        QTRY_COMPARE(paints.count, 1);
    }

    void changedStyleIsDrawnAndCountedWithoutAsking_data()
    {
        QTest::addColumn<bool>("on");
        QTest::newRow("on") << true;
        QTest::newRow("off") << false;
    }
    void changedStyleIsDrawnAndCountedWithoutAsking()
    {
        QFETCH(bool, on);
        Host host;
        host.Show(2);
        SignalLog log(host.Histogram());
        host.panel->SetSourceView(&host.view);
        QTRY_COMPARE(log.Count("CountChanged"), 2);
        host.document.BeginEdit();

        Q_EMIT host.document.StyleStateChanged(on);
        QTRY_COMPARE(log.Count("CountChanged"), 3);
        host.Find<QTabWidget>("m_pTabWidget")->setCurrentIndex(0);
        FinishWork();
        PaintCount paints(host.Overview());
        Q_EMIT host.document.StyleStateChanged(on);

        QTRY_COMPARE(paints.count, 1);
        QCOMPARE(host.document.asked, 0);
    }

    void changedStyleReachesTheLoupe()
    {
        Host host;
        host.Show(1);
        host.panel->SetSourceView(&host.view);
        FinishWork();
        PaintCount paints(host.Loupe());

        Q_EMIT host.document.StyleStateChanged(true);

        QTRY_COMPARE(paints.count, 1);
    }

    void figuresAreShown()
    {
        Host host;
        HistogramWidget* histogram = host.Histogram();

        Q_EMIT histogram->CurrentLevelRangeChanged(3, 200);
        Q_EMIT histogram->CountChanged(1234567);
        Q_EMIT histogram->StatsChanged(17, 99);
        QCOMPARE(host.Text("m_pRange"), QString("3 to 200"));
        QCOMPARE(host.Text("m_pPixels"), QString("1234567"));
        QCOMPARE(host.Text("m_pLevel"), QString("17"));
        QCOMPARE(host.Text("m_pCount"), QString("99"));
        Q_EMIT histogram->StatsNoInfo();

        QCOMPARE(host.Text("m_pRange"), QString("3 to 200"));
        QCOMPARE(host.Text("m_pPixels"), QString("1234567"));
        QCOMPARE(host.Text("m_pLevel"), QString());
        QCOMPARE(host.Text("m_pCount"), QString());
    }

    void theLongestFiguresAreShownInFull()
    {
        Host host;
        host.Show(2);
        host.panel->resize(host.panel->minimumSizeHint());
        QCoreApplication::processEvents();
        Q_EMIT host.Histogram()->CurrentLevelRangeChanged(200, 255);
        Q_EMIT host.Histogram()->StatsChanged(255, 99);
        QCoreApplication::processEvents();

        for (const char* name : {"m_pRange", "m_pLevel"})
        {
            const QLabel* figure = host.Find<QLabel>(name);
            QVERIFY2(figure->width() >= figure->sizeHint().width(), name);
        }
    }

    void figuresFollowTheKeys()
    {
        Host host;
        host.Show(2);
        host.panel->SetSourceView(&host.view);
        QTRY_COMPARE(host.Text("m_pPixels"), QString("800000"));

        QTest::keyClick(host.Histogram(), Qt::Key_End);
        QTest::keyClick(host.Histogram(), Qt::Key_Left, Qt::ShiftModifier);
        QTest::keyClick(host.Histogram(), Qt::Key_Right, Qt::ShiftModifier);

        // One channel of three has all its pixels there.
        QCOMPARE(host.Text("m_pRange"), QString("255 to 255"));
        QCOMPARE(host.Text("m_pLevel"), QString("255"));
        QCOMPARE(host.Text("m_pCount"), QString("266667"));
        QCOMPARE(host.Text("m_pPixels"), QString("266667"));
    }

    void diesWithAViewAttached()
    {
        Host host;
        host.panel->SetSourceView(&host.view);
        host.Show(2);

        host.panel.reset();
        host.ScaleView(2.0);
        host.document.NotifyChanged(host.document.GetRect());
        FinishWork();

        QCOMPARE(host.model.living, 1);
        QCOMPARE(host.document.asked, 0);
    }

    void diesWithTheFocusInside_data()
    {
        QTest::addColumn<int>("tab");
        QTest::addColumn<QString>("name");
        QTest::newRow("overview") << 0 << "m_pNavigator";
        QTest::newRow("percentage") << 0 << "m_pZoomSpn";
        QTest::newRow("loupe") << 1 << "m_pZoom";
        QTest::newRow("histogram") << 2 << "m_pHistogram";
    }
    void diesWithTheFocusInside()
    {
        QFETCH(int, tab);
        QFETCH(QString, name);
        Host host;
        host.Show(tab);
        host.panel->SetSourceView(&host.view);
        auto* child = host.panel->findChild<QWidget*>(name);
        child->setFocus();
        QTRY_VERIFY(child->hasFocus());
        // A level is pointed at, a number is half typed.
        QTest::keyClick(child, Qt::Key_Home);
        QTest::keyClick(child, Qt::Key_4);

        host.panel.reset();

        QCOMPARE(host.model.living, 1);
    }
};

NV_TEST_MAIN(tst_NVNavigatorPanel)
#include "tst_NVNavigatorPanel.moc"
