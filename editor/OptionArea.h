#pragma once

#include <QPointer>
#include <QScrollArea>

class QHBoxLayout;
class QToolButton;

// The strip under the menus that shows the option bar of the current tool. It is equally high for every tool.
// A bar that is wider than the window is scrolled by the wheel and by a button at each end that hides some of
// it, and follows the keyboard focus.
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
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private Q_SLOTS:
    void OnBack();
    void OnForward();
    void OnScrolled();

private:
    QToolButton* AddButton(Qt::ArrowType arrow, const QString& name);
    void ScrollBy(int pixels);

    QHBoxLayout* m_pBars;
    QPointer<QWidget> m_pShown;
    QToolButton* m_pBack;
    QToolButton* m_pForward;
};
