// The gradient tool on the canvas: what it shows while a gradient is pending, and how it gets onto the layer.

#include <QPainter>
#include <QUndoStack>

#include "Document.h"
#include "GradientTool.h"
#include "KXDocumentInterface.h"
#include "NVGradientToolbar.h"
#include "TilesCommand.h"

namespace
{

// A document of fewer pixels is drawn on before anybody notices.
const qint64 QuickPixels = 2'000'000;
const int ProgressPatienceMs = 200;
const int ProgressTickMs = 100;

PreviewPlace PlaceOf(const NVDocumentView* view, double ratio)
{
    const QRect sight = view->viewport()->rect();
    PreviewPlace place;
    place.scale = view->GetScale() * ratio;
    place.origin = view->MapFromDocument(QPointF()) * ratio;
    place.pixelRatio = ratio;
    place.area = QRectF(QPointF(sight.topLeft()) * ratio, QSizeF(sight.size()) * ratio).toAlignedRect();
    return place;
}

} // namespace

void GradientTool::Commit()
{
    if (m_state != Pending)
        return;
    m_drag = GradientHandles::None;
    StoreValues();
    const GradientSettings settings = CurrentSettings();
    const QSize size = GetPixels()->GetSize();
    if (qint64(size.width()) * size.height() > QuickPixels)
    {
        StartRendering(settings);
        return;
    }
    // Nobody else is to hold on to the layer.
    m_preview.Clear();
    QVector<SavedTile> tiles = DrawGradient(GetPixels()->EditLayer(m_layer), settings, nullptr);
    EndGradient();
    PushStep(std::move(tiles));
    // What was told meanwhile is over.
    Q_EMIT Message(QString());
    Q_EMIT GradientEnded();
}

void GradientTool::OnDocumentChanged()
{
    if (m_state == Pending)
        LookAtLayers();
}

void GradientTool::OnLayersChanged()
{
    if (m_state != Pending)
        return;
    const KXDocumentInterface* pixels = GetPixels();
    const bool isSame = pixels->GetLayerCount() == m_layerCount && pixels->GetCurrentLayer() == m_layer;
    if (isSame && pixels->GetLayer(m_layer).visible)
        LookAtLayers();
    else
        Cancel();
}

void GradientTool::OnDocumentGone()
{
    Cancel();
}

void GradientTool::OnRendered()
{
    const std::shared_ptr<Outcome> outcome = m_pOutcome;
    if (GetDocument() && !outcome->tiles.isEmpty())
        GetPixels()->EditLayer(m_layer).swap(outcome->layer);
    // The layer of before goes, so that nothing but the step holds on to it.
    outcome->layer = QImage();
    if (GetDocument())
        PushStep(std::move(outcome->tiles));
    EndGradient();
    Q_EMIT Message(QString());
    Q_EMIT GradientEnded();
}

void GradientTool::OnTick()
{
    if (m_state != Rendering)
        return;
    m_tick.setInterval(ProgressTickMs);
    Q_EMIT Message(
        tr("The gradient is being drawn: %1 %. Escape takes it back.").arg(m_pOutcome->progress.percent));
}

void GradientTool::BeginPending(const QPointF& start)
{
    m_handles.SetLine(start, start);
    if (m_state == Pending)
        return;
    m_state = Pending;
    KXDocumentInterface* pixels = GetPixels();
    m_layer = pixels->GetCurrentLayer();
    m_layerCount = pixels->GetLayerCount();
    LookAtLayers();
    connect(pixels, &KXDocumentInterface::CompositionChanged, this, &GradientTool::OnDocumentChanged);
    connect(pixels, &KXDocumentInterface::SelectionChanged, this, &GradientTool::OnDocumentChanged);
    connect(pixels, &KXDocumentInterface::LayersChanged, this, &GradientTool::OnLayersChanged);
    // Not the pixels, which go before their document.
    connect(GetDocument(), &QObject::destroyed, this, &GradientTool::OnDocumentGone);
    GetView()->SetOverlay([this](QPainter& painter) { DrawOverlay(painter); });
    GetGradientBar()->ShowOperationButtons(true);
    SetEscapeLive(true);
    SetEnterLive(true);
    Q_EMIT Message(tr("Enter draws the gradient, Escape takes it back. Shift keeps to whole directions."));
}

