// The option bar of the eraser: its form, and that it is a brush bar without blend modes.

#include <QtTest>

#include "BarForm.h"
#include "BrushBarChecks.h"
#include "NVEraserToolbar.h"
#include "TestMain.h"

namespace
{

const BarForm& Form()
{
    static const BarForm form([] { return new NVEraserToolbar(nullptr); }, "EraserToolBar", "Eraser toolbar",
                              "theme:eraser.png",
                              {
                                  BarControl::Separator("frame_4"),
                                  BarControl::PopupButton("QPushButton", "m_pSelectBrushBtn",
                                                          "Click to open the Eraser Parameters Window"),
                                  BarControl::Caption("m_pPictureLabelFade_2", "Size:", "m_pSizeSpn"),
                                  BarControl::NumberBox("m_pSizeSpn", 1, 2500, 1, " px").FixedSize(50, 24),
                                  BarControl::Caption("m_pPictureLabelSpacing", "Spacing:", "m_pSpacingSpn"),
                                  BarControl::NumberBox("m_pSpacingSpn", 1, 1000, 1, "%").FixedHeight(24),
                                  BarControl::Caption("m_pPictureLabelPressure", "Opacity:", "m_pOpacitySpn"),
                                  BarControl::NumberBox("m_pOpacitySpn", 0, 100, 100, "%").FixedHeight(24),
                                  BarControl::Separator("frame_5"),
                              },
                              {"m_pSizeSpn", "m_pSpacingSpn", "m_pOpacitySpn"});
    return form;
}

BrushBar Bar()
{
    BrushBar bar;
    bar.Create = CreateBrushBar<NVEraserToolbar>;
    bar.Size = ControlOf("m_pSizeSpn", &NVEraserToolbar::GetSize);
    bar.Spacing = ControlOf("m_pSpacingSpn", &NVEraserToolbar::GetSpacing);
    bar.Opacity = ControlOf("m_pOpacitySpn", &NVEraserToolbar::GetOpacity);
    bar.NotOffered = {2};
    return bar;
}

} // namespace

class tst_NVEraserToolbar : public QObject
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
};

NV_TEST_MAIN(tst_NVEraserToolbar)
#include "tst_NVEraserToolbar.moc"
