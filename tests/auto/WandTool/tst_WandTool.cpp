// The magic wand: each option of its bar, how a selection joins the one that is there by button and by key,
// its step, and the search on another thread for large pictures.

#include "WandTool.h"

#include <QLabel>
#include <QToolButton>

#include "BusyThreads.h"
#include "NVApplication.h"
#include "NVMagicWandToolbar.h"
#include "ShortMemory.h"
#include "SignalLog.h"
#include "TestMain.h"
#include "ToolHost.h"

namespace
{

const QSize LargeSize(2000, 1200);
const QRect First(50, 50, 100, 50);
const QRect Second(200, 50, 50, 50);

// White with two fields of the same gray.
QImage Fields(int gray = 100)
{
    QImage image = PlainPicture();
    for (const QRect& field : {First, Second})
    {
        for (int y = field.top(); y <= field.bottom(); ++y)
            std::fill_n(reinterpret_cast<QRgb*>(image.scanLine(y)) + field.left(), field.width(),
                        qRgb(gray, gray, gray));
    }
    return image;
}

QRect Bounds(const QImage& mask)
{
    QRect bounds;
    for (int y = 0; y < mask.height(); ++y)
    {
        for (int x = 0; x < mask.width(); ++x)
        {
            if (mask.constScanLine(y)[x] != 0)
                bounds |= QRect(x, y, 1, 1);
        }
    }
    return bounds;
}

struct Host : ToolHost<WandTool>
{
    explicit Host(QSettings* settings, const QImage& picture = Fields()) : ToolHost(settings, picture) { }

    NVMagicWandToolbar* bar() const { return tool->GetWandBar(); }
    QToolButton* button(const char* name) const { return bar()->findChild<QToolButton*>(name); }
    bool isSelected(int x, int y) const
    {
        const QImage mask = pixels()->GetSelectionMask();
        return !mask.isNull() && mask.constScanLine(y)[x] == 255;
    }
    QRect selected() const { return Bounds(pixels()->GetSelectionMask()); }
};

} // namespace

