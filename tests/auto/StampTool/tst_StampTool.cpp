// The clone stamp: its source and the cross that shows it, offsets of strokes, layers that are read.

#include "StampTool.h"

#include "KXBrushSettings.h"
#include "NVStampToolbar.h"
#include "ProbeImage.h"
#include "SignalLog.h"
#include "TestMain.h"
#include "ToolHost.h"

namespace
{

struct Host : ToolHost<StampTool>
{
    explicit Host(QSettings* settings) : ToolHost(settings, BusyPicture())
    {
        tool->GetStampBar()->SetSize(9);
        tool->GetStampBar()->GetBrushes()->SetTip(BrushTip());
    }

    void choose(double x, double y) { click(x, y, Qt::AltModifier); }
    void stamp(double x, double y)
    {
        click(x, y);
        QTRY_VERIFY(!tool->IsStrokeRunning());
    }
};

// What stands out from white and from black alike lies here; in pixels of the picture.
bool ShowsCross(const Host& host, const QImage& without, double x, double y)
{
    const QImage now = ProbeImage(host.view->viewport()).Image();
    const QPoint place = host.at(x, y);
    const QRect around(place - QPoint(9, 9), QSize(19, 19));
    const QRect drawn = DifferenceOf(without.copy(around), now.copy(around));
    return drawn.width() >= 14 && drawn.height() >= 14 && drawn.width() <= 19;
}

} // namespace

