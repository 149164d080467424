#pragma once

#include <QPoint>
#include <QPointer>
#include <QVector>

#include "UndoStep.h"

class ColorSamples;

// A change of the colour samples of a document as an undo step.
class SampleCommand : public UndoStep
{
public:
    // The samples have been changed already. They are not owned.
    SampleCommand(const QString& text, ColorSamples* samples, const QVector<QPoint>& before);

private:
    void TakeBack() override;
    void CarryOut() override;

    QPointer<ColorSamples> m_pSamples;
    QVector<QPoint> m_before;
    QVector<QPoint> m_after;
};

// Makes a step of their document's undo stack of what has changed in the samples since they were these. No
// step, when they are these still.
void PushSamples(ColorSamples* samples, const QString& text, const QVector<QPoint>& before);
