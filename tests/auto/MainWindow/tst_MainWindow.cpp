// The whole window: opening, saving, closing with unsaved changes, recent files, themes, drops, and every
// failure.

#include "MainWindow.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDialogButtonBox>
#include <QDir>
#include <QDockWidget>
#include <QDoubleSpinBox>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMdiArea>
#include <QMenuBar>
#include <QMimeData>
#include <QMouseEvent>
#include <QPushButton>
#include <QSettings>
#include <QSpinBox>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QToolBar>
#include <QToolButton>
#include <QUndoStack>
#include <QUrl>

#include "BatchWindow.h"
#include "BrushDock.h"
#include "BrushTool.h"
#include "BusyThreads.h"
#include "CameraView.h"
#include "ColorRangeDock.h"
#include "ColorSamplerTool.h"
#include "ColorSamples.h"
#include "CropTool.h"
#include "Document.h"
#include "DocumentFile.h"
#include "DocumentWindow.h"
#include "EraserTool.h"
#include "FillTool.h"
#include "HandTool.h"
#include "HistoryDock.h"
#include "KXBrushSettings.h"
#include "KXDocumentInterface.h"
#include "KXMessageBox.h"
#include "LayerMenu.h"
#include "ModalDriver.h"
#include "NVApplication.h"
#include "NVBrushToolbar.h"
#include "NVColorSamplePanel.h"
#include "NVColorSamplerToolbar.h"
#include "NVDocumentView.h"
#include "NVEraserToolbar.h"
#include "NVHistoryItem.h"
#include "NVHistoryPanel.h"
#include "NVSelectColorRange.h"
#include "NVTextToolbar.h"
#include "NVZoomPanel.h"
#include "NavigatorDock.h"
#include "NavigatorWidget.h"
#include "OptionArea.h"
#include "RecentFiles.h"
#include "SamplePicture.h"
#include "SelectionMask.h"
#include "SelectionOutline.h"
#include "SignalLog.h"
#include "SpotHealingTool.h"
#include "TestMain.h"
#include "TextTool.h"
#include "ToolBox.h"
#include "TransformTool.h"

namespace
{

QImage Picture(const QColor& color = Qt::white)
{
    QImage image(200, 100, QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    return image;
}

QString TextOf(const QWidget* box)
{
    QString text;
    for (const QLabel* label : box->findChildren<QLabel*>())
        text += label->text();
    return text;
}

QByteArray BytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

// A tool that the window has not.
class MainWindowStranger : public Tool
{
    Q_OBJECT
};

class tst_MainWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_settings = std::make_unique<QSettings>(path("s.ini"), QSettings::IniFormat);
        m_settings->setValue("files/folder", m_folder->path());
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        make();
    }

    void cleanup()
    {
        m_window.reset();
        NVApplication::GetInstance()->SetTheme(0);
        NVApplication::GetInstance()->SetForeground(Qt::black);
        NVApplication::GetInstance()->SetBackground(Qt::white);
        qApp->setStyleSheet(QString());
    }

    void withoutAPictureDocumentCommandsAreOff()
    {
        QCOMPARE(m_window->windowTitle(), QString("Norvane"));
        for (const char* text : {"Save", "Save As...", "Close", "Undo", "Redo", "Zoom In", "Fit in Window"})
            QVERIFY2(!action(text)->isEnabled(), text);
        for (const char* text : {"New...", "Open...", "Quit"})
            QVERIFY2(action(text)->isEnabled(), text);
    }

    void aClickWithoutAPictureSaysWhatIsMissing()
    {
        QTest::mouseClick(m_window->findChild<QMdiArea*>()->viewport(), Qt::LeftButton);

        QVERIFY(m_window->statusBar()->currentMessage().contains("no picture"));
    }

    void aFileIsOpenedAndShown()
    {
        const QString file = write("a & b [*] <i>.png");

        QVERIFY(m_window->OpenFile(file));

        QCOMPARE(m_window->GetDocument()->GetPixels()->GetComposition(), Picture());
        QCOMPARE(m_window->GetDocument()->GetPath(), file);
        QVERIFY(m_window->windowTitle().startsWith("a & b [*]"));
        QVERIFY(!m_window->isWindowModified());
        QCOMPARE(m_window->GetRecentFiles()->Paths(), QStringList(file));
        QVERIFY(m_window->GetView()->hasFocus());
        QVERIFY(labelTexts().contains("200 x 100 px"));
        QVERIFY(action("Save")->isEnabled());
    }

    void openingTheSameFileAgainShowsIt()
    {
        const QString one = write("one.png");
        const QString two = write("two.png");
        m_window->OpenFile(one);
        m_window->OpenFile(two);

        QVERIFY(m_window->OpenFile(one));

        QCOMPARE(m_window->GetDocumentWindows().size(), 2);
        QCOMPARE(m_window->GetDocument()->GetPath(), one);
    }

