// The fill can: each option of its bar, its step, its keys, and the work on another thread for large
// pictures.

#include "FillTool.h"

#include <QLabel>
#include <QPushButton>

#include "BusyThreads.h"
#include "NVApplication.h"
#include "NVFillCanToolbar.h"
#include "PatternSelectWidget.h"
#include "SignalLog.h"
#include "TestMain.h"
#include "ToolHost.h"

namespace
{

const QSize LargeSize(2000, 1200);

// White with a gray field at 50..149, 50..99 and a second one, of the same gray, at 200..249, 50..99.
QImage Fields(int gray = 100)
{
    QImage image = PlainPicture();
    for (int y = 50; y < 100; ++y)
    {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        std::fill_n(line + 50, 100, qRgb(gray, gray, gray));
        std::fill_n(line + 200, 50, qRgb(gray, gray, gray));
    }
    return image;
}

struct Host : ToolHost<FillTool>
{
    explicit Host(QSettings* settings, const QImage& picture = Fields()) : ToolHost(settings, picture)
    {
        bar()->SetAntialiasing(false);
    }

    NVFillCanToolbar* bar() const { return tool->GetFillBar(); }
};

} // namespace

class tst_FillTool : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_scratch = std::make_unique<ScratchSettings>();
        NVApplication::GetInstance()->SetForeground(Qt::red);
    }

    void cleanup() { NVApplication::GetInstance()->SetForeground(Qt::black); }

    void theFirstStartHasUsableValues()
    {
        FillTool tool(settings(), nullptr);
        const NVFillCanToolbar* bar = tool.GetFillBar();

        QCOMPARE(bar->GetTolerance(), 32);
        QCOMPARE(bar->GetOpacity(), 100);
        QCOMPARE(bar->GetFillMode(), 0);
        QCOMPARE(bar->GetBlendMode(), 0);
        QVERIFY(bar->IsContiguous());
        QVERIFY(bar->IsAntialiasing());
        QVERIFY(!bar->IsAllLayers());
        QVERIFY(!bar->IsIgnoreTransparency());
    }

    void aClickFillsTheFieldInOneStep()
    {
        Host host(settings());
        SignalLog log(host.tool.get());

        host.click(100, 75);

        QCOMPARE(DifferenceOf(Fields(), host.layer()), QRect(50, 50, 100, 50));
        QCOMPARE(host.pixel(100, 75), QColor(Qt::red));
        QCOMPARE(host.steps()->count(), 1);
        QCOMPARE(host.steps()->undoText(), QString("Fill"));
        QCOMPARE(log.Count("FillEnded"), 1);
        QVERIFY(!host.pixels()->IsBeingEdited());
    }

    void undoAndRedoAreExact()
    {
        Host host(settings());
        host.click(100, 75);
        const QImage after = host.layer();

        host.steps()->undo();
        QCOMPARE(host.layer(), Fields());
        host.steps()->redo();
        QCOMPARE(host.layer(), after);
    }

    void withoutContiguousAllThatIsAlikeIsFilled()
    {
        Host host(settings());
        host.bar()->SetContiguous(false);

        host.click(100, 75);

        QCOMPARE(host.pixel(225, 75), QColor(Qt::red));
        QCOMPARE(host.pixel(175, 75), QColor(Qt::white));
    }

    void theToleranceCounts()
    {
        Host host(settings(), Fields(240));
        host.bar()->SetTolerance(10);
        host.click(20, 20);
        QCOMPARE(host.pixel(100, 75), QColor(240, 240, 240));
        host.steps()->undo();

        host.bar()->SetTolerance(20);
        host.click(20, 20);

        QCOMPARE(host.pixel(100, 75), QColor(Qt::red));
    }

    void theOpacityOfTheKeyMixes()
    {
        Host host(settings());

        QTest::keyClick(host.view, Qt::Key_5);
        host.click(20, 20);

        QCOMPARE(host.bar()->GetOpacity(), 50);
        QVERIFY(qAbs(host.pixel(20, 20).green() - 128) <= 1);
        QCOMPARE(host.pixel(20, 20).red(), 255);
    }

    void theBlendModeOfTheKeyIsPainted()
    {
        Host host(settings());
        NVApplication::GetInstance()->SetForeground(QColor(128, 128, 128));

        QTest::keyClick(host.view, Qt::Key_M, Qt::AltModifier | Qt::ShiftModifier);
        host.click(100, 75);

        QCOMPARE(host.bar()->GetBlendMode(), 1);
        QVERIFY(qAbs(host.pixel(100, 75).red() - 50) <= 1);
    }

    void thePatternOfThePopupFills()
    {
        Host host(settings());
        host.bar()->SetFillMode(1);
        host.bar()->GetPatterns()->SetCurrentIndex(3);
        QImage pattern;
        QVERIFY(host.bar()->GetPatterns()->GetItemImage(3, pattern));

        host.click(100, 75);

        for (const QPoint& place : {QPoint(50, 50), QPoint(101, 77), QPoint(149, 99)})
            QCOMPARE(host.pixel(place.x(), place.y()),
                     pattern.pixelColor(place.x() % pattern.width(), place.y() % pattern.height()));
    }

    void antialiasingSoftensTheEdge()
    {
        QImage disc = PlainPicture();
        for (int y = 0; y < 200; ++y)
        {
            for (int x = 0; x < 300; ++x)
            {
                if ((x - 150) * (x - 150) + (y - 100) * (y - 100) < 3600)
                    disc.setPixelColor(x, y, Qt::black);
            }
        }
        const auto shades = [this, &disc](bool antialiasing)
        {
            Host host(settings(), disc);
            host.bar()->SetAntialiasing(antialiasing);
            host.click(150, 100);
            QSet<QRgb> colors;
            for (int x = 0; x < 300; ++x)
            {
                for (int y = 0; y < 200; ++y)
                    colors += host.layer().pixel(x, y);
            }
            return colors.size();
        };

        QCOMPARE(shades(false), 2);
        QVERIFY(shades(true) > 2);
    }

    void ignoringTransparencyPassesClearPixels()
    {
        QImage image = PlainPicture();
        for (int y = 0; y < 200; ++y)
            std::fill_n(reinterpret_cast<QRgb*>(image.scanLine(y)) + 150, 20, QRgb(0));
        Host host(settings(), image);
        host.click(50, 100);
        QCOMPARE(host.pixel(250, 100), QColor(Qt::white));
        host.steps()->undo();

        host.bar()->SetIgnoreTransparency(true);
        host.click(50, 100);

        QCOMPARE(host.pixel(250, 100), QColor(Qt::red));
    }

    void allLayersOrThisOneAreCompared_data()
    {
        QTest::addColumn<bool>("all");
        QTest::newRow("all layers") << true;
        QTest::newRow("this layer") << false;
    }
    void allLayersOrThisOneAreCompared()
    {
        QFETCH(bool, all);
        Host host(settings());
        host.addLayer(PlainPicture(Qt::transparent));
        host.bar()->SetAllLayers(all);

        host.click(100, 75);

        QCOMPARE(host.layer(1).pixelColor(100, 75), QColor(Qt::red));
        QCOMPARE(host.layer(1).pixelColor(20, 20), all ? QColor(Qt::transparent) : QColor(Qt::red));
        QCOMPARE(host.layer(0), Fields());
    }

    void onlyTheSelectionIsFilled()
    {
        Host host(settings());
        host.select(QRect(60, 60, 30, 20));

        host.click(70, 70);

        QCOMPARE(DifferenceOf(Fields(), host.layer()), QRect(60, 60, 30, 20));
    }

    void aHiddenLayerIsRefused()
    {
        Host host(settings());
        host.pixels()->SetLayerVisible(0, false);
        SignalLog log(host.tool.get());

        host.click(100, 75);

        QCOMPARE(log.Count("Message"), 1);
        QVERIFY(log.Entries().first().contains("hidden"));
        QCOMPARE(host.layer(), Fields());
    }

    void aPlaceOutsideAndTheRightButtonFillNothing()
    {
        Host host(settings());

        host.click(-100, -60);
        host.mouse(QEvent::MouseButtonPress, 100, 75, Qt::RightButton, Qt::RightButton);
        host.mouse(QEvent::MouseButtonRelease, 100, 75, Qt::RightButton, Qt::NoButton);

        QCOMPARE(host.layer(), Fields());
        QCOMPARE(host.steps()->count(), 0);
    }

    void valuesSurvive()
    {
        {
            Host host(settings());
            NVFillCanToolbar* bar = host.bar();
            bar->SetTolerance(77);
            bar->SetOpacity(44);
            bar->SetFillMode(1);
            bar->SetBlendMode(12);
            bar->SetContiguous(false);
            bar->SetAntialiasing(false);
            bar->SetAllLayers(true);
            bar->SetIgnoreTransparency(true);
            bar->GetPatterns()->SetCurrentIndex(4);
        }

        FillTool again(settings(), nullptr);

        const NVFillCanToolbar* bar = again.GetFillBar();
        QCOMPARE(bar->GetTolerance(), 77);
        QCOMPARE(bar->GetOpacity(), 44);
        QCOMPARE(bar->GetFillMode(), 1);
        QCOMPARE(bar->GetBlendMode(), 12);
        QVERIFY(!bar->IsContiguous());
        QVERIFY(!bar->IsAntialiasing());
        QVERIFY(bar->IsAllLayers());
        QVERIFY(bar->IsIgnoreTransparency());
        QCOMPARE(bar->GetPatterns()->CurrentIndex(), 4);
        QVERIFY(!bar->findChild<QPushButton*>("m_pSelectPattern")->icon().isNull());
    }

    void nonsenseInTheSettingsDoesNoHarm()
    {
        settings()->setValue("fill/fillMode", 9);
        settings()->setValue("fill/blendMode", -3);
        settings()->setValue("fill/pattern", 4711);
        settings()->setValue("fill/tolerance", 9999);

        FillTool tool(settings(), nullptr);

        QCOMPARE(tool.GetFillBar()->GetFillMode(), 0);
        QCOMPARE(tool.GetFillBar()->GetBlendMode(), 0);
        QCOMPARE(tool.GetFillBar()->GetPatterns()->CurrentIndex(), 0);
        QCOMPARE(tool.GetFillBar()->GetTolerance(), 255);
    }

    void keysAreLiveOnlyWhileTheToolIsCurrent()
    {
        Host host(settings());

        host.tool->Deactivate();
        QTest::keyClick(host.view, Qt::Key_5);
        QCOMPARE(host.bar()->GetOpacity(), 100);

        host.tool->Activate();
        QTest::keyClick(host.view, Qt::Key_5);
        QCOMPARE(host.bar()->GetOpacity(), 50);
    }

    void theThemeReachesThePicture()
    {
        Host host(settings());
        const auto* label = host.bar()->findChild<QLabel*>("m_pPicture");
        const QImage picture = label->pixmap(Qt::ReturnByValue).toImage();

        NVApplication::GetInstance()->SetTheme(1);
        host.tool->UpdateTheme();

        const QImage dark = label->pixmap(Qt::ReturnByValue).toImage();
        NVApplication::GetInstance()->SetTheme(0);
        QVERIFY(!dark.isNull());
        QVERIFY(dark != picture);
    }

    void aLargePictureIsFilledOnAnotherThread()
    {
        BusyThreads threads;
        Host host(settings(), PlainPicture(Qt::white, LargeSize));
        SignalLog log(host.tool.get());

        host.click(100, 75);

        QVERIFY(host.tool->IsFilling());
        QVERIFY(host.pixels()->IsBeingEdited());
        QCOMPARE(host.view->viewport()->cursor().shape(), Qt::BusyCursor);
        QCOMPARE(host.pixel(100, 75), QColor(Qt::white));
        threads.Open();
        QTRY_VERIFY(!host.tool->IsFilling());
        QCOMPARE(host.pixel(1999, 1199), QColor(Qt::red));
        QCOMPARE(host.steps()->count(), 1);
        QCOMPARE(log.Count("FillEnded"), 1);
        QVERIFY(!host.pixels()->IsBeingEdited());
        host.steps()->undo();
        QCOMPARE(host.layer(), PlainPicture(Qt::white, LargeSize));
    }

    void escapeTakesTheFillBack()
    {
        BusyThreads threads;
        Host host(settings(), PlainPicture(Qt::white, LargeSize));
        host.click(100, 75);

        QTest::keyClick(host.view, Qt::Key_Escape);

        QVERIFY(!host.tool->IsFilling());
        QVERIFY(!host.pixels()->IsBeingEdited());
        threads.Open();
        QCoreApplication::processEvents();
        QCOMPARE(host.layer(), PlainPicture(Qt::white, LargeSize));
        QCOMPARE(host.steps()->count(), 0);
    }

    void aClickWhileTheWorkRunsWaits()
    {
        BusyThreads threads;
        Host host(settings(), PlainPicture(Qt::white, LargeSize));
        host.click(100, 75);
        SignalLog log(host.tool.get());

        host.click(50, 50);

        QCOMPARE(log.Count("Message"), 1);
        threads.Open();
        QTRY_VERIFY(!host.tool->IsFilling());
        QCOMPARE(host.steps()->count(), 1);
    }

    void anotherToolWaitsForTheWork()
    {
        Host host(settings(), PlainPicture(Qt::white, LargeSize));
        host.click(100, 75);

        host.tool->Deactivate();

        QVERIFY(!host.tool->IsFilling());
        QCOMPARE(host.pixel(1999, 1199), QColor(Qt::red));
        QCOMPARE(host.steps()->count(), 1);
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    void theDocumentMayGoWhileTheWorkRuns()
    {
        BusyThreads threads;
        Host host(settings(), PlainPicture(Qt::white, LargeSize));
        host.click(100, 75);

        host.closeDocument();
        threads.Open();

        QTRY_VERIFY(!host.tool->IsFilling());
    }

    void theToolMayGoWhileTheWorkRuns()
    {
        BusyThreads threads;
        Host host(settings(), PlainPicture(Qt::white, LargeSize));
        host.click(100, 75);

        host.tool.reset();

        QVERIFY(!host.pixels()->IsBeingEdited());
        threads.Open();
        QCoreApplication::processEvents();
        QCOMPARE(host.layer(), PlainPicture(Qt::white, LargeSize));
    }

private:
    QSettings* settings() const { return &m_scratch->settings; }

    std::unique_ptr<ScratchSettings> m_scratch;
};

NV_TEST_MAIN(tst_FillTool)
#include "tst_FillTool.moc"
