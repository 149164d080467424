// What the main window does with files and whole documents.

#include "MainWindow.h"

#include <QAction>
#include <QDir>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPushButton>
#include <QSettings>
#include <QTabBar>
#include <QUndoGroup>
#include <QUndoStack>

#include "BatchWindow.h"
#include "ColorRangeMenu.h"
#include "Document.h"
#include "DocumentFile.h"
#include "DocumentWindow.h"
#include "DroppedFiles.h"
#include "FileTask.h"
#include "HistoryDock.h"
#include "ImageMenu.h"
#include "KXDocumentInterface.h"
#include "KXMdiArea.h"
#include "KXMessageBox.h"
#include "LayerMenu.h"
#include "LayerPrompt.h"
#include "MemoryRoom.h"
#include "NVDocumentView.h"
#include "NavigatorDock.h"
#include "NewDocumentDialog.h"
#include "PrintMenu.h"
#include "RecentFiles.h"
#include "SamplePicture.h"
#include "SelectMenu.h"
#include "Tool.h"

namespace
{

const QLatin1String FolderKey("files/folder");

// A menu takes "&" for an accelerator.
QString MenuText(QString text)
{
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}

} // namespace

bool MainWindow::OpenFile(const QString& path)
{
    if (DocumentWindow* window = WindowOf(path))
    {
        m_pArea->setActiveSubWindow(window);
        return true;
    }
    LoadResult result;
    const QString text = tr("Opening %1").arg(QFileInfo(path).fileName());
    if (!m_pTask->Run(text, [&](FileProgress* progress) { result = LoadDocumentFile(path, progress); }))
        return false;
    if (!result.error.isEmpty())
        ShowError(tr("\"%1\" could not be opened.\n\n%2").arg(QDir::toNativeSeparators(path), result.error));
    else if (result.image.isNull())
        ShowStatus(tr("Opening was cancelled."));
    if (result.image.isNull())
        return false;
    m_pRecent->Add(path);
    m_pSettings->setValue(FolderKey, QFileInfo(path).absolutePath());
    AddDocument(std::make_unique<Document>(std::move(result.image), path, QString()));
    return true;
}

void MainWindow::OpenFiles(const QStringList& paths)
{
    for (const QString& path : paths)
        OpenFile(path);
}

void MainWindow::OpenImage(const QImage& image, const QString& name)
{
    AddDocument(std::make_unique<Document>(image, QString(), name));
}

void MainWindow::OpenSample()
{
    OpenImage(DrawSamplePicture(), tr("Sample"));
}

bool MainWindow::SaveDocument(DocumentWindow* window)
{
    return Save(window) == Saved;
}

bool MainWindow::SaveDocumentAs(DocumentWindow* window)
{
    return SaveAs(window, true) == Saved;
}

// None of the formats that can be written holds layers.
MainWindow::SaveOutcome MainWindow::Save(DocumentWindow* window)
{
    const QString path = window->GetDocument()->GetPath();
    if (path.isEmpty() || !HasWritableSuffix(path))
        return SaveAs(window, true);
    const bool isFlat = window->GetDocument()->GetPixels()->GetLayerCount() == 1;
    return SaveBy(isFlat ? LayerPrompt::Save : m_pLayerPrompt->Ask(), window, path);
}

MainWindow::SaveOutcome MainWindow::SaveAs(DocumentWindow* window, bool asksAboutLayers)
{
    const QString path = AskForPath(window->GetDocument());
    if (path.isEmpty())
        return NotSaved;
    const bool isFlat = window->GetDocument()->GetPixels()->GetLayerCount() == 1;
    const bool asks = asksAboutLayers && !isFlat && m_pLayerPrompt->GetAction()->isChecked();
    return SaveBy(asks ? m_pLayerPrompt->Ask() : LayerPrompt::Save, window, path);
}

MainWindow::SaveOutcome MainWindow::SaveBy(int answer, DocumentWindow* window, const QString& path)
{
    if (answer == LayerPrompt::Save)
        return WriteDocument(window, path) ? Saved : NotSaved;
    if (answer == LayerPrompt::SaveAs)
        return SaveAs(window, false);
    const QString text = m_pLayerPrompt->IsAskedAgain()
        ? tr("%1 was not saved. You will be asked again: not to save is never remembered.")
        : tr("%1 was not saved.");
    ShowStatus(text.arg(window->GetDocument()->GetTitle()));
    return answer == LayerPrompt::DontSave ? LeftUnsaved : NotSaved;
}

