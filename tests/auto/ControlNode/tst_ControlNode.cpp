// The handle on a strip: dragged, moved by keys, selected, drawn.

#include "ControlNode.h"

#include <QAccessible>
#include <QApplication>
#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPointer>
#include <QScrollBar>
#include <QToolTip>
#include <QVBoxLayout>

#include <limits>
#include <memory>

#include "ProbeImage.h"
#include "TestMain.h"

namespace
{

const QSize StripSize(400, 32);
const int Middle = 16;

// A view of 400 by 32 pixels whose scene is as large, between two fields.
class Strip
{
public:
    Strip() : scene(std::make_unique<QGraphicsScene>(QRectF(QPointF(), StripSize)))
    {
        view = new QGraphicsView(scene.get());
        view->setFrameShape(QFrame::NoFrame);
        view->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        view->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        view->setFixedSize(StripSize);
        before = new QLineEdit;
        after = new QLineEdit;
        auto* column = new QVBoxLayout(&window);
        for (QWidget* widget :
             {static_cast<QWidget*>(before), static_cast<QWidget*>(view), static_cast<QWidget*>(after)})
        {
            column->addWidget(widget);
        }
    }

    // So that neither pointer nor tooltip of this strip is met by the next.
    ~Strip() { QToolTip::hideText(); }

    void Show()
    {
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        view->setFocus();
    }

    ControlNode* Add(qreal x)
    {
        auto* node = new ControlNode(nullptr);
        scene->addItem(node);
        node->setPos(x, Middle);
        node->setFlag(QGraphicsItem::ItemIsSelectable);
        return node;
    }

    void Mouse(QEvent::Type type, qreal x, qreal y, Qt::MouseButton button = Qt::LeftButton,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        const QPointF place(x, y);
        const Qt::MouseButtons held =
            type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::MouseButtons(button);
        QMouseEvent event(type, place, view->viewport()->mapToGlobal(place.toPoint()),
                          type == QEvent::MouseMove ? Qt::NoButton : button, held, modifiers);
        QCoreApplication::sendEvent(view->viewport(), &event);
    }

    void Press(qreal x, qreal y = Middle) { Mouse(QEvent::MouseButtonPress, x, y); }
    void Move(qreal x, qreal y = Middle) { Mouse(QEvent::MouseMove, x, y); }
    void Release(qreal x, qreal y = Middle) { Mouse(QEvent::MouseButtonRelease, x, y); }
    void Hover(qreal x) { Mouse(QEvent::MouseMove, x, Middle, Qt::NoButton); }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(view, key, modifiers);
    }

    ProbeImage Probe(qreal ratio = 1.0) { return ProbeImage(view->viewport(), ratio); }

    QWidget window;
    QLineEdit* before;
    QGraphicsView* view;
    QLineEdit* after;
    std::unique_ptr<QGraphicsScene> scene;
};

// What a node tells, in words.
class Told
{
public:
    explicit Told(ControlNode* node)
    {
        QObject::connect(node, &ControlNode::positionChanged, &m_context,
                         [this, node](ControlNode* sender, const QPointF& place)
                         {
                             Moves.append(place);
                             RightSender = RightSender && sender == node;
                         });
        QObject::connect(node, &ControlNode::itemSelectionChange, &m_context,
                         [this, node](ControlNode* sender, bool selected)
                         {
                             Selections.append(selected);
                             RightSender = RightSender && sender == node;
                         });
    }

    QList<QPointF> Moves;
    QList<bool> Selections;
    bool RightSender = true;

private:
    QObject m_context;
};

QPalette plainPalette(const QColor& text, const QColor& ground, const QColor& button, const QColor& highlight)
{
    QPalette palette(button);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Base, ground);
    palette.setColor(QPalette::Button, button);
    palette.setColor(QPalette::Highlight, highlight);
    return palette;
}

} // namespace

