// The tools, the menus, the panels and the status bar of the main window.

#include "MainWindow.h"

#include <QActionGroup>
#include <QLabel>
#include <QMenuBar>
#include <QStatusBar>
#include <QToolBar>
#include <QUndoGroup>

#include "BlurTool.h"
#include "BrushDock.h"
#include "BrushTool.h"
#include "ColorPickerTool.h"
#include "ColorRangeDock.h"
#include "ColorRangeMenu.h"
#include "ColorSampleDock.h"
#include "ColorSamplerTool.h"
#include "ColorSwatches.h"
#include "CropTool.h"
#include "Document.h"
#include "DodgeTool.h"
#include "EraserTool.h"
#include "FillTool.h"
#include "GradientMenu.h"
#include "GradientTool.h"
#include "HandTool.h"
#include "HistoryDock.h"
#include "ImageMenu.h"
#include "LayerMenu.h"
#include "LayerPrompt.h"
#include "LoupeDock.h"
#include "MoveTool.h"
#include "NavigatorDock.h"
#include "OptionArea.h"
#include "PrintMenu.h"
#include "RecentFiles.h"
#include "RedEyeTool.h"
#include "RulerTool.h"
#include "SelectMenu.h"
#include "SelectionTool.h"
#include "SpotHealingTool.h"
#include "StampTool.h"
#include "TextTool.h"
#include "ToolBox.h"
#include "TransformTool.h"
#include "WandTool.h"
#include "ZoomTool.h"

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

void MainWindow::CreateTools()
{
    m_pBrush = new BrushTool(m_pSettings, this);
    const auto open = [this](std::unique_ptr<Document> document) { AddDocument(std::move(document)); };
    m_Tools = {new MoveTool(m_pSettings, this),
               new SelectionTool(SelectionShape::Rectangle, m_pSettings, this),
               new SelectionTool(SelectionShape::Ellipse, m_pSettings, this),
               new WandTool(m_pSettings, this),
               new CropTool({m_pSettings, m_pTask, this, open}, this),
               new TransformTool(m_pSettings, this),
               new ColorPickerTool(m_pSettings, this),
               new ColorSamplerTool(m_pSettings, this),
               new RulerTool(this),
               m_pBrush,
               new EraserTool(m_pSettings, this),
               new StampTool(m_pSettings, this),
               new SpotHealingTool(m_pSettings, this),
               new BlurTool(m_pSettings, this),
               new DodgeTool(m_pSettings, this),
               new RedEyeTool(m_pSettings, this),
               new FillTool(m_pSettings, this),
               new GradientTool(m_pSettings, this),
               new TextTool(m_pSettings, this),
               new HandTool(this),
               new ZoomTool(this)};
    for (Tool* tool : qAsConst(m_Tools))
    {
        connect(tool, &Tool::Message, this, &MainWindow::ShowStatus);
        connect(tool, &Tool::BarChanged, this, &MainWindow::OnBarChanged);
        connect(tool, &Tool::CanCancelChanged, this, &MainWindow::OnCanUndoChanged);
        connect(tool, &Tool::CanRedoChanged, this, &MainWindow::OnCanRedoChanged);
    }
    m_pOptionBar = addToolBar(tr("Option Bar"));
    m_pOptionBar->setObjectName(QStringLiteral("OptionBar"));
    m_pOptionBar->setMovable(false);
    m_pOptionBar->addWidget(m_pOptions);
    m_pToolBox = new ToolBox(m_Tools, this);
    addToolBar(Qt::LeftToolBarArea, m_pToolBox);
    connect(m_pToolBox, &ToolBox::ToolChosen, this, &MainWindow::OnToolChosen);
}

