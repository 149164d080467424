#pragma once

#include <QByteArray>
#include <QImage>
#include <QRect>
#include <QVector>

#include <memory>

#include "UndoStep.h"

class Document;
class KXDocumentInterface;
class QTemporaryFile;

// A selection mask that is kept for later: packed, in memory or in a temporary file. Only what lies within
// its bounds is packed.
class MaskStore
{
public:
    // As SelectionMask.h has them; null for none.
    explicit MaskStore(const QImage& mask = QImage());
    ~MaskStore();

    // In bytes; 0 while it lies in the file.
    qint64 GetMemoryBytes() const;
    // In bytes, wherever it lies.
    qint64 GetBytes() const;
    // It stays in memory when that fails.
    void MoveToDisk();
    // False when the file could not be read or the memory is too short; the image is as it was then.
    bool Load(QImage& mask) const;
    // Another mask in place of the one that was there.
    void Set(const QImage& mask);

private:
    bool ReadBands(QVector<QByteArray>& bands) const;

    QSize m_size;
    // Packed in bands of rows; their lengths are those in the file.
    QRect m_bounds;
    QVector<QByteArray> m_bands;
    QVector<int> m_lengths;
    std::unique_ptr<QTemporaryFile> m_pFile;
};

// A change of the selection as an undo step.
class SelectCommand : public UndoStep
{
public:
    // The first redo, by the stack, gives the document the mask: Grayscale8, as large as the document, or
    // null for no selection. The document is not owned and outlives the step.
    SelectCommand(const QString& text, KXDocumentInterface* document, const QImage& maskAfter);

    // With the same number, not below 0, a step takes those that follow it into itself. None by default.
    void SetMergeNumber(int number);

    int id() const override;
    bool mergeWith(const QUndoCommand* other) override;
    qint64 GetMemoryBytes() const override;
    qint64 GetBytes() const override;
    void MoveToDisk() override;

private:
    // Each drops out of the stack when it can't be carried out.
    void TakeBack() override;
    void CarryOut() override;

    void Exchange();

    KXDocumentInterface* m_pDocument;
    // Until the first redo.
    QImage m_after;
    bool m_isFirst = true;
    int m_mergeNumber = -1;
    MaskStore m_other;
};

// Gives the document another selection as a step of its undo stack. A mask in which nothing is selected
// counts as none. False, and no step, when the selection is that one already or the mask does not fit.
// The merge number is that of SelectCommand.
bool PushSelection(Document* document, const QString& text, const QImage& mask, int mergeNumber = -1);
