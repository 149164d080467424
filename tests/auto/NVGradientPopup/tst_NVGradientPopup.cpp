// The drop-down list of gradients: its form, its list and current row, and the editor that it runs.

#include <QDialogButtonBox>
#include <QGraphicsItem>
#include <QGraphicsView>
#include <QGridLayout>
#include <QListView>
#include <QMainWindow>
#include <QPushButton>
#include <QSpinBox>
#include <QStandardItemModel>
#include <QtTest>

#include <algorithm>
#include <memory>
#include <stdexcept>

#include "ControlNode.h"
#include "GradientStops.h"
#include "KXMdiArea.h"
#include "ModalDriver.h"
#include "NVGradientEditor.h"
#include "NVGradientItemDelegate.h"
#include "NVGradientPopup.h"
#include "SignalLog.h"
#include "TestMain.h"

using Gradient = QList<NVGradientStop>;
using GradientList = QList<Gradient>;

namespace
{

Gradient Made(const QColor& first, const QColor& last)
{
    return {NVGradientStop(0.0, first, false, false, false), NVGradientStop(1.0, last, false, false, false)};
}

const Gradient Grey = Made(Qt::black, Qt::white);
const Gradient Warm = Made(Qt::red, Qt::yellow);
const Gradient Cold = Made(Qt::blue, QColor(0, 255, 255, 0));
const Gradient Fresh = Made(Qt::darkBlue, Qt::cyan);

// A popup with three gradients.
struct Host
{
    explicit Host(const GradientList& list = {Grey, Warm, Cold}) { popup.Load(list); }
    bool Show()
    {
        popup.Popup(QPoint(50, 50));
        return QTest::qWaitForWindowActive(&popup);
    }
    QListView* List() const { return popup.findChild<QListView*>("m_pGradientList"); }
    QPushButton* Edit() const { return popup.findChild<QPushButton*>("m_pEdit"); }
    QPushButton* New() const { return popup.findChild<QPushButton*>("m_pNew"); }
    QGradientStops RowStops(int row) const
    {
        return List()->model()->index(row, 0).data(Qt::BackgroundRole).value<QBrush>().gradient()->stops();
    }
    void ClickRow(int row) const
    {
        QTest::mouseClick(List()->viewport(), Qt::LeftButton, {},
                          List()->visualRect(List()->model()->index(row, 0)).center());
    }

    NVGradientPopup popup{nullptr};
};

NVGradientEditor* EditorOf(QWidget* window)
{
    auto* editor = qobject_cast<NVGradientEditor*>(window);
    if (!editor)
        qFatal("no editor");
    return editor;
}

// By the boxes of the editor: the red of the first stop of the current gradient.
void SetRed(QWidget* editor, int value)
{
    editor->findChild<QSpinBox*>("m_pRed")->setValue(value);
}

int FirstRed(const Gradient& gradient)
{
    return gradient.first().GetColor().red();
}

} // namespace

class tst_NVGradientPopup : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void formHasItsTitleNameAndSize();
    void hasTheSizeOfTheFormThoughItsParentWasPainted();
    void controlsStandInTheirPlaces();
    void controlsTakeNoFocus();
    void listShowsRowsByTheDelegate();

    void startsWithoutGradients();
    void loadMakesTheFirstRowCurrent();
    void loadOfTheSameListBeginsAnew();
    void loadOfAnEmptyListLeavesNoRow();
    void currentIndexIsToldOnceAChange();
    void rowOutsideOfTheListClearsTheCurrentOne_data();
    void rowOutsideOfTheListClearsTheCurrentOne();
    void editIsEnabledAfterTheSignal();
    void setGradientRepaintsItsRowInSilence();
    void setGradientThrowsForABadIndex_data();
    void setGradientThrowsForABadIndex();
    void gradientOfAnyIndexIsACopyOrEmpty();
    void listsAreShared();

    void escapeHidesAndGoesOn();
    void otherKeysGoOn();

    void editRunsTheEditorOnACopy();
    void editorHasTheMainWindowForAParent();
    void newOpensOnANewGradient();
    void newGradientIsGoneWhenTheEditorIsCancelled();
    void okKeepsTheNewGradient();
    void applyThenCancelKeepsWhatWasApplied();
    void saveTellsTheRowOnceThoughItIsTheSame_data();
    void saveTellsTheRowOnceThoughItIsTheSame();
    void savingAnEmptyListTellsNoRow();
    void saveOfOthersIsIgnored();
    void currentIndexIsStillToldOnceAfterASave();
    void declaredSignalsStaySilent();

    void diesUnderItsEditor();
    void mainWindowDiesUnderTheEditor();
    void diesWhileShown();
};

