// The brush settings popup: its values and signals, its presets, and how it behaves as a window.

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QScreen>
#include <QSlider>
#include <QSpinBox>
#include <algorithm>
#include <limits>
#include <memory>

#include "IBrush.h"
#include "KXBrushSettings.h"
#include "ModalDriver.h"
#include "ProbeImage.h"
#include "SignalLog.h"
#include "TestMain.h"

using IntSetter = void (KXBrushSettings::*)(int);
using IntGetter = int (KXBrushSettings::*)() const;
Q_DECLARE_METATYPE(IntSetter)
Q_DECLARE_METATYPE(IntGetter)

namespace
{

QPushButton* buttonOf(const QWidget& window, const QString& text)
{
    for (QPushButton* button : window.findChildren<QPushButton*>())
    {
        if (button->text().remove(QLatin1Char('&')) == text)
            return button;
    }
    return nullptr;
}

struct Popup
{
    // The window that was active before.
    QWidget host;
    KXBrushSettings settings;
    SignalLog log;

    Popup() : settings(nullptr), log(&settings) { }

    void Show()
    {
        host.show();
        host.activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), &host);
        settings.show();
        settings.activateWindow();
        settings.setFocus(Qt::OtherFocusReason);
        QTRY_VERIFY(List()->hasFocus());
    }

    QListView* List() { return settings.findChild<QListView*>(); }

    QPushButton* Button(const QString& text) { return buttonOf(settings, text); }

    template <class Control>
    Control* Named(const QString& name)
    {
        for (Control* control : settings.findChildren<Control*>())
        {
            if (control->accessibleName() == name)
                return control;
        }
        return nullptr;
    }

    QCheckBox* Check(KXBrushSettings::DynamicProperty property)
    {
        static const QStringList texts = {"Size", "Hardness", "Color", "Angle", "Opacity", "Scatter"};
        for (QCheckBox* check : settings.findChildren<QCheckBox*>())
        {
            if (check->text() == texts[property])
                return check;
        }
        return nullptr;
    }

    void Type(const QString& name, const QString& text)
    {
        QSpinBox* const box = Named<QSpinBox>(name);
        QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(10, box->height() / 2));
        box->selectAll();
        QTest::keyClicks(box, text);
        QTest::keyClick(box, Qt::Key_Tab);
    }

    void ClickPreset(int row)
    {
        const QModelIndex index = List()->model()->index(row, 0);
        List()->scrollTo(index);
        QTest::mouseClick(List()->viewport(), Qt::LeftButton, Qt::NoModifier,
                          List()->visualRect(index).center());
    }

    BrushTip Tip() { return settings.GetCurrentBrush()->GetTip(); }
};

// What a person does in the dialog that asks for a name.
ModalDriver::Function answerName(const QString& name)
{
    return [name](QWidget* dialog)
    {
        QLineEdit* const edit = dialog->findChild<QLineEdit*>();
        edit->selectAll();
        QTest::keyClicks(edit, name);
        ModalDriver::Press(dialog, "OK");
    };
}

void savePreset(Popup& popup, const QString& name)
{
    ModalDriver driver(answerName(name));
    QTest::mouseClick(popup.Button("Save preset..."), Qt::LeftButton);
    QVERIFY(driver.Finished());
}

// Notes when a modal window comes before another one and goes again.
class BlockWatch : public QObject
{
public:
    QVector<QEvent::Type> seen;

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::WindowBlocked || event->type() == QEvent::WindowUnblocked)
            seen.append(event->type());
        return false;
    }
};

const double Nan = std::numeric_limits<double>::quiet_NaN();

} // namespace

class tst_KXBrushSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itStartsAsTheBarsDo();
    void settersClampAndEmitOnceOnChange_data();
    void settersClampAndEmitOnceOnChange();
    void aBarAndThePopupFollowEachOther();
    void setTipClampsAndEmitsOnceOnChange();
    void valuesShowWheneverTheyWereSet_data();
    void valuesShowWheneverTheyWereSet();

    void typingEmitsOnce_data();
    void typingEmitsOnce();
    void aSliderEmitsWhatItShows();
    void aKeyOnTheSizeSliderAlwaysMoves();
    void theSizeSliderReachesAllSmallSizes();
    void theShapeBoxChangesTheBrush();
    void hardnessRoundnessAndAngleChangeTheBrush();

    void thereAreManyPresets();
    void aPresetBringsTipAndSpacing();
    void aClickedPresetIsChosenOnce();
    void arrowsChoosePresets();
    void aClickOnTheCurrentPresetTakesChangesBack();
    void aChangedTipStaysWhenThePopupIsShown();
    void aBadPresetIsIgnored();
    void aPresetIsSavedUnderItsName();
    void aTakenOrEmptyNameIsNotAccepted();
    void savingMayBeCancelled();
    void aPresetIsRenamed();
    void aPresetIsDeletedAfterAQuestion();
    void deletingMayBeRefused();
    void builtInPresetsCannotBeChanged();
    void presetsSurviveSavingAndRestoring();
    void rubbishIsRefused();
    void everyCutOrFlippedRecordIsHarmless();
    void restoringTakesTheCurrentPresetAway();

    void dynamicsAreOfferedAndOff();
    void aDynamicIsSwitchedByItsBox();
    void aDynamicThatIsNotOfferedIsOff();
    void aBadDynamicIsIgnored();

    void theBrushHasASharpIconInItsColor();
    void theIconFollowsTheTip();
    void thePreviewShowsTheStroke();

    void itIsAWindowWithAndWithoutAParent();
    void escapeHides();
    void itMovesItselfOntoTheScreen();
    void itStaysUnderItsOwnDialog();
    void itMayBeDestroyedUnderItsDialog_data();
    void itMayBeDestroyedUnderItsDialog();
    void everyControlHasAName();
    void theTabKeyReachesAllControls();
    void itIsMadeCheaply();
};

