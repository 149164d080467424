// The option bar of the blur brush: its form, its check box, and that it is a brush bar.

#include <QCheckBox>
#include <QLabel>
#include <QtTest>

#include "BarForm.h"
#include "BrushBarChecks.h"
#include "NVBlurToolbar.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

const BarForm& Form()
{
    static const BarForm form(
        [] { return new NVBlurToolbar(nullptr); }, "BlurToolBar", "Blur brush toolbar",
        "theme:tool-bar-blurbrush.png",
        {
            BarControl::Separator("frame_2"),
            BarControl::PopupButton("QPushButton", "m_pSelectBrushBtn",
                                    "Click to open Blur Brush Parameters Window"),
            BarControl::Caption("m_pPictureLabelSize", "Size:", "m_pSizeSpin").ToolTip("Size"),
            BarControl::NumberBox("m_pSizeSpin", 1, 2500, 1, " px").FixedSize(60, 24),
            BarControl::Caption("m_pPictureLabelSpacing", "Spacing:", "m_pSpacingSpn"),
            BarControl::NumberBox("m_pSpacingSpn", 1, 1000, 1, "%").ToolTip("Set brush spacing"),
            BarControl::Caption("m_pPictureLabelOpacity", "Strenght:", "m_pOpacitySpin").ToolTip("Opacity"),
            BarControl::NumberBox("m_pOpacitySpin", 0, 100, 100, "%").FixedSize(60, 24),
            BarControl::Separator("frame_3"),
            BarControl::List("m_pBlendCombo", BlendModes(), 0, 150)
                .FixedHeight(24)
                .ToolTip("Painting mode")
                .With("accessibleName", "Painting mode")
                .With("maxVisibleItems", 30),
            BarControl::CheckBox("m_pSampleAllLayers", " Sample all layers", true),
            BarControl::Separator("frame_6"),
        },
        {"m_pSizeSpin", "m_pSpacingSpn", "m_pOpacitySpin", "m_pBlendCombo", "m_pSampleAllLayers"});
    return form;
}

BrushBar Bar()
{
    BrushBar bar;
    bar.Create = CreateBrushBar<NVBlurToolbar>;
    bar.Size = ControlOf("m_pSizeSpin", &NVBlurToolbar::GetSize);
    bar.Spacing = ControlOf("m_pSpacingSpn", &NVBlurToolbar::GetSpacing);
    bar.Opacity = ControlOf("m_pOpacitySpin", &NVBlurToolbar::GetOpacity);
    bar.BlendMode = ControlOf("m_pBlendCombo", &NVBlurToolbar::GetBlendMode);
    bar.HasPatterns = true;
    bar.NotOffered = {2};
    return bar;
}

} // namespace

class tst_NVBlurToolbar : public QObject
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

    void strengthIsSpelledAsItAlwaysWas();
    void sampleAllStartsCheckedAndHasNoSignal();
};

void tst_NVBlurToolbar::strengthIsSpelledAsItAlwaysWas()
{
    const NVBlurToolbar bar(nullptr);

    QCOMPARE(bar.findChild<QLabel*>("m_pPictureLabelOpacity")->text(), QString("Strenght:"));
}

void tst_NVBlurToolbar::sampleAllStartsCheckedAndHasNoSignal()
{
    NVBlurToolbar bar(nullptr);
    auto* box = bar.findChild<QCheckBox*>("m_pSampleAllLayers");
    SignalLog log(&bar);
    QVERIFY(bar.SampleAll());

    bar.SetSampleAll(false);
    QVERIFY(!bar.SampleAll());
    QVERIFY(!box->isChecked());
    bar.show();
    QVERIFY(QTest::qWaitForWindowExposed(&bar));
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(8, box->height() / 2));
    QVERIFY(bar.SampleAll());
    bar.SetSampleAll(true);
    QVERIFY(bar.SampleAll());

    QCOMPARE(log.Entries(), QStringList());
}

NV_TEST_MAIN(tst_NVBlurToolbar)
#include "tst_NVBlurToolbar.moc"
