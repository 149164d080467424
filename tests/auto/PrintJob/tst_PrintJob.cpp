// A print job: how the printer is set up, what is drawn on each page, what a PDF file of it holds, and the
// functions about units and sheets that stand beside it.

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QThread>
#include <QtConcurrent>
#include <QtTest>

#include "NVPrintPreviewDialog.h"
#include "RecordingPrinter.h"
#include "TestMain.h"

using Dialog = NVPrintPreviewDialog;

namespace
{

QImage Picture(QImage::Format format = QImage::Format_RGB32)
{
    QImage image(120, 80, format);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.setPixelColor(x, y, QColor(x * 2, y * 3, (x * y) % 256));
    return image;
}

PrintJob A5Job()
{
    PrintJob job;
    job.image = Picture();
    job.pageSize = QPageSize(QPageSize::A5);
    job.transform = QTransform(2, 0, 0, 3, 40, 50);
    job.clipRect = QRectF(30, 40, 500, 600);
    job.resolution = 150;
    return job;
}

// A PDF file that the toolkit wrote: its objects are plain text, its streams are not looked into.
class PdfFile
{
public:
    explicit PdfFile(const PrintJob& job)
    {
        const QString path = m_folder.filePath("job.pdf");
        {
            QPrinter printer(QPrinter::ScreenResolution);
            printer.setOutputFormat(QPrinter::PdfFormat);
            printer.setOutputFileName(path);
            PrintPages(printer, job);
        }
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            qFatal("no file %s", qPrintable(path));
        const QByteArray bytes = file.readAll();
        m_text = QString(QLatin1String(bytes.constData(), bytes.size()));
    }
    int Count(const QString& pattern) const { return m_text.count(QRegularExpression(pattern)); }
    int Pages() const { return Count("/Type /Page\\b"); }
    int Images() const { return Count("/Subtype /Image"); }
    // In points, of the first page.
    QSizeF Sheet() const
    {
        const auto match = QRegularExpression("/MediaBox \\[0 0 ([0-9.]+) ([0-9.]+)\\]").match(m_text);
        return QSizeF(match.captured(1).toDouble(), match.captured(2).toDouble());
    }
    // The colour space of the first image.
    QString ColorSpace() const
    {
        return QRegularExpression("/Subtype /Image.*?/ColorSpace /(\\w+)",
                                  QRegularExpression::DotMatchesEverythingOption)
            .match(m_text)
            .captured(1);
    }

private:
    QTemporaryDir m_folder;
    QString m_text;
};

} // namespace

class tst_PrintJob : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void jobStartsAsOneColorCopy();
    void printerIsSetUpInOrder();
    void landscapeAndGreyAreSetUp();
    void eachCopyIsAPage_data();
    void eachCopyIsAPage();
    void pagesAreDrawnAlike();
    void emptyClipSendsNothing_data();
    void emptyClipSendsNothing();
    void withoutAPrinterNothingIsReported();
    void pdfHasAPageForEachCopy_data();
    void pdfHasAPageForEachCopy();
    void pdfPageHasTheSizeOfTheJob_data();
    void pdfPageHasTheSizeOfTheJob();
    void pdfIsGreyWithoutColor();
    void pdfIsTheSameFromAThread();
    void pictureIsNotConverted();
    void pageLayoutIsTheWholeSheet_data();
    void pageLayoutIsTheWholeSheet();
    void unitsHaveTheSameNumber_data();
    void unitsHaveTheSameNumber();
};

// No test may reach a printer of the machine that it runs on.
void tst_PrintJob::initTestCase()
{
    qputenv("CUPS_SERVER", "/nonexistent/cups.sock");
    QCOMPARE(Dialog::GetPrintersCount(), 0);
}

void tst_PrintJob::jobStartsAsOneColorCopy()
{
    const PrintJob job;
    QCOMPARE(job.copies, 1);
    QVERIFY(job.color);
    QCOMPARE(job.orientation, QPrinter::Portrait);
    QVERIFY(job.image.isNull());
    QVERIFY(job.printer.isNull());
    QVERIFY(job.clipRect.isNull());
    QVERIFY(job.transform.isIdentity());
    QCOMPARE(job.resolution, 0);
}

void tst_PrintJob::printerIsSetUpInOrder()
{
    RecordingPrinter printer;
    PrintPages(printer, A5Job());
    const RecordingEngine& engine = printer.engine;
    QCOMPARE(engine.keys,
             QList<QPrintEngine::PrintEnginePropertyKey>(
                 {QPrintEngine::PPK_Orientation, QPrintEngine::PPK_QPageSize, QPrintEngine::PPK_Resolution,
                  QPrintEngine::PPK_ColorMode}));
    QCOMPARE(engine.valueOf(QPrintEngine::PPK_Orientation).toInt(), int(QPageLayout::Portrait));
    QCOMPARE(engine.valueOf(QPrintEngine::PPK_QPageSize).value<QPageSize>(), QPageSize(QPageSize::A5));
    QCOMPARE(engine.valueOf(QPrintEngine::PPK_Resolution).toInt(), 150);
    QCOMPARE(engine.valueOf(QPrintEngine::PPK_ColorMode).toInt(), int(QPrinter::Color));
    QCOMPARE(engine.begun, 1);
    QCOMPARE(engine.ended, 1);
}

