// The menu of the selection: what it does, when, and that each is a step.

#include "SelectMenu.h"

#include <QMenu>
#include <QSpinBox>

#include "ModalDriver.h"
#include "NVApplication.h"
#include "NVSelectionToolbar.h"
#include "SelectionMask.h"
#include "SelectionOutline.h"
#include "ShortMemory.h"
#include "SignalLog.h"
#include "TestMain.h"
#include "ToolHost.h"

class tst_SelectMenu : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_document = std::make_unique<Document>(BusyPicture(), QString(), "Picture");
        m_view = std::make_unique<NVDocumentView>(m_document->GetModel());
        m_outline = new SelectionOutline(m_document->GetPixels(), m_view.get());
        m_menu = std::make_unique<QMenu>();
        m_select = std::make_unique<SelectMenu>(m_menu.get(), nullptr, nullptr);
        m_select->SetDocument(m_document.get(), m_view.get());
    }

    void cleanup()
    {
        m_select.reset();
        m_menu.reset();
        m_view.reset();
        m_document.reset();
    }

    void eachCommandIsOnWhereItCanAct()
    {
        QCOMPARE(enabled(), QStringList({"All", "Invert"}));
        QVERIFY(!m_select->GetClearAction()->isEnabled());
        trigger("All");
        QCOMPARE(enabled(), QStringList({"All", "None", "Invert", "Refine Selection..."}));
        QVERIFY(m_select->GetClearAction()->isEnabled());
        m_select->SetDocument(nullptr, nullptr);
        QCOMPARE(enabled(), QStringList());
        QVERIFY(!m_select->GetClearAction()->isEnabled());
    }

    void allNoneAndInvertAreSteps()
    {
        trigger("All");
        QCOMPARE(mask(), FullMask(QSize(300, 200)));
        QCOMPARE(steps()->undoText(), QString("Select All"));
        trigger("None");
        QVERIFY(mask().isNull());
        QCOMPARE(steps()->undoText(), QString("Deselect"));
        trigger("Invert");
        QCOMPARE(mask(), FullMask(QSize(300, 200)));
        QCOMPARE(steps()->undoText(), QString("Invert Selection"));
        trigger("Invert");
        QVERIFY(mask().isNull());
        QCOMPARE(steps()->count(), 4);
        while (steps()->canUndo())
            steps()->undo();
        QVERIFY(mask().isNull());
    }

    void whatIsSelectedIsInverted()
    {
        select(QRect(20, 30, 50, 40));
        trigger("Invert");
        QCOMPARE(mask(), InvertMask(RectangleMask(QSize(300, 200), QRectF(20, 30, 50, 40)), QSize(300, 200)));
    }

    void aCommandThatChangesNothingIsNoStep()
    {
        trigger("All");
        trigger("All");
        QCOMPARE(steps()->count(), 1);
    }

    void refiningIsOneStep()
    {
        select(QRect(20, 30, 50, 40));
        ModalDriver driver(
            [](QWidget* window)
            {
                auto* box = window->findChild<QSpinBox*>("m_pGrow");
                box->setFocus();
                box->selectAll();
                QTest::keyClicks(box, "10");
                ModalDriver::Press(window, "OK");
            });
        trigger("Refine Selection...");
        QVERIFY(driver.Finished());
        QCOMPARE(mask(), GrowMask(RectangleMask(QSize(300, 200), QRectF(20, 30, 50, 40)), 10));
        QCOMPARE(steps()->count(), 1);
        QCOMPARE(steps()->undoText(), QString("Refine Selection"));
        steps()->undo();
        QCOMPARE(MaskBounds(mask()), QRect(20, 30, 50, 40));
    }

    void refiningThatIsCancelledIsNone()
    {
        select(QRect(20, 30, 50, 40));
        ModalDriver driver(
            [](QWidget* window)
            {
                window->findChild<QSpinBox*>("m_pGrow")->setValue(10);
                ModalDriver::Press(window, "Cancel");
            });
        trigger("Refine Selection...");
        QVERIFY(driver.Finished());
        QCOMPARE(MaskBounds(mask()), QRect(20, 30, 50, 40));
        QCOMPARE(steps()->count(), 0);
    }

    void theButtonsOfTheBarsRefineToo()
    {
        QCOMPARE(NVApplication::GetInstance()->GetRefineSelection(), m_select->GetRefineAction());
        NVSelectionToolbar bar(nullptr);
        bar.show();
        auto* button = bar.findChild<QToolButton*>("REFINESELECTIONBUTTON");
        QVERIFY(button);
        QVERIFY(!button->isEnabled());
        QCOMPARE(button->text(), QString("Refine Selection"));
        select(QRect(20, 30, 50, 40));
        QVERIFY(button->isEnabled());
        ModalDriver driver([](QWidget* window) { ModalDriver::Press(window, "Cancel"); });
        QTest::mouseClick(button, Qt::LeftButton);
        QVERIFY(driver.Finished());
        // Without the menu there is nothing to refine with.
        m_select.reset();
        m_menu.reset();
        QCOMPARE(NVApplication::GetInstance()->GetRefineSelection(), nullptr);
        QVERIFY(!button->isEnabled());
    }

    void withoutMemoryTheSelectionStays_data()
    {
        QTest::addColumn<QString>("command");
        for (const char* command : {"All", "Invert", "Refine Selection..."})
            QTest::newRow(command) << command;
    }
    void withoutMemoryTheSelectionStays()
    {
        NV_SKIP_WITHOUT_SHORT_MEMORY();
        QFETCH(const QString, command);
        QVERIFY(
            m_document->GetPixels()->ReplaceImages({PlainPicture(Qt::white, QSize(2000, 1200))}, QImage()));
        const QImage before = RectangleMask(QSize(2000, 1200), QRectF(20, 20, 80, 80));
        QVERIFY(m_document->GetPixels()->SetSelectionMask(before));
        QTRY_VERIFY(!m_outline->IsComputing());
        SignalLog log(m_select.get());
        {
            const ShortMemory none;
            trigger(command);
        }

        QCOMPARE(mask(), before);
        QCOMPARE(steps()->count(), 0);
        QCOMPARE(
            log.Entries(),
            QStringList({"AboutToChange()",
                         "Message(\"There is not enough memory for the selection. It stays as it is.\")"}));
    }

    void clearingTakesWhatIsSelectedOfTheLayer()
    {
        select(QRect(20, 30, 50, 40));
        QCOMPARE(pixels()->GetComposition(), BusyPicture());
        m_select->GetClearAction()->trigger();
        const QImage layer = pixels()->GetLayer(0).image;
        QCOMPARE(DifferenceOf(BusyPicture(), layer), QRect(20, 30, 50, 40));
        QCOMPARE(layer.pixel(40, 50), 0U);
        QCOMPARE(pixels()->GetComposition().pixel(40, 50), 0U);
        QCOMPARE(steps()->undoText(), QString("Clear Selection"));
        QCOMPARE(MaskBounds(mask()), QRect(20, 30, 50, 40));
        // What is empty is not cleared again.
        m_select->GetClearAction()->trigger();
        QCOMPARE(steps()->count(), 1);
        steps()->undo();
        QCOMPARE(pixels()->GetLayer(0).image, BusyPicture());
    }

    void aHiddenLayerIsNotCleared()
    {
        select(QRect(20, 30, 50, 40));
        pixels()->SetLayerVisible(0, false);
        SignalLog log(m_select.get());
        m_select->GetClearAction()->trigger();
        QCOMPARE(steps()->count(), 0);
        QCOMPARE(log.Count("Message"), 1);
        QCOMPARE(pixels()->GetLayer(0).image, BusyPicture());
    }

    void whatIsUnderWayIsEndedFirst()
    {
        QList<bool> selected;
        connect(m_select.get(), &SelectMenu::AboutToChange, this, [&] { selected += !mask().isNull(); });
        trigger("All");
        m_select->GetClearAction()->trigger();
        trigger("Invert");
        QCOMPARE(selected, QList<bool>({false, true, true}));
    }

    void theKeysAreTheUsualOnes()
    {
        QStringList keys;
        for (const QAction* action : m_menu->actions())
        {
            if (!action->isSeparator())
                keys += action->shortcut().toString();
        }
        QCOMPARE(keys, QStringList({"Ctrl+A", "Ctrl+D", "Ctrl+Shift+I", "Ctrl+Alt+R"}));
        QCOMPARE(m_select->GetClearAction()->shortcut().toString(), QString("Del"));
    }

    void anotherDocumentIsActedOn()
    {
        Document other(BusyPicture(), QString(), "Other");
        m_select->SetDocument(&other, nullptr);
        trigger("All");
        QVERIFY(mask().isNull());
        QVERIFY(!other.GetPixels()->GetSelectionMask().isNull());
        m_select->SetDocument(nullptr, nullptr);
    }

    void aDocumentMayGoFirst()
    {
        trigger("All");
        m_view->SetModel(nullptr);
        m_document.reset();
        QCOMPARE(enabled(), QStringList());
        m_select->SetDocument(nullptr, nullptr);
    }

private:
    KXDocumentInterface* pixels() const { return m_document->GetPixels(); }
    QUndoStack* steps() const { return m_document->GetUndoStack(); }
    QImage mask() const { return pixels()->GetSelectionMask(); }
    void select(const QRect& rect) const
    {
        QVERIFY(pixels()->SetSelectionMask(RectangleMask(pixels()->GetSize(), rect)));
    }
    QStringList enabled() const
    {
        QStringList texts;
        for (const QAction* action : m_menu->actions())
        {
            if (!action->isSeparator() && action->isEnabled())
                texts += action->text().remove('&');
        }
        return texts;
    }
    void trigger(const QString& text)
    {
        for (QAction* action : m_menu->actions())
        {
            if (action->text().remove('&') == text)
                action->trigger();
        }
    }

    std::unique_ptr<Document> m_document;
    std::unique_ptr<NVDocumentView> m_view;
    SelectionOutline* m_outline = nullptr;
    std::unique_ptr<QMenu> m_menu;
    std::unique_ptr<SelectMenu> m_select;
};

NV_TEST_MAIN(tst_SelectMenu)

#include "tst_SelectMenu.moc"
