#include "StrokeTool.h"

#include <QPainter>
#include <QRandomGenerator>
#include <QSettings>
#include <QUndoStack>

#include <iterator>

#include "BlendMode.h"
#include "BrushOutline.h"
#include "Document.h"
#include "IBrush.h"
#include "KXBrushSettings.h"
#include "KXDocumentInterface.h"
#include "KXShortcut.h"
#include "NVApplication.h"
#include "NVBrushToolbarWidget.h"
#include "TilesCommand.h"

namespace
{

const int FrameMs = 16;
// The part of a frame that painting may take; the rest is for the window.
const int WorkMs = 9;

const QLatin1String SizeKey("size");
const QLatin1String SpacingKey("spacing");
const QLatin1String OpacityKey("opacity");
const QLatin1String BlendModeKey("blendMode");
const QLatin1String PresetsKey("presets");
const QLatin1String PresetKey("preset");
const QLatin1String TipKey("tip");
const QLatin1String DynamicsKey("dynamics");

const KXBrushSettings::DynamicProperty Dynamics[] = {
    KXBrushSettings::DynamicSize,  KXBrushSettings::DynamicHardness, KXBrushSettings::DynamicColor,
    KXBrushSettings::DynamicAngle, KXBrushSettings::DynamicOpacity,  KXBrushSettings::DynamicScatter};

QVariantList ToVariants(const BrushTip& tip)
{
    return {int(tip.shape), tip.hardness, tip.roundness, tip.angle};
}

// Anything but the four values gives the tip that was there.
BrushTip ToTip(const QVariantList& values, const BrushTip& otherwise)
{
    if (values.size() != 4)
        return otherwise;
    BrushTip tip;
    tip.shape = BrushTip::Shape(qBound(int(BrushTip::Round), values.at(0).toInt(), int(BrushTip::Spray)));
    tip.hardness = values.at(1).toDouble();
    tip.roundness = values.at(2).toDouble();
    tip.angle = values.at(3).toDouble();
    return tip;
}

StrokeDynamics CurrentDynamics(const KXBrushSettings* brushes)
{
    StrokeDynamics dynamics;
    dynamics.size = brushes->IsDynamic(KXBrushSettings::DynamicSize);
    dynamics.hardness = brushes->IsDynamic(KXBrushSettings::DynamicHardness);
    dynamics.color = brushes->IsDynamic(KXBrushSettings::DynamicColor);
    dynamics.angle = brushes->IsDynamic(KXBrushSettings::DynamicAngle);
    dynamics.opacity = brushes->IsDynamic(KXBrushSettings::DynamicOpacity);
    dynamics.scatter = brushes->IsDynamic(KXBrushSettings::DynamicScatter);
    return dynamics;
}

} // namespace

StrokeTool::StrokeTool(QSettings* settings, const Defaults& defaults, QObject* parent)
    : Tool(parent), m_pSettings(settings), m_defaults(defaults)
{
    m_frame.setSingleShot(true);
    m_frame.setTimerType(Qt::PreciseTimer);
    connect(&m_frame, &QTimer::timeout, this, &StrokeTool::OnFrame);
}

StrokeTool::~StrokeTool()
{
    StrokeTool::Cancel();
}

NVBrushToolbarWidget* StrokeTool::GetStrokeBar()
{
    return static_cast<NVBrushToolbarWidget*>(GetBar());
}

bool StrokeTool::IsStrokeRunning() const
{
    return m_pStroke != nullptr;
}

void StrokeTool::StoreValues()
{
    const KXBrushSettings* brushes = GetBrushes();
    SetValue(BlendModeKey, GetBlendMode());
    SetValue(PresetKey, brushes->GetCurrentPreset());
    SetValue(TipKey, ToVariants(brushes->GetCurrentBrush()->GetTip()));
    QVariantList dynamics;
    for (KXBrushSettings::DynamicProperty property : Dynamics)
        dynamics += brushes->IsDynamic(property);
    SetValue(DynamicsKey, dynamics);
}

