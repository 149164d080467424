// The move tool: drags and arrow keys, with a selection and without, the frame, undo, large pictures, and all
// that may come in between.

#include "MoveTool.h"

#include <QCheckBox>
#include <QDockWidget>
#include <QSlider>

#include "BusyThreads.h"
#include "NVMoveToolbar.h"
#include "SelectionOutline.h"
#include "SignalLog.h"
#include "TestMain.h"
#include "ToolHost.h"

namespace
{

const QSize LargeSize(2000, 1200);

struct Host : ToolHost<MoveTool>
{
    explicit Host(QSettings* settings, const QImage& picture = BusyPicture())
        : ToolHost(settings, picture) { }
    void pull(const QPointF& from, const QPointF& to, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        press(from.x(), from.y());
        const QPointF half = (from + to) / 2;
        mouse(QEvent::MouseMove, half.x(), half.y(), Qt::NoButton, Qt::LeftButton, modifiers);
        mouse(QEvent::MouseMove, to.x(), to.y(), Qt::NoButton, Qt::LeftButton, modifiers);
        release(to.x(), to.y());
    }
    void key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(view, Qt::Key(key), modifiers);
    }
    QColor shown(double x, double y) const
    {
        const QImage image = view->viewport()->grab().toImage();
        return image.pixelColor(at(x, y) * image.devicePixelRatio());
    }
    NVMoveToolbar* bar() const { return tool->GetMoveBar(); }
    QImage mask() const { return pixels()->GetSelectionMask(); }
    bool isClean() const { return !tool->IsPending() && !tool->IsRendering() && !pixels()->IsBeingEdited(); }
};

// The picture somewhere else, with nothing behind it.
QImage Shifted(const QImage& image, const QPoint& way)
{
    QImage result(image.size(), QImage::Format_ARGB32_Premultiplied);
    result.fill(Qt::transparent);
    QPainter(&result).drawImage(way, image);
    return result;
}

// The rect of it somewhere else, over the rest.
QImage WithMoved(const QImage& image, const QRect& rect, const QPoint& way)
{
    QImage result = image.copy();
    QPainter painter(&result);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(rect, Qt::transparent);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.drawImage(rect.topLeft() + way, image.copy(rect));
    return result;
}

QImage MaskOf(const QRect& rect, const QSize& size = QSize(300, 200))
{
    QImage mask(size, QImage::Format_Grayscale8);
    mask.fill(0);
    QPainter(&mask).fillRect(rect, Qt::white);
    return mask;
}

// A red spot on a clear layer.
QImage Spot(const QRect& rect)
{
    QImage image(300, 200, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter(&image).fillRect(rect, Qt::red);
    return image;
}

// Whether there is nothing but black and white along the upper edge of the rect.
bool IsFramed(const Host& host, const QRect& rect)
{
    const QImage image = host.view->viewport()->grab().toImage();
    const QPoint from = host.at(rect.left(), rect.top());
    for (int x = 3; x < rect.width() - 3; ++x)
    {
        if (image.pixelColor(from + QPoint(x, 0)).saturation() > 40)
            return false;
    }
    return true;
}

} // namespace

