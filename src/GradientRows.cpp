#include "GradientRows_p.h"

#include <QListView>
#include <QStandardItemModel>

#include <stdexcept>

#include "NVGradientItemDelegate.h"

void SetUpGradientRows(QListView* view)
{
    view->setAttribute(Qt::WA_MacShowFocusRect, false);
    view->setItemDelegate(new NVGradientItemDelegate(view));
    auto* rows = new QStandardItemModel(view);
    rows->insertColumns(0, 1);
    view->setModel(rows);
}

QStandardItemModel* GradientRows(const QListView* view)
{
    return static_cast<QStandardItemModel*>(view->model());
}

QBrush GradientRowBrush(const QGradientStops& stops)
{
    QLinearGradient gradient(0, 0, 1, 0);
    gradient.setStops(stops);
    return QBrush(gradient);
}

void SetGradientRow(QStandardItemModel* rows, int row, const QGradientStops& stops)
{
    rows->setData(rows->index(row, 0), GradientRowBrush(stops), Qt::BackgroundRole);
}

void LoadGradientRows(QStandardItemModel* rows, const QList<QList<NVGradientStop>>& gradients)
{
    rows->removeRows(0, rows->rowCount());
    rows->insertRows(0, gradients.size());
    for (int row = 0; row < gradients.size(); ++row)
        SetGradientRow(rows, row, ToGradientStops(gradients[row]));
}

void CheckGradientIndex(int index, int count, const char* file, int line)
{
    if (index >= 0 && index < count)
        return;
    // No blank after the full stop, on purpose.
    const QString text = QStringLiteral("An index %1 is out of range.File %2, line %3");
    throw std::out_of_range(
        text.arg(QString::number(index), QLatin1String(file), QString::number(line)).toUtf8().toStdString());
}
