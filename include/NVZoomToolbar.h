#pragma once

#include <QWidget>

#include "generaltoolsgui_export.h"

class Ui_ZoomToolBar;

// The option bar of the zoom tool: in or out, and two scales to go to. One of the two modes is always on, in
// at first. GUI thread only.
class GENERALTOOLSGUI_EXPORT NVZoomToolbar : public QWidget
{
    Q_OBJECT

public:
    explicit NVZoomToolbar(QWidget* parent);
    ~NVZoomToolbar() override;

    bool IsZoomIn() const;
    bool IsZoomOut() const;

public Q_SLOTS:
    // Turning a mode on turns the other one off. The mode that is on can't be turned off by itself.
    void SetZoomIn(bool on);
    void SetZoomOut(bool on);
    // Both buttons are disabled at first; the host enables them as long as there is something to zoom.
    void SetActualPixelsEnabled(bool enabled);
    void SetFitScreenEnabled(bool enabled);

Q_SIGNALS:
    // Both come with each change of the mode, one with true and the other one with false.
    void ZoomInChecked(bool on);
    void ZoomOutChecked(bool on);
    void ActualPixels();
    void FitScreen();

private:
    Ui_ZoomToolBar* m_pUi = nullptr;
};
