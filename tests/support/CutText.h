// Whether the texts of a window have the room that they need.

#pragma once

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QStyleOptionComboBox>

// The application in letters of that size, in points.
class FontSize
{
public:
    explicit FontSize(int points) : m_before(QApplication::font())
    {
        QFont font = m_before;
        font.setPointSize(points);
        QApplication::setFont(font);
    }
    ~FontSize() { QApplication::setFont(m_before); }
    FontSize(const FontSize&) = delete;
    FontSize& operator=(const FontSize&) = delete;

private:
    QFont m_before;
};

// In pixels, what a number box lacks for its text beside the two that a line edit keeps free on either side;
// negative if there is room left.
inline int MissingWidth(const QAbstractSpinBox* box)
{
    const auto* edit = box->findChild<QLineEdit*>();
    const QMargins margins = edit->textMargins();
    const int room = edit->width() - margins.left() - margins.right() - 4;
    return edit->fontMetrics().horizontalAdvance(edit->text()) - room;
}

inline int MissingWidth(const QComboBox* list)
{
    QStyleOptionComboBox option;
    option.initFrom(list);
    const QRect field =
        list->style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, list);
    return list->fontMetrics().horizontalAdvance(list->currentText()) - field.width();
}

// The first control in the window whose text is cut off, and by how much; empty if there is none. A text of
// several lines is left out.
inline QString CutText(const QWidget* window)
{
    const QList<QWidget*> widgets = window->findChildren<QWidget*>();
    for (const QWidget* widget : widgets)
    {
        int missing = 0;
        int height = widget->fontMetrics().height();
        if (const auto* label = qobject_cast<const QLabel*>(widget))
            missing = label->wordWrap()
                ? 0
                : label->fontMetrics().horizontalAdvance(label->text()) - label->contentsRect().width();
        else if (const auto* box = qobject_cast<const QAbstractSpinBox*>(widget))
        {
            missing = MissingWidth(box);
            height = box->findChild<QLineEdit*>()->fontMetrics().height();
        }
        else if (const auto* list = qobject_cast<const QComboBox*>(widget))
            missing = MissingWidth(list);
        else if (qobject_cast<const QAbstractButton*>(widget) || qobject_cast<const QGroupBox*>(widget))
            missing = widget->minimumSizeHint().width() - widget->width();
        else
            continue;
        if (widget->isVisible() && (missing > 0 || widget->height() < height))
            return QStringLiteral("%1 lacks %2 pixels").arg(widget->objectName()).arg(missing);
    }
    return QString();
}
