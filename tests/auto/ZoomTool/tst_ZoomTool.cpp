// The zoom tool: clicks double and halve the scale about the pointer, a drag zooms to its box, the bar says
// whether in or out and has two scales to go to.

#include "ZoomTool.h"

#include <QPushButton>
#include <QToolButton>

#include "KXResource.h"
#include "NVApplication.h"
#include "NVZoomToolbar.h"
#include "TestMain.h"
#include "ToolHost.h"

namespace
{

struct Host : ToolHost<ZoomTool>
{
    Host() : ToolHost(std::make_unique<ZoomTool>(nullptr), PlainPicture(Qt::gray, QSize(2000, 1500)))
    {
        window.resize(400, 300);
        QCoreApplication::processEvents();
        view->Scale(1 / view->GetScale(), QPointF());
    }
    // In pixels of the viewport, unlike those of the base.
    void Mouse(QEvent::Type type, const QPoint& place, Qt::MouseButton button, Qt::MouseButtons buttons,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QMouseEvent event(type, place, view->viewport()->mapToGlobal(place), button, buttons, modifiers);
        QCoreApplication::sendEvent(view->viewport(), &event);
    }
    void Click(const QPoint& place, Qt::MouseButton button, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        Mouse(QEvent::MouseButtonPress, place, button, button, modifiers);
        Mouse(QEvent::MouseButtonRelease, place, button, Qt::NoButton, modifiers);
    }
    void Drag(const QPoint& from, const QPoint& to, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        Mouse(QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton, modifiers);
        Mouse(QEvent::MouseMove, (from + to) / 2, Qt::NoButton, Qt::LeftButton, modifiers);
        Mouse(QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton, modifiers);
        Mouse(QEvent::MouseButtonRelease, to, Qt::LeftButton, Qt::NoButton, modifiers);
    }
    QPointF Middle() const { return view->MapToDocument(QRectF(view->viewport()->rect()).center()); }
    QPushButton* Button(const char* name) const { return window.findChild<QPushButton*>(name); }
    QToolButton* Mode(const char* name) const { return window.findChild<QToolButton*>(name); }
};

bool AreNear(const QPointF& one, const QPointF& other, double tolerance)
{
    return qAbs(one.x() - other.x()) <= tolerance && qAbs(one.y() - other.y()) <= tolerance;
}

} // namespace

