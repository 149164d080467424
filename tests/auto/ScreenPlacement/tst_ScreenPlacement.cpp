// Windows that are moved back onto the screen.

#include "ScreenPlacement.h"

#include <QScreen>

#include "TestMain.h"

class tst_ScreenPlacement : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void windowGoesToTheNearestPlaceWithinTheArea_data();
    void windowGoesToTheNearestPlaceWithinTheArea();
    void windowThatHasToGoUpLeavesItsButtonFree_data();
    void windowThatHasToGoUpLeavesItsButtonFree();
    void emptyAreaChangesNothing();
    void windowFarOutsideComesToThePrimaryScreen();
    void areaIsThatOfTheScreenUnderTheCorner();
    void windowIsMovedWithItsFrame();
    void windowThatFitsStays();
    void nullAndChildrenAreLeftAlone();
};

void tst_ScreenPlacement::windowGoesToTheNearestPlaceWithinTheArea_data()
{
    QTest::addColumn<QRect>("window");
    QTest::addColumn<QPoint>("expected");
    QTest::newRow("inside") << QRect(120, 130, 50, 60) << QPoint(120, 130);
    QTest::newRow("exactly in the corner") << QRect(450, 340, 50, 60) << QPoint(450, 340);
    QTest::newRow("one pixel over the right edge") << QRect(451, 200, 50, 60) << QPoint(450, 200);
    QTest::newRow("one pixel over the lower edge") << QRect(200, 341, 50, 60) << QPoint(200, 340);
    QTest::newRow("over the left edge") << QRect(90, 200, 50, 60) << QPoint(100, 200);
    QTest::newRow("over the upper edge") << QRect(200, 20, 50, 60) << QPoint(200, 100);
    QTest::newRow("over the lower right corner") << QRect(490, 390, 50, 60) << QPoint(450, 340);
    QTest::newRow("wider than the area") << QRect(300, 200, 900, 60) << QPoint(100, 200);
    QTest::newRow("higher than the area") << QRect(300, 200, 50, 900) << QPoint(300, 100);
    QTest::newRow("empty window") << QRect(600, 600, 0, 0) << QPoint(500, 400);
}

void tst_ScreenPlacement::windowGoesToTheNearestPlaceWithinTheArea()
{
    QFETCH(QRect, window);
    QFETCH(QPoint, expected);

    QCOMPARE(KeepOnScreen(window, QRect(100, 100, 400, 300)), expected);
}

void tst_ScreenPlacement::windowThatHasToGoUpLeavesItsButtonFree_data()
{
    QTest::addColumn<QRect>("window");
    QTest::addColumn<QPoint>("place");

    QTest::newRow("fits below") << QRect(150, 130, 100, 200) << QPoint(150, 130);
    QTest::newRow("beside, to the right") << QRect(150, 250, 100, 200) << QPoint(182, 200);
    QTest::newRow("beside, to the left") << QRect(390, 250, 100, 200) << QPoint(290, 200);
    QTest::newRow("no room on either side") << QRect(150, 250, 340, 200) << QPoint(150, 200);
    QTest::newRow("too far right but high enough") << QRect(450, 130, 100, 200) << QPoint(400, 130);
}

void tst_ScreenPlacement::windowThatHasToGoUpLeavesItsButtonFree()
{
    QFETCH(const QRect, window);
    QTEST(KeepOnScreenBesideButton(window, QRect(100, 100, 400, 300)), "place");
}

void tst_ScreenPlacement::emptyAreaChangesNothing()
{
    QCOMPARE(KeepOnScreen(QRect(-7, 9, 50, 60), QRect()), QPoint(-7, 9));
}

void tst_ScreenPlacement::windowFarOutsideComesToThePrimaryScreen()
{
    const QRect area = QGuiApplication::primaryScreen()->availableGeometry();

    const QPoint position = KeepOnScreen(QRect(90000, 90000, 50, 60));

    QCOMPARE(QRect(position, QSize(50, 60)).bottomRight(), area.bottomRight());
}

void tst_ScreenPlacement::areaIsThatOfTheScreenUnderTheCorner()
{
    const QScreen* screen = QGuiApplication::primaryScreen();

    QCOMPARE(AvailableArea(QRect(screen->geometry().center(), QSize(9000, 9000))),
             screen->availableGeometry());
    QCOMPARE(AvailableArea(QRect(-50, -50, 100, 100)), screen->availableGeometry());
}

void tst_ScreenPlacement::windowIsMovedWithItsFrame()
{
    QWidget window;
    window.resize(200, 100);
    const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
    window.move(area.topRight());

    MoveOntoScreen(&window);

    QCOMPARE(window.frameGeometry().topRight(), area.topRight());
    QCOMPARE(window.size(), QSize(200, 100));
}

void tst_ScreenPlacement::windowThatFitsStays()
{
    QWidget window;
    window.setGeometry(40, 50, 200, 100);

    MoveOntoScreen(&window);

    QCOMPARE(window.pos(), QPoint(40, 50));
}

void tst_ScreenPlacement::nullAndChildrenAreLeftAlone()
{
    QWidget window;
    QWidget child(&window);
    child.setGeometry(-500, -500, 10, 10);

    MoveOntoScreen(nullptr);
    MoveOntoScreen(&child);

    QCOMPARE(child.pos(), QPoint(-500, -500));
}

NV_TEST_MAIN(tst_ScreenPlacement)
#include "tst_ScreenPlacement.moc"
