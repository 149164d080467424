#pragma once

#include <QElapsedTimer>
#include <QList>
#include <QObject>

class QWidget;

// Lets widgets of a window that change thousands of times a second paint at most 25 times in it. Texts and
// values are not touched. Without a timer: what changes is painted by a later call of Pass().
class PaintGate : public QObject
{
    Q_OBJECT

public:
    // Belongs to the window. Open at first.
    PaintGate(QWidget* window, const QList<QWidget*>& widgets);

public Q_SLOTS:
    // Paints the widgets if it is time to, and closes the gate.
    void Pass();
    // The widgets paint by themselves until the next Pass(). Happens too when the window has to be painted
    // for a reason of its own.
    void Open();

public:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void SetOpen(bool open);

    QWidget* m_pWindow;
    QList<QWidget*> m_widgets;
    QElapsedTimer m_sincePaint;
    bool m_open = true;
    bool m_painting = false;
};
