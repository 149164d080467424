// What a stored record of print settings stands for, as the dialog would show it, what is told about it, and
// the file that is written.

#include "PrintPage.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDataStream>
#include <QDir>
#include <QDoubleSpinBox>
#include <QFile>
#include <QFileInfo>
#include <QPageSize>
#include <QPainter>
#include <QProcess>
#include <QRadioButton>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <algorithm>
#include <cmath>
#include <csignal>
#include <functional>
#include <limits>

#include "NVPrintPreviewDialog.h"
#include "ProcessLimit.h"
#include "TestMain.h"
#include "TransformationCenterPointControl.h"
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

// Red, green, blue and yellow quarters, in reading order.
QImage Quarters(const QSize& size)
{
    QImage image(size, QImage::Format_RGB32);
    QPainter painter(&image);
    const int x = size.width() / 2;
    const int y = size.height() / 2;
    painter.fillRect(0, 0, x, y, Qt::red);
    painter.fillRect(x, 0, x, y, Qt::green);
    painter.fillRect(0, y, x, y, Qt::blue);
    painter.fillRect(x, y, x, y, Qt::yellow);
    return image;
}

// What is not white.
QRect Printed(const QImage& page)
{
    QRect box;
    for (int y = 0; y < page.height(); ++y)
        for (int x = 0; x < page.width(); ++x)
            if ((page.pixel(x, y) & RGB_MASK) != RGB_MASK)
                box |= QRect(x, y, 1, 1);
    return box;
}

// The colours in the middle of the quarters, in reading order.
QString Letters(const QImage& page, const QRect& box)
{
    QString letters;
    for (const int y : {1, 3})
    {
        for (const int x : {1, 3})
        {
            const QColor color =
                page.pixelColor(box.x() + box.width() * x / 4, box.y() + box.height() * y / 4);
            const bool isGreen = color.green() > 127;
            letters += color.red() > 127 ? (isGreen ? 'Y' : 'R') : (isGreen ? 'G' : 'B');
        }
    }
    return letters;
}

// Sets the dialog up, as a person would.
using SetUp = std::function<void(NVPrintPreviewDialog*)>;

QDoubleSpinBox* Box(NVPrintPreviewDialog* dialog, const char* name)
{
    return dialog->findChild<QDoubleSpinBox*>(name);
}

} // namespace

