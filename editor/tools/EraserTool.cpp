#include "EraserTool.h"

#include "NVEraserToolbar.h"

EraserTool::EraserTool(QSettings* settings, QObject* parent)
    : StrokeTool(settings, {QStringLiteral("eraser"), 30, 10, 0}, parent)
{
}

EraserTool::~EraserTool() = default;

NVEraserToolbar* EraserTool::GetEraserBar()
{
    return static_cast<NVEraserToolbar*>(GetBar());
}

QString EraserTool::GetName() const
{
    return tr("Eraser");
}

QString EraserTool::GetPictureName() const
{
    return QStringLiteral("tool-eraser");
}

QKeySequence EraserTool::GetKey() const
{
    return Qt::Key_E;
}

NVBrushToolbarWidget* EraserTool::CreateStrokeBar()
{
    return new NVEraserToolbar(nullptr);
}

QString EraserTool::GetBarPictureName() const
{
    return QStringLiteral("eraser");
}

QString EraserTool::GetStepName() const
{
    return tr("Erase");
}

bool EraserTool::PrepareStroke(const CanvasPoint& point, StrokeSettings& settings)
{
    Q_UNUSED(point)
    settings.erase = GetLayer() > 0;
    settings.foreground = settings.background;
    return true;
}