// At the right, where screens have most room to spare.
void MainWindow::CreateDocks()
{
    m_pBrushDock = new BrushDock(this);
    addDockWidget(Qt::RightDockWidgetArea, m_pBrushDock);
    // Beside tabs, a split would be one tab more.
    m_pHistoryDock = new HistoryDock(m_pSettings, this);
    splitDockWidget(m_pBrushDock, m_pHistoryDock, Qt::Vertical);
    m_pNavigatorDock = new NavigatorDock(this);
    tabifyDockWidget(m_pBrushDock, m_pNavigatorDock);
    connect(m_pHistoryDock, &HistoryDock::AboutToChange, this, &MainWindow::OnAboutToChange);
    connect(m_pHistoryDock, &HistoryDock::Message, this, &MainWindow::ShowStatus);
    m_pSampleDock = new ColorSampleDock(this);
    tabifyDockWidget(m_pHistoryDock, m_pSampleDock);
    m_pSampleDock->SetSide(FindTool<ColorSamplerTool>()->GetSide());
    connect(FindTool<ColorSamplerTool>(), &ColorSamplerTool::SideChanged, m_pSampleDock,
            &ColorSampleDock::SetSide);
    m_pLoupeDock = new LoupeDock(m_pSettings, this);
    tabifyDockWidget(m_pHistoryDock, m_pLoupeDock);
    m_pColorRangeDock = new ColorRangeDock(m_pSettings, this);
    tabifyDockWidget(m_pBrushDock, m_pColorRangeDock);
    connect(m_pColorRangeDock, &ColorRangeDock::Opened, this, &MainWindow::OnCanvasTaken);
    connect(m_pColorRangeDock, &ColorRangeDock::Closed, this, &MainWindow::OnCanvasTaken);
    m_pColorRangeMenu = new ColorRangeMenu(m_pColorRangeDock, m_pTask, this);
    connect(m_pColorRangeMenu, &ColorRangeMenu::AboutToChange, this, &MainWindow::OnAboutToChange);
    connect(m_pColorRangeMenu, &ColorRangeMenu::Message, this, &MainWindow::ShowStatus);
}

void MainWindow::CreateStatusBar()
{
    m_pLayerLabel = new QLabel(this);
    m_pPointLabel = new QLabel(this);
    m_pSizeLabel = new QLabel(this);
    m_pZoomLabel = new QLabel(this);
    m_pLayerLabel->setTextFormat(Qt::PlainText);
    m_pPointLabel->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("-10000, -10000")));
    m_pLayerLabel->setAccessibleName(tr("Current layer"));
    m_pPointLabel->setAccessibleName(tr("Pointer position"));
    m_pSizeLabel->setAccessibleName(tr("Picture size"));
    m_pZoomLabel->setAccessibleName(tr("Zoom"));
    for (QLabel* label : {m_pLayerLabel, m_pPointLabel, m_pSizeLabel, m_pZoomLabel})
    {
        label->setMargin(4);
        label->setToolTip(label->accessibleName());
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
    m_pLayerPrompt = new LayerPrompt(m_pSettings, this);
    menu->addAction(m_pLayerPrompt->GetAction());
    menu->addSeparator();
    m_pPrintMenu = new PrintMenu(menu, {this, m_pTask, m_pSettings}, this);
    connect(m_pPrintMenu, &PrintMenu::AboutToChange, this, &MainWindow::OnAboutToChange);
    connect(m_pPrintMenu, &PrintMenu::Message, this, &MainWindow::ShowStatus);
    connect(m_pPrintMenu, &PrintMenu::Preview, statusBar(), &QStatusBar::showMessage);
    menu->addSeparator();
    AddAction(menu, tr("&Batch..."), QString(), QKeySequence(Qt::CTRL + Qt::SHIFT + Qt::Key_B),
              &MainWindow::OnBatch);
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
    m_pClearLayer = AddAction(menu, tr("&Clear Layer"), QString(), QKeySequence(Qt::CTRL + Qt::Key_Delete),
                              &MainWindow::OnClearLayer);
    m_DocumentActions += m_pClearLayer;
    menu->addSeparator();
    QAction* swap = menu->addAction(tr("&Swap Colours"), this, &ColorSwatches::Swap);
    swap->setShortcut(Qt::Key_X);
    m_Pictures += {swap, QStringLiteral("swap-colors")};
    QAction* defaults = menu->addAction(tr("&Default Colours"), this, &ColorSwatches::ResetToDefaults);
    defaults->setShortcut(Qt::Key_D);
    m_Pictures += {defaults, QStringLiteral("default-colors")};
    menu->addSeparator();
    auto* gradients =
        new GradientMenu(menu->addMenu(tr("&Gradients")), FindTool<GradientTool>(), m_pSettings, this);
    connect(gradients, &GradientMenu::Message, this, &MainWindow::ShowStatus);
    connect(m_pUndoGroup, &QUndoGroup::canUndoChanged, this, &MainWindow::OnCanUndoChanged);
    connect(m_pUndoGroup, &QUndoGroup::canRedoChanged, this, &MainWindow::OnCanRedoChanged);
    connect(m_pUndoGroup, &QUndoGroup::undoTextChanged, this, &MainWindow::OnUndoTextChanged);
    connect(m_pUndoGroup, &QUndoGroup::redoTextChanged, this, &MainWindow::OnRedoTextChanged);
    m_pUndo->setEnabled(false);
    m_pRedo->setEnabled(false);
}

