#pragma once

#include <QDockWidget>
#include <QPointer>

#include "NVDocumentView.h"

class NVNavigatorPanel;

// The side panel with overview, loupe and histogram of the canvas in front. While it is to be seen it follows
// that canvas, and the loupe follows the pointer there. It is closed until a person asks for it.
class NavigatorDock : public QDockWidget
{
    Q_OBJECT

public:
    explicit NavigatorDock(QWidget* parent = nullptr);
    ~NavigatorDock() override;

    // What is followed from now on, which is not owned and is to be taken out before it or its document goes;
    // null for none. The view is brought to a whole percentage when the panel is to be seen.
    void SetView(NVDocumentView* view);

    bool eventFilter(QObject* object, QEvent* event) override;

private Q_SLOTS:
    void OnVisibilityChanged(bool visible);
    void OnMoved(const CanvasPoint& point);

private:
    void Attach();

    NVNavigatorPanel* m_pPanel;
    QPointer<NVDocumentView> m_pView;
    bool m_isSeen = false;
};
