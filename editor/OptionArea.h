#pragma once

#include <QScrollArea>

class QStackedLayout;

// The strip under the menus that shows the option bar of the current tool. It is equally high for every tool;
// a bar that is wider than the window is scrolled by the wheel and follows the keyboard focus.
class OptionArea : public QScrollArea
{
    Q_OBJECT

public:
    explicit OptionArea(QWidget* parent = nullptr);

    // The bar is shown in place of the one before. It is not owned.
    void ShowBar(QWidget* bar);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void wheelEvent(QWheelEvent* event) override;

private:
    QStackedLayout* m_pStack;
};
