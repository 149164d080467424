#include "StampTool.h"

#include <QPainterPath>

#include "BrushOutline.h"
#include "Document.h"
#include "KXDocumentInterface.h"
#include "LayerSample.h"
#include "NVStampToolbar.h"

namespace
{

const QLatin1String AlignedKey("aligned");
const QLatin1String AllLayersKey("allLayers");

// Of the cross, in view pixels.
const double CrossArm = 7;

} // namespace

StampTool::StampTool(QSettings* settings, QObject* parent)
    : StrokeTool(settings, {QStringLiteral("stamp"), 40, 10, 2}, parent)
{
}

StampTool::~StampTool() = default;

NVStampToolbar* StampTool::GetStampBar()
{
    return static_cast<NVStampToolbar*>(GetBar());
}

QString StampTool::GetName() const
{
    return tr("Clone Stamp");
}

QString StampTool::GetPictureName() const
{
    return QStringLiteral("tool-stamp");
}

QKeySequence StampTool::GetKey() const
{
    return Qt::Key_S;
}

void StampTool::StoreValues()
{
    StrokeTool::StoreValues();
    SetValue(AlignedKey, GetStampBar()->IsAligned());
    SetValue(AllLayersKey, GetStampBar()->IsAllLayers());
}

void StampTool::Finish()
{
    m_isChoosing = false;
    StrokeTool::Finish();
}

NVBrushToolbarWidget* StampTool::CreateStrokeBar()
{
    auto* bar = new NVStampToolbar(nullptr);
    connect(bar, &NVStampToolbar::Aligned, this, &StampTool::OnAligned);
    return bar;
}

QString StampTool::GetBarPictureName() const
{
    return QStringLiteral("tool-bar-stamp");
}

QString StampTool::GetStepName() const
{
    return tr("Clone Stamp");
}

int StampTool::GetBlendMode()
{
    return GetStampBar()->GetBlendMode();
}

void StampTool::RestoreOwnValues(NVBrushToolbarWidget* bar)
{
    auto* stampBar = static_cast<NVStampToolbar*>(bar);
    stampBar->SetAligned(GetValue(AlignedKey, true).toBool());
    stampBar->SetAllLayers(GetValue(AllLayersKey, true).toBool());
}

bool StampTool::PrepareStroke(const CanvasPoint& point, StrokeSettings& settings)
{
    if (!m_pSourceDocument)
    {
        Q_EMIT Message(tr("Hold Alt and click on the picture to say where the stamp reads from."));
        return false;
    }
    if (!HasSource())
    {
        Q_EMIT Message(
            tr("The stamp reads from another picture: hold Alt and click to choose a place in this one."));
        return false;
    }
    if (!m_hasOffset || !m_isAligned)
        m_offset = PixelAt(m_source) - PixelAt(point.position);
    m_hasOffset = true;
    const QImage sampled = SampledLayers(GetDocument()->GetPixels(), GetStampBar()->IsAllLayers());
    settings.source = MakeCloneSource(m_offset, sampled);
    return true;
}

void StampTool::Pressed(const CanvasPoint& point)
{
    if (point.button == Qt::LeftButton && point.modifiers.testFlag(Qt::AltModifier))
    {
        Finish();
        m_isChoosing = true;
        ChooseSource(point.position);
    }
    else
        StrokeTool::Pressed(point);
}

void StampTool::Moved(const CanvasPoint& point)
{
    StrokeTool::Moved(point);
    if (m_isChoosing)
        ChooseSource(point.position);
}

void StampTool::Released(const CanvasPoint& point)
{
    m_isChoosing = false;
    StrokeTool::Released(point);
}

QRegion StampTool::OverlayRegion() const
{
    QRegion region = StrokeTool::OverlayRegion();
    if (HasSource())
        region += QRectF(-CrossArm, -CrossArm, 2 * CrossArm, 2 * CrossArm)
                      .translated(GetView()->MapFromDocument(CrossPlace()))
                      .toAlignedRect()
                      .adjusted(-3, -3, 3, 3);
    return region;
}

void StampTool::PaintOverlay(QPainter& painter) const
{
    StrokeTool::PaintOverlay(painter);
    if (!GetView() || !HasSource())
        return;
    QPainterPath cross;
    cross.moveTo(-CrossArm, 0);
    cross.lineTo(CrossArm, 0);
    cross.moveTo(0, -CrossArm);
    cross.lineTo(0, CrossArm);
    DrawOnPicture(painter, cross, GetView()->MapFromDocument(CrossPlace()));
}

void StampTool::OnAligned(bool aligned)
{
    m_isAligned = aligned;
    m_hasOffset = false;
    if (GetView() && IsActive())
        GetView()->viewport()->update();
}

// The place has moved, or is gone.
void StampTool::OnSizeChanged()
{
    ForgetSource();
}

void StampTool::ChooseSource(const QPointF& position)
{
    if (!GetDocument() || !GetDocument()->GetPixels()->GetRect().contains(PixelAt(position)))
        return;
    UpdateOverlay();
    ForgetSource();
    m_pSourceDocument = GetDocument();
    connect(m_pSourceDocument->GetPixels(), &KXDocumentInterface::SizeChanged, this,
            &StampTool::OnSizeChanged);
    m_source = position;
    m_hasOffset = false;
    UpdateOverlay();
    Q_EMIT Message(tr("The stamp reads from %1, %2.").arg(PixelAt(position).x()).arg(PixelAt(position).y()));
}

void StampTool::ForgetSource()
{
    if (m_pSourceDocument)
        disconnect(m_pSourceDocument->GetPixels(), &KXDocumentInterface::SizeChanged, this,
                   &StampTool::OnSizeChanged);
    m_pSourceDocument = nullptr;
}

// In the document that is painted on.
bool StampTool::HasSource() const
{
    return m_pSourceDocument && m_pSourceDocument == GetDocument();
}

// Goes with the pointer where it is known what a stroke would read.
QPointF StampTool::CrossPlace() const
{
    const bool goesAlong = IsStrokeRunning() || (m_hasOffset && m_isAligned);
    return goesAlong && IsPointerIn() ? GetPointer() + m_offset : m_source;
}
