#pragma once

#include <QImage>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QTimer>

#include <memory>

#include "BackgroundWork.h"
#include "OutlineDrawing.h"

class KXDocumentInterface;
class NVDocumentView;
class QPaintEvent;

// The moving line of dashes around the selection on a canvas, over all else that is drawn there. It follows
// the selection of the document; that of a large one is worked out on another thread, and the line of before
// stays until it is done. It stands still while nobody can see it.
class SelectionOutline : public QObject
{
    Q_OBJECT

public:
    // Belongs to the view, whose document this is. The document may go first.
    SelectionOutline(KXDocumentInterface* document, NVDocumentView* view);

    // That of a view; null if it has none.
    static SelectionOutline* Of(const NVDocumentView* view);

    // Whether there is a line to see.
    bool IsShown() const;
    // Whether its dashes go on.
    bool IsMoving() const;
    // From a change of the selection until the line follows.
    bool IsComputing() const;
    // How far the dashes have gone, in device-independent pixels.
    int GetPhase() const;

    // The line around another mask in place of the selection, until ShowSelection or a change of the
    // selection. Null for no line.
    void ShowMask(const QImage& mask);
    void ShowSelection();
    // The line somewhere else, in document pixels from its place, until another mask is shown.
    void SetOffset(const QPoint& offset);

Q_SIGNALS:
    // The line is that of the mask that is to be shown.
    void Computed();

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private Q_SLOTS:
    void OnSelectionChanged();
    void OnSizeChanged();
    void OnComputed();
    void OnTick();

private:
    void Compute(const QImage& mask);
    void Show(const QVector<QImage>& masks);
    void UpdateTimer();
    void Paint(QPaintEvent* event);

    QPointer<KXDocumentInterface> m_pDocument;
    NVDocumentView* m_pView;
    OutlineDrawing m_drawing;
    QPoint m_offset;
    QTimer m_tick;
    BackgroundWork m_work;
    // The work's, too.
    std::shared_ptr<QVector<QImage>> m_pComputed;
    // While the canvas draws what lies below the line.
    bool m_isPaintingBelow = false;
    // While only the dashes go on.
    bool m_isMovingOn = false;
};
