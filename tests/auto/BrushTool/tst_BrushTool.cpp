// The brush tool on a canvas: strokes by mouse, their undo step, Escape, keys, picked colours, stored values.

#include "BrushTool.h"

#include <QLabel>
#include <QPushButton>
#include <QTabletEvent>

#include "IBrush.h"
#include "KXBrushSettings.h"
#include "NVApplication.h"
#include "NVBrushToolbar.h"
#include "PatternSelectWidget.h"
#include "ProbeImage.h"
#include "SignalLog.h"
#include "TestMain.h"
#include "ToolHost.h"

namespace
{

bool AreNear(const QColor& one, const QColor& other, int tolerance)
{
    return qAbs(one.red() - other.red()) <= tolerance && qAbs(one.green() - other.green()) <= tolerance &&
        qAbs(one.blue() - other.blue()) <= tolerance;
}

struct Host : ToolHost<BrushTool>
{
    explicit Host(QSettings* settings) : ToolHost(settings) { }

    // A few pixels of the colour about (100, 100).
    void dot(const QColor& color) const
    {
        for (int i = 0; i < 9; ++i)
            pixels()->EditLayer(0).setPixelColor(99 + i % 3, 99 + i / 3, color);
        pixels()->NotifyChanged(QRect(99, 99, 3, 3));
    }
};

} // namespace

