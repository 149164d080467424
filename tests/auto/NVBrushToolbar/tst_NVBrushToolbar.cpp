// The option bar of the paint brush: its form, its values, its two popups and its keys.

#include <QAbstractItemView>
#include <QComboBox>
#include <QCursor>
#include <QFrame>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QProcess>
#include <QPushButton>
#include <QScreen>
#include <QTranslator>
#include <QtTest>

#include "IBrush.h"
#include "KXBrushSettings.h"
#include "KXCommonComboBox.h"
#include "NVApplication.h"
#include "NVBrushToolbar.h"
#include "NVIconHelper.h"
#include "NVSpinBox.h"
#include "PatternSelectWidget.h"
#include "PopupDriver.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

const QStringList BlendModes{"Normal",      "Multiply",       "Screen",        "Overlay",    "Difference",
                             "Exclusion",   "Lighten colors", "Darken colors", "Soft light", "Hard light",
                             "Color dodge", "Color burn",     "Addition"};

const QStringList FillModes{"Color",    "Pattern",          "Pattern+Color",
                            "Gradient", "Pattern+Gradient", "Random Color"};

// A brush that remembers the colour it was asked for.
class ColorBrush : public IBrush
{
public:
    QIcon& GetColoredIcon(const QColor& color) override
    {
        asked << color;
        QPixmap pixmap(16, 16);
        pixmap.fill(color);
        m_icon = QIcon(pixmap);
        return m_icon;
    }
    QString GetName() const override { return QStringLiteral("Test"); }
    BrushTip GetTip() const override { return {}; }

    QList<QColor> asked;

private:
    QIcon m_icon;
};

// A bar in a window with room around it, and a second control to click on.
struct Window
{
    Window()
    {
        window.resize(780, 300);
        bar = new NVBrushToolbar(&window);
        bar->setGeometry(0, 0, 780, 42);
        canvas = new QWidget(&window);
        canvas->setFocusPolicy(Qt::StrongFocus);
        canvas->setGeometry(0, 250, 780, 50);
    }
    bool Show()
    {
        window.show();
        canvas->setFocus();
        return QTest::qWaitForWindowActive(&window);
    }
    template <class T>
    T* Find(const char* name) const
    {
        T* control = bar->findChild<T*>(name);
        if (!control)
            qFatal("no control %s", name);
        return control;
    }
    NVSpinBox* Size() const { return Find<NVSpinBox>("m_pSizeSpn"); }
    NVSpinBox* Spacing() const { return Find<NVSpinBox>("m_pSpacingSpn"); }
    NVSpinBox* Opacity() const { return Find<NVSpinBox>("m_pOpacitySpn"); }
    KXCommonComboBox* Fill() const { return Find<KXCommonComboBox>("m_pFillModeCombo"); }
    KXCommonComboBox* Blend() const { return Find<KXCommonComboBox>("m_pBlendCombo"); }
    QPushButton* BrushButton() const { return Find<QPushButton>("m_pSelectBrushBtn"); }
    QPushButton* PatternButton() const { return Find<QPushButton>("m_pSelectPatternBtn"); }

    QWidget window;
    NVBrushToolbar* bar = nullptr;
    QWidget* canvas = nullptr;
};

QStringList Texts(const QComboBox* list)
{
    QStringList texts;
    for (int i = 0; i < list->count(); ++i)
        texts << list->itemText(i);
    return texts;
}

void ClickTile(const PatternSelectWidget* patterns, int index, bool twice)
{
    auto* tiles = patterns->findChild<QAbstractItemView*>();
    const QPoint place = tiles->visualRect(tiles->model()->index(index, 0)).center();
    QTest::mouseClick(tiles->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    if (twice)
    {
        QTest::mouseDClick(tiles->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    }
}

QColor IconColor(const QAbstractButton* button)
{
    const QImage image = button->icon().pixmap(16, 16).toImage();
    return image.pixelColor(image.rect().center());
}

} // namespace

class tst_NVBrushToolbar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();

    void formHasItsTitleNameAndLayout();
    void controlsAndGapsStandInTheirOrder();
    void separatorsAreThinRaisedPanels();
    void pictureIsShownInFortyPixels();
    void pictureIsThatOfTheScreensDensity();
    void captionIsTheBuddyOfItsBox_data();
    void captionIsTheBuddyOfItsBox();
    void numberBoxHasItsRangeDefaultAndSuffix_data();
    void numberBoxHasItsRangeDefaultAndSuffix();
    void popupButtonIsCheckableAndSmall_data();
    void popupButtonIsCheckableAndSmall();
    void listHasItsTextsAndWidth_data();
    void listHasItsTextsAndWidth();
    void valuesFollowOneAnotherInTheTabOrder();
    void textsAreTranslatedUnderTheFormsName();

    void startsWithDefaults();
    void setterClampsAndEmitsOnceAChange_data();
    void setterClampsAndEmitsOnceAChange();
    void typingEmitsEachValueAsItIsReached();
    void settingsPopupFollowsTheBar();
    void barFollowsTheSettingsPopup();
    void settingsPopupIsTiedTwice();
    void styleIsClampedToTheLastEntry_data();
    void styleIsClampedToTheLastEntry();
    void styleWithoutSelectionIsReportedAsZero();
    void blendModeOutOfRangeLeavesNoSelection_data();
    void blendModeOutOfRangeLeavesNoSelection();
    void steppingWrapsRound();
    void steppingFromNoSelection();
    void disabledListIgnoresKeysAndSetters();
    void listsHaveNoSignal();
    void keysChangeTheValues();

    void brushButtonHasNoIconAtFirst();
    void brushIconFollowsTheTheme_data();
    void brushIconFollowsTheTheme();
    void changedBrushParameterRedrawsTheIcon();
    void missingBrushLeavesTheIcon();
    void patternButtonShowsTheCurrentPatternFromTheStart();
    void patternButtonFollowsTheSelection();
    void patternIconFadesOnADisabledButton();
    void patternWithoutImageLeavesTheIcon();

    void popupOpensBelowItsButton_data();
    void popupOpensBelowItsButton();
    void popupTakesTheFocus_data();
    void popupTakesTheFocus();
    void popupIsRaisedActivatedAndFocused_data();
    void popupIsRaisedActivatedAndFocused();
    void barLooksAtThePopupOnlyOnceItIsShown_data();
    void barLooksAtThePopupOnlyOnceItIsShown();
    void clickOnTheCheckedButtonClosesOnce_data();
    void clickOnTheCheckedButtonClosesOnce();
    void clickElsewhereClosesAndUnchecks_data();
    void clickElsewhereClosesAndUnchecks();
    void hidingByOthersUnchecks_data();
    void hidingByOthersUnchecks();
    void deactivationUnderAnUncheckedButtonHides();
    void uncheckingByCodeCloses_data();
    void uncheckingByCodeCloses();
    void filterIsGoneWhileThePopupIsHidden();
    void modalWindowOverTheSettingsPopupLeavesItOpen();
    void modalWindowOverThePatternPopupClosesIt();
    void unblockingDoesNotRaiseTheSettingsPopup();
    void singleClickOnAPatternSelectsItAndLeavesThePopupOpen();
    void doubleClickOnAPatternSelectsItAndClosesThePopup();
    void indexOfADoubleClickIsNotLookedAt();
    void eventsOfOtherPopupsLeaveTheButtons();
    void noEventIsHeldBackByTheFilter();
    void settingsPopupHiddenWhileBlockedStaysBlocked();
    void blockedSettingsPopupDoesNotKeepThePatternsOpen();

    void barDiesWithAnOpenPopup_data();
    void barDiesWithAnOpenPopup();
    void barDiesWithAnUnfinishedSumInItsFocusedBox();
};

