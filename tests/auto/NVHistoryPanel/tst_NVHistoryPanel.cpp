// The column of history rows: what it holds, how it is measured, which row is the present state, and clicks.

#include <QGridLayout>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QtTest>

#include <algorithm>
#include <memory>
#include <random>

#include "BarForm.h"
#include "KXResource.h"
#include "NVHistoryItem.h"
#include "NVHistoryPanel.h"
#include "ProbeImage.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

QString Sheet(int role)
{
    return KXResource::GetData(static_cast<KXResource::ConstRole>(role)).toString();
}

QImage Picture(const QColor& color = Qt::red)
{
    QImage image(24, 24, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

// A panel of 200 by 100 pixels whose rows are called "0", "1", "2" and so on.
struct Host
{
    explicit Host(int rows = 0, QWidget* parent = nullptr) : panel(new NVHistoryPanel(parent))
    {
        panel->resize(200, 100);
        Add(rows);
    }
    ~Host() { delete panel; }
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    bool Show() const
    {
        QCursor::setPos(0, 0);
        panel->move(100, 100);
        panel->show();
        const bool active = QTest::qWaitForWindowActive(panel);
        QCoreApplication::processEvents();
        return active;
    }
    void Add(int rows) const
    {
        for (int i = 0; i < rows; ++i)
            panel->AddItem(QString::number(panel->Count()), Picture());
    }
    QScrollArea* Area() const { return panel->findChild<QScrollArea*>("m_pScrollArea"); }
    QWidget* Viewport() const { return Area()->viewport(); }
    QScrollBar* Bar() const { return Area()->verticalScrollBar(); }
    QWidget* Container() const { return Area()->widget(); }
    QGridLayout* Grid() const { return qobject_cast<QGridLayout*>(Container()->layout()); }
    NVHistoryItem* Row(int index) const
    {
        QLayoutItem* item = Grid()->itemAtPosition(index, 0);
        return item ? qobject_cast<NVHistoryItem*>(item->widget()) : nullptr;
    }
    QString Text(int index) const { return Row(index)->findChild<QLabel*>("m_pText")->text(); }
    QLabel* Icon(int index) const { return Row(index)->findChild<QLabel*>("m_pIcon"); }
    // One letter a row: S selected, E enabled, D neither.
    QString States() const
    {
        QString states;
        for (int i = 0; i < panel->Count(); ++i)
            states += Row(i)->IsSelected() ? 'S' : Row(i)->IsEnabled() ? 'E' : 'D';
        return states;
    }
    // On the text of a row, in the coordinates of the window; the row must be in view.
    QPoint PlaceOf(int index) const { return Row(index)->mapTo(panel, QPoint(60, 12)); }
    void Press(const QPoint& place, Qt::MouseButton button = Qt::LeftButton) const
    {
        QTest::mousePress(panel->windowHandle(), button, {}, place);
    }
    void Release(const QPoint& place, Qt::MouseButton button = Qt::LeftButton) const
    {
        QTest::mouseRelease(panel->windowHandle(), button, {}, place);
    }
    void Click(int index) const
    {
        Press(PlaceOf(index));
        Release(PlaceOf(index));
    }
    // As the toolkit hands on what the rows didn't take, from wherever the pointer is.
    void SendRelease(const QPoint& place, Qt::MouseButton button = Qt::LeftButton) const
    {
        QMouseEvent event(QEvent::MouseButtonRelease, place, panel->mapToGlobal(place), button, Qt::NoButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(panel, &event);
    }

    QPointer<NVHistoryPanel> panel;
};

// Counts events of one type that the objects receive.
class EventCount : public QObject
{
public:
    explicit EventCount(QEvent::Type type) : m_type(type) { }
    void Watch(QObject* object) { object->installEventFilter(this); }
    void WatchRows(const Host& host)
    {
        for (int i = 0; i < host.panel->Count(); ++i)
            Watch(host.Row(i));
    }
    bool eventFilter(QObject* object, QEvent* event) override
    {
        if (event->type() == m_type)
            seen.append(object);
        return false;
    }
    QList<QObject*> seen;

private:
    QEvent::Type m_type;
};

void RunDeferredDeletes()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

class tst_NVHistoryPanel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();

    void formIsAsStated();
    void startsEmpty();

    void addedRowStandsAtTheBottom();
    void addingChangesNeitherSelectionNorPlace();
    void rowsAreAsHighAsTheFirstEverAdded();
    void rowsAddedUnshownAreAllThere();
    void containerIsAsWideAsTheViewport();
    void resizingNeverChangesTheHeight();
    void scrollBarComesWithoutAHorizontalOne();

    void removeTruncatesAtOnce();
    void removedRowsAreHiddenAndDieLater();
    void removeBehindTheEndRemovesNothing_data();
    void removeBehindTheEndRemovesNothing();
    void removeBeforeTheFirstRowRemovesAll();
    void clearRemovesAllAndRowsMayCome();
    void rowThatWentByItselfIsPassedOver();

    void rowsBelowThePresentStateAreDisabled();
    void selectionTakesTheSheets();
    void selectionOutsideOfTheRows_data();
    void selectionOutsideOfTheRows();
    void selectionOnAnEmptyListIsHarmless();
    void selectedIndexIsTheFirst();

    void ensureVisibleScrollsNoFartherThanNeeded();
    void ensureVisibleIgnoresWhatIsNotThere();
    void ensureVisibleMeasuresTheContainer();
    void ensureVisibleBearsAnyIndex();
    void rowThatIsHigherThanTheViewShowsItsEnd();
    void selectingScrollsToTheRow();

    void clickActivatesTheRow();
    void clickOnADisabledRowActivatesIt();
    void clickChangesNothingInThePanel();
    void clickOnThePictureCounts();
    void clickOnAScrolledRowCounts();
    void clicksAreIgnoredUntilEnabled();
    void otherButtonsAreIgnored();
    void releaseOfAnotherButtonIsNoClick();
    void pressAndReleaseOnDifferentRowsIsNoClick();
    void releaseForgetsThePressedRow();
    void pressBelowTheRowsIsNoClick();
    void releaseOutsideKeepsThePressedRow();
    void disabledActionsLeaveThePressedRow();
    void doubleClickActivatesTwice();
    void pressAndReleaseStopAtThePanel();

    void pressGoesOnToTheToolkit();

    void newRowIgnoresThePointerUntilTheLoopHasRun();
    void hoveredSelectedRowTakesItsSheet();
    void removedRowUnderThePointerIsHarmless();

    void newRowIsStyledOnce();
    void eachChangedRowIsStyledOnce();
    void clearStylesNothing();
    void addedRowMovesNoOther();
    void containerIsNeverAskedToLayOut();
    void stepPaintsTheChangedRowsOnly();
    void thousandRowsStandInTheirPlaces();
    void randomSequencesMatchAPlainList_data();
    void randomSequencesMatchAPlainList();

    void rowsStandOnADenseScreen();
    void diesInItsOwnSignal();
    void diesWhileARowIsHovered();
    void diesWhileARowIsPressed();
    void rowRemovedWhilePressedIsNoClick();
    void panelDiesWithRowsOnTheirWay();
};

void tst_NVHistoryPanel::cleanup()
{
    KXResource::UseTheme(KXResource::LightTheme);
}

void tst_NVHistoryPanel::formIsAsStated()
{
    const Host host(1);

    QCOMPARE(host.panel->Content()->objectName(), QString("HistoryViewer"));
    QCOMPARE(host.panel->windowTitle(), QString("History"));
    QCOMPARE(host.panel->GetTitlePosition(), KXPanel::TitleTop);
    QCOMPARE(host.panel->windowFlags() & ~Qt::WindowType_Mask,
             KXPanel(nullptr, KXPanel::TitleTop).windowFlags() & ~Qt::WindowType_Mask);
    const auto* grid = qobject_cast<QGridLayout*>(host.panel->Content()->layout());
    QVERIFY(grid);
    QCOMPARE(grid->contentsMargins(), QMargins());
    QCOMPARE(grid->itemAtPosition(0, 0)->widget(), host.Area());
    QCOMPARE(host.Area()->frameShape(), QFrame::NoFrame);
    QCOMPARE(host.Area()->frameShadow(), QFrame::Plain);
    QVERIFY(!host.Area()->widgetResizable());
    QCOMPARE(host.Grid()->spacing(), 0);
    QCOMPARE(host.Grid()->contentsMargins(), QMargins());
    QCOMPARE(host.Container()->parentWidget(), host.Viewport());
}

void tst_NVHistoryPanel::startsEmpty()
{
    const Host host;

    QCOMPARE(host.panel->Count(), 0);
    QCOMPARE(host.panel->GetSelectedIndex(), -1);
    QCOMPARE(host.Container()->height(), 0);
}

void tst_NVHistoryPanel::addedRowStandsAtTheBottom()
{
    const Host host;
    QVERIFY(host.Show());

    host.panel->AddItem("Open", Picture(Qt::red));
    host.panel->AddItem("Brush stroke", Picture(Qt::blue));

    QCOMPARE(host.panel->Count(), 2);
    QCOMPARE(host.Text(0), QString("Open"));
    QCOMPARE(host.Text(1), QString("Brush stroke"));
    QCOMPARE(host.Icon(1)->pixmap(Qt::ReturnByValue).toImage().pixelColor(3, 3), QColor(Qt::blue));
    QCOMPARE(host.Row(1)->parentWidget(), host.Container());
    QCOMPARE(host.Row(0)->geometry(), QRect(0, 0, host.Viewport()->width(), 24));
    QCOMPARE(host.Row(1)->geometry(), QRect(0, 24, host.Viewport()->width(), 24));
    QCOMPARE(host.Container()->height(), 48);
    QTRY_VERIFY(host.Row(1)->isVisible());
}

void tst_NVHistoryPanel::addingChangesNeitherSelectionNorPlace()
{
    const Host host(20);
    QVERIFY(host.Show());
    host.panel->SetSelected(3);
    host.Bar()->setValue(37);
    SignalLog log(host.panel);

    host.Add(3);
    QCoreApplication::processEvents();

    QCOMPARE(host.States(), QString("EEESDDDDDDDDDDDDDDDD") + "EEE");
    QCOMPARE(host.Bar()->value(), 37);
    QCOMPARE(log.Entries(), QStringList());
}

void tst_NVHistoryPanel::rowsAreAsHighAsTheFirstEverAdded()
{
    const Host host;
    QVERIFY(host.Show());
    host.panel->AddItem("one\ntwo\nthree\nfour", Picture());
    const int high = host.Row(0)->sizeHint().height();
    QVERIFY(high > 30);

    host.panel->AddItem("plain", Picture());
    QCOMPARE(host.Row(1)->geometry(), QRect(0, high, host.Viewport()->width(), high));

    host.panel->Clear();
    host.panel->AddItem("plain", Picture());
    QCOMPARE(host.Row(0)->height(), high);
    QCOMPARE(host.Container()->height(), high);
}

void tst_NVHistoryPanel::rowsAddedUnshownAreAllThere()
{
    const Host host(3);
    QCOMPARE(host.Container()->height(), 72);

    QVERIFY(host.Show());
    host.panel->hide();
    host.panel->Remove(1);
    host.Add(2);
    host.panel->show();

    for (int i = 0; i < 3; ++i)
        QCOMPARE(host.Row(i)->geometry(), QRect(0, 24 * i, host.Viewport()->width(), 24));
    QTRY_VERIFY(host.Row(2)->isVisible());
}

void tst_NVHistoryPanel::containerIsAsWideAsTheViewport()
{
    const Host host(2);
    QVERIFY(host.Show());
    QCOMPARE(host.Container()->width(), host.Viewport()->width());

    host.panel->resize(350, 100);
    QTRY_COMPARE(host.Viewport()->width(), 350);

    QCOMPARE(host.Container()->width(), 350);
    QCOMPARE(host.Row(0)->width(), 350);
    QCOMPARE(host.Row(1)->geometry(), QRect(0, 24, 350, 24));
}

void tst_NVHistoryPanel::resizingNeverChangesTheHeight()
{
    const Host host(5);
    QVERIFY(host.Show());

    for (const QSize size : {QSize(200, 400), QSize(120, 80), QSize(300, 90)})
    {
        host.panel->resize(size);
        QTRY_COMPARE(host.panel->size(), size);
        QCOMPARE(host.Container()->height(), 120);
        QCOMPARE(host.Container()->width(), host.Viewport()->width());
        QCOMPARE(host.Row(4)->geometry(), QRect(0, 96, host.Viewport()->width(), 24));
    }
}

void tst_NVHistoryPanel::scrollBarComesWithoutAHorizontalOne()
{
    const Host host(3);
    QVERIFY(host.Show());
    QVERIFY(!host.Bar()->isVisible());

    host.Add(3);

    QTRY_VERIFY(host.Bar()->isVisible());
    QCOMPARE(host.Bar()->maximum(), 6 * 24 - host.Viewport()->height());
    QVERIFY(!host.Area()->horizontalScrollBar()->isVisible());
    QCOMPARE(host.Row(0)->width(), host.Viewport()->width());
}

void tst_NVHistoryPanel::removeTruncatesAtOnce()
{
    const Host host(5);

    host.panel->Remove(2);

    QCOMPARE(host.panel->Count(), 2);
    QCOMPARE(host.Grid()->count(), 2);
    QCOMPARE(host.Text(0) + host.Text(1), QString("01"));
    QVERIFY(!host.Grid()->itemAtPosition(2, 0));
    QCOMPARE(host.Container()->height(), 48);
}

void tst_NVHistoryPanel::removedRowsAreHiddenAndDieLater()
{
    const Host host(5);
    QVERIFY(host.Show());
    const QPointer<NVHistoryItem> kept = host.Row(1);
    const QPointer<NVHistoryItem> removed = host.Row(2);

    host.panel->Remove(2);
    QVERIFY(removed);
    QVERIFY(removed->isHidden());
    QCOMPARE(host.Container()->findChildren<NVHistoryItem*>().size(), 5);

    RunDeferredDeletes();
    QVERIFY(!removed);
    QVERIFY(kept);
    QVERIFY(kept->isVisible());
    QCOMPARE(host.Container()->findChildren<NVHistoryItem*>().size(), 2);
}

void tst_NVHistoryPanel::removeBehindTheEndRemovesNothing_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("behind the last") << 5;
    QTest::newRow("far behind") << 5000;
    QTest::newRow("largest") << std::numeric_limits<int>::max();
}

void tst_NVHistoryPanel::removeBehindTheEndRemovesNothing()
{
    QFETCH(int, index);
    const Host host(5);
    host.Container()->resize(200, 7);

    host.panel->Remove(index);

    QCOMPARE(host.panel->Count(), 5);
    // The container is fitted all the same.
    QCOMPARE(host.Container()->height(), 120);
}

void tst_NVHistoryPanel::removeBeforeTheFirstRowRemovesAll()
{
    const Host host(5);

    host.panel->Remove(std::numeric_limits<int>::min());

    QCOMPARE(host.panel->Count(), 0);
    QCOMPARE(host.Grid()->count(), 0);
}

void tst_NVHistoryPanel::clearRemovesAllAndRowsMayCome()
{
    const Host host(5);
    QVERIFY(host.Show());

    host.panel->Clear();
    QCOMPARE(host.panel->Count(), 0);
    QCOMPARE(host.Container()->height(), 0);
    QCOMPARE(host.panel->GetSelectedIndex(), -1);
    host.panel->Clear();

    host.Add(2);
    QCOMPARE(host.Text(0) + host.Text(1), QString("01"));
    QCOMPARE(host.Row(1)->geometry(), QRect(0, 24, host.Viewport()->width(), 24));
}

void tst_NVHistoryPanel::rowThatWentByItselfIsPassedOver()
{
    const Host host(5);
    QVERIFY(host.Show());
    delete host.Row(1);
    QVERIFY(!host.Row(1));

    host.panel->SetSelected(2);
    QCOMPARE(host.panel->GetSelectedIndex(), 2);
    QVERIFY(host.Row(2)->IsSelected());
    QVERIFY(!host.Row(3)->IsEnabled());
    host.panel->EnableActions(true);
    SignalLog log(host.panel);
    host.Click(3);
    QCOMPARE(log.Entries(), QStringList({"IndexActivated(3)"}));

    // The row that is gone still counts.
    host.panel->Remove(1);
    QCOMPARE(host.panel->Count(), 2);
    QCOMPARE(host.Grid()->count(), 1);
    QCOMPARE(host.Container()->height(), 48);
    host.Add(1);
    QCOMPARE(host.Row(2)->geometry(), QRect(0, 48, host.Viewport()->width(), 24));
}

void tst_NVHistoryPanel::rowsBelowThePresentStateAreDisabled()
{
    const Host host(5);

    host.panel->SetSelected(2);

    QCOMPARE(host.States(), QString("EESDD"));
    for (int i = 0; i < 5; ++i)
    {
        QCOMPARE(host.Row(i)->IsEnabled(), i <= 2);
        QCOMPARE(host.Icon(i)->isEnabled(), i <= 2);
    }
    QCOMPARE(host.panel->GetSelectedIndex(), 2);

    host.panel->SetSelected(3);
    QCOMPARE(host.States(), QString("EEESD"));
    host.panel->SetSelected(0);
    QCOMPARE(host.States(), QString("SDDDD"));
}

void tst_NVHistoryPanel::selectionTakesTheSheets()
{
    const Host host(3);

    host.panel->SetSelected(1);

    QCOMPARE(host.Row(0)->styleSheet(), Sheet(56));
    QCOMPARE(host.Row(1)->styleSheet(), Sheet(54));
    QCOMPARE(host.Row(2)->styleSheet(), Sheet(58));
}

void tst_NVHistoryPanel::selectionOutsideOfTheRows_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("states");
    QTest::newRow("none") << -1 << "DDD";
    QTest::newRow("lowest") << std::numeric_limits<int>::min() << "DDD";
    QTest::newRow("behind the last") << 3 << "EEE";
    QTest::newRow("largest") << std::numeric_limits<int>::max() << "EEE";
}

