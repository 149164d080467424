// The pattern chooser: its tiles, how a person picks one, and how it opens and closes.

#include <QAbstractItemView>
#include <QApplication>
#include <QLabel>
#include <QPointer>
#include <QScreen>
#include <memory>

#include "NVApplication.h"
#include "PatternSelectWidget.h"
#include "ProbeImage.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

struct Chooser
{
    // The window that was active before.
    QWidget host;
    PatternSelectWidget popup;
    SignalLog log;

    explicit Chooser(QWidget* parent = nullptr) : popup(parent), log(&popup) { }

    QAbstractItemView* View() { return popup.findChild<QAbstractItemView*>(); }

    void Show()
    {
        host.show();
        host.activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), &host);
        popup.show();
        popup.activateWindow();
        popup.setFocus(Qt::OtherFocusReason);
        QVERIFY(View());
        QTRY_VERIFY(View()->hasFocus());
    }

    QPoint CentreOf(int index) { return View()->visualRect(View()->model()->index(index, 0)).center(); }

    void Click(int index)
    {
        QTest::mouseClick(View()->viewport(), Qt::LeftButton, Qt::NoModifier, CentreOf(index));
    }

    // Both clicks, as the window system reports them.
    void DoubleClick(int index)
    {
        Click(index);
        QTest::mouseDClick(View()->viewport(), Qt::LeftButton, Qt::NoModifier, CentreOf(index));
    }

    void Key(Qt::Key key) { QTest::keyClick(View(), key); }
};

} // namespace

class tst_PatternSelectWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thereAreManyTilesOfOneKind();
    void aTileHasNoSeam_data();
    void aTileHasNoSeam();
    void allTilesDiffer();
    void aBadIndexHasNoImage();
    void itStartsAtTheApplicationsPattern();
    void aPatternBeyondTheTilesBecomesTheLast();
    void setCurrentIndexIsSilent();
    void aClickSelects();
    void aDoubleClickSelectsAndThenChooses();
    void draggingOffATileSelectsWhereThePressWas();
    void theRightButtonSelectsNothing();
    void arrowsSelect();
    void homeAndEndSelectTheFirstAndTheLast();
    void aKeyAtTheEdgeSaysNothing();
    void enterSelectsAndChooses();
    void escapeHides();
    void aSlotMayHideItDuringADoubleClick();
    void aSlotMayDestroyItDuringADoubleClick();
    void itIsAWindowEvenWithAParent();
    void itMovesItselfOntoTheScreen();
    void allTilesAreInSight();
    void tilesHaveNames();
    void theNameUnderThePointerIsShown();
    void theSelectedTileHasAFrame();
    void itIsMadeCheaply();
};

void tst_PatternSelectWidget::thereAreManyTilesOfOneKind()
{
    PatternSelectWidget popup(nullptr);
    QVERIFY(popup.Count() >= 16);
    for (int i = 0; i < popup.Count(); ++i)
    {
        QImage image;
        QVERIFY(popup.GetItemImage(i, image));
        QCOMPARE(image.size(), QSize(64, 64));
        QCOMPARE(image.format(), QImage::Format_ARGB32_Premultiplied);
        QVERIFY2(ProbeImage(image).ColorCount(50) >= 2, qPrintable(QString::number(i)));
    }
}

void tst_PatternSelectWidget::aTileHasNoSeam_data()
{
    QTest::addColumn<int>("index");
    PatternSelectWidget popup(nullptr);
    for (int i = 0; i < popup.Count(); ++i)
        QTest::addRow("tile %d", i) << i;
}

// The step over the seam may be as large as the largest step within the tile, but no larger.
void tst_PatternSelectWidget::aTileHasNoSeam()
{
    QFETCH(int, index);
    PatternSelectWidget popup(nullptr);
    QImage image;
    QVERIFY(popup.GetItemImage(index, image));

    const auto meanStep = [&](int from, bool across)
    {
        double sum = 0;
        for (int i = 0; i < 64; ++i)
        {
            const QPoint a = across ? QPoint(from, i) : QPoint(i, from);
            const QPoint b = across ? QPoint((from + 1) % 64, i) : QPoint(i, (from + 1) % 64);
            sum += qAbs(qGray(image.pixel(a)) - qGray(image.pixel(b)));
        }
        return sum / 64;
    };
    for (const bool across : {true, false})
    {
        double largest = 0;
        for (int from = 0; from < 63; ++from)
            largest = qMax(largest, meanStep(from, across));
        QVERIFY2(meanStep(63, across) <= largest * 1.15 + 1,
                 qPrintable(QString::number(meanStep(63, across))));
    }
}