class tst_MoveTool : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scratch = std::make_unique<ScratchSettings>(); }

    void hasItsNameAndKey()
    {
        MoveTool tool(settings(), nullptr);

        QCOMPARE(tool.GetName(), QString("Move"));
        QCOMPARE(tool.GetKey(), QKeySequence("V"));
        QVERIFY(!QPixmap("theme:" + tool.GetPictureName() + ".png").isNull());
    }

    void aDragMovesTheLayer()
    {
        Host host(settings());
        const QImage before = host.layer();

        host.pull(QPointF(100, 100), QPointF(130, 80));

        QCOMPARE(host.layer(), Shifted(before, QPoint(30, -20)));
        QCOMPARE(host.steps()->count(), 1);
        QCOMPARE(host.steps()->undoText(), QString("Move"));
        QVERIFY(host.isClean());
        host.steps()->undo();
        QCOMPARE(host.layer(), before);
        host.steps()->redo();
        QCOMPARE(host.layer(), Shifted(before, QPoint(30, -20)));
    }

    void onlyTheCurrentLayerMoves()
    {
        Host host(settings());
        const QImage before = host.layer();
        host.addLayer(Spot(QRect(10, 10, 40, 30)));

        host.pull(QPointF(20, 20), QPointF(80, 90));

        QCOMPARE(host.layer(0), before);
        QCOMPARE(host.layer(1), Spot(QRect(70, 80, 40, 30)));
    }

    void aDragMovesWhatIsSelectedAndTheSelection()
    {
        Host host(settings());
        const QImage before = host.layer();
        const QRect rect(50, 40, 60, 50);
        host.select(rect);

        host.pull(QPointF(200, 150), QPointF(240, 120));

        QCOMPARE(host.layer(), WithMoved(before, rect, QPoint(40, -30)));
        QCOMPARE(host.mask(), MaskOf(rect.translated(40, -30)));
        QCOMPARE(host.steps()->count(), 1);
        host.steps()->undo();
        QCOMPARE(host.layer(), before);
        QCOMPARE(host.mask(), MaskOf(rect));
        host.steps()->redo();
        QCOMPARE(host.layer(), WithMoved(before, rect, QPoint(40, -30)));
        QCOMPARE(host.mask(), MaskOf(rect.translated(40, -30)));
    }

    void movingOnLeavesNoTrace_data()
    {
        QTest::addColumn<bool>("selected");
        QTest::newRow("a layer") << false;
        QTest::newRow("a selection") << true;
    }
    void movingOnLeavesNoTrace()
    {
        QFETCH(const bool, selected);
        Host host(settings());
        const QImage before = host.layer();
        const QRect rect(50, 40, 60, 50);
        if (selected)
            host.select(rect);
        const auto moved = [&](const QPoint& way)
        { return selected ? WithMoved(before, rect, way) : Shifted(before, way); };

        host.pull(QPointF(100, 100), QPointF(-60, 90));
        QCOMPARE(host.layer(), moved(QPoint(-160, -10)));
        host.pull(QPointF(100, 100), QPointF(250, 120));

        // What had left the picture is there again, and what lay below is as it was.
        QCOMPARE(host.layer(), moved(QPoint(-10, 10)));
        QCOMPARE(host.steps()->count(), 2);
        host.steps()->undo();
        QCOMPARE(host.layer(), moved(QPoint(-160, -10)));
        host.steps()->undo();
        QCOMPARE(host.layer(), before);
        if (selected)
            QCOMPARE(host.mask(), MaskOf(rect));
    }

    void whatWasUndoneIsTakenAnew()
    {
        Host host(settings());
        const QImage before = host.layer();
        host.pull(QPointF(100, 100), QPointF(190, 100));
        host.steps()->undo();

        host.pull(QPointF(100, 100), QPointF(100, 110));

        QCOMPARE(host.layer(), Shifted(before, QPoint(0, 10)));
    }

    void anotherChangeInBetweenIsKept()
    {
        Host host(settings());
        host.select(QRect(50, 40, 60, 50));
        host.pull(QPointF(100, 100), QPointF(150, 100));
        host.pixels()->EditLayer(0).fill(Qt::green);
        host.pixels()->NotifyChanged(host.pixels()->GetRect());
        const QImage before = host.layer();

        host.pull(QPointF(100, 100), QPointF(100, 130));

        QCOMPARE(host.layer(), WithMoved(before, QRect(100, 40, 60, 50), QPoint(0, 30)));
    }

    void shiftKeepsToWholeDirections()
    {
        Host host(settings());
        const QImage before = host.layer();

        host.pull(QPointF(100, 100), QPointF(150, 108), Qt::ShiftModifier);

        QCOMPARE(host.layer(), Shifted(before, QPoint(50, 0)));
    }

    void theCanvasShowsItMeanwhile()
    {
        Host host(settings(), PlainPicture(Qt::blue));
        host.select(QRect(50, 40, 60, 50));

        host.press(80, 60);
        host.move(120, 90);
        host.move(130, 100);

        QVERIFY(host.tool->IsPending());
        QCOMPARE(host.shown(135, 110), QColor(Qt::blue));
        // The checkerboard is where it was.
        QVERIFY(host.shown(60, 50) != QColor(Qt::blue));
        QVERIFY(host.shown(60, 50).red() > 190);
        QCOMPARE(host.layer(), PlainPicture(Qt::blue));
        QCOMPARE(host.mask(), MaskOf(QRect(50, 40, 60, 50)));
        QCOMPARE(host.steps()->count(), 0);
        host.release(130, 100);
        QCOMPARE(host.steps()->count(), 1);
    }

    void whatIsShownIsWhatComes_data()
    {
        QTest::addColumn<double>("factor");
        for (double factor : {1.0, 3.0, 0.4})
            QTest::addRow("%g", factor) << factor;
    }
    void whatIsShownIsWhatComes()
    {
        QFETCH(const double, factor);
        Host host(settings(), PlainPicture(QColor(40, 90, 200)));
        host.addLayer(Spot(QRect(80, 60, 90, 70)));
        host.pixels()->SetLayerOpacity(1, 60);
        host.addLayer(Spot(QRect(0, 0, 150, 40)));
        host.pixels()->SetCurrentLayer(1);
        host.view->Scale(factor, QPointF(host.view->viewport()->rect().center()));
        host.press(120, 90);
        host.move(140, 70);
        host.move(150, 60);
        const QImage before = host.view->viewport()->grab().toImage();

        host.release(150, 60);

        const QImage after = host.view->viewport()->grab().toImage();
        QVERIFY(host.steps()->count() == 1);
        int compared = 0;
        for (int y = 3; y < 200; y += 5)
        {
            for (int x = 3; x < 300; x += 5)
            {
                const QPoint place = host.at(x, y);
                if (!before.rect().contains(place))
                    continue;
                ++compared;
                const QRgb one = before.pixel(place);
                const QRgb other = after.pixel(place);
                const bool isNear = qAbs(qRed(one) - qRed(other)) <= 24 &&
                    qAbs(qGreen(one) - qGreen(other)) <= 24 && qAbs(qBlue(one) - qBlue(other)) <= 24;
                QVERIFY2(isNear, qPrintable(QString("%1 %2").arg(x).arg(y)));
            }
        }
        QVERIFY(compared > 500);
    }

    void aClickMovesNothing()
    {
        Host host(settings());
        SignalLog log(host.tool.get());

        host.click(100, 100);
        host.press(100, 100);
        host.move(100.3, 100.2);
        host.release(100.3, 100.2);

        QCOMPARE(host.steps()->count(), 0);
        QCOMPARE(log.Count(), 0);
        QVERIFY(host.isClean());
    }

    void thereAndBackIsNoStep()
    {
        Host host(settings());
        const QImage before = host.layer();
        SignalLog log(host.tool.get());

        host.press(100, 100);
        host.move(140, 100);
        host.move(100, 100);
        host.release(100, 100);

        QCOMPARE(host.steps()->count(), 0);
        QCOMPARE(host.layer(), before);
        QCOMPARE(log.Count("ContentEnded"), 1);
        QVERIFY(host.isClean());
    }

    void escapeTakesItBack()
    {
        Host host(settings());
        const QImage before = host.layer();
        host.press(100, 100);
        host.move(140, 100);
        QVERIFY(host.tool->IsPending());

        host.key(Qt::Key_Escape);
        host.move(180, 100);
        host.release(180, 100);

        QCOMPARE(host.layer(), before);
        QCOMPARE(host.steps()->count(), 0);
        QVERIFY(host.isClean());
        QVERIFY(!host.tool->Cancel());
    }

    void onlyTheLeftButtonMoves()
    {
        Host host(settings());
        host.mouse(QEvent::MouseButtonPress, 100, 100, Qt::RightButton, Qt::RightButton);
        host.mouse(QEvent::MouseMove, 150, 100, Qt::NoButton, Qt::RightButton);
        host.mouse(QEvent::MouseButtonRelease, 150, 100, Qt::RightButton, Qt::NoButton);

        QCOMPARE(host.steps()->count(), 0);
    }

    void nothingToMoveIsSaid()
    {
        Host host(settings(), PlainPicture(Qt::transparent));
        SignalLog log(host.tool.get());
        host.pull(QPointF(10, 10), QPointF(60, 60));
        QCOMPARE(log.Entries(), QStringList{"Message(\"There is nothing on this layer.\")"});

        log.Clear();
        host.pixels()->EditLayer(0) = Spot(QRect(0, 0, 20, 20));
        host.pixels()->NotifyChanged(host.pixels()->GetRect());
        host.select(QRect(100, 100, 20, 20));
        host.pull(QPointF(10, 10), QPointF(60, 60));
        QCOMPARE(log.Entries(), QStringList{"Message(\"The selection holds nothing of this layer.\")"});
        QCOMPARE(host.steps()->count(), 0);
        QVERIFY(host.isClean());
    }

    void aHiddenLayerIsRefused()
    {
        Host host(settings());
        host.pixels()->SetLayerVisible(0, false);
        SignalLog log(host.tool.get());

        host.pull(QPointF(10, 10), QPointF(60, 60));

        QCOMPARE(log.Count("Message"), 1);
        QVERIFY(log.Entries().constFirst().contains("hidden"));
        QCOMPARE(host.steps()->count(), 0);
    }

    void arrowKeysMoveByAPixelAndByTen_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<bool>("shift");
        QTest::addColumn<QPoint>("way");

        QTest::newRow("left") << int(Qt::Key_Left) << false << QPoint(-1, 0);
        QTest::newRow("right") << int(Qt::Key_Right) << false << QPoint(1, 0);
        QTest::newRow("up") << int(Qt::Key_Up) << false << QPoint(0, -1);
        QTest::newRow("down") << int(Qt::Key_Down) << false << QPoint(0, 1);
        QTest::newRow("far left") << int(Qt::Key_Left) << true << QPoint(-10, 0);
        QTest::newRow("far right") << int(Qt::Key_Right) << true << QPoint(10, 0);
        QTest::newRow("far up") << int(Qt::Key_Up) << true << QPoint(0, -10);
        QTest::newRow("far down") << int(Qt::Key_Down) << true << QPoint(0, 10);
    }
    void arrowKeysMoveByAPixelAndByTen()
    {
        QFETCH(const int, key);
        QFETCH(const bool, shift);
        QFETCH(const QPoint, way);
        Host host(settings());
        const QImage before = host.layer();
        const QPointF corner = host.view->MapFromDocument(QPointF());

        host.key(key, shift ? Qt::ShiftModifier : Qt::NoModifier);

        // The view has not panned.
        QCOMPARE(host.view->MapFromDocument(QPointF()), corner);
        QVERIFY(host.tool->IsPending());
        QTRY_COMPARE(host.steps()->count(), 1);
        QCOMPARE(host.layer(), Shifted(before, way));
    }

    void keysInOneGoAreOneStep()
    {
        Host host(settings());
        const QImage before = host.layer();
        const QRect rect(50, 40, 60, 50);
        host.select(rect);

        for (int i = 0; i < 5; ++i)
            host.key(Qt::Key_Right);
        host.key(Qt::Key_Down, Qt::ShiftModifier);
        QCOMPARE(host.steps()->count(), 0);
        host.tool->Finish();

        QCOMPARE(host.steps()->count(), 1);
        QCOMPARE(host.layer(), WithMoved(before, rect, QPoint(5, 10)));
        QCOMPARE(host.mask(), MaskOf(rect.translated(5, 10)));
    }

    void aDragAfterKeysIsAStepOfItsOwn()
    {
        Host host(settings());
        const QImage before = host.layer();
        host.key(Qt::Key_Right);

        host.pull(QPointF(100, 100), QPointF(100, 120));

        QCOMPARE(host.steps()->count(), 2);
        QCOMPARE(host.layer(), Shifted(before, QPoint(1, 20)));
        host.steps()->undo();
        QCOMPARE(host.layer(), Shifted(before, QPoint(1, 0)));
    }

    void keysDuringADragDoNothing()
    {
        Host host(settings());
        const QImage before = host.layer();
        host.press(100, 100);
        host.move(120, 100);

        host.key(Qt::Key_Down);
        host.release(120, 100);

        QCOMPARE(host.layer(), Shifted(before, QPoint(20, 0)));
        QCOMPARE(host.steps()->count(), 1);
    }

    void keysAreLiveOnlyWhileItIsTheTool()
    {
        Host host(settings());
        host.tool->Deactivate();

        host.key(Qt::Key_Right);

        QVERIFY(host.isClean());
        QCOMPARE(host.steps()->count(), 0);
    }

    void anotherControlKeepsItsArrowKeys()
    {
        Host host(settings());
        auto* slider = new QSlider(Qt::Horizontal);
        auto* dock = new QDockWidget(&host.window);
        dock->setWidget(slider);
        host.window.addDockWidget(Qt::BottomDockWidgetArea, dock);
        slider->setFocus();

        QTest::keyClick(slider, Qt::Key_Right);

        QCOMPARE(slider->value(), 1);
        QVERIFY(!host.tool->IsPending());
    }

    void otherKeysAreTheCanvass()
    {
        Host host(settings());
        host.view->Scale(8, QPointF(100, 100));
        const QPointF corner = host.view->MapFromDocument(QPointF());

        host.key(Qt::Key_Right, Qt::ControlModifier);
        host.key(Qt::Key_PageDown);

        QVERIFY(!host.tool->IsPending());
        QVERIFY(host.view->MapFromDocument(QPointF()) != corner);
    }

    void undoOfNudgesTakesThemBack()
    {
        Host host(settings());
        const QImage before = host.layer();
        host.key(Qt::Key_Right);

        QVERIFY(host.tool->Cancel());

        QCOMPARE(host.layer(), before);
        QCOMPARE(host.steps()->count(), 0);
    }

    void theFrameIsEnabledWithContent()
    {
        Host host(settings(), PlainPicture(Qt::transparent));
        QVERIFY(!host.bar()->IsShowFrameEnabled());

        host.addLayer(Spot(QRect(20, 30, 40, 50)));
        QTRY_VERIFY(host.bar()->IsShowFrameEnabled());
        QCOMPARE(host.tool->GetBounds(), QRect(20, 30, 40, 50));

        host.select(QRect(0, 0, 40, 40));
        QTRY_COMPARE(host.tool->GetBounds(), QRect(20, 30, 20, 10));
        host.pixels()->SetCurrentLayer(0);
        QTRY_VERIFY(!host.bar()->IsShowFrameEnabled());
        host.pixels()->SetCurrentLayer(1);
        QTRY_VERIFY(host.bar()->IsShowFrameEnabled());
        host.tool->SetCanvas(nullptr, nullptr);
        QVERIFY(!host.bar()->IsShowFrameEnabled());
    }

    void theFrameIsDrawnAroundTheContentAndGoesAlong()
    {
        Host host(settings(), PlainPicture(Qt::blue));
        host.addLayer(Spot(QRect(50, 40, 60, 50)));
        QTRY_COMPARE(host.tool->GetBounds(), QRect(50, 40, 60, 50));
        QVERIFY(!IsFramed(host, QRect(50, 40, 60, 50)));

        QTest::mouseClick(host.bar()->findChild<QCheckBox*>(), Qt::LeftButton, Qt::NoModifier, QPoint(8, 8));
        QVERIFY(host.bar()->IsShowFrame());
        QVERIFY(IsFramed(host, QRect(50, 40, 60, 50)));
        QVERIFY(host.view->hasFocus());

        host.press(70, 60);
        host.move(90, 80);
        host.move(100, 90);
        QVERIFY(!IsFramed(host, QRect(50, 40, 60, 50)));
        QVERIFY(IsFramed(host, QRect(80, 70, 60, 50)));
        host.release(100, 90);
        QVERIFY(IsFramed(host, QRect(80, 70, 60, 50)));
        host.tool->Deactivate();
        QVERIFY(!IsFramed(host, QRect(80, 70, 60, 50)));
    }

    void theFrameIsRemembered()
    {
        {
            Host host(settings());
            QVERIFY(!host.bar()->IsShowFrame());
            host.bar()->ShowFrame(true);
        }
        Host host(settings());
        QVERIFY(host.bar()->IsShowFrame());
    }

    void theLineOfTheSelectionGoesAlong()
    {
        Host host(settings(), PlainPicture(Qt::blue));
        auto* outline = new SelectionOutline(host.pixels(), host.view);
        host.select(QRect(50, 40, 60, 50));
        QTRY_VERIFY(outline->IsShown() && !outline->IsComputing());
        QVERIFY(IsFramed(host, QRect(50, 40, 60, 50)));

        host.press(70, 60);
        host.move(90, 80);
        host.move(100, 90);
        QVERIFY(IsFramed(host, QRect(80, 70, 60, 50)));
        host.release(100, 90);
        QTRY_VERIFY(outline->IsShown() && !outline->IsComputing());
        QVERIFY(IsFramed(host, QRect(80, 70, 60, 50)));

        // From there on, and back.
        host.press(100, 90);
        host.move(110, 90);
        host.move(120, 90);
        QVERIFY(IsFramed(host, QRect(100, 70, 60, 50)));
        QVERIFY(host.tool->Cancel());
        QTRY_VERIFY(outline->IsShown() && !outline->IsComputing());
        QVERIFY(IsFramed(host, QRect(80, 70, 60, 50)));
        QVERIFY(!IsFramed(host, QRect(100, 70, 60, 50)));
    }

    void commitsWhenTheToolOrTheCanvasChanges_data()
    {
        QTest::addColumn<QString>("way");
        for (const char* way : {"other tool", "other canvas", "finish", "view hidden"})
            QTest::newRow(way) << way;
    }
    void commitsWhenTheToolOrTheCanvasChanges()
    {
        QFETCH(const QString, way);
        Host host(settings());
        const QImage before = host.layer();
        host.press(100, 100);
        host.move(130, 110);

        if (way == "other tool")
            host.tool->Deactivate();
        else if (way == "other canvas")
            host.tool->SetCanvas(nullptr, nullptr);
        else if (way == "finish")
            host.tool->Finish();
        else
            host.view->hide();

        QCOMPARE(host.layer(), Shifted(before, QPoint(30, 10)));
        QCOMPARE(host.steps()->count(), 1);
        QVERIFY(host.isClean());
    }

    void aChangeOfTheDocumentTakesItBack_data()
    {
        QTest::addColumn<QString>("change");
        for (const char* change : {"layer", "pixels", "selection", "size", "hidden", "removed"})
            QTest::newRow(change) << change;
    }
    void aChangeOfTheDocumentTakesItBack()
    {
        QFETCH(const QString, change);
        Host host(settings());
        host.addLayer(BusyPicture());
        host.press(100, 100);
        host.move(130, 110);
        QVERIFY(host.tool->IsPending());

        if (change == "layer")
            host.pixels()->SetCurrentLayer(0);
        else if (change == "pixels")
        {
            host.pixels()->EditLayer(1).fill(Qt::green);
            host.pixels()->NotifyChanged(QRect(0, 0, 300, 200));
        }
        else if (change == "selection")
            host.select(QRect(0, 0, 30, 30));
        else if (change == "size")
            QVERIFY(host.pixels()->ReplaceImages(
                {PlainPicture(Qt::red, QSize(50, 40)), PlainPicture(Qt::red, QSize(50, 40))}, QImage()));
        else if (change == "hidden")
            host.pixels()->SetLayerVisible(1, false);
        else
            QVERIFY(host.pixels()->RemoveLayer(1));
        QImage after = host.layer();

        QVERIFY(!host.tool->IsPending());
        host.release(130, 110);
        QCOMPARE(host.steps()->count(), 0);
        QCOMPARE(host.layer(), after);
    }

    void aChangeOfAnotherLayerIsShown()
    {
        Host host(settings(), PlainPicture(Qt::blue));
        host.addLayer(Spot(QRect(50, 40, 60, 50)));
        host.press(70, 60);
        host.move(90, 80);

        host.pixels()->SetLayerVisible(0, false);

        QVERIFY(host.tool->IsPending());
        QVERIFY(host.shown(250, 150).red() > 190);
        QCOMPARE(host.shown(90, 80), QColor(Qt::red));
        host.release(90, 80);
        QCOMPARE(host.steps()->count(), 1);
    }

    void theDocumentMayGoMeanwhile()
    {
        Host host(settings());
        host.press(100, 100);
        host.move(130, 110);

        host.closeDocument();
        QCoreApplication::processEvents();

        QVERIFY(!host.tool->GetDocument());
        host.tool->SetCanvas(nullptr, nullptr);
        QVERIFY(!host.tool->IsPending() && !host.tool->IsRendering());
    }

    void theToolMayGoMeanwhile()
    {
        Host host(settings());
        const QImage before = host.layer();
        host.press(100, 100);
        host.move(130, 110);

        host.tool.reset();

        QCOMPARE(host.layer(), before);
        host.view->viewport()->grab();
    }

    void aLargePictureIsMovedOnAnotherThread()
    {
        Host host(settings(), BusyPicture(LargeSize));
        const QImage before = host.layer();
        SignalLog log(host.tool.get());

        host.pull(QPointF(100, 100), QPointF(160, 130));
        QTRY_COMPARE(log.Count("ContentEnded"), 1);

        QCOMPARE(host.layer(), Shifted(before, QPoint(60, 30)));
        QCOMPARE(host.steps()->count(), 1);
        host.steps()->undo();
        QCOMPARE(host.layer(), before);
        QVERIFY(host.isClean());
    }

    void escapeGivesUpTheWork()
    {
        Host host(settings(), BusyPicture(LargeSize));
        const QImage before = host.layer();
        const BusyThreads busy;
        host.pull(QPointF(100, 100), QPointF(160, 130));
        QVERIFY(host.tool->IsRendering());
        QVERIFY(host.pixels()->IsBeingEdited());

        host.key(Qt::Key_Escape);

        QVERIFY(host.isClean());
        QCOMPARE(host.layer(), before);
        QCOMPARE(host.steps()->count(), 0);
    }

    void aPressWaitsForTheWork()
    {
        Host host(settings(), BusyPicture(LargeSize));
        const QImage before = host.layer();
        {
            const BusyThreads busy;
            host.pull(QPointF(100, 100), QPointF(160, 130));
            SignalLog log(host.tool.get());
            host.pull(QPointF(100, 100), QPointF(110, 100));
            QVERIFY(host.tool->IsRendering());
            QVERIFY(log.Count("Message") >= 1);
        }
        QTRY_VERIFY(!host.tool->IsRendering());
        QCOMPARE(host.layer(), Shifted(before, QPoint(60, 30)));
        QCOMPARE(host.steps()->count(), 1);
    }

    void aChangeDuringTheWorkIsKept()
    {
        Host host(settings(), BusyPicture(LargeSize));
        SignalLog log;
        {
            const BusyThreads busy;
            host.pull(QPointF(100, 100), QPointF(160, 130));
            QVERIFY(host.tool->IsRendering());
            host.pixels()->EditLayer(0).fill(Qt::green);
            host.pixels()->NotifyChanged(host.pixels()->GetRect());
            log.Watch(host.tool.get());
        }
        QTRY_VERIFY(!host.tool->IsRendering());

        QCOMPARE(host.layer(), PlainPicture(Qt::green, LargeSize));
        QCOMPARE(host.steps()->count(), 0);
        QVERIFY(log.Entries().join(' ').contains("That was not possible"));
        // It can be moved as it is now.
        QTRY_VERIFY(host.isClean());
        host.pull(QPointF(100, 100), QPointF(160, 130));
        QTRY_COMPARE(host.steps()->count(), 1);
        QCOMPARE(host.layer(), Shifted(PlainPicture(Qt::green, LargeSize), QPoint(60, 30)));
    }

    void aDocumentThatGoesDuringTheWorkGivesItUp()
    {
        Host host(settings(), BusyPicture(LargeSize));
        const BusyThreads busy;
        host.pull(QPointF(100, 100), QPointF(160, 130));
        QVERIFY(host.tool->IsRendering());

        QVERIFY(host.tool->Cancel());
        host.closeDocument();

        host.tool->SetCanvas(nullptr, nullptr);
        QVERIFY(!host.tool->IsRendering());
    }

private:
    QSettings* settings() { return &m_scratch->settings; }

    std::unique_ptr<ScratchSettings> m_scratch;
};

NV_TEST_MAIN(tst_MoveTool)
#include "tst_MoveTool.moc"
