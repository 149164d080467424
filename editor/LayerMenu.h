#pragma once

#include <QObject>
#include <QPointer>

class Document;
class QAction;
class QKeySequence;
class QMenu;

// Fills the menu of the layers and does what it says. Each change of a layer is an undo step of the document.
class LayerMenu : public QObject
{
    Q_OBJECT

public:
    // The menu is not owned and outlives this.
    LayerMenu(QMenu* menu, QObject* parent);

    // What to show in a status bar: the current layer and whether it is hidden. Empty without a document.
    QString GetLayerText() const;
    // What the commands act on from now on; not owned, may be null.
    void SetDocument(Document* document);

Q_SIGNALS:
    // What is under way on the document has to come to its end now.
    void AboutToChange();
    void LayerTextChanged(const QString& text);
    // Why nothing was done.
    void Refused(const QString& text);

private Q_SLOTS:
    void OnNew();
    void OnDuplicate();
    void OnDelete();
    void OnAbove();
    void OnBelow();
    void OnVisible();
    void OnFlatten();
    void OnLayersChanged();

private:
    template <typename Slot>
    QAction* Add(QMenu* menu, const QString& text, const QKeySequence& key, Slot slot);
    void Choose(int distance);
    void AddLayer(int kind);
    void Do(int kind);

    QPointer<Document> m_pDocument;
    QAction* m_pNew;
    QAction* m_pDuplicate;
    QAction* m_pDelete;
    QAction* m_pAbove;
    QAction* m_pBelow;
    QAction* m_pVisible;
    QAction* m_pFlatten;
};
