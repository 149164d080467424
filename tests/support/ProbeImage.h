// A picture of what a widget draws, asked for single pixels, colours and places.

#pragma once

#include <QColor>
#include <QImage>
#include <QPoint>
#include <QRect>
#include <QString>

class QWidget;

// All coordinates are logical: with a device pixel ratio of 2 the point (1, 1) is device pixel (2, 2).
class ProbeImage
{
public:
    explicit ProbeImage(const QImage& image);
    // Renders the widget and its children, shown or not. Another device pixel ratio than the screen's may be
    // asked for.
    explicit ProbeImage(QWidget* widget, qreal devicePixelRatio = 1.0);

    const QImage& Image() const;
    // Logical size.
    QSize Size() const;

    // Invalid colour outside of the image.
    QColor At(int x, int y) const;
    // (0, 0) is the top-left pixel, (1, 1) the bottom-right one.
    QColor AtFraction(qreal fx, qreal fy) const;
    // True if no channel (alpha too) at this place differs by more than `tolerance` from the colour.
    // Otherwise FailureText() says where, what was expected and what stands there.
    bool Near(int x, int y, const QColor& color, int tolerance = 8) const;
    bool NearFraction(qreal fx, qreal fy, const QColor& color, int tolerance = 8) const;
    // Two colours compared in the same way.
    static bool Similar(const QColor& one, const QColor& other, int tolerance = 8);

    // Device pixels that come near the colour.
    int CountOf(const QColor& color, int tolerance = 8) const;
    // The smallest logical rectangle that holds all of them; null if there are none.
    QRect BoundsOf(const QColor& color, int tolerance = 8) const;
    // How many different colours there are, counted up to `limit`.
    int ColorCount(int limit = 1000) const;
    // True if the sizes differ or any pixel differs by more than the tolerance. Otherwise FailureText() says
    // that they are the same; if they differ it says where first.
    bool Differs(const ProbeImage& other, int tolerance = 0) const;

    // About the last Near() or Differs().
    QString FailureText() const;

private:
    QImage m_image;
    mutable QString m_failure;
};

// Fails the running test unless the pixel at x, y comes near the colour, and says what stands there.
#define NV_VERIFY_NEAR(probe, x, y, color, tolerance)                                                        \
    QVERIFY2((probe).Near((x), (y), (color), (tolerance)), qPrintable((probe).FailureText()))
