#include "TextEdit.h"

#include <QAbstractTextDocumentLayout>
#include <QClipboard>
#include <QGraphicsScene>
#include <QGraphicsSceneContextMenuEvent>
#include <QGraphicsTextItem>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextLayout>

#include "KXDocumentInterface.h"
#include "NVDocumentView.h"

namespace
{

// Around the text, in pixels of the screen.
const double Reach = 6;
const int SelectionAlpha = 90;
// Each side of the frame is drawn in so many pieces, to follow the wave.
const int FramePieces = 48;

// Gets keys and input methods, and leaves pictures and the pointer to others.
class TextItem : public QGraphicsTextItem
{
public:
    TextItem()
    {
        setTextInteractionFlags(Qt::TextEditorInteraction);
        setAcceptedMouseButtons(Qt::NoButton);
        setAcceptDrops(false);
    }
    void paint(QPainter*, const QStyleOptionGraphicsItem*, QWidget*) override { }

protected:
    // Its menu would paste letters of another look.
    void contextMenuEvent(QGraphicsSceneContextMenuEvent* event) override { event->ignore(); }
};

void Overwrite(QImage& layer, const QRect& area, const TextPicture& picture)
{
    QPainter painter(&layer);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(area, Qt::transparent);
    painter.drawImage(picture.corner, picture.image);
}

bool IsCommitKey(const QKeyEvent* event)
{
    return (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) &&
        event->modifiers().testFlag(Qt::ControlModifier);
}

bool IsTabKey(const QKeyEvent* event)
{
    return (event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab) &&
        !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
}

// Those that delete more than a letter, and that menus may have for something else.
bool IsDeletionKey(QKeyEvent* event)
{
    return event->matches(QKeySequence::DeleteEndOfWord) || event->matches(QKeySequence::DeleteStartOfWord) ||
        event->matches(QKeySequence::DeleteEndOfLine);
}

// The sides of a rectangle in pieces.
QPolygonF PiecesOf(const QRectF& rect)
{
    const QPointF corners[] = {rect.topLeft(), rect.topRight(), rect.bottomRight(), rect.bottomLeft()};
    QPolygonF polygon;
    for (int side = 0; side < 4; ++side)
    {
        const QPointF way = corners[(side + 1) % 4] - corners[side];
        for (int piece = 0; piece < FramePieces; ++piece)
            polygon.append(corners[side] + way * piece / FramePieces);
    }
    return polygon;
}

} // namespace

TextEdit::TextEdit(NVDocumentView* view, KXDocumentInterface* document, int layer,
                   const TextDescription& description)
    : m_pView(view),
      m_pDocument(document),
      m_pItem(new TextItem),
      m_layer(layer),
      m_description(description),
      m_area(VisibleRect(document->GetLayer(layer).image))
{
    m_pItem->document()->setPlainText(description.text);
    LayOutText(*m_pItem->document(), m_description);
    view->scene()->addItem(m_pItem);
    QTextCursor cursor = m_pItem->textCursor();
    cursor.movePosition(QTextCursor::End);
    m_pItem->setTextCursor(cursor);
    connect(m_pItem->document(), &QTextDocument::contentsChanged, this, &TextEdit::OnContentsChanged);
    connect(m_pItem->document(), &QTextDocument::redoAvailable, this, &TextEdit::RedoAvailable);
    view->installEventFilter(this);
    Show();
    TakeFocus();
}

TextEdit::~TextEdit()
{
    if (m_pView)
    {
        m_pView->removeEventFilter(this);
        m_pView->UpdateOverlay(m_pView->viewport()->rect());
    }
    delete m_pItem;
}

int TextEdit::GetLayer() const
{
    return m_layer;
}

const TextDescription& TextEdit::GetDescription() const
{
    return m_description;
}

QRect TextEdit::GetArea() const
{
    return m_area;
}

bool TextEdit::Contains(const QPointF& point) const
{
    const double reach = Reach / m_pView->GetScale();
    const QRectF frame = GetFrame();
    return frame.adjusted(-reach, -reach, reach, reach)
        .contains(UnwarpPoint(point, frame, m_description.warp));
}

QString TextEdit::GetSelectedText() const
{
    return m_pItem ? m_pItem->textCursor().selectedText() : QString();
}

void TextEdit::SetStyle(const TextDescription& style)
{
    if (!m_pItem)
        return;
    const TextDescription before = m_description;
    m_description = style;
    m_description.text = before.text;
    m_description.anchor = before.anchor;
    m_description.width = before.width;
    if (!(m_description == before))
        OnContentsChanged();
}