void tst_NVGradientPopup::formHasItsTitleNameAndSize()
{
    const NVGradientPopup popup(nullptr);

    QCOMPARE(popup.GetContent()->objectName(), QString("GradientPopup"));
    QCOMPARE(popup.GetContent()->size(), QSize(398, 336));
    QCOMPARE(popup.windowTitle(), QString("Gradient tool"));
    QCOMPARE(popup.windowOpacity(), 1.0);
}

void tst_NVGradientPopup::hasTheSizeOfTheFormThoughItsParentWasPainted()
{
    QWidget parent;
    NVGradientPopup popup(&parent);
    parent.show();
    QVERIFY(QTest::qWaitForWindowActive(&parent));
    const QPixmap picture = parent.grab();

    popup.Popup(QPoint(50, 50));

    QVERIFY(!picture.isNull());
    QCOMPARE(popup.GetContent()->size(), QSize(398, 336));
    QCOMPARE(popup.size(), QSize(400, 338));
}

void tst_NVGradientPopup::controlsStandInTheirPlaces()
{
    const Host host;
    const auto* grid = qobject_cast<QGridLayout*>(host.popup.GetContent()->layout());

    QVERIFY(grid);
    for (int column = 0; column < 3; ++column)
        QCOMPARE(grid->itemAtPosition(0, column)->widget(), host.List());
    QCOMPARE(grid->itemAtPosition(1, 0)->widget(), host.Edit());
    QVERIFY(grid->itemAtPosition(1, 1)->spacerItem());
    QCOMPARE(grid->itemAtPosition(1, 2)->widget(), host.New());
    QCOMPARE(host.Edit()->text(), QString("Edit"));
    QCOMPARE(host.New()->text(), QString("New"));
    QCOMPARE(host.Edit()->toolTip() + host.New()->toolTip(), QString());
}