void MainWindow::CreateImageMenu()
{
    m_pImageMenu = new ImageMenu(menuBar()->addMenu(tr("&Image")), {this, m_pTask, m_pSettings}, this);
    connect(m_pImageMenu, &ImageMenu::AboutToChange, this, &MainWindow::OnAboutToChange);
    connect(m_pImageMenu, &ImageMenu::Message, this, &MainWindow::ShowStatus);
}

void MainWindow::CreateLayerMenu()
{
    m_pLayerMenu = new LayerMenu(menuBar()->addMenu(tr("&Layer")), this);
    connect(m_pLayerMenu, &LayerMenu::AboutToChange, this, &MainWindow::OnAboutToChange);
    connect(m_pLayerMenu, &LayerMenu::Refused, this, &MainWindow::ShowError);
    connect(m_pLayerMenu, &LayerMenu::LayerTextChanged, m_pLayerLabel, &QLabel::setText);
}

void MainWindow::CreateSelectMenu()
{
    m_pSelectMenu = new SelectMenu(menuBar()->addMenu(tr("&Select")), this, this);
    connect(m_pSelectMenu, &SelectMenu::AboutToChange, this, &MainWindow::OnAboutToChange);
    connect(m_pSelectMenu, &SelectMenu::Message, this, &MainWindow::ShowStatus);
    m_pSelectMenu->GetMenu()->insertAction(m_pSelectMenu->GetRefineAction(), m_pColorRangeMenu->GetAction());
    m_pClearLayer->parentWidget()->insertAction(m_pClearLayer, m_pSelectMenu->GetClearAction());
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
    m_DocumentActions += AddAction(menu, tr("Ori&ginal Size"), QStringLiteral("zoom-original"),
                                   QKeySequence(Qt::CTRL + Qt::Key_1), &MainWindow::OnZoomOriginal);
    m_DocumentActions += AddAction(menu, tr("&Fit in Window"), QStringLiteral("zoom-fit"),
                                   QKeySequence(Qt::CTRL + Qt::Key_0), &MainWindow::OnZoomFit);
    menu->addSeparator();
    QAction* bar = m_pOptionBar->toggleViewAction();
    bar->setText(tr("Option &Bar"));
    menu->addAction(bar);
    QAction* brush = m_pBrushDock->toggleViewAction();
    brush->setText(tr("B&rush Panel"));
    menu->addAction(brush);
    QAction* navigator = m_pNavigatorDock->toggleViewAction();
    navigator->setText(tr("&Navigator Panel"));
    menu->addAction(navigator);
    QAction* history = m_pHistoryDock->toggleViewAction();
    history->setText(tr("Histor&y Panel"));
    menu->addAction(history);
    QAction* samples = m_pSampleDock->toggleViewAction();
    samples->setText(tr("Colour &Samples Panel"));
    menu->addAction(samples);
    QAction* loupe = m_pLoupeDock->toggleViewAction();
    loupe->setText(tr("&Loupe Panel"));
    menu->addAction(loupe);
    const QList<QDockWidget*> docks = {m_pBrushDock, m_pNavigatorDock, m_pHistoryDock, m_pSampleDock,
                                       m_pLoupeDock};
    for (const QDockWidget* dock : docks)
    {
        connect(dock->toggleViewAction(), &QAction::triggered, this, &MainWindow::OnPanelTriggered);
        connect(dock, &QDockWidget::visibilityChanged, this, &MainWindow::OnPanelVisibilityChanged);
    }
    connect(m_pColorRangeDock, &QDockWidget::visibilityChanged, this, &MainWindow::OnPanelVisibilityChanged);
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
