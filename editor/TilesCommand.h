#pragma once

#include <QRect>
#include <QUndoCommand>
#include <QVector>

#include <memory>

#include "ImageTiles.h"

class KXDocumentInterface;
class QTemporaryFile;

// A change of a layer, such as a stroke, as an undo step: the tiles that it touched, as they were before,
// swapped with those of the layer.
class TilesCommand : public QUndoCommand
{
public:
    // The change is on the layer already. The document is not owned and outlives the step.
    TilesCommand(const QString& text, KXDocumentInterface* document, int layer, QVector<SavedTile> tiles);
    ~TilesCommand() override;

    void undo() override;
    // The first call, by the stack, does nothing.
    void redo() override;

    // What the tiles hold in memory, in bytes.
    qint64 GetMemoryBytes() const;
    // Puts the tiles into a temporary file until they are needed. They stay in memory when that fails.
    void MoveToDisk();

private:
    void Exchange();
    bool LoadFromDisk();

    KXDocumentInterface* m_pDocument;
    int m_layer;
    QVector<SavedTile> m_tiles;
    QRect m_area;
    std::unique_ptr<QTemporaryFile> m_pFile;
    bool m_isFirst = true;
};
