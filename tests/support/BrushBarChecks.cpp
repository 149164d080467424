#include "BrushBarChecks.h"

#include "BarForm.h"
#include "IBrush.h"
#include "KXBrushSettings.h"
#include "KXShortcut.h"
#include "KexaAppKeyHook.h"
#include "NVApplication.h"
#include "NVBrushToolbarWidget.h"
#include "PatternSelectWidget.h"
#include "PopupDriver.h"
#include "SignalLog.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QCursor>
#include <QLineEdit>
#include <QPointer>
#include <QScreen>
#include <QSpinBox>
#include <QtTest>

#include <limits>

namespace
{

constexpr int Huge = std::numeric_limits<int>::max();
constexpr int Least = std::numeric_limits<int>::min();

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

// Counts how often a window is raised, and does something each time.
class RaiseWatcher : public QObject
{
public:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::ZOrderChange)
        {
            ++count;
            if (onRaise)
                onRaise();
        }
        return false;
    }
    int count = 0;
    std::function<void()> onRaise;
};

// Notes down why an object gets the focus.
class FocusReasons : public QObject
{
public:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::FocusIn)
            reasons << static_cast<QFocusEvent*>(event)->reason();
        return false;
    }
    QList<Qt::FocusReason> reasons;
};

void send(QObject* object, QEvent::Type type)
{
    QEvent event(type);
    QApplication::sendEvent(object, &event);
}

// The bar in a window with room around it, and a canvas to click on.
struct Window
{
    explicit Window(const BrushBar& facts) : kind(facts)
    {
        window.resize(780, 300);
        bar = kind.Create(&window, nullptr);
        bar->setGeometry(0, 0, 780, 42);
        canvas = new QWidget(&window);
        canvas->setFocusPolicy(Qt::StrongFocus);
        canvas->setGeometry(0, 250, 780, 50);
        button = bar->findChild<QAbstractButton*>("m_pSelectBrushBtn");
        settings = bar->GetBrushes();
    }
    bool Show()
    {
        window.show();
        canvas->setFocus();
        return QTest::qWaitForWindowActive(&window);
    }
    QSpinBox* Box(const BrushBar::Control& control) const { return bar->findChild<QSpinBox*>(control.Name); }
    QComboBox* Blend() const { return bar->findChild<QComboBox*>(kind.BlendMode.Name); }
    void PointAtCanvas() const { QCursor::setPos(canvas->mapToGlobal(QPoint(5, 5))); }
    void PointAtButton() const { QCursor::setPos(button->mapToGlobal(button->rect().center())); }
    void PressMode(int key) const
    {
        QTest::keyClick(canvas, Qt::Key(key), Qt::AltModifier | Qt::ShiftModifier);
    }

    const BrushBar& kind;
    QWidget window;
    QPointer<NVBrushToolbarWidget> bar;
    QWidget* canvas = nullptr;
    QPointer<QAbstractButton> button;
    QPointer<KXBrushSettings> settings;
};

using Setter = void (NVBrushToolbarWidget::*)(int);

struct Value
{
    const BrushBar::Control* control;
    Setter set;
    QString signal;
    int minimum;
    int maximum;
    int start;
};

QList<Value> valuesOf(const BrushBar& kind)
{
    QList<Value> values = {
        {&kind.Size, &NVBrushToolbarWidget::SetSize, "SizeChanged", 1, 2500, 1},
        {&kind.Spacing, &NVBrushToolbarWidget::SetSpacing, "SpacingChanged", 1, 1000, 1},
    };
    if (kind.Opacity.Name)
        values.append({&kind.Opacity, &NVBrushToolbarWidget::SetOpacity, "OpacityChanged", 0, 100, 100});
    return values;
}

QString say(const QString& signal, int value)
{
    return QString("%1(%2)").arg(signal).arg(value);
}

// ---- values

void valuesStartAsTheFormSays(const BrushBar& kind)
{
    const Window host(kind);

    for (const Value& value : valuesOf(kind))
        QCOMPARE(value.control->Get(host.bar), value.start);
    if (kind.BlendMode.Name)
        QCOMPARE(kind.BlendMode.Get(host.bar), 0);
}

