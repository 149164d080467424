// The rectangular and the elliptic selection, with mouse and keys as a person uses them.

#include "SelectionTool.h"

#include <QLabel>
#include <QScrollBar>
#include <QSpinBox>
#include <QToolButton>

#include "NVSelectionToolbar.h"
#include "SelectionMask.h"
#include "SelectionOutline.h"
#include "ShortMemory.h"
#include "SignalLog.h"
#include "TestMain.h"
#include "ToolHost.h"

namespace
{

const QSize Size(300, 200);

struct Host : ToolHost<SelectionTool>
{
    explicit Host(QSettings* settings, SelectionShape::Kind kind = SelectionShape::Rectangle,
                  const QImage& picture = PlainPicture())
        : ToolHost(std::make_unique<SelectionTool>(kind, settings, nullptr), picture),
          outline(new SelectionOutline(document->GetPixels(), view))
    {
    }

    NVSelectionToolbar* bar() const { return tool->GetSelectionBar(); }
    QToolButton* button(const char* name) const { return bar()->findChild<QToolButton*>(name); }
    QImage mask() const { return pixels()->GetSelectionMask(); }
    QRect bounds() const { return MaskBounds(mask()); }
    int at(int x, int y) const { return mask().isNull() ? 0 : mask().constScanLine(y)[x]; }
    bool isScrolling() const { return tool->findChild<QTimer*>()->isActive(); }
    QPoint place(double x, double y) const { return view->MapFromDocument(QPointF(x, y)).toPoint(); }

    // A move with keys held, as the window system tells it.
    void moveWith(double x, double y, Qt::KeyboardModifiers modifiers)
    {
        mouse(QEvent::MouseMove, x, y, Qt::NoButton, Qt::LeftButton, modifiers);
    }
    void pull(const QPointF& from, const QPointF& to, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        press(from.x(), from.y(), modifiers);
        moveWith((from.x() + to.x()) / 2, (from.y() + to.y()) / 2, modifiers);
        moveWith(to.x(), to.y(), modifiers);
        mouse(QEvent::MouseButtonRelease, to.x(), to.y(), Qt::LeftButton, Qt::NoButton, modifiers);
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(view, key, modifiers);
    }

    SelectionOutline* outline;
};

QImage Rect(const QRect& rect)
{
    return RectangleMask(Size, rect);
}

} // namespace

