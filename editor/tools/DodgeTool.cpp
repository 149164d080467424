#include "DodgeTool.h"

#include "NVDodgeToolbar.h"

namespace
{

const QLatin1String RangeKey("range");
const QLatin1String ExposureKey("exposure");

int CutRange(int range)
{
    return qBound(int(ToneRange::Shadows), range, int(ToneRange::Highlights));
}

} // namespace

DodgeTool::DodgeTool(QSettings* settings, QObject* parent)
    : StrokeTool(settings, {QStringLiteral("dodge"), 60, 10, 2}, parent)
{
}

DodgeTool::~DodgeTool() = default;

NVDodgeToolbar* DodgeTool::GetDodgeBar()
{
    return static_cast<NVDodgeToolbar*>(GetBar());
}

QString DodgeTool::GetName() const
{
    return tr("Dodge");
}

QString DodgeTool::GetPictureName() const
{
    return QStringLiteral("tool-dodge");
}

QKeySequence DodgeTool::GetKey() const
{
    return Qt::Key_O;
}

void DodgeTool::StoreValues()
{
    StrokeTool::StoreValues();
    SetValue(RangeKey, GetDodgeBar()->GetRange());
    SetValue(ExposureKey, GetDodgeBar()->GetExposure());
}

NVBrushToolbarWidget* DodgeTool::CreateStrokeBar()
{
    return new NVDodgeToolbar(nullptr);
}

QString DodgeTool::GetBarPictureName() const
{
    return QStringLiteral("tool-bar-dodge");
}

QString DodgeTool::GetStepName() const
{
    return tr("Dodge");
}

void DodgeTool::RestoreOwnValues(NVBrushToolbarWidget* bar)
{
    auto* dodgeBar = static_cast<NVDodgeToolbar*>(bar);
    dodgeBar->SetRange(CutRange(GetValue(RangeKey, int(ToneRange::Highlights)).toInt()));
    dodgeBar->SetExposure(GetValue(ExposureKey, 50).toInt());
}

bool DodgeTool::PrepareStroke(const CanvasPoint& point, StrokeSettings& settings)
{
    Q_UNUSED(point)
    const auto range = ToneRange(CutRange(GetDodgeBar()->GetRange()));
    settings.source = MakeDodgeSource(range, GetDodgeBar()->GetExposure());
    return true;
}
