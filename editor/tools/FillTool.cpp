#include "FillTool.h"

#include <QGuiApplication>
#include <QSettings>
#include <QUndoStack>

#include "BlendMode.h"
#include "Document.h"
#include "KXDocumentInterface.h"
#include "LayerSample.h"
#include "NVApplication.h"
#include "NVFillCanToolbar.h"
#include "PatternSelectWidget.h"
#include "TilesCommand.h"

namespace
{

// A document of fewer pixels is filled before anybody notices.
const qint64 QuickPixels = 2'000'000;
// For the work that is almost done at the next click.
const int PatienceMs = 250;

const QLatin1String ToleranceKey("fill/tolerance");
const QLatin1String OpacityKey("fill/opacity");
const QLatin1String FillModeKey("fill/fillMode");
const QLatin1String BlendModeKey("fill/blendMode");
const QLatin1String PatternKey("fill/pattern");
const QLatin1String IgnoreTransparencyKey("fill/ignoreTransparency");
const QLatin1String AntialiasingKey("fill/antialiasing");
const QLatin1String ContiguousKey("fill/contiguous");
const QLatin1String AllLayersKey("fill/allLayers");

const int PatternFill = 1;

// What the settings hold, if it is an index into a list of so many.
int ToIndex(const QVariant& value, int count)
{
    const int index = value.toInt();
    return index >= 0 && index < count ? index : 0;
}

} // namespace

FillTool::FillTool(QSettings* settings, QObject* parent) : Tool(parent), m_pSettings(settings)
{
    connect(&m_work, &BackgroundWork::Done, this, &FillTool::OnFilled);
    connect(&m_work, &BackgroundWork::Lasts, this, &FillTool::OnLasts);
}

FillTool::~FillTool()
{
    FillTool::Cancel();
}

NVFillCanToolbar* FillTool::GetFillBar()
{
    return static_cast<NVFillCanToolbar*>(GetBar());
}

bool FillTool::IsFilling() const
{
    return m_work.IsRunning();
}

QString FillTool::GetName() const
{
    return tr("Fill");
}

QString FillTool::GetPictureName() const
{
    return QStringLiteral("tool-fill");
}

QKeySequence FillTool::GetKey() const
{
    return Qt::Key_G;
}

void FillTool::StoreValues()
{
    const NVFillCanToolbar* bar = GetFillBar();
    m_pSettings->setValue(ToleranceKey, bar->GetTolerance());
    m_pSettings->setValue(OpacityKey, bar->GetOpacity());
    m_pSettings->setValue(FillModeKey, bar->GetFillMode());
    m_pSettings->setValue(BlendModeKey, bar->GetBlendMode());
    m_pSettings->setValue(PatternKey, bar->GetPatterns()->CurrentIndex());
    m_pSettings->setValue(IgnoreTransparencyKey, bar->IsIgnoreTransparency());
    m_pSettings->setValue(AntialiasingKey, bar->IsAntialiasing());
    m_pSettings->setValue(ContiguousKey, bar->IsContiguous());
    m_pSettings->setValue(AllLayersKey, bar->IsAllLayers());
}

bool FillTool::Cancel()
{
    if (!m_work.IsRunning())
        return false;
    m_work.Cancel();
    EndFill();
    Q_EMIT Message(tr("Filling was cancelled."));
    return true;
}

void FillTool::Finish()
{
    if (!m_work.IsRunning())
        return;
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    m_work.Wait();
    QGuiApplication::restoreOverrideCursor();
}

QWidget* FillTool::CreateBar()
{
    auto* bar = new NVFillCanToolbar(nullptr);
    RestoreValues(bar);
    return bar;
}

void FillTool::UpdateBarTheme(QWidget* bar)
{
    SetBarPicture(bar, QStringLiteral("m_pPicture"), QStringLiteral("tool-bar-bucket"));
}

void FillTool::CreateShortcuts()
{
    GetFillBar()->CreateShortcuts();
}

void FillTool::ReleaseShortcuts()
{
    GetFillBar()->ReleaseShortcuts();
}

void FillTool::Equip(NVDocumentView* view)
{
    view->SetToolCursor(Qt::CrossCursor);
}