class tst_StampTool : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scratch = std::make_unique<ScratchSettings>(); }

    void withoutASourceAMessageSaysWhatToDo()
    {
        Host host(settings());
        SignalLog log(host.tool.get());

        host.click(100, 100);

        QVERIFY(!host.tool->IsStrokeRunning());
        QCOMPARE(log.Count("Message"), 1);
        QVERIFY(log.Entries().first().contains("Alt"));
        QCOMPARE(host.layer(), BusyPicture());
    }

    void theStampPaintsWhatIsAtTheSource()
    {
        Host host(settings());
        host.choose(60, 50);

        host.stamp(200, 120);

        for (const QPoint& way : {QPoint(0, 0), QPoint(2, 1), QPoint(-2, -2)})
            QCOMPARE(host.pixel(200 + way.x(), 120 + way.y()),
                     BusyPicture().pixelColor(60 + way.x(), 50 + way.y()));
        QCOMPARE(host.pixel(210, 120), BusyPicture().pixelColor(210, 120));
    }

    void choosingTheSourceIsNoStroke()
    {
        Host host(settings());
        SignalLog log(host.tool.get());

        host.choose(60, 50);

        QCOMPARE(host.steps()->count(), 0);
        QCOMPARE(log.Entries(), QStringList("Message(\"The stamp reads from 60, 50.\")"));
    }

    void aDragWithAltMovesTheSource()
    {
        Host host(settings());
        host.press(10, 10, Qt::AltModifier);
        host.move(60, 50);
        host.release(60, 50);

        host.stamp(200, 120);

        QCOMPARE(host.pixel(200, 120), BusyPicture().pixelColor(60, 50));
    }

    void aPlaceOutsideIsNoSource()
    {
        Host host(settings());
        SignalLog log(host.tool.get());

        host.choose(-5, 50);
        host.click(100, 100);

        QCOMPARE(log.Count("Message"), 1);
        QVERIFY(log.Entries().first().contains("Alt"));
    }

    void alignedStrokesShareOneOffset()
    {
        Host host(settings());
        host.choose(60, 50);
        host.stamp(200, 120);

        host.stamp(220, 160);

        QCOMPARE(host.pixel(220, 160), BusyPicture().pixelColor(80, 90));
    }

    void otherStrokesBeginAtTheSourceAgain()
    {
        Host host(settings());
        host.tool->GetStampBar()->SetAligned(false);
        host.choose(60, 50);
        host.stamp(200, 120);

        host.stamp(220, 160);

        QCOMPARE(host.pixel(220, 160), BusyPicture().pixelColor(60, 50));
    }

    void aNewSourceGivesANewOffset()
    {
        Host host(settings());
        host.choose(60, 50);
        host.stamp(200, 120);

        host.choose(30, 30);
        host.stamp(220, 160);

        QCOMPARE(host.pixel(220, 160), BusyPicture().pixelColor(30, 30));
    }

    void aStrokeOverItsOwnSourceReadsWhatWasThereBefore()
    {
        Host host(settings());
        host.choose(90, 100);
        host.press(100, 100);
        for (int x = 101; x <= 200; ++x)
            host.move(x, 100);
        host.release(200, 100);
        QTRY_VERIFY(!host.tool->IsStrokeRunning());

        for (int x : {110, 150, 190})
            QCOMPARE(host.pixel(x, 100), BusyPicture().pixelColor(x - 10, 100));
    }

    void anotherDocumentNeedsASourceOfItsOwn()
    {
        Host host(settings());
        host.choose(60, 50);
        Document other(BusyPicture(), QString(), "Other");
        host.view->SetModel(other.GetModel());
        host.tool->SetCanvas(host.view, &other);
        SignalLog log(host.tool.get());

        host.click(200, 120);

        QVERIFY(!host.tool->IsStrokeRunning());
        QCOMPARE(log.Count("Message"), 1);
        QVERIFY(log.Entries().first().contains("another picture"));
        host.tool->SetCanvas(nullptr, nullptr);
        host.view->SetModel(nullptr);
    }

    void aSourceWhoseDocumentIsGoneIsNone()
    {
        Host host(settings());
        host.choose(60, 50);
        host.closeDocument();
        Document other(BusyPicture(), QString(), "Other");
        host.view->SetModel(other.GetModel());
        host.tool->SetCanvas(host.view, &other);
        SignalLog log(host.tool.get());

        host.click(200, 120);

        QVERIFY(log.Entries().first().contains("say where"));
        host.tool->SetCanvas(nullptr, nullptr);
        host.view->SetModel(nullptr);
    }

    void anotherSizeForgetsTheSource()
    {
        Host host(settings());
        host.choose(50, 50);
        const QVector<QImage> images = {BusyPicture(QSize(120, 90))};
        QVERIFY(host.pixels()->ReplaceImages(images, QImage()));
        SignalLog log(host.tool.get());

        host.stamp(60, 60);
        QCOMPARE(host.steps()->count(), 0);
        QVERIFY(log.Entries().constFirst().contains("Hold Alt"));

        host.choose(30, 30);
        host.stamp(60, 60);
        QCOMPARE(host.steps()->count(), 1);
    }

    void allLayersOrThisOneAreRead_data()
    {
        QTest::addColumn<bool>("all");
        QTest::newRow("all layers") << true;
        QTest::newRow("this layer") << false;
    }
    void allLayersOrThisOneAreRead()
    {
        QFETCH(bool, all);
        Host host(settings());
        host.addLayer(PlainPicture(Qt::transparent));
        host.tool->GetStampBar()->SetAllLayers(all);
        host.choose(60, 50);

        host.stamp(200, 120);

        QCOMPARE(host.layer(1).pixelColor(200, 120),
                 all ? BusyPicture().pixelColor(60, 50) : QColor(Qt::transparent));
        QCOMPARE(host.layer(0), BusyPicture());
    }

    void allLayersAreReadAsBeforeTheStroke()
    {
        Host host(settings());
        host.addLayer(PlainPicture(Qt::transparent));
        host.choose(90, 100);
        host.press(100, 100);
        for (int x = 101; x <= 200; ++x)
        {
            host.move(x, 100);
            QCoreApplication::processEvents();
        }
        host.release(200, 100);
        QTRY_VERIFY(!host.tool->IsStrokeRunning());

        QCOMPARE(host.layer(1).pixelColor(190, 100), BusyPicture().pixelColor(180, 100));
    }

    void theBlendModeOfTheBarIsPainted()
    {
        Host host(settings());
        host.choose(60, 50);
        QTest::keyClick(host.view, Qt::Key_M, Qt::AltModifier | Qt::ShiftModifier);

        host.stamp(200, 120);

        QCOMPARE(host.tool->GetStampBar()->GetBlendMode(), 1);
        const int source = BusyPicture().pixelColor(60, 50).red();
        const int backdrop = BusyPicture().pixelColor(200, 120).red();
        QVERIFY(qAbs(host.pixel(200, 120).red() - source * backdrop / 255) <= 1);
    }

    void aCrossShowsTheSource()
    {
        Host host(settings());
        host.leave();
        const QImage without = ProbeImage(host.view->viewport()).Image();

        host.choose(60, 50);
        host.move(200, 120, Qt::NoButton);

        QVERIFY(ShowsCross(host, without, 60, 50));
    }

    void theCrossGoesAlongWithTheStroke()
    {
        Host host(settings());
        host.leave();
        const QImage without = ProbeImage(host.view->viewport()).Image();
        host.choose(60, 50);

        host.press(200, 120);
        host.move(220, 150);

        QVERIFY(ShowsCross(host, without, 80, 80));
        QVERIFY(!ShowsCross(host, without, 60, 50));
        host.release(220, 150);
        QTRY_VERIFY(!host.tool->IsStrokeRunning());
        host.leave();
        QVERIFY(ShowsCross(host, without, 60, 50));
    }

    void theCrossOfAnotherDocumentIsNotShown()
    {
        Host host(settings());
        host.choose(60, 50);
        Document other(BusyPicture(), QString(), "Other");
        host.view->SetModel(other.GetModel());
        host.tool->SetCanvas(host.view, &other);
        host.leave();
        const QImage now = ProbeImage(host.view->viewport()).Image();
        host.tool->Deactivate();

        QCOMPARE(DifferenceOf(now, ProbeImage(host.view->viewport()).Image()), QRect());
        host.tool->SetCanvas(nullptr, nullptr);
        host.view->SetModel(nullptr);
    }

    void switchesSurvive()
    {
        {
            Host host(settings());
            host.tool->GetStampBar()->SetAligned(false);
            host.tool->GetStampBar()->SetAllLayers(false);
            host.tool->GetStampBar()->SetBlendMode(4);
        }

        StampTool again(settings(), nullptr);

        QVERIFY(!again.GetStampBar()->IsAligned());
        QVERIFY(!again.GetStampBar()->IsAllLayers());
        QCOMPARE(again.GetStampBar()->GetBlendMode(), 4);
    }

    void aStoredSwitchCounts()
    {
        settings()->setValue("stamp/aligned", false);
        Host host(settings());
        host.choose(60, 50);
        host.stamp(200, 120);

        host.stamp(220, 160);

        QCOMPARE(host.pixel(220, 160), BusyPicture().pixelColor(60, 50));
    }

private:
    QSettings* settings() const { return &m_scratch->settings; }

    std::unique_ptr<ScratchSettings> m_scratch;
};

NV_TEST_MAIN(tst_StampTool)
#include "tst_StampTool.moc"
