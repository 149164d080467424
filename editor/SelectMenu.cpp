#include "SelectMenu.h"

#include <QMenu>
#include <QUndoStack>

#include "ClearPixels.h"
#include "Document.h"
#include "KXDocumentInterface.h"
#include "MemoryRoom.h"
#include "NVApplication.h"
#include "NVDocumentView.h"
#include "RefineDialog.h"
#include "SelectCommand.h"
#include "SelectionMask.h"
#include "SelectionOutline.h"
#include "TilesCommand.h"

SelectMenu::SelectMenu(QMenu* menu, QWidget* window, QObject* parent)
    : QObject(parent),
      m_pMenu(menu),
      m_pWindow(window),
      m_pAll(Add(tr("&All"), Qt::CTRL + Qt::Key_A, &SelectMenu::OnAll)),
      m_pNone(Add(tr("&None"), Qt::CTRL + Qt::Key_D, &SelectMenu::OnNone)),
      m_pInvert(Add(tr("&Invert"), Qt::CTRL + Qt::SHIFT + Qt::Key_I, &SelectMenu::OnInvert)),
      m_pRefine(Add(tr("&Refine Selection..."), Qt::CTRL + Qt::ALT + Qt::Key_R, &SelectMenu::OnRefine)),
      m_pClear(new QAction(tr("Clear S&election"), this))
{
    menu->insertSeparator(m_pRefine);
    m_pClear->setShortcut(Qt::Key_Delete);
    connect(m_pClear, &QAction::triggered, this, &SelectMenu::OnClear);
    OnSelectionChanged();
    NVApplication::GetInstance()->RegisterRefineSelection(m_pRefine);
}

QMenu* SelectMenu::GetMenu() const
{
    return m_pMenu;
}

QAction* SelectMenu::GetRefineAction() const
{
    return m_pRefine;
}

QAction* SelectMenu::GetClearAction() const
{
    return m_pClear;
}

void SelectMenu::SetDocument(Document* document, NVDocumentView* view)
{
    m_pView = view;
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
        connect(m_pDocument->GetPixels(), &KXDocumentInterface::SelectionChanged, this,
                &SelectMenu::OnSelectionChanged);
        connect(m_pDocument, &QObject::destroyed, this, &SelectMenu::OnSelectionChanged);
    }
    OnSelectionChanged();
}

void SelectMenu::OnAll()
{
    Q_EMIT AboutToChange();
    if (HasRoom())
        Push(tr("Select All"), FullMask(m_pDocument->GetPixels()->GetSize()));
}

void SelectMenu::OnNone()
{
    Q_EMIT AboutToChange();
    Push(tr("Deselect"), QImage());
}

void SelectMenu::OnInvert()
{
    Q_EMIT AboutToChange();
    const KXDocumentInterface* pixels = m_pDocument->GetPixels();
    if (HasRoom())
        Push(tr("Invert Selection"), InvertMask(pixels->GetSelectionMask(), pixels->GetSize()));
}

void SelectMenu::OnRefine()
{
    Q_EMIT AboutToChange();
    const QImage mask = m_pDocument->GetPixels()->GetSelectionMask();
    if (mask.isNull() || !HasRoom())
        return;
    RefineDialog dialog(mask, SelectionOutline::Of(m_pView), m_pWindow);
    if (dialog.Exec() == KXDialog::ResultAccepted && m_pDocument)
        Push(tr("Refine Selection"), dialog.GetMask());
}

void SelectMenu::OnClear()
{
    Q_EMIT AboutToChange();
    KXDocumentInterface* pixels = m_pDocument->GetPixels();
    const int layer = pixels->GetCurrentLayer();
    if (!pixels->GetLayer(layer).visible)
    {
        Q_EMIT Message(
            tr("The layer \"%1\" is hidden: show it to work on it.").arg(pixels->GetLayer(layer).name));
        return;
    }
    QVector<SavedTile> tiles = ClearPixels(pixels->EditLayer(layer), pixels->GetSelectionMask());
    if (tiles.isEmpty())
        return;
    pixels->NotifyChanged(MaskBounds(pixels->GetSelectionMask()));
    m_pDocument->GetUndoStack()->push(
        new TilesCommand(tr("Clear Selection"), pixels, layer, std::move(tiles)));
}

void SelectMenu::OnSelectionChanged()
{
    const bool isSelected = m_pDocument && !m_pDocument->GetPixels()->GetSelectionMask().isNull();
    for (QAction* action : {m_pAll, m_pInvert})
        action->setEnabled(m_pDocument);
    for (QAction* action : {m_pNone, m_pRefine, m_pClear})
        action->setEnabled(isSelected);
}

template <typename Slot>
QAction* SelectMenu::Add(const QString& text, const QKeySequence& key, Slot slot)
{
    QAction* action = m_pMenu->addAction(text, this, slot);
    action->setShortcut(key);
    return action;
}

bool SelectMenu::HasRoom()
{
    return HasRoomForSelection(m_pDocument->GetPixels()->GetSize(), this);
}

void SelectMenu::Push(const QString& name, const QImage& mask)
{
    PushSelection(m_pDocument, name, mask);
}
