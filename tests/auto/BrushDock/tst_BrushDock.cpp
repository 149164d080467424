// The panel that shows the brush of the current tool.

#include "BrushDock.h"

#include "BrushPreview.h"
#include "BrushTool.h"
#include "EraserTool.h"
#include "KXBrushSettings.h"
#include "NVBrushToolbar.h"
#include "NVEraserToolbar.h"
#include "ProbeImage.h"
#include "TestMain.h"
#include "ToolHost.h"

class tst_BrushDock : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scratch = std::make_unique<ScratchSettings>(); }

    void itIsClosedAtFirst()
    {
        QMainWindow window;
        BrushDock dock;
        window.addDockWidget(Qt::RightDockWidgetArea, &dock);
        window.show();

        QVERIFY(!dock.isVisible());
        QVERIFY(!dock.windowTitle().isEmpty());
        window.removeDockWidget(&dock);
    }

    void itShowsTheBrushOfTheToolAndFollowsIt()
    {
        BrushTool tool(&m_scratch->settings, nullptr);
        KXBrushSettings* brushes = tool.GetBrushBar()->GetBrushes();
        BrushDock dock;
        const ProbeImage empty = face(dock);

        dock.ShowTool(&tool);
        const ProbeImage round = face(dock);
        QVERIFY(round.Differs(empty));

        brushes->SetCurrentPreset(8);
        const ProbeImage square = face(dock);
        QVERIFY(square.Differs(round));

        BrushTip tip;
        tip.shape = BrushTip::Star;
        brushes->SetTip(tip);
        QVERIFY(face(dock).Differs(square));

        dock.ShowTool(nullptr);
        QVERIFY(!face(dock).Differs(empty));
    }

    void aToolThatIsNotShownHasNoSay()
    {
        BrushTool brush(&m_scratch->settings, nullptr);
        EraserTool eraser(&m_scratch->settings, nullptr);
        BrushDock dock;
        dock.ShowTool(&brush);
        dock.ShowTool(&eraser);
        const ProbeImage before = face(dock);

        brush.GetBrushBar()->GetBrushes()->SetCurrentPreset(8);
        QVERIFY(!face(dock).Differs(before));

        eraser.GetEraserBar()->GetBrushes()->SetCurrentPreset(8);
        QVERIFY(face(dock).Differs(before));
    }

private:
    static ProbeImage face(BrushDock& dock)
    {
        dock.resize(320, 160);
        // What lies in a window that is not shown takes its place when it is drawn first.
        dock.grab();
        return ProbeImage(dock.findChild<BrushPreview*>());
    }

    std::unique_ptr<ScratchSettings> m_scratch;
};

NV_TEST_MAIN(tst_BrushDock)
#include "tst_BrushDock.moc"