class tst_ControlNode : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void typeIsFixed();
    void setPosTellsOnceAndOnlyOfChanges();
    void moveOfTheParentIsTold();
    void withoutASceneItTellsToo();
    void placesThatAreNoNumbersAreRefused_data();
    void placesThatAreNoNumbersAreRefused();
    void percentIsOfTheScenesWidth();
    void selectionIsTold();
    void selectedNodeIsOnTopAndHasTheFocusOfTheScene();
    void nodeSelectedMeanwhileGetsTheFocusOfTheView_data();
    void nodeSelectedMeanwhileGetsTheFocusOfTheView();
    void sunkenIsOnlyALook();
    void pressSelectsAloneAlsoWithControl();
    void pressLeavesTheSelectionOfANodeThatHasNone();
    void dragMovesItAndShowsThePlace();
    void dragMovesNoOtherNode();
    void slotMayPutItBackDuringADrag();
    void clickIsNoDrag();
    void otherButtonsDoNothing();
    void doubleClickIsAPress();
    void escapeTakesADragBack();
    void fixedNodeIsNotMovedByAPerson();
    void dragInsideAMovedParentFollowsThePointer();
    void edgesAreInReach();
    void nearerNodeIsHit_data();
    void nearerNodeIsHit();
    void whereFramesOverlapTheSelectedOneIsHit();
    void arrowKeysMove_data();
    void arrowKeysMove();
    void arrowKeySelectsWhatItMoves();
    void arrowKeyShowsThePlace();
    void tabGoesFromNodeToNodeByPlace();
    void tabReachesAllNodesOfOnePlace();
    void tabPassesHiddenNodes();
    void tabWithoutANodeLeavesTheView();
    void deletedWhileDragged();
    void deletesItselfLaterFromItsSlot();
    void sceneDeletedWhileDragged();
    void hidingEndsTheDrag();
    void sizeStaysWhenTheViewIsScaled();
    void eachStateLooksDifferent_data();
    void eachStateLooksDifferent();
    void standsOutFromAnyGround_data();
    void standsOutFromAnyGround();
    void edgesAreSharp_data();
    void edgesAreSharp();
    void screenReadersMeetASlider();
    void screenReaderMayMoveIt();
};

void tst_ControlNode::typeIsFixed()
{
    const ControlNode node(nullptr);

    QCOMPARE(node.type(), int(QGraphicsItem::UserType) + 1);
    QCOMPARE(int(ControlNode::Type), node.type());
    QVERIFY(!node.isSunken());
    QCOMPARE(node.percent(), 0.0);
}

void tst_ControlNode::setPosTellsOnceAndOnlyOfChanges()
{
    Strip strip;
    ControlNode* node = strip.Add(10);
    Told told(node);

    node->setPos(20, 30);
    node->setPos(20, 30);
    node->setX(25);
    node->setY(30);

    QCOMPARE(told.Moves, QList<QPointF>({QPointF(20, 30), QPointF(25, 30)}));
    QVERIFY(told.RightSender);
}

void tst_ControlNode::moveOfTheParentIsTold()
{
    Strip strip;
    auto* parent = strip.scene->addRect(0, 0, 10, 10);
    auto* node = new ControlNode(parent);
    node->setPos(5, 5);
    Told told(node);

    parent->setPos(100, 1);
    node->setPos(6, 5);

    QCOMPARE(told.Moves, QList<QPointF>({QPointF(105, 6), QPointF(106, 6)}));
}

void tst_ControlNode::withoutASceneItTellsToo()
{
    ControlNode node(nullptr);
    Told told(&node);

    node.setPos(3, 4);
    node.setPercent(50);
    node.setFlag(QGraphicsItem::ItemIsSelectable);
    node.setSelected(true);

    QCOMPARE(told.Moves, QList<QPointF>({QPointF(3, 4)}));
    QCOMPARE(told.Selections, QList<bool>({true}));
    QVERIFY(node.shape().contains(QPointF(0, 0)));
}

void tst_ControlNode::placesThatAreNoNumbersAreRefused_data()
{
    QTest::addColumn<double>("number");
    QTest::newRow("not a number") << std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity();
    QTest::newRow("negative infinite") << -std::numeric_limits<double>::infinity();
}

void tst_ControlNode::placesThatAreNoNumbersAreRefused()
{
    QFETCH(double, number);
    Strip strip;
    ControlNode* node = strip.Add(10);
    Told told(node);

    node->setPos(number, 5);
    node->setPos(5, number);
    node->setPercent(number);

    QCOMPARE(node->pos(), QPointF(10, Middle));
    QVERIFY(told.Moves.isEmpty());
}

void tst_ControlNode::percentIsOfTheScenesWidth()
{
    Strip strip;
    ControlNode* node = strip.Add(100);
    QCOMPARE(node->percent(), 25.0);

    node->setPercent(75);
    QCOMPARE(node->scenePos(), QPointF(300, Middle));
    strip.scene->setSceneRect(200, 0, 200, 32);
    QCOMPARE(node->percent(), 50.0);
    strip.scene->setSceneRect(200, 0, 0, 32);
    QCOMPARE(node->percent(), 0.0);
    node->setPercent(10);
    QCOMPARE(node->scenePos(), QPointF(300, Middle));
}

void tst_ControlNode::selectionIsTold()
{
    Strip strip;
    ControlNode* node = strip.Add(10);
    Told told(node);

    node->setSelected(true);
    node->setSelected(true);
    node->setSelected(false);
    node->setSelected(true);
    strip.scene->clearSelection();
    node->setSelected(true);
    node->hide();

    QCOMPARE(told.Selections, QList<bool>({true, false, true, false, true, false}));
    QVERIFY(told.RightSender);
    QVERIFY(told.Moves.isEmpty());
}

