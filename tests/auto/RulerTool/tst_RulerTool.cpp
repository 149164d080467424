// The ruler: a line by a drag, its ends, what the bar says of it, and a picture that is turned by it.

#include "RulerTool.h"

#include <QLabel>
#include <QPainter>
#include <QPushButton>

#include "BusyThreads.h"
#include "NVRulerToolbar.h"
#include "RulerLine.h"
#include "SignalLog.h"
#include "TestMain.h"
#include "ToolHost.h"

namespace
{

struct Host : ToolHost<RulerTool>
{
    explicit Host(const QImage& picture = PlainPicture())
        : ToolHost(std::make_unique<RulerTool>(nullptr), picture)
    {
    }
    QLineF Line() const { return RulerLine::Of(document.get())->Get(); }
    void Draw(const QLineF& line)
    {
        press(line.x1(), line.y1());
        move((line.x1() + line.x2()) / 2, (line.y1() + line.y2()) / 2);
        move(line.x2(), line.y2());
        release(line.x2(), line.y2());
    }
    QPushButton* Button(const char* name) const { return window.findChild<QPushButton*>(name); }
    void Straighten()
    {
        QTest::mouseClick(Button("m_pStraighten"), Qt::LeftButton);
        QTRY_VERIFY_WITH_TIMEOUT(!tool->IsStraightening(), 30000);
    }
    QStringList Shown() const
    {
        QStringList texts;
        for (const char* name : {"m_pX1Pos", "m_pY1Pos", "m_pX2Pos", "m_pY2Pos", "m_pLength", "m_pAngle"})
            texts.append(window.findChild<QLabel*>(name)->text());
        return texts;
    }
    QImage Canvas() { return view->viewport()->grab().toImage(); }
};

const QStringList Nothing = {"", "", "", "", "", ""};

// White, with a black line through the middle.
QImage Lined(double angle, const QSize& size = QSize(300, 200))
{
    QImage image = PlainPicture(Qt::white, size);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(size.width() / 2.0, size.height() / 2.0);
    painter.rotate(angle);
    painter.fillRect(QRectF(-9000, -3, 18000, 6), Qt::black);
    return image;
}

// The middle of what is black in a column.
double LineAt(const QImage& image, int x)
{
    double weight = 0;
    double sum = 0;
    for (int y = 0; y < image.height(); ++y)
    {
        const double dark = 255 - qGray(image.pixel(x, y));
        weight += dark;
        sum += dark * y;
    }
    return sum / weight;
}

} // namespace

