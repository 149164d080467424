// The choice of an anchor: what a cell means, mouse and keys, the arrows and how they are drawn.

#include <QAccessible>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTranslator>
#include <QVBoxLayout>
#include <QtTest>

#include <memory>

#include "KXAnchorSelection.h"
#include "KXDialog.h"
#include "ProbeImage.h"
#include "SignalLog.h"
#include "TestMain.h"

using Anchor = KXAnchorSelection;

namespace
{

const int Count = 9;

QList<QRadioButton*> Cells(const QWidget& anchor)
{
    return anchor.findChildren<QRadioButton*>();
}

QRadioButton* Cell(const QWidget& anchor, int state)
{
    return Cells(anchor).at(state);
}

QString Told(int state)
{
    return QString("StateChanged(%1)").arg(QMetaEnum::fromType<Anchor::State>().valueToKey(state));
}

// An anchor selection between two line edits in an active window.
struct Window
{
    Window()
    {
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(before = new QLineEdit);
        layout->addWidget(anchor = new Anchor);
        layout->addWidget(after = new QLineEdit);
    }

    bool Show()
    {
        window.show();
        window.activateWindow();
        return QTest::qWaitForWindowActive(&window);
    }

    QWidget window;
    QLineEdit* before = nullptr;
    Anchor* anchor = nullptr;
    QLineEdit* after = nullptr;
};

// A few colours that cannot be mistaken for one another.
QPalette LoudPalette()
{
    QPalette palette;
    palette.setColor(QPalette::Window, Qt::magenta);
    palette.setColor(QPalette::Base, Qt::yellow);
    palette.setColor(QPalette::Text, Qt::red);
    palette.setColor(QPalette::Mid, Qt::green);
    palette.setColor(QPalette::Highlight, Qt::blue);
    palette.setColor(QPalette::HighlightedText, Qt::cyan);
    palette.setColor(QPalette::Disabled, QPalette::Text, Qt::gray);
    return palette;
}

// Where an arrow is heavier than at the middle of its cell, per axis: -1, 0 or 1. That is its head.
QPoint Heading(Anchor& anchor, int state)
{
    const ProbeImage probe(&anchor);
    const QRect cell = Cell(anchor, state)->geometry();
    QPointF sum;
    double weight = 0.0;
    for (int y = cell.top() + 1; y < cell.bottom(); ++y)
    {
        for (int x = cell.left() + 1; x < cell.right(); ++x)
        {
            const double ink = 255 - probe.At(x, y).green();
            weight += ink;
            sum += ink * (QPointF(x + 0.5, y + 0.5) - QRectF(cell).center());
        }
    }
    if (weight == 0.0)
        return QPoint();
    const auto sign = [](double value) { return value > 0.3 ? 1 : value < -0.3 ? -1 : 0; };
    return QPoint(sign(sum.x() / weight), sign(sum.y() / weight));
}

} // namespace

class tst_KXAnchorSelection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsAtTheCentreAndShrinksNowhere();
    void statesAreCountedRowByRow();
    void stateIsToldOnceAChange();
    void whatIsNoAnchorIsIgnored();
    void clickChoosesTheCell_data();
    void clickChoosesTheCell();
    void otherButtonsChooseNothing();
    void pressThatLeavesTheCellChoosesNothing();
    void everyCornerOfACellCanBeClicked();
    void arrowKeysWalk_data();
    void arrowKeysWalk();
    void tabGoesPastTheCellsAtOnce();
    void tabFindsTheChosenCellThoughNoneHadTheFocus();
    void focusGoesToTheChosenCell();
    void spaceOnTheChosenCellChangesNothing();
    void enterIsLeftToTheDialog();
    void buddyGivesTheNameAndPassesTheFocus();
    void arrowsAreThese_data();
    void arrowsAreThese();
    void arrowsAreDrawnAsTheyPoint_data();
    void arrowsAreDrawnAsTheyPoint();
    void setterOfTheSameRepaintsNothing();
    void coloursAreThoseOfThePalette();
    void disabledOneIsFadedAndChoosesNothing();
    void focusAndPointerAreShown();
    void drawnSharplyAtAnyScale_data();
    void drawnSharplyAtAnyScale();
    void framesAreEquallyThickAtAnyScale_data();
    void framesAreEquallyThickAtAnyScale();
    void rightToLeftMirrorsNothing();
    void sizeIsFixed();
    void screenReadersMeetNineRadioButtons();
    void namesFollowTheLanguage();
    void dyingWithTheFocusIsQuiet();
};

