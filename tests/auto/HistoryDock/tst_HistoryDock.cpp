// The panel with the steps of the document in front, worked with the mouse.

#include "HistoryDock.h"

#include <QLabel>
#include <QLayout>
#include <QScrollArea>
#include <QScrollBar>

#include "BarForm.h"
#include "History.h"
#include "KXResource.h"
#include "LayerCommand.h"
#include "NVApplication.h"
#include "NVHistoryItem.h"
#include "NVHistoryPanel.h"
#include "NVSpinBox.h"
#include "SignalLog.h"
#include "TestMain.h"
#include "Theme.h"
#include "TilesCommand.h"
#include "ToolHost.h"

namespace
{

void Change(Document& document, const QColor& color)
{
    KXDocumentInterface* pixels = document.GetPixels();
    QVector<SavedTile> tiles = {{pixels->GetRect(), pixels->GetLayer(0).image.copy()}};
    pixels->EditLayer(0).fill(color);
    pixels->NotifyChanged(pixels->GetRect());
    document.GetUndoStack()->push(new TilesCommand(color.name(), pixels, 0, std::move(tiles)));
}

} // namespace

class tst_HistoryDock : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_scratch = std::make_unique<ScratchSettings>();
        m_document = make("A");
        m_window = std::make_unique<QMainWindow>();
        m_window->setCentralWidget(new QWidget);
        m_dock = new HistoryDock(&m_scratch->settings, m_window.get());
        m_window->addDockWidget(Qt::RightDockWidgetArea, m_dock);
        m_window->resize(700, 400);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }

    void cleanup()
    {
        NVApplication::GetInstance()->SetTheme(0);
        qApp->setStyleSheet(QString());
        m_window.reset();
        m_document.reset();
    }

    void itIsClosedAtFirstAndEmpty()
    {
        QVERIFY(!m_dock->isVisible());
        QCOMPARE(panel()->Count(), 0);
        QCOMPARE(usage(), QString());
    }

    void itShowsTheStepsThatAreThere()
    {
        Change(*m_document, Qt::red);
        Change(*m_document, Qt::blue);
        m_document->GetUndoStack()->undo();

        m_dock->SetDocument(m_document.get());

        QCOMPARE(texts(), QStringList({"Opened", "#ff0000", "#0000ff"}));
        QCOMPARE(states(), QString("ESD"));
        QCOMPARE(usage(), QString("2 steps, 703.1 kB"));
    }

    void itFollowsTheSteps()
    {
        open();
        QCOMPARE(states(), QString("S"));
        QCOMPARE(usage(), QString("0 steps, 0 bytes"));
        Change(*m_document, Qt::red);
        QCOMPARE(states(), QString("ES"));
        QCOMPARE(usage(), QString("1 step, 351.6 kB"));
        Change(*m_document, Qt::blue);
        m_document->GetUndoStack()->setIndex(0);
        QCOMPARE(states(), QString("SDD"));
        Change(*m_document, Qt::green);

        QCOMPARE(texts(), QStringList({"Opened", "#00ff00"}));
        QCOMPARE(states(), QString("ES"));
    }

    void eachRowHasThePictureOfItsStep()
    {
        open();
        Change(*m_document, Qt::red);
        Change(*m_document, Qt::blue);

        QCOMPARE(icon(0), QColor(Qt::white));
        QCOMPARE(icon(1), QColor(Qt::red));
        QCOMPARE(icon(2), QColor(Qt::blue));
        const QPixmap picture = item(1)->findChild<QLabel*>("m_pIcon")->pixmap(Qt::ReturnByValue);
        QCOMPARE(picture.size() / picture.devicePixelRatio(), QSize(24, 24));
    }

    void thePicturesAreSharpOnADenseScreen()
    {
        if (!IsOnDenseScreen())
            return;
        open();

        const QPixmap picture = item(0)->findChild<QLabel*>("m_pIcon")->pixmap(Qt::ReturnByValue);
        QCOMPARE(picture.devicePixelRatio(), 2.0);
        QCOMPARE(picture.size(), QSize(48, 48));
    }

    void aClickGoesToTheStep()
    {
        open();
        for (const QColor color : {Qt::red, Qt::green, Qt::blue})
            Change(*m_document, color);
        SignalLog log(m_dock);

        click(1);
        QCOMPARE(m_document->GetPixels()->GetComposition().pixelColor(5, 5), QColor(Qt::red));
        QCOMPARE(states(), QString("ESDD"));
        // One that is undone.
        click(3);
        QCOMPARE(m_document->GetPixels()->GetComposition().pixelColor(5, 5), QColor(Qt::blue));
        QCOMPARE(states(), QString("EEES"));
        click(0);
        QCOMPARE(m_document->GetPixels()->GetComposition().pixelColor(5, 5), QColor(Qt::white));
        QCOMPARE(states(), QString("SDDD"));

        QCOMPARE(log.Count("AboutToChange"), 3);
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    void whatComesToItsEndByAClickMayMakeTheStepGo()
    {
        open();
        Change(*m_document, Qt::red);
        Change(*m_document, Qt::blue);
        m_document->GetUndoStack()->undo();
        connect(m_dock, &HistoryDock::AboutToChange, m_document.get(),
                [this] { Change(*m_document, Qt::black); });

        click(2);

        QCOMPARE(m_document->GetPixels()->GetComposition().pixelColor(5, 5), QColor(Qt::black));
        QCOMPARE(texts(), QStringList({"Opened", "#ff0000", "#000000"}));
        QCOMPARE(states(), QString("EES"));
    }

    void aDocumentThatGoesWithAClickIsNotTouched()
    {
        open();
        Change(*m_document, Qt::red);
        connect(m_dock, &HistoryDock::AboutToChange, m_window.get(),
                [this] { m_dock->SetDocument(nullptr); });

        click(0);

        QCOMPARE(m_document->GetUndoStack()->index(), 1);
        QCOMPARE(panel()->Count(), 0);
    }

    void droppedStepsAreTold()
    {
        open();
        QSpinBox* limit = m_dock->findChild<NVSpinBox*>();
        limit->setValue(16);
        m_document = make("Large", QSize(1000, 1000));
        m_dock->SetDocument(m_document.get());
        SignalLog log(m_dock);

        for (const QColor color : {Qt::red, Qt::green, Qt::blue, Qt::black})
            Change(*m_document, color);
        QCOMPARE(log.Count("Message"), 0);
        Change(*m_document, Qt::yellow);

        QCOMPARE(log.Count("Message"), 1);
        QVERIFY(log.Entries().constFirst().contains("1 earlier step dropped"));
        QVERIFY(log.Entries().constFirst().contains("16 MB"));
        QCOMPARE(texts(),
                 QStringList({"1 earlier step dropped", "#00ff00", "#0000ff", "#000000", "#ffff00"}));
        QCOMPARE(states(), QString("EEEES"));
        QCOMPARE(icon(0), QColor(Qt::red));
        QCOMPARE(icon(4), QColor(Qt::yellow));
        QCOMPARE(usage(), QString("4 steps, 15.3 MB"));
        click(0);
        QCOMPARE(m_document->GetPixels()->GetComposition().pixelColor(5, 5), QColor(Qt::red));
    }

    void theLimitIsTypedAndKept()
    {
        open();
        auto* limit = m_dock->findChild<NVSpinBox*>();
        QCOMPARE(limit->value(), Document::UndoMegabytes);
        limit->setFocus();
        limit->selectAll();
        QTest::keyClicks(limit, "64");
        QCOMPARE(m_document->GetUndoMegabytes(), Document::UndoMegabytes);
        QTest::keyClick(limit, Qt::Key_Return);

        QCOMPARE(m_document->GetUndoMegabytes(), 64);
        HistoryDock other(&m_scratch->settings);
        QCOMPARE(other.findChild<NVSpinBox*>()->value(), 64);
        const std::unique_ptr<Document> document = make("B");
        other.SetDocument(document.get());
        QCOMPARE(document->GetUndoMegabytes(), 64);
        other.SetDocument(nullptr);
    }

    void aLimitInTheSettingsThatMakesNoSenseIsBroughtIntoRange()
    {
        m_scratch->settings.setValue("history/megabytes", "nonsense");
        const HistoryDock other(&m_scratch->settings);

        QCOMPARE(other.findChild<NVSpinBox*>()->value(), 16);
    }

    void anotherDocumentIsFollowed()
    {
        open();
        Change(*m_document, Qt::red);
        const std::unique_ptr<Document> other = make("B");
        Change(*other, Qt::green);
        Change(*other, Qt::blue);

        m_dock->SetDocument(other.get());
        QCOMPARE(texts(), QStringList({"Opened", "#00ff00", "#0000ff"}));
        Change(*m_document, Qt::black);
        QCOMPARE(panel()->Count(), 3);
        m_dock->SetDocument(m_document.get());
        QCOMPARE(texts(), QStringList({"Opened", "#ff0000", "#000000"}));
        m_dock->SetDocument(nullptr);

        QCOMPARE(panel()->Count(), 0);
        QCOMPARE(usage(), QString());
    }

    void theThemeReachesEveryRow()
    {
        const Theme theme(m_window.get());
        open();
        Change(*m_document, Qt::red);
        Change(*m_document, Qt::blue);
        m_document->GetUndoStack()->undo();
        const QString before = item(2)->styleSheet();

        NVApplication::GetInstance()->SetTheme(1);
        m_dock->UpdateTheme();

        QVERIFY(item(2)->styleSheet() != before);
        QCOMPARE(item(0)->styleSheet(), KXResource::GetData(KXResource::HistoryItem).toString());
        QCOMPARE(item(1)->styleSheet(), KXResource::GetData(KXResource::HistoryItemSelected).toString());
        QCOMPARE(item(2)->styleSheet(), KXResource::GetData(KXResource::HistoryItemUndone).toString());
    }

    void aPanelThatComesBackShowsThePresentState()
    {
        open();
        for (int i = 0; i < 60; ++i)
            Change(*m_document, QColor(i, i, i));
        auto* bar = m_dock->findChild<QScrollArea*>()->verticalScrollBar();
        QTRY_COMPARE(bar->value(), bar->maximum());
        m_dock->hide();
        bar->setValue(0);

        m_dock->show();

        QTRY_COMPARE(bar->value(), bar->maximum());
    }

    void aDocumentThatDiesLeavesNoRowToClick()
    {
        open();
        Change(*m_document, Qt::red);

        m_dock->SetDocument(nullptr);
        m_document.reset();

        QTest::mouseClick(panel(), Qt::LeftButton, Qt::NoModifier, QPoint(40, 10));
        QCOMPARE(panel()->Count(), 0);
        m_dock->findChild<NVSpinBox*>()->setValue(99);
        m_dock->UpdateTheme();
    }

    void aFullHistoryIsNoBurden()
    {
        open();
        QElapsedTimer timer;
        timer.start();

        for (int i = 0; i < Document::UndoSteps + 100; ++i)
            m_document->GetUndoStack()->push(new LayerCommand(i % 2 ? LayerCommand::Show : LayerCommand::Hide,
                                                              m_document->GetPixels(), 0));

        QCOMPARE(panel()->Count(), Document::UndoSteps + 1);
        QCOMPARE(texts().constFirst(), QString("100 earlier steps dropped"));
        QVERIFY2(timer.elapsed() < 20000, qPrintable(QString::number(timer.elapsed())));
    }

private:
    static std::unique_ptr<Document> make(const QString& name, const QSize& size = QSize(300, 300))
    {
        return std::make_unique<Document>(PlainPicture(Qt::white, size), QString(), name);
    }

    void open()
    {
        m_dock->SetDocument(m_document.get());
        m_dock->show();
        QCoreApplication::processEvents();
    }

    NVHistoryPanel* panel() const { return m_dock->findChild<NVHistoryPanel*>(); }

    NVHistoryItem* item(int row) const
    {
        const QWidget* column = m_dock->findChild<QScrollArea*>()->widget();
        return qobject_cast<NVHistoryItem*>(column->layout()->itemAt(row)->widget());
    }

    QStringList texts() const
    {
        QStringList texts;
        for (int row = 0; row < panel()->Count(); ++row)
            texts += item(row)->findChild<QLabel*>("m_pText")->text();
        return texts;
    }

    // One letter a row: S selected, E enabled, D neither.
    QString states() const
    {
        QString states;
        for (int row = 0; row < panel()->Count(); ++row)
            states += item(row)->IsSelected() ? 'S' : item(row)->IsEnabled() ? 'E' : 'D';
        return states;
    }

    QColor icon(int row) const
    {
        const QImage picture = item(row)->findChild<QLabel*>("m_pIcon")->pixmap(Qt::ReturnByValue).toImage();
        return picture.pixelColor(picture.rect().center());
    }

    QString usage() const
    {
        for (const QLabel* label : m_dock->findChildren<QLabel*>())
        {
            if (label->accessibleName() == "Steps and what they hold")
                return label->text();
        }
        return "no label";
    }

    void click(int row)
    {
        QCoreApplication::processEvents();
        QTest::mouseClick(m_window->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                          item(row)->mapTo(m_window.get(), QPoint(60, 12)));
    }

    std::unique_ptr<ScratchSettings> m_scratch;
    std::unique_ptr<Document> m_document;
    std::unique_ptr<QMainWindow> m_window;
    HistoryDock* m_dock = nullptr;
};

NV_TEST_MAIN(tst_HistoryDock)
#include "tst_HistoryDock.moc"
