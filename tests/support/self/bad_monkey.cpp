// A widget that cannot bear random input. tst_MonkeyItself runs it to see what the monkey says at the end.

#include "Monkey.h"

#include <QApplication>
#include <QMouseEvent>
#include <QWidget>

#include <cstdlib>

class Fragile : public QWidget
{
    Q_OBJECT
protected:
    void mousePressEvent(QMouseEvent*) override { std::abort(); }
};

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    Fragile widget;
    widget.show();
    return Monkey(&widget, 4711).Run(500) == 500 ? 0 : 1;
}

#include "bad_monkey.moc"