class tst_ZoomTool : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aClickZoomsInAboutThePointer()
    {
        Host host;
        const QPointF place(100, 80);
        const QPointF before = host.view->MapToDocument(place);

        host.Click(place.toPoint(), Qt::LeftButton);

        QCOMPARE(host.view->GetScale(), 2.0);
        QVERIFY(AreNear(host.view->MapToDocument(place), before, 1));
    }

    void altAndTheRightButtonZoomOut()
    {
        Host host;
        host.Click(QPoint(100, 80), Qt::LeftButton, Qt::AltModifier);
        QCOMPARE(host.view->GetScale(), 0.5);

        host.Click(QPoint(100, 80), Qt::RightButton);
        QCOMPARE(host.view->GetScale(), 0.25);
    }

    void barTurnsItRound()
    {
        Host host;
        QTest::mouseClick(host.Mode("m_pZoomOut"), Qt::LeftButton);

        host.Click(QPoint(100, 80), Qt::LeftButton);
        QCOMPARE(host.view->GetScale(), 0.5);
        host.Click(QPoint(100, 80), Qt::LeftButton, Qt::AltModifier);
        QCOMPARE(host.view->GetScale(), 1.0);
        host.Click(QPoint(100, 80), Qt::RightButton);
        QCOMPARE(host.view->GetScale(), 2.0);
        QTest::mouseClick(host.Mode("m_pZoomIn"), Qt::LeftButton);
        host.Click(QPoint(100, 80), Qt::LeftButton);

        QCOMPARE(host.view->GetScale(), 4.0);
    }

    void aDragZoomsToItsBox_data()
    {
        QTest::addColumn<QPoint>("from");
        QTest::addColumn<QPoint>("to");
        QTest::newRow("downwards") << QPoint(100, 60) << QPoint(200, 110);
        QTest::newRow("upwards") << QPoint(200, 110) << QPoint(100, 60);
        QTest::newRow("tall") << QPoint(150, 20) << QPoint(170, 140);
    }
    void aDragZoomsToItsBox()
    {
        QFETCH(const QPoint, from);
        QFETCH(const QPoint, to);
        Host host;
        const QPointF middle = host.view->MapToDocument(QPointF(from + to) / 2);
        const QSizeF sight = host.view->viewport()->size();
        const double wanted =
            qMin(sight.width() / qAbs(to.x() - from.x()), sight.height() / qAbs(to.y() - from.y()));

        host.Drag(from, to);

        QVERIFY(qAbs(host.view->GetScale() - wanted) < 0.01 * wanted);
        QVERIFY(AreNear(host.Middle(), middle, 1));
    }

    void aDragOutFitsTheViewIntoItsBox()
    {
        Host host;
        host.view->Scale(4, QPointF(100, 80));
        const QSizeF sight = host.view->viewport()->size();
        const QPoint to(100 + int(sight.width() / 2), 60 + int(sight.height() / 2));

        host.Drag(QPoint(100, 60), to, Qt::AltModifier);

        QVERIFY(qAbs(host.view->GetScale() - 2) < 0.05);
    }

    void tinyBoxGoesToTheLargestScale()
    {
        Host host;

        host.Drag(QPoint(100, 80), QPoint(100, 100));
        QVERIFY(host.view->GetScale() > 4);
        host.Drag(QPoint(100, 80), QPoint(111, 80));
        host.Drag(QPoint(100, 80), QPoint(111, 80));

        QCOMPARE(host.view->GetScale(), NVDocumentView::MaxScale);
    }

    void aHandThatShakesClicks()
    {
        Host host;

        host.Drag(QPoint(100, 80), QPoint(102, 81));

        QCOMPARE(host.view->GetScale(), 2.0);
    }

    void boxIsSeenWhileItIsDrawn()
    {
        Host host;
        const QImage before = host.view->viewport()->grab().toImage();
        host.Mouse(QEvent::MouseButtonPress, QPoint(100, 60), Qt::LeftButton, Qt::LeftButton);
        host.Mouse(QEvent::MouseMove, QPoint(200, 110), Qt::NoButton, Qt::LeftButton);

        const QRect box = DifferenceOf(before, host.view->viewport()->grab().toImage());
        QCOMPARE(box.united(QRect(100, 60, 101, 51)), box);
        QVERIFY(box.width() < 106 && box.height() < 56);
        QVERIFY(host.tool->Cancel());

        QCOMPARE(host.view->viewport()->grab().toImage(), before);
    }

    void boxIsDrawnAnewWhereItWasAndIs()
    {
        Host host;
        host.Mouse(QEvent::MouseButtonPress, QPoint(100, 60), Qt::LeftButton, Qt::LeftButton);
        host.Mouse(QEvent::MouseMove, QPoint(250, 160), Qt::NoButton, Qt::LeftButton);
        PaintWatch watch(host.view->viewport());

        host.Mouse(QEvent::MouseMove, QPoint(200, 110), Qt::NoButton, Qt::LeftButton);
        QCoreApplication::processEvents();
        QVERIFY(watch.painted.contains(QPoint(250, 160)));
        watch.painted = QRegion();
        QVERIFY(host.tool->Cancel());
        QCoreApplication::processEvents();

        QVERIFY(watch.painted.contains(QPoint(100, 60)) && watch.painted.contains(QPoint(200, 110)));
        QVERIFY(!watch.painted.contains(QPoint(20, 20)));
    }

    void cancelLeavesTheScale()
    {
        Host host;
        host.Mouse(QEvent::MouseButtonPress, QPoint(100, 80), Qt::LeftButton, Qt::LeftButton);
        host.Mouse(QEvent::MouseMove, QPoint(220, 140), Qt::NoButton, Qt::LeftButton);

        QTest::keyClick(host.view, Qt::Key_Escape);
        QVERIFY(!host.tool->Cancel());
        host.Mouse(QEvent::MouseButtonRelease, QPoint(220, 140), Qt::LeftButton, Qt::NoButton);

        QCOMPARE(host.view->GetScale(), 1.0);
    }

    void actualPixelsGoesToOne()
    {
        Host host;
        host.view->Scale(3, QPointF(100, 80));
        const QPointF middle = host.Middle();

        QTest::mouseClick(host.Button("m_pActualPixels"), Qt::LeftButton);

        QCOMPARE(host.view->GetScale(), 1.0);
        QVERIFY(AreNear(host.Middle(), middle, 1.5));
    }

    void fitScreenShowsAll()
    {
        Host host;

        QTest::mouseClick(host.Button("m_pFitScreen"), Qt::LeftButton);

        QVERIFY(host.view->GetScale() < 0.25);
        QVERIFY(AreNear(host.Middle(), QPointF(1000, 750), 5));
    }

    void buttonsNeedADocument()
    {
        Host host;
        QVERIFY(host.Button("m_pActualPixels")->isEnabled());
        QVERIFY(host.Button("m_pFitScreen")->isEnabled());

        host.tool->SetCanvas(nullptr, nullptr);
        QVERIFY(!host.Button("m_pActualPixels")->isEnabled());
        QVERIFY(!host.Button("m_pFitScreen")->isEnabled());
        host.tool->SetCanvas(host.view, host.document.get());

        QVERIFY(host.Button("m_pFitScreen")->isEnabled());
    }

    void picturesFollowTheTheme()
    {
        Host host;
        const QImage light = host.Mode("m_pZoomIn")->icon().pixmap(16, 16).toImage();
        NVApplication::GetInstance()->SetTheme(KXResource::DarkTheme);

        host.tool->UpdateTheme();
        const QImage dark = host.Mode("m_pZoomIn")->icon().pixmap(16, 16).toImage();
        NVApplication::GetInstance()->SetTheme(KXResource::LightTheme);
        host.tool->UpdateTheme();

        QVERIFY(dark != light);
        QCOMPARE(host.Mode("m_pZoomIn")->icon().pixmap(16, 16).toImage(), light);
    }
};

NV_TEST_MAIN(tst_ZoomTool)
#include "tst_ZoomTool.moc"
