#pragma once

#include "Tool.h"

// A click zooms in about the pointer, with Alt or the right button out; a drag zooms as the pointer goes
// right or left.
class ZoomTool : public Tool
{
    Q_OBJECT

public:
    explicit ZoomTool(QObject* parent);

    QString GetName() const override;
    QString GetPictureName() const override;
    QKeySequence GetKey() const override;
    bool Cancel() override;
    void Finish() override;

protected:
    QWidget* CreateBar() override;
    void UpdateBarTheme(QWidget* bar) override;
    void Equip(NVDocumentView* view) override;
    void Pressed(const CanvasPoint& point) override;
    void Moved(const CanvasPoint& point) override;
    void Released(const CanvasPoint& point) override;

private:
    bool m_isPressed = false;
    bool m_isDrag = false;
    bool m_isOut = false;
    double m_startScale = 1.0;
    // In pixels of the viewport.
    QPointF m_start;
};