void tst_NVBrushToolbar::cleanup()
{
    NVApplication::GetInstance()->SetTheme(0);
    NVApplication::GetInstance()->SetTexturePatternIndex(0);
}

void tst_NVBrushToolbar::formHasItsTitleNameAndLayout()
{
    const NVBrushToolbar bar(nullptr);

    QCOMPARE(bar.objectName(), QString("BrushToolBar"));
    QCOMPARE(bar.windowTitle(), QString("Brush toolbar"));
    auto* grid = qobject_cast<QGridLayout*>(bar.layout());
    QVERIFY(grid);
    QCOMPARE(grid->objectName(), QString("gridLayout"));
    QCOMPARE(grid->contentsMargins(), QMargins());
    auto* row = qobject_cast<QHBoxLayout*>(grid->itemAtPosition(0, 0)->layout());
    QVERIFY(row);
    QCOMPARE(row->objectName(), QString("horizontalLayout"));
    QCOMPARE(row->spacing(), 2);
}

void tst_NVBrushToolbar::controlsAndGapsStandInTheirOrder()
{
    const NVBrushToolbar bar(nullptr);
    const auto* row = bar.findChild<QHBoxLayout*>("horizontalLayout");

    QStringList names;
    for (int i = 0; i < row->count() - 1; ++i)
    {
        if (const QSpacerItem* gap = row->itemAt(i)->spacerItem())
        {
            QCOMPARE(gap->sizeHint(), QSize(6, 20));
            QCOMPARE(gap->sizePolicy().horizontalPolicy(), QSizePolicy::Fixed);
            QCOMPARE(gap->sizePolicy().verticalPolicy(), QSizePolicy::Minimum);
            names << "-";
        }
        else
        {
            names << row->itemAt(i)->widget()->objectName();
        }
    }

    QCOMPARE(names,
             QStringList({"m_pPictureLabelMain",
                          "-",
                          "frame_3",
                          "-",
                          "m_pSelectBrushBtn",
                          "-",
                          "m_pPictureLabelUn",
                          "m_pSizeSpn",
                          "-",
                          "m_pPictureLabelSpacing",
                          "m_pSpacingSpn",
                          "-",
                          "m_pPictureLabelPressure",
                          "m_pOpacitySpn",
                          "-",
                          "frame_2",
                          "-",
                          "m_pSelectPatternBtn",
                          "-",
                          "m_pFillModeCombo",
                          "-",
                          "m_pBlendCombo",
                          "-",
                          "frame_6"}));
    const QSpacerItem* end = row->itemAt(row->count() - 1)->spacerItem();
    QVERIFY(end);
    QCOMPARE(end->sizeHint(), QSize(0, 0));
    QCOMPARE(end->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    QCOMPARE(end->sizePolicy().verticalPolicy(), QSizePolicy::Minimum);
}

void tst_NVBrushToolbar::separatorsAreThinRaisedPanels()
{
    const NVBrushToolbar bar(nullptr);

    for (const char* name : {"frame_2", "frame_3", "frame_6"})
    {
        const auto* frame = bar.findChild<QFrame*>(name);
        QVERIFY2(frame, name);
        QCOMPARE(frame->minimumWidth(), 1);
        QCOMPARE(frame->maximumWidth(), 1);
        QCOMPARE(frame->maximumHeight(), QWIDGETSIZE_MAX);
        QCOMPARE(frame->frameShape(), QFrame::StyledPanel);
        QCOMPARE(frame->frameShadow(), QFrame::Raised);
    }
}

void tst_NVBrushToolbar::pictureIsShownInFortyPixels()
{
    const NVBrushToolbar bar(nullptr);
    const auto* label = bar.findChild<QLabel*>("m_pPictureLabelMain");

    QCOMPARE(label->minimumSize(), QSize(40, 40));
    QCOMPARE(label->maximumSize(), QSize(40, 40));
    QCOMPARE(label->text(), QString());
    QCOMPARE(label->alignment(), Qt::Alignment(Qt::AlignCenter));
    const QPixmap picture = label->pixmap(Qt::ReturnByValue);
    QVERIFY(!picture.isNull());
    QVERIFY(picture.width() / picture.devicePixelRatioF() <= 40);
    QCOMPARE(picture.toImage(), QPixmap("theme:tool-bar-brush.png").toImage());
}

void tst_NVBrushToolbar::pictureIsThatOfTheScreensDensity()
{
    const QByteArray child = "NORVANE_TEST_DENSE_SCREEN";
    if (qEnvironmentVariableIsSet(child))
    {
        const NVBrushToolbar bar(nullptr);
        const QPixmap picture = bar.findChild<QLabel*>("m_pPictureLabelMain")->pixmap(Qt::ReturnByValue);
        QCOMPARE(picture.toImage(), QPixmap("theme:tool-bar-brush@2x.png").toImage());
        QCOMPARE(picture.devicePixelRatioF(), 2.0);
        return;
    }
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_SCALE_FACTOR", "2");
    environment.insert(child, "1");
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);

    process.start(QCoreApplication::applicationFilePath(), {"pictureIsThatOfTheScreensDensity"});

    QVERIFY(process.waitForFinished(60000));
    QVERIFY2(process.exitCode() == 0, process.readAll().constData());
}

void tst_NVBrushToolbar::captionIsTheBuddyOfItsBox_data()
{
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("box");

    QTest::newRow("size") << "m_pPictureLabelUn"
                          << "Size:"
                          << "m_pSizeSpn";
    QTest::newRow("spacing") << "m_pPictureLabelSpacing"
                             << "Spacing:"
                             << "m_pSpacingSpn";
    QTest::newRow("opacity") << "m_pPictureLabelPressure"
                             << "Opacity:"
                             << "m_pOpacitySpn";
}

