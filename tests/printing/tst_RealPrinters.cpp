// The dialog for printing with a real print server: its lists come from the queues, and its jobs arrive. Run
// it through with-print-server.sh.

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QDoubleSpinBox>
#include <QElapsedTimer>
#include <QFile>
#include <QPainter>
#include <QPointer>
#include <QProcess>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QThreadPool>
#include <QTimer>

#include <sys/resource.h>

#include <csignal>

#include "ModalDriver.h"
#include "NVPrintPreviewDialog.h"
#include "TestMain.h"
#include "TransformationCenterPointControl.h"

using Dialog = NVPrintPreviewDialog;
using Place = TransformationCenterPointControl;

namespace
{

// In milliseconds, for whatever the server does.
const int Patience = 20000;

QDir PrintFolder()
{
    return QDir(qEnvironmentVariable("NORVANE_PRINT_FOLDER"));
}

// What the program wrote. The test is over if it fails.
QString Run(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(Patience) || process.exitStatus() != QProcess::NormalExit ||
        process.exitCode() != 0)
    {
        qFatal("%s %s: %s", qPrintable(program), qPrintable(arguments.join(' ')),
               process.readAllStandardError().constData());
    }
    return QString::fromLocal8Bit(process.readAllStandardOutput());
}

// A queue for one test.
class Queue
{
public:
    explicit Queue(const QString& name, const QString& driver = "colour", const QStringList& options = {})
        : m_name(name)
    {
        Run("lpadmin",
            QStringList(
                {"-p", name, "-E", "-v", "tofile:/own", "-P", QString(PPD_FOLDER "/%1.ppd").arg(driver)}) +
                options);
    }
    ~Queue() { Vanish(); }
    Q_DISABLE_COPY_MOVE(Queue)

    // Its jobs go with it.
    void Vanish()
    {
        if (!m_isGone)
            Run("lpadmin", {"-x", m_name});
        m_isGone = true;
    }

private:
    QString m_name;
    bool m_isGone = false;
};

// A document as it arrived.
class Document
{
public:
    explicit Document(const QString& path) : m_path(path) { }

    int Pages() const { return Info("Pages: +(\\d+)").captured(1).toInt(); }
    // In points.
    QSize Sheet() const
    {
        const QRegularExpressionMatch match = Info("Page size: +([0-9.]+) x ([0-9.]+) pts");
        return QSize(qRound(match.captured(1).toDouble()), qRound(match.captured(2).toDouble()));
    }
    QImage Page(int page, int resolution) const
    {
        const QTemporaryDir folder;
        const QString name = folder.filePath("page");
        const QString number = QString::number(page);
        Run("pdftoppm",
            {"-png", "-singlefile", "-f", number, "-l", number, "-r", QString::number(resolution), m_path,
             name});
        return QImage(name + ".png");
    }
    // What the queue was told: job, user, title, copies, options.
    QStringList Arguments() const
    {
        QFile file(QString(m_path).replace(QRegularExpression("pdf$"), "arguments"));
        if (!file.open(QIODevice::ReadOnly))
            qFatal("no arguments of %s", qPrintable(m_path));
        return QString::fromUtf8(file.readAll()).split('\n');
    }
    QString Job() const { return Arguments().first(); }

private:
    QRegularExpressionMatch Info(const QString& pattern) const
    {
        return QRegularExpression(pattern).match(Run("pdfinfo", {m_path}));
    }

    QString m_path;
};

// The documents that arrive from now on.
class Arrivals
{
public:
    Arrivals() : m_before(Names()) { }

    int Count() const { return Names().size() - m_before.size(); }
    // In the order of their jobs.
    QList<Document> Documents() const
    {
        QMap<int, Document> documents;
        for (const QString& name : Names())
            if (!m_before.contains(name))
                documents.insert(name.section('.', 0, 0).toInt(),
                                 Document(PrintFolder().filePath("out/" + name)));
        return documents.values();
    }

private:
    static QStringList Names() { return QDir(PrintFolder().filePath("out")).entryList({"*.pdf"}); }

    QStringList m_before;
};

// Red, green, blue and yellow quarters, in reading order.
QImage Photo()
{
    QImage image(600, 400, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.fillRect(0, 0, 300, 200, Qt::red);
    painter.fillRect(300, 0, 300, 200, Qt::green);
    painter.fillRect(0, 200, 300, 200, Qt::blue);
    painter.fillRect(300, 200, 300, 200, Qt::yellow);
    return image;
}

// Which no format makes small.
QImage Noise(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    quint32 noise = 1;
    for (int y = 0; y < height; ++y)
    {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < width; ++x)
        {
            noise = noise * 1664525 + 1013904223;
            line[x] = noise | 0xff000000;
        }
    }
    return image;
}

// No file grows beyond so many bytes, as if the disk were full.
class FullDisk
{
public:
    explicit FullDisk(rlim_t bytes) : m_handler(signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        rlimit limit = m_before;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        signal(SIGXFSZ, m_handler);
    }
    Q_DISABLE_COPY_MOVE(FullDisk)

private:
    rlimit m_before{};
    sighandler_t m_handler;
};

