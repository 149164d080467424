// The loupe in the editor: it looks at what is under the pointer, and keeps its scale and its grid.

#include "LoupeDock.h"

#include "CameraView.h"
#include "NVZoomPanel.h"
#include "TestMain.h"
#include "ToolHost.h"
#include "ZoomTool.h"

class tst_LoupeDock : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scratch = std::make_unique<ScratchSettings>(); }

    void isClosedAtFirst()
    {
        LoupeDock dock(settings());

        QVERIFY(dock.isHidden());
        QCOMPARE(dock.windowTitle(), QString("Loupe"));
        QCOMPARE(dock.objectName(), QString("LoupeDock"));
        QCOMPARE(panel(dock)->GetZoomValue(), 8);
        QCOMPARE(panel(dock)->GetGridType(), 0);
    }

    void followsThePointer()
    {
        ToolHost<ZoomTool> host(std::make_unique<ZoomTool>(nullptr), BusyPicture());
        LoupeDock dock(settings());
        dock.SetCanvas(host.view, host.document.get());

        host.move(120, 45, Qt::NoButton);
        QCOMPARE(camera(dock)->GetLookPoint(), QPoint(120, 45));
        host.move(-3, 45, Qt::NoButton);
        QCOMPARE(camera(dock)->GetLookPoint(), QPoint(-3, 45));
        dock.SetCanvas(nullptr, nullptr);
        host.move(9, 9, Qt::NoButton);

        QCOMPARE(camera(dock)->GetLookPoint(), QPoint(-3, 45));
    }

    void showsTheDocument()
    {
        ToolHost<ZoomTool> host(std::make_unique<ZoomTool>(nullptr), PlainPicture(QColor(0, 200, 0)));
        LoupeDock dock(settings());
        dock.SetCanvas(host.view, host.document.get());
        dock.resize(320, 300);
        host.move(120, 45, Qt::NoButton);

        const QImage shown = dock.grab().toImage();

        QCOMPARE(shown.pixelColor(camera(dock)->mapTo(&dock, camera(dock)->rect().center())),
                 QColor(0, 200, 0));
        dock.SetCanvas(nullptr, nullptr);
    }

    void valuesAreKept()
    {
        {
            LoupeDock dock(settings());
            panel(dock)->SetZoomValue(13);
            panel(dock)->SetGridType(2);
            dock.StoreValues();
        }

        LoupeDock dock(settings());

        QCOMPARE(panel(dock)->GetZoomValue(), 13);
        QCOMPARE(panel(dock)->GetGridType(), 2);
    }

    void badValuesAreLeftOut()
    {
        settings()->setValue("loupe/scale", 4711);
        settings()->setValue("loupe/grid", 9);

        LoupeDock dock(settings());

        QCOMPARE(panel(dock)->GetZoomValue(), 32);
        QCOMPARE(panel(dock)->GetGridType(), 0);
    }

private:
    QSettings* settings() { return &m_scratch->settings; }
    static NVZoomPanel* panel(const LoupeDock& dock) { return dock.findChild<NVZoomPanel*>(); }
    static CameraView* camera(const LoupeDock& dock) { return dock.findChild<CameraView*>(); }

    std::unique_ptr<ScratchSettings> m_scratch;
};

NV_TEST_MAIN(tst_LoupeDock)
#include "tst_LoupeDock.moc"
