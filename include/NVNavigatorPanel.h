#pragma once

#include "KXPanel.h"
#include "generaltoolsgui_export.h"

class NVDocumentView;
class Ui_Navigator;

// An overview of the document in a view, a loupe and a histogram, on three tabs, with the zoom of the view as
// a percentage, a slider and steps.
//
// The panel follows one view. It does not notice when that view or its document is destroyed: the host sets
// another view, or none, before.
class GENERALTOOLSGUI_EXPORT NVNavigatorPanel : public KXPanel
{
    Q_OBJECT

public:
    explicit NVNavigatorPanel(QWidget* parent);
    ~NVNavigatorPanel() override;

    // Follows the view from now on, which is not owned; null for none. Attaching brings the view to a whole
    // percentage between 5 and 4000. The same view again does nothing.
    void SetSourceView(NVDocumentView* view);
    // The frame in the overview is put around what the view shows. Nothing without a view.
    void UpdateNavigatorFrame();
    // The document pixel in the middle of the loupe.
    void SetLookAt(const QPoint& point);

private Q_SLOTS:
    void OnScaleChanged(double scale);
    void OnZoomChanged(double percent);
    // In hundredths of a percent.
    void OnZoomChanged(int value);
    void OnZoomIn();
    void OnZoomOut();
    void OnSceneAreaChanged();
    void OnFrameChanged(const QRectF& frame);
    void OnCompositionChanged(QRect area);
    void OnStyleStateChanged(bool on);
    void OnHistogrammChanngel(int index);
    void OnHistogramRangeChanged(int from, int to);
    void OnHistogramCount(int count);
    void OnHistogramStatus(int level, int count);
    void OnHistogramNoInfo();

private:
    void ConnectControls();
    void ConnectView();
    void DisconnectView();
    // What the view shows, in document pixels.
    QRectF ViewRect() const;
    void Rebuild();

    Ui_Navigator* m_pUi;
    NVDocumentView* m_pView = nullptr;
};