void tst_KXAnchorSelection::startsAtTheCentreAndShrinksNowhere()
{
    const Anchor anchor;
    QCOMPARE(anchor.GetState(), Anchor::Center);
    QVERIFY(!anchor.IsShrinkHorizontal());
    QVERIFY(!anchor.IsShrinkVertical());
}

// Hosts compute with the numbers.
void tst_KXAnchorSelection::statesAreCountedRowByRow()
{
    const QList<int> states{Anchor::TopLeft,    Anchor::Top,    Anchor::TopRight,
                            Anchor::Left,       Anchor::Center, Anchor::Right,
                            Anchor::BottomLeft, Anchor::Bottom, Anchor::BottomRight};
    QCOMPARE(states, QList<int>({0, 1, 2, 3, 4, 5, 6, 7, 8}));
    Anchor anchor;
    anchor.resize(anchor.sizeHint());
    anchor.ensurePolished();
    anchor.layout()->activate();
    for (int state = 0; state < Count; ++state)
    {
        const QPoint middle = Cell(anchor, state)->geometry().center();
        QCOMPARE(middle.x() * 3 / anchor.width(), state % 3);
        QCOMPARE(middle.y() * 3 / anchor.height(), state / 3);
    }
}

void tst_KXAnchorSelection::stateIsToldOnceAChange()
{
    Anchor anchor;
    SignalLog log(&anchor);
    anchor.SetState(Anchor::TopRight);
    QCOMPARE(anchor.GetState(), Anchor::TopRight);
    QCOMPARE(log.Entries(), QStringList({Told(Anchor::TopRight)}));
    anchor.SetState(Anchor::TopRight);
    anchor.ShrinkHorizontal(true);
    anchor.ShrinkVertical(true);
    QCOMPARE(log.Count(), 1);
    anchor.SetState(Anchor::Center);
    QCOMPARE(log.Entries().mid(1), QStringList({Told(Anchor::Center)}));
}

void tst_KXAnchorSelection::whatIsNoAnchorIsIgnored()
{
    Anchor anchor;
    const SignalLog log(&anchor);
    anchor.SetState(static_cast<Anchor::State>(Count));
    anchor.SetState(static_cast<Anchor::State>(15));
    QCOMPARE(anchor.GetState(), Anchor::Center);
    QCOMPARE(log.Count(), 0);
}

void tst_KXAnchorSelection::clickChoosesTheCell_data()
{
    QTest::addColumn<int>("state");
    for (int state = 0; state < Count; ++state)
        QTest::newRow(QMetaEnum::fromType<Anchor::State>().valueToKey(state)) << state;
}

void tst_KXAnchorSelection::clickChoosesTheCell()
{
    QFETCH(int, state);
    Window host;
    QVERIFY(host.Show());
    const SignalLog log(host.anchor);
    QTest::mouseClick(Cell(*host.anchor, state), Qt::LeftButton);
    QCOMPARE(int(host.anchor->GetState()), state);
    const QStringList told = state == Anchor::Center ? QStringList() : QStringList(Told(state));
    QCOMPARE(log.Entries(), told);
    QVERIFY(Cell(*host.anchor, state)->hasFocus());
    for (int other = 0; other < Count; ++other)
        QCOMPARE(Cell(*host.anchor, other)->isChecked(), other == state);
}

void tst_KXAnchorSelection::otherButtonsChooseNothing()
{
    Window host;
    QVERIFY(host.Show());
    const SignalLog log(host.anchor);
    QTest::mouseClick(Cell(*host.anchor, Anchor::Top), Qt::RightButton);
    QTest::mouseClick(Cell(*host.anchor, Anchor::Top), Qt::MiddleButton);
    QCOMPARE(host.anchor->GetState(), Anchor::Center);
    QCOMPARE(log.Count(), 0);
}

