#pragma once

#include <QWidget>

#include "generaltoolsgui_export.h"

class Ui_ColorPickerToolBar;

// The option bar of the colour picker: how a colour is sampled, and the place and the colour under the
// pointer, which the host hands over as ready-made texts. GUI thread only.
class GENERALTOOLSGUI_EXPORT NVColorPickerToolbar : public QWidget
{
    Q_OBJECT

public:
    explicit NVColorPickerToolbar(QWidget* parent);
    ~NVColorPickerToolbar() override;

    // 0 "Point sample" at first, 1 "3x3 average", 2 "5x5 average", 3 "7x7 average"; -1 when nothing is
    // selected.
    int GetSize() const;
    // 0 "Current Layer", 1 "All layers" at first; -1 when nothing is selected.
    int GetMode() const;

public Q_SLOTS:
    // An index that is not in the list leaves it without a selection; that holds for the mode too.
    void SetSize(int index);
    void SetMode(int index);
    // Any text; one that is too long is cut.
    void SetX(const QString& text);
    void SetY(const QString& text);
    void SetRed(const QString& text);
    void SetGreen(const QString& text);
    void SetBlue(const QString& text);
    void SetOpacity(const QString& text);
    // Fills the swatch, without a frame; what is transparent in the colour lets the bar be seen.
    void SetColor(const QColor& color);
    // The six captions of the texts; the texts themselves stay.
    void SetDelimsVisible(bool visible);

Q_SIGNALS:
    // -1 when the selection is gone; that holds for the mode too.
    void SizeChanged(int index);
    void ModeChanged(int index);

private:
    Ui_ColorPickerToolBar* m_pUi = nullptr;
};
