#pragma once

#include <QElapsedTimer>
#include <QPainterPath>
#include <QTimer>

#include <memory>

#include "BrushStroke.h"
#include "Tool.h"

class KXBrushSettings;
class KXShortcut;
class NVBrushToolbar;
class QSettings;

// The size that follows, or precedes, in steps that grow with the size. Pixels, 1 to 2500.
int NextBrushSize(int size);
int PreviousBrushSize(int size);
// The outline of a tip about the origin.
QPainterPath BrushOutline(const BrushTip& tip, double diameter);

// Paints strokes on the current layer with what the brush bar says. Points are queued as they come and worked
// off in frames of bounded length, so that the pointer is never held up. A stroke is one undo step; Escape
// takes it back. Alt and a click, or the key I, pick the foreground colour; the keys [ and ] change the size.
class BrushTool : public Tool
{
    Q_OBJECT

public:
    // The bar's values come from the settings and go there. Not owned; they outlive the tool.
    BrushTool(QSettings* settings, QObject* parent);
    ~BrushTool() override;

    NVBrushToolbar* GetBrushBar();
    // From the press until the last frame of the stroke, which may come after the release.
    bool IsStrokeRunning() const;
    // Writes what the bar has no signal for; the rest is written when it changes.
    void StoreValues();

    QString GetName() const override;
    QString GetPictureName() const override;
    QKeySequence GetKey() const override;
    bool Cancel() override;
    void Finish() override;
    void UpdateTheme() override;

Q_SIGNALS:
    // A frame is done: the area that changed, in document pixels, and the time the work took.
    void FrameDone(const QRect& area, double milliseconds);
    // The stroke is on the undo stack, or was taken back.
    void StrokeEnded();

protected:
    QWidget* CreateBar() override;
    void CreateShortcuts() override;
    void ReleaseShortcuts() override;
    void Equip(NVDocumentView* view) override;
    void Pressed(const CanvasPoint& point) override;
    void Moved(const CanvasPoint& point) override;
    void Released(const CanvasPoint& point) override;
    void PointerLeft() override;

private Q_SLOTS:
    void OnFrame();
    void OnSizeChanged(int pixels);
    void OnSpacingChanged(int percent);
    void OnOpacityChanged(int percent);
    void OnBrushChanged();
    void OnPresetsChanged();
    void OnScaleChanged();
    void OnPickKey();
    void OnLargerKey();
    void OnSmallerKey();
    void OnEscapeKey();

private:
    void RestoreValues(NVBrushToolbar* bar);
    void RestoreBrush(KXBrushSettings* brushes);
    StrokeSettings CurrentSettings();
    bool CanPaint();
    void BeginStroke(const CanvasPoint& point);
    void ScheduleFrame();
    void EndStroke();
    void PickColor(const QPointF& position);
    void MoveOverlay(const QPointF& position);
    void UpdateOutline();
    QRect OverlayRect() const;
    void PaintOverlay(QPainter& painter) const;

    QSettings* m_pSettings;
    std::unique_ptr<BrushStroke> m_pStroke;
    // What Escape is while a stroke runs.
    KXShortcut* m_pEscape = nullptr;
    QList<KXShortcut*> m_Shortcuts;
    QTimer m_frame;
    QElapsedTimer m_sinceFrame;
    int m_layer = 0;
    bool m_isReleased = false;
    bool m_isPicking = false;
    bool m_isPointerIn = false;
    // The pointer, in document pixels.
    QPointF m_pointer;
    // In view pixels, about the pointer.
    QPainterPath m_outline;
};
