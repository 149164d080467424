// Panels with a heading, in and out of dock widgets.

#include "KXPanel.h"

#include <QDockWidget>
#include <QMainWindow>
#include <QPointer>
#include <QVBoxLayout>

#include "ProbeImage.h"
#include "TestMain.h"

namespace
{

// What stands beside the content; null if nothing is shown there.
const QWidget* HeadingOf(const KXPanel& panel)
{
    const QList<QWidget*> children = panel.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (const QWidget* child : children)
    {
        if (child != panel.Content() && !child->isHidden())
        {
            return child;
        }
    }
    return nullptr;
}

} // namespace

class tst_KXPanel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void headingStandsBesideTheContent_data();
    void headingStandsBesideTheContent();
    void headingShowsTheTitle();
    void headingIsLeftOutWhereTheTitleIsShownAnyway();
    void longTitleDoesNotWidenThePanel();
    void panelOpensInADockWidget();
    void dockFollowsTheTitle();
    void dockingAgainMovesTheDock();
    void dockNeedsAWindow();
    void dockOfTheHostIsFound();
    void arrangementIsRestoredByName();
    void panelTakenOutShowsItsHeadingAgain();
    void panelMayDieInItsDock();
};

void tst_KXPanel::headingStandsBesideTheContent_data()
{
    QTest::addColumn<KXPanel::TitlePosition>("position");
    QTest::newRow("top") << KXPanel::TitleTop;
    QTest::newRow("left") << KXPanel::TitleLeft;
    QTest::newRow("none") << KXPanel::TitleNone;
}

void tst_KXPanel::headingStandsBesideTheContent()
{
    QFETCH(KXPanel::TitlePosition, position);
    QCOMPARE(int(KXPanel::TitleTop), 0);
    QWidget window;
    KXPanel* panel = new KXPanel(&window, position);
    panel->setWindowTitle("History");
    panel->setGeometry(0, 0, 200, 150);
    window.resize(200, 150);
    window.show();

    const QWidget* heading = HeadingOf(*panel);

    QCOMPARE(panel->GetTitlePosition(), position);
    QCOMPARE(heading != nullptr, position != KXPanel::TitleNone);
    QRect expected = panel->rect();
    if (position == KXPanel::TitleTop)
    {
        expected.setTop(heading->geometry().bottom() + 1);
        QCOMPARE(heading->width(), 200);
    }
    else if (position == KXPanel::TitleLeft)
    {
        expected.setLeft(heading->geometry().right() + 1);
        QCOMPARE(heading->height(), 150);
    }
    QCOMPARE(panel->Content()->geometry(), expected);
    QVERIFY(panel->Content()->height() > 100 && panel->Content()->width() > 150);
}

void tst_KXPanel::headingShowsTheTitle()
{
    QWidget window;
    KXPanel* panel = new KXPanel(&window);
    panel->setGeometry(0, 0, 200, 150);
    window.show();
    QVERIFY(!HeadingOf(*panel));

    panel->Content()->setWindowTitle("Navigator");

    QVERIFY(HeadingOf(*panel));
    QCOMPARE(panel->accessibleName(), QString("Navigator"));
    const ProbeImage probe(const_cast<QWidget*>(HeadingOf(*panel)));
    QVERIFY(probe.CountOf(panel->palette().color(QPalette::WindowText), 100) > 20);
}

void tst_KXPanel::headingIsLeftOutWhereTheTitleIsShownAnyway()
{
    KXPanel panel;
    panel.setWindowTitle("History");
    QVERIFY(!HeadingOf(panel));
    QWidget window;

    panel.setParent(&window);
    QVERIFY(HeadingOf(panel));
    panel.setParent(nullptr);

    QVERIFY(!HeadingOf(panel));
}

void tst_KXPanel::longTitleDoesNotWidenThePanel()
{
    QWidget window;
    KXPanel* panel = new KXPanel(&window);
    panel->setWindowTitle(QString(300, 'W'));

    QVERIFY(panel->minimumSizeHint().width() < 50);
}

