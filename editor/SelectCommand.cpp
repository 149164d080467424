#include "SelectCommand.h"

#include <QTemporaryFile>
#include <QUndoStack>

#include <atomic>
#include <cstring>
#include <numeric>

#include "Document.h"
#include "KXDocumentInterface.h"
#include "ParallelWork.h"
#include "SelectionMask.h"

namespace
{

const int BandRows = 128;
// The fastest: masks are mostly long runs.
const int PackLevel = 1;

int BandsOf(const QRect& bounds)
{
    return (bounds.height() + BandRows - 1) / BandRows;
}

QRect BandAt(const QRect& bounds, int band)
{
    return QRect(bounds.left(), bounds.top() + band * BandRows, bounds.width(), BandRows) & bounds;
}

QByteArray Pack(const QImage& mask, const QRect& rect)
{
    QByteArray bytes(rect.width() * rect.height(), Qt::Uninitialized);
    for (int y = 0; y < rect.height(); ++y)
        std::memcpy(bytes.data() + y * rect.width(), mask.constScanLine(rect.top() + y) + rect.left(),
                    size_t(rect.width()));
    return qCompress(bytes, PackLevel);
}

bool Unpack(const QByteArray& packed, uchar* corner, qsizetype stride, const QSize& size)
{
    const QByteArray bytes = qUncompress(packed);
    if (bytes.size() != size.width() * size.height())
        return false;
    for (int y = 0; y < size.height(); ++y)
        std::memcpy(corner + y * stride, bytes.constData() + y * size.width(), size_t(size.width()));
    return true;
}

} // namespace

MaskStore::MaskStore(const QImage& mask)
{
    Set(mask);
}

MaskStore::~MaskStore() = default;

qint64 MaskStore::GetMemoryBytes() const
{
    qint64 bytes = 0;
    for (const QByteArray& band : m_bands)
        bytes += band.size();
    return bytes;
}

qint64 MaskStore::GetBytes() const
{
    return std::accumulate(m_lengths.cbegin(), m_lengths.cend(), GetMemoryBytes());
}

void MaskStore::MoveToDisk()
{
    if (m_pFile || m_bands.isEmpty())
        return;
    auto file = std::make_unique<QTemporaryFile>();
    if (!file->open())
        return;
    QVector<int> lengths;
    for (const QByteArray& band : qAsConst(m_bands))
    {
        if (file->write(band) != band.size())
            return;
        lengths += band.size();
    }
    if (!file->flush())
        return;
    m_lengths = lengths;
    m_bands.clear();
    m_pFile = std::move(file);
}

bool MaskStore::Load(QImage& mask) const
{
    if (m_size.isEmpty())
    {
        mask = QImage();
        return true;
    }
    QVector<QByteArray> bands;
    QImage loaded(m_size, QImage::Format_Grayscale8);
    if (loaded.isNull() || !ReadBands(bands))
        return false;
    loaded.fill(0);
    uchar* corner = loaded.bits() + m_bounds.left();
    const qsizetype stride = loaded.bytesPerLine();
    std::atomic<bool> isWhole{true};
    const auto unpack = [&](int band)
    {
        const QRect rect = BandAt(m_bounds, band);
        if (!Unpack(bands.at(band), corner + rect.top() * stride, stride, rect.size()))
            isWhole = false;
    };
    RunParallel(bands.size(), unpack);
    if (isWhole)
        mask = loaded;
    return isWhole;
}

void MaskStore::Set(const QImage& mask)
{
    m_pFile.reset();
    m_lengths.clear();
    m_bounds = MaskBounds(mask);
    m_size = m_bounds.isEmpty() ? QSize() : mask.size();
    m_bands = QVector<QByteArray>(BandsOf(m_bounds));
    QByteArray* bands = m_bands.data();
    RunParallel(m_bands.size(), [&](int band) { bands[band] = Pack(mask, BandAt(m_bounds, band)); });
}

bool MaskStore::ReadBands(QVector<QByteArray>& bands) const
{
    bands = m_bands;
    if (!m_pFile)
        return true;
    if (!m_pFile->seek(0))
        return false;
    for (int length : m_lengths)
    {
        bands += m_pFile->read(length);
        if (bands.constLast().size() != length)
            return false;
    }
    return true;
}

SelectCommand::SelectCommand(const QString& text, KXDocumentInterface* document, const QImage& maskAfter)
    : UndoStep(text), m_pDocument(document), m_after(maskAfter)
{
}

void SelectCommand::SetMergeNumber(int number)
{
    m_mergeNumber = number;
}

int SelectCommand::id() const
{
    return m_mergeNumber;
}

// What was before all of them is here already, and what is now is on the document.
bool SelectCommand::mergeWith(const QUndoCommand* other)
{
    return m_mergeNumber >= 0 && dynamic_cast<const SelectCommand*>(other) && other->id() == m_mergeNumber &&
        !other->isObsolete();
}

qint64 SelectCommand::GetMemoryBytes() const
{
    return m_other.GetMemoryBytes();
}

qint64 SelectCommand::GetBytes() const
{
    return m_other.GetBytes();
}

void SelectCommand::MoveToDisk()
{
    m_other.MoveToDisk();
}

void SelectCommand::TakeBack()
{
    Exchange();
}

void SelectCommand::CarryOut()
{
    if (!m_isFirst)
    {
        Exchange();
        return;
    }
    m_isFirst = false;
    m_other.Set(m_pDocument->GetSelectionMask());
    setObsolete(!m_pDocument->SetSelectionMask(m_after));
    m_after = QImage();
}

void SelectCommand::Exchange()
{
    QImage other;
    const QImage before = m_pDocument->GetSelectionMask();
    if (!m_other.Load(other) || !m_pDocument->SetSelectionMask(other))
    {
        setObsolete(true);
        return;
    }
    m_other.Set(before);
}

bool PushSelection(Document* document, const QString& text, const QImage& mask, int mergeNumber)
{
    KXDocumentInterface* pixels = document->GetPixels();
    const QImage after = HasSelected(mask) ? mask : QImage();
    const bool fits = after.isNull() ? mask.isNull() || mask.format() == QImage::Format_Grayscale8
                                     : after.size() == pixels->GetSize();
    if (!fits || after == pixels->GetSelectionMask())
        return false;
    auto* step = new SelectCommand(text, pixels, after);
    step->SetMergeNumber(mergeNumber);
    document->GetUndoStack()->push(step);
    return true;
}
