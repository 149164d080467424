#pragma once

#include <QUndoCommand>

// An undo step of a document, which asks its steps how much they hold and has old ones put it away.
class UndoStep : public QUndoCommand
{
public:
    using QUndoCommand::QUndoCommand;

    // What it holds in memory of pixels, in bytes.
    virtual qint64 GetMemoryBytes() const = 0;
    // Puts the pixels into a temporary file until they are needed. They stay in memory when that fails.
    virtual void MoveToDisk() = 0;
};
