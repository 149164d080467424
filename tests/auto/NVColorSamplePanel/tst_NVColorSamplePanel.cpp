// The panel of colour samples: its form, what it tells of the mouse, what it selects, and who owns what.

#include <QListView>
#include <QMouseEvent>
#include <QStandardItemModel>
#include <QtTest>

#include <limits>
#include <memory>

#include "FormFacts.h"
#include "KXColorSampleDelegate.h"
#include "NVColorSamplePanel.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

QList<FormFact> Facts()
{
    QList<FormFact> facts = FactsOf(QString(),
                                    {{"objectName", "ColorSamplerPanel"},
                                     {"windowTitle", "Color sampler tool"},
                                     {"minimumSize", QSize(0, 200)}});
    facts += FactsOf("m_pSamples",
                     {{"class", "QListView"},
                      {"cell", "0 0 1 1"},
                      {"accessibleName", "Color samples"},
                      {"focusPolicy", int(Qt::NoFocus)},
                      {"horizontalScrollBarPolicy", int(Qt::ScrollBarAlwaysOff)},
                      {"editTriggers", int(QAbstractItemView::NoEditTriggers)},
                      {"resizeMode", int(QListView::Fixed)}});
    return facts;
}

// A panel with rows; the delegate, which the panel leaves to whoever wants it, goes after the panel.
struct Host
{
    explicit Host(int rows = 3)
    {
        delegate.reset(qobject_cast<KXColorSampleDelegate*>(List()->itemDelegate()));
        for (int row = 0; row < rows; ++row)
            model.appendRow(new QStandardItem(QString("Sample %1").arg(row)));
        panel->SetModel(&model);
        panel->resize(200, 260);
        log.Watch(panel.get());
    }
    void Show()
    {
        panel->show();
        QVERIFY(QTest::qWaitForWindowActive(panel.get()));
    }
    QListView* List() const { return panel->findChild<QListView*>("m_pSamples"); }
    QWidget* Viewport() const { return List()->viewport(); }
    QPoint RowCentre(int row) const { return List()->visualRect(model.index(row, 0)).center(); }
    QPoint Global(const QPoint& point) const { return Viewport()->mapToGlobal(point); }
    QList<int> Selected() const
    {
        QList<int> rows;
        for (const QModelIndex& index : List()->selectionModel()->selectedIndexes())
            rows.append(index.row());
        return rows;
    }
    void Send(QEvent::Type type, const QPointF& global, Qt::MouseButton button = Qt::LeftButton)
    {
        const QPointF local(Viewport()->mapFromGlobal(global.toPoint()));
        QMouseEvent event(type, local, local, global, button,
                          type == QEvent::MouseButtonPress ? button : Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(Viewport(), &event);
    }

    QStandardItemModel model;
    std::unique_ptr<KXColorSampleDelegate> delegate;
    std::unique_ptr<NVColorSamplePanel> panel = std::make_unique<NVColorSamplePanel>(nullptr);
    SignalLog log;
};

} // namespace

class tst_NVColorSamplePanel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void formHasItsFacts_data() { AddFormFactRows(Facts()); }
    void formHasItsFacts();
    void listFillsThePanelButAMargin();
    void titleIsTranslatedUnderTheFormsName();
    void macFocusRectIsOff();

    void signalsAreThese();
    void delegateBelongsToNobody();
    void delegateIsAsWideAsTheViewportButTwo_data();
    void delegateIsAsWideAsTheViewportButTwo();
    void foreignDelegateIsLeftAlone();

    void pressAndReleaseAreToldOnce();
    void everyButtonIsTold_data();
    void everyButtonIsTold();
    void pressInTheEmptyAreaIsTold();
    void pressReachesTheListToo();
    void positionIsRounded_data();
    void positionIsRounded();
    void eventsOfOtherObjectsAreLeftAlone();
    void filterSwallowsNothing();

    void itemIsFoundAtItsPlace();
    void thereIsNoItemWithoutAModel();
    void rowIsSelectedAlone();
    void badRowSelectsNothing_data();
    void badRowSelectsNothing();
    void nothingIsSelectedWithoutAModel();
    void rowIsScrolledIntoSight();
    void badRowScrollsNowhere();
    void selectionIsSeenInATreeUnderTheRoot();
    void modelMayGoFirst();
    void diesInItsOwnSignal();
};

void tst_NVColorSamplePanel::formHasItsFacts()
{
    Host host;
    CheckFormFact(host.panel.get());
}