void setterClampsAndEmitsOnceAChange(const BrushBar& kind)
{
    for (const Value& value : valuesOf(kind))
    {
        const QList<QPair<int, int>> asked = {{40, 40},
                                              {value.minimum, value.minimum},
                                              {value.maximum, value.maximum},
                                              {value.minimum - 1, value.minimum},
                                              {value.maximum + 1, value.maximum},
                                              {Least, value.minimum},
                                              {Huge, value.maximum}};
        for (const auto& each : asked)
        {
            const Window host(kind);
            SignalLog log(host.bar);

            (host.bar->*value.set)(each.first);
            (host.bar->*value.set)(each.first);

            QCOMPARE(log.Entries(),
                     each.second == value.start ? QStringList()
                                                : QStringList(say(value.signal, each.second)));
            QCOMPARE(value.control->Get(host.bar), each.second);
            QCOMPARE(host.Box(*value.control)->value(), each.second);
        }
    }
}

void typingEmitsEachValueAsItIsReached(const BrushBar& kind)
{
    for (const Value& value : valuesOf(kind))
    {
        Window host(kind);
        QVERIFY(host.Show());
        QSpinBox* box = host.Box(*value.control);
        (host.bar->*value.set)(50);
        SignalLog log(host.bar);
        log.Watch(host.settings, "popup");

        QTest::mouseClick(box->findChild<QLineEdit*>(), Qt::LeftButton);
        box->setFocus(Qt::TabFocusReason);
        box->selectAll();
        QTest::keyClicks(box, "62");
        // The settings popup was tied to the bar before the log was.
        QCOMPARE(log.Entries(),
                 QStringList({say("popup." + value.signal, 6), say(value.signal, 6),
                              say("popup." + value.signal, 62), say(value.signal, 62)}));
        log.Clear();

        (host.bar->*value.set)(62);
        QCOMPARE(log.Entries(), QStringList());

        // The toolkit's number box tells its value once more on Enter; for the popup that is no change.
        QTest::keyClick(box, Qt::Key_Return);
        QCOMPARE(log.Entries(), QStringList(say(value.signal, 62)));
        QCOMPARE(value.control->Get(host.bar), 62);
    }
}

void clickOnANumberBoxGivesItTheKeys(const BrushBar& kind)
{
    for (const Value& value : valuesOf(kind))
    {
        Window host(kind);
        QVERIFY(host.Show());
        QSpinBox* box = host.Box(*value.control);

        QTest::mouseClick(box->findChild<QLineEdit*>(), Qt::LeftButton);

        // One box of the stamp's bar takes the keys by Tab alone.
        QCOMPARE(box->hasFocus(), bool(box->focusPolicy() & Qt::ClickFocus));
    }
}

void settingsPopupFollowsTheBar(const BrushBar& kind)
{
    const Window host(kind);
    SignalLog log(host.settings);

    host.bar->SetSize(40);
    host.bar->SetSpacing(50);
    host.bar->SetOpacity(60);

    QStringList said = {"SizeChanged(40)", "SpacingChanged(50)"};
    if (kind.Opacity.Name)
        said << "OpacityChanged(60)";
    QCOMPARE(log.Entries(), said);
    QCOMPARE(host.settings->GetSize(), 40);
    QCOMPARE(host.settings->GetSpacing(), 50);
    QCOMPARE(host.settings->GetOpacity(), kind.Opacity.Name ? 60 : 100);
}

void barFollowsTheSettingsPopup(const BrushBar& kind)
{
    const Window host(kind);
    SignalLog log(host.bar);

    host.settings->SetSize(40);
    host.settings->SetSpacing(50);
    host.settings->SetOpacity(60);

    QStringList said = {"SizeChanged(40)", "SpacingChanged(50)"};
    if (kind.Opacity.Name)
        said << "OpacityChanged(60)";
    QCOMPARE(log.Entries(), said);
    for (const Value& value : valuesOf(kind))
        QCOMPARE(value.control->Get(host.bar), host.Box(*value.control)->value());
    QCOMPARE(kind.Size.Get(host.bar), 40);
    QCOMPARE(kind.Spacing.Get(host.bar), 50);
}

// By the base and by the bar; a bar without an opacity leaves the tie of its base.
void settingsPopupIsTiedTwice(const BrushBar& kind)
{
    QStringList calls;
    const std::unique_ptr<NVBrushToolbarWidget> bar(kind.Create(nullptr, &calls));

    bar->GetBrushes()->SetSize(33);
    bar->GetBrushes()->SetSpacing(44);
    bar->GetBrushes()->SetOpacity(55);

    QStringList wanted = {"size 33", "size 33", "spacing 44", "spacing 44", "opacity 55"};
    if (kind.Opacity.Name)
        wanted << "opacity 55";
    QCOMPARE(calls, wanted);
}

