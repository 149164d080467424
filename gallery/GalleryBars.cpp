// The option bars, with the values of a tool that was used before.

#include <QAction>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

#include "GalleryExhibits.h"
#include "GalleryParts.h"
#include "KXBrushSettings.h"
#include "NVApplication.h"
#include "NVBlurToolbar.h"
#include "NVBrushToolbar.h"
#include "NVColorPickerToolbar.h"
#include "NVColorSamplerToolbar.h"
#include "NVCropToolbarMain.h"
#include "NVCropToolbarStart.h"
#include "NVDodgeToolbar.h"
#include "NVEraserToolbar.h"
#include "NVFillCanToolbar.h"
#include "NVGradientToolbar.h"
#include "NVMagicWandToolbar.h"
#include "NVMoveToolbar.h"
#include "NVRedEyeToolbar.h"
#include "NVRulerToolbar.h"
#include "NVSelectionToolbar.h"
#include "NVSpinBox.h"
#include "NVSpotHealingToolbar.h"
#include "NVStampToolbar.h"
#include "NVTextToolbar.h"
#include "NVTransformToolbar.h"
#include "NVZoomToolbar.h"
#include "PatternSelectWidget.h"

namespace
{

// A bar of a host, on the base of the brush bars, with one control and a button for the brush.
class OwnBrushBar : public NVBrushToolbarWidget
{
public:
    explicit OwnBrushBar(QWidget* parent)
        : NVBrushToolbarWidget(parent, false), m_pSize(new NVSpinBox), m_pBrush(new QToolButton)
    {
        auto* caption = new QLabel(QCoreApplication::translate("Gallery", "Size:"));
        caption->setBuddy(m_pSize);
        m_pSize->setRange(1, 2500);
        m_pSize->setSuffix(QCoreApplication::translate("Gallery", " px"));
        m_pBrush->setText(QCoreApplication::translate("Gallery", "Brush"));
        auto* layout = new QHBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(caption);
        layout->addWidget(m_pSize);
        layout->addWidget(m_pBrush);
        layout->addStretch();
        connect(m_pSize, qOverload<int>(&QSpinBox::valueChanged), this, &OwnBrushBar::SizeChanged);
        connect(m_pBrush, &QToolButton::clicked, this, &OwnBrushBar::ShowBrush);
    }

    void SetSizeValue(int pixels) override { m_pSize->setValue(pixels); }

private:
    void ShowBrush()
    {
        GetBrushes()->move(m_pBrush->mapToGlobal(QPoint(0, m_pBrush->height())));
        GetBrushes()->show();
        GetBrushes()->activateWindow();
    }

