#include "NVSpinBox.h"

#include <QApplication>
#include <QDockWidget>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <QStyleOptionSpinBox>
#include <QStylePainter>

#include <algorithm>

#include "SumEvaluation.h"

namespace
{

// What the style keeps free on either side of the text within a line edit.
const int LineEditMargin = 2;
// Width of the arrows in a box that is too narrow for the style's own, and what stays clear beside them for
// the frame.
const int TightArrowWidth = 8;
const int FrameWidth = 2;
// Percent of the usual distance from letter to letter that still reads well.
const int ClosestSpacing = 90;

bool IsWholeNumber(const QString& text)
{
    const bool hasSign = text.startsWith(QLatin1Char('-')) || text.startsWith(QLatin1Char('+'));
    return text.size() > int(hasSign) &&
        std::all_of(text.begin() + int(hasSign), text.end(), [](QChar c) { return c.isDigit(); });
}

// The largest font, up to the given one, in which the text is no wider than that. Letters move closer
// together before they get smaller.
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

bool CanTakeFocus(const QWidget* widget)
{
    return widget && widget->isVisible() && widget->isEnabled();
}

} // namespace

NVSpinBox::NVSpinBox(QWidget* parent) : QSpinBox(parent)
{
    connect(qApp, &QApplication::focusChanged, this, &NVSpinBox::OnFocusChanged);
    connect(this, qOverload<int>(&QSpinBox::valueChanged), this, &NVSpinBox::FitText);
    connect(lineEdit(), &QLineEdit::textEdited, this, &NVSpinBox::OnTextEdited);
}

NVSpinBox::~NVSpinBox()
{
    // The base takes the focus away when most of the box is gone already.
    disconnect(qApp, nullptr, this, nullptr);
    disconnect(this, nullptr, this, nullptr);
}

QString NVSpinBox::text() const
{
    const QString shown = QSpinBox::text();
    return IsEmptyAllowed() && shown == specialValueText() ? QString() : shown;
}

bool NVSpinBox::event(QEvent* event)
{
    // Whatever a person does to the text begins with an event.
    if (!IsTyped())
    {
        m_settledValue = value();
    }
    if (event->type() == QEvent::ShortcutOverride)
    {
        const QKeyEvent* key = static_cast<QKeyEvent*>(event);
        const bool isPlain = (key->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
        if (isPlain &&
            (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter || key->key() == Qt::Key_Escape))
        {
            event->accept();
            return true;
        }
    }
    // A suffix or a value that came without a signal.
    if (event->type() == QEvent::Paint && ShownText() != m_fittedText)
    {
        QMetaObject::invokeMethod(this, &NVSpinBox::FitText, Qt::QueuedConnection);
    }
    return QSpinBox::event(event);
}

void NVSpinBox::changeEvent(QEvent* event)
{
    QSpinBox::changeEvent(event);
    switch (event->type())
    {
    case QEvent::FontChange:
    case QEvent::StyleChange:
    case QEvent::LayoutDirectionChange:
        FitText();
        break;
    default:
        break;
    }
}

void NVSpinBox::focusOutEvent(QFocusEvent* event)
{
    QSpinBox::focusOutEvent(event);
    m_typedText.reset();
}

void NVSpinBox::keyPressEvent(QKeyEvent* event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter)
    {
        const QPointer<NVSpinBox> self(this);
        QSpinBox::keyPressEvent(event);
        if (!self)
        {
            return;
        }
        m_typedText.reset();
        event->setAccepted(GiveFocusBack());
    }
    else if (event->key() == Qt::Key_Escape)
    {
        const bool wasTyped = IsTyped();
        if (wasTyped)
        {
            setValue(m_settledValue);
            m_typedText.reset();
        }
        event->setAccepted(GiveFocusBack() || wasTyped);
    }
    else
    {
        QSpinBox::keyPressEvent(event);
    }
}

void NVSpinBox::paintEvent(QPaintEvent* event)
{
    if (m_tight)
    {
        DrawTight();
    }
    else
    {
        QSpinBox::paintEvent(event);
    }
}

void NVSpinBox::resizeEvent(QResizeEvent* event)
{
    QSpinBox::resizeEvent(event);
    FitText();
}

