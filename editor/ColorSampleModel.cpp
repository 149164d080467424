#include "ColorSampleModel.h"

#include "ColorReadOut.h"
#include "ColorSamples.h"
#include "ColorSampling.h"
#include "Document.h"
#include "KXColorSampleDelegate.h"
#include "KXDocumentInterface.h"

ColorSampleModel::ColorSampleModel(QObject* parent) : QAbstractListModel(parent) { }

void ColorSampleModel::SetDocument(Document* document)
{
    KXDocumentInterface* pixels = document ? document->GetPixels() : nullptr;
    if (pixels == m_pPixels)
        return;
    beginResetModel();
    Detach();
    m_pPixels = pixels;
    if (pixels)
    {
        m_pSamples = ColorSamples::Of(document);
        connect(m_pSamples, &ColorSamples::Changed, this, &ColorSampleModel::OnSamplesChanged);
        connect(pixels, &KXDocumentInterface::CompositionChanged, this, &ColorSampleModel::OnPictureChanged);
        connect(pixels, &QObject::destroyed, this, &ColorSampleModel::OnGone);
    }
    ReadColors();
    endResetModel();
}

ColorSamples* ColorSampleModel::GetSamples() const
{
    return m_pSamples;
}

QColor ColorSampleModel::GetColor(int row) const
{
    return m_colors.value(row);
}

int ColorSampleModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_colors.size();
}

QVariant ColorSampleModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || !m_pSamples || index.row() >= qMin(m_colors.size(), m_pSamples->Count()))
        return QVariant();
    const QColor color = m_colors.at(index.row());
    const QPoint pixel = m_pSamples->GetPixel(index.row());
    switch (role)
    {
    case Qt::DecorationRole:
        return color.isValid() ? QVariant(color) : QVariant();
    case Qt::DisplayRole:
        return tr("X: %1  Y: %2").arg(pixel.x()).arg(pixel.y());
    case KXColorSampleDelegate::DetailRole:
        return color.isValid() ? ColorReadOut(color) : tr("outside of the picture");
    case Qt::AccessibleTextRole:
        return tr("Sample %1, %2, %3")
            .arg(index.row() + 1)
            .arg(data(index, Qt::DisplayRole).toString(),
                 data(index, KXColorSampleDelegate::DetailRole).toString());
    default:
        return QVariant();
    }
}

void ColorSampleModel::SetSide(int side)
{
    if (side == m_side)
        return;
    m_side = side;
    OnRefresh();
}

void ColorSampleModel::OnSamplesChanged()
{
    if (m_pSamples->Count() == m_colors.size())
    {
        OnRefresh();
        return;
    }
    beginResetModel();
    ReadColors();
    endResetModel();
}

// A stroke tells many times between two turns of the event loop.
void ColorSampleModel::OnPictureChanged(const QRect& area)
{
    Q_UNUSED(area)
    if (m_colors.isEmpty() || m_isStale)
        return;
    m_isStale = true;
    QMetaObject::invokeMethod(this, &ColorSampleModel::OnRefresh, Qt::QueuedConnection);
}

void ColorSampleModel::OnGone()
{
    beginResetModel();
    Detach();
    m_colors.clear();
    endResetModel();
}

void ColorSampleModel::OnRefresh()
{
    m_isStale = false;
    ReadColors();
    if (!m_colors.isEmpty())
        Q_EMIT dataChanged(index(0), index(m_colors.size() - 1));
}

void ColorSampleModel::Detach()
{
    if (m_pSamples)
        disconnect(m_pSamples, nullptr, this, nullptr);
    if (m_pPixels)
        disconnect(m_pPixels, nullptr, this, nullptr);
    m_pSamples = nullptr;
    m_pPixels = nullptr;
}

void ColorSampleModel::ReadColors()
{
    m_colors.clear();
    if (!m_pSamples || !m_pPixels || m_pSamples->Count() == 0)
        return;
    const QImage& picture = m_pPixels->GetComposition();
    for (int i = 0; i < m_pSamples->Count(); ++i)
        m_colors += SampleColor(picture, m_pSamples->GetPixel(i), m_side);
}
