// Files: bad ones, saving and opening again, and the question before changes are lost.

#include <QComboBox>
#include <QFile>
#include <QLineEdit>

#include "BrushTool.h"
#include "Document.h"
#include "NVBrushToolbar.h"
#include "NVDocumentView.h"
#include "SamplePicture.h"
#include "TourGuide.h"
#include "TourTopics.h"

namespace
{

void DropBadFiles(TourGuide& guide)
{
    QFile text(guide.FileFor(QStringLiteral("no picture.png")));
    guide.Check(text.open(QIODevice::WriteOnly) && text.write("This is not a picture.") > 0,
                "no file to try");
    text.close();
    guide.DropAndReadMessage(text.fileName(), QStringLiteral("known formats"));

    const QString whole = guide.FileFor(QStringLiteral("cut short.jpg"));
    guide.Check(DrawSamplePicture(QSize(800, 600)).save(whole), "no file to try");
    guide.Check(QFile::resize(whole, 20000), "no file to try");
    guide.DropAndReadMessage(whole, QStringLiteral("cut short"));
    guide.DropAndReadMessage(guide.FileFor(QStringLiteral("nowhere.png")), QStringLiteral("does not exist"));
}

void MakeNew(TourGuide& guide)
{
    const int windows = guide.GetWindow()->GetDocumentWindows().size();
    guide.GetRobot().WhenModal(
        [&guide](QWidget* dialog)
        {
            guide.TakePicture();
            guide.Check(dialog->inherits("NewDocumentDialog"), "another dialog came");
            guide.GetRobot().Key(Qt::Key_Return);
        });
    guide.GetRobot().Key(Qt::Key_N, Qt::ControlModifier);
    guide.Check(guide.GetWindow()->GetDocumentWindows().size() == windows + 1, "there is no new picture");
}

void SaveAs(TourGuide& guide, const QString& path)
{
    guide.GetRobot().WhenModal(
        [&guide, path](QWidget* dialog)
        {
            Control<QLineEdit>(dialog, "fileNameEdit")->setText(path);
            guide.GetRobot().Key(Qt::Key_Return);
        });
    guide.GetRobot().Key(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    guide.Check(guide.GetRobot().WaitFor([&path] { return QFile::exists(path); }), "no file was written");
    guide.Check(!guide.NeedDocument()->IsModified(), "the picture still counts as changed");
}

void SaveAndReopen(TourGuide& guide)
{
    MakeNew(guide);
    auto* fillModes =
        Control<QComboBox>(guide.GetWindow()->GetBrushTool()->GetBrushBar(), "m_pFillModeCombo");
    guide.ChooseEntry(fillModes, 5);
    guide.Stroke(guide.PointAt(0.1, 0.2), guide.PointAt(0.9, 0.8), 40);
    guide.ChooseEntry(fillModes, 0);
    const QImage painted = guide.GetComposition().copy();

    const QString path = guide.FileFor(QStringLiteral("painted.png"));
    SaveAs(guide, path);
    guide.GetRobot().Key(Qt::Key_W, Qt::ControlModifier);
    guide.Drop(path);
    guide.Check(guide.NeedDocument()->GetPath() == path, "the file was not opened again");
    guide.Check(guide.GetComposition() == painted, "the pixels are not what they were");
}

void CloseUnsaved(TourGuide& guide)
{
    guide.FocusCanvas();
    guide.Stroke(guide.PointAt(0.1, 0.8), guide.PointAt(0.9, 0.2));
    const Document* document = guide.GetDocument();
    guide.GetRobot().WhenModal(
        [&guide](QWidget*)
        {
            guide.TakePicture();
            guide.GetRobot().Key(Qt::Key_Escape);
        });
    guide.GetRobot().Key(Qt::Key_W, Qt::ControlModifier);
    guide.Check(guide.GetDocument() == document, "Escape closed the picture");
    guide.CloseDiscarding();
    guide.Check(guide.GetView()->width() > guide.GetWindow()->width() / 2, "the other picture is small");
}

} // namespace

void PlayFiles(TourGuide& guide)
{
    guide.Step("bad-files", "Files that are no pictures, or not whole ones", DropBadFiles);
    guide.Step("save-reopen", "A new picture painted, saved and opened again", SaveAndReopen);
    guide.Step("close-unsaved", "A picture with unsaved changes asks before it is closed", CloseUnsaved);
}
