// The crop tool on the canvas: its frame from the first drag to its end, and how the crop gets into the
// document.

#include <QApplication>
#include <QFileInfo>
#include <QPainter>
#include <QUndoStack>

#include "CropContents.h"
#include "CropTool.h"
#include "Document.h"
#include "FileTask.h"
#include "HideAreaCommand.h"
#include "KXDocumentInterface.h"
#include "KXMessageBox.h"
#include "MemoryRoom.h"
#include "NVCropToolbarMain.h"
#include "NVCropToolbarStart.h"
#include "ResizeCommand.h"
#include "WatchedDevice.h"

namespace
{

std::unique_ptr<Document> DocumentOf(const PictureContents& contents, const Document* source)
{
    const QString name = CropTool::tr("%1 crop").arg(QFileInfo(source->GetTitle()).completeBaseName());
    auto document = std::make_unique<Document>(contents.layers.constFirst(), QString(), name);
    const KXDocumentInterface* from = source->GetPixels();
    KXDocumentInterface* pixels = document->GetPixels();
    for (int i = 0; i < contents.layers.size(); ++i)
    {
        KXDocumentInterface::Layer layer = from->GetLayer(i);
        layer.image = contents.layers.at(i);
        pixels->InsertLayer(i + 1, layer);
    }
    // The one that it began with has no properties.
    pixels->RemoveLayer(0);
    pixels->SetCurrentLayer(from->GetCurrentLayer());
    pixels->SetSelectionMask(contents.selection);
    pixels->SetResolution(from->GetResolution());
    return document;
}

} // namespace

bool CropTool::Cancel()
{
    m_drag = NoDrag;
    m_isDoubleClick = false;
    if (m_state == Idle)
        return false;
    if (m_state == Working)
        m_host.task->Cancel();
    EndFrame();
    Q_EMIT Message(tr("The crop was cancelled."));
    return true;
}

void CropTool::Finish()
{
    Cancel();
}

void CropTool::Commit()
{
    Apply(false);
}

void CropTool::CommitToNewDocument()
{
    Apply(true);
}

void CropTool::OnLookChanged()
{
    if (m_state != Idle && GetView())
        GetView()->viewport()->update();
}

void CropTool::OnCancel()
{
    Cancel();
}

// The frame was for the size of before.
void CropTool::OnSizeChanged()
{
    Cancel();
}

void CropTool::OnDocumentGone()
{
    Cancel();
}

void CropTool::BeginFrame(const CropFrame& frame)
{
    m_state = Framed;
    m_frame = frame;
    m_hover = CropHit();
    connect(GetPixels(), &KXDocumentInterface::SizeChanged, this, &CropTool::OnSizeChanged);
    // Not the pixels, which go before their document.
    connect(GetDocument(), &QObject::destroyed, this, &CropTool::OnDocumentGone);
    ShowFrameInBar();
    if (GetStartBar()->isAncestorOf(QApplication::focusWidget()))
        GetView()->setFocus();
    ChangeBar(GetMainBar());
    SetEscapeLive(true);
    SetEnterLive(true);
    GetView()->SetOverlay([this](QPainter& painter) { DrawOverlay(painter); });
    Q_EMIT Message(tr("Enter crops the picture, Escape takes the frame away, a drag outside turns it."));
}

void CropTool::SetFrame(const CropFrame& frame)
{
    if (frame == m_frame)
        return;
    GetView()->UpdateOverlay(CropArea(GetView(), m_frame));
    m_frame = frame;
    GetView()->UpdateOverlay(CropArea(GetView(), m_frame));
    ShowFrameInBar();
}

void CropTool::EndFrame()
{
    m_state = Idle;
    m_drag = NoDrag;
    m_frame = CropFrame();
    SetEscapeLive(false);
    SetEnterLive(false);
    if (GetView())
    {
        GetView()->SetOverlay(NVDocumentView::Overlay());
        GetView()->SetToolCursor(Qt::CrossCursor);
        if (GetMainBar()->isAncestorOf(QApplication::focusWidget()))
            GetView()->setFocus();
    }
    if (GetDocument())
    {
        disconnect(GetPixels(), nullptr, this, nullptr);
        disconnect(GetDocument(), nullptr, this, nullptr);
    }
    ChangeBar(GetStartBar());
    Q_EMIT FrameEnded();
}

void CropTool::UpdateHover(const CropHit& hit)
{
    GetView()->SetToolCursor(CropCursor(hit, m_frame, GetView()->devicePixelRatioF()));
    if (hit == m_hover)
        return;
    m_hover = hit;
    GetView()->UpdateOverlay(CropArea(GetView(), m_frame));
}

