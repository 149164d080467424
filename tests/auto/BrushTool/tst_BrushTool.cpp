// The brush tool on a canvas: strokes by mouse, their undo step, Escape, keys, picked colours, stored values.

#include "BrushTool.h"

#include <QLabel>
#include <QMainWindow>
#include <QPushButton>
#include <QSettings>
#include <QTabletEvent>
#include <QTemporaryDir>
#include <QUndoStack>

#include "Document.h"
#include "IBrush.h"
#include "KXBrushSettings.h"
#include "KXDocumentInterface.h"
#include "NVApplication.h"
#include "NVBrushToolbar.h"
#include "NVDocumentView.h"
#include "PatternSelectWidget.h"
#include "ProbeImage.h"
#include "SignalLog.h"
#include "TestMain.h"

namespace
{

QImage White(const QSize& size = QSize(300, 200))
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    return image;
}

bool AreNear(const QColor& one, const QColor& other, int tolerance)
{
    return qAbs(one.red() - other.red()) <= tolerance && qAbs(one.green() - other.green()) <= tolerance &&
        qAbs(one.blue() - other.blue()) <= tolerance;
}

// A window with the bar and a canvas at 100 %, and the tool at work on it.
struct Host
{
    explicit Host(QSettings* settings)
        : tool(std::make_unique<BrushTool>(settings, nullptr)),
          document(std::make_unique<Document>(White(), QString(), "Picture")),
          view(new NVDocumentView(document->GetModel()))
    {
        window.setCentralWidget(view);
        window.setMenuWidget(tool->GetBar());
        window.resize(700, 420);
        window.show();
        tool->SetCanvas(view, document.get());
        tool->Activate();
        view->Scale(1 / view->GetScale(), QPointF());
        view->setFocus();
        (void)QTest::qWaitForWindowActive(&window);
    }
    ~Host()
    {
        tool->SetCanvas(nullptr, nullptr);
        tool->Deactivate();
        window.takeCentralWidget();
        delete view;
    }

    QPoint at(double x, double y) const { return view->MapFromDocument(QPointF(x, y)).toPoint(); }
    void mouse(QEvent::Type type, double x, double y, Qt::MouseButton button, Qt::MouseButtons buttons,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QMouseEvent event(type, at(x, y), view->viewport()->mapToGlobal(at(x, y)), button, buttons,
                          modifiers);
        QCoreApplication::sendEvent(view->viewport(), &event);
    }
    void press(double x, double y, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        mouse(QEvent::MouseButtonPress, x, y, Qt::LeftButton, Qt::LeftButton, modifiers);
    }
    void move(double x, double y, Qt::MouseButtons buttons = Qt::LeftButton)
    {
        mouse(QEvent::MouseMove, x, y, Qt::NoButton, buttons);
    }
    void release(double x, double y)
    {
        mouse(QEvent::MouseButtonRelease, x, y, Qt::LeftButton, Qt::NoButton);
    }
    void stroke()
    {
        press(50, 100);
        for (int x = 60; x <= 250; x += 10)
            move(x, 100);
        release(250, 100);
        QTRY_VERIFY(!tool->IsStrokeRunning());
    }
    // A few pixels of the colour about (100, 100).
    void dot(const QColor& color) const
    {
        for (int i = 0; i < 9; ++i)
            document->GetPixels()->EditLayer(0).setPixelColor(99 + i % 3, 99 + i / 3, color);
        document->GetPixels()->NotifyChanged(QRect(99, 99, 3, 3));
    }
    QColor pixel(int x, int y) const { return document->GetPixels()->GetComposition().pixelColor(x, y); }

    std::unique_ptr<BrushTool> tool;
    std::unique_ptr<Document> document;
    NVDocumentView* view;
    QMainWindow window;
};

} // namespace

