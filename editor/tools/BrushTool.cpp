#include "BrushTool.h"

#include <QLabel>
#include <QPainter>
#include <QPixmap>
#include <QRandomGenerator>
#include <QSettings>
#include <QUndoStack>

#include <cmath>
#include <iterator>

#include "Document.h"
#include "IBrush.h"
#include "KXBrushSettings.h"
#include "KXDocumentInterface.h"
#include "KXShortcut.h"
#include "NVApplication.h"
#include "NVBrushToolbar.h"
#include "NVStringHelper.h"
#include "PatternSelectWidget.h"
#include "TilesCommand.h"

namespace
{

const int FrameMs = 16;
// The part of a frame that painting may take; the rest is for the window.
const int WorkMs = 9;
const int MinSize = 1;
const int MaxSize = 2500;

const QLatin1String SizeKey("brush/size");
const QLatin1String SpacingKey("brush/spacing");
const QLatin1String OpacityKey("brush/opacity");
const QLatin1String FillModeKey("brush/fillMode");
const QLatin1String BlendModeKey("brush/blendMode");
const QLatin1String PatternKey("brush/pattern");
const QLatin1String PresetsKey("brush/presets");
const QLatin1String PresetKey("brush/preset");
const QLatin1String TipKey("brush/tip");
const QLatin1String DynamicsKey("brush/dynamics");

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

// From which size on which step is taken.
int StepFor(int size)
{
    static const int steps[][2] = {{1000, 100}, {300, 50}, {100, 20}, {50, 10}, {20, 5}, {10, 2}};
    for (const auto& step : steps)
    {
        if (size >= step[0])
            return step[1];
    }
    return 1;
}

} // namespace

int NextBrushSize(int size)
{
    const int step = StepFor(size);
    return qBound(MinSize, (size / step + 1) * step, MaxSize);
}

int PreviousBrushSize(int size)
{
    const int step = StepFor(size - 1);
    return qBound(MinSize, (size - 1) / step * step, MaxSize);
}

QPainterPath BrushOutline(const BrushTip& tip, double diameter)
{
    const double radius = diameter / 2;
    QPainterPath path;
    if (tip.shape == BrushTip::Square)
        path.addRect(-radius, -radius, diameter, diameter);
    else if (tip.shape == BrushTip::Diamond)
        path.addPolygon(QPolygonF({{0, -radius}, {radius, 0}, {0, radius}, {-radius, 0}, {0, -radius}}));
    else
        path.addEllipse(QPointF(), radius, radius);
    return QTransform().rotate(-tip.angle).scale(1, tip.roundness).map(path);
}

BrushTool::BrushTool(QSettings* settings, QObject* parent) : Tool(parent), m_pSettings(settings)
{
    m_frame.setSingleShot(true);
    m_frame.setTimerType(Qt::PreciseTimer);
    connect(&m_frame, &QTimer::timeout, this, &BrushTool::OnFrame);
}

BrushTool::~BrushTool() = default;

NVBrushToolbar* BrushTool::GetBrushBar()
{
    return static_cast<NVBrushToolbar*>(GetBar());
}

bool BrushTool::IsStrokeRunning() const
{
    return m_pStroke != nullptr;
}

void BrushTool::StoreValues()
{
    m_pSettings->setValue(FillModeKey, GetBrushBar()->GetStyle());
    m_pSettings->setValue(BlendModeKey, GetBrushBar()->GetBlendMode());
    m_pSettings->setValue(PatternKey, NVApplication::GetTexturePatternIndex());
    const KXBrushSettings* brushes = GetBrushBar()->GetBrushes();
    m_pSettings->setValue(PresetKey, brushes->GetCurrentPreset());
    m_pSettings->setValue(TipKey, ToVariants(brushes->GetCurrentBrush()->GetTip()));
    QVariantList dynamics;
    for (KXBrushSettings::DynamicProperty property : Dynamics)
        dynamics += brushes->IsDynamic(property);
    m_pSettings->setValue(DynamicsKey, dynamics);
}

QString BrushTool::GetName() const
{
    return tr("Brush");
}

QString BrushTool::GetPictureName() const
{
    return QStringLiteral("tool-brush");
}

QKeySequence BrushTool::GetKey() const
{
    return Qt::Key_B;
}

bool BrushTool::Cancel()
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

