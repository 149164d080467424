#pragma once

#include <QElapsedTimer>
#include <QList>
#include <QObject>

class QLabel;
class QWidget;

// Lets widgets of a window that change thousands of times a second paint at most 25 times in it. Texts and
// values are not touched. Without a timer: what changes is painted by a later call of Pass().
class PaintGate : public QObject
{
    Q_OBJECT

public:
    // Belongs to the window. Open at first. While `line`, one of the widgets, is empty, painting is put off
    // for a while: it is so at the beginning of each piece of work, and would be seen like that most of the
    // time.
    PaintGate(QWidget* window, const QList<QWidget*>& widgets, const QLabel* line);

public Q_SLOTS:
    // Paints the widgets if it is time to, and closes the gate.
    void Pass();
    // The widgets paint by themselves until the next Pass(). Happens too when the window has to be painted
    // for a reason of its own.
    void Open();

public:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    bool IsDue() const;
    void SetOpen(bool open);

    QWidget* m_pWindow;
    QList<QWidget*> m_widgets;
    const QLabel* m_pLine;
    QElapsedTimer m_sincePaint;
    bool m_open = true;
    bool m_painting = false;
};
