#pragma once

#include "StrokeTool.h"

class NVDodgeToolbar;

// Brightens the current layer under the brush, most in a range of tones.
class DodgeTool : public StrokeTool
{
    Q_OBJECT

public:
    DodgeTool(QSettings* settings, QObject* parent);
    ~DodgeTool() override;

    NVDodgeToolbar* GetDodgeBar();

    QString GetName() const override;
    QString GetPictureName() const override;
    QKeySequence GetKey() const override;
    void StoreValues() override;

protected:
    NVBrushToolbarWidget* CreateStrokeBar() override;
    QString GetBarPictureName() const override;
    QString GetStepName() const override;
    void RestoreOwnValues(NVBrushToolbarWidget* bar) override;
    bool PrepareStroke(const CanvasPoint& point, StrokeSettings& settings) override;
};