void tst_KXAnchorSelection::pressThatLeavesTheCellChoosesNothing()
{
    Window host;
    QVERIFY(host.Show());
    QRadioButton* cell = Cell(*host.anchor, Anchor::Top);
    QTest::mousePress(cell, Qt::LeftButton);
    QTest::mouseMove(cell, QPoint(-5, 5));
    QTest::mouseRelease(cell, Qt::LeftButton, Qt::NoModifier, QPoint(-5, 5));
    QCOMPARE(host.anchor->GetState(), Anchor::Center);
}

// Unlike a radio button of the style, which takes clicks on its mark and text alone.
void tst_KXAnchorSelection::everyCornerOfACellCanBeClicked()
{
    Window host;
    QVERIFY(host.Show());
    QRadioButton* cell = Cell(*host.anchor, Anchor::Right);
    for (const QPoint& corner : {cell->rect().topLeft(), cell->rect().topRight(), cell->rect().bottomLeft(),
                                 cell->rect().bottomRight()})
    {
        host.anchor->SetState(Anchor::Center);
        QTest::mouseClick(cell, Qt::LeftButton, Qt::NoModifier, corner);
        QCOMPARE(host.anchor->GetState(), Anchor::Right);
    }
}

void tst_KXAnchorSelection::arrowKeysWalk_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("to");
    for (int from = 0; from < Count; ++from)
    {
        const QByteArray name = QMetaEnum::fromType<Anchor::State>().valueToKey(from);
        const int column = from % 3;
        const int row = from / 3;
        QTest::newRow(name + ", left") << from << int(Qt::Key_Left) << (column > 0 ? from - 1 : from);
        QTest::newRow(name + ", right") << from << int(Qt::Key_Right) << (column < 2 ? from + 1 : from);
        QTest::newRow(name + ", up") << from << int(Qt::Key_Up) << (row > 0 ? from - 3 : from);
        QTest::newRow(name + ", down") << from << int(Qt::Key_Down) << (row < 2 ? from + 3 : from);
    }
}

// A walk ends at the edges.
void tst_KXAnchorSelection::arrowKeysWalk()
{
    QFETCH(int, from);
    QFETCH(int, key);
    QFETCH(int, to);
    Window host;
    host.anchor->SetState(static_cast<Anchor::State>(from));
    QVERIFY(host.Show());
    host.anchor->setFocus();
    const SignalLog log(host.anchor);
    QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key));
    QCOMPARE(int(host.anchor->GetState()), to);
    QCOMPARE(QApplication::focusWidget(), Cell(*host.anchor, to));
    QCOMPARE(log.Count(), from == to ? 0 : 1);
}

void tst_KXAnchorSelection::tabGoesPastTheCellsAtOnce()
{
    Window host;
    QVERIFY(host.Show());
    for (int state = 0; state < Count; ++state)
    {
        host.anchor->SetState(static_cast<Anchor::State>(state));
        host.before->setFocus();
        QTest::keyClick(host.before, Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), Cell(*host.anchor, state));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), host.after);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
        QCOMPARE(QApplication::focusWidget(), Cell(*host.anchor, state));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
        QCOMPARE(QApplication::focusWidget(), host.before);
        QCOMPARE(int(host.anchor->GetState()), state);
    }
}

void tst_KXAnchorSelection::tabFindsTheChosenCellThoughNoneHadTheFocus()
{
    for (const bool back : {false, true})
    {
        Window host;
        QVERIFY(host.Show());
        host.anchor->SetState(Anchor::TopLeft);
        host.anchor->SetState(Anchor::BottomRight);
        host.anchor->SetState(Anchor::Right);
        QLineEdit* from = back ? host.after : host.before;
        from->setFocus();
        QTest::keyClick(from, back ? Qt::Key_Backtab : Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), Cell(*host.anchor, Anchor::Right));
    }
}

