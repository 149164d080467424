#pragma once

#include "NVBrushToolbarWidget.h"

class IBrush;
class Ui_BrushToolBar;

// The option bar of the paint brush: size, spacing, opacity, brush settings, pattern, fill mode and blend
// mode. The last two have no signal; the host asks for them when the tool acts.
class GENERALTOOLSGUI_EXPORT NVBrushToolbar : public NVBrushToolbarWidget
{
    Q_OBJECT

public:
    explicit NVBrushToolbar(QWidget* parent);
    ~NVBrushToolbar() override;

    // Percent, 0 to 100, default 100.
    int GetOpacity() const;
    // Pixels, 1 to 2500, default 1.
    int GetSize() const;
    // Percent of the size, 1 to 1000, default 1.
    int GetSpacing() const;
    // 0 "Normal" to 12 "Addition", in the order of the list; 0 too when nothing is selected.
    int GetBlendMode() const;
    // The fill mode: 0 "Color", 1 "Pattern", 2 "Pattern+Color", 3 "Gradient", 4 "Pattern+Gradient", 5 "Random
    // Color"; 0 too when nothing is selected.
    int GetStyle() const;
    // An index behind the end selects the last mode.
    void SetStyle(unsigned int index);

    bool eventFilter(QObject* object, QEvent* event) override;
    void SetOpacityValue(int percent) override;
    void SetSizeValue(int pixels) override;
    void SetSpacingValue(int percent) override;
    // The three do nothing while the list of blend modes is disabled.
    void SetNextBlendMode() override;
    void SetPreviousBlendMode() override;
    // An index that is not in the list leaves it without a selection.
    void SetBlendModeValue(int index) override;

private Q_SLOTS:
    void OnShowSettingsMenu(bool checked);
    void OnShowPatternsMenu(bool checked);
    void OnPatternChanged(int index);
    void OnHidePatterns(int index);
    void OnCurrentBrushChanged(IBrush* brush);

private:
    void ConnectPatterns();
    void ConnectValues();
    void ConnectSettings();

    Ui_BrushToolBar* m_pUi = nullptr;
    // A modal window that the settings popup opened is in front of it.
    bool m_bPopupBlocked = false;
};
