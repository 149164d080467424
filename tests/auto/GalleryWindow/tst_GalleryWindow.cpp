// The window of the gallery, used by hand: choosing, filtering, the log of what is really done, dialogs.

#include "GalleryWindow.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

#include "GalleryExhibits.h"
#include "GalleryLog.h"
#include "KXBrushSettings.h"
#include "KXDialog.h"
#include "ModalDriver.h"
#include "NVApplication.h"
#include "NVBrushToolbar.h"
#include "NVDocumentView.h"
#include "NVHistoryPanel.h"
#include "NVSelectColorRange.h"
#include "ScanLeak.h"
#include "TestMain.h"

namespace
{

// The window on the screen, and its parts by name.
struct Host
{
    Host()
    {
        window.show();
        isShown = QTest::qWaitForWindowActive(&window);
    }

    const GalleryLog& Log() const { return *window.findChild<GalleryLog*>(); }
    QPushButton* Button(const char* name) const { return window.findChild<QPushButton*>(name); }
    void Click(const char* name) const { QTest::mouseClick(Button(name), Qt::LeftButton); }
    template <class Control>
    Control* Find(const char* name) const
    {
        return window.GetWidget()->findChild<Control*>(name);
    }
    // The names that are in sight in the list.
    QStringList Names() const
    {
        QStringList names;
        auto* list = window.findChild<QTreeWidget*>("Widgets");
        for (QTreeWidgetItemIterator item(list, QTreeWidgetItemIterator::NotHidden); *item; ++item)
            names.append((*item)->text(0));
        return names;
    }

    GalleryWindow window;
    bool isShown = false;
};

} // namespace

