// The option bar of the gradient tool: its form, its values, the preview on its button, and its popup.

#include <QAction>
#include <QCheckBox>
#include <QCursor>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QProcess>
#include <QPushButton>
#include <QToolButton>
#include <QTranslator>
#include <QtTest>

#include <memory>

#include "KXCommonComboBox.h"
#include "KXMdiArea.h"
#include "ModalDriver.h"
#include "NVGradientEditor.h"
#include "NVGradientPopup.h"
#include "NVGradientToolbar.h"
#include "NVSpinBox.h"
#include "PopupDriver.h"
#include "ProbeImage.h"
#include "SignalLog.h"
#include "TestMain.h"

using Gradient = QList<NVGradientStop>;
using GradientList = QList<Gradient>;

namespace
{

Gradient Made(const QColor& first, const QColor& last)
{
    return {NVGradientStop(0.0, first, false, false, false), NVGradientStop(1.0, last, false, false, false)};
}

const Gradient Grey = Made(Qt::black, Qt::white);
const Gradient Warm = Made(Qt::red, Qt::blue);
const Gradient Clear = Made(QColor(255, 0, 0, 0), QColor(255, 0, 0, 0));

const QStringList Types{"Linear gradient", "Circular gradient", "Diamond gradient", "Angle gradient"};

// A bar in a main window with room below, and a second control to click on.
struct Host
{
    Host()
    {
        window.resize(1500, 500);
        auto* content = new QWidget;
        window.setCentralWidget(content);
        area = new KXMdiArea(content);
        area->setGeometry(0, 300, 100, 100);
        bar = new NVGradientToolbar(content);
        bar->setGeometry(0, 0, 1500, 42);
        canvas = new QWidget(content);
        canvas->setFocusPolicy(Qt::StrongFocus);
        canvas->setGeometry(1000, 400, 400, 50);
        bar->Load({Grey, Warm, Clear});
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
    QToolButton* Button() const { return Find<QToolButton>("m_pGradients"); }
    NVGradientPopup* Popup() const { return bar->findChild<NVGradientPopup*>(); }
    QImage Icon() const { return Button()->icon().pixmap(148, 20).toImage(); }
    bool IsBlank() const
    {
        const QImage icon = Icon();
        QImage blank(icon.size(), icon.format());
        blank.fill(Qt::transparent);
        return !icon.isNull() && icon == blank;
    }

    QMainWindow window;
    KXMdiArea* area = nullptr;
    NVGradientToolbar* bar = nullptr;
    QWidget* canvas = nullptr;
};

QImage Picture(const QLabel* label)
{
    return label->pixmap(Qt::ReturnByValue).toImage();
}

} // namespace

class tst_NVGradientToolbar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void formHasItsNameAndLayout();
    void controlsAndGapsStandInTheirOrder();
    void separatorsAreThinRaisedPanels();
    void pictureIsShownInFortyPixels();
    void picturesAreThoseOfTheScreensDensity();
    void gradientButtonIsAsInTheForm();
    void operationButtonIsSmall_data();
    void operationButtonIsSmall();
    void captionIsTheBuddyOfItsBox_data();
    void captionIsTheBuddyOfItsBox();
    void numberBoxHasItsRange_data();
    void numberBoxHasItsRange();
    void listHasItsTexts_data();
    void listHasItsTexts();
    void checkBoxHasItsState_data();
    void checkBoxHasItsState();
    void typeIconIsScaledToItsBox();
    void textsAreTranslated();

    void startsWithDefaults();
    void setterTellsOnceAChange_data();
    void setterTellsOnceAChange();
    void handTellsOnceAChange();
    void typingTellsEachValue();
    void bothRowSettersAreTheSame();
    void listIsThatOfThePopup();
    void noGradientIsCurrentWithoutARow();
    void typeShowsItsPicture_data();
    void typeShowsItsPicture();
    void typeOutOfRangeKeepsThePicture();
    void fillingTheTypesAgainSelectsTheFirst();
    void operationButtonsShowAndTell();
    void pickerControlChangesNothing();

    void previewFollowsTheCurrentRow();
    void previewIsUpToDateWhenTheHostHears();
    void previewOfAnotherRowIsBlank();
    void previewRunsFromTheLeftAndIsCutOff();
    void previewShowsTheCheckerBehindClearStops();
    void previewLeavesAMargin();
    void reverseTurnsThePreviewFirst();
    void reverseWithoutARowStaysBlank();
    void loadOfAnEmptyListBlanksTheButton();
    void changedGradientOfTheSameRowIsNotShown();
    void previewIsSharpOnADenseScreen();

    void popupOpensUnderItsButton();
    void clickOnTheCheckedButtonClosesOnce();
    void clickElsewhereClosesAndUnchecks();
    void escapeHidesAndUnchecks();
    void hidingByOthersUnchecks();
    void deactivationOverTheCheckedButtonLeavesThePopup();
    void noEventIsHeldBackByTheFilter();
    void otherObjectsAreNotFollowed();
    void popupMakesRoomForTheEditorAndComesBack_data();
    void popupMakesRoomForTheEditorAndComesBack();
    void popupThatAsksToBeShownTogglesTheButton();
    void savedGradientIsOnTheButtonAtOnce_data();
    void savedGradientIsOnTheButtonAtOnce();
    void savingAnEmptyListLeavesTheOldPicture();

    void diesInAnyState_data();
    void diesInAnyState();
    void diesUnderTheEditor();
};