void tst_NVBrushToolbar::captionIsTheBuddyOfItsBox()
{
    QFETCH(const QString, caption);
    QFETCH(const QString, text);
    QFETCH(const QString, box);
    const NVBrushToolbar bar(nullptr);
    const auto* label = bar.findChild<QLabel*>(caption);

    QVERIFY(label);
    QCOMPARE(label->text(), text);
    QCOMPARE(label->minimumHeight(), 24);
    QCOMPARE(label->maximumHeight(), 24);
    QCOMPARE(label->alignment(), Qt::AlignRight | Qt::AlignTrailing | Qt::AlignVCenter);
    QVERIFY(label->buddy());
    QCOMPARE(label->buddy()->objectName(), box);
}

void tst_NVBrushToolbar::numberBoxHasItsRangeDefaultAndSuffix_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("minimum");
    QTest::addColumn<int>("maximum");
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QString>("tooltip");

    QTest::newRow("size") << "m_pSizeSpn" << 1 << 2500 << 1 << " px" << QString();
    QTest::newRow("spacing") << "m_pSpacingSpn" << 1 << 1000 << 1 << "%"
                             << "Set brush spacing";
    QTest::newRow("opacity") << "m_pOpacitySpn" << 0 << 100 << 100 << "%" << QString();
}

void tst_NVBrushToolbar::numberBoxHasItsRangeDefaultAndSuffix()
{
    QFETCH(const QString, name);
    QFETCH(const QString, suffix);
    QFETCH(const QString, tooltip);
    const NVBrushToolbar bar(nullptr);
    const auto* box = bar.findChild<NVSpinBox*>(name);

    QVERIFY(box);
    QTEST(box->minimum(), "minimum");
    QTEST(box->maximum(), "maximum");
    QTEST(box->value(), "value");
    QCOMPARE(box->suffix(), suffix);
    QCOMPARE(box->toolTip(), tooltip);
    QCOMPARE(box->singleStep(), 1);
    QCOMPARE(box->focusPolicy(), Qt::ClickFocus);
}

void tst_NVBrushToolbar::popupButtonIsCheckableAndSmall_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("tooltip");

    QTest::newRow("brush") << "m_pSelectBrushBtn"
                           << "Brush Parameters Window";
    QTest::newRow("pattern") << "m_pSelectPatternBtn"
                             << "Texture Window";
}

void tst_NVBrushToolbar::popupButtonIsCheckableAndSmall()
{
    QFETCH(const QString, name);
    QFETCH(const QString, tooltip);
    const NVBrushToolbar bar(nullptr);
    const auto* button = bar.findChild<QPushButton*>(name);

    QVERIFY(button);
    QVERIFY(button->isCheckable());
    QVERIFY(!button->isChecked());
    QCOMPARE(button->minimumSize(), QSize(24, 24));
    QCOMPARE(button->maximumSize(), QSize(24, 24));
    QCOMPARE(button->focusPolicy(), Qt::NoFocus);
    QCOMPARE(button->text(), QString());
    QCOMPARE(button->toolTip(), tooltip);
    QCOMPARE(button->accessibleName(), tooltip);
}

void tst_NVBrushToolbar::listHasItsTextsAndWidth_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("tooltip");
    QTest::addColumn<int>("width");
    QTest::addColumn<QStringList>("texts");

    QTest::newRow("fill modes") << "m_pFillModeCombo"
                                << "Set Fill Mode" << 150 << FillModes;
    QTest::newRow("blend modes") << "m_pBlendCombo"
                                 << "Set Painting Mode" << 130 << BlendModes;
}

void tst_NVBrushToolbar::listHasItsTextsAndWidth()
{
    QFETCH(const QString, name);
    QFETCH(const QString, tooltip);
    QFETCH(const int, width);
    QFETCH(const QStringList, texts);
    const NVBrushToolbar bar(nullptr);
    const auto* list = bar.findChild<KXCommonComboBox*>(name);

    QVERIFY(list);
    QCOMPARE(Texts(list), texts);
    QCOMPARE(list->currentIndex(), 0);
    QCOMPARE(list->minimumWidth(), width);
    QCOMPARE(list->toolTip(), tooltip);
    QCOMPARE(list->accessibleName(), tooltip);
    QCOMPARE(list->focusPolicy(), Qt::NoFocus);
    if (texts == BlendModes)
        QCOMPARE(list->maxVisibleItems(), 30);
}

void tst_NVBrushToolbar::valuesFollowOneAnotherInTheTabOrder()
{
    const Window host;
    QStringList chain;
    const QWidget* widget = host.Size();
    do
    {
        if (QStringList({"m_pSizeSpn", "m_pSpacingSpn", "m_pOpacitySpn", "m_pFillModeCombo", "m_pBlendCombo"})
                .contains(widget->objectName()))
            chain << widget->objectName();
        widget = widget->nextInFocusChain();
    } while (widget != host.Size());

    QCOMPARE(
        chain,
        QStringList({"m_pSizeSpn", "m_pSpacingSpn", "m_pOpacitySpn", "m_pFillModeCombo", "m_pBlendCombo"}));
}

void tst_NVBrushToolbar::textsAreTranslatedUnderTheFormsName()
{
    class Shouting : public QTranslator
    {
    public:
        QString translate(const char* context, const char* text, const char*, int) const override
        {
            return qstrcmp(context, "BrushToolBar") == 0 ? QString::fromUtf8(text).toUpper() : QString();
        }
        bool isEmpty() const override { return false; }
    } translator;
    QCoreApplication::installTranslator(&translator);
    const Window host;
    QCoreApplication::removeTranslator(&translator);

    const auto upper = [](const QStringList& texts) { return texts.join('|').toUpper().split('|'); };
    QCOMPARE(host.bar->windowTitle(), QString("BRUSH TOOLBAR"));
    QCOMPARE(Texts(host.Fill()), upper(FillModes));
    QCOMPARE(Texts(host.Blend()), upper(BlendModes));
    QStringList texts;
    for (const char* name : {"m_pPictureLabelUn", "m_pPictureLabelSpacing", "m_pPictureLabelPressure"})
        texts << host.Find<QLabel>(name)->text();
    for (const QSpinBox* box : {host.Size(), host.Spacing(), host.Opacity()})
        texts << box->suffix();
    for (const QWidget* widget : std::initializer_list<const QWidget*>{
             host.BrushButton(), host.PatternButton(), host.Spacing(), host.Fill(), host.Blend()})
        texts << widget->toolTip();
    QCOMPARE(texts,
             QStringList({"SIZE:", "SPACING:", "OPACITY:", " PX", "%", "%", "BRUSH PARAMETERS WINDOW",
                          "TEXTURE WINDOW", "SET BRUSH SPACING", "SET FILL MODE", "SET PAINTING MODE"}));
}

