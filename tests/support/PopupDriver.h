// Opens and closes a popup by its checkable button as a person would.

#pragma once

#include <QAbstractButton>
#include <QObject>
#include <QPointer>
#include <QWidget>

// The button's window must be shown. Besides the clicks this does what a window system does with them and the
// offscreen platform does not: the pointer stands where the click goes, and a click into another window
// activates that one first.
class PopupDriver : public QObject
{
    Q_OBJECT
public:
    // Without `popup`, the first window that Open() brings up is taken.
    explicit PopupDriver(QAbstractButton* button, QWidget* popup = nullptr);
    ~PopupDriver() override;

    QWidget* Popup() const;
    // True while the popup is visible.
    bool IsOpen() const;
    // Show and hide events of the popup since construction or ClearCounts().
    int ShowCount() const;
    int HideCount() const;
    void ClearCounts();

    // How long the waits below last at most, in milliseconds; 5000 unless set.
    void SetPatience(int milliseconds);

    // Clicks the button and waits until the popup is visible and active. False if it does not come.
    bool Open();
    // These close the open popup and wait until it is hidden. False if it stays.
    bool CloseByButton();
    bool CloseByEscape();
    // Clicks into the middle of `elsewhere`, or of the button's window if null.
    bool CloseByClickElsewhere(QWidget* elsewhere = nullptr);

    // A left click on the middle of a widget: pointer there, its window activated, press and release.
    static void ClickLikeAPerson(QWidget* widget);

    bool eventFilter(QObject* object, QEvent* event) override;

private:
    bool waitHidden() const;

    QPointer<QAbstractButton> m_pButton;
    QPointer<QWidget> m_pPopup;
    int m_patience = 5000;
    bool m_searching = false;
    int m_shows = 0;
    int m_hides = 0;
};
