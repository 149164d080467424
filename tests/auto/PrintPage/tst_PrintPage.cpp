// What a stored record of print settings stands for, as the dialog would show it, what is told about it, and
// the file that is written.

#include "PrintPage.h"

#include <QComboBox>
#include <QDataStream>
#include <QDir>
#include <QDoubleSpinBox>
#include <QFile>
#include <QFileInfo>
#include <QPageSize>
#include <QRadioButton>
#include <QTemporaryDir>

#include <sys/resource.h>

#include <algorithm>
#include <cmath>
#include <csignal>
#include <limits>

#include "NVPrintPreviewDialog.h"
#include "TestMain.h"
#include "WatchedDevice.h"

namespace
{

struct Record
{
    qint32 version = 1;
    qint32 page = QPageSize::A5;
    double width = 100;
    double height = 200;
    qint32 unit = 0;
    qint32 resolution = 150;
    qint32 orientation = 0;
    double margins[4] = {5, 6, 7, 8}; // left, right, top, bottom
    qint32 mode = 0;
    bool keepRatio = false;
    double scaleX = 50;
    double scaleY = 25;
    qint32 place = 3;
    double x = 4;
    double y = -3;
    qint32 rotation = 2;

    QByteArray Bytes() const
    {
        QByteArray bytes;
        QDataStream stream(&bytes, QIODevice::WriteOnly);
        stream << version << page;
        if (page == QPageSize::Custom)
            stream << width << height;
        stream << unit << resolution << orientation;
        for (const double margin : margins)
            stream << margin;
        stream << mode;
        if (mode != 0)
            stream << keepRatio;
        if (mode > 1)
            stream << scaleX << scaleY;
        stream << place << x << y << rotation;
        return bytes;
    }
};

QImage Opaque(const QSize& size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::darkCyan);
    return image;
}

bool IsDefault(const PrintLayout& layout)
{
    return layout.page.pageSize().id() == QPageSize::A4 && layout.resolution == 300 &&
        layout.scaling == PrintLayout::FitToPage && layout.rotation == PrintLayout::AutoRotated &&
        layout.margins == QMarginsF(10, 10, 10, 10) && layout.place == 5;
}

// Without a printer the lists of the dialog are empty.
void FillLists(NVPrintPreviewDialog* dialog)
{
    dialog->findChild<QComboBox*>("m_pPrinter")->addItem("None");
    auto* pages = dialog->findChild<QComboBox*>("m_pPageSize");
    for (const QPageSize::PageSizeId id : {QPageSize::A4, QPageSize::A5, QPageSize::Custom})
        pages->addItem(QString::number(id), int(id));
    auto* resolutions = dialog->findChild<QComboBox*>("m_pDPI");
    for (const int resolution : {150, 300})
        resolutions->addItem(QString::number(resolution), resolution);
    resolutions->setCurrentIndex(1);
}

} // namespace