void tst_NVBrushToolbar::startsWithDefaults()
{
    const NVBrushToolbar bar(nullptr);

    QCOMPARE(bar.GetSize(), 1);
    QCOMPARE(bar.GetSpacing(), 1);
    QCOMPARE(bar.GetOpacity(), 100);
    QCOMPARE(bar.GetStyle(), 0);
    QCOMPARE(bar.GetBlendMode(), 0);
    QVERIFY(bar.GetPatterns());
}

using Setter = void (NVBrushToolbarWidget::*)(int);
Q_DECLARE_METATYPE(Setter)

void tst_NVBrushToolbar::setterClampsAndEmitsOnceAChange_data()
{
    QTest::addColumn<Setter>("setter");
    QTest::addColumn<QString>("box");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("kept");
    QTest::addColumn<QStringList>("signalled");

    const Setter size = &NVBrushToolbarWidget::SetSize;
    const Setter spacing = &NVBrushToolbarWidget::SetSpacing;
    const Setter opacity = &NVBrushToolbarWidget::SetOpacity;
    const int huge = std::numeric_limits<int>::max();
    const int least = std::numeric_limits<int>::min();
    QTest::newRow("size") << size << "m_pSizeSpn" << 300 << 300 << QStringList("SizeChanged(300)");
    QTest::newRow("size, largest") << size << "m_pSizeSpn" << 2500 << 2500
                                   << QStringList("SizeChanged(2500)");
    QTest::newRow("size, too large") << size << "m_pSizeSpn" << 2501 << 2500
                                     << QStringList("SizeChanged(2500)");
    QTest::newRow("size, huge") << size << "m_pSizeSpn" << huge << 2500 << QStringList("SizeChanged(2500)");
    QTest::newRow("size, too small") << size << "m_pSizeSpn" << 0 << 1 << QStringList();
    QTest::newRow("size, as it is") << size << "m_pSizeSpn" << 1 << 1 << QStringList();
    QTest::newRow("spacing") << spacing << "m_pSpacingSpn" << 25 << 25 << QStringList("SpacingChanged(25)");
    QTest::newRow("spacing, too large")
        << spacing << "m_pSpacingSpn" << 1001 << 1000 << QStringList("SpacingChanged(1000)");
    QTest::newRow("spacing, least") << spacing << "m_pSpacingSpn" << least << 1 << QStringList();
    QTest::newRow("opacity") << opacity << "m_pOpacitySpn" << 40 << 40 << QStringList("OpacityChanged(40)");
    QTest::newRow("opacity, none") << opacity << "m_pOpacitySpn" << 0 << 0
                                   << QStringList("OpacityChanged(0)");
    QTest::newRow("opacity, below") << opacity << "m_pOpacitySpn" << -1 << 0
                                    << QStringList("OpacityChanged(0)");
    QTest::newRow("opacity, above") << opacity << "m_pOpacitySpn" << 101 << 100 << QStringList();
}

void tst_NVBrushToolbar::setterClampsAndEmitsOnceAChange()
{
    QFETCH(const Setter, setter);
    QFETCH(const QString, box);
    QFETCH(const int, value);
    QFETCH(const int, kept);
    QFETCH(const QStringList, signalled);
    NVBrushToolbar bar(nullptr);
    SignalLog log(&bar);

    (bar.*setter)(value);
    (bar.*setter)(value);

    QCOMPARE(log.Entries(), signalled);
    QCOMPARE(bar.findChild<NVSpinBox*>(box)->value(), kept);
}

void tst_NVBrushToolbar::typingEmitsEachValueAsItIsReached()
{
    Window host;
    QVERIFY(host.Show());
    SignalLog log(host.bar);
    log.Watch(host.bar->GetBrushes(), "popup");

    QTest::mouseClick(host.Size()->findChild<QLineEdit*>(), Qt::LeftButton);
    host.Size()->selectAll();
    QTest::keyClicks(host.Size(), "120");

    // 1 is there already. The settings popup was tied to the bar before the log was.
    QCOMPARE(log.Entries(),
             QStringList(
                 {"popup.SizeChanged(12)", "SizeChanged(12)", "popup.SizeChanged(120)", "SizeChanged(120)"}));
    log.Clear();

    // The toolkit's number box tells its value once more on Enter; for the popup that is no change.
    QTest::keyClick(host.Size(), Qt::Key_Return);
    QCOMPARE(log.Entries(), QStringList({"SizeChanged(120)"}));
    log.Clear();

    QTest::keyClick(host.Size(), Qt::Key_Up);
    QCOMPARE(log.Entries(), QStringList({"popup.SizeChanged(121)", "SizeChanged(121)"}));
}

void tst_NVBrushToolbar::settingsPopupFollowsTheBar()
{
    NVBrushToolbar bar(nullptr);
    SignalLog log(bar.GetBrushes());

    bar.SetSize(40);
    bar.SetSpacing(50);
    bar.SetOpacity(60);

    // Each value is delivered twice, and the second time it is no change.
    QCOMPARE(log.Entries(), QStringList({"SizeChanged(40)", "SpacingChanged(50)", "OpacityChanged(60)"}));
    QCOMPARE(bar.GetBrushes()->GetSize(), 40);
    QCOMPARE(bar.GetBrushes()->GetSpacing(), 50);
    QCOMPARE(bar.GetBrushes()->GetOpacity(), 60);
}

void tst_NVBrushToolbar::barFollowsTheSettingsPopup()
{
    NVBrushToolbar bar(nullptr);
    SignalLog log(&bar);

    bar.GetBrushes()->SetSize(40);
    bar.GetBrushes()->SetSpacing(50);
    bar.GetBrushes()->SetOpacity(60);

    QCOMPARE(log.Entries(), QStringList({"SizeChanged(40)", "SpacingChanged(50)", "OpacityChanged(60)"}));
    QCOMPARE(bar.GetSize(), 40);
    QCOMPARE(bar.GetSpacing(), 50);
    QCOMPARE(bar.GetOpacity(), 60);
}

void tst_NVBrushToolbar::settingsPopupIsTiedTwice()
{
    class CountingBar : public NVBrushToolbar
    {
    public:
        using NVBrushToolbar::NVBrushToolbar;
        void SetSizeValue(int pixels) override
        {
            calls << QStringLiteral("size %1").arg(pixels);
            NVBrushToolbar::SetSizeValue(pixels);
        }
        void SetSpacingValue(int percent) override
        {
            calls << QStringLiteral("spacing %1").arg(percent);
            NVBrushToolbar::SetSpacingValue(percent);
        }
        void SetOpacityValue(int percent) override
        {
            calls << QStringLiteral("opacity %1").arg(percent);
            NVBrushToolbar::SetOpacityValue(percent);
        }
        QStringList calls;
    } bar(nullptr);

    bar.GetBrushes()->SetSize(33);
    bar.GetBrushes()->SetSpacing(44);
    bar.GetBrushes()->SetOpacity(55);

    QCOMPARE(bar.calls,
             QStringList({"size 33", "size 33", "spacing 44", "spacing 44", "opacity 55", "opacity 55"}));
}

