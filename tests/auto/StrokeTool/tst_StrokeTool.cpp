// What all tools with strokes have in common, on each of them: one named undo step, taken back exactly,
// within the selection, with values and keys of their own, and safe when document or tool go in between.

#include "StrokeTool.h"

#include <QLabel>
#include <QSpinBox>

#include "BlurTool.h"
#include "BrushTool.h"
#include "DodgeTool.h"
#include "EraserTool.h"
#include "IBrush.h"
#include "KXBrushSettings.h"
#include "NVApplication.h"
#include "NVBrushToolbarWidget.h"
#include "ProbeImage.h"
#include "SignalLog.h"
#include "SpotHealingTool.h"
#include "StampTool.h"
#include "TestMain.h"
#include "ToolHost.h"

namespace
{

std::unique_ptr<StrokeTool> MakeTool(const QString& group, QSettings* settings)
{
    if (group == "brush")
        return std::make_unique<BrushTool>(settings, nullptr);
    if (group == "eraser")
        return std::make_unique<EraserTool>(settings, nullptr);
    if (group == "stamp")
        return std::make_unique<StampTool>(settings, nullptr);
    if (group == "blur")
        return std::make_unique<BlurTool>(settings, nullptr);
    if (group == "healing")
        return std::make_unique<SpotHealingTool>(settings, nullptr);
    return std::make_unique<DodgeTool>(settings, nullptr);
}

// The tool in front of a picture on which each of them has something to change.
struct Host : ToolHost<StrokeTool>
{
    Host(const QString& group, QSettings* settings) : ToolHost(MakeTool(group, settings), BusyPicture())
    {
        brushes()->SetSize(20);
        if (group == "stamp")
            click(40, 40, Qt::AltModifier);
    }

    KXBrushSettings* brushes() const { return tool->GetStrokeBar()->GetBrushes(); }
};

} // namespace