void tst_ControlNode::selectedNodeIsOnTopAndHasTheFocusOfTheScene()
{
    Strip strip;
    strip.Show();
    strip.after->setFocus();
    ControlNode* first = strip.Add(100);
    ControlNode* second = strip.Add(105);

    first->setSelected(true);

    QVERIFY(first->zValue() > second->zValue());
    QVERIFY(strip.after->hasFocus());
    strip.view->setFocus();
    QCOMPARE(strip.scene->focusItem(), first);
    strip.Key(Qt::Key_Right);
    QCOMPARE(first->percent(), 26.0);

    first->setSelected(false);
    QCOMPARE(first->zValue(), second->zValue());
}

void tst_ControlNode::nodeSelectedMeanwhileGetsTheFocusOfTheView_data()
{
    QTest::addColumn<Qt::FocusReason>("reason");
    QTest::newRow("mouse") << Qt::MouseFocusReason;
    QTest::newRow("Tab") << Qt::TabFocusReason;
    QTest::newRow("window") << Qt::ActiveWindowFocusReason;
}

void tst_ControlNode::nodeSelectedMeanwhileGetsTheFocusOfTheView()
{
    QFETCH(Qt::FocusReason, reason);
    Strip strip;
    strip.Show();
    ControlNode* first = strip.Add(100);
    ControlNode* second = strip.Add(200);
    first->setSelected(true);
    strip.after->setFocus();
    strip.scene->clearSelection();
    second->setSelected(true);

    strip.view->setFocus(reason);
    strip.Key(Qt::Key_Right);

    QCOMPARE(strip.scene->focusItem(), second);
    QCOMPARE(second->percent(), 51.0);
    QCOMPARE(first->percent(), 25.0);
}

void tst_ControlNode::sunkenIsOnlyALook()
{
    Strip strip;
    strip.Show();
    ControlNode* node = strip.Add(100);
    const ProbeImage raised = strip.Probe();
    Told told(node);

    node->setSunken(true);
    QVERIFY(node->isSunken());
    QVERIFY(!node->isSelected());
    QVERIFY(strip.Probe().Differs(raised));
    node->setSunken(true);
    node->setSunken(false);
    QVERIFY(!strip.Probe().Differs(raised));
    QVERIFY(told.Selections.isEmpty() && told.Moves.isEmpty());
}

void tst_ControlNode::pressSelectsAloneAlsoWithControl()
{
    Strip strip;
    strip.Show();
    ControlNode* first = strip.Add(100);
    ControlNode* second = strip.Add(200);
    first->setSelected(true);
    Told one(first);
    Told other(second);

    strip.Mouse(QEvent::MouseButtonPress, 203, 10, Qt::LeftButton, Qt::ControlModifier);
    strip.Mouse(QEvent::MouseButtonRelease, 203, 10, Qt::LeftButton, Qt::ControlModifier);

    QCOMPARE(one.Selections, QList<bool>({false}));
    QCOMPARE(other.Selections, QList<bool>({true}));
    strip.Press(203);
    strip.Release(203);
    QCOMPARE(strip.scene->selectedItems(), QList<QGraphicsItem*>({second}));
    QCOMPARE(other.Selections, QList<bool>({true}));
    QVERIFY(one.Moves.isEmpty() && other.Moves.isEmpty());
}

void tst_ControlNode::pressLeavesTheSelectionOfANodeThatHasNone()
{
    Strip strip;
    strip.Show();
    ControlNode* first = strip.Add(100);
    ControlNode* second = strip.Add(200);
    second->setFlag(QGraphicsItem::ItemIsSelectable, false);
    first->setSelected(true);

    strip.Press(200);
    strip.Move(220);
    strip.Release(220);

    QCOMPARE(strip.scene->selectedItems(), QList<QGraphicsItem*>({first}));
    QCOMPARE(second->pos().x(), 220.0);
    QCOMPARE(strip.scene->focusItem(), second);
}

void tst_ControlNode::dragMovesItAndShowsThePlace()
{
    Strip strip;
    strip.Show();
    ControlNode* node = strip.Add(100);
    Told told(node);

    strip.Press(104, 18);
    QVERIFY(!QToolTip::isVisible());
    strip.Move(150, 20);
    QCOMPARE(QToolTip::text(), QString("36.5 %"));
    strip.Move(204, 20);
    QTRY_VERIFY(QToolTip::isVisible());
    QCOMPARE(QToolTip::text(), QString("50.0 %"));
    QCOMPARE(node->cursor().shape(), Qt::ClosedHandCursor);
    strip.Release(204, 20);

    QCOMPARE(told.Moves, QList<QPointF>({QPointF(146, 18), QPointF(200, 18)}));
    QCOMPARE(told.Selections, QList<bool>({true}));
    QTRY_VERIFY(!QToolTip::isVisible());
    QCOMPARE(node->cursor().shape(), Qt::OpenHandCursor);
    strip.Hover(300);
    QCOMPARE(told.Moves.size(), 2);
}