class tst_WandTool : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scratch = std::make_unique<ScratchSettings>(); }

    void cleanup() { NVApplication::GetInstance()->SetTheme(0); }

    void theFirstStartHasUsableValues()
    {
        WandTool tool(settings(), nullptr);
        const NVMagicWandToolbar* bar = tool.GetWandBar();

        QCOMPARE(bar->GetTolerance(), 32);
        QVERIFY(bar->IsContiguous());
        QVERIFY(bar->IsSampleAllLayers());
        QCOMPARE(bar->GetState(), 1);
    }

    void aClickSelectsTheFieldInOneStep()
    {
        Host host(settings());
        SignalLog log(host.tool.get());

        host.click(100, 75);

        QCOMPARE(host.selected(), First);
        QVERIFY(host.isSelected(50, 50) && host.isSelected(149, 99));
        QCOMPARE(host.steps()->count(), 1);
        QCOMPARE(host.steps()->undoText(), QString("Magic Wand"));
        QCOMPARE(log.Entries(), QStringList({"SelectionEnded()"}));
        QCOMPARE(host.layer(), Fields());
    }

    void undoAndRedoAreExact()
    {
        Host host(settings());
        host.select(QRect(10, 10, 5, 5));
        const QImage before = host.pixels()->GetSelectionMask();
        host.click(100, 75);
        const QImage after = host.pixels()->GetSelectionMask();

        host.steps()->undo();
        QCOMPARE(host.pixels()->GetSelectionMask(), before);
        host.steps()->redo();
        QCOMPARE(host.pixels()->GetSelectionMask(), after);
    }

    void theSameSelectionAgainIsNoStep()
    {
        Host host(settings());
        SignalLog log(host.tool.get());

        host.click(100, 75);
        host.click(60, 60);

        QCOMPARE(host.steps()->count(), 1);
        QCOMPARE(log.Count("SelectionEnded"), 2);
    }

    void withoutContiguousAllThatIsAlikeIsSelected()
    {
        Host host(settings());
        host.bar()->SetContiguous(false);

        host.click(100, 75);

        QVERIFY(host.isSelected(100, 75));
        QVERIFY(host.isSelected(225, 75));
        QVERIFY(!host.isSelected(175, 75));
    }

    void theToleranceCounts()
    {
        Host host(settings(), Fields(240));
        host.bar()->SetTolerance(14);
        host.click(20, 20);
        QVERIFY(!host.isSelected(100, 75));

        host.bar()->SetTolerance(15);
        host.click(20, 20);

        QVERIFY(host.isSelected(100, 75));
    }

    void allLayersOrThisOneAreLookedAt_data()
    {
        QTest::addColumn<bool>("all");
        QTest::newRow("all layers") << true;
        QTest::newRow("this layer") << false;
    }
    void allLayersOrThisOneAreLookedAt()
    {
        QFETCH(bool, all);
        Host host(settings());
        host.addLayer(PlainPicture(Qt::transparent));
        host.bar()->SetSampleAllLayers(all);

        host.click(100, 75);

        QCOMPARE(host.selected(), all ? First : QRect(0, 0, 300, 200));
    }

    void aHiddenLayerIsSeenInTheLayerAlone()
    {
        Host host(settings());
        host.pixels()->SetLayerVisible(0, false);

        host.click(100, 75);
        QCOMPARE(host.selected(), QRect(0, 0, 300, 200));

        host.bar()->SetSampleAllLayers(false);
        host.click(100, 75);
        QCOMPARE(host.selected(), First);
    }

    void theButtonSaysHowTheSelectionJoins_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QRect>("bounds");
        QTest::newRow("replace") << "m_pReplace" << First;
        QTest::newRow("unite") << "m_pUnite" << QRect(50, 50, 100, 70);
        QTest::newRow("subtract") << "m_pSubtract" << QRect(100, 100, 30, 20);
        QTest::newRow("intersect") << "m_pIntersect" << QRect(100, 80, 30, 20);
    }
    void theButtonSaysHowTheSelectionJoins()
    {
        QFETCH(const QString, name);
        Host host(settings());
        host.select(QRect(100, 80, 30, 40));

        QTest::mouseClick(host.button(name.toLatin1()), Qt::LeftButton);
        host.click(60, 60);

        QTEST(host.selected(), "bounds");
    }

    void theHeldKeySaysHowTheSelectionJoins_data()
    {
        QTest::addColumn<Qt::KeyboardModifiers>("held");
        QTest::addColumn<QRect>("bounds");
        QTest::newRow("none") << Qt::KeyboardModifiers() << First;
        QTest::newRow("Shift") << Qt::KeyboardModifiers(Qt::ShiftModifier) << QRect(50, 50, 100, 70);
        QTest::newRow("Alt") << Qt::KeyboardModifiers(Qt::AltModifier) << QRect(100, 100, 30, 20);
        QTest::newRow("both") << (Qt::ShiftModifier | Qt::AltModifier) << QRect(100, 80, 30, 20);
    }
    void theHeldKeySaysHowTheSelectionJoins()
    {
        QFETCH(const Qt::KeyboardModifiers, held);
        Host host(settings());
        host.select(QRect(100, 80, 30, 40));

        host.click(60, 60, held);

        QTEST(host.selected(), "bounds");
        QCOMPARE(host.bar()->GetClearState(), 1);
    }

    void theHeldKeyLightsItsButton()
    {
        Host host(settings());

        QTest::keyPress(host.view, Qt::Key_Shift);
        QVERIFY(host.button("m_pUnite")->isChecked());
        QTest::keyPress(host.view, Qt::Key_Alt);
        QVERIFY(host.button("m_pIntersect")->isChecked());
        QTest::keyRelease(host.view, Qt::Key_Shift);
        QVERIFY(host.button("m_pSubtract")->isChecked());
        QTest::keyRelease(host.view, Qt::Key_Alt);

        QVERIFY(host.button("m_pReplace")->isChecked());
        QCOMPARE(host.bar()->GetState(), 1);
    }

    void heldKeysCountOnlyWhileTheToolIsCurrent()
    {
        Host host(settings());
        QTest::keyPress(host.view, Qt::Key_Shift);
        QCOMPARE(host.bar()->GetState(), 2);

        host.tool->Deactivate();
        QCOMPARE(host.bar()->GetState(), 1);
        QTest::keyPress(host.view, Qt::Key_Alt);
        QCOMPARE(host.bar()->GetState(), 1);
    }

    void aMoveWithoutKeysEndsTheOverride()
    {
        Host host(settings());
        QTest::keyPress(host.view, Qt::Key_Shift);
        QCOMPARE(host.bar()->GetState(), 2);

        host.move(60, 60, Qt::NoButton);

        QCOMPARE(host.bar()->GetState(), 1);
    }

    void allThatIsTakenAwayLeavesNoSelection()
    {
        Host host(settings());
        host.click(100, 75);

        host.click(100, 75, Qt::AltModifier);

        QVERIFY(host.pixels()->GetSelectionMask().isNull());
        QCOMPARE(host.steps()->count(), 2);
        host.steps()->undo();
        QCOMPARE(host.selected(), First);
    }

    void aPlaceOutsideAndTheRightButtonSelectNothing()
    {
        Host host(settings());

        host.click(-100, -60);
        host.mouse(QEvent::MouseButtonPress, 100, 75, Qt::RightButton, Qt::RightButton);
        host.mouse(QEvent::MouseButtonRelease, 100, 75, Qt::RightButton, Qt::NoButton);

        QVERIFY(host.pixels()->GetSelectionMask().isNull());
        QCOMPARE(host.steps()->count(), 0);
    }

    void valuesSurvive()
    {
        {
            Host host(settings());
            host.bar()->SetTolerance(77);
            host.bar()->SetContiguous(false);
            host.bar()->SetSampleAllLayers(false);
            host.bar()->SetState(3);
        }

        WandTool again(settings(), nullptr);

        QCOMPARE(again.GetWandBar()->GetTolerance(), 77);
        QVERIFY(!again.GetWandBar()->IsContiguous());
        QVERIFY(!again.GetWandBar()->IsSampleAllLayers());
        QCOMPARE(again.GetWandBar()->GetState(), 1);
    }

    void nonsenseInTheSettingsDoesNoHarm()
    {
        settings()->setValue("wand/tolerance", 9999);

        WandTool tool(settings(), nullptr);

        QCOMPARE(tool.GetWandBar()->GetTolerance(), 255);
    }

    void theThemeReachesThePictures()
    {
        Host host(settings());
        const auto* label = host.bar()->findChild<QLabel*>("m_pPicture");
        const QImage picture = label->pixmap(Qt::ReturnByValue).toImage();
        const QImage icon = host.button("m_pUnite")->icon().pixmap(16, 16).toImage();

        NVApplication::GetInstance()->SetTheme(1);
        host.tool->UpdateTheme();

        const QImage dark = label->pixmap(Qt::ReturnByValue).toImage();
        QVERIFY(!dark.isNull());
        QVERIFY(dark != picture);
        QVERIFY(host.button("m_pUnite")->icon().pixmap(16, 16).toImage() != icon);
    }

    void aLargePictureIsSearchedOnAnotherThread()
    {
        BusyThreads threads;
        Host host(settings(), PlainPicture(Qt::white, LargeSize));
        SignalLog log(host.tool.get());

        host.click(100, 75);

        QVERIFY(host.tool->IsSelecting());
        QCOMPARE(host.view->viewport()->cursor().shape(), Qt::BusyCursor);
        QVERIFY(host.pixels()->GetSelectionMask().isNull());
        threads.Open();
        QTRY_VERIFY(!host.tool->IsSelecting());
        QCOMPARE(host.view->viewport()->cursor().shape(), Qt::CrossCursor);
        QVERIFY(host.isSelected(1999, 1199));
        QCOMPARE(host.steps()->count(), 1);
        QCOMPARE(log.Count("SelectionEnded"), 1);
    }

    // Keys and buttons that change while the search runs belong to the next click.
    void theClickSaysHowTheSelectionJoins()
    {
        BusyThreads threads;
        Host host(settings(), PlainPicture(Qt::white, LargeSize));
        host.select(QRect(5, 5, 9, 9));

        host.click(100, 75, Qt::AltModifier);
        host.bar()->SetState(2);
        threads.Open();

        QTRY_VERIFY(!host.tool->IsSelecting());
        QVERIFY(host.pixels()->GetSelectionMask().isNull());
    }

    void aSearchThatLastsSaysHowFarItIs()
    {
        BusyThreads threads;
        Host host(settings(), PlainPicture(Qt::white, LargeSize));
        SignalLog log(host.tool.get());

        host.click(100, 75);

        QTRY_VERIFY(log.Count("Message") >= 2);
        QVERIFY(log.Entries().filter("Message").first().contains("0 %"));
        threads.Open();
        QTRY_VERIFY(!host.tool->IsSelecting());
    }

    void escapeTakesTheSearchBack()
    {
        BusyThreads threads;
        Host host(settings(), PlainPicture(Qt::white, LargeSize));
        host.click(100, 75);
        SignalLog log(host.tool.get());

        QTest::keyClick(host.view, Qt::Key_Escape);

        QVERIFY(!host.tool->IsSelecting());
        QCOMPARE(log.Entries(),
                 QStringList({"CanCancelChanged(false)", "SelectionEnded()",
                              "Message(\"Selecting was cancelled.\")"}));
        threads.Open();
        QCoreApplication::processEvents();
        QVERIFY(host.pixels()->GetSelectionMask().isNull());
        QCOMPARE(host.steps()->count(), 0);
    }

    void aClickWhileTheSearchRunsWaits()
    {
        BusyThreads threads;
        Host host(settings(), PlainPicture(Qt::white, LargeSize));
        host.click(100, 75);
        SignalLog log(host.tool.get());

        host.click(50, 50);

        QCOMPARE(log.Count("Message"), 1);
        threads.Open();
        QTRY_VERIFY(!host.tool->IsSelecting());
        QCOMPARE(host.steps()->count(), 1);
    }

    void anotherToolWaitsForTheSearch()
    {
        Host host(settings(), PlainPicture(Qt::white, LargeSize));
        host.click(100, 75);

        host.tool->Deactivate();

        QVERIFY(!host.tool->IsSelecting());
        QVERIFY(host.isSelected(1999, 1199));
        QCOMPARE(host.steps()->count(), 1);
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    void theDocumentMayGoWhileTheSearchRuns()
    {
        BusyThreads threads;
        Host host(settings(), PlainPicture(Qt::white, LargeSize));
        host.click(100, 75);

        host.closeDocument();
        threads.Open();

        QTRY_VERIFY(!host.tool->IsSelecting());
    }

    void withoutMemoryTheSelectionStays_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("state");
        for (int state = 1; state <= 4; ++state)
        {
            QTest::addRow("at once, %d", state) << QSize(2000, 1000) << state;
            QTest::addRow("on another thread, %d", state) << LargeSize << state;
        }
    }
    void withoutMemoryTheSelectionStays()
    {
        NV_SKIP_WITHOUT_SHORT_MEMORY();
        QFETCH(const QSize, size);
        QFETCH(const int, state);
        Host host(settings(), PlainPicture(Qt::white, size));
        // The threads are there from here on.
        host.click(100, 75);
        QTRY_VERIFY(!host.tool->IsSelecting());
        host.select(QRect(5, 5, 9, 9));
        host.bar()->SetState(state);
        SignalLog log(host.tool.get());
        {
            const ShortMemory none;
            host.click(100, 75);
            host.tool->Finish();
        }

        QCOMPARE(host.selected(), QRect(5, 5, 9, 9));
        QCOMPARE(host.steps()->count(), 1);
        QCOMPARE(log.Entries().constLast(),
                 QString("Message(\"There is not enough memory for the selection. It stays as it is.\")"));
        // With memory it goes on.
        host.bar()->SetState(1);
        host.click(100, 75);
        QTRY_VERIFY(!host.tool->IsSelecting());
        QCOMPARE(host.selected(), QRect(QPoint(), size));
        QCOMPARE(host.steps()->count(), 2);
    }

    void theToolMayGoWhileTheSearchRuns()
    {
        BusyThreads threads;
        Host host(settings(), PlainPicture(Qt::white, LargeSize));
        host.click(100, 75);

        host.tool.reset();
        threads.Open();
        QCoreApplication::processEvents();

        QVERIFY(host.pixels()->GetSelectionMask().isNull());
    }

private:
    QSettings* settings() const { return &m_scratch->settings; }

    std::unique_ptr<ScratchSettings> m_scratch;
};

NV_TEST_MAIN(tst_WandTool)
#include "tst_WandTool.moc"
