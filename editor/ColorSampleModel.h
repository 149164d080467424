#pragma once

#include <QAbstractListModel>
#include <QColor>
#include <QPointer>
#include <QVector>

class ColorSamples;
class Document;
class KXDocumentInterface;

// The colour samples of a document as rows for KXColorSampleDelegate: place and colour, which follow each
// change of the picture as it looks.
class ColorSampleModel : public QAbstractListModel
{
    Q_OBJECT

public:
    explicit ColorSampleModel(QObject* parent = nullptr);

    // Not owned; null for none. It may go by itself.
    void SetDocument(Document* document);
    // Null without a document.
    ColorSamples* GetSamples() const;
    // Invalid outside of the picture. As it was when the event loop ran last.
    QColor GetColor(int row) const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

public Q_SLOTS:
    // The side of the square whose mean is shown, 1 at first.
    void SetSide(int side);

private Q_SLOTS:
    void OnSamplesChanged();
    void OnPictureChanged(const QRect& area);
    void OnGone();
    void OnRefresh();

private:
    void Detach();
    void ReadColors();

    QPointer<KXDocumentInterface> m_pPixels;
    QPointer<ColorSamples> m_pSamples;
    QVector<QColor> m_colors;
    int m_side = 1;
    bool m_isStale = false;
};
