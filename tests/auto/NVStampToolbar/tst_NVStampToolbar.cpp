// The option bar of the clone stamp: its form, its two check boxes, and that it is a brush bar.

#include <QCheckBox>
#include <QLineEdit>
#include <QSpinBox>
#include <QtTest>

#include "BarForm.h"
#include "BrushBarChecks.h"
#include "NVStampToolbar.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

const BarForm& Form()
{
    static const BarForm form(
        [] { return new NVStampToolbar(nullptr); }, "StampToolBar", "Stamp toolbar",
        "theme:tool-bar-stamp.png",
        {
            BarControl::Separator("frame_4"),
            BarControl::PopupButton("QPushButton", "m_pSelectBrushBtn",
                                    "Click to open Stamp Parameters Window"),
            BarControl::Caption("m_pPictureLabelSize", "Size:", "m_pSizeSpn").ToolTip("Size"),
            BarControl::NumberBox("m_pSizeSpn", 1, 2500, 1, " px").FixedSize(60, 24).Focus(Qt::TabFocus),
            BarControl::Caption("m_pPictureLabelSpacing", "Spacing:", "m_pSpacingSpn"),
            BarControl::NumberBox("m_pSpacingSpn", 1, 1000, 1, "%"),
            BarControl::Caption("m_pPictureLabelOpacity", "Opacity:", "m_pOpacitySpn").ToolTip("Opacity"),
            BarControl::NumberBox("m_pOpacitySpn", 0, 100, 100, "%").FixedSize(60, 24),
            BarControl::Separator("frame_3"),
            BarControl::List("m_pBlendCombo", BlendModes(), 0, 150)
                .FixedHeight(24)
                .ToolTip("Painting mode")
                .With("accessibleName", "Painting mode")
                .With("maxVisibleItems", 30),
            BarControl::CheckBox("m_pCloneAllLayers", " Clone all layers", true),
            BarControl::CheckBox("m_pAlignedSample", "Aligned", true)
                .ToolTip("Use same offset for each stroke"),
            BarControl::Separator("frame_7"),
        },
        {"m_pSizeSpn", "m_pSpacingSpn", "m_pOpacitySpn", "m_pBlendCombo", "m_pCloneAllLayers",
         "m_pAlignedSample"});
    return form;
}

BrushBar Bar()
{
    BrushBar bar;
    bar.Create = CreateBrushBar<NVStampToolbar>;
    bar.Size = ControlOf("m_pSizeSpn", &NVStampToolbar::GetSize);
    bar.Spacing = ControlOf("m_pSpacingSpn", &NVStampToolbar::GetSpacing);
    bar.Opacity = ControlOf("m_pOpacitySpn", &NVStampToolbar::GetOpacity);
    bar.BlendMode = ControlOf("m_pBlendCombo", &NVStampToolbar::GetBlendMode);
    bar.NotOffered = {2};
    return bar;
}

struct Flag
{
    const char* box;
    bool (NVStampToolbar::*get)() const;
    void (NVStampToolbar::*set)(bool);
    QString signal;
};

} // namespace

class tst_NVStampToolbar : public QObject
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

    void checkBoxesStartChecked();
    void checkBoxEmitsEachChangeOnce_data();
    void checkBoxEmitsEachChangeOnce();
    void checkBoxesLeaveEachOtherAlone();
    void sizeBoxTakesTheKeysByTabAlone();
};

Q_DECLARE_METATYPE(Flag)

void tst_NVStampToolbar::checkBoxesStartChecked()
{
    const NVStampToolbar bar(nullptr);

    QVERIFY(bar.IsAligned());
    QVERIFY(bar.IsAllLayers());
}

void tst_NVStampToolbar::checkBoxEmitsEachChangeOnce_data()
{
    QTest::addColumn<Flag>("flag");

    QTest::newRow("aligned") << Flag{"m_pAlignedSample", &NVStampToolbar::IsAligned,
                                     &NVStampToolbar::SetAligned, "Aligned"};
    QTest::newRow("all layers") << Flag{"m_pCloneAllLayers", &NVStampToolbar::IsAllLayers,
                                        &NVStampToolbar::SetAllLayers, "AllLayers"};
}

void tst_NVStampToolbar::checkBoxEmitsEachChangeOnce()
{
    QFETCH(const Flag, flag);
    NVStampToolbar bar(nullptr);
    auto* box = bar.findChild<QCheckBox*>(flag.box);
    SignalLog log(&bar);

    (bar.*flag.set)(true);
    QCOMPARE(log.Entries(), QStringList());
    (bar.*flag.set)(false);
    (bar.*flag.set)(false);
    QCOMPARE(log.Entries(), QStringList(flag.signal + "(false)"));
    QVERIFY(!(bar.*flag.get)());
    QVERIFY(!box->isChecked());
    log.Clear();

    bar.show();
    QVERIFY(QTest::qWaitForWindowExposed(&bar));
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(8, box->height() / 2));
    QCOMPARE(log.Entries(), QStringList(flag.signal + "(true)"));
    QVERIFY((bar.*flag.get)());
    log.Clear();

    (bar.*flag.set)(true);
    QCOMPARE(log.Entries(), QStringList());
}

void tst_NVStampToolbar::checkBoxesLeaveEachOtherAlone()
{
    NVStampToolbar bar(nullptr);

    bar.SetAligned(false);
    QVERIFY(bar.IsAllLayers());
    bar.SetAligned(true);
    bar.SetAllLayers(false);
    QVERIFY(bar.IsAligned());
}

// Unlike its neighbours.
void tst_NVStampToolbar::sizeBoxTakesTheKeysByTabAlone()
{
    NVStampToolbar bar(nullptr);
    auto* size = bar.findChild<QSpinBox*>("m_pSizeSpn");
    auto* spacing = bar.findChild<QSpinBox*>("m_pSpacingSpn");
    bar.show();
    QVERIFY(QTest::qWaitForWindowActive(&bar));
    QTest::mouseClick(spacing->findChild<QLineEdit*>(), Qt::LeftButton);
    QVERIFY(spacing->hasFocus());

    QTest::mouseClick(size->findChild<QLineEdit*>(), Qt::LeftButton);
    QVERIFY(spacing->hasFocus());

    QTest::keyClick(spacing, Qt::Key_Tab);
    QVERIFY(size->hasFocus());
}

NV_TEST_MAIN(tst_NVStampToolbar)
#include "tst_NVStampToolbar.moc"
