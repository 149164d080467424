#pragma once

#include <functional>
#include <memory>

#include "CropOverlay.h"
#include "PictureContents.h"
#include "Tool.h"

class FileTask;
class KXDocumentInterface;
class KXShortcut;
class NVCropToolbarMain;
class NVCropToolbarStart;
class QSettings;

// A drag on the canvas sets the frame of a crop; a selection is one already when the tool starts. The frame
// can be changed, by its handles and in the bar, until the crop is committed, to the document or to a new
// one: either what lies outside is cut off, or it is hidden (see HideAreaCommand). With a size in the start
// bar the frame keeps its proportion, and what is cut out gets that size.
//
// A frame changes nothing: whatever ends it but a commit takes it away.
class CropTool : public Tool
{
    Q_OBJECT

public:
    // What the tool works with. Not owned, they outlive it. Messages come up over the window.
    struct Host
    {
        QSettings* settings;
        FileTask* task;
        QWidget* window;
        // Opens a document that was made by the tool.
        std::function<void(std::unique_ptr<Document>)> open;
    };

    CropTool(const Host& host, QObject* parent);
    ~CropTool() override;

    NVCropToolbarStart* GetStartBar();
    NVCropToolbarMain* GetMainBar();
    // A frame is on the canvas, or what lies in it is being cut out.
    bool HasFrame() const;
    CropFrame GetFrame() const;
    // The size that the crop will have.
    QSize GetTargetSize();

    QString GetName() const override;
    QString GetPictureName() const override;
    QKeySequence GetKey() const override;
    void StoreValues() override;
    bool Cancel() override;
    // Takes the frame away.
    void Finish() override;

public Q_SLOTS:
    // Without a frame these two do nothing. When the crop can't be done, a message says why, and the frame
    // stays.
    void Commit();
    void CommitToNewDocument();

Q_SIGNALS:
    // The frame went, with the crop or without.
    void FrameEnded();

public:
    // Enter and Escape in the bar's angle go back to the canvas, as in its other boxes.
    bool eventFilter(QObject* object, QEvent* event) override;

protected:
    QWidget* CreateBar() override;
    void UpdateBarTheme(QWidget* bar) override;
    void CanvasChanged() override;
    void CreateShortcuts() override;
    void ReleaseShortcuts() override;
    void Equip(NVDocumentView* view) override;
    void Pressed(const CanvasPoint& point) override;
    void Moved(const CanvasPoint& point) override;
    void Released(const CanvasPoint& point) override;
    void PointerLeft() override;

private Q_SLOTS:
    void OnFromImage();
    void OnAngle(double angle);
    void OnWidth(int width);
    void OnHeight(int height);
    void OnLookChanged();
    void OnCancel();
    void OnSizeChanged();
    void OnDocumentGone();

private:
    enum State
    {
        Idle,
        Framed,
        Working
    };
    enum Drag
    {
        NoDrag,
        // A press that has not moved far enough to be a frame.
        Press,
        Draw,
        Move,
        Pull,
        Turn
    };
    using Work = std::function<PictureContents(const PictureContents& before, const WorkProgress& progress)>;

    NVCropToolbarMain* CreateMainBar();
    void RestoreValues(NVCropToolbarMain* bar);
    void ConnectBar(NVCropToolbarMain* bar);
    KXDocumentInterface* GetPixels() const;
    QPointF GetReference();
    // Of width to height; 0 for any.
    double GetProportion();

    void BeginFrame(const CropFrame& frame);
    void SetFrame(const CropFrame& frame);
    void EndFrame();
    void ShowFrameInBar();
    void UpdateHover(const CropHit& hit);
    void SetEnterLive(bool live);
    void DragTo(const CanvasPoint& point);
    double TurnedAngle(const CanvasPoint& point);
    bool IsDoubleClick(const CanvasPoint& point);
    void DrawOverlay(QPainter& painter);

    void Apply(bool toNewDocument);
    bool IsRefused(const QString& reason);
    QString WhyNot(bool isDeleted);
    bool HasNothingToDo(bool isDeleted);
    // What the work makes of the document, or no layers after a message.
    PictureContents Run(const Work& work);
    void Push(const PictureContents& outcome, const CropFrame& frame, bool isDeleted);
    void Open(const PictureContents& outcome, bool isDeleted);

    Host m_host;
    QPointer<NVCropToolbarStart> m_pStart;
    QPointer<NVCropToolbarMain> m_pMain;
    KXShortcut* m_pReturn = nullptr;
    KXShortcut* m_pEnter = nullptr;

    State m_state = Idle;
    CropFrame m_frame;
    CropHit m_hover;
    Drag m_drag = NoDrag;
    // At the press: where it was, in document pixels, and the frame and what was taken of it.
    QPointF m_press;
    CropFrame m_pressFrame;
    CropHit m_pressHit;
    ulong m_pressTime = 0;
    bool m_isDoubleClick = false;
};