void CropTool::DrawOverlay(QPainter& painter)
{
    if (!GetDocument() || m_state == Idle)
        return;
    const NVCropToolbarMain* bar = GetMainBar();
    CropLook look;
    if (bar->IsShieldEnabled())
    {
        look.shade = bar->GetShieldColor();
        look.shade.setAlphaF(look.shade.alphaF() * bar->GetShieldOpacity() / 100);
    }
    look.guides = bar->GetGuideOverlayType();
    look.reference = GetReference();
    look.hover = m_hover;
    DrawCrop(painter, GetView(), GetPixels()->GetSize(), m_frame, look);
}

void CropTool::Apply(bool toNewDocument)
{
    if (m_state != Framed)
        return;
    m_drag = NoDrag;
    const bool isDeleted = GetMainBar()->IsDeleteArea();
    if (!toNewDocument && HasNothingToDo(isDeleted))
    {
        EndFrame();
        Q_EMIT Message(tr("The frame holds the whole picture: there is nothing to crop."));
        return;
    }
    if (IsRefused(WhyNot(isDeleted)))
        return;
    StoreValues();
    const CropFrame frame = m_frame;
    const QSize size = GetTargetSize();
    const auto cut = [frame, size](const PictureContents& before, const WorkProgress& progress)
    { return CropContents(before, frame, size, progress); };
    const auto hide = [frame](const PictureContents& before, const WorkProgress& progress)
    { return ContentsWithin(before, frame, progress); };
    const PictureContents outcome = isDeleted ? Run(cut) : Run(hide);
    if (outcome.layers.isEmpty())
        return;
    EndFrame();
    Q_EMIT Message(QString());
    if (toNewDocument)
        Open(outcome, isDeleted);
    else
        Push(outcome, frame, isDeleted);
}

bool CropTool::IsRefused(const QString& reason)
{
    if (reason.isEmpty())
        return false;
    KXMessageBox box(m_host.window);
    box.setWindowTitle(tr("Norvane"));
    box.SetIcon(KXMessageBox::Error);
    box.SetText(tr("%1\n\nThe picture stays as it is.").arg(reason));
    box.AddButton(KXMessageBox::Ok);
    box.SetDefaultButton(KXMessageBox::Ok);
    box.Exec();
    return true;
}

QString CropTool::WhyNot(bool isDeleted)
{
    const QRectF seen = m_frame.GetOutline().boundingRect() & QRectF(GetPixels()->GetRect());
    if (seen.isEmpty())
        return tr("The frame lies beside the picture: nothing would be left of it.");
    const int layers = GetPixels()->GetLayerCount();
    if (!isDeleted)
        return WhyNotInMemory(GetPixels()->GetSize(), layers);
    const QString reason = WhyNotInMemory(m_frame.size, layers);
    return reason.isEmpty() ? WhyNotInMemory(GetTargetSize(), layers) : reason;
}

bool CropTool::HasNothingToDo(bool isDeleted)
{
    const QSize picture = GetPixels()->GetSize();
    if (!isDeleted)
        return !HasOutside(picture, m_frame);
    return m_frame == CropFrameOf(GetPixels()->GetRect()) && GetTargetSize() == picture;
}

PictureContents CropTool::Run(const Work& work)
{
    m_state = Working;
    SetEnterLive(false);
    const QPointer<Document> document = GetDocument();
    const PictureContents before = ContentsOf(GetPixels());
    PictureContents outcome;
    bool isCancelled = false;
    const auto task = [&](FileProgress* progress)
    {
        outcome = work(before,
                       [progress](int percent)
                       {
                           progress->percent = percent;
                           return !progress->cancelled;
                       });
        isCancelled = progress->cancelled;
    };
    const bool hasRun = m_host.task->Run(tr("Cropping the picture"), task);
    // Taken back meanwhile, or for another document by now.
    if (m_state != Working || !document || document != GetDocument())
        return PictureContents();
    m_state = Framed;
    SetEnterLive(true);
    if (isCancelled)
        Q_EMIT Message(tr("Cancelled: the picture is as it was."));
    else if (hasRun && outcome.layers.isEmpty())
        IsRefused(tr("There was not enough memory for the crop."));
    return isCancelled ? PictureContents() : outcome;
}

void CropTool::Push(const PictureContents& outcome, const CropFrame& frame, bool isDeleted)
{
    UndoStep* step = nullptr;
    if (isDeleted)
        step = new ResizeCommand(tr("Crop"), GetDocument(), outcome, GetPixels()->GetResolution());
    else
        step = new HideAreaCommand(tr("Crop"), GetPixels(), frame, outcome.layers);
    GetDocument()->GetUndoStack()->push(step);
}

void CropTool::Open(const PictureContents& outcome, bool isDeleted)
{
    const PictureContents contents = isDeleted ? outcome : ContentsOf(GetPixels());
    std::unique_ptr<Document> document = DocumentOf(contents, GetDocument());
    if (!isDeleted)
        HideArea(document->GetPixels(), outcome.layers);
    // It is in no file yet.
    document->ForgetSteps();
    m_host.open(std::move(document));
}
