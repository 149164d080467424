#pragma once

#include <QFlags>

#include "KXDialog.h"
#include "generaltoolsgui_export.h"

class Ui_AutoCrop;

// Asks how the borders of a picture are to be cropped: what counts as background, on which sides, and how far
// a colour may be from the background. The host sets the values before Exec() if it wants to offer the last
// ones, and crops.
class GENERALTOOLSGUI_EXPORT NVAutoCrop : public KXDialog
{
    Q_OBJECT

public:
    // The background.
    enum Mode
    {
        ModeTransparent, // transparent pixels
        ModeLeftTop, // the colour of the pixel in the upper left corner
        ModeBottomRight, // the colour of the pixel in the lower right corner
        ModeAuto // the host finds out
    };
    Q_ENUM(Mode)

    // A side that is cropped.
    enum Area
    {
        AreaLeft = 1,
        AreaTop = 2,
        AreaRight = 4,
        AreaBottom = 8
    };
    Q_DECLARE_FLAGS(Areas, Area)
    Q_FLAG(Areas)

    explicit NVAutoCrop(QWidget* parent);
    ~NVAutoCrop() override;

    // ModeAuto at first, and whenever no other mode is chosen.
    Mode GetMode() const;
    // All four sides at first. May be none.
    QFlags<Area> GetArea() const;
    // 0 to 255, at first 15.
    int GetTolerance() const;

    void SetMode(Mode mode);
    void SetArea(QFlags<Area> area);
    // Clamped.
    void SetTolerance(int tolerance);

private:
    Ui_AutoCrop* m_pUi;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(NVAutoCrop::Areas)
