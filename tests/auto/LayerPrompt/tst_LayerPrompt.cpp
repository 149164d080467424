// Saving a picture of several layers: what is asked, what each answer does, and what is remembered.

#include "LayerPrompt.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QSettings>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QUndoStack>

#include "Document.h"
#include "DocumentFile.h"
#include "DocumentWindow.h"
#include "KXDocumentInterface.h"
#include "LayerCommand.h"
#include "MainWindow.h"
#include "ModalDriver.h"
#include "NVIncompleteDocumentInfo.h"
#include "TestMain.h"

namespace
{

const QLatin1String AnswerKey("files/layersAnswer");

QImage Picture()
{
    QImage image(60, 40, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    return image;
}

void Answer(QWidget* prompt, const QString& answer)
{
    if (answer == "escape")
        ModalDriver::PressKey(prompt, Qt::Key_Escape);
    else if (answer == "close")
        ModalDriver::CloseWindow(prompt);
    else
        ModalDriver::Press(prompt, answer);
}

void TickDontAsk(QWidget* prompt)
{
    auto* box = prompt->findChild<QCheckBox*>("m_pDontAsk");
    QVERIFY(box);
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(8, box->height() / 2));
    QVERIFY(box->isChecked());
}

} // namespace

class tst_LayerPrompt : public QObject
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
        m_settings.reset();
        qApp->setStyleSheet(QString());
    }

    void onePictureOfOneLayerIsSavedWithoutAQuestion()
    {
        open();
        document()->GetUndoStack()->push(new LayerCommand(LayerCommand::Hide, document()->GetPixels(), 0));

        action("Save")->trigger();

        QVERIFY(!document()->IsModified());
    }

    void eachAnswerDoesWhatItSays_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<bool>("isWritten");
        QTest::newRow("save") << "Save" << true;
        QTest::newRow("don't save") << "Don't save" << false;
        QTest::newRow("escape") << "escape" << false;
        QTest::newRow("window close") << "close" << false;
    }

    void eachAnswerDoesWhatItSays()
    {
        QFETCH(QString, answer);
        QFETCH(bool, isWritten);
        openLayers();
        ModalDriver driver(
            [&answer](QWidget* prompt)
            {
                QVERIFY(qobject_cast<NVIncompleteDocumentInfo*>(prompt));
                Answer(prompt, answer);
            });

        action("Save")->trigger();

        QVERIFY(driver.Finished());
        QCOMPARE(isChanged(), isWritten);
        QCOMPARE(document()->IsModified(), !isWritten);
        QCOMPARE(document()->GetPixels()->GetLayerCount(), 2);
        QVERIFY(m_window->statusBar()->currentMessage().contains(isWritten ? "Saved" : "not saved"));
    }

    void saveAsChoosesAnotherFile()
    {
        openLayers();
        ModalDriver driver({[](QWidget* prompt) { Answer(prompt, "Save as"); },
                            [this](QWidget* dialog) { giveName(dialog, "other.png"); }});

        action("Save")->trigger();

        QVERIFY(driver.Finished());
        QVERIFY(!isChanged());
        QCOMPARE(document()->GetPath(), path("other.png"));
        QVERIFY(QFile::exists(path("other.png")));
        QVERIFY(!document()->IsModified());
    }

    void saveAsCancelledSavesNothing()
    {
        openLayers();
        ModalDriver driver({[](QWidget* prompt) { Answer(prompt, "Save as"); },
                            [](QWidget* dialog) { ModalDriver::Press(dialog, "Cancel"); }});

        action("Save")->trigger();

        QVERIFY(driver.Finished());
        QVERIFY(document()->IsModified());
        QCOMPARE(document()->GetPath(), path("a.png"));
    }

    void theSaveAsCommandAsksWhenTheNameIsKnown_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<QString>("saved");
        QTest::newRow("save") << "Save"
                              << "first.png";
        QTest::newRow("save as") << "Save as"
                                 << "second.png";
        QTest::newRow("don't save") << "Don't save"
                                    << "";
        QTest::newRow("escape") << "escape"
                                << "";
    }

    void theSaveAsCommandAsksWhenTheNameIsKnown()
    {
        QFETCH(QString, answer);
        QFETCH(QString, saved);
        openLayers();
        QList<ModalDriver::Function> functions = {[this](QWidget* dialog) { giveName(dialog, "first.png"); },
                                                  [&answer](QWidget* prompt) { Answer(prompt, answer); }};
        if (answer == "Save as")
            functions += [this](QWidget* dialog) { giveName(dialog, "second.png"); };
        ModalDriver driver(functions);

        action("Save As...")->trigger();

        QVERIFY(driver.Finished());
        for (const char* name : {"first.png", "second.png"})
            QCOMPARE(QFile::exists(path(name)), name == saved);
        QCOMPARE(document()->IsModified(), saved.isEmpty());
    }

    void closingGoesOnOnlyWithAnAnswer_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<bool>("stays");
        QTest::addColumn<bool>("isWritten");
        QTest::newRow("save") << "Save" << false << true;
        QTest::newRow("don't save") << "Don't save" << false << false;
        QTest::newRow("escape") << "escape" << true << false;
        QTest::newRow("window close") << "close" << true << false;
    }

    void closingGoesOnOnlyWithAnAnswer()
    {
        QFETCH(QString, answer);
        QFETCH(bool, stays);
        QFETCH(bool, isWritten);
        openLayers();
        ModalDriver driver({[](QWidget* box) { ModalDriver::Press(box, QDialogButtonBox::Save); },
                            [&answer](QWidget* prompt) { Answer(prompt, answer); }});

        action("Close")->trigger();

        QVERIFY(driver.Finished());
        QCOMPARE(document() != nullptr, stays);
        QCOMPARE(isChanged(), isWritten);
        if (stays)
            QVERIFY(document()->IsModified());
    }

    void closingStopsWithoutAName()
    {
        openLayers();
        ModalDriver driver({[](QWidget* box) { ModalDriver::Press(box, QDialogButtonBox::Save); },
                            [](QWidget* prompt) { Answer(prompt, "Save as"); },
                            [](QWidget* dialog) { ModalDriver::Press(dialog, "Cancel"); }});

        action("Close")->trigger();

        QVERIFY(driver.Finished());
        QVERIFY(document());
        QVERIFY(document()->IsModified());
        QVERIFY(!isChanged());
    }

    void quittingGoesOnOnlyWithAnAnswer_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<bool>("stays");
        QTest::newRow("don't save") << "Don't save" << false;
        QTest::newRow("escape") << "escape" << true;
        QTest::newRow("window close") << "close" << true;
    }

    void quittingGoesOnOnlyWithAnAnswer()
    {
        QFETCH(QString, answer);
        QFETCH(bool, stays);
        openLayers();
        ModalDriver driver({[](QWidget* box) { ModalDriver::Press(box, QDialogButtonBox::Save); },
                            [&answer](QWidget* prompt) { Answer(prompt, answer); }});

        QCOMPARE(m_window->close(), !stays);

        QVERIFY(driver.Finished());
        QCOMPARE(m_window->isVisible(), stays);
        QCOMPARE(document() && document()->IsModified(), stays);
        QVERIFY(!isChanged());
    }

    void aQuitThatIsStoppedLosesNothing_data()
    {
        QTest::addColumn<bool>("stops");
        QTest::newRow("stopped at the second") << true;
        QTest::newRow("gone through") << false;
    }

    void aQuitThatIsStoppedLosesNothing()
    {
        QFETCH(bool, stops);
        openLayers();
        QVERIFY(Picture().save(path("b.png")));
        QVERIFY(m_window->OpenFile(path("b.png")));
        change();
        const auto save = [](QWidget* box) { ModalDriver::Press(box, QDialogButtonBox::Save); };
        ModalDriver driver({save, [](QWidget* prompt) { Answer(prompt, "Don't save"); }, save,
                            [stops](QWidget* prompt) { Answer(prompt, stops ? "escape" : "Don't save"); }});

        QCOMPARE(m_window->close(), !stops);

        QVERIFY(driver.Finished());
        const QList<DocumentWindow*> windows = m_window->GetDocumentWindows();
        QCOMPARE(windows.size(), stops ? 2 : 0);
        for (const DocumentWindow* window : windows)
        {
            QVERIFY(window->GetDocument()->IsModified());
            QCOMPARE(window->GetDocument()->GetPixels()->GetLayerCount(), 2);
        }
    }

    void dontAskAgainIsRememberedUntilItIsReset()
    {
        openLayers();
        QVERIFY(action("Ask about Layers When Saving")->isChecked());
        ModalDriver driver(
            [](QWidget* prompt)
            {
                TickDontAsk(prompt);
                Answer(prompt, "Save");
            });
        action("Save")->trigger();
        QVERIFY(driver.Finished());
        QVERIFY(!action("Ask about Layers When Saving")->isChecked());

        change();
        action("Save")->trigger();
        QVERIFY(!document()->IsModified());

        make();
        openLayers();
        QVERIFY(!action("Ask about Layers When Saving")->isChecked());
        action("Save")->trigger();
        QVERIFY(!document()->IsModified());

        action("Ask about Layers When Saving")->trigger();
        change();
        ModalDriver again([](QWidget* prompt) { Answer(prompt, "escape"); });
        action("Save")->trigger();
        QVERIFY(again.Finished());
        QVERIFY(document()->IsModified());
    }

    void saveAsIsRememberedToo()
    {
        openLayers();
        ModalDriver driver({[](QWidget* prompt)
                            {
                                TickDontAsk(prompt);
                                Answer(prompt, "Save as");
                            },
                            [this](QWidget* dialog) { giveName(dialog, "one.png"); }});
        action("Save")->trigger();
        QVERIFY(driver.Finished());
        change();
        ModalDriver second([this](QWidget* dialog) { giveName(dialog, "two.png"); });

        action("Save")->trigger();

        QVERIFY(second.Finished());
        QVERIFY(QFile::exists(path("two.png")));
        change();
        ModalDriver third([this](QWidget* dialog) { giveName(dialog, "three.png"); });
        action("Save As...")->trigger();
        QVERIFY(third.Finished());
        QVERIFY(QFile::exists(path("three.png")));
    }

    void anAnswerThatSavesNothingIsNotRemembered_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::newRow("don't save") << "Don't save";
        QTest::newRow("escape") << "escape";
        QTest::newRow("window close") << "close";
    }

    void anAnswerThatSavesNothingIsNotRemembered()
    {
        QFETCH(QString, answer);
        openLayers();
        const auto refuse = [&answer](QWidget* prompt)
        {
            TickDontAsk(prompt);
            Answer(prompt, answer);
        };
        for (int i = 0; i < 2; ++i)
        {
            ModalDriver driver(refuse);
            action("Save")->trigger();
            QVERIFY(driver.Finished());
            QCOMPARE(m_window->statusBar()->currentMessage().contains("asked again"), answer == "Don't save");
        }
        QVERIFY(action("Ask about Layers When Saving")->isChecked());
        QVERIFY(!m_settings->contains(AnswerKey));
    }

    void switchedOffByHandItSavesAsOneLayer()
    {
        openLayers();

        action("Ask about Layers When Saving")->trigger();
        action("Save")->trigger();

        QVERIFY(isChanged());
        QVERIFY(!document()->IsModified());
    }

    void aStoredAnswerThatIsNoneAsks_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::newRow("don't save") << QVariant(0);
        QTest::newRow("closed") << QVariant(-1);
        QTest::newRow("unknown") << QVariant(3);
        QTest::newRow("text") << QVariant("yes");
    }

    void aStoredAnswerThatIsNoneAsks()
    {
        QFETCH(QVariant, stored);
        m_settings->setValue(AnswerKey, stored);
        make();
        openLayers();
        ModalDriver driver([](QWidget* prompt) { Answer(prompt, "Save"); });

        action("Save")->trigger();

        QVERIFY(driver.Finished());
        QVERIFY(isChanged());
    }

