// The crop tool in the window of the editor: the frame by pointer, keys and bar, all that ends it, and what
// the crop makes of the document.

#include "CropTool.h"

#include <QAction>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QUndoStack>

#include "BrushTool.h"
#include "BusyThreads.h"
#include "CropContents.h"
#include "CropOverlay.h"
#include "Document.h"
#include "DocumentWindow.h"
#include "FileTask.h"
#include "ImageMenu.h"
#include "KXColorDlg.h"
#include "KXDocumentInterface.h"
#include "KXShortcut.h"
#include "MainWindow.h"
#include "ModalDriver.h"
#include "NVApplication.h"
#include "NVCropToolbarMain.h"
#include "NVCropToolbarStart.h"
#include "NVSpinBox.h"
#include "OptionArea.h"
#include "ProbeImage.h"
#include "ResizeCommand.h"
#include "SignalLog.h"
#include "TestMain.h"
#include "ToolHost.h"

namespace
{

const QRect Frame(50, 40, 120, 80);
const QPointF Middle(0.5, 0.5);

QRectF BoundsOf(const CropFrame& frame)
{
    return frame.GetOutline().boundingRect();
}

QString TextOf(const QWidget* box)
{
    QString text;
    for (const QLabel* label : box->findChildren<QLabel*>())
        text += label->text();
    return text;
}

} // namespace