void tst_PatternSelectWidget::allTilesDiffer()
{
    PatternSelectWidget popup(nullptr);
    QVector<QImage> seen;
    for (int i = 0; i < popup.Count(); ++i)
    {
        QImage image;
        QVERIFY(popup.GetItemImage(i, image));
        QVERIFY(!seen.contains(image));
        seen.append(image);
    }
}

void tst_PatternSelectWidget::aBadIndexHasNoImage()
{
    PatternSelectWidget popup(nullptr);
    QImage image(3, 3, QImage::Format_RGB32);
    image.fill(Qt::red);
    const QImage before = image;

    for (const int index : {-1, popup.Count(), INT_MAX, INT_MIN})
        QVERIFY(!popup.GetItemImage(index, image));

    QCOMPARE(image, before);
}

void tst_PatternSelectWidget::itStartsAtTheApplicationsPattern()
{
    NVApplication::GetInstance()->SetTexturePatternIndex(3);
    const PatternSelectWidget popup(nullptr);
    NVApplication::GetInstance()->SetTexturePatternIndex(0);

    QCOMPARE(popup.CurrentIndex(), 3);
    QCOMPARE(PatternSelectWidget(nullptr).CurrentIndex(), 0);
}

void tst_PatternSelectWidget::aPatternBeyondTheTilesBecomesTheLast()
{
    NVApplication::GetInstance()->SetTexturePatternIndex(100000);
    const PatternSelectWidget popup(nullptr);
    NVApplication::GetInstance()->SetTexturePatternIndex(0);

    QCOMPARE(popup.CurrentIndex(), popup.Count() - 1);
}

void tst_PatternSelectWidget::setCurrentIndexIsSilent()
{
    Chooser chooser;
    chooser.popup.SetCurrentIndex(2);
    QCOMPARE(chooser.popup.CurrentIndex(), 2);
    chooser.Show();
    QCOMPARE(chooser.View()->currentIndex().row(), 2);

    chooser.popup.SetCurrentIndex(7);
    QCOMPARE(chooser.View()->currentIndex().row(), 7);
    for (const int index : {-1, chooser.popup.Count(), INT_MAX, INT_MIN})
        chooser.popup.SetCurrentIndex(index);

    QCOMPARE(chooser.popup.CurrentIndex(), 7);
    QCOMPARE(chooser.log.Entries(), QStringList());
}

void tst_PatternSelectWidget::aClickSelects()
{
    Chooser chooser;
    chooser.Show();

    chooser.Click(9);

    QCOMPARE(chooser.log.Entries(), QStringList({"ItemSelected(9)"}));
    QCOMPARE(chooser.popup.CurrentIndex(), 9);
    QVERIFY(chooser.popup.isVisible());
}

void tst_PatternSelectWidget::aDoubleClickSelectsAndThenChooses()
{
    Chooser chooser;
    chooser.Show();

    chooser.DoubleClick(4);

    QCOMPARE(chooser.log.Entries().first(), QStringLiteral("ItemSelected(4)"));
    QCOMPARE(chooser.log.Count(QStringLiteral("ItemDoubleClicked")), 1);
    QVERIFY(chooser.log.Entries().contains(QStringLiteral("ItemDoubleClicked(4)")));
    QCOMPARE(chooser.popup.CurrentIndex(), 4);
}

