#pragma once

#include "ContentTool.h"
#include "FreeTransform.h"

class KXShortcut;
class NVTransformToolbar;
class QSettings;

// Free transform: a box with eight handles around the pixels of the current layer, or those that are
// selected. Handles scale, with Shift in proportion; with Ctrl those of the edges skew. What lies opposite
// stays meanwhile, with Alt the reference point does. A drag inside moves, one outside turns about the
// reference point, which is chosen in the bar or dragged. What comes of it is shown, and drawn on the layer
// when it is committed.
class TransformTool : public ContentTool
{
    Q_OBJECT

public:
    // The bar's reference point comes from the settings and goes there. Not owned; they outlive the tool.
    TransformTool(QSettings* settings, QObject* parent);
    // Takes back what is under way.
    ~TransformTool() override;

    NVTransformToolbar* GetTransformBar();
    const FreeTransform& GetTransform() const;

    QString GetName() const override;
    QString GetPictureName() const override;
    QKeySequence GetKey() const override;
    void StoreValues() override;

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
    bool eventFilter(QObject* object, QEvent* event) override;

    QString GetStepName() const override;
    QString GetProgressText() const override;
    bool KeepsContent() const override;
    void BoundsChanged() override;
    void DrawFrame(QPainter& painter) override;
    void PendingChanged() override;

private Q_SLOTS:
    void OnCancel();
    void OnCenterChanged(int cell);

private:
    void DragReference(const QPointF& position);
    void ShowNumbers();
    void UpdateHover(FreeTransform::Part part, Qt::KeyboardModifiers modifiers);
    void SetEnterLive(bool live);

    QSettings* m_pSettings;
    KXShortcut* m_pReturn = nullptr;
    KXShortcut* m_pEnter = nullptr;
    FreeTransform m_box;
    // As it was at the press, and the part that is being dragged.
    FreeTransform m_start;
    FreeTransform::Part m_drag = FreeTransform::Nothing;
    QPointF m_press;
    // The part that shows that it can be dragged.
    FreeTransform::Part m_hover = FreeTransform::Nothing;
};
