#include "SelectionBarChecks.h"

#include <QAction>
#include <QGridLayout>
#include <QToolButton>
#include <QTranslator>
#include <QtTest>

#include <array>
#include <limits>
#include <memory>

#include "NVApplication.h"
#include "SignalLog.h"

namespace
{

const std::array<const char*, 5> ButtonNames = {nullptr, "m_pReplace", "m_pUnite", "m_pSubtract",
                                                "m_pIntersect"};
const std::array<const char*, 5> ButtonPictures = {nullptr, "add_sel", "unite_sel", "subtract_sel",
                                                   "intersect_sel"};
const int None = 0;
const int Replace = 1;
const int Unite = 2;
const int Subtract = 3;
const int Intersect = 4;

// A bar with what it tells.
struct Listener
{
    explicit Listener(const SelectionBar& facts) : kind(facts), bar(facts.Create(nullptr))
    {
        for (int state = Replace; state <= Intersect; ++state)
            buttons[size_t(state)] = bar->findChild<QToolButton*>(ButtonNames[size_t(state)]);
        kind.Listen(bar.get(), [this](int state) { told << state; });
    }
    QToolButton* Button(int state) const { return buttons[size_t(state)]; }
    QToolButton* Refine() const { return bar->findChild<QToolButton*>("REFINESELECTIONBUTTON"); }
    int State() const { return kind.GetState(bar.get()); }
    int ClearState() const { return kind.GetClearState(bar.get()); }
    void SetState(int state) const { kind.SetState(bar.get(), state); }
    void SetModifiers(int flags) const { kind.SetModifiers(bar.get(), flags); }
    void Click(int state) const { QTest::mouseClick(Button(state), Qt::LeftButton); }
    // 0 for none, -1 for more than one.
    int Lit() const
    {
        int lit = None;
        for (int state = Replace; state <= Intersect; ++state)
        {
            if (Button(state)->isChecked())
                lit = lit == None ? state : -1;
        }
        return lit;
    }
    // What the bar told since the last call.
    QList<int> Told()
    {
        QList<int> since;
        since.swap(told);
        return since;
    }

