// Hosting the brush bar: set it from stored values, follow what it reports, turn its keys on, show it.
// With --quit the program ends as soon as the bar has been shown.

#include <QApplication>
#include <QTextStream>
#include <QTimer>

#include "NVBrushToolbar.h"

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    QTextStream out(stdout);

    NVBrushToolbar bar(nullptr);
    QObject::connect(&bar, &NVBrushToolbar::SizeChanged, &bar,
                     [&out](int pixels) { out << "size " << pixels << " px" << Qt::endl; });
    QObject::connect(&bar, &NVBrushToolbar::OpacityChanged, &bar,
                     [&out](int percent) { out << "opacity " << percent << " %" << Qt::endl; });
    bar.SetSize(24);
    bar.SetOpacity(80);
    bar.SetBlendMode(1);
    bar.CreateShortcuts();
    bar.show();

    if (QCoreApplication::arguments().contains(QStringLiteral("--quit")))
    {
        QTimer::singleShot(0, &application, &QCoreApplication::quit);
    }
    const int status = QApplication::exec();
    // blend mode and fill mode have no signal: the host asks when its tool acts
    out << "blend mode " << bar.GetBlendMode() << ", fill mode " << bar.GetStyle() << Qt::endl;
    return status;
}
