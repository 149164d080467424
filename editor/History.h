#pragma once

#include <QImage>
#include <QObject>
#include <QString>
#include <QVector>

class Document;

// The steps of a document as rows: first the state that the oldest step was made on, then one row a step,
// each with a small picture of the document as the step left it. The document's stack has as many steps as
// there are rows after the first.
class History : public QObject
{
    Q_OBJECT

public:
    struct Row
    {
        // UndoStep::GetNumber(); 0 for the first row.
        quint64 number = 0;
        QString text;
        QImage picture;
    };

    // Pixels of the longer side of a picture.
    static const int PictureSide;

    // The document is not owned and outlives this; its stack is empty.
    explicit History(Document* document);

    // At least one.
    int GetCount() const;
    // The index must be valid.
    const Row& GetRow(int row) const;
    // The present state; rows below it were undone.
    int GetCurrentRow() const;
    // -1 if the step is not there any more.
    int FindRow(quint64 number) const;
    // How many steps there were before the first row that can't be gone back to any more.
    int GetDroppedSteps() const;

Q_SIGNALS:
    // The first rows are gone: row `count` is row 0 now, with another text.
    void RowsDropped(int count);
    // These rows and all below are others, or gone.
    void RowsChanged(int from);
    void CurrentRowChanged(int row);

private Q_SLOTS:
    void OnIndexChanged();
    void OnStepsDropped(int count);

private:
    void StartAnew();
    QVector<Row> RowsOfStack() const;
    QImage TakePicture() const;
    QString FirstText() const;

    Document* m_pDocument;
    QVector<Row> m_rows;
    int m_current = 0;
    int m_dropped = 0;
};