void NVSpinBox::showEvent(QShowEvent* event)
{
    QSpinBox::showEvent(event);
    FitText();
}

void NVSpinBox::fixup(QString& input) const
{
    if (displayIntegerBase() != 10 || isGroupSeparatorShown())
    {
        QSpinBox::fixup(input);
        return;
    }
    const auto result = EvaluateSum(Stripped(input), locale());
    const int number = RoundIntoRange(result.value_or(m_settledValue), minimum(), maximum());
    input = prefix() + textFromValue(number) + suffix();
}

QValidator::State NVSpinBox::validate(QString& input, int& position) const
{
    const QString text = Stripped(input);
    if (IsEmptyAllowed() && text.isEmpty())
    {
        // The line edit takes this over, so that its text is empty indeed.
        input.clear();
        position = 0;
        return QValidator::Acceptable;
    }
    const bool isPlainBox = displayIntegerBase() == 10 && !isGroupSeparatorShown();
    const bool isSpecial = !specialValueText().isEmpty() && input == specialValueText();
    if (!isPlainBox || isSpecial || text.isEmpty() || IsWholeNumber(text))
    {
        const QValidator::State state = QSpinBox::validate(input, position);
        if (!isPlainBox || state != QValidator::Invalid)
        {
            return state;
        }
    }
    const QString known =
        QStringLiteral("+-*/(). \u2212\u00d7\u00f7") + locale().decimalPoint() + prefix() + suffix();
    const bool maySum =
        std::all_of(text.begin(), text.end(), [&known](QChar c) { return c.isDigit() || known.contains(c); });
    return maySum ? QValidator::Intermediate : QValidator::Invalid;
}

int NVSpinBox::valueFromText(const QString& text) const
{
    return IsEmptyAllowed() && Stripped(text).isEmpty() ? minimum() : QSpinBox::valueFromText(text);
}

void NVSpinBox::OnFocusChanged(QWidget* old, QWidget* now)
{
    if (now != this || !old || old == this)
    {
        return;
    }
    const NVSpinBox* box = qobject_cast<NVSpinBox*>(old);
    m_pFocusBefore = box ? box->m_pFocusBefore.data() : old;
}

void NVSpinBox::OnTextEdited(const QString& text)
{
    m_typedText = text;
}

void NVSpinBox::FitText()
{
    m_fittedText = ShownText();
    QStyleOptionSpinBox option;
    initStyleOption(&option);
    const QRect usual =
        style()->subControlRect(QStyle::CC_SpinBox, &option, QStyle::SC_SpinBoxEditField, this);
    // One pixel is the text cursor's.
    const int needed = fontMetrics().horizontalAdvance(m_fittedText) + 1;
    m_tight = needed > usual.width() - 2 * LineEditMargin;
    if (m_tight)
    {
        QRect area = rect().adjusted(FrameWidth, FrameWidth, -FrameWidth, -FrameWidth);
        if (layoutDirection() == Qt::RightToLeft)
        {
            area.setLeft(ArrowStrip().right() + 1);
        }
        else
        {
            area.setRight(ArrowStrip().left() - 1);
        }
        lineEdit()->setGeometry(area);
        lineEdit()->setTextMargins(-LineEditMargin, 0, -LineEditMargin, 0);
        lineEdit()->setFont(FittingFont(font(), m_fittedText, area.width() - 1));
    }
    else
    {
        lineEdit()->setGeometry(usual);
        lineEdit()->setTextMargins(0, 0, 0, 0);
        lineEdit()->setFont(QFont());
    }
    update();
}

// Whether the text is what a person has typed and not finished. A change from anywhere else puts another text
// there.
bool NVSpinBox::IsTyped() const
{
    return m_typedText && *m_typedText == lineEdit()->text();
}

bool NVSpinBox::IsEmptyAllowed() const
{
    return !specialValueText().isEmpty() && specialValueText().trimmed().isEmpty();
}

