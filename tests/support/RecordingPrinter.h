// A printer that writes down what is asked of it and what is drawn on it.

#pragma once

#include <QBrush>
#include <QImage>
#include <QList>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPrintEngine>
#include <QPrinter>
#include <QRectF>
#include <QTransform>
#include <QVariant>

#include <algorithm>

struct RecordedImage
{
    qint64 key; // of the picture's data
    QPointF at;
    QTransform transform;
    QRectF clip; // as on the page
    bool smooth;
    int page; // from 0
    QImage::Format format;
};

struct RecordedFill
{
    QBrush brush;
    QPainterPath path; // as on the page
};

// Serves as both engines of a printer.
class RecordingEngine : public QPaintEngine, public QPrintEngine
{
public:
    RecordingEngine() : QPaintEngine(QPaintEngine::AllFeatures) { }

    bool begin(QPaintDevice*) override
    {
        ++begun;
        return true;
    }
    bool end() override
    {
        ++ended;
        return true;
    }
    Type type() const override { return QPaintEngine::User; }
    void updateState(const QPaintEngineState&) override { }
    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override { ++pixmaps; }
    void drawImage(const QRectF& rect, const QImage& image, const QRectF&, Qt::ImageConversionFlags) override
    {
        const QTransform transform = painter()->transform();
        const bool smooth = painter()->renderHints().testFlag(QPainter::SmoothPixmapTransform);
        images << RecordedImage{
            image.cacheKey(), rect.topLeft(), transform,     transform.mapRect(painter()->clipBoundingRect()),
            smooth,           pages,          image.format()};
    }
    void drawPath(const QPainterPath& path) override
    {
        fills << RecordedFill{painter()->brush(), painter()->transform().map(path)};
    }
    void drawRects(const QRectF* rects, int count) override
    {
        QPainterPath path;
        std::for_each(rects, rects + count, [&](const QRectF& rect) { path.addRect(rect); });
        drawPath(path);
    }

    void setProperty(PrintEnginePropertyKey key, const QVariant& value) override
    {
        keys << key;
        values << value;
    }
    QVariant property(PrintEnginePropertyKey key) const override { return valueOf(key); }
    bool newPage() override
    {
        ++pages;
        return true;
    }
    bool abort() override { return false; }
    int metric(QPaintDevice::PaintDeviceMetric metric) const override
    {
        switch (metric)
        {
        case QPaintDevice::PdmWidth:
        case QPaintDevice::PdmHeight:
            return 10000;
        case QPaintDevice::PdmDevicePixelRatioScaled:
            return int(QPaintDevice::devicePixelRatioFScale());
        case QPaintDevice::PdmDevicePixelRatio:
            return 1;
        default:
            return 300;
        }
    }
    QPrinter::PrinterState printerState() const override
    {
        return begun > ended ? QPrinter::Active : QPrinter::Idle;
    }

    // What was set last.
    QVariant valueOf(PrintEnginePropertyKey key) const
    {
        const int index = keys.lastIndexOf(key);
        return index < 0 ? QVariant() : values.at(index);
    }

    QList<RecordedImage> images;
    QList<RecordedFill> fills;
    QList<PrintEnginePropertyKey> keys;
    QVariantList values;
    int pages = 0;
    int pixmaps = 0;
    int begun = 0;
    int ended = 0;
};

class RecordingPrinter : public QPrinter
{
public:
    RecordingPrinter() : QPrinter(QPrinter::ScreenResolution) { setEngines(&engine, &engine); }

    RecordingEngine engine;
};
