// The framework's dialog: modal runs, keys, focus and life.

#include "KXDialog.h"

#include <QAccessible>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

#include <memory>

#include "ModalDriver.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

// A main window with a line edit that holds the focus.
struct Host
{
    Host()
    {
        window.setGeometry(100, 80, 500, 400);
        edit = new QLineEdit(&window);
        other = new QLineEdit(&window);
        QVBoxLayout* layout = new QVBoxLayout(&window);
        layout->addWidget(other);
        layout->addWidget(edit);
    }

    bool Show()
    {
        window.show();
        window.activateWindow();
        edit->setFocus();
        return QTest::qWaitForWindowActive(&window) && edit->hasFocus();
    }

    QWidget window;
    QPointer<QLineEdit> edit;
    QLineEdit* other;
};

// A dialog with a line edit, OK and Cancel.
class Question : public KXDialog
{
public:
    explicit Question(QWidget* parent = nullptr) : KXDialog(parent)
    {
        edit = new QLineEdit;
        box = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
        QVBoxLayout* layout = new QVBoxLayout(Content());
        layout->addWidget(edit);
        layout->addWidget(box);
        connect(box, &QDialogButtonBox::accepted, this, &KXDialog::Accept);
        connect(box, &QDialogButtonBox::rejected, this, &KXDialog::Reject);
    }

    QLineEdit* edit;
    QDialogButtonBox* box;
};

} // namespace

class tst_KXDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void dialogEndsWithThisResult_data();
    void dialogEndsWithThisResult();
    void anyNumberMayBeTheResult();
    void dialogRunsAgainAfterItsEnd();
    void doneBeforeExecDoesNotStopTheRun();
    void doneWhileBeingShownEndsTheRun();
    void execWhileRunningReturnsAtOnce();
    void nestedDialogsEndInTheirOrder();
    void outerDialogMayEndBeforeTheInner();
    void slotOfTheEndMayRunTheDialogAgain();
    void deletionEndsTheRun();
    void deletionOfTheParentEndsTheRun();
    void deletionByASlotOfTheEndIsSafe();
    void quittingTheApplicationEndsTheRun();
    void deleteOnCloseWaitsForTheEventLoop_data();
    void deleteOnCloseWaitsForTheEventLoop();
    void runBlocksThese_data();
    void runBlocksThese();
    void modelessDialogBlocksNothing();
    void enterInALineEditPressesTheDefaultButton();
    void enterPressesTheFocusedButtonInstead();
    void enterLeavesADisabledDefaultButtonAlone();
    void heldEnterPressesNothing();
    void enterWithModifiersPressesNothing();
    void enterSparesButtonsOfOtherWindows();
    void focusReturnsToWhereItWas_data();
    void focusReturnsToWhereItWas();
    void windowThatOpensAfterwardsKeepsTheActivation();
    void deadFocusWidgetIsForgotten();
    void nestedDialogGivesFocusBackToTheOuter();
    void firstControlOfTheDialogHasTheFocus();
    void dialogStandsCentredOverItsParent();
    void dialogStaysOnTheScreen_data();
    void dialogStaysOnTheScreen();
    void dialogWithoutParentIsCentredOnTheScreen();
    void dialogThatWasMovedStaysThere();
    void dialogIsCentredAnewAtEachRun();
    void screenReadersMeetADialog();
    void flagsAreAddedToThoseOfADialog();
};

void tst_KXDialog::dialogEndsWithThisResult_data()
{
    QTest::addColumn<QString>("way");
    QTest::addColumn<int>("result");
    QTest::addColumn<QStringList>("signalsSent");
    const QStringList rejected = {"Finished(0)", "Rejected()"};
    const QStringList closed = {"Finished(-1)", "Rejected()"};
    QTest::newRow("OK button") << "OK" << 1 << QStringList({"Finished(1)", "Accepted()"});
    QTest::newRow("Cancel button") << "Cancel" << 0 << rejected;
    QTest::newRow("Escape") << "Escape" << -1 << closed;
    QTest::newRow("window closed") << "close" << -1 << closed;
    QTest::newRow("hidden") << "hide" << -1 << closed;
    QTest::newRow("done with 2") << "done 2" << 2 << QStringList({"Finished(2)"});
    QTest::newRow("done with -5") << "done -5" << -5 << QStringList({"Finished(-5)", "Rejected()"});
}

