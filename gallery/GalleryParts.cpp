#include "GalleryParts.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

#include <cmath>

#include "KXDocumentInterface.h"
#include "KXDocumentModel.h"
#include "NVDocumentView.h"

namespace
{

const QSize DocumentSize(960, 640);

// A line of hills from the left edge to the right one, filled down to the bottom. In a square of 1 by 1.
void DrawHills(QPainter& painter, double top, double swing, double phase, const QColor& color)
{
    QPainterPath path(QPointF(0, 1));
    for (int i = 0; i <= 60; ++i)
    {
        const double x = i / 60.0;
        path.lineTo(x, top + swing * std::sin(phase + 7 * x) + swing * 0.4 * std::sin(2 * phase + 17 * x));
    }
    path.lineTo(1, 1);
    path.closeSubpath();
    painter.fillPath(path, color);
}

NVGradientStop Stop(double position, const QColor& color)
{
    return NVGradientStop(position, color, false, false, false);
}

} // namespace

QImage DrawGalleryPicture(const QSize& size)
{
    QImage image(size, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size.width(), size.height());
    QLinearGradient sky(0, 0, 0, 0.6);
    sky.setColorAt(0, QColor(58, 110, 180));
    sky.setColorAt(1, QColor(250, 214, 165));
    painter.fillRect(QRectF(0, 0, 1, 1), sky);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(255, 244, 214));
    const double height = 0.11;
    painter.drawEllipse(QPointF(0.68, 0.34), height * size.height() / size.width(), height);
    painter.fillRect(QRectF(0, 0.56, 1, 0.44), QColor(44, 116, 140));
    DrawHills(painter, 0.54, 0.05, 0.4, QColor(122, 104, 142));
    DrawHills(painter, 0.66, 0.06, 2.2, QColor(66, 122, 88));
    DrawHills(painter, 0.82, 0.07, 4.1, QColor(34, 74, 52));
    return image;
}

QList<QList<NVGradientStop>> GalleryGradients()
{
    return {{Stop(0, Qt::black), Stop(1, Qt::white)},
            {Stop(0, QColor(58, 110, 180)), Stop(0.6, QColor(250, 214, 165)), Stop(1, QColor(196, 84, 60))},
            {Stop(0, QColor(34, 74, 52)), Stop(1, QColor(34, 74, 52, 0))},
            {Stop(0, QColor(200, 40, 40)), Stop(0.25, QColor(230, 200, 40)), Stop(0.5, QColor(40, 170, 70)),
             Stop(0.75, QColor(40, 110, 210)), Stop(1, QColor(150, 50, 170))}};
}

NVDocumentView* AddCanvas(Exhibit& exhibit, QWidget* parent)
{
    // The model goes before its document.
    const auto document = std::make_shared<KXDocumentInterface>(DrawGalleryPicture(DocumentSize));
    const auto model = std::make_shared<KXDocumentModel>(document.get());
    exhibit.context.push_back(model);
    exhibit.context.push_back(document);
    auto* canvas = new NVDocumentView(model.get(), parent);
    exhibit.companion = canvas;
    return canvas;
}
