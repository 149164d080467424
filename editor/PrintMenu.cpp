#include "PrintMenu.h"

#include <QComboBox>
#include <QDeadlineTimer>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>
#include <QSettings>
#include <QThread>

#include "Document.h"
#include "FileTask.h"
#include "KXDocumentInterface.h"
#include "KXMessageBox.h"
#include "NVPrintPreviewDialog.h"
#include "PrintJobs.h"
#include "PrintPage.h"
#include "PrintServer.h"
#include "PrinterList.h"
#include "WatchedDevice.h"

namespace
{

const QLatin1String SettingsKey("print/settings");
const QLatin1String FolderKey("print/folder");
// How long a job is looked at, and the time between two looks.
const int LookMs = 2000;
const int PauseMs = 100;

QComboBox* ListOf(const NVPrintPreviewDialog* dialog, const char* name)
{
    return dialog->findChild<QComboBox*>(QLatin1String(name));
}

QString PrinterOf(const NVPrintPreviewDialog* dialog)
{
    return ListOf(dialog, "m_pPrinter")->currentText();
}

QString SummaryOf(const NVPrintPreviewDialog* dialog, const QSize& picture)
{
    return PrintSummary(
        {ListOf(dialog, "m_pPageSize")->currentText(), dialog->CalcAffineTransformation(), picture,
         ListOf(dialog, "m_pDPI")->currentData().toInt(),
         ToPageLayoutUnits(NVPrintPreviewDialog::Unit(ListOf(dialog, "m_pUnits")->currentIndex()))});
}

// Empty if the page has room.
QString WhyNoRoom(const NVPrintPreviewDialog* dialog)
{
    if (ListOf(dialog, "m_pDPI")->currentData().toInt() <= 0)
        return PrintMenu::tr("The printer %1 offers no resolution to print with.").arg(PrinterOf(dialog));
    if (dialog->GetClipRect().isEmpty())
        return PrintMenu::tr("The margins leave no room on the page.");
    return QString();
}

} // namespace

// What became of a job.
struct PrintMenu::Outcome
{
    // False where the server does not tell of jobs.
    bool isKnown = false;
    // Without number if the queue did not take it.
    QueuedJob job;

    // Looks at the first job of the queue above that number until it is done with, for a short while at most:
    // a queue that fails does so soon, and a long document is printed by itself. Blocks, so it is for another
    // thread.
    void Find(const QString& address, const QString& printer, int lastJob, const FileProgress* progress)
    {
        const QDeadlineTimer deadline(LookMs);
        do
        {
            const QueuedJobs jobs = lastJob < 0 ? QueuedJobs() : AskForJobs(address);
            isKnown = jobs.isKnown;
            job = jobs.FirstAfter(lastJob, printer);
            if (!isKnown || job.id == 0 || !job.IsOpen())
                return;
            QThread::msleep(PauseMs);
        } while (!deadline.hasExpired() && !progress->cancelled);
    }
};

// What the print server says.
struct PrintMenu::Printers
{
    PrintServerState state = PrintServerState::Hangs;
    QString address;
    PrinterList list;
    // Below 0 if it does not tell.
    int lastJob = -1;

    // Blocks, so it is for another thread.
    void Find(const FileProgress* progress)
    {
        address = PrintServerAddress();
        state = ProbePrintServer(address);
        // Where none is found here, the toolkit may still know one by the system's settings.
        if (state == PrintServerState::Hangs)
            return;
        if (!list.Find(progress))
        {
            state = PrintServerState::Hangs;
            return;
        }
        const QueuedJobs jobs = list.names.isEmpty() ? QueuedJobs() : AskForJobs(address);
        lastJob = jobs.isKnown ? jobs.LastId() : -1;
    }

    // Empty if there is a printer.
    QString WhyNone() const
    {
        if (state == PrintServerState::Hangs)
            return tr("The print server at %1 does not answer.").arg(address);
        if (!list.names.isEmpty())
            return QString();
        if (state == PrintServerState::Absent)
            return tr("There is no printer: no print server was found at %1.").arg(address);
        return tr("There is no printer: the print server at %1 knows none.").arg(address);
    }
};

