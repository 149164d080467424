#pragma once

#include "NVBrushToolbarWidget.h"

class IBrush;
class Ui_BlurToolBar;

// The option bar of the blur brush: size, spacing, strength, blend mode, and which layers are sampled. The
// last two have no signal; the host asks for them when the tool acts. What the base calls opacity is the
// strength here. No button opens the pattern popup.
class GENERALTOOLSGUI_EXPORT NVBlurToolbar : public NVBrushToolbarWidget
{
    Q_OBJECT

public:
    explicit NVBlurToolbar(QWidget* parent);
    ~NVBlurToolbar() override;

    // Percent, 0 to 100, default 100.
    int GetOpacity() const;
    // Pixels, 1 to 2500, default 1.
    int GetSize() const;
    // Percent of the size, 1 to 1000, default 1.
    int GetSpacing() const;
    // 0 "Normal" to 12 "Addition", in the order of the list; 0 too when nothing is selected.
    int GetBlendMode() const;
    // Whether the blur takes its pixels from all layers, not from the current one alone; default true.
    bool SampleAll() const;
    void SetSampleAll(bool sampleAll);

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
    void OnCurrentBrushChanged(IBrush* brush);

private:
    Ui_BlurToolBar* m_pUi = nullptr;
    // A modal window that the settings popup opened is in front of it.
    bool m_bPopupBlocked = false;
};