void tst_NVHistoryPanel::selectionOutsideOfTheRows()
{
    QFETCH(int, index);
    QFETCH(QString, states);
    const Host host(3);
    host.panel->SetSelected(1);

    host.panel->SetSelected(index);

    QCOMPARE(host.States(), states);
    QCOMPARE(host.panel->GetSelectedIndex(), -1);
}

void tst_NVHistoryPanel::selectionOnAnEmptyListIsHarmless()
{
    const Host host;

    host.panel->SetSelected(-1);
    host.panel->SetSelected(0);
    host.panel->EnsureVisible(-1);
    host.panel->Remove(0);

    QCOMPARE(host.panel->Count(), 0);
    QCOMPARE(host.panel->GetSelectedIndex(), -1);
}

void tst_NVHistoryPanel::selectedIndexIsTheFirst()
{
    const Host host(4);
    host.Row(2)->SetSelected(true);
    QCOMPARE(host.panel->GetSelectedIndex(), 2);

    host.Row(1)->SetSelected(true);
    QCOMPARE(host.panel->GetSelectedIndex(), 1);
}

void tst_NVHistoryPanel::ensureVisibleScrollsNoFartherThanNeeded()
{
    const Host host(20);
    QVERIFY(host.Show());
    const int height = host.Viewport()->height();
    QCOMPARE(height, 100);

    host.panel->EnsureVisible(3);
    QCOMPARE(host.Bar()->value(), 0);
    host.panel->EnsureVisible(4);
    QCOMPARE(host.Bar()->value(), 5 * 24 - height);
    host.panel->EnsureVisible(10);
    QCOMPARE(host.Bar()->value(), 11 * 24 - height);
    // 164 to 264 are in view, which is all of row 7 but not of row 6.
    host.panel->EnsureVisible(7);
    QCOMPARE(host.Bar()->value(), 164);
    host.panel->EnsureVisible(6);
    QCOMPARE(host.Bar()->value(), 6 * 24);
    host.panel->EnsureVisible(0);
    QCOMPARE(host.Bar()->value(), 0);
    host.panel->EnsureVisible(19);
    QCOMPARE(host.Bar()->value(), host.Bar()->maximum());
}

