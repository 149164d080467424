#pragma once

#include "StrokeTool.h"

class NVEraserToolbar;

// Takes away what is on the current layer: it becomes transparent, or takes the background colour where it is
// the lowest one and nothing lies behind it.
class EraserTool : public StrokeTool
{
    Q_OBJECT

public:
    EraserTool(QSettings* settings, QObject* parent);
    ~EraserTool() override;

    NVEraserToolbar* GetEraserBar();

    QString GetName() const override;
    QString GetPictureName() const override;
    QKeySequence GetKey() const override;

protected:
    NVBrushToolbarWidget* CreateStrokeBar() override;
    QString GetBarPictureName() const override;
    QString GetStepName() const override;
    bool PrepareStroke(const CanvasPoint& point, StrokeSettings& settings) override;
};