void tst_KXBrushSettings::itStartsAsTheBarsDo()
{
    const KXBrushSettings settings(nullptr);
    QCOMPARE(settings.GetSize(), 1);
    QCOMPARE(settings.GetSpacing(), 1);
    QCOMPARE(settings.GetOpacity(), 100);
    QCOMPARE(settings.GetCurrentPreset(), 0);
    QVERIFY(settings.GetCurrentBrush());
    QCOMPARE(settings.GetCurrentBrush()->GetName(), settings.GetPresetNames().first());
    QVERIFY(settings.GetCurrentBrush()->GetTip() == BrushTip());
}

void tst_KXBrushSettings::settersClampAndEmitOnceOnChange_data()
{
    QTest::addColumn<IntSetter>("set");
    QTest::addColumn<IntGetter>("get");
    QTest::addColumn<QString>("signal");
    QTest::addColumn<int>("least");
    QTest::addColumn<int>("most");
    const auto row = [](const char* name, IntSetter set, IntGetter get, const char* signal, int least,
                        int most) { QTest::newRow(name) << set << get << QString(signal) << least << most; };
    row("size", &KXBrushSettings::SetSize, &KXBrushSettings::GetSize, "SizeChanged", 1, 2500);
    row("spacing", &KXBrushSettings::SetSpacing, &KXBrushSettings::GetSpacing, "SpacingChanged", 1, 1000);
    row("opacity", &KXBrushSettings::SetOpacity, &KXBrushSettings::GetOpacity, "OpacityChanged", 0, 100);
}

void tst_KXBrushSettings::settersClampAndEmitOnceOnChange()
{
    QFETCH(IntSetter, set);
    QFETCH(IntGetter, get);
    QFETCH(QString, signal);
    QFETCH(int, least);
    QFETCH(int, most);
    for (const bool shown : {false, true})
    {
        Popup popup;
        if (shown)
            popup.Show();
        (popup.settings.*set)(37);
        (popup.settings.*set)(37);
        (popup.settings.*set)(INT_MAX);
        (popup.settings.*set)(most);
        (popup.settings.*set)(INT_MIN);
        (popup.settings.*set)(least - 1);

        QCOMPARE((popup.settings.*get)(), least);
        QCOMPARE(popup.log.Entries(),
                 QStringList({signal + "(37)", QString("%1(%2)").arg(signal).arg(most),
                              QString("%1(%2)").arg(signal).arg(least)}));
    }
}

void tst_KXBrushSettings::aBarAndThePopupFollowEachOther()
{
    Popup popup;
    popup.Show();
    QSpinBox bar;
    bar.setRange(1, 2500);
    // As a bar connects them, in both directions and twice.
    for (int i = 0; i < 2; ++i)
    {
        connect(&bar, qOverload<int>(&QSpinBox::valueChanged), &popup.settings, &KXBrushSettings::SetSize);
        connect(&popup.settings, &KXBrushSettings::SizeChanged, &bar, &QSpinBox::setValue);
    }

    bar.setValue(700);
    QCOMPARE(popup.settings.GetSize(), 700);
    popup.Type("Size", "55");

    QCOMPARE(bar.value(), 55);
    QCOMPARE(popup.settings.GetSize(), 55);
}

void tst_KXBrushSettings::setTipClampsAndEmitsOnceOnChange()
{
    Popup popup;
    BrushTip tip;
    tip.shape = BrushTip::Star;
    tip.hardness = 7;
    tip.roundness = 0;
    tip.angle = 370;

    popup.settings.SetTip(tip);
    popup.settings.SetTip(tip);

    QCOMPARE(popup.log.Count("BrushParameterChanged"), 1);
    QCOMPARE(popup.Tip().shape, BrushTip::Star);
    QCOMPARE(popup.Tip().hardness, 1.0);
    QCOMPARE(popup.Tip().roundness, 0.05);
    QCOMPARE(popup.Tip().angle, 10.0);

    tip.shape = BrushTip::Shape(77);
    tip.hardness = tip.roundness = tip.angle = Nan;
    popup.settings.SetTip(tip);
    QCOMPARE(popup.log.Count(), 1);
    QCOMPARE(popup.Tip().shape, BrushTip::Star);
}