// What is not white.
QRect Printed(const QImage& page)
{
    QRect box;
    for (int y = 0; y < page.height(); ++y)
        for (int x = 0; x < page.width(); ++x)
            if ((page.pixel(x, y) & RGB_MASK) != (qRgb(255, 255, 255) & RGB_MASK))
                box |= QRect(x, y, 1, 1);
    return box;
}

// The letter of the nearest colour of the photo.
QChar Letter(const QColor& color)
{
    const bool isRed = color.red() > 127;
    const bool isGreen = color.green() > 127;
    if (isRed)
        return isGreen ? 'Y' : 'R';
    return isGreen ? 'G' : 'B';
}

// The colours in the middle of the quarters, in reading order.
QString Quarters(const QImage& page, const QRect& box)
{
    QString letters;
    for (const int y : {1, 3})
        for (const int x : {1, 3})
            letters += Letter(page.pixelColor(box.x() + box.width() * x / 4, box.y() + box.height() * y / 4));
    return letters;
}

bool IsGrey(const QImage& page)
{
    for (int y = 0; y < page.height(); ++y)
        for (int x = 0; x < page.width(); ++x)
            if (!qIsGray(page.pixel(x, y)))
                return false;
    return true;
}

// A dialog, used by its controls.
class Desk
{
public:
    explicit Desk(const QString& printer = "Colour")
    {
        m_pDialog->SetSource(Photo());
        List("m_pPrinter")->setCurrentText(printer);
    }
    ~Desk() { delete m_pDialog; }
    Q_DISABLE_COPY_MOVE(Desk)

    template <class T>
    T* Find(const char* name) const
    {
        T* control = m_pDialog->findChild<T*>(name);
        if (!control)
            qFatal("no control %s", name);
        return control;
    }
    QComboBox* List(const char* name) const { return Find<QComboBox>(name); }
    QDoubleSpinBox* Box(const char* name) const { return Find<QDoubleSpinBox>(name); }
    QAbstractButton* Button(const char* name) const { return Find<QAbstractButton>(name); }
    QStringList Texts(const char* name) const
    {
        QStringList texts;
        for (int row = 0; row < List(name)->count(); ++row)
            texts.append(List(name)->itemText(row));
        return texts;
    }
    QList<int> Data(const char* name) const
    {
        QList<int> data;
        for (int row = 0; row < List(name)->count(); ++row)
            data.append(List(name)->itemData(row).toInt());
        return data;
    }
    void Choose(const char* name, int data) const { List(name)->setCurrentIndex(List(name)->findData(data)); }
    void SetMargins(double left, double right, double top, double bottom) const
    {
        Box("m_pLeftMargin")->setValue(left);
        Box("m_pRightMargin")->setValue(right);
        Box("m_pTopMargin")->setValue(top);
        Box("m_pBottomMargin")->setValue(bottom);
    }
    // Shows the dialog and clicks "Print".
    void Press() const
    {
        m_pDialog->show();
        m_pDialog->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_pDialog));
        QVERIFY(ModalDriver::Press(m_pDialog, "Print"));
        QVERIFY(!m_pDialog->isEnabled());
        QVERIFY(QGuiApplication::overrideCursor());
        QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    }
    // Prints, and sees that the dialog closes as it always does.
    void Print() const
    {
        QSignalSpy finished(m_pDialog, &Dialog::Finished);
        Press();
        if (QTest::currentTestFailed())
            return;
        QTRY_COMPARE_WITH_TIMEOUT(finished.count(), 1, Patience);
        QCOMPARE(finished.first().first().toInt(), int(Dialog::ResultAccepted));
        QVERIFY(!m_pDialog->isVisible());
        QVERIFY(!QGuiApplication::overrideCursor());
    }
    Dialog* operator->() const { return m_pDialog; }
    void Delete() { delete m_pDialog; }

private:
    QPointer<Dialog> m_pDialog = new Dialog(nullptr);
};

// The toolkit warns of a printer that it cannot open.
void AnnounceNoPrinter()
{
    for (const char* text :
         {"QPainter::begin\\(\\): Returned false", "setClipRect: Painter not active",
          "setWorldTransform: Painter not active", "setRenderHint: Painter must be active"})
        AnnounceWarning(QRegularExpression(text));
}

} // namespace