class tst_PrintPage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("CUPS_SERVER", "/nonexistent/cups.sock"); }

    void init()
    {
        QLocale::setDefault(QLocale::c());
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath("page.pdf");
    }

    void anOpaquePictureLosesItsAlpha()
    {
        const QImage picture = Opaque(QSize(30, 20));

        const QImage printable = PrintablePicture(picture);

        QCOMPARE(printable.format(), QImage::Format_RGB32);
        QCOMPARE(printable.pixel(29, 19), picture.pixel(29, 19));
    }

    void onePixelThatShowsThroughKeepsTheAlpha()
    {
        QImage picture = Opaque(QSize(30, 20));
        picture.setPixel(29, 19, qRgba(0, 0, 0, 254));

        QCOMPARE(PrintablePicture(picture), picture);
        QCOMPARE(PrintablePicture(picture).format(), QImage::Format_ARGB32_Premultiplied);
        QVERIFY(PrintablePicture(QImage()).isNull());
    }

    void aRecordIsReadAsTheDialogReadsIt_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        for (int unit = 0; unit < 4; ++unit)
        {
            for (int rotation = 0; rotation < 5; ++rotation)
            {
                Record record;
                record.unit = unit;
                if (unit == NVPrintPreviewDialog::Inch)
                    std::fill(std::begin(record.margins), std::end(record.margins), 0.4);
                record.rotation = rotation;
                record.place = 1 + (unit * 5 + rotation) % 9;
                record.orientation = (unit + rotation) % 2;
                record.resolution = unit == 1 ? 300 : 150;
                QTest::addRow("unit %d rotation %d", unit, rotation) << record.Bytes();
            }
        }
        Record custom;
        custom.page = QPageSize::Custom;
        QTest::newRow("custom page") << custom.Bytes();
        Record outside;
        outside.margins[1] = -9;
        outside.margins[2] = -4;
        QTest::newRow("margins below zero") << outside.Bytes();
    }

    void aRecordIsReadAsTheDialogReadsIt()
    {
        QFETCH(QByteArray, bytes);
        const QSize picture(400, 300);
        NVPrintPreviewDialog dialog(nullptr);
        FillLists(&dialog);
        dialog.RestoreSettings(bytes);
        dialog.SetSource(Opaque(picture));

        const PrintLayout layout = ReadPrintSettings(bytes);

        QCOMPARE(dialog.SaveSettings(), bytes);
        const QRectF clip = ClipRect(layout);
        const QRectF shown = dialog.GetClipRect();
        QVERIFY(!clip.isEmpty());
        for (const double off : {clip.left() - shown.left(), clip.top() - shown.top(),
                                 clip.right() - shown.right(), clip.bottom() - shown.bottom()})
            QVERIFY2(std::abs(off) <= 1, qPrintable(QString::number(off)));
        const QTransform transform = ImageTransform(layout, picture);
        for (const QPointF& point : {QPointF(0, 0), QPointF(400, 0), QPointF(400, 300)})
        {
            const QPointF off = transform.map(point) - dialog.CalcAffineTransformation().map(point);
            QVERIFY2(off.manhattanLength() <= 2, qPrintable(QString("%1 %2").arg(off.x()).arg(off.y())));
        }
    }

    void theScalesAreRead()
    {
        Record record;
        record.mode = 1;
        const PrintLayout fitted = ReadPrintSettings(record.Bytes());
        QCOMPARE(fitted.scaling, PrintLayout::FitToPage);
        QVERIFY(!fitted.keepRatio);

        record.mode = 2;
        const PrintLayout scaled = ReadPrintSettings(record.Bytes());
        QCOMPARE(scaled.scaling, PrintLayout::CustomScale);
        QCOMPARE(scaled.scaleX, 0.5);
        QCOMPARE(scaled.scaleY, 0.25);
        QCOMPARE(scaled.place, 3);
        QCOMPARE(scaled.rotation, PrintLayout::Clockwise);
    }

    void whatIsNoRecordIsTheDefault()
    {
        QVERIFY(IsDefault(ReadPrintSettings(QByteArray())));
        Record record;
        record.version = 2;
        QVERIFY(IsDefault(ReadPrintSettings(record.Bytes())));
        record = Record();
        record.page = QPageSize::Custom;
        record.mode = 2;
        const QByteArray whole = record.Bytes();
        for (int length = 0; length < whole.size(); ++length)
            QVERIFY2(IsDefault(ReadPrintSettings(whole.left(length))), qPrintable(QString::number(length)));
        QVERIFY(!IsDefault(ReadPrintSettings(whole + "more")));
    }

    void hostileNumbersGiveAPageThatCanBePrinted_data()
    {
        QTest::addColumn<double>("number");
        QTest::newRow("nan") << std::numeric_limits<double>::quiet_NaN();
        QTest::newRow("infinity") << std::numeric_limits<double>::infinity();
        QTest::newRow("below") << -1e300;
        QTest::newRow("above") << 1e300;
        QTest::newRow("zero") << 0.0;
    }

    void hostileNumbersGiveAPageThatCanBePrinted()
    {
        QFETCH(double, number);
        Record record;
        record.page = QPageSize::Custom;
        record.width = number;
        record.height = number;
        record.unit = 1 << 30;
        record.resolution = -7;
        record.orientation = 99;
        for (double& margin : record.margins)
            margin = number;
        record.mode = 77;
        record.scaleX = number;
        record.scaleY = number;
        record.place = -5;
        record.x = number;
        record.y = number;
        record.rotation = 1000;

        const PrintLayout layout = ReadPrintSettings(record.Bytes());

        QCOMPARE(layout.page.pageSize().id(), QPageSize::A4);
        QCOMPARE(layout.page.orientation(), QPageLayout::Landscape);
        QCOMPARE(layout.resolution, 300);
        QCOMPARE(layout.unit, QPageLayout::Millimeter);
        QCOMPARE(layout.scaleX, 1.0);
        QCOMPARE(layout.scaleY, 1.0);
        QCOMPARE(layout.rotation, PrintLayout::NotRotated);
        QCOMPARE(WritePdf(Opaque(QSize(8, 8)), layout, m_path, nullptr), QString());
    }

    void theSummaryTellsPaperSizeAndEffectiveResolution()
    {
        PrintedPicture printed;
        printed.paper = "A4";
        printed.transform = QTransform::fromScale(2, 2);
        printed.picture = QSizeF(300, 150);
        printed.resolution = 300;
        QCOMPARE(PrintSummary(printed), QString("A4, picture 50.8 x 25.4 mm, 150 pixels an inch"));

        printed.unit = QPageLayout::Inch;
        QCOMPARE(PrintSummary(printed), QString("A4, picture 2.00 x 1.00 in, 150 pixels an inch"));
        printed.unit = QPageLayout::Point;
        QCOMPARE(PrintSummary(printed), QString("A4, picture 144.0 x 72.0 point, 150 pixels an inch"));
        printed.unit = QPageLayout::Pica;
        printed.transform = QTransform().rotate(90).scale(1, 2);
        QCOMPARE(PrintSummary(printed), QString("A4, picture 6.0 x 6.0 pica, 300 x 150 pixels an inch"));
    }

    void theFileIsAPdfOfOnePageOfThePaper()
    {
        const PrintLayout layout = ReadPrintSettings(Record().Bytes());

        QCOMPARE(WritePdf(Opaque(QSize(40, 30)), layout, m_path, nullptr), QString());

        QFile file(m_path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        QVERIFY(bytes.startsWith("%PDF-"));
        QVERIFY(bytes.trimmed().endsWith("%%EOF"));
        QVERIFY(bytes.contains("/Count 1"));
        // An A5 sheet in points.
        QVERIFY2(bytes.contains("/MediaBox [0 0 420.000000 595.000000]"),
                 bytes.mid(bytes.indexOf("/MediaBox"), 60));
        QCOMPARE(QFileInfo(m_path).dir().entryList(QDir::Files), QStringList("page.pdf"));
    }

    void whatFailsTellsWhyAndLeavesTheOldFile()
    {
        QFile file(m_path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("old");
        file.close();
        Record record;
        const QImage picture = Opaque(QSize(40, 30));
        record.margins[0] = 300;

        QCOMPARE(WritePdf(picture, ReadPrintSettings(record.Bytes()), m_path, nullptr),
                 QString("The margins leave no room on the page."));
        const PrintLayout layout = ReadPrintSettings(QByteArray());
        QCOMPARE(WritePdf(QImage(), layout, m_path, nullptr), QString("There is not enough memory for it."));
        FileProgress progress;
        progress.cancelled = true;
        QCOMPARE(WritePdf(picture, layout, m_path, &progress), QString());
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("old"));

        QCOMPARE(WritePdf(picture, layout, m_folder->path(), nullptr), QString("A folder has this name."));
        QVERIFY(
            WritePdf(picture, layout, m_folder->filePath("no/page.pdf"), nullptr).contains("does not exist"));
        QVERIFY(WritePdf(picture, layout, "/dev/full", nullptr).contains("not a plain file"));
        QCOMPARE(QFileInfo(m_path).dir().entryList(QDir::Files), QStringList("page.pdf"));
    }

    void aFullDiskTellsSoAndLeavesNothing()
    {
        QImage picture(300, 300, QImage::Format_RGB32);
        for (int i = 0; i < 300 * 300; ++i)
            picture.setPixel(i % 300, i / 300, QRgb(i * 2654435761u));
        const auto handler = signal(SIGXFSZ, SIG_IGN);
        rlimit before;
        getrlimit(RLIMIT_FSIZE, &before);
        rlimit limit = before;
        limit.rlim_cur = 5000;
        setrlimit(RLIMIT_FSIZE, &limit);

        const QString error = WritePdf(picture, ReadPrintSettings(QByteArray()), m_path, nullptr);

        setrlimit(RLIMIT_FSIZE, &before);
        signal(SIGXFSZ, handler);
        QVERIFY2(error.contains("large"), qPrintable(error));
        QVERIFY(QFileInfo(m_path).dir().entryList(QDir::Files).isEmpty());
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
};

NV_TEST_MAIN(tst_PrintPage)
#include "tst_PrintPage.moc"