void tst_NVGradientToolbar::formHasItsNameAndLayout()
{
    const NVGradientToolbar bar(nullptr);

    QCOMPARE(bar.objectName(), QString("GradientToolBar"));
    QVERIFY(!bar.windowTitle().isEmpty());
    auto* grid = qobject_cast<QGridLayout*>(bar.layout());
    QVERIFY(grid);
    QCOMPARE(grid->objectName(), QString("gridLayout"));
    QCOMPARE(grid->contentsMargins(), QMargins());
    auto* row = qobject_cast<QHBoxLayout*>(grid->itemAtPosition(0, 0)->layout());
    QVERIFY(row);
    QCOMPARE(row->objectName(), QString("m_pGradientTBHLayout"));
    QCOMPARE(row->spacing(), 2);
    QCOMPARE(row->contentsMargins(), QMargins());
}

void tst_NVGradientToolbar::controlsAndGapsStandInTheirOrder()
{
    const NVGradientToolbar bar(nullptr);
    const auto* row = bar.findChild<QHBoxLayout*>("m_pGradientTBHLayout");

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

    QCOMPARE(
        names.join(' '),
        QString("m_pPicture - frame_4 - m_pGradients - m_pType - m_pPictureLabelPressure m_pOpacitySpn - "
                "m_pBlendMode - m_pTypeIcon - m_pGradientTBRepeatLabel m_pRepeatCount - m_pDrawOutside - "
                "m_pPingPong - m_pReverse - frame_5 - m_pCommit - m_pCancel"));
    const QSpacerItem* end = row->itemAt(row->count() - 1)->spacerItem();
    QVERIFY(end);
    QCOMPARE(end->sizeHint(), QSize(0, 0));
    QCOMPARE(end->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    QCOMPARE(end->sizePolicy().verticalPolicy(), QSizePolicy::Minimum);
}

void tst_NVGradientToolbar::separatorsAreThinRaisedPanels()
{
    const NVGradientToolbar bar(nullptr);

    for (const char* name : {"frame_4", "frame_5"})
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

void tst_NVGradientToolbar::pictureIsShownInFortyPixels()
{
    const NVGradientToolbar bar(nullptr);
    const auto* label = bar.findChild<QLabel*>("m_pPicture");

    QCOMPARE(label->minimumSize(), QSize(40, 40));
    QCOMPARE(label->maximumSize(), QSize(40, 40));
    QCOMPARE(label->text(), QString());
    QCOMPARE(label->alignment(), Qt::Alignment(Qt::AlignCenter));
    QVERIFY(!Picture(label).isNull());
    QCOMPARE(Picture(label), QPixmap("theme:linear_gradient.png").toImage());
}

void tst_NVGradientToolbar::picturesAreThoseOfTheScreensDensity()
{
    const QByteArray child = "NORVANE_TEST_DENSE_SCREEN";
    if (qEnvironmentVariableIsSet(child))
    {
        NVGradientToolbar bar(nullptr);
        bar.SetType(2);
        QCOMPARE(Picture(bar.findChild<QLabel*>("m_pPicture")),
                 QPixmap("theme:linear_gradient@2x.png").toImage());
        QCOMPARE(Picture(bar.findChild<QLabel*>("m_pTypeIcon")),
                 QPixmap("theme:rect_gradient@2x.png").toImage());
        return;
    }
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_SCALE_FACTOR", "2");
    environment.insert(child, "1");
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);

    process.start(QCoreApplication::applicationFilePath(),
                  {"picturesAreThoseOfTheScreensDensity", "previewIsSharpOnADenseScreen"});

    QVERIFY(process.waitForFinished(60000));
    QVERIFY2(process.exitCode() == 0, process.readAll().constData());
}

void tst_NVGradientToolbar::gradientButtonIsAsInTheForm()
{
    const Host host;
    const QToolButton* button = host.Button();

    QCOMPARE(button->toolTip(), QString("Gradient"));
    QCOMPARE(button->accessibleName(), QString("Gradient"));
    QCOMPARE(button->iconSize(), QSize(148, 20));
    QVERIFY(button->isCheckable());
    QVERIFY(button->autoExclusive());
    QVERIFY(!button->isChecked());
    QCOMPARE(button->popupMode(), QToolButton::InstantPopup);
    QCOMPARE(button->toolButtonStyle(), Qt::ToolButtonIconOnly);
    QCOMPARE(button->focusPolicy(), Qt::NoFocus);
}

void tst_NVGradientToolbar::operationButtonIsSmall_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("tooltip");
    QTest::addColumn<QString>("picture");

    QTest::newRow("commit") << QByteArray("m_pCommit") << "Apply changes"
                            << "theme:commit_btn1.png";
    QTest::newRow("cancel") << QByteArray("m_pCancel") << "Cancel changes"
                            << "theme:cancel_btn1.png";
}

void tst_NVGradientToolbar::operationButtonIsSmall()
{
    QFETCH(const QByteArray, name);
    QFETCH(const QString, tooltip);
    QFETCH(const QString, picture);
    const Host host;
    const auto* button = host.Find<QToolButton>(name);

    QCOMPARE(button->minimumSize(), QSize(24, 24));
    QCOMPARE(button->maximumSize(), QSize(24, 24));
    QCOMPARE(button->focusPolicy(), Qt::NoFocus);
    QCOMPARE(button->toolTip(), tooltip);
    QCOMPARE(button->accessibleName(), tooltip);
    QVERIFY(button->isHidden());
    const QImage shown = button->icon().pixmap(16, 16).toImage();
    QVERIFY(!shown.isNull());
    QCOMPARE(shown, QIcon(picture).pixmap(16, 16).toImage());
}

void tst_NVGradientToolbar::captionIsTheBuddyOfItsBox_data()
{
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("tooltip");
    QTest::addColumn<QString>("box");

    QTest::newRow("opacity") << "m_pPictureLabelPressure"
                             << "Opacity:" << QString() << "m_pOpacitySpn";
    QTest::newRow("repeat count") << "m_pGradientTBRepeatLabel"
                                  << "Repeat count:"
                                  << "Repeat count"
                                  << "m_pRepeatCount";
}