void tst_KXBrushSettings::valuesShowWheneverTheyWereSet_data()
{
    QTest::addColumn<bool>("shownFirst");
    QTest::newRow("shown first") << true;
    QTest::newRow("set first") << false;
}

void tst_KXBrushSettings::valuesShowWheneverTheyWereSet()
{
    QFETCH(bool, shownFirst);
    Popup popup;
    if (shownFirst)
        popup.Show();
    popup.settings.SetSize(800);
    popup.settings.SetSpacing(45);
    popup.settings.SetOpacity(67);
    popup.settings.SetDynamic(KXBrushSettings::DynamicAngle, true);
    popup.settings.EnableDynamicProperty(KXBrushSettings::DynamicColor, false);
    BrushTip tip;
    tip.shape = BrushTip::Diamond;
    tip.hardness = 0.5;
    tip.roundness = 0.25;
    tip.angle = -30;
    popup.settings.SetTip(tip);
    if (!shownFirst)
        popup.Show();

    QCOMPARE(popup.Named<QSpinBox>("Size")->value(), 800);
    QVERIFY(popup.Named<QSlider>("Size")->value() > popup.Named<QSlider>("Size")->maximum() * 3 / 4);
    QCOMPARE(popup.Named<QSpinBox>("Spacing")->value(), 45);
    QCOMPARE(popup.Named<QSpinBox>("Opacity")->value(), 67);
    QCOMPARE(popup.Named<QSlider>("Opacity")->value(), 67);
    QCOMPARE(popup.Named<QSpinBox>("Hardness")->value(), 50);
    QCOMPARE(popup.Named<QSpinBox>("Roundness")->value(), 25);
    QCOMPARE(popup.Named<QSpinBox>("Angle")->value(), -30);
    QCOMPARE(popup.Named<QComboBox>("Shape")->currentIndex(), int(BrushTip::Diamond));
    QVERIFY(popup.Check(KXBrushSettings::DynamicAngle)->isChecked());
    QVERIFY(!popup.Check(KXBrushSettings::DynamicColor)->isVisible());
    QVERIFY(popup.Check(KXBrushSettings::DynamicSize)->isVisible());
    QCOMPARE(popup.log.Count(), 4);
}

void tst_KXBrushSettings::typingEmitsOnce_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("entry");
    QTest::newRow("size") << "Size"
                          << "8"
                          << "SizeChanged(8)";
    QTest::newRow("spacing") << "Spacing"
                             << "7"
                             << "SpacingChanged(7)";
    QTest::newRow("opacity") << "Opacity"
                             << "5"
                             << "OpacityChanged(5)";
}

void tst_KXBrushSettings::typingEmitsOnce()
{
    QFETCH(QString, name);
    QFETCH(QString, text);
    QFETCH(QString, entry);
    Popup popup;
    popup.Show();

    popup.Type(name, text);
    popup.Type(name, text);

    QCOMPARE(popup.log.Entries(), QStringList({entry}));
}

void tst_KXBrushSettings::aSliderEmitsWhatItShows()
{
    Popup popup;
    popup.Show();
    QSlider* const slider = popup.Named<QSlider>("Size");

    QTest::keyClick(slider, Qt::Key_End);
    QCOMPARE(popup.settings.GetSize(), 2500);
    QCOMPARE(popup.Named<QSpinBox>("Size")->value(), 2500);
    QTest::keyClick(slider, Qt::Key_Home);
    QCOMPARE(popup.log.Entries(), QStringList({"SizeChanged(2500)", "SizeChanged(1)"}));

    QTest::keyClick(popup.Named<QSlider>("Opacity"), Qt::Key_Left);
    QCOMPARE(popup.log.Entries().last(), QString("OpacityChanged(99)"));
}

void tst_KXBrushSettings::aKeyOnTheSizeSliderAlwaysMoves()
{
    Popup popup;
    popup.Show();
    QSlider* const slider = popup.Named<QSlider>("Size");

    int previous = popup.settings.GetSize();
    for (int steps = 0; previous < 2500 && steps < 500; ++steps)
    {
        QTest::keyClick(slider, Qt::Key_Right);
        QVERIFY2(popup.settings.GetSize() > previous, qPrintable(QString::number(previous)));
        previous = popup.settings.GetSize();
    }
    QCOMPARE(previous, 2500);
    for (int steps = 0; previous > 1 && steps < 500; ++steps)
    {
        QTest::keyClick(slider, Qt::Key_Left);
        QVERIFY2(popup.settings.GetSize() < previous, qPrintable(QString::number(previous)));
        previous = popup.settings.GetSize();
    }
    QCOMPARE(previous, 1);
}

void tst_KXBrushSettings::theSizeSliderReachesAllSmallSizes()
{
    Popup popup;
    popup.Show();
    QSlider* const slider = popup.Named<QSlider>("Size");

    QVector<int> sizes;
    for (int position = slider->minimum(); position <= slider->maximum(); ++position)
    {
        slider->setValue(position);
        QCOMPARE(slider->value(), position);
        sizes.append(popup.settings.GetSize());
    }

    QVERIFY(std::is_sorted(sizes.begin(), sizes.end()));
    for (int size = 1; size <= 60; ++size)
        QVERIFY2(sizes.contains(size), qPrintable(QString::number(size)));
    // Half the way is for the sizes that a person uses most.
    QVERIFY(sizes[sizes.size() / 2] < 100);
}

