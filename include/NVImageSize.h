#pragma once

#include <QFlags>
#include <QRectF>
#include <QSize>

#include "KXDialog.h"
#include "generaltoolsgui_export.h"

class QDoubleSpinBox;

// The dialog in which a new size in pixels and a new resolution are chosen for an image. It computes nothing
// on the image: the host reads the getters once the dialog was accepted.
//
// The size can be given in pixels, percent of the present size or a unit of length. It is kept in whole
// pixels, and what the boxes show is converted from there. A size that a document cannot have is refused with
// a message when the dialog is to be accepted, and the dialog stays open.
class GENERALTOOLSGUI_EXPORT NVImageSize : public KXDialog
{
    Q_OBJECT

public:
    // The resolution in pixels per inch and the present size in pixels. A resolution beyond 1 to 3200 shows
    // as the nearest of these. Where a side is divided by, one below 1 counts as 1.
    NVImageSize(double dpi, const QSize& size, QWidget* parent);
    ~NVImageSize() override;

    // In pixels; within the limits of a document only if the dialog was accepted.
    QSize GetNewSize() const;
    // Pixels per inch, 1 to 3200.
    double GetDPI() const;
    // Always true as the form stands: nothing enables the box.
    bool IsResample() const;
    // 0 nearest neighbour, 1 bilinear, 2 bicubic.
    int GetResampleMode() const;

    // Chooses which size the lower group shows: the new one if `hide` is true, as at first, else the present
    // one.
    void HideCurrDimensionSection(bool hide);

private Q_SLOTS:
    void OnContrainProportions(bool checked);
    void OnWidthUnitChanged(int index);
    void OnHeightUnitChanged(int index);
    void OnNewWidthChanged(double value);
    void OnNewHeightChanged(double value);
    void OnReset();
    void OnResolutionChanged(double dpi);
    void OnAccepting();

private:
    struct Data;

    // What UpdateDimensions() refreshes.
    enum UpdateFlag
    {
        UpdatePixelWidth = 1,
        UpdatePixelHeight = 2,
        UpdateNewWidth = 4,
        UpdateNewHeight = 8,
        UpdateAll = 15
    };

    void ConnectButtons();
    void FillUnits();
    void ConnectFields();
    void SetSizeDecimals(int decimals);
    // `value` as typed in the unit of that index.
    int TypedPixels(double value, int unit, int currentSide) const;
    void ShowSide(QDoubleSpinBox* box, int unit, int pixels, double percent);
    // Tells which sizes can be accepted.
    void ShowRanges();
    static QString RangesMessage(int unit);

    void UpdateDocumentSize();
    void UpdateDimensions(QFlags<UpdateFlag> flags);
    // The sizes that a document may have, in the unit of that index: left and right for the width, top and
    // bottom for the height.
    QRectF Ranges(bool constrain, int unit, double dpi, int width, int height) const;
    QString GetNormilizedImageSize(qint64 size) const;
    // In bytes.
    qint64 CalcMemorySize(int width, int height) const;

    Data* m_pData;
};
