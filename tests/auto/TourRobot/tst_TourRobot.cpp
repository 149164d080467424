// The hands of the tour where things go wrong: what does not come, what is not there, and windows that stay.

#include "TourRobot.h"

#include <QDialog>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>

#include "KXDialog.h"
#include "KXPopupWindow.h"
#include "TestMain.h"

namespace
{

const int Patience = 10;

// With what was reported.
struct Hands
{
    Hands()
    {
        robot.SetPatience(Patience);
        robot.SetReport([this](const QString& reason) { reports += reason; });
    }

    TourRobot robot;
    QStringList reports;
};

// Without content it would have no size, and no place among the modal windows.
class Box : public KXDialog
{
public:
    explicit Box(QWidget* parent = nullptr) : KXDialog(parent) { resize(200, 120); }
};

// Lets that many clicks end nowhere.
class ReleaseEater : public QObject
{
public:
    explicit ReleaseEater(int count) : m_count(count) { }
    bool eventFilter(QObject*, QEvent* event) override
    {
        return event->type() == QEvent::MouseButtonRelease && m_count-- > 0;
    }

private:
    int m_count;
};

void Work(TourRobot& robot)
{
    robot.WaitFor([] { return false; });
}

} // namespace

class tst_TourRobot : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatHoldsIsNotWaitedFor()
    {
        Hands hands;

        QVERIFY(hands.robot.WaitFor([] { return true; }));
    }

    void whatNeverComesIsGivenUp()
    {
        Hands hands;
        int looks = 0;

        QVERIFY(!hands.robot.WaitFor([&looks] { return ++looks < 0; }));

        QVERIFY(looks > 0);
    }

    void aWidgetThatIsNullEndsTheStep()
    {
        Hands hands;
        QWidget* none = nullptr;

        QVERIFY_EXCEPTION_THROWN(hands.robot.Click(none), StepEnded);
        QVERIFY_EXCEPTION_THROWN(hands.robot.Click(none, QPoint()), StepEnded);
        QVERIFY_EXCEPTION_THROWN(hands.robot.DoubleClick(none, QPoint()), StepEnded);
        QVERIFY_EXCEPTION_THROWN(hands.robot.Move(none, QPoint()), StepEnded);
        QVERIFY_EXCEPTION_THROWN(hands.robot.Wheel(none, QPoint(), 1), StepEnded);
        QVERIFY_EXCEPTION_THROWN(hands.robot.DragOn(none, {QPoint()}), StepEnded);
    }

    void theReasonOfAnEndIsKept()
    {
        QWidget widget;

        QCOMPARE(StepEnded(QStringLiteral("über")).GetReason(), QStringLiteral("über"));
        QCOMPARE(Needed(&widget, "it is there"), &widget);
        try
        {
            Needed<QWidget>(nullptr, "it is gone");
            QFAIL("nothing was thrown");
        }
        catch (const StepEnded& end)
        {
            QCOMPARE(end.GetReason(), QStringLiteral("it is gone"));
        }
    }

    void aLostClickOnAButtonOfADialogIsRepeated_data()
    {
        QTest::addColumn<int>("lost");
        QTest::addColumn<int>("clicked");
        QTest::newRow("none") << 0 << 1;
        QTest::newRow("one") << 1 << 1;
        QTest::newRow("two") << 2 << 1;
        QTest::newRow("all") << 9 << 0;
    }
    void aLostClickOnAButtonOfADialogIsRepeated()
    {
        QFETCH(const int, lost);
        Hands hands;
        QDialog dialog;
        QPushButton button("Yes", &dialog);
        ReleaseEater eater(lost);
        button.installEventFilter(&eater);
        QSignalSpy clicked(&button, &QPushButton::clicked);
        hands.robot.WhenModal(
            [&](QWidget*)
            {
                hands.robot.Click(&button);
                dialog.reject();
            });

        dialog.exec();

        QTEST(int(clicked.size()), "clicked");
    }

    void aModalWindowIsActiveBeforeOneActsInIt_data()
    {
        QTest::addColumn<int>("patience");
        QTest::addColumn<bool>("active");
        QTest::newRow("it gets the keyboard late") << 10000 << true;
        QTest::newRow("it never gets it") << Patience << false;
    }
    void aModalWindowIsActiveBeforeOneActsInIt()
    {
        QFETCH(const int, patience);
        QFETCH(const bool, active);
        Hands hands;
        hands.robot.SetPatience(patience);
        Box dialog;
        QWidget* wasActive = nullptr;
        const auto act = [&](QWidget* modal)
        {
            wasActive = QApplication::activeWindow();
            QCOMPARE(modal, &dialog);
            dialog.Reject();
        };
        QWidget other;
        other.show();
        QTimer::singleShot(0, &dialog,
                           [&]
                           {
                               QVERIFY(QTest::qWaitForWindowActive(&dialog));
                               QApplication::setActiveWindow(&other);
                               hands.robot.WhenModal(act);
                               if (active)
                                   QTimer::singleShot(20, &dialog,
                                                      [&] { QApplication::setActiveWindow(&dialog); });
                           });

        dialog.Exec();

        QCOMPARE(wasActive, active ? static_cast<QWidget*>(&dialog) : &other);
    }

    void aModalWindowGetsTheFunctionThatWaitsForIt()
    {
        Hands hands;
        Box dialog;
        QWidget* seen = nullptr;
        hands.robot.WhenModal(
            [&](QWidget* modal)
            {
                seen = modal;
                hands.robot.Key(Qt::Key_Escape);
            });
        QVERIFY(hands.robot.IsWaitingForModal());

        dialog.Exec();

        QCOMPARE(seen, &dialog);
        QVERIFY(!hands.robot.IsWaitingForModal());
        QVERIFY(hands.reports.isEmpty());
    }

    void aForgottenFunctionIsNotCalled()
    {
        Hands hands;
        Box dialog;
        int calls = 0;
        hands.robot.WhenModal([&calls](QWidget*) { ++calls; });

        hands.robot.ForgetModal();
        QTimer::singleShot(0, &dialog, [&dialog] { dialog.Accept(); });
        dialog.Exec();

        QVERIFY(!hands.robot.IsWaitingForModal());
        QCOMPARE(calls, 0);
    }

    void theNextFunctionIsForTheNextWindow()
    {
        Hands hands;
        Box outer;
        Box inner;
        QList<QWidget*> seen;
        hands.robot.WhenModal(
            [&](QWidget* modal)
            {
                seen += modal;
                hands.robot.WhenModal(
                    [&](QWidget* next)
                    {
                        seen += next;
                        inner.Accept();
                    });
                Work(hands.robot);
                QTimer::singleShot(0, &inner,
                                   [&]
                                   {
                                       inner.Exec();
                                       outer.Accept();
                                   });
            });

        outer.Exec();

        QCOMPARE(seen, (QList<QWidget*>{&outer, &inner}));
    }

    void aFunctionThatEndsTheStepClosesItsWindow()
    {
        Hands hands;
        Box dialog;
        hands.robot.WhenModal([](QWidget*) { throw StepEnded(QStringLiteral("no use")); });

        QCOMPARE(dialog.Exec(), int(KXDialog::ResultClosed));

        QCOMPARE(hands.reports, QStringList{QStringLiteral("no use")});
    }

    void aWindowThatNobodyWorksInIsClosed()
    {
        Hands hands;
        QDialog dialog;
        dialog.setWindowTitle(QStringLiteral("Left"));

        QCOMPARE(dialog.exec(), int(QDialog::Rejected));

        QCOMPARE(hands.reports, QStringList{QStringLiteral("the window \"Left\" stayed open")});
    }

    void aWindowThatIsLeftOpenByItsFunctionIsClosed()
    {
        Hands hands;
        Box dialog;
        int calls = 0;
        hands.robot.WhenModal([&calls](QWidget*) { ++calls; });

        dialog.Exec();

        QCOMPARE(calls, 1);
        QCOMPARE(hands.reports.size(), 1);
    }

    void aWindowThatTakesNoEscapeIsClosed()
    {
        class Stubborn : public QDialog
        {
        public:
            void reject() override { ++refusals; }
            int refusals = 0;
        };
        Hands hands;
        Stubborn dialog;

        dialog.exec();

        QVERIFY(dialog.refusals > 0);
        QVERIFY(!dialog.isVisible());
    }

    void aWindowInWhichOneWorksIsLeftAlone()
    {
        Hands hands;
        Box dialog;
        bool wasOpen = false;
        hands.robot.WhenModal(
            [&](QWidget* modal)
            {
                for (int i = 0; i < 40; ++i)
                    Work(hands.robot);
                wasOpen = modal->isVisible();
                dialog.Accept();
            });

        QCOMPARE(dialog.Exec(), int(KXDialog::ResultAccepted));

        QVERIFY(wasOpen);
        QVERIFY(hands.reports.isEmpty());
    }

    void aWindowOverTheOneInWhichOneWorksIsClosed()
    {
        Hands hands;
        Box outer;
        Box inner;
        hands.robot.WhenModal(
            [&](QWidget*)
            {
                inner.Exec();
                outer.Accept();
            });

        QCOMPARE(outer.Exec(), int(KXDialog::ResultAccepted));

        QCOMPARE(inner.GetResult(), int(KXDialog::ResultClosed));
        QCOMPARE(hands.reports.size(), 1);
    }

    void menusPopupsAndDialogsAreClearedAway()
    {
        Hands hands;
        QWidget window;
        window.show();
        KXPopupWindow popup(&window);
        popup.Popup(QPoint(10, 10));
        QDialog dialog(&window);
        dialog.open();
        QMenu menu;
        menu.addMenu(QStringLiteral("More"))->addAction(QStringLiteral("Entry"));
        menu.popup(QPoint(20, 20));
        QVERIFY(popup.isVisible() && dialog.isVisible() && menu.isVisible());

        hands.robot.ClearScreen();

        QVERIFY(!popup.isVisible());
        QVERIFY(!dialog.isVisible());
        QVERIFY(!menu.isVisible());
        QVERIFY(window.isVisible());
        QVERIFY(hands.reports.isEmpty());
    }
};

NV_TEST_MAIN(tst_TourRobot)
#include "tst_TourRobot.moc"
