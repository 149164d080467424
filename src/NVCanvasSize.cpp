#include "NVCanvasSize.h"

#include <QDebug>
#include <QDoubleSpinBox>
#include <QGuiApplication>
#include <QList>
#include <QSignalBlocker>

#include <limits>

#include "NVMeasureUnit.h"
#include "NVMeasureUnitConverter.h"
#include "WholePixels_p.h"
#include "ui_CanvasSize.h"

struct NVCanvasSize::Data : Ui_CanvasSize
{
    QList<NVMeasureUnit> m_units;
    QSize m_newSize;
    QSize m_currentSize;

    NVMeasureUnit UnitAt(int index) const;
    NVMeasureUnit WidthUnit() const;
    NVMeasureUnit HeightUnit() const;
    double Ratio() const;
};

namespace
{

const double LargestSide = 10000.0;
const int SmallestDpi = 1;
const int LargestDpi = 9999;

NVMeasureUnit PixelUnit()
{
    NVMeasureUnit unit;
    unit.SetFactor(NVMeasureUnit::PixelFactor);
    return unit;
}

NVMeasureUnitConverter ToPixels(const NVMeasureUnit& unit, int dpi)
{
    return NVMeasureUnitConverter(unit, PixelUnit(), dpi);
}

NVMeasureUnitConverter FromPixels(const NVMeasureUnit& unit, int dpi)
{
    return NVMeasureUnitConverter(PixelUnit(), unit, dpi);
}

// The resolution at which a length has that many pixels: no resolution is high enough for no length.
int DpiOf(double pixelsPerUnit, double length)
{
    return length == 0.0 ? std::numeric_limits<int>::max() : WholePixels(pixelsPerUnit / length);
}

void SetValueQuietly(QDoubleSpinBox* box, double value)
{
    const QSignalBlocker blocker(box);
    box->setValue(value);
}

// The range of the old unit would clamp the value.
void SetLengthQuietly(QDoubleSpinBox* box, double length)
{
    const QSignalBlocker blocker(box);
    box->setRange(0.0, length);
    box->setValue(length);
}

struct DpiRange
{
    int smallest;
    int largest;
};

// Gives the box the range that keeps a side within 1 to 10000 pixels. Returns the resolutions at which a side
// of that many pixels would stay within it if its length stayed as it is.
DpiRange SetSideRange(QDoubleSpinBox* box, const NVMeasureUnit& unit, int dpi, int side)
{
    const QSignalBlocker blocker(box);
    const double factor = unit.GetFactor();
    if (factor == NVMeasureUnit::PixelFactor)
    {
        box->setRange(1.0, LargestSide);
        return {SmallestDpi, LargestDpi};
    }
    box->setRange(qMax(factor / dpi, 0.0), LargestSide * factor / dpi);
    const double length = FromPixels(unit, dpi)(side);
    return {qMax(DpiOf(factor, length), SmallestDpi), qMin(DpiOf(LargestSide * factor, length), LargestDpi)};
}

// A side as the dialog shows it beside its pixels: `index` is that of the unit.
QString LengthText(double length, int index)
{
    return index > 0 ? QString::number(length, 'f', 2) : QString::number(WholePixels(length));
}

void ReportNoDpiRange(int line)
{
    const QString text = QStringLiteral("Build date=%1, time=%2. Line=%3, file=\"%4\". %5")
                             .arg(QStringLiteral(__DATE__), QStringLiteral(__TIME__))
                             .arg(line)
                             .arg(QStringLiteral("src/NVCanvasSize"), QStringLiteral("Error dpi range."));
    qDebug().noquote() << text;
}

} // namespace

// Index 0 is the pixel.
NVMeasureUnit NVCanvasSize::Data::UnitAt(int index) const
{
    return index > 0 ? m_units.value(index - 1) : PixelUnit();
}

NVMeasureUnit NVCanvasSize::Data::WidthUnit() const
{
    return UnitAt(m_pWidthUnits->currentIndex());
}

NVMeasureUnit NVCanvasSize::Data::HeightUnit() const
{
    return UnitAt(m_pHeightUnits->currentIndex());
}

// Width by height of the present size.
double NVCanvasSize::Data::Ratio() const
{
    return SideRatio(m_currentSize.width(), m_currentSize.height());
}

NVCanvasSize::NVCanvasSize(int dpi, const QSize& size, QWidget* parent)
    : KXDialog(parent), m_pData(new Data())
{
    m_pData->m_newSize = size;
    m_pData->m_currentSize = size;
    m_pData->setupUi(Content());
    ConnectButtonBox();
    ConnectUnitLabels();
    ShowCurrentSize(dpi);
    FillUnits();
    ConnectControls();
    m_pData->m_pWidthUnits->setCurrentIndex(0);
    CalcInputRanges();
    if (layout())
        layout()->setSizeConstraint(QLayout::SetFixedSize);
    // The form begins with its buttons.
    m_pData->m_pNewWidth->setFocus();
    m_pData->m_pNewWidth->selectAll();
}

NVCanvasSize::~NVCanvasSize()
{
    delete m_pData;
}

