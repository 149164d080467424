#pragma once

#include <functional>

#include <QImage>
#include <QTransform>
#include <QVector>

// A layer as far as it shows.
struct PreviewLayer
{
    // ARGB32_Premultiplied; all layers have one size.
    QImage image;
    int blendMode = 0;
    // 0 to 1.
    double opacity = 1.0;
};

// Where the layers stand on a device: pixel (x, y) of a layer covers scale by scale device pixels from
// origin + (x, y) * scale.
struct PreviewPlace
{
    double scale = 1.0;
    QPointF origin;
    // Device pixels for one device-independent pixel.
    double pixelRatio = 1.0;
    // The part of the device that is in sight.
    QRect area;

    bool operator==(const PreviewPlace& other) const;
};

// What a canvas shows of a document while it is being tried out what one of its layers is to become: the
// change is made on what is in sight alone, with no more pixels than it takes. What the other layers give is
// kept from one picture to the next. The checkerboard and the grid are those of the canvas.
class LayerPreview
{
public:
    // Changes the pixels of the picture, a piece of the layer. The transform maps them to the layer's.
    using Change = std::function<void(QImage& picture, const QTransform& toLayer)>;

    // From the bottom to the top; one of them is to be changed. When it is made anew, the change begins with
    // a clear picture, and the pixels that the layer has now are not looked at.
    void SetLayers(const QVector<PreviewLayer>& layers, int changing, bool isMadeAnew = false);
    void Clear();

    // The picture, opaque, and the upper left corner of it on the device. Null when no layer is in sight.
    QImage Render(const PreviewPlace& place, const Change& change, QPoint* corner);

private:
    struct Sampled
    {
        QImage image;
        int blendMode;
        double opacity;
    };

    void Look(const PreviewPlace& place);
    Sampled Sample(int layer);
    const QImage& Half(int layer, int level);
    void Compose(QImage& picture, const QImage& changed) const;

    QVector<PreviewLayer> m_layers;
    int m_changing = 0;
    bool m_isMadeAnew = false;
    // Each layer at 1/2, 1/4 ... of its size, as far as it was asked for.
    QVector<QVector<QImage>> m_halves;

    PreviewPlace m_place;
    // Device pixels that show the layers; what they show, in pixels of the piece; and how those lie in the
    // layer.
    QRect m_visible;
    QRect m_piece;
    QTransform m_toLayer;
    // Where a piece pixel is a layer pixel, and not one of the device.
    bool m_isWhole = false;
    int m_level = 0;
    // What lies below the layer, composed; the layer, as it is; and what lies above.
    QImage m_below;
    Sampled m_current;
    QVector<Sampled> m_above;
};
