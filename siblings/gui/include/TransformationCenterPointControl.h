#pragma once

#include <QWidget>

#include "gui_export.h"

// Nine cells in a square, one of which is chosen: the reference point of a transformation, or the place of a
// picture on a page.
//
// A click chooses a cell; the arrow keys go to the neighbour and stop at the edges, Home and End go to the
// first and the last cell. The cells don't change sides in languages that are written from right to left.
class GUI_EXPORT TransformationCenterPointControl : public QWidget
{
    Q_OBJECT

public:
    // In reading order.
    enum ControlState : int
    {
        TopLeft = 1,
        TopCenter,
        TopRight,
        MiddleLeft,
        Center,
        MiddleRight,
        BottomLeft,
        BottomCenter,
        BottomRight
    };
    Q_ENUM(ControlState)

    explicit TransformationCenterPointControl(QWidget* parent = nullptr);
    ~TransformationCenterPointControl() override;

    // Center at first.
    ControlState GetState() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

public Q_SLOTS:
    // A value that is none of the nine chooses TopLeft.
    void SetState(TransformationCenterPointControl::ControlState state);

Q_SIGNALS:
    // A change, by a person or by SetState(), sends all three in this order. In the first, GetState() is
    // still what it was. Hosts tie either form of the second. clazy:excludeall=overloaded-signal
    void StateChange(TransformationCenterPointControl::ControlState state);
    void StateChanged(TransformationCenterPointControl::ControlState state);
    void StateChanged(int state);

protected:
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    ControlState CellAt(const QPoint& point) const;
    void SetHovered(int state);
    void DrawCell(QPainter& painter, const QRect& place, int line, int state) const;

    ControlState m_state = Center;
    // 0 while the pointer is elsewhere.
    int m_hovered = 0;
};
