#include "ColorSamples.h"

#include "Document.h"

const int ColorSamples::MAX_SAMPLES = 10;

ColorSamples* ColorSamples::Of(Document* document)
{
    auto* samples = document->findChild<ColorSamples*>(QString(), Qt::FindDirectChildrenOnly);
    return samples ? samples : new ColorSamples(document);
}

ColorSamples::ColorSamples(Document* document) : QObject(document), m_pDocument(document) { }

Document* ColorSamples::GetDocument() const
{
    return m_pDocument;
}

int ColorSamples::Count() const
{
    return m_pixels.size();
}

bool ColorSamples::IsFull() const
{
    return m_pixels.size() >= MAX_SAMPLES;
}

QPoint ColorSamples::GetPixel(int index) const
{
    return m_pixels.at(index);
}

QVector<QPoint> ColorSamples::GetPixels() const
{
    return m_pixels;
}

int ColorSamples::GetCurrent() const
{
    return m_current;
}

int ColorSamples::Add(const QPoint& pixel)
{
    if (IsFull())
        return -1;
    m_pixels += pixel;
    Q_EMIT Changed();
    SetCurrent(m_pixels.size() - 1);
    return m_pixels.size() - 1;
}

void ColorSamples::Move(int index, const QPoint& pixel)
{
    if (index < 0 || index >= m_pixels.size() || m_pixels.at(index) == pixel)
        return;
    m_pixels[index] = pixel;
    Q_EMIT Changed();
}

void ColorSamples::Remove(int index)
{
    if (index < 0 || index >= m_pixels.size())
        return;
    m_pixels.remove(index);
    Q_EMIT Changed();
    if (m_current == index)
        SetCurrent(-1);
    else if (m_current > index)
        SetCurrent(m_current - 1);
}

void ColorSamples::Set(const QVector<QPoint>& pixels)
{
    if (pixels == m_pixels || pixels.size() > MAX_SAMPLES)
        return;
    const bool isMoved = pixels.size() == m_pixels.size();
    const int current = isMoved || m_current < 0 ? m_current : pixels.indexOf(m_pixels.at(m_current));
    m_pixels = pixels;
    Q_EMIT Changed();
    SetCurrent(current);
}

void ColorSamples::Clear()
{
    Set({});
}

void ColorSamples::SetCurrent(int index)
{
    const int current = index >= 0 && index < m_pixels.size() ? index : -1;
    if (current == m_current)
        return;
    m_current = current;
    Q_EMIT CurrentChanged(current);
}