Q_DECLARE_METATYPE(SetUp)

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

    void whatIsWrittenIsThePageThatWasPrinted_data()
    {
        QTest::addColumn<SetUp>("setUp");
        const auto add = [](const char* name, const SetUp& setUp) { QTest::newRow(name) << setUp; };
        add("not scaled", [](NVPrintPreviewDialog*) {});
        add("fitted", [](NVPrintPreviewDialog* dialog) { Check(dialog, "m_pFitToPage"); });
        add("stretched",
            [](NVPrintPreviewDialog* dialog)
            {
                Check(dialog, "m_pFitToPage");
                dialog->findChild<QCheckBox*>("m_pKeepRatio")->setChecked(false);
            });
        add("scaled",
            [](NVPrintPreviewDialog* dialog)
            {
                Check(dialog, "m_pCustom");
                Box(dialog, "m_pCustomSX")->setValue(30);
            });
        add("scaled by two ratios",
            [](NVPrintPreviewDialog* dialog)
            {
                Check(dialog, "m_pCustom");
                dialog->findChild<QCheckBox*>("m_pCustomKeepRatio")->setChecked(false);
                Box(dialog, "m_pCustomSX")->setValue(30);
                Box(dialog, "m_pCustomSY")->setValue(250);
            });
        // The dialog takes the size in the unit from before when it reads its record.
        add("custom page in inches",
            [](NVPrintPreviewDialog* dialog)
            {
                dialog->findChild<QComboBox*>("m_pUnits")->setCurrentIndex(NVPrintPreviewDialog::Inch);
                auto* pages = dialog->findChild<QComboBox*>("m_pPageSize");
                pages->setCurrentIndex(pages->findData(QPageSize::Custom));
                Box(dialog, "m_pPageWidth")->setValue(5);
                Box(dialog, "m_pPageHeight")->setValue(8);
                Check(dialog, "m_pFitToPage");
            });
    }

    void whatIsWrittenIsThePageThatWasPrinted()
    {
        QFETCH(SetUp, setUp);
        const QSize picture(400, 300);
        NVPrintPreviewDialog dialog(nullptr);
        FillLists(&dialog);
        dialog.SetSource(Opaque(picture));
        setUp(&dialog);
        for (const int row : {0, 1})
        {
            dialog.findChild<QComboBox*>("m_pOrientation")->setCurrentIndex(row);
            Box(&dialog, "m_pLeftMargin")->setValue(2);
            Box(&dialog, "m_pTopMargin")->setValue(1);

            const PrintLayout layout = ReadPrintSettings(dialog.SaveSettings());

            QCOMPARE(SheetRect(layout), dialog.GetPageRect());
            QCOMPARE(ClipRect(layout), dialog.GetClipRect());
            QCOMPARE(ImageTransform(layout, picture), dialog.CalcAffineTransformation());
        }
    }

    void thePageIsDrawnInItsPlace_data()
    {
        QTest::addColumn<SetUp>("setUp");
        QTest::addColumn<QRectF>("box");
        QTest::addColumn<QString>("letters");
        // At 150 an inch a sheet of A5 has 875 x 1240 pixels, and 10 mm are 28 points or 58 pixels.
        QTest::newRow("not scaled, at the top left")
            << SetUp([](NVPrintPreviewDialog*) {}) << QRectF(58, 58, 600, 400) << "RGBY";
        QTest::newRow("turned") << SetUp([](NVPrintPreviewDialog* dialog) { Rotate(dialog, 2); })
                                << QRectF(58, 58, 400, 600) << "BRYG";
        QTest::newRow("fitted") << SetUp([](NVPrintPreviewDialog* dialog) { Check(dialog, "m_pFitToPage"); })
                                << QRectF(58, 58, 759, 759 / 1.5) << "RGBY";
        QTest::newRow("moved") << SetUp(
                                      [](NVPrintPreviewDialog* dialog)
                                      {
                                          Box(dialog, "m_pXOffset")->setValue(10);
                                          Box(dialog, "m_pYOffset")->setValue(20);
                                      })
                               << QRectF(116, 58 + 119, 600, 400) << "RGBY";
        QTest::newRow("cut on all sides")
            << SetUp(
                   [](NVPrintPreviewDialog* dialog)
                   {
                       Check(dialog, "m_pCustom");
                       Box(dialog, "m_pCustomSX")->setValue(400);
                       dialog->findChild<TransformationCenterPointControl*>()->SetState(
                           TransformationCenterPointControl::Center);
                   })
            << QRectF(58, 58, 759, 1124) << "RGBY";
    }

    // Within a pixel of the page.
    void thePageIsDrawnInItsPlace()
    {
        QFETCH(SetUp, setUp);
        QFETCH(QRectF, box);
        QFETCH(QString, letters);
        const QString program = QStandardPaths::findExecutable("pdftoppm");
        if (program.isEmpty())
            QSKIP("no pdftoppm to look at the page with: install poppler-utils");
        const QImage picture = Quarters(QSize(600, 400));
        NVPrintPreviewDialog dialog(nullptr);
        FillLists(&dialog);
        dialog.SetSource(picture);
        dialog.findChild<QComboBox*>("m_pPageSize")->setCurrentIndex(1);
        dialog.findChild<QComboBox*>("m_pDPI")->setCurrentIndex(0);
        for (const char* name : {"m_pLeftMargin", "m_pRightMargin", "m_pTopMargin", "m_pBottomMargin"})
            Box(&dialog, name)->setValue(10);
        dialog.findChild<TransformationCenterPointControl*>()->SetState(
            TransformationCenterPointControl::TopLeft);
        setUp(&dialog);

        QCOMPARE(WritePdf(picture, ReadPrintSettings(dialog.SaveSettings()), m_path, nullptr), QString());

        const QString name = m_folder->filePath("page");
        QCOMPARE(QProcess::execute(program, {"-png", "-singlefile", "-r", "150", m_path, name}), 0);
        const QImage page(name + ".png");
        QCOMPARE(page.size(), QSize(875, 1240));
        const QRect printed = Printed(page);
        for (const double off : {printed.left() - box.left(), printed.top() - box.top(),
                                 printed.right() + 1 - box.right(), printed.bottom() + 1 - box.bottom()})
            QVERIFY2(std::abs(off) <= 1.5, qPrintable(QString::number(off)));
        QCOMPARE(Letters(page, printed), letters);
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
        QString error;
        {
            const ProcessLimit size(RLIMIT_FSIZE, 5000);
            error = WritePdf(picture, ReadPrintSettings(QByteArray()), m_path, nullptr);
        }
        signal(SIGXFSZ, handler);
        QVERIFY2(error.contains("large"), qPrintable(error));
        QVERIFY(QFileInfo(m_path).dir().entryList(QDir::Files).isEmpty());
    }

private:
    static void Check(NVPrintPreviewDialog* dialog, const char* button)
    {
        dialog->findChild<QRadioButton*>(button)->setChecked(true);
    }
    static void Rotate(NVPrintPreviewDialog* dialog, int row)
    {
        dialog->findChild<QComboBox*>("m_pRotate")->setCurrentIndex(row);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
};

NV_TEST_MAIN(tst_PrintPage)
#include "tst_PrintPage.moc"
