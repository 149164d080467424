#pragma once

#include <QDockWidget>

class KXBrushSettings;
class NVBrushPanel;
class StrokeTool;

// The side panel that shows the brush of the current tool. It is closed until a person asks for it, since it
// takes its width from the canvas.
class BrushDock : public QDockWidget
{
    Q_OBJECT

public:
    explicit BrushDock(QWidget* parent = nullptr);

    // Shows the tool's brush and follows its changes; null empties the panel. The tool is not owned. It is to
    // be taken out before it goes.
    void ShowTool(StrokeTool* tool);

private:
    NVBrushPanel* m_pPanel;
    KXBrushSettings* m_pBrushes = nullptr;
};