QString MainWindow::AskForPath(const Document* document)
{
    const QString path = document->GetPath();
    const QString folder = m_pSettings->value(FolderKey, QDir::homePath()).toString();
    QFileDialog dialog(this, tr("Save As"), path.isEmpty() ? folder : QFileInfo(path).absolutePath());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilters(SaveNameFilters().split(QStringLiteral(";;")));
    dialog.setDefaultSuffix(QStringLiteral("png"));
    dialog.selectFile(HasWritableSuffix(path)
                          ? QFileInfo(path).fileName()
                          : QFileInfo(document->GetTitle()).completeBaseName() + QStringLiteral(".png"));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return QString();
    return dialog.selectedFiles().constFirst();
}

bool MainWindow::WriteDocument(DocumentWindow* window, const QString& path)
{
    m_pTool->Finish();
    SaveResult result;
    Document* document = window->GetDocument();
    const int index = document->GetUndoStack()->index();
    QImage image = document->GetPixels()->GetComposition();
    const int dotsPerMeter = qRound(document->GetPixels()->GetResolution() / 0.0254);
    const QString text = tr("Saving %1").arg(QFileInfo(path).fileName());
    const auto write = [&](FileProgress* progress)
    {
        image.setDotsPerMeterX(dotsPerMeter);
        image.setDotsPerMeterY(dotsPerMeter);
        result = SaveDocumentFile(image, path, progress);
    };
    if (!m_pTask->Run(text, write))
        return false;
    if (!result.ok)
    {
        if (result.error.isEmpty())
            ShowStatus(tr("Saving was cancelled."));
        else
            ShowError(
                tr("\"%1\" could not be saved.\n\n%2").arg(QDir::toNativeSeparators(path), result.error));
        return false;
    }
    if (document->GetUndoStack()->index() == index)
        document->MarkSaved(path);
    m_pRecent->Add(path);
    m_pSettings->setValue(FolderKey, QFileInfo(path).absolutePath());
    ShowStatus(tr("Saved %1.").arg(QFileInfo(path).fileName()));
    return true;
}

bool MainWindow::CloseDocument(DocumentWindow* window)
{
    const bool may = MayClose(window);
    if (may)
        RemoveWindow(window);
    return may;
}

bool MainWindow::MayClose(DocumentWindow* window)
{
    if (m_pTask->IsRunning())
        return false;
    m_pTool->Finish();
    if (!window->GetDocument()->IsModified())
        return true;
    m_pArea->setActiveSubWindow(window);
    const int answer = AskAboutChanges(window);
    return answer == KXMessageBox::Discard || (answer == KXMessageBox::Save && Save(window) != NotSaved);
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (!m_pTask->IsRunning() && !DroppedPaths(*event).isEmpty())
        AcceptAsCopy(event);
}

void MainWindow::dragMoveEvent(QDragMoveEvent* event)
{
    AcceptAsCopy(event);
}

void MainWindow::dropEvent(QDropEvent* event)
{
    AcceptAsCopy(event);
    const QStringList paths = DroppedPaths(*event);
    // The program that the files come from waits for the end of the drop: it does not wait for a question,
    // too.
    QMetaObject::invokeMethod(
        this, [this, paths] { OpenFiles(paths); }, Qt::QueuedConnection);
}