void tst_KXAnchorSelection::focusGoesToTheChosenCell()
{
    Window host;
    QVERIFY(host.Show());
    host.anchor->SetState(Anchor::Bottom);
    host.anchor->setFocus();
    QVERIFY(Cell(*host.anchor, Anchor::Bottom)->hasFocus());
}

void tst_KXAnchorSelection::spaceOnTheChosenCellChangesNothing()
{
    Window host;
    QVERIFY(host.Show());
    host.anchor->setFocus();
    const SignalLog log(host.anchor);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    QCOMPARE(host.anchor->GetState(), Anchor::Center);
    QCOMPARE(log.Count(), 0);
}

void tst_KXAnchorSelection::enterIsLeftToTheDialog()
{
    KXDialog dialog;
    auto* layout = new QVBoxLayout(dialog.Content());
    auto* anchor = new Anchor;
    auto* box = new QDialogButtonBox(QDialogButtonBox::Ok);
    layout->addWidget(anchor);
    layout->addWidget(box);
    connect(box, &QDialogButtonBox::accepted, &dialog, &KXDialog::Accept);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    anchor->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QCOMPARE(dialog.GetResult(), int(KXDialog::ResultAccepted));
}

void tst_KXAnchorSelection::buddyGivesTheNameAndPassesTheFocus()
{
    Window host;
    auto* label = new QLabel("&Anchor:");
    label->setBuddy(host.anchor);
    host.window.layout()->addWidget(label);
    QVERIFY(host.Show());
    QCOMPARE(QAccessible::queryAccessibleInterface(host.anchor)->text(QAccessible::Name), QString("Anchor:"));
    QTest::keyClick(&host.window, Qt::Key_A, Qt::AltModifier);
    QVERIFY(Cell(*host.anchor, Anchor::Center)->hasFocus());
}

void tst_KXAnchorSelection::arrowsAreThese_data()
{
    QTest::addColumn<int>("anchor");
    QTest::addColumn<bool>("horizontal");
    QTest::addColumn<bool>("vertical");
    // One sign a cell, row by row: where the arrow points to, by the keys around 5 of a number pad.
    QTest::addColumn<QString>("arrows");
    QTest::newRow("centre, grows") << int(Anchor::Center) << false << false << "789406123";
    QTest::newRow("centre, narrower") << int(Anchor::Center) << true << false << "987604321";
    QTest::newRow("centre, lower") << int(Anchor::Center) << false << true << "123406789";
    QTest::newRow("centre, shrinks") << int(Anchor::Center) << true << true << "321604987";
    QTest::newRow("top left, grows") << int(Anchor::TopLeft) << false << false << "060230000";
    QTest::newRow("top left, narrower") << int(Anchor::TopLeft) << true << false << "040210000";
    QTest::newRow("top left, lower") << int(Anchor::TopLeft) << false << true << "060890000";
    QTest::newRow("top left, shrinks") << int(Anchor::TopLeft) << true << true << "040870000";
    QTest::newRow("right, grows") << int(Anchor::Right) << false << false << "078040012";
    QTest::newRow("right, shrinks") << int(Anchor::Right) << true << true << "032060098";
    QTest::newRow("bottom, grows") << int(Anchor::Bottom) << false << false << "000789406";
    QTest::newRow("bottom, lower") << int(Anchor::Bottom) << false << true << "000123406";
    QTest::newRow("bottom right, grows") << int(Anchor::BottomRight) << false << false << "000078040";
}

void tst_KXAnchorSelection::arrowsAreThese()
{
    QFETCH(int, anchor);
    QFETCH(bool, horizontal);
    QFETCH(bool, vertical);
    QFETCH(QString, arrows);
    const QList<QPoint> pad{{0, 0}, {-1, 1}, {0, 1},   {1, 1},  {-1, 0},
                            {0, 0}, {1, 0},  {-1, -1}, {0, -1}, {1, -1}};
    for (int cell = 0; cell < Count; ++cell)
    {
        const QPoint arrow = Anchor::ArrowOf(static_cast<Anchor::State>(cell),
                                             static_cast<Anchor::State>(anchor), horizontal, vertical);
        QCOMPARE(arrow, pad.at(arrows.at(cell).digitValue()));
    }
}

