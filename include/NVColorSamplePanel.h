#pragma once

#include <QWidget>

#include "generaltoolsgui_export.h"

class QAbstractItemModel;
class Ui_ColorSamplerPanel;

// The side panel that lists the colour samples of a model, painted by a KXColorSampleDelegate. A press or a
// release of a mouse button on the list is told in global coordinates, and acts on the list as ever. GUI
// thread only.
//
// The delegate belongs to nobody: a host that doesn't want to lose it deletes the list's item delegate after
// the panel.
class GENERALTOOLSGUI_EXPORT NVColorSamplePanel : public QWidget
{
    Q_OBJECT

public:
    explicit NVColorSamplePanel(QWidget* parent);
    ~NVColorSamplePanel() override;

    // The row at a global position; -1 where there is none.
    int GetItemAt(const QPoint& globalPos) const;

public Q_SLOTS:
    // Not owned; may be null.
    void SetModel(QAbstractItemModel* model);
    // A row that the model doesn't have leaves nothing selected.
    void SelectRow(int row);
    void ScrollTo(int row);

Q_SIGNALS:
    // The button is a Qt::MouseButton. Comes before the list knows of it, also where there is no row.
    void MousePressed(QPoint globalPos, int button);
    void MouseReleased(QPoint globalPos, int button);

public:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    Ui_ColorSamplerPanel* m_pUi = nullptr;
};
