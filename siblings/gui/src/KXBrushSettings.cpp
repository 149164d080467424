#include "KXBrushSettings.h"

#include <QCheckBox>
#include <QKeyEvent>
#include <QListView>
#include <QPointer>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStyleOptionFrame>
#include <QStylePainter>
#include <QVBoxLayout>
#include <cmath>

#include "BrushPresetView_p.h"
#include "BrushSettingsForm_p.h"
#include "Brush_p.h"
#include "KXCommonComboBox.h"
#include "KXMessageBox.h"
#include "PresetNameDialog_p.h"
#include "ScreenPlacement.h"
#include "SliderBox_p.h"

namespace
{

const int MaxSize = 2500;
const int MaxSpacing = 1000;
const int DynamicCount = 6;

bool isDynamic(int property)
{
    return property >= 0 && property < DynamicCount;
}

} // namespace

struct KXBrushSettings::Data
{
    BrushPresetModel presets{nullptr};
    // -1 when the brush is of no preset any more.
    int preset = 0;
    Brush brush;
    int size = 1;
    int spacing = 1;
    int opacity = 100;
    bool offered[DynamicCount] = {true, true, true, true, true, true};
    bool dynamic[DynamicCount] = {};
    // Null until the popup is first shown.
    BrushSettingsForm* pForm = nullptr;
};

KXBrushSettings::KXBrushSettings(QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::FramelessWindowHint), d(std::make_unique<Data>())
{
    setWindowTitle(tr("Brush parameters"));
    d->brush.SetName(d->presets.Preset(0).name);
    d->brush.SetTip(d->presets.Preset(0).tip);
}

KXBrushSettings::~KXBrushSettings()
{
    // The list in the form must not outlive its presets.
    delete d->pForm;
}

int KXBrushSettings::GetSize() const
{
    return d->size;
}

int KXBrushSettings::GetSpacing() const
{
    return d->spacing;
}

int KXBrushSettings::GetOpacity() const
{
    return d->opacity;
}

IBrush* KXBrushSettings::GetCurrentBrush() const
{
    return &d->brush;
}

bool KXBrushSettings::IsDynamic(DynamicProperty property) const
{
    return isDynamic(property) && d->offered[property] && d->dynamic[property];
}

QStringList KXBrushSettings::GetPresetNames() const
{
    QStringList names;
    for (int row = 0; row < d->presets.rowCount(); ++row)
        names.append(d->presets.Preset(row).name);
    return names;
}

int KXBrushSettings::GetCurrentPreset() const
{
    return d->preset;
}

void KXBrushSettings::EnableDynamicProperty(DynamicProperty property, bool enable)
{
    if (!isDynamic(property) || d->offered[property] == enable)
        return;
    d->offered[property] = enable;
    showDynamics();
    showPreview();
}

QByteArray KXBrushSettings::SavePresets() const
{
    return WriteBrushPresets(d->presets.UserPresets());
}

bool KXBrushSettings::RestorePresets(const QByteArray& bytes)
{
    QVector<BrushPreset> presets;
    if (!ReadBrushPresets(bytes, presets))
        return false;
    if (d->presets.IsUserPreset(d->preset))
        d->preset = -1;
    d->presets.SetUserPresets(presets);
    showPreset();
    return true;
}

void KXBrushSettings::setVisible(bool visible)
{
    if (visible && !d->pForm)
        build();
    QWidget::setVisible(visible);
}

void KXBrushSettings::SetSize(int pixels)
{
    const int size = qBound(1, pixels, MaxSize);
    if (size == d->size)
        return;
    d->size = size;
    showValues();
    Q_EMIT SizeChanged(size);
}

void KXBrushSettings::SetSpacing(int percent)
{
    const int spacing = qBound(1, percent, MaxSpacing);
    if (spacing == d->spacing)
        return;
    d->spacing = spacing;
    showValues();
    Q_EMIT SpacingChanged(spacing);
}

void KXBrushSettings::SetOpacity(int percent)
{
    const int opacity = qBound(0, percent, 100);
    if (opacity == d->opacity)
        return;
    d->opacity = opacity;
    showValues();
    Q_EMIT OpacityChanged(opacity);
}

void KXBrushSettings::SetTip(const BrushTip& tip)
{
    const BrushTip wanted = BoundedBrushTip(tip, d->brush.GetTip());
    if (wanted == d->brush.GetTip())
        return;
    d->brush.SetTip(wanted);
    showValues();
    Q_EMIT BrushParameterChanged(&d->brush);
}

