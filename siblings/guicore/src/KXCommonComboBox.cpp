#include "KXCommonComboBox.h"

#include <QLineEdit>
#include <QStylePainter>
#include <QWheelEvent>

namespace
{

// What the styles keep free beside the text and between icon and text.
const int TextMargin = 1;
const int IconSpacing = 4;

} // namespace

KXCommonComboBox::KXCommonComboBox(QWidget* parent) : QComboBox(parent) { }

KXCommonComboBox::~KXCommonComboBox() = default;

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
