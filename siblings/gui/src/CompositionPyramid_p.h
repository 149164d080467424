#pragma once

#include <QColor>
#include <QImage>
#include <QRegion>
#include <QVector>

class KXColorTransformBase;

// Where a document stands on a device: pixel (x, y) of the document covers scale by scale device pixels from
// origin + (x, y) * scale.
struct CanvasPlace
{
    double scale = 1.0;
    QPointF origin;
    // Device pixels for one device-independent pixel.
    double pixelRatio = 1.0;
};

// A document's composition at 1/2, 1/4, 1/8 ... of its size, so that a view of the whole costs what it shows.
// A level is computed where it is asked for and kept until the document changes there.
class CompositionPyramid
{
public:
    void SetDocumentSize(const QSize& size);
    void NoteChange(const QRect& documentArea);
    // The level's image, right within the area, which is in pixels of the level. Level 0 is the composition
    // itself.
    const QImage& Level(const QImage& composition, int level, const QRect& area);

private:
    struct Half
    {
        QImage image;
        QRegion stale;
    };

    QSize m_documentSize;
    QVector<Half> m_halves;
};

// Halves the size of an ARGB32_Premultiplied image within an area of the target, which is half as large,
// rounded up.
void HalveInto(QImage& target, const QImage& source, const QRect& targetArea);

// What a canvas shows in an area of the device: the document over a checkerboard, the surround beside it, a
// grid between its pixels from eight-fold on. Every pixel is the same whichever area it is drawn with.
// Without filter the composition is shown as it is.
QImage RenderCanvas(CompositionPyramid& pyramid, const QImage& composition,
                    const KXColorTransformBase* filter, const CanvasPlace& place, const QRect& deviceArea,
                    const QColor& surround);
