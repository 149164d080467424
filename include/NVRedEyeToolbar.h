#pragma once

#include <QWidget>

#include "generaltoolsgui_export.h"

class Ui_RedEye;

// The option bar of the red-eye tool. It has no signals; the host asks for the level when the tool acts.
class GENERALTOOLSGUI_EXPORT NVRedEyeToolbar : public QWidget
{
public:
    NVRedEyeToolbar(QWidget* parent, Qt::WindowFlags flags);
    ~NVRedEyeToolbar() override;

    // The level: 0.01 to 10, default 1.
    double GetIntensity() const;
    // Rounded to hundredths and clamped. A value that is no number is left out.
    void SetIntensity(double intensity);

private:
    Q_DISABLE_COPY(NVRedEyeToolbar)

    Ui_RedEye* m_pUi = nullptr;
};