void tst_PrintJob::landscapeAndGreyAreSetUp()
{
    PrintJob job = A5Job();
    job.orientation = QPrinter::Landscape;
    job.color = false;
    RecordingPrinter printer;
    PrintPages(printer, job);
    QCOMPARE(printer.engine.valueOf(QPrintEngine::PPK_Orientation).toInt(), int(QPageLayout::Landscape));
    QCOMPARE(printer.engine.valueOf(QPrintEngine::PPK_ColorMode).toInt(), int(QPrinter::GrayScale));
}

void tst_PrintJob::eachCopyIsAPage_data()
{
    QTest::addColumn<int>("copies");
    QTest::addColumn<int>("images");
    QTest::addColumn<int>("newPages");
    QTest::newRow("one") << 1 << 1 << 0;
    QTest::newRow("three") << 3 << 3 << 2;
    QTest::newRow("255") << 255 << 255 << 254;
    QTest::newRow("none") << 0 << 0 << 0;
    QTest::newRow("less than none") << -1 << 0 << 0;
}

void tst_PrintJob::eachCopyIsAPage()
{
    QFETCH(int, copies);
    QFETCH(int, images);
    QFETCH(int, newPages);
    PrintJob job = A5Job();
    job.copies = copies;
    RecordingPrinter printer;
    PrintPages(printer, job);
    QCOMPARE(printer.engine.images.size(), images);
    QCOMPARE(printer.engine.pages, newPages);
    for (int i = 0; i < images; ++i)
        QCOMPARE(printer.engine.images.at(i).page, i);
}

void tst_PrintJob::pagesAreDrawnAlike()
{
    PrintJob job = A5Job();
    job.copies = 3;
    RecordingPrinter printer;
    PrintPages(printer, job);
    QCOMPARE(printer.engine.images.size(), 3);
    for (const RecordedImage& drawn : qAsConst(printer.engine.images))
    {
        QCOMPARE(drawn.key, job.image.cacheKey());
        QCOMPARE(drawn.at, QPointF(0, 0));
        QCOMPARE(drawn.transform, job.transform);
        QCOMPARE(drawn.clip, job.clipRect);
        QVERIFY(drawn.smooth);
    }
    QCOMPARE(printer.engine.fills.size(), 0);
    QCOMPARE(printer.engine.pixmaps, 0);
}

void tst_PrintJob::emptyClipSendsNothing_data()
{
    QTest::addColumn<QRectF>("clip");
    QTest::newRow("all zero") << QRectF();
    QTest::newRow("no width") << QRectF(10, 10, 0, 100);
    QTest::newRow("no height") << QRectF(10, 10, 100, 0);
    QTest::newRow("width below 0") << QRectF(10, 10, -5, 100);
    QTest::newRow("height below 0") << QRectF(10, 10, 100, -5);
}

// No printer is opened, which without one would give a warning.
void tst_PrintJob::emptyClipSendsNothing()
{
    QFETCH(QRectF, clip);
    PrintJob job = A5Job();
    job.clipRect = clip;
    Print(job);
}

// The toolkit warns; it neither throws nor waits.
void tst_PrintJob::withoutAPrinterNothingIsReported()
{
    for (const char* text :
         {"QPainter::begin\\(\\): Returned false", "setClipRect: Painter not active",
          "setWorldTransform: Painter not active", "setRenderHint: Painter must be active"})
        AnnounceWarning(QRegularExpression(text));
    PrintJob job = A5Job();
    job.copies = 3;
    Print(job);
}

void tst_PrintJob::pdfHasAPageForEachCopy_data()
{
    QTest::addColumn<int>("copies");
    for (const int copies : {1, 3, 20})
        QTest::newRow(qPrintable(QString::number(copies))) << copies;
}

// All pages share one picture.
void tst_PrintJob::pdfHasAPageForEachCopy()
{
    QFETCH(int, copies);
    PrintJob job = A5Job();
    job.copies = copies;
    const PdfFile file(job);
    QCOMPARE(file.Pages(), copies);
    QCOMPARE(file.Images(), 1);
}

void tst_PrintJob::pdfPageHasTheSizeOfTheJob_data()
{
    QTest::addColumn<QPageSize>("page");
    QTest::addColumn<int>("orientation");
    QTest::addColumn<QSizeF>("points");
    const QPageSize own(QSizeF(100, 50), QPageSize::Millimeter, "Custom", QPageSize::FuzzyMatch);
    QTest::newRow("A5") << QPageSize(QPageSize::A5) << int(QPrinter::Portrait) << QSizeF(420, 595);
    QTest::newRow("A5 landscape") << QPageSize(QPageSize::A5) << int(QPrinter::Landscape) << QSizeF(595, 420);
    QTest::newRow("Letter") << QPageSize(QPageSize::Letter) << int(QPrinter::Portrait) << QSizeF(612, 792);
    QTest::newRow("custom") << own << int(QPrinter::Portrait) << QSizeF(283, 142);
}

