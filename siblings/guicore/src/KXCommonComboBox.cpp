#include "KXCommonComboBox.h"

#include <QAbstractItemView>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>
#include <QStylePainter>
#include <QWheelEvent>

namespace
{

// What the styles keep free beside the text and between icon and text.
const int TextMargin = 1;
const int IconSpacing = 4;

bool closesList(const QKeyEvent* event)
{
    return event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Escape;
}

} // namespace

KXCommonComboBox::KXCommonComboBox(QWidget* parent) : QComboBox(parent) { }

KXCommonComboBox::~KXCommonComboBox() = default;

void KXCommonComboBox::showPopup()
{
    QComboBox::showPopup();
    // In front of the toolkit's own filter, however often the list was opened.
    view()->installEventFilter(this);
}

// The toolkit's list closes as soon as it is asked whether the key is a shortcut. The press itself then
// reaches what lies behind, as a dialog whose default button it presses. So the question waits for the press.
bool KXCommonComboBox::eventFilter(QObject* object, QEvent* event)
{
    const bool isQuestion = event->type() == QEvent::ShortcutOverride;
    if (m_answersKey || (!isQuestion && event->type() != QEvent::KeyPress) || object != view() ||
        !closesList(static_cast<QKeyEvent*>(event)))
    {
        return QComboBox::eventFilter(object, event);
    }
    event->accept();
    if (!isQuestion)
    {
        const auto* press = static_cast<QKeyEvent*>(event);
        QKeyEvent question(QEvent::ShortcutOverride, press->key(), press->modifiers());
        const QPointer<KXCommonComboBox> self(this);
        m_answersKey = true;
        QCoreApplication::sendEvent(object, &question);
        if (self)
        {
            m_answersKey = false;
        }
    }
    return true;
}

void KXCommonComboBox::paintEvent(QPaintEvent* event)
{
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const QRect field =
        style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    const int iconWidth = option.currentIcon.isNull() ? 0 : option.iconSize.width() + IconSpacing;
    // The styles draw up to the end of the field, and their size hint counts on that.
    const int room = field.width() - iconWidth - TextMargin;
    if (isEditable() || fontMetrics().horizontalAdvance(option.currentText) <= room)
    {
        QComboBox::paintEvent(event);
        return;
    }
    QStylePainter painter(this);
    painter.setPen(palette().color(QPalette::Text));
    option.currentText = fontMetrics().elidedText(option.currentText, Qt::ElideRight, room - TextMargin);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

void KXCommonComboBox::wheelEvent(QWheelEvent* event)
{
    if (hasFocus() || (isEditable() && lineEdit()->hasFocus()))
    {
        QComboBox::wheelEvent(event);
    }
    else
    {
        event->ignore();
    }
}
