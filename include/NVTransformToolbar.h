#pragma once

#include <QWidget>

#include "TransformationCenterPointControl.h"
#include "generaltoolsgui_export.h"

class QString;
class Ui_TransformToolBar;

// The option bar of free transform: shows position, scale, angle and skew as the host words them, lets a
// person choose the reference point, and has a button each to apply and to cancel. Nothing can be typed.
class GENERALTOOLSGUI_EXPORT NVTransformToolbar : public QWidget
{
    Q_OBJECT

public:
    explicit NVTransformToolbar(QWidget* parent);
    ~NVTransformToolbar() override;

    // Center at first.
    TransformationCenterPointControl::ControlState GetTransformationCenter() const;

public Q_SLOTS:
    // Any text is shown as it is.
    void SetX(const QString& text);
    void SetY(const QString& text);
    void SetWidth(const QString& text);
    void SetHeight(const QString& text);
    void SetAngle(const QString& text);
    void SetHorizontalSkew(const QString& text);
    void SetVerticalSkew(const QString& text);
    // A value that is none of the nine chooses the upper left.
    void SetTransformationCenter(TransformationCenterPointControl::ControlState state);

Q_SIGNALS:
    void Commit();
    void Cancel();
    // The reference point is about to be another one, and is; in this order. In the first,
    // GetTransformationCenter() is still what it was.
    void TransformationCenterChange(TransformationCenterPointControl::ControlState state);
    void TransformationCenterChanged(TransformationCenterPointControl::ControlState state);

private:
    Q_DISABLE_COPY(NVTransformToolbar)

    void ConnectSignals();
    void StateRanges();

    Ui_TransformToolBar* m_pUi = nullptr;
};