PrintMenu::PrintMenu(QMenu* menu, const Host& host, QObject* parent)
    : QObject(parent),
      m_host(host),
      m_pPrint(menu->addAction(tr("&Print..."), this, &PrintMenu::OnPrint)),
      m_pExportPdf(menu->addAction(tr("&Export as PDF..."), this, &PrintMenu::OnExportPdf))
{
    m_pPrint->setShortcut(Qt::CTRL + Qt::Key_P);
    SetDocument(nullptr);
}

void PrintMenu::SetDocument(Document* document)
{
    m_pDocument = document;
    for (QAction* action : {m_pPrint, m_pExportPdf})
        action->setEnabled(document);
}

bool PrintMenu::ExportPdf(const QString& path)
{
    if (!m_pDocument)
        return false;
    Q_EMIT AboutToChange();
    const PrintLayout layout = ReadPrintSettings(m_host.settings->value(SettingsKey).toByteArray());
    const QImage picture = m_pDocument->GetPixels()->GetComposition();
    const QString name = QFileInfo(path).fileName();
    QString error;
    bool isCancelled = false;
    const auto write = [&](FileProgress* progress)
    {
        error = WritePdf(PrintablePicture(picture), layout, path, progress);
        isCancelled = progress->cancelled;
    };
    if (!m_host.task->Run(tr("Exporting %1").arg(name), write))
        return false;
    if (!error.isEmpty())
        ShowMessage(m_host.window, KXMessageBox::Error,
                    tr("\"%1\" could not be exported.\n\n%2").arg(QDir::toNativeSeparators(path), error));
    else if (isCancelled)
        Q_EMIT Message(tr("The export was cancelled."));
    else
        Q_EMIT Message(tr("Exported %1: %2.").arg(name, PdfSummary(layout, picture.size())));
    return error.isEmpty() && !isCancelled;
}

void PrintMenu::OnPrint()
{
    Q_EMIT AboutToChange();
    QImage picture = m_pDocument->GetPixels()->GetComposition();
    Printers printers;
    bool isCancelled = false;
    const auto work = [&](FileProgress* progress)
    {
        printers.Find(progress);
        picture = PrintablePicture(picture);
        isCancelled = progress->cancelled;
    };
    if (!m_host.task->Run(tr("Asking the print server"), work) || !m_pDocument)
        return;
    if (isCancelled)
        Q_EMIT Message(tr("Nothing was printed."));
    else if (!printers.WhyNone().isEmpty())
        OfferPdf(printers.WhyNone());
    else
        ShowDialog(picture);
}