    void whatIsNoPictureGetsAMessageAndChangesNothing_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("not there") << "nowhere.png";
        QTest::newRow("text") << "text.png";
        QTest::newRow("folder") << "folder.png";
        QTest::newRow("a name like a mark") << "%1 <b>%2<b>.png";
    }
    void whatIsNoPictureGetsAMessageAndChangesNothing()
    {
        QFETCH(QString, name);
        QDir().mkdir(path("folder.png"));
        writeText("text.png");
        writeText("%1 <b>%2<b>.png");
        m_window->OpenImage(Picture(), "Picture");
        const Document* before = m_window->GetDocument();
        QString text;
        ModalDriver driver(
            [&text](QWidget* box)
            {
                text = TextOf(box);
                ModalDriver::Press(box, "OK");
            });

        const bool opened = m_window->OpenFile(path(name));

        QVERIFY(!opened);
        QVERIFY(driver.Finished());
        QVERIFY2(text.contains(name) && text.contains("could not be opened"), qPrintable(text));
        QCOMPARE(m_window->GetDocument(), before);
        QCOMPARE(m_window->GetDocumentWindows().size(), 1);
        QVERIFY(!m_window->GetRecentFiles()->Paths().contains(path(name)));
    }

    void aDroppedFileIsOpened()
    {
        const QString file = write("a.png");

        drop(file);

        QCOMPARE(m_window->GetDocument()->GetPath(), file);
    }

    void somethingElseDroppedIsNotTaken()
    {
        QMimeData data;
        data.setText("a text");
        data.setUrls({QUrl("https://example.org/a.png")});
        QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        enter.ignore();

        QCoreApplication::sendEvent(m_window.get(), &enter);

        QVERIFY(!enter.isAccepted());
    }

    void theCanvasLeavesDropsToTheWindow()
    {
        m_window->OpenImage(Picture(), "Picture");

        QVERIFY(!m_window->GetView()->acceptDrops());
        QVERIFY(!m_window->GetView()->viewport()->acceptDrops());
    }

    void savingWritesTheFileAndClearsTheMark()
    {
        const QString file = write("a.png");
        m_window->OpenFile(file);
        change();
        QVERIFY(m_window->isWindowModified());

        action("Save")->trigger();

        QVERIFY(!m_window->isWindowModified());
        QCOMPARE(LoadDocumentFile(file).image, m_window->GetDocument()->GetPixels()->GetComposition());
        QVERIFY(LoadDocumentFile(file).image != Picture());
    }

    void aNewPictureAsksForItsName()
    {
        m_window->OpenImage(Picture(Qt::red), "Picture");
        change();
        const QString file = path("new");
        ModalDriver driver(
            [&file](QWidget* dialog)
            {
                auto* edit = dialog->findChild<QLineEdit*>("fileNameEdit");
                QCOMPARE(edit->text(), QString("Picture.png"));
                edit->setText(file);
                QTest::keyClick(edit, Qt::Key_Return);
            });

        action("Save")->trigger();

        QVERIFY(driver.Finished());
        QCOMPARE(m_window->GetDocument()->GetPath(), file + ".png");
        QVERIFY(QFile::exists(file + ".png"));
        QVERIFY(m_window->GetRecentFiles()->Paths().contains(file + ".png"));
    }

    void aFormatWithoutWriterAsksForAnotherName()
    {
        QVERIFY(!HasWritableSuffix("a.gif"));
        QVERIFY(QFile::copy(write("a.png"), path("a.gif")));
        QVERIFY(m_window->OpenFile(path("a.gif")));
        change();
        ModalDriver driver([](QWidget* dialog) { ModalDriver::Press(dialog, "Cancel"); });

        action("Save")->trigger();

        QVERIFY(driver.Finished());
        QVERIFY(m_window->GetDocument()->IsModified());
        QCOMPARE(m_window->GetDocument()->GetPath(), path("a.gif"));
    }

    void whatCannotBeSavedGetsAMessageAndStaysChanged()
    {
        m_window->OpenImage(Picture(), "Picture");
        change();
        QString text;
        ModalDriver driver(
            [&text](QWidget* box)
            {
                text = TextOf(box);
                ModalDriver::Press(box, "OK");
            });

        const bool saved =
            m_window->WriteDocument(m_window->GetDocumentWindows().first(), path("nowhere/a.png"));

        QVERIFY(!saved);
        QVERIFY(driver.Finished());
        QVERIFY2(text.contains("a.png") && text.contains("does not exist"), qPrintable(text));
        QVERIFY(m_window->GetDocument()->IsModified());
        QCOMPARE(m_window->GetDocument()->GetPath(), QString());
    }

    void aFailedSaveLeavesFileAndDocument()
    {
        const QString file = write("a.png");
        m_window->OpenFile(file);
        change();
        const QByteArray before = BytesOf(file);
        QVERIFY(QFile::remove(file));
        QVERIFY(QDir().mkdir(file));
        ModalDriver driver([](QWidget* box) { ModalDriver::Press(box, "OK"); });

        action("Save")->trigger();

        QVERIFY(driver.Finished());
        QVERIFY(m_window->GetDocument()->IsModified());
        QVERIFY(!before.isEmpty());
    }

    void anUnchangedPictureClosesWithoutAQuestion()
    {
        m_window->OpenFile(write("a.png"));

        action("Close")->trigger();

        QCOMPARE(m_window->GetDocumentWindows().size(), 0);
        QCOMPARE(m_window->GetDocument(), nullptr);
        QCOMPARE(m_window->windowTitle(), QString("Norvane"));
    }

    void theLastPictureLeavesNothingInPanelsAndStatusBar()
    {
        m_window->OpenImage(Picture(), "One");
        ColorSamples::Of(m_window->GetDocument())->Add(QPoint(10, 10));
        QAbstractItemModel* samples = m_window->findChild<QListView*>("m_pSamples")->model();
        QCOMPARE(samples->rowCount(), 1);
        QWidget* canvas = m_window->GetView()->viewport();
        QTest::mouseMove(canvas, canvas->rect().center());
        QTest::mouseMove(canvas, canvas->rect().center() + QPoint(1, 0));
        QTRY_VERIFY(!shownAs("Pointer position").isEmpty());

        action("Close")->trigger();

        for (const char* name : {"Pointer position", "Current layer", "Picture size", "Zoom"})
            QVERIFY2(shownAs(name).isEmpty(), name);
        QCOMPARE(samples->rowCount(), 0);
    }

    void aTextGoesOnAfterAClickIntoTheOverview()
    {
        m_window->OpenImage(Picture(), "One");
        auto* dock = m_window->findChild<NavigatorDock*>();
        dock->show();
        dock->findChild<QTabWidget*>()->setCurrentIndex(0);
        QCoreApplication::processEvents();
        auto* text = m_window->findChild<TextTool*>();
        m_window->ChooseTool(text);
        QWidget* canvas = m_window->GetView()->viewport();
        QTest::mouseClick(canvas, Qt::LeftButton, Qt::NoModifier, canvas->rect().center());
        QVERIFY(text->IsEditing());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_A);

        QTest::mouseClick(dock->findChild<NavigatorWidget*>(), Qt::LeftButton);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_B);

        QCOMPARE(text->GetText().text, QString("ab"));
    }

    void anUnsavedPictureAsksBeforeItCloses_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<bool>("stays");
        QTest::addColumn<bool>("written");
        QTest::newRow("save") << "save" << false << true;
        QTest::newRow("don't save") << "discard" << false << false;
        QTest::newRow("cancel") << "cancel" << true << false;
        QTest::newRow("escape") << "escape" << true << false;
        QTest::newRow("window close") << "close" << true << false;
    }
    void anUnsavedPictureAsksBeforeItCloses()
    {
        QFETCH(QString, answer);
        QFETCH(bool, stays);
        QFETCH(bool, written);
        const QString file = write("a.png");
        m_window->OpenFile(file);
        change();
        ModalDriver driver([this, &answer](QWidget* box) { give(box, answer); });

        action("Close")->trigger();

        QVERIFY(driver.Finished());
        QCOMPARE(m_window->GetDocument() != nullptr, stays);
        QCOMPARE(LoadDocumentFile(file).image != Picture(), written);
        if (stays)
            QVERIFY(m_window->GetDocument()->IsModified());
    }

    void theNextTabFillsTheAreaWhenOneIsClosed()
    {
        for (const char* name : {"One", "Two", "Three"})
            m_window->OpenImage(Picture(), name);

        action("Close")->trigger();
        QCoreApplication::processEvents();

        QCOMPARE(m_window->GetDocumentWindows().size(), 2);
        QVERIFY(m_window->GetDocument());
        QVERIFY(m_window->GetView()->width() >= m_window->findChild<QMdiArea*>()->viewport()->width() - 2);
        QCOMPARE(m_window->GetTool()->GetView(), m_window->GetView());
    }

    void theCrossOfTheTabAsksToo()
    {
        m_window->OpenImage(Picture(), "Picture");
        change();
        ModalDriver driver([this](QWidget* box) { give(box, "cancel"); });
        auto* tabs = m_window->findChild<QMdiArea*>()->findChild<QTabBar*>();

        Q_EMIT tabs->tabCloseRequested(0);

        QVERIFY(driver.Finished());
        QVERIFY(m_window->GetDocument());
    }

    void quittingAsksForEachUnsavedPicture()
    {
        m_window->OpenImage(Picture(), "One");
        change();
        m_window->OpenImage(Picture(), "Clean");
        m_window->OpenImage(Picture(), "Two");
        change();
        QStringList asked;
        const ModalDriver::Function discard = [this, &asked](QWidget* box)
        {
            asked += TextOf(box);
            give(box, "discard");
        };
        ModalDriver driver(QList<ModalDriver::Function>{discard, discard});

        QVERIFY(m_window->close());

        QVERIFY(driver.Finished());
        QCOMPARE(asked.size(), 2);
        QVERIFY(asked.join(' ').contains("One") && asked.join(' ').contains("Two"));
    }

    void cancelStopsQuitting()
    {
        m_window->OpenImage(Picture(), "One");
        change();
        ModalDriver driver([this](QWidget* box) { give(box, "cancel"); });

        QVERIFY(!m_window->close());

        QVERIFY(driver.Finished());
        QVERIFY(m_window->isVisible());
        QVERIFY(m_window->GetDocument()->IsModified());
    }

    void closingWhileAStrokeRunsEndsItAndAsks()
    {
        m_window->OpenImage(Picture(), "One");
        QTest::mousePress(m_window->GetView()->viewport(), Qt::LeftButton);
        QVERIFY(m_window->GetBrushTool()->IsStrokeRunning());
        ModalDriver driver([this](QWidget* box) { give(box, "discard"); });

        action("Close")->trigger();

        QVERIFY(driver.Finished());
        QVERIFY(!m_window->GetBrushTool()->IsStrokeRunning());
        QCOMPARE(m_window->GetDocument(), nullptr);
        QCoreApplication::processEvents();
    }

    void theWindowMayGoWhileAStrokeRuns()
    {
        m_window->OpenImage(Picture(), "One");
        QTest::mousePress(m_window->GetView()->viewport(), Qt::LeftButton);
        QVERIFY(m_window->GetBrushTool()->IsStrokeRunning());

        m_window.reset();

        QCoreApplication::processEvents();
    }

    void theStrokeGoesToTheDocumentOfItsTab()
    {
        m_window->OpenImage(Picture(), "One");
        m_window->OpenImage(Picture(), "Two");
        stroke();
        auto* tabs = m_window->findChild<QMdiArea*>()->findChild<QTabBar*>();

        tabs->setCurrentIndex(0);

        QCOMPARE(m_window->GetDocument()->GetTitle(), QString("One"));
        QVERIFY(!m_window->isWindowModified());
        QVERIFY(!action("Undo")->isEnabled());
        tabs->setCurrentIndex(1);
        QVERIFY(action("Undo Brush Stroke")->isEnabled());
    }

    void undoAndRedoCarryTheNameOfTheStep()
    {
        m_window->OpenImage(Picture(), "One");
        stroke();

        action("Undo Brush Stroke")->trigger();
        QCOMPARE(m_window->GetDocument()->GetPixels()->GetComposition(), Picture());
        QVERIFY(!action("Undo")->isEnabled());

        action("Redo Brush Stroke")->trigger();
        QVERIFY(m_window->GetDocument()->GetPixels()->GetComposition() != Picture());
    }

    void undoDuringAStrokeTakesThatStrokeBack()
    {
        m_window->OpenImage(Picture(), "One");
        stroke();
        const QImage painted = m_window->GetDocument()->GetPixels()->GetComposition().copy();
        QTest::mousePress(m_window->GetView()->viewport(), Qt::LeftButton, Qt::NoModifier,
                          m_window->GetView()->MapFromDocument(QPointF(20, 80)).toPoint());

        action("Undo Brush Stroke")->trigger();

        QVERIFY(!m_window->GetBrushTool()->IsStrokeRunning());
        QCOMPARE(m_window->GetDocument()->GetPixels()->GetComposition(), painted);
        QCOMPARE(m_window->GetDocument()->GetUndoStack()->index(), 1);
        QTest::mouseRelease(m_window->GetView()->viewport(), Qt::LeftButton);
    }

    void undoTakesBackWhatIsUnderWayBeforeTheFirstStep()
    {
        m_window->OpenImage(Picture(), "One");
        m_window->ChooseTool(m_window->findChild<CropTool*>());
        QVERIFY(!action("Undo")->isEnabled());
        drag();
        QVERIFY(m_window->findChild<CropTool*>()->HasFrame());

        QTest::keyClick(m_window->GetView(), Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(!m_window->findChild<CropTool*>()->HasFrame());
        QVERIFY(!action("Undo")->isEnabled());

        m_window->ChooseTool(m_window->findChild<TransformTool*>());
        drag();
        QVERIFY(m_window->findChild<TransformTool*>()->IsPending());
        QTest::keyClick(m_window->GetView(), Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(!m_window->findChild<TransformTool*>()->IsPending());
        QVERIFY(!action("Undo")->isEnabled());
        QCOMPARE(m_window->GetDocument()->GetUndoStack()->count(), 0);
        QCOMPARE(m_window->GetDocument()->GetPixels()->GetComposition(), Picture());
    }

    void undoInTheMenuTakesBackWhatWasTypedLast()
    {
        m_window->OpenImage(Picture(), "One");
        auto* tool = m_window->findChild<TextTool*>();
        m_window->ChooseTool(tool);
        QTest::mouseClick(m_window->GetView()->viewport(), Qt::LeftButton, Qt::NoModifier,
                          m_window->GetView()->MapFromDocument(QPointF(50, 50)).toPoint());
        QTest::keyClicks(m_window->GetView(), "ab");
        QCOMPARE(tool->GetText().text, QString("ab"));

        action("Undo")->trigger();
        QVERIFY(tool->IsEditing());
        QCOMPARE(tool->GetText().text, QString());
        action("Undo")->trigger();
        QVERIFY(!tool->IsEditing());
        QVERIFY(!action("Undo")->isEnabled());
    }

    void redoInTheMenuBringsBackWhatWasTyped()
    {
        m_window->OpenImage(Picture(), "One");
        TextTool* tool = beginText();
        QTest::keyClicks(m_window->GetView(), "ab");
        QVERIFY(!action("Redo")->isEnabled());
        action("Undo")->trigger();
        QCOMPARE(tool->GetText().text, QString());

        QVERIFY(action("Redo")->isEnabled());
        action("Redo")->trigger();
        QVERIFY(tool->IsEditing());
        QCOMPARE(tool->GetText().text, QString("ab"));
        QVERIFY(!action("Redo")->isEnabled());
        action("Undo")->trigger();
        action("Undo")->trigger();
        QVERIFY(!tool->IsEditing());
        QVERIFY(!action("Redo")->isEnabled());
    }

    void keysOfToolsAndMenusAreTypedIntoAnOpenText()
    {
        m_window->OpenImage(Picture(Qt::red), "One");
        TextTool* tool = beginText();
        const QString keys("xdvmwcibetuhz0123456789[],.");
        QTest::keyClicks(m_window->GetView(), keys);
        QTest::keyClicks(m_window->GetView(), "XDVMWCI", Qt::ShiftModifier);
        QCOMPARE(tool->GetText().text, keys + "XDVMWCI");

        QTest::keyClick(m_window->GetView(), Qt::Key_Home);
        QTest::keyClick(m_window->GetView(), Qt::Key_Delete);
        QTest::keyClick(m_window->GetView(), Qt::Key_Backspace);
        QCOMPARE(tool->GetText().text, keys.mid(1) + "XDVMWCI");
        QCOMPARE(m_window->GetTool(), tool);
        QCOMPARE(NVApplication::GetInstance()->GetForeground(), QColor(Qt::black));
        QCOMPARE(NVApplication::GetInstance()->GetBackground(), QColor(Qt::white));
        QCOMPARE(m_window->GetDocument()->GetUndoStack()->count(), 0);

        QTest::keyClick(m_window->GetView(), Qt::Key_Return, Qt::ControlModifier);
        QTRY_VERIFY(!tool->IsEditing());
        QTest::keyClick(m_window->GetView(), Qt::Key_V);
        QVERIFY(m_window->GetTool() != tool);
    }

    void flattenMakesATextAPicture()
    {
        m_window->OpenImage(Picture(), "One");
        TextTool* tool = beginText();
        QTest::keyClicks(m_window->GetView(), "HH");
        const QImage typed = m_window->GetDocument()->GetPixels()->GetComposition().copy();

        action("Flatten Image")->trigger();
        QVERIFY(!tool->IsEditing());
        QCOMPARE(m_window->GetDocument()->GetPixels()->GetLayerCount(), 1);
        QCOMPARE(m_window->GetDocument()->GetPixels()->GetComposition(), typed);
        QCOMPARE(m_window->GetDocument()->GetUndoStack()->count(), 2);
        clickAt(QPointF(58, 45));
        QCOMPARE(tool->GetText().text, QString());
        QTest::keyClick(m_window->GetView(), Qt::Key_Escape);

        action("Undo Flatten Image")->trigger();
        clickAt(QPointF(58, 45));
        QCOMPARE(tool->GetText().text, QString("HH"));
    }

    void anotherToolLeavesNothingToUndo()
    {
        m_window->OpenImage(Picture(), "One");
        m_window->ChooseTool(m_window->findChild<CropTool*>());
        drag();
        QVERIFY(action("Undo")->isEnabled());
        m_window->ChooseTool(m_window->GetBrushTool());
        QVERIFY(!action("Undo")->isEnabled());
    }

    void clearLayerIsAStep()
    {
        m_window->OpenImage(Picture(Qt::red), "One");

        action("Clear Layer")->trigger();
        QCOMPARE(m_window->GetDocument()->GetPixels()->GetComposition().pixelColor(5, 5).alpha(), 0);

        action("Undo Clear Layer")->trigger();
        QCOMPARE(m_window->GetDocument()->GetPixels()->GetComposition(), Picture(Qt::red));
    }

    void clearingKeepsToTheSelection_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::newRow("Delete") << int(Qt::Key_Delete) << int(Qt::NoModifier);
        QTest::newRow("Ctrl+Delete") << int(Qt::Key_Delete) << int(Qt::ControlModifier);
    }
    void clearingKeepsToTheSelection()
    {
        QFETCH(int, key);
        QFETCH(int, modifiers);
        m_window->OpenImage(Picture(Qt::red), "One");
        KXDocumentInterface* pixels = m_window->GetDocument()->GetPixels();
        QVERIFY(pixels->SetSelectionMask(RectangleMask(pixels->GetSize(), QRectF(10, 10, 20, 20))));

        QTest::keyClick(m_window->GetView(), Qt::Key(key), Qt::KeyboardModifiers(modifiers));

        QCOMPARE(pixels->GetComposition().pixelColor(15, 15).alpha(), 0);
        QCOMPARE(pixels->GetComposition().pixelColor(5, 5), QColor(Qt::red));
        QCOMPARE(m_window->GetDocument()->GetUndoStack()->undoText(), QString("Clear Selection"));
        action("Undo Clear Selection")->trigger();
        QCOMPARE(pixels->GetComposition(), Picture(Qt::red));
    }

    void withoutASelectionDeleteClearsNothing()
    {
        m_window->OpenImage(Picture(Qt::red), "One");
        QTest::keyClick(m_window->GetView(), Qt::Key_Delete);
        QCOMPARE(m_window->GetDocument()->GetUndoStack()->count(), 0);
    }

    void theKeysOfTheSelectionActOnTheDocumentInFront()
    {
        m_window->OpenImage(Picture(), "One");
        const Document* first = m_window->GetDocument();
        m_window->OpenImage(Picture(), "Two");
        const KXDocumentInterface* pixels = m_window->GetDocument()->GetPixels();

        QTest::keyClick(m_window->GetView(), Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(pixels->GetSelectionMask(), FullMask(pixels->GetSize()));
        QVERIFY(SelectionOutline::Of(m_window->GetView())->IsShown());
        QVERIFY(first->GetPixels()->GetSelectionMask().isNull());
        QTest::keyClick(m_window->GetView(), Qt::Key_D, Qt::ControlModifier);
        QVERIFY(pixels->GetSelectionMask().isNull());
        QTest::keyClick(m_window->GetView(), Qt::Key_I, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(pixels->GetSelectionMask(), FullMask(pixels->GetSize()));
        QCOMPARE(m_window->GetDocument()->GetUndoStack()->count(), 3);
    }

    void newAsksForTheSize()
    {
        ModalDriver driver(
            [](QWidget* dialog)
            {
                QTest::keyClick(dialog->focusWidget(), Qt::Key_A, Qt::ControlModifier);
                QTest::keyClicks(dialog->focusWidget(), "320");
                ModalDriver::Press(dialog, "OK");
            });

        action("New...")->trigger();

        QVERIFY(driver.Finished());
        QCOMPARE(m_window->GetDocument()->GetPixels()->GetSize(), QSize(320, 1200));
        QVERIFY(!m_window->GetDocument()->IsModified());
    }

    void aLayerThatIsRefusedIsTold()
    {
        ModalDriver driver(
            [](QWidget* window)
            {
                const auto* box = qobject_cast<KXMessageBox*>(window);
                QVERIFY(box);
                QCOMPARE(box->GetText(), QString("One more layer needs 1 GiB."));
                ModalDriver::PressKey(window, Qt::Key_Return);
            });

        Q_EMIT m_window->findChild<LayerMenu*>()->Refused("One more layer needs 1 GiB.");

        QVERIFY(driver.Finished());
    }

    void newCancelledOpensNothing()
    {
        ModalDriver driver([](QWidget* dialog) { ModalDriver::PressKey(dialog, Qt::Key_Escape); });

        action("New...")->trigger();

        QVERIFY(driver.Finished());
        QCOMPARE(m_window->GetDocument(), nullptr);
    }

    void theSampleIsAPictureToStartWith()
    {
        m_window->OpenSample();

        QCOMPARE(m_window->GetDocument()->GetPixels()->GetSize(), QSize(4000, 3000));
        QVERIFY(!m_window->GetDocument()->IsModified());
    }

    void aRecentFileIsOpenedFromTheMenu()
    {
        const QString file = write("a & b.png");
        m_window->OpenFile(file);
        action("Close")->trigger();
        QCoreApplication::processEvents();

        action(QString(file).replace('&', "&&"))->trigger();

        QCOMPARE(m_window->GetDocument()->GetPath(), file);
    }

    void aMissingRecentFileIsDroppedWithAMessage()
    {
        const QString file = write("a.png");
        m_window->OpenFile(file);
        action("Close")->trigger();
        QVERIFY(QFile::remove(file));
        QCoreApplication::processEvents();
        QString text;
        ModalDriver driver(
            [&text](QWidget* box)
            {
                text = TextOf(box);
                ModalDriver::PressKey(box, Qt::Key_Return);
            });

        action(file)->trigger();

        QVERIFY(driver.Finished());
        QVERIFY2(text.contains(file) && text.contains("does not exist"), qPrintable(text));
        QCOMPARE(m_window->GetRecentFiles()->Paths(), QStringList());
        QCOMPARE(m_window->GetDocument(), nullptr);
    }

    void theRecentListCanBeCleared()
    {
        m_window->OpenFile(write("a.png"));
        QCoreApplication::processEvents();

        action("Clear List")->trigger();

        QCOMPARE(m_window->GetRecentFiles()->Paths(), QStringList());
    }

    void theThemeIsSwitchedLiveAndKept()
    {
        const QImage before = action("Open...")->icon().pixmap(16, 16).toImage();

        action("Dark")->trigger();

        QCOMPARE(NVApplication::GetInstance()->GetTheme(), 1);
        QVERIFY(action("Open...")->icon().pixmap(16, 16).toImage() != before);
        QVERIFY(action("Dark")->isChecked());
        QCOMPARE(m_settings->value("window/theme").toInt(), 1);
        NVApplication::GetInstance()->SetTheme(2);
        QVERIFY(action("High Contrast")->isChecked());
        NVApplication::GetInstance()->SetTheme(0);
        m_settings->setValue("window/theme", 1);
        make();
        QCOMPARE(NVApplication::GetInstance()->GetTheme(), 1);
    }

    void theOptionAreaIsEquallyHighForEachTool()
    {
        auto* area = m_window->findChild<OptionArea*>();
        const int height = area->height();
        QSet<QWidget*> bars;
        for (QAction* tool : m_window->findChild<ToolBox*>()->GetToolActions())
        {
            tool->trigger();
            QCoreApplication::processEvents();
            QCOMPARE(area->height(), height);
            QVERIFY(m_window->GetTool()->GetBar()->isVisible());
            QVERIFY(m_window->GetTool()->GetBar()->height() <= height);
            bars += m_window->GetTool()->GetBar();
        }
        QCOMPARE(bars.size(), m_window->GetTools().size());
        QVERIFY(bars.size() >= 10);
    }

    void toolsAreFoundByTheirClass()
    {
        QCOMPARE(m_window->FindTool<BrushTool>(), m_window->GetBrushTool());
        QCOMPARE(m_window->FindTool<HandTool>()->GetName(), QString("Hand"));
        QCOMPARE(m_window->FindTool<MainWindowStranger>(), nullptr);
        QCOMPARE(m_window->GetTool(), m_window->GetBrushTool());
    }

    void everyToolHasAKeyThatChoosesIt()
    {
        m_window->OpenImage(Picture(), "One");
        for (Tool* tool : m_window->GetTools())
        {
            const int key = tool->GetKey()[0];
            QTest::keyClick(m_window->GetView(), Qt::Key(key & ~int(Qt::KeyboardModifierMask)),
                            Qt::KeyboardModifiers(key & int(Qt::KeyboardModifierMask)));
            QCOMPARE(m_window->GetTool(), tool);
            QVERIFY(tool->IsActive());
            QCOMPARE(tool->GetDocument(), m_window->GetDocument());
        }
    }

    void barsAreMadeWhenTheirToolIsFirstChosen()
    {
        const auto count = [this] { return m_window->findChildren<NVBrushToolbarWidget*>().size(); };
        QCOMPARE(count(), 1);
        QVERIFY(!m_window->findChild<NVTextToolbar*>());

        action("Dark")->trigger();
        QCOMPARE(count(), 1);

        m_window->ChooseTool(m_window->FindTool<EraserTool>());
        QCOMPARE(count(), 2);
        QVERIFY(!m_window->findChild<NVTextToolbar*>());

        m_window->ChooseTool(m_window->FindTool<TextTool>());
        QVERIFY(m_window->findChild<NVTextToolbar*>());
    }

    void valuesOfTheCurrentToolAreStoredAtTheEnd()
    {
        m_window->ChooseTool(m_window->FindTool<EraserTool>());
        m_window->FindTool<EraserTool>()->GetEraserBar()->GetBrushes()->SetCurrentPreset(8);
        QVERIFY(m_window->close());

        QCOMPARE(m_settings->value("eraser/preset").toInt(), 8);
    }

    void layersAreNamedInTheStatusBar()
    {
        QVERIFY(!labelTexts().contains("Background"));
        m_window->OpenImage(Picture(), "One");
        QVERIFY(labelTexts().contains("Background"));

        QTest::keyClick(m_window->GetView(), Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier);

        QVERIFY(labelTexts().contains("Layer 1"));
        action("Hide Layer")->trigger();
        QVERIFY(labelTexts().contains("Layer 1 (hidden)"));
        m_window->OpenImage(Picture(), "Two");
        QVERIFY(labelTexts().contains("Background"));
        QVERIFY(!labelTexts().contains("Layer 1 (hidden)"));
    }

    void aLayerCommandEndsTheStrokeUnderWay()
    {
        m_window->OpenImage(Picture(), "One");
        QTest::mousePress(m_window->GetView()->viewport(), Qt::LeftButton);
        QVERIFY(m_window->GetBrushTool()->IsStrokeRunning());

        action("New Layer")->trigger();

        QVERIFY(!m_window->GetBrushTool()->IsStrokeRunning());
        QCOMPARE(m_window->GetDocument()->GetUndoStack()->count(), 2);
        QCOMPARE(m_window->GetDocument()->GetUndoStack()->undoText(), QString("New Layer"));
        QTest::mouseRelease(m_window->GetView()->viewport(), Qt::LeftButton);
        action("Undo")->trigger();
        QCOMPARE(m_window->GetDocument()->GetPixels()->GetLayerCount(), 1);
    }

    void undoTakesBackTheHealingUnderWay()
    {
        m_window->OpenImage(Picture(), "One");
        BusyThreads threads;
        startHealing();

        action("Undo")->trigger();

        QVERIFY(!m_window->FindTool<SpotHealingTool>()->IsStrokeRunning());
        QCOMPARE(m_window->GetDocument()->GetUndoStack()->count(), 0);
        QCOMPARE(m_window->GetDocument()->GetPixels()->GetComposition(), Picture());
    }

    void anotherToolWaitsForTheHealing()
    {
        m_window->OpenImage(Picture(), "One");
        startHealing();

        QTest::keyClick(m_window->GetView(), Qt::Key_B);

        QCOMPARE(m_window->GetTool(), m_window->GetBrushTool());
        QCOMPARE(m_window->GetDocument()->GetUndoStack()->undoText(), QString("Heal Spot"));
    }

    void theWindowMayGoWhileTheHealingRuns()
    {
        m_window->OpenImage(Picture(), "One");
        startHealing();

        m_window.reset();

        QCoreApplication::processEvents();
    }

    void theBatchWindowIsOpenedOnce()
    {
        action("Batch...")->trigger();
        BatchWindow* batch = m_window->GetBatchWindow();
        QVERIFY(batch && batch->isVisible());
        QVERIFY(QTest::qWaitForWindowActive(batch));
        batch->close();

        action("Batch...")->trigger();

        QCOMPARE(m_window->GetBatchWindow(), batch);
        QVERIFY(batch->isVisible());
    }

    void theBatchWindowClosesWithTheMainWindow()
    {
        action("Batch...")->trigger();

        QVERIFY(m_window->close());

        QVERIFY(!m_window->GetBatchWindow()->isVisible());
    }

    void theBrushPanelIsClosedAtFirstAndRemembered()
    {
        QVERIFY(!m_window->findChild<BrushDock*>()->isVisible());

        action("Brush Panel")->trigger();
        QVERIFY(m_window->findChild<BrushDock*>()->isVisible());
        QVERIFY(m_window->close());
        make();

        QVERIFY(m_window->findChild<BrushDock*>()->isVisible());
        QVERIFY(action("Brush Panel")->isChecked());
    }

    void thePanelsAreClosedAtFirstAndRemembered()
    {
        for (const char* text : {"Navigator Panel", "History Panel"})
        {
            QVERIFY2(!action(text)->isChecked(), text);
            action(text)->trigger();
        }
        QVERIFY(m_window->findChild<NavigatorDock*>()->isVisible());
        QVERIFY(m_window->findChild<HistoryDock*>()->isVisible());
        QVERIFY(m_window->close());
        make();

        QVERIFY(m_window->findChild<NavigatorDock*>()->isVisible());
        QVERIFY(m_window->findChild<HistoryDock*>()->isVisible());
    }

    void aPanelThatIsAskedForComesToTheFront()
    {
        action("Navigator Panel")->trigger();
        QCoreApplication::processEvents();
        action("Brush Panel")->trigger();
        QCoreApplication::processEvents();
        QVERIFY(m_window->findChild<NavigatorDock*>()->visibleRegion().isEmpty());

        action("Navigator Panel")->trigger();
        action("Navigator Panel")->trigger();
        QCoreApplication::processEvents();

        QTRY_VERIFY(!m_window->findChild<NavigatorDock*>()->visibleRegion().isEmpty());
    }

    void aPanelThatIsOpenedAgainComesToTheFront()
    {
        m_window->OpenImage(Picture(), "One");
        action("Brush Panel")->trigger();
        action("Navigator Panel")->trigger();
        QCoreApplication::processEvents();
        auto* dock = m_window->findChild<NavigatorDock*>();
        QTRY_VERIFY(!dock->visibleRegion().isEmpty());
        clickTab("Brush");
        QTRY_VERIFY(dock->visibleRegion().isEmpty());

        action("Navigator Panel")->trigger();
        action("Navigator Panel")->trigger();

        QTRY_VERIFY(!dock->visibleRegion().isEmpty());
    }

    void aColourRangeThatIsAskedForAgainComesToTheFront()
    {
        m_window->OpenImage(Picture(), "One");
        action("Brush Panel")->trigger();
        action("Colour Range...")->trigger();
        QCoreApplication::processEvents();
        auto* dock = m_window->findChild<ColorRangeDock*>();
        QTRY_VERIFY(!dock->visibleRegion().isEmpty());
        clickTab("Brush");
        QTRY_VERIFY(dock->visibleRegion().isEmpty());

        action("Colour Range...")->trigger();

        QTRY_VERIFY(!dock->visibleRegion().isEmpty());
        QVERIFY(dock->IsOpen());
    }

    void theThemeReachesTheHistory()
    {
        openPanels();
        m_window->OpenImage(Picture(), "One");
        stroke();
        action("Undo")->trigger();
        const auto* row = m_window->findChild<NVHistoryPanel*>()->findChildren<NVHistoryItem*>().constLast();
        const QString before = row->styleSheet();

        NVApplication::GetInstance()->SetTheme(1);

        QVERIFY(!before.isEmpty());
        QVERIFY(row->styleSheet() != before);
    }

    void thePanelsFollowTheWindowInFront()
    {
        openPanels();
        m_window->OpenImage(Picture(Qt::red), "One");
        stroke();
        m_window->OpenImage(Picture(Qt::blue), "Two");
        QCOMPARE(m_window->findChild<NVHistoryPanel*>()->Count(), 1);
        const auto* zoom = m_window->findChild<QDoubleSpinBox*>("m_pZoomSpn");
        m_window->GetView()->Scale(3 / m_window->GetView()->GetScale(), QPointF());
        QCOMPARE(zoom->value(), 300.0);

        m_window->findChild<QMdiArea*>()->activatePreviousSubWindow();

        QCOMPARE(m_window->GetDocument()->GetTitle(), QString("One"));
        QCOMPARE(m_window->findChild<NVHistoryPanel*>()->Count(), 2);
        QCOMPARE(zoom->value(), m_window->GetView()->GetScale() * 100);
    }

    void samplesAndLoupeAreClosedAtFirstAndRemembered()
    {
        for (const char* text : {"Colour Samples Panel", "Loupe Panel"})
        {
            QVERIFY2(!action(text)->isChecked(), text);
            action(text)->trigger();
        }
        m_window->findChild<NVZoomPanel*>()->SetZoomValue(21);
        QVERIFY(m_window->close());
        make();

        QVERIFY(action("Colour Samples Panel")->isChecked());
        QVERIFY(action("Loupe Panel")->isChecked());
        QCOMPARE(m_window->findChild<NVZoomPanel*>()->GetZoomValue(), 21);
    }

    void samplesArePlacedListedAndKeptByTheirDocument()
    {
        action("Colour Samples Panel")->trigger();
        m_window->OpenImage(Picture(Qt::red), "One");
        m_window->ChooseTool(m_window->FindTool<ColorSamplerTool>());
        const QPoint place = m_window->GetView()->MapFromDocument(QPointF(50, 50)).toPoint();
        QTest::mouseClick(m_window->GetView()->viewport(), Qt::LeftButton, Qt::NoModifier, place);
        const QAbstractItemModel* rows =
            m_window->findChild<NVColorSamplePanel*>()->findChild<QListView*>()->model();
        QCOMPARE(rows->rowCount(), 1);
        QCOMPARE(rows->index(0, 0).data(Qt::DecorationRole).value<QColor>(), QColor(Qt::red));

        m_window->ChooseTool(m_window->GetBrushTool());
        QCOMPARE(rows->rowCount(), 1);
        m_window->OpenImage(Picture(Qt::blue), "Two");
        QCOMPARE(rows->rowCount(), 0);
        m_window->findChild<QMdiArea*>()->activatePreviousSubWindow();
        QCOMPARE(rows->rowCount(), 1);
        action("Clear Layer")->trigger();

        QTRY_COMPARE(rows->index(0, 0).data(Qt::DecorationRole).value<QColor>().alpha(), 0);
        m_window->GetDocument()->GetUndoStack()->setClean();
        action("Close")->trigger();
        QCOMPARE(rows->rowCount(), 0);
    }

    void theSamplersSizeIsThatOfThePanel()
    {
        m_settings->setValue("sampler/size", 1);
        make();
        QImage dotted = Picture();
        dotted.setPixelColor(50, 50, Qt::black);
        m_window->OpenImage(dotted, "Dotted");
        const QAbstractItemModel* rows =
            m_window->findChild<NVColorSamplePanel*>()->findChild<QListView*>()->model();
        ColorSamples::Of(m_window->GetDocument())->Add(QPoint(50, 50));
        QCOMPARE(rows->index(0, 0).data(Qt::DecorationRole).value<QColor>(), QColor(227, 227, 227));

        m_window->FindTool<ColorSamplerTool>()->GetSamplerBar()->SetSize(0);

        QCOMPARE(rows->index(0, 0).data(Qt::DecorationRole).value<QColor>(), QColor(Qt::black));
    }

    void theLoupeFollowsThePointer()
    {
        action("Loupe Panel")->trigger();
        m_window->OpenImage(Picture(Qt::red), "One");
        const QPointF place = m_window->GetView()->MapFromDocument(QPointF(30.5, 40.5));

        QTest::mouseMove(m_window->GetView()->viewport(), place.toPoint());

        const auto* loupe = m_window->findChild<NVZoomPanel*>()->findChild<CameraView*>();
        QTRY_COMPARE(loupe->GetLookPoint(), QPoint(30, 40));
    }

    void aClickInTheHistoryGoesToTheStep()
    {
        openPanels();
        m_window->OpenImage(Picture(), "One");
        stroke();
        auto* panel = m_window->findChild<NVHistoryPanel*>();
        QCOMPARE(panel->GetSelectedIndex(), 1);
        QCoreApplication::processEvents();

        const QPoint row = panel->mapTo(m_window.get(), QPoint(60, 12));
        QTest::mouseClick(m_window->windowHandle(), Qt::LeftButton, Qt::NoModifier, row);

        QCOMPARE(panel->GetSelectedIndex(), 0);
        QCOMPARE(m_window->GetDocument()->GetPixels()->GetComposition(), Picture());
        QVERIFY(!action("Undo")->isEnabled());
        action("Redo")->trigger();
        QCOMPARE(panel->GetSelectedIndex(), 1);
    }

    void aClickInTheHistoryEndsWhatIsUnderWay()
    {
        openPanels();
        m_window->OpenImage(Picture(), "One");
        stroke();
        QCoreApplication::processEvents();
        NVDocumentView* view = m_window->GetView();
        QTest::mousePress(view->viewport(), Qt::LeftButton, Qt::NoModifier,
                          view->MapFromDocument(QPointF(20, 20)).toPoint());
        QVERIFY(m_window->GetBrushTool()->IsStrokeRunning());

        // The pointer is held by the canvas: the click comes from elsewhere, as from a second device.
        auto* panel = m_window->findChild<NVHistoryPanel*>();
        Q_EMIT panel->IndexActivated(1);

        QVERIFY(!m_window->GetBrushTool()->IsStrokeRunning());
        QCOMPARE(panel->Count(), 3);
        QCOMPARE(panel->GetSelectedIndex(), 1);
        QTest::mouseRelease(view->viewport(), Qt::LeftButton);
        QCOMPARE(m_window->GetDocument()->GetUndoStack()->index(), 1);
    }

    void droppedStepsAreTold()
    {
        m_settings->setValue("history/megabytes", 16);
        make();
        QImage large(2000, 1000, QImage::Format_ARGB32_Premultiplied);
        large.fill(Qt::white);
        m_window->OpenImage(large, "Large");

        for (int i = 0; i < 3; ++i)
            action("Clear Layer")->trigger();

        QVERIFY(m_window->statusBar()->currentMessage().contains("1 earlier step dropped"));
        QCOMPARE(m_window->GetDocument()->GetUndoStack()->count(), 2);
    }

    void aDocumentMayCloseWhilePanelsFollowIt_data()
    {
        QTest::addColumn<QString>("state");
        QTest::addColumn<bool>("isLast");
        for (const char* state : {"counting", "counted", "theme", "undone", "colour range", "hidden",
                                  "frame held", "row pressed", "colour dialog", "preview in work"})
        {
            QTest::addRow("%s, the last one", state) << state << true;
            QTest::addRow("%s, one of two", state) << state << false;
        }
    }
    void aDocumentMayCloseWhilePanelsFollowIt()
    {
        QFETCH(QString, state);
        QFETCH(bool, isLast);
        openPanels();
        if (!isLast)
            m_window->OpenImage(Picture(Qt::green), "Other");
        m_window->OpenImage(Picture().scaled(1200, 900), "One");
        stroke();
        QCoreApplication::processEvents();
        std::unique_ptr<BusyThreads> threads;
        if (state == "counting")
        {
            threads = std::make_unique<BusyThreads>();
            m_window->GetDocument()->GetPixels()->NotifyChanged(QRect(0, 0, 99, 99));
            QCoreApplication::processEvents();
        }
        else if (state == "theme")
            NVApplication::GetInstance()->SetTheme(2);
        else if (state == "undone")
            action("Undo")->trigger();
        else if (state == "colour range")
            action("Colour Range...")->trigger();
        else if (state == "hidden")
            action("Navigator Panel")->trigger();
        auto* overview = m_window->findChild<NavigatorWidget*>();
        QWidget* rows = m_window->findChild<NVHistoryItem*>();
        if (state == "frame held")
        {
            m_window->findChild<QTabWidget*>("m_pTabWidget")->setCurrentIndex(0);
            QTest::mousePress(overview, Qt::LeftButton);
        }
        else if (state == "row pressed")
            QTest::mousePress(rows, Qt::LeftButton);
        else if (state == "preview in work")
        {
            threads = std::make_unique<BusyThreads>();
            action("Colour Range...")->trigger();
            QVERIFY(m_window->findChild<ColorRangeDock*>()->IsComputing());
        }
        m_window->GetDocument()->GetUndoStack()->setClean();

        if (state == "colour dialog")
            closeUnderColorDialog();
        else
            action("Close")->trigger();
        if (state == "frame held")
        {
            QMouseEvent move(QEvent::MouseMove, QPointF(9, 9), overview->mapToGlobal(QPoint(9, 9)),
                             Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(overview, &move);
            QTest::mouseRelease(overview, Qt::LeftButton);
        }
        else if (state == "row pressed")
            QTest::mouseRelease(m_window->findChild<NVHistoryPanel*>(), Qt::LeftButton, Qt::NoModifier,
                                QPoint(60, 12));
        if (state == "theme")
            NVApplication::GetInstance()->SetTheme(1);
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        threads.reset();
        QCoreApplication::processEvents();

        QCOMPARE(m_window->GetDocumentWindows().size(), isLast ? 0 : 1);
        QCOMPARE(m_window->findChild<NVHistoryPanel*>()->Count(), isLast ? 0 : 1);
        QVERIFY(!m_window->findChild<ColorRangeDock*>()->IsOpen());
        QVERIFY(!m_window->findChild<ColorRangeDock*>()->isVisible());
        m_window->findChild<QDoubleSpinBox*>("m_pZoomSpn")->setValue(123);
        if (!isLast)
            stroke();
    }

    void theWindowMayGoWhilePanelsFollow()
    {
        openPanels();
        m_window->OpenImage(Picture(), "One");
        m_window->OpenImage(Picture(), "Two");
        action("Colour Range...")->trigger();
        BusyThreads threads;
        m_window->GetDocument()->GetPixels()->NotifyChanged(QRect(0, 0, 99, 99));
        QCoreApplication::processEvents();

        m_window.reset();

        threads.Open();
    }

    void theColourRangeTakesTheCanvasFromTheTool()
    {
        m_window->OpenImage(Picture(Qt::red), "One");
        auto* dock = m_window->findChild<ColorRangeDock*>();
        action("Colour Range...")->trigger();
        QVERIFY(dock->isVisible());
        click(QPointF(50, 50));
        QCOMPARE(dock->findChild<NVSelectColorRange*>()->GetSourceColors(), QList<QColor>({Qt::red}));
        QCOMPARE(m_window->GetDocument()->GetUndoStack()->count(), 0);

        QTest::keyClick(m_window->GetView(), Qt::Key_Escape);
        QVERIFY(!dock->isVisible());
        click(QPointF(50, 50));

        QTRY_COMPARE(m_window->GetDocument()->GetUndoStack()->count(), 1);
    }

    void anotherToolEndsTheColourRange()
    {
        m_window->OpenImage(Picture(Qt::red), "One");
        action("Colour Range...")->trigger();

        m_window->ChooseTool(m_window->FindTool<EraserTool>());

        QVERIFY(!m_window->findChild<ColorRangeDock*>()->IsOpen());
        click(QPointF(50, 50));
        QTRY_COMPARE(m_window->GetDocument()->GetUndoStack()->count(), 1);
        QCOMPARE(m_window->GetDocument()->GetUndoStack()->undoText(), QString("Erase"));
    }

    void theColourRangeFollowsTheWindowInFront()
    {
        m_window->OpenImage(Picture(Qt::red), "One");
        action("Colour Range...")->trigger();
        m_window->OpenImage(Picture(Qt::blue), "Two");
        auto* dock = m_window->findChild<ColorRangeDock*>();
        QVERIFY(dock->IsOpen());
        click(QPointF(50, 50));
        QCOMPARE(dock->findChild<NVSelectColorRange*>()->GetSourceColors(), QList<QColor>({Qt::blue}));
        QCOMPARE(m_window->GetDocument()->GetUndoStack()->count(), 0);

        action("Close")->trigger();
        QCoreApplication::processEvents();

        QCOMPARE(m_window->GetDocument()->GetTitle(), QString("One"));
        QVERIFY(!dock->IsOpen());
        click(QPointF(50, 50));
        QTRY_COMPARE(m_window->GetDocument()->GetUndoStack()->count(), 1);
    }

    void aPanelThatClosesGivesTheFocusToTheCanvasInFront_data()
    {
        QTest::addColumn<QString>("panel");
        QTest::newRow("history") << "History Panel";
        QTest::newRow("navigator") << "Navigator Panel";
        QTest::newRow("colour range") << "Colour Range...";
    }
    void aPanelThatClosesGivesTheFocusToTheCanvasInFront()
    {
        QFETCH(QString, panel);
        for (const char* name : {"One", "Two", "Three"})
            m_window->OpenImage(Picture(), name);
        action(panel)->trigger();
        QWidget* dock = nullptr;
        for (QDockWidget* each : m_window->findChildren<QDockWidget*>())
            dock = each->isVisible() ? each : dock;
        dock->findChild<QAbstractSpinBox*>()->setFocus();
        QVERIFY(dock->isAncestorOf(m_window->focusWidget()));

        dock->close();
        QCoreApplication::processEvents();

        QCOMPARE(m_window->GetDocument()->GetTitle(), QString("Three"));
        QVERIFY(m_window->GetView()->hasFocus());
    }

    void theColourRangeIsThatOfTheDocumentInFront()
    {
        m_window->OpenImage(Picture(Qt::red), "One");
        m_window->OpenImage(Picture(Qt::blue), "Two");
        const Document* document = m_window->GetDocument();
        action("Colour Range...")->trigger();
        click(QPointF(50, 50));

        QTest::mouseClick(m_window->findChild<NVSelectColorRange*>()->findChild<QDialogButtonBox*>()->button(
                              QDialogButtonBox::Ok),
                          Qt::LeftButton);
        QCoreApplication::processEvents();

        QCOMPARE(m_window->GetDocument(), document);
        QCOMPARE(document->GetUndoStack()->undoText(), QString("Colour Range"));
    }

    void theColourRangeIsNotOpenAtTheNextStart()
    {
        m_window->OpenImage(Picture(Qt::red), "One");
        action("Colour Range...")->trigger();
        QVERIFY(m_window->close());
        make();

        QVERIFY(!m_window->findChild<ColorRangeDock*>()->isVisible());
    }

    void theBrushPanelLeavesRoomForTheCanvas()
    {
        m_window->resize(1280, 860);
        m_window->OpenImage(Picture(), "One");

        action("Brush Panel")->trigger();
        QCoreApplication::processEvents();

        QVERIFY(m_window->GetView()->width() >= 860);
        QVERIFY(m_window->GetView()->height() >= 700);
    }

    void theToolBoxFitsALowScreen()
    {
        m_window->resize(1024, 600);
        QCoreApplication::processEvents();
        for (const QToolButton* button : m_window->findChild<ToolBox*>()->findChildren<QToolButton*>())
        {
            if (button->objectName() != "qt_toolbar_ext_button")
                QVERIFY2(button->isVisible(), qPrintable(button->toolTip()));
        }
    }

    void toolKeysChooseTools()
    {
        m_window->OpenImage(Picture(), "One");

        QTest::keyClick(m_window->GetView(), Qt::Key_H);
        QCOMPARE(m_window->GetTool()->GetName(), QString("Hand"));
        QVERIFY(!m_window->GetBrushTool()->IsActive());
        QTest::keyClick(m_window->GetView(), Qt::Key_5);
        QCOMPARE(m_window->GetBrushTool()->GetBrushBar()->GetOpacity(), 100);
        QTest::keyClick(m_window->GetView(), Qt::Key_B);
        QTest::keyClick(m_window->GetView(), Qt::Key_5);
        QCOMPARE(m_window->GetBrushTool()->GetBrushBar()->GetOpacity(), 50);
    }

    void allKeysOfTheBarWorkInTheWindow_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("mode");
        const char keys[] = "NMSOEXGKFHDB";
        for (int i = 0; keys[i]; ++i)
            QTest::addRow("Alt+Shift+%c", keys[i]) << int(keys[i]) << i;
    }
    void allKeysOfTheBarWorkInTheWindow()
    {
        QFETCH(int, key);
        QFETCH(int, mode);
        m_window->OpenImage(Picture(), "One");
        NVBrushToolbar* bar = m_window->GetBrushTool()->GetBrushBar();
        bar->SetBlendMode(12);

        QTest::keyClick(m_window->GetView(), Qt::Key(key), Qt::AltModifier | Qt::ShiftModifier);

        QCOMPARE(bar->GetBlendMode(), mode);
        QVERIFY(!QApplication::activePopupWidget());
        QCOMPARE(NVApplication::GetForeground(), QColor(Qt::black));
    }

    void aDigitGoesIntoTheFocusedBox()
    {
        m_window->OpenImage(Picture(), "One");
        NVBrushToolbar* bar = m_window->GetBrushTool()->GetBrushBar();
        auto* box = bar->findChild<QSpinBox*>("m_pSizeSpn");
        QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(15, box->height() / 2));
        QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);

        QTest::keyClicks(box, "37");
        QTest::keyClick(box, Qt::Key_Return);

        QCOMPARE(bar->GetSize(), 37);
        QCOMPARE(bar->GetOpacity(), 100);
        QVERIFY(m_window->GetView()->hasFocus());
    }

    void swapAndDefaultColoursHaveKeys()
    {
        m_window->OpenImage(Picture(), "One");
        NVApplication::GetInstance()->SetForeground(Qt::red);

        QTest::keyClick(m_window->GetView(), Qt::Key_X);
        QCOMPARE(NVApplication::GetForeground(), QColor(Qt::white));
        QCOMPARE(NVApplication::GetBackground(), QColor(Qt::red));
        QTest::keyClick(m_window->GetView(), Qt::Key_D);
        QCOMPARE(NVApplication::GetForeground(), QColor(Qt::black));
        QCOMPARE(NVApplication::GetBackground(), QColor(Qt::white));
    }

    void zoomActionsAndStatusAgree()
    {
        m_window->OpenImage(Picture(), "One");

        action("Original Size")->trigger();
        QVERIFY(labelTexts().contains("100 %"));
        action("Zoom In")->trigger();
        QVERIFY(labelTexts().contains("141 %"));
        action("Zoom Out")->trigger();
        QVERIFY(labelTexts().contains("100 %"));
    }

    void thePointerIsFollowedInTheStatusBar()
    {
        m_window->OpenImage(Picture(), "One");
        QWidget* canvas = m_window->GetView()->viewport();
        const QPoint place = m_window->GetView()->MapFromDocument(QPointF(42.5, 17.5)).toPoint();
        QMouseEvent move(QEvent::MouseMove, place, canvas->mapToGlobal(place), Qt::NoButton, Qt::NoButton,
                         Qt::NoModifier);

        QCoreApplication::sendEvent(canvas, &move);
        QVERIFY(labelTexts().contains("42, 17"));

        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(canvas, &leave);
        QVERIFY(!labelTexts().contains("42, 17"));
    }

    void theOptionBarCanBeSwitchedOffAndStaysSo()
    {
        action("Option Bar")->trigger();
        QVERIFY(!m_window->findChild<OptionArea*>()->isVisible());
        QVERIFY(m_window->close());

        make();

        QVERIFY(!m_window->findChild<OptionArea*>()->isVisible());
    }

    void theWindowComesBackWhereItWas()
    {
        m_window->resize(640, 600);
        QVERIFY(m_window->close());

        make();

        QCOMPARE(m_window->size(), QSize(640, 600));
    }

    void noTwoActionsShareAKey()
    {
        m_window->OpenImage(Picture(), "One");
        QStringList keys;
        for (const QAction* each : m_window->findChildren<QAction*>())
        {
            for (const QKeySequence& key : each->shortcuts())
            {
                QVERIFY2(!keys.contains(key.toString()), qPrintable(key.toString()));
                keys += key.toString();
            }
        }
        QVERIFY(keys.size() > 12);
    }

    void everyButtonOfTheToolBoxHasANameAndAPicture()
    {
        for (const QToolButton* button : m_window->findChild<ToolBox*>()->findChildren<QToolButton*>())
        {
            if (button->objectName() == "qt_toolbar_ext_button")
                continue;
            QVERIFY(!button->toolTip().isEmpty());
            QVERIFY2(!button->icon().isNull(), qPrintable(button->toolTip()));
        }
    }

    void aboutIsTold()
    {
        QString text;
        ModalDriver driver(
            [&text](QWidget* box)
            {
                text = TextOf(box);
                ModalDriver::PressKey(box, Qt::Key_Escape);
            });

        action("About Norvane")->trigger();

        QVERIFY(driver.Finished());
        QVERIFY(text.contains("Norvane"));
    }

private:
    QString path(const QString& name) const { return m_folder->filePath(name); }

    void make()
    {
        m_window.reset();
        m_window = std::make_unique<MainWindow>(m_settings.get());
        m_window->show();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }

    QString write(const QString& name) { return Picture().save(path(name)) ? path(name) : QString(); }

    void clickAt(const QPointF& place)
    {
        QTest::mouseClick(m_window->GetView()->viewport(), Qt::LeftButton, Qt::NoModifier,
                          m_window->GetView()->MapFromDocument(place).toPoint());
    }

    TextTool* beginText()
    {
        m_window->ChooseTool(m_window->FindTool<TextTool>());
        clickAt(QPointF(50, 50));
        return m_window->FindTool<TextTool>();
    }

    // Of a label in the status bar.
    QString shownAs(const QString& accessibleName) const
    {
        for (const QLabel* label : m_window->statusBar()->findChildren<QLabel*>())
        {
            if (label->accessibleName() == accessibleName)
                return label->text();
        }
        return QStringLiteral("no such label");
    }

    void writeText(const QString& name)
    {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("A text.");
    }

    // By its text without accelerators.
    QAction* action(const QString& text) const
    {
        for (QAction* each : m_window->findChildren<QAction*>())
        {
            QString plain = each->text();
            if (each->data().type() != QVariant::String)
                plain.remove('&');
            if (plain == text || (plain.startsWith(text + ' ') && (text == "Undo" || text == "Redo")))
                return each;
        }
        qFatal("no action %s", qPrintable(text));
        return nullptr;
    }

    // Of panels that share a place.
    void clickTab(const QString& text)
    {
        for (QTabBar* bar : m_window->findChildren<QTabBar*>())
        {
            for (int tab = 0; tab < bar->count(); ++tab)
            {
                if (bar->tabText(tab) == text)
                    QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->tabRect(tab).center());
            }
        }
    }

    void openPanels()
    {
        action("History Panel")->trigger();
        action("Navigator Panel")->trigger();
        QCoreApplication::processEvents();
    }

    // The document goes while the dialog is open, which is accepted afterwards.
    void closeUnderColorDialog()
    {
        action("Colour Range...")->trigger();
        ModalDriver driver(
            [this](QWidget* dialog)
            {
                action("Close")->trigger();
                ModalDriver::PressKey(dialog, Qt::Key_Return);
            });
        QTest::mouseClick(m_window->findChild<QPushButton*>("m_pChooseColor"), Qt::LeftButton);
        QVERIFY(driver.Finished());
    }

    void click(const QPointF& point)
    {
        NVDocumentView* view = m_window->GetView();
        QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier,
                          view->MapFromDocument(point).toPoint());
    }

    QStringList labelTexts() const
    {
        QStringList texts;
        for (const QLabel* label : m_window->statusBar()->findChildren<QLabel*>())
            texts += label->text();
        return texts;
    }

    void stroke()
    {
        NVDocumentView* view = m_window->GetView();
        QTest::mousePress(view->viewport(), Qt::LeftButton, Qt::NoModifier,
                          view->MapFromDocument(QPointF(50, 50)).toPoint());
        QTest::mouseRelease(view->viewport(), Qt::LeftButton, Qt::NoModifier,
                            view->MapFromDocument(QPointF(150, 50)).toPoint());
        QTRY_VERIFY(!m_window->GetBrushTool()->IsStrokeRunning());
    }

    // As far as a tool that wants more than a click.
    void drag()
    {
        QWidget* canvas = m_window->GetView()->viewport();
        const QPoint start = m_window->GetView()->MapFromDocument(QPointF(50, 50)).toPoint();
        const QPoint end = m_window->GetView()->MapFromDocument(QPointF(150, 80)).toPoint();
        QTest::mousePress(canvas, Qt::LeftButton, Qt::NoModifier, start);
        QMouseEvent move(QEvent::MouseMove, end, canvas->mapToGlobal(end), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(canvas, &move);
        QTest::mouseRelease(canvas, Qt::LeftButton, Qt::NoModifier, end);
    }

    void startHealing()
    {
        m_window->ChooseTool(m_window->FindTool<SpotHealingTool>());
        NVDocumentView* view = m_window->GetView();
        QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier,
                          view->MapFromDocument(QPointF(50, 50)).toPoint());
        QTRY_VERIFY(m_window->FindTool<SpotHealingTool>()->IsHealing() ||
                    m_window->GetDocument()->GetUndoStack()->count() == 1);
    }

    void change()
    {
        stroke();
        QVERIFY(m_window->GetDocument()->IsModified());
    }

    void give(QWidget* box, const QString& answer)
    {
        if (answer == "save")
            ModalDriver::Press(box, QDialogButtonBox::Save);
        else if (answer == "discard")
            ModalDriver::Press(box, QDialogButtonBox::Discard);
        else if (answer == "cancel")
            ModalDriver::Press(box, QDialogButtonBox::Cancel);
        else if (answer == "escape")
            ModalDriver::PressKey(box, Qt::Key_Escape);
        else
            ModalDriver::CloseWindow(box);
    }

    void drop(const QString& file)
    {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(file)});
        QDragEnterEvent enter(QPoint(50, 200), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_window.get(), &enter);
        QVERIFY(enter.isAccepted());
        QDropEvent event(QPoint(50, 200), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_window.get(), &event);
        QCoreApplication::processEvents();
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<MainWindow> m_window;
};

NV_TEST_MAIN(tst_MainWindow)
#include "tst_MainWindow.moc"
