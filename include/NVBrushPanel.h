#pragma once

#include <QWidget>

#include "generaltoolsgui_export.h"

class IBrush;
class Ui_BrushPanel;

// The side panel that shows how the current brush paints.
class GENERALTOOLSGUI_EXPORT NVBrushPanel : public QWidget
{
    Q_OBJECT

public:
    NVBrushPanel(QWidget* parent, Qt::WindowFlags flags);
    ~NVBrushPanel() override;

public Q_SLOTS:
    // Shows the brush as it is now; the pointer is not kept, so a brush that changes in place is to be given
    // again. Null empties the panel.
    void SetBrush(IBrush* pBrush);

private:
    Ui_BrushPanel* m_pUi = nullptr;
};
