#pragma once

#include <QObject>
#include <QPointer>

#include "TextPicture.h"

class KXDocumentInterface;
class NVDocumentView;
class QGraphicsTextItem;
class QPainter;
class QTextCursor;
class QTextDocument;

// A text that is being typed, on the canvas: takes keys and input methods from it, and shows the text in its
// layer, as it will be, with each change. What becomes of the layer in the end is up to its owner.
class TextEdit : public QObject
{
    Q_OBJECT

public:
    // The layer is one of the document's and has no pixels but those of the description. Neither view nor
    // document is owned; the document outlives it. Takes the keys of the view.
    TextEdit(NVDocumentView* view, KXDocumentInterface* document, int layer,
             const TextDescription& description);
    ~TextEdit() override;

    int GetLayer() const;
    // With the text as it stands.
    const TextDescription& GetDescription() const;
    // Where the layer has pixels.
    QRect GetArea() const;
    // Whether a point of the document, or one so near that nobody aims better, lies in the text.
    bool Contains(const QPointF& point) const;
    QString GetSelectedText() const;

    // Gives the text another look; its own text is left out.
    void SetStyle(const TextDescription& style);
    void SetWarp(const TextWarp& warp);
    // Puts the cursor to the letter nearest to a point of the document.
    void PlaceCursor(const QPointF& point, bool extendsSelection);
    void SelectWord();
    void SelectAll();
    // Takes back what was typed last; false if nothing was.
    bool Undo();
    // Brings back what was taken back last; false if nothing was.
    bool Redo();
    // What an input method shows and has not decided yet is part of the text from now on.
    void EndComposition();
    // Takes the keys.
    void TakeFocus();
    // Its frame, its selection and its cursor, in pixels of the viewport.
    void DrawOverlay(QPainter& painter) const;

    bool eventFilter(QObject* object, QEvent* event) override;

Q_SIGNALS:
    // By a key.
    void CommitAsked();
    void RedoAvailable(bool available);

private Q_SLOTS:
    void OnContentsChanged();

private:
    bool Step(bool (QTextDocument::*isAvailable)() const, void (QTextDocument::*go)(QTextCursor*));
    bool TakeKey(QEvent* event);
    void InsertPlain(const QString& text);
    void Show();
    QRectF GetFrame() const;
    QPolygonF OnCanvas(const QPolygonF& polygon) const;
    QLineF CursorLine() const;
    void DrawSelection(QPainter& painter) const;

    QPointer<NVDocumentView> m_pView;
    KXDocumentInterface* m_pDocument;
    // In the scene of the view, unseen: it has the text, the cursor and all the keys that move it.
    QPointer<QGraphicsTextItem> m_pItem;
    int m_layer;
    TextDescription m_description;
    QRect m_area;
    // The look is being changed, which is no change of the text.
    bool m_isLayingOut = false;
};
