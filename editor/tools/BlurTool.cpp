#include "BlurTool.h"

#include "Document.h"
#include "LayerSample.h"
#include "NVBlurToolbar.h"

namespace
{

const QLatin1String SampleAllKey("sampleAll");

} // namespace

double BlurSigma(int size)
{
    return qBound(0.8, size / 15.0, 20.0);
}

BlurTool::BlurTool(QSettings* settings, QObject* parent)
    : StrokeTool(settings, {QStringLiteral("blur"), 40, 10, 2}, parent)
{
}

BlurTool::~BlurTool() = default;

NVBlurToolbar* BlurTool::GetBlurBar()
{
    return static_cast<NVBlurToolbar*>(GetBar());
}

QString BlurTool::GetName() const
{
    return tr("Blur");
}

QString BlurTool::GetPictureName() const
{
    return QStringLiteral("tool-blur");
}

QKeySequence BlurTool::GetKey() const
{
    return Qt::Key_R;
}

void BlurTool::StoreValues()
{
    StrokeTool::StoreValues();
    SetValue(SampleAllKey, GetBlurBar()->SampleAll());
}

NVBrushToolbarWidget* BlurTool::CreateStrokeBar()
{
    return new NVBlurToolbar(nullptr);
}

QString BlurTool::GetBarPictureName() const
{
    return QStringLiteral("tool-bar-blurbrush");
}

QString BlurTool::GetStepName() const
{
    return tr("Blur");
}

int BlurTool::GetBlendMode()
{
    return GetBlurBar()->GetBlendMode();
}

void BlurTool::RestoreOwnValues(NVBrushToolbarWidget* bar)
{
    static_cast<NVBlurToolbar*>(bar)->SetSampleAll(GetValue(SampleAllKey, true).toBool());
}

bool BlurTool::PrepareStroke(const CanvasPoint& point, StrokeSettings& settings)
{
    Q_UNUSED(point)
    const QImage sampled = SampledLayers(GetDocument()->GetPixels(), GetBlurBar()->SampleAll());
    settings.source = MakeBlurSource(BlurSigma(GetBlurBar()->GetSize()), sampled);
    return true;
}