    NVSpinBox* m_pSize;
    QToolButton* m_pBrush;
};

template <class Bar>
std::unique_ptr<Exhibit> MakeBrushBar(QWidget* parent)
{
    auto* bar = new Bar(parent);
    bar->GetBrushes()->SetCurrentPreset(1);
    bar->SetSize(48);
    bar->SetSpacing(25);
    bar->SetOpacity(80);
    bar->CreateShortcuts();
    auto exhibit = std::make_unique<Exhibit>(bar);
    exhibit->parts.append({QStringLiteral("GetBrushes()"), bar->GetBrushes()});
    if (bar->GetPatterns())
        exhibit->parts.append({QStringLiteral("GetPatterns()"), bar->GetPatterns()});
    return exhibit;
}

// What the button "Refine selection" of a bar stands for.
void AddRefineAction(Exhibit& exhibit)
{
    const auto action = std::make_shared<QAction>(QCoreApplication::translate("Gallery", "Refine Selection"));
    NVApplication::GetInstance()->RegisterRefineSelection(action.get());
    exhibit.parts.append({QStringLiteral("GetRefineSelection()"), action.get()});
    exhibit.context.push_back(action);
}

std::unique_ptr<Exhibit> MakeColorPickerBar(QWidget* parent)
{
    auto* bar = new NVColorPickerToolbar(parent);
    bar->SetSize(1);
    bar->SetX(QStringLiteral("320"));
    bar->SetY(QStringLiteral("112"));
    bar->SetRed(QStringLiteral("250"));
    bar->SetGreen(QStringLiteral("214"));
    bar->SetBlue(QStringLiteral("165"));
    bar->SetOpacity(QStringLiteral("100"));
    bar->SetColor(QColor(250, 214, 165));
    return std::make_unique<Exhibit>(bar);
}

std::unique_ptr<Exhibit> MakeColorSamplerBar(QWidget* parent)
{
    auto* bar = new NVColorSamplerToolbar(parent);
    bar->SetClearEnabled(true);
    return std::make_unique<Exhibit>(bar);
}

std::unique_ptr<Exhibit> MakeCropMainBar(QWidget* parent)
{
    auto* bar = new NVCropToolbarMain(parent);
    bar->SetWidth(640);
    bar->SetHeight(480);
    bar->SetAngle(-2.5);
    bar->SetGuideOverlayType(1);
    return std::make_unique<Exhibit>(bar);
}

std::unique_ptr<Exhibit> MakeCropStartBar(QWidget* parent)
{
    auto* bar = new NVCropToolbarStart(parent);
    bar->SetWidth(1024);
    bar->SetHeight(768);
    bar->EnableFromImage(true);
    QObject::connect(bar, &NVCropToolbarStart::FromImage, bar,
                     [bar]
                     {
                         bar->SetWidth(960);
                         bar->SetHeight(640);
                     });
    return std::make_unique<Exhibit>(bar);
}

std::unique_ptr<Exhibit> MakeFillCanBar(QWidget* parent)
{
    auto* bar = new NVFillCanToolbar(parent);
    bar->SetContiguous(true);
    bar->CreateShortcuts();
    auto exhibit = std::make_unique<Exhibit>(bar);
    exhibit->parts.append({QStringLiteral("GetPatterns()"), bar->GetPatterns()});
    return exhibit;
}

std::unique_ptr<Exhibit> MakeGradientBar(QWidget* parent)
{
    auto* bar = new NVGradientToolbar(parent);
    bar->Load(GalleryGradients());
    bar->SetCurrentGradientIndex(1);
    bar->ShowOperationButtons(true);
    return std::make_unique<Exhibit>(bar);
}

std::unique_ptr<Exhibit> MakeMoveBar(QWidget* parent)
{
    auto* bar = new NVMoveToolbar(parent);
    bar->EnableShowFrame(true);
    return std::make_unique<Exhibit>(bar);
}

std::unique_ptr<Exhibit> MakeRedEyeBar(QWidget* parent)
{
    auto* bar = new NVRedEyeToolbar(parent, Qt::WindowFlags());
    bar->SetIntensity(2.5);
    return std::make_unique<Exhibit>(bar);
}

std::unique_ptr<Exhibit> MakeRulerBar(QWidget* parent)
{
    auto* bar = new NVRulerToolbar(parent);
    bar->SetX1(QStringLiteral("40 px"));
    bar->SetY1(QStringLiteral("30 px"));
    bar->SetX2(QStringLiteral("360 px"));
    bar->SetY2(QStringLiteral("270 px"));
    bar->SetLength(QStringLiteral("400 px"));
    bar->SetAngle(QStringLiteral("-36.87°"));
    bar->SetStraightenEnabled(true);
    bar->SetClearEnabled(true);
    return std::make_unique<Exhibit>(bar);
}

std::unique_ptr<Exhibit> MakeSelectionBar(QWidget* parent)
{
    auto* bar = new NVSelectionToolbar(parent);
    bar->SetFeather(5);
    auto exhibit = std::make_unique<Exhibit>(bar);
    AddRefineAction(*exhibit);
    return exhibit;
}

std::unique_ptr<Exhibit> MakeTextBar(QWidget* parent)
{
    auto* bar = new NVTextToolbar(parent);
    bar->SetFontSize(24);
    bar->SetColor(QColor(42, 110, 187));
    return std::make_unique<Exhibit>(bar);
}

std::unique_ptr<Exhibit> MakeTransformBar(QWidget* parent)
{
    auto* bar = new NVTransformToolbar(parent);
    bar->SetX(QStringLiteral("120.0 px"));
    bar->SetY(QStringLiteral("80.0 px"));
    bar->SetWidth(QStringLiteral("150.0 %"));
    bar->SetHeight(QStringLiteral("150.0 %"));
    bar->SetAngle(QStringLiteral("12.5°"));
    bar->SetHorizontalSkew(QStringLiteral("0.0°"));
    bar->SetVerticalSkew(QStringLiteral("0.0°"));
    return std::make_unique<Exhibit>(bar);
}

std::unique_ptr<Exhibit> MakeWandBar(QWidget* parent)
{
    auto* bar = new NVMagicWandToolbar(parent);
    bar->SetTolerance(32);
    auto exhibit = std::make_unique<Exhibit>(bar);
    AddRefineAction(*exhibit);
    return exhibit;
}

std::unique_ptr<Exhibit> MakeZoomBar(QWidget* parent)
{
    auto* bar = new NVZoomToolbar(parent);
    bar->SetActualPixelsEnabled(true);
    bar->SetFitScreenEnabled(true);
    return std::make_unique<Exhibit>(bar);
}

} // namespace

const std::vector<GalleryRow>& GalleryBars()
{
    static const std::vector<GalleryRow> rows = {
        {"NVBlurToolbar", GalleryGroup::Bars, MakeBrushBar<NVBlurToolbar>},
        {"NVBrushToolbar", GalleryGroup::Bars, MakeBrushBar<NVBrushToolbar>},
        {"NVBrushToolbarWidget", GalleryGroup::Bars, MakeBrushBar<OwnBrushBar>},
        {"NVColorPickerToolbar", GalleryGroup::Bars, MakeColorPickerBar},
        {"NVColorSamplerToolbar", GalleryGroup::Bars, MakeColorSamplerBar},
        {"NVCropToolbarMain", GalleryGroup::Bars, MakeCropMainBar},
        {"NVCropToolbarStart", GalleryGroup::Bars, MakeCropStartBar},
        {"NVDodgeToolbar", GalleryGroup::Bars, MakeBrushBar<NVDodgeToolbar>},
        {"NVEraserToolbar", GalleryGroup::Bars, MakeBrushBar<NVEraserToolbar>},
        {"NVFillCanToolbar", GalleryGroup::Bars, MakeFillCanBar},
        {"NVGradientToolbar", GalleryGroup::Bars, MakeGradientBar},
        {"NVMagicWandToolbar", GalleryGroup::Bars, MakeWandBar},
        {"NVMoveToolbar", GalleryGroup::Bars, MakeMoveBar},
        {"NVRedEyeToolbar", GalleryGroup::Bars, MakeRedEyeBar},
        {"NVRulerToolbar", GalleryGroup::Bars, MakeRulerBar},
        {"NVSelectionToolbar", GalleryGroup::Bars, MakeSelectionBar},
        {"NVSpotHealingToolbar", GalleryGroup::Bars, MakeBrushBar<NVSpotHealingToolbar>},
        {"NVStampToolbar", GalleryGroup::Bars, MakeBrushBar<NVStampToolbar>},
        {"NVTextToolbar", GalleryGroup::Bars, MakeTextBar},
        {"NVTransformToolbar", GalleryGroup::Bars, MakeTransformBar},
        {"NVZoomToolbar", GalleryGroup::Bars, MakeZoomBar},
    };
    return rows;
}
