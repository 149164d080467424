#pragma once

#include <QStringList>
#include <QWidget>
#include <memory>

#include "BrushTip.h"
#include "gui_export.h"

class IBrush;
class QModelIndex;

// The brush settings popup: size, spacing, opacity, hardness, shape, pen dynamics, presets and a live stroke
// preview. A window of its own kind (Qt::Tool, no frame), opened where it is told; it moves itself back onto
// the screen.
class GUI_EXPORT KXBrushSettings : public QWidget
{
    Q_OBJECT

public:
    // What the pressure of a pen, or the course of the stroke, may change in a brush.
    enum DynamicProperty
    {
        DynamicSize = 0, // pressure makes the stamp larger
        DynamicHardness = 1, // pressure makes the edge harder
        DynamicColor = 2, // pressure leads from the background to the foreground colour
        DynamicAngle = 3, // the tip turns with the direction of the stroke
        DynamicOpacity = 4, // pressure makes the stamp more opaque
        DynamicScatter = 5 // stamps are strewn about the path
    };
    Q_ENUM(DynamicProperty)

    explicit KXBrushSettings(QWidget* parent);
    ~KXBrushSettings() override;

    // Pixels, 1 to 2500, default 1.
    int GetSize() const;
    // Percent of the size, 1 to 1000, default 1.
    int GetSpacing() const;
    // Percent, 0 to 100, default 100.
    int GetOpacity() const;
    // Never null. The brush belongs to the popup.
    IBrush* GetCurrentBrush() const;
    // Whether a dynamic is offered and switched on.
    bool IsDynamic(DynamicProperty property) const;
    // Offers a dynamic to the person, or takes it out of the popup and lets it count as off. All are offered
    // at first.
    void EnableDynamicProperty(DynamicProperty property, bool enable);

    // The brushes that come with the popup, then those that the person saved.
    QStringList GetPresetNames() const;
    // 0 at first; -1 after the current preset was deleted.
    int GetCurrentPreset() const;
    // The person's own presets, for the host to store.
    QByteArray SavePresets() const;
    // Puts stored presets in place of the person's own. Bytes that are not of SavePresets() are refused with
    // false and change nothing. The current brush stays in any case; when its preset is gone, it is of none.
    bool RestorePresets(const QByteArray& bytes);

    void setVisible(bool visible) override;

public Q_SLOTS:
    // Clamped to the range. Emits the matching signal only on change.
    void SetSize(int pixels);
    void SetSpacing(int percent);
    void SetOpacity(int percent);
    // Clamped; a value that is no number is left out. Emits BrushParameterChanged only on change.
    void SetTip(const BrushTip& tip);
    // Takes tip and spacing of another preset: CurrentBrushChanged, and SpacingChanged where it applies. Of
    // the current preset, it takes back what was changed since. A bad index is ignored.
    void SetCurrentPreset(int index);
    // All are off at first. A dynamic that is not offered keeps its state until it is.
    void SetDynamic(KXBrushSettings::DynamicProperty property, bool on);

Q_SIGNALS:
    void SizeChanged(int pixels);
    void SpacingChanged(int percent);
    void OpacityChanged(int percent);
    // Another preset was chosen.
    void CurrentBrushChanged(IBrush* brush);
    // Shape, hardness, roundness or angle of the current brush changed.
    void BrushParameterChanged(IBrush* brush);
    // The person saved, renamed or deleted a preset.
    void PresetsChanged();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private Q_SLOTS:
    void OnPresetMarked(const QModelIndex& index);
    void OnPresetClicked(const QModelIndex& index);
    void OnShape(int shape);
    void OnHardness(int percent);
    void OnRoundness(int percent);
    void OnAngle(int degrees);
    void OnDynamicToggled(bool on);
    void OnSavePreset();
    void OnRenamePreset();
    void OnDeletePreset();

private:
    struct Data;

    bool askName(const QString& title, QString& name, bool ownName);
    void build();
    void connectForm();
    void showPreset();
    void showValues();
    void showDynamics();
    void showPreview();

    std::unique_ptr<Data> d;
};
