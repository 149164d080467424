// The option bar of the zoom tool: its form, its two modes, of which one is always on, and its two buttons.

#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <QtTest>

#include "BarForm.h"
#include "FormFacts.h"
#include "NVZoomToolbar.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

QList<FormFact> ModeFacts(const QString& name, const QString& toolTip, bool checked)
{
    return FactsOf(name,
                   {{"class", "QToolButton"},
                    {"text", QString()},
                    {"toolTip", toolTip},
                    {"accessibleName", toolTip},
                    {"iconSize", QSize(16, 16)},
                    {"checkable", true},
                    {"checked", checked},
                    {"autoExclusive", true},
                    {"minimumSize", QSize(24, 24)},
                    {"maximumSize", QSize(24, 24)},
                    {"focusPolicy", int(Qt::NoFocus)}});
}

QList<FormFact> Facts()
{
    QList<FormFact> facts = FactsOf(QString(), {{"objectName", "ZoomToolBar"}, {"windowTitle", "Form"}});
    facts += PictureFacts("m_pPicture", "theme:tool-bar-search.png");
    for (const char* name : {"frame_5", "frame_6", "frame_7"})
        facts += SeparatorFacts(name);
    facts += ModeFacts("m_pZoomIn", "Zoom in", true);
    facts += ModeFacts("m_pZoomOut", "Zoom out", false);
    facts += ButtonFacts("m_pActualPixels", "Actual Pixels", "Zoom current window to 1:1", QSize(80, 24));
    facts += ButtonFacts("m_pFitScreen", "Fit screen", "Zoom current window to screen size", QSize(80, 24));
    const QList<QPair<QString, int>> columns = {{"m_pPicture", 0},    {"frame_5", 1}, {"m_pZoomIn", 3},
                                                {"m_pZoomOut", 5},    {"frame_7", 7}, {"m_pActualPixels", 9},
                                                {"m_pFitScreen", 11}, {"frame_6", 13}};
    for (const auto& column : columns)
        facts.append({column.first, "cell", QString("0 %1 1 1").arg(column.second)});
    return facts;
}

struct Host
{
    Host()
    {
        bar.show();
        (void)QTest::qWaitForWindowActive(&bar);
        log.Watch(&bar);
    }
    QToolButton* In() const { return bar.findChild<QToolButton*>("m_pZoomIn"); }
    QToolButton* Out() const { return bar.findChild<QToolButton*>("m_pZoomOut"); }

    NVZoomToolbar bar{nullptr};
    SignalLog log;
};

} // namespace

class tst_NVZoomToolbar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void formHasItsFacts_data() { AddFormFactRows(Facts()); }
    void formHasItsFacts();
    void rowStandsInAGridWithoutSpacing();
    void textsAreTranslatedUnderTheFormsName() { CheckFormTranslation<NVZoomToolbar>("ZoomToolBar"); }
    void pictureIsThatOfTheScreensDensity();
    void modesShowTheirIcons();

    void signalsAreThese();
    void startsIn();
    void zoomOutUnchecksZoomIn();
    void zoomInUnchecksZoomOut();
    void modeThatIsOnCantBeTurnedOffAlone();
    void sameModeAgainTellsNothing();
    void clickOnTheOtherModeTellsBoth();
    void clickOnTheModeThatIsOnTellsNothing();
    void clickTellsOnlyWhileEnabled_data();
    void clickTellsOnlyWhileEnabled();
    void diesInItsOwnSignal();
};

void tst_NVZoomToolbar::formHasItsFacts()
{
    NVZoomToolbar bar(nullptr);
    CheckFormFact(&bar);
}

void tst_NVZoomToolbar::rowStandsInAGridWithoutSpacing()
{
    const NVZoomToolbar bar(nullptr);
    const auto* grid = qobject_cast<QGridLayout*>(bar.layout());

    QVERIFY(grid);
    QCOMPARE(grid->objectName(), QString("gridLayout"));
    QCOMPARE(grid->spacing(), 0);
    QCOMPARE(grid->contentsMargins(), QMargins());
    QCOMPARE(grid->rowCount(), 1);
    QCOMPARE(grid->columnCount(), 15);
    for (int column = 2; column <= 12; column += 2)
        QVERIFY(grid->itemAtPosition(0, column)->spacerItem());
    QCOMPARE(RowOf(grid).join(' '),
             QString("m_pPicture frame_5 - m_pZoomIn - m_pZoomOut - frame_7 - "
                     "m_pActualPixels - m_pFitScreen - frame_6 <>"));
}

void tst_NVZoomToolbar::pictureIsThatOfTheScreensDensity()
{
    if (!IsOnDenseScreen())
        return;
    const NVZoomToolbar bar(nullptr);
    const QPixmap picture = bar.findChild<QLabel*>("m_pPicture")->pixmap(Qt::ReturnByValue);
    QCOMPARE(picture.toImage(), QPixmap("theme:tool-bar-search@2x.png").toImage());
    QCOMPARE(picture.devicePixelRatioF(), 2.0);
}

void tst_NVZoomToolbar::modesShowTheirIcons()
{
    const Host host;

    QCOMPARE(host.In()->icon().pixmap(16, 16).toImage(), QPixmap("theme:zoom_in.png").toImage());
    QCOMPARE(host.Out()->icon().pixmap(16, 16).toImage(), QPixmap("theme:zoom_out.png").toImage());
}

