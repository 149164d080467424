#pragma once

#include <QObject>
#include <QPoint>
#include <QVector>

class Document;

// The colour samples of a document: pixels whose colour is watched. They are no part of the picture;
// SampleCommand makes an undo step of a change. When the document gets another size, they stay on their
// pixels, so that one which has gone out of the picture is back when the size is. GUI thread only.
class ColorSamples : public QObject
{
    Q_OBJECT

public:
    static const int MAX_SAMPLES;

    // Those of the document, which they belong to.
    static ColorSamples* Of(Document* document);

    Document* GetDocument() const;
    int Count() const;
    bool IsFull() const;
    // The index must be valid.
    QPoint GetPixel(int index) const;
    QVector<QPoint> GetPixels() const;
    // The one that is worked with; -1 for none.
    int GetCurrent() const;

    // Becomes the current one. Its index, or -1 when there are as many as there may be.
    int Add(const QPoint& pixel);
    // In these a bad index is ignored.
    void Move(int index, const QPoint& pixel);
    // Those behind it move up.
    void Remove(int index);
    // All at once, at most as many as there may be. The current one stays so, where it is still there.
    void Set(const QVector<QPoint>& pixels);

public Q_SLOTS:
    void Clear();
    // An index that is not there stands for none.
    void SetCurrent(int index);

Q_SIGNALS:
    // One came, went or was moved.
    void Changed();
    // Comes behind Changed. Also when the number of the current one is another.
    void CurrentChanged(int index);

private:
    explicit ColorSamples(Document* document);

    Document* m_pDocument;
    QVector<QPoint> m_pixels;
    int m_current = -1;
};