void tst_NVHistoryPanel::ensureVisibleIgnoresWhatIsNotThere()
{
    const Host host(20);
    QVERIFY(host.Show());
    host.Bar()->setValue(100);

    host.panel->EnsureVisible(20);
    host.panel->EnsureVisible(std::numeric_limits<int>::max());

    QCOMPARE(host.Bar()->value(), 100);
}

void tst_NVHistoryPanel::ensureVisibleMeasuresTheContainer()
{
    const Host host(20);
    QVERIFY(host.Show());
    // 30 for each of the rows, and a rest that is lost.
    host.Container()->resize(host.Container()->width(), 20 * 30 + 19);

    host.panel->EnsureVisible(10);

    QCOMPARE(host.Bar()->value(), 11 * 30 - 100);
}

void tst_NVHistoryPanel::rowThatIsHigherThanTheViewShowsItsEnd()
{
    const Host host(5);
    QVERIFY(host.Show());
    host.Area()->setFixedHeight(10);
    QTRY_COMPARE(host.Viewport()->height(), 10);
    const int height = host.Row(0)->height();
    QVERIFY(height > 10);

    host.panel->EnsureVisible(0);
    QCOMPARE(host.Bar()->value(), height - 10);

    host.panel->EnsureVisible(0);
    QCOMPARE(host.Bar()->value(), 0);
}

