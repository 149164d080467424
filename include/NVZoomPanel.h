#pragma once

#include <QWidget>

#include "generaltoolsgui_export.h"

class KXDocumentInterface;
class Ui_ZoomPanel;

// The side panel of the zoom tool: a loupe over a document, with its scale and its grid. GUI thread only.
class GENERALTOOLSGUI_EXPORT NVZoomPanel : public QWidget
{
    Q_OBJECT

public:
    explicit NVZoomPanel(QWidget* parent);
    ~NVZoomPanel() override;

    // 1 to 32, 1 at first.
    int GetZoomValue() const;
    // 0 "None" at first, 1 "Standard", 2 "Lighten", 3 "Darken"; -1 when nothing is selected.
    int GetGridType() const;

public Q_SLOTS:
    // Clamped to its range.
    void SetZoomValue(int value);
    // An index that is not in the list leaves it without a selection, and the loupe without a grid.
    void SetGridType(int index);
    // The document pixel in the middle of the loupe.
    void SetLookPosition(QPoint position);
    // What the loupe shows of the document, as CameraView::SetDocument says; all of it without a value. The
    // document is not owned and may be null.
    void SetDocument(KXDocumentInterface* document);
    void SetDocument(KXDocumentInterface* document, uint value);

private:
    Ui_ZoomPanel* m_pUi = nullptr;
};
