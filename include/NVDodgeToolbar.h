#pragma once

#include "NVBrushToolbarWidget.h"

class IBrush;
class Ui_DodgeToolBar;

// The option bar of the dodge brush: size, spacing, range of tones and exposure. The last two have no signal;
// the host asks for them when the tool acts. None of the keys has an effect on it, and no button opens the
// pattern popup.
class GENERALTOOLSGUI_EXPORT NVDodgeToolbar : public NVBrushToolbarWidget
{
    Q_OBJECT

public:
    explicit NVDodgeToolbar(QWidget* parent);
    ~NVDodgeToolbar() override;

    // Pixels, 1 to 2500, default 1.
    int GetSize() const;
    // Percent of the size, 1 to 1000, default 1.
    int GetSpacing() const;
    // The tones that are lightened: 0 "Shadows", 1 "Midtones", 2 "Highlights", default 2; -1 when nothing is
    // selected.
    int GetRange() const;
    // An index that is not in the list leaves it without a selection.
    void SetRange(int index);
    // Percent, 0 to 100, default 50.
    int GetExposure() const;
    void SetExposure(int percent);
    // The picture at the start of the bar. The name is loaded as it is: it must fit the density of the screen
    // already. One that cannot be loaded leaves the place empty.
    void SetIcon(const QString& name);

    bool eventFilter(QObject* object, QEvent* event) override;
    void SetSizeValue(int pixels) override;
    void SetSpacingValue(int percent) override;

private Q_SLOTS:
    void OnShowSettingsMenu(bool checked);
    void OnCurrentBrushChanged(IBrush* brush);

private:
    Ui_DodgeToolBar* m_pUi = nullptr;
    // A modal window that the settings popup opened is in front of it.
    bool m_bPopupBlocked = false;
};