void tst_KXBrushSettings::theShapeBoxChangesTheBrush()
{
    Popup popup;
    popup.Show();
    QComboBox* const box = popup.Named<QComboBox>("Shape");
    QCOMPARE(box->count(), 5);
    QVERIFY(!box->itemIcon(0).isNull());

    box->setFocus();
    QTest::keyClick(box, Qt::Key_Down);

    QCOMPARE(popup.Tip().shape, BrushTip::Square);
    QCOMPARE(popup.log.Count("BrushParameterChanged"), 1);
    QCOMPARE(popup.log.Count(), 1);
}

void tst_KXBrushSettings::hardnessRoundnessAndAngleChangeTheBrush()
{
    Popup popup;
    popup.Show();

    popup.Type("Hardness", "4");
    popup.Type("Roundness", "6");
    popup.Type("Angle", "9");

    QCOMPARE(popup.Tip().hardness, 0.04);
    QCOMPARE(popup.Tip().roundness, 0.06);
    QCOMPARE(popup.Tip().angle, 9.0);
    QCOMPARE(popup.log.Count("BrushParameterChanged"), 3);
    QCOMPARE(popup.log.Count(), 3);
}

void tst_KXBrushSettings::thereAreManyPresets()
{
    const KXBrushSettings settings(nullptr);
    QStringList names = settings.GetPresetNames();
    QVERIFY(names.size() >= 12);
    QVERIFY(!names.contains(QString()));
    QCOMPARE(names.removeDuplicates(), 0);
}

void tst_KXBrushSettings::aPresetBringsTipAndSpacing()
{
    Popup popup;
    popup.settings.SetSize(300);
    popup.settings.SetOpacity(40);
    popup.log.Clear();
    const int calligraphy = popup.settings.GetPresetNames().indexOf("Calligraphy");

    popup.settings.SetCurrentPreset(calligraphy);
    popup.settings.SetCurrentPreset(calligraphy);

    QCOMPARE(popup.log.Count("CurrentBrushChanged"), 1);
    QCOMPARE(popup.log.Count("SpacingChanged"), 1);
    QCOMPARE(popup.log.Count(), 2);
    QVERIFY(popup.Tip().roundness < 0.5);
    QCOMPARE(popup.settings.GetCurrentBrush()->GetName(), QString("Calligraphy"));
    QCOMPARE(popup.settings.GetSize(), 300);
    QCOMPARE(popup.settings.GetOpacity(), 40);
    QCOMPARE(popup.settings.GetCurrentPreset(), calligraphy);
}

void tst_KXBrushSettings::aClickedPresetIsChosenOnce()
{
    Popup popup;
    popup.Show();

    popup.ClickPreset(5);

    QCOMPARE(popup.settings.GetCurrentPreset(), 5);
    QCOMPARE(popup.log.Count("CurrentBrushChanged"), 1);
    QCOMPARE(popup.log.Count("BrushParameterChanged"), 0);
    QVERIFY(popup.settings.isVisible());
}

void tst_KXBrushSettings::arrowsChoosePresets()
{
    Popup popup;
    popup.Show();

    QTest::keyClick(popup.List(), Qt::Key_Down);
    QTest::keyClick(popup.List(), Qt::Key_Down);
    QTest::keyClick(popup.List(), Qt::Key_Up);

    QCOMPARE(popup.settings.GetCurrentPreset(), 1);
    QCOMPARE(popup.log.Count("CurrentBrushChanged"), 3);
}

void tst_KXBrushSettings::aClickOnTheCurrentPresetTakesChangesBack()
{
    Popup popup;
    popup.Show();
    popup.ClickPreset(2);
    const BrushTip tip = popup.Tip();
    popup.Type("Hardness", "90");
    QVERIFY(popup.Tip() != tip);
    popup.log.Clear();

    popup.ClickPreset(2);

    QVERIFY(popup.Tip() == tip);
    QCOMPARE(popup.log.Count("BrushParameterChanged"), 1);
    QCOMPARE(popup.log.Count("CurrentBrushChanged"), 0);
}

void tst_KXBrushSettings::aChangedTipStaysWhenThePopupIsShown()
{
    Popup popup;
    BrushTip tip;
    tip.hardness = 0.33;
    popup.settings.SetTip(tip);
    popup.Show();
    popup.settings.hide();
    popup.Show();

    QVERIFY(popup.Tip() == tip);
    QCOMPARE(popup.log.Count(), 1);
}

void tst_KXBrushSettings::aBadPresetIsIgnored()
{
    Popup popup;
    for (const int index : {-1, INT_MIN, INT_MAX, popup.settings.GetPresetNames().size()})
        popup.settings.SetCurrentPreset(index);

    QCOMPARE(popup.settings.GetCurrentPreset(), 0);
    QCOMPARE(popup.log.Count(), 0);
}

