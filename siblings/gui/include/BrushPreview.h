#pragma once

#include <QFrame>
#include <memory>

#include "gui_export.h"

class IBrush;

// Shows a brush: its tip, a stroke of it along a curve with thin ends, and its name. It shows the brush in a
// size that fits, whatever size the person paints with. Nothing in it can be acted on.
class GUI_EXPORT BrushPreview : public QFrame
{
    Q_OBJECT

public:
    explicit BrushPreview(QWidget* parent = nullptr);
    ~BrushPreview() override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

public Q_SLOTS:
    // Takes over what the brush is now; the pointer is not kept, so a brush that changes in place is to be
    // given again. Null, the state at first, leaves an empty face.
    void SetBrush(const IBrush* brush);

protected:
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    struct Data;

    void drawStroke(QPainter& painter, const QRect& place);
    void drawStamp(QPainter& painter, const QRect& place);
    void describe();

    std::unique_ptr<Data> d;
};