void tst_KXDialog::dialogEndsWithThisResult()
{
    QFETCH(QString, way);
    QFETCH(int, result);
    QFETCH(QStringList, signalsSent);
    Host host;
    QVERIFY(host.Show());
    Question dialog(&host.window);
    SignalLog log(&dialog);
    ModalDriver driver(
        [&](QWidget* window)
        {
            QCOMPARE(window, &dialog);
            if (way == "Escape")
            {
                ModalDriver::PressKey(window, Qt::Key_Escape);
            }
            else if (way == "close")
            {
                ModalDriver::CloseWindow(window);
            }
            else if (way == "hide")
            {
                dialog.hide();
            }
            else if (way.startsWith("done"))
            {
                dialog.Done(result);
            }
            else
            {
                ModalDriver::Press(window, way);
            }
        });

    const int returned = dialog.Exec();

    QVERIFY(driver.Finished());
    QCOMPARE(returned, result);
    QCOMPARE(dialog.GetResult(), result);
    QCOMPARE(log.Entries(), signalsSent);
    QVERIFY(!dialog.isVisible());
    QVERIFY(!dialog.isModal());
}

void tst_KXDialog::anyNumberMayBeTheResult()
{
    Question dialog;
    QCOMPARE(dialog.GetResult(), int(KXDialog::ResultClosed));
    ModalDriver driver([&](QWidget*) { dialog.Done(1024); });

    QCOMPARE(dialog.Exec(), 1024);
}

void tst_KXDialog::dialogRunsAgainAfterItsEnd()
{
    Question dialog;
    ModalDriver driver({[](QWidget* window) { ModalDriver::Press(window, "OK"); },
                        [](QWidget* window) { ModalDriver::PressKey(window, Qt::Key_Escape); }});

    QCOMPARE(dialog.Exec(), 1);
    QCOMPARE(dialog.Exec(), -1);

    QVERIFY(driver.Finished());
}

void tst_KXDialog::doneBeforeExecDoesNotStopTheRun()
{
    Question dialog;
    SignalLog log(&dialog);
    dialog.Accept();
    QCOMPARE(log.Entries(), QStringList({"Finished(1)", "Accepted()"}));
    ModalDriver driver([](QWidget* window) { ModalDriver::Press(window, "Cancel"); });

    QCOMPARE(dialog.Exec(), 0);

    QVERIFY(driver.Finished());
}

void tst_KXDialog::doneWhileBeingShownEndsTheRun()
{
    class Hasty : public KXDialog
    {
    protected:
        void showEvent(QShowEvent* event) override
        {
            KXDialog::showEvent(event);
            QTimer::singleShot(0, this, &KXDialog::Reject);
            Done(7);
        }
    };
    Hasty dialog;

    QCOMPARE(dialog.Exec(), 7);

    QVERIFY(!dialog.isVisible());
    QCoreApplication::processEvents();
}

void tst_KXDialog::execWhileRunningReturnsAtOnce()
{
    Question dialog;
    int inner = 99;
    ModalDriver driver(
        [&](QWidget* window)
        {
            inner = dialog.Exec();
            QVERIFY(dialog.isVisible());
            ModalDriver::Press(window, "OK");
        });

    QCOMPARE(dialog.Exec(), 1);

    QCOMPARE(inner, -1);
}

void tst_KXDialog::nestedDialogsEndInTheirOrder()
{
    Host host;
    QVERIFY(host.Show());
    Question outer(&host.window);
    int innerResult = 99;
    bool outerStayed = false;
    ModalDriver driver({[&](QWidget* window)
                        {
                            Question inner(&outer);
                            innerResult = inner.Exec();
                            outerStayed = outer.isVisible();
                            ModalDriver::Press(window, "OK");
                        },
                        [&](QWidget* window)
                        {
                            QVERIFY(window != &outer);
                            ModalDriver::PressKey(window, Qt::Key_Escape);
                        }});

    QCOMPARE(outer.Exec(), 1);

    QVERIFY(driver.Finished());
    QCOMPARE(innerResult, -1);
    QVERIFY(outerStayed);
}

void tst_KXDialog::outerDialogMayEndBeforeTheInner()
{
    Question outer;
    int innerResult = 99;
    ModalDriver driver({[&](QWidget*)
                        {
                            Question inner;
                            innerResult = inner.Exec();
                        },
                        [&](QWidget* window)
                        {
                            outer.Accept();
                            QVERIFY(window->isVisible());
                            ModalDriver::Press(window, "Cancel");
                        }});

    QCOMPARE(outer.Exec(), 1);

    QCOMPARE(innerResult, 0);
}