class tst_RealPrinters : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void queuesAreListedAndTheDefaultIsChosen();
    void anotherDefaultIsChosen();
    void listsAreThoseOfTheQueue_data();
    void listsAreThoseOfTheQueue();
    void resolutionIsKeptByValue();
    void pageIsKeptById();
    void pageThatIsGoneBecomesTheDefaultOfThePrinter();
    void firstOfEqualResolutionsIsTaken();
    void firstOfEqualPagesIsTaken();
    void firstOfSeveralCustomPagesIsTaken();
    void pageWithoutANameIsACustomPage();
    void rawQueueHasEmptyLists();
    void printingOnARawQueueSendsNothing();
    void threeCopiesAreThreePages();
    void sheetHasTheChosenSize_data();
    void sheetHasTheChosenSize();
    void pictureIsWhereTheBoxesSay_data();
    void pictureIsWhereTheBoxesSay();
    void colorBoxDecides_data();
    void colorBoxDecides();
    void choiceOfThePrinterIsThatOfTheJob_data();
    void choiceOfThePrinterIsThatOfTheJob();
    void runningDialogEndsAccepted();
    void twoDialogsPrintInARow();
    void noRoomSendsNothing();
    void dialogMayGoAfterTheJob();
    void dialogMayGoDuringTheJob();
    void disabledQueueKeepsTheJob();
    void rejectingQueueGetsNoJob();
    void failingBackendStopsTheQueue();
    void jobOfAVanishedQueueGoesToTheDefault();
    void missingTemporaryFolderSendsNothing();
    void fullTemporaryFolderHoldsUpNothing_data();
    void fullTemporaryFolderHoldsUpNothing();
    void windowIsNotHeldUpByAJob();
    // The last: there is no server behind it.
    void stoppedServerGetsNoJob();
};

void tst_RealPrinters::initTestCase()
{
    QVERIFY2(qEnvironmentVariableIsSet("NORVANE_PRINT_FOLDER"), "Run it through with-print-server.sh.");
    // The words of the programs that are asked below.
    qputenv("LC_ALL", "C.UTF-8");
}

void tst_RealPrinters::cleanup()
{
    QFile::remove(PrintFolder().filePath("refuse"));
    while (QGuiApplication::overrideCursor())
        QGuiApplication::restoreOverrideCursor();
}

void tst_RealPrinters::queuesAreListedAndTheDefaultIsChosen()
{
    const Dialog dialog(nullptr);
    const auto* list = dialog.findChild<QComboBox*>("m_pPrinter");
    QStringList names;
    for (int row = 0; row < list->count(); ++row)
        names.append(list->itemText(row));
    QCOMPARE(names, QStringList({"Colour", "Grey", "Raw", "Repeating"}));
    QCOMPARE(list->currentText(), QString("Colour"));
    QCOMPARE(Dialog::GetPrintersCount(), 4);
}

void tst_RealPrinters::anotherDefaultIsChosen()
{
    Run("lpadmin", {"-d", "Grey"});
    const Dialog dialog(nullptr);
    Run("lpadmin", {"-d", "Colour"});
    QCOMPARE(dialog.findChild<QComboBox*>("m_pPrinter")->currentText(), QString("Grey"));
    QCOMPARE(dialog.findChild<QComboBox*>("m_pDPI")->currentText(), QString("300"));
    QCOMPARE(dialog.findChild<QComboBox*>("m_pPageSize")->currentData().toInt(), int(QPageSize::Letter));
}

void tst_RealPrinters::listsAreThoseOfTheQueue_data()
{
    QTest::addColumn<QStringList>("resolutions");
    QTest::addColumn<QList<int>>("pages");
    QTest::addColumn<QStringList>("names");
    QTest::newRow("Colour") << QStringList({"600", "150", "300", "600"})
                            << QList<int>({QPageSize::A4, QPageSize::Letter, QPageSize::A5})
                            << QStringList({"A4", "US Letter", "A5"});
    QTest::newRow("Grey") << QStringList({"300", "1200"}) << QList<int>({QPageSize::Letter, QPageSize::Legal})
                          << QStringList({"US Letter", "US Legal"});
    QTest::newRow("Repeating")
        << QStringList({"300", "600", "300"})
        << QList<int>({QPageSize::A4, QPageSize::A4, QPageSize::Custom, QPageSize::Custom, QPageSize::Letter})
        << QStringList({"A4", "A4 Borderless", "Label 30 x 60 mm", "Label 50 x 90 mm", "US Letter"});
    QTest::newRow("Raw") << QStringList() << QList<int>() << QStringList();
}

void tst_RealPrinters::listsAreThoseOfTheQueue()
{
    QFETCH(QStringList, resolutions);
    QFETCH(QList<int>, pages);
    QFETCH(QStringList, names);
    const Desk desk(QTest::currentDataTag());
    QCOMPARE(desk.Texts("m_pDPI"), resolutions);
    QCOMPARE(desk.Data("m_pPageSize"), pages);
    QCOMPARE(desk.Texts("m_pPageSize"), names);
    for (int row = 0; row < resolutions.size(); ++row)
        QCOMPARE(desk.List("m_pDPI")->itemData(row).toInt(), resolutions.at(row).toInt());
}