void tst_NVColorSamplePanel::listFillsThePanelButAMargin()
{
    const Host host;
    const auto* grid = qobject_cast<QGridLayout*>(host.panel->layout());

    QVERIFY(grid);
    QCOMPARE(grid->objectName(), QString("gridLayout"));
    QCOMPARE(grid->contentsMargins(), QMargins(6, 6, 6, 6));
    QCOMPARE(grid->count(), 1);
}

void tst_NVColorSamplePanel::titleIsTranslatedUnderTheFormsName()
{
    const ShoutingTranslator translator("ColorSamplerPanel");
    const Host host;

    QCOMPARE(host.panel->windowTitle(), QString("COLOR SAMPLER TOOL"));
    QCOMPARE(host.List()->accessibleName(), QString("COLOR SAMPLES"));
}

void tst_NVColorSamplePanel::macFocusRectIsOff()
{
    const Host host;

    QVERIFY(!host.List()->testAttribute(Qt::WA_MacShowFocusRect));
}

void tst_NVColorSamplePanel::signalsAreThese()
{
    const Host host;

    QCOMPARE(host.log.Watched(), QStringList({"MousePressed", "MouseReleased"}));
}

void tst_NVColorSamplePanel::delegateBelongsToNobody()
{
    auto panel = std::make_unique<NVColorSamplePanel>(nullptr);
    const QPointer<QAbstractItemDelegate> delegate = panel->findChild<QListView*>()->itemDelegate();

    QVERIFY(qobject_cast<KXColorSampleDelegate*>(delegate));
    QVERIFY(!delegate->parent());
    panel.reset();
    QVERIFY(delegate);
    delete delegate;
}

void tst_NVColorSamplePanel::delegateIsAsWideAsTheViewportButTwo_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("kept");

    QTest::newRow("a hundred") << 100 << 98;
    QTest::newRow("wide") << 801 << 799;
    QTest::newRow("narrow") << 3 << 1;
    QTest::newRow("too narrow") << 1 << 0;
}

void tst_NVColorSamplePanel::delegateIsAsWideAsTheViewportButTwo()
{
    QFETCH(const int, width);
    Host host;
    host.Show();
    // The list's frame and the panel's margins come on top.
    const int around = host.panel->width() - host.Viewport()->width();
    host.panel->setMinimumSize(1, 1);
    host.List()->setMinimumSize(1, 1);

    if (host.panel->minimumSizeHint().width() <= width + around)
        host.panel->resize(width + around, 260);
    else
        host.Viewport()->resize(width, 200);

    QCOMPARE(host.Viewport()->width(), width);
    QTEST(host.delegate->GetWidth(), "kept");
}

void tst_NVColorSamplePanel::foreignDelegateIsLeftAlone()
{
    QStyledItemDelegate foreign;
    Host host;
    host.Show();
    const int width = host.delegate->GetWidth();
    const SignalLog log(&foreign);

    host.List()->setItemDelegate(&foreign);
    host.panel->resize(400, 300);

    QVERIFY(host.Viewport()->width() != width + 2);
    QCOMPARE(host.delegate->GetWidth(), width);
    QCOMPARE(log.Entries(), QStringList());
}

void tst_NVColorSamplePanel::pressAndReleaseAreToldOnce()
{
    Host host;
    host.Show();
    const QPoint place = host.RowCentre(1);
    const QPoint global = host.Global(place);

    QTest::mousePress(host.Viewport(), Qt::LeftButton, Qt::NoModifier, place);
    const QString point = QString("%1,%2").arg(global.x()).arg(global.y());
    QCOMPARE(host.log.Entries(), QStringList(QString("MousePressed(%1, 1)").arg(point)));
    QTest::mouseRelease(host.Viewport(), Qt::LeftButton, Qt::NoModifier, place);

    QCOMPARE(host.log.Entries().mid(1), QStringList(QString("MouseReleased(%1, 1)").arg(point)));
    QCOMPARE(host.panel->GetItemAt(host.log.Arguments(0).at(0).toPoint()), 1);
}

void tst_NVColorSamplePanel::everyButtonIsTold_data()
{
    QTest::addColumn<int>("told");

    QTest::newRow("left") << 1;
    QTest::newRow("right") << 2;
    QTest::newRow("middle") << 4;
    QTest::newRow("back") << 8;
}

void tst_NVColorSamplePanel::everyButtonIsTold()
{
    QFETCH(const int, told);
    const auto button = Qt::MouseButton(told);
    Host host;
    host.Show();

    host.Send(QEvent::MouseButtonPress, QPointF(50, 60), button);
    host.Send(QEvent::MouseButtonRelease, QPointF(50, 60), button);

    QCOMPARE(host.log.Entries(),
             QStringList({QString("MousePressed(50,60, %1)").arg(told),
                          QString("MouseReleased(50,60, %1)").arg(told)}));
}

