#pragma once

#include <QObject>
#include <QPointer>

#include "AutoCropFrame.h"

class Document;
class FileTask;
class NVDocumentView;
class QAction;
class QKeySequence;
class QMenu;
class QSettings;
class QWidget;

// Fills the menu of the whole picture and does what it says: another size or resolution, another canvas, and
// cutting off the background. Each is one undo step of the document. The work is done off the GUI thread; the
// person can cancel what takes long.
class ImageMenu : public QObject
{
    Q_OBJECT

public:
    // What the menu works with. None is owned, all outlive it; dialogs come up over the window.
    struct Host
    {
        QWidget* window;
        FileTask* task;
        QSettings* settings;
    };

    ImageMenu(QMenu* menu, const Host& host, QObject* parent);

    // What the commands act on from now on; neither is owned, both may be null.
    void SetDocument(Document* document, NVDocumentView* view);

    // These are the commands without their dialogs. False when nothing was changed: there is no document, the
    // size is empty, the values are those that it has, the size is too large, which a message tells, or the
    // work was cancelled.
    // The mode is 0 nearest, 1 bilinear, 2 bicubic; the resolution is in pixels an inch.
    bool Resize(const QSize& size, double resolution, int mode);
    // The anchor is 0, 1 or 2 an axis: see CanvasOffset. A side below 1 pixel is 1.
    bool ResizeCanvas(const QSize& size, const QPoint& anchor);
    // A picture that is all background stays; a message says so.
    bool AutoCrop(const AutoCropSettings& settings);

Q_SIGNALS:
    // What is under way on the document has to come to its end now.
    void AboutToChange();
    // What was done, or why not, for the status bar.
    void Message(const QString& text);

private Q_SLOTS:
    void OnImageSize();
    void OnCanvasSize();
    void OnAutoCrop();

private:
    using Work = std::function<void(const WorkProgress& progress)>;

    template <typename Slot>
    QAction* Add(QMenu* menu, const QString& text, const QKeySequence& key, Slot slot);
    // The name is that of the step.
    bool Cut(const QString& name, const QRect& frame);
    // False when it was cancelled, after a message, or when other work runs already.
    bool Run(const QString& text, const Work& work);
    // These two tell with a message why not.
    bool IsRefused(const QSize& size);
    bool IsThere(const PictureContents& contents, const QSize& size);
    // True.
    bool Push(const QString& name, const PictureContents& contents, double resolution);
    void ShowMessage(int icon, const QString& text);

    Host m_host;
    QPointer<Document> m_pDocument;
    QPointer<NVDocumentView> m_pView;
    QAction* m_pImageSize;
    QAction* m_pCanvasSize;
    QAction* m_pAutoCrop;
};