void BrushTool::Finish()
{
    m_isPicking = false;
    if (!m_pStroke)
        return;
    Document* document = GetDocument();
    if (document)
    {
        QElapsedTimer time;
        time.start();
        const QRect area = m_pStroke->Finish(document->GetPixels()->EditLayer(m_layer));
        document->GetPixels()->NotifyChanged(area);
        Q_EMIT FrameDone(area, double(time.nsecsElapsed()) / 1e6);
        QVector<SavedTile> tiles = m_pStroke->TakeSavedTiles();
        if (!tiles.isEmpty())
            document->GetUndoStack()->push(
                new TilesCommand(tr("Brush Stroke"), document->GetPixels(), m_layer, std::move(tiles)));
    }
    EndStroke();
}

void BrushTool::UpdateTheme()
{
    NVBrushToolbar* bar = GetBrushBar();
    const QString picture = NVStringHelper::DPIAdjustImageName(QStringLiteral("theme:tool-bar-brush.png"));
    if (auto* label = bar->findChild<QLabel*>(QStringLiteral("m_pPictureLabelMain")))
        label->setPixmap(QPixmap(picture));
    // The brush is the same, but what shows it draws it in the colour of the theme.
    Q_EMIT bar->GetBrushes()->BrushParameterChanged(bar->GetBrushes()->GetCurrentBrush());
}

QWidget* BrushTool::CreateBar()
{
    // The bar shows the pattern that is current when it is made.
    NVApplication::GetInstance()->SetTexturePatternIndex(m_pSettings->value(PatternKey, 0).toInt());
    auto* bar = new NVBrushToolbar(nullptr);
    RestoreValues(bar);
    connect(bar, &NVBrushToolbar::SizeChanged, this, &BrushTool::OnSizeChanged);
    connect(bar, &NVBrushToolbar::SpacingChanged, this, &BrushTool::OnSpacingChanged);
    connect(bar, &NVBrushToolbar::OpacityChanged, this, &BrushTool::OnOpacityChanged);
    connect(bar->GetBrushes(), &KXBrushSettings::CurrentBrushChanged, this, &BrushTool::OnBrushChanged);
    connect(bar->GetBrushes(), &KXBrushSettings::BrushParameterChanged, this, &BrushTool::OnBrushChanged);
    connect(bar->GetBrushes(), &KXBrushSettings::PresetsChanged, this, &BrushTool::OnPresetsChanged);
    connect(bar->GetPatterns(), &PatternSelectWidget::ItemSelected, NVApplication::GetInstance(),
            &NVApplication::SetTexturePatternIndex);
    Q_EMIT bar->GetBrushes()->CurrentBrushChanged(bar->GetBrushes()->GetCurrentBrush());
    return bar;
}

void BrushTool::CreateShortcuts()
{
    NVBrushToolbar* bar = GetBrushBar();
    bar->CreateShortcuts();
    auto* pick = new KXShortcut(bar, Qt::Key_I);
    auto* larger = new KXShortcut(bar, Qt::Key_BracketRight);
    auto* smaller = new KXShortcut(bar, Qt::Key_BracketLeft);
    m_pEscape = new KXShortcut(bar, QKeySequence());
    connect(pick, &KXShortcut::Activated, this, &BrushTool::OnPickKey);
    connect(larger, &KXShortcut::Activated, this, &BrushTool::OnLargerKey);
    connect(smaller, &KXShortcut::Activated, this, &BrushTool::OnSmallerKey);
    connect(m_pEscape, &KXShortcut::Activated, this, &BrushTool::OnEscapeKey);
    m_Shortcuts = {pick, larger, smaller, m_pEscape};
}

void BrushTool::ReleaseShortcuts()
{
    StoreValues();
    qDeleteAll(m_Shortcuts);
    m_Shortcuts.clear();
    m_pEscape = nullptr;
    GetBrushBar()->ReleaseShortcuts();
}

void BrushTool::Equip(NVDocumentView* view)
{
    m_isPointerIn = false;
    view->SetOverlay([this](QPainter& painter) { PaintOverlay(painter); });
    connect(view, &NVDocumentView::ScaleChanged, this, &BrushTool::OnScaleChanged);
    UpdateOutline();
}

void BrushTool::Pressed(const CanvasPoint& point)
{
    if (point.button != Qt::LeftButton)
        return;
    Finish();
    if (point.modifiers.testFlag(Qt::AltModifier))
    {
        m_isPicking = true;
        PickColor(point.position);
    }
    else if (CanPaint())
        BeginStroke(point);
}