void dynamicsOfTheToolAloneAreOffered(const BrushBar& kind)
{
    const Window host(kind);

    QList<int> notOffered;
    for (int property = KXBrushSettings::DynamicSize; property <= KXBrushSettings::DynamicScatter; ++property)
    {
        const auto dynamic = static_cast<KXBrushSettings::DynamicProperty>(property);
        host.settings->SetDynamic(dynamic, true);
        if (!host.settings->IsDynamic(dynamic))
            notOffered << property;
    }

    QCOMPARE(notOffered, kind.NotOffered);
}

void patternPopupIsThereButTiedToNothing(const BrushBar& kind)
{
    Window host(kind);
    QCOMPARE(host.bar->GetPatterns() != nullptr, kind.HasPatterns);
    if (!kind.HasPatterns)
        return;
    QVERIFY(host.Show());
    PatternSelectWidget* patterns = host.bar->GetPatterns();
    QVERIFY(!patterns->isVisible());
    host.PointAtCanvas();
    PopupDriver driver(host.button, host.settings);
    QVERIFY(driver.Open());
    const qint64 icon = host.button->icon().cacheKey();
    SignalLog log(host.bar);

    QImage tile;
    QVERIFY(patterns->GetItemImage(2, tile));
    QVERIFY(!tile.isNull());
    patterns->SetCurrentIndex(2);
    QCOMPARE(patterns->CurrentIndex(), 2);
    Q_EMIT patterns->ItemSelected(2);
    Q_EMIT patterns->ItemDoubleClicked(2);
    QEvent hide(QEvent::Hide);
    QVERIFY(!host.bar->eventFilter(patterns, &hide));

    QVERIFY(host.settings->isVisible());
    QVERIFY(host.button->isChecked());
    QCOMPARE(host.button->icon().cacheKey(), icon);
    QCOMPARE(log.Entries(), QStringList());
    QVERIFY(driver.CloseByButton());
}

// ---- blend modes

void blendModeStepsAndWraps(const BrushBar& kind)
{
    const Window host(kind);
    if (!kind.BlendMode.Name)
        return;
    SignalLog log(host.bar);

    QList<int> forward;
    for (int i = 0; i < 13; ++i)
    {
        host.bar->NextBlendMode();
        forward << kind.BlendMode.Get(host.bar);
    }
    QCOMPARE(forward, QList<int>({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 0}));
    host.bar->PreviousBlendMode();
    QCOMPARE(kind.BlendMode.Get(host.bar), 12);
    host.bar->SetBlendMode(-1);
    host.bar->NextBlendMode();
    QCOMPARE(host.Blend()->currentIndex(), 0);
    host.bar->SetBlendMode(-1);
    host.bar->PreviousBlendMode();
    QCOMPARE(host.Blend()->currentIndex(), 12);
    QCOMPARE(log.Entries(), QStringList());
}

void blendModeOutOfRangeLeavesNoSelection(const BrushBar& kind)
{
    const Window host(kind);
    if (!kind.BlendMode.Name)
        return;

    for (const int index : {-1, 13, Least, Huge})
    {
        host.bar->SetBlendMode(4);
        host.bar->SetBlendMode(index);
        QCOMPARE(host.Blend()->currentIndex(), -1);
        QCOMPARE(kind.BlendMode.Get(host.bar), 0);
    }
}

void disabledBlendListIgnoresKeysAndSetters(const BrushBar& kind)
{
    Window host(kind);
    if (!kind.BlendMode.Name)
        return;
    QVERIFY(host.Show());
    host.bar->CreateShortcuts();
    host.bar->SetBlendMode(5);
    host.Blend()->setEnabled(false);

    host.bar->SetBlendMode(2);
    host.bar->NextBlendMode();
    host.bar->PreviousBlendMode();
    QTest::keyClick(host.canvas, Qt::Key_Plus, Qt::ShiftModifier);
    QTest::keyClick(host.canvas, Qt::Key_Minus, Qt::ShiftModifier);
    host.PressMode(Qt::Key_M);

    QCOMPARE(kind.BlendMode.Get(host.bar), 5);
}

// ---- keys

