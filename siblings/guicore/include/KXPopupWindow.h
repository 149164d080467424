#pragma once

#include <QElapsedTimer>
#include <QWidget>

#include "guicore_export.h"

// A window that drops down from a control, without a frame of the desktop's.
//
// It is a Qt::Tool window, so it gets QEvent::WindowDeactivate and QEvent::Hide like any other and modal
// windows can stand before it. Escape hides it, and so does losing the activation, with two exceptions: while
// a modal window blocks it, it stays and comes back to the front afterwards; and with the pointer on a
// checked button the click under way is left to that button, for it is the button's toggling that closes the
// popup, and a popup hidden before would be opened by the same click again.
class GUICORE_EXPORT KXPopupWindow : public QWidget
{
    Q_OBJECT

public:
    explicit KXPopupWindow(QWidget* parent = nullptr);
    ~KXPopupWindow() override;

    // The widget in which the form is set up. Never null; belongs to the popup. A size that the form gives to
    // it is the size at which the popup opens.
    QWidget* GetContent() const;
    // Shows the popup with its top left corner at that global position, moved back onto the screen if need
    // be, in front, active and with the keyboard focus.
    void Popup(const QPoint& position);

    void setVisible(bool visible) override;

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void CloseOnDeactivation();

    QWidget* m_pContent;
    bool m_blocked = false;
    bool m_activateAgain = false;
    QElapsedTimer m_sinceUnblocked;
};