void KXBrushSettings::SetCurrentPreset(int index)
{
    if (index < 0 || index >= d->presets.rowCount())
        return;
    const BrushPreset preset = d->presets.Preset(index);
    if (index == d->preset)
    {
        SetTip(preset.tip);
        SetSpacing(preset.spacing);
        return;
    }
    d->preset = index;
    d->brush.SetName(preset.name);
    d->brush.SetTip(preset.tip);
    showPreset();
    showValues();
    Q_EMIT CurrentBrushChanged(&d->brush);
    SetSpacing(preset.spacing);
}

void KXBrushSettings::SetDynamic(KXBrushSettings::DynamicProperty property, bool on)
{
    if (!isDynamic(property) || d->dynamic[property] == on)
        return;
    d->dynamic[property] = on;
    showDynamics();
    showPreview();
}

void KXBrushSettings::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        hide();
    else
        QWidget::keyPressEvent(event);
}

void KXBrushSettings::showEvent(QShowEvent* event)
{
    MoveOntoScreen(this);
    QWidget::showEvent(event);
}

void KXBrushSettings::paintEvent(QPaintEvent*)
{
    QStylePainter painter(this);
    QStyleOptionFrame frame;
    frame.initFrom(this);
    frame.lineWidth = 1;
    painter.drawPrimitive(QStyle::PE_FrameMenu, frame);
}

void KXBrushSettings::OnPresetMarked(const QModelIndex& index)
{
    // The mark follows the preset too, and must not bring back a tip that was changed.
    if (index.row() != d->preset)
        SetCurrentPreset(index.row());
}

void KXBrushSettings::OnPresetClicked(const QModelIndex& index)
{
    SetCurrentPreset(index.row());
}

void KXBrushSettings::OnShape(int shape)
{
    BrushTip tip = d->brush.GetTip();
    tip.shape = static_cast<BrushTip::Shape>(shape);
    SetTip(tip);
}

void KXBrushSettings::OnHardness(int percent)
{
    BrushTip tip = d->brush.GetTip();
    tip.hardness = percent / 100.0;
    SetTip(tip);
}

void KXBrushSettings::OnRoundness(int percent)
{
    BrushTip tip = d->brush.GetTip();
    tip.roundness = percent / 100.0;
    SetTip(tip);
}

void KXBrushSettings::OnAngle(int degrees)
{
    BrushTip tip = d->brush.GetTip();
    tip.angle = degrees;
    SetTip(tip);
}

void KXBrushSettings::OnDynamicToggled(bool on)
{
    const int property = d->pForm->dynamics.indexOf(qobject_cast<QCheckBox*>(sender()));
    SetDynamic(static_cast<DynamicProperty>(property), on);
}

void KXBrushSettings::OnSavePreset()
{
    QString name = d->brush.GetName();
    if (!askName(tr("Save Preset"), name, false))
        return;
    d->preset = d->presets.Append({name, d->brush.GetTip(), d->spacing});
    d->brush.SetName(name);
    showPreset();
    Q_EMIT PresetsChanged();
}

void KXBrushSettings::OnRenamePreset()
{
    QString name = d->brush.GetName();
    if (!d->presets.IsUserPreset(d->preset) || !askName(tr("Rename Preset"), name, true))
        return;
    if (!d->presets.IsUserPreset(d->preset) || name == d->brush.GetName())
        return;
    d->presets.Rename(d->preset, name);
    d->brush.SetName(name);
    Q_EMIT PresetsChanged();
}

void KXBrushSettings::OnDeletePreset()
{
    if (!d->presets.IsUserPreset(d->preset))
        return;
    const QPointer<KXMessageBox> question = new KXMessageBox(this);
    question->setWindowTitle(tr("Delete Preset"));
    question->SetIcon(KXMessageBox::Question);
    question->SetText(tr("Delete the brush preset \"%1\"?").arg(d->brush.GetName()));
    question->AddButton(KXMessageBox::Yes);
    question->AddButton(KXMessageBox::No);
    question->SetDefaultButton(KXMessageBox::Yes);
    const int answer = question->Exec();
    // Without the question, the popup above it is gone as well.
    if (!question)
        return;
    delete question;
    if (answer != KXMessageBox::Yes || !d->presets.IsUserPreset(d->preset))
        return;
    const int row = d->preset;
    d->preset = -1;
    showPreset();
    d->presets.Remove(row);
    Q_EMIT PresetsChanged();
}