QSize NVCanvasSize::GetNewSize() const
{
    return m_pData->m_newSize;
}

KXAnchorSelection::State NVCanvasSize::GetAnchor() const
{
    return m_pData->m_pAnchorWidget->GetState();
}

void NVCanvasSize::OnWidthUnitsChanged(int index)
{
    const NVMeasureUnitConverter convert = FromPixels(m_pData->UnitAt(index), m_pData->m_pDPI->value());
    const double current = convert(m_pData->m_pCurrPixWidth->text().toDouble());
    m_pData->m_pCurrUnitsWidth->setText(LengthText(current, index));
    SetLengthQuietly(m_pData->m_pNewWidth, convert(m_pData->m_newSize.width()));
    CalcInputRanges();
    if (QGuiApplication::keyboardModifiers() != Qt::ShiftModifier)
        m_pData->m_pHeightUnits->setCurrentIndex(index);
}

void NVCanvasSize::OnHeightUnitsChanged(int index)
{
    const NVMeasureUnitConverter convert = FromPixels(m_pData->UnitAt(index), m_pData->m_pDPI->value());
    const double current = convert(m_pData->m_pCurrPixHeight->text().toDouble());
    m_pData->m_pCurrUnitsHeight->setText(LengthText(current, index));
    SetLengthQuietly(m_pData->m_pNewHeight, convert(m_pData->m_newSize.height()));
    CalcInputRanges();
    if (QGuiApplication::keyboardModifiers() != Qt::ShiftModifier)
        m_pData->m_pWidthUnits->setCurrentIndex(index);
}

void NVCanvasSize::OnHeightChanged(double value)
{
    const int dpi = m_pData->m_pDPI->value();
    QSize& size = m_pData->m_newSize;
    size.setHeight(WholePixels(ToPixels(m_pData->HeightUnit(), dpi)(value)));
    if (m_pData->m_pConstrainProportions->isChecked())
    {
        size.setWidth(WholePixels(size.height() * m_pData->Ratio()));
        SetValueQuietly(m_pData->m_pNewWidth, FromPixels(m_pData->WidthUnit(), dpi)(size.width()));
        ShowHorizontalShrink();
    }
    UpdateNewSize();
    CalcInputRanges();
    ShowVerticalShrink();
}

void NVCanvasSize::OnWidthChanged(double value)
{
    const int dpi = m_pData->m_pDPI->value();
    QSize& size = m_pData->m_newSize;
    size.setWidth(WholePixels(ToPixels(m_pData->WidthUnit(), dpi)(value)));
    if (m_pData->m_pConstrainProportions->isChecked())
    {
        size.setHeight(WholePixels(size.width() / m_pData->Ratio()));
        SetValueQuietly(m_pData->m_pNewHeight, FromPixels(m_pData->HeightUnit(), dpi)(size.height()));
        ShowVerticalShrink();
    }
    UpdateNewSize();
    CalcInputRanges();
    ShowHorizontalShrink();
}

void NVCanvasSize::OnDPIChanged(int dpi)
{
    QSize& size = m_pData->m_newSize;
    size.setWidth(WholePixels(ToPixels(m_pData->WidthUnit(), dpi)(m_pData->m_pNewWidth->value())));
    ShowHorizontalShrink();
    // Pixels of the height count as inches here, unlike those of the width; on purpose.
    NVMeasureUnit unit = m_pData->HeightUnit();
    if (unit.GetFactor() == NVMeasureUnit::PixelFactor)
        unit.SetFactor(1.0);
    size.setHeight(WholePixels(ToPixels(unit, dpi)(m_pData->m_pNewHeight->value())));
    ShowVerticalShrink();
    UpdateNewSize();
    CalcInputRanges();
}

void NVCanvasSize::OnConstrainProportions(bool on)
{
    if (!on)
        return;
    // The title goes on with the memory of the size that is given up here, and the ranges stay; on purpose.
    const int dpi = m_pData->m_pDPI->value();
    const QSize size = m_pData->m_currentSize;
    m_pData->m_newSize = size;
    SetValueQuietly(m_pData->m_pNewWidth, FromPixels(m_pData->WidthUnit(), dpi)(size.width()));
    SetValueQuietly(m_pData->m_pNewHeight, FromPixels(m_pData->HeightUnit(), dpi)(size.height()));
    ShowHorizontalShrink();
    ShowVerticalShrink();
}

void NVCanvasSize::ConnectButtonBox()
{
    const QDialogButtonBox* box = m_pData->m_pButtonBox;
    connect(box, &QDialogButtonBox::accepted, this, &NVCanvasSize::Accept);
    connect(box, &QDialogButtonBox::rejected, this, &NVCanvasSize::Reject);
}

// Before the lists are filled, which gives the labels their first text. By the toolkit's older signal: unlike
// currentTextChanged() it follows the choice alone, not a new text of the same entry.
QT_WARNING_PUSH
QT_WARNING_DISABLE_DEPRECATED
void NVCanvasSize::ConnectUnitLabels()
{
    connect(m_pData->m_pWidthUnits, qOverload<const QString&>(&QComboBox::currentIndexChanged),
            m_pData->m_pUnitsWidth, &QLabel::setText);
    connect(m_pData->m_pHeightUnits, qOverload<const QString&>(&QComboBox::currentIndexChanged),
            m_pData->m_pUnitsHeight, &QLabel::setText);
}
QT_WARNING_POP

