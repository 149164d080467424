#include "Specimens.h"

#include "BrushPreview.h"
#include "CameraView.h"
#include "HistogramWidget.h"
#include "KXAddToBatchDialog.h"
#include "KXAnchorSelection.h"
#include "KXBatchInputModel.h"
#include "KXBrushSettings.h"
#include "KXColorDlg.h"
#include "KXColorSampleDelegate.h"
#include "KXCommonComboBox.h"
#include "KXDialog.h"
#include "KXDialogPanel.h"
#include "KXDocumentInterface.h"
#include "KXDocumentModel.h"
#include "KXMdiArea.h"
#include "KXMessageBox.h"
#include "KXPanel.h"
#include "KXPopupWindow.h"
#include "NVAutoCrop.h"
#include "NVBlurToolbar.h"
#include "NVBrushPanel.h"
#include "NVBrushToolbar.h"
#include "NVCanvasSize.h"
#include "NVColorPickerToolbar.h"
#include "NVColorSamplePanel.h"
#include "NVColorSamplerToolbar.h"
#include "NVCropToolbarMain.h"
#include "NVCropToolbarStart.h"
#include "NVDocumentView.h"
#include "NVDodgeToolbar.h"
#include "NVEraserToolbar.h"
#include "NVFillCanToolbar.h"
#include "NVGradientEditor.h"
#include "NVGradientPopup.h"
#include "NVGradientToolbar.h"
#include "NVHistoryItem.h"
#include "NVHistoryPanel.h"
#include "NVImageSize.h"
#include "NVIncompleteDocumentInfo.h"
#include "NVMagicWandToolbar.h"
#include "NVMoveToolbar.h"
#include "NVNavigatorPanel.h"
#include "NVPrintPreviewDialog.h"
#include "NVRedEyeToolbar.h"
#include "NVRulerToolbar.h"
#include "NVSelectColorRange.h"
#include "NVSelectionToolbar.h"
#include "NVSpinBox.h"
#include "NVSpotHealingToolbar.h"
#include "NVStampToolbar.h"
#include "NVTextToolbar.h"
#include "NVTransformToolbar.h"
#include "NVWarpTextDialog.h"
#include "NVZoomPanel.h"
#include "NVZoomToolbar.h"
#include "NavigatorWidget.h"
#include "PatternSelectWidget.h"
#include "TransformationCenterPointControl.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QStandardItemModel>
#include <QtTest>

#include <algorithm>

