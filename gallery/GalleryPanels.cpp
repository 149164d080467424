// The side panels, with a document where they need one, and the popup of the gradients.

#include <QCoreApplication>
#include <QListView>
#include <QPixmap>
#include <QStandardItemModel>

#include "GalleryExhibits.h"
#include "GalleryParts.h"
#include "KXBrushSettings.h"
#include "KXColorSampleDelegate.h"
#include "KXDocumentModel.h"
#include "NVBrushPanel.h"
#include "NVColorSamplePanel.h"
#include "NVDocumentView.h"
#include "NVGradientPopup.h"
#include "NVHistoryItem.h"
#include "NVHistoryPanel.h"
#include "NVNavigatorPanel.h"
#include "NVSelectColorRange.h"
#include "NVZoomPanel.h"

namespace
{

// The room for the picture of a step.
const QSize StepPictureSize(24, 24);

QImage StepPicture()
{
    return DrawGalleryPicture(StepPictureSize * 4)
        .scaled(StepPictureSize, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

std::unique_ptr<Exhibit> MakeBrushPanel(QWidget* parent)
{
    auto* panel = new NVBrushPanel(parent, Qt::WindowFlags());
    // The panel does not keep the brush.
    KXBrushSettings settings(nullptr);
    settings.SetCurrentPreset(1);
    panel->SetBrush(settings.GetCurrentBrush());
    return std::make_unique<Exhibit>(panel);
}

std::unique_ptr<Exhibit> MakeColorSamplePanel(QWidget* parent)
{
    const QImage picture = DrawGalleryPicture(QSize(96, 64));
    const QVector<QPoint> places = {{12, 8}, {65, 22}, {40, 40}, {80, 58}};
    const auto model = std::make_shared<QStandardItemModel>(places.size(), 1);
    for (int row = 0; row < places.size(); ++row)
    {
        const QPoint& place = places.at(row);
        const QColor color = picture.pixelColor(place);
        const QModelIndex index = model->index(row, 0);
        model->setData(index, QStringLiteral("X: %1  Y: %2").arg(place.x()).arg(place.y()));
        model->setData(index, color, Qt::DecorationRole);
        model->setData(
            index,
            QStringLiteral("R: %1  G: %2  B: %3").arg(color.red()).arg(color.green()).arg(color.blue()),
            KXColorSampleDelegate::DetailRole);
    }
    auto* panel = new NVColorSamplePanel(parent);
    panel->SetModel(model.get());
    panel->SelectRow(1);
    auto exhibit = std::make_unique<Exhibit>(panel);
    // The panel leaves its delegate to nobody.
    panel->findChild<QListView*>()->itemDelegate()->setParent(model.get());
    exhibit->context.push_back(model);
    return exhibit;
}

std::unique_ptr<Exhibit> MakeColorRangePanel(QWidget* parent)
{
    auto* panel = new NVSelectColorRange(parent);
    for (const QColor& color : {QColor(66, 122, 88), QColor(34, 74, 52), QColor(122, 104, 142)})
        panel->AddColor(color, color);
    panel->SetTolerance(40);
    const QImage mask = DrawGalleryPicture(QSize(240, 160)).convertToFormat(QImage::Format_Grayscale8);
    panel->SetPreview(QPixmap::fromImage(mask));
    return std::make_unique<Exhibit>(panel);
}

std::unique_ptr<Exhibit> MakeGradientPopup(QWidget* parent)
{
    auto* popup = new NVGradientPopup(parent);
    popup->Load(GalleryGradients());
    auto exhibit = std::make_unique<Exhibit>(popup);
    exhibit->open = [popup](const QPoint& position)
    {
        popup->Popup(position);
        return QString();
    };
    return exhibit;
}

std::unique_ptr<Exhibit> MakeHistoryItem(QWidget* parent)
{
    auto* item = new NVHistoryItem(parent);
    item->SetText(QCoreApplication::translate("Gallery", "Brush"));
    item->SetIcon(StepPicture());
    item->EnableHoverInteraction(true);
    item->SetSelected(true);
    auto exhibit = std::make_unique<Exhibit>(item);
    exhibit->isRow = true;
    return exhibit;
}

std::unique_ptr<Exhibit> MakeHistoryPanel(QWidget* parent)
{
    auto* panel = new NVHistoryPanel(parent);
    const QStringList steps = {QCoreApplication::translate("Gallery", "Open"),
                               QCoreApplication::translate("Gallery", "Brush"),
                               QCoreApplication::translate("Gallery", "Eraser"),
                               QCoreApplication::translate("Gallery", "Gradient"),
                               QCoreApplication::translate("Gallery", "Crop"),
                               QCoreApplication::translate("Gallery", "Image size"),
                               QCoreApplication::translate("Gallery", "Red eye"),
                               QCoreApplication::translate("Gallery", "Text")};
    for (const QString& step : steps)
        panel->AddItem(step, StepPicture());
    panel->SetSelected(5);
    panel->EnableActions(true);
    QObject::connect(panel, &NVHistoryPanel::IndexActivated, panel, &NVHistoryPanel::SetSelected);
    return std::make_unique<Exhibit>(panel);
}

std::unique_ptr<Exhibit> MakeNavigatorPanel(QWidget* parent)
{
    auto* panel = new NVNavigatorPanel(parent);
    auto exhibit = std::make_unique<Exhibit>(panel);
    NVDocumentView* canvas = AddCanvas(*exhibit, parent);
    panel->SetSourceView(canvas);
    QObject::connect(canvas, &NVDocumentView::Moved, panel,
                     [panel](const CanvasPoint& point) { panel->SetLookAt(point.position.toPoint()); });
    return exhibit;
}

std::unique_ptr<Exhibit> MakeZoomPanel(QWidget* parent)
{
    auto* panel = new NVZoomPanel(parent);
    auto exhibit = std::make_unique<Exhibit>(panel);
    NVDocumentView* canvas = AddCanvas(*exhibit, parent);
    canvas->FitInView();
    panel->SetDocument(canvas->GetModel()->GetDocument());
    panel->SetZoomValue(8);
    panel->SetGridType(1);
    panel->SetLookPosition(QPoint(653, 288));
    QObject::connect(canvas, &NVDocumentView::Moved, panel,
                     [panel](const CanvasPoint& point) { panel->SetLookPosition(point.position.toPoint()); });
    return exhibit;
}

} // namespace

const std::vector<GalleryRow>& GalleryPanels()
{
    static const std::vector<GalleryRow> rows = {
        {"NVBrushPanel", GalleryGroup::Panels, MakeBrushPanel},
        {"NVColorSamplePanel", GalleryGroup::Panels, MakeColorSamplePanel},
        {"NVGradientPopup", GalleryGroup::Panels, MakeGradientPopup},
        {"NVHistoryItem", GalleryGroup::Panels, MakeHistoryItem},
        {"NVHistoryPanel", GalleryGroup::Panels, MakeHistoryPanel},
        {"NVNavigatorPanel", GalleryGroup::Panels, MakeNavigatorPanel},
        {"NVSelectColorRange", GalleryGroup::Panels, MakeColorRangePanel},
        {"NVZoomPanel", GalleryGroup::Panels, MakeZoomPanel},
    };
    return rows;
}
