// The option bar of the spot healing brush: its form, and that it is a brush bar without opacity and blend
// modes.

#include <QSpinBox>
#include <QToolButton>
#include <QtTest>

#include "BarForm.h"
#include "BrushBarChecks.h"
#include "NVSpotHealingToolbar.h"
#include "TestMain.h"

namespace
{

const BarForm& Form()
{
    static const BarForm form(
        [] { return new NVSpotHealingToolbar(nullptr); }, "SpotHealingToolBar", "Spot healing toolbar",
        "theme:healing-brush_white.png",
        {
            BarControl::Separator("frame_4"),
            BarControl::PopupButton("QToolButton", "m_pSelectBrushBtn",
                                    "Click to open the Healing Brush Parameters Window")
                .Focus(Qt::TabFocus),
            BarControl::Caption("m_pPictureLabelFade_2", "Size:", "m_pSizeSpn"),
            BarControl::NumberBox("m_pSizeSpn", 1, 2500, 1, " px").FixedSize(50, 24).Focus(Qt::WheelFocus),
            BarControl::Caption("m_pPictureLabelSpacing", "Spacing:", "m_pSpacingSpn"),
            BarControl::NumberBox("m_pSpacingSpn", 1, 1000, 1, "%").FixedHeight(24).Focus(Qt::WheelFocus),
            BarControl::Separator("frame_5"),
        },
        {"m_pSizeSpn", "m_pSpacingSpn"});
    return form;
}

BrushBar Bar()
{
    BrushBar bar;
    bar.Create = CreateBrushBar<NVSpotHealingToolbar>;
    bar.Size = ControlOf("m_pSizeSpn", &NVSpotHealingToolbar::GetSize);
    bar.Spacing = ControlOf("m_pSpacingSpn", &NVSpotHealingToolbar::GetSpacing);
    bar.NotOffered = {2, 4, 5};
    return bar;
}

} // namespace

class tst_NVSpotHealingToolbar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { ResetAfterBrushBarCheck(); }

    void formIsLaidOutAsThatOfAnyBar() { Form().CheckFrame(); }
    void controlsAndGapsStandInTheirOrder() { Form().CheckRow(); }
    void pictureIsShownInFortyPixels() { Form().CheckPicture(); }
    void pictureIsThatOfTheScreensDensity() { Form().CheckPictureOfDenseScreen(); }
    void controlIsAsTheFormSays_data() { Form().AddControlRows(); }
    void controlIsAsTheFormSays() { Form().CheckControl(); }
    void valuesFollowOneAnotherInTheTabOrder() { Form().CheckTabOrder(); }
    void textsAreTranslatedUnderTheFormsName() { Form().CheckTranslation(); }
    void changeOfTheLanguageLeavesTheBar() { Form().CheckLanguageChange(); }

    void behavesAsABrushBar_data() { AddBrushBarChecks(); }
    void behavesAsABrushBar() { RunBrushBarCheck(Bar()); }

    void controlsTakeTheKeysAsTheToolkitHasIt();
};

// No other bar lets Tab come to the button that opens the popup, nor a turn of the wheel to a number box.
void tst_NVSpotHealingToolbar::controlsTakeTheKeysAsTheToolkitHasIt()
{
    NVSpotHealingToolbar bar(nullptr);
    auto* button = bar.findChild<QToolButton*>("m_pSelectBrushBtn");
    auto* size = bar.findChild<QSpinBox*>("m_pSizeSpn");
    auto* spacing = bar.findChild<QSpinBox*>("m_pSpacingSpn");
    bar.show();
    QVERIFY(QTest::qWaitForWindowActive(&bar));
    spacing->setFocus();

    QTest::keyClick(spacing, Qt::Key_Tab);
    QVERIFY(button->hasFocus());
    QTest::keyClick(button, Qt::Key_Tab);
    QVERIFY(size->hasFocus());
    QCOMPARE(spacing->focusPolicy(), QSpinBox().focusPolicy());
    QCOMPARE(button->focusPolicy(), QToolButton().focusPolicy());
}

NV_TEST_MAIN(tst_NVSpotHealingToolbar)
#include "tst_NVSpotHealingToolbar.moc"
