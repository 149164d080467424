#pragma once

#include <QImage>
#include <QTimer>
#include <QTransform>

#include <atomic>
#include <memory>

#include "BackgroundWork.h"
#include "LayerPreview.h"
#include "LiftedContent.h"
#include "PictureLevels.h"
#include "Tool.h"

class KXDocumentInterface;

// What the tools have in common that take the pixels of the current layer, or those that are selected, and
// put them elsewhere. What they are to become is shown on the canvas alone; the layer and the selection,
// which goes along, change when it is committed, as one undo step, on another thread when the document is
// large.
class ContentTool : public Tool
{
    Q_OBJECT

public:
    explicit ContentTool(QObject* parent);

    // The canvas shows something else than the layer has.
    bool IsPending() const;
    // It was committed, and is being worked out.
    bool IsRendering() const;
    // What the tool acts on, in document pixels, as the layer has it; empty when there is nothing.
    QRect GetBounds() const;

    bool Cancel() override;
    // Commits, and waits for the end of the work.
    void Finish() override;

public Q_SLOTS:
    // Nothing happens unless something is pending.
    void Commit();

Q_SIGNALS:
    // It is on the undo stack, or was taken back, or it has changed nothing.
    void ContentEnded();

protected:
    // Of the undo step.
    virtual QString GetStepName() const = 0;
    // While the work lasts, with %1 for the percentage.
    virtual QString GetProgressText() const = 0;
    // Whether what was committed stays in one piece, so that it can be committed elsewhere without a trace at
    // the place before, until the document changes in another way.
    virtual bool KeepsContent() const = 0;
    // The bounds may be others. Nothing is pending.
    virtual void BoundsChanged() = 0;
    // Draws over the canvas, in pixels of the viewport.
    virtual void DrawFrame(QPainter& painter) = 0;
    // It is pending, or is no longer.
    virtual void PendingChanged() = 0;

    void Equip(NVDocumentView* view) override;
    void CanvasChanged() override;

    KXDocumentInterface* GetPixels() const;
    // Takes the pixels off the layer, for the canvas to show them somewhere else. False, after a message,
    // when there are none, or not on a layer that may be changed.
    bool Begin();
    // Where the content is, seen from where it was first taken: as the layer has it, and, while it is pending
    // or being worked out, as it is shown.
    QTransform GetPlacedTransform() const;
    QTransform GetContentTransform() const;
    // Shows the content there. Only while it is pending.
    void SetContentTransform(const QTransform& transform);
    // Waits a little for work that is almost done. False, after a message, while it goes on.
    bool IsReady();
    // Draws all that is over the canvas anew.
    void UpdateCanvas();

private Q_SLOTS:
    void OnPixelsChanged();
    void OnLook();
    void OnRendered();
    void OnTick();

private:
    enum State
    {
        Idle,
        Pending,
        Rendering
    };
    // What the work changes, and what it gives.
    struct Outcome
    {
        QImage layer;
        QImage selection;
        QVector<SavedTile> tiles;
        bool isDone = false;
        std::atomic<int> percent{0};
    };

    static void Render(Outcome& outcome, const LiftedContent& content, const QTransform& transform,
                       const QRect& area, const std::atomic<bool>& cancelled);

    bool HasContent() const;
    bool IsSourceThere() const;
    void RememberSource();
    void ForgetContent();
    void LookAtLayers();
    QRect PlaceOfContent(const QTransform& transform) const;
    void DrawOverlay(QPainter& painter);
    void ShowSelectionLine();
    void Take(Outcome& outcome);
    void End();

    State m_state = Idle;
    QPointer<KXDocumentInterface> m_pPixels;
    QRect m_bounds;
    QTimer m_look;

    LiftedContent m_content;
    // Where the layer has it, and where the canvas shows it.
    QTransform m_placed;
    QTransform m_transform;
    // The layer, the pixels of it and the selection that the content belongs to.
    int m_layer = -1;
    qint64 m_layerKey = 0;
    qint64 m_selectionKey = 0;

    LayerPreview m_preview;
    PictureLevels m_levels;
    // What the canvas shows, and where it stands there; of that place.
    QImage m_picture;
    QPoint m_corner;
    PreviewPlace m_place;

    BackgroundWork m_work;
    // The work's, too.
    std::shared_ptr<Outcome> m_pOutcome;
    QTimer m_tick;
};