void MainWindow::OnNew()
{
    NewDocumentDialog dialog(this);
    if (dialog.Exec() != KXDialog::ResultAccepted)
        return;
    const QSize size = dialog.GetSize();
    const bool fits = WhyNotInMemory(size, 1).isEmpty();
    QImage image(fits ? size : QSize(), QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
    {
        ShowError(NoMemoryForPicture(size, 1));
        return;
    }
    image.fill(dialog.GetFill());
    OpenImage(image, tr("Unnamed"));
}

void MainWindow::OnOpen()
{
    const QString folder = m_pSettings->value(FolderKey, QDir::homePath()).toString();
    const QStringList paths = QFileDialog::getOpenFileNames(this, tr("Open"), folder, OpenNameFilters());
    OpenFiles(paths);
}

void MainWindow::OnRecentTriggered(QAction* action)
{
    const QString path = action->data().toString();
    if (path.isEmpty())
        m_pRecent->Clear();
    else if (QFileInfo::exists(path))
        OpenFile(path);
    else
    {
        m_pRecent->Remove(path);
        ShowError(tr("\"%1\" does not exist any more. It was taken out of the list of recent files.")
                      .arg(QDir::toNativeSeparators(path)));
    }
}

void MainWindow::OnSave()
{
    if (m_pWindow)
        SaveDocument(m_pWindow);
}

void MainWindow::OnSaveAs()
{
    if (m_pWindow)
        SaveDocumentAs(m_pWindow);
}

void MainWindow::OnBatch()
{
    if (!m_pBatch)
        m_pBatch = new BatchWindow(m_pSettings, this);
    m_pBatch->show();
    m_pBatch->raise();
    m_pBatch->activateWindow();
}

void MainWindow::OnClose()
{
    if (m_pWindow)
        CloseDocument(m_pWindow);
}

void MainWindow::OnCloseAsked(DocumentWindow* window)
{
    CloseDocument(window);
}

void MainWindow::OnRecentChanged()
{
    m_pRecentMenu->clear();
    for (const QString& path : m_pRecent->Paths())
        m_pRecentMenu->addAction(MenuText(QDir::toNativeSeparators(path)))->setData(path);
    m_pRecentMenu->addSeparator();
    m_pRecentMenu->addAction(tr("&Clear List"));
    m_pRecentMenu->setEnabled(!m_pRecent->Paths().isEmpty());
}

DocumentWindow* MainWindow::WindowOf(const QString& path) const
{
    const QString wanted = QFileInfo(path).canonicalFilePath();
    const QList<DocumentWindow*> windows = GetDocumentWindows();
    for (DocumentWindow* window : windows)
    {
        const QString open = window->GetDocument()->GetPath();
        if (!wanted.isEmpty() && !open.isEmpty() && QFileInfo(open).canonicalFilePath() == wanted)
            return window;
    }
    return nullptr;
}

void MainWindow::AddDocument(std::unique_ptr<Document> document)
{
    m_pUndoGroup->addStack(document->GetUndoStack());
    connect(document.get(), &Document::StateChanged, this, &MainWindow::OnDocumentStateChanged);
    connect(document->GetPixels(), &KXDocumentInterface::SizeChanged, this,
            &MainWindow::OnDocumentSizeChanged);
    auto* window = new DocumentWindow(std::move(document), m_pArea);
    connect(window, &DocumentWindow::CloseAsked, this, &MainWindow::OnCloseAsked);
    m_pArea->addSubWindow(window);
    window->showMaximized();
    if (auto* tabs = m_pArea->findChild<QTabBar*>())
    {
        tabs->setExpanding(false);
        tabs->installEventFilter(this);
    }
    m_pArea->setActiveSubWindow(window);
    OnWindowActivated();
    window->GetView()->FitInView();
    window->GetView()->setFocus();
}

void MainWindow::RemoveWindow(DocumentWindow* window)
{
    if (window == m_pWindow)
        SetWindow(nullptr);
    disconnect(window->GetDocument(), nullptr, this, nullptr);
    disconnect(window->GetDocument()->GetPixels(), nullptr, this, nullptr);
    m_pUndoGroup->removeStack(window->GetDocument()->GetUndoStack());
    m_pArea->removeSubWindow(window);
    window->hide();
    window->deleteLater();
    // The area shows the next one as a small window of its own otherwise.
    if (QMdiSubWindow* next = m_pArea->currentSubWindow())
        next->showMaximized();
    OnWindowActivated();
    UpdateActions();
    UpdateTitle();
}

int MainWindow::AskAboutChanges(const DocumentWindow* window)
{
    KXMessageBox box(this);
    box.setWindowTitle(tr("Unsaved Changes"));
    box.SetIcon(KXMessageBox::Question);
    box.SetText(tr("\"%1\" has changes that are not saved.\n\nSave them before it is closed?")
                    .arg(window->GetDocument()->GetTitle()));
    box.AddButton(KXMessageBox::Save);
    box.AddButton(KXMessageBox::Discard);
    box.AddButton(KXMessageBox::Cancel);
    box.SetDefaultButton(KXMessageBox::Save);
    box.SetButtonText(KXMessageBox::Discard, tr("&Don't Save"));
    return box.Exec();
}

void MainWindow::ShowError(const QString& text)
{
    KXMessageBox box(this);
    box.setWindowTitle(tr("Norvane"));
    box.SetIcon(KXMessageBox::Error);
    box.SetText(text);
    box.AddButton(KXMessageBox::Ok);
    box.SetDefaultButton(KXMessageBox::Ok);
    box.Exec();
}
