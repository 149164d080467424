// The empty window, and the picture that the tour plays on.

#include <QApplication>
#include <QElapsedTimer>
#include <QScreen>

#include "BrushTool.h"
#include "Document.h"
#include "KXDocumentInterface.h"
#include "NVBrushToolbar.h"
#include "NVDocumentView.h"
#include "SamplePicture.h"
#include "TourGuide.h"
#include "TourTopics.h"

namespace
{

void ShowEmptyWindow(TourGuide& guide)
{
    MainWindow* window = guide.GetWindow();
    // A screen that nobody sees is no reason to squeeze the window.
    const bool isSeen = QGuiApplication::platformName() != QLatin1String("offscreen");
    const QSize wanted(1280, 860);
    window->resize(isSeen ? window->screen()->availableSize().boundedTo(wanted) : wanted);
    window->move(window->screen()->availableGeometry().topLeft());
    window->show();
    window->activateWindow();
    if (!guide.GetRobot().WaitFor([window] { return window->isActiveWindow(); }))
        QApplication::setActiveWindow(window);
    guide.Check(window->isActiveWindow(), "the window is not active");
    guide.Check(!guide.GetDocument(), "there is a document");
    guide.Check(window->GetBrushTool()->GetBrushBar()->isVisible(), "the brush bar is not to be seen");
}

// The person's picture, or one of the size of a photograph.
QString WritePicture(TourGuide& guide)
{
    if (!guide.GetPicture().isEmpty())
        return guide.GetPicture();
    const QString path = guide.FileFor(QStringLiteral("landscape.jpg"));
    guide.Check(DrawSamplePicture(QSize(6000, 4000)).save(path), "no picture was written");
    return path;
}

void OpenPicture(TourGuide& guide)
{
    const QString path = WritePicture(guide);
    QElapsedTimer time;
    time.start();
    guide.GetRobot().WhenModal(
        [&guide](QWidget*)
        {
            guide.TakePicture();
            guide.GetRobot().Key(Qt::Key_Escape);
        });
    guide.Drop(path);
    guide.GetRobot().ForgetModal();
    if (!guide.Check(guide.GetDocument(), "no document is open"))
        return;
    const QSize size = guide.GetPixels()->GetSize();
    guide.Note(QStringLiteral("%1 x %2 pixels, opened in %3 ms")
                   .arg(size.width())
                   .arg(size.height())
                   .arg(time.elapsed()));
    guide.Check(guide.GetView()->hasFocus(), "the canvas has not the keyboard");
}

} // namespace

void PlayStart(TourGuide& guide)
{
    guide.Step("empty-window", "The window without a picture", ShowEmptyWindow);
    guide.Step("picture-open", "A picture dropped on the window", OpenPicture);
}