bool StrokeTool::Cancel()
{
    if (!m_pStroke)
        return false;
    QVector<SavedTile> tiles = m_pStroke->TakeSavedTiles();
    if (Document* document = GetDocument())
    {
        ExchangeTiles(document->GetPixels()->EditLayer(m_layer), tiles);
        for (const SavedTile& tile : qAsConst(tiles))
            document->GetPixels()->NotifyChanged(tile.rect);
    }
    EndStroke();
    return true;
}

void StrokeTool::Finish()
{
    WorkOff();
}

int StrokeTool::GetBlendMode()
{
    return 0;
}

void StrokeTool::RestoreOwnValues(NVBrushToolbarWidget* bar)
{
    Q_UNUSED(bar)
}

bool StrokeTool::CompleteStroke(BrushStroke& stroke)
{
    QVector<SavedTile> tiles = stroke.TakeSavedTiles();
    if (!tiles.isEmpty())
        GetDocument()->GetUndoStack()->push(
            new TilesCommand(GetStepName(), GetDocument()->GetPixels(), m_layer, std::move(tiles)));
    return true;
}

QWidget* StrokeTool::CreateBar()
{
    NVBrushToolbarWidget* bar = CreateStrokeBar();
    RestoreValues(bar);
    const KXBrushSettings* brushes = bar->GetBrushes();
    // The popup follows each value of the bar, and has those for which the bar has no control.
    connect(brushes, &KXBrushSettings::SizeChanged, this, &StrokeTool::OnSizeChanged);
    connect(brushes, &KXBrushSettings::SpacingChanged, this, &StrokeTool::OnSpacingChanged);
    connect(brushes, &KXBrushSettings::OpacityChanged, this, &StrokeTool::OnOpacityChanged);
    connect(brushes, &KXBrushSettings::CurrentBrushChanged, this, &StrokeTool::OnBrushChanged);
    connect(brushes, &KXBrushSettings::BrushParameterChanged, this, &StrokeTool::OnBrushChanged);
    connect(brushes, &KXBrushSettings::PresetsChanged, this, &StrokeTool::OnPresetsChanged);
    Q_EMIT bar->GetBrushes()->CurrentBrushChanged(brushes->GetCurrentBrush());
    return bar;
}

void StrokeTool::UpdateBarTheme(QWidget* bar)
{
    SetBarPicture(bar, QStringLiteral("m_pPictureLabelMain"), GetBarPictureName());
    // The brush is the same, but what shows it draws it in the colour of the theme.
    KXBrushSettings* brushes = static_cast<NVBrushToolbarWidget*>(bar)->GetBrushes();
    Q_EMIT brushes->BrushParameterChanged(brushes->GetCurrentBrush());
}

void StrokeTool::CreateShortcuts()
{
    NVBrushToolbarWidget* bar = GetStrokeBar();
    bar->CreateShortcuts();
    auto* larger = new KXShortcut(bar, Qt::Key_BracketRight);
    auto* smaller = new KXShortcut(bar, Qt::Key_BracketLeft);
    connect(larger, &KXShortcut::Activated, this, &StrokeTool::OnLargerKey);
    connect(smaller, &KXShortcut::Activated, this, &StrokeTool::OnSmallerKey);
    m_Shortcuts = {larger, smaller};
}

void StrokeTool::ReleaseShortcuts()
{
    qDeleteAll(m_Shortcuts);
    m_Shortcuts.clear();
    GetStrokeBar()->ReleaseShortcuts();
}

void StrokeTool::Equip(NVDocumentView* view)
{
    m_isPointerIn = false;
    view->SetOverlay([this](QPainter& painter) { PaintOverlay(painter); });
    connect(view, &NVDocumentView::ScaleChanged, this, &StrokeTool::OnScaleChanged);
    UpdateOutline();
}

void StrokeTool::Pressed(const CanvasPoint& point)
{
    if (point.button != Qt::LeftButton)
        return;
    Finish();
    if (CanChangeLayer())
        BeginStroke(point);
}

void StrokeTool::Moved(const CanvasPoint& point)
{
    MoveOverlay(point.position);
    if (!m_pStroke || m_isReleased)
        return;
    m_pStroke->AddPoint({point.position, point.pressure});
    ScheduleFrame();
}

void StrokeTool::Released(const CanvasPoint& point)
{
    if (!m_pStroke || m_isReleased || point.button != Qt::LeftButton)
        return;
    m_isReleased = true;
    ScheduleFrame();
}

