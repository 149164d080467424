#include "History.h"

#include <QUndoStack>

#include <algorithm>

#include "Document.h"
#include "KXDocumentInterface.h"
#include "SmallPicture.h"
#include "UndoStep.h"

const int History::PictureSide = 48;

namespace
{

quint64 NumberAt(const QUndoStack* stack, int index)
{
    return static_cast<const UndoStep*>(stack->command(index))->GetNumber();
}

} // namespace

History::History(Document* document) : m_pDocument(document)
{
    const QUndoStack* stack = document->GetUndoStack();
    connect(stack, &QUndoStack::indexChanged, this, &History::OnIndexChanged);
    connect(document, &Document::StepsDropped, this, &History::OnStepsDropped);
    // With one layer that is what the document looks like, and nothing has to be composed.
    m_rows += {0, FirstText(), SmallPicture(document->GetPixels()->GetLayer(0).image, PictureSide)};
}

int History::GetCount() const
{
    return m_rows.size();
}

const History::Row& History::GetRow(int row) const
{
    return m_rows.at(row);
}

int History::GetCurrentRow() const
{
    return m_current;
}

int History::FindRow(quint64 number) const
{
    // A step that could not be redone is gone from the stack, which does not tell of it.
    const QUndoStack* stack = m_pDocument->GetUndoStack();
    for (int i = 0; i < stack->count(); ++i)
    {
        if (NumberAt(stack, i) == number)
            return i + 1;
    }
    return number == 0 ? 0 : -1;
}

int History::GetDroppedSteps() const
{
    return m_dropped;
}

void History::OnIndexChanged()
{
    // Steps that could not be carried out, or that others built on which could not, are forgotten.
    if (m_pDocument->GetUndoStack()->count() == 0 && m_rows.size() > 1)
        StartAnew();
    const QVector<Row> rows = RowsOfStack();
    const auto isSame = [](const Row& one, const Row& other) { return one.number == other.number; };
    const auto [was, is] = std::mismatch(m_rows.begin(), m_rows.end(), rows.begin(), rows.end(), isSame);
    const int from = int(is - rows.begin());
    const bool isOther = was != m_rows.end() || is != rows.end();
    const int current = m_pDocument->GetUndoStack()->index();
    const bool hasMoved = current != m_current;
    m_rows = rows;
    m_current = current;
    if (isOther)
        Q_EMIT RowsChanged(from);
    if (isOther || hasMoved)
        Q_EMIT CurrentRowChanged(current);
}

void History::OnStepsDropped(int count)
{
    m_dropped += count;
    m_rows.remove(0, count);
    m_current = qMax(0, m_current - count);
    m_rows.first().number = 0;
    m_rows.first().text = FirstText();
    Q_EMIT RowsDropped(count);
}

void History::StartAnew()
{
    m_dropped += m_current;
    m_rows = {{0, FirstText(), TakePicture()}};
    m_current = 0;
    Q_EMIT RowsChanged(0);
    Q_EMIT CurrentRowChanged(0);
}

QVector<History::Row> History::RowsOfStack() const
{
    const QUndoStack* stack = m_pDocument->GetUndoStack();
    QVector<Row> rows = {m_rows.constFirst()};
    for (int i = 0; i < stack->count(); ++i)
    {
        const quint64 number = NumberAt(stack, i);
        const auto isIt = [number](const Row& row) { return row.number == number; };
        const auto known = std::find_if(m_rows.begin(), m_rows.end(), isIt);
        if (known != m_rows.end())
            rows += *known;
        else
            rows += {number, stack->text(i), TakePicture()};
    }
    return rows;
}

QImage History::TakePicture() const
{
    return SmallPicture(m_pDocument->GetPixels()->GetComposition(), PictureSide);
}

QString History::FirstText() const
{
    if (m_dropped == 0)
        return tr("Opened");
    return m_dropped == 1 ? tr("1 earlier step dropped") : tr("%1 earlier steps dropped").arg(m_dropped);
}