class tst_RulerTool : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingIsThereAtFirst()
    {
        const Host host;

        QVERIFY(host.Line().isNull());
        QCOMPARE(host.Shown(), Nothing);
        QVERIFY(!host.Button("m_pStraighten")->isEnabled());
        QVERIFY(!host.Button("m_pClear")->isEnabled());
    }

    void dragDrawsALineAndTheBarTellsOfIt()
    {
        Host host;

        host.Draw(QLineF(50, 60, 80, 20));

        QCOMPARE(host.Line(), QLineF(50, 60, 80, 20));
        QCOMPARE(host.Shown(), QStringList({"50.0", "60.0", "80.0", "20.0", "50.0", "53.1\u00b0"}));
        QVERIFY(host.Button("m_pStraighten")->isEnabled());
        QVERIFY(host.Button("m_pClear")->isEnabled());
        QCOMPARE(host.steps()->count(), 0);
    }

    void angleIsCountedAgainstTheClock_data()
    {
        QTest::addColumn<QPointF>("way");
        QTest::addColumn<QString>("angle");
        QTest::newRow("right") << QPointF(60, 0) << QString("0.0\u00b0");
        QTest::newRow("up") << QPointF(0, -60) << QString("90.0\u00b0");
        QTest::newRow("left") << QPointF(-60, 0) << QString("180.0\u00b0");
        QTest::newRow("down") << QPointF(0, 60) << QString("-90.0\u00b0");
        QTest::newRow("down to the right") << QPointF(60, 60) << QString("-45.0\u00b0");
    }
    void angleIsCountedAgainstTheClock()
    {
        QFETCH(const QPointF, way);
        Host host;

        host.Draw(QLineF(QPointF(150, 100), QPointF(150, 100) + way));

        QTEST(host.Shown().last(), "angle");
    }

    void clickLeavesTheLineAlone()
    {
        Host host;
        host.Draw(QLineF(50, 60, 80, 20));

        host.click(200, 150);

        QCOMPARE(host.Line(), QLineF(50, 60, 80, 20));
    }

    void otherButtonsDrawNothing()
    {
        Host host;

        host.mouse(QEvent::MouseButtonPress, 50, 60, Qt::RightButton, Qt::RightButton);
        host.mouse(QEvent::MouseMove, 90, 60, Qt::NoButton, Qt::RightButton);
        host.mouse(QEvent::MouseButtonRelease, 90, 60, Qt::RightButton, Qt::NoButton);

        QVERIFY(host.Line().isNull());
    }

    void endsCanBeDragged()
    {
        Host host;
        host.Draw(QLineF(50, 60, 150, 60));

        host.press(152, 61);
        host.move(160, 100);
        host.release(160, 100);
        QCOMPARE(host.Line(), QLineF(50, 60, 160, 100));
        host.press(49, 62);
        host.move(20, 30);
        host.release(20, 30);

        QCOMPARE(host.Line(), QLineF(20, 30, 160, 100));
    }

    void dragElsewhereDrawsANewLine()
    {
        Host host;
        host.Draw(QLineF(50, 60, 150, 60));

        host.Draw(QLineF(100, 150, 200, 180));

        QCOMPARE(host.Line(), QLineF(100, 150, 200, 180));
    }

    void shiftKeepsToWhole45Degrees()
    {
        Host host;

        host.press(50, 60);
        host.mouse(QEvent::MouseMove, 150, 70, Qt::NoButton, Qt::LeftButton, Qt::ShiftModifier);
        QCOMPARE(host.Line(), QLineF(50, 60, 150, 60));
        host.mouse(QEvent::MouseMove, 150, 70, Qt::NoButton, Qt::LeftButton);
        QCOMPARE(host.Line(), QLineF(50, 60, 150, 70));
        host.mouse(QEvent::MouseMove, 110, 120, Qt::NoButton, Qt::LeftButton, Qt::ShiftModifier);
        QVERIFY(QLineF(host.Line().p2(), QPointF(110, 120)).length() < 1e-6);
        host.release(110, 120);
        host.press(50, 60);
        host.mouse(QEvent::MouseMove, 108, 20, Qt::NoButton, Qt::LeftButton, Qt::ShiftModifier);

        QVERIFY(qAbs(host.Line().p1().x() - 110) < 1e-6);
        host.release(108, 20);
    }

    void escapeBringsTheLineBack()
    {
        Host host;
        host.Draw(QLineF(50, 60, 150, 60));
        host.press(150, 60);
        host.move(160, 150);

        QTest::keyClick(host.view, Qt::Key_Escape);
        QCOMPARE(host.Line(), QLineF(50, 60, 150, 60));
        host.move(200, 190);
        host.release(200, 190);

        QCOMPARE(host.Line(), QLineF(50, 60, 150, 60));
        QVERIFY(!host.tool->Cancel());
    }

    void clearTakesTheLineAway()
    {
        Host host;
        host.Draw(QLineF(50, 60, 150, 60));

        QTest::mouseClick(host.Button("m_pClear"), Qt::LeftButton);

        QVERIFY(host.Line().isNull());
        QCOMPARE(host.Shown(), Nothing);
        QVERIFY(!host.Button("m_pStraighten")->isEnabled());
        QVERIFY(!host.Button("m_pClear")->isEnabled());
    }

    void lineStandsOnTheCanvasWhileTheToolIsThere()
    {
        Host host(PlainPicture(QColor(0, 120, 0)));
        const QImage empty = host.Canvas();
        host.Draw(QLineF(50, 60, 150, 60));
        host.leave();

        QVERIFY(DifferenceOf(empty, host.Canvas()).contains(host.at(100, 60)));
        host.tool->Deactivate();
        QCOMPARE(host.Canvas(), empty);
        host.tool->Activate();
        QVERIFY(host.Canvas() != empty);
        host.tool->GetRulerBar()->Clear();

        QCOMPARE(host.Canvas(), empty);
    }

    void movedLineIsDrawnAnewAtBothPlaces()
    {
        Host host;
        host.Draw(QLineF(50, 60, 150, 60));
        const PaintWatch watch(host.view->viewport());

        RulerLine::Of(host.document.get())->Set(QLineF(50, 150, 150, 180));
        QCoreApplication::processEvents();

        for (const QPoint& point : {QPoint(50, 60), QPoint(150, 60), QPoint(50, 150), QPoint(150, 180)})
            QVERIFY(watch.painted.contains(host.at(point.x() + 4, point.y() - 4)));
        QVERIFY(!watch.painted.contains(host.at(250, 100)));
    }

    void lineSurvivesAChangeOfTools()
    {
        Host host;
        host.Draw(QLineF(50, 60, 150, 60));

        host.tool->Deactivate();
        host.tool->SetCanvas(nullptr, nullptr);
        QCOMPARE(host.Shown(), Nothing);
        host.tool->SetCanvas(host.view, host.document.get());
        host.tool->Activate();

        QCOMPARE(host.Line(), QLineF(50, 60, 150, 60));
        QCOMPARE(host.Shown().at(4), QString("100.0"));
    }

    void straightenMakesTheLineLevel_data()
    {
        QTest::addColumn<double>("angle");
        QTest::addColumn<bool>("backwards");
        QTest::newRow("downwards") << 8.0 << false;
        QTest::newRow("upwards") << -14.0 << false;
        QTest::newRow("drawn from its end") << 8.0 << true;
    }
    void straightenMakesTheLineLevel()
    {
        QFETCH(const double, angle);
        QFETCH(const bool, backwards);
        Host host(Lined(angle));
        // From edge to edge nearly: its ends are whole pixels.
        const QPointF half = QLineF::fromPolar(140, -angle).p2();
        const QLineF along(QPointF(150, 100) - half, QPointF(150, 100) + half);
        host.Draw(backwards ? QLineF(along.p2(), along.p1()) : along);
        const SignalLog log(host.tool.get());

        host.Straighten();

        const QImage image = host.composition();
        QVERIFY(image.width() < 300 && image.width() > 200);
        QVERIFY(image.height() < 200 && image.height() > 100);
        QVERIFY(qAbs(LineAt(image, 4) - LineAt(image, image.width() - 5)) < 1.5);
        QCOMPARE(host.steps()->count(), 1);
        QCOMPARE(host.steps()->undoText(), QString("Straighten"));
        QCOMPARE(log.Count("Straightened"), 1);
        QVERIFY(host.Line().isNull());
        QVERIFY(!host.Button("m_pStraighten")->isEnabled());
        QVERIFY(!host.pixels()->IsBeingEdited());
    }

    void straightenIsUndoneExactly()
    {
        Host host(BusyPicture());
        host.addLayer(PlainPicture(QColor(0, 0, 255, 100)));
        host.select(QRect(20, 30, 100, 80));
        const QImage selection = host.pixels()->GetSelectionMask();
        host.Draw(QLineF(50, 60, 150, 80));

        host.Straighten();
        const QImage after = host.layer(0);
        QCOMPARE(host.layer(1).size(), after.size());
        QCOMPARE(host.pixels()->GetSelectionMask().size(), after.size());
        host.steps()->undo();
        QCOMPARE(host.layer(0), BusyPicture());
        QCOMPARE(host.layer(1), PlainPicture(QColor(0, 0, 255, 100)));
        QCOMPARE(host.pixels()->GetSelectionMask(), selection);
        host.steps()->redo();

        QCOMPARE(host.layer(0), after);
    }

    // What stands upright is not laid down.
    void steepLineIsMadePlumb()
    {
        Host host(BusyPicture());
        host.Draw(QLineF(100, 20, 110, 180));

        host.Straighten();

        const QSize size = host.composition().size();
        QVERIFY(size.width() > 270 && size.width() < 300);
        QVERIFY(size.height() > 170 && size.height() < 200);
    }

    void straightLineChangesNothing_data()
    {
        QTest::addColumn<QLineF>("line");
        QTest::newRow("level") << QLineF(50, 60, 150, 60);
        QTest::newRow("plumb") << QLineF(50, 60, 50, 160);
    }
    void straightLineChangesNothing()
    {
        QFETCH(const QLineF, line);
        Host host(BusyPicture());
        host.Draw(line);
        SignalLog log(host.tool.get());

        host.Straighten();

        QCOMPARE(log.Count("Message"), 1);
        QCOMPARE(host.steps()->count(), 0);
        QCOMPARE(host.Line(), line);
    }

    void workCanBeCancelled()
    {
        const QSize size(1200, 800);
        Host host(PlainPicture(Qt::white, size));
        host.addLayer(PlainPicture(Qt::red, size));
        RulerLine::Of(host.document.get())->Set(QLineF(100, 100, 800, 180));
        SignalLog log(host.tool.get());
        BusyThreads threads;

        QTest::mouseClick(host.Button("m_pStraighten"), Qt::LeftButton);
        QVERIFY(host.tool->IsStraightening());
        QVERIFY(host.pixels()->IsBeingEdited());
        QVERIFY(!host.Button("m_pStraighten")->isEnabled());
        host.press(600, 400);
        QTest::keyClick(host.view, Qt::Key_Escape);

        QVERIFY(!host.tool->IsStraightening());
        threads.Open();
        QCoreApplication::processEvents();
        QVERIFY(!host.pixels()->IsBeingEdited());
        QCOMPARE(host.steps()->count(), 0);
        QCOMPARE(host.pixels()->GetSize(), size);
        QCOMPARE(host.Line(), QLineF(100, 100, 800, 180));
        QCOMPARE(log.Count("Straightened"), 0);
        QVERIFY(host.Button("m_pStraighten")->isEnabled());
    }

    void leavingTheToolWaitsForTheEnd()
    {
        Host host(PlainPicture(Qt::white, QSize(3000, 2000)));
        RulerLine::Of(host.document.get())->Set(QLineF(100, 100, 2000, 400));
        BusyThreads threads;

        QTest::mouseClick(host.Button("m_pStraighten"), Qt::LeftButton);
        QVERIFY(host.tool->IsStraightening());
        threads.Open();
        host.tool->Deactivate();

        QVERIFY(!host.tool->IsStraightening());
        QCOMPARE(host.steps()->count(), 1);
        QVERIFY(host.pixels()->GetSize() != QSize(3000, 2000));
        host.tool->Activate();
    }

    void toolMayDieAtWork()
    {
        BusyThreads threads;
        Host host(PlainPicture(Qt::white));
        RulerLine::Of(host.document.get())->Set(QLineF(10, 10, 200, 40));
        QTest::mouseClick(host.Button("m_pStraighten"), Qt::LeftButton);
        QVERIFY(host.tool->IsStraightening() && host.pixels()->IsBeingEdited());

        host.tool.reset();
        threads.Open();
        QCoreApplication::processEvents();

        QVERIFY(!host.pixels()->IsBeingEdited());
        QCOMPARE(host.steps()->count(), 0);
        QCOMPARE(host.pixels()->GetSize(), QSize(300, 200));
    }

    void documentMayCloseDuringADrag()
    {
        Host host;
        host.press(50, 60);
        host.move(100, 100);

        host.closeDocument();
        host.tool->SetCanvas(nullptr, nullptr);

        QCOMPARE(host.Shown(), Nothing);
        QVERIFY(!host.tool->Cancel());
    }
};

NV_TEST_MAIN(tst_RulerTool)
#include "tst_RulerTool.moc"