void tst_NVGradientToolbar::captionIsTheBuddyOfItsBox()
{
    QFETCH(const QString, caption);
    const NVGradientToolbar bar(nullptr);
    const auto* label = bar.findChild<QLabel*>(caption);

    QVERIFY(label);
    QTEST(label->text(), "text");
    QTEST(label->toolTip(), "tooltip");
    QCOMPARE(label->minimumHeight(), 24);
    QCOMPARE(label->maximumHeight(), 24);
    QCOMPARE(label->alignment(), Qt::AlignRight | Qt::AlignTrailing | Qt::AlignVCenter);
    QVERIFY(label->buddy());
    QTEST(label->buddy()->objectName(), "box");
}

void tst_NVGradientToolbar::numberBoxHasItsRange_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("minimum");
    QTest::addColumn<int>("maximum");
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("suffix");

    QTest::newRow("opacity") << "m_pOpacitySpn" << 0 << 100 << 100 << "%";
    // The form sets no maximum for this one.
    QTest::newRow("repeat count") << "m_pRepeatCount" << 1 << NVSpinBox().maximum() << 1 << "";
}

void tst_NVGradientToolbar::numberBoxHasItsRange()
{
    QFETCH(const QString, name);
    const NVGradientToolbar bar(nullptr);
    const auto* box = bar.findChild<NVSpinBox*>(name);

    QVERIFY(box);
    QTEST(box->minimum(), "minimum");
    QTEST(box->maximum(), "maximum");
    QTEST(box->value(), "value");
    QTEST(box->suffix(), "suffix");
    QCOMPARE(box->singleStep(), 1);
    QCOMPARE(box->focusPolicy(), Qt::ClickFocus);
    QCOMPARE(box->toolTip(), QString());
}

void tst_NVGradientToolbar::listHasItsTexts_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("tooltip");
    QTest::addColumn<int>("width");
    QTest::addColumn<QStringList>("texts");

    QTest::newRow("types") << "m_pType"
                           << "Gradient type" << 150 << Types;
    QTest::newRow("blend modes") << "m_pBlendMode"
                                 << "Set Painting Mode" << 170
                                 << QStringList({"Normal", "Multiply", "Screen", "Overlay", "Difference",
                                                 "Exclusion", "Lighten colors", "Darken colors", "Soft light",
                                                 "Hard light", "Color dodge", "Color burn", "Addition"});
}

void tst_NVGradientToolbar::listHasItsTexts()
{
    QFETCH(const QString, name);
    QFETCH(const QString, tooltip);
    const NVGradientToolbar bar(nullptr);
    const auto* list = bar.findChild<KXCommonComboBox*>(name);

    QVERIFY(list);
    QStringList texts;
    for (int i = 0; i < list->count(); ++i)
    {
        texts << list->itemText(i);
        QVERIFY(!list->itemData(i).isValid());
        QVERIFY(list->itemIcon(i).isNull());
    }
    QTEST(texts, "texts");
    QCOMPARE(list->currentIndex(), 0);
    QTEST(list->minimumWidth(), "width");
    QCOMPARE(list->toolTip(), tooltip);
    QCOMPARE(list->accessibleName(), tooltip);
    QCOMPARE(list->focusPolicy(), Qt::NoFocus);
    if (name == "m_pBlendMode")
        QCOMPARE(list->maxVisibleItems(), 30);
}

void tst_NVGradientToolbar::checkBoxHasItsState_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("tooltip");
    QTest::addColumn<bool>("checked");

    QTest::newRow("outside") << "m_pDrawOutside"
                             << "Draw outside"
                             << "Draw gradient outside selected area" << true;
    QTest::newRow("ping pong") << "m_pPingPong"
                               << "Ping pong" << QString() << false;
    QTest::newRow("reverse") << "m_pReverse"
                             << "Reverse" << QString() << false;
}

void tst_NVGradientToolbar::checkBoxHasItsState()
{
    QFETCH(const QString, name);
    const NVGradientToolbar bar(nullptr);
    const auto* box = bar.findChild<QCheckBox*>(name);

    QVERIFY(box);
    QTEST(box->text(), "text");
    QTEST(box->toolTip(), "tooltip");
    QTEST(box->isChecked(), "checked");
    QCOMPARE(box->focusPolicy(), Qt::NoFocus);
}

void tst_NVGradientToolbar::typeIconIsScaledToItsBox()
{
    const Host host;
    const auto* icon = host.Find<QLabel>("m_pTypeIcon");

    QCOMPARE(icon->minimumSize(), QSize(24, 24));
    QCOMPARE(icon->maximumSize(), QSize(24, 24));
    QVERIFY(icon->hasScaledContents());
    QCOMPARE(Picture(icon), QPixmap("theme:linear_gradient.png").toImage());
}

void tst_NVGradientToolbar::textsAreTranslated()
{
    class Shouting : public QTranslator
    {
    public:
        QString translate(const char* context, const char* text, const char*, int) const override
        {
            const bool own =
                qstrcmp(context, "GradientToolBar") == 0 || qstrcmp(context, "NVGradientToolbar") == 0;
            return own ? QString::fromUtf8(text).toUpper() : QString();
        }
        bool isEmpty() const override { return false; }
    } translator;
    QCoreApplication::installTranslator(&translator);
    const Host host;
    QCoreApplication::removeTranslator(&translator);

    QCOMPARE(host.Find<QComboBox>("m_pType")->itemText(3), QString("ANGLE GRADIENT"));
    QCOMPARE(host.Find<QComboBox>("m_pBlendMode")->itemText(12), QString("ADDITION"));
    QCOMPARE(host.Find<QCheckBox>("m_pPingPong")->text(), QString("PING PONG"));
    QCOMPARE(host.Find<QLabel>("m_pGradientTBRepeatLabel")->text(), QString("REPEAT COUNT:"));
    QCOMPARE(host.Find<QToolButton>("m_pCommit")->toolTip(), QString("APPLY CHANGES"));
}