class tst_CropTool : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_settings = std::make_unique<QSettings>(m_folder->filePath("s.ini"), QSettings::IniFormat);
        start();
    }

    void cleanup()
    {
        m_window.reset();
        m_settings.reset();
        NVApplication::GetInstance()->SetTheme(0);
        qApp->setStyleSheet(QString());
    }

    void theKeyChoosesIt()
    {
        m_window->ChooseTool(m_window->GetBrushTool());

        QTest::keyClick(view(), Qt::Key_C);

        QCOMPARE(m_window->GetTool(), tool());
        QVERIFY(tool()->GetStartBar()->isVisible());
        QVERIFY(!tool()->HasFrame());
    }

    void aDragIsAFrameAndNothingElse()
    {
        SignalLog log(tool());

        drag(Frame.topLeft(), QPointF(170, 120));

        QVERIFY(tool()->HasFrame());
        QCOMPARE(BoundsOf(tool()->GetFrame()), QRectF(Frame));
        QVERIFY(main()->isVisible());
        QVERIFY(!tool()->GetStartBar()->isVisible());
        QCOMPARE(main()->GetWidth(), 120);
        QCOMPARE(main()->GetHight(), 80);
        QCOMPARE(main()->GetAngle(), 0.0);
        QCOMPARE(composition(), BusyPicture());
        QCOMPARE(steps()->count(), 0);
        QCOMPARE(log.Count("BarChanged"), 1);
        QVERIFY(m_window->statusBar()->currentMessage().contains("Enter"));
    }

    void aClickIsNoFrame()
    {
        press(50, 40);
        move(51, 41);
        release(51, 41);

        QVERIFY(!tool()->HasFrame());
        QVERIFY(tool()->GetStartBar()->isVisible());
    }

    void otherButtonsDrawNothing()
    {
        mouse(QEvent::MouseButtonPress, 50, 40, Qt::RightButton, Qt::RightButton);
        mouse(QEvent::MouseMove, 90, 80, Qt::NoButton, Qt::RightButton);
        mouse(QEvent::MouseButtonRelease, 90, 80, Qt::RightButton, Qt::NoButton);

        QVERIFY(!tool()->HasFrame());
    }

    void aDragStaysWithinThePicture()
    {
        drag(QPointF(-40, -30), QPointF(400, 90));

        QCOMPARE(BoundsOf(tool()->GetFrame()), QRectF(0, 0, 300, 90));
    }

    void shiftDrawsASquare()
    {
        drag(QPointF(50, 40), QPointF(170, 120), Qt::ShiftModifier);

        QCOMPARE(BoundsOf(tool()->GetFrame()), QRectF(50, 40, 80, 80));
    }

    void committing_data()
    {
        QTest::addColumn<QString>("way");
        for (const char* way : {"button", "return", "enter", "double click"})
            QTest::newRow(way) << way;
    }
    void committing()
    {
        QFETCH(const QString, way);
        addLayer(PlainPicture(QColor(200, 30, 60, 100)));
        select(QRect(60, 60, 30, 30));
        const PictureContents before = ContentsOf(pixels());
        drawFrame();
        SignalLog log(tool());

        if (way == "button")
            pressButton("m_pCommit");
        else if (way == "return")
            QTest::keyClick(view(), Qt::Key_Return);
        else if (way == "enter")
            QTest::keyClick(view(), Qt::Key_Enter, Qt::KeypadModifier);
        else
            doubleClick(100, 80);

        QVERIFY(!tool()->HasFrame());
        QVERIFY(tool()->GetStartBar()->isVisible());
        QVERIFY(!main()->isVisible());
        QCOMPARE(log.Count("FrameEnded"), 1);
        QCOMPARE(pixels()->GetSize(), Frame.size());
        QCOMPARE(pixels()->GetLayer(0).image, before.layers[0].copy(Frame));
        QCOMPARE(pixels()->GetLayer(1).image, before.layers[1].copy(Frame));
        QCOMPARE(pixels()->GetSelectionMask(), before.selection.copy(Frame));
        QCOMPARE(steps()->count(), 1);
        QCOMPARE(steps()->undoText(), QString("Crop"));
        const PictureContents after = ContentsOf(pixels());
        steps()->undo();
        QCOMPARE(ContentsOf(pixels()).layers, before.layers);
        QCOMPARE(ContentsOf(pixels()).selection, before.selection);
        steps()->redo();
        QCOMPARE(ContentsOf(pixels()).layers, after.layers);
    }

    void cancelling_data()
    {
        QTest::addColumn<QString>("way");
        for (const char* way : {"button", "escape", "undo", "other tool", "other command", "finish"})
            QTest::newRow(way) << way;
    }
    void cancelling()
    {
        QFETCH(const QString, way);
        const QColor plain = shown(250.4, 180.4);
        drawFrame();
        QVERIFY(shown(250.4, 180.4) != plain);
        SignalLog log(tool());

        if (way == "button")
            pressButton("m_pCancel");
        else if (way == "escape")
            QTest::keyClick(view(), Qt::Key_Escape);
        else if (way == "undo")
            QVERIFY(QMetaObject::invokeMethod(m_window.get(), "OnUndo"));
        else if (way == "other tool")
            m_window->ChooseTool(m_window->GetBrushTool());
        else if (way == "other command")
            QVERIFY(m_window->findChild<ImageMenu*>()->ResizeCanvas(QSize(310, 200), QPoint(0, 0)));
        else
            tool()->Finish();

        QVERIFY(!tool()->HasFrame());
        QVERIFY(tool()->GetFrame().IsNull());
        QCOMPARE(tool()->GetBar(), tool()->GetStartBar());
        QVERIFY(!main()->isVisible());
        QCOMPARE(log.Count("FrameEnded"), 1);
        QCOMPARE(composition().copy(BusyPicture().rect()), BusyPicture());
        QCOMPARE(steps()->count(), way == "other command" ? 1 : 0);
        // No overlay is left.
        QCOMPARE(shown(250.4, 180.4), plain);
        QVERIFY(!tool()->Cancel());
    }

    void escapeBelongsToOthersWithoutAFrame()
    {
        const auto live = [this]
        {
            QStringList keys;
            for (QWidget* bar : {static_cast<QWidget*>(main()), static_cast<QWidget*>(tool()->GetStartBar())})
            {
                for (const KXShortcut* shortcut : bar->findChildren<KXShortcut*>())
                    keys += shortcut->Key().toString();
            }
            return keys;
        };
        drawFrame();
        QVERIFY(live().contains("Esc") && live().contains("Return") && live().contains("Enter"));

        QTest::keyClick(view(), Qt::Key_Escape);

        for (const char* key : {"Esc", "Return", "Enter"})
            QVERIFY(!live().contains(key));
        QVERIFY(!tool()->CanCancel());
    }

    void aHandleIsPulled_data()
    {
        QTest::addColumn<QPointF>("from");
        QTest::addColumn<QPointF>("way");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<QRectF>("frame");

        const int none = Qt::NoModifier;
        QTest::newRow("top left") << QPointF(50, 40) << QPointF(-10, -20) << none << QRectF(40, 20, 130, 100);
        QTest::newRow("top") << QPointF(110, 40) << QPointF(30, -20) << none << QRectF(50, 20, 120, 100);
        QTest::newRow("top right") << QPointF(170, 40) << QPointF(10, 20) << none << QRectF(50, 60, 130, 60);
        QTest::newRow("right") << QPointF(170, 80) << QPointF(30, 50) << none << QRectF(50, 40, 150, 80);
        QTest::newRow("bottom right")
            << QPointF(170, 120) << QPointF(30, 40) << none << QRectF(50, 40, 150, 120);
        QTest::newRow("bottom") << QPointF(110, 120) << QPointF(0, 40) << none << QRectF(50, 40, 120, 120);
        QTest::newRow("bottom left") << QPointF(50, 120) << QPointF(20, -20) << none
                                     << QRectF(70, 40, 100, 60);
        QTest::newRow("left") << QPointF(50, 80) << QPointF(20, 0) << none << QRectF(70, 40, 100, 80);
        QTest::newRow("over the edge of the picture")
            << QPointF(50, 80) << QPointF(-90, 0) << none << QRectF(-40, 40, 210, 80);
        QTest::newRow("taken beside its middle")
            << QPointF(173, 123) << QPointF(30, 40) << none << QRectF(50, 40, 150, 120);
        QTest::newRow("with Shift") << QPointF(170, 120) << QPointF(60, 0) << int(Qt::ShiftModifier)
                                    << QRectF(50, 40, 180, 120);
        QTest::newRow("with Alt") << QPointF(170, 80) << QPointF(10, 0) << int(Qt::AltModifier)
                                  << QRectF(40, 40, 140, 80);
        QTest::newRow("with both") << QPointF(170, 80) << QPointF(30, 0)
                                   << int(Qt::AltModifier | Qt::ShiftModifier) << QRectF(20, 20, 180, 120);
    }
    void aHandleIsPulled()
    {
        QFETCH(const QPointF, from);
        QFETCH(const QPointF, way);
        QFETCH(const int, modifiers);
        drawFrame();

        drag(from, from + way, Qt::KeyboardModifiers(modifiers));

        QTEST(BoundsOf(tool()->GetFrame()), "frame");
        QCOMPARE(main()->GetWidth(), tool()->GetFrame().size.width());
        QCOMPARE(main()->GetHight(), tool()->GetFrame().size.height());
    }

    void aDragInsideMovesTheFrame()
    {
        drawFrame();

        drag(QPointF(90, 70), QPointF(95, 53));

        QCOMPARE(BoundsOf(tool()->GetFrame()), QRectF(Frame.translated(5, -17)));
    }

    void aDragOutsideTurnsTheFrame()
    {
        drawFrame();

        // A quarter around the middle, from the right to below it.
        drag(QPointF(210, 80), QPointF(110, 180));

        QCOMPARE(tool()->GetFrame().angle, 90.0);
        QCOMPARE(main()->GetAngle(), 90.0);
        QCOMPARE(tool()->GetFrame().size, Frame.size());
        drag(QPointF(210, 80), QPointF(210, 70));
        QVERIFY(qAbs(tool()->GetFrame().angle - (90 - qRadiansToDegrees(std::atan(0.1)))) < 0.01);
        QCOMPARE(main()->GetAngle(), tool()->GetFrame().angle);
        drag(QPointF(210, 80), QPointF(210, 87), Qt::ShiftModifier);
        QCOMPARE(tool()->GetFrame().angle, 90.0);
    }

    void theReferencePointStaysWhenTheFrameIsTurned()
    {
        drawFrame();
        main()->SetAnchor(1);

        drag(QPointF(210, 40), QPointF(50, 190));

        QCOMPARE(tool()->GetFrame().angle, 90.0);
        QVERIFY(QLineF(tool()->GetFrame().PointAt({0, 0}), QPointF(50, 40)).length() < 0.01);
    }

    void aSmallFrameHasNoHandlesInItsEdges()
    {
        drag(QPointF(50, 40), QPointF(80, 100));

        drag(QPointF(65, 40), QPointF(75, 50));

        // Moved, for the upper edge is too short for a handle.
        QCOMPARE(BoundsOf(tool()->GetFrame()), QRectF(60, 50, 30, 60));
    }

    void thePointerShowsWhatItTakes_data()
    {
        QTest::addColumn<QPointF>("place");
        QTest::addColumn<int>("cursor");

        QTest::newRow("inside") << QPointF(80, 70) << int(Qt::SizeAllCursor);
        QTest::newRow("corner") << QPointF(50, 40) << int(Qt::SizeFDiagCursor);
        QTest::newRow("other corner") << QPointF(170, 40) << int(Qt::SizeBDiagCursor);
        QTest::newRow("right") << QPointF(170, 80) << int(Qt::SizeHorCursor);
        QTest::newRow("top") << QPointF(110, 40) << int(Qt::SizeVerCursor);
        QTest::newRow("outside") << QPointF(250, 180) << int(Qt::BitmapCursor);
    }
    void thePointerShowsWhatItTakes()
    {
        QFETCH(const QPointF, place);
        drawFrame();

        mouse(QEvent::MouseMove, place.x(), place.y(), Qt::NoButton, Qt::NoButton);

        QTEST(int(view()->viewport()->cursor().shape()), "cursor");
        pressButton("m_pCancel");
        QCOMPARE(view()->viewport()->cursor().shape(), Qt::CrossCursor);
    }

    void thePointerThatTurnsIsAsSharpAsTheScreen()
    {
        drawFrame();
        mouse(QEvent::MouseMove, 250, 180, Qt::NoButton, Qt::NoButton);
        const double ratio = view()->devicePixelRatioF();

        const QCursor cursor = view()->viewport()->cursor();

        QCOMPARE(cursor.pixmap().devicePixelRatioF(), ratio);
        QCOMPARE(cursor.pixmap().size(), QSize(24, 24) * ratio);
        QCOMPARE(cursor.hotSpot(), QPoint(12, 12));
    }

    void thePointerThatTurnsIsDrawnForEachScreen()
    {
        const CropFrame frame = CropFrameOf(Frame);
        const QCursor plain = CropCursor(CropHit(), frame, 1);

        const QPixmap dense = CropCursor(CropHit(), frame, 2).pixmap();

        QCOMPARE(dense.devicePixelRatioF(), 2.0);
        QCOMPARE(dense.size(), QSize(48, 48));
        // Finer than the same pixels made twice as large.
        QVERIFY(dense.toImage() != plain.pixmap().toImage().scaled(48, 48));
        QCOMPARE(CropCursor(CropHit(), frame, 1).pixmap().toImage(), plain.pixmap().toImage());
    }

    void theHandleUnderThePointerIsLit()
    {
        drawFrame();
        mouse(QEvent::MouseMove, 100, 70, Qt::NoButton, Qt::NoButton);
        const QColor plain = shown(50, 40);

        mouse(QEvent::MouseMove, 50, 40, Qt::NoButton, Qt::NoButton);
        const QColor lit = shown(50, 40);
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(view()->viewport(), &leave);
        QCoreApplication::processEvents();

        QVERIFY(plain != lit);
        QCOMPARE(lit, view()->palette().color(QPalette::Highlight));
        QCOMPARE(shown(50, 40), plain);
    }

    void theBarTurnsTheFrameAboutTheReferencePoint()
    {
        drawFrame();
        main()->SetAnchor(9);

        type<QDoubleSpinBox>("m_pAngle", "30");

        QCOMPARE(tool()->GetFrame().angle, 30.0);
        QVERIFY(QLineF(tool()->GetFrame().PointAt({1, 1}), QPointF(170, 120)).length() < 1e-6);
    }

    void typingAnAngleIsNotDisturbed()
    {
        drawFrame();

        type<QDoubleSpinBox>("m_pAngle", "-12.75");

        QCOMPARE(tool()->GetFrame().angle, -12.75);
        QCOMPARE(main()->findChild<QDoubleSpinBox*>("m_pAngle")->value(), -12.75);
    }

    void theBarResizesTheFrameAboutTheReferencePoint_data()
    {
        QTest::addColumn<int>("anchor");
        QTest::addColumn<QRectF>("frame");

        QTest::newRow("top left") << 1 << QRectF(50, 40, 60, 20);
        QTest::newRow("middle") << 5 << QRectF(80, 70, 60, 20);
        QTest::newRow("bottom right") << 9 << QRectF(110, 100, 60, 20);
    }
    void theBarResizesTheFrameAboutTheReferencePoint()
    {
        QFETCH(const int, anchor);
        drawFrame();
        main()->SetAnchor(anchor);

        main()->SetWidth(60);
        main()->SetHeight(20);

        QTEST(BoundsOf(tool()->GetFrame()), "frame");
    }

    void aSizeIsTypedIntoTheBar()
    {
        drawFrame();

        type<NVSpinBox>("m_pWidth", "64");
        QTest::keyClick(main()->findChild<NVSpinBox*>("m_pWidth"), Qt::Key_Return);

        QCOMPARE(tool()->GetFrame().size, QSize(64, 80));
        QVERIFY(tool()->HasFrame());
        QVERIFY(view()->hasFocus());
        QTest::keyClick(view(), Qt::Key_Return);
        QCOMPARE(pixels()->GetSize(), QSize(64, 80));
    }

    void endKeysInTheAngleGoBackToTheCanvas_data()
    {
        QTest::addColumn<int>("key");
        QTest::newRow("return") << int(Qt::Key_Return);
        QTest::newRow("enter") << int(Qt::Key_Enter);
        QTest::newRow("escape") << int(Qt::Key_Escape);
    }
    void endKeysInTheAngleGoBackToTheCanvas()
    {
        QFETCH(const int, key);
        drawFrame();
        type<QDoubleSpinBox>("m_pAngle", "10");

        QTest::keyClick(QApplication::focusWidget(), Qt::Key(key));

        QVERIFY(view()->hasFocus());
        QVERIFY(tool()->HasFrame());
        QCOMPARE(tool()->GetFrame().angle, 10.0);
        QCOMPARE(steps()->count(), 0);
    }

    void theShieldIsLive()
    {
        start(PlainPicture(Qt::white));
        drawFrame();
        const QPointF outside(250, 180);
        const QPointF inside(80, 60);

        QCOMPARE(shown(outside), QColor(127, 127, 127));
        QCOMPARE(shown(inside), QColor(Qt::white));
        main()->SetShieldOpacity(100);
        QCOMPARE(shown(outside), QColor(Qt::black));
        main()->SetShieldColor(Qt::green);
        QCOMPARE(shown(outside), QColor(Qt::green));
        main()->SetShieldColor(QColor(0, 255, 0, 0));
        QCOMPARE(shown(outside), QColor(Qt::white));
        main()->SetShieldColor(Qt::red);
        main()->SetShieldEnabled(false);
        QCOMPARE(shown(outside), QColor(Qt::white));
        QCOMPARE(shown(inside), QColor(Qt::white));
    }

    void theColorDialogIsSeenOnTheCanvas()
    {
        start(PlainPicture(Qt::white));
        drawFrame();
        main()->SetShieldOpacity(100);
        QColor during;
        ModalDriver driver(
            [&](QWidget* window)
            {
                qobject_cast<KXColorDlg*>(window)->SetCurrentColor(Qt::blue);
                during = shown(250, 180);
                ModalDriver::Press(window, "Cancel");
            });

        pressButton("m_pShieldColor");

        QVERIFY(driver.Finished());
        QCOMPARE(during, QColor(Qt::blue));
        QCOMPARE(shown(250, 180), QColor(Qt::black));
        QVERIFY(tool()->HasFrame());
    }

    void theShieldFollowsTheFrame()
    {
        start(PlainPicture(Qt::white));
        drawFrame();
        main()->SetShieldOpacity(100);

        drag(QPointF(170, 80), QPointF(270, 80));

        QCOMPARE(shown(250, 50), QColor(Qt::white));
        QCOMPARE(shown(280, 50), QColor(Qt::black));
        main()->SetAngle(90);
        QCOMPARE(shown(250, 80), QColor(Qt::black));
        QCOMPARE(shown(150, 20), QColor(Qt::white));
    }

    void closeUpTheFrameIsDrawnWhereItIs_data()
    {
        QTest::addColumn<double>("angle");
        QTest::newRow("upright") << 0.0;
        QTest::newRow("turned") << 30.0;
    }
    // A picture that is far larger on the screen than a painter takes.
    void closeUpTheFrameIsDrawnWhereItIs()
    {
        QFETCH(const double, angle);
        start(PlainPicture(Qt::white, QSize(3000, 2000)));
        view()->FitInView();
        drag(QPointF(300, 300), QPointF(2700, 1700));
        main()->SetShieldOpacity(100);
        main()->SetAngle(angle);
        // Off the lines between pixels that are shown here.
        const QPointF right = tool()->GetFrame().PointAt({1, 0.2003});
        const QPointF left = tool()->GetFrame().PointAt({0, 0.2003});
        const QPointF out = 0.3 * (right - left) / tool()->GetFrame().size.width();

        view()->Scale(64 / view()->GetScale(), view()->MapFromDocument(right));

        QCOMPARE(view()->GetScale(), 64.0);
        QCOMPARE(shown(right + out), QColor(Qt::black));
        QCOMPARE(shown(right - out), QColor(Qt::white));
    }

    void guidesAreLive()
    {
        start(PlainPicture(Qt::white));
        drawFrame();
        const auto dark = [this](double x, double y) { return shown(x, y) != QColor(Qt::white); };

        // Beside the reference point in the middle.
        QVERIFY(!dark(90, 60) && !dark(100, 60));
        main()->SetGuideOverlayType(1);
        QVERIFY(dark(90, 60) && dark(130, 60) && dark(70, 66.7) && !dark(100, 60));
        main()->SetGuideOverlayType(2);
        QVERIFY(dark(100, 55) && dark(90, 55) && dark(55, 60) && !dark(95, 55));
        main()->SetGuideOverlayType(-1);
        QVERIFY(!dark(90, 60) && !dark(100, 55));
    }

    void aSizeInTheStartBarKeepsTheProportion()
    {
        tool()->GetStartBar()->SetWidth(60);
        tool()->GetStartBar()->SetHeight(30);

        drag(QPointF(50, 40), QPointF(150, 140));
        QCOMPARE(BoundsOf(tool()->GetFrame()), QRectF(50, 40, 100, 50));
        drag(QPointF(150, 90), QPointF(190, 92));
        QCOMPARE(BoundsOf(tool()->GetFrame()), QRectF(50, 40, 140, 70));
        main()->SetAnchor(1);
        main()->SetWidth(80);
        QCOMPARE(tool()->GetFrame().size, QSize(80, 40));
        QCOMPARE(main()->GetHight(), 40);
        main()->SetHeight(60);
        QCOMPARE(tool()->GetFrame().size, QSize(120, 60));
        const CropFrame frame = tool()->GetFrame();
        QCOMPARE(tool()->GetTargetSize(), QSize(60, 30));

        tool()->Commit();

        QCOMPARE(pixels()->GetSize(), QSize(60, 30));
        const QVector<QImage> layers = {BusyPicture()};
        QCOMPARE(composition(), CropContents({layers, QImage()}, frame, QSize(60, 30)).layers.first());
    }

    void oneSideInTheStartBarScalesToIt_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("height");
        QTest::addColumn<QSize>("size");

        QTest::newRow("none") << 0 << 0 << QSize(120, 80);
        QTest::newRow("width") << 60 << 0 << QSize(60, 40);
        QTest::newRow("height") << 0 << 160 << QSize(240, 160);
        QTest::newRow("beyond what a document may have") << 10000 << 0 << QSize(10000, 6667);
        QTest::newRow("down to nothing") << 0 << 1 << QSize(2, 1);
    }
    void oneSideInTheStartBarScalesToIt()
    {
        QFETCH(const int, width);
        QFETCH(const int, height);
        tool()->GetStartBar()->SetWidth(width);
        tool()->GetStartBar()->SetHeight(height);

        drawFrame();

        QCOMPARE(BoundsOf(tool()->GetFrame()), QRectF(Frame));
        QTEST(tool()->GetTargetSize(), "size");
    }

    void theSizeIsTakenFromTheImage()
    {
        QTest::mouseClick(tool()->GetStartBar()->findChild<QPushButton*>("m_pFromImage"), Qt::LeftButton);

        QCOMPARE(tool()->GetStartBar()->GetWidth(), 300);
        QCOMPARE(tool()->GetStartBar()->GetHeight(), 200);
        m_window->CloseDocument(m_window->GetDocumentWindows().first());
        auto* button = tool()->GetStartBar()->findChild<QPushButton*>("m_pFromImage");
        QVERIFY(!button->isEnabled());
        m_window->OpenImage(BusyPicture(QSize(30, 20)), "Other");
        QVERIFY(button->isEnabled());
    }

    void aTurnedFrameIsCroppedUpright()
    {
        drawFrame();
        main()->SetAngle(20);
        const CropFrame frame = tool()->GetFrame();

        tool()->Commit();

        QCOMPARE(pixels()->GetSize(), Frame.size());
        QCOMPARE(composition(), CropContents({{BusyPicture()}, QImage()}, frame, frame.size).layers.first());
    }

    void theWholePictureNeedsNoCrop()
    {
        drag(QPointF(0, 0), QPointF(300, 200));

        tool()->Commit();

        QCOMPARE(steps()->count(), 0);
        QVERIFY(!tool()->HasFrame());
        QVERIFY(m_window->statusBar()->currentMessage().contains("nothing to crop"));
    }

    void theWholePictureIsHiddenNowhere()
    {
        drag(QPointF(0, 0), QPointF(300, 200));
        main()->SetDeleteArea(false);

        tool()->Commit();

        QCOMPARE(steps()->count(), 0);
        QCOMPARE(pixels()->GetLayerCount(), 1);
    }

    void hidingKeepsThePixels()
    {
        addLayer(PlainPicture(QColor(200, 30, 60, 100)));
        drawFrame();
        QTest::mouseClick(main()->findChild<QRadioButton*>("m_pHideArea"), Qt::LeftButton, Qt::NoModifier,
                          QPoint(8, 12));
        QVERIFY(!main()->IsDeleteArea());
        const CropFrame frame = tool()->GetFrame();

        pressButton("m_pCommit");

        QCOMPARE(pixels()->GetSize(), QSize(300, 200));
        QCOMPARE(pixels()->GetLayerCount(), 4);
        QVERIFY(!pixels()->GetLayer(0).visible && !pixels()->GetLayer(2).visible);
        QCOMPARE(pixels()->GetLayer(0).image, BusyPicture());
        QCOMPARE(pixels()->GetLayer(1).image, WithoutOutside(BusyPicture(), frame));
        QCOMPARE(qAlpha(pixels()->GetComposition().pixel(5, 5)), 0);
        QCOMPARE(steps()->undoText(), QString("Crop"));
        steps()->undo();
        QCOMPARE(pixels()->GetLayerCount(), 2);
        QCOMPARE(pixels()->GetLayer(0).image, BusyPicture());
    }

    void theAreaTellsWhatItDoes()
    {
        QVERIFY(main()->findChild<QRadioButton*>("m_pHideArea")->toolTip().contains("hidden layer"));
        QVERIFY(!main()->findChild<QRadioButton*>("m_pDeleteArea")->toolTip().isEmpty());
    }

    void aNewDocumentIsMade_data()
    {
        QTest::addColumn<bool>("deletes");
        QTest::newRow("delete") << true;
        QTest::newRow("hide") << false;
    }
    void aNewDocumentIsMade()
    {
        QFETCH(const bool, deletes);
        KXDocumentInterface::Layer above;
        above.name = "Above";
        above.image = PlainPicture(QColor(200, 30, 60, 100));
        above.opacity = 40;
        above.blendMode = 3;
        QVERIFY(pixels()->InsertLayer(1, above));
        pixels()->SetLayerVisible(1, false);
        pixels()->SetCurrentLayer(0);
        pixels()->SetResolution(300);
        select(QRect(60, 60, 30, 30));
        const PictureContents before = ContentsOf(pixels());
        const Document* source = document();
        drawFrame();
        main()->SetDeleteArea(deletes);

        pressButton("m_pToNewDocument");

        QCOMPARE(m_window->GetDocumentWindows().size(), 2);
        QVERIFY(document() != source);
        QCOMPARE(ContentsOf(source->GetPixels()).layers, before.layers);
        QCOMPARE(source->GetPixels()->GetLayerCount(), 2);
        QVERIFY(!source->IsModified());
        QCOMPARE(document()->GetTitle(), QString("Picture crop"));
        QCOMPARE(pixels()->GetResolution(), 300.0);
        const int top = pixels()->GetLayerCount() - 1;
        QCOMPARE(top, deletes ? 1 : 3);
        QCOMPARE(pixels()->GetSize(), deletes ? Frame.size() : QSize(300, 200));
        QCOMPARE(pixels()->GetLayer(top).name, QString("Above"));
        QCOMPARE(pixels()->GetLayer(top).opacity, 40);
        QCOMPARE(pixels()->GetLayer(top).blendMode, 3);
        QVERIFY(!pixels()->GetLayer(top).visible);
        QCOMPARE(pixels()->GetCurrentLayer(), deletes ? 0 : 1);
        QCOMPARE(pixels()->GetSelectionMask(), deletes ? before.selection.copy(Frame) : before.selection);
        QCOMPARE(pixels()->GetLayer(0).image, deletes ? before.layers[0].copy(Frame) : before.layers[0]);
        QCOMPARE(steps()->count(), 0);
        // In no file yet: closing it asks.
        QVERIFY(document()->IsModified());
    }

    void aNewDocumentOfTheWholePictureIsACopy()
    {
        drag(QPointF(0, 0), QPointF(300, 200));

        tool()->CommitToNewDocument();

        QCOMPARE(m_window->GetDocumentWindows().size(), 2);
        QCOMPARE(composition(), BusyPicture());
    }

    void aSelectionIsTheFrameWhenTheToolStarts()
    {
        m_window->ChooseTool(m_window->GetBrushTool());
        select(QRect(60, 50, 30, 40));

        m_window->ChooseTool(tool());

        QVERIFY(tool()->HasFrame());
        QCOMPARE(BoundsOf(tool()->GetFrame()), QRectF(60, 50, 30, 40));
        QVERIFY(main()->isVisible());
        QTest::keyClick(view(), Qt::Key_Return);
        QCOMPARE(pixels()->GetSize(), QSize(30, 40));
    }

    void aSelectionIsTheFrameInTheProportionOfTheStartBar()
    {
        m_window->ChooseTool(m_window->GetBrushTool());
        tool()->GetStartBar()->SetWidth(100);
        tool()->GetStartBar()->SetHeight(100);
        select(QRect(60, 50, 30, 40));

        m_window->ChooseTool(tool());

        QCOMPARE(BoundsOf(tool()->GetFrame()), QRectF(60, 55, 30, 30));
    }

    void aFrameBesideThePictureIsRefused()
    {
        drawFrame();
        drag(QPointF(90, 70), QPointF(-200, 70));
        QString text;
        ModalDriver driver(
            [&text](QWidget* box)
            {
                text = TextOf(box);
                ModalDriver::Press(box, "OK");
            });

        tool()->Commit();

        QVERIFY(driver.Finished());
        QVERIFY2(text.contains("beside the picture"), qPrintable(text));
        QVERIFY(tool()->HasFrame());
        QCOMPARE(steps()->count(), 0);
    }

    void whatDoesNotFitIntoMemoryIsRefusedWithItsSize()
    {
        start(PlainPicture(Qt::white, QSize(8, 8)));
        for (int i = 0; i < 5000; ++i)
            addLayer(PlainPicture(Qt::white, QSize(8, 8)));
        tool()->GetStartBar()->SetWidth(10000);
        tool()->GetStartBar()->SetHeight(10000);
        view()->Scale(8, QPointF());
        drag(QPointF(0, 0), QPointF(8, 8));
        QVERIFY(tool()->HasFrame());
        QString text;
        ModalDriver driver(
            [&text](QWidget* box)
            {
                text = TextOf(box);
                ModalDriver::Press(box, "OK");
            });

        tool()->Commit();

        QVERIFY(driver.Finished());
        QVERIFY2(text.contains("10000 by 10000 pixels"), qPrintable(text));
        QVERIFY(tool()->HasFrame());
        QCOMPARE(steps()->count(), 0);
    }

    void longWorkShowsProgressAndCanBeCancelled()
    {
        drawFrame();
        const BusyThreads gate;
        bool wasShown = false;
        const auto cancel = [&]
        {
            wasShown = m_window->statusBar()->findChild<QProgressBar*>()->isVisible();
            QVERIFY(tool()->HasFrame());
            tool()->Commit();
            for (QPushButton* button : m_window->statusBar()->findChildren<QPushButton*>())
                QTest::mouseClick(button, Qt::LeftButton);
            const_cast<BusyThreads&>(gate).Open();
        };
        whenBusy(cancel, [this] { tool()->Commit(); });

        QVERIFY(wasShown);
        QVERIFY(tool()->HasFrame());
        QCOMPARE(steps()->count(), 0);
        QVERIFY(m_window->statusBar()->currentMessage().contains("as it was"));
        QTest::keyClick(view(), Qt::Key_Return);
        QCOMPARE(pixels()->GetSize(), Frame.size());
    }

    void takingTheFrameAwayWhileItWorksCancels()
    {
        drawFrame();
        const BusyThreads gate;
        whenBusy(
            [&]
            {
                QVERIFY(tool()->Cancel());
                const_cast<BusyThreads&>(gate).Open();
            },
            [this] { tool()->Commit(); });

        QVERIFY(!tool()->HasFrame());
        QCOMPARE(steps()->count(), 0);
        QCOMPARE(composition(), BusyPicture());
    }

    void longWorkThatIsNotCancelledIsDone()
    {
        drawFrame();
        BusyThreads gate;
        whenBusy([&gate] { gate.Open(); }, [this] { tool()->Commit(); });

        QCOMPARE(pixels()->GetSize(), Frame.size());
        QCOMPARE(steps()->count(), 1);
    }

    void closingTheDocumentWithAFrameIsSafe()
    {
        drawFrame();

        QVERIFY(m_window->CloseDocument(m_window->GetDocumentWindows().first()));

        QVERIFY(!tool()->HasFrame());
        QVERIFY(tool()->GetStartBar()->isVisible());
        tool()->Commit();
        tool()->CommitToNewDocument();
    }

    void switchingTheDocumentTakesTheFrameAway()
    {
        drawFrame();

        m_window->OpenImage(PlainPicture(Qt::white), "Other");

        QVERIFY(!tool()->HasFrame());
        QVERIFY(tool()->GetStartBar()->isVisible());
        QCOMPARE(shown(250, 180), QColor(Qt::white));
    }

    void closingTheWindowWithAFrameIsSafe()
    {
        drawFrame();
        press(90, 70);
        move(100, 80);

        m_window.reset();
    }

    void anotherSizeOfThePictureTakesTheFrameAway()
    {
        drawFrame();

        QVERIFY(pixels()->ReplaceImages({BusyPicture(QSize(30, 20))}, QImage()));

        QVERIFY(!tool()->HasFrame());
    }

    void aDocumentThatDiesTakesTheFrameAway()
    {
        FileTask task(m_window->statusBar());
        auto other = std::make_unique<CropTool>(
            CropTool::Host{m_settings.get(), &task, m_window.get(), [](std::unique_ptr<Document>) {}},
            nullptr);
        auto lone = std::make_unique<Document>(BusyPicture(), QString(), "Lone");
        NVDocumentView canvas(lone->GetModel());
        canvas.resize(500, 400);
        other->SetCanvas(&canvas, lone.get());
        other->Activate();
        QImage mask(QSize(300, 200), QImage::Format_Grayscale8);
        mask.fill(255);
        QVERIFY(lone->GetPixels()->SetSelectionMask(mask));
        other->Deactivate();
        other->Activate();
        QVERIFY(other->HasFrame());

        canvas.SetModel(nullptr);
        lone.reset();

        QVERIFY(!other->HasFrame());
        other.reset();
    }

    void valuesAreKeptFromRunToRun()
    {
        tool()->GetStartBar()->SetWidth(64);
        tool()->GetStartBar()->SetHeight(32);
        drag(Frame.topLeft(), QPointF(170, 120));
        main()->SetAnchor(3);
        main()->SetShieldColor(QColor(10, 20, 30, 40));
        main()->SetShieldOpacity(77);
        main()->SetShieldEnabled(false);
        main()->SetDeleteArea(false);
        main()->SetGuideOverlayType(2);
        m_window->ChooseTool(m_window->GetBrushTool());

        start();

        QCOMPARE(tool()->GetStartBar()->GetWidth(), 64);
        QCOMPARE(tool()->GetStartBar()->GetHeight(), 32);
        QCOMPARE(main()->GetAnchor(), 3);
        QCOMPARE(main()->GetShieldColor(), QColor(10, 20, 30, 40));
        QCOMPARE(main()->GetShieldOpacity(), 77);
        QVERIFY(!main()->IsShieldEnabled());
        QVERIFY(!main()->IsDeleteArea());
        QCOMPARE(main()->GetGuideOverlayType(), 2);
    }

    void badValuesInTheSettingsAreLeftOut()
    {
        m_settings->setValue("crop/width", "x");
        m_settings->setValue("crop/height", -7);
        m_settings->setValue("crop/anchor", 99);
        m_settings->setValue("crop/shieldColor", "no colour");
        m_settings->setValue("crop/guides", 12);
        start();

        QVERIFY(tool()->GetStartBar()->IsClear());
        QCOMPARE(main()->GetAnchor(), 9);
        QCOMPARE(main()->GetShieldColor(), QColor(Qt::black));
        QCOMPARE(main()->GetGuideOverlayType(), 2);
    }

    void bothBarsFollowTheTheme()
    {
        drawFrame();
        const auto picture = [](QWidget* bar, const char* label)
        { return bar->findChild<QLabel*>(label)->pixmap(Qt::ReturnByValue).toImage(); };
        const QImage first = picture(tool()->GetStartBar(), "m_pPictureLabelMain");
        const QImage second = picture(main(), "m_pPicture");

        NVApplication::GetInstance()->SetTheme(1);

        QVERIFY(picture(tool()->GetStartBar(), "m_pPictureLabelMain") != first);
        QVERIFY(picture(main(), "m_pPicture") != second);
    }

