#pragma once

#include "NVBrushToolbarWidget.h"

class IBrush;
class Ui_EraserToolBar;

// The option bar of the eraser: size, spacing and opacity, with the brush settings. The keys of the blend
// modes have no effect on it.
class GENERALTOOLSGUI_EXPORT NVEraserToolbar : public NVBrushToolbarWidget
{
    Q_OBJECT

public:
    explicit NVEraserToolbar(QWidget* parent);
    ~NVEraserToolbar() override;

    // Percent, 0 to 100, default 100.
    int GetOpacity() const;
    // Pixels, 1 to 2500, default 1.
    int GetSize() const;
    // Percent of the size, 1 to 1000, default 1.
    int GetSpacing() const;

    bool eventFilter(QObject* object, QEvent* event) override;
    void SetOpacityValue(int percent) override;
    void SetSizeValue(int pixels) override;
    void SetSpacingValue(int percent) override;

private Q_SLOTS:
    void OnShowSettingsMenu(bool checked);
    void OnCurrentBrushChanged(IBrush* brush);

private:
    Ui_EraserToolBar* m_pUi = nullptr;
    // A modal window that the settings popup opened is in front of it.
    bool m_bPopupBlocked = false;
};