void tst_NVGradientToolbar::startsWithDefaults()
{
    const NVGradientToolbar bar(nullptr);

    QCOMPARE(bar.GetCurrentGradientIndex(), -1);
    QCOMPARE(bar.GetGradientCount(), 0);
    QCOMPARE(bar.GetType(), 0);
    QCOMPARE(bar.GetStyle(), false);
    QCOMPARE(bar.GetRepeatCount(), 1);
    QCOMPARE(bar.GetBlendMode(), 0);
    QCOMPARE(bar.GetOpacity(), 100);
    QCOMPARE(bar.IsOutside(), true);
    QCOMPARE(bar.IsReverse(), false);
    QVERIFY(!bar.IsPopupVisible());
}

// What is set, asked for and told, each as a number.
struct Value
{
    std::function<void(NVGradientToolbar*, int)> set;
    std::function<int(const NVGradientToolbar*)> get;
};
Q_DECLARE_METATYPE(Value)

void tst_NVGradientToolbar::setterTellsOnceAChange_data()
{
    using Bar = NVGradientToolbar;
    QTest::addColumn<Value>("value");
    QTest::addColumn<int>("given");
    QTest::addColumn<int>("kept");
    QTest::addColumn<QStringList>("told");

    const Value row{[](Bar* bar, int v) { bar->SetCurrentGradientIndex(v); },
                    [](const Bar* bar) { return bar->GetCurrentGradientIndex(); }};
    const Value type{[](Bar* bar, int v) { bar->SetType(v); }, [](const Bar* bar) { return bar->GetType(); }};
    const Value style{[](Bar* bar, int v) { bar->SetStyle(v != 0); },
                      [](const Bar* bar) { return int(bar->GetStyle()); }};
    const Value repeat{[](Bar* bar, int v) { bar->SetRepeatCount(v); },
                       [](const Bar* bar) { return bar->GetRepeatCount(); }};
    const Value blend{[](Bar* bar, int v) { bar->SetBlendMode(v); },
                      [](const Bar* bar) { return bar->GetBlendMode(); }};
    const Value outside{[](Bar* bar, int v) { bar->SetOutside(v != 0); },
                        [](const Bar* bar) { return int(bar->IsOutside()); }};
    const Value opacity{[](Bar* bar, int v) { bar->SetOpacity(v); },
                        [](const Bar* bar) { return bar->GetOpacity(); }};
    const Value reverse{[](Bar* bar, int v) { bar->SetReverse(v != 0); },
                        [](const Bar* bar) { return int(bar->IsReverse()); }};
    const int most = NVSpinBox().maximum();

    QTest::newRow("row") << row << 1 << 1 << QStringList("GradientIndexChanged(1)");
    QTest::newRow("row, as it is") << row << 0 << 0 << QStringList();
    QTest::newRow("row, none") << row << -1 << -1 << QStringList("GradientIndexChanged(-1)");
    QTest::newRow("row, behind") << row << 3 << -1 << QStringList("GradientIndexChanged(-1)");
    QTest::newRow("type") << type << 3 << 3 << QStringList("TypeChanged(3)");
    QTest::newRow("type, as it is") << type << 0 << 0 << QStringList();
    QTest::newRow("type, behind") << type << 4 << -1 << QStringList("TypeChanged(-1)");
    QTest::newRow("style") << style << 1 << 1 << QStringList("StyleChanged(true)");
    QTest::newRow("style, as it is") << style << 0 << 0 << QStringList();
    QTest::newRow("repeat") << repeat << 7 << 7 << QStringList("RepeatCountChanged(7)");
    QTest::newRow("repeat, none") << repeat << 0 << 1 << QStringList();
    QTest::newRow("repeat, below") << repeat << -5 << 1 << QStringList();
    QTest::newRow("repeat, above") << repeat << most + 1 << most
                                   << QStringList(QString("RepeatCountChanged(%1)").arg(most));
    QTest::newRow("blend") << blend << 12 << 12 << QStringList("BlendModeChanged(12)");
    QTest::newRow("blend, behind") << blend << 13 << -1 << QStringList("BlendModeChanged(-1)");
    QTest::newRow("blend, none") << blend << -1 << -1 << QStringList("BlendModeChanged(-1)");
    QTest::newRow("outside") << outside << 0 << 0 << QStringList("OutsideChanged(false)");
    QTest::newRow("outside, as it is") << outside << 1 << 1 << QStringList();
    QTest::newRow("opacity") << opacity << 40 << 40 << QStringList("OpacityChanged(40)");
    QTest::newRow("opacity, below") << opacity << -1 << 0 << QStringList("OpacityChanged(0)");
    QTest::newRow("opacity, above") << opacity << 101 << 100 << QStringList();
    QTest::newRow("reverse") << reverse << 1 << 1 << QStringList("ReverseChanged(true)");
    QTest::newRow("reverse, as it is") << reverse << 0 << 0 << QStringList();
}

void tst_NVGradientToolbar::setterTellsOnceAChange()
{
    QFETCH(const Value, value);
    QFETCH(const int, given);
    QFETCH(const int, kept);
    const Host host;
    SignalLog log(host.bar);

    value.set(host.bar, given);
    value.set(host.bar, given);

    QTEST(log.Entries(), "told");
    QCOMPARE(value.get(host.bar), kept);
}