void tst_NVHistoryPanel::ensureVisibleBearsAnyIndex()
{
    const Host host(20);
    QVERIFY(host.Show());
    for (const int index : {-1, -100000000, std::numeric_limits<int>::min()})
    {
        host.Bar()->setValue(100);
        host.panel->EnsureVisible(index);
        QCOMPARE(host.Bar()->value(), 0);
    }
}

void tst_NVHistoryPanel::selectingScrollsToTheRow()
{
    const Host host(20);
    QVERIFY(host.Show());

    host.panel->SetSelected(15);
    QCOMPARE(host.Bar()->value(), 16 * 24 - 100);
    host.panel->SetSelected(-1);
    QCOMPARE(host.Bar()->value(), 0);

    // A row that was added in this turn is within reach already.
    host.Add(1);
    host.panel->SetSelected(20);
    QCOMPARE(host.Bar()->value(), 21 * 24 - 100);
}

void tst_NVHistoryPanel::clickActivatesTheRow()
{
    const Host host(3);
    host.panel->EnableActions(true);
    QVERIFY(host.Show());
    SignalLog log(host.panel);

    host.Press(host.PlaceOf(1));
    QCOMPARE(log.Entries(), QStringList());
    host.Release(host.PlaceOf(1) + QPoint(40, 5));
    QCOMPARE(log.Entries(), QStringList({"IndexActivated(1)"}));
    host.Click(1);
    host.Click(0);

    QCOMPARE(log.Entries(), QStringList({"IndexActivated(1)", "IndexActivated(1)", "IndexActivated(0)"}));
}

