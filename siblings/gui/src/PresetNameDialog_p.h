#pragma once

#include "KXDialog.h"

class BrushPresetModel;
class QLabel;
class QLineEdit;
class QPushButton;

// Asks for the name of a brush preset. It can be accepted only with a name that no other preset has.
class PresetNameDialog : public KXDialog
{
    Q_OBJECT

public:
    // The name that stands there at first is allowed as well when it is the preset's own.
    PresetNameDialog(const QString& title, const QString& name, bool ownName, const BrushPresetModel* presets,
                     QWidget* parent);

    // Without blanks at the ends.
    QString GetName() const;

private Q_SLOTS:
    void OnTextChanged();

private:
    const BrushPresetModel* m_pPresets;
    QString m_ownName;
    QLineEdit* m_pName;
    QLabel* m_pHint;
    QPushButton* m_pOk;
};