void tst_KXBrushSettings::aPresetIsSavedUnderItsName()
{
    Popup popup;
    popup.Show();
    const int row = popup.settings.GetPresetNames().size();
    popup.settings.SetSpacing(77);
    popup.Type("Hardness", "12");
    popup.log.Clear();

    savePreset(popup, "Mine");

    QCOMPARE(popup.log.Entries(), QStringList({"PresetsChanged()"}));
    QCOMPARE(popup.settings.GetPresetNames().last(), QString("Mine"));
    QCOMPARE(popup.settings.GetCurrentPreset(), row);
    QCOMPARE(popup.List()->currentIndex().row(), row);
    popup.settings.SetCurrentPreset(0);
    popup.settings.SetCurrentPreset(row);
    QCOMPARE(popup.Tip().hardness, 0.12);
    QCOMPARE(popup.settings.GetSpacing(), 77);
    QVERIFY(popup.settings.isVisible());
}

void tst_KXBrushSettings::aTakenOrEmptyNameIsNotAccepted()
{
    Popup popup;
    popup.Show();
    const QString taken = popup.settings.GetPresetNames().at(3);

    ModalDriver driver(
        [&](QWidget* dialog)
        {
            QLineEdit* const edit = dialog->findChild<QLineEdit*>();
            for (const QString& name : {QString(), QString("   "), taken, " " + taken + " "})
            {
                edit->setText(name);
                QVERIFY2(!buttonOf(*dialog, "OK")->isEnabled(), qPrintable(name));
            }
            edit->setText("Free");
            QVERIFY(buttonOf(*dialog, "OK")->isEnabled());
            ModalDriver::PressKey(dialog, Qt::Key_Return);
        });
    QTest::mouseClick(popup.Button("Save preset..."), Qt::LeftButton);

    QVERIFY(driver.Finished());
    QCOMPARE(popup.settings.GetPresetNames().last(), QString("Free"));
}

void tst_KXBrushSettings::savingMayBeCancelled()
{
    Popup popup;
    popup.Show();
    const QStringList before = popup.settings.GetPresetNames();

    ModalDriver driver(
        QList<ModalDriver::Function>{[](QWidget* dialog) { ModalDriver::PressKey(dialog, Qt::Key_Escape); },
                                     [](QWidget* dialog) { ModalDriver::Press(dialog, "Cancel"); },
                                     [](QWidget* dialog) { ModalDriver::CloseWindow(dialog); }});
    for (int i = 0; i < 3; ++i)
        QTest::mouseClick(popup.Button("Save preset..."), Qt::LeftButton);

    QVERIFY(driver.Finished());
    QCOMPARE(popup.settings.GetPresetNames(), before);
    QCOMPARE(popup.log.Count(), 0);
}

void tst_KXBrushSettings::aPresetIsRenamed()
{
    Popup popup;
    popup.Show();
    savePreset(popup, "Mine");
    popup.log.Clear();

    ModalDriver driver(answerName("Yours"));
    QTest::mouseClick(popup.Button("Rename..."), Qt::LeftButton);
    QVERIFY(driver.Finished());
    QCOMPARE(popup.settings.GetPresetNames().last(), QString("Yours"));
    QVERIFY(!popup.settings.GetPresetNames().contains("Mine"));
    QCOMPARE(popup.settings.GetCurrentBrush()->GetName(), QString("Yours"));
    QCOMPARE(popup.log.Entries(), QStringList({"PresetsChanged()"}));

    ModalDriver same(answerName("Yours"));
    QTest::mouseClick(popup.Button("Rename..."), Qt::LeftButton);
    QVERIFY(same.Finished());
    QCOMPARE(popup.log.Count(), 1);
}

void tst_KXBrushSettings::aPresetIsDeletedAfterAQuestion()
{
    Popup popup;
    popup.Show();
    const QStringList before = popup.settings.GetPresetNames();
    popup.Type("Hardness", "12");
    savePreset(popup, "Mine");
    popup.log.Clear();

    ModalDriver driver([](QWidget* dialog) { ModalDriver::Press(dialog, "Yes"); });
    QTest::mouseClick(popup.Button("Delete"), Qt::LeftButton);

    QVERIFY(driver.Finished());
    QCOMPARE(popup.settings.GetPresetNames(), before);
    QCOMPARE(popup.settings.GetCurrentPreset(), -1);
    // The brush in hand stays.
    QCOMPARE(popup.Tip().hardness, 0.12);
    QCOMPARE(popup.log.Entries(), QStringList({"PresetsChanged()"}));
    QVERIFY(!popup.Button("Delete")->isEnabled());
    popup.ClickPreset(0);
    QCOMPARE(popup.settings.GetCurrentPreset(), 0);
}

void tst_KXBrushSettings::deletingMayBeRefused()
{
    Popup popup;
    popup.Show();
    savePreset(popup, "Mine");

    ModalDriver driver([](QWidget* dialog) { ModalDriver::PressKey(dialog, Qt::Key_Escape); });
    QTest::mouseClick(popup.Button("Delete"), Qt::LeftButton);

    QVERIFY(driver.Finished());
    QCOMPARE(popup.settings.GetPresetNames().last(), QString("Mine"));
}

