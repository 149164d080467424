#pragma once

#include <QPoint>

#include "ContentTool.h"

class NVMoveToolbar;
class QSettings;

// A drag moves the pixels of the current layer, or those that are selected, by whole pixels; with Shift it
// keeps to directions of whole 45 degrees. The arrow keys move them by a pixel, with Shift by ten; what is
// done by keys in one go is one step.
class MoveTool : public ContentTool
{
    Q_OBJECT

public:
    // The bar's value comes from the settings and goes there. Not owned; they outlive the tool.
    MoveTool(QSettings* settings, QObject* parent);
    // Takes back what is under way.
    ~MoveTool() override;

    NVMoveToolbar* GetMoveBar();

    QString GetName() const override;
    QString GetPictureName() const override;
    QKeySequence GetKey() const override;
    void StoreValues() override;
    bool Cancel() override;
    void Finish() override;

protected:
    QWidget* CreateBar() override;
    void UpdateBarTheme(QWidget* bar) override;
    void Equip(NVDocumentView* view) override;
    void Pressed(const CanvasPoint& point) override;
    void Moved(const CanvasPoint& point) override;
    void Released(const CanvasPoint& point) override;
    bool eventFilter(QObject* object, QEvent* event) override;

    QString GetStepName() const override;
    QString GetProgressText() const override;
    bool KeepsContent() const override;
    void BoundsChanged() override;
    void DrawFrame(QPainter& painter) override;
    void PendingChanged() override;

private Q_SLOTS:
    void OnShowFrameChanged();
    void OnNudgesEnded();

private:
    void Nudge(const QPoint& way);

    QSettings* m_pSettings;
    // From a press to its release, or until it was taken back.
    bool m_isPressed = false;
    QPointF m_press;
    // Where the content was at the press.
    QTransform m_start;
    // Until the keys have rested for a while.
    QTimer m_nudges;
};