class tst_StrokeTool : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_scratch = std::make_unique<ScratchSettings>();
        NVApplication::GetInstance()->SetForeground(Qt::black);
        NVApplication::GetInstance()->SetBackground(Qt::white);
    }

    void theFirstStartHasUsableValues_data() { tools(); }
    void theFirstStartHasUsableValues()
    {
        QFETCH(QString, group);
        const auto tool = MakeTool(group, settings());

        const KXBrushSettings* brushes = tool->GetStrokeBar()->GetBrushes();

        QVERIFY(brushes->GetSize() >= 20 && brushes->GetSize() <= 60);
        QCOMPARE(brushes->GetSpacing(), 10);
        QCOMPARE(brushes->GetOpacity(), 100);
    }

    void aStrokeIsOneNamedStepAndComesBackExactly_data() { tools(); }
    void aStrokeIsOneNamedStepAndComesBackExactly()
    {
        QFETCH(QString, group);
        QFETCH(QString, step);
        Host host(group, settings());
        const QImage before = host.layer();
        SignalLog log(host.tool.get());

        host.stroke();

        const QImage after = host.layer();
        const QRect area = DifferenceOf(before, after);
        QVERIFY(QRect(40, 90, 221, 21).contains(area));
        QVERIFY(area.width() > 150 && area.height() > 5);
        QCOMPARE(host.steps()->count(), 1);
        QCOMPARE(host.steps()->undoText(), step);
        QVERIFY(!host.pixels()->IsBeingEdited());
        QCOMPARE(log.Count("StrokeEnded"), 1);
        host.steps()->undo();
        QCOMPARE(host.layer(), before);
        host.steps()->redo();
        QCOMPARE(host.layer(), after);
    }

    void escapeTakesBackTheRunningStroke_data() { tools(); }
    void escapeTakesBackTheRunningStroke()
    {
        QFETCH(QString, group);
        Host host(group, settings());
        const QImage before = host.layer();
        host.press(50, 100);
        host.move(200, 100);
        QTRY_VERIFY(host.layer() != before);

        QTest::keyClick(host.view, Qt::Key_Escape);

        QVERIFY(!host.tool->IsStrokeRunning());
        QCOMPARE(host.layer(), before);
        host.release(200, 100);
        QCoreApplication::processEvents();
        QCOMPARE(host.layer(), before);
        QCOMPARE(host.steps()->count(), 0);
        QVERIFY(!host.pixels()->IsBeingEdited());
    }

    void onlyTheSelectionChanges_data() { tools(); }
    void onlyTheSelectionChanges()
    {
        QFETCH(QString, group);
        Host host(group, settings());
        const QRect selected(100, 95, 60, 8);
        host.select(selected);
        const QImage before = host.layer();

        host.stroke();

        const QRect area = DifferenceOf(before, host.layer());
        QVERIFY(area.width() > 40 && area.height() > 2);
        QVERIFY(selected.contains(area));
    }

    void onlyTheCurrentLayerChanges_data() { tools(); }
    void onlyTheCurrentLayerChanges()
    {
        QFETCH(QString, group);
        Host host(group, settings());
        host.addLayer(BusyPicture());
        const QImage below = host.layer(0);
        const QImage above = host.layer(1);

        host.stroke();

        QCOMPARE(host.layer(0), below);
        QVERIFY(host.layer(1) != above);
    }

    void aHiddenLayerIsRefused_data() { tools(); }
    void aHiddenLayerIsRefused()
    {
        QFETCH(QString, group);
        Host host(group, settings());
        host.pixels()->SetLayerVisible(0, false);
        const QImage before = host.layer();
        SignalLog log(host.tool.get());

        host.press(50, 100);

        QVERIFY(!host.tool->IsStrokeRunning());
        QCOMPARE(log.Count("Message"), 1);
        QVERIFY(log.Entries().first().contains("hidden"));
        host.release(50, 100);
        QCOMPARE(host.layer(), before);
        QCOMPARE(host.steps()->count(), 0);
    }

    void aStrokeBesideThePictureIsNoStep_data() { tools(); }
    void aStrokeBesideThePictureIsNoStep()
    {
        QFETCH(QString, group);
        Host host(group, settings());

        host.click(-100, -60);
        QTRY_VERIFY(!host.tool->IsStrokeRunning());

        QCOMPARE(host.steps()->count(), 0);
        QVERIFY(!host.pixels()->IsBeingEdited());
    }

    void noOpacityChangesNothing_data() { tools(); }
    void noOpacityChangesNothing()
    {
        QFETCH(QString, group);
        Host host(group, settings());
        host.brushes()->SetOpacity(0);
        const QImage before = host.layer();

        host.stroke();

        QCOMPARE(host.layer(), before);
        QCOMPARE(host.steps()->count(), 0);
    }

    void valuesSurviveInAGroupOfTheirOwn_data() { tools(); }
    void valuesSurviveInAGroupOfTheirOwn()
    {
        QFETCH(QString, group);
        BrushTip tip;
        tip.shape = BrushTip::Diamond;
        tip.hardness = 0.5;
        tip.roundness = 0.75;
        tip.angle = 30;
        {
            Host host(group, settings());
            host.brushes()->SetCurrentPreset(3);
            host.brushes()->SetTip(tip);
            host.brushes()->SetSize(77);
            host.brushes()->SetSpacing(33);
            host.brushes()->SetOpacity(44);
            host.brushes()->SetDynamic(KXBrushSettings::DynamicSize, true);
        }

        const auto again = MakeTool(group, settings());

        const KXBrushSettings* brushes = again->GetStrokeBar()->GetBrushes();
        QCOMPARE(brushes->GetSize(), 77);
        QCOMPARE(brushes->GetSpacing(), 33);
        QCOMPARE(brushes->GetOpacity(), 44);
        QCOMPARE(brushes->GetCurrentPreset(), 3);
        QCOMPARE(brushes->GetCurrentBrush()->GetTip(), tip);
        QVERIFY(brushes->IsDynamic(KXBrushSettings::DynamicSize));
        QVERIFY(!brushes->IsDynamic(KXBrushSettings::DynamicHardness));
        QCOMPARE(settings()->childGroups(), QStringList(group));
    }

    void theBarFollowsTheBrushSettings_data() { tools(); }
    void theBarFollowsTheBrushSettings()
    {
        QFETCH(QString, group);
        settings()->setValue(group + "/size", 123);
        const auto tool = MakeTool(group, settings());

        QStringList texts;
        for (const QSpinBox* box : tool->GetBar()->findChildren<QSpinBox*>())
            texts += box->text();

        QVERIFY2(texts.contains("123 px"), qPrintable(texts.join(", ")));
    }

    void keysAreLiveOnlyWhileTheToolIsCurrent_data() { tools(); }
    void keysAreLiveOnlyWhileTheToolIsCurrent()
    {
        QFETCH(QString, group);
        QFETCH(bool, opacity);
        Host host(group, settings());
        QTest::keyClick(host.view, Qt::Key_BracketRight);
        QTest::keyClick(host.view, Qt::Key_5);
        QCOMPARE(host.brushes()->GetSize(), 25);
        QCOMPARE(host.brushes()->GetOpacity(), opacity ? 50 : 100);

        host.tool->Deactivate();
        QTest::keyClick(host.view, Qt::Key_BracketLeft);
        QTest::keyClick(host.view, Qt::Key_7);
        QCOMPARE(host.brushes()->GetSize(), 25);
        QCOMPARE(host.brushes()->GetOpacity(), opacity ? 50 : 100);

        host.tool->Activate();
        QTest::keyClick(host.view, Qt::Key_BracketLeft);
        QCOMPARE(host.brushes()->GetSize(), 20);
    }

    void anotherToolEndsTheStroke_data() { tools(); }
    void anotherToolEndsTheStroke()
    {
        QFETCH(QString, group);
        QFETCH(QString, step);
        Host host(group, settings());
        host.press(50, 100);
        host.move(200, 100);

        host.tool->Deactivate();

        QVERIFY(!host.tool->IsStrokeRunning());
        QCOMPARE(host.steps()->count(), 1);
        QCOMPARE(host.steps()->undoText(), step);
        QVERIFY(!host.pixels()->IsBeingEdited());
    }

    void theDocumentMayGoWhileAStrokeRuns_data() { tools(); }
    void theDocumentMayGoWhileAStrokeRuns()
    {
        QFETCH(QString, group);
        Host host(group, settings());
        host.press(50, 100);
        host.move(150, 100);

        host.closeDocument();
        host.tool->Finish();
        QCoreApplication::processEvents();

        QVERIFY(!host.tool->IsStrokeRunning());
    }

    void theToolMayGoWhileAStrokeRuns_data() { tools(); }
    void theToolMayGoWhileAStrokeRuns()
    {
        QFETCH(QString, group);
        Host host(group, settings());
        const QImage before = host.layer();
        host.press(50, 100);
        host.move(200, 100);
        QTRY_VERIFY(host.layer() != before);

        host.tool.reset();

        QCOMPARE(host.layer(), before);
        QVERIFY(!host.pixels()->IsBeingEdited());
        host.move(210, 100);
        host.view->viewport()->repaint();
    }

    void theOutlineIsAsLargeAsTheBrush_data() { tools(); }
    void theOutlineIsAsLargeAsTheBrush()
    {
        QFETCH(QString, group);
        Host host(group, settings());
        host.brushes()->SetSize(80);
        host.leave();
        const QImage before = ProbeImage(host.view->viewport()).Image();

        host.move(150, 100, Qt::NoButton);

        // A cross that shows where a stamp reads lies elsewhere.
        const QRect place = QRect(host.at(100, 50), host.at(200, 150));
        const QRect drawn =
            DifferenceOf(before.copy(place), ProbeImage(host.view->viewport()).Image().copy(place));
        QVERIFY2(qAbs(drawn.width() - 82) <= 4 && qAbs(drawn.height() - 82) <= 4,
                 qPrintable(QString("%1 x %2").arg(drawn.width()).arg(drawn.height())));
    }

    void theThemeReachesThePicture_data() { tools(); }
    void theThemeReachesThePicture()
    {
        QFETCH(QString, group);
        Host host(group, settings());
        const auto* label = host.tool->GetBar()->findChild<QLabel*>("m_pPictureLabelMain");
        const QImage picture = label->pixmap(Qt::ReturnByValue).toImage();

        NVApplication::GetInstance()->SetTheme(1);
        host.tool->UpdateTheme();

        const QImage dark = label->pixmap(Qt::ReturnByValue).toImage();
        NVApplication::GetInstance()->SetTheme(0);
        QVERIFY(!dark.isNull());
        QVERIFY(dark != picture);
    }

private:
    static void tools()
    {
        QTest::addColumn<QString>("group");
        QTest::addColumn<QString>("step");
        QTest::addColumn<bool>("opacity");
        QTest::newRow("brush") << "brush"
                               << "Brush Stroke" << true;
        QTest::newRow("eraser") << "eraser"
                                << "Erase" << true;
        QTest::newRow("stamp") << "stamp"
                               << "Clone Stamp" << true;
        QTest::newRow("blur") << "blur"
                              << "Blur" << true;
        QTest::newRow("spot healing") << "healing"
                                      << "Heal Spot" << false;
        QTest::newRow("dodge") << "dodge"
                               << "Dodge" << false;
    }

    QSettings* settings() const { return &m_scratch->settings; }

    std::unique_ptr<ScratchSettings> m_scratch;
};

NV_TEST_MAIN(tst_StrokeTool)
#include "tst_StrokeTool.moc"
