#include "SampleCommand.h"

#include <QUndoStack>

#include "ColorSamples.h"
#include "Document.h"

SampleCommand::SampleCommand(const QString& text, ColorSamples* samples, const QVector<QPoint>& before)
    : UndoStep(text), m_pSamples(samples), m_before(before), m_after(samples->GetPixels())
{
}

// There are no pixels in it, and nothing that a file would be worth.
qint64 SampleCommand::GetMemoryBytes() const
{
    return 0;
}

qint64 SampleCommand::GetBytes() const
{
    return 0;
}

void SampleCommand::MoveToDisk() { }

void SampleCommand::TakeBack()
{
    if (m_pSamples)
        m_pSamples->Set(m_before);
}

void SampleCommand::CarryOut()
{
    if (m_pSamples)
        m_pSamples->Set(m_after);
}

void PushSamples(ColorSamples* samples, const QString& text, const QVector<QPoint>& before)
{
    if (samples->GetPixels() != before)
        samples->GetDocument()->GetUndoStack()->push(new SampleCommand(text, samples, before));
}
