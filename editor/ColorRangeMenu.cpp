#include "ColorRangeMenu.h"

#include <QAction>

#include "ColorRange.h"
#include "ColorRangeDock.h"
#include "Document.h"
#include "FileTask.h"
#include "KXDocumentInterface.h"
#include "MemoryRoom.h"
#include "SelectCommand.h"
#include "WatchedDevice.h"

ColorRangeMenu::ColorRangeMenu(ColorRangeDock* dock, FileTask* task, QObject* parent)
    : QObject(parent), m_pDock(dock), m_pTask(task), m_pAction(new QAction(tr("&Colour Range..."), this))
{
    connect(m_pAction, &QAction::triggered, this, &ColorRangeMenu::OnTriggered);
    connect(dock, &ColorRangeDock::Closed, this, &ColorRangeMenu::OnClosed);
    connect(dock, &ColorRangeDock::Accepted, this, &ColorRangeMenu::OnAccepted);
    connect(dock, &ColorRangeDock::Message, this, &ColorRangeMenu::Message);
    SetDocument(nullptr, nullptr);
}

QAction* ColorRangeMenu::GetAction() const
{
    return m_pAction;
}

void ColorRangeMenu::SetDocument(Document* document, NVDocumentView* view)
{
    m_pDocument = document;
    m_pAction->setEnabled(document);
    m_pDock->SetCanvas(view, document);
}

void ColorRangeMenu::OnTriggered()
{
    Q_EMIT AboutToChange();
    m_pDock->Open();
    Q_EMIT Message(tr("Click on colours of the picture to select what is like them; Alt takes one out."));
}

void ColorRangeMenu::OnClosed()
{
    Q_EMIT Message(QString());
}

void ColorRangeMenu::OnAccepted()
{
    const KXDocumentInterface* pixels = m_pDocument->GetPixels();
    if (!HasRoomForSelection(pixels->GetSize(), this))
        return;
    const QImage picture = pixels->GetComposition();
    const QImage before = pixels->GetSelectionMask();
    const ColorRangeSettings settings = m_pDock->GetSettings();
    const int state = m_pDock->GetState();
    QImage after;
    bool isCancelled = false;
    const auto work = [&](FileProgress* progress)
    {
        const auto cancelled = [progress] { return progress->cancelled.load(); };
        after = CombineMasks(before, ColorRangeMask(picture, settings, cancelled), state);
        isCancelled = progress->cancelled;
    };
    if (!m_pTask->Run(tr("Selecting the colours"), work) || !m_pDocument)
        return;
    if (isCancelled)
        Q_EMIT Message(tr("Cancelled: the selection is as it was."));
    else if (!PushSelection(m_pDocument, tr("Colour Range"), after))
        Q_EMIT Message(tr("The selection is as it was."));
    else if (after.isNull())
        Q_EMIT Message(tr("Nothing is selected: no pixel is left that is like these colours."));
}
