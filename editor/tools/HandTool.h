#pragma once

#include "Tool.h"

// Drags the document about under the window.
class HandTool : public Tool
{
    Q_OBJECT

public:
    explicit HandTool(QObject* parent);

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
    bool m_isDragging = false;
    // In pixels of the viewport.
    QPoint m_last;
    QPoint m_start;
};