// The same value stands in another row.
void tst_RealPrinters::resolutionIsKeptByValue()
{
    const Desk desk;
    desk.List("m_pDPI")->setCurrentIndex(2);
    desk.List("m_pPrinter")->setCurrentText("Grey");
    QCOMPARE(desk.List("m_pDPI")->currentIndex(), 0);
    QCOMPARE(desk.List("m_pDPI")->currentData().toInt(), 300);
    desk.List("m_pPrinter")->setCurrentText("Colour");
    QCOMPARE(desk.List("m_pDPI")->currentIndex(), 2);
    desk.List("m_pDPI")->setCurrentIndex(1);
    desk.List("m_pPrinter")->setCurrentText("Grey");
    QCOMPARE(desk.List("m_pDPI")->currentIndex(), 0);
}

void tst_RealPrinters::pageIsKeptById()
{
    const Desk desk;
    desk.List("m_pPageSize")->setCurrentIndex(1);
    desk.List("m_pPrinter")->setCurrentText("Repeating");
    QCOMPARE(desk.List("m_pPageSize")->currentIndex(), 4);
    desk.List("m_pPrinter")->setCurrentText("Grey");
    QCOMPARE(desk.List("m_pPageSize")->currentIndex(), 0);
    QVERIFY(desk.Box("m_pPageWidth")->isReadOnly());
    QCOMPARE(desk.Box("m_pPageWidth")->value(), 215.9);
    QCOMPARE(desk.Box("m_pPageHeight")->value(), 279.4);
}

void tst_RealPrinters::pageThatIsGoneBecomesTheDefaultOfThePrinter()
{
    const Queue queue("Small", "colour", {"-o", "PageSize=A5"});
    const Desk desk("Grey");
    desk.List("m_pPageSize")->setCurrentIndex(1);
    desk.List("m_pPrinter")->setCurrentText("Small");
    QCOMPARE(desk.List("m_pPageSize")->currentIndex(), 2);
    QCOMPARE(desk.List("m_pPageSize")->currentData().toInt(), int(QPageSize::A5));
    QCOMPARE(desk.Box("m_pPageWidth")->value(), 148.0);
}

void tst_RealPrinters::firstOfEqualResolutionsIsTaken()
{
    const Queue queue("Twin", "repeating");
    const Desk desk("Repeating");
    desk.List("m_pDPI")->setCurrentIndex(2);
    desk.List("m_pPrinter")->setCurrentText("Twin");
    QCOMPARE(desk.List("m_pDPI")->currentIndex(), 0);
    desk.List("m_pDPI")->setCurrentIndex(1);
    desk.List("m_pPrinter")->setCurrentText("Colour");
    QCOMPARE(desk.List("m_pDPI")->currentIndex(), 0);
    QCOMPARE(desk.List("m_pDPI")->currentData().toInt(), 600);
}

void tst_RealPrinters::firstOfEqualPagesIsTaken()
{
    const Queue queue("Twin", "repeating");
    const Desk desk("Repeating");
    desk.List("m_pPageSize")->setCurrentIndex(1);
    desk.List("m_pPrinter")->setCurrentText("Twin");
    QCOMPARE(desk.List("m_pPageSize")->currentIndex(), 0);
    QCOMPARE(desk.List("m_pPageSize")->currentText(), QString("A4"));
}

void tst_RealPrinters::firstOfSeveralCustomPagesIsTaken()
{
    const Queue queue("Twin", "repeating");
    const Desk desk("Repeating");
    desk.List("m_pPageSize")->setCurrentIndex(3);
    const QByteArray settings = desk->SaveSettings();
    desk.List("m_pPrinter")->setCurrentText("Twin");
    QCOMPARE(desk.List("m_pPageSize")->currentIndex(), 2);
    desk.List("m_pPageSize")->setCurrentIndex(0);
    desk->RestoreSettings(settings);
    QCOMPARE(desk.List("m_pPageSize")->currentIndex(), 2);
    QCOMPARE(desk.List("m_pPageSize")->currentText(), QString("Label 30 x 60 mm"));
}

// The driver's own size of such a page is not taken over.
void tst_RealPrinters::pageWithoutANameIsACustomPage()
{
    const Desk desk("Repeating");
    for (const int row : {2, 3})
    {
        desk.List("m_pPageSize")->setCurrentIndex(row);
        QVERIFY(!desk.Box("m_pPageWidth")->isReadOnly());
        QVERIFY(!desk.Box("m_pPageHeight")->isReadOnly());
        QCOMPARE(desk.Box("m_pPageWidth")->value(), 210.0);
        QCOMPARE(desk.Box("m_pPageHeight")->value(), 297.0);
        QCOMPARE(desk.Box("m_pPageWidth")->maximum(), 1000.0);
        QCOMPARE(desk.Box("m_pPageHeight")->maximum(), 1000.0);
    }
}

