#include "SampleCommand.h"

#include <QUndoStack>

#include "ColorSamples.h"
#include "Document.h"

SampleCommand::SampleCommand(const QString& text, ColorSamples* samples, const QVector<QPoint>& before)
    : UndoStep(text), m_pSamples(samples), m_before(before), m_after(samples->GetPixels())
{
}

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
