#pragma once

#include "KXWidget.h"

class QDockWidget;
class QMainWindow;

// A panel that stands beside the canvas, with its window title as a heading.
//
// Dock() puts it into a dock widget of a main window. A host may as well place it in a dock widget of its
// own, in a layout, or show it as a window: the heading is shown only where nothing else shows the title.
class GUICORE_EXPORT KXPanel : public KXWidget
{
    Q_OBJECT

public:
    enum TitlePosition
    {
        TitleTop = 0,
        TitleLeft = 1, // a dock widget gets a vertical title bar
        TitleNone = 2 // no heading of its own
    };
    Q_ENUM(TitlePosition)

    explicit KXPanel(QWidget* parent = nullptr, TitlePosition position = TitleTop,
                     Qt::WindowFlags flags = Qt::WindowFlags());
    ~KXPanel() override;

    TitlePosition GetTitlePosition() const;
    // The dock widget that holds the panel; null if none does.
    QDockWidget* GetDock() const;
    // Puts the panel into a dock widget at that side of the window and shows it. The window owns the dock
    // widget, and the dock widget the panel. A panel that is docked already moves together with its dock
    // widget. The dock widget's object name, by which a window stores its arrangement, is the panel's (or
    // else its class name) with "Dock" behind. Null for a null window.
    QDockWidget* Dock(QMainWindow* window, Qt::DockWidgetArea area = Qt::RightDockWidgetArea);

protected:
    bool event(QEvent* event) override;

private Q_SLOTS:
    void OnTitleChanged(const QString& title);

private:
    void ShowHeading();

    TitlePosition m_position;
    QWidget* m_pHeading;
};