void TextEdit::SetWarp(const TextWarp& warp)
{
    TextDescription style = m_description;
    style.warp = warp;
    SetStyle(style);
}

void TextEdit::PlaceCursor(const QPointF& point, bool extendsSelection)
{
    if (!m_pItem)
        return;
    EndComposition();
    const QRectF frame = GetFrame();
    const QPointF straight = UnwarpPoint(point, frame, m_description.warp) - frame.topLeft();
    const int position = m_pItem->document()->documentLayout()->hitTest(straight, Qt::FuzzyHit);
    QTextCursor cursor = m_pItem->textCursor();
    cursor.setPosition(qMax(0, position),
                       extendsSelection ? QTextCursor::KeepAnchor : QTextCursor::MoveAnchor);
    m_pItem->setTextCursor(cursor);
    m_pView->UpdateOverlay(m_pView->viewport()->rect());
}

void TextEdit::SelectWord()
{
    QTextCursor cursor = m_pItem->textCursor();
    cursor.select(QTextCursor::WordUnderCursor);
    m_pItem->setTextCursor(cursor);
    m_pView->UpdateOverlay(m_pView->viewport()->rect());
}

void TextEdit::SelectAll()
{
    QTextCursor cursor = m_pItem->textCursor();
    cursor.select(QTextCursor::Document);
    m_pItem->setTextCursor(cursor);
    m_pView->UpdateOverlay(m_pView->viewport()->rect());
}

bool TextEdit::Undo()
{
    return Step(&QTextDocument::isUndoAvailable, &QTextDocument::undo);
}

bool TextEdit::Redo()
{
    return Step(&QTextDocument::isRedoAvailable, &QTextDocument::redo);
}

// Through what was typed, until a letter is another one.
bool TextEdit::Step(bool (QTextDocument::*isAvailable)() const, void (QTextDocument::*go)(QTextCursor*))
{
    EndComposition();
    if (!m_pItem)
        return false;
    QTextDocument* document = m_pItem->document();
    const QString before = document->toPlainText();
    QTextCursor cursor = m_pItem->textCursor();
    while ((document->*isAvailable)() && document->toPlainText() == before)
        (document->*go)(&cursor);
    m_pItem->setTextCursor(cursor);
    return document->toPlainText() != before;
}

void TextEdit::EndComposition()
{
    // It may have something better than what it shows.
    QGuiApplication::inputMethod()->commit();
    const QString letters = m_pItem ? m_pItem->textCursor().block().layout()->preeditAreaText() : QString();
    if (letters.isEmpty())
        return;
    QInputMethodEvent decided;
    decided.setCommitString(letters);
    m_pItem->scene()->sendEvent(m_pItem, &decided);
    QGuiApplication::inputMethod()->reset();
}

void TextEdit::TakeFocus()
{
    if (!m_pItem || !m_pView)
        return;
    m_pView->setFocus();
    m_pItem->setFocus();
}

bool TextEdit::eventFilter(QObject* object, QEvent* event)
{
    // The kind comes first: while it is destroyed, the view is no view any more.
    const QEvent::Type type = event->type();
    const bool isKey =
        type == QEvent::KeyPress || type == QEvent::KeyRelease || type == QEvent::ShortcutOverride;
    if ((!isKey && type != QEvent::InputMethod) || object != m_pView || !m_pItem)
        return QObject::eventFilter(object, event);
    if (type == QEvent::InputMethod)
    {
        QCoreApplication::sendEvent(m_pView->scene(), event);
        // What is not decided yet is no change of the text, and is shown all the same.
        OnContentsChanged();
        return true;
    }
    // Cursor and selection may be others after it.
    m_pView->UpdateOverlay(m_pView->viewport()->rect());
    return TakeKey(event);
}

void TextEdit::OnContentsChanged()
{
    if (m_isLayingOut || !m_pItem)
        return;
    m_isLayingOut = true;
    m_description.text = m_pItem->toPlainText();
    LayOutText(*m_pItem->document(), m_description);
    m_isLayingOut = false;
    Show();
}