void tst_NVBrushToolbar::styleIsClampedToTheLastEntry_data()
{
    QTest::addColumn<unsigned>("style");
    QTest::addColumn<int>("kept");

    for (unsigned style = 0; style < 6; ++style)
        QTest::addRow("%u", style) << style << int(style);
    QTest::newRow("first behind the end") << 6u << 5;
    QTest::newRow("99, Random Color") << 99u << 5;
    QTest::newRow("largest") << std::numeric_limits<unsigned>::max() << 5;
}

void tst_NVBrushToolbar::styleIsClampedToTheLastEntry()
{
    QFETCH(const unsigned, style);
    Window host;

    host.bar->SetStyle(style);

    QTEST(host.bar->GetStyle(), "kept");
    QCOMPARE(host.Fill()->currentText(), FillModes[host.bar->GetStyle()]);
}

void tst_NVBrushToolbar::styleWithoutSelectionIsReportedAsZero()
{
    Window host;
    host.bar->SetStyle(3);

    host.Fill()->setCurrentIndex(-1);

    QCOMPARE(host.bar->GetStyle(), 0);
}

void tst_NVBrushToolbar::blendModeOutOfRangeLeavesNoSelection_data()
{
    QTest::addColumn<int>("index");

    QTest::newRow("below") << -1;
    QTest::newRow("first behind the end") << 13;
    QTest::newRow("least") << std::numeric_limits<int>::min();
    QTest::newRow("largest") << std::numeric_limits<int>::max();
}

void tst_NVBrushToolbar::blendModeOutOfRangeLeavesNoSelection()
{
    QFETCH(const int, index);
    Window host;
    host.bar->SetBlendMode(4);

    host.bar->SetBlendMode(index);

    QCOMPARE(host.Blend()->currentIndex(), -1);
    QCOMPARE(host.bar->GetBlendMode(), 0);
}

void tst_NVBrushToolbar::steppingWrapsRound()
{
    NVBrushToolbar bar(nullptr);

    QList<int> forward;
    for (int i = 0; i < 13; ++i)
    {
        bar.NextBlendMode();
        forward << bar.GetBlendMode();
    }
    QCOMPARE(forward, QList<int>({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 0}));

    bar.PreviousBlendMode();
    QCOMPARE(bar.GetBlendMode(), 12);
    bar.PreviousBlendMode();
    QCOMPARE(bar.GetBlendMode(), 11);
}

void tst_NVBrushToolbar::steppingFromNoSelection()
{
    Window host;

    host.bar->SetBlendMode(-1);
    host.bar->NextBlendMode();
    QCOMPARE(host.Blend()->currentIndex(), 0);

    host.bar->SetBlendMode(-1);
    host.bar->PreviousBlendMode();
    QCOMPARE(host.Blend()->currentIndex(), 12);
}

void tst_NVBrushToolbar::disabledListIgnoresKeysAndSetters()
{
    Window host;
    QVERIFY(host.Show());
    host.bar->CreateShortcuts();
    host.bar->SetBlendMode(5);
    host.Blend()->setEnabled(false);

    host.bar->SetBlendMode(2);
    host.bar->NextBlendMode();
    host.bar->PreviousBlendMode();
    QTest::keyClick(host.canvas, Qt::Key_Plus, Qt::ShiftModifier);
    QTest::keyClick(host.canvas, Qt::Key_Minus, Qt::ShiftModifier);
    for (const char key : {'N', 'M', 'S', 'O', 'E', 'X', 'G', 'K', 'F', 'H', 'D', 'B'})
        QTest::keyClick(host.canvas, Qt::Key(key), Qt::AltModifier | Qt::ShiftModifier);

    QCOMPARE(host.bar->GetBlendMode(), 5);
}

void tst_NVBrushToolbar::listsHaveNoSignal()
{
    NVBrushToolbar bar(nullptr);
    SignalLog log(&bar);

    bar.SetStyle(3);
    bar.SetBlendMode(4);
    bar.NextBlendMode();

    QCOMPARE(log.Entries(), QStringList());
}

void tst_NVBrushToolbar::keysChangeTheValues()
{
    Window host;
    QVERIFY(host.Show());
    host.bar->CreateShortcuts();
    SignalLog log(host.bar);

    QTest::keyClick(host.canvas, Qt::Key_M, Qt::AltModifier | Qt::ShiftModifier);
    QCOMPARE(host.Blend()->currentText(), QString("Multiply"));
    QTest::keyClick(host.canvas, Qt::Key_Plus, Qt::ShiftModifier);
    QCOMPARE(host.Blend()->currentText(), QString("Screen"));
    QTest::keyClick(host.canvas, Qt::Key_Minus, Qt::ShiftModifier);
    QCOMPARE(host.Blend()->currentText(), QString("Multiply"));
    QTest::keyClick(host.canvas, Qt::Key_0);
    QTest::keyClick(host.canvas, Qt::Key_1);
    QTest::keyClick(host.canvas, Qt::Key_9);
    QTest::keyClick(host.canvas, Qt::Key_0);

    QCOMPARE(log.Entries(), QStringList({"OpacityChanged(10)", "OpacityChanged(90)", "OpacityChanged(100)"}));
    QCOMPARE(host.bar->GetBrushes()->GetOpacity(), 100);
}

void tst_NVBrushToolbar::brushButtonHasNoIconAtFirst()
{
    const Window host;

    QVERIFY(host.BrushButton()->icon().isNull());
}

void tst_NVBrushToolbar::brushIconFollowsTheTheme_data()
{
    QTest::addColumn<int>("theme");
    QTest::addColumn<QColor>("color");

    QTest::newRow("light") << 0 << QColor(Qt::black);
    QTest::newRow("dark") << 1 << QColor(Qt::white);
    QTest::newRow("high contrast") << 2 << QColor(Qt::black);
}

void tst_NVBrushToolbar::brushIconFollowsTheTheme()
{
    QFETCH(const int, theme);
    QFETCH(const QColor, color);
    const Window host;
    ColorBrush brush;
    NVApplication::GetInstance()->SetTheme(theme);

    Q_EMIT host.bar->GetBrushes()->CurrentBrushChanged(&brush);

    QCOMPARE(brush.asked, QList<QColor>({color}));
    QCOMPARE(IconColor(host.BrushButton()), color);
}

void tst_NVBrushToolbar::changedBrushParameterRedrawsTheIcon()
{
    const Window host;
    ColorBrush brush;

    Q_EMIT host.bar->GetBrushes()->BrushParameterChanged(&brush);
    Q_EMIT host.bar->GetBrushes()->BrushParameterChanged(&brush);

    QCOMPARE(brush.asked.size(), 2);
    QVERIFY(!host.BrushButton()->icon().isNull());
}