void tst_NVHistoryPanel::clickOnADisabledRowActivatesIt()
{
    const Host host(3);
    host.panel->EnableActions(true);
    host.panel->SetSelected(0);
    QVERIFY(host.Show());
    SignalLog log(host.panel);

    host.Click(2);

    QCOMPARE(log.Entries(), QStringList({"IndexActivated(2)"}));
}

void tst_NVHistoryPanel::clickChangesNothingInThePanel()
{
    const Host host(3);
    host.panel->EnableActions(true);
    host.panel->SetSelected(1);
    QVERIFY(host.Show());

    host.Click(2);

    QCOMPARE(host.States(), QString("ESD"));
    QCOMPARE(host.panel->GetSelectedIndex(), 1);
}

void tst_NVHistoryPanel::clickOnThePictureCounts()
{
    const Host host(3);
    host.panel->EnableActions(true);
    QVERIFY(host.Show());
    SignalLog log(host.panel);

    QTest::mouseClick(host.Icon(1), Qt::LeftButton);
    QTest::mouseClick(host.Row(2), Qt::LeftButton, {}, QPoint(199, 23));

    QCOMPARE(log.Entries(), QStringList({"IndexActivated(1)", "IndexActivated(2)"}));
}

void tst_NVHistoryPanel::clickOnAScrolledRowCounts()
{
    const Host host(1000);
    host.panel->EnableActions(true);
    QVERIFY(host.Show());
    host.panel->EnsureVisible(777);
    SignalLog log(host.panel);

    host.Click(777);
    host.Click(775);

    QCOMPARE(log.Entries(), QStringList({"IndexActivated(777)", "IndexActivated(775)"}));
}

void tst_NVHistoryPanel::clicksAreIgnoredUntilEnabled()
{
    const Host host(3);
    QVERIFY(host.Show());
    SignalLog log(host.panel);
    host.Click(1);
    QCOMPARE(log.Entries(), QStringList());

    host.panel->EnableActions(true);
    host.Click(1);
    QCOMPARE(log.Count(), 1);

    host.panel->EnableActions(false);
    host.Click(1);
    QCOMPARE(log.Count(), 1);
}

void tst_NVHistoryPanel::otherButtonsAreIgnored()
{
    const Host host(3);
    host.panel->EnableActions(true);
    QVERIFY(host.Show());
    SignalLog log(host.panel);
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton})
    {
        host.Press(host.PlaceOf(1), button);
        host.Release(host.PlaceOf(1), button);
    }
    QCOMPARE(log.Entries(), QStringList());

    // Nor do they disturb a press of the left one.
    host.Press(host.PlaceOf(1));
    host.Press(host.PlaceOf(2), Qt::RightButton);
    host.SendRelease(host.PlaceOf(1), Qt::RightButton);
    host.Release(host.PlaceOf(1));
    QCOMPARE(log.Entries(), QStringList({"IndexActivated(1)"}));
}

void tst_NVHistoryPanel::releaseOfAnotherButtonIsNoClick()
{
    const Host host(3);
    QVERIFY(host.Show());
    host.panel->EnableActions(true);
    SignalLog log(host.panel);
    host.Press(host.PlaceOf(1));

    host.SendRelease(host.PlaceOf(1), Qt::RightButton);
    QCOMPARE(log.Count("IndexActivated"), 0);
    host.Release(host.PlaceOf(1));

    QCOMPARE(log.Entries(), QStringList("IndexActivated(1)"));
}

void tst_NVHistoryPanel::pressAndReleaseOnDifferentRowsIsNoClick()
{
    const Host host(3);
    host.panel->EnableActions(true);
    QVERIFY(host.Show());
    SignalLog log(host.panel);

    host.Press(host.PlaceOf(1));
    host.Release(host.PlaceOf(2));
    host.Press(host.PlaceOf(2));
    host.Release(host.PlaceOf(0));

    QCOMPARE(log.Entries(), QStringList());
}

