#pragma once

#include <QTimer>

#include <memory>

#include "BackgroundWork.h"
#include "HeldKeys.h"
#include "Tool.h"
#include "WandSelection.h"

class NVMagicWandToolbar;
class QSettings;

// A click selects what is like the pixel under the pointer. The selection joins the one that is there as the
// bar says, and as Shift and Alt do while they are held. On a large document the search runs on another
// thread; until it is done Escape takes it back, and another click has to wait.
class WandTool : public Tool
{
    Q_OBJECT

public:
    // The bar's values come from the settings and go there. Not owned; they outlive the tool.
    WandTool(QSettings* settings, QObject* parent);
    // Takes back what is under way.
    ~WandTool() override;

    NVMagicWandToolbar* GetWandBar();
    bool IsSelecting() const;

    QString GetName() const override;
    QString GetPictureName() const override;
    QKeySequence GetKey() const override;
    // How the selection joins the one that is there is not stored.
    void StoreValues() override;
    bool Cancel() override;
    // Waits for the end of the work.
    void Finish() override;

Q_SIGNALS:
    // The selection is on the undo stack, or is what it was, or was taken back.
    void SelectionEnded();

protected:
    QWidget* CreateBar() override;
    void UpdateBarTheme(QWidget* bar) override;
    void CreateShortcuts() override;
    void ReleaseShortcuts() override;
    void Equip(NVDocumentView* view) override;
    void Pressed(const CanvasPoint& point) override;
    void Moved(const CanvasPoint& point) override;

private Q_SLOTS:
    void OnFound();
    void OnLasts();

private:
    struct Search;

    void RestoreValues(NVMagicWandToolbar* bar);
    std::shared_ptr<Search> CreateSearch(const QPoint& seed);
    void StartSearch();
    void EndSearch();

    QSettings* m_pSettings;
    HeldKeys m_keys;
    BackgroundWork m_work;
    // The work's, too.
    std::shared_ptr<Search> m_pSearch;
    // Tells how far it has come.
    QTimer m_tick;
};
