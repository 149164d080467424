#pragma once

#include <QKeySequence>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>

#include "NVDocumentView.h"

class Document;
class KXShortcut;
class QKeyEvent;
class QWidget;

// A tool of the tool box. It owns its option bar, which is made at the first use, and while it is the current
// tool it acts on the canvas that it was given last. GUI thread only.
class Tool : public QObject
{
    Q_OBJECT

public:
    explicit Tool(QObject* parent);
    ~Tool() override;

    // For menus and tooltips, translated.
    virtual QString GetName() const = 0;
    // The picture of the tool box, without "theme:" and suffix.
    virtual QString GetPictureName() const = 0;
    virtual QKeySequence GetKey() const = 0;
    // The option bar, or that of several which the tool has on show now. It is the tool's and goes with it,
    // whatever parent it is given.
    QWidget* GetBar();
    bool IsActive() const;
    // Both null while no document is open.
    NVDocumentView* GetView() const;
    Document* GetDocument() const;

    // Becomes the current tool, or stops being it; a second call in a row does nothing.
    void Activate();
    void Deactivate();
    // What the tool acts on from now on; neither is owned, both may be null. What is under way comes to its
    // end first.
    void SetCanvas(NVDocumentView* view, Document* document);

    // Whether something is under way that Cancel takes back. Only ever true for the current tool.
    bool CanCancel() const;
    // Takes back what is under way; true if there was something.
    virtual bool Cancel();
    // Takes back the last bit of what is under way, or all of it; true if there was something.
    virtual bool Undo();
    // Whether Redo would bring something back. Only ever true for the current tool.
    bool CanRedo() const;
    // Brings back what Undo took back last of what is under way; true if there was something.
    virtual bool Redo();
    // Brings what is under way to its regular end at once.
    virtual void Finish();
    // Writes those of the bar's values that are not written yet.
    virtual void StoreValues();
    // Loads again what depends on the theme. A bar that is not made yet is made in the theme of then.
    void UpdateTheme();

Q_SIGNALS:
    // Something to say in the status bar.
    void Message(const QString& text);
    // GetBar() gives another one from now on.
    void BarChanged(QWidget* bar);
    void CanCancelChanged(bool canCancel);
    void CanRedoChanged(bool canRedo);

protected:
    virtual QWidget* CreateBar() = 0;
    virtual void UpdateBarTheme(QWidget* bar);
    // The view and the document are others now. Comes before Equip.
    virtual void CanvasChanged();
    // The keys go on, and off.
    virtual void CreateShortcuts();
    virtual void ReleaseShortcuts();
    // Cursor and overlay of a view that the tool now acts on.
    virtual void Equip(NVDocumentView* view) = 0;
    // Left button or pen tip, from press to release; hover moves come without a button held.
    virtual void Pressed(const CanvasPoint& point);
    virtual void Moved(const CanvasPoint& point);
    virtual void Released(const CanvasPoint& point);
    virtual void PointerLeft();

    // Whether the current layer may be changed; when it is hidden, a message says so.
    bool CanChangeLayer();
    // A further bar is the tool's from now on.
    void AddBar(QWidget* bar);
    // Puts one of the tool's bars on show in place of the one before.
    void ChangeBar(QWidget* bar);
    // Shows the picture, named without "theme:" and suffix, on the label of a bar.
    static void SetBarPicture(QWidget* bar, const QString& label, const QString& picture);
    // How far an arrow key moves what a tool has: a pixel, with Shift ten. Null for any other key.
    static QPoint WayOfArrow(const QKeyEvent& key);
    // Escape takes back what is under way as long as it is on, also while keys are held that change a drag.
    void SetEscapeLive(bool live);
    // Whether there is something for Redo.
    void SetRedoLive(bool live);

private Q_SLOTS:
    void OnPressed(const CanvasPoint& point);
    void OnMoved(const CanvasPoint& point);
    void OnReleased(const CanvasPoint& point);
    void OnCancelled();
    void OnPointerLeft();
    void OnEscapeKey();

private:
    void Attach();
    void Detach();

    // The one on show, and all that there are.
    QPointer<QWidget> m_pBar;
    QList<QPointer<QWidget>> m_bars;
    // Live while the tool is the current one, and have their keys while something is under way. One for each
    // set of keys held.
    QList<QPointer<KXShortcut>> m_escapes;
    bool m_canCancel = false;
    bool m_canRedo = false;
    QPointer<NVDocumentView> m_pView;
    QPointer<Document> m_pDocument;
    bool m_isActive = false;
};
