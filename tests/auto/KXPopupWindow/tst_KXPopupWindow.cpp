// The window that drops down from a control.

#include "KXPopupWindow.h"

#include <QCursor>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include "KXDialog.h"
#include "ModalDriver.h"
#include "PopupDriver.h"
#include "ProbeImage.h"
#include "TestMain.h"

namespace
{

// A window with a checkable button, below which the popup opens.
class Host : public QWidget
{
public:
    Host()
        : button(new QPushButton("Gradient", this)), edit(new QLineEdit(this)), popup(new KXPopupWindow(this))
    {
        setGeometry(100, 100, 400, 300);
        button->setCheckable(true);
        button->setFocusPolicy(Qt::NoFocus);
        button->setGeometry(10, 10, 100, 24);
        edit->setGeometry(200, 200, 100, 24);
        popup->GetContent()->resize(150, 120);
        connect(button, &QAbstractButton::toggled, this, &Host::OnToggled);
        popup->installEventFilter(this);
    }

    bool Show()
    {
        show();
        activateWindow();
        edit->setFocus();
        return QTest::qWaitForWindowActive(this);
    }

    bool eventFilter(QObject* object, QEvent* event) override
    {
        if (object == popup)
        {
            events.append(event->type());
            if (event->type() == QEvent::Hide)
            {
                button->setChecked(false);
            }
        }
        return false;
    }

    QPushButton* button;
    QLineEdit* edit;
    KXPopupWindow* popup;
    QList<QEvent::Type> events;

private:
    void OnToggled(bool checked)
    {
        if (checked)
        {
            popup->Popup(button->mapToGlobal(QPoint(0, button->height() + 1)));
        }
        else
        {
            popup->hide();
        }
    }
};

} // namespace

class tst_KXPopupWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void popupOpensWhereToldWithTheFormsSize();
    void popupIsAToolWindowWithoutFrame();
    void popupComesBackOntoTheScreen_data();
    void popupComesBackOntoTheScreen();
    void secondPopupMovesTheOpenWindow();
    void popupTakesTheKeyboard();
    void escapeClosesOnce();
    void otherKeysLeaveItOpen();
    void clickElsewhereCloses();
    void clickOnTheCheckedButtonClosesOnce();
    void buttonOpensAndClosesAnyNumberOfTimes();
    void hideAndDeactivationAreSeenByAFilter();
    void modalWindowLeavesItOpen();
    void modalWindowGivesTheActivationBack();
    void popupMayDieWhileOpen();
    void titleOfTheFormIsTheTitle();
    void borderIsDrawn();
};

void tst_KXPopupWindow::cleanup()
{
    QCursor::setPos(0, 0);
}

void tst_KXPopupWindow::popupOpensWhereToldWithTheFormsSize()
{
    Host host;
    QVERIFY(host.Show());

    host.popup->Popup(QPoint(123, 145));

    QVERIFY(host.popup->isVisible());
    QCOMPARE(host.popup->pos(), QPoint(123, 145));
    QCOMPARE(host.popup->GetContent()->size(), QSize(150, 120));
    QVERIFY(host.popup->rect().contains(host.popup->GetContent()->geometry()));
}

void tst_KXPopupWindow::popupIsAToolWindowWithoutFrame()
{
    KXPopupWindow popup;

    QVERIFY(popup.isWindow());
    QCOMPARE(popup.windowType(), Qt::Tool);
    QVERIFY(popup.windowFlags().testFlag(Qt::FramelessWindowHint));
}

void tst_KXPopupWindow::popupComesBackOntoTheScreen_data()
{
    QTest::addColumn<QPoint>("place");
    QTest::newRow("right") << QPoint(790, 100);
    QTest::newRow("below") << QPoint(100, 590);
    QTest::newRow("left") << QPoint(-30, 100);
    QTest::newRow("above") << QPoint(100, -30);
    QTest::newRow("far away") << QPoint(99999, 99999);
}

void tst_KXPopupWindow::popupComesBackOntoTheScreen()
{
    QFETCH(QPoint, place);
    Host host;
    QVERIFY(host.Show());

    host.popup->Popup(place);

    QVERIFY(QGuiApplication::primaryScreen()->availableGeometry().contains(host.popup->frameGeometry()));
}

void tst_KXPopupWindow::secondPopupMovesTheOpenWindow()
{
    Host host;
    QVERIFY(host.Show());
    host.popup->Popup(QPoint(123, 145));

    host.popup->Popup(QPoint(223, 245));
    QCOMPARE(host.popup->pos(), QPoint(223, 245));
    host.popup->Popup(QPoint(99999, 245));

    QVERIFY(QGuiApplication::primaryScreen()->availableGeometry().contains(host.popup->frameGeometry()));
    QCOMPARE(host.events.count(QEvent::Show), 1);
}

void tst_KXPopupWindow::popupTakesTheKeyboard()
{
    Host host;
    QVERIFY(host.Show());

    host.popup->Popup(QPoint(123, 145));

    QTRY_COMPARE(QApplication::activeWindow(), host.popup);
    QTRY_COMPARE(QApplication::focusWidget(), host.popup);
}

