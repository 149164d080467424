#include "SpotHealingTool.h"

#include <QGuiApplication>
#include <QUndoStack>

#include "Document.h"
#include "KXDocumentInterface.h"
#include "NVSpotHealingToolbar.h"
#include "SpotHealing.h"
#include "SpotPicture.h"
#include "TilesCommand.h"

namespace
{

// The mark: seldom met in pictures, and what lies below shows through.
const QColor MarkColor(230, 0, 200);
const double MarkOpacity = 45;

// For the work that is almost done when the next stroke begins.
const int PatienceMs = 250;

} // namespace

SpotHealingTool::SpotHealingTool(QSettings* settings, QObject* parent)
    : StrokeTool(settings, {QStringLiteral("healing"), 30, 10, 1}, parent)
{
    connect(&m_work, &BackgroundWork::Done, this, &SpotHealingTool::OnHealed);
    connect(&m_work, &BackgroundWork::Lasts, this, &SpotHealingTool::OnLasts);
}

SpotHealingTool::~SpotHealingTool()
{
    SpotHealingTool::Cancel();
}

NVSpotHealingToolbar* SpotHealingTool::GetHealingBar()
{
    return static_cast<NVSpotHealingToolbar*>(GetBar());
}

bool SpotHealingTool::IsHealing() const
{
    return m_work.IsRunning();
}

QString SpotHealingTool::GetName() const
{
    return tr("Spot Healing");
}

QString SpotHealingTool::GetPictureName() const
{
    return QStringLiteral("tool-healing");
}

QKeySequence SpotHealingTool::GetKey() const
{
    return Qt::Key_J;
}

bool SpotHealingTool::Cancel()
{
    if (!m_work.IsRunning())
        return StrokeTool::Cancel();
    m_work.Cancel();
    TakeBack();
    EndHealing();
    Q_EMIT Message(tr("Healing was cancelled."));
    return true;
}

void SpotHealingTool::Finish()
{
    StrokeTool::Finish();
    if (!m_work.IsRunning())
        return;
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    m_work.Wait();
    QGuiApplication::restoreOverrideCursor();
}

NVBrushToolbarWidget* SpotHealingTool::CreateStrokeBar()
{
    return new NVSpotHealingToolbar(nullptr);
}

QString SpotHealingTool::GetBarPictureName() const
{
    return QStringLiteral("healing-brush_white");
}

QString SpotHealingTool::GetStepName() const
{
    return tr("Heal Spot");
}

bool SpotHealingTool::PrepareStroke(const CanvasPoint& point, StrokeSettings& settings)
{
    Q_UNUSED(point)
    m_opacity = settings.opacity;
    settings.opacity = MarkOpacity;
    settings.foreground = MarkColor;
    return true;
}

bool SpotHealingTool::CompleteStroke(BrushStroke& stroke)
{
    m_marked = stroke.TouchedRect();
    const QImage coverage = stroke.Coverage();
    m_tiles = stroke.TakeSavedTiles();
    KXDocumentInterface* pixels = GetDocument()->GetPixels();
    const int margin = HealingMargin(m_marked.size());
    m_area = m_marked.adjusted(-margin, -margin, margin, margin) & pixels->GetRect();
    const QImage mask = SpotMask(coverage, m_marked, m_area, pixels->GetSelectionMask(), m_opacity);
    if (mask.isNull())
    {
        TakeBack();
        return true;
    }
    const QImage picture = PictureBefore(pixels->GetLayer(GetLayer()).image, m_tiles, m_area);
    m_pHealed = std::make_shared<QImage>();
    m_work.Start([picture, mask, healed = m_pHealed](const std::atomic<bool>& cancelled)
                 { *healed = HealSpot(picture, mask, cancelled); });
    UpdateOutline();
    return false;
}

void SpotHealingTool::Pressed(const CanvasPoint& point)
{
    if (m_work.IsRunning() && !m_work.Wait(PatienceMs))
        OnLasts();
    else
        StrokeTool::Pressed(point);
}

QCursor SpotHealingTool::StrokeCursor() const
{
    return m_work.IsRunning() ? QCursor(Qt::BusyCursor) : StrokeTool::StrokeCursor();
}

void SpotHealingTool::OnHealed()
{
    TakeBack();
    if (!GetDocument())
        m_pHealed.reset();
    else if (m_pHealed->isNull())
        Q_EMIT Message(tr("The spot is too large: there is nothing around it to heal it from."));
    else
    {
        KXDocumentInterface* pixels = GetDocument()->GetPixels();
        QImage& layer = pixels->EditLayer(GetLayer());
        QVector<SavedTile> tiles = CopyTiles(layer, m_tiles);
        CopyArea(*m_pHealed, m_marked.translated(-m_area.topLeft()), layer, m_marked.topLeft());
        pixels->NotifyChanged(m_marked);
        GetDocument()->GetUndoStack()->push(
            new TilesCommand(GetStepName(), pixels, GetLayer(), std::move(tiles)));
    }
    EndHealing();
}

void SpotHealingTool::OnLasts()
{
    Q_EMIT Message(tr("The spot is being healed. Escape takes it back."));
}

// The mark goes.
void SpotHealingTool::TakeBack()
{
    if (!GetDocument())
        return;
    KXDocumentInterface* pixels = GetDocument()->GetPixels();
    ExchangeTiles(pixels->EditLayer(GetLayer()), m_tiles);
    for (const SavedTile& tile : qAsConst(m_tiles))
        pixels->NotifyChanged(tile.rect);
}

void SpotHealingTool::EndHealing()
{
    m_tiles.clear();
    m_pHealed.reset();
    EndStroke();
    UpdateOutline();
}