void tst_PatternSelectWidget::draggingOffATileSelectsWhereThePressWas()
{
    Chooser chooser;
    chooser.Show();
    QWidget* const viewport = chooser.View()->viewport();

    QTest::mousePress(viewport, Qt::LeftButton, Qt::NoModifier, chooser.CentreOf(3));
    QTest::mouseMove(viewport, chooser.CentreOf(8));
    QTest::mouseRelease(viewport, Qt::LeftButton, Qt::NoModifier, chooser.CentreOf(8));

    QCOMPARE(chooser.popup.CurrentIndex(), chooser.View()->currentIndex().row());
    QCOMPARE(chooser.log.Count(QStringLiteral("ItemSelected")), 1);
}

void tst_PatternSelectWidget::theRightButtonSelectsNothing()
{
    Chooser chooser;
    chooser.Show();

    QTest::mouseClick(chooser.View()->viewport(), Qt::RightButton, Qt::NoModifier, chooser.CentreOf(3));

    QCOMPARE(chooser.popup.CurrentIndex(), chooser.View()->currentIndex().row());
    QCOMPARE(chooser.log.Count(QStringLiteral("ItemDoubleClicked")), 0);
}

void tst_PatternSelectWidget::arrowsSelect()
{
    Chooser chooser;
    chooser.Show();
    const int columns = [&]
    {
        int count = 1;
        while (chooser.CentreOf(count).y() == chooser.CentreOf(0).y())
            ++count;
        return count;
    }();

    chooser.Key(Qt::Key_Right);
    chooser.Key(Qt::Key_Down);
    chooser.Key(Qt::Key_Left);
    chooser.Key(Qt::Key_Up);

    QCOMPARE(chooser.log.Entries(),
             QStringList({"ItemSelected(1)", QStringLiteral("ItemSelected(%1)").arg(columns + 1),
                          QStringLiteral("ItemSelected(%1)").arg(columns), "ItemSelected(0)"}));
    QCOMPARE(chooser.popup.CurrentIndex(), 0);
}

void tst_PatternSelectWidget::homeAndEndSelectTheFirstAndTheLast()
{
    Chooser chooser;
    chooser.Show();

    chooser.Key(Qt::Key_End);
    QCOMPARE(chooser.popup.CurrentIndex(), chooser.popup.Count() - 1);
    chooser.Key(Qt::Key_Home);
    QCOMPARE(chooser.popup.CurrentIndex(), 0);

    QCOMPARE(chooser.log.Count(QStringLiteral("ItemSelected")), 2);
}

void tst_PatternSelectWidget::aKeyAtTheEdgeSaysNothing()
{
    Chooser chooser;
    chooser.Show();

    chooser.Key(Qt::Key_Home);
    chooser.Key(Qt::Key_Up);

    QCOMPARE(chooser.log.Entries(), QStringList());
}

void tst_PatternSelectWidget::enterSelectsAndChooses()
{
    Chooser chooser;
    chooser.popup.SetCurrentIndex(5);
    chooser.Show();

    chooser.Key(Qt::Key_Return);
    chooser.Key(Qt::Key_Enter);

    QCOMPARE(
        chooser.log.Entries(),
        QStringList({"ItemSelected(5)", "ItemDoubleClicked(5)", "ItemSelected(5)", "ItemDoubleClicked(5)"}));
}

void tst_PatternSelectWidget::escapeHides()
{
    Chooser chooser;
    chooser.Show();

    chooser.Key(Qt::Key_Escape);

    QVERIFY(!chooser.popup.isVisible());
    QCOMPARE(chooser.log.Entries(), QStringList());
}

void tst_PatternSelectWidget::aSlotMayHideItDuringADoubleClick()
{
    Chooser chooser;
    connect(&chooser.popup, &PatternSelectWidget::ItemDoubleClicked, &chooser.popup, &QWidget::hide);
    chooser.Show();

    chooser.DoubleClick(4);
    QVERIFY(!chooser.popup.isVisible());
    chooser.Show();

    QCOMPARE(chooser.View()->currentIndex().row(), 4);
}

void tst_PatternSelectWidget::aSlotMayDestroyItDuringADoubleClick()
{
    const QPointer<PatternSelectWidget> popup = new PatternSelectWidget(nullptr);
    connect(popup.data(), &PatternSelectWidget::ItemDoubleClicked, popup.data(), &QObject::deleteLater);
    popup->show();
    QVERIFY(QTest::qWaitForWindowActive(popup));

    QAbstractItemView* const view = popup->findChild<QAbstractItemView*>();
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(20, 20));
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(20, 20));

    QTRY_VERIFY(!popup);
}

