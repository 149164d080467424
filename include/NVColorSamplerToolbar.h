#pragma once

#include <QWidget>

#include "generaltoolsgui_export.h"

class Ui_ColorSamplerToolBar;

// The option bar of the colour sampler: how a colour is sampled, and a button that takes all samples away.
// GUI thread only.
class GENERALTOOLSGUI_EXPORT NVColorSamplerToolbar : public QWidget
{
    Q_OBJECT

public:
    explicit NVColorSamplerToolbar(QWidget* parent);
    ~NVColorSamplerToolbar() override;

    // 0 "Point sample" at first, 1 "3x3 average", 2 "5x5 average", 3 "7x7 average"; -1 when nothing is
    // selected.
    int GetSize() const;

public Q_SLOTS:
    // An index that is not in the list leaves it without a selection.
    void SetSize(int index);
    // Disabled at first; the host enables the button as long as there are samples.
    void SetClearEnabled(bool enabled);

Q_SIGNALS:
    // -1 when the selection is gone.
    void SizeChanged(int index);
    void Clear();

private:
    Ui_ColorSamplerToolBar* m_pUi = nullptr;
};
