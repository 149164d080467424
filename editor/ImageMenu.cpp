#include "ImageMenu.h"

#include <QMenu>
#include <QSettings>
#include <QUndoStack>

#include "AutoCropPreview.h"
#include "CanvasResize.h"
#include "Document.h"
#include "FileTask.h"
#include "KXDocumentInterface.h"
#include "KXMessageBox.h"
#include "MemoryRoom.h"
#include "NVAutoCrop.h"
#include "NVCanvasSize.h"
#include "NVDocumentView.h"
#include "NVImageSize.h"
#include "ResampleLayers.h"
#include "ResizeCommand.h"
#include "WatchedDevice.h"

namespace
{

const QLatin1String ModeKey("autoCrop/mode");
const QLatin1String SidesKey("autoCrop/sides");
const QLatin1String ToleranceKey("autoCrop/tolerance");

// The range of the canvas size dialog's resolution.
const double MaxCanvasResolution = 9999.0;

Resampling ToResampling(int mode)
{
    const Resampling modes[] = {Resampling::Nearest, Resampling::Bilinear, Resampling::Bicubic};
    return modes[qBound(0, mode, 2)];
}

// What the canvas size dialog makes of proportions goes beyond the range of its boxes. A picture that is too
// large already may stay so.
QString WhyTooLarge(const QSize& size, const QSize& before)
{
    const int most = KXDocumentInterface::MAX_DOC_DIMENSION;
    if (size.width() <= qMax(most, before.width()) && size.height() <= qMax(most, before.height()))
        return QString();
    return ImageMenu::tr("A picture of %1 by %2 pixels is too large: a side has %3 pixels at most.")
        .arg(size.width())
        .arg(size.height())
        .arg(most);
}

void RestoreValues(NVAutoCrop* dialog, const QSettings* settings)
{
    dialog->SetMode(NVAutoCrop::Mode(
        qBound(0, settings->value(ModeKey, dialog->GetMode()).toInt(), int(NVAutoCrop::ModeAuto))));
    dialog->SetArea(QFlags<NVAutoCrop::Area>(settings->value(SidesKey, int(dialog->GetArea())).toInt()));
    dialog->SetTolerance(settings->value(ToleranceKey, dialog->GetTolerance()).toInt());
}

void StoreValues(const NVAutoCrop* dialog, QSettings* settings)
{
    settings->setValue(ModeKey, int(dialog->GetMode()));
    settings->setValue(SidesKey, int(dialog->GetArea()));
    settings->setValue(ToleranceKey, dialog->GetTolerance());
}

// What the dialog is accepted with. It shows the frame on the canvas while it is open.
bool AskAutoCrop(NVAutoCrop* dialog, NVDocumentView* view, const QImage& picture)
{
    const AutoCropPreview preview(dialog, view, picture);
    return dialog->Exec() == KXDialog::ResultAccepted;
}

} // namespace

ImageMenu::ImageMenu(QMenu* menu, const Host& host, QObject* parent)
    : QObject(parent),
      m_host(host),
      m_pImageSize(Add(menu, tr("&Image Size..."), Qt::CTRL + Qt::ALT + Qt::Key_I, &ImageMenu::OnImageSize)),
      m_pCanvasSize(
          Add(menu, tr("&Canvas Size..."), Qt::CTRL + Qt::ALT + Qt::Key_C, &ImageMenu::OnCanvasSize)),
      m_pAutoCrop(Add(menu, tr("&Auto-crop..."), Qt::CTRL + Qt::ALT + Qt::Key_T, &ImageMenu::OnAutoCrop))
{
    menu->insertSeparator(m_pAutoCrop);
    SetDocument(nullptr, nullptr);
}

void ImageMenu::SetDocument(Document* document, NVDocumentView* view)
{
    m_pDocument = document;
    m_pView = view;
    for (QAction* action : {m_pImageSize, m_pCanvasSize, m_pAutoCrop})
        action->setEnabled(document);
}

bool ImageMenu::Resize(const QSize& size, double resolution, int mode)
{
    if (!m_pDocument || size.isEmpty())
        return false;
    Q_EMIT AboutToChange();
    const KXDocumentInterface* pixels = m_pDocument->GetPixels();
    PictureContents contents;
    if (size == pixels->GetSize())
        return resolution != pixels->GetResolution() && Push(tr("Image Size"), contents, resolution);
    const PictureContents before = ContentsOf(pixels);
    const auto work = [&](const WorkProgress& progress)
    { contents = ResampleContents(before, size, ToResampling(mode), progress); };
    return !IsRefused(size) && Run(tr("Resampling the picture"), work) && IsThere(contents, size) &&
        Push(tr("Image Size"), contents, resolution);
}

bool ImageMenu::ResizeCanvas(const QSize& size, const QPoint& anchor)
{
    if (!m_pDocument)
        return false;
    Q_EMIT AboutToChange();
    const QSize after = size.expandedTo(QSize(1, 1));
    const QPoint offset = CanvasOffset(m_pDocument->GetPixels()->GetSize(), after, anchor);
    return Cut(tr("Canvas Size"), QRect(-offset, after));
}

