// The nine cells: states, signals and their order, mouse and keys, what a screen reader is told, and how it
// looks at any scale and in any palette.

#include <QAccessible>
#include <QApplication>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QtTest>

#include <memory>

#include "ProbeImage.h"
#include "SignalLog.h"
#include "TestMain.h"
#include "TransformationCenterPointControl.h"

using Control = TransformationCenterPointControl;

namespace
{

QPoint MiddleOf(const QWidget& control, int state)
{
    const int column = (state - 1) % 3;
    const int row = (state - 1) / 3;
    return QPoint(control.width() * (2 * column + 1) / 6, control.height() * (2 * row + 1) / 6);
}

// What one change tells.
QStringList Change(int state)
{
    const QString number = QString::number(state);
    const QString name = QMetaEnum::fromType<Control::ControlState>().valueToKey(state);
    return {"StateChange(" + name + ")", "StateChanged(" + name + ")", "StateChanged(" + number + ")"};
}

QPalette TestPalette()
{
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(10, 20, 30));
    palette.setColor(QPalette::WindowText, QColor(250, 200, 0));
    palette.setColor(QPalette::Base, QColor(0, 90, 0));
    palette.setColor(QPalette::Highlight, QColor(200, 0, 220));
    palette.setColor(QPalette::Mid, QColor(90, 90, 90));
    return palette;
}

// A window with a button before and behind the control.
struct Shown
{
    Shown()
    {
        auto* layout = new QHBoxLayout(&window);
        layout->addWidget(before = new QPushButton("before"));
        layout->addWidget(control = new Control);
        layout->addWidget(after = new QLineEdit);
        window.show();
        window.activateWindow();
    }
    bool Ready() { return QTest::qWaitForWindowActive(&window); }

    QWidget window;
    QPushButton* before;
    Control* control;
    QLineEdit* after;
};

} // namespace

class tst_TransformationCenterPointControl : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsInTheCentre();
    void statesCountInReadingOrder();
    void setterTellsEachChangeOnce();
    void oldStateStandsUntilItHasChanged();
    void anythingElseIsTheFirstCell_data();
    void anythingElseIsTheFirstCell();
    void hostsKnowTheSignalsByTheirTexts();
    void clickChoosesTheCell_data();
    void clickChoosesTheCell();
    void clickOnTheChosenCellTellsNothing();
    void otherButtonsChooseNothing();
    void cellsFollowTheSize();
    void arrowKeysGoToTheNeighbour_data();
    void arrowKeysGoToTheNeighbour();
    void keysWithModifiersArePassedOn();
    void otherKeysArePassedOn();
    void tabReachesAndLeavesIt();
    void rightToLeftChangesNothing();
    void disabledTakesNoInput();
    void screenReaderHearsThePlace();
    void screenReaderCanChoose();
    void chosenCellStandsOut_data();
    void chosenCellStandsOut();
    void edgesAreSharpAtAnyScale_data();
    void edgesAreSharpAtAnyScale();
    void colorsComeFromThePalette();
    void pointerMarksACell();
    void focusIsShown();
    void deletedFromItsOwnSignals_data();
    void deletedFromItsOwnSignals();
};

void tst_TransformationCenterPointControl::startsInTheCentre()
{
    const Control control;
    QCOMPARE(control.GetState(), Control::Center);
    QCOMPARE(control.sizeHint(), QSize(40, 40));
    QVERIFY(control.minimumSizeHint().width() <= 40);
}

void tst_TransformationCenterPointControl::statesCountInReadingOrder()
{
    const QList<Control::ControlState> order = {
        Control::TopLeft,    Control::TopCenter,    Control::TopRight,
        Control::MiddleLeft, Control::Center,       Control::MiddleRight,
        Control::BottomLeft, Control::BottomCenter, Control::BottomRight};
    for (int i = 0; i < 9; ++i)
        QCOMPARE(int(order.at(i)), i + 1);
}

void tst_TransformationCenterPointControl::setterTellsEachChangeOnce()
{
    Control control;
    SignalLog log(&control);
    control.SetState(Control::TopRight);
    QCOMPARE(log.Entries(), Change(3));
    control.SetState(Control::TopRight);
    QCOMPARE(log.Count(), 3);
    QCOMPARE(control.GetState(), Control::TopRight);
}

void tst_TransformationCenterPointControl::oldStateStandsUntilItHasChanged()
{
    Control control;
    QList<int> seen;
    const auto see = [&] { seen << control.GetState(); };
    connect(&control, &Control::StateChange, &control, see);
    connect(&control, qOverload<Control::ControlState>(&Control::StateChanged), &control, see);
    connect(&control, qOverload<int>(&Control::StateChanged), &control, see);
    control.SetState(Control::BottomLeft);
    QCOMPARE(seen, QList<int>({5, 7, 7}));
}

