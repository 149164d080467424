// Printing as far as it goes without a printer, and the page as a file.

#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QStatusBar>

#include "NVPrintPreviewDialog.h"
#include "TourGuide.h"
#include "TourTopics.h"

namespace
{

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
        [&](QWidget* dialog)
        {
            auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
            if (guide.Check(name, "the dialog takes no name"))
                name->setText(path);
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

} // namespace

void PlayPrint(TourGuide& guide)
{
    guide.Step("print", "File > Print asks the print server first; without a printer it offers a PDF",
               AskToPrint);
    guide.Step("export-pdf",
               "File > Export as PDF writes the page; the status bar tells paper, size and resolution",
               ExportPdf);
}