void tst_NVGradientPopup::controlsTakeNoFocus()
{
    const Host host;

    QCOMPARE(host.List()->focusPolicy(), Qt::NoFocus);
    QCOMPARE(host.Edit()->focusPolicy(), Qt::NoFocus);
    QCOMPARE(host.New()->focusPolicy(), Qt::NoFocus);
    QCOMPARE(host.List()->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    QCOMPARE(host.List()->editTriggers(), QAbstractItemView::NoEditTriggers);
    QVERIFY(!host.List()->testAttribute(Qt::WA_MacShowFocusRect));
}

void tst_NVGradientPopup::listShowsRowsByTheDelegate()
{
    const Host host;

    QVERIFY(qobject_cast<NVGradientItemDelegate*>(host.List()->itemDelegate()));
    QCOMPARE(host.List()->itemDelegate()->parent(), host.List());
    const auto* rows = qobject_cast<QStandardItemModel*>(host.List()->model());
    QVERIFY(rows);
    QCOMPARE(rows->parent(), host.List());
    QCOMPARE(rows->columnCount(), 1);
    QCOMPARE(rows->rowCount(), 3);
    QCOMPARE(host.RowStops(1), ToGradientStops(Warm));
    QCOMPARE(host.RowStops(2), ToGradientStops(Cold));
}

void tst_NVGradientPopup::startsWithoutGradients()
{
    const NVGradientPopup popup(nullptr);

    QCOMPARE(popup.GetGradientCount(), 0);
    QCOMPARE(popup.GetCurrentIndex(), -1);
    QVERIFY(!popup.findChild<QPushButton*>("m_pEdit")->isEnabled());
    QVERIFY(popup.findChild<QPushButton*>("m_pNew")->isEnabled());
}

void tst_NVGradientPopup::loadMakesTheFirstRowCurrent()
{
    NVGradientPopup popup(nullptr);
    SignalLog log(&popup);

    popup.Load({Grey, Warm});
    QCOMPARE(log.Entries(), QStringList({"CurrentIndexChanged(0)"}));
    QCOMPARE(popup.GetCurrentIndex(), 0);
    QCOMPARE(popup.GetGradientCount(), 2);
    QVERIFY(popup.findChild<QPushButton*>("m_pEdit")->isEnabled());

    popup.SetCurrentIndex(1);
    log.Clear();
    popup.Load({Cold});
    QCOMPARE(log.Entries(), QStringList({"CurrentIndexChanged(-1)", "CurrentIndexChanged(0)"}));
    QCOMPARE(popup.GetGradient(0), Cold);
}

void tst_NVGradientPopup::loadOfTheSameListBeginsAnew()
{
    const GradientList list{Grey, Warm};
    Host host(list);
    host.popup.SetCurrentIndex(1);
    QSignalSpy removed(host.List()->model(), &QAbstractItemModel::rowsRemoved);
    SignalLog log(&host.popup);

    host.popup.Load(list);

    QCOMPARE(removed.size(), 1);
    QCOMPARE(log.Entries(), QStringList({"CurrentIndexChanged(-1)", "CurrentIndexChanged(0)"}));
    QCOMPARE(host.popup.GetCurrentIndex(), 0);
    QCOMPARE(host.RowStops(1), ToGradientStops(Warm));
}

void tst_NVGradientPopup::loadOfAnEmptyListLeavesNoRow()
{
    Host host;
    SignalLog log(&host.popup);

    host.popup.Load({});
    QCOMPARE(log.Entries(), QStringList({"CurrentIndexChanged(-1)"}));
    QCOMPARE(host.List()->model()->rowCount(), 0);
    QCOMPARE(host.popup.GetCurrentIndex(), -1);
    QVERIFY(!host.Edit()->isEnabled());
    QVERIFY(host.New()->isEnabled());

    host.popup.Load({});
    QCOMPARE(log.Count(), 1);
}

void tst_NVGradientPopup::currentIndexIsToldOnceAChange()
{
    Host host;
    QVERIFY(host.Show());
    SignalLog log(&host.popup);

    host.popup.SetCurrentIndex(2);
    host.popup.SetCurrentIndex(2);
    QCOMPARE(log.Entries(), QStringList({"CurrentIndexChanged(2)"}));

    host.ClickRow(1);
    host.ClickRow(1);
    QCOMPARE(log.Entries(), QStringList({"CurrentIndexChanged(2)", "CurrentIndexChanged(1)"}));
    QCOMPARE(host.popup.GetCurrentIndex(), 1);

    host.popup.SetCurrentIndex(2);
    QCOMPARE(log.Count("CurrentIndexChanged"), 3);
}

void tst_NVGradientPopup::rowOutsideOfTheListClearsTheCurrentOne_data()
{
    QTest::addColumn<int>("row");
    QTest::newRow("none") << -1;
    QTest::newRow("count") << 3;
    QTest::newRow("least") << std::numeric_limits<int>::min();
    QTest::newRow("largest") << std::numeric_limits<int>::max();
}

void tst_NVGradientPopup::rowOutsideOfTheListClearsTheCurrentOne()
{
    QFETCH(const int, row);
    Host host;
    SignalLog log(&host.popup);

    host.popup.SetCurrentIndex(row);
    host.popup.SetCurrentIndex(row);

    QCOMPARE(log.Entries(), QStringList({"CurrentIndexChanged(-1)"}));
    QCOMPARE(host.popup.GetCurrentIndex(), -1);
    QVERIFY(!host.Edit()->isEnabled());
}

void tst_NVGradientPopup::editIsEnabledAfterTheSignal()
{
    NVGradientPopup popup(nullptr);
    const auto* edit = popup.findChild<QPushButton*>("m_pEdit");
    QList<bool> seen;
    connect(&popup, &NVGradientPopup::CurrentIndexChanged, &popup, [&] { seen << edit->isEnabled(); });

    popup.Load({Grey});
    popup.SetCurrentIndex(-1);

    QCOMPARE(seen, QList<bool>({false, true}));
    QVERIFY(!edit->isEnabled());
}

void tst_NVGradientPopup::setGradientRepaintsItsRowInSilence()
{
    Host host;
    SignalLog log(&host.popup);
    QSignalSpy painted(host.List()->model(), &QAbstractItemModel::dataChanged);

    host.popup.SetGradient(1, Cold);
    QCOMPARE(host.popup.GetGradient(1), Cold);
    QCOMPARE(host.RowStops(1), ToGradientStops(Cold));
    QCOMPARE(painted.size(), 1);
    QCOMPARE(log.Entries(), QStringList());
    QCOMPARE(host.popup.GetCurrentIndex(), 0);

    // The row's brush is set for the same gradient too.
    const auto* rows = host.List()->model();
    const_cast<QAbstractItemModel*>(rows)->setData(rows->index(1, 0), QBrush(Qt::red), Qt::BackgroundRole);
    host.popup.SetGradient(1, host.popup.GetGradient(1));
    QCOMPARE(host.RowStops(1), ToGradientStops(Cold));
}

void tst_NVGradientPopup::setGradientThrowsForABadIndex_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("below") << -1;
    QTest::newRow("count") << 3;
    QTest::newRow("largest") << std::numeric_limits<int>::max();
}

