// The option bar of the dodge brush: its form, range and exposure, and that it is a brush bar without opacity
// and blend modes.

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QtTest>

#include <limits>

#include "BarForm.h"
#include "BrushBarChecks.h"
#include "KXBrushSettings.h"
#include "NVDodgeToolbar.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

const BarForm& Form()
{
    static const BarForm form(
        [] { return new NVDodgeToolbar(nullptr); }, "DodgeToolBar", "Dodge brush toolbar",
        "theme:tool-bar-dodge.png",
        {
            BarControl::Separator("frame_2"),
            BarControl::PopupButton("QPushButton", "m_pSelectBrushBtn",
                                    "Click to open Brush Parameters Window"),
            BarControl::Caption("m_pPictureLabelSize", "Size:", "m_pSizeSpin").ToolTip("Size"),
            BarControl::NumberBox("m_pSizeSpin", 1, 2500, 1, " px")
                .FixedSize(60, 24)
                .ToolTip("Set brush size"),
            BarControl::Caption("m_pPictureLabelSpacing", "Spacing:", "m_pSpacingSpn"),
            BarControl::NumberBox("m_pSpacingSpn", 1, 1000, 1, "%").ToolTip("Set brush spacing"),
            BarControl::Separator("frame_4"),
            // The tooltips of the range are those of other controls, and stay.
            BarControl::Caption("m_pRangeLabel", "Range:", "m_pRange").ToolTip("Opacity"),
            BarControl::List("m_pRange", {"Shadows", "Midtones", "Highlights"}, 2, 100)
                .ToolTip("Painting mode")
                .With("sizeAdjustPolicy", int(QComboBox::AdjustToContents)),
            BarControl::Caption("m_pExposureLabel", "Exposure:", "m_pExposure").ToolTip("Exposure"),
            BarControl::NumberBox("m_pExposure", 0, 100, 50, "%")
                .FixedSize(60, 24)
                .ToolTip("Set exposure for stroke"),
            BarControl::Separator("frame_6"),
        },
        {"m_pSizeSpin", "m_pSpacingSpn", "m_pRange", "m_pExposure"});
    return form;
}

BrushBar Bar()
{
    BrushBar bar;
    bar.Create = CreateBrushBar<NVDodgeToolbar>;
    bar.Size = ControlOf("m_pSizeSpin", &NVDodgeToolbar::GetSize);
    bar.Spacing = ControlOf("m_pSpacingSpn", &NVDodgeToolbar::GetSpacing);
    bar.HasPatterns = true;
    bar.NotOffered = {2, 4};
    return bar;
}

} // namespace

class tst_NVDodgeToolbar : public QObject
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

    void startsOnHighlightsWithExposureFifty();
    void rangeIsTheIndexAsItIs_data();
    void rangeIsTheIndexAsItIs();
    void rangeIsChosenByHandToo();
    void exposureIsClampedAndHasNoSignal();
    void keysAndStepsLeaveRangeAndExposure();
    void iconIsLoadedUnderTheNameAsItIs();
    void iconThatCannotBeLoadedLeavesThePlaceEmpty();
};

void tst_NVDodgeToolbar::startsOnHighlightsWithExposureFifty()
{
    const NVDodgeToolbar bar(nullptr);

    QCOMPARE(bar.GetRange(), 2);
    QCOMPARE(bar.findChild<QComboBox*>("m_pRange")->currentText(), QString("Highlights"));
    QCOMPARE(bar.GetExposure(), 50);
}

void tst_NVDodgeToolbar::rangeIsTheIndexAsItIs_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("kept");

    QTest::newRow("Shadows") << 0 << 0;
    QTest::newRow("Midtones") << 1 << 1;
    QTest::newRow("Highlights") << 2 << 2;
    QTest::newRow("below") << -1 << -1;
    QTest::newRow("behind the end") << 3 << -1;
    QTest::newRow("least") << std::numeric_limits<int>::min() << -1;
    QTest::newRow("largest") << std::numeric_limits<int>::max() << -1;
}