void GradientTool::LookAtLayers()
{
    const KXDocumentInterface* pixels = GetPixels();
    QVector<PreviewLayer> layers;
    int changing = 0;
    for (int i = 0; i < pixels->GetLayerCount(); ++i)
    {
        const KXDocumentInterface::Layer& layer = pixels->GetLayer(i);
        if (i == m_layer)
            changing = layers.size();
        if (layer.visible)
            layers.append({layer.image, layer.blendMode, layer.opacity / 100.0});
    }
    m_preview.SetLayers(layers, changing);
    UpdatePreview();
}

void GradientTool::DrawOverlay(QPainter& painter)
{
    if (!GetDocument() || m_state == Idle)
        return;
    const double ratio = painter.device()->devicePixelRatioF();
    const PreviewPlace place = PlaceOf(GetView(), ratio);
    if (m_picture.isNull() || !(place == m_place))
    {
        const GradientSettings settings = CurrentSettings();
        const auto change = [&settings](QImage& picture, const QTransform& toLayer)
        { DrawGradientPreview(picture, toLayer, settings); };
        m_picture = m_preview.Render(place, change, &m_corner);
        m_picture.setDevicePixelRatio(ratio);
        m_place = place;
    }
    painter.drawImage(QPointF(m_corner) / ratio, m_picture);
    if (m_state == Pending)
        m_handles.Draw(painter, GetView());
}

void GradientTool::UpdatePreview()
{
    if (m_state != Pending || !GetView())
        return;
    m_picture = QImage();
    GetView()->UpdateOverlay(GetView()->viewport()->rect());
}

void GradientTool::UpdateHover(GradientHandles::Handle handle)
{
    if (!m_handles.SetHover(handle))
        return;
    GetView()->SetToolCursor(handle == GradientHandles::None ? Qt::CrossCursor : Qt::SizeAllCursor);
    GetView()->UpdateOverlay(m_handles.Area(GetView()));
}

void GradientTool::StartRendering(const GradientSettings& settings)
{
    m_state = Rendering;
    m_pOutcome = std::make_shared<Outcome>();
    m_pOutcome->layer = GetPixels()->GetLayer(m_layer).image;
    GetPixels()->BeginEdit();
    SetEnterLive(false);
    GetView()->SetToolCursor(Qt::BusyCursor);
    GetView()->UpdateOverlay(GetView()->viewport()->rect());
    m_tick.start(ProgressPatienceMs);
    m_work.Start([settings, outcome = m_pOutcome](const std::atomic<bool>&)
                 { outcome->tiles = DrawGradient(outcome->layer, settings, &outcome->progress); });
}

void GradientTool::PushStep(QVector<SavedTile> tiles)
{
    if (tiles.isEmpty())
        return;
    for (const SavedTile& tile : qAsConst(tiles))
        GetPixels()->NotifyChanged(tile.rect);
    GetDocument()->GetUndoStack()->push(
        new TilesCommand(tr("Gradient"), GetPixels(), m_layer, std::move(tiles)));
}

void GradientTool::EndGradient()
{
    const bool wasRendering = m_state == Rendering;
    m_state = Idle;
    m_drag = GradientHandles::None;
    m_handles.SetHover(GradientHandles::None);
    m_preview.Clear();
    m_picture = QImage();
    m_pOutcome.reset();
    m_tick.stop();
    SetEscapeLive(false);
    SetEnterLive(false);
    GetGradientBar()->ShowOperationButtons(false);
    if (GetView())
    {
        GetView()->SetOverlay(NVDocumentView::Overlay());
        GetView()->SetToolCursor(Qt::CrossCursor);
    }
    if (GetDocument())
    {
        disconnect(GetPixels(), nullptr, this, nullptr);
        disconnect(GetDocument(), nullptr, this, nullptr);
        if (wasRendering)
            GetPixels()->EndEdit();
    }
}