void tst_NVGradientToolbar::handTellsOnceAChange()
{
    Host host;
    QVERIFY(host.Show());
    SignalLog log(host.bar);

    for (const char* name : {"m_pDrawOutside", "m_pPingPong", "m_pReverse"})
        QTest::mouseClick(host.Find<QCheckBox>(name), Qt::LeftButton, {}, QPoint(8, 12));
    for (const char* name : {"m_pType", "m_pBlendMode"})
        QTest::keyClick(host.Find<QComboBox>(name), Qt::Key_Down);

    QCOMPARE(log.Entries(),
             QStringList({"OutsideChanged(false)", "StyleChanged(true)", "ReverseChanged(true)",
                          "TypeChanged(1)", "BlendModeChanged(1)"}));
    host.bar->SetOutside(false);
    host.bar->SetStyle(true);
    host.bar->SetReverse(true);
    host.bar->SetType(1);
    host.bar->SetBlendMode(1);
    QCOMPARE(log.Count(), 5);
    QVERIFY(host.canvas->hasFocus());
}

void tst_NVGradientToolbar::typingTellsEachValue()
{
    Host host;
    QVERIFY(host.Show());
    SignalLog log(host.bar);

    for (const char* name : {"m_pOpacitySpn", "m_pRepeatCount"})
    {
        auto* box = host.Find<NVSpinBox>(name);
        QTest::mouseClick(box->findChild<QLineEdit*>(), Qt::LeftButton);
        box->selectAll();
        QTest::keyClicks(box, "42");
    }

    QCOMPARE(log.Entries(),
             QStringList({"OpacityChanged(4)", "OpacityChanged(42)", "RepeatCountChanged(4)",
                          "RepeatCountChanged(42)"}));
    host.bar->SetOpacity(42);
    host.bar->SetRepeatCount(42);
    QCOMPARE(log.Count(), 4);
}

void tst_NVGradientToolbar::bothRowSettersAreTheSame()
{
    const Host host;
    SignalLog log(host.bar);

    host.bar->SetCurrentGradient(2);
    host.bar->SetCurrentGradientIndex(2);
    host.bar->SetCurrentGradient(0);

    QCOMPARE(log.Entries(), QStringList({"GradientIndexChanged(2)", "GradientIndexChanged(0)"}));
}

void tst_NVGradientToolbar::listIsThatOfThePopup()
{
    const Host host;

    QCOMPARE(host.bar->GetGradientCount(), 3);
    QCOMPARE(host.bar->GetGradient(1), Warm);
    QCOMPARE(host.bar->GetCurrentGradient(), Grey);
    host.Popup()->SetCurrentIndex(1);
    QCOMPARE(host.bar->GetCurrentGradient(), Warm);
    QCOMPARE(host.bar->GetCurrentGradientIndex(), 1);
    host.Popup()->Load({Clear});
    QCOMPARE(host.bar->GetGradientCount(), 1);
}

void tst_NVGradientToolbar::noGradientIsCurrentWithoutARow()
{
    const Host host;
    host.bar->SetCurrentGradient(-1);

    QCOMPARE(host.bar->GetCurrentGradient(), Gradient());
    QCOMPARE(host.bar->GetGradient(3), Gradient());
}

void tst_NVGradientToolbar::typeShowsItsPicture_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("picture");
    QTest::newRow("linear") << 0 << "theme:linear_gradient.png";
    QTest::newRow("circular") << 1 << "theme:circ_gradient.png";
    QTest::newRow("diamond") << 2 << "theme:rect_gradient.png";
    QTest::newRow("angle") << 3 << "theme:angle_gradient.png";
}

void tst_NVGradientToolbar::typeShowsItsPicture()
{
    QFETCH(const int, type);
    QFETCH(const QString, picture);
    const Host host;
    host.bar->SetType(1 - qMin(type, 1)); // another one

    host.bar->SetType(type);

    QVERIFY(!QPixmap(picture).isNull());
    QCOMPARE(Picture(host.Find<QLabel>("m_pTypeIcon")), QPixmap(picture).toImage());
    QCOMPARE(Picture(host.Find<QLabel>("m_pPicture")), QPixmap("theme:linear_gradient.png").toImage());
}

void tst_NVGradientToolbar::typeOutOfRangeKeepsThePicture()
{
    const Host host;
    host.bar->SetType(2);

    host.bar->SetType(99);

    QCOMPARE(host.bar->GetType(), -1);
    QCOMPARE(Picture(host.Find<QLabel>("m_pTypeIcon")), QPixmap("theme:rect_gradient.png").toImage());
}

void tst_NVGradientToolbar::fillingTheTypesAgainSelectsTheFirst()
{
    const Host host;
    host.bar->SetType(2);

    host.bar->FillTypeList();

    QCOMPARE(host.Find<QComboBox>("m_pType")->count(), 4);
    QCOMPARE(host.bar->GetType(), 0);
}

void tst_NVGradientToolbar::operationButtonsShowAndTell()
{
    Host host;
    QVERIFY(host.Show());
    auto* commit = host.Find<QToolButton>("m_pCommit");
    auto* cancel = host.Find<QToolButton>("m_pCancel");
    SignalLog log(host.bar);
    QVERIFY(!commit->isVisible() && !cancel->isVisible());

    host.bar->ShowOperationButtons(true);
    QVERIFY(commit->isVisible() && cancel->isVisible());
    QTest::mouseClick(commit, Qt::LeftButton);
    QTest::mouseClick(cancel, Qt::LeftButton);
    QCOMPARE(log.Entries(), QStringList({"Commit()", "Cancel()"}));
    QVERIFY(commit->isVisible());

    host.bar->ShowOperationButtons(false);
    QVERIFY(!commit->isVisible() && !cancel->isVisible());
}

void tst_NVGradientToolbar::pickerControlChangesNothing()
{
    Host host;
    QVERIFY(host.Show());
    const ProbeImage before(host.bar);
    SignalLog log(host.bar);

    host.bar->EnablePickerControl(true);
    host.bar->EnablePickerControl(false);

    QCOMPARE(log.Entries(), QStringList());
    QVERIFY(!before.Differs(ProbeImage(host.bar)));
}

