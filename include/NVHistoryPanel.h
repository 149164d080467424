#pragma once

#include <QSize>

#include "KXPanel.h"
#include "generaltoolsgui_export.h"

class HistoryRowGrid;
class Ui_HistoryViewer;

// The steps of a history as a scrolling column of rows, one of which is the present state. The rows below it
// are the steps that were undone.
//
// The history itself is the host's: it adds and removes rows, says which one is the present state, and hears
// by IndexActivated() which row was clicked. A click changes nothing here. Rows count from 0 at the top, and
// all are as high as the first that was ever added.
class GENERALTOOLSGUI_EXPORT NVHistoryPanel : public KXPanel
{
    Q_OBJECT

public:
    explicit NVHistoryPanel(QWidget* parent);
    ~NVHistoryPanel() override;

    int Count() const;
    // The first selected row; -1 without one.
    int GetSelectedIndex() const;

    // Adds a row at the bottom. Neither the selection nor the place of the scroll bar changes.
    void AddItem(const QString& text, const QImage& image);
    // Removes this row and all below it. The widgets go at the next turn of the event loop.
    void Remove(int index);
    void Clear();
    // Scrolls no farther than it takes to have the whole row in view. An index behind the last row is
    // ignored.
    void EnsureVisible(int index);
    // Clicks are ignored until this is called with true.
    void EnableActions(bool enabled);

public Q_SLOTS:
    // Makes the row the present state, and scrolls to it: it is selected, the rows above it are enabled with
    // it, and those below are not. With -1 no row is enabled, and the first comes into view.
    void SetSelected(int index);

Q_SIGNALS:
    // A row was pressed and released with the left button, whatever its look.
    void IndexActivated(int index);

public:
    bool eventFilter(QObject* object, QEvent* event) override;

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    HistoryRowGrid* Grid() const;
    bool IsInViewport(const QPoint& global) const;
    // -1 if there is no row.
    int RowAt(const QPoint& global) const;
    // As high as its rows.
    void FitContainer();

    Ui_HistoryViewer* m_pUi = nullptr;
    // The column of rows; belongs to the scroll area.
    QWidget* m_pContainer = nullptr;
    QSize m_itemSize = QSize(0, 0);
    QSize m_containerSize = QSize(0, 0);
    int m_count = 0;
    int m_pressedIndex = -1;
    bool m_actionsEnabled = false;
};
