#pragma once

#include <QColor>
#include <QWidget>

#include "generaltoolsgui_export.h"

class Ui_CropToolBarMain;

// The option bar of the crop tool while a crop rectangle is on the canvas: its angle and size, the shield
// (the shade over the area that will go), what becomes of that area, the guides over the rectangle, and the
// buttons that end the crop.
//
// A signal tells a change by hand and by slot alike, and never goes out for the value that is there already.
// GUI thread only.
class GENERALTOOLSGUI_EXPORT NVCropToolbarMain : public QWidget
{
    Q_OBJECT

public:
    explicit NVCropToolbarMain(QWidget* parent);
    ~NVCropToolbarMain() override;

    // Degrees, -180 to 180, default 0.
    double GetAngle() const;
    // Pixels, 1 to 9999, default 1.
    int GetWidth() const;
    // The height, in pixels as the width. Spelled so.
    int GetHight() const;
    // Default true.
    bool IsShieldEnabled() const;
    // Default black.
    QColor GetShieldColor() const;
    // Percent, 0 to 100, default 50.
    int GetShieldOpacity() const;
    // True for "Delete", the default, false for "Hide".
    bool IsDeleteArea() const;
    // 0 "None", the default, 1 "Rule of Thirds", 2 "Grid"; -1 when nothing is selected.
    int GetGuideOverlayType() const;
    // A state of TransformationCenterPointControl, at first its own default.
    int GetAnchor() const;

public Q_SLOTS:
    // Degrees; rounded to hundredths and clamped. A value that is no number is left out.
    void SetAngle(double angle);
    // Pixels; clamped to 1 to 9999.
    void SetWidth(int width);
    void SetHeight(int height);
    // Without a shield its color and its opacity can't be changed by hand.
    void SetShieldEnabled(bool enabled);
    // The button shows the color from the first one on that is another than black.
    void SetShieldColor(const QColor& color);
    // Percent; clamped to 0 to 100.
    void SetShieldOpacity(int percent);
    void SetDeleteArea(bool deleteArea);
    // An index that is not in the list leaves it without a selection.
    void SetGuideOverlayType(int index);
    // As TransformationCenterPointControl::SetState() takes it.
    void SetAnchor(int state);

Q_SIGNALS:
    void AngleChanged(double angle);
    void WidthChanged(int width);
    void HeightChanged(int height);
    void ShieldEnabled(bool enabled);
    // While the color dialog is open, of each choice in it at once; when it is cancelled, of the color
    // before.
    void ShieldColorChanged(const QColor& color);
    void ShieldOpacityChanged(int percent);
    void DeleteAreaChanged(bool deleteArea);
    void GuideOverlayChanged(int index);
    void Commit();
    void Cancel();
    void NewDocument();
    void AnchorChanged(int state);

private Q_SLOTS:
    void OnShieldColor();

private:
    Q_DISABLE_COPY(NVCropToolbarMain)

    void ConnectFrame();
    void ConnectShield();
    void ConnectOperations();
    void SetButtonColor(const QColor& color);

    Ui_CropToolBarMain* m_pUi = nullptr;
    QColor m_ShieldColor = Qt::black;
};
