#pragma once

#include <QPoint>
#include <QWidget>

#include "gui_export.h"

class QButtonGroup;
class QGridLayout;

// Chooses the point of a picture that stays where it is while the canvas around it changes its size: nine
// cells for nine anchors. The chosen cell has a dot; the cells around it have arrows that show where the
// canvas grows to, and that turn towards the anchor on an axis on which it shrinks.
//
// A click chooses a cell, and so do the arrow keys while the widget has the focus; Tab goes past all cells at
// once. Left is left in right-to-left layouts too. A screen reader meets nine radio buttons; who uses the
// widget gives it a name.
class GUI_EXPORT KXAnchorSelection : public QWidget
{
    Q_OBJECT

public:
    // Row by row: the row is the state / 3, the column the state % 3.
    enum State
    {
        TopLeft,
        Top,
        TopRight,
        Left,
        Center,
        Right,
        BottomLeft,
        Bottom,
        BottomRight
    };
    Q_ENUM(State)

    explicit KXAnchorSelection(QWidget* parent = nullptr);
    ~KXAnchorSelection() override;

    // Center at first.
    State GetState() const;
    // False at first.
    bool IsShrinkHorizontal() const;
    bool IsShrinkVertical() const;

    // Where the arrow in a cell points to, as -1, 0 or 1 an axis. (0, 0) for the anchor itself and for cells
    // that don't touch it, which have no arrow.
    static QPoint ArrowOf(State cell, State anchor, bool shrinkHorizontal, bool shrinkVertical);

public Q_SLOTS:
    // What is no anchor is ignored.
    void SetState(KXAnchorSelection::State state);
    // Whether the new canvas is smaller than the present one on that axis.
    void ShrinkHorizontal(bool shrink);
    void ShrinkVertical(bool shrink);

Q_SIGNALS:
    // Also after SetState().
    void StateChanged(KXAnchorSelection::State state);

protected:
    void changeEvent(QEvent* event) override;

private Q_SLOTS:
    void OnCellToggled(int id, bool checked);

private:
    void AddCells(QGridLayout* layout);
    void NameCells();
    void TurnArrows();

    QButtonGroup* m_pCells;
    bool m_shrinkHorizontal = false;
    bool m_shrinkVertical = false;
};
