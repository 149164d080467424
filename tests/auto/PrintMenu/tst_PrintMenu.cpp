// Printing from the menu, as a person does it: without a server, with one that hangs or knows no printer,
// and, where tests/printing/with-print-server.sh runs this, with queues whose jobs arrive.

#include "PrintMenu.h"

#include <QAction>
#include <QComboBox>
#include <QDataStream>
#include <QDir>
#include <QDoubleSpinBox>
#include <QElapsedTimer>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QLocalServer>
#include <QLocalSocket>
#include <QMenu>
#include <QMenuBar>
#include <QPageSize>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTimer>

#include <csignal>

#include "Document.h"
#include "DocumentWindow.h"
#include "MainWindow.h"
#include "ModalDriver.h"
#include "NVPrintPreviewDialog.h"
#include "PrintJobs.h"
#include "PrintServer.h"
#include "RecordingPrinter.h"
#include "TestMain.h"

namespace
{

const char* NoServer = "/nonexistent/cups.sock";

QImage Photograph()
{
    QImage image(400, 300, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::darkCyan);
    return image;
}

QString TextOf(const QWidget* box)
{
    QString text;
    for (const QLabel* label : box->findChildren<QLabel*>())
        text += label->text();
    return text;
}

QByteArray ContentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void RunTool(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 0);
}

} // namespace