void StrokeTool::PointerLeft()
{
    const QRegion before = OverlayRegion();
    m_isPointerIn = false;
    for (const QRect& area : before)
        GetView()->UpdateOverlay(area);
    UpdateOverlay();
}

QRegion StrokeTool::OverlayRegion() const
{
    const QRectF bounds = m_outline.boundingRect().united(QRectF(-6, -6, 12, 12));
    return bounds.translated(GetView()->MapFromDocument(m_pointer)).toAlignedRect().adjusted(-3, -3, 3, 3);
}

void StrokeTool::PaintOverlay(QPainter& painter) const
{
    if (!m_isPointerIn || !GetView())
        return;
    QPainterPath path = m_outline;
    if (m_outline.boundingRect().width() > 24)
    {
        path.moveTo(-4, 0);
        path.lineTo(4, 0);
        path.moveTo(0, -4);
        path.lineTo(0, 4);
    }
    DrawOnPicture(painter, path, GetView()->MapFromDocument(m_pointer));
}

QCursor StrokeTool::StrokeCursor() const
{
    return m_outline.boundingRect().width() < 8 ? Qt::CrossCursor : Qt::BlankCursor;
}

QVariant StrokeTool::GetValue(const QString& key, const QVariant& otherwise) const
{
    return m_pSettings->value(m_defaults.group + QLatin1Char('/') + key, otherwise);
}

void StrokeTool::SetValue(const QString& key, const QVariant& value)
{
    m_pSettings->setValue(m_defaults.group + QLatin1Char('/') + key, value);
}

KXBrushSettings* StrokeTool::GetBrushes()
{
    return GetStrokeBar()->GetBrushes();
}

int StrokeTool::GetLayer() const
{
    return m_layer;
}

bool StrokeTool::IsPointerIn() const
{
    return m_isPointerIn;
}

QPointF StrokeTool::GetPointer() const
{
    return m_pointer;
}

void StrokeTool::UpdateOverlay()
{
    const QRegion region = OverlayRegion();
    for (const QRect& area : region)
        GetView()->UpdateOverlay(area);
}

void StrokeTool::UpdateOutline()
{
    NVDocumentView* view = GetView();
    if (!view || !IsActive())
        return;
    UpdateOverlay();
    const double diameter = qMax(1.0, GetBrushes()->GetSize() * view->GetScale());
    m_outline = BrushOutline(GetBrushes()->GetCurrentBrush()->GetTip(), diameter);
    view->SetToolCursor(StrokeCursor());
    UpdateOverlay();
}

void StrokeTool::EndStroke()
{
    m_frame.stop();
    m_pStroke.reset();
    SetEscapeLive(false);
    if (GetDocument())
        GetDocument()->GetPixels()->EndEdit();
    Q_EMIT StrokeEnded();
}

void StrokeTool::OnFrame()
{
    m_sinceFrame.start();
    if (!m_pStroke || !GetDocument())
        return;
    QElapsedTimer time;
    time.start();
    KXDocumentInterface* pixels = GetDocument()->GetPixels();
    const QRect area = m_pStroke->Advance(pixels->EditLayer(m_layer), WorkMs);
    pixels->NotifyChanged(area);
    Q_EMIT FrameDone(area, double(time.nsecsElapsed()) / 1e6);
    if (m_pStroke->HasPending())
        ScheduleFrame();
    else if (m_isReleased)
        WorkOff();
}

void StrokeTool::OnSizeChanged(int pixels)
{
    SetValue(SizeKey, pixels);
    UpdateOutline();
}

void StrokeTool::OnSpacingChanged(int percent)
{
    SetValue(SpacingKey, percent);
}

void StrokeTool::OnOpacityChanged(int percent)
{
    SetValue(OpacityKey, percent);
}

void StrokeTool::OnBrushChanged()
{
    UpdateOutline();
}

void StrokeTool::OnPresetsChanged()
{
    SetValue(PresetsKey, GetBrushes()->SavePresets());
}

void StrokeTool::OnScaleChanged()
{
    UpdateOutline();
}

void StrokeTool::OnLargerKey()
{
    GetBrushes()->SetSize(NextBrushSize(GetBrushes()->GetSize()));
}

