#include "MainWindow.h"

#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QHelpEvent>
#include <QLabel>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QMimeData>
#include <QPushButton>
#include <QSettings>
#include <QStatusBar>
#include <QTabBar>
#include <QToolTip>
#include <QUndoGroup>
#include <QUndoStack>

#include <cmath>

#include "BrushTool.h"
#include "ColorSwatches.h"
#include "Document.h"
#include "DocumentFile.h"
#include "DocumentWindow.h"
#include "FileTask.h"
#include "HandTool.h"
#include "KXDocumentInterface.h"
#include "KXMdiArea.h"
#include "KXMessageBox.h"
#include "NVApplication.h"
#include "NVDocumentView.h"
#include "NewDocumentDialog.h"
#include "OptionArea.h"
#include "RecentFiles.h"
#include "SamplePicture.h"
#include "Theme.h"
#include "TilesCommand.h"
#include "ToolBox.h"
#include "ZoomTool.h"

namespace
{

const double ZoomStep = std::sqrt(2.0);

const QLatin1String GeometryKey("window/geometry");
const QLatin1String ThemeKey("window/theme");
const QLatin1String OptionBarKey("window/optionBar");
const QLatin1String FolderKey("files/folder");

// A menu takes "&" for an accelerator.
QString MenuText(QString text)
{
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}

QString ScaleText(double scale)
{
    const double percent = scale * 100;
    return MainWindow::tr("%1 %").arg(percent, 0, 'f', percent < 10 ? 1 : 0);
}

} // namespace

MainWindow::MainWindow(QSettings* settings, QWidget* parent)
    : QMainWindow(parent),
      m_pSettings(settings),
      m_pTheme(nullptr),
      m_pRecent(new RecentFiles(settings, this)),
      m_pTask(new FileTask(statusBar(), this)),
      m_pUndoGroup(new QUndoGroup(this)),
      m_pArea(new KXMdiArea(this)),
      m_pOptions(new OptionArea(this)),
      m_pOptionBar(nullptr),
      m_pToolBox(nullptr)
{
    NVApplication::GetInstance()->SetTheme(m_pSettings->value(ThemeKey, 0).toInt());
    m_pTheme = new Theme(this);
    setAcceptDrops(true);
    setContextMenuPolicy(Qt::NoContextMenu);
    setCentralWidget(m_pArea);
    m_pArea->viewport()->installEventFilter(this);
    CreateTools();
    CreateStatusBar();
    CreateFileMenu();
    CreateEditMenu();
    CreateViewMenu();
    CreateOtherMenus();
    connect(m_pArea, &QMdiArea::subWindowActivated, this, &MainWindow::OnWindowActivated);
    connect(m_pTask, &FileTask::BusyChanged, this, &MainWindow::OnBusyChanged);
    connect(m_pTheme, &Theme::Changed, this, &MainWindow::OnThemeChanged);
    OnThemeChanged(NVApplication::GetInstance()->GetTheme());
    OnToolChosen(m_pBrush);
    OnRecentChanged();
    UpdateActions();
    UpdateTitle();
    RestoreWindow();
}

MainWindow::~MainWindow()
{
    // The tool lets go of the canvas before the canvas goes, and the windows go before the group of their
    // undo stacks.
    m_pTool->Deactivate();
    disconnect(m_pArea, nullptr, this, nullptr);
    m_pArea->viewport()->removeEventFilter(this);
    const QList<DocumentWindow*> windows = GetDocumentWindows();
    for (DocumentWindow* window : windows)
        RemoveWindow(window);
    delete m_pArea;
}

Document* MainWindow::GetDocument() const
{
    return m_pWindow ? m_pWindow->GetDocument() : nullptr;
}

NVDocumentView* MainWindow::GetView() const
{
    return m_pWindow ? m_pWindow->GetView() : nullptr;
}

QList<DocumentWindow*> MainWindow::GetDocumentWindows() const
{
    QList<DocumentWindow*> windows;
    const QList<QMdiSubWindow*> all = m_pArea->subWindowList();
    for (QMdiSubWindow* window : all)
        windows += qobject_cast<DocumentWindow*>(window);
    return windows;
}

