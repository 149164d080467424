// Spot healing: the mark while painting, the work on another thread and all that may come in between.

#include "SpotHealingTool.h"

#include "BusyThreads.h"
#include "KXBrushSettings.h"
#include "NVSpotHealingToolbar.h"
#include "SignalLog.h"
#include "TestMain.h"
#include "ToolHost.h"

namespace
{

// An even ground with a dark blot about (150, 100).
QImage Blotted()
{
    QImage image = PlainPicture(QColor(180, 160, 140));
    for (int y = 95; y <= 105; ++y)
        std::fill_n(reinterpret_cast<QRgb*>(image.scanLine(y)) + 145, 11, qRgb(20, 20, 20));
    return image;
}

struct Host : ToolHost<SpotHealingTool>
{
    explicit Host(QSettings* settings, const QImage& picture = Blotted()) : ToolHost(settings, picture)
    {
        tool->GetHealingBar()->SetSize(40);
        tool->GetHealingBar()->GetBrushes()->SetTip(BrushTip());
    }

    bool isHealed() const
    {
        for (const QPoint& place : {QPoint(146, 96), QPoint(150, 100), QPoint(154, 104)})
        {
            const QColor color = pixel(place.x(), place.y());
            if (qAbs(color.red() - 180) > 12 || qAbs(color.green() - 160) > 12 ||
                qAbs(color.blue() - 140) > 12)
                return false;
        }
        return true;
    }
    // The stroke is worked off, and the healing has been started.
    void startHealing()
    {
        click(150, 100);
        QTRY_VERIFY(tool->IsHealing());
    }
};

} // namespace

