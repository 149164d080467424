#include "ElidedLine_p.h"

#include <QEvent>
#include <QLabel>
#include <QPainter>
#include <QStyle>

namespace
{

class LinePainter : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject* object, QEvent* event) override
    {
        if (event->type() != QEvent::Paint)
            return QObject::eventFilter(object, event);
        const auto* label = static_cast<QLabel*>(object);
        QPainter painter(static_cast<QLabel*>(object));
        const QRect line = label->contentsRect();
        const Qt::Alignment alignment = QStyle::visualAlignment(label->layoutDirection(), label->alignment());
        const QString text =
            label->fontMetrics().elidedText(label->text(), Qt::ElideMiddle, line.width(), Qt::TextSingleLine);
        label->style()->drawItemText(&painter, line, int(alignment) | Qt::TextSingleLine, label->palette(),
                                     label->isEnabled(), text, label->foregroundRole());
        return true;
    }
};

} // namespace

void ElideWhenPainted(QLabel* label)
{
    label->installEventFilter(new LinePainter(label));
}
