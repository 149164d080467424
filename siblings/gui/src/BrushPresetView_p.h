#pragma once

#include <QAbstractListModel>
#include <QHash>
#include <QStyledItemDelegate>

#include "BrushPresets_p.h"

// The list of presets: the program's own come first, then those that a person saved.
class BrushPresetModel : public QAbstractListModel
{
    Q_OBJECT

public:
    explicit BrushPresetModel(QObject* parent);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;

    // The row must be valid.
    const BrushPreset& Preset(int row) const;
    bool IsUserPreset(int row) const;
    bool HasName(const QString& name) const;
    QVector<BrushPreset> UserPresets() const;

    void SetUserPresets(const QVector<BrushPreset>& presets);
    // Returns the row.
    int Append(const BrushPreset& preset);
    // The row must be a user preset's.
    void Rename(int row, const QString& name);
    void Remove(int row);

private:
    QVector<BrushPreset> m_presets;
    int m_builtIns;
};

// Draws a preset as its stroke over its name.
class BrushPresetDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit BrushPresetDelegate(QObject* parent);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    // The strokes drawn so far: coverage, by name, tip and size.
    mutable QHash<QString, QImage> m_strokes;
};