void tst_RealPrinters::rawQueueHasEmptyLists()
{
    const Desk desk;
    desk.List("m_pDPI")->setCurrentIndex(2);
    desk.List("m_pPageSize")->setCurrentIndex(2);
    desk.List("m_pPrinter")->setCurrentText("Raw");
    QCOMPARE(desk.List("m_pDPI")->count(), 0);
    QCOMPARE(desk.List("m_pPageSize")->count(), 0);
    // Nothing to remember.
    desk.List("m_pPrinter")->setCurrentText("Colour");
    QCOMPARE(desk.List("m_pDPI")->currentIndex(), 0);
    QCOMPARE(desk.List("m_pPageSize")->currentData().toInt(), int(QPageSize::A4));
}

// Without a resolution there is no room on the page.
void tst_RealPrinters::printingOnARawQueueSendsNothing()
{
    const Arrivals arrivals;
    Desk("Raw").Print();
    Desk().Print();
    QTRY_COMPARE_WITH_TIMEOUT(arrivals.Count(), 1, Patience);
    QVERIFY(Run("lpstat", {"-W", "all", "-o", "Raw"}).isEmpty());
}

void tst_RealPrinters::threeCopiesAreThreePages()
{
    const Desk desk;
    desk.Choose("m_pDPI", 150);
    desk.Find<QSpinBox>("m_pCopiesNumber")->setValue(3);
    const Arrivals arrivals;
    desk.Print();
    QTRY_COMPARE_WITH_TIMEOUT(arrivals.Count(), 1, Patience);
    const Document document = arrivals.Documents().first();
    QCOMPARE(document.Pages(), 3);
    // The pages are all that there is: the queue is not asked for copies as well.
    QCOMPARE(document.Arguments().at(3), QString("1"));
    const QImage page = document.Page(1, 150);
    QVERIFY(!Printed(page).isEmpty());
    QCOMPARE(document.Page(2, 150), page);
    QCOMPARE(document.Page(3, 150), page);
}

void tst_RealPrinters::sheetHasTheChosenSize_data()
{
    QTest::addColumn<QString>("printer");
    QTest::addColumn<int>("page");
    QTest::addColumn<int>("orientation");
    QTest::addColumn<QSize>("points");
    QTest::newRow("A4") << "Colour" << int(QPageSize::A4) << 0 << QSize(595, 842);
    QTest::newRow("A4 landscape") << "Colour" << int(QPageSize::A4) << 1 << QSize(842, 595);
    QTest::newRow("Letter") << "Colour" << int(QPageSize::Letter) << 0 << QSize(612, 792);
    QTest::newRow("A5") << "Colour" << int(QPageSize::A5) << 0 << QSize(420, 595);
    QTest::newRow("Legal") << "Grey" << int(QPageSize::Legal) << 0 << QSize(612, 1008);
    QTest::newRow("custom") << "Repeating" << int(QPageSize::Custom) << 0 << QSize(227, 340);
}

void tst_RealPrinters::sheetHasTheChosenSize()
{
    QFETCH(QString, printer);
    QFETCH(int, page);
    QFETCH(int, orientation);
    QFETCH(QSize, points);
    const Desk desk(printer);
    desk.Choose("m_pPageSize", page);
    desk.List("m_pOrientation")->setCurrentIndex(orientation);
    if (page == QPageSize::Custom)
    {
        desk.Box("m_pPageWidth")->setValue(80);
        desk.Box("m_pPageHeight")->setValue(120);
    }
    const Arrivals arrivals;
    desk.Print();
    QTRY_COMPARE_WITH_TIMEOUT(arrivals.Count(), 1, Patience);
    QCOMPARE(arrivals.Documents().first().Pages(), 1);
    QCOMPARE(arrivals.Documents().first().Sheet(), points);
}