void BrushTool::Moved(const CanvasPoint& point)
{
    MoveOverlay(point.position);
    if (m_isPicking)
        PickColor(point.position);
    if (!m_pStroke || m_isReleased)
        return;
    m_pStroke->AddPoint({point.position, point.pressure});
    ScheduleFrame();
}

void BrushTool::Released(const CanvasPoint& point)
{
    m_isPicking = false;
    if (!m_pStroke || point.button != Qt::LeftButton)
        return;
    m_isReleased = true;
    ScheduleFrame();
}

void BrushTool::PointerLeft()
{
    const QRect area = OverlayRect();
    m_isPointerIn = false;
    GetView()->UpdateOverlay(area);
}

void BrushTool::OnFrame()
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
        Finish();
}

void BrushTool::OnSizeChanged(int pixels)
{
    m_pSettings->setValue(SizeKey, pixels);
    UpdateOutline();
}

void BrushTool::OnSpacingChanged(int percent)
{
    m_pSettings->setValue(SpacingKey, percent);
}

void BrushTool::OnOpacityChanged(int percent)
{
    m_pSettings->setValue(OpacityKey, percent);
}

void BrushTool::OnBrushChanged()
{
    UpdateOutline();
}

void BrushTool::OnPresetsChanged()
{
    m_pSettings->setValue(PresetsKey, GetBrushBar()->GetBrushes()->SavePresets());
}

void BrushTool::OnScaleChanged()
{
    UpdateOutline();
}

void BrushTool::OnPickKey()
{
    if (m_isPointerIn)
        PickColor(m_pointer);
    else
        Q_EMIT Message(tr("Move the pointer over the picture to pick a colour there."));
}

void BrushTool::OnLargerKey()
{
    GetBrushBar()->SetSize(NextBrushSize(GetBrushBar()->GetSize()));
}

void BrushTool::OnSmallerKey()
{
    GetBrushBar()->SetSize(PreviousBrushSize(GetBrushBar()->GetSize()));
}

void BrushTool::OnEscapeKey()
{
    Cancel();
}

void BrushTool::RestoreValues(NVBrushToolbar* bar)
{
    RestoreBrush(bar->GetBrushes());
    bar->SetSize(m_pSettings->value(SizeKey, 20).toInt());
    bar->SetSpacing(m_pSettings->value(SpacingKey, 10).toInt());
    bar->SetOpacity(m_pSettings->value(OpacityKey, 100).toInt());
    bar->SetStyle(m_pSettings->value(FillModeKey, 0).toUInt());
    const int blendMode = m_pSettings->value(BlendModeKey, 0).toInt();
    bar->SetBlendMode(blendMode);
    bar->SetBlendMode(bar->GetBlendMode());
}

void BrushTool::RestoreBrush(KXBrushSettings* brushes)
{
    brushes->RestorePresets(m_pSettings->value(PresetsKey).toByteArray());
    const int preset = m_pSettings->value(PresetKey, 0).toInt();
    if (preset > 0)
        brushes->SetCurrentPreset(preset);
    brushes->SetTip(ToTip(m_pSettings->value(TipKey).toList(), brushes->GetCurrentBrush()->GetTip()));
    const QVariantList dynamics = m_pSettings->value(DynamicsKey).toList();
    for (int i = 0; i < dynamics.size() && i < int(std::size(Dynamics)); ++i)
        brushes->SetDynamic(Dynamics[i], dynamics.at(i).toBool());
}

StrokeSettings BrushTool::CurrentSettings()
{
    const NVBrushToolbar* bar = GetBrushBar();
    const KXBrushSettings* brushes = bar->GetBrushes();
    StrokeSettings settings;
    settings.tip = brushes->GetCurrentBrush()->GetTip();
    settings.size = bar->GetSize();
    settings.spacing = bar->GetSpacing();
    settings.opacity = bar->GetOpacity();
    settings.blendMode = bar->GetBlendMode();
    settings.fillMode = bar->GetStyle();
    settings.foreground = NVApplication::GetForeground();
    settings.background = NVApplication::GetBackground();
    bar->GetPatterns()->GetItemImage(NVApplication::GetTexturePatternIndex(), settings.pattern);
    settings.dynamics.size = brushes->IsDynamic(KXBrushSettings::DynamicSize);
    settings.dynamics.hardness = brushes->IsDynamic(KXBrushSettings::DynamicHardness);
    settings.dynamics.color = brushes->IsDynamic(KXBrushSettings::DynamicColor);
    settings.dynamics.angle = brushes->IsDynamic(KXBrushSettings::DynamicAngle);
    settings.dynamics.opacity = brushes->IsDynamic(KXBrushSettings::DynamicOpacity);
    settings.dynamics.scatter = brushes->IsDynamic(KXBrushSettings::DynamicScatter);
    settings.smooth = true;
    settings.seed = QRandomGenerator::global()->generate64();
    settings.selection = GetDocument()->GetPixels()->GetSelectionMask();
    return settings;
}