void tst_TransformationCenterPointControl::anythingElseIsTheFirstCell_data()
{
    QTest::addColumn<int>("state");
    for (const int state : {0, -1, 10, 77, INT_MIN, INT_MAX})
        QTest::newRow(qPrintable(QString::number(state))) << state;
}

void tst_TransformationCenterPointControl::anythingElseIsTheFirstCell()
{
    QFETCH(int, state);
    Control control;
    SignalLog log(&control);
    control.SetState(Control::ControlState(state));
    QCOMPARE(control.GetState(), Control::TopLeft);
    QCOMPARE(log.Entries(), Change(1));
}

void tst_TransformationCenterPointControl::hostsKnowTheSignalsByTheirTexts()
{
    const QMetaObject& meta = Control::staticMetaObject;
    QVERIFY(meta.indexOfSignal("StateChanged(int)") >= 0);
    QVERIFY(meta.indexOfSignal("StateChanged(TransformationCenterPointControl::ControlState)") >= 0);
    QVERIFY(meta.indexOfSignal("StateChange(TransformationCenterPointControl::ControlState)") >= 0);
    QVERIFY(meta.indexOfSlot("SetState(TransformationCenterPointControl::ControlState)") >= 0);
}

void tst_TransformationCenterPointControl::clickChoosesTheCell_data()
{
    QTest::addColumn<int>("state");
    for (int state = 1; state <= 9; ++state)
        QTest::newRow(qPrintable(QString::number(state))) << state;
}

void tst_TransformationCenterPointControl::clickChoosesTheCell()
{
    QFETCH(int, state);
    Shown shown;
    QVERIFY(shown.Ready());
    shown.control->SetState(state == 1 ? Control::Center : Control::TopLeft);
    SignalLog log(shown.control);
    QTest::mouseClick(shown.control, Qt::LeftButton, Qt::NoModifier, MiddleOf(*shown.control, state));
    QCOMPARE(int(shown.control->GetState()), state);
    QCOMPARE(log.Entries(), Change(state));
}

void tst_TransformationCenterPointControl::clickOnTheChosenCellTellsNothing()
{
    Shown shown;
    QVERIFY(shown.Ready());
    SignalLog log(shown.control);
    QTest::mouseClick(shown.control, Qt::LeftButton, Qt::NoModifier, MiddleOf(*shown.control, 5));
    QCOMPARE(log.Entries(), QStringList());
}

void tst_TransformationCenterPointControl::otherButtonsChooseNothing()
{
    Shown shown;
    QVERIFY(shown.Ready());
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton})
        QTest::mouseClick(shown.control, button, Qt::NoModifier, MiddleOf(*shown.control, 1));
    QCOMPARE(shown.control->GetState(), Control::Center);
}

// The square stands in the middle of a longer widget; beside it the nearest cell counts.
void tst_TransformationCenterPointControl::cellsFollowTheSize()
{
    Control control;
    control.resize(300, 90);
    QTest::mouseClick(&control, Qt::LeftButton, Qt::NoModifier, QPoint(120, 15));
    QCOMPARE(control.GetState(), Control::TopLeft);
    QTest::mouseClick(&control, Qt::LeftButton, Qt::NoModifier, QPoint(180, 45));
    QCOMPARE(control.GetState(), Control::MiddleRight);
    QTest::mouseClick(&control, Qt::LeftButton, Qt::NoModifier, QPoint(2, 88));
    QCOMPARE(control.GetState(), Control::BottomLeft);
    QTest::mouseClick(&control, Qt::LeftButton, Qt::NoModifier, QPoint(298, 2));
    QCOMPARE(control.GetState(), Control::TopRight);
}

void tst_TransformationCenterPointControl::arrowKeysGoToTheNeighbour_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("to");
    QTest::newRow("left") << 5 << int(Qt::Key_Left) << 4;
    QTest::newRow("right") << 5 << int(Qt::Key_Right) << 6;
    QTest::newRow("up") << 5 << int(Qt::Key_Up) << 2;
    QTest::newRow("down") << 5 << int(Qt::Key_Down) << 8;
    QTest::newRow("left at the edge") << 7 << int(Qt::Key_Left) << 7;
    QTest::newRow("right at the edge") << 3 << int(Qt::Key_Right) << 3;
    QTest::newRow("up at the edge") << 2 << int(Qt::Key_Up) << 2;
    QTest::newRow("down at the edge") << 9 << int(Qt::Key_Down) << 9;
    QTest::newRow("home") << 8 << int(Qt::Key_Home) << 1;
    QTest::newRow("end") << 2 << int(Qt::Key_End) << 9;
}