void tst_NVBrushToolbar::missingBrushLeavesTheIcon()
{
    const Window host;
    ColorBrush brush;
    Q_EMIT host.bar->GetBrushes()->CurrentBrushChanged(&brush);
    const qint64 icon = host.BrushButton()->icon().cacheKey();

    Q_EMIT host.bar->GetBrushes()->CurrentBrushChanged(nullptr);
    Q_EMIT host.bar->GetBrushes()->BrushParameterChanged(nullptr);

    QCOMPARE(host.BrushButton()->icon().cacheKey(), icon);
}

void tst_NVBrushToolbar::patternButtonShowsTheCurrentPatternFromTheStart()
{
    NVApplication::GetInstance()->SetTexturePatternIndex(3);
    const Window host;
    QImage tile;
    QVERIFY(host.bar->GetPatterns()->GetItemImage(3, tile));

    const QImage shown = host.PatternButton()->icon().pixmap(tile.size()).toImage();

    QCOMPARE(shown.convertToFormat(QImage::Format_ARGB32), tile.convertToFormat(QImage::Format_ARGB32));
}

void tst_NVBrushToolbar::patternButtonFollowsTheSelection()
{
    const Window host;
    const qint64 before = host.PatternButton()->icon().cacheKey();

    Q_EMIT host.bar->GetPatterns()->ItemSelected(5);

    QImage tile;
    QVERIFY(host.bar->GetPatterns()->GetItemImage(5, tile));
    const QImage shown = host.PatternButton()->icon().pixmap(tile.size()).toImage();
    QVERIFY(host.PatternButton()->icon().cacheKey() != before);
    QCOMPARE(shown.convertToFormat(QImage::Format_ARGB32), tile.convertToFormat(QImage::Format_ARGB32));
}

void tst_NVBrushToolbar::patternIconFadesOnADisabledButton()
{
    const Window host;
    QImage tile;
    for (const int pattern : {0, 5})
    {
        Q_EMIT host.bar->GetPatterns()->ItemSelected(pattern);
        QVERIFY(host.bar->GetPatterns()->GetItemImage(pattern, tile));
        const QIcon expected = NVIconHelper::DisabledIcon(QPixmap::fromImage(tile));
        QCOMPARE(host.PatternButton()->icon().pixmap(tile.size(), QIcon::Disabled).toImage(),
                 expected.pixmap(tile.size(), QIcon::Disabled).toImage());
    }
}

void tst_NVBrushToolbar::patternWithoutImageLeavesTheIcon()
{
    const Window host;
    const qint64 before = host.PatternButton()->icon().cacheKey();

    Q_EMIT host.bar->GetPatterns()->ItemSelected(-1);
    Q_EMIT host.bar->GetPatterns()->ItemSelected(100000);

    QVERIFY(!host.PatternButton()->icon().isNull());
    QCOMPARE(host.PatternButton()->icon().cacheKey(), before);
}

// The two popups behave alike in most things; the rows name them.
static void AddPopups()
{
    QTest::addColumn<bool>("settings");

    QTest::newRow("brush settings") << true;
    QTest::newRow("patterns") << false;
}

struct PopupWindow : Window
{
    PopupWindow()
    {
        QFETCH(const bool, settings);
        button = settings ? BrushButton() : PatternButton();
        popup = settings ? static_cast<QWidget*>(bar->GetBrushes()) : bar->GetPatterns();
    }
    QPushButton* button = nullptr;
    QWidget* popup = nullptr;
};

void tst_NVBrushToolbar::popupOpensBelowItsButton_data()
{
    AddPopups();
}

void tst_NVBrushToolbar::popupOpensBelowItsButton()
{
    PopupWindow host;
    QVERIFY(host.Show());
    // The place where the bar puts it is the first that it is moved to; afterwards it may have to move back
    // onto the screen.
    class Watcher : public QObject
    {
    public:
        bool eventFilter(QObject*, QEvent* event) override
        {
            if (event->type() == QEvent::Move && !moved)
            {
                moved = true;
                place = static_cast<QMoveEvent*>(event)->pos();
            }
            return false;
        }
        bool moved = false;
        QPoint place;
    } watcher;
    host.popup->installEventFilter(&watcher);
    PopupDriver driver(host.button, host.popup);

    QVERIFY(driver.Open());

    const QPoint corner = host.button->mapToGlobal(QPoint(0, 0));
    QVERIFY(watcher.moved);
    QCOMPARE(watcher.place, corner + QPoint(0, host.button->height() + 1));
    const QRect button(corner, host.button->size());
    QVERIFY(!host.popup->frameGeometry().intersects(button));
    QVERIFY(host.popup->screen()->availableGeometry().contains(host.popup->frameGeometry()));
    QVERIFY(driver.CloseByButton());
}

void tst_NVBrushToolbar::popupTakesTheFocus_data()
{
    AddPopups();
}

void tst_NVBrushToolbar::popupTakesTheFocus()
{
    PopupWindow host;
    QVERIFY(host.Show());
    PopupDriver driver(host.button, host.popup);

    QVERIFY(driver.Open());

    QVERIFY(host.button->isChecked());
    QCOMPARE(QApplication::activeWindow(), host.popup);
    QVERIFY(host.popup->hasFocus() || host.popup->isAncestorOf(QApplication::focusWidget()));
    QVERIFY(driver.CloseByButton());
    QVERIFY(!host.button->isChecked());
}

void tst_NVBrushToolbar::popupIsRaisedActivatedAndFocused_data()
{
    AddPopups();
}

void tst_NVBrushToolbar::popupIsRaisedActivatedAndFocused()
{
    class Raises : public QObject
    {
    public:
        bool eventFilter(QObject*, QEvent* event) override
        {
            count += event->type() == QEvent::ZOrderChange;
            return false;
        }
        int count = 0;
    } raises;
    PopupWindow host;
    QVERIFY(host.Show());
    // It comes to the front by no more than what the bar does.
    host.popup->setAttribute(Qt::WA_ShowWithoutActivating);
    host.popup->installEventFilter(&raises);
    host.popup->show();
    const int raisesOfShowing = raises.count;
    host.popup->hide();
    host.window.activateWindow();
    QTRY_COMPARE(QApplication::activeWindow(), &host.window);

    host.button->setChecked(true);

    QTRY_COMPARE(QApplication::activeWindow(), host.popup);
    QCOMPARE(raises.count, 2 * raisesOfShowing + 1);
    QVERIFY(host.popup->hasFocus() || host.popup->isAncestorOf(QApplication::focusWidget()));
    host.button->setChecked(false);
}

