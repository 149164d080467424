#pragma once

#include <QGraphicsObject>
#include <QPointF>

#include "geometryengine_export.h"

class QGraphicsView;

// A handle that a person takes hold of to move a point along a strip. The width of the scene rectangle counts
// as 100 %.
//
// The left button drags it, the left and right arrow keys (and down and up, as on a slider) move it by 1 %,
// with Shift by 10 %, within 0 to 100 %, and Escape takes a drag back. Its place shows in a tooltip
// meanwhile. A press selects it and deselects everything else in the scene, if it has ItemIsSelectable, which
// the owner sets. A selected node has the focus of the scene and stands above the others; Tab and Shift+Tab
// go to the next node of the scene by x and select it, and leave the view after the last.
//
// The node stands on its position with its middle, has the same size at any scale of the view, and takes its
// colours from the view's palette. A drag keeps to no range: whoever needs one moves the node back in a slot.
// A slot must not delete it at once; deleteLater() is fine. Without ItemIsMovable, which is set at first, a
// person cannot move it.
class GEOMETRYENGINE_EXPORT ControlNode : public QGraphicsObject
{
    Q_OBJECT

public:
    enum
    {
        Type = UserType + 1
    };

    explicit ControlNode(QGraphicsItem* parent = nullptr);
    ~ControlNode() override;

    bool isSunken() const;
    // Place as a percentage of the width of the scene rectangle, 0 at its left edge; 0 without a scene or
    // width.
    double percent() const;

    // Moves it along x only. What is no number is ignored, and so is everything without a scene or width.
    void setPercent(double percent);
    // Draws it as pressed. False by default; neither follows the selection nor changes it.
    void setSunken(bool sunken);

Q_SIGNALS:
    // After each change of the selected state.
    void itemSelectionChange(ControlNode* node, bool selected);
    // After each change of place, by a person or by setPos() or by a move of the parent. `position` is in
    // scene coordinates. Positions that are no numbers are refused.
    void positionChanged(ControlNode* node, QPointF position);

public:
    QRectF boundingRect() const override;
    // What a press hits: larger than what is drawn, but halfway to the next node it ends.
    QPainterPath shape() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget = nullptr) override;
    int type() const override;

    // Tab in a view that shows the node with the focus.
    bool eventFilter(QObject* object, QEvent* event) override;

protected:
    QVariant itemChange(GraphicsItemChange change, const QVariant& value) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent* event) override;
    void mousePressEvent(QGraphicsSceneMouseEvent* event) override;
    void mouseReleaseEvent(QGraphicsSceneMouseEvent* event) override;
    bool sceneEvent(QEvent* event) override;

private:
    enum class Drag
    {
        None,
        Held, // the button is down, the node has not moved yet
        Moving
    };

    bool isMovable() const;
    QString placeText() const;
    QList<ControlNode*> nodesByPlace() const;
    void takeFocusInScene();
    void select(Qt::FocusReason reason);
    void setScenePosition(const QPointF& position);
    bool moveByKey(const QKeyEvent* event);
    bool goToNode(bool forward);
    void showPlace(const QGraphicsView* view) const;
    void endDrag();

    friend class ControlNodeAccessible;

    const int m_serial; // decides between nodes at the same place
    bool m_sunken = false;
    Drag m_drag = Drag::None;
    QPointF m_grip; // from the pointer to the position, in the scene
    QPointF m_dragStart; // position in the scene
};
