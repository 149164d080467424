#include "NVImageSize.h"

#include <QLayout>
#include <QPushButton>

#include <limits>

#include "ConnectionCut_p.h"
#include "KXDocumentInterface.h"
#include "KXMdiArea.h"
#include "KXMessageBox.h"
#include "NVMeasureUnit.h"
#include "NVMeasureUnitConverter.h"
#include "NVStringHelper.h"
#include "OutliveParent_p.h"
#include "SizeLimits_p.h"
#include "TextFit.h"
#include "WholePixels_p.h"
#include "ui_ImageSize.h"

struct NVImageSize::Data : Ui_ImageSize
{
    QList<NVMeasureUnit> m_units;
    // Whether the proportions are kept.
    bool m_constrain = false;
    // Chain links between the rows of a group: the lower one, the upper one, and the upper one for an image
    // that is not resampled.
    QPixmap m_link1;
    QPixmap m_link2;
    QPixmap m_link3;
    // In pixels, the only truth: what the boxes show is converted from it.
    QSize m_newSize;
    QSize m_currentSize;
    double m_initialDpi = 0.0;

    double Ratio() const { return SideRatio(m_currentSize.width(), m_currentSize.height()); }
};

namespace
{

// The first two entries of the unit lists; the others are units of length.
enum UnitIndex
{
    Pixels = 0,
    Percent = 1,
    FirstLength = 2
};

const auto IndexChanged = qOverload<int>(&QComboBox::currentIndexChanged);
const auto ValueChanged = qOverload<double>(&QDoubleSpinBox::valueChanged);

NVMeasureUnit PixelUnit()
{
    NVMeasureUnit unit;
    unit.SetFactor(NVMeasureUnit::PixelFactor);
    return unit;
}

// That entry of the unit lists; inches for none.
NVMeasureUnit LengthUnit(const QList<NVMeasureUnit>& units, int index)
{
    return index < FirstLength ? NVMeasureUnit() : units.value(index - FirstLength);
}

NVMeasureUnitConverter FromPixels(const QList<NVMeasureUnit>& units, int index, double dpi)
{
    return NVMeasureUnitConverter(PixelUnit(), LengthUnit(units, index), dpi);
}

NVMeasureUnitConverter ToPixels(const QList<NVMeasureUnit>& units, int index, double dpi)
{
    return NVMeasureUnitConverter(LengthUnit(units, index), PixelUnit(), dpi);
}

double PercentOf(int newSide, int currentSide)
{
    return static_cast<double>(newSide) / qMax(1, currentSide) * 100.0;
}

QPixmap Link(int number)
{
    const QString name = QStringLiteral("theme:image_size_dialog_link%1.png").arg(number);
    return QPixmap(NVStringHelper::DPIAdjustImageName(name));
}

// In a smaller font where the label, whose width is fixed, has no room for it.
void ShowNumber(QLabel* label, int number)
{
    label->setText(QString::number(number));
    FitText(label);
}

bool IsDocumentSide(int side)
{
    return side >= 1 && side <= KXDocumentInterface::MAX_DOC_DIMENSION;
}

} // namespace

NVImageSize::NVImageSize(double dpi, const QSize& size, QWidget* parent)
    : KXDialog(parent), m_pData(new Data())
{
    m_pData->setupUi(Content());
    ConnectButtons();
    m_pData->m_link1 = Link(1);
    m_pData->m_link2 = Link(2);
    m_pData->m_link3 = Link(3);
    HideCurrDimensionSection(true);
    FillUnits();
    m_pData->m_initialDpi = dpi;
    m_pData->m_currentSize = size;
    m_pData->m_newSize = size;
    ShowNumber(m_pData->m_pCurrPixWidth, size.width());
    ShowNumber(m_pData->m_pCurrPixHeight, size.height());
    m_pData->m_pNewWidth->setRange(0.01, 100000.0);
    m_pData->m_pNewHeight->setRange(0.01, 100000.0);
    ConnectFields();
    for (QDoubleSpinBox* box : {m_pData->m_pNewWidth, m_pData->m_pNewHeight})
        FitText(box);
    m_pData->m_constrain = true;
    UpdateDocumentSize();
    if (layout())
        layout()->setSizeConstraint(QLayout::SetFixedSize);
    OnReset();
    // A number that is typed at once takes the place of the one that is there.
    m_pData->m_pNewWidth->setFocus();
    m_pData->m_pNewWidth->selectAll();
}

