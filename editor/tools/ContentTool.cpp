#include "ContentTool.h"

#include <QGuiApplication>
#include <QPainter>
#include <QUndoStack>

#include "ContentCommand.h"
#include "Document.h"
#include "KXDocumentInterface.h"
#include "MemoryRoom.h"
#include "SelectionOutline.h"

namespace
{

// A document of fewer pixels is worked on before anybody notices.
const qint64 QuickPixels = 2'000'000;
// For the work that is almost done at the next press.
const int PatienceMs = 250;
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

ContentTool::ContentTool(QObject* parent) : Tool(parent)
{
    m_look.setSingleShot(true);
    m_look.setInterval(0);
    connect(&m_look, &QTimer::timeout, this, &ContentTool::OnLook);
    connect(&m_work, &BackgroundWork::Done, this, &ContentTool::OnRendered);
    connect(&m_tick, &QTimer::timeout, this, &ContentTool::OnTick);
}

bool ContentTool::IsPending() const
{
    return m_state == Pending;
}

bool ContentTool::IsRendering() const
{
    return m_state == Rendering;
}

QRect ContentTool::GetBounds() const
{
    return m_bounds;
}

bool ContentTool::Cancel()
{
    if (m_state == Idle)
        return false;
    m_work.Cancel();
    End();
    Q_EMIT Message(QString());
    Q_EMIT ContentEnded();
    return true;
}

void ContentTool::Finish()
{
    Commit();
    if (m_state != Rendering)
        return;
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    m_work.Wait();
    QGuiApplication::restoreOverrideCursor();
}

void ContentTool::Commit()
{
    if (m_state != Pending)
        return;
    if (m_transform == m_placed || !IsSourceThere())
    {
        Cancel();
        return;
    }
    const QRect area = PlaceOfContent(m_placed) | PlaceOfContent(m_transform) | m_bounds;
    const auto outcome = std::make_shared<Outcome>();
    outcome->layer = GetPixels()->GetLayer(m_layer).image;
    const auto render =
        [outcome, content = m_content, transform = m_transform, area](const std::atomic<bool>& cancelled)
    { Render(*outcome, content, transform, area, cancelled); };
    m_state = Rendering;
    m_pOutcome = outcome;
    GetPixels()->BeginEdit();
    PendingChanged();
    const QSize size = GetPixels()->GetSize();
    if (qint64(size.width()) * size.height() <= QuickPixels)
    {
        render(std::atomic<bool>(false));
        OnRendered();
        return;
    }
    GetView()->SetToolCursor(Qt::BusyCursor);
    UpdateCanvas();
    m_tick.start(ProgressPatienceMs);
    m_work.Start(render);
}

void ContentTool::Equip(NVDocumentView* view)
{
    Q_UNUSED(view)
    if (m_pPixels)
        disconnect(m_pPixels, nullptr, this, nullptr);
    ForgetContent();
    m_pPixels = GetPixels();
    if (m_pPixels)
    {
        connect(m_pPixels, &KXDocumentInterface::CompositionChanged, this, &ContentTool::OnPixelsChanged);
        connect(m_pPixels, &KXDocumentInterface::SelectionChanged, this, &ContentTool::OnPixelsChanged);
        connect(m_pPixels, &KXDocumentInterface::LayersChanged, this, &ContentTool::OnPixelsChanged);
        connect(m_pPixels, &KXDocumentInterface::SizeChanged, this, &ContentTool::OnPixelsChanged);
    }
    GetView()->SetOverlay([this](QPainter& painter) { DrawOverlay(painter); });
    OnLook();
}

void ContentTool::CanvasChanged()
{
    if (!GetView())
        OnLook();
}

KXDocumentInterface* ContentTool::GetPixels() const
{
    return GetDocument() ? GetDocument()->GetPixels() : nullptr;
}

bool ContentTool::Begin()
{
    if (m_state == Pending)
        return true;
    if (!GetPixels() || !IsReady() || !CanChangeLayer())
        return false;
    OnLook();
    if (!HasContent())
    {
        RememberSource();
        const KXDocumentInterface::Layer& layer = GetPixels()->GetLayer(m_layer);
        m_content = LiftContent(layer.image, GetPixels()->GetSelectionMask(), m_bounds);
        m_placed = QTransform();
    }
    if (!HasContent())
    {
        Q_EMIT Message(GetPixels()->GetSelectionMask().isNull()
                           ? tr("There is nothing on this layer.")
                           : tr("The selection holds nothing of this layer."));
        return false;
    }
    m_transform = m_placed;
    m_levels.SetPicture(m_content.picture);
    m_state = Pending;
    SetEscapeLive(true);
    LookAtLayers();
    PendingChanged();
    return true;
}

QTransform ContentTool::GetPlacedTransform() const
{
    return m_placed;
}

QTransform ContentTool::GetContentTransform() const
{
    return m_transform;
}

void ContentTool::SetContentTransform(const QTransform& transform)
{
    if (m_state != Pending || transform == m_transform)
        return;
    m_transform = transform;
    m_picture = QImage();
    ShowSelectionLine();
    UpdateCanvas();
}

bool ContentTool::IsReady()
{
    if (m_state != Rendering || m_work.Wait(PatienceMs))
        return true;
    OnTick();
    return false;
}

void ContentTool::UpdateCanvas()
{
    if (GetView())
        GetView()->UpdateOverlay(GetView()->viewport()->rect());
}

void ContentTool::OnPixelsChanged()
{
    // Work under way looks at the source when it is done.
    if (!IsActive() || !m_pPixels || m_pPixels != GetPixels() || m_state == Rendering)
        return;
    if (m_state == Idle)
        m_look.start();
    else if (IsSourceThere())
        LookAtLayers();
    else
    {
        Cancel();
        Q_EMIT Message(tr("The picture has changed: it was taken back."));
    }
}

// Once for all changes of a turn of the event loop, and not while a change goes on.
void ContentTool::OnLook()
{
    m_look.stop();
    const KXDocumentInterface* pixels = GetPixels();
    if (m_state != Idle || (pixels && pixels->IsBeingEdited()))
        return;
    if (HasContent() && IsSourceThere())
        m_bounds = PlaceOfContent(m_placed);
    else
    {
        ForgetContent();
        m_bounds = pixels
            ? ContentBounds(pixels->GetLayer(pixels->GetCurrentLayer()).image, pixels->GetSelectionMask())
            : QRect();
    }
    BoundsChanged();
    UpdateCanvas();
}

void ContentTool::OnRendered()
{
    const std::shared_ptr<Outcome> outcome = m_pOutcome;
    const bool isGood = outcome->isDone && IsSourceThere();
    if (isGood)
        Take(*outcome);
    End();
    Q_EMIT Message(isGood ? QString() : tr("That was not possible: the picture is as it was."));
    Q_EMIT ContentEnded();
}

void ContentTool::OnTick()
{
    if (m_state != Rendering)
        return;
    m_tick.setInterval(ProgressTickMs);
    Q_EMIT Message(GetProgressText().arg(m_pOutcome->percent));
}

void ContentTool::Render(Outcome& outcome, const LiftedContent& content, const QTransform& transform,
                         const QRect& area, const std::atomic<bool>& cancelled)
{
    const auto progress = [&outcome, &cancelled](int percent)
    {
        outcome.percent = percent;
        return !cancelled;
    };
    const QRect bounds = outcome.layer.rect();
    const PlacedImage picture = ResampleAffine(content.picture, transform, bounds, progress);
    const bool isInSight = transform.mapRect(QRectF(content.picture.GetRect())).intersects(bounds);
    if (cancelled || (isInSight && picture.image.isNull()))
        return;
    if (!content.selection.isNull() && !WhyNotSelected(content.selection.size()).isEmpty())
        return;
    outcome.selection = TransformSelection(content.selection, transform, progress);
    if (cancelled)
        return;
    outcome.tiles = PlaceContent(outcome.layer, content, picture, area);
    outcome.isDone = true;
}

bool ContentTool::HasContent() const
{
    return !m_content.picture.image.isNull();
}

// The document is as it was when the content was taken, or put where it is.
bool ContentTool::IsSourceThere() const
{
    const KXDocumentInterface* pixels = GetPixels();
    if (!pixels || m_layer < 0 || m_layer >= pixels->GetLayerCount() || m_layer != pixels->GetCurrentLayer())
        return false;
    const KXDocumentInterface::Layer& layer = pixels->GetLayer(m_layer);
    return layer.visible && layer.image.cacheKey() == m_layerKey &&
        pixels->GetSelectionMask().cacheKey() == m_selectionKey;
}

void ContentTool::RememberSource()
{
    m_layer = GetPixels()->GetCurrentLayer();
    m_layerKey = GetPixels()->GetLayer(m_layer).image.cacheKey();
    m_selectionKey = GetPixels()->GetSelectionMask().cacheKey();
}

void ContentTool::ForgetContent()
{
    m_content = LiftedContent();
    m_layer = -1;
}

void ContentTool::LookAtLayers()
{
    const KXDocumentInterface* pixels = GetPixels();
    QVector<PreviewLayer> layers;
    int changing = 0;
    for (int i = 0; i < pixels->GetLayerCount(); ++i)
    {
        const KXDocumentInterface::Layer& layer = pixels->GetLayer(i);
        const bool hasRest = i == m_layer && !m_content.rest.isNull();
        if (i == m_layer)
            changing = layers.size();
        if (layer.visible)
            layers.append({hasRest ? m_content.rest : layer.image, layer.blendMode, layer.opacity / 100.0});
    }
    // What is taken of a layer without a selection leaves nothing of it.
    m_preview.SetLayers(layers, changing, m_content.rest.isNull());
    m_picture = QImage();
    ShowSelectionLine();
    UpdateCanvas();
}

// Only what lies in the layer, unless it moves by whole pixels.
QRect ContentTool::PlaceOfContent(const QTransform& transform) const
{
    const QRect taken = m_content.picture.GetRect();
    if (IsWholeMove(transform))
        return taken.translated(qRound(transform.dx()), qRound(transform.dy()));
    // Cut before it is rounded: a box that is almost flat reaches farther than integers do.
    const QRectF reach = transform.mapRect(QRectF(taken)).adjusted(-2, -2, 2, 2);
    return (reach & QRectF(GetPixels()->GetRect())).toAlignedRect();
}

void ContentTool::DrawOverlay(QPainter& painter)
{
    if (!GetPixels())
        return;
    if (m_state != Idle)
    {
        const double ratio = painter.device()->devicePixelRatioF();
        const PreviewPlace place = PlaceOf(GetView(), ratio);
        if (m_picture.isNull() || !(place == m_place))
        {
            const auto change = [this](QImage& picture, const QTransform& toLayer)
            { m_levels.Draw(picture, m_transform * toLayer.inverted()); };
            m_picture = m_preview.Render(place, change, &m_corner);
            m_picture.setDevicePixelRatio(ratio);
            m_place = place;
        }
        painter.drawImage(QPointF(m_corner) / ratio, m_picture);
    }
    DrawFrame(painter);
}

// The line of dashes goes along when the content only moves, and rests when it is bent.
void ContentTool::ShowSelectionLine()
{
    SelectionOutline* outline = GetView() ? SelectionOutline::Of(GetView()) : nullptr;
    if (!outline || m_content.selection.isNull())
        return;
    const QTransform way = m_placed.inverted() * m_transform;
    if (m_state == Idle)
        outline->ShowSelection();
    else if (IsWholeMove(way))
        outline->SetOffset(QPoint(qRound(way.dx()), qRound(way.dy())));
    else
        outline->ShowMask(QImage());
}

void ContentTool::Take(Outcome& outcome)
{
    KXDocumentInterface* pixels = GetPixels();
    const QImage selection = pixels->GetSelectionMask();
    m_placed = m_transform;
    if (outcome.tiles.isEmpty() && outcome.selection == selection)
        return;
    pixels->EditLayer(m_layer).swap(outcome.layer);
    for (const SavedTile& tile : qAsConst(outcome.tiles))
        pixels->NotifyChanged(tile.rect);
    if (outcome.selection != selection)
        pixels->SetSelectionMask(outcome.selection);
    RememberSource();
    GetDocument()->GetUndoStack()->push(
        new ContentCommand(GetStepName(), pixels, m_layer, std::move(outcome.tiles), selection));
}

void ContentTool::End()
{
    const bool wasRendering = m_state == Rendering;
    m_state = Idle;
    m_preview.Clear();
    m_levels.Clear();
    m_picture = QImage();
    m_pOutcome.reset();
    m_tick.stop();
    SetEscapeLive(false);
    ShowSelectionLine();
    if (!KeepsContent())
        ForgetContent();
    if (wasRendering && GetPixels())
        GetPixels()->EndEdit();
    PendingChanged();
    OnLook();
}
