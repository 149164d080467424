#include "MainWindow.h"

#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QHelpEvent>
#include <QLabel>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QSettings>
#include <QStatusBar>
#include <QTabBar>
#include <QToolTip>
#include <QUndoGroup>
#include <QUndoStack>

#include <cmath>

#include "BatchWindow.h"
#include "BrushDock.h"
#include "BrushTool.h"
#include "ColorRangeDock.h"
#include "ColorRangeMenu.h"
#include "ColorSampleDock.h"
#include "Document.h"
#include "DocumentWindow.h"
#include "FileTask.h"
#include "HistoryDock.h"
#include "ImageMenu.h"
#include "KXDocumentInterface.h"
#include "KXMdiArea.h"
#include "KXMessageBox.h"
#include "LayerMenu.h"
#include "LoupeDock.h"
#include "NVApplication.h"
#include "NVDocumentView.h"
#include "NavigatorDock.h"
#include "OptionArea.h"
#include "PrintMenu.h"
#include "RecentFiles.h"
#include "SelectMenu.h"
#include "Theme.h"
#include "TilesCommand.h"
#include "ToolBox.h"

namespace
{

const double ZoomStep = std::sqrt(2.0);

const QLatin1String GeometryKey("window/geometry");
const QLatin1String StateKey("window/state");
const QLatin1String ThemeKey("window/theme");
const QLatin1String OptionBarKey("window/optionBar");

// Of the toolbars and panels that there are.
const int StateVersion = 1;

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
    CreateDocks();
    CreateStatusBar();
    CreateFileMenu();
    CreateEditMenu();
    CreateImageMenu();
    CreateLayerMenu();
    CreateSelectMenu();
    CreateViewMenu();
    CreateOtherMenus();
    connect(m_pArea, &QMdiArea::subWindowActivated, this, &MainWindow::OnWindowActivated);
    connect(m_pTask, &FileTask::BusyChanged, this, &MainWindow::OnBusyChanged);
    connect(m_pTheme, &Theme::Changed, this, &MainWindow::OnThemeChanged);
    OnThemeChanged(NVApplication::GetInstance()->GetTheme());
    m_pToolBox->Choose(m_pBrush);
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
    m_pBrushDock->ShowTool(nullptr);
    m_pNavigatorDock->SetView(nullptr);
    m_pHistoryDock->SetDocument(nullptr);
    m_pSampleDock->SetDocument(nullptr);
    m_pLoupeDock->SetCanvas(nullptr, nullptr);
    m_pColorRangeMenu->SetDocument(nullptr, nullptr);
    m_pImageMenu->SetDocument(nullptr, nullptr);
    m_pLayerMenu->SetDocument(nullptr);
    m_pPrintMenu->SetDocument(nullptr);
    m_pSelectMenu->SetDocument(nullptr, nullptr);
    disconnect(m_pArea, nullptr, this, nullptr);
    const QList<QDockWidget*> docks = findChildren<QDockWidget*>();
    for (const QDockWidget* dock : docks)
        disconnect(dock, nullptr, this, nullptr);
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

QList<Tool*> MainWindow::GetTools() const
{
    return m_Tools;
}

BrushTool* MainWindow::GetBrushTool() const
{
    return m_pBrush;
}

RecentFiles* MainWindow::GetRecentFiles() const
{
    return m_pRecent;
}

BatchWindow* MainWindow::GetBatchWindow() const
{
    return m_pBatch;
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
    if (m_pBatch && m_pBatch->isVisible() && !m_pBatch->close())
        return;
    m_pTool->Finish();
    // All are asked about before the first goes: nothing is lost where an answer stops the end.
    QList<DocumentWindow*> asked;
    const QList<DocumentWindow*> windows = GetDocumentWindows();
    for (DocumentWindow* window : windows)
    {
        if (!window->GetDocument()->IsModified())
            continue;
        if (!MayClose(window))
            return;
        asked += window;
    }
    for (DocumentWindow* window : qAsConst(asked))
        RemoveWindow(window);
    StoreWindow();
    event->accept();
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

void MainWindow::OnUndo()
{
    // A stroke under way is the step that is taken back.
    if (!m_pTool->Undo())
        m_pUndoGroup->undo();
}

void MainWindow::OnRedo()
{
    // What was taken back of something under way comes before the steps.
    if (m_pTool->Redo())
        return;
    m_pTool->Finish();
    m_pUndoGroup->redo();
}

void MainWindow::OnClearLayer()
{
    if (!m_pWindow)
        return;
    m_pTool->Finish();
    KXDocumentInterface* pixels = GetDocument()->GetPixels();
    if (!pixels->GetSelectionMask().isNull())
    {
        m_pSelectMenu->GetClearAction()->trigger();
        return;
    }
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

void MainWindow::OnAboutToChange()
{
    m_pTool->Finish();
}

void MainWindow::OnCanvasTaken()
{
    const bool isTaken = m_pColorRangeDock->IsOpen();
    m_pTool->SetCanvas(isTaken ? nullptr : GetView(), isTaken ? nullptr : GetDocument());
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

void MainWindow::OnPanelTriggered(bool isOpen)
{
    auto* dock = qobject_cast<QDockWidget*>(sender()->parent());
    // In front of the panels that share its place.
    if (isOpen && dock)
        dock->raise();
}

void MainWindow::OnPanelVisibilityChanged(bool visible)
{
    // Else the focus goes to whatever comes next, which may be the canvas of another document.
    const auto* dock = qobject_cast<QDockWidget*>(sender());
    if (!visible && dock && dock->isAncestorOf(focusWidget()) && GetView())
        GetView()->setFocus();
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
    if (window != m_pWindow)
        SetWindow(window);
}

void MainWindow::SetWindow(DocumentWindow* window)
{
    if (m_pWindow)
        disconnect(m_pWindow->GetView(), nullptr, this, nullptr);
    m_pWindow = window;
    m_pColorRangeMenu->SetDocument(GetDocument(), GetView());
    OnCanvasTaken();
    m_pImageMenu->SetDocument(GetDocument(), GetView());
    m_pLayerMenu->SetDocument(GetDocument());
    m_pPrintMenu->SetDocument(GetDocument());
    m_pSelectMenu->SetDocument(GetDocument(), GetView());
    m_pNavigatorDock->SetView(GetView());
    m_pHistoryDock->SetDocument(GetDocument());
    m_pSampleDock->SetDocument(GetDocument());
    m_pLoupeDock->SetCanvas(GetView(), GetDocument());
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

void MainWindow::OnDocumentStateChanged()
{
    UpdateTitle();
}

void MainWindow::OnDocumentSizeChanged()
{
    UpdateActions();
}

// What a tool has under way can be taken back before the first step.
void MainWindow::OnCanUndoChanged()
{
    m_pUndo->setEnabled(m_pUndoGroup->canUndo() || m_pTool->CanCancel());
}

void MainWindow::OnCanRedoChanged()
{
    m_pRedo->setEnabled(m_pUndoGroup->canRedo() || m_pTool->CanRedo());
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
    m_pColorRangeDock->Cancel();
    // What the tool before had to say means nothing to this one.
    statusBar()->clearMessage();
    if (m_pTool)
    {
        m_pTool->Deactivate();
        m_pTool->SetCanvas(nullptr, nullptr);
    }
    m_pTool = tool;
    m_pTool->SetCanvas(GetView(), GetDocument());
    m_pTool->Activate();
    m_pOptions->ShowBar(m_pTool->GetBar());
    m_pBrushDock->ShowTool(qobject_cast<StrokeTool*>(m_pTool));
}

// Of any tool: the bar that is shown is always that of the current one.
void MainWindow::OnBarChanged()
{
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

void MainWindow::OnBusyChanged(bool busy)
{
    for (QWidget* widget : {static_cast<QWidget*>(menuBar()), static_cast<QWidget*>(m_pOptionBar),
                            static_cast<QWidget*>(m_pToolBox), static_cast<QWidget*>(m_pArea),
                            static_cast<QWidget*>(m_pHistoryDock)})
        widget->setEnabled(!busy);
}

void MainWindow::OnThemeChanged(int theme)
{
    for (const auto& picture : qAsConst(m_Pictures))
        picture.first->setIcon(Theme::Icon(picture.second));
    m_pToolBox->UpdateTheme();
    for (Tool* tool : qAsConst(m_Tools))
        tool->UpdateTheme();
    m_pHistoryDock->UpdateTheme();
    const QList<QAction*> themes = m_pThemes->actions();
    for (QAction* action : themes)
        action->setChecked(action->data().toInt() == theme);
    QApplication::setWindowIcon(Theme::Icon(QStringLiteral("app-norvane")));
}

void MainWindow::RestoreWindow()
{
    if (!restoreGeometry(m_pSettings->value(GeometryKey).toByteArray()))
        resize(1280, 860);
    restoreState(m_pSettings->value(StateKey).toByteArray(), StateVersion);
    m_pOptionBar->setVisible(m_pSettings->value(OptionBarKey, true).toBool());
}

void MainWindow::StoreWindow()
{
    m_pTool->StoreValues();
    m_pLoupeDock->StoreValues();
    // It is not to be open at the next start.
    m_pColorRangeDock->Cancel();
    m_pSettings->setValue(GeometryKey, saveGeometry());
    m_pSettings->setValue(StateKey, saveState(StateVersion));
    m_pSettings->setValue(OptionBarKey, !m_pOptionBar->isHidden());
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