void NVCanvasSize::ShowCurrentSize(int dpi)
{
    const QSize size = m_pData->m_currentSize;
    m_pData->m_pCurrPixHeight->setNum(size.height());
    m_pData->m_pCurrPixWidth->setNum(size.width());
    m_pData->m_pCurrUnitsHeight->setNum(size.height());
    m_pData->m_pCurrUnitsWidth->setNum(size.width());
    m_pData->m_pDPI->setValue(dpi);
    m_pData->m_pNewWidth->setRange(1.0, LargestSide);
    m_pData->m_pNewHeight->setRange(1.0, LargestSide);
    m_pData->m_pNewWidth->setValue(size.width());
    m_pData->m_pNewHeight->setValue(size.height());
    const QString memory = GetNormilizedImageSize(CalcMemorySize(size.width(), size.height()));
    m_pData->m_pCurrentSizeGroup->setTitle(tr("Current size: %1").arg(memory));
    m_pData->m_pNewSizeGroup->setTitle(tr("New size: %1").arg(memory));
}

void NVCanvasSize::FillUnits()
{
    m_pData->m_units = NVMeasureUnit::StandardUnits();
    for (QComboBox* list : {m_pData->m_pWidthUnits, m_pData->m_pHeightUnits})
    {
        list->addItem(tr("px"));
        for (const NVMeasureUnit& unit : qAsConst(m_pData->m_units))
            list->addItem(unit.GetAbbreviation());
    }
}

void NVCanvasSize::ConnectControls()
{
    connect(m_pData->m_pWidthUnits, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &NVCanvasSize::OnWidthUnitsChanged);
    connect(m_pData->m_pHeightUnits, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &NVCanvasSize::OnHeightUnitsChanged);
    connect(m_pData->m_pNewHeight, qOverload<double>(&QDoubleSpinBox::valueChanged), this,
            &NVCanvasSize::OnHeightChanged);
    connect(m_pData->m_pNewWidth, qOverload<double>(&QDoubleSpinBox::valueChanged), this,
            &NVCanvasSize::OnWidthChanged);
    connect(m_pData->m_pDPI, qOverload<int>(&QSpinBox::valueChanged), this, &NVCanvasSize::OnDPIChanged);
    connect(m_pData->m_pConstrainProportions, &QCheckBox::toggled, this,
            &NVCanvasSize::OnConstrainProportions);
}

void NVCanvasSize::CalcInputRanges()
{
    const int dpi = m_pData->m_pDPI->value();
    const QSize size = m_pData->m_newSize;
    const DpiRange width = SetSideRange(m_pData->m_pNewWidth, m_pData->WidthUnit(), dpi, size.width());
    const DpiRange height = SetSideRange(m_pData->m_pNewHeight, m_pData->HeightUnit(), dpi, size.height());
    const QSignalBlocker blocker(m_pData->m_pDPI);
    if (width.smallest > height.largest || height.smallest > width.largest)
    {
        ReportNoDpiRange(__LINE__);
        m_pData->m_pDPI->setRange(SmallestDpi, LargestDpi);
        return;
    }
    m_pData->m_pDPI->setRange(qMax(width.smallest, height.smallest), qMin(width.largest, height.largest));
}

void NVCanvasSize::UpdateNewSize()
{
    const QSize size = m_pData->m_newSize;
    const QString memory = GetNormilizedImageSize(CalcMemorySize(size.width(), size.height()));
    m_pData->m_pNewSizeGroup->setTitle(tr("New size: %1").arg(memory));
}

// Unlike in the dialog of the image size, with two decimals and 32 bits; on purpose.
QString NVCanvasSize::GetNormilizedImageSize(int size) const
{
    const int kilo = 1024;
    const int mega = kilo * 1024;
    const int giga = mega * 1024;
    if (size < kilo)
        return tr("%1 b").arg(size);
    const auto number = [size](int unit) { return QString::number(double(size) / unit, 'f', 2); };
    if (size < mega)
        return tr("%1 Kb").arg(number(kilo));
    return size < giga ? tr("%1 Mb").arg(number(mega)) : tr("%1 Gb").arg(number(giga));
}

// Wraps from 2^31 bytes on, on purpose.
int NVCanvasSize::CalcMemorySize(int width, int height) const
{
    return static_cast<int>(static_cast<unsigned>(width) * static_cast<unsigned>(height) * 4U);
}

void NVCanvasSize::ShowHorizontalShrink()
{
    m_pData->m_pAnchorWidget->ShrinkHorizontal(m_pData->m_newSize.width() < m_pData->m_currentSize.width());
}

void NVCanvasSize::ShowVerticalShrink()
{
    m_pData->m_pAnchorWidget->ShrinkVertical(m_pData->m_newSize.height() < m_pData->m_currentSize.height());
}
