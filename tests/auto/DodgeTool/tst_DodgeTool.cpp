// The dodge tool: exposure and range of tones, stored and used.

#include "DodgeTool.h"

#include "KXBrushSettings.h"
#include "NVDodgeToolbar.h"
#include "TestMain.h"
#include "ToolHost.h"

namespace
{

struct Host : ToolHost<DodgeTool>
{
    explicit Host(QSettings* settings, int gray = 128)
        : ToolHost(settings, PlainPicture(QColor(gray, gray, gray)))
    {
        tool->GetDodgeBar()->SetSize(40);
        tool->GetDodgeBar()->GetBrushes()->SetTip(BrushTip());
    }

    // How much brighter the stroke is than what was there.
    int gain(int gray) const { return pixel(150, 100).red() - gray; }
};

} // namespace

class tst_DodgeTool : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scratch = std::make_unique<ScratchSettings>(); }

    void theStrokeIsBrighterTheMoreItIsExposed()
    {
        int last = 0;
        for (int exposure : {0, 30, 100})
        {
            Host host(settings());
            host.tool->GetDodgeBar()->SetExposure(exposure);

            host.stroke();

            QCOMPARE(host.gain(128) > last, exposure > 0);
            last = host.gain(128);
            QCOMPARE(host.pixel(150, 150), QColor(128, 128, 128));
        }
    }

    void theRangeSaysWhichTonesGainMost_data()
    {
        QTest::addColumn<int>("range");
        QTest::addColumn<int>("gray");
        QTest::newRow("shadows") << 0 << 40;
        QTest::newRow("highlights") << 2 << 190;
    }
    void theRangeSaysWhichTonesGainMost()
    {
        QFETCH(int, range);
        QFETCH(int, gray);
        int gains[3];
        for (int each = 0; each < 3; ++each)
        {
            Host host(settings(), gray);
            host.tool->GetDodgeBar()->SetExposure(100);
            host.tool->GetDodgeBar()->SetRange(each);
            host.stroke();
            gains[each] = host.gain(gray);
        }

        QVERIFY(gains[range] > 0);
        QVERIFY(gains[range] > gains[2 - range]);
    }

    void withoutARangeTheShadowsAreMeant()
    {
        Host host(settings(), 40);
        host.tool->GetDodgeBar()->SetRange(-1);

        host.stroke();

        QVERIFY(host.gain(40) > 0);
    }

    void valuesSurvive()
    {
        {
            Host host(settings());
            host.tool->GetDodgeBar()->SetRange(1);
            host.tool->GetDodgeBar()->SetExposure(23);
        }

        DodgeTool again(settings(), nullptr);

        QCOMPARE(again.GetDodgeBar()->GetRange(), 1);
        QCOMPARE(again.GetDodgeBar()->GetExposure(), 23);
    }

    void nonsenseInTheSettingsDoesNoHarm()
    {
        settings()->setValue("dodge/range", 77);
        settings()->setValue("dodge/exposure", "bright");

        DodgeTool tool(settings(), nullptr);

        QCOMPARE(tool.GetDodgeBar()->GetRange(), 2);
        QCOMPARE(tool.GetDodgeBar()->GetExposure(), 0);
    }

private:
    QSettings* settings() const { return &m_scratch->settings; }

    std::unique_ptr<ScratchSettings> m_scratch;
};

NV_TEST_MAIN(tst_DodgeTool)
#include "tst_DodgeTool.moc"
