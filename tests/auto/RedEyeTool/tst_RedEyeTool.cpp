// The red-eye tool: one click, the level of the bar, and what it says when nothing is red.

#include "RedEyeTool.h"

#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>

#include "NVApplication.h"
#include "NVRedEyeToolbar.h"
#include "SignalLog.h"
#include "TestMain.h"
#include "ToolHost.h"

namespace
{

// Skin with a round pupil of the colour about (150, 100).
QImage Eye(const QColor& pupil)
{
    QImage image = PlainPicture(QColor(205, 165, 140));
    for (int y = 88; y <= 112; ++y)
    {
        for (int x = 138; x <= 162; ++x)
        {
            if ((x - 150) * (x - 150) + (y - 100) * (y - 100) <= 144)
                image.setPixelColor(x, y, pupil);
        }
    }
    return image;
}

const QColor Red(200, 30, 40);
// Red only for a level well above 1.
const QColor Pale(170, 110, 110);

bool IsRed(const QColor& color)
{
    return color.red() > color.green() + 40 && color.red() > color.blue() + 40;
}

using Host = ToolHost<RedEyeTool>;

} // namespace

class tst_RedEyeTool : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scratch = std::make_unique<ScratchSettings>(); }

    void enterInTheLevelGivesTheKeyboardToTheCanvas()
    {
        Host host(settings());
        auto* box = host.window.findChild<QDoubleSpinBox*>("m_pIntensity");
        QVERIFY(box);
        QTest::mouseClick(box->findChild<QLineEdit*>(), Qt::LeftButton);
        QVERIFY(box->hasFocus());
        QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(box, "2");

        QTest::keyClick(box, Qt::Key_Return);

        QCOMPARE(host.tool->GetRedEyeBar()->GetIntensity(), 2.0);
        QVERIFY(host.view->hasFocus());
    }

    void leavingTheLevelForAnotherControlLeavesTheFocusThere()
    {
        Host host(settings());
        QLineEdit other(host.window.menuWidget());
        other.show();
        auto* box = host.window.findChild<QDoubleSpinBox*>("m_pIntensity");
        box->setFocus();

        other.setFocus();

        QVERIFY(other.hasFocus());
    }

    void aClickTakesTheRedOut()
    {
        Host host(settings(), Eye(Red));

        host.click(150, 100);

        QVERIFY(!IsRed(host.pixel(150, 100)));
        QVERIFY(!IsRed(host.pixel(145, 96)));
        QCOMPARE(host.pixel(120, 100), QColor(205, 165, 140));
        QCOMPARE(host.steps()->count(), 1);
        QCOMPARE(host.steps()->undoText(), QString("Remove Red Eye"));
    }

    void undoAndRedoAreExact()
    {
        Host host(settings(), Eye(Red));
        host.click(150, 100);
        const QImage after = host.layer();

        host.steps()->undo();
        QCOMPARE(host.layer(), Eye(Red));
        host.steps()->redo();
        QCOMPARE(host.layer(), after);
    }

    void withoutRedAMessageSaysSo()
    {
        Host host(settings(), PlainPicture(QColor(60, 90, 160)));
        SignalLog log(host.tool.get());

        host.click(150, 100);

        QCOMPARE(log.Count("Message"), 1);
        QVERIFY(log.Entries().first().contains("red"));
        QCOMPARE(host.steps()->count(), 0);
    }

    void theLevelOfTheBarCounts()
    {
        Host host(settings(), Eye(Pale));
        host.tool->GetRedEyeBar()->SetIntensity(0.5);
        host.click(150, 100);
        QCOMPARE(host.steps()->count(), 0);

        host.tool->GetRedEyeBar()->SetIntensity(3);
        host.click(150, 100);

        QCOMPARE(host.steps()->count(), 1);
        QVERIFY(host.pixel(150, 100) != Pale);
    }

    void onlyTheSelectionChanges()
    {
        Host host(settings(), Eye(Red));
        host.select(QRect(0, 0, 150, 200));

        host.click(146, 100);

        QVERIFY(!IsRed(host.pixel(145, 100)));
        QCOMPARE(host.pixel(155, 100), Red);
    }

    void aHiddenLayerIsRefused()
    {
        Host host(settings(), Eye(Red));
        host.pixels()->SetLayerVisible(0, false);
        SignalLog log(host.tool.get());

        host.click(150, 100);

        QCOMPARE(log.Count("Message"), 1);
        QVERIFY(log.Entries().first().contains("hidden"));
        QCOMPARE(host.layer(), Eye(Red));
    }

    void aPlaceOutsideAndTheRightButtonChangeNothing()
    {
        Host host(settings(), Eye(Red));

        host.click(-100, -60);
        host.mouse(QEvent::MouseButtonPress, 150, 100, Qt::RightButton, Qt::RightButton);
        host.mouse(QEvent::MouseButtonRelease, 150, 100, Qt::RightButton, Qt::NoButton);

        QCOMPARE(host.layer(), Eye(Red));
        QCOMPARE(host.steps()->count(), 0);
    }

    void theLevelSurvives()
    {
        {
            Host host(settings());
            host.tool->GetRedEyeBar()->SetIntensity(2.5);
        }

        RedEyeTool again(settings(), nullptr);

        QCOMPARE(again.GetRedEyeBar()->GetIntensity(), 2.5);
    }

    void theFirstLevelIsOneAndNonsenseDoesNoHarm()
    {
        QCOMPARE(RedEyeTool(settings(), nullptr).GetRedEyeBar()->GetIntensity(), 1.0);
        settings()->setValue("redEye/level", "very");
        QCOMPARE(RedEyeTool(settings(), nullptr).GetRedEyeBar()->GetIntensity(), 0.01);
    }

    void theThemeReachesThePicture()
    {
        Host host(settings());
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
    QSettings* settings() const { return &m_scratch->settings; }

    std::unique_ptr<ScratchSettings> m_scratch;
};

NV_TEST_MAIN(tst_RedEyeTool)
#include "tst_RedEyeTool.moc"