void tst_KXPanel::panelOpensInADockWidget()
{
    QMainWindow window;
    window.resize(600, 400);
    window.setCentralWidget(new QWidget);
    KXPanel* panel = new KXPanel;
    panel->setWindowTitle("History");
    window.show();

    QDockWidget* dock = panel->Dock(&window, Qt::LeftDockWidgetArea);

    QVERIFY(dock);
    QCOMPARE(panel->GetDock(), dock);
    QCOMPARE(dock->widget(), panel);
    QCOMPARE(window.dockWidgetArea(dock), Qt::LeftDockWidgetArea);
    QCOMPARE(dock->windowTitle(), QString("History"));
    QCOMPARE(dock->objectName(), QString("KXPanelDock"));
    QVERIFY(panel->isVisible());
    QVERIFY(!HeadingOf(*panel));
    QVERIFY(!dock->features().testFlag(QDockWidget::DockWidgetVerticalTitleBar));
}

void tst_KXPanel::dockFollowsTheTitle()
{
    QMainWindow window;
    KXPanel* panel = new KXPanel(nullptr, KXPanel::TitleLeft);
    QDockWidget* dock = panel->Dock(&window);

    panel->setWindowTitle("Colours");

    QCOMPARE(dock->windowTitle(), QString("Colours"));
    QVERIFY(!HeadingOf(*panel));
    QVERIFY(dock->features().testFlag(QDockWidget::DockWidgetVerticalTitleBar));
}

void tst_KXPanel::dockingAgainMovesTheDock()
{
    QMainWindow window;
    KXPanel* panel = new KXPanel;
    QDockWidget* dock = panel->Dock(&window, Qt::LeftDockWidgetArea);

    QCOMPARE(panel->Dock(&window, Qt::RightDockWidgetArea), dock);

    QCOMPARE(window.dockWidgetArea(dock), Qt::RightDockWidgetArea);
    QCOMPARE(window.findChildren<QDockWidget*>().size(), 1);
}

void tst_KXPanel::dockNeedsAWindow()
{
    KXPanel panel;

    QVERIFY(!panel.Dock(nullptr));

    QVERIFY(!panel.GetDock());
}

void tst_KXPanel::dockOfTheHostIsFound()
{
    QMainWindow window;
    QDockWidget* dock = new QDockWidget(&window);
    KXPanel* panel = new KXPanel;
    panel->setWindowTitle("History");

    dock->setWidget(panel);

    QCOMPARE(panel->GetDock(), dock);
    QVERIFY(!HeadingOf(*panel));
}

void tst_KXPanel::arrangementIsRestoredByName()
{
    QByteArray arrangement;
    {
        QMainWindow window;
        KXPanel* panel = new KXPanel;
        panel->setObjectName("history");
        panel->Dock(&window, Qt::BottomDockWidgetArea);
        arrangement = window.saveState();
    }
    QMainWindow window;
    KXPanel* panel = new KXPanel;
    panel->setObjectName("history");
    QDockWidget* dock = panel->Dock(&window, Qt::LeftDockWidgetArea);

    QVERIFY(window.restoreState(arrangement));

    QCOMPARE(dock->objectName(), QString("historyDock"));
    QCOMPARE(window.dockWidgetArea(dock), Qt::BottomDockWidgetArea);
}

void tst_KXPanel::panelTakenOutShowsItsHeadingAgain()
{
    QMainWindow window;
    KXPanel* panel = new KXPanel;
    panel->setWindowTitle("History");
    panel->Dock(&window);

    panel->setParent(&window);

    QVERIFY(!panel->GetDock());
    QVERIFY(HeadingOf(*panel));
}

void tst_KXPanel::panelMayDieInItsDock()
{
    QMainWindow window;
    window.resize(300, 200);
    QPointer<KXPanel> panel = new KXPanel;
    QDockWidget* dock = panel->Dock(&window);
    window.show();

    delete panel;

    QVERIFY(!dock->widget());
    QCoreApplication::processEvents();
    QVERIFY(window.isVisible());
}

NV_TEST_MAIN(tst_KXPanel)
#include "tst_KXPanel.moc"