void tst_NVHistoryPanel::releaseForgetsThePressedRow()
{
    const Host host(3);
    host.panel->EnableActions(true);
    QVERIFY(host.Show());
    SignalLog log(host.panel);

    host.Press(host.PlaceOf(1));
    host.Release(host.PlaceOf(2));
    host.SendRelease(host.PlaceOf(1));
    QCOMPARE(log.Entries(), QStringList());

    host.Click(1);
    host.SendRelease(host.PlaceOf(1));
    QCOMPARE(log.Entries(), QStringList({"IndexActivated(1)"}));
}

void tst_NVHistoryPanel::pressBelowTheRowsIsNoClick()
{
    const Host host(2);
    host.panel->EnableActions(true);
    QVERIFY(host.Show());
    SignalLog log(host.panel);
    const QPoint below = host.PlaceOf(1) + QPoint(0, 30);

    host.Press(below);
    host.Release(below);
    host.Press(host.PlaceOf(1));
    host.Release(below);
    host.SendRelease(host.PlaceOf(1));
    // A press beside the rows forgets an earlier one.
    host.Press(host.PlaceOf(1));
    host.SendRelease(QPoint(-50, -50));
    host.Press(below);
    host.Release(host.PlaceOf(1));

    QCOMPARE(log.Entries(), QStringList());
}

void tst_NVHistoryPanel::releaseOutsideKeepsThePressedRow()
{
    const Host host(3);
    host.panel->EnableActions(true);
    QVERIFY(host.Show());
    SignalLog log(host.panel);

    host.Press(host.PlaceOf(1));
    host.SendRelease(QPoint(60, 150));
    QCOMPARE(log.Entries(), QStringList());
    host.SendRelease(host.PlaceOf(1));

    QCOMPARE(log.Entries(), QStringList({"IndexActivated(1)"}));
}

void tst_NVHistoryPanel::disabledActionsLeaveThePressedRow()
{
    const Host host(3);
    host.panel->EnableActions(true);
    QVERIFY(host.Show());
    SignalLog log(host.panel);

    host.Press(host.PlaceOf(1));
    host.panel->EnableActions(false);
    host.Release(host.PlaceOf(1));
    host.Press(host.PlaceOf(2));
    host.Release(host.PlaceOf(2));
    QCOMPARE(log.Entries(), QStringList());
    host.panel->EnableActions(true);
    host.SendRelease(host.PlaceOf(1));

    QCOMPARE(log.Entries(), QStringList({"IndexActivated(1)"}));
}

void tst_NVHistoryPanel::doubleClickActivatesTwice()
{
    const Host host(3);
    host.panel->EnableActions(true);
    QVERIFY(host.Show());
    SignalLog log(host.panel);

    host.Click(1);
    QTest::mouseDClick(host.panel->windowHandle(), Qt::LeftButton, {}, host.PlaceOf(2));

    QCOMPARE(log.Arguments(0), QVariantList({1}));
    QCOMPARE(log.Entries().mid(1), QStringList({"IndexActivated(2)", "IndexActivated(2)"}));
}

void tst_NVHistoryPanel::pressAndReleaseStopAtThePanel()
{
    QWidget window;
    window.resize(300, 200);
    const Host host(2, &window);
    EventCount presses(QEvent::MouseButtonPress);
    EventCount releases(QEvent::MouseButtonRelease);
    presses.Watch(&window);
    releases.Watch(&window);
    presses.Watch(host.panel);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));

    QTest::mouseClick(host.Row(1), Qt::LeftButton);
    host.panel->EnableActions(true);
    QTest::mouseClick(host.Row(1), Qt::LeftButton);

    QCOMPARE(presses.seen, QList<QObject*>({host.panel, host.panel}));
    QCOMPARE(releases.seen.size(), 0);
}

