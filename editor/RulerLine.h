#pragma once

#include <QLineF>
#include <QObject>

class Document;

// The line of the ruler on a document, in document pixels. It goes when the document gets another size. GUI
// thread only.
class RulerLine : public QObject
{
    Q_OBJECT

public:
    // That of the document, which it belongs to.
    static RulerLine* Of(Document* document);

    // Null when there is none.
    QLineF Get() const;
    bool IsNull() const;
    // A line without length takes it away.
    void Set(const QLineF& line);

public Q_SLOTS:
    void Clear();

Q_SIGNALS:
    void Changed();

private:
    explicit RulerLine(Document* document);

    QLineF m_line;
};

// The end of a line from the fixed point, turned about it to the nearest direction of whole 45 degrees.
QPointF SnappedEnd(const QPointF& fixed, const QPointF& end);
