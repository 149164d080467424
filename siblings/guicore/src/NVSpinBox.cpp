#include "NVSpinBox.h"

#include <QApplication>
#include <QDockWidget>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMainWindow>

#include <algorithm>

#include "SumEvaluation.h"
#include "TextFit_p.h"

namespace
{

bool IsWholeNumber(const QString& text)
{
    const bool hasSign = text.startsWith(QLatin1Char('-')) || text.startsWith(QLatin1Char('+'));
    return text.size() > int(hasSign) &&
        std::all_of(text.begin() + int(hasSign), text.end(), [](QChar c) { return c.isDigit(); });
}

bool CanTakeFocus(const QWidget* widget)
{
    return widget && widget->isVisible() && widget->isEnabled();
}

} // namespace

NVSpinBox::NVSpinBox(QWidget* parent) : QSpinBox(parent)
{
    m_pFit = new TextFit(this, [this] { return ShownText(); });
    connect(qApp, &QApplication::focusChanged, this, &NVSpinBox::OnFocusChanged);
    connect(this, qOverload<int>(&QSpinBox::valueChanged), m_pFit, &TextFit::Fit);
    connect(lineEdit(), &QLineEdit::textEdited, this, &NVSpinBox::OnTextEdited);
}

NVSpinBox::~NVSpinBox()
{
    // The base takes the focus away when most of the box is gone already.
    disconnect(qApp, nullptr, this, nullptr);
    delete m_pFit;
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
    return QSpinBox::event(event);
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