void tst_NVGradientPopup::setGradientThrowsForABadIndex()
{
    QFETCH(const int, index);
    Host host;
    QByteArray message;

    try
    {
        host.popup.SetGradient(index, Fresh);
    }
    catch (const std::out_of_range& error)
    {
        message = error.what();
    }

    QCOMPARE(message,
             "An index " + QByteArray::number(index) + " is out of range.File src/NVGradientPopup, line 141");
    QCOMPARE(host.popup.GetGradientCount(), 3);
    QCOMPARE(host.popup.GetGradient(2), Cold);
    QCOMPARE(host.RowStops(0), ToGradientStops(Grey));
}

void tst_NVGradientPopup::gradientOfAnyIndexIsACopyOrEmpty()
{
    const Host host;

    QCOMPARE(host.popup.GetGradient(1), Warm);
    QCOMPARE(host.popup.GetGradient(-1), Gradient());
    QCOMPARE(host.popup.GetGradient(3), Gradient());
}

void tst_NVGradientPopup::listsAreShared()
{
    const Gradient own = Made(Qt::green, Qt::red);
    const Host host({own});

    QVERIFY(host.popup.GetGradient(0).isSharedWith(own));
}

void tst_NVGradientPopup::escapeHidesAndGoesOn()
{
    Host host;
    QVERIFY(host.Show());
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    escape.accept();

    QCoreApplication::sendEvent(&host.popup, &escape);

    QVERIFY(!host.popup.isVisible());
    QVERIFY(!escape.isAccepted()); // the base handed it on
}

void tst_NVGradientPopup::otherKeysGoOn()
{
    Host host;
    QVERIFY(host.Show());
    for (const int key : {int(Qt::Key_A), int(Qt::Key_Return), int(Qt::Key_Down)})
    {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        event.accept();
        QCoreApplication::sendEvent(&host.popup, &event);
        QVERIFY(!event.isAccepted());
    }
    QVERIFY(host.popup.isVisible());
    QCOMPARE(host.popup.GetCurrentIndex(), 0);
}

void tst_NVGradientPopup::editRunsTheEditorOnACopy()
{
    Host host;
    QVERIFY(host.Show());
    host.popup.SetCurrentIndex(1);
    SignalLog log(&host.popup);
    QStringList seen;
    ModalDriver driver(
        [&](QWidget* window)
        {
            const NVGradientEditor* editor = EditorOf(window);
            seen << QString::number(editor->GetCurrentIndex()) << QString::number(editor->GetGradientCount());
            SetRed(window, 77);
            seen << QString::number(FirstRed(editor->GetGradient(1)))
                 << QString::number(FirstRed(host.popup.GetGradient(1)));
            ModalDriver::Press(window, "Cancel");
        });

    QTest::mouseClick(host.Edit(), Qt::LeftButton);

    QVERIFY(driver.Finished());
    QCOMPARE(seen, QStringList({"1", "3", "77", "255"}));
    QCOMPARE(log.Entries(), QStringList({"ShowPopup()"}));
    QCOMPARE(host.popup.GetGradient(1), Warm);
    QCOMPARE(host.popup.GetCurrentIndex(), 1);
}

void tst_NVGradientPopup::editorHasTheMainWindowForAParent()
{
    QMainWindow window;
    auto* area = new KXMdiArea(&window);
    window.setCentralWidget(area);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    Host host;
    const QWidget* parent = nullptr;
    ModalDriver driver(
        [&](QWidget* editor)
        {
            parent = editor->parentWidget();
            ModalDriver::Press(editor, "Cancel");
        });

    host.Edit()->click();

    QVERIFY(driver.Finished());
    QCOMPARE(parent, static_cast<const QWidget*>(&window));
}