class tst_GalleryWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        NVApplication::GetInstance()->SetTheme(0);
        qApp->setStyleSheet(QString());
    }

    void theFirstWidgetIsShownAtTheStart()
    {
        const Host host;
        QVERIFY(host.isShown);

        QCOMPARE(host.window.GetChosen(), QString("NVBlurToolbar"));
        QVERIFY(host.window.GetWidget()->isVisible());
        QCOMPARE(host.Log().GetLines(), QStringList());
    }

    void aBarHasTheWholeWidthAndAPanelThatOfAPanel()
    {
        Host host;
        host.window.Choose("NVMoveToolbar");
        QTRY_VERIFY(host.window.GetWidget()->width() > 900);
        QCOMPARE(host.window.GetWidget()->height(), host.window.GetWidget()->sizeHint().height());

        host.window.Choose("NVHistoryPanel");
        QTRY_VERIFY(host.window.GetWidget()->width() >= 320);
        QVERIFY(host.window.GetWidget()->width() < 400);
        QVERIFY(host.window.GetWidget()->height() > 300);

        host.window.Choose("NVHistoryItem");
        QTRY_VERIFY(host.window.GetWidget()->width() > 900);
        QVERIFY(host.window.GetWidget()->height() < 60);
    }

    void thePanelThatFollowsACanvasHasItBeside()
    {
        Host host;
        host.window.Choose("NVZoomPanel");
        QWidget* panel = host.window.GetWidget();

        auto* canvas = host.window.findChild<NVDocumentView*>();

        QTRY_VERIFY(canvas->width() > 400);
        QVERIFY(canvas->isVisible());
        QVERIFY(canvas->mapToGlobal(QPoint()).x() >= panel->mapToGlobal(QPoint(panel->width(), 0)).x());
    }

    void aClickOnAControlIsLoggedWithItsArgument()
    {
        Host host;
        host.window.Choose("NVZoomToolbar");

        QTest::mouseClick(host.Find<QToolButton>("m_pZoomOut"), Qt::LeftButton);
        QTest::mouseClick(host.Find<QPushButton>("m_pFitScreen"), Qt::LeftButton);

        QCOMPARE(host.Log().GetLines(),
                 QStringList({"1\tZoomInChecked(false)", "2\tZoomOutChecked(true)", "3\tFitScreen()"}));
        QCOMPARE(host.Log().GetCount("ZoomInChecked(bool)"), 1);
        QCOMPARE(host.Log().GetCount("ZoomOutChecked(bool)"), 1);
        QCOMPARE(host.Log().GetCount("FitScreen()"), 1);
        QCOMPARE(host.Log().GetCount("ActualPixels()"), 0);
    }

    void theSignalsOfThePartsOfABarAreLoggedByTheirGetter()
    {
        Host host;
        host.window.Choose("NVBrushToolbar");
        auto* bar = qobject_cast<NVBrushToolbar*>(host.window.GetWidget());

        bar->GetBrushes()->SetSize(60);

        QStringList texts;
        const QStringList lines = host.Log().GetLines();
        for (const QString& line : lines)
            texts.append(line.section('\t', 1));
        texts.sort();
        QCOMPARE(texts, QStringList({"GetBrushes().SizeChanged(60)", "SizeChanged(60)"}));
        QCOMPARE(host.Log().GetCount("GetBrushes().SizeChanged(int)"), 1);
    }

    void pauseClearAndCopyActOnTheLogOfTheWidget()
    {
        Host host;
        host.window.Choose("NVRulerToolbar");
        auto* clear = host.Find<QPushButton>("m_pClear");
        QVERIFY(clear);
        QTest::mouseClick(clear, Qt::LeftButton);
        QCOMPARE(host.Log().GetLines(), QStringList("1\tClear()"));

        host.Click("Clear");
        QCOMPARE(host.Log().GetLines(), QStringList());
        host.window.findChild<GalleryLog*>()->SetPaused(true);
        QTest::mouseClick(clear, Qt::LeftButton);
        QCOMPARE(host.Log().GetCount("Clear()"), 0);
        host.window.findChild<GalleryLog*>()->SetPaused(false);
        QTest::mouseClick(clear, Qt::LeftButton);
        QCOMPARE(host.Log().GetLines(), QStringList("1\tClear()"));
    }

    void aClickInTheListChoosesAndDestroysTheFormerWidget()
    {
        Host host;
        const QPointer<QWidget> former = host.window.GetWidget();
        auto* list = host.window.findChild<QTreeWidget*>("Widgets");
        QTreeWidgetItem* item =
            list->findItems("NVEraserToolbar", Qt::MatchExactly | Qt::MatchRecursive).value(0);

        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                          list->visualItemRect(item).center());

        QCOMPARE(host.window.GetChosen(), QString("NVEraserToolbar"));
        QVERIFY(!former);
        QVERIFY(host.window.GetWidget()->isVisible());
    }

    void aTitleOfAGroupIsNoChoice()
    {
        Host host;
        auto* list = host.window.findChild<QTreeWidget*>("Widgets");
        QTreeWidgetItem* panels = list->topLevelItem(1);

        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                          list->visualItemRect(panels).center());
        host.window.Choose("Panels");

        QCOMPARE(host.window.GetChosen(), QString("NVBlurToolbar"));
        QVERIFY(host.window.GetWidget());
    }

    void anUnknownNameLeavesTheChoice()
    {
        Host host;
        const QPointer<QWidget> shown = host.window.GetWidget();

        host.window.Choose("NVBlur");
        host.window.Choose(QString());

        QCOMPARE(host.window.GetChosen(), QString("NVBlurToolbar"));
        QVERIFY(shown);
    }

    void anotherWidgetBeginsAnotherLog()
    {
        Host host;
        host.window.Choose("NVZoomToolbar");
        QTest::mouseClick(host.Find<QToolButton>("m_pZoomOut"), Qt::LeftButton);

        host.window.Choose("NVMoveToolbar");

        QCOMPARE(host.Log().GetLines(), QStringList());
        const auto* counts = host.window.findChild<QTreeWidget*>("Counts");
        QCOMPARE(counts->topLevelItemCount(), 1);
        QCOMPARE(counts->topLevelItem(0)->text(0), QString("ShowFrameChanged(bool)"));
    }

    void everyWidgetCanBeChosenInTurn()
    {
        Host host;
        QPointer<QWidget> former;
        for (const GalleryRow& row : GalleryRows())
        {
            former = host.window.GetWidget();
            host.window.Choose(row.name);
            QCOMPARE(host.window.GetChosen(), QString(row.name));
            QCoreApplication::processEvents();
            QCOMPARE(former == host.window.GetWidget(), row.name == QString("NVBlurToolbar"));
            QCOMPARE(host.window.GetWidget()->isVisible(), !host.window.GetWidget()->isWindow());
            QCOMPARE(host.Button("Open")->isVisible(), host.window.GetWidget()->isWindow());
        }
    }

    void typingInTheFilterHidesTheOthers()
    {
        Host host;
        auto* filter = host.window.findChild<QLineEdit*>("Filter");
        QVERIFY(filter->hasFocus());

        QTest::keyClicks(filter, "gradient");
        QCOMPARE(host.Names(),
                 QStringList({"Bars", "NVGradientToolbar", "Panels", "NVGradientPopup", "Dialogs",
                              "NVGradientEditor"}));
        QTest::keyClicks(filter, "E");
        QCOMPARE(host.Names(), QStringList({"Dialogs", "NVGradientEditor"}));
        filter->clear();
        QCOMPARE(size_t(host.Names().size()), GalleryRows().size() + 3);
        QCOMPARE(host.window.GetChosen(), QString("NVBlurToolbar"));
    }

    void startAnewBringsTheValuesOfTheBeginningAndKeepsTheLog()
    {
        Host host;
        host.window.Choose("NVBrushToolbar");
        const QPointer<QWidget> former = host.window.GetWidget();
        qobject_cast<NVBrushToolbar*>(former)->SetSize(7);
        QVERIFY(host.Log().GetCount("SizeChanged(int)") > 0);
        const QStringList lines = host.Log().GetLines();

        host.Click("Anew");

        QVERIFY(!former);
        auto* bar = qobject_cast<NVBrushToolbar*>(host.window.GetWidget());
        QCOMPARE(bar->GetSize(), 48);
        QVERIFY(bar->isVisible());
        QCOMPARE(host.Log().GetLines(), lines);
        bar->SetSpacing(30);
        QCOMPARE(host.Log().GetCount("SpacingChanged(int)"), 1);
    }

    void startAnewBringsBackAPanelThatClosedItself()
    {
        Host host;
        host.window.Choose("NVSelectColorRange");
        qobject_cast<NVSelectColorRange*>(host.window.GetWidget())->Reject();
        QVERIFY(!host.window.GetWidget()->isVisible());
        QCOMPARE(host.Log().GetLines(), QStringList("1\tRejected()"));

        host.Click("Anew");

        QVERIFY(host.window.GetWidget()->isVisible());
    }

    void startAnewReplacesAWidgetThatIsGone()
    {
        Host host;
        delete host.window.GetWidget();

        host.Click("Anew");

        QVERIFY(host.window.GetWidget()->isVisible());
    }

    void theThemeIsThatOfTheListOfThemes()
    {
        Host host;
        host.window.Choose("NVStampToolbar");
        const QPointer<QWidget> former = host.window.GetWidget();
        auto* themes = host.window.findChild<QComboBox*>("Themes");
        QCOMPARE(themes->currentIndex(), 0);
        themes->setFocus();

        QTest::keyClick(themes, Qt::Key_Down);

        QCOMPARE(NVApplication::GetInstance()->GetTheme(), 1);
        QVERIFY(QApplication::palette().color(QPalette::Window).lightness() < 80);
        QVERIFY(!former);
        QCOMPARE(host.window.GetChosen(), QString("NVStampToolbar"));
        QVERIFY(host.window.GetWidget()->isVisible());
    }

    void aThemeFromElsewhereIsShownInTheList()
    {
        NVApplication::GetInstance()->SetTheme(2);
        Host host;
        auto* themes = host.window.findChild<QComboBox*>("Themes");
        QCOMPARE(themes->currentIndex(), 2);

        NVApplication::GetInstance()->SetTheme(1);

        QCOMPARE(themes->currentIndex(), 1);
    }

    void theHistoryPanelIsAnsweredAsByAHost()
    {
        Host host;
        host.window.Choose("NVHistoryPanel");
        auto* panel = qobject_cast<NVHistoryPanel*>(host.window.GetWidget());
        QCOMPARE(panel->GetSelectedIndex(), 5);

        Q_EMIT panel->IndexActivated(2);

        QCOMPARE(panel->GetSelectedIndex(), 2);
        QCOMPARE(host.Log().GetLines(), QStringList("1\tIndexActivated(2)"));
    }

    void aDialogIsOpenedByTheButtonAndItsResultIsLogged()
    {
        Host host;
        host.window.Choose("NVCanvasSize");
        ModalDriver cancel([](QWidget* dialog) { ModalDriver::Press(dialog, "Cancel"); });

        host.Click("Open");

        QVERIFY(cancel.Finished());
        QCOMPARE(host.Log().GetLines(),
                 QStringList({"1\tFinished(0)", "2\tRejected()", "3\tExec() returned 0, ResultRejected"}));
        QCOMPARE(host.Log().GetCount("Rejected()"), 1);

        ModalDriver accept([](QWidget* dialog) { ModalDriver::Press(dialog, "OK"); });
        host.Click("Open");
        QVERIFY(accept.Finished());
        QCOMPARE(host.Log().GetLines().mid(3),
                 QStringList({"4\tFinished(1)", "5\tAccepted()", "6\tExec() returned 1, ResultAccepted"}));
    }

    void aResultThatHasNoNameIsLoggedAsItsNumber()
    {
        Host host;
        host.window.Choose("NVIncompleteDocumentInfo");
        ModalDriver driver([](QWidget* dialog) { ModalDriver::Press(dialog, "Save as"); });

        host.Click("Open");

        QVERIFY(driver.Finished());
        QCOMPARE(host.Log().GetLines().constLast(), QString("2\tExec() returned 2"));
    }

    void everyDialogRunsAndTellsThatItWasClosed_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("operation");
        for (const GalleryRow& row : GalleryDialogs())
        {
            const bool scans = row.name == QString("KXAddToBatchDialog");
            QTest::newRow(row.name) << row.name << (scans ? "AddFolders()" : "Exec()");
        }
    }
    void everyDialogRunsAndTellsThatItWasClosed()
    {
        QFETCH(QString, name);
        QFETCH(QString, operation);
        Host host;
        host.window.Choose(name);
        const QPointer<QWidget> dialog = host.window.GetWidget();
        ModalDriver driver([](QWidget* window) { ModalDriver::CloseWindow(window); });

        host.Click("Open");

        QVERIFY(driver.Finished());
        QVERIFY(host.Log().GetLines().constLast().endsWith(operation + " returned -1, ResultClosed"));
        QCOMPARE(host.Log().GetCount("Finished(int)"), 1);
        // Each run has a dialog of its own.
        QVERIFY(!dialog);
        QVERIFY(host.window.GetWidget());
    }

    void anotherChoiceEndsADialogThatRuns()
    {
        Host host;
        host.window.Choose("NVCanvasSize");
        ModalDriver driver([&](QWidget*) { host.window.Choose("NVZoomToolbar"); });

        host.Click("Open");

        QVERIFY(driver.Finished());
        QCOMPARE(host.window.GetChosen(), QString("NVZoomToolbar"));
        QCOMPARE(host.Log().GetLines(), QStringList());
    }

    void aPopupOpensBelowTheButton()
    {
        Host host;
        host.window.Choose("NVGradientPopup");

        host.Click("Open");

        QWidget* popup = host.window.GetWidget();
        QVERIFY(QTest::qWaitForWindowActive(popup));
        QPushButton* button = host.Button("Open");
        QCOMPARE(popup->pos(), button->mapToGlobal(QPoint(0, button->height())));
        QTest::keyClick(popup->findChild<QAbstractItemView*>(), Qt::Key_Down);
        QCOMPARE(host.Log().GetLines(), QStringList("1\tCurrentIndexChanged(1)"));
    }
};

NV_TEST_MAIN(tst_GalleryWindow)
#include "tst_GalleryWindow.moc"
