// The panel of the colour range: its dropper on the canvas and its preview.

#include "ColorRangeDock.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>

#include "BarForm.h"
#include "BusyThreads.h"
#include "NVSelectColorRange.h"
#include "SignalLog.h"
#include "TestMain.h"
#include "ToolHost.h"

namespace
{

// The sanitizers make a preview slow.
const int PatienceMs = 60000;

// Thirds of red, green and blue; below them a strip of nothing.
QImage Thirds(const QSize& size = QSize(300, 200))
{
    QImage picture(size, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    const QColor colors[] = {Qt::red, Qt::green, Qt::blue};
    for (int y = 0; y < size.height() * 9 / 10; ++y)
    {
        for (int x = 0; x < size.width(); ++x)
            picture.setPixelColor(x, y, colors[x * 3 / size.width()]);
    }
    return picture;
}

} // namespace

class tst_ColorRangeDock : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_scratch = std::make_unique<ScratchSettings>();
        m_document = std::make_unique<Document>(Thirds(), QString(), "A");
        m_window = std::make_unique<QMainWindow>();
        m_view = new NVDocumentView(m_document->GetModel());
        m_window->setCentralWidget(m_view);
        m_dock = new ColorRangeDock(&m_scratch->settings, m_window.get());
        m_window->addDockWidget(Qt::RightDockWidgetArea, m_dock);
        m_window->resize(1000, 640);
        m_window->show();
        m_view->Scale(1 / m_view->GetScale(), QPointF());
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }

    void cleanup()
    {
        if (m_dock)
            m_dock->SetCanvas(nullptr, nullptr);
        m_window.reset();
        m_document.reset();
    }

    void itIsClosedAtFirstAndWithoutACanvas()
    {
        SignalLog log(m_dock);
        m_dock->Open();

        QVERIFY(!m_dock->IsOpen());
        QVERIFY(!m_dock->isVisible());
        QCOMPARE(log.Count("Opened"), 0);
    }

    void openingTellsOnce()
    {
        m_dock->SetCanvas(m_view, m_document.get());
        SignalLog log(m_dock);

        m_dock->Open();
        m_dock->Open();

        QVERIFY(m_dock->IsOpen());
        QVERIFY(m_dock->isVisible());
        QCOMPARE(log.Count("Opened"), 1);
        QCOMPARE(m_view->viewport()->cursor().shape(), Qt::CrossCursor);
    }

    void aClickOnTheCanvasAddsTheColour()
    {
        open();
        click(50, 50);
        click(150, 50);
        click(250, 50, Qt::ShiftModifier);

        QCOMPARE(panel()->GetSourceColors(), QList<QColor>({Qt::red, Qt::green, Qt::blue}));
        QCOMPARE(m_dock->GetSettings().colors,
                 QVector<QRgb>({qRgb(255, 0, 0), qRgb(0, 255, 0), qRgb(0, 0, 255)}));
    }

    void aColourThatIsThereIsSelected()
    {
        open();
        click(50, 50);
        click(150, 50);
        click(60, 60);

        QCOMPARE(panel()->GetSourceColors().size(), 2);
        QCOMPARE(panel()->GetCurrentIndex(), 0);
    }

    void nothingCountsAsAColourToo()
    {
        open();
        click(50, 195);
        click(60, 195);

        QCOMPARE(panel()->GetSourceColors(), QList<QColor>({QColor(0, 0, 0, 0)}));
        QCOMPARE(m_dock->GetSettings().colors, QVector<QRgb>({0}));
    }

    void altTakesTheMostSimilarColourOut()
    {
        open();
        click(50, 50);
        click(150, 50);
        click(250, 50);
        SignalLog log(m_dock);
        click(160, 60, Qt::AltModifier);
        QCOMPARE(panel()->GetSourceColors(), QList<QColor>({Qt::red, Qt::blue}));

        click(160, 60, Qt::AltModifier);

        QCOMPARE(panel()->GetSourceColors().size(), 2);
        QCOMPARE(log.Count("Message"), 1);
        QVERIFY(log.Entries().last().contains("No colour of the strip"));
    }

    void altReachesAsFarAsTheTolerance()
    {
        open();
        panel()->SetTolerance(10);
        panel()->AddColor(QColor(245, 0, 0), QColor(245, 0, 0));
        panel()->AddColor(QColor(244, 0, 0), QColor(244, 0, 0));
        click(50, 50, Qt::AltModifier);
        QCOMPARE(panel()->GetSourceColors(), QList<QColor>({QColor(244, 0, 0)}));

        click(50, 50, Qt::AltModifier);
        QCOMPARE(panel()->GetSourceColors().size(), 1);
    }

    void clicksBesideThePictureAndOtherButtonsAddNothing()
    {
        open();
        click(-5, 50);
        click(301, 50);
        QTest::mouseClick(m_view->viewport(), Qt::RightButton, Qt::NoModifier, at(50, 50));

        QCOMPARE(panel()->GetSourceColors().size(), 0);
    }

    void aFullStripIsTold()
    {
        open();
        for (int i = 0; i < 256; ++i)
            panel()->AddColor(QColor(1, 2, i), QColor(1, 2, i));
        SignalLog log(m_dock);

        click(50, 50);

        QCOMPARE(panel()->GetSourceColors().size(), 256);
        QVERIFY(log.Entries().constFirst().contains("full"));
    }

    void thePreviewShowsWhatComesOut()
    {
        open();
        QTRY_VERIFY_WITH_TIMEOUT(!m_dock->IsComputing(), PatienceMs);
        QVERIFY(preview().size().isValid());
        QCOMPARE(shown(0.5, 0.5), QColor(Qt::black));
        click(150, 50);
        QTRY_COMPARE_WITH_TIMEOUT(shown(0.5, 0.5), QColor(Qt::white), PatienceMs);
        QCOMPARE(shown(0.1, 0.5), QColor(Qt::black));

        click(50, 50);
        QTRY_COMPARE_WITH_TIMEOUT(shown(0.1, 0.5), QColor(Qt::white), PatienceMs);
        click(50, 50, Qt::AltModifier);
        QTRY_COMPARE_WITH_TIMEOUT(shown(0.1, 0.5), QColor(Qt::black), PatienceMs);
    }

    void thePreviewFitsItsPlace()
    {
        open();
        click(150, 50);
        QTRY_VERIFY_WITH_TIMEOUT(!m_dock->IsComputing(), PatienceMs);
        QCOMPARE(preview().width(), panel()->GetPreviewSize().width());
        SignalLog log(m_dock);

        m_window->resizeDocks({m_dock}, {600}, Qt::Horizontal);

        QTRY_VERIFY(log.Count("PreviewShown") > 0);
        QTRY_VERIFY_WITH_TIMEOUT(!m_dock->IsComputing(), PatienceMs);
        QCOMPARE(preview().width(), panel()->GetPreviewSize().width());
        QVERIFY(preview().width() > 500);
    }

    void everythingThatMattersMakesThePreviewAnew_data()
    {
        QTest::addColumn<QString>("change");
        for (const char* change : {"tolerance", "mode", "colours", "selection", "picture", "size"})
            QTest::newRow(change) << change;
    }
    void everythingThatMattersMakesThePreviewAnew()
    {
        QFETCH(QString, change);
        open();
        click(150, 50);
        QTRY_VERIFY_WITH_TIMEOUT(!m_dock->IsComputing(), PatienceMs);
        SignalLog log(m_dock);
        KXDocumentInterface* pixels = m_document->GetPixels();

        if (change == "tolerance")
            QTest::keyClick(panel()->findChild<QSpinBox*>("m_pTolerance"), Qt::Key_Up);
        else if (change == "mode")
            QTest::keyClick(panel()->findChild<QComboBox*>("m_pMode"), Qt::Key_Down);
        else if (change == "colours")
            QTest::mouseClick(panel()->findChild<QPushButton*>("m_pRemoveAll"), Qt::LeftButton);
        else if (change == "selection")
        {
            QImage mask(pixels->GetSize(), QImage::Format_Grayscale8);
            mask.fill(255);
            pixels->SetSelectionMask(mask);
        }
        else if (change == "picture")
        {
            pixels->EditLayer(0).fill(Qt::green);
            pixels->NotifyChanged(pixels->GetRect());
        }
        else
            pixels->ReplaceImages({PlainPicture(Qt::green, QSize(10, 10))}, QImage());

        QTRY_VERIFY(log.Count("PreviewShown") > 0);
        QTRY_VERIFY_WITH_TIMEOUT(!m_dock->IsComputing(), PatienceMs);
        if (change == "picture" || change == "size")
            QCOMPARE(shown(0.1, 0.5), QColor(Qt::white));
    }

    void aChangeRestartsTheWork()
    {
        open();
        QTRY_VERIFY_WITH_TIMEOUT(!m_dock->IsComputing(), PatienceMs);
        SignalLog log(m_dock);
        {
            BusyThreads threads;
            for (int i = 0; i < 20; ++i)
                panel()->SetTolerance(i);
            QVERIFY(m_dock->IsComputing());
            QCOMPARE(log.Count("PreviewShown"), 0);
        }
        QTRY_VERIFY_WITH_TIMEOUT(!m_dock->IsComputing(), PatienceMs);

        QCOMPARE(log.Count("PreviewShown"), 1);
    }

    void thePreviewIsMadeOnAnotherThread()
    {
        m_document = std::make_unique<Document>(Thirds(), QString(), "B");
        m_view->SetModel(m_document->GetModel());
        BusyThreads threads;

        open();

        QVERIFY(m_dock->IsComputing());
        threads.Open();
        QTRY_VERIFY_WITH_TIMEOUT(!m_dock->IsComputing(), PatienceMs);
    }

    void okEndsItAndTellsWithTheValues()
    {
        open();
        click(150, 50);
        panel()->SetMode(2);
        panel()->SetTolerance(77);
        SignalLog log(m_dock);

        press(QDialogButtonBox::Ok);

        QVERIFY(!m_dock->IsOpen());
        QVERIFY(!m_dock->isVisible());
        QCOMPARE(log.Count("Closed"), 1);
        QCOMPARE(log.Count("Accepted"), 1);
        QVERIFY(log.Entries().indexOf("Closed()") < log.Entries().indexOf("Accepted()"));
        QCOMPARE(m_dock->GetSettings().tolerance, 77);
        QCOMPARE(m_dock->GetSettings().colors, QVector<QRgb>({qRgb(0, 255, 0)}));
        QCOMPARE(m_dock->GetState(), int(SubtractSelection));
        QCOMPARE(m_scratch->settings.value("colorRange/tolerance").toInt(), 77);
        QCOMPARE(m_scratch->settings.value("colorRange/mode").toInt(), 2);
    }

    void itIsCancelled_data()
    {
        QTest::addColumn<QString>("by");
        for (const char* by : {"button", "escape in the panel", "escape on the canvas", "close button",
                               "no canvas", "call", "dead view"})
            QTest::newRow(by) << by;
    }
    void itIsCancelled()
    {
        QFETCH(QString, by);
        open();
        click(150, 50);
        SignalLog log(m_dock);

        if (by == "button")
            press(QDialogButtonBox::Cancel);
        else if (by == "escape in the panel")
            QTest::keyClick(panel()->findChild<QSlider*>(), Qt::Key_Escape);
        else if (by == "escape on the canvas")
            QTest::keyClick(m_view, Qt::Key_Escape);
        else if (by == "close button")
            m_dock->close();
        else if (by == "no canvas")
            m_dock->SetCanvas(nullptr, nullptr);
        else if (by == "call")
            m_dock->Cancel();
        else
        {
            delete m_window->takeCentralWidget();
            m_dock->SetCanvas(nullptr, nullptr);
        }

        QVERIFY(!m_dock->IsOpen());
        QVERIFY(!m_dock->isVisible());
        QVERIFY(!m_dock->IsComputing());
        QCOMPARE(log.Count("Closed"), 1);
        QCOMPARE(log.Count("Accepted"), 0);
        m_dock->Cancel();
        QCOMPARE(log.Count("Closed"), 1);
    }

    void afterItsEndTheCanvasIsFree()
    {
        open();
        QTRY_VERIFY(!preview().isNull());
        m_dock->Cancel();

        click(150, 50);

        QCOMPARE(panel()->GetSourceColors().size(), 0);
        QCOMPARE(m_view->viewport()->cursor().shape(), Qt::ArrowCursor);
        SignalLog log(m_dock);
        m_document->GetPixels()->NotifyChanged(QRect(0, 0, 9, 9));
        QVERIFY(!m_dock->IsComputing());
        QVERIFY(preview().isNull());
        QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QCoreApplication::sendEvent(m_view, &escape);
        QVERIFY(!escape.isAccepted());
        QCOMPARE(log.Count("Closed"), 0);
    }

    void enterOnTheCanvasAccepts_data()
    {
        QTest::addColumn<int>("key");
        QTest::newRow("return") << int(Qt::Key_Return);
        QTest::newRow("enter of the number pad") << int(Qt::Key_Enter);
    }
    void enterOnTheCanvasAccepts()
    {
        QFETCH(int, key);
        open();
        click(150, 50);
        SignalLog log(m_dock);

        QTest::keyClick(m_view, Qt::Key(key));

        QVERIFY(!m_dock->IsOpen());
        QVERIFY(!m_dock->isVisible());
        QCOMPARE(log.Count("Accepted"), 1);
        QCOMPARE(log.Count("Closed"), 1);
    }

    void thePreviewIsSharpOnADenseScreen()
    {
        if (!IsOnDenseScreen())
            return;
        open();
        click(150, 50);
        QTRY_VERIFY_WITH_TIMEOUT(!m_dock->IsComputing(), PatienceMs);

        QCOMPARE(preview().devicePixelRatio(), 2.0);
        QCOMPARE(preview().width(), 2 * panel()->GetPreviewSize().width());
    }

    void theColoursStayForTheNextTime()
    {
        open();
        click(150, 50);
        m_dock->Cancel();
        open();

        QCOMPARE(panel()->GetSourceColors(), QList<QColor>({Qt::green}));
        QTRY_COMPARE_WITH_TIMEOUT(shown(0.5, 0.5), QColor(Qt::white), PatienceMs);
    }

    void anotherCanvasIsTakenOver()
    {
        open();
        Document other(PlainPicture(Qt::yellow), QString(), "B");
        NVDocumentView view(other.GetModel());
        view.resize(300, 200);
        view.show();

        m_dock->SetCanvas(&view, &other);
        QVERIFY(m_dock->IsOpen());
        click(150, 50);
        QCOMPARE(panel()->GetSourceColors().size(), 0);
        QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(150, 100));
        QCOMPARE(panel()->GetSourceColors(), QList<QColor>({Qt::yellow}));

        m_dock->SetCanvas(m_view, m_document.get());
    }

    void aCanvasThatDiedIsLeft()
    {
        const BusyThreads threads;
        open();
        QVERIFY(m_dock->IsComputing());
        delete m_window->takeCentralWidget();
        m_document.reset();
        SignalLog log(m_dock);

        m_dock->SetCanvas(nullptr, nullptr);

        QVERIFY(!m_dock->IsOpen());
        QVERIFY(!m_dock->IsComputing());
        QVERIFY(!m_dock->isVisible());
        QCOMPARE(log.Count("Closed"), 1);
        m_dock->SetCanvas(nullptr, nullptr);
        QCOMPARE(log.Count("Closed"), 1);
    }

    void itDiesWhileItIsOpen()
    {
        open();
        const BusyThreads threads;
        panel()->SetTolerance(3);

        delete m_dock;
        m_dock = nullptr;

        QCOMPARE(m_view->viewport()->cursor().shape(), Qt::ArrowCursor);
    }

    void valuesOfTheSettingsThatMakeNoSenseAreBroughtIntoRange()
    {
        m_scratch->settings.setValue("colorRange/tolerance", 9999);
        m_scratch->settings.setValue("colorRange/mode", 17);
        const ColorRangeDock other(&m_scratch->settings);

        QCOMPARE(other.GetSettings().tolerance, 255);
        QCOMPARE(other.GetState(), int(IntersectSelections));
    }