void tst_KXBrushSettings::builtInPresetsCannotBeChanged()
{
    Popup popup;
    popup.Show();
    QVERIFY(!popup.Button("Rename...")->isEnabled());
    QVERIFY(!popup.Button("Delete")->isEnabled());
    savePreset(popup, "Mine");
    QVERIFY(popup.Button("Rename...")->isEnabled());
    QVERIFY(popup.Button("Delete")->isEnabled());

    popup.ClickPreset(1);

    QVERIFY(!popup.Button("Rename...")->isEnabled());
    QVERIFY(!popup.Button("Delete")->isEnabled());
}

void tst_KXBrushSettings::presetsSurviveSavingAndRestoring()
{
    Popup popup;
    popup.Show();
    BrushTip tip;
    tip.shape = BrushTip::Star;
    tip.hardness = 0.4;
    tip.roundness = 0.3;
    tip.angle = -77;
    popup.settings.SetTip(tip);
    popup.settings.SetSpacing(321);
    savePreset(popup, "Chalk <b>");
    savePreset(popup, "Second");

    KXBrushSettings next(nullptr);
    QVERIFY(next.RestorePresets(popup.settings.SavePresets()));

    QCOMPARE(next.GetPresetNames(), popup.settings.GetPresetNames());
    QCOMPARE(next.GetCurrentPreset(), 0);
    next.SetCurrentPreset(next.GetPresetNames().size() - 2);
    QVERIFY(next.GetCurrentBrush()->GetTip() == tip);
    QCOMPARE(next.GetSpacing(), 321);
    QCOMPARE(next.SavePresets(), popup.settings.SavePresets());
}

void tst_KXBrushSettings::rubbishIsRefused()
{
    Popup popup;
    popup.Show();
    savePreset(popup, "Mine");
    const QByteArray good = popup.settings.SavePresets();
    const QStringList names = popup.settings.GetPresetNames();
    QByteArray newer = good;
    newer[5] = char(2);
    const QByteArray huge = good.left(6) + QByteArray("\xff\xff\xff\xff", 4);

    for (const QByteArray& bytes : {QByteArray(), QByteArray("rubbish"), QByteArray(1000, '\0'),
                                    QByteArray(1000, '\xff'), newer, huge, good.chopped(1), good + 'x'})
        QVERIFY(!popup.settings.RestorePresets(bytes));

    QCOMPARE(popup.settings.GetPresetNames(), names);
    QCOMPARE(popup.settings.SavePresets(), good);
    QCOMPARE(popup.log.Count("PresetsChanged"), 1);
}

void tst_KXBrushSettings::everyCutOrFlippedRecordIsHarmless()
{
    Popup popup;
    popup.Show();
    savePreset(popup, "Mine");
    const QByteArray good = popup.settings.SavePresets();

    for (int i = 0; i < good.size(); ++i)
    {
        QVERIFY(!popup.settings.RestorePresets(good.left(i)));
        for (const char flip : {'\x01', '\x80', '\xff'})
        {
            QByteArray bytes = good;
            bytes[i] = char(bytes[i] ^ flip);
            if (!popup.settings.RestorePresets(bytes))
                continue;
            // What is accepted holds values that can be used.
            popup.settings.SetCurrentPreset(popup.settings.GetPresetNames().size() - 1);
            QVERIFY(popup.settings.GetSpacing() >= 1 && popup.settings.GetSpacing() <= 1000);
            QVERIFY(popup.Tip().hardness >= 0 && popup.Tip().hardness <= 1);
            QVERIFY(popup.Tip().roundness >= 0.05 && popup.Tip().roundness <= 1);
        }
    }
}

void tst_KXBrushSettings::restoringTakesTheCurrentPresetAway()
{
    Popup popup;
    popup.Show();
    const QByteArray none = popup.settings.SavePresets();
    popup.Type("Hardness", "12");
    savePreset(popup, "Mine");
    popup.log.Clear();

    QVERIFY(popup.settings.RestorePresets(none));
    QCOMPARE(popup.settings.GetCurrentPreset(), -1);
    QCOMPARE(popup.Tip().hardness, 0.12);
    QVERIFY(!popup.List()->currentIndex().isValid());
    QCOMPARE(popup.log.Count(), 0);

    popup.settings.SetCurrentPreset(4);
    QVERIFY(popup.settings.RestorePresets(none));
    QCOMPARE(popup.settings.GetCurrentPreset(), 4);
    QCOMPARE(popup.List()->currentIndex().row(), 4);
}

void tst_KXBrushSettings::dynamicsAreOfferedAndOff()
{
    Popup popup;
    popup.Show();
    for (int i = 0; i < 6; ++i)
    {
        const auto property = static_cast<KXBrushSettings::DynamicProperty>(i);
        QVERIFY(!popup.settings.IsDynamic(property));
        QVERIFY(popup.Check(property)->isVisible());
        QVERIFY(!popup.Check(property)->isChecked());
    }
}