void tst_KXPopupWindow::escapeClosesOnce()
{
    Host host;
    QVERIFY(host.Show());
    PopupDriver driver(host.button, host.popup);
    QVERIFY(driver.Open());

    QVERIFY(driver.CloseByEscape());

    QCOMPARE(driver.HideCount(), 1);
    QVERIFY(!host.button->isChecked());
}

void tst_KXPopupWindow::otherKeysLeaveItOpen()
{
    Host host;
    QVERIFY(host.Show());
    host.popup->Popup(QPoint(123, 145));
    QTRY_COMPARE(QApplication::activeWindow(), host.popup);

    QTest::keyClick(host.popup, Qt::Key_A);
    QTest::keyClick(host.popup, Qt::Key_Return);

    QVERIFY(host.popup->isVisible());
}

void tst_KXPopupWindow::clickElsewhereCloses()
{
    Host host;
    QVERIFY(host.Show());
    PopupDriver driver(host.button, host.popup);
    QVERIFY(driver.Open());

    QVERIFY(driver.CloseByClickElsewhere(host.edit));

    QCOMPARE(driver.HideCount(), 1);
    QVERIFY(!host.button->isChecked());
}

void tst_KXPopupWindow::clickOnTheCheckedButtonClosesOnce()
{
    Host host;
    QVERIFY(host.Show());
    PopupDriver driver(host.button, host.popup);
    QVERIFY(driver.Open());

    QVERIFY(driver.CloseByButton());

    QCOMPARE(driver.ShowCount(), 1);
    QCOMPARE(driver.HideCount(), 1);
    QVERIFY(!host.button->isChecked());
}

void tst_KXPopupWindow::buttonOpensAndClosesAnyNumberOfTimes()
{
    Host host;
    QVERIFY(host.Show());
    PopupDriver driver(host.button, host.popup);

    for (int i = 0; i < 3; ++i)
    {
        QVERIFY(driver.Open());
        QVERIFY(driver.CloseByButton());
    }

    QCOMPARE(driver.ShowCount(), 3);
    QCOMPARE(driver.HideCount(), 3);
}

void tst_KXPopupWindow::hideAndDeactivationAreSeenByAFilter()
{
    Host host;
    QVERIFY(host.Show());
    host.popup->Popup(QPoint(123, 145));
    QTRY_COMPARE(QApplication::activeWindow(), host.popup);
    host.events.clear();

    host.activateWindow();

    QTRY_VERIFY(!host.popup->isVisible());
    const int deactivated = host.events.indexOf(QEvent::WindowDeactivate);
    const int hidden = host.events.indexOf(QEvent::Hide);
    QVERIFY(deactivated >= 0);
    QVERIFY(hidden > deactivated);
}

void tst_KXPopupWindow::modalWindowLeavesItOpen()
{
    Host host;
    QVERIFY(host.Show());
    host.popup->Popup(QPoint(123, 145));
    QTRY_COMPARE(QApplication::activeWindow(), host.popup);
    KXDialog dialog(host.popup);
    dialog.resize(120, 60);
    bool stayed = false;
    ModalDriver driver(
        [&](QWidget* window)
        {
            stayed = host.popup->isVisible();
            ModalDriver::PressKey(window, Qt::Key_Escape);
        });

    dialog.Exec();

    QVERIFY(driver.Finished());
    QVERIFY(stayed);
    QVERIFY(host.popup->isVisible());
}

void tst_KXPopupWindow::modalWindowGivesTheActivationBack()
{
    Host host;
    QVERIFY(host.Show());
    host.popup->Popup(QPoint(123, 145));
    QTRY_COMPARE(QApplication::activeWindow(), host.popup);
    KXDialog dialog(&host);
    dialog.resize(120, 60);
    ModalDriver driver([](QWidget* window) { ModalDriver::PressKey(window, Qt::Key_Escape); });

    dialog.Exec();

    QTRY_VERIFY(host.popup->isActiveWindow());
    QVERIFY(host.popup->isVisible());
    QTest::keyClick(host.popup, Qt::Key_Escape);
    QVERIFY(!host.popup->isVisible());
}

void tst_KXPopupWindow::popupMayDieWhileOpen()
{
    QWidget host;
    host.resize(100, 100);
    host.show();
    QPointer<KXPopupWindow> popup = new KXPopupWindow(&host);
    popup->Popup(QPoint(123, 145));
    QVERIFY(QTest::qWaitForWindowActive(popup));

    delete popup;

    QVERIFY(host.isVisible());
}

void tst_KXPopupWindow::titleOfTheFormIsTheTitle()
{
    KXPopupWindow popup;

    popup.GetContent()->setWindowTitle("Gradient tool");

    QCOMPARE(popup.windowTitle(), QString("Gradient tool"));
}

void tst_KXPopupWindow::borderIsDrawn()
{
    KXPopupWindow popup;
    popup.resize(60, 40);

    const ProbeImage probe(&popup);

    NV_VERIFY_NEAR(probe, 0, 0, popup.palette().color(QPalette::Mid), 2);
    NV_VERIFY_NEAR(probe, 59, 39, popup.palette().color(QPalette::Mid), 2);
    NV_VERIFY_NEAR(probe, 30, 20, popup.palette().color(QPalette::Window), 2);
}

NV_TEST_MAIN(tst_KXPopupWindow)
#include "tst_KXPopupWindow.moc"
