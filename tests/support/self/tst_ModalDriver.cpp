// Modal windows driven from within their own event loop, and what happens when they do not do as expected.

#include "ModalDriver.h"
#include "TestMain.h"

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>

class tst_ModalDriver : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void pressesAButtonByItsText();
    void pressesAStandardButton();
    void pressesAKey();
    void closesByTheTitleBar();
    void windowIsActiveWhenTheFunctionRuns();
    void queueServesOneWindowAfterTheOther();
    void queueServesAWindowOpenedByItsOwnFunction();
    void laterDriverServesTheNestedWindow();
    void sameDialogCanBeServedTwice();
    void modelessWindowIsLeftAlone();
    void watchdogClosesWhatStaysOpen();
    void watchdogTellsThatNothingCame();
    void watchdogClosesNestedWindows();
    void watchdogClosesADialogThatNeverBecameModal();
    void functionsNeverCalledAreNotFinished();
    void windowDestroyedByItsFunctionCountsAsGone();
};

void tst_ModalDriver::pressesAButtonByItsText()
{
    QMessageBox box(QMessageBox::Question, "Title", "Text", QMessageBox::Yes | QMessageBox::No);
    ModalDriver driver([](QWidget* window) { ModalDriver::Press(window, "No"); });
    QCOMPARE(box.exec(), static_cast<int>(QMessageBox::No));
    QVERIFY(driver.Finished());
    QCOMPARE(driver.Served(), 1);
}