void tst_PatternSelectWidget::itIsAWindowEvenWithAParent()
{
    QWidget bar;
    PatternSelectWidget popup(&bar);

    QVERIFY(popup.isWindow());
    QCOMPARE(popup.windowType(), Qt::Tool);
    QVERIFY(popup.windowFlags().testFlag(Qt::FramelessWindowHint));
}

void tst_PatternSelectWidget::itMovesItselfOntoTheScreen()
{
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    Chooser chooser;
    chooser.popup.move(screen.bottomRight() - QPoint(20, 20));
    chooser.Show();
    QVERIFY(screen.contains(chooser.popup.frameGeometry()));

    chooser.popup.hide();
    chooser.popup.move(40, 30);
    chooser.Show();
    QCOMPARE(chooser.popup.pos(), QPoint(40, 30));
}

void tst_PatternSelectWidget::allTilesAreInSight()
{
    Chooser chooser;
    chooser.Show();

    const QRect sight = chooser.View()->viewport()->rect();
    for (int i = 0; i < chooser.popup.Count(); ++i)
        QVERIFY(sight.contains(chooser.View()->visualRect(chooser.View()->model()->index(i, 0))));
    const QRect last =
        chooser.View()->visualRect(chooser.View()->model()->index(chooser.popup.Count() - 1, 0));
    QVERIFY(sight.right() - last.right() <= 2);
    QVERIFY(sight.bottom() - last.bottom() <= 2);
}

void tst_PatternSelectWidget::tilesHaveNames()
{
    Chooser chooser;
    chooser.Show();

    QStringList names;
    for (int i = 0; i < chooser.popup.Count(); ++i)
    {
        const QModelIndex index = chooser.View()->model()->index(i, 0);
        QVERIFY(!index.data(Qt::ToolTipRole).toString().isEmpty());
        names << index.data(Qt::AccessibleTextRole).toString();
    }
    QCOMPARE(names.removeDuplicates(), 0);
    QVERIFY(!names.contains(QString()));
    QVERIFY(!chooser.View()->accessibleName().isEmpty());
}

void tst_PatternSelectWidget::theNameUnderThePointerIsShown()
{
    Chooser chooser;
    chooser.Show();
    QLabel* const label = chooser.popup.findChild<QLabel*>();
    const auto nameOf = [&](int row) { return chooser.View()->model()->index(row, 0).data().toString(); };
    QCOMPARE(label->text(), nameOf(0));

    QMouseEvent move(QEvent::MouseMove, chooser.CentreOf(6), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(chooser.View()->viewport(), &move);
    QCOMPARE(label->text(), nameOf(6));
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(chooser.View()->viewport(), &leave);
    QCOMPARE(label->text(), nameOf(0));
    chooser.Key(Qt::Key_Right);
    QCOMPARE(label->text(), nameOf(1));
}

void tst_PatternSelectWidget::theSelectedTileHasAFrame()
{
    Chooser chooser;
    chooser.popup.SetCurrentIndex(5);
    chooser.Show();

    for (const qreal ratio : {1.0, 2.0})
    {
        const ProbeImage probe(chooser.View()->viewport(), ratio);
        const QColor highlight = chooser.View()->palette().color(QPalette::Highlight);
        const QRect cell = chooser.View()->visualRect(chooser.View()->model()->index(5, 0));
        const QRect bounds = probe.BoundsOf(highlight, 3);
        QVERIFY(cell.contains(bounds));
        QVERIFY(bounds.width() > cell.width() - 8);
    }
}

void tst_PatternSelectWidget::itIsMadeCheaply()
{
    PatternSelectWidget popup(nullptr);
    QVERIFY(popup.findChildren<QWidget*>().isEmpty());
    popup.show();
    QVERIFY(!popup.findChildren<QWidget*>().isEmpty());
}

NV_TEST_MAIN(tst_PatternSelectWidget)
#include "tst_PatternSelectWidget.moc"
