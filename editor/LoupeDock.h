#pragma once

#include <QDockWidget>
#include <QPointer>

#include "NVDocumentView.h"

class Document;
class NVZoomPanel;
class QSettings;

// The side panel with the loupe, which looks at what is under the pointer. It is closed until a person asks
// for it.
class LoupeDock : public QDockWidget
{
    Q_OBJECT

public:
    // Scale and grid come from the settings and go there. Not owned; they outlive the dock.
    explicit LoupeDock(QSettings* settings, QWidget* parent = nullptr);

    // What the loupe looks at and whose pointer it follows; neither is owned, both may be null.
    void SetCanvas(NVDocumentView* view, Document* document);
    void StoreValues();

private Q_SLOTS:
    void OnPointerMoved(const CanvasPoint& point);

private:
    QSettings* m_pSettings;
    NVZoomPanel* m_pPanel;
    QPointer<NVDocumentView> m_pView;
};
