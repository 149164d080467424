#include "BrushTool.h"

#include "Document.h"
#include "KXDocumentInterface.h"
#include "KXShortcut.h"
#include "LayerSample.h"
#include "NVApplication.h"
#include "NVBrushToolbar.h"
#include "PatternSelectWidget.h"

namespace
{

const QLatin1String FillModeKey("fillMode");
const QLatin1String PatternKey("pattern");

} // namespace

BrushTool::BrushTool(QSettings* settings, QObject* parent)
    : StrokeTool(settings, {QStringLiteral("brush"), 20, 10, 0}, parent)
{
}

BrushTool::~BrushTool() = default;

NVBrushToolbar* BrushTool::GetBrushBar()
{
    return static_cast<NVBrushToolbar*>(GetBar());
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

void BrushTool::StoreValues()
{
    StrokeTool::StoreValues();
    SetValue(FillModeKey, GetBrushBar()->GetStyle());
    SetValue(PatternKey, NVApplication::GetTexturePatternIndex());
}

void BrushTool::Finish()
{
    m_isPicking = false;
    StrokeTool::Finish();
}

NVBrushToolbarWidget* BrushTool::CreateStrokeBar()
{
    // The bar shows the pattern that is current when it is made.
    NVApplication::GetInstance()->SetTexturePatternIndex(GetValue(PatternKey, 0).toInt());
    auto* bar = new NVBrushToolbar(nullptr);
    connect(bar->GetPatterns(), &PatternSelectWidget::ItemSelected, NVApplication::GetInstance(),
            &NVApplication::SetTexturePatternIndex);
    return bar;
}

QString BrushTool::GetBarPictureName() const
{
    return QStringLiteral("tool-bar-brush");
}

QString BrushTool::GetStepName() const
{
    return tr("Brush Stroke");
}

int BrushTool::GetBlendMode()
{
    return GetBrushBar()->GetBlendMode();
}

void BrushTool::RestoreOwnValues(NVBrushToolbarWidget* bar)
{
    static_cast<NVBrushToolbar*>(bar)->SetStyle(GetValue(FillModeKey, 0).toUInt());
}

bool BrushTool::PrepareStroke(const CanvasPoint& point, StrokeSettings& settings)
{
    Q_UNUSED(point)
    settings.fillMode = GetBrushBar()->GetStyle();
    GetBrushBar()->GetPatterns()->GetItemImage(NVApplication::GetTexturePatternIndex(), settings.pattern);
    return true;
}

void BrushTool::CreateShortcuts()
{
    StrokeTool::CreateShortcuts();
    m_pPick = new KXShortcut(GetBar(), Qt::Key_I);
    connect(m_pPick, &KXShortcut::Activated, this, &BrushTool::OnPickKey);
}

void BrushTool::ReleaseShortcuts()
{
    delete m_pPick;
    m_pPick = nullptr;
    StrokeTool::ReleaseShortcuts();
}

void BrushTool::Pressed(const CanvasPoint& point)
{
    if (point.button == Qt::LeftButton && point.modifiers.testFlag(Qt::AltModifier))
    {
        Finish();
        m_isPicking = true;
        PickColor(point.position);
    }
    else
        StrokeTool::Pressed(point);
}

void BrushTool::Moved(const CanvasPoint& point)
{
    StrokeTool::Moved(point);
    if (m_isPicking)
        PickColor(point.position);
}

void BrushTool::Released(const CanvasPoint& point)
{
    m_isPicking = false;
    StrokeTool::Released(point);
}

void BrushTool::OnPickKey()
{
    if (IsPointerIn())
        PickColor(GetPointer());
    else
        Q_EMIT Message(tr("Move the pointer over the picture to pick a colour there."));
}

void BrushTool::PickColor(const QPointF& position)
{
    const QPoint pixel = PixelAt(position);
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