void tst_ModalDriver::pressesAStandardButton()
{
    QDialog dialog;
    QDialogButtonBox buttons(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
    connect(&buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    ModalDriver driver([](QWidget* window) { ModalDriver::Press(window, QDialogButtonBox::Ok); });
    QCOMPARE(dialog.exec(), static_cast<int>(QDialog::Accepted));
    QVERIFY(driver.Finished());
}

void tst_ModalDriver::pressesAKey()
{
    QDialog dialog;
    QLineEdit edit(&dialog);
    edit.setFocus();
    ModalDriver driver(
        [](QWidget* window)
        {
            ModalDriver::PressKey(window, Qt::Key_A);
            ModalDriver::PressKey(window, Qt::Key_Escape);
        });
    QCOMPARE(dialog.exec(), static_cast<int>(QDialog::Rejected));
    QCOMPARE(edit.text(), QString("a"));
    QVERIFY(driver.Finished());
}

void tst_ModalDriver::closesByTheTitleBar()
{
    QDialog dialog;
    ModalDriver driver([](QWidget* window) { ModalDriver::CloseWindow(window); });
    QCOMPARE(dialog.exec(), static_cast<int>(QDialog::Rejected));
    QVERIFY(driver.Finished());
}

void tst_ModalDriver::windowIsActiveWhenTheFunctionRuns()
{
    QWidget opener;
    opener.show();
    QVERIFY(QTest::qWaitForWindowActive(&opener));
    QDialog dialog(&opener);
    bool wasActive = false;
    ModalDriver driver(
        [&](QWidget* window)
        {
            wasActive = window == &dialog && window->isActiveWindow() && window->isVisible();
            window->close();
        });
    dialog.exec();
    QVERIFY(wasActive);
}

void tst_ModalDriver::queueServesOneWindowAfterTheOther()
{
    QStringList titles;
    const ModalDriver::Function note = [&](QWidget* window)
    {
        titles.append(window->windowTitle());
        window->close();
    };
    ModalDriver driver(QList<ModalDriver::Function>{note, note});
    QDialog first;
    first.setWindowTitle("first");
    first.exec();
    QVERIFY(!driver.Finished());
    QDialog second;
    second.setWindowTitle("second");
    second.exec();
    QCOMPARE(titles, QStringList({"first", "second"}));
    QVERIFY(driver.Finished());
}

void tst_ModalDriver::queueServesAWindowOpenedByItsOwnFunction()
{
    QDialog outer;
    QStringList order;
    ModalDriver driver(QList<ModalDriver::Function>{[&](QWidget* window)
                                                    {
                                                        order.append("outer");
                                                        QDialog inner(window);
                                                        inner.exec();
                                                        order.append("back");
                                                        window->close();
                                                    },
                                                    [&](QWidget* window)
                                                    {
                                                        order.append("inner");
                                                        window->close();
                                                    }});
    outer.exec();
    QCOMPARE(order, QStringList({"outer", "inner", "back"}));
    QVERIFY(driver.Finished());
}

void tst_ModalDriver::laterDriverServesTheNestedWindow()
{
    QStringList order;
    const ModalDriver::Function third = [&](QWidget* window)
    {
        order.append("third");
        window->close();
    };
    ModalDriver driver(QList<ModalDriver::Function>{[&](QWidget* window)
                                                    {
                                                        ModalDriver nested(
                                                            [&](QWidget* inner)
                                                            {
                                                                order.append("nested");
                                                                inner->close();
                                                            });
                                                        QDialog inner(window);
                                                        inner.exec();
                                                        QVERIFY(nested.Finished());
                                                        window->close();
                                                    },
                                                    third});
    QDialog outer;
    outer.exec();
    QDialog last;
    last.exec();
    QCOMPARE(order, QStringList({"nested", "third"}));
    QVERIFY(driver.Finished());
}

void tst_ModalDriver::sameDialogCanBeServedTwice()
{
    QDialog dialog;
    const ModalDriver::Function shut = [](QWidget* window) { window->close(); };
    ModalDriver driver(QList<ModalDriver::Function>{shut, shut});
    dialog.exec();
    dialog.exec();
    QVERIFY(driver.Finished());
    QCOMPARE(driver.Served(), 2);
}

void tst_ModalDriver::modelessWindowIsLeftAlone()
{
    QDialog modeless;
    ModalDriver driver([](QWidget* window) { window->close(); });
    modeless.show();
    QVERIFY(QTest::qWaitForWindowActive(&modeless));
    QCoreApplication::processEvents();
    QCOMPARE(driver.Served(), 0);
    QCOMPARE(driver.TakeFailures(), QStringList());
}

void tst_ModalDriver::watchdogClosesWhatStaysOpen()
{
    QDialog dialog;
    dialog.setWindowTitle("stubborn");
    ModalDriver driver([](QWidget*) {}, 50);
    dialog.exec();
    QVERIFY(!driver.Finished());
    QVERIFY(!dialog.isVisible());
    QCOMPARE(driver.Failures().size(), 1);
    QCOMPARE(driver.TakeFailures(), QStringList({"QDialog \"stubborn\" was not closed in time"}));
    QCOMPARE(driver.Failures(), QStringList());
}

void tst_ModalDriver::watchdogTellsThatNothingCame()
{
    ModalDriver driver([](QWidget*) {}, 10);
    QTRY_VERIFY(!driver.Failures().isEmpty());
    QCOMPARE(driver.TakeFailures(), QStringList({"no modal window came in time"}));
}

void tst_ModalDriver::watchdogClosesNestedWindows()
{
    QDialog outer;
    bool unwound = false;
    ModalDriver driver(
        [&](QWidget* window)
        {
            QDialog inner(window);
            inner.exec();
            unwound = true;
        },
        50);
    outer.exec();
    QVERIFY(unwound);
    QVERIFY(!outer.isVisible());
    QCOMPARE(driver.TakeFailures().size(), 1);
}

void tst_ModalDriver::watchdogClosesADialogThatNeverBecameModal()
{
    QDialog dialog;
    QEventLoop loop;
    connect(&dialog, &QDialog::rejected, &loop, &QEventLoop::quit);
    ModalDriver driver([](QWidget*) {}, 20);
    dialog.show();
    loop.exec();
    QVERIFY(!dialog.isVisible());
    QCOMPARE(driver.TakeFailures().size(), 1);
}

void tst_ModalDriver::functionsNeverCalledAreNotFinished()
{
    ModalDriver driver([](QWidget*) {});
    QVERIFY(!driver.Finished());
    driver.TakeFailures();
}

void tst_ModalDriver::windowDestroyedByItsFunctionCountsAsGone()
{
    auto* dialog = new QDialog;
    ModalDriver driver([](QWidget* window) { delete window; });
    dialog->exec();
    QVERIFY(driver.Finished());
}

NV_TEST_MAIN(tst_ModalDriver)

#include "tst_ModalDriver.moc"
