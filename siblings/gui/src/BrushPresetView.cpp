#include "BrushPresetView_p.h"

#include <QApplication>
#include <QPainter>

#include "BrushStroke_p.h"

namespace
{

const QSize StrokeSize(96, 30);
const int Margin = 4;
const int StrokeDiameter = 15;

QImage strokeOf(const BrushPreset& preset, double ratio)
{
    BrushStroke stroke;
    stroke.tip = preset.tip;
    stroke.diameter = StrokeDiameter * ratio;
    stroke.spacing = preset.spacing;
    return RenderBrushStroke(stroke, StrokeSize * ratio);
}

QString keyOf(const BrushPreset& preset, double ratio)
{
    const BrushTip& tip = preset.tip;
    return QStringLiteral("%1 %2 %3 %4 %5 %6")
        .arg(tip.shape)
        .arg(tip.hardness)
        .arg(tip.roundness)
        .arg(tip.angle)
        .arg(preset.spacing)
        .arg(ratio);
}

} // namespace

BrushPresetModel::BrushPresetModel(QObject* parent)
    : QAbstractListModel(parent), m_presets(BuiltInBrushPresets()), m_builtIns(m_presets.size())
{
}

int BrushPresetModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_presets.size();
}

QVariant BrushPresetModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return QVariant();
    const QString name = m_presets[index.row()].name;
    switch (role)
    {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole:
        return name;
    case Qt::ToolTipRole:
        // A name that a person typed must not be taken for markup.
        return QStringLiteral("<qt>%1</qt>").arg(name.toHtmlEscaped());
    default:
        return QVariant();
    }
}

const BrushPreset& BrushPresetModel::Preset(int row) const
{
    return m_presets[row];
}

bool BrushPresetModel::IsUserPreset(int row) const
{
    return row >= m_builtIns && row < m_presets.size();
}

bool BrushPresetModel::HasName(const QString& name) const
{
    for (const BrushPreset& preset : m_presets)
    {
        if (preset.name == name)
            return true;
    }
    return false;
}

QVector<BrushPreset> BrushPresetModel::UserPresets() const
{
    return m_presets.mid(m_builtIns);
}

void BrushPresetModel::SetUserPresets(const QVector<BrushPreset>& presets)
{
    beginResetModel();
    m_presets.resize(m_builtIns);
    m_presets += presets;
    endResetModel();
}

int BrushPresetModel::Append(const BrushPreset& preset)
{
    const int row = m_presets.size();
    beginInsertRows(QModelIndex(), row, row);
    m_presets.append(preset);
    endInsertRows();
    return row;
}

void BrushPresetModel::Rename(int row, const QString& name)
{
    m_presets[row].name = name;
    Q_EMIT dataChanged(index(row, 0), index(row, 0));
}

void BrushPresetModel::Remove(int row)
{
    beginRemoveRows(QModelIndex(), row, row);
    m_presets.removeAt(row);
    endRemoveRows();
}

BrushPresetDelegate::BrushPresetDelegate(QObject* parent) : QStyledItemDelegate(parent) { }

void BrushPresetDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                const QModelIndex& index) const
{
    QStyleOptionViewItem item(option);
    initStyleOption(&item, index);
    const QString name = item.text;
    item.text.clear();
    const QStyle* const style = item.widget ? item.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);

    const bool selected = item.state.testFlag(QStyle::State_Selected);
    const QPalette::ColorGroup group =
        item.state.testFlag(QStyle::State_Active) ? QPalette::Active : QPalette::Inactive;
    const QColor color = item.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text);
    const double ratio = painter->device()->devicePixelRatioF();
    const BrushPreset& preset = static_cast<const BrushPresetModel*>(index.model())->Preset(index.row());
    QImage& mask = m_strokes[keyOf(preset, ratio)];
    if (mask.isNull())
        mask = strokeOf(preset, ratio);

    const QRect inner = item.rect.adjusted(Margin, 0, -Margin, 0);
    const QRect strokeRect(QPoint(inner.left(), inner.center().y() - StrokeSize.height() / 2), StrokeSize);
    DrawMask(*painter, strokeRect.topLeft(), mask, ratio, color);
    const QRect nameRect = inner.adjusted(StrokeSize.width() + 2 * Margin, 0, 0, 0);
    painter->save();
    painter->setFont(item.font);
    painter->setPen(color);
    painter->drawText(nameRect, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                      item.fontMetrics.elidedText(name, Qt::ElideRight, nameRect.width()));
    painter->restore();
}

QSize BrushPresetDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const int height = qMax(StrokeSize.height(), option.fontMetrics.height()) + Margin;
    const int name = option.fontMetrics.horizontalAdvance(index.data().toString());
    return QSize(StrokeSize.width() + 5 * Margin + name, height);
}
