#include "TextFit.h"

#include <QDoubleSpinBox>
#include <QEvent>
#include <QFontMetrics>
#include <QLabel>
#include <QLineEdit>
#include <QStyleOptionSpinBox>
#include <QStylePainter>

#include <utility>

#include "TextFit_p.h"

namespace
{

// What the style keeps free on either side of the text within a line edit.
const int LineEditMargin = 2;
// The height that a line edit asks for in small letters.
const int LeastLineHeight = 14;
// Width of the arrows in a box that is too narrow for the style's own, and what stays clear beside them for
// the frame.
const int TightArrowWidth = 8;
const int FrameWidth = 2;
// Percent of the usual distance from letter to letter that still reads well.
const int ClosestSpacing = 90;

// Boxes tell their style option to classes of their own alone.
QStyleOptionSpinBox OptionOf(const QAbstractSpinBox* box)
{
    struct Access : QAbstractSpinBox
    {
        using QAbstractSpinBox::initStyleOption;
    };
    QStyleOptionSpinBox option;
    (box->*(&Access::initStyleOption))(&option);
    return option;
}

QRect PlaceOf(QStyle::SubControl control, const QAbstractSpinBox* box)
{
    const QStyleOptionSpinBox option = OptionOf(box);
    return box->style()->subControlRect(QStyle::CC_SpinBox, &option, control, box);
}

int LineHeight(const QWidget* widget)
{
    return qMax(LeastLineHeight, widget->fontMetrics().height());
}

} // namespace

TextFit::TextFit(QAbstractSpinBox* box, ShownText text)
    : QObject(box), m_pBox(box), m_pEdit(box->findChild<QLineEdit*>()), m_text(std::move(text))
{
    box->installEventFilter(this);
}

bool TextFit::eventFilter(QObject* object, QEvent* event)
{
    switch (event->type())
    {
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::FontChange:
    case QEvent::StyleChange:
    case QEvent::LayoutDirectionChange:
        // The box puts everything to the style's own places first.
        object->event(event);
        Fit();
        return true;
    case QEvent::Paint:
        // A suffix or a value that came without a signal.
        if (m_text() != m_fittedText)
            QMetaObject::invokeMethod(this, &TextFit::Fit, Qt::QueuedConnection);
        if (m_tight)
            Draw();
        return m_tight;
    default:
        return false;
    }
}

void TextFit::Fit()
{
    m_fittedText = m_text();
    const QRect usual = PlaceOf(QStyle::SC_SpinBoxEditField, m_pBox);
    // One pixel is the text cursor's.
    const int needed = m_pBox->fontMetrics().horizontalAdvance(m_fittedText) + 1;
    m_tight = needed > usual.width() - 2 * LineEditMargin;
    if (m_tight)
    {
        FitTightly();
    }
    else
    {
        m_pEdit->setGeometry(usual);
        m_pEdit->setTextMargins(0, 0, 0, 0);
        m_pEdit->setFont(QFont());
    }
    m_pBox->update();
}

void TextFit::FitTightly()
{
    QRect area = m_pBox->rect().adjusted(FrameWidth, FrameWidth, -FrameWidth, -FrameWidth);
    if (m_pBox->layoutDirection() == Qt::RightToLeft)
    {
        area.setLeft(ArrowStrip().right() + 1);
    }
    else
    {
        area.setRight(ArrowStrip().left() - 1);
    }
    m_pEdit->setGeometry(area);
    m_pEdit->setFont(FittingFont(m_pBox->font(), m_fittedText, area.width() - 1));
    // Small letters leave the box as high as its neighbours.
    const int free = LineHeight(m_pBox) - LineHeight(m_pEdit);
    m_pEdit->setTextMargins(-LineEditMargin, free / 2, -LineEditMargin, free - free / 2);
}