void tst_PrintJob::pdfPageHasTheSizeOfTheJob()
{
    QFETCH(QPageSize, page);
    QFETCH(int, orientation);
    QFETCH(QSizeF, points);
    PrintJob job = A5Job();
    job.pageSize = page;
    job.orientation = QPrinter::Orientation(orientation);
    QCOMPARE(PdfFile(job).Sheet(), points);
}

void tst_PrintJob::pdfIsGreyWithoutColor()
{
    PrintJob job = A5Job();
    QCOMPARE(PdfFile(job).ColorSpace(), QString("DeviceRGB"));
    job.color = false;
    QCOMPARE(PdfFile(job).ColorSpace(), QString("DeviceGray"));
}

void tst_PrintJob::pdfIsTheSameFromAThread()
{
    PrintJob job = A5Job();
    job.copies = 2;
    QThread* thread = nullptr;
    const auto print = [&]
    {
        thread = QThread::currentThread();
        return QPair<int, int>(PdfFile(job).Pages(), PdfFile(job).Images());
    };
    const QPair<int, int> result = QtConcurrent::run(print).result();
    QVERIFY(thread != QThread::currentThread());
    QCOMPARE(result, qMakePair(2, 1));
}

// Whatever its format, grey or not: the printer gets the very data of the job.
void tst_PrintJob::pictureIsNotConverted()
{
    for (const QImage::Format format :
         {QImage::Format_RGB888, QImage::Format_ARGB32_Premultiplied, QImage::Format_RGBA64})
    {
        PrintJob job = A5Job();
        job.image = Picture(format);
        job.color = false;
        RecordingPrinter printer;
        PrintPages(printer, job);
        QCOMPARE(printer.engine.images.first().key, job.image.cacheKey());
    }
}

void tst_PrintJob::pageLayoutIsTheWholeSheet_data()
{
    QTest::addColumn<bool>("landscape");
    QTest::addColumn<bool>("fullPage");
    QTest::addColumn<QSizeF>("page");
    for (const bool landscape : {false, true})
        for (const bool fullPage : {false, true})
            for (const QSizeF& page : {QSizeF(210, 297), QSizeF(300, 100)})
                QTest::newRow(qPrintable(QString("%1x%2%3%4")
                                             .arg(page.width())
                                             .arg(page.height())
                                             .arg(landscape ? " landscape" : "")
                                             .arg(fullPage ? " full" : "")))
                    << landscape << fullPage << page;
}

void tst_PrintJob::pageLayoutIsTheWholeSheet()
{
    QFETCH(bool, landscape);
    QFETCH(bool, fullPage);
    QFETCH(QSizeF, page);
    QPrinter printer(QPrinter::ScreenResolution);
    printer.setFullPage(fullPage);
    printer.setPageSize(QPageSize(page, QPageSize::Millimeter));
    printer.setPageOrientation(landscape ? QPageLayout::Landscape : QPageLayout::Portrait);
    const QPageLayout layout = GetPageLayout(printer);
    QCOMPARE(layout.orientation(), landscape ? QPageLayout::Landscape : QPageLayout::Portrait);
    QCOMPARE(layout.units(), QPageLayout::Millimeter);
    QCOMPARE(layout.margins(), QMarginsF());
    QCOMPARE(layout.minimumMargins(), QMarginsF());
    // A sheet has whole points.
    const QSizeF upright = layout.pageSize().size(QPageSize::Millimeter);
    QVERIFY(qAbs(upright.width() - page.width()) < 0.2 && qAbs(upright.height() - page.height()) < 0.2);
    const QSizeF fed = layout.fullRect().size();
    QCOMPARE(fed, landscape ? upright.transposed() : upright);
}

void tst_PrintJob::unitsHaveTheSameNumber_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<int>("number");
    for (int unit = 0; unit < 4; ++unit)
        QTest::newRow(qPrintable(QString::number(unit))) << unit << unit;
    for (const int unit : {-1, 4, 5, 6, INT_MAX, INT_MIN})
        QTest::newRow(qPrintable(QString::number(unit))) << unit << 0;
}

void tst_PrintJob::unitsHaveTheSameNumber()
{
    QFETCH(int, unit);
    QFETCH(int, number);
    QCOMPARE(int(ToPageSizeUnits(Dialog::Unit(unit))), number);
    QCOMPARE(int(ToPageLayoutUnits(Dialog::Unit(unit))), number);
    QCOMPARE(int(ToPrinterUnits(Dialog::Unit(unit))), number);
    QCOMPARE(int(Dialog::Pica), 3);
}

NV_TEST_MAIN(tst_PrintJob)

#include "tst_PrintJob.moc"
