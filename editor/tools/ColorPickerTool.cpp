#include "ColorPickerTool.h"

#include <QLabel>
#include <QSettings>

#include "ColorReadOut.h"
#include "ColorSampling.h"
#include "Document.h"
#include "KXDocumentInterface.h"
#include "LayerSample.h"
#include "NVApplication.h"
#include "NVColorPickerToolbar.h"

namespace
{

const QLatin1String SizeKey("picker/size");
const QLatin1String ModeKey("picker/mode");

const int Sizes = 4;
const int AllLayers = 1;

const double SmallestPoints = 6;
const double PointStep = 0.5;

// A large font of the desktop is made smaller, so that the numbers fit into their places.
void FitReadOuts(const QWidget* bar)
{
    for (const char* name : {"m_pXPos", "m_pYPos", "m_pR", "m_pG", "m_pB", "m_pOpacity"})
    {
        auto* readOut = bar->findChild<QLabel*>(QLatin1String(name));
        QFont font = readOut->font();
        const auto width = [&font](const QString& text)
        { return QFontMetrics(font).horizontalAdvance(text); };
        while (font.pointSizeF() > SmallestPoints &&
               qMax(width(QStringLiteral("10000")), width(OpacityReadOut(Qt::white))) >
                   readOut->maximumWidth())
            font.setPointSizeF(font.pointSizeF() - PointStep);
        readOut->setFont(font);
    }
}

} // namespace

ColorPickerTool::ColorPickerTool(QSettings* settings, QObject* parent) : Tool(parent), m_pSettings(settings)
{
}

NVColorPickerToolbar* ColorPickerTool::GetPickerBar()
{
    return static_cast<NVColorPickerToolbar*>(GetBar());
}

QString ColorPickerTool::GetName() const
{
    return tr("Colour Picker");
}

QString ColorPickerTool::GetPictureName() const
{
    return QStringLiteral("tool-picker");
}

QKeySequence ColorPickerTool::GetKey() const
{
    return Qt::Key_I;
}

void ColorPickerTool::StoreValues()
{
    m_pSettings->setValue(SizeKey, GetPickerBar()->GetSize());
    m_pSettings->setValue(ModeKey, GetPickerBar()->GetMode());
}

bool ColorPickerTool::Cancel()
{
    if (!m_isPicking)
        return false;
    SetColor(m_before);
    Finish();
    return true;
}

void ColorPickerTool::Finish()
{
    m_isPicking = false;
    SetEscapeLive(false);
}

QWidget* ColorPickerTool::CreateBar()
{
    auto* bar = new NVColorPickerToolbar(nullptr);
    bar->SetSize(qBound(0, m_pSettings->value(SizeKey, 0).toInt(), Sizes - 1));
    bar->SetMode(qBound(0, m_pSettings->value(ModeKey, AllLayers).toInt(), AllLayers));
    bar->SetColor(Qt::transparent);
    FitReadOuts(bar);
    connect(bar, &NVColorPickerToolbar::SizeChanged, this, &ColorPickerTool::OnReadAgain);
    connect(bar, &NVColorPickerToolbar::ModeChanged, this, &ColorPickerTool::OnReadAgain);
    return bar;
}

void ColorPickerTool::UpdateBarTheme(QWidget* bar)
{
    SetBarPicture(bar, QStringLiteral("m_pPicture"), QStringLiteral("picker"));
}

void ColorPickerTool::CanvasChanged()
{
    if (m_pPixels)
        disconnect(m_pPixels, nullptr, this, nullptr);
    m_pPixels = GetDocument() ? GetDocument()->GetPixels() : nullptr;
    if (m_pPixels)
        connect(m_pPixels, &KXDocumentInterface::CompositionChanged, this, &ColorPickerTool::OnReadAgain);
    m_isOver = false;
    if (IsActive())
        ShowPixel();
}

void ColorPickerTool::Equip(NVDocumentView* view)
{
    view->SetToolCursor(Qt::CrossCursor);
}

void ColorPickerTool::Pressed(const CanvasPoint& point)
{
    if (point.button != Qt::LeftButton)
        return;
    Moved(point);
    const QColor color = ColorAt(m_pixel);
    if (color.isValid() && color.alpha() == 0)
        Q_EMIT Message(tr("Here all is transparent: there is no colour to pick."));
    m_isBackground = point.modifiers.testFlag(Qt::AltModifier);
    m_before = m_isBackground ? NVApplication::GetBackground() : NVApplication::GetForeground();
    m_isPicking = true;
    SetEscapeLive(true);
    Pick();
}

void ColorPickerTool::Moved(const CanvasPoint& point)
{
    m_pixel = PixelAt(point.position);
    m_isOver = true;
    ShowPixel();
    if (m_isPicking)
        Pick();
}

void ColorPickerTool::Released(const CanvasPoint& point)
{
    Q_UNUSED(point)
    Finish();
}

void ColorPickerTool::PointerLeft()
{
    m_isOver = false;
    ShowPixel();
}

void ColorPickerTool::OnReadAgain()
{
    if (IsActive())
        ShowPixel();
}

QColor ColorPickerTool::ColorAt(const QPoint& pixel)
{
    if (!m_pPixels)
        return QColor();
    const NVColorPickerToolbar* bar = GetPickerBar();
    const QImage& picture = bar->GetMode() == AllLayers
        ? m_pPixels->GetComposition()
        : m_pPixels->GetLayer(m_pPixels->GetCurrentLayer()).image;
    return SampleColor(picture, pixel, 2 * qMax(0, bar->GetSize()) + 1);
}

void ColorPickerTool::ShowPixel()
{
    NVColorPickerToolbar* bar = GetPickerBar();
    const QColor color = m_isOver ? ColorAt(m_pixel) : QColor();
    const auto number = [](bool known, int value) { return known ? QString::number(value) : QString(); };
    bar->SetX(number(m_isOver, m_pixel.x()));
    bar->SetY(number(m_isOver, m_pixel.y()));
    bar->SetRed(number(color.isValid(), color.red()));
    bar->SetGreen(number(color.isValid(), color.green()));
    bar->SetBlue(number(color.isValid(), color.blue()));
    bar->SetOpacity(color.isValid() ? OpacityReadOut(color) : QString());
    bar->SetColor(color.isValid() ? color : QColor(Qt::transparent));
}

void ColorPickerTool::Pick()
{
    QColor color = ColorAt(m_pixel);
    if (!color.isValid() || color.alpha() == 0)
        return;
    color.setAlpha(255);
    SetColor(color);
}

void ColorPickerTool::SetColor(const QColor& color)
{
    if (m_isBackground)
        NVApplication::GetInstance()->SetBackground(color);
    else
        NVApplication::GetInstance()->SetForeground(color);
}
