#pragma once

#include "NVBrushToolbarWidget.h"

class IBrush;
class Ui_StampToolBar;

// The option bar of the clone stamp: size, spacing, opacity, blend mode, which layers are cloned, and whether
// strokes share one offset. The blend mode has no signal; the host asks for it when the tool acts.
class GENERALTOOLSGUI_EXPORT NVStampToolbar : public NVBrushToolbarWidget
{
    Q_OBJECT

public:
    explicit NVStampToolbar(QWidget* parent);
    ~NVStampToolbar() override;

    // Percent, 0 to 100, default 100.
    int GetOpacity() const;
    // Pixels, 1 to 2500, default 1.
    int GetSize() const;
    // Percent of the size, 1 to 1000, default 1.
    int GetSpacing() const;
    // 0 "Normal" to 12 "Addition", in the order of the list; 0 too when nothing is selected.
    int GetBlendMode() const;
    // Whether each stroke uses the offset of the first one; default true.
    bool IsAligned() const;
    void SetAligned(bool aligned);
    // Whether the source is what all layers show together, not the current layer alone; default true.
    bool IsAllLayers() const;
    void SetAllLayers(bool allLayers);

Q_SIGNALS:
    // By hand or by the setter, on change only.
    void Aligned(bool aligned);
    void AllLayers(bool allLayers);

public:
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
    Ui_StampToolBar* m_pUi = nullptr;
    // A modal window that the settings popup opened is in front of it.
    bool m_bPopupBlocked = false;
};
