// The option bar of the move tool: its form and its switch.

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QMainWindow>
#include <QtTest>

#include "BarForm.h"
#include "NVMoveToolbar.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

BarForm Form()
{
    return BarForm([] { return new NVMoveToolbar(nullptr); }, "MoveToolBar", "Move tool",
                   "theme:move_tool.png",
                   {BarControl::CheckBox("m_pShowFrame", "Show frame", false).With("enabled", false)}, {})
        .PictureLabel("m_pPicture");
}

QCheckBox* Switch(const QWidget& bar)
{
    return bar.findChild<QCheckBox*>("m_pShowFrame");
}

} // namespace

class tst_NVMoveToolbar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void formHasItsTitleNameAndMargins();
    void controlsAndGapsStandInTheirColumns();
    void pictureIsShownInFortyPixels() { Form().CheckPicture(); }
    void pictureIsThatOfTheScreensDensity() { Form().CheckPictureOfDenseScreen(); }
    void controlHasItsFacts_data() { Form().AddControlRows(); }
    void controlHasItsFacts() { Form().CheckControl(); }
    void textsAreTranslatedUnderTheFormsName() { Form().CheckTranslation(); }
    void anotherLanguageLeavesItAsItIs() { Form().CheckLanguageChange(); }

    void parentIsTakenOver();
    void signalIsTheOnlyOne();
    void startsOffAndDisabled();
    void frameIsShownOnADisabledSwitchToo();
    void sameValueAgainTellsNothing();
    void enablingTellsNothing();
    void clickOnTheDisabledSwitchDoesNothing();
    void clickSwitchesAndLeavesTheFocusWhereItIs();
    void diesInItsOwnSignal();
};

void tst_NVMoveToolbar::formHasItsTitleNameAndMargins()
{
    const NVMoveToolbar bar(nullptr);

    QCOMPARE(bar.objectName(), QString("MoveToolBar"));
    QCOMPARE(bar.windowTitle(), QString("Move tool"));
    const auto* grid = qobject_cast<QGridLayout*>(bar.layout());
    QVERIFY(grid);
    QCOMPARE(grid->objectName(), QString("gridLayout"));
    QCOMPARE(grid->contentsMargins(), QMargins(0, 0, 6, 0));
    QCOMPARE(grid->horizontalSpacing(), 0);
    QCOMPARE(grid->verticalSpacing(), 0);
}

void tst_NVMoveToolbar::controlsAndGapsStandInTheirColumns()
{
    const NVMoveToolbar bar(nullptr);
    const auto* grid = qobject_cast<QGridLayout*>(bar.layout());

    QCOMPARE(grid->count(), 5);
    QCOMPARE(grid->rowCount(), 1);
    QCOMPARE(grid->itemAtPosition(0, 0)->widget()->objectName(), QString("m_pPicture"));
    QCOMPARE(grid->itemAtPosition(0, 2)->widget()->objectName(), QString("m_pShowFrame"));
    for (int column : {1, 3, 4})
    {
        const QSpacerItem* gap = grid->itemAtPosition(0, column)->spacerItem();
        QVERIFY(gap);
        QCOMPARE(gap->sizeHint(), column == 4 ? QSize(0, 20) : QSize(6, 20));
        QCOMPARE(gap->sizePolicy().horizontalPolicy(),
                 column == 4 ? QSizePolicy::Expanding : QSizePolicy::Fixed);
        QCOMPARE(gap->sizePolicy().verticalPolicy(), QSizePolicy::Minimum);
    }
}

void tst_NVMoveToolbar::parentIsTakenOver()
{
    QWidget parent;
    const NVMoveToolbar bar(&parent);

    QCOMPARE(bar.parentWidget(), &parent);
    QVERIFY(!bar.isWindow());
}

void tst_NVMoveToolbar::signalIsTheOnlyOne()
{
    NVMoveToolbar bar(nullptr);

    QCOMPARE(SignalLog(&bar).Watched(), QStringList{"ShowFrameChanged"});
}

void tst_NVMoveToolbar::startsOffAndDisabled()
{
    const NVMoveToolbar bar(nullptr);

    QVERIFY(!bar.IsShowFrame());
    QVERIFY(!bar.IsShowFrameEnabled());
}

void tst_NVMoveToolbar::frameIsShownOnADisabledSwitchToo()
{
    NVMoveToolbar bar(nullptr);
    SignalLog log(&bar);

    bar.ShowFrame(true);

    QVERIFY(bar.IsShowFrame() && Switch(bar)->isChecked());
    QVERIFY(!bar.IsShowFrameEnabled());
    QCOMPARE(log.Entries(), QStringList{"ShowFrameChanged(true)"});
}

void tst_NVMoveToolbar::sameValueAgainTellsNothing()
{
    NVMoveToolbar bar(nullptr);
    SignalLog log(&bar);

    bar.ShowFrame(false);
    QCOMPARE(log.Count(), 0);
    bar.ShowFrame(true);
    bar.ShowFrame(true);
    bar.ShowFrame(false);
    bar.ShowFrame(false);

    QCOMPARE(log.Entries(), QStringList({"ShowFrameChanged(true)", "ShowFrameChanged(false)"}));
}

void tst_NVMoveToolbar::enablingTellsNothing()
{
    NVMoveToolbar bar(nullptr);
    bar.ShowFrame(true);
    SignalLog log(&bar);

    bar.EnableShowFrame(true);
    QVERIFY(bar.IsShowFrameEnabled() && Switch(bar)->isEnabled());
    bar.EnableShowFrame(false);
    QVERIFY(!bar.IsShowFrameEnabled());

    QVERIFY(bar.IsShowFrame());
    QCOMPARE(log.Count(), 0);
}

void tst_NVMoveToolbar::clickOnTheDisabledSwitchDoesNothing()
{
    NVMoveToolbar bar(nullptr);
    SignalLog log(&bar);
    bar.show();
    QVERIFY(QTest::qWaitForWindowActive(&bar));

    QTest::mouseClick(Switch(bar), Qt::LeftButton);

    QVERIFY(!bar.IsShowFrame());
    QCOMPARE(log.Count(), 0);
}

void tst_NVMoveToolbar::clickSwitchesAndLeavesTheFocusWhereItIs()
{
    QMainWindow window;
    auto* canvas = new QWidget;
    canvas->setFocusPolicy(Qt::StrongFocus);
    window.setCentralWidget(canvas);
    auto* bar = new NVMoveToolbar(&window);
    window.setMenuWidget(bar);
    bar->EnableShowFrame(true);
    window.resize(400, 200);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    canvas->setFocus();
    SignalLog log(bar);

    for (int i = 0; i < 2; ++i)
        QTest::mouseClick(Switch(*bar), Qt::LeftButton, Qt::NoModifier,
                          QPoint(8, Switch(*bar)->height() / 2));

    QVERIFY(canvas->hasFocus());
    QVERIFY(!bar->IsShowFrame());
    QCOMPARE(log.Entries(), QStringList({"ShowFrameChanged(true)", "ShowFrameChanged(false)"}));
}

void tst_NVMoveToolbar::diesInItsOwnSignal()
{
    QPointer<NVMoveToolbar> bar = new NVMoveToolbar(nullptr);
    connect(bar, &NVMoveToolbar::ShowFrameChanged, bar, &QObject::deleteLater);

    bar->ShowFrame(true);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    QVERIFY(!bar);
}

NV_TEST_MAIN(tst_NVMoveToolbar)
#include "tst_NVMoveToolbar.moc"