Tool* MainWindow::GetTool() const
{
    return m_pTool;
}

BrushTool* MainWindow::GetBrushTool() const
{
    return m_pBrush;
}

RecentFiles* MainWindow::GetRecentFiles() const
{
    return m_pRecent;
}

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
    const QString path = window->GetDocument()->GetPath();
    return path.isEmpty() || !HasWritableSuffix(path) ? SaveDocumentAs(window) : WriteDocument(window, path);
}

bool MainWindow::SaveDocumentAs(DocumentWindow* window)
{
    const QString path = window->GetDocument()->GetPath();
    const QString folder = m_pSettings->value(FolderKey, QDir::homePath()).toString();
    QFileDialog dialog(this, tr("Save As"), path.isEmpty() ? folder : QFileInfo(path).absolutePath());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilters(SaveNameFilters().split(QStringLiteral(";;")));
    dialog.setDefaultSuffix(QStringLiteral("png"));
    dialog.selectFile(HasWritableSuffix(path)
                          ? QFileInfo(path).fileName()
                          : QFileInfo(window->GetDocument()->GetTitle()).completeBaseName() +
                              QStringLiteral(".png"));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return false;
    return WriteDocument(window, dialog.selectedFiles().constFirst());
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
    if (m_pTask->IsRunning())
        return false;
    m_pTool->Finish();
    if (window->GetDocument()->IsModified())
    {
        m_pArea->setActiveSubWindow(window);
        const int answer = AskAboutChanges(window);
        if (answer != KXMessageBox::Save && answer != KXMessageBox::Discard)
            return false;
        if (answer == KXMessageBox::Save && !SaveDocument(window))
            return false;
    }
    RemoveWindow(window);
    return true;
}

void MainWindow::ChooseTool(Tool* tool)
{
    m_pToolBox->Choose(tool);
}

void MainWindow::ShowStatus(const QString& text)
{
    statusBar()->showMessage(text, 10000);
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    event->ignore();
    if (m_pTask->IsRunning())
    {
        m_pTask->Cancel();
        return;
    }
    m_pTool->Finish();
    const QList<DocumentWindow*> windows = GetDocumentWindows();
    for (DocumentWindow* window : windows)
    {
        if (window->GetDocument()->IsModified() && !CloseDocument(window))
            return;
    }
    StoreWindow();
    event->accept();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    const QList<QUrl> urls = event->mimeData()->urls();
    for (const QUrl& url : urls)
    {
        if (url.isLocalFile() && !m_pTask->IsRunning())
            event->acceptProposedAction();
    }
}

void MainWindow::dropEvent(QDropEvent* event)
{
    event->acceptProposedAction();
    QStringList paths;
    const QList<QUrl> urls = event->mimeData()->urls();
    for (const QUrl& url : urls)
    {
        if (url.isLocalFile())
            paths += url.toLocalFile();
    }
    // The program that the files come from waits for the end of the drop: it does not wait for a question,
    // too.
    QMetaObject::invokeMethod(
        this, [this, paths] { OpenFiles(paths); }, Qt::QueuedConnection);
}

bool MainWindow::eventFilter(QObject* object, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonPress && object == m_pArea->viewport() && !m_pWindow)
        ShowStatus(tr("There is no picture: open one, or make a new one."));
    auto* tabs = qobject_cast<QTabBar*>(object);
    if (tabs && event->type() == QEvent::ToolTip)
    {
        // A file name is plain text, whatever it looks like.
        const auto* help = static_cast<QHelpEvent*>(event);
        const int tab = tabs->tabAt(help->pos());
        if (tab >= 0)
            QToolTip::showText(help->globalPos(),
                               QStringLiteral("<p>%1</p>").arg(tabs->tabText(tab).toHtmlEscaped()), tabs);
        return true;
    }
    return QMainWindow::eventFilter(object, event);
}

