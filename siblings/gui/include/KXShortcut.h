#pragma once

#include <QKeySequence>
#include <QObject>
#include <QPointer>
#include <QWidget>

#include "gui_export.h"

// A key of a tool. It is live in the window of its parent widget, whether or not the widget itself is
// visible, and waits behind whatever the focused control wants for itself: a digit typed into a number box
// stays there. KexaAppKeyHook reports every activation too.
class GUI_EXPORT KXShortcut : public QObject
{
    Q_OBJECT

public:
    // An empty key is a shortcut that never fires; so is one without a parent.
    KXShortcut(QWidget* parent, const QKeySequence& key);
    ~KXShortcut() override;

    // As it was given, to the last modifier.
    QKeySequence Key() const;
    void SetKey(const QKeySequence& key);

Q_SIGNALS:
    // The key was pressed. When several shortcuts of one window hold the key, each of them is activated.
    void Activated();

private:
    friend class KexaAppKeyHook;

    QPointer<QWidget> m_pWidget;
    QKeySequence m_key;
};