void tst_KXDialog::slotOfTheEndMayRunTheDialogAgain()
{
    Question dialog;
    QList<int> results;
    connect(&dialog, &KXDialog::Accepted, this, [&] { results.append(dialog.Exec()); });
    ModalDriver driver({[](QWidget* window) { ModalDriver::Press(window, "OK"); },
                        [](QWidget* window) { ModalDriver::Press(window, "Cancel"); }});

    results.append(dialog.Exec());

    QCOMPARE(results, QList<int>({0, 1}));
    QVERIFY(!dialog.isModal());
}

void tst_KXDialog::deletionEndsTheRun()
{
    Host host;
    QVERIFY(host.Show());
    QPointer<Question> dialog = new Question(&host.window);
    SignalLog log(dialog);
    ModalDriver driver([&](QWidget*) { delete dialog; });

    const int result = dialog->Exec();

    QCOMPARE(result, -1);
    QVERIFY(!dialog);
    QCOMPARE(log.Entries(), QStringList());
    QTRY_VERIFY(host.edit->hasFocus());
}

void tst_KXDialog::deletionOfTheParentEndsTheRun()
{
    auto host = std::make_unique<Host>();
    QWidget* parent = new QWidget(&host->window);
    QPointer<Question> dialog = new Question(parent);
    QVERIFY(host->Show());
    ModalDriver driver([&](QWidget*) { delete parent; });

    const int result = dialog->Exec();

    QCOMPARE(result, -1);
    QVERIFY(!dialog);
}

void tst_KXDialog::deletionByASlotOfTheEndIsSafe()
{
    QPointer<Question> dialog = new Question;
    int rejections = 0;
    connect(dialog, &KXDialog::Finished, this, [&] { delete dialog; });
    connect(dialog, &KXDialog::Rejected, this, [&] { ++rejections; });
    ModalDriver driver([](QWidget* window) { ModalDriver::PressKey(window, Qt::Key_Escape); });

    QCOMPARE(dialog->Exec(), -1);

    QVERIFY(!dialog);
    QCOMPARE(rejections, 0);
}

void tst_KXDialog::quittingTheApplicationEndsTheRun()
{
    Question dialog;
    SignalLog log(&dialog);
    int result = 99;
    QTimer::singleShot(0, this,
                       [&]
                       {
                           QTimer::singleShot(0, qApp, &QCoreApplication::quit);
                           result = dialog.Exec();
                       });

    QCoreApplication::exec();

    QCOMPARE(result, -1);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(log.Entries(), QStringList({"Finished(-1)", "Rejected()"}));
}

void tst_KXDialog::deleteOnCloseWaitsForTheEventLoop_data()
{
    QTest::addColumn<bool>("modal");
    QTest::newRow("modal") << true;
    QTest::newRow("modeless") << false;
}

void tst_KXDialog::deleteOnCloseWaitsForTheEventLoop()
{
    QFETCH(bool, modal);
    QPointer<Question> dialog = new Question;
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    if (modal)
    {
        ModalDriver driver([](QWidget* window) { ModalDriver::Press(window, "OK"); });
        QCOMPARE(dialog->Exec(), 1);
    }
    else
    {
        dialog->show();
        dialog->Accept();
    }

    QVERIFY(dialog);
    QCOMPARE(dialog->GetResult(), 1);
    QTRY_VERIFY(!dialog);
}

void tst_KXDialog::runBlocksThese_data()
{
    QTest::addColumn<Qt::WindowModality>("modality");
    QTest::addColumn<bool>("othersBlocked");
    QTest::newRow("all windows") << Qt::NonModal << true;
    QTest::newRow("the parent only") << Qt::WindowModal << false;
}

void tst_KXDialog::runBlocksThese()
{
    QFETCH(Qt::WindowModality, modality);
    QFETCH(bool, othersBlocked);
    Host host;
    QPushButton unrelated("Elsewhere");
    unrelated.setGeometry(0, 0, 80, 40);
    unrelated.show();
    QVERIFY(host.Show());
    QPushButton* button = new QPushButton("Here", &host.window);
    button->setGeometry(0, 0, 80, 40);
    button->show();
    QSignalSpy here(button, &QPushButton::clicked);
    QSignalSpy elsewhere(&unrelated, &QPushButton::clicked);
    Question dialog(&host.window);
    dialog.setWindowModality(modality);
    ModalDriver driver(
        [&](QWidget* window)
        {
            QTest::mouseClick(host.window.windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(20, 20));
            QTest::mouseClick(unrelated.windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(20, 20));
            ModalDriver::Press(window, "OK");
        });

    QCOMPARE(dialog.Exec(), 1);

    QCOMPARE(here.count(), 0);
    QCOMPARE(elsewhere.count(), othersBlocked ? 0 : 1);
    QCOMPARE(dialog.windowModality(), modality);
    QTest::mouseClick(host.window.windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(20, 20));
    QCOMPARE(here.count(), 1);
}