void tst_ControlNode::dragMovesNoOtherNode()
{
    Strip strip;
    strip.Show();
    ControlNode* first = strip.Add(100);
    ControlNode* second = strip.Add(200);
    first->setSelected(true);
    second->setSelected(true);

    strip.Press(100);
    strip.Move(130);
    strip.Release(130);

    QCOMPARE(first->pos().x(), 130.0);
    QCOMPARE(second->pos().x(), 200.0);
    QCOMPARE(strip.scene->selectedItems(), QList<QGraphicsItem*>({first}));
}

void tst_ControlNode::slotMayPutItBackDuringADrag()
{
    Strip strip;
    strip.Show();
    ControlNode* node = strip.Add(100);
    int calls = 0;
    QMetaObject::Connection connection;
    std::function<void(ControlNode*, QPointF)> keepInRange = [&](ControlNode* moved, const QPointF& place)
    {
        ++calls;
        QObject::disconnect(connection);
        moved->setPos(qBound(80.0, place.x(), 120.0), Middle);
        connection = QObject::connect(node, &ControlNode::positionChanged, node, keepInRange);
    };
    connection = QObject::connect(node, &ControlNode::positionChanged, node, keepInRange);

    strip.Press(100);
    strip.Move(110, 30);
    QCOMPARE(node->pos(), QPointF(110, Middle));
    strip.Move(390, 2);
    QCOMPARE(node->pos(), QPointF(120, Middle));
    QCOMPARE(QToolTip::text(), QString("30.0 %"));
    strip.Move(-50, 2);
    QCOMPARE(node->pos(), QPointF(80, Middle));
    strip.Move(90);
    QCOMPARE(node->pos(), QPointF(90, Middle));
    strip.Release(90);

    QCOMPARE(calls, 4);
}

void tst_ControlNode::clickIsNoDrag()
{
    Strip strip;
    strip.Show();
    ControlNode* node = strip.Add(100);
    Told told(node);

    strip.Press(103);
    strip.Move(103, Middle + 1);
    strip.Release(103, Middle + 1);
    QVERIFY(told.Moves.isEmpty());

    strip.Press(103);
    strip.Move(105);
    strip.Move(104);
    strip.Release(104);
    QCOMPARE(told.Moves, QList<QPointF>({QPointF(102, Middle), QPointF(101, Middle)}));
}

void tst_ControlNode::otherButtonsDoNothing()
{
    Strip strip;
    strip.Show();
    ControlNode* first = strip.Add(100);
    ControlNode* second = strip.Add(200);
    first->setSelected(true);
    Told one(first);
    Told other(second);

    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton})
    {
        strip.Mouse(QEvent::MouseButtonPress, 200, Middle, button);
        strip.Mouse(QEvent::MouseMove, 240, Middle, button);
        strip.Mouse(QEvent::MouseButtonRelease, 240, Middle, button);
    }

    QVERIFY(one.Selections.isEmpty() && other.Selections.isEmpty());
    QVERIFY(one.Moves.isEmpty() && other.Moves.isEmpty());
}

void tst_ControlNode::doubleClickIsAPress()
{
    Strip strip;
    strip.Show();
    ControlNode* node = strip.Add(100);

    strip.Press(100);
    strip.Release(100);
    strip.Mouse(QEvent::MouseButtonDblClick, 100, Middle);
    strip.Move(140);
    strip.Release(140);

    QCOMPARE(node->pos().x(), 140.0);
    QVERIFY(node->isSelected());
}

void tst_ControlNode::escapeTakesADragBack()
{
    Strip strip;
    strip.Show();
    ControlNode* node = strip.Add(100);
    Told told(node);

    strip.Press(100);
    strip.Move(180);
    strip.Key(Qt::Key_Right); // nothing beside the drag
    QCOMPARE(node->pos().x(), 180.0);
    strip.Key(Qt::Key_Escape);
    QCOMPARE(node->pos(), QPointF(100, Middle));
    strip.Move(190);
    strip.Release(190);

    QCOMPARE(told.Moves, QList<QPointF>({QPointF(180, Middle), QPointF(100, Middle)}));
    QTRY_VERIFY(!QToolTip::isVisible());
}

void tst_ControlNode::fixedNodeIsNotMovedByAPerson()
{
    Strip strip;
    strip.Show();
    ControlNode* node = strip.Add(100);
    node->setFlag(QGraphicsItem::ItemIsMovable, false);

    strip.Press(100);
    strip.Move(150);
    strip.Release(150);
    strip.Key(Qt::Key_Right);

    QVERIFY(node->isSelected());
    QCOMPARE(node->pos().x(), 100.0);
}