class tst_BrushTool : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_settings = std::make_unique<QSettings>(m_folder->filePath("s.ini"), QSettings::IniFormat);
        NVApplication::GetInstance()->SetForeground(Qt::black);
        NVApplication::GetInstance()->SetBackground(Qt::white);
    }

    void theFirstStartHasUsableValues()
    {
        BrushTool tool(m_settings.get(), nullptr);

        QCOMPARE(tool.GetBrushBar()->GetSize(), 20);
        QCOMPARE(tool.GetBrushBar()->GetSpacing(), 10);
        QCOMPARE(tool.GetBrushBar()->GetOpacity(), 100);
        QCOMPARE(tool.GetBrushBar()->GetStyle(), 0);
        QCOMPARE(tool.GetBrushBar()->GetBlendMode(), 0);
        QVERIFY(!tool.GetBrushBar()->findChild<QPushButton*>("m_pSelectBrushBtn")->icon().isNull());
    }

    void valuesSurvive()
    {
        {
            Host host(m_settings.get());
            host.tool->GetBrushBar()->SetSize(77);
            host.tool->GetBrushBar()->SetSpacing(33);
            host.tool->GetBrushBar()->SetOpacity(44);
            host.tool->GetBrushBar()->SetStyle(3);
            host.tool->GetBrushBar()->SetBlendMode(12);
            NVApplication::GetInstance()->SetTexturePatternIndex(5);
        }
        NVApplication::GetInstance()->SetTexturePatternIndex(0);

        BrushTool again(m_settings.get(), nullptr);

        QCOMPARE(again.GetBrushBar()->GetSize(), 77);
        QCOMPARE(again.GetBrushBar()->GetSpacing(), 33);
        QCOMPARE(again.GetBrushBar()->GetOpacity(), 44);
        QCOMPARE(again.GetBrushBar()->GetStyle(), 3);
        QCOMPARE(again.GetBrushBar()->GetBlendMode(), 12);
        QCOMPARE(NVApplication::GetTexturePatternIndex(), 5);
        QCOMPARE(again.GetBrushBar()->GetPatterns()->CurrentIndex(), 5);
        NVApplication::GetInstance()->SetTexturePatternIndex(0);
    }

    void theBrushItselfSurvives()
    {
        BrushTip tip;
        tip.shape = BrushTip::Square;
        tip.hardness = 0.5;
        tip.roundness = 0.25;
        tip.angle = 30;
        {
            Host host(m_settings.get());
            KXBrushSettings* brushes = host.tool->GetBrushBar()->GetBrushes();
            brushes->SetCurrentPreset(2);
            brushes->SetTip(tip);
            brushes->SetDynamic(KXBrushSettings::DynamicOpacity, true);
            Q_EMIT brushes->PresetsChanged();
        }

        BrushTool again(m_settings.get(), nullptr);

        const KXBrushSettings* brushes = again.GetBrushBar()->GetBrushes();
        QCOMPARE(brushes->GetCurrentPreset(), 2);
        QCOMPARE(brushes->GetCurrentBrush()->GetTip(), tip);
        QVERIFY(brushes->IsDynamic(KXBrushSettings::DynamicOpacity));
        QVERIFY(!brushes->IsDynamic(KXBrushSettings::DynamicSize));
        QCOMPARE(m_settings->value("brush/presets").toByteArray(), brushes->SavePresets());
    }

    void nonsenseInTheSettingsDoesNoHarm()
    {
        m_settings->setValue("brush/size", "large");
        m_settings->setValue("brush/opacity", 5000);
        m_settings->setValue("brush/fillMode", -3);
        m_settings->setValue("brush/blendMode", 99);
        m_settings->setValue("brush/pattern", -1);
        m_settings->setValue("brush/preset", 9999);
        m_settings->setValue("brush/presets", QByteArray("no presets"));
        m_settings->setValue("brush/tip", QVariantList({77, "x", -4}));
        m_settings->setValue("brush/dynamics", "everything");

        BrushTool tool(m_settings.get(), nullptr);

        QCOMPARE(tool.GetBrushBar()->GetSize(), 1);
        QCOMPARE(tool.GetBrushBar()->GetOpacity(), 100);
        QCOMPARE(tool.GetBrushBar()->GetStyle(), 5);
        QCOMPARE(tool.GetBrushBar()->GetBlendMode(), 0);
    }

    void aStrokeIsPaintedAndIsOneUndoStep()
    {
        Host host(m_settings.get());
        SignalLog log(host.tool.get());

        host.stroke();

        QCOMPARE(host.pixel(150, 100), QColor(Qt::black));
        QCOMPARE(host.pixel(150, 120), QColor(Qt::white));
        QCOMPARE(host.pixel(30, 100), QColor(Qt::white));
        QCOMPARE(host.document->GetUndoStack()->count(), 1);
        QCOMPARE(host.document->GetUndoStack()->undoText(), QString("Brush Stroke"));
        QVERIFY(host.document->IsModified());
        QVERIFY(!host.document->GetPixels()->IsBeingEdited());
        QCOMPARE(log.Count("StrokeEnded"), 1);
        QVERIFY(log.Count("FrameDone") >= 1);
    }

    void undoAndRedoSwapThePixels()
    {
        Host host(m_settings.get());
        host.stroke();
        const QImage painted = host.document->GetPixels()->GetComposition().copy();

        host.document->GetUndoStack()->undo();
        QCOMPARE(host.document->GetPixels()->GetComposition(), White());
        QVERIFY(!host.document->IsModified());

        host.document->GetUndoStack()->redo();
        QCOMPARE(host.document->GetPixels()->GetComposition(), painted);
    }

    void aClickIsOneStamp()
    {
        Host host(m_settings.get());

        host.press(100, 100);
        host.release(100, 100);
        QTRY_VERIFY(!host.tool->IsStrokeRunning());

        QCOMPARE(host.pixel(100, 100), QColor(Qt::black));
        QCOMPARE(host.pixel(100, 115), QColor(Qt::white));
        QCOMPARE(host.document->GetUndoStack()->count(), 1);
    }

    void aStrokeBesideThePictureIsNoStep()
    {
        Host host(m_settings.get());

        host.press(-100, -60);
        host.move(-100, -40);
        host.release(-100, -40);
        QTRY_VERIFY(!host.tool->IsStrokeRunning());

        QCOMPARE(host.document->GetUndoStack()->count(), 0);
    }

    void theBarSaysWhatIsPainted()
    {
        Host host(m_settings.get());
        NVApplication::GetInstance()->SetForeground(QColor(200, 100, 0));
        host.tool->GetBrushBar()->SetSize(60);
        host.tool->GetBrushBar()->SetOpacity(50);

        host.stroke();

        QVERIFY(AreNear(host.pixel(150, 100), QColor(228, 178, 128), 2));
        QVERIFY(AreNear(host.pixel(150, 125), QColor(228, 178, 128), 2));
        QCOMPARE(host.pixel(150, 135), QColor(Qt::white));
    }

    void theBlendModeOfTheKeyIsPainted()
    {
        Host host(m_settings.get());
        NVApplication::GetInstance()->SetForeground(QColor(255, 0, 0));
        host.stroke();
        NVApplication::GetInstance()->SetForeground(QColor(128, 128, 128));

        QTest::keyClick(host.view, Qt::Key_M, Qt::AltModifier | Qt::ShiftModifier);
        host.stroke();

        QCOMPARE(host.tool->GetBrushBar()->GetBlendMode(), 1);
        QVERIFY(AreNear(host.pixel(150, 100), QColor(128, 0, 0), 2));
    }

    void everyFillModePaints_data()
    {
        QTest::addColumn<int>("mode");
        for (int mode = 0; mode < 6; ++mode)
            QTest::addRow("mode %d", mode) << mode;
    }
    void everyFillModePaints()
    {
        QFETCH(int, mode);
        Host host(m_settings.get());
        NVApplication::GetInstance()->SetForeground(QColor(255, 0, 0));
        NVApplication::GetInstance()->SetBackground(QColor(0, 0, 255));
        host.tool->GetBrushBar()->SetStyle(unsigned(mode));

        host.stroke();

        QSet<QRgb> colors;
        for (int x = 60; x < 240; ++x)
            colors += host.pixel(x, 100).rgb();
        QCOMPARE(colors == QSet<QRgb>{qRgb(255, 0, 0)}, mode == 0);
        QVERIFY(colors != QSet<QRgb>{qRgb(255, 255, 255)});
    }

    void escapeTakesBackTheRunningStroke()
    {
        Host host(m_settings.get());
        host.press(50, 100);
        host.move(150, 100);
        QTRY_COMPARE(host.pixel(60, 100), QColor(Qt::black));

        QTest::keyClick(host.view, Qt::Key_Escape);

        QVERIFY(!host.tool->IsStrokeRunning());
        QCOMPARE(host.document->GetPixels()->GetComposition(), White());
        QCOMPARE(host.document->GetUndoStack()->count(), 0);
        host.move(200, 100);
        host.release(200, 100);
        QVERIFY(!host.tool->IsStrokeRunning());
        QCOMPARE(host.document->GetPixels()->GetComposition(), White());
        QVERIFY(!host.document->GetPixels()->IsBeingEdited());
    }

    void cancelWithoutStrokeSaysSo()
    {
        Host host(m_settings.get());

        QVERIFY(!host.tool->Cancel());
    }

    void finishEndsTheStrokeAtOnce()
    {
        Host host(m_settings.get());
        host.press(50, 100);
        host.move(250, 100);

        host.tool->Finish();

        QVERIFY(!host.tool->IsStrokeRunning());
        QCOMPARE(host.pixel(240, 100), QColor(Qt::black));
        QCOMPARE(host.document->GetUndoStack()->count(), 1);
        host.release(250, 100);
        QCOMPARE(host.document->GetUndoStack()->count(), 1);
    }

    void aNewPressEndsTheStrokeBefore()
    {
        Host host(m_settings.get());
        host.press(50, 50);
        host.move(250, 50);
        host.release(250, 50);

        host.press(50, 150);
        host.release(50, 150);
        QTRY_VERIFY(!host.tool->IsStrokeRunning());

        QCOMPARE(host.document->GetUndoStack()->count(), 2);
    }

    void anotherCanvasEndsTheStroke()
    {
        Host host(m_settings.get());
        host.press(50, 100);
        host.move(150, 100);

        host.tool->SetCanvas(nullptr, nullptr);

        QVERIFY(!host.tool->IsStrokeRunning());
        QCOMPARE(host.document->GetUndoStack()->count(), 1);
        QVERIFY(!host.document->GetPixels()->IsBeingEdited());
    }

    void theDocumentMayGoWhileAStrokeRuns()
    {
        Host host(m_settings.get());
        host.press(50, 100);
        host.move(150, 100);

        host.view->SetModel(nullptr);
        host.document.reset();
        host.tool->Finish();
        QCoreApplication::processEvents();

        QVERIFY(!host.tool->IsStrokeRunning());
    }

    void aHiddenLayerIsNotPaintedOn()
    {
        Host host(m_settings.get());
        host.document->GetPixels()->SetLayerVisible(0, false);
        SignalLog log(host.tool.get());

        host.press(50, 100);
        host.release(50, 100);

        QVERIFY(!host.tool->IsStrokeRunning());
        QCOMPARE(log.Count("Message"), 1);
        QVERIFY(log.Entries().first().contains("hidden"));
        QCOMPARE(host.document->GetUndoStack()->count(), 0);
    }

    void theRightButtonDoesNotPaint()
    {
        Host host(m_settings.get());

        host.mouse(QEvent::MouseButtonPress, 100, 100, Qt::RightButton, Qt::RightButton);

        QVERIFY(!host.tool->IsStrokeRunning());
        host.mouse(QEvent::MouseButtonRelease, 100, 100, Qt::RightButton, Qt::NoButton);
    }

    void onlyTheSelectionIsPainted()
    {
        Host host(m_settings.get());
        QImage mask(300, 200, QImage::Format_Grayscale8);
        mask.fill(0);
        for (int y = 0; y < 200; ++y)
            memset(mask.scanLine(y), 255, 150);
        QVERIFY(host.document->GetPixels()->SetSelectionMask(mask));

        host.stroke();

        QCOMPARE(host.pixel(100, 100), QColor(Qt::black));
        QCOMPARE(host.pixel(200, 100), QColor(Qt::white));
    }

    void penPressureMakesTheStampLargerWhereItIsSwitchedOn()
    {
        Host host(m_settings.get());
        host.tool->GetBrushBar()->SetSize(60);
        host.tool->GetBrushBar()->GetBrushes()->SetDynamic(KXBrushSettings::DynamicSize, true);
        const auto pen = [&host](QEvent::Type type, double x, double pressure, Qt::MouseButtons buttons)
        {
            const QPointF place = host.at(x, 100);
            QTabletEvent event(type, place, host.view->viewport()->mapToGlobal(place.toPoint()),
                               QTabletEvent::Stylus, QTabletEvent::Pen, pressure, 0, 0, 0, 0, 0,
                               Qt::NoModifier, 1, Qt::LeftButton, buttons);
            QCoreApplication::sendEvent(host.view->viewport(), &event);
        };

        pen(QEvent::TabletPress, 60, 0.5, Qt::LeftButton);
        pen(QEvent::TabletMove, 240, 0.5, Qt::LeftButton);
        pen(QEvent::TabletRelease, 240, 0.5, Qt::NoButton);
        QTRY_VERIFY(!host.tool->IsStrokeRunning());

        QCOMPARE(host.document->GetUndoStack()->count(), 1);
        QCOMPARE(host.pixel(150, 110), QColor(Qt::black));
        QCOMPARE(host.pixel(150, 120), QColor(Qt::white));
    }

    void altAndAClickPickTheForeground()
    {
        Host host(m_settings.get());
        host.dot(QColor(12, 34, 56));

        host.press(100.5, 100.5, Qt::AltModifier);
        host.release(100.5, 100.5);

        QCOMPARE(NVApplication::GetForeground(), QColor(12, 34, 56));
        QCOMPARE(host.document->GetUndoStack()->count(), 0);
    }

    void theKeyIPicksUnderThePointer()
    {
        Host host(m_settings.get());
        SignalLog log(host.tool.get());
        QTest::keyClick(host.view, Qt::Key_I);
        QCOMPARE(log.Count("Message"), 1);
        QCOMPARE(NVApplication::GetForeground(), QColor(Qt::black));

        host.move(100, 100, Qt::NoButton);
        QTest::keyClick(host.view, Qt::Key_I);

        QCOMPARE(NVApplication::GetForeground(), QColor(Qt::white));
    }

    void aClearPixelAndAPlaceOutsideArePickedAsNothing()
    {
        Host host(m_settings.get());
        host.dot(Qt::transparent);

        host.press(100.5, 100.5, Qt::AltModifier);
        host.release(100.5, 100.5);
        host.press(-20, -20, Qt::AltModifier);
        host.release(-20, -20);

        QCOMPARE(NVApplication::GetForeground(), QColor(Qt::black));
    }

    void bracketsChangeTheSize()
    {
        Host host(m_settings.get());

        QTest::keyClick(host.view, Qt::Key_BracketRight);
        QCOMPARE(host.tool->GetBrushBar()->GetSize(), 25);
        QTest::keyClick(host.view, Qt::Key_BracketLeft);
        QTest::keyClick(host.view, Qt::Key_BracketLeft);
        QCOMPARE(host.tool->GetBrushBar()->GetSize(), 18);
    }

    void sizeStepsReachEachEndAndComeBack()
    {
        QCOMPARE(PreviousBrushSize(1), 1);
        QCOMPARE(NextBrushSize(2500), 2500);
        for (int size = 1; size < 2500;)
        {
            const int next = NextBrushSize(size);
            QVERIFY(next > size);
            QVERIFY(PreviousBrushSize(next) < next);
            size = next;
        }
    }

    void keysAreLiveOnlyWhileTheToolIsCurrent()
    {
        Host host(m_settings.get());
        QTest::keyClick(host.view, Qt::Key_5);
        QCOMPARE(host.tool->GetBrushBar()->GetOpacity(), 50);

        host.tool->Deactivate();
        host.tool->Deactivate();
        QTest::keyClick(host.view, Qt::Key_7);
        QTest::keyClick(host.view, Qt::Key_BracketRight);
        QCOMPARE(host.tool->GetBrushBar()->GetOpacity(), 50);
        QCOMPARE(host.tool->GetBrushBar()->GetSize(), 20);

        host.tool->Activate();
        host.tool->Activate();
        QTest::keyClick(host.view, Qt::Key_Plus, Qt::ShiftModifier);
        QCOMPARE(host.tool->GetBrushBar()->GetBlendMode(), 1);
    }

    void theOutlineIsAsLargeAsTheStamp()
    {
        Host host(m_settings.get());
        host.tool->GetBrushBar()->SetSize(80);
        host.move(150, 100, Qt::NoButton);
        QCoreApplication::processEvents();

        const ProbeImage probe(host.view->viewport());

        const QPoint middle = host.at(150, 100);
        const auto dark = [&probe](const QPoint& p) { return probe.At(p.x(), p.y()).lightness() < 160; };
        int left = middle.x() - 8;
        while (left > 0 && !dark(QPoint(left, middle.y())))
            --left;
        QVERIFY2(qAbs(middle.x() - left - 40) <= 2, qPrintable(QString::number(middle.x() - left)));
    }

    void theOutlineGoesWithThePointer()
    {
        Host host(m_settings.get());
        host.tool->GetBrushBar()->SetSize(80);
        QCoreApplication::processEvents();
        const ProbeImage before(host.view->viewport());
        host.move(150, 100, Qt::NoButton);
        QVERIFY(ProbeImage(host.view->viewport()).Differs(before));

        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(host.view->viewport(), &leave);
        QCoreApplication::processEvents();

        QVERIFY(!ProbeImage(host.view->viewport()).Differs(before));
    }

    void outlinesFollowTheTip()
    {
        BrushTip tip;
        QCOMPARE(BrushOutline(tip, 10).boundingRect(), QRectF(-5, -5, 10, 10));
        tip.roundness = 0.5;
        QCOMPARE(BrushOutline(tip, 10).boundingRect(), QRectF(-5, -2.5, 10, 5));
        tip.roundness = 1;
        tip.shape = BrushTip::Square;
        tip.angle = 45;
        QVERIFY(qAbs(BrushOutline(tip, 10).boundingRect().width() - 14.14) < 0.01);
    }

    void theThemeReachesPictureAndBrushButton()
    {
        Host host(m_settings.get());
        auto* label = host.tool->GetBar()->findChild<QLabel*>("m_pPictureLabelMain");
        auto* button = host.tool->GetBar()->findChild<QPushButton*>("m_pSelectBrushBtn");
        const QImage picture = label->pixmap(Qt::ReturnByValue).toImage();
        const QImage icon = button->icon().pixmap(16, 16).toImage();

        NVApplication::GetInstance()->SetTheme(1);
        host.tool->UpdateTheme();

        QVERIFY(label->pixmap(Qt::ReturnByValue).toImage() != picture);
        QVERIFY(button->icon().pixmap(16, 16).toImage() != icon);
        NVApplication::GetInstance()->SetTheme(0);
    }

    void aPickedPatternBecomesTheCurrentOne()
    {
        Host host(m_settings.get());

        Q_EMIT host.tool->GetBrushBar()->GetPatterns()->ItemSelected(4);

        QCOMPARE(NVApplication::GetTexturePatternIndex(), 4);
        NVApplication::GetInstance()->SetTexturePatternIndex(0);
    }

    void manyPointsNeverHoldUpTheWindow()
    {
        Host host(m_settings.get());
        host.tool->GetBrushBar()->SetSize(2500);
        host.tool->GetBrushBar()->SetSpacing(1);
        SignalLog log(host.tool.get());

        host.press(0, 0);
        for (int x = 0; x < 300; ++x)
            host.move(x, x / 2.0);
        host.release(300, 150);

        QCOMPARE(log.Count("FrameDone"), 0);
        QTRY_VERIFY_WITH_TIMEOUT(!host.tool->IsStrokeRunning(), 60000);
        QVERIFY(log.Count("FrameDone") > 1);
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<QSettings> m_settings;
};

NV_TEST_MAIN(tst_BrushTool)
#include "tst_BrushTool.moc"
