#pragma once

#include <QObject>
#include <QPointer>
#include <QSize>

class Document;
class FileTask;
class NVPrintPreviewDialog;
class QAction;
class QMenu;
class QSettings;
class QWidget;

// Adds printing and the export as PDF to a menu and does what they say. The print server is asked off the GUI
// thread, so one that hangs holds up nothing. The settings of the last print are kept, and the PDF follows
// them too.
class PrintMenu : public QObject
{
    Q_OBJECT

public:
    // What the menu works with. None is owned, all outlive it; dialogs come up over the window.
    struct Host
    {
        QWidget* window;
        FileTask* task;
        QSettings* settings;
    };

    PrintMenu(QMenu* menu, const Host& host, QObject* parent);

    // What is printed from now on; not owned, may be null.
    void SetDocument(Document* document);

    // The command without its file dialog. A message tells why nothing was written. False then, without a
    // document, and after a cancel.
    bool ExportPdf(const QString& path);

Q_SIGNALS:
    // What is under way on the document has to come to its end now.
    void AboutToChange();
    // What was printed or written, for the status bar.
    void Message(const QString& text);
    // What the open dialog would print now, for as long; 0 is until the next text.
    void Preview(const QString& text, int milliseconds);

private Q_SLOTS:
    void OnPrint();
    void OnExportPdf();
    void OnPrintAsked();
    void OnPreview();

private:
    struct Printers;
    struct Outcome;

    // False after a cancel and while other work runs.
    bool Ask(Printers* printers);
    // Empty if the printer is there and the page has room.
    QString WhyNotPrintable(const QString& printer);
    void ShowDialog(const QImage& picture);
    // Prints for the dialog, and tells what it would print.
    void Follow(NVPrintPreviewDialog* dialog);
    void TellOutcome(const QString& printer, const QString& summary);
    // In the status bar and over the window.
    void TellFailure(const QString& text);
    void OfferPdf(const QString& reason);
    int ShowMessage(QWidget* over, int icon, const QString& text, bool isQuestion = false);

    Host m_host;
    QPointer<Document> m_pDocument;
    // While it is open.
    QPointer<NVPrintPreviewDialog> m_pDialog;
    // Whether it has sent a job. The window manager may close it before the job is done.
    bool m_isPrinting = false;
    QSize m_pictureSize;
    // The last one that the print server knew before this print; below 0 where it does not tell.
    int m_lastJob = -1;
    QAction* m_pPrint;
    QAction* m_pExportPdf;
};