void tst_ControlNode::dragInsideAMovedParentFollowsThePointer()
{
    Strip strip;
    strip.Show();
    auto* parent = strip.scene->addRect(0, 0, 1, 1);
    parent->setTransform(QTransform::fromScale(2, 2));
    parent->setPos(50, 0);
    auto* node = new ControlNode(parent);
    node->setPos(25, 8);
    QCOMPARE(node->scenePos(), QPointF(100, Middle));

    strip.Press(100);
    strip.Move(160);
    strip.Release(160);

    QCOMPARE(node->scenePos(), QPointF(160, Middle));
    QCOMPARE(node->pos(), QPointF(55, 8));
}

void tst_ControlNode::edgesAreInReach()
{
    Strip strip;
    strip.Show();
    ControlNode* first = strip.Add(0);
    ControlNode* last = strip.Add(StripSize.width());

    for (const int y : {1, Middle, 30})
    {
        QCOMPARE(strip.view->itemAt(0, y), first);
        QCOMPARE(strip.view->itemAt(10, y), first);
        QCOMPARE(strip.view->itemAt(389, y), last);
        QCOMPARE(strip.view->itemAt(399, y), last);
    }
    QVERIFY(!strip.view->itemAt(14, Middle));
    strip.Press(8);
    strip.Move(58);
    strip.Release(58);
    QCOMPARE(first->pos().x(), 50.0);
    strip.Press(399);
    strip.Move(299);
    strip.Release(299);
    QCOMPARE(last->pos().x(), 300.0);
}

void tst_ControlNode::nearerNodeIsHit_data()
{
    QTest::addColumn<qreal>("scale");
    QTest::newRow("plain") << 1.0;
    QTest::newRow("enlarged") << 2.0;
    QTest::newRow("reduced") << 0.5;
}

void tst_ControlNode::nearerNodeIsHit()
{
    QFETCH(qreal, scale);
    Strip strip;
    strip.view->scale(scale, 1.0);
    strip.Show();
    ControlNode* first = strip.Add(100.0 / scale);
    ControlNode* second = strip.Add(118.0 / scale);
    const int left = strip.view->mapFromScene(first->pos()).x();

    for (ControlNode* selected : {first, second})
    {
        strip.scene->clearSelection();
        selected->setSelected(true);
        QCOMPARE(strip.view->itemAt(left - 11, Middle), first);
        QCOMPARE(strip.view->itemAt(left + 7, Middle), first);
        QCOMPARE(strip.view->itemAt(left + 11, Middle), second);
        QCOMPARE(strip.view->itemAt(left + 28, Middle), second);
    }
}

void tst_ControlNode::whereFramesOverlapTheSelectedOneIsHit()
{
    Strip strip;
    strip.Show();
    ControlNode* first = strip.Add(100);
    ControlNode* second = strip.Add(104);

    first->setSelected(true);
    QCOMPARE(strip.view->itemAt(103, Middle), first);
    QCOMPARE(strip.view->itemAt(112, Middle), second);
    strip.scene->clearSelection();
    second->setSelected(true);
    QCOMPARE(strip.view->itemAt(103, Middle), second);
    QCOMPARE(strip.view->itemAt(92, Middle), first);
}

void tst_ControlNode::arrowKeysMove_data()
{
    QTest::addColumn<double>("from");
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<double>("to");
    const Qt::KeyboardModifiers none = Qt::NoModifier;
    const Qt::KeyboardModifiers shift = Qt::ShiftModifier;
    QTest::newRow("right") << 50.0 << Qt::Key_Right << none << 51.0;
    QTest::newRow("left") << 50.0 << Qt::Key_Left << none << 49.0;
    QTest::newRow("up") << 50.0 << Qt::Key_Up << none << 51.0;
    QTest::newRow("down") << 50.0 << Qt::Key_Down << none << 49.0;
    QTest::newRow("Shift right") << 50.0 << Qt::Key_Right << shift << 60.0;
    QTest::newRow("Shift left") << 50.0 << Qt::Key_Left << shift << 40.0;
    QTest::newRow("keypad") << 50.0 << Qt::Key_Left << Qt::KeyboardModifiers(Qt::KeypadModifier) << 49.0;
    QTest::newRow("right end") << 99.5 << Qt::Key_Right << none << 100.0;
    QTest::newRow("left end") << 4.0 << Qt::Key_Left << shift << 0.0;
    QTest::newRow("at the end") << 100.0 << Qt::Key_Right << none << 100.0;
    QTest::newRow("from beyond") << 130.0 << Qt::Key_Left << none << 100.0;
    QTest::newRow("with Control") << 50.0 << Qt::Key_Right << Qt::KeyboardModifiers(Qt::ControlModifier)
                                  << 50.0;
    QTest::newRow("another key") << 50.0 << Qt::Key_Home << none << 50.0;
}