namespace
{
// Something to do in frames that are empty by themselves.
void fill(QWidget* content)
{
    auto* layout = new QHBoxLayout(content);
    auto* label = new QLabel("&Width:");
    auto* edit = new QLineEdit;
    label->setBuddy(edit);
    layout->addWidget(label);
    layout->addWidget(edit);
    layout->addWidget(new QPushButton("Press"));
    content->setWindowTitle("Content");
}

template <class Widget>
void makeFrame(Specimen& specimen)
{
    auto* frame = new Widget;
    fill(frame->Content());
    specimen.Widget = frame;
}

void makePopup(Specimen& specimen)
{
    auto* popup = new KXPopupWindow;
    fill(popup->GetContent());
    specimen.Widget = popup;
}

void makeMessageBox(Specimen& specimen)
{
    auto* box = new KXMessageBox;
    box->setWindowTitle("Question");
    box->SetText("Save the changes?\nThey are lost else.");
    box->SetIcon(KXMessageBox::Question);
    box->AddButton(KXMessageBox::Save);
    box->AddButton(KXMessageBox::Cancel);
    box->SetDefaultButton(KXMessageBox::Save);
    specimen.Widget = box;
}

void makeCombo(Specimen& specimen)
{
    auto* combo = new KXCommonComboBox;
    combo->addItems({"Normal", "Multiply", "Screen"});
    specimen.Widget = combo;
}

void makeView(Specimen& specimen)
{
    QImage image(64, 48, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::darkCyan);
    const auto document = std::make_shared<KXDocumentInterface>(image);
    const auto model = std::make_shared<KXDocumentModel>(document.get());
    specimen.Widget = new NVDocumentView(model.get());
    specimen.Context = {model, document};
}

void makeMdiArea(Specimen& specimen)
{
    auto* area = new KXMdiArea;
    auto* edit = new QLineEdit;
    edit->setAccessibleName("Notes");
    area->addSubWindow(edit)->setWindowTitle("First");
    area->addSubWindow(new QLabel("text"))->setWindowTitle("Second");
    specimen.Widget = area;
}

// Neither keeps the brush.
void makeBrushPreview(Specimen& specimen)
{
    const KXBrushSettings settings(nullptr);
    auto* preview = new BrushPreview;
    preview->SetBrush(settings.GetCurrentBrush());
    specimen.Widget = preview;
}

void makeBrushPanel(Specimen& specimen)
{
    const KXBrushSettings settings(nullptr);
    auto* panel = new NVBrushPanel(nullptr, Qt::WindowFlags());
    panel->SetBrush(settings.GetCurrentBrush());
    specimen.Widget = panel;
}

template <class Widget>
void makeGradientWidget(Specimen& specimen)
{
    const NVGradientStop first(0.0, Qt::red, false, false, false);
    const NVGradientStop middle(0.4, QColor(0, 200, 0, 100), false, false, false);
    const NVGradientStop last(1.0, Qt::blue, false, false, false);
    auto* widget = new Widget(nullptr);
    widget->Load({{first, middle, last}, {first, last}});
    specimen.Widget = widget;
}

void makeHistoryPanel(Specimen& specimen)
{
    auto* panel = new NVHistoryPanel(nullptr);
    QImage image(24, 24, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    for (int i = 0; i < 20; ++i)
    {
        panel->AddItem(QString("Step %1").arg(i), image);
    }
    panel->EnableActions(true);
    panel->SetSelected(12);
    specimen.Widget = panel;
}

// A document whose two halves differ, and whose left half is half transparent.
std::shared_ptr<KXDocumentInterface> makeDocument()
{
    QImage image(64, 48, QImage::Format_ARGB32_Premultiplied);
    image.fill(QColor(0, 120, 120, 128));
    for (int y = 0; y < image.height(); ++y)
    {
        for (int x = image.width() / 2; x < image.width(); ++x)
        {
            image.setPixelColor(x, y, QColor(200, 90, 30));
        }
    }
    return std::make_shared<KXDocumentInterface>(image);
}

void makeOverview(Specimen& specimen)
{
    const auto document = makeDocument();
    auto* overview = new NavigatorWidget;
    overview->SetDocument(document.get(), nullptr);
    overview->SetViewRect(QRectF(8, 6, 20, 15));
    specimen.Widget = overview;
    specimen.Context = {document};
}

void makeLoupe(Specimen& specimen)
{
    const auto document = makeDocument();
    auto* loupe = new CameraView;
    loupe->SetDocument(document.get(), 0);
    loupe->SetScaleFactor(8);
    loupe->SetGridType(CameraView::GridStandard);
    specimen.Widget = loupe;
    specimen.Context = {document};
}

void makeHistogram(Specimen& specimen)
{
    const auto document = makeDocument();
    auto* histogram = new HistogramWidget;
    histogram->SetDocument(document.get());
    specimen.Widget = histogram;
    specimen.Context = {document};
}

void makeNavigatorPanel(Specimen& specimen)
{
    const auto document = makeDocument();
    const auto model = std::make_shared<KXDocumentModel>(document.get());
    const auto view = std::make_shared<NVDocumentView>(model.get());
    auto* panel = new NVNavigatorPanel(nullptr);
    panel->SetSourceView(view.get());
    specimen.Widget = panel;
    specimen.Context = {view, model, document};
}

void makeColorRange(Specimen& specimen)
{
    auto* panel = new NVSelectColorRange(nullptr);
    for (const QColor& color : {QColor(Qt::red), QColor(Qt::green), QColor(0, 0, 255, 0)})
    {
        panel->AddColor(color, color);
    }
    specimen.Widget = panel;
}

// The panel deletes neither its model nor its delegate.
void makeColorSamples(Specimen& specimen)
{
    const auto model = std::make_shared<QStandardItemModel>(4, 1);
    for (int row = 0; row < model->rowCount(); ++row)
    {
        const QModelIndex index = model->index(row, 0);
        model->setData(index, QString("X: %1  Y: 7").arg(row), Qt::DisplayRole);
        model->setData(index, QColor::fromHsv(row * 60, 200, 200), Qt::DecorationRole);
        model->setData(index, "R: 1  G: 2  B: 3", KXColorSampleDelegate::DetailRole);
    }
    auto* panel = new NVColorSamplePanel(nullptr);
    panel->SetModel(model.get());
    const std::shared_ptr<QAbstractItemDelegate> delegate(panel->findChild<QListView*>()->itemDelegate());
    specimen.Widget = panel;
    specimen.Context = {model, delegate};
}

void makeRulerBar(Specimen& specimen)
{
    auto* bar = new NVRulerToolbar(nullptr);
    bar->SetLength("120.5 px");
    bar->SetStraightenEnabled(true);
    bar->SetClearEnabled(true);
    specimen.Widget = bar;
}

void makeSamplerBar(Specimen& specimen)
{
    auto* bar = new NVColorSamplerToolbar(nullptr);
    bar->SetClearEnabled(true);
    specimen.Widget = bar;
}

void makeZoomBar(Specimen& specimen)
{
    auto* bar = new NVZoomToolbar(nullptr);
    bar->SetActualPixelsEnabled(true);
    bar->SetFitScreenEnabled(true);
    specimen.Widget = bar;
}

void makeZoomPanel(Specimen& specimen)
{
    const auto document = makeDocument();
    auto* panel = new NVZoomPanel(nullptr);
    panel->SetDocument(document.get());
    panel->SetZoomValue(8);
    specimen.Widget = panel;
    specimen.Context = {document};
}

void makeAddToBatchDialog(Specimen& specimen)
{
    const auto model = std::make_shared<KXBatchInputModel>();
    specimen.Widget = new KXAddToBatchDialog(model.get(), nullptr);
    specimen.Context = {model};
}

void makeImageSize(Specimen& specimen)
{
    specimen.Widget = new NVImageSize(72.0, QSize(1000, 500), nullptr);
}

void makeCanvasSize(Specimen& specimen)
{
    specimen.Widget = new NVCanvasSize(300, QSize(800, 600), nullptr);
}

// Lists as those of a printer, of which there is none; "Print" is off, so that nothing is printed.
void makePrintDialog(Specimen& specimen)
{
    qputenv("CUPS_SERVER", "/nonexistent/cups.sock");
    auto* dialog = new NVPrintPreviewDialog(nullptr);
    dialog->findChild<QComboBox*>("m_pDPI")->addItem("150", 150);
    auto* pages = dialog->findChild<QComboBox*>("m_pPageSize");
    pages->addItem("A4", int(QPageSize::A4));
    pages->addItem("Custom", int(QPageSize::Custom));
    QImage image(64, 48, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    dialog->SetSource(image);
    dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->setEnabled(false);
    specimen.Widget = dialog;
}

template <class Widget>
void makePlain(Specimen& specimen)
{
    specimen.Widget = new Widget(nullptr);
}
} // namespace

bool Specimen::Show() const
{
    Widget->show();
    return QTest::qWaitForWindowExposed(Widget);
}

void Specimen::OpenPopups() const
{
    const QList<QAbstractButton*> buttons = Widget->findChildren<QAbstractButton*>();
    for (QAbstractButton* button : buttons)
    {
        if (button->isVisible() && button->isCheckable() &&
            (button->objectName().contains("Select") || button->objectName() == "m_pGradients"))
        {
            QTest::mouseClick(button, Qt::LeftButton);
        }
    }
    const QList<QComboBox*> combos = Widget->findChildren<QComboBox*>();
    for (QComboBox* combo : combos)
    {
        if (combo->isVisible())
        {
            combo->showPopup();
            break; // a second list would close the first
        }
    }
}

std::unique_ptr<Specimen> Species::Create() const
{
    auto specimen = std::make_unique<Specimen>();
    Make(*specimen);
    return specimen;
}

const std::vector<Species>& AllSpecies()
{
    static const std::vector<Species> all = {
        {"BrushPreview", makeBrushPreview, false, {"const IBrush*"}},
        {"CameraView", makeLoupe, true, {"KXDocumentInterface*"}},
        {"HistogramWidget", makeHistogram, true, {"KXDocumentInterface*"}},
        {"KXAddToBatchDialog", makeAddToBatchDialog, false, {}},
        {"KXAnchorSelection", makePlain<KXAnchorSelection>, true, {}},
        {"KXBrushSettings", makePlain<KXBrushSettings>, false, {}},
        {"KXColorDlg", makePlain<KXColorDlg>, false, {}},
        {"KXCommonComboBox", makeCombo, true, {}},
        {"KXDialog", makeFrame<KXDialog>, false, {}},
        {"KXDialogPanel", makeFrame<KXDialogPanel>, false, {}},
        {"KXMdiArea", makeMdiArea, true, {}},
        {"KXMessageBox", makeMessageBox, false, {}},
        {"KXPanel", makeFrame<KXPanel>, false, {}},
        {"KXPopupWindow", makePopup, true, {}},
        {"KXWidget", makeFrame<KXWidget>, true, {}},
        {"NVAutoCrop", makePlain<NVAutoCrop>, false, {}},
        {"NVBlurToolbar", makePlain<NVBlurToolbar>, false, {}},
        {"NVBrushPanel", makeBrushPanel, false, {"IBrush*"}},
        {"NVBrushToolbar", makePlain<NVBrushToolbar>, false, {}},
        {"NVBrushToolbarWidget",
         [](Specimen& specimen) { specimen.Widget = new NVBrushToolbarWidget(nullptr, true); },
         true,
         {}},
        {"NVCanvasSize", makeCanvasSize, false, {}},
        {"NVColorPickerToolbar", makePlain<NVColorPickerToolbar>, false, {}},
        {"NVColorSamplePanel", makeColorSamples, false, {"QAbstractItemModel*"}},
        {"NVColorSamplerToolbar", makeSamplerBar, false, {}},
        {"NVCropToolbarMain", makePlain<NVCropToolbarMain>, false, {}},
        {"NVCropToolbarStart", makePlain<NVCropToolbarStart>, false, {}},
        {"NVDocumentView", makeView, false, {}},
        {"NVDodgeToolbar", makePlain<NVDodgeToolbar>, false, {}},
        {"NVEraserToolbar", makePlain<NVEraserToolbar>, false, {}},
        {"NVFillCanToolbar", makePlain<NVFillCanToolbar>, false, {}},
        {"NVGradientEditor", makeGradientWidget<NVGradientEditor>, false, {}},
        {"NVGradientPopup", makeGradientWidget<NVGradientPopup>, false, {}},
        {"NVGradientToolbar", makeGradientWidget<NVGradientToolbar>, false, {}},
        {"NVImageSize", makeImageSize, false, {}},
        {"NVIncompleteDocumentInfo", makePlain<NVIncompleteDocumentInfo>, false, {}},
        {"NVPrintPreviewDialog", makePrintDialog, false, {}},
        {"NVHistoryItem", makePlain<NVHistoryItem>, true, {}},
        {"NVHistoryPanel", makeHistoryPanel, false, {}},
        {"NVMoveToolbar", makePlain<NVMoveToolbar>, false, {}},
        {"NVMagicWandToolbar", makePlain<NVMagicWandToolbar>, false, {}},
        {"NVNavigatorPanel", makeNavigatorPanel, false, {"NVDocumentView*"}},
        {"NVRedEyeToolbar",
         [](Specimen& specimen) { specimen.Widget = new NVRedEyeToolbar(nullptr, Qt::WindowFlags()); },
         false,
         {}},
        {"NVRulerToolbar", makeRulerBar, false, {}},
        {"NVSelectionToolbar", makePlain<NVSelectionToolbar>, false, {}},
        {"NVSelectColorRange", makeColorRange, false, {}},
        {"NVSpinBox", makePlain<NVSpinBox>, true, {}},
        {"NVSpotHealingToolbar", makePlain<NVSpotHealingToolbar>, false, {}},
        {"NVStampToolbar", makePlain<NVStampToolbar>, false, {}},
        {"NVTextToolbar", makePlain<NVTextToolbar>, false, {}},
        {"NVWarpTextDialog", makePlain<NVWarpTextDialog>, false, {}},
        {"NVTransformToolbar", makePlain<NVTransformToolbar>, false, {}},
        {"NVZoomPanel", makeZoomPanel, false, {"KXDocumentInterface*"}},
        {"NVZoomToolbar", makeZoomBar, false, {}},
        {"NavigatorWidget", makeOverview, true, {"KXDocumentInterface*", "KXColorTransformBase*"}},
        {"PatternSelectWidget", makePlain<PatternSelectWidget>, false, {}},
        {"TransformationCenterPointControl", makePlain<TransformationCenterPointControl>, true, {}},
    };
    return all;
}

const Species& SpeciesOf(const char* name)
{
    const auto found =
        std::find_if(AllSpecies().cbegin(), AllSpecies().cend(),
                     [name](const Species& species) { return qstrcmp(species.Name, name) == 0; });
    Q_ASSERT(found != AllSpecies().cend());
    return *found;
}

void AddSpeciesRows()
{
    QTest::addColumn<QByteArray>("species");
    for (const Species& species : AllSpecies())
    {
        QTest::newRow(species.Name) << QByteArray(species.Name);
    }
}
