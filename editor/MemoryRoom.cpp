#include "MemoryRoom.h"

#include <QCoreApplication>
#include <QFile>
#include <QLocale>

#include <cstdlib>
#include <memory>

namespace
{

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(MemoryRoom)
};

// The layers, their composition for the screen, the selection, and the layer that is worked on.
qint64 BytesFor(const QSize& size, int layers)
{
    const qint64 pixels = qint64(size.width()) * size.height();
    return pixels * 4 * (qint64(layers) + 2) + pixels;
}

// Where the process alone is limited, only an attempt tells.
bool CanBeGiven(qint64 bytes)
{
    const qint64 room = FreeMemory();
    if (room >= 0 && bytes > room)
        return false;
    const std::unique_ptr<void, decltype(&std::free)> probe(std::malloc(size_t(bytes)), &std::free);
    return probe != nullptr;
}

// A mask, and what making it soft takes beside it.
qint64 BytesForSelection(const QSize& size)
{
    return qint64(size.width()) * size.height() * 4;
}

} // namespace

qint64 FreeMemory()
{
    QFile file(QStringLiteral("/proc/meminfo"));
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    qint64 bytes = -1;
    const QList<QByteArray> lines = file.readAll().split('\n');
    for (const QByteArray& line : lines)
    {
        // "MemAvailable:   123456 kB"
        const QList<QByteArray> words = line.simplified().split(' ');
        if (words.size() == 3 && (words.at(0) == "MemAvailable:" || words.at(0) == "SwapFree:"))
            bytes = qMax<qint64>(0, bytes) + words.at(1).toLongLong() * 1024;
    }
    return bytes;
}

QString WhyNotInMemory(const QSize& size, int layers)
{
    return CanBeGiven(BytesFor(size, layers)) ? QString() : NoMemoryForPicture(size, layers);
}

QString NoMemoryForPicture(const QSize& size, int layers)
{
    const qint64 need = BytesFor(size, layers);
    const QString text = layers == 1
        ? Text::tr("A picture of %1 by %2 pixels needs %3 of memory, which is more than there is.")
        : Text::tr("A picture of %1 by %2 pixels in %4 layers needs %3 of memory, which is more than there "
                   "is.");
    const QString sized = text.arg(size.width()).arg(size.height()).arg(QLocale().formattedDataSize(need));
    return layers == 1 ? sized : sized.arg(layers);
}

QString WhyNoMoreLayer(const QSize& size)
{
    const qint64 need = qint64(size.width()) * size.height() * 4;
    if (CanBeGiven(need))
        return QString();
    return Text::tr("One more layer of %1 by %2 pixels needs %3 of memory, which is more than there is.")
        .arg(size.width())
        .arg(size.height())
        .arg(QLocale().formattedDataSize(need));
}

QString WhyNotSelected(const QSize& size)
{
    return CanBeGiven(BytesForSelection(size)) ? QString() : NoMemoryForSelection();
}

QString NoMemoryForSelection()
{
    return Text::tr("There is not enough memory for the selection. It stays as it is.");
}
