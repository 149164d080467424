// Free transform: handles, numbers, the reference point, commit and cancel by every way there is, the
// selection that goes along, large pictures, and all that may come in between.

#include "TransformTool.h"

#include <QLineEdit>
#include <QPushButton>

#include <cmath>

#include "BusyThreads.h"
#include "KXShortcut.h"
#include "MainWindow.h"
#include "MoveTool.h"
#include "NVApplication.h"
#include "NVTransformToolbar.h"
#include "SelectionOutline.h"
#include "SignalLog.h"
#include "TestMain.h"
#include "ToolHost.h"

using Control = TransformationCenterPointControl;

namespace
{

const QSize LargeSize(2000, 1200);
const QRect Rect(100, 60, 80, 60);

// Red and blue halves on a clear layer.
QImage Halves(const QRect& rect = Rect)
{
    QImage image(300, 200, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.fillRect(rect, Qt::red);
    painter.fillRect(rect.adjusted(rect.width() / 2, 0, 0, 0), Qt::blue);
    return image;
}

// The settings go last.
struct Host : private ScratchSettings, public ToolHost<TransformTool>
{
    explicit Host(const QImage& picture = Halves()) : ToolHost(&settings, picture) { }
    void pull(const QPointF& from, const QPointF& to, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        pullAndHold(from, to, modifiers);
        release(to.x(), to.y());
    }
    void pullAndHold(const QPointF& from, const QPointF& to, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        const QPointF half = (from + to) / 2;
        press(from.x(), from.y(), modifiers);
        mouse(QEvent::MouseMove, half.x(), half.y(), Qt::NoButton, Qt::LeftButton, modifiers);
        mouse(QEvent::MouseMove, to.x(), to.y(), Qt::NoButton, Qt::LeftButton, modifiers);
    }
    QColor shown(double x, double y) const
    {
        const QImage image = view->viewport()->grab().toImage();
        return image.pixelColor(at(x, y) * image.devicePixelRatio());
    }
    NVTransformToolbar* bar() const { return tool->GetTransformBar(); }
    QPushButton* button(const char* name) const { return bar()->findChild<QPushButton*>(name); }
    QString text(const char* name) const { return bar()->findChild<QLineEdit*>(name)->text(); }
    QStringList texts() const
    {
        QStringList all;
        for (const char* name : {"m_pX", "m_pY", "m_pWidth", "m_pHeight", "m_pAngle", "m_pHSkew", "m_pVSkew"})
            all += text(name);
        return all;
    }
    QImage mask() const { return pixels()->GetSelectionMask(); }
    bool isClean() const
    {
        return !tool->IsPending() && !tool->IsRendering() && !pixels()->IsBeingEdited() &&
            tool->GetTransform().IsIdentity();
    }
};

// The whole program with that picture.
struct Program
{
    Program()
    {
        window.resize(1000, 700);
        window.show();
        window.OpenImage(Halves(), "Halves");
        (void)QTest::qWaitForWindowActive(&window);
        window.GetView()->setFocus();
    }
    TransformTool* tool() const { return window.FindTool<TransformTool>(); }
    void pull(const QPointF& from, const QPointF& to) const
    {
        QWidget* canvas = window.GetView()->viewport();
        const auto at = [this](const QPointF& point)
        { return window.GetView()->MapFromDocument(point).toPoint(); };
        QTest::mousePress(canvas, Qt::LeftButton, Qt::NoModifier, at(from));
        for (const QPointF& point : {(from + to) / 2, to})
        {
            QMouseEvent event(QEvent::MouseMove, at(point), canvas->mapToGlobal(at(point)), Qt::NoButton,
                              Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(canvas, &event);
        }
        QTest::mouseRelease(canvas, Qt::LeftButton, Qt::NoModifier, at(to));
    }
    void key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(window.GetView(), Qt::Key(key), modifiers);
    }
    int steps() const { return window.GetDocument()->GetUndoStack()->index(); }

    ScratchSettings scratch;
    MainWindow window{&scratch.settings};
};

QImage MaskOf(const QRect& rect, const QSize& size = QSize(300, 200))
{
    QImage mask(size, QImage::Format_Grayscale8);
    mask.fill(0);
    QPainter(&mask).fillRect(rect, Qt::white);
    return mask;
}

} // namespace

class tst_TransformTool : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale::c()); }
    void cleanup()
    {
        QLocale::setDefault(QLocale::c());
        qApp->setStyleSheet(QString());
    }

    void hasItsNameAndKey()
    {
        ScratchSettings scratch;
        TransformTool tool(&scratch.settings, nullptr);

        QCOMPARE(tool.GetName(), QString("Free Transform"));
        QCOMPARE(tool.GetKey(), QKeySequence("Ctrl+T"));
        QVERIFY(!QPixmap("theme:" + tool.GetPictureName() + ".png").isNull());
    }

    void theBoxIsThatOfTheContent()
    {
        Host host;

        QCOMPARE(host.tool->GetTransform().GetBox(), QRectF(Rect));
        QCOMPARE(
            host.texts(),
            QStringList({"140.0", "90.0", "100.0%", "100.0%", "0.00\u00b0", "0.00\u00b0", "0.00\u00b0"}));
        host.select(QRect(90, 50, 50, 30));
        QTRY_COMPARE(host.tool->GetTransform().GetBox(), QRectF(100, 60, 40, 20));
        QCOMPARE(host.text("m_pX"), QString("120.0"));
    }

    void thereIsNoBoxWithoutContent()
    {
        Host host(PlainPicture(Qt::transparent));
        QCOMPARE(host.texts().join(""), QString());
        SignalLog log(host.tool.get());

        host.pull(QPointF(100, 100), QPointF(150, 150));

        QCOMPARE(log.Entries(), QStringList{"Message(\"There is nothing on this layer.\")"});
        QVERIFY(host.isClean());
        host.pixels()->EditLayer(0) = Halves();
        host.pixels()->NotifyChanged(QRect(0, 0, 300, 200));
        QTRY_COMPARE(host.tool->GetTransform().GetBox(), QRectF(Rect));
    }

    void numbersAreWrittenAsThePersonWritesThem()
    {
        QLocale::setDefault(QLocale("de_DE"));
        Host host;

        host.pull(QPointF(180, 120), QPointF(190, 135));

        QCOMPARE(host.text("m_pWidth"), QString("112,5%"));
        QCOMPARE(host.text("m_pX"), QString("145,0"));
        // There is no room for marks between groups of digits.
        host.pull(QPointF(120, 80), QPointF(2120, 80));
        QCOMPARE(host.text("m_pX"), QString("2145,0"));
    }

    void aCornerScales()
    {
        Host host;
        host.pull(QPointF(180, 120), QPointF(260, 150));

        QCOMPARE(
            host.texts(),
            QStringList({"180.0", "105.0", "200.0%", "150.0%", "0.00\u00b0", "0.00\u00b0", "0.00\u00b0"}));
        QVERIFY(host.tool->IsPending());
        QCOMPARE(host.layer(), Halves());
        host.leave();
        QCOMPARE(host.shown(150, 110), QColor(Qt::red));
        QCOMPARE(host.shown(230, 145), QColor(Qt::blue));

        QTest::keyClick(host.view, Qt::Key_Return);
        QCOMPARE(host.steps()->count(), 1);
        QCOMPARE(host.steps()->undoText(), QString("Free Transform"));
        QCOMPARE(host.pixel(102, 62), QColor(Qt::red));
        QCOMPARE(host.pixel(257, 147), QColor(Qt::blue));
        QCOMPARE(host.pixel(97, 62).alpha(), 0);
        QCOMPARE(host.pixel(262, 147).alpha(), 0);
        // The new box is that of what has become of it.
        const QRectF box = host.tool->GetTransform().GetBox();
        QVERIFY(QRectF(98, 58, 164, 94).contains(box) && box.contains(QRectF(101, 61, 158, 88)));
        QVERIFY(host.isClean());
        host.steps()->undo();
        QCOMPARE(host.layer(), Halves());
        QTRY_COMPARE(host.tool->GetTransform().GetBox(), QRectF(Rect));
    }

    void eachHandleScales_data()
    {
        QTest::addColumn<QPointF>("from");
        QTest::addColumn<QPointF>("way");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<QString>("width");
        QTest::addColumn<QString>("height");

        QTest::newRow("top left") << QPointF(100, 60) << QPointF(-40, -30) << 0 << "150.0%"
                                  << "150.0%";
        QTest::newRow("top") << QPointF(140, 60) << QPointF(5, -30) << 0 << "100.0%"
                             << "150.0%";
        QTest::newRow("top right") << QPointF(180, 60) << QPointF(-40, 30) << 0 << "50.0%"
                                   << "50.0%";
        QTest::newRow("left") << QPointF(100, 90) << QPointF(40, 9) << 0 << "50.0%"
                              << "100.0%";
        QTest::newRow("right") << QPointF(180, 90) << QPointF(40, 9) << 0 << "150.0%"
                               << "100.0%";
        QTest::newRow("bottom left") << QPointF(100, 120) << QPointF(-20, 30) << 0 << "125.0%"
                                     << "150.0%";
        QTest::newRow("bottom") << QPointF(140, 120) << QPointF(0, 30) << 0 << "100.0%"
                                << "150.0%";
        QTest::newRow("bottom right") << QPointF(180, 120) << QPointF(20, 0) << 0 << "125.0%"
                                      << "100.0%";
        QTest::newRow("in proportion")
            << QPointF(180, 120) << QPointF(40, 30) << int(Qt::ShiftModifier) << "150.0%"
            << "150.0%";
        QTest::newRow("an edge in proportion")
            << QPointF(180, 90) << QPointF(40, 0) << int(Qt::ShiftModifier) << "150.0%"
            << "150.0%";
        QTest::newRow("about the middle")
            << QPointF(180, 120) << QPointF(20, 15) << int(Qt::AltModifier) << "150.0%"
            << "150.0%";
        QTest::newRow("mirrored") << QPointF(180, 90) << QPointF(-120, 0) << 0 << "-50.0%"
                                  << "100.0%";
    }
    void eachHandleScales()
    {
        QFETCH(const QPointF, from);
        QFETCH(const QPointF, way);
        QFETCH(const int, modifiers);
        Host host;

        host.pull(from, from + way, Qt::KeyboardModifiers(modifiers));

        QTEST(host.text("m_pWidth"), "width");
        QTEST(host.text("m_pHeight"), "height");
        QCOMPARE(host.text("m_pAngle"), QString("0.00\u00b0"));
    }

    void insideMoves()
    {
        Host host;
        host.pull(QPointF(120, 80), QPointF(150, 60));

        QCOMPARE(host.texts().mid(0, 2), QStringList({"170.0", "70.0"}));
        QTest::mouseClick(host.button("m_pCommit"), Qt::LeftButton);
        QCOMPARE(host.layer(), Halves(Rect.translated(30, -20)));
    }

    void outsideTurns()
    {
        Host host;
        // A quarter turn.
        host.pull(QPointF(240, 90), QPointF(140, 190));

        QCOMPARE(host.text("m_pAngle"), QString("90.00\u00b0"));
        host.tool->Commit();
        QCOMPARE(host.pixel(140, 60), QColor(Qt::red));
        QCOMPARE(host.pixel(140, 120), QColor(Qt::blue));
        QCOMPARE(host.pixel(105, 90).alpha(), 0);
        QCOMPARE(host.tool->GetTransform().GetBox(), QRectF(110, 50, 60, 80));
    }

    void shiftTurnsByWholeSteps()
    {
        Host host;

        host.pull(QPointF(240, 90), QPointF(238, 115), Qt::ShiftModifier);

        QCOMPARE(host.text("m_pAngle"), QString("15.00\u00b0"));
    }

    void ctrlSkewsAnEdge()
    {
        Host host;
        host.pull(QPointF(140, 120), QPointF(200, 120), Qt::ControlModifier);

        QCOMPARE(host.text("m_pHSkew"), QString("45.00\u00b0"));
        QCOMPARE(host.text("m_pVSkew"), QString("0.00\u00b0"));
        host.tool->Commit();
        QCOMPARE(host.pixel(105, 62), QColor(Qt::red));
        QCOMPARE(host.pixel(230, 117), QColor(Qt::blue));
        QCOMPARE(host.pixel(110, 117).alpha(), 0);
    }

    void altHoldsTheReferencePoint_data()
    {
        QTest::addColumn<QPointF>("from");
        QTest::addColumn<QPointF>("way");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<QStringList>("texts");

        // The reference point is the middle of the left edge.
        QTest::newRow("scaled") << QPointF(180, 120) << QPointF(40, 15) << int(Qt::AltModifier)
                                << QStringList({"100.0", "90.0", "150.0%", "150.0%", "0.00", "0.00"});
        QTest::newRow("skewed") << QPointF(140, 120) << QPointF(30, 0)
                                << int(Qt::AltModifier | Qt::ControlModifier)
                                << QStringList({"100.0", "90.0", "100.0%", "100.0%", "45.00", "0.00"});
        QTest::newRow("skewed down") << QPointF(180, 90) << QPointF(0, 80)
                                     << int(Qt::AltModifier | Qt::ControlModifier)
                                     << QStringList({"100.0", "90.0", "100.0%", "100.0%", "0.00", "45.00"});
        // Without it the opposite edge stays, and the reference point goes along.
        QTest::newRow("not held") << QPointF(140, 120) << QPointF(60, 0) << int(Qt::ControlModifier)
                                  << QStringList({"130.0", "90.0", "100.0%", "100.0%", "45.00", "0.00"});
    }
    void altHoldsTheReferencePoint()
    {
        QFETCH(const QPointF, from);
        QFETCH(const QPointF, way);
        QFETCH(const int, modifiers);
        QFETCH(const QStringList, texts);
        Host host;
        QTest::mouseClick(host.bar()->findChild<Control*>(), Qt::LeftButton, Qt::NoModifier, QPoint(5, 20));
        QCOMPARE(host.texts().mid(0, 2), QStringList({"100.0", "90.0"}));
        SignalLog log(host.tool.get());

        host.pull(from, from + way, Qt::KeyboardModifiers(modifiers));

        QStringList shown = host.texts().replaceInStrings("\u00b0", "");
        QCOMPARE(shown.takeAt(4), QString("0.00"));
        QCOMPARE(shown, texts);
        QVERIFY(log.Entries().join(' ').contains("Alt: about the reference point."));
    }

    void theReferencePointIsChosenInTheBar()
    {
        Host host;
        auto* control = host.bar()->findChild<Control*>();
        QTest::mouseClick(control, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));

        QCOMPARE(host.texts().mid(0, 2), QStringList({"100.0", "60.0"}));
        QVERIFY(!host.tool->IsPending());
        // Turned about the corner.
        host.pull(QPointF(250, 60), QPointF(100, 190), Qt::NoModifier);
        QCOMPARE(host.text("m_pAngle"), QString("90.00\u00b0"));
        QCOMPARE(host.texts().mid(0, 2), QStringList({"100.0", "60.0"}));
        // The picture stays when another one is chosen.
        QTest::mouseClick(control, Qt::LeftButton, Qt::NoModifier, QPoint(35, 35));
        QCOMPARE(host.texts().mid(0, 2), QStringList({"40.0", "140.0"}));
        // The next box begins with it.
        host.tool->Cancel();
        QCOMPARE(host.texts().mid(0, 2), QStringList({"180.0", "120.0"}));
    }

    void theReferencePointIsDragged()
    {
        Host host;
        host.pull(QPointF(140, 90), QPointF(161, 73));

        QCOMPARE(host.texts().mid(0, 2), QStringList({"161.0", "73.0"}));
        QVERIFY(!host.tool->IsPending());
        QCOMPARE(host.steps()->count(), 0);
        // Near to one of the nine points it lies on it.
        host.pull(QPointF(161, 73), QPointF(176, 63));
        QCOMPARE(host.texts().mid(0, 2), QStringList({"180.0", "60.0"}));
        QCOMPARE(host.bar()->GetTransformationCenter(), Control::TopRight);
    }

    void committing_data()
    {
        QTest::addColumn<QString>("way");
        for (const char* way : {"button", "return", "enter", "double click", "other tool", "other canvas",
                                "finish", "view hidden"})
            QTest::newRow(way) << way;
    }
    void committing()
    {
        QFETCH(QString, way);
        Host host;
        host.pull(QPointF(120, 80), QPointF(150, 60));
        SignalLog log(host.tool.get());

        if (way == "button")
            QTest::mouseClick(host.button("m_pCommit"), Qt::LeftButton);
        else if (way == "return")
            QTest::keyClick(host.view, Qt::Key_Return);
        else if (way == "enter")
            QTest::keyClick(host.view, Qt::Key_Enter, Qt::KeypadModifier);
        else if (way == "double click")
        {
            host.click(150, 60);
            host.mouse(QEvent::MouseButtonDblClick, 150, 60, Qt::LeftButton, Qt::LeftButton);
            host.release(150, 60);
        }
        else if (way == "other tool")
            host.tool->Deactivate();
        else if (way == "other canvas")
            host.tool->SetCanvas(nullptr, nullptr);
        else if (way == "finish")
            host.tool->Finish();
        else
        {
            host.press(150, 60);
            host.view->hide();
        }

        QCOMPARE(host.layer(), Halves(Rect.translated(30, -20)));
        QCOMPARE(host.steps()->count(), 1);
        QCOMPARE(log.Count("ContentEnded"), 1);
        QVERIFY(!host.tool->IsPending() && !host.tool->IsRendering());
        host.steps()->undo();
        QCOMPARE(host.layer(), Halves());
        host.steps()->redo();
        QCOMPARE(host.layer(), Halves(Rect.translated(30, -20)));
    }

    void aDoubleClickOutsideDoesNotCommit()
    {
        Host host;
        host.pull(QPointF(120, 80), QPointF(150, 60));

        host.mouse(QEvent::MouseButtonDblClick, 20, 20, Qt::LeftButton, Qt::LeftButton);
        host.release(20, 20);

        QVERIFY(host.tool->IsPending());
        QCOMPARE(host.steps()->count(), 0);
    }

    void cancelling_data()
    {
        QTest::addColumn<QString>("way");
        for (const char* way : {"button", "escape", "operation", "in a drag"})
            QTest::newRow(way) << way;
    }
    void cancelling()
    {
        QFETCH(QString, way);
        Host host;
        if (way == "in a drag")
            host.pullAndHold(QPointF(180, 120), QPointF(220, 140));
        else
            host.pull(QPointF(180, 120), QPointF(220, 140));
        QVERIFY(host.tool->IsPending());

        if (way == "button")
            QTest::mouseClick(host.button("m_pCancel"), Qt::LeftButton);
        else if (way == "operation")
            QVERIFY(host.tool->Cancel());
        else
            QTest::keyClick(host.view, Qt::Key_Escape);

        QVERIFY(host.isClean());
        host.move(240, 150);
        host.release(240, 150);
        QVERIFY(host.isClean());
        QCOMPARE(host.layer(), Halves());
        QCOMPARE(host.steps()->count(), 0);
        QCOMPARE(host.text("m_pWidth"), QString("100.0%"));
        QVERIFY(!host.tool->Cancel());
    }

    void keysAreLiveOnlyWhileItIsPending()
    {
        Host host;
        SignalLog log(host.tool.get());
        const auto live = [&host]
        {
            QStringList keys;
            for (const KXShortcut* shortcut : host.bar()->findChildren<KXShortcut*>())
                keys += shortcut->Key().toString();
            keys.removeAll(QString());
            keys.sort();
            return keys;
        };
        QTest::keyClick(host.view, Qt::Key_Return);
        QTest::keyClick(host.view, Qt::Key_Escape);
        QCOMPARE(log.Count(), 0);
        QCOMPARE(live(), QStringList());

        host.pull(QPointF(120, 80), QPointF(150, 60));
        QCOMPARE(live(),
                 QStringList({"Alt+Esc", "Alt+Shift+Esc", "Ctrl+Esc", "Ctrl+Shift+Esc", "Enter", "Esc",
                              "Return", "Shift+Esc"}));
        host.tool->Commit();
        QCOMPARE(live(), QStringList());
    }

    void dragsAddUpToOneStep()
    {
        Host host;
        host.pull(QPointF(180, 90), QPointF(220, 90));
        host.pull(QPointF(120, 75), QPointF(110, 95));
        host.pull(QPointF(280, 110), QPointF(150, 190), Qt::ShiftModifier);
        QCOMPARE(host.steps()->count(), 0);

        host.tool->Commit();

        QCOMPARE(host.steps()->count(), 1);
        host.steps()->undo();
        QCOMPARE(host.layer(), Halves());
    }

    void nothingTurnedIsNoStep()
    {
        Host host;
        host.pull(QPointF(120, 80), QPointF(150, 60));
        host.pull(QPointF(150, 60), QPointF(120, 80));
        QVERIFY(host.tool->IsPending());

        host.tool->Commit();

        QCOMPARE(host.steps()->count(), 0);
        QCOMPARE(host.layer(), Halves());
        QVERIFY(host.isClean());
    }

    void theSelectionGoesAlong()
    {
        const QImage picture = PlainPicture(QColor(20, 120, 220));
        Host host(picture);
        host.select(QRect(100, 60, 80, 60));
        QTRY_COMPARE(host.tool->GetTransform().GetBox(), QRectF(Rect));

        host.pull(QPointF(240, 90), QPointF(140, 190));
        host.tool->Commit();

        // Where it was and is no longer there is nothing, all else is as it was.
        QCOMPARE(host.mask(), MaskOf(QRect(110, 50, 60, 80)));
        QCOMPARE(host.pixel(104, 90).alpha(), 0);
        QCOMPARE(host.pixel(140, 55), QColor(20, 120, 220));
        QCOMPARE(host.pixel(30, 30), QColor(20, 120, 220));
        host.steps()->undo();
        QCOMPARE(host.layer(), picture);
        QCOMPARE(host.mask(), MaskOf(Rect));
        host.steps()->redo();
        QCOMPARE(host.mask(), MaskOf(QRect(110, 50, 60, 80)));
    }

    void theLineOfTheSelectionRestsMeanwhile()
    {
        Host host(PlainPicture(QColor(20, 120, 220)));
        auto* outline = new SelectionOutline(host.pixels(), host.view);
        host.select(Rect);
        QTRY_VERIFY(outline->IsShown() && !outline->IsComputing());
        QTRY_COMPARE(host.tool->GetTransform().GetBox(), QRectF(Rect));

        host.pull(QPointF(180, 120), QPointF(200, 130));
        QTRY_VERIFY(!outline->IsShown());
        QVERIFY(host.tool->Cancel());
        QTRY_VERIFY(outline->IsShown() && !outline->IsComputing());
        host.pull(QPointF(180, 120), QPointF(200, 130));
        QTRY_VERIFY(!outline->IsShown());
        host.tool->Commit();

        QTRY_VERIFY(outline->IsShown() && !outline->IsComputing());
    }

    void whatIsShownIsWhatIsDrawn_data()
    {
        QTest::addColumn<double>("factor");
        for (double factor : {1.0, 2.5, 0.45})
            QTest::addRow("%g", factor) << factor;
    }
    void whatIsShownIsWhatIsDrawn()
    {
        QFETCH(const double, factor);
        Host host(PlainPicture(QColor(40, 160, 60)));
        host.addLayer(Halves());
        host.pixels()->SetLayerOpacity(1, 70);
        host.addLayer(Halves(QRect(0, 0, 130, 80)));
        host.pixels()->SetCurrentLayer(1);
        QTRY_COMPARE(host.tool->GetTransform().GetBox(), QRectF(Rect));
        host.pull(QPointF(180, 120), QPointF(210, 150));
        host.pull(QPointF(270, 90), QPointF(260, 150));
        host.view->Scale(factor, QPointF(host.view->viewport()->rect().center()));
        // The box lies over the picture.
        host.leave();
        const QPolygonF box = host.tool->GetTransform().GetOutline();
        const QImage before = host.view->viewport()->grab().toImage();
        const QPointF reference = host.tool->GetTransform().GetPosition();

        host.tool->Deactivate();

        const QImage after = host.view->viewport()->grab().toImage();
        QCOMPARE(host.steps()->count(), 1);
        const auto isClear = [&](const QPointF& point)
        {
            const double reach = 16 / host.view->GetScale();
            if (QLineF(point, reference).length() < reach)
                return false;
            for (int i = 0; i < 4; ++i)
            {
                const QPointF one = box.at(i);
                const QPointF way = box.at((i + 1) % 4) - one;
                const double along =
                    qBound(0.0, QPointF::dotProduct(point - one, way) / QPointF::dotProduct(way, way), 1.0);
                if (QLineF(point, one + along * way).length() < reach)
                    return false;
            }
            return true;
        };
        int compared = 0;
        for (int y = 1; y < 200; y += 3)
        {
            for (int x = 1; x < 300; x += 3)
            {
                const QPoint place = host.at(x, y);
                if (!before.rect().contains(place) || !isClear(QPointF(x, y)))
                    continue;
                ++compared;
                const QRgb one = before.pixel(place);
                const QRgb other = after.pixel(place);
                const bool isNear = qAbs(qRed(one) - qRed(other)) <= 60 &&
                    qAbs(qGreen(one) - qGreen(other)) <= 60 && qAbs(qBlue(one) - qBlue(other)) <= 60;
                QVERIFY2(isNear, qPrintable(QString("%1 %2").arg(x).arg(y)));
            }
        }
        QVERIFY(compared > 500);
    }

    void theBoxIsDrawnAndShowsWhatCanBeTaken()
    {
        Host host(PlainPicture(Qt::transparent));
        const QImage without = host.view->viewport()->grab().toImage();
        host.pixels()->EditLayer(0) = Halves();
        host.pixels()->NotifyChanged(QRect(0, 0, 300, 200));
        QTRY_COMPARE(host.tool->GetTransform().GetBox(), QRectF(Rect));
        const QImage with = host.view->viewport()->grab().toImage();
        QVERIFY(with != without);
        // The corner of a handle, beyond the content.
        const QPoint place = host.at(100, 60) - QPoint(4, 4);
        QVERIFY(with.pixel(place) != without.pixel(place));

        host.move(180, 120, Qt::NoButton);
        QCOMPARE(host.view->viewport()->cursor().shape(), Qt::SizeFDiagCursor);
        QVERIFY(host.view->viewport()->grab().toImage() != with);
        host.move(120, 80, Qt::NoButton);
        QCOMPARE(host.view->viewport()->cursor().shape(), Qt::SizeAllCursor);
        host.move(140, 60, Qt::NoButton);
        QCOMPARE(host.view->viewport()->cursor().shape(), Qt::SizeVerCursor);
        host.mouse(QEvent::MouseMove, 141, 60, Qt::NoButton, Qt::NoButton, Qt::ControlModifier);
        QCOMPARE(host.view->viewport()->cursor().shape(), Qt::SizeHorCursor);
        host.leave();
        QCOMPARE(host.view->viewport()->grab().toImage(), with);
    }

    void aHiddenLayerIsRefused()
    {
        Host host;
        host.pixels()->SetLayerVisible(0, false);
        QCoreApplication::processEvents();
        SignalLog log(host.tool.get());

        host.pull(QPointF(120, 80), QPointF(150, 60));

        QVERIFY(log.Count("Message") >= 1);
        QVERIFY(log.Entries().constFirst().contains("hidden"));
        QVERIFY(host.isClean());
    }

    void aChangeOfTheDocumentTakesItBack_data()
    {
        QTest::addColumn<QString>("change");
        for (const char* change : {"layer", "pixels", "selection", "size"})
            QTest::newRow(change) << change;
    }
    void aChangeOfTheDocumentTakesItBack()
    {
        QFETCH(const QString, change);
        Host host;
        host.addLayer(Halves());
        QCoreApplication::processEvents();
        host.pullAndHold(QPointF(180, 120), QPointF(220, 140));
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
        else
            QVERIFY(host.pixels()->ReplaceImages(
                {PlainPicture(Qt::red, QSize(50, 40)), PlainPicture(Qt::red, QSize(50, 40))}, QImage()));

        QVERIFY(!host.tool->IsPending());
        host.release(220, 140);
        QCOMPARE(host.steps()->count(), 0);
        QVERIFY(host.tool->GetTransform().IsIdentity());
    }

    void theToolMayGoMeanwhile()
    {
        Host host;
        host.pullAndHold(QPointF(180, 120), QPointF(220, 140));

        host.tool.reset();

        QCOMPARE(host.layer(), Halves());
        host.view->viewport()->grab();
        host.mouse(QEvent::MouseButtonDblClick, 150, 60, Qt::LeftButton, Qt::LeftButton);
    }

    void theDocumentMayGoMeanwhile()
    {
        Host host;
        host.pullAndHold(QPointF(180, 120), QPointF(220, 140));

        host.closeDocument();
        QCoreApplication::processEvents();
        host.tool->SetCanvas(nullptr, nullptr);

        QVERIFY(!host.tool->IsPending());
        QCOMPARE(host.texts().join(""), QString());
    }

    void aLargePictureIsDrawnOnAnotherThread()
    {
        Host host(BusyPicture(LargeSize));
        const QImage before = host.layer();
        host.view->FitInView();
        SignalLog log(host.tool.get());

        host.pull(QPointF(500, 500), QPointF(560, 530));
        QTest::mouseClick(host.button("m_pCommit"), Qt::LeftButton);
        QTRY_COMPARE(log.Count("ContentEnded"), 1);

        QCOMPARE(host.steps()->count(), 1);
        QVERIFY(host.layer() != before);
        host.steps()->undo();
        QCOMPARE(host.layer(), before);
        QTRY_VERIFY(host.isClean());
    }

    void escapeGivesUpTheWork()
    {
        Host host(BusyPicture(LargeSize));
        const QImage before = host.layer();
        host.view->FitInView();
        host.pull(QPointF(2000, 1200), QPointF(1500, 1000));
        const BusyThreads busy;
        host.tool->Commit();
        QVERIFY(host.tool->IsRendering() && host.pixels()->IsBeingEdited());

        QTest::keyClick(host.view, Qt::Key_Escape);

        QVERIFY(host.isClean());
        QCOMPARE(host.layer(), before);
        QCOMPARE(host.steps()->count(), 0);
    }

    void finishWaitsForTheWork()
    {
        Host host(BusyPicture(LargeSize));
        host.view->FitInView();
        host.pull(QPointF(2000, 1200), QPointF(1500, 1000));

        host.tool->Finish();

        QCOMPARE(host.steps()->count(), 1);
        QVERIFY(host.isClean());
    }

    void keysChooseTheTools()
    {
        Program it;

        it.key(Qt::Key_V);
        QVERIFY(it.window.FindTool<MoveTool>()->IsActive());
        it.key(Qt::Key_T, Qt::ControlModifier);
        QVERIFY(it.tool()->IsActive());
        QVERIFY(it.tool()->GetTransformBar()->isVisible());
        QCOMPARE(it.tool()->GetTransform().GetBox(), QRectF(Rect));
    }

    void undoTakesBackWhatIsPendingFirst()
    {
        Program it;
        it.key(Qt::Key_V);
        it.pull(QPointF(120, 80), QPointF(140, 80));
        QCOMPARE(it.steps(), 1);
        it.key(Qt::Key_T, Qt::ControlModifier);
        it.pull(QPointF(140, 80), QPointF(170, 110));
        QVERIFY(it.tool()->IsPending());

        it.key(Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(!it.tool()->IsPending());
        QCOMPARE(it.steps(), 1);
        it.key(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(it.steps(), 0);
        QCOMPARE(it.window.GetDocument()->GetPixels()->GetLayer(0).image, Halves());
    }

    void anotherDocumentInFrontCommits()
    {
        Program it;
        it.key(Qt::Key_T, Qt::ControlModifier);
        it.pull(QPointF(120, 80), QPointF(150, 110));
        const Document* first = it.window.GetDocument();

        it.window.OpenImage(PlainPicture(Qt::green), "Other");

        QVERIFY(it.window.GetDocument() != first);
        QVERIFY(!it.tool()->IsPending());
        QCOMPARE(first->GetPixels()->GetLayer(0).image, Halves(Rect.translated(30, 30)));
        QCOMPARE(first->GetUndoStack()->count(), 1);
        QCOMPARE(it.tool()->GetTransform().GetBox(), QRectF(0, 0, 300, 200));
        // The other one can be transformed at once.
        it.pull(QPointF(50, 50), QPointF(60, 50));
        QVERIFY(it.tool()->IsPending());
        it.tool()->Cancel();
    }

    void anotherThemeKeepsWhatIsPending()
    {
        Program it;
        it.key(Qt::Key_T, Qt::ControlModifier);
        it.pull(QPointF(120, 80), QPointF(150, 110));

        NVApplication::GetInstance()->SetTheme(1);
        QCoreApplication::processEvents();
        it.window.grab();
        NVApplication::GetInstance()->SetTheme(0);

        QVERIFY(it.tool()->IsPending());
        it.tool()->Commit();
        QCOMPARE(it.steps(), 1);
    }

    void theReferencePointIsRemembered()
    {
        ScratchSettings scratch;
        {
            TransformTool tool(&scratch.settings, nullptr);
            QCOMPARE(tool.GetTransformBar()->GetTransformationCenter(), Control::Center);
            tool.GetTransformBar()->SetTransformationCenter(Control::BottomCenter);
            tool.StoreValues();
        }
        TransformTool tool(&scratch.settings, nullptr);
        QCOMPARE(tool.GetTransformBar()->GetTransformationCenter(), Control::BottomCenter);
    }

    void longWorkSaysHowFarItIs()
    {
        Host host(BusyPicture(LargeSize));
        host.view->FitInView();
        host.pull(QPointF(2000, 1200), QPointF(1500, 1000));
        SignalLog log(host.tool.get());
        {
            const BusyThreads busy;
            host.tool->Commit();
            log.Clear();
            QTRY_VERIFY(log.Count("Message") >= 1);
            QVERIFY(log.Entries().join(' ').contains("being transformed: 0 %"));
        }
        QTRY_VERIFY(!host.tool->IsRendering());
        QCOMPARE(log.Entries().constLast(), QString("ContentEnded()"));
    }
};

NV_TEST_MAIN(tst_TransformTool)
#include "tst_TransformTool.moc"