void tst_KXDialog::modelessDialogBlocksNothing()
{
    Host host;
    QVERIFY(host.Show());
    Question dialog(&host.window);
    SignalLog log(&dialog);

    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    QVERIFY(!QApplication::activeModalWidget());
    QTest::keyClick(dialog.edit, Qt::Key_Escape);

    QCOMPARE(log.Entries(), QStringList({"Finished(-1)", "Rejected()"}));
    QTRY_VERIFY(host.edit->hasFocus());
}

void tst_KXDialog::enterInALineEditPressesTheDefaultButton()
{
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter})
    {
        Question dialog;
        ModalDriver driver(
            [&](QWidget* window)
            {
                QVERIFY(dialog.edit->hasFocus());
                ModalDriver::PressKey(window, key,
                                      key == Qt::Key_Enter ? Qt::KeypadModifier : Qt::NoModifier);
            });

        QCOMPARE(dialog.Exec(), 1);
    }
}

void tst_KXDialog::enterPressesTheFocusedButtonInstead()
{
    Question dialog;
    ModalDriver driver(
        [&](QWidget* window)
        {
            dialog.box->button(QDialogButtonBox::Cancel)->setFocus();
            ModalDriver::PressKey(window, Qt::Key_Return);
        });

    QCOMPARE(dialog.Exec(), 0);
}

void tst_KXDialog::enterLeavesADisabledDefaultButtonAlone()
{
    Question dialog;
    SignalLog log(&dialog);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    dialog.box->button(QDialogButtonBox::Ok)->setEnabled(false);

    QTest::keyClick(dialog.edit, Qt::Key_Return);

    QVERIFY(dialog.isVisible());
    QCOMPARE(log.Count(), 0);
}

void tst_KXDialog::heldEnterPressesNothing()
{
    Question dialog;
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QString(), true);

    QCoreApplication::sendEvent(dialog.edit, &held);

    QVERIFY(dialog.isVisible());
}

void tst_KXDialog::enterWithModifiersPressesNothing()
{
    Question dialog;
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));

    QTest::keyClick(dialog.edit, Qt::Key_Return, Qt::ControlModifier);

    QVERIFY(dialog.isVisible());
}

void tst_KXDialog::enterSparesButtonsOfOtherWindows()
{
    KXDialog dialog;
    QWidget* tool = new QWidget(&dialog, Qt::Tool);
    QPushButton* button = new QPushButton("Other", tool);
    button->setDefault(true);
    QSignalSpy spy(button, &QPushButton::clicked);
    tool->show();
    dialog.show();
    dialog.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));

    QTest::keyClick(&dialog, Qt::Key_Return);

    QCOMPARE(spy.count(), 0);
}

void tst_KXDialog::focusReturnsToWhereItWas_data()
{
    QTest::addColumn<bool>("inTool");
    QTest::newRow("in the main window") << false;
    QTest::newRow("in a tool window") << true;
}

void tst_KXDialog::focusReturnsToWhereItWas()
{
    QFETCH(bool, inTool);
    Host host;
    QVERIFY(host.Show());
    QWidget tool(&host.window, Qt::Tool);
    QLineEdit toolEdit(&tool);
    QWidget* expected = host.edit;
    if (inTool)
    {
        tool.show();
        tool.activateWindow();
        toolEdit.setFocus();
        QVERIFY(QTest::qWaitForWindowActive(&tool));
        expected = &toolEdit;
    }
    QTRY_VERIFY(expected->hasFocus());
    Question dialog(&host.window);
    ModalDriver driver([](QWidget* window) { ModalDriver::Press(window, "OK"); });

    dialog.Exec();

    QTRY_COMPARE(QApplication::focusWidget(), expected);
}

void tst_KXDialog::windowThatOpensAfterwardsKeepsTheActivation()
{
    Host host;
    QVERIFY(host.Show());
    QWidget tool(&host.window, Qt::Tool);
    Question dialog(&host.window);
    ModalDriver driver([](QWidget* window) { ModalDriver::Press(window, "OK"); });

    dialog.Exec();
    tool.show();
    tool.activateWindow();

    QTRY_VERIFY(tool.isActiveWindow());
    QCoreApplication::processEvents();
    QVERIFY(tool.isActiveWindow());
}