void modeKeysReachTheBlendListIfThereIsOne(const BrushBar& kind)
{
    Window host(kind);
    QVERIFY(host.Show());
    host.bar->CreateShortcuts();
    SignalLog log(host.bar);
    const QList<int> keys = {Qt::Key_N, Qt::Key_M, Qt::Key_S, Qt::Key_O, Qt::Key_E, Qt::Key_X,
                             Qt::Key_G, Qt::Key_K, Qt::Key_F, Qt::Key_H, Qt::Key_D, Qt::Key_B};
    const auto lists = host.bar->findChildren<QComboBox*>();
    QList<int> before;
    for (const QComboBox* list : lists)
        before << list->currentIndex();

    for (int i = 0; i < keys.size(); ++i)
    {
        host.PressMode(keys[i]);
        if (kind.BlendMode.Name)
            QCOMPARE(host.Blend()->currentText(), BlendModes()[i]);
    }
    QTest::keyClick(host.canvas, Qt::Key_Plus, Qt::ShiftModifier);
    if (kind.BlendMode.Name)
        QCOMPARE(host.Blend()->currentText(), QString("Addition"));
    QTest::keyClick(host.canvas, Qt::Key_Minus, Qt::ShiftModifier);
    if (kind.BlendMode.Name)
        QCOMPARE(host.Blend()->currentText(), QString("Color burn"));

    QCOMPARE(log.Entries(), QStringList());
    for (int i = 0; i < lists.size(); ++i)
        QVERIFY(lists[i]->objectName() == kind.BlendMode.Name || lists[i]->currentIndex() == before[i]);
}

void digitsReachTheOpacityIfThereIsOne(const BrushBar& kind)
{
    Window host(kind);
    QVERIFY(host.Show());
    host.bar->CreateShortcuts();
    SignalLog log(host.bar);
    const auto boxes = host.bar->findChildren<QSpinBox*>();
    QList<int> before;
    for (const QSpinBox* box : boxes)
        before << box->value();

    for (const int digit : {1, 2, 3, 4, 5, 6, 7, 8, 9, 0, 0})
        QTest::keyClick(host.canvas, Qt::Key(Qt::Key_0 + digit));

    QStringList said;
    for (int percent = 10; kind.Opacity.Name && percent <= 100; percent += 10)
        said << say("OpacityChanged", percent);
    QCOMPARE(log.Entries(), said);
    QCOMPARE(host.settings->GetOpacity(), 100);
    for (int i = 0; i < boxes.size(); ++i)
        QCOMPARE(boxes[i]->value(), before[i]);
}

void digitInAFocusedBoxStaysThere(const BrushBar& kind)
{
    Window host(kind);
    QVERIFY(host.Show());
    host.bar->CreateShortcuts();
    QSpinBox* box = host.Box(kind.Spacing);
    QTest::mouseClick(box->findChild<QLineEdit*>(), Qt::LeftButton);
    box->selectAll();
    SignalLog log(host.bar);

    QTest::keyClick(QApplication::focusWidget(), Qt::Key_7);

    QCOMPARE(log.Entries(), QStringList("SpacingChanged(7)"));
}

void keysOfTwoBarsActOnBoth(const BrushBar& kind)
{
    Window host(kind);
    NVBrushToolbarWidget* second = kind.Create(&host.window, nullptr);
    second->setGeometry(0, 50, 780, 42);
    QVERIFY(host.Show());
    host.bar->CreateShortcuts();
    second->CreateShortcuts();

    QTest::keyClick(host.canvas, Qt::Key_3);
    host.PressMode(Qt::Key_S);
    for (NVBrushToolbarWidget* each : {host.bar.data(), second})
    {
        QCOMPARE(kind.Opacity.Name ? kind.Opacity.Get(each) : 30, 30);
        QCOMPARE(kind.BlendMode.Name ? kind.BlendMode.Get(each) : 2, 2);
    }

    // The keys of one go, those of the other stay.
    second->ReleaseShortcuts();
    QTest::keyClick(host.canvas, Qt::Key_6);
    host.PressMode(Qt::Key_M);
    QCOMPARE(kind.Opacity.Name ? kind.Opacity.Get(second) : 30, 30);
    QCOMPARE(kind.BlendMode.Name ? kind.BlendMode.Get(second) : 2, 2);
    QCOMPARE(kind.Opacity.Name ? kind.Opacity.Get(host.bar) : 60, 60);
    QCOMPARE(kind.BlendMode.Name ? kind.BlendMode.Get(host.bar) : 1, 1);

    // And so when one dies with its keys.
    second->CreateShortcuts();
    delete host.bar;
    QTest::keyClick(host.canvas, Qt::Key_9);
    QCOMPARE(kind.Opacity.Name ? kind.Opacity.Get(second) : 90, 90);
}