void StrokeTool::OnSmallerKey()
{
    GetBrushes()->SetSize(PreviousBrushSize(GetBrushes()->GetSize()));
}

void StrokeTool::RestoreValues(NVBrushToolbarWidget* bar)
{
    KXBrushSettings* brushes = bar->GetBrushes();
    RestoreBrush(brushes);
    brushes->SetSize(GetValue(SizeKey, m_defaults.size).toInt());
    brushes->SetSpacing(GetValue(SpacingKey, m_defaults.spacing).toInt());
    brushes->SetOpacity(GetValue(OpacityKey, 100).toInt());
    const int blendMode = GetValue(BlendModeKey, 0).toInt();
    bar->SetBlendMode(blendMode >= 0 && blendMode < BLEND_MODE_COUNT ? blendMode : 0);
    RestoreOwnValues(bar);
}

void StrokeTool::RestoreBrush(KXBrushSettings* brushes)
{
    brushes->RestorePresets(GetValue(PresetsKey).toByteArray());
    const int preset = GetValue(PresetKey, m_defaults.preset).toInt();
    if (preset > 0)
        brushes->SetCurrentPreset(preset);
    brushes->SetTip(ToTip(GetValue(TipKey).toList(), brushes->GetCurrentBrush()->GetTip()));
    const QVariantList dynamics = GetValue(DynamicsKey).toList();
    for (int i = 0; i < dynamics.size() && i < int(std::size(Dynamics)); ++i)
        brushes->SetDynamic(Dynamics[i], dynamics.at(i).toBool());
}

StrokeSettings StrokeTool::CurrentSettings()
{
    const KXBrushSettings* brushes = GetBrushes();
    StrokeSettings settings;
    settings.tip = brushes->GetCurrentBrush()->GetTip();
    settings.size = brushes->GetSize();
    settings.spacing = brushes->GetSpacing();
    settings.opacity = brushes->GetOpacity();
    settings.blendMode = GetBlendMode();
    settings.foreground = NVApplication::GetForeground();
    settings.background = NVApplication::GetBackground();
    settings.dynamics = CurrentDynamics(brushes);
    settings.smooth = true;
    settings.seed = QRandomGenerator::global()->generate64();
    settings.selection = GetDocument()->GetPixels()->GetSelectionMask();
    return settings;
}

void StrokeTool::BeginStroke(const CanvasPoint& point)
{
    KXDocumentInterface* pixels = GetDocument()->GetPixels();
    StoreValues();
    m_layer = pixels->GetCurrentLayer();
    StrokeSettings settings = CurrentSettings();
    if (!PrepareStroke(point, settings))
        return;
    m_isReleased = false;
    m_isWorkedOff = false;
    m_pStroke = std::make_unique<BrushStroke>(settings);
    pixels->BeginEdit();
    SetEscapeLive(true);
    MoveOverlay(point.position);
    m_pStroke->AddPoint({point.position, point.pressure});
    ScheduleFrame();
}

void StrokeTool::ScheduleFrame()
{
    if (m_frame.isActive())
        return;
    const qint64 elapsed = m_sinceFrame.isValid() ? m_sinceFrame.elapsed() : FrameMs;
    m_frame.start(int(qBound<qint64>(0, FrameMs - elapsed, FrameMs)));
}

// Brings all points of the stroke onto the layer.
void StrokeTool::WorkOff()
{
    if (!m_pStroke || m_isWorkedOff)
        return;
    m_isReleased = true;
    m_isWorkedOff = true;
    m_frame.stop();
    Document* document = GetDocument();
    if (document)
    {
        QElapsedTimer time;
        time.start();
        const QRect area = m_pStroke->Finish(document->GetPixels()->EditLayer(m_layer));
        document->GetPixels()->NotifyChanged(area);
        Q_EMIT FrameDone(area, double(time.nsecsElapsed()) / 1e6);
    }
    if (!document || CompleteStroke(*m_pStroke))
        EndStroke();
}

void StrokeTool::MoveOverlay(const QPointF& position)
{
    UpdateOverlay();
    m_isPointerIn = true;
    m_pointer = position;
    UpdateOverlay();
}
