#pragma once

#include "StrokeTool.h"

class NVBrushToolbar;

// Paints strokes on the current layer with what the brush bar says. Alt and a click, or the key I, pick the
// foreground colour.
class BrushTool : public StrokeTool
{
    Q_OBJECT

public:
    BrushTool(QSettings* settings, QObject* parent);
    ~BrushTool() override;

    NVBrushToolbar* GetBrushBar();

    QString GetName() const override;
    QString GetPictureName() const override;
    QKeySequence GetKey() const override;
    void StoreValues() override;
    void Finish() override;

protected:
    NVBrushToolbarWidget* CreateStrokeBar() override;
    QString GetBarPictureName() const override;
    QString GetStepName() const override;
    int GetBlendMode() override;
    void RestoreOwnValues(NVBrushToolbarWidget* bar) override;
    bool PrepareStroke(const CanvasPoint& point, StrokeSettings& settings) override;
    void CreateShortcuts() override;
    void ReleaseShortcuts() override;
    void Pressed(const CanvasPoint& point) override;
    void Moved(const CanvasPoint& point) override;
    void Released(const CanvasPoint& point) override;

private Q_SLOTS:
    void OnPickKey();

private:
    void PickColor(const QPointF& position);

    KXShortcut* m_pPick = nullptr;
    bool m_isPicking = false;
};
