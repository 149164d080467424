#pragma once

#include <QKeySequence>
#include <QObject>
#include <QPointer>
#include <QVector>

#include "gui_export.h"

class KXShortcut;
class QKeyEvent;
class QShortcut;
class QWidget;

// The application's key hook: reports the activation of every KXShortcut, so that a tool can take its keys
// from one place. GUI thread only.
class GUI_EXPORT KexaAppKeyHook : public QObject
{
    Q_OBJECT

public:
    // Made at the first call, lives until the program ends.
    static KexaAppKeyHook* instance();

Q_SIGNALS:
    // One of the two is emitted, once a key press, before KXShortcut::Activated. The id names the key of the
    // window and is stable while a shortcut holds it. Exactly one shortcut holds the key in the active
    // window.
    void ShortcutActivated(QKeySequence key, int id);
    // Several do, or an action of the window claims the key too.
    void ShortcutActivatedAmbiguously(QKeySequence key, int id);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private Q_SLOTS:
    void OnKey();
    void OnKeyAmbiguous();

private:
    friend class KXShortcut;

    // One key of one window, with the shortcuts that hold it, the oldest first.
    struct Entry
    {
        QPointer<QShortcut> pShortcut;
        QPointer<QWidget> pWindow;
        QKeySequence key;
        int id = 0;
        QVector<KXShortcut*> holders;
    };

    KexaAppKeyHook();

    void add(KXShortcut* shortcut);
    void remove(KXShortcut* shortcut);
    void hold(KXShortcut* shortcut);
    void letGo(KXShortcut* shortcut);
    void drop(int index);
    void watchAncestors(KXShortcut* shortcut);
    void follow(const QWidget* widget);
    void noteOffered(const QObject* object, const QKeyEvent* event);
    bool fireOffered(const QWidget* receiver, const QKeyEvent* event);
    void forgetOffered();
    QVector<Entry>::const_iterator entryOf(const QObject* window, int key) const;
    void fire(QObject* source, bool ambiguous);

    QVector<Entry> m_entries;
    // All living shortcuts, the oldest first.
    QVector<KXShortcut*> m_shortcuts;
    QVector<QPointer<QObject>> m_watched;
    // The keys that are being reported, the innermost last: none may be deleted under its own signal.
    QVector<QObject*> m_firing;
    int m_lastId = 0;
    // A key that nobody in a window claimed for itself; 0 is none.
    int m_offered = 0;
};