void MainWindow::OnNew()
{
    NewDocumentDialog dialog(this);
    if (dialog.Exec() != KXDialog::ResultAccepted)
        return;
    QImage image(dialog.GetSize(), QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
    {
        ShowError(tr("There is not enough memory for a picture of this size."));
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

void MainWindow::OnClose()
{
    if (m_pWindow)
        CloseDocument(m_pWindow);
}

void MainWindow::OnUndo()
{
    // A stroke under way is the step that is taken back.
    if (!m_pTool->Cancel())
        m_pUndoGroup->undo();
}

void MainWindow::OnRedo()
{
    m_pTool->Finish();
    m_pUndoGroup->redo();
}

void MainWindow::OnClearLayer()
{
    if (!m_pWindow)
        return;
    m_pTool->Finish();
    KXDocumentInterface* pixels = GetDocument()->GetPixels();
    const int layer = pixels->GetCurrentLayer();
    QVector<SavedTile> tiles = {{pixels->GetRect(), pixels->GetLayer(layer).image}};
    QImage empty(pixels->GetSize(), QImage::Format_ARGB32_Premultiplied);
    if (empty.isNull())
        return;
    empty.fill(Qt::transparent);
    pixels->EditLayer(layer).swap(empty);
    pixels->NotifyChanged(pixels->GetRect());
    GetDocument()->GetUndoStack()->push(new TilesCommand(tr("Clear Layer"), pixels, layer, std::move(tiles)));
}

void MainWindow::OnZoomIn()
{
    if (NVDocumentView* view = GetView())
        ZoomTo(view->GetScale() * ZoomStep);
}

void MainWindow::OnZoomOut()
{
    if (NVDocumentView* view = GetView())
        ZoomTo(view->GetScale() / ZoomStep);
}

void MainWindow::OnZoomOriginal()
{
    ZoomTo(1.0);
}

void MainWindow::OnZoomFit()
{
    if (NVDocumentView* view = GetView())
        view->FitInView();
}

void MainWindow::OnThemeTriggered(QAction* action)
{
    NVApplication::GetInstance()->SetTheme(action->data().toInt());
    m_pSettings->setValue(ThemeKey, NVApplication::GetInstance()->GetTheme());
}

void MainWindow::OnAbout()
{
    KXMessageBox box(this);
    box.setWindowTitle(tr("About Norvane"));
    box.SetIcon(KXMessageBox::Information);
    box.SetText(tr("Norvane %1\n\nA small image editor.").arg(QApplication::applicationVersion()));
    box.AddButton(KXMessageBox::Close);
    box.SetDefaultButton(KXMessageBox::Close);
    box.Exec();
}

void MainWindow::OnWindowActivated()
{
    auto* window = qobject_cast<DocumentWindow*>(m_pArea->currentSubWindow());
    if (window == m_pWindow)
        return;
    if (m_pWindow)
        disconnect(m_pWindow->GetView(), nullptr, this, nullptr);
    m_pWindow = window;
    m_pTool->SetCanvas(GetView(), GetDocument());
    m_pUndoGroup->setActiveStack(window ? GetDocument()->GetUndoStack() : nullptr);
    if (window)
    {
        connect(GetView(), &NVDocumentView::ScaleChanged, this, &MainWindow::OnScaleChanged);
        connect(GetView(), &NVDocumentView::Moved, this, &MainWindow::OnPointerMoved);
        connect(GetView(), &NVDocumentView::PointerLeft, this, &MainWindow::OnPointerLeft);
        OnScaleChanged(GetView()->GetScale());
    }
    OnPointerLeft();
    UpdateActions();
    UpdateTitle();
}

void MainWindow::OnCloseAsked(DocumentWindow* window)
{
    CloseDocument(window);
}

void MainWindow::OnDocumentStateChanged()
{
    UpdateTitle();
}

void MainWindow::OnUndoTextChanged(const QString& text)
{
    m_pUndo->setText(text.isEmpty() ? tr("&Undo") : tr("&Undo %1").arg(text));
}

void MainWindow::OnRedoTextChanged(const QString& text)
{
    m_pRedo->setText(text.isEmpty() ? tr("&Redo") : tr("&Redo %1").arg(text));
}

void MainWindow::OnToolChosen(Tool* tool)
{
    if (tool == m_pTool)
        return;
    if (m_pTool)
    {
        m_pTool->Deactivate();
        m_pTool->SetCanvas(nullptr, nullptr);
    }
    m_pTool = tool;
    m_pTool->SetCanvas(GetView(), GetDocument());
    m_pTool->Activate();
    m_pOptions->ShowBar(m_pTool->GetBar());
}

void MainWindow::OnScaleChanged(double scale)
{
    m_pZoomLabel->setText(ScaleText(scale));
}

void MainWindow::OnPointerMoved(const CanvasPoint& point)
{
    m_pPointLabel->setText(
        tr("%1, %2").arg(int(std::floor(point.position.x()))).arg(int(std::floor(point.position.y()))));
}

void MainWindow::OnPointerLeft()
{
    m_pPointLabel->clear();
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

void MainWindow::OnBusyChanged(bool busy)
{
    for (QWidget* widget : {static_cast<QWidget*>(menuBar()), static_cast<QWidget*>(m_pOptionBar),
                            static_cast<QWidget*>(m_pToolBox), static_cast<QWidget*>(m_pArea)})
        widget->setEnabled(!busy);
}

void MainWindow::OnThemeChanged(int theme)
{
    for (const auto& picture : qAsConst(m_Pictures))
        picture.first->setIcon(Theme::Icon(picture.second));
    m_pToolBox->UpdateTheme();
    for (Tool* tool : qAsConst(m_Tools))
        tool->UpdateTheme();
    const QList<QAction*> themes = m_pThemes->actions();
    for (QAction* action : themes)
        action->setChecked(action->data().toInt() == theme);
    QApplication::setWindowIcon(Theme::Icon(QStringLiteral("app-norvane")));
}

void MainWindow::CreateTools()
{
    m_pBrush = new BrushTool(m_pSettings, this);
    m_Tools = {m_pBrush, new HandTool(this), new ZoomTool(this)};
    for (Tool* tool : qAsConst(m_Tools))
        connect(tool, &Tool::Message, this, &MainWindow::ShowStatus);
    m_pOptionBar = addToolBar(tr("Option Bar"));
    m_pOptionBar->setObjectName(QStringLiteral("OptionBar"));
    m_pOptionBar->setMovable(false);
    m_pOptionBar->addWidget(m_pOptions);
    m_pToolBox = new ToolBox(m_Tools, this);
    addToolBar(Qt::LeftToolBarArea, m_pToolBox);
    connect(m_pToolBox, &ToolBox::ToolChosen, this, &MainWindow::OnToolChosen);
}

void MainWindow::CreateStatusBar()
{
    m_pPointLabel = new QLabel(this);
    m_pSizeLabel = new QLabel(this);
    m_pZoomLabel = new QLabel(this);
    m_pPointLabel->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("-10000, -10000")));
    m_pPointLabel->setAccessibleName(tr("Pointer position"));
    m_pSizeLabel->setAccessibleName(tr("Picture size"));
    m_pZoomLabel->setAccessibleName(tr("Zoom"));
    for (QLabel* label : {m_pPointLabel, m_pSizeLabel, m_pZoomLabel})
    {
        label->setMargin(4);
        statusBar()->addPermanentWidget(label);
    }
}

void MainWindow::CreateFileMenu()
{
    QMenu* menu = menuBar()->addMenu(tr("&File"));
    AddAction(menu, tr("&New..."), QStringLiteral("document-new"), QKeySequence::New, &MainWindow::OnNew);
    AddAction(menu, tr("&Open..."), QStringLiteral("document-open"), QKeySequence::Open, &MainWindow::OnOpen);
    m_pRecentMenu = menu->addMenu(tr("Open &Recent"));
    connect(m_pRecentMenu, &QMenu::triggered, this, &MainWindow::OnRecentTriggered);
    connect(m_pRecent, &RecentFiles::Changed, this, &MainWindow::OnRecentChanged, Qt::QueuedConnection);
    menu->addSeparator();
    m_DocumentActions += {AddAction(menu, tr("&Save"), QStringLiteral("document-save"), QKeySequence::Save,
                                    &MainWindow::OnSave),
                          AddAction(menu, tr("Save &As..."), QStringLiteral("document-save-as"),
                                    QKeySequence(Qt::CTRL + Qt::SHIFT + Qt::Key_S), &MainWindow::OnSaveAs)};
    menu->addSeparator();
    m_DocumentActions += AddAction(menu, tr("&Close"), QStringLiteral("document-close"),
                                   QKeySequence(Qt::CTRL + Qt::Key_W), &MainWindow::OnClose);
    AddAction(menu, tr("&Quit"), QString(), QKeySequence(Qt::CTRL + Qt::Key_Q), &MainWindow::close);
}

void MainWindow::CreateEditMenu()
{
    QMenu* menu = menuBar()->addMenu(tr("&Edit"));
    m_pUndo = AddAction(menu, tr("&Undo"), QStringLiteral("edit-undo"), QKeySequence(Qt::CTRL + Qt::Key_Z),
                        &MainWindow::OnUndo);
    m_pRedo = AddAction(menu, tr("&Redo"), QStringLiteral("edit-redo"),
                        QKeySequence(Qt::CTRL + Qt::SHIFT + Qt::Key_Z), &MainWindow::OnRedo);
    menu->addSeparator();
    m_DocumentActions += AddAction(menu, tr("&Clear Layer"), QString(),
                                   QKeySequence(Qt::CTRL + Qt::Key_Delete), &MainWindow::OnClearLayer);
    menu->addSeparator();
    QAction* swap = menu->addAction(tr("&Swap Colours"), this, &ColorSwatches::Swap);
    swap->setShortcut(Qt::Key_X);
    m_Pictures += {swap, QStringLiteral("swap-colors")};
    QAction* defaults = menu->addAction(tr("&Default Colours"), this, &ColorSwatches::ResetToDefaults);
    defaults->setShortcut(Qt::Key_D);
    m_Pictures += {defaults, QStringLiteral("default-colors")};
    connect(m_pUndoGroup, &QUndoGroup::canUndoChanged, m_pUndo, &QAction::setEnabled);
    connect(m_pUndoGroup, &QUndoGroup::canRedoChanged, m_pRedo, &QAction::setEnabled);
    connect(m_pUndoGroup, &QUndoGroup::undoTextChanged, this, &MainWindow::OnUndoTextChanged);
    connect(m_pUndoGroup, &QUndoGroup::redoTextChanged, this, &MainWindow::OnRedoTextChanged);
    m_pUndo->setEnabled(false);
    m_pRedo->setEnabled(false);
}

void MainWindow::CreateViewMenu()
{
    QMenu* menu = menuBar()->addMenu(tr("&View"));
    QAction* in =
        AddAction(menu, tr("Zoom &In"), QStringLiteral("zoom-in"), QKeySequence(), &MainWindow::OnZoomIn);
    // The plus of most keyboards needs Shift, and the one of the number pad does not.
    in->setShortcuts({QKeySequence(Qt::CTRL + Qt::Key_Plus), QKeySequence(Qt::CTRL + Qt::Key_Equal)});
    m_DocumentActions += in;
    m_DocumentActions += AddAction(menu, tr("Zoom &Out"), QStringLiteral("zoom-out"),
                                   QKeySequence(Qt::CTRL + Qt::Key_Minus), &MainWindow::OnZoomOut);
    m_DocumentActions += AddAction(menu, tr("&Original Size"), QStringLiteral("zoom-original"),
                                   QKeySequence(Qt::CTRL + Qt::Key_1), &MainWindow::OnZoomOriginal);
    m_DocumentActions += AddAction(menu, tr("&Fit in Window"), QStringLiteral("zoom-fit"),
                                   QKeySequence(Qt::CTRL + Qt::Key_0), &MainWindow::OnZoomFit);
    menu->addSeparator();
    QAction* bar = m_pOptionBar->toggleViewAction();
    bar->setText(tr("Option &Bar"));
    menu->addAction(bar);
    CreateThemeMenu(menu);
}

void MainWindow::CreateThemeMenu(QMenu* view)
{
    QMenu* menu = view->addMenu(tr("&Theme"));
    menu->setObjectName(QStringLiteral("ThemeMenu"));
    m_pThemes = new QActionGroup(this);
    const QPair<QString, QString> themes[] = {{tr("&Light"), QStringLiteral("theme-light")},
                                              {tr("&Dark"), QStringLiteral("theme-dark")},
                                              {tr("&High Contrast"), QStringLiteral("theme-contrast")}};
    for (int theme = 0; theme < 3; ++theme)
    {
        QAction* action = m_pThemes->addAction(themes[theme].first);
        action->setCheckable(true);
        action->setData(theme);
        menu->addAction(action);
        m_Pictures += {action, themes[theme].second};
    }
    connect(m_pThemes, &QActionGroup::triggered, this, &MainWindow::OnThemeTriggered);
}

void MainWindow::CreateOtherMenus()
{
    menuBar()->addMenu(tr("&Tools"))->addActions(m_pToolBox->GetToolActions());
    QMenu* help = menuBar()->addMenu(tr("&Help"));
    AddAction(help, tr("&About Norvane"), QString(), QKeySequence(), &MainWindow::OnAbout);
}

template <typename Slot>
QAction* MainWindow::AddAction(QMenu* menu, const QString& text, const QString& picture,
                               const QKeySequence& key, Slot slot)
{
    QAction* action = menu->addAction(text, this, slot);
    action->setShortcut(key);
    if (!picture.isEmpty())
        m_Pictures += {action, picture};
    return action;
}

void MainWindow::RestoreWindow()
{
    if (!restoreGeometry(m_pSettings->value(GeometryKey).toByteArray()))
        resize(1280, 860);
    m_pOptionBar->setVisible(m_pSettings->value(OptionBarKey, true).toBool());
}

void MainWindow::StoreWindow()
{
    m_pBrush->StoreValues();
    m_pSettings->setValue(GeometryKey, saveGeometry());
    m_pSettings->setValue(OptionBarKey, !m_pOptionBar->isHidden());
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
    {
        m_pTool->SetCanvas(nullptr, nullptr);
        disconnect(window->GetView(), nullptr, this, nullptr);
        m_pWindow = nullptr;
    }
    disconnect(window->GetDocument(), nullptr, this, nullptr);
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
    if (const auto* buttons = box.findChild<QDialogButtonBox*>())
        buttons->button(QDialogButtonBox::Discard)->setText(tr("&Don't Save"));
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

void MainWindow::UpdateActions()
{
    for (QAction* action : qAsConst(m_DocumentActions))
        action->setEnabled(m_pWindow);
    const QSize size = m_pWindow ? GetDocument()->GetPixels()->GetSize() : QSize();
    m_pSizeLabel->setText(m_pWindow ? tr("%1 x %2 px").arg(size.width()).arg(size.height()) : QString());
    if (!m_pWindow)
        m_pZoomLabel->clear();
}

void MainWindow::UpdateTitle()
{
    if (m_pWindow)
    {
        QString title = GetDocument()->GetTitle();
        title.replace(QLatin1String("[*]"), QLatin1String("[*][*]"));
        setWindowTitle(tr("%1[*] - Norvane").arg(title));
    }
    else
        setWindowTitle(tr("Norvane"));
    setWindowModified(m_pWindow && GetDocument()->IsModified());
}

void MainWindow::ZoomTo(double scale)
{
    if (NVDocumentView* view = GetView())
        view->Scale(scale / view->GetScale(), QRectF(view->viewport()->rect()).center());
}