class tst_PrintMenu : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        // The print library remembers its server, so a run has either queues or none.
        const bool hasQueues = qEnvironmentVariableIsSet("NORVANE_PRINT_FOLDER");
        const bool needsQueues = QByteArray(QTest::currentTestFunction()).startsWith("queue");
        if (needsQueues && !hasQueues)
            QSKIP("no queues: run it by tests/printing/with-print-server.sh");
        if (hasQueues && !needsQueues)
            QSKIP("the run without a print server has this test");
        if (!hasQueues)
            qputenv("CUPS_SERVER", NoServer);
        QLocale::setDefault(QLocale::c());
        m_folder = std::make_unique<QTemporaryDir>();
        m_settings = std::make_unique<QSettings>(m_folder->filePath("s.ini"), QSettings::IniFormat);
        m_settings->setValue("print/folder", m_folder->path());
        m_window = std::make_unique<MainWindow>(m_settings.get());
        m_window->show();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }

    void cleanup()
    {
        m_window.reset();
        m_settings.reset();
        qApp->setStyleSheet(QString());
        if (m_isQueueChanged)
            restoreQueues();
        m_isQueueChanged = false;
    }

    void theFileMenuOffersBothForAPictureAlone()
    {
        for (const char* text : {"Print...", "Export as PDF..."})
            QVERIFY(!action(text)->isEnabled());

        open();
        for (const char* text : {"Print...", "Export as PDF..."})
            QVERIFY(action(text)->isEnabled());
        QCOMPARE(action("Print...")->shortcut(), QKeySequence(Qt::CTRL + Qt::Key_P));
        const QMenu* file = m_window->menuBar()->actions().first()->menu();
        QVERIFY(file->actions().contains(action("Print...")));

        m_window->CloseDocument(m_window->GetDocumentWindows().first());
        for (const char* text : {"Print...", "Export as PDF..."})
            QVERIFY(!action(text)->isEnabled());
        QVERIFY(!menu()->ExportPdf(pdf()));
        QVERIFY(!QFile::exists(pdf()));
    }

    void withoutAServerItSaysWhyAndTheAnswerNoDoesNothing()
    {
        open();
        ModalDriver driver(
            [](QWidget* box)
            {
                QCOMPARE(TextOf(box),
                         QString("There is no printer: no print server was found at %1.\n\n"
                                 "Export the picture as a PDF file instead?")
                             .arg(NoServer));
                ModalDriver::Press(box, QDialogButtonBox::No);
            });

        QTest::keyClick(m_window.get(), Qt::Key_P, Qt::ControlModifier);

        QTRY_VERIFY(driver.Finished());
        QVERIFY(!QFile::exists(pdf()));
        QVERIFY(!m_settings->contains("print/settings"));
    }

    void withoutAServerThePdfIsOffered()
    {
        open();
        ModalDriver driver({[](QWidget* box) { ModalDriver::PressKey(box, Qt::Key_Return); },
                            [this](QWidget* dialog) { save(dialog, "Picture.pdf"); }});

        action("Print...")->trigger();

        QVERIFY(driver.Finished());
        QVERIFY(ContentOf(pdf()).startsWith("%PDF-"));
        // Between margins of 10 mm on an A4 sheet, turned, in whole pixels of the page.
        QCOMPARE(status(), QString("Exported Picture.pdf: A4, picture 190.1 x 253.4 mm, 40 pixels an inch."));
    }

    void aServerThatHangsHoldsUpNothing()
    {
        QLocalServer server;
        QVERIFY(server.listen(m_folder->filePath("sock")));
        qputenv("CUPS_SERVER", server.fullServerName().toLocal8Bit());
        open();
        QElapsedTimer sinceTick;
        qint64 longest = 0;
        QTimer tick;
        connect(&tick, &QTimer::timeout, this, [&] { longest = qMax(longest, sinceTick.restart()); });
        ModalDriver driver(
            [&](QWidget* box)
            {
                tick.stop();
                QVERIFY(TextOf(box).startsWith(
                    QString("The print server at %1 does not answer.").arg(server.fullServerName())));
                ModalDriver::Press(box, QDialogButtonBox::No);
            },
            20000);
        sinceTick.start();
        tick.start(10);

        action("Print...")->trigger();

        QVERIFY(driver.Finished());
        QVERIFY2(longest < 1000, qPrintable(QString::number(longest)));
    }

    // It answers the first question, and nothing after that.
    void aServerThatFallsSilentIsLetGoByACancel()
    {
        QLocalServer server;
        QVERIFY(server.listen(m_folder->filePath("sock")));
        qputenv("CUPS_SERVER", server.fullServerName().toLocal8Bit());
        bool isSilent = false;
        connect(&server, &QLocalServer::newConnection, this,
                [&]
                {
                    QLocalSocket* socket = server.nextPendingConnection();
                    connect(socket, &QLocalSocket::readyRead, this,
                            [&isSilent, socket]
                            {
                                if (socket->readAll().startsWith("OPTIONS * "))
                                    socket->write("HTTP/1.1 200 OK\r\n\r\n");
                                else
                                    isSilent = true;
                            });
                });
        open();
        QTimer look;
        connect(&look, &QTimer::timeout, this,
                [&]
                {
                    auto* cancel = m_window->statusBar()->findChild<QPushButton*>();
                    if (isSilent && cancel->isVisible())
                        QTest::mouseClick(cancel, Qt::LeftButton);
                });
        look.start(10);
        QElapsedTimer timer;
        timer.start();

        action("Print...")->trigger();

        QVERIFY(timer.elapsed() < 20000);
        QCOMPARE(status(), QString("Nothing was printed."));
        look.stop();
        QVERIFY(menu()->ExportPdf(pdf()));
        QVERIFY(m_window->close());
    }

    void aServerWithoutPrintersIsToldApart()
    {
        QLocalServer server;
        QVERIFY(server.listen(m_folder->filePath("sock")));
        qputenv("CUPS_SERVER", server.fullServerName().toLocal8Bit());
        connect(&server, &QLocalServer::newConnection, this,
                [&]
                {
                    QLocalSocket* socket = server.nextPendingConnection();
                    socket->write("HTTP/1.1 404 Not Found\r\nConnection: close\r\nContent-Length: 0\r\n\r\n");
                    socket->disconnectFromServer();
                });
        open();
        ModalDriver driver(
            [](QWidget* box)
            {
                QVERIFY(TextOf(box).contains("knows none."));
                ModalDriver::CloseWindow(box);
            },
            20000);

        action("Print...")->trigger();

        QVERIFY(driver.Finished());
    }

    void thePdfFollowsTheSettingsOfTheLastPrint()
    {
        open();
        QByteArray bytes;
        {
            QDataStream stream(&bytes, QIODevice::WriteOnly);
            // A5, inches, 150 an inch, landscape, no margins, half the size, centred.
            stream << qint32(1) << qint32(QPageSize::A5) << qint32(2) << qint32(150) << qint32(1) << 0.0
                   << 0.0 << 0.0 << 0.0 << qint32(2) << true << 50.0 << 50.0 << qint32(5) << 0.0 << 0.0
                   << qint32(0);
        }
        m_settings->setValue("print/settings", bytes);
        ModalDriver driver([this](QWidget* dialog) { save(dialog, QString()); });

        action("Export as PDF...")->trigger();

        QVERIFY(driver.Finished());
        QVERIFY(!ContentOf(pdf()).isEmpty());
        QCOMPARE(status(), QString("Exported Picture.pdf: A5, picture 1.33 x 1.00 in, 300 pixels an inch."));
        QCOMPARE(m_settings->value("print/settings").toByteArray(), bytes);
    }

    void anExportThatFailsNamesFileAndReason()
    {
        open();
        const QString path = m_folder->filePath("no/page.pdf");
        ModalDriver driver(
            [&](QWidget* box)
            {
                QVERIFY(TextOf(box).contains(path));
                QVERIFY(TextOf(box).contains("could not be exported"));
                QVERIFY(TextOf(box).contains("does not exist"));
                ModalDriver::Press(box, QDialogButtonBox::Ok);
            });

        QVERIFY(!menu()->ExportPdf(path));

        QVERIFY(driver.Finished());
        QVERIFY(!QFile::exists(path));
    }

    void aCancelledFileDialogWritesNothing()
    {
        open();
        ModalDriver driver([](QWidget* dialog) { ModalDriver::PressKey(dialog, Qt::Key_Escape); });

        action("Export as PDF...")->trigger();

        QVERIFY(driver.Finished());
        QVERIFY(QDir(m_folder->path()).entryList({"*.pdf"}).isEmpty());
    }

    void queueGetsTheJobAndTheSettingsAreKept()
    {
        open();
        ModalDriver driver(
            [](QWidget* dialog)
            {
                auto* preview = qobject_cast<NVPrintPreviewDialog*>(dialog);
                QVERIFY(preview);
                choose(dialog, "m_pPrinter", "Colour");
                choose(dialog, "m_pPageSize", "A5");
                choose(dialog, "m_pDPI", "300");
                ModalDriver::Press(dialog, "Print");
            },
            20000);

        action("Print...")->trigger();

        QVERIFY(driver.Finished());
        QVERIFY2(status().startsWith("Sent to Colour: A5"), qPrintable(status()));
        QVERIFY2(status().endsWith("picture 33.9 x 25.4 mm, 300 pixels an inch."), qPrintable(status()));
        QTRY_COMPARE(arrived(), 1);

        ModalDriver again(
            [](QWidget* dialog)
            {
                QCOMPARE(dialog->findChild<QComboBox*>("m_pPageSize")->currentText(), QString("A5"));
                QCOMPARE(dialog->findChild<QComboBox*>("m_pDPI")->currentText(), QString("300"));
                ModalDriver::PressKey(dialog, Qt::Key_Escape);
            },
            20000);
        action("Print...")->trigger();
        QVERIFY(again.Finished());
        QCOMPARE(arrived(), 1);
    }

    void queueIsSummedUpWhileTheDialogIsOpen()
    {
        open();
        QStringList texts;
        ModalDriver driver(
            [&](QWidget* dialog)
            {
                choose(dialog, "m_pPrinter", "Colour");
                choose(dialog, "m_pPageSize", "A4");
                choose(dialog, "m_pDPI", "300");
                texts += status();
                choose(dialog, "m_pPageSize", "A5");
                texts += status();
                choose(dialog, "m_pUnits", "in");
                texts += status();
                dialog->findChild<QRadioButton*>("m_pCustom")->click();
                dialog->findChild<QDoubleSpinBox*>("m_pCustomSX")->setValue(200);
                texts += status();
                dialog->findChild<QDoubleSpinBox*>("m_pLeftMargin")->setValue(30);
                texts += status();
                ModalDriver::PressKey(dialog, Qt::Key_Escape);
            },
            20000);

        action("Print...")->trigger();

        QVERIFY(driver.Finished());
        QCOMPARE(texts,
                 QStringList({"A4, picture 33.9 x 25.4 mm, 300 pixels an inch",
                              "A5, picture 33.9 x 25.4 mm, 300 pixels an inch",
                              "A5, picture 1.33 x 1.00 in, 300 pixels an inch",
                              "A5, picture 2.67 x 2.00 in, 150 pixels an inch",
                              "The margins leave no room on the page."}));
        QCOMPARE(status(), QString("Nothing was printed."));
    }

    void queueWithoutAResolutionSaysSo()
    {
        open();
        const int before = arrived();
        const QString reason = "The printer Raw offers no resolution to print with.";
        QString live;
        QString text;
        ModalDriver driver({[&live, this](QWidget* dialog)
                            {
                                choose(dialog, "m_pPrinter", "Raw");
                                live = status();
                                ModalDriver::Press(dialog, "Print");
                                ModalDriver::PressKey(dialog, Qt::Key_Escape);
                            },
                            [&text](QWidget* box)
                            {
                                text = TextOf(box);
                                ModalDriver::Press(box, QDialogButtonBox::Ok);
                            }},
                           20000);

        action("Print...")->trigger();

        QVERIFY(driver.Finished());
        QCOMPARE(live, reason);
        QCOMPARE(text, reason + "\n\nNothing was printed.");
        QCOMPARE(arrived(), before);
    }

    void queueGetsAPictureWithoutAlpha()
    {
        open();
        RecordingPrinter printer;
        ModalDriver driver(
            [&printer](QWidget* dialog)
            {
                choose(dialog, "m_pPrinter", "Colour");
                QMetaObject::invokeMethod(dialog, "OnPaintRequest", Q_ARG(QPrinter*, &printer));
                ModalDriver::PressKey(dialog, Qt::Key_Escape);
            },
            20000);

        action("Print...")->trigger();

        QVERIFY(driver.Finished());
        QCOMPARE(printer.engine.images.size(), 1);
        QCOMPARE(printer.engine.images.first().format, QImage::Format_RGB32);
    }

    // By the window manager, which does not ask whether the dialog is enabled.
    void queueGetsItsJobThoughTheDialogIsClosedMeanwhile()
    {
        open();
        const int before = arrived();
        bool isClosed = false;
        ModalDriver driver(
            [&isClosed](QWidget* dialog)
            {
                choose(dialog, "m_pPrinter", "Colour");
                choose(dialog, "m_pPageSize", "A5");
                ModalDriver::Press(dialog, "Print");
                isClosed = dialog->close();
            },
            20000);

        action("Print...")->trigger();

        QVERIFY(driver.Finished());
        QVERIFY(isClosed);
        QVERIFY(!QGuiApplication::overrideCursor());
        QVERIFY2(status().startsWith("Still sending to Colour: A5"), qPrintable(status()));
        QVERIFY(m_settings->contains("print/settings"));
        QTRY_COMPARE(arrived(), before + 1);
    }

    void queueWhoseServerTellsNoJobsIsTold()
    {
        open();
        const int before = arrived();
        const QByteArray old = ContentOf(configuration());
        QByteArray silent = old;
        silent.replace("  <Limit All>",
                       "  <Limit Get-Jobs>\n    AuthType Basic\n    Require valid-user\n"
                       "  </Limit>\n  <Limit All>");
        configure(silent, false);
        ModalDriver driver(
            [](QWidget* dialog)
            {
                choose(dialog, "m_pPrinter", "Colour");
                ModalDriver::Press(dialog, "Print");
            },
            20000);

        action("Print...")->trigger();

        QVERIFY(driver.Finished());
        const QString text = status();
        configure(old, true);
        QVERIFY2(text.startsWith("The print server does not tell whether Colour took the job: "),
                 qPrintable(text));
        QTRY_COMPARE(arrived(), before + 1);
    }

    void queueGetsNothingIfTheMarginsLeaveNoRoom()
    {
        open();
        const int before = arrived();
        ModalDriver driver({[](QWidget* dialog)
                            {
                                choose(dialog, "m_pPageSize", "A5");
                                dialog->findChild<QDoubleSpinBox*>("m_pLeftMargin")->setValue(900);
                                ModalDriver::Press(dialog, "Print");
                                QVERIFY(dialog->isVisible());
                                QVERIFY(dialog->isEnabled());
                                ModalDriver::PressKey(dialog, Qt::Key_Escape);
                            },
                            [](QWidget* box)
                            {
                                QVERIFY(TextOf(box).startsWith("The margins leave no room on the page."));
                                ModalDriver::Press(box, QDialogButtonBox::Ok);
                            }},
                           20000);

        action("Print...")->trigger();

        QVERIFY(driver.Finished());
        QCOMPARE(arrived(), before);
        QVERIFY(!m_settings->contains("print/settings"));
    }

    void queueThatWentIsNotReplacedByTheDefaultOne()
    {
        open();
        const int before = arrived();
        RunTool("/usr/sbin/lpadmin", {"-p", "Fleeting", "-E", "-v", "tofile:/x"});
        ModalDriver driver(
            {[](QWidget* dialog)
             {
                 choose(dialog, "m_pPrinter", "Grey");
                 auto* printers = dialog->findChild<QComboBox*>("m_pPrinter");
                 // The lists stay those of the one that was chosen.
                 printers->setItemText(printers->currentIndex(), "Fleeting");
                 RunTool("/usr/sbin/lpadmin", {"-x", "Fleeting"});
                 ModalDriver::Press(dialog, "Print");
                 QVERIFY(dialog->isEnabled());
                 ModalDriver::PressKey(dialog, Qt::Key_Escape);
             },
             [](QWidget* box)
             {
                 QCOMPARE(TextOf(box),
                          QString("The printer Fleeting is not there any more.\n\nNothing was printed."));
                 ModalDriver::Press(box, QDialogButtonBox::Ok);
             }},
            20000);

        action("Print...")->trigger();

        QVERIFY(driver.Finished());
        QCOMPARE(arrived(), before);
    }

    void queueThatIsStoppedIsTold()
    {
        open();
        changeQueue("cupsdisable", {"Grey"});
        ModalDriver driver(
            [](QWidget* dialog)
            {
                choose(dialog, "m_pPrinter", "Grey");
                ModalDriver::Press(dialog, "Print");
            },
            20000);

        action("Print...")->trigger();

        QVERIFY(driver.Finished());
        QVERIFY2(status().startsWith("Grey is stopped, the job waits there:"), qPrintable(status()));
    }

    void queueThatTakesNoJobIsTold()
    {
        open();
        const int before = arrived();
        changeQueue("cupsreject", {"Grey"});
        QString text;
        ModalDriver driver({[](QWidget* dialog)
                            {
                                choose(dialog, "m_pPrinter", "Grey");
                                ModalDriver::Press(dialog, "Print");
                            },
                            [&text](QWidget* box)
                            {
                                text = TextOf(box);
                                ModalDriver::Press(box, QDialogButtonBox::Ok);
                            }},
                           20000);

        action("Print...")->trigger();

        QVERIFY(driver.Finished());
        QVERIFY2(text.startsWith("Grey did not take the job: US Letter"), qPrintable(text));
        QCOMPARE(status(), text);
        QCOMPARE(arrived(), before);
    }

    void queueWhoseDeviceFailsIsTold_data()
    {
        QTest::addColumn<QString>("policy");
        QTest::addColumn<QByteArray>("seconds");
        QTest::addColumn<QString>("message");
        QTest::addColumn<bool>("isFailure");
        const QString lost = "Grey did not print the job: US Letter";
        QTest::newRow("the job is given up") << "abort-job" << QByteArray() << lost << true;
        QTest::newRow("the job is given up after a while")
            << "abort-job" << QByteArray("0.8") << lost << true;
        QTest::newRow("the queue stops")
            << "stop-printer" << QByteArray() << "Grey is stopped, the job waits there:" << false;
    }

    void queueWhoseDeviceFailsIsTold()
    {
        QFETCH(QByteArray, seconds);
        QFETCH(QString, policy);
        QFETCH(QString, message);
        QFETCH(bool, isFailure);
        open();
        const int before = arrived();
        changeQueue("lpadmin", {"-p", "Grey", "-o", "printer-error-policy=" + policy});
        QFile refuse(refusal());
        QVERIFY(refuse.open(QIODevice::WriteOnly));
        refuse.write(seconds);
        refuse.close();
        QList<ModalDriver::Function> functions = {[](QWidget* dialog)
                                                  {
                                                      choose(dialog, "m_pPrinter", "Grey");
                                                      ModalDriver::Press(dialog, "Print");
                                                  }};
        if (isFailure)
            functions += [](QWidget* box) { ModalDriver::Press(box, QDialogButtonBox::Ok); };
        ModalDriver driver(functions, 20000);

        action("Print...")->trigger();

        QVERIFY(driver.Finished());
        QVERIFY2(status().startsWith(message), qPrintable(status()));
        QCOMPARE(arrived(), before);
    }

    void queueKeepsTheJobOfAnotherPersonApart()
    {
        open();
        // One that waits, made while the dialog is open, on another queue.
        changeQueue("cupsdisable", {"Raw"});
        const QString document = m_folder->filePath("other");
        QFile file(document);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("text");
        file.close();
        changeQueue("cupsreject", {"Grey"});
        ModalDriver driver({[&document](QWidget* dialog)
                            {
                                choose(dialog, "m_pPrinter", "Grey");
                                RunTool("lp", {"-d", "Raw", document});
                                ModalDriver::Press(dialog, "Print");
                            },
                            [](QWidget* box) { ModalDriver::Press(box, QDialogButtonBox::Ok); }},
                           20000);

        action("Print...")->trigger();

        QVERIFY(driver.Finished());
        QVERIFY2(status().startsWith("Grey did not take the job:"), qPrintable(status()));
    }