bool BrushTool::CanPaint()
{
    const KXDocumentInterface* pixels = GetDocument()->GetPixels();
    const KXDocumentInterface::Layer& layer = pixels->GetLayer(pixels->GetCurrentLayer());
    if (layer.visible)
        return true;
    Q_EMIT Message(tr("The layer \"%1\" is hidden: show it to paint on it.").arg(layer.name));
    return false;
}

void BrushTool::BeginStroke(const CanvasPoint& point)
{
    KXDocumentInterface* pixels = GetDocument()->GetPixels();
    StoreValues();
    m_layer = pixels->GetCurrentLayer();
    m_isReleased = false;
    m_pStroke = std::make_unique<BrushStroke>(CurrentSettings());
    pixels->BeginEdit();
    if (m_pEscape)
        m_pEscape->SetKey(Qt::Key_Escape);
    MoveOverlay(point.position);
    m_pStroke->AddPoint({point.position, point.pressure});
    ScheduleFrame();
}

void BrushTool::ScheduleFrame()
{
    if (m_frame.isActive())
        return;
    const qint64 elapsed = m_sinceFrame.isValid() ? m_sinceFrame.elapsed() : FrameMs;
    m_frame.start(int(qBound<qint64>(0, FrameMs - elapsed, FrameMs)));
}

void BrushTool::EndStroke()
{
    m_frame.stop();
    m_pStroke.reset();
    if (m_pEscape)
        m_pEscape->SetKey(QKeySequence());
    if (GetDocument())
        GetDocument()->GetPixels()->EndEdit();
    Q_EMIT StrokeEnded();
}

void BrushTool::PickColor(const QPointF& position)
{
    const QPoint pixel(int(std::floor(position.x())), int(std::floor(position.y())));
    KXDocumentInterface* pixels = GetDocument() ? GetDocument()->GetPixels() : nullptr;
    if (!pixels || !pixels->GetRect().contains(pixel))
        return;
    QColor color = pixels->GetComposition().pixelColor(pixel);
    if (color.alpha() == 0)
        return;
    color.setAlpha(255);
    NVApplication::GetInstance()->SetForeground(color);
    Q_EMIT Message(tr("Picked the colour %1.").arg(color.name()));
}

void BrushTool::MoveOverlay(const QPointF& position)
{
    if (m_isPointerIn)
        GetView()->UpdateOverlay(OverlayRect());
    m_isPointerIn = true;
    m_pointer = position;
    GetView()->UpdateOverlay(OverlayRect());
}

void BrushTool::UpdateOutline()
{
    NVDocumentView* view = GetView();
    if (!view || !IsActive())
        return;
    const QRect before = OverlayRect();
    const double diameter = qMax(1.0, GetBrushBar()->GetSize() * view->GetScale());
    m_outline = BrushOutline(GetBrushBar()->GetBrushes()->GetCurrentBrush()->GetTip(), diameter);
    view->SetToolCursor(diameter < 8 ? Qt::CrossCursor : Qt::BlankCursor);
    view->UpdateOverlay(before);
    view->UpdateOverlay(OverlayRect());
}

QRect BrushTool::OverlayRect() const
{
    const QRectF bounds = m_outline.boundingRect().united(QRectF(-6, -6, 12, 12));
    return bounds.translated(GetView()->MapFromDocument(m_pointer)).toAlignedRect().adjusted(-3, -3, 3, 3);
}

void BrushTool::PaintOverlay(QPainter& painter) const
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
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.translate(GetView()->MapFromDocument(m_pointer));
    // Dark on light and light on dark: one of the two is seen on any picture.
    painter.setPen(QPen(QColor(255, 255, 255, 200), 3));
    painter.drawPath(path);
    painter.setPen(QPen(Qt::black, 1));
    painter.drawPath(path);
    painter.restore();
}