private:
    void start(const QImage& picture = BusyPicture())
    {
        m_window.reset();
        m_window = std::make_unique<MainWindow>(m_settings.get());
        m_window->resize(1280, 860);
        m_window->show();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        m_window->OpenImage(picture, "Picture");
        m_window->ChooseTool(tool());
        view()->Scale(1 / view()->GetScale(), QPointF());
        view()->setFocus();
    }

    CropTool* tool() const { return m_window->FindTool<CropTool>(); }
    NVCropToolbarMain* main() const { return tool()->GetMainBar(); }
    NVDocumentView* view() const { return m_window->GetView(); }
    Document* document() const { return m_window->GetDocument(); }
    KXDocumentInterface* pixels() const { return document()->GetPixels(); }
    QUndoStack* steps() const { return document()->GetUndoStack(); }
    QImage composition() const { return pixels()->GetComposition().copy(); }

    void addLayer(const QImage& image)
    {
        KXDocumentInterface::Layer above;
        above.image = image;
        QVERIFY(pixels()->InsertLayer(pixels()->GetLayerCount(), above));
    }

    void select(const QRect& rect)
    {
        QImage mask(pixels()->GetSize(), QImage::Format_Grayscale8);
        mask.fill(0);
        QPainter(&mask).fillRect(rect, Qt::white);
        QVERIFY(pixels()->SetSelectionMask(mask));
    }

    QColor shown(const QPointF& place) { return shown(place.x(), place.y()); }
    QColor shown(double x, double y)
    {
        const QImage image = view()->viewport()->grab().toImage();
        return image.pixelColor(
            (view()->MapFromDocument(QPointF(x, y)) * image.devicePixelRatio()).toPoint());
    }

    void mouse(QEvent::Type type, double x, double y, Qt::MouseButton button, Qt::MouseButtons buttons,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        const QPoint place = view()->MapFromDocument(QPointF(x, y)).toPoint();
        QMouseEvent event(type, place, view()->viewport()->mapToGlobal(place), button, buttons, modifiers);
        event.setTimestamp(m_time);
        QCoreApplication::sendEvent(view()->viewport(), &event);
    }
    void press(double x, double y, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        m_time += 5000;
        mouse(QEvent::MouseButtonPress, x, y, Qt::LeftButton, Qt::LeftButton, modifiers);
    }
    void move(double x, double y, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        mouse(QEvent::MouseMove, x, y, Qt::NoButton, Qt::LeftButton, modifiers);
    }
    void release(double x, double y)
    {
        mouse(QEvent::MouseButtonRelease, x, y, Qt::LeftButton, Qt::NoButton);
    }
    void drag(const QPointF& from, const QPointF& to, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        press(from.x(), from.y(), modifiers);
        const QPointF between = (from + to) / 2;
        move(between.x(), between.y(), modifiers);
        move(to.x(), to.y(), modifiers);
        release(to.x(), to.y());
    }
    void drawFrame()
    {
        drag(Frame.topLeft(), QPointF(170, 120));
        QCOMPARE(BoundsOf(tool()->GetFrame()), QRectF(Frame));
    }
    void doubleClick(double x, double y)
    {
        press(x, y);
        release(x, y);
        m_time += 100;
        mouse(QEvent::MouseButtonDblClick, x, y, Qt::LeftButton, Qt::LeftButton);
        QVERIFY(tool()->HasFrame());
        release(x, y);
    }

    void pressButton(const char* name)
    {
        QTest::mouseClick(main()->findChild<QPushButton*>(name), Qt::LeftButton);
    }
    // Over the whole text of a box of the bar.
    template <class Box>
    void type(const char* name, const QString& text)
    {
        auto* line = main()->findChild<Box*>(name)->template findChild<QLineEdit*>();
        QTest::mouseClick(line, Qt::LeftButton);
        line->selectAll();
        QTest::keyClicks(line, text);
    }

    // Calls the first when the second has been going on for a while.
    void whenBusy(const std::function<void()>& act, const std::function<void()>& work)
    {
        auto* task = m_window->findChild<FileTask*>();
        connect(task, &FileTask::BusyChanged, this,
                [&act](bool busy)
                {
                    if (busy)
                        act();
                });
        work();
        disconnect(task, nullptr, this, nullptr);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<MainWindow> m_window;
    ulong m_time = 1000;
};

NV_TEST_MAIN(tst_CropTool)
#include "tst_CropTool.moc"
