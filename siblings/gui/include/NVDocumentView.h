#pragma once

#include <QCursor>
#include <QGraphicsView>
#include <functional>
#include <memory>

#include "gui_export.h"

class KXDocumentModel;

// What a pointing device does on the canvas.
struct CanvasPoint
{
    // Document pixels; (0, 0) is the top-left corner of the first pixel. May lie outside the document.
    QPointF position;
    // 0 to 1; always 1 for a device that measures none.
    double pressure = 1.0;
    // The button of a press or a release, no button for a move.
    Qt::MouseButton button = Qt::NoButton;
    // The buttons held after the event.
    Qt::MouseButtons buttons = Qt::NoButton;
    Qt::KeyboardModifiers modifiers = Qt::NoModifier;
    // The other end of the pen.
    bool eraser = false;
    // Milliseconds, of the window system.
    ulong timestamp = 0;
};
Q_DECLARE_METATYPE(CanvasPoint)

// The canvas: shows a document with smooth zoom, pans, and hands what is done with mouse or pen to the
// current tool. The wheel zooms about the pointer (with Shift it pans sideways); the middle button, or the
// left one while Space is held, drags the document; the arrow keys pan. Scene coordinates are document
// pixels. GUI thread only.
//
// A tool connects to Pressed, Moved and Released, and draws the outline of its brush with SetOverlay. No move
// is left out here; a program that wants every move of a fast mouse clears
// Qt::AA_CompressHighFrequencyEvents.
class GUI_EXPORT NVDocumentView : public QGraphicsView
{
    Q_OBJECT

public:
    // Draws over the document, in pixels of the viewport.
    using Overlay = std::function<void(QPainter&)>;

    // 1/64 to 64.
    static const double MinScale;
    static const double MaxScale;

    // The model is not owned and must outlive the view, or be taken out by SetModel(nullptr). May be null.
    // Its document may go first; the view is then empty. When it gets another size, the scale stays unless it
    // is fitted, and what lay in the middle of the view does so again, as a share of the document.
    explicit NVDocumentView(KXDocumentModel* model, QWidget* parent = nullptr);
    ~NVDocumentView() override;

    KXDocumentModel* GetModel() const;
    // Screen pixels for one document pixel, in device-independent pixels.
    double GetScale() const;
    // Between viewport and document, with fractions.
    QPointF MapToDocument(const QPointF& viewportPoint) const;
    QPointF MapFromDocument(const QPointF& documentPoint) const;

    // Multiplies the scale about a point of the viewport, which keeps the document pixel under it. The result
    // is cut to MinScale and MaxScale; a factor that is not finite and above 0 is ignored.
    void Scale(double factor, const QPointF& point);
    // Shows the whole document as large as it fits, in the middle; keeps doing so when the view is resized,
    // until the next zoom or pan.
    void FitInView();
    void SetModel(KXDocumentModel* model);

    // A function without target takes the overlay away. It must not outlive what it refers to.
    void SetOverlay(const Overlay& overlay);
    // Draws an area of the viewport anew, for an overlay that moved: call it with the old and with the new
    // place.
    void UpdateOverlay(const QRect& area);
    // The pointer over the canvas while it is not panned. An arrow by default.
    void SetToolCursor(const QCursor& cursor);

Q_SIGNALS:
    // The scale is not what it was.
    void ScaleChanged(double scale);
    // Another part of the document is in sight.
    void SceneAreaChanged();

    // The left or the right button, or the tip of a pen. Each Pressed is followed by one Released or one
    // Cancelled. While a button is held, further buttons are not reported.
    void Pressed(const CanvasPoint& point);
    // With and without a button held, but not while panning.
    void Moved(const CanvasPoint& point);
    void Released(const CanvasPoint& point);
    // The press is broken off: another document came, its size changed, or the view was hidden.
    void Cancelled();
    // The pointer is no longer over the canvas.
    void PointerLeft();

protected:
    void drawBackground(QPainter* painter, const QRectF& rect) override;
    void drawForeground(QPainter* painter, const QRectF& rect) override;
    bool viewportEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

private Q_SLOTS:
    void OnCompositionChanged(const QRect& area);
    void OnSizeChanged(const QSize& size);
    void OnDocumentDestroyed();

private:
    struct Data;

    void takePen(QTabletEvent* event);
    void press(const CanvasPoint& point, const QPointF& viewportPoint);
    void move(const CanvasPoint& point, const QPointF& viewportPoint);
    void release(const CanvasPoint& point);
    void cancelPress();
    void endPan();
    void updateCursor();

    QRectF roomFor(double scale) const;
    void setView(double scale, const QPointF& corner);
    void place();
    void pan(const QPoint& position);
    void tellSceneArea();

    std::unique_ptr<Data> d;
};
