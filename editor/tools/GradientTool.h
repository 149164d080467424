#pragma once

#include <QTimer>

#include <memory>

#include "BackgroundWork.h"
#include "GradientFill.h"
#include "GradientHandles.h"
#include "GradientLibrary.h"
#include "LayerPreview.h"
#include "Tool.h"

class KXDocumentInterface;
class KXShortcut;
class NVGradientToolbar;
class QSettings;

// A drag on the canvas sets start and end of a gradient. It is shown there, as the bar says, and can be
// changed until it is committed; then it is drawn on the current layer, on another thread when the document
// is large.
class GradientTool : public Tool
{
    Q_OBJECT

public:
    // The bar's values come from the settings and go there; the list of gradients lies in a file beside them.
    // Not owned; they outlive the tool.
    GradientTool(QSettings* settings, QObject* parent);
    // Takes back what is under way.
    ~GradientTool() override;

    NVGradientToolbar* GetGradientBar();
    const GradientLibrary& GetLibrary() const;
    // A gradient is on the canvas and waits to be committed.
    bool IsPending() const;
    // It was committed, and is being drawn.
    bool IsRendering() const;
    // In document pixels; of the gradient that is pending.
    QPointF GetStart() const;
    QPointF GetEnd() const;

    // Puts gradients at the end of the list, and makes the first of them the current one. False, with the
    // error, when they could not be stored.
    bool AddGradients(const QVector<NamedGradient>& gradients, QString* error);

    QString GetName() const override;
    QString GetPictureName() const override;
    QKeySequence GetKey() const override;
    void StoreValues() override;
    bool Cancel() override;
    // Commits, and waits for the end of the work.
    void Finish() override;

public Q_SLOTS:
    // Draws what is pending; nothing happens otherwise.
    void Commit();

Q_SIGNALS:
    // The gradient is on the undo stack, or was taken back.
    void GradientEnded();

protected:
    QWidget* CreateBar() override;
    void UpdateBarTheme(QWidget* bar) override;
    void CreateShortcuts() override;
    void ReleaseShortcuts() override;
    void Equip(NVDocumentView* view) override;
    void Pressed(const CanvasPoint& point) override;
    void Moved(const CanvasPoint& point) override;
    void Released(const CanvasPoint& point) override;
    void PointerLeft() override;

private Q_SLOTS:
    void OnCancel();
    void OnOptionChanged();
    void OnSaveGradients();
    void OnDocumentChanged();
    void OnLayersChanged();
    void OnDocumentGone();
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
        QVector<SavedTile> tiles;
        GradientProgress progress;
    };

    void RestoreValues(NVGradientToolbar* bar);
    void ConnectBar(NVGradientToolbar* bar);
    GradientSettings CurrentSettings();
    KXDocumentInterface* GetPixels() const;

    void BeginPending(const QPointF& start);
    void LookAtLayers();
    void DrawOverlay(QPainter& painter);
    void UpdatePreview();
    void UpdateHover(GradientHandles::Handle handle);
    void SetEnterLive(bool live);
    void StartRendering(const GradientSettings& settings);
    void PushStep(QVector<SavedTile> tiles);
    void EndGradient();

    QSettings* m_pSettings;
    GradientLibrary m_library;
    KXShortcut* m_pReturn = nullptr;
    KXShortcut* m_pEnter = nullptr;

    State m_state = Idle;
    GradientHandles m_handles;
    // The one that is being dragged.
    GradientHandles::Handle m_drag = GradientHandles::None;
    // A press that has not moved far enough to be a drag.
    bool m_isPressed = false;
    QPointF m_press;

    int m_layer = 0;
    int m_layerCount = 0;
    LayerPreview m_preview;
    // What the canvas shows, and where it stands there; of that place.
    QImage m_picture;
    QPoint m_corner;
    PreviewPlace m_place;

    BackgroundWork m_work;
    // The work's, too.
    std::shared_ptr<Outcome> m_pOutcome;
    QTimer m_tick;
};