void tst_NVBrushToolbar::barLooksAtThePopupOnlyOnceItIsShown_data()
{
    AddPopups();
}

void tst_NVBrushToolbar::barLooksAtThePopupOnlyOnceItIsShown()
{
    class Deactivator : public QObject
    {
    public:
        bool eventFilter(QObject* object, QEvent* event) override
        {
            if (event->type() == QEvent::Show)
            {
                QEvent deactivate(QEvent::WindowDeactivate);
                QApplication::sendEvent(object, &deactivate);
                ++sent;
            }
            return false;
        }
        int sent = 0;
    } deactivator;
    PopupWindow host;
    QVERIFY(host.Show());
    QCursor::setPos(host.canvas->mapToGlobal(QPoint(5, 5)));
    host.popup->installEventFilter(&deactivator);

    host.button->setChecked(true);

    QCOMPARE(deactivator.sent, 1);
    QVERIFY(host.popup->isVisible());
    QVERIFY(host.button->isChecked());
    host.button->setChecked(false);
}

void tst_NVBrushToolbar::clickOnTheCheckedButtonClosesOnce_data()
{
    AddPopups();
}

void tst_NVBrushToolbar::clickOnTheCheckedButtonClosesOnce()
{
    PopupWindow host;
    QVERIFY(host.Show());
    PopupDriver driver(host.button, host.popup);
    QVERIFY(driver.Open());
    SignalLog log(host.button);

    QVERIFY(driver.CloseByButton());

    QCOMPARE(driver.ShowCount(), 1);
    QCOMPARE(driver.HideCount(), 1);
    QCOMPARE(log.Count("toggled"), 1);
    QVERIFY(!host.button->isChecked());
}

void tst_NVBrushToolbar::clickElsewhereClosesAndUnchecks_data()
{
    AddPopups();
}

void tst_NVBrushToolbar::clickElsewhereClosesAndUnchecks()
{
    PopupWindow host;
    QVERIFY(host.Show());
    PopupDriver driver(host.button, host.popup);
    QVERIFY(driver.Open());

    QVERIFY(driver.CloseByClickElsewhere(host.canvas));

    QVERIFY(!host.button->isChecked());
    QCOMPARE(driver.HideCount(), 1);
}

void tst_NVBrushToolbar::hidingByOthersUnchecks_data()
{
    AddPopups();
}

void tst_NVBrushToolbar::hidingByOthersUnchecks()
{
    PopupWindow host;
    QVERIFY(host.Show());
    PopupDriver driver(host.button, host.popup);
    QVERIFY(driver.Open());

    host.popup->hide();

    QVERIFY(!host.button->isChecked());
}

void tst_NVBrushToolbar::deactivationUnderAnUncheckedButtonHides()
{
    Window host;
    QVERIFY(host.Show());
    PopupDriver driver(host.BrushButton(), host.bar->GetBrushes());
    QVERIFY(driver.Open());
    QCursor::setPos(host.BrushButton()->mapToGlobal(host.BrushButton()->rect().center()));
    {
        // The popup stays while its button goes up unseen.
        const QSignalBlocker blocker(host.BrushButton());
        host.BrushButton()->setChecked(false);
    }

    QEvent deactivate(QEvent::WindowDeactivate);
    QApplication::sendEvent(host.bar->GetBrushes(), &deactivate);

    QVERIFY(!host.bar->GetBrushes()->isVisible());
}

void tst_NVBrushToolbar::uncheckingByCodeCloses_data()
{
    AddPopups();
}

void tst_NVBrushToolbar::uncheckingByCodeCloses()
{
    PopupWindow host;
    QVERIFY(host.Show());

    host.button->setChecked(true);
    QVERIFY(host.popup->isVisible());
    host.button->setChecked(false);

    QVERIFY(!host.popup->isVisible());
}

void tst_NVBrushToolbar::filterIsGoneWhileThePopupIsHidden()
{
    Window host;
    QVERIFY(host.Show());
    host.BrushButton()->setChecked(true);
    host.BrushButton()->setChecked(false);

    // Were the bar still looking, it would take the block to heart and leave the popup open below.
    QEvent blocked(QEvent::WindowBlocked);
    QApplication::sendEvent(host.bar->GetBrushes(), &blocked);
    PopupDriver driver(host.BrushButton(), host.bar->GetBrushes());
    QVERIFY(driver.Open());

    QVERIFY(driver.CloseByClickElsewhere(host.canvas));
}

void tst_NVBrushToolbar::modalWindowOverTheSettingsPopupLeavesItOpen()
{
    Window host;
    QVERIFY(host.Show());
    PopupDriver driver(host.BrushButton(), host.bar->GetBrushes());
    QVERIFY(driver.Open());
    QCursor::setPos(host.canvas->mapToGlobal(QPoint(5, 5)));

    {
        QWidget modal(host.bar->GetBrushes(), Qt::Dialog);
        modal.setWindowModality(Qt::ApplicationModal);
        modal.show();
        QTRY_COMPARE(QApplication::activeWindow(), &modal);
        QVERIFY(host.bar->GetBrushes()->isVisible());
        QVERIFY(host.BrushButton()->isChecked());
        modal.hide();
        host.bar->GetBrushes()->activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), host.bar->GetBrushes());
    }

    QVERIFY(host.bar->GetBrushes()->isVisible());
    QVERIFY(host.BrushButton()->isChecked());
    QVERIFY(driver.CloseByClickElsewhere(host.canvas));
}

void tst_NVBrushToolbar::modalWindowOverThePatternPopupClosesIt()
{
    Window host;
    QVERIFY(host.Show());
    PopupDriver driver(host.PatternButton(), host.bar->GetPatterns());
    QVERIFY(driver.Open());
    QCursor::setPos(host.canvas->mapToGlobal(QPoint(5, 5)));

    QWidget modal(host.bar->GetPatterns(), Qt::Dialog);
    modal.setWindowModality(Qt::ApplicationModal);
    modal.show();

    QTRY_VERIFY(!host.bar->GetPatterns()->isVisible());
    QVERIFY(!host.PatternButton()->isChecked());
}

void tst_NVBrushToolbar::unblockingDoesNotRaiseTheSettingsPopup()
{
    class Raises : public QObject
    {
    public:
        bool eventFilter(QObject*, QEvent* event) override
        {
            count += event->type() == QEvent::ZOrderChange;
            return false;
        }
        int count = 0;
    } raises;
    Window host;
    QVERIFY(host.Show());
    PopupDriver driver(host.BrushButton(), host.bar->GetBrushes());
    QVERIFY(driver.Open());
    host.bar->GetBrushes()->installEventFilter(&raises);

    QEvent blocked(QEvent::WindowBlocked);
    QApplication::sendEvent(host.bar->GetBrushes(), &blocked);
    QEvent unblocked(QEvent::WindowUnblocked);
    QApplication::sendEvent(host.bar->GetBrushes(), &unblocked);

    QCOMPARE(raises.count, 0);
    QVERIFY(driver.CloseByButton());
}