void tst_NVGradientToolbar::previewFollowsTheCurrentRow()
{
    const Host host;
    QCOMPARE(host.Icon().size(), QSize(148, 20));
    QVERIFY(ProbeImage::Similar(host.Icon().pixelColor(3, 10), Qt::black, 8));

    host.bar->SetCurrentGradient(1);
    QVERIFY(ProbeImage::Similar(host.Icon().pixelColor(3, 10), Qt::red, 8));

    host.bar->SetCurrentGradient(-1);
    QVERIFY(host.IsBlank());
}

void tst_NVGradientToolbar::previewIsUpToDateWhenTheHostHears()
{
    const Host host;
    QList<QColor> seen;
    connect(host.bar, &NVGradientToolbar::GradientIndexChanged, host.bar,
            [&] { seen << host.Icon().pixelColor(3, 10); });

    host.bar->SetCurrentGradient(1);

    QCOMPARE(seen.size(), 1);
    QVERIFY(ProbeImage::Similar(seen[0], Qt::red, 8));
}

void tst_NVGradientToolbar::previewOfAnotherRowIsBlank()
{
    const Host host;

    host.bar->GradientChanged(1);
    QVERIFY(host.IsBlank());
    host.bar->GradientChanged(0);
    QVERIFY(!host.IsBlank());
    host.bar->GradientChanged(-1);
    QVERIFY(host.IsBlank());
    host.bar->GradientChanged(99);
    QVERIFY(host.IsBlank());
}

// The picture is 148 wide, the gradient runs over 147 pixels from where the filled part begins, and 144 of
// them are filled: the last stop's colour is not reached.
void tst_NVGradientToolbar::previewRunsFromTheLeftAndIsCutOff()
{
    const Host host;
    const QImage icon = host.Icon();

    const auto grey = [](int x) { return int(255.0 * (x - 2 + 0.5) / 147.0); };
    for (const int x : {2, 40, 75, 110, 145})
    {
        const int shown = icon.pixelColor(x, 10).red();
        QVERIFY2(qAbs(shown - grey(x)) <= 2, qPrintable(QString("%1 at %2").arg(shown).arg(x)));
    }
    QVERIFY(icon.pixelColor(145, 10).red() < 252);
}

void tst_NVGradientToolbar::previewShowsTheCheckerBehindClearStops()
{
    const Host host;
    host.bar->SetCurrentGradient(2);
    const QImage icon = host.Icon();

    // Squares of four pixels from the corner of the filled part.
    QCOMPARE(icon.pixelColor(2, 2), QColor(Qt::white));
    QCOMPARE(icon.pixelColor(5, 5), QColor(Qt::white));
    QCOMPARE(icon.pixelColor(6, 2), QColor(Qt::black));
    QCOMPARE(icon.pixelColor(9, 5), QColor(Qt::black));
    QCOMPARE(icon.pixelColor(2, 6), QColor(Qt::black));
    QCOMPARE(icon.pixelColor(6, 6), QColor(Qt::white));
    QCOMPARE(icon.pixelColor(10, 2), QColor(Qt::white));
}

void tst_NVGradientToolbar::previewLeavesAMargin()
{
    const Host host;
    host.bar->SetCurrentGradient(2);
    const QImage icon = host.Icon();

    for (const QPoint& place : {QPoint(0, 0), QPoint(1, 10), QPoint(70, 1), QPoint(146, 10), QPoint(70, 18)})
        QCOMPARE(icon.pixelColor(place).alpha(), 0);
    for (const QPoint& place : {QPoint(2, 2), QPoint(145, 2), QPoint(2, 17), QPoint(145, 17)})
        QCOMPARE(icon.pixelColor(place).alpha(), 255);
}

void tst_NVGradientToolbar::reverseTurnsThePreviewFirst()
{
    Host host;
    QVERIFY(host.Show());
    host.bar->SetCurrentGradient(1);
    QList<QColor> seen;
    connect(host.bar, &NVGradientToolbar::ReverseChanged, host.bar,
            [&] { seen << host.Icon().pixelColor(3, 10); });

    QTest::mouseClick(host.Find<QCheckBox>("m_pReverse"), Qt::LeftButton, {}, QPoint(8, 12));
    host.bar->SetReverse(false);

    QCOMPARE(seen.size(), 2);
    QVERIFY(ProbeImage::Similar(seen[0], Qt::blue, 8));
    QVERIFY(ProbeImage::Similar(seen[1], Qt::red, 8));
    const QImage before = host.Icon();
    host.bar->SetStyle(true);
    host.bar->SetType(2);
    host.bar->SetRepeatCount(5);
    host.bar->SetOpacity(10);
    QCOMPARE(host.Icon(), before);
}

void tst_NVGradientToolbar::reverseWithoutARowStaysBlank()
{
    const Host host;
    host.bar->SetCurrentGradient(-1);
    SignalLog log(host.bar);

    host.bar->SetReverse(true);

    QVERIFY(host.IsBlank());
    QCOMPARE(log.Entries(), QStringList({"ReverseChanged(true)"}));
}

void tst_NVGradientToolbar::loadOfAnEmptyListBlanksTheButton()
{
    const Host host;
    SignalLog log(host.bar);

    host.bar->Load({Warm, Grey});
    QCOMPARE(log.Entries(), QStringList({"GradientIndexChanged(-1)", "GradientIndexChanged(0)"}));
    QVERIFY(ProbeImage::Similar(host.Icon().pixelColor(3, 10), Qt::red, 8));
    host.bar->Load({});
    QVERIFY(host.IsBlank());
}

void tst_NVGradientToolbar::changedGradientOfTheSameRowIsNotShown()
{
    const Host host;
    const QImage before = host.Icon();

    host.Popup()->SetGradient(0, Warm);

    QCOMPARE(host.Icon(), before);
    QCOMPARE(host.bar->GetCurrentGradient(), Warm);
}