NVImageSize::~NVImageSize()
{
    // A box that tells its number late, without keyboard tracking, may do so when the base hides it, and
    // nobody is here then to hear it.
    const QList<QObject*> children = findChildren<QObject*>();
    for (const QObject* child : children)
        child->disconnect(this);
    delete m_pData;
}

QSize NVImageSize::GetNewSize() const
{
    return m_pData->m_newSize;
}

double NVImageSize::GetDPI() const
{
    return m_pData->m_pResolution->value();
}

bool NVImageSize::IsResample() const
{
    return m_pData->m_pResample->isChecked();
}

int NVImageSize::GetResampleMode() const
{
    return m_pData->m_pResampleMethod->currentIndex();
}

void NVImageSize::HideCurrDimensionSection(bool hide)
{
    m_pData->m_pPixelWidth->setVisible(hide);
    m_pData->m_pPixelHeight->setVisible(hide);
    m_pData->m_pCurrPixWidth->setVisible(!hide);
    m_pData->m_pCurrPixHeight->setVisible(!hide);
}

void NVImageSize::OnContrainProportions(bool checked)
{
    m_pData->m_constrain = checked;
    const bool resample = m_pData->m_pResample->isChecked();
    m_pData->m_pConstrainDimensions->setPixmap(checked && resample ? m_pData->m_link1 : QPixmap());
    if (resample)
        m_pData->m_pConstrainProportions->setPixmap(checked ? m_pData->m_link2 : QPixmap());
    else
        m_pData->m_pConstrainProportions->setPixmap(m_pData->m_link3);
    if (checked)
    {
        // Drops what was typed, on purpose.
        m_pData->m_newSize = m_pData->m_currentSize;
        UpdateDimensions(UpdateAll);
    }
}

void NVImageSize::OnWidthUnitChanged(int index)
{
    {
        const ConnectionCut cut(m_pData->m_pHeightUnits, IndexChanged, this,
                                &NVImageSize::OnHeightUnitChanged);
        SetSizeDecimals(index == Pixels ? 0 : 2);
        m_pData->m_pHeightUnits->setCurrentIndex(index);
    }
    UpdateDimensions(UpdateAll);
}

void NVImageSize::OnHeightUnitChanged(int index)
{
    {
        const ConnectionCut cut(m_pData->m_pWidthUnits, IndexChanged, this, &NVImageSize::OnWidthUnitChanged);
        SetSizeDecimals(index == Pixels ? 0 : 2);
        m_pData->m_pWidthUnits->setCurrentIndex(index);
    }
    UpdateDimensions(UpdateAll);
}

void NVImageSize::OnNewWidthChanged(double value)
{
    const int width =
        TypedPixels(value, m_pData->m_pWidthUnits->currentIndex(), m_pData->m_currentSize.width());
    m_pData->m_newSize.setWidth(width);
    if (m_pData->m_constrain)
    {
        m_pData->m_newSize.setHeight(WholePixels(width / m_pData->Ratio() + 0.5));
        UpdateDimensions({UpdatePixelWidth, UpdatePixelHeight, UpdateNewHeight});
    }
    else
    {
        UpdateDimensions(UpdatePixelWidth);
    }
}

void NVImageSize::OnNewHeightChanged(double value)
{
    const int height =
        TypedPixels(value, m_pData->m_pHeightUnits->currentIndex(), m_pData->m_currentSize.height());
    m_pData->m_newSize.setHeight(height);
    if (m_pData->m_constrain)
    {
        m_pData->m_newSize.setWidth(WholePixels(height * m_pData->Ratio() + 0.5));
        UpdateDimensions({UpdatePixelWidth, UpdatePixelHeight, UpdateNewWidth});
    }
    else
    {
        UpdateDimensions(UpdatePixelHeight);
    }
}

