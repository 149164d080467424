#include "ProbeImage.h"

#include <QSet>
#include <QWidget>

#include <cmath>
#include <cstdlib>

namespace
{
QString name(const QColor& color)
{
    return color.isValid() ? color.name(QColor::HexArgb) : QStringLiteral("no pixel");
}

bool nearPixel(QRgb one, QRgb other, int tolerance)
{
    return std::abs(qRed(one) - qRed(other)) <= tolerance &&
        std::abs(qGreen(one) - qGreen(other)) <= tolerance &&
        std::abs(qBlue(one) - qBlue(other)) <= tolerance &&
        std::abs(qAlpha(one) - qAlpha(other)) <= tolerance;
}

QImage render(QWidget* widget, qreal ratio)
{
    QImage image((QSizeF(widget->size()) * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    widget->render(&image);
    return image;
}
} // namespace

ProbeImage::ProbeImage(const QImage& image) : m_image(image.convertToFormat(QImage::Format_ARGB32))
{
    m_image.setDevicePixelRatio(image.devicePixelRatio());
}

ProbeImage::ProbeImage(QWidget* widget, qreal devicePixelRatio) : ProbeImage(render(widget, devicePixelRatio))
{
}

const QImage& ProbeImage::Image() const
{
    return m_image;
}

QSize ProbeImage::Size() const
{
    return (QSizeF(m_image.size()) / m_image.devicePixelRatio()).toSize();
}

QColor ProbeImage::At(int x, int y) const
{
    const qreal ratio = m_image.devicePixelRatio();
    const QPoint point(static_cast<int>(x * ratio), static_cast<int>(y * ratio));
    return m_image.valid(point) && x >= 0 && y >= 0 ? QColor::fromRgba(m_image.pixel(point)) : QColor();
}

QColor ProbeImage::AtFraction(qreal fx, qreal fy) const
{
    const QPoint point(qRound(fx * (m_image.width() - 1)), qRound(fy * (m_image.height() - 1)));
    return m_image.valid(point) ? QColor::fromRgba(m_image.pixel(point)) : QColor();
}

bool ProbeImage::Similar(const QColor& one, const QColor& other, int tolerance)
{
    return one.isValid() && other.isValid() && nearPixel(one.rgba(), other.rgba(), tolerance);
}

bool ProbeImage::Near(int x, int y, const QColor& color, int tolerance) const
{
    const QColor actual = At(x, y);
    m_failure.clear();
    if (Similar(actual, color, tolerance))
    {
        return true;
    }
    m_failure = QStringLiteral("at (%1, %2) of %3 by %4: expected %5 within %6, found %7")
                    .arg(x)
                    .arg(y)
                    .arg(Size().width())
                    .arg(Size().height())
                    .arg(name(color))
                    .arg(tolerance)
                    .arg(name(actual));
    return false;
}

bool ProbeImage::NearFraction(qreal fx, qreal fy, const QColor& color, int tolerance) const
{
    const QColor actual = AtFraction(fx, fy);
    m_failure.clear();
    if (Similar(actual, color, tolerance))
    {
        return true;
    }
    m_failure = QStringLiteral("at fraction (%1, %2) of %3 by %4: expected %5 within %6, found %7")
                    .arg(fx)
                    .arg(fy)
                    .arg(Size().width())
                    .arg(Size().height())
                    .arg(name(color))
                    .arg(tolerance)
                    .arg(name(actual));
    return false;
}

int ProbeImage::CountOf(const QColor& color, int tolerance) const
{
    int count = 0;
    for (int y = 0; y < m_image.height(); ++y)
    {
        const QRgb* line = reinterpret_cast<const QRgb*>(m_image.constScanLine(y));
        for (int x = 0; x < m_image.width(); ++x)
        {
            count += nearPixel(line[x], color.rgba(), tolerance) ? 1 : 0;
        }
    }
    return count;
}

QRect ProbeImage::BoundsOf(const QColor& color, int tolerance) const
{
    QRect bounds;
    for (int y = 0; y < m_image.height(); ++y)
    {
        const QRgb* line = reinterpret_cast<const QRgb*>(m_image.constScanLine(y));
        for (int x = 0; x < m_image.width(); ++x)
        {
            if (nearPixel(line[x], color.rgba(), tolerance))
            {
                bounds |= QRect(x, y, 1, 1);
            }
        }
    }
    const qreal ratio = m_image.devicePixelRatio();
    return bounds.isNull()
        ? bounds
        : QRectF(QPointF(bounds.topLeft()) / ratio, QSizeF(bounds.size()) / ratio).toAlignedRect();
}

int ProbeImage::ColorCount(int limit) const
{
    QSet<QRgb> colors;
    for (int y = 0; y < m_image.height() && colors.size() < limit; ++y)
    {
        const QRgb* line = reinterpret_cast<const QRgb*>(m_image.constScanLine(y));
        for (int x = 0; x < m_image.width() && colors.size() < limit; ++x)
        {
            colors.insert(line[x]);
        }
    }
    return colors.size();
}

bool ProbeImage::Differs(const ProbeImage& other, int tolerance) const
{
    if (m_image.size() != other.m_image.size())
    {
        m_failure = QStringLiteral("sizes in device pixels: %1 by %2 and %3 by %4")
                        .arg(m_image.width())
                        .arg(m_image.height())
                        .arg(other.m_image.width())
                        .arg(other.m_image.height());
        return true;
    }
    for (int y = 0; y < m_image.height(); ++y)
    {
        const QRgb* mine = reinterpret_cast<const QRgb*>(m_image.constScanLine(y));
        const QRgb* theirs = reinterpret_cast<const QRgb*>(other.m_image.constScanLine(y));
        for (int x = 0; x < m_image.width(); ++x)
        {
            if (!nearPixel(mine[x], theirs[x], tolerance))
            {
                m_failure = QStringLiteral("first at device pixel (%1, %2): %3 and %4")
                                .arg(x)
                                .arg(y)
                                .arg(name(QColor::fromRgba(mine[x])), name(QColor::fromRgba(theirs[x])));
                return true;
            }
        }
    }
    m_failure = QStringLiteral("the same within %1 in all pixels of %2 by %3")
                    .arg(tolerance)
                    .arg(m_image.width())
                    .arg(m_image.height());
    return false;
}

QString ProbeImage::FailureText() const
{
    return m_failure;
}