void tst_RealPrinters::pictureIsWhereTheBoxesSay_data()
{
    QTest::addColumn<int>("resolution");
    QTest::addColumn<int>("orientation");
    QTest::addColumn<int>("place");
    QTest::addColumn<int>("rotation");
    QTest::addColumn<QString>("scaling");
    QTest::addColumn<QPointF>("offset");
    QTest::addColumn<QRectF>("box");
    QTest::addColumn<QString>("quarters");
    // In points: the sheet is 595 by 842, its room 60 to 565 across and 90 to 797 down; in landscape 60 to
    // 812 and 90 to 550. The picture is 288 by 192 at 150 dots an inch, half of it at 300.
    const QPointF none;
    const QString plain = "m_pDontScale";
    const QString fitted = "m_pFitToPage";
    const QString custom = "m_pCustom";
    QTest::newRow("top left") << 150 << 0 << 1 << 0 << plain << none << QRectF(60, 90, 288, 192) << "RGBY";
    QTest::newRow("300 dpi") << 300 << 0 << 1 << 0 << plain << none << QRectF(60, 90, 144, 96) << "RGBY";
    QTest::newRow("centre") << 150 << 0 << 5 << 0 << plain << none << QRectF(168.5, 347.5, 288, 192)
                            << "RGBY";
    QTest::newRow("bottom right") << 150 << 0 << 9 << 0 << plain << none << QRectF(277, 605, 288, 192)
                                  << "RGBY";
    QTest::newRow("landscape") << 150 << 1 << 1 << 0 << plain << none << QRectF(60, 90, 288, 192) << "RGBY";
    QTest::newRow("landscape, bottom right")
        << 150 << 1 << 9 << 0 << plain << none << QRectF(524, 358, 288, 192) << "RGBY";
    QTest::newRow("moved") << 150 << 0 << 1 << 0 << plain << QPointF(40, 60) << QRectF(100, 150, 288, 192)
                           << "RGBY";
    QTest::newRow("moved back") << 150 << 0 << 5 << 0 << plain << QPointF(-40, -60)
                                << QRectF(128.5, 287.5, 288, 192) << "RGBY";
    QTest::newRow("cut") << 150 << 0 << 1 << 0 << plain << QPointF(400, 0) << QRectF(460, 90, 105, 192)
                         << "RRBB";
    QTest::newRow("auto") << 150 << 0 << 1 << 1 << plain << none << QRectF(60, 90, 192, 288) << "BRYG";
    QTest::newRow("clockwise") << 150 << 0 << 1 << 2 << plain << none << QRectF(60, 90, 192, 288) << "BRYG";
    QTest::newRow("counter-clockwise")
        << 150 << 0 << 1 << 3 << plain << none << QRectF(60, 90, 192, 288) << "GYRB";
    QTest::newRow("upside down") << 150 << 0 << 1 << 4 << plain << none << QRectF(60, 90, 288, 192) << "YBGR";
    QTest::newRow("fitted") << 150 << 0 << 5 << 0 << fitted << none
                            << QRectF(60, 443.5 - 505 / 3.0, 505, 505 / 1.5) << "RGBY";
    QTest::newRow("fitted, turned") << 150 << 0 << 5 << 1 << fitted << none
                                    << QRectF(312.5 - 707 / 3.0, 90, 707 / 1.5, 707) << "BRYG";
    QTest::newRow("50 by 300 %") << 150 << 0 << 1 << 0 << custom << none << QRectF(60, 90, 144, 576)
                                 << "RGBY";
}

// Everything lies off its place by what the printer cannot print on: 12 points on the left, 36 at the top.
void tst_RealPrinters::pictureIsWhereTheBoxesSay()
{
    QFETCH(int, resolution);
    QFETCH(int, orientation);
    QFETCH(int, place);
    QFETCH(int, rotation);
    QFETCH(QString, scaling);
    QFETCH(QPointF, offset);
    QFETCH(QRectF, box);
    QFETCH(QString, quarters);
    const Desk desk;
    desk.Choose("m_pDPI", resolution);
    desk.List("m_pUnits")->setCurrentIndex(Dialog::Point);
    desk.List("m_pOrientation")->setCurrentIndex(orientation);
    desk.SetMargins(60, 30, 90, 45);
    desk.Find<Place>("m_pAlignment")->SetState(Place::ControlState(place));
    desk.List("m_pRotate")->setCurrentIndex(rotation);
    desk.Button(scaling.toLatin1().constData())->setChecked(true);
    desk.Button("m_pCustomKeepRatio")->setChecked(false);
    desk.Box("m_pCustomSX")->setValue(50);
    desk.Box("m_pCustomSY")->setValue(300);
    desk.Box("m_pXOffset")->setValue(offset.x());
    desk.Box("m_pYOffset")->setValue(offset.y());
    const Arrivals arrivals;
    desk.Print();
    QTRY_COMPARE_WITH_TIMEOUT(arrivals.Count(), 1, Patience);

    // Twice as fine as the printer, since half a pixel is whole in a picture of the page.
    const QImage page = arrivals.Documents().first().Page(1, 2 * resolution);
    const QRect printed = Printed(page);
    const double scale = resolution / 72.0;
    const QRectF expected = box.translated(12, 36);
    const QVector<double> off = {printed.left() / 2.0 - expected.left() * scale,
                                 printed.top() / 2.0 - expected.top() * scale,
                                 (printed.right() + 1) / 2.0 - expected.right() * scale,
                                 (printed.bottom() + 1) / 2.0 - expected.bottom() * scale};
    for (int side = 0; side < off.size(); ++side)
        QVERIFY2(qAbs(off.at(side)) <= 1.0,
                 qPrintable(QString("side %1 is off by %2 pixels").arg(side).arg(off.at(side))));
    QCOMPARE(Quarters(page, printed), quarters);
}

void tst_RealPrinters::colorBoxDecides_data()
{
    QTest::addColumn<QString>("printer");
    QTest::addColumn<bool>("color");
    QTest::newRow("colour, on") << "Colour" << true;
    QTest::newRow("colour, off") << "Colour" << false;
    QTest::newRow("grey, on") << "Grey" << true;
    QTest::newRow("grey, off") << "Grey" << false;
}