void NVImageSize::OnReset()
{
    m_pData->m_pResampleMethod->setCurrentIndex(2);
    m_pData->m_newSize = m_pData->m_currentSize;
    m_pData->m_constrain = true;
    {
        const ConnectionCut cut(m_pData->m_pResolution, ValueChanged, this,
                                &NVImageSize::OnResolutionChanged);
        m_pData->m_pResolution->setValue(m_pData->m_initialDpi);
    }
    {
        const ConnectionCut width(m_pData->m_pWidthUnits, IndexChanged, this,
                                  &NVImageSize::OnWidthUnitChanged);
        const ConnectionCut height(m_pData->m_pHeightUnits, IndexChanged, this,
                                   &NVImageSize::OnHeightUnitChanged);
        m_pData->m_pWidthUnits->setCurrentIndex(Pixels);
        m_pData->m_pHeightUnits->setCurrentIndex(Pixels);
    }
    m_pData->m_pConstrain->setChecked(true);
    SetSizeDecimals(0);
    UpdateDimensions(UpdateAll);
    m_pData->m_pConstrainDimensions->setPixmap(m_pData->m_link1);
    m_pData->m_pConstrainProportions->setPixmap(m_pData->m_link2);
}

void NVImageSize::OnResolutionChanged(double dpi)
{
    // The boxes' rounded lengths stay and the pixels follow. Unlike in the other slots nothing is rounded to
    // the nearest pixel, on purpose.
    QSize& newSize = m_pData->m_newSize;
    const int widthUnit = m_pData->m_pWidthUnits->currentIndex();
    if (widthUnit >= FirstLength)
    {
        const auto toPixels = ToPixels(m_pData->m_units, widthUnit, dpi);
        newSize.setWidth(WholePixels(toPixels(m_pData->m_pNewWidth->value())));
        if (m_pData->m_constrain)
            newSize.setHeight(WholePixels(newSize.width() / m_pData->Ratio()));
    }
    const int heightUnit = m_pData->m_pHeightUnits->currentIndex();
    if (heightUnit >= FirstLength)
    {
        const auto toPixels = ToPixels(m_pData->m_units, heightUnit, dpi);
        newSize.setHeight(WholePixels(toPixels(m_pData->m_pNewHeight->value())));
        if (m_pData->m_constrain)
            newSize.setWidth(WholePixels(newSize.height() * m_pData->Ratio()));
    }
    UpdateDocumentSize();
    UpdateDimensions(UpdateAll);
}

void NVImageSize::OnAccepting()
{
    if (IsDocumentSide(m_pData->m_newSize.width()) && IsDocumentSide(m_pData->m_newSize.height()))
        Accept();
    else
        ShowRanges();
}

void NVImageSize::ConnectButtons()
{
    const QDialogButtonBox* box = m_pData->m_pButtonBox;
    connect(box, &QDialogButtonBox::accepted, this, &NVImageSize::OnAccepting);
    connect(box, &QDialogButtonBox::rejected, this, &NVImageSize::Reject);
    connect(box->button(QDialogButtonBox::Reset), &QPushButton::clicked, this, &NVImageSize::OnReset);
}

void NVImageSize::FillUnits()
{
    m_pData->m_units = NVMeasureUnit::StandardUnits();
    for (KXCommonComboBox* combo : {m_pData->m_pWidthUnits, m_pData->m_pHeightUnits})
    {
        combo->addItem(tr("px"));
        combo->addItem(tr("percent"));
        for (const NVMeasureUnit& unit : qAsConst(m_pData->m_units))
            combo->addItem(unit.GetAbbreviation());
    }
}

