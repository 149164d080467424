#include "UndoStep.h"

UndoStep::UndoStep(const QString& text) : QUndoCommand(text)
{
    static quint64 lastNumber = 0;
    m_number = ++lastNumber;
}

quint64 UndoStep::GetNumber() const
{
    return m_number;
}

qint64 UndoStep::GetMemoryBytes() const
{
    return 0;
}

qint64 UndoStep::GetBytes() const
{
    return 0;
}

void UndoStep::MoveToDisk() { }

void UndoStep::SetPassedOver(bool passedOver)
{
    m_isPassedOver = passedOver;
}

void UndoStep::undo()
{
    if (!m_isPassedOver)
        TakeBack();
}

void UndoStep::redo()
{
    if (!m_isPassedOver)
        CarryOut();
}