void tst_NVColorSamplePanel::pressInTheEmptyAreaIsTold()
{
    Host host;
    host.Show();
    const QPoint empty = host.Viewport()->rect().bottomRight() - QPoint(3, 3);

    QTest::mouseClick(host.Viewport(), Qt::LeftButton, Qt::NoModifier, empty);

    QCOMPARE(host.log.Count("MousePressed"), 1);
    QCOMPARE(host.log.Count("MouseReleased"), 1);
    QCOMPARE(host.log.Arguments(0).at(0).toPoint(), host.Global(empty));
    QCOMPARE(host.panel->GetItemAt(host.Global(empty)), -1);
}

void tst_NVColorSamplePanel::pressReachesTheListToo()
{
    Host host;
    host.Show();

    QTest::mouseClick(host.Viewport(), Qt::LeftButton, Qt::NoModifier, host.RowCentre(2));

    QCOMPARE(host.Selected(), QList<int>({2}));
}

void tst_NVColorSamplePanel::positionIsRounded_data()
{
    QTest::addColumn<QPointF>("global");
    QTest::addColumn<QPoint>("told");

    QTest::newRow("whole") << QPointF(12, 34) << QPoint(12, 34);
    QTest::newRow("down") << QPointF(12.4, 34.49) << QPoint(12, 34);
    QTest::newRow("up") << QPointF(12.6, 34.51) << QPoint(13, 35);
    QTest::newRow("half") << QPointF(12.5, 0.5) << QPoint(13, 1);
    // Of two that are as near, the greater one.
    QTest::newRow("negative half") << QPointF(-12.5, -0.5) << QPoint(-12, 0);
    QTest::newRow("negative, to zero") << QPointF(-12.4, -0.49) << QPoint(-12, 0);
    QTest::newRow("negative, from zero") << QPointF(-12.6, -0.51) << QPoint(-13, -1);
    QTest::newRow("negative, whole") << QPointF(-12, -1) << QPoint(-12, -1);
    QTest::newRow("mixed") << QPointF(-1920.7, 1080.7) << QPoint(-1921, 1081);
}

void tst_NVColorSamplePanel::positionIsRounded()
{
    QFETCH(const QPointF, global);
    QFETCH(const QPoint, told);
    Host host;
    host.Show();

    host.Send(QEvent::MouseButtonPress, global);
    host.Send(QEvent::MouseButtonRelease, global);

    QCOMPARE(host.log.Count(), 2);
    QCOMPARE(host.log.Arguments(0).at(0).toPoint(), told);
    QCOMPARE(host.log.Arguments(1).at(0).toPoint(), told);
}

void tst_NVColorSamplePanel::eventsOfOtherObjectsAreLeftAlone()
{
    Host host;
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(1, 1), QPointF(1, 1), QPointF(1, 1), Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    QResizeEvent resize(QSize(77, 10), QSize(1, 1));
    const int width = host.delegate->GetWidth();

    for (QObject* object : {static_cast<QObject*>(nullptr), static_cast<QObject*>(host.panel.get()),
                            static_cast<QObject*>(host.List())})
    {
        QVERIFY(!host.panel->eventFilter(object, &press));
        QVERIFY(!host.panel->eventFilter(object, &resize));
    }

    QCOMPARE(host.log.Entries(), QStringList());
    QCOMPARE(host.delegate->GetWidth(), width);
}