private:
    void open()
    {
        m_dock->SetCanvas(m_view, m_document.get());
        m_dock->Open();
        QCoreApplication::processEvents();
    }

    NVSelectColorRange* panel() const { return m_dock->findChild<NVSelectColorRange*>(); }
    QPoint at(double x, double y) const
    {
        return m_view->MapFromDocument(QPointF(x + 0.5, y + 0.5)).toPoint();
    }
    void click(double x, double y, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::mouseClick(m_view->viewport(), Qt::LeftButton, modifiers, at(x, y));
    }
    void press(QDialogButtonBox::StandardButton button)
    {
        QTest::mouseClick(panel()->findChild<QDialogButtonBox*>()->button(button), Qt::LeftButton);
    }
    QImage preview() const
    {
        return panel()->findChild<QLabel*>("m_pPreview")->pixmap(Qt::ReturnByValue).toImage();
    }
    QColor shown(double x, double y) const
    {
        const QImage image = preview();
        return image.isNull() ? QColor() : image.pixelColor(int(x * image.width()), int(y * image.height()));
    }

    std::unique_ptr<ScratchSettings> m_scratch;
    std::unique_ptr<Document> m_document;
    std::unique_ptr<QMainWindow> m_window;
    NVDocumentView* m_view = nullptr;
    ColorRangeDock* m_dock = nullptr;
};

NV_TEST_MAIN(tst_ColorRangeDock)
#include "tst_ColorRangeDock.moc"
