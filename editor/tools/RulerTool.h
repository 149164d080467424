#pragma once

#include <QLineF>

#include <memory>

#include "BackgroundWork.h"
#include "PictureContents.h"
#include "Tool.h"

class NVRulerToolbar;
class RulerLine;

// A drag draws the line of the ruler, whose ends can be dragged; with Shift it keeps to whole 45 degrees. The
// bar tells its length and its angle, counted against the clock. It can make what it follows level or plumb,
// whichever is nearer: the picture is turned and cropped, on another thread while that takes long; until it
// is done Escape takes it back.
class RulerTool : public Tool
{
    Q_OBJECT

public:
    explicit RulerTool(QObject* parent);
    // Takes back what is under way.
    ~RulerTool() override;

    NVRulerToolbar* GetRulerBar();
    bool IsStraightening() const;

    QString GetName() const override;
    QString GetPictureName() const override;
    QKeySequence GetKey() const override;
    bool Cancel() override;
    // Waits for the end of the work.
    void Finish() override;

Q_SIGNALS:
    // The step is on the undo stack, or was taken back.
    void Straightened();

protected:
    QWidget* CreateBar() override;
    void UpdateBarTheme(QWidget* bar) override;
    void CanvasChanged() override;
    void Equip(NVDocumentView* view) override;
    void Pressed(const CanvasPoint& point) override;
    void Moved(const CanvasPoint& point) override;
    void Released(const CanvasPoint& point) override;
    void PointerLeft() override;

private Q_SLOTS:
    void OnStraighten();
    void OnClear();
    void OnLineChanged();
    void OnDone();
    void OnLasts();

private:
    enum End
    {
        NoEnd,
        First,
        Second
    };

    void ShowLine();
    End EndAt(const QPointF& position) const;
    void SetHover(End end);
    void StartWork(double slope);
    void EndWork();
    QRect AreaOf(const QLineF& line) const;
    void DrawLine(QPainter& painter) const;

    QPointer<RulerLine> m_pLine;
    // The line that is on the canvas.
    QLineF m_drawn;
    bool m_isPressed = false;
    // A press that has not moved far enough draws no line.
    bool m_isDragging = false;
    End m_dragged = NoEnd;
    End m_hover = NoEnd;
    QPointF m_press;
    QLineF m_before;

    BackgroundWork m_work;
    // The work's, too.
    std::shared_ptr<PictureContents> m_pContents;
};