void tst_KXAnchorSelection::arrowsAreDrawnAsTheyPoint_data()
{
    QTest::addColumn<bool>("horizontal");
    QTest::addColumn<bool>("vertical");
    QTest::newRow("grows") << false << false;
    QTest::newRow("narrower") << true << false;
    QTest::newRow("lower") << false << true;
    QTest::newRow("shrinks") << true << true;
}

void tst_KXAnchorSelection::arrowsAreDrawnAsTheyPoint()
{
    QFETCH(bool, horizontal);
    QFETCH(bool, vertical);
    Anchor anchor;
    QPalette palette = LoudPalette();
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Mid, Qt::white);
    palette.setColor(QPalette::Text, Qt::black);
    anchor.setPalette(palette);
    for (int state = 0; state < Count; ++state)
    {
        anchor.SetState(static_cast<Anchor::State>(state));
        anchor.ShrinkHorizontal(horizontal);
        anchor.ShrinkVertical(vertical);
        for (int cell = 0; cell < Count; ++cell)
        {
            if (cell == state)
                continue;
            const QPoint arrow =
                Anchor::ArrowOf(static_cast<Anchor::State>(cell), anchor.GetState(), horizontal, vertical);
            QCOMPARE(Heading(anchor, cell), arrow);
        }
    }
}

void tst_KXAnchorSelection::setterOfTheSameRepaintsNothing()
{
    struct Paints : QObject
    {
        bool eventFilter(QObject*, QEvent* event) override
        {
            count += event->type() == QEvent::Paint;
            return false;
        }
        int count = 0;
    };
    Window host;
    QVERIFY(host.Show());
    QCoreApplication::processEvents();
    Paints paints;
    const QList<QRadioButton*> cells = Cells(*host.anchor);
    for (QRadioButton* cell : cells)
        cell->installEventFilter(&paints);
    host.anchor->ShrinkHorizontal(false);
    host.anchor->ShrinkVertical(false);
    host.anchor->SetState(Anchor::Center);
    QCoreApplication::processEvents();
    QCOMPARE(paints.count, 0);
    // Top and bottom have nothing to turn.
    host.anchor->ShrinkHorizontal(true);
    QCoreApplication::processEvents();
    QCOMPARE(paints.count, 6);
}

void tst_KXAnchorSelection::coloursAreThoseOfThePalette()
{
    Anchor anchor;
    anchor.setPalette(LoudPalette());
    anchor.SetState(Anchor::TopLeft);
    const ProbeImage probe(&anchor);
    const QRect chosen = Cell(anchor, Anchor::TopLeft)->geometry();
    const QRect side = Cell(anchor, Anchor::Top)->geometry();
    const QRect far = Cell(anchor, Anchor::BottomRight)->geometry();
    QVERIFY2(probe.Near(chosen.left() + 3, chosen.top() + 3, Qt::blue), qPrintable(probe.FailureText()));
    QVERIFY2(probe.Near(chosen.center().x(), chosen.center().y(), Qt::cyan), qPrintable(probe.FailureText()));
    QVERIFY2(probe.Near(side.left() + 3, side.top() + 3, Qt::yellow), qPrintable(probe.FailureText()));
    QVERIFY2(probe.Near(side.center().x(), side.center().y(), Qt::red), qPrintable(probe.FailureText()));
    QVERIFY2(probe.Near(far.center().x(), far.center().y(), Qt::yellow), qPrintable(probe.FailureText()));
    QVERIFY2(probe.Near(far.left(), far.top() + 9, Qt::green), qPrintable(probe.FailureText()));
    QVERIFY2(probe.Near(far.right(), far.bottom(), Qt::green), qPrintable(probe.FailureText()));
}

