#pragma once

#include <QSize>
#include <QString>

// Bytes that programs can still be given without others being closed, or -1 where the system does not tell.
qint64 FreeMemory();

// Why a document of this size and so many layers cannot be held, as a sentence with its size, in pixels and
// in memory; empty if it can.
QString WhyNotInMemory(const QSize& size, int layers);
