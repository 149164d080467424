#pragma once

#include <QFrame>
#include <QVector>

#include "BrushStroke_p.h"
#include "KXBrushSettings.h"

class BrushPresetModel;
class QCheckBox;
class QListView;
class QPushButton;
class KXCommonComboBox;
class SliderBox;

// A strip that shows how a stroke of the brush looks, no taller than itself.
class StrokePreview : public QFrame
{
    Q_OBJECT

public:
    explicit StrokePreview(QWidget* parent);

    // The diameter is in device-independent pixels. The colour may change over the stroke.
    void SetStroke(const BrushStroke& stroke, bool colored);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    BrushStroke m_stroke;
    StrokePicture m_picture;
    bool m_colored = false;
};

// The controls of the brush settings popup. They are made when the popup is first shown and hold no state
// that counts.
class BrushSettingsForm : public QWidget
{
    Q_OBJECT

public:
    BrushSettingsForm(BrushPresetModel* presets, QWidget* parent);

    QListView* pPresets;
    QPushButton* pSave;
    QPushButton* pRename;
    QPushButton* pDelete;
    StrokePreview* pPreview;
    SliderBox* pSize;
    SliderBox* pSpacing;
    SliderBox* pOpacity;
    KXCommonComboBox* pShape;
    SliderBox* pHardness;
    SliderBox* pRoundness;
    SliderBox* pAngle;
    // In the order of KXBrushSettings::DynamicProperty.
    QVector<QCheckBox*> dynamics;
    // Holds the dynamics.
    QWidget* pDynamics;

protected:
    void changeEvent(QEvent* event) override;

private:
    QWidget* makePresets(BrushPresetModel* presets);
    QWidget* makeValues();
    QWidget* makeDynamics();
    void drawShapes();
};