bool ImageMenu::AutoCrop(const AutoCropSettings& settings)
{
    if (!m_pDocument)
        return false;
    Q_EMIT AboutToChange();
    const QImage picture = m_pDocument->GetPixels()->GetComposition();
    QRect frame;
    const auto work = [&](const WorkProgress& progress)
    { frame = AutoCropFrame(picture, settings, progress); };
    if (!Run(tr("Looking for the background"), work))
        return false;
    if (frame.isNull())
        ShowMessage(KXMessageBox::Information,
                    tr("The whole picture is background: nothing would be left of it.\n\n"
                       "It stays as it is."));
    else if (frame == picture.rect())
        Q_EMIT Message(tr("There is no background to cut off at these sides."));
    return !frame.isNull() && Cut(tr("Auto-crop"), frame);
}

void ImageMenu::OnImageSize()
{
    Q_EMIT AboutToChange();
    const KXDocumentInterface* pixels = m_pDocument->GetPixels();
    NVImageSize dialog(pixels->GetResolution(), pixels->GetSize(), m_host.window);
    // The box may round what it is given: only what the person chose there counts.
    const double shown = dialog.GetDPI();
    if (dialog.Exec() != KXDialog::ResultAccepted || !m_pDocument)
        return;
    const double chosen = dialog.GetDPI();
    Resize(dialog.GetNewSize(), chosen == shown ? pixels->GetResolution() : chosen, dialog.GetResampleMode());
}

void ImageMenu::OnCanvasSize()
{
    Q_EMIT AboutToChange();
    const KXDocumentInterface* pixels = m_pDocument->GetPixels();
    const int resolution = qRound(qBound(1.0, pixels->GetResolution(), MaxCanvasResolution));
    NVCanvasSize dialog(resolution, pixels->GetSize(), m_host.window);
    if (dialog.Exec() == KXDialog::ResultAccepted)
        ResizeCanvas(dialog.GetNewSize(), QPoint(dialog.GetAnchor() % 3, dialog.GetAnchor() / 3));
}

void ImageMenu::OnAutoCrop()
{
    Q_EMIT AboutToChange();
    NVAutoCrop dialog(m_host.window);
    RestoreValues(&dialog, m_host.settings);
    if (!AskAutoCrop(&dialog, m_pView, m_pDocument->GetPixels()->GetComposition()))
        return;
    StoreValues(&dialog, m_host.settings);
    AutoCrop(SettingsOf(&dialog));
}

template <typename Slot>
QAction* ImageMenu::Add(QMenu* menu, const QString& text, const QKeySequence& key, Slot slot)
{
    QAction* action = menu->addAction(text, this, slot);
    action->setShortcut(key);
    return action;
}

bool ImageMenu::Cut(const QString& name, const QRect& frame)
{
    const KXDocumentInterface* pixels = m_pDocument->GetPixels();
    if (frame == pixels->GetRect() || IsRefused(frame.size()))
        return false;
    const PictureContents before = ContentsOf(pixels);
    PictureContents contents;
    const auto work = [&](const WorkProgress& progress) { contents = CutContents(before, frame, progress); };
    return Run(tr("Changing the canvas"), work) && IsThere(contents, frame.size()) &&
        Push(name, contents, pixels->GetResolution());
}

bool ImageMenu::Run(const QString& text, const Work& work)
{
    bool isCancelled = false;
    const auto task = [&](FileProgress* progress)
    {
        work(
            [progress](int percent)
            {
                progress->percent = percent;
                return !progress->cancelled;
            });
        isCancelled = progress->cancelled;
    };
    if (!m_host.task->Run(text, task))
        return false;
    if (isCancelled)
        Q_EMIT Message(tr("Cancelled: the picture is as it was."));
    return !isCancelled && m_pDocument;
}

bool ImageMenu::IsRefused(const QSize& size)
{
    const KXDocumentInterface* pixels = m_pDocument->GetPixels();
    QString reason = WhyTooLarge(size, pixels->GetSize());
    if (reason.isEmpty())
        reason = WhyNotInMemory(size, pixels->GetLayerCount());
    if (!reason.isEmpty())
        ShowMessage(KXMessageBox::Error, tr("%1\n\nThe picture stays as it is.").arg(reason));
    return !reason.isEmpty();
}

bool ImageMenu::IsThere(const PictureContents& contents, const QSize& size)
{
    if (contents.layers.isEmpty())
        ShowMessage(KXMessageBox::Error,
                    tr("There was not enough memory for a picture of %1 by %2 pixels.\n\n"
                       "It stays as it is.")
                        .arg(size.width())
                        .arg(size.height()));
    return !contents.layers.isEmpty();
}

bool ImageMenu::Push(const QString& name, const PictureContents& contents, double resolution)
{
    m_pDocument->GetUndoStack()->push(new ResizeCommand(name, m_pDocument, contents, resolution));
    return true;
}

void ImageMenu::ShowMessage(int icon, const QString& text)
{
    KXMessageBox box(m_host.window);
    box.setWindowTitle(tr("Norvane"));
    box.SetIcon(KXMessageBox::Icon(icon));
    box.SetText(text);
    box.AddButton(KXMessageBox::Ok);
    box.SetDefaultButton(KXMessageBox::Ok);
    box.Exec();
}