void tst_TransformationCenterPointControl::arrowKeysGoToTheNeighbour()
{
    QFETCH(int, from);
    QFETCH(int, key);
    QFETCH(int, to);
    Shown shown;
    QVERIFY(shown.Ready());
    shown.control->SetState(Control::ControlState(from));
    shown.control->setFocus();
    SignalLog log(shown.control);
    QTest::keyClick(shown.control, Qt::Key(key));
    QCOMPARE(int(shown.control->GetState()), to);
    QCOMPARE(log.Entries(), from == to ? QStringList() : Change(to));
    QVERIFY(shown.control->hasFocus());
}

void tst_TransformationCenterPointControl::keysWithModifiersArePassedOn()
{
    Control control;
    for (const Qt::KeyboardModifier modifier : {Qt::ControlModifier, Qt::AltModifier, Qt::ShiftModifier})
    {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_Left, modifier);
        QApplication::sendEvent(&control, &event);
        QVERIFY(!event.isAccepted());
    }
    QCOMPARE(control.GetState(), Control::Center);
    QKeyEvent keypad(QEvent::KeyPress, Qt::Key_Left, Qt::KeypadModifier);
    QApplication::sendEvent(&control, &keypad);
    QCOMPARE(control.GetState(), Control::MiddleLeft);
}

void tst_TransformationCenterPointControl::otherKeysArePassedOn()
{
    Control control;
    for (const int key : {Qt::Key_Return, Qt::Key_Escape, Qt::Key_A})
    {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(&control, &event);
        QVERIFY(!event.isAccepted());
    }
}

void tst_TransformationCenterPointControl::tabReachesAndLeavesIt()
{
    Shown shown;
    QVERIFY(shown.Ready());
    shown.before->setFocus();
    QTest::keyClick(shown.before, Qt::Key_Tab);
    QVERIFY(shown.control->hasFocus());
    QTest::keyClick(shown.control, Qt::Key_Tab);
    QVERIFY(shown.after->hasFocus());
    QTest::mouseClick(shown.control, Qt::LeftButton, Qt::NoModifier, QPoint(3, 3));
    QVERIFY(shown.control->hasFocus());
}

void tst_TransformationCenterPointControl::rightToLeftChangesNothing()
{
    Shown shown;
    QVERIFY(shown.Ready());
    shown.control->setLayoutDirection(Qt::RightToLeft);
    QTest::mouseClick(shown.control, Qt::LeftButton, Qt::NoModifier, MiddleOf(*shown.control, 4));
    QCOMPARE(shown.control->GetState(), Control::MiddleLeft);
    QTest::keyClick(shown.control, Qt::Key_Right);
    QCOMPARE(shown.control->GetState(), Control::Center);
}

void tst_TransformationCenterPointControl::disabledTakesNoInput()
{
    Shown shown;
    QVERIFY(shown.Ready());
    shown.control->setEnabled(false);
    QTest::mouseClick(shown.control, Qt::LeftButton, Qt::NoModifier, QPoint(3, 3));
    QTest::keyClick(shown.control, Qt::Key_Left);
    QCOMPARE(shown.control->GetState(), Control::Center);
    shown.control->SetState(Control::TopLeft);
    QCOMPARE(shown.control->GetState(), Control::TopLeft);
}

void tst_TransformationCenterPointControl::screenReaderHearsThePlace()
{
    Control control;
    control.setAccessibleName("Position");
    QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(&control);
    QVERIFY(reader);
    QCOMPARE(reader->text(QAccessible::Name), QString("Position"));
    QCOMPARE(reader->text(QAccessible::Value), QString("Center"));
    const QStringList names = {"Top left",     "Top center",  "Top right",     "Middle left", "Center",
                               "Middle right", "Bottom left", "Bottom center", "Bottom right"};
    for (int state = 1; state <= 9; ++state)
    {
        control.SetState(Control::ControlState(state));
        QCOMPARE(reader->text(QAccessible::Value), names.at(state - 1));
        QCOMPARE(reader->valueInterface()->currentValue().toInt(), state);
    }
}

void tst_TransformationCenterPointControl::screenReaderCanChoose()
{
    Control control;
    QAccessibleValueInterface* value = QAccessible::queryAccessibleInterface(&control)->valueInterface();
    QVERIFY(value);
    QCOMPARE(value->minimumValue().toInt(), 1);
    QCOMPARE(value->maximumValue().toInt(), 9);
    QCOMPARE(value->minimumStepSize().toInt(), 1);
    value->setCurrentValue(8);
    QCOMPARE(control.GetState(), Control::BottomCenter);
    value->setCurrentValue(10);
    value->setCurrentValue(0);
    QCOMPARE(control.GetState(), Control::BottomCenter);
}

