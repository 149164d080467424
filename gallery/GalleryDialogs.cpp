// The dialogs, on a picture of a common size. Each is run as a host runs it, one object a run.

#include <QComboBox>
#include <QLabel>
#include <QMetaEnum>
#include <QPageSize>

#include "GalleryExhibits.h"
#include "GalleryParts.h"
#include "KXAddToBatchDialog.h"
#include "KXBatchInputModel.h"
#include "NVAutoCrop.h"
#include "NVCanvasSize.h"
#include "NVGradientEditor.h"
#include "NVImageFileManager.h"
#include "NVImageSize.h"
#include "NVIncompleteDocumentInfo.h"
#include "NVPrintPreviewDialog.h"
#include "NVTextDeformation.h"
#include "NVWarpTextDialog.h"

namespace
{

const QSize PictureSize(1600, 1066);
const int PictureResolution = 300;

QString ResultText(const char* operation, int result)
{
    const char* key = QMetaEnum::fromType<KXDialog::Result>().valueToKey(result);
    const QString text =
        QStringLiteral("%1 returned %2").arg(QLatin1String(operation), QString::number(result));
    return key ? text + QLatin1String(", ") + QLatin1String(key) : text;
}

std::unique_ptr<Exhibit> Run(KXDialog* dialog)
{
    auto exhibit = std::make_unique<Exhibit>(dialog);
    exhibit->open = [dialog](const QPoint&) { return ResultText("Exec()", dialog->Exec()); };
    return exhibit;
}

std::unique_ptr<Exhibit> MakeAutoCrop(QWidget* parent)
{
    return Run(new NVAutoCrop(parent));
}

// A scan of a folder that every system has, large enough to be seen at work. It reads names only. What the
// dialog says before it runs is what it would say in the midst of it.
std::unique_ptr<Exhibit> MakeAddToBatch(QWidget* parent)
{
    // The formats that a scan takes are those of the host's manager.
    const auto formats = std::make_shared<NVImageFileManager>();
    const auto model = std::make_shared<KXBatchInputModel>();
    auto* dialog = new KXAddToBatchDialog(model.get(), parent);
    auto exhibit = std::make_unique<Exhibit>(dialog);
    exhibit->context = {model, formats};
    dialog->findChild<QLabel*>(QStringLiteral("m_pFolder"))
        ->setText(QStringLiteral("Folder: /usr/share/icons"));
    dialog->findChild<QLabel*>(QStringLiteral("m_pFile"))
        ->setText(QStringLiteral("File: /usr/share/icons/picture.png"));
    exhibit->open = [dialog](const QPoint&)
    { return ResultText("AddFolders()", dialog->AddFolders({QStringLiteral("/usr/share")})); };
    return exhibit;
}

std::unique_ptr<Exhibit> MakeCanvasSize(QWidget* parent)
{
    return Run(new NVCanvasSize(PictureResolution, PictureSize, parent));
}

std::unique_ptr<Exhibit> MakeGradientEditor(QWidget* parent)
{
    auto* dialog = new NVGradientEditor(parent);
    dialog->Load(GalleryGradients());
    dialog->SetCurrentIndex(1);
    return Run(dialog);
}

std::unique_ptr<Exhibit> MakeImageSize(QWidget* parent)
{
    return Run(new NVImageSize(PictureResolution, PictureSize, parent));
}

std::unique_ptr<Exhibit> MakeIncompleteDocumentInfo(QWidget* parent)
{
    return Run(new NVIncompleteDocumentInfo(parent));
}

// A server that hangs would hold up the dialog for minutes, and "Print" would cost paper: only a server that
// CUPS_SERVER names is asked. Without a printer the lists get what a common one offers, so that there is
// something to choose and to see.
std::unique_ptr<Exhibit> MakePrintPreview(QWidget* parent)
{
    if (!qEnvironmentVariableIsSet("CUPS_SERVER"))
        qputenv("CUPS_SERVER", "/nonexistent/cups.sock");
    auto* dialog = new NVPrintPreviewDialog(parent);
    auto* pages = dialog->findChild<QComboBox*>(QStringLiteral("m_pPageSize"));
    auto* resolutions = dialog->findChild<QComboBox*>(QStringLiteral("m_pDPI"));
    if (pages->count() == 0 && resolutions->count() == 0)
    {
        resolutions->addItem(QStringLiteral("150"), 150);
        pages->addItem(QPageSize::name(QPageSize::A4), int(QPageSize::A4));
        pages->addItem(QPageSize::name(QPageSize::A5), int(QPageSize::A5));
    }
    dialog->SetSource(DrawGalleryPicture(PictureSize));
    return Run(dialog);
}

std::unique_ptr<Exhibit> MakeWarpText(QWidget* parent)
{
    NVTextDeformation deformation;
    deformation.SetBend(50);
    deformation.SetHorizontalDistortion(-12.5);
    auto* dialog = new NVWarpTextDialog(parent);
    dialog->SetDeformation(deformation);
    return Run(dialog);
}

} // namespace

const std::vector<GalleryRow>& GalleryDialogs()
{
    static const std::vector<GalleryRow> rows = {
        {"KXAddToBatchDialog", GalleryGroup::Dialogs, MakeAddToBatch},
        {"NVAutoCrop", GalleryGroup::Dialogs, MakeAutoCrop},
        {"NVCanvasSize", GalleryGroup::Dialogs, MakeCanvasSize},
        {"NVGradientEditor", GalleryGroup::Dialogs, MakeGradientEditor},
        {"NVImageSize", GalleryGroup::Dialogs, MakeImageSize},
        {"NVIncompleteDocumentInfo", GalleryGroup::Dialogs, MakeIncompleteDocumentInfo},
        {"NVPrintPreviewDialog", GalleryGroup::Dialogs, MakePrintPreview},
        {"NVWarpTextDialog", GalleryGroup::Dialogs, MakeWarpText},
    };
    return rows;
}