// Which closes a popup at a press beside it.
void tst_NVHistoryPanel::pressGoesOnToTheToolkit()
{
    const Host host(2);
    host.panel->setWindowFlags(Qt::Popup);
    host.panel->show();
    QVERIFY(QTest::qWaitForWindowExposed(host.panel));

    QMouseEvent press(QEvent::MouseButtonPress, QPointF(-20, -20), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(host.panel, &press);

    QVERIFY(!host.panel->isVisible());
}

void tst_NVHistoryPanel::newRowIgnoresThePointerUntilTheLoopHasRun()
{
    const Host host(1);
    QVERIFY(host.Show());

    host.Add(1);
    QVERIFY(!host.Row(1)->testAttribute(Qt::WA_Hover));
    QCoreApplication::processEvents();
    QVERIFY(host.Row(1)->testAttribute(Qt::WA_Hover));

    QTest::mouseMove(host.panel, host.PlaceOf(1));
    QTRY_COMPARE(host.Row(1)->styleSheet(), Sheet(57));
}

void tst_NVHistoryPanel::hoveredSelectedRowTakesItsSheet()
{
    const Host host(3);
    QVERIFY(host.Show());
    host.panel->SetSelected(1);

    QTest::mouseMove(host.panel, host.PlaceOf(1));
    QTRY_COMPARE(host.Row(1)->styleSheet(), Sheet(55));
    QTest::mouseMove(host.panel, host.PlaceOf(2));
    QTRY_COMPARE(host.Row(2)->styleSheet(), Sheet(59));
    QCOMPARE(host.Row(1)->styleSheet(), Sheet(54));
    QTest::mouseMove(host.panel, host.PlaceOf(0));
    QTRY_COMPARE(host.Row(0)->styleSheet(), Sheet(57));
    QCOMPARE(host.Row(2)->styleSheet(), Sheet(58));
}

void tst_NVHistoryPanel::removedRowUnderThePointerIsHarmless()
{
    const Host host(3);
    QVERIFY(host.Show());
    QTest::mouseMove(host.panel, host.PlaceOf(1));
    QTRY_COMPARE(host.Row(1)->styleSheet(), Sheet(57));
    const QPointer<NVHistoryItem> removed = host.Row(1);

    host.panel->Remove(1);
    QCOMPARE(removed->styleSheet(), Sheet(56));
    RunDeferredDeletes();
    QTest::mouseMove(host.panel, host.PlaceOf(0));

    QVERIFY(!removed);
    QTRY_COMPARE(host.Row(0)->styleSheet(), Sheet(57));
}

void tst_NVHistoryPanel::newRowIsStyledOnce()
{
    const Host host(1);
    QVERIFY(host.Show());
    host.Add(1);
    EventCount styles(QEvent::StyleChange);
    styles.Watch(host.Row(1));

    // The sheet stands before the row is shown, and no other follows.
    QCOMPARE(host.Row(1)->styleSheet(), Sheet(56));
    QCoreApplication::processEvents();
    QVERIFY(host.Row(1)->isVisible());

    QCOMPARE(styles.seen.size(), 0);
}

void tst_NVHistoryPanel::eachChangedRowIsStyledOnce()
{
    const Host host(100);
    QVERIFY(host.Show());
    EventCount styles(QEvent::StyleChange);
    styles.WatchRows(host);

    host.panel->SetSelected(99);
    QCOMPARE(styles.seen, QList<QObject*>({host.Row(99)}));
    styles.seen.clear();

    host.panel->SetSelected(98);
    QCOMPARE(styles.seen, QList<QObject*>({host.Row(98), host.Row(99)}));
    styles.seen.clear();

    host.panel->SetSelected(98);
    QCOMPARE(styles.seen.size(), 0);

    // Row 99 is as it is to be.
    host.panel->SetSelected(0);
    QCOMPARE(styles.seen.size(), 99);
    QCOMPARE(QSet<QObject*>(styles.seen.cbegin(), styles.seen.cend()).size(), 99);
}

void tst_NVHistoryPanel::clearStylesNothing()
{
    const Host host(100);
    QVERIFY(host.Show());
    host.panel->SetSelected(50);
    EventCount styles(QEvent::StyleChange);
    styles.WatchRows(host);

    host.panel->Clear();
    QCoreApplication::processEvents();

    QCOMPARE(styles.seen.size(), 0);
}

void tst_NVHistoryPanel::addedRowMovesNoOther()
{
    const Host host(100);
    QVERIFY(host.Show());
    EventCount moves(QEvent::Move);
    EventCount sizes(QEvent::Resize);
    moves.WatchRows(host);
    sizes.WatchRows(host);

    for (int i = 0; i < 10; ++i)
    {
        host.Add(1);
        QCoreApplication::processEvents();
    }
    host.panel->SetSelected(50);
    QCoreApplication::processEvents();

    QCOMPARE(moves.seen.size(), 0);
    QCOMPARE(sizes.seen.size(), 0);
}

// The toolkit goes over all rows each time.
void tst_NVHistoryPanel::containerIsNeverAskedToLayOut()
{
    const Host host(10);
    QVERIFY(host.Show());
    EventCount requests(QEvent::LayoutRequest);
    requests.Watch(host.Container());

    host.Add(100);
    QCoreApplication::processEvents();
    host.panel->SetSelected(3);
    QCoreApplication::processEvents();
    host.panel->Remove(50);
    QCoreApplication::processEvents();

    QCOMPARE(requests.seen.size(), 0);
    QCOMPARE(host.Row(49)->geometry(), QRect(0, 49 * 24, host.Viewport()->width(), 24));
}

void tst_NVHistoryPanel::stepPaintsTheChangedRowsOnly()
{
    const Host host(100);
    QVERIFY(host.Show());
    host.panel->SetSelected(99);
    QCoreApplication::processEvents();
    EventCount paints(QEvent::Paint);
    paints.WatchRows(host);

    host.panel->SetSelected(98);
    QTRY_VERIFY(!paints.seen.isEmpty());
    QCoreApplication::processEvents();

    const QSet<QObject*> painted(paints.seen.cbegin(), paints.seen.cend());
    QCOMPARE(painted, QSet<QObject*>({host.Row(98), host.Row(99)}));
    QVERIFY(paints.seen.size() <= 4);
}

void tst_NVHistoryPanel::thousandRowsStandInTheirPlaces()
{
    const Host host(1000);
    QVERIFY(host.Show());
    const int width = host.Viewport()->width();

    QCOMPARE(host.panel->Count(), 1000);
    QCOMPARE(host.Container()->size(), QSize(width, 24000));
    for (int i = 0; i < 1000; ++i)
    {
        QCOMPARE(host.Row(i)->geometry(), QRect(0, 24 * i, width, 24));
        QVERIFY(host.Row(i)->isVisible());
    }
    host.panel->SetSelected(999);
    QCOMPARE(host.Bar()->value(), host.Bar()->maximum());
    host.panel->SetSelected(500);
    QCOMPARE(host.States(), QString(500, 'E') + 'S' + QString(499, 'D'));
    host.panel->Remove(10);
    QCOMPARE(host.Container()->height(), 240);
}

void tst_NVHistoryPanel::randomSequencesMatchAPlainList_data()
{
    QTest::addColumn<int>("seed");
    for (int seed = 1; seed <= 10; ++seed)
        QTest::addRow("seed %d", seed) << seed;
}

void tst_NVHistoryPanel::randomSequencesMatchAPlainList()
{
    QFETCH(int, seed);
    std::mt19937 random(static_cast<unsigned>(seed));
    const auto pick = [&random](int below)
    { return static_cast<int>(random() % static_cast<unsigned>(below)); };
    const Host host;
    host.panel->EnableActions(true);
    QVERIFY(host.Show());
    SignalLog log(host.panel);
    QStringList texts;
    QString states;
    int next = 0;
    for (int step = 0; step < 150; ++step)
    {
        const int index = pick(texts.size() + 3) - 1;
        const int action = pick(8);
        if (action < 3)
        {
            texts.append(QString::number(next++));
            states.append('E');
            host.panel->AddItem(texts.last(), Picture());
        }
        else if (action == 3)
        {
            texts = texts.mid(0, qMax(index, 0));
            states = states.left(qMax(index, 0));
            host.panel->Remove(index);
        }
        else if (action < 6)
        {
            for (int i = 0; i < states.size(); ++i)
                states[i] = i < index ? 'E' : i == index ? 'S' : 'D';
            host.panel->SetSelected(index);
        }
        else if (action == 6 && index >= 0 && index < texts.size())
        {
            // A new row is shown when the event loop has run.
            QCoreApplication::processEvents();
            host.panel->EnsureVisible(index);
            log.Clear();
            host.Click(index);
            QCOMPARE(log.Entries(), QStringList({QString("IndexActivated(%1)").arg(index)}));
        }
        else
        {
            host.panel->resize(150 + pick(100), 60 + pick(200));
            QCoreApplication::processEvents();
        }

        QCOMPARE(host.panel->Count(), texts.size());
        QCOMPARE(host.States(), states);
        QCOMPARE(host.panel->GetSelectedIndex(), states.indexOf('S'));
        QCOMPARE(host.Container()->size(), QSize(host.Viewport()->width(), 24 * texts.size()));
        for (int i = 0; i < texts.size(); ++i)
        {
            QCOMPARE(host.Text(i), texts.at(i));
            QCOMPARE(host.Row(i)->geometry(), QRect(0, 24 * i, host.Viewport()->width(), 24));
        }
    }
}

void tst_NVHistoryPanel::rowsStandOnADenseScreen()
{
    if (!IsOnDenseScreen())
        return;
    const Host host(20);
    host.panel->EnableActions(true);
    QVERIFY(host.Show());
    host.panel->SetSelected(10);
    SignalLog log(host.panel);

    host.Click(9);

    QCOMPARE(log.Entries(), QStringList({"IndexActivated(9)"}));
    QCOMPARE(host.Bar()->value(), 11 * 24 - 100);
    const QImage drawn = host.Row(10)->grab().toImage();
    QCOMPARE(drawn.size(), host.Row(10)->size() * 2);
    QCOMPARE(drawn.pixelColor(drawn.width() - 5, 24), host.panel->palette().color(QPalette::Highlight));
    QCOMPARE(drawn.pixelColor(drawn.width() - 1, 0), host.panel->palette().color(QPalette::Highlight));
}

void tst_NVHistoryPanel::diesInItsOwnSignal()
{
    const Host host(3);
    host.panel->EnableActions(true);
    QVERIFY(host.Show());
    connect(host.panel, &NVHistoryPanel::IndexActivated, this, [&host] { delete host.panel; });

    host.SendRelease(host.PlaceOf(1));
    QVERIFY(host.panel);
    host.Press(host.PlaceOf(1));
    host.SendRelease(host.PlaceOf(1));

    QVERIFY(!host.panel);
}

void tst_NVHistoryPanel::diesWhileARowIsHovered()
{
    const Host host(3);
    QVERIFY(host.Show());
    QTest::mouseMove(host.panel, host.PlaceOf(1));
    QTRY_COMPARE(host.Row(1)->styleSheet(), Sheet(57));

    delete host.panel;
    QCoreApplication::processEvents();

    QVERIFY(!host.panel);
}

void tst_NVHistoryPanel::diesWhileARowIsPressed()
{
    QWidget window;
    window.resize(300, 200);
    const Host host(3, &window);
    host.panel->EnableActions(true);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    const QPoint place = host.Row(1)->mapTo(&window, QPoint(60, 12));

    QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, place);
    delete host.panel;
    QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, place);

    QVERIFY(!host.panel);
}

void tst_NVHistoryPanel::rowRemovedWhilePressedIsNoClick()
{
    const Host host(3);
    host.panel->EnableActions(true);
    QVERIFY(host.Show());
    SignalLog log(host.panel);
    const QPoint place = host.PlaceOf(2);

    host.Press(place);
    host.panel->Remove(2);
    RunDeferredDeletes();
    host.Release(place);

    QCOMPARE(log.Entries(), QStringList());
    host.Click(1);
    QCOMPARE(log.Entries(), QStringList({"IndexActivated(1)"}));
}

void tst_NVHistoryPanel::panelDiesWithRowsOnTheirWay()
{
    auto host = std::make_unique<Host>(3);
    QVERIFY(host->Show());
    host->Add(3);
    host->panel->Remove(2);

    host.reset();
    QCoreApplication::processEvents();
    RunDeferredDeletes();

    QVERIFY(!host);
}

NV_TEST_MAIN(tst_NVHistoryPanel)

#include "tst_NVHistoryPanel.moc"
