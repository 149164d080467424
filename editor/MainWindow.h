#pragma once

#include <QList>
#include <QMainWindow>
#include <QPair>

#include <memory>

#include "Tool.h"

class BatchWindow;
class BrushDock;
class BrushTool;
class ColorRangeDock;
class ColorRangeMenu;
class ColorSampleDock;
class Document;
class DocumentWindow;
class FileTask;
class HistoryDock;
class ImageMenu;
class KXMdiArea;
class LayerMenu;
class LayerPrompt;
class LoupeDock;
class NVDocumentView;
class NavigatorDock;
class OptionArea;
class PrintMenu;
class QActionGroup;
class QLabel;
class QSettings;
class QUndoGroup;
class RecentFiles;
class SelectMenu;
class Theme;
class ToolBox;

// The window of Norvane: menus, tool box, option bar, canvas area and status bar, and all that is done with
// whole documents.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    // The settings are not owned and must outlive the window.
    explicit MainWindow(QSettings* settings, QWidget* parent = nullptr);
    ~MainWindow() override;

    // Null while no document is open.
    Document* GetDocument() const;
    NVDocumentView* GetView() const;
    QList<DocumentWindow*> GetDocumentWindows() const;
    // Never null.
    Tool* GetTool() const;
    // In the order of the tool box.
    QList<Tool*> GetTools() const;
    // The tool of this class; null without one.
    template <class T>
    T* FindTool() const;
    BrushTool* GetBrushTool() const;
    RecentFiles* GetRecentFiles() const;
    // Null until it has been opened.
    BatchWindow* GetBatchWindow() const;

    // Opens the file, or shows it if it is open already. When it can't be opened, a message says why, and
    // nothing else changes.
    bool OpenFile(const QString& path);
    void OpenFiles(const QStringList& paths);
    // Opens a picture that has no file yet.
    void OpenImage(const QImage& image, const QString& name);
    void OpenSample();
    // Without a writable file of its own, the document asks for a name; one of several layers asks whether to
    // go on, since a file holds one. False if it was not written.
    bool SaveDocument(DocumentWindow* window);
    bool SaveDocumentAs(DocumentWindow* window);
    bool WriteDocument(DocumentWindow* window, const QString& path);
    // Asks about unsaved changes. False, and still open, when the person cancels or saving fails.
    bool CloseDocument(DocumentWindow* window);
    void ChooseTool(Tool* tool);

public Q_SLOTS:
    void ShowStatus(const QString& text);

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;

private Q_SLOTS:
    void OnNew();
    void OnOpen();
    void OnRecentTriggered(QAction* action);
    void OnSave();
    void OnSaveAs();
    void OnBatch();
    void OnClose();
    void OnUndo();
    void OnRedo();
    void OnClearLayer();
    void OnAboutToChange();
    // The canvas is the current tool's, unless a panel has taken it.
    void OnCanvasTaken();
    void OnZoomIn();
    void OnZoomOut();
    void OnZoomOriginal();
    void OnZoomFit();
    void OnPanelTriggered(bool isOpen);
    void OnPanelVisibilityChanged(bool visible);
    void OnThemeTriggered(QAction* action);
    void OnAbout();

    void OnWindowActivated();
    void OnCloseAsked(DocumentWindow* window);
    void OnDocumentStateChanged();
    void OnDocumentSizeChanged();
    void OnCanUndoChanged();
    void OnCanRedoChanged();
    void OnUndoTextChanged(const QString& text);
    void OnRedoTextChanged(const QString& text);
    void OnToolChosen(Tool* tool);
    void OnBarChanged();
    void OnScaleChanged(double scale);
    void OnPointerMoved(const CanvasPoint& point);
    void OnPointerLeft();
    void OnRecentChanged();
    void OnBusyChanged(bool busy);
    void OnThemeChanged(int theme);

private:
    enum SaveOutcome
    {
        Saved,
        NotSaved,
        // The person wants to go on without.
        LeftUnsaved
    };

    void CreateTools();
    void CreateDocks();
    void CreateStatusBar();
    void CreateFileMenu();
    void CreateEditMenu();
    void CreateImageMenu();
    void CreateLayerMenu();
    void CreateSelectMenu();
    void CreateViewMenu();
    void CreateThemeMenu(QMenu* view);
    void CreateOtherMenus();
    template <typename Slot>
    QAction* AddAction(QMenu* menu, const QString& text, const QString& picture, const QKeySequence& key,
                       Slot slot);
    void RestoreWindow();
    void StoreWindow();
    DocumentWindow* WindowOf(const QString& path) const;
    void AddDocument(std::unique_ptr<Document> document);
    // Menus, panels and the tool work on its document from now on; null: on none.
    void SetWindow(DocumentWindow* window);
    void RemoveWindow(DocumentWindow* window);
    SaveOutcome Save(DocumentWindow* window);
    SaveOutcome SaveAs(DocumentWindow* window, bool asksAboutLayers);
    // Asks about changes, and saves if that is the answer. False if the document is to stay.
    bool MayClose(DocumentWindow* window);
    // As an answer of LayerPrompt says.
    SaveOutcome SaveBy(int answer, DocumentWindow* window, const QString& path);
    // By a file dialog; empty when it was cancelled.
    QString AskForPath(const Document* document);
    // Save, Discard or Cancel of KXMessageBox.
    int AskAboutChanges(const DocumentWindow* window);
    void ShowError(const QString& text);
    void UpdateActions();
    void UpdateTitle();
    void ZoomTo(double scale);

    QSettings* m_pSettings;
    Theme* m_pTheme;
    RecentFiles* m_pRecent;
    FileTask* m_pTask;
    QUndoGroup* m_pUndoGroup;
    KXMdiArea* m_pArea;
    OptionArea* m_pOptions;
    QToolBar* m_pOptionBar;
    ToolBox* m_pToolBox;
    BrushDock* m_pBrushDock = nullptr;
    NavigatorDock* m_pNavigatorDock = nullptr;
    HistoryDock* m_pHistoryDock = nullptr;
    ColorSampleDock* m_pSampleDock = nullptr;
    LoupeDock* m_pLoupeDock = nullptr;
    ColorRangeDock* m_pColorRangeDock = nullptr;
    ColorRangeMenu* m_pColorRangeMenu = nullptr;
    BatchWindow* m_pBatch = nullptr;
    ImageMenu* m_pImageMenu = nullptr;
    LayerMenu* m_pLayerMenu = nullptr;
    LayerPrompt* m_pLayerPrompt = nullptr;
    PrintMenu* m_pPrintMenu = nullptr;
    SelectMenu* m_pSelectMenu = nullptr;
    QList<Tool*> m_Tools;
    BrushTool* m_pBrush = nullptr;
    Tool* m_pTool = nullptr;
    DocumentWindow* m_pWindow = nullptr;

    // Actions by what they need; their pictures are loaded again with each theme.
    QList<QAction*> m_DocumentActions;
    QList<QPair<QAction*, QString>> m_Pictures;
    QAction* m_pUndo = nullptr;
    QAction* m_pRedo = nullptr;
    QAction* m_pClearLayer = nullptr;
    QMenu* m_pRecentMenu = nullptr;
    QActionGroup* m_pThemes = nullptr;
    QLabel* m_pZoomLabel = nullptr;
    QLabel* m_pSizeLabel = nullptr;
    QLabel* m_pPointLabel = nullptr;
    QLabel* m_pLayerLabel = nullptr;
};

template <class T>
T* MainWindow::FindTool() const
{
    for (Tool* tool : m_Tools)
    {
        if (T* found = qobject_cast<T*>(tool))
            return found;
    }
    return nullptr;
}