void tst_RealPrinters::colorBoxDecides()
{
    QFETCH(QString, printer);
    QFETCH(bool, color);
    const Desk desk(printer);
    desk.Choose("m_pDPI", 300);
    desk.Button("m_pColor")->setChecked(color);
    const Arrivals arrivals;
    desk.Print();
    QTRY_COMPARE_WITH_TIMEOUT(arrivals.Count(), 1, Patience);
    const QImage page = arrivals.Documents().first().Page(1, 72);
    QVERIFY(!Printed(page).isEmpty());
    QCOMPARE(IsGrey(page), !color);
}

void tst_RealPrinters::choiceOfThePrinterIsThatOfTheJob_data()
{
    QTest::addColumn<QString>("printer");
    for (const char* printer : {"Colour", "Grey", "Repeating"})
        QTest::newRow(printer) << printer;
}

void tst_RealPrinters::choiceOfThePrinterIsThatOfTheJob()
{
    QFETCH(QString, printer);
    const Arrivals arrivals;
    Desk(printer).Print();
    QTRY_COMPARE_WITH_TIMEOUT(arrivals.Count(), 1, Patience);
    const QString job = printer + '-' + arrivals.Documents().first().Job() + ' ';
    QVERIFY(Run("lpstat", {"-W", "all", "-o", printer}).contains(job));
}

void tst_RealPrinters::runningDialogEndsAccepted()
{
    const Desk desk;
    const Arrivals arrivals;
    ModalDriver driver([](QWidget* window) { ModalDriver::Press(window, "Print"); }, Patience);
    QCOMPARE(desk->Exec(), int(Dialog::ResultAccepted));
    QVERIFY(driver.Finished());
    QVERIFY(!QGuiApplication::overrideCursor());
    QTRY_COMPARE_WITH_TIMEOUT(arrivals.Count(), 1, Patience);
}

void tst_RealPrinters::twoDialogsPrintInARow()
{
    const Arrivals arrivals;
    {
        const Desk desk;
        desk.Choose("m_pPageSize", QPageSize::A5);
        desk.Find<QSpinBox>("m_pCopiesNumber")->setValue(2);
        desk.Print();
    }
    Desk().Print();
    QTRY_COMPARE_WITH_TIMEOUT(arrivals.Count(), 2, Patience);
    const QList<Document> documents = arrivals.Documents();
    QCOMPARE(documents.at(0).Pages(), 2);
    QCOMPARE(documents.at(0).Sheet(), QSize(420, 595));
    QCOMPARE(documents.at(1).Pages(), 1);
    QCOMPARE(documents.at(1).Sheet(), QSize(595, 842));
}

void tst_RealPrinters::noRoomSendsNothing()
{
    const Arrivals arrivals;
    {
        const Desk desk("Grey");
        desk.SetMargins(150, 150, 0, 0);
        desk.Print();
    }
    // The same queue takes jobs one after the other.
    const Desk desk("Grey");
    desk.Choose("m_pPageSize", QPageSize::Legal);
    desk.Print();
    QTRY_COMPARE_WITH_TIMEOUT(arrivals.Count(), 1, Patience);
    QCOMPARE(arrivals.Documents().first().Sheet(), QSize(612, 1008));
}

void tst_RealPrinters::dialogMayGoAfterTheJob()
{
    const Arrivals arrivals;
    Desk desk;
    desk.Print();
    desk.Delete();
    QTRY_COMPARE_WITH_TIMEOUT(arrivals.Count(), 1, Patience);
    QVERIFY(!Printed(arrivals.Documents().first().Page(1, 72)).isEmpty());
}

void tst_RealPrinters::dialogMayGoDuringTheJob()
{
    const Arrivals arrivals;
    Desk desk;
    desk.Press();
    desk.Delete();
    QVERIFY(!QGuiApplication::overrideCursor());
    QTRY_COMPARE_WITH_TIMEOUT(arrivals.Count(), 1, Patience);
    QVERIFY(QThreadPool::globalInstance()->waitForDone(Patience));
    QVERIFY(!Printed(arrivals.Documents().first().Page(1, 72)).isEmpty());
}

void tst_RealPrinters::disabledQueueKeepsTheJob()
{
    const Queue queue("Disabled");
    Run("cupsdisable", {"Disabled"});
    const Arrivals arrivals;
    Desk("Disabled").Print();
    QVERIFY(Run("lpstat", {"-W", "not-completed", "-o", "Disabled"}).contains("Disabled-"));
    QCOMPARE(arrivals.Count(), 0);
    Run("cupsenable", {"Disabled"});
    QTRY_COMPARE_WITH_TIMEOUT(arrivals.Count(), 1, Patience);
}

void tst_RealPrinters::rejectingQueueGetsNoJob()
{
    const Queue queue("Rejecting");
    Run("cupsreject", {"Rejecting"});
    const Arrivals arrivals;
    Desk("Rejecting").Print();
    QVERIFY(Run("lpstat", {"-W", "all", "-o", "Rejecting"}).isEmpty());
    QCOMPARE(arrivals.Count(), 0);
    Run("cupsaccept", {"Rejecting"});
    Desk("Rejecting").Print();
    QTRY_COMPARE_WITH_TIMEOUT(arrivals.Count(), 1, Patience);
}