void tst_ControlNode::arrowKeysMove()
{
    QFETCH(double, from);
    QFETCH(Qt::Key, key);
    QFETCH(Qt::KeyboardModifiers, modifiers);
    QFETCH(double, to);
    Strip strip;
    strip.Show();
    ControlNode* node = strip.Add(StripSize.width() * from / 100.0);
    node->setSelected(true);
    Told told(node);

    strip.Key(key, modifiers);

    QCOMPARE(node->percent(), to);
    QCOMPARE(node->pos().y(), qreal(Middle));
    QCOMPARE(told.Moves.size(), from == to ? 0 : 1);
}

void tst_ControlNode::arrowKeySelectsWhatItMoves()
{
    Strip strip;
    strip.Show();
    ControlNode* node = strip.Add(100);
    node->setSelected(true);
    strip.scene->clearSelection();
    bool selectedFirst = false;
    connect(node, &ControlNode::positionChanged, node, [&] { selectedFirst = node->isSelected(); });

    strip.Key(Qt::Key_Right);

    QVERIFY(selectedFirst);
    QCOMPARE(node->percent(), 26.0);
}

void tst_ControlNode::arrowKeyShowsThePlace()
{
    Strip strip;
    strip.Show();
    strip.Add(100)->setSelected(true);

    strip.Key(Qt::Key_Right, Qt::ShiftModifier);

    QTRY_VERIFY(QToolTip::isVisible());
    QCOMPARE(QToolTip::text(), QString("35.0 %"));
    strip.Key(Qt::Key_Left);
    QCOMPARE(QToolTip::text(), QString("34.0 %"));
}

void tst_ControlNode::tabGoesFromNodeToNodeByPlace()
{
    Strip strip;
    strip.Show();
    ControlNode* third = strip.Add(300);
    ControlNode* first = strip.Add(20);
    ControlNode* second = strip.Add(200);
    first->setSelected(true);
    Told told(second);

    strip.Key(Qt::Key_Tab);
    QCOMPARE(strip.scene->selectedItems(), QList<QGraphicsItem*>({second}));
    QCOMPARE(strip.scene->focusItem(), second);
    strip.Key(Qt::Key_Tab);
    QCOMPARE(strip.scene->selectedItems(), QList<QGraphicsItem*>({third}));
    QCOMPARE(told.Selections, QList<bool>({true, false}));
    QVERIFY(strip.view->hasFocus());

    strip.Key(Qt::Key_Tab);
    QVERIFY(strip.after->hasFocus());
    QVERIFY(third->isSelected());
    QTest::keyClick(strip.after, Qt::Key_Backtab, Qt::ShiftModifier);
    QVERIFY(strip.view->hasFocus());
    QCOMPARE(strip.scene->focusItem(), third);

    strip.Key(Qt::Key_Backtab, Qt::ShiftModifier);
    strip.Key(Qt::Key_Tab, Qt::ShiftModifier);
    QCOMPARE(strip.scene->selectedItems(), QList<QGraphicsItem*>({first}));
    strip.Key(Qt::Key_Backtab, Qt::ShiftModifier);
    QVERIFY(strip.before->hasFocus());
}