void tst_KXDialog::deadFocusWidgetIsForgotten()
{
    Host host;
    QVERIFY(host.Show());
    Question dialog(&host.window);
    ModalDriver driver(
        [&](QWidget* window)
        {
            delete host.edit;
            ModalDriver::Press(window, "OK");
        });

    QCOMPARE(dialog.Exec(), 1);

    QTRY_VERIFY(host.window.isActiveWindow());
    QTRY_COMPARE(QApplication::focusWidget(), host.other);
}

void tst_KXDialog::nestedDialogGivesFocusBackToTheOuter()
{
    Host host;
    QVERIFY(host.Show());
    Question outer(&host.window);
    ModalDriver driver({[&](QWidget* window)
                        {
                            outer.edit->setFocus();
                            Question inner(&outer);
                            inner.Exec();
                            QTRY_VERIFY(outer.edit->hasFocus());
                            ModalDriver::Press(window, "OK");
                        },
                        [](QWidget* window) { ModalDriver::Press(window, "Cancel"); }});

    outer.Exec();

    QTRY_VERIFY(host.edit->hasFocus());
}

void tst_KXDialog::firstControlOfTheDialogHasTheFocus()
{
    Question dialog;

    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));

    QTRY_VERIFY(dialog.edit->hasFocus());
}

void tst_KXDialog::dialogStandsCentredOverItsParent()
{
    Host host;
    QVERIFY(host.Show());
    Question dialog(&host.window);

    dialog.show();

    const QPoint off = dialog.frameGeometry().center() - host.window.frameGeometry().center();
    // Half a title bar, which a window manager adds later.
    QVERIFY2(off.manhattanLength() <= 20, qPrintable(QString("%1, %2").arg(off.x()).arg(off.y())));
}

void tst_KXDialog::dialogStaysOnTheScreen_data()
{
    QTest::addColumn<QPoint>("place");
    QTest::newRow("lower right corner") << QPoint(780, 580);
    QTest::newRow("upper left corner") << QPoint(-20, -20);
}

void tst_KXDialog::dialogStaysOnTheScreen()
{
    QFETCH(QPoint, place);
    QWidget host;
    host.setGeometry(QRect(place, QSize(30, 30)));
    host.show();
    Question dialog(&host);

    dialog.show();

    QVERIFY(dialog.screen()->availableGeometry().contains(dialog.geometry()));
}

void tst_KXDialog::dialogWithoutParentIsCentredOnTheScreen()
{
    Question dialog;

    dialog.show();

    const QPoint off = dialog.geometry().center() - dialog.screen()->availableGeometry().center();
    QVERIFY(off.manhattanLength() <= 4);
}

void tst_KXDialog::dialogThatWasMovedStaysThere()
{
    Host host;
    QVERIFY(host.Show());
    Question dialog(&host.window);
    dialog.move(11, 22);

    dialog.show();

    QCOMPARE(dialog.pos(), QPoint(11, 22));
}

void tst_KXDialog::dialogIsCentredAnewAtEachRun()
{
    Host host;
    QVERIFY(host.Show());
    Question dialog(&host.window);
    dialog.show();
    const QPoint first = dialog.pos();
    dialog.hide();
    host.window.move(host.window.pos() + QPoint(50, 30));

    dialog.show();

    QCOMPARE(dialog.pos(), first + QPoint(50, 30));
}

void tst_KXDialog::screenReadersMeetADialog()
{
    Question dialog;
    dialog.setWindowTitle("Canvas size");

    const QAccessibleInterface* face = QAccessible::queryAccessibleInterface(&dialog);

    QVERIFY(face);
    QCOMPARE(face->role(), QAccessible::Dialog);
    QCOMPARE(face->text(QAccessible::Name), QString("Canvas size"));
}

void tst_KXDialog::flagsAreAddedToThoseOfADialog()
{
    const KXDialog plain;
    const KXDialog onTop(nullptr, Qt::WindowStaysOnTopHint);

    QVERIFY(plain.isWindow());
    QCOMPARE(plain.windowType(), Qt::Dialog);
    QVERIFY(!plain.windowFlags().testFlag(Qt::WindowContextHelpButtonHint));
    QCOMPARE(onTop.windowType(), Qt::Dialog);
    QVERIFY(onTop.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
}

NV_TEST_MAIN(tst_KXDialog)
#include "tst_KXDialog.moc"