    const SelectionBar& kind;
    std::unique_ptr<QWidget> bar;
    std::array<QToolButton*, 5> buttons = {};
    QList<int> told;
};

void SetExclusive(const Listener& listener, bool exclusive)
{
    for (int state = Replace; state <= Intersect; ++state)
        listener.Button(state)->setAutoExclusive(exclusive);
}

BarControl StateButton(const char* name, const char* toolTip, bool checked)
{
    BarControl button = BarControl::PopupButton("QToolButton", name, toolTip);
    return button.With("text", QString("...")).With("checked", checked).With("autoExclusive", true);
}

// --- the form

void gridHasItsMargins(const SelectionBar& facts)
{
    const Listener listener(facts);
    const auto* grid = qobject_cast<QGridLayout*>(listener.bar->layout());

    QVERIFY(grid);
    QCOMPARE(listener.bar->objectName(), QString(facts.Form));
    QCOMPARE(listener.bar->windowTitle(), QString(facts.Title));
    QCOMPARE(grid->objectName(), QString("gridLayout"));
    QCOMPARE(grid->rowCount(), 1);
    QCOMPARE(grid->contentsMargins(), QMargins(0, 0, 6, 0));
    QCOMPARE(grid->horizontalSpacing(), 0);
    QCOMPARE(grid->verticalSpacing(), 0);
}

void checkGap(const QSpacerItem* gap)
{
    QVERIFY(gap);
    QCOMPARE(gap->sizeHint(), QSize(6, 20));
    QCOMPARE(gap->sizePolicy().horizontalPolicy(), QSizePolicy::Fixed);
    QCOMPARE(gap->sizePolicy().verticalPolicy(), QSizePolicy::Minimum);
}

void controlsStandInTheirColumns(const SelectionBar& facts)
{
    const Listener listener(facts);
    const auto* grid = qobject_cast<QGridLayout*>(listener.bar->layout());
    QMap<int, QString> wanted = facts.Columns;
    const QMap<int, QString> shared = {{0, "m_pPicture"}, {1, "frame_4"},     {3, "m_pReplace"},
                                       {5, "m_pUnite"},   {7, "m_pSubtract"}, {9, "m_pIntersect"},
                                       {11, "frame_5"}};
    for (auto it = shared.begin(); it != shared.end(); ++it)
        wanted.insert(it.key(), it.value());
    const int end = wanted.lastKey() + 1;

    QMap<int, QString> is;
    for (int column = 0; column < end; ++column)
    {
        QLayoutItem* item = grid->itemAtPosition(0, column);
        if (item && item->widget())
            is.insert(column, item->widget()->objectName());
        else if (column % 2 == 0)
            checkGap(item ? item->spacerItem() : nullptr);
        else
            QVERIFY2(!item, qPrintable(QString::number(column)));
    }

    QCOMPARE(is, wanted);
    QSpacerItem* last = grid->itemAtPosition(0, end)->spacerItem();
    QVERIFY(last);
    QCOMPARE(last->sizeHint(), QSize(0, 0));
    QCOMPARE(last->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    QCOMPARE(last->sizePolicy().verticalPolicy(), QSizePolicy::Minimum);
    QCOMPARE(grid->columnCount(), end + 1);
}

void buttonsShowTheirPictures(const SelectionBar& facts)
{
    const Listener listener(facts);

    for (int state = Replace; state <= Intersect; ++state)
    {
        const QImage picture = QPixmap(QString("theme:%1.png").arg(ButtonPictures[size_t(state)])).toImage();
        QVERIFY(!picture.isNull());
        QCOMPARE(listener.Button(state)->icon().pixmap(picture.size()).toImage(), picture);
    }
}

// The class is the context, not the form.
class ClassTranslator : public QTranslator
{
public:
    explicit ClassTranslator(const char* context) : m_context(context) { }
    QString translate(const char* context, const char* text, const char*, int) const override
    {
        return qstrcmp(context, m_context) == 0 ? QString(text).toUpper() : QString();
    }
    bool isEmpty() const override { return false; }

private:
    const char* m_context;
};

// --- the refine button

void refineButtonIsDisabledWithoutAnAction(const SelectionBar& facts)
{
    const Listener listener(facts);
    const QToolButton* refine = listener.Refine();

    QVERIFY(refine);
    QVERIFY(!listener.bar->findChild<QWidget*>("m_pRefineSelection"));
    QVERIFY(!refine->isEnabled());
    QCOMPARE(refine->text(), QString("Refine selection"));
    QVERIFY(refine->icon().isNull());
    QCOMPARE(refine->minimumSize(), QSize(0, 24));
    QCOMPARE(refine->maximumSize(), QSize(QWIDGETSIZE_MAX, 24));
    QCOMPARE(refine->focusPolicy(), Qt::NoFocus);
}

void refineTextIsThatOfTheClass(const SelectionBar& facts)
{
    ClassTranslator translator(facts.ClassName);
    QCoreApplication::installTranslator(&translator);
    const Listener listener(facts);
    QCoreApplication::removeTranslator(&translator);

    QCOMPARE(listener.Refine()->text(), QString("REFINE SELECTION"));
    QCOMPARE(listener.Button(Unite)->toolTip(), QString("Unite"));
}

void actionRegisteredEarlierIsBound(const SelectionBar& facts)
{
    QAction action("&Refine selection...");
    NVApplication::GetInstance()->RegisterRefineSelection(&action);

    const Listener listener(facts);

    QCOMPARE(listener.Refine()->defaultAction(), &action);
    QCOMPARE(listener.Refine()->text(), QString("Refine selection"));
    QVERIFY(listener.Refine()->isEnabled());
}

void actionRegisteredLaterIsBound(const SelectionBar& facts)
{
    const Listener listener(facts);
    QAction action("Refine");
    action.setEnabled(false);
    QPixmap picture(16, 16);
    picture.fill(Qt::red);
    action.setIcon(QIcon(picture));

    NVApplication::GetInstance()->RegisterRefineSelection(&action);

    QCOMPARE(listener.Refine()->defaultAction(), &action);
    QCOMPARE(listener.Refine()->text(), QString("Refine"));
    QCOMPARE(listener.Refine()->icon().cacheKey(), action.icon().cacheKey());
    QVERIFY(!listener.Refine()->isEnabled());
}

void boundActionDrivesTheButton(const SelectionBar& facts)
{
    const Listener listener(facts);
    QAction action("Refine");
    NVApplication::GetInstance()->RegisterRefineSelection(&action);
    SignalLog log(&action);
    listener.bar->show();
    QVERIFY(QTest::qWaitForWindowActive(listener.bar.get()));

    QTest::mouseClick(listener.Refine(), Qt::LeftButton);
    action.setEnabled(false);
    QTest::mouseClick(listener.Refine(), Qt::LeftButton);
    action.setText("Other");

    QCOMPARE(log.Count("triggered"), 1);
    QVERIFY(!listener.Refine()->isEnabled());
    QCOMPARE(listener.Refine()->text(), QString("Other"));
}

void actionTakenBackDisablesTheButton(const SelectionBar& facts)
{
    QAction action("Refine");
    NVApplication::GetInstance()->RegisterRefineSelection(&action);
    const Listener listener(facts);

    NVApplication::GetInstance()->RegisterRefineSelection(nullptr);
    action.setText("Unheard");

    QVERIFY(!listener.Refine()->defaultAction());
    QVERIFY(!listener.Refine()->isEnabled());
    QCOMPARE(listener.Refine()->text(), QString("Refine selection"));
}

// What the action supplied stays but for text and enabled state, as the toolkit has it.
void iconOfAnActionTakenBackStays(const SelectionBar& facts)
{
    QAction action("Refine");
    QPixmap picture(16, 16);
    picture.fill(Qt::red);
    action.setIcon(QIcon(picture));
    NVApplication::GetInstance()->RegisterRefineSelection(&action);
    const Listener listener(facts);

    NVApplication::GetInstance()->RegisterRefineSelection(nullptr);

    QCOMPARE(listener.Refine()->icon().cacheKey(), action.icon().cacheKey());
    QCOMPARE(listener.Refine()->toolTip(), QString("Refine"));
}

void destroyedActionDisablesTheButton(const SelectionBar& facts)
{
    const Listener listener(facts);
    auto action = std::make_unique<QAction>("Refine");
    NVApplication::GetInstance()->RegisterRefineSelection(action.get());

    action.reset();

    QVERIFY(!listener.Refine()->defaultAction());
    QVERIFY(!listener.Refine()->isEnabled());
    QCOMPARE(listener.Refine()->text(), QString("Refine selection"));
}

void anotherActionReplacesTheFirst(const SelectionBar& facts)
{
    const Listener listener(facts);
    QAction first("First");
    QAction second("Second");
    NVApplication::GetInstance()->RegisterRefineSelection(&first);

    NVApplication::GetInstance()->RegisterRefineSelection(&second);
    first.setText("Unheard");

    QCOMPARE(listener.Refine()->defaultAction(), &second);
    QCOMPARE(listener.Refine()->text(), QString("Second"));
    // The toolkit goes on listing the first one.
    QCOMPARE(listener.Refine()->actions(), QList<QAction*>({&first, &second}));
}

void oneActionServesTwoBars(const SelectionBar& facts)
{
    QAction action("Refine");
    Listener first(facts);
    const Listener second(facts);
    NVApplication::GetInstance()->RegisterRefineSelection(&action);

    first.bar.reset();
    NVApplication::GetInstance()->RegisterRefineSelection(nullptr);

    QVERIFY(!second.Refine()->isEnabled());
}

// --- the states

void slotOfSubtractIsSpelledAsItAlwaysWas(const SelectionBar& facts)
{
    const Listener listener(facts);
    const QMetaObject* meta = listener.bar->metaObject();

    for (const char* slot : {"OnReplace(bool)", "OnUnite(bool)", "OnSubract(bool)", "OnIntersect(bool)",
                             "OnRefineRegistered(QAction*)"})
    {
        QVERIFY2(meta->indexOfSlot(slot) >= 0, slot);
        QCOMPARE(meta->method(meta->indexOfSlot(slot)).access(), QMetaMethod::Private);
    }
}

void stateIsASlotAndModifiersAreNone(const SelectionBar& facts)
{
    const Listener listener(facts);
    const QMetaObject* meta = listener.bar->metaObject();

    QVERIFY(meta->indexOfSlot("SetState(int)") >= 0);
    for (int i = meta->methodOffset(); i < meta->methodCount(); ++i)
        QVERIFY(meta->method(i).name() != "SetModifiers");
}

void startsAtReplace(const SelectionBar& facts)
{
    const Listener listener(facts);

    QCOMPARE(listener.State(), Replace);
    QCOMPARE(listener.ClearState(), Replace);
    QCOMPARE(listener.Lit(), Replace);
}

void clickChoosesAndTellsOnce(const SelectionBar& facts)
{
    Listener listener(facts);
    listener.bar->show();
    QVERIFY(QTest::qWaitForWindowActive(listener.bar.get()));

    for (const int state : {Unite, Subtract, Intersect, Replace})
    {
        listener.Click(state);
        listener.Click(state);
        QCOMPARE(listener.Told(), QList<int>({state}));
        QCOMPARE(listener.State(), state);
        QCOMPARE(listener.ClearState(), state);
        QCOMPARE(listener.Lit(), state);
        QVERIFY(!listener.Button(state)->hasFocus());
    }
}

void setStateChoosesAndTellsOnce(const SelectionBar& facts)
{
    Listener listener(facts);

    for (const int state : {Unite, Subtract, Intersect, Replace})
    {
        listener.SetState(state);
        listener.SetState(state);
        QCOMPARE(listener.Told(), QList<int>({state}));
        QCOMPARE(listener.State(), state);
        QCOMPARE(listener.Lit(), state);
    }
}

void statesOutOfRangeAreIgnored(const SelectionBar& facts)
{
    Listener listener(facts);

    for (const int state : {5, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()})
        listener.SetState(state);

    QCOMPARE(listener.Told(), QList<int>());
    QCOMPARE(listener.ClearState(), Replace);
    QCOMPARE(listener.Lit(), Replace);
}

void heldModifierOverridesTheChoice(const SelectionBar& facts)
{
    Listener listener(facts);

    listener.SetModifiers(1);
    QCOMPARE(listener.Lit(), Unite);
    QCOMPARE(listener.Told(), QList<int>({Unite}));
    QCOMPARE(listener.State(), Unite);
    QCOMPARE(listener.ClearState(), Replace);

    listener.SetModifiers(0);
    QCOMPARE(listener.Lit(), Replace);
    QCOMPARE(listener.Told(), QList<int>({Replace}));
    QCOMPARE(listener.State(), Replace);
}

void bothModifiersIntersect(const SelectionBar& facts)
{
    Listener listener(facts);

    listener.SetModifiers(3);
    listener.SetModifiers(3);

    QCOMPARE(listener.Lit(), Intersect);
    QCOMPARE(listener.Told(), QList<int>({Intersect}));
}

void modifiersThatMeanTheChosenStateTellNothing(const SelectionBar& facts)
{
    Listener listener(facts);
    listener.SetState(Intersect);
    listener.Told();

    listener.SetModifiers(3);

    QCOMPARE(listener.Lit(), Intersect);
    QCOMPARE(listener.Told(), QList<int>());
    QCOMPARE(listener.State(), Intersect);
}

void oneModifierFollowsAnother(const SelectionBar& facts)
{
    Listener listener(facts);
    listener.SetModifiers(1);
    listener.Told();

    listener.SetModifiers(2);

    QCOMPARE(listener.Told(), QList<int>({Subtract}));
    QCOMPARE(listener.Lit(), Subtract);
}

void otherFlagsLeaveTheChoiceInForce(const SelectionBar& facts)
{
    Listener listener(facts);
    listener.SetState(Subtract);
    listener.SetModifiers(1);
    listener.Told();

    for (const int flags : {4, 5, 7, -1})
    {
        listener.SetModifiers(flags);
        QCOMPARE(listener.State(), Subtract);
        QCOMPARE(listener.Lit(), Subtract);
    }

    QCOMPARE(listener.Told(), QList<int>({Subtract}));
}

void clickUnderAModifierChoosesSilently(const SelectionBar& facts)
{
    Listener listener(facts);
    listener.bar->show();
    QVERIFY(QTest::qWaitForWindowActive(listener.bar.get()));
    listener.SetModifiers(1);
    listener.Told();

    listener.Click(Subtract);
    QCOMPARE(listener.Told(), QList<int>());
    QCOMPARE(listener.State(), Unite);
    QCOMPARE(listener.ClearState(), Subtract);
    QCOMPARE(listener.Lit(), Subtract);

    listener.SetModifiers(0);
    QCOMPARE(listener.Told(), QList<int>({Subtract}));
    QCOMPARE(listener.Lit(), Subtract);
}

void stateOfALitButtonIsNotTaken(const SelectionBar& facts)
{
    Listener listener(facts);
    listener.SetModifiers(1);
    listener.Told();

    listener.SetState(Unite);

    QCOMPARE(listener.ClearState(), Replace);
    QCOMPARE(listener.Lit(), Unite);
    QCOMPARE(listener.Told(), QList<int>());
}

void stateZeroLeavesTheButtonLit(const SelectionBar& facts)
{
    Listener listener(facts);

    listener.SetState(None);
    QCOMPARE(listener.Told(), QList<int>({None}));
    QCOMPARE(listener.State(), None);
    QCOMPARE(listener.ClearState(), None);
    QCOMPARE(listener.Lit(), Replace);

    listener.SetState(None);
    listener.SetState(Replace);
    QCOMPARE(listener.Told(), QList<int>());
    QCOMPARE(listener.ClearState(), None);
    QCOMPARE(listener.Lit(), Replace);

    listener.SetState(Unite);
    QCOMPARE(listener.Told(), QList<int>({Unite}));
    QCOMPARE(listener.ClearState(), Unite);
}

void clickOnTheButtonThatStaysLitIsNoChoice(const SelectionBar& facts)
{
    Listener listener(facts);
    listener.bar->show();
    QVERIFY(QTest::qWaitForWindowActive(listener.bar.get()));
    listener.SetState(None);
    listener.Told();

    listener.Click(Replace);
    QCOMPARE(listener.ClearState(), None);
    QCOMPARE(listener.Told(), QList<int>());

    listener.Click(Subtract);
    QCOMPARE(listener.Told(), QList<int>({Subtract}));
}

void stateZeroUnderAModifierTellsItsStateAgain(const SelectionBar& facts)
{
    Listener listener(facts);
    listener.SetModifiers(2);
    listener.Told();

    listener.SetState(None);
    QCOMPARE(listener.Told(), QList<int>({Subtract}));
    QCOMPARE(listener.ClearState(), None);

    listener.SetModifiers(0);
    QCOMPARE(listener.Told(), QList<int>({None}));
    QCOMPARE(listener.Lit(), Subtract);
}

void modifiersTouchNothingBehindTheButtons(const SelectionBar& facts)
{
    const Listener listener(facts);
    SignalLog log;
    for (int state = Replace; state <= Intersect; ++state)
        log.Watch(listener.Button(state), QString::number(state));

    listener.SetModifiers(2);
    listener.SetModifiers(2);
    listener.SetModifiers(0);

    QCOMPARE(log.Entries(),
             QStringList({"1.toggled(false)", "3.toggled(true)", "3.toggled(false)", "1.toggled(true)"}));
}

// The order shows when the buttons do not exclude each other by themselves.
void buttonsGoOutBeforeOneIsLit(const SelectionBar& facts)
{
    const Listener listener(facts);
    SetExclusive(listener, false);
    for (int state = Replace; state <= Intersect; ++state)
        listener.Button(state)->setChecked(true);
    SignalLog log;
    for (int state = Replace; state <= Intersect; ++state)
        log.Watch(listener.Button(state), QString::number(state));

    listener.SetState(Subtract);
    QCOMPARE(log.Entries(), QStringList({"1.toggled(false)", "2.toggled(false)", "4.toggled(false)"}));
    log.Clear();

    listener.SetModifiers(1);
    QCOMPARE(log.Entries(), QStringList({"3.toggled(false)", "2.toggled(true)"}));
    log.Clear();

    listener.SetState(None);
    QCOMPARE(log.Entries(), QStringList({"2.toggled(false)"}));
    QCOMPARE(listener.Lit(), None);
    log.Clear();

    listener.SetModifiers(2);
    listener.SetModifiers(0);
    QCOMPARE(log.Entries(), QStringList({"3.toggled(true)", "3.toggled(false)"}));
    QCOMPARE(listener.Lit(), None);
    QCOMPARE(listener.ClearState(), None);
}

void stateIsSetBeforeItIsTold(const SelectionBar& facts)
{
    const Listener listener(facts);
    QStringList seen;
    facts.Listen(listener.bar.get(),
                 [&](int state)
                 { seen << QString("%1 %2 %3").arg(state).arg(listener.State()).arg(listener.Lit()); });

    listener.SetState(Unite);
    listener.SetModifiers(3);
    listener.SetState(None);
    listener.SetModifiers(0);

    QCOMPARE(seen, QStringList({"2 2 2", "4 4 4", "4 4 4", "0 0 4"}));
}

// --- the states against a model

// What a bar is to do, told without buttons, handlers and connections.
class Model
{
public:
    int Effective() const { return m_flags == 0 ? m_chosen : m_flags + 1; }
    int Chosen() const { return m_chosen; }
    int Lit() const { return m_lit; }

    void Click(int button, QList<int>& told)
    {
        if (button == m_lit)
            return;
        const int before = Effective();
        m_lit = m_chosen = button;
        TellIfNot(before, told);
    }
    void SetState(int state, QList<int>& told)
    {
        if (state == 0 && m_chosen != 0)
        {
            m_chosen = 0;
            told << Effective();
        }
        else if (state >= 1 && state <= 4 && state != m_chosen)
            Click(state, told);
    }
    void SetModifiers(int flags, QList<int>& told)
    {
        const int before = Effective();
        const bool changed = flags != m_flags;
        m_flags = flags;
        if (changed && Effective() != 0)
            m_lit = Effective();
        TellIfNot(before, told);
    }

private:
    void TellIfNot(int before, QList<int>& told) const
    {
        if (Effective() != before)
            told << Effective();
    }

    int m_chosen = 1;
    int m_lit = 1;
    int m_flags = 0;
};

// Clicks on 1 to 4, SetState(-1) to SetState(5), SetModifiers(0) to SetModifiers(3).
const int Events = 15;
const int Clicks = 4;
const int States = 7;
const int Longest = 5;

QString eventText(int event)
{
    if (event < Clicks)
        return QString("click %1").arg(event + 1);
    if (event < Clicks + States)
        return QString("state %1").arg(event - Clicks - 1);
    return QString("modifiers %1").arg(event - Clicks - States);
}

void act(const Listener& listener, Model& model, int event, QList<int>& told)
{
    if (event < Clicks)
    {
        listener.Button(event + 1)->click();
        model.Click(event + 1, told);
    }
    else if (event < Clicks + States)
    {
        listener.SetState(event - Clicks - 1);
        model.SetState(event - Clicks - 1, told);
    }
    else
    {
        listener.SetModifiers(event - Clicks - States);
        model.SetModifiers(event - Clicks - States, told);
    }
}

bool agree(const Listener& listener, const Model& model, const QList<int>& told)
{
    return listener.State() == model.Effective() && listener.ClearState() == model.Chosen() &&
        listener.Lit() == model.Lit() && listener.told == told;
}

// Back to a bar as it is at first.
void startAnew(Listener& listener)
{
    listener.SetModifiers(0);
    listener.Button(Unite)->setChecked(true);
    listener.Button(Replace)->setChecked(true);
    listener.told.clear();
}

// Each sequence of five holds the shorter ones as its beginnings.
void allSequencesAreAsTheModelSays(const SelectionBar& facts)
{
    Listener listener(facts);
    int sequences = 1;
    for (int i = 0; i < Longest; ++i)
        sequences *= Events;
    for (int sequence = 0; sequence < sequences; ++sequence)
    {
        startAnew(listener);
        Model model;
        QList<int> told;
        QStringList done;
        int rest = sequence;
        for (int i = 0; i < Longest; ++i, rest /= Events)
        {
            act(listener, model, rest % Events, told);
            if (agree(listener, model, told))
                continue;
            for (int all = sequence, k = 0; k <= i; ++k, all /= Events)
                done << eventText(all % Events);
            QFAIL(qPrintable(QString("%1: state %2, chosen %3, lit %4; the model has %5, %6, %7")
                                 .arg(done.join(", "))
                                 .arg(listener.State())
                                 .arg(listener.ClearState())
                                 .arg(listener.Lit())
                                 .arg(model.Effective())
                                 .arg(model.Chosen())
                                 .arg(model.Lit())));
        }
    }
}

struct Check
{
    const char* sentence;
    void (*run)(const SelectionBar&);
};

const Check Checks[] = {
    {"the grid has its margins", gridHasItsMargins},
    {"controls stand in their columns", controlsStandInTheirColumns},
    {"buttons show their pictures", buttonsShowTheirPictures},
    {"the refine button is disabled without an action", refineButtonIsDisabledWithoutAnAction},
    {"the refine text is that of the class", refineTextIsThatOfTheClass},
    {"an action registered earlier is bound", actionRegisteredEarlierIsBound},
    {"an action registered later is bound", actionRegisteredLaterIsBound},
    {"the bound action drives the button", boundActionDrivesTheButton},
    {"an action taken back disables the button", actionTakenBackDisablesTheButton},
    {"the icon of an action taken back stays", iconOfAnActionTakenBackStays},
    {"a destroyed action disables the button", destroyedActionDisablesTheButton},
    {"another action replaces the first", anotherActionReplacesTheFirst},
    {"one action serves two bars", oneActionServesTwoBars},
    {"the slot of subtract is spelled as it always was", slotOfSubtractIsSpelledAsItAlwaysWas},
    {"the state is a slot and the modifiers are none", stateIsASlotAndModifiersAreNone},
    {"starts at replace", startsAtReplace},
    {"a click chooses and tells once", clickChoosesAndTellsOnce},
    {"SetState chooses and tells once", setStateChoosesAndTellsOnce},
    {"states out of range are ignored", statesOutOfRangeAreIgnored},
    {"a held modifier overrides the choice", heldModifierOverridesTheChoice},
    {"both modifiers intersect", bothModifiersIntersect},
    {"modifiers that mean the chosen state tell nothing", modifiersThatMeanTheChosenStateTellNothing},
    {"one modifier follows another", oneModifierFollowsAnother},
    {"other flags leave the choice in force", otherFlagsLeaveTheChoiceInForce},
    {"a click under a modifier chooses silently", clickUnderAModifierChoosesSilently},
    {"the state of a lit button is not taken", stateOfALitButtonIsNotTaken},
    {"state 0 leaves the button lit", stateZeroLeavesTheButtonLit},
    {"a click on the button that stays lit is no choice", clickOnTheButtonThatStaysLitIsNoChoice},
    {"state 0 under a modifier tells its state again", stateZeroUnderAModifierTellsItsStateAgain},
    {"modifiers touch nothing behind the buttons", modifiersTouchNothingBehindTheButtons},
    {"buttons go out before one is lit", buttonsGoOutBeforeOneIsLit},
    {"the state is set before it is told", stateIsSetBeforeItIsTold},
    {"all sequences are as the model says", allSequencesAreAsTheModelSays},
};

} // namespace

BarForm SelectionForm(const SelectionBar& bar)
{
    QList<BarControl> controls = {BarControl::Separator("frame_4"),
                                  StateButton("m_pReplace", "Replace", true),
                                  StateButton("m_pUnite", "Unite", false),
                                  StateButton("m_pSubtract", "Subtract", false),
                                  StateButton("m_pIntersect", "Intersect", false),
                                  BarControl::Separator("frame_5")};
    const QStringList tabOrder = {"m_pReplace", "m_pUnite", "m_pSubtract", "m_pIntersect"};
    const auto create = bar.Create;
    BarForm form([create] { return create(nullptr); }, bar.Form, bar.Title, bar.Picture,
                 controls + bar.Controls, tabOrder + bar.TabOrder);
    return form.PictureLabel("m_pPicture");
}

void AddSelectionBarChecks()
{
    QTest::addColumn<int>("check");
    int row = 0;
    for (const Check& check : Checks)
        QTest::newRow(check.sentence) << row++;
}

void RunSelectionBarCheck(const SelectionBar& bar)
{
    QFETCH(const int, check);
    Checks[check].run(bar);
}

void ResetAfterSelectionBarCheck()
{
    NVApplication::GetInstance()->RegisterRefineSelection(nullptr);
}
