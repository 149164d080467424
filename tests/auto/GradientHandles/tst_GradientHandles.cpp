// The handles of a gradient on the canvas: dragged, snapped, and their look under the pointer.

#include "GradientHandles.h"

#include "GradientHost.h"
#include "TestMain.h"

using Host = GradientHost;

class tst_GradientHandles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scratch = std::make_unique<ScratchSettings>(); }

    void theEndCanBeDraggedOn()
    {
        Host host(settings());
        host.pull();

        host.pull(QPointF(251, 101), QPointF(200, 150));

        QCOMPARE(host.tool->GetStart(), QPointF(50, 100));
        QCOMPARE(host.tool->GetEnd(), QPointF(200, 150));
        host.pull(QPointF(50, 100), QPointF(20, 30));
        QCOMPARE(host.tool->GetStart(), QPointF(20, 30));
        QCOMPARE(host.tool->GetEnd(), QPointF(200, 150));
        QVERIFY(host.tool->IsPending());
        QCOMPARE(host.steps()->count(), 0);
    }

    void aDragElsewhereBeginsAnew()
    {
        Host host(settings());
        host.pull();

        host.pull(QPointF(20, 20), QPointF(90, 30));

        QCOMPARE(host.tool->GetStart(), QPointF(20, 20));
        QCOMPARE(host.tool->GetEnd(), QPointF(90, 30));
    }

    void aClickElsewhereChangesNothing()
    {
        Host host(settings());
        host.click(20, 20);
        QVERIFY(host.isClean());
        host.pull();

        host.click(20, 20);

        QCOMPARE(host.tool->GetStart(), QPointF(50, 100));
        QVERIFY(host.tool->IsPending());
    }

    void shiftKeepsToWholeDirections()
    {
        Host host(settings());
        host.press(50, 100);
        host.mouse(QEvent::MouseMove, 150, 108, Qt::NoButton, Qt::LeftButton, Qt::ShiftModifier);
        QVERIFY(qAbs(host.tool->GetEnd().y() - 100) < 1e-6);
        host.mouse(QEvent::MouseMove, 150, 190, Qt::NoButton, Qt::LeftButton, Qt::ShiftModifier);
        const QPointF way = host.tool->GetEnd() - host.tool->GetStart();
        QVERIFY(qAbs(way.x() - way.y()) < 1e-6);
        host.move(150, 190);
        QCOMPARE(host.tool->GetEnd(), QPointF(150, 190));
        host.release(150, 190);
    }

    void handlesAnswerToThePointer()
    {
        Host host(settings());
        host.pull();
        host.move(150, 20, Qt::NoButton);
        const QImage plain = host.view->viewport()->grab().toImage();
        QCOMPARE(host.view->viewport()->cursor().shape(), Qt::CrossCursor);

        host.move(52, 101, Qt::NoButton);

        QCOMPARE(host.view->viewport()->cursor().shape(), Qt::SizeAllCursor);
        const QRect changed = DifferenceOf(plain, host.view->viewport()->grab().toImage());
        QVERIFY(changed.contains(host.at(50, 100)));
        QVERIFY(changed.width() < 30);
        host.leave();
        QCOMPARE(host.view->viewport()->grab().toImage(), plain);
    }

    void theEndIsTakenBeforeTheStart()
    {
        Host host(settings());
        GradientHandles handles;
        handles.SetLine(QPointF(50, 50), QPointF(52, 50));

        QCOMPARE(handles.HandleAt(host.view, QPointF(50, 50)), GradientHandles::End);
        QCOMPARE(handles.HandleAt(host.view, QPointF(41, 50)), GradientHandles::Start);
        QCOMPARE(handles.HandleAt(host.view, QPointF(70, 50)), GradientHandles::None);
    }

    void theReachIsThatOfTheScreen()
    {
        Host host(settings());
        GradientHandles handles;
        handles.SetLine(QPointF(50, 50), QPointF(150, 50));
        host.view->Scale(4, QPointF());

        QCOMPARE(handles.HandleAt(host.view, QPointF(148, 50)), GradientHandles::End);
        QCOMPARE(handles.HandleAt(host.view, QPointF(146, 50)), GradientHandles::None);
    }

    void everyFifteenDegreesSnap()
    {
        GradientHandles handles;
        for (int degrees = 0; degrees < 360; degrees += 5)
        {
            handles.SetLine(QPointF(10, 10), QPointF(10, 10));
            const double angle = qDegreesToRadians(double(degrees));
            handles.Move(GradientHandles::End, QPointF(10 + 100 * cos(angle), 10 + 100 * sin(angle)), true);

            const QLineF line(handles.GetStart(), handles.GetEnd());
            QVERIFY(qAbs(line.length() - 100) < 1e-6);
            const double steps = line.angle() / 15;
            QVERIFY(qAbs(steps - qRound(steps)) < 1e-6);
            const double off = qAbs(line.angleTo(QLineF(0, 0, cos(angle), sin(angle))));
            QVERIFY(qMin(off, 360 - off) < 7.6);
        }
    }

private:
    QSettings* settings() const { return &m_scratch->settings; }

    std::unique_ptr<ScratchSettings> m_scratch;
};

NV_TEST_MAIN(tst_GradientHandles)
#include "tst_GradientHandles.moc"
