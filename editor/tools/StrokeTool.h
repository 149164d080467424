#pragma once

#include <QElapsedTimer>
#include <QPainterPath>
#include <QRegion>
#include <QTimer>
#include <QVariant>

#include <memory>

#include "BrushStroke.h"
#include "Tool.h"

class KXBrushSettings;
class KXShortcut;
class NVBrushToolbarWidget;
class QSettings;

// What the tools that are drawn over the canvas with a brush have in common. Points are queued as they come
// and worked off in frames of bounded length, so that the pointer is never held up. A stroke is one undo
// step; Escape takes it back. The keys [ and ] change the size. Size, spacing, opacity, brush, presets and
// blend mode come from the tool's group of the settings and go there.
class StrokeTool : public Tool
{
    Q_OBJECT

public:
    // Of a tool that was never used.
    struct Defaults
    {
        // Of the settings.
        QString group;
        int size = 20;
        int spacing = 10;
        // See KXBrushSettings::GetPresetNames.
        int preset = 0;
    };

    // The settings are not owned and outlive the tool.
    StrokeTool(QSettings* settings, const Defaults& defaults, QObject* parent);
    // Takes back what is under way.
    ~StrokeTool() override;

    NVBrushToolbarWidget* GetStrokeBar();
    // From the press until the stroke is on the undo stack, which may come after the release.
    bool IsStrokeRunning() const;

    void StoreValues() override;
    bool Cancel() override;
    void Finish() override;

Q_SIGNALS:
    // A frame is done: the area that changed, in document pixels, and the time the work took.
    void FrameDone(const QRect& area, double milliseconds);
    // The stroke is on the undo stack, or was taken back.
    void StrokeEnded();

protected:
    // The bar as the library makes it; its values are set from the settings afterwards.
    virtual NVBrushToolbarWidget* CreateStrokeBar() = 0;
    // The picture of the bar, without "theme:" and suffix.
    virtual QString GetBarPictureName() const = 0;
    // Of the undo step.
    virtual QString GetStepName() const = 0;
    // 0 for bars without blend modes.
    virtual int GetBlendMode();
    // Sets what this bar has besides the values that all have. It is not the tool's bar yet.
    virtual void RestoreOwnValues(NVBrushToolbarWidget* bar);
    // Adds to the settings what the tool paints with. False, after a message, when there is nothing to paint
    // with. The document and its layer are set.
    virtual bool PrepareStroke(const CanvasPoint& point, StrokeSettings& settings) = 0;
    // The stroke is on the layer. False when it takes longer: EndStroke is then called later.
    virtual bool CompleteStroke(BrushStroke& stroke);

    QWidget* CreateBar() override;
    void UpdateBarTheme(QWidget* bar) override;
    void CreateShortcuts() override;
    void ReleaseShortcuts() override;
    void Equip(NVDocumentView* view) override;
    void Pressed(const CanvasPoint& point) override;
    void Moved(const CanvasPoint& point) override;
    void Released(const CanvasPoint& point) override;
    void PointerLeft() override;
    // What is drawn over the canvas, and where, in view pixels. The view is set.
    virtual QRegion OverlayRegion() const;
    virtual void PaintOverlay(QPainter& painter) const;
    virtual QCursor StrokeCursor() const;

    QVariant GetValue(const QString& key, const QVariant& otherwise = QVariant()) const;
    void SetValue(const QString& key, const QVariant& value);
    KXBrushSettings* GetBrushes();
    // That the stroke is, or would be, on.
    int GetLayer() const;
    bool IsPointerIn() const;
    // The pointer, in document pixels.
    QPointF GetPointer() const;
    // Draws the overlay anew where it is now.
    void UpdateOverlay();
    void UpdateOutline();
    void EndStroke();

private Q_SLOTS:
    void OnFrame();
    void OnSizeChanged(int pixels);
    void OnSpacingChanged(int percent);
    void OnOpacityChanged(int percent);
    void OnBrushChanged();
    void OnPresetsChanged();
    void OnScaleChanged();
    void OnLargerKey();
    void OnSmallerKey();

private:
    void RestoreValues(NVBrushToolbarWidget* bar);
    void RestoreBrush(KXBrushSettings* brushes);
    StrokeSettings CurrentSettings();
    void BeginStroke(const CanvasPoint& point);
    void ScheduleFrame();
    void WorkOff();
    void MoveOverlay(const QPointF& position);

    QSettings* m_pSettings;
    const Defaults m_defaults;
    std::unique_ptr<BrushStroke> m_pStroke;
    QList<KXShortcut*> m_Shortcuts;
    QTimer m_frame;
    QElapsedTimer m_sinceFrame;
    int m_layer = 0;
    bool m_isReleased = false;
    // The last point is on the layer.
    bool m_isWorkedOff = false;
    bool m_isPointerIn = false;
    QPointF m_pointer;
    // In view pixels, about the pointer.
    QPainterPath m_outline;
};
