#pragma once

#include <QWidget>

#include "generaltoolsgui_export.h"

class Ui_CropToolBarStart;

// The option bar of the crop tool while there is no crop rectangle yet: the size that the crop is to have.
//
// A side of 0 pixels is one that is not set; its box is empty then. A signal tells a change by hand and by
// slot alike, and never goes out for the value that is there already. GUI thread only.
class GENERALTOOLSGUI_EXPORT NVCropToolbarStart : public QWidget
{
    Q_OBJECT

public:
    explicit NVCropToolbarStart(QWidget* parent);
    ~NVCropToolbarStart() override;

    // Pixels, 0 to 10000, default 0.
    int GetWidth() const;
    int GetHeight() const;
    // Whether both boxes show an empty text. While one is being typed in, that is not yet what its value
    // says.
    bool IsClear() const;

public Q_SLOTS:
    // Pixels; clamped to 0 to 10000.
    void SetWidth(int width);
    void SetHeight(int height);
    // The button "From Image" is disabled until there is an image to take values from.
    void EnableFromImage(bool enabled);
    // Sets both sides to 0, the width first.
    void Clear();
    // Exchanges the sides.
    void Swap();

Q_SIGNALS:
    // The host is to set the size of its image.
    void FromImage();
    void WidthChanged(int width);
    void HeightChanged(int height);

private:
    Q_DISABLE_COPY(NVCropToolbarStart)

    Ui_CropToolBarStart* m_pUi = nullptr;
};