void FillTool::Pressed(const CanvasPoint& point)
{
    if (point.button != Qt::LeftButton)
        return;
    if (m_work.IsRunning() && !m_work.Wait(PatienceMs))
    {
        OnLasts();
        return;
    }
    KXDocumentInterface* pixels = GetDocument()->GetPixels();
    const QPoint seed = PixelAt(point.position);
    if (!CanChangeLayer() || !pixels->GetRect().contains(seed))
        return;
    StoreValues();
    m_layer = pixels->GetCurrentLayer();
    const FillSettings settings = CurrentSettings();
    if (qint64(pixels->GetSize().width()) * pixels->GetSize().height() > QuickPixels)
        StartFill(seed, settings);
    else
    {
        PushStep(FloodFill(pixels->EditLayer(m_layer), seed, settings));
        Q_EMIT FillEnded();
    }
}

void FillTool::OnFilled()
{
    if (GetDocument() && !m_pOutcome->tiles.isEmpty())
        GetDocument()->GetPixels()->EditLayer(m_layer).swap(m_pOutcome->layer);
    // The layer of before goes, so that nothing but the steps holds on to it.
    m_pOutcome->layer = QImage();
    PushStep(std::move(m_pOutcome->tiles));
    EndFill();
}

void FillTool::OnLasts()
{
    Q_EMIT Message(tr("The picture is being filled. Escape takes it back."));
}

void FillTool::RestoreValues(NVFillCanToolbar* bar)
{
    bar->SetTolerance(m_pSettings->value(ToleranceKey, 32).toInt());
    bar->SetOpacity(m_pSettings->value(OpacityKey, 100).toInt());
    bar->SetFillMode(ToIndex(m_pSettings->value(FillModeKey), 2));
    bar->SetBlendMode(ToIndex(m_pSettings->value(BlendModeKey), BLEND_MODE_COUNT));
    bar->SetIgnoreTransparency(m_pSettings->value(IgnoreTransparencyKey, false).toBool());
    bar->SetAntialiasing(m_pSettings->value(AntialiasingKey, true).toBool());
    bar->SetContiguous(m_pSettings->value(ContiguousKey, true).toBool());
    bar->SetAllLayers(m_pSettings->value(AllLayersKey, false).toBool());
    PatternSelectWidget* patterns = bar->GetPatterns();
    patterns->SetCurrentIndex(ToIndex(m_pSettings->value(PatternKey), patterns->Count()));
    // The popup is silent about what it is set to, and the bar's button shows what is picked.
    Q_EMIT patterns->ItemSelected(patterns->CurrentIndex());
}

FillSettings FillTool::CurrentSettings()
{
    const NVFillCanToolbar* bar = GetFillBar();
    const KXDocumentInterface* pixels = GetDocument()->GetPixels();
    FillSettings settings;
    settings.tolerance = bar->GetTolerance();
    settings.contiguous = bar->IsContiguous();
    settings.antialiasing = bar->IsAntialiasing();
    settings.ignoreTransparency = bar->IsIgnoreTransparency();
    settings.color = NVApplication::GetForeground();
    if (bar->GetFillMode() == PatternFill)
        bar->GetPatterns()->GetItemImage(bar->GetPatterns()->CurrentIndex(), settings.pattern);
    settings.blendMode = bar->GetBlendMode();
    settings.opacity = bar->GetOpacity();
    settings.sampled = SampledLayers(pixels, bar->IsAllLayers());
    settings.selection = pixels->GetSelectionMask();
    return settings;
}

void FillTool::StartFill(const QPoint& seed, const FillSettings& settings)
{
    KXDocumentInterface* pixels = GetDocument()->GetPixels();
    m_pOutcome = std::make_shared<Outcome>();
    m_pOutcome->layer = pixels->GetLayer(m_layer).image;
    pixels->BeginEdit();
    SetEscapeLive(true);
    GetView()->SetToolCursor(Qt::BusyCursor);
    m_work.Start([seed, settings, outcome = m_pOutcome](const std::atomic<bool>&)
                 { outcome->tiles = FloodFill(outcome->layer, seed, settings); });
}

void FillTool::PushStep(QVector<SavedTile> tiles)
{
    if (!GetDocument() || tiles.isEmpty())
        return;
    KXDocumentInterface* pixels = GetDocument()->GetPixels();
    for (const SavedTile& tile : qAsConst(tiles))
        pixels->NotifyChanged(tile.rect);
    GetDocument()->GetUndoStack()->push(new TilesCommand(tr("Fill"), pixels, m_layer, std::move(tiles)));
}

void FillTool::EndFill()
{
    m_pOutcome.reset();
    SetEscapeLive(false);
    if (GetView())
        GetView()->SetToolCursor(Qt::CrossCursor);
    if (GetDocument())
        GetDocument()->GetPixels()->EndEdit();
    Q_EMIT FillEnded();
}