class tst_BrushTool : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_scratch = std::make_unique<ScratchSettings>();
        NVApplication::GetInstance()->SetForeground(Qt::black);
        NVApplication::GetInstance()->SetBackground(Qt::white);
    }

    void theFirstStartHasUsableValues()
    {
        BrushTool tool(&m_scratch->settings, nullptr);

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
            Host host(&m_scratch->settings);
            host.tool->GetBrushBar()->SetSize(77);
            host.tool->GetBrushBar()->SetSpacing(33);
            host.tool->GetBrushBar()->SetOpacity(44);
            host.tool->GetBrushBar()->SetStyle(3);
            host.tool->GetBrushBar()->SetBlendMode(12);
            NVApplication::GetInstance()->SetTexturePatternIndex(5);
        }
        NVApplication::GetInstance()->SetTexturePatternIndex(0);

        BrushTool again(&m_scratch->settings, nullptr);

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
            Host host(&m_scratch->settings);
            KXBrushSettings* brushes = host.tool->GetBrushBar()->GetBrushes();
            brushes->SetCurrentPreset(2);
            brushes->SetTip(tip);
            brushes->SetDynamic(KXBrushSettings::DynamicOpacity, true);
            Q_EMIT brushes->PresetsChanged();
        }

        BrushTool again(&m_scratch->settings, nullptr);

        const KXBrushSettings* brushes = again.GetBrushBar()->GetBrushes();
        QCOMPARE(brushes->GetCurrentPreset(), 2);
        QCOMPARE(brushes->GetCurrentBrush()->GetTip(), tip);
        QVERIFY(brushes->IsDynamic(KXBrushSettings::DynamicOpacity));
        QVERIFY(!brushes->IsDynamic(KXBrushSettings::DynamicSize));
        QCOMPARE(m_scratch->settings.value("brush/presets").toByteArray(), brushes->SavePresets());
    }

    void nonsenseInTheSettingsDoesNoHarm()
    {
        m_scratch->settings.setValue("brush/size", "large");
        m_scratch->settings.setValue("brush/opacity", 5000);
        m_scratch->settings.setValue("brush/fillMode", -3);
        m_scratch->settings.setValue("brush/blendMode", 99);
        m_scratch->settings.setValue("brush/pattern", -1);
        m_scratch->settings.setValue("brush/preset", 9999);
        m_scratch->settings.setValue("brush/presets", QByteArray("no presets"));
        m_scratch->settings.setValue("brush/tip", QVariantList({77, "x", -4}));
        m_scratch->settings.setValue("brush/dynamics", "everything");

        BrushTool tool(&m_scratch->settings, nullptr);

        QCOMPARE(tool.GetBrushBar()->GetSize(), 1);
        QCOMPARE(tool.GetBrushBar()->GetOpacity(), 100);
        QCOMPARE(tool.GetBrushBar()->GetStyle(), 5);
        QCOMPARE(tool.GetBrushBar()->GetBlendMode(), 0);
    }

    void aStrokeIsPaintedAndIsOneUndoStep()
    {
        Host host(&m_scratch->settings);
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
        Host host(&m_scratch->settings);
        host.stroke();
        const QImage painted = host.document->GetPixels()->GetComposition().copy();

        host.document->GetUndoStack()->undo();
        QCOMPARE(host.document->GetPixels()->GetComposition(), PlainPicture());
        QVERIFY(!host.document->IsModified());

        host.document->GetUndoStack()->redo();
        QCOMPARE(host.document->GetPixels()->GetComposition(), painted);
    }

    void aClickIsOneStamp()
    {
        Host host(&m_scratch->settings);

        host.press(100, 100);
        host.release(100, 100);
        QTRY_VERIFY(!host.tool->IsStrokeRunning());

        QCOMPARE(host.pixel(100, 100), QColor(Qt::black));
        QCOMPARE(host.pixel(100, 115), QColor(Qt::white));
        QCOMPARE(host.document->GetUndoStack()->count(), 1);
    }

    void aStrokeBesideThePictureIsNoStep()
    {
        Host host(&m_scratch->settings);

        host.press(-100, -60);
        host.move(-100, -40);
        host.release(-100, -40);
        QTRY_VERIFY(!host.tool->IsStrokeRunning());

        QCOMPARE(host.document->GetUndoStack()->count(), 0);
    }

    void theBarSaysWhatIsPainted()
    {
        Host host(&m_scratch->settings);
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
        Host host(&m_scratch->settings);
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
        Host host(&m_scratch->settings);
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
        Host host(&m_scratch->settings);
        host.press(50, 100);
        host.move(150, 100);
        QTRY_COMPARE(host.pixel(60, 100), QColor(Qt::black));

        QTest::keyClick(host.view, Qt::Key_Escape);

        QVERIFY(!host.tool->IsStrokeRunning());
        QCOMPARE(host.document->GetPixels()->GetComposition(), PlainPicture());
        QCOMPARE(host.document->GetUndoStack()->count(), 0);
        host.move(200, 100);
        host.release(200, 100);
        QVERIFY(!host.tool->IsStrokeRunning());
        QCOMPARE(host.document->GetPixels()->GetComposition(), PlainPicture());
        QVERIFY(!host.document->GetPixels()->IsBeingEdited());
    }

    void cancelWithoutStrokeSaysSo()
    {
        Host host(&m_scratch->settings);

        QVERIFY(!host.tool->Cancel());
    }

    void finishEndsTheStrokeAtOnce()
    {
        Host host(&m_scratch->settings);
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
        Host host(&m_scratch->settings);
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
        Host host(&m_scratch->settings);
        host.press(50, 100);
        host.move(150, 100);

        host.tool->SetCanvas(nullptr, nullptr);

        QVERIFY(!host.tool->IsStrokeRunning());
        QCOMPARE(host.document->GetUndoStack()->count(), 1);
        QVERIFY(!host.document->GetPixels()->IsBeingEdited());
    }

    void theDocumentMayGoWhileAStrokeRuns()
    {
        Host host(&m_scratch->settings);
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
        Host host(&m_scratch->settings);
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
        Host host(&m_scratch->settings);

        host.mouse(QEvent::MouseButtonPress, 100, 100, Qt::RightButton, Qt::RightButton);

        QVERIFY(!host.tool->IsStrokeRunning());
        host.mouse(QEvent::MouseButtonRelease, 100, 100, Qt::RightButton, Qt::NoButton);
    }

    void onlyTheSelectionIsPainted()
    {
        Host host(&m_scratch->settings);
        host.select(QRect(0, 0, 150, 200));

        host.stroke();

        QCOMPARE(host.pixel(100, 100), QColor(Qt::black));
        QCOMPARE(host.pixel(200, 100), QColor(Qt::white));
    }

    void penPressureMakesTheStampLargerWhereItIsSwitchedOn()
    {
        Host host(&m_scratch->settings);
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
        Host host(&m_scratch->settings);
        host.dot(QColor(12, 34, 56));

        host.press(100.5, 100.5, Qt::AltModifier);
        host.release(100.5, 100.5);

        QCOMPARE(NVApplication::GetForeground(), QColor(12, 34, 56));
        QCOMPARE(host.document->GetUndoStack()->count(), 0);
    }

    void theKeyIPicksUnderThePointer()
    {
        Host host(&m_scratch->settings);
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
        Host host(&m_scratch->settings);
        host.dot(Qt::transparent);

        host.press(100.5, 100.5, Qt::AltModifier);
        host.release(100.5, 100.5);
        host.press(-20, -20, Qt::AltModifier);
        host.release(-20, -20);

        QCOMPARE(NVApplication::GetForeground(), QColor(Qt::black));
    }

    void bracketsChangeTheSize()
    {
        Host host(&m_scratch->settings);

        QTest::keyClick(host.view, Qt::Key_BracketRight);
        QCOMPARE(host.tool->GetBrushBar()->GetSize(), 25);
        QTest::keyClick(host.view, Qt::Key_BracketLeft);
        QTest::keyClick(host.view, Qt::Key_BracketLeft);
        QCOMPARE(host.tool->GetBrushBar()->GetSize(), 18);
    }

    void keysAreLiveOnlyWhileTheToolIsCurrent()
    {
        Host host(&m_scratch->settings);
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
        Host host(&m_scratch->settings);
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
        Host host(&m_scratch->settings);
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

    void theThemeReachesPictureAndBrushButton()
    {
        Host host(&m_scratch->settings);
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
        Host host(&m_scratch->settings);

        Q_EMIT host.tool->GetBrushBar()->GetPatterns()->ItemSelected(4);

        QCOMPARE(NVApplication::GetTexturePatternIndex(), 4);
        NVApplication::GetInstance()->SetTexturePatternIndex(0);
    }

    void manyPointsNeverHoldUpTheWindow()
    {
        Host host(&m_scratch->settings);
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
    std::unique_ptr<ScratchSettings> m_scratch;
};

NV_TEST_MAIN(tst_BrushTool)
#include "tst_BrushTool.moc"
