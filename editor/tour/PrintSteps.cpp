// Printing as far as it goes without a printer, the page as a file, and, beside a print server for trying
// out, a page that arrives.

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QDoubleSpinBox>
#include <QFile>
#include <QGraphicsView>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPrintPreviewWidget>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QStandardPaths>
#include <QStatusBar>

#include "NVPrintPreviewDialog.h"
#include "TourGuide.h"
#include "TourPictures.h"
#include "TourTopics.h"

namespace
{

// Of the page that arrived, as a picture.
const int PageDpi = 60;

// On a machine with printers the dialog comes up, else the reason and the offer of a PDF; both go by Escape.
void AskToPrint(TourGuide& guide)
{
    bool isDialog = false;
    guide.GetRobot().WhenModal(
        [&](QWidget* window)
        {
            isDialog = qobject_cast<NVPrintPreviewDialog*>(window);
            QString text;
            const QList<QLabel*> labels = window->findChildren<QLabel*>();
            for (const QLabel* label : labels)
                text += label->text();
            guide.Check(isDialog || text.contains(QLatin1String("PDF")), "the message offers no PDF");
            guide.TakePicture();
            guide.GetRobot().Key(Qt::Key_Escape);
        });
    guide.FocusCanvas();
    guide.GetRobot().Key(Qt::Key_P, Qt::ControlModifier);
    const bool isAsked = guide.GetRobot().WaitFor([&guide] { return !guide.GetRobot().IsWaitingForModal(); });
    guide.Check(isAsked, "neither the dialog nor a message came");
    guide.GetRobot().ForgetModal();
    guide.Note(isDialog ? QStringLiteral("there is a printer") : QStringLiteral("there is no printer"));
}

void ExportPdf(TourGuide& guide)
{
    const QString path = guide.FileFor(QStringLiteral("page.pdf"));
    guide.GetRobot().WhenModal(
        [&guide, path](QWidget* dialog)
        {
            Control<QLineEdit>(dialog, "fileNameEdit")->setText(path);
            guide.GetRobot().Key(Qt::Key_Return);
        });
    guide.OpenMenu(Qt::Key_F);
    guide.TakePicture();
    guide.PressEntry(Qt::Key_E);
    const auto message = [&guide] { return guide.GetWindow()->statusBar()->currentMessage(); };
    guide.Check(guide.GetRobot().WaitFor([&] { return message().startsWith(QLatin1String("Exported")); }),
                "nothing tells of the export");
    QFile file(path);
    guide.Check(file.open(QIODevice::ReadOnly) && file.read(5) == "%PDF-", "there is no PDF");
    guide.Note(message());
}

// Where the print server for trying out leaves what arrives: tests/printing/with-print-server.sh. Nothing is
// sent to a printer of the person's.
QString ArrivalFolder()
{
    const QString folder = qEnvironmentVariable("NORVANE_PRINT_FOLDER");
    return folder.isEmpty() ? QString() : folder + QStringLiteral("/out");
}

QStringList Arrived()
{
    return QDir(ArrivalFolder()).entryList({QStringLiteral("*.pdf")}, QDir::Files, QDir::Name);
}

void ChooseText(TourGuide& guide, QComboBox* list, const char* text)
{
    const int row = list ? list->findText(QLatin1String(text), Qt::MatchStartsWith) : -1;
    if (guide.Check(row >= 0, QStringLiteral("there is no entry %1").arg(QLatin1String(text))))
        guide.ChooseEntry(list, row);
}

void TypeMargins(TourGuide& guide, const NVPrintPreviewDialog* dialog, const char* length)
{
    for (const char* name : {"m_pTopMargin", "m_pLeftMargin", "m_pRightMargin", "m_pBottomMargin"})
        guide.TypeOver(Control<QDoubleSpinBox>(dialog, name), length);
}

// As it is on the screen.
QImage PreviewOf(const NVPrintPreviewDialog* dialog)
{
    const auto* preview = dialog->findChild<QPrintPreviewWidget*>();
    auto* view = preview ? preview->findChild<QGraphicsView*>() : nullptr;
    return view ? view->viewport()->grab().toImage() : QImage();
}

// A4 upright, the whole sheet in view, and the picture, which is wide, turned to fit between the margins.
void SetUpPage(TourGuide& guide, NVPrintPreviewDialog* dialog)
{
    ChooseText(guide, Control<QComboBox>(dialog, "m_pPrinter"), "Colour");
    ChooseText(guide, Control<QComboBox>(dialog, "m_pPageSize"), "A4");
    ChooseText(guide, Control<QComboBox>(dialog, "m_pDPI"), "150");
    ChooseText(guide, Control<QComboBox>(dialog, "m_pOrientation"), "Portrait");
    ChooseText(guide, Control<QComboBox>(dialog, "m_pRotate"), "Auto");
    TypeMargins(guide, dialog, "20");
    guide.SetChecked(Control<QRadioButton>(dialog, "m_pFitToPage"), true);
    guide.Check(dialog->CalcAffineTransformation().isRotating(), "the picture is not turned");
    guide.TakePicture();
    guide.TakePictureOf(dialog, QStringLiteral("print-preview"));
}

void TryScaleAndMargins(TourGuide& guide, const NVPrintPreviewDialog* dialog)
{
    guide.SetChecked(Control<QRadioButton>(dialog, "m_pCustom"), true);
    guide.TypeOver(Control<QDoubleSpinBox>(dialog, "m_pCustomSX"), "60");
    guide.Check(qFuzzyCompare(dialog->CalcAffineTransformation().m12(), 0.6), "the scale is another one");
    guide.TakePicture();
    guide.TypeOver(Control<QDoubleSpinBox>(dialog, "m_pLeftMargin"), "300");
    guide.Check(dialog->GetClipRect().isEmpty(), "the margins leave room");
    guide.TakePicture();
    guide.TypeOver(Control<QDoubleSpinBox>(dialog, "m_pLeftMargin"), "20");
    guide.SetChecked(Control<QRadioButton>(dialog, "m_pFitToPage"), true);
}

// The preview, and the page that arrived, on one picture.
QImage Beside(const QImage& preview, const QImage& page)
{
    const QImage scaled = page.scaledToHeight(preview.height(), Qt::SmoothTransformation);
    QImage both(preview.width() + scaled.width(), preview.height(), QImage::Format_RGB32);
    both.fill(Qt::gray);
    QPainter painter(&both);
    painter.drawImage(0, 0, preview);
    painter.drawImage(preview.width(), 0, scaled);
    return both;
}

// The sheet in pixels. Null where the program for it is not installed.
QImage Rasterised(const TourGuide& guide, const QString& pdf)
{
    const QString program = QStandardPaths::findExecutable(QStringLiteral("pdftoppm"));
    const QString page = guide.FileFor(QStringLiteral("arrived"));
    if (program.isEmpty() ||
        QProcess::execute(program,
                          {QStringLiteral("-png"), QStringLiteral("-r"), QString::number(PageDpi),
                           QStringLiteral("-singlefile"), pdf, page}) != 0)
        return QImage();
    return QImage(page + QStringLiteral(".png"));
}

// Where the point of the picture, turned by a quarter and fitted between the margins, is on the sheet. What
// the printer cannot print on moves all of it a little.
QPointF PlaceOnPage(const QPointF& point, const QSizeF& picture, const QSizeF& page)
{
    const QSizeF room = page - QSizeF(2, 2) * (20 / 25.4 * PageDpi);
    const double scale = qMin(room.width() / picture.height(), room.height() / picture.width());
    return QPointF(page.width() / 2 + (picture.height() / 2 - point.y()) * scale,
                   page.height() / 2 + (point.x() - picture.width() / 2) * scale);
}

void CheckPage(TourGuide& guide, const QImage& page, const LighthousePicture& picture)
{
    guide.Check(page.pixel(5, page.height() / 2) == qRgb(255, 255, 255), "the margin is not white");
    const auto colorAt = [&](const QPointF& point)
    { return page.pixel(PixelOf(PlaceOnPage(point, picture.image.size(), page.size()))); };
    const QRgb sky = picture.image.pixel(PixelOf(picture.sky));
    guide.Check(AreNear(colorAt(picture.sky), sky, 30),
                QStringLiteral("the sky is %1 for %2").arg(ColorText(colorAt(picture.sky)), ColorText(sky)));
    guide.Check(qGray(colorAt(picture.rock)) < 90,
                QStringLiteral("the rock is %1").arg(ColorText(colorAt(picture.rock))));
}

void PrintPage(TourGuide& guide)
{
    if (ArrivalFolder().isEmpty())
    {
        guide.Note(QStringLiteral("skipped: there is no print server for trying out"));
        return;
    }
    const LighthousePicture picture = DrawLighthouse();
    if (!guide.OpenDrawn(picture.image, QStringLiteral("lighthouse for the wall.png")))
        return;
    QImage preview;
    guide.GetRobot().WhenModal(
        [&](QWidget* window)
        {
            auto* dialog = Needed(qobject_cast<NVPrintPreviewDialog*>(window), "another dialog came");
            SetUpPage(guide, dialog);
            TryScaleAndMargins(guide, dialog);
            preview = PreviewOf(dialog);
            guide.GetRobot().Click(Control<QDialogButtonBox>(window)->button(QDialogButtonBox::Ok));
        });
    const QStringList before = Arrived();
    guide.FocusCanvas();
    guide.GetRobot().Key(Qt::Key_P, Qt::ControlModifier);
    const auto message = [&guide] { return guide.GetWindow()->statusBar()->currentMessage(); };
    guide.Check(
        guide.GetRobot().WaitFor([&] { return message().startsWith(QLatin1String("Sent to Colour")); }),
        QStringLiteral("the window says: %1").arg(message()));
    guide.Note(message());
    if (!guide.Check(guide.GetRobot().WaitFor([&] { return Arrived().size() > before.size(); }),
                     "no page arrived"))
    {
        guide.CloseDiscarding();
        return;
    }
    guide.TakePicture();
    const QImage page = Rasterised(guide, ArrivalFolder() + QLatin1Char('/') + Arrived().constLast());
    if (page.isNull())
    {
        guide.Note(QStringLiteral("no program to look into the page"));
        guide.CloseDiscarding();
        return;
    }
    CheckPage(guide, page, picture);
    guide.CloseDiscarding();
    if (!guide.OpenDrawn(Beside(preview, page), QStringLiteral("preview and page.png")))
        return;
    guide.TakePicture();
    guide.CloseDiscarding();
}

} // namespace

void PlayPrint(TourGuide& guide)
{
    guide.Step("print", "File > Print asks the print server first; without a printer it offers a PDF",
               AskToPrint);
    guide.Step("export-pdf",
               "File > Export as PDF writes the page; the status bar tells paper, size and resolution",
               ExportPdf);
    guide.Step("print-page",
               "A wide picture on an upright sheet: margins grey, a scale of its own, margins that leave "
               "no room, and the page that arrives beside its preview",
               PrintPage);
}