void TextFit::Draw() const
{
    QStylePainter painter(m_pBox);
    QStyleOptionSpinBox option = OptionOf(m_pBox);
    const bool hasArrows = option.buttonSymbols != QAbstractSpinBox::NoButtons;
    option.buttonSymbols = QAbstractSpinBox::NoButtons;
    option.subControls = QStyle::SC_SpinBoxFrame;
    painter.drawComplexControl(QStyle::CC_SpinBox, option);
    if (hasArrows)
    {
        DrawArrow(painter, QStyle::SC_SpinBoxUp);
        DrawArrow(painter, QStyle::SC_SpinBoxDown);
    }
}

void TextFit::DrawArrow(QStylePainter& painter, int control) const
{
    const QStyleOptionSpinBox option = OptionOf(m_pBox);
    const QPalette& palette = m_pBox->palette();
    const bool isUp = control == QStyle::SC_SpinBoxUp;
    const int middle = PlaceOf(QStyle::SC_SpinBoxUp, m_pBox).bottom();
    QRect place = ArrowStrip();
    if (isUp)
    {
        place.setBottom(middle);
    }
    else
    {
        place.setTop(middle + 1);
    }
    if (option.activeSubControls == QStyle::SubControls(QFlag(control)))
    {
        const bool isPressed = option.state & QStyle::State_Sunken;
        painter.fillRect(place, palette.color(isPressed ? QPalette::Mid : QPalette::Midlight));
    }
    const auto step = isUp ? QAbstractSpinBox::StepUpEnabled : QAbstractSpinBox::StepDownEnabled;
    const bool isEnabled = m_pBox->isEnabled() && (option.stepEnabled & step);
    QStyleOption arrow;
    arrow.initFrom(m_pBox);
    arrow.state.setFlag(QStyle::State_Enabled, isEnabled);
    arrow.palette.setCurrentColorGroup(isEnabled ? palette.currentColorGroup() : QPalette::Disabled);
    arrow.rect = place.adjusted(1, 1, -1, -1);
    painter.drawPrimitive(isUp ? QStyle::PE_IndicatorArrowUp : QStyle::PE_IndicatorArrowDown, arrow);
}

// The part of the style's arrow column that a tight box leaves for the arrows. The line edit covers the rest
// of the column, so that presses reach the style's arrows just where they are drawn.
QRect TextFit::ArrowStrip() const
{
    const int width = m_pBox->buttonSymbols() == QAbstractSpinBox::NoButtons ? 0 : TightArrowWidth;
    QRect strip = m_pBox->rect().adjusted(FrameWidth, FrameWidth, -FrameWidth, -FrameWidth);
    strip.setLeft(strip.right() + 1 - width);
    return QStyle::visualRect(m_pBox->layoutDirection(), m_pBox->rect(), strip);
}

void FitText(QDoubleSpinBox* box)
{
    const auto text = [box]
    {
        const QString special = box->specialValueText();
        const bool isSpecial = box->value() == box->minimum() && !special.isEmpty();
        return isSpecial ? special : box->prefix() + box->textFromValue(box->value()) + box->suffix();
    };
    auto* fit = new TextFit(box, text);
    QObject::connect(box, qOverload<double>(&QDoubleSpinBox::valueChanged), fit, &TextFit::Fit);
    fit->Fit();
}

void FitText(QLabel* label)
{
    label->setFont(QFont());
    const QFont fitting = FittingFont(label->font(), label->text(), label->maximumWidth());
    if (fitting != label->font())
    {
        label->setFont(fitting);
    }
}

QFont FittingFont(QFont font, const QString& text, int width)
{
    if (QFontMetrics(font).horizontalAdvance(text) > width)
    {
        font.setLetterSpacing(QFont::PercentageSpacing, ClosestSpacing);
    }
    const bool isInPixels = font.pointSizeF() <= 0.0;
    qreal size = isInPixels ? font.pixelSize() : font.pointSizeF();
    while (size > 1.0 && QFontMetrics(font).horizontalAdvance(text) > width)
    {
        size = isInPixels ? size - 1.0 : size - 0.25;
        if (isInPixels)
        {
            font.setPixelSize(qMax(1, qRound(size)));
        }
        else
        {
            font.setPointSizeF(qMax(1.0, size));
        }
    }
    return font;
}
