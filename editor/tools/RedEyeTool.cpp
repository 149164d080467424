#include "RedEyeTool.h"

#include <QApplication>
#include <QDoubleSpinBox>
#include <QSettings>
#include <QUndoStack>

#include "Document.h"
#include "KXDocumentInterface.h"
#include "LayerSample.h"
#include "NVRedEyeToolbar.h"
#include "RedEye.h"
#include "TilesCommand.h"

namespace
{

const QLatin1String LevelKey("redEye/level");

} // namespace

RedEyeTool::RedEyeTool(QSettings* settings, QObject* parent) : Tool(parent), m_pSettings(settings) { }

NVRedEyeToolbar* RedEyeTool::GetRedEyeBar()
{
    return static_cast<NVRedEyeToolbar*>(GetBar());
}

QString RedEyeTool::GetName() const
{
    return tr("Red Eye");
}

QString RedEyeTool::GetPictureName() const
{
    return QStringLiteral("tool-red-eye");
}

QKeySequence RedEyeTool::GetKey() const
{
    return Qt::Key_Y;
}

void RedEyeTool::StoreValues()
{
    m_pSettings->setValue(LevelKey, GetRedEyeBar()->GetIntensity());
}

QWidget* RedEyeTool::CreateBar()
{
    auto* bar = new NVRedEyeToolbar(nullptr, Qt::WindowFlags());
    bar->SetIntensity(m_pSettings->value(LevelKey, 1.0).toDouble());
    connect(bar->findChild<QDoubleSpinBox*>(), &QAbstractSpinBox::editingFinished, this,
            &RedEyeTool::OnLevelEntered);
    return bar;
}

// Enter leaves the box, as it leaves those of the other bars, so that the keys of the tools are heard again.
void RedEyeTool::OnLevelEntered()
{
    // Told also when the focus has gone elsewhere by itself.
    const auto* box = qobject_cast<QDoubleSpinBox*>(QApplication::focusWidget());
    if (box && GetBar()->isAncestorOf(box) && GetView())
        GetView()->setFocus();
}

void RedEyeTool::UpdateBarTheme(QWidget* bar)
{
    SetBarPicture(bar, QStringLiteral("m_pPictureLabelMain"), QStringLiteral("red-eyes-icon"));
}

void RedEyeTool::Equip(NVDocumentView* view)
{
    view->SetToolCursor(Qt::CrossCursor);
}

void RedEyeTool::Pressed(const CanvasPoint& point)
{
    if (point.button != Qt::LeftButton || !CanChangeLayer())
        return;
    StoreValues();
    KXDocumentInterface* pixels = GetDocument()->GetPixels();
    const int layer = pixels->GetCurrentLayer();
    QVector<SavedTile> tiles = RemoveRedEye(pixels->EditLayer(layer), PixelAt(point.position),
                                            GetRedEyeBar()->GetIntensity(), pixels->GetSelectionMask());
    if (tiles.isEmpty())
    {
        Q_EMIT Message(tr("There is nothing red enough here. A higher level takes paler reds."));
        return;
    }
    for (const SavedTile& tile : qAsConst(tiles))
        pixels->NotifyChanged(tile.rect);
    GetDocument()->GetUndoStack()->push(
        new TilesCommand(tr("Remove Red Eye"), pixels, layer, std::move(tiles)));
}
