#pragma once

#include <QPoint>
#include <QRadioButton>

// One cell of the choice of an anchor: a dot if it is chosen, or else an arrow, or nothing.
class AnchorCell : public QRadioButton
{
    Q_OBJECT

public:
    explicit AnchorCell(QWidget* parent);
    ~AnchorCell() override;

    // -1, 0 or 1 an axis. (0, 0), as at first, is none.
    void SetArrow(QPoint arrow);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool hitButton(const QPoint& position) const override;
    void paintEvent(QPaintEvent* event) override;

private:
    QPoint m_arrow;
};
