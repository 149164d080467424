#pragma once

#include <QObject>
#include <QPointer>

class ColorRangeDock;
class Document;
class FileTask;
class NVDocumentView;
class QAction;

// The menu entry that opens the panel of the colour range, and the selection that comes of it, which is one
// undo step of the document. The selection is made off the GUI thread; the person can cancel what takes long.
class ColorRangeMenu : public QObject
{
    Q_OBJECT

public:
    // None is owned, all outlive it.
    ColorRangeMenu(ColorRangeDock* dock, FileTask* task, QObject* parent);

    // Belongs to this.
    QAction* GetAction() const;
    // What is worked on from now on; neither is owned, both may be null, which closes the panel. They are to
    // be taken out before they go.
    void SetDocument(Document* document, NVDocumentView* view);

Q_SIGNALS:
    // What is under way on the document has to come to its end now.
    void AboutToChange();
    // Something to say in the status bar; empty when what was said holds no longer.
    void Message(const QString& text);

private Q_SLOTS:
    void OnTriggered();
    void OnClosed();
    void OnAccepted();

private:
    ColorRangeDock* m_pDock;
    FileTask* m_pTask;
    QAction* m_pAction;
    QPointer<Document> m_pDocument;
};