void tst_NVColorSamplePanel::filterSwallowsNothing()
{
    Host host;
    QMouseEvent press(QEvent::MouseButtonPress, QPointF(1, 1), QPointF(1, 1), QPointF(1, 1), Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    QMouseEvent release(QEvent::MouseButtonRelease, QPointF(1, 1), QPointF(1, 1), QPointF(1, 1),
                        Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    QMouseEvent move(QEvent::MouseMove, QPointF(1, 1), QPointF(1, 1), QPointF(1, 1), Qt::NoButton,
                     Qt::NoButton, Qt::NoModifier);
    QResizeEvent resize(QSize(77, 10), QSize(1, 1));

    for (QEvent* event : {static_cast<QEvent*>(&press), static_cast<QEvent*>(&release),
                          static_cast<QEvent*>(&move), static_cast<QEvent*>(&resize)})
        QVERIFY(!host.panel->eventFilter(host.Viewport(), event));

    QCOMPARE(host.log.Count(), 2);
    QCOMPARE(host.delegate->GetWidth(), 75);
}

void tst_NVColorSamplePanel::itemIsFoundAtItsPlace()
{
    Host host;
    host.Show();

    for (int row = 0; row < 3; ++row)
        QCOMPARE(host.panel->GetItemAt(host.Global(host.RowCentre(row))), row);
    QCOMPARE(host.panel->GetItemAt(host.Global(QPoint(-5, 5))), -1);
    QCOMPARE(host.panel->GetItemAt(QPoint(-30000, -30000)), -1);
}

void tst_NVColorSamplePanel::thereIsNoItemWithoutAModel()
{
    Host host;
    host.Show();

    host.panel->SetModel(nullptr);

    QCOMPARE(host.panel->GetItemAt(host.Global(QPoint(10, 10))), -1);
}

void tst_NVColorSamplePanel::rowIsSelectedAlone()
{
    Host host;

    host.panel->SelectRow(0);
    host.panel->SelectRow(2);
    host.panel->SelectRow(2);

    QCOMPARE(host.Selected(), QList<int>({2}));
    QCOMPARE(host.log.Entries(), QStringList());
}

void tst_NVColorSamplePanel::badRowSelectsNothing_data()
{
    QTest::addColumn<int>("row");

    QTest::newRow("behind the last") << 3;
    QTest::newRow("negative") << -1;
    QTest::newRow("largest") << std::numeric_limits<int>::max();
}

void tst_NVColorSamplePanel::badRowSelectsNothing()
{
    QFETCH(const int, row);
    Host host;
    host.panel->SelectRow(1);

    host.panel->SelectRow(row);

    QCOMPARE(host.Selected(), QList<int>());
}

void tst_NVColorSamplePanel::nothingIsSelectedWithoutAModel()
{
    Host host;
    host.panel->SetModel(nullptr);

    host.panel->SelectRow(0);
    host.panel->ScrollTo(0);

    QVERIFY(!host.List()->model());
}

void tst_NVColorSamplePanel::rowIsScrolledIntoSight()
{
    Host host(50);
    host.Show();
    const auto isWholeInSight = [&host](int row)
    { return host.Viewport()->rect().contains(host.List()->visualRect(host.model.index(row, 0))); };
    QVERIFY(!isWholeInSight(40));

    host.panel->ScrollTo(40);
    QVERIFY(isWholeInSight(40));
    // No further than it takes.
    QVERIFY(isWholeInSight(39));
    QVERIFY(!isWholeInSight(41));
    const QPoint place = host.RowCentre(40);
    // Both are in sight, so the list does not move.
    host.panel->ScrollTo(40);
    host.panel->ScrollTo(39);

    QCOMPARE(host.RowCentre(40), place);
    QCOMPARE(host.Selected(), QList<int>());
}

void tst_NVColorSamplePanel::badRowScrollsNowhere()
{
    Host host(50);
    host.Show();
    host.panel->ScrollTo(40);
    const QPoint place = host.RowCentre(40);

    host.panel->ScrollTo(50);
    host.panel->ScrollTo(-1);

    QCOMPARE(host.RowCentre(40), place);
}

void tst_NVColorSamplePanel::selectionIsSeenInATreeUnderTheRoot()
{
    Host host;
    host.model.item(1)->appendRow(new QStandardItem("Child"));

    host.panel->SelectRow(1);

    const QModelIndexList selected = host.List()->selectionModel()->selectedIndexes();
    QCOMPARE(selected.size(), 1);
    QVERIFY(!selected.first().parent().isValid());
}

void tst_NVColorSamplePanel::modelMayGoFirst()
{
    Host host;
    host.Show();
    auto model = std::make_unique<QStandardItemModel>(2, 1);
    host.panel->SetModel(model.get());
    host.panel->SelectRow(1);

    model.reset();
    host.panel->SelectRow(0);
    host.panel->ScrollTo(1);

    QCOMPARE(host.panel->GetItemAt(host.Global(QPoint(10, 10))), -1);
}

void tst_NVColorSamplePanel::diesInItsOwnSignal()
{
    Host host;
    host.Show();
    connect(host.panel.get(), &NVColorSamplePanel::MousePressed, this,
            [&host] { host.panel.release()->deleteLater(); });
    const QPointer<NVColorSamplePanel> panel(host.panel.get());

    QTest::mouseClick(host.Viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(10, 10));

    QTRY_VERIFY(!panel);
}

NV_TEST_MAIN(tst_NVColorSamplePanel)
#include "tst_NVColorSamplePanel.moc"
