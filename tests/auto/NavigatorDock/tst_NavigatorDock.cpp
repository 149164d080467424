// The panel with overview, loupe and histogram of the canvas in front.

#include "NavigatorDock.h"

#include <QDoubleSpinBox>
#include <QLabel>
#include <QTabWidget>

#include "BusyThreads.h"
#include "CameraView.h"
#include "HistogramWidget.h"
#include "NVNavigatorPanel.h"
#include "NavigatorWidget.h"
#include "TestMain.h"
#include "ToolHost.h"

namespace
{

struct Canvas
{
    explicit Canvas(const QSize& size = QSize(800, 600))
        : document(BusyPicture(size), QString(), "A"),
          view(std::make_unique<NVDocumentView>(document.GetModel()))
    {
        view->resize(300, 200);
    }

    Document document;
    std::unique_ptr<NVDocumentView> view;
};

} // namespace

class tst_NavigatorDock : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_window = std::make_unique<QMainWindow>();
        m_window->setCentralWidget(new QWidget);
        m_dock = new NavigatorDock(m_window.get());
        m_window->addDockWidget(Qt::RightDockWidgetArea, m_dock);
        m_window->resize(800, 500);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }

    void cleanup() { m_window.reset(); }

    void aHiddenOneLeavesTheViewAlone()
    {
        Canvas canvas;
        canvas.view->Scale(1 / 3.0 / canvas.view->GetScale(), QPointF());

        m_dock->SetView(canvas.view.get());

        QCOMPARE(canvas.view->GetScale(), 1 / 3.0);
        QVERIFY(!m_dock->isVisible());
        m_dock->show();
        QCOMPARE(canvas.view->GetScale(), 0.33);
        QCOMPARE(zoom()->value(), 33.0);
        m_dock->SetView(nullptr);
    }

    void itFollowsTheViewWhileItIsToBeSeen()
    {
        Canvas canvas;
        m_dock->show();
        m_dock->SetView(canvas.view.get());
        canvas.view->Scale(2 / canvas.view->GetScale(), QPointF());
        QCOMPARE(zoom()->value(), 200.0);

        m_dock->hide();
        canvas.view->Scale(2, QPointF());
        QCOMPARE(zoom()->value(), 200.0);
        m_dock->show();

        QCOMPARE(zoom()->value(), 400.0);
        m_dock->SetView(nullptr);
        canvas.view->Scale(2, QPointF());
        QCOMPARE(zoom()->value(), 400.0);
    }

    void theZoomIsThatOfTheView()
    {
        Canvas canvas;
        m_dock->show();
        m_dock->SetView(canvas.view.get());

        zoom()->setValue(250);

        QCOMPARE(canvas.view->GetScale(), 2.5);
        m_dock->SetView(nullptr);
    }

    void theLoupeFollowsThePointer()
    {
        Canvas canvas;
        canvas.view->show();
        m_dock->show();
        m_dock->SetView(canvas.view.get());
        canvas.view->Scale(1 / canvas.view->GetScale(), QPointF());
        const QPoint place = canvas.view->MapFromDocument(QPointF(400.5, 300.5)).toPoint();
        const QPointF hit = canvas.view->MapToDocument(place);

        QMouseEvent event(QEvent::MouseMove, place, canvas.view->viewport()->mapToGlobal(place), Qt::NoButton,
                          Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(canvas.view->viewport(), &event);

        QCOMPARE(loupe()->GetLookPoint(), QPoint(int(std::floor(hit.x())), int(std::floor(hit.y()))));
        m_dock->SetView(nullptr);
        m_dock->findChild<NVNavigatorPanel*>()->SetLookAt(QPoint(3, 4));
        QMouseEvent later(QEvent::MouseMove, place, canvas.view->viewport()->mapToGlobal(place), Qt::NoButton,
                          Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(canvas.view->viewport(), &later);
        QCOMPARE(loupe()->GetLookPoint(), QPoint(3, 4));
    }

    void itMayCloseWhileTheHistogramIsCounted_data()
    {
        QTest::addColumn<QString>("end");
        QTest::newRow("the document is taken out") << "taken";
        QTest::newRow("the panel is closed") << "hidden";
        QTest::newRow("another document comes") << "other";
        QTest::newRow("the window goes") << "window";
    }
    void itMayCloseWhileTheHistogramIsCounted()
    {
        QFETCH(QString, end);
        auto canvas = std::make_unique<Canvas>(QSize(2000, 2000));
        Canvas other;
        BusyThreads threads;
        m_dock->show();
        m_dock->findChild<QTabWidget*>()->setCurrentIndex(2);
        m_dock->SetView(canvas->view.get());
        QCoreApplication::processEvents();

        if (end == "taken")
            m_dock->SetView(nullptr);
        else if (end == "hidden")
            m_dock->hide();
        else if (end == "other")
            m_dock->SetView(other.view.get());
        else
        {
            m_dock->SetView(nullptr);
            m_window.reset();
        }
        canvas.reset();
        threads.Open();
        QCoreApplication::processEvents();

        if (m_window)
            m_dock->SetView(nullptr);
    }

    void aViewThatDiedWhileThePanelWasHiddenIsForgotten()
    {
        auto canvas = std::make_unique<Canvas>();
        m_dock->SetView(canvas->view.get());
        canvas.reset();

        m_dock->show();

        QVERIFY(m_dock->isVisible());
    }

private:
    QDoubleSpinBox* zoom() const { return m_dock->findChild<QDoubleSpinBox*>("m_pZoomSpn"); }
    CameraView* loupe() const { return m_dock->findChild<CameraView*>(); }

    std::unique_ptr<QMainWindow> m_window;
    NavigatorDock* m_dock = nullptr;
};

NV_TEST_MAIN(tst_NavigatorDock)
#include "tst_NavigatorDock.moc"
