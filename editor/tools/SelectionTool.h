#pragma once

#include <QPointF>
#include <QRect>
#include <QTimer>

#include "HeldKeys.h"
#include "SelectionShape.h"
#include "Tool.h"

class NVSelectionToolbar;
class QSettings;

// A drag selects a rectangle or an ellipse. Shift at the press unites it with the selection that is there,
// Alt takes it away, both intersect; after the press Shift makes a square or a circle, and Alt puts the first
// point into the middle. When the selection is to be replaced, a drag from within it moves its outline, and a
// click takes it away. The arrow keys move the outline by one pixel, with Shift by ten.
class SelectionTool : public Tool
{
    Q_OBJECT

public:
    // The bar's values come from the settings and go there. Not owned; they outlive the tool.
    SelectionTool(SelectionShape::Kind kind, QSettings* settings, QObject* parent);
    ~SelectionTool() override;

    SelectionShape::Kind GetKind() const;
    NVSelectionToolbar* GetSelectionBar();
    // A rectangle or an ellipse is being drawn, or the outline is being moved.
    bool IsDragging() const;

    QString GetName() const override;
    QString GetPictureName() const override;
    QKeySequence GetKey() const override;
    bool Cancel() override;
    void Finish() override;
    void StoreValues() override;

protected:
    QWidget* CreateBar() override;
    void UpdateBarTheme(QWidget* bar) override;
    bool eventFilter(QObject* object, QEvent* event) override;
    void CreateShortcuts() override;
    void ReleaseShortcuts() override;
    void Equip(NVDocumentView* view) override;
    void Pressed(const CanvasPoint& point) override;
    void Moved(const CanvasPoint& point) override;
    void Released(const CanvasPoint& point) override;

private Q_SLOTS:
    void OnHeldKeys(Qt::KeyboardModifiers modifiers);
    void OnScroll();

private:
    enum Act
    {
        NoAct,
        // A press that is no drag yet.
        Waiting,
        Drawing,
        Moving
    };

    QString KeyFor(const QString& value) const;
    bool IsInSelection(const QPointF& point) const;
    bool MovesAt(const QPointF& point);
    void DragTo(const QPointF& viewportPoint);
    void UpdateDrag();
    void UpdateShape();
    void EndDrag(bool isKept);
    void Select();
    void MoveSelection(const QPoint& way, int mergeNumber);
    bool HasRoom();
    void DrawShape(QPainter& painter) const;
    QRect ShapeOnView() const;
    void Nudge(const QPoint& way);

    const SelectionShape::Kind m_kind;
    QSettings* m_pSettings;
    HeldKeys m_keys;
    QTimer m_scroll{this};

    Act m_act = NoAct;
    // Of the press: how the shape joins the selection, and whether it moves it.
    int m_state = 0;
    bool m_isMove = false;
    QPointF m_start;
    // Held since the press: they chose the state and mean nothing else until they are released.
    Qt::KeyboardModifiers m_usedKeys;
    // Of the pointer, in pixels of the viewport.
    QPointF m_last;
    SelectionShape m_shape;
    QPoint m_way;
};