void tst_NVZoomToolbar::signalsAreThese()
{
    NVZoomToolbar bar(nullptr);

    QCOMPARE(SignalLog(&bar).Watched(),
             QStringList({"ZoomInChecked", "ZoomOutChecked", "ActualPixels", "FitScreen"}));
}

void tst_NVZoomToolbar::startsIn()
{
    const NVZoomToolbar bar(nullptr);

    QVERIFY(bar.IsZoomIn());
    QVERIFY(!bar.IsZoomOut());
}

void tst_NVZoomToolbar::zoomOutUnchecksZoomIn()
{
    Host host;

    host.bar.SetZoomOut(true);

    QVERIFY(!host.bar.IsZoomIn());
    QVERIFY(host.bar.IsZoomOut());
    QStringList told = host.log.Entries();
    told.sort();
    QCOMPARE(told, QStringList({"ZoomInChecked(false)", "ZoomOutChecked(true)"}));
}

void tst_NVZoomToolbar::zoomInUnchecksZoomOut()
{
    Host host;
    host.bar.SetZoomOut(true);
    host.log.Clear();

    host.bar.SetZoomIn(true);

    QVERIFY(host.bar.IsZoomIn());
    QVERIFY(!host.bar.IsZoomOut());
    QStringList told = host.log.Entries();
    told.sort();
    QCOMPARE(told, QStringList({"ZoomInChecked(true)", "ZoomOutChecked(false)"}));
}

void tst_NVZoomToolbar::modeThatIsOnCantBeTurnedOffAlone()
{
    Host host;

    host.bar.SetZoomIn(false);
    QVERIFY(host.bar.IsZoomIn());
    QVERIFY(!host.bar.IsZoomOut());
    QCOMPARE(host.log.Entries(), QStringList());

    host.bar.SetZoomOut(true);
    host.log.Clear();
    host.bar.SetZoomOut(false);

    QVERIFY(host.bar.IsZoomOut());
    QCOMPARE(host.log.Entries(), QStringList());
}

void tst_NVZoomToolbar::sameModeAgainTellsNothing()
{
    Host host;

    host.bar.SetZoomIn(true);
    host.bar.SetZoomOut(false);

    QVERIFY(host.bar.IsZoomIn());
    QCOMPARE(host.log.Entries(), QStringList());
}

void tst_NVZoomToolbar::clickOnTheOtherModeTellsBoth()
{
    Host host;

    QTest::mouseClick(host.Out(), Qt::LeftButton);

    QVERIFY(host.bar.IsZoomOut());
    QVERIFY(!host.bar.IsZoomIn());
    QCOMPARE(host.log.Count("ZoomOutChecked"), 1);
    QCOMPARE(host.log.Count("ZoomInChecked"), 1);
    QCOMPARE(host.log.Count(), 2);
    QTest::mouseClick(host.In(), Qt::LeftButton);
    QVERIFY(host.bar.IsZoomIn());
    QCOMPARE(host.log.Count(), 4);
}

void tst_NVZoomToolbar::clickOnTheModeThatIsOnTellsNothing()
{
    Host host;

    QTest::mouseClick(host.In(), Qt::LeftButton);

    QVERIFY(host.bar.IsZoomIn());
    QCOMPARE(host.log.Entries(), QStringList());
}

void tst_NVZoomToolbar::clickTellsOnlyWhileEnabled_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QStringList>("told");

    QTest::newRow("actual pixels") << "m_pActualPixels" << QStringList("ActualPixels()");
    QTest::newRow("fit screen") << "m_pFitScreen" << QStringList("FitScreen()");
}

void tst_NVZoomToolbar::clickTellsOnlyWhileEnabled()
{
    QFETCH(const QString, button);
    Host host;
    auto* pressed = host.bar.findChild<QPushButton*>(button);
    const auto enable = [&](bool on)
    {
        if (button == "m_pActualPixels")
            host.bar.SetActualPixelsEnabled(on);
        else
            host.bar.SetFitScreenEnabled(on);
    };

    QTest::mouseClick(pressed, Qt::LeftButton);
    QCOMPARE(host.log.Entries(), QStringList());
    enable(true);
    enable(true);
    // The one alone.
    QCOMPARE(host.bar.findChild<QPushButton*>("m_pActualPixels")->isEnabled(), button == "m_pActualPixels");
    QCOMPARE(host.bar.findChild<QPushButton*>("m_pFitScreen")->isEnabled(), button == "m_pFitScreen");
    QTest::mouseClick(pressed, Qt::LeftButton);
    enable(false);
    QTest::mouseClick(pressed, Qt::LeftButton);

    QTEST(host.log.Entries(), "told");
}

void tst_NVZoomToolbar::diesInItsOwnSignal()
{
    QPointer<NVZoomToolbar> bar(new NVZoomToolbar(nullptr));
    bar->show();
    connect(bar, &NVZoomToolbar::ZoomOutChecked, bar, &QObject::deleteLater);

    QTest::mouseClick(bar->findChild<QToolButton*>("m_pZoomOut"), Qt::LeftButton);

    QTRY_VERIFY(!bar);
}

NV_TEST_MAIN(tst_NVZoomToolbar)
#include "tst_NVZoomToolbar.moc"
