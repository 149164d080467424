#pragma once

#include <QSize>
#include <QString>

#include "KXAnchorSelection.h"
#include "KXDialog.h"
#include "generaltoolsgui_export.h"

// Asks for a new size of the canvas, in pixels or in a unit of length, and for the anchor around which it
// grows or shrinks. The picture is not resampled.
//
// The size is checked by the ranges of the number boxes alone. A side of the new size can be 0 pixels all the
// same, since what was typed loses its fraction when it is converted, and the side that follows in proportion
// can be 0 or beyond the range of its box: the host looks at the size before it uses it.
//
// Both axes have the same unit, unless another one is chosen for one of them while Shift alone is held.
class GENERALTOOLSGUI_EXPORT NVCanvasSize : public KXDialog
{
    Q_OBJECT

public:
    // Resolution in dots per inch, shown within 1 to 9999; present size in pixels.
    NVCanvasSize(int dpi, const QSize& size, QWidget* parent);
    ~NVCanvasSize() override;

    // In pixels; the present size until something is typed.
    QSize GetNewSize() const;
    // Center until another one is chosen.
    KXAnchorSelection::State GetAnchor() const;

private Q_SLOTS:
    void OnWidthUnitsChanged(int index);
    void OnHeightUnitsChanged(int index);
    void OnHeightChanged(double value);
    void OnWidthChanged(double value);
    void OnDPIChanged(int dpi);
    void OnConstrainProportions(bool on);

private:
    struct Data;

    void ConnectButtonBox();
    void ConnectUnitLabels();
    void ShowCurrentSize(int dpi);
    void FillUnits();
    void ConnectControls();

    void CalcInputRanges();
    void UpdateNewSize();
    QString GetNormilizedImageSize(int size) const;
    int CalcMemorySize(int width, int height) const;
    void ShowHorizontalShrink();
    void ShowVerticalShrink();

    Data* m_pData;
};