// True for those that the view does not get.
bool TextEdit::TakeKey(QEvent* event)
{
    auto* key = static_cast<QKeyEvent*>(event);
    if (IsCommitKey(key))
    {
        event->accept();
        if (event->type() == QEvent::KeyPress)
            Q_EMIT CommitAsked();
        return true;
    }
    // On the canvas it would lead to the next control, and what is typed then would choose tools.
    if (IsTabKey(key))
    {
        event->accept();
        if (event->type() == QEvent::KeyPress && key->key() == Qt::Key_Tab)
            InsertPlain(QStringLiteral("\t"));
        return true;
    }
    if (event->type() == QEvent::ShortcutOverride && IsDeletionKey(key))
    {
        event->accept();
        return true;
    }
    if (event->type() == QEvent::KeyPress && key->matches(QKeySequence::Paste))
    {
        InsertPlain(QGuiApplication::clipboard()->text());
        return true;
    }
    // On the canvas it would pan.
    if (key->key() != Qt::Key_Space || event->type() == QEvent::ShortcutOverride)
        return false;
    QCoreApplication::sendEvent(m_pView->scene(), event);
    return true;
}

void TextEdit::InsertPlain(const QString& text)
{
    QTextCursor cursor = m_pItem->textCursor();
    cursor.insertText(text);
    m_pItem->setTextCursor(cursor);
}

// Draws the text into its layer anew.
void TextEdit::Show()
{
    m_pItem->setPos(GetFrame().topLeft());
    const TextPicture picture = DrawText(*m_pItem->document(), m_description, m_pDocument->GetRect());
    const QRect changed = m_area | picture.GetRect();
    Overwrite(m_pDocument->EditLayer(m_layer), m_area, picture);
    m_area = picture.GetRect();
    m_pDocument->NotifyChanged(changed);
    if (m_pView)
        m_pView->UpdateOverlay(m_pView->viewport()->rect());
}

QRectF TextEdit::GetFrame() const
{
    return m_pItem ? TextFrame(*m_pItem->document(), m_description) : QRectF();
}

// From the straight text in document pixels to the viewport.
QPolygonF TextEdit::OnCanvas(const QPolygonF& polygon) const
{
    const QRectF frame = GetFrame();
    QPolygonF bent;
    for (const QPointF& point : polygon)
        bent.append(m_pView->MapFromDocument(WarpPoint(point, frame, m_description.warp)));
    return bent;
}

// In document pixels, before it is bent.
QLineF TextEdit::CursorLine() const
{
    const QTextCursor cursor = m_pItem->textCursor();
    const QTextLayout& layout = *cursor.block().layout();
    const int position = cursor.positionInBlock() + layout.preeditAreaText().size();
    const QTextLine line = layout.lineForTextPosition(position);
    if (!line.isValid())
        return QLineF();
    const QPointF top =
        GetFrame().topLeft() + layout.position() + QPointF(line.cursorToX(position), line.y());
    return QLineF(top, top + QPointF(0, line.height()));
}

// Letter by letter, since those of two directions do not stand in one row.
void TextEdit::DrawSelection(QPainter& painter) const
{
    const QTextCursor cursor = m_pItem->textCursor();
    QColor color = m_pView->palette().color(QPalette::Highlight);
    color.setAlpha(SelectionAlpha);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    for (int position = cursor.selectionStart(); position < cursor.selectionEnd(); ++position)
    {
        const QTextBlock block = m_pItem->document()->findBlock(position);
        const QTextLayout& layout = *block.layout();
        const int place = position - block.position();
        const QTextLine line = layout.lineForTextPosition(place);
        if (!line.isValid() || place >= block.length() - 1)
            continue;
        const QPointF corner = GetFrame().topLeft() + layout.position();
        const QRectF letter(QPointF(line.cursorToX(place), line.y()),
                            QPointF(line.cursorToX(place, QTextLine::Trailing), line.y() + line.height()));
        painter.drawPolygon(OnCanvas(QPolygonF(letter.normalized().translated(corner))));
    }
}

void TextEdit::DrawOverlay(QPainter& painter) const
{
    if (!m_pItem || !m_pView)
        return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    DrawSelection(painter);
    painter.setBrush(Qt::NoBrush);
    const double reach = Reach / m_pView->GetScale();
    const QPolygonF frame = OnCanvas(PiecesOf(GetFrame().adjusted(-reach, -reach, reach, reach)));
    const QPolygonF cursor =
        OnCanvas(QPolygonF() << CursorLine().p1() << CursorLine().center() << CursorLine().p2());
    painter.setPen(QPen(QColor(255, 255, 255, 160), 1));
    painter.drawPolygon(frame);
    painter.setPen(QPen(QColor(0, 0, 0, 160), 1, Qt::DashLine));
    painter.drawPolygon(frame);
    painter.setPen(QPen(Qt::white, 3));
    painter.drawPolyline(cursor);
    painter.setPen(QPen(Qt::black, 1));
    painter.drawPolyline(cursor);
    painter.restore();
}
