// The gradient tool: the drag, the handles, the preview on the canvas, commit and cancel by every way there
// is, and the work on another thread for large pictures.

#include "GradientTool.h"

#include <QLabel>

#include "BusyThreads.h"
#include "GradientHost.h"
#include "GradientStops.h"
#include "NVApplication.h"
#include "SignalLog.h"
#include "TestMain.h"

using Host = GradientHost;

namespace
{

const QSize LargeSize(2000, 1200);

// Black at 50, white at 250.
bool IsRamp(const QImage& image)
{
    for (int x = 0; x < image.width(); x += 7)
    {
        const double grey = qBound(0.0, 255 * (x + 0.5 - 50) / 200, 255.0);
        if (qAbs(qRed(image.pixel(x, 150)) - grey) > 2)
            return false;
    }
    return true;
}

} // namespace

class tst_GradientTool : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scratch = std::make_unique<ScratchSettings>(); }

    void theFirstStartHasUsableValues()
    {
        GradientTool tool(settings(), nullptr);
        const NVGradientToolbar* bar = tool.GetGradientBar();

        QCOMPARE(bar->GetGradientCount(), 24);
        QCOMPARE(bar->GetCurrentGradientIndex(), 0);
        QCOMPARE(bar->GetType(), 0);
        QCOMPARE(bar->GetOpacity(), 100);
        QCOMPARE(bar->GetRepeatCount(), 1);
        QCOMPARE(bar->GetBlendMode(), 0);
        QVERIFY(bar->IsOutside() && !bar->IsReverse() && !bar->GetStyle());
    }

    void aDragIsShownAndWaits()
    {
        Host host(settings());
        host.pull();

        QVERIFY(host.tool->IsPending());
        QVERIFY(host.button("m_pCommit")->isVisible() && host.button("m_pCancel")->isVisible());
        QCOMPARE(host.layer(), PlainPicture(Qt::blue));
        QCOMPARE(host.steps()->count(), 0);
        for (int x : {10, 80, 150, 220, 290})
        {
            const double grey = qBound(0.0, 255 * (x + 0.5 - 50) / 200, 255.0);
            const QColor color = host.shown(x, 150);
            QVERIFY(qAbs(color.red() - grey) <= 2 && color.red() == color.blue());
        }
    }

    void committing_data()
    {
        QTest::addColumn<QString>("way");
        for (const char* way : {"button", "return", "enter", "other tool", "finish"})
            QTest::newRow(way) << way;
    }
    void committing()
    {
        QFETCH(QString, way);
        Host host(settings());
        host.pull();
        SignalLog log(host.tool.get());

        if (way == "button")
            QTest::mouseClick(host.button("m_pCommit"), Qt::LeftButton);
        else if (way == "return")
            QTest::keyClick(host.view, Qt::Key_Return);
        else if (way == "enter")
            QTest::keyClick(host.view, Qt::Key_Enter, Qt::KeypadModifier);
        else if (way == "other tool")
            host.tool->Deactivate();
        else
            host.tool->Finish();

        QVERIFY(IsRamp(host.layer()));
        QCOMPARE(host.steps()->count(), 1);
        QCOMPARE(host.steps()->undoText(), QString("Gradient"));
        QCOMPARE(log.Count("GradientEnded"), 1);
        QVERIFY(host.isClean());
        host.steps()->undo();
        QCOMPARE(host.layer(), PlainPicture(Qt::blue));
        host.steps()->redo();
        QVERIFY(IsRamp(host.layer()));
    }

    void cancelling_data()
    {
        QTest::addColumn<QString>("way");
        for (const char* way : {"button", "escape", "operation"})
            QTest::newRow(way) << way;
    }
    void cancelling()
    {
        QFETCH(QString, way);
        Host host(settings());
        host.pull();

        if (way == "button")
            QTest::mouseClick(host.button("m_pCancel"), Qt::LeftButton);
        else if (way == "escape")
            QTest::keyClick(host.view, Qt::Key_Escape);
        else
            QVERIFY(host.tool->Cancel());

        QVERIFY(host.isClean());
        QCOMPARE(host.layer(), PlainPicture(Qt::blue));
        QCOMPARE(host.steps()->count(), 0);
        QCOMPARE(host.shown(150, 150), QColor(Qt::blue));
        QVERIFY(!host.tool->Cancel());
    }

    void whatIsShownIsWhatIsDrawn_data()
    {
        QTest::addColumn<int>("type");
        for (int type = 0; type < 4; ++type)
            QTest::addRow("type %d", type) << type;
    }
    void whatIsShownIsWhatIsDrawn()
    {
        QFETCH(int, type);
        Host host(settings(), BusyPicture());
        host.addLayer(PlainPicture(QColor(200, 100, 0, 90)));
        host.addLayer(BusyPicture());
        host.pixels()->SetLayerBlendMode(1, 4);
        host.pixels()->SetLayerOpacity(1, 70);
        host.pixels()->SetLayerBlendMode(2, 1);
        host.pixels()->SetLayerOpacity(2, 40);
        host.pixels()->SetCurrentLayer(1);
        host.select(QRect(20, 20, 200, 160));
        host.bar()->SetType(type);
        host.bar()->SetBlendMode(3);
        host.bar()->SetOpacity(60);
        host.bar()->SetRepeatCount(3);
        host.bar()->SetStyle(true);
        host.bar()->SetReverse(true);
        host.pull(QPointF(80, 60), QPointF(170, 110));
        host.leave();
        const QImage before = host.view->viewport()->grab().toImage();

        QTest::keyClick(host.view, Qt::Key_Return);

        const QImage after = host.view->viewport()->grab().toImage();
        int compared = 0;
        for (int y = 1; y < 200; y += 3)
        {
            for (int x = 1; x < 300; x += 3)
            {
                // The line with its handles lies over the picture.
                if (QRect(65, 45, 125, 85).contains(x, y))
                    continue;
                const QRgb one = before.pixel(host.at(x, y));
                const QRgb other = after.pixel(host.at(x, y));
                QVERIFY(qAbs(qRed(one) - qRed(other)) <= 2);
                QVERIFY(qAbs(qGreen(one) - qGreen(other)) <= 2);
                QVERIFY(qAbs(qBlue(one) - qBlue(other)) <= 2);
                ++compared;
            }
        }
        QVERIFY(compared > 3000);
        QVERIFY(host.layer(1) != PlainPicture(QColor(200, 100, 0, 90)));
        QCOMPARE(host.layer(0), BusyPicture());
        QCOMPARE(host.layer(2), BusyPicture());
    }

    void eachOptionIsLive()
    {
        Host host(settings());
        host.pull();
        const auto looks = [&host] { return host.view->viewport()->grab().toImage(); };
        QImage last = looks();
        const std::function<void()> changes[] = {
            [&] { host.bar()->SetType(1); },        [&] { host.bar()->SetRepeatCount(3); },
            [&] { host.bar()->SetStyle(true); },    [&] { host.bar()->SetReverse(true); },
            [&] { host.bar()->SetOutside(false); }, [&] { host.bar()->SetOpacity(50); },
            [&] { host.bar()->SetBlendMode(2); },   [&] { host.bar()->SetCurrentGradientIndex(1); }};
        for (const auto& change : changes)
        {
            change();
            const QImage now = looks();
            QVERIFY(now != last);
            last = now;
        }
        QCOMPARE(host.layer(), PlainPicture(Qt::blue));
    }

    void zoomAndPanKeepThePicture()
    {
        Host host(settings());
        host.pull();
        for (double factor : {3.0, 0.5, 10.0, 0.02})
        {
            host.view->Scale(factor, QPointF(host.view->viewport()->rect().center()));
            host.leave();
            const QImage before = host.view->viewport()->grab().toImage();
            QVERIFY(host.tool->IsPending());
            QVERIFY(!before.isNull());
        }
        host.view->FitInView();
        host.bar()->SetType(2);
        const QImage before = host.view->viewport()->grab().toImage();
        QTest::keyClick(host.view, Qt::Key_Return);
        const QImage after = host.view->viewport()->grab().toImage();
        for (int x : {10, 100, 200, 290})
        {
            const QPoint place = host.at(x, 170);
            QVERIFY(qAbs(qRed(before.pixel(place)) - qRed(after.pixel(place))) <= 4);
        }
    }

    void keysAreLiveOnlyWhileAGradientIsPending()
    {
        Host host(settings());
        SignalLog log(host.tool.get());
        QTest::keyClick(host.view, Qt::Key_Return);
        QTest::keyClick(host.view, Qt::Key_Escape);
        QCOMPARE(log.Count(), 0);

        host.pull();
        host.tool->Deactivate();
        QCOMPARE(host.steps()->count(), 1);
        log.Clear();
        QTest::keyClick(host.view, Qt::Key_Escape);
        QTest::keyClick(host.view, Qt::Key_Return);
        QCOMPARE(log.Count(), 0);
    }

    void aHiddenLayerIsRefused()
    {
        Host host(settings());
        host.pixels()->SetLayerVisible(0, false);
        SignalLog log(host.tool.get());

        host.pull();

        QCOMPARE(log.Count("Message"), 1);
        QVERIFY(log.Entries().first().contains("hidden"));
        QVERIFY(host.isClean());
    }

    void withoutAGradientAMessageAsksForOne()
    {
        Host host(settings());
        host.bar()->Load({});
        SignalLog log(host.tool.get());

        host.pull();

        QCOMPARE(log.Count("Message"), 1);
        QVERIFY(host.isClean());
    }

    void aGradientThatGoesWhilePendingDrawsNothing()
    {
        Host host(settings());
        host.pull();
        host.bar()->SetCurrentGradientIndex(-1);
        QCOMPARE(host.shown(150, 150), QColor(Qt::blue));

        QTest::keyClick(host.view, Qt::Key_Return);

        QCOMPARE(host.steps()->count(), 0);
        QVERIFY(host.isClean());
    }

    void theRightButtonDoesNothing()
    {
        Host host(settings());
        host.mouse(QEvent::MouseButtonPress, 50, 100, Qt::RightButton, Qt::RightButton);
        host.mouse(QEvent::MouseMove, 150, 100, Qt::NoButton, Qt::RightButton);
        host.mouse(QEvent::MouseButtonRelease, 150, 100, Qt::RightButton, Qt::NoButton);

        QVERIFY(host.isClean());
    }

    void anotherDocumentCommits()
    {
        Host host(settings());
        host.pull();
        Document other(PlainPicture(Qt::green), QString(), "Other");
        NVDocumentView view(other.GetModel());

        host.tool->SetCanvas(&view, &other);

        QVERIFY(IsRamp(host.layer()));
        QCOMPARE(host.steps()->count(), 1);
        QCOMPARE(other.GetUndoStack()->count(), 0);
        host.tool->SetCanvas(nullptr, nullptr);
    }

    void theDocumentMayGoWhilePending()
    {
        Host host(settings());
        host.pull();

        host.closeDocument();

        QVERIFY(!host.tool->IsPending());
        QVERIFY(host.button("m_pCommit")->isHidden());
        host.view->viewport()->grab();
    }

    void aChangeOfLayersGivesItUp()
    {
        Host host(settings());
        host.pull();

        host.addLayer(PlainPicture(Qt::transparent));

        QVERIFY(host.isClean());
        QCOMPARE(host.layer(), PlainPicture(Qt::blue));
    }

    void aChangeOfTheDocumentIsShown()
    {
        Host host(settings());
        host.pull();
        host.bar()->SetOpacity(50);
        const QColor before = host.shown(150, 150);

        host.pixels()->EditLayer(0).fill(Qt::white);
        host.pixels()->NotifyChanged(host.pixels()->GetRect());

        QVERIFY(host.shown(150, 150) != before);
        QVERIFY(host.tool->IsPending());
    }

    void aLargePictureIsDrawnOnAnotherThread()
    {
        const QImage picture = PlainPicture(Qt::blue, LargeSize);
        Host host(settings(), picture);
        host.pull();
        SignalLog log(host.tool.get());
        {
            BusyThreads threads;
            QTest::keyClick(host.view, Qt::Key_Return);

            QVERIFY(host.tool->IsRendering());
            QVERIFY(host.pixels()->IsBeingEdited());
            QCOMPARE(host.view->viewport()->cursor().shape(), Qt::BusyCursor);
            QTRY_VERIFY(log.Count("Message") >= 1);
            QVERIFY(log.Entries().filter("Message").first().contains("0 %"));
            // A press meanwhile has to wait.
            host.press(20, 20);
            host.release(20, 20);
            QVERIFY(host.tool->IsRendering());
        }
        QTRY_VERIFY(!host.tool->IsRendering());
        QVERIFY(IsRamp(host.layer()));
        QVERIFY(host.isClean());
        QCOMPARE(host.steps()->count(), 1);
        QCOMPARE(log.Count("GradientEnded"), 1);
        host.steps()->undo();
        QCOMPARE(host.layer(), picture);
    }

    void escapeTakesTheWorkBack_data()
    {
        QTest::addColumn<bool>("byButton");
        QTest::newRow("escape") << false;
        QTest::newRow("button") << true;
    }
    void escapeTakesTheWorkBack()
    {
        QFETCH(bool, byButton);
        const QImage picture = PlainPicture(Qt::blue, LargeSize);
        Host host(settings(), picture);
        host.pull();
        BusyThreads threads;
        host.tool->Commit();
        QVERIFY(host.tool->IsRendering());

        if (byButton)
            QTest::mouseClick(host.button("m_pCancel"), Qt::LeftButton);
        else
            QTest::keyClick(host.view, Qt::Key_Escape);

        QVERIFY(host.isClean());
        threads.Open();
        QCoreApplication::processEvents();
        QCOMPARE(host.layer(), picture);
        QCOMPARE(host.steps()->count(), 0);
    }

    void anotherToolWaitsForTheWork()
    {
        Host host(settings(), PlainPicture(Qt::blue, LargeSize));
        host.pull();

        host.tool->Deactivate();

        QVERIFY(host.isClean());
        QVERIFY(IsRamp(host.layer()));
        QCOMPARE(host.steps()->count(), 1);
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    void theDocumentMayGoWhileTheWorkRuns()
    {
        Host host(settings(), PlainPicture(Qt::blue, LargeSize));
        host.pull();
        BusyThreads threads;
        host.tool->Commit();

        host.closeDocument();
        threads.Open();
        QCoreApplication::processEvents();

        QVERIFY(!host.tool->IsRendering());
    }

    void theToolMayGo_data()
    {
        QTest::addColumn<bool>("rendering");
        QTest::newRow("pending") << false;
        QTest::newRow("rendering") << true;
    }
    void theToolMayGo()
    {
        QFETCH(bool, rendering);
        const QImage picture = PlainPicture(Qt::blue, LargeSize);
        Host host(settings(), picture);
        host.pull();
        BusyThreads threads;
        if (rendering)
            host.tool->Commit();

        host.tool.reset();
        threads.Open();
        QCoreApplication::processEvents();
        host.view->viewport()->grab();

        QVERIFY(!host.pixels()->IsBeingEdited());
        QCOMPARE(host.layer(), picture);
    }

    void valuesAndGradientsSurvive()
    {
        {
            Host host(settings());
            NVGradientToolbar* bar = host.bar();
            QVERIFY(QMetaObject::invokeMethod(bar, "SaveGradients"));
            bar->SetCurrentGradientIndex(1);
            bar->SetType(2);
            bar->SetStyle(true);
            bar->SetRepeatCount(7);
            bar->SetBlendMode(12);
            bar->SetOutside(false);
            bar->SetOpacity(44);
            bar->SetReverse(true);
        }

        GradientTool again(settings(), nullptr);

        const NVGradientToolbar* bar = again.GetGradientBar();
        QCOMPARE(bar->GetGradientCount(), 2);
        QCOMPARE(bar->GetGradient(0), BlackToWhite()[0]);
        QCOMPARE(bar->GetCurrentGradientIndex(), 1);
        QCOMPARE(bar->GetType(), 2);
        QCOMPARE(bar->GetRepeatCount(), 7);
        QCOMPARE(bar->GetBlendMode(), 12);
        QCOMPARE(bar->GetOpacity(), 44);
        QVERIFY(bar->GetStyle() && !bar->IsOutside() && bar->IsReverse());
    }

    void nonsenseInTheSettingsDoesNoHarm()
    {
        for (const char* key : {"type", "blendMode", "current", "repeatCount", "opacity"})
            settings()->setValue(QString("gradient/%1").arg(key), -4711);
        QFile file(m_scratch->folder.filePath("gradients.svg"));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("nonsense") > 0);
        file.close();

        GradientTool tool(settings(), nullptr);
        SignalLog log(&tool);

        QCOMPARE(tool.GetGradientBar()->GetType(), 0);
        QCOMPARE(tool.GetGradientBar()->GetBlendMode(), 0);
        QCOMPARE(tool.GetGradientBar()->GetRepeatCount(), 1);
        QCOMPARE(tool.GetGradientBar()->GetOpacity(), 0);
        QCOMPARE(tool.GetGradientBar()->GetGradientCount(), 24);
        QTRY_COMPARE(log.Count("Message"), 1);
        QVERIFY(log.Entries().first().contains("gradients-damaged-1.svg"));
    }

    void addedGradientsComeAtTheEndAndAreCurrent()
    {
        Host host(settings());
        QString error;

        QVERIFY(host.tool->AddGradients(
            {{"One", {{0.0, Qt::red}, {1.0, Qt::green}}}, {"Two", {{0.0, Qt::green}, {1.0, Qt::blue}}}},
            &error));

        const int count = host.bar()->GetGradientCount();
        QCOMPARE(host.bar()->GetCurrentGradientIndex(), count - 2);
        QCOMPARE(ToGradientStops(host.bar()->GetCurrentGradient()),
                 (QGradientStops{{0.0, Qt::red}, {1.0, Qt::green}}));
        QVERIFY(QFile::exists(m_scratch->folder.filePath("gradients.svg")));
    }

    void theThemeReachesThePictures()
    {
        Host host(settings());
        host.bar()->SetType(3);
        const auto picture = [&host](const char* name)
        { return host.bar()->findChild<QLabel*>(name)->pixmap(Qt::ReturnByValue).toImage(); };
        const QImage light = picture("m_pPicture");
        const QImage type = picture("m_pTypeIcon");

        NVApplication::GetInstance()->SetTheme(1);
        host.tool->UpdateTheme();

        const QImage dark = picture("m_pPicture");
        const QImage darkType = picture("m_pTypeIcon");
        NVApplication::GetInstance()->SetTheme(0);
        host.tool->UpdateTheme();
        QVERIFY(!dark.isNull() && dark != light);
        QVERIFY(darkType != type);
        QCOMPARE(picture("m_pTypeIcon"), type);
    }

private:
    QSettings* settings() const { return &m_scratch->settings; }

    std::unique_ptr<ScratchSettings> m_scratch;
};

NV_TEST_MAIN(tst_GradientTool)
#include "tst_GradientTool.moc"