void tst_KXBrushSettings::aDynamicIsSwitchedByItsBox()
{
    Popup popup;
    popup.Show();
    for (int i = 0; i < 6; ++i)
    {
        const auto property = static_cast<KXBrushSettings::DynamicProperty>(i);
        QTest::keyClick(popup.Check(property), Qt::Key_Space);
        QVERIFY(popup.settings.IsDynamic(property));
        QTest::keyClick(popup.Check(property), Qt::Key_Space);
        QVERIFY(!popup.settings.IsDynamic(property));
    }
    QCOMPARE(popup.log.Count(), 0);
}

void tst_KXBrushSettings::aDynamicThatIsNotOfferedIsOff()
{
    Popup popup;
    popup.Show();
    popup.settings.SetDynamic(KXBrushSettings::DynamicOpacity, true);

    popup.settings.EnableDynamicProperty(KXBrushSettings::DynamicOpacity, false);
    QVERIFY(!popup.settings.IsDynamic(KXBrushSettings::DynamicOpacity));
    QVERIFY(!popup.Check(KXBrushSettings::DynamicOpacity)->isVisible());
    popup.settings.EnableDynamicProperty(KXBrushSettings::DynamicOpacity, true);
    QVERIFY(popup.settings.IsDynamic(KXBrushSettings::DynamicOpacity));

    for (int i = 0; i < 6; ++i)
        popup.settings.EnableDynamicProperty(static_cast<KXBrushSettings::DynamicProperty>(i), false);
    for (const QCheckBox* check : popup.settings.findChildren<QCheckBox*>())
        QVERIFY(!check->isVisible());
}

void tst_KXBrushSettings::aBadDynamicIsIgnored()
{
    Popup popup;
    popup.Show();
    for (const int bad : {-1, 6, 7})
    {
        const auto property = static_cast<KXBrushSettings::DynamicProperty>(bad);
        popup.settings.EnableDynamicProperty(property, false);
        popup.settings.SetDynamic(property, true);
        QVERIFY(!popup.settings.IsDynamic(property));
    }
}

void tst_KXBrushSettings::theBrushHasASharpIconInItsColor()
{
    const KXBrushSettings settings(nullptr);
    IBrush* const brush = settings.GetCurrentBrush();
    const QIcon& icon = brush->GetColoredIcon(Qt::red);
    QCOMPARE(&icon, &brush->GetColoredIcon(Qt::red));
    for (const int side : {16, 24, 32, 48, 72})
    {
        const QImage image = icon.pixmap(side, side).toImage();
        QCOMPARE(image.size(), QSize(side, side));
        QCOMPARE(image.pixelColor(side / 2, side / 2).rgba(), qRgb(255, 0, 0));
        QCOMPARE(image.pixelColor(0, 0).alpha(), 0);
    }
    const QImage white = brush->GetColoredIcon(Qt::white).pixmap(16, 16).toImage();
    QCOMPARE(white.pixelColor(8, 8).rgba(), qRgb(255, 255, 255));
}

void tst_KXBrushSettings::theIconFollowsTheTip()
{
    KXBrushSettings settings(nullptr);
    const auto icon = [&]
    { return settings.GetCurrentBrush()->GetColoredIcon(Qt::black).pixmap(24, 24).toImage(); };
    const QImage round = icon();
    BrushTip tip;
    tip.shape = BrushTip::Square;
    tip.angle = 45;
    settings.SetTip(tip);
    const QImage square = icon();

    QVERIFY(round != square);
    QCOMPARE(square.pixelColor(12, 12).rgba(), qRgb(0, 0, 0));
    QCOMPARE(square.pixelColor(1, 1).alpha(), 0);
    // Its corner reaches the edge, but is not cut off.
    QCOMPARE(square.pixelColor(12, 0).alpha(), 0);
    QVERIFY(square.pixelColor(12, 3).alpha() > 0);
}

void tst_KXBrushSettings::thePreviewShowsTheStroke()
{
    Popup popup;
    popup.settings.SetSize(20);
    popup.Show();
    QWidget* const preview = popup.Named<QWidget>("Stroke preview");
    const QColor ink = preview->palette().color(QPalette::Text);
    const auto inked = [&] { return ProbeImage(preview).CountOf(ink, 40); };
    const int hard = inked();
    QVERIFY(hard > 1000);
    QVERIFY(ProbeImage(preview).BoundsOf(ink, 40).width() > preview->width() * 3 / 4);

    popup.Type("Hardness", "0");
    QVERIFY(inked() < hard);
    popup.Type("Opacity", "20");
    QCOMPARE(inked(), 0);
    popup.settings.SetOpacity(100);
    popup.settings.SetSize(2500);
    QVERIFY(inked() > hard);
    popup.settings.SetDynamic(KXBrushSettings::DynamicSize, true);
    const int tapered = inked();
    popup.settings.SetDynamic(KXBrushSettings::DynamicSize, false);
    QVERIFY(inked() > tapered);
}

void tst_KXBrushSettings::itIsAWindowWithAndWithoutAParent()
{
    QWidget bar;
    for (QWidget* parent : {static_cast<QWidget*>(nullptr), &bar})
    {
        const KXBrushSettings settings(parent);
        QVERIFY(settings.isWindow());
        QCOMPARE(settings.windowType(), Qt::Tool);
        QVERIFY(settings.windowFlags().testFlag(Qt::FramelessWindowHint));
    }
}

