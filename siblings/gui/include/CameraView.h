#pragma once

#include <QWidget>
#include <memory>

#include "gui_export.h"

class KXDocumentInterface;

// A loupe: the pixels of a document around a point, magnified by a whole factor, with a grid between them on
// wish. The wheel and the keys Plus and Minus change the factor; the pixel in the middle is framed. GUI
// thread only.
class GUI_EXPORT CameraView : public QWidget
{
    Q_OBJECT

public:
    // 1 and 32.
    static const int MinScaleFactor;
    static const int MaxScaleFactor;

    // The lines between the pixels, seen from a factor of 4 on.
    enum GridType
    {
        GridNone = 0,
        GridStandard = 1, // in the middle between black and white
        GridLighten = 2, // lighter than the pixels beside it
        GridDarken = 3 // darker than the pixels beside it
    };
    Q_ENUM(GridType)

    explicit CameraView(QWidget* parent = nullptr);
    ~CameraView() override;

    // 1 at first.
    int GetScaleFactor() const;
    int GetGridType() const;
    QPoint GetLookPoint() const;

    // What is looked at: 0 the composition, n the layer n, counted from 1 at the bottom; a layer that is not
    // there shows nothing. The document is not owned, may be null, and is let go by itself when it is
    // destroyed.
    void SetDocument(KXDocumentInterface* document, unsigned int layer);
    // The document pixel in the middle. It may lie outside the document.
    void SetLookPoint(const QPoint& point);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

public Q_SLOTS:
    // Cut to 1 and 32.
    void SetScaleFactor(int factor);
    // A value that is no GridType is taken as GridNone.
    void SetGridType(int type);
    // The document looks different.
    void RebuildView();

Q_SIGNALS:
    // The factor is not what it was, whoever changed it.
    void ScaleChanged(int factor);

protected:
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    struct Data;
    std::unique_ptr<Data> d;
};
