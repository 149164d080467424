// The colour buttons: they show the application's colours, swap and reset them, and ask for others.

#include "ColorSwatches.h"

#include <QColorDialog>
#include <QToolButton>

#include "ModalDriver.h"
#include "NVApplication.h"
#include "ProbeImage.h"
#include "TestMain.h"

class tst_ColorSwatches : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { ColorSwatches::ResetToDefaults(); }
    void cleanup() { ColorSwatches::ResetToDefaults(); }

    void theyShowTheColours()
    {
        ColorSwatches swatches;
        NVApplication::GetInstance()->SetForeground(QColor(200, 10, 10));
        NVApplication::GetInstance()->SetBackground(QColor(10, 10, 200));

        const ProbeImage probe(&swatches);

        NV_VERIFY_NEAR(probe, 14, 14, QColor(200, 10, 10), 3);
        NV_VERIFY_NEAR(probe, 36, 36, QColor(10, 10, 200), 3);
    }

    void theButtonsSwapAndReset()
    {
        ColorSwatches swatches;
        swatches.show();
        NVApplication::GetInstance()->SetForeground(Qt::red);

        QTest::mouseClick(button(swatches, "Swap"), Qt::LeftButton);
        QCOMPARE(NVApplication::GetForeground(), QColor(Qt::white));
        QCOMPARE(NVApplication::GetBackground(), QColor(Qt::red));

        QTest::mouseClick(button(swatches, "Default"), Qt::LeftButton);
        QCOMPARE(NVApplication::GetForeground(), QColor(Qt::black));
        QCOMPARE(NVApplication::GetBackground(), QColor(Qt::white));
    }

    void aClickAsksForAColour()
    {
        ColorSwatches swatches;
        swatches.show();
        ModalDriver driver(
            [](QWidget* dialog)
            {
                qobject_cast<QColorDialog*>(dialog)->setCurrentColor(QColor(1, 2, 3));
                ModalDriver::Press(dialog, "OK");
            });

        QTest::mouseClick(button(swatches, "Foreground"), Qt::LeftButton);

        QVERIFY(driver.Finished());
        QCOMPARE(NVApplication::GetForeground(), QColor(1, 2, 3));
    }

    void aCancelledQuestionChangesNothing()
    {
        ColorSwatches swatches;
        swatches.show();
        ModalDriver driver(
            [](QWidget* dialog)
            {
                qobject_cast<QColorDialog*>(dialog)->setCurrentColor(QColor(1, 2, 3));
                ModalDriver::PressKey(dialog, Qt::Key_Escape);
            });

        QTest::mouseClick(button(swatches, "Background"), Qt::LeftButton);

        QVERIFY(driver.Finished());
        QCOMPARE(NVApplication::GetBackground(), QColor(Qt::white));
    }

    void everyButtonHasANameAndItsColourIsTold()
    {
        ColorSwatches swatches;
        for (const QToolButton* each : swatches.findChildren<QToolButton*>())
            QVERIFY(!each->accessibleName().isEmpty());
        QCOMPARE(button(swatches, "Foreground")->accessibleDescription(), QString("#000000"));
    }

private:
    static QToolButton* button(const QWidget& swatches, const QString& name)
    {
        for (QToolButton* each : swatches.findChildren<QToolButton*>())
        {
            if (each->accessibleName().startsWith(name))
                return each;
        }
        return nullptr;
    }
};

NV_TEST_MAIN(tst_ColorSwatches)
#include "tst_ColorSwatches.moc"