void dyingBarReleasesItsKeys(const BrushBar& kind)
{
    Window host(kind);
    QVERIFY(host.Show());
    host.bar->CreateShortcuts();
    QCOMPARE(host.bar->findChildren<KXShortcut*>().size(), 24);
    SignalLog log(KexaAppKeyHook::instance());

    delete host.bar;
    host.PressMode(Qt::Key_M);
    QTest::keyClick(host.canvas, Qt::Key_5);

    QCOMPARE(log.Entries(), QStringList());
}

// ---- the brush on the button

void buttonHasNoIconAtFirst(const BrushBar& kind)
{
    const Window host(kind);

    QVERIFY(host.button->icon().isNull());
}

void brushIconFollowsTheTheme(const BrushBar& kind)
{
    const Window host(kind);
    for (const int theme : {0, 1, 2})
    {
        ColorBrush brush;
        NVApplication::GetInstance()->SetTheme(theme);
        const QColor color = theme == 1 ? Qt::white : Qt::black;

        Q_EMIT host.settings->CurrentBrushChanged(&brush);

        QCOMPARE(brush.asked, QList<QColor>({color}));
        const QImage shown = host.button->icon().pixmap(16, 16).toImage();
        QCOMPARE(shown.pixelColor(shown.rect().center()), color);
    }
}

void changedBrushParameterRedrawsTheIcon(const BrushBar& kind)
{
    const Window host(kind);
    ColorBrush brush;

    Q_EMIT host.settings->BrushParameterChanged(&brush);
    Q_EMIT host.settings->BrushParameterChanged(&brush);

    QCOMPARE(brush.asked.size(), 2);
    QVERIFY(!host.button->icon().isNull());
}

void missingBrushLeavesTheIcon(const BrushBar& kind)
{
    const Window host(kind);
    ColorBrush brush;
    Q_EMIT host.settings->CurrentBrushChanged(&brush);
    const qint64 icon = host.button->icon().cacheKey();

    Q_EMIT host.settings->CurrentBrushChanged(nullptr);
    Q_EMIT host.settings->BrushParameterChanged(nullptr);

    QCOMPARE(host.button->icon().cacheKey(), icon);
}

// ---- the settings popup

void popupOpensBelowItsButton(const BrushBar& kind)
{
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
    Window host(kind);
    QVERIFY(host.Show());
    host.settings->installEventFilter(&watcher);
    PopupDriver driver(host.button, host.settings);

    QVERIFY(driver.Open());

    const QPoint corner = host.button->mapToGlobal(QPoint(0, 0));
    QVERIFY(watcher.moved);
    QCOMPARE(watcher.place, corner + QPoint(0, host.button->height() + 1));
    QVERIFY(!host.settings->frameGeometry().intersects(QRect(corner, host.button->size())));
    QVERIFY(host.settings->screen()->availableGeometry().contains(host.settings->frameGeometry()));
    QVERIFY(driver.CloseByButton());
}

void popupIsRaisedActivatedAndFocused(const BrushBar& kind)
{
    RaiseWatcher raises;
    Window host(kind);
    QVERIFY(host.Show());
    // It comes to the front by no more than what the bar does.
    host.settings->setAttribute(Qt::WA_ShowWithoutActivating);
    host.settings->installEventFilter(&raises);
    host.settings->show();
    const int raisesOfShowing = raises.count;
    host.settings->hide();
    host.window.activateWindow();
    QTRY_COMPARE(QApplication::activeWindow(), &host.window);

    host.button->setChecked(true);

    QTRY_COMPARE(QApplication::activeWindow(), host.settings.data());
    QCOMPARE(raises.count, 2 * raisesOfShowing + 1);
    QVERIFY(host.settings->hasFocus() || host.settings->isAncestorOf(QApplication::focusWidget()));
    host.button->setChecked(false);
    QVERIFY(!host.settings->isVisible());
}

void popupTakesTheFocusAnewEachTime(const BrushBar& kind)
{
    FocusReasons reasons;
    Window host(kind);
    QVERIFY(host.Show());
    PopupDriver driver(host.button, host.settings);
    QVERIFY(driver.Open());
    QWidget* first = QApplication::focusWidget();
    QVERIFY(first && host.settings->isAncestorOf(first));
    first->clearFocus();
    QVERIFY(!first->hasFocus());
    first->installEventFilter(&reasons);

    // As if the button went down while the popup is active already.
    Q_EMIT host.button->toggled(true);

    QVERIFY(first->hasFocus());
    QCOMPARE(reasons.reasons, QList<Qt::FocusReason>({Qt::OtherFocusReason}));
    QVERIFY(driver.CloseByButton());
}