private:
    QString path(const QString& name) const { return m_folder->filePath(name); }
    Document* document() const { return m_window->GetDocument(); }

    void make()
    {
        m_window.reset();
        m_window = std::make_unique<MainWindow>(m_settings.get());
        m_window->show();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }

    void open()
    {
        QVERIFY(Picture().save(path("a.png")));
        QVERIFY(m_window->OpenFile(path("a.png")));
    }

    // With a second layer, which is red.
    void openLayers()
    {
        open();
        change();
    }

    void change()
    {
        KXDocumentInterface* pixels = document()->GetPixels();
        document()->GetUndoStack()->push(new LayerCommand(
            pixels->GetLayerCount() == 1 ? LayerCommand::New : LayerCommand::Duplicate, pixels, 0));
        pixels->EditLayer(1).fill(Qt::red);
        pixels->NotifyChanged(pixels->GetRect());
    }

    // Whether the file of openLayers shows the second layer.
    bool isChanged() const { return LoadDocumentFile(path("a.png")).image != Picture(); }

    void giveName(QWidget* dialog, const QString& name)
    {
        auto* edit = dialog->findChild<QLineEdit*>("fileNameEdit");
        QVERIFY(edit);
        edit->setText(path(name));
        QTest::keyClick(edit, Qt::Key_Return);
    }

    QAction* action(const QString& text) const
    {
        for (QAction* each : m_window->findChildren<QAction*>())
        {
            if (each->text().remove('&') == text)
                return each;
        }
        qFatal("no action %s", qPrintable(text));
        return nullptr;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<MainWindow> m_window;
};

NV_TEST_MAIN(tst_LayerPrompt)

#include "tst_LayerPrompt.moc"
