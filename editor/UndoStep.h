#pragma once

#include <QUndoCommand>

// An undo step of a document, which asks its steps how much they hold, has old ones put it away, and drops
// the oldest.
class UndoStep : public QUndoCommand
{
public:
    explicit UndoStep(const QString& text);

    // Tells it from all other steps of the program. Later steps have higher numbers.
    quint64 GetNumber() const;
    // What it holds of pixels, in bytes: in memory, and wherever that is. None, unless a step says otherwise.
    virtual qint64 GetMemoryBytes() const;
    virtual qint64 GetBytes() const;
    // Puts the pixels into a temporary file until they are needed. They stay in memory when that fails.
    virtual void MoveToDisk();
    // While it is passed over, undo() and redo() change nothing: the stack may walk to its bottom and back.
    void SetPassedOver(bool passedOver);

    void undo() final;
    void redo() final;

private:
    virtual void TakeBack() = 0;
    // The first call comes when the step is pushed.
    virtual void CarryOut() = 0;

    quint64 m_number;
    bool m_isPassedOver = false;
};
