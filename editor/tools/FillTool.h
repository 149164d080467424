#pragma once

#include <QPoint>

#include <memory>

#include "BackgroundWork.h"
#include "FloodFill.h"
#include "Tool.h"

class NVFillCanToolbar;
class QSettings;

// A click fills what is like the pixel under the pointer with the foreground colour or a pattern. On a large
// document that happens on another thread; until it is done Escape takes it back, and another click has to
// wait.
class FillTool : public Tool
{
    Q_OBJECT

public:
    // The bar's values come from the settings and go there. Not owned; they outlive the tool.
    FillTool(QSettings* settings, QObject* parent);
    // Takes back what is under way.
    ~FillTool() override;

    NVFillCanToolbar* GetFillBar();
    bool IsFilling() const;

    QString GetName() const override;
    QString GetPictureName() const override;
    QKeySequence GetKey() const override;
    void StoreValues() override;
    bool Cancel() override;
    // Waits for the end of the work.
    void Finish() override;

Q_SIGNALS:
    // The fill is on the undo stack, or was taken back, or found nothing to change.
    void FillEnded();

protected:
    QWidget* CreateBar() override;
    void UpdateBarTheme(QWidget* bar) override;
    void CreateShortcuts() override;
    void ReleaseShortcuts() override;
    void Equip(NVDocumentView* view) override;
    void Pressed(const CanvasPoint& point) override;

private Q_SLOTS:
    void OnFilled();
    void OnLasts();

private:
    // What the work changes, and what it gives.
    struct Outcome
    {
        QImage layer;
        QVector<SavedTile> tiles;
    };

    void RestoreValues(NVFillCanToolbar* bar);
    FillSettings CurrentSettings();
    void StartFill(const QPoint& seed, const FillSettings& settings);
    void PushStep(QVector<SavedTile> tiles);
    void EndFill();

    QSettings* m_pSettings;
    BackgroundWork m_work;
    // The work's, too.
    std::shared_ptr<Outcome> m_pOutcome;
    int m_layer = 0;
};