// The text without prefix, unit and outer blanks.
QString NVSpinBox::Stripped(const QString& text) const
{
    QString stripped = text;
    if (!prefix().isEmpty() && stripped.startsWith(prefix()))
    {
        stripped.remove(0, prefix().size());
    }
    stripped = stripped.trimmed();
    const QString unit = suffix().trimmed();
    // The box puts its suffix behind everything, a suffix that was typed as well.
    while (!unit.isEmpty() && stripped.endsWith(unit))
    {
        stripped.chop(unit.size());
        stripped = stripped.trimmed();
    }
    return stripped;
}

QString NVSpinBox::ShownText() const
{
    const bool isSpecial = value() == minimum() && !specialValueText().isEmpty();
    return isSpecial ? specialValueText() : prefix() + textFromValue(value()) + suffix();
}

QWidget* NVSpinBox::ReturnWidget() const
{
    const QWidget* home = window();
    if (qobject_cast<const QDockWidget*>(home) && home->parentWidget())
    {
        home = home->parentWidget()->window();
    }
    if (home->windowType() != Qt::Window)
    {
        return nullptr;
    }
    if (CanTakeFocus(m_pFocusBefore) && m_pFocusBefore->window() == home)
    {
        return m_pFocusBefore;
    }
    const QMainWindow* mainWindow = qobject_cast<const QMainWindow*>(home);
    QWidget* centre = mainWindow ? mainWindow->centralWidget() : nullptr;
    if (centre && CanTakeFocus(centre->focusWidget()))
    {
        return centre->focusWidget();
    }
    return CanTakeFocus(centre) ? centre : nullptr;
}

bool NVSpinBox::GiveFocusBack()
{
    QWidget* target = ReturnWidget();
    if (!target)
    {
        return false;
    }
    if (target->window() != window())
    {
        target->window()->activateWindow();
    }
    target->setFocus(Qt::OtherFocusReason);
    return true;
}

void NVSpinBox::DrawTight()
{
    QStylePainter painter(this);
    QStyleOptionSpinBox option;
    initStyleOption(&option);
    const QRect up = style()->subControlRect(QStyle::CC_SpinBox, &option, QStyle::SC_SpinBoxUp, this);
    const QRect strip = ArrowStrip();
    const bool hasArrows = option.buttonSymbols != QAbstractSpinBox::NoButtons;
    const QStyle::SubControls active = option.activeSubControls;
    const bool isPressed = option.state & QStyle::State_Sunken;

    option.buttonSymbols = QAbstractSpinBox::NoButtons;
    option.subControls = QStyle::SC_SpinBoxFrame;
    painter.drawComplexControl(QStyle::CC_SpinBox, option);
    for (const QStyle::SubControl control : {QStyle::SC_SpinBoxUp, QStyle::SC_SpinBoxDown})
    {
        if (!hasArrows)
        {
            break;
        }
        const bool isUp = control == QStyle::SC_SpinBoxUp;
        QRect place = strip;
        if (isUp)
        {
            place.setBottom(up.bottom());
        }
        else
        {
            place.setTop(up.bottom() + 1);
        }
        if (active == QStyle::SubControls(control))
        {
            painter.fillRect(place, palette().color(isPressed ? QPalette::Mid : QPalette::Midlight));
        }
        QStyleOption arrow;
        arrow.initFrom(this);
        arrow.state.setFlag(QStyle::State_Enabled,
                            isEnabled() && (option.stepEnabled & (isUp ? StepUpEnabled : StepDownEnabled)));
        arrow.palette.setCurrentColorGroup(arrow.state & QStyle::State_Enabled ? palette().currentColorGroup()
                                                                               : QPalette::Disabled);
        arrow.rect = place.adjusted(1, 1, -1, -1);
        painter.drawPrimitive(isUp ? QStyle::PE_IndicatorArrowUp : QStyle::PE_IndicatorArrowDown, arrow);
    }
}

// The part of the style's arrow column that a tight box leaves for the arrows. The line edit covers the rest
// of the column, so that presses reach the style's arrows just where they are drawn.
QRect NVSpinBox::ArrowStrip() const
{
    const int width = buttonSymbols() == NoButtons ? 0 : TightArrowWidth;
    QRect strip = rect().adjusted(FrameWidth, FrameWidth, -FrameWidth, -FrameWidth);
    strip.setLeft(strip.right() + 1 - width);
    return QStyle::visualRect(layoutDirection(), rect(), strip);
}