private:
    static void choose(QWidget* dialog, const char* name, const QString& text)
    {
        auto* list = dialog->findChild<QComboBox*>(name);
        list->setCurrentIndex(list->findText(text, Qt::MatchStartsWith));
        QVERIFY2(list->currentText().startsWith(text), qPrintable(list->currentText()));
    }

    // Until the end of the test.
    void changeQueue(const QString& program, const QStringList& arguments)
    {
        m_isQueueChanged = true;
        RunTool("/usr/sbin/" + program, arguments);
    }

    static void restoreQueues()
    {
        QFile::remove(refusal());
        for (const char* queue : {"Grey", "Raw"})
        {
            RunTool("cancel", {"-a", queue});
            RunTool("/usr/sbin/cupsaccept", {queue});
            RunTool("/usr/sbin/cupsenable", {queue});
        }
    }

    static QString configuration()
    {
        return qEnvironmentVariable("NORVANE_PRINT_FOLDER") + "/root/cupsd.conf";
    }

    // Waits until the server lives by the text, and tells of its jobs or does not.
    static void configure(const QByteArray& text, bool tellsJobs)
    {
        QFile file(configuration());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text);
        file.close();
        const QByteArray id = ContentOf(qEnvironmentVariable("NORVANE_PRINT_FOLDER") + "/server.pid");
        QCOMPARE(::kill(id.trimmed().toInt(), SIGHUP), 0);
        const QString address = PrintServerAddress();
        QTRY_COMPARE_WITH_TIMEOUT(AskForJobs(address).isKnown, tellsJobs, 20000);
        QTRY_COMPARE_WITH_TIMEOUT(ProbePrintServer(address), PrintServerState::Answers, 20000);
    }

    // While this file is there, every device fails.
    static QString refusal() { return qEnvironmentVariable("NORVANE_PRINT_FOLDER") + "/refuse"; }

    // Empty for the name that is offered.
    static void save(QWidget* dialog, const QString& name)
    {
        auto* edit = dialog->findChild<QLineEdit*>("fileNameEdit");
        QCOMPARE(edit->text(), QString("Picture.pdf"));
        edit->setFocus();
        if (!name.isEmpty())
        {
            edit->selectAll();
            QTest::keyClicks(edit, name);
        }
        ModalDriver::Press(dialog, QDialogButtonBox::Save);
    }

    int arrived() const
    {
        return QDir(qEnvironmentVariable("NORVANE_PRINT_FOLDER") + "/out").entryList({"*.pdf"}).size();
    }

    void open() { m_window->OpenImage(Photograph(), "Picture"); }
    PrintMenu* menu() const { return m_window->findChild<PrintMenu*>(); }
    QString pdf() const { return m_folder->filePath("Picture.pdf"); }
    QString status() const { return m_window->statusBar()->currentMessage(); }

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
    bool m_isQueueChanged = false;
};

NV_TEST_MAIN(tst_PrintMenu)
#include "tst_PrintMenu.moc"