// False when the person thought better of it, or the popup is gone.
bool KXBrushSettings::askName(const QString& title, QString& name, bool ownName)
{
    const QPointer<PresetNameDialog> dialog = new PresetNameDialog(title, name, ownName, &d->presets, this);
    const int result = dialog->Exec();
    if (!dialog)
        return false;
    name = dialog->GetName();
    delete dialog;
    return result == KXDialog::ResultAccepted;
}

// The controls cost ten times the rest, and a bar makes its popup long before anybody opens it.
void KXBrushSettings::build()
{
    d->pForm = new BrushSettingsForm(&d->presets, this);
    QVBoxLayout* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(1, 1, 1, 1);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->addWidget(d->pForm);
    setFocusProxy(d->pForm->pPresets);
    showPreset();
    showValues();
    showDynamics();
    connectForm();
}

void KXBrushSettings::connectForm()
{
    const BrushSettingsForm& form = *d->pForm;
    connect(form.pSize, &SliderBox::Edited, this, &KXBrushSettings::SetSize);
    connect(form.pSpacing, &SliderBox::Edited, this, &KXBrushSettings::SetSpacing);
    connect(form.pOpacity, &SliderBox::Edited, this, &KXBrushSettings::SetOpacity);
    connect(form.pShape, qOverload<int>(&QComboBox::currentIndexChanged), this, &KXBrushSettings::OnShape);
    connect(form.pHardness, &SliderBox::Edited, this, &KXBrushSettings::OnHardness);
    connect(form.pRoundness, &SliderBox::Edited, this, &KXBrushSettings::OnRoundness);
    connect(form.pAngle, &SliderBox::Edited, this, &KXBrushSettings::OnAngle);
    for (const QCheckBox* check : form.dynamics)
        connect(check, &QCheckBox::toggled, this, &KXBrushSettings::OnDynamicToggled);
    connect(form.pPresets->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &KXBrushSettings::OnPresetMarked);
    connect(form.pPresets, &QListView::clicked, this, &KXBrushSettings::OnPresetClicked);
    connect(form.pSave, &QPushButton::clicked, this, &KXBrushSettings::OnSavePreset);
    connect(form.pRename, &QPushButton::clicked, this, &KXBrushSettings::OnRenamePreset);
    connect(form.pDelete, &QPushButton::clicked, this, &KXBrushSettings::OnDeletePreset);
}

void KXBrushSettings::showPreset()
{
    if (!d->pForm)
        return;
    d->pForm->pPresets->setCurrentIndex(d->presets.index(d->preset, 0));
    const bool own = d->presets.IsUserPreset(d->preset);
    d->pForm->pRename->setEnabled(own);
    d->pForm->pDelete->setEnabled(own);
}

void KXBrushSettings::showValues()
{
    if (!d->pForm)
        return;
    const BrushSettingsForm& form = *d->pForm;
    const BrushTip tip = d->brush.GetTip();
    form.pSize->SetValue(d->size);
    form.pSpacing->SetValue(d->spacing);
    form.pOpacity->SetValue(d->opacity);
    form.pHardness->SetValue(qRound(tip.hardness * 100));
    form.pRoundness->SetValue(qRound(tip.roundness * 100));
    form.pAngle->SetValue(qRound(tip.angle));
    const QSignalBlocker blocker(form.pShape);
    form.pShape->setCurrentIndex(tip.shape);
    showPreview();
}

void KXBrushSettings::showDynamics()
{
    if (!d->pForm)
        return;
    bool any = false;
    for (int i = 0; i < DynamicCount; ++i)
    {
        QCheckBox* const check = d->pForm->dynamics[i];
        const QSignalBlocker blocker(check);
        check->setChecked(d->dynamic[i]);
        check->setVisible(d->offered[i]);
        any = any || d->offered[i];
    }
    d->pForm->pDynamics->setVisible(any);
}

void KXBrushSettings::showPreview()
{
    if (!d->pForm)
        return;
    BrushStroke stroke;
    stroke.tip = d->brush.GetTip();
    stroke.diameter = d->size;
    stroke.spacing = d->spacing;
    stroke.opacity = d->opacity / 100.0;
    stroke.dynamicSize = IsDynamic(DynamicSize);
    stroke.dynamicHardness = IsDynamic(DynamicHardness);
    stroke.dynamicAngle = IsDynamic(DynamicAngle);
    stroke.dynamicOpacity = IsDynamic(DynamicOpacity);
    stroke.dynamicScatter = IsDynamic(DynamicScatter);
    d->pForm->pPreview->SetStroke(stroke, IsDynamic(DynamicColor));
}