void tst_NVBrushToolbar::singleClickOnAPatternSelectsItAndLeavesThePopupOpen()
{
    Window host;
    QVERIFY(host.Show());
    PopupDriver driver(host.PatternButton(), host.bar->GetPatterns());
    QVERIFY(driver.Open());
    const qint64 before = host.PatternButton()->icon().cacheKey();

    ClickTile(host.bar->GetPatterns(), 2, false);

    QCOMPARE(host.bar->GetPatterns()->CurrentIndex(), 2);
    QVERIFY(host.PatternButton()->icon().cacheKey() != before);
    QVERIFY(host.bar->GetPatterns()->isVisible());
    QVERIFY(driver.CloseByButton());
}

void tst_NVBrushToolbar::doubleClickOnAPatternSelectsItAndClosesThePopup()
{
    Window host;
    QVERIFY(host.Show());
    PopupDriver driver(host.PatternButton(), host.bar->GetPatterns());
    QVERIFY(driver.Open());
    const qint64 before = host.PatternButton()->icon().cacheKey();

    ClickTile(host.bar->GetPatterns(), 2, true);

    QCOMPARE(host.bar->GetPatterns()->CurrentIndex(), 2);
    QVERIFY(host.PatternButton()->icon().cacheKey() != before);
    QVERIFY(!host.bar->GetPatterns()->isVisible());
    QVERIFY(!host.PatternButton()->isChecked());
}

void tst_NVBrushToolbar::indexOfADoubleClickIsNotLookedAt()
{
    Window host;
    QVERIFY(host.Show());
    PopupDriver driver(host.PatternButton(), host.bar->GetPatterns());
    QVERIFY(driver.Open());

    Q_EMIT host.bar->GetPatterns()->ItemDoubleClicked(-7);

    QVERIFY(!host.bar->GetPatterns()->isVisible());
    QVERIFY(!host.PatternButton()->isChecked());
}

void tst_NVBrushToolbar::noEventIsHeldBackByTheFilter()
{
    NVBrushToolbar bar(nullptr);
    QObject stranger;
    KXBrushSettings otherPopup(nullptr);

    for (QObject* object :
         {&stranger, static_cast<QObject*>(&otherPopup), static_cast<QObject*>(bar.GetBrushes()),
          static_cast<QObject*>(bar.GetPatterns())})
    {
        for (const QEvent::Type type : {QEvent::Hide, QEvent::WindowDeactivate, QEvent::WindowBlocked,
                                        QEvent::WindowUnblocked, QEvent::MouseButtonPress})
        {
            QEvent event(type);
            QVERIFY(!bar.eventFilter(object, &event));
        }
    }
}

void tst_NVBrushToolbar::eventsOfOtherPopupsLeaveTheButtons()
{
    Window host;
    KXBrushSettings otherSettings(nullptr);
    PatternSelectWidget otherPatterns(nullptr);
    const QSignalBlocker blockers[] = {QSignalBlocker(host.BrushButton()),
                                       QSignalBlocker(host.PatternButton())};
    host.BrushButton()->setChecked(true);
    host.PatternButton()->setChecked(true);

    QEvent hide(QEvent::Hide);
    host.bar->eventFilter(&otherSettings, &hide);
    host.bar->eventFilter(&otherPatterns, &hide);

    QVERIFY(host.BrushButton()->isChecked());
    QVERIFY(host.PatternButton()->isChecked());
}

void tst_NVBrushToolbar::settingsPopupHiddenWhileBlockedStaysBlocked()
{
    Window host;
    QVERIFY(host.Show());
    PopupDriver driver(host.BrushButton(), host.bar->GetBrushes());
    QVERIFY(driver.Open());
    QEvent blocked(QEvent::WindowBlocked);
    QApplication::sendEvent(host.bar->GetBrushes(), &blocked);
    host.BrushButton()->setChecked(false);

    // Nobody looks at a hidden popup, so the end of the block passes unseen.
    QEvent unblocked(QEvent::WindowUnblocked);
    QApplication::sendEvent(host.bar->GetBrushes(), &unblocked);
    QVERIFY(driver.Open());
    QCursor::setPos(host.canvas->mapToGlobal(QPoint(5, 5)));
    QEvent deactivate(QEvent::WindowDeactivate);
    QApplication::sendEvent(host.bar->GetBrushes(), &deactivate);

    QVERIFY(host.bar->GetBrushes()->isVisible());
    QApplication::sendEvent(host.bar->GetBrushes(), &unblocked);
    QVERIFY(driver.CloseByClickElsewhere(host.canvas));
}

void tst_NVBrushToolbar::blockedSettingsPopupDoesNotKeepThePatternsOpen()
{
    Window host;
    QVERIFY(host.Show());
    QCursor::setPos(host.canvas->mapToGlobal(QPoint(5, 5)));
    host.BrushButton()->setChecked(true);
    QEvent blocked(QEvent::WindowBlocked);
    QApplication::sendEvent(host.bar->GetBrushes(), &blocked);
    host.PatternButton()->setChecked(true);
    QVERIFY(host.bar->GetPatterns()->isVisible());

    QEvent deactivate(QEvent::WindowDeactivate);
    QApplication::sendEvent(host.bar->GetPatterns(), &deactivate);

    QVERIFY(!host.bar->GetPatterns()->isVisible());
    host.BrushButton()->setChecked(false);
}

void tst_NVBrushToolbar::barDiesWithAnOpenPopup_data()
{
    AddPopups();
}

void tst_NVBrushToolbar::barDiesWithAnOpenPopup()
{
    PopupWindow host;
    QVERIFY(host.Show());
    host.bar->CreateShortcuts();
    const QPointer<QWidget> popup = host.popup;
    host.button->setChecked(true);
    QVERIFY(QTest::qWaitForWindowActive(host.popup));

    delete host.bar;

    QVERIFY(!popup);
}

void tst_NVBrushToolbar::barDiesWithAnUnfinishedSumInItsFocusedBox()
{
    Window host;
    QVERIFY(host.Show());
    QTest::mouseClick(host.Size()->findChild<QLineEdit*>(), Qt::LeftButton);
    QVERIFY(host.Size()->hasFocus());
    host.Size()->selectAll();
    QTest::keyClicks(host.Size(), "12*");
    SignalLog log(host.bar);

    delete host.bar;

    QCOMPARE(log.Entries(), QStringList());
    QVERIFY(!QApplication::focusWidget() || host.window.isAncestorOf(QApplication::focusWidget()));
}

NV_TEST_MAIN(tst_NVBrushToolbar)
#include "tst_NVBrushToolbar.moc"