void tst_KXAnchorSelection::disabledOneIsFadedAndChoosesNothing()
{
    Window host;
    host.anchor->setPalette(LoudPalette());
    QVERIFY(host.Show());
    host.anchor->setEnabled(false);
    QTest::mouseClick(Cell(*host.anchor, Anchor::Top), Qt::LeftButton);
    QCOMPARE(host.anchor->GetState(), Anchor::Center);
    const QPoint middle = Cell(*host.anchor, Anchor::Top)->geometry().center();
    const ProbeImage probe(host.anchor);
    QVERIFY2(probe.Near(middle.x(), middle.y(), Qt::gray), qPrintable(probe.FailureText()));
}

void tst_KXAnchorSelection::focusAndPointerAreShown()
{
    Window host;
    host.anchor->setPalette(LoudPalette());
    QVERIFY(host.Show());
    host.before->setFocus();
    QRadioButton* cell = Cell(*host.anchor, Anchor::Center);
    const ProbeImage without(cell);
    host.anchor->setFocus();
    const ProbeImage with(cell);
    QVERIFY(with.Differs(without));
    QVERIFY2(with.Near(2, 14, Qt::cyan), qPrintable(with.FailureText()));

    QRadioButton* other = Cell(*host.anchor, Anchor::BottomLeft);
    QVERIFY(ProbeImage(other).Near(0, 14, Qt::green));
    QTest::mouseMove(other);
    QTRY_VERIFY(other->underMouse());
    const ProbeImage hovered(other);
    QVERIFY2(hovered.Near(0, 14, Qt::red), qPrintable(hovered.FailureText()));
    QTest::mouseMove(host.before);
    QTRY_VERIFY(!other->underMouse());
    QVERIFY(ProbeImage(other).Near(0, 14, Qt::green));
}

void tst_KXAnchorSelection::drawnSharplyAtAnyScale_data()
{
    QTest::addColumn<double>("scale");
    for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0, 2.5, 3.0})
        QTest::newRow(qPrintable(QString::number(scale))) << scale;
}

// The shaft of an arrow that isn't slanted has no pixel of a colour in between, and is as thick as it should
// be.
void tst_KXAnchorSelection::drawnSharplyAtAnyScale()
{
    QFETCH(double, scale);
    Anchor anchor;
    anchor.setPalette(LoudPalette());
    const ProbeImage probe(&anchor, scale);
    for (const Anchor::State state : {Anchor::Left, Anchor::Right, Anchor::Top, Anchor::Bottom})
    {
        const QRectF cell = Cell(anchor, state)->geometry();
        const bool lying = state == Anchor::Left || state == Anchor::Right;
        // Across the shaft, which is the half of the arrow on the side of the anchor.
        const QPointF middle =
            cell.center() - 3.0 * QPointF(Anchor::ArrowOf(state, Anchor::Center, false, false));
        int ink = 0;
        for (int step = -int(8 * scale); step <= int(8 * scale); ++step)
        {
            const QPoint pixel = (middle * scale).toPoint() + (lying ? QPoint(0, step) : QPoint(step, 0));
            const QColor color = probe.Image().pixelColor(pixel);
            QVERIFY2(ProbeImage::Similar(color, Qt::red) || ProbeImage::Similar(color, Qt::yellow),
                     qPrintable(QString("%1 at step %2").arg(color.name()).arg(step)));
            ink += ProbeImage::Similar(color, Qt::red);
        }
        QCOMPARE(ink, qRound(2.0 * scale));
    }
}

void tst_KXAnchorSelection::framesAreEquallyThickAtAnyScale_data()
{
    drawnSharplyAtAnyScale_data();
}

