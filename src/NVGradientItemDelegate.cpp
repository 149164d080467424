#include "NVGradientItemDelegate.h"

#include <QApplication>
#include <QLinearGradient>
#include <QPainter>
#include <QStyle>

#include "Checker_p.h"

namespace
{

const int CheckerSide = 5;
const int Margin = 5;
const int LeastHeight = 30;

} // namespace

NVGradientItemDelegate::NVGradientItemDelegate(QObject* parent)
    : QStyledItemDelegate(parent), m_checker(CheckerBrush(CheckerSide))
{
}

NVGradientItemDelegate::~NVGradientItemDelegate() = default;

void NVGradientItemDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                   const QModelIndex& index) const
{
    QStyleOptionViewItem item(option);
    const QStyle* style = item.widget ? item.widget->style() : QApplication::style();
    const QBrush brush = index.data(Qt::BackgroundRole).value<QBrush>();
    if (!brush.gradient() || brush.gradient()->type() != QGradient::LinearGradient)
    {
        return;
    }
    const QRect inner = item.rect.adjusted(Margin, Margin, -Margin, -Margin);
    QLinearGradient gradient(inner.topLeft(), inner.topRight());
    gradient.setStops(brush.gradient()->stops());

    item.state &= ~QStyle::State_HasFocus;
    style->drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);

    if (inner.isEmpty())
    {
        return;
    }
    // From here the checker begins at the corner of the row.
    painter->save();
    painter->translate(inner.topLeft());
    painter->fillRect(QRect(QPoint(0, 0), inner.size()), m_checker);
    painter->restore();
    painter->fillRect(inner, gradient);
}

QSize NVGradientItemDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const QSize natural = QStyledItemDelegate::sizeHint(option, index);
    return QSize(natural.width(), qMax(natural.height(), LeastHeight));
}