void barLooksAtThePopupOnlyOnceItIsShown(const BrushBar& kind)
{
    class Deactivator : public QObject
    {
    public:
        bool eventFilter(QObject* object, QEvent* event) override
        {
            if (event->type() == QEvent::Show)
            {
                send(object, QEvent::WindowDeactivate);
                ++sent;
            }
            return false;
        }
        int sent = 0;
    } deactivator;
    Window host(kind);
    QVERIFY(host.Show());
    host.PointAtCanvas();
    host.settings->installEventFilter(&deactivator);

    host.button->setChecked(true);

    QCOMPARE(deactivator.sent, 1);
    QVERIFY(host.settings->isVisible());
    QVERIFY(host.button->isChecked());
    host.button->setChecked(false);
}

void filterIsGoneWhileThePopupIsHidden(const BrushBar& kind)
{
    Window host(kind);
    QVERIFY(host.Show());
    host.button->setChecked(true);
    host.button->setChecked(false);

    // Were the bar still looking, it would take the block to heart and leave the popup open below.
    send(host.settings, QEvent::WindowBlocked);
    PopupDriver driver(host.button, host.settings);
    QVERIFY(driver.Open());

    QVERIFY(driver.CloseByClickElsewhere(host.canvas));
}

void clickOnTheCheckedButtonClosesOnce(const BrushBar& kind)
{
    Window host(kind);
    QVERIFY(host.Show());
    PopupDriver driver(host.button, host.settings);
    QVERIFY(driver.Open());
    QVERIFY(host.button->isChecked());
    SignalLog log(host.button);

    QVERIFY(driver.CloseByButton());

    QCOMPARE(driver.ShowCount(), 1);
    QCOMPARE(driver.HideCount(), 1);
    QCOMPARE(log.Count("toggled"), 1);
    QVERIFY(!host.button->isChecked());
}

void clickElsewhereClosesAndUnchecks(const BrushBar& kind)
{
    Window host(kind);
    QVERIFY(host.Show());
    PopupDriver driver(host.button, host.settings);
    QVERIFY(driver.Open());

    QVERIFY(driver.CloseByClickElsewhere(host.canvas));

    QVERIFY(!host.button->isChecked());
    QCOMPARE(driver.HideCount(), 1);
}

void escapeClosesAndUnchecks(const BrushBar& kind)
{
    Window host(kind);
    QVERIFY(host.Show());
    PopupDriver driver(host.button, host.settings);
    QVERIFY(driver.Open());

    QVERIFY(driver.CloseByEscape());

    QVERIFY(!host.button->isChecked());
}

void hidingByOthersUnchecks(const BrushBar& kind)
{
    Window host(kind);
    QVERIFY(host.Show());
    PopupDriver driver(host.button, host.settings);
    QVERIFY(driver.Open());
    SignalLog log(host.button);

    host.settings->hide();

    QVERIFY(!host.button->isChecked());
    QCOMPARE(log.Count("toggled"), 1);
    QVERIFY(driver.Open());
    QVERIFY(driver.CloseByButton());
}

void deactivationUnderAnUncheckedButtonHides(const BrushBar& kind)
{
    Window host(kind);
    QVERIFY(host.Show());
    PopupDriver driver(host.button, host.settings);
    QVERIFY(driver.Open());
    host.PointAtButton();
    send(host.settings, QEvent::WindowDeactivate);
    QVERIFY(host.settings->isVisible());
    {
        // The popup stays while its button goes up unseen.
        const QSignalBlocker blocker(host.button);
        host.button->setChecked(false);
    }

    send(host.settings, QEvent::WindowDeactivate);

    QVERIFY(!host.settings->isVisible());
}

