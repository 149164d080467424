// A window of another program with the brush bar on top and room for its own picture below.
// With --quit the program ends as soon as the window has been shown.

#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QTextStream>
#include <QTimer>
#include <QToolBar>

#include "NVBrushToolbar.h"

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);

    QMainWindow window;
    auto* area = window.addToolBar(QStringLiteral("Options"));
    auto* bar = new NVBrushToolbar(area);
    area->addWidget(bar);
    auto* picture = new QLabel(QStringLiteral("The picture of the host"));
    picture->setAlignment(Qt::AlignCenter);
    window.setCentralWidget(picture);

    QObject::connect(bar, &NVBrushToolbar::SizeChanged, picture, qOverload<int>(&QLabel::setNum));
    bar->SetSize(24);
    window.show();

    if (QCoreApplication::arguments().contains(QStringLiteral("--quit")))
    {
        QTimer::singleShot(0, &application, &QCoreApplication::quit);
    }
    const int status = QApplication::exec();
    QTextStream(stdout) << "the label shows " << picture->text() << Qt::endl;
    return status;
}
