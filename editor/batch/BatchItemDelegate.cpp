#include "BatchItemDelegate.h"

#include <QApplication>
#include <QPainter>

#include "BatchReport.h"
#include "KXBatchInputModel.h"
#include "Thumbnails.h"

namespace
{

const int Margin = 3;
const int CountGap = 8;

QString CountText(const QModelIndex& index)
{
    if (index.data(KXBatchInputModel::NodeIsFileRole).toInt() != 0)
        return {};
    return QLocale().toString(index.data(KXBatchInputModel::NodeFileCountRole).toInt());
}

QStyle* StyleOf(const QStyleOptionViewItem& option)
{
    return option.widget ? option.widget->style() : QApplication::style();
}

} // namespace

BatchItemDelegate::BatchItemDelegate(const Thumbnails* thumbnails, QObject* parent)
    : QStyledItemDelegate(parent), m_pThumbnails(thumbnails)
{
}

void BatchItemDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const
{
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    const QStyle* style = StyleOf(item);
    const QString count = CountText(index);
    const QRect text = style->subElementRect(QStyle::SE_ItemViewItemText, &item, item.widget);
    const int width = count.isEmpty() ? 0 : item.fontMetrics.horizontalAdvance(count) + CountGap;
    // The margins that the style has at both sides of a text.
    const int margins = 2 * (style->pixelMetric(QStyle::PM_FocusFrameHMargin, &item, item.widget) + 1);
    item.text = item.fontMetrics.elidedText(item.text, Qt::ElideMiddle, text.width() - margins - width);
    style->drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);
    const bool isSelected = item.state.testFlag(QStyle::State_Selected);
    const QRect place = item.rect.adjusted(0, 0, -Margin - 1, 0);
    painter->save();
    painter->setFont(item.font);
    style->drawItemText(painter, place, Qt::AlignRight | Qt::AlignVCenter, item.palette,
                        item.state.testFlag(QStyle::State_Enabled), count,
                        isSelected ? QPalette::HighlightedText : QPalette::Text);
    painter->restore();
}

QSize BatchItemDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const QSize size = QStyledItemDelegate::sizeHint(option, index);
    return QSize(size.width(), qMax(size.height(), option.decorationSize.height() + 2 * Margin));
}

void BatchItemDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    // One row, whatever the name holds.
    option->text = OneLine(index.data().toString());
    option->features |= QStyleOptionViewItem::HasDecoration | QStyleOptionViewItem::HasDisplay;
    const bool isFile = index.data(KXBatchInputModel::NodeIsFileRole).toInt() != 0;
    QPixmap pixmap;
    if (isFile)
        pixmap = m_pThumbnails->Get(index.data(KXBatchInputModel::NodePathRole).toString());
    if (!pixmap.isNull())
    {
        pixmap.setDevicePixelRatio(option->widget ? option->widget->devicePixelRatioF() : 1.0);
        option->icon = QIcon();
        // A selected picture keeps its colours.
        option->icon.addPixmap(pixmap, QIcon::Normal);
        option->icon.addPixmap(pixmap, QIcon::Selected);
    }
    else
        option->icon = StyleOf(*option)->standardIcon(isFile ? QStyle::SP_FileIcon : QStyle::SP_DirIcon);
}