class tst_SpotHealingTool : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scratch = std::make_unique<ScratchSettings>(); }

    void aSpotIsHealed()
    {
        Host host(settings());
        SignalLog log(host.tool.get());

        host.click(150, 100);
        QTRY_VERIFY(!host.tool->IsStrokeRunning());

        QVERIFY(host.isHealed());
        QVERIFY(QRect(129, 79, 43, 43).contains(DifferenceOf(Blotted(), host.layer())));
        QCOMPARE(host.steps()->count(), 1);
        QCOMPARE(log.Count("StrokeEnded"), 1);
        QVERIFY(!host.pixels()->IsBeingEdited());
    }

    void theMarkIsTranslucentAndGoesWithTheStroke()
    {
        Host host(settings());

        host.press(150, 100);
        host.move(151, 100);
        QTRY_VERIFY(host.pixel(150, 112) != QColor(180, 160, 140));

        const QColor dark = host.pixel(150, 100);
        const QColor light = host.pixel(150, 112);
        QVERIFY(dark != QColor(20, 20, 20));
        QVERIFY(dark.red() < light.red() && dark.green() < light.green());
        host.release(151, 100);
        QTRY_VERIFY(!host.tool->IsStrokeRunning());
        QCOMPARE(host.pixel(150, 112), QColor(180, 160, 140));
    }

    void workRunsOnAnotherThreadAndTheMarkStaysUntilItIsDone()
    {
        BusyThreads threads;
        Host host(settings());

        host.startHealing();

        QVERIFY(host.tool->IsStrokeRunning());
        QVERIFY(host.pixels()->IsBeingEdited());
        QCOMPARE(host.steps()->count(), 0);
        QVERIFY(host.pixel(150, 112) != QColor(180, 160, 140));
        QCOMPARE(host.view->viewport()->cursor().shape(), Qt::BusyCursor);
        threads.Open();
        QTRY_VERIFY(!host.tool->IsStrokeRunning());
        QVERIFY(host.isHealed());
        QVERIFY(host.view->viewport()->cursor().shape() != Qt::BusyCursor);
    }

    void longWorkIsTold()
    {
        BusyThreads threads;
        Host host(settings());
        SignalLog log(host.tool.get());
        host.startHealing();

        QTRY_COMPARE(log.Count("Message"), 1);

        QVERIFY(log.Entries().last().contains("Escape"));
        threads.Open();
        QTRY_VERIFY(!host.tool->IsStrokeRunning());
    }

    void escapeCancelsTheWork()
    {
        BusyThreads threads;
        Host host(settings());
        host.startHealing();

        QTest::keyClick(host.view, Qt::Key_Escape);

        QVERIFY(!host.tool->IsHealing());
        QVERIFY(!host.tool->IsStrokeRunning());
        QVERIFY(!host.pixels()->IsBeingEdited());
        QCOMPARE(host.layer(), Blotted());
        threads.Open();
        QCoreApplication::processEvents();
        QCOMPARE(host.layer(), Blotted());
        QCOMPARE(host.steps()->count(), 0);
    }

    void afterACancelTheNextSpotIsHealed()
    {
        Host host(settings());
        host.startHealing();
        QVERIFY(host.tool->Cancel());

        host.click(150, 100);
        QTRY_VERIFY(!host.tool->IsStrokeRunning());

        QVERIFY(host.isHealed());
        QCOMPARE(host.steps()->count(), 1);
    }

    void aPressWhileTheWorkRunsWaits()
    {
        BusyThreads threads;
        Host host(settings());
        host.startHealing();
        SignalLog log(host.tool.get());

        host.click(60, 60);

        QCOMPARE(log.Count("Message"), 1);
        QVERIFY(host.tool->IsHealing());
        threads.Open();
        QTRY_VERIFY(!host.tool->IsStrokeRunning());
        QCOMPARE(host.steps()->count(), 1);
    }

    void aPressWhenTheWorkIsAllButDoneBegins()
    {
        Host host(settings());
        host.startHealing();
        QThreadPool::globalInstance()->waitForDone();

        host.press(60, 60);

        QVERIFY(!host.tool->IsHealing());
        QVERIFY(host.tool->IsStrokeRunning());
        QCOMPARE(host.steps()->count(), 1);
        host.release(60, 60);
        QTRY_COMPARE(host.steps()->count(), 2);
    }

    void anotherToolWaitsForTheWork()
    {
        Host host(settings());
        host.startHealing();

        host.tool->Deactivate();

        QVERIFY(!host.tool->IsStrokeRunning());
        QVERIFY(host.isHealed());
        QCOMPARE(host.steps()->count(), 1);
        QVERIFY(!host.pixels()->IsBeingEdited());
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    void anotherCanvasWaitsForTheWork()
    {
        Host host(settings());
        host.startHealing();

        host.tool->SetCanvas(nullptr, nullptr);

        QVERIFY(host.isHealed());
        QCOMPARE(host.steps()->count(), 1);
    }

    void theDocumentMayGoWhileTheWorkRuns()
    {
        BusyThreads threads;
        Host host(settings());
        SignalLog log(host.tool.get());
        host.startHealing();

        host.closeDocument();
        threads.Open();

        QTRY_VERIFY(!host.tool->IsStrokeRunning());
        QCOMPARE(log.Count("StrokeEnded"), 1);
    }

    void theToolMayGoWhileTheWorkRuns()
    {
        BusyThreads threads;
        Host host(settings());
        host.startHealing();

        host.tool.reset();

        QCOMPARE(host.layer(), Blotted());
        QVERIFY(!host.pixels()->IsBeingEdited());
        threads.Open();
        QCoreApplication::processEvents();
        QCOMPARE(host.layer(), Blotted());
    }

    void onlyTheSelectionIsHealed()
    {
        Host host(settings());
        // A second blot, which the stroke covers too.
        for (int y = 95; y <= 105; ++y)
        {
            for (int x = 225; x <= 235; ++x)
                host.pixels()->EditLayer(0).setPixelColor(x, y, QColor(20, 20, 20));
        }
        host.pixels()->NotifyChanged(host.pixels()->GetRect());
        host.select(QRect(0, 0, 200, 200));

        host.stroke();

        QVERIFY(host.isHealed());
        QCOMPARE(host.pixel(230, 100), QColor(20, 20, 20));
    }

    void whereNothingIsSelectedNothingIsHealed()
    {
        Host host(settings());
        host.select(QRect(0, 0, 20, 20));

        host.click(150, 100);
        QTRY_VERIFY(!host.tool->IsStrokeRunning());

        QCOMPARE(host.layer(), Blotted());
        QCOMPARE(host.steps()->count(), 0);
    }

    void theOpacityOfTheBrushMixes()
    {
        Host host(settings());
        host.tool->GetHealingBar()->GetBrushes()->SetOpacity(50);

        host.click(150, 100);
        QTRY_VERIFY(!host.tool->IsStrokeRunning());

        QVERIFY(qAbs(host.pixel(150, 100).red() - 100) <= 12);
    }

    void aSpotOverTheWholePictureIsRefused()
    {
        Host host(settings(), PlainPicture(Qt::gray, QSize(40, 30)));
        host.tool->GetHealingBar()->SetSize(300);
        SignalLog log(host.tool.get());

        host.click(20, 15);
        QTRY_VERIFY(!host.tool->IsStrokeRunning());

        QVERIFY(log.Entries().join(' ').contains("too large"));
        QCOMPARE(host.layer(), PlainPicture(Qt::gray, QSize(40, 30)));
        QCOMPARE(host.steps()->count(), 0);
    }

private:
    QSettings* settings() const { return &m_scratch->settings; }

    std::unique_ptr<ScratchSettings> m_scratch;
};

NV_TEST_MAIN(tst_SpotHealingTool)
#include "tst_SpotHealingTool.moc"
