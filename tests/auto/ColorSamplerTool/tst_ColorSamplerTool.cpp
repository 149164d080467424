// The colour sampler: clicks place, move and delete samples, whose markers stand on the canvas.

#include "ColorSamplerTool.h"

#include <QComboBox>
#include <QPushButton>
#include <QScrollBar>

#include "ColorSamples.h"
#include "NVColorSamplerToolbar.h"
#include "ProbeImage.h"
#include "SignalLog.h"
#include "TestMain.h"
#include "ToolHost.h"

namespace
{

struct Host : ToolHost<ColorSamplerTool>
{
    using ToolHost::ToolHost;
    ColorSamples* Samples() const { return ColorSamples::Of(document.get()); }
    QList<QPoint> Places() const
    {
        QList<QPoint> places;
        for (int i = 0; i < Samples()->Count(); ++i)
            places.append(Samples()->GetPixel(i));
        return places;
    }
    QPushButton* Clear() const { return tool->GetSamplerBar()->findChild<QPushButton*>("m_pClear"); }
    QImage Canvas() { return view->viewport()->grab().toImage(); }
};

} // namespace

class tst_ColorSamplerTool : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scratch = std::make_unique<ScratchSettings>(); }

    void clickPlacesASample()
    {
        Host host(settings());
        QVERIFY(!host.Clear()->isEnabled());

        host.click(50, 60);
        host.click(150, 60);

        QCOMPARE(host.Places(), QList<QPoint>({QPoint(50, 60), QPoint(150, 60)}));
        QCOMPARE(host.Samples()->GetCurrent(), 1);
        QVERIFY(host.Clear()->isEnabled());
        QCOMPARE(host.steps()->count(), 2);
    }

    void clickOutsidePlacesNone()
    {
        Host host(settings());

        host.click(-20, 60);
        host.click(320, 60);

        QCOMPARE(host.Samples()->Count(), 0);
    }

    void otherButtonsPlaceNone()
    {
        Host host(settings());

        host.mouse(QEvent::MouseButtonPress, 50, 60, Qt::RightButton, Qt::RightButton);
        host.mouse(QEvent::MouseButtonRelease, 50, 60, Qt::RightButton, Qt::NoButton);

        QCOMPARE(host.Samples()->Count(), 0);
    }

    void eleventhIsRefusedWithAMessage()
    {
        Host host(settings());
        for (int i = 0; i < 10; ++i)
            host.click(20 + 25 * i, 60);
        QCOMPARE(host.Samples()->Count(), 10);
        SignalLog log(host.tool.get());

        host.click(20, 150);

        QCOMPARE(host.Samples()->Count(), 10);
        QCOMPARE(log.Count("Message"), 1);
        // One that is there can still be moved.
        host.press(20, 60);
        host.move(20, 150);
        host.release(20, 150);
        QCOMPARE(host.Samples()->GetPixel(0), QPoint(20, 150));
    }

    void dragMovesASample()
    {
        Host host(settings());
        host.click(50, 60);
        host.click(150, 60);

        host.press(52, 58);
        QCOMPARE(host.Samples()->GetCurrent(), 0);
        host.move(90, 110);
        host.release(90, 110);
        host.move(10, 10, Qt::NoButton);

        QCOMPARE(host.Places(), QList<QPoint>({QPoint(90, 110), QPoint(150, 60)}));
    }

    void dragStaysWithinThePicture()
    {
        Host host(settings());

        host.press(50, 60);
        host.move(-30, 900);

        QCOMPARE(host.Places(), QList<QPoint>({QPoint(0, 199)}));
        host.release(-30, 900);
    }

    void altAndAClickDeleteASample()
    {
        Host host(settings());
        host.click(50, 60);
        host.click(150, 60);

        host.click(150, 160, Qt::AltModifier);
        QCOMPARE(host.Samples()->Count(), 2);
        host.click(51, 61, Qt::AltModifier);

        QCOMPARE(host.Places(), QList<QPoint>({QPoint(150, 60)}));
    }

    void escapeBringsTheSampleBack()
    {
        Host host(settings());
        host.click(50, 60);
        host.press(50, 60);
        host.move(90, 110);

        QTest::keyClick(host.view, Qt::Key_Escape);
        QCOMPARE(host.Places(), QList<QPoint>({QPoint(50, 60)}));
        host.move(120, 120);
        host.release(120, 120);

        QCOMPARE(host.Places(), QList<QPoint>({QPoint(50, 60)}));
    }

    void escapeTakesANewSampleAway()
    {
        Host host(settings());
        host.press(50, 60);
        host.move(90, 110);

        QVERIFY(host.tool->Cancel());
        QVERIFY(!host.tool->Cancel());

        QCOMPARE(host.Samples()->Count(), 0);
    }

    void clearTakesAllAway()
    {
        Host host(settings());
        host.click(50, 60);
        host.click(150, 60);

        QTest::mouseClick(host.Clear(), Qt::LeftButton);

        QCOMPARE(host.Samples()->Count(), 0);
        QVERIFY(!host.Clear()->isEnabled());
    }

    void everyActIsAStepThatCanBeTakenBack_data()
    {
        QTest::addColumn<QString>("act");
        QTest::addColumn<QList<QPoint>>("after");
        QTest::newRow("Add Colour Sample")
            << "add" << QList<QPoint>({QPoint(50, 60), QPoint(150, 60), QPoint(90, 20)});
        QTest::newRow("Move Colour Sample") << "move" << QList<QPoint>({QPoint(90, 110), QPoint(150, 60)});
        QTest::newRow("Delete Colour Sample") << "delete" << QList<QPoint>({QPoint(150, 60)});
        QTest::newRow("Delete All Colour Samples") << "clear" << QList<QPoint>();
    }
    void everyActIsAStepThatCanBeTakenBack()
    {
        QFETCH(const QString, act);
        QFETCH(const QList<QPoint>, after);
        Host host(settings());
        host.click(50, 60);
        host.click(150, 60);
        const QList<QPoint> before = host.Places();
        QCOMPARE(host.steps()->count(), 2);

        if (act == "add")
            host.click(90, 20);
        else if (act == "move")
        {
            host.press(50, 60);
            host.move(90, 110);
            host.release(90, 110);
        }
        else if (act == "delete")
            host.click(50, 60, Qt::AltModifier);
        else
            QTest::mouseClick(host.Clear(), Qt::LeftButton);

        QCOMPARE(host.Places(), after);
        QCOMPARE(host.steps()->count(), 3);
        QCOMPARE(host.steps()->undoText(), QString(QTest::currentDataTag()));
        host.steps()->undo();
        QCOMPARE(host.Places(), before);
        QVERIFY(host.Clear()->isEnabled());
        host.steps()->redo();
        QCOMPARE(host.Places(), after);
        QCOMPARE(host.Clear()->isEnabled(), !after.isEmpty());
    }

    void whatChangesNothingIsNoStep()
    {
        Host host(settings());
        host.click(50, 60);
        QCOMPARE(host.steps()->count(), 1);

        host.click(52, 61);
        host.click(250, 150, Qt::AltModifier);
        host.press(50, 60);
        host.move(90, 110);
        QVERIFY(host.tool->Undo());
        host.release(90, 110);

        QCOMPARE(host.Places(), QList<QPoint>({QPoint(50, 60)}));
        QCOMPARE(host.steps()->count(), 1);
    }

    void otherToolEndsADragWithAStep()
    {
        Host host(settings());
        host.press(50, 60);
        host.move(90, 110);

        host.tool->Deactivate();

        QCOMPARE(host.steps()->count(), 1);
        QCOMPARE(host.Places(), QList<QPoint>({QPoint(90, 110)}));
        host.steps()->undo();
        QCOMPARE(host.Places(), QList<QPoint>());
    }

    void samplesDeletedElsewhereEndADrag()
    {
        Host host(settings());
        host.press(50, 60);

        host.Samples()->Clear();
        QVERIFY(!host.tool->Cancel());
        host.move(90, 110);
        host.release(90, 110);

        QCOMPARE(host.Samples()->Count(), 0);
    }

    void samplesSurviveAChangeOfTools()
    {
        Host host(settings());
        host.click(50, 60);

        host.tool->Deactivate();
        host.tool->SetCanvas(nullptr, nullptr);
        QVERIFY(!host.Clear()->isEnabled());
        host.tool->SetCanvas(host.view, host.document.get());
        host.tool->Activate();

        QCOMPARE(host.Places(), QList<QPoint>({QPoint(50, 60)}));
        QVERIFY(host.Clear()->isEnabled());
    }

    void markersStandOnTheCanvas()
    {
        Host host(settings(), PlainPicture(QColor(0, 120, 0)));
        const QImage empty = host.Canvas();

        host.click(50, 60);
        const QImage one = host.Canvas();
        QRect changed = DifferenceOf(empty, one);
        QVERIFY(changed.contains(host.at(50.5, 60.5)));
        QVERIFY(changed.width() < 60 && changed.height() < 60);
        host.Samples()->SetCurrent(-1);
        const QImage other = host.Canvas();
        QVERIFY(other != one);
        host.Samples()->Clear();

        QCOMPARE(host.Canvas(), empty);
    }

    void markerGoesWithTheViewWhenItScrolls()
    {
        Host host(settings(), PlainPicture(QColor(0, 120, 0), QSize(2000, 1500)));
        host.view->Scale(4, QPointF(200, 100));
        const QPointF sight = host.view->MapToDocument(QPointF(200, 100));
        const QImage empty = host.Canvas();
        host.click(sight.x(), sight.y());
        const QPoint place = host.at(sight.x(), sight.y());
        const QRect mark = DifferenceOf(empty, host.Canvas());
        QVERIFY(mark.contains(place));

        host.view->Scale(0.5, QPointF(10, 10));
        const QPoint nearer = host.at(sight.x(), sight.y());
        QVERIFY(nearer != place);
        // In half the scale it is as large.
        const QRect near = DifferenceOf(empty, host.Canvas());
        QVERIFY(near.contains(nearer) && qAbs(near.width() - mark.width()) <= 2);
        const PaintWatch watch(host.view->viewport());
        host.view->horizontalScrollBar()->setValue(host.view->horizontalScrollBar()->value() + 40);
        const QPoint scrolled = host.at(sight.x(), sight.y());
        QCOMPARE(scrolled, nearer - QPoint(40, 0));
        QCoreApplication::processEvents();

        QVERIFY(DifferenceOf(empty, host.Canvas()).contains(scrolled));
        // Where it was is drawn anew, too: nothing is left there.
        QVERIFY(watch.painted.contains(nearer) && watch.painted.contains(scrolled));
    }

    void movedMarkerIsDrawnAnewAtBothPlacesAlone()
    {
        Host host(settings());
        host.click(50, 60);
        const PaintWatch watch(host.view->viewport());

        host.Samples()->Move(0, QPoint(220, 150));
        QCoreApplication::processEvents();

        for (const QPoint& pixel : {QPoint(50, 60), QPoint(220, 150)})
        {
            QVERIFY(watch.painted.contains(host.at(pixel.x() - 6, pixel.y())));
            QVERIFY(watch.painted.contains(host.at(pixel.x() + 20, pixel.y() - 15)));
        }
        QVERIFY(!watch.painted.contains(host.at(130, 100)));
    }

    void topmostOfTwoIsTaken()
    {
        Host host(settings());
        host.Samples()->Add(QPoint(50, 60));
        host.Samples()->Add(QPoint(56, 60));

        host.press(53, 60);
        host.move(100, 100);
        host.release(100, 100);

        QCOMPARE(host.Places(), QList<QPoint>({QPoint(50, 60), QPoint(100, 100)}));
    }

    void markersAreGoneWithTheTool()
    {
        Host host(settings(), PlainPicture(QColor(0, 120, 0)));
        const QImage empty = host.Canvas();
        host.click(50, 60);

        host.tool->Deactivate();

        QCOMPARE(host.Canvas(), empty);
    }

    void sampleOutsideIsNeitherSeenNorTaken()
    {
        Host host(settings(), PlainPicture(QColor(0, 120, 0)));
        const QImage empty = host.Canvas();
        host.Samples()->Add(QPoint(310, 60));

        QCOMPARE(host.Canvas(), empty);
        host.click(310, 60, Qt::AltModifier);

        QCOMPARE(host.Samples()->Count(), 1);
    }

    void sizeIsToldAndKept()
    {
        {
            Host host(settings());
            QCOMPARE(host.tool->GetSide(), 1);
            SignalLog log(host.tool.get());
            host.tool->GetSamplerBar()->SetSize(2);
            host.tool->GetSamplerBar()->SetSize(2);
            QCOMPARE(log.Entries(), QStringList("SideChanged(5)"));
        }
        ColorSamplerTool tool(settings(), nullptr);

        QCOMPARE(tool.GetSide(), 5);
        QCOMPARE(tool.GetSamplerBar()->GetSize(), 2);
    }

    void badSizeIsLeftOut()
    {
        settings()->setValue("sampler/size", 12);

        ColorSamplerTool tool(settings(), nullptr);

        QCOMPARE(tool.GetSide(), 7);
        QCOMPARE(tool.GetSamplerBar()->GetSize(), 3);
    }

    void documentMayCloseDuringADrag()
    {
        Host host(settings());
        host.press(50, 60);

        host.closeDocument();
        host.tool->SetCanvas(nullptr, nullptr);
        QTest::mouseClick(host.Clear(), Qt::LeftButton);

        QVERIFY(!host.Clear()->isEnabled());
        QVERIFY(!host.tool->Cancel());
    }

private:
    QSettings* settings() { return &m_scratch->settings; }

    std::unique_ptr<ScratchSettings> m_scratch;
};

NV_TEST_MAIN(tst_ColorSamplerTool)
#include "tst_ColorSamplerTool.moc"