void modalWindowLeavesThePopupOpen(const BrushBar& kind)
{
    Window host(kind);
    QVERIFY(host.Show());
    PopupDriver driver(host.button, host.settings);
    QVERIFY(driver.Open());
    host.PointAtCanvas();
    {
        QWidget modal(host.settings, Qt::Dialog);
        modal.setWindowModality(Qt::ApplicationModal);
        modal.show();
        QTRY_COMPARE(QApplication::activeWindow(), &modal);
        QVERIFY(host.settings->isVisible());
        QVERIFY(host.button->isChecked());
        RaiseWatcher raises;
        host.settings->installEventFilter(&raises);
        modal.hide();
        QTRY_COMPARE(raises.count, 1);
        host.settings->activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), host.settings.data());
    }

    QVERIFY(host.settings->isVisible());
    QVERIFY(host.button->isChecked());
    QVERIFY(driver.CloseByClickElsewhere(host.canvas));
    QVERIFY(!host.button->isChecked());
}

void unblockingRaisesThePopupAndThenForgetsTheBlock(const BrushBar& kind)
{
    RaiseWatcher raises;
    Window host(kind);
    QVERIFY(host.Show());
    PopupDriver driver(host.button, host.settings);
    QVERIFY(driver.Open());
    host.PointAtCanvas();
    host.settings->installEventFilter(&raises);
    // While it is raised it counts as blocked, and so a loss of the activation is passed over.
    raises.onRaise = [&] { send(host.settings, QEvent::WindowDeactivate); };

    send(host.settings, QEvent::WindowBlocked);
    QCOMPARE(raises.count, 0);
    send(host.settings, QEvent::WindowUnblocked);

    QCOMPARE(raises.count, 1);
    QVERIFY(host.settings->isVisible());
    send(host.settings, QEvent::WindowDeactivate);
    QVERIFY(!host.settings->isVisible());
    QVERIFY(!host.button->isChecked());
}

void popupHiddenWhileBlockedStaysBlocked(const BrushBar& kind)
{
    Window host(kind);
    QVERIFY(host.Show());
    PopupDriver driver(host.button, host.settings);
    QVERIFY(driver.Open());
    send(host.settings, QEvent::WindowBlocked);
    host.button->setChecked(false);

    // Nobody looks at a hidden popup, so the end of the block passes unseen.
    send(host.settings, QEvent::WindowUnblocked);
    QVERIFY(driver.Open());
    host.PointAtCanvas();
    send(host.settings, QEvent::WindowDeactivate);

    QVERIFY(host.settings->isVisible());
    send(host.settings, QEvent::WindowUnblocked);
    QVERIFY(driver.CloseByClickElsewhere(host.canvas));
}

void noEventIsHeldBackByTheFilter(const BrushBar& kind)
{
    const Window host(kind);
    QObject stranger;
    KXBrushSettings otherPopup(nullptr);

    for (QObject* object :
         {&stranger, static_cast<QObject*>(&otherPopup), static_cast<QObject*>(host.settings.data())})
    {
        for (const QEvent::Type type : {QEvent::Hide, QEvent::WindowDeactivate, QEvent::WindowBlocked,
                                        QEvent::WindowUnblocked, QEvent::MouseButtonPress})
        {
            QEvent event(type);
            QVERIFY(!host.bar->eventFilter(object, &event));
        }
    }
}

void eventsOfAnotherPopupLeaveTheButton(const BrushBar& kind)
{
    const Window host(kind);
    KXBrushSettings otherPopup(nullptr);
    const QSignalBlocker blocker(host.button);
    host.button->setChecked(true);

    QEvent hide(QEvent::Hide);
    host.bar->eventFilter(&otherPopup, &hide);

    QVERIFY(host.button->isChecked());
}

// ---- the end

void barDiesWithItsPopupOpen(const BrushBar& kind)
{
    Window host(kind);
    QVERIFY(host.Show());
    host.bar->CreateShortcuts();
    host.button->setChecked(true);
    QVERIFY(QTest::qWaitForWindowActive(host.settings));
    SignalLog log(host.bar);

    delete host.bar;

    QVERIFY(!host.settings);
    QVERIFY(!host.button);
    QCOMPARE(log.Entries(), QStringList());
}

void barDiesWithABlockedPopupOpen(const BrushBar& kind)
{
    Window host(kind);
    QVERIFY(host.Show());
    host.button->setChecked(true);
    QPointer<QWidget> modal = new QWidget(host.settings, Qt::Dialog);
    modal->setWindowModality(Qt::ApplicationModal);
    modal->show();
    QVERIFY(QTest::qWaitForWindowActive(modal));

    delete host.bar;

    QVERIFY(!host.settings);
    QVERIFY(!modal);
}