// Along a line through the middle of the three empty cells of the last row, and of the last column.
void tst_KXAnchorSelection::framesAreEquallyThickAtAnyScale()
{
    QFETCH(double, scale);
    Anchor anchor;
    anchor.setPalette(LoudPalette());
    anchor.SetState(Anchor::TopLeft);
    const ProbeImage probe(&anchor, scale);
    const QRectF last = Cell(anchor, Anchor::BottomRight)->geometry();
    const QPoint middle = (last.center() * scale).toPoint();
    const QSize size = probe.Image().size();
    for (const bool lying : {true, false})
    {
        QList<int> runs{0};
        for (int i = 0; i < (lying ? size.width() : size.height()); ++i)
        {
            const QColor color =
                probe.Image().pixelColor(lying ? QPoint(i, middle.y()) : QPoint(middle.x(), i));
            if (ProbeImage::Similar(color, Qt::green))
                ++runs.last();
            else if (runs.last() > 0)
                runs << 0;
        }
        runs.removeAll(0);
        const int thickness = qMax(1, qRound(scale));
        QCOMPARE(runs, QList<int>({thickness, thickness, thickness, thickness, thickness, thickness}));
    }
}

void tst_KXAnchorSelection::rightToLeftMirrorsNothing()
{
    QWidget parent;
    parent.setLayoutDirection(Qt::RightToLeft);
    Anchor anchor(&parent);
    anchor.resize(anchor.sizeHint());
    anchor.layout()->activate();
    QVERIFY(Cell(anchor, Anchor::Left)->x() < Cell(anchor, Anchor::Right)->x());
}

void tst_KXAnchorSelection::sizeIsFixed()
{
    Anchor anchor;
    const QSize size(3 * 28 + 2, 3 * 28 + 2);
    QCOMPARE(anchor.sizeHint(), size);
    QCOMPARE(anchor.minimumSizeHint(), size);
    QCOMPARE(anchor.sizePolicy().horizontalPolicy(), QSizePolicy::Fixed);
    QCOMPARE(anchor.sizePolicy().verticalPolicy(), QSizePolicy::Fixed);
}

void tst_KXAnchorSelection::screenReadersMeetNineRadioButtons()
{
    Window host;
    QVERIFY(host.Show());
    QAccessibleInterface* group = QAccessible::queryAccessibleInterface(host.anchor);
    QVERIFY(group);
    QCOMPARE(group->role(), QAccessible::Grouping);
    QCOMPARE(group->childCount(), Count);
    QStringList names;
    for (int state = 0; state < Count; ++state)
    {
        QAccessibleInterface* cell = group->child(state);
        QCOMPARE(cell->role(), QAccessible::RadioButton);
        QCOMPARE(bool(cell->state().checked), state == Anchor::Center);
        names << cell->text(QAccessible::Name);
    }
    QCOMPARE(names,
             QStringList({"Top left", "Top", "Top right", "Left", "Center", "Right", "Bottom left", "Bottom",
                          "Bottom right"}));
    group->child(Anchor::Left)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QTRY_COMPARE(host.anchor->GetState(), Anchor::Left);
    QVERIFY(group->child(Anchor::Left)->state().checked);
}

void tst_KXAnchorSelection::namesFollowTheLanguage()
{
    struct Marker : QTranslator
    {
        QString translate(const char* context, const char* text, const char*, int) const override
        {
            return QString("%1/%2").arg(context, text);
        }
        bool isEmpty() const override { return false; }
    };
    const Anchor anchor;
    Marker marker;
    QCoreApplication::installTranslator(&marker);
    QCoreApplication::processEvents();
    const QString name = Cell(anchor, Anchor::TopLeft)->accessibleName();
    QCoreApplication::removeTranslator(&marker);
    QCOMPARE(name, QString("KXAnchorSelection/Top left"));
    QCoreApplication::processEvents();
    QCOMPARE(Cell(anchor, Anchor::TopLeft)->accessibleName(), QString("Top left"));
}

void tst_KXAnchorSelection::dyingWithTheFocusIsQuiet()
{
    Window host;
    QVERIFY(host.Show());
    host.anchor->SetState(Anchor::Top);
    host.anchor->setFocus();
    const SignalLog log(host.anchor);
    delete host.anchor;
    QCOMPARE(log.Count(), 0);
    QVERIFY(!QApplication::focusWidget() || QApplication::focusWidget()->window() == &host.window);
}

NV_TEST_MAIN(tst_KXAnchorSelection)

#include "tst_KXAnchorSelection.moc"
