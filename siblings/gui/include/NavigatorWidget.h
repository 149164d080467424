#pragma once

#include <QWidget>
#include <memory>

#include "gui_export.h"

class KXColorTransformBase;
class KXDocumentInterface;

// The whole document, small, with a frame around what a view shows of it. The frame is dragged; a press
// beside it brings its middle there; the arrow keys move it by a tenth of its size, with Shift by a
// hundredth. It stays within the document where it fits. GUI thread only.
class GUI_EXPORT NavigatorWidget : public QWidget
{
    Q_OBJECT

public:
    explicit NavigatorWidget(QWidget* parent = nullptr);
    ~NavigatorWidget() override;

    // The document is not owned, may be null, and is let go by itself when it is destroyed. The transform,
    // with which the overview is drawn, may be null and belongs to the widget from now on.
    void SetDocument(KXDocumentInterface* document, KXColorTransformBase* transform);
    // Where the frame stands, in document pixels. Emits nothing.
    void SetViewRect(const QRectF& rect);
    QRectF GetViewRect() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

public Q_SLOTS:
    // The document looks different: the overview is made anew, once for all calls of one turn of the event
    // loop, and not before the widget is visible.
    void RebuildView();

Q_SIGNALS:
    // The frame was moved by hand. Its corner is in document pixels times the whole device pixel ratio of the
    // widget, its size in document pixels.
    void ViewRectPosChanged(QRectF rect);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private Q_SLOTS:
    void OnDocumentDestroyed();

private:
    void moveFrame(const QPointF& corner);

    struct Data;
    std::unique_ptr<Data> d;
};