void tst_NVDodgeToolbar::rangeIsTheIndexAsItIs()
{
    QFETCH(const int, index);
    NVDodgeToolbar bar(nullptr);
    SignalLog log(&bar);

    bar.SetRange(index);
    bar.SetRange(index);

    QTEST(bar.GetRange(), "kept");
    QTEST(bar.findChild<QComboBox*>("m_pRange")->currentIndex(), "kept");
    QCOMPARE(log.Entries(), QStringList());
}

void tst_NVDodgeToolbar::rangeIsChosenByHandToo()
{
    NVDodgeToolbar bar(nullptr);
    bar.show();
    QVERIFY(QTest::qWaitForWindowActive(&bar));
    auto* list = bar.findChild<QComboBox*>("m_pRange");

    QTest::keyClick(list, Qt::Key_Up);
    QCOMPARE(bar.GetRange(), 1);
    QTest::keyClick(list, Qt::Key_Home);
    QCOMPARE(bar.GetRange(), 0);
}

void tst_NVDodgeToolbar::exposureIsClampedAndHasNoSignal()
{
    NVDodgeToolbar bar(nullptr);
    SignalLog log(&bar);
    log.Watch(bar.GetBrushes());
    auto* box = bar.findChild<QSpinBox*>("m_pExposure");

    bar.SetExposure(-1);
    QCOMPARE(bar.GetExposure(), 0);
    bar.SetExposure(101);
    QCOMPARE(bar.GetExposure(), 100);
    bar.SetExposure(70);
    bar.SetExposure(70);
    QCOMPARE(bar.GetExposure(), 70);
    QCOMPARE(box->value(), 70);
    bar.show();
    QVERIFY(QTest::qWaitForWindowActive(&bar));
    QTest::mouseClick(box->findChild<QLineEdit*>(), Qt::LeftButton);
    box->selectAll();
    QTest::keyClicks(box, "35");
    QTest::keyClick(box, Qt::Key_Return);
    QCOMPARE(bar.GetExposure(), 35);

    QCOMPARE(log.Entries(), QStringList());
}

void tst_NVDodgeToolbar::keysAndStepsLeaveRangeAndExposure()
{
    NVDodgeToolbar bar(nullptr);

    bar.NextBlendMode();
    bar.PreviousBlendMode();
    bar.SetBlendMode(0);
    bar.SetOpacity(7);

    QCOMPARE(bar.GetRange(), 2);
    QCOMPARE(bar.GetExposure(), 50);
}

// Unlike the picture that the bar starts with.
void tst_NVDodgeToolbar::iconIsLoadedUnderTheNameAsItIs()
{
    if (!IsOnDenseScreen())
        return;
    NVDodgeToolbar bar(nullptr);
    const auto* label = bar.findChild<QLabel*>("m_pPictureLabelMain");

    bar.SetIcon("theme:eraser.png");
    QPixmap shown = label->pixmap(Qt::ReturnByValue);
    QCOMPARE(shown.devicePixelRatioF(), 1.0);
    QCOMPARE(shown.toImage(), QPixmap("theme:eraser.png").toImage());

    bar.SetIcon("theme:eraser@2x.png");
    shown = label->pixmap(Qt::ReturnByValue);
    QCOMPARE(shown.devicePixelRatioF(), 2.0);
    QCOMPARE(shown.toImage(), QPixmap("theme:eraser@2x.png").toImage());
}

void tst_NVDodgeToolbar::iconThatCannotBeLoadedLeavesThePlaceEmpty()
{
    NVDodgeToolbar bar(nullptr);
    const auto* label = bar.findChild<QLabel*>("m_pPictureLabelMain");

    bar.SetIcon("theme:no-such-picture.png");

    QVERIFY(label->pixmap(Qt::ReturnByValue).isNull());
}

NV_TEST_MAIN(tst_NVDodgeToolbar)
#include "tst_NVDodgeToolbar.moc"