void NVImageSize::ConnectFields()
{
    connect(m_pData->m_pConstrain, &QCheckBox::toggled, this, &NVImageSize::OnContrainProportions);
    connect(m_pData->m_pWidthUnits, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &NVImageSize::OnWidthUnitChanged);
    connect(m_pData->m_pHeightUnits, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &NVImageSize::OnHeightUnitChanged);
    connect(m_pData->m_pNewWidth, qOverload<double>(&QDoubleSpinBox::valueChanged), this,
            &NVImageSize::OnNewWidthChanged);
    connect(m_pData->m_pNewHeight, qOverload<double>(&QDoubleSpinBox::valueChanged), this,
            &NVImageSize::OnNewHeightChanged);
    connect(m_pData->m_pResolution, qOverload<double>(&QDoubleSpinBox::valueChanged), this,
            &NVImageSize::OnResolutionChanged);
}

// A box that is given decimals rounds its value, which would count as an edit.
void NVImageSize::SetSizeDecimals(int decimals)
{
    const ConnectionCut width(m_pData->m_pNewWidth, ValueChanged, this, &NVImageSize::OnNewWidthChanged);
    const ConnectionCut height(m_pData->m_pNewHeight, ValueChanged, this, &NVImageSize::OnNewHeightChanged);
    m_pData->m_pNewWidth->setDecimals(decimals);
    m_pData->m_pNewHeight->setDecimals(decimals);
}

int NVImageSize::TypedPixels(double value, int unit, int currentSide) const
{
    if (unit == Pixels)
        return WholePixels(value + 0.5);
    if (unit == Percent)
        return WholePixels(currentSide * value / 100.0 + 0.5);
    // A length loses its last part of a pixel, on purpose.
    return WholePixels(ToPixels(m_pData->m_units, unit, m_pData->m_pResolution->value())(value));
}

void NVImageSize::UpdateDocumentSize()
{
    const QSize& current = m_pData->m_currentSize;
    const QSize& next = m_pData->m_newSize;
    const QString currentText = GetNormilizedImageSize(CalcMemorySize(current.width(), current.height()));
    // Only the widths are compared, on purpose: a new height alone is not told.
    if (m_pData->m_pResample->isChecked() && next.width() != current.width())
    {
        const QString nextText = GetNormilizedImageSize(CalcMemorySize(next.width(), next.height()));
        m_pData->m_pDimensionGroup->setTitle(tr("Pixel dimensions: %1 (was %2)").arg(nextText, currentText));
    }
    else
    {
        m_pData->m_pDimensionGroup->setTitle(tr("Pixel dimensions: %1").arg(currentText));
    }
}

void NVImageSize::UpdateDimensions(QFlags<UpdateFlag> flags)
{
    if (flags.testFlag(UpdatePixelWidth))
        ShowNumber(m_pData->m_pPixelWidth, m_pData->m_newSize.width());
    if (flags.testFlag(UpdatePixelHeight))
        ShowNumber(m_pData->m_pPixelHeight, m_pData->m_newSize.height());
    // In percent the height copies the number of the width, or the width that of an edited height, so that
    // both are the same while the proportions are kept.
    if (flags.testFlag(UpdateNewWidth))
    {
        const ConnectionCut cut(m_pData->m_pNewWidth, ValueChanged, this, &NVImageSize::OnNewWidthChanged);
        const bool copy = m_pData->m_constrain && !flags.testFlag(UpdateNewHeight);
        ShowSide(m_pData->m_pNewWidth, m_pData->m_pWidthUnits->currentIndex(), m_pData->m_newSize.width(),
                 copy ? m_pData->m_pNewHeight->value()
                      : PercentOf(m_pData->m_newSize.width(), m_pData->m_currentSize.width()));
    }
    if (flags.testFlag(UpdateNewHeight))
    {
        const ConnectionCut cut(m_pData->m_pNewHeight, ValueChanged, this, &NVImageSize::OnNewHeightChanged);
        ShowSide(m_pData->m_pNewHeight, m_pData->m_pHeightUnits->currentIndex(), m_pData->m_newSize.height(),
                 m_pData->m_constrain
                     ? m_pData->m_pNewWidth->value()
                     : PercentOf(m_pData->m_newSize.height(), m_pData->m_currentSize.height()));
    }
    UpdateDocumentSize();
}

