#pragma once

#include "KXDialog.h"
#include "NVTextDeformation.h"
#include "generaltoolsgui_export.h"

class Ui_WarpText;

// Edits style, orientation and amounts of a deformation, and shows the value live: each change of a control,
// by hand or by SetDeformation(), is told once, and GetDeformation() has it then. Accepting or cancelling
// changes nothing in here. It holds no matrix.
class GENERALTOOLSGUI_EXPORT NVWarpTextDialog : public KXDialog
{
    Q_OBJECT

public:
    explicit NVWarpTextDialog(QWidget* parent);
    ~NVWarpTextDialog() override;

    // What the controls show: amounts of two decimals from -100 to 100, style -1 when nothing is selected,
    // and always the identity.
    NVTextDeformation GetDeformation() const;
    // The amounts are clamped and rounded to two decimals; a style that is not in the list leaves it without
    // a selection. Tells of each control that changes.
    void SetDeformation(const NVTextDeformation& deformation);

Q_SIGNALS:
    void DeformationChanged();

private Q_SLOTS:
    void OnStyle(int index);
    void OnVertical(bool checked);
    void OnBend(double percent);
    void OnBend(int hundredths);
    void OnHorizontalDistortion(double percent);
    void OnHorizontalDistortion(int hundredths);
    void OnVerticalDistortion(double percent);
    void OnVerticalDistortion(int hundredths);

private:
    void ConnectSignals();

    Ui_WarpText* m_pUi;
};
