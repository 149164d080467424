// The window as a person uses it: adding, dropping, filtering, removing, refreshing, links that lead back,
// the job with its report, and cancelling at every stage.

#include "BatchWindow.h"

#include <QAccessible>
#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QSettings>
#include <QSpinBox>
#include <QTabWidget>
#include <QTimer>
#include <QTreeView>
#include <QUrl>

#include <memory>

#include <sys/stat.h>
#include <utime.h>

#include "BatchJob.h"
#include "BatchTreeView.h"
#include "BusyThreads.h"
#include "FolderTree.h"
#include "KXAddToBatchDialog.h"
#include "ModalDriver.h"
#include "NVImageFileManager.h"
#include "ScanLeak.h"
#include "TestMain.h"

namespace
{

using Model = KXBatchInputModel;

void Paint(const QString& path, const QSize& size = QSize(40, 20))
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::red);
    QVERIFY(image.save(path));
}

QString TextOf(const QWidget* box)
{
    QString text;
    for (const QLabel* label : box->findChildren<QLabel*>())
        text += label->text();
    return text;
}

} // namespace

class tst_BatchWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        m_tree = std::make_unique<FolderTree>();
        m_tree->Folder("in/sub/deep");
        m_tree->Folder("in/empty");
        for (const char* name : {"in/a.png", "in/b.png", "in/sub/c.png", "in/sub/deep/d.png"})
            Paint(m_tree->Path(name));
        m_tree->File("in/sub/notes.txt");
        m_settings = std::make_unique<QSettings>(m_tree->Path("settings.ini"), QSettings::IniFormat);
        make();
    }
    void cleanup() { m_window.reset(); }

    void atFirstThereIsNothingToDoButToAdd()
    {
        QVERIFY(button("Add Files...")->isEnabled() && button("Add Folder...")->isEnabled());
        for (const char* name : {"Remove", "Refresh", "Rescan", "Start", "Cancel"})
            QVERIFY2(!button(name)->isEnabled(), name);
        QCOMPARE(totals(), QString("0 images, 0 folders"));
        QVERIFY(button("Add Files...")->hasFocus());
        QVERIFY(NVImageFileManager::GetInstance());
    }

    void aFolderIsScannedIntoTheTree()
    {
        add({"in"});

        QCOMPARE(model()->GetFileCount(), FolderTree::CountOfFind(m_tree->Path("in"), InputSuffixes()));
        QCOMPARE(totals(), QString("4 images, 4 folders"));
        QCOMPARE(model()->FindPath(m_tree->Path("in/sub")).data(Model::NodeFileCountRole).toInt(), 2);
        QCOMPARE(status(), QString("4 new images."));
        QVERIFY(tree()->isExpanded(tree()->model()->index(0, 0)));
        QVERIFY(button("Remove")->isEnabled());
    }

    void filesAreAddedByADialog()
    {
        m_settings->setValue("batch/inputFolder", m_tree->Path("in"));
        ModalDriver driver(
            [](QWidget* dialog)
            {
                auto* edit = dialog->findChild<QLineEdit*>("fileNameEdit");
                edit->setText("\"a.png\" \"b.png\"");
                QTest::keyClick(edit, Qt::Key_Return);
            });

        press("Add Files...");
        waitForIdle();

        QVERIFY(driver.Finished());
        QCOMPARE(totals(), QString("2 images, 0 folders"));
    }

    void aFolderIsAddedByADialog()
    {
        m_settings->setValue("batch/inputFolder", m_tree->Path());
        ModalDriver driver(
            [this](QWidget* dialog)
            {
                auto* edit = dialog->findChild<QLineEdit*>("fileNameEdit");
                edit->setText(m_tree->Path("in/sub"));
                QTest::keyClick(edit, Qt::Key_Return);
            });

        press("Add Folder...");
        waitForIdle();

        QVERIFY(driver.Finished());
        QCOMPARE(totals(), QString("2 images, 2 folders"));
        QCOMPARE(m_settings->value("batch/inputFolder").toString(), m_tree->Path("in/sub"));
    }

    void aCancelledChoiceAddsNothing()
    {
        for (const char* name : {"Add Files...", "Add Folder..."})
        {
            ModalDriver driver([](QWidget* dialog) { ModalDriver::PressKey(dialog, Qt::Key_Escape); });
            press(name);
            QVERIFY(driver.Finished());
        }

        QCOMPARE(m_window->GetState(), BatchWindow::Idle);
    }

    void filesAndFoldersAreDropped()
    {
        QVERIFY(drop(
            {QUrl::fromLocalFile(m_tree->Path("in/sub")), QUrl::fromLocalFile(m_tree->Path("in/a.png"))}));
        waitForIdle();

        QCOMPARE(totals(), QString("3 images, 2 folders"));
    }

    void aDropOverTheTreeOrALineIsTakenByTheWindow()
    {
        for (QWidget* widget : {tree()->viewport(), static_cast<QWidget*>(lineEdit("m_pFilter")),
                                static_cast<QWidget*>(lineEdit("m_pFolder"))})
        {
            QVERIFY(drop({QUrl::fromLocalFile(m_tree->Path("in/sub"))}, widget));
            waitForIdle();

            QCOMPARE(totals(), QString("2 images, 2 folders"));
            QCOMPARE(lineEdit("m_pFilter")->text() + lineEdit("m_pFolder")->text(), QString());
            model()->Clear();
        }
    }

    void whatIsDroppedIsNeverMoved()
    {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(m_tree->Path("in/sub"))});
        // As with Shift held.
        QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                              Qt::ShiftModifier);
        enter.setDropAction(Qt::MoveAction);
        QDragMoveEvent move(QPoint(10, 10), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                            Qt::ShiftModifier);
        move.setDropAction(Qt::MoveAction);
        QDropEvent drop(QPoint(10, 10), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                        Qt::ShiftModifier);
        drop.setDropAction(Qt::MoveAction);
        for (QDropEvent* event : {static_cast<QDropEvent*>(&enter), static_cast<QDropEvent*>(&move), &drop})
        {
            QCoreApplication::sendEvent(m_window.get(), event);
            QVERIFY(event->isAccepted());
            QCOMPARE(event->dropAction(), Qt::CopyAction);
        }
        waitForIdle();

        // Who only gives away keeps what he has.
        QDragEnterEvent moveOnly(QPoint(10, 10), Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_window.get(), &moveOnly);
        QVERIFY(!moveOnly.isAccepted());
    }

    void somethingElseDroppedIsNotTaken() { QVERIFY(!drop({QUrl("https://example.org/a.png")})); }

    void theSameFolderAgainIsThereOnce()
    {
        add({"in"});

        add({"in", "in/sub"});

        QCOMPARE(totals(), QString("4 images, 4 folders"));
        QCOMPARE(status(), QString("0 new images."));
    }

    void whatWasLeftOutIsListed()
    {
        m_tree->Link("nothing", "in/dangling.png");
        m_tree->File("in/.hidden.png");
        m_tree->File("in/<b>bold.txt");

        add({"in", "gone.png"});

        QCOMPARE(m_window->GetPassedOver().size(), 5);
        QCOMPARE(tabs()->tabText(1).remove('&'), QString("Left Out (5)"));
        tabs()->setCurrentIndex(1);
        press("Copy");
        const QString text = QGuiApplication::clipboard()->text();
        QCOMPARE(text.count('\n'), 5);
        QVERIFY(text.contains("It is hidden\t" + m_tree->Path("in/.hidden.png")));
        QVERIFY(text.contains("It does not exist any more\t" + m_tree->Path("gone.png")));
        QVERIFY(text.contains("It is of another type\t" + m_tree->Path("in/<b>bold.txt")));
    }

    void whatWasLeftOutIsForgottenWhenItIsLookedAtAgain()
    {
        add({"in", "gone.png"});
        QCOMPARE(m_window->GetPassedOver().size(), 2);
        m_tree->Remove("in/sub/notes.txt");

        refresh("Rescan");

        QCOMPARE(m_window->GetPassedOver().size(), 1);
        QCOMPARE(m_window->GetPassedOver().first().path, m_tree->Path("gone.png"));
    }

    void aFolderThatCannotBeReadIsTold()
    {
        m_tree->SetMode("in/empty", 0);
        {
            const WithoutRights nobody;
            add({"in"});
        }
        m_tree->SetMode("in/empty", 0755);

        QCOMPARE(m_window->GetPassedOver().first().reason, PassedOver::Unreadable);
        QVERIFY(model()->FindPath(m_tree->Path("in/empty")).isValid());
    }

    void whatVanishesBetweenTheLooksIsTold()
    {
        // The survey waits until the threads are free; the scan comes after the question.
        m_tree->Link(".", "in/loop");
        ModalDriver driver(QList<ModalDriver::Function>{[this](QWidget* box)
                                                        {
                                                            m_tree->Remove("in/sub/c.png");
                                                            m_tree->Remove("in/a.png");
                                                            ModalDriver::Press(box, "Leave Links Out");
                                                        }});

        m_window->Add({m_tree->Path("in")});
        waitForIdle();

        QVERIFY(driver.Finished());
        QStringList vanished;
        for (const PassedOver& entry : m_window->GetPassedOver())
        {
            if (entry.reason == PassedOver::ImagesVanished)
                vanished += ReasonText(entry) + ": " + entry.path;
        }
        const QString text = "1 image vanished while it was scanned: ";
        QCOMPARE(vanished, QStringList({text + m_tree->Path("in"), text + m_tree->Path("in/sub")}));
    }

    void theDialogIsUpWhileTheScanRuns()
    {
        bool wasDialog = false;
        ModalDriver driver(
            [&](QWidget* dialog)
            {
                wasDialog = qobject_cast<KXAddToBatchDialog*>(dialog);
                QCOMPARE(m_window->GetState(), BatchWindow::Scanning);
                QVERIFY(!m_window->close());
                ModalDriver::Press(dialog, "Cancel");
            });
        makeManyFolders();

        m_window->Add({m_tree->Path("many")});
        waitForIdle();

        QVERIFY(driver.Finished());
        QVERIFY(wasDialog);
        QCOMPARE(model()->rowCount(), 0);
        QCOMPARE(status(), QString("Cancelled. Nothing was changed."));
    }

    void aSurveyIsCancelled()
    {
        BusyThreads threads;
        m_window->Add({m_tree->Path("in")});
        QCOMPARE(m_window->GetState(), BatchWindow::Surveying);
        QVERIFY(button("Cancel")->isEnabled() && !button("Add Files...")->isEnabled());
        QVERIFY(m_window->findChild<QProgressBar*>()->isVisible());

        press("Cancel");
        threads.Open();
        waitForIdle();

        QCOMPARE(model()->rowCount(), 0);
        QCOMPARE(status(), QString("Cancelled. Nothing was changed."));
    }

    void whileItIsBusyNothingElseIsTaken()
    {
        BusyThreads threads;
        m_window->Add({m_tree->Path("in/sub")});

        m_window->Add({m_tree->Path("in")});
        QVERIFY(!drop({QUrl::fromLocalFile(m_tree->Path("in"))}));
        m_window->Refresh();
        m_window->RemoveRows();
        threads.Open();
        waitForIdle();

        QCOMPARE(totals(), QString("2 images, 2 folders"));
    }

    void linksThatLeadBackAreLeftOut()
    {
        m_tree->Link("..", "in/sub/up");
        m_tree->Link(".", "in/sub/deep/self");
        QString text;
        ModalDriver driver(QList<ModalDriver::Function>{[&text](QWidget* box)
                                                        {
                                                            text = TextOf(box);
                                                            ModalDriver::Press(box, "Leave Links Out");
                                                        }});

        m_window->Add({m_tree->Path("in")});
        waitForIdle();

        QVERIFY(driver.Finished());
        QVERIFY(text.contains(m_tree->Path("in/sub/up") + " leads back to"));
        QCOMPARE(totals(), QString("4 images, 4 folders"));
        QCOMPARE(model()->FindPath(m_tree->Path("in")).data(Model::NodeFileCountRole).toInt(), 4);
        QVERIFY(model()->FindPath(m_tree->Path("in/sub/deep/d.png")).isValid());
        QVERIFY(!model()->FindPath(m_tree->Path("in/sub/up")).isValid());
        int back = 0;
        for (const PassedOver& entry : m_window->GetPassedOver())
            back += entry.reason == PassedOver::LeadsBack;
        QCOMPARE(back, 2);
    }

    void theQuestionIsCancelled()
    {
        m_tree->Link(".", "in/one");
        m_tree->Link(".", "in/two");
        ModalDriver driver([](QWidget* box) { ModalDriver::PressKey(box, Qt::Key_Escape); });

        m_window->Add({m_tree->Path("in")});
        waitForIdle();

        QVERIFY(driver.Finished());
        QCOMPARE(model()->rowCount(), 0);
    }

    void aScanThatNeverEndsIsFollowedAndCancelled()
    {
        m_tree->Link(".", "in/one");
        m_tree->Link(".", "in/two");
        ModalDriver driver(
            QList<ModalDriver::Function>{[](QWidget* box) { ModalDriver::Press(box, "Follow Links"); },
                                         [](QWidget* dialog) { ModalDriver::Press(dialog, "Cancel"); }});

        m_window->Add({m_tree->Path("in")});
        waitForIdle();

        QVERIFY(driver.Finished());
        QCOMPARE(model()->rowCount(), 0);
    }

    void moreLinksThanCanBeLeftOutLeaveTwoAnswers()
    {
        for (int i = 0; i <= MaxLoops; ++i)
            m_tree->Link(".", "in/link" + QByteArray::number(i));
        bool canLeaveOut = true;
        QString text;
        ModalDriver driver(
            [&canLeaveOut, &text](QWidget* box)
            {
                text = TextOf(box);
                canLeaveOut = false;
                for (const QPushButton* each : box->findChildren<QPushButton*>())
                    canLeaveOut |= each->text().contains("Out");
                ModalDriver::PressKey(box, Qt::Key_Return);
            });

        m_window->Add({m_tree->Path("in")});
        waitForIdle();

        QVERIFY(driver.Finished());
        QVERIFY(!canLeaveOut);
        // Nobody has counted them all.
        QVERIFY2(text.endsWith("\nand more"), qPrintable(text));
        QCOMPARE(model()->rowCount(), 0);
    }

    void aRefreshLeavesLinksOutToo()
    {
        add({"in"});
        m_tree->Link(".", "in/self");
        m_tree->Remove("in/a.png");
        Paint(m_tree->Path("in/sub/new.png"));
        ModalDriver driver([](QWidget* box) { ModalDriver::Press(box, "Leave Links Out"); });

        press("Rescan");
        waitForIdle();

        QVERIFY(driver.Finished());
        QVERIFY(!model()->FindPath(m_tree->Path("in/a.png")).isValid());
        QVERIFY(model()->FindPath(m_tree->Path("in/sub/new.png")).isValid());
        QVERIFY(!model()->FindPath(m_tree->Path("in/self")).isValid());
        QCOMPARE(totals(), QString("4 images, 4 folders"));
    }

    void rowsAreRemovedByKey()
    {
        add({"in"});
        select({"in/a.png", "in/sub"});

        QTest::keyClick(tree(), Qt::Key_Delete);

        QTRY_COMPARE(totals(), QString("1 image, 2 folders"));
        QCOMPARE(status(), QString("Took 3 images off the list."));
        QVERIFY(QFile::exists(m_tree->Path("in/a.png")));
    }

    void removingUnderAFilterLeavesWhatIsNotShown()
    {
        add({"in"});
        lineEdit("m_pFilter")->setText("d.png");
        QTRY_COMPARE(totals(), QString("4 images, 4 folders, 1 shown"));
        tree()->setFocus();

        QTest::keyClick(tree(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(tree(), Qt::Key_Delete);

        QCOMPARE(status(), QString("Took 1 image off the list."));
        QVERIFY(!model()->FindPath(m_tree->Path("in/sub/deep/d.png")).isValid());
        lineEdit("m_pFilter")->clear();
        QTRY_VERIFY(totals().startsWith("3 images, "));
    }

    void refreshFindsWhatChanged()
    {
        add({"in"});
        Paint(m_tree->Path("in/new.png"));
        makeNewer("in");

        refresh("Refresh");

        QCOMPARE(totals(), QString("5 images, 4 folders"));
        QCOMPARE(status(), QString("1 new image."));
    }

    void aRefreshWithOneImageForAnotherSaysNothingOfNewOnes()
    {
        add({"in"});
        m_tree->Remove("in/a.png");
        Paint(m_tree->Path("in/new.png"));
        makeNewer("in");

        refresh("Refresh");

        QVERIFY(model()->FindPath(m_tree->Path("in/new.png")).isValid());
        QCOMPARE(status(), QString("As many images as before."));
    }

    void refreshLeavesAnUnchangedFolderAlone()
    {
        makeOlder("in/sub");
        add({"in"});
        QCOMPARE(leftOut(), QStringList("other in/sub/notes.txt"));
        Paint(m_tree->Path("in/sub/new.png"));
        m_tree->File("in/sub/second.png");
        makeOlder("in/sub");

        refresh("Refresh");

        QCOMPARE(totals(), QString("4 images, 4 folders"));
        QCOMPARE(leftOut(), QStringList("other in/sub/notes.txt"));
        refresh("Rescan");
        QCOMPARE(totals(), QString("6 images, 4 folders"));
    }

    void refreshScansAFolderThatHasChangedInOneThatHasNot()
    {
        makeOlder("in");
        add({"in"});
        Paint(m_tree->Path("in/sub/deep/new.png"));
        makeNewer("in/sub/deep");
        Paint(m_tree->Path("in/late.png"));
        makeOlder("in");
        const QPersistentModelIndex kept = model()->FindPath(m_tree->Path("in/sub/c.png"));

        refresh("Refresh");

        QVERIFY(model()->FindPath(m_tree->Path("in/sub/deep/new.png")).isValid());
        QVERIFY(kept.isValid());
        QCOMPARE(totals(), QString("5 images, 4 folders"));
        QCOMPARE(status(), QString("1 new image."));
        QCOMPARE(leftOut(), QStringList("other in/sub/notes.txt"));
    }

    void whatWasTakenOffIsNotMissedByARefresh()
    {
        add({"in"});
        select({"in/a.png", "in/sub"});
        QTest::keyClick(tree(), Qt::Key_Delete);
        QTRY_COMPARE(leftOut(), QStringList());
        tree()->clearSelection();

        refresh("Refresh");

        QCOMPARE(totals(), QString("1 image, 2 folders"));
        QCOMPARE(leftOut(), QStringList());
        refresh("Rescan");
        QCOMPARE(totals(), QString("4 images, 4 folders"));
        QCOMPARE(leftOut(), QStringList("other in/sub/notes.txt"));
    }

    void aRefreshThatIsCancelledKeepsWhatItHasDone()
    {
        makeManyFolders();
        m_tree->File("many/notes.txt");
        add({"in", "many"});
        Paint(m_tree->Path("in/new.png"));
        m_tree->File("in/more.txt");
        m_tree->Remove("many/notes.txt");
        // The first dialog may be gone before anybody sees it; the second is up when the first has done its
        // work.
        QTimer look;
        connect(&look, &QTimer::timeout, this,
                [this]
                {
                    QWidget* dialog = QApplication::activeModalWidget();
                    if (dialog && model()->GetFileCount() == 405)
                        ModalDriver::Press(dialog, "Cancel");
                });
        look.start(0);

        press("Rescan");
        waitForIdle();

        QCOMPARE(model()->GetFileCount(), 405);
        QCOMPARE(status(), QString("Cancelled. What was refreshed before that stays."));
        QCOMPARE(leftOut(),
                 QStringList({"other in/more.txt", "other in/sub/notes.txt", "other many/notes.txt"}));
    }

    void aRefreshThatIsCancelledAtOnceChangesNothing()
    {
        makeManyFolders();
        add({"many"});
        m_tree->File("many/notes.txt");
        ModalDriver driver([](QWidget* dialog) { ModalDriver::Press(dialog, "Cancel"); });

        press("Rescan");
        waitForIdle();

        QVERIFY(driver.Finished());
        QCOMPARE(status(), QString("Cancelled. Nothing was changed."));
        QCOMPARE(leftOut(), QStringList());
    }

    void refreshMarksWhatIsGone()
    {
        add({"in", "in/a.png"});
        add({"single.png"});
        Paint(m_tree->Path("single.png"));
        add({"single.png"});
        m_tree->Remove("single.png");

        refresh("Refresh");

        const QModelIndex index = model()->FindPath(m_tree->Path("single.png"));
        QVERIFY(index.isValid());
        QVERIFY(!index.data(Model::NodeExistsRole).toBool());
        QVERIFY(index.data(Qt::ToolTipRole).toString().contains("(not exists)"));
    }

    void onlySelectedRowsAreRefreshed()
    {
        add({"in"});
        m_tree->Remove("in/a.png");
        m_tree->Remove("in/sub/c.png");
        select({"in/sub"});

        refresh("Rescan");

        QVERIFY(!model()->FindPath(m_tree->Path("in/sub/c.png")).isValid());
        QVERIFY(model()->FindPath(m_tree->Path("in/a.png")).isValid());
    }

    void whatIsBackIsWorkedOnWithoutAFurtherLook()
    {
        Paint(m_tree->Path("single.png"));
        add({"single.png"});
        m_tree->Remove("single.png");
        refresh("Refresh");
        Paint(m_tree->Path("single.png"));

        runJob();

        QCOMPARE(m_window->GetJob()->GetReport().Count(BatchOutcome::Done), 1);
    }

    void f5Refreshes()
    {
        add({"in"});
        Paint(m_tree->Path("in/new.png"));
        makeNewer("in");

        QTest::keyClick(tree(), Qt::Key_F5);
        waitForIdle();

        QCOMPARE(model()->GetFileCount(), 5);
    }

    void theFilterShowsWhatHoldsTheText()
    {
        add({"in"});

        QTest::keyClicks(lineEdit("m_pFilter"), "D.PNG");

        QTRY_COMPARE(totals(), QString("4 images, 4 folders, 1 shown"));
        QCOMPARE(tree()->GetVisibleFiles(), QStringList(m_tree->Path("in/sub/deep/d.png")));
        lineEdit("m_pFilter")->clear();
        QTRY_COMPARE(totals(), QString("4 images, 4 folders"));
    }

    void aNameWithTagsIsShownLetterByLetter()
    {
        Paint(m_tree->Path("in/<b>bold<b>.png"));
        add({"in"});

        const QModelIndex index = model()->FindPath(m_tree->Path("in/<b>bold<b>.png"));

        QVERIFY(index.data(Qt::ToolTipRole).toString().contains("&lt;b&gt;bold"));
    }

    void aJobNeedsImagesAndAFolder()
    {
        QVERIFY(!button("Start")->isEnabled());
        add({"in"});
        QVERIFY(!button("Start")->isEnabled());
        m_window->Start();
        QCOMPARE(m_window->GetState(), BatchWindow::Idle);
        lineEdit("m_pFolder")->setText(m_tree->Path("out"));
        QVERIFY(button("Start")->isEnabled());
        lineEdit("m_pFolder")->setText("  ");
        QVERIFY(!button("Start")->isEnabled());
    }

    void theJobRunsAndReports()
    {
        m_tree->File("in/broken.png");
        add({"in"});
        runJob();

        QCOMPARE(status(), QString("4 done, 0 skipped, 1 failed"));
        QCOMPARE(QImage(m_tree->Path("out/in/sub/deep/d.png")).size(), QSize(20, 40));
        QCOMPARE(QImage(m_tree->Path("in/sub/deep/d.png")).size(), QSize(40, 20));
        QCOMPARE(tabs()->currentIndex(), 2);
        press("Copy");
        const QString report = QGuiApplication::clipboard()->text();
        QVERIFY(report.startsWith("4 done, 0 skipped, 1 failed\nFailed\t" + m_tree->Path("in/broken.png")));
        QVERIFY(button("Start")->isEnabled() && !button("Cancel")->isEnabled());
    }

    void theReportIsSaved()
    {
        add({"in"});
        runJob();
        ModalDriver driver(
            [this](QWidget* dialog)
            {
                auto* edit = dialog->findChild<QLineEdit*>("fileNameEdit");
                QCOMPARE(edit->text(), QString("report.txt"));
                edit->setText(m_tree->Path("saved"));
                QTest::keyClick(edit, Qt::Key_Return);
            });

        press("Save As...");

        QVERIFY(driver.Finished());
        QFile file(m_tree->Path("saved.txt"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.readAll().startsWith("4 done, 0 skipped, 0 failed\n"));
    }

    void aReportThatCannotBeSavedIsToldOf()
    {
        add({"in"});
        runJob();
        ModalDriver driver(
            [this](QWidget* dialog)
            {
                auto* edit = dialog->findChild<QLineEdit*>("fileNameEdit");
                edit->setText(m_tree->Path("in") + "/a.png/report.txt");
                QTest::keyClick(edit, Qt::Key_Return);
            });

        press("Save As...");

        QVERIFY(driver.Finished());
        QVERIFY2(status().contains("could not be saved"), qPrintable(status()));
    }

    void theKeyboardGoesToCancelAndBack()
    {
        {
            BusyThreads threads;
            button("Add Folder...")->setFocus();
            m_window->Add({m_tree->Path("in")});
            QVERIFY(button("Cancel")->hasFocus());
        }
        waitForIdle();
        QTRY_VERIFY(button("Add Folder...")->hasFocus());

        tree()->setFocus();
        runJob();
        QTRY_VERIFY(button("Start")->hasFocus());
    }

    void aJobIsCancelled()
    {
        makeImages(60);
        add({"images"});
        connect(m_window->GetJob(), &BatchJob::Advanced, m_window.get(), &BatchWindow::Cancel);

        runJob();

        QVERIFY2(status().startsWith("Cancelled: "), qPrintable(status()));
        QVERIFY(m_window->GetJob()->GetReport().Count(BatchOutcome::Skipped) > 0);
    }

    void closingInMidJobAsks()
    {
        makeImages(200);
        add({"images"});
        startJob();
        ModalDriver no([](QWidget* box) { ModalDriver::Press(box, "No"); });
        QVERIFY(!m_window->close());
        QVERIFY(no.Finished());
        ModalDriver yes([](QWidget* box) { ModalDriver::Press(box, "Yes"); });
        QVERIFY(m_window->close());
        QVERIFY(yes.Finished());

        waitForIdle();

        QVERIFY(m_window->GetJob()->GetReport().isCancelled);
    }

    void aClosedWindowKeepsItsImages()
    {
        add({"in"});
        lineEdit("m_pFolder")->setText("/out");

        QVERIFY(m_window->close());
        m_window->show();

        QCOMPARE(totals(), QString("4 images, 4 folders"));
        QCOMPARE(m_settings->value("batch/folder").toString(), QString("/out"));
    }

    void closingInMidSurveyCancelsIt()
    {
        BusyThreads threads;
        m_window->Add({m_tree->Path("in")});

        QVERIFY(m_window->close());
        threads.Open();
        waitForIdle();

        QCOMPARE(model()->rowCount(), 0);
    }

    void itMayBeDestroyedInMidSurvey()
    {
        BusyThreads threads;
        m_window->Add({m_tree->Path("in")});
        threads.Open();

        m_window.reset();
    }

    void itMayBeDestroyedInMidJob()
    {
        makeImages(50);
        add({"images"});
        startJob();

        m_window.reset();
    }

    void everythingIsReachedByTab()
    {
        add({"in"});
        lineEdit("m_pFolder")->setText("/out");
        button("Add Files...")->setFocus();
        QSet<QWidget*> reached;
        for (int i = 0; i < 60; ++i)
        {
            reached.insert(QApplication::focusWidget());
            // The tree keeps the key to itself in no case.
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }

        for (const char* name : {"Add Folder...", "Remove", "Refresh", "Rescan", "Start", "Choose..."})
            QVERIFY2(reached.contains(button(name)), name);
        for (QWidget* widget :
             {static_cast<QWidget*>(tree()), static_cast<QWidget*>(lineEdit("m_pFilter")),
              static_cast<QWidget*>(lineEdit("m_pFolder")), m_window->findChild<QWidget*>("m_pResize"),
              m_window->findChild<QWidget*>("m_pRotate"), m_window->findChild<QWidget*>("m_pFormat"),
              m_window->findChild<QWidget*>("m_pKeepFolders")})
            QVERIFY2(reached.contains(widget), widget->metaObject()->className());
    }

    void everyControlHasANameAndAKeyOfItsOwn()
    {
        QStringList keys;
        for (int tab = 0; tab < 3; ++tab)
        {
            tabs()->setCurrentIndex(tab);
            QStringList here;
            for (QWidget* widget : m_window->findChildren<QWidget*>())
            {
                if (!widget->isVisible() || widget->focusPolicy() == Qt::NoFocus ||
                    widget->inherits("QTabBar") || widget->inherits("QSplitterHandle") ||
                    widget->parentWidget()->inherits("QAbstractSpinBox"))
                    continue;
                const QAccessibleInterface* face = QAccessible::queryAccessibleInterface(widget);
                QVERIFY2(!face->text(QAccessible::Name).isEmpty(), widget->metaObject()->className());
            }
            for (const QPushButton* each : m_window->findChildren<QPushButton*>())
            {
                if (each->isVisible())
                    here += QKeySequence::mnemonic(each->text()).toString();
            }
            for (const QLabel* label : m_window->findChildren<QLabel*>())
            {
                if (label->isVisible() && label->buddy())
                    here += QKeySequence::mnemonic(label->text()).toString();
            }
            for (int i = 0; i < 3; ++i)
                here += QKeySequence::mnemonic(tabs()->tabText(i)).toString();
            QVERIFY2(!here.contains(QString()), qPrintable(here.join(' ')));
            QCOMPARE(here.removeDuplicates(), 0);
        }
    }

private:
    void make()
    {
        m_window = std::make_unique<BatchWindow>(m_settings.get());
        m_window->show();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }
    Model* model() const { return m_window->GetModel(); }
    BatchTreeView* tree() const { return m_window->findChild<BatchTreeView*>(); }
    QTabWidget* tabs() const { return m_window->findChild<QTabWidget*>(); }
    QLineEdit* lineEdit(const QString& name) const { return m_window->findChild<QLineEdit*>(name); }
    QString totals() const { return m_window->findChild<QLabel*>("m_pTotals")->text(); }
    QString status() const { return m_window->findChild<QLabel*>("m_pStatus")->text(); }

    // The visible one, since two pages have the same.
    QPushButton* button(const QString& text) const
    {
        QPushButton* found = nullptr;
        for (QPushButton* each : m_window->findChildren<QPushButton*>())
        {
            if (each->text().remove('&') == text && (!found || each->isVisible()))
                found = each;
        }
        return found;
    }
    void press(const QString& text) const
    {
        QVERIFY2(button(text) && button(text)->isEnabled(), qPrintable(text));
        QTest::mouseClick(button(text), Qt::LeftButton);
    }
    void waitForIdle() const
    {
        QTRY_COMPARE_WITH_TIMEOUT(m_window->GetState(), BatchWindow::Idle, 30000);
        QCoreApplication::processEvents();
    }
    void add(const QList<QByteArray>& names) const
    {
        QStringList paths;
        for (const QByteArray& name : names)
            paths += m_tree->Path(name);
        m_window->Add(paths);
        waitForIdle();
    }
    void refresh(const QString& name) const
    {
        press(name);
        waitForIdle();
    }
    // "reason path", relative to the tree.
    QStringList leftOut() const
    {
        static const char* const names[] = {"other",   "unreadable", "vanished",  "images",  "back",
                                            "nowhere", "hidden",     "not plain", "not text"};
        QStringList entries;
        for (const PassedOver& entry : m_window->GetPassedOver())
            entries += names[entry.reason] + (' ' + entry.path.mid(m_tree->Path().size() + 1));
        return entries;
    }
    // On the widget, the window for none.
    bool drop(const QList<QUrl>& urls, QWidget* widget = nullptr) const
    {
        if (!widget)
            widget = m_window.get();
        QMimeData data;
        data.setUrls(urls);
        // File managers offer the path as a text, too.
        data.setText(urls.value(0).toString());
        QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        enter.ignore();
        QCoreApplication::sendEvent(widget, &enter);
        if (!enter.isAccepted())
            return false;
        QDropEvent event(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(widget, &event);
        // The drop is worked on when the program that it came from has been let go.
        QCoreApplication::processEvents();
        return true;
    }
    void select(const QList<QByteArray>& names) const
    {
        tree()->expandAll();
        tree()->setFocus();
        tree()->clearSelection();
        const auto* filter = qobject_cast<QAbstractProxyModel*>(tree()->model());
        for (const QByteArray& name : names)
        {
            const QModelIndex index = filter->mapFromSource(model()->FindPath(m_tree->Path(name)));
            tree()->scrollTo(index);
            QTest::mouseClick(tree()->viewport(), Qt::LeftButton, Qt::ControlModifier,
                              tree()->visualRect(index).center());
        }
        QCOMPARE(tree()->selectionModel()->selectedRows().size(), names.size());
    }
    // The same time whenever it is asked for, so that a folder may be given the time back that it had.
    void setTime(const QByteArray& name, int seconds) const
    {
        static const time_t start = ::time(nullptr);
        const time_t time = start + seconds;
        const utimbuf times = {time, time};
        QCOMPARE(::utime(m_tree->Bytes(name), &times), 0);
    }
    void makeNewer(const QByteArray& name) const { setTime(name, 100); }
    void makeOlder(const QByteArray& name) const { setTime(name, -100); }
    void makeManyFolders() const
    {
        for (int i = 0; i < 400; ++i)
            m_tree->File("many/" + QByteArray::number(i) + "/a.png");
    }
    void makeImages(int count) const
    {
        m_tree->Folder("images");
        for (int i = 0; i < count; ++i)
            Paint(m_tree->Path("images/" + QByteArray::number(i) + ".png"), QSize(500, 500));
    }
    // A quarter turn to the right.
    void startJob() const
    {
        m_window->findChild<QComboBox*>("m_pResize")->setCurrentIndex(2);
        m_window->findChild<QComboBox*>("m_pRotate")->setCurrentIndex(1);
        m_window->findChild<QSpinBox*>("m_pPercent")->setValue(100);
        lineEdit("m_pFolder")->setText(m_tree->Path("out"));
        press("Start");
        QCOMPARE(m_window->GetState(), BatchWindow::Working);
        QVERIFY(button("Cancel")->isEnabled() && !button("Start")->isEnabled());
    }
    void runJob() const
    {
        startJob();
        waitForIdle();
    }

    std::unique_ptr<FolderTree> m_tree;
    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<BatchWindow> m_window;
};

NV_TEST_MAIN(tst_BatchWindow)
#include "tst_BatchWindow.moc"
