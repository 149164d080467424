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
#include <QVector>

#include <algorithm>

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

// The sign before a letter shows where the letter is the key of another control.
inline int TextWidth(const QLabel* label)
{
    return label->fontMetrics().size(label->buddy() ? Qt::TextShowMnemonic : 0, label->text()).width();
}

// What a text lacks of its place; negative if there is room left.
struct TextRoom
{
    QString Control;
    QString Text;
    int MissingWidth = 0;
    bool IsTooLow = false;

    bool IsCut() const { return MissingWidth > 0 || IsTooLow; }
};

// Of all controls in the window that are to be seen, in the order in which they were made. A text of several
// lines is left out.
inline QVector<TextRoom> TextRooms(const QWidget* window)
{
    QVector<TextRoom> rooms;
    const QList<QWidget*> widgets = window->findChildren<QWidget*>();
    for (const QWidget* widget : widgets)
    {
        TextRoom room{widget->objectName(), QString(), 0, false};
        int height = widget->fontMetrics().height();
        if (const auto* label = qobject_cast<const QLabel*>(widget))
        {
            room.Text = label->text();
            if (!label->wordWrap())
                room.MissingWidth = TextWidth(label) - label->contentsRect().width();
        }
        else if (const auto* box = qobject_cast<const QAbstractSpinBox*>(widget))
        {
            room.Text = box->text();
            room.MissingWidth = MissingWidth(box);
            height = box->findChild<QLineEdit*>()->fontMetrics().height();
        }
        else if (const auto* list = qobject_cast<const QComboBox*>(widget))
        {
            room.Text = list->currentText();
            room.MissingWidth = MissingWidth(list);
        }
        else if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
        {
            room.Text = button->text();
            room.MissingWidth = widget->minimumSizeHint().width() - widget->width();
        }
        else if (const auto* group = qobject_cast<const QGroupBox*>(widget))
        {
            room.Text = group->title();
            room.MissingWidth = widget->minimumSizeHint().width() - widget->width();
        }
        else
            continue;
        room.IsTooLow = widget->height() < height;
        if (widget->isVisible())
            rooms.append(room);
    }
    return rooms;
}

// The first control in the window whose text is cut off, and by how much; empty if there is none.
inline QString CutText(const QWidget* window)
{
    const QVector<TextRoom> rooms = TextRooms(window);
    const auto cut =
        std::find_if(rooms.cbegin(), rooms.cend(), [](const TextRoom& room) { return room.IsCut(); });
    if (cut == rooms.cend())
        return QString();
    return QStringLiteral("%1 lacks %2 pixels").arg(cut->Control).arg(cut->MissingWidth);
}
