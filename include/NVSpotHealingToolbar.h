#pragma once

#include "NVBrushToolbarWidget.h"

class IBrush;
class Ui_SpotHealingToolBar;

// The option bar of the spot healing brush: size and spacing, with the brush settings. None of the keys has
// an effect on it.
class GENERALTOOLSGUI_EXPORT NVSpotHealingToolbar : public NVBrushToolbarWidget
{
    Q_OBJECT

public:
    explicit NVSpotHealingToolbar(QWidget* parent);
    ~NVSpotHealingToolbar() override;

    // Pixels, 1 to 2500, default 1.
    int GetSize() const;
    // Percent of the size, 1 to 1000, default 1.
    int GetSpacing() const;

    bool eventFilter(QObject* object, QEvent* event) override;
    void SetSizeValue(int pixels) override;
    void SetSpacingValue(int percent) override;

private Q_SLOTS:
    void OnShowSettingsMenu(bool checked);
    void OnCurrentBrushChanged(IBrush* brush);

private:
    Ui_SpotHealingToolBar* m_pUi = nullptr;
    // A modal window that the settings popup opened is in front of it.
    bool m_bPopupBlocked = false;
};
