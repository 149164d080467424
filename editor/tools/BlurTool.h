#pragma once

#include "StrokeTool.h"

class NVBlurToolbar;

// Of the Gaussian, in pixels, for a brush of this size. It reaches about three of these far: a fifth of the
// brush, so that what is blurred stays under the stroke and a large brush, which is for large things, blurs
// coarser. Bounded where a blur is no longer seen, and where it would do nothing but cost time.
double BlurSigma(int size);

// Blurs the current layer under the brush; where the stroke is painted once more, a second time.
class BlurTool : public StrokeTool
{
    Q_OBJECT

public:
    BlurTool(QSettings* settings, QObject* parent);
    ~BlurTool() override;

    NVBlurToolbar* GetBlurBar();

    QString GetName() const override;
    QString GetPictureName() const override;
    QKeySequence GetKey() const override;
    void StoreValues() override;

protected:
    NVBrushToolbarWidget* CreateStrokeBar() override;
    QString GetBarPictureName() const override;
    QString GetStepName() const override;
    int GetBlendMode() override;
    void RestoreOwnValues(NVBrushToolbarWidget* bar) override;
    bool PrepareStroke(const CanvasPoint& point, StrokeSettings& settings) override;
};
