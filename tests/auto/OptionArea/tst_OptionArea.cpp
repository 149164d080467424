// The strip of the option bars: equally high for all, scrolled where a bar is too wide.

#include "OptionArea.h"

#include <QLabel>
#include <QPointer>
#include <QScrollBar>
#include <QToolButton>
#include <QWheelEvent>

#include "TestMain.h"

class tst_OptionArea : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void oneBarIsShownAtATime()
    {
        QLabel one("one");
        QLabel two("two");
        {
            OptionArea area;
            area.show();
            area.ShowBar(&one);
            area.ShowBar(&two);
            QVERIFY(!one.isVisible());
            QVERIFY(two.isVisible());
            area.ShowBar(&one);
            QVERIFY(one.isVisible());
            one.setParent(nullptr);
            two.setParent(nullptr);
        }
    }

    void theHeightStaysWhateverTheBar()
    {
        OptionArea area;
        area.show();
        const int height = area.height();
        auto* low = new QWidget;
        low->setFixedHeight(10);

        area.ShowBar(low);

        QCOMPARE(area.height(), height);
        QCOMPARE(area.sizeHint().height(), height);
    }

    void theWheelScrollsABarThatIsTooWide()
    {
        OptionArea area;
        auto* wide = new QWidget;
        wide->setMinimumWidth(2000);
        area.resize(300, area.height());
        area.ShowBar(wide);
        area.show();
        QVERIFY(QTest::qWaitForWindowExposed(&area));
        QWheelEvent wheel(QPointF(5, 5), area.mapToGlobal(QPoint(5, 5)), QPoint(), QPoint(0, -120),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);

        QCoreApplication::sendEvent(area.viewport(), &wheel);

        QCOMPARE(area.horizontalScrollBar()->value(), 60);
        QCOMPARE(wide->mapTo(&area, QPoint()).x() < 0, true);
    }

    void aButtonStandsWhereAnEndIsHidden()
    {
        OptionArea area;
        auto* wide = new QWidget;
        wide->setMinimumWidth(500);
        area.resize(300, area.height());
        area.ShowBar(wide);
        area.show();
        QVERIFY(QTest::qWaitForWindowExposed(&area));
        const QList<QToolButton*> buttons = area.findChildren<QToolButton*>();
        QCOMPARE(buttons.size(), 2);
        QToolButton* back = buttons.at(0);
        QToolButton* forward = buttons.at(1);
        QVERIFY(!back->isVisible());
        QVERIFY(forward->isVisible());
        QCOMPARE(forward->geometry().right(), area.width() - 1);

        QTest::mouseClick(forward, Qt::LeftButton);
        QCOMPARE(area.horizontalScrollBar()->value(), area.horizontalScrollBar()->maximum());
        QVERIFY(back->isVisible());
        QVERIFY(!forward->isVisible());

        QTest::mouseClick(back, Qt::LeftButton);
        QCOMPARE(area.horizontalScrollBar()->value(), 0);

        area.resize(900, area.height());
        QVERIFY(!back->isVisible());
        QVERIFY(!forward->isVisible());
    }

    void aWideBarThatIsHiddenLeavesNoButtons()
    {
        OptionArea area;
        auto* wide = new QWidget;
        wide->setMinimumWidth(500);
        auto* narrow = new QWidget;
        narrow->setMinimumWidth(100);
        area.resize(300, area.height());
        area.ShowBar(wide);
        area.show();
        QVERIFY(QTest::qWaitForWindowExposed(&area));
        area.horizontalScrollBar()->setValue(area.horizontalScrollBar()->maximum());

        area.ShowBar(narrow);

        for (const QToolButton* button : area.findChildren<QToolButton*>())
            QTRY_VERIFY(!button->isVisible());
        QCOMPARE(narrow->mapTo(&area, QPoint()).x() > 0, true);

        area.ShowBar(wide);
        QTRY_VERIFY(area.findChildren<QToolButton*>().at(1)->isVisible());
        QCOMPARE(area.horizontalScrollBar()->value(), 0);
    }

    void aBarMayGoWhileItIsShown()
    {
        OptionArea area;
        QPointer<QWidget> bar = new QWidget;
        area.ShowBar(bar);
        area.show();

        delete bar;

        QCoreApplication::processEvents();
        QVERIFY(area.isVisible());
    }
};

NV_TEST_MAIN(tst_OptionArea)
#include "tst_OptionArea.moc"