void PrintMenu::OnExportPdf()
{
    const QString folder = m_host.settings->value(FolderKey, QDir::homePath()).toString();
    QFileDialog dialog(m_host.window, tr("Export as PDF"), folder, tr("PDF file (*.pdf)"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("pdf"));
    dialog.selectFile(QFileInfo(m_pDocument->GetTitle()).completeBaseName() + QStringLiteral(".pdf"));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return;
    const QString path = dialog.selectedFiles().constFirst();
    if (ExportPdf(path))
        m_host.settings->setValue(FolderKey, QFileInfo(path).absolutePath());
}

// The dialog would send the job of a printer that is gone to the default queue, so it prints only after a
// look at the printers there are now.
void PrintMenu::OnPrintAsked()
{
    const QPointer<QWidget> focus = m_pDialog->focusWidget();
    m_pDialog->setEnabled(false);
    const QString reason = WhyNotPrintable(PrinterOf(m_pDialog));
    // It may have been closed meanwhile.
    if (!m_pDialog || !m_pDialog->isVisible())
        return;
    m_pDialog->setEnabled(true);
    if (focus)
        focus->setFocus();
    OnPreview();
    if (reason.isEmpty())
    {
        m_isPrinting = true;
        QMetaObject::invokeMethod(m_pDialog, "OnPrint", Qt::DirectConnection);
    }
    else
        ShowMessage(m_pDialog, KXMessageBox::Warning, tr("%1\n\nNothing was printed.").arg(reason));
}

void PrintMenu::OnPreview()
{
    const QString reason = WhyNoRoom(m_pDialog);
    Q_EMIT Preview(reason.isEmpty() ? SummaryOf(m_pDialog, m_pictureSize) : reason, 0);
}

bool PrintMenu::Ask(Printers* printers)
{
    bool isCancelled = false;
    const auto work = [&](FileProgress* progress)
    {
        printers->Find(progress);
        isCancelled = progress->cancelled;
    };
    return m_host.task->Run(tr("Asking the print server"), work) && !isCancelled;
}

QString PrintMenu::WhyNotPrintable(const QString& printer)
{
    const QString noRoom = WhyNoRoom(m_pDialog);
    if (!noRoom.isEmpty())
        return noRoom;
    Printers printers;
    if (!Ask(&printers))
        return tr("The print server was not asked to the end.");
    const QString none = printers.WhyNone();
    if (none.isEmpty() && !printers.list.names.contains(printer))
        return tr("The printer %1 is not there any more.").arg(printer);
    m_lastJob = printers.lastJob;
    return none;
}

void PrintMenu::ShowDialog(const QImage& picture)
{
    NVPrintPreviewDialog dialog(m_host.window);
    dialog.setWindowTitle(tr("Print"));
    dialog.RestoreSettings(m_host.settings->value(SettingsKey).toByteArray());
    dialog.SetSource(picture);
    m_pictureSize = picture.size();
    Follow(&dialog);
    const bool isDone = dialog.Exec() == KXDialog::ResultAccepted;
    disconnect(&dialog, nullptr, this, nullptr);
    m_pDialog = nullptr;
    if (!m_isPrinting)
    {
        Q_EMIT Message(tr("Nothing was printed."));
        return;
    }
    m_host.settings->setValue(SettingsKey, dialog.SaveSettings());
    const QString summary = SummaryOf(&dialog, m_pictureSize);
    if (isDone)
        TellOutcome(PrinterOf(&dialog), summary);
    else
        Q_EMIT Message(tr("Still sending to %1: %2.").arg(PrinterOf(&dialog), summary));
}

void PrintMenu::Follow(NVPrintPreviewDialog* dialog)
{
    auto* box = dialog->findChild<QDialogButtonBox*>(QStringLiteral("m_pButtonBox"));
    disconnect(box, &QDialogButtonBox::accepted, dialog, nullptr);
    connect(box, &QDialogButtonBox::accepted, this, &PrintMenu::OnPrintAsked);
    connect(dialog, &NVPrintPreviewDialog::UpdatePreview, this, &PrintMenu::OnPreview);
    // The server may be asked meanwhile.
    connect(dialog, &KXDialog::Finished, m_host.task, &FileTask::Cancel);
    m_pDialog = dialog;
    m_isPrinting = false;
    OnPreview();
}

void PrintMenu::TellOutcome(const QString& printer, const QString& summary)
{
    Printers printers;
    Outcome outcome;
    const auto work = [&](FileProgress* progress)
    {
        outcome.Find(PrintServerAddress(), printer, m_lastJob, progress);
        printers.Find(progress);
    };
    const bool isAsked = m_host.task->Run(tr("Asking the print server"), work);
    if (outcome.isKnown && outcome.job.id == 0)
        TellFailure(tr("%1 did not take the job: %2.").arg(printer, summary));
    else if (outcome.job.IsFailed())
        TellFailure(tr("%1 did not print the job: %2.").arg(printer, summary));
    else if (!isAsked || !outcome.isKnown)
        Q_EMIT Message(
            tr("The print server does not tell whether %1 took the job: %2.").arg(printer, summary));
    else if (printers.list.stopped.contains(printer))
        Q_EMIT Message(tr("%1 is stopped, the job waits there: %2.").arg(printer, summary));
    else
        Q_EMIT Message(tr("Sent to %1: %2.").arg(printer, summary));
}

void PrintMenu::TellFailure(const QString& text)
{
    Q_EMIT Message(text);
    ShowMessage(m_host.window, KXMessageBox::Warning, text);
}

void PrintMenu::OfferPdf(const QString& reason)
{
    const QString text = tr("%1\n\nExport the picture as a PDF file instead?").arg(reason);
    if (ShowMessage(m_host.window, KXMessageBox::Warning, text, true) == KXMessageBox::Yes && m_pDocument)
        OnExportPdf();
}

int PrintMenu::ShowMessage(QWidget* over, int icon, const QString& text, bool isQuestion)
{
    KXMessageBox box(over);
    box.setWindowTitle(tr("Norvane"));
    box.SetIcon(KXMessageBox::Icon(icon));
    box.SetText(text);
    box.AddButton(isQuestion ? KXMessageBox::Yes : KXMessageBox::Ok);
    if (isQuestion)
        box.AddButton(KXMessageBox::No);
    box.SetDefaultButton(isQuestion ? KXMessageBox::Yes : KXMessageBox::Ok);
    return box.Exec();
}
