#pragma once

#include <QWidget>

#include "generaltoolsgui_export.h"

class Ui_HistoryItem;

// One row of the history panel: a small picture and a text, painted as a button without reaction of its own.
//
// Selected, enabled and not enabled are looks, each with another style sheet; QWidget::setEnabled() has
// nothing to do with them. A new row is enabled and not selected.
class GENERALTOOLSGUI_EXPORT NVHistoryItem : public QWidget
{
    Q_OBJECT

public:
    explicit NVHistoryItem(QWidget* parent);
    ~NVHistoryItem() override;

    bool IsEnabled() const;
    bool IsSelected() const;

    // Shown as it is, without markup.
    void SetText(const QString& text);
    // 24 by 24 logical pixels have room. A null image leaves no picture.
    void SetIcon(const QImage& image);
    // Whether the row shows the pointer over it. Takes effect at the next turn of the event loop; a new row
    // begins without.
    void EnableHoverInteraction(bool on);
    // Takes the style sheet of the present state, with or without the pointer over the row. Who changes the
    // theme calls this for the rows that are there, with false. A sheet that is set already isn't set again.
    void UpdateStyle(bool hover);

public Q_SLOTS:
    // A change shows the row without the pointer over it, until the pointer comes anew.
    void SetEnabled(bool enabled);
    void SetSelected(bool selected);

protected:
    bool event(QEvent* event) override;
    void customEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    friend class NVHistoryPanel;

    // Both at once, with one change of style.
    void SetState(bool selected, bool enabled);

    Ui_HistoryItem* m_pUi = nullptr;
    bool m_enabled = true;
    bool m_selected = false;
};