void tst_RealPrinters::failingBackendStopsTheQueue()
{
    const Queue queue("Failing", "colour", {"-o", "printer-error-policy=stop-printer"});
    QFile refuse(PrintFolder().filePath("refuse"));
    QVERIFY(refuse.open(QIODevice::WriteOnly));
    refuse.close();
    const Arrivals arrivals;
    Desk("Failing").Print();
    QTRY_VERIFY_WITH_TIMEOUT(Run("lpstat", {"-p", "Failing"}).contains("disabled"), Patience);
    QCOMPARE(arrivals.Count(), 0);
    QVERIFY(refuse.remove());
    Run("cupsenable", {"Failing"});
    QTRY_COMPARE_WITH_TIMEOUT(arrivals.Count(), 1, Patience);
}

// Where the toolkit knows no such printer, it takes the default.
void tst_RealPrinters::jobOfAVanishedQueueGoesToTheDefault()
{
    Queue queue("Vanishing");
    const Arrivals arrivals;
    const Desk desk("Vanishing");
    queue.Vanish();
    desk.Print();
    QTRY_COMPARE_WITH_TIMEOUT(arrivals.Count(), 1, Patience);
    const QString job = "Colour-" + arrivals.Documents().first().Job() + ' ';
    QVERIFY(Run("lpstat", {"-W", "all", "-o", "Colour"}).contains(job));
}

// The toolkit has nowhere to write the document.
void tst_RealPrinters::missingTemporaryFolderSendsNothing()
{
    const QByteArray before = qgetenv("TMPDIR");
    const Arrivals arrivals;
    const Desk desk;
    qputenv("TMPDIR", "/nonexistent");
    AnnounceWarning(QRegularExpression("QPdfPrinter: Could not open temporary file to print"));
    AnnounceNoPrinter();
    desk.Print();
    if (before.isNull())
        qunsetenv("TMPDIR");
    else
        qputenv("TMPDIR", before);
    QCOMPARE(arrivals.Count(), 0);
    Desk().Print();
    QTRY_COMPARE_WITH_TIMEOUT(arrivals.Count(), 1, Patience);
}

void tst_RealPrinters::fullTemporaryFolderHoldsUpNothing_data()
{
    QTest::addColumn<int>("bytes");
    QTest::addColumn<int>("arrived");
    QTest::newRow("from the first byte") << 0 << 0;
    QTest::newRow("in the middle of the picture") << 20000 << 1;
}

// The toolkit does not notice, so what got through of the document goes out.
void tst_RealPrinters::fullTemporaryFolderHoldsUpNothing()
{
    QFETCH(int, bytes);
    QFETCH(int, arrived);
    const Arrivals arrivals;
    {
        const Desk desk;
        desk->SetSource(Noise(600, 400));
        const FullDisk disk(bytes);
        desk.Print();
    }
    Desk("Grey").Print();
    QTRY_COMPARE_WITH_TIMEOUT(arrivals.Count(), arrived + 1, Patience);
    QVERIFY(!Printed(arrivals.Documents().last().Page(1, 72)).isEmpty());
}

// By the longest time between two turns of the event loop, from the click until the dialog is closed.
void tst_RealPrinters::windowIsNotHeldUpByAJob()
{
    const Desk desk;
    desk->SetSource(Noise(4000, 3000));
    desk->show();
    desk->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(desk.operator->()));
    QSignalSpy finished(desk.operator->(), &Dialog::Finished);
    qint64 longest = 0;
    QElapsedTimer whole;
    QElapsedTimer since;
    QTimer ticks;
    connect(&ticks, &QTimer::timeout, this, [&] { longest = qMax(longest, since.restart()); });
    ticks.start(1);
    whole.start();
    since.start();
    QVERIFY(ModalDriver::Press(desk.operator->(), "Print"));
    QTRY_COMPARE_WITH_TIMEOUT(finished.count(), 1, Patience);
    QVERIFY2(longest < whole.elapsed() / 2,
             qPrintable(QString("%1 of %2 ms").arg(longest).arg(whole.elapsed())));
}

void tst_RealPrinters::stoppedServerGetsNoJob()
{
    const Desk desk;
    const Arrivals arrivals;
    QFile pid(PrintFolder().filePath("server.pid"));
    QVERIFY(pid.open(QIODevice::ReadOnly));
    QCOMPARE(::kill(pid.readAll().trimmed().toInt(), SIGTERM), 0);
    QTRY_COMPARE_WITH_TIMEOUT(Dialog::GetPrintersCount(), 0, Patience);
    AnnounceNoPrinter();
    desk.Print();
    QCOMPARE(arrivals.Count(), 0);
    const Desk without;
    QCOMPARE(without.List("m_pPrinter")->count(), 0);
    QCOMPARE(without.List("m_pDPI")->count(), 0);
}

NV_TEST_MAIN(tst_RealPrinters)

#include "tst_RealPrinters.moc"
