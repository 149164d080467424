#pragma once

#include "Tool.h"

class NVZoomToolbar;

// A click zooms about the pointer, a drag zooms to the box that it draws: in or out, as the bar says, with
// Alt or the right button the other way.
class ZoomTool : public Tool
{
    Q_OBJECT

public:
    explicit ZoomTool(QObject* parent);

    NVZoomToolbar* GetZoomBar();

    QString GetName() const override;
    QString GetPictureName() const override;
    QKeySequence GetKey() const override;
    bool Cancel() override;
    void Finish() override;

protected:
    QWidget* CreateBar() override;
    void UpdateBarTheme(QWidget* bar) override;
    void CanvasChanged() override;
    void Equip(NVDocumentView* view) override;
    void Pressed(const CanvasPoint& point) override;
    void Moved(const CanvasPoint& point) override;
    void Released(const CanvasPoint& point) override;

private Q_SLOTS:
    void OnActualPixels();
    void OnFitScreen();

private:
    // In pixels of the viewport; null while there is none.
    QRectF GetBox() const;
    void ZoomToBox(const QRectF& box);
    void UpdateBox(const QRectF& before);
    void DrawBox(QPainter& painter) const;

    bool m_isPressed = false;
    bool m_isDrag = false;
    bool m_isOut = false;
    // In document pixels, so that a pan in between doesn't tear the box.
    QPointF m_start;
    QPointF m_end;
};