class tst_SelectionTool : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scratch = std::make_unique<ScratchSettings>(); }

    void theFirstStartHasUsableValues()
    {
        SelectionTool tool(SelectionShape::Rectangle, settings(), nullptr);
        const NVSelectionToolbar* bar = tool.GetSelectionBar();
        QCOMPARE(bar->GetState(), 1);
        QCOMPARE(bar->GetRadius(), 0);
        QCOMPARE(bar->GetFeather(), 0);
        QVERIFY(bar->IsAutoscroll());
    }

    void theTwoToolsKeepValuesOfTheirOwn()
    {
        for (SelectionShape::Kind kind : {SelectionShape::Rectangle, SelectionShape::Ellipse})
        {
            SelectionTool tool(kind, settings(), nullptr);
            tool.GetSelectionBar()->SetState(kind == SelectionShape::Ellipse ? 3 : 2);
            tool.GetSelectionBar()->SetRadius(11);
            tool.GetSelectionBar()->SetFeather(kind == SelectionShape::Ellipse ? 7 : 5);
            tool.GetSelectionBar()->SetAutoscroll(false);
            tool.StoreValues();
        }
        SelectionTool rectangle(SelectionShape::Rectangle, settings(), nullptr);
        QCOMPARE(rectangle.GetSelectionBar()->GetState(), 2);
        QCOMPARE(rectangle.GetSelectionBar()->GetRadius(), 11);
        QCOMPARE(rectangle.GetSelectionBar()->GetFeather(), 5);
        QVERIFY(!rectangle.GetSelectionBar()->IsAutoscroll());
        SelectionTool ellipse(SelectionShape::Ellipse, settings(), nullptr);
        QCOMPARE(ellipse.GetSelectionBar()->GetState(), 3);
        QCOMPARE(ellipse.GetSelectionBar()->GetFeather(), 7);
    }

    void spoiltSettingsAreNotTaken()
    {
        m_scratch->settings.setValue("selection/rectangle/state", 99);
        m_scratch->settings.setValue("selection/rectangle/feather", "much");
        SelectionTool tool(SelectionShape::Rectangle, settings(), nullptr);
        QCOMPARE(tool.GetSelectionBar()->GetState(), 1);
        QCOMPARE(tool.GetSelectionBar()->GetFeather(), 0);
        m_scratch->settings.setValue("selection/ellipse/state", 0);
        SelectionTool ellipse(SelectionShape::Ellipse, settings(), nullptr);
        QCOMPARE(ellipse.GetSelectionBar()->GetState(), 1);
    }

    void anEllipseHasNoCornersOnItsBar()
    {
        Host rectangle(settings());
        QVERIFY(rectangle.bar()->findChild<QSpinBox*>("m_pRadius")->isVisible());
        Host ellipse(settings(), SelectionShape::Ellipse);
        QVERIFY(!ellipse.bar()->findChild<QSpinBox*>("m_pRadius")->isVisible());
        QVERIFY(!ellipse.bar()->findChild<QLabel*>("m_pFeatherLabel_2")->isVisible());
        QVERIFY(ellipse.bar()->findChild<QSpinBox*>("m_pFeather")->isVisible());
    }

    void eachHasItsPicture()
    {
        Host rectangle(settings());
        Host ellipse(settings(), SelectionShape::Ellipse);
        const auto picture = [](const Host& host)
        { return host.bar()->findChild<QLabel*>("m_pPicture")->pixmap(Qt::ReturnByValue).toImage(); };
        QVERIFY(!picture(rectangle).isNull());
        QVERIFY(!picture(ellipse).isNull());
        QVERIFY(picture(rectangle) != picture(ellipse));
        QVERIFY(!rectangle.button("m_pUnite")->icon().isNull());
    }

    void aDragSelectsInOneStep()
    {
        Host host(settings());

        host.pull(QPointF(40, 30), QPointF(140, 90));

        QCOMPARE(host.mask(), Rect(QRect(40, 30, 100, 60)));
        QCOMPARE(host.steps()->count(), 1);
        QCOMPARE(host.steps()->undoText(), QString("Rectangular Selection"));
        host.steps()->undo();
        QVERIFY(host.mask().isNull());
        host.steps()->redo();
        QCOMPARE(host.mask(), Rect(QRect(40, 30, 100, 60)));
        QVERIFY(!host.tool->IsDragging());
    }

    void aDragBackwardsIsTheSame()
    {
        Host host(settings());
        host.pull(QPointF(140, 90), QPointF(40, 30));
        QCOMPARE(host.mask(), Rect(QRect(40, 30, 100, 60)));
    }

    void anEllipseIsRound()
    {
        Host host(settings(), SelectionShape::Ellipse);
        host.pull(QPointF(40, 30), QPointF(140, 90));
        QCOMPARE(host.mask(), EllipseMask(Size, QRectF(40, 30, 100, 60)));
        QCOMPARE(host.steps()->undoText(), QString("Elliptic Selection"));
    }

    void radiusAndFeatherAreThoseOfTheBar()
    {
        Host host(settings());
        host.bar()->SetRadius(15);
        host.bar()->SetFeather(6);
        host.pull(QPointF(40, 30), QPointF(140, 90));
        QCOMPARE(host.mask(), RectangleMask(Size, QRectF(40, 30, 100, 60), 15, 6));

        // The radius of a rectangle is none of an ellipse's.
        Host ellipse(settings(), SelectionShape::Ellipse);
        ellipse.bar()->SetRadius(15);
        ellipse.bar()->SetFeather(6);
        ellipse.pull(QPointF(40, 30), QPointF(140, 90));
        QCOMPARE(ellipse.mask(), EllipseMask(Size, QRectF(40, 30, 100, 60), 6));
    }

    void aDragBeyondThePictureSelectsWhatIsWithin()
    {
        Host host(settings());
        host.pull(QPointF(250, 150), QPointF(340, 230));
        QCOMPARE(host.mask(), Rect(QRect(250, 150, 50, 50)));
    }

    void theStatesOfTheBarCombine_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<int>("state");
        QTest::newRow("replace") << "m_pReplace" << 1;
        QTest::newRow("unite") << "m_pUnite" << 2;
        QTest::newRow("subtract") << "m_pSubtract" << 3;
        QTest::newRow("intersect") << "m_pIntersect" << 4;
    }
    void theStatesOfTheBarCombine()
    {
        QFETCH(QString, button);
        QFETCH(int, state);
        Host host(settings());
        host.select(QRect(20, 20, 80, 80));
        QTest::mouseClick(host.bar()->findChild<QToolButton*>(button), Qt::LeftButton);

        host.pull(QPointF(180, 150), QPointF(60, 60));

        QCOMPARE(host.mask(), CombineMasks(Rect(QRect(20, 20, 80, 80)), Rect(QRect(60, 60, 120, 90)), state));
    }

    void keysAtThePressChooseTheState_data()
    {
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<int>("state");
        QTest::newRow("Shift") << int(Qt::ShiftModifier) << 2;
        QTest::newRow("Alt") << int(Qt::AltModifier) << 3;
        QTest::newRow("both") << int(Qt::ShiftModifier | Qt::AltModifier) << 4;
        QTest::newRow("Ctrl") << int(Qt::ControlModifier) << 1;
    }
    void keysAtThePressChooseTheState()
    {
        QFETCH(int, modifiers);
        QFETCH(int, state);
        Host host(settings());
        host.select(QRect(20, 20, 80, 80));

        // From outside, and neither a square nor from the middle.
        host.pull(QPointF(180, 150), QPointF(60, 60), Qt::KeyboardModifiers(modifiers));

        QCOMPARE(host.mask(), CombineMasks(Rect(QRect(20, 20, 80, 80)), Rect(QRect(60, 60, 120, 90)), state));
        QCOMPARE(host.bar()->GetClearState(), 1);
    }

    void heldKeysLightTheButtonOfTheirState()
    {
        Host host(settings());

        QTest::keyPress(host.view, Qt::Key_Shift);
        QVERIFY(host.button("m_pUnite")->isChecked());
        QCOMPARE(host.bar()->GetState(), 2);
        QTest::keyPress(host.view, Qt::Key_Alt, Qt::ShiftModifier);
        QVERIFY(host.button("m_pIntersect")->isChecked());
        QTest::keyRelease(host.view, Qt::Key_Shift);
        QVERIFY(host.button("m_pSubtract")->isChecked());
        QTest::keyRelease(host.view, Qt::Key_Alt);
        QVERIFY(host.button("m_pReplace")->isChecked());
    }

    void keysMeanNothingToAToolThatIsNotCurrent()
    {
        Host host(settings());
        host.tool->Deactivate();
        QTest::keyPress(host.view, Qt::Key_Shift);
        QCOMPARE(host.bar()->GetState(), 1);
        QTest::keyRelease(host.view, Qt::Key_Shift);
        host.tool->Activate();
        QTest::keyPress(host.view, Qt::Key_Shift);
        QCOMPARE(host.bar()->GetState(), 2);
        host.tool->Deactivate();
        QCOMPARE(host.bar()->GetState(), 1);
        QTest::keyRelease(host.view, Qt::Key_Shift);
    }

    void shiftAfterThePressMakesASquare()
    {
        Host host(settings());
        host.press(50, 50);
        host.move(110, 80);
        QTest::keyPress(host.view, Qt::Key_Shift);
        // It is a key of the shape now, not of the state.
        QCOMPARE(host.bar()->GetState(), 1);
        host.release(110, 80);
        QCOMPARE(host.mask(), Rect(QRect(50, 50, 60, 60)));
        // From here on it is one of the state again.
        QCOMPARE(host.bar()->GetState(), 2);
        QTest::keyRelease(host.view, Qt::Key_Shift);
        QCOMPARE(host.bar()->GetState(), 1);
    }

    void altAfterThePressPutsTheFirstPointIntoTheMiddle()
    {
        Host host(settings());
        host.press(100, 100);
        host.move(130, 110);
        QTest::keyPress(host.view, Qt::Key_Alt);
        host.release(130, 110);
        QTest::keyRelease(host.view, Qt::Key_Alt);
        QCOMPARE(host.mask(), Rect(QRect(70, 90, 60, 20)));
    }

    void bothAfterThePressMakeASquareAboutTheMiddle()
    {
        Host host(settings(), SelectionShape::Ellipse);
        host.press(100, 100);
        host.move(130, 110);
        QTest::keyPress(host.view, Qt::Key_Alt);
        QTest::keyPress(host.view, Qt::Key_Shift, Qt::AltModifier);
        host.release(130, 110);
        QTest::keyRelease(host.view, Qt::Key_Shift, Qt::AltModifier);
        QTest::keyRelease(host.view, Qt::Key_Alt);
        QCOMPARE(host.mask(), EllipseMask(Size, QRectF(70, 70, 60, 60)));
    }

    void aKeyOfThePressCountsForTheShapeWhenPressedAgain()
    {
        Host host(settings());
        host.select(QRect(10, 10, 20, 20));
        QTest::keyPress(host.view, Qt::Key_Shift);
        host.press(50, 50, Qt::ShiftModifier);
        host.moveWith(110, 80, Qt::ShiftModifier);
        QTest::keyRelease(host.view, Qt::Key_Shift);
        QTest::keyPress(host.view, Qt::Key_Shift);
        host.release(110, 80);
        QTest::keyRelease(host.view, Qt::Key_Shift);

        QCOMPARE(host.mask(),
                 CombineMasks(Rect(QRect(10, 10, 20, 20)), Rect(QRect(50, 50, 60, 60)), UniteSelections));
    }

    void aDragFromWithinMovesTheOutline()
    {
        Host host(settings());
        host.select(QRect(20, 20, 80, 80));

        host.pull(QPointF(60, 60), QPointF(95, 40));

        QCOMPARE(host.mask(), Rect(QRect(55, 0, 80, 80)));
        QCOMPARE(host.steps()->undoText(), QString("Move Selection"));
        QCOMPARE(host.steps()->count(), 1);
        host.steps()->undo();
        QCOMPARE(host.mask(), Rect(QRect(20, 20, 80, 80)));
        QCOMPARE(host.composition(), PlainPicture());
    }

    void withShiftTheOutlineMovesAlongAnAxis()
    {
        Host host(settings());
        host.select(QRect(20, 20, 80, 80));
        host.press(60, 60);
        host.move(95, 50);
        QTest::keyPress(host.view, Qt::Key_Shift);
        host.release(95, 50);
        QTest::keyRelease(host.view, Qt::Key_Shift);
        QCOMPARE(host.mask(), Rect(QRect(55, 20, 80, 80)));
    }

    void inOtherStatesADragFromWithinDraws()
    {
        Host host(settings());
        host.select(QRect(20, 20, 80, 80));
        host.pull(QPointF(60, 60), QPointF(90, 90), Qt::AltModifier);
        QCOMPARE(host.at(70, 70), 0);
        QCOMPARE(host.at(30, 30), 255);
    }

    void aClickDeselects()
    {
        Host host(settings());
        host.select(QRect(20, 20, 80, 80));
        host.click(200, 150);
        QVERIFY(host.mask().isNull());
        QCOMPARE(host.steps()->undoText(), QString("Deselect"));
        host.steps()->undo();
        QCOMPARE(host.bounds(), QRect(20, 20, 80, 80));
        // Also within.
        host.click(50, 50);
        QVERIFY(host.mask().isNull());
    }

    void aClickThatFindsNothingIsNoStep()
    {
        Host host(settings());
        host.click(200, 150);
        QCOMPARE(host.steps()->count(), 0);
        host.select(QRect(20, 20, 80, 80));
        host.click(200, 150, Qt::ShiftModifier);
        host.click(200, 150, Qt::AltModifier);
        QCOMPARE(host.steps()->count(), 0);
        QCOMPARE(host.bounds(), QRect(20, 20, 80, 80));
    }

    void aTremblingClickIsAClick()
    {
        Host host(settings());
        host.select(QRect(20, 20, 80, 80));
        host.press(200, 150);
        host.move(201, 151);
        host.release(202, 150);
        QVERIFY(host.mask().isNull());
    }

    void otherButtonsDoNothing()
    {
        Host host(settings());
        host.select(QRect(20, 20, 80, 80));
        host.mouse(QEvent::MouseButtonPress, 150, 150, Qt::RightButton, Qt::RightButton);
        host.mouse(QEvent::MouseMove, 190, 190, Qt::NoButton, Qt::RightButton);
        host.mouse(QEvent::MouseButtonRelease, 190, 190, Qt::RightButton, Qt::NoButton);
        QCOMPARE(host.steps()->count(), 0);
        QCOMPARE(host.bounds(), QRect(20, 20, 80, 80));
    }

    void escapeTakesADragBack()
    {
        Host host(settings());
        host.select(QRect(20, 20, 80, 80));
        host.press(150, 50);
        host.move(250, 150);
        QVERIFY(host.tool->IsDragging());
        QVERIFY(!host.outline->IsShown());

        host.key(Qt::Key_Escape);

        QVERIFY(!host.tool->IsDragging());
        QVERIFY(host.outline->IsShown());
        host.release(250, 150);
        QCOMPARE(host.bounds(), QRect(20, 20, 80, 80));
        QCOMPARE(host.steps()->count(), 0);
    }

    void escapeTakesAMoveBack()
    {
        Host host(settings());
        host.select(QRect(20, 20, 80, 80));
        host.press(50, 50);
        host.move(150, 80);
        host.key(Qt::Key_Escape);
        host.release(150, 80);
        QCOMPARE(host.bounds(), QRect(20, 20, 80, 80));
        QCOMPARE(host.steps()->count(), 0);
    }

    void anotherToolEndsTheDragWhereItIs()
    {
        Host host(settings());
        host.press(50, 50);
        host.move(150, 80);
        host.tool->Deactivate();
        QCOMPARE(host.bounds(), QRect(50, 50, 100, 30));
        host.tool->Activate();
    }

    void aPressThatIsBrokenOffIsNoClick()
    {
        Host host(settings());
        host.select(QRect(20, 20, 80, 80));
        host.press(200, 150);
        host.tool->Finish();
        host.release(200, 150);
        QCOMPARE(host.bounds(), QRect(20, 20, 80, 80));
        QCOMPARE(host.steps()->count(), 0);
    }

    void aSelectionWithoutAnOutlineIsTold()
    {
        Host host(settings());
        SignalLog log(host.tool.get());
        const QString text = "No pixel is selected by half or more: the outline cannot be seen.";
        host.pull(QPointF(40, 30), QPointF(70, 60));
        QVERIFY(!log.Entries().join('\n').contains(text));
        host.bar()->SetFeather(80);
        host.pull(QPointF(140, 30), QPointF(170, 60));
        QVERIFY(log.Entries().last().contains(text));
        QVERIFY(!host.mask().isNull());
    }

    void withoutMemoryTheSelectionStays_data()
    {
        QTest::addColumn<QString>("act");
        for (const char* act : {"replace", "intersect", "move", "nudge"})
            QTest::newRow(act) << act;
    }
    void withoutMemoryTheSelectionStays()
    {
        NV_SKIP_WITHOUT_SHORT_MEMORY();
        QFETCH(const QString, act);
        Host host(settings(), SelectionShape::Rectangle, PlainPicture(Qt::white, QSize(2000, 1200)));
        // The view shows the upper left corner.
        host.view->horizontalScrollBar()->setValue(0);
        host.view->verticalScrollBar()->setValue(0);
        host.select(QRect(20, 20, 80, 80));
        QTRY_VERIFY(host.outline->IsShown() && !host.outline->IsComputing());
        host.bar()->SetState(act == "intersect" ? 4 : 1);
        SignalLog log(host.tool.get());
        if (act != "nudge")
        {
            const int start = act == "move" ? 50 : 150;
            host.press(start, 50);
            host.move(start + 60, 90);
        }
        {
            const ShortMemory none;
            if (act == "nudge")
                host.key(Qt::Key_Right);
            else
                host.release(200, 120);
        }

        QCOMPARE(host.bounds(), QRect(20, 20, 80, 80));
        QCOMPARE(host.steps()->count(), 0);
        QCOMPARE(log.Entries().constLast(),
                 QString("Message(\"There is not enough memory for the selection. It stays as it is.\")"));
        QTRY_VERIFY(host.outline->IsShown());
    }

    void theDocumentMayGoInADrag()
    {
        Host host(settings());
        host.press(50, 50);
        host.move(150, 80);
        host.closeDocument();
        host.release(150, 80);
        QVERIFY(!host.tool->IsDragging());
    }

    void arrowKeysMoveTheOutline()
    {
        Host host(settings());
        host.select(QRect(20, 20, 80, 80));
        const int scrolled = host.view->horizontalScrollBar()->value();

        host.key(Qt::Key_Right);
        host.key(Qt::Key_Down);
        QCOMPARE(host.bounds(), QRect(21, 21, 80, 80));
        host.key(Qt::Key_Left, Qt::ShiftModifier);
        host.key(Qt::Key_Up, Qt::ShiftModifier);
        QCOMPARE(host.bounds(), QRect(11, 11, 80, 80));

        QCOMPARE(host.view->horizontalScrollBar()->value(), scrolled);
        // Several in a row are one step.
        QCOMPARE(host.steps()->count(), 1);
        QCOMPARE(host.steps()->undoText(), QString("Move Selection"));
        host.steps()->undo();
        QCOMPARE(host.bounds(), QRect(20, 20, 80, 80));
        host.steps()->redo();
        QCOMPARE(host.bounds(), QRect(11, 11, 80, 80));
    }

    void escapeEndsADragWhateverIsHeld_data()
    {
        QTest::addColumn<Qt::KeyboardModifiers>("held");
        QTest::newRow("nothing") << Qt::KeyboardModifiers(Qt::NoModifier);
        QTest::newRow("Shift") << Qt::KeyboardModifiers(Qt::ShiftModifier);
        QTest::newRow("Alt") << Qt::KeyboardModifiers(Qt::AltModifier);
        QTest::newRow("both") << (Qt::ShiftModifier | Qt::AltModifier);
        QTest::newRow("Ctrl") << Qt::KeyboardModifiers(Qt::ControlModifier);
    }
    void escapeEndsADragWhateverIsHeld()
    {
        QFETCH(Qt::KeyboardModifiers, held);
        Host host(settings());
        host.select(QRect(20, 20, 80, 80));
        QSignalSpy messages(host.tool.get(), &Tool::Message);
        host.press(120, 120, held);
        host.moveWith(150, 150, held);
        QVERIFY(host.tool->CanCancel());
        QVERIFY(!messages.isEmpty());

        host.key(Qt::Key_Escape, held);

        QVERIFY(!host.tool->IsDragging());
        QVERIFY(!host.tool->CanCancel());
        QCOMPARE(messages.last().at(0).toString(), QString());
        host.release(150, 150);
        QCOMPARE(host.bounds(), QRect(20, 20, 80, 80));
        QCOMPARE(host.steps()->count(), 0);
    }

    void whatCanBeCancelledIsToldOnce()
    {
        Host host(settings());
        QSignalSpy changes(host.tool.get(), &Tool::CanCancelChanged);
        QVERIFY(!host.tool->CanCancel());
        host.press(20, 20);
        host.move(60, 60);
        host.move(90, 90);
        QCOMPARE(changes.count(), 1);
        QCOMPARE(changes.at(0).at(0).toBool(), true);
        host.tool->Deactivate();
        QCOMPARE(changes.count(), 2);
        QCOMPARE(changes.at(1).at(0).toBool(), false);
        QVERIFY(!host.tool->CanCancel());
        host.tool->Activate();
        QCOMPARE(changes.count(), 2);
    }

    void arrowKeysInANumberBoxStayThere()
    {
        Host host(settings());
        host.select(QRect(20, 20, 80, 80));
        auto* radius = host.bar()->findChild<QSpinBox*>("m_pRadius");
        radius->setFocus();
        QTest::keyClick(radius, Qt::Key_Up);
        QTest::keyClick(radius, Qt::Key_Up);
        QTest::keyClick(radius, Qt::Key_Down);
        QTest::keyClick(radius, Qt::Key_Left);
        QCOMPARE(radius->value(), 1);
        QCOMPARE(host.bounds(), QRect(20, 20, 80, 80));
        QCOMPARE(host.steps()->count(), 0);
    }

    void arrowKeysWithOtherKeysHeldMoveNothing()
    {
        Host host(settings());
        host.select(QRect(20, 20, 80, 80));
        host.key(Qt::Key_Right, Qt::ControlModifier);
        host.key(Qt::Key_Right, Qt::AltModifier);
        QCOMPARE(host.bounds(), QRect(20, 20, 80, 80));
        host.key(Qt::Key_Right, Qt::KeypadModifier);
        QCOMPARE(host.bounds(), QRect(21, 20, 80, 80));
    }

    void withoutASelectionArrowKeysScroll()
    {
        Host host(settings());
        const int before = host.view->horizontalScrollBar()->value();
        host.key(Qt::Key_Right);
        QVERIFY(host.view->horizontalScrollBar()->value() != before);
        QCOMPARE(host.steps()->count(), 0);
    }

    void anArrowKeyInADragDoesNothing()
    {
        Host host(settings());
        host.select(QRect(20, 20, 80, 80));
        host.press(50, 50);
        host.move(150, 80);
        host.key(Qt::Key_Right);
        QCOMPARE(host.steps()->count(), 0);
        host.key(Qt::Key_Escape);
        host.release(150, 80);
    }

    void outsideTheViewADragScrolls()
    {
        Host host(settings(), SelectionShape::Rectangle, PlainPicture(Qt::white, QSize(3000, 2000)));
        host.press(400, 300);
        const QPointF start = host.view->MapToDocument(QPointF(0, 0));
        const QPointF outside(host.view->viewport()->width() + 40, host.view->viewport()->height() / 2);
        const QPointF place = host.view->MapToDocument(outside);
        host.move(place.x(), place.y());
        QVERIFY(host.isScrolling());
        QTRY_VERIFY(host.view->MapToDocument(QPointF(0, 0)).x() > start.x() + 50);
        QCOMPARE(host.view->MapToDocument(QPointF(0, 0)).y(), start.y());
        const QPointF end = host.view->MapToDocument(outside);
        host.release(end.x(), end.y());
        const double after = host.view->MapToDocument(QPointF(0, 0)).x();
        QVERIFY(host.bounds().right() > place.x() + 40);
        // It ends with the drag.
        QVERIFY(!host.isScrolling());
        QCOMPARE(host.view->MapToDocument(QPointF(0, 0)).x(), after);
    }

    void withoutAutoscrollTheViewStays()
    {
        Host host(settings(), SelectionShape::Rectangle, PlainPicture(Qt::white, QSize(3000, 2000)));
        host.bar()->SetAutoscroll(false);
        const QPointF start = host.view->MapToDocument(QPointF(0, 0));
        host.press(400, 300);
        const QPointF place = host.view->MapToDocument(QPointF(host.view->viewport()->width() + 40, 100));
        host.move(place.x(), place.y());
        QVERIFY(!host.isScrolling());
        host.release(place.x(), place.y());
        QCOMPARE(host.view->MapToDocument(QPointF(0, 0)), start);
        QCOMPARE(host.bounds().right() + 1, qRound(place.x()));
    }

    void theShapeIsShownWhileItIsDrawn()
    {
        Host host(settings());
        SignalLog log(host.tool.get());
        const QPoint edge = host.place(100, 30);
        const QImage before = host.view->viewport()->grab(QRect(edge - QPoint(4, 4), QSize(9, 9))).toImage();
        host.press(40, 30);
        host.move(140, 90);
        const QImage during = host.view->viewport()->grab(QRect(edge - QPoint(4, 4), QSize(9, 9))).toImage();
        QVERIFY(during != before);
        QVERIFY(log.Entries().contains("Message(\"100 x 60 px\")"));
        host.key(Qt::Key_Escape);
        host.release(140, 90);
        QCOMPARE(host.view->viewport()->grab(QRect(edge - QPoint(4, 4), QSize(9, 9))).toImage(), before);
    }

    void overTheSelectionThePointerSaysThatItMoves()
    {
        Host host(settings());
        host.select(QRect(20, 20, 80, 80));
        host.move(50, 50, Qt::NoButton);
        QCOMPARE(host.view->viewport()->cursor().shape(), Qt::SizeAllCursor);
        host.move(150, 150, Qt::NoButton);
        QCOMPARE(host.view->viewport()->cursor().shape(), Qt::CrossCursor);
        host.bar()->SetState(2);
        host.move(50, 50, Qt::NoButton);
        QCOMPARE(host.view->viewport()->cursor().shape(), Qt::CrossCursor);
    }

    void theToolMayGoInADrag()
    {
        Host host(settings());
        host.press(50, 50);
        host.move(150, 80);
        host.tool.reset();
        host.release(150, 80);
        QVERIFY(host.view->isVisible());
    }

private:
    QSettings* settings() { return &m_scratch->settings; }

    std::unique_ptr<ScratchSettings> m_scratch;
};

NV_TEST_MAIN(tst_SelectionTool)

#include "tst_SelectionTool.moc"
