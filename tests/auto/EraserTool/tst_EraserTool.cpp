// The eraser: clear above the lowest layer, the background colour on it.

#include "EraserTool.h"

#include "NVApplication.h"
#include "NVEraserToolbar.h"
#include "ProbeImage.h"
#include "TestMain.h"
#include "ToolHost.h"

class tst_EraserTool : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_scratch = std::make_unique<ScratchSettings>();
        NVApplication::GetInstance()->SetForeground(QColor(10, 20, 30));
        NVApplication::GetInstance()->SetBackground(QColor(200, 100, 0));
    }

    void cleanup()
    {
        NVApplication::GetInstance()->SetForeground(Qt::black);
        NVApplication::GetInstance()->SetBackground(Qt::white);
    }

    void theLowestLayerTakesTheBackgroundColour()
    {
        ToolHost<EraserTool> host(&m_scratch->settings);

        host.stroke();

        QCOMPARE(host.pixel(150, 100), QColor(200, 100, 0));
        QCOMPARE(host.pixel(150, 150), QColor(Qt::white));
    }

    void aLayerAboveBecomesTransparent()
    {
        ToolHost<EraserTool> host(&m_scratch->settings, PlainPicture(Qt::blue));
        host.addLayer(PlainPicture(Qt::red));

        host.stroke();

        QCOMPARE(host.layer(1).pixelColor(150, 100), QColor(Qt::transparent));
        QCOMPARE(host.pixel(150, 100), QColor(Qt::blue));
        QCOMPARE(host.pixel(150, 150), QColor(Qt::red));
        QCOMPARE(host.layer(0).pixelColor(150, 100), QColor(Qt::blue));
    }

    void theOpacityOfTheBarErasesInPart()
    {
        ToolHost<EraserTool> host(&m_scratch->settings);
        host.addLayer(PlainPicture(Qt::red));

        QTest::keyClick(host.view, Qt::Key_4);
        host.stroke();

        QCOMPARE(host.tool->GetEraserBar()->GetOpacity(), 40);
        QVERIFY(qAbs(host.layer(1).pixelColor(150, 100).alpha() - 153) <= 1);
    }

    void whatIsTransparentStaysSo()
    {
        ToolHost<EraserTool> host(&m_scratch->settings);
        host.addLayer(PlainPicture(Qt::transparent));
        const QImage before = host.layer(1);

        host.stroke();

        QCOMPARE(host.layer(1), before);
    }

    void theKeyIsE()
    {
        const EraserTool tool(&m_scratch->settings, nullptr);

        QCOMPARE(tool.GetKey(), QKeySequence(Qt::Key_E));
    }

private:
    std::unique_ptr<ScratchSettings> m_scratch;
};

NV_TEST_MAIN(tst_EraserTool)
#include "tst_EraserTool.moc"