void tst_NVGradientPopup::newOpensOnANewGradient()
{
    Host host;
    QVERIFY(host.Show());
    Gradient current;
    int row = 0;
    bool unsaved = false;
    QList<double> handles;
    double width = 0;
    ModalDriver driver(
        [&](QWidget* window)
        {
            const NVGradientEditor* editor = EditorOf(window);
            row = editor->GetCurrentIndex();
            current = editor->GetGradient(row);
            const auto* strip = window->findChild<QGraphicsView*>("m_pGraphicsView");
            width = strip->viewport()->width();
            const QList<QGraphicsItem*> items = strip->items();
            for (const QGraphicsItem* item : items)
            {
                if (item->type() == ControlNode::Type)
                    handles << item->x();
            }
            unsaved = window->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Apply)->isEnabled();
            ModalDriver::CloseWindow(window);
        });

    QTest::mouseClick(host.New(), Qt::LeftButton);

    QVERIFY(driver.Finished());
    QCOMPARE(row, 3);
    QCOMPARE(current, Fresh);
    QVERIFY(unsaved);
    std::sort(handles.begin(), handles.end());
    QCOMPARE(handles, QList<double>({0, width}));
}

void tst_NVGradientPopup::newGradientIsGoneWhenTheEditorIsCancelled()
{
    Host host;
    QVERIFY(host.Show());
    SignalLog log(&host.popup);
    ModalDriver driver([](QWidget* window) { ModalDriver::PressKey(window, Qt::Key_Escape); });

    QTest::mouseClick(host.New(), Qt::LeftButton);

    QVERIFY(driver.Finished());
    QCOMPARE(log.Entries(), QStringList({"ShowPopup()"}));
    QCOMPARE(host.popup.GetGradientCount(), 3);
}

void tst_NVGradientPopup::okKeepsTheNewGradient()
{
    Host host;
    QVERIFY(host.Show());
    SignalLog log(&host.popup);
    ModalDriver driver([](QWidget* window) { ModalDriver::Press(window, "OK"); });

    QTest::mouseClick(host.New(), Qt::LeftButton);

    QVERIFY(driver.Finished());
    QCOMPARE(log.Entries(), QStringList({"CurrentIndexChanged(3)", "Save()", "ShowPopup()"}));
    QCOMPARE(host.popup.GetGradientCount(), 4);
    QCOMPARE(host.popup.GetGradient(3), Fresh);
    QCOMPARE(host.RowStops(3), ToGradientStops(Fresh));
    QVERIFY(host.Edit()->isEnabled());
}

void tst_NVGradientPopup::applyThenCancelKeepsWhatWasApplied()
{
    Host host;
    QVERIFY(host.Show());
    ModalDriver driver(
        [&](QWidget* window)
        {
            SetRed(window, 40);
            ModalDriver::Press(window, "Apply");
            QCOMPARE(FirstRed(host.popup.GetGradient(0)), 40);
            SetRed(window, 90);
            ModalDriver::Press(window, "Cancel");
        });

    QTest::mouseClick(host.Edit(), Qt::LeftButton);

    QVERIFY(driver.Finished());
    QCOMPARE(FirstRed(host.popup.GetGradient(0)), 40);
    QCOMPARE(host.RowStops(0).first().second.red(), 40);
}

void tst_NVGradientPopup::saveTellsTheRowOnceThoughItIsTheSame_data()
{
    QTest::addColumn<int>("row");
    // That of the first one must not get lost in the new list, which begins with it.
    for (const int row : {0, 1, 2})
        QTest::addRow("%d", row) << row;
}

void tst_NVGradientPopup::saveTellsTheRowOnceThoughItIsTheSame()
{
    QFETCH(const int, row);
    Host host;
    QVERIFY(host.Show());
    host.popup.SetCurrentIndex(row);
    SignalLog log(&host.popup);
    int redWhenTold = -1;
    connect(&host.popup, &NVGradientPopup::CurrentIndexChanged, &host.popup,
            [&](int told) { redWhenTold = FirstRed(host.popup.GetGradient(told)); });
    ModalDriver driver(
        [](QWidget* window)
        {
            SetRed(window, 5);
            ModalDriver::Press(window, "OK");
        });

    QTest::mouseClick(host.Edit(), Qt::LeftButton);

    QVERIFY(driver.Finished());
    QCOMPARE(log.Entries(),
             QStringList({QString("CurrentIndexChanged(%1)").arg(row), "Save()", "ShowPopup()"}));
    QCOMPARE(redWhenTold, 5);
    QVERIFY(host.Edit()->isEnabled());
}