void barDiesWithAnUnfinishedSumInItsFocusedBox(const BrushBar& kind)
{
    Window host(kind);
    QVERIFY(host.Show());
    QSpinBox* box = host.Box(kind.Spacing);
    QTest::mouseClick(box->findChild<QLineEdit*>(), Qt::LeftButton);
    QVERIFY(box->hasFocus());
    box->selectAll();
    QTest::keyClicks(box, "12*");
    SignalLog log(host.bar);

    delete host.bar;

    QCOMPARE(log.Entries(), QStringList());
    QVERIFY(!QApplication::focusWidget() || host.window.isAncestorOf(QApplication::focusWidget()));
}

struct Check
{
    const char* sentence;
    void (*run)(const BrushBar&);
};

const Check Checks[] = {
    {"values start as the form says", valuesStartAsTheFormSays},
    {"a setter clamps, and emits once a change", setterClampsAndEmitsOnceAChange},
    {"typing emits each value as it is reached", typingEmitsEachValueAsItIsReached},
    {"a click on a number box gives it the keys", clickOnANumberBoxGivesItTheKeys},
    {"the settings popup follows the bar", settingsPopupFollowsTheBar},
    {"the bar follows the settings popup", barFollowsTheSettingsPopup},
    {"the settings popup is tied twice", settingsPopupIsTiedTwice},
    {"dynamics of the tool alone are offered", dynamicsOfTheToolAloneAreOffered},
    {"the pattern popup is there but tied to nothing", patternPopupIsThereButTiedToNothing},
    {"the blend mode steps and wraps", blendModeStepsAndWraps},
    {"a blend mode out of range leaves no selection", blendModeOutOfRangeLeavesNoSelection},
    {"a disabled blend list ignores keys and setters", disabledBlendListIgnoresKeysAndSetters},
    {"mode keys reach the blend list, if there is one", modeKeysReachTheBlendListIfThereIsOne},
    {"digits reach the opacity, if there is one", digitsReachTheOpacityIfThereIsOne},
    {"a digit in a focused box stays there", digitInAFocusedBoxStaysThere},
    {"keys of two bars act on both", keysOfTwoBarsActOnBoth},
    {"a dying bar releases its keys", dyingBarReleasesItsKeys},
    {"the button has no icon at first", buttonHasNoIconAtFirst},
    {"the brush icon follows the theme", brushIconFollowsTheTheme},
    {"a changed brush parameter redraws the icon", changedBrushParameterRedrawsTheIcon},
    {"a missing brush leaves the icon", missingBrushLeavesTheIcon},
    {"the popup opens below its button", popupOpensBelowItsButton},
    {"the popup is raised, activated and focused", popupIsRaisedActivatedAndFocused},
    {"the popup takes the focus anew each time", popupTakesTheFocusAnewEachTime},
    {"the bar looks at the popup only once it is shown", barLooksAtThePopupOnlyOnceItIsShown},
    {"the filter is gone while the popup is hidden", filterIsGoneWhileThePopupIsHidden},
    {"a click on the checked button closes once", clickOnTheCheckedButtonClosesOnce},
    {"a click elsewhere closes and unchecks", clickElsewhereClosesAndUnchecks},
    {"Escape closes and unchecks", escapeClosesAndUnchecks},
    {"hiding by others unchecks", hidingByOthersUnchecks},
    {"deactivation under an unchecked button hides", deactivationUnderAnUncheckedButtonHides},
    {"a modal window leaves the popup open", modalWindowLeavesThePopupOpen},
    {"unblocking raises the popup and then forgets the block",
     unblockingRaisesThePopupAndThenForgetsTheBlock},
    {"a popup hidden while blocked stays blocked", popupHiddenWhileBlockedStaysBlocked},
    {"no event is held back by the filter", noEventIsHeldBackByTheFilter},
    {"events of another popup leave the button", eventsOfAnotherPopupLeaveTheButton},
    {"the bar dies with its popup open", barDiesWithItsPopupOpen},
    {"the bar dies with a blocked popup open", barDiesWithABlockedPopupOpen},
    {"the bar dies with an unfinished sum in its box", barDiesWithAnUnfinishedSumInItsFocusedBox},
};

} // namespace

void AddBrushBarChecks()
{
    QTest::addColumn<int>("check");
    int row = 0;
    for (const Check& check : Checks)
        QTest::newRow(check.sentence) << row++;
}

void RunBrushBarCheck(const BrushBar& bar)
{
    QFETCH(const int, check);
    Checks[check].run(bar);
}

void ResetAfterBrushBarCheck()
{
    NVApplication::GetInstance()->SetTheme(0);
}
