// The base of dialogs and panels.

#include "KXWidget.h"

#include <QLabel>
#include <QPointer>
#include <QVBoxLayout>

#include "TestMain.h"

namespace
{

class Behind : public QWidget
{
public:
    int presses = 0;

protected:
    void mousePressEvent(QMouseEvent*) override { ++presses; }
    void mouseReleaseEvent(QMouseEvent*) override { ++presses; }
};

class HandingOn : public KXWidget
{
public:
    int filtered = 0;

    bool eventFilter(QObject* object, QEvent* event) override
    {
        ++filtered;
        return KXWidget::eventFilter(object, event);
    }

protected:
    void mousePressEvent(QMouseEvent* event) override { KXWidget::mousePressEvent(event); }
    void mouseReleaseEvent(QMouseEvent* event) override { KXWidget::mouseReleaseEvent(event); }
};

} // namespace

class tst_KXWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void contentFillsTheWidget();
    void titleOfTheFormIsTheTitle();
    void windowOpensAtTheSizeOfItsForm();
    void windowOpensNoSmallerThanItsLayoutWants();
    void sizeThatTheHostGaveStays();
    void formWithoutASizeLeavesItToTheLayout();
    void childKeepsTheSizeOfItsParentsLayout();
    void fixedSizeConstraintHolds();
    void clickOnABareSpotStopsHere();
    void filteredEventsArriveAllTheSame();
    void widgetMayDieWithItsContentInFocus();
};

void tst_KXWidget::contentFillsTheWidget()
{
    KXWidget widget;
    widget.resize(120, 80);
    widget.show();

    QCOMPARE(widget.Content()->parentWidget(), &widget);
    QCOMPARE(widget.Content()->geometry(), widget.rect());
}

void tst_KXWidget::titleOfTheFormIsTheTitle()
{
    KXWidget widget;
    widget.setWindowTitle("before");
    QSignalSpy spy(&widget, &QWidget::windowTitleChanged);

    widget.Content()->setWindowTitle("Canvas size");
    widget.Content()->setWindowTitle("Canvas size");

    QCOMPARE(widget.windowTitle(), QString("Canvas size"));
    QCOMPARE(spy.count(), 1);
}

void tst_KXWidget::windowOpensAtTheSizeOfItsForm()
{
    KXWidget widget;
    widget.Content()->resize(321, 234);

    widget.show();

    QCOMPARE(widget.size(), QSize(321, 234));
    QCOMPARE(widget.Content()->size(), QSize(321, 234));
}

void tst_KXWidget::windowOpensNoSmallerThanItsLayoutWants()
{
    KXWidget widget;
    QVBoxLayout* layout = new QVBoxLayout(widget.Content());
    layout->addWidget(new QLabel("A caption that needs more room than twenty pixels"));
    widget.Content()->resize(20, 200);

    widget.show();

    QCOMPARE(widget.size(), QSize(layout->sizeHint().width(), 200));
}

void tst_KXWidget::sizeThatTheHostGaveStays()
{
    KXWidget widget;
    widget.Content()->resize(321, 234);
    widget.resize(400, 300);

    widget.show();

    QCOMPARE(widget.size(), QSize(400, 300));
}

void tst_KXWidget::formWithoutASizeLeavesItToTheLayout()
{
    KXWidget widget;
    QVBoxLayout* layout = new QVBoxLayout(widget.Content());
    QWidget* child = new QWidget;
    child->setFixedSize(150, 130);
    layout->addWidget(child);

    widget.show();

    QCOMPARE(widget.size(), layout->sizeHint());
}

void tst_KXWidget::childKeepsTheSizeOfItsParentsLayout()
{
    QWidget window;
    KXWidget* widget = new KXWidget(&window);
    widget->setGeometry(0, 0, 50, 40);
    widget->Content()->resize(321, 234);

    window.show();

    QCOMPARE(widget->size(), QSize(50, 40));
    QCOMPARE(widget->Content()->size(), QSize(50, 40));
}

void tst_KXWidget::fixedSizeConstraintHolds()
{
    KXWidget widget;
    widget.Content()->setFixedSize(200, 60);
    widget.layout()->setSizeConstraint(QLayout::SetFixedSize);

    widget.show();
    QCOMPARE(widget.size(), QSize(200, 60));
    widget.resize(500, 500);

    QTRY_COMPARE(widget.size(), QSize(200, 60));
}

void tst_KXWidget::clickOnABareSpotStopsHere()
{
    Behind behind;
    behind.resize(100, 100);
    HandingOn* widget = new HandingOn;
    widget->setParent(&behind);
    widget->setGeometry(0, 0, 50, 50);
    behind.show();
    QVERIFY(QTest::qWaitForWindowActive(&behind));

    QTest::mouseClick(widget->Content(), Qt::LeftButton);
    QCOMPARE(behind.presses, 0);
    QTest::mouseClick(&behind, Qt::LeftButton, Qt::NoModifier, QPoint(80, 80));

    QCOMPARE(behind.presses, 2);
}

void tst_KXWidget::filteredEventsArriveAllTheSame()
{
    HandingOn widget;
    Behind other;
    other.installEventFilter(&widget);
    other.show();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    widget.filtered = 0;

    QTest::mousePress(&other, Qt::LeftButton);

    QCOMPARE(other.presses, 1);
    QVERIFY(widget.filtered > 0);
}

void tst_KXWidget::widgetMayDieWithItsContentInFocus()
{
    QPointer<KXWidget> widget = new KXWidget;
    widget->resize(100, 100);
    widget->Content()->setFocusPolicy(Qt::StrongFocus);
    widget->show();
    QVERIFY(QTest::qWaitForWindowActive(widget));
    widget->Content()->setFocus();
    QVERIFY(widget->Content()->hasFocus());

    delete widget;

    QVERIFY(!widget);
    QVERIFY(!QApplication::focusWidget());
}

NV_TEST_MAIN(tst_KXWidget)
#include "tst_KXWidget.moc"
