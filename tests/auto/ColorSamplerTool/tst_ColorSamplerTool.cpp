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
        QCOMPARE(host.steps()->count(), 0);
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

    void clearedSamplesComeBack_data()
    {
        QTest::addColumn<QString>("way");
        for (const char* way : {"escape", "cancel", "undo"})
            QTest::newRow(way) << way;
    }
    void clearedSamplesComeBack()
    {
        QFETCH(const QString, way);
        Host host(settings());
        host.click(50, 60);
        host.click(150, 60);
        SignalLog log(host.tool.get());
        QTest::mouseClick(host.Clear(), Qt::LeftButton);
        QVERIFY(host.tool->CanCancel());
        QCOMPARE(log.Entries().constLast(),
                 QString("Message(\"All samples were deleted. Escape brings them back.\")"));

        if (way == "escape")
            QTest::keyClick(host.view, Qt::Key_Escape);
        else if (way == "cancel")
            QVERIFY(host.tool->Cancel());
        else
            QVERIFY(host.tool->Undo());

        QCOMPARE(host.Places(), QList<QPoint>({QPoint(50, 60), QPoint(150, 60)}));
        QVERIFY(host.Clear()->isEnabled());
        QVERIFY(!host.tool->CanCancel());
        QCOMPARE(log.Entries().constLast(), QString("Message(\"\")"));
        QVERIFY(!host.tool->Cancel());
        // They are no change of the document.
        QVERIFY(!host.document->IsModified());
        QCOMPARE(host.steps()->count(), 0);
    }

    void clearedSamplesAreGoneWhenItGoesOn_data()
    {
        QTest::addColumn<QString>("way");
        for (const char* way : {"click", "sample from elsewhere", "other tool", "other canvas"})
            QTest::newRow(way) << way;
    }
    void clearedSamplesAreGoneWhenItGoesOn()
    {
        QFETCH(const QString, way);
        Host host(settings());
        host.click(50, 60);
        QTest::mouseClick(host.Clear(), Qt::LeftButton);

        if (way == "click")
            host.click(150, 60);
        else if (way == "sample from elsewhere")
            host.Samples()->Add(QPoint(150, 60));
        else if (way == "other tool")
            host.tool->Deactivate();
        else
            host.tool->SetCanvas(nullptr, nullptr);

        QVERIFY(!host.tool->CanCancel());
        QVERIFY(!host.tool->Cancel());
        QVERIFY(!host.Places().contains(QPoint(50, 60)));
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
