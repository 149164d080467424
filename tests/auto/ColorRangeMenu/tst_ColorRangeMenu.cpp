// The selection that comes of a colour range, as a step of the document.

#include "ColorRangeMenu.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QStatusBar>
#include <QTimer>
#include <QToolButton>

#include "BusyThreads.h"
#include "ColorRangeDock.h"
#include "FileTask.h"
#include "NVSelectColorRange.h"
#include "SignalLog.h"
#include "TestMain.h"
#include "ToolHost.h"

namespace
{

QImage MaskOf(const QRect& selected, const QSize& size = QSize(300, 200))
{
    QImage mask(size, QImage::Format_Grayscale8);
    mask.fill(0);
    for (int y = selected.top(); y <= selected.bottom(); ++y)
        memset(mask.scanLine(y) + selected.left(), 255, size_t(selected.width()));
    return mask;
}

// The left half is red.
QImage TwoHalves()
{
    QImage picture = PlainPicture(Qt::blue);
    for (int y = 0; y < 200; ++y)
    {
        for (int x = 0; x < 150; ++x)
            picture.setPixelColor(x, y, Qt::red);
    }
    return picture;
}

} // namespace

class tst_ColorRangeMenu : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_scratch = std::make_unique<ScratchSettings>();
        m_document = std::make_unique<Document>(TwoHalves(), QString(), "A");
        m_window = std::make_unique<QMainWindow>();
        m_view = new NVDocumentView(m_document->GetModel());
        m_window->setCentralWidget(m_view);
        m_dock = new ColorRangeDock(&m_scratch->settings, m_window.get());
        m_window->addDockWidget(Qt::RightDockWidgetArea, m_dock);
        m_task = new FileTask(m_window->statusBar(), m_window.get());
        m_menu = new ColorRangeMenu(m_dock, m_task, m_window.get());
        m_window->resize(1000, 640);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }

    void cleanup()
    {
        m_menu->SetDocument(nullptr, nullptr);
        m_window.reset();
        m_document.reset();
    }

    void withoutADocumentItIsOff()
    {
        QVERIFY(!m_menu->GetAction()->isEnabled());
        m_menu->SetDocument(m_document.get(), m_view);
        QVERIFY(m_menu->GetAction()->isEnabled());
        m_menu->SetDocument(nullptr, nullptr);
        QVERIFY(!m_menu->GetAction()->isEnabled());
    }

    void whatIsUnderWayIsEndedFirst()
    {
        m_menu->SetDocument(m_document.get(), m_view);
        bool wasOpen = true;
        connect(m_menu, &ColorRangeMenu::AboutToChange, this, [&] { wasOpen = m_dock->IsOpen(); });

        m_menu->GetAction()->trigger();

        QVERIFY(!wasOpen);
        QVERIFY(m_dock->IsOpen());
    }

    void eachModeMeetsTheSelectionThatIsThere_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QImage>("expected");
        // The upper half is selected, the left one red.
        QTest::newRow("create new") << 0 << MaskOf(QRect(0, 0, 150, 200));
        QImage both = MaskOf(QRect(0, 0, 150, 200));
        for (int y = 0; y < 100; ++y)
            memset(both.scanLine(y), 255, 300);
        QTest::newRow("add") << 1 << both;
        QTest::newRow("subtract") << 2 << MaskOf(QRect(150, 0, 150, 100));
        QTest::newRow("intersect") << 3 << MaskOf(QRect(0, 0, 150, 100));
    }
    void eachModeMeetsTheSelectionThatIsThere()
    {
        QFETCH(int, mode);
        QFETCH(QImage, expected);
        const QImage before = MaskOf(QRect(0, 0, 300, 100));
        QVERIFY(m_document->GetPixels()->SetSelectionMask(before));
        open();
        QTest::mouseClick(m_view->viewport(), Qt::LeftButton, Qt::NoModifier,
                          m_view->MapFromDocument(QPointF(50, 50)).toPoint());
        QCOMPARE(panel()->GetSourceColors(), QList<QColor>({Qt::red}));
        auto* modes = panel()->findChild<QComboBox*>("m_pMode");
        QTest::keyClick(modes, Qt::Key_Home);
        for (int i = 0; i < mode; ++i)
            QTest::keyClick(modes, Qt::Key_Down);
        QCOMPARE(modes->currentText(), QString(QTest::currentDataTag()));

        press(QDialogButtonBox::Ok);

        QCOMPARE(m_document->GetPixels()->GetSelectionMask(), expected);
        QCOMPARE(m_document->GetUndoStack()->undoText(), QString("Colour Range"));
        m_document->GetUndoStack()->undo();
        QCOMPARE(m_document->GetPixels()->GetSelectionMask(), before);
        m_document->GetUndoStack()->redo();
        QCOMPARE(m_document->GetPixels()->GetSelectionMask(), expected);
        QCOMPARE(m_document->GetUndoStack()->count(), 1);
    }

    void cancellingChangesNothing()
    {
        open();
        pick(Qt::red);
        SignalLog log(m_menu);

        press(QDialogButtonBox::Cancel);

        QVERIFY(m_document->GetPixels()->GetSelectionMask().isNull());
        QCOMPARE(m_document->GetUndoStack()->count(), 0);
        QCOMPARE(log.Entries(), QStringList("Message(\"\")"));
    }

    void aSelectionThatStaysIsNoStep()
    {
        open();
        SignalLog log(m_menu);

        press(QDialogButtonBox::Ok);

        QCOMPARE(m_document->GetUndoStack()->count(), 0);
        QCOMPARE(log.Entries(), QStringList({"Message(\"\")", "Message(\"The selection is as it was.\")"}));
    }

    void coloursThatAreNotThereSelectNothing()
    {
        QVERIFY(m_document->GetPixels()->SetSelectionMask(MaskOf(QRect(0, 0, 9, 9))));
        open();
        pick(Qt::yellow);
        SignalLog log(m_menu);

        press(QDialogButtonBox::Ok);

        QVERIFY(m_document->GetPixels()->GetSelectionMask().isNull());
        QCOMPARE(m_document->GetUndoStack()->count(), 1);
        QVERIFY(log.Entries().constLast().contains("Nothing is selected"));
    }

    void theWorkMayBeCancelled()
    {
        open();
        pick(Qt::red);
        SignalLog log(m_menu);
        BusyThreads threads;
        QTimer cancel;
        connect(&cancel, &QTimer::timeout, m_task, &FileTask::Cancel);
        connect(&cancel, &QTimer::timeout, this, [&threads] { threads.Open(); });
        cancel.setSingleShot(true);
        cancel.start(0);

        press(QDialogButtonBox::Ok);

        QVERIFY(m_document->GetPixels()->GetSelectionMask().isNull());
        QCOMPARE(m_document->GetUndoStack()->count(), 0);
        QVERIFY(log.Entries().constLast().contains("Cancelled"));
    }

    void whileOtherWorkRunsNothingIsDone()
    {
        open();
        pick(Qt::red);
        bool asked = false;

        m_task->Run("Other work",
                    [&](FileProgress*)
                    {
                        QMetaObject::invokeMethod(
                            this,
                            [&]
                            {
                                press(QDialogButtonBox::Ok);
                                asked = true;
                            },
                            Qt::BlockingQueuedConnection);
                    });

        QVERIFY(asked);
        QCOMPARE(m_document->GetUndoStack()->count(), 0);
    }

private:
    void open()
    {
        m_menu->SetDocument(m_document.get(), m_view);
        m_menu->GetAction()->trigger();
        QCoreApplication::processEvents();
    }
    NVSelectColorRange* panel() const { return m_dock->findChild<NVSelectColorRange*>(); }
    void pick(const QColor& color) { panel()->AddColor(color, color); }
    void press(QDialogButtonBox::StandardButton button)
    {
        QTest::mouseClick(panel()->findChild<QDialogButtonBox*>()->button(button), Qt::LeftButton);
    }

    std::unique_ptr<ScratchSettings> m_scratch;
    std::unique_ptr<Document> m_document;
    std::unique_ptr<QMainWindow> m_window;
    NVDocumentView* m_view = nullptr;
    ColorRangeDock* m_dock = nullptr;
    FileTask* m_task = nullptr;
    ColorRangeMenu* m_menu = nullptr;
};

NV_TEST_MAIN(tst_ColorRangeMenu)
#include "tst_ColorRangeMenu.moc"