void tst_KXBrushSettings::escapeHides()
{
    Popup popup;
    popup.Show();
    for (QWidget* focus :
         {static_cast<QWidget*>(popup.List()), static_cast<QWidget*>(popup.Named<QSlider>("Size")),
          static_cast<QWidget*>(popup.Named<QSpinBox>("Size")),
          static_cast<QWidget*>(popup.Named<QComboBox>("Shape"))})
    {
        popup.Show();
        focus->setFocus();
        QTest::keyClick(focus, Qt::Key_Escape);
        QVERIFY2(!popup.settings.isVisible(), focus->metaObject()->className());
    }
}

void tst_KXBrushSettings::itMovesItselfOntoTheScreen()
{
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    Popup popup;
    popup.settings.move(screen.bottomRight() - QPoint(20, 20));
    popup.Show();
    QVERIFY(screen.contains(popup.settings.frameGeometry()));
}

void tst_KXBrushSettings::itStaysUnderItsOwnDialog()
{
    Popup popup;
    popup.Show();
    BlockWatch watch;
    popup.settings.installEventFilter(&watch);

    ModalDriver driver(
        [&](QWidget* dialog)
        {
            QVERIFY(popup.settings.isVisible());
            QCOMPARE(dialog->parentWidget(), &popup.settings);
            ModalDriver::PressKey(dialog, Qt::Key_Escape);
        });
    QTest::mouseClick(popup.Button("Save preset..."), Qt::LeftButton);

    QVERIFY(driver.Finished());
    QVERIFY(popup.settings.isVisible());
    QCOMPARE(watch.seen, QVector<QEvent::Type>({QEvent::WindowBlocked, QEvent::WindowUnblocked}));
}

void tst_KXBrushSettings::itMayBeDestroyedUnderItsDialog_data()
{
    QTest::addColumn<QString>("button");
    QTest::newRow("saving") << "Save preset...";
    QTest::newRow("renaming") << "Rename...";
    QTest::newRow("deleting") << "Delete";
}

void tst_KXBrushSettings::itMayBeDestroyedUnderItsDialog()
{
    QFETCH(QString, button);
    QByteArray presets;
    {
        Popup source;
        source.Show();
        savePreset(source, "Mine");
        presets = source.settings.SavePresets();
    }
    auto popup = std::make_unique<KXBrushSettings>(nullptr);
    QVERIFY(popup->RestorePresets(presets));
    popup->SetCurrentPreset(popup->GetPresetNames().size() - 1);
    popup->show();
    QVERIFY(QTest::qWaitForWindowExposed(popup.get()));

    // Queued, since the button, too, goes with the popup.
    ModalDriver driver([&](QWidget*) { popup.reset(); });
    QMetaObject::invokeMethod(buttonOf(*popup, button), &QAbstractButton::click, Qt::QueuedConnection);

    QTRY_VERIFY(!popup);
    QTRY_VERIFY(driver.Finished());
}

void tst_KXBrushSettings::everyControlHasAName()
{
    Popup popup;
    popup.Show();
    int controls = 0;
    for (QWidget* widget : popup.settings.findChildren<QWidget*>())
    {
        if (widget->focusPolicy() == Qt::NoFocus || widget->focusProxy() ||
            qobject_cast<QLineEdit*>(widget) || !widget->isVisible())
            continue;
        ++controls;
        QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(widget);
        QVERIFY(accessible);
        QVERIFY2(!accessible->text(QAccessible::Name).isEmpty(), widget->metaObject()->className());
    }
    QVERIFY2(controls >= 23, qPrintable(QString::number(controls)));
}

void tst_KXBrushSettings::theTabKeyReachesAllControls()
{
    Popup popup;
    popup.Show();
    QSet<QWidget*> reached;
    for (int i = 0; i < 60; ++i)
    {
        reached.insert(QApplication::focusWidget());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }

    for (const char* name : {"Size", "Spacing", "Opacity", "Hardness", "Roundness", "Angle"})
    {
        QVERIFY2(reached.contains(popup.Named<QSlider>(name)), name);
        QVERIFY2(reached.contains(popup.Named<QSpinBox>(name)), name);
    }
    QVERIFY(reached.contains(popup.Named<QComboBox>("Shape")));
    QVERIFY(reached.contains(popup.List()));
    QVERIFY(reached.contains(popup.Button("Save preset...")));
    QVERIFY(reached.contains(popup.Check(KXBrushSettings::DynamicScatter)));
}

void tst_KXBrushSettings::itIsMadeCheaply()
{
    KXBrushSettings settings(nullptr);
    settings.SetSize(100);
    settings.SetCurrentPreset(3);
    settings.EnableDynamicProperty(KXBrushSettings::DynamicColor, false);
    QVERIFY(settings.findChildren<QWidget*>().isEmpty());
}

NV_TEST_MAIN(tst_KXBrushSettings)
#include "tst_KXBrushSettings.moc"
