#pragma once

#include <QObject>
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
// Whether a selection of that size can be worked on; if not, the signal Message of the speaker says why.
// Asked first, since a mask that could not be made would look like one in which nothing is selected.
template <typename Speaker>
bool HasRoomForSelection(const QSize& size, Speaker* speaker)
{
    const QString reason = WhyNotSelected(size);
    if (!reason.isEmpty())
        Q_EMIT speaker->Message(reason);
    return reason.isEmpty();
}
