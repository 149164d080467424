#pragma once

#include <QImage>
#include <QPointF>
#include <QVector>

// Drawn pictures that have what the tools are for, with the places where it is. RGB32, opaque, 1200 by 800
// pixels; each call gives the same. Points are in pixels.

// A face in the light of a flash.
struct PortraitPicture
{
    QImage image;
    // The middles of the two pupils, and how far their red reaches.
    QVector<QPointF> pupils;
    double pupilRadius;
    // The middle of the bright spot in a pupil, from the pupil's middle.
    QPointF highlight;
    // Skin, far from the eyes and as flushed as skin gets.
    QPointF cheek;
};
PortraitPicture DrawPortrait();

// An old print with grain, scratches and dust.
struct ScratchedPicture
{
    QImage image;
    // The same without scratches and dust.
    QImage whole;
    // The longest scratch, from end to end; it is no wider than the width.
    QVector<QPointF> scratch;
    double scratchWidth;
    // The largest specks of dust, and how far they reach.
    QVector<QPointF> dust;
    double dustRadius;
};
ScratchedPicture DrawScratchedPrint();

// A tower between sea and sky.
struct LighthousePicture
{
    QImage image;
    // The middle of its lamp and of its foot.
    QPointF lamp;
    QPointF foot;
    // On the edges between white and red, from the upper one down.
    QVector<QPointF> stripes;
    // Bright sky without clouds, and rock in the shadow.
    QPointF sky;
    QPointF rock;
};
LighthousePicture DrawLighthouse();

// A balloon of flat panels, whose colours are not quite even and whose edges are noisy.
struct BalloonPicture
{
    QImage image;
    // The middles of the panels from left to right; every other one has the same colour.
    QVector<QPointF> panels;
    // In the open sky, and on the hill.
    QPointF sky;
    QPointF hill;
};
BalloonPicture DrawBalloon();