void tst_ControlNode::tabReachesAllNodesOfOnePlace()
{
    Strip strip;
    strip.Show();
    const QList<ControlNode*> nodes = {strip.Add(100), strip.Add(100), strip.Add(100)};
    nodes.first()->setSelected(true);

    for (int i = 1; i < nodes.size(); ++i)
    {
        strip.Key(Qt::Key_Tab);
        QCOMPARE(strip.scene->focusItem(), nodes.at(i));
    }
    for (int i = 1; i >= 0; --i)
    {
        strip.Key(Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(strip.scene->focusItem(), nodes.at(i));
    }
}

void tst_ControlNode::tabPassesHiddenNodes()
{
    Strip strip;
    strip.Show();
    ControlNode* first = strip.Add(100);
    strip.Add(150)->hide();
    strip.Add(160)->setEnabled(false);
    ControlNode* last = strip.Add(200);
    first->setSelected(true);

    strip.Key(Qt::Key_Tab);

    QCOMPARE(strip.scene->selectedItems(), QList<QGraphicsItem*>({last}));
}

void tst_ControlNode::tabWithoutANodeLeavesTheView()
{
    Strip strip;
    strip.Show();
    ControlNode* node = strip.Add(100);
    node->setSelected(true);
    strip.scene->removeItem(node);
    const std::unique_ptr<ControlNode> owner(node);

    strip.Key(Qt::Key_Tab);

    QVERIFY(strip.after->hasFocus());
    QVERIFY(node->percent() == 0.0);
}

void tst_ControlNode::deletedWhileDragged()
{
    Strip strip;
    strip.Show();
    ControlNode* node = strip.Add(100);
    ControlNode* other = strip.Add(300);

    strip.Press(100);
    strip.Move(150);
    QTRY_VERIFY(QToolTip::isVisible());
    delete node;
    QTRY_VERIFY(!QToolTip::isVisible());
    strip.Move(160);
    strip.Key(Qt::Key_Escape);
    strip.Release(160);

    QCOMPARE(strip.scene->items(), QList<QGraphicsItem*>({other}));
    strip.Press(300);
    strip.Move(310);
    strip.Release(310);
    QCOMPARE(other->pos().x(), 310.0);
}

void tst_ControlNode::deletesItselfLaterFromItsSlot()
{
    Strip strip;
    strip.Show();
    QPointer<ControlNode> node = strip.Add(100);
    connect(node, &ControlNode::positionChanged, node, &QObject::deleteLater);

    strip.Press(100);
    strip.Move(150);
    QTRY_VERIFY(!node);
    strip.Move(160);
    strip.Release(160);

    QVERIFY(strip.scene->items().isEmpty());
    QTRY_VERIFY(!QToolTip::isVisible());
}

void tst_ControlNode::sceneDeletedWhileDragged()
{
    Strip strip;
    strip.Show();
    const QPointer<ControlNode> node = strip.Add(100);

    strip.Press(100);
    strip.Move(150);
    strip.scene.reset();
    strip.Move(160);
    strip.Release(160);
    strip.Key(Qt::Key_Tab);

    QVERIFY(!node);
    QTRY_VERIFY(!QToolTip::isVisible());
}

void tst_ControlNode::hidingEndsTheDrag()
{
    Strip strip;
    strip.Show();
    ControlNode* node = strip.Add(100);

    strip.Press(100);
    strip.Move(150);
    node->hide();
    QTRY_VERIFY(!QToolTip::isVisible());
    node->show();
    strip.Move(170);
    strip.Release(170);

    QCOMPARE(node->pos().x(), 150.0);
    QVERIFY(!node->isSelected());
}

void tst_ControlNode::sizeStaysWhenTheViewIsScaled()
{
    Strip strip;
    strip.Show();
    strip.view->setPalette(plainPalette(Qt::green, Qt::red, Qt::gray, Qt::blue));
    ControlNode* node = strip.Add(50);
    const QSize plain = strip.Probe().BoundsOf(Qt::green, 60).size();
    QVERIFY(plain.width() >= 11 && plain.height() >= 20);

    strip.view->setTransformationAnchor(QGraphicsView::NoAnchor);
    strip.view->scale(3.0, 1.0);
    strip.view->horizontalScrollBar()->setValue(0);

    QCOMPARE(strip.Probe().BoundsOf(Qt::green, 60).size(), plain);
    QCOMPARE(strip.view->mapFromScene(node->pos()).x(), 150);
    QCOMPARE(strip.Probe().BoundsOf(Qt::green, 60).center().x(), 150);
}

void tst_ControlNode::eachStateLooksDifferent_data()
{
    QTest::addColumn<QPalette>("palette");
    QTest::newRow("light") << plainPalette(Qt::black, Qt::white, QColor(239, 239, 239), QColor(48, 140, 198));
    QTest::newRow("dark") << plainPalette(Qt::white, QColor(31, 34, 38), QColor(58, 63, 69),
                                          QColor(61, 143, 224));
    QTest::newRow("high contrast") << plainPalette(Qt::black, Qt::white, Qt::white, Qt::darkBlue);
}

void tst_ControlNode::eachStateLooksDifferent()
{
    QFETCH(QPalette, palette);
    Strip strip;
    strip.Show();
    strip.view->setPalette(palette);
    ControlNode* node = strip.Add(100);
    strip.Add(300)->setFocus();

    strip.Hover(200);
    QList<ProbeImage> looks = {strip.Probe()};
    strip.Hover(100);
    looks.append(strip.Probe());
    strip.Hover(200);
    node->setSunken(true);
    looks.append(strip.Probe());
    strip.after->setFocus();
    node->setSelected(true);
    looks.append(strip.Probe());
    strip.view->setFocus();
    looks.append(strip.Probe());
    node->setSunken(false);
    looks.append(strip.Probe());

    for (int one = 0; one < looks.size(); ++one)
    {
        for (int other = 0; other < one; ++other)
        {
            // The node stands in the left half; the right one only holds the focus at first.
            const ProbeImage left(looks.at(one).Image().copy(0, 0, 200, 32));
            const ProbeImage right(looks.at(other).Image().copy(0, 0, 200, 32));
            QVERIFY2(left.Differs(right, 12), qPrintable(QString("%1 and %2").arg(one).arg(other)));
        }
    }
}

void tst_ControlNode::standsOutFromAnyGround_data()
{
    QTest::addColumn<QColor>("ground");
    QTest::newRow("black") << QColor(Qt::black);
    QTest::newRow("white") << QColor(Qt::white);
    QTest::newRow("grey") << QColor(Qt::gray);
    QTest::newRow("colour of the node") << QColor(239, 239, 239);
}

void tst_ControlNode::standsOutFromAnyGround()
{
    QFETCH(QColor, ground);
    Strip strip;
    strip.Show();
    strip.view->setPalette(plainPalette(Qt::black, Qt::white, QColor(239, 239, 239), QColor(48, 140, 198)));
    strip.view->setBackgroundBrush(ground);
    strip.Add(100);

    const ProbeImage probe = strip.Probe();

    // One line at least, twice as high as the body, is far from the ground.
    const QColor line = qGray(ground.rgb()) < 128 ? Qt::white : Qt::black;
    QVERIFY(probe.CountOf(line, 40) >= 40);
    // Nothing of the colours of other states.
    QCOMPARE(probe.BoundsOf(QColor(48, 140, 198), 60), QRect());
    // The ground is seen through the middle.
    NV_VERIFY_NEAR(probe, 100, Middle, ground, 2);
}

void tst_ControlNode::edgesAreSharp_data()
{
    QTest::addColumn<qreal>("ratio");
    QTest::addColumn<qreal>("place");
    for (const qreal place : {100.0, 100.3, 100.5, 100.77})
    {
        QTest::addRow("ratio 1, at %.2f", place) << 1.0 << place;
        QTest::addRow("ratio 2, at %.2f", place) << 2.0 << place;
    }
}

void tst_ControlNode::edgesAreSharp()
{
    QFETCH(qreal, ratio);
    QFETCH(qreal, place);
    Strip strip;
    strip.Show();
    const QColor line(Qt::green);
    strip.view->setPalette(plainPalette(line, Qt::red, Qt::gray, Qt::blue));
    strip.view->setBackgroundBrush(Qt::black);
    strip.Add(place);

    const QImage image = strip.Probe(ratio).Image();

    QMap<QRgb, int> colors;
    for (int x = int(80 * ratio); x < int(120 * ratio); ++x)
    {
        ++colors[image.pixel(x, image.height() / 2)];
    }
    QCOMPARE(colors.size(), 4); // ground, halo, line, bar
    QCOMPARE(colors.value(line.rgb()), int(4 * ratio));
    QCOMPARE(colors.value(QColor(Qt::red).rgb()), int(2 * ratio));
}

void tst_ControlNode::screenReadersMeetASlider()
{
    Strip strip;
    strip.Show();
    strip.Add(300);
    ControlNode* node = strip.Add(100);
    node->setSelected(true);

    QAccessibleInterface* handle = QAccessible::queryAccessibleInterface(node);

    QVERIFY(handle && handle->isValid());
    QCOMPARE(handle->role(), QAccessible::Slider);
    QCOMPARE(handle->text(QAccessible::Name), QString("Handle 1 of 2"));
    QCOMPARE(handle->text(QAccessible::Value), QString("25.0 %"));
    QVERIFY(handle->state().focused && handle->state().selected && handle->state().focusable);
    QVERIFY(!handle->state().disabled && !handle->state().invisible);
    QCOMPARE(handle->rect().center().x(), strip.view->viewport()->mapToGlobal(QPoint(99, 0)).x());
    QCOMPARE(handle->parent()->object(), strip.view);
    QCOMPARE(handle->childCount(), 0);
    strip.view->setEnabled(false);
    QVERIFY(handle->state().disabled);
    QVERIFY(!handle->state().focused);
}

void tst_ControlNode::screenReaderMayMoveIt()
{
    Strip strip;
    strip.Show();
    ControlNode* node = strip.Add(100);
    QAccessibleValueInterface* value = QAccessible::queryAccessibleInterface(node)->valueInterface();
    QVERIFY(value);
    QCOMPARE(value->minimumValue().toDouble(), 0.0);
    QCOMPARE(value->maximumValue().toDouble(), 100.0);
    QCOMPARE(value->minimumStepSize().toDouble(), 1.0);

    value->setCurrentValue(60);
    QCOMPARE(node->percent(), 60.0);
    QCOMPARE(value->currentValue().toDouble(), 60.0);
    value->setCurrentValue(150);
    QCOMPARE(node->percent(), 100.0);
    node->setFlag(QGraphicsItem::ItemIsMovable, false);
    value->setCurrentValue(10);
    QCOMPARE(node->percent(), 100.0);
}

NV_TEST_MAIN(tst_ControlNode)
#include "tst_ControlNode.moc"