void tst_NVGradientToolbar::previewIsSharpOnADenseScreen()
{
    const Host host;
    const qreal ratio = host.bar->devicePixelRatioF();
    host.bar->SetCurrentGradient(2);

    const QImage icon = host.Button()->icon().pixmap(host.window.windowHandle(), QSize(148, 20)).toImage();

    QCOMPARE(icon.size(), (QSizeF(148, 20) * ratio).toSize());
    QCOMPARE(icon.pixelColor(QPoint(6, 2) * ratio), QColor(Qt::black));
    QCOMPARE(icon.pixelColor(QPoint(10, 2) * ratio), QColor(Qt::white));
}

void tst_NVGradientToolbar::popupOpensUnderItsButton()
{
    Host host;
    QVERIFY(host.Show());
    PopupDriver driver(host.Button(), host.Popup());

    QVERIFY(driver.Open());

    QVERIFY(host.bar->IsPopupVisible());
    QVERIFY(host.Button()->isChecked());
    QCOMPARE(host.Popup()->pos(), host.Button()->mapToGlobal(QPoint(0, host.Button()->height() + 1)));
    QCOMPARE(QApplication::activeWindow(), host.Popup());
    QCOMPARE(host.Popup()->parentWidget(), host.bar);
}

void tst_NVGradientToolbar::clickOnTheCheckedButtonClosesOnce()
{
    Host host;
    QVERIFY(host.Show());
    PopupDriver driver(host.Button(), host.Popup());
    QVERIFY(driver.Open());
    driver.ClearCounts();

    QVERIFY(driver.CloseByButton());

    QVERIFY(!host.Button()->isChecked());
    QVERIFY(!host.bar->IsPopupVisible());
    QCOMPARE(driver.HideCount(), 1);
    QCOMPARE(driver.ShowCount(), 0);
    QVERIFY(driver.Open());
}

void tst_NVGradientToolbar::clickElsewhereClosesAndUnchecks()
{
    Host host;
    QVERIFY(host.Show());
    PopupDriver driver(host.Button(), host.Popup());
    QVERIFY(driver.Open());
    driver.ClearCounts();

    QVERIFY(driver.CloseByClickElsewhere(host.canvas));

    QVERIFY(!host.Button()->isChecked());
    QCOMPARE(driver.HideCount(), 1);
}

void tst_NVGradientToolbar::escapeHidesAndUnchecks()
{
    Host host;
    QVERIFY(host.Show());
    PopupDriver driver(host.Button(), host.Popup());
    QVERIFY(driver.Open());

    QVERIFY(driver.CloseByEscape());

    QVERIFY(!host.Button()->isChecked());
    QVERIFY(!host.bar->IsPopupVisible());
}

void tst_NVGradientToolbar::hidingByOthersUnchecks()
{
    Host host;
    QVERIFY(host.Show());
    PopupDriver driver(host.Button(), host.Popup());
    QVERIFY(driver.Open());

    host.Popup()->hide();

    QVERIFY(!host.Button()->isChecked());
}

void tst_NVGradientToolbar::deactivationOverTheCheckedButtonLeavesThePopup()
{
    Host host;
    QVERIFY(host.Show());
    PopupDriver driver(host.Button(), host.Popup());
    QVERIFY(driver.Open());

    QCursor::setPos(host.Button()->mapToGlobal(host.Button()->rect().center()));
    QEvent leave(QEvent::WindowDeactivate);
    host.bar->eventFilter(host.Popup(), &leave);
    QVERIFY(host.bar->IsPopupVisible());

    QCursor::setPos(host.canvas->mapToGlobal(QPoint(5, 5)));
    host.bar->eventFilter(host.Popup(), &leave);
    QVERIFY(!host.bar->IsPopupVisible());

    // Open, but by others: the button isn't checked.
    host.Popup()->Popup(QPoint(200, 200));
    QVERIFY(QTest::qWaitForWindowActive(host.Popup()));
    QCursor::setPos(host.Button()->mapToGlobal(host.Button()->rect().center()));
    host.bar->eventFilter(host.Popup(), &leave);
    QVERIFY(!host.bar->IsPopupVisible());
}

void tst_NVGradientToolbar::noEventIsHeldBackByTheFilter()
{
    Host host;
    QVERIFY(host.Show());

    for (const QEvent::Type type : {QEvent::Hide, QEvent::WindowDeactivate, QEvent::Show, QEvent::KeyPress})
    {
        QEvent event(type);
        QVERIFY(!host.bar->eventFilter(host.Popup(), &event));
    }
}

void tst_NVGradientToolbar::otherObjectsAreNotFollowed()
{
    Host host;
    QVERIFY(host.Show());
    PopupDriver driver(host.Button(), host.Popup());
    QVERIFY(driver.Open());
    QCursor::setPos(host.canvas->mapToGlobal(QPoint(5, 5)));

    for (const QEvent::Type type : {QEvent::Hide, QEvent::WindowDeactivate})
    {
        QEvent event(type);
        QVERIFY(!host.bar->eventFilter(host.canvas, &event));
    }

    QVERIFY(host.bar->IsPopupVisible());
    QVERIFY(host.Button()->isChecked());
}

void tst_NVGradientToolbar::popupMakesRoomForTheEditorAndComesBack_data()
{
    QTest::addColumn<QByteArray>("opener");
    QTest::addColumn<QString>("closer");
    QTest::newRow("edit, cancelled") << QByteArray("m_pEdit") << "Cancel";
    QTest::newRow("edit, accepted") << QByteArray("m_pEdit") << "OK";
    QTest::newRow("new, accepted") << QByteArray("m_pNew") << "OK";
}

