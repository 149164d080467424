#pragma once

#include <QBrush>
#include <QStyledItemDelegate>

#include "generaltoolsgui_export.h"

// Paints a row that stands for a gradient. The row's only datum is a QBrush of a linear gradient in
// Qt::BackgroundRole; its stops are drawn from left to right over the whole row but a margin, which shows the
// selection. Behind colours with alpha there is a checker.
//
// A row without a brush of a linear gradient is left unpainted, its selection too.
class GENERALTOOLSGUI_EXPORT NVGradientItemDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit NVGradientItemDelegate(QObject* parent = nullptr);
    ~NVGradientItemDelegate() override;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    // At least 30 pixels high.
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    QBrush m_checker;
};
