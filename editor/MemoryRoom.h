#pragma once

#include <QSize>
#include <QString>

// Bytes that programs can still be given without others being closed, or -1 where the system does not tell.
qint64 FreeMemory();

// Why a document of this size and so many layers cannot be held, as a sentence with its size, in pixels and
// in memory; empty if it can.
QString WhyNotInMemory(const QSize& size, int layers);
// That sentence, whether or not there is room.
QString NoMemoryForPicture(const QSize& size, int layers);
// Why a document of this size cannot be given one more layer, in the same way.
QString WhyNoMoreLayer(const QSize& size);

// Why a selection of that size cannot be worked on: NoMemoryForSelection(), or empty if it can.
QString WhyNotSelected(const QSize& size);
// Says that it stays as it is.
QString NoMemoryForSelection();
