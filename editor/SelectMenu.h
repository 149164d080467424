#pragma once

#include <QImage>
#include <QObject>
#include <QPointer>

class Document;
class NVDocumentView;
class QAction;
class QKeySequence;
class QMenu;
class QWidget;

// Fills the menu of the selection and does what it says. Each change is one undo step of the document. The
// entry that refines the selection is also the action of the selection bars' buttons.
class SelectMenu : public QObject
{
    Q_OBJECT

public:
    // The menu is not owned and outlives this; dialogs come up over the window.
    SelectMenu(QMenu* menu, QWidget* window, QObject* parent);

    QMenu* GetMenu() const;
    // Other ways to a selection have their place before it.
    QAction* GetRefineAction() const;
    // Makes what is selected of the current layer transparent. It is for another menu.
    QAction* GetClearAction() const;
    // What the commands act on from now on; neither is owned, both may be null.
    void SetDocument(Document* document, NVDocumentView* view);

Q_SIGNALS:
    // What is under way on the document has to come to its end now.
    void AboutToChange();
    // Why something was not done, for the status bar.
    void Message(const QString& text);

private Q_SLOTS:
    void OnAll();
    void OnNone();
    void OnInvert();
    void OnRefine();
    void OnClear();
    void OnSelectionChanged();

private:
    template <typename Slot>
    QAction* Add(const QString& text, const QKeySequence& key, Slot slot);
    bool HasRoom();
    void Push(const QString& name, const QImage& mask);

    QMenu* m_pMenu;
    QWidget* m_pWindow;
    QPointer<Document> m_pDocument;
    QPointer<NVDocumentView> m_pView;
    QAction* m_pAll;
    QAction* m_pNone;
    QAction* m_pInvert;
    QAction* m_pRefine;
    QAction* m_pClear;
};
