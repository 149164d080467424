#include "KXColorSampleDelegate.h"

#include <QApplication>
#include <QPainter>
#include <QPainterPath>

#include "CheckerBrush_p.h"

namespace
{

const int Margin = 5;
const int Gap = 8;
const int SwatchWidth = 36;
const int CheckerCell = 5;
// Room for the numbers of a list of that many rows; further ones are cut.
const QLatin1String WidestNumber("00");

struct Places
{
    QRect number;
    QRect swatch;
    QRect first;
    QRect second;
};

QFont numberFont(const QStyleOptionViewItem& item)
{
    QFont font(item.font);
    font.setBold(true);
    return font;
}

int numberWidth(const QStyleOptionViewItem& item)
{
    return QFontMetrics(numberFont(item)).horizontalAdvance(WidestNumber);
}

int textLeft(const QStyleOptionViewItem& item)
{
    return Margin + numberWidth(item) + Gap + SwatchWidth + Gap;
}

Places placesIn(const QStyleOptionViewItem& item)
{
    const QRect inner = item.rect.adjusted(Margin, Margin, -Margin, -Margin);
    const int line = item.fontMetrics.height();
    const QRect text(item.rect.left() + textLeft(item), inner.center().y() - line + 1,
                     qMax(0, inner.right() + 1 - item.rect.left() - textLeft(item)), line);
    const auto visual = [&item](const QRect& rect)
    { return QStyle::visualRect(item.direction, item.rect, rect); };
    Places places;
    places.number = visual(QRect(inner.left(), inner.top(), numberWidth(item), inner.height()));
    places.swatch =
        visual(QRect(inner.left() + numberWidth(item) + Gap, inner.top(), SwatchWidth, inner.height()));
    places.first = visual(text);
    places.second = visual(text.translated(0, line));
    return places;
}

void drawSwatch(QPainter* painter, const QRect& place, const QColor& color, const QColor& frame)
{
    const QRect inner = place.adjusted(1, 1, -1, -1);
    if (!color.isValid())
    {
        painter->setPen(frame);
        painter->drawLine(inner.topLeft(), inner.bottomRight());
        painter->drawLine(inner.topRight(), inner.bottomLeft());
    }
    else
    {
        if (color.alpha() < 255)
        {
            painter->setBrushOrigin(inner.topLeft());
            painter->fillRect(inner, CheckerBrush(CheckerCell));
        }
        painter->fillRect(inner, color);
    }
    QPainterPath edge;
    edge.addRect(place);
    edge.addRect(inner);
    painter->fillPath(edge, frame);
}

void drawLine(QPainter* painter, const QStyleOptionViewItem& item, const QRect& place, const QString& text)
{
    const QString shown = item.fontMetrics.elidedText(text, Qt::ElideRight, place.width());
    painter->drawText(place,
                      int(QStyle::visualAlignment(item.direction, Qt::AlignLeft)) | Qt::AlignVCenter |
                          Qt::TextSingleLine,
                      shown);
}

} // namespace

KXColorSampleDelegate::KXColorSampleDelegate(QObject* parent) : QStyledItemDelegate(parent) { }

KXColorSampleDelegate::~KXColorSampleDelegate() = default;

int KXColorSampleDelegate::GetWidth() const
{
    return m_width;
}

void KXColorSampleDelegate::SetWidth(int width)
{
    const int bounded = qMax(0, width);
    if (m_width == bounded)
        return;
    m_width = bounded;
    Q_EMIT sizeHintChanged(QModelIndex());
}

void KXColorSampleDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                  const QModelIndex& index) const
{
    QStyleOptionViewItem item(option);
    initStyleOption(&item, index);
    const QStyle* style = item.widget ? item.widget->style() : QApplication::style();
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &item, painter, item.widget);
    const QPalette::ColorGroup group = !(item.state & QStyle::State_Enabled) ? QPalette::Disabled
        : item.state & QStyle::State_Active                                  ? QPalette::Active
                                                                             : QPalette::Inactive;
    const bool selected = item.state & QStyle::State_Selected;
    const QColor ink = item.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text);
    const Places places = placesIn(item);

    painter->save();
    painter->setClipRect(item.rect, Qt::IntersectClip);
    painter->setPen(ink);
    painter->setFont(numberFont(item));
    painter->drawText(places.number, Qt::AlignCenter | Qt::TextSingleLine, QString::number(index.row() + 1));
    painter->setFont(item.font);
    drawLine(painter, item, places.first, index.data(Qt::DisplayRole).toString());
    drawLine(painter, item, places.second, index.data(DetailRole).toString());
    drawSwatch(painter, places.swatch, index.data(Qt::DecorationRole).value<QColor>(), ink);
    painter->restore();
}

QSize KXColorSampleDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QStyleOptionViewItem item(option);
    initStyleOption(&item, index);
    const int height = 2 * (item.fontMetrics.height() + Margin);
    if (m_width >= 0)
        return QSize(m_width, height);
    const int text = qMax(item.fontMetrics.horizontalAdvance(index.data(Qt::DisplayRole).toString()),
                          item.fontMetrics.horizontalAdvance(index.data(DetailRole).toString()));
    return QSize(textLeft(item) + text + Margin, height);
}