void tst_TransformationCenterPointControl::chosenCellStandsOut_data()
{
    clickChoosesTheCell_data();
}

void tst_TransformationCenterPointControl::chosenCellStandsOut()
{
    QFETCH(int, state);
    Control control;
    control.resize(40, 40);
    control.setPalette(TestPalette());
    control.SetState(Control::ControlState(state));
    const ProbeImage probe(&control);
    for (int cell = 1; cell <= 9; ++cell)
    {
        const QPoint middle = MiddleOf(control, cell);
        const QColor color = control.palette().color(cell == state ? QPalette::Highlight : QPalette::Base);
        NV_VERIFY_NEAR(probe, middle.x(), middle.y(), color, 0);
    }
    QVERIFY(probe.BoundsOf(control.palette().color(QPalette::Highlight), 0).width() <= 12);
}

void tst_TransformationCenterPointControl::edgesAreSharpAtAnyScale_data()
{
    QTest::addColumn<double>("scale");
    for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0, 3.0})
        QTest::newRow(qPrintable(QString::number(scale))) << scale;
}

// Whole device pixels alone: no mixed colours.
void tst_TransformationCenterPointControl::edgesAreSharpAtAnyScale()
{
    QFETCH(double, scale);
    Control control;
    control.resize(40, 40);
    control.setPalette(TestPalette());
    const ProbeImage probe(&control, scale);
    QCOMPARE(probe.Image().width(), qCeil(40 * scale));
    QCOMPARE(probe.ColorCount(), 5);
    const QRect cells = probe.BoundsOf(TestPalette().color(QPalette::WindowText), 0);
    QVERIFY(qAbs(cells.left() - (39 - cells.right())) <= 1);
    QCOMPARE(cells.width(), cells.height());
    QVERIFY(cells.width() >= 32);
}

void tst_TransformationCenterPointControl::colorsComeFromThePalette()
{
    Control control;
    control.resize(40, 40);
    control.setPalette(TestPalette());
    const ProbeImage probe(&control);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Base, QPalette::Highlight})
        QVERIFY(probe.CountOf(TestPalette().color(role), 0) > 20);
    QPalette disabled = TestPalette();
    disabled.setColor(QPalette::Disabled, QPalette::Highlight, QColor(1, 2, 3));
    control.setPalette(disabled);
    control.setEnabled(false);
    QVERIFY(ProbeImage(&control).CountOf(QColor(1, 2, 3), 0) > 20);
}

void tst_TransformationCenterPointControl::pointerMarksACell()
{
    Shown shown;
    QVERIFY(shown.Ready());
    const ProbeImage before(shown.control);
    QTest::mouseMove(shown.control, MiddleOf(*shown.control, 9));
    QTRY_VERIFY(ProbeImage(shown.control).Differs(before));
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(shown.control, &leave);
    QVERIFY(!ProbeImage(shown.control).Differs(before));
    QTest::mouseMove(shown.control, MiddleOf(*shown.control, 1));
    QTRY_VERIFY(ProbeImage(shown.control).Differs(before));
    shown.control->setEnabled(false);
    shown.control->setEnabled(true);
    QVERIFY(!ProbeImage(shown.control).Differs(before));
}

void tst_TransformationCenterPointControl::focusIsShown()
{
    Shown shown;
    QVERIFY(shown.Ready());
    shown.before->setFocus();
    const ProbeImage before(shown.control);
    QTest::keyClick(shown.before, Qt::Key_Tab);
    QVERIFY(shown.control->hasFocus());
    QVERIFY(ProbeImage(shown.control).Differs(before));
}

void tst_TransformationCenterPointControl::deletedFromItsOwnSignals_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("StateChange") << 0;
    QTest::newRow("StateChanged(ControlState)") << 1;
    QTest::newRow("StateChanged(int)") << 2;
}

void tst_TransformationCenterPointControl::deletedFromItsOwnSignals()
{
    QFETCH(int, signal);
    const QPointer<Control> control(new Control);
    const auto drop = [&] { delete control.data(); };
    if (signal == 0)
        connect(control.data(), &Control::StateChange, drop);
    else if (signal == 1)
        connect(control.data(), qOverload<Control::ControlState>(&Control::StateChanged), drop);
    else
        connect(control.data(), qOverload<int>(&Control::StateChanged), drop);
    control->SetState(Control::TopLeft);
    QVERIFY(!control);
}

NV_TEST_MAIN(tst_TransformationCenterPointControl)

#include "tst_TransformationCenterPointControl.moc"
