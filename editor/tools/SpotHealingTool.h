#pragma once

#include <QImage>

#include "BackgroundWork.h"
#include "StrokeTool.h"

class NVSpotHealingToolbar;

// Heals what is marked with the brush: the stroke is laid over the picture as a translucent mark, and when it
// ends, what lies under it is filled in from around it. That happens on another thread; until it is done
// Escape takes the stroke back, and a new one has to wait.
class SpotHealingTool : public StrokeTool
{
    Q_OBJECT

public:
    SpotHealingTool(QSettings* settings, QObject* parent);
    ~SpotHealingTool() override;

    NVSpotHealingToolbar* GetHealingBar();
    // Between the end of the stroke and its undo step.
    bool IsHealing() const;

    QString GetName() const override;
    QString GetPictureName() const override;
    QKeySequence GetKey() const override;
    bool Cancel() override;
    // Waits for the end of the work.
    void Finish() override;

protected:
    NVBrushToolbarWidget* CreateStrokeBar() override;
    QString GetBarPictureName() const override;
    QString GetStepName() const override;
    bool PrepareStroke(const CanvasPoint& point, StrokeSettings& settings) override;
    bool CompleteStroke(BrushStroke& stroke) override;
    void Pressed(const CanvasPoint& point) override;
    QCursor StrokeCursor() const override;

private Q_SLOTS:
    void OnHealed();
    void OnLasts();

private:
    void TakeBack();
    void EndHealing();

    BackgroundWork m_work;
    // The work's, too.
    std::shared_ptr<QImage> m_pHealed;
    // The part of the layer that is healed, and the part of it that is marked.
    QRect m_area;
    QRect m_marked;
    // As it was before the stroke.
    QVector<SavedTile> m_tiles;
    // Percent, of the stroke under way.
    double m_opacity = 100.0;
};
