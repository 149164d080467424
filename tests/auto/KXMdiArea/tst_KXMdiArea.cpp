// The area of documents and the window that dialogs take as their parent.

#include <QMainWindow>
#include <QMdiSubWindow>
#include <QTabBar>
#include <memory>

#include "KXMdiArea.h"
#include "TestMain.h"

class tst_KXMdiArea : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thereIsNoMainWindowWithoutAnArea();
    void theMainWindowIsTheWindowOfTheArea();
    void theNewestLivingAreaCounts();
    void itFollowsAnAreaIntoAWindow();
    void documentsStandInClosableTabs();
    void theEmptyAreaFollowsThePalette();
};

void tst_KXMdiArea::thereIsNoMainWindowWithoutAnArea()
{
    QCOMPARE(KXMdiArea::MainWindow(), nullptr);
    {
        KXMdiArea area;
        QCOMPARE(KXMdiArea::MainWindow(), &area);
    }
    QCOMPARE(KXMdiArea::MainWindow(), nullptr);
}

void tst_KXMdiArea::theMainWindowIsTheWindowOfTheArea()
{
    QMainWindow window;
    window.setCentralWidget(new KXMdiArea);

    QCOMPARE(KXMdiArea::MainWindow(), &window);
}

void tst_KXMdiArea::theNewestLivingAreaCounts()
{
    QMainWindow first;
    QMainWindow second;
    first.setCentralWidget(new KXMdiArea);
    auto area = std::make_unique<KXMdiArea>(&second);
    QCOMPARE(KXMdiArea::MainWindow(), &second);

    area.reset();
    QCOMPARE(KXMdiArea::MainWindow(), &first);
    delete first.takeCentralWidget();
    QCOMPARE(KXMdiArea::MainWindow(), nullptr);
}

void tst_KXMdiArea::itFollowsAnAreaIntoAWindow()
{
    QMainWindow window;
    KXMdiArea* const area = new KXMdiArea;
    QCOMPARE(KXMdiArea::MainWindow(), area);

    window.setCentralWidget(area);

    QCOMPARE(KXMdiArea::MainWindow(), &window);
}

void tst_KXMdiArea::documentsStandInClosableTabs()
{
    QMainWindow window;
    KXMdiArea* const area = new KXMdiArea;
    window.setCentralWidget(area);
    QMdiSubWindow* const first = area->addSubWindow(new QWidget);
    first->setWindowTitle(QStringLiteral("One"));
    QMdiSubWindow* const second = area->addSubWindow(new QWidget);
    second->setWindowTitle(QStringLiteral("Two"));
    window.resize(400, 300);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));

    QTabBar* const tabs = area->findChild<QTabBar*>();
    QVERIFY(tabs);
    QCOMPARE(tabs->count(), 2);
    QVERIFY(tabs->tabsClosable());
    QTest::mouseClick(tabs, Qt::LeftButton, Qt::NoModifier, tabs->tabRect(0).center());
    QCOMPARE(area->activeSubWindow(), first);
    Q_EMIT tabs->tabCloseRequested(0);
    QTRY_COMPARE(area->subWindowList(), QList<QMdiSubWindow*>({second}));
}

void tst_KXMdiArea::theEmptyAreaFollowsThePalette()
{
    KXMdiArea area;
    area.resize(100, 80);
    for (const QColor& ground : {QColor(40, 44, 48), QColor(200, 202, 204)})
    {
        QPalette palette = area.palette();
        palette.setColor(QPalette::Dark, ground);
        area.setPalette(palette);

        QCOMPARE(area.grab().toImage().pixelColor(50, 40), ground);
    }
}

NV_TEST_MAIN(tst_KXMdiArea)
#include "tst_KXMdiArea.moc"
