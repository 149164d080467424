#include "LayerMenu.h"

#include <QMenu>
#include <QUndoStack>

#include "Document.h"
#include "FlattenCommand.h"
#include "KXDocumentInterface.h"
#include "LayerCommand.h"
#include "MemoryRoom.h"

LayerMenu::LayerMenu(QMenu* menu, QObject* parent)
    : QObject(parent),
      m_pNew(Add(menu, tr("&New Layer"), Qt::CTRL + Qt::SHIFT + Qt::Key_N, &LayerMenu::OnNew)),
      m_pDuplicate(Add(menu, tr("D&uplicate Layer"), Qt::CTRL + Qt::Key_J, &LayerMenu::OnDuplicate)),
      m_pDelete(Add(menu, tr("&Delete Layer"), Qt::CTRL + Qt::SHIFT + Qt::Key_Delete, &LayerMenu::OnDelete)),
      m_pAbove(Add(menu, tr("Layer &Above"), Qt::CTRL + Qt::Key_PageUp, &LayerMenu::OnAbove)),
      m_pBelow(Add(menu, tr("Layer &Below"), Qt::CTRL + Qt::Key_PageDown, &LayerMenu::OnBelow)),
      m_pVisible(Add(menu, tr("&Hide Layer"), Qt::CTRL + Qt::SHIFT + Qt::Key_H, &LayerMenu::OnVisible)),
      m_pFlatten(Add(menu, tr("&Flatten Image"), QKeySequence(), &LayerMenu::OnFlatten))
{
    menu->insertSeparator(m_pAbove);
    menu->insertSeparator(m_pVisible);
    menu->insertSeparator(m_pFlatten);
    OnLayersChanged();
}

QString LayerMenu::GetLayerText() const
{
    if (!m_pDocument)
        return QString();
    const KXDocumentInterface* pixels = m_pDocument->GetPixels();
    const KXDocumentInterface::Layer& layer = pixels->GetLayer(pixels->GetCurrentLayer());
    return layer.visible ? layer.name : tr("%1 (hidden)").arg(layer.name);
}

void LayerMenu::SetDocument(Document* document)
{
    if (document == m_pDocument)
        return;
    if (m_pDocument)
    {
        disconnect(m_pDocument->GetPixels(), nullptr, this, nullptr);
        disconnect(m_pDocument, nullptr, this, nullptr);
    }
    m_pDocument = document;
    if (m_pDocument)
    {
        connect(m_pDocument->GetPixels(), &KXDocumentInterface::LayersChanged, this,
                &LayerMenu::OnLayersChanged);
        connect(m_pDocument, &QObject::destroyed, this, &LayerMenu::OnLayersChanged);
    }
    OnLayersChanged();
}

void LayerMenu::OnNew()
{
    AddLayer(LayerCommand::New);
}

void LayerMenu::OnDuplicate()
{
    AddLayer(LayerCommand::Duplicate);
}

void LayerMenu::OnDelete()
{
    Do(LayerCommand::Delete);
}

void LayerMenu::OnAbove()
{
    Choose(1);
}

void LayerMenu::OnBelow()
{
    Choose(-1);
}

void LayerMenu::OnVisible()
{
    const KXDocumentInterface* pixels = m_pDocument->GetPixels();
    const bool isShown = pixels->GetLayer(pixels->GetCurrentLayer()).visible;
    Do(isShown ? LayerCommand::Hide : LayerCommand::Show);
}

void LayerMenu::OnFlatten()
{
    Q_EMIT AboutToChange();
    // A text without letters may have been all that there was besides.
    if (CanFlatten(m_pDocument->GetPixels()))
        m_pDocument->GetUndoStack()->push(new FlattenCommand(m_pDocument->GetPixels()));
}

void LayerMenu::OnLayersChanged()
{
    const KXDocumentInterface* pixels = m_pDocument ? m_pDocument->GetPixels() : nullptr;
    const int count = pixels ? pixels->GetLayerCount() : 0;
    const int current = pixels ? pixels->GetCurrentLayer() : 0;
    for (QAction* action : {m_pNew, m_pDuplicate, m_pVisible})
        action->setEnabled(pixels);
    m_pDelete->setEnabled(count > 1);
    m_pFlatten->setEnabled(pixels && CanFlatten(pixels));
    m_pAbove->setEnabled(current + 1 < count);
    m_pBelow->setEnabled(current > 0);
    const bool isHidden = pixels && !pixels->GetLayer(current).visible;
    m_pVisible->setText(isHidden ? tr("&Show Layer") : tr("&Hide Layer"));
    Q_EMIT LayerTextChanged(GetLayerText());
}

template <typename Slot>
QAction* LayerMenu::Add(QMenu* menu, const QString& text, const QKeySequence& key, Slot slot)
{
    QAction* action = menu->addAction(text, this, slot);
    action->setShortcut(key);
    return action;
}

// Not a change of the document: it is no undo step, and nothing to save.
void LayerMenu::Choose(int distance)
{
    Q_EMIT AboutToChange();
    KXDocumentInterface* pixels = m_pDocument->GetPixels();
    pixels->SetCurrentLayer(pixels->GetCurrentLayer() + distance);
}

void LayerMenu::AddLayer(int kind)
{
    const QString reason = WhyNoMoreLayer(m_pDocument->GetPixels()->GetSize());
    if (reason.isEmpty())
        Do(kind);
    else
        Q_EMIT Refused(reason);
}

void LayerMenu::Do(int kind)
{
    Q_EMIT AboutToChange();
    KXDocumentInterface* pixels = m_pDocument->GetPixels();
    const auto which = LayerCommand::Kind(kind);
    m_pDocument->GetUndoStack()->push(new LayerCommand(which, pixels, pixels->GetCurrentLayer()));
}
