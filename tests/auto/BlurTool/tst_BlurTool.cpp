// The blur brush: how far it blurs, how much, and which layers it takes its pixels from.

#include "BlurTool.h"

#include "KXBrushSettings.h"
#include "NVBlurToolbar.h"
#include "TestMain.h"
#include "ToolHost.h"

namespace
{

// Black at the left of x = 150, white at the right.
QImage Edge()
{
    QImage image = PlainPicture();
    for (int y = 0; y < image.height(); ++y)
        std::fill_n(reinterpret_cast<QRgb*>(image.scanLine(y)), 150, qRgb(0, 0, 0));
    return image;
}

struct Host : ToolHost<BlurTool>
{
    explicit Host(QSettings* settings, const QImage& picture = Edge()) : ToolHost(settings, picture)
    {
        tool->GetBlurBar()->SetSize(60);
    }
};

} // namespace

class tst_BlurTool : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scratch = std::make_unique<ScratchSettings>(); }

    void anEdgeBecomesSoftUnderTheStrokeAlone()
    {
        Host host(settings());

        host.stroke();

        QVERIFY(host.pixel(148, 100).red() > 40);
        QVERIFY(host.pixel(151, 100).red() < 215);
        QCOMPARE(host.pixel(148, 150), QColor(Qt::black));
        QCOMPARE(host.pixel(151, 150), QColor(Qt::white));
    }

    void theStrengthMixesBlurAndPicture()
    {
        Host full(settings());
        full.stroke();
        const int strong = full.pixel(148, 100).red();
        Host half(settings());
        half.tool->GetBlurBar()->SetOpacity(50);

        half.stroke();

        QVERIFY(qAbs(half.pixel(148, 100).red() - strong / 2) <= 2);
    }

    void aLargeBrushBlursFurther()
    {
        Host host(settings());
        host.tool->GetBlurBar()->SetSize(20);
        host.stroke();
        QCOMPARE(host.pixel(140, 100), QColor(Qt::black));
        host.steps()->undo();
        host.tool->GetBlurBar()->SetSize(120);

        host.stroke();

        QVERIFY(host.pixel(140, 100).red() > 10);
    }

    void theBlurGrowsWithTheBrushWithinBounds()
    {
        double last = 0;
        for (int size : {1, 12, 40, 100, 300, 2500})
        {
            QVERIFY(BlurSigma(size) >= last);
            QVERIFY(BlurSigma(size) >= 0.3 && BlurSigma(size) <= 50);
            last = BlurSigma(size);
        }
        QVERIFY(BlurSigma(100) > BlurSigma(40));
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
        Host host(settings(), PlainPicture(Qt::red));
        host.addLayer(PlainPicture(Qt::transparent));
        host.tool->GetBlurBar()->SetSampleAll(all);

        host.stroke();

        QCOMPARE(host.layer(1).pixelColor(150, 100), all ? QColor(Qt::red) : QColor(Qt::transparent));
    }

    void valuesSurvive()
    {
        {
            Host host(settings());
            host.tool->GetBlurBar()->SetSampleAll(false);
            host.tool->GetBlurBar()->SetBlendMode(7);
        }

        BlurTool again(settings(), nullptr);

        QVERIFY(!again.GetBlurBar()->SampleAll());
        QCOMPARE(again.GetBlurBar()->GetBlendMode(), 7);
    }

    void theBlendModeOfTheBarIsPainted()
    {
        Host host(settings());
        host.tool->GetBlurBar()->SetBlendMode(6);

        host.stroke();

        QVERIFY(host.pixel(148, 100).red() > 40);
        QCOMPARE(host.pixel(151, 100), QColor(Qt::white));
    }

private:
    QSettings* settings() const { return &m_scratch->settings; }

    std::unique_ptr<ScratchSettings> m_scratch;
};

NV_TEST_MAIN(tst_BlurTool)
#include "tst_BlurTool.moc"