void tst_NVGradientPopup::savingAnEmptyListTellsNoRow()
{
    Host host({Grey});
    QVERIFY(host.Show());
    SignalLog log(&host.popup);
    ModalDriver driver(
        [](QWidget* window)
        {
            ModalDriver::Press(window, "Delete");
            ModalDriver::Press(window, "OK");
        });

    QTest::mouseClick(host.Edit(), Qt::LeftButton);

    QVERIFY(driver.Finished());
    QCOMPARE(log.Entries(), QStringList({"Save()", "ShowPopup()"}));
    QCOMPARE(host.popup.GetGradientCount(), 0);
    QCOMPARE(host.popup.GetCurrentIndex(), -1);
    QVERIFY(!host.Edit()->isEnabled());
}

void tst_NVGradientPopup::saveOfOthersIsIgnored()
{
    Host host;
    SignalLog log(&host.popup);

    QVERIFY(QMetaObject::invokeMethod(&host.popup, "OnSave"));

    QCOMPARE(log.Entries(), QStringList());
    QCOMPARE(host.popup.GetGradientCount(), 3);
    QCOMPARE(host.popup.GetCurrentIndex(), 0);
}

// The connection that is cut while a saved list is taken over must be there again, and once.
void tst_NVGradientPopup::currentIndexIsStillToldOnceAfterASave()
{
    Host host;
    QVERIFY(host.Show());
    ModalDriver driver(
        [](QWidget* window)
        {
            for (const int red : {1, 2, 3})
            {
                SetRed(window, red);
                ModalDriver::Press(window, "Apply");
            }
            ModalDriver::Press(window, "OK");
        });
    QTest::mouseClick(host.Edit(), Qt::LeftButton);
    QVERIFY(driver.Finished());
    SignalLog log(&host.popup);

    host.popup.SetCurrentIndex(1);

    QCOMPARE(log.Entries(), QStringList({"CurrentIndexChanged(1)"}));
}

void tst_NVGradientPopup::declaredSignalsStaySilent()
{
    Host host;
    QVERIFY(host.Show());
    SignalLog log(&host.popup);
    ModalDriver driver(
        [](QWidget* window)
        {
            ModalDriver::Press(window, "Delete");
            ModalDriver::Press(window, "New");
            ModalDriver::Press(window, "OK");
        });

    QTest::mouseClick(host.New(), Qt::LeftButton);

    QVERIFY(driver.Finished());
    for (const char* silent : {"GradientDeleted", "GradientInserted"})
    {
        QVERIFY(log.Watched().contains(silent));
        QCOMPARE(log.Count(silent), 0);
    }
    QCOMPARE(log.Count("Save"), 1);
}

void tst_NVGradientPopup::diesUnderItsEditor()
{
    auto popup = std::make_unique<NVGradientPopup>(nullptr);
    popup->Load({Grey, Warm});
    popup->Popup(QPoint(50, 50));
    QVERIFY(QTest::qWaitForWindowActive(popup.get()));
    SignalLog log(popup.get(), SignalLog::WithDestroyed);
    ModalDriver driver(
        [&](QWidget* window)
        {
            popup.reset();
            SetRed(window, 40);
            ModalDriver::Press(window, "Apply");
            ModalDriver::Press(window, "OK");
        });

    popup->findChild<QPushButton*>("m_pEdit")->click();

    QVERIFY(driver.Finished());
    QCOMPARE(log.Entries(), QStringList({"destroyed()"}));
}

void tst_NVGradientPopup::mainWindowDiesUnderTheEditor()
{
    auto window = std::make_unique<QMainWindow>();
    window->setCentralWidget(new KXMdiArea(window.get()));
    const QPointer<NVGradientPopup> popup = new NVGradientPopup(window.get());
    popup->Load({Grey, Warm});
    window->show();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
    ModalDriver driver([&](QWidget*) { window.reset(); });

    popup->findChild<QPushButton*>("m_pEdit")->click();

    QVERIFY(driver.Finished());
    QVERIFY(!popup);
}

void tst_NVGradientPopup::diesWhileShown()
{
    auto* popup = new NVGradientPopup(nullptr);
    popup->Load({Grey, Warm});
    popup->Popup(QPoint(50, 50));
    QVERIFY(QTest::qWaitForWindowActive(popup));
    SignalLog log(popup, SignalLog::WithDestroyed);

    delete popup;

    QCOMPARE(log.Entries(), QStringList({"destroyed()"}));
}

NV_TEST_MAIN(tst_NVGradientPopup)

#include "tst_NVGradientPopup.moc"