void NVImageSize::ShowSide(QDoubleSpinBox* box, int unit, int pixels, double percent)
{
    if (unit == Pixels)
        box->setValue(pixels);
    else if (unit == Percent)
        box->setValue(percent);
    else
        box->setValue(FromPixels(m_pData->m_units, unit, m_pData->m_pResolution->value())(pixels));
}

void NVImageSize::ShowRanges()
{
    const int unit = m_pData->m_pWidthUnits->currentIndex();
    const QRectF ranges = Ranges(m_pData->m_constrain, unit, m_pData->m_pResolution->value(),
                                 m_pData->m_currentSize.width(), m_pData->m_currentSize.height());
    KXMessageBox box(KXMdiArea::MainWindow());
    OutliveParent(&box);
    box.setWindowTitle(tr("Operation error"));
    box.AddButton(KXMessageBox::Ok);
    box.SetDefaultButton(KXMessageBox::Ok);
    box.SetIcon(KXMessageBox::Error);
    const QLatin1Char blank(' ');
    box.SetText(RangesMessage(unit)
                    .arg(ranges.x(), 0, 'g', -1, blank)
                    .arg(ranges.x() + ranges.width(), 0, 'g', -1, blank)
                    .arg(ranges.y(), 0, 'g', -1, blank)
                    .arg(ranges.y() + ranges.height(), 0, 'g', -1, blank));
    box.Exec();
}

QString NVImageSize::RangesMessage(int unit)
{
    switch (unit)
    {
    case Pixels:
        return tr("Cannot resize the image. Maximum dimension exceeded.\n"
                  "The width should be in the range of %1 - %2 pixels.\n"
                  "The height should be in the range of %3 - %4 pixels.");
    case Percent:
        return tr("Cannot resize the image. Maximum dimension exceeded.\n"
                  "The width should be in the range of %1 - %2 percents.\n"
                  "The height should be in the range of %3 - %4 percents.");
    case FirstLength:
        return tr("Cannot resize the image. Maximum dimension exceeded for the DPI value.\n"
                  "The width should be in the range of %1 - %2 inches.\n"
                  "The height should be in the range of %3 - %4 inches.");
    default:
        // On purpose for every other unit too.
        return tr("Cannot resize the image. Maximum dimension exceeded for the DPI value.\n"
                  "The width should be in the range of %1 - %2 millimeters.\n"
                  "The height should be in the range of %3 - %4 millimeters.");
    }
}

QRectF NVImageSize::Ranges(bool constrain, int unit, double dpi, int width, int height) const
{
    const SizeLimits limits = constrain ? ProportionalLimits(width, height) : SizeLimits();
    if (unit == Pixels)
        return LimitsInPixels(limits).Rect();
    if (unit == Percent)
        return LimitsInPercent(limits, width, height).Rect();
    return LimitsInLength(limits, FromPixels(m_pData->m_units, unit, dpi)).Rect();
}

QString NVImageSize::GetNormilizedImageSize(qint64 size) const
{
    const qint64 kilo = 1024;
    if (size < kilo)
        return tr("%1 b").arg(size);
    if (size < kilo * kilo)
        return tr("%1 Kb").arg(double(size) / kilo, 0, 'f', 1);
    if (size < kilo * kilo * kilo)
        return tr("%1 Mb").arg(double(size) / (kilo * kilo), 0, 'f', 1);
    return tr("%1 Gb").arg(double(size) / (kilo * kilo * kilo), 0, 'f', 1);
}

qint64 NVImageSize::CalcMemorySize(int width, int height) const
{
    const qint64 pixels = qint64(width) * height;
    // Beyond 64 bits for sides alone that no image has.
    const qint64 most = std::numeric_limits<qint64>::max() / 4;
    return qBound(-most, pixels, most) * 4;
}