void tst_NVGradientToolbar::popupMakesRoomForTheEditorAndComesBack()
{
    QFETCH(const QByteArray, opener);
    QFETCH(const QString, closer);
    Host host;
    QVERIFY(host.Show());
    PopupDriver popup(host.Button(), host.Popup());
    QVERIFY(popup.Open());
    const QPoint place = host.Popup()->pos();
    auto* button = host.Popup()->findChild<QPushButton*>(opener);
    QCursor::setPos(button->mapToGlobal(button->rect().center()));
    bool gone = false;
    bool up = false;
    ModalDriver driver(
        [&](QWidget* window)
        {
            gone = !host.bar->IsPopupVisible();
            up = !host.Button()->isChecked();
            QCOMPARE(window->parentWidget(), static_cast<QWidget*>(&host.window));
            ModalDriver::Press(window, closer);
        });

    QTest::mouseClick(button, Qt::LeftButton);

    QVERIFY(driver.Finished());
    QVERIFY(gone);
    QVERIFY(up);
    QTRY_VERIFY(host.bar->IsPopupVisible());
    QVERIFY(host.Button()->isChecked());
    QCOMPARE(host.Popup()->pos(), place);
    QTRY_COMPARE(QApplication::activeWindow(), host.Popup());
}

void tst_NVGradientToolbar::popupThatAsksToBeShownTogglesTheButton()
{
    Host host;
    QVERIFY(host.Show());
    const QSignalSpy clicks(host.Button(), &QToolButton::clicked);

    Q_EMIT host.Popup()->ShowPopup();
    QVERIFY(host.Button()->isChecked());
    QVERIFY(host.bar->IsPopupVisible());
    Q_EMIT host.Popup()->ShowPopup();
    QVERIFY(!host.Button()->isChecked());
    QVERIFY(!host.bar->IsPopupVisible());

    QCOMPARE(clicks.size(), 0);
}

void tst_NVGradientToolbar::savedGradientIsOnTheButtonAtOnce_data()
{
    QTest::addColumn<int>("row");
    QTest::newRow("first") << 0;
    QTest::newRow("second") << 1;
}

void tst_NVGradientToolbar::savedGradientIsOnTheButtonAtOnce()
{
    QFETCH(const int, row);
    Host host;
    QVERIFY(host.Show());
    host.bar->SetCurrentGradient(row);
    SignalLog log(host.bar);
    QColor shown;
    ModalDriver driver(
        [&](QWidget* window)
        {
            window->findChild<QSpinBox*>("m_pRed")->setValue(0);
            window->findChild<QSpinBox*>("m_pGreen")->setValue(255);
            ModalDriver::Press(window, "Apply");
            shown = host.Icon().pixelColor(3, 10);
            ModalDriver::Press(window, "OK");
        });

    host.Popup()->findChild<QPushButton*>("m_pEdit")->click();

    QVERIFY(driver.Finished());
    QVERIFY(ProbeImage::Similar(shown, Qt::green, 8));
    QCOMPARE(log.Entries(), QStringList({QString("GradientIndexChanged(%1)").arg(row), "SaveGradients()"}));
    QCOMPARE(host.bar->GetCurrentGradient().first().GetColor(), QColor(Qt::green));
}

void tst_NVGradientToolbar::savingAnEmptyListLeavesTheOldPicture()
{
    Host host;
    QVERIFY(host.Show());
    host.bar->Load({Warm});
    const QImage before = host.Icon();
    SignalLog log(host.bar);
    ModalDriver driver(
        [](QWidget* window)
        {
            ModalDriver::Press(window, "Delete");
            ModalDriver::Press(window, "OK");
        });

    host.Popup()->findChild<QPushButton*>("m_pEdit")->click();

    QVERIFY(driver.Finished());
    QCOMPARE(log.Entries(), QStringList({"SaveGradients()"}));
    QCOMPARE(host.bar->GetGradientCount(), 0);
    QCOMPARE(host.Icon(), before);
}

void tst_NVGradientToolbar::diesInAnyState_data()
{
    QTest::addColumn<QString>("state");
    for (const char* state : {"unshown", "shown", "open", "typed"})
        QTest::newRow(state) << state;
}

void tst_NVGradientToolbar::diesInAnyState()
{
    QFETCH(const QString, state);
    Host host;
    if (state != "unshown")
        QVERIFY(host.Show());
    const QPointer<NVGradientPopup> popup = host.Popup();
    if (state == "open")
    {
        PopupDriver driver(host.Button(), popup);
        QVERIFY(driver.Open());
    }
    if (state == "typed")
    {
        auto* box = host.Find<NVSpinBox>("m_pRepeatCount");
        QTest::mouseClick(box->findChild<QLineEdit*>(), Qt::LeftButton);
        QTest::keyClicks(box, "+1*");
    }
    SignalLog log(host.bar, SignalLog::WithDestroyed);

    delete host.bar;

    QCOMPARE(log.Entries(), QStringList({"destroyed()"}));
    QVERIFY(!popup);
}

void tst_NVGradientToolbar::diesUnderTheEditor()
{
    Host host;
    QVERIFY(host.Show());
    PopupDriver popup(host.Button(), host.Popup());
    QVERIFY(popup.Open());
    SignalLog log(host.bar, SignalLog::WithDestroyed);
    ModalDriver driver(
        [&](QWidget* window)
        {
            delete host.bar;
            window->findChild<QSpinBox*>("m_pRed")->setValue(9);
            ModalDriver::Press(window, "Apply");
            ModalDriver::Press(window, "OK");
        });

    host.Popup()->findChild<QPushButton*>("m_pEdit")->click();

    QVERIFY(driver.Finished());
    QCOMPARE(log.Entries(), QStringList({"destroyed()"}));
}

NV_TEST_MAIN(tst_NVGradientToolbar)

#include "tst_NVGradientToolbar.moc"
