#pragma once

#include <QtGlobal>

class QImage;
class QPainter;
class QRandomGenerator;
class QSizeF;

// What the program's own drawn pictures have in common.

// Banks of cloud, spread over the sky above a horizon; lengths are those of the whole picture, the horizon is
// a part of its height.
void DrawCloudBanks(QPainter& painter, const QSizeF& size, double horizon, int banks,
                    QRandomGenerator& random);

// Grain, as a photograph has it: no two neighbours are alike. Each channel moves by up to the strength, most
// of the pixels by much less. 32 bits a pixel, the opacity stays. The same seed gives the same grain.
void AddGrain(QImage& image, int strength, quint32 seed);
